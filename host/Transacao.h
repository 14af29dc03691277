#pragma once

#include "host/Colecao.h"
#include "host/Ref.h"

#include <string>

// One input or output field of a transaction.
class CampoTransacao : public Objeto {
  public:
    std::string_view NomeTipo() const override { return "CampoTransacao"; }

    std::string Nome;
    std::string Valor;
};

using CamposTransacao = Ref<Colecao<Ref<CampoTransacao>>>;

// A transaction of the central system. The module copies its members and creates none. A transaction object that
// lacks a member raises fault 438, as these bodies do.
class ITransacao : public Objeto {
  public:
    virtual std::string sWindow() const { throw Falha(NumeroFalha::MembroInexistente); }
    virtual void DefinesWindow(const std::string &) { throw Falha(NumeroFalha::MembroInexistente); }
    virtual std::string sTransacao() const { throw Falha(NumeroFalha::MembroInexistente); }
    virtual void DefinesTransacao(const std::string &) { throw Falha(NumeroFalha::MembroInexistente); }
    virtual std::string sSistema() const { throw Falha(NumeroFalha::MembroInexistente); }
    virtual void DefinesSistema(const std::string &) { throw Falha(NumeroFalha::MembroInexistente); }
    virtual std::string sJob() const { throw Falha(NumeroFalha::MembroInexistente); }
    virtual void DefinesJob(const std::string &) { throw Falha(NumeroFalha::MembroInexistente); }
    virtual std::string sPrograma() const { throw Falha(NumeroFalha::MembroInexistente); }
    virtual void DefinesPrograma(const std::string &) { throw Falha(NumeroFalha::MembroInexistente); }
    virtual bool bGCI() const { throw Falha(NumeroFalha::MembroInexistente); }
    virtual void DefinebGCI(bool) { throw Falha(NumeroFalha::MembroInexistente); }
    virtual bool SisJava() const { throw Falha(NumeroFalha::MembroInexistente); }
    virtual void DefineSisJava(bool) { throw Falha(NumeroFalha::MembroInexistente); }
    // Fields keyed by their name; may be Nothing.
    virtual CamposTransacao Cin() const { throw Falha(NumeroFalha::MembroInexistente); }
    virtual void DefineCin(const CamposTransacao &) { throw Falha(NumeroFalha::MembroInexistente); }
    virtual CamposTransacao Cout() const { throw Falha(NumeroFalha::MembroInexistente); }
    virtual void DefineCout(const CamposTransacao &) { throw Falha(NumeroFalha::MembroInexistente); }
};
