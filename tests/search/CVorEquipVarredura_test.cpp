#include "search/CVorEquip.h"

#include "host/AfericaoED.h"
#include "host/SensorED.h"
#include "search/CVORPesqEquip.h"
#include "shell/Especifica.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/VarreduraRegistro.h"

#include <functional>
#include <string>

namespace {

// The search by code in its four outcomes.
class JornadaDaBusca : public JornadaComRegistro {
  public:
    explicit JornadaDaBusca(HostRoteirizado &host) : JornadaComRegistro(host)
    {
        m_Registro.Poe(EquiptoCalibrado("A", 3, "A100"));
        const Ref<EquiptoED> sem = EquiptoCalibrado("A", 3, "A200");
        sem->Sensores.Valor()->Item(1)->Afericoes = ListaDe<AfericaoED>();
        m_Registro.Poe(sem);
        LogaComServicos();
    }

    void Percorre() override
    {
        const Ref<CVorEquip> consulta = m_Geral->CEspecifica()->CreateCVorEquip();
        m_Achou = false;
        Passo([&] { EXPECT_FALSE(consulta->BuscaEquipamento("NADA", "A", {})); });
        Passo([&] { EXPECT_FALSE(consulta->BuscaEquipamento("A200", "A", DataDe(20, 11, 2026))); });
        EXPECT_EQ(consulta->NroIntEquip(), 0); // untouched until a success
        Passo([&] { m_Achou = consulta->BuscaEquipamento("a100", "A", {}); });
        EXPECT_EQ(consulta->Codigo(), m_Achou ? "A100" : "");
        EXPECT_EQ(consulta->NroInmetro(), "");
    }

    void ConfereSucesso() override { EXPECT_TRUE(m_Achou); }

  private:
    bool m_Achou = false;
};

TEST(CVorEquipVarredura, Search_ByCodeFoundAndNot_SurvivesEveryFault)
{
    const std::string procura = R"(
pessoa
  CVorEquip.BuscaEquipamento
    - objMTM.ClienteLogado
    - MDB.OpenRecordset("         SELECT NroIntEquip     FROM VOREQUIPTO    WHERE ClienteInc = 'DAER'
    - Cursor.RecordCount
)";
    auto varredura = VarreduraDe<JornadaDaBusca>(procura + R"(
    - Cursor.Close
)" + procura + R"(
    - Cursor.Fields
    - Cursor.Close
    CVorEquip.ConsultaSimplesEquipto
      @remota consultaSimples
    @vigente
    - goMensagem.ExibeMensagem("Equipamento não possui Aferição Vigente para a data de Infração.", Nothing)
)" + procura + R"(
    - Cursor.Fields
    - Cursor.Close
    CVorEquip.ConsultaSimplesEquipto
      @remota consultaSimples
)");
    // The missing equipment is noticed only where it is read, so the one without a calibration goes first.
    varredura.RecusaEmFalha(2, "ZTAVOREQUIP < CVorEquip.BuscaEquipamento", "");
    varredura.RecusaEmFalha(3, "ZTAVOREQUIP < CVorEquip.SetaDadosEquipto < CVorEquip.BuscaEquipamento", "");
    EXPECT_GE(varredura.Roda(), 27);
}

// A certificate, printed and thrown away, and the former services, which refuse whatever happens.
class JornadaDoCertificado : public JornadaComRegistro {
  public:
    explicit JornadaDoCertificado(HostRoteirizado &host) : JornadaComRegistro(host)
    {
        m_Registro.PoeCertificado(12, "A1", "%PDF");
        LogaComServicos();
    }

    void Percorre() override
    {
        const Ref<CVorEquip> consulta = m_Geral->CEspecifica()->CreateCVorEquip();
        m_Imprimiu = false;
        Passo([&] { m_Imprimiu = consulta->ImpCertificadoAfericaoEquipto(12, "A1", "Certificado", true); });
        Passo([&] { consulta->LimpaArqTemp(); });
        Recusas();
    }

    void ConfereSucesso() override
    {
        EXPECT_TRUE(m_Imprimiu);
        ASSERT_FALSE(m_Host.Visor->Vistos.empty());
        EXPECT_EQ(m_Host.Visor->Vistos.back().Caminho, "C:\\HOST\\TEMP\\~VORAFER12-A1.pdf");
        EXPECT_FALSE(m_Host.Tela->Arquivos.Existe("C:\\HOST\\TEMP\\~VORAFER12-A1.pdf"));
    }

  private:
    void Recusas() const
    {
        const Ref<Especifica> especifica = m_Geral->CEspecifica();
        const Ref<CVORPesqEquip> antiga = especifica->CreateCVORPesqEquip();
        std::int32_t nro = 0;
        std::string codigo;
        std::string modelo;
        Data data;
        const auto recusa = [](const std::function<void()> &chamada, const std::string &fonte,
                               const std::string &metodo) {
            const Falha falha = FalhaLancada(chamada);
            EXPECT_EQ(falha.Numero, -1);
            EXPECT_EQ(falha.Fonte, fonte);
            EXPECT_EQ(falha.Descricao, "AVISO: Método " + metodo + " depreciado");
        };
        const std::string classe = "ZTAVOREQUIP.CVORPesqEquip";
        recusa([&] { antiga->CarregaPesqEquip(nro, codigo, modelo); }, classe, "CarregaPesqEquip");
        recusa([&] { antiga->CarregaPesqEquip2(nro, codigo, modelo); }, classe, "CarregaPesqEquip2");
        recusa([&] { antiga->CarregaPesqEquip3(nro, codigo, modelo); }, classe, "CarregaPesqEquip3");
        recusa([&] { antiga->BuscaEquipto(nro, codigo, modelo); }, classe, "BuscaEquipto");
        recusa([&] { antiga->ConsultaAfericaoVigente(1, codigo, modelo, data, {}); }, classe,
               "ConsultaAfericaoVigente");
        recusa([&] { especifica->ImprimeAfericaoVigenteEquipto(1); }, "ZTAVOREQUIP.Especifica",
               "ImprimeAfericaoVigenteEquipto");
        EXPECT_EQ(m_Host.Tela->Ponteiro(), PonteiroNormal);
    }

    bool m_Imprimiu = false;
};

TEST(CVorEquipVarredura, Certificate_PrintedAndCleared_SurvivesEveryFault)
{
    auto varredura = VarreduraDe<JornadaDoCertificado>(R"(
pessoa
  - Gateway.CriaObjetoRN
  - RelatorioRN.ExecutaMetodo("consultaRelatorioRVOR011"
  - RelatorioRN.ObtemRetorno
  - Host.CriaDiretorios
  - goDiretorios.ObtemDiretorio(99, "")
  CVorEquip.GravaNoArquivo
    - Plataforma.GravaArquivo("C:\HOST\TEMP\~VORAFER12-A1.pdf"
    - goMensagem.TextoParaBytes
    - Plataforma.GravaArquivo("C:\HOST\TEMP\~VORAFER12-A1.pdf"
  - Host.CriaDocumentoPDF
  - DocumentoPDF.ArquivoPDF := "C:\HOST\TEMP\~VORAFER12-A1.pdf"
  - DocumentoPDF.Mostra(False)
pessoa
  CVorEquip.LimpaArqTemp
    - goDiretorios.ObtemDiretorio(99, "")
    - Plataforma.PrimeiroArquivo("C:\HOST\TEMP\~VORAFER*.pdf")
    - Plataforma.ApagaArquivo("C:\HOST\TEMP\~VORAFER12-A1.pdf")
    - Plataforma.ProximoArquivo
)");
    EXPECT_GE(varredura.Roda(), 16);
}

} // namespace
