#include "shell/Formulario.h"

#include "shell/Geral.h"
#include "shell/ModGeral.h"

void Formulario::DefineEnabled(bool valor)
{
    if (m_Enabled != valor) {
        m_Enabled = valor;
        m_Mudou.dispara();
    }
}

void Formulario::DefineVisible(bool valor)
{
    if (m_Visible != valor) {
        m_Visible = valor;
        m_Mudou.dispara();
    }
}

void Formulario::SetFocus()
{
    if (!m_Enabled || !m_Visible) {
        throw Falha(NumeroFalha::ArgumentoInvalido);
    }
    m_PediuFoco.dispara();
}

void Formulario::DefineCaption(const std::string &valor)
{
    if (m_Caption != valor) {
        m_Caption = valor;
        m_Mudou.dispara();
    }
}

void Formulario::DefineLeft(std::int32_t valor)
{
    m_Left = valor;
    m_Mudou.dispara();
}

void Formulario::DefineTop(std::int32_t valor)
{
    m_Top = valor;
    m_Mudou.dispara();
}

void Formulario::DefineWidth(std::int32_t valor)
{
    m_Width = valor;
    m_Mudou.dispara();
}

void Formulario::DefineHeight(std::int32_t valor)
{
    m_Height = valor;
    m_Mudou.dispara();
}

void Formulario::DefineWindowState(std::int16_t valor)
{
    m_WindowState = valor;
    m_Mudou.dispara();
}

void Formulario::ZOrder(std::int16_t posicao)
{
    m_PediuOrdem.dispara(posicao);
}

void Formulario::DefineIcone(const std::string &chave)
{
    m_Icone = chave;
    m_Mudou.dispara();
}

Formulario::Recipiente Formulario::Cria(IFabricaControles &fabrica, const Peca &peca, const Recipiente &recipiente)
{
    if (!peca.Especie()) {
        return recipiente;
    }
    m_Controles.push_back(fabrica.Cria(EsteForm(), peca, recipiente.Controle, recipiente.Pagina));
    return {m_Controles.back()};
}

void Formulario::CriaConteudo(IFabricaControles &fabrica, const Peca &peca, const Recipiente &recipiente)
{
    if (peca.Especie() != EspecieControle::SSTab) {
        for (const Peca &contida : peca.Pecas) {
            CriaConteudo(fabrica, contida, Cria(fabrica, contida, recipiente));
        }
        return;
    }
    std::vector<Recipiente> paginas;
    for (const Peca &pagina : peca.Pecas) {
        paginas.push_back(Cria(fabrica, pagina, {recipiente.Controle, static_cast<std::int16_t>(paginas.size())}));
    }
    for (std::size_t i = 0; i < paginas.size(); ++i) {
        CriaConteudo(fabrica, peca.Pecas[i], paginas[i]);
    }
}

Ref<IControle> Formulario::ControleChamado(const std::string &nome, std::int16_t indice) const
{
    for (const Ref<IControle> &controle : m_Controles) {
        if (controle->Nome() == nome && controle->Indice() == indice) {
            return controle;
        }
    }
    throw Falha(NumeroFalha::ArgumentoInvalido);
}

void Formulario::Carregar()
{
    if (m_Carregado) {
        return;
    }
    m_Controles.clear();
    m_ControleAtivo = nullptr;
    m_Enabled = true;
    m_Visible = false;
    m_WindowState = JanelaNormal;
    const ::Desenho desenho = Desenho();
    m_Caption = desenho.Caption;
    m_Width = desenho.Largura;
    m_Height = desenho.Altura;
    m_hwnd = ++EsteComponente().UltimoHwnd;
    try {
        CriaConteudo(*Host().Controles(), desenho.Raiz, {});
        LigaControles();
        Plataforma()->Carrega(EsteForm());
    } catch (...) { // not loaded: the next attempt starts afresh
        m_hwnd = 0;
        Desliga();
        throw;
    }
    m_Carregado = true;
}

void Formulario::Descarregar()
{
    Plataforma()->Descarrega(EsteForm());
}

void Formulario::AbandonaCarga() noexcept
{
    if (m_Carregado && !m_Visible) {
        IgnoraErro([&] { Descarregar(); });
    }
    if (!m_Carregado) {
        IgnoraErro([&] { Solta(); });
    }
}

void Formulario::Unload(bool &cancela)
{
    if (!m_Carregado) {
        return;
    }
    Ref<IForm> viva = EsteForm();
    Form_Unload(cancela);
    if (cancela) {
        return;
    }
    m_Carregado = false;
    m_Visible = false;
    m_hwnd = 0;
    Desliga();
    m_ControleAtivo = nullptr;
    m_frmParent = nullptr;
}

void Formulario::Ativada()
{
    IgnoraErro([&] { goGeral->FormAtivado(EsteForm()); });
    Form_Activate();
}

void Formulario::Desativada()
{
    Form_Deactivate();
}

void Formulario::Redimensionada()
{
    Form_Resize();
}

void Formulario::Form_Unload(bool &) {}

void Formulario::Form_Activate() {}

void Formulario::Form_Deactivate() {}

void Formulario::Form_Resize() {}
