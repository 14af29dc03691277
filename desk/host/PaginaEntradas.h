#pragma once

#include "desk/host/PaginaAdministracao.h"
#include "services/RegistrosAdministracao.h"

namespace mesa {

// The sign-ins that were refused, the latest first.
class PaginaEntradas : public PaginaDe<EntradaRecusadaED> {
  public:
    using PaginaDe::PaginaDe;

    std::string_view Nome() const override { return "entradas"; }
    std::string_view Titulo() const override { return "Entradas &recusadas"; }
    std::vector<std::string> Colunas() const override;
    std::vector<ComandoDaPagina> Comandos() const override;
    bool Carrega(std::string &recusa) override;
    bool Habilitado(const std::string &comando, std::optional<std::size_t> linha) const override;
    std::string Pergunta(const std::string &comando, std::optional<std::size_t> linha) const override;
    std::optional<Ficha> Abre(const std::string &comando, std::optional<std::size_t> linha,
                              std::string &recusa) override;
    bool Faz(const std::string &comando, std::optional<std::size_t> linha, std::string &recusa) override;

  protected:
    std::vector<std::string> LinhaDe(const EntradaRecusadaED &registro) const override;
    std::string ChaveDe(const EntradaRecusadaED &registro) const override;

  private:
    bool LePagina(std::string &recusa);

    std::int32_t m_Proxima = 0; // where the next ones start; 0 when there are none
};

} // namespace mesa
