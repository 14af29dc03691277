#include "tests/host_contract/FormContrato.h"

namespace {

std::int64_t g_UltimoHwnd = 0;

} // namespace

FormContrato::FormContrato() : m_hwnd(++g_UltimoHwnd) {}

void FormContrato::Carrega()
{
    Plataforma()->Carrega(Este());
}

void FormContrato::Mostra(const Ref<IObjInterface> &objInterface, bool modal, Ref<Objeto> &formClick)
{
    Carrega();
    Ref<IForm> dono;
    objInterface->MostraJanela(Este(), modal ? std::int16_t{-1} : std::int16_t{0}, dono, 0, formClick);
}

void FormContrato::DefineEnabled(bool valor)
{
    m_Enabled = valor;
    m_Mudou.dispara();
}

void FormContrato::DefineVisible(bool valor)
{
    m_Visible = valor;
    m_Mudou.dispara();
}

void FormContrato::DefineCaption(const std::string &valor)
{
    m_Caption = valor;
    m_Mudou.dispara();
}

void FormContrato::Unload(bool &cancela)
{
    ++Unloads;
    if (NoUnload) {
        NoUnload();
    }
    cancela = CancelaUnload;
    if (!cancela) {
        m_Visible = false;
        m_frmParent = nullptr;
    }
}
