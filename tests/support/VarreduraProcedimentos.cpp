#include "tests/support/VarreduraProcedimentos.h"

#include <initializer_list>
#include <map>

namespace {

using Tabela = std::map<std::string, Desfecho>;

void PoeClasse(Tabela &tabela, Desfecho::Fim fim, const std::string &antes, const std::string &classe,
               std::initializer_list<const char *> procedimentos)
{
    for (const char *procedimento : procedimentos) {
        const std::string nome = classe + "." + procedimento;
        tabela[nome] = {fim, antes + nome};
    }
}

void Passam(Tabela &tabela, const std::string &classe, std::initializer_list<const char *> procedimentos)
{
    PoeClasse(tabela, Desfecho::Fim::Passa, " < ", classe, procedimentos);
}

void Mostram(Tabela &tabela, const std::string &classe, std::initializer_list<const char *> procedimentos)
{
    PoeClasse(tabela, Desfecho::Fim::Mostra, "", classe, procedimentos);
}

void PoeShell(Tabela &t)
{
    Passam(t, "Geral",
           {"Parametros", "Logon", "Logoff", "ClickMenu", "ShowForm", "ShowFormNoInstance", "FormShow",
            "EnviaTransacao", "EnviaTransacao2", "EnviaTransacaoH90", "EnviaRajada", "EnviaRajada2", "EnviaRajadaH90",
            "ImprimirRelatorio", "PesquisaDataUltimaClonagem", "AdicionaMenu", "HabilitarBand"});
    t["Geral.CentralizaForm"] = {Desfecho::Fim::Passa, " < CentralizaForm"};
    Passam(t, "ModGeral", {"gFunDescrEquipto", "gFunConsultaAfericaoVigente"});
    t["ModGeral.gFunDescrTipoAgente"] = {Desfecho::Fim::Passa, " < ModGeral.gFunDescrEquipto"};
    t["ModGeral.gsubConfigLista"] = {Desfecho::Fim::Passa, " < gsubConfigLista"};
    Passam(t, "Generico", {"gFunBuscaDescrMunic"});
    t["ModGeral.gSubCarregaMunicipios"] = {Desfecho::Fim::Mostra, ".gSubCarregaMunicipios"};
    t["ModGeral.gSubCarregaArqLayout"] = {Desfecho::Fim::Mostra, ".gSubCarregaArqLayout"};
    t["Especifica.ClickMenu"] = {Desfecho::Fim::Mostra, "Especifica - ClickMenu"};
    t["Especifica.EfetuaLogon"] = {Desfecho::Fim::Mostra, "Especifica - EfetuaLogon"};
    for (const char *ignorado : {"Geral.RegistraAM",
                                 "Geral.DesregistraAM",
                                 "Geral.FecharJanelasAtivas",
                                 "Geral.Encerra",
                                 "Geral.HabilitarItem",
                                 "Geral.Sondagem",
                                 "Geral.AtualizaMenu",
                                 "Geral.AbreEnviaRecebe",
                                 "Geral.FechaEnviaRecebe",
                                 "Geral.DefineTitulo",
                                 "Geral.FormAtivado",
                                 "Geral.RemoveMenu",
                                 "Geral.AdicionaMenuAuxiliar",
                                 "Geral.RemoveMenuAuxiliar",
                                 "Geral.DesabilitarMenu",
                                 "Geral.HabilitarFerramenta",
                                 "Geral.Popup",
                                 "Geral.EstadoDoForm",
                                 "Especifica.LiberaServicos",
                                 "ModGeral.gSubDefineFoco",
                                 "frmLista.Icone"}) {
        t[ignorado] = {Desfecho::Fim::Ignora, ""};
    }
}

void PoeEquipamento(Tabela &t)
{
    Passam(t, "clsEquipto", {"ToEquiptoED", "Salva", "CarregaED", "ReCarrega", "Carrega"});
    Passam(t, "COEquipamentos", {"LocalizarEquipamentos", "MenuInicial", "HabilitaMenu", "Inativar", "Editar", "Novo"});
    t["COEquipamentos.Detalhes"] = {Desfecho::Fim::Passa, " < COEquipamentos.Editar"};
    Mostram(t, "COEquipamentos",
            {"CarregaJanela", "CarregaSelecao", "Localizar", "m_frmLista_FormCarregado", "m_ZtList_BotaoClick",
             "m_ZtList_HabilitaItensMenuLista", "LimitesDiferenciados", "DiasEspecificos", "m_ZtList_ItemMenuClicado"});
    Passam(t, "frmEquipDetalhes", {"MontaTela", "MostraDados", "ValidouOk", "Aplicar", "Change"});
    Mostram(t, "frmEquipDetalhes",
            {"cboTipoEquip_Change", "cboTipoMedidor_Change", "sstDados_Click", "txtVelocPerm_Change",
             "optTrabDiasDif_Click", "chkRejeicaoAuto_Click", "chkIncObsNotif_Click", "CarregaInclusao",
             "CarregaEdicao", "CarregaDetalhes", "obtemTipoVia", "ztCmdOk_ValidaClick", "ztCmdOk_Click",
             "ztCmdAplicar_ValidaClick", "ztCmdAplicar_Click", "cmdCancelar_Click", "Form_Unload",
             "m_COAfericoes_Alterado", "m_COSensores_Alterado"});
}

void PoeSensores(Tabela &t)
{
    Passam(t, "COSensores",
           {"Colunas (Property Get)", "Carrega", "MenuInicial", "HabilitaMenu", "CarregaSensores", "Novo", "Editar",
            "Detalhes", "Excluir", "m_ZtList_DepoisDeRemoverItem"});
    Mostram(t, "COSensores",
            {"m_ZtList_AntesDeRemoverItem", "m_ZtList_GotFocus", "m_ZtList_ItemClick", "ItemMenuClicado"});
    Passam(t, "frmEquipSensores", {"MontaTela", "validouOk", "Change"});
    Mostram(t, "frmEquipSensores",
            {"CarregaInclusao", "CarregaEdicao", "CarregaDetalhes", "cmdCancelar_Click", "cmdOK_Click",
             "m_COAfericoes_Alterado", "sstDados_Click", "ztEndereco1_EntradaOK", "txtLocalInfr_Change"});
    Passam(t, "COAfericoes",
           {"Colunas (Property Get)", "Carrega", "MenuInicial", "HabilitaMenu", "CarregaAfericoes", "Novo", "Editar",
            "Detalhes", "Excluir", "m_ZtList_DepoisDeRemoverItem"});
    Mostram(t, "COAfericoes",
            {"m_ZtList_AntesDeRemoverItem", "m_ZtList_GotFocus", "m_ZtList_ItemClick", "ItemMenuClicado"});
    Passam(t, "frmEquipAfericoes",
           {"MontaTela", "ValidouOk", "MontaComboTipo", "VerificaConflitoDatas", "DataVerificacaoEmConflito",
            "SetaTipoAfer", "ProcurarPDF", "VisualizaPDF"});
    Mostram(t, "frmEquipAfericoes",
            {"CarregaInclusao", "CarregaEdicao", "CarregaDetalhes", "cboTipo_Click", "cmdOK_Click", "cmdCancelar_Click",
             "cmdProcurar_Click", "cmdUpload_Click", "cmdVisualizar_Click"});
}

void PoeLimites(Tabela &t)
{
    // Three of these name another procedure on purpose.
    t["COLimiteDif.Carrega"] = {Desfecho::Fim::Passa, " < COSensores.Carrega"};
    t["COLimiteDif.Detalhes"] = {Desfecho::Fim::Passa, " < COLimiteDif.Editar"};
    Passam(t, "COLimiteDif",
           {"Colunas (Property Get)", "LocalizarLimitesDif", "LocalizarDiasEspecificos", "MenuInicial", "HabilitaMenu",
            "Atualizar", "Novo", "Editar", "Excluir", "ExcluirLimiteDif", "ExcluirDiaEspec", "fBuscaNomeDia",
            "m_ZtList_DepoisDeRemoverItem"});
    Mostram(t, "COLimiteDif",
            {"m_ZtList_AntesDeRemoverItem", "m_ZtList_GotFocus", "m_ZtList_ItemClick", "m_ZtList_ItemMenuClicado"});
    Passam(t, "frmLimitesDifDetalhes",
           {"MontaTela", "ValidouOk", "BuscaLimitesDif", "BuscaDiasEspec", "SalvaLimiteDif", "SalvaDiaEspec",
            "ztCmdOk_Click", "ztCmdOk_ValidaClick"});
    t["frmLimitesDifDetalhes.sstDados_Click"] = {Desfecho::Fim::Passa, " < sstDados_Click"};
    Mostram(t, "frmLimitesDifDetalhes", {"CarregaInclusao", "CarregaEdicao", "chkVelocMin_Click"});
    t["frmLimitesDifDetalhes.CarregaDetalhes"] = {Desfecho::Fim::Mostra, "frmLimitesDifDetalhes.CarregaEdicao"};
}

void PoePesquisa(Tabela &t)
{
    Passam(t, "frmLista", {"CarregaForm", "AtualizaTabIndex", "LocalizacaoAutomatica", "AtualizaFrame", "AtivaFrame"});
    Mostram(t, "frmLista",
            {"cmdOK_Click", "cmdCancelar_Click", "ztlLista_BotaoLocalizarEnvia", "ztlLista_BotaoLocalizarValida",
             "cboCriterio_Click", "cboTipoAgente_Click"});
    Passam(t, "CVorEquip",
           {"SelecionaEquipamento", "BuscaEquipamento", "SetaDadosEquipto", "ConsultaSimplesEquipto", "GravaNoArquivo",
            "LimpaArqTemp"});
}

Tabela Monta()
{
    Tabela tabela;
    PoeShell(tabela);
    PoeEquipamento(tabela);
    PoeSensores(tabela);
    PoeLimites(tabela);
    PoePesquisa(tabela);
    return tabela;
}

} // namespace

std::optional<Desfecho> DesfechoDe(const std::string &procedimento)
{
    static const Tabela tabela = Monta();
    if (const auto exato = tabela.find(procedimento); exato != tabela.end()) {
        return exato->second;
    }
    const std::size_t parentese = procedimento.find('(');
    const auto achado = tabela.find(procedimento.substr(0, parentese));
    if (parentese == std::string::npos || achado == tabela.end()) {
        return std::nullopt;
    }
    Desfecho desfecho = achado->second;
    desfecho.Texto += procedimento.substr(parentese);
    return desfecho;
}
