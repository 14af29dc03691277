#include "desk/host/SessaoMesa.h"

#include "host/Conversoes.h"

namespace mesa {

namespace {

constexpr std::int16_t BancoDoModulo = 99;
constexpr std::int32_t OperacaoIndisponivel = 445;

[[noreturn]] void SemSistemaCentral()
{
    throw Falha(OperacaoIndisponivel, "SessaoMesa", "O sistema central não está disponível nesta instalação.");
}

class ProxyMesa : public IProxyRN {
  public:
    ProxyMesa(Ref<SessaoServico> servico, std::string classeRN, MostraRecusa mostraRecusa,
              ViuEquipamento viuEquipamento)
        : m_Servico(std::move(servico)),
          m_ClasseRN(std::move(classeRN)),
          m_MostraRecusa(std::move(mostraRecusa)),
          m_ViuEquipamento(std::move(viuEquipamento))
    {
    }
    std::string_view NomeTipo() const override { return "ProxyRN"; }

    Valor ObtemRetorno() override { return m_Retorno; }
    void MostraErro() override { m_MostraRecusa(m_Recusa); }
    bool ExecutaMetodo(Ref<Objeto> &, std::string &sMetodo, std::vector<Valor> &aParam) override
    {
        if (aParam.size() != 1) {
            throw Falha(NumeroFalha::ArgumentoInvalido);
        }
        Ref<Objeto> pedido = aParam[0].ComoObjeto();
        const bool sucesso = m_Servico->Executa(m_ClasseRN, sMetodo, pedido, m_Retorno, m_Recusa);
        aParam[0].Substitui(pedido);
        // Whatever window it was, an equipment is opened by one operation and comes to be by another.
        if (sucesso && m_ClasseRN == "EquiptoRN" && (sMetodo == "consulta" || sMetodo == "inclui")) {
            m_ViuEquipamento(m_Retorno.Como<EquiptoED>()->NroIntEquip);
        }
        return sucesso;
    }

  private:
    Ref<SessaoServico> m_Servico;
    std::string m_ClasseRN;
    MostraRecusa m_MostraRecusa;
    ViuEquipamento m_ViuEquipamento;
    Valor m_Retorno;
    std::string m_Recusa;
};

class GatewayMesa : public IGateway {
  public:
    GatewayMesa(Ref<SessaoServico> servico, MostraRecusa mostraRecusa, ViuEquipamento viuEquipamento)
        : m_Servico(std::move(servico)),
          m_MostraRecusa(std::move(mostraRecusa)),
          m_ViuEquipamento(std::move(viuEquipamento))
    {
    }
    std::string_view NomeTipo() const override { return "Gateway"; }

    Ref<IProxyRN> CriaObjetoRN(const std::string &sSistema, const std::string &sClasseRN,
                               const std::string &sBiblioteca, const std::string &) override
    {
        if (sSistema != "VOR" || sBiblioteca != "ZTVORLIB" ||
            (sClasseRN != "EquiptoRN" && sClasseRN != "RelatorioRN")) {
            throw Falha(NumeroFalha::ClasseInexistente);
        }
        return Novo<ProxyMesa>(m_Servico, sClasseRN, m_MostraRecusa, m_ViuEquipamento);
    }

  private:
    Ref<SessaoServico> m_Servico;
    MostraRecusa m_MostraRecusa;
    ViuEquipamento m_ViuEquipamento;
};

class CFisJurMesa : public ICFisJur {
  public:
    std::string_view NomeTipo() const override { return "CFisJur"; }
};

class CEnderecoMesa : public ICEndereco {
  public:
    std::string_view NomeTipo() const override { return "CEndereco"; }
};

class CVeiGenMesa : public ICVeiGen {
  public:
    std::string_view NomeTipo() const override { return "CVeiGen"; }
};

class QMRMesa : public IQMR {
  public:
    explicit QMRMesa(Ref<SessaoMesa> sessao) : m_Sessao(std::move(sessao)) {}
    std::string_view NomeTipo() const override { return "QMR"; }

    Ref<ITrataBD> CreateNewTrataBD() override;
    Ref<IobjMTM> Sessao() override { return m_Sessao; }

  private:
    Ref<SessaoMesa> m_Sessao;
};

class TrataBDMesa : public ITrataBD {
  public:
    explicit TrataBDMesa(Ref<SessaoMesa> sessao) : m_Sessao(std::move(sessao)) {}
    std::string_view NomeTipo() const override { return "TrataBD"; }

    Ref<IQMR> pQMR() override { return Novo<QMRMesa>(m_Sessao); }
    Ref<IMDB> AbreZTBanco(std::int16_t banco) override
    {
        if (banco != BancoDoModulo) {
            throw Falha(NumeroFalha::ArgumentoInvalido);
        }
        return m_Sessao->AbreBancoLocal();
    }
    Ref<ICFisJur> CreateCFisJur() override { return Novo<CFisJurMesa>(); }
    Ref<ICEndereco> CreateCEndereco() override { return Novo<CEnderecoMesa>(); }
    Ref<ICVeiGen> CreateCVeiGen() override { return Novo<CVeiGenMesa>(); }
    void InicializaInfoSistema(const std::string &, std::int16_t) override {
    } // one module, one dictionary: nothing to set up
    void TabelaAlterada(const std::string &tabela, bool, bool, const Valor &, const Valor &) override
    {
        if (tabela == "VOREQUIPTO") {
            m_Sessao->RenovaReplica();
        }
    }

  private:
    Ref<SessaoMesa> m_Sessao;
};

Ref<ITrataBD> QMRMesa::CreateNewTrataBD()
{
    return Novo<TrataBDMesa>(m_Sessao);
}

// The web service that tells of which moment the local replica is.
class SoapMesa : public IObjetoSoap {
  public:
    SoapMesa(Ref<BancoLocalMesa> bancoLocal, std::string servico)
        : m_BancoLocal(std::move(bancoLocal)),
          m_Servico(std::move(servico))
    {
    }
    std::string_view NomeTipo() const override { return "ObjetoSoap"; }

    bool Metodo(const Ref<Objeto> &, const std::string &metodo, const std::string &sistema) override
    {
        if (m_Servico != "ConsGen" || metodo != "consultaDataUltimaReplica" || sistema != "VOR" ||
            m_BancoLocal->DataDaReplica().Vazia() || m_BancoLocal->Atrasada()) {
            return false;
        }
        m_Resultado = CStr(m_BancoLocal->DataDaReplica());
        return true;
    }
    Valor Resultado() override { return m_Resultado; }

  private:
    Ref<BancoLocalMesa> m_BancoLocal;
    std::string m_Servico;
    Valor m_Resultado;
};

class WebCommMesa : public IWebComm {
  public:
    explicit WebCommMesa(Ref<BancoLocalMesa> bancoLocal) : m_BancoLocal(std::move(bancoLocal)) {}
    std::string_view NomeTipo() const override { return "WebComm"; }

    Ref<IObjetoSoap> CriaObjetoSoap(const std::string &servico, const std::string &) override
    {
        return Novo<SoapMesa>(m_BancoLocal, servico);
    }

  private:
    Ref<BancoLocalMesa> m_BancoLocal;
};

} // namespace

SessaoMesa::SessaoMesa(Ref<SessaoServico> servico, Ref<BancoLocalMesa> bancoLocal, MostraRecusa mostraRecusa,
                       ViuEquipamento viuEquipamento)
    : m_Servico(std::move(servico)),
      m_BancoLocal(std::move(bancoLocal)),
      m_MostraRecusa(std::move(mostraRecusa)),
      m_ViuEquipamento(std::move(viuEquipamento))
{
}

Ref<IMDB> SessaoMesa::AbreBancoLocal()
{
    if (m_BancoLocal->Atrasada()) {
        try {
            m_BancoLocal->AtualizaReplica(*m_Servico, /*cancelavel=*/true);
        } catch (const Falha &) {
            // The old one is read, as the person was told.
        }
    }
    return m_BancoLocal->Abre();
}

void SessaoMesa::RenovaReplica()
{
    try {
        m_BancoLocal->AtualizaReplica(*m_Servico, /*cancelavel=*/true);
    } catch (const Falha &falha) {
        m_MostraRecusa(
            "O que foi pedido está gravado, mas a cópia local, que as consultas leem, não pôde ser renovada; "
            "será, na próxima consulta. " +
            falha.Descricao);
    }
}

Ref<IQMR> SessaoMesa::CreateQMR()
{
    return Novo<QMRMesa>(Eu(*this));
}

Ref<IGateway> SessaoMesa::ObtemGateway()
{
    return Novo<GatewayMesa>(m_Servico, m_MostraRecusa, m_ViuEquipamento);
}

Ref<IWebComm> SessaoMesa::CWebComm()
{
    return Novo<WebCommMesa>(m_BancoLocal);
}

bool SessaoMesa::EnviaTransacao1(Ref<ITransacao> &, bool &)
{
    SemSistemaCentral();
}

bool SessaoMesa::EnviaTransacao2(Ref<ITransacao> &, bool &)
{
    SemSistemaCentral();
}

bool SessaoMesa::EnviaTransacaoH90(Ref<ITransacao> &, bool &, bool &)
{
    SemSistemaCentral();
}

std::int16_t SessaoMesa::EnviaRajada1(Ref<ITransacao> &, bool &)
{
    SemSistemaCentral();
}

std::int16_t SessaoMesa::EnviaRajada2(Ref<ITransacao> &, std::vector<std::string> &)
{
    SemSistemaCentral();
}

bool SessaoMesa::EnviaRajadaH90(Ref<ITransacao> &, std::vector<std::string> &, bool &)
{
    SemSistemaCentral();
}

} // namespace mesa
