#include "tests/desk/RegistroDeTeste.h"

#include "host/Conversoes.h"
#include "host/DiaEspecificoED.h"
#include "host/LimiteDifED.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

using namespace mesa;

namespace {

constexpr std::uint8_t Limite = 1;
constexpr std::uint8_t Proibido = 2;

class ServicosLimites : public testing::Test {
  protected:
    Ref<LimiteDifED> Novo_(std::uint8_t dia, std::int32_t inicio, std::int32_t fim, std::uint8_t tipo = Limite)
    {
        auto l = Novo<LimiteDifED>();
        l->NroIntEquip = m_Equipamento;
        l->Dia = dia;
        l->HoraInicio = inicio;
        l->HoraFim = fim;
        l->VelocPerm = std::int16_t(tipo == Limite ? 40 : 0);
        l->VelocMin = std::int16_t{0};
        l->Ativo = std::uint8_t{1};
        l->TipoLimite = tipo;
        return l;
    }
    static Ref<LimiteDifED> Existente(std::int32_t numero)
    {
        auto l = Novo<LimiteDifED>();
        l->NroInt = numero;
        return l;
    }
    Ref<DiaEspecificoED> NovoDia(Data dia, std::int32_t inicio, std::int32_t fim)
    {
        auto d = Novo<DiaEspecificoED>();
        d->NroIntEquip = m_Equipamento;
        d->Data = dia;
        d->HoraInicio = inicio;
        d->HoraFim = fim;
        d->VelocPerm = std::int16_t{40};
        d->VelocMin = std::int16_t{0};
        d->Ativo = std::uint8_t{1};
        return d;
    }
    static Ref<DiaEspecificoED> DiaExistente(std::int32_t numero)
    {
        auto d = Novo<DiaEspecificoED>();
        d->NroInt = numero;
        return d;
    }
    Retorno Altera(const Ref<SessaoServico> &sessao, const std::vector<Ref<LimiteDifED>> &limites)
    {
        auto e = Novo<EquiptoED>();
        e->ListaLimiteDif = Novo<Colecao<Ref<LimiteDifED>>>();
        for (const auto &limite : limites) {
            e->ListaLimiteDif.Valor()->Add(limite);
        }
        return Pede(sessao, "alteraListaLimitesDif", e);
    }
    // What is listed: "1:2 730-900; " for row 1 of Monday.
    std::string Lista(std::uint8_t tipo)
    {
        auto pedido = Novo<LimiteDifED>();
        pedido->NroIntEquip = m_Equipamento;
        pedido->TipoLimite = tipo;
        const Retorno retorno = Pede(m_Ana, "listaLimiteDif", pedido);
        EXPECT_TRUE(retorno.Feita) << retorno.Recusa;
        std::string texto;
        const ListaDe<LimiteDifED> lista = retorno.Como<EquiptoED>()->ListaLimiteDif;
        for (std::int32_t n = 1; n <= lista->Count(); ++n) {
            const LimiteDifED &l = *lista->Item(n);
            texto += CStr(l.NroInt.Valor()) + ":" + CStr(l.Dia.Valor()) + " " + CStr(l.HoraInicio.Valor()) + "-" +
                     CStr(l.HoraFim.Valor()) + "; ";
        }
        return texto;
    }
    std::string Dias()
    {
        auto pedido = Novo<DiaEspecificoED>();
        pedido->NroIntEquip = m_Equipamento;
        const Retorno retorno = Pede(m_Ana, "listaDiaEspecifico", pedido);
        EXPECT_TRUE(retorno.Feita) << retorno.Recusa;
        std::string texto;
        const ListaDe<DiaEspecificoED> lista = retorno.Como<EquiptoED>()->ListaDiaEspecifico;
        for (std::int32_t n = 1; n <= lista->Count(); ++n) {
            const DiaEspecificoED &d = *lista->Item(n);
            texto += CStr(d.NroInt.Valor()) + ":" + CStr(d.Data.Valor()) + " " + CStr(d.HoraInicio.Valor()) + "; ";
        }
        return texto;
    }

    RegistroDeTeste m_Registro;
    Ref<SessaoServico> m_Ana = m_Registro.Sessao("ana");
    std::int32_t m_Equipamento = Inclui(m_Ana, EquipamentoDe("F-001"));
};

TEST_F(ServicosLimites, alteraListaLimitesDif_NewRows_AreListedByDayAndHour)
{
    ASSERT_TRUE(Altera(m_Ana, {Novo_(3, 730, 900), Novo_(2, 1200, 1300), Novo_(2, 730, 900)}).Feita);
    ASSERT_TRUE(Altera(m_Ana, {Novo_(2, 0, 2359, Proibido)}).Feita);
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
    auto l = Novo_(8, 5, 2359);
    l->VelocMin = std::int16_t{20};
    ASSERT_TRUE(Altera(m_Ana, {l}).Feita);
    EXPECT_EQ(Pede(m_Ana, "consultaSimplesLimiteDif", Existente(1)).Como<LimiteDifED>()->Texto(),
              "LimiteDifED{NroInt=1, NroIntEquip=1, Dia=8, HoraInicio=5, HoraFim=2359, VelocPerm=40, VelocMin=20, "
              "Ativo=1, TipoLimite=1}");
}

TEST_F(ServicosLimites, alteraListaLimitesDif_AnExistingRow_KeepsWhatIsUnset)
{
    ASSERT_TRUE(Altera(m_Ana, {Novo_(2, 730, 900)}).Feita);
    ASSERT_TRUE(Pede(m_Ana, "consultaSimplesLimiteDif", Existente(1)).Feita);
    auto l = Existente(1);
    l->HoraFim = 1000;
    ASSERT_TRUE(Altera(m_Ana, {l}).Feita);
    EXPECT_EQ(Lista(Limite), "1:2 730-1000; ");
    l->HoraFim = 1030; // and once more, without reading what I wrote myself
    ASSERT_TRUE(Altera(m_Ana, {l}).Feita);
    EXPECT_EQ(m_Registro.Sql("SELECT VelocPerm FROM LIMITE"), "40");
}

TEST_F(ServicosLimites, alteraListaLimitesDif_OneBadRow_StoresNone)
{
    EXPECT_EQ(Altera(m_Ana, {Novo_(2, 730, 900), Novo_(3, 900, 730)}).Recusa,
              "A hora final (07:30) é anterior à hora inicial (09:00). Um período que passa da meia-noite precisa de "
              "duas linhas.");
    EXPECT_EQ(Lista(Limite), "");
}

TEST_F(ServicosLimites, alteraListaLimitesDif_WithoutRows_IsRefused)
{
    const std::string recusa = "Nenhum dia foi informado: nada foi gravado.";
    EXPECT_EQ(Altera(m_Ana, {}).Recusa, recusa);
    EXPECT_EQ(Pede(m_Ana, "alteraListaLimitesDif", Novo<EquiptoED>()).Recusa, recusa);
    EXPECT_EQ(Altera(m_Ana, {nullptr}).Recusa, "A lista enviada tem um item vazio na posição 1.");
}

TEST_F(ServicosLimites, Ranges_AreCheckedAgain)
{
    const auto recusa = [&](const std::function<void(LimiteDifED &)> &mudanca, std::uint8_t tipo = Limite) {
        auto l = Novo_(2, 730, 900, tipo);
        mudanca(*l);
        return Altera(m_Ana, {l}).Recusa;
    };
    EXPECT_EQ(recusa([](LimiteDifED &l) { l.Dia = std::uint8_t{0}; }),
              "O campo \"dia da semana\" deve estar entre 1 e 8; veio 0.");
    EXPECT_EQ(recusa([](LimiteDifED &l) { l.Dia = std::uint8_t{9}; }),
              "O campo \"dia da semana\" deve estar entre 1 e 8; veio 9.");
    EXPECT_EQ(recusa([](LimiteDifED &l) { l.HoraInicio = 1260; }),
              "A hora inicial não é válida: informe de 00:00 a 23:59.");
    EXPECT_EQ(recusa([](LimiteDifED &l) { l.HoraInicio = -1; }),
              "A hora inicial não é válida: informe de 00:00 a 23:59.");
    EXPECT_EQ(recusa([](LimiteDifED &l) { l.HoraFim = 2400; }), "A hora final não é válida: informe de 00:00 a 23:59.");
    EXPECT_EQ(recusa([](LimiteDifED &l) { l.VelocPerm = std::int16_t{0}; }),
              "O campo \"velocidade permitida\" deve estar entre 1 e 999; veio 0.");
    EXPECT_EQ(recusa([](LimiteDifED &l) { l.VelocMin = std::int16_t{1000}; }),
              "O campo \"velocidade mínima\" deve estar entre 0 e 999; veio 1000.");
    EXPECT_EQ(recusa([](LimiteDifED &l) { l.VelocPerm = std::int16_t{40}; }, Proibido),
              "O campo \"velocidade permitida\" deve estar entre 0 e 0; veio 40.");
    EXPECT_EQ(recusa([](LimiteDifED &l) { l.TipoLimite = std::uint8_t{3}; }), "Não existe o tipo de limite 3.");
    EXPECT_EQ(recusa([](LimiteDifED &l) { l.NroIntEquip = 77; }),
              "O cliente DETRAN/RS não tem equipamento de número interno 77.");
    EXPECT_EQ(Lista(Limite), "");
}

TEST_F(ServicosLimites, Hours_StartEqualToEnd_IsAccepted)
{
    EXPECT_TRUE(Altera(m_Ana, {Novo_(2, 800, 800)}).Feita);
}

TEST_F(ServicosLimites, MinimumSpeed_AboveThePermittedOne_IsAccepted)
{
    auto l = Novo_(2, 730, 900);
    l->VelocMin = std::int16_t{50};
    EXPECT_TRUE(Altera(m_Ana, {l}).Feita);
}

TEST_F(ServicosLimites, Overlap_OnTheSameDay_IsRefusedWithWhichAndWho)
{
    ASSERT_TRUE(Altera(m_Ana, {Novo_(2, 730, 900)}).Feita);
    m_Registro.PassaSegundos(60);
    const std::string outro = "O limite diferenciado de Segunda, 07:30 a 09:00, gravado por Ana Souza em 20/11/2026 às "
                              "10:00:00, já cobre parte do período das ";
    EXPECT_EQ(Altera(m_Ana, {Novo_(2, 800, 1000)}).Recusa, outro + "08:00 às 10:00.");
    EXPECT_EQ(Altera(m_Ana, {Novo_(2, 0, 2359)}).Recusa, outro + "00:00 às 23:59.");
    EXPECT_EQ(Altera(m_Ana, {Novo_(2, 800, 800)}).Recusa, outro + "08:00 às 08:00.");
    EXPECT_EQ(Altera(m_Ana, {Novo_(2, 730, 900)}).Recusa, outro + "07:30 às 09:00.");
    EXPECT_EQ(Lista(Limite), "1:2 730-900; ");
}

TEST_F(ServicosLimites, Overlap_WhereThereIsNone_IsAccepted)
{
    ASSERT_TRUE(Altera(m_Ana, {Novo_(2, 730, 900)}).Feita);
    EXPECT_TRUE(Altera(m_Ana, {Novo_(2, 900, 1000), Novo_(2, 600, 730)}).Feita); // one ends as the next begins
    EXPECT_TRUE(Altera(m_Ana, {Novo_(3, 730, 900)}).Feita);
    EXPECT_TRUE(Altera(m_Ana, {Novo_(2, 730, 900, Proibido)}).Feita);
}

TEST_F(ServicosLimites, Overlap_OfTwoInOneSave_IsRefused)
{
    EXPECT_FALSE(Altera(m_Ana, {Novo_(2, 730, 900), Novo_(2, 800, 1000)}).Feita);
    EXPECT_EQ(Lista(Limite), "");
}

TEST_F(ServicosLimites, Overlap_WithADeactivatedRow_IsNone)
{
    ASSERT_TRUE(Altera(m_Ana, {Novo_(2, 730, 900)}).Feita);
    ASSERT_TRUE(Pede(m_Ana, "desativaLimiteDif", Existente(1)).Feita);
    EXPECT_TRUE(Altera(m_Ana, {Novo_(2, 730, 900)}).Feita);
}

TEST_F(ServicosLimites, Row_OfAnotherDayOrKind_CannotBecome)
{
    ASSERT_TRUE(Altera(m_Ana, {Novo_(2, 730, 900)}).Feita);
    ASSERT_TRUE(Pede(m_Ana, "consultaSimplesLimiteDif", Existente(1)).Feita);
    auto l = Existente(1);
    l->Dia = std::uint8_t{3};
    EXPECT_EQ(Altera(m_Ana, {l}).Recusa,
              "O limite diferenciado de Segunda, 07:30 a 09:00, não pode passar para outro dia ou outro tipo.");
    l = Existente(1);
    l->NroIntEquip = Inclui(m_Ana, EquipamentoDe("F-002"));
    EXPECT_EQ(Altera(m_Ana, {l}).Recusa, "O limite diferenciado de Segunda, 07:30 a 09:00, é de outro equipamento.");
}

TEST_F(ServicosLimites, Row_NeverRead_IsNotChanged)
{
    ASSERT_TRUE(Altera(m_Ana, {Novo_(2, 730, 900)}).Feita);
    ASSERT_EQ(Lista(Limite), "1:2 730-900; ");
    auto l = Existente(1);
    l->HoraFim = 1000;
    EXPECT_EQ(Altera(m_Ana, {l}).Recusa,
              "O limite diferenciado de Segunda, 07:30 a 09:00, não foi aberto nesta sessão. Abra-o antes de "
              "alterá-lo.");
}

TEST_F(ServicosLimites, Row_ChangedBySomebodyElse_IsRefusedWithWhoWhatAndWhen)
{
    ASSERT_TRUE(Altera(m_Ana, {Novo_(2, 730, 900, Proibido)}).Feita);
    const auto bia = m_Registro.Sessao("bia");
    ASSERT_TRUE(Pede(m_Ana, "consultaSimplesLimiteDif", Existente(1)).Feita);
    ASSERT_TRUE(Pede(bia, "consultaSimplesLimiteDif", Existente(1)).Feita);
    m_Registro.PassaSegundos(30);
    auto l = Existente(1);
    l->HoraInicio = 800;
    ASSERT_TRUE(Altera(bia, {l}).Feita);
    l->HoraInicio = 815;
    EXPECT_EQ(
        Altera(m_Ana, {l}).Recusa,
        "O horário proibido de Segunda, 08:00 a 09:00, foi alterado por Bia Nunes em 20/11/2026 às 10:00:30 (hora "
        "inicial), depois de aberto aqui. Nada foi gravado: abra-o de novo e repita a sua alteração.");
    EXPECT_EQ(Lista(Proibido), "1:2 800-900; ");
}

TEST_F(ServicosLimites, Limit_ChangedBySomebodyElse_IsRefusedWithWhoWhatAndWhen)
{
    ASSERT_TRUE(Altera(m_Ana, {Novo_(2, 730, 900)}).Feita);
    const auto bia = m_Registro.Sessao("bia");
    ASSERT_TRUE(Pede(m_Ana, "consultaSimplesLimiteDif", Existente(1)).Feita);
    ASSERT_TRUE(Pede(bia, "consultaSimplesLimiteDif", Existente(1)).Feita);
    m_Registro.PassaSegundos(30);
    auto l = Existente(1);
    l->VelocPerm = std::int16_t{50};
    l->VelocMin = std::int16_t{20};
    ASSERT_TRUE(Altera(bia, {l}).Feita);
    l->VelocPerm = std::int16_t{30};
    EXPECT_EQ(Altera(m_Ana, {Novo_(3, 730, 900), l}).Recusa,
              "O limite diferenciado de Segunda, 07:30 a 09:00, foi alterado por Bia Nunes em 20/11/2026 às 10:00:30 "
              "(velocidade mínima, velocidade permitida), depois de aberto aqui. Nada foi gravado: abra-o de novo e "
              "repita a sua alteração.");
    EXPECT_EQ(Lista(Limite), "1:2 730-900; "); // nor was the new row stored
    EXPECT_EQ(m_Registro.Sql("SELECT VelocPerm FROM LIMITE"), "50");
}

TEST_F(ServicosLimites, Day_ChangedBySomebodyElse_IsRefusedWithWhoWhatAndWhen)
{
    ASSERT_TRUE(Pede(m_Ana, "adicionaDiaEspecifico", NovoDia(DataDe(25, 12, 2026), 800, 900)).Feita);
    const auto bia = m_Registro.Sessao("bia");
    ASSERT_TRUE(Pede(m_Ana, "consultaSimplesDiaEspecifico", DiaExistente(1)).Feita);
    ASSERT_TRUE(Pede(bia, "consultaSimplesDiaEspecifico", DiaExistente(1)).Feita);
    m_Registro.PassaSegundos(30);
    auto d = DiaExistente(1);
    d->Data = DataDe(24, 12, 2026);
    d->HoraFim = 1000;
    ASSERT_TRUE(Pede(bia, "alteraDiaEspecifico", d).Feita);
    d = DiaExistente(1);
    d->VelocPerm = std::int16_t{30};
    EXPECT_EQ(Pede(m_Ana, "alteraDiaEspecifico", d).Recusa,
              "O dia específico 24/12/2026, 08:00 a 10:00, foi alterado por Bia Nunes em 20/11/2026 às 10:00:30 (data, "
              "hora final), depois de aberto aqui. Nada foi gravado: abra-o de novo e repita a sua alteração.");
    EXPECT_EQ(m_Registro.Sql("SELECT VelocPerm FROM DIA"), "40");
    ASSERT_TRUE(Pede(bia, "desativaDiaEspecifico", DiaExistente(1)).Feita);
    EXPECT_EQ(Pede(m_Ana, "desativaDiaEspecifico", DiaExistente(1)).Recusa,
              "O dia específico 24/12/2026, 08:00 a 10:00, já foi excluído por Bia Nunes em 20/11/2026 às 10:00:30.");
    EXPECT_EQ(Pede(m_Ana, "consultaSimplesDiaEspecifico", DiaExistente(1)).Recusa,
              "O dia específico 24/12/2026, 08:00 a 10:00, já foi excluído por Bia Nunes em 20/11/2026 às 10:00:30.");
}

TEST_F(ServicosLimites, Row_ExcludedBySomebodyElse_IsRefusedWithWhoAndWhen)
{
    ASSERT_TRUE(Altera(m_Ana, {Novo_(2, 730, 900)}).Feita);
    ASSERT_TRUE(Pede(m_Ana, "consultaSimplesLimiteDif", Existente(1)).Feita);
    ASSERT_TRUE(Pede(m_Registro.Sessao("bia"), "desativaLimiteDif", Existente(1)).Feita);
    const std::string nome = "O limite diferenciado de Segunda, 07:30 a 09:00,";
    const std::string quando = " por Bia Nunes em 20/11/2026 às 10:00:00";
    EXPECT_EQ(Pede(m_Ana, "desativaLimiteDif", Existente(1)).Recusa, nome + " já foi excluído" + quando + ".");
    EXPECT_EQ(Pede(m_Ana, "consultaSimplesLimiteDif", Existente(1)).Recusa, nome + " já foi excluído" + quando + ".");
    auto l = Existente(1);
    l->HoraFim = 1000;
    EXPECT_EQ(Altera(m_Ana, {l}).Recusa,
              nome + " foi alterado" + quando +
                  " (desativação), depois de aberto aqui. Nada foi gravado: abra-o de novo e repita a sua alteração.");
    EXPECT_EQ(Lista(Limite), "");
    EXPECT_EQ(m_Registro.Sql("SELECT COUNT(*) FROM LIMITE"), "1");
}

TEST_F(ServicosLimites, Days_AreAddedChangedAndDeactivated)
{
    ASSERT_TRUE(Pede(m_Ana, "adicionaDiaEspecifico", NovoDia(DataDe(25, 12, 2026), 0, 2359)).Feita);
    ASSERT_TRUE(Pede(m_Ana, "adicionaDiaEspecifico", NovoDia(DataDe(1, 1, 2026), 800, 900)).Feita);
    EXPECT_EQ(Dias(), "2:01/01/2026 800; 1:25/12/2026 0; ");
    EXPECT_EQ(Pede(m_Ana, "consultaSimplesDiaEspecifico", DiaExistente(1)).Como<DiaEspecificoED>()->Texto(),
              "DiaEspecificoED{NroInt=1, NroIntEquip=1, Data=25/12/2026, HoraInicio=0, HoraFim=2359, VelocPerm=40, "
              "VelocMin=0, Ativo=1}");
    auto d = DiaExistente(1);
    d->Data = DataDe(24, 12, 2026); // a day may move, unlike the day of a limit
    ASSERT_TRUE(Pede(m_Ana, "alteraDiaEspecifico", d).Feita);
    EXPECT_EQ(Dias(), "2:01/01/2026 800; 1:24/12/2026 0; ");
    ASSERT_TRUE(Pede(m_Ana, "desativaDiaEspecifico", DiaExistente(2)).Feita);
    EXPECT_EQ(Dias(), "1:24/12/2026 0; ");
}

TEST_F(ServicosLimites, Days_Refusals)
{
    ASSERT_TRUE(Pede(m_Ana, "adicionaDiaEspecifico", NovoDia(DataDe(25, 12, 2026), 800, 900)).Feita);
    EXPECT_EQ(Pede(m_Ana, "adicionaDiaEspecifico", NovoDia(DataDe(25, 12, 2026), 830, 1000)).Recusa,
              "O dia específico 25/12/2026, 08:00 a 09:00, gravado por Ana Souza em 20/11/2026 às 10:00:00, já cobre "
              "parte do período das 08:30 às 10:00.");
    EXPECT_EQ(Pede(m_Ana, "adicionaDiaEspecifico", NovoDia(Data{}, 800, 900)).Recusa,
              "O campo \"data\" precisa de uma data válida.");
    EXPECT_EQ(Pede(m_Ana, "adicionaDiaEspecifico", DiaExistente(1)).Recusa,
              "Este dia específico já foi incluído, com o número interno 1.");
    EXPECT_EQ(Pede(m_Ana, "alteraDiaEspecifico", DiaExistente(1)).Recusa,
              "O dia específico 25/12/2026, 08:00 a 09:00, não foi aberto nesta sessão. Abra-o antes de alterá-lo.");
    EXPECT_EQ(Pede(m_Ana, "alteraDiaEspecifico", DiaExistente(9)).Recusa,
              "O cliente DETRAN/RS não tem limite ou dia de número interno 9.");
    EXPECT_EQ(Pede(m_Registro.Sessao("elisa"), "consultaSimplesDiaEspecifico", DiaExistente(1)).Recusa,
              "O cliente EPTC não tem limite ou dia de número interno 1.");
}

TEST_F(ServicosLimites, Equipment_Deactivated_KeepsItsLimitsAsTheyAre)
{
    ASSERT_TRUE(Altera(m_Ana, {Novo_(2, 730, 900)}).Feita);
    ASSERT_TRUE(Pede(m_Ana, "desativa", SoNumero(m_Equipamento)).Feita);
    const std::string recusa = "O equipamento F-001 está desativado e não pode ser alterado. Reative-o antes.";
    EXPECT_EQ(Altera(m_Ana, {Novo_(3, 730, 900)}).Recusa, recusa);
    EXPECT_EQ(Pede(m_Ana, "desativaLimiteDif", Existente(1)).Recusa, recusa);
    EXPECT_EQ(Lista(Limite), "1:2 730-900; ");
}

TEST_F(ServicosLimites, Limit_OfAnEquipment_DoesNotStopWhoEditsTheEquipment)
{
    const auto bia = m_Registro.Sessao("bia");
    ASSERT_TRUE(Altera(bia, {Novo_(2, 730, 900)}).Feita);
    auto mudanca = SoNumero(m_Equipamento);
    mudanca->Descricao = "Outra";
    EXPECT_TRUE(Pede(m_Ana, "altera", mudanca).Feita);
}

TEST_F(ServicosLimites, Permissions_ByAction)
{
    ASSERT_TRUE(Altera(m_Ana, {Novo_(2, 730, 900)}).Feita);
    const auto ines = m_Registro.Sessao("inês");
    ASSERT_TRUE(Altera(ines, {Novo_(3, 730, 900)}).Feita);
    ASSERT_TRUE(Pede(ines, "consultaSimplesLimiteDif", Existente(1)).Feita);
    auto l = Existente(1);
    l->HoraFim = 1000;
    EXPECT_EQ(Altera(ines, {l}).Recusa, "Inês Luz não tem permissão para alterar limites.");
    EXPECT_EQ(Pede(ines, "desativaLimiteDif", Existente(1)).Recusa, "Inês Luz não tem permissão para excluir limites.");
    const auto alice = m_Registro.Sessao("alice");
    ASSERT_TRUE(Pede(alice, "consultaSimplesLimiteDif", Existente(1)).Feita);
    EXPECT_TRUE(Altera(alice, {l}).Feita);
    EXPECT_EQ(Altera(alice, {Novo_(4, 730, 900)}).Recusa, "Alice Rocha não tem permissão para incluir limites.");
    EXPECT_EQ(Pede(alice, "adicionaDiaEspecifico", NovoDia(DataDe(25, 12, 2026), 0, 1)).Recusa,
              "Alice Rocha não tem permissão para incluir limites.");
    EXPECT_TRUE(Pede(m_Registro.Sessao("eva"), "desativaLimiteDif", Existente(1)).Feita);
    const auto carla = m_Registro.Sessao("carla");
    const std::string recusa = "Carla Dias não tem permissão para consultar limites.";
    EXPECT_EQ(Pede(carla, "listaLimiteDif", Existente(0)).Recusa, recusa);
    EXPECT_EQ(Pede(carla, "listaDiaEspecifico", DiaExistente(0)).Recusa, recusa);
    EXPECT_EQ(Pede(carla, "consultaSimplesLimiteDif", Existente(2)).Recusa, recusa);
}

} // namespace
