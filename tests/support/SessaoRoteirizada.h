#pragma once

#include "tests/support/GatewayRoteirizado.h"
#include "tests/support/RegistroChamadas.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

// What a send operation of the session gets and answers. `b1` and `b3` may be null, `Dados` too.
struct EnvioTransacao {
    std::string Operacao;
    Ref<ITransacao> &Transacao;
    bool *b1 = nullptr;
    bool *b2 = nullptr;
    bool *b3 = nullptr;
    std::vector<std::string> *Dados = nullptr;
};

// The session, objMTM.
class SessaoRoteirizada : public IobjMTM {
  public:
    SessaoRoteirizada(RefRegistro registro, std::shared_ptr<ServicosRemotos> servicos, const Ref<IMDB> &banco);

    std::string_view NomeTipo() const override { return "objMTM"; }

    // What a test sets.
    std::string Cliente = "Autoridade das Estradas de Rodagem";
    std::string Setor = "CENTRAL";
    bool ResultadoTransacao = true;
    std::int16_t ResultadoRajada = 0;
    // Runs inside every send operation.
    std::function<void(EnvioTransacao &)> AoEnviar;
    // The web services' answer: success, and the value of Resultado.
    bool WebResponde = true;
    Valor WebResultado = "20/11/2026 10:00:00";
    bool AbreBanco = true; // AbreZTBanco gives the local database, otherwise Nothing
    // Runs inside TabelaAlterada, with the table's name.
    std::function<void(const std::string &)> AoAlterarTabela;

    Ref<IQMR> CreateQMR() override;
    std::string ClienteLogado() override;
    std::string SetorLogado() override;
    Ref<IGateway> ObtemGateway() override;
    Ref<IWebComm> CWebComm() override;
    bool EnviaTransacao1(Ref<ITransacao> &oTrans, bool &b1) override;
    bool EnviaTransacao2(Ref<ITransacao> &oTrans, bool &b1) override;
    bool EnviaTransacaoH90(Ref<ITransacao> &oTrans, bool &b1, bool &b3) override;
    std::int16_t EnviaRajada1(Ref<ITransacao> &oTrans, bool &b1) override;
    std::int16_t EnviaRajada2(Ref<ITransacao> &oTrans, std::vector<std::string> &aDados) override;
    bool EnviaRajadaH90(Ref<ITransacao> &oTrans, std::vector<std::string> &aDados, bool &b2) override;

    // A data-dictionary object and a database helper of this session, not logged.
    Ref<IQMR> NovoQMR();
    Ref<ITrataBD> NovoTrataBD();
    Ref<IMDB> Banco() const { return m_Banco.Alvo(); }

  private:
    void Envia(EnvioTransacao envio) const;

    RefRegistro m_Registro;
    std::shared_ptr<ServicosRemotos> m_Servicos;
    RefFraca<IMDB> m_Banco;
};

// Access control, objSCA. Grants everything that was not denied.
class AcessoRoteirizado : public IobjSCA {
  public:
    explicit AcessoRoteirizado(RefRegistro registro) : m_Registro(std::move(registro)) {}

    std::string_view NomeTipo() const override { return "objSCA"; }

    bool UsuarioLogado = true;
    void Nega(const std::string &objeto, const std::string &acao) { m_Negadas.emplace_back(objeto, acao); }

    bool Logado() override;
    bool PossuiPerm2(const std::string &sistema, const std::string &objeto, const std::string &acao) override;

  private:
    RefRegistro m_Registro;
    std::vector<std::pair<std::string, std::string>> m_Negadas;
};

// A transaction object that has every member, as fields.
class TransacaoRoteirizada : public ITransacao {
  public:
    std::string_view NomeTipo() const override { return "Transacao"; }

    std::string Window;
    std::string Transacao;
    std::string Sistema;
    std::string Job;
    std::string Programa;
    bool GCI = false;
    bool Java = false;
    CamposTransacao Entrada;
    CamposTransacao Saida;

    std::string sWindow() const override { return Window; }
    void DefinesWindow(const std::string &valor) override { Window = valor; }
    std::string sTransacao() const override { return Transacao; }
    void DefinesTransacao(const std::string &valor) override { Transacao = valor; }
    std::string sSistema() const override { return Sistema; }
    void DefinesSistema(const std::string &valor) override { Sistema = valor; }
    std::string sJob() const override { return Job; }
    void DefinesJob(const std::string &valor) override { Job = valor; }
    std::string sPrograma() const override { return Programa; }
    void DefinesPrograma(const std::string &valor) override { Programa = valor; }
    bool bGCI() const override { return GCI; }
    void DefinebGCI(bool valor) override { GCI = valor; }
    bool SisJava() const override { return Java; }
    void DefineSisJava(bool valor) override { Java = valor; }
    CamposTransacao Cin() const override { return Entrada; }
    void DefineCin(const CamposTransacao &valor) override { Entrada = valor; }
    CamposTransacao Cout() const override { return Saida; }
    void DefineCout(const CamposTransacao &valor) override { Saida = valor; }
};
