#include "shell/RelatoriosGeral.h"

#include "tests/shell/GeralDeTeste.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/HostTeste.h"

#include <string>
#include <vector>

namespace {

class RelatoriosGeralTeste : public HostTeste {
  protected:
    void SetUp() override
    {
        HostTeste::SetUp();
        LogaGeral();
    }

    void TearDown() override
    {
        host->Relatorios->AoImprimir = nullptr;
        HostTeste::TearDown();
    }

    Ref<ICursor> Dados()
    {
        Ref<ICursor> cursor = ParaOModulo(
            host->MDB->OpenRecordset("SELECT * FROM Municipio", InstantaneoSomenteLeitura, Valor(), Valor()));
        host->LimpaRegistro();
        return cursor;
    }

    void Pesquisa() { geral->Impressao.PesquisaDataUltimaClonagem(sDadosAte, sForcar, bForcar); }

    bool Imprime(const Valor &relatorio, const Ref<ICursor> &dados)
    {
        return geral->Impressao.ImprimirRelatorio(relatorio, aParam, true, 3, false, host->FormMDI->ZTP, "texto",
                                                  nullptr, dados);
    }

    std::vector<std::string> aParam{"p1", "p2"};
    std::string sDadosAte = "antes";
    std::string sForcar = "antes";
    bool bForcar = false;
};

// Printing.

TEST_F(RelatoriosGeralTeste, ImprimirRelatorio_ByName_RunsItsStepsInOrder)
{
    EXPECT_FALSE(Imprime("VOR011.RPT", Dados()));
    EXPECT_TRUE(RegistroIgual(host->Registro(),
                              {"Relatorios.CurrentRecordSet := *", "objMTM.CreateQMR()", "QMR.CreateNewTrataBD()",
                               "TrataBD.InicializaInfoSistema(\"VOR\", 1)", "TrataBD.AbreZTBanco(99)", "MDB.Name*",
                               "Relatorios.PathMDB := \"C:\\HOST\\DADOS\\LOCAL.MDB\"",
                               "Relatorios.Imprimir(\"VOR011.RPT\", [\"p1\", \"p2\"], True, 3, False, objZTP, "
                               "\"texto\", Nothing) -> True",
                               "Relatorios.CurrentRecordSet := Nothing"}));
}

TEST_F(RelatoriosGeralTeste, ImprimirRelatorio_DesignerOrNumber_GoesByItsOperationAndIsFalseWhateverThePrinterSays)
{
    for (bool imprimiu : {true, false}) {
        host->Relatorios->Imprimiu = imprimiu;
        EXPECT_FALSE(Imprime(Ref<Objeto>(host->FormMDI->ZTP), Dados()));
        EXPECT_FALSE(Imprime(std::int32_t{11}, nullptr));
        EXPECT_TRUE(RegistroIgual(host->RegistroDe({"Relatorios.Imprimir", "Relatorios.CurrentRecordSet := N"}),
                                  {"Relatorios.ImprimirDesigner(objZTP, [\"p1\", \"p2\"], True, 3, False, objZTP, "
                                   "\"texto\", Nothing)*",
                                   "Relatorios.CurrentRecordSet := Nothing", "Relatorios.CurrentRecordSet := Nothing",
                                   "Relatorios.Imprimir(\"11\", *", "Relatorios.CurrentRecordSet := Nothing"}));
    }
}

TEST_F(RelatoriosGeralTeste, ImprimirRelatorio_ParametersChangedByTheReport_ReachTheCaller)
{
    host->Relatorios->AoImprimir = [](ParametrosRelatorio &parametros) {
        parametros.aParam.push_back("p3");
        parametros.b1 = false;
        parametros.s1 = "outro";
    };
    Imprime("X", nullptr);
    EXPECT_EQ(aParam, (std::vector<std::string>{"p1", "p2", "p3"}));
}

TEST_F(RelatoriosGeralTeste, ImprimirRelatorio_DatabaseThatGivesNothing_LeavesThePathAsItWas)
{
    host->objMTM->AbreBanco = false;
    Imprime("X", nullptr);
    EXPECT_EQ(host->Conta("Relatorios.PathMDB"), 0);
    EXPECT_EQ(host->Conta("Relatorios.Imprimir(\"X\""), 1);
}

TEST_F(RelatoriosGeralTeste, ImprimirRelatorio_BeforeParametros_RaisesWithNothingTouched)
{
    geral = Novo<Geral>();
    host->LimpaRegistro();
    EXPECT_TRUE(Lanca(1033, "ZTAVOREQUIP.Geral.ImprimirRelatorio", "Objeto de Relatorios nao Definido",
                      [&] { Imprime("X", nullptr); }));
    EXPECT_TRUE(host->Registro().empty());
}

TEST_F(RelatoriosGeralTeste, ImprimirRelatorio_AnyStepThatFails_GoesOnWithItsTailAndKeepsTheCursor)
{
    const std::string cauda = " < Geral.ImprimirRelatorio";
    FalhaEmCada({"TrataBD.AbreZTBanco", "MDB.Name", "Relatorios.PathMDB", "Relatorios.Imprimir"}, cauda, [&] {
        host->LimpaRegistro();
        Imprime("X", nullptr);
    });
    EXPECT_EQ(host->Conta("Relatorios.CurrentRecordSet"), 1); // given, and not taken away
    FalhaEmCada({"Relatorios.CurrentRecordSet"}, cauda, [&] { Imprime("X", nullptr); });
    EXPECT_TRUE(Lanca(94, "ZTAVOREQUIP" + cauda, [&] { Imprime(Valor::Nulo(), nullptr); }));
}

// Age of the replica. The clock stands at 20/11/2026 10:00:00.

TEST_F(RelatoriosGeralTeste, PesquisaDataUltimaClonagem_FreshReplica_AsksTheServiceInOrder)
{
    bForcar = true;
    Pesquisa();
    EXPECT_TRUE(
        RegistroIgual(host->Registro(), {"objMTM.CWebComm()", "WebComm.CriaObjetoSoap(\"ConsGen\", \"ZTAVOREQUIP\")",
                                         "Soap.Metodo(Nothing, \"consultaDataUltimaReplica\", \"VOR\") -> True",
                                         "Soap.Resultado() -> \"20/11/2026 10:00:00\""}));
    EXPECT_EQ(sDadosAte, "Dados considerados até 20/11/2026 10:00:00");
    EXPECT_EQ(sForcar, "");
    EXPECT_TRUE(bForcar); // left as it came
}

TEST_F(RelatoriosGeralTeste, PesquisaDataUltimaClonagem_MoreThanFiveWholeMinutesOld_OffersTheAction)
{
    struct Caso {
        Valor Momento;
        std::string Texto;
        bool Forca;
    };
    for (const Caso &caso : std::vector<Caso>{{"20/11/2026 09:55:00", "20/11/2026 09:55:00", false},
                                              {"20/11/2026 09:54:59", "20/11/2026 09:54:59", false},
                                              {"20/11/2026 09:54:01", "20/11/2026 09:54:01", false},
                                              {"20/11/2026 09:54:00", "20/11/2026 09:54:00", true},
                                              {"21/11/2026 10:00:00", "21/11/2026 10:00:00", false}, // of tomorrow
                                              {DataDe(1, 1, 2020), "01/01/2020", true}}) { // a date is read as its text
        SCOPED_TRACE(caso.Texto);
        host->objMTM->WebResultado = caso.Momento;
        bForcar = false;
        Pesquisa();
        EXPECT_EQ(sDadosAte, "Dados considerados até " + caso.Texto);
        EXPECT_EQ(sForcar, caso.Forca ? "Forçar consulta ao Servidor Principal" : "");
        EXPECT_EQ(bForcar, caso.Forca);
    }
}

TEST_F(RelatoriosGeralTeste, PesquisaDataUltimaClonagem_ServiceThatRefuses_CountsAsOld)
{
    host->objMTM->WebResponde = false;
    Pesquisa();
    EXPECT_EQ(sDadosAte, "");
    EXPECT_EQ(sForcar, "Forçar consulta ao Servidor Principal");
    EXPECT_TRUE(bForcar);
    EXPECT_EQ(host->Conta("Soap.Resultado"), 0);
}

TEST_F(RelatoriosGeralTeste, PesquisaDataUltimaClonagem_AnswerThatIsNoDate_RaisesAfterTheTextWasWritten)
{
    host->objMTM->WebResultado = "ontem";
    EXPECT_TRUE(Lanca(13, "ZTAVOREQUIP < Geral.PesquisaDataUltimaClonagem", [&] { Pesquisa(); }));
    EXPECT_EQ(sDadosAte, "Dados considerados até ontem");
    EXPECT_EQ(sForcar, "antes");
    EXPECT_FALSE(bForcar);
}

TEST_F(RelatoriosGeralTeste, PesquisaDataUltimaClonagem_AnyStepThatFails_GoesOnWithItsTail)
{
    const std::string cauda = " < Geral.PesquisaDataUltimaClonagem";
    FalhaEmCada({"objMTM.CWebComm", "WebComm.CriaObjetoSoap", "Soap.Metodo", "Soap.Resultado"}, cauda,
                [&] { Pesquisa(); });
    geral = Novo<Geral>(); // on which nobody has logged on
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP" + cauda, [&] { Pesquisa(); }));
    EXPECT_EQ(sDadosAte, "antes");
    EXPECT_EQ(sForcar, "antes");
}

} // namespace
