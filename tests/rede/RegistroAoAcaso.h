#pragma once

#include "host/Registro.h"
#include "services/Segredo.h"

#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <type_traits>

// Records with whatever their members may hold, some of them left unwritten.
class AoAcaso {
  public:
    explicit AoAcaso(std::uint64_t semente) : m_Sorte(semente) {}

    template <class R> Ref<R> Um()
    {
        auto registro = Novo<R>();
        registro->CadaMembro([&]<class T>(std::string_view, Campo<T> &campo) {
            if (Ate(3) > 0) {
                campo = Valor<T>();
            }
        });
        registro->VersaoLida = Ate(1) == 0 ? 0 : Entre<std::int64_t>();
        return registro;
    }

  private:
    template <class T> T Entre()
    {
        // The ends are not left to chance.
        switch (Ate(3)) {
        case 0:
            return std::numeric_limits<T>::min();
        case 1:
            return std::numeric_limits<T>::max();
        default:
            return static_cast<T>(std::uniform_int_distribution<std::int64_t>(std::numeric_limits<T>::min(),
                                                                              std::numeric_limits<T>::max())(m_Sorte));
        }
    }

    int Ate(int ultimo) { return std::uniform_int_distribution(0, ultimo)(m_Sorte); }

    template <class T> T Valor()
    {
        if constexpr (DetalheRegistro::EhListaDe<T>::value) {
            if (Ate(4) == 0) {
                return {};
            }
            T lista = Novo<Colecao<Ref<typename DetalheRegistro::EhListaDe<T>::Item>>>();
            for (int falta = Ate(3); falta > 0; --falta) {
                lista->Add(Um<typename DetalheRegistro::EhListaDe<T>::Item>());
            }
            return lista;
        } else if constexpr (std::is_same_v<T, std::string>) {
            return Texto();
        } else if constexpr (std::is_same_v<T, mesa::Segredo>) {
            return mesa::Segredo(Texto());
        } else if constexpr (std::is_same_v<T, Data>) {
            return {std::uniform_real_distribution(-657434.0, 2958465.9)(m_Sorte)};
        } else if constexpr (std::is_same_v<T, double>) {
            return Ate(1) == 0 ? std::numeric_limits<double>::max()
                               : std::uniform_real_distribution(-1e15, 1e15)(m_Sorte);
        } else {
            return Entre<T>();
        }
    }

    std::string Texto()
    {
        static const char *const pedacos[] = {"",   "a",    "ç", "Rua Bento Gonçalves", "€", "\xF0\x9F\x9A\x93",
                                              "\n", "\x01", "\""};
        std::string texto;
        for (int falta = Ate(3); falta > 0; --falta) {
            texto += pedacos[Ate(static_cast<int>(std::size(pedacos)) - 1)];
        }
        return texto;
    }

    std::mt19937_64 m_Sorte;
};
