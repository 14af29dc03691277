#include "comando/Acesso.h"
#include "comando/Fim.h"
#include "comando/Json.h"
#include "comando/Subcomando.h"
#include "host/Falha.h"
#include "services/Conferidor.h"
#include "services/RelatorioDaConferencia.h"

#include <optional>
#include <ostream>

namespace comando {

namespace {

using Desfecho = mesa::ResultadoDaConferencia::Desfecho;

Json EmJson(const mesa::ResultadoDaConferencia &resultado)
{
    Json resposta = {{"inteiro", resultado.Como == Desfecho::Inteira},
                     {"frase", resultado.Frase},
                     {"problemas", resultado.Achados},
                     {"avisos", resultado.Avisos},
                     {"historico", nullptr}};
    if (resultado.Fim.Tamanho > 0) { // a server does not tell it
        resposta["historico"] = {{"entradas", resultado.Fim.Tamanho}, {"soma", resultado.Fim.Elo}};
    }
    return resposta;
}

class ComandoConfere : public Subcomando {
  public:
    std::string Nome() const override { return "confere"; }
    std::string Resumo() const override { return "Confere o registro inteiro e escreve o relatório."; }

    void Descreve(CLI::App &linha) override
    {
        linha
            .add_option("--desde", m_Desde,
                        "Confere também que nada mudou desde a cabeça do histórico guardada no arquivo CABECA.")
            ->type_name("CABECA");
        linha.add_flag("--json", m_Json, "Responde em JSON, para programas.")->disable_flag_override();
        m_Acesso.Descreve(linha);
    }

    Codigo Faz(Ambiente &ambiente) override
    {
        m_Acesso.Resolve(ambiente);
        std::optional<mesa::CabecaAssinada> desde;
        if (!m_Desde.empty()) {
            try {
                desde = mesa::CabecaAssinada::LeArquivo(m_Desde);
            } catch (const Falha &falha) {
                throw Fim(Codigo::NaoAlcancado, falha.Descricao);
            }
        }
        std::string relatorio;
        const mesa::ResultadoDaConferencia resultado =
            m_Acesso.Servidor() ? NoServidor(ambiente, desde, relatorio) : NoArquivo(ambiente, desde, relatorio);
        switch (resultado.Como) {
        case Desfecho::Inteira:
        case Desfecho::ComAchados:
            break;
        case Desfecho::Cancelada:
            throw Fim(Codigo::Interrompido, resultado.Frase);
        case Desfecho::NaoConferida:
            throw Fim(Codigo::NaoAlcancado, resultado.Frase);
        }
        if (m_Json) {
            Escreve(ambiente.Saida, EmJson(resultado));
        } else {
            ambiente.Saida << relatorio;
        }
        return resultado.Como == Desfecho::Inteira ? Codigo::Feito : Codigo::Nao;
    }

  private:
    mesa::ResultadoDaConferencia NoArquivo(const Ambiente &ambiente, const std::optional<mesa::CabecaAssinada> &desde,
                                           std::string &relatorio) const
    {
        const mesa::Conferidor conferidor(m_Acesso.Registro().Caminho.string());
        mesa::ResultadoDaConferencia resultado = conferidor.Confere(ambiente.Segue(), desde ? &*desde : nullptr);
        relatorio = conferidor.Relatorio(resultado, ambiente.Agora());
        return resultado;
    }
    mesa::ResultadoDaConferencia NoServidor(Ambiente &ambiente, const std::optional<mesa::CabecaAssinada> &desde,
                                            std::string &relatorio)
    {
        const Ref<rede::SessaoDeServidor> sessao = m_Acesso.EntraNoServidor(ambiente);
        mesa::ResultadoDaConferencia resultado = sessao->PreparaConferencia(desde)(ambiente.Segue());
        relatorio =
            mesa::RelatorioDaConferencia("Servidor: " + m_Acesso.Servidor()->Texto(), resultado, ambiente.Agora());
        return resultado;
    }

    Acesso m_Acesso{Acesso::Lugar::ArquivoOuServidor, Acesso::Entrada::NoServidor};
    std::string m_Desde;
    bool m_Json = false;
};

const Conhecido conhecido(FazUm<ComandoConfere>);

} // namespace

} // namespace comando
