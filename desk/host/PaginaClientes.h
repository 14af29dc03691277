#pragma once

#include "desk/host/PaginaAdministracao.h"
#include "services/RegistrosAdministracao.h"

namespace mesa {

// The clients of the registry with their sectors.
class PaginaClientes : public PaginaDe<ClienteED> {
  public:
    using PaginaDe::PaginaDe;

    std::string_view Nome() const override { return "clientes"; }
    std::string_view Titulo() const override { return "&Clientes e setores"; }
    std::vector<std::string> Colunas() const override;
    std::vector<ComandoDaPagina> Comandos() const override;
    bool Carrega(std::string &recusa) override;
    bool Habilitado(const std::string &comando, std::optional<std::size_t> linha) const override;
    std::string Pergunta(const std::string &comando, std::optional<std::size_t> linha) const override;
    std::optional<Ficha> Abre(const std::string &comando, std::optional<std::size_t> linha,
                              std::string &recusa) override;
    bool Faz(const std::string &comando, std::optional<std::size_t> linha, std::string &recusa) override;

  protected:
    std::vector<std::string> LinhaDe(const ClienteED &registro) const override;
    std::string ChaveDe(const ClienteED &registro) const override;
};

} // namespace mesa
