// How equipment stands by the deadlines of their calibrations, against a count of every day.
#include "host/ConsultaAfericaoED.h"
#include "services/Calendario.h"
#include "services/CalendarioDePrazos.h"
#include "services/Dialetos.h"
#include "services/LeituraDePrazos.h"
#include "services/Prazos.h"
#include "services/PrazosED.h"
#include "services/ServicoDocumentos.h"
#include "services/ServicoEquipamentos.h"
#include "services/ServicoPrazos.h"
#include "tests/services/ServicosTeste.h"

#include <algorithm>
#include <array>
#include <map>
#include <numeric>
#include <random>
#include <string>
#include <utility>
#include <vector>

using namespace mesa;

namespace {

constexpr const char *Classe = "PrazosRN";

class Sorte {
  public:
    explicit Sorte(unsigned semente) : m_Gerador(semente) {}
    // From 0 to n - 1.
    int Ate(int n) { return static_cast<int>(m_Gerador() % static_cast<unsigned>(n)); }
    bool UmaEm(int n) { return Ate(n) == 0; }

  private:
    std::mt19937 m_Gerador;
};

// Days are counted here from the first one of all.
Data DiaContado(int dia)
{
    return DataDe(1, 1, 2024).MaisDias(dia);
}

std::int32_t Civil(int dia)
{
    return DiaCivil(DiaContado(dia));
}

struct AfericaoContada {
    int De;
    int Ate;
    bool ComDocumento;
};
using Historia = std::vector<AfericaoContada>;

// Periods with no day in common, some of them next to each other.
Historia HistoriaAoAcaso(Sorte &sorte, int maior)
{
    Historia historia;
    int dia = sorte.Ate(maior);
    for (int n = sorte.Ate(5); n > 0; --n) {
        const int ate = dia + sorte.Ate(maior);
        historia.push_back({dia, ate, !sorte.UmaEm(6)});
        dia = ate + 1 + (sorte.UmaEm(2) ? 0 : sorte.Ate(maior / 2));
    }
    return historia;
}

// By looking at each day by itself: which calibrations of active sensors have it.
int NumeroDoEstado(const std::vector<Historia> &sensores, int hoje, int &vence)
{
    std::vector<int> doDia; // last days of those that have today
    std::vector<int> semDocumento;
    int acabou = -1;
    bool vem = false;
    for (const Historia &historia : sensores) {
        for (const AfericaoContada &uma : historia) {
            bool tem = false;
            for (int dia = uma.De; dia <= uma.Ate; ++dia) {
                tem = tem || dia == hoje;
                acabou = dia == uma.Ate && dia < hoje ? std::max(acabou, dia) : acabou;
                vem = vem || (dia == uma.De && dia > hoje);
            }
            if (tem) {
                (uma.ComDocumento ? doDia : semDocumento).push_back(uma.Ate);
            }
        }
    }
    vence = -1;
    if (doDia.size() > 1) {
        vence = *std::ranges::min_element(doDia);
        return 9;
    }
    if (doDia.size() == 1) {
        vence = doDia.front();
        const int restam = vence - hoje;
        return restam > 90 ? 1 : restam > 60 ? 2 : restam > 30 ? 3 : 4;
    }
    if (!semDocumento.empty()) {
        vence = *std::ranges::min_element(semDocumento);
        return 8;
    }
    vence = acabou;
    return acabou < 0 ? 7 : vem ? 6 : 5;
}

TEST(Prazos, DoEquipamento_AtTheBounds_CountsTheLastDayAsItsOwn)
{
    struct Caso {
        std::int32_t Hoje;
        std::int32_t Vence;
        int Estado;
    };
    const std::vector<Caso> casos = {
        {20261120, 20261120, 4}, {20261120, 20261121, 4}, {20261120, 20261219, 4}, {20261120, 20261220, 4},
        {20261120, 20261221, 3}, {20261120, 20270118, 3}, {20261120, 20270119, 3}, {20261120, 20270120, 2},
        {20261120, 20270217, 2}, {20261120, 20270218, 2}, {20261120, 20270219, 1}, {20280228, 20280229, 4},
        {20280229, 20280229, 4}, {20280130, 20280229, 4}, {20280129, 20280229, 3}, {20270128, 20270227, 4},
        {20271231, 20280330, 2}, {20271231, 20280331, 1}, {20261120, 99991231, 1},
    };
    for (const Caso &caso : casos) {
        EXPECT_EQ(static_cast<int>(Prazos::DoEquipamento({1, caso.Vence, true, true, true}, caso.Hoje)), caso.Estado)
            << caso.Hoje << " " << caso.Vence;
        EXPECT_EQ(static_cast<int>(Prazos::DaAfericao({20200101, caso.Vence, true}, caso.Hoje)), caso.Estado)
            << caso.Hoje << " " << caso.Vence;
    }
    EXPECT_EQ(Prazos::FimDosTrechos(20261120), (std::array<std::int32_t, 3>{20261220, 20270119, 20270218}));
    EXPECT_EQ(Prazos::FimDosTrechos(20280130), (std::array<std::int32_t, 3>{20280229, 20280330, 20280429}));
    EXPECT_EQ(Prazos::DiasEntre(20261121, 20261120), -1);
}

TEST(Prazos, DoEquipamento_WithNoneInForceOrMore_IsAsTheRuleSays)
{
    const auto estado = [](const Prazos::Balanco &balanco) {
        return static_cast<int>(Prazos::DoEquipamento(balanco, 20261120));
    };
    EXPECT_EQ(estado({2, 0, true, true, true}), 9);
    EXPECT_EQ(estado({0, 0, true, true, true}), 8);
    EXPECT_EQ(estado({0, 0, false, false, true}), 7);
    EXPECT_EQ(estado({0, 0, false, false, false}), 7);
    EXPECT_EQ(estado({0, 0, false, true, true}), 6);
    EXPECT_EQ(estado({0, 0, false, true, false}), 5);
}

TEST(Prazos, DaAfericao_CountsBothEnds)
{
    EXPECT_EQ(Prazos::DaAfericao({20261120, 20261120, true}, 20261119), EstadoDePrazo::NaoComecou);
    EXPECT_EQ(Prazos::DaAfericao({20261120, 20261120, true}, 20261120), EstadoDePrazo::Em30);
    EXPECT_EQ(Prazos::DaAfericao({20261120, 20261120, false}, 20261120), EstadoDePrazo::SemDocumento);
    EXPECT_EQ(Prazos::DaAfericao({20261120, 20261120, true}, 20261121), EstadoDePrazo::Vencido);
    EXPECT_EQ(Prazos::Estados().size(), 10u);
    EXPECT_EQ(Prazos::Nome(EstadoDePrazo::Em30), "Vence em até 30 dias");
    EXPECT_EQ(Prazos::Nome(EstadoDePrazo::VariasEmVigor), "Mais de uma aferição em vigor");
}

// Each state that an equipment may have is named by the sentence, or told by its days.
TEST(Prazos, Regra_TellsOfEveryState)
{
    for (const char *parte : {"dispensados", "dias até o seu último dia", "Mais de uma aferição em vigor",
                              "sem documento, ou com ele danificado", "nenhuma começou", "outra está por começar",
                              "a última acabou", "somam os equipamentos ativos", "fica à parte"}) {
        EXPECT_NE(Prazos::Regra().find(parte), std::string::npos) << parte;
    }
}

TEST(Instante, NoFuso_IsTheSameMomentByAnotherClock)
{
    const Instante la = Instante(DataDe(20, 11, 2026, 22, 30, 5), -180).NoFuso(0);
    EXPECT_EQ(la.Local, DataDe(21, 11, 2026, 1, 30, 5));
    EXPECT_EQ(la.Fuso, 0);
    EXPECT_EQ(la.NoFuso(-300).Local, DataDe(20, 11, 2026, 20, 30, 5));
    EXPECT_EQ(la.NoFuso(345).Local, DataDe(21, 11, 2026, 7, 15, 5));
}

class ServicosPrazos : public ServicosTeste {
  protected:
    static Ref<PainelPrazosED> Painel(const Ref<SessaoServico> &sessao,
                                      const Ref<PainelPrazosED> &pedido = Novo<PainelPrazosED>())
    {
        return Faz(sessao, "consultaPainel", pedido, Classe).Como<PainelPrazosED>();
    }
    // "1=2 5=1", with the group before where there is one.
    static std::string Contagens(const PainelPrazosED &painel)
    {
        std::string texto;
        const ListaDe<ContagemPrazoED> &lista = painel.Contagens;
        for (std::int32_t n = 1; !lista.Nada() && n <= lista->Count(); ++n) {
            const ContagemPrazoED &uma = *lista->Item(n);
            texto += (texto.empty() ? "" : " ") + uma.Grupo.Valor() + (uma.Grupo.Valor().empty() ? "" : ":") +
                     std::to_string(uma.Estado.Valor()) + "=" + std::to_string(uma.Quantos.Valor());
        }
        return texto;
    }
    std::string Contagens() { return Contagens(*Painel(m_Ana)); }
    static std::int32_t Soma(const PainelPrazosED &painel)
    {
        std::int32_t soma = painel.NaoContados;
        const ListaDe<ContagemPrazoED> &lista = painel.Contagens;
        for (std::int32_t n = 1; !lista.Nada() && n <= lista->Count(); ++n) {
            soma += lista->Item(n)->Quantos;
        }
        return soma;
    }
    // All pages.
    static std::vector<Ref<PrazoED>> Lista(const Ref<SessaoServico> &sessao, const Ref<ListaPrazosED> &pedido)
    {
        std::vector<Ref<PrazoED>> todos;
        for (;;) {
            const auto pagina = Faz(sessao, "listaPrazos", pedido->Copia(), Classe).Como<ListaPrazosED>();
            const ListaDe<PrazoED> &prazos = pagina->Prazos;
            for (std::int32_t n = 1; !prazos.Nada() && n <= prazos->Count(); ++n) {
                todos.push_back(prazos->Item(n));
            }
            if (pagina->TrabFoto.Valor() == 0) {
                return todos;
            }
            pedido->DepoisDe = pagina->DepoisDe.Valor();
            pedido->TrabFoto = pagina->TrabFoto.Valor();
            pedido->ComoEm = pagina->ComoEm.Valor();
        }
    }
    std::vector<Ref<PrazoED>> NoEstado(int estado)
    {
        return Lista(m_Ana, Com(Novo<ListaPrazosED>(), &ListaPrazosED::Estado, static_cast<std::uint8_t>(estado)));
    }
    // "R-1/2/20261201" each, for code, sensor and last day.
    static std::string Textos(const std::vector<Ref<PrazoED>> &prazos)
    {
        std::string texto;
        for (const Ref<PrazoED> &prazo : prazos) {
            texto += (texto.empty() ? "" : " ") + prazo->Codigo.Valor() + "/" +
                     std::to_string(prazo->NroSensor.Valor()) + "/" + std::to_string(DiaCivil(prazo->DataVencimento));
        }
        return texto;
    }
    // An equipment with one sensor and one calibration, which ends on that day.
    std::int32_t VenceEm(const std::string &codigo, Data vence)
    {
        return Inclui(
            m_Ana, Poe(EquipamentoDe(codigo), Poe(SensorDe(1), AfericaoDe("C" + codigo, DataDe(1, 1, 2026), vence))));
    }
    // 0 for none.
    double Vigente(std::int32_t equipamento, Data dia)
    {
        return Faz(m_Ana, "consultaSimplesAfericaoVigente",
                   Com(Com(Novo<ConsultaAfericaoED>(), &ConsultaAfericaoED::TipoConsulta, 1),
                       &ConsultaAfericaoED::NroIntEquip, equipamento, &ConsultaAfericaoED::DtInfracao, dia))
            .Como<AfericaoED>()
            ->NroIntAfericao;
    }
    // All documents in force, each with its equipment, in pages; those that are damaged.
    std::vector<Ref<DocumentoPrazoED>> Danificados(std::int32_t &conferidos, std::int32_t &equipamentos)
    {
        std::vector<Ref<DocumentoPrazoED>> todos;
        auto pedido = Novo<DocumentosPrazosED>();
        conferidos = equipamentos = 0;
        for (;;) {
            const auto pagina = Faz(m_Ana, "confereDocumentos", pedido->Copia(), Classe).Como<DocumentosPrazosED>();
            EXPECT_LE(pagina->Equipamentos.Valor(), ServicoPrazos::EquipamentosPorConferencia);
            conferidos += pagina->Conferidos;
            equipamentos += pagina->Equipamentos;
            const ListaDe<DocumentoPrazoED> &vindos = pagina->Danificados;
            for (std::int32_t n = 1; !vindos.Nada() && n <= vindos->Count(); ++n) {
                todos.push_back(vindos->Item(n));
            }
            if (pagina->TrabFoto.Valor() == 0) {
                return todos;
            }
            pedido->DepoisDe = pagina->DepoisDe.Valor();
            pedido->TrabFoto = pagina->TrabFoto.Valor();
            pedido->ComoEm = pagina->ComoEm.Valor();
        }
    }
    template <class R>
    static Ref<R> ComDanificados(const Ref<R> &pedido, const std::vector<Ref<DocumentoPrazoED>> &quais)
    {
        auto lista = Novo<Colecao<Ref<DocumentoPrazoED>>>();
        for (const Ref<DocumentoPrazoED> &um : quais) {
            lista->Add(um);
        }
        pedido->Danificados = lista;
        return pedido;
    }
    // Calibrations of that number as of an earlier time.
    void TiraDocumento(const std::string &numero)
    {
        m_Registro.Sql("UPDATE AFERICAO SET Versao = Versao + 1, NroIntImgCertif = NULL WHERE Numero = '" + numero +
                       "'");
    }
};

TEST_F(ServicosPrazos, Painel_OfARegistryWithNothing_IsZeroOverZero)
{
    const auto painel = Painel(m_Ana);
    EXPECT_EQ(painel->Equipamentos.Valor(), 0);
    EXPECT_EQ(painel->NaoContados.Valor(), 0);
    EXPECT_FALSE(painel->Contagens.Escrito());
    EXPECT_FALSE(painel->Falhas.Escrito());
    EXPECT_EQ(painel->ComoEm.Valor(), m_Registro.Relogio);
    ASSERT_EQ(painel->Meses.Valor()->Count(), 24);
    EXPECT_EQ(painel->Meses.Valor()->Item(1)->Mes.Valor(), 202611);
    EXPECT_EQ(painel->Meses.Valor()->Item(3)->Mes.Valor(), 202701);
    EXPECT_EQ(painel->Meses.Valor()->Item(24)->Mes.Valor(), 202810);
    EXPECT_EQ(Textos(NoEstado(1)), "");
}

TEST_F(ServicosPrazos, EachBound_IsInItsListAndItsMonth)
{
    VenceEm("hoje", DataDe(20, 11, 2026));
    VenceEm("amanhã", DataDe(21, 11, 2026));
    VenceEm("em 30", DataDe(20, 12, 2026));
    VenceEm("em 31", DataDe(21, 12, 2026));
    VenceEm("em 60", DataDe(19, 1, 2027));
    VenceEm("em 61", DataDe(20, 1, 2027));
    VenceEm("em 90", DataDe(18, 2, 2027));
    VenceEm("em 91", DataDe(19, 2, 2027));
    VenceEm("ontem", DataDe(19, 11, 2026));
    VenceEm("longe", DataDe(31, 10, 2028));
    VenceEm("mais", DataDe(1, 11, 2028));
    Inclui(m_Ana, Poe(EquipamentoDe("nunca"), SensorDe(1)));
    Inclui(m_Ana, EquipamentoDe("sem sensor"));
    Inclui(m_Ana, DoTipo(EquipamentoDe("V-1"), "V", 3));
    const auto painel = Painel(m_Ana);
    EXPECT_EQ(Contagens(*painel), "1=3 2=2 3=2 4=3 5=1 7=2 10=1");
    EXPECT_EQ(painel->Equipamentos.Valor(), 14);
    EXPECT_EQ(Textos(NoEstado(4)), "hoje/1/20261120 amanhã/1/20261121 em 30/1/20261220");
    EXPECT_EQ(Textos(NoEstado(3)), "em 31/1/20261221 em 60/1/20270119");
    EXPECT_EQ(Textos(NoEstado(2)), "em 61/1/20270120 em 90/1/20270218");
    EXPECT_EQ(Textos(NoEstado(1)), "em 91/1/20270219 longe/1/20281031 mais/1/20281101");
    EXPECT_EQ(Textos(NoEstado(5)), "ontem/1/20261119");
    EXPECT_EQ(Textos(NoEstado(6)), "");
    EXPECT_EQ(Textos(NoEstado(7)), "nunca/0/0 sem sensor/0/0");
    EXPECT_EQ(Textos(NoEstado(10)), "V-1/0/0");
    std::string meses;
    for (std::int32_t n = 1; n <= 24; ++n) {
        meses += std::to_string(painel->Meses.Valor()->Item(n)->Quantas.Valor());
    }
    EXPECT_EQ(meses, "222200000000000000000001");
    EXPECT_EQ(Textos(Lista(m_Ana, Com(Novo<ListaPrazosED>(), &ListaPrazosED::Mes, 202702))),
              "em 90/1/20270218 em 91/1/20270219");
    EXPECT_EQ(Lista(m_Ana, Novo<ListaPrazosED>()).size(), 10u); // every calibration that has not ended
    const Ref<PrazoED> linha = NoEstado(4).front();
    EXPECT_EQ(linha->Texto(), "PrazoED{NroIntEquip=1, Codigo=\"hoje\", SubCodigo=\"\", TipoEquip=\"P\", "
                              "SetorInc=\"\", CodMunic=4314902, NroIntSensor=1, NroSensor=1, "
                              "NroIntAfericao=1, Marca=\"987\", Numero=\"Choje\", DataVencimento=20/11/2026, "
                              "Dias=0, Estado=4}");
    m_Registro.Relogio = DataDe(21, 11, 2026, 0, 0, 1);
    EXPECT_EQ(Contagens(), "1=2 2=2 3=2 4=3 5=2 7=2 10=1");
    m_Registro.Relogio = DataDe(20, 11, 2026, 23, 59, 59); // the same civil day
    EXPECT_EQ(Contagens(), "1=3 2=2 3=2 4=3 5=1 7=2 10=1");
}

// What the question for the calibration of the day answers decides, and nothing else.
TEST_F(ServicosPrazos, SeveralSensors_StandAsTheQuestionForTheDayAnswers)
{
    const Data hoje = m_Registro.Relogio;
    const Data jan = DataDe(1, 1, 2026);
    const std::int32_t numero =
        Inclui(m_Ana, Poe(Poe(EquipamentoDe("R-1"), Poe(SensorDe(1), AfericaoDe("1", jan, DataDe(1, 12, 2026)))),
                          Poe(SensorDe(2), AfericaoDe("2", jan, DataDe(25, 11, 2026)))));
    EXPECT_EQ(Vigente(numero, hoje), 0); // two, and nothing tells which is meant
    EXPECT_EQ(Contagens(), "9=1");
    EXPECT_EQ(Textos(NoEstado(9)), "R-1/2/20261125"); // the one that ends first
    m_Registro.Relogio = DataDe(26, 11, 2026);
    EXPECT_EQ(Vigente(numero, m_Registro.Relogio), 1); // that of the second one has ended
    EXPECT_EQ(Contagens(), "4=1");
    EXPECT_EQ(Textos(NoEstado(4)), "R-1/1/20261201");
    EXPECT_EQ(NoEstado(4).front()->Dias.Valor(), 5);
    m_Registro.Relogio = DataDe(2, 12, 2026);
    EXPECT_EQ(Vigente(numero, m_Registro.Relogio), 0);
    EXPECT_EQ(Contagens(), "5=1");
    EXPECT_EQ(Textos(NoEstado(5)), "R-1/1/20261201");
    EXPECT_EQ(NoEstado(5).front()->Dias.Valor(), -1);
}

TEST_F(ServicosPrazos, SensorDeactivatedToday_StillCountsToday_AsForTheQuestion)
{
    const std::int32_t numero = VenceEm("R-1", DataDe(31, 12, 2027));
    m_Registro.Relogio = DataDe(21, 11, 2026, 9, 0, 0);
    Abre(m_Ana, numero);
    Faz(m_Ana, "altera", Poe(SoNumero(numero), Com(SoSensor(1), &SensorED::Ativo, 2)));
    EXPECT_EQ(Vigente(numero, m_Registro.Relogio), 1);
    EXPECT_EQ(Contagens(), "1=1");
    EXPECT_EQ(Textos(NoEstado(1)), "R-1/1/20271231");
    m_Registro.Relogio = DataDe(22, 11, 2026);
    EXPECT_EQ(Vigente(numero, m_Registro.Relogio), 0);
    EXPECT_EQ(Contagens(), "7=1");
    EXPECT_EQ(Textos(NoEstado(7)), "R-1/0/0");
    m_Registro.Relogio = DataDe(25, 11, 2026);
    EXPECT_EQ(Vigente(numero, m_Registro.Relogio), 0);
    EXPECT_EQ(Contagens(), "7=1");
}

TEST_F(ServicosPrazos, WhatIsWithdrawnOrDeactivated_IsNotCounted)
{
    const std::int32_t numero = VenceEm("R-1", DataDe(1, 12, 2026));
    EXPECT_EQ(Contagens(), "4=1");
    Abre(m_Ana, numero);
    Faz(m_Ana, "altera", Poe(SoNumero(numero), Poe(SoSensor(1), Com(SoAfericao(1), &AfericaoED::Ativo, 2))));
    EXPECT_EQ(Contagens(), "7=1"); // it was withdrawn, and there is no other
    Faz(m_Ana, "desativa", SoNumero(numero));
    EXPECT_EQ(Contagens(), "");
    EXPECT_EQ(Painel(m_Ana)->Equipamentos.Valor(), 0);
    Faz(m_Ana, "reativa", SoNumero(numero));
    EXPECT_EQ(Contagens(), "7=1");
}

// What no stretch of the count has: the panel says that it is not complete.
TEST_F(ServicosPrazos, EquipmentThatIsLostOnTheWay_IsMissedAndTold)
{
    const std::int32_t numero = VenceEm("R-1", DataDe(31, 12, 2027));
    VenceEm("R-2", DataDe(31, 12, 2027));
    m_Registro.Sql((motor::DeTeste() == motor::Qual::Postgres
                        ? "ALTER TABLE EQUIPAMENTO DROP CONSTRAINT \"EQUIPAMENTO_TrabFoto\"; "
                        : "PRAGMA ignore_check_constraints = ON; ") +
                   std::string("UPDATE EQUIPAMENTO SET TrabFoto = 3 WHERE NroIntEquip = ") + std::to_string(numero));
    const auto painel = Painel(m_Ana);
    EXPECT_EQ(Contagens(*painel), "1=1");
    EXPECT_EQ(painel->Equipamentos.Valor(), 2);
    EXPECT_EQ(painel->NaoContados.Valor(), 1);
    ASSERT_EQ(painel->Falhas.Valor()->Count(), 1);
    EXPECT_EQ(painel->Falhas.Valor()->Item(1)->Motivo.Valor(),
              "O painel contou 1 equipamentos, e há 2 ativos: o registro precisa ser conferido.");
}

// Registered as inactive, it counts from the day on which it was reactivated: not before, whatever calibrations it has.
TEST_F(ServicosPrazos, EquipmentThatDidNotCountOnTheDay_HasNoState_WithoutCalibrationsToo)
{
    const std::int32_t numero = Inclui(m_Ana, EquipamentoDe("R-1"));
    const std::int32_t dispensado = Inclui(m_Ana, DoTipo(EquipamentoDe("R-2"), "V", 3));
    for (const std::int32_t um : {numero, dispensado}) {
        Faz(m_Ana, "desativa", SoNumero(um));
    }
    m_Registro.Relogio = DataDe(30, 11, 2026);
    for (const std::int32_t um : {numero, dispensado}) {
        Faz(m_Ana, "reativa", SoNumero(um));
    }
    EXPECT_EQ(Contagens(), "7=1 10=1");
    m_Registro.Relogio = DataDe(25, 11, 2026);
    EXPECT_EQ(Contagens(), "");
    EXPECT_EQ(Painel(m_Ana)->NaoContados.Valor(), 2);
    EXPECT_EQ(Textos(NoEstado(7)) + Textos(NoEstado(10)), "");
}

// Saved by a clock that was ahead: its rows say that it is active, and its history that it was not yet again.
TEST_F(ServicosPrazos, EquipmentThatTheHistoryDoesNotHaveAsActive_IsToldAndNotCounted)
{
    const std::int32_t numero = VenceEm("R-1", DataDe(31, 12, 2027));
    VenceEm("R-2", DataDe(31, 12, 2027));
    Faz(m_Ana, "desativa", SoNumero(numero));
    m_Registro.Relogio = DataDe(30, 11, 2026);
    Faz(m_Ana, "reativa", SoNumero(numero));
    m_Registro.Relogio = DataDe(25, 11, 2026);
    EXPECT_EQ(Vigente(numero, m_Registro.Relogio), 0);
    const auto painel = Painel(m_Ana);
    EXPECT_EQ(Contagens(*painel), "1=1");
    EXPECT_EQ(painel->Equipamentos.Valor(), 2);
    EXPECT_EQ(painel->NaoContados.Valor(), 1);
    ASSERT_EQ(painel->Falhas.Valor()->Count(), 1);
    EXPECT_EQ(
        painel->Falhas.Valor()->Item(1)->Motivo.Valor(),
        "O equipamento R-1 está ativo, mas o histórico não o confirma em 25/11/2026: confira o relógio com que ele "
        "foi gravado.");
    EXPECT_EQ(Textos(NoEstado(1)), "R-2/1/20271231");
    // Nor does what is saved afterwards, by a clock that is right, make it so.
    Abre(m_Ana, numero);
    Faz(m_Ana, "altera", Com(SoNumero(numero), &EquiptoED::Descricao, "outra"));
    EXPECT_EQ(Vigente(numero, m_Registro.Relogio), 0);
    EXPECT_EQ(Contagens(), "1=1");
    EXPECT_EQ(Painel(m_Ana)->NaoContados.Valor(), 1);
    EXPECT_EQ(Textos(NoEstado(1)), "R-2/1/20271231");
    m_Registro.Relogio = DataDe(30, 11, 2026);
    EXPECT_NE(Vigente(numero, m_Registro.Relogio), 0);
    EXPECT_EQ(Contagens(), "1=2");
}

TEST_F(ServicosPrazos, TheDay_IsThatOfTheRegistrysTimeZone_WhereverItIsAskedFrom)
{
    VenceEm("R-1", DataDe(20, 11, 2026));
    m_Registro.Relogio = DataDe(20, 11, 2026, 22, 0, 0);
    EXPECT_EQ(Contagens(), "4=1");
    m_Registro.Fuso = -180; // of the machine: where the registry is it is one o'clock of the next day
    const auto painel = Painel(m_Ana);
    EXPECT_EQ(Contagens(*painel), "5=1");
    EXPECT_EQ(painel->ComoEm.Valor(), DataDe(21, 11, 2026, 1, 0, 0));
    EXPECT_EQ(painel->Fuso.Valor(), 0);
    EXPECT_EQ(Textos(NoEstado(5)), "R-1/1/20261120");
    EXPECT_EQ(NoEstado(5).front()->Dias.Valor(), -1);
    m_Registro.Relogio = DataDe(21, 11, 2026, 8, 0, 0);
    m_Registro.Fuso = 600;
    EXPECT_EQ(Contagens(), "4=1");
}

TEST_F(ServicosPrazos, PageThatFollows_IsOfTheDayOfTheFirst)
{
    VenceEm("R-1", DataDe(20, 11, 2026));
    const auto pedido = Com(Novo<ListaPrazosED>(), &ListaPrazosED::Estado, 4);
    pedido->ComoEm = Painel(m_Ana)->ComoEm.Valor();
    m_Registro.Relogio = DataDe(21, 11, 2026, 0, 0, 10);
    const auto pagina = Faz(m_Ana, "listaPrazos", pedido->Copia(), Classe).Como<ListaPrazosED>();
    ASSERT_FALSE(pagina->Prazos.Valor().Nada());
    EXPECT_EQ(pagina->Prazos.Valor()->Item(1)->Dias.Valor(), 0);
    EXPECT_EQ(pagina->ComoEm.Valor(), DataDe(20, 11, 2026, 10, 0, 0));
    EXPECT_EQ(Textos(NoEstado(4)), ""); // of the day that it is
    pedido->ComoEm = Data{};
    EXPECT_EQ(RecusaDe(m_Ana, "listaPrazos", pedido, Classe), "O momento dos prazos não está no calendário.");
}

// What has not begun ends all the same, in the chart as in the list behind it.
TEST_F(ServicosPrazos, Months_HaveWhatHasNotBegunToo)
{
    m_Registro.Relogio = DataDe(20, 11, 2027);
    Inclui(m_Ana,
           Poe(EquipamentoDe("R-1"), Poe(Poe(SensorDe(1), AfericaoDe("1", DataDe(1, 1, 2026), DataDe(30, 11, 2026))),
                                         AfericaoDe("2", DataDe(1, 12, 2026), DataDe(30, 11, 2027)))));
    m_Registro.Relogio = DataDe(20, 11, 2026);
    const auto painel = Painel(m_Ana);
    EXPECT_EQ(painel->Meses.Valor()->Item(1)->Quantas.Valor(), 1);
    EXPECT_EQ(painel->Meses.Valor()->Item(13)->Mes.Valor(), 202711);
    EXPECT_EQ(painel->Meses.Valor()->Item(13)->Quantas.Valor(), 1);
    const auto lista = Lista(m_Ana, Com(Novo<ListaPrazosED>(), &ListaPrazosED::Mes, 202711));
    EXPECT_EQ(Textos(lista), "R-1/1/20271130");
    EXPECT_EQ(lista.front()->Estado.Valor(), 0);
    EXPECT_EQ(Textos(Lista(m_Ana, Novo<ListaPrazosED>())), "R-1/1/20261130 R-1/1/20271130");
}

TEST_F(ServicosPrazos, Gap_IsBetweenOneThatEndedAndOneThatHasNotBegun)
{
    m_Registro.Relogio = DataDe(20, 11, 2027);
    Inclui(m_Ana,
           Poe(EquipamentoDe("R-1"), Poe(Poe(SensorDe(1), AfericaoDe("1", DataDe(1, 1, 2026), DataDe(31, 10, 2026))),
                                         AfericaoDe("2", DataDe(1, 12, 2026), DataDe(30, 11, 2027)))));
    EXPECT_EQ(Contagens(), "4=1");
    m_Registro.Relogio = DataDe(20, 11, 2026);
    EXPECT_EQ(Contagens(), "6=1");
    EXPECT_EQ(Textos(NoEstado(6)), "R-1/1/20261031");
    m_Registro.Relogio = DataDe(1, 12, 2026);
    EXPECT_EQ(Contagens(), "1=1");
    m_Registro.Relogio = DataDe(1, 11, 2025);
    EXPECT_EQ(Contagens(), "7=1");
}

TEST_F(ServicosPrazos, Documents_MissingCountAtOnce_AndDamagedOnceTheyAreTold)
{
    VenceEm("R-1", DataDe(31, 12, 2027));
    const std::int32_t r2 = VenceEm("R-2", DataDe(31, 12, 2027));
    VenceEm("R-3", DataDe(1, 6, 2026));
    EXPECT_EQ(Contagens(), "1=2 5=1");
    TiraDocumento("CR-1");
    EXPECT_EQ(Contagens(), "1=1 5=1 8=1");
    EXPECT_EQ(Textos(NoEstado(8)), "R-1/1/20271231");
    std::int32_t conferidos = 0;
    std::int32_t equipamentos = 0;
    EXPECT_TRUE(Danificados(conferidos, equipamentos).empty());
    EXPECT_EQ(conferidos, 1); // of one that has ended it is not asked
    EXPECT_EQ(equipamentos, 3);
    m_Registro.Sql(motor::DeTeste() == motor::Qual::Postgres
                       ? "ALTER TABLE DOCUMENTO DISABLE TRIGGER USER; UPDATE DOCUMENTO SET Sha256 = upper(Sha256)"
                       : "DROP TRIGGER DOCUMENTO_SEM_UPDATE; UPDATE DOCUMENTO SET Sha256 = upper(Sha256)");
    EXPECT_EQ(Contagens(), "1=1 5=1 8=1");
    const auto danificados = Danificados(conferidos, equipamentos);
    ASSERT_EQ(danificados.size(), 1u);
    EXPECT_EQ(danificados.front()->NroIntEquip.Valor(), r2);
    const auto painel = Painel(m_Ana, ComDanificados(Novo<PainelPrazosED>(), danificados));
    EXPECT_EQ(Contagens(*painel), "5=1 8=2");
    EXPECT_EQ(painel->Equipamentos.Valor(), 3);
    EXPECT_EQ(Contagens(*Painel(
                  m_Ana, ComDanificados(Com(Novo<PainelPrazosED>(), &PainelPrazosED::SetorInc, "outro"), danificados))),
              "");
    const auto noEstado = [&](std::uint8_t estado) {
        return Textos(
            Lista(m_Ana, ComDanificados(Com(Novo<ListaPrazosED>(), &ListaPrazosED::Estado, estado), danificados)));
    };
    EXPECT_EQ(noEstado(8), "R-1/1/20271231 R-2/1/20271231");
    EXPECT_EQ(noEstado(1), "");
    const std::vector<Ref<DocumentoPrazoED>> demais(1001, danificados.front());
    EXPECT_EQ(RecusaDe(m_Ana, "consultaPainel", ComDanificados(Novo<PainelPrazosED>(), demais), Classe),
              "Há mais de 1000 documentos danificados: o registro precisa ser conferido.");
}

TEST_F(ServicosPrazos, Documents_AreCheckedInPages_ThatCanBeGivenUp)
{
    for (int n = 0; n < ServicoPrazos::EquipamentosPorConferencia + 5; ++n) {
        VenceEm("R-" + std::to_string(n), DataDe(31, 12, 2027));
    }
    const auto primeira =
        Faz(m_Ana, "confereDocumentos", Novo<DocumentosPrazosED>(), Classe).Como<DocumentosPrazosED>();
    EXPECT_EQ(primeira->Conferidos.Valor(), ServicoPrazos::EquipamentosPorConferencia);
    EXPECT_EQ(primeira->TrabFoto.Valor(), 1);
    std::int32_t conferidos = 0;
    std::int32_t equipamentos = 0;
    EXPECT_TRUE(Danificados(conferidos, equipamentos).empty());
    EXPECT_EQ(conferidos, ServicoPrazos::EquipamentosPorConferencia + 5);
    EXPECT_EQ(equipamentos, conferidos);
    int vezes = 0;
    const Acompanhamento acompanha(*m_Ana, [&](double, const std::string &) { return ++vezes < 3; });
    EXPECT_EQ(RecusaDe(m_Ana, "confereDocumentos", Novo<DocumentosPrazosED>(), Classe),
              "A operação foi cancelada: nada foi gravado.");
    EXPECT_EQ(vezes, 3);
}

TEST_F(ServicosPrazos, GroupsAndCriteria_AddUpToTheWhole)
{
    VenceEm("R-1", DataDe(31, 12, 2027));
    Inclui(m_Ana, Com(EquipamentoDe("R-2"), &EquiptoED::SetorInc, "Metrologia", &EquiptoED::CodMunic, 4305108));
    Inclui(m_Ana, Com(EquipamentoDe("R-3"), &EquiptoED::SetorInc, ""));
    Inclui(m_Ana, DoTipo(EquipamentoDe("E-1"), "E", 3));
    const auto por = [&](std::uint8_t agrupa) {
        return Contagens(*Painel(m_Ana, Com(Novo<PainelPrazosED>(), &PainelPrazosED::Agrupa, agrupa)));
    };
    EXPECT_EQ(por(0), "1=1 7=3");
    EXPECT_EQ(por(1), "1=1 7=2 Metrologia:7=1");
    EXPECT_EQ(por(2), "4305108:7=1 4314902:1=1 4314902:7=2");
    EXPECT_EQ(por(3), "E:7=1 P:1=1 P:7=2");
    const auto soDe = [&](auto membro, const auto &valor) {
        return Contagens(*Painel(m_Ana, Com(Novo<PainelPrazosED>(), membro, valor)));
    };
    EXPECT_EQ(soDe(&PainelPrazosED::SetorInc, "Metrologia"), "7=1");
    EXPECT_EQ(soDe(&PainelPrazosED::SetorInc, ""), "1=1 7=2");
    EXPECT_EQ(soDe(&PainelPrazosED::CodMunic, 4314902), "1=1 7=2");
    EXPECT_EQ(soDe(&PainelPrazosED::TipoEquip, "E"), "7=1");
    EXPECT_EQ(soDe(&PainelPrazosED::TipoEquip, "x"), "");
    EXPECT_EQ(Textos(Lista(m_Ana, Com(Novo<ListaPrazosED>(), &ListaPrazosED::SetorInc, "", &ListaPrazosED::Estado, 7))),
              "R-3/0/0 E-1/0/0");
}

TEST_F(ServicosPrazos, Pages_OverThousandsOfEquipment_HaveEachOnce)
{
    Inclui(m_Ana, EquipamentoDe("P-1"));
    m_Registro.Sql("INSERT INTO EQUIPAMENTO SELECT 2 + n.NroIntEquip, e.ClienteInc, e.SetorInc, 'X' || n.NroIntEquip, "
                   "SubCodigo, Descricao, CodMunic, TipoVia, TipoEquip, VelocPermitida, ArquivoLayout, "
                   "TemImagemEntrelacada, Modelo, TemLimiteDif, TemPerfilMag, NroIntRejLimDif, Ativo, ClienteTrans, "
                   "OperadorTrans, DataTrans, HoraTrans, TipoAgente, txtObsNotif, 'X' || n.NroIntEquip, "
                   "'X' || n.NroIntEquip, SubCodigoBusca, 1 + n.NroIntEquip % 2, 1 FROM EQUIPAMENTO e, "
                   "(WITH RECURSIVE c(NroIntEquip) AS (SELECT 1 UNION ALL SELECT NroIntEquip + 1 FROM c "
                   "WHERE NroIntEquip < 2500) SELECT NroIntEquip FROM c) n WHERE e.NroIntEquip = 1");
    const auto primeira =
        Faz(m_Ana, "listaPrazos", Com(Novo<ListaPrazosED>(), &ListaPrazosED::Estado, 7), Classe).Como<ListaPrazosED>();
    EXPECT_EQ(primeira->Prazos.Valor()->Count(), 200);
    EXPECT_EQ(primeira->TrabFoto.Valor(), 1);
    const auto todos = NoEstado(7);
    EXPECT_EQ(todos.size(), 2501u);
    std::set<std::int32_t> numeros;
    for (const Ref<PrazoED> &prazo : todos) {
        numeros.insert(prazo->NroIntEquip);
    }
    EXPECT_EQ(numeros.size(), 2501u);
    EXPECT_EQ(Contagens(), "7=2501");
    EXPECT_EQ(NoEstado(1).size(), 0u);
}

TEST_F(ServicosPrazos, WhatIsAnotherClients_IsNeitherCountedNorListed)
{
    VenceEm("R-1", DataDe(31, 12, 2027));
    const auto elisa = m_Registro.Sessao("elisa");
    EXPECT_EQ(Contagens(*Painel(elisa)), "");
    EXPECT_EQ(Painel(elisa)->Equipamentos.Valor(), 0);
    EXPECT_EQ(Lista(elisa, Com(Novo<ListaPrazosED>(), &ListaPrazosED::Estado, 1)).size(), 0u);
    EXPECT_EQ(Lista(elisa, Novo<ListaPrazosED>()).size(), 0u);
    EXPECT_FALSE(Faz(elisa, "confereDocumentos", Novo<DocumentosPrazosED>(), Classe)
                     .Como<DocumentosPrazosED>()
                     ->Conferidos.Valor());
    auto danificado = Com(Novo<DocumentoPrazoED>(), &DocumentoPrazoED::NroIntEquip, 1);
    EXPECT_EQ(Contagens(*Painel(elisa, ComDanificados(Novo<PainelPrazosED>(), {danificado}))), "");
    Inclui(elisa, EquipamentoDe("E-1"));
    EXPECT_EQ(Contagens(*Painel(elisa)), "7=1");
    EXPECT_EQ(Contagens(), "1=1");
}

TEST_F(ServicosPrazos, EveryOperation_WithoutTheRightToLook_IsRefused)
{
    const std::vector<std::pair<std::string, Ref<Objeto>>> operacoes = {
        {"consultaPainel", Novo<PainelPrazosED>()},
        {"listaPrazos", Novo<ListaPrazosED>()},
        {"confereDocumentos", Novo<DocumentosPrazosED>()}};
    VenceEm("R-1", DataDe(31, 12, 2027));
    for (const auto &[usuario, nome] : std::vector<std::pair<std::string, std::string>>{
             {"carla", "Carla Dias"}, {"marta", "Marta Reis"}, {"tadeu", "Tadeu Vaz"}}) {
        const auto sessao = m_Registro.Sessao(usuario);
        for (const auto &[metodo, pedido] : operacoes) {
            EXPECT_EQ(RecusaDe(sessao, metodo, pedido, Classe), nome + " não tem permissão para consultar prazos.");
        }
    }
    for (const char *usuario : {"bruno", "inês", "alice", "eva", "davi", "saulo"}) {
        const auto sessao = m_Registro.Sessao(usuario);
        for (const auto &[metodo, pedido] : operacoes) {
            Faz(sessao, metodo, pedido, Classe);
        }
    }
    m_Registro.Sql("UPDATE USUARIO SET Ativo = 2 WHERE Usuario = 'ana'");
    for (const auto &[metodo, pedido] : operacoes) {
        EXPECT_EQ(RecusaDe(m_Ana, metodo, pedido, Classe),
                  "O usuário ana foi desativado depois da entrada. Procure quem administra os usuários.");
    }
}

TEST_F(ServicosPrazos, WhatIsNoCriterion_IsRefused)
{
    EXPECT_EQ(RecusaDe(m_Ana, "consultaPainel", Com(Novo<PainelPrazosED>(), &PainelPrazosED::Agrupa, 4), Classe),
              "Não existe o agrupamento de prazos 4.");
    for (const auto estado : {std::uint8_t{0}, std::uint8_t{11}}) {
        EXPECT_EQ(RecusaDe(m_Ana, "listaPrazos", Com(Novo<ListaPrazosED>(), &ListaPrazosED::Estado, estado), Classe),
                  "Não existe o estado de prazo " + std::to_string(estado) + ".");
    }
    for (const std::int32_t mes : {-1, 189912, 202600, 202613, 1000001, 2147483647}) {
        EXPECT_EQ(RecusaDe(m_Ana, "listaPrazos", Com(Novo<ListaPrazosED>(), &ListaPrazosED::Mes, mes), Classe),
                  "O mês dos prazos não está no calendário.");
    }
    for (const Data dia : {Data{}, Data{1e300}, DataDe(1, 1, 100), DataDe(31, 12, 9999)}) {
        EXPECT_EQ(RecusaDe(m_Ana, "listaPrazos", Com(Novo<ListaPrazosED>(), &ListaPrazosED::ComoEm, dia), Classe),
                  "O momento dos prazos não está no calendário.");
    }
    EXPECT_EQ(RecusaDe(m_Ana, "consultaPainel", Novo<ListaPrazosED>(), Classe),
              "A operação pede um registro PainelPrazosED e recebeu ListaPrazosED.");
}

TEST_F(ServicosPrazos, GivenUp_CountsNothing)
{
    VenceEm("R-1", DataDe(31, 12, 2027));
    const Acompanhamento acompanha(*m_Ana, [](double, const std::string &) { return false; });
    for (const auto &[metodo, pedido] : std::vector<std::pair<std::string, Ref<Objeto>>>{
             {"listaPrazos", Novo<ListaPrazosED>()}, {"consultaPainel", Novo<PainelPrazosED>()}}) {
        EXPECT_EQ(RecusaDe(m_Ana, metodo, pedido, Classe), "A operação foi cancelada: nada foi gravado.");
    }
}

// Equipment that were registered at a later time, so that what has not begun is there too.
class PrazosAoAcaso : public ServicosPrazos {
  protected:
    struct Sensor {
        bool Ativo;
        Historia Afericoes;
    };
    struct Feito {
        std::int32_t Numero;
        bool Ativo;
        std::string Tipo;
        std::string Setor;
        std::vector<Sensor> Sensores;
    };

    void Registra(int quantos)
    {
        const Instante depois(DataDe(1, 1, 2040));
        const Operador quem = m_Ana->Operador();
        Banco banco(DialetoPara(m_Registro.Caminho()), m_Registro.Caminho(), depois);
        banco.Escreve([&] {
            for (int n = 0; n < quantos; ++n) {
                Operacao operacao(banco, quem, depois, CustoDeTeste, "motivo", {});
                m_Feitos.push_back(Inclui_(operacao, n));
                operacao.Entrega();
            }
        });
        TiraDocumento("SEM");
    }
    Feito Inclui_(Operacao &operacao, int n)
    {
        static const std::vector<std::string> tipos{"P", "P", "P", "E", "V"};
        Feito feito{0,
                    !m_Sorte.UmaEm(8),
                    tipos[static_cast<std::size_t>(m_Sorte.Ate(5))],
                    m_Sorte.UmaEm(2) ? "Metrologia" : "Fiscalização",
                    {}};
        auto equipto = Com(EquipamentoDe("R-" + std::to_string(n)), &EquiptoED::SetorInc, feito.Setor);
        if (feito.Tipo != "P") {
            equipto = DoTipo(equipto, feito.Tipo, feito.Tipo == "E" ? 3 : 3);
        }
        const double documento = ServicoDocumentos(operacao).Guarda(Pdf(std::to_string(n)));
        const int sensores = feito.Tipo == "V" ? 0 : feito.Tipo == "E" ? 1 : m_Sorte.Ate(4);
        for (int s = 0; s < sensores; ++s) {
            // The active ones are numbered without a gap.
            const bool anteriorAtivo = s == 0 || feito.Sensores.back().Ativo;
            feito.Sensores.push_back(
                {anteriorAtivo && (feito.Tipo == "E" || !m_Sorte.UmaEm(4)), HistoriaAoAcaso(m_Sorte, 300)});
            auto sensor = SensorDe(static_cast<std::int16_t>(s + 1));
            for (AfericaoContada &uma : feito.Sensores.back().Afericoes) {
                uma.Ate += uma.De == uma.Ate ? 1 : 0; // a new one has two days at least
            }
            Historia &historia = feito.Sensores.back().Afericoes;
            for (std::size_t a = 1; a < historia.size(); ++a) { // and still none in common with the next
                if (historia[a].De <= historia[a - 1].Ate) {
                    historia[a].De = historia[a - 1].Ate + 1;
                    historia[a].Ate = std::max(historia[a].Ate, historia[a].De + 1);
                }
            }
            for (const AfericaoContada &uma : historia) {
                Poe(sensor,
                    AfericaoDe(uma.ComDocumento ? "COM" : "SEM", DiaContado(uma.De), DiaContado(uma.Ate), documento));
                if (m_Sorte.UmaEm(4)) { // withdrawn, with any days
                    Poe(sensor, Com(AfericaoDe("FORA", DiaContado(uma.De), DiaContado(uma.Ate + 50), documento),
                                    &AfericaoED::Ativo, 2));
                }
            }
            Poe(equipto, Com(sensor, &SensorED::Ativo, feito.Sensores.back().Ativo ? 1 : 2));
        }
        feito.Numero = ServicoEquipamentos(operacao).Inclui(*equipto)->NroIntEquip;
        if (!feito.Ativo) {
            auto pedido = SoNumero(feito.Numero);
            pedido->VersaoLida = 1;
            ServicoEquipamentos(operacao).Desativa(*pedido);
            m_Desativados.push_back(pedido); // which has its new mark when the operation is done
        }
        return feito;
    }
    static int Esperado(const Feito &feito, int hoje, int &vence)
    {
        std::vector<Historia> ativas;
        for (const Sensor &sensor : feito.Sensores) {
            if (sensor.Ativo) {
                ativas.push_back(sensor.Afericoes);
            }
        }
        const int estado = NumeroDoEstado(ativas, hoje, vence);
        vence = feito.Tipo == "V" ? -1 : vence;
        return feito.Tipo == "V" ? 10 : estado;
    }
    void ConfereNoDia(int hoje)
    {
        m_Registro.Relogio = DiaContado(hoje);
        std::map<int, int> porEstado;
        std::map<int, std::map<std::int32_t, std::int32_t>>
            numeros; // equipment, and the last day by which it stands so
        std::map<std::int32_t, int> meses;
        int ativos = 0;
        for (const Feito &feito : m_Feitos) {
            if (!feito.Ativo) {
                continue;
            }
            ++ativos;
            int vence = 0;
            const int estado = Esperado(feito, hoje, vence);
            ++porEstado[estado];
            numeros[estado][feito.Numero] = vence < 0 ? 0 : Civil(vence);
            for (const Sensor &sensor : feito.Sensores) {
                for (const AfericaoContada &uma : sensor.Afericoes) {
                    if (sensor.Ativo && uma.Ate >= hoje) {
                        ++meses[Civil(uma.Ate) / 100];
                    }
                }
            }
        }
        const auto painel = Painel(m_Ana);
        std::string esperadas;
        for (const auto &[estado, quantos] : porEstado) {
            esperadas += (esperadas.empty() ? "" : " ") + std::to_string(estado) + "=" + std::to_string(quantos);
        }
        EXPECT_EQ(Contagens(*painel), esperadas);
        EXPECT_EQ(painel->Equipamentos.Valor(), ativos);
        EXPECT_EQ(Soma(*painel), ativos);
        for (std::int32_t n = 1; n <= 24; ++n) {
            const MesPrazoED &mes = *painel->Meses.Valor()->Item(n);
            EXPECT_EQ(mes.Quantas.Valor(), meses[mes.Mes]) << mes.Mes.Valor();
        }
        EXPECT_EQ(Soma(*Painel(m_Ana, Com(Novo<PainelPrazosED>(), &PainelPrazosED::Agrupa, 1))), ativos);
        for (int estado = 1; estado <= 10; ++estado) {
            std::map<std::int32_t, std::int32_t> lidos;
            for (const Ref<PrazoED> &prazo : NoEstado(estado)) {
                EXPECT_TRUE(lidos.emplace(prazo->NroIntEquip, DiaCivil(prazo->DataVencimento)).second);
                EXPECT_EQ(prazo->Estado.Valor(), estado);
            }
            EXPECT_EQ(lidos, numeros[estado]) << estado;
            m_Vistos[estado] += static_cast<int>(lidos.size());
        }
    }
    // What the panel has as in force, the question for the calibration of the day answers: for every equipment.
    int ConfereVigencia(int hoje)
    {
        int emVigor = 0;
        m_Registro.Relogio = DiaContado(hoje);
        for (const Feito &feito : m_Feitos) {
            int vence = 0;
            if (const int estado = Esperado(feito, hoje, vence); feito.Ativo && estado != 10) {
                EXPECT_EQ(Vigente(feito.Numero, DiaContado(hoje)) != 0, estado <= 4) << feito.Numero;
                emVigor += estado <= 4 ? 1 : 0;
            }
        }
        return emVigor;
    }

    Sorte m_Sorte{16};
    std::vector<Feito> m_Feitos;
    std::vector<Ref<EquiptoED>> m_Desativados;
    std::map<int, int> m_Vistos;
};

// Twice: each equipment by itself, since all were saved behind the day, and then as if they had been saved before it,
// so that the database counts them together. On fixed days, and around the bounds of what they have. HISTORIAS: how
// many equipment, instead of 300 or, over the network of a database, 60.
TEST_F(PrazosAoAcaso, Panel_OfRandomHistories_IsAsCountedByDays)
{
    const char *pedidas = std::getenv("HISTORIAS");
    Registra(pedidas != nullptr ? std::atoi(pedidas) : motor::DeTeste() == motor::Qual::Postgres ? 60 : 300);
    const auto ultimoDia = [&] {
        for (;;) {
            const auto &sensores =
                m_Feitos[static_cast<std::size_t>(m_Sorte.Ate(static_cast<int>(m_Feitos.size())))].Sensores;
            if (!sensores.empty() && !sensores.front().Afericoes.empty()) {
                return sensores.front().Afericoes.back().Ate;
            }
        }
    };
    std::vector<int> dias{100, 400, 730, 1100};
    for (const int antes : {-1, 0, 30, 31, 60, 61, 90, 91}) {
        dias.push_back(std::max(ultimoDia() - antes, 0));
    }
    int emVigor = 0;
    for (const bool juntos : {false, true}) {
        if (juntos) {
            m_Registro.Sql("UPDATE EQUIPAMENTO SET DataTrans = 20230101");
        }
        for (const int hoje : dias) {
            ConfereNoDia(hoje);
            emVigor += ConfereVigencia(hoje);
        }
    }
    EXPECT_GT(emVigor, 5);
    for (int estado = 1; estado <= 10; ++estado) {
        EXPECT_GT(m_Vistos[estado], 0) << estado;
    }
}

Ref<PrazoED> PrazoCom(std::int32_t sensor, const std::string &codigo, Data vence)
{
    auto prazo = Novo<PrazoED>();
    prazo->NroIntSensor = sensor;
    prazo->NroIntAfericao = sensor + 100.0;
    prazo->NroSensor = std::int16_t{2};
    prazo->Codigo = codigo;
    prazo->Marca = "INM 7/26";
    prazo->Numero = "4711";
    prazo->DataVencimento = vence;
    return prazo;
}

TEST(CalendarioDePrazos, File_IsAsCalendarsReadIt)
{
    CalendarioDePrazos calendario("0a1b", Instante(DataDe(20, 11, 2026, 22, 5, 9), -180));
    calendario.Poe(*PrazoCom(17, "R-1; \"a\", b\\c", DataDe(28, 2, 2028)), "Radar");
    calendario.Poe(*PrazoCom(18, "R-2", Data{}), "Radar");
    EXPECT_EQ(calendario.Quantos(), 1);
    EXPECT_EQ(calendario.Texto(), "BEGIN:VCALENDAR\r\n"
                                  "VERSION:2.0\r\n"
                                  "PRODID:-//Registro de Equipamentos//Prazos//PT\r\n"
                                  "CALSCALE:GREGORIAN\r\n"
                                  "BEGIN:VEVENT\r\n"
                                  "UID:afericao-117@0a1b\r\n"
                                  "DTSTAMP:20261121T010509Z\r\n"
                                  "DTSTART;VALUE=DATE:20280228\r\n"
                                  "DTEND;VALUE=DATE:20280229\r\n"
                                  "SUMMARY:Vence a aferição de R-1\\; \"a\"\\, b\\\\c\\, sensor 2\r\n"
                                  "DESCRIPTION:Radar\\, sensor 2\\, certificado INM 7/26. Último dia em que a a\r\n"
                                  " ferição vale: 28/02/2028.\r\n"
                                  "TRANSP:TRANSPARENT\r\n"
                                  "END:VEVENT\r\n"
                                  "END:VCALENDAR\r\n");
}

TEST(CalendarioDePrazos, Lines_AreFoldedByOctetsAndNeverInALetter)
{
    for (std::size_t antes = 0; antes < 8; ++antes) {
        std::string linha = std::string(antes, 'x');
        for (int n = 0; n < 90; ++n) {
            linha += n % 3 == 0 ? "ã" : n % 3 == 1 ? "€" : "😀";
        }
        const std::string dobrada = CalendarioDePrazos::Dobrada(linha);
        std::string desdobrada;
        std::size_t desde = 0;
        for (std::size_t fim = dobrada.find("\r\n"); fim != std::string::npos; fim = dobrada.find("\r\n", desde)) {
            const std::string pedaco = dobrada.substr(desde, fim - desde);
            EXPECT_LE(pedaco.size(), 75u);
            EXPECT_EQ(QString::fromStdString(pedaco).toStdString(), pedaco); // every letter is whole
            desdobrada += desde == 0 ? pedaco : pedaco.substr(1);
            desde = fim + 2;
        }
        EXPECT_EQ(desde, dobrada.size());
        EXPECT_EQ(desdobrada, linha);
    }
    EXPECT_EQ(CalendarioDePrazos::Dobrada(std::string(75, 'x')), std::string(75, 'x') + "\r\n");
    EXPECT_EQ(CalendarioDePrazos::Dobrada(std::string(76, 'x')), std::string(75, 'x') + "\r\n x\r\n");
    const std::string semComeco(100, '\xBF'); // no letter at all
    EXPECT_EQ(CalendarioDePrazos::Dobrada(semComeco),
              semComeco.substr(0, 75) + "\r\n " + semComeco.substr(75) + "\r\n");
}

TEST(CalendarioDePrazos, Texts_StandForThemselves)
{
    EXPECT_EQ(CalendarioDePrazos::Escapado("a\\b;c,d:e\r\nf\ng\rh\x01\x7Fi"), "a\\\\b\\;c\\,d:e\\nf\\ng\\nhi");
}

} // namespace
