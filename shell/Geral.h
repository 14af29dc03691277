#pragma once

#include "host/HostServices.h"
#include "shell/MenusGeral.h"
#include "shell/RelatoriosGeral.h"
#include "shell/TransacoesGeral.h"

#include <cstdint>
#include <string>
#include <string_view>

class Especifica;

// The shell: all that the host does to the module enters here, and what is particular to this module lies behind
// Especifica. Only to be created with Novo, since it hands out references to itself.
class Geral : public Objeto {
  public:
    Geral();
    ~Geral() override; // as Encerra
    std::string_view NomeTipo() const override { return "Geral"; }

    // The host's face, in the order of its interface.

    // The local database; opened on the first read unless the host gave one.
    Ref<IMDB> MDB();
    void DefineMDB(const Ref<IMDB> &valor);
    bool Depurar = false;
    bool InstanciarFormsClickMenu = false; // holds for one show
    bool PossuiJanelaEnviaRecebe = false;
    Ref<IActBar> ActBar;
    Ref<IAplicacao> Modulo() const;
    void RegistraAM(const Valor &NomeAPP = "") noexcept;
    void DesregistraAM(const Valor &NomeAPP = "") noexcept;
    // Clears ObjInterface, which the host therefore gives afterwards.
    void Parametros(const Ref<IFormMDI> &FormMDI, const Ref<IActBar> &MenuDestino, const Ref<IRelatorios> &Relatorios,
                    const Ref<IAjuda> &Ajuda, const Ref<IMDB> &MDB, const Ref<IoAppEXE> &oAppEXE);
    void Logon(const Ref<IobjMTM> &objMTM, const Ref<IobjSCA> &objSCA, const std::string &sMunicCreden);
    void Logoff();
    void FecharJanelasAtivas() noexcept;
    // True when the module took the click.
    bool ClickMenu(const std::string &sTool);
    void Encerra() noexcept;
    Ref<Especifica> CEspecifica() const;
    bool HabilitarItem(const std::string &sTool) noexcept;
    Ref<IcGlobal> cGlobal;
    Ref<ITrataBD> TrataBD();
    bool UsandoModuloQMRauxiliar() const;
    Ref<IObjInterface> ObjInterface;
    std::string SistemaQMR() const;
    std::int16_t VersaoSistemaQMR() const;
    std::string QMRModuloID() const;
    std::int16_t QMRVersaoModulo() const;
    // A transaction by its code; Nothing when the module has none.
    Ref<ITransacao> ObtemTransacao(const std::string &sTransID);
    // Deprecated: raises fault -1.
    [[noreturn]] void ObtemTransacao2(const std::string &sTransID, Ref<ITransacao> &origem);
    // Copies a transaction's definition to an object that is there. The fields are shared, not copied.
    void ObtemTransacao3(const std::string &sTransID, Ref<ITransacao> &origem);

    // Inner operations, for the module's own classes.

    // What the host gave; Nothing before that.
    Ref<IobjMTM> objMTM() const { return m_objMTM; }
    Ref<IobjSCA> objSCA() const { return m_objSCA; }
    Ref<IoAppEXE> oAppEXE() const { return m_oAppEXE; }
    Ref<IFormMDI> FormMDI() const { return m_FormMDI; }
    Ref<Objeto> objZTP() const { return m_objZTP; }
    const std::string &sMunicCreden() const { return m_sMunicCreden; }
    Ref<IRelatorios> Relatorios() const { return m_Relatorios; }
    Ref<IAjuda> Ajuda() const { return m_Ajuda; }

    // Especifica handled the click without returning a form.
    bool ClickTratado = false;

    // Whether the user has a permission; a control given is shown or hidden by the answer.
    bool TemPermissao(const std::string &sSistema, const std::string &sObjeto, const std::string &sAcao,
                      const Ref<IControle> &ctl);

    void ShowForm(const Ref<IForm> &frm, bool bModal);
    // Brings a visible form of the same class to the front instead of showing a second one.
    void ShowFormNoInstance(const Ref<IForm> &frm);
    void FormShow(const Ref<IForm> &frm, bool bModal, Ref<IForm> oOwner);
    // bTela: on the screen; otherwise in the main form for an MDI child, over it for any other form.
    void CentralizaForm(const Ref<IForm> &frm, bool bTela);
    // Writes a window's text, and that of its wrapping form, without touching the forms' own captions.
    void DefineTitulo(const Ref<IForm> &frm, const std::string &sTitulo) noexcept;
    // A form of the module became the active one.
    void FormAtivado(const Ref<IForm> &frm) noexcept;
    // The form that last became active; Nothing before that.
    Ref<IForm> FormAtivo() const { return m_FormAtivo; }

    // The host's send and receive window.
    void AbreEnviaRecebe(const std::string &sMensagem) noexcept;
    void FechaEnviaRecebe() noexcept;

    // A sibling module by its name.
    Ref<Objeto> ObtemAutoModulo(const std::string &sNome);
    // The host's general functions, with the title of their notices set; the second sets their AppTitle too.
    Ref<ICFunGen> ObtemCFunGen();
    Ref<ICFunGen> ObtemCFunGenComAppTitle();
    // Created on first use and kept until Logoff.
    Ref<ICFisJur> ObtemCFisJur();
    Ref<ICEndereco> ObtemCEndereco();
    Ref<ICVeiGen> ObtemCVeiGen();
    // Opens the help on a topic, if there is a help service.
    void TrataAjuda(const std::string &sTopico);

    MenusGeral Menus;
    TransacoesGeral Transacoes;
    RelatoriosGeral Impressao;

  protected:
    // The module's particular side. A shell for another module creates its own.
    virtual Ref<Especifica> CriaEspecifica();

  private:
    // Brings the menus to the state of the session.
    void AtualizaMenu();
    void MostraJanela(const Ref<IForm> &frm, bool bModal, Ref<IForm> &oOwner);
    // Looks for a visible form of a class among the open ones; Nothing when there is none.
    static Ref<IForm> FormVisivelDaClasse(std::string_view classe);

    Ref<IobjMTM> m_objMTM;
    Ref<IobjSCA> m_objSCA;
    Ref<IFormMDI> m_FormMDI;
    Ref<IForm> m_FormAtivo;
    Ref<IoAppEXE> m_oAppEXE;
    Ref<Objeto> m_objZTP;
    std::string m_sMunicCreden;
    Ref<IRelatorios> m_Relatorios;
    Ref<IAjuda> m_Ajuda;
    Ref<Especifica> m_Especifica;
    Ref<Objeto> m_FormClick;
    Ref<ITrataBD> m_TrataBD;
    Ref<ICFunGen> m_CFunGen;
    Ref<ICFisJur> m_CFisJur;
    Ref<ICEndereco> m_CEndereco;
    Ref<ICVeiGen> m_CVeiGen;
    Ref<IMDB> m_MDB;
};
