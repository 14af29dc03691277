#include "host/ISessao.h"
#include "windows/automation/Tardio.h"
#include "windows/host/OuAusente.h"
#include "windows/host/Remotos.h"

namespace nativo {
namespace {

class MTMRemoto : public Remoto<IobjMTM> {
  public:
    using Remoto::Remoto;

    Ref<IQMR> CreateQMR() override { return Tardio(*this).Chama<Ref<IQMR>>("CreateQMR"); }
    std::string ClienteLogado() override { return Tardio(*this).Chama<std::string>("ClienteLogado"); }
    std::string SetorLogado() override { return Tardio(*this).Chama<std::string>("SetorLogado"); }
    Ref<IGateway> ObtemGateway() override { return Tardio(*this).Chama<Ref<IGateway>>("ObtemGateway"); }
    Ref<IWebComm> CWebComm() override { return Tardio(*this).Chama<Ref<IWebComm>>("CWebComm"); }
    bool EnviaTransacao1(Ref<ITransacao> &oTrans, bool &b1) override
    {
        return Tardio(*this).Chama<bool>("EnviaTransacao1", PorRef(oTrans), PorRef(b1));
    }
    bool EnviaTransacao2(Ref<ITransacao> &oTrans, bool &b1) override
    {
        return Tardio(*this).Chama<bool>("EnviaTransacao2", PorRef(oTrans), PorRef(b1));
    }
    bool EnviaTransacaoH90(Ref<ITransacao> &oTrans, bool &b1, bool &b3) override
    {
        return Tardio(*this).Chama<bool>("EnviaTransacaoH90", PorRef(oTrans), PorRef(b1), PorRef(b3));
    }
    std::int16_t EnviaRajada1(Ref<ITransacao> &oTrans, bool &b1) override
    {
        return Tardio(*this).Chama<std::int16_t>("EnviaRajada1", PorRef(oTrans), PorRef(b1));
    }
    std::int16_t EnviaRajada2(Ref<ITransacao> &oTrans, std::vector<std::string> &aDados) override
    {
        return Tardio(*this).Chama<std::int16_t>("EnviaRajada2", PorRef(oTrans), PorRef(aDados));
    }
    bool EnviaRajadaH90(Ref<ITransacao> &oTrans, std::vector<std::string> &aDados, bool &b2) override
    {
        return Tardio(*this).Chama<bool>("EnviaRajadaH90", PorRef(oTrans), PorRef(aDados), PorRef(b2));
    }
};

class SCARemoto : public Remoto<IobjSCA> {
  public:
    using Remoto::Remoto;

    bool Logado() override { return Tardio(*this).Chama<bool>("Logado"); }
    bool PossuiPerm2(const std::string &sistema, const std::string &objeto, const std::string &acao) override
    {
        return Tardio(*this).Chama<bool>("PossuiPerm2", sistema, objeto, acao);
    }
};

class QMRRemoto : public Remoto<IQMR> {
  public:
    using Remoto::Remoto;

    Ref<ITrataBD> CreateNewTrataBD() override { return Tardio(*this).Chama<Ref<ITrataBD>>("CreateNewTrataBD"); }
    Ref<IobjMTM> Sessao() override { return Tardio(*this).Chama<Ref<IobjMTM>>("Sessao"); }
};

class TrataBDRemoto : public Remoto<ITrataBD> {
  public:
    using Remoto::Remoto;

    Ref<IQMR> pQMR() override { return Tardio(*this).Chama<Ref<IQMR>>("pQMR"); }
    Ref<IMDB> AbreZTBanco(std::int16_t banco) override { return Tardio(*this).Chama<Ref<IMDB>>("AbreZTBanco", banco); }
    Ref<ICFisJur> CreateCFisJur() override { return Tardio(*this).Chama<Ref<ICFisJur>>("CreateCFisJur"); }
    Ref<ICEndereco> CreateCEndereco() override { return Tardio(*this).Chama<Ref<ICEndereco>>("CreateCEndereco"); }
    Ref<ICVeiGen> CreateCVeiGen() override { return Tardio(*this).Chama<Ref<ICVeiGen>>("CreateCVeiGen"); }
    void InicializaInfoSistema(const std::string &sistema, std::int16_t versao) override
    {
        Tardio(*this).Chama("InicializaInfoSistema", sistema, versao);
    }
    void TabelaAlterada(const std::string &tabela, bool alterada, bool reservado, const Valor &ausente1,
                        const Valor &ausente2) override
    {
        Tardio(*this).Chama("TabelaAlterada", tabela, alterada, reservado, OuAusente(ausente1), OuAusente(ausente2));
    }
};

class SoapRemoto : public Remoto<IObjetoSoap> {
  public:
    using Remoto::Remoto;

    bool Metodo(const Ref<::Objeto> &contexto, const std::string &metodo, const std::string &sistema) override
    {
        return Tardio(*this).Chama<bool>("Metodo", contexto, metodo, sistema);
    }
    Valor Resultado() override { return Tardio(*this).Chama<Valor>("Resultado"); }
};

class WebCommRemoto : public Remoto<IWebComm> {
  public:
    using Remoto::Remoto;

    Ref<IObjetoSoap> CriaObjetoSoap(const std::string &servico, const std::string &componente) override
    {
        return Tardio(*this).Chama<Ref<IObjetoSoap>>("CriaObjetoSoap", servico, componente);
    }
};

// Kept by the shell, which calls nothing of them.
template <class Contrato> class Guardado : public Remoto<Contrato> {
  public:
    using Remoto<Contrato>::Remoto;
};

} // namespace

void RegistraSessaoRemota()
{
    RegistraRemoto<IobjMTM, MTMRemoto>();
    RegistraRemoto<IobjSCA, SCARemoto>();
    RegistraRemoto<IQMR, QMRRemoto>();
    RegistraRemoto<ITrataBD, TrataBDRemoto>();
    RegistraRemoto<IObjetoSoap, SoapRemoto>();
    RegistraRemoto<IWebComm, WebCommRemoto>();
    RegistraRemoto<ICFisJur, Guardado<ICFisJur>>();
    RegistraRemoto<ICEndereco, Guardado<ICEndereco>>();
    RegistraRemoto<ICVeiGen, Guardado<ICVeiGen>>();
}

} // namespace nativo
