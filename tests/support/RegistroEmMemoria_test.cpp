#include "tests/support/RegistroEmMemoria.h"

#include "host/ChamadaRemota.h"
#include "tests/support/HostTeste.h"
#include "tests/support/RegistroDoTexto.h"

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

    static Ref<EquiptoED> Codigo(const std::string &codigo)
    {
        return DoTexto<EquiptoED>("Codigo=\"" + codigo + R"(", ClienteInc="Autoridade das Estradas de Rodagem")");
    }

    RegistroEmMemoria registro{*host};
};

TEST_F(RegistroEmMemoriaTeste, inclui_OfANewEquipment_NumbersSignsAndActivatesIt)
{
    auto resposta = Consulta<EquiptoED>(
        "inclui", DoTexto<EquiptoED>(R"(Codigo="R-01", ClienteInc="Autoridade das Estradas de Rodagem", Ativo=2)"));
    ASSERT_TRUE(resposta);
    EXPECT_EQ((*resposta)->Texto(), "EquiptoED{NroIntEquip=1, ClienteInc=\"Autoridade das Estradas de Rodagem\", "
                                    "Codigo=\"R-01\", Ativo=1, ClienteTrans=\"Autoridade das Estradas de Rodagem\", "
                                    "OperadorTrans=77, DataTrans=20261120, HoraTrans=100000}");
    EXPECT_FALSE(*resposta == registro.Equipamento(1)); // a copy
    EXPECT_EQ((*Consulta<EquiptoED>("inclui", Codigo("R-02")))->NroIntEquip.Valor(), 2);
}

TEST_F(RegistroEmMemoriaTeste, altera_OfSomeMembers_KeepsTheOthersAndTheActivity)
{
    const std::string afericao = "DataVerificacao=01/01/2026, DataVencimento=31/12/2026, Ativo=1";
    registro.Poe(DoTexto<EquiptoED>(R"(Codigo="R-01", Sensores=[SensorED{Afericoes=[AfericaoED{)" + afericao +
                                    R"(}], NroSensor=1, Ativo=1, LocalInfr="BR 116"}])"));
    host->Tela->Relogio = DataDe(21, 11, 2026, 9, 5, 7);
    // A known sensor with a new calibration, and a new sensor.
    EXPECT_TRUE(
        Comanda("altera",
                DoTexto<EquiptoED>(R"(NroIntEquip=1, Modelo="X", Ativo=2, Sensores=[SensorED{NroIntSensor=1, Ativo=2, )"
                                   R"(Afericoes=[AfericaoED{Numero="N2"}]}, SensorED{NroSensor=2}])")));
    const std::string guardado =
        R"(EquiptoED{NroIntEquip=1, Codigo="R-01", Modelo="X", Ativo=1, ClienteTrans="Autoridade das Estradas de Rodagem", OperadorTrans=77, )"
        R"(DataTrans=20261121, HoraTrans=90507, Sensores=[SensorED{Afericoes=[AfericaoED{NroIntAfericao=1, )" +
        afericao +
        R"(}, AfericaoED{NroIntAfericao=2, Numero="N2"}], NroIntSensor=1, NroSensor=1, Ativo=2, LocalInfr="BR 116"}, )"
        R"(SensorED{NroIntSensor=2, NroSensor=2}]})";
    auto lido = *Consulta<EquiptoED>("consulta", DoTexto<EquiptoED>("NroIntEquip=1"));
    EXPECT_EQ(lido->Texto(), guardado);
    lido->Sensores.Valor()->Item(2)->LocalInfr = "of the reader alone";
    EXPECT_FALSE((*Consulta<EquiptoED>("consultaSimples", DoTexto<EquiptoED>("NroIntEquip=1")))->Sensores.Escrito());
    for (const char *estranho :
         {"NroIntEquip=9", R"(NroIntEquip=1, Modelo="Y", Sensores=[SensorED{NroIntSensor=8}])"}) {
        EXPECT_FALSE(Comanda("altera", DoTexto<EquiptoED>(estranho)));
    }
    EXPECT_TRUE(host->Contem("EquiptoRN.MostraErro() -> \"Equipamento não encontrado.\""));
    EXPECT_EQ(registro.Equipamento(1)->Texto(), guardado);
    const auto dia = DoTexto<ConsultaAfericaoED>("NroIntEquip=1, DtInfracao=01/02/2026");
    EXPECT_EQ((*Consulta<AfericaoED>("consultaSimplesAfericaoVigente", dia))->Texto(), "AfericaoED{}") << "inactive";
    registro.Equipamento(1)->Sensores.Valor()->Item(1)->Ativo = 1;
    EXPECT_EQ((*Consulta<AfericaoED>("consultaSimplesAfericaoVigente", dia))->NroIntAfericao.Valor(), 1);
}

TEST_F(RegistroEmMemoriaTeste, lista2_OfMoreThanAPage_TellsWhereTheNextStarts)
{
    registro.TamanhoPagina = 2;
    for (const char *codigo : {"A", "B", "C"}) {
        registro.Poe(Codigo(codigo));
    }
    registro.Poe(DoTexto<EquiptoED>(R"(Codigo="D", ClienteInc="OUTRO")"));
    auto pedido = Novo<ListaEquiptoED>();
    pedido->ClienteInc = "Autoridade das Estradas de Rodagem";
    auto pagina = *Consulta<ListaEquiptoED>("lista2", pedido);
    EXPECT_EQ(pagina->Equipamentos.Valor()->Count(), 2);
    EXPECT_EQ(pagina->ProxNroIntEquip.Valor(), 3);
    pedido->ProxNroIntEquip = 3;
    pagina = *Consulta<ListaEquiptoED>("lista2", pedido);
    ASSERT_EQ(pagina->Equipamentos.Valor()->Count(), 1);
    EXPECT_EQ(pagina->Equipamentos.Valor()->Item(1)->Codigo.Valor(), "C");
    EXPECT_EQ(pagina->ProxNroIntEquip.Valor(), 0);
}

TEST_F(RegistroEmMemoriaTeste, LimitesAndDias_ChangedByAnUnknownNumber_AreRefusedAndNothingIsStored)
{
    const std::string limites = "ListaLimiteDif=[LimiteDifED{NroIntEquip=1, TipoLimite=1, Ativo=1}, LimiteDifED{";
    EXPECT_FALSE(Comanda("alteraListaLimitesDif", DoTexto<EquiptoED>(limites + "NroInt=9}]")));
    EXPECT_TRUE(registro.Limite(1).Nada());
    EXPECT_TRUE(Comanda("alteraListaLimitesDif", DoTexto<EquiptoED>(limites + "Dia=7}]")));
    EXPECT_EQ(registro.Limite(2)->Dia.Valor(), 7);
    const auto estranho = DoTexto<DiaEspecificoED>("NroInt=2");
    EXPECT_FALSE(Consulta<DiaEspecificoED>("alteraDiaEspecifico", estranho));
    EXPECT_FALSE(Consulta<DiaEspecificoED>("desativaDiaEspecifico", estranho));
    EXPECT_TRUE(registro.Dia(1).Nada());
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
    auto cursor = host->MDB->OpenRecordset(
        "         SELECT NroIntEquip     FROM VOREQUIPTO    WHERE ClienteInc = 'Autoridade das Estradas de Rodagem'"
        "     AND UCASE(Codigo) = 'R-01'     AND Ativo = 1 ",
        InstantaneoSomenteLeitura, Valor(), Valor());
    ASSERT_EQ(cursor->RecordCount(), 1);
    EXPECT_EQ(cursor->Fields("NroIntEquip")->Value().CLng(), 1);
}

} // namespace
