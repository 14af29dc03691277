#include "controls/ControleBase.h"

#include "host/IControlesPadrao.h"

#include <algorithm>
#include <vector>

ControleBase::ControleBase(const Origem &origem)
    : m_Especie(origem.Descricao.Especie().value()),
      m_Nome(origem.Descricao.Nome),
      m_Indice(origem.Descricao.Indice),
      m_Caption(origem.Descricao.Caption),
      m_Rotulo(origem.Descricao.Rotulo),
      m_Container(origem.Container),
      m_Pagina(origem.Pagina),
      m_Enabled(origem.Descricao.Enabled),
      m_Visible(origem.Descricao.Visible),
      m_Left(origem.Descricao.Left),
      m_Top(origem.Descricao.Top),
      m_Width(origem.Descricao.Width),
      m_Height(origem.Descricao.Height),
      m_TabIndex(static_cast<std::int16_t>(origem.Form->Controles().size())),
      m_Form(origem.Form)
{
}

bool ControleBase::AceitaFoco() const
{
    switch (m_Especie) {
    case EspecieControle::Label:
    case EspecieControle::Image:
    case EspecieControle::ztFrame:
    case EspecieControle::CommonDialog:
        return false;
    default:
        return true;
    }
}

bool ControleBase::HabilitadoComContainers() const
{
    if (!m_Enabled) {
        return false;
    }
    std::int16_t pagina = m_Pagina;
    for (Ref<IControle> dono = m_Container; dono; dono = dono->Container()) {
        const auto *abas = dynamic_cast<const ISSTab *>(dono.Ponteiro());
        if (!dono->Enabled() || (abas != nullptr && pagina >= 0 && !abas->TabEnabled(pagina))) {
            return false;
        }
        pagina = dono->Pagina();
    }
    return true;
}

bool ControleBase::HabilitadoDeFato() const
{
    Ref<IForm> form = Form();
    return form && form->Enabled() && HabilitadoComContainers();
}

bool ControleBase::VisivelDeFato() const
{
    Ref<IForm> form = Form();
    if (!form || !form->Visible() || !m_Visible || m_Especie == EspecieControle::CommonDialog) {
        return false;
    }
    std::int16_t pagina = m_Pagina;
    for (Ref<IControle> dono = m_Container; dono; dono = dono->Container()) {
        const auto *abas = dynamic_cast<const ISSTab *>(dono.Ponteiro());
        if (!dono->Visible() ||
            (abas != nullptr && pagina >= 0 && (abas->Tab() != pagina || !abas->TabVisible(pagina)))) {
            return false;
        }
        pagina = dono->Pagina();
    }
    return true;
}

bool ControleBase::TemFoco() const
{
    Ref<IForm> form = Form();
    return form && ComoBase(form->ControleAtivo()) == this;
}

std::string ControleBase::Impedimento() const
{
    Ref<IForm> form = Form();
    if (!form || !form->Visible()) {
        return "a janela não está aberta";
    }
    if (!form->Enabled()) {
        return "a janela está bloqueada";
    }
    if (!m_Visible) {
        return "está oculto";
    }
    if (!VisivelDeFato()) {
        return "o que o contém está oculto";
    }
    if (!m_Enabled) {
        return "está desabilitado";
    }
    if (!HabilitadoComContainers()) {
        return "o que o contém está desabilitado";
    }
    return {};
}

bool ControleBase::Foco()
{
    if (!AceitaFoco() || !Usavel()) {
        return false;
    }
    Ref<IControle> vivo = Vivo();
    EntraFoco(false);
    return TemFoco();
}

void ControleBase::AoReceberFoco(bool) {}

void ControleBase::DaFoco()
{
    if (!AceitaFoco()) {
        throw Falha(NumeroFalha::MembroInexistente);
    }
    if (!HabilitadoComContainers() || !VisivelDeFato()) {
        throw Falha(NumeroFalha::ArgumentoInvalido);
    }
    Ref<IControle> vivo = Vivo();
    EntraFoco(true);
}

void ControleBase::EntraFoco(bool pedido)
{
    Ref<IForm> form = Form();
    Ref<IControle> anterior = form->ControleAtivo();
    bool chegou = ComoBase(anterior) != this;
    if (chegou) {
        form->DefineControleAtivo(Vivo());
        if (ControleBase *deixado = ComoBase(anterior); deixado != nullptr) {
            deixado->Conclui();
        }
        if (!TemFoco()) { // what the other control raised has led the focus elsewhere
            return;
        }
    }
    if (chegou || pedido) {
        m_RecebeuFoco.dispara();
    }
    AoReceberFoco(chegou);
}

void ControleBase::Renumera(std::int16_t tabIndex)
{
    if (tabIndex < 0) {
        throw Falha(NumeroFalha::ArgumentoInvalido);
    }
    Ref<IForm> form = Form();
    std::vector<ControleBase *> ordem;
    if (form) {
        for (const Ref<IControle> &controle : form->Controles()) {
            ControleBase *base = ComoBase(controle);
            if (base != nullptr && base != this) {
                ordem.push_back(base);
            }
        }
    }
    std::ranges::stable_sort(ordem, {}, [](const ControleBase *base) { return base->m_TabIndex; });
    const auto lugar = std::min(ordem.size(), static_cast<std::size_t>(tabIndex));
    ordem.insert(ordem.begin() + static_cast<std::ptrdiff_t>(lugar), this);
    for (std::size_t i = 0; i < ordem.size(); ++i) {
        ordem[i]->m_TabIndex = static_cast<std::int16_t>(i);
    }
    m_Mudou.dispara();
}

std::string_view NomeEspecie(EspecieControle especie)
{
    switch (especie) {
    case EspecieControle::Label:
        return "Label";
    case EspecieControle::TextBox:
        return "TextBox";
    case EspecieControle::CheckBox:
        return "CheckBox";
    case EspecieControle::OptionButton:
        return "OptionButton";
    case EspecieControle::CommandButton:
        return "CommandButton";
    case EspecieControle::SSTab:
        return "SSTab";
    case EspecieControle::Image:
        return "Image";
    case EspecieControle::CommonDialog:
        return "CommonDialog";
    case EspecieControle::ztList:
        return "ztList";
    case EspecieControle::ztCombo:
        return "ztCombo";
    case EspecieControle::ztMask:
        return "ztMask";
    case EspecieControle::ztData:
        return "ztData";
    case EspecieControle::ztCommand:
        return "ztCommand";
    case EspecieControle::ztFrame:
        return "ztFrame";
    case EspecieControle::ztVeiObservacao:
        return "ztVeiObservacao";
    case EspecieControle::ztEndereco:
        return "ztEndereco";
    case EspecieControle::ztClienteSetor:
        return "ztClienteSetor";
    }
    return {};
}

ControleBase *ComoBase(const Ref<IControle> &controle)
{
    return dynamic_cast<ControleBase *>(controle.Ponteiro());
}
