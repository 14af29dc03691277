#pragma once

#include "desk/host/PaginaAdministracao.h"
#include "services/LogradouroED.h"

namespace mesa {

// The streets of the municipalities.
class PaginaLogradouros : public PaginaDe<LogradouroED> {
  public:
    explicit PaginaLogradouros(Ref<SessaoServico> sessao);

    std::string_view Nome() const override { return "logradouros"; }
    std::string_view Titulo() const override { return "&Logradouros"; }
    std::vector<std::string> Colunas() const override;
    std::vector<ComandoDaPagina> Comandos() const override;
    Ficha *Criterios() override { return &m_Criterios; }
    bool Carrega(std::string &recusa) override;
    std::string Nota() const override { return m_Nota; }
    bool Habilitado(const std::string &comando, std::optional<std::size_t> linha) const override;
    std::string Pergunta(const std::string &comando, std::optional<std::size_t> linha) const override;
    std::optional<Ficha> Abre(const std::string &comando, std::optional<std::size_t> linha,
                              std::string &recusa) override;
    bool Faz(const std::string &comando, std::optional<std::size_t> linha, std::string &recusa) override;
    std::optional<RelatoDaPagina> FazComArquivo(const std::string &comando, const std::string &conteudo,
                                                std::string &recusa) override;

  protected:
    std::vector<std::string> LinhaDe(const LogradouroED &registro) const override;
    std::string ChaveDe(const LogradouroED &registro) const override;

  private:
    Ficha m_Criterios;
    std::string m_Nota;
};

} // namespace mesa
