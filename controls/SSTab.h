#pragma once

#include "controls/Controle.h"
#include "host/IControlesPadrao.h"

#include <vector>

class SSTab : public Controle<ISSTab> {
  public:
    explicit SSTab(const Origem &origem);

    std::int16_t Tabs() const override { return static_cast<std::int16_t>(m_Paginas.size()); }
    std::int16_t Tab() const override { return m_Tab; }
    void DefineTab(std::int16_t pagina) override;
    std::string TabCaption(std::int16_t pagina) const override { return Exige(pagina).Caption; }
    bool TabEnabled(std::int16_t pagina) const override { return Exige(pagina).Enabled; }
    void DefineTabEnabled(std::int16_t pagina, bool valor) override;
    bool TabVisible(std::int16_t pagina) const override { return Exige(pagina).Visible; }
    void DefineTabVisible(std::int16_t pagina, bool valor) override;
    Evento<std::int16_t> &Click() override { return m_Click; }

    // The person opens a page.
    bool Abre(std::int16_t pagina);

  private:
    struct PaginaAba {
        std::string Caption;
        bool Enabled = true;
        bool Visible = true;
    };

    const PaginaAba &Exige(std::int16_t pagina) const;

    std::vector<PaginaAba> m_Paginas;
    std::int16_t m_Tab = 0;
    Evento<std::int16_t> m_Click;
};
