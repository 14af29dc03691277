#include "limits/frmLimitesDif.h"

#include "host/DiaEspecificoED.h"
#include "host/LimiteDifED.h"
#include "shell/ModGeral.h"
#include "tests/support/VarreduraRegistro.h"

#include <cstdint>
#include <string>

namespace {

constexpr std::int16_t Limite = 1;
constexpr std::int16_t DiaEspecifico = 2;
constexpr std::int16_t HorarioProibido = 3;

// One kind in its window: a row more, which is at first incomplete, or two of a kind that has days; the last one
// edited, shown, deactivated.
template <std::int16_t Tipo> class JornadaDoTipo : public JornadaComRegistro {
  public:
    explicit JornadaDoTipo(HostRoteirizado &host) : JornadaComRegistro(host)
    {
        const std::string descr[] = {"", "Limite Diferenciado", "Dia Específico", "Horário Proibido"};
        Responde("Confirma a exclusão deste " + descr[Tipo] + "?", true);
        NoModal("frmLimitesDif", [this](PessoaNaTela &p) { Trabalha(p); });
        NoModal("frmLimitesDifDetalhes", [this](PessoaNaTela &p) {
            if (!m_Edita) {
                Inclui(p);
                return;
            }
            p.Preenche("ztmHFinal", "2100");
            p.Clica("ztCmdOK");
        });
        LogaComServicos();
    }

    void Percorre() override
    {
        m_Visto = "";
        m_Edita = false;
        Passo([] { FormCompartilhado<frmLimitesDif>()->CarregaForm("RAD-01", 12, Tipo); });
    }

    void ConfereSucesso() override
    {
        EXPECT_EQ(m_Visto, Tipo == DiaEspecifico ? "0110" : "0221");
        EXPECT_EQ(Ultimo(), "2100 2");
        EXPECT_EQ(m_Host.Tela->NroForms(), 0);
    }

  private:
    void Trabalha(PessoaNaTela &p)
    {
        const auto linhas = [&] { return p.Linhas("ztLista"); };
        const std::int32_t antes = linhas();
        const auto anota = [&] { m_Visto += std::to_string(linhas() - antes); };
        anota();
        p.EscolheMenu("ztLista", "mnuZTLObjNovo");
        anota();
        m_Edita = true;
        const auto comanda = [&](const std::string &comando) {
            if (linhas() > 0) { // none after a list that could not be read
                p.ClicaLinha("ztLista", linhas());
                p.EscolheMenu("ztLista", comando);
            }
        };
        comanda("mnuZTLObjEditar");
        anota();
        comanda("mnuZTLObjDetalhes");
        if (!Parou()) {
            NaJanela("frmLimitesDifDetalhes", [](PessoaNaTela &detalhes) { detalhes.Clica("cmdCancelar"); });
        }
        comanda("mnuZTLObjExcluir");
        anota();
        p.Fecha();
    }

    static void Inclui(PessoaNaTela &p)
    {
        if (Tipo == DiaEspecifico) {
            p.Preenche("ztdData", "25122026");
        } else {
            p.Marca("chkDia", 2);
            p.Marca("chkDia", 8);
        }
        if (Tipo != HorarioProibido) {
            p.Preenche("txtVelocPerm", "60");
        }
        p.Preenche("ztmHInicial", "0700");
        p.Clica("ztCmdOK"); // without an end
        p.Preenche("ztmHFinal", "0900");
        p.Clica("ztCmdOK");
    }

    // End and state of the row that was stored last.
    std::string Ultimo() const
    {
        const auto texto = [](const auto &registros) {
            const auto &ultimo = *registros.rbegin()->second;
            return std::to_string(ultimo.HoraFim.Valor()) + " " + std::to_string(ultimo.Ativo.Valor());
        };
        return Tipo == DiaEspecifico ? texto(m_Registro.Dias()) : texto(m_Registro.Limites());
    }

    std::string m_Visto;
    bool m_Edita = false;
};

// The tree of a kind: its list, the way to read a row, to save it, with the operations for a new and a changed one, and
// to deactivate it.
std::string Arvore(const std::string &lista, const std::string &busca, const std::string &consulta,
                   const std::string &salva, const std::string &inclui, const std::string &altera,
                   const std::string &exclui, const std::string &desativa)
{
    const auto grava = [&](const std::string &operacao) {
        return R"(
          pessoa
            frmLimitesDifDetalhes.ztCmdOk_Click
              frmLimitesDifDetalhes.)" +
               salva + R"(
                - Plataforma.Ponteiro := 11
                @comando )" +
               operacao + R"(
                - Plataforma.Ponteiro := 0
              - Plataforma.Descarrega(frmLimitesDifDetalhes)
            @ativa
        COLimiteDif.Atualizar
          @)" + lista;
    };
    const std::string le = R"(
          @controles frmLimitesDifDetalhes
          frmLimitesDifDetalhes.MontaTela
            frmLimitesDifDetalhes.)" +
                           busca + R"(
              - Plataforma.Ponteiro := 11
              @remota )" + consulta +
                           R"(
              - Plataforma.Ponteiro := 0
)";
    return R"(
pessoa
  @controles frmLimitesDif
  COLimiteDif.Carrega
    @permissoesDosLimites
    @)" + lista +
           R"(
  @FormShowModal frmLimitesDif
  pessoa
    COLimiteDif.m_ZtList_ItemMenuClicado
      COLimiteDif.Novo
        frmLimitesDifDetalhes.CarregaInclusao
          @controles frmLimitesDifDetalhes
          @FormShowModal frmLimitesDifDetalhes
          pessoa
            frmLimitesDifDetalhes.ztCmdOk_ValidaClick
              frmLimitesDifDetalhes.ValidouOk
                - goMensagem.ExibeMensagem("Informe a hora final.", ztmHFinal)
)" + grava(inclui) +
           R"(
  pessoa
    COLimiteDif.m_ZtList_ItemMenuClicado
      COLimiteDif.Editar
        frmLimitesDifDetalhes.CarregaEdicao
)" + le + R"(
          @FormShowModal frmLimitesDifDetalhes
)" + grava(altera) +
           R"(
  pessoa
    COLimiteDif.m_ZtList_ItemMenuClicado
      COLimiteDif.Detalhes
        frmLimitesDifDetalhes.CarregaDetalhes
)" + le + R"(
          - goMensagem.PreparaDetalhes(frmLimitesDifDetalhes)
          @FormShow frmLimitesDifDetalhes
  pessoa
    - Plataforma.Descarrega(frmLimitesDifDetalhes)
  pessoa
    COLimiteDif.m_ZtList_AntesDeRemoverItem
      COLimiteDif.Excluir
        - Plataforma.PerguntaSimNao("Confirma a exclusão deste
        COLimiteDif.)" +
           exclui + R"(
          @comando )" +
           desativa + R"(
          - goMensagem.ExibeMensagem(
)";
}

TEST(COLimiteDifVarredura, Limits_NewEditedShownAndDeactivated_SurviveEveryFault)
{
    auto varredura = VarreduraDe<JornadaDoTipo<Limite>>(
        Arvore("listaLimites", "BuscaLimitesDif", "consultaSimplesLimiteDif", "SalvaLimiteDif", "alteraListaLimitesDif",
               "alteraListaLimitesDif", "ExcluirLimiteDif", "desativaLimiteDif"));
    varredura.Segue();
    EXPECT_GE(varredura.Roda(), 376);
}

TEST(COLimiteDifVarredura, SpecificDays_NewEditedShownAndDeactivated_SurviveEveryFault)
{
    auto varredura = VarreduraDe<JornadaDoTipo<DiaEspecifico>>(
        Arvore("listaDias", "BuscaDiasEspec", "consultaSimplesDiaEspecifico", "SalvaDiaEspec", "adicionaDiaEspecifico",
               "alteraDiaEspecifico", "ExcluirDiaEspec", "desativaDiaEspecifico"));
    varredura.Segue();
    EXPECT_GE(varredura.Roda(), 376);
}

TEST(COLimiteDifVarredura, ProhibitedHours_NewEditedShownAndDeactivated_SurviveEveryFault)
{
    auto varredura = VarreduraDe<JornadaDoTipo<HorarioProibido>>(
        Arvore("listaLimites", "BuscaLimitesDif", "consultaSimplesLimiteDif", "SalvaLimiteDif", "alteraListaLimitesDif",
               "alteraListaLimitesDif", "ExcluirLimiteDif", "desativaLimiteDif"));
    varredura.Segue();
    EXPECT_GE(varredura.Roda(), 376);
}

} // namespace
