#pragma once

#include "host/Falha.h"
#include "windows/automation/Com.h"

#include <cstdint>

namespace nativo {

// Numbers that only automation raises.
namespace NumeroAutomacao {
inline constexpr std::int32_t ErroDeAutomacao = 440;
inline constexpr std::int32_t ArgumentoNaoOpcional = 449;
inline constexpr std::int32_t NumeroDeArgumentos = 450;
} // namespace NumeroAutomacao

// The number of a fault that a foreign object answered. The platform's own codes have the numbers that its languages
// give them; a code that has none is the number itself.
std::int32_t NumeroDe(HRESULT codigo) noexcept;
// The code by which a fault leaves the component. A negative number is its own code; a number that has no code, which
// none is that a fault of the platform or of a service has, leaves as an internal error.
HRESULT HResultDe(std::int32_t numero) noexcept;

// What a call of a foreign object has failed with. informacao: as the call has filled it in; freed here.
Falha FalhaDe(HRESULT codigo, EXCEPINFO &informacao);
// The same of a call through an interface's table.
Falha FalhaDaTabela(HRESULT codigo);
// Raises what the code tells; nothing for success.
void Exige(HRESULT codigo);

// The fault as the answer of a late-bound call. Texts for which there is no memory are left out.
void Preenche(const Falha &falha, EXCEPINFO &informacao) noexcept;
// The fault as the error object of the thread; its code.
HRESULT Publica(const Falha &falha, REFIID interface_) noexcept;

// The edge of a method that the foreign world calls through an interface's table: nothing leaves it but a code, and
// with it the error object.
template <class Acao> HRESULT NaBorda(REFIID interface_, Acao &&acao) noexcept
{
    try {
        acao();
        return S_OK;
    } catch (...) {
        return Publica(FalhaCorrente(), interface_);
    }
}

} // namespace nativo
