#include "comando/Acesso.h"

#include "comando/ArquivoDeSenha.h"
#include "comando/Fim.h"
#include "comando/Versao.h"
#include "host/Falha.h"
#include "rede/Encontro.h"
#include "rede/ServicosRemotos.h"

#include <filesystem>
#include <ostream>
#include <system_error>

namespace comando {

namespace {

constexpr const char *GrupoDoLugar = "Onde está o registro";
constexpr const char *GrupoDaEntrada = "Quem pede";

rede::ConectaServidor FazRede(const Ambiente &ambiente)
{
    const mesa::Segue segue = ambiente.Segue();
    rede::Insistencia insistencia;
    insistencia.PorConta = std::chrono::seconds(3); // who has called the program can call it again
    insistencia.Espera = [segue](const std::function<void(const mesa::Segue &)> &espera) { espera(segue); };
    return {[segue](const rede::Endereco &servidor) {
                return rede::DigitalDoServidor(servidor, std::chrono::seconds(5), segue);
            },
            [insistencia](const rede::Endereco &servidor, const rede::Confianca &confianca) {
                return rede::Conecta(servidor, confianca, std::string("registro ") + Versao(), insistencia);
            }};
}

rede::QuemEncontra FazQuem(Ambiente &ambiente)
{
    return {[&ambiente](const std::string &servidor, const std::string &digital) {
                ambiente.Erros << "O servidor " << servidor << " é novo aqui. A digital do seu certificado é\n"
                               << digital << "\n";
                if (ambiente.Terminal == nullptr) {
                    ambiente.Erros << "Se for a que quem o administra informou, repita o comando com --digital e ela."
                                   << std::endl;
                    return false;
                }
                return ambiente.Terminal->Aceita("É a que quem o administra informou?");
            },
            [&ambiente](const std::string &pergunta) {
                return ambiente.Terminal != nullptr && ambiente.Terminal->Aceita(pergunta);
            },
            "com --digital"};
}

} // namespace

void Acesso::Descreve(CLI::App &linha)
{
    const auto valor = [&](const char *nome, std::string &onde, const char *tipo, const char *explicacao,
                           const char *grupo) {
        return linha.add_option(nome, onde, explicacao)->type_name(tipo)->group(grupo);
    };
    CLI::Option *dados = valor("--dados", m_Dados, "DIR",
                               "O do diretório de dados DIR, como o programa com janelas o conhece; sem nenhuma destas "
                               "opções, o de ~/.local/share/registro-de-equipamentos.",
                               GrupoDoLugar);
    CLI::Option *arquivo = valor("--registro", m_Arquivo, "ARQ", "O que está no arquivo ARQ.", GrupoDoLugar);
    arquivo->excludes(dados);
    if (m_OndePode == Lugar::ArquivoOuServidor) {
        CLI::Option *servidor =
            valor("--servidor", m_ServidorPedido, "SERVIDOR",
                  "O do servidor SERVIDOR, como \"maquina:porta\"; sem a porta, na 50443.", GrupoDoLugar);
        servidor->excludes(dados)->excludes(arquivo);
        CLI::Option *digital = valor("--digital", m_Digital, "DIGITAL",
                                     "Com --servidor: a digital do certificado, que quem administra o servidor "
                                     "informa; é pedida na primeira vez, e depois lembrada.",
                                     GrupoDoLugar);
        CLI::Option *autoridade =
            valor("--autoridade", m_Autoridade, "ARQ",
                  "Com --servidor: o certificado da autoridade que assinou o do servidor.", GrupoDoLugar);
        digital->needs(servidor)->excludes(autoridade);
        autoridade->needs(servidor);
    }
    if (m_QuemEntra == Entrada::Ninguem) {
        return;
    }
    CLI::Option *usuario =
        valor("--usuario", m_Usuario, "USUARIO",
              m_QuemEntra == Entrada::Todos
                  ? "Quem entra. A senha é perguntada, quando há um terminal."
                  : "Quem entra no servidor; num arquivo ninguém entra. A senha é perguntada, quando "
                    "há um terminal.",
              GrupoDaEntrada);
    if (m_QuemEntra == Entrada::Todos) {
        usuario->required();
    }
    CLI::Option *daEntrada =
        linha.add_flag("--senha-da-entrada", m_SenhaDaEntrada, "Lê a senha da entrada padrão, numa linha.");
    daEntrada->group(GrupoDaEntrada)->disable_flag_override()->needs(usuario);
    valor("--senha-de", m_SenhaDe, "ARQ", "Lê a senha da primeira linha do arquivo ARQ, que só o seu dono pode ler.",
          GrupoDaEntrada)
        ->needs(usuario)
        ->excludes(daEntrada);
}

void Acesso::Resolve(Ambiente &ambiente)
{
    const rede::LugaresConhecidos lugares(ambiente.Preferencias);
    if (!m_ServidorPedido.empty()) {
        std::string recusa;
        m_Servidor = rede::Endereco::Le(m_ServidorPedido, recusa);
        if (!m_Servidor) {
            throw Fim(Codigo::UsoErrado, recusa);
        }
        if (!m_Digital.empty()) {
            const auto digital = rede::LeDigital(m_Digital);
            if (!digital) {
                throw Fim(Codigo::UsoErrado,
                          "A digital tem 64 algarismos de 0 a 9 e de A a F, em pares. Copie-a inteira.");
            }
            m_Dita.Digital = *digital;
        }
        std::error_code naoHa;
        if (!m_Autoridade.empty() && !std::filesystem::is_regular_file(m_Autoridade, naoHa)) {
            throw Fim(Codigo::NaoAlcancado, "O arquivo " + m_Autoridade + " não existe.");
        }
        m_Dita.Autoridade = m_Autoridade;
    } else if (!m_Arquivo.empty()) {
        m_Registro = {std::filesystem::absolute(m_Arquivo), ""};
    } else {
        const std::filesystem::path dados =
            m_Dados.empty() ? rede::LugaresConhecidos::DiretorioPadrao() : std::filesystem::absolute(m_Dados);
        if (m_OndePode == Lugar::SoArquivo) {
            try {
                rede::ExigeRegistroDaqui(dados, lugares);
            } catch (const Falha &falha) {
                throw Fim(Codigo::Recusado, falha.Descricao);
            }
        } else {
            m_Servidor = lugares.Servidor(dados);
        }
        m_Registro = rede::RegistroDe(dados, lugares);
    }
    if (m_QuemEntra == Entrada::NoServidor && m_Servidor && m_Usuario.empty()) {
        throw Fim(Codigo::UsoErrado, "No registro de um servidor falta --usuario.");
    }
    if (m_QuemEntra == Entrada::NoServidor && !m_Servidor && !m_Usuario.empty()) {
        throw Fim(Codigo::UsoErrado,
                  "A opção --usuario só vai com um servidor: no registro de um arquivo, isto se faz sem entrar.");
    }
}

mesa::Segredo Acesso::LeSenha(Ambiente &ambiente) const
{
    if (!m_SenhaDe.empty()) {
        return SenhaDoArquivo(m_SenhaDe);
    }
    if (m_SenhaDaEntrada) {
        mesa::Segredo senha = mesa::LeSenha(ambiente.Entrada);
        if (senha.Vazio()) {
            throw Fim(Codigo::UsoErrado, "A senha de " + m_Usuario + " é lida da entrada padrão, e não veio.");
        }
        return senha;
    }
    if (ambiente.Terminal == nullptr) {
        throw Fim(Codigo::UsoErrado, "Falta a senha de " + m_Usuario +
                                         ": não há terminal em que a perguntar. Use --senha-da-entrada ou --senha-de.");
    }
    return ambiente.Terminal->Senha("Senha de " + m_Usuario);
}

void Acesso::AbreArquivo(Ambiente &ambiente)
{
    m_Servicos = mesa::Servicos::Abre(m_Registro.Caminho.string(), ambiente.Agora, ambiente.Custo);
    const std::string identificador = m_Servicos->Identificador();
    if (!m_Registro.Identificador.empty() && identificador != m_Registro.Identificador) {
        throw Fim(Codigo::Recusado, "O registro que está em " + m_Registro.Caminho.string() +
                                        " não é aquele em que se trabalhava: é o de identificador " + identificador +
                                        ", e o de antes era o de identificador " + m_Registro.Identificador +
                                        ". Para trabalhar nele assim mesmo, use --registro.");
    }
}

void Acesso::AbreServidor(Ambiente &ambiente, rede::LugaresConhecidos &lugares)
{
    using Como = rede::Encontrado::Como;
    const rede::Encontrado encontrado =
        rede::Encontra(*m_Servidor, m_Dita, lugares, FazRede(ambiente), FazQuem(ambiente));
    if (encontrado.Servicos) {
        m_Servicos = encontrado.Servicos;
        return;
    }
    throw Fim(encontrado.Desfecho == Como::SemServidor ? Codigo::NaoAlcancado : Codigo::Recusado, encontrado.Frase);
}

Ref<mesa::SessaoServico> Acesso::Entra(Ambiente &ambiente, ComSenha com)
{
    rede::LugaresConhecidos lugares(ambiente.Preferencias);
    if (m_Servidor) {
        AbreServidor(ambiente, lugares);
    } else {
        AbreArquivo(ambiente);
    }
    if (ambiente.Interrompido()) { // a server that answers at once is not waited for, and then nobody has asked
        throw Interrupcao();
    }
    m_Senha = LeSenha(ambiente);
    std::string recusa;
    std::int32_t espera = 0;
    Ref<mesa::SessaoServico> sessao = m_Servicos->Entra(m_Usuario, m_Senha, lugares.Estacao(), recusa, espera);
    if (!sessao) {
        throw Fim(Codigo::Recusado, recusa);
    }
    sessao->Acompanha(ambiente.Segue());
    if (!sessao->AvisoDeRelogio().empty()) {
        ambiente.Erros << sessao->AvisoDeRelogio() << std::endl;
    }
    if (com == ComSenha::Definitiva && sessao->DeveTrocarSenha()) {
        throw Fim(Codigo::Recusado, "A senha de " + m_Usuario +
                                        " foi definida por outra pessoa e tem de ser trocada antes: use \"registro "
                                        "usuarios minha-senha\".");
    }
    return sessao;
}

Ref<rede::SessaoDeServidor> Acesso::EntraNoServidor(Ambiente &ambiente)
{
    return ComoTipo<rede::SessaoDeServidor>(Entra(ambiente));
}

} // namespace comando
