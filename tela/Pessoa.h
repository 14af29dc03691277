#pragma once

#include "controls/ControleBase.h"
#include "host/IPlataforma.h"
#include "tela/ComandosDeLista.h"
#include "tela/EscolhaDeEndereco.h"
#include "tela/ICamada.h"
#include "tela/Partes.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

// A person in front of one form: does with its controls, by name, what a person can do, and nothing else. Every action
// answers whether it could be done; Motivo then says why not. Raises nothing of its own: a fault that comes out of an
// action was raised by the form's own code.
class Pessoa {
  public:
    // Without a platform the person cannot close the window.
    explicit Pessoa(const Ref<IForm> &form, const Ref<IPlataforma> &plataforma = nullptr);
    // In front of a window of a screen.
    Pessoa(const Ref<IForm> &form, const PedidosDaJanela &pedidos);

    // Tells where in a control the keyboard is, when a toolkit has led it there; Nothing for the control: in no part.
    void Ocupa(const Ref<IControle> &controle, Parte parte);
    // Tells what the person has typed in an address picker, which lives as long as this one.
    void Conhece(const Ref<IControle> &controle, EscolhaDeEndereco &escolha);

    // Why the last action was refused; empty when it was done.
    const std::string &Motivo() const { return m_Motivo; }

    // Mouse and keys on one control; indice only for one of a control array.
    bool Foco(const std::string &nome, std::int16_t indice = -1);
    bool Clica(const std::string &nome, std::int16_t indice = -1);
    // Clicks a check box or an option only when that is needed for its state to be on, or off.
    bool Marca(const std::string &nome, std::int16_t indice = -1);
    bool Desmarca(const std::string &nome, std::int16_t indice = -1);
    // Types at the end; empties; empties and types.
    bool Digita(const std::string &nome, const std::string &texto, std::int16_t indice = -1);
    bool Apaga(const std::string &nome, std::int16_t indice = -1);
    bool Preenche(const std::string &nome, const std::string &texto, std::int16_t indice = -1);
    // Chooses the item of a text in a combo.
    bool Escolhe(const std::string &nome, const std::string &texto, std::int16_t indice = -1);
    bool EscolheIndice(const std::string &nome, std::int32_t posicao, std::int16_t indice = -1);
    bool Abre(const std::string &nome, std::int16_t pagina);
    bool ClicaLinha(const std::string &nome, std::int32_t linha);
    // Clicks the row twice.
    bool AbreLinha(const std::string &nome, std::int32_t linha);
    bool TeclaSetas(const std::string &nome, std::int32_t passos);
    bool EscolheMenu(const std::string &nome, const std::string &chave);
    bool PedeMais(const std::string &nome);
    bool Localiza(const std::string &nome);
    bool OrdenaPor(const std::string &nome, std::int32_t coluna);
    bool InformaEndereco(const std::string &nome, std::int32_t codLogradouro, std::int32_t numero,
                         const std::string &complemento, const std::string &cep, const std::string &descricao);
    bool LimpaEndereco(const std::string &nome);
    bool EscolheCliente(const std::string &nome, const std::string &cliente, const std::string &setor);

    // A place where Tab stops.
    struct Parada {
        Ref<IControle> Controle;
        Parte Qual = Parte::Todo;
    };
    // Where the keyboard is: a layer without a way of its own brings it there after Tab. Nothing for the control: in
    // none.
    Parada ParadaAtual() const;

    // The window has the keyboard and none of its controls has: goes to where it was, as long as it can be there,
    // otherwise to the next stop, past the strips of pages as long as there is any other.
    bool Retoma();

    // Keys of the form.

    // To the next control, or the one before, in the order of TabIndex, that can have the focus; in a control of
    // several parts, to the next of those that can be used.
    bool Tab();
    bool ShiftTab();
    // Presses the button that has the focus, be it part of a control; on a row does what AbreLinha tells; in a
    // criterion searches; otherwise presses the default button.
    bool Enter();
    // Closes a window in which nothing can be lost, by the button that says so, or by the list's own; otherwise presses
    // the cancel button, which in a window for choosing a row is the one beside OK.
    bool Esc();
    // F5, Insert, Delete: the first for any list that is seen, the others with the keyboard in the rows.
    bool Atalho(AtalhoDeLista atalho);
    // Ctrl+F: to the first criterion of the list that is seen.
    bool VaiAosCriterios();
    // The letter or digit behind "&" in a caption: presses the button, clicks the box, opens the page, runs the list's
    // command, or leads from a label or frame to the control after it. Of several the first behind the focus.
    bool Alt(char32_t tecla);
    // Whether something would answer to Alt with that key now.
    bool RespondeAlt(char32_t tecla);
    // Ctrl+PgDn and Ctrl+PgUp: opens the next page that can be opened, 1, or the one before, -1.
    bool AndaPaginas(int passo);
    // Arrow keys on an option: chooses the next one of its group that can be chosen, 1, or the one before, -1; behind
    // the last comes the first.
    bool AndaOpcoes(int passo);
    // The window's own close button.
    bool Fecha();
    bool Ajuda();

    // The control of that name and kind; Nothing when there is none. The name's case does not count.
    template <class C> Ref<C> Acha(const std::string &nome, std::int16_t indice = -1) const
    {
        Ref<IControle> controle = Acha(nome, indice);
        return dynamic_cast<C *>(controle.Ponteiro()) ? ComoTipo<C>(controle) : nullptr;
    }
    Ref<IControle> Acha(const std::string &nome, std::int16_t indice = -1) const;

  private:
    bool Recusa(const std::string &motivo);
    // Does an action on the control, seen as C, and finds out why it was refused.
    template <class C, class Acao>
    bool Com(const std::string &nome, std::int16_t indice, const char *recusado, Acao &&acao);
    std::vector<Ref<IControle>> EmOrdem() const;
    std::vector<Parada> Paradas() const;
    // From the one behind the current one on, 1, or back from the one before it, -1; the current one is the last.
    std::vector<Parada> ParadasAdiante(int passo) const;
    bool VaiPara(const Parada &parada);
    bool Anda(int passo);
    // Buttons that are parts of controls.
    bool PodeApertar(const Parada &botao) const;
    bool Aperta(const Parada &botao);
    // The lists that can be used now, the one that has the focus first.
    std::vector<Ref<IControle>> Listas() const;
    Ref<IControle> BotaoDeEsc() const;
    EscolhaDeEndereco *EscolhaDe(const Ref<IControle> &controle) const;
    using Resposta = std::function<bool()>;
    // What Alt with the key may do, the first behind the focus first.
    std::vector<Resposta> Respostas(char32_t tecla);
    void JuntaRespostas(const Ref<IControle> &controle, const std::string &letra, std::vector<Resposta> &respostas);
    bool FocoDepoisDe(const Ref<IControle> &controle);

    RefFraca<IForm> m_Form;
    std::function<void()> m_Fecha;
    std::function<void()> m_Ajuda;
    std::map<const IControle *, EscolhaDeEndereco *> m_Escolhas;
    // Where Tab has led, which counts as long as the control that has the focus stays the same.
    RefFraca<IControle> m_Parado;
    RefFraca<IControle> m_AtivoEntao;
    Parte m_Parte = Parte::Todo;
    std::string m_Motivo;
};
