#pragma once

#include "windows/screen/Renderizador.h"

#include <memory>

namespace nativo {

// The renderer of a control by its kind, which makes its windows in the form's; null for one that has no picture.
std::unique_ptr<Renderizador> FazRenderizador(const Ref<IControle> &controle, const Peca &peca, JanelaForm &janela);

} // namespace nativo
