#include "host/Conversoes.h"
#include "host/Texto.h"
#include "services/LogradouroED.h"
#include "tests/services/ServicosTeste.h"

#include <string>
#include <vector>

using namespace mesa;

namespace {

using Textos = std::vector<std::string>;

constexpr std::int32_t PortoAlegre = 4314902;
constexpr std::int32_t Santos = 3548500;
constexpr const char *Servico = "AdministracaoRN";

Ref<LogradouroED> Rua(const std::string &nome, const std::string &bairro = "Centro",
                      const std::string &cep = "90010000", std::int32_t codMunic = PortoAlegre)
{
    auto rua = Novo<LogradouroED>();
    rua->CodMunic = codMunic;
    rua->NomeLograd = nome;
    rua->Bairro = bairro;
    rua->Cep = cep;
    return rua;
}

// What is to change in the street that has the code, read at that version.
Ref<LogradouroED> Mudanca(std::int32_t codigo, std::int32_t versao)
{
    return Com(Novo<LogradouroED>(), &LogradouroED::CodLograd, codigo, &LogradouroED::Versao, versao);
}

class ServicosLogradouros : public ServicosTeste {
  protected:
    std::int32_t Inclui(const Ref<LogradouroED> &rua)
    {
        return Faz(m_Marta, "incluiLogradouro", rua, Servico).Como<LogradouroED>()->CodLograd;
    }
    std::string RecusaDeIncluir(const Ref<LogradouroED> &rua)
    {
        return RecusaDe(m_Marta, "incluiLogradouro", rua, Servico);
    }
    Ref<LogradouroED> Altera(const Ref<LogradouroED> &rua)
    {
        return Faz(m_Marta, "alteraLogradouro", rua, Servico).Como<LogradouroED>();
    }
    std::string RecusaDeAlterar(const Ref<LogradouroED> &rua)
    {
        return RecusaDe(m_Marta, "alteraLogradouro", rua, Servico);
    }
    Ref<ListaLogradourosED> Lista(const Ref<ListaLogradourosED> &pedido)
    {
        return Faz(m_Ana, "listaLogradouros", pedido, Servico).Como<ListaLogradourosED>();
    }
    static Ref<ListaLogradourosED> Procurado(const std::string &texto, std::int32_t codMunic = PortoAlegre)
    {
        return Com(Novo<ListaLogradourosED>(), &ListaLogradourosED::Procurado, texto, &ListaLogradourosED::CodMunic,
                   codMunic);
    }
    static Textos Nomes(const Ref<ListaLogradourosED> &lista)
    {
        Textos nomes;
        const ListaDe<LogradouroED> achados = lista->Logradouros;
        for (std::int32_t n = 1; !achados.Nada() && n <= achados->Count(); ++n) {
            nomes.push_back(achados->Item(n)->NomeLograd);
        }
        return nomes;
    }
    Textos Acha(const std::string &texto, std::int32_t codMunic = PortoAlegre)
    {
        return Nomes(Lista(Procurado(texto, codMunic)));
    }
    Ref<ImportacaoED> Importa(const std::string &conteudo)
    {
        return Faz(m_Marta, "importaLogradouros", Com(Novo<ImportacaoED>(), &ImportacaoED::Conteudo, conteudo), Servico)
            .Como<ImportacaoED>();
    }
    std::string RecusaDeImportar(const std::string &conteudo)
    {
        return RecusaDe(m_Marta, "importaLogradouros", Com(Novo<ImportacaoED>(), &ImportacaoED::Conteudo, conteudo),
                        Servico);
    }
    // "incluidos/ja existiam/recusadas".
    static std::string Contas(const Ref<ImportacaoED> &feita)
    {
        return CStr(feita->Incluidos.Valor()) + "/" + CStr(feita->JaExistiam.Valor()) + "/" +
               CStr(feita->NroRecusadas.Valor());
    }
    static Textos Recusadas(const Ref<ImportacaoED> &feita)
    {
        Textos linhas;
        const ListaDe<LinhaRecusadaED> recusadas = feita->Recusadas;
        for (std::int32_t n = 1; !recusadas.Nada() && n <= recusadas->Count(); ++n) {
            linhas.push_back(CStr(recusadas->Item(n)->Linha.Valor()) + ": " + recusadas->Item(n)->Motivo.Valor());
        }
        return linhas;
    }
    // "action version" of each entry of the street.
    std::string Historia(std::int32_t codigo)
    {
        std::string texto;
        for (const std::string &linha :
             LinhasSql(m_Registro.Caminho(),
                       "SELECT Acao, Versao, Operador FROM HISTORICO WHERE Entidade = 'LOGRADOURO' AND NroEntidade = " +
                           CStr(codigo) + " ORDER BY Nro")) {
            texto += linha + "; ";
        }
        return texto;
    }

    Ref<SessaoServico> m_Marta = m_Registro.Sessao("marta");
};

TEST_F(ServicosLogradouros, Inclui_OfANewStreet_IsStoredWithItsHistory)
{
    const auto nova = Faz(m_Marta, "incluiLogradouro", Rua("  Rua Bento Gonçalves ", " Centro", "90010-000"), Servico)
                          .Como<LogradouroED>();
    EXPECT_EQ(nova->Texto(), "LogradouroED{CodLograd=1, CodMunic=4314902, Nome=\"Rua Bento Gonçalves\", "
                             "Bairro=\"Centro\", Cep=\"90010000\", Ativo=1, Versao=1}");
    EXPECT_EQ(m_Registro.Sql("SELECT CodMunic, Nome, Bairro, Cep, NomeBusca, Ativo, Versao FROM LOGRADOURO"),
              "4314902|Rua Bento Gonçalves|Centro|90010000|rua bento goncalves|1|1");
    EXPECT_EQ(Historia(1), "inclui|1|11; ");
}

TEST_F(ServicosLogradouros, Inclui_OfACodeOfOnesOwn_IsNotTaken)
{
    EXPECT_EQ(Inclui(Com(Rua("Rua A"), &LogradouroED::CodLograd, 700)), 1);
    m_Registro.Sql("INSERT INTO LOGRADOURO VALUES (5000, 4314902, 'Rua B', '', '90010000', 'rua b', 1, 1)");
    EXPECT_EQ(Inclui(Rua("Rua C")), 5001); // behind the greatest that there is
}

TEST_F(ServicosLogradouros, Inclui_OfWhatIsNoStreet_IsRefusedInWords)
{
    EXPECT_EQ(RecusaDeIncluir(Rua(" \t ")), "O campo \"nome\" precisa ser informado.");
    EXPECT_EQ(RecusaDeIncluir(Rua(std::string(81, 'x'))), "O campo \"nome\" aceita até 80 caracteres e veio com 81.");
    EXPECT_EQ(RecusaDeIncluir(Rua("Rua", std::string(81, 'x'))),
              "O campo \"bairro\" aceita até 80 caracteres e veio com 81.");
    EXPECT_EQ(RecusaDeIncluir(Rua("Rua A", "", "1310100")),
              "O CEP 1310100 tem sete dígitos: falta um, talvez o zero do começo.");
    for (const char *cep : {"", "9001000O", "900100000", "90 010000"}) {
        EXPECT_EQ(RecusaDeIncluir(Rua("Rua A", "", cep)), "O CEP \"" + std::string(cep) + "\" não tem oito dígitos.");
    }
    EXPECT_EQ(RecusaDeIncluir(Rua("Rua A", "", "90010000", 4314903)), "Não existe o município de código 4314903.");
    for (const char *nome : {"Rua\u202EA", "Rua\u200BA", "Rua\nA", "Rua\u0007A", "Rua \uFEFFA"}) {
        EXPECT_EQ(RecusaDeIncluir(Rua(nome)), "O campo \"nome\" tem caracteres que não se veem: digite-o de novo.");
    }
    EXPECT_EQ(Linhas("LOGRADOURO"), "0");
}

TEST_F(ServicosLogradouros, Inclui_OfDecomposedLetters_StoresComposedOnes)
{
    Inclui(Rua("Rua Gonc\u0327alves"));
    EXPECT_EQ(m_Registro.Sql("SELECT Nome FROM LOGRADOURO"), "Rua Gon\u00E7alves");
}

TEST_F(ServicosLogradouros, Inclui_OfAnEqualOne_SaysWhichAndWho)
{
    Inclui(Rua("Rua Bento Gonçalves"));
    const std::string recusa =
        "O logradouro Rua Bento Gonçalves de Porto Alegre/RS (código 1), com o mesmo bairro e o mesmo CEP, já existe; "
        "foi gravado por último por Marta Reis em 20/11/2026 às 10:00:00.";
    EXPECT_EQ(RecusaDeIncluir(Rua("RUA BENTO GONCALVES", "centro")), recusa);
    // The same name elsewhere is another street.
    EXPECT_EQ(Inclui(Rua("Rua Bento Gonçalves", "Norte")), 2);
    EXPECT_EQ(Inclui(Rua("Rua Bento Gonçalves", "Centro", "90010001")), 3);
    EXPECT_EQ(Inclui(Rua("Rua Bento Gonçalves", "Centro", "90010000", Santos)), 4);
}

TEST_F(ServicosLogradouros, Altera_OfNameDistrictAndPostalCode_KeepsWhatIsUnset)
{
    Inclui(Rua("Rua Xis"));
    auto mudanca = Com(Mudanca(1, 1), &LogradouroED::NomeLograd, "Rua Bê", &LogradouroED::Cep, "90020-000");
    EXPECT_EQ(Altera(mudanca)->Versao.Valor(), 2);
    EXPECT_EQ(m_Registro.Sql("SELECT Nome, Bairro, Cep, NomeBusca, Ativo, Versao FROM LOGRADOURO"),
              "Rua Bê|Centro|90020000|rua be|1|2");
    EXPECT_EQ(Acha("be"), Textos{"Rua Bê"});
    EXPECT_EQ(Acha("xis"), Textos{});
    EXPECT_EQ(Historia(1), "inclui|1|11; altera|2|11; ");
}

TEST_F(ServicosLogradouros, Altera_OfNothing_WritesNothing)
{
    Inclui(Rua("Rua A"));
    EXPECT_EQ(Altera(Com(Mudanca(1, 1), &LogradouroED::NomeLograd, " Rua A "))->Versao.Valor(), 1);
    EXPECT_EQ(Historia(1), "inclui|1|11; ");
}

TEST_F(ServicosLogradouros, Altera_OfKeyOrMunicipality_IsRefused)
{
    Inclui(Rua("Rua A"));
    EXPECT_EQ(RecusaDeAlterar(Com(Mudanca(1, 1), &LogradouroED::CodMunic, Santos)),
              "O logradouro Rua A de Porto Alegre/RS (código 1) não pode passar para outro município: inclua um novo "
              "lá.");
    EXPECT_EQ(RecusaDeAlterar(Mudanca(2, 1)), "Não existe o logradouro de código 2.");
    EXPECT_NE(MotivoDe("UPDATE LOGRADOURO SET CodMunic = 3548500"), "done");
    EXPECT_NE(MotivoDe("UPDATE LOGRADOURO SET CodLograd = 9"), "done");
    EXPECT_NE(MotivoDe("DELETE FROM LOGRADOURO"), "done");
    EXPECT_EQ(m_Registro.Sql("SELECT CodLograd, CodMunic FROM LOGRADOURO"), "1|4314902");
}

TEST_F(ServicosLogradouros, Altera_OfACopyThatIsOld_SaysWhoWasBefore)
{
    Inclui(Rua("Rua A"));
    m_Registro.PassaSegundos(65);
    Altera(Com(Mudanca(1, 1), &LogradouroED::NomeLograd, "Rua B"));
    EXPECT_EQ(RecusaDeAlterar(Com(Mudanca(1, 1), &LogradouroED::NomeLograd, "Rua C")),
              "O logradouro Rua B de Porto Alegre/RS (código 1) foi alterado por Marta Reis em 20/11/2026 às 10:01:05, "
              "depois de aberto aqui. Nada foi gravado: abra-o de novo e repita a sua alteração.");
    // A copy that tells no version was not read.
    EXPECT_NE(RecusaDeAlterar(Com(Novo<LogradouroED>(), &LogradouroED::CodLograd, 1)), "");
    EXPECT_EQ(Acha(""), Textos{"Rua B"});
}

TEST_F(ServicosLogradouros, Altera_IntoAnEqualOne_IsRefused)
{
    Inclui(Rua("Rua A"));
    Inclui(Rua("Rua B"));
    EXPECT_NE(RecusaDeAlterar(Com(Mudanca(2, 1), &LogradouroED::NomeLograd, "rua á")).find("já existe"),
              std::string::npos);
    EXPECT_EQ(Acha(""), (Textos{"Rua A", "Rua B"}));
}

TEST_F(ServicosLogradouros, Altera_OfAtivo_TakesItFromThePickersAndGivesItBack)
{
    Inclui(Rua("Rua A"));
    Altera(Com(Mudanca(1, 1), &LogradouroED::Ativo, 2));
    EXPECT_EQ(Nomes(Lista(Com(Procurado("rua"), &ListaLogradourosED::Ativo, 1))), Textos{});
    EXPECT_EQ(Nomes(Lista(Com(Procurado("rua"), &ListaLogradourosED::Ativo, 2))), Textos{"Rua A"});
    EXPECT_EQ(Acha("rua"), Textos{"Rua A"});
    Altera(Com(Mudanca(1, 2), &LogradouroED::Ativo, 1));
    EXPECT_EQ(Nomes(Lista(Com(Procurado("rua"), &ListaLogradourosED::Ativo, 1))), Textos{"Rua A"});
    EXPECT_EQ(Historia(1), "inclui|1|11; desativa|2|11; reativa|3|11; ");
}

TEST_F(ServicosLogradouros, Lista_ByWords_IgnoresAccentsCaseAndTheirOrder)
{
    Inclui(Rua("Rua Bento Gonçalves"));
    Inclui(Rua("Avenida Getúlio Vargas"));
    Inclui(Rua("Rua Sete de Setembro"));
    EXPECT_EQ(Acha("goncalves BENTO"), Textos{"Rua Bento Gonçalves"});
    EXPECT_EQ(Acha("  GETÚLIO  "), Textos{"Avenida Getúlio Vargas"});
    EXPECT_EQ(Acha("rua que não há"), Textos{});
    EXPECT_EQ(Acha("Bento", Santos), Textos{});
    EXPECT_EQ(Acha(""), (Textos{"Avenida Getúlio Vargas", "Rua Bento Gonçalves", "Rua Sete de Setembro"}));
}

TEST_F(ServicosLogradouros, Lista_OfLettersWithAMeaningInPatterns_TakesThemAsTheyAre)
{
    Inclui(Rua("Rua 100% Livre"));
    Inclui(Rua("Rua A_B"));
    Inclui(Rua("Rua C\\D"));
    Inclui(Rua("Rua Sant'Ana"));
    EXPECT_EQ(Acha("%"), Textos{"Rua 100% Livre"});
    EXPECT_EQ(Acha("_"), Textos{"Rua A_B"});
    EXPECT_EQ(Acha("\\"), Textos{"Rua C\\D"});
    EXPECT_EQ(Acha("'"), Textos{"Rua Sant'Ana"});
    EXPECT_EQ(Acha("' OR 1=1 --"), Textos{});
}

TEST_F(ServicosLogradouros, Lista_ByPostalCode_TakesItsBeginningWithOrWithoutTheDash)
{
    Inclui(Rua("Rua B", "", "90010020"));
    Inclui(Rua("Rua A", "", "90010010"));
    Inclui(Rua("Rua 9001", "", "91000000"));
    for (const char *cep : {"90010020", "90010-020", " 90010-020 "}) {
        EXPECT_EQ(Acha(cep), Textos{"Rua B"}) << cep;
    }
    EXPECT_EQ(Acha("90010"), (Textos{"Rua A", "Rua B"}));
    EXPECT_EQ(Acha("9001"), (Textos{"Rua 9001", "Rua A", "Rua B"})); // or a word of the name
    EXPECT_EQ(Acha("90010020", Santos), Textos{});
}

TEST_F(ServicosLogradouros, Lista_OfTheWholeCountry_TakesFiveDigitsOfThePostalCode)
{
    Inclui(Rua("Rua A", "", "90010010"));
    Inclui(Rua("Rua B", "", "11010010", Santos));
    EXPECT_EQ(Acha("11010", 0), Textos{"Rua B"});
    for (const char *procurado : {"", "rua", "1101", "110-1"}) {
        EXPECT_EQ(RecusaDe(m_Ana, "listaLogradouros", Procurado(procurado, 0), Servico),
                  "Escolha o município, ou informe ao menos cinco dígitos do CEP.");
    }
}

TEST_F(ServicosLogradouros, Lista_ByCode_IsThatOneAloneActiveOrNot)
{
    Inclui(Rua("Rua A"));
    Inclui(Rua("Rua B"));
    Altera(Com(Mudanca(2, 1), &LogradouroED::Ativo, 2));
    const auto porCodigo = [&](std::int32_t codigo) {
        return Nomes(Lista(Com(Novo<ListaLogradourosED>(), &ListaLogradourosED::CodLograd, codigo)));
    };
    EXPECT_EQ(porCodigo(1), Textos{"Rua A"});
    EXPECT_EQ(porCodigo(2), Textos{"Rua B"});
    EXPECT_EQ(porCodigo(0), Textos{});
    EXPECT_EQ(porCodigo(3), Textos{});
    EXPECT_EQ(porCodigo(-1), Textos{});
}

TEST_F(ServicosLogradouros, Lista_OfMoreThanAreAsked_SaysThatThereAreMore)
{
    for (const char *nome : {"Rua C", "Rua A", "Rua B"}) {
        Inclui(Rua(nome));
    }
    const auto duas = Lista(Com(Procurado("rua"), &ListaLogradourosED::Maximo, 2));
    EXPECT_EQ(Nomes(duas), (Textos{"Rua A", "Rua B"}));
    EXPECT_EQ(duas->HaMais.Valor(), 1);
    EXPECT_EQ(Lista(Com(Procurado("rua"), &ListaLogradourosED::Maximo, 3))->HaMais.Valor(), 2);
}

// A million streets in the country must not be read for one municipality's.
TEST_F(ServicosLogradouros, Lista_AsThePickersAsk_ReadsTheMunicipalityAlone)
{
    for (const char *condicao : {"CodMunic = 4314902 AND NomeBusca LIKE '%rua%' AND Ativo = 1",
                                 "CodMunic = 4314902 AND ((Cep >= '9' AND Cep < 'x') OR (1 = 1)) AND Ativo = 1",
                                 "CodMunic = 4314902 AND Ativo IN (1, 2) AND NomeBusca = 'x'"}) {
        const std::string plano = m_Registro.Sql("EXPLAIN QUERY PLAN SELECT * FROM LOGRADOURO WHERE " +
                                                 std::string(condicao) + " ORDER BY NomeBusca, Nome, CodLograd");
        EXPECT_NE(plano.find("USING INDEX LOGRADOURO_Busca (CodMunic=?"), std::string::npos) << plano;
    }
    const std::string plano = m_Registro.Sql("EXPLAIN QUERY PLAN SELECT * FROM LOGRADOURO WHERE Cep >= '90010' AND Cep "
                                             "< '90011' AND Ativo IN (1, 2) ORDER BY NomeBusca");
    EXPECT_NE(plano.find("USING INDEX LOGRADOURO_Cep (Cep>"), std::string::npos) << plano;
}

TEST_F(ServicosLogradouros, EveryAct_WithoutItsRight_IsRefused)
{
    Inclui(Rua("Rua A"));
    const auto tabela = Com(Novo<ImportacaoED>(), &ImportacaoED::Conteudo, "4314902;Rua B;;90010000");
    EXPECT_EQ(RecusaDe(m_Ana, "incluiLogradouro", Rua("Rua B"), Servico),
              "Ana Souza não tem permissão para incluir logradouros.");
    EXPECT_EQ(RecusaDe(m_Ana, "alteraLogradouro", Com(Mudanca(1, 1), &LogradouroED::NomeLograd, "Rua B"), Servico),
              "Ana Souza não tem permissão para alterar logradouros.");
    EXPECT_EQ(RecusaDe(m_Ana, "importaLogradouros", tabela, Servico),
              "Ana Souza não tem permissão para importar logradouros.");
    EXPECT_EQ(RecusaDe(m_Registro.Sessao("carla"), "listaLogradouros", Procurado("rua"), Servico),
              "Carla Dias não tem permissão para consultar logradouros.");
    // Who maintains the streets sees them too.
    EXPECT_EQ(Nomes(Faz(m_Marta, "listaLogradouros", Procurado("rua"), Servico).Como<ListaLogradourosED>()),
              Textos{"Rua A"});
    EXPECT_EQ(Linhas("LOGRADOURO"), "1");
    EXPECT_EQ(Historia(1), "inclui|1|11; ");
}

TEST_F(ServicosLogradouros, Importa_OfATable_IncludesItsRowsWithTheirHistory)
{
    EXPECT_EQ(Contas(Importa("4314902\tRua A\tCentro\t90010-010\n3548500\tRua B\t\t11010010\n")), "2/0/0");
    EXPECT_EQ(Acha(""), Textos{"Rua A"});
    EXPECT_EQ(Acha("", Santos), Textos{"Rua B"});
    EXPECT_EQ(Historia(1) + Historia(2), "inclui|1|11; inclui|1|11; ");
    EXPECT_EQ(m_Registro.Sql("SELECT Motivo FROM HISTORICO WHERE Entidade = 'LOGRADOURO'"), "importação de tabela");
}

TEST_F(ServicosLogradouros, Importa_Again_RecognisesWhatIsThere)
{
    const std::string tabela = "4314902;Rua A;Centro;90010010\n4314902;Rua B;Centro;90010020\n";
    Importa(tabela);
    EXPECT_EQ(Contas(Importa(tabela + "4314902;RUA A;CENTRO;90010-010\n4314902;Rua C;;90010030\n"
                                      "4314902;rua c;;90010030\n")),
              "1/4/0");
    EXPECT_EQ(Acha(""), (Textos{"Rua A", "Rua B", "Rua C"}));
    // One that was deactivated stays so.
    Altera(Com(Mudanca(1, 1), &LogradouroED::Ativo, 2));
    EXPECT_EQ(Contas(Importa(tabela)), "0/2/0");
    EXPECT_EQ(m_Registro.Sql("SELECT Ativo FROM LOGRADOURO WHERE CodLograd = 1"), "2");
}

TEST_F(ServicosLogradouros, Importa_OfEachWayOfWritingATable_ReadsTheSame)
{
    const Textos tabelas = {
        "4314902,Rua A,Centro,90010010",
        "\xEF\xBB\xBF"
        "4314902;Rua A;Centro;90010010\r\n",
        "4314902;\"Rua A\";\"Centro\";\"90010-010\"\r\n;;;\r\n",
        "município;nome;bairro;CEP\n4314902;Rua A;Centro;90010010\n",
        "município;nome;bairro;CEP;;\n4314902;Rua A;Centro;90010010; ;\n",
        "CEP\tBAIRRO\tLOGRADOURO\tCOD_MUNIC\n90010010\tCentro\tRua A\t4314902\n\n\n",
        "\xEF\xBB\xBF\"Código do município\",Rua,Bairro,Cep\r4314902,Rua A,Centro,90010010",
    };
    EXPECT_EQ(Contas(Importa(tabelas.front())), "1/0/0");
    for (const std::string &tabela : tabelas) {
        EXPECT_EQ(Contas(Importa(tabela)), "0/1/0") << tabela;
    }
    Importa("4314902,\"Rua \"\"B\"\", fundos\",\"Vila; Nova\",90010020");
    EXPECT_EQ(Acha("b"), Textos{"Rua \"B\", fundos"});
}

TEST_F(ServicosLogradouros, Importa_WithRowsThatAreNoStreets_TellsEachAndIncludesNone)
{
    const auto feita = Importa("município;nome;bairro;CEP\n"
                               "4314902;Rua Boa;Centro;90010010\n"
                               "9999999;Rua A;Centro;90010010\n"
                               "\n"
                               "RS;Rua A;Centro;90010010\n"
                               "4314902;;Centro;90010010\n"
                               "4314902;Rua A;Centro;9001001\n"
                               "4314902;Rua A;Centro\n"
                               "4314902;Rua A;Centro;90010010;x\n"
                               "99999999999999999999;Rua A;Centro;90010010\n");
    EXPECT_EQ(Contas(feita), "0/0/7");
    EXPECT_EQ(Recusadas(feita),
              (Textos{"3: Não existe o município de código 9999999.",
                      "5: O código do município \"RS\" não é um código do IBGE, de sete dígitos.",
                      "6: O campo \"nome\" precisa ser informado.",
                      "7: O CEP 9001001 tem sete dígitos: falta um, talvez o zero do começo.",
                      "8: A linha tem 3 colunas, e não quatro.", "9: A linha tem 5 colunas, e não quatro.",
                      "10: O código do município \"99999999999999999999\" não é um código do IBGE, de sete dígitos."}));
    EXPECT_EQ(Linhas("LOGRADOURO"), "0");
    EXPECT_EQ(m_Registro.Sql("SELECT COUNT(*) FROM HISTORICO WHERE Entidade = 'LOGRADOURO'"), "0");
}

TEST_F(ServicosLogradouros, Importa_OfManyBadRows_TellsAThousandAndCountsAll)
{
    std::string tabela;
    for (int linha = 0; linha < 1500; ++linha) {
        tabela += "1;Rua;;90010010\n";
    }
    const auto feita = Importa(tabela);
    EXPECT_EQ(Contas(feita), "0/0/1500");
    EXPECT_EQ(Recusadas(feita).size(), 1000U);
}

TEST_F(ServicosLogradouros, Importa_OfAFileThatIsNoTable_IsRefusedInWords)
{
    const std::string emLatin1 = "O arquivo não está em UTF-8; parece estar em Latin-1 (Windows-1252), com que os "
                                 "acentos sairiam trocados. Salve-o como \"CSV UTF-8\" e importe de novo.";
    EXPECT_EQ(RecusaDeImportar("4314902;Rua Gon\xE7"
                               "alves;Centro;90010010\n"),
              emLatin1);
    EXPECT_EQ(RecusaDeImportar("4314902;Rua A;Centro;90010010\nx\xC3"), emLatin1); // cut in the middle of a letter
    EXPECT_EQ(RecusaDeImportar(std::string("\xFF\xFE") + std::string("4\0", 2)),
              "O arquivo está em UTF-16: salve-o como texto UTF-8 e importe de novo.");
    for (const char *vazio : {"", "\n\n", ";;;\n", "município;nome;bairro;CEP\n", "\xEF\xBB\xBF"}) {
        EXPECT_EQ(RecusaDeImportar(vazio), "O arquivo não tem nenhuma linha de logradouro.") << vazio;
    }
    EXPECT_EQ(RecusaDeImportar("4314902;\"Rua A;Centro;90010010\n"),
              "As aspas abertas na linha 1 do arquivo não foram fechadas.");
    EXPECT_EQ(RecusaDeImportar("município;nome;bairro;CEP;estado\n4314902;Rua A;Centro;90010010;RS\n"),
              "A coluna \"estado\" do cabeçalho não é conhecida: a tabela tem as colunas município (código do IBGE), "
              "nome, bairro e CEP.");
    EXPECT_EQ(RecusaDeImportar("município;nome;rua;CEP\n"), "O cabeçalho tem duas colunas para nome.");
    EXPECT_EQ(RecusaDeImportar("município;nome;bairro\n"), "Falta no cabeçalho a coluna CEP.");
    EXPECT_EQ(Linhas("LOGRADOURO"), "0");
}

TEST_F(ServicosLogradouros, Sensor_OnAStreet_TakesOneThatIsThereAndActive)
{
    const std::int32_t equipamento = ::Inclui(m_Ana, Poe(EquipamentoDe("R-1"), SensorDe(1)));
    const auto grava = [&](std::int32_t codigo) {
        auto equipto = Abre(m_Ana, equipamento);
        equipto->Sensores = Novo<Colecao<Ref<SensorED>>>();
        equipto->Sensores.Valor()->Add(Com(SoSensor(1), &SensorED::CodLograd, codigo));
        return Pede(m_Ana, "altera", equipto);
    };
    EXPECT_EQ(grava(1).Recusa, "Não existe o logradouro de código 1.");
    const std::int32_t codigo = Inclui(Rua("Rua A"));
    EXPECT_TRUE(grava(codigo).Feita);
    Altera(Com(Mudanca(codigo, 1), &LogradouroED::Ativo, 2));
    EXPECT_TRUE(grava(codigo).Feita); // it has it already
    EXPECT_TRUE(grava(0).Feita);
    EXPECT_EQ(grava(codigo).Recusa, "O logradouro Rua A de Porto Alegre/RS (código 1) foi desativado por Marta Reis em "
                                    "20/11/2026 às 10:00:00: escolha outro.");
}

} // namespace
