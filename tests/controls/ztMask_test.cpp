#include "controls/ztMask.h"

#include "tests/controls/Tela.h"

namespace {

class ztMaskTest : public testing::Test {
  protected:
    Ref<ztMask> Campo(const Peca &ajustes)
    {
        Ref<ztMask> campo = m_Tela.Poe<ztMask>(ajustes);
        m_Tela.Anota(campo->Change(), "Change");
        return campo;
    }
    Ref<ztMask> Digitos(std::int32_t limite)
    {
        auto ajustes = Chamado<AjustesZtMask>("txtVelocPerm", {.MaxLength = limite, .Tipo = TipoMascara::Digitos});
        return Campo(ajustes);
    }
    Ref<ztMask> Codigo()
    {
        auto ajustes = Chamado<AjustesZtMask>(
            "txtCodEquip",
            {.MaxLength = 20, .Tipo = TipoMascara::Codigo, .CaracteresAceitos = "._", .TabelaCaracteres = 1});
        return Campo(ajustes);
    }
    Ref<ztMask> Hora()
    {
        auto ajustes =
            Chamado<AjustesZtMask>("ztmHInicial", {.MaxLength = 5, .Tipo = TipoMascara::Hora, .Mascara = "00:00"});
        return Campo(ajustes);
    }

    Tela m_Tela;
};

TEST_F(ztMaskTest, Fresh_IsEmptyAndAsSet)
{
    auto ajustes =
        Chamado<AjustesZtMask>("txtNroSensor", {.MaxLength = 2, .Tipo = TipoMascara::Digitos, .ReadOnly = true});
    const Ref<ztMask> campo = Campo(ajustes);
    EXPECT_EQ(campo->NomeTipo(), "ztMask");
    EXPECT_EQ(campo->Text(), "");
    EXPECT_EQ(campo->Valor(), "");
    EXPECT_EQ(campo->ValorNumerico(), 0.0);
    EXPECT_TRUE(campo->ReadOnly());
    EXPECT_EQ(campo->Ajustes().MaxLength, 2);
    EXPECT_FALSE(campo->Digita("1"));
    campo->DefineText("7");
    EXPECT_EQ(campo->Text(), "7");
    campo->DefineReadOnly(false);
    EXPECT_TRUE(campo->Digita("1"));
    EXPECT_EQ(campo->Text(), "71");
}

TEST_F(ztMaskTest, Digita_LettersInADigitsField_LeavesThemOut)
{
    const Ref<ztMask> campo = Digitos(3);
    EXPECT_TRUE(campo->Digita("a1-2,b.é٣"));
    EXPECT_EQ(campo->Text(), "12");
    EXPECT_EQ(campo->Valor(), "12");
    EXPECT_EQ(campo->ValorNumerico(), 12.0);
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Change", "Change"}));
}

TEST_F(ztMaskTest, Digita_AtTheLimitOfADigitsField_LeavesOutWhatIsTooMuch)
{
    const Ref<ztMask> campo = Digitos(3);
    EXPECT_TRUE(campo->Digita("1000"));
    EXPECT_EQ(campo->Text(), "100");
}

TEST_F(ztMaskTest, DefineText_OfMoreThanADigitsFieldTakes_StandsWhole)
{
    const Ref<ztMask> campo = Digitos(3);
    campo->DefineText("R$ 1.2-3x4");
    EXPECT_EQ(campo->Text(), "R$ 1.2-3x4");
    EXPECT_EQ(campo->Valor(), "R$ 1.2-3x4");
    EXPECT_EQ(m_Tela.Vistos(), Textos{"Change"});
    campo->DefineText("0");
    EXPECT_EQ(campo->Text(), "0");
    EXPECT_EQ(campo->Valor(), "0");
}

TEST_F(ztMaskTest, Edita_ATextThatNoKeyTypes_TakesOutWhatThePersonTakesAndNothingElse)
{
    const Ref<ztMask> campo = Codigo();
    const std::string gravado = "FSC-0001/99 é da série antiga";
    campo->DefineText(gravado);
    EXPECT_EQ(campo->Cursor(), 29U);
    m_Tela.Vistos();
    EXPECT_TRUE(campo->Digita("X")); // above the limit
    EXPECT_EQ(campo->Text(), gravado);
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
    EXPECT_TRUE(campo->Edita(3, 1, ""));
    EXPECT_EQ(campo->Text(), "FSC0001/99 é da série antiga");
    EXPECT_TRUE(campo->Edita(10, 18, "ab")); // now there is room for keys again
    EXPECT_EQ(campo->Text(), "FSC0001/99AB");
    EXPECT_TRUE(campo->Edita(0, 0, "/é"));
    EXPECT_EQ(campo->Text(), "FSC0001/99AB");
}

TEST_F(ztMaskTest, DefineText_OfTheSameText_RaisesNothing)
{
    const Ref<ztMask> campo = Digitos(3);
    campo->DefineText("60");
    m_Tela.Vistos();
    campo->DefineText("60");
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
    campo->DefineText(" 60");
    EXPECT_EQ(m_Tela.Vistos(), Textos{"Change"});
}

TEST_F(ztMaskTest, Digita_InACodeField_RaisesLettersAndTakesTheSignsNamed)
{
    const Ref<ztMask> campo = Codigo();
    EXPECT_TRUE(campo->Digita("fsc-1_a.z"));
    EXPECT_EQ(campo->Text(), "FSC1_A.Z");
}

TEST_F(ztMaskTest, Digita_BlanksApostrophesAndAccentsInACodeField_LeavesThemOut)
{
    const Ref<ztMask> campo = Codigo();
    EXPECT_TRUE(campo->Digita("a b'c\"çÉd[`{@/:"));
    EXPECT_EQ(campo->Text(), "ABCD");
}

TEST_F(ztMaskTest, Digita_AccentsInACodeFieldOfTheWholeTable_TakesThem)
{
    auto ajustes = Chamado<AjustesZtMask>("txtCodigo", {.Tipo = TipoMascara::Codigo, .SomenteMaiusculas = false});
    const Ref<ztMask> campo = Campo(ajustes);
    EXPECT_TRUE(campo->Digita("aÇé 9÷'."));
    EXPECT_EQ(campo->Text(), "aÇé9");
}

TEST_F(ztMaskTest, Digita_AtTheLimitOfACodeField_TakesTwentyAndNoMore)
{
    const Ref<ztMask> campo = Codigo();
    EXPECT_TRUE(campo->Digita("abcdefghij0123456789"));
    EXPECT_EQ(campo->Text(), "ABCDEFGHIJ0123456789");
    EXPECT_TRUE(campo->Digita("x"));
    EXPECT_EQ(campo->Text(), "ABCDEFGHIJ0123456789");
}

TEST_F(ztMaskTest, DefineText_InACodeField_KeepsEveryCharacter)
{
    const Ref<ztMask> campo = Codigo();
    campo->DefineText("fsc 'x'_1-é com mais de vinte");
    EXPECT_EQ(campo->Text(), "fsc 'x'_1-é com mais de vinte");
}

TEST_F(ztMaskTest, Digita_InAFieldOfAnyText_TakesEverything)
{
    auto ajustes = Chamado<AjustesZtMask>("txtAnoPortDIMEL", {.MaxLength = 2, .SomenteMaiusculas = false});
    const Ref<ztMask> campo = Campo(ajustes);
    EXPECT_TRUE(campo->Digita("'éx"));
    EXPECT_EQ(campo->Text(), "'é");
}

TEST_F(ztMaskTest, ValorNumerico_OfText_IsItsLeadingNumber)
{
    const Ref<ztMask> campo = Campo(Chamado<AjustesZtMask>("txt"));
    campo->DefineText("05/x");
    EXPECT_EQ(campo->ValorNumerico(), 5.0);
    campo->DefineText("x5");
    EXPECT_EQ(campo->ValorNumerico(), 0.0);
    campo->DefineText("  ");
    EXPECT_EQ(campo->ValorNumerico(), 0.0);
    campo->DefineText("00");
    EXPECT_EQ(campo->ValorNumerico(), 0.0);
}

TEST_F(ztMaskTest, Fresh_HourMask_ShowsItsTemplateAndHasNoValue)
{
    const Ref<ztMask> hora = Hora();
    EXPECT_EQ(hora->Text(), "__:__");
    EXPECT_EQ(hora->Valor(), "");
}

TEST_F(ztMaskTest, Digita_InAnHourFieldWithoutAMaskOfItsOwn_FillsHoursAndMinutes)
{
    auto ajustes = Chamado<AjustesZtMask>("ztmHInicial", {.Tipo = TipoMascara::Hora});
    const Ref<ztMask> hora = Campo(ajustes);
    EXPECT_EQ(hora->Text(), "__:__");
    EXPECT_TRUE(hora->Digita("0730"));
    EXPECT_EQ(hora->Text(), "07:30");
}

TEST_F(ztMaskTest, DefineText_OfAnHourWithOrWithoutColon_IsTheSame)
{
    const Ref<ztMask> hora = Hora();
    hora->DefineText("07:30");
    EXPECT_EQ(hora->Text(), "07:30");
    EXPECT_EQ(hora->Valor(), "0730");
    EXPECT_EQ(m_Tela.Vistos(), Textos{"Change"});
    hora->DefineText("0730");
    EXPECT_EQ(hora->Text(), "07:30");
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(ztMaskTest, DefineText_OfAnEmptyText_EmptiesTheHour)
{
    const Ref<ztMask> hora = Hora();
    hora->DefineText("0730");
    hora->DefineText("");
    EXPECT_EQ(hora->Text(), "__:__");
    EXPECT_EQ(hora->Valor(), "");
}

TEST_F(ztMaskTest, DefineText_OfItsOwnIncompleteText_KeepsThePlaces)
{
    const Ref<ztMask> hora = Hora();
    hora->DefineText("_7:3_");
    EXPECT_EQ(hora->Text(), "_7:3_");
    EXPECT_EQ(hora->Valor(), "73");
}

TEST_F(ztMaskTest, Digita_AnHour_FillsThePlacesAndRaisesChangePerDigit)
{
    const Ref<ztMask> hora = Hora();
    EXPECT_TRUE(hora->Digita("07"));
    EXPECT_EQ(hora->Text(), "07:__");
    EXPECT_EQ(hora->Valor(), "07");
    EXPECT_TRUE(hora->Digita(":x3"));
    EXPECT_EQ(hora->Text(), "07:3_");
    EXPECT_TRUE(hora->Digita("01"));
    EXPECT_EQ(hora->Text(), "07:30");
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Change", "Change", "Change", "Change"}));
}

TEST_F(ztMaskTest, Digita_ColonsAlone_ChangesNothing)
{
    const Ref<ztMask> hora = Hora();
    EXPECT_TRUE(hora->Digita(":::"));
    EXPECT_EQ(hora->Text(), "__:__");
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(ztMaskTest, Digita_AnHourThatNoClockShows_IsTakenAsTyped)
{
    const Ref<ztMask> hora = Hora();
    EXPECT_TRUE(hora->Digita("2400"));
    EXPECT_EQ(hora->Text(), "24:00");
    EXPECT_TRUE(hora->Preenche("1260"));
    EXPECT_EQ(hora->Text(), "12:60");
}

TEST_F(ztMaskTest, Edita_OneDigitOfAnHour_PutsTheNewOneInItsPlace)
{
    const Ref<ztMask> hora = Hora();
    hora->DefineText("07:30");
    EXPECT_TRUE(hora->Edita(1, 1, "8"));
    EXPECT_EQ(hora->Text(), "08:30");
    EXPECT_EQ(hora->Cursor(), 2U);
    EXPECT_TRUE(hora->Edita(2, 0, "4")); // over the colon, to the next place
    EXPECT_EQ(hora->Text(), "08:40");
    EXPECT_TRUE(hora->Edita(1, 3, ""));
    EXPECT_EQ(hora->Text(), "0_:_0");
    EXPECT_TRUE(hora->Edita(99, 99, "1"));
    EXPECT_EQ(hora->Text(), "0_:_0");
}

TEST_F(ztMaskTest, Digita_MalformedBytes_AreLeftOut)
{
    for (const Ref<ztMask> &campo : {Digitos(3), Codigo(), Hora(), Campo(Chamado<AjustesZtMask>("txt"))}) {
        const std::string antes = campo->Text();
        EXPECT_TRUE(campo->Digita("\xC3\xFF\x80\u0301"));
        EXPECT_TRUE(campo->Text() == antes || campo->Text() == "\u0301");
        campo->DefineText("\xC3\xFF\x80");
    }
}

TEST_F(ztMaskTest, DefineText_OfItsLengthButNotItsForm_TakesTheDigits)
{
    const Ref<ztMask> hora = Hora();
    hora->DefineText("12345");
    EXPECT_EQ(hora->Text(), "12:34");
    hora->DefineText("1x:30");
    EXPECT_EQ(hora->Text(), "13:0_");
}

} // namespace
