#pragma once

#include "tests/windows/travessia/ForaDaConta.h"
#include "windows/automation/Com.h"

#include <functional>
#include <string>

namespace nativo {

// The boundary around the scripted host. Each of its objects reaches the component behind a fence, which hands on what
// it is asked and counts it, so that a test program can tell what crossed and what did not.
namespace Cerca {

// The object behind its fence: one for each object, as long as somebody holds it. Objects of the component and of other
// makers are given back as they are.
Com<IDispatch> Em(const Com<IDispatch> &objeto);

// Whether the component is calling across the boundary now.
bool Atravessando() noexcept;

// How often each member was called so far, by "class.member".
const Contagem &Chamadas();

// Instead of the next call of a member of that name, what the object answers. Empty: nothing any more.
using Resposta = std::function<HRESULT(VARIANT *, EXCEPINFO *)>;
void Responde(const std::string &membro, Resposta resposta);

} // namespace Cerca
} // namespace nativo
