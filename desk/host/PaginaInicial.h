#pragma once

#include "desk/host/EquipamentosRecentes.h"
#include "services/SessaoServico.h"

#include <string>
#include <vector>

namespace mesa {

// Something with which work may begin.
struct AcaoInicial {
    std::string Nome; // of the tool or action of the menus that it stands for
    std::string Titulo;
    std::string Explicacao;
    std::string Atalho;
};

// An equipment as a row of the page.
struct RecenteMostrado {
    std::vector<std::string> Celulas; // under PaginaInicial::Colunas()
    EquipamentoRecente Qual;
};

// What the start page says to one who is signed in: what there is to do, what was worked on, or why there is nothing.
class PaginaInicial {
  public:
    // onde: where the registry is, when it is not on this computer.
    PaginaInicial(SessaoServico &sessao, std::vector<EquipamentoRecente> recentes, const std::string &onde = "");

    static const std::vector<std::string> &Colunas();

    const std::string &Quem() const { return m_Quem; }
    const std::vector<AcaoInicial> &Acoes() const { return m_Acoes; }
    // Why equipment cannot be looked at, and whom to ask; empty when it can.
    const std::string &Impedimento() const { return m_Impedimento; }
    const std::vector<RecenteMostrado> &Recentes() const { return m_Recentes; }

  private:
    std::string m_Quem;
    std::vector<AcaoInicial> m_Acoes;
    std::string m_Impedimento;
    std::vector<RecenteMostrado> m_Recentes;
};

} // namespace mesa
