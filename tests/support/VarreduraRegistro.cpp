#include "tests/support/VarreduraRegistro.h"

#include "host/AfericaoED.h"
#include "host/DiaEspecificoED.h"
#include "host/LimiteDifED.h"
#include "host/SensorED.h"
#include "shell/ModGeral.h"

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
    auto afericao = Novo<AfericaoED>();
    afericao->Numero = "123";
    afericao->Marca = "456";
    afericao->DataVerificacao = DataDe(1, 1, 2026);
    afericao->DataVencimento = DataDe(31, 12, 2026);
    afericao->NroIntImgCertif = 9.0;
    afericao->TipoAfer = 1;
    auto sensor = Novo<SensorED>();
    sensor->NroSensor = 1;
    sensor->LocalInfr = "Rua A";
    sensor->Afericoes = Novo<Colecao<Ref<AfericaoED>>>();
    sensor->Afericoes.Valor()->Add(afericao);
    auto equipto = Novo<EquiptoED>();
    equipto->ClienteInc = "DAER";
    equipto->SetorInc = "Norte";
    equipto->Codigo = codigo;
    equipto->Descricao = "Radar da entrada";
    equipto->CodMunic = 120;
    equipto->TipoAgente = medidor;
    equipto->TipoEquip = tipo;
    equipto->TipoVia = "R";
    equipto->VelocPermitida = 60;
    equipto->Modelo = "RF-3";
    equipto->ArquivoLayout = "NENHUM";
    equipto->Sensores = Novo<Colecao<Ref<SensorED>>>();
    equipto->Sensores.Valor()->Add(sensor);
    return equipto;
}
