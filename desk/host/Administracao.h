#pragma once

#include "desk/host/PaginaAdministracao.h"

#include <memory>
#include <vector>

namespace mesa {

// What of the administration a session may open.
class Administracao {
  public:
    explicit Administracao(Ref<SessaoServico> sessao) : m_Sessao(std::move(sessao)) {}

    std::vector<std::unique_ptr<PaginaAdministracao>> Paginas() const;

  private:
    bool Tem(const std::string &acao) const;

    Ref<SessaoServico> m_Sessao;
};

} // namespace mesa
