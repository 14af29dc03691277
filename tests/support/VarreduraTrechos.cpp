#include "tests/support/VarreduraTrechos.h"

#include <map>
#include <sstream>

namespace {

// "= name" begins a piece, "#" a remark.
constexpr const char *Texto = R"(
# The first use of the gateway follows the chain once.
= trataBD
- objMTM.CreateQMR
- QMR.CreateNewTrataBD
- TrataBD.InicializaInfoSistema
= gateway
@trataBD
@gatewayDoTrataBD
= gatewayDoTrataBD
- TrataBD.pQMR
- QMR.Sessao
- objMTM.ObtemGateway
= dadosVor
- Host.CriaDadosVor
- goDadosVor.Inicializa
# A remote call with an answer, and one without.
= remota
- Gateway.CriaObjetoRN
- EquiptoRN.ExecutaMetodo("$1"
- EquiptoRN.ObtemRetorno
= comando
- Gateway.CriaObjetoRN
- EquiptoRN.ExecutaMetodo("$1"
# Loading and showing a form.
= controles
- Host.Controles|Controles.Cria *
- Plataforma.Carrega($1)
= FormShow
Geral.FormShow
  Geral.FechaEnviaRecebe > - FormMDI.FecharEnviaRecebe(True)
  - Plataforma.Ponteiro := 0
  - Plataforma.ProcessaMensagens
  - ObjInterface.MostraJanela($1
= ativa
Geral.FormAtivado
  - Plataforma.Aplicacao
  - cGlobal.gsubSetaAutoModuloAtivo
# Where another window, which is not modal, has become the active one before.
= FormShowDepois
Geral.FormShow
  Geral.FechaEnviaRecebe > - FormMDI.FecharEnviaRecebe(True)
  - Plataforma.Ponteiro := 0
  - Plataforma.ProcessaMensagens
  @ativa
  - ObjInterface.MostraJanela($1
= FormShowModal
@FormShow $1
@ativa
# Reference look-ups.
= linhas
- Cursor.EOF|Cursor.Fields|Cursor.MoveNext *
- Cursor.Close
= municipio
Generico.gFunBuscaDescrMunic
  - MDB.OpenRecordset("SELECT * FROM Municipio WHERE COD_MUNIC =
  @linhas
= municipios
ModGeral.gSubCarregaMunicipios
  - MDB.OpenRecordset("SELECT * FROM Municipio WHERE UF_MUNIC
  @linhas
= layouts
ModGeral.gSubCarregaArqLayout
  - goDadosVor.DirLayouts
  - Plataforma.PrimeiroArquivo
  - Plataforma.ProximoArquivo
= vigente
ModGeral.gFunConsultaAfericaoVigente
  @remota consultaSimplesAfericaoVigente
# The search window: until its criteria stand, and a page of one row.
= janelaDaLista
@controles frmLista
frmLista.Icone > - Plataforma.TemIcone
COEquipamentos.m_frmLista_FormCarregado > COEquipamentos.MenuInicial
  - objSCA.PossuiPerm2("NAB", "VOR-EQP-CS", "I")
  - objSCA.PossuiPerm2("NAB", "VOR-EQP-CS", "A")
  - objSCA.PossuiPerm2("NAB", "VOR-EQP-CS", "E")
= tiposDaLista
- goDadosVor.PreencheTipoAgente(cboTipoAgente
frmLista.cboTipoAgente_Click > - goDadosVor.PreencheTipoEquip(cboTipoEquipto, 0
- goDadosVor.PreencheTipoEquip(cboTipoEquipto, 0
# Behind a logon that has its services; $1 is the number that presets the client picker.
= abreLista
Geral.ClickMenu > Especifica.ClickMenu > COEquipamentos.CarregaJanela > frmLista.CarregaForm
  @janelaDaLista
  frmLista.AtualizaFrame
    - ztCliente.CodCliente := 1
    @tiposDaLista
  @FormShow frmLista
  - Plataforma.ProcessaMensagens
  @ativa
= pagina
COEquipamentos.LocalizarEquipamentos
  - Plataforma.Ponteiro := 11
  @remota lista2
  @municipio
  - Plataforma.Ponteiro := 0
= localiza
frmLista.ztlLista_BotaoLocalizarEnvia
  COEquipamentos.Localizar
    @pagina
= tabelaAlterada
- TrataBD.TabelaAlterada("VOREQUIPTO", True, False, ausente, ausente)
# The equipment form.
= carregaEquipto
clsEquipto.Carrega
  @remota consulta
  @carregaED
= carregaED
clsEquipto.CarregaED
  - goMensagem.FormataData
  - goMensagem.FormataHora
= combosDoEquipto
- goDadosVor.PreencheTipoAgente(cboTipoMedidor
@municipios
@layouts
= montaEquipto
frmEquipDetalhes.MontaTela
  @carregaEquipto
  @controles frmEquipDetalhes
  @combosDoEquipto
  frmEquipDetalhes.MostraDados > frmEquipDetalhes.cboTipoMedidor_Change > - goDadosVor.PreencheTipoEquip(cboTipoEquip
= aplica
frmEquipDetalhes.Aplicar
  - Plataforma.PerguntaSimNao("Confirma a
  - Plataforma.Ponteiro := 11
  - goDadosVor.ObtemOrgao
  - Orgao.CodCliente
  clsEquipto.Salva > @comando $1
  - Plataforma.Ponteiro := 0
= okDoEquipto
pessoa
  frmEquipDetalhes.ztCmdOk_Click
    @aplica altera
    - Plataforma.Descarrega(frmEquipDetalhes)
  @ativa
# The list of limits, days or hours.
= permissoesDosLimites
COLimiteDif.MenuInicial
  - objSCA.PossuiPerm2("NAB", "VOR-EQP-CS", "I")
  - objSCA.PossuiPerm2("NAB", "VOR-EQP-CS", "A")
  - objSCA.PossuiPerm2("NAB", "VOR-EQP-CS", "E")
= listaLimites
COLimiteDif.LocalizarLimitesDif
  - Plataforma.Ponteiro := 11
  @remota listaLimiteDif
  - Plataforma.Ponteiro := 0
= listaDias
COLimiteDif.LocalizarDiasEspecificos
  - Plataforma.Ponteiro := 11
  @remota listaDiaEspecifico
  - Plataforma.Ponteiro := 0
# Lists inside the forms.
= listaSensores
COSensores.CarregaSensores
  - Plataforma.Ponteiro := 11
  - Plataforma.Ponteiro := 0
= listaAfericoes
COAfericoes.CarregaAfericoes
  - Plataforma.Ponteiro := 11
  - Plataforma.Ponteiro := 0
= paginaSensores
pessoa > frmEquipDetalhes.sstDados_Click > COSensores.Carrega > @listaSensores
= paginaAfericoes
pessoa > frmEquipDetalhes.sstDados_Click > COAfericoes.Carrega > @listaAfericoes
# A document is chosen and sent, or one is shown.
= visualizaPDF
frmEquipAfericoes.VisualizaPDF
  - Host.CriaDocumentoPDF
  - DocumentoPDF.ArquivoPDF :=
  - DocumentoPDF.Mostra(True)
= documento
pessoa > frmEquipAfericoes.cmdProcurar_Click > frmEquipAfericoes.ProcurarPDF
  - cdAbreArquivos.ShowOpen
  - Plataforma.TamanhoArquivo
  @visualizaPDF
pessoa > frmEquipAfericoes.cmdUpload_Click > - goDadosVor.EnviaDocumento
= abaAfericoes
pessoa > frmEquipSensores.sstDados_Click > COAfericoes.Carrega > @listaAfericoes
)";

std::map<std::string, std::string> Separados()
{
    std::map<std::string, std::string> trechos;
    std::istringstream entrada(Texto);
    std::string nome;
    for (std::string linha; std::getline(entrada, linha);) {
        if (linha.starts_with("= ")) {
            nome = linha.substr(2);
        } else if (!linha.starts_with("#")) {
            trechos[nome] += linha + "\n";
        }
    }
    return trechos;
}

} // namespace

std::optional<std::string> TrechoDeCaminho(const std::string &nome)
{
    static const std::map<std::string, std::string> trechos = Separados();
    const auto trecho = trechos.find(nome);
    return trecho == trechos.end() ? std::nullopt : std::optional(trecho->second);
}
