#include "tests/windows/OperadorNativo.h"

#include "controls/ztList.h"
#include "host/IControlesPadrao.h"
#include "tela/ComandosDeLista.h"
#include "tests/windows/Entradas.h"
#include "windows/automation/Texto16.h"
#include "windows/screen/Enumera.h"

#include <atomic>
#include <exception>
#include <memory>
#include <stdexcept>
#include <vector>

namespace nativo {

namespace {

constexpr ULONGLONG EsperaMaxima = 20000; // ms
constexpr DWORD Pausa = 2;                // ms
constexpr int MuitasVezes = 300;
constexpr UINT MensagemFaz = WM_APP;
constexpr wchar_t ClasseDasCaixas[] = L"#32770";

// Something that is done in the thread of the windows.
struct Ato {
    std::function<void()> Acao;
    std::exception_ptr Problema;
    std::atomic<bool> Terminou = false;
};

struct Caixa {
    HWND Janela = nullptr;
    std::vector<HWND> Partes;
};

Caixa CaixaAberta()
{
    Caixa caixa;
    for (const HWND janela : JanelasDesteFio()) {
        wchar_t classe[20]{};
        GetClassNameW(janela, classe, 20);
        if (std::wstring_view(classe) == ClasseDasCaixas && IsWindowVisible(janela) && IsWindowEnabled(janela)) {
            caixa = {janela, FilhasDe(janela)};
            break;
        }
    }
    return caixa;
}

int Pergunta(HWND janela, UINT mensagem, WPARAM w = 0, LPARAM l = 0)
{
    return static_cast<int>(SendMessageW(janela, mensagem, w, l));
}

HWND Titulos(HWND lista)
{
    return reinterpret_cast<HWND>(SendMessageW(lista, LVM_GETHEADER, 0, 0));
}

// The column of the heading that says so, from 0.
int ColunaDoTitulo(HWND lista, const std::string &procurado)
{
    const int colunas = Pergunta(Titulos(lista), HDM_GETITEMCOUNT);
    for (int coluna = 0; coluna < colunas; ++coluna) {
        wchar_t texto[260]{};
        HDITEMW titulo{};
        titulo.mask = HDI_TEXT;
        titulo.pszText = texto;
        titulo.cchTextMax = 260;
        SendMessageW(Titulos(lista), HDM_GETITEMW, static_cast<WPARAM>(coluna), reinterpret_cast<LPARAM>(&titulo));
        if (ParaUtf8(texto) == procurado) {
            return coluna;
        }
    }
    throw std::runtime_error("there is no column " + procurado);
}

DWORD WINAPI Corre(void *oQue)
{
    (*static_cast<std::function<void()> *>(oQue))();
    return 0;
}

POINT Meio(const RECT &lugar)
{
    return {(lugar.left + lugar.right) / 2, (lugar.top + lugar.bottom) / 2};
}

} // namespace

// The thread of the windows, from that of the person.
class OperadorNativo::Telas {
  public:
    explicit Telas(CamadaWindows &camada)
        : m_Camada(camada),
          m_Ajudante(CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, EsteModulo(), nullptr))
    {
        SetWindowSubclass(m_Ajudante, Recebe, 1, 0);
    }
    Telas(const Telas &) = delete;
    Telas &operator=(const Telas &) = delete;
    ~Telas() { DestroyWindow(m_Ajudante); }

    CamadaWindows &Camada() const { return m_Camada; }

    // Runs messages until the person is done.
    void Serve(const std::function<void()> &pessoa)
    {
        m_Saiu = false;
        std::function<void()> inteira = [&] {
            pessoa();
            m_Saiu = true;
            PostMessageW(m_Ajudante, WM_NULL, 0, 0);
        };
        const HANDLE fio = CreateThread(nullptr, 0, Corre, &inteira, 0, nullptr);
        MSG mensagem{};
        while (!m_Saiu && GetMessageW(&mensagem, nullptr, 0, 0) > 0) {
            TranslateMessage(&mensagem);
            DispatchMessageW(&mensagem);
        }
        WaitForSingleObject(fio, INFINITE);
        CloseHandle(fio);
    }

    // Begins there; who asks does not wait.
    std::shared_ptr<Ato> Comeca(const std::function<void()> &acao) const
    {
        auto ato = std::make_shared<Ato>();
        ato->Acao = acao;
        PostMessageW(m_Ajudante, MensagemFaz, reinterpret_cast<WPARAM>(new std::shared_ptr<Ato>(ato)), 0);
        return ato;
    }
    // What is seen there now.
    template <class T> T Ve(const std::function<T()> &olha) const
    {
        T visto{};
        Ato ato;
        ato.Acao = [&] { visto = olha(); };
        std::shared_ptr<Ato> emprestado(&ato, [](Ato *) {});
        SendMessageW(m_Ajudante, MensagemFaz, 0, reinterpret_cast<LPARAM>(&emprestado));
        if (ato.Problema) {
            std::rethrow_exception(ato.Problema);
        }
        return visto;
    }
    void Espera(const std::string &oQue, const std::function<bool()> &condicao) const
    {
        const ULONGLONG fim = GetTickCount64() + EsperaMaxima;
        while (!Ve<bool>(condicao)) {
            if (GetTickCount64() > fim) {
                throw std::runtime_error(oQue + Ve<std::string>([this] { return Situacao(); }));
            }
            Sleep(Pausa);
        }
    }

    // In the thread of the windows.

    // The form's window in front, which can be used; Nothing while none can.
    Ref<JanelaForm> Frente() const
    {
        const std::vector<Ref<JanelaForm>> janelas = m_Camada.Janelas();
        for (auto janela = janelas.rbegin(); janela != janelas.rend(); ++janela) {
            if (IsWindowVisible((*janela)->Manipulador()) && IsWindowEnabled((*janela)->Manipulador())) {
                return *janela;
            }
        }
        return nullptr;
    }
    std::string ClasseDaFrente() const
    {
        const Ref<JanelaForm> frente = Frente();
        return frente ? std::string(frente->Form()->NomeTipo()) : std::string();
    }
    nativo::Caixa Caixa() const { return CaixaAberta(); }
    std::string Situacao() const
    {
        std::string textos;
        for (const HWND parte : Caixa().Partes) {
            textos += " \"" + TextoDe(parte) + "\"";
        }
        return " (in front: " + ClasseDaFrente() + (textos.empty() ? "" : ", box" + textos) + ")";
    }
    // Whatever waits for the person goes. False when nothing does.
    bool FechaAlgo() const
    {
        HWND janela = Caixa().Janela;
        if (const Ref<JanelaForm> frente = Frente(); janela == nullptr && frente) {
            janela = frente->Manipulador();
        }
        if (janela != nullptr) {
            PostMessageW(janela, WM_CLOSE, 0, 0);
        }
        return janela != nullptr;
    }

  private:
    static LRESULT CALLBACK Recebe(HWND janela, UINT mensagem, WPARAM w, LPARAM l, UINT_PTR, DWORD_PTR) noexcept
    {
        if (mensagem != MensagemFaz) {
            return DefSubclassProc(janela, mensagem, w, l);
        }
        std::unique_ptr<std::shared_ptr<Ato>> proprio(reinterpret_cast<std::shared_ptr<Ato> *>(w));
        const std::shared_ptr<Ato> ato = proprio ? *proprio : *reinterpret_cast<std::shared_ptr<Ato> *>(l);
        try {
            ato->Acao();
        } catch (...) {
            ato->Problema = std::current_exception();
        }
        ato->Terminou = true;
        return 0;
    }

    CamadaWindows &m_Camada;
    HWND m_Ajudante;
    std::atomic<bool> m_Saiu = false;
};

std::string OperadorNativo::Percorre(CamadaWindows &camada, const Percurso &percurso, const std::string &janela)
{
    Telas telas(camada);
    std::string diferenca;
    telas.Serve([&] {
        try {
            Entra(telas, percurso, janela, nullptr);
        } catch (const std::exception &problema) {
            diferenca = problema.what();
        }
        for (int vez = 0; !diferenca.empty() && vez < MuitasVezes; ++vez) {
            if (!telas.Ve<bool>([&] { return telas.FechaAlgo(); })) {
                break;
            }
            Sleep(Pausa);
        }
    });
    return diferenca;
}

OperadorNativo::OperadorNativo(Telas &telas, const Percurso &percurso, std::string janela, const OperadorNativo *atras)
    : m_Telas(telas),
      m_Percurso(percurso),
      m_Janela(std::move(janela)),
      m_Atras(atras)
{
}

void OperadorNativo::Entra(Telas &telas, const Percurso &percurso, const std::string &janela,
                           const OperadorNativo *atras)
{
    telas.Espera("the window " + janela + " is in front", [&] { return telas.ClasseDaFrente() == janela; });
    OperadorNativo pessoa(telas, percurso, janela, atras);
    percurso.Janelas.at(janela)(pessoa);
}

bool OperadorNativo::Falta(const std::string &janela) const
{
    for (const OperadorNativo *outro = this; outro != nullptr; outro = outro->m_Atras) {
        if (outro->m_Janela == janela) {
            return false;
        }
    }
    return m_Percurso.Janelas.contains(janela);
}

void OperadorNativo::Faz(const std::function<void()> &acao)
{
    const std::shared_ptr<Ato> ato = m_Telas.Comeca([this, acao] {
        acao();
        m_Telas.Camada().ProcessaMensagens();
    });
    for (;;) {
        std::string frente;
        std::string pergunta;
        m_Telas.Espera("the action is over, or waits for the person", [&] {
            frente = m_Telas.ClasseDaFrente();
            pergunta.clear();
            for (const HWND parte : m_Telas.Caixa().Partes) {
                const std::string texto = TextoDe(parte);
                pergunta = m_Percurso.Respostas.contains(texto) ? texto : pergunta;
            }
            return ato->Terminou || !pergunta.empty() || Falta(frente);
        });
        if (!pergunta.empty()) {
            const std::string botao = m_Percurso.Respostas.at(pergunta) ? "&Sim" : "&Não";
            m_Telas.Comeca([this, botao] {
                for (const HWND parte : m_Telas.Caixa().Partes) {
                    if (TextoDe(parte) == botao) {
                        ClicaEm(parte);
                    }
                }
            });
            m_Telas.Espera("the question is gone", [&] { return m_Telas.Caixa().Janela == nullptr; });
        } else if (Falta(frente)) {
            Entra(m_Telas, m_Percurso, frente, this);
            m_Telas.Espera("the window " + frente + " is gone", [&] { return m_Telas.ClasseDaFrente() != frente; });
        } else {
            break;
        }
    }
    if (ato->Problema) {
        std::rethrow_exception(ato->Problema);
    }
}

const Renderizador &OperadorNativo::De(const std::string &nome, std::int16_t indice) const
{
    const Ref<JanelaForm> frente = m_Telas.Frente();
    if (frente && frente->Form()->NomeTipo() == m_Janela) {
        for (const Ref<IControle> &controle : frente->Form()->Controles()) {
            const Renderizador *renderizador = frente->DoControle(*controle);
            if (controle->Nome() == nome && controle->Indice() == indice && renderizador != nullptr) {
                return *renderizador;
            }
        }
    }
    throw std::runtime_error("there is no " + nome + " in " + m_Janela);
}

HWND OperadorNativo::Janela(const std::string &nome, Parte parte, std::int16_t indice) const
{
    return De(nome, indice).JanelaDe(parte);
}

void OperadorNativo::ClicaEm(HWND janela) const
{
    RECT dentro{};
    GetClientRect(janela, &dentro);
    ClicaEm(janela, Meio(dentro));
}

void OperadorNativo::ClicaEm(HWND janela, POINT onde) const
{
    POINT naTela = onde;
    ClientToScreen(janela, &naTela);
    const HWND vista = WindowFromPoint(naTela);
    if (vista != janela && !IsChild(janela, vista)) {
        throw std::runtime_error("\"" + TextoDe(janela) + "\" cannot be clicked" + m_Telas.Situacao());
    }
    Entradas().Clica(janela, onde).Envia();
    m_Telas.Camada().ProcessaMensagens();
}

void OperadorNativo::EscreveEm(HWND campo, const std::string &texto) const
{
    ClicaEm(campo);
    if (GetFocus() != campo) {
        throw std::runtime_error("the keyboard is not in the field");
    }
    Entradas().Tecla('A', {VK_CONTROL}).Tecla(VK_DELETE).Digita(ParaUtf16(texto)).Envia();
    m_Telas.Camada().ProcessaMensagens();
}

// In the open list, with the keys.
void OperadorNativo::EscolheEm(HWND combo, const std::string &texto) const
{
    const int item = Pergunta(combo, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                              reinterpret_cast<LPARAM>(ParaUtf16(texto).c_str()));
    if (item < 0) {
        throw std::runtime_error("the combo does not offer " + texto);
    }
    ClicaEm(combo);
    if (Pergunta(combo, CB_GETDROPPEDSTATE) == 0) {
        throw std::runtime_error("the combo does not open");
    }
    Entradas teclas;
    teclas.Tecla(VK_HOME);
    for (int abaixo = 0; abaixo < item; ++abaixo) {
        teclas.Tecla(VK_DOWN);
    }
    teclas.Tecla(VK_RETURN).Envia();
    m_Telas.Camada().ProcessaMensagens();
    if (Pergunta(combo, CB_GETCURSEL) != item) {
        throw std::runtime_error("the combo does not show " + texto);
    }
}

void OperadorNativo::Clica(const std::string &nome, std::int16_t indice)
{
    Faz([=, this] { ClicaEm(Janela(nome, Parte::Todo, indice)); });
}

void OperadorNativo::Marca(const std::string &nome, std::int16_t indice)
{
    const auto marcado = [=, this] { return Pergunta(Janela(nome, Parte::Todo, indice), BM_GETCHECK) == BST_CHECKED; };
    if (!m_Telas.Ve<bool>(marcado)) {
        Clica(nome, indice);
    }
    m_Telas.Espera(nome + " is checked", marcado);
}

void OperadorNativo::Preenche(const std::string &nome, const std::string &texto)
{
    Faz([=, this] { EscreveEm(Janela(nome), texto); });
}

void OperadorNativo::Escolhe(const std::string &nome, const std::string &texto)
{
    Faz([=, this] { EscolheEm(Janela(nome), texto); });
}

void OperadorNativo::Abre(const std::string &nome, std::int16_t pagina)
{
    Faz([=, this] {
        const HWND abas = Janela(nome);
        const std::string caption = ComoTipo<ISSTab>(De(nome).Controle())->TabCaption(pagina);
        for (int aba = 0; aba < Pergunta(abas, TCM_GETITEMCOUNT); ++aba) {
            wchar_t texto[260]{};
            TCITEMW item{};
            item.mask = TCIF_TEXT;
            item.pszText = texto;
            item.cchTextMax = 260;
            SendMessageW(abas, TCM_GETITEMW, static_cast<WPARAM>(aba), reinterpret_cast<LPARAM>(&item));
            if (ParaUtf8(texto) == caption) {
                RECT lugar{};
                SendMessageW(abas, TCM_GETITEMRECT, static_cast<WPARAM>(aba), reinterpret_cast<LPARAM>(&lugar));
                ClicaEm(abas, Meio(lugar));
                return;
            }
        }
        throw std::runtime_error("there is no page " + caption);
    });
}

void OperadorNativo::ClicaLinha(const std::string &nome, std::int32_t linha)
{
    Faz([=, this] {
        const HWND linhas = Janela(nome, Parte::Linhas);
        SendMessageW(linhas, LVM_ENSUREVISIBLE, static_cast<WPARAM>(linha - 1), FALSE);
        RECT lugar{};
        lugar.left = LVIR_LABEL;
        SendMessageW(linhas, LVM_GETITEMRECT, static_cast<WPARAM>(linha - 1), reinterpret_cast<LPARAM>(&lugar));
        ClicaEm(linhas, Meio(lugar));
    });
}

// The button of the side bar.
void OperadorNativo::EscolheMenu(const std::string &nome, const std::string &chave)
{
    Faz([=, this] {
        const Renderizador &lista = De(nome);
        for (const ComandoDeLista &comando : BarraDaLista(Como<ztList>(lista)).Comandos) {
            const HWND form = GetParent(lista.Principal());
            for (HWND filha = GetWindow(form, GW_CHILD); filha != nullptr; filha = GetWindow(filha, GW_HWNDNEXT)) {
                if (comando.Chave == chave && IsWindowVisible(filha) && TextoDe(filha) == comando.NoBotao &&
                    m_Telas.Frente()->DaJanela(filha) == &lista) {
                    ClicaEm(filha);
                    return;
                }
            }
        }
        throw std::runtime_error("there is no command " + chave);
    });
}

void OperadorNativo::PedeMais(const std::string &nome)
{
    Faz([=, this] { ClicaEm(Janela(nome, Parte::MaisRegistros)); });
}

void OperadorNativo::Localiza(const std::string &nome)
{
    Faz([=, this] { ClicaEm(Janela(nome, Parte::Localizar)); });
}

void OperadorNativo::OrdenaPor(const std::string &nome, std::int32_t coluna)
{
    Faz([=, this] {
        const HWND linhas = Janela(nome, Parte::Linhas);
        const auto &titulo = Como<ztList>(De(nome)).Colunas()[static_cast<std::size_t>(coluna - 1)].Titulo;
        RECT lugar{};
        SendMessageW(Titulos(linhas), HDM_GETITEMRECT, static_cast<WPARAM>(ColunaDoTitulo(linhas, titulo)),
                     reinterpret_cast<LPARAM>(&lugar));
        ClicaEm(Titulos(linhas), Meio(lugar));
    });
}

// The street found by its postal code is taken from those offered, which leads to the number.
void OperadorNativo::InformaEndereco(const std::string &nome, std::int32_t, std::int32_t numero,
                                     const std::string &complemento, const std::string &cep, const std::string &)
{
    Faz([=, this] {
        EscreveEm(Janela(nome, Parte::Via), cep);
        Entradas().Tecla(VK_DOWN).Tecla(VK_RETURN).Envia();
        m_Telas.Camada().ProcessaMensagens();
        if (GetFocus() != Janela(nome, Parte::Numero)) {
            throw std::runtime_error("no street was found by " + cep);
        }
        EscreveEm(Janela(nome, Parte::Numero), std::to_string(numero));
        EscreveEm(Janela(nome, Parte::Complemento), complemento);
        ClicaEm(Janela(nome, Parte::Usar));
    });
}

void OperadorNativo::EscolheCliente(const std::string &nome, const std::string &cliente, const std::string &setor)
{
    Faz([=, this] { EscolheEm(Janela(nome, Parte::Cliente), cliente); });
    Faz([=, this] { EscolheEm(Janela(nome, Parte::Setor), setor.empty() ? "Todos os setores" : setor); });
}

void OperadorNativo::Fecha()
{
    Faz([] { Entradas().Tecla(VK_F4, {VK_MENU}).Envia(); });
    m_Telas.Espera("the window " + m_Janela + " is gone", [&] { return m_Telas.ClasseDaFrente() != m_Janela; });
}

void OperadorNativo::Olha(const std::function<void(HWND)> &olhar)
{
    m_Telas.Ve<bool>([&] {
        m_Telas.Camada().ProcessaMensagens();
        olhar(m_Telas.Frente()->Manipulador());
        return true;
    });
}

std::int32_t OperadorNativo::Linhas(const std::string &nome)
{
    return m_Telas.Ve<std::int32_t>([&] { return Pergunta(Janela(nome, Parte::Linhas), LVM_GETITEMCOUNT); });
}

std::string OperadorNativo::Celula(const std::string &nome, std::int32_t linha, const std::string &coluna)
{
    return m_Telas.Ve<std::string>([&] {
        const HWND linhas = Janela(nome, Parte::Linhas);
        wchar_t texto[1024]{};
        LVITEMW item{};
        item.iSubItem = ColunaDoTitulo(linhas, coluna);
        item.pszText = texto;
        item.cchTextMax = 1024;
        SendMessageW(linhas, LVM_GETITEMTEXTW, static_cast<WPARAM>(linha - 1), reinterpret_cast<LPARAM>(&item));
        return ParaUtf8(texto);
    });
}

} // namespace nativo
