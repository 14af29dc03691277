#include "tests/support/VarreduraTrechos.h"

#include <map>

namespace {

const std::map<std::string, std::string> Trechos{
    // The first use of the gateway follows the chain once.
    {"trataBD", R"(
- objMTM.CreateQMR
- QMR.CreateNewTrataBD
- TrataBD.InicializaInfoSistema
)"},
    {"gateway", R"(
@trataBD
@gatewayDoTrataBD
)"},
    {"gatewayDoTrataBD", R"(
- TrataBD.pQMR
- QMR.Sessao
- objMTM.ObtemGateway
)"},
    {"dadosVor", R"(
- Host.CriaDadosVor
- goDadosVor.Inicializa
)"},
    // A remote call with an answer, and one without.
    {"remota", R"(
- Gateway.CriaObjetoRN
- EquiptoRN.ExecutaMetodo("$1"
- EquiptoRN.ObtemRetorno
)"},
    {"comando", R"(
- Gateway.CriaObjetoRN
- EquiptoRN.ExecutaMetodo("$1"
)"},
    // Loading and showing a form.
    {"controles", R"(
- Host.Controles|Controles.Cria *
- Plataforma.Carrega($1)
)"},
    {"FormShow", R"(
Geral.FormShow
  Geral.FechaEnviaRecebe > - FormMDI.FecharEnviaRecebe(True)
  - Plataforma.Ponteiro := 0
  - Plataforma.ProcessaMensagens
  - ObjInterface.MostraJanela($1
)"},
    {"ativa", R"(
Geral.FormAtivado
  - Plataforma.Aplicacao
  - cGlobal.gsubSetaAutoModuloAtivo
)"},
    // Where another window, which is not modal, has become the active one before.
    {"FormShowDepois", R"(
Geral.FormShow
  Geral.FechaEnviaRecebe > - FormMDI.FecharEnviaRecebe(True)
  - Plataforma.Ponteiro := 0
  - Plataforma.ProcessaMensagens
  @ativa
  - ObjInterface.MostraJanela($1
)"},
    {"FormShowModal", R"(
@FormShow $1
@ativa
)"},
    // Reference look-ups.
    {"linhas", R"(
- Cursor.EOF|Cursor.Fields|Cursor.MoveNext *
- Cursor.Close
)"},
    {"municipio", R"(
Generico.gFunBuscaDescrMunic
  - MDB.OpenRecordset("SELECT * FROM Municipio WHERE COD_MUNIC =
  @linhas
)"},
    {"municipios", R"(
ModGeral.gSubCarregaMunicipios
  - MDB.OpenRecordset("SELECT * FROM Municipio WHERE UF_MUNIC
  @linhas
)"},
    {"layouts", R"(
ModGeral.gSubCarregaArqLayout
  - goDadosVor.DirLayouts
  - Plataforma.PrimeiroArquivo
  - Plataforma.ProximoArquivo
)"},
    {"vigente", R"(
ModGeral.gFunConsultaAfericaoVigente
  @remota consultaSimplesAfericaoVigente
)"},
    // The search window: until its criteria stand, and a page of one row.
    {"janelaDaLista", R"(
@controles frmLista
frmLista.Icone > - Plataforma.TemIcone
COEquipamentos.m_frmLista_FormCarregado > COEquipamentos.MenuInicial
  - objSCA.PossuiPerm2("NAB", "VOR-EQP-CS", "I")
  - objSCA.PossuiPerm2("NAB", "VOR-EQP-CS", "A")
  - objSCA.PossuiPerm2("NAB", "VOR-EQP-CS", "E")
)"},
    {"tiposDaLista", R"(
- goDadosVor.PreencheTipoAgente(cboTipoAgente
frmLista.cboTipoAgente_Click > - goDadosVor.PreencheTipoEquip(cboTipoEquipto, 0
- goDadosVor.PreencheTipoEquip(cboTipoEquipto, 0
)"},
    // Behind a logon that has its services; $1 is the number that presets the client picker.
    {"abreLista", R"(
Geral.ClickMenu > Especifica.ClickMenu > COEquipamentos.CarregaJanela > frmLista.CarregaForm
  @janelaDaLista
  frmLista.AtualizaFrame
    - ztCliente.CodCliente := 1
    @tiposDaLista
  @FormShow frmLista
  - Plataforma.ProcessaMensagens
  @ativa
)"},
    {"pagina", R"(
COEquipamentos.LocalizarEquipamentos
  - Plataforma.Ponteiro := 11
  @remota lista2
  @municipio
  - Plataforma.Ponteiro := 0
)"},
    {"localiza", R"(
frmLista.ztlLista_BotaoLocalizarEnvia
  COEquipamentos.Localizar
    @pagina
)"},
    {"tabelaAlterada", R"(
- TrataBD.TabelaAlterada("VOREQUIPTO", True, False, ausente, ausente)
)"},
    // The equipment form.
    {"carregaEquipto", R"(
clsEquipto.Carrega
  @remota consulta
  @carregaED
)"},
    {"carregaED", R"(
clsEquipto.CarregaED
  - goMensagem.FormataData
  - goMensagem.FormataHora
)"},
    {"combosDoEquipto", R"(
- goDadosVor.PreencheTipoAgente(cboTipoMedidor
@municipios
@layouts
)"},
    {"montaEquipto", R"(
frmEquipDetalhes.MontaTela
  @carregaEquipto
  @controles frmEquipDetalhes
  @combosDoEquipto
  frmEquipDetalhes.MostraDados > frmEquipDetalhes.cboTipoMedidor_Change > - goDadosVor.PreencheTipoEquip(cboTipoEquip
)"},
    {"aplica", R"(
frmEquipDetalhes.Aplicar
  - Plataforma.PerguntaSimNao("Confirma a
  - Plataforma.Ponteiro := 11
  - goDadosVor.ObtemOrgao
  - Orgao.CodCliente
  clsEquipto.Salva > @comando $1
  - Plataforma.Ponteiro := 0
)"},
    {"okDoEquipto", R"(
pessoa
  frmEquipDetalhes.ztCmdOk_Click
    @aplica altera
    - Plataforma.Descarrega(frmEquipDetalhes)
  @ativa
)"},
    // The list of limits, days or hours.
    {"permissoesDosLimites", R"(
COLimiteDif.MenuInicial
  - objSCA.PossuiPerm2("NAB", "VOR-EQP-CS", "I")
  - objSCA.PossuiPerm2("NAB", "VOR-EQP-CS", "A")
  - objSCA.PossuiPerm2("NAB", "VOR-EQP-CS", "E")
)"},
    {"listaLimites", R"(
COLimiteDif.LocalizarLimitesDif
  - Plataforma.Ponteiro := 11
  @remota listaLimiteDif
  - Plataforma.Ponteiro := 0
)"},
    {"listaDias", R"(
COLimiteDif.LocalizarDiasEspecificos
  - Plataforma.Ponteiro := 11
  @remota listaDiaEspecifico
  - Plataforma.Ponteiro := 0
)"},
    // Lists inside the forms.
    {"listaSensores", R"(
COSensores.CarregaSensores
  - Plataforma.Ponteiro := 11
  - Plataforma.Ponteiro := 0
)"},
    {"listaAfericoes", R"(
COAfericoes.CarregaAfericoes
  - Plataforma.Ponteiro := 11
  - Plataforma.Ponteiro := 0
)"},
    {"paginaSensores", R"(
pessoa > frmEquipDetalhes.sstDados_Click > COSensores.Carrega > @listaSensores
)"},
    {"paginaAfericoes", R"(
pessoa > frmEquipDetalhes.sstDados_Click > COAfericoes.Carrega > @listaAfericoes
)"},
    // A document is chosen and sent, or one is shown.
    {"visualizaPDF", R"(
frmEquipAfericoes.VisualizaPDF
  - Host.CriaDocumentoPDF
  - DocumentoPDF.ArquivoPDF :=
  - DocumentoPDF.Mostra(True)
)"},
    {"documento", R"(
pessoa > frmEquipAfericoes.cmdProcurar_Click > frmEquipAfericoes.ProcurarPDF
  - cdAbreArquivos.ShowOpen
  - Plataforma.TamanhoArquivo
  @visualizaPDF
pessoa > frmEquipAfericoes.cmdUpload_Click > - goDadosVor.EnviaDocumento
)"},
    {"abaAfericoes", R"(
pessoa > frmEquipSensores.sstDados_Click > COAfericoes.Carrega > @listaAfericoes
)"},
};

} // namespace

std::optional<std::string> TrechoDeCaminho(const std::string &nome)
{
    const auto trecho = Trechos.find(nome);
    if (trecho == Trechos.end()) {
        return std::nullopt;
    }
    return trecho->second;
}
