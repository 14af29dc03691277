#include "limits/frmLimitesDif.h"

#include "host/DiaEspecificoED.h"
#include "host/LimiteDifED.h"
#include "shell/ModGeral.h"
#include "tests/limits/Especies.h"
#include "tests/support/VarreduraRegistro.h"

#include <cstdint>
#include <memory>
#include <string>

namespace {

// One kind in its window: a row more, which is at first incomplete, or two of a kind that has days; the last one
// edited, shown, deactivated.
class JornadaDaEspecie : public JornadaComRegistro {
  public:
    JornadaDaEspecie(HostRoteirizado &host, const Especie &especie) : JornadaComRegistro(host), m_Especie(especie)
    {
        Responde("Confirma a exclusão deste " + m_Especie.Descr + "?", true);
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
        Passo([&] { FormCompartilhado<frmLimitesDif>()->CarregaForm("RAD-01", 12, m_Especie.Tipo); });
    }

    void ConfereSucesso() override
    {
        EXPECT_EQ(m_Visto, m_Especie.DeUmaData() ? "0110" : "0221");
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

    void Inclui(PessoaNaTela &p) const
    {
        PreencheDois(p, m_Especie);
        p.Preenche("ztmHFinal", "");
        p.Clica("ztCmdOK");
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
        return m_Especie.DeUmaData() ? texto(m_Registro.Dias()) : texto(m_Registro.Limites());
    }

    const Especie &m_Especie;
    std::string m_Visto;
    bool m_Edita = false;
};

std::string Arvore(const Especie &especie)
{
    const std::string lista = especie.DeUmaData() ? "listaDias" : "listaLimites";
    const auto grava = [&](const std::string &operacao) {
        return R"(
          pessoa
            frmLimitesDifDetalhes.ztCmdOk_Click
              frmLimitesDifDetalhes.)" +
               especie.Salva + R"(
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
                           especie.Busca + R"(
              - Plataforma.Ponteiro := 11
              @remota )" + especie.Consulta +
                           R"(
              - Plataforma.Ponteiro := 0
)";
    const auto comando = [](const std::string &procedimento, const std::string &entrada) {
        return R"(
  pessoa
    COLimiteDif.m_ZtList_ItemMenuClicado
      COLimiteDif.)" +
               procedimento + R"(
        frmLimitesDifDetalhes.)" +
               entrada;
    };
    return R"(
pessoa
  @controles frmLimitesDif
  COLimiteDif.Carrega
    @permissoesDosLimites
    @)" + lista +
           R"(
  @FormShowModal frmLimitesDif
)" + comando("Novo", "CarregaInclusao") +
           R"(
          @controles frmLimitesDifDetalhes
          @FormShowModal frmLimitesDifDetalhes
          pessoa
            frmLimitesDifDetalhes.ztCmdOk_ValidaClick
              frmLimitesDifDetalhes.ValidouOk
                - goMensagem.ExibeMensagem("Informe a hora final.", ztmHFinal)
)" + grava(especie.Inclui) +
           comando("Editar", "CarregaEdicao") + le + R"(
          @FormShowModal frmLimitesDifDetalhes
)" + grava(especie.Altera) +
           comando("Detalhes", "CarregaDetalhes") + le + R"(
          - goMensagem.PreparaDetalhes(frmLimitesDifDetalhes)
          @FormShow frmLimitesDifDetalhes
  pessoa
    - Plataforma.Descarrega(frmLimitesDifDetalhes)
  pessoa
    COLimiteDif.m_ZtList_AntesDeRemoverItem
      COLimiteDif.Excluir
        - Plataforma.PerguntaSimNao("Confirma a exclusão deste
        COLimiteDif.)" +
           especie.Exclui + R"(
          @comando )" +
           especie.Desativa + R"(
          - goMensagem.ExibeMensagem(
)";
}

void Varre(const Especie &especie)
{
    Varredura varredura([&](HostRoteirizado &host) { return std::make_unique<JornadaDaEspecie>(host, especie); },
                        Arvore(especie));
    varredura.Segue();
    EXPECT_GE(varredura.Roda(), 376);
}

TEST(COLimiteDifVarredura, Limits_NewEditedShownAndDeactivated_SurviveEveryFault)
{
    Varre(Limite);
}

TEST(COLimiteDifVarredura, SpecificDays_NewEditedShownAndDeactivated_SurviveEveryFault)
{
    Varre(DiaEspecifico);
}

TEST(COLimiteDifVarredura, ProhibitedHours_NewEditedShownAndDeactivated_SurviveEveryFault)
{
    Varre(HorarioProibido);
}

} // namespace
