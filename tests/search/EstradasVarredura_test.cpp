#include "host/AfericaoED.h"
#include "host/SensorED.h"
#include "search/CVorEquip.h"
#include "shell/Especifica.h"
#include "tests/support/ArquivoIgual.h"
#include "tests/support/Estradas.h"
#include "tests/support/HostTeste.h"
#include "tests/support/RegistroEmMemoria.h"
#include "tests/support/Varredura.h"
#include "tests/support/VarreduraRegistro.h"

// The two ways through the whole module, by the person's face of the controls alone: undisturbed, with every call that
// the host gets, and with everything on the way failing once.

namespace {

class JornadaEstrada : public JornadaComRegistro {
  public:
    explicit JornadaEstrada(HostRoteirizado &host) : JornadaComRegistro(host)
    {
        host.Clientes = {{1, "Autoridade das Estradas de Rodagem"}, {2, "Autoridade das Estradas de Rodagem"}};
        host.Tela->Arquivos.Poe("C:\\HOST\\LAYOUTS\\PADRAO.LAY", {});
    }
};

class EstradasTeste : public HostTeste {
  protected:
    template <class Estrada> void Percorre(const std::string &registro)
    {
        Estrada estrada(*host);
        host->LimpaRegistro();
        estrada.Comeca({});
        estrada.Percorre();
        EXPECT_TRUE(estrada.Escapadas().empty());
        estrada.ConfereSucesso();
        EXPECT_TRUE(ArquivoIgual(host->Registro(), registro));
    }
};

class EstradaDoEquipamento : public JornadaEstrada {
  public:
    explicit EstradaDoEquipamento(HostRoteirizado &host) : JornadaEstrada(host)
    {
        m_NroIntEquip = m_Registro.Poe(EquiptoCalibrado("R", 2, "R100"));
        Aceita(m_Percurso, "frmLista");
        LogaGeral();
    }

    void Percorre() override
    {
        const Ref<EquiptoED> guardado = m_Registro.Equipamento(m_NroIntEquip);
        guardado->Descricao = "Radar da entrada";
        guardado->Sensores.Valor()->Item(1)->LocalInfr = "Rua A";
        Passo([&] { EXPECT_TRUE(m_Geral->ClickMenu("mnuModVOREquiptos") || Parou()); });
        NaJanela("frmLista", m_Percurso.Janelas.at("frmLista"));
    }

    void ConfereSucesso() override
    {
        const Ref<EquiptoED> guardado = m_Registro.Equipamento(m_NroIntEquip);
        EXPECT_EQ(m_NaLista, "Radar da saída");
        EXPECT_EQ(guardado->Descricao.Valor(), "Radar da saída");
        EXPECT_EQ(guardado->Sensores.Valor()->Item(1)->LocalInfr.Valor(), "Rua B");
        EXPECT_EQ(m_Host.Tela->FormsAbertos("frmLista").size(), 0U);
    }

  private:
    std::int32_t m_NroIntEquip;
    std::string m_NaLista;
    const Percurso m_Percurso = EstradaDeUmEquipamento(m_NaLista);
};

TEST_F(EstradasTeste, Equipment_FromTheMenuToTheSave_MakesTheseCalls)
{
    Percorre<EstradaDoEquipamento>("tests/search/dados/EstradaDoEquipamento.txt");
}

TEST(EstradasVarredura, Equipment_FromTheMenuToTheSave_SurvivesEveryFault)
{
    auto varredura = VarreduraDe<EstradaDoEquipamento>(R"(
pessoa
  Geral.ClickMenu
    Especifica.ClickMenu
      COEquipamentos.CarregaJanela
        frmLista.CarregaForm
          @janelaDaLista
          frmLista.AtualizaFrame
            @dadosVor
            - goDadosVor.ObtemOrgao
            - Orgao.CodCliente
            - ztCliente.CodCliente := 2
            @tiposDaLista
          @FormShow frmLista
          - Plataforma.ProcessaMensagens
          @ativa
pessoa
  frmLista.ztlLista_BotaoLocalizarEnvia
    COEquipamentos.Localizar
      COEquipamentos.LocalizarEquipamentos
        - Plataforma.Ponteiro := 11
        @gateway
        @remota lista2
        Generico.gFunBuscaDescrMunic
          - TrataBD.AbreZTBanco(99)
          - MDB.OpenRecordset("SELECT * FROM Municipio WHERE COD_MUNIC = 120"
          @linhas
        - Plataforma.Ponteiro := 0
pessoa
  COEquipamentos.m_ZtList_ItemMenuClicado(mnuZTLObjEditar)
    COEquipamentos.Editar
      frmEquipDetalhes.CarregaEdicao
        @montaEquipto
        @FormShowModal frmEquipDetalhes
        @paginaSensores
        pessoa
          COSensores.ItemMenuClicado
            COSensores.Editar
              frmEquipSensores.CarregaEdicao
                @controles frmEquipSensores
                @FormShowModal frmEquipSensores
                pessoa
                  frmEquipSensores.cmdOK_Click
                    - Plataforma.Descarrega(frmEquipSensores)
                @ativa
              @listaSensores
        @okDoEquipto
      @tabelaAlterada
      @pagina
)");
    varredura.Segue();
    EXPECT_GE(varredura.Roda(), 360);
}

// A module of the host asks for an equipment, by the window and by its code.
class EstradaDaConsulta : public JornadaEstrada {
  public:
    explicit EstradaDaConsulta(HostRoteirizado &host) : JornadaEstrada(host)
    {
        m_Registro.Poe(EquiptoCalibrado("A", 3, "A200"));
        NoModal("frmLista", [](PessoaNaTela &p) {
            p.ClicaLinha("ztlLista", 1);
            p.Clica("cmdOK");
        });
        LogaGeral();
    }

    void Percorre() override
    {
        const Ref<CVorEquip> consulta = m_Geral->CEspecifica()->CreateCVorEquip();
        m_Selecionou = false;
        m_Buscou = false;
        Passo([&] { m_Selecionou = consulta->SelecionaEquipamento("A200", "A", DataDe(20, 11, 2026)); });
        // Cleared first, and written only by an answer.
        EXPECT_EQ(consulta->Codigo(), m_Selecionou ? "A200" : "");
        EXPECT_EQ(consulta->NroInmetro(), m_Selecionou ? "123" : "");
        const Ref<CVorEquip> outra = m_Geral->CEspecifica()->CreateCVorEquip();
        Passo([&] { m_Buscou = outra->BuscaEquipamento("a200", "", DataDe(20, 11, 2026)); });
        EXPECT_EQ(outra->NroIntEquip(), m_Buscou ? 1 : 0);
        EXPECT_EQ(outra->MarcaInmetro(), m_Buscou ? "456" : "");
    }

    void ConfereSucesso() override
    {
        EXPECT_TRUE(m_Selecionou);
        EXPECT_TRUE(m_Buscou);
    }

  private:
    bool m_Selecionou = false;
    bool m_Buscou = false;
};

TEST_F(EstradasTeste, Query_FromAnotherModule_MakesTheseCalls)
{
    Percorre<EstradaDaConsulta>("tests/search/dados/EstradaDaConsulta.txt");
}

TEST(EstradasVarredura, Query_FromAnotherModule_SurvivesEveryFault)
{
    auto varredura = VarreduraDe<EstradaDaConsulta>(R"(
pessoa
  CVorEquip.SelecionaEquipamento
    COEquipamentos.CarregaSelecao
      frmLista.CarregaForm
        @janelaDaLista
        frmLista.AtualizaFrame
          - ztCliente.CodCliente := 1
          @dadosVor
          @tiposDaLista
        frmLista.LocalizacaoAutomatica
          frmLista.ztlLista_BotaoLocalizarEnvia
            COEquipamentos.Localizar
              COEquipamentos.LocalizarEquipamentos
                - Plataforma.Ponteiro := 11
                @gateway
                @remota lista2
                Generico.gFunBuscaDescrMunic
                  - TrataBD.AbreZTBanco(99)
                  - MDB.OpenRecordset("SELECT * FROM Municipio WHERE COD_MUNIC = 120"
                  @linhas
                - Plataforma.Ponteiro := 0
        @FormShowModal frmLista
        pessoa
          frmLista.cmdOK_Click
            @vigente
            - Plataforma.Descarrega(frmLista)
pessoa
  CVorEquip.BuscaEquipamento
    - objMTM.ClienteLogado
    - MDB.OpenRecordset("         SELECT NroIntEquip     FROM VOREQUIPTO
    - Cursor.RecordCount
    - Cursor.Fields
    - Cursor.Close
    CVorEquip.ConsultaSimplesEquipto
      @remota consultaSimples
    @vigente
)");
    // A missing record is a fault for who reads it: the window tells it, the search by code passes it on.
    varredura.RecusaEmFalha(2, "ZTAVOREQUIP", "frmLista.cmdOK_Click");
    varredura.RecusaEmFalha(3, "ZTAVOREQUIP < CVorEquip.SetaDadosEquipto < CVorEquip.BuscaEquipamento", "");
    varredura.RecusaEmFalha(4, "ZTAVOREQUIP < CVorEquip.BuscaEquipamento", "");
    varredura.Segue();
    EXPECT_GE(varredura.Roda(), 124);
}

} // namespace
