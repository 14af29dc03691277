#include "comando/Acesso.h"
#include "comando/Fim.h"
#include "comando/Json.h"
#include "comando/Pedido.h"
#include "comando/Subcomando.h"
#include "host/Indicador.h"
#include "services/Permissoes.h"
#include "services/RegistrosAdministracao.h"
#include "services/RegrasDeCadastro.h"

#include <algorithm>
#include <array>
#include <ostream>
#include <utility>

namespace comando {

namespace {

constexpr const char *Administracao = "AdministracaoRN";

// The rights, by a word each.
struct DireitoDito {
    const char *Palavra;
    std::string Objeto;
    std::string Acao;
};

const std::array<DireitoDito, 7> &DireitosDitos()
{
    namespace p = mesa::Permissoes;
    static const std::array<DireitoDito, 7> ditos = {{{"consulta", p::Objeto, ""},
                                                      {"inclui", p::Objeto, "I"},
                                                      {"altera", p::Objeto, "A"},
                                                      {"desativa", p::Objeto, "E"},
                                                      {"usuarios", p::ObjetoAdministracao, p::Usuarios},
                                                      {"tabelas", p::ObjetoAdministracao, p::Tabelas},
                                                      {"copias", p::ObjetoAdministracao, p::Copias}}};
    return ditos;
}

std::string Palavras()
{
    std::string palavras;
    for (const DireitoDito &um : DireitosDitos()) {
        palavras += (palavras.empty() ? "" : ", ") + std::string(um.Palavra);
    }
    return palavras;
}

std::string Situacao(const mesa::UsuarioED &usuario)
{
    if (usuario.Ativo == Indicador::Nao) {
        return "desativado";
    }
    return usuario.Bloqueado == Indicador::Sim ? "bloqueado" : "ativo";
}

Json EmJson(const mesa::UsuarioED &usuario)
{
    return {{"numero", usuario.Numero.Valor()},
            {"usuario", usuario.Usuario.Valor()},
            {"nome", usuario.NomePessoa.Valor()},
            {"cliente", usuario.CodCliente.Valor()},
            {"nomeDoCliente", usuario.Cliente.Valor()},
            {"setor", usuario.Setor.Valor().empty() ? Json() : Json(usuario.Setor.Valor())},
            {"municipio", usuario.CodMunic == 0 ? Json() : Json(usuario.CodMunic.Valor())},
            {"situacao", Situacao(usuario)},
            {"trocaSenha", usuario.TrocaSenha == Indicador::Sim}};
}

class ComandoUsuarios : public Subcomando {
  public:
    std::string Nome() const override { return "usuarios"; }
    std::string Resumo() const override { return "Lista, inclui, ativa e desativa usuários, e define as suas senhas."; }

    void Descreve(CLI::App &linha) override
    {
        linha.require_subcommand(1);
        m_Lista = Ato(linha, "lista", "Lista os usuários, um por linha.", m_DaLista);
        m_Lista->add_flag("--json", m_Json, "Responde em JSON, para programas.")->disable_flag_override();

        m_Inclui = Ato(linha, "inclui", "Inclui um usuário, que troca a sua senha quando entra.", m_DoInclui);
        PedeAlvo(*m_Inclui);
        m_Inclui->add_option("--nome", m_Nome, "O nome da pessoa.")->type_name("NOME")->required();
        m_Inclui->add_option("--cliente", m_Cliente, "O código do cliente.")->type_name("N")->required();
        m_Inclui->add_option("--setor", m_Setor, "O setor do cliente.")->type_name("NOME");
        m_Inclui->add_option("--municipio", m_Municipio, "O código do município a que fica preso.")->type_name("N");
        m_Inclui->add_option("--direito", m_Direitos, "Um direito; repete-se para cada um: " + Palavras() + ".")
            ->type_name("DIREITO")
            ->expected(1)
            ->allow_extra_args(false)
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
            ->check([](const std::string &dito) {
                const bool ha =
                    std::ranges::any_of(DireitosDitos(), [&](const auto &um) { return dito == um.Palavra; });
                return ha ? "" : "Não existe o direito \"" + dito + "\"; há " + Palavras() + ".";
            });
        PedeSenhaNova(*m_Inclui);

        m_Ativa = Ato(linha, "ativa", "Reativa um usuário, com os direitos que tinha.", m_DoAtiva);
        PedeAlvo(*m_Ativa);
        m_Desativa = Ato(linha, "desativa", "Desativa um usuário, que não entra mais.", m_DoDesativa);
        PedeAlvo(*m_Desativa);

        m_Define = Ato(linha, "senha", "Define a senha de um usuário, que a troca quando entra.", m_DoDefine);
        PedeAlvo(*m_Define);
        PedeSenhaNova(*m_Define);

        m_Minha = Ato(linha, "minha-senha", "Troca a própria senha.", m_DoMinha);
        PedeSenhaNova(*m_Minha);
    }

    Codigo Faz(Ambiente &ambiente) override
    {
        if (m_Minha->parsed()) {
            TrocaMinha(ambiente);
            return Codigo::Feito;
        }
        const std::array<std::pair<CLI::App *, Acesso *>, 5> atos = {{{m_Lista, &m_DaLista},
                                                                      {m_Inclui, &m_DoInclui},
                                                                      {m_Ativa, &m_DoAtiva},
                                                                      {m_Desativa, &m_DoDesativa},
                                                                      {m_Define, &m_DoDefine}}};
        const auto &[ato, acesso] = *std::ranges::find_if(atos, [](const auto &um) { return um.first->parsed(); });
        acesso->Resolve(ambiente);
        const Ref<mesa::SessaoServico> sessao = acesso->Entra(ambiente);
        if (ato == m_Lista) {
            Lista(ambiente, sessao);
        } else if (ato == m_Inclui) {
            Inclui(ambiente, sessao);
        } else if (ato == m_Define) {
            auto pedido = Alvo(sessao);
            pedido->Senha = SenhaNova(ambiente, m_Alvo);
            Pede<mesa::UsuarioED>(sessao, Administracao, "defineSenha", pedido);
        } else {
            Pede<mesa::UsuarioED>(sessao, Administracao, ato == m_Ativa ? "reativaUsuario" : "desativaUsuario",
                                  Alvo(sessao));
        }
        return Codigo::Feito;
    }

  private:
    static CLI::App *Ato(CLI::App &linha, const char *nome, const char *resumo, Acesso &acesso)
    {
        CLI::App *ato = linha.add_subcommand(nome, resumo);
        acesso.Descreve(*ato);
        return ato;
    }
    void PedeAlvo(CLI::App &ato)
    {
        ato.add_option("LOGIN", m_Alvo, "O usuário de quem se trata.")->type_name("")->required();
    }
    void PedeSenhaNova(CLI::App &ato)
    {
        ato.add_flag("--nova-da-entrada", m_NovaDaEntrada,
                     "Lê a senha nova da entrada padrão, numa linha, depois da de quem entra se esta vem dali também; "
                     "sem isto, é perguntada duas vezes no terminal.")
            ->disable_flag_override();
    }

    void Lista(Ambiente &ambiente, const Ref<mesa::SessaoServico> &sessao) const
    {
        const auto lidos =
            Pede<mesa::ListaUsuariosED>(sessao, Administracao, "listaUsuarios", Novo<mesa::ListaUsuariosED>());
        const auto &lista = lidos->Usuarios.Valor();
        Json todos = Json::array();
        for (std::int32_t n = 1; lista && n <= lista->Count(); ++n) {
            const mesa::UsuarioED &um = *lista->Item(n);
            if (m_Json) {
                todos.push_back(EmJson(um));
            } else {
                ambiente.Saida << um.Usuario.Valor() << '\t' << um.NomePessoa.Valor() << '\t' << um.Cliente.Valor()
                               << '\t' << um.Setor.Valor() << '\t' << Situacao(um) << '\n';
            }
        }
        if (m_Json) {
            Escreve(ambiente.Saida, Json{{"usuarios", todos}});
        }
    }

    void Inclui(Ambiente &ambiente, const Ref<mesa::SessaoServico> &sessao) const
    {
        auto novo = Novo<mesa::UsuarioED>();
        novo->Usuario = m_Alvo;
        novo->NomePessoa = m_Nome;
        novo->CodCliente = m_Cliente;
        novo->Setor = m_Setor;
        novo->CodMunic = m_Municipio;
        novo->Direitos = Novo<Colecao<Ref<mesa::DireitoED>>>();
        for (const DireitoDito &um : DireitosDitos()) {
            auto direito = Novo<mesa::DireitoED>();
            direito->Objeto = um.Objeto;
            direito->Acao = um.Acao;
            direito->Tem =
                std::ranges::find(m_Direitos, um.Palavra) != m_Direitos.end() ? Indicador::Sim : Indicador::Nao;
            novo->Direitos.Valor()->Add(direito);
        }
        novo->Senha = SenhaNova(ambiente, m_Alvo);
        Pede<mesa::UsuarioED>(sessao, Administracao, "incluiUsuario", novo);
    }

    // By what the operations know the user.
    Ref<mesa::UsuarioED> Alvo(const Ref<mesa::SessaoServico> &sessao) const
    {
        const auto lidos =
            Pede<mesa::ListaUsuariosED>(sessao, Administracao, "listaUsuarios", Novo<mesa::ListaUsuariosED>());
        const auto &lista = lidos->Usuarios.Valor();
        for (std::int32_t n = 1; lista && n <= lista->Count(); ++n) {
            const mesa::UsuarioED &um = *lista->Item(n);
            if (mesa::RegrasDeCadastro::ChaveDoUsuario(um.Usuario) == mesa::RegrasDeCadastro::ChaveDoUsuario(m_Alvo)) {
                auto pedido = Novo<mesa::UsuarioED>();
                pedido->Numero = um.Numero;
                pedido->Versao = um.Versao;
                return pedido;
            }
        }
        throw Fim(Codigo::Nao, "Não existe o usuário " + m_Alvo + ".");
    }

    void TrocaMinha(Ambiente &ambiente)
    {
        m_DoMinha.Resolve(ambiente);
        const Ref<mesa::SessaoServico> sessao = m_DoMinha.Entra(ambiente, Acesso::ComSenha::Qualquer);
        auto troca = Novo<mesa::TrocaSenhaED>();
        troca->Atual = m_DoMinha.Senha();
        troca->Nova = SenhaNova(ambiente, sessao->Operador().Usuario);
        Pede<Objeto>(sessao, Administracao, "trocaMinhaSenha", troca);
    }

    mesa::Segredo SenhaNova(Ambiente &ambiente, const std::string &deQuem) const
    {
        if (m_NovaDaEntrada) {
            mesa::Segredo nova = mesa::LeSenha(ambiente.Entrada);
            if (nova.Vazio()) {
                throw Fim(Codigo::UsoErrado, "A senha nova é lida da entrada padrão, e não veio.");
            }
            return nova;
        }
        if (ambiente.Terminal == nullptr) {
            throw Fim(Codigo::UsoErrado,
                      "Falta a senha nova: não há terminal em que a perguntar. Use --nova-da-entrada.");
        }
        mesa::Segredo nova = ambiente.Terminal->Senha("Senha nova de " + deQuem);
        if (nova != ambiente.Terminal->Senha("Repita a senha")) {
            throw Fim(Codigo::Recusado, "As duas senhas não são iguais. Nada foi mudado.");
        }
        return nova;
    }

    Acesso m_DaLista{Acesso::Lugar::ArquivoOuServidor, Acesso::Entrada::Todos};
    Acesso m_DoInclui{Acesso::Lugar::ArquivoOuServidor, Acesso::Entrada::Todos};
    Acesso m_DoAtiva{Acesso::Lugar::ArquivoOuServidor, Acesso::Entrada::Todos};
    Acesso m_DoDesativa{Acesso::Lugar::ArquivoOuServidor, Acesso::Entrada::Todos};
    Acesso m_DoDefine{Acesso::Lugar::ArquivoOuServidor, Acesso::Entrada::Todos};
    Acesso m_DoMinha{Acesso::Lugar::ArquivoOuServidor, Acesso::Entrada::Todos};
    CLI::App *m_Lista = nullptr;
    CLI::App *m_Inclui = nullptr;
    CLI::App *m_Ativa = nullptr;
    CLI::App *m_Desativa = nullptr;
    CLI::App *m_Define = nullptr;
    CLI::App *m_Minha = nullptr;
    bool m_Json = false;
    std::string m_Alvo;
    std::string m_Nome;
    std::int32_t m_Cliente = 0;
    std::string m_Setor;
    std::int32_t m_Municipio = 0;
    std::vector<std::string> m_Direitos;
    bool m_NovaDaEntrada = false;
};

const Conhecido conhecido(FazUm<ComandoUsuarios>);

} // namespace

} // namespace comando
