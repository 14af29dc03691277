#pragma once

#include "tests/support/Jornada.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

// The sweep of a journey. First the journey runs undisturbed, and its calls are held against the tree that the test has
// written (VarreduraCaminho). Then it runs once for each call of the host, logged or not, with that call failing, and
// once for each remote call with that call refused, each time on a new host. After each: exactly one error box with the
// number, the context, the full path and the title, or the fault itself with its full path at the caller, or neither
// and a successful way, as the tree says; the pointer as it must be; the stored records as they were when the call
// began; and the same journey succeeds on the next try, on the same host. At its end each host tells its problems
// (objects that still live, unexpected boxes and windows), and no memory is held.
class Varredura {
  public:
    using Fabrica = std::function<std::unique_ptr<Jornada>(HostRoteirizado &)>;
    // What a call fails with.
    struct Defeito {
        std::int32_t Numero;
        std::string Descricao;
    };
    static inline Defeito Falhando{NumeroFalha::ErroInterno, "Falha de teste"};

    Varredura(Fabrica fabrica, const std::string &arvore);

    // The refusal of the n-th remote call ends in fault 91: the path of the fault, and the context of its box, empty
    // when it reaches the caller. Every other refusal is told by the proxy alone.
    void RecusaEmFalha(std::int32_t n, const std::string &fonte, const std::string &contexto);

    // After each failure the person also goes on, instead of giving up: no further failure may follow from the first.
    void Segue() { m_Segue = true; }

    // Prints the line "faults survived: N", by which the sweeps of all tests are added up, and returns N, failures and
    // refusals together.
    std::int32_t Roda();
    std::int32_t Falhas() const noexcept { return m_Falhas; }
    std::int32_t Recusas() const noexcept { return m_Recusas; }

  private:
    struct Base;
    struct Ensaio;
    struct Esperado;
    struct Caso;

    bool RodaBase(Base &base) const;
    void RodaFalha(const Base &base, std::size_t passo, bool segue);
    void RodaRecusa(const Base &base, std::size_t passo, std::int32_t execucao);
    void RodaNegativa(const Base &base, std::size_t passo, const std::string &operacao);
    void RodaCaso(const Caso &caso) const;
    void Ensaia(const Caso &caso) const;
    static void Confere(Ensaio &ensaio, const Esperado &esperado);
    static void TentaDeNovo(Ensaio &ensaio);

    Fabrica m_Fabrica;
    std::string m_Arvore;
    std::map<std::int32_t, std::pair<std::string, std::string>> m_RecusasEmFalha;
    bool m_Segue = false;
    std::int32_t m_Falhas = 0;
    std::int32_t m_Recusas = 0;
};

// The sweep of a journey of a class that is made from the host alone.
template <class T> Varredura VarreduraDe(const std::string &arvore)
{
    return Varredura([](HostRoteirizado &host) { return std::make_unique<T>(host); }, arvore);
}
