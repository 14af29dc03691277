#include "equipment/COEquipamentos.h"

#include "tests/support/VarreduraRegistro.h"

#include <string>

namespace {

// Each command of the list on one equipment that has them all.
class JornadaDosComandos : public JornadaComRegistro {
  public:
    explicit JornadaDosComandos(HostRoteirizado &host) : JornadaComRegistro(host)
    {
        host.Clientes = {{1, "DAER"}};
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
            p.EscolheMenu("ztlLista", "mnuZTLObjEditar");
            p.EscolheMenu("ztlLista", "mnuZTLObjAtualizar");
            p.EscolheMenu("ztlLista", "mnuZTLObjLimitesDif");
            p.EscolheMenu("ztlLista", "mnuZTLObjDiasEspec");
            p.EscolheMenu("ztlLista", "mnuZTLObjHorarioProib");
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
    const auto limites = [](const std::string &comando, const std::string &entrada, const std::string &procura,
                            const std::string &operacao) {
        return "pessoa\n  COEquipamentos.m_ZtList_ItemMenuClicado(" + comando + ")\n    COEquipamentos." + entrada +
               R"(
      @controles frmLimitesDif
      COLimiteDif.Carrega
        @permissoesDosLimites
        COLimiteDif.)" +
               procura + R"(
          - Plataforma.Ponteiro := 11
          @remota )" +
               operacao + R"(
          - Plataforma.Ponteiro := 0
      @FormShowModal frmLimitesDif
      @ativa
)";
    };
    const std::string vazia = R"(
      COEquipamentos.LocalizarEquipamentos
        - Plataforma.Ponteiro := 11
        @remota lista2
        - goMensagem.ExibeMensagem("Não foram encontrados registros para os critérios especificados.", Nothing)
        - Plataforma.Ponteiro := 0
)";
    auto varredura =
        VarreduraDe<JornadaDosComandos>(
            R"(
pessoa
  @abreLista
pessoa
  @localiza
pessoa
  COEquipamentos.m_ZtList_ItemMenuClicado(mnuZTLObjDetalhes)
    COEquipamentos.Detalhes
      frmEquipDetalhes.CarregaDetalhes
        @montaEquipto
        - goMensagem.PreparaDetalhes(frmEquipDetalhes)
        @FormShowModal frmEquipDetalhes
        pessoa
          frmEquipDetalhes.cmdCancelar_Click
            - Plataforma.Descarrega(frmEquipDetalhes)
          @ativa
pessoa
  COEquipamentos.m_ZtList_ItemMenuClicado(mnuZTLObjEditar)
    COEquipamentos.Editar
      frmEquipDetalhes.CarregaEdicao
        @montaEquipto
        @FormShowModal frmEquipDetalhes
        @okDoEquipto
      @tabelaAlterada
      @pagina
pessoa
  COEquipamentos.m_ZtList_ItemMenuClicado(mnuZTLObjAtualizar)
    @pagina
)" + limites("mnuZTLObjLimitesDif", "LimitesDiferenciados", "LocalizarLimitesDif", "listaLimiteDif") +
            limites("mnuZTLObjDiasEspec", "DiasEspecificos", "LocalizarDiasEspecificos", "listaDiaEspecifico") +
            limites("mnuZTLObjHorarioProib", "LimitesDiferenciados", "LocalizarLimitesDif", "listaLimiteDif") +
            R"(
pessoa
  COEquipamentos.m_ZtList_ItemMenuClicado(mnuZTLObjReativar)
    COEquipamentos.Inativar
      - Plataforma.Aplicacao
      - Plataforma.PerguntaSimNao("Deseja desativar o equipamento F100 ?"
      @comando desativa
      @tabelaAlterada
)" + vazia + R"(
pessoa
  @localiza
pessoa
  COEquipamentos.m_ZtList_ItemMenuClicado(mnuZTLObjReativar)
    COEquipamentos.Inativar
      - Plataforma.Aplicacao
      - Plataforma.PerguntaSimNao("Deseja reativar o equipamento F100 ?"
      @comando reativa
      @tabelaAlterada
)" + vazia);
    varredura.Segue();
    EXPECT_GE(varredura.Roda(), 641);
}

} // namespace
