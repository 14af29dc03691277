#include "tests/support/VarreduraRegistro.h"

#include "host/AfericaoED.h"
#include "host/DiaEspecificoED.h"
#include "host/LimiteDifED.h"
#include "host/SensorED.h"
#include "shell/ModGeral.h"
#include "tests/support/RegistroDoTexto.h"

std::string JornadaComRegistro::Estado() const
{
    std::string estado;
    const auto junta = [&](const auto &registros) {
        for (const auto &[numero, registro] : registros) {
            estado += registro->Texto() + "\n";
        }
    };
    junta(m_Registro.Equipamentos());
    junta(m_Registro.Limites());
    junta(m_Registro.Dias());
    return estado;
}

void JornadaComRegistro::LogaComServicos()
{
    LogaGeral();
    goGateway();
    goDadosVor();
    m_Geral->MDB();
}

Ref<EquiptoED> EquiptoCalibrado(const std::string &tipo, std::uint8_t medidor, const std::string &codigo)
{
    return DoTexto<EquiptoED>(
        R"(ClienteInc="Autoridade das Estradas de Rodagem", SetorInc="Norte", Codigo=")" + codigo +
        R"(", Descricao="Radar da entrada", CodMunic=120, TipoVia="R", TipoEquip=")" + tipo +
        R"(", VelocPermitida=60, ArquivoLayout="NENHUM", Modelo="RF-3", TipoAgente=)" + std::to_string(medidor) +
        R"(, Sensores=[SensorED{Afericoes=[AfericaoED{Numero="123", Marca="456", DataVerificacao=01/01/2026, )"
        R"(DataVencimento=31/12/2026, NroIntImgCertif=9, TipoAfer=1}], NroSensor=1, LocalInfr="Rua A"}])");
}
