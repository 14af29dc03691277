#include "tela/EdicaoDeTexto.h"

#include "host/Texto.h"

#include <algorithm>
#include <vector>

namespace {

std::vector<std::string> Caracteres(std::string_view texto)
{
    std::vector<std::string> caracteres;
    while (!texto.empty()) {
        caracteres.push_back(Left(texto, 1));
        texto.remove_prefix(caracteres.back().size());
    }
    return caracteres;
}

} // namespace

EdicaoDeTexto AchaEdicao(std::string_view antes, std::string_view depois, std::size_t cursor)
{
    const std::vector<std::string> velho = Caracteres(antes);
    const std::vector<std::string> novo = Caracteres(depois);
    const std::size_t menor = std::min(velho.size(), novo.size());
    // What stands behind the cursor was there before. Only what came about otherwise has to be found by its end.
    std::size_t fim = novo.size() - std::min(cursor, novo.size());
    if (fim > velho.size() || !std::equal(novo.end() - static_cast<std::ptrdiff_t>(fim), novo.end(),
                                          velho.end() - static_cast<std::ptrdiff_t>(fim))) {
        fim = 0;
        while (fim < menor && velho[velho.size() - 1 - fim] == novo[novo.size() - 1 - fim]) {
            ++fim;
        }
    }
    std::size_t inicio = 0;
    while (inicio < menor - fim && velho[inicio] == novo[inicio]) {
        ++inicio;
    }
    EdicaoDeTexto edicao{inicio, velho.size() - inicio - fim, {}};
    for (std::size_t i = inicio; i < novo.size() - fim; ++i) {
        edicao.Inserido += novo[i];
    }
    return edicao;
}
