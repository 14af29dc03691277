#pragma once

#include "tela/EscolhaDeCliente.h"
#include "tela/EscolhaDeEndereco.h"
#include "tela/ICamada.h"
#include "tela/Pessoa.h"
#include "tela/Tracado.h"
#include "windows/automation/Com.h"
#include "windows/automation/Embrulho.h"
#include "windows/screen/ContextoVisual.h"
#include "windows/screen/Letra.h"
#include "windows/screen/Renderizador.h"

#include <windows.h>

#include <oleacc.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace nativo {

class JanelaForm;

// What the window of a form needs around it.
struct AoRedorDoForm {
    PedidosDaJanela Pedidos;
    std::function<std::vector<ClienteOferecido>()> Clientes;
    Ref<ILogradouros> Logradouros;
    Ref<MemoriaDeEnderecos> Memoria;
    Ref<ContextoVisual> Contexto;
    std::function<bool()> Esperando; // whether the wait pointer is on
    // Which of the application's children was told last that it is the active one; common to all windows.
    std::shared_ptr<RefFraca<JanelaForm>> Ativa;
};

// The window of one form of the module: native controls drawn from its description and placed by tela/Arrumacao, each
// bound to its control by a renderer. It ends itself when the form has been unloaded and none of its messages runs any
// more.
class JanelaForm : public Objeto {
  public:
    JanelaForm(Ref<IForm> form, AoRedorDoForm aoRedor);
    std::string_view NomeTipo() const override { return "JanelaForm"; }

    // Makes the window, not yet shown. dono: in front of which it stands; null for none.
    void Faz(TipoDeJanela tipo, HWND dono);
    // The window that was made becomes of another kind, in front of another one.
    void Destina(TipoDeJanela tipo, HWND dono);
    void Mostra();
    void ParaFrente();
    // Text that was written past the form's caption; empty: the caption counts.
    void DefineTexto(const std::string &texto);
    // The form has been unloaded: the window goes without asking.
    void Encerra();
    bool Encerrada() const { return m_Encerrando; }
    // The window has gone, whoever took it away.
    std::function<void()> AoEncerrar;
    // The form has been hidden; before the window is.
    std::function<void()> AoEsconder;
    // While modal windows stand in front of it, it cannot be used.
    void Bloqueia();
    // The same of a box of the system, which disables its owner itself and enables it in time to be used again.
    void FicaAtrasDeCaixa() { ++m_Bloqueios; }
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
    // Makes a child of the form's window, hidden, with the system's font.
    HWND FazFilha(const wchar_t *classe, DWORD estilo, DWORD estiloExtra);
    // Tells whose messages are those of a child.
    void Registra(HWND filha, Renderizador &renderizador) { m_DasJanelas[filha] = &renderizador; }
    // What a screen reader says of a child.
    void Nomeia(HWND filha, const std::string &nome);
    // Something of a control has changed: before anything is painted or used the pieces are placed anew.
    void PedeArranjo();
    // Does at once what was put off by that.
    void Arranja();
    // The keyboard goes to a child, now or as soon as the window has it.
    void LevaTeclado(HWND filha);
    // The colour on which a child is shown.
    COLORREF FundoEm(HWND filha) const;

  private:
    class Entrada;
    class Classe;

    static LRESULT CALLBACK Procedimento(HWND janela, UINT mensagem, WPARAM w, LPARAM l) noexcept;
    static LRESULT CALLBACK DaFilha(HWND janela, UINT mensagem, WPARAM w, LPARAM l, UINT_PTR id,
                                    DWORD_PTR dados) noexcept;
    // No value: the message is the system's.
    std::optional<LRESULT> Trata(UINT mensagem, WPARAM w, LPARAM l);
    std::optional<LRESULT> TrataDaFilha(HWND filha, UINT mensagem, WPARAM w, LPARAM l);
    std::optional<LRESULT> TrataTecla(HWND filha, UINT mensagem, WPARAM w);
    bool MudaPagina(WPARAM tecla);
    bool VaiAosCriterios(WPARAM tecla);
    bool AtoDaTecla(WPARAM tecla);
    // The window goes as soon as none of its messages runs.
    void Destroi();
    void Sumiu();
    void MostraFalha() const noexcept;

    void FazControles(const Peca &peca);
    void Dimensiona(HWND dono);
    SIZE ComMoldura(SIZE miolo) const;
    FormArrumado Arrumado() const;
    void Coloca(const FormArrumado &arrumado);
    // When what is in the window has come to need more room.
    void Cresce(Tamanho menor);
    void MostraForm();
    void MostraTitulo();
    void MostraIcone();
    void MostraLugar();
    void MostraEstado();
    void HabilitaJanela();
    void MudaAparencia(UINT dpi);
    void AvisaQueMudouDeLugar() const;
    // Tells the form what the person or the system has made of its window.
    void DizLugar();
    void DizEstado(WPARAM tamanho);
    void DizAtivacao(bool ativa, HWND outra);
    bool EstaNaFrente(HWND janela) const;
    void DizOndeEstaOTeclado();
    void SegueParada();
    void DevolveTeclado();
    bool PodeTerTeclado(HWND filha) const;
    void PintaFundo(HDC papel) const;
    COLORREF FundoDe(const Renderizador &renderizador) const;
    HBRUSH Pinta(HDC papel, HWND filha) const;

    Vivo m_Vivo;
    Ref<IForm> m_Form;
    AoRedorDoForm m_AoRedor;
    Pessoa m_Pessoa;
    const Desenho m_Desenho;
    ControlesDoForm m_Controles;
    std::shared_ptr<Classe> m_Classe;
    std::unique_ptr<Letra> m_Letra;
    HWND m_Janela = nullptr;
    TipoDeJanela m_Tipo = TipoDeJanela::Solta;
    std::vector<std::unique_ptr<Renderizador>> m_Renderizadores;
    std::map<HWND, Renderizador *> m_DasJanelas;
    std::map<const IControle *, Renderizador *> m_DosControles;
    Com<IAccPropServices> m_Nomes;
    std::vector<Conexao> m_Conexoes;
    std::string m_Texto;
    std::string m_Icone;
    Retangulo m_LugarDito; // twips, as the form has it
    std::int16_t m_EstadoDito = JanelaNormal;
    Tamanho m_Menor;
    SIZE m_TamanhoDito{};
    HWND m_Teclado = nullptr; // that has the keyboard whenever the window has it
    int m_Bloqueios = 0;
    int m_Entradas = 0;
    bool m_EraAtiva = false;
    bool m_Mostrada = false;
    bool m_Dizendo = false;
    bool m_ArranjoPedido = false;
    bool m_Arranjando = false;
    bool m_Encerrando = false;
    Ref<JanelaForm> m_Viva; // while there is a window
};

} // namespace nativo
