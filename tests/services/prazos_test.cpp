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

// By looking at each day by itself: which calibration has it.
int NumeroDoEstado(const Historia &historia, int hoje, int &vence)
{
    constexpr int dias = 6000;
    std::vector<int> dono(dias, -1);
    for (std::size_t n = 0; n < historia.size(); ++n) {
        for (int dia = historia[n].De; dia <= historia[n].Ate; ++dia) {
            dono[static_cast<std::size_t>(dia)] = static_cast<int>(n);
        }
    }
    const auto de = [&](int dia) { return dono[static_cast<std::size_t>(dia)]; };
    vence = -1;
    if (const int sua = de(hoje); sua >= 0) {
        int restam = 0;
        while (de(hoje + restam + 1) == sua) {
            ++restam;
        }
        vence = hoje + restam;
        return !historia[static_cast<std::size_t>(sua)].ComDocumento ? 8
               : restam > 90                                         ? 1
               : restam > 60                                         ? 2
               : restam > 30                                         ? 3
                                                                     : 4;
    }
    for (int dia = hoje - 1; dia >= 0 && vence < 0; --dia) {
        vence = de(dia) >= 0 ? dia : -1;
    }
    const bool depois = std::any_of(dono.begin() + hoje, dono.end(), [](int qual) { return qual >= 0; });
    return vence < 0 ? 7 : depois ? 6 : 5;
}

std::vector<Prazos::Afericao> ComoLidas(const Historia &historia)
{
    std::vector<Prazos::Afericao> afericoes;
    for (const AfericaoContada &uma : historia) {
        afericoes.push_back(
            {{Civil(uma.De), Civil(uma.Ate), uma.ComDocumento}, static_cast<std::int64_t>(afericoes.size()) + 1});
    }
    return afericoes;
}

TEST(Prazos, DoSensor_OverTenThousandHistories_IsAsCountedByDays)
{
    Sorte sorte(15);
    std::map<int, int> vistos;
    for (int vez = 0; vez < 10000; ++vez) {
        const Historia historia = HistoriaAoAcaso(sorte, vez % 2 == 0 ? 20 : 300);
        const int hoje = sorte.Ate(vez % 2 == 0 ? 120 : 1500);
        int vence = 0;
        const int estado = NumeroDoEstado(historia, hoje, vence);
        auto afericoes = ComoLidas(historia);
        std::shuffle(afericoes.begin(), afericoes.end(), std::mt19937(static_cast<unsigned>(vez)));
        const auto situacao = Prazos::DoSensor(afericoes, Civil(hoje));
        ASSERT_TRUE(situacao);
        ASSERT_EQ(static_cast<int>(situacao->Estado), estado) << vez;
        ASSERT_EQ(situacao->Vencimento, vence < 0 ? 0 : Civil(vence)) << vez;
        ASSERT_EQ(situacao->Dias, vence < 0 ? 0 : vence - hoje) << vez;
        ++vistos[estado];
    }
    for (int estado = 1; estado <= 8; ++estado) {
        EXPECT_GT(vistos[estado], 50) << estado;
    }
}

TEST(Prazos, DaAfericao_AtTheBounds_CountsBothEnds)
{
    struct Caso {
        std::int32_t Hoje;
        std::int32_t Vence;
        int Estado;
        std::int32_t Dias;
    };
    const std::vector<Caso> casos = {
        {20261120, 20261120, 4, 0},  {20261120, 20261121, 4, 1},  {20261120, 20261219, 4, 29},
        {20261120, 20261220, 4, 30}, {20261120, 20261221, 3, 31}, {20261120, 20270118, 3, 59},
        {20261120, 20270119, 3, 60}, {20261120, 20270120, 2, 61}, {20261120, 20270217, 2, 89},
        {20261120, 20270218, 2, 90}, {20261120, 20270219, 1, 91}, {20261121, 20261120, 5, -1},
        {20280228, 20280229, 4, 1},  {20280229, 20280229, 4, 0},  {20280301, 20280229, 5, -1},
        {20280130, 20280229, 4, 30}, {20280129, 20280229, 3, 31}, {20270128, 20270227, 4, 30},
        {20271231, 20280330, 2, 90}, {20271231, 20280331, 1, 91}, {20260101, 20251231, 5, -1},
    };
    for (const Caso &caso : casos) {
        const Prazos::Situacao esperada{static_cast<EstadoDePrazo>(caso.Estado), caso.Vence, caso.Dias, 7};
        EXPECT_EQ(Prazos::DaAfericao({{20200101, caso.Vence, true}, 7}, caso.Hoje), esperada)
            << caso.Hoje << " " << caso.Vence;
    }
    EXPECT_EQ(AlcanceNoDia({20261120, 20261120, true}, 20261119), Alcance::NaoComecou);
    EXPECT_EQ(AlcanceNoDia({20261120, 20261120, true}, 20261120), Alcance::EmVigor);
    EXPECT_EQ(AlcanceNoDia({20261120, 20261120, false}, 20261120), Alcance::SemDocumento);
    EXPECT_EQ(AlcanceNoDia({20261120, 20261120, true}, 20261121), Alcance::Acabou);
}

TEST(Prazos, DoSensor_TwoInForce_CannotBeTold)
{
    const std::vector<Prazos::Afericao> duas{{{20260101, 20261231, true}, 1}, {{20261101, 20271231, true}, 2}};
    EXPECT_FALSE(Prazos::DoSensor(duas, 20261120));
    EXPECT_EQ(Prazos::DoSensor(duas, 20261031)->Afericao, 1);
    const std::vector<Prazos::Afericao> umaSem{{{20260101, 20261231, false}, 1}, {{20261101, 20271231, true}, 2}};
    EXPECT_EQ(Prazos::DoSensor(umaSem, 20261120)->Afericao, 2);
}

TEST(Prazos, Pior_IsTheLaterStateAndTheEarlierDay)
{
    const Prazos::Situacao em30{EstadoDePrazo::Em30, 20261201, 11, 1};
    EXPECT_TRUE(Prazos::Pior({EstadoDePrazo::Vencido, 20261101, -19, 2}, em30));
    EXPECT_FALSE(Prazos::Pior({EstadoDePrazo::Em60, 20261231, 41, 2}, em30));
    EXPECT_TRUE(Prazos::Pior({EstadoDePrazo::Em30, 20261130, 10, 2}, em30));
    EXPECT_FALSE(Prazos::Pior(em30, em30));
    EXPECT_EQ(Prazos::Estados().size(), 9u);
    EXPECT_EQ(Prazos::Nome(EstadoDePrazo::Em30), "Vence em até 30 dias");
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
    EXPECT_EQ(Contagens(*painel), "1=3 2=2 3=2 4=3 5=1 7=2 9=1");
    EXPECT_EQ(painel->Equipamentos.Valor(), 14);
    EXPECT_EQ(Textos(NoEstado(4)), "hoje/1/20261120 amanhã/1/20261121 em 30/1/20261220");
    EXPECT_EQ(Textos(NoEstado(3)), "em 31/1/20261221 em 60/1/20270119");
    EXPECT_EQ(Textos(NoEstado(2)), "em 61/1/20270120 em 90/1/20270218");
    EXPECT_EQ(Textos(NoEstado(1)), "em 91/1/20270219 longe/1/20281031 mais/1/20281101");
    EXPECT_EQ(Textos(NoEstado(5)), "ontem/1/20261119");
    EXPECT_EQ(Textos(NoEstado(6)), "");
    EXPECT_EQ(Textos(NoEstado(7)), "nunca/1/0 sem sensor/0/0");
    EXPECT_EQ(Textos(NoEstado(9)), "V-1/0/0");
    std::string meses;
    for (std::int32_t n = 1; n <= 24; ++n) {
        meses += std::to_string(painel->Meses.Valor()->Item(n)->Quantas.Valor());
    }
    EXPECT_EQ(meses, "222200000000000000000001");
    EXPECT_EQ(Textos(Lista(m_Ana, Com(Novo<ListaPrazosED>(), &ListaPrazosED::Mes, 202702))),
              "em 90/1/20270218 em 91/1/20270219");
    EXPECT_EQ(Lista(m_Ana, Novo<ListaPrazosED>()).size(), 10u); // every calibration that has the day
    const Ref<PrazoED> linha = NoEstado(4).front();
    EXPECT_EQ(linha->Texto(), "PrazoED{NroIntEquip=1, Codigo=\"hoje\", SubCodigo=\"\", TipoEquip=\"P\", "
                              "SetorInc=\"\", CodMunic=4314902, NroIntSensor=1, NroSensor=1, "
                              "NroIntAfericao=1, Numero=\"Choje\", DataVencimento=20/11/2026, Dias=0, Estado=4}");
    m_Registro.Relogio = DataDe(21, 11, 2026, 0, 0, 1);
    EXPECT_EQ(Contagens(), "1=2 2=2 3=2 4=3 5=2 7=2 9=1");
    m_Registro.Relogio = DataDe(20, 11, 2026, 23, 59, 59); // the same civil day
    EXPECT_EQ(Contagens(), "1=3 2=2 3=2 4=3 5=1 7=2 9=1");
}

TEST_F(ServicosPrazos, WorstSensor_Decides_AndThoseThatAreInactiveDoNot)
{
    const Data jan = DataDe(1, 1, 2026);
    const std::int32_t numero =
        Inclui(m_Ana, Poe(Poe(EquipamentoDe("R-1"), Poe(SensorDe(1), AfericaoDe("1", jan, DataDe(1, 12, 2026)))),
                          Poe(SensorDe(2), AfericaoDe("2", jan, DataDe(1, 6, 2026)))));
    EXPECT_EQ(Contagens(), "5=1");
    EXPECT_EQ(Textos(NoEstado(5)), "R-1/2/20260601");
    EXPECT_EQ(NoEstado(5).front()->Dias.Valor(), -172);
    EXPECT_EQ(NoEstado(5).front()->Numero.Valor(), "2");
    Abre(m_Ana, numero);
    Faz(m_Ana, "altera", Poe(SoNumero(numero), Com(SoSensor(2), &SensorED::Ativo, 2)));
    EXPECT_EQ(Contagens(), "4=1");
    EXPECT_EQ(Textos(NoEstado(4)), "R-1/1/20261201");
    Faz(m_Ana, "altera", Poe(SoNumero(numero), Poe(SoSensor(1), Com(SoAfericao(1), &AfericaoED::Ativo, 2))));
    EXPECT_EQ(Contagens(), "7=1"); // it was withdrawn, and there is no other
    Faz(m_Ana, "desativa", SoNumero(numero));
    EXPECT_EQ(Contagens(), "");
    EXPECT_EQ(Painel(m_Ana)->Equipamentos.Valor(), 0);
    Faz(m_Ana, "reativa", SoNumero(numero));
    EXPECT_EQ(Contagens(), "7=1");
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

TEST_F(ServicosPrazos, Documents_MissingCountAtOnce_AndDamagedOnceTheyAreRead)
{
    VenceEm("R-1", DataDe(31, 12, 2027));
    VenceEm("R-2", DataDe(31, 12, 2027));
    VenceEm("R-3", DataDe(1, 6, 2026));
    EXPECT_EQ(Contagens(), "1=2 5=1");
    TiraDocumento("CR-1");
    EXPECT_EQ(Contagens(), "1=1 5=1 8=1");
    EXPECT_EQ(Textos(NoEstado(8)), "R-1/1/20271231");
    m_Registro.Sql("DROP TRIGGER DOCUMENTO_SEM_UPDATE; UPDATE DOCUMENTO SET Sha256 = upper(Sha256)");
    EXPECT_EQ(Contagens(), "1=1 5=1 8=1");
    const auto conferido = Com(Novo<PainelPrazosED>(), &PainelPrazosED::ConfereDocumentos, 1);
    EXPECT_EQ(Contagens(*Painel(m_Ana, conferido)), "5=1 8=2"); // of one that has ended it is not asked
    EXPECT_EQ(Textos(Lista(
                  m_Ana, Com(Novo<ListaPrazosED>(), &ListaPrazosED::ConfereDocumentos, 1, &ListaPrazosED::Estado, 8))),
              "R-1/1/20271231 R-2/1/20271231");
    m_Registro.Sql("UPDATE DOCUMENTO SET Sha256 = lower(Sha256)");
    EXPECT_EQ(Contagens(*Painel(m_Ana, conferido)), "1=1 5=1 8=1");
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

TEST_F(ServicosPrazos, Estados_OfOneEquipment_AreOfItsActiveSensorsAndCalibrations)
{
    const std::int32_t numero = Inclui(
        m_Ana,
        Poe(Poe(EquipamentoDe("R-1"), Poe(Poe(SensorDe(1), AfericaoDe("1", DataDe(1, 1, 2025), DataDe(31, 12, 2025))),
                                          AfericaoDe("2", DataDe(1, 1, 2026), DataDe(1, 12, 2026)))),
            SensorDe(2)));
    const auto estados = [&](std::int32_t equipamento) {
        return Faz(m_Ana, "consultaEstados", Com(Novo<EstadosPrazoED>(), &EstadosPrazoED::NroIntEquip, equipamento),
                   Classe)
            .Como<EstadosPrazoED>();
    };
    const auto lidos = estados(numero);
    ASSERT_EQ(lidos->Sensores.Valor()->Count(), 2);
    EXPECT_EQ(lidos->Sensores.Valor()->Item(1)->Texto(),
              "PrazoED{NroIntEquip=1, NroIntSensor=1, NroSensor=1, NroIntAfericao=2, DataVencimento=01/12/2026, "
              "Dias=11, Estado=4}");
    EXPECT_EQ(lidos->Sensores.Valor()->Item(2)->Estado.Valor(), 7);
    ASSERT_EQ(lidos->Afericoes.Valor()->Count(), 2);
    EXPECT_EQ(lidos->Afericoes.Valor()->Item(1)->Estado.Valor(), 5);
    EXPECT_EQ(lidos->Afericoes.Valor()->Item(1)->NroIntAfericao.Valor(), 1);
    EXPECT_EQ(lidos->Afericoes.Valor()->Item(2)->Estado.Valor(), 4);
    EXPECT_FALSE(estados(Inclui(m_Ana, EquipamentoDe("R-2")))->Sensores.Escrito());
}

TEST_F(ServicosPrazos, WhatIsAnotherClients_IsNeitherCountedNorListed)
{
    VenceEm("R-1", DataDe(31, 12, 2027));
    const auto elisa = m_Registro.Sessao("elisa");
    EXPECT_EQ(Contagens(*Painel(elisa)), "");
    EXPECT_EQ(Painel(elisa)->Equipamentos.Valor(), 0);
    EXPECT_EQ(Lista(elisa, Com(Novo<ListaPrazosED>(), &ListaPrazosED::Estado, 1)).size(), 0u);
    EXPECT_EQ(Lista(elisa, Novo<ListaPrazosED>()).size(), 0u);
    EXPECT_EQ(RecusaDe(elisa, "consultaEstados", Com(Novo<EstadosPrazoED>(), &EstadosPrazoED::NroIntEquip, 1), Classe),
              "O cliente Autoridade Municipal de Trânsito não tem equipamento de número interno 1.");
    Inclui(elisa, EquipamentoDe("E-1"));
    EXPECT_EQ(Contagens(*Painel(elisa)), "7=1");
    EXPECT_EQ(Contagens(), "1=1");
}

TEST_F(ServicosPrazos, EveryOperation_WithoutTheRightToLook_IsRefused)
{
    const std::vector<std::pair<std::string, Ref<Objeto>>> operacoes = {
        {"consultaPainel", Novo<PainelPrazosED>()},
        {"listaPrazos", Novo<ListaPrazosED>()},
        {"consultaEstados", Com(Novo<EstadosPrazoED>(), &EstadosPrazoED::NroIntEquip, 1)}};
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
    for (const auto estado : {std::uint8_t{0}, std::uint8_t{10}}) {
        EXPECT_EQ(RecusaDe(m_Ana, "listaPrazos", Com(Novo<ListaPrazosED>(), &ListaPrazosED::Estado, estado), Classe),
                  "Não existe o estado de prazo " + std::to_string(estado) + ".");
    }
    EXPECT_EQ(RecusaDe(m_Ana, "consultaPainel", Novo<ListaPrazosED>(), Classe),
              "A operação pede um registro PainelPrazosED e recebeu ListaPrazosED.");
    EXPECT_EQ(RecusaDe(m_Ana, "consultaEstados", Com(Novo<EstadosPrazoED>(), &EstadosPrazoED::NroIntEquip, 9), Classe),
              "O cliente Autoridade Estadual de Trânsito não tem equipamento de número interno 9.");
}

TEST_F(ServicosPrazos, GivenUp_CountsNothing)
{
    VenceEm("R-1", DataDe(31, 12, 2027));
    const Acompanhamento acompanha(*m_Ana, [](double, const std::string &) { return false; });
    EXPECT_EQ(RecusaDe(m_Ana, "listaPrazos", Novo<ListaPrazosED>(), Classe),
              "A operação foi cancelada: nada foi gravado.");
}

// Past the guards, as in a file that somebody has written to with a program of their own.
TEST_F(ServicosPrazos, TwoInForceAtOnce_AreToldAndNotCounted)
{
    VenceEm("R-1", DataDe(31, 12, 2027));
    VenceEm("R-2", DataDe(31, 12, 2027));
    m_Registro.Sql(
        "DROP TRIGGER AFERICAO_SEM_SOBREPOSICAO_NOVA; INSERT INTO AFERICAO SELECT 9, NroIntSensor, Numero, "
        "Marca, DataVerificacao, 20280101, Ativo, NroIntImgCertif, TipoAfer, PortDimel, Versao FROM AFERICAO "
        "WHERE NroIntAfericao = 1");
    const auto painel = Painel(m_Ana);
    EXPECT_EQ(Contagens(*painel), "1=1");
    EXPECT_EQ(painel->Equipamentos.Valor(), 2);
    EXPECT_EQ(painel->NaoContados.Valor(), 1);
    ASSERT_EQ(painel->Falhas.Valor()->Count(), 1);
    EXPECT_EQ(painel->Falhas.Valor()->Item(1)->Motivo.Valor(),
              "O sensor 1 do equipamento R-1 tem mais de uma aferição em vigor em 20/11/2026: não há como saber qual "
              "vale. O registro precisa ser conferido.");
    EXPECT_EQ(Textos(NoEstado(1)), "R-2/1/20271231");
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
        }
        return feito;
    }
    static int Esperado(const Feito &feito, int hoje)
    {
        int pior = 0;
        for (const Sensor &sensor : feito.Sensores) {
            int vence = 0;
            pior = std::max(pior, sensor.Ativo ? NumeroDoEstado(sensor.Afericoes, hoje, vence) : 0);
        }
        return feito.Tipo == "V" ? 9 : pior == 0 ? 7 : pior;
    }
    void ConfereNoDia(int hoje)
    {
        m_Registro.Relogio = DiaContado(hoje);
        std::map<int, int> porEstado;
        std::map<int, std::set<std::int32_t>> numeros;
        std::map<std::int32_t, std::set<std::int32_t>> porMes;
        std::map<std::int32_t, int> meses;
        int ativos = 0;
        for (const Feito &feito : m_Feitos) {
            if (!feito.Ativo) {
                continue;
            }
            ++ativos;
            const int estado = Esperado(feito, hoje);
            ++porEstado[estado];
            numeros[estado].insert(feito.Numero);
            for (const Sensor &sensor : feito.Sensores) {
                int vence = 0;
                const int seu = sensor.Ativo ? NumeroDoEstado(sensor.Afericoes, hoje, vence) : 0;
                if ((seu >= 1 && seu <= 4) || seu == 8) {
                    ++meses[Civil(vence) / 100];
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
        for (int estado = 1; estado <= 9; ++estado) {
            std::set<std::int32_t> lidos;
            for (const Ref<PrazoED> &prazo : NoEstado(estado)) {
                EXPECT_TRUE(lidos.insert(prazo->NroIntEquip).second);
                EXPECT_EQ(prazo->Estado.Valor(), estado);
            }
            EXPECT_EQ(lidos, numeros[estado]) << estado;
            m_Vistos[estado] += static_cast<int>(lidos.size());
        }
    }
    // What the rule calls in force, the question for the calibration of the day answers.
    int ConfereVigencia(int hoje)
    {
        int emVigor = 0;
        m_Registro.Relogio = DiaContado(hoje);
        for (const Feito &feito : m_Feitos) {
            if (!feito.Ativo || feito.Sensores.size() != 1 || !feito.Sensores.front().Ativo) {
                continue;
            }
            const int estado = Esperado(feito, hoje);
            const auto vigente = Faz(m_Ana, "consultaSimplesAfericaoVigente",
                                     Com(Com(Novo<ConsultaAfericaoED>(), &ConsultaAfericaoED::TipoConsulta, 1),
                                         &ConsultaAfericaoED::NroIntEquip, feito.Numero,
                                         &ConsultaAfericaoED::DtInfracao, DiaContado(hoje)))
                                     .Como<AfericaoED>();
            EXPECT_EQ(vigente->NroIntAfericao.Valor() != 0, estado >= 1 && estado <= 4) << feito.Numero;
            emVigor += estado >= 1 && estado <= 4 ? 1 : 0;
        }
        return emVigor;
    }

    Sorte m_Sorte{16};
    std::vector<Feito> m_Feitos;
    std::map<int, int> m_Vistos;
};

TEST_F(PrazosAoAcaso, Panel_OfRandomHistories_IsAsCountedByDays)
{
    Registra(motor::DeTeste() == motor::Qual::Postgres ? 60 : 300);
    int emVigor = 0;
    for (const int hoje : {100, 400, 730, 1100}) {
        ConfereNoDia(hoje);
        emVigor += ConfereVigencia(hoje);
    }
    EXPECT_GT(emVigor, 5);
    for (int estado = 1; estado <= 9; ++estado) {
        EXPECT_GT(m_Vistos[estado], 0) << estado;
    }
}

Ref<PrazoED> PrazoCom(std::int32_t sensor, const std::string &codigo, Data vence)
{
    auto prazo = Novo<PrazoED>();
    prazo->NroIntSensor = sensor;
    prazo->NroSensor = std::int16_t{2};
    prazo->Codigo = codigo;
    prazo->Numero = "INM 7/26";
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
                                  "UID:sensor-17@0a1b\r\n"
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
}

TEST(CalendarioDePrazos, Texts_StandForThemselves)
{
    EXPECT_EQ(CalendarioDePrazos::Escapado("a\\b;c,d:e\r\nf\ng\rh\x01i"), "a\\\\b\\;c\\,d:e\\nf\\ng\\nhi");
}

} // namespace
