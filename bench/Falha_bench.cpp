#include "bench/Medida.h"
#include "host/Falha.h"

#include <stdexcept>

namespace {

void Fundo()
try {
    throw Falha(NumeroFalha::ObjetoNaoDefinido);
} catch (...) {
    PassaFalha(" < clsFundo.Carrega");
}

void Meio()
try {
    Fundo();
} catch (...) {
    PassaFalha(" < clsMeio.Atualiza");
}

void FundoSimples()
{
    throw std::runtime_error("Variável de objeto não definida");
}

void MeioSimples()
try {
    FundoSimples();
} catch (const std::runtime_error &) {
    throw;
}

template <void (*Procedimento)()> std::function<void()> Repete(std::size_t vezes)
{
    return [vezes] {
        for (std::size_t vez = 0; vez < vezes; ++vez) {
            IgnoraErro(Procedimento);
        }
    };
}

} // namespace

int main()
{
    Tabela tabela;
    tabela.MedeTempo(
        {"fault through two tails / exception rethrown once", 1000, Repete<Meio>, Repete<MeioSimples>, 4, 1.5});
    return tabela.Saida();
}
