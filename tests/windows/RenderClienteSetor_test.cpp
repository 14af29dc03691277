#include "windows/screen/RenderClienteSetor.h"

#include "controls/ztClienteSetor.h"
#include "tests/windows/Entradas.h"
#include "tests/windows/TelaDeTeste.h"
#include "windows/automation/Texto16.h"

namespace nativo {

namespace {

class RenderClienteSetorTest : public TelaDeTeste {
  protected:
    void AbreSeletor(std::vector<ClienteOferecido> clientes)
    {
        camada->Clientes = [clientes = std::move(clientes)] { return clientes; };
        Abre(EmColuna({{.Ajustes = AjustesZtClienteSetor{}, .Nome = "seletor"}}));
        seletor = Controle<ztClienteSetor>("seletor");
        m_Mudou = seletor->Change().liga([this] { ++mudancas; });
    }
    void TearDown() override
    {
        m_Mudou.desliga();
        seletor = nullptr;
        TelaDeTeste::TearDown();
    }
    HWND De(Parte parte) const { return Janela().DoControle(*seletor)->JanelaDe(parte); }
    std::string Visto(Parte parte) const { return TextoDe(De(parte)); }

    Ref<ztClienteSetor> seletor;
    int mudancas = 0;

  private:
    Conexao m_Mudou;
};

TEST_F(RenderClienteSetorTest, Client_ChosenWithTheKeys_BringsItsSectors)
{
    AbreSeletor({{"Autoridade A", {"Norte", "Sul"}}, {"Autoridade B", {"Leste"}}});
    EXPECT_EQ(Visto(Parte::Setor), "Todos os setores");
    Janela().LevaTeclado(De(Parte::Cliente));
    Roda();
    Tecla(VK_DOWN);
    EXPECT_EQ(seletor->Cliente(), "Autoridade A");
    EXPECT_EQ(SendMessageW(De(Parte::Setor), CB_GETCOUNT, 0, 0), 3);
    Tecla(VK_TAB);
    Tecla(VK_DOWN);
    EXPECT_EQ(seletor->Setor(), "Norte");
    EXPECT_EQ(Visto(Parte::Setor), "Norte");
    Tecla(VK_TAB, {VK_SHIFT});
    Tecla(VK_DOWN);
    EXPECT_EQ(seletor->Cliente(), "Autoridade B");
    EXPECT_EQ(seletor->Setor(), "");
    EXPECT_EQ(Visto(Parte::Setor), "Todos os setores");
    EXPECT_EQ(mudancas, 3);
}

TEST_F(RenderClienteSetorTest, Client_OfTheForm_IsShown)
{
    AbreSeletor({{"Autoridade A", {"Norte", "Sul"}}});
    seletor->PresetaCliente("Autoridade A", "Sul");
    EXPECT_EQ(Visto(Parte::Cliente), "Autoridade A");
    EXPECT_EQ(Visto(Parte::Setor), "Sul");
    EXPECT_EQ(mudancas, 0);
}

TEST_F(RenderClienteSetorTest, Labels_AreTheNamesOfTheirCombos)
{
    AbreSeletor({{"Autoridade A", {}}});
    EXPECT_EQ(TextoDe(GetWindow(De(Parte::Cliente), GW_HWNDPREV)), "Cliente:");
    EXPECT_EQ(TextoDe(GetWindow(De(Parte::Setor), GW_HWNDPREV)), "Setor:");
}

TEST_F(RenderClienteSetorTest, Picker_WithoutClients_OffersAllSectors)
{
    AbreSeletor({});
    EXPECT_EQ(SendMessageW(De(Parte::Cliente), CB_GETCOUNT, 0, 0), 0);
    EXPECT_EQ(Visto(Parte::Setor), "Todos os setores");
}

} // namespace

} // namespace nativo
