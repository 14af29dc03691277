#include "Tubo.h"

#include "host/ConsultaAfericaoED.h"
#include "host/RelatorioAfericaoED.h"
#include "rede/Mensagens.h"
#include "rede/ServicosRemotos.h"
#include "rede/SessaoDeServidor.h"
#include "server/Servidor.h"
#include "services/Conferidor.h"
#include "services/DialetoPostgres.h"
#include "services/LayoutED.h"
#include "services/LogradouroED.h"
#include "services/PrazosED.h"
#include "services/RegistrosAdministracao.h"
#include "tests/services/PapelDeTrabalho.h"
#include "tests/services/RegistroDeTeste.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <set>

namespace {

using std::chrono::milliseconds;

// The server over a registry, beside the same registry opened here.
class ServidorRealTeste : public testing::Test {
  protected:
    ServidorRealTeste()
    {
        for (const char *usuario : {"ana", "bruno", "marta"}) {
            Registro.Cadastra(usuario);
        }
    }

    void Comeca(bool semTls = true, const std::string &escuta = "127.0.0.1:0")
    {
        servidor::Configuracao como;
        como.Registro = papel::DeTrabalho(Registro.Caminho());
        como.Escuta = escuta;
        como.PastaDoCertificado = Pasta.path().toStdString();
        como.SemTls = semTls;
        como.Diario = Pasta.filePath("diario").toStdString();
        Um.emplace(
            como, [] { return mesa::Instante(DataDe(20, 11, 2026, 10, 0, 0)); }, CustoDeTeste);
    }
    rede::Endereco Onde() const { return {"127.0.0.1", Um->Porta()}; }

    Ref<mesa::SessaoServico> Sessao(const std::string &usuario, std::uint16_t porta = 0,
                                    milliseconds cada = milliseconds(10000))
    {
        const auto servicos = rede::Conecta({"127.0.0.1", porta == 0 ? Um->Porta() : porta}, {Um->Digital(), ""},
                                            "teste", {milliseconds(10000), cada, {}});
        std::string recusa;
        std::int32_t espera = 0;
        auto sessao = servicos->Entra(usuario, "senha de " + usuario, "estação remota", recusa, espera);
        EXPECT_TRUE(sessao) << recusa;
        return sessao;
    }
    std::int32_t Povoa(const Ref<mesa::SessaoServico> &sessao)
    {
        return IncluiComSensores(sessao, {{AfericaoDe("C-1", DataDe(1, 1, 2026), DataDe(31, 12, 2026))}});
    }

    QTemporaryDir Pasta;
    RegistroDeTeste Registro;
    std::optional<servidor::Servidor> Um;
};

// What the operation comes to, with its marks.
std::string Resultado(const Ref<mesa::SessaoServico> &sessao, const std::string &metodo, const Ref<Objeto> &pedido,
                      const std::string &classe = "EquiptoRN")
{
    Ref<Objeto> objeto = pedido;
    Valor retorno;
    std::string recusa;
    if (!sessao->Executa(classe, metodo, objeto, retorno, recusa)) {
        return "recusa: " + recusa;
    }
    if (!retorno.EhObjeto() || retorno.ComoObjeto().Nada()) {
        return "nada";
    }
    const auto registro = retorno.Como<::Registro>();
    return registro->Texto() + " " + std::to_string(registro->VersaoLida);
}

} // namespace

TEST_F(ServidorRealTeste, WhatIsAsked_IsAnsweredAsByTheFile)
{
    Comeca(false);
    EXPECT_EQ(rede::DigitalDoServidor(Onde()), Um->Digital());
    const auto la = Sessao("ana");
    const std::int32_t numero = Povoa(la);
    const auto aqui = Registro.Sessao("ana");

    EXPECT_EQ(la->Operador().Numero, aqui->Operador().Numero);
    EXPECT_EQ(la->Operador().Cliente, aqui->Operador().Cliente);
    EXPECT_EQ(la->DeveTrocarSenha(), aqui->DeveTrocarSenha());
    for (const char *acao : {"", "I", "A", "E", "X"}) {
        EXPECT_EQ(la->TemPermissao("VOR", "EQUIPAMENTO", acao), aqui->TemPermissao("VOR", "EQUIPAMENTO", acao)) << acao;
    }
    ASSERT_EQ(la->Clientes().size(), 1u);
    EXPECT_EQ(la->Clientes()[0].Nome, aqui->Clientes()[0].Nome);
    EXPECT_EQ(la->Clientes()[0].Setores, aqui->Clientes()[0].Setores);

    auto vigente = Novo<ConsultaAfericaoED>();
    vigente->NroIntEquip = numero;
    vigente->TipoConsulta = std::int16_t{1};
    for (const Data dia : {DataDe(1, 6, 2026), DataDe(1, 6, 2025), Data{1e300}}) {
        vigente->DtInfracao = dia;
        EXPECT_EQ(Resultado(la, "consultaSimplesAfericaoVigente", vigente),
                  Resultado(aqui, "consultaSimplesAfericaoVigente", vigente));
    }
    const auto lista = Novo<ListaEquiptoED>();
    for (const auto &[metodo, pedido, classe] : std::vector<std::tuple<std::string, Ref<Objeto>, std::string>>{
             {"consulta", SoNumero(numero), "EquiptoRN"},
             {"consulta", SoNumero(999), "EquiptoRN"},
             {"consulta", Novo<AfericaoED>(), "EquiptoRN"},
             {"lista2", lista, "EquiptoRN"},
             {"inclui", EquipamentoDe("R-001"), "EquiptoRN"},
             {"altera", SoNumero(numero), "EquiptoRN"},
             {"desativa", SoNumero(numero), "EquiptoRN"},
             {"voa", SoNumero(numero), "EquiptoRN"},
             {"consultaPainel", Novo<mesa::PainelPrazosED>(), "PrazosRN"},
             {"consultaPainel", Com(Novo<mesa::PainelPrazosED>(), &mesa::PainelPrazosED::Agrupa, 2), "PrazosRN"},
             {"listaPrazos", Novo<mesa::ListaPrazosED>(), "PrazosRN"},
             {"listaPrazos", Com(Novo<mesa::ListaPrazosED>(), &mesa::ListaPrazosED::Estado, 77), "PrazosRN"},
             {"confereDocumentos", Novo<mesa::DocumentosPrazosED>(), "PrazosRN"},
             {"listaUsuarios", Novo<mesa::ListaUsuariosED>(), "AdministracaoRN"}}) {
        EXPECT_EQ(Resultado(la, metodo, pedido, classe), Resultado(aqui, metodo, pedido, classe)) << metodo;
    }

    auto danificado = Com(Novo<mesa::DocumentoPrazoED>(), &mesa::DocumentoPrazoED::NroIntEquip, numero,
                          &mesa::DocumentoPrazoED::NroIntImgCertif, 1);
    const auto pedido = Novo<mesa::PainelPrazosED>();
    const auto painel = [&] { return Resultado(la, "consultaPainel", pedido, "PrazosRN"); };
    const std::string um = "Equipamentos=1, NaoContados=0, Contagens=[ContagemPrazoED{Grupo=\"\", Estado=";
    EXPECT_NE(painel().find(um + "3, Quantos=1}]"), std::string::npos) << painel();
    pedido->Danificados = Novo<Colecao<Ref<mesa::DocumentoPrazoED>>>();
    pedido->Danificados.Valor()->Add(danificado);
    EXPECT_NE(painel().find(um + "8, Quantos=1}]"), std::string::npos) << painel();

    const double afericao = Abre(aqui, numero)->Sensores.Valor()->Item(1)->Afericoes.Valor()->Item(1)->NroIntAfericao;
    std::vector<mesa::VersaoAfericao> daqui;
    std::vector<mesa::VersaoAfericao> dela;
    std::string recusa;
    ASSERT_TRUE(aqui->VersoesDaAfericao(afericao, daqui, recusa));
    ASSERT_TRUE(la->VersoesDaAfericao(afericao, dela, recusa)) << recusa;
    ASSERT_EQ(dela.size(), daqui.size());
    EXPECT_EQ(dela[0].Registro->Texto(), daqui[0].Registro->Texto());
    EXPECT_EQ(dela[0].Quando, daqui[0].Quando);
    EXPECT_EQ(dela[0].Quem, daqui[0].Quem);
    mesa::EquipamentoConhecido conhecidoLa;
    mesa::EquipamentoConhecido conhecidoAqui;
    ASSERT_TRUE(la->ComoConhecido(numero, {DataDe(20, 11, 2026, 11, 0, 0)}, conhecidoLa, recusa)) << recusa;
    ASSERT_TRUE(aqui->ComoConhecido(numero, {DataDe(20, 11, 2026, 11, 0, 0)}, conhecidoAqui, recusa));
    EXPECT_EQ(conhecidoLa.Registro->Texto(), conhecidoAqui.Registro->Texto());
    EXPECT_EQ(conhecidoLa.Ressalva, conhecidoAqui.Ressalva);
    EXPECT_EQ(la->AfericoesDoDocumentoDa(afericao).size(), aqui->AfericoesDoDocumentoDa(afericao).size());

    std::string codigosLa;
    std::string codigosAqui;
    const auto replicadoLa = la->LeReplica(0, [&](const mesa::LinhaReplica &linha) { codigosLa += linha.Codigo; });
    const auto replicadoAqui =
        aqui->LeReplica(0, [&](const mesa::LinhaReplica &linha) { codigosAqui += linha.Codigo; });
    EXPECT_EQ(codigosLa, "R-001");
    EXPECT_EQ(codigosLa, codigosAqui);
    EXPECT_EQ(replicadoLa.Quantas, replicadoAqui.Quantas);
    EXPECT_EQ(replicadoLa.Ate, replicadoAqui.Ate);
    EXPECT_EQ(replicadoLa.Elo, replicadoAqui.Elo);
    EXPECT_NE(replicadoLa.Elo, "");
    const auto nada = la->LeReplica(replicadoLa.Ate, [](const mesa::LinhaReplica &) { ADD_FAILURE(); });
    EXPECT_EQ(nada.Quantas, 0);
    EXPECT_EQ(nada.EloDeAntes, replicadoLa.Elo);
}

TEST_F(ServidorRealTeste, CheckAndHead_AreThoseOfTheFile_ForWhoHasTheRight)
{
    Comeca();
    Povoa(Sessao("ana"));
    const auto dela = ComoTipo<rede::SessaoDeServidor>(Sessao("marta"));
    EXPECT_EQ(dela->PreparaConferencia({})({}).Como, mesa::ResultadoDaConferencia::Desfecho::Inteira);
    const mesa::CabecaAssinada cabeca = dela->Cabeca();
    EXPECT_TRUE(cabeca.AssinaturaVale());
    EXPECT_EQ(cabeca.Registro, Registro.Aberto().Identificador());

    Registro.Sql("UPDATE USUARIO SET Nome = 'Outra' WHERE Usuario = 'bruno'");
    const auto aqui = mesa::Conferidor(Registro.Caminho()).Confere();
    const auto la = dela->PreparaConferencia({})({});
    EXPECT_EQ(la.Como, mesa::ResultadoDaConferencia::Desfecho::ComAchados);
    EXPECT_EQ(la.Achados, aqui.Achados);
    // There the server looks as the role that it works as.
    auto avisos = aqui.Avisos;
    if (mesa::DialetoPostgres::Reconhece(Registro.Caminho())) {
        avisos.emplace_back("As guardas do banco de dados não foram conferidas, porque o usuário da ligação não pode "
                            "fazer outras ao lado para comparar: confira o registro também como o dono dele.");
    }
    EXPECT_EQ(la.Avisos, avisos);
    EXPECT_EQ(la.Frase, aqui.Frase);

    const auto ana = ComoTipo<rede::SessaoDeServidor>(Sessao("ana"));
    EXPECT_THROW(ana->PreparaConferencia({})({}), Falha);
    EXPECT_THROW(ana->Cabeca(), Falha);
}

TEST_F(ServidorRealTeste, CorrectionOfACalibration_AsksForTheReasonAsOnTheFile)
{
    Comeca();
    const auto la = Sessao("ana");
    const std::int32_t numero = Povoa(la);
    const auto corrige = [&](const std::string &marca) {
        const auto equipamento = Abre(la, numero);
        const auto sensor = equipamento->Sensores.Valor()->Item(1);
        const auto pedido =
            Poe(SoNumero(numero),
                Poe(SoSensor(sensor->NroIntSensor),
                    Com(SoAfericao(sensor->Afericoes.Valor()->Item(1)->NroIntAfericao), &AfericaoED::Marca, marca)));
        return Pede(la, "altera", pedido).Recusa;
    };
    EXPECT_EQ(corrige("55"), "A correção da aferição C-1 do sensor 1 não foi gravada: nenhum motivo foi dado.");
    std::string perguntado;
    std::optional<std::string> dado = "abc";
    la->PerguntaMotivo([&](const std::string &oQue) {
        perguntado = oQue;
        return dado;
    });
    EXPECT_EQ(corrige("55"), "A correção da aferição C-1 do sensor 1 não foi gravada: o motivo precisa ter de 5 a 500 "
                             "caracteres; veio com 3.");
    EXPECT_EQ(perguntado, "Esta gravação corrige a aferição C-1 do sensor 1.");
    dado = "erro de digitação";
    EXPECT_EQ(corrige("55"), "");
    EXPECT_EQ(Registro.Sql("SELECT Marca FROM AFERICAO"), "55");
    EXPECT_EQ(Registro.Sql("SELECT Motivo FROM HISTORICO WHERE Motivo IS NOT NULL ORDER BY Nro DESC LIMIT 1"),
              "erro de digitação");
}

TEST_F(ServidorRealTeste, CutConnections_AtManyPlaces_StoreEachActOnce)
{
    Comeca();
    Tubo tubo(Um->Porta());
    const auto la = Sessao("ana", tubo.Porta());
    int incluidos = 0;
    const auto inclui = [&] {
        const Retorno retorno = Pede(la, "inclui", EquipamentoDe("R-" + std::to_string(100 + incluidos)));
        ASSERT_TRUE(retorno.Feita) << retorno.Recusa;
        ++incluidos;
    };
    int guardados = 0;
    const auto guarda = [&] {
        GuardaPdf(la, "documento " + std::to_string(guardados), 40000);
        ++guardados;
    };
    int cortes = 0;
    for (const auto &ato : std::vector<std::function<void()>>{inclui, guarda}) {
        for (const auto sentido : {Tubo::Sentido::Ida, Tubo::Sentido::Volta}) {
            tubo.CortaEm(sentido, -1);
            ato();
            const std::int64_t todos = tubo.Passaram(sentido);
            for (int n = 0; n < 6; ++n) {
                tubo.CortaEm(sentido, todos * n / 6);
                ato();
                cortes += tubo.Cortou() ? 1 : 0;
            }
        }
    }
    EXPECT_GT(cortes, 20);
    EXPECT_EQ(Registro.Sql("SELECT COUNT(*) FROM EQUIPAMENTO"), std::to_string(incluidos));
    EXPECT_EQ(Registro.Sql("SELECT COUNT(*) FROM DOCUMENTO"), std::to_string(guardados));
}

// Everything that is asked and changes nothing, but for what begins and ends a session. A check, which may take long,
// is not made again by itself: whoever asked for it hears that the connection fell.
TEST_F(ServidorRealTeste, CutConnections_InTheMiddleOfEachQuestion_AreAnsweredWhole)
{
    Registro.Cadastra("saulo");
    const auto aqui = Registro.Sessao("saulo");
    const double documento = GuardaPdf(aqui, "certificado", 20000);
    const std::int32_t numero =
        IncluiComSensores(aqui, {{AfericaoDe("C-1", DataDe(1, 1, 2026), DataDe(31, 12, 2026), documento)}});
    Registro.IncluiRua("Rua Bento Gonçalves");
    Registro.IncluiLayout("LAYOUT 1");
    Exigido(Pede(aqui, "alteraListaLimitesDif", ListaDeLimites({LimiteDe(numero, 1, 0, 2359)})));
    Exigido(Pede(aqui, "adicionaDiaEspecifico", DiaDe(numero, DataDe(25, 12, 2026), 0, 2359)));
    const double afericao = Abre(aqui, numero)->Sensores.Valor()->Item(1)->Afericoes.Valor()->Item(1)->NroIntAfericao;
    const auto vigente = Com(Com(Novo<ConsultaAfericaoED>(), &ConsultaAfericaoED::NroIntEquip, numero,
                                 &ConsultaAfericaoED::TipoConsulta, std::int16_t{1}),
                             &ConsultaAfericaoED::DtInfracao, DataDe(1, 6, 2026));
    const auto certificado = Com(Novo<RelatorioAfericaoED>(), &RelatorioAfericaoED::CodOat,
                                 static_cast<std::int32_t>(afericao), &RelatorioAfericaoED::Serie, "R-001");

    Comeca();
    Tubo tubo(Um->Porta());
    const auto la = Sessao("saulo", tubo.Porta());
    std::string recusa;
    int vez = 0;
    using Pergunta = std::function<std::string()>;
    const auto operacao = [&](const std::string &classe, const std::string &metodo, const Ref<Objeto> &pedido) {
        return std::pair(classe + "." + metodo, Pergunta([=] { return Resultado(la, metodo, pedido, classe); }));
    };
    const auto comDocumento = [](const std::vector<mesa::AfericaoComDocumento> &afericoes) {
        return afericoes.empty() ? "nenhuma" : afericoes[0].Equipamento + " " + afericoes[0].Certificado;
    };
    const std::map<std::string, Pergunta> perguntas{
        operacao("EquiptoRN", "consulta", SoNumero(numero)),
        operacao("EquiptoRN", "consultaSimples", SoNumero(numero)),
        operacao("EquiptoRN", "lista2", Novo<ListaEquiptoED>()),
        operacao("EquiptoRN", "consultaSimplesAfericaoVigente", vigente),
        operacao("EquiptoRN", "listaLimiteDif", Com(Novo<LimiteDifED>(), &LimiteDifED::NroIntEquip, numero)),
        operacao("EquiptoRN", "listaDiaEspecifico",
                 Com(Novo<DiaEspecificoED>(), &DiaEspecificoED::NroIntEquip, numero)),
        operacao("EquiptoRN", "consultaSimplesLimiteDif", SoLimite(1)),
        operacao("EquiptoRN", "consultaSimplesDiaEspecifico", SoDia(1)),
        operacao("RelatorioRN", "consultaRelatorioRVOR011", certificado),
        operacao("PrazosRN", "consultaPainel", Novo<mesa::PainelPrazosED>()),
        operacao("PrazosRN", "listaPrazos", Novo<mesa::ListaPrazosED>()),
        operacao("PrazosRN", "confereDocumentos", Novo<mesa::DocumentosPrazosED>()),
        operacao("AdministracaoRN", "listaUsuarios", Novo<mesa::ListaUsuariosED>()),
        operacao("AdministracaoRN", "consultaUsuario", Com(Novo<mesa::UsuarioED>(), &mesa::UsuarioED::Numero, 11)),
        operacao("AdministracaoRN", "listaEntradasRecusadas", Novo<mesa::ListaEntradasED>()),
        operacao("AdministracaoRN", "listaClientes", Novo<mesa::ListaClientesED>()),
        operacao("AdministracaoRN", "listaLogradouros",
                 Com(Novo<mesa::ListaLogradourosED>(), &mesa::ListaLogradourosED::CodMunic, 4314902)),
        operacao("AdministracaoRN", "listaLayouts", Novo<mesa::ListaLayoutsED>()),
        {"Entrada.TemPermissao",
         [&] { // a right that was asked for a moment ago is not asked for again
             return la->TemPermissao("VOR", "EQUIPAMENTO " + std::to_string(++vez), "I") ? "sim" : "não";
         }},
        {"Entrada.Situacao", [&] { return la->DeveTrocarSenha() ? "deve trocar" : "não deve trocar"; }},
        {"Documentos.Le",
         [&] {
             Bytes lido;
             return la->LeDocumento(documento, lido, recusa) ? std::string(lido.begin(), lido.end()) : recusa;
         }},
        {"Documentos.Afericoes", [&] { return comDocumento(la->AfericoesDoDocumento(documento)); }},
        {"Historia.VersoesDaAfericao",
         [&] {
             std::vector<mesa::VersaoAfericao> versoes;
             return la->VersoesDaAfericao(afericao, versoes, recusa) ? versoes.at(0).Registro->Texto() : recusa;
         }},
        {"Historia.ComoConhecido",
         [&] {
             mesa::EquipamentoConhecido conhecido;
             return la->ComoConhecido(numero, {DataDe(20, 11, 2026, 11, 0, 0)}, conhecido, recusa)
                        ? conhecido.Registro->Texto()
                        : recusa;
         }},
        {"Replica.Clientes", [&] { return la->Clientes().at(0).Nome; }},
        {"Replica.Le",
         [&] {
             std::string linhas;
             const auto lida = la->LeReplica(0, [&](const mesa::LinhaReplica &linha) { linhas += linha.Codigo + " "; });
             return linhas + lida.Elo;
         }},
        {"Conferencia.Confere",
         [&] {
             const auto ate = std::chrono::steady_clock::now() + std::chrono::seconds(60);
             for (;;) {
                 try {
                     return ComoTipo<rede::SessaoDeServidor>(la)->PreparaConferencia({})({}).Frase;
                 } catch (const Falha &falha) {
                     // The one that was cut ends when the server has noticed.
                     const bool cortada = falha.Descricao.find("a conexão caiu") != std::string::npos;
                     if (!cortada) {
                         EXPECT_EQ(falha.Descricao,
                                   "ocupado: o registro já está sendo conferido. Tente de novo daqui a pouco.");
                     }
                     if (testing::Test::HasFailure() || std::chrono::steady_clock::now() > ate) {
                         throw;
                     }
                 }
             }
         }},
        {"Conferencia.Cabeca", [&] { return ComoTipo<rede::SessaoDeServidor>(la)->Cabeca().Registro; }},
    };

    std::set<std::string> todas;
    const auto *arquivo = registro::v1::Vazio::descriptor()->file();
    for (int s = 0; s < arquivo->service_count(); ++s) {
        for (int m = 0; m < arquivo->service(s)->method_count(); ++m) {
            const auto *metodo = arquivo->service(s)->method(m);
            if (!metodo->options().GetExtension(registro::v1::Muda)) {
                todas.insert(arquivo->service(s)->name() + "." + metodo->name());
            }
        }
    }
    std::set<std::string> tentadas{"Entrada.Apresenta", "Entrada.Entra", "Entrada.Sai"};
    for (const auto &[nome, pergunta] : perguntas) {
        tentadas.insert(nome);
        const std::string resposta = pergunta();
        EXPECT_TRUE(resposta != "nada" && !resposta.starts_with("recusa")) << nome << ": " << resposta;
        for (const auto sentido : {Tubo::Sentido::Ida, Tubo::Sentido::Volta}) {
            tubo.CortaEm(sentido, -1);
            EXPECT_EQ(pergunta(), resposta) << nome;
            const std::int64_t todos = tubo.Passaram(sentido);
            int cortes = 0;
            for (int n = 1; n < 3; ++n) {
                tubo.CortaEm(sentido, todos * n / 3);
                EXPECT_EQ(pergunta(), resposta) << nome << " cut at " << n << " thirds";
                cortes += tubo.Cortou() ? 1 : 0;
            }
            EXPECT_GT(cortes, 0) << nome << " was not cut";
        }
    }
    EXPECT_EQ(tentadas, todas);
}

// Neither would come through if all of it had to within the time of one try.
TEST_F(ServidorRealTeste, Documents_OverASlowLine_ArriveAndTellHowFarTheyAre)
{
    Comeca();
    constexpr std::int64_t porSegundo = 1'000'000;
    Tubo tubo(Um->Porta(), porSegundo);
    const auto la = Sessao("ana", tubo.Porta(), milliseconds(3000));
    const Bytes documento = Pdf("certificado", 4 << 20);
    std::vector<double> partes;
    la->Acompanha([&](double parte, const std::string &) {
        partes.push_back(parte);
        return true;
    });
    const auto crescem = [&] {
        const std::size_t vistas = std::set<double>(partes.begin(), partes.end()).size();
        return std::is_sorted(partes.begin(), partes.end()) ? vistas : 0;
    };
    double numero = 0;
    std::string recusa;
    ASSERT_TRUE(la->GuardaDocumento(documento, numero, recusa)) << recusa;
    EXPECT_GT(crescem(), 5u);
    partes.clear();
    Bytes lido;
    ASSERT_TRUE(la->LeDocumento(numero, lido, recusa)) << recusa;
    EXPECT_EQ(lido, documento);
    EXPECT_GT(crescem(), 5u);
    EXPECT_FALSE(tubo.Cortou());
}

TEST_F(ServidorRealTeste, ServerReplaced_TheSessionIsOver_AndASignInGoesOn)
{
    Comeca();
    const auto onde = Onde();
    const auto servicos =
        rede::Conecta(onde, {Um->Digital(), ""}, "teste", {milliseconds(3000), milliseconds(3000), {}});
    std::string recusa;
    std::int32_t espera = 0;
    auto sessao = servicos->Entra("ana", "senha de ana", "aqui", recusa, espera);
    ASSERT_TRUE(sessao) << recusa;
    Um.reset();
    Comeca(true, onde.Texto());
    try {
        EXPECT_EQ(Resultado(sessao, "lista2", Novo<ListaEquiptoED>()), "uma falha");
    } catch (const Falha &falha) {
        EXPECT_EQ(falha.Numero, NumeroFalha::PermissaoNegada);
        EXPECT_EQ(falha.Descricao, "A sessão com o servidor terminou.");
    }
    sessao = servicos->Entra("ana", "senha de ana", "aqui", recusa, espera);
    ASSERT_TRUE(sessao) << recusa;
    EXPECT_EQ(Resultado(sessao, "lista2", Novo<ListaEquiptoED>()), "ListaEquiptoED{ProxNroIntEquip=0} 0");
}

TEST_F(ServidorRealTeste, WrongPassword_IsRefusedInTheServersWords)
{
    Comeca();
    const auto servicos =
        rede::Conecta(Onde(), {Um->Digital(), ""}, "teste", {milliseconds(3000), milliseconds(3000), {}});
    std::string la;
    std::string aqui;
    std::int32_t espera = 0;
    EXPECT_TRUE(servicos->Entra("ana", "não é essa", "aqui", la, espera).Nada());
    EXPECT_TRUE(Registro.Aberto().Entra("bruno", "não é essa", "aqui", aqui, espera).Nada());
    EXPECT_EQ(la, aqui);
    EXPECT_NE(la, "");
    EXPECT_EQ(servicos->Identificador(), Registro.Aberto().Identificador());
    EXPECT_EQ(servicos->Tipo(), Registro.Aberto().Tipo());
}

namespace {

// The example of another system, run as somebody would.
class ExemploTeste : public ServidorRealTeste {
  protected:
    struct Rodado {
        int Fim = -1;
        std::string Saida;
        std::string Erro;
    };
    Rodado Roda(const QStringList &argumentos, const QString &senha = "senha de ana")
    {
        QProcess processo;
        QProcessEnvironment ambiente = QProcessEnvironment::systemEnvironment();
        ambiente.insert("REGISTRO_SENHA", senha);
        ambiente.insert("PYTHONIOENCODING", "utf-8");
        ambiente.insert("XDG_CONFIG_HOME", Pasta.filePath("config"));
        ambiente.insert("PYTHONDONTWRITEBYTECODE", "1");
        processo.setProcessEnvironment(ambiente);
        processo.start("/usr/bin/python3", QStringList{m_Programa} + argumentos);
        EXPECT_TRUE(processo.waitForFinished(60000)) << processo.errorString().toStdString();
        return {processo.exitCode(), processo.readAllStandardOutput().toStdString(),
                processo.readAllStandardError().toStdString()};
    }
    // As it is installed: with the contract beside it, and no sources around.
    void Instala()
    {
        const QString pasta = Pasta.filePath("instalado");
        ASSERT_TRUE(QDir().mkpath(pasta));
        ASSERT_TRUE(QFile::copy(m_Programa, pasta + "/consulta_afericao.py"));
        ASSERT_TRUE(QFile::copy("server/proto/registro.proto", pasta + "/registro.proto"));
        m_Programa = pasta + "/consulta_afericao.py";
    }
    QStringList Argumentos(const QString &dia = "01/06/2026", const QString &codigo = "r-001")
    {
        return {"--servidor",    QString::fromStdString(Onde().Texto()),
                "--usuario",     "ana",
                "--equipamento", codigo,
                "--dia",         dia,
                "--digital",     QString::fromStdString(Um->Digital())};
    }

  private:
    QString m_Programa = "docs/exemplos/rede/consulta_afericao.py";
};

} // namespace

TEST_F(ExemploTeste, Asks_ForTheCalibrationOfADay_AndFetchesItsCertificate)
{
    Comeca(false);
    const auto la = Sessao("ana");
    const auto numero = Povoa(la);
    const double documento = Abre(la, numero)->Sensores.Valor()->Item(1)->Afericoes.Valor()->Item(1)->NroIntImgCertif;
    Bytes guardado;
    std::string recusa;
    ASSERT_TRUE(la->LeDocumento(documento, guardado, recusa)) << recusa;

    const QString arquivo = Pasta.filePath("certificado.pdf");
    const Rodado rodado = Roda(Argumentos() << "--saida" << arquivo);
    EXPECT_EQ(rodado.Erro, "");
    EXPECT_EQ(rodado.Fim, 0);
    EXPECT_EQ(rodado.Saida, "Em 01/06/2026, a aferição vigente do equipamento R-001 era a de número C-1, certificado "
                            "987, de 01/01/2026 a 31/12/2026.\nCertificado gravado em " +
                                arquivo.toStdString() + " (" + std::to_string(guardado.size()) + " octetos).\n");
    QFile lido(arquivo);
    ASSERT_TRUE(lido.open(QIODevice::ReadOnly));
    const QByteArray octetos = lido.readAll();
    EXPECT_EQ(Bytes(octetos.begin(), octetos.end()), guardado);
}

TEST_F(ExemploTeste, WhatGoesWrong_IsToldInWords)
{
    Comeca(false);
    Povoa(Sessao("ana"));
    const auto erro = [&](const QStringList &argumentos, const QString &senha = "senha de ana") {
        const Rodado rodado = Roda(argumentos, senha);
        EXPECT_EQ(rodado.Fim, 1) << rodado.Saida;
        EXPECT_EQ(rodado.Saida, "");
        return rodado.Erro;
    };
    EXPECT_EQ(erro(Argumentos("01/06/2025")), "Em 01/06/2025, o equipamento R-001 não tinha uma aferição vigente.\n");
    EXPECT_EQ(erro(Argumentos("01/06/2026", "X-9")), "Não há equipamento de código X-9 no cliente deste usuário.\n");
    EXPECT_NE(erro(Argumentos(), "outra").find("senha"), std::string::npos);
    QStringList outra = Argumentos();
    outra.last() = "AA:BB";
    EXPECT_EQ(erro(outra), "O servidor não é o que se espera: o certificado que ele mostra é outro.\n");
    // A name that begins like this machine's number is another machine, to which no password goes in clear.
    QStringList semDigital = Argumentos();
    semDigital[1] = "127.exemplo.invalid:50443";
    semDigital.resize(semDigital.size() - 2);
    EXPECT_EQ(erro(semDigital),
              "Informe a digital do certificado do servidor, ou o arquivo da autoridade que o emitiu.\n");
    QStringList semNinguem = Argumentos();
    semNinguem[1] = "127.0.0.1:1";
    EXPECT_TRUE(erro(semNinguem).starts_with("Não se chegou ao servidor 127.0.0.1:1"));
}

TEST_F(ExemploTeste, WordsOfTheSystemAndOfLibraries_AreNotShown)
{
    Comeca(false);
    const auto erro = [&](const QStringList &argumentos, int fim = 1) {
        const Rodado rodado = Roda(argumentos);
        EXPECT_EQ(rodado.Fim, fim) << rodado.Saida;
        return rodado.Erro;
    };
    const std::string sem = erro({}, 2);
    EXPECT_TRUE(sem.starts_with("uso: consulta_afericao.py [-h] --servidor")) << sem;
    EXPECT_TRUE(sem.ends_with("consulta_afericao.py: falta informar --servidor, --usuario, --equipamento, --dia.\n"))
        << sem;
    EXPECT_TRUE(erro(Argumentos("ontem"), 2).ends_with(".py: --dia: informe o dia como dd/mm/aaaa.\n"));
    EXPECT_TRUE(erro(Argumentos() << "--outra", 2).ends_with(".py: não há a opção --outra.\n"));
    EXPECT_TRUE(erro(Argumentos() << "--saida", 2).ends_with(".py: --saida: falta o valor.\n"));
    const std::string ajuda = Roda({"--help"}).Saida;
    EXPECT_NE(ajuda.find("\nopções:\n  -h, --help "), std::string::npos) << ajuda;
    EXPECT_NE(ajuda.find("mostra esta ajuda e termina"), std::string::npos) << ajuda;

    const QString nada = Pasta.filePath("nada");
    EXPECT_EQ(erro(Argumentos() << "--autoridade" << nada),
              "O arquivo da autoridade " + nada.toStdString() + " não pôde ser lido: não existe.\n");
    EXPECT_EQ(erro(Argumentos() << "--contrato" << nada),
              "O contrato " + nada.toStdString() + " não pôde ser lido: não existe.\n");
    EXPECT_EQ(erro(Argumentos() << "--contrato"
                                << "docs/network.md"),
              "O contrato docs/network.md não pôde ser lido: não é o do registro.\n");
    EXPECT_EQ(erro(Argumentos() << "--estacao"
                                << "docs/network.md/estacao"),
              "A identificação desta estação não pôde ser guardada em docs/network.md/estacao: o caminho passa por um "
              "arquivo.\n");
    QStringList semNinguem = Argumentos();
    semNinguem[1] = "127.0.0.1:1";
    EXPECT_EQ(erro(semNinguem), "Não se chegou ao servidor 127.0.0.1:1: ninguém atende lá.\n");
}

// Told in the status of the call alone.
TEST_F(ExemploTeste, SessionThatEnded_IsToldInTheServersWords)
{
    QProcess processo;
    processo.start("/usr/bin/python3", {"-B", "-c", R"(import sys
sys.path.insert(0, "docs/exemplos/rede")
import grpc, consulta_afericao
class Fim:
    def code(self): return grpc.StatusCode.UNAUTHENTICATED
    def details(self): return self.frase
    def trailing_metadata(self): return ()
fim = Fim()
for fim.frase in ("A sess\u00e3o terminou por falta de uso.", ""):
    sys.stdout.buffer.write((consulta_afericao.em_palavras(fim) + "\n").encode())
)"});
    ASSERT_TRUE(processo.waitForFinished(60000)) << processo.errorString().toStdString();
    EXPECT_EQ(processo.readAllStandardOutput().toStdString(),
              "A sessão terminou por falta de uso.\nA sessão com o servidor terminou.\n");
}

TEST_F(ExemploTeste, TwoAtATime_AreToldFromNone)
{
    Comeca(false);
    const auto la = Sessao("ana");
    IncluiComSensores(la, {{AfericaoDe("C-1", DataDe(1, 1, 2026), DataDe(31, 12, 2026))},
                           {AfericaoDe("C-2", DataDe(1, 6, 2026), DataDe(31, 5, 2027))}});
    EXPECT_EQ(Roda(Argumentos("31/05/2026")).Fim, 0);
    EXPECT_EQ(Roda(Argumentos("01/06/2026")).Erro,
              "Em 01/06/2026, o equipamento R-001 tinha 2 aferições, e nenhuma é a vigente: C-1, C-2.\n");
    EXPECT_EQ(Roda(Argumentos("31/12/2026")).Erro,
              "Em 31/12/2026, o equipamento R-001 tinha 2 aferições, e nenhuma é a vigente: C-1, C-2.\n");
    EXPECT_EQ(Roda(Argumentos("01/06/2027")).Erro,
              "Em 01/06/2027, o equipamento R-001 não tinha uma aferição vigente.\n");
}

TEST_F(ExemploTeste, Installed_FindsItsContract_AndIsTheSameStationEachTime)
{
    Comeca(false);
    Povoa(Sessao("ana"));
    Instala();
    EXPECT_EQ(Roda(Argumentos()).Fim, 0);
    EXPECT_EQ(Roda(Argumentos()).Fim, 0);
    QFile guardada(Pasta.filePath("config/registro-de-equipamentos/estacao-da-consulta"));
    ASSERT_TRUE(guardada.open(QIODevice::ReadOnly));
    EXPECT_EQ(guardada.permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    const std::string estacao = guardada.readAll().toStdString();
    EXPECT_EQ(estacao.size(), 32u);
    EXPECT_EQ(Registro.Sql("SELECT COUNT(*) FROM ESTACAO WHERE Estacao = '" + estacao + "'"), "1");
    EXPECT_EQ(Registro.Sql("SELECT COUNT(*) FROM ESTACAO"), "2"); // and that of the session that filled the registry
}
