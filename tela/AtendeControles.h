#pragma once

#include "controls/FabricaControles.h"
#include "tela/IJanelas.h"
#include "tela/ILogradouros.h"

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

// Answers what the controls of a factory ask of their host: the file dialog is shown, the client picker's notices too,
// the picker starts with the client of the number that it was given, and an address given by its codes gets its text.
class AtendeControles {
  public:
    // clienteDoCodigo: name of the client with which a picker starts. titulo: of the boxes with what a picker tells.
    AtendeControles(FabricaControles &fabrica, Ref<IJanelas> janelas, Ref<ILogradouros> logradouros,
                    std::function<std::string(std::int32_t)> clienteDoCodigo, std::string titulo);

  private:
    void Conecta(const Ref<IControle> &controle);
    template <class... Args>
    void Mantem(const Ref<IControle> &controle, Evento<Args...> &evento, std::function<void(Args...)> tratador);

    Ref<IJanelas> m_Janelas;
    Ref<ILogradouros> m_Logradouros;
    std::function<std::string(std::int32_t)> m_ClienteDoCodigo;
    std::string m_Titulo;
    std::vector<std::pair<RefFraca<IControle>, Conexao>> m_Conectados;
    Conexao m_CriouControle; // last: what it calls uses the others
};
