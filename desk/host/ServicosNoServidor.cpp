#include "desk/host/ServicosNoServidor.h"

#include "rede/ServicosRemotos.h"
#include "rede/SessaoDeServidor.h"

#include <optional>
#include <type_traits>
#include <utility>

namespace mesa {

namespace {

class SessaoNoServidor : public rede::SessaoDeServidor {
  public:
    SessaoNoServidor(Ref<SessaoServico> dela, ILigacao &ligacao) : m_Dela(std::move(dela)), m_Ligacao(ligacao) {}
    std::string_view NomeTipo() const override { return "SessaoNoServidor"; }

    const mesa::Operador &Operador() const override { return m_Dela->Operador(); }
    bool DeveTrocarSenha() override
    {
        return Chama([](SessaoServico &sessao) { return sessao.DeveTrocarSenha(); });
    }
    std::string AvisoDeRelogio() const override { return m_Dela->AvisoDeRelogio(); }
    bool TemPermissao(const std::string &sistema, const std::string &objeto, const std::string &acao) override
    {
        return Chama([&](SessaoServico &sessao) { return sessao.TemPermissao(sistema, objeto, acao); });
    }
    bool Executa(const std::string &classeRN, const std::string &metodo, Ref<Objeto> &pedido, Valor &retorno,
                 std::string &recusa) override
    {
        return Chama([&](SessaoServico &sessao) { return sessao.Executa(classeRN, metodo, pedido, retorno, recusa); });
    }
    void PerguntaMotivo(PerguntaDeMotivo pergunta) override
    {
        m_Pergunta = std::move(pergunta);
        m_Dela->PerguntaMotivo(m_Pergunta);
    }
    void Acompanha(Segue segue) override
    {
        m_Segue = std::move(segue);
        m_Dela->Acompanha(m_Segue);
    }
    bool GuardaDocumento(const Bytes &bytes, double &numero, std::string &recusa) override
    {
        return Chama([&](SessaoServico &sessao) { return sessao.GuardaDocumento(bytes, numero, recusa); });
    }
    bool LeDocumento(double numero, Bytes &bytes, std::string &recusa) override
    {
        return Chama([&](SessaoServico &sessao) { return sessao.LeDocumento(numero, bytes, recusa); });
    }
    std::vector<AfericaoComDocumento> AfericoesDoDocumento(double numero) override
    {
        return Chama([&](SessaoServico &sessao) { return sessao.AfericoesDoDocumento(numero); });
    }
    std::vector<AfericaoComDocumento> AfericoesDoDocumentoDa(double nroIntAfericao) override
    {
        return Chama([&](SessaoServico &sessao) { return sessao.AfericoesDoDocumentoDa(nroIntAfericao); });
    }
    bool VersoesDaAfericao(double nroIntAfericao, std::vector<VersaoAfericao> &versoes, std::string &recusa) override
    {
        return Chama([&](SessaoServico &sessao) { return sessao.VersoesDaAfericao(nroIntAfericao, versoes, recusa); });
    }
    bool ComoConhecido(std::int32_t nroIntEquip, const Instante &quando, EquipamentoConhecido &conhecido,
                       std::string &recusa) override
    {
        return Chama(
            [&](SessaoServico &sessao) { return sessao.ComoConhecido(nroIntEquip, quando, conhecido, recusa); });
    }
    std::vector<ClienteCadastrado> Clientes() override
    {
        return Chama([](SessaoServico &sessao) { return sessao.Clientes(); });
    }
    Replicado LeReplica(std::int64_t depoisDe, const std::function<void(const LinhaReplica &)> &cadaLinha) override
    {
        return Chama([&](SessaoServico &sessao) { return sessao.LeReplica(depoisDe, cadaLinha); });
    }
    Conferencia PreparaConferencia(const std::optional<CabecaAssinada> &desde) override
    {
        return Chama([&](SessaoServico &sessao) { return DeServidor(sessao).PreparaConferencia(desde); });
    }
    CabecaAssinada Cabeca() override
    {
        return Chama([](SessaoServico &sessao) { return DeServidor(sessao).Cabeca(); });
    }

  private:
    static rede::SessaoDeServidor &DeServidor(SessaoServico &sessao)
    {
        return dynamic_cast<rede::SessaoDeServidor &>(sessao);
    }
    // The call, until its session is one. Who follows what is done is not shown the wait besides.
    template <class F> std::invoke_result_t<const F &, SessaoServico &> Chama(const F &chama)
    {
        for (;;) {
            const Ref<SessaoServico> dela = m_Dela;
            try {
                std::optional<std::invoke_result_t<const F &, SessaoServico &>> resposta;
                if (m_Segue) {
                    resposta = chama(*dela);
                } else {
                    m_Ligacao.Espera([&](const Segue &segue) {
                        const Acompanhamento acompanhamento(*dela, segue);
                        resposta = chama(*dela);
                    });
                }
                m_Ligacao.Respondeu();
                return std::move(*resposta);
            } catch (const rede::SessaoEncerrada &fim) {
                const Ref<SessaoServico> nova = m_Ligacao.EntraDeNovo(dela->Operador(), fim.Descricao);
                if (nova.Nada()) {
                    throw;
                }
                m_Dela = nova;
                m_Dela->PerguntaMotivo(m_Pergunta);
                m_Dela->Acompanha(m_Segue);
            }
        }
    }

    Ref<SessaoServico> m_Dela;
    ILigacao &m_Ligacao;
    PerguntaDeMotivo m_Pergunta;
    Segue m_Segue;
};

} // namespace

ServicosNoServidor::ServicosNoServidor(Ref<Servicos> delas, ILigacao &ligacao)
    : m_Delas(std::move(delas)),
      m_Ligacao(ligacao)
{
}

Ref<SessaoServico> ServicosNoServidor::Entra(const std::string &usuario, const Segredo &senha,
                                             const std::string &estacao, std::string &recusa, std::int32_t &espera)
{
    const Ref<SessaoServico> dela = m_Delas->Entra(usuario, senha, estacao, recusa, espera);
    m_Ligacao.Respondeu();
    return dela ? Novo<SessaoNoServidor>(dela, m_Ligacao) : Ref<SessaoServico>();
}

} // namespace mesa
