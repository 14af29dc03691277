#pragma once

#include "search/IModulo.h"
#include "shell/Coluna.h"
#include "shell/Formulario.h"
#include "shell/clsListaParametros.h"

#include <array>
#include <string>
#include <string_view>

// The window in which a searchable module shows its criteria and its result list: not modal from the menu, modal when
// another module wants an item selected.
class frmLista : public Formulario {
  public:
    std::string_view NomeTipo() const override { return "frmLista"; }
    ::Desenho Desenho() const override;

    // The selection's values; Nothing before a selection.
    Ref<clsListaParametros> Parametros() const { return m_Parametros; }
    // Writes the window's text.
    void SetaTitulo(const std::string &sTitulo);
    // Sends the criteria on the window to the module.
    void Localiza();
    // Opens the window. Modal: returns when it is closed, true when an item was selected. Otherwise returns false at
    // once. With a parameter list the search runs by itself.
    bool CarregaForm(const Ref<IModulo> &modulo, const TabelaColunas &aColunas, const std::string &Titulo,
                     const Ref<clsListaParametros> &parametros, bool bModal);
    // Whether the window has not been closed yet.
    bool Aberta() const { return Carregado(); }

    // About to close; writing true keeps the window open.
    Evento<bool &> AntesFechar;
    Evento<> HabilitaMenu; // never raised
    Evento<> FormAtivado;
    Evento<Ref<IztList>> FormCarregado;
    Evento<> FormDesativado;

  protected:
    void LigaControles() override;
    void Solta() override;
    void Form_Unload(bool &cancela) override;
    void Form_Activate() override;
    void Form_Deactivate() override;
    void Form_Resize() override;

  private:
    Ref<IztList> ztlLista;
    std::array<Ref<IztFrame>, 1> fraDados;
    Ref<IztClienteSetor> ztCliente;
    Ref<IztCombo> cboTipoAgente;
    Ref<IztCombo> cboTipoEquipto;
    Ref<IztCombo> cboCriterio;
    Ref<IztMask> txtCodEquip;
    Ref<ICheckBox> chkInativos;
    Ref<ICommandButton> cmdOK;
    Ref<ICommandButton> cmdCancelar;

    bool m_Carregando = false; // stays true for the whole life of a modal window
    Ref<IModulo> m_Modulo;     // the module refers to this window too: dropping this on unload ends the cycle
    bool m_Pronto = false;
    bool Modal = false;
    bool m_Selecionou = false;
    Ref<clsListaParametros> m_Parametros;
    bool m_TrabFoto = false;

    // The module, alive for the expression in which it is used: the host may close the window meanwhile.
    Ref<IModulo> ModuloVivo() const { return m_Modulo; }
    bool EhEquipamentos() const;
    void AtualizaFrame();
    void AtivaFrame();
    void AtualizaTabIndex();
    void LimpaResultado();
    void LocalizacaoAutomatica(const Ref<clsListaParametros> &parametros);

    void LimpaPesquisa();
    void cboCriterio_Click();
    void cboTipoAgente_Click();
    void ztlLista_BotaoLocalizarValida(bool &cancela);
    void ztlLista_BotaoLocalizarEnvia();
    void cmdOK_Click();
    void cmdCancelar_Click();
};
