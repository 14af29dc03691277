#include "tests/support/RegistroEmMemoria.h"

#include "host/ChamadaRemota.h"
#include "tests/support/HostTeste.h"

#include <cstdint>
#include <optional>
#include <string>

namespace {

class RegistroEmMemoriaTeste : public HostTeste {
  protected:
    bool Comanda(const std::string &metodo, const Ref<EquiptoED> &pedido)
    {
        return ComandaRemoto([&] { return host->objMTM->ObtemGateway(); }, "EquiptoRN", metodo, [&] { return pedido; });
    }

    template <class Resultado, class Pedido>
    std::optional<Ref<Resultado>> Consulta(const std::string &metodo, const Ref<Pedido> &pedido,
                                           const std::string &classe = "EquiptoRN")
    {
        return ConsultaRemota<Resultado>([&] { return host->objMTM->ObtemGateway(); }, classe, metodo,
                                         [&] { return pedido; });
    }

    static Ref<EquiptoED> Equipto(std::int32_t numero)
    {
        auto equipto = Novo<EquiptoED>();
        equipto->NroIntEquip = numero;
        return equipto;
    }

    static Ref<EquiptoED> Codigo(const std::string &codigo, const std::string &cliente = "DAER")
    {
        auto equipto = Novo<EquiptoED>();
        equipto->Codigo = codigo;
        equipto->ClienteInc = cliente;
        return equipto;
    }

    static Ref<AfericaoED> Afericao(Data de, Data ate)
    {
        auto afericao = Novo<AfericaoED>();
        afericao->DataVerificacao = de;
        afericao->DataVencimento = ate;
        afericao->Ativo = 1;
        return afericao;
    }

    // An equipment with one sensor and one calibration of 2026.
    static Ref<EquiptoED> Completo()
    {
        auto sensor = Novo<SensorED>();
        sensor->NroSensor = 1;
        sensor->LocalInfr = "BR 116";
        sensor->Ativo = 1;
        sensor->Afericoes = Novo<Colecao<Ref<AfericaoED>>>();
        sensor->Afericoes.Valor()->Add(Afericao(DataDe(1, 1, 2026), DataDe(31, 12, 2026)));
        auto equipto = Codigo("R-01");
        equipto->Sensores = Novo<Colecao<Ref<SensorED>>>();
        equipto->Sensores.Valor()->Add(sensor);
        return equipto;
    }

    RegistroEmMemoria registro{*host};
};

TEST_F(RegistroEmMemoriaTeste, inclui_OfANewEquipment_NumbersSignsAndActivatesIt)
{
    auto novo = Codigo("R-01");
    novo->Ativo = 2;
    auto resposta = Consulta<EquiptoED>("inclui", novo);
    ASSERT_TRUE(resposta);
    EXPECT_EQ((*resposta)->Texto(),
              "EquiptoED{NroIntEquip=1, ClienteInc=\"DAER\", Codigo=\"R-01\", Ativo=1, ClienteTrans=\"DAER\", "
              "OperadorTrans=77, DataTrans=20261120, HoraTrans=100000}");
    EXPECT_FALSE(*resposta == registro.Equipamento(1)); // a copy
    EXPECT_EQ((*Consulta<EquiptoED>("inclui", Codigo("R-02")))->NroIntEquip.Valor(), 2);
}

TEST_F(RegistroEmMemoriaTeste, altera_OfSomeMembers_KeepsTheOthersAndTheActivity)
{
    registro.Poe(Codigo("R-01"));
    host->Tela->Relogio = DataDe(21, 11, 2026, 9, 5, 7);
    auto pedido = Equipto(1);
    pedido->Modelo = "X";
    pedido->Ativo = 2;
    EXPECT_TRUE(Comanda("altera", pedido));
    const EquiptoED &guardado = *registro.Equipamento(1);
    EXPECT_EQ(guardado.Codigo.Valor(), "R-01");
    EXPECT_EQ(guardado.Modelo.Valor(), "X");
    EXPECT_EQ(guardado.Ativo.Valor(), 1);
    EXPECT_EQ(guardado.DataTrans.Valor(), 20261121);
    EXPECT_EQ(guardado.HoraTrans.Valor(), 90507);
}

TEST_F(RegistroEmMemoriaTeste, altera_OfAnUnknownEquipment_IsRefused)
{
    EXPECT_FALSE(Comanda("altera", Equipto(9)));
    EXPECT_TRUE(host->Contem("EquiptoRN.MostraErro() -> \"Equipamento não encontrado.\""));
}

TEST_F(RegistroEmMemoriaTeste, altera_WithSensors_MergesTheNumberedAndAddsTheNew)
{
    registro.Poe(Completo());
    auto pedido = Equipto(1);
    auto conhecido = Novo<SensorED>();
    conhecido->NroIntSensor = 1;
    conhecido->Ativo = 2;
    conhecido->Afericoes = Novo<Colecao<Ref<AfericaoED>>>();
    conhecido->Afericoes.Valor()->Add(Afericao(DataDe(1, 1, 2027), DataDe(31, 12, 2027)));
    auto novo = Novo<SensorED>();
    novo->NroSensor = 2;
    pedido->Sensores = Novo<Colecao<Ref<SensorED>>>();
    pedido->Sensores.Valor()->Add(conhecido);
    pedido->Sensores.Valor()->Add(novo);
    EXPECT_TRUE(Comanda("altera", pedido));

    auto lido = *Consulta<EquiptoED>("consulta", Equipto(1));
    ASSERT_EQ(lido->Sensores.Valor()->Count(), 2);
    const SensorED &primeiro = *lido->Sensores.Valor()->Item(1);
    EXPECT_EQ(primeiro.LocalInfr.Valor(), "BR 116");
    EXPECT_EQ(primeiro.Ativo.Valor(), 2);
    ASSERT_EQ(primeiro.Afericoes.Valor()->Count(), 2);
    EXPECT_EQ(primeiro.Afericoes.Valor()->Item(2)->NroIntAfericao.Valor(), 2);
    EXPECT_EQ(lido->Sensores.Valor()->Item(2)->NroIntSensor.Valor(), 2);
    lido->Sensores.Valor()->Item(2)->LocalInfr = "of the reader alone";
    EXPECT_EQ(registro.Equipamento(1)->Sensores.Valor()->Item(2)->LocalInfr.Valor(), "");
}

TEST_F(RegistroEmMemoriaTeste, altera_WithAnUnknownSensor_IsRefusedAndChangesNothing)
{
    registro.Poe(Completo());
    const std::string antes = registro.Equipamento(1)->Texto();
    auto pedido = Equipto(1);
    auto estranho = Novo<SensorED>();
    estranho->NroIntSensor = 8;
    pedido->Modelo = "X";
    pedido->Sensores = Novo<Colecao<Ref<SensorED>>>();
    pedido->Sensores.Valor()->Add(estranho);
    EXPECT_FALSE(Comanda("altera", pedido));
    EXPECT_EQ(registro.Equipamento(1)->Texto(), antes);
}

TEST_F(RegistroEmMemoriaTeste, consultaSimples_OfAnEquipment_LeavesTheSensorsOut)
{
    registro.Poe(Completo());
    auto simples = *Consulta<EquiptoED>("consultaSimples", Equipto(1));
    EXPECT_EQ(simples->Codigo.Valor(), "R-01");
    EXPECT_FALSE(simples->Sensores.Escrito());
    EXPECT_FALSE(Consulta<EquiptoED>("consultaSimples", Equipto(2)));
}

TEST_F(RegistroEmMemoriaTeste, lista2_OfMoreThanAPage_TellsWhereTheNextStarts)
{
    registro.TamanhoPagina = 2;
    for (const char *codigo : {"A", "B", "C"}) {
        registro.Poe(Codigo(codigo));
    }
    auto pedido = Novo<ListaEquiptoED>();
    pedido->ClienteInc = "DAER";
    auto pagina = *Consulta<ListaEquiptoED>("lista2", pedido);
    EXPECT_EQ(pagina->Equipamentos.Valor()->Count(), 2);
    EXPECT_EQ(pagina->ProxNroIntEquip.Valor(), 3);
    pedido->ProxNroIntEquip = 3;
    pagina = *Consulta<ListaEquiptoED>("lista2", pedido);
    ASSERT_EQ(pagina->Equipamentos.Valor()->Count(), 1);
    EXPECT_EQ(pagina->Equipamentos.Valor()->Item(1)->Codigo.Valor(), "C");
    EXPECT_EQ(pagina->ProxNroIntEquip.Valor(), 0);
}

TEST_F(RegistroEmMemoriaTeste, lista2_ByCriteria_LeavesOutWhatDoesNotMatch)
{
    registro.Poe(Codigo("A"));
    registro.Poe(Codigo("B", "OUTRO"));
    EXPECT_TRUE(Comanda("desativa", Equipto(1)));
    auto pedido = Novo<ListaEquiptoED>();
    pedido->ClienteInc = "DAER";
    pedido->Ativo = 1;
    EXPECT_FALSE((*Consulta<ListaEquiptoED>("lista2", pedido))->Equipamentos.Escrito());
    pedido->Ativo = 2;
    EXPECT_EQ((*Consulta<ListaEquiptoED>("lista2", pedido))->Equipamentos.Valor()->Count(), 1);
    pedido->TipoAgente = 1;
    EXPECT_FALSE((*Consulta<ListaEquiptoED>("lista2", pedido))->Equipamentos.Escrito());
    EXPECT_TRUE(Comanda("reativa", Equipto(1)));
    EXPECT_EQ(registro.Equipamento(1)->Ativo.Valor(), 1);
}

TEST_F(RegistroEmMemoriaTeste, AfericaoVigente_OnADay_IsTheOneWhosePeriodHoldsIt)
{
    registro.Poe(Completo());
    auto pedido = Novo<ConsultaAfericaoED>();
    pedido->NroIntEquip = 1;
    const auto numeroEm = [&](Data dia) {
        pedido->DtInfracao = dia;
        return (*Consulta<AfericaoED>("consultaSimplesAfericaoVigente", pedido))->NroIntAfericao.Valor();
    };
    EXPECT_EQ(numeroEm(DataDe(1, 1, 2026)), 1);
    EXPECT_EQ(numeroEm(DataDe(31, 12, 2026)), 1);
    EXPECT_EQ(numeroEm(DataDe(31, 12, 2025)), 0);
    EXPECT_EQ(numeroEm(Data{}), 0);
    registro.Equipamento(1)->Sensores.Valor()->Item(1)->Ativo = 2;
    EXPECT_EQ(numeroEm(DataDe(1, 1, 2026)), 0);
}

TEST_F(RegistroEmMemoriaTeste, Limites_SavedListedAndDeactivated_FollowTheirNumbers)
{
    auto limite = Novo<LimiteDifED>();
    limite->NroIntEquip = 1;
    limite->Dia = 2;
    limite->TipoLimite = 1;
    limite->Ativo = 1;
    auto equipto = Novo<EquiptoED>();
    equipto->ListaLimiteDif = Novo<Colecao<Ref<LimiteDifED>>>();
    equipto->ListaLimiteDif.Valor()->Add(limite);
    EXPECT_TRUE(Comanda("alteraListaLimitesDif", equipto));
    EXPECT_TRUE(Comanda("alteraListaLimitesDif", equipto));

    auto lista = *Consulta<EquiptoED>("listaLimiteDif", limite);
    ASSERT_EQ(lista->ListaLimiteDif.Valor()->Count(), 2);
    EXPECT_EQ(lista->ListaLimiteDif.Valor()->Item(2)->NroInt.Valor(), 2);

    limite->NroInt = 2;
    limite->Dia = 7;
    EXPECT_TRUE(Comanda("alteraListaLimitesDif", equipto));
    EXPECT_EQ((*Consulta<LimiteDifED>("consultaSimplesLimiteDif", limite))->Dia.Valor(), 7);
    EXPECT_EQ(registro.Limite(1)->Dia.Valor(), 2);

    EXPECT_TRUE(Consulta<LimiteDifED>("desativaLimiteDif", limite));
    EXPECT_EQ((*Consulta<EquiptoED>("listaLimiteDif", limite))->ListaLimiteDif.Valor()->Count(), 1);
    limite->TipoLimite = 2;
    EXPECT_EQ((*Consulta<EquiptoED>("listaLimiteDif", limite))->ListaLimiteDif.Valor()->Count(), 0);
    limite->NroInt = 9;
    EXPECT_FALSE(Comanda("alteraListaLimitesDif", equipto));
}

TEST_F(RegistroEmMemoriaTeste, Dias_AddedChangedAndDeactivated_FollowTheirNumbers)
{
    auto dia = Novo<DiaEspecificoED>();
    dia->NroIntEquip = 1;
    dia->Data = DataDe(25, 12, 2026);
    EXPECT_TRUE(Consulta<DiaEspecificoED>("adicionaDiaEspecifico", dia));
    auto alterado = Novo<DiaEspecificoED>();
    alterado->NroInt = 1;
    alterado->VelocPerm = 60;
    EXPECT_TRUE(Consulta<DiaEspecificoED>("alteraDiaEspecifico", alterado));
    auto lido = *Consulta<DiaEspecificoED>("consultaSimplesDiaEspecifico", alterado);
    EXPECT_EQ(lido->Data.Valor(), DataDe(25, 12, 2026));
    EXPECT_EQ(lido->VelocPerm.Valor(), 60);
    EXPECT_EQ((*Consulta<EquiptoED>("listaDiaEspecifico", dia))->ListaDiaEspecifico.Valor()->Count(), 1);
    EXPECT_TRUE(Consulta<DiaEspecificoED>("desativaDiaEspecifico", alterado));
    EXPECT_EQ((*Consulta<EquiptoED>("listaDiaEspecifico", dia))->ListaDiaEspecifico.Valor()->Count(), 0);
    alterado->NroInt = 2;
    EXPECT_FALSE(Consulta<DiaEspecificoED>("alteraDiaEspecifico", alterado));
    EXPECT_FALSE(Consulta<DiaEspecificoED>("desativaDiaEspecifico", alterado));
}

TEST_F(RegistroEmMemoriaTeste, Certificado_OfItsKeys_ComesInTheAnswer)
{
    registro.PoeCertificado(12, "A1", "%PDF");
    auto pedido = Novo<RelatorioAfericaoED>();
    pedido->CodOat = 12;
    pedido->Serie = "A1";
    EXPECT_EQ((*Consulta<RelatorioAfericaoED>("consultaRelatorioRVOR011", pedido, "RelatorioRN"))->Documento.Valor(),
              "%PDF");
    pedido->Serie = "A2";
    EXPECT_FALSE(Consulta<RelatorioAfericaoED>("consultaRelatorioRVOR011", pedido, "RelatorioRN"));
}

TEST_F(RegistroEmMemoriaTeste, TabelaLocal_AfterTheModuleToldOfAChange_ShowsTheRegistry)
{
    Consulta<EquiptoED>("inclui", Codigo("r-01"));
    EXPECT_EQ(host->MDB->TabelaDe("VOREQUIPTO").Linhas.size(), 0U);
    host->objMTM->NovoTrataBD()->TabelaAlterada("VOREQUIPTO", true, false, Valor(), Valor());
    auto cursor =
        host->MDB->OpenRecordset("         SELECT NroIntEquip     FROM VOREQUIPTO    WHERE ClienteInc = 'DAER'"
                                 "     AND UCASE(Codigo) = 'R-01'     AND Ativo = 1 ",
                                 InstantaneoSomenteLeitura, Valor(), Valor());
    ASSERT_EQ(cursor->RecordCount(), 1);
    EXPECT_EQ(cursor->Fields("NroIntEquip")->Value().CLng(), 1);
}

} // namespace
