#include "equipment/frmEquipDetalhes.h"
#include "limits/frmLimitesDif.h"
#include "limits/frmLimitesDifDetalhes.h"
#include "search/frmLista.h"
#include "sensors/frmEquipAfericoes.h"
#include "sensors/frmEquipSensores.h"
#include "tests/support/RetratoForm.h"
#include "tests/windows/Fotografia.h"
#include "tests/windows/TelaDeTeste.h"

namespace nativo {

namespace {

class FormsNaTelaTest : public TelaDeTeste {
  protected:
    std::vector<Ref<IForm>> Forms()
    {
        geral = ::LogaGeral(*host);
        return {SoCarregada<frmLista>(),         SoCarregada<frmEquipDetalhes>(),
                SoCarregada<frmEquipSensores>(), SoCarregada<frmEquipAfericoes>(),
                SoCarregada<frmLimitesDif>(),    SoCarregada<frmLimitesDifDetalhes>()};
    }
};

TEST_F(FormsNaTelaTest, CadaFormEmCadaResolucao)
{
    for (const Ref<IForm> &form : Forms()) {
        Abre(form);
        Fotografa(Manipulador(), std::string(form->NomeTipo()));
        janelas->FechaForm(form);
        host->Tela->Descarrega(form);
    }
}

} // namespace

} // namespace nativo
