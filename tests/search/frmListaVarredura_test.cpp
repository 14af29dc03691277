#include "search/frmLista.h"

#include "host/AfericaoED.h"
#include "host/SensorED.h"
#include "search/CVorEquip.h"
#include "shell/Especifica.h"
#include "tests/support/VarreduraRegistro.h"

#include <string>
#include <vector>

namespace {

using Textos = std::vector<std::string>;

// Every criterion, a page and the next one, the order of the rows, and a search in vain.
class JornadaDaPesquisa : public JornadaComRegistro {
  public:
    explicit JornadaDaPesquisa(HostRoteirizado &host) : JornadaComRegistro(host)
    {
        host.Clientes.clear();
        for (const char *codigo : {"R100", "R200"}) {
            const Ref<EquiptoED> equipto = EquiptoCalibrado("R", 1, codigo);
            equipto->SubCodigo = std::string("S") + codigo;
            m_Registro.Poe(equipto);
        }
        m_Registro.TamanhoPagina = 1;
        LogaComServicos();
    }

    void Percorre() override
    {
        m_Codigos.clear();
        Passo([&] { EXPECT_TRUE(m_Geral->ClickMenu("mnuModNABEquiptos") || Parou()); });
        NaJanela("frmLista", [&](PessoaNaTela &p) {
            p.Localiza("ztlLista"); // without a client
            p.EscolheCliente("ztCliente", "Autoridade das Estradas de Rodagem", "");
            p.Escolhe("cboCriterio", "Código");
            p.Localiza("ztlLista"); // without a code
            p.Preenche("txtCodEquip", "R200");
            Procura(p);
            p.Escolhe("cboCriterio", "Subcódigo");
            p.Preenche("txtCodEquip", "");
            p.Localiza("ztlLista"); // without a subcode
            p.Preenche("txtCodEquip", "SR100");
            Procura(p);
            p.Escolhe("cboCriterio", "Todos");
            p.Escolhe("cboTipoAgente", "Fixo");
            p.Escolhe("cboTipoEquipto", "Radar Fotográfico");
            Procura(p);
            p.PedeMais("ztlLista");
            p.OrdenaPor("ztlLista", 2);
            Anota(p);
            p.Marca("chkInativos");
            Procura(p);
            p.Fecha();
        });
    }

    void ConfereSucesso() override
    {
        EXPECT_EQ(m_Codigos, (Textos{"R200", "R100", "R100", "R100 R200", ""}));
        EXPECT_EQ(m_Host.Avisos().back().Texto, "Não foram encontrados registros para os critérios especificados.");
    }

  private:
    void Procura(PessoaNaTela &p)
    {
        p.Localiza("ztlLista");
        Anota(p);
    }
    void Anota(PessoaNaTela &p)
    {
        std::string codigos;
        for (std::int32_t linha = 1; linha <= p.Linhas("ztlLista"); ++linha) {
            codigos += (linha > 1 ? " " : "") + p.Celula("ztlLista", linha, "Código");
        }
        m_Codigos.push_back(codigos);
    }

    Textos m_Codigos;
};

TEST(frmListaVarredura, Search_ByEachCriterionWithPagesAndOrder_SurvivesEveryFault)
{
    auto varredura = VarreduraDe<JornadaDaPesquisa>(R"(
pessoa
  @abreLista
pessoa
  frmLista.ztlLista_BotaoLocalizarValida
    - ztCliente.Avisa
pessoa
  frmLista.ztlLista_BotaoLocalizarValida
    - goMensagem.ExibeMensagem("Informe o Código do Equipamento!", txtCodEquip)
pessoa
  @localiza
pessoa
  frmLista.ztlLista_BotaoLocalizarValida
    - goMensagem.ExibeMensagem("Informe o Subcódigo do Equipamento!", txtCodEquip)
pessoa
  @localiza
pessoa
  frmLista.cboTipoAgente_Click
    - goDadosVor.PreencheTipoEquip(cboTipoEquipto, 1
pessoa
  @localiza
pessoa
  COEquipamentos.m_ZtList_BotaoClick
    @pagina
pessoa
  frmLista.ztlLista_BotaoLocalizarEnvia
    COEquipamentos.Localizar
      COEquipamentos.LocalizarEquipamentos
        - Plataforma.Ponteiro := 11
        @remota lista2
        - goMensagem.ExibeMensagem("Não foram encontrados registros para os critérios especificados.", Nothing)
        - Plataforma.Ponteiro := 0
)");
    varredura.Segue();
    EXPECT_GE(varredura.Roda(), 153);
}

// A module picks an equipment in the window: one that has no calibration is refused, another one is taken.
class JornadaDaSelecao : public JornadaComRegistro {
  public:
    explicit JornadaDaSelecao(HostRoteirizado &host) : JornadaComRegistro(host)
    {
        host.Clientes = {{1, "Autoridade das Estradas de Rodagem"}};
        m_Registro.Poe(EquiptoCalibrado("A", 3, "A100"));
        const Ref<EquiptoED> sem = EquiptoCalibrado("A", 3, "A200");
        sem->Sensores.Valor()->Item(1)->Afericoes = ListaDe<AfericaoED>();
        m_Registro.Poe(sem);
        NoModal("frmLista", [this](PessoaNaTela &p) {
            if (m_Cancela) {
                p.Clica("cmdCancelar");
                return;
            }
            p.ClicaLinha("ztlLista", 2);
            p.Clica("cmdOK");
            p.ClicaLinha("ztlLista", 1);
            p.Clica("cmdOK");
        });
        LogaComServicos();
    }

    void Percorre() override
    {
        const Ref<CVorEquip> consulta = m_Geral->CEspecifica()->CreateCVorEquip();
        m_Selecionou = false;
        m_Cancela = false;
        Passo([&] { m_Selecionou = consulta->SelecionaEquipamento("", "", DataDe(20, 11, 2026)); });
        EXPECT_EQ(consulta->Codigo(), m_Selecionou ? "A100" : "");
        EXPECT_EQ(consulta->MarcaInmetro(), m_Selecionou ? "456" : "");
        m_Cancela = true;
        Passo([&] { EXPECT_FALSE(consulta->SelecionaEquipamento("A100", "A", {})); });
    }

    void ConfereSucesso() override { EXPECT_TRUE(m_Selecionou); }

  private:
    bool m_Selecionou = false;
    bool m_Cancela = false;
};

TEST(frmListaVarredura, Selection_RefusedThenTakenThenCancelled_SurvivesEveryFault)
{
    const std::string abre = R"(
CVorEquip.SelecionaEquipamento
  COEquipamentos.CarregaSelecao
    frmLista.CarregaForm
      @janelaDaLista
      frmLista.AtualizaFrame
        - ztCliente.CodCliente := 1
        @tiposDaLista
      frmLista.LocalizacaoAutomatica
        frmLista.ztlLista_BotaoLocalizarEnvia
          COEquipamentos.Localizar
            COEquipamentos.LocalizarEquipamentos
              - Plataforma.Ponteiro := 11
              @remota lista2
              @municipio
)";
    auto varredura = VarreduraDe<JornadaDaSelecao>(abre + R"(
              @municipio
              - Plataforma.Ponteiro := 0
      @FormShowModal frmLista
      pessoa
        frmLista.cmdOK_Click
          @vigente
          - goMensagem.ExibeMensagem("Equipamento não possui Aferição Vigente para a data de Infração.", Nothing)
      pessoa
        frmLista.cmdOK_Click
          @vigente
          - Plataforma.Descarrega(frmLista)
)" + abre + R"(
              - Plataforma.Ponteiro := 0
      @FormShowModal frmLista
      pessoa
        frmLista.cmdCancelar_Click
          - Plataforma.Descarrega(frmLista)
)");
    varredura.RecusaEmFalha(2, "ZTAVOREQUIP", "frmLista.cmdOK_Click");
    varredura.RecusaEmFalha(3, "ZTAVOREQUIP", "frmLista.cmdOK_Click");
    varredura.Segue();
    EXPECT_GE(varredura.Roda(), 174);
}

} // namespace
