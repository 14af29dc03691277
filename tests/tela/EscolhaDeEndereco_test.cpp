#include "tela/EscolhaDeEndereco.h"

#include "tests/controls/Tela.h"
#include "tests/tela/RuasDeTeste.h"

namespace {

class EscolhaDeEnderecoTest : public testing::Test {
  protected:
    EscolhaDeEnderecoTest() { m_Tela.Anota(m_Controle->EntradaOK(), "EntradaOK"); }

    EscolhaDeEndereco Escolha() { return {m_Controle, m_Ruas, m_Memoria}; }
    EscolhaDeEndereco EmCanoas()
    {
        m_Memoria->CodMunic = Canoas;
        return Escolha();
    }
    void Preseta(std::int32_t codigo, std::int32_t numero, const std::string &complemento)
    {
        m_Controle->Endereco()->SetaEndereco(Canoas, codigo, numero, complemento, "", "", 0);
    }

    Tela m_Tela;
    Ref<ztEndereco> m_Controle = m_Tela.Poe<ztEndereco>(Chamado<AjustesZtEndereco>("ztEndereco1"));
    Ref<RuasDeTeste> m_Ruas = Novo<RuasDeTeste>();
    Ref<MemoriaDeEnderecos> m_Memoria = Novo<MemoriaDeEnderecos>();
};

TEST_F(EscolhaDeEnderecoTest, AtFirst_NothingIsChosen)
{
    EXPECT_EQ(m_Memoria->NomeTipo(), "MemoriaDeEnderecos");
    const EscolhaDeEndereco escolha = Escolha();
    EXPECT_EQ(escolha.CodMunic(), 0);
    EXPECT_EQ(escolha.Via() + escolha.Numero() + escolha.Complemento(), "");
    EXPECT_EQ(escolha.Sugestoes(), Textos{});
    EXPECT_EQ(escolha.Atual(), "Nenhum endereço escolhido.");
    EXPECT_FALSE(escolha.PodeUsar());
    EXPECT_TRUE(escolha.MunicipioEditavel());
    EXPECT_FALSE(escolha.SomenteLeitura());
}

// Knows no street: its code alone is entered.
class SoCodigos : public RuasDeTeste {
  public:
    std::vector<Logradouro> Procura(std::int32_t codMunic, const std::string &procurado, std::size_t) const override
    {
        return {{CLng(procurado), codMunic, "", "", ""}};
    }
    std::optional<Logradouro> PorCodigo(std::int32_t codigo) const override
    {
        return codigo > 0 ? std::optional(Logradouro{codigo, 0, "", "", ""}) : std::nullopt;
    }
};

TEST_F(EscolhaDeEnderecoTest, Usa_OfAStreetThatOnlyItsCodeIsKnownOf_TellsNoTextForIt)
{
    m_Ruas = Novo<SoCodigos>();
    EscolhaDeEndereco escolha = EmCanoas();
    escolha.DigitaVia("4711");
    EXPECT_EQ(escolha.Sugestoes(), (Textos{"Código 4711"}));
    escolha.DigitaNumero("15");
    EXPECT_TRUE(escolha.Usa());
    EXPECT_EQ(m_Controle->Endereco()->CodLogradouro(), 4711);
    EXPECT_EQ(m_Controle->Endereco()->Numero(), 15);
    EXPECT_EQ(m_Controle->Endereco()->DescricaoEndereco(), "");
    EXPECT_EQ(escolha.Atual(), "Logradouro de código 4711.");
}

TEST_F(EscolhaDeEnderecoTest, Acompanha_AnAddressOfAnUnnamedStreet_KeepsItsTownAndPostalCode)
{
    m_Ruas = Novo<SoCodigos>();
    m_Controle->Endereco()->SetaEndereco(Canoas, 4711, 15, "casa", "92000999", "", 0);
    EscolhaDeEndereco escolha = Escolha();
    EXPECT_EQ(escolha.CodMunic(), Canoas);
    EXPECT_EQ(escolha.Via(), "Código 4711");
    EXPECT_EQ(escolha.Numero(), "15");
    EXPECT_TRUE(escolha.Usa());
    EXPECT_EQ(m_Controle->Endereco()->Cep(), "92000999");
}

TEST_F(EscolhaDeEnderecoTest, Municipios_StandInTheOrderOfTheStreets)
{
    EscolhaDeEndereco escolha = Escolha();
    Textos nomes;
    for (const MunicipioDeEndereco &municipio : escolha.Municipios()) {
        nomes.push_back(municipio.Nome);
    }
    EXPECT_EQ(nomes, (Textos{"Erebango", "Canoas", "Água Santa"}));
    EXPECT_EQ(escolha.LugarDoMunicipio(), -1);
    escolha.EscolheMunicipio(Alegrete);
    EXPECT_EQ(escolha.LugarDoMunicipio(), 2);
    escolha.EscolheMunicipio(77);
    EXPECT_EQ(escolha.LugarDoMunicipio(), -1);
}

TEST_F(EscolhaDeEnderecoTest, PesquisaDeMunicipios_KeyByKey_ChoosesTheFirstThatStartsWithAll)
{
    m_Ruas->Oferecidos = {{1, "Água Boa"}, {2, "Água Santa"}, {3, "Santos"}, {4, "São Paulo - SP"}, {5, "Santa Sé"}};
    EscolhaDeEndereco escolha = Escolha();
    escolha.DigitaVia("bras");
    for (const char *letra : {"S", "a", "O", " ", "p"}) {
        EXPECT_TRUE(escolha.PesquisaDeMunicipios().Digita(letra)) << letra;
    }
    EXPECT_EQ(escolha.CodMunic(), 4);
    EXPECT_EQ(m_Memoria->CodMunic, 4);
    EXPECT_FALSE(escolha.PesquisaDeMunicipios().Digita("x")); // and is left out
    EXPECT_TRUE(escolha.PesquisaDeMunicipios().Digita("a"));
    EXPECT_EQ(escolha.CodMunic(), 4);
    EXPECT_FALSE(escolha.PesquisaDeMunicipios().Digita("agua s")); // goes on from what was typed
    escolha.PesquisaDeMunicipios().Encerra();
    EXPECT_TRUE(escolha.PesquisaDeMunicipios().Digita("água s"));
    EXPECT_EQ(escolha.CodMunic(), 2);
    escolha.EscolheMunicipio(3); // chosen from the list: what was typed does not count any more
    EXPECT_TRUE(escolha.PesquisaDeMunicipios().Digita("s"));
    EXPECT_EQ(escolha.CodMunic(), 3);
    EXPECT_EQ(m_Ruas->Procurados.back(), "3 bras 20");
}

TEST_F(EscolhaDeEnderecoTest, PesquisaDeMunicipios_OfOneThatCannotBeEdited_ChangesNothing)
{
    EscolhaDeEndereco escolha = EmCanoas();
    m_Controle->DefineReadOnly(true);
    EXPECT_FALSE(escolha.PesquisaDeMunicipios().Digita("e"));
    EXPECT_EQ(escolha.CodMunic(), Canoas);
}

TEST_F(EscolhaDeEnderecoTest, StreetWithoutADistrict_IsToldWithoutOne)
{
    m_Ruas->Ruas = {{9, Canoas, "Estrada do Mar", "", "92000090"}};
    EscolhaDeEndereco escolha = EmCanoas();
    escolha.DigitaVia("mar");
    EXPECT_EQ(escolha.Sugestoes(), Textos{"Estrada do Mar - 92000-090"});
    escolha.DigitaNumero("12");
    EXPECT_TRUE(escolha.Usa());
    EXPECT_EQ(escolha.Atual(), "Estrada do Mar, 12");
}

TEST_F(EscolhaDeEnderecoTest, DigitaVia_FindsStreetsOfTheMunicipality)
{
    EscolhaDeEndereco escolha = EmCanoas();
    escolha.DigitaVia(" bent ");
    EXPECT_EQ(m_Ruas->Procurados, Textos{"100 bent 20"});
    EXPECT_EQ(escolha.Sugestoes(), (Textos{"Rua Bento - Centro - 92000-010", "Rua Benta - Norte - 92000-020"}));
    EXPECT_FALSE(escolha.PodeUsar());
    EXPECT_EQ(escolha.Via(), " bent ");
    escolha.DigitaVia("nada disso");
    EXPECT_EQ(escolha.Sugestoes(), Textos{});
    EXPECT_FALSE(escolha.PodeUsar());
}

TEST_F(EscolhaDeEnderecoTest, Aviso_OfAStreetThatThereIsNot_SaysWhere)
{
    EscolhaDeEndereco escolha = Escolha();
    escolha.DigitaVia("bento");
    EXPECT_EQ(escolha.Aviso(), "Escolha o município do logradouro.");
    escolha.EscolheMunicipio(Canoas);
    EXPECT_EQ(escolha.Aviso(), "");
    escolha.DigitaVia("bento x");
    EXPECT_EQ(escolha.Aviso(), "Nenhum logradouro encontrado em Canoas.");
    EXPECT_EQ(escolha.Atual(), "Nenhum logradouro encontrado em Canoas.");
    EXPECT_EQ(escolha.Via(), "bento x");
    escolha.DigitaVia("  ");
    EXPECT_EQ(escolha.Aviso(), "");
    EXPECT_EQ(escolha.Atual(), "Nenhum endereço escolhido.");
}

TEST_F(EscolhaDeEnderecoTest, Atual_WhileTheFieldsHoldAnotherAddress_SaysThatItIsNotUsed)
{
    EscolhaDeEndereco escolha = EmCanoas();
    escolha.DigitaVia("bent");
    EXPECT_EQ(escolha.Atual(), "Escolha um dos logradouros encontrados.");
    escolha.EscolheSugestao("Rua Benta - Norte - 92000-020");
    EXPECT_EQ(escolha.Atual(), "O endereço digitado ainda não foi usado.");
    EXPECT_TRUE(escolha.Usa());
    EXPECT_EQ(escolha.Atual(), "Rua Benta - Norte");
    escolha.DigitaNumero("7");
    EXPECT_EQ(escolha.Atual(), "O endereço digitado ainda não foi usado.");
    escolha.DigitaNumero("");
    escolha.DigitaComplemento("casa");
    EXPECT_EQ(escolha.Atual(), "O endereço digitado ainda não foi usado.");
    EXPECT_TRUE(escolha.Usa());
    EXPECT_EQ(escolha.Atual(), "Rua Benta - casa - Norte");
}

TEST_F(EscolhaDeEnderecoTest, Recusa_OfNumberAndComplement_SaysWhatTheyTake)
{
    EscolhaDeEndereco escolha = EmCanoas();
    escolha.DigitaNumero("12");
    EXPECT_EQ(escolha.Recusa(), "");
    escolha.DigitaNumero("12a");
    EXPECT_EQ(escolha.Recusa(), "Só algarismos.");
    escolha.DigitaNumero("1234567");
    EXPECT_EQ(escolha.Recusa(), "Até 6 algarismos.");
    escolha.DigitaComplemento(std::string(31, 'x'));
    EXPECT_EQ(escolha.Recusa(), "Até 30 caracteres.");
    escolha.DigitaComplemento("x");
    EXPECT_EQ(escolha.Recusa(), "");
}

TEST_F(EscolhaDeEnderecoTest, DigitaVia_OfTheOnlyStreet_IsChosenWithoutMore)
{
    EscolhaDeEndereco escolha = EmCanoas();
    escolha.DigitaVia("bras");
    EXPECT_TRUE(escolha.PodeUsar());
    EXPECT_EQ(escolha.Via(), "bras"); // the person is still typing
    escolha.DigitaVia("b");
    EXPECT_FALSE(escolha.PodeUsar());
}

TEST_F(EscolhaDeEnderecoTest, DigitaVia_OfBlanks_IsNoSearch)
{
    EscolhaDeEndereco escolha = EmCanoas();
    escolha.DigitaVia("bras");
    m_Ruas->Procurados.clear();
    escolha.DigitaVia("  ");
    EXPECT_EQ(m_Ruas->Procurados, Textos{});
    EXPECT_FALSE(escolha.PodeUsar());
    EXPECT_EQ(escolha.Sugestoes(), Textos{});
}

TEST_F(EscolhaDeEnderecoTest, EscolheMunicipio_SearchesAgainThere)
{
    EscolhaDeEndereco escolha = EmCanoas();
    escolha.DigitaVia("bento");
    escolha.EscolheMunicipio(Alegrete);
    EXPECT_EQ(escolha.Sugestoes(), Textos{"Rua Bento - Centro - 97000-010"});
    EXPECT_TRUE(escolha.PodeUsar());
    escolha.EscolheMunicipio(Erebango);
    EXPECT_FALSE(escolha.PodeUsar());
}

TEST_F(EscolhaDeEnderecoTest, EscolheMunicipio_IsWhereTheNextAddressBegins)
{
    Escolha().EscolheMunicipio(Canoas);
    EXPECT_EQ(m_Memoria->CodMunic, Canoas);
    EXPECT_EQ(Escolha().CodMunic(), Canoas);
}

TEST_F(EscolhaDeEnderecoTest, EscolheSugestao_ChoosesTheStreetOfThatLine)
{
    EscolhaDeEndereco escolha = EmCanoas();
    escolha.DigitaVia("bent");
    EXPECT_EQ(escolha.EscolheSugestao("Rua Benta - Norte - 92000-020"), Parte::Numero);
    EXPECT_TRUE(escolha.PodeUsar());
    EXPECT_EQ(escolha.Via(), "Rua Benta - Norte - 92000-020");
    EXPECT_TRUE(escolha.Usa());
    EXPECT_EQ(m_Controle->Endereco()->CodLogradouro(), 2);
}

TEST_F(EscolhaDeEnderecoTest, EscolheSugestao_OfALineThatIsNotThere_ChoosesNothing)
{
    EscolhaDeEndereco escolha = EmCanoas();
    escolha.DigitaVia("bent");
    EXPECT_EQ(escolha.EscolheSugestao("Av. Brasil - Sul - 92000-030"), Parte::Via);
    EXPECT_FALSE(escolha.PodeUsar());
    EXPECT_EQ(escolha.Via(), "bent");
}

TEST_F(EscolhaDeEnderecoTest, Usa_EntersTheAddressWithNumberAndComplement)
{
    EscolhaDeEndereco escolha = EmCanoas();
    EXPECT_FALSE(escolha.Usa());
    escolha.DigitaVia("brasil");
    escolha.DigitaNumero("1500");
    escolha.DigitaComplemento("  fundos ");
    EXPECT_TRUE(escolha.Usa());
    const Ref<Endereco> endereco = m_Controle->EnderecoProprio();
    EXPECT_EQ(endereco->CodLogradouro(), 3);
    EXPECT_EQ(endereco->Numero(), 1500);
    EXPECT_EQ(endereco->Complemento(), "fundos");
    EXPECT_EQ(endereco->Cep(), "92000030");
    EXPECT_EQ(endereco->DescricaoEndereco(), "Av. Brasil, 1500 - fundos - Sul");
    EXPECT_EQ(escolha.Atual(), "Av. Brasil, 1500 - fundos - Sul");
    EXPECT_EQ(m_Tela.Vistos(), Textos{"EntradaOK"});
}

TEST_F(EscolhaDeEnderecoTest, Fields_OfThePerson_TakeWhatThereIsRoomForAndOfANumberItsDigits)
{
    EscolhaDeEndereco escolha = EmCanoas();
    for (const auto &[digitado, tomado] : std::vector<std::pair<std::string, std::string>>{
             {"1500", "1500"}, {"15a0-0", "1500"}, {"12345678901", "123456"}, {"s/n", ""}, {"", ""}}) {
        escolha.DigitaNumero(digitado);
        EXPECT_EQ(escolha.Numero(), tomado) << digitado;
    }
    std::string trinta;
    for (int i = 0; i < 30; ++i) {
        trinta += "ç";
    }
    escolha.DigitaComplemento(trinta);
    EXPECT_EQ(escolha.Complemento(), trinta);
    escolha.DigitaComplemento(trinta + "a");
    EXPECT_EQ(escolha.Complemento(), trinta);
}

TEST_F(EscolhaDeEnderecoTest, Usa_WithoutANumber_IsAnAddressWithoutOne)
{
    EscolhaDeEndereco escolha = EmCanoas();
    escolha.DigitaVia("brasil");
    EXPECT_TRUE(escolha.Usa());
    EXPECT_EQ(escolha.Atual(), "Av. Brasil - Sul");
    EXPECT_EQ(m_Controle->Endereco()->Numero(), 0);
}

TEST_F(EscolhaDeEnderecoTest, Usa_OfALockedControl_IsRefusedAndKeepsWhatWasTyped)
{
    EscolhaDeEndereco escolha = EmCanoas();
    escolha.DigitaVia("brasil");
    m_Controle->DefineEnabled(false);
    EXPECT_FALSE(escolha.Usa());
    EXPECT_EQ(escolha.Via(), "brasil");
    EXPECT_EQ(m_Tela.Vistos(), Textos{});
}

TEST_F(EscolhaDeEnderecoTest, Limpa_EmptiesTheAddressAndAllFields)
{
    EscolhaDeEndereco escolha = EmCanoas();
    escolha.DigitaVia("brasil");
    escolha.DigitaNumero("15");
    escolha.DigitaComplemento("a");
    escolha.Usa();
    m_Tela.Vistos();
    EXPECT_TRUE(escolha.Limpa());
    EXPECT_EQ(m_Tela.Vistos(), Textos{"EntradaOK"});
    EXPECT_EQ(m_Controle->Endereco()->CodLogradouro(), 0);
    EXPECT_EQ(escolha.Via() + escolha.Numero() + escolha.Complemento(), "");
    EXPECT_EQ(escolha.Sugestoes(), Textos{});
    EXPECT_FALSE(escolha.PodeUsar());
    EXPECT_EQ(escolha.CodMunic(), Canoas);
    m_Controle->DefineReadOnly(true);
    EXPECT_FALSE(escolha.Limpa());
}

TEST_F(EscolhaDeEnderecoTest, Limpa_OfAnAddressThatWasEmpty_TellsThatTheFieldsChanged)
{
    EscolhaDeEndereco escolha = EmCanoas();
    escolha.DigitaVia("brasil");
    std::string via = "ainda";
    m_Tela.Liga(m_Controle->Mudou(), [&] { via = escolha.Via(); });
    EXPECT_TRUE(escolha.Limpa());
    EXPECT_EQ(via, "");
}

TEST_F(EscolhaDeEnderecoTest, PodeUsar_OfWhatIsOnlyToBeRead_IsFalse)
{
    EscolhaDeEndereco escolha = EmCanoas();
    escolha.DigitaVia("brasil");
    EXPECT_TRUE(escolha.PodeUsar());
    m_Controle->DefineReadOnly(true);
    EXPECT_FALSE(escolha.PodeUsar());
}

TEST_F(EscolhaDeEnderecoTest, Acompanha_OfAPresetAddress_ShowsIt)
{
    Preseta(2, 77, "casa 3");
    EscolhaDeEndereco escolha = Escolha();
    EXPECT_EQ(escolha.CodMunic(), Canoas);
    EXPECT_EQ(escolha.Via(), "Rua Benta - Norte - 92000-020");
    EXPECT_EQ(escolha.Numero(), "77");
    EXPECT_EQ(escolha.Complemento(), "casa 3");
    EXPECT_TRUE(escolha.PodeUsar());
    EXPECT_EQ(m_Memoria->CodMunic, 0); // nobody entered it
    Preseta(4, 0, "");
    escolha.Acompanha();
    EXPECT_EQ(escolha.CodMunic(), Alegrete);
    EXPECT_EQ(escolha.Numero() + escolha.Complemento(), "");
}

TEST_F(EscolhaDeEnderecoTest, Acompanha_OfAnAddressThatTheFormTookAway_ShowsNone)
{
    Preseta(2, 77, "casa 3");
    EscolhaDeEndereco escolha = Escolha();
    Preseta(0, 0, "");
    escolha.Acompanha();
    EXPECT_EQ(escolha.Via() + escolha.Numero() + escolha.Complemento(), "");
    EXPECT_FALSE(escolha.PodeUsar());
    EXPECT_EQ(escolha.CodMunic(), Canoas);
}

TEST_F(EscolhaDeEnderecoTest, Acompanha_OfAnAddressAlreadyShown_LeavesWhatIsBeingTyped)
{
    Preseta(2, 77, "");
    EscolhaDeEndereco escolha = Escolha();
    escolha.DigitaVia("br");
    escolha.DigitaNumero("8");
    escolha.Acompanha();
    EXPECT_EQ(escolha.Via(), "br");
    EXPECT_EQ(escolha.Numero(), "8");
    Preseta(2, 78, "");
    escolha.Acompanha();
    EXPECT_EQ(escolha.Via(), "Rua Benta - Norte - 92000-020");
    EXPECT_EQ(escolha.Numero(), "78");
    Preseta(2, 78, "fundos");
    escolha.Acompanha();
    EXPECT_EQ(escolha.Complemento(), "fundos");
}

TEST_F(EscolhaDeEnderecoTest, Acompanha_OfAStreetThatNobodyKnows_ShowsTheAddressInWordsAlone)
{
    Preseta(999, 77, "casa");
    m_Controle->EnderecoProprio()->DefineDescricao("Rua antiga, 77");
    EscolhaDeEndereco escolha = Escolha();
    EXPECT_EQ(escolha.Via(), "");
    EXPECT_FALSE(escolha.PodeUsar());
    EXPECT_EQ(escolha.Atual(), "Rua antiga, 77");
}

TEST_F(EscolhaDeEnderecoTest, Locked_TheMunicipalityIsLockedToo)
{
    const EscolhaDeEndereco escolha = Escolha();
    m_Controle->DefineReadOnly(true);
    EXPECT_FALSE(escolha.MunicipioEditavel());
    EXPECT_TRUE(escolha.SomenteLeitura());
    const EscolhaDeEndereco outra(
        m_Tela.Poe<ztEndereco>(Chamado<AjustesZtEndereco>("ztEndereco2", {.ReadOnlyMunicipio = true})), m_Ruas,
        m_Memoria);
    EXPECT_FALSE(outra.MunicipioEditavel());
    EXPECT_FALSE(outra.SomenteLeitura());
}

} // namespace
