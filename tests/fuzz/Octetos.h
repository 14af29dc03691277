#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>

// The bytes of one input, taken from the front as the target asks for values. Once they are spent every value is the
// smallest of its kind, so that an input cut short still means something.
class Octetos {
  public:
    Octetos(const std::uint8_t *inicio, std::size_t tamanho) : m_Proximo(inicio), m_Restam(tamanho) {}

    bool Acabou() const noexcept { return m_Restam == 0; }

    std::uint8_t Octeto() noexcept
    {
        if (Acabou()) {
            return 0;
        }
        --m_Restam;
        return *m_Proximo++;
    }

    bool Sim() noexcept { return (Octeto() & 1) != 0; }

    // From 0 to `maximo`, from one byte.
    int Ate(int maximo) noexcept { return Octeto() % (maximo + 1); }

    std::int32_t Longo() noexcept { return static_cast<std::int32_t>(Natural()); }

    std::int16_t Inteiro() noexcept { return static_cast<std::int16_t>(Natural()); }

    // Any bit pattern: infinities and what is no number too.
    double Real() noexcept;

    // Up to `maximo` bytes, as many as the next byte says. They need not be well-formed text.
    std::string Texto(int maximo);

    // Everything that is left.
    std::string Resto() { return Texto(m_Restam); }

  private:
    std::uint32_t Natural() noexcept;
    std::string Texto(std::size_t tamanho);

    const std::uint8_t *m_Proximo;
    std::size_t m_Restam;
};

// Hands the input to the procedure that its first byte names.
int Despacha(const std::uint8_t *dados, std::size_t tamanho, std::initializer_list<void (*)(Octetos &)> procedimentos);
