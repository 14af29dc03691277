#include "tests/controls/FormFalso.h"

void FormFalso::DefineEnabled(bool valor)
{
    m_Enabled = valor;
    m_EnabledEscritos.push_back(valor);
    m_Mudou.dispara();
}
