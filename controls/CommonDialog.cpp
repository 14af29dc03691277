#include "controls/CommonDialog.h"

#include <utility>

void CommonDialog::ShowOpen()
{
    if (!m_Trazido.empty()) {
        m_FileName = std::exchange(m_Trazido, {});
        return;
    }
    Ref<IControle> vivo = Vivo();
    m_Mostrando = true;
    try {
        m_AoMostrar.dispara();
    } catch (...) {
        m_Mostrando = false;
        throw;
    }
    m_Mostrando = false;
}

bool CommonDialog::Escolhe(const std::string &caminho)
{
    if (!m_Mostrando || caminho.empty()) {
        return false;
    }
    m_FileName = caminho;
    return true;
}
