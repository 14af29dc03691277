#include "tests/desk/RegistroDeTeste.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

using namespace mesa;

namespace {

class ServicosEquipamento : public testing::Test {
  protected:
    std::string RecusaDe(const Ref<SessaoServico> &sessao, const std::string &metodo, const Ref<Objeto> &pedido)
    {
        const Retorno retorno = Pede(sessao, metodo, pedido);
        EXPECT_FALSE(retorno.Feita);
        EXPECT_TRUE(retorno.Resposta.EhVazio());
        return retorno.Recusa;
    }
    std::string Linhas(const std::string &tabela) { return m_Registro.Sql("SELECT COUNT(*) FROM " + tabela); }

    RegistroDeTeste m_Registro;
    Ref<SessaoServico> m_Ana = m_Registro.Sessao("ana");
};

TEST_F(ServicosEquipamento, inclui_OfAWholeEquipment_AnswersWhatWasStored)
{
    const Retorno retorno = Pede(m_Ana, "inclui", EquipamentoDe("R-001"));
    ASSERT_TRUE(retorno.Feita) << retorno.Recusa;
    const auto e = retorno.Como<EquiptoED>();
    EXPECT_EQ(e->NroIntEquip.Valor(), 1);
    EXPECT_EQ(e->ClienteInc.Valor(), "DETRAN/RS");
    EXPECT_EQ(e->SetorInc.Valor(), "");
    EXPECT_EQ(e->Codigo.Valor(), "R-001");
    EXPECT_EQ(e->Descricao.Valor(), "Av. Ipiranga, sentido centro");
    EXPECT_EQ(e->CodMunic.Valor(), 4314902);
    EXPECT_EQ(e->TipoVia.Valor(), "U");
    EXPECT_EQ(e->TipoEquip.Valor(), "P");
    EXPECT_EQ(e->VelocPermitida.Valor(), 60);
    EXPECT_EQ(e->TemLimiteDif.Valor(), 1);
    EXPECT_EQ(e->TemPerfilMag.Valor(), 2);
    EXPECT_EQ(e->Ativo.Valor(), 1); // whatever byte came
    EXPECT_EQ(e->ClienteTrans.Valor(), "DETRAN/RS");
    EXPECT_EQ(e->OperadorTrans.Valor(), 1.0);
    EXPECT_EQ(e->DataTrans.Valor(), 20261120);
    EXPECT_EQ(e->HoraTrans.Valor(), 100000);
    EXPECT_EQ(Abre(m_Ana, 1)->Texto(), e->Texto());
}

TEST_F(ServicosEquipamento, inclui_AfterReopening_IsThere)
{
    Inclui(m_Ana, EquipamentoDe("R-001"));
    m_Registro.Reabre();
    EXPECT_EQ(Abre(m_Registro.Sessao("ana"), 1)->Codigo.Valor(), "R-001");
}

TEST_F(ServicosEquipamento, inclui_FlagsLeftUnset_AreStoredAsNo)
{
    auto semIndicadores = Novo<EquiptoED>();
    semIndicadores->Codigo = "R-001";
    semIndicadores->TipoAgente = std::uint8_t{1};
    semIndicadores->TipoEquip = "P";
    const auto e = Abre(m_Ana, Inclui(m_Ana, semIndicadores));
    EXPECT_EQ(e->TemImagemEntrelacada.Valor(), 2);
    EXPECT_EQ(e->TemLimiteDif.Valor(), 2);
    EXPECT_EQ(e->TemPerfilMag.Valor(), 2);
    EXPECT_EQ(e->VelocPermitida.Valor(), 0);
    EXPECT_EQ(e->ClienteInc.Valor(), "DETRAN/RS");
}

TEST_F(ServicosEquipamento, inclui_OfAnEquipmentWithANumber_IsRefused)
{
    auto pedido = EquipamentoDe("R-001");
    pedido->NroIntEquip = 7;
    EXPECT_EQ(RecusaDe(m_Ana, "inclui", pedido), "Este equipamento já foi incluído, com o número interno 7.");
    EXPECT_EQ(Linhas("EQUIPAMENTO"), "0");
}

TEST_F(ServicosEquipamento, inclui_TextWithApostropheAndAccents_ComesBackAsItWent)
{
    auto pedido = EquipamentoDe("D'ÁGUA");
    pedido->Descricao = "Sant'Ana \"ç\" -- ; DROP TABLE EQUIPAMENTO";
    const auto e = Abre(m_Ana, Inclui(m_Ana, pedido));
    EXPECT_EQ(e->Codigo.Valor(), "D'ÁGUA");
    EXPECT_EQ(e->Descricao.Valor(), "Sant'Ana \"ç\" -- ; DROP TABLE EQUIPAMENTO");
}

TEST_F(ServicosEquipamento, inclui_TextTooLong_IsRefusedAndNotCut)
{
    auto pedido = EquipamentoDe("R-001");
    std::string cinquentaEUm;
    for (int letra = 0; letra < 51; ++letra) {
        cinquentaEUm += "ã";
    }
    pedido->Descricao = cinquentaEUm;
    EXPECT_EQ(RecusaDe(m_Ana, "inclui", pedido), "O campo \"descrição\" aceita até 50 caracteres e veio com 51.");
    pedido->Descricao = cinquentaEUm.substr(2); // 50 characters in 100 bytes
    EXPECT_EQ(Abre(m_Ana, Inclui(m_Ana, pedido))->Descricao.Valor(), cinquentaEUm.substr(2));
}

TEST_F(ServicosEquipamento, inclui_EachTextBeyondItsLimit_IsRefusedByItsName)
{
    const auto recusa = [&](Campo<std::string> EquiptoED::*campo, std::size_t tamanho) {
        auto pedido = EquipamentoDe("R-001");
        (*pedido).*campo = std::string(tamanho, 'x');
        return RecusaDe(m_Ana, "inclui", pedido);
    };
    EXPECT_EQ(recusa(&EquiptoED::Codigo, 21), "O campo \"código\" aceita até 20 caracteres e veio com 21.");
    EXPECT_EQ(recusa(&EquiptoED::SubCodigo, 21), "O campo \"subcódigo\" aceita até 20 caracteres e veio com 21.");
    EXPECT_EQ(recusa(&EquiptoED::Modelo, 31), "O campo \"marca/modelo\" aceita até 30 caracteres e veio com 31.");
    EXPECT_EQ(recusa(&EquiptoED::ArquivoLayout, 51),
              "O campo \"layout dos arquivos\" aceita até 50 caracteres e veio com 51.");
    EXPECT_EQ(recusa(&EquiptoED::txtObsNotif, 71),
              "O campo \"observação da notificação\" aceita até 70 caracteres e veio com 71.");
    EXPECT_EQ(Linhas("EQUIPAMENTO"), "0");
}

TEST_F(ServicosEquipamento, inclui_TextThatIsNoText_IsRefused)
{
    auto pedido = EquipamentoDe("R-001");
    pedido->Descricao = std::string("a\0b", 3);
    EXPECT_EQ(RecusaDe(m_Ana, "inclui", pedido), "O campo \"descrição\" tem caracteres que não podem ser gravados.");
    pedido->Descricao = "\xC3(";
    EXPECT_EQ(RecusaDe(m_Ana, "inclui", pedido), "O campo \"descrição\" tem caracteres que não podem ser gravados.");
}

TEST_F(ServicosEquipamento, inclui_WrongReferences_AreRefused)
{
    auto pedido = EquipamentoDe("R-001");
    pedido->CodMunic = 99;
    EXPECT_EQ(RecusaDe(m_Ana, "inclui", pedido), "Não existe o município de código 99.");
    pedido = EquipamentoDe("R-001");
    pedido->TipoEquip = "Z";
    EXPECT_EQ(RecusaDe(m_Ana, "inclui", pedido), "Não existe o tipo de equipamento \"Z\".");
    pedido = EquipamentoDe("R-001");
    pedido->TipoAgente = std::uint8_t{3}; // both exist, but not together
    EXPECT_EQ(RecusaDe(m_Ana, "inclui", pedido), "O tipo de medidor 3 não tem o tipo de equipamento \"P\".");
    pedido = EquipamentoDe("R-001");
    pedido->TipoVia = "X";
    EXPECT_EQ(RecusaDe(m_Ana, "inclui", pedido), "Não existe o tipo de via \"X\".");
    pedido = EquipamentoDe("R-001");
    pedido->TipoAgente = std::uint8_t{4};
    EXPECT_EQ(RecusaDe(m_Ana, "inclui", pedido), "O campo \"tipo de medidor\" deve estar entre 1 e 3; veio 4.");
    pedido = EquipamentoDe("R-001");
    pedido->SetorInc = "Operações";
    EXPECT_EQ(RecusaDe(m_Ana, "inclui", pedido), "O cliente DETRAN/RS não tem o setor \"Operações\".");
    pedido = EquipamentoDe("R-001");
    pedido->NroIntRejLimDif = 99;
    EXPECT_EQ(RecusaDe(m_Ana, "inclui", pedido), "Não existe a rejeição de número 99.");
    pedido = EquipamentoDe("R-001");
    pedido->VelocPermitida = std::int16_t{1000};
    EXPECT_EQ(RecusaDe(m_Ana, "inclui", pedido),
              "O campo \"velocidade permitida\" deve estar entre 0 e 999; veio 1000.");
    EXPECT_EQ(Linhas("EQUIPAMENTO"), "0");
    EXPECT_EQ(Linhas("HISTORICO WHERE Entidade = 'EQUIPAMENTO'"), "0");
}

TEST_F(ServicosEquipamento, inclui_OfAnEtilometroWithoutMunicipality_IsStored)
{
    auto pedido = EquipamentoDe("E-1");
    pedido->TipoEquip = "E";
    pedido->TipoAgente = std::uint8_t{3};
    pedido->CodMunic = 0;
    EXPECT_EQ(Abre(m_Ana, Inclui(m_Ana, pedido))->CodMunic.Valor(), 0);
}

TEST_F(ServicosEquipamento, inclui_WithoutCode_IsRefused)
{
    EXPECT_EQ(RecusaDe(m_Ana, "inclui", EquipamentoDe("")), "O campo \"código\" precisa ser informado.");
    EXPECT_EQ(RecusaDe(m_Ana, "inclui", EquipamentoDe("  ")), "O campo \"código\" precisa ser informado.");
}

TEST_F(ServicosEquipamento, inclui_OfAnotherClient_IsRefused)
{
    auto pedido = EquipamentoDe("R-001");
    pedido->ClienteInc = "EPTC";
    EXPECT_EQ(RecusaDe(m_Ana, "inclui", pedido),
              "Ana Souza registra equipamentos do cliente DETRAN/RS, e não de EPTC.");
}

TEST_F(ServicosEquipamento, inclui_ByOneTiedToAMunicipality_OnlyThere)
{
    const auto davi = m_Registro.Sessao("davi");
    auto pedido = EquipamentoDe("R-001");
    pedido->CodMunic = 4305108;
    EXPECT_EQ(RecusaDe(davi, "inclui", pedido),
              "Davi Reis registra equipamentos somente no município de código 4314902.");
    pedido->CodMunic = 4314902;
    EXPECT_TRUE(Pede(davi, "inclui", pedido).Feita);
}

TEST_F(ServicosEquipamento, Codigo_OfAnActiveEquipment_IsItsAlone)
{
    Inclui(m_Ana, EquipamentoDe("ção-1"));
    EXPECT_EQ(RecusaDe(m_Ana, "inclui", EquipamentoDe("ÇÃO-1")),
              "O código ção-1 já é do equipamento ativo \"Av. Ipiranga, sentido centro\", alterado por último por Ana "
              "Souza em 20/11/2026 às 10:00:00.");
    EXPECT_EQ(Linhas("EQUIPAMENTO"), "1");
}

TEST_F(ServicosEquipamento, Codigo_OfAnotherClient_MayBeTheSame)
{
    Inclui(m_Ana, EquipamentoDe("R-001"));
    EXPECT_TRUE(Pede(m_Registro.Sessao("elisa"), "inclui", EquipamentoDe("R-001")).Feita);
}

TEST_F(ServicosEquipamento, reativa_WhenTheCodeWasTakenMeanwhile_IsRefused)
{
    const std::int32_t velho = Inclui(m_Ana, EquipamentoDe("R-001"));
    ASSERT_TRUE(Pede(m_Ana, "desativa", SoNumero(velho)).Feita);
    m_Registro.PassaSegundos(61);
    const std::int32_t novo = Inclui(m_Registro.Sessao("bia"), EquipamentoDe("r-001"));
    EXPECT_EQ(RecusaDe(m_Ana, "reativa", SoNumero(velho)),
              "O código r-001 já é do equipamento ativo \"Av. Ipiranga, sentido centro\", alterado por último por Bia "
              "Nunes em 20/11/2026 às 10:01:01.");
    ASSERT_TRUE(Pede(m_Ana, "desativa", SoNumero(novo)).Feita);
    EXPECT_TRUE(Pede(m_Ana, "reativa", SoNumero(velho)).Feita);
}

TEST_F(ServicosEquipamento, Codigo_PastTheServices_IsStillUniqueInTheDatabase)
{
    const std::int32_t velho = Inclui(m_Ana, EquipamentoDe("R-001"));
    ASSERT_TRUE(Pede(m_Ana, "desativa", SoNumero(velho)).Feita);
    Inclui(m_Ana, EquipamentoDe("R-001"));
    EXPECT_THROW(m_Registro.Sql("UPDATE EQUIPAMENTO SET Ativo = 1"), std::runtime_error);
    EXPECT_EQ(m_Registro.Sql("SELECT Ativo FROM EQUIPAMENTO WHERE NroIntEquip = 1"), "2");
}

TEST_F(ServicosEquipamento, altera_MembersLeftUnset_KeepWhatWasStored)
{
    auto pedido = EquipamentoDe("R-001");
    pedido->txtObsNotif = "Sob a passarela";
    pedido->SetorInc = "Metrologia";
    pedido->NroIntRejLimDif = 3;
    const std::int32_t numero = Inclui(m_Ana, pedido);
    m_Registro.PassaSegundos(90);
    auto mudanca = SoNumero(numero);
    mudanca->Descricao = "Outra";
    ASSERT_TRUE(Pede(m_Ana, "altera", mudanca).Feita);
    const auto e = Abre(m_Ana, numero);
    EXPECT_EQ(e->Descricao.Valor(), "Outra");
    EXPECT_EQ(e->txtObsNotif.Valor(), "Sob a passarela");
    EXPECT_EQ(e->SetorInc.Valor(), "Metrologia");
    EXPECT_EQ(e->NroIntRejLimDif.Valor(), 3);
    EXPECT_EQ(e->VelocPermitida.Valor(), 60);
    EXPECT_EQ(e->Modelo.Valor(), "Fictício 300");
    EXPECT_EQ(e->Ativo.Valor(), 1);
    EXPECT_EQ(e->HoraTrans.Valor(), 100130);
}

TEST_F(ServicosEquipamento, altera_AnswersNothing)
{
    auto mudanca = SoNumero(Inclui(m_Ana, EquipamentoDe("R-001")));
    mudanca->Descricao = "Outra";
    const Retorno retorno = Pede(m_Ana, "altera", mudanca);
    EXPECT_TRUE(retorno.Feita);
    EXPECT_TRUE(retorno.Resposta.EhVazio());
    EXPECT_EQ(retorno.Recusa, "");
}

TEST_F(ServicosEquipamento, altera_ByteOfActivity_ChangesNothing)
{
    auto mudanca = SoNumero(Inclui(m_Ana, EquipamentoDe("R-001")));
    mudanca->Ativo = std::uint8_t{2};
    mudanca->Descricao = "Outra";
    ASSERT_TRUE(Pede(m_Ana, "altera", mudanca).Feita);
    EXPECT_EQ(Abre(m_Ana, mudanca->NroIntEquip)->Ativo.Valor(), 1);
}

TEST_F(ServicosEquipamento, altera_AuditMembersSent_AreNotTakenOver)
{
    auto mudanca = SoNumero(Inclui(m_Ana, EquipamentoDe("R-001")));
    mudanca->Descricao = "Outra";
    mudanca->OperadorTrans = 99;
    mudanca->ClienteTrans = "EPTC";
    mudanca->DataTrans = 19990101;
    ASSERT_TRUE(Pede(m_Ana, "altera", mudanca).Feita);
    const auto e = Abre(m_Ana, mudanca->NroIntEquip);
    EXPECT_EQ(e->OperadorTrans.Valor(), 1.0);
    EXPECT_EQ(e->ClienteTrans.Valor(), "DETRAN/RS");
    EXPECT_EQ(e->DataTrans.Valor(), 20261120);
}

TEST_F(ServicosEquipamento, altera_OfWhatIsForGood_IsRefused)
{
    const std::int32_t numero = Inclui(m_Ana, EquipamentoDe("R-001"));
    const auto recusa = [&](const std::function<void(EquiptoED &)> &mudanca) {
        auto pedido = SoNumero(numero);
        mudanca(*pedido);
        return RecusaDe(m_Ana, "altera", pedido);
    };
    EXPECT_EQ(recusa([](EquiptoED &e) { e.Codigo = "R-002"; }),
              "O equipamento R-001 já está registrado: o código não pode mais mudar.");
    EXPECT_EQ(recusa([](EquiptoED &e) { e.TipoEquip = "C"; }),
              "O equipamento R-001 já está registrado: o tipo de equipamento não pode mais mudar.");
    EXPECT_EQ(recusa([](EquiptoED &e) { e.TipoAgente = std::uint8_t{2}; }),
              "O equipamento R-001 já está registrado: o tipo de medidor não pode mais mudar.");
    EXPECT_EQ(recusa([](EquiptoED &e) { e.CodMunic = 4305108; }),
              "O equipamento R-001 já está registrado: o município não pode mais mudar.");
    EXPECT_EQ(recusa([](EquiptoED &e) { e.ClienteInc = "EPTC"; }),
              "O equipamento R-001 já está registrado: o cliente não pode mais mudar.");
    EXPECT_EQ(m_Registro.Sql("SELECT Versao FROM EQUIPAMENTO"), "1");
}

TEST_F(ServicosEquipamento, altera_WithWhatIsForGoodAsItStands_IsAccepted)
{
    auto pedido = EquipamentoDe("R-001");
    pedido->NroIntEquip = Inclui(m_Ana, EquipamentoDe("R-001"));
    pedido->SubCodigo = "S1";
    EXPECT_TRUE(Pede(m_Ana, "altera", pedido).Feita);
}

TEST_F(ServicosEquipamento, altera_OfNothing_WritesNothing)
{
    auto pedido = EquipamentoDe("R-001");
    pedido->NroIntEquip = Inclui(m_Ana, EquipamentoDe("R-001"));
    m_Registro.PassaSegundos(60);
    const std::string antes = Linhas("HISTORICO");
    EXPECT_TRUE(Pede(m_Ana, "altera", pedido).Feita);
    EXPECT_EQ(Linhas("HISTORICO"), antes);
    EXPECT_EQ(Abre(m_Ana, pedido->NroIntEquip)->HoraTrans.Valor(), 100000);
}

TEST_F(ServicosEquipamento, altera_OfOneNeverOpened_IsRefused)
{
    const std::int32_t numero = Inclui(m_Registro.Sessao("bia"), EquipamentoDe("R-001"));
    auto mudanca = SoNumero(numero);
    mudanca->Descricao = "Outra";
    const std::string recusa = "O equipamento R-001 não foi aberto nesta sessão. Abra-o antes de alterá-lo.";
    EXPECT_EQ(RecusaDe(m_Ana, "altera", mudanca), recusa);
    // Neither the list nor a look at the equipment alone shows all that would be overwritten.
    ASSERT_TRUE(Pede(m_Ana, "lista2", Novo<ListaEquiptoED>()).Feita);
    ASSERT_TRUE(Pede(m_Ana, "consultaSimples", SoNumero(numero)).Feita);
    EXPECT_EQ(RecusaDe(m_Ana, "altera", mudanca), recusa);
    Abre(m_Ana, numero);
    EXPECT_TRUE(Pede(m_Ana, "altera", mudanca).Feita);
}

TEST_F(ServicosEquipamento, altera_AfterSomebodyElse_IsRefusedWithWhoWhatAndWhen)
{
    const std::int32_t numero = Inclui(m_Ana, EquipamentoDe("R-001"));
    const auto bia = m_Registro.Sessao("bia");
    Abre(bia, numero);
    m_Registro.PassaSegundos(65);
    auto dela = SoNumero(numero);
    dela->Descricao = "De Bia";
    dela->Modelo = "M2";
    Poe(dela, SensorDe(3));
    ASSERT_TRUE(Pede(bia, "altera", dela).Feita);

    auto minha = SoNumero(numero);
    minha->Descricao = "De Ana";
    EXPECT_EQ(RecusaDe(m_Ana, "altera", minha),
              "O equipamento R-001 foi alterado por Bia Nunes em 20/11/2026 às 10:01:05 (sensor 3 incluído, descrição, "
              "marca/modelo), depois de aberto aqui. Nada foi gravado: abra-o de novo e repita a sua alteração.");
    EXPECT_EQ(Abre(m_Ana, numero)->Descricao.Valor(), "De Bia");
    EXPECT_TRUE(Pede(m_Ana, "altera", minha).Feita); // now it was seen
}

TEST_F(ServicosEquipamento, altera_AfterTwoOthers_NamesBoth)
{
    const std::int32_t numero = Inclui(m_Ana, EquipamentoDe("R-001"));
    auto mudanca = SoNumero(numero);
    const auto bia = m_Registro.Sessao("bia");
    Abre(bia, numero);
    mudanca->Descricao = "1";
    ASSERT_TRUE(Pede(bia, "altera", mudanca).Feita);
    m_Registro.PassaSegundos(1);
    ASSERT_TRUE(Pede(m_Registro.Sessao("caio"), "desativa", SoNumero(numero)).Feita);
    EXPECT_EQ(
        RecusaDe(m_Ana, "altera", mudanca),
        "O equipamento R-001 foi alterado por Bia Nunes em 20/11/2026 às 10:00:00 (descrição) e por Caio Melo em "
        "20/11/2026 às 10:00:01 (desativação), depois de aberto aqui. Nada foi gravado: abra-o de novo e repita a "
        "sua alteração.");
}

TEST_F(ServicosEquipamento, altera_TwiceInARow_IsMineToDo)
{
    auto mudanca = SoNumero(Inclui(m_Ana, EquipamentoDe("R-001")));
    mudanca->Descricao = "1";
    EXPECT_TRUE(Pede(m_Ana, "altera", mudanca).Feita);
    mudanca->Descricao = "2";
    EXPECT_TRUE(Pede(m_Ana, "altera", mudanca).Feita);
}

TEST_F(ServicosEquipamento, altera_AfterARefusal_StillKnowsWhatWasRead)
{
    auto mudanca = SoNumero(Inclui(m_Ana, EquipamentoDe("R-001")));
    mudanca->Descricao = std::string(51, 'x');
    EXPECT_FALSE(Pede(m_Ana, "altera", mudanca).Feita);
    mudanca->Descricao = "boa";
    EXPECT_TRUE(Pede(m_Ana, "altera", mudanca).Feita);
}

TEST_F(ServicosEquipamento, altera_OfADeactivatedOne_IsRefused)
{
    const std::int32_t numero = Inclui(m_Ana, EquipamentoDe("R-001"));
    ASSERT_TRUE(Pede(m_Ana, "desativa", SoNumero(numero)).Feita);
    EXPECT_EQ(Abre(m_Ana, numero)->Ativo.Valor(), 2); // it may be looked at
    auto mudanca = SoNumero(numero);
    mudanca->Descricao = "Outra";
    EXPECT_EQ(RecusaDe(m_Ana, "altera", mudanca),
              "O equipamento R-001 está desativado e não pode ser alterado. Reative-o antes.");
}

TEST_F(ServicosEquipamento, desativa_Twice_IsRefusedWithWhoAndWhen)
{
    const std::int32_t numero = Inclui(m_Ana, EquipamentoDe("R-001"));
    m_Registro.PassaSegundos(5);
    ASSERT_TRUE(Pede(m_Registro.Sessao("bia"), "desativa", SoNumero(numero)).Feita);
    EXPECT_EQ(RecusaDe(m_Ana, "desativa", SoNumero(numero)),
              "O equipamento R-001 já está desativado; última alteração por Bia Nunes em 20/11/2026 às 10:00:05.");
    const auto e = Abre(m_Ana, numero);
    EXPECT_EQ(e->Ativo.Valor(), 2);
    EXPECT_EQ(e->OperadorTrans.Valor(), 6.0);
    EXPECT_EQ(e->HoraTrans.Valor(), 100005);
}

TEST_F(ServicosEquipamento, reativa_OfAnActiveOne_IsRefused)
{
    const std::int32_t numero = Inclui(m_Ana, EquipamentoDe("R-001"));
    EXPECT_EQ(RecusaDe(m_Ana, "reativa", SoNumero(numero)),
              "O equipamento R-001 já está ativo; última alteração por Ana Souza em 20/11/2026 às 10:00:00.");
}

TEST_F(ServicosEquipamento, desativa_ByMyself_LeavesWhatIReadMine)
{
    const std::int32_t numero = Inclui(m_Ana, EquipamentoDe("R-001"));
    ASSERT_TRUE(Pede(m_Ana, "desativa", SoNumero(numero)).Feita);
    ASSERT_TRUE(Pede(m_Ana, "reativa", SoNumero(numero)).Feita);
    auto mudanca = SoNumero(numero);
    mudanca->Descricao = "Outra";
    EXPECT_TRUE(Pede(m_Ana, "altera", mudanca).Feita);
}

TEST_F(ServicosEquipamento, EveryOperation_OnAnotherClientsEquipment_FindsNone)
{
    const std::int32_t numero = Inclui(m_Ana, EquipamentoDe("R-001"));
    const auto elisa = m_Registro.Sessao("elisa");
    for (const char *metodo : {"consulta", "consultaSimples", "altera", "desativa", "reativa"}) {
        EXPECT_EQ(RecusaDe(elisa, metodo, SoNumero(numero)), "O cliente EPTC não tem equipamento de número interno 1.")
            << metodo;
    }
    for (const char *metodo : {"consulta", "consultaSimples", "altera", "desativa", "reativa"}) {
        EXPECT_EQ(RecusaDe(m_Ana, metodo, Novo<EquiptoED>()),
                  "O cliente DETRAN/RS não tem equipamento de número interno 0.")
            << metodo;
    }
}

TEST_F(ServicosEquipamento, consultaSimples_GivesTheEquipmentAlone)
{
    auto pedido = EquipamentoDe("R-001");
    Poe(pedido, SensorDe(1));
    const std::int32_t numero = Inclui(m_Ana, pedido);
    const auto simples = Pede(m_Ana, "consultaSimples", SoNumero(numero)).Como<EquiptoED>();
    EXPECT_EQ(simples->Codigo.Valor(), "R-001");
    EXPECT_EQ(simples->VelocPermitida.Valor(), 60);
    EXPECT_FALSE(simples->Sensores.Escrito());
    EXPECT_EQ(Abre(m_Ana, numero)->Sensores.Valor()->Count(), 1);
}

TEST_F(ServicosEquipamento, Permissions_AreAskedOnEveryOperation)
{
    const std::int32_t numero = Inclui(m_Ana, EquipamentoDe("R-001"));
    const auto bruno = m_Registro.Sessao("bruno");
    Abre(bruno, numero);
    EXPECT_EQ(RecusaDe(bruno, "inclui", EquipamentoDe("R-002")),
              "Bruno Lima não tem permissão para incluir equipamentos.");
    EXPECT_EQ(RecusaDe(bruno, "altera", SoNumero(numero)), "Bruno Lima não tem permissão para alterar equipamentos.");
    EXPECT_EQ(RecusaDe(bruno, "desativa", SoNumero(numero)),
              "Bruno Lima não tem permissão para desativar equipamentos.");
    EXPECT_EQ(RecusaDe(bruno, "reativa", SoNumero(numero)), "Bruno Lima não tem permissão para reativar equipamentos.");
    const auto carla = m_Registro.Sessao("carla");
    const std::string recusa = "Carla Dias não tem permissão para consultar equipamentos.";
    EXPECT_EQ(RecusaDe(carla, "consulta", SoNumero(numero)), recusa);
    EXPECT_EQ(RecusaDe(carla, "consultaSimples", SoNumero(numero)), recusa);
    EXPECT_EQ(RecusaDe(carla, "lista2", Novo<ListaEquiptoED>()), recusa);
}

TEST_F(ServicosEquipamento, Permissions_TakenAwayDuringTheSession_AreGoneAtOnce)
{
    const std::int32_t numero = Inclui(m_Ana, EquipamentoDe("R-001"));
    EXPECT_TRUE(m_Ana->TemPermissao("NAB", "VOR-EQP-CS", "A"));
    m_Registro.Sql("UPDATE USUARIO SET Ativo = 2 WHERE Numero = 1");
    EXPECT_FALSE(m_Ana->TemPermissao("NAB", "VOR-EQP-CS", "A"));
    EXPECT_EQ(RecusaDe(m_Ana, "consulta", SoNumero(numero)),
              "Ana Souza não tem permissão para consultar equipamentos.");
}

TEST_F(ServicosEquipamento, TemPermissao_ByAction_AsGranted)
{
    const auto bruno = m_Registro.Sessao("bruno");
    EXPECT_TRUE(bruno->TemPermissao("NAB", "VOR-EQP-CS", ""));
    for (const char *acao : {"I", "A", "E"}) {
        EXPECT_FALSE(bruno->TemPermissao("NAB", "VOR-EQP-CS", acao)) << acao;
        EXPECT_TRUE(m_Ana->TemPermissao("NAB", "VOR-EQP-CS", acao)) << acao;
    }
    EXPECT_FALSE(m_Ana->TemPermissao("NAB", "OUTRO", ""));
    EXPECT_FALSE(m_Ana->TemPermissao("VOR", "VOR-EQP-CS", ""));
}

TEST_F(ServicosEquipamento, LeReplica_GivesTheClientsEquipmentInOrder)
{
    Inclui(m_Ana, EquipamentoDe("B"));
    Inclui(m_Registro.Sessao("elisa"), EquipamentoDe("X"));
    Inclui(m_Ana, EquipamentoDe("A"));
    ASSERT_TRUE(Pede(m_Ana, "desativa", SoNumero(1)).Feita);
    std::string lido;
    const Data momento = m_Ana->LeReplica([&](const LinhaReplica &linha) {
        lido += std::to_string(linha.NroIntEquip) + linha.ClienteInc + linha.Codigo + linha.TipoEquip +
                std::to_string(linha.Ativo) + ";";
        Pede(m_Ana, "consultaSimples", SoNumero(linha.NroIntEquip)); // the session is free meanwhile
    });
    EXPECT_EQ(lido, "1DETRAN/RSBP2;3DETRAN/RSAP1;");
    EXPECT_EQ(momento, m_Registro.Relogio);
    int linhas = 0;
    m_Registro.Sessao("carla")->LeReplica([&](const LinhaReplica &) { ++linhas; });
    EXPECT_EQ(linhas, 0);
}

TEST_F(ServicosEquipamento, Clientes_AreTheOperatorsOwn)
{
    const auto clientes = m_Ana->Clientes();
    ASSERT_EQ(clientes.size(), 1U);
    EXPECT_EQ(clientes[0].CodCliente, 1);
    EXPECT_EQ(clientes[0].Nome, "DETRAN/RS");
    EXPECT_EQ(clientes[0].Setores, (std::vector<std::string>{"Fiscalização", "Metrologia"}));
}

} // namespace
