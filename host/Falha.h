#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

// Numbers of the faults that the platform itself raises.
namespace NumeroFalha {
inline constexpr std::int32_t ArgumentoInvalido = 5;
inline constexpr std::int32_t Estouro = 6;
inline constexpr std::int32_t SemMemoria = 7;
inline constexpr std::int32_t SubscritoForaDoIntervalo = 9;
inline constexpr std::int32_t DivisaoPorZero = 11;
inline constexpr std::int32_t TipoIncompativel = 13;
inline constexpr std::int32_t ErroInterno = 51;
inline constexpr std::int32_t ArquivoNaoEncontrado = 53;
inline constexpr std::int32_t ArquivoJaExiste = 58;
inline constexpr std::int32_t DiscoCheio = 61;
inline constexpr std::int32_t PermissaoNegada = 70;
inline constexpr std::int32_t ErroDeAcesso = 75;
inline constexpr std::int32_t CaminhoNaoEncontrado = 76;
inline constexpr std::int32_t ObjetoNaoDefinido = 91;
inline constexpr std::int32_t NuloInvalido = 94;
inline constexpr std::int32_t ObjetoNecessario = 424;
inline constexpr std::int32_t ClasseInexistente = 429;
inline constexpr std::int32_t MembroInexistente = 438;
inline constexpr std::int32_t ChaveJaExiste = 457;
} // namespace NumeroFalha

// Name of this component. It is the source of every fault that the platform raises inside it.
inline constexpr std::string_view NomeComponente = "ZTAVOREQUIP";

// The one kind of failure that travels through the system: what the platform's error object holds.
class Falha : public std::exception {
  public:
    // The description is the platform's own for a number that it knows.
    explicit Falha(std::int32_t numero);
    Falha(std::int32_t numero, std::string fonte, std::string descricao);

    std::int32_t Numero;
    std::string Fonte;     // path travelled, deepest procedure first
    std::string Descricao; // UTF-8

    const char *what() const noexcept override { return Descricao.c_str(); }
};

// Portuguese description of a platform fault; a general one for a number without a text of its own.
std::string DescricaoFalha(std::int32_t numero);

// The exception being handled, as a fault. Whatever is not a Falha becomes the nearest platform fault.
// Only valid inside a catch block.
Falha FalhaCorrente() noexcept;

// Passing tail: raises the fault being handled again, with `cauda` added at the end of its source.
// Only valid inside a catch block.
[[noreturn]] void PassaFalha(std::string_view cauda);

// Runs one statement with errors ignored: a fault in it has no effect beyond ending it.
template <class Comando> void IgnoraErro(Comando &&comando) noexcept
{
    try {
        comando();
    } catch (...) { // the statement's failure is ignored by contract
    }
}
