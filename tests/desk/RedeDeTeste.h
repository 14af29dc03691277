#pragma once

#include "desk/host/ILigacao.h"
#include "rede/ServicosRemotos.h"
#include "services/Servicos.h"

#include <deque>
#include <string>
#include <utility>

// Services as those over a network, in front of others: what comes between is arranged for each operation to come.
class RedeDeTeste : public mesa::Servicos {
  public:
    enum class Acaso {
        Terminou, // there is no such session any more
        SemVolta, // done, but the answer is lost; asked again, it is answered as the first time
        Calado,   // no answer, and nothing done; the person is asked whether it is tried again
        Demora    // goes on until somebody gives it up
    };

    // ligacao: outlives this object.
    RedeDeTeste(mesa::Servicos &delas, mesa::ILigacao &ligacao) : m_Delas(delas), m_Ligacao(ligacao) {}
    std::string_view NomeTipo() const override { return "RedeDeTeste"; }

    std::deque<Acaso> Acasos;
    int Feitas = 0;          // operations that got through
    int ReplicasCaladas = 0; // replicas to come that are not answered

    Ref<mesa::SessaoServico> Entra(const std::string &usuario, const mesa::Segredo &senha, const std::string &estacao,
                                   std::string &recusa, std::int32_t &espera) override
    {
        const auto dela = m_Delas.Entra(usuario, senha, estacao, recusa, espera);
        return dela ? Novo<Sessao>(dela, *this) : Ref<mesa::SessaoServico>();
    }
    void ExigeMotivo(bool exige) override { m_Delas.ExigeMotivo(exige); }
    bool PrimeiroAdministrador(const mesa::ClienteCadastrado &, const mesa::Operador &, const mesa::Segredo &,
                               std::string &) override
    {
        return false;
    }
    void CadastraUsuario(const mesa::Operador &, const mesa::Segredo &, const std::vector<std::string> &,
                         const std::vector<std::string> &) override
    {
    }
    void CadastraCliente(const mesa::ClienteCadastrado &) override {}
    bool Vazio() override { return false; }
    const std::string &SomenteLeitura() const override { return m_Delas.SomenteLeitura(); }
    mesa::TipoDeRegistro Tipo() const override { return m_Delas.Tipo(); }
    std::string Identificador() const override { return m_Delas.Identificador(); }

  private:
    class Sessao : public mesa::SessaoServico {
      public:
        Sessao(Ref<mesa::SessaoServico> dela, RedeDeTeste &rede) : m_Dela(std::move(dela)), m_Rede(rede) {}
        std::string_view NomeTipo() const override { return "Sessao"; }

        const mesa::Operador &Operador() const override { return m_Dela->Operador(); }
        bool DeveTrocarSenha() override { return m_Dela->DeveTrocarSenha(); }
        std::string AvisoDeRelogio() const override { return m_Dela->AvisoDeRelogio(); }
        bool TemPermissao(const std::string &sistema, const std::string &objeto, const std::string &acao) override
        {
            return m_Dela->TemPermissao(sistema, objeto, acao);
        }
        bool Executa(const std::string &classeRN, const std::string &metodo, Ref<Objeto> &pedido, Valor &retorno,
                     std::string &recusa) override
        {
            while (!m_Rede.Acasos.empty()) {
                const Acaso acaso = m_Rede.Acasos.front();
                m_Rede.Acasos.pop_front();
                if (acaso == Acaso::Terminou) {
                    throw rede::SessaoEncerrada("A sessão com o servidor terminou.");
                }
                if (acaso == Acaso::Demora) {
                    while (m_Segue(0, "Esperando o servidor")) {
                    }
                    recusa = "A operação foi cancelada: nada foi gravado.";
                    return false;
                }
                bool feita = false;
                if (acaso == Acaso::SemVolta) {
                    feita = m_Dela->Executa(classeRN, metodo, pedido, retorno, recusa);
                    ++m_Rede.Feitas;
                }
                if (!m_Rede.m_Ligacao.TentaDeNovo("O servidor não respondeu.")) {
                    throw Falha(NumeroFalha::ErroDeAcesso, "Rede", "O servidor não respondeu.");
                }
                if (acaso == Acaso::SemVolta) {
                    return feita; // by the operation's number
                }
            }
            ++m_Rede.Feitas;
            return m_Dela->Executa(classeRN, metodo, pedido, retorno, recusa);
        }
        void PerguntaMotivo(mesa::PerguntaDeMotivo pergunta) override { m_Dela->PerguntaMotivo(std::move(pergunta)); }
        void Acompanha(mesa::Segue segue) override
        {
            m_Segue = segue;
            m_Dela->Acompanha(std::move(segue));
        }
        bool GuardaDocumento(const Bytes &bytes, double &numero, std::string &recusa) override
        {
            return m_Dela->GuardaDocumento(bytes, numero, recusa);
        }
        bool LeDocumento(double numero, Bytes &bytes, std::string &recusa) override
        {
            return m_Dela->LeDocumento(numero, bytes, recusa);
        }
        std::vector<mesa::AfericaoComDocumento> AfericoesDoDocumento(double numero) override
        {
            return m_Dela->AfericoesDoDocumento(numero);
        }
        std::vector<mesa::AfericaoComDocumento> AfericoesDoDocumentoDa(double numero) override
        {
            return m_Dela->AfericoesDoDocumentoDa(numero);
        }
        bool VersoesDaAfericao(double numero, std::vector<mesa::VersaoAfericao> &versoes, std::string &recusa) override
        {
            return m_Dela->VersoesDaAfericao(numero, versoes, recusa);
        }
        bool ComoConhecido(std::int32_t numero, const mesa::Instante &quando, mesa::EquipamentoConhecido &conhecido,
                           std::string &recusa) override
        {
            return m_Dela->ComoConhecido(numero, quando, conhecido, recusa);
        }
        std::vector<mesa::ClienteCadastrado> Clientes() override { return m_Dela->Clientes(); }
        mesa::Replicado LeReplica(std::int64_t depoisDe,
                                  const std::function<void(const mesa::LinhaReplica &)> &cadaLinha) override
        {
            while (m_Rede.ReplicasCaladas > 0) {
                --m_Rede.ReplicasCaladas;
                if (!m_Rede.m_Ligacao.TentaDeNovo("O servidor não respondeu.")) {
                    throw Falha(NumeroFalha::ErroDeAcesso, "Rede", "O servidor não respondeu.");
                }
            }
            return m_Dela->LeReplica(depoisDe, cadaLinha);
        }

      private:
        Ref<mesa::SessaoServico> m_Dela;
        RedeDeTeste &m_Rede;
        mesa::Segue m_Segue;
    };

    mesa::Servicos &m_Delas;
    mesa::ILigacao &m_Ligacao;
};
