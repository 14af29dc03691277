#include "tests/support/Varredura.h"

#include "shell/ModGeral.h"
#include "tests/support/VarreduraCaminho.h"
#include "tests/support/VarreduraProcedimentos.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using Textos = std::vector<std::string>;

TEST(VarreduraProcedimentos, DesfechoDe_OfEachKind_TellsItsTextAsItIs)
{
    EXPECT_EQ(DesfechoDe("clsEquipto.Carrega")->Texto, " < clsEquipto.Carrega");
    EXPECT_EQ(DesfechoDe("COLimiteDif.Carrega")->Texto, " < COSensores.Carrega");
    EXPECT_EQ(DesfechoDe("Especifica.ClickMenu")->Texto, "Especifica - ClickMenu");
    EXPECT_EQ(DesfechoDe("COEquipamentos.m_ZtList_ItemMenuClicado(x)")->Texto,
              "COEquipamentos.m_ZtList_ItemMenuClicado(x)");
    EXPECT_EQ(DesfechoDe("COSensores.Colunas (Property Get)")->Texto, " < COSensores.Colunas (Property Get)");
    EXPECT_EQ(DesfechoDe("Geral.FormAtivado")->Tipo, Desfecho::Fim::Ignora);
    EXPECT_FALSE(DesfechoDe("Ninguem.Nada"));
}

TEST(VarreduraCaminho, Confronta_OfATreeWithRepetitionsAndFragments_TellsTheEndOfEachCall)
{
    const VarreduraCaminho caminho(R"(
pessoa
  frmEquipDetalhes.CarregaEdicao
    frmEquipDetalhes.MontaTela
      @comando consulta
      - Host.Controles|Controles.Cria *
    Geral.FormAtivado > - cGlobal.x
pessoa > clsEquipto.Salva
  - b
)");
    EXPECT_EQ(caminho.Defeitos(), Textos{});
    std::string motivo;
    const auto destinos =
        caminho.Confronta({"Gateway.CriaObjetoRN(\"VOR\")", "EquiptoRN.ExecutaMetodo(\"consulta\", x)",
                           "Host.Controles", "Controles.Cria", "Controles.Cria", "cGlobal.x(1)", "b := 1"},
                          motivo);
    ASSERT_TRUE(destinos) << motivo;
    ASSERT_EQ(destinos->size(), 7U);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ((*destinos)[i].Caudas, " < frmEquipDetalhes.MontaTela");
        EXPECT_EQ((*destinos)[i].Contexto, "frmEquipDetalhes.CarregaEdicao");
    }
    EXPECT_TRUE((*destinos)[5].Ignorada);
    EXPECT_EQ((*destinos)[6].Caudas, " < clsEquipto.Salva");
    EXPECT_EQ((*destinos)[6].Contexto, "");
}

TEST(VarreduraCaminho, Confronta_OfAnotherTrail_SaysWhereItDiffers)
{
    const VarreduraCaminho caminho("- a\n- b\n");
    std::string motivo;
    EXPECT_FALSE(caminho.Confronta({"a()", "c()"}, motivo));
    EXPECT_EQ(motivo, "Chamada 2: esperada b; vieram:\n  c()");
    EXPECT_FALSE(caminho.Confronta({"a()", "b()", "c()"}, motivo));
    EXPECT_EQ(motivo, "Chamada 3: esperada nenhuma; vieram:\n  c()");
    EXPECT_FALSE(caminho.Confronta({"a()"}, motivo));
    EXPECT_FALSE(caminho.Confronta({"ab()", "b()"}, motivo));
}

TEST(VarreduraCaminho, Defeitos_OfAWrongTree_AreTold)
{
    const VarreduraCaminho caminho("Ninguem.Nada\n  @nenhum\n      - a\n");
    EXPECT_EQ(caminho.Defeitos(),
              (Textos{"Procedimento desconhecido: Ninguem.Nada", "Trecho desconhecido: @nenhum", "Recuo demais: - a"}));
}

// One remote call that changes the registry, and a box of its own for its faults.
class JornadaDeUmaChamada : public Jornada {
  public:
    explicit JornadaDeUmaChamada(HostRoteirizado &host) : Jornada(host)
    {
        host.Servico("EquiptoRN", "altera", [this](const auto &) {
            ++m_Guardadas;
            return Resposta();
        });
        m_Geral = Novo<Geral>();
        m_Geral->Parametros(host.FormMDI, host.ActBar, host.Relatorios, host.Ajuda, nullptr, host.oAppEXE);
        m_Geral->Logon(host.objMTM, host.objSCA, "");
        goGateway();
    }

    void Percorre() override
    {
        const std::int32_t antes = m_Guardadas;
        Passo([&] {
            try {
                Salva();
            } catch (...) {
                m_Guardadas += Erra(Defeito::GravaPelaMetade) ? 1 : 0;
                const std::string contexto = Erra(Defeito::OutroContexto) ? "ztCmdAplicar_Click" : "ztCmdOk_Click";
                gSubMostraErro("frmEquipDetalhes." + contexto);
                if (Erra(Defeito::MostraDeNovo)) {
                    gSubMostraErro("frmEquipDetalhes." + contexto);
                }
                if (Erra(Defeito::EsqueceAmpulheta)) {
                    m_Host.Tela->DefinePonteiro(PonteiroAmpulheta);
                }
                if (Erra(Defeito::EsqueceMemoria)) {
                    Esquecidas.push_back(std::make_unique<std::string>());
                }
                if (Erra(Defeito::GuardaObjeto)) {
                    Guardado = m_Host.CriaMensagem();
                }
            }
        });
        m_Salvou = m_Guardadas == antes + 1;
        if (Erra(Defeito::Teimosa) && !Parou() && m_Host.FalhasDisparadas() > 0) {
            m_Salvou = false;
        }
    }
    void ConfereSucesso() override { EXPECT_TRUE(m_Salvou) << "não salvou"; }
    std::string Estado() const override { return std::to_string(m_Guardadas); }

    // What it does wrong after a fault.
    enum class Defeito {
        Nenhum,
        OutroContexto,
        GravaPelaMetade,
        Teimosa,
        MostraDeNovo,
        EsqueceAmpulheta,
        EsqueceMemoria,
        GuardaObjeto
    };
    static inline Defeito Qual = Defeito::Nenhum;
    static inline std::vector<std::unique_ptr<std::string>> Esquecidas;
    static inline Ref<IMensagem> Guardado;

  private:
    static void Salva()
    try {
        auto pedido = Novo<EquiptoED>();
        ComandaRemoto([] { return goGateway(); }, "EquiptoRN", "altera", [&] { return pedido; });
    } catch (...) {
        PassaFalha(" < clsEquipto.Salva");
    }
    static bool Erra(Defeito defeito) { return Qual == defeito; }

    Ref<Geral> m_Geral;
    std::int32_t m_Guardadas = 0;
    bool m_Salvou = false;
};

constexpr const char *ArvoreCerta = R"(
frmEquipDetalhes.ztCmdOk_Click
  clsEquipto.Salva
    @comando altera
)";

TEST(Varredura, Roda_OfAJourneyAsInItsTree_CountsFailuresAndRefusals)
{
    auto varredura = VarreduraDe<JornadaDeUmaChamada>(ArvoreCerta);
    testing::internal::CaptureStdout();
    EXPECT_EQ(varredura.Roda(), 3);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "faults survived: 3\n");
    EXPECT_EQ(varredura.Falhas(), 2);
    EXPECT_EQ(varredura.Recusas(), 1);
}

TEST(Varredura, Roda_WithAPersonWhoGoesOn_RunsEachFailureOnceMore)
{
    auto varredura = VarreduraDe<JornadaDeUmaChamada>(ArvoreCerta);
    varredura.Segue();
    testing::internal::CaptureStdout();
    EXPECT_EQ(varredura.Roda(), 5);
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(varredura.Falhas(), 4);
}

// The texts of the failures of a sweep.
std::string FalhasDe(Varredura varredura)
{
    testing::TestPartResultArray resultados;
    {
        const testing::ScopedFakeTestPartResultReporter relator(
            testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &resultados);
        testing::internal::CaptureStdout(); // a failing sweep survives nothing
        varredura.Roda();
        testing::internal::GetCapturedStdout();
    }
    std::string textos;
    for (int i = 0; i < resultados.size(); ++i) {
        textos += resultados.GetTestPartResult(i).message();
    }
    return textos;
}

// Each of these would go unnoticed if the sweep looked less closely.
TEST(Varredura, Roda_OfAJourneyThatIsNotAsItShouldBe_TellsIt)
{
    using Defeito = JornadaDeUmaChamada::Defeito;
    struct {
        const char *Nome;
        const char *Arvore;
        Defeito Qual;
        const char *Texto;
    } const casos[] = {
        {"a tail too few", "frmEquipDetalhes.ztCmdOk_Click\n  @comando altera\n", Defeito::Nenhum, "clsEquipto.Salva"},
        {"another context", ArvoreCerta, Defeito::OutroContexto, "ztCmdAplicar_Click"},
        {"a call that is not in the tree", "clsEquipto.Salva\n  - Gateway.CriaObjetoRN\n", Defeito::Nenhum,
         "esperada nenhuma"},
        {"a record changed in spite of the failure", ArvoreCerta, Defeito::GravaPelaMetade, "Estado()"},
        {"a next try that fails", ArvoreCerta, Defeito::Teimosa, "não salvou"},
        {"a second error box", ArvoreCerta, Defeito::MostraDeNovo, "erros.size()"},
        {"an hourglass that is left", ArvoreCerta, Defeito::EsqueceAmpulheta, "Ponteiro()"},
        {"an object that is kept", ArvoreCerta, Defeito::GuardaObjeto, "Objeto que não foi liberado: goMensagem"},
        {"memory that is kept", ArvoreCerta, Defeito::EsqueceMemoria, "memória que ficou"},
        {"a fault that is expected at the caller but shown", "clsEquipto.Salva\n  @comando altera\n", Defeito::Nenhum,
         "escapadas.size()"},
    };
    for (const auto &caso : casos) {
        JornadaDeUmaChamada::Qual = caso.Qual;
        const std::string falhas = FalhasDe(VarreduraDe<JornadaDeUmaChamada>(caso.Arvore));
        EXPECT_NE(falhas.find(caso.Texto), std::string::npos) << caso.Nome << '\n' << falhas;
        JornadaDeUmaChamada::Qual = Defeito::Nenhum;
        JornadaDeUmaChamada::Esquecidas.clear();
        JornadaDeUmaChamada::Guardado = nullptr;
    }
    auto varredura = VarreduraDe<JornadaDeUmaChamada>(ArvoreCerta);
    varredura.RecusaEmFalha(1, "ZTAVOREQUIP", "x"); // a refusal expected to end in a fault
    EXPECT_NE(FalhasDe(varredura).find("erros.size()"), std::string::npos);
}

} // namespace
