#pragma once

#include "host/IGateway.h"
#include "host/IMDB.h"
#include "host/Transacao.h"

#include <cstdint>
#include <string>
#include <vector>

class IobjMTM;

// Helpers of the host that the generic shell keeps without calling them.
class ICFisJur : public Objeto {};
class ICEndereco : public Objeto {};
class ICVeiGen : public Objeto {};

class IQMR;

// Database helper.
class ITrataBD : public Objeto {
  public:
    virtual Ref<IQMR> pQMR() = 0;
    // Opens the local database. banco is always 99.
    virtual Ref<IMDB> AbreZTBanco(std::int16_t banco) = 0;
    virtual Ref<ICFisJur> CreateCFisJur() = 0;
    virtual Ref<ICEndereco> CreateCEndereco() = 0;
    virtual Ref<ICVeiGen> CreateCVeiGen() = 0;
    virtual void InicializaInfoSistema(const std::string &sistema, std::int16_t versao) = 0;
    // Tells the host that a local table's data changed. Always called with true, false and two absent (empty)
    // arguments.
    virtual void TabelaAlterada(const std::string &tabela, bool alterada, bool reservado, const Valor &ausente1,
                                const Valor &ausente2) = 0;
};

// Data dictionary: holds the session and the factories.
class IQMR : public Objeto {
  public:
    virtual Ref<ITrataBD> CreateNewTrataBD() = 0;
    virtual Ref<IobjMTM> Sessao() = 0;
};

// Object of the central system's web services.
class IObjetoSoap : public Objeto {
  public:
    // Calls a method of the service; true on success, and Resultado then holds the answer.
    virtual bool Metodo(const Ref<Objeto> &contexto, const std::string &metodo, const std::string &sistema) = 0;
    virtual Valor Resultado() = 0;
};

class IWebComm : public Objeto {
  public:
    virtual Ref<IObjetoSoap> CriaObjetoSoap(const std::string &servico, const std::string &componente) = 0;
};

// The session.
class IobjMTM : public Objeto {
  public:
    virtual Ref<IQMR> CreateQMR() = 0;
    virtual std::string ClienteLogado() = 0;
    virtual std::string SetorLogado() = 0;
    virtual Ref<IGateway> ObtemGateway() = 0;
    virtual Ref<IWebComm> CWebComm() = 0;
    // Sending of transactions; flags and data go by reference and may come back changed.
    virtual bool EnviaTransacao1(Ref<ITransacao> &oTrans, bool &b1) = 0;
    virtual bool EnviaTransacao2(Ref<ITransacao> &oTrans, bool &b1) = 0;
    virtual bool EnviaTransacaoH90(Ref<ITransacao> &oTrans, bool &b1, bool &b3) = 0;
    virtual std::int16_t EnviaRajada1(Ref<ITransacao> &oTrans, bool &b1) = 0;
    virtual std::int16_t EnviaRajada2(Ref<ITransacao> &oTrans, std::vector<std::string> &aDados) = 0;
    virtual bool EnviaRajadaH90(Ref<ITransacao> &oTrans, std::vector<std::string> &aDados, bool &b2) = 0;
};

// Access control.
class IobjSCA : public Objeto {
  public:
    // Whether a user is logged on.
    virtual bool Logado() = 0;
    virtual bool PossuiPerm2(const std::string &sistema, const std::string &objeto, const std::string &acao) = 0;
};

// Numbers of the logon's credential.
class ICredencial : public Objeto {
  public:
    virtual std::int32_t Credencial() = 0;
    virtual std::int32_t CodMunic() = 0; // municipality to which the logon is tied; 0 for none
};
