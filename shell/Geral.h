#pragma once

#include "host/HostServices.h"

#include <cstdint>
#include <string>

// What the rooms of the module use of the shell; the host's face and the inner operations stand beside it.
class Geral : public Objeto {
  public:
    std::string_view NomeTipo() const override { return "Geral"; }

    // The session, access control and descriptor given by the host; Nothing before that.
    Ref<IobjMTM> objMTM() const;
    Ref<IobjSCA> objSCA() const;
    Ref<IoAppEXE> oAppEXE() const;
    Ref<IMDB> MDB();
    Ref<ITrataBD> TrataBD();

    // Whether the user has a permission; a control given is shown or hidden by the answer.
    bool TemPermissao(const std::string &sSistema, const std::string &sObjeto, const std::string &sAcao,
                      const Ref<IControle> &ctl);

    void ShowForm(const Ref<IForm> &frm, bool bModal);
    void ShowFormNoInstance(const Ref<IForm> &frm);
    void FormShow(const Ref<IForm> &frm, bool bModal, Ref<IForm> oOwner);
    void CentralizaForm(const Ref<IForm> &frm, bool bTela);
    void DefineTitulo(const Ref<IForm> &frm, const std::string &sTitulo);
    // A form of the module became the active one.
    void FormAtivado(const Ref<IForm> &frm);
};
