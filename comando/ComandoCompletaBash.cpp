#include "comando/CompletaBash.h"
#include "comando/Subcomando.h"

#include <ostream>

namespace comando {

namespace {

class ComandoCompletaBash : public Subcomando {
  public:
    std::string Nome() const override { return "completa-bash"; }
    std::string Resumo() const override
    {
        return "Escreve o que faz o bash completar estes comandos: source <(registro completa-bash).";
    }

    void Descreve(CLI::App &linha) override { m_Linha = &linha; }

    Codigo Faz(Ambiente &ambiente) override
    {
        ambiente.Saida << CompletaBash(*m_Linha->get_parent());
        return Codigo::Feito;
    }

  private:
    CLI::App *m_Linha = nullptr;
};

const Conhecido conhecido(FazUm<ComandoCompletaBash>);

} // namespace

} // namespace comando
