#pragma once

#include "controls/Controle.h"
#include "host/IztOutros.h"

class ztClienteSetor : public Controle<IztClienteSetor> {
  public:
    using Controle::Controle;

    std::string Cliente() const override { return m_Cliente; }
    std::string Setor() const override { return m_Setor; }
    void DefineCodCliente(std::int32_t valor) override;
    bool Valida() override;
    Evento<> &Change() override { return m_Change; }

    std::int32_t CodCliente() const { return m_CodCliente; }
    // The number was given: who knows the clients answers with PresetaCliente.
    Evento<> &AoDefinirCodCliente() { return m_AoDefinirCodCliente; }
    // The client with which the picker starts, without an event of the module's.
    void PresetaCliente(const std::string &cliente, const std::string &setor);
    // The picker has something to tell the person.
    Evento<std::string> &AoAvisar() { return m_AoAvisar; }

    // The person chooses a client and one of its sectors; an empty sector stands for all.
    bool Escolhe(const std::string &cliente, const std::string &setor);

  private:
    // Whether the choice became another one.
    bool Troca(const std::string &cliente, const std::string &setor);

    std::int32_t m_CodCliente = 0;
    std::string m_Cliente;
    std::string m_Setor;
    Evento<> m_AoDefinirCodCliente;
    Evento<std::string> m_AoAvisar;
    Evento<> m_Change;
};
