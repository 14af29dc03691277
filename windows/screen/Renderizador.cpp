#include "windows/screen/Renderizador.h"

#include "windows/automation/Texto16.h"
#include "windows/screen/Enquanto.h"
#include "windows/screen/JanelaForm.h"

#include <algorithm>

namespace nativo {

Renderizador::Renderizador(Ref<IControle> controle, const Peca &peca, JanelaForm &janela)
    : m_Controle(std::move(controle)),
      m_Peca(peca),
      m_Janela(janela)
{
    ControleBase *base = ComoBase(m_Controle);
    m_Conexoes.push_back(base->Mudou().liga([this] {
        Atualiza();
        m_Janela.PedeArranjo();
    }));
    m_Conexoes.push_back(base->RecebeuFoco().liga([this] {
        if (const HWND alvo = JanelaDe(ParteDoFoco(m_Controle->Especie())); alvo != nullptr && !ParteComTeclado()) {
            m_Janela.LevaTeclado(alvo);
        }
    }));
    if (!m_Peca.Rotulo.empty()) {
        m_Rotulo = m_Janela.FazFilha(WC_STATICW, SS_LEFTNOWORDWRAP, 0);
        m_Janela.Registra(m_Rotulo, *this);
    }
}

HWND Renderizador::Principal() const
{
    return m_Janelas.empty() ? nullptr : m_Janelas.front().Manipulador;
}

HWND Renderizador::Faz(const wchar_t *classe, DWORD estilo, DWORD estiloExtra)
{
    const bool primeira = m_Janelas.empty();
    const HWND feita = m_Janela.FazFilha(classe, estilo, estiloExtra);
    m_Janelas.push_back({feita});
    const bool umLugar = ParteDoFoco(m_Controle->Especie()) == Parte::Todo; // others name their parts
    if (primeira && umLugar && !m_Peca.NomeAcessivel.empty()) {
        Nomeia(feita, m_Peca.NomeAcessivel);
    }
    m_Janela.Registra(feita, *this);
    return feita;
}

bool Renderizador::Encerrado() const
{
    return m_Janela.Encerrada();
}

const Letra &Renderizador::Escrita() const
{
    return m_Janela.Escrita();
}

void Renderizador::Atualiza()
{
    if (Encerrado() || m_Mostrando) {
        return;
    }
    const Enquanto mostrando(m_Mostrando);
    if (m_Rotulo != nullptr) {
        EscreveTexto(m_Rotulo, m_Controle->Rotulo());
    }
    Mostra();
}

void Renderizador::MostraOndeEsta(bool visivel, bool habilitado)
{
    m_Visivel = visivel;
    m_Habilitado = habilitado;
    for (const JanelaDoControle &janela : m_Janelas) {
        Aplica(janela);
    }
    if (m_Rotulo != nullptr) {
        Aplica({m_Rotulo});
    }
}

void Renderizador::Aplica(const JanelaDoControle &janela) const
{
    const bool visivel = m_Visivel && janela.Visivel;
    const bool habilitada = m_Habilitado && janela.Habilitada;
    const LONG_PTR estilo = GetWindowLongPtrW(janela.Manipulador, GWL_STYLE);
    if (((estilo & WS_DISABLED) == 0) != habilitada) {
        EnableWindow(janela.Manipulador, habilitada);
    }
    if (((estilo & WS_VISIBLE) != 0) != visivel) {
        ShowWindow(janela.Manipulador, visivel ? SW_SHOWNA : SW_HIDE);
    }
}

void Renderizador::MostraParte(HWND janela, bool visivel)
{
    Altera(janela, &JanelaDoControle::Visivel, visivel);
}

void Renderizador::HabilitaParte(HWND janela, bool habilitada)
{
    Altera(janela, &JanelaDoControle::Habilitada, habilitada);
}

void Renderizador::Altera(HWND janela, bool JanelaDoControle::*qual, bool valor)
{
    const auto achada = std::ranges::find(m_Janelas, janela, &JanelaDoControle::Manipulador);
    if (achada != m_Janelas.end() && (*achada).*qual != valor) {
        (*achada).*qual = valor;
        Aplica(*achada);
    }
}

void Renderizador::Nomeia(HWND janela, const std::string &nome)
{
    m_Janela.Nomeia(janela, nome);
}

void Renderizador::Coloca(const PecaArrumada &lugar)
{
    if (m_Rotulo != nullptr) {
        PoeEm(m_Rotulo, lugar.Rotulo);
    }
    if (const HWND principal = Principal()) {
        PoeEm(principal, lugar.Lugar);
    }
}

HWND Renderizador::JanelaDe(Parte) const
{
    return Principal();
}

std::optional<Parte> Renderizador::ParteComTeclado() const
{
    const HWND teclado = GetFocus();
    for (const Parte parte : PartesDe(m_Controle->Especie())) {
        if (const HWND janela = JanelaDe(parte);
            janela != nullptr && teclado != nullptr && (janela == teclado || IsChild(janela, teclado))) {
            return parte;
        }
    }
    return std::nullopt;
}

void Renderizador::Comando(HWND, UINT) {}

LRESULT Renderizador::Notifica(NMHDR &)
{
    return 0;
}

bool Renderizador::Desenha(const DRAWITEMSTRUCT &)
{
    return false;
}

std::optional<LRESULT> Renderizador::Mensagem(HWND, UINT, WPARAM, LPARAM)
{
    return std::nullopt;
}

bool Renderizador::FicaComTecla(HWND, WPARAM) const
{
    return false;
}

std::optional<COLORREF> Renderizador::CorDoMiolo() const
{
    return std::nullopt;
}

void Renderizador::MudouAparencia() {}

void Renderizador::MudouDeLugar() {}

void Renderizador::ChegouTeclado()
{
    if (ControleBase *base = ComoBase(m_Controle); !base->TemFoco()) {
        m_Janela.NaBorda([base] { base->Foco(); });
    }
}

void Renderizador::SaiuTeclado()
{
    m_Janela.NaBorda([this] { ComoBase(m_Controle)->Conclui(); });
}

void Renderizador::Age(const std::function<void()> &acao)
{
    if (m_Mostrando || Encerrado()) {
        return;
    }
    m_Janela.NaBorda(acao);
    Atualiza();
}

std::string TextoDe(HWND janela)
{
    std::wstring texto(static_cast<std::size_t>(GetWindowTextLengthW(janela)) + 1, L'\0');
    texto.resize(static_cast<std::size_t>(GetWindowTextW(janela, texto.data(), static_cast<int>(texto.size()))));
    return ParaUtf8(texto);
}

void EscreveTexto(HWND janela, const std::string &texto)
{
    if (TextoDe(janela) != texto) {
        SetWindowTextW(janela, ParaUtf16(texto).c_str());
    }
}

void PoeEm(HWND janela, const Retangulo &lugar)
{
    RECT onde{};
    GetWindowRect(janela, &onde);
    MapWindowPoints(HWND_DESKTOP, GetParent(janela), reinterpret_cast<POINT *>(&onde), 2);
    if (onde.left != lugar.X || onde.top != lugar.Y || onde.right - onde.left != lugar.Largura ||
        onde.bottom - onde.top != lugar.Altura) {
        SetWindowPos(janela, nullptr, lugar.X, lugar.Y, lugar.Largura, lugar.Altura,
                     SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
    }
}

} // namespace nativo
