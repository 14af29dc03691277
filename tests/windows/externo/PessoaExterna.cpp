#include "tests/windows/externo/PessoaExterna.h"

#include "tests/windows/externo/Fotografia.h"
#include "tests/windows/externo/HospedeiroExterno.h"
#include "tests/windows/externo/Var.h"

#include <commctrl.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

namespace nativo {

namespace {

constexpr UINT RespostaMaxima = 5000; // ms
constexpr DWORD Pausa = 2;            // ms
constexpr int MuitasTeclas = 200;

LRESULT Pergunta(HWND janela, UINT mensagem, WPARAM w, LPARAM l)
{
    DWORD_PTR resposta = 0;
    SendMessageTimeoutW(janela, mensagem, w, l, SMTO_ABORTIFHUNG, RespostaMaxima, &resposta);
    return static_cast<LRESULT>(resposta);
}

std::string Classe(HWND janela)
{
    wchar_t classe[128] = {};
    GetClassNameW(janela, classe, 128);
    return Estreito(classe);
}

std::string SemLetra(std::string texto)
{
    texto.erase(std::remove(texto.begin(), texto.end(), '&'), texto.end());
    return texto;
}

BOOL CALLBACK Junta(HWND janela, LPARAM onde)
{
    reinterpret_cast<std::vector<HWND> *>(onde)->push_back(janela);
    return TRUE;
}

std::vector<HWND> Filhas(HWND janela)
{
    std::vector<HWND> filhas;
    EnumChildWindows(janela, Junta, reinterpret_cast<LPARAM>(&filhas));
    return filhas;
}

int Colunas(HWND lista)
{
    const auto cabecalho = reinterpret_cast<HWND>(Pergunta(lista, LVM_GETHEADER, 0, 0));
    return static_cast<int>(Pergunta(cabecalho, HDM_GETITEMCOUNT, 0, 0));
}

std::string TituloDaColuna(HWND lista, int coluna)
{
    wchar_t texto[256] = {};
    LVCOLUMNW pedida = {};
    pedida.mask = LVCF_TEXT;
    pedida.pszText = texto;
    pedida.cchTextMax = 256;
    Pergunta(lista, LVM_GETCOLUMNW, static_cast<WPARAM>(coluna), reinterpret_cast<LPARAM>(&pedida));
    return Estreito(texto);
}

std::string TextoDaCelula(HWND lista, int linha, int coluna)
{
    wchar_t texto[512] = {};
    LVITEMW pedido = {};
    pedido.iSubItem = coluna;
    pedido.pszText = texto;
    pedido.cchTextMax = 512;
    Pergunta(lista, LVM_GETITEMTEXTW, static_cast<WPARAM>(linha), reinterpret_cast<LPARAM>(&pedido));
    return Estreito(texto);
}

std::string TituloDaAba(HWND abas, int qual)
{
    wchar_t texto[128] = {};
    TCITEMW pedido = {};
    pedido.mask = TCIF_TEXT;
    pedido.pszText = texto;
    pedido.cchTextMax = 128;
    Pergunta(abas, TCM_GETITEMW, static_cast<WPARAM>(qual), reinterpret_cast<LPARAM>(&pedido));
    return SemLetra(Estreito(texto));
}

} // namespace

DWORD WINAPI PessoaExterna::Anda(void *onde)
{
    Passeio &passeio = *static_cast<Passeio *>(onde);
    PessoaExterna pessoa(passeio.FioDasJanelas);
    try {
        passeio.Jornada(pessoa);
    } catch (const std::exception &problema) {
        passeio.Diferenca = problema.what();
    }
    // Whatever still waits for an answer is closed, so that the windows' thread comes back. What does not let itself be
    // closed would keep the program for ever, and what the person saw would be told to nobody.
    const ULONGLONG fim = GetTickCount64() + pessoa.m_Paciencia;
    while (!passeio.Voltou) {
        if (GetTickCount64() > fim) {
            std::fprintf(stderr, "%s\nas janelas não se fecham:%s\n", passeio.Diferenca.c_str(),
                         pessoa.Situacao().c_str());
            std::_Exit(1);
        }
        pessoa.FechaTudo();
        Sleep(Pausa);
    }
    passeio.Acabou = true;
    PostThreadMessageW(passeio.FioDasJanelas, WM_NULL, 0, 0);
    return 0;
}

std::string PessoaExterna::Percorre(const std::function<void()> &acao,
                                    const std::function<void(PessoaExterna &)> &jornada)
{
    Passeio passeio{jornada, GetCurrentThreadId(), {}, {}, {}};
    const HANDLE fio = CreateThread(nullptr, 0, Anda, &passeio, 0, nullptr);
    std::string falhou;
    try {
        acao();
    } catch (const FalhaExterna &falha) {
        falhou = " falha: " + falha.Texto();
    }
    passeio.Voltou = true;
    for (MSG mensagem; !passeio.Acabou && GetMessageW(&mensagem, nullptr, 0, 0) > 0;) {
        TranslateMessage(&mensagem);
        DispatchMessageW(&mensagem);
    }
    WaitForSingleObject(fio, INFINITE);
    CloseHandle(fio);
    return passeio.Diferenca + falhou;
}

PessoaExterna &PessoaExterna::Espera(const std::string &oQue, const std::function<bool()> &condicao)
{
    const ULONGLONG fim = GetTickCount64() + m_Paciencia;
    while (!condicao()) {
        if (GetTickCount64() > fim) {
            throw std::runtime_error("esperado: " + oQue + Situacao());
        }
        Sleep(Pausa); // and looks again
    }
    return *this;
}

std::vector<HWND> PessoaExterna::Janelas() const
{
    std::vector<HWND> janelas;
    EnumThreadWindows(m_Fio, Junta, reinterpret_cast<LPARAM>(&janelas));
    janelas.erase(std::remove_if(janelas.begin(), janelas.end(), [](HWND janela) { return !IsWindowVisible(janela); }),
                  janelas.end());
    return janelas;
}

std::vector<HWND> PessoaExterna::Vistos() const
{
    std::vector<HWND> vistos = Filhas(m_Janela);
    vistos.erase(std::remove_if(vistos.begin(), vistos.end(), [](HWND janela) { return !IsWindowVisible(janela); }),
                 vistos.end());
    return vistos;
}

std::string PessoaExterna::Texto(HWND janela) const
{
    wchar_t texto[2048] = {};
    Pergunta(janela, WM_GETTEXT, 2048, reinterpret_cast<LPARAM>(texto));
    return Estreito(texto);
}

HWND PessoaExterna::Acha(const std::string &rotulo) const
{
    const std::vector<HWND> vistos = Vistos();
    for (HWND visto : vistos) {
        if (Classe(visto) == "Button" && SemLetra(Texto(visto)) == rotulo &&
            (GetWindowLongW(visto, GWL_STYLE) & BS_TYPEMASK) != BS_GROUPBOX) {
            return visto;
        }
    }
    for (HWND visto : vistos) {
        if (Classe(visto) != "Static" || SemLetra(Texto(visto)) != rotulo) {
            continue;
        }
        // A label leads to what comes after it.
        for (HWND proxima = GetWindow(visto, GW_HWNDNEXT); proxima != nullptr;
             proxima = GetWindow(proxima, GW_HWNDNEXT)) {
            if (IsWindowVisible(proxima)) {
                return proxima;
            }
        }
    }
    return nullptr;
}

HWND PessoaExterna::Lista() const
{
    for (HWND visto : Vistos()) {
        if (Classe(visto) == "SysListView32") {
            return visto;
        }
    }
    return nullptr;
}

std::string PessoaExterna::Situacao() const
{
    GUITHREADINFO onde = {};
    onde.cbSize = sizeof onde;
    GetGUIThreadInfo(m_Fio, &onde);
    std::string situacao = " (na frente: \"" + Texto(GetForegroundWindow()) + "\", teclado: " + Classe(onde.hwndFocus) +
                           " \"" + Texto(onde.hwndFocus) + "\"; janelas:";
    for (HWND janela : Janelas()) {
        situacao += " \"" + Texto(janela) + "\"";
        if (Classe(janela) == "#32770") {
            for (HWND filha : Filhas(janela)) {
                situacao += " [" + Texto(filha) + "]";
            }
        }
    }
    return situacao + ")";
}

void PessoaExterna::FechaTudo() const
{
    for (HWND janela : Janelas()) {
        if (Classe(janela) != Estreito(HospedeiroExterno::ClasseDaJanela) && IsWindowEnabled(janela)) {
            PostMessageW(janela, WM_CLOSE, 0, 0);
        }
    }
}

PessoaExterna &PessoaExterna::Tecla(WORD tecla, WORD junto)
{
    std::vector<INPUT> teclas;
    const auto poe = [&](WORD qual, DWORD como) {
        INPUT entrada = {};
        entrada.type = INPUT_KEYBOARD;
        entrada.ki.wVk = qual;
        entrada.ki.dwFlags = como;
        teclas.push_back(entrada);
    };
    if (junto != 0) {
        poe(junto, 0);
    }
    poe(tecla, 0);
    poe(tecla, KEYEVENTF_KEYUP);
    if (junto != 0) {
        poe(junto, KEYEVENTF_KEYUP);
    }
    SendInput(static_cast<UINT>(teclas.size()), teclas.data(), sizeof(INPUT));
    return *this;
}

PessoaExterna &PessoaExterna::Escreve(const std::string &texto)
{
    for (const wchar_t letra : Largo(texto)) {
        if (letra == L'\t' || letra == L'\r') {
            Tecla(letra == L'\t' ? VK_TAB : VK_RETURN);
            continue;
        }
        INPUT entradas[2] = {};
        for (INPUT &entrada : entradas) {
            entrada.type = INPUT_KEYBOARD;
            entrada.ki.wScan = letra;
            entrada.ki.dwFlags = KEYEVENTF_UNICODE;
        }
        entradas[1].ki.dwFlags |= KEYEVENTF_KEYUP;
        SendInput(2, entradas, sizeof(INPUT));
    }
    return *this;
}

PessoaExterna &PessoaExterna::EscreveNoCampo(const std::string &texto)
{
    HWND campo = nullptr;
    Espera("o teclado está em um campo", [&] {
        GUITHREADINFO onde = {};
        onde.cbSize = sizeof onde;
        GetGUIThreadInfo(m_Fio, &onde);
        campo = onde.hwndFocus;
        return Classe(campo) == "Edit" && IsChild(m_Janela, campo) != FALSE;
    });
    Escreve(texto);
    return Espera("o campo mostra \"" + texto + "\"", [&] { return Texto(campo) == texto; });
}

void PessoaExterna::ClicaEm(HWND janela, POINT ponto)
{
    ClientToScreen(janela, &ponto);
    SetCursorPos(ponto.x, ponto.y);
    const auto fracao = [](LONG onde, int total) { return (onde * 65536 + total / 2) / total; };
    // Each tells its place again: where the display's own pointer is, something else may say at any time.
    INPUT entradas[3] = {};
    for (INPUT &entrada : entradas) {
        entrada.type = INPUT_MOUSE;
        entrada.mi.dx = fracao(ponto.x, GetSystemMetrics(SM_CXSCREEN));
        entrada.mi.dy = fracao(ponto.y, GetSystemMetrics(SM_CYSCREEN));
        entrada.mi.dwFlags = MOUSEEVENTF_ABSOLUTE | MOUSEEVENTF_MOVE;
    }
    entradas[1].mi.dwFlags |= MOUSEEVENTF_LEFTDOWN;
    entradas[2].mi.dwFlags |= MOUSEEVENTF_LEFTUP;
    SendInput(3, entradas, sizeof(INPUT));
}

PessoaExterna &PessoaExterna::Clica(const std::string &rotulo)
{
    HWND achado = nullptr;
    Espera("pode-se usar " + rotulo, [&] {
        achado = Acha(rotulo);
        return achado != nullptr && IsWindowEnabled(achado);
    });
    RECT area = {};
    GetClientRect(achado, &area);
    ClicaEm(achado, {area.right / 2, area.bottom / 2});
    return *this;
}

PessoaExterna &PessoaExterna::ClicaAba(const std::string &titulo)
{
    HWND abas = nullptr;
    int qual = -1;
    Espera("há a aba " + titulo, [&] {
        for (HWND visto : Vistos()) {
            if (Classe(visto) != "SysTabControl32") {
                continue;
            }
            const int quantas = static_cast<int>(Pergunta(visto, TCM_GETITEMCOUNT, 0, 0));
            for (int posicao = 0; posicao < quantas; ++posicao) {
                if (TituloDaAba(visto, posicao) == titulo) {
                    abas = visto;
                    qual = posicao;
                }
            }
        }
        return abas != nullptr;
    });
    RECT area = {};
    Pergunta(abas, TCM_GETITEMRECT, static_cast<WPARAM>(qual), reinterpret_cast<LPARAM>(&area));
    ClicaEm(abas, {(area.left + area.right) / 2, (area.top + area.bottom) / 2});
    return EsperaAba(titulo);
}

PessoaExterna &PessoaExterna::EsperaAba(const std::string &titulo)
{
    return Espera("a aba aberta é " + titulo, [&] {
        for (HWND visto : Vistos()) {
            if (Classe(visto) == "SysTabControl32" &&
                TituloDaAba(visto, static_cast<int>(Pergunta(visto, TCM_GETCURSEL, 0, 0))) == titulo) {
                return true;
            }
        }
        return false;
    });
}

PessoaExterna &PessoaExterna::ClicaLinha(int linha)
{
    HWND lista = nullptr;
    Espera("há a linha " + std::to_string(linha), [&] {
        lista = Lista();
        return lista != nullptr && Pergunta(lista, LVM_GETITEMCOUNT, 0, 0) >= linha;
    });
    RECT area = {};
    area.left = LVIR_LABEL;
    Pergunta(lista, LVM_GETITEMRECT, static_cast<WPARAM>(linha - 1), reinterpret_cast<LPARAM>(&area));
    ClicaEm(lista, {area.left + 8, (area.top + area.bottom) / 2});
    return Espera("a linha " + std::to_string(linha) + " é a atual", [&] {
        GUITHREADINFO onde = {};
        onde.cbSize = sizeof onde;
        return GetGUIThreadInfo(m_Fio, &onde) != FALSE && onde.hwndFocus == lista &&
               Pergunta(lista, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED) == linha - 1;
    });
}

PessoaExterna &PessoaExterna::TabAte(const std::string &rotulo)
{
    const auto la = [&] {
        GUITHREADINFO onde = {};
        onde.cbSize = sizeof onde;
        const HWND achado = Acha(rotulo);
        return GetGUIThreadInfo(m_Fio, &onde) != FALSE && achado != nullptr &&
               (onde.hwndFocus == achado || IsChild(achado, onde.hwndFocus) != FALSE);
    };
    for (int vez = 0; vez < MuitasTeclas && !la(); ++vez) {
        GUITHREADINFO antes = {};
        antes.cbSize = sizeof antes;
        GetGUIThreadInfo(m_Fio, &antes);
        Tecla(VK_TAB);
        Espera("Tab leva adiante", [&] {
            GUITHREADINFO agora = {};
            agora.cbSize = sizeof agora;
            GetGUIThreadInfo(m_Fio, &agora);
            return agora.hwndFocus != antes.hwndFocus;
        });
    }
    return Espera("Tab leva a " + rotulo, la);
}

PessoaExterna &PessoaExterna::DesceAte(const std::string &texto)
{
    GUITHREADINFO onde = {};
    onde.cbSize = sizeof onde;
    GetGUIThreadInfo(m_Fio, &onde);
    HWND combo = onde.hwndFocus;
    while (combo != nullptr && Classe(combo).find("Combo") == std::string::npos) {
        combo = GetAncestor(combo, GA_PARENT) == m_Janela ? nullptr : GetAncestor(combo, GA_PARENT);
    }
    const auto mostra = [&] { return combo != nullptr && Texto(combo) == texto; };
    Tecla(VK_HOME);
    Espera("o primeiro item", [&] { return Pergunta(combo, CB_GETCURSEL, 0, 0) == 0; });
    for (int vez = 0; vez < MuitasTeclas && !mostra(); ++vez) {
        const LRESULT antes = Pergunta(combo, CB_GETCURSEL, 0, 0);
        Tecla(VK_DOWN);
        Espera("a seta desce até " + texto, [&] { return Pergunta(combo, CB_GETCURSEL, 0, 0) != antes; });
    }
    return Espera("a seta leva a " + texto, mostra);
}

PessoaExterna &PessoaExterna::Preenche(const std::string &rotulo, const std::string &texto)
{
    TabAte(rotulo).Tecla(VK_HOME).Tecla(VK_END, VK_SHIFT).Tecla(VK_DELETE);
    EsperaTexto(rotulo, "");
    Escreve(texto);
    return EsperaTexto(rotulo, texto);
}

PessoaExterna &PessoaExterna::EsperaJanela(const std::string &titulo)
{
    return Espera("a janela " + titulo + " está na frente", [&] {
        for (HWND janela : Janelas()) {
            if (Texto(janela) == titulo && IsWindowEnabled(janela) && GetForegroundWindow() == janela) {
                m_Janela = janela;
                return true;
            }
        }
        return false;
    });
}

PessoaExterna &PessoaExterna::EsperaFechar(const std::string &titulo)
{
    return Espera("a janela " + titulo + " se fechou", [&] {
        const std::vector<HWND> janelas = Janelas();
        return std::none_of(janelas.begin(), janelas.end(), [&](HWND janela) { return Texto(janela) == titulo; });
    });
}

PessoaExterna &PessoaExterna::EsperaCaixa(const std::string &texto)
{
    return Espera("uma caixa diz \"" + texto + "\"", [&] {
        const HWND frente = GetForegroundWindow();
        if (Classe(frente) != "#32770") {
            return false;
        }
        for (HWND filha : Filhas(frente)) {
            if (Texto(filha).find(texto) != std::string::npos) {
                m_Janela = frente;
                return true;
            }
        }
        return false;
    });
}

PessoaExterna &PessoaExterna::EsperaTexto(const std::string &rotulo, const std::string &texto)
{
    return Espera(rotulo + " mostra \"" + texto + "\"", [&] {
        const HWND achado = Acha(rotulo);
        return achado != nullptr && Texto(achado) == texto;
    });
}

PessoaExterna &PessoaExterna::EsperaUsavel(const std::string &rotulo, bool usavel)
{
    return Espera(rotulo + (usavel ? " se pode usar" : " não se pode usar"), [&] {
        const HWND achado = Acha(rotulo);
        return achado != nullptr && (IsWindowEnabled(achado) != FALSE) == usavel;
    });
}

PessoaExterna &PessoaExterna::EsperaFoco(const std::string &rotulo)
{
    return Espera("o teclado está em " + rotulo, [&] {
        GUITHREADINFO onde = {};
        onde.cbSize = sizeof onde;
        const HWND achado = Acha(rotulo);
        return GetGUIThreadInfo(m_Fio, &onde) != FALSE && achado != nullptr &&
               (onde.hwndFocus == achado || IsChild(achado, onde.hwndFocus) != FALSE);
    });
}

PessoaExterna &PessoaExterna::EsperaLinhas(int quantas)
{
    return Espera("a lista tem " + std::to_string(quantas) + " linhas", [&] {
        const HWND lista = Lista();
        return lista != nullptr && Pergunta(lista, LVM_GETITEMCOUNT, 0, 0) == quantas;
    });
}

PessoaExterna &PessoaExterna::EsperaCelula(int linha, const std::string &coluna, const std::string &texto)
{
    return Espera("linha " + std::to_string(linha) + ", " + coluna + ": " + texto, [&] {
        const HWND lista = Lista();
        for (int qual = 0; lista != nullptr && qual < Colunas(lista); ++qual) {
            if (TituloDaColuna(lista, qual) == coluna) {
                return TextoDaCelula(lista, linha - 1, qual) == texto;
            }
        }
        return false;
    });
}

PessoaExterna &PessoaExterna::Fotografa(const std::string &nome)
{
    if (nativo::Fotografa(m_Janela, nome) < 3) {
        throw std::runtime_error("o retrato " + nome + " está vazio");
    }
    return *this;
}

} // namespace nativo
