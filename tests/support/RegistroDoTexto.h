#pragma once

#include "host/Registro.h"

#include <stdexcept>
#include <string>
#include <string_view>

// Reads what Registro::Texto writes.
class LeitorDeRegistro {
  public:
    explicit LeitorDeRegistro(std::string_view texto) : m_Resto(texto) {}

    bool Acabou() const noexcept { return m_Resto.empty(); }
    // The members up to the end or a closing brace.
    template <class R> Ref<R> Membros()
    {
        auto registro = Novo<R>();
        while (!Acabou() && m_Resto.front() != '}') {
            const std::string_view nome = Ate("=");
            bool achou = false;
            registro->CadaMembro([&]<class T>(std::string_view membro, Campo<T> &campo) {
                if (membro == nome) {
                    achou = true;
                    campo = Valor<T>();
                }
            });
            if (!achou) {
                throw std::invalid_argument(std::string(nome));
            }
            Pula(", ");
        }
        return registro;
    }

  private:
    template <class T> T Valor()
    {
        if constexpr (DetalheRegistro::EhListaDe<T>::value) {
            using Item = typename DetalheRegistro::EhListaDe<T>::Item;
            T lista = Novo<Colecao<Ref<Item>>>();
            for (Ate("["); !Pula("]"); Pula("}"), Pula(", ")) {
                Ate("{");
                lista->Add(Membros<Item>());
            }
            return lista;
        } else if constexpr (std::is_same_v<T, std::string>) {
            Ate("\"");
            return std::string(Ate("\""));
        } else {
            const std::string_view texto = m_Resto.substr(0, m_Resto.find_first_of(",}"));
            m_Resto.remove_prefix(texto.size());
            if constexpr (std::is_same_v<T, Data>) {
                return CDate(texto);
            } else {
                return static_cast<T>(CDbl(texto));
            }
        }
    }
    // What stands before the mark, which is taken with it.
    std::string_view Ate(std::string_view marca)
    {
        const std::size_t onde = m_Resto.find(marca);
        if (onde == std::string_view::npos) {
            throw std::invalid_argument(std::string(m_Resto));
        }
        const std::string_view antes = m_Resto.substr(0, onde);
        m_Resto.remove_prefix(onde + marca.size());
        return antes;
    }
    bool Pula(std::string_view marca)
    {
        const bool esta = m_Resto.starts_with(marca);
        m_Resto.remove_prefix(esta ? marca.size() : 0);
        return esta;
    }

    std::string_view m_Resto;
};

// A record with these members written: DoTexto<SensorED>("NroSensor=1, Afericoes=[AfericaoED{Numero=\"N1\"}]").
template <class R> Ref<R> DoTexto(std::string_view membros)
{
    LeitorDeRegistro leitor(membros);
    auto registro = leitor.Membros<R>();
    if (!leitor.Acabou()) {
        throw std::invalid_argument(std::string(membros));
    }
    return registro;
}
