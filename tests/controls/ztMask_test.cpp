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

    // What a field shows after these keys.
    static std::string Digitado(const Ref<ztMask> &campo, const std::string &teclas)
    {
        EXPECT_TRUE(campo->Digita(teclas));
        return campo->Text();
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
    EXPECT_EQ(Digitado(campo, "a1-2,b.é٣"), "12");
    EXPECT_EQ(campo->Valor(), "12");
    EXPECT_EQ(campo->ValorNumerico(), 12.0);
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Change", "Change"}));
}

TEST_F(ztMaskTest, Digita_InEachKindOfField_TakesItsCharactersUpToItsLimit)
{
    EXPECT_EQ(Digitado(Digitos(3), "1000"), "100");
    EXPECT_EQ(Digitado(Codigo(), "fsc-1_a.z"), "FSC1_A.Z"); // letters are raised, the signs named are taken
    EXPECT_EQ(Digitado(Codigo(), "a b'c\"çÉd[`{@/:"), "ABCD");
    EXPECT_EQ(Digitado(Codigo(), "abcdefghij0123456789"), "ABCDEFGHIJ0123456789");
    EXPECT_EQ(Digitado(Codigo(), "abcdefghij0123456789x"), "ABCDEFGHIJ0123456789");
    // A code of the whole table, and any text.
    const auto tabela = Chamado<AjustesZtMask>("txt", {.Tipo = TipoMascara::Codigo, .SomenteMaiusculas = false});
    EXPECT_EQ(Digitado(Campo(tabela), "aÇé 9÷'."), "aÇé9");
    const auto livre = Chamado<AjustesZtMask>("txtAnoPortDIMEL", {.MaxLength = 2, .SomenteMaiusculas = false});
    EXPECT_EQ(Digitado(Campo(livre), "'éx"), "'é");
    EXPECT_EQ(Digitado(Hora(), "2400"), "24:00"); // that no clock shows
    EXPECT_EQ(Digitado(Hora(), "1260"), "12:60");
    EXPECT_EQ(Digitado(Campo(Chamado<AjustesZtMask>("ztm", {.Tipo = TipoMascara::Hora})), "0730"), "07:30");
}

TEST_F(ztMaskTest, DefineText_OfWhatNoKeyTypes_StandsWholeAndRaisesChangeForAnotherTextAlone)
{
    const Ref<ztMask> campo = Digitos(3);
    for (const char *texto : {"R$ 1.2-3x4", "0", " 60", "60"}) {
        campo->DefineText(texto);
        EXPECT_EQ(campo->Text(), texto);
        EXPECT_EQ(campo->Valor(), texto);
        EXPECT_EQ(m_Tela.Vistos(), Textos{"Change"});
        campo->DefineText(texto);
        EXPECT_EQ(m_Tela.Vistos(), Textos{});
    }
    const Ref<ztMask> codigo = Codigo();
    codigo->DefineText("fsc 'x'_1-é com mais de vinte");
    EXPECT_EQ(codigo->Text(), "fsc 'x'_1-é com mais de vinte");
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

TEST_F(ztMaskTest, ValorNumerico_OfText_IsItsLeadingNumber)
{
    const Ref<ztMask> campo = Campo(Chamado<AjustesZtMask>("txt"));
    const std::vector<std::pair<std::string, double>> casos = {{"05/x", 5}, {"x5", 0}, {"  ", 0}, {"00", 0}};
    for (const auto &[texto, valor] : casos) {
        campo->DefineText(texto);
        EXPECT_EQ(campo->ValorNumerico(), valor) << texto;
    }
}

TEST_F(ztMaskTest, DefineText_OfAnHour_ShowsItsDigitsInTheirPlaces)
{
    const Ref<ztMask> hora = Hora();
    EXPECT_EQ(hora->Text(), "__:__");
    EXPECT_EQ(hora->Valor(), "");
    EXPECT_EQ(Campo(Chamado<AjustesZtMask>("ztm", {.Tipo = TipoMascara::Hora}))->Text(), "__:__");
    struct Caso {
        std::string Escrito;
        std::string Texto;
        std::string Valor;
        Textos Eventos;
    };
    for (const Caso &caso : std::vector<Caso>{{"07:30", "07:30", "0730", {"Change"}},
                                              {"0730", "07:30", "0730", {}},
                                              {"", "__:__", "", {"Change"}},
                                              {"_7:3_", "_7:3_", "73", {"Change"}}, // its own incomplete text
                                              {"12345", "12:34", "1234", {"Change"}},
                                              {"1x:30", "13:0_", "130", {"Change"}}}) { // its length, not its form
        hora->DefineText(caso.Escrito);
        EXPECT_EQ(hora->Text(), caso.Texto);
        EXPECT_EQ(hora->Valor(), caso.Valor);
        EXPECT_EQ(m_Tela.Vistos(), caso.Eventos) << caso.Escrito;
    }
}

TEST_F(ztMaskTest, Digita_AnHour_FillsThePlacesAndRaisesChangePerDigit)
{
    const Ref<ztMask> hora = Hora();
    EXPECT_EQ(Digitado(hora, ":::"), "__:__");
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
    EXPECT_EQ(Digitado(hora, "07"), "07:__");
    EXPECT_EQ(hora->Valor(), "07");
    EXPECT_EQ(Digitado(hora, ":x3"), "07:3_");
    EXPECT_EQ(Digitado(hora, "01"), "07:30");
    EXPECT_EQ(m_Tela.Vistos(), (Textos{"Change", "Change", "Change", "Change"}));
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
    EXPECT_TRUE(hora->Edita(99, 99, "1")); // to the first that is empty
    EXPECT_EQ(hora->Text(), "01:_0");
}

TEST_F(ztMaskTest, Edita_AnHourWithItsSeparatorByHand_FillsTheHoursAndGuessesNoMinutes)
{
    const Ref<ztMask> hora = Hora();
    for (const auto &[digitado, mostrado] : std::vector<std::pair<std::string, std::string>>{{"8:05", "08:05"},
                                                                                             {"8h30", "08:30"},
                                                                                             {"8.30", "08:30"},
                                                                                             {"8:5", "08:5_"},
                                                                                             {"8:", "08:__"},
                                                                                             {"8", "8_:__"}}) {
        EXPECT_TRUE(hora->Preenche(digitado));
        hora->Conclui();
        EXPECT_EQ(hora->Text(), mostrado) << digitado;
    }
    for (std::size_t posicao = 0; posicao <= 5; ++posicao) {
        EXPECT_TRUE(hora->Apaga());
        EXPECT_TRUE(hora->Edita(posicao, 0, "7"));
        EXPECT_EQ(hora->Text(), "7_:__") << posicao;
    }
}

TEST_F(ztMaskTest, Recusa_OfWhatAFieldDoesNotTake_SaysWhatItTakes)
{
    const auto recusa = [](const Ref<ztMask> &campo, const std::string &digitado) {
        EXPECT_TRUE(campo->Preenche(digitado));
        return campo->Recusa();
    };
    EXPECT_EQ(recusa(Digitos(3), "12"), "");
    EXPECT_EQ(recusa(Digitos(3), "1a"), "Só algarismos.");
    EXPECT_EQ(recusa(Digitos(3), "1234"), "Até 3 caracteres.");
    EXPECT_EQ(recusa(Campo(Chamado<AjustesZtMask>("txt", {.MaxLength = 1})), "ab"), "Até 1 caractere.");
    EXPECT_EQ(recusa(Codigo(), "aç"), "Caractere não aceito: ç");
    EXPECT_EQ(recusa(Codigo(), "açã çx"), "Caracteres não aceitos: ç ã  ");
    EXPECT_EQ(recusa(Codigo(), "a😀"), "Caractere não aceito: 😀");
    EXPECT_EQ(recusa(Codigo(), "a\x01"), "Caractere não aceito.");
    EXPECT_EQ(recusa(Codigo(), "abcdefghij0123456789x"), "Até 20 caracteres.");
    EXPECT_EQ(recusa(Codigo(), std::string(100000, '?')), "Caractere não aceito: ?");
    const Ref<ztMask> campo = Digitos(3);
    EXPECT_EQ(recusa(campo, "x"), "Só algarismos.");
    EXPECT_TRUE(campo->Digita("1"));
    EXPECT_EQ(campo->Recusa(), "");
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

} // namespace
