#include "desk/host/PaginaUsuarios.h"

#include "host/Conversoes.h"
#include "host/Texto.h"
#include "services/Recusa.h"
#include "services/RegrasDeSenha.h"

#include <map>

namespace mesa {

namespace {

constexpr const char *Direitos = "Direitos";
constexpr const char *RegraDaSenha =
    "A senha tem ao menos 12 caracteres e não é das mais comuns. O usuário escolhe a sua "
    "própria quando entrar.";

std::string Quem(const UsuarioED &usuario)
{
    return usuario.Usuario.Valor() + " (" + usuario.NomePessoa.Valor() + ")";
}

// By what the operations on a user that exists know him.
Ref<UsuarioED> Pedido(const UsuarioED &usuario)
{
    auto pedido = Novo<UsuarioED>();
    pedido->Numero = usuario.Numero;
    pedido->Versao = usuario.Versao;
    return pedido;
}

std::string NomeDoDireito(const DireitoED &direito)
{
    return "direito_" + direito.Objeto.Valor() + "_" + direito.Acao.Valor();
}

// The sectors of each client that can be chosen; what the user has stays on offer.
using SetoresPorCliente = std::map<std::string, std::vector<OpcaoDoCampo>>;

SetoresPorCliente SetoresOferecidos(const ListaDe<ClienteED> &clientes, const UsuarioED &usuario)
{
    SetoresPorCliente setores;
    for (std::int32_t n = 1; clientes && n <= clientes->Count(); ++n) {
        const ClienteED &cliente = *clientes->Item(n);
        std::vector<OpcaoDoCampo> &dele = setores[CStr(cliente.CodCliente.Valor())];
        dele.push_back({"", "Nenhum"});
        const auto &lista = cliente.Setores.Valor();
        for (std::int32_t s = 1; lista && s <= lista->Count(); ++s) {
            const SetorED &setor = *lista->Item(s);
            const bool seu =
                cliente.CodCliente == usuario.CodCliente && setor.NomeSetor.Valor() == usuario.Setor.Valor();
            if (setor.Ativo != Nao || seu) {
                dele.push_back({setor.NomeSetor, setor.NomeSetor});
            }
        }
    }
    return setores;
}

std::optional<ProblemaDaFicha> ConfereSenhas(Ficha &ficha, const std::string &usuario, const std::string &nome)
{
    if (ficha.Campo("senha").Senha.Vazio()) {
        return ProblemaDaFicha{"senha", "Informe a senha."};
    }
    if (ficha.Campo("senha").Senha != ficha.Campo("repetida").Senha) {
        return ProblemaDaFicha{"senha", "As duas senhas não são iguais. Digite-as de novo."};
    }
    try {
        RegrasDeSenha::Confere(ficha.Campo("senha").Senha, usuario, nome);
    } catch (const Recusa &motivo) {
        return ProblemaDaFicha{"senha", motivo.what()};
    }
    return std::nullopt;
}

void PoeSenhas(Ficha &ficha)
{
    ficha.Campos.push_back({.Nome = "senha", .Rotulo = "Sen&ha:", .Especie = EspecieDoCampo::Senha});
    ficha.Campos.push_back({.Nome = "repetida", .Rotulo = "&Repita a senha:", .Especie = EspecieDoCampo::Senha});
}

} // namespace

std::vector<std::string> PaginaUsuarios::Colunas() const
{
    return {"Usuário", "Nome", "Cliente", "Setor", "Situação"};
}

std::vector<ComandoDaPagina> PaginaUsuarios::Comandos() const
{
    using Pede = ComandoDaPagina::Pede;
    return {{"incluir", "&Incluir...", Pede::Ficha},
            {"editar", "&Editar...", Pede::Ficha},
            {"senha", "Definir &senha...", Pede::Ficha},
            {"desbloquear", "Des&bloquear"},
            {"desativar", "&Desativar"},
            {"reativar", "Rea&tivar"}};
}

std::vector<std::string> PaginaUsuarios::LinhaDe(const UsuarioED &usuario) const
{
    const bool bloqueado = usuario.Ativo != Nao && usuario.Bloqueado == Sim;
    return {usuario.Usuario, usuario.NomePessoa, usuario.Cliente, usuario.Setor,
            bloqueado ? "Bloqueado" : Situacao(usuario.Ativo)};
}

std::string PaginaUsuarios::ChaveDe(const UsuarioED &usuario) const
{
    return CStr(usuario.Numero.Valor());
}

bool PaginaUsuarios::Carrega(std::string &recusa)
{
    const auto lidos = Pede<ListaUsuariosED>("listaUsuarios", Novo<ListaUsuariosED>(), recusa);
    if (lidos) {
        Mostra(lidos->Usuarios);
    }
    return static_cast<bool>(lidos);
}

bool PaginaUsuarios::Habilitado(const std::string &comando, std::optional<std::size_t> linha) const
{
    if (comando == "incluir") {
        return true;
    }
    const UsuarioED *usuario = Registro(linha);
    if (usuario == nullptr) {
        return false;
    }
    if (comando == "reativar") {
        return usuario->Ativo == Nao;
    }
    if (comando == "desbloquear") {
        return usuario->Bloqueado == Sim;
    }
    return comando == "editar" || usuario->Ativo != Nao;
}

std::string PaginaUsuarios::Pergunta(const std::string &comando, std::optional<std::size_t> linha) const
{
    const UsuarioED *usuario = Registro(linha);
    if (usuario == nullptr) {
        return "";
    }
    if (comando == "desativar") {
        return "Desativar o usuário " + Quem(*usuario) +
               "? Ele não poderá mais entrar; o que fez continua no histórico.";
    }
    if (comando == "reativar") {
        return "Reativar o usuário " + Quem(*usuario) + "? Ele poderá entrar de novo, com os direitos que tinha.";
    }
    return "";
}

std::optional<Ficha> PaginaUsuarios::Abre(const std::string &comando, std::optional<std::size_t> linha,
                                          std::string &recusa)
{
    const UsuarioED *escolhido = Registro(linha);
    if (comando == "senha" && escolhido != nullptr) {
        return FichaDaSenha(*escolhido);
    }
    auto pedido = Novo<UsuarioED>();
    pedido->Numero = comando == "incluir" || escolhido == nullptr ? 0 : escolhido->Numero.Valor();
    const auto usuario = Pede<UsuarioED>("consultaUsuario", pedido, recusa);
    if (!usuario) {
        return std::nullopt;
    }
    const auto clientes = Pede<ListaClientesED>("listaClientes", Novo<ListaClientesED>(), recusa);
    if (!clientes) {
        return std::nullopt;
    }
    return FichaDoUsuario(usuario, clientes);
}

std::optional<Ficha> PaginaUsuarios::FichaDoUsuario(const Ref<UsuarioED> &usuario, const Ref<ListaClientesED> &clientes)
{
    const bool inclusao = usuario->Numero == 0;
    Ficha ficha;
    ficha.Nome = "FichaUsuario";
    ficha.Titulo = inclusao ? "Usuário novo" : "Usuário " + usuario->Usuario.Valor();
    ficha.Frase = inclusao ? RegraDaSenha : "";
    ficha.Campos.push_back({.Nome = "usuario",
                            .Rotulo = "&Usuário:",
                            .Valor = usuario->Usuario,
                            .Maximo = MaximoDe("USUARIO", "Usuario"),
                            .Travado = !inclusao});
    ficha.Campos.push_back(
        {.Nome = "nome", .Rotulo = "&Nome:", .Valor = usuario->NomePessoa, .Maximo = MaximoDe("USUARIO", "Nome")});
    CampoDaFicha cliente{.Nome = "cliente", .Rotulo = "C&liente:", .Especie = EspecieDoCampo::Escolha};
    const auto &lista = clientes->Clientes.Valor();
    for (std::int32_t n = 1; lista && n <= lista->Count(); ++n) {
        const ClienteED &um = *lista->Item(n);
        if (um.Ativo != Nao || um.CodCliente == usuario->CodCliente) {
            cliente.Opcoes.push_back({CStr(um.CodCliente.Valor()), um.NomeCliente});
        }
    }
    cliente.Valor = usuario->CodCliente != 0 ? CStr(usuario->CodCliente.Valor())
                    : cliente.Opcoes.empty() ? ""
                                             : cliente.Opcoes.front().Valor;
    const SetoresPorCliente setores = SetoresOferecidos(lista, *usuario);
    const auto oferece = [setores](const std::string &codCliente) {
        const auto achados = setores.find(codCliente);
        return achados == setores.end() ? std::vector<OpcaoDoCampo>{{"", "Nenhum"}} : achados->second;
    };
    CampoDaFicha setor{.Nome = "setor", .Rotulo = "&Setor:", .Especie = EspecieDoCampo::Escolha};
    setor.Opcoes = oferece(cliente.Valor);
    setor.Valor = usuario->Setor;
    ficha.Campos.push_back(cliente);
    ficha.Campos.push_back(setor);
    CampoDaFicha municipio{.Nome = "municipio", .Rotulo = "Só no &município:", .Especie = EspecieDoCampo::Procura};
    municipio.Opcoes = OpcoesDeMunicipio();
    municipio.Opcoes.insert(municipio.Opcoes.begin(), {"0", "Todos os municípios"});
    municipio.Valor = CStr(usuario->CodMunic.Valor());
    ficha.Campos.push_back(municipio);
    const auto &direitos = usuario->Direitos.Valor();
    for (std::int32_t n = 1; direitos && n <= direitos->Count(); ++n) {
        const DireitoED &direito = *direitos->Item(n);
        ficha.Campos.push_back({.Nome = NomeDoDireito(direito),
                                .Rotulo = direito.Palavras.Valor(),
                                .Especie = EspecieDoCampo::Marca,
                                .Valor = direito.Tem == Sim ? "1" : "2",
                                .Grupo = Direitos});
    }
    if (inclusao) {
        PoeSenhas(ficha);
    }
    ficha.Mudou = [oferece](Ficha &aberta, const std::string &campo) {
        if (campo == "cliente") {
            aberta.Campo("setor").Opcoes = oferece(aberta.Valor("cliente"));
            aberta.Campo("setor").Valor = "";
        }
    };
    ficha.Salva = [this, usuario, inclusao](Ficha &aberta) -> std::optional<ProblemaDaFicha> {
        if (Trim(aberta.Valor("usuario")).empty()) {
            return ProblemaDaFicha{"usuario", "Informe o usuário com que a pessoa entra."};
        }
        if (Trim(aberta.Valor("nome")).empty()) {
            return ProblemaDaFicha{"nome", "Informe o nome da pessoa."};
        }
        if (aberta.Valor("cliente").empty()) {
            return ProblemaDaFicha{"cliente", "Informe o cliente."};
        }
        if (aberta.Valor("municipio").empty()) {
            return ProblemaDaFicha{"municipio", "Escolha na lista o município, ou todos eles."};
        }
        if (inclusao) {
            if (auto problema = ConfereSenhas(aberta, Trim(aberta.Valor("usuario")), Trim(aberta.Valor("nome")))) {
                return problema;
            }
        }
        auto pedido = Pedido(*usuario);
        if (inclusao) {
            pedido->Usuario = Trim(aberta.Valor("usuario"));
            pedido->Senha = aberta.Campo("senha").Senha;
        }
        pedido->NomePessoa = Trim(aberta.Valor("nome"));
        pedido->CodCliente = CLng(aberta.Valor("cliente"));
        pedido->Setor = aberta.Valor("setor");
        pedido->CodMunic = CLng(aberta.Valor("municipio"));
        pedido->Direitos = Novo<Colecao<Ref<DireitoED>>>();
        const auto &deles = usuario->Direitos.Valor();
        for (std::int32_t n = 1; deles && n <= deles->Count(); ++n) {
            auto direito = ComoTipo<DireitoED>(deles->Item(n)->Copia());
            direito->Tem = aberta.Marcado(NomeDoDireito(*direito)) ? Sim : Nao;
            pedido->Direitos.Valor()->Add(direito);
        }
        return Salva<UsuarioED>(inclusao ? "incluiUsuario" : "alteraUsuario", pedido);
    };
    return ficha;
}

Ficha PaginaUsuarios::FichaDaSenha(const UsuarioED &usuario)
{
    Ficha ficha;
    ficha.Nome = "FichaSenha";
    ficha.Titulo = "Senha de " + Quem(usuario);
    ficha.Frase = RegraDaSenha;
    PoeSenhas(ficha);
    ficha.Salva = [this, pedido = Pedido(usuario), login = usuario.Usuario.Valor(),
                   nome = usuario.NomePessoa.Valor()](Ficha &aberta) -> std::optional<ProblemaDaFicha> {
        if (auto problema = ConfereSenhas(aberta, login, nome)) {
            return problema;
        }
        pedido->Senha = aberta.Campo("senha").Senha;
        return Salva<UsuarioED>("defineSenha", pedido);
    };
    return ficha;
}

bool PaginaUsuarios::Faz(const std::string &comando, std::optional<std::size_t> linha, std::string &recusa)
{
    const UsuarioED *usuario = Registro(linha);
    if (usuario == nullptr) {
        return false;
    }
    return Pede<UsuarioED>(comando == "desbloquear" ? "desbloqueiaUsuario"
                           : comando == "desativar" ? "desativaUsuario"
                                                    : "reativaUsuario",
                           Pedido(*usuario), recusa) &&
           Carrega(recusa);
}

} // namespace mesa
