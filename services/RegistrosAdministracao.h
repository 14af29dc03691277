#pragma once

#include "host/Registro.h"
#include "services/Segredo.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>

// Records of the operations of "AdministracaoRN", which SessaoServico::Executa runs. Flags travel as bytes, 1 yes and 2
// no. All but "trocaMinhaSenha" take the right "U" of Permissoes::ObjetoAdministracao.
//
//   listaUsuarios           ListaUsuariosED -> ListaUsuariosED   all of them by sign-in name, without their rights
//   consultaUsuario         UsuarioED -> UsuarioED               of that Numero, with every right that there is, had or
//                                                                not; Numero 0: a blank one to be filled and included
//   incluiUsuario           UsuarioED -> UsuarioED               its Senha must be changed at the first sign-in
//   alteraUsuario           UsuarioED -> UsuarioED               NomePessoa, CodCliente, Setor, CodMunic, and of the
//                                                                Direitos those told; what is left unset stays
//   desativaUsuario         UsuarioED -> UsuarioED
//   reativaUsuario          UsuarioED -> UsuarioED
//   desbloqueiaUsuario      UsuarioED -> UsuarioED               ends the waits after refused sign-ins
//   defineSenha             UsuarioED -> UsuarioED               its Senha must be changed at the next sign-in
//   trocaMinhaSenha         TrocaSenhaED -> nothing              one's own, by everybody
//   listaClientes           ListaClientesED -> ListaClientesED   all of them with all their sectors, by number
//   incluiCliente           ClienteED -> ClienteED               Setores: their names
//   alteraCliente           ClienteED -> ClienteED               UF, Ativo, and of the Setores those told: of NroSetor
//                                                                0 a new one, of others Ativo; what is unset stays
//   listaEntradasRecusadas  ListaEntradasED -> ListaEntradasED   a page of them, the latest first
//
// What changes a user or client that exists takes its Numero or CodCliente and the Versao that was read with this copy:
// one that was changed since is refused. What is answered stands as it then is, with the new Versao.

namespace mesa {

// One right of a user.
class DireitoED : public RegistroDe<DireitoED> {
  public:
    static constexpr std::string_view Nome = "DireitoED";

    Campo<std::string> Objeto;
    Campo<std::string> Acao;
    Campo<std::string> Palavras; // answer only: "Incluir equipamentos"
    Campo<std::uint8_t> Tem;     // 1 yes, 2 no

    static constexpr auto Membros()
    {
        return std::tuple(Membro{"Objeto", &DireitoED::Objeto}, Membro{"Acao", &DireitoED::Acao},
                          Membro{"Palavras", &DireitoED::Palavras}, Membro{"Tem", &DireitoED::Tem});
    }
};

// A user of the registry.
class UsuarioED : public RegistroDe<UsuarioED> {
  public:
    static constexpr std::string_view Nome = "UsuarioED";

    Campo<std::int32_t> Numero;
    Campo<std::int32_t> Versao;
    Campo<std::string> Usuario; // sign-in name, which stays
    Campo<std::string> NomePessoa;
    Campo<std::int32_t> CodCliente;
    Campo<std::string> Cliente;     // answer only: its name
    Campo<std::string> Setor;       // of the client; empty for none
    Campo<std::int32_t> CodMunic;   // municipality to which the logon is tied; 0 for none
    Campo<std::uint8_t> Ativo;      // answer only
    Campo<std::uint8_t> TrocaSenha; // answer only: the password must be changed at the next sign-in
    Campo<std::uint8_t> Bloqueado;  // answer only: refused sign-ins make it wait now
    Campo<Segredo> Senha;           // request only
    Campo<ListaDe<DireitoED>> Direitos;

    static constexpr auto Membros()
    {
        return std::tuple(Membro{"Numero", &UsuarioED::Numero}, Membro{"Versao", &UsuarioED::Versao},
                          Membro{"Usuario", &UsuarioED::Usuario}, Membro{"NomePessoa", &UsuarioED::NomePessoa},
                          Membro{"CodCliente", &UsuarioED::CodCliente}, Membro{"Cliente", &UsuarioED::Cliente},
                          Membro{"Setor", &UsuarioED::Setor}, Membro{"CodMunic", &UsuarioED::CodMunic},
                          Membro{"Ativo", &UsuarioED::Ativo}, Membro{"TrocaSenha", &UsuarioED::TrocaSenha},
                          Membro{"Bloqueado", &UsuarioED::Bloqueado}, Membro{"Senha", &UsuarioED::Senha},
                          Membro{"Direitos", &UsuarioED::Direitos});
    }
};

// All users.
class ListaUsuariosED : public RegistroDe<ListaUsuariosED> {
  public:
    static constexpr std::string_view Nome = "ListaUsuariosED";

    Campo<ListaDe<UsuarioED>> Usuarios; // answer

    static constexpr auto Membros() { return std::tuple(Membro{"Usuarios", &ListaUsuariosED::Usuarios}); }
};

// The operator's own password, changed by the operator.
class TrocaSenhaED : public RegistroDe<TrocaSenhaED> {
  public:
    static constexpr std::string_view Nome = "TrocaSenhaED";

    Campo<Segredo> Atual;
    Campo<Segredo> Nova;

    static constexpr auto Membros()
    {
        return std::tuple(Membro{"Atual", &TrocaSenhaED::Atual}, Membro{"Nova", &TrocaSenhaED::Nova});
    }
};

// A sector of a client.
class SetorED : public RegistroDe<SetorED> {
  public:
    static constexpr std::string_view Nome = "SetorED";

    Campo<std::int32_t> NroSetor; // 0 on a new one
    Campo<std::string> NomeSetor; // stays
    Campo<std::uint8_t> Ativo;    // 1 yes, 2 no

    static constexpr auto Membros()
    {
        return std::tuple(Membro{"NroSetor", &SetorED::NroSetor}, Membro{"NomeSetor", &SetorED::NomeSetor},
                          Membro{"Ativo", &SetorED::Ativo});
    }
};

// A client of the registry.
class ClienteED : public RegistroDe<ClienteED> {
  public:
    static constexpr std::string_view Nome = "ClienteED";

    Campo<std::int32_t> CodCliente; // stays
    Campo<std::int32_t> Versao;
    Campo<std::string> NomeCliente;  // stays
    Campo<std::string> UF;           // its state: "RS"
    Campo<std::uint8_t> Ativo;       // 1 yes, 2 no
    Campo<ListaDe<SetorED>> Setores; // by name

    static constexpr auto Membros()
    {
        return std::tuple(Membro{"CodCliente", &ClienteED::CodCliente}, Membro{"Versao", &ClienteED::Versao},
                          Membro{"NomeCliente", &ClienteED::NomeCliente}, Membro{"UF", &ClienteED::UF},
                          Membro{"Ativo", &ClienteED::Ativo}, Membro{"Setores", &ClienteED::Setores});
    }
};

// All clients.
class ListaClientesED : public RegistroDe<ListaClientesED> {
  public:
    static constexpr std::string_view Nome = "ListaClientesED";

    Campo<ListaDe<ClienteED>> Clientes; // answer

    static constexpr auto Membros() { return std::tuple(Membro{"Clientes", &ListaClientesED::Clientes}); }
};

// A sign-in that was refused.
class EntradaRecusadaED : public RegistroDe<EntradaRecusadaED> {
  public:
    static constexpr std::string_view Nome = "EntradaRecusadaED";

    Campo<std::string> Momento;    // in words: 20/11/2026 às 14:32:10
    Campo<std::string> Usuario;    // sign-in name; empty when no such user exists
    Campo<std::string> NomePessoa; // as above
    Campo<std::string> Estacao;
    Campo<std::string> Motivo; // in words: "senha incorreta"

    static constexpr auto Membros()
    {
        return std::tuple(Membro{"Momento", &EntradaRecusadaED::Momento},
                          Membro{"Usuario", &EntradaRecusadaED::Usuario},
                          Membro{"NomePessoa", &EntradaRecusadaED::NomePessoa},
                          Membro{"Estacao", &EntradaRecusadaED::Estacao}, Membro{"Motivo", &EntradaRecusadaED::Motivo});
    }
};

// A page of refused sign-ins, the latest first.
class ListaEntradasED : public RegistroDe<ListaEntradasED> {
  public:
    static constexpr std::string_view Nome = "ListaEntradasED";

    Campo<ListaDe<EntradaRecusadaED>> Entradas; // answer
    Campo<std::int32_t> Proxima; // in: where the page starts, 0 at the latest; out: where the next does, 0 for none

    static constexpr auto Membros()
    {
        return std::tuple(Membro{"Entradas", &ListaEntradasED::Entradas}, Membro{"Proxima", &ListaEntradasED::Proxima});
    }
};

} // namespace mesa
