#pragma once

#include "services/LayoutED.h"
#include "services/Operacao.h"

#include <cstdint>
#include <string>
#include <vector>

namespace mesa {

// The layouts of the files of the equipment. Each keeps its name, and none ever goes away.
class ServicoLayouts {
  public:
    explicit ServicoLayouts(Operacao &operacao) : m_Operacao(operacao) {}

    Ref<ListaLayoutsED> Lista(const ListaLayoutsED &pedido);
    Ref<LayoutED> Inclui(const LayoutED &pedido);
    Ref<LayoutED> Altera(const LayoutED &pedido);

    // Refuses a name that no active layout has. An equipment may have none, which is empty or "NENHUM".
    void ConfereOferecido(const std::string &nome) const;

  private:
    Ref<LayoutED> Acha(std::int32_t nroLayout) const;
    void RecusaNomeTomado(const std::string &nome) const;
    // Names that the equipment of the operator's client still has, though no active layout has them.
    void AcrescentaDeixados(const ListaDe<LayoutED> &lista) const;
    void Registra(const char *acao, const LayoutED &depois);

    Operacao &m_Operacao;
};

// The layouts that come with the program, as a registry that has none yet gets them.
std::vector<Ref<LayoutED>> LayoutsDoPrograma();

} // namespace mesa
