#include "equipment/clsEquipto.h"

#include "host/Correspondencia.h"
#include "shell/ChamadaRN.h"

namespace {

// In the order in which they are written, before and behind VelocPermitida, which has a rule of its own. What only the
// service writes is in neither.
constexpr std::tuple Campos{Par{&EquiptoED::NroIntEquip, &clsEquipto::NroIntEquip, Regra::SeHouver},
                            Par{&EquiptoED::ClienteInc, &clsEquipto::ClienteInc},
                            Par{&EquiptoED::SetorInc, &clsEquipto::SetorInc, Regra::SeHouver},
                            Par{&EquiptoED::Codigo, &clsEquipto::Codigo},
                            Par{&EquiptoED::SubCodigo, &clsEquipto::SubCodigo},
                            Par{&EquiptoED::Descricao, &clsEquipto::Descricao},
                            Par{&EquiptoED::TipoAgente, &clsEquipto::TipoAgente},
                            Par{&EquiptoED::TipoEquip, &clsEquipto::TipoEquip},
                            Par{&EquiptoED::Modelo, &clsEquipto::Modelo},
                            Par{&EquiptoED::CodMunic, &clsEquipto::CodMunic},
                            Par{&EquiptoED::ArquivoLayout, &clsEquipto::ArquivoLayout},
                            Par{&EquiptoED::TipoVia, &clsEquipto::TipoVia},
                            Par{&EquiptoED::Ativo, &clsEquipto::Ativo, Regra::SimSalvoNao}};
constexpr std::tuple UltimosCampos{Par{&EquiptoED::TemImagemEntrelacada, &clsEquipto::TemImagemEntrelacada},
                                   Par{&EquiptoED::TemLimiteDif, &clsEquipto::TemLimiteDif},
                                   Par{&EquiptoED::TemPerfilMag, &clsEquipto::TemPerfilMag},
                                   Par{&EquiptoED::NroIntRejLimDif, &clsEquipto::NroIntRejLimDif, Regra::SeHouver},
                                   Par{&EquiptoED::txtObsNotif, &clsEquipto::txtObsNotif, Regra::SeHouver}};

} // namespace

clsEquipto::~clsEquipto()
{
    IgnoraErro([&] { Finaliza(); });
}

void clsEquipto::Finaliza()
{
    if (m_ListaSensores) {
        m_ListaSensores->Finaliza();
        m_ListaSensores = nullptr;
    }
}

Ref<clsListaSensores> clsEquipto::ListaSensores()
{
    if (m_ListaSensores.Nada()) {
        m_ListaSensores = Novo<clsListaSensores>();
        m_ListaSensores->DefineEquipto(Eu(*this));
    }
    return m_ListaSensores;
}

Ref<EquiptoED> clsEquipto::ToEquiptoED()
try {
    auto ED = Novo<EquiptoED>();
    EquiptoED &ed = *ED;
    ed.VersaoLida = m_VersaoLida;
    EscreveCampos<Campos>(*this, ed);
    if (TipoAgente != 2) {
        ed.VelocPermitida = VelocPermitida;
    }
    EscreveCampos<UltimosCampos>(*this, ed);

    if (NroIntEquip > 0) {
        const Ref<clsListaSensores> lista = ListaSensores();
        const std::int32_t quantos = lista->Count();
        for (std::int32_t posicao = 1; posicao <= quantos; ++posicao) {
            const Ref<clsSensor> sensor = lista->Item(posicao);
            if (sensor->Alterado) {
                if (ed.Sensores.Valor().Nada()) {
                    ed.Sensores = Novo<Colecao<Ref<SensorED>>>();
                }
                ed.Sensores.Valor()->Add(sensor->ToSensorED());
            }
        }
    }
    return ED;
} catch (...) {
    PassaFalha(" < clsEquipto.ToEquiptoED");
}

bool clsEquipto::Salva()
try {
    Ref<EquiptoED> enviado;
    const auto pedido = [&] { return enviado = ToEquiptoED(); };
    if (NroIntEquip != 0) {
        const bool alterado = ComandaRN("EquiptoRN", "altera", pedido);
        if (alterado) {
            m_VersaoLida = enviado->VersaoLida;
        }
        return alterado;
    }
    const auto incluido = ConsultaRN<EquiptoED>("EquiptoRN", "inclui", pedido);
    if (incluido) {
        CarregaED(*incluido);
    }
    return incluido.has_value();
} catch (...) {
    PassaFalha(" < clsEquipto.Salva");
}

void clsEquipto::CarregaED(const Ref<EquiptoED> &ed)
try {
    m_VersaoLida = ed->VersaoLida;
    LeCampos<Campos>(*this, *ed);
    LeCampos<UltimosCampos>(*this, *ed);
    VelocPermitida = ed->VelocPermitida;
    m_ClienteTrans = ed->ClienteTrans;
    m_OperadorTrans = CStr(ed->OperadorTrans);
    m_DataTrans = goMensagem()->FormataData(ed->DataTrans, 0);
    m_HoraTrans = goMensagem()->FormataHora(ed->HoraTrans, 0);
    Alterado = false;

    const Ref<clsListaSensores> lista = ListaSensores();
    lista->Clear();
    if (const ListaDe<SensorED> &sensores = ed->Sensores) {
        const std::int32_t quantos = sensores->Count();
        for (std::int32_t posicao = 1; posicao <= quantos; ++posicao) {
            lista->AddSensorED(sensores->Item(posicao));
        }
    }
} catch (...) {
    PassaFalha(" < clsEquipto.CarregaED");
}

bool clsEquipto::ReCarrega()
try {
    return Carrega(NroIntEquip);
} catch (...) {
    PassaFalha(" < clsEquipto.ReCarrega");
}

bool clsEquipto::Carrega(std::int32_t nroIntEquip)
try {
    const auto achado = ConsultaRN<EquiptoED>("EquiptoRN", "consulta",
                                              [&] { return SoComNumero(&EquiptoED::NroIntEquip, nroIntEquip); });
    if (achado) {
        CarregaED(*achado);
    }
    return achado.has_value();
} catch (...) {
    PassaFalha(" < clsEquipto.Carrega");
}
