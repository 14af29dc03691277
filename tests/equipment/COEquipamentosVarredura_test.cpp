#include "equipment/COEquipamentos.h"

#include "tests/support/VarreduraRegistro.h"

#include <string>

namespace {

// Each command of the list on one equipment that has them all.
class JornadaDosComandos : public JornadaComRegistro {
  public:
    explicit JornadaDosComandos(HostRoteirizado &host) : JornadaComRegistro(host)
    {
        host.Clientes = {{1, "Autoridade das Estradas de Rodagem"}};
        host.Tela->Arquivos.Poe("C:\\HOST\\LAYOUTS\\PADRAO.LAY", {});
        const Ref<EquiptoED> equipto = EquiptoCalibrado("F", 1, "F100");
        equipto->TemLimiteDif = 1;
        m_NroIntEquip = m_Registro.Poe(equipto);
        for (const char *pergunta : {"Confirma a alteração?", "Deseja desativar o equipamento F100 ?",
                                     "Deseja reativar o equipamento F100 ?"}) {
            Responde(pergunta, true);
        }
        NoModal("frmEquipDetalhes", [this](PessoaNaTela &p) {
            if (m_Edita) {
                p.Preenche("txtDescricao", "Radar da saída");
                p.Clica("ztCmdOK");
            } else {
                p.Clica("cmdCancelar");
            }
        });
        NoModal("frmLimitesDif", [this](PessoaNaTela &p) {
            ++m_Limites;
            p.Fecha();
        });
        LogaComServicos();
    }

    void Percorre() override
    {
        m_Registro.Equipamento(m_NroIntEquip)->Ativo = 1;
        m_Registro.Equipamento(m_NroIntEquip)->Descricao = "Radar da entrada";
        m_Limites = 0;
        m_Linhas = "";
        Passo([&] { EXPECT_TRUE(m_Geral->ClickMenu("mnuModNABEquiptos") || Parou()); });
        NaJanela("frmLista", [&](PessoaNaTela &p) {
            p.Localiza("ztlLista");
            m_Edita = false;
            p.EscolheMenu("ztlLista", "mnuZTLObjDetalhes");
            m_Edita = true;
            for (const char *chave : {"mnuZTLObjEditar", "mnuZTLObjAtualizar", "mnuZTLObjLimitesDif",
                                      "mnuZTLObjDiasEspec", "mnuZTLObjHorarioProib"}) {
                p.EscolheMenu("ztlLista", chave);
            }
            Anota(p);
            p.EscolheMenu("ztlLista", "mnuZTLObjReativar");
            Anota(p);
            p.Marca("chkInativos");
            p.Localiza("ztlLista");
            Anota(p);
            p.EscolheMenu("ztlLista", "mnuZTLObjReativar");
            Anota(p);
            p.Fecha();
        });
    }

    void ConfereSucesso() override
    {
        EXPECT_EQ(m_Registro.Equipamento(m_NroIntEquip)->Descricao.Valor(), "Radar da saída");
        EXPECT_EQ(m_Registro.Equipamento(m_NroIntEquip)->Ativo.Valor(), 1);
        EXPECT_EQ(m_Limites, 3);
        EXPECT_EQ(m_Linhas, "1010");
    }

  private:
    void Anota(PessoaNaTela &p) { m_Linhas += std::to_string(p.Linhas("ztlLista")); }

    std::int32_t m_NroIntEquip;
    std::int32_t m_Limites = 0;
    std::string m_Linhas;
    bool m_Edita = false;
};

TEST(ComandosVarredura, Commands_EachOfTheList_SurvivesEveryFault)
{
    const auto comando = [](const std::string &chave, const std::string &procedimento) {
        return "pessoa > COEquipamentos.m_ZtList_ItemMenuClicado(" + chave + ") > " + procedimento;
    };
    const auto limites = [&](const std::string &chave, const std::string &entrada, const std::string &lista) {
        return comando(chave, "COEquipamentos." + entrada) + R"(
  @controles frmLimitesDif
  COLimiteDif.Carrega
    @permissoesDosLimites
    @)" + lista +
               R"(
  @FormShowModal frmLimitesDif
  @ativa
)";
    };
    const auto inativa = [&](const std::string &operacao) {
        return comando("mnuZTLObjReativar", "COEquipamentos.Inativar") + R"(
  - Plataforma.Aplicacao
  - Plataforma.PerguntaSimNao("Deseja )" +
               operacao + R"(r o equipamento F100 ?"
  @comando )" + operacao +
               R"(
  @tabelaAlterada
  COEquipamentos.LocalizarEquipamentos
    - Plataforma.Ponteiro := 11
    @remota lista2
    - goMensagem.ExibeMensagem("Não foram encontrados registros para os critérios especificados.", Nothing)
    - Plataforma.Ponteiro := 0
)";
    };
    auto varredura = VarreduraDe<JornadaDosComandos>(
        R"(
pessoa > @abreLista
pessoa > @localiza
)" + comando("mnuZTLObjDetalhes", "COEquipamentos.Detalhes > frmEquipDetalhes.CarregaDetalhes") +
        R"(
  @montaEquipto
  - goMensagem.PreparaDetalhes(frmEquipDetalhes)
  @FormShowModal frmEquipDetalhes
  pessoa
    frmEquipDetalhes.cmdCancelar_Click > - Plataforma.Descarrega(frmEquipDetalhes)
    @ativa
)" + comando("mnuZTLObjEditar", "COEquipamentos.Editar") +
        R"(
  frmEquipDetalhes.CarregaEdicao
    @montaEquipto
    @FormShowModal frmEquipDetalhes
    @okDoEquipto
  @tabelaAlterada
  @pagina
)" + comando("mnuZTLObjAtualizar", "@pagina\n") +
        limites("mnuZTLObjLimitesDif", "LimitesDiferenciados", "listaLimites") +
        limites("mnuZTLObjDiasEspec", "DiasEspecificos", "listaDias") +
        limites("mnuZTLObjHorarioProib", "LimitesDiferenciados", "listaLimites") + inativa("desativa") +
        "pessoa > @localiza\n" + inativa("reativa"));
    varredura.Segue();
    EXPECT_GE(varredura.Roda(), 641);
}

} // namespace
