#include "controls/Label.h"

Label::Label(const Ref<IForm> &form, const AjustesControle &ajustes) : Controle(form, ajustes, EspecieControle::Label)
{
}
