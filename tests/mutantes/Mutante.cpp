// What is linked into a test program whose sources hold their mutants. The environment says which one is on
// (MUTANTE), or where to write which of them each test comes to (MUTANTES_REGISTRO).

#include "tests/mutantes/Mutante.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <bitset>
#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>

namespace {

unsigned long DoAmbiente(const char *nome)
{
    const char *const valor = std::getenv(nome);
    return valor == nullptr ? 0 : std::strtoul(valor, nullptr, 10);
}

void Limita(decltype(RLIMIT_CPU) recurso, rlim_t limite)
{
    const rlimit valor{limite, limite};
    setrlimit(recurso, &valor);
}

// A mutant may run for ever, or ask for all the memory there is.
unsigned long Escolhido()
{
    const unsigned long numero = DoAmbiente("MUTANTE");
    if (numero != 0) {
        Limita(RLIMIT_CPU, DoAmbiente("MUTANTE_SEGUNDOS"));
        Limita(RLIMIT_AS, rlim_t{1} << 31);
        Limita(RLIMIT_CORE, 0);
    }
    return numero;
}

// The mutants that each test came to, a line a test: its name, its milliseconds, their numbers. What comes to a mutant
// asks for no memory, since there are tests in which there is none.
class Alcance : public testing::EmptyTestEventListener {
  public:
    explicit Alcance(const char *arquivo) : m_Saida(arquivo) {}
    void Passou(unsigned numero) { m_Passou[numero] = true; }

    // What ran before and between the tests.
    void OnTestStart(const testing::TestInfo &) override { Escreve("*", 0); }
    void OnTestEnd(const testing::TestInfo &teste) override
    {
        Escreve(std::string(teste.test_suite_name()) + "." + teste.name(), teste.result()->elapsed_time());
    }

  private:
    void Escreve(const std::string &nome, testing::TimeInMillis tempo)
    {
        m_Saida << nome << '\t' << tempo << '\t';
        for (std::size_t numero = 0; numero < m_Passou.size(); ++numero) {
            if (m_Passou[numero]) {
                m_Saida << numero << ' ';
            }
        }
        m_Saida << std::endl;
        m_Passou.reset();
    }

    std::ofstream m_Saida;
    std::bitset<1 << 15> m_Passou;
};

// gtest owns it and ends it with the program.
Alcance *CriaAlcance()
{
    const char *const arquivo = std::getenv("MUTANTES_REGISTRO");
    if (arquivo == nullptr) {
        return nullptr;
    }
    auto alcance = std::make_unique<Alcance>(arquivo);
    testing::UnitTest::GetInstance()->listeners().Append(alcance.get());
    return alcance.release();
}

Alcance *OAlcance()
{
    static Alcance *const alcance = CriaAlcance();
    return alcance;
}

const Alcance *const g_DesdeOComeco = OAlcance();

} // namespace

bool Mutante(unsigned numero) noexcept
{
    static const unsigned long escolhido = Escolhido();
    if (Alcance *const alcance = OAlcance()) {
        alcance->Passou(numero);
    }
    return numero == escolhido;
}
