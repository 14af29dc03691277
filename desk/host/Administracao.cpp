#include "desk/host/Administracao.h"

#include "desk/host/PaginaClientes.h"
#include "desk/host/PaginaEntradas.h"
#include "desk/host/PaginaLayouts.h"
#include "desk/host/PaginaLogradouros.h"
#include "desk/host/PaginaUsuarios.h"
#include "services/Permissoes.h"

namespace mesa {

bool Administracao::Tem(const std::string &acao) const
{
    return m_Sessao->TemPermissao(Permissoes::Sistema, Permissoes::ObjetoAdministracao, acao);
}

std::vector<std::unique_ptr<PaginaAdministracao>> Administracao::Paginas() const
{
    std::vector<std::unique_ptr<PaginaAdministracao>> paginas;
    if (Tem(Permissoes::Usuarios)) {
        paginas.push_back(std::make_unique<PaginaUsuarios>(m_Sessao));
        paginas.push_back(std::make_unique<PaginaClientes>(m_Sessao));
        paginas.push_back(std::make_unique<PaginaEntradas>(m_Sessao));
    }
    if (Tem(Permissoes::Tabelas)) {
        paginas.push_back(std::make_unique<PaginaLogradouros>(m_Sessao));
        paginas.push_back(std::make_unique<PaginaLayouts>(m_Sessao));
    }
    return paginas;
}

} // namespace mesa
