#pragma once

#include "controls/PesquisaPorLetras.h"
#include "controls/ztClienteSetor.h"

#include <cstdint>
#include <string>
#include <vector>

// A client that a picker offers, with its sectors.
struct ClienteOferecido {
    std::string Nome;
    std::vector<std::string> Setores;
};

// What the person does in a picker of a client and one of its sectors. Positions count from 0; -1 is none.
class EscolhaDeCliente {
  public:
    EscolhaDeCliente(Ref<ztClienteSetor> controle, std::vector<ClienteOferecido> clientes);
    EscolhaDeCliente(const EscolhaDeCliente &) = delete;
    EscolhaDeCliente &operator=(const EscolhaDeCliente &) = delete;

    const std::vector<ClienteOferecido> &Clientes() const { return m_Clientes; }
    std::int32_t Cliente() const;
    // Of the client chosen; the first stands for all.
    std::vector<std::string> Setores() const;
    std::int32_t Setor() const;

    // Another client begins with all its sectors.
    bool EscolheCliente(std::int32_t posicao);
    bool EscolheSetor(std::int32_t posicao);
    // By the letters that are typed.
    PesquisaPorLetras &PesquisaDeClientes() { return m_PesquisaDeClientes; }
    PesquisaPorLetras &PesquisaDeSetores() { return m_PesquisaDeSetores; }

  private:
    bool Obedece() const { return m_Controle->HabilitadoDeFato() && m_Controle->VisivelDeFato(); }

    Ref<ztClienteSetor> m_Controle;
    std::vector<ClienteOferecido> m_Clientes;
    PesquisaPorLetras m_PesquisaDeClientes;
    PesquisaPorLetras m_PesquisaDeSetores;
};
