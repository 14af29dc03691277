#include "equipment/frmEquipDetalhes.h"
#include "limits/frmLimitesDif.h"
#include "limits/frmLimitesDifDetalhes.h"
#include "search/frmLista.h"
#include "sensors/frmEquipAfericoes.h"
#include "sensors/frmEquipSensores.h"
#include "tests/support/RetratoForm.h"
#include "tests/windows/Cortes.h"
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
    // The screen has come to another resolution.
    void MudaResolucao(int dpi)
    {
        RECT lugar{};
        GetWindowRect(Manipulador(), &lugar);
        const int antes = static_cast<int>(Janela().Escrita().Dpi());
        lugar = {0, 0, MulDiv(lugar.right - lugar.left, dpi, antes), MulDiv(lugar.bottom - lugar.top, dpi, antes)};
        SendMessageW(Manipulador(), WM_DPICHANGED, static_cast<WPARAM>(MAKELONG(dpi, dpi)),
                     reinterpret_cast<LPARAM>(&lugar));
        Roda();
    }
    void Olha(const std::string &nome)
    {
        Fotografa(Manipulador(), nome);
        EXPECT_EQ(Cortes(Manipulador()), std::vector<std::string>()) << nome;
    }
};

TEST_F(FormsNaTelaTest, CadaFormEmCadaResolucao_NadaECortado)
{
    for (const Ref<IForm> &form : Forms()) {
        Abre(form);
        for (const int dpi : {96, 120, 144, 192}) {
            MudaResolucao(dpi);
            const std::string nome = std::string(form->NomeTipo()) + "-" + std::to_string(dpi);
            Olha(nome);
            for (const Ref<IControle> &controle : form->Controles()) {
                if (auto *abas = dynamic_cast<ISSTab *>(controle.Ponteiro())) {
                    for (std::int16_t pagina = 1; pagina < abas->Tabs(); ++pagina) {
                        abas->DefineTab(pagina);
                        Roda();
                        Olha(nome + "-" + std::to_string(pagina));
                    }
                    abas->DefineTab(0);
                }
            }
        }
        janelas->FechaForm(form);
        host->Tela->Descarrega(form);
    }
    host->Erros(); // of pages whose form was told nothing
}

} // namespace

} // namespace nativo
