#include "windows/screen/RenderCampo.h"

#include "controls/CommandButton.h"
#include "controls/TextBox.h"
#include "controls/ztData.h"
#include "controls/ztMask.h"
#include "controls/ztVeiObservacao.h"
#include "tests/windows/Entradas.h"
#include "tests/windows/TelaDeTeste.h"
#include "windows/automation/Texto16.h"

namespace nativo {

namespace {

class RenderCampoTest : public TelaDeTeste {
  protected:
    template <class Ajustes> void AbreCampo(Ajustes ajustes)
    {
        const Peca outro = {.Ajustes = AjustesTextBox{}, .Nome = "outro", .Caracteres = 10};
        const Peca padrao = {.Ajustes = AjustesCommandButton{.Default = true}, .Nome = "ok"};
        Abre(EmColuna({{.Ajustes = ajustes, .Nome = "campo"}, outro, padrao}));
    }
    HWND Campo() const { return Filha("campo"); }
    std::string Visto() const { return Texto("campo"); }
    void Escolhe(int de, int ate) const { SendMessageW(Campo(), EM_SETSEL, static_cast<WPARAM>(de), ate); }
    int Cursor() const
    {
        DWORD fim = 0;
        SendMessageW(Campo(), EM_GETSEL, 0, reinterpret_cast<LPARAM>(&fim));
        return static_cast<int>(fim);
    }
    // From the clipboard.
    void Cola(const std::wstring &texto) const
    {
        ASSERT_TRUE(OpenClipboard(Manipulador()));
        EmptyClipboard();
        const std::size_t tamanho = (texto.size() + 1) * sizeof(wchar_t);
        HGLOBAL memoria = GlobalAlloc(GMEM_MOVEABLE, tamanho);
        std::copy_n(texto.c_str(), texto.size() + 1, static_cast<wchar_t *>(GlobalLock(memoria)));
        GlobalUnlock(memoria);
        SetClipboardData(CF_UNICODETEXT, memoria);
        CloseClipboard();
        SendMessageW(Campo(), WM_PASTE, 0, 0);
    }
};

TEST_F(RenderCampoTest, Keys_WriteIntoTheControl)
{
    AbreCampo(AjustesTextBox{});
    const auto campo = Controle<TextBox>("campo");
    Digita(L"a\u00e7\u00e3o");
    EXPECT_EQ(campo->Text(), "ação");
    Tecla(VK_HOME);
    Tecla(VK_DELETE);
    Digita(L"A");
    EXPECT_EQ(campo->Text(), "Ação");
    EXPECT_EQ(Visto(), "Ação");
    Tecla(VK_BACK);
    EXPECT_EQ(campo->Text(), "ção");
}

TEST_F(RenderCampoTest, Text_OfTheForm_IsShown)
{
    AbreCampo(AjustesTextBox{});
    Controle<TextBox>("campo")->DefineText("𝄞 escrito");
    EXPECT_EQ(Visto(), "𝄞 escrito");
    EXPECT_EQ(Cursor(), 10); // units: the first character has two
    Controle<TextBox>("campo")->DefineText("");
    EXPECT_EQ(Visto(), "");
}

TEST_F(RenderCampoTest, Text_GivenBeforeTheWindowHasItsSize_IsSeenFromItsBeginning)
{
    const Peca outro = {.Ajustes = AjustesTextBox{}, .Nome = "outro", .Caracteres = 10};
    descrito.Faz(EmColuna({outro, {.Ajustes = AjustesTextBox{}, .Nome = "campo", .Caracteres = 10}}));
    Controle<TextBox>("campo")->DefineText("um texto que é mais comprido do que o campo");
    Abre(Ref<IForm>(descrito.Form));
    EXPECT_EQ(Teclado(), "outro");
    const auto lugar = static_cast<short>(LOWORD(SendMessageW(Campo(), EM_POSFROMCHAR, 0, 0)));
    EXPECT_GE(lugar, 0);
    Controle<TextBox>("campo")->DefineText("outro texto que é mais comprido do que o campo");
    EXPECT_GE(static_cast<short>(LOWORD(SendMessageW(Campo(), EM_POSFROMCHAR, 0, 0))), 0);
    Controle<TextBox>("campo")->SetFocus(); // by the form: at the end
    Roda();
    Digita(L"!");
    EXPECT_EQ(Controle<TextBox>("campo")->Text(), "outro texto que é mais comprido do que o campo!");
}

TEST_F(RenderCampoTest, Limit_CountsCharacters)
{
    AbreCampo(AjustesTextBox{.MaxLength = 3});
    Digita(L"\U0001F600\U0001F600\U0001F600\U0001F600");
    EXPECT_EQ(Controle<TextBox>("campo")->Text(), "😀😀😀");
    EXPECT_EQ(Visto(), "😀😀😀");
    Cola(L"mais");
    EXPECT_EQ(Visto(), "😀😀😀");
}

TEST_F(RenderCampoTest, Character_OfTwoUnits_IsTakenOutWhole)
{
    AbreCampo(AjustesTextBox{});
    const auto campo = Controle<TextBox>("campo");
    Digita(L"a\U0001F600b");
    EXPECT_EQ(campo->Text(), "a😀b");
    Tecla(VK_LEFT);
    Tecla(VK_BACK);
    EXPECT_EQ(campo->Text(), "ab");
    EXPECT_EQ(Visto(), "ab");
    campo->DefineText("a😀b");
    Escolhe(1, 1);
    Tecla(VK_DELETE);
    EXPECT_EQ(campo->Text(), "ab");
    EXPECT_EQ(Visto(), "ab");
}

TEST_F(RenderCampoTest, Paste_IntoTheMiddle_IsOneEdit)
{
    AbreCampo(AjustesTextBox{});
    const auto campo = Controle<TextBox>("campo");
    campo->DefineText("aaaa");
    Escolhe(1, 3);
    Cola(L"aXa");
    EXPECT_EQ(campo->Text(), "aaXaa");
    EXPECT_EQ(Visto(), "aaXaa");
    EXPECT_EQ(Cursor(), 4);
}

TEST_F(RenderCampoTest, Undo_IsTheControlsToo)
{
    AbreCampo(AjustesTextBox{});
    const auto campo = Controle<TextBox>("campo");
    campo->DefineText("abc");
    Escolhe(0, 3);
    Cola(L"outro");
    EXPECT_EQ(campo->Text(), "outro");
    SendMessageW(Campo(), EM_UNDO, 0, 0);
    EXPECT_EQ(campo->Text(), "abc");
    EXPECT_EQ(Visto(), "abc");
}

TEST_F(RenderCampoTest, CtrlA_ChoosesAll)
{
    AbreCampo(AjustesTextBox{});
    Digita(L"velho");
    Tecla('A', {VK_CONTROL});
    Digita(L"novo");
    EXPECT_EQ(Visto(), "novo");
}

TEST_F(RenderCampoTest, HourMask_TakesDigitsInItsPlaces)
{
    AbreCampo(AjustesZtMask{.Tipo = TipoMascara::Hora, .Mascara = "00:00"});
    const auto campo = Controle<ztMask>("campo");
    EXPECT_EQ(Visto(), "__:__");
    Tecla(VK_HOME);
    Digita(L"07x30");
    EXPECT_EQ(Visto(), "07:30");
    EXPECT_EQ(campo->Valor(), "0730");
    Tecla(VK_BACK);
    EXPECT_EQ(Visto(), "07:3_");
    Tecla('A', {VK_CONTROL});
    Cola(L"1245");
    EXPECT_EQ(Visto(), "12:45");
    Tecla('A', {VK_CONTROL});
    Tecla(VK_DELETE);
    EXPECT_EQ(Visto(), "__:__");
}

TEST_F(RenderCampoTest, CodeMask_TakesWhatItAccepts)
{
    AbreCampo(AjustesZtMask{.MaxLength = 6, .Tipo = TipoMascara::Codigo, .CaracteresAceitos = "._"});
    Digita(L"ab-1._z");
    EXPECT_EQ(Visto(), "AB1._Z");
    Digita(L"9");
    EXPECT_EQ(Visto(), "AB1._Z");
}

TEST_F(RenderCampoTest, Date_IsCompletedWhenItIsLeft)
{
    AbreCampo(AjustesZtData{});
    const auto campo = Controle<ztData>("campo");
    Tecla(VK_HOME);
    Digita(L"201126");
    Tecla(VK_TAB);
    EXPECT_EQ(campo->Text(), "20/11/2026");
    EXPECT_EQ(Visto(), "20/11/2026");
    EXPECT_TRUE(campo->DataValida());
}

TEST_F(RenderCampoTest, ReadOnly_CanBeGoneToAndIsNotChanged)
{
    AbreCampo(AjustesTextBox{});
    const auto campo = Controle<TextBox>("campo");
    campo->DefineText("fixo");
    campo->DefineLocked(true);
    Roda();
    EXPECT_NE(GetWindowLongPtrW(Campo(), GWL_STYLE) & ES_READONLY, 0);
    EXPECT_EQ(Teclado(), "campo");
    Digita(L"x\U0001F600");
    Cola(L"y");
    Tecla(VK_DELETE);
    EXPECT_EQ(campo->Text(), "fixo");
    EXPECT_EQ(Visto(), "fixo");
    campo->DefineLocked(false);
    EXPECT_EQ(GetWindowLongPtrW(Campo(), GWL_STYLE) & ES_READONLY, 0);
}

TEST_F(RenderCampoTest, Observation_ShowsItsLinesAndLeavesEnterToTheForm)
{
    AbreCampo(AjustesZtVeiObservacao{.MaxLength = 70});
    const auto campo = Controle<ztVeiObservacao>("campo");
    int apertos = 0;
    const Conexao aperto = Controle<CommandButton>("ok")->Click().liga([&] { ++apertos; });
    campo->DefineText("uma\r\noutra");
    EXPECT_EQ(SendMessageW(Campo(), EM_GETLINECOUNT, 0, 0), 2);
    Tecla(VK_END, {VK_CONTROL});
    Digita(L" linha");
    EXPECT_EQ(campo->Text(), "uma\r\noutra linha");
    Tecla(VK_RETURN);
    EXPECT_EQ(apertos, 1);
    EXPECT_EQ(campo->Text(), "uma\r\noutra linha");
    Digita(std::wstring(80, L'x'));
    EXPECT_EQ(Len(campo->Text()), 70U);
    EXPECT_EQ(Visto(), campo->Text());
    Tecla(VK_TAB);
    EXPECT_EQ(Teclado(), "outro");
}

TEST_F(RenderCampoTest, Field_ClosedByItsOwnChange_TakesNoMore)
{
    AbreCampo(AjustesTextBox{});
    const auto campo = Controle<TextBox>("campo");
    const Conexao fecha = campo->Change().liga([&] { campo->DefineLocked(true); });
    Cola(L"abc");
    EXPECT_EQ(campo->Text(), "a");
    EXPECT_EQ(Visto(), "a");
}

TEST(CampoNativo, Positions_CountCharactersAndUnits)
{
    const std::wstring texto = L"a\U0001F600b";
    EXPECT_EQ(CaracteresAte(texto, 0), 0U);
    EXPECT_EQ(CaracteresAte(texto, 1), 1U);
    EXPECT_EQ(CaracteresAte(texto, 3), 2U);
    EXPECT_EQ(CaracteresAte(texto, 99), 3U);
    EXPECT_EQ(UnidadesAte(texto, 1), 1U);
    EXPECT_EQ(UnidadesAte(texto, 2), 3U);
    EXPECT_EQ(UnidadesAte(texto, 3), 4U);
    EXPECT_EQ(UnidadesAte(texto, 99), 4U);
    EXPECT_EQ(CaracteresAte(L"\xDC80", 1), 1U); // half of nothing
}

} // namespace

} // namespace nativo
