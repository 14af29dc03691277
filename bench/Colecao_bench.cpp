#include "host/Colecao.h"

#include "bench/Medida.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

// The platform's collection against a container and a hash table of the standard library, with as many items as there
// are keys for in a list of the module.

namespace {

constexpr std::size_t Trabalho = 3'276; // 32,760 at the large size

std::vector<std::string> Chaves(std::size_t quantas)
{
    std::vector<std::string> chaves;
    for (std::size_t i = 1; i <= quantas; ++i) {
        chaves.push_back("A" + std::to_string(i));
    }
    return chaves;
}

using Lista = Colecao<std::int64_t>;

// What stands for the collection.
struct ListaPura {
    std::deque<std::pair<std::string, std::int64_t>> Itens;
    std::unordered_map<std::string, std::int64_t> PorChave;

    void Add(std::int64_t item, const std::string &chave)
    {
        Itens.emplace_back(chave, item);
        PorChave.emplace(chave, item);
    }
    std::int64_t Item(const std::string &chave) const { return PorChave.at(chave); }
    void RemovePrimeiro()
    {
        PorChave.erase(Itens.front().first);
        Itens.pop_front();
    }
};

template <class L> std::shared_ptr<L> Cheia(const std::vector<std::string> &chaves)
{
    auto lista = std::make_shared<L>();
    for (const std::string &chave : chaves) {
        lista->Add(1, chave);
    }
    Usa(lista->Item(chaves.front())); // from a look-up on the collection keeps its table
    return lista;
}

template <class L> std::function<void()> Enche(std::size_t quantos)
{
    return [chaves = Chaves(quantos), lista = std::make_shared<L>()] {
        for (const std::string &chave : chaves) {
            lista->Add(1, chave);
        }
    };
}

template <class L> std::function<void()> LePorChave(std::size_t quantos)
{
    const auto chaves = Chaves(quantos);
    return [chaves, lista = Cheia<L>(chaves)] {
        for (const std::string &chave : chaves) {
            Usa(lista->Item(chave));
        }
    };
}

std::function<void()> Esvazia(std::size_t quantos)
{
    return [lista = Cheia<Lista>(Chaves(quantos))] {
        while (lista->Count() > 0) {
            lista->Remove(1);
        }
    };
}

std::function<void()> EsvaziaPura(std::size_t quantos)
{
    return [lista = Cheia<ListaPura>(Chaves(quantos))] {
        while (!lista->Itens.empty()) {
            lista->RemovePrimeiro();
        }
    };
}

} // namespace

int main()
{
    Tabela tabela;
    tabela.MedeTempo({"Colecao, filling / deque and hash table", Trabalho, Enche<Lista>, Enche<ListaPura>, 1, 1.5});
    tabela.MedeTempo(
        {"Colecao, reading by key / hash table", Trabalho, LePorChave<Lista>, LePorChave<ListaPura>, 2, 1.5});
    tabela.MedeTempo({"Colecao, taking the first / deque and hash table", Trabalho, Esvazia, EsvaziaPura, 1, 1.5});
    return tabela.Saida();
}
