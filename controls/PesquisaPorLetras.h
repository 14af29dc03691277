#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

// A moment of a clock that goes forward, wherever it began.
using Momento = std::chrono::milliseconds;

// The items among which a person looks for one by typing the beginning of its text. Positions count from 0.
struct ItensPesquisados {
    std::function<std::int32_t()> Total;
    std::function<std::string(std::int32_t)> Texto;
    std::function<std::int32_t()> Atual; // -1 for none
    std::function<bool()> Obedece;       // whether what the person does now counts
    std::function<void(std::int32_t)> Vai;
};

// Finds an item by the letters that a person types. Those that come within a pause belong together; accents, case and
// blanks before an item do not count. An item that is all that was typed goes before one that only begins so. The same
// letter again and again, with which nothing begins, goes from one item of that letter to the next.
class PesquisaPorLetras {
  public:
    static constexpr Momento Pausa{1000};

    explicit PesquisaPorLetras(ItensPesquisados itens) : m_Itens(std::move(itens)) {}

    // Letters typed at a moment. False when one of them found no item: it is left out then, and the rest counts.
    bool Digita(std::string_view texto, Momento quando);
    // Letters typed without a pause behind those before.
    bool Digita(std::string_view texto) { return Digita(texto, m_Ultimo); }
    // Takes the last letter back. False when there is none.
    bool Encurta(Momento quando);
    // The next letter begins anew.
    void Encerra();
    // A letter typed where the choice has led the person: whether it is still of the word of the item that was found.
    bool Continua(std::string_view texto, Momento quando);
    bool Continua(std::string_view texto) { return Continua(texto, m_Ultimo); }

    // Whether a letter at that moment goes on from those before.
    bool EmCurso(Momento quando) const;
    const std::string &Procurado() const { return m_Procurado; }
    // That the last letter found nothing, in words; empty when it found an item.
    const std::string &Aviso() const { return m_Aviso; }

  private:
    bool SemPausa(Momento quando) const;
    bool Letra(const std::string &letra, Momento quando);
    void Vai(std::int32_t item);
    std::string ChaveDe(std::int32_t item) const;
    std::optional<std::int32_t> Primeiro(const std::string &chave, bool ficaNoAtual) const;
    std::optional<std::int32_t> Proximo(const std::string &chave) const;

    ItensPesquisados m_Itens;
    std::string m_Procurado;
    std::string m_Palavra; // that found the item, even when the choice has put an end to the search
    std::string m_Aviso;
    Momento m_Ultimo{0};
};
