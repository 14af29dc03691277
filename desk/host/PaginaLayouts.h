#pragma once

#include "desk/host/PaginaAdministracao.h"
#include "services/LayoutED.h"

namespace mesa {

// The layouts of the files of an equipment.
class PaginaLayouts : public PaginaDe<LayoutED> {
  public:
    using PaginaDe::PaginaDe;

    std::string_view Nome() const override { return "layouts"; }
    std::string_view Titulo() const override { return "La&youts"; }
    std::vector<std::string> Colunas() const override;
    std::vector<ComandoDaPagina> Comandos() const override;
    bool Carrega(std::string &recusa) override;
    bool Habilitado(const std::string &comando, std::optional<std::size_t> linha) const override;
    std::string Pergunta(const std::string &comando, std::optional<std::size_t> linha) const override;
    std::optional<Ficha> Abre(const std::string &comando, std::optional<std::size_t> linha,
                              std::string &recusa) override;
    bool Faz(const std::string &comando, std::optional<std::size_t> linha, std::string &recusa) override;

  protected:
    std::vector<std::string> LinhaDe(const LayoutED &registro) const override;
    std::string ChaveDe(const LayoutED &registro) const override;
};

} // namespace mesa
