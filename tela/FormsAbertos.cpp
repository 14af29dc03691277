#include "tela/FormsAbertos.h"

#include <algorithm>

Ref<IForm> FormsAbertos::Form(std::int32_t posicao) const
{
    if (posicao < 0 || posicao >= Quantos()) {
        throw Falha(NumeroFalha::SubscritoForaDoIntervalo);
    }
    return m_Forms[static_cast<std::size_t>(posicao)];
}

bool FormsAbertos::Tem(const Ref<IForm> &form) const
{
    return std::ranges::find(m_Forms, form) != m_Forms.end();
}

void FormsAbertos::Carrega(const Ref<IForm> &form)
{
    if (!Tem(form)) {
        m_Forms.push_back(form);
    }
}

void FormsAbertos::Descarrega(const Ref<IForm> &form)
{
    const Ref<IForm> viva = form; // the argument may be one of those that the unload drops
    if (!Tem(viva) || !m_Descarregando.insert(viva.Ponteiro()).second) {
        return;
    }
    bool cancela = false;
    try {
        viva->Unload(cancela);
    } catch (...) {
        m_Descarregando.erase(viva.Ponteiro());
        throw;
    }
    m_Descarregando.erase(viva.Ponteiro());
    if (!cancela) {
        m_Forms.erase(std::ranges::find(m_Forms, viva));
        m_Janelas->FechaForm(viva);
    }
}

bool FormsAbertos::DefineTexto(std::int64_t hwnd, const std::string &texto) const
{
    const auto achado = std::ranges::find_if(m_Forms, [&](const Ref<IForm> &form) { return form->hwnd() == hwnd; });
    if (achado == m_Forms.end()) {
        return false;
    }
    m_Janelas->DefineTextoJanela(*achado, texto);
    return true;
}
