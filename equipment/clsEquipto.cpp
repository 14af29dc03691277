#include "equipment/clsEquipto.h"

#include "host/Indicador.h"
#include "shell/ChamadaRN.h"

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
    if (NroIntEquip > 0) {
        ed.NroIntEquip = NroIntEquip;
    }
    ed.ClienteInc = ClienteInc;
    if (!SetorInc.empty()) {
        ed.SetorInc = SetorInc;
    }
    ed.Codigo = Codigo;
    ed.SubCodigo = SubCodigo;
    ed.Descricao = Descricao;
    ed.TipoAgente = TipoAgente;
    ed.TipoEquip = TipoEquip;
    ed.Modelo = Modelo;
    ed.CodMunic = CodMunic;
    ed.ArquivoLayout = ArquivoLayout;
    ed.TipoVia = TipoVia;
    ed.Ativo = Ativo ? Indicador::Sim : Indicador::Nao;
    if (TipoAgente != 2) {
        ed.VelocPermitida = VelocPermitida;
    }
    ed.TemImagemEntrelacada = TemImagemEntrelacada ? Indicador::Sim : Indicador::Nao;
    ed.TemLimiteDif = TemLimiteDif ? Indicador::Sim : Indicador::Nao;
    ed.TemPerfilMag = TemPerfilMag ? Indicador::Sim : Indicador::Nao;
    if (NroIntRejLimDif > 0) {
        ed.NroIntRejLimDif = NroIntRejLimDif;
    }
    if (!txtObsNotif.empty()) {
        ed.txtObsNotif = txtObsNotif;
    }

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
    const auto pedido = [&] { return ToEquiptoED(); };
    if (NroIntEquip != 0) {
        return ComandaRN("EquiptoRN", "altera", pedido);
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
    NroIntEquip = ed->NroIntEquip;
    ClienteInc = ed->ClienteInc;
    SetorInc = ed->SetorInc;
    Codigo = ed->Codigo;
    SubCodigo = ed->SubCodigo;
    Descricao = ed->Descricao;
    Modelo = ed->Modelo;
    CodMunic = ed->CodMunic;
    ArquivoLayout = ed->ArquivoLayout;
    TemImagemEntrelacada = ed->TemImagemEntrelacada == Indicador::Sim;
    TemLimiteDif = ed->TemLimiteDif == Indicador::Sim;
    TemPerfilMag = ed->TemPerfilMag == Indicador::Sim;
    NroIntRejLimDif = ed->NroIntRejLimDif;
    TipoAgente = ed->TipoAgente;
    TipoEquip = ed->TipoEquip;
    TipoVia = ed->TipoVia;
    VelocPermitida = ed->VelocPermitida;
    txtObsNotif = ed->txtObsNotif;
    Ativo = ed->Ativo != Indicador::Nao;
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
