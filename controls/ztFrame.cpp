#include "controls/ztFrame.h"

ztFrame::ztFrame(const Ref<IForm> &form, const AjustesControle &ajustes)
    : Controle(form, ajustes, EspecieControle::ztFrame)
{
}
