#include "host/Registro.h"

#include "host/ConsultaAfericaoED.h"
#include "host/EquiptoED.h"
#include "host/ListaEquiptoED.h"
#include "host/RelatorioAfericaoED.h"
#include "tests/support/FalhaLancada.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

template <class R> std::vector<std::string> Nomes()
{
    std::vector<std::string> nomes;
    R().CadaMembro([&](std::string_view nome, const auto &) { nomes.emplace_back(nome); });
    return nomes;
}

using Textos = std::vector<std::string>;

TEST(Campo, Escrito_OfAMember_IsTrueOnlyAfterAWrite)
{
    Campo<std::int32_t> campo;
    EXPECT_FALSE(campo.Escrito());
    EXPECT_EQ(campo.Valor(), 0);
    campo = 0;
    EXPECT_TRUE(campo.Escrito());
    campo = 7;
    const std::int32_t lido = campo;
    EXPECT_EQ(lido, 7);
    const Campo<std::int32_t> copia = campo;
    EXPECT_TRUE(copia.Escrito());
}

TEST(Registro, Members_OfEveryRecord_StandInTheRecordsOrder)
{
    EXPECT_EQ(Nomes<EquiptoED>(),
              (Textos{"NroIntEquip",    "ClienteInc",        "SetorInc",      "Codigo",
                      "SubCodigo",      "Descricao",         "CodMunic",      "TipoVia",
                      "TipoEquip",      "VelocPermitida",    "ArquivoLayout", "TemImagemEntrelacada",
                      "Modelo",         "TemLimiteDif",      "TemPerfilMag",  "NroIntRejLimDif",
                      "Ativo",          "ClienteTrans",      "OperadorTrans", "DataTrans",
                      "HoraTrans",      "Sensores",          "TipoAgente",    "txtObsNotif",
                      "ListaLimiteDif", "ListaDiaEspecifico"}));
    EXPECT_EQ(Nomes<ListaEquiptoED>(), (Textos{"Equipamentos", "ClienteInc", "SetorInc", "Codigo", "SubCodigo",
                                               "TipoEquip", "Ativo", "TipoAgente", "ProxNroIntEquip", "IndTrabFoto"}));
    EXPECT_EQ(Nomes<SensorED>(), (Textos{"Afericoes", "NroIntSensor", "NroSensor", "CodLograd", "EndCep", "EndNro",
                                         "EndCompl", "EndDescr", "SentidoVia", "Ativo", "LocalInfr"}));
    EXPECT_EQ(Nomes<AfericaoED>(), (Textos{"NroIntAfericao", "Numero", "Marca", "DataVerificacao", "DataVencimento",
                                           "Ativo", "NroIntImgCertif", "TipoAfer", "PortDimel"}));
    EXPECT_EQ(Nomes<LimiteDifED>(), (Textos{"NroInt", "NroIntEquip", "Dia", "HoraInicio", "HoraFim", "VelocPerm",
                                            "VelocMin", "Ativo", "TipoLimite"}));
    EXPECT_EQ(Nomes<DiaEspecificoED>(),
              (Textos{"NroInt", "NroIntEquip", "Data", "HoraInicio", "HoraFim", "VelocPerm", "VelocMin", "Ativo"}));
    EXPECT_EQ(Nomes<ConsultaAfericaoED>(), (Textos{"DtInfracao", "NroIntEquip", "TipoConsulta"}));
    EXPECT_EQ(Nomes<RelatorioAfericaoED>(), (Textos{"CodOat", "Serie", "TxtIdent", "Documento"}));
}

TEST(Registro, Fresh_OfARecord_HasNoMemberWritten)
{
    EXPECT_EQ(EquiptoED().Texto(), "EquiptoED{}");
    EXPECT_EQ(EquiptoED().NomeTipo(), "EquiptoED");
    EXPECT_TRUE(EquiptoED().Sensores.Valor().Nada());
    EXPECT_EQ(EquiptoED().Ativo.Valor(), 0);
}

TEST(Registro, Texto_OfWrittenMembers_ShowsThemInTheRecordsOrder)
{
    AfericaoED afericao;
    afericao.PortDimel = "123/15";
    afericao.DataVerificacao = DataDe(20, 11, 2026);
    afericao.NroIntAfericao = 7;
    afericao.Numero = "";
    EXPECT_EQ(afericao.Texto(),
              "AfericaoED{NroIntAfericao=7, Numero=\"\", DataVerificacao=20/11/2026, PortDimel=\"123/15\"}");
}

TEST(Registro, Texto_WithLists_ShowsTheRecordsInside)
{
    auto sensor = Novo<SensorED>();
    sensor->NroSensor = 1;
    EquiptoED equipto;
    equipto.Sensores = Novo<Colecao<Ref<SensorED>>>();
    EXPECT_EQ(equipto.Texto(), "EquiptoED{Sensores=[]}");
    equipto.Sensores.Valor()->Add(sensor);
    equipto.Sensores.Valor()->Add(Novo<SensorED>());
    EXPECT_EQ(equipto.Texto(), "EquiptoED{Sensores=[SensorED{NroSensor=1}, SensorED{}]}");
    equipto.Sensores = nullptr;
    EXPECT_EQ(equipto.Texto(), "EquiptoED{Sensores=Nothing}");
}

TEST(Registro, Copia_OfATree_SharesNothingWithIt)
{
    auto afericao = Novo<AfericaoED>();
    afericao->Numero = "1";
    auto sensor = Novo<SensorED>();
    sensor->Afericoes = Novo<Colecao<Ref<AfericaoED>>>();
    sensor->Afericoes.Valor()->Add(afericao);
    auto equipto = Novo<EquiptoED>();
    equipto->Codigo = "R-01";
    equipto->Sensores = Novo<Colecao<Ref<SensorED>>>();
    equipto->Sensores.Valor()->Add(sensor);

    auto copia = ComoTipo<EquiptoED>(equipto->Copia());
    EXPECT_EQ(copia->Texto(), equipto->Texto());
    EXPECT_FALSE(copia->SubCodigo.Escrito());
    afericao->Numero = "2";
    equipto->Sensores.Valor()->Add(Novo<SensorED>());
    EXPECT_EQ(copia->Texto(), "EquiptoED{Codigo=\"R-01\", Sensores=[SensorED{Afericoes=[AfericaoED{Numero=\"1\"}]}]}");
}

TEST(Registro, VersaoLida_IsCopiedAndIsNoMember)
{
    EquiptoED equipto;
    equipto.VersaoLida = 7;
    EXPECT_EQ(equipto.Copia()->VersaoLida, 7);
    EXPECT_EQ(equipto.Texto(), "EquiptoED{}");
}

TEST(Registro, Copia_OfAWrittenNothing_StaysWritten)
{
    EquiptoED equipto;
    equipto.Sensores = nullptr;
    auto copia = ComoTipo<EquiptoED>(equipto.Copia());
    EXPECT_TRUE(copia->Sensores.Escrito());
    EXPECT_TRUE(copia->Sensores.Valor().Nada());
}

TEST(Registro, CadaMembro_OfAChangeableRecord_CanWrite)
{
    SensorED sensor;
    sensor.CadaMembro([]<class T>(std::string_view nome, Campo<T> &campo) {
        if constexpr (std::is_same_v<T, std::string>) {
            campo = std::string(nome);
        }
    });
    EXPECT_EQ(sensor.LocalInfr.Valor(), "LocalInfr");
    EXPECT_FALSE(sensor.Ativo.Escrito());
}

} // namespace
