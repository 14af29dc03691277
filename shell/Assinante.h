#pragma once

#include "host/Evento.h"
#include "host/Ref.h"
#include "shell/ModGeral.h"

#include <string>
#include <string_view>
#include <vector>

// Whoever takes events: the forms and the controllers. Its subscriptions end with it.
class Assinante {
  protected:
    Assinante() = default;
    ~Assinante() = default;

    // Connects an event to a procedure of the object, which stays alive while the procedure runs, even if that drops
    // it. With a name, the procedure is one that the person's action entered: its fault is shown under that name, and
    // goes no further. Without, the fault goes on to whoever raised the event.
    template <class Classe, class... Args, class... Parametros>
    void Liga(Evento<Args...> &evento, void (Classe::*procedimento)(Parametros...), std::string_view nome = {})
    {
        Classe &este = static_cast<Classe &>(*this);
        std::string contexto;
        if (!nome.empty()) {
            contexto.append(este.NomeTipo()).append(".").append(nome);
        }
        m_Conexoes.push_back(evento.liga([fraca = RefFraca<Classe>(Eu(este)), procedimento, contexto](Args... args) {
            const Ref<Classe> eu = fraca.Alvo();
            try {
                ((*eu).*procedimento)(args...);
            } catch (...) {
                if (contexto.empty()) {
                    throw;
                }
                gSubMostraErro(contexto);
            }
        }));
    }

    // Ends all subscriptions.
    void Desliga() noexcept { m_Conexoes.clear(); }

  private:
    std::vector<Conexao> m_Conexoes;
};
