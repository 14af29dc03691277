#pragma once

#include "tela/Arrumacao.h"
#include "tela/TeclasDeCombo.h"

#include <windows.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace nativo {

// The platform's drop-down list, in which others may decide what typing finds and whether it may be opened.
class ComboNativo {
  public:
    // What the person does there. Those that nobody is asked for are the platform's own affair.
    struct Atos {
        std::function<void(int indice)> Escolhe;
        std::function<void(const std::function<void(PesquisaPorLetras &)> &)> Pesquisa{};
        std::function<bool(AtoNoCombo ato)> Obedece{};
    };

    static constexpr DWORD Estilo = WS_VSCROLL | CBS_DROPDOWNLIST | CBS_HASSTRINGS;

    ComboNativo(HWND janela, Atos atos);

    HWND Janela() const { return m_Janela; }
    // What the combo has told its parent (CBN_...).
    void Avisou(UINT aviso);
    // A message of the combo, before the combo itself; a value is the answer.
    std::optional<LRESULT> Mensagem(UINT mensagem, WPARAM w);
    // Enter and Esc are for the list while it is open.
    bool FicaComTecla(WPARAM tecla) const;

    void MostraItens(std::size_t quantos, const std::function<const std::string &(std::size_t)> &item);
    // From 0; -1 for none.
    void MostraEscolhido(int indice);
    void Posiciona(const Retangulo &lugar);

  private:
    bool Aberto() const;
    std::optional<LRESULT> Letra(wchar_t unidade);
    void FezOutro() const;
    void AlargaLista() const;

    HWND m_Janela;
    Atos m_Atos;
    std::vector<std::string> m_Itens;
    int m_Escolhido = -1;   // as it was shown last
    bool m_Aceitou = false; // an item of the open list
    wchar_t m_Metade = 0;   // of a character that comes in two
};

} // namespace nativo
