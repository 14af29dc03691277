#include "host/Conversoes.h"
#include "tests/services/ServicosTeste.h"

#include <string>
#include <type_traits>
#include <vector>

using namespace mesa;

namespace {

constexpr std::uint8_t Limite = 1;
constexpr std::uint8_t Proibido = 2;

// Limits and days of the equipment F-001 and prohibited hours of AG-1, which have none at first.
class ServicosLimites : public ServicosTeste {
  protected:
    Ref<LimiteDifED> Novo_(std::uint8_t dia, std::int32_t inicio, std::int32_t fim, std::uint8_t tipo = Limite)
    {
        return LimiteDe(tipo == Limite ? m_Equipamento : m_Agente, dia, inicio, fim,
                        std::int16_t(tipo == Limite ? 40 : 0));
    }
    Ref<DiaEspecificoED> NovoDia(Data dia, std::int32_t inicio, std::int32_t fim)
    {
        return DiaDe(m_Equipamento, dia, inicio, fim);
    }
    static void Altera(const Ref<SessaoServico> &sessao, const std::vector<Ref<LimiteDifED>> &limites)
    {
        Faz(sessao, "alteraListaLimitesDif", ListaDeLimites(limites));
    }
    static std::string Recusa(const Ref<SessaoServico> &sessao, const std::vector<Ref<LimiteDifED>> &limites)
    {
        return RecusaDe(sessao, "alteraListaLimitesDif", ListaDeLimites(limites));
    }
    // A limit or prohibited hour from 07:30 to 09:00 on Mondays, which each of them has read.
    void ComLimiteLido(const std::vector<Ref<SessaoServico>> &sessoes, std::uint8_t tipo = Limite)
    {
        Altera(m_Ana, {Novo_(2, 730, 900, tipo)});
        for (const auto &sessao : sessoes) {
            Faz(sessao, "consultaSimplesLimiteDif", SoLimite(1));
        }
    }
    // What is listed: "1:2 730-900; " for row 1 of Monday.
    std::string Lista(std::uint8_t tipo)
    {
        const auto pedido = Com(Novo<LimiteDifED>(), &LimiteDifED::NroIntEquip,
                                tipo == Limite ? m_Equipamento : m_Agente, &LimiteDifED::TipoLimite, tipo);
        const ListaDe<LimiteDifED> lista = Faz(m_Ana, "listaLimiteDif", pedido).Como<EquiptoED>()->ListaLimiteDif;
        std::string texto;
        for (std::int32_t n = 1; n <= lista->Count(); ++n) {
            const LimiteDifED &l = *lista->Item(n);
            texto += CStr(l.NroInt.Valor()) + ":" + CStr(l.Dia.Valor()) + " " + CStr(l.HoraInicio.Valor()) + "-" +
                     CStr(l.HoraFim.Valor()) + "; ";
        }
        return texto;
    }
    std::string Dias()
    {
        const auto pedido = Com(Novo<DiaEspecificoED>(), &DiaEspecificoED::NroIntEquip, m_Equipamento);
        const ListaDe<DiaEspecificoED> lista =
            Faz(m_Ana, "listaDiaEspecifico", pedido).Como<EquiptoED>()->ListaDiaEspecifico;
        std::string texto;
        for (std::int32_t n = 1; n <= lista->Count(); ++n) {
            const DiaEspecificoED &d = *lista->Item(n);
            texto += CStr(d.NroInt.Valor()) + ":" + CStr(d.Data.Valor()) + " " + CStr(d.HoraInicio.Valor()) + "; ";
        }
        return texto;
    }

    std::int32_t m_Equipamento = Inclui(m_Ana, EquipamentoDe("F-001"));
    // Of the type that has prohibited hours, and no limits.
    std::int32_t m_Agente = Inclui(m_Ana, DoTipo(EquipamentoDe("AG-1"), "F"));
};

TEST_F(ServicosLimites, alteraListaLimitesDif_NewRows_AreListedByDayAndHour)
{
    Altera(m_Ana, {Novo_(3, 730, 900), Novo_(2, 1200, 1300), Novo_(2, 730, 900)});
    Altera(m_Ana, {Novo_(2, 0, 2359, Proibido)});
    EXPECT_EQ(Lista(Limite), "3:2 730-900; 2:2 1200-1300; 1:3 730-900; ");
    EXPECT_EQ(Lista(Proibido), "4:2 0-2359; ");
}

TEST_F(ServicosLimites, listaLimiteDif_WithoutRows_GivesAnEmptyList)
{
    EXPECT_EQ(Lista(Limite), "");
    EXPECT_EQ(Dias(), "");
}

TEST_F(ServicosLimites, consultaSimplesLimiteDif_GivesTheWholeRow)
{
    Altera(m_Ana, {Com(Novo_(8, 5, 2359), &LimiteDifED::VelocMin, 20)});
    EXPECT_EQ(Faz(m_Ana, "consultaSimplesLimiteDif", SoLimite(1)).Como<LimiteDifED>()->Texto(),
              "LimiteDifED{NroInt=1, NroIntEquip=1, Dia=8, HoraInicio=5, HoraFim=2359, VelocPerm=40, VelocMin=20, "
              "Ativo=1, TipoLimite=1}");
}

TEST_F(ServicosLimites, alteraListaLimitesDif_AnExistingRow_KeepsWhatIsUnset)
{
    ComLimiteLido({m_Ana});
    const auto l = Com(SoLimite(1), &LimiteDifED::HoraFim, 1000);
    Altera(m_Ana, {l});
    EXPECT_EQ(Lista(Limite), "1:2 730-1000; ");
    l->HoraFim = 1030; // and once more, without reading what I wrote myself
    Altera(m_Ana, {l});
    EXPECT_EQ(m_Registro.Sql("SELECT VelocPerm FROM LIMITE"), "40");
}

TEST_F(ServicosLimites, alteraListaLimitesDif_OneBadRow_StoresNone)
{
    EXPECT_EQ(Recusa(m_Ana, {Novo_(2, 730, 900), Novo_(3, 900, 730)}),
              "A hora final (07:30) é anterior à hora inicial (09:00). Um período que passa da meia-noite precisa de "
              "duas linhas.");
    EXPECT_EQ(Lista(Limite), "");
}

TEST_F(ServicosLimites, alteraListaLimitesDif_WithoutRows_IsRefused)
{
    const std::string recusa = "Nenhum dia foi informado: nada foi gravado.";
    EXPECT_EQ(Recusa(m_Ana, {}), recusa);
    EXPECT_EQ(RecusaDe(m_Ana, "alteraListaLimitesDif", Novo<EquiptoED>()), recusa);
    EXPECT_EQ(Recusa(m_Ana, {nullptr}), "A lista enviada tem um item vazio na posição 1.");
}

TEST_F(ServicosLimites, Ranges_AreCheckedAgain)
{
    const auto recusa = [&]<class T>(Campo<T> LimiteDifED::*campo, std::type_identity_t<T> valor) {
        return Recusa(m_Ana, {Com(Novo_(2, 730, 900), campo, valor)});
    };
    EXPECT_EQ(recusa(&LimiteDifED::Dia, 0), "O campo \"dia da semana\" deve estar entre 1 e 8; veio 0.");
    EXPECT_EQ(recusa(&LimiteDifED::Dia, 9), "O campo \"dia da semana\" deve estar entre 1 e 8; veio 9.");
    for (const std::int32_t hora : {1260, -1}) {
        EXPECT_EQ(recusa(&LimiteDifED::HoraInicio, hora), "A hora inicial não é válida: informe de 00:00 a 23:59.");
    }
    EXPECT_EQ(recusa(&LimiteDifED::HoraFim, 2400), "A hora final não é válida: informe de 00:00 a 23:59.");
    EXPECT_EQ(recusa(&LimiteDifED::VelocPerm, 0), "O campo \"velocidade permitida\" deve estar entre 1 e 999; veio 0.");
    EXPECT_EQ(recusa(&LimiteDifED::VelocMin, 1000),
              "O campo \"velocidade mínima\" deve estar entre 0 e 999; veio 1000.");
    EXPECT_EQ(Recusa(m_Ana, {Com(Novo_(2, 730, 900, Proibido), &LimiteDifED::VelocPerm, 40)}),
              "O campo \"velocidade permitida\" deve estar entre 0 e 0; veio 40.");
    EXPECT_EQ(recusa(&LimiteDifED::TipoLimite, 3), "Não existe o tipo de limite 3.");
    EXPECT_EQ(recusa(&LimiteDifED::NroIntEquip, 77),
              "O cliente Autoridade Estadual de Trânsito não tem equipamento de número interno 77.");
    EXPECT_EQ(Lista(Limite), "");
}

TEST_F(ServicosLimites, Row_OfAKindWithWhichTheEquipmentDoesNotWork_IsRefused)
{
    const std::string semLimites = "O equipamento AG-1 não trabalha com limites diferenciados.";
    EXPECT_EQ(Recusa(m_Ana, {LimiteDe(m_Agente, 2, 730, 900)}), semLimites);
    EXPECT_EQ(RecusaDe(m_Ana, "adicionaDiaEspecifico", DiaDe(m_Agente, DataDe(25, 12, 2026), 0, 2359)), semLimites);
    EXPECT_EQ(Recusa(m_Ana, {LimiteDe(m_Equipamento, 2, 730, 900, 0)}),
              "O equipamento F-001 não trabalha com horários proibidos.");
    EXPECT_EQ(Linhas("LIMITE") + Linhas("DIA"), "00");
}

// An equipment that works with them no longer keeps its rows, and loses them when told to, but they do not change.
TEST_F(ServicosLimites, Row_OfAnEquipmentThatNoLongerWorksWithThem_IsOnlyExcluded)
{
    ComLimiteLido({m_Ana});
    Faz(m_Ana, "adicionaDiaEspecifico", NovoDia(DataDe(25, 12, 2026), 0, 2359));
    Faz(m_Ana, "consultaSimplesDiaEspecifico", SoDia(1));
    Faz(m_Ana, "altera", Com(SoNumero(m_Equipamento), &EquiptoED::TemLimiteDif, 2));
    const std::string recusa = "O equipamento F-001 não trabalha com limites diferenciados.";
    EXPECT_EQ(Recusa(m_Ana, {Com(SoLimite(1), &LimiteDifED::HoraFim, 1000)}), recusa);
    EXPECT_EQ(RecusaDe(m_Ana, "alteraDiaEspecifico", Com(SoDia(1), &DiaEspecificoED::HoraFim, 1000)), recusa);
    Altera(m_Ana, {SoLimite(1)}); // as it stands
    Faz(m_Ana, "desativaLimiteDif", SoLimite(1));
    Faz(m_Ana, "desativaDiaEspecifico", SoDia(1));
}

TEST_F(ServicosLimites, Row_OfOneMinuteOrWithAMinimumAboveTheSpeed_IsAccepted)
{
    Altera(m_Ana, {Novo_(2, 800, 800)});
    Altera(m_Ana, {Com(Novo_(2, 830, 900), &LimiteDifED::VelocMin, 50)});
}

TEST_F(ServicosLimites, Overlap_OnTheSameDay_IsRefusedWithWhichAndWho)
{
    Recusa(m_Ana, {Novo_(2, 730, 900), Novo_(2, 800, 1000)}); // in one save
    EXPECT_EQ(Lista(Limite), "");
    Altera(m_Ana, {Novo_(2, 730, 900)});
    m_Registro.PassaSegundos(60);
    const std::string outro = "O limite diferenciado de Segunda, 07:30 a 09:00, gravado por Ana Souza em 20/11/2026 às "
                              "10:00:00, já cobre parte do período das ";
    EXPECT_EQ(Recusa(m_Ana, {Novo_(2, 800, 1000)}), outro + "08:00 às 10:00.");
    EXPECT_EQ(Recusa(m_Ana, {Novo_(2, 0, 2359)}), outro + "00:00 às 23:59.");
    EXPECT_EQ(Recusa(m_Ana, {Novo_(2, 800, 800)}), outro + "08:00 às 08:00.");
    EXPECT_EQ(Recusa(m_Ana, {Novo_(2, 730, 900)}), outro + "07:30 às 09:00.");
    EXPECT_EQ(Lista(Limite), "1:2 730-900; ");
}

TEST_F(ServicosLimites, Overlap_TwoThatChangePlaces_Succeed)
{
    Altera(m_Ana, {Novo_(2, 730, 900), Novo_(2, 1000, 1100)});
    const auto le = [&](std::int32_t numero) {
        return Faz(m_Ana, "consultaSimplesLimiteDif", SoLimite(numero)).Como<LimiteDifED>();
    };
    Altera(m_Ana, {Com(le(1), &LimiteDifED::HoraInicio, 1000, &LimiteDifED::HoraFim, 1100),
                   Com(le(2), &LimiteDifED::HoraInicio, 730, &LimiteDifED::HoraFim, 900)});
    EXPECT_EQ(Lista(Limite), "2:2 730-900; 1:2 1000-1100; ");
    EXPECT_EQ(m_Registro.Sql("SELECT group_concat(Acao || Versao, ' ') FROM (SELECT * FROM HISTORICO "
                             "WHERE Entidade = 'LIMITE' ORDER BY Nro) h"),
              "inclui1 inclui1 altera2 altera2");
    Recusa(m_Ana, {Com(le(1), &LimiteDifED::HoraInicio, 700)}); // nothing stays aside
    EXPECT_EQ(Lista(Limite), "2:2 730-900; 1:2 1000-1100; ");
}

TEST_F(ServicosLimites, Overlap_ByEveryWayPastTheServices_IsRefusedByTheDatabase)
{
    Altera(m_Ana, {Novo_(2, 730, 900), Novo_(2, 900, 1000), Novo_(3, 730, 900)});
    Altera(m_Ana, {Novo_(2, 730, 900, Proibido)});
    Faz(m_Ana, "adicionaDiaEspecifico", NovoDia(DataDe(25, 12, 2026), 800, 900));
    Faz(m_Ana, "adicionaDiaEspecifico", NovoDia(DataDe(26, 12, 2026), 800, 900));
    const std::string nova = "INTO LIMITE VALUES (9, 1, 2, ";
    const std::string novo = "INTO DIA VALUES (9, 1, 20261225, ";
    struct Caso {
        std::string Sql;
        std::string Motivo;
    };
    const std::vector<Caso> casos = {
        {"INSERT " + nova + "859, 1100, 40, 0, 1, 1, 1)", "LIMITE_SOBREPOSTO"},
        {"INSERT OR REPLACE " + nova + "0, 2359, 40, 0, 1, 1, 1)", "LIMITE_SOBREPOSTO"},
        {"INSERT " + nova + "800, 800, 40, 0, 1, 1, 1)", "LIMITE_SOBREPOSTO"},
        {"INSERT " + nova + "730, 900, 40, 0, 1, 1, 1)", "LIMITE_SOBREPOSTO"},
        {"INSERT INTO LIMITE (NroIntEquip, Dia, HoraInicio, HoraFim, VelocPerm, VelocMin, Ativo, TipoLimite, Versao) "
         "VALUES (1, 2, 859, 1100, 40, 0, 1, 1, 1)",
         "LIMITE_SOBREPOSTO"},
        {"UPDATE LIMITE SET HoraFim = 901 WHERE NroInt = 1", "LIMITE_SOBREPOSTO"},
        {"UPDATE OR REPLACE LIMITE SET HoraInicio = 859 WHERE NroInt = 2", "LIMITE_SOBREPOSTO"},
        {"UPDATE LIMITE SET HoraInicio = 0, HoraFim = 2359", "LIMITE_SOBREPOSTO"},
        {"UPDATE LIMITE SET Dia = 2 WHERE NroInt = 3", "LIMITE_FIXA"},
        {"UPDATE LIMITE SET TipoLimite = 2 WHERE NroInt = 3", "LIMITE_FIXA"},
        {"INSERT " + novo + "0, 801, 40, 0, 1, 1)", "DIA_SOBREPOSTO"},
        {"INSERT " + novo + "800, 900, 40, 0, 1, 1)", "DIA_SOBREPOSTO"},
        {"UPDATE DIA SET Data = 20261225", "DIA_SOBREPOSTO"},
    };
    for (const Caso &caso : casos) {
        EXPECT_EQ(MotivoDe(caso.Sql), caso.Motivo) << caso.Sql;
    }
    m_Registro.Sql("INSERT " + nova + "730, 900, 40, 0, 2, 1, 1)");
    EXPECT_EQ(MotivoDe("UPDATE LIMITE SET Ativo = 1 WHERE NroInt = 9"), "LIMITE_SOBREPOSTO");
    // What has no minute in common is none.
    EXPECT_EQ(MotivoDe("INSERT INTO LIMITE VALUES (10, 1, 2, 700, 730, 40, 0, 1, 1, 1)"), "done");
    EXPECT_EQ(MotivoDe("INSERT INTO DIA VALUES (9, 1, 20261225, 900, 901, 40, 0, 1, 1)"), "done");
    EXPECT_EQ(Lista(Limite), "10:2 700-730; 1:2 730-900; 2:2 900-1000; 3:3 730-900; ");
}

TEST_F(ServicosLimites, Overlap_WhereThereIsNone_IsAccepted)
{
    Altera(m_Ana, {Novo_(2, 730, 900)});
    Altera(m_Ana, {Novo_(2, 900, 1000), Novo_(2, 600, 730)}); // one ends as the next begins
    Altera(m_Ana, {Novo_(3, 730, 900)});
    Faz(m_Ana, "desativaLimiteDif", SoLimite(1));
    Altera(m_Ana, {Novo_(2, 730, 900)});
}

TEST_F(ServicosLimites, Row_OfAnotherDayOrKind_CannotBecome)
{
    ComLimiteLido({m_Ana});
    EXPECT_EQ(Recusa(m_Ana, {Com(SoLimite(1), &LimiteDifED::Dia, 3)}),
              "O limite diferenciado de Segunda, 07:30 a 09:00, não pode passar para outro dia ou outro tipo.");
    const std::int32_t outro = Inclui(m_Ana, EquipamentoDe("F-002"));
    EXPECT_EQ(Recusa(m_Ana, {Com(SoLimite(1), &LimiteDifED::NroIntEquip, outro)}),
              "O limite diferenciado de Segunda, 07:30 a 09:00, é de outro equipamento.");
}

TEST_F(ServicosLimites, Row_NeverRead_IsNotChanged)
{
    Altera(m_Ana, {Novo_(2, 730, 900)});
    ASSERT_EQ(Lista(Limite), "1:2 730-900; ");
    EXPECT_EQ(Recusa(m_Ana, {Com(SoLimite(1), &LimiteDifED::HoraFim, 1000)}),
              "O limite diferenciado de Segunda, 07:30 a 09:00, não foi aberto. Abra-o antes de "
              "alterá-lo.");
}

// In one session: what was read first is refused after what was read second was saved, and so is an old list.
TEST_F(ServicosLimites, Row_OfTwoCopies_TheFirstIsRefusedAfterTheSecondWasSaved)
{
    Altera(m_Ana, {Novo_(2, 730, 900)});
    const auto le = [&] { return Faz(m_Ana, "consultaSimplesLimiteDif", SoLimite(1)).Como<LimiteDifED>(); };
    const auto listado =
        Faz(m_Ana, "listaLimiteDif", LimiteDe(m_Equipamento, 2, 0, 0)).Como<EquiptoED>()->ListaLimiteDif.Valor();
    const auto primeira = le();
    const auto segunda = le();
    EXPECT_EQ(primeira->VersaoLida, 1);
    EXPECT_EQ(listado->Item(1)->VersaoLida, 1);
    Altera(m_Ana, {Com(segunda, &LimiteDifED::HoraFim, 1000)});
    EXPECT_EQ(segunda->VersaoLida, 2);
    const std::string recusa =
        "O limite diferenciado de Segunda, 07:30 a 10:00, foi alterado por Ana Souza em 20/11/2026 às 10:00:00 (hora "
        "final), depois de aberto aqui. Nada foi gravado: abra-o de novo e repita a sua alteração.";
    EXPECT_EQ(Recusa(m_Ana, {Com(primeira, &LimiteDifED::HoraFim, 1100)}), recusa);
    EXPECT_EQ(RecusaDe(m_Ana, "desativaLimiteDif", listado->Item(1)), recusa);
    Altera(m_Ana, {Com(segunda, &LimiteDifED::HoraFim, 1030)}); // saved again without another reading
    Faz(m_Ana, "desativaLimiteDif", segunda);
}

TEST_F(ServicosLimites, Day_OfTwoCopies_TheFirstIsRefusedAfterTheSecondWasSaved)
{
    Faz(m_Ana, "adicionaDiaEspecifico", NovoDia(DataDe(25, 12, 2026), 800, 900));
    const auto le = [&] { return Faz(m_Ana, "consultaSimplesDiaEspecifico", SoDia(1)).Como<DiaEspecificoED>(); };
    const auto listado = Faz(m_Ana, "listaDiaEspecifico", NovoDia(Data{}, 0, 0)).Como<EquiptoED>();
    const auto primeira = le();
    const auto segunda = le();
    Faz(m_Ana, "alteraDiaEspecifico", Com(segunda, &DiaEspecificoED::HoraFim, 1000));
    const std::string recusa =
        "O dia específico 25/12/2026, 08:00 a 10:00, foi alterado por Ana Souza em 20/11/2026 às 10:00:00 (hora "
        "final), depois de aberto aqui. Nada foi gravado: abra-o de novo e repita a sua alteração.";
    EXPECT_EQ(RecusaDe(m_Ana, "alteraDiaEspecifico", Com(primeira, &DiaEspecificoED::HoraFim, 1100)), recusa);
    EXPECT_EQ(RecusaDe(m_Ana, "desativaDiaEspecifico", listado->ListaDiaEspecifico.Valor()->Item(1)), recusa);
    Faz(m_Ana, "alteraDiaEspecifico", Com(segunda, &DiaEspecificoED::HoraFim, 1030));
    Faz(m_Ana, "desativaDiaEspecifico", segunda);
}

TEST_F(ServicosLimites, Row_ChangedBySomebodyElse_IsRefusedWithWhoWhatAndWhen)
{
    const auto bia = m_Registro.Sessao("bia");
    ComLimiteLido({m_Ana, bia}, Proibido);
    m_Registro.PassaSegundos(30);
    const auto l = Com(SoLimite(1), &LimiteDifED::HoraInicio, 800);
    Altera(bia, {l});
    l->HoraInicio = 815;
    EXPECT_EQ(
        Recusa(m_Ana, {l}),
        "O horário proibido de Segunda, 08:00 a 09:00, foi alterado por Bia Nunes em 20/11/2026 às 10:00:30 (hora "
        "inicial), depois de aberto aqui. Nada foi gravado: abra-o de novo e repita a sua alteração.");
    EXPECT_EQ(Lista(Proibido), "1:2 800-900; ");
}

TEST_F(ServicosLimites, Limit_ChangedBySomebodyElse_IsRefusedWithWhoWhatAndWhen)
{
    const auto bia = m_Registro.Sessao("bia");
    ComLimiteLido({m_Ana, bia});
    m_Registro.PassaSegundos(30);
    Altera(bia, {Com(SoLimite(1), &LimiteDifED::VelocPerm, 50, &LimiteDifED::VelocMin, 20)});
    EXPECT_EQ(Recusa(m_Ana, {Novo_(3, 730, 900), Com(SoLimite(1), &LimiteDifED::VelocPerm, 30)}),
              "O limite diferenciado de Segunda, 07:30 a 09:00, foi alterado por Bia Nunes em 20/11/2026 às 10:00:30 "
              "(velocidade mínima, velocidade permitida), depois de aberto aqui. Nada foi gravado: abra-o de novo e "
              "repita a sua alteração.");
    EXPECT_EQ(Lista(Limite), "1:2 730-900; "); // nor was the new row stored
    EXPECT_EQ(m_Registro.Sql("SELECT VelocPerm FROM LIMITE"), "50");
}

TEST_F(ServicosLimites, Day_ChangedBySomebodyElse_IsRefusedWithWhoWhatAndWhen)
{
    Faz(m_Ana, "adicionaDiaEspecifico", NovoDia(DataDe(25, 12, 2026), 800, 900));
    const auto bia = m_Registro.Sessao("bia");
    Faz(m_Ana, "consultaSimplesDiaEspecifico", SoDia(1));
    Faz(bia, "consultaSimplesDiaEspecifico", SoDia(1));
    m_Registro.PassaSegundos(30);
    Faz(bia, "alteraDiaEspecifico",
        Com(SoDia(1), &DiaEspecificoED::Data, DataDe(24, 12, 2026), &DiaEspecificoED::HoraFim, 1000));
    EXPECT_EQ(RecusaDe(m_Ana, "alteraDiaEspecifico", Com(SoDia(1), &DiaEspecificoED::VelocPerm, 30)),
              "O dia específico 24/12/2026, 08:00 a 10:00, foi alterado por Bia Nunes em 20/11/2026 às 10:00:30 (data, "
              "hora final), depois de aberto aqui. Nada foi gravado: abra-o de novo e repita a sua alteração.");
    EXPECT_EQ(m_Registro.Sql("SELECT VelocPerm FROM DIA"), "40");
    Faz(bia, "desativaDiaEspecifico", SoDia(1));
    for (const char *metodo : {"desativaDiaEspecifico", "consultaSimplesDiaEspecifico"}) {
        EXPECT_EQ(
            RecusaDe(m_Ana, metodo, SoDia(1)),
            "O dia específico 24/12/2026, 08:00 a 10:00, já foi excluído por Bia Nunes em 20/11/2026 às 10:00:30.");
    }
}

TEST_F(ServicosLimites, Row_ExcludedBySomebodyElse_IsRefusedWithWhoAndWhen)
{
    ComLimiteLido({m_Ana});
    Faz(m_Registro.Sessao("bia"), "desativaLimiteDif", SoLimite(1));
    const std::string nome = "O limite diferenciado de Segunda, 07:30 a 09:00,";
    const std::string quando = " por Bia Nunes em 20/11/2026 às 10:00:00";
    EXPECT_EQ(RecusaDe(m_Ana, "desativaLimiteDif", SoLimite(1)), nome + " já foi excluído" + quando + ".");
    EXPECT_EQ(RecusaDe(m_Ana, "consultaSimplesLimiteDif", SoLimite(1)), nome + " já foi excluído" + quando + ".");
    EXPECT_EQ(Recusa(m_Ana, {Com(SoLimite(1), &LimiteDifED::HoraFim, 1000)}),
              nome + " foi alterado" + quando +
                  " (desativação), depois de aberto aqui. Nada foi gravado: abra-o de novo e repita a sua alteração.");
    EXPECT_EQ(Lista(Limite), "");
    EXPECT_EQ(Linhas("LIMITE"), "1");
}

TEST_F(ServicosLimites, Days_AreAddedChangedAndDeactivated)
{
    Faz(m_Ana, "adicionaDiaEspecifico", NovoDia(DataDe(25, 12, 2026), 0, 2359));
    Faz(m_Ana, "adicionaDiaEspecifico", NovoDia(DataDe(1, 1, 2026), 800, 900));
    EXPECT_EQ(Dias(), "2:01/01/2026 800; 1:25/12/2026 0; ");
    EXPECT_EQ(Faz(m_Ana, "consultaSimplesDiaEspecifico", SoDia(1)).Como<DiaEspecificoED>()->Texto(),
              "DiaEspecificoED{NroInt=1, NroIntEquip=1, Data=25/12/2026, HoraInicio=0, HoraFim=2359, VelocPerm=40, "
              "VelocMin=0, Ativo=1}");
    // A day may move, unlike the day of a limit.
    Faz(m_Ana, "alteraDiaEspecifico", Com(SoDia(1), &DiaEspecificoED::Data, DataDe(24, 12, 2026)));
    EXPECT_EQ(Dias(), "2:01/01/2026 800; 1:24/12/2026 0; ");
    Faz(m_Ana, "desativaDiaEspecifico", SoDia(2));
    EXPECT_EQ(Dias(), "1:24/12/2026 0; ");
}

TEST_F(ServicosLimites, Days_Refusals)
{
    Faz(m_Ana, "adicionaDiaEspecifico", NovoDia(DataDe(25, 12, 2026), 800, 900));
    EXPECT_EQ(RecusaDe(m_Ana, "adicionaDiaEspecifico", NovoDia(DataDe(25, 12, 2026), 830, 1000)),
              "O dia específico 25/12/2026, 08:00 a 09:00, gravado por Ana Souza em 20/11/2026 às 10:00:00, já cobre "
              "parte do período das 08:30 às 10:00.");
    EXPECT_EQ(RecusaDe(m_Ana, "adicionaDiaEspecifico", NovoDia(Data{}, 800, 900)),
              "O campo \"data\" precisa de uma data válida.");
    EXPECT_EQ(RecusaDe(m_Ana, "adicionaDiaEspecifico", SoDia(1)),
              "Este dia específico já foi incluído, com o número interno 1.");
    EXPECT_EQ(RecusaDe(m_Ana, "alteraDiaEspecifico", SoDia(1)),
              "O dia específico 25/12/2026, 08:00 a 09:00, não foi aberto. Abra-o antes de alterá-lo.");
}

TEST_F(ServicosLimites, Equipment_Deactivated_KeepsItsLimitsAsTheyAre)
{
    Altera(m_Ana, {Novo_(2, 730, 900)});
    Faz(m_Ana, "desativa", SoNumero(m_Equipamento));
    const std::string recusa = "O equipamento F-001 está desativado e não pode ser alterado. Reative-o antes.";
    EXPECT_EQ(Recusa(m_Ana, {Novo_(3, 730, 900)}), recusa);
    EXPECT_EQ(RecusaDe(m_Ana, "desativaLimiteDif", SoLimite(1)), recusa);
    EXPECT_EQ(Lista(Limite), "1:2 730-900; ");
}

TEST_F(ServicosLimites, Limit_OfAnEquipment_DoesNotStopWhoEditsTheEquipment)
{
    const auto bia = m_Registro.Sessao("bia");
    Altera(bia, {Novo_(2, 730, 900)});
    Faz(m_Ana, "altera", Com(SoNumero(m_Equipamento), &EquiptoED::Descricao, "Outra"));
}

TEST_F(ServicosLimites, Permission_OfTheActionAlone_IsEnough)
{
    const auto alice = m_Registro.Sessao("alice");
    ComLimiteLido({alice});
    Altera(m_Registro.Sessao("inês"), {Novo_(3, 730, 900)});
    Altera(alice, {Com(SoLimite(1), &LimiteDifED::HoraFim, 1000)});
    Faz(m_Registro.Sessao("eva"), "desativaLimiteDif", SoLimite(1));
}

} // namespace
