#pragma once

#include <windows.h>

#include <atomic>
#include <functional>
#include <string>
#include <vector>

namespace nativo {

// A person in front of the screen, with its keyboard and mouse, who sees windows and what they show and knows nothing
// else. Works in a thread of its own, because an act may open a window and come back only when that closes. What an act
// brings about is waited for, at most as long as the person is patient. Each answers the person, for the next.
class PessoaExterna {
  public:
    // Runs `acao` in this thread, which is that of the windows, and lets the windows work until the journey has ended.
    // Empty when all was as expected, otherwise what was not.
    static std::string Percorre(const std::function<void()> &acao, const std::function<void(PessoaExterna &)> &jornada);

    // Waits that long at most, in milliseconds; ten seconds unless it is told.
    PessoaExterna &Paciencia(ULONGLONG quanta)
    {
        m_Paciencia = quanta;
        return *this;
    }

    PessoaExterna &Tecla(WORD tecla, WORD junto = 0);
    PessoaExterna &Alt(char letra) { return Tecla(static_cast<WORD>(letra), VK_MENU); }
    // Letters; "\t" is Tab and "\r" Enter.
    PessoaExterna &Escreve(const std::string &texto);
    // In the field that has the keyboard, empty before, until all of it stands there.
    PessoaExterna &EscreveNoCampo(const std::string &texto);
    // The mouse, in the middle of the button, box, option or field of that label; of a page's heading; of a row.
    PessoaExterna &Clica(const std::string &rotulo);
    PessoaExterna &ClicaAba(const std::string &titulo);
    PessoaExterna &ClicaLinha(int linha);
    // Tab until the keyboard is in what has the label.
    PessoaExterna &TabAte(const std::string &rotulo);
    // With the keyboard in a combo, the down key until it shows the text.
    PessoaExterna &DesceAte(const std::string &texto);
    // Takes what a field holds away and types.
    PessoaExterna &Preenche(const std::string &rotulo, const std::string &texto);

    // What is seen. A label is that of a field, or the text of a button, box or option; "&" is not seen.
    PessoaExterna &EsperaJanela(const std::string &titulo);
    // No window has the title any more.
    PessoaExterna &EsperaFechar(const std::string &titulo);
    // A box that says so is in front; Enter takes its default button.
    PessoaExterna &EsperaCaixa(const std::string &texto);
    PessoaExterna &EsperaTexto(const std::string &rotulo, const std::string &texto);
    PessoaExterna &EsperaUsavel(const std::string &rotulo, bool usavel);
    PessoaExterna &EsperaFoco(const std::string &rotulo);
    PessoaExterna &EsperaLinhas(int quantas);
    // Of the list that is seen: rows from 1, columns by their heading.
    PessoaExterna &EsperaCelula(int linha, const std::string &coluna, const std::string &texto);
    PessoaExterna &EsperaAba(const std::string &titulo);
    PessoaExterna &Espera(const std::string &oQue, const std::function<bool()> &condicao);
    // Keeps a picture of the window in front; an empty one is not as expected.
    PessoaExterna &Fotografa(const std::string &nome);

    HWND Janela() const { return m_Janela; }
    // The control of a label in the window in front; null when none is seen.
    HWND Acha(const std::string &rotulo) const;
    HWND Lista() const;
    std::string Texto(HWND janela) const;

  private:
    // What the two threads know of each other.
    struct Passeio {
        const std::function<void(PessoaExterna &)> &Jornada;
        DWORD FioDasJanelas;
        std::string Diferenca;
        std::atomic<bool> Voltou;
        std::atomic<bool> Acabou;
    };
    static DWORD WINAPI Anda(void *passeio);

    explicit PessoaExterna(DWORD fio) : m_Fio(fio) {}
    std::vector<HWND> Janelas() const;
    std::vector<HWND> Vistos() const;
    void ClicaEm(HWND janela, POINT ponto);
    std::string Situacao() const;
    void FechaTudo() const;

    DWORD m_Fio; // of the windows
    HWND m_Janela = nullptr;
    ULONGLONG m_Paciencia = 10000;
};

} // namespace nativo
