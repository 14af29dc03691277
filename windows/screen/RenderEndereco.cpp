#include "windows/screen/RenderEndereco.h"

#include "tela/Mnemonicas.h"
#include "tela/Partes.h"
#include "windows/automation/Texto16.h"
#include "windows/screen/JanelaForm.h"
#include "windows/screen/Letra.h"

#include <windowsx.h>

#include <algorithm>
#include <utility>

namespace nativo {

namespace {

constexpr Folgas AFolga{};
constexpr int SugestoesVistas = 12;

class SemLogradouros : public ILogradouros {
  public:
    std::string_view NomeTipo() const override { return "SemLogradouros"; }

    const std::vector<MunicipioDeEndereco> &Municipios() const override
    {
        static const std::vector<MunicipioDeEndereco> nenhum;
        return nenhum;
    }
    std::vector<Logradouro> Procura(std::int32_t, const std::string &, std::size_t) const override { return {}; }
    std::optional<Logradouro> PorCodigo(std::int32_t) const override { return std::nullopt; }
};

// Of an application that has no streets, an address can be read and cleared.
Ref<ILogradouros> LogradourosDe(const AoRedorDoForm &aoRedor)
{
    return aoRedor.Logradouros ? aoRedor.Logradouros : Novo<SemLogradouros>();
}

} // namespace

RenderEndereco::RenderEndereco(Ref<IControle> controle, const Peca &peca, JanelaForm &janela)
    : Renderizador(controle, peca, janela),
      m_Escolha(ComoTipo<ztEndereco>(controle), LogradourosDe(janela.AoRedor()), janela.AoRedor().Memoria),
      m_RotuloMunicipio(FazRotulo(Partes::Municipio)),
      m_Municipio(Faz(WC_COMBOBOXW, ComboNativo::Estilo),
                  {.Escolhe =
                       [this](int lugar) {
                           Age([&] {
                               m_Escolha.EscolheMunicipio(
                                   m_Escolha.Municipios()[static_cast<std::size_t>(lugar)].Codigo);
                           });
                       },
                   .Pesquisa =
                       [this](const std::function<void(PesquisaPorLetras &)> &ato) {
                           Age([&] { ato(m_Escolha.PesquisaDeMunicipios()); });
                       }}),
      m_RotuloVia(FazRotulo(Partes::Logradouro)),
      m_Via(Faz(WC_EDITW, ES_AUTOHSCROLL, WS_EX_CLIENTEDGE),
            [this](const std::string &texto, std::size_t) {
                Age([&] { m_Escolha.DigitaVia(texto); });
                AbreSugestoes();
            }),
      m_RotuloNumero(FazRotulo(Partes::Numero)),
      m_Numero(FazCampo(&EscolhaDeEndereco::DigitaNumero)),
      m_RotuloComplemento(FazRotulo(Partes::Complemento)),
      m_Complemento(FazCampo(&EscolhaDeEndereco::DigitaComplemento)),
      m_Usar(FazBotao(Partes::UsarEndereco)),
      m_Limpar(FazBotao(Partes::LimparEndereco)),
      m_Atual(Faz(WC_STATICW, SS_LEFT | SS_NOPREFIX)),
      m_Sugestoes(FazSugestoes())
{
    SendMessageW(m_Via.Janela(), EM_SETCUEBANNER, TRUE, reinterpret_cast<LPARAM>(L"Nome da rua ou CEP"));
    Nomeia(m_Municipio.Janela(), "Município");
    Nomeia(m_Via.Janela(), "Logradouro ou CEP");
    Nomeia(m_Numero.Janela(), "Número");
    Nomeia(m_Complemento.Janela(), "Complemento");
    janela.DaPessoa().Conhece(controle, m_Escolha);
}

HWND RenderEndereco::FazRotulo(std::string_view texto)
{
    const HWND rotulo = Faz(WC_STATICW, SS_LEFTNOWORDWRAP | SS_CENTERIMAGE);
    EscreveTexto(rotulo, std::string(texto));
    return rotulo;
}

CampoNativo RenderEndereco::FazCampo(void (EscolhaDeEndereco::*digita)(const std::string &))
{
    return CampoNativo(
        Faz(WC_EDITW, ES_AUTOHSCROLL, WS_EX_CLIENTEDGE),
        [this, digita](const std::string &texto, std::size_t) { Age([&] { (m_Escolha.*digita)(texto); }); });
}

HWND RenderEndereco::FazBotao(std::string_view caption)
{
    const HWND botao = Faz(WC_BUTTONW, BS_PUSHBUTTON);
    EscreveTexto(botao, std::string(caption));
    return botao;
}

// Not cut by the form's window, and no stop of the keyboard, which stays in the street.
HWND RenderEndereco::FazSugestoes()
{
    const HWND lista = Faz(WC_LISTBOXW, LBS_NOINTEGRALHEIGHT | LBS_HASSTRINGS | WS_BORDER | WS_VSCROLL,
                           WS_EX_TOOLWINDOW | WS_EX_TOPMOST | WS_EX_NOACTIVATE);
    MostraParte(lista, false);
    const LONG_PTR estilo = GetWindowLongPtrW(lista, GWL_STYLE);
    SetWindowLongPtrW(lista, GWL_STYLE, (estilo & ~static_cast<LONG_PTR>(WS_CHILD)) | static_cast<LONG>(WS_POPUP));
    SetParent(lista, nullptr);
    SetWindowLongPtrW(lista, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(Janela().Manipulador()));
    return lista;
}

HWND RenderEndereco::JanelaDe(Parte parte) const
{
    switch (parte) {
    case Parte::Municipio:
        return m_Municipio.Janela();
    case Parte::Numero:
        return m_Numero.Janela();
    case Parte::Complemento:
        return m_Complemento.Janela();
    case Parte::Usar:
        return m_Usar;
    case Parte::Limpar:
        return m_Limpar;
    default:
        return m_Via.Janela();
    }
}

void RenderEndereco::Mostra()
{
    m_Escolha.Acompanha();
    m_Municipio.MostraItens(m_Escolha.Municipios().size(),
                            [this](std::size_t i) -> const std::string & { return m_Escolha.Municipios()[i].Nome; });
    m_Municipio.MostraEscolhido(m_Escolha.LugarDoMunicipio());
    HabilitaParte(m_Municipio.Janela(), m_Escolha.MunicipioEditavel());
    m_Via.Mostra(m_Escolha.Via());
    m_Numero.Mostra(m_Escolha.Numero());
    m_Complemento.Mostra(m_Escolha.Complemento());
    EscreveTexto(m_Atual, m_Escolha.Atual());
    const bool fixo = m_Escolha.SomenteLeitura();
    for (CampoNativo *campo : {&m_Via, &m_Numero, &m_Complemento}) {
        campo->DefineSomenteLeitura(fixo);
    }
    MostraParte(m_Usar, !fixo);
    MostraParte(m_Limpar, !fixo);
    HabilitaParte(m_Usar, m_Escolha.PodeUsar());
}

void RenderEndereco::Coloca(const PecaArrumada &lugar)
{
    const Retangulo &todo = lugar.Lugar;
    const int entre = Escrita().Medida(AFolga.EntrePecas);
    const int altura = Escrita().Medida(Escrita().Mede("X", 0).Altura + AFolga.Campo);
    const int rotulos = std::max(lugar.LarguraDosRotulos, LarguraDoTexto(Partes::Logradouro));
    const int campos = todo.X + rotulos + entre;
    const int fim = todo.X + todo.Largura;
    int y = todo.Y;
    PoeEm(m_RotuloMunicipio, {todo.X, y, rotulos, altura});
    m_Municipio.Posiciona({campos, y, fim - campos, altura});
    y += altura + entre;
    PoeEm(m_RotuloVia, {todo.X, y, rotulos, altura});
    PoeEm(m_Via.Janela(), {campos, y, fim - campos, altura});
    y += altura + entre;
    const int numero =
        LarguraDoTexto(std::string(EscolhaDeEndereco::DigitosDoNumero, '0')) + Escrita().Medida(2 * AFolga.Campo);
    const int complemento = LarguraDoTexto(Partes::Complemento);
    const int segundo = campos + numero + entre + complemento + entre;
    PoeEm(m_RotuloNumero, {todo.X, y, rotulos, altura});
    PoeEm(m_Numero.Janela(), {campos, y, numero, altura});
    PoeEm(m_RotuloComplemento, {campos + numero + entre, y, complemento, altura});
    PoeEm(m_Complemento.Janela(), {segundo, y, fim - segundo, altura});
    y += altura + entre;
    int botoes = fim;
    for (const auto &[botao, caption] :
         {std::pair(m_Limpar, Partes::LimparEndereco), std::pair(m_Usar, Partes::UsarEndereco)}) {
        const int largura =
            std::max(Escrita().Medida(AFolga.MenorBotao), LarguraDoTexto(caption) + Escrita().Medida(AFolga.Botao));
        botoes -= largura;
        PoeEm(botao, {botoes, y, largura, altura});
        botoes -= entre;
    }
    PoeEm(m_Atual, {todo.X, y, botoes - todo.X, todo.Y + todo.Altura - y});
}

int RenderEndereco::LarguraDoTexto(std::string_view texto) const
{
    return Escrita().Medida(Escrita().Mede(SemMarca(texto), 0).Largura);
}

void RenderEndereco::MudouAparencia()
{
    SendMessageW(m_Sugestoes, WM_SETFONT, reinterpret_cast<WPARAM>(Escrita().Fonte()), FALSE);
}

void RenderEndereco::Comando(HWND janela, UINT aviso)
{
    if (Mostrando()) {
        return;
    }
    if (janela == m_Municipio.Janela()) {
        m_Municipio.Avisou(aviso);
    } else if (janela == m_Usar && aviso == BN_CLICKED) {
        Age([this] { m_Escolha.Usa(); });
    } else if (janela == m_Limpar && aviso == BN_CLICKED) {
        Age([this] { m_Escolha.Limpa(); });
    } else {
        for (CampoNativo *campo : {&m_Via, &m_Numero, &m_Complemento}) {
            if (janela == campo->Janela()) {
                campo->Avisou(aviso);
            }
        }
    }
}

std::optional<LRESULT> RenderEndereco::Mensagem(HWND janela, UINT mensagem, WPARAM w, LPARAM l)
{
    if (janela == m_Sugestoes) {
        return MensagemDasSugestoes(mensagem, l);
    }
    if (janela == m_Municipio.Janela()) {
        return m_Municipio.Mensagem(mensagem, w);
    }
    if (janela == m_Via.Janela()) {
        if (const auto resposta = MensagemDaVia(mensagem, w)) {
            return resposta;
        }
    }
    for (CampoNativo *campo : {&m_Via, &m_Numero, &m_Complemento}) {
        if (janela == campo->Janela()) {
            return campo->Mensagem(mensagem, w);
        }
    }
    return std::nullopt;
}

bool RenderEndereco::FicaComTecla(HWND janela, WPARAM tecla) const
{
    if (janela == m_Municipio.Janela()) {
        return m_Municipio.FicaComTecla(tecla);
    }
    return janela == m_Via.Janela() && SugestoesAbertas() &&
           (tecla == VK_ESCAPE || (tecla == VK_RETURN && SugestaoAtual() >= 0));
}

// The streets found.

std::optional<LRESULT> RenderEndereco::MensagemDaVia(UINT mensagem, WPARAM w)
{
    if (mensagem == WM_KILLFOCUS) {
        FechaSugestoes();
        return std::nullopt;
    }
    if (mensagem != WM_KEYDOWN) {
        return std::nullopt;
    }
    switch (w) {
    case VK_DOWN:
    case VK_UP:
        if (SugestoesAbertas()) {
            AndaNasSugestoes(w == VK_DOWN ? 1 : -1);
        } else {
            AbreSugestoes();
        }
        return 0;
    case VK_RETURN:
        if (SugestaoAtual() < 0) {
            FechaSugestoes();
            return std::nullopt;
        }
        Toma(SugestaoAtual());
        return 0;
    case VK_ESCAPE:
        if (!SugestoesAbertas()) {
            return std::nullopt;
        }
        FechaSugestoes();
        return 0;
    default:
        return std::nullopt;
    }
}

std::optional<LRESULT> RenderEndereco::MensagemDasSugestoes(UINT mensagem, LPARAM l)
{
    switch (mensagem) {
    case WM_MOUSEACTIVATE:
        return MA_NOACTIVATE;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        return 0;
    case WM_MOUSEMOVE:
        SendMessageW(m_Sugestoes, LB_SETCURSEL, static_cast<WPARAM>(SugestaoEm(l)), 0);
        return 0;
    case WM_LBUTTONUP:
        Toma(SugestaoEm(l));
        return 0;
    default:
        return std::nullopt;
    }
}

void RenderEndereco::AbreSugestoes()
{
    FechaSugestoes();
    if (Encerrado() || m_Escolha.SomenteLeitura() || m_Escolha.Sugestoes().empty() || GetFocus() != m_Via.Janela()) {
        return;
    }
    SendMessageW(m_Sugestoes, LB_RESETCONTENT, 0, 0);
    int largura = 0;
    for (const std::string &sugestao : m_Escolha.Sugestoes()) {
        SendMessageW(m_Sugestoes, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(ParaUtf16(sugestao).c_str()));
        largura = std::max(largura, LarguraDoTexto(sugestao));
    }
    const auto vistas = std::min<int>(static_cast<int>(m_Escolha.Sugestoes().size()), SugestoesVistas);
    const int linha = static_cast<int>(SendMessageW(m_Sugestoes, LB_GETITEMHEIGHT, 0, 0));
    RECT via{};
    GetWindowRect(m_Via.Janela(), &via);
    const int bordas = GetSystemMetrics(SM_CXVSCROLL) + Escrita().Medida(AFolga.Campo);
    const int altura = vistas * linha + 2 * GetSystemMetrics(SM_CYBORDER);
    MONITORINFO tela{};
    tela.cbSize = sizeof tela;
    GetMonitorInfoW(MonitorFromWindow(m_Via.Janela(), MONITOR_DEFAULTTONEAREST), &tela);
    const bool cabe = via.bottom + altura <= tela.rcWork.bottom;
    SetWindowPos(m_Sugestoes, HWND_TOPMOST, via.left, cabe ? via.bottom : via.top - altura,
                 std::max<int>(via.right - via.left, largura + bordas), altura, SWP_NOACTIVATE);
    MostraParte(m_Sugestoes, true);
}

void RenderEndereco::FechaSugestoes()
{
    MostraParte(m_Sugestoes, false);
}

bool RenderEndereco::SugestoesAbertas() const
{
    return IsWindowVisible(m_Sugestoes) != FALSE;
}

int RenderEndereco::SugestaoAtual() const
{
    return SugestoesAbertas() ? static_cast<int>(SendMessageW(m_Sugestoes, LB_GETCURSEL, 0, 0)) : -1;
}

int RenderEndereco::SugestaoEm(LPARAM ponto) const
{
    const LRESULT achada = SendMessageW(m_Sugestoes, LB_ITEMFROMPOINT, 0, ponto);
    return HIWORD(achada) == 0 ? static_cast<int>(LOWORD(achada)) : -1;
}

void RenderEndereco::AndaNasSugestoes(int passo)
{
    const int ultima = static_cast<int>(m_Escolha.Sugestoes().size()) - 1;
    const int atual = SugestaoAtual();
    const int proxima = atual < 0 && passo < 0 ? ultima : std::clamp(atual + passo, 0, ultima);
    SendMessageW(m_Sugestoes, LB_SETCURSEL, static_cast<WPARAM>(proxima), 0);
}

void RenderEndereco::Toma(int sugestao)
{
    if (sugestao < 0 || sugestao >= static_cast<int>(m_Escolha.Sugestoes().size())) {
        return;
    }
    const std::string texto = m_Escolha.Sugestoes()[static_cast<std::size_t>(sugestao)];
    Parte proxima = Parte::Via;
    Age([&] { proxima = m_Escolha.EscolheSugestao(texto); });
    FechaSugestoes();
    Janela().LevaTeclado(JanelaDe(proxima));
}

} // namespace nativo
