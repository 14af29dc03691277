#include "services/ServicoUsuarios.h"

#include "host/Conversoes.h"
#include "host/Indicador.h"
#include "services/Calendario.h"
#include "services/Historico.h"
#include "services/Permissoes.h"
#include "services/Recusa.h"
#include "services/RegrasDeCadastro.h"
#include "services/RegrasDeSenha.h"
#include "services/Senhas.h"
#include "services/Tentativas.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <map>
#include <utility>

namespace mesa {

namespace {

constexpr int EntradasPorPagina = 100;

const QString Colunas = "SELECT u.Numero, u.Versao, u.Usuario, u.Nome, u.CodCliente, c.Nome, u.Setor, u.CodMunic, "
                        "u.Ativo, u.TrocaSenha FROM USUARIO u JOIN CLIENTE c ON c.CodCliente = u.CodCliente ";

Ref<UsuarioED> Lido(const Consulta &linha)
{
    auto usuario = Novo<UsuarioED>();
    usuario->Numero = CLng(linha.Inteiro(0));
    usuario->Versao = CLng(linha.Inteiro(1));
    usuario->Usuario = linha.Texto(2);
    usuario->NomePessoa = linha.Texto(3);
    usuario->CodCliente = CLng(linha.Inteiro(4));
    usuario->Cliente = linha.Texto(5);
    usuario->Setor = linha.Texto(6);
    usuario->CodMunic = CLng(linha.Inteiro(7));
    usuario->Ativo = CByte(linha.Inteiro(8));
    usuario->TrocaSenha = CByte(linha.Inteiro(9));
    return usuario;
}

std::uint8_t SimOuNao(bool sim)
{
    return sim ? Indicador::Sim : Indicador::Nao;
}

std::string NomeDo(const UsuarioED &usuario)
{
    return "O usuário " + usuario.Usuario.Valor();
}

bool Existe(const ChaveDeDireito &chave)
{
    return std::ranges::any_of(Permissoes::Direitos(), [&](const Direito &direito) {
        return direito.Objeto == chave.first && direito.Acao == chave.second;
    });
}

// Rights that are told, each once. One that there is not is refused.
std::map<ChaveDeDireito, bool> Ditos(const Campo<ListaDe<DireitoED>> &direitos)
{
    std::map<ChaveDeDireito, bool> ditos;
    const ListaDe<DireitoED> &lista = direitos.Valor();
    for (std::int32_t qual = 1; !lista.Nada() && qual <= lista->Count(); ++qual) {
        const DireitoED &direito = *lista->Item(qual);
        const ChaveDeDireito chave{direito.Objeto, direito.Acao};
        if (!Existe(chave)) {
            throw Recusa("Não existe o direito \"" + chave.second + "\" sobre \"" + chave.first + "\".");
        }
        ditos[chave] = direito.Tem.Valor() == Indicador::Sim;
    }
    return ditos;
}

} // namespace

void ServicoUsuarios::Exige(const Operacao &operacao)
{
    operacao.Exige(Permissoes::Usuarios, "administrar usuários e clientes", Permissoes::ObjetoAdministracao);
}

Ref<ListaUsuariosED> ServicoUsuarios::Lista(const ListaUsuariosED &)
{
    Exige(m_Operacao);
    auto usuarios = Novo<Colecao<Ref<UsuarioED>>>();
    {
        mesa::Consulta linhas(m_Operacao.Dados(), Colunas + "ORDER BY u.Chave");
        while (linhas.Proxima()) {
            usuarios->Add(Lido(linhas));
        }
    }
    for (std::int32_t qual = 1; qual <= usuarios->Count(); ++qual) {
        UsuarioED &usuario = *usuarios->Item(qual);
        usuario.Bloqueado =
            SimOuNao(TentativasDoUsuario::EmEspera(m_Operacao.Dados(), usuario.Numero, m_Operacao.Agora()));
    }
    auto lista = Novo<ListaUsuariosED>();
    lista->Usuarios = usuarios;
    return lista;
}

Ref<UsuarioED> ServicoUsuarios::Consulta(const UsuarioED &pedido)
{
    Exige(m_Operacao);
    return Completo(pedido.Numero);
}

Ref<UsuarioED> ServicoUsuarios::Acha(std::int32_t numero) const
{
    mesa::Consulta linha(m_Operacao.Dados(), Colunas + "WHERE u.Numero = ?", {numero});
    if (!linha.Proxima()) {
        throw Recusa("Não existe usuário de número " + CStr(numero) + ".");
    }
    return Lido(linha);
}

Ref<UsuarioED> ServicoUsuarios::AchaParaMudar(const UsuarioED &pedido) const
{
    Exige(m_Operacao);
    const Ref<UsuarioED> gravado = Acha(pedido.Numero);
    m_Operacao.ConfereCopia(Raiz::Usuario, gravado->Numero, pedido.Versao, gravado->Versao, NomeDo(*gravado));
    return gravado;
}

Ref<UsuarioED> ServicoUsuarios::Completo(std::int32_t numero) const
{
    auto usuario = Novo<UsuarioED>();
    if (numero != 0) {
        usuario = Acha(numero);
        usuario->Bloqueado = SimOuNao(TentativasDoUsuario::EmEspera(m_Operacao.Dados(), numero, m_Operacao.Agora()));
    }
    const std::set<ChaveDeDireito> tidos = Tidos(numero);
    auto direitos = Novo<Colecao<Ref<DireitoED>>>();
    for (const Direito &direito : Permissoes::Direitos()) {
        auto um = Novo<DireitoED>();
        um->Objeto = direito.Objeto;
        um->Acao = direito.Acao;
        um->Palavras = direito.Palavras;
        um->Tem = SimOuNao(tidos.contains({direito.Objeto, direito.Acao}));
        direitos->Add(um);
    }
    usuario->Direitos = direitos;
    return usuario;
}

std::set<ChaveDeDireito> ServicoUsuarios::Tidos(std::int32_t numero) const
{
    std::set<ChaveDeDireito> tidos;
    mesa::Consulta linhas(m_Operacao.Dados(),
                          "SELECT Objeto, Acao FROM PERMISSAO WHERE Numero = ? AND Sistema = ? AND Ativo = 1",
                          {numero, Q(Permissoes::Sistema)});
    while (linhas.Proxima()) {
        tidos.emplace(linhas.Texto(0), linhas.Texto(1));
    }
    return tidos;
}

Ref<UsuarioED> ServicoUsuarios::Inclui(const UsuarioED &pedido)
{
    Exige(m_Operacao);
    if (pedido.Numero.Valor() != 0) {
        throw Recusa("Este usuário já foi incluído, com o número " + CStr(pedido.Numero.Valor()) + ".");
    }
    Usuarios::Novo novo;
    novo.Quem.Usuario = RegrasDeCadastro::Usuario(pedido.Usuario);
    novo.Quem.Nome = RegrasDeCadastro::NomeDaPessoa(pedido.NomePessoa);
    {
        mesa::Consulta outro(m_Operacao.Dados(), "SELECT Usuario, Nome, Ativo FROM USUARIO WHERE Chave = ?",
                             {Q(RegrasDeCadastro::ChaveDoUsuario(novo.Quem.Usuario))});
        if (outro.Proxima()) {
            throw Recusa("Já existe o usuário " + outro.Texto(0) + ", de " + outro.Texto(1) +
                         (outro.Inteiro(2) == Indicador::Sim ? "." : ", que está desativado."));
        }
    }
    ConfereLugar(pedido);
    RegrasDeSenha::Confere(pedido.Senha, novo.Quem.Usuario, novo.Quem.Nome);
    novo.Quem.CodCliente = pedido.CodCliente;
    novo.Quem.Setor = pedido.Setor;
    novo.Quem.CodMunic = pedido.CodMunic;
    novo.Senha = Senhas::Embaralha(pedido.Senha, m_Operacao.Custo());
    novo.TrocaSenha = true;
    for (const auto &[direito, tem] : Ditos(pedido.Direitos)) {
        if (tem) {
            novo.Direitos.push_back(direito);
        }
    }
    return Completo(Usuarios(m_Operacao.Dados(), m_Operacao.Agora(), m_Operacao.Quem().Numero).Inclui(novo));
}

Ref<UsuarioED> ServicoUsuarios::Altera(const UsuarioED &pedido)
{
    const Ref<UsuarioED> gravado = AchaParaMudar(pedido);
    if (pedido.Usuario.Escrito() && pedido.Usuario.Valor() != gravado->Usuario.Valor()) {
        throw Recusa(NomeDo(*gravado) + " não pode mudar de nome de entrada. Desative-o e inclua outro.");
    }
    if (gravado->Ativo.Valor() != Indicador::Sim) {
        throw Recusa(NomeDo(*gravado) + " está desativado e não pode ser alterado. Reative-o antes.");
    }
    const auto novo = ComoTipo<UsuarioED>(gravado->Copia());
    if (pedido.NomePessoa.Escrito()) {
        novo->NomePessoa = RegrasDeCadastro::NomeDaPessoa(pedido.NomePessoa);
    }
    if (pedido.CodCliente.Escrito()) {
        novo->CodCliente = pedido.CodCliente.Valor();
    }
    if (pedido.Setor.Escrito()) {
        novo->Setor = pedido.Setor.Valor();
    }
    if (pedido.CodMunic.Escrito()) {
        novo->CodMunic = pedido.CodMunic.Valor();
    }
    ConfereLugar(*novo);
    std::map<ChaveDeDireito, bool> direitos = Ditos(pedido.Direitos);
    const std::set<ChaveDeDireito> tidos = Tidos(gravado->Numero);
    std::erase_if(direitos, [&](const auto &dito) { return tidos.contains(dito.first) == dito.second; });
    if (direitos.empty() && novo->Texto() == gravado->Texto()) {
        return Completo(gravado->Numero);
    }
    const std::int64_t versao = Grava(*gravado,
                                      {{"Nome", Q(novo->NomePessoa.Valor())},
                                       {"CodCliente", novo->CodCliente.Valor()},
                                       {"Setor", Q(novo->Setor.Valor())},
                                       {"CodMunic", novo->CodMunic.Valor()}},
                                      "altera");
    Usuarios usuarios(m_Operacao.Dados(), m_Operacao.Agora(), m_Operacao.Quem().Numero);
    for (const auto &[direito, tem] : direitos) {
        usuarios.DefineDireito(gravado->Numero, versao, direito, tem);
    }
    ConfereAdministrador(*gravado);
    return Completo(gravado->Numero);
}

Ref<UsuarioED> ServicoUsuarios::Desativa(const UsuarioED &pedido)
{
    const Ref<UsuarioED> gravado = AchaParaMudar(pedido);
    if (gravado->Numero.Valor() == m_Operacao.Quem().Numero) {
        throw Recusa("Ninguém pode desativar a si mesmo: peça a outro administrador.");
    }
    if (gravado->Ativo.Valor() != Indicador::Sim) {
        throw Recusa(NomeDo(*gravado) + " já está desativado.");
    }
    Grava(*gravado, {{"Ativo", Indicador::Nao}}, "desativa"); // who does it stays, and may administer
    return Completo(gravado->Numero);
}

Ref<UsuarioED> ServicoUsuarios::Reativa(const UsuarioED &pedido)
{
    const Ref<UsuarioED> gravado = AchaParaMudar(pedido);
    if (gravado->Ativo.Valor() == Indicador::Sim) {
        throw Recusa(NomeDo(*gravado) + " já está ativo.");
    }
    ConfereLugar(*gravado);
    Grava(*gravado, {{"Ativo", Indicador::Sim}}, "reativa");
    return Completo(gravado->Numero);
}

Ref<UsuarioED> ServicoUsuarios::Desbloqueia(const UsuarioED &pedido)
{
    const Ref<UsuarioED> gravado = AchaParaMudar(pedido);
    const std::int32_t numero = gravado->Numero;
    TentativasDoUsuario::EsqueceTodas(m_Operacao.Dados(), numero);
    Historico(m_Operacao.Dados())
        .RegistraFato(m_Operacao.Agora(), m_Operacao.Quem().Numero,
                      {"SESSAO", numero, 0, "SESSAO", numero, "desbloqueia"},
                      {{"Usuario", Q(gravado->Usuario.Valor())}});
    return Completo(numero);
}

Ref<UsuarioED> ServicoUsuarios::DefineSenha(const UsuarioED &pedido)
{
    const Ref<UsuarioED> gravado = AchaParaMudar(pedido);
    if (gravado->Numero.Valor() == m_Operacao.Quem().Numero) {
        throw Recusa("A própria senha se troca informando também a atual, e não por aqui.");
    }
    RegrasDeSenha::Confere(pedido.Senha, gravado->Usuario, gravado->NomePessoa);
    Grava(*gravado, {{"Senha", Q(Senhas::Embaralha(pedido.Senha, m_Operacao.Custo()))}, {"TrocaSenha", Indicador::Sim}},
          "altera");
    return Completo(gravado->Numero);
}

void ServicoUsuarios::ConfereLugar(const UsuarioED &usuario) const
{
    RegrasDeCadastro::Municipio(usuario.CodMunic);
    std::string cliente;
    {
        mesa::Consulta linha(m_Operacao.Dados(), "SELECT Nome, Ativo FROM CLIENTE WHERE CodCliente = ?",
                             {usuario.CodCliente.Valor()});
        if (!linha.Proxima()) {
            throw Recusa("Não existe cliente de código " + CStr(usuario.CodCliente.Valor()) + ".");
        }
        cliente = linha.Texto(0);
        if (linha.Inteiro(1) != Indicador::Sim) {
            throw Recusa("O cliente " + cliente + " está desativado.");
        }
    }
    if (!usuario.Setor.Valor().empty() &&
        !mesa::Consulta(m_Operacao.Dados(), "SELECT 1 FROM SETOR WHERE CodCliente = ? AND Nome = ? AND Ativo = 1",
                        {usuario.CodCliente.Valor(), Q(usuario.Setor)})
             .Proxima()) {
        throw Recusa("O cliente " + cliente + " não tem o setor ativo \"" + usuario.Setor.Valor() + "\".");
    }
}

// Looked at after the change, in its transaction, whoever else changes something.
void ServicoUsuarios::ConfereAdministrador(const UsuarioED &mudado) const
{
    if (!mesa::Consulta(m_Operacao.Dados(),
                        "SELECT 1 FROM PERMISSAO p JOIN USUARIO u ON u.Numero = p.Numero AND u.Ativo = 1 "
                        "WHERE p.Ativo = 1 AND p.Sistema = ? AND p.Objeto = ? AND p.Acao = ?",
                        {Q(Permissoes::Sistema), Q(Permissoes::ObjetoAdministracao), Q(Permissoes::Usuarios)})
             .Proxima()) {
        throw Recusa(NomeDo(mudado) + " é o último que pode administrar usuários e clientes. Dê antes esse direito a "
                                      "outro usuário ativo.");
    }
}

std::int64_t ServicoUsuarios::Grava(const UsuarioED &gravado, Celulas celulas, const char *acao)
{
    const std::int32_t numero = gravado.Numero;
    const std::int64_t versao = gravado.Versao + std::int64_t{1};
    celulas.push_back({"Versao", qlonglong(versao)});
    m_Operacao.Dados().Atualiza("USUARIO", celulas, {"Numero", numero});
    Historico(m_Operacao.Dados())
        .Registra(m_Operacao.Agora(), m_Operacao.Quem().Numero, {"USUARIO", numero, versao, "USUARIO", numero, acao});
    return versao;
}

Ref<ListaEntradasED> ServicoUsuarios::EntradasRecusadas(const ListaEntradasED &pedido)
{
    Exige(m_Operacao);
    const std::int64_t inicio = pedido.Proxima.Valor() > 0 ? pedido.Proxima.Valor() : INT32_MAX;
    mesa::Consulta linhas(
        m_Operacao.Dados(),
        "SELECT h.Nro, h.Quando, COALESCE(h.Fuso, 0), u.Usuario, u.Nome, h.Motivo, h.Depois "
        "FROM HISTORICO h LEFT JOIN USUARIO u ON u.Numero = h.NroEntidade "
        "WHERE h.Entidade = 'SESSAO' AND h.Acao = 'recusa' AND h.Nro <= ? ORDER BY h.Nro DESC LIMIT ?",
        {qlonglong(inicio), EntradasPorPagina + 1});
    auto entradas = Novo<Colecao<Ref<EntradaRecusadaED>>>();
    auto pagina = Novo<ListaEntradasED>();
    pagina->Entradas = entradas;
    pagina->Proxima = 0;
    while (linhas.Proxima()) {
        if (entradas->Count() == EntradasPorPagina) {
            pagina->Proxima = CLng(linhas.Inteiro(0));
            break;
        }
        auto entrada = Novo<EntradaRecusadaED>();
        entrada->Momento = TextoDoMomento(MaisMinutos(linhas.Inteiro(1), static_cast<std::int32_t>(linhas.Inteiro(2))));
        entrada->Usuario = linhas.Texto(3);
        entrada->NomePessoa = linhas.Texto(4);
        entrada->Motivo = linhas.Texto(5);
        const QJsonObject dados = QJsonDocument::fromJson(QByteArray::fromStdString(linhas.Texto(6))).object();
        entrada->Estacao = S(dados.value("Estacao").toString());
        entradas->Add(entrada);
    }
    return pagina;
}

} // namespace mesa
