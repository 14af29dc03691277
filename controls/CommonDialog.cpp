#include "controls/CommonDialog.h"

void CommonDialog::ShowOpen()
{
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
