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

class FormsNaTelaTest : public TelaDeTeste, public testing::WithParamInterface<int> {
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

TEST_P(FormsNaTelaTest, CadaForm_NadaECortado)
{
    const std::string resolucao = "-" + std::to_string(GetParam());
    for (const Ref<IForm> &form : Forms()) {
        Abre(form);
        MudaResolucao(GetParam());
        const std::string nome = std::string(form->NomeTipo()) + resolucao;
        Olha(nome);
        for (const Ref<IControle> &controle : form->Controles()) {
            if (auto *abas = dynamic_cast<ISSTab *>(controle.Ponteiro())) {
                for (std::int16_t pagina = 1; pagina < abas->Tabs(); ++pagina) {
                    abas->DefineTab(pagina);
                    Roda();
                    Olha(nome + "-" + std::to_string(pagina));
                }
            }
        }
        janelas->FechaForm(form);
        host->Tela->Descarrega(form);
    }
    host->Erros(); // of pages whose form was told nothing
}

INSTANTIATE_TEST_SUITE_P(Resolucoes, FormsNaTelaTest, testing::Values(96, 120, 144, 192));

} // namespace

} // namespace nativo
