#include "controls/SSTab.h"

SSTab::SSTab(const Origem &origem) : Controle(origem)
{
    for (const std::string &caption : origem.Ajustes<AjustesSSTab>().Paginas) {
        m_Paginas.push_back({caption});
    }
}

const SSTab::PaginaAba &SSTab::Exige(std::int16_t pagina) const
{
    if (pagina < 0 || pagina >= Tabs()) {
        throw Falha(NumeroFalha::ArgumentoInvalido);
    }
    return m_Paginas[static_cast<std::size_t>(pagina)];
}

void SSTab::DefineTab(std::int16_t pagina)
{
    const PaginaAba &nova = Exige(pagina);
    if (pagina == m_Tab || !nova.Enabled || !nova.Visible) {
        return;
    }
    Ref<IControle> vivo = Vivo();
    const std::int16_t anterior = m_Tab;
    m_Tab = pagina;
    Mudou().dispara();
    m_Click.dispara(anterior);
}

void SSTab::DefineTabEnabled(std::int16_t pagina, bool valor)
{
    Exige(pagina);
    Redefine(m_Paginas[static_cast<std::size_t>(pagina)].Enabled, valor);
}

void SSTab::DefineTabVisible(std::int16_t pagina, bool valor)
{
    Exige(pagina);
    Redefine(m_Paginas[static_cast<std::size_t>(pagina)].Visible, valor);
}

bool SSTab::Abre(std::int16_t pagina)
{
    Ref<IControle> vivo = Vivo();
    auto oferecida = [&] { return pagina >= 0 && pagina < Tabs() && TabEnabled(pagina) && TabVisible(pagina); };
    if (!oferecida() || !Foco() || !Usavel() || !oferecida()) {
        return false;
    }
    DefineTab(pagina);
    return true;
}
