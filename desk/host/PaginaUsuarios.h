#pragma once

#include "desk/host/PaginaAdministracao.h"
#include "services/RegistrosAdministracao.h"

namespace mesa {

// The users of the registry and what each of them may do.
class PaginaUsuarios : public PaginaDe<UsuarioED> {
  public:
    using PaginaDe::PaginaDe;

    std::string_view Nome() const override { return "usuarios"; }
    std::string_view Titulo() const override { return "&Usuários"; }
    std::vector<std::string> Colunas() const override;
    std::vector<ComandoDaPagina> Comandos() const override;
    bool Carrega(std::string &recusa) override;
    bool Habilitado(const std::string &comando, std::optional<std::size_t> linha) const override;
    std::string Pergunta(const std::string &comando, std::optional<std::size_t> linha) const override;
    std::optional<Ficha> Abre(const std::string &comando, std::optional<std::size_t> linha,
                              std::string &recusa) override;
    bool Faz(const std::string &comando, std::optional<std::size_t> linha, std::string &recusa) override;

  protected:
    std::vector<std::string> LinhaDe(const UsuarioED &usuario) const override;
    std::string ChaveDe(const UsuarioED &usuario) const override;

  private:
    std::optional<Ficha> FichaDoUsuario(const Ref<UsuarioED> &usuario, const Ref<ListaClientesED> &clientes);
    Ficha FichaDaSenha(const UsuarioED &usuario);
};

} // namespace mesa
