#pragma once

#include "controls/ztFrame.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/FormFalso.h"
#include "tests/support/UmControle.h"

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
    template <class C> Ref<C> Poe(const Peca &peca, const Ref<IControle> &container = nullptr, std::int16_t pagina = -1)
    {
        Ref<C> controle = Feito<C>(Form, peca, container, pagina);
        Form->Guarda(controle);
        return controle;
    }

    Ref<ztFrame> PoeFrame(const std::string &nome) { return Poe<ztFrame>(Chamado<AjustesZtFrame>(nome)); }

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

// Number of the fault that the command raises.
template <class Comando> std::int32_t NumeroDaFalha(Comando &&comando)
{
    return FalhaLancada(comando).Numero;
}
