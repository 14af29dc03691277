#pragma once

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class QString;

namespace mesa {

// Overwrites the memory; the compiler does not leave it out.
void LimpaMemoria(void *onde, std::size_t bytes) noexcept;

// The same of a text of the toolkit, where it stands. Whoever shares its memory loses it too.
void LimpaTexto(const QString &texto) noexcept;

// Memory that is overwritten before it is given back, growth included.
template <class T> struct AlocadorQueLimpa {
    using value_type = T;

    AlocadorQueLimpa() = default;
    template <class U> AlocadorQueLimpa(const AlocadorQueLimpa<U> &) noexcept {}

    T *allocate(std::size_t n) { return std::allocator<T>().allocate(n); }
    void deallocate(T *onde, std::size_t n) noexcept
    {
        LimpaMemoria(onde, n * sizeof(T));
        std::allocator<T>().deallocate(onde, n);
    }
    template <class U> bool operator==(const AlocadorQueLimpa<U> &) const noexcept { return true; }
};

// A text that nobody may find in the memory once it is gone: a password. It is copied and moved like any text, and
// every copy of it wipes itself.
class Segredo {
  public:
    Segredo() = default;
    // The text that is handed over stays its owner's to wipe.
    Segredo(std::string_view texto) : m_Texto(texto.begin(), texto.end()) {}
    Segredo(const char *texto) : Segredo(std::string_view(texto)) {}
    Segredo(const std::string &texto) : Segredo(std::string_view(texto)) {}
    // Takes the text out of a text of the toolkit, which is wiped and left empty. Other copies of that one are not.
    static Segredo Toma(QString &texto);

    bool Vazio() const noexcept { return m_Texto.empty(); }
    // UTF-8. Good until this is written to or gone.
    std::string_view Texto() const noexcept { return {m_Texto.data(), m_Texto.size()}; }
    // Composed as it is hashed and compared: whichever way a keyboard composes an accent.
    Segredo Composto() const;

    bool operator==(const Segredo &) const = default;
    // What a record shows of it.
    friend std::string CStr(const Segredo &) { return "(senha)"; }

  private:
    std::vector<char, AlocadorQueLimpa<char>> m_Texto;
};

// The one line of a stream that is a password, without the characters that end it.
Segredo LeSenha(std::istream &entrada);

} // namespace mesa
