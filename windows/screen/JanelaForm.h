#pragma once

#include "tela/EscolhaDeCliente.h"
#include "tela/EscolhaDeEndereco.h"
#include "tela/ICamada.h"
#include "tela/Pessoa.h"
#include "windows/screen/ContextoVisual.h"
#include "windows/screen/Letra.h"
#include "windows/screen/Renderizador.h"

#include <windows.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace nativo {

// What the window of a form needs around it.
struct AoRedorDoForm {
    PedidosDaJanela Pedidos;
    std::function<std::vector<ClienteOferecido>()> Clientes;
    Ref<ILogradouros> Logradouros;
    Ref<MemoriaDeEnderecos> Memoria;
    Ref<ContextoVisual> Contexto;
    std::function<bool()> Esperando; // whether the wait pointer is on
};

// The window of one form of the module: native controls drawn from its description and placed by tela/Arrumacao, each
// bound to its control by a renderer. It ends itself when the form has been unloaded and none of its messages runs any
// more.
class JanelaForm : public Objeto {
  public:
    JanelaForm(Ref<IForm> form, AoRedorDoForm aoRedor);
    ~JanelaForm() override;
    std::string_view NomeTipo() const override { return "JanelaForm"; }

    // Makes the window, not yet shown.
    void Faz(TipoDeJanela tipo, HWND dono);
    void Mostra();
    void ParaFrente();
    // Text that was written past the form's caption; empty: the caption counts.
    void DefineTexto(const std::string &texto);
    // The form has been unloaded: the window goes without asking.
    void Encerra();
    bool Encerrada() const { return m_Encerrando; }
    // While a modal window stands in front of it, however often, it cannot be used.
    void Bloqueia();
    void Desbloqueia();

    HWND Manipulador() const { return m_Janela; }
    const Ref<IForm> &Form() const { return m_Form; }
    const AoRedorDoForm &AoRedor() const { return m_AoRedor; }
    const Letra &Escrita() const { return *m_Letra; }
    Pessoa &DaPessoa() { return m_Pessoa; }
    // The renderer of a window of the form's, or of a control; null when there is none.
    Renderizador *DaJanela(HWND janela) const;
    Renderizador *DoControle(const IControle &controle) const;

    // For the renderers.

    // Runs what a person did at the edge of the windows: a fault that comes out of the module is shown and ends there.
    void NaBorda(const std::function<void()> &acao) const { m_AoRedor.Pedidos.NaBorda(acao); }
    // Makes a child of the form's window, which tells the renderer of its messages.
    HWND FazFilha(const wchar_t *classe, DWORD estilo, DWORD estiloExtra, Renderizador *renderizador);
    // Something of a control has changed: before anything is painted or used the pieces are placed anew.
    void PedeArranjo();
    // Does at once what was put off by that.
    void Arranja();
    // What a label, box or tab page is painted on.
    COLORREF FundoEm(HWND janela) const;

  private:
    class Entrada;

    static LRESULT CALLBACK Procedimento(HWND janela, UINT mensagem, WPARAM w, LPARAM l) noexcept;
    static LRESULT CALLBACK DaFilha(HWND janela, UINT mensagem, WPARAM w, LPARAM l, UINT_PTR id,
                                    DWORD_PTR dados) noexcept;

    Ref<IForm> m_Form;
    AoRedorDoForm m_AoRedor;
    Pessoa m_Pessoa;
    HWND m_Janela = nullptr;
    std::unique_ptr<Letra> m_Letra;
    bool m_Encerrando = false;
};

} // namespace nativo
