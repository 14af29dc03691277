#pragma once

#include "controls/ztFrame.h"
#include "host/Falha.h"
#include "tests/support/FormFalso.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

// A form with controls, and what they raised.
class Tela {
  public:
    Ref<FormFalso> Form = FormNaTela();
    std::vector<std::string> Eventos;

    // Puts a control on the form.
    template <class C, class Ajustes> Ref<C> Poe(const Ajustes &ajustes)
    {
        Ref<C> controle = Novo<C>(Form, ajustes);
        Form->Guarda(controle);
        return controle;
    }

    Ref<ztFrame> PoeFrame(const std::string &nome)
    {
        AjustesControle ajustes;
        ajustes.Nome = nome;
        return Poe<ztFrame>(ajustes);
    }

    // Writes the name down each time that the event is raised.
    template <class... Args> void Anota(Evento<Args...> &evento, std::string nome)
    {
        Liga(evento, [this, nome = std::move(nome)](Args...) { Eventos.push_back(nome); });
    }

    template <class... Args, class Tratador> void Liga(Evento<Args...> &evento, Tratador tratador)
    {
        m_Conexoes.push_back(evento.liga(std::move(tratador)));
    }

    // What was raised since the last look.
    std::vector<std::string> Vistos() { return std::exchange(Eventos, {}); }

    // The module lets go of the form and of everything on it.
    void Solta() { Form = nullptr; }

  private:
    std::vector<Conexao> m_Conexoes;
};

using Textos = std::vector<std::string>;

template <class Ajustes>
Ajustes Chamado(const std::string &nome, const Ref<IControle> &container = nullptr, std::int16_t pagina = -1)
{
    Ajustes ajustes;
    ajustes.Nome = nome;
    ajustes.Container = container;
    ajustes.Pagina = pagina;
    return ajustes;
}

// Number of the fault that the command raises; 0 when it raises none.
inline std::int32_t NumeroDaFalha(const std::function<void()> &comando)
{
    try {
        comando();
    } catch (const Falha &falha) {
        return falha.Numero;
    }
    return 0;
}
