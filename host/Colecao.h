#pragma once

#include "host/Falha.h"
#include "host/Texto.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// The platform's collection: items in the order of adding, found by position from 1 or by a key that ignores case.
// Appending, finding by key, finding by position and taking the first are O(1) amortised; taking from the middle moves
// the shorter side.
template <class T> class Colecao {
  public:
    Colecao() = default;
    Colecao(const Colecao &) = delete;
    Colecao &operator=(const Colecao &) = delete;

    std::int32_t Count() const noexcept { return static_cast<std::int32_t>(m_Itens.size()); }

    // Appends an item without a key.
    void Add(T item) { m_Itens.push_back({std::move(item), std::nullopt, ++m_UltimaOrdem}); }

    // Appends an item under a key. Fault 457 if the key is in use; nothing is added then.
    void Add(T item, std::string_view chave)
    {
        std::string dobrada = ChaveSemCaixa(chave);
        if (m_Tabela.empty() && SegueAsOutras(dobrada)) {
            m_Itens.push_back({std::move(item), std::move(dobrada), m_UltimaOrdem + 1});
            ++m_UltimaOrdem;
            return;
        }
        if ((m_Ocupadas + 1) * 2 > m_Tabela.size()) {
            Redistribui();
        }
        std::size_t casa = Casa(dobrada);
        if (m_Tabela[casa] > 0) {
            throw Falha(NumeroFalha::ChaveJaExiste);
        }
        m_Itens.push_back({std::move(item), std::move(dobrada), m_UltimaOrdem + 1});
        m_Ocupadas += m_Tabela[casa] == Livre ? 1 : 0;
        m_Tabela[casa] = ++m_UltimaOrdem;
    }

    // The item at a position from 1. Fault 9 outside 1 to Count.
    const T &Item(std::int32_t posicao) const { return m_Itens[Indice(posicao)].Valor; }

    // The item of a key. Fault 5 if there is none.
    const T &Item(std::string_view chave) const { return m_Itens[Indice(chave)].Valor; }

    // The first item, in the order of adding, that fulfils a condition; null when there is none. Never to be kept.
    template <class Condicao> const T *Primeiro(Condicao &&condicao) const
    {
        const auto achado =
            std::find_if(m_Itens.begin(), m_Itens.end(), [&](const No &no) { return condicao(no.Valor); });
        return achado == m_Itens.end() ? nullptr : &achado->Valor;
    }

    // Takes the item at a position out. Fault 9 outside 1 to Count.
    void Remove(std::int32_t posicao) { RemoveIndice(Indice(posicao)); }

    // Takes the item of a key out. Fault 5 if there is none.
    void Remove(std::string_view chave) { RemoveIndice(Indice(chave)); }

  private:
    struct No {
        T Valor;
        std::optional<std::string> Chave;
        std::int64_t Ordem = 0; // grows with every addition, so the items are sorted by it
    };

    static constexpr std::int64_t Livre = 0;
    static constexpr std::int64_t Apagada = -1;

    std::size_t Indice(std::int32_t posicao) const
    {
        if (posicao < 1 || posicao > Count()) {
            throw Falha(NumeroFalha::SubscritoForaDoIntervalo);
        }
        return static_cast<std::size_t>(posicao - 1);
    }

    std::size_t Indice(std::string_view chave) const
    {
        if (!m_Itens.empty()) {
            if (m_Tabela.empty()) {
                Redistribui();
            }
            std::int64_t ordem = m_Tabela[Casa(ChaveSemCaixa(chave))];
            if (ordem > 0) {
                return IndiceDaOrdem(ordem);
            }
        }
        throw Falha(NumeroFalha::ArgumentoInvalido);
    }

    // The key comes after all others by length and then by bytes, and so is new.
    bool SegueAsOutras(std::string_view dobrada) const
    {
        if (m_Itens.empty()) {
            return true;
        }
        const std::optional<std::string> &ultima = m_Itens.back().Chave;
        return ultima && (ultima->size() == dobrada.size() ? *ultima < dobrada : ultima->size() < dobrada.size());
    }

    // Items that were removed from the middle leave gaps in the order numbers; without gaps the guess is exact.
    std::size_t IndiceDaOrdem(std::int64_t ordem) const
    {
        auto palpite = static_cast<std::size_t>(ordem - m_Itens.front().Ordem);
        if (palpite < m_Itens.size() && m_Itens[palpite].Ordem == ordem) {
            return palpite;
        }
        auto achado = std::lower_bound(m_Itens.begin(), m_Itens.end(), ordem,
                                       [](const No &no, std::int64_t procurada) { return no.Ordem < procurada; });
        return static_cast<std::size_t>(achado - m_Itens.begin());
    }

    // Slot that holds the key, or the slot in which it would be put.
    std::size_t Casa(std::string_view dobrada) const
    {
        std::size_t mascara = m_Tabela.size() - 1;
        std::size_t casa = Espalha(dobrada) & mascara;
        std::optional<std::size_t> reaproveitavel;
        while (m_Tabela[casa] != Livre) {
            if (m_Tabela[casa] == Apagada) {
                reaproveitavel = reaproveitavel.value_or(casa);
            } else if (m_Itens[IndiceDaOrdem(m_Tabela[casa])].Chave == dobrada) {
                return casa;
            }
            casa = (casa + 1) & mascara;
        }
        return reaproveitavel.value_or(casa);
    }

    static std::size_t Espalha(std::string_view texto) noexcept
    {
        std::uint64_t soma = 14695981039346656037ULL; // FNV-1a
        for (char octeto : texto) {
            soma = (soma ^ static_cast<unsigned char>(octeto)) * 1099511628211ULL;
        }
        return static_cast<std::size_t>(soma ^ (soma >> 29));
    }

    // Rebuilds the table with room for the keys in use, without the erased ones.
    void Redistribui() const
    {
        std::size_t comChave = 0;
        for (const No &no : m_Itens) {
            comChave += no.Chave.has_value() ? 1 : 0;
        }
        std::size_t tamanho = 8;
        while (tamanho < (comChave + 1) * 3) {
            tamanho *= 2;
        }
        m_Tabela.assign(tamanho, Livre);
        m_Ocupadas = comChave;
        for (const No &no : m_Itens) {
            if (no.Chave) {
                std::size_t casa = Espalha(*no.Chave) & (tamanho - 1);
                while (m_Tabela[casa] != Livre) {
                    casa = (casa + 1) & (tamanho - 1);
                }
                m_Tabela[casa] = no.Ordem;
            }
        }
    }

    void RemoveIndice(std::size_t indice)
    {
        if (m_Itens[indice].Chave && !m_Tabela.empty()) {
            m_Tabela[Casa(*m_Itens[indice].Chave)] = Apagada;
        }
        // The item ends only after the collection is whole again: its destructor may look at the collection.
        T retirado = std::move(m_Itens[indice].Valor);
        m_Itens.erase(m_Itens.begin() + static_cast<std::ptrdiff_t>(indice));
        if (m_Itens.empty()) {
            m_Tabela.clear();
            m_Ocupadas = 0;
        }
        static_cast<void>(retirado);
    }

    std::deque<No> m_Itens;
    // Open addressing over the order numbers of the keyed items. Empty until the first look-up, for as long as each key
    // added comes after those before it: lists that are loaded, copied and read by position need none.
    mutable std::vector<std::int64_t> m_Tabela;
    mutable std::size_t m_Ocupadas = 0; // slots that are not free, erased ones included
    std::int64_t m_UltimaOrdem = 0;
};
