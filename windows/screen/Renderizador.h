#pragma once

#include "controls/ControleBase.h"
#include "host/Evento.h"
#include "host/IControle.h"
#include "tela/Arrumacao.h"
#include "tela/Partes.h"

#include <windows.h>

#include <commctrl.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace nativo {

class JanelaForm;
class Letra;

// Shows one control in native windows, which are all children of the form's window, and hands what the person does
// there to the control's person's face. No rule lives here: what the control answers is what the windows show.
//
// A renderer lives as long as its window's messages run, also while what the person did unloads the form: after an act
// only Encerrado() has to be looked at before the windows are touched again, and Age does that.
class Renderizador {
  public:
    // peca: of the form's description; it lives as long as the window. The kind's own windows are made in the
    // constructor, in the order in which a screen reader is to meet them, with Faz.
    Renderizador(Ref<IControle> controle, const Peca &peca, JanelaForm &janela);
    Renderizador(const Renderizador &) = delete;
    Renderizador &operator=(const Renderizador &) = delete;
    virtual ~Renderizador() = default;

    const Ref<IControle> &Controle() const { return m_Controle; }
    const Peca &Descricao() const { return m_Peca; }
    // The first of its windows, which the text before the control is not; null when it has none.
    HWND Principal() const;

    // Brings the windows to what the control is now.
    void Atualiza();
    // Whether the control is to be seen and used, with everything around it. Called by the form's window.
    void MostraOndeEsta(bool visivel, bool habilitado);
    // Puts the windows where the piece stands. All measures are the screen's own pixels.
    virtual void Coloca(const PecaArrumada &lugar);

    // Of a control of several parts, the window of each; null for one that it does not show.
    virtual HWND JanelaDe(Parte parte) const;
    // That has the keyboard; none when it is elsewhere.
    std::optional<Parte> ParteComTeclado() const;

    // What its windows tell the form's: WM_COMMAND with the notification, WM_NOTIFY, WM_DRAWITEM.
    virtual void Comando(HWND janela, UINT aviso);
    virtual LRESULT Notifica(NMHDR &aviso);
    virtual bool Desenha(const DRAWITEMSTRUCT &item);
    // A message of one of its windows, before the window itself and before the form sees it. A value is the answer, and
    // nobody else gets the message.
    virtual std::optional<LRESULT> Mensagem(HWND janela, UINT mensagem, WPARAM w, LPARAM l);
    // Of the keys that are the form's, Tab, Enter, Esc, F1 and those that lead through pages: whether the window needs
    // this one for itself now, such as Enter in an open combo.
    virtual bool FicaComTecla(HWND janela, WPARAM tecla) const;
    // The colour on which it shows what it holds; none: that on which it is shown itself.
    virtual std::optional<COLORREF> CorDoMiolo() const;
    // The system's font, its scale or the system's colours have become others; the windows have the new font already.
    virtual void MudouAparencia();
    // The form's window stands elsewhere, or is larger or smaller.
    virtual void MudouDeLugar();

    // Called by the form's window: one of the renderer's windows got the keyboard, or lost it.
    void ChegouTeclado();
    void SaiuTeclado();

  protected:
    // Makes a window of this control: a child of the form's with the system's font, whose messages come to this
    // renderer. It stands behind those made before, and is hidden until the control is seen.
    HWND Faz(const wchar_t *classe, DWORD estilo, DWORD estiloExtra = 0);
    // What is particular to the kind of control. Place, visible and enabled come with the whole form.
    virtual void Mostra() = 0;
    // A window of the control that is not always seen, or not always to be used, though the control is.
    void MostraParte(HWND janela, bool visivel);
    void HabilitaParte(HWND janela, bool habilitada);
    // What a screen reader says of one of its windows. Without it that is the text of a label that was made right
    // before it, or its own.
    void Nomeia(HWND janela, const std::string &nome);

    // Something that the person did. Afterwards the windows show what came of it.
    void Age(const std::function<void()> &acao);
    // The windows are being brought to the control: what they tell meanwhile is not the person's.
    bool Mostrando() const { return m_Mostrando; }
    // The form's window has gone: nothing is shown any more.
    bool Encerrado() const;

    JanelaForm &Janela() const { return m_Janela; }
    const Letra &Escrita() const;

    std::vector<Conexao> m_Conexoes;

  private:
    struct JanelaDoControle {
        HWND Manipulador;
        bool Visivel = true;
        bool Habilitada = true;
    };

    void Aplica(const JanelaDoControle &janela) const;
    void Altera(HWND janela, bool JanelaDoControle::*qual, bool valor);

    Ref<IControle> m_Controle;
    const Peca &m_Peca;
    JanelaForm &m_Janela;
    HWND m_Rotulo = nullptr; // the text before the control
    std::vector<JanelaDoControle> m_Janelas;
    bool m_Visivel = false;
    bool m_Habilitado = true;
    bool m_Mostrando = false;
};

// The control as its own class and face.
template <class C> C &Como(const Renderizador &renderizador)
{
    return dynamic_cast<C &>(*renderizador.Controle());
}

// Text of a window, both ways. Written only when it is another one.
std::string TextoDe(HWND janela);
void EscreveTexto(HWND janela, const std::string &texto);
// Moves only what is not there yet.
void PoeEm(HWND janela, const Retangulo &lugar);

} // namespace nativo
