#include "tests/services/ServicosTeste.h"

#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

using namespace mesa;

namespace {

class ServicosEquipamento : public ServicosTeste {
  protected:
    // The number of a new R-001.
    std::int32_t IncluiR001() { return Inclui(m_Ana, EquipamentoDe("R-001")); }
    static Ref<EquiptoED> Descrito(std::int32_t numero, const std::string &descricao)
    {
        return Com(SoNumero(numero), &EquiptoED::Descricao, descricao);
    }
};

TEST_F(ServicosEquipamento, inclui_OfAWholeEquipment_AnswersWhatWasStored)
{
    const auto e = Faz(m_Ana, "inclui", EquipamentoDe("R-001")).Como<EquiptoED>();
    // Active, whatever byte came.
    EXPECT_EQ(e->Texto(),
              "EquiptoED{NroIntEquip=1, ClienteInc=\"Autoridade Estadual de Trânsito\", SetorInc=\"\", "
              "Codigo=\"R-001\", SubCodigo=\"\", "
              "Descricao=\"Av. Ipiranga, sentido centro\", CodMunic=4314902, TipoVia=\"U\", TipoEquip=\"P\", "
              "VelocPermitida=60, ArquivoLayout=\"NENHUM\", TemImagemEntrelacada=2, Modelo=\"Fictício 300\", "
              "TemLimiteDif=1, TemPerfilMag=2, NroIntRejLimDif=0, Ativo=1, ClienteTrans=\"Autoridade Estadual de "
              "Trânsito\", OperadorTrans=1, "
              "DataTrans=20261120, HoraTrans=100000, Sensores=[], TipoAgente=1, txtObsNotif=\"\"}");
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
    const auto semIndicadores = Com(Com(Novo<EquiptoED>(), &EquiptoED::Codigo, "R-001", &EquiptoED::TipoAgente, 3),
                                    &EquiptoED::TipoEquip, "E", &EquiptoED::Descricao, "Etilômetro");
    const auto e = Abre(m_Ana, Inclui(m_Ana, Com(semIndicadores, &EquiptoED::Modelo, "ET")));
    EXPECT_EQ(e->TemImagemEntrelacada.Valor(), 2);
    EXPECT_EQ(e->TemLimiteDif.Valor(), 2);
    EXPECT_EQ(e->TemPerfilMag.Valor(), 2);
    EXPECT_EQ(e->VelocPermitida.Valor(), 0);
    EXPECT_EQ(e->ClienteInc.Valor(), "Autoridade Estadual de Trânsito");
}

TEST_F(ServicosEquipamento, inclui_OfAnEquipmentWithANumber_IsRefused)
{
    EXPECT_EQ(RecusaDe(m_Ana, "inclui", Com(EquipamentoDe("R-001"), &EquiptoED::NroIntEquip, 7)),
              "Este equipamento já foi incluído, com o número interno 7.");
    EXPECT_EQ(Linhas("EQUIPAMENTO"), "0");
}

TEST_F(ServicosEquipamento, inclui_TextWithApostropheAndAccents_ComesBackAsItWent)
{
    const std::string descricao = "Sant'Ana \"ç\" -- ; DROP TABLE EQUIPAMENTO";
    const auto e = Abre(m_Ana, Inclui(m_Ana, Com(EquipamentoDe("ÁGUA"), &EquiptoED::Descricao, descricao)));
    EXPECT_EQ(e->Codigo.Valor(), "ÁGUA");
    EXPECT_EQ(e->Descricao.Valor(), descricao);
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

TEST_F(ServicosEquipamento, inclui_WithAMemberThatCannotBe_IsRefusedByItsName)
{
    const auto recusa = [&]<class T>(Campo<T> EquiptoED::*campo, std::type_identity_t<T> valor) {
        return RecusaDe(m_Ana, "inclui", Com(EquipamentoDe("R-001"), campo, valor));
    };
    const auto comprido = [&](Campo<std::string> EquiptoED::*campo, std::size_t tamanho) {
        return recusa(campo, std::string(tamanho, 'x'));
    };
    EXPECT_EQ(comprido(&EquiptoED::Codigo, 21), "O campo \"código\" aceita até 20 caracteres e veio com 21.");
    EXPECT_EQ(comprido(&EquiptoED::SubCodigo, 21), "O campo \"subcódigo\" aceita até 20 caracteres e veio com 21.");
    EXPECT_EQ(comprido(&EquiptoED::Modelo, 31), "O campo \"marca/modelo\" aceita até 30 caracteres e veio com 31.");
    EXPECT_EQ(comprido(&EquiptoED::ArquivoLayout, 51),
              "O campo \"layout dos arquivos\" aceita até 50 caracteres e veio com 51.");
    EXPECT_EQ(comprido(&EquiptoED::txtObsNotif, 71),
              "O campo \"observação da notificação\" aceita até 70 caracteres e veio com 71.");
    for (const std::string &semTexto : {std::string("a\0b", 3), std::string("\xC3(")}) {
        EXPECT_EQ(recusa(&EquiptoED::Descricao, semTexto),
                  "O campo \"descrição\" tem caracteres que não podem ser gravados.");
    }
    EXPECT_EQ(recusa(&EquiptoED::CodMunic, 99), "Não existe o município de código 99.");
    EXPECT_EQ(recusa(&EquiptoED::TipoEquip, "Z"), "Não existe o tipo de equipamento \"Z\".");
    // Both exist, but not together.
    EXPECT_EQ(recusa(&EquiptoED::TipoAgente, 3), "O tipo de medidor 3 não tem o tipo de equipamento \"P\".");
    EXPECT_EQ(recusa(&EquiptoED::TipoVia, "X"), "Não existe o tipo de via \"X\".");
    EXPECT_EQ(recusa(&EquiptoED::TipoAgente, 4), "O campo \"tipo de medidor\" deve estar entre 1 e 3; veio 4.");
    EXPECT_EQ(recusa(&EquiptoED::SetorInc, "Operações"),
              "O cliente Autoridade Estadual de Trânsito não tem o setor \"Operações\".");
    EXPECT_EQ(recusa(&EquiptoED::NroIntRejLimDif, 99), "Não existe a rejeição de número 99.");
    EXPECT_EQ(recusa(&EquiptoED::VelocPermitida, 1000),
              "O campo \"velocidade permitida\" deve estar entre 0 e 999; veio 1000.");
    EXPECT_EQ(recusa(&EquiptoED::ClienteInc, "Autoridade Municipal de Trânsito"),
              "Ana Souza registra equipamentos do cliente Autoridade Estadual de Trânsito, e não de Autoridade "
              "Municipal de Trânsito.");
    EXPECT_EQ(recusa(&EquiptoED::Codigo, ""), "O campo \"código\" precisa ser informado.");
    EXPECT_EQ(recusa(&EquiptoED::Codigo, "  "), "O campo \"código\" precisa ser informado.");
    EXPECT_EQ(Linhas("EQUIPAMENTO"), "0");
    EXPECT_EQ(Linhas("HISTORICO WHERE Entidade = 'EQUIPAMENTO'"), "0");
}

TEST_F(ServicosEquipamento, inclui_OfAnEtilometroWithoutMunicipality_IsStored)
{
    const auto pedido = Com(DoTipo(EquipamentoDe("E-1"), "E", 3), &EquiptoED::CodMunic, 0);
    EXPECT_EQ(Abre(m_Ana, Inclui(m_Ana, pedido))->CodMunic.Valor(), 0);
}

// What the form asks for, asked again: by the type.
TEST_F(ServicosEquipamento, inclui_AgainstARuleOfTheForm_IsRefusedInWords)
{
    const auto recusa = [&](const Ref<EquiptoED> &pedido) { return RecusaDe(m_Ana, "inclui", pedido); };
    const auto de = [](const std::string &tipo, std::uint8_t medidor) {
        return DoTipo(EquipamentoDe("X-1"), tipo, medidor);
    };
    EXPECT_EQ(recusa(Com(EquipamentoDe("X"), &EquiptoED::Descricao, " ")),
              "O campo \"descrição\" precisa ser informado.");
    EXPECT_EQ(recusa(Com(EquipamentoDe("X"), &EquiptoED::Modelo, "")),
              "O campo \"marca/modelo\" precisa ser informado.");
    const std::string paraOTipo = " precisa ser informado para o tipo de equipamento \"";
    const std::pair<std::string, std::uint8_t> tipos[] = {{"C", 1}, {"L", 1}, {"P", 1}, {"F", 1}, {"M", 2},
                                                          {"R", 3}, {"V", 3}, {"A", 3}, {"E", 3}, {"U", 3}};
    for (const auto &[tipo, medidor] : tipos) {
        SCOPED_TRACE(tipo);
        const auto um = [&, tipo = tipo](std::string_view quais) { return quais.find(tipo) != std::string_view::npos; };
        const auto confere = [&, tipo = tipo](const Ref<EquiptoED> &pedido, bool recusado, const std::string &frase) {
            const Retorno retorno = Pede(m_Ana, "inclui", pedido);
            EXPECT_EQ(retorno.Recusa, recusado ? frase : "");
            if (retorno.Feita) {
                Faz(m_Ana, "desativa", SoNumero(retorno.Como<EquiptoED>()->NroIntEquip));
            }
        };
        confere(Com(de(tipo, medidor), &EquiptoED::CodMunic, 0), um("CLPFMRV"),
                "O campo \"município\"" + paraOTipo + tipo + "\".");
        confere(Com(de(tipo, medidor), &EquiptoED::ArquivoLayout, ""), um("CLPFMRV"),
                "O campo \"layout dos arquivos\"" + paraOTipo + tipo + "\".");
        confere(Com(de(tipo, medidor), &EquiptoED::VelocPermitida, 0), um("CLPRA"),
                "O campo \"velocidade permitida\"" + paraOTipo + tipo + "\".");
        confere(Com(de(tipo, medidor), &EquiptoED::TemLimiteDif, 1), !um("CLPR"),
                "Equipamentos do tipo \"" + tipo + "\" não trabalham com limites diferenciados.");
        confere(Com(de(tipo, medidor), &EquiptoED::txtObsNotif, "Sob a passarela"), !um("FV"),
                "Equipamentos do tipo \"" + tipo + "\" não têm observação na notificação.");
        confere(Com(de(tipo, medidor), &EquiptoED::TipoVia, "I"), !um("M"),
                "Equipamentos do tipo \"" + tipo +
                    "\" têm o seu tipo de via: ele não é informado na geração do banco de fotos.");
    }
    EXPECT_EQ(recusa(Com(de("P", 1), &EquiptoED::NroIntRejLimDif, 3)),
              "A rejeição automática é dos equipamentos que trabalham com limites diferenciados, e o equipamento X-1 "
              "não trabalha.");
    // The form does not send the speed of a static meter.
    Faz(m_Ana, "inclui", Com(de("R", 2), &EquiptoED::VelocPermitida, 0));
}

// What no rule of today would take, but stands as it was, is saved along with what changes.
TEST_F(ServicosEquipamento, altera_OfOneStoredBeforeTheRules_AsksForWhatChangesOnly)
{
    const std::int32_t numero = IncluiR001();
    m_Registro.Sql("UPDATE EQUIPAMENTO SET Descricao = '', Modelo = '', ArquivoLayout = '', "
                   "VelocPermitida = 0, SetorInc = 'Extinto', NroIntRejLimDif = 99, TemLimiteDif = 2, TipoVia = 'I', "
                   "txtObsNotif = 'Sob a passarela'");
    const auto inteiro = Abre(m_Ana, numero);
    Faz(m_Ana, "altera", Com(inteiro, &EquiptoED::SubCodigo, "S1"));
    EXPECT_EQ(m_Registro.Sql("SELECT SubCodigo || Versao FROM EQUIPAMENTO"), "S12");
    Faz(m_Ana, "altera", Com(SoNumero(numero), &EquiptoED::VelocPermitida, 60));
    EXPECT_EQ(RecusaDe(m_Ana, "altera", Com(SoNumero(numero), &EquiptoED::VelocPermitida, 0)),
              "O campo \"velocidade permitida\" precisa ser informado para o tipo de equipamento \"P\".");
    EXPECT_EQ(RecusaDe(m_Ana, "altera", Com(SoNumero(numero), &EquiptoED::NroIntRejLimDif, 3)),
              "A rejeição automática é dos equipamentos que trabalham com limites diferenciados, e o equipamento R-001 "
              "não trabalha.");
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
    Faz(m_Registro.Sessao("elisa"), "inclui", EquipamentoDe("R-001"));
}

TEST_F(ServicosEquipamento, reativa_WhenTheCodeWasTakenMeanwhile_IsRefused)
{
    const std::int32_t velho = IncluiR001();
    Faz(m_Ana, "desativa", SoNumero(velho));
    m_Registro.PassaSegundos(61);
    const std::int32_t novo = Inclui(m_Registro.Sessao("bia"), EquipamentoDe("r-001"));
    EXPECT_EQ(RecusaDe(m_Ana, "reativa", SoNumero(velho)),
              "O código r-001 já é do equipamento ativo \"Av. Ipiranga, sentido centro\", alterado por último por Bia "
              "Nunes em 20/11/2026 às 10:01:01.");
    Faz(m_Ana, "desativa", SoNumero(novo));
    Faz(m_Ana, "reativa", SoNumero(velho));
}

TEST_F(ServicosEquipamento, Codigo_PastTheServices_IsStillUniqueInTheDatabase)
{
    const std::int32_t velho = IncluiR001();
    Faz(m_Ana, "desativa", SoNumero(velho));
    Inclui(m_Ana, EquipamentoDe("R-001"));
    EXPECT_THROW(m_Registro.Sql("UPDATE EQUIPAMENTO SET Ativo = 1"), std::runtime_error);
    EXPECT_EQ(m_Registro.Sql("SELECT Ativo FROM EQUIPAMENTO WHERE NroIntEquip = 1"), "2");
}

TEST_F(ServicosEquipamento, altera_MembersLeftUnset_KeepWhatWasStored)
{
    const auto pedido = Com(EquipamentoDe("R-001"), &EquiptoED::SetorInc, "Metrologia", &EquiptoED::NroIntRejLimDif, 3);
    const auto esperado = Abre(m_Ana, Inclui(m_Ana, pedido));
    EXPECT_EQ(esperado->NroIntRejLimDif.Valor(), 3);
    m_Registro.PassaSegundos(90);
    Faz(m_Ana, "altera", Descrito(1, "Outra"));
    Com(esperado, &EquiptoED::Descricao, "Outra", &EquiptoED::HoraTrans, 100130);
    EXPECT_EQ(Abre(m_Ana, 1)->Texto(), esperado->Texto());
}

TEST_F(ServicosEquipamento, altera_AnswersNothing)
{
    const Retorno retorno = Faz(m_Ana, "altera", Descrito(IncluiR001(), "Outra"));
    EXPECT_TRUE(retorno.Resposta.EhVazio());
    EXPECT_EQ(retorno.Recusa, "");
}

TEST_F(ServicosEquipamento, altera_ByteOfActivityAndAuditMembersSent_AreNotTakenOver)
{
    const auto mudanca = Com(Descrito(IncluiR001(), "Outra"), &EquiptoED::Ativo, 2, &EquiptoED::OperadorTrans, 99);
    Faz(m_Ana, "altera",
        Com(mudanca, &EquiptoED::ClienteTrans, "Autoridade Municipal de Trânsito", &EquiptoED::DataTrans, 19990101));
    const auto e = Abre(m_Ana, 1);
    EXPECT_EQ(e->Ativo.Valor(), 1);
    EXPECT_EQ(e->OperadorTrans.Valor(), 1.0);
    EXPECT_EQ(e->ClienteTrans.Valor(), "Autoridade Estadual de Trânsito");
    EXPECT_EQ(e->DataTrans.Valor(), 20261120);
}

TEST_F(ServicosEquipamento, altera_OfWhatIsForGood_IsRefused)
{
    IncluiR001();
    const auto recusa = [&]<class T>(Campo<T> EquiptoED::*campo, std::type_identity_t<T> valor) {
        return RecusaDe(m_Ana, "altera", Com(SoNumero(1), campo, valor));
    };
    const std::string inicio = "O equipamento R-001 já está registrado: ";
    EXPECT_EQ(recusa(&EquiptoED::Codigo, "R-002"), inicio + "o código não pode mais mudar.");
    EXPECT_EQ(recusa(&EquiptoED::TipoEquip, "C"), inicio + "o tipo de equipamento não pode mais mudar.");
    EXPECT_EQ(recusa(&EquiptoED::TipoAgente, 2), inicio + "o tipo de medidor não pode mais mudar.");
    EXPECT_EQ(recusa(&EquiptoED::CodMunic, 4305108), inicio + "o município não pode mais mudar.");
    EXPECT_EQ(recusa(&EquiptoED::ClienteInc, "Autoridade Municipal de Trânsito"),
              inicio + "o cliente não pode mais mudar.");
    EXPECT_EQ(m_Registro.Sql("SELECT Versao FROM EQUIPAMENTO"), "1");
}

TEST_F(ServicosEquipamento, altera_WithWhatIsForGoodAsItStands_IsAccepted)
{
    Faz(m_Ana, "altera",
        Com(EquipamentoDe("R-001"), &EquiptoED::NroIntEquip, IncluiR001(), &EquiptoED::SubCodigo, "S1"));
}

TEST_F(ServicosEquipamento, altera_OfNothing_WritesNothing)
{
    const auto pedido = Com(EquipamentoDe("R-001"), &EquiptoED::NroIntEquip, IncluiR001());
    m_Registro.PassaSegundos(60);
    const std::string antes = Linhas("HISTORICO");
    Faz(m_Ana, "altera", pedido);
    EXPECT_EQ(Linhas("HISTORICO"), antes);
    EXPECT_EQ(Abre(m_Ana, 1)->HoraTrans.Valor(), 100000);
}

TEST_F(ServicosEquipamento, altera_OfOneNeverOpened_IsRefused)
{
    const std::int32_t numero = Inclui(m_Registro.Sessao("bia"), EquipamentoDe("R-001"));
    const auto mudanca = Descrito(numero, "Outra");
    const std::string recusa = "O equipamento R-001 não foi aberto. Abra-o antes de alterá-lo.";
    EXPECT_EQ(RecusaDe(m_Ana, "altera", mudanca), recusa);
    mudanca->VersaoLida = 2; // a mark that was never given
    EXPECT_EQ(RecusaDe(m_Ana, "altera", mudanca), recusa);
    for (const char *metodo : {"desativa", "reativa"}) {
        const auto semMarca = Com(SoNumero(numero), &EquiptoED::Ativo, 1);
        semMarca->VersaoLida = -1;
        EXPECT_FALSE(Pede(m_Ana, metodo, semMarca).Feita);
    }
    mudanca->VersaoLida = Abre(m_Ana, numero)->VersaoLida;
    Faz(m_Ana, "altera", mudanca);
}

// Every answer brings the mark of its version, and each of them will do.
TEST_F(ServicosEquipamento, VersaoLida_OfEveryReading_IsTheVersionOfTheRow)
{
    const auto incluido = Faz(m_Ana, "inclui", EquipamentoDe("R-001")).Como<EquiptoED>();
    EXPECT_EQ(incluido->VersaoLida, 1);
    const auto mudanca = Com(incluido, &EquiptoED::Descricao, "Outra");
    Faz(m_Ana, "altera", mudanca);
    EXPECT_EQ(mudanca->VersaoLida, 2); // and may be sent again as it is
    Faz(m_Ana, "altera", Com(mudanca, &EquiptoED::Descricao, "Mais uma"));
    EXPECT_EQ(mudanca->VersaoLida, 3);
    EXPECT_EQ(Abre(m_Ana, 1)->VersaoLida, 3);
    EXPECT_EQ(Faz(m_Ana, "consultaSimples", SoNumero(1)).Como<EquiptoED>()->VersaoLida, 3);
    const auto linha =
        Faz(m_Ana, "lista2", Novo<ListaEquiptoED>()).Como<ListaEquiptoED>()->Equipamentos.Valor()->Item(1);
    EXPECT_EQ(linha->VersaoLida, 3);
    Faz(m_Ana, "desativa", linha);
    EXPECT_EQ(linha->VersaoLida, 4);
    Faz(m_Ana, "reativa", linha);
    EXPECT_EQ(linha->VersaoLida, 5);
    RecusaDe(m_Ana, "altera", Com(mudanca, &EquiptoED::Descricao, std::string(51, 'x')));
    EXPECT_EQ(mudanca->VersaoLida, 3); // a refusal gives nothing
}

TEST_F(ServicosEquipamento, altera_OfTheFirstOfTwoCopies_AfterTheSecondWasSaved_IsRefused)
{
    const std::int32_t numero = IncluiR001();
    const auto primeira = Abre(m_Ana, numero);
    const auto segunda = Abre(m_Ana, numero); // another window of the same session
    m_Registro.PassaSegundos(5);
    Faz(m_Ana, "altera", Com(segunda, &EquiptoED::Descricao, "Segunda"));
    EXPECT_EQ(RecusaDe(m_Ana, "altera", Com(primeira, &EquiptoED::Descricao, "Primeira")),
              "O equipamento R-001 foi alterado por Ana Souza em 20/11/2026 às 10:00:05 (descrição), depois de aberto "
              "aqui. Nada foi gravado: abra-o de novo e repita a sua alteração.");
    EXPECT_EQ(Abre(m_Ana, numero)->Descricao.Valor(), "Segunda");
    Faz(m_Ana, "altera", Com(segunda, &EquiptoED::Descricao, "Segunda, outra vez"));
}

TEST_F(ServicosEquipamento, desativa_FromAListThatIsNoLongerSo_IsRefused)
{
    IncluiR001();
    const auto lista = [&] {
        return Faz(m_Ana, "lista2", Novo<ListaEquiptoED>()).Como<ListaEquiptoED>()->Equipamentos.Valor()->Item(1);
    };
    const auto velha = lista();
    m_Registro.PassaSegundos(5);
    const auto bia = m_Registro.Sessao("bia");
    Abre(bia, 1);
    Faz(bia, "altera", Descrito(1, "De Bia"));
    const std::string recusa = "O equipamento R-001 foi alterado por Bia Nunes em 20/11/2026 às 10:00:05 (descrição), "
                               "depois de aberto aqui. Nada foi gravado: abra-o de novo e repita a sua alteração.";
    EXPECT_EQ(RecusaDe(m_Ana, "desativa", velha), recusa);
    EXPECT_EQ(Abre(m_Ana, 1)->Ativo.Valor(), 1);
    Faz(m_Ana, "desativa", lista());
    EXPECT_EQ(RecusaDe(m_Ana, "reativa", velha).substr(0, recusa.find(')')), recusa.substr(0, recusa.find(')')));
    EXPECT_EQ(Abre(m_Ana, 1)->Ativo.Valor(), 2);
    Faz(m_Ana, "reativa", lista());
}

TEST_F(ServicosEquipamento, altera_AfterSomebodyElse_IsRefusedWithWhoWhatAndWhen)
{
    const std::int32_t numero = IncluiR001();
    const auto bia = m_Registro.Sessao("bia");
    Abre(bia, numero);
    m_Registro.PassaSegundos(65);
    Faz(bia, "altera", Poe(Com(Descrito(numero, "De Bia"), &EquiptoED::Modelo, "M2"), SensorDe(1)));

    const auto minha = Descrito(numero, "De Ana");
    EXPECT_EQ(RecusaDe(m_Ana, "altera", minha),
              "O equipamento R-001 foi alterado por Bia Nunes em 20/11/2026 às 10:01:05 (sensor 1 incluído, descrição, "
              "marca/modelo), depois de aberto aqui. Nada foi gravado: abra-o de novo e repita a sua alteração.");
    EXPECT_EQ(Abre(m_Ana, numero)->Descricao.Valor(), "De Bia");
    Faz(m_Ana, "altera", minha); // now it was seen
}

TEST_F(ServicosEquipamento, altera_AfterTwoOthers_NamesBoth)
{
    const std::int32_t numero = IncluiR001();
    const auto mudanca = Descrito(numero, "1");
    const auto bia = m_Registro.Sessao("bia");
    Abre(bia, numero);
    Faz(bia, "altera", mudanca);
    m_Registro.PassaSegundos(1);
    Faz(m_Registro.Sessao("caio"), "desativa", SoNumero(numero));
    EXPECT_EQ(
        RecusaDe(m_Ana, "altera", mudanca),
        "O equipamento R-001 foi alterado por Bia Nunes em 20/11/2026 às 10:00:00 (descrição) e por Caio Melo em "
        "20/11/2026 às 10:00:01 (desativação), depois de aberto aqui. Nada foi gravado: abra-o de novo e repita a "
        "sua alteração.");
}

TEST_F(ServicosEquipamento, altera_AgainAfterOneOfMyOwnOrARefusal_StillKnowsWhatWasRead)
{
    const std::int32_t numero = IncluiR001();
    Faz(m_Ana, "altera", Descrito(numero, "1"));
    Faz(m_Ana, "altera", Descrito(numero, "2"));
    RecusaDe(m_Ana, "altera", Descrito(numero, std::string(51, 'x')));
    Faz(m_Ana, "altera", Descrito(numero, "boa"));
}

TEST_F(ServicosEquipamento, altera_OfADeactivatedOne_IsRefused)
{
    const std::int32_t numero = IncluiR001();
    Faz(m_Ana, "desativa", SoNumero(numero));
    EXPECT_EQ(Abre(m_Ana, numero)->Ativo.Valor(), 2); // it may be looked at
    EXPECT_EQ(RecusaDe(m_Ana, "altera", Descrito(numero, "Outra")),
              "O equipamento R-001 está desativado e não pode ser alterado. Reative-o antes.");
}

TEST_F(ServicosEquipamento, desativa_Twice_IsRefusedWithWhoAndWhen)
{
    const std::int32_t numero = IncluiR001();
    m_Registro.PassaSegundos(5);
    Faz(m_Registro.Sessao("bia"), "desativa", SoNumero(numero));
    EXPECT_EQ(RecusaDe(m_Ana, "desativa", SoNumero(numero)),
              "O equipamento R-001 já está desativado; última alteração por Bia Nunes em 20/11/2026 às 10:00:05.");
    const auto e = Abre(m_Ana, numero);
    EXPECT_EQ(e->Ativo.Valor(), 2);
    EXPECT_EQ(e->OperadorTrans.Valor(), 6.0);
    EXPECT_EQ(e->HoraTrans.Valor(), 100005);
}

TEST_F(ServicosEquipamento, reativa_OfAnActiveOne_IsRefused)
{
    const std::int32_t numero = IncluiR001();
    EXPECT_EQ(RecusaDe(m_Ana, "reativa", SoNumero(numero)),
              "O equipamento R-001 já está ativo; última alteração por Ana Souza em 20/11/2026 às 10:00:00.");
}

TEST_F(ServicosEquipamento, desativa_ByMyself_LeavesWhatIReadMine)
{
    const std::int32_t numero = IncluiR001();
    Faz(m_Ana, "desativa", SoNumero(numero));
    Faz(m_Ana, "reativa", SoNumero(numero));
    Faz(m_Ana, "altera", Descrito(numero, "Outra"));
}

TEST_F(ServicosEquipamento, EveryOperation_WithoutANumber_FindsNone)
{
    for (const char *metodo : {"consulta", "consultaSimples", "altera", "desativa", "reativa"}) {
        EXPECT_EQ(RecusaDe(m_Ana, metodo, Novo<EquiptoED>()),
                  "O cliente Autoridade Estadual de Trânsito não tem equipamento de número interno 0.")
            << metodo;
    }
}

TEST_F(ServicosEquipamento, consultaSimples_GivesTheEquipmentAlone)
{
    const std::int32_t numero = Inclui(m_Ana, Poe(EquipamentoDe("R-001"), SensorDe(1)));
    const auto simples = Faz(m_Ana, "consultaSimples", SoNumero(numero)).Como<EquiptoED>();
    EXPECT_EQ(simples->Codigo.Valor(), "R-001");
    EXPECT_EQ(simples->VelocPermitida.Valor(), 60);
    EXPECT_FALSE(simples->Sensores.Escrito());
    EXPECT_EQ(Abre(m_Ana, numero)->Sensores.Valor()->Count(), 1);
}

// Written past the services: no table tells whether it is of photo work.
TEST_F(ServicosEquipamento, Desativa_OfATypeThatThereIsNot_IsRefused)
{
    const std::int32_t numero = Inclui(m_Ana, EquipamentoDe("R-001"));
    m_Registro.Sql("DROP TRIGGER EQUIPAMENTO_FIXA; UPDATE EQUIPAMENTO SET TipoEquip = 'Z'");
    const Retorno retorno = Pede(m_Ana, "desativa", SoNumero(numero));
    EXPECT_FALSE(retorno.Feita);
    EXPECT_EQ(retorno.Recusa, "Não existe o tipo de equipamento \"Z\".");
    EXPECT_EQ(m_Registro.Sql("SELECT Ativo FROM EQUIPAMENTO"), "1");
}

TEST_F(ServicosEquipamento, TemPermissao_ByAction_AsGrantedUntilTakenAway)
{
    const auto bruno = m_Registro.Sessao("bruno");
    EXPECT_TRUE(bruno->TemPermissao("NAB", "VOR-EQP-CS", ""));
    for (const char *acao : {"I", "A", "E"}) {
        EXPECT_FALSE(bruno->TemPermissao("NAB", "VOR-EQP-CS", acao)) << acao;
        EXPECT_TRUE(m_Ana->TemPermissao("NAB", "VOR-EQP-CS", acao)) << acao;
    }
    EXPECT_FALSE(m_Ana->TemPermissao("NAB", "OUTRO", ""));
    EXPECT_FALSE(m_Ana->TemPermissao("VOR", "VOR-EQP-CS", ""));
    m_Registro.Sql("UPDATE USUARIO SET Ativo = 2 WHERE Numero = 1");
    EXPECT_FALSE(m_Ana->TemPermissao("NAB", "VOR-EQP-CS", "A"));
}

TEST_F(ServicosEquipamento, LeReplica_GivesTheClientsEquipmentInOrder)
{
    Inclui(m_Ana, EquipamentoDe("B"));
    Inclui(m_Registro.Sessao("elisa"), EquipamentoDe("X"));
    Inclui(m_Ana, EquipamentoDe("A"));
    Faz(m_Ana, "desativa", SoNumero(1));
    std::string lido;
    const Replicado lida = m_Ana->LeReplica(0, [&](const LinhaReplica &linha) {
        lido += std::to_string(linha.NroIntEquip) + linha.ClienteInc + linha.Codigo + linha.TipoEquip +
                std::to_string(linha.Ativo) + ";";
    });
    EXPECT_EQ(lido, "1Autoridade Estadual de TrânsitoBP2;3Autoridade Estadual de TrânsitoAP1;");
    EXPECT_EQ(lida.DeQuando, m_Registro.Relogio);
    EXPECT_EQ(lida.Quantas, 2);
    int linhas = 0;
    m_Registro.Sessao("carla")->LeReplica(0, [&](const LinhaReplica &) { ++linhas; });
    EXPECT_EQ(linhas, 0);
}

TEST_F(ServicosEquipamento, Clientes_AreTheOperatorsOwn)
{
    const auto clientes = m_Ana->Clientes();
    ASSERT_EQ(clientes.size(), 1U);
    EXPECT_EQ(clientes[0].CodCliente, 1);
    EXPECT_EQ(clientes[0].Nome, "Autoridade Estadual de Trânsito");
    EXPECT_EQ(clientes[0].Setores, (std::vector<std::string>{"Fiscalização", "Metrologia"}));
}

} // namespace
