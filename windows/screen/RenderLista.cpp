#include "windows/screen/RenderLista.h"

#include "controls/ztList.h"
#include "tela/Mnemonicas.h"
#include "windows/automation/Texto16.h"
#include "windows/screen/JanelaForm.h"
#include "windows/screen/Letra.h"

#include <windowsx.h>

#include <algorithm>
#include <cwchar>
#include <memory>
#include <utility>

namespace nativo {

namespace {

constexpr Folgas AFolga{};
constexpr std::int32_t FolgaDaCelula = 12; // pixels of 15 twips, beside its text
constexpr std::int32_t FolgaDoTitulo = 24; // with the arrow of the order
constexpr std::int32_t EntreBotoes = 2;
constexpr int LarguraDaDica = 400;
constexpr UINT PrimeiraOrdem = 1000; // number in the menu; those of the commands come before

struct FechaMenu {
    void operator()(HMENU menu) const { DestroyMenu(menu); }
};
using Menu = std::unique_ptr<std::remove_pointer_t<HMENU>, FechaMenu>;

void Acrescenta(HMENU menu, UINT_PTR numero, const std::string &texto, UINT como)
{
    AppendMenuW(menu, MF_STRING | como, numero, ParaUtf16(texto).c_str());
}

} // namespace

RenderLista::RenderLista(Ref<IControle> controle, const Peca &peca, JanelaForm &janela)
    : Renderizador(std::move(controle), peca, janela)
{
    if (!peca.Pecas.empty()) {
        m_Localizar = Faz(WC_BUTTONW, BS_PUSHBUTTON);
        EscreveTexto(m_Localizar, std::string(Partes::Localizar));
    }
    m_Titulo = Faz(WC_STATICW, SS_LEFT | SS_NOPREFIX);
    m_Linhas = Faz(WC_LISTVIEWW, LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS, WS_EX_CLIENTEDGE);
    constexpr LPARAM Modos = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP;
    SendMessageW(m_Linhas, LVM_SETEXTENDEDLISTVIEWSTYLE, Modos, Modos);
    Nomeia(m_Linhas, peca.NomeAcessivel);
    m_Mais = Faz(WC_BUTTONW, BS_PUSHBUTTON);
    EscreveTexto(m_Mais, std::string(Partes::MaisRegistros));
    m_Dicas = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0, 0,
                              0, janela.Manipulador(), nullptr, EsteModulo(), nullptr);
    SendMessageW(m_Dicas, TTM_SETMAXTIPWIDTH, 0, Escrita().Medida(LarguraDaDica));
    m_Ajuda.Manipulador = FazBotao();
    m_Fechar.Manipulador = FazBotao();
}

// The list keeps the keyboard: Alt with the letter, or its menu, does the same as a button of the side bar.
HWND RenderLista::FazBotao()
{
    const HWND botao = Faz(WC_BUTTONW, BS_PUSHBUTTON | BS_MULTILINE | BS_LEFT);
    const int margem = Escrita().Medida(AFolga.Campo);
    RECT margens{margem, 0, margem, 0};
    SendMessageW(botao, BCM_SETTEXTMARGIN, 0, reinterpret_cast<LPARAM>(&margens));
    TTTOOLINFOW dica{};
    dica.cbSize = TTTOOLINFOW_V1_SIZE;
    dica.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    dica.hwnd = Janela().Manipulador();
    dica.uId = reinterpret_cast<UINT_PTR>(botao);
    dica.lpszText = const_cast<LPWSTR>(L"");
    SendMessageW(m_Dicas, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&dica));
    return botao;
}

HWND RenderLista::JanelaDe(Parte parte) const
{
    switch (parte) {
    case Parte::Localizar:
        return m_Localizar;
    case Parte::MaisRegistros:
        return m_Mais;
    case Parte::LimparCriterios:
    case Parte::Filtro:
        return nullptr;
    default:
        return m_Linhas;
    }
}

// What is seen.

void RenderLista::Mostra()
{
    const auto &lista = Como<ztList>(*this);
    EscreveTexto(m_Titulo, lista.Titulo());
    MostraParte(m_Titulo, !lista.Titulo().empty());
    if (m_Localizar != nullptr) {
        MostraParte(m_Localizar, lista.Ajustes().BarraCriteriosAtiva);
    }
    MostraParte(m_Mais, lista.TemMais());
    MostraMenu();
    MostraColunas();
    MostraLinhas();
    MostraOrdem();
    Reparte();
}

void RenderLista::MostraColunas()
{
    std::vector<Vista> vistas;
    std::int32_t numero = 0;
    for (const ztList::Coluna &coluna : Como<ztList>(*this).Colunas()) {
        ++numero;
        if (coluna.Visivel) {
            vistas.push_back({numero, coluna.Titulo, coluna.Largura});
        }
    }
    if (vistas == m_Vistas) { // as wide as the person has made them
        return;
    }
    for (std::size_t velhas = m_Vistas.size(); velhas > 0; --velhas) {
        SendMessageW(m_Linhas, LVM_DELETECOLUMN, velhas - 1, 0);
    }
    m_Vistas = std::move(vistas);
    m_Fonte = Escrita().Fonte();
    int lugar = 0;
    for (const Vista &vista : m_Vistas) {
        std::wstring titulo = ParaUtf16(vista.Titulo);
        LVCOLUMNW coluna{};
        coluna.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT | LVCF_SUBITEM;
        coluna.fmt = LVCFMT_LEFT;
        coluna.cx = LarguraDa(vista);
        coluna.pszText = titulo.data();
        coluna.iSubItem = lugar;
        SendMessageW(m_Linhas, LVM_INSERTCOLUMNW, static_cast<WPARAM>(lugar++), reinterpret_cast<LPARAM>(&coluna));
    }
}

int RenderLista::LarguraDa(const Vista &vista) const
{
    const int descrita = Escrita().DeTwips(vista.Largura) + Escrita().Medida(FolgaDaCelula);
    return std::max(descrita, Escrita().Medida(Escrita().Mede(vista.Titulo, 0).Largura + FolgaDoTitulo));
}

// The last column takes what the others leave.
void RenderLista::EsticaUltima() const
{
    if (m_Vistas.empty() || m_Esticando) {
        return;
    }
    RECT dentro{};
    GetClientRect(m_Linhas, &dentro);
    const std::size_t ultima = m_Vistas.size() - 1;
    int resto = dentro.right;
    for (std::size_t coluna = 0; coluna < ultima; ++coluna) {
        resto -= static_cast<int>(SendMessageW(m_Linhas, LVM_GETCOLUMNWIDTH, coluna, 0));
    }
    const int largura = std::max(resto, LarguraDa(m_Vistas.back()));
    if (static_cast<int>(SendMessageW(m_Linhas, LVM_GETCOLUMNWIDTH, ultima, 0)) != largura) {
        m_Esticando = true; // scroll bars may come and go
        SendMessageW(m_Linhas, LVM_SETCOLUMNWIDTH, ultima, largura);
        m_Esticando = false;
    }
}

void RenderLista::MostraOrdem() const
{
    const auto &lista = Como<ztList>(*this);
    const auto titulos = reinterpret_cast<HWND>(SendMessageW(m_Linhas, LVM_GETHEADER, 0, 0));
    for (std::size_t coluna = 0; coluna < m_Vistas.size(); ++coluna) {
        HDITEMW titulo{};
        titulo.mask = HDI_FORMAT;
        SendMessageW(titulos, HDM_GETITEMW, coluna, reinterpret_cast<LPARAM>(&titulo));
        const int antes = titulo.fmt;
        titulo.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
        if (m_Vistas[coluna].Numero == lista.ColunaOrdem()) {
            titulo.fmt |= lista.OrdemDecrescente() ? HDF_SORTDOWN : HDF_SORTUP;
        }
        if (titulo.fmt != antes) {
            SendMessageW(titulos, HDM_SETITEMW, coluna, reinterpret_cast<LPARAM>(&titulo));
        }
    }
}

void RenderLista::MostraLinhas()
{
    const auto &lista = Como<ztList>(*this);
    const bool outras = m_Arranjo != lista.Arranjo();
    if (outras) {
        m_Arranjo = lista.Arranjo();
        SendMessageW(m_Linhas, LVM_SETITEMCOUNT, static_cast<WPARAM>(lista.NroVistas()), LVSICF_NOSCROLL);
        InvalidateRect(m_Linhas, nullptr, TRUE);
    }
    if (lista.AtualVista() == m_Atual && !outras) {
        return;
    }
    m_Atual = lista.AtualVista();
    LVITEMW estado{};
    estado.stateMask = LVIS_FOCUSED | LVIS_SELECTED;
    if (m_Atual < 1) {
        SendMessageW(m_Linhas, LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&estado));
        return;
    }
    const auto linha = static_cast<WPARAM>(m_Atual - 1);
    estado.state = estado.stateMask;
    SendMessageW(m_Linhas, LVM_SETITEMSTATE, linha, reinterpret_cast<LPARAM>(&estado));
    SendMessageW(m_Linhas, LVM_ENSUREVISIBLE, linha, FALSE);
}

void RenderLista::MostraMenu()
{
    const BarraDeLista barra = BarraDaLista(Como<ztList>(*this));
    std::size_t lugar = 0;
    for (const ComandoDeLista &comando : barra.Comandos) {
        if (lugar == m_Botoes.size()) {
            m_Botoes.push_back({.Manipulador = FazBotao()});
        }
        Botao &botao = m_Botoes[lugar++];
        botao.Chave = comando.Chave;
        botao.IniciaGrupo = comando.IniciaGrupo;
        MostraBotao(botao, comando.NoBotao, comando.Dica, barra.Visivel && comando.Visivel, comando.Utilizavel);
    }
    const bool proprios = barra.Visivel && barra.ComBotoesProprios;
    MostraBotao(m_Ajuda, barra.Ajuda, "", proprios, true);
    MostraBotao(m_Fechar, barra.Fechar, "", proprios, true);
}

void RenderLista::MostraBotao(Botao &botao, const std::string &texto, const std::string &dica, bool visivel,
                              bool habilitado)
{
    EscreveTexto(botao.Manipulador, texto);
    botao.Texto = texto;
    botao.Visivel = visivel;
    MostraParte(botao.Manipulador, visivel);
    HabilitaParte(botao.Manipulador, habilitado);
    if (botao.Dica != dica) {
        botao.Dica = dica;
        std::wstring largo = ParaUtf16(dica);
        TTTOOLINFOW info{};
        info.cbSize = TTTOOLINFOW_V1_SIZE;
        info.uFlags = TTF_IDISHWND;
        info.hwnd = Janela().Manipulador();
        info.uId = reinterpret_cast<UINT_PTR>(botao.Manipulador);
        info.lpszText = largo.data();
        SendMessageW(m_Dicas, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&info));
    }
}

void RenderLista::MudouAparencia()
{
    if (m_Fonte == Escrita().Fonte()) { // the columns stay as wide as the person has made them
        return;
    }
    m_Vistas.clear();
    while (SendMessageW(m_Linhas, LVM_DELETECOLUMN, 0, 0) != FALSE) {
    }
    Atualiza();
}

// Where it stands.

void RenderLista::Coloca(const PecaArrumada &lugar)
{
    if (m_Localizar != nullptr) {
        PoeEm(m_Localizar, lugar.Localizar);
    }
    m_Lugar = lugar.Miolo;
    Reparte();
}

void RenderLista::Reparte() const
{
    if (m_Lugar.Largura == 0) { // nobody has told it yet
        return;
    }
    const auto &lista = Como<ztList>(*this);
    const int entre = Escrita().Medida(AFolga.EntrePecas);
    Retangulo resto = m_Lugar;
    if (const int barra = ColocaBarra(); barra > 0) {
        resto.Largura -= barra + entre;
    }
    if (!lista.Titulo().empty()) {
        const Tamanho titulo = Escrita().Mede(lista.Titulo(), Escrita().Cabem(resto.Largura));
        const int altura = Escrita().Medida(titulo.Altura);
        PoeEm(m_Titulo, {resto.X, resto.Y, resto.Largura, altura});
        resto.Y += altura + entre;
        resto.Altura -= altura + entre;
    }
    if (lista.TemMais()) {
        const Tamanho mais = TamanhoDoBotao(std::string(Partes::MaisRegistros));
        resto.Altura -= mais.Altura + entre;
        PoeEm(m_Mais, {resto.X, resto.Y + resto.Altura + entre, mais.Largura, mais.Altura});
    }
    PoeEm(m_Linhas, {resto.X, resto.Y, std::max(resto.Largura, 0), std::max(resto.Altura, 0)});
    EsticaUltima();
}

Tamanho RenderLista::TamanhoDoBotao(const std::string &caption) const
{
    const Tamanho texto = Escrita().Mede(SemMarca(caption), 0);
    return {Escrita().Medida(std::max(AFolga.MenorBotao, texto.Largura + AFolga.Botao)),
            Escrita().Medida(texto.Altura + AFolga.Campo)};
}

// At the right, one button below the other, the list's own at the bottom; where the height is short, in as many columns
// as it takes. How wide they are.
int RenderLista::ColocaBarra() const
{
    std::vector<const Botao *> vistos;
    for (const Botao &botao : m_Botoes) {
        if (botao.Visivel) {
            vistos.push_back(&botao);
        }
    }
    const std::size_t comandos = vistos.size();
    for (const Botao *proprio : {&m_Ajuda, &m_Fechar}) {
        if (proprio->Visivel) {
            vistos.push_back(proprio);
        }
    }
    const int entre = Escrita().Medida(EntreBotoes);
    const int grupo = Escrita().Medida(AFolga.EntrePecas);
    struct Posto {
        int Coluna;
        int Y;
        int Altura;
    };
    std::vector<Posto> postos;
    int largura = 0;
    int coluna = 0;
    int y = 0;
    for (std::size_t i = 0; i < vistos.size(); ++i) {
        const Tamanho tamanho = TamanhoDoBotao(vistos[i]->Texto);
        largura = std::max(largura, tamanho.Largura);
        y += y > 0 && (vistos[i]->IniciaGrupo || i == comandos) ? grupo : 0;
        if (y > 0 && y + tamanho.Altura > m_Lugar.Altura) {
            ++coluna;
            y = 0;
        }
        postos.push_back({coluna, y, tamanho.Altura});
        y += tamanho.Altura + entre;
    }
    const int colunas = vistos.empty() ? 0 : coluna + 1;
    const int total = colunas * largura + std::max(colunas - 1, 0) * entre;
    const int sobra = colunas == 1 ? std::max(m_Lugar.Altura - (y - entre), 0) : 0;
    for (std::size_t i = 0; i < vistos.size(); ++i) {
        PoeEm(vistos[i]->Manipulador,
              {m_Lugar.X + m_Lugar.Largura - total + postos[i].Coluna * (largura + entre),
               m_Lugar.Y + postos[i].Y + (i >= comandos ? sobra : 0), largura, postos[i].Altura});
    }
    return total;
}

// What the person does.

void RenderLista::Comando(HWND janela, UINT aviso)
{
    if (aviso != BN_CLICKED) {
        return;
    }
    if (janela == m_Localizar) {
        Age([this] { Como<ztList>(*this).Localiza(); });
    } else if (janela == m_Mais) {
        Age([this] { Como<ztList>(*this).PedeMais(); });
    } else if (janela == m_Fechar.Manipulador) {
        Age(Janela().AoRedor().Pedidos.Fecha);
    } else if (janela == m_Ajuda.Manipulador) {
        Age(Janela().AoRedor().Pedidos.Ajuda);
    } else if (const auto botao = std::ranges::find(m_Botoes, janela, &Botao::Manipulador); botao != m_Botoes.end()) {
        Escolhe(botao->Chave);
    }
}

void RenderLista::Escolhe(const std::string &chave)
{
    Age([this, chave] { Como<ztList>(*this).EscolheMenu(chave); });
}

LRESULT RenderLista::Notifica(NMHDR &aviso)
{
    switch (aviso.code) {
    case LVN_GETDISPINFOW:
        Celula(reinterpret_cast<NMLVDISPINFOW &>(aviso));
        return 0;
    case LVN_ODFINDITEMW:
        return -1; // nothing is sought by typing
    case LVN_COLUMNCLICK: {
        const auto coluna = static_cast<std::size_t>(reinterpret_cast<const NMLISTVIEW &>(aviso).iSubItem);
        if (coluna < m_Vistas.size()) {
            Age([this, numero = m_Vistas[coluna].Numero] { Como<ztList>(*this).OrdenaPor(numero); });
        }
        return 0;
    }
    case LVN_ITEMCHANGED: { // by something else than the mouse and the keys, such as a screen reader
        const auto &mudanca = reinterpret_cast<const NMLISTVIEW &>(aviso);
        const bool escolhida = (mudanca.uNewState & ~mudanca.uOldState & LVIS_SELECTED) != 0;
        if (escolhida && !Mostrando() && mudanca.iItem >= 0 && mudanca.iItem + 1 != Como<ztList>(*this).AtualVista()) {
            Age([this, linha = mudanca.iItem + 1] { Como<ztList>(*this).ClicaLinha(linha); });
        }
        return 0;
    }
    default:
        return 0;
    }
}

void RenderLista::Celula(NMLVDISPINFOW &pedido)
{
    const auto &lista = Como<ztList>(*this);
    const auto coluna = static_cast<std::size_t>(pedido.item.iSubItem);
    if ((pedido.item.mask & LVIF_TEXT) == 0 || pedido.item.iItem < 0 || pedido.item.iItem >= lista.NroVistas() ||
        coluna >= m_Vistas.size() || static_cast<std::size_t>(m_Vistas[coluna].Numero) > lista.Colunas().size()) {
        return;
    }
    m_Celula = (m_Celula + 1) % m_Celulas.size();
    m_Celulas[m_Celula] = ParaUtf16(lista.TextoCelula(pedido.item.iItem + 1, m_Vistas[coluna].Numero));
    pedido.item.pszText = m_Celulas[m_Celula].data();
}

std::optional<LRESULT> RenderLista::Mensagem(HWND janela, UINT mensagem, WPARAM w, LPARAM l)
{
    if (janela == m_Linhas) {
        return MensagemDasLinhas(mensagem, w, l);
    }
    if (janela != m_Localizar && janela != m_Titulo && janela != m_Mais) {
        return MensagemDoBotao(janela, mensagem, l);
    }
    return std::nullopt;
}

std::optional<LRESULT> RenderLista::MensagemDasLinhas(UINT mensagem, WPARAM w, LPARAM l)
{
    constexpr LPARAM PelasTeclas = -1;
    switch (mensagem) {
    case WM_KEYDOWN:
        return Tecla(w, (HIWORD(l) & KF_REPEAT) != 0) ? std::optional<LRESULT>(0) : std::nullopt;
    case WM_KEYUP:
        return w == VK_APPS ? std::optional<LRESULT>(0) : std::nullopt; // its menu came when it went down
    case WM_SYSKEYDOWN:
        if (w == VK_F10 && GetKeyState(VK_SHIFT) < 0) {
            AbreMenu(PelasTeclas);
            return 0;
        }
        return std::nullopt;
    case WM_CHAR:
        return 0;
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
        ClicaEm(l);
        return 0;
    case WM_LBUTTONDBLCLK:
        if (ClicaEm(l)) {
            Age([this] { AbreLinha(Como<ztList>(*this)); });
        }
        return 0;
    case WM_RBUTTONUP: {
        POINT onde{GET_X_LPARAM(l), GET_Y_LPARAM(l)};
        ClientToScreen(m_Linhas, &onde);
        AbreMenu(MAKELPARAM(onde.x, onde.y));
        return 0;
    }
    case WM_CONTEXTMENU:
        AbreMenu(l);
        return 0;
    case WM_SIZE: {
        const LRESULT resposta = DefSubclassProc(m_Linhas, mensagem, w, l);
        EsticaUltima();
        return resposta;
    }
    default:
        return std::nullopt;
    }
}

bool RenderLista::Tecla(WPARAM tecla, bool repetida)
{
    auto &lista = Como<ztList>(*this);
    const auto comanda = [&](AtalhoDeLista atalho) {
        if (!repetida && GetKeyState(VK_SHIFT) >= 0 && GetKeyState(VK_CONTROL) >= 0) {
            Age([&lista, atalho] { FazAtalho(lista, atalho); });
        }
    };
    const auto anda = [&](std::int32_t passos) { Age([&lista, passos] { lista.TeclaSetas(passos); }); };
    const auto vai = [&](TeclaDeLista qual) {
        if (const auto linha = LinhaDaTecla(lista, qual)) {
            Age([&lista, linha] { lista.ClicaLinha(*linha); });
        }
    };
    const auto pagina =
        std::max<std::int32_t>(static_cast<std::int32_t>(SendMessageW(m_Linhas, LVM_GETCOUNTPERPAGE, 0, 0)), 1);
    switch (tecla) {
    case VK_UP:
        anda(-1);
        return true;
    case VK_DOWN:
        anda(1);
        return true;
    case VK_PRIOR:
        anda(-pagina);
        return true;
    case VK_NEXT:
        anda(pagina);
        return true;
    case VK_HOME:
        vai(TeclaDeLista::Home);
        return true;
    case VK_END:
        vai(TeclaDeLista::End);
        return true;
    case VK_INSERT:
        comanda(AtalhoDeLista::Inclui);
        return true;
    case VK_DELETE:
        comanda(AtalhoDeLista::Remove);
        return true;
    case VK_APPS:
        AbreMenu(-1);
        return true;
    case VK_SPACE: // would take the choice away
    case VK_ADD:   // would widen the columns
        return true;
    default:
        return false;
    }
}

// A row that is clicked brings the keyboard with it, and none may become current before it and scroll it away.
bool RenderLista::ClicaEm(LPARAM ponto)
{
    LVHITTESTINFO onde{};
    onde.pt = {GET_X_LPARAM(ponto), GET_Y_LPARAM(ponto)};
    const auto linha =
        static_cast<std::int32_t>(SendMessageW(m_Linhas, LVM_SUBITEMHITTEST, 0, reinterpret_cast<LPARAM>(&onde)));
    if (linha >= 0) {
        Age([this, linha] { Como<ztList>(*this).ClicaLinha(linha + 1); });
    }
    Janela().LevaTeclado(m_Linhas);
    return linha >= 0;
}

// ponto: of the screen; -1 by the keys.
void RenderLista::AbreMenu(LPARAM ponto)
{
    bool oferece = false;
    Age([&] { oferece = Como<ztList>(*this).OfereceMenu(); });
    if (!oferece || Encerrado()) {
        return;
    }
    const std::vector<ComandoDeLista> comandos = BarraDaLista(Como<ztList>(*this)).Comandos;
    const OrdensDeLista ordens = OrdensDaLista(Como<ztList>(*this));
    const Menu menu(CreatePopupMenu());
    UINT numero = 0;
    for (const ComandoDeLista &comando : comandos) {
        ++numero;
        if (comando.Visivel) {
            if (comando.IniciaGrupo && GetMenuItemCount(menu.get()) > 0) {
                AppendMenuW(menu.get(), MF_SEPARATOR, 0, nullptr);
            }
            Acrescenta(menu.get(), numero, comando.NoMenu, comando.Utilizavel ? MF_ENABLED : MF_GRAYED);
        }
    }
    if (GetMenuItemCount(menu.get()) > 0) {
        AppendMenuW(menu.get(), MF_SEPARATOR, 0, nullptr);
    }
    const HMENU colunas = CreatePopupMenu();
    for (const OrdensDeLista::Coluna &coluna : ordens.Colunas) {
        Acrescenta(colunas, PrimeiraOrdem + static_cast<UINT>(coluna.Numero), coluna.Caption,
                   coluna.Atual ? MF_CHECKED : MF_UNCHECKED);
    }
    Acrescenta(menu.get(), reinterpret_cast<UINT_PTR>(colunas), ordens.Caption,
               static_cast<UINT>(MF_POPUP) | (ordens.Utilizavel ? MF_ENABLED : MF_GRAYED));
    const POINT onde = LugarDoMenu(ponto);
    const auto escolhido = static_cast<UINT>(
        TrackPopupMenuEx(menu.get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, onde.x, onde.y, Janela().Manipulador(), nullptr));
    if (escolhido >= PrimeiraOrdem) {
        Age([this, coluna = static_cast<std::int32_t>(escolhido - PrimeiraOrdem)] {
            Como<ztList>(*this).OrdenaPor(coluna);
        });
    } else if (escolhido > 0) {
        Escolhe(comandos[escolhido - 1].Chave);
    }
}

POINT RenderLista::LugarDoMenu(LPARAM ponto) const
{
    if (ponto != -1) {
        return {GET_X_LPARAM(ponto), GET_Y_LPARAM(ponto)};
    }
    POINT onde{};
    if (m_Atual >= 1) {
        RECT linha{};
        linha.left = LVIR_LABEL;
        SendMessageW(m_Linhas, LVM_GETITEMRECT, static_cast<WPARAM>(m_Atual - 1), reinterpret_cast<LPARAM>(&linha));
        onde = {(linha.left + linha.right) / 2, (linha.top + linha.bottom) / 2};
    }
    ClientToScreen(m_Linhas, &onde);
    return onde;
}

// A button of the side bar is pressed without taking the keyboard.
std::optional<LRESULT> RenderLista::MensagemDoBotao(HWND botao, UINT mensagem, LPARAM l)
{
    RECT dentro{};
    GetClientRect(botao, &dentro);
    const bool sobre = PtInRect(&dentro, {GET_X_LPARAM(l), GET_Y_LPARAM(l)}) != FALSE;
    switch (mensagem) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        m_Apertado = botao;
        SetCapture(botao);
        SendMessageW(botao, BM_SETSTATE, TRUE, 0);
        return 0;
    case WM_MOUSEMOVE:
        if (m_Apertado == botao) {
            SendMessageW(botao, BM_SETSTATE, sobre ? TRUE : FALSE, 0);
        }
        return std::nullopt;
    case WM_LBUTTONUP:
        if (m_Apertado == botao) {
            ReleaseCapture();
            if (sobre) {
                Comando(botao, BN_CLICKED);
            }
        }
        return 0;
    case WM_CAPTURECHANGED:
        m_Apertado = nullptr;
        SendMessageW(botao, BM_SETSTATE, FALSE, 0);
        return 0;
    default:
        return std::nullopt;
    }
}

} // namespace nativo
