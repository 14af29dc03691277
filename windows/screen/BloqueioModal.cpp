#include "windows/screen/BloqueioModal.h"

#include "windows/screen/Enumera.h"

#include <algorithm>
#include <utility>

namespace nativo {

namespace {

// How many block a window that is no form's; kept by the window itself, as long as there are any.
constexpr wchar_t Bloqueios[] = L"ZTAVOREQUIP.Bloqueios";

INT_PTR BloqueiosDe(HWND janela)
{
    return reinterpret_cast<INT_PTR>(GetPropW(janela, Bloqueios));
}

} // namespace

BloqueioModal::BloqueioModal(const std::vector<Ref<JanelaForm>> &forms, HWND dono, HWND poupada)
    : m_Ativa(GetActiveWindow())
{
    std::vector<HWND> janelas = JanelasDesteFio();
    const HWND raiz = dono != nullptr ? GetAncestor(dono, GA_ROOT) : nullptr;
    if (raiz != nullptr && std::ranges::find(janelas, raiz) == janelas.end()) {
        janelas.push_back(raiz);
    }
    Bloqueia(forms, std::move(janelas), poupada);
}

BloqueioModal::BloqueioModal(const std::vector<Ref<JanelaForm>> &forms, HWND dono) : m_Ativa(GetActiveWindow())
{
    Bloqueia(forms, JanelasDesteFio(), dono);
    const auto form = std::ranges::find(forms, dono, &JanelaForm::Manipulador);
    if (dono != nullptr && form != forms.end()) {
        (*form)->FicaAtrasDeCaixa();
        m_Forms.push_back(*form);
    }
}

void BloqueioModal::Bloqueia(const std::vector<Ref<JanelaForm>> &forms, std::vector<HWND> janelas, HWND poupada)
{
    std::erase(janelas, poupada);
    for (const Ref<JanelaForm> &form : forms) {
        std::erase(janelas, form->Manipulador());
        if (form->Manipulador() != poupada && !form->Encerrada()) {
            m_Forms.push_back(form);
        }
    }
    for (const Ref<JanelaForm> &form : m_Forms) {
        form->Bloqueia();
    }
    for (const HWND janela : janelas) {
        Bloqueia(janela);
    }
}

void BloqueioModal::Bloqueia(HWND janela)
{
    const INT_PTR antes = BloqueiosDe(janela);
    if (antes == 0 && (!IsWindowVisible(janela) || !IsWindowEnabled(janela))) {
        return;
    }
    SetPropW(janela, Bloqueios, reinterpret_cast<HANDLE>(antes + 1));
    m_Alheias.push_back(janela);
    if (antes == 0) {
        EnableWindow(janela, FALSE);
    }
}

void BloqueioModal::Libera(HWND janela)
{
    const INT_PTR antes = BloqueiosDe(janela);
    if (antes > 1) {
        SetPropW(janela, Bloqueios, reinterpret_cast<HANDLE>(antes - 1));
    } else if (antes == 1) {
        RemovePropW(janela, Bloqueios);
        EnableWindow(janela, TRUE);
    }
}

BloqueioModal::~BloqueioModal()
{
    for (const HWND janela : m_Alheias) {
        Libera(janela);
    }
    for (const Ref<JanelaForm> &form : m_Forms) {
        form->Desbloqueia();
    }
    if (m_Ativa != nullptr && IsWindowVisible(m_Ativa) && IsWindowEnabled(m_Ativa)) {
        DaVez(m_Ativa);
    }
}

} // namespace nativo
