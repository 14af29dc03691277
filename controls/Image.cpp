#include "controls/Image.h"

Image::Image(const Ref<IForm> &form, const AjustesControle &ajustes) : Controle(form, ajustes, EspecieControle::Image)
{
}
