// What the registry proves of an equipment: against what the services answered at the time, and against a count of
// every change in memory.
#include "services/Calendario.h"
#include "services/HistoriaDoEquipamento.h"
#include "services/ProvaED.h"
#include "services/Resumo.h"
#include "tests/services/ContagemDeDias.h"
#include "tests/services/Oficina.h"
#include "tests/services/ServicosTeste.h"

#include <QByteArray>

#include <cstdlib>
#include <map>
#include <string>
#include <utility>
#include <vector>

using namespace mesa;
using namespace oficina;
using namespace contagem;

namespace {

Ref<ConsultaProvaED> Pergunta(std::int32_t equipamento, Data dia, std::int32_t hora = -1)
{
    return Com(Com(Novo<ConsultaProvaED>(), &ConsultaProvaED::NroIntEquip, equipamento, &ConsultaProvaED::Dia, dia),
               &ConsultaProvaED::Hora, hora);
}

std::string Textos(const ListaDe<EntradaProvadaED> &entradas)
{
    std::string texto;
    for (std::int32_t n = 1; n <= entradas->Count(); ++n) {
        const EntradaProvadaED &e = *entradas->Item(n);
        texto += e.Momento.Valor() + ", " + e.Quem.Valor() + ", " + e.Assunto.Valor() + ": " + e.OQue.Valor() +
                 (e.Motivo.Valor().empty() ? "" : " [" + e.Motivo.Valor() + "]") + "\n";
    }
    return texto;
}

std::string Textos(const ListaDe<LimiteProvadoED> &limites)
{
    std::string texto;
    for (std::int32_t n = 1; n <= limites->Count(); ++n) {
        const LimiteProvadoED &l = *limites->Item(n);
        texto += CStr(l.Ordem.Valor()) + " " + CStr(l.Especie.Valor()) + " " + TextoDaHora(l.HoraInicio) + "-" +
                 TextoDaHora(l.HoraFim) + " " + CStr(l.VelocPerm.Valor()) +
                 (l.Nota.Valor().empty() ? "" : " (" + l.Nota.Valor() + ")") + "\n";
    }
    return texto;
}

class ServicosProva : public ServicosDeAfericoes {
  protected:
    Ref<ProvaED> Prova(const Ref<ConsultaProvaED> &pedido)
    {
        return Faz(m_Ana, "consultaProva", pedido, "ProvaRN").Como<ProvaED>();
    }
    static std::string Recusa(const Ref<SessaoServico> &sessao, const Ref<ConsultaProvaED> &pedido)
    {
        return RecusaDe(sessao, "consultaProva", pedido, "ProvaRN");
    }
    static double Vigente(const ProvaED &prova)
    {
        return prova.Vigente.Valor()->Count() == 0 ? 0 : prova.Vigente.Valor()->Item(1)->NroIntAfericao.Valor();
    }
    void Corrige(std::int32_t equipamento, const Ref<AfericaoED> &como, const std::string &motivo)
    {
        m_Ana->PerguntaMotivo([motivo](const std::string &) { return motivo; });
        Abre(m_Ana, equipamento);
        Faz(m_Ana, "altera", Poe(SoNumero(equipamento), Poe(SoSensor(1), como)));
        m_Ana->PerguntaMotivo({});
    }
};

TEST_F(ServicosProva, ConsultaProva_TellsTheCalibrationItsDocumentAndWhereTheyStandInTheHistory)
{
    const std::int32_t numero = ComSensores({{AfericaoDe("1", Jan, Jun), AfericaoDe("2", Jul, Dez)}});
    const auto prova = Prova(Pergunta(numero, DataDe(15, 3, 2026), 1430));
    EXPECT_EQ(prova->Equipamento.Valor()->Item(1)->Codigo.Valor(), "R-001");
    EXPECT_EQ(prova->Municipio.Valor(), "Porto Alegre - RS");
    EXPECT_EQ(prova->TipoEmPalavras.Valor(), "Pardal");
    EXPECT_EQ(prova->Cliente.Valor(), "Autoridade Estadual de Trânsito");
    EXPECT_EQ(prova->EmitidoEm.Valor(), "20/11/2026 às 10:00:00");
    EXPECT_EQ(prova->EmitidoPor.Valor(), m_Ana->Operador().Nome);
    EXPECT_EQ(prova->ConhecidoEm.Valor(), "");
    ASSERT_EQ(prova->Vigente.Valor()->Count(), 1);
    EXPECT_EQ(prova->Vigente.Valor()->Item(1)->Numero.Valor(), "1");
    EXPECT_EQ(prova->SemVigente.Valor(), "");
    EXPECT_EQ(prova->NroIntSensor.Valor(), 1);
    const Bytes documento = Pdf("certificado");
    EXPECT_EQ(prova->Documento.Valor(), 1);
    EXPECT_EQ(prova->TamanhoDoDocumento.Valor(), static_cast<double>(documento.size()));
    EXPECT_EQ(prova->Sha256DoDocumento.Valor(), Resumo(QByteArray(reinterpret_cast<const char *>(documento.data()),
                                                                  static_cast<qsizetype>(documento.size()))));
    // The numbers and hashes are those of the entries.
    for (const auto &[lista, entidade] : {std::pair(prova->EntradaDaAfericao.Valor(), "AFERICAO' AND NroEntidade = 1"),
                                          std::pair(prova->EntradaDoDocumento.Valor(), "DOCUMENTO'")}) {
        ASSERT_EQ(lista->Count(), 1);
        const EntradaProvadaED &entrada = *lista->Item(1);
        EXPECT_EQ(CStr(entrada.Entrada.Valor()) + "|" + entrada.Elo.Valor(),
                  m_Registro.Sql("SELECT Nro, Elo FROM HISTORICO WHERE Entidade = '" + std::string(entidade)));
    }
    const std::string cabeca = m_Registro.Sql("SELECT Nro, Elo FROM HISTORICO ORDER BY Nro DESC LIMIT 1");
    EXPECT_EQ(CStr(prova->Cabeca.Valor()) + "|" + prova->EloDaCabeca.Valor(), cabeca);
    EXPECT_EQ(CStr(prova->Corte.Valor()) + "|" + prova->EloDoCorte.Valor(), cabeca);
    EXPECT_EQ(prova->Identificador.Valor(), m_Registro.Sql("SELECT Identificador FROM REGISTRO"));
    EXPECT_EQ(Textos(prova->Posteriores.Valor()), "");
    EXPECT_EQ(Textos(prova->Versoes.Valor()),
              "20/11/2026 às 10:00:00, Ana Souza, aferição 1: incluída: data de verificação 01/01/2026; data de "
              "vencimento 30/06/2026; certificado ou declaração 987; documento 1\n");
}

TEST_F(ServicosProva, ConsultaProva_AsKnownBeforeACorrection_IsWhatWasKnownThenAndNamesTheCorrection)
{
    const std::int32_t numero = ComSensores({{AfericaoDe("1", Jan, Dez)}});
    const Data antes = m_Registro.Relogio;
    m_Registro.PassaSegundos(3600);
    Corrige(numero, Com(SoAfericao(1), &AfericaoED::DataVencimento, Jun), "data lida errada no certificado");
    const std::string correcao =
        "20/11/2026 às 11:00:00, Ana Souza, aferição 1: data de vencimento: de 31/12/2026 para "
        "30/06/2026 [data lida errada no certificado]\n";

    const auto agora = Prova(Pergunta(numero, Jul));
    EXPECT_EQ(Vigente(*agora), 0);
    EXPECT_EQ(agora->SemVigente.Valor(), "Nenhuma aferição ativa, com documento, tem o dia 01/07/2026 no seu período.");
    EXPECT_NE(Textos(agora->Versoes.Valor()).find(correcao), std::string::npos);
    EXPECT_EQ(agora->Posteriores.Valor()->Count(), 0);

    const auto entao = Prova(Com(Pergunta(numero, Jul), &ConsultaProvaED::ConhecidoEm, antes));
    EXPECT_EQ(Vigente(*entao), 1);
    EXPECT_EQ(entao->Vigente.Valor()->Item(1)->DataVencimento.Valor(), Dez);
    EXPECT_EQ(entao->ConhecidoEm.Valor(), "20/11/2026 às 10:00:00");
    EXPECT_EQ(Textos(entao->Versoes.Valor()).find("[data"), std::string::npos);
    EXPECT_NE(Textos(entao->Posteriores.Valor()).find(correcao), std::string::npos);
    EXPECT_LT(entao->Corte.Valor(), entao->Cabeca.Valor());

    // Asked again by the entry: the same, whatever came since.
    const auto deNovo = Prova(Com(Pergunta(numero, Jul), &ConsultaProvaED::AteEntrada, entao->Corte.Valor()));
    deNovo->ConhecidoEm = entao->ConhecidoEm.Valor();
    EXPECT_EQ(deNovo->Texto(), entao->Texto());
}

TEST_F(ServicosProva, ConsultaProva_WithoutACalibrationInForce_SaysWhy)
{
    const std::int32_t numero =
        ComSensores({{AfericaoDe("1", Jan, Jun), AfericaoDe("3", Jul, Dez)}, {AfericaoDe("2", Jun, Jul)}});
    EXPECT_EQ(Prova(Pergunta(numero, Jun))->SemVigente.Valor(),
              "Mais de uma aferição tem o dia 30/06/2026 no seu período, a 1 do sensor 1 e a 2 do sensor 2, e nada diz "
              "qual delas vale: o registro não responde nenhuma.");
    EXPECT_EQ(Prova(Pergunta(numero, DataDe(1, 1, 2027)))->SemVigente.Valor(),
              "Nenhuma aferição ativa, com documento, tem o dia 01/01/2027 no seu período.");
    Faz(m_Ana, "desativa", SoNumero(numero));
    m_Registro.Relogio = DataDe(1, 12, 2026);
    EXPECT_EQ(Prova(Pergunta(numero, DataDe(25, 11, 2026)))->SemVigente.Valor(),
              "O equipamento não estava ativo no dia 25/11/2026.");
    EXPECT_EQ(Vigente(*Prova(Pergunta(numero, DataDe(20, 11, 2026)))), 2); // the number that the row was given
    EXPECT_EQ(Textos(Prova(Pergunta(numero, Jun))->Desativacoes.Valor()),
              "20/11/2026 às 10:00:00, Ana Souza, equipamento R-001: desativado\n");
}

TEST_F(ServicosProva, ConsultaProva_Limits_StandInTheOrderInWhichTheyApply)
{
    // 24/11/2026 was a Tuesday.
    const Data dia = DataDe(24, 11, 2026);
    const std::int32_t numero = ComSensores({});
    const auto equipto = Abre(m_Ana, numero);
    if (equipto->TemLimiteDif.Valor() != 1) {
        Faz(m_Ana, "altera", Com(SoNumero(numero), &EquiptoED::TemLimiteDif, 1));
    }
    Faz(m_Ana, "alteraListaLimitesDif",
        ListaDeLimites({LimiteDe(numero, 3, 700, 800, 30), LimiteDe(numero, 3, 800, 900, 50),
                        LimiteDe(numero, 8, 0, 2359, 70), LimiteDe(numero, 4, 0, 2359, 10)}));
    Faz(m_Ana, "adicionaDiaEspecifico", DiaDe(numero, dia, 600, 1000));
    const std::string propria = CStr(equipto->VelocPermitida.Valor());
    const std::string feriado = " (vale em feriados; o registro não guarda quais dias o são)\n";

    EXPECT_EQ(Textos(Prova(Pergunta(numero, dia, 800))->Limites.Valor()),
              "1 2 06:00-10:00 40\n2 3 00:00-23:59 70" + feriado +
                  "3 4 08:00-09:00 50\n4 4 07:00-08:00 30\n5 5 "
                  "00:00-23:59 " +
                  propria + "\n");
    EXPECT_EQ(Textos(Prova(Pergunta(numero, dia, 1200))->Limites.Valor()),
              "1 3 00:00-23:59 70" + feriado + "2 5 00:00-23:59 " + propria + "\n");
    EXPECT_EQ(Textos(Prova(Pergunta(numero, dia))->Limites.Valor()), "1 2 06:00-10:00 40\n2 3 00:00-23:59 70" +
                                                                         feriado +
                                                                         "3 4 07:00-08:00 30\n4 4 08:00-09:00 50\n5 5 "
                                                                         "00:00-23:59 " +
                                                                         propria + "\n");

    // What was changed afterwards counts as it was at the moment; what came afterwards does not count.
    m_Registro.Relogio = DataDe(25, 11, 2026, 9, 0, 0);
    Faz(m_Ana, "consultaSimplesDiaEspecifico", SoDia(1));
    Faz(m_Ana, "desativaDiaEspecifico", SoDia(1));
    Faz(m_Ana, "alteraListaLimitesDif", ListaDeLimites({LimiteDe(numero, 3, 1200, 1300, 20)}));
    EXPECT_EQ(Textos(Prova(Pergunta(numero, dia, 900))->Limites.Valor()),
              "1 2 06:00-10:00 40 (excluído em 25/11/2026 às 09:00:00, depois do momento)\n2 3 00:00-23:59 70" +
                  feriado + "3 4 08:00-09:00 50\n4 5 00:00-23:59 " + propria + "\n");
    EXPECT_EQ(Textos(Prova(Pergunta(numero, dia, 1230))->Limites.Valor()),
              "1 3 00:00-23:59 70" + feriado + "2 5 00:00-23:59 " + propria +
                  "\n0 4 12:00-13:00 20 (incluído em 25/11/2026 às 09:00:00, depois do momento)\n");
}

TEST_F(ServicosProva, ConsultaProva_ByCode_FindsTheActiveOne)
{
    const std::int32_t primeiro = ComSensores({});
    const auto porCodigo = [](const std::string &codigo) {
        return Com(Pergunta(0, DataDe(20, 11, 2026)), &ConsultaProvaED::Codigo, codigo);
    };
    Faz(m_Ana, "desativa", SoNumero(primeiro));
    EXPECT_EQ(Prova(porCodigo(" r-001 "))->Equipamento.Valor()->Item(1)->NroIntEquip.Valor(), primeiro);
    const std::int32_t segundo = ComSensores({});
    EXPECT_EQ(Prova(porCodigo("r-001"))->Equipamento.Valor()->Item(1)->NroIntEquip.Valor(), segundo);
    Faz(m_Ana, "desativa", SoNumero(segundo));
    EXPECT_EQ(
        Recusa(m_Ana, porCodigo("R-001")),
        "O cliente Autoridade Estadual de Trânsito tem 2 equipamentos desativados de código \"R-001\": escolha um "
        "deles pelo número interno.");
    EXPECT_EQ(Recusa(m_Ana, porCodigo("nada")),
              "O cliente Autoridade Estadual de Trânsito não tem equipamento de código \"nada\".");
}

TEST_F(ServicosProva, ConsultaProva_OfAnotherClientOrWithoutTheRightOrOutsideTheHistory_IsRefused)
{
    const std::int32_t numero = ComSensores({});
    const auto pedido = Pergunta(numero, Jan);
    EXPECT_EQ(Recusa(m_Registro.Sessao("elisa"), pedido),
              "O cliente Autoridade Municipal de Trânsito não tem equipamento de número interno 1.");
    EXPECT_EQ(Recusa(m_Registro.Sessao("carla"), pedido), "Carla Dias não tem permissão para consultar equipamentos.");
    EXPECT_TRUE(Pede(m_Registro.Sessao("bruno"), "consultaProva", pedido, "ProvaRN").Feita);
    EXPECT_EQ(Recusa(m_Ana, Com(Pergunta(numero, Jan), &ConsultaProvaED::ConhecidoEm, DataDe(20, 11, 2026))),
              "O equipamento R-001 não está no histórico em 20/11/2026 às 00:00:00; a sua primeira entrada é de "
              "20/11/2026 às 10:00:00.");
    EXPECT_EQ(Recusa(m_Ana, Com(Pergunta(numero, Jan), &ConsultaProvaED::AteEntrada, 1)),
              "O equipamento R-001 não está no histórico até a entrada de que se pergunta; a sua primeira entrada é de "
              "20/11/2026 às 10:00:00.");
    for (const double nenhuma : {1e9, -1.0, 1.5}) {
        EXPECT_EQ(Recusa(m_Ana, Com(Pergunta(numero, Jan), &ConsultaProvaED::AteEntrada, nenhuma))
                      .starts_with("O histórico não tem a entrada "),
                  true);
    }
    EXPECT_EQ(Recusa(m_Ana, Pergunta(numero, Data{})), "O dia do fato precisa ser informado.");
    EXPECT_EQ(Recusa(m_Ana, Pergunta(numero, Data{1e12})), "O dia do fato precisa ser informado.");
    for (const std::int32_t hora : {2400, 1260, -2}) {
        EXPECT_EQ(Recusa(m_Ana, Pergunta(numero, Jan, hora)), "A hora do fato precisa ficar entre 00:00 e 23:59.");
    }
}

TEST_F(ServicosProva, ConsultaProva_OfAHistoryThatWasTouched_IsRefused)
{
    const std::int32_t numero = ComSensores({{AfericaoDe("1", Jan, Dez)}});
    m_Registro.Sql("UPDATE AFERICAO SET Versao = Versao + 1, DataVencimento = 20260201");
    EXPECT_EQ(Recusa(m_Ana, Pergunta(numero, Jul)),
              "O que o registro responde da aferição em vigor no dia 01/07/2026 não é o que o seu histórico diz: o "
              "registro precisa ser conferido.");
}

// What the services answered from the rows at the time is what is proved of that time from the history.
TEST(ProvaAoAcaso, ConsultaProva_AsKnownOnAMoment_IsWhatTheServicesAnsweredThen)
{
    const bool postgres = std::getenv("MOTOR_DE_TESTE") != nullptr;
    const int historias = postgres ? 60 : 300;
    constexpr int copias = 3;
    Sorte sorte(2611);
    Oficina oficina;
    int vigentes = 0;
    int outras = 0; // where a later answer is another one
    for (int e = 0; e < historias; ++e) {
        struct Copia {
            Data Quando;
            std::vector<std::pair<Data, double>> Respostas;
        };
        std::vector<Copia> tiradas;
        std::int32_t numero = 0;
        const Data primeiro = DataDe(1, 11, 2026).MaisDias(e % 60 * 60);
        oficina.PassaAte(primeiro.MaisDias(30));
        oficina.Dados().Escreve([&] {
            const double documento = oficina.Documento();
            std::vector<Ref<AfericaoED>> afericoes;
            auto sensor = SensorDe(1);
            Data de = primeiro.MaisDias(sorte.Ate(20) - 30);
            for (int n = 0; n < 2; ++n) {
                const Data ate = de.MaisDias(5 + sorte.Ate(30));
                afericoes.push_back(AfericaoDe(std::to_string(n), de, ate, documento));
                Poe(sensor, afericoes.back());
                de = ate.MaisDias(1 + sorte.Ate(4));
            }
            numero = oficina.Pede(&ServicoEquipamentos::Inclui, Poe(EquipamentoDe("P" + std::to_string(e)), sensor))
                         ->NroIntEquip;
            const std::int32_t doSensor = oficina.Ultimo("SENSOR", "NroIntSensor");
            const std::int32_t ultima = oficina.Ultimo("AFERICAO", "NroIntAfericao");
            bool ativo = true;
            std::vector<bool> validas = {true, true};
            for (int c = 0; c < copias; ++c) {
                Copia &copia = tiradas.emplace_back();
                for (int d = 0; d < 2; ++d) {
                    const Data dia = primeiro.MaisDias(sorte.Ate(45));
                    copia.Respostas.push_back({dia, oficina.Vigente(numero, dia)});
                }
                copia.Quando = oficina.Agora().Local;
                for (int m = sorte.Ate(3); m >= 0; --m) {
                    oficina.PassaSegundos(1 + sorte.Ate(3) * 40000);
                    if (!ativo || sorte.UmaEm(4)) {
                        oficina.Pede(ativo ? &ServicoEquipamentos::Desativa : &ServicoEquipamentos::Reativa,
                                     SoNumero(numero));
                        ativo = !ativo;
                        continue;
                    }
                    const int qual = sorte.Ate(2);
                    const auto pedida = SoAfericao(ultima - 1 + qual);
                    if (sorte.UmaEm(2)) {
                        validas[static_cast<std::size_t>(qual)] = !validas[static_cast<std::size_t>(qual)];
                        Com(pedida, &AfericaoED::Ativo, validas[static_cast<std::size_t>(qual)] ? 1 : 2);
                    } else { // shorter by a day
                        AfericaoED &afericao = *afericoes[static_cast<std::size_t>(qual)];
                        if (afericao.DataVencimento.Valor() > afericao.DataVerificacao.Valor().MaisDias(1)) {
                            afericao.DataVencimento = afericao.DataVencimento.Valor().MaisDias(-1);
                        }
                        Com(pedida, &AfericaoED::DataVencimento, afericao.DataVencimento.Valor());
                    }
                    oficina.Pede(&ServicoEquipamentos::Altera, Poe(SoNumero(numero), Poe(SoSensor(doSensor), pedida)));
                }
                oficina.PassaSegundos(1);
            }
        });
        oficina.Dados().Le([&] {
            for (const Copia &copia : tiradas) {
                for (const auto &[dia, resposta] : copia.Respostas) {
                    const auto pedido = Com(Pergunta(numero, dia), &ConsultaProvaED::ConhecidoEm, copia.Quando,
                                            &ConsultaProvaED::Fuso, Oficina::Fuso);
                    const auto prova = oficina.Prova(pedido);
                    const bool ha = prova->Vigente.Valor()->Count() > 0;
                    ASSERT_EQ(ha ? prova->Vigente.Valor()->Item(1)->NroIntAfericao.Valor() : 0, resposta)
                        << "equipment " << e << ", " << dia.Valor << " as known at " << copia.Quando.Valor;
                    EXPECT_EQ(prova->SemVigente.Valor().empty(), ha);
                    vigentes += ha ? 1 : 0;
                    outras += oficina.Vigente(numero, dia) != resposta ? 1 : 0;
                }
            }
        });
    }
    EXPECT_GT(vigentes, historias); // neither is rare
    EXPECT_GT(outras, historias / 4);
}

// Ten thousand histories that no database has, each cut at several of its entries.
TEST(VigenciasConhecidasTeste, NoDia_OfEachCut_IsAsEveryChangeUpToThereSays)
{
    constexpr int historias = 10000;
    constexpr std::int32_t fuso = -180;
    struct LinhaAfericao {
        std::int64_t Sensor = 0;
        Data De;
        Data Ate;
        bool Ativa = true;
        bool ComDocumento = true;
    };
    struct Passo { // what was so after an entry
        Memoria Equipamento;
        std::map<std::int64_t, Memoria> Sensores;
        std::map<std::int64_t, LinhaAfericao> Afericoes;
    };
    Sorte sorte(8128);
    int vigentes = 0;
    int lacunas = 0;
    int conflitos = 0;
    for (int h = 0; h < historias; ++h) {
        std::vector<EntradaDaHistoria> entradas;
        std::vector<Passo> passos;
        Passo agora;
        const Data primeiro = DataDe(1, 11, 2026).MaisDias(sorte.Ate(400));
        Data relogio = primeiro.MaisDias(10);
        const auto escreve = [&](const std::string &entidade, std::int64_t numero, const std::string &acao,
                                 const std::string &depois) {
            const Instante quando(relogio, fuso);
            entradas.push_back({.Nro = static_cast<std::int64_t>(entradas.size()) + 1,
                                .Quando = quando.Utc(),
                                .Fuso = fuso,
                                .Entidade = entidade,
                                .Numero = numero,
                                .Acao = acao,
                                .Depois = depois});
            passos.push_back(agora);
        };
        const auto ativo = [](bool sim) { return std::string(R"("Ativo":)") + (sim ? "1" : "2"); };
        const auto anota = [&](Memoria &memoria, bool sim) { memoria.push_back({Segundos(relogio), sim}); };
        const auto afericao = [&](std::int64_t numero, const std::string &acao) {
            const LinhaAfericao &linha = agora.Afericoes.at(numero);
            escreve("AFERICAO", numero, acao,
                    "{\"NroIntAfericao\":" + CStr(numero) + ",\"NroIntSensor\":" + CStr(linha.Sensor) +
                        ",\"DataVerificacao\":" + CStr(DiaCivil(linha.De)) +
                        ",\"DataVencimento\":" + CStr(DiaCivil(linha.Ate)) +
                        ",\"NroIntImgCertif\":" + (linha.ComDocumento ? "7" : "\"\"") + "," + ativo(linha.Ativa) + "}");
        };
        anota(agora.Equipamento, true);
        escreve("EQUIPAMENTO", 1, "inclui", "{\"NroIntEquip\":1," + ativo(true) + "}");
        const auto novoSensor = [&](bool comoAtivo) {
            const auto sensor = static_cast<std::int64_t>(agora.Sensores.size()) + 1;
            anota(agora.Sensores[sensor], comoAtivo);
            escreve("SENSOR", sensor, "inclui", "{\"NroIntSensor\":" + CStr(sensor) + "," + ativo(comoAtivo) + "}");
            for (int n = sorte.Ate(3); n > 0; --n) {
                const Data de = primeiro.MaisDias(sorte.Ate(30) - 10);
                const auto numero = static_cast<std::int64_t>(agora.Afericoes.size()) + 1;
                agora.Afericoes[numero] = {sensor, de, de.MaisDias(sorte.Ate(15)), true, !sorte.UmaEm(8)};
                afericao(numero, "inclui");
            }
        };
        novoSensor(true);
        for (int n = 0; n < 6; ++n) {
            relogio.Valor += (1 + sorte.Ate(4) * sorte.Ate(60000)) / 86400.0;
            const int oQue = sorte.Ate(5);
            if (oQue == 0) {
                const bool sim = !agora.Equipamento.back().second;
                anota(agora.Equipamento, sim);
                escreve("EQUIPAMENTO", 1, sim ? "reativa" : "desativa", "{\"NroIntEquip\":1," + ativo(sim) + "}");
            } else if (oQue == 1 && agora.Sensores.size() < 3) {
                novoSensor(!sorte.UmaEm(5));
            } else if (oQue == 2) {
                const std::int64_t qual = 1 + sorte.Ate(static_cast<int>(agora.Sensores.size()));
                const bool sim = !agora.Sensores[qual].back().second;
                anota(agora.Sensores[qual], sim);
                escreve("SENSOR", qual, sim ? "reativa" : "desativa",
                        "{\"NroIntSensor\":" + CStr(qual) + "," + ativo(sim) + "}");
            } else if (!agora.Afericoes.empty()) {
                const std::int64_t qual = 1 + sorte.Ate(static_cast<int>(agora.Afericoes.size()));
                LinhaAfericao &linha = agora.Afericoes[qual];
                if (sorte.UmaEm(2)) {
                    linha.Ativa = !linha.Ativa;
                } else {
                    linha.Ate = linha.De.MaisDias(sorte.Ate(15));
                }
                afericao(qual, "altera");
            }
        }
        for (const std::size_t corte :
             {entradas.size(), 1 + static_cast<std::size_t>(sorte.Ate(static_cast<int>(entradas.size())))}) {
            const VigenciasConhecidas vigencias = EstadoConhecido(entradas, corte).Vigencias();
            const Passo &passo = passos[corte - 1];
            for (int d = 0; d < 40; d += 1 + sorte.Ate(6)) {
                const Data dia = primeiro.MaisDias(d);
                std::map<std::int64_t, std::vector<std::int64_t>> porLugar;
                for (const auto &[numero, linha] : passo.Afericoes) {
                    const std::int64_t lugar = Lugar(passo.Sensores.at(linha.Sensor), Segundos(dia));
                    if (linha.Ativa && linha.ComDocumento && linha.De <= dia && linha.Ate >= dia && lugar >= 0) {
                        porLugar[lugar].push_back(numero);
                    }
                }
                const bool lacuna = porLugar.empty() || Lugar(passo.Equipamento, Segundos(dia)) < 0;
                const bool uma = !lacuna && porLugar.begin()->second.size() == 1;
                const Vigencia achada = vigencias.NoDia(DiaCivil(dia));
                ASSERT_EQ(achada.Afericao.Nada() ? 0 : achada.Afericao->NroIntAfericao.Valor(),
                          uma ? static_cast<double>(porLugar.begin()->second.front()) : 0)
                    << "history " << h << " cut at " << corte << ", day " << d;
                EXPECT_EQ(achada.Porque == SemVigencia::Varias, !lacuna && !uma);
                (lacuna ? lacunas : uma ? vigentes : conflitos) += 1;
            }
        }
    }
    EXPECT_GT(vigentes, historias); // none is rare
    EXPECT_GT(lacunas, historias);
    EXPECT_GT(conflitos, historias / 10);
    RecordProperty("vigentes", vigentes);
    RecordProperty("lacunas", lacunas);
    RecordProperty("conflitos", conflitos);
}

} // namespace
