#include "rede/ServicosRemotos.h"

#include "rede/Certificado.h"
#include "rede/Mensagens.h"
#include "rede/SessaoRemota.h"

#include <memory>
#include <utility>

namespace rede {

namespace {

namespace v1 = registro::v1;

constexpr const char *SoLa = "Isso só se faz na própria máquina do registro, por quem cuida do servidor.";

[[noreturn]] void Falhou(const char *onde, const std::string &frase)
{
    throw Falha(NumeroFalha::ErroDeAcesso, std::string("Rede < Servicos.") + onde, frase);
}

std::string Versoes(const Contratos &contratos)
{
    return contratos.Minimo == contratos.Ultimo
               ? "a versão " + std::to_string(contratos.Ultimo)
               : "as versões " + std::to_string(contratos.Minimo) + " a " + std::to_string(contratos.Ultimo);
}

class ServicosRemotos : public mesa::Servicos {
  public:
    ServicosRemotos(const Endereco &endereco, const Confianca &confianca, std::string programa, Insistencia insistencia,
                    const Contratos &falo)
        : m_Linha(std::make_shared<Linha>(endereco, confianca, std::move(insistencia))),
          m_Programa(std::move(programa)),
          m_Falo(falo)
    {
        m_Servidor = Apresenta("Conecta");
    }

    Ref<mesa::SessaoServico> Entra(const std::string &usuario, const mesa::Segredo &senha, const std::string &estacao,
                                   std::string &recusa, std::int32_t &espera) override
    try {
        recusa.clear();
        espera = 0;
        // The server may be another version by now, or of another registry.
        v1::Servidor servidor = Apresenta("Entra");
        if (servidor.registro() != m_Servidor.registro()) {
            Falhou("Entra", "O servidor " + m_Linha->Onde().Texto() +
                                " agora é de outro registro. Feche esta janela e escolha o servidor de novo.");
        }
        m_Servidor = std::move(servidor);
        v1::PedidoDeEntrada pedido;
        pedido.set_usuario(usuario);
        pedido.set_estacao(estacao);
        pedido.set_contrato(m_Contrato);
        PoeSegredo(senha, *pedido.mutable_senha());
        v1::Sessao sessao;
        if (!Chama("Entra", "Entra", pedido, sessao, Efeito::Conta, recusa)) {
            return nullptr;
        }
        recusa = sessao.recusa();
        espera = sessao.espera();
        if (!recusa.empty()) {
            return nullptr;
        }
        return Novo<SessaoRemota>(m_Linha, m_Numeros, sessao);
    } catch (const MensagemInvalida &invalida) {
        recusa = invalida.what();
        return nullptr;
    }

    // The server's settings say.
    void ExigeMotivo(bool) override {}

    bool PrimeiroAdministrador(const mesa::ClienteCadastrado &, const mesa::Operador &, const mesa::Segredo &,
                               std::string &recusa) override
    {
        recusa = SoLa;
        return false;
    }
    void CadastraUsuario(const mesa::Operador &, const mesa::Segredo &, const std::vector<std::string> &,
                         const std::vector<std::string> &) override
    {
        Falhou("CadastraUsuario", SoLa);
    }
    void CadastraCliente(const mesa::ClienteCadastrado &) override { Falhou("CadastraCliente", SoLa); }
    // Whoever looks after the server sees to its first user.
    bool Vazio() override { return false; }

    const std::string &SomenteLeitura() const override { return m_Servidor.somenteconsulta(); }
    mesa::TipoDeRegistro Tipo() const override
    {
        return m_Servidor.amostra() ? mesa::TipoDeRegistro::Amostra : mesa::TipoDeRegistro::Registro;
    }
    std::string Identificador() const override { return m_Servidor.registro(); }

  private:
    // False with the reason when it was refused.
    bool Chama(const char *onde, const std::string &metodo, google::protobuf::Message &pedido,
               google::protobuf::Message &resposta, Efeito efeito, std::string &recusa)
    {
        const Desfecho desfecho = m_Linha->Chama("Entrada", metodo, pedido, resposta, {}, efeito, {});
        if (desfecho.Como == Desfecho::Modo::Recusado) {
            recusa = desfecho.Frase;
            return false;
        }
        if (desfecho.Como == Desfecho::Modo::Cancelado) {
            recusa = "A espera pelo servidor " + m_Linha->Onde().Texto() + " foi cancelada.";
            return false;
        }
        if (desfecho.Como != Desfecho::Modo::Feito) {
            Falhou(onde, desfecho.Frase);
        }
        ConfereMensagem(resposta);
        return true;
    }

    v1::Servidor Apresenta(const char *onde)
    try {
        v1::Apresentacao pedido;
        pedido.set_contrato(m_Falo.Ultimo);
        pedido.set_contratominimo(m_Falo.Minimo);
        pedido.set_programa(m_Programa);
        v1::Servidor servidor;
        std::string recusa;
        if (!Chama(onde, "Apresenta", pedido, servidor, Efeito::Nenhum, recusa)) {
            Falhou(onde, recusa);
        }
        const Contratos fala{servidor.contratominimo(), servidor.contrato()};
        const auto comum = m_Falo.EmComum(fala);
        if (!comum) {
            Falhou(onde, "O servidor " + m_Linha->Onde().Texto() + " fala " + Versoes(fala) +
                             " do contrato, e este programa fala " + Versoes(m_Falo) + ". Atualize " +
                             (fala.Ultimo < m_Falo.Minimo ? "o servidor." : "este programa."));
        }
        m_Contrato = *comum;
        return servidor;
    } catch (const MensagemInvalida &) {
        Falhou(onde, "Quem responde em " + m_Linha->Onde().Texto() + " não é um servidor do registro.");
    }

    std::shared_ptr<Linha> m_Linha;
    std::string m_Programa;
    Contratos m_Falo;
    std::int32_t m_Contrato = 0; // that both speak
    std::shared_ptr<NumerosEmAberto> m_Numeros = std::make_shared<NumerosEmAberto>();
    v1::Servidor m_Servidor;
};

} // namespace

std::string DigitalDoServidor(const Endereco &endereco, std::chrono::milliseconds prazo, const mesa::Segue &segue)
try {
    return Certificado::De(endereco, "", prazo, segue).Digital;
} catch (const SemTls &porque) {
    if (endereco.DestaMaquina()) {
        return "";
    }
    Falhou("DigitalDoServidor", "Não se chegou ao servidor " + endereco.Texto() + ": " + porque.what() + ".");
} catch (const SemServidor &porque) {
    Falhou("DigitalDoServidor", "Não se chegou ao servidor " + endereco.Texto() + ": " + porque.what() + ".");
}

Ref<mesa::Servicos> Conecta(const Endereco &endereco, const Confianca &confianca, const std::string &programa,
                            Insistencia insistencia, const Contratos &falo)
{
    return Novo<ServicosRemotos>(endereco, confianca, programa, std::move(insistencia), falo);
}

} // namespace rede
