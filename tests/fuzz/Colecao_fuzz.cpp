#include "tests/fuzz/Alvo.h"

#include "host/Colecao.h"
#include "tests/fuzz/Octetos.h"
#include "tests/fuzz/Propriedade.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

// The collection against a plain vector of pairs.

namespace {

struct Par {
    int Item;
    std::optional<std::string> Chave; // in lower case
};

// The keys of the input, few enough to collide, and each one's lower case written down.
constexpr std::pair<const char *, const char *> Letras[] = {
    {"a", "a"}, {"A", "a"}, {"b", "b"}, {"B", "b"}, {"1", "1"}, {"9", "9"}, {"é", "é"}, {"É", "é"},
};

// As the records' lists make them: "K" and a number that mostly grows.
std::pair<std::string, std::string> Chave(Octetos &octetos)
{
    const int tipo = octetos.Ate(3);
    if (tipo == 0) {
        const std::string numero = std::to_string(octetos.Octeto());
        return {"K" + numero, "k" + numero};
    }
    std::pair<std::string, std::string> chave;
    for (int letras = octetos.Ate(3); letras > 0; --letras) {
        const auto &[escrita, dobrada] = Letras[octetos.Ate(7)];
        chave.first += escrita;
        chave.second += dobrada;
    }
    return chave;
}

class Comparacao {
  public:
    void Passo(Octetos &octetos)
    {
        switch (octetos.Ate(9)) {
        case 0:
            m_Real.Add(++m_Ultimo);
            m_Modelo.push_back({m_Ultimo, std::nullopt});
            break;
        case 1:
        case 2:
            Adiciona(Chave(octetos));
            break;
        case 3:
            Consulta(octetos.Ate(20) - 2);
            break;
        case 4:
            Consulta(Chave(octetos));
            break;
        case 5:
            Retira(octetos.Ate(20) - 2);
            break;
        case 6:
            Retira(Chave(octetos));
            break;
        case 7: // the key that comes after the last one's, by which lists are loaded
            ++m_Corrida;
            Adiciona({"Z" + std::to_string(100000 + m_Corrida), "z" + std::to_string(100000 + m_Corrida)});
            break;
        case 8: // the first ones, as a queue gives them
            for (int vezes = octetos.Ate(5); vezes > 0; --vezes) {
                Retira(1);
            }
            break;
        default:
            Procura(octetos.Ate(3));
            break;
        }
    }

    void Confere() const
    {
        Exige(m_Real.Count() == static_cast<std::int32_t>(m_Modelo.size()), "Count");
        for (std::int32_t posicao = 1; posicao <= m_Real.Count(); ++posicao) {
            const Par &par = m_Modelo[static_cast<std::size_t>(posicao - 1)];
            Exige(m_Real.Item(posicao) == par.Item, "Item by position");
            if (par.Chave) {
                Exige(m_Real.Item(*par.Chave) == par.Item, "Item by key", *par.Chave);
            }
        }
    }

  private:
    using ChaveDupla = std::pair<std::string, std::string>;

    auto NoModelo(const std::string &dobrada) const
    {
        return std::ranges::find_if(m_Modelo, [&](const Par &par) { return par.Chave == dobrada; });
    }

    bool Posicao(std::int32_t posicao) const
    {
        return posicao >= 1 && posicao <= static_cast<std::int32_t>(m_Modelo.size());
    }

    void Adiciona(const ChaveDupla &chave)
    {
        const bool existe = NoModelo(chave.second) != m_Modelo.end();
        const int item = ++m_Ultimo;
        ExigeFalha(existe ? 457 : 0, "fault of Add under a key", chave.first, [&] { m_Real.Add(item, chave.first); });
        if (!existe) {
            m_Modelo.push_back({item, chave.second});
        }
    }

    void Consulta(std::int32_t posicao) const
    {
        ExigeFalha(Posicao(posicao) ? 0 : 9, "fault of Item by position", std::to_string(posicao),
                   [&] { m_Real.Item(posicao); });
    }

    void Consulta(const ChaveDupla &chave) const
    {
        const auto par = NoModelo(chave.second);
        const std::int32_t falha = NumeroDaFalha([&] {
            const int item = m_Real.Item(chave.first);
            Exige(par != m_Modelo.end() && par->Item == item, "Item by key", chave.first);
        });
        Exige(falha == (par == m_Modelo.end() ? 5 : 0), "fault of Item by key", chave.first);
    }

    void Retira(std::int32_t posicao)
    {
        const bool existe = Posicao(posicao);
        ExigeFalha(existe ? 0 : 9, "fault of Remove by position", std::to_string(posicao),
                   [&] { m_Real.Remove(posicao); });
        if (existe) {
            m_Modelo.erase(m_Modelo.begin() + posicao - 1);
        }
    }

    void Retira(const ChaveDupla &chave)
    {
        const auto par = NoModelo(chave.second);
        ExigeFalha(par == m_Modelo.end() ? 5 : 0, "fault of Remove by key", chave.first,
                   [&] { m_Real.Remove(chave.first); });
        if (par != m_Modelo.end()) {
            m_Modelo.erase(par);
        }
    }

    void Procura(int resto) const
    {
        const auto condicao = [resto](int item) { return item % 4 == resto; };
        const int *achado = m_Real.Primeiro(condicao);
        const auto par = std::ranges::find_if(m_Modelo, [&](const Par &cada) { return condicao(cada.Item); });
        Exige((achado == nullptr) == (par == m_Modelo.end()), "Primeiro finds");
        Exige(achado == nullptr || *achado == par->Item, "Primeiro finds the first");
    }

    Colecao<int> m_Real;
    std::vector<Par> m_Modelo;
    int m_Ultimo = 0;
    int m_Corrida = 0;
};

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *dados, std::size_t tamanho)
{
    Octetos octetos(dados, tamanho);
    Comparacao comparacao;
    for (int passos = 0; passos < 400 && !octetos.Acabou(); ++passos) {
        comparacao.Passo(octetos);
        // Looking at every key makes the collection build its table, so that is not done after each step.
        if (octetos.Ate(7) == 0) {
            comparacao.Confere();
        }
    }
    comparacao.Confere();
    return 0;
}
