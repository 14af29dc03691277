#include "tests/support/SessaoRoteirizada.h"

#include <algorithm>
#include <utility>

namespace {

class CFisJur : public ICFisJur {
  public:
    std::string_view NomeTipo() const override { return "CFisJur"; }
};

class CEndereco : public ICEndereco {
  public:
    std::string_view NomeTipo() const override { return "CEndereco"; }
};

class CVeiGen : public ICVeiGen {
  public:
    std::string_view NomeTipo() const override { return "CVeiGen"; }
};

class QMR : public IQMR {
  public:
    QMR(RefRegistro registro, const Ref<SessaoRoteirizada> &sessao) : m_Registro(std::move(registro)), m_Sessao(sessao)
    {
    }

    std::string_view NomeTipo() const override { return "QMR"; }

    Ref<ITrataBD> CreateNewTrataBD() override
    {
        m_Registro->Chama("QMR.CreateNewTrataBD");
        return m_Sessao->NovoTrataBD();
    }

    Ref<IobjMTM> Sessao() override
    {
        m_Registro->Chama("QMR.Sessao");
        return m_Sessao.Alvo();
    }

  private:
    RefRegistro m_Registro;
    RefFraca<SessaoRoteirizada> m_Sessao;
};

class TrataBD : public ITrataBD {
  public:
    TrataBD(RefRegistro registro, const Ref<SessaoRoteirizada> &sessao)
        : m_Registro(std::move(registro)),
          m_Sessao(sessao)
    {
    }

    std::string_view NomeTipo() const override { return "TrataBD"; }

    Ref<IQMR> pQMR() override
    {
        m_Registro->Chama("TrataBD.pQMR");
        return m_Sessao->NovoQMR();
    }

    Ref<IMDB> AbreZTBanco(std::int16_t banco) override
    {
        m_Registro->Chama("TrataBD.AbreZTBanco", banco);
        return m_Sessao->AbreBanco ? m_Sessao->Banco() : nullptr;
    }

    Ref<ICFisJur> CreateCFisJur() override
    {
        m_Registro->Chama("TrataBD.CreateCFisJur");
        return m_Registro->Vigia(Ref<ICFisJur>(Novo<CFisJur>()));
    }

    Ref<ICEndereco> CreateCEndereco() override
    {
        m_Registro->Chama("TrataBD.CreateCEndereco");
        return m_Registro->Vigia(Ref<ICEndereco>(Novo<CEndereco>()));
    }

    Ref<ICVeiGen> CreateCVeiGen() override
    {
        m_Registro->Chama("TrataBD.CreateCVeiGen");
        return m_Registro->Vigia(Ref<ICVeiGen>(Novo<CVeiGen>()));
    }

    void InicializaInfoSistema(const std::string &sistema, std::int16_t versao) override
    {
        m_Registro->Chama("TrataBD.InicializaInfoSistema", sistema, versao);
    }

    void TabelaAlterada(const std::string &tabela, bool alterada, bool reservado, const Valor &ausente1,
                        const Valor &ausente2) override
    {
        m_Registro->Chama("TrataBD.TabelaAlterada", tabela, alterada, reservado, ausente1, ausente2);
        if (m_Sessao->AoAlterarTabela) {
            m_Sessao->AoAlterarTabela(tabela);
        }
    }

  private:
    RefRegistro m_Registro;
    RefFraca<SessaoRoteirizada> m_Sessao;
};

class ObjetoSoap : public IObjetoSoap {
  public:
    ObjetoSoap(RefRegistro registro, bool responde, Valor resultado)
        : m_Registro(std::move(registro)),
          m_Responde(responde),
          m_Resultado(std::move(resultado))
    {
    }

    std::string_view NomeTipo() const override { return "Soap"; }

    bool Metodo(const Ref<Objeto> &contexto, const std::string &metodo, const std::string &sistema) override
    {
        return m_Registro->Chama("Soap.Metodo", contexto, metodo, sistema).Resultado(m_Responde);
    }

    Valor Resultado() override { return m_Registro->Chama("Soap.Resultado").Resultado(m_Resultado); }

  private:
    RefRegistro m_Registro;
    bool m_Responde;
    Valor m_Resultado;
};

class WebComm : public IWebComm {
  public:
    WebComm(RefRegistro registro, const Ref<SessaoRoteirizada> &sessao)
        : m_Registro(std::move(registro)),
          m_Sessao(sessao)
    {
    }

    std::string_view NomeTipo() const override { return "WebComm"; }

    Ref<IObjetoSoap> CriaObjetoSoap(const std::string &servico, const std::string &componente) override
    {
        m_Registro->Chama("WebComm.CriaObjetoSoap", servico, componente);
        return m_Registro->Vigia(
            Ref<IObjetoSoap>(Novo<ObjetoSoap>(m_Registro, m_Sessao->WebResponde, m_Sessao->WebResultado)));
    }

  private:
    RefRegistro m_Registro;
    RefFraca<SessaoRoteirizada> m_Sessao;
};

} // namespace

SessaoRoteirizada::SessaoRoteirizada(RefRegistro registro, std::shared_ptr<ServicosRemotos> servicos,
                                     const Ref<IMDB> &banco)
    : m_Registro(std::move(registro)),
      m_Servicos(std::move(servicos)),
      m_Banco(banco)
{
}

Ref<IQMR> SessaoRoteirizada::CreateQMR()
{
    m_Registro->Chama("objMTM.CreateQMR");
    return NovoQMR();
}

std::string SessaoRoteirizada::ClienteLogado()
{
    return m_Registro->Chama("objMTM.ClienteLogado").Resultado(Cliente);
}

std::string SessaoRoteirizada::SetorLogado()
{
    return m_Registro->Chama("objMTM.SetorLogado").Resultado(Setor);
}

Ref<IGateway> SessaoRoteirizada::ObtemGateway()
{
    m_Registro->Chama("objMTM.ObtemGateway");
    return m_Registro->Vigia(Ref<IGateway>(Novo<GatewayRoteirizado>(m_Registro, m_Servicos)));
}

Ref<IWebComm> SessaoRoteirizada::CWebComm()
{
    m_Registro->Chama("objMTM.CWebComm");
    return m_Registro->Vigia(Ref<IWebComm>(Novo<WebComm>(m_Registro, Eu(*this))));
}

bool SessaoRoteirizada::EnviaTransacao1(Ref<ITransacao> &oTrans, bool &b1)
{
    const auto linha = m_Registro->Chama("objMTM.EnviaTransacao1", oTrans, b1);
    Envia({"EnviaTransacao1", oTrans, &b1, nullptr, nullptr, nullptr});
    return linha.Resultado(ResultadoTransacao);
}

bool SessaoRoteirizada::EnviaTransacao2(Ref<ITransacao> &oTrans, bool &b1)
{
    const auto linha = m_Registro->Chama("objMTM.EnviaTransacao2", oTrans, b1);
    Envia({"EnviaTransacao2", oTrans, &b1, nullptr, nullptr, nullptr});
    return linha.Resultado(ResultadoTransacao);
}

bool SessaoRoteirizada::EnviaTransacaoH90(Ref<ITransacao> &oTrans, bool &b1, bool &b3)
{
    const auto linha = m_Registro->Chama("objMTM.EnviaTransacaoH90", oTrans, b1, b3);
    Envia({"EnviaTransacaoH90", oTrans, &b1, nullptr, &b3, nullptr});
    return linha.Resultado(ResultadoTransacao);
}

std::int16_t SessaoRoteirizada::EnviaRajada1(Ref<ITransacao> &oTrans, bool &b1)
{
    const auto linha = m_Registro->Chama("objMTM.EnviaRajada1", oTrans, b1);
    Envia({"EnviaRajada1", oTrans, &b1, nullptr, nullptr, nullptr});
    return linha.Resultado(ResultadoRajada);
}

std::int16_t SessaoRoteirizada::EnviaRajada2(Ref<ITransacao> &oTrans, std::vector<std::string> &aDados)
{
    const auto linha = m_Registro->Chama("objMTM.EnviaRajada2", oTrans, aDados);
    Envia({"EnviaRajada2", oTrans, nullptr, nullptr, nullptr, &aDados});
    return linha.Resultado(ResultadoRajada);
}

bool SessaoRoteirizada::EnviaRajadaH90(Ref<ITransacao> &oTrans, std::vector<std::string> &aDados, bool &b2)
{
    const auto linha = m_Registro->Chama("objMTM.EnviaRajadaH90", oTrans, aDados, b2);
    Envia({"EnviaRajadaH90", oTrans, nullptr, &b2, nullptr, &aDados});
    return linha.Resultado(ResultadoTransacao);
}

Ref<IQMR> SessaoRoteirizada::NovoQMR()
{
    return m_Registro->Vigia(Ref<IQMR>(Novo<QMR>(m_Registro, Eu(*this))));
}

Ref<ITrataBD> SessaoRoteirizada::NovoTrataBD()
{
    return m_Registro->Vigia(Ref<ITrataBD>(Novo<TrataBD>(m_Registro, Eu(*this))));
}

void SessaoRoteirizada::Envia(EnvioTransacao envio) const
{
    if (AoEnviar) {
        AoEnviar(envio);
    }
}

bool AcessoRoteirizado::Logado()
{
    return m_Registro->Chama("objSCA.Logado").Resultado(UsuarioLogado);
}

bool AcessoRoteirizado::PossuiPerm2(const std::string &sistema, const std::string &objeto, const std::string &acao)
{
    const bool negada = std::find(m_Negadas.begin(), m_Negadas.end(), std::pair(objeto, acao)) != m_Negadas.end();
    return m_Registro->Chama("objSCA.PossuiPerm2", sistema, objeto, acao).Resultado(!negada);
}
