#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// What became of a key.
enum class Entrada {
    Entrou,
    NaoAceito, // the field takes no such character
    SemLugar,  // it is full
};

// Text inside a field, with the rules for what gets into it. Positions count characters from 0.
class TextoCampo {
  public:
    virtual ~TextoCampo() = default;

    const std::string &Texto() const { return m_Texto; }
    // Position behind what was typed.
    virtual std::size_t Fim() const = 0;
    // The module's text in the place of the present one.
    virtual void Escreve(std::string_view texto) = 0;
    // Takes n characters out.
    virtual void Retira(std::size_t posicao, std::size_t n) = 0;
    // A key: the character gets in at the position, which moves behind it, or nothing happens.
    virtual Entrada Insere(std::size_t &posicao, std::string_view carater) = 0;
    // Whether characters that come at once stand for a whole text, and not for a piece of one.
    virtual bool EInteiro(std::string_view) const { return false; }
    // Characters that come at once, in the order in which the field has them.
    virtual std::string Entende(std::string_view texto) const { return std::string(texto); }
    // What the field takes, for the person whose characters were left out: those, each once, or none for lack of room.
    virtual std::string Dica(const std::vector<std::string> &recusados) const = 0;

  protected:
    TextoCampo() = default;

    std::string m_Texto;
};
