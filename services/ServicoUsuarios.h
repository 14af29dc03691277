#pragma once

#include "services/Operacao.h"
#include "services/RegistrosAdministracao.h"
#include "services/Usuarios.h"

#include <cstdint>
#include <set>
#include <string>

namespace mesa {

// Users, their rights and their passwords, for whoever has the right to administer them.
class ServicoUsuarios {
  public:
    explicit ServicoUsuarios(Operacao &operacao) : m_Operacao(operacao) {}

    Ref<ListaUsuariosED> Lista(const ListaUsuariosED &pedido);
    Ref<UsuarioED> Consulta(const UsuarioED &pedido);
    Ref<UsuarioED> Inclui(const UsuarioED &pedido);
    Ref<UsuarioED> Altera(const UsuarioED &pedido);
    Ref<UsuarioED> Desativa(const UsuarioED &pedido);
    Ref<UsuarioED> Reativa(const UsuarioED &pedido);
    Ref<UsuarioED> Desbloqueia(const UsuarioED &pedido);
    Ref<UsuarioED> DefineSenha(const UsuarioED &pedido);
    Ref<ListaEntradasED> EntradasRecusadas(const ListaEntradasED &pedido);

    // Refuses who may not administer users and clients.
    static void Exige(const Operacao &operacao);

  private:
    Ref<UsuarioED> Acha(std::int32_t numero) const;
    // The one to be changed, as it stands: the copy that was sent is of its present version.
    Ref<UsuarioED> AchaParaMudar(const UsuarioED &pedido) const;
    Ref<UsuarioED> Completo(std::int32_t numero) const;
    std::set<ChaveDeDireito> Tidos(std::int32_t numero) const;
    // Client, sector and municipality, refused where they are not there or not active.
    void ConfereLugar(const UsuarioED &usuario) const;
    // Refuses what leaves nobody who may administer users.
    void ConfereAdministrador(const UsuarioED &mudado) const;
    // Writes the columns with the version that follows, which it gives.
    std::int64_t Grava(const UsuarioED &gravado, Celulas celulas, const char *acao);

    Operacao &m_Operacao;
};

} // namespace mesa
