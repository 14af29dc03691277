#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <map>
#include <new>
#include <string>
#include <string_view>
#include <utility>

namespace nativo {

// Memory that a test does not count as held: what this room notes about all tests.
template <class T> struct ForaDaConta {
    using value_type = T;

    ForaDaConta() = default;
    template <class U> ForaDaConta(const ForaDaConta<U> &) noexcept {}

    T *allocate(std::size_t quantos)
    {
        void *bloco = std::malloc(quantos * sizeof(T));
        if (bloco == nullptr) {
            throw std::bad_alloc();
        }
        return static_cast<T *>(bloco);
    }
    void deallocate(T *bloco, std::size_t) noexcept { std::free(bloco); }
    template <class U> bool operator==(const ForaDaConta<U> &) const noexcept { return true; }
};

using NomeForaDaConta = std::basic_string<char, std::char_traits<char>, ForaDaConta<char>>;

// How often each name was met.
class Contagem {
  public:
    void Soma(std::string_view nome) { ++m_Vezes[NomeForaDaConta(nome)]; }
    template <class Visita> void Cada(Visita &&visita) const
    {
        for (const auto &[nome, vezes] : m_Vezes) {
            visita(std::string_view(nome), vezes);
        }
    }

  private:
    std::map<NomeForaDaConta, std::int64_t, std::less<>, ForaDaConta<std::pair<const NomeForaDaConta, std::int64_t>>>
        m_Vezes;
};

} // namespace nativo
