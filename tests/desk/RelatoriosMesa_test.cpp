#include "tests/desk/HospedeiroDeTeste.h"

#include "desk/host/Caminhos.h"

#include <QPdfDocument>
#include <QPdfSelection>

using namespace mesa;

namespace {

class Cursor : public ICursor {
  public:
    std::string_view NomeTipo() const override { return "Cursor"; }
    bool EOF_() const override { return false; }
    std::int32_t RecordCount() const override { return 37; }
    Ref<IFields> Fields(const std::string &) const override { return nullptr; }
    void MoveNext() override {}
    void Close() override {}
};

class RelatoriosMesaTeste : public HospedeiroTeste {
  protected:
    bool Imprime(const Valor &relatorio, std::vector<std::string> linhas = {})
    {
        bool b1 = false;
        std::uint8_t n1 = 0;
        bool b2 = false;
        Ref<Objeto> o1;
        std::string s1;
        Ref<Objeto> o2;
        ParametrosRelatorio parametros{relatorio, linhas, b1, n1, b2, o1, s1, o2};
        return relatorio.EhObjeto() ? relatorios->ImprimirDesigner(parametros) : relatorios->Imprimir(parametros);
    }
    // The words of the page that the viewer was given; its number comes last.
    std::string TextoMostrado() const
    {
        EXPECT_EQ(mesa.Janelas->Mostrados.size(), 1U);
        QPdfDocument documento;
        const auto caminho = CaminhoDoSistema(mesa.Janelas->Mostrados.at(0));
        EXPECT_EQ(documento.load(QString::fromStdString(caminho.string())), QPdfDocument::Error::None);
        EXPECT_EQ(documento.pageCount(), 1);
        return documento.getAllText(0).text().simplified().toStdString();
    }

    Ref<IRelatorios> relatorios = mesa.Host->CriaRelatorios();
};

TEST_F(RelatoriosMesaTeste, Imprimir_ByName_ShowsNameParametersAndRows)
{
    relatorios->DefineCurrentRecordSet(Novo<Cursor>());
    EXPECT_TRUE(
        Imprime(std::string("Equipamentos ativos"), {"Município: Porto Alegre", "Vencidas <até> hoje & ontem"}));
    EXPECT_EQ(TextoMostrado(),
              "Equipamentos ativos Município: Porto Alegre Vencidas <até> hoje & ontem Registros: 37 1");
}

TEST_F(RelatoriosMesaTeste, Imprimir_WithoutData_SaysNothingOfRows)
{
    relatorios->DefineCurrentRecordSet(Novo<Cursor>());
    relatorios->DefineCurrentRecordSet(nullptr);
    EXPECT_TRUE(Imprime(std::string("Resumo")));
    EXPECT_EQ(TextoMostrado(), "Resumo 1");
}

TEST_F(RelatoriosMesaTeste, ImprimirDesigner_OfAnObject_ShowsThePage)
{
    EXPECT_TRUE(Imprime(Valor(Ref<Objeto>(Novo<Cursor>())), {"Cliente: Autoridade Municipal de Trânsito"}));
    EXPECT_EQ(TextoMostrado(), "Relatório Cliente: Autoridade Municipal de Trânsito 1");
}

TEST_F(RelatoriosMesaTeste, ImprimirRelatorio_OfTheModule_ReachesTheViewerAndAnswersFalse)
{
    const auto geral = Loga("ana");
    std::vector<std::string> linhas = {"Um", "Dois"};
    EXPECT_FALSE(geral->Impressao.ImprimirRelatorio(std::string("Aferições"), linhas, false, 0, false, nullptr, "",
                                                    nullptr, Novo<Cursor>()));
    EXPECT_EQ(TextoMostrado(), "Aferições Um Dois Registros: 37 1");
    geral->Encerra();
}

} // namespace
