#pragma once

#include "tela/Janelas.h"
#include "tests/support/HostTeste.h"
#include "tests/tela/FormDescrito.h"
#include "windows/screen/CamadaWindows.h"

#include <windows.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace nativo {

// Native windows of forms, described ones or the module's, before a person who has the keyboard and the mouse.
class TelaDeTeste : public HostTeste {
  protected:
    void SetUp() override;
    void TearDown() override;

    // Shows a form of the description.
    void Abre(Peca raiz, bool modal = false);
    // Shows any form; it is unloaded at the end.
    void Abre(const Ref<IForm> &form, bool modal = false);
    // Runs the messages that are there.
    void Roda() { camada->ProcessaMensagens(); }

    // The form's window.
    JanelaForm &Janela() const { return *camada->Janelas().back(); }
    HWND Manipulador() const { return Janela().Manipulador(); }
    // That shows the control.
    HWND Filha(const std::string &nome) const;
    template <class C> Ref<C> Controle(const std::string &nome) const { return ComoTipo<C>(descrito.Controle(nome)); }
    std::string Texto(const std::string &nome) const { return TextoDe(Filha(nome)); }
    // Name of the control whose window has the keyboard; empty for none.
    std::string Teclado() const;

    // A key that is pressed and let go, with others held.
    void Tecla(WORD tecla, std::vector<WORD> seguradas = {});
    void Digita(std::wstring_view texto);
    void Clica(HWND janela);

    // What the person does when a window of that class, a form's or a box, is in front: while somebody waits for it.
    void NaFrente(const wchar_t *classe, std::function<void(HWND)> ato);

    Ref<CamadaWindows> camada;
    Ref<::Janelas> janelas;
    FormDescrito descrito;
    std::vector<std::string> falhas; // that were shown

  private:
    struct Espera {
        std::wstring Classe;
        std::function<void(HWND)> Ato;
    };

    static void CALLBACK Relogio(HWND, UINT, UINT_PTR, DWORD);
    void Espreita();

    static inline TelaDeTeste *g_Esta = nullptr;
    std::vector<Espera> m_NaFrente;
    UINT_PTR m_Relogio = 0;
    bool m_EmAto = false;
};

inline constexpr const wchar_t *ClasseDoForm = L"ZTAVOREQUIP.Form";
inline constexpr const wchar_t *ClasseDaCaixa = L"#32770";

} // namespace nativo
