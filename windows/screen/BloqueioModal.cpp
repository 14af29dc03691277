#include "windows/screen/BloqueioModal.h"

#include "windows/screen/Enumera.h"

#include <algorithm>

namespace nativo {

BloqueioModal::BloqueioModal(const std::vector<Ref<JanelaForm>> &forms, HWND dono, HWND poupada)
    : m_Ativa(GetActiveWindow())
{
    std::vector<HWND> janelas = JanelasDesteFio();
    if (dono != nullptr) {
        janelas.push_back(GetAncestor(dono, GA_ROOT));
    }
    for (const Ref<JanelaForm> &form : forms) {
        std::erase(janelas, form->Manipulador());
        if (form->Manipulador() != poupada && !form->Encerrada()) {
            m_Forms.push_back(form);
        }
    }
    std::erase(janelas, poupada);
    for (const Ref<JanelaForm> &form : m_Forms) {
        form->Bloqueia();
    }
    for (const HWND janela : janelas) {
        Bloqueia(janela);
    }
}

void BloqueioModal::Bloqueia(HWND janela)
{
    if (IsWindowVisible(janela) && IsWindowEnabled(janela)) {
        EnableWindow(janela, FALSE);
        m_Alheias.push_back(janela);
    }
}

BloqueioModal::~BloqueioModal()
{
    for (const HWND janela : m_Alheias) {
        if (IsWindow(janela)) {
            EnableWindow(janela, TRUE);
        }
    }
    for (const Ref<JanelaForm> &form : m_Forms) {
        form->Desbloqueia();
    }
    if (m_Ativa != nullptr && IsWindowVisible(m_Ativa) && IsWindowEnabled(m_Ativa)) {
        SetActiveWindow(m_Ativa);
    }
}

} // namespace nativo
