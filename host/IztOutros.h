#pragma once

#include "host/IControle.h"
#include "host/IControlesPadrao.h"

#include <cstdint>
#include <string>

// A button with a validation before its click.
class IztCommand : public IControle {
  public:
    virtual bool Default() const = 0;
    virtual void DefineDefault(bool valor) = 0;
    // Raised first; writing true to the flag keeps Click from being raised.
    virtual Evento<bool &> &ValidaClick() = 0;
    virtual Evento<> &Click() = 0;
};

class IztVeiObservacao : public IControle {
  public:
    virtual std::string Text() const = 0;
    // Cut to the limit. Raises Change when the text becomes another one.
    virtual void DefineText(const std::string &valor) = 0;
    virtual bool Locked() const = 0;
    virtual void DefineLocked(bool valor) = 0;
    virtual Evento<> &Change() = 0;
};

// The address that an address control holds.
class IEndereco : public Objeto {
  public:
    // Presets the address; raises nothing. The last two arguments are always an empty string and 0.
    virtual void SetaEndereco(std::int32_t codMunic, std::int32_t codLogradouro, std::int32_t numero,
                              const std::string &complemento, const std::string &cep, const std::string &reservado1,
                              std::int32_t reservado2) = 0;
    virtual std::int32_t CodLogradouro() const = 0; // 0: no address
    virtual std::int32_t Numero() const = 0;
    virtual std::string Complemento() const = 0;
    virtual std::string Cep() const = 0;
    // The address as one text; empty when there is none.
    virtual std::string DescricaoEndereco() const = 0;
};

class IztEndereco : public IControle {
  public:
    virtual Ref<IEndereco> Endereco() = 0;
    virtual bool ReadOnly() const = 0;
    virtual void DefineReadOnly(bool valor) = 0;
    // The person has finished an address entry.
    virtual Evento<> &EntradaOK() = 0;
};

// The picker of a client and one of its sectors.
class IztClienteSetor : public IControle {
  public:
    virtual std::string Cliente() const = 0;
    virtual std::string Setor() const = 0; // empty: all sectors
    // Number of the client with which the picker starts.
    virtual void DefineCodCliente(std::int32_t valor) = 0;
    // Whether the choice is complete; tells the person by itself when it is not.
    virtual bool Valida() = 0;
    virtual Evento<> &Change() = 0;
};
