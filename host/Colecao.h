#pragma once

#include "host/Falha.h"
#include "host/Texto.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// The platform's collection: items in the order of adding, found by position from 1 or by a key that ignores case.
// Appending, finding by key, finding by position and taking the first are O(1) amortised; taking from the middle moves
// the shorter side. What Item and Primeiro give is good until the collection changes.
template <class T> class Colecao {
  public:
    Colecao() = default;
    Colecao(const Colecao &) = delete;
    Colecao &operator=(const Colecao &) = delete;

    std::int32_t Count() const noexcept { return static_cast<std::int32_t>(Quantos()); }

    // Makes room for so many more items.
    void Reserva(std::int32_t quantos)
    {
        const std::size_t preciso = Quantos() + static_cast<std::size_t>(quantos);
        if (preciso > m_Itens.capacity()) {
            FechaInicio();
            // No less than adding one by one would take, so that many small calls cost no more.
            m_Itens.reserve(std::max(preciso, 2 * m_Itens.capacity()));
        }
    }

    // Appends an item without a key.
    void Add(T item)
    {
        AddCriado([&]() -> T { return std::move(item); });
    }

    // The same with the item that `cria` gives, created in its place. `cria` may not look at the collection.
    template <class Cria> const T &AddCriado(Cria &&cria) { return Acrescenta(cria, nullptr); }

    // Appends an item under a key. Fault 457 if the key is in use; nothing is added then.
    void Add(T item, std::string_view chave)
    {
        auto dobrada = std::make_unique<const std::string>(ChaveSemCaixa(chave));
        if (m_Tabela.empty() && SegueAsOutras(*dobrada)) {
            Acrescenta([&]() -> T { return std::move(item); }, std::move(dobrada));
            return;
        }
        if ((m_Ocupadas + 1) * 2 > m_Tabela.size()) {
            Redistribui();
        }
        std::size_t casa = Casa(*dobrada);
        if (m_Tabela[casa] > 0) {
            throw Falha(NumeroFalha::ChaveJaExiste);
        }
        Acrescenta([&]() -> T { return std::move(item); }, std::move(dobrada));
        m_Ocupadas += m_Tabela[casa] == Livre ? 1 : 0;
        m_Tabela[casa] = m_UltimaOrdem;
    }

    // The item at a position from 1. Fault 9 outside 1 to Count.
    const T &Item(std::int32_t posicao) const { return NoEm(Indice(posicao)).Valor; }

    // The item of a key. Fault 5 if there is none.
    const T &Item(std::string_view chave) const { return NoEm(Indice(chave)).Valor; }

    // The first item, in the order of adding, that fulfils a condition; null when there is none.
    template <class Condicao> const T *Primeiro(Condicao &&condicao) const
    {
        const auto achado = std::find_if(Inicio(), m_Itens.end(), [&](const No &no) { return condicao(no.Valor); });
        return achado == m_Itens.end() ? nullptr : &achado->Valor;
    }

    // Takes the item at a position out. Fault 9 outside 1 to Count.
    void Remove(std::int32_t posicao) { RemoveIndice(Indice(posicao)); }

    // Takes the item of a key out. Fault 5 if there is none.
    void Remove(std::string_view chave) { RemoveIndice(Indice(chave)); }

    // Takes all items out.
    void RemoveTodos()
    {
        // Only after the collection is whole again: the items' destructors may look at it.
        const std::vector<No> retirados = std::exchange(m_Itens, {});
        Esvazia();
    }

  private:
    using ChaveGuardada = std::unique_ptr<const std::string>; // folded; null without one

    struct No {
        template <class Cria>
        No(Cria &cria, ChaveGuardada chave, std::int64_t ordem) : Valor(cria()),
                                                                  Chave(std::move(chave)),
                                                                  Ordem(ordem)
        {
        }

        T Valor;
        ChaveGuardada Chave;
        std::int64_t Ordem; // grows with every addition, so the items are sorted by it
    };

    static constexpr std::int64_t Livre = 0;
    static constexpr std::int64_t Apagada = -1;

    std::size_t Quantos() const noexcept { return m_Itens.size() - m_Retirados; }
    auto Inicio() const noexcept { return m_Itens.begin() + static_cast<std::ptrdiff_t>(m_Retirados); }
    auto Inicio() noexcept { return m_Itens.begin() + static_cast<std::ptrdiff_t>(m_Retirados); }
    const No &NoEm(std::size_t indice) const noexcept { return m_Itens[m_Retirados + indice]; }

    std::size_t Indice(std::int32_t posicao) const
    {
        if (posicao < 1 || posicao > Count()) {
            throw Falha(NumeroFalha::SubscritoForaDoIntervalo);
        }
        return static_cast<std::size_t>(posicao - 1);
    }

    std::size_t Indice(std::string_view chave) const
    {
        if (Quantos() > 0) {
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
        if (Quantos() == 0) {
            return true;
        }
        const auto &ultima = m_Itens.back().Chave;
        return ultima && (ultima->size() == dobrada.size() ? *ultima < dobrada : ultima->size() < dobrada.size());
    }

    // Items that were removed from the middle leave gaps in the order numbers; without gaps the guess is exact.
    std::size_t IndiceDaOrdem(std::int64_t ordem) const
    {
        auto palpite = static_cast<std::size_t>(ordem - Inicio()->Ordem);
        if (palpite < Quantos() && NoEm(palpite).Ordem == ordem) {
            return palpite;
        }
        auto achado = std::lower_bound(Inicio(), m_Itens.end(), ordem,
                                       [](const No &no, std::int64_t procurada) { return no.Ordem < procurada; });
        return static_cast<std::size_t>(achado - Inicio());
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
            } else if (*NoEm(IndiceDaOrdem(m_Tabela[casa])).Chave == dobrada) {
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
        for (auto no = Inicio(); no != m_Itens.end(); ++no) {
            comChave += no->Chave ? 1 : 0;
        }
        std::size_t tamanho = 8;
        while (tamanho < (comChave + 1) * 3) {
            tamanho *= 2;
        }
        m_Tabela.assign(tamanho, Livre);
        m_Ocupadas = comChave;
        for (auto no = Inicio(); no != m_Itens.end(); ++no) {
            if (no->Chave) {
                std::size_t casa = Espalha(*no->Chave) & (tamanho - 1);
                while (m_Tabela[casa] != Livre) {
                    casa = (casa + 1) & (tamanho - 1);
                }
                m_Tabela[casa] = no->Ordem;
            }
        }
    }

    template <class Cria> const T &Acrescenta(Cria &&cria, ChaveGuardada chave)
    {
        // A list that is filled at its end while it is emptied at its start does not grow for that.
        if (m_Itens.size() == m_Itens.capacity() && m_Retirados > Quantos()) {
            FechaInicio();
        }
        m_Itens.emplace_back(cria, std::move(chave), m_UltimaOrdem + 1);
        ++m_UltimaOrdem;
        return m_Itens.back().Valor;
    }

    void FechaInicio() noexcept
    {
        m_Itens.erase(m_Itens.begin(), Inicio());
        m_Retirados = 0;
    }

    void RemoveIndice(std::size_t indice)
    {
        const auto onde = Inicio() + static_cast<std::ptrdiff_t>(indice);
        if (onde->Chave && !m_Tabela.empty()) {
            m_Tabela[Casa(*onde->Chave)] = Apagada;
        }
        // The item ends only after the collection is whole again: its destructor may look at the collection.
        const No retirado = std::move(*onde);
        if (indice < Quantos() / 2) {
            std::move_backward(Inicio(), onde, onde + 1);
            ++m_Retirados;
        } else {
            m_Itens.erase(onde);
        }
        if (Quantos() == 0) {
            Esvazia();
        }
    }

    void Esvazia() noexcept
    {
        m_Itens.clear();
        m_Retirados = 0;
        m_Tabela.clear();
        m_Ocupadas = 0;
    }

    std::vector<No> m_Itens;
    std::size_t m_Retirados = 0; // places at the start that nothing is in any more
    // Open addressing over the order numbers of the keyed items. Empty until the first look-up, for as long as each key
    // added comes after those before it: lists that are loaded, copied and read by position need none.
    mutable std::vector<std::int64_t> m_Tabela;
    mutable std::size_t m_Ocupadas = 0; // slots that are not free, erased ones included
    std::int64_t m_UltimaOrdem = 0;
};
