#include "search/CVorEquip.h"

#include "host/AfericaoED.h"
#include "host/SensorED.h"
#include "shell/Especifica.h"
#include "tests/support/VarreduraRegistro.h"

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
    - MDB.OpenRecordset("         SELECT NroIntEquip     FROM VOREQUIPTO    WHERE ClienteInc = 'Autoridade das Estradas de Rodagem'
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

// A certificate, printed and thrown away.
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
    }

    void ConfereSucesso() override
    {
        EXPECT_TRUE(m_Imprimiu);
        ASSERT_FALSE(m_Host.Visor->Vistos.empty());
        EXPECT_EQ(m_Host.Visor->Vistos.back().Caminho, "C:\\HOST\\TEMP\\~VORAFER12-A1.pdf");
        EXPECT_FALSE(m_Host.Tela->Arquivos.Existe("C:\\HOST\\TEMP\\~VORAFER12-A1.pdf"));
    }

  private:
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
