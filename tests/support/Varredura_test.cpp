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
    Geral.FormAtivado
      - cGlobal.x
pessoa
  clsEquipto.Salva
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
                MeioGrava();
                gSubMostraErro(Contexto);
                if (MostraDeNovo) {
                    gSubMostraErro(Contexto);
                }
                if (EsqueceAmpulheta) {
                    m_Host.Tela->DefinePonteiro(PonteiroAmpulheta);
                }
                if (EsqueceMemoria) {
                    Esquecidas.push_back(std::make_unique<std::string>());
                }
                if (GuardaObjeto) {
                    Guardado = m_Host.CriaMensagem();
                }
            }
        });
        m_Salvou = m_Guardadas == antes + 1;
        if (Teimosa && !Parou() && m_Host.FalhasDisparadas() > 0) {
            m_Salvou = false;
        }
    }
    void ConfereSucesso() override { EXPECT_TRUE(m_Salvou) << "não salvou"; }
    std::string Estado() const override { return std::to_string(m_Guardadas); }

    static inline const char *Contexto = "frmEquipDetalhes.ztCmdOk_Click";
    static inline bool GravaPelaMetade = false;
    static inline bool Teimosa = false;
    static inline bool MostraDeNovo = false;
    static inline bool EsqueceAmpulheta = false;
    static inline bool EsqueceMemoria = false;
    static inline bool GuardaObjeto = false;
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
    void MeioGrava()
    {
        if (GravaPelaMetade) {
            ++m_Guardadas;
        }
    }

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

// Each of these would go unnoticed if the sweep looked less closely.
class VarreduraQueFalha : public testing::Test {
  protected:
    void TearDown() override
    {
        JornadaDeUmaChamada::Contexto = "frmEquipDetalhes.ztCmdOk_Click";
        JornadaDeUmaChamada::GravaPelaMetade = false;
        JornadaDeUmaChamada::Teimosa = false;
        JornadaDeUmaChamada::MostraDeNovo = false;
        JornadaDeUmaChamada::EsqueceAmpulheta = false;
        JornadaDeUmaChamada::EsqueceMemoria = false;
        JornadaDeUmaChamada::Esquecidas.clear();
        JornadaDeUmaChamada::GuardaObjeto = false;
        JornadaDeUmaChamada::Guardado = nullptr;
    }
    // The texts of the failures of a sweep.
    static std::string Falhas(const std::string &arvore) { return Falhas(VarreduraDe<JornadaDeUmaChamada>(arvore)); }
    static std::string Falhas(Varredura varredura)
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
};

TEST_F(VarreduraQueFalha, ATailTooFew_IsTold)
{
    EXPECT_NE(Falhas("frmEquipDetalhes.ztCmdOk_Click\n  @comando altera\n").find("clsEquipto.Salva"),
              std::string::npos);
}

TEST_F(VarreduraQueFalha, AnotherContext_IsTold)
{
    JornadaDeUmaChamada::Contexto = "frmEquipDetalhes.ztCmdAplicar_Click";
    EXPECT_NE(Falhas(ArvoreCerta).find("ztCmdAplicar_Click"), std::string::npos);
}

TEST_F(VarreduraQueFalha, ACallThatIsNotInTheTree_IsTold)
{
    EXPECT_NE(Falhas("clsEquipto.Salva\n  - Gateway.CriaObjetoRN\n").find("esperada nenhuma"), std::string::npos);
}

TEST_F(VarreduraQueFalha, ARecordChangedInSpiteOfTheFailure_IsTold)
{
    JornadaDeUmaChamada::GravaPelaMetade = true;
    EXPECT_NE(Falhas(ArvoreCerta).find("Estado()"), std::string::npos);
}

TEST_F(VarreduraQueFalha, ANextTryThatFails_IsTold)
{
    JornadaDeUmaChamada::Teimosa = true;
    EXPECT_NE(Falhas(ArvoreCerta).find("não salvou"), std::string::npos);
}

TEST_F(VarreduraQueFalha, ASecondErrorBox_IsTold)
{
    JornadaDeUmaChamada::MostraDeNovo = true;
    EXPECT_NE(Falhas(ArvoreCerta).find("erros.size()"), std::string::npos);
}

TEST_F(VarreduraQueFalha, AnHourglassThatIsLeft_IsTold)
{
    JornadaDeUmaChamada::EsqueceAmpulheta = true;
    EXPECT_NE(Falhas(ArvoreCerta).find("Ponteiro()"), std::string::npos);
}

TEST_F(VarreduraQueFalha, AnObjectThatIsKept_IsTold)
{
    JornadaDeUmaChamada::GuardaObjeto = true;
    EXPECT_NE(Falhas(ArvoreCerta).find("Objeto que não foi liberado: goMensagem"), std::string::npos);
}

TEST_F(VarreduraQueFalha, MemoryThatIsKept_IsTold)
{
    JornadaDeUmaChamada::EsqueceMemoria = true;
    EXPECT_NE(Falhas(ArvoreCerta).find("memória que ficou"), std::string::npos);
}

TEST_F(VarreduraQueFalha, AFaultThatIsExpectedAtTheCallerButShown_IsTold)
{
    EXPECT_NE(Falhas("clsEquipto.Salva\n  @comando altera\n").find("escapadas.size()"), std::string::npos);
}

TEST_F(VarreduraQueFalha, ARefusalExpectedToEndInAFault_IsTold)
{
    auto varredura = VarreduraDe<JornadaDeUmaChamada>(ArvoreCerta);
    varredura.RecusaEmFalha(1, "ZTAVOREQUIP", "x");
    EXPECT_NE(Falhas(varredura).find("erros.size()"), std::string::npos);
}

} // namespace
