#include "equipment/frmEquipDetalhes.h"

#include "shell/Geral.h"
#include "shell/ModGeral.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr std::int16_t PaginaEquipamento = 0;
constexpr std::int16_t PaginaDados = 1;
constexpr std::int16_t PaginaSensores = 2;
constexpr std::int16_t PaginaAfericoes = 3;
constexpr std::int16_t PaginaOpcoes = 4;

constexpr std::int32_t CodClienteComSetor = 2;
constexpr double LimiteDaTolerancia = 100; // km/h; from here on the tolerance is a percentage

constexpr std::string_view TituloAtencao = "Atenção";

// What page Dados and the frames show for a type of equipment.
struct RegraDeMolduras {
    std::string_view Tipos; // one letter each; empty: any other type
    bool Layout;
    bool LimiteVel;
    bool TipoVia;
    std::int32_t TipoViaLeft; // twips; 0: unchanged
    bool LimiteDif;
    bool ObsNotif;
};

constexpr std::int32_t EsquerdaSemVelocidade = 180;
constexpr std::int32_t EsquerdaAoLadoDaVelocidade = 4320;

constexpr RegraDeMolduras MoldurasPorTipo[] = {
    {"M", true, false, true, EsquerdaSemVelocidade, false, false},
    {"EUB", false, false, false, 0, true, false},
    {"A", false, true, false, 0, true, false},
    {"FV", true, false, true, EsquerdaSemVelocidade, false, true},
    {"", true, true, true, EsquerdaAoLadoDaVelocidade, true, false},
};

// Which pages a type of equipment offers.
struct RegraDePaginas {
    std::string_view Tipos;
    bool Sensores;
    bool Afericoes;
    bool Opcoes;
};

constexpr RegraDePaginas PaginasPorTipo[] = {
    {"M", false, true, true},
    {"AEUB", false, true, false},
    {"V", false, false, true},
    {"", true, false, true},
};

bool TipoEm(std::string_view tipos, std::string_view tipo)
{
    return tipo.size() == 1 && tipos.find(tipo) != std::string_view::npos;
}

template <class Regra, std::size_t N> const Regra &RegraDoTipo(const Regra (&regras)[N], std::string_view tipo)
{
    const Regra *achada = std::find_if(std::begin(regras), std::end(regras) - 1,
                                       [&](const Regra &regra) { return TipoEm(regra.Tipos, tipo); });
    return *achada; // the last one is for any other type
}

// The text of chkRejeicaoAuto stands beside it, in a label of its own.
constexpr const char *TextoRejeicaoAuto =
    "Realizar a rejeição das fotos das autuações efetivadas no horário diferenciado (que ultrapassem o limite normal, "
    "mas não o limite do horário diferenciado) de forma automática, na abertura do banco de fotos.";

Peca ValorRotulado(std::string nome, std::string rotulo)
{
    return {.Ajustes = AjustesLabel{.Papel = PapelLabel::Valor},
            .Nome = std::move(nome),
            .Rotulo = std::move(rotulo),
            .Elastica = true};
}

Peca Codigo(std::string nome, std::string rotulo)
{
    return {.Ajustes =
                AjustesZtMask{
                    .MaxLength = 20, .Tipo = TipoMascara::Codigo, .CaracteresAceitos = "._", .TabelaCaracteres = 1},
            .Nome = std::move(nome),
            .Rotulo = std::move(rotulo)};
}

Peca Opcao(std::string nome, std::string caption)
{
    return {.Ajustes = AjustesOptionButton{}, .Nome = std::move(nome), .Caption = std::move(caption)};
}

Peca Caixa(std::string nome, std::string caption)
{
    return {.Ajustes = AjustesCheckBox{}, .Nome = std::move(nome), .Caption = std::move(caption)};
}

// The frame of a page; that of the first one alone is enabled at first.
Peca Pagina(std::int16_t pagina, std::vector<Peca> pecas)
{
    return {.Ajustes = AjustesZtFrame{},
            .Nome = "fraDados",
            .Indice = pagina,
            .Enabled = pagina == PaginaEquipamento,
            .Pecas = std::move(pecas)};
}

Peca DesenhaEquipamento()
{
    const Peca campos = EmGrade({
        EmLinha({Codigo("txtCodEquip", "Código:"), Codigo("txtSubCodEquip", "Subcódigo (opcional):")}),
        EmLinha(
            {{.Ajustes = AjustesTextBox{.MaxLength = 50}, .Nome = "txtDescricao", .Rotulo = "Descrição:", .Vao = 3}}),
        EmLinha({{.Ajustes = AjustesZtCombo{}, .Nome = "cboTipoMedidor", .Rotulo = "Tipo de Medidor:"},
                 {.Ajustes = AjustesZtCombo{}, .Nome = "cboTipoEquip", .Rotulo = "Tipo Equip.:"}}),
        EmLinha(
            {{.Ajustes = AjustesTextBox{.MaxLength = 30}, .Nome = "txtModelo", .Rotulo = "Marca/Modelo:", .Vao = 3}}),
    });
    const Peca alteracao = {
        .Ajustes = AjustesZtFrame{.Contorno = true},
        .Nome = "frUltAtu",
        .Caption = "Última alteração: ",
        .Disposicao = Arranjo::Grade,
        .Pecas = {EmLinha({ValorRotulado("lblCliente", "Cliente:"), ValorRotulado("lblOperador", "Operador:")}),
                  EmLinha({ValorRotulado("lblData", "Data:"), ValorRotulado("lblHora", "Hora:")})},
    };
    return Pagina(PaginaEquipamento, {campos, alteracao, Mola()});
}

Peca DesenhaDados()
{
    const Peca municipio = EmLinha({
        {.Ajustes = AjustesZtCombo{.PesquisaAoDigitar = true}, .Nome = "cboMunic", .Rotulo = "Município:"},
        Mola(),
    });
    const Peca layout = {
        .Ajustes = AjustesZtFrame{},
        .Nome = "fraLayout",
        .Disposicao = Arranjo::Linha,
        .Pecas = {{.Ajustes = AjustesZtCombo{.ColunaValor = -1, .PesquisaAoDigitar = true},
                   .Nome = "cboArqLayout",
                   .Rotulo = "Layout arquivos:"},
                  Mola()},
    };
    const Peca velocidade = {
        .Ajustes = AjustesZtFrame{.Contorno = true},
        .Nome = "fraLimiteVel",
        .Caption = "Limites de Velocidade: ",
        .Left = EsquerdaSemVelocidade,
        .Disposicao = Arranjo::Grade,
        .Pecas = {EmLinha({{.Ajustes = AjustesZtMask{.MaxLength = 3, .Tipo = TipoMascara::Digitos},
                            .Nome = "txtVelocPerm",
                            .Rotulo = "Veloc. Permitida:"},
                           {.Ajustes = AjustesLabel{.Papel = PapelLabel::Texto},
                            .Nome = "lblUnidade",
                            .Caption = "Km/h",
                            .Elastica = true}}),
                  EmLinha({{.Ajustes = AjustesLabel{.Papel = PapelLabel::Texto},
                            .Nome = "lblTolerancia",
                            .Rotulo = "Tolerância:",
                            .Caracteres = 28,
                            .Vao = 2}})},
    };
    Peca banco = Opcao("optInfGeraBanco", "Informado na geração do Banco de Fotos");
    banco.Visible = false;
    const Peca via = {
        .Ajustes = AjustesZtFrame{.Contorno = true},
        .Nome = "fraTipoVia",
        .Caption = "Tipo &Via:",
        .Left = EsquerdaAoLadoDaVelocidade,
        .Pecas = {Opcao("optRodovia", "Rodovia ou Via de Trânsito Rápido ou Via Arterial"),
                  Opcao("optUrbana", "Via urbana"), banco},
    };
    return Pagina(PaginaDados, {municipio, layout, EmLinha({velocidade, via, Mola()}), Mola()});
}

Peca DesenhaLista(std::int16_t pagina, std::string nome, std::string nomeAcessivel)
{
    return Pagina(pagina, {{.Ajustes = AjustesZtList{.BotoesLaterais = true,
                                                     .BotaoEliminar = false,
                                                     .BotaoVisivel = false,
                                                     .BotaoEnabled = false,
                                                     .BotoesFecharAjuda = false},
                            .Nome = std::move(nome),
                            .NomeAcessivel = std::move(nomeAcessivel),
                            .Elastica = true}});
}

Peca DesenhaOpcoes()
{
    const Peca imagem = EmLinha(
        {Caixa("chkEntrelacada", "Imagem entrelaçada"), Caixa("chkPerfilMagnetico", "Perfil Magnético"), Mola()});
    const Peca limiteDif = {
        .Ajustes = AjustesZtFrame{.Contorno = true},
        .Nome = "fraLimiteDif",
        .NomeAcessivel = "Trabalha com Limites Diferenciados?",
        .Pecas = {EmLinha({{.Ajustes = AjustesOptionButton{},
                            .Nome = "optTrabDiasDif",
                            .Indice = 1,
                            .Caption = "Sim",
                            .Rotulo = "Trabalha com Limites Diferenciados?"},
                           {.Ajustes = AjustesOptionButton{}, .Nome = "optTrabDiasDif", .Indice = 0, .Caption = "Não"},
                           Mola()}),
                  EmLinha({{.Ajustes = AjustesCheckBox{},
                            .Nome = "chkRejeicaoAuto",
                            .NomeAcessivel = TextoRejeicaoAuto,
                            .Enabled = false},
                           {.Ajustes = AjustesLabel{.Papel = PapelLabel::Paragrafo},
                            .Nome = "lblTextoRejLimDif",
                            .Caption = TextoRejeicaoAuto,
                            .Enabled = false,
                            .Elastica = true}}),
                  EmLinha({{.Ajustes = AjustesLabel{},
                            .Nome = "lblRejeicao",
                            .Caption = "Utilizar a rejeição:",
                            .Enabled = false},
                           {.Ajustes = AjustesZtCombo{}, .Nome = "cboRejeicao", .Enabled = false},
                           Mola()})},
    };
    const Peca observacao = {
        .Ajustes = AjustesZtFrame{.Contorno = true},
        .Nome = "fraObsNotif",
        .NomeAcessivel = "Observação na Notificação",
        .Pecas = {Caixa("chkIncObsNotif", "Incluir observação na Notificação:"),
                  {.Ajustes = AjustesZtVeiObservacao{.MaxLength = 70},
                   .Nome = "txtObsNotif",
                   .NomeAcessivel = "Observação na Notificação"}},
    };
    return Pagina(PaginaOpcoes, {imagem, limiteDif, observacao, Mola()});
}

} // namespace

Desenho frmEquipDetalhes::Desenho() const
{
    const Peca cabecalho =
        EmLinha({ValorRotulado("lblClienteInc", "Cliente:"), ValorRotulado("lblSetorInc", "Setor:")});
    const Peca abas = {
        .Ajustes = AjustesSSTab{.Paginas = {"Equipamento", "Dados", "Sensores", "Aferições", "Opções"}},
        .Nome = "sstDados",
        .Elastica = true,
        .Pecas = {DesenhaEquipamento(), DesenhaDados(), DesenhaLista(PaginaSensores, "ztListaSensor", "Sensores"),
                  DesenhaLista(PaginaAfericoes, "ztListaAfericao", "Aferições"), DesenhaOpcoes()},
    };
    const Peca botoes = EmLinha({
        Mola(),
        {.Ajustes = AjustesZtCommand{.LockFormOnClick = true},
         .Nome = "ztCmdOK",
         .Caption = "&OK",
         .Enabled = false,
         .Left = 5700},
        {.Ajustes = AjustesCommandButton{}, .Nome = "cmdCancelar", .Caption = "&Cancelar", .Left = 7080},
        {.Ajustes = AjustesZtCommand{.LockFormOnClick = true},
         .Nome = "ztCmdAplicar",
         .Caption = "A&plicar",
         .Enabled = false,
         .Left = 8460},
    });
    return {.Caption = "Detalhes do Equipamento",
            .Largura = 9900,
            .Altura = 7200,
            .Raiz = EmColuna({cabecalho, abas, botoes})};
}

void frmEquipDetalhes::LigaControles()
{
    Toma(lblClienteInc, "lblClienteInc");
    Toma(lblSetorInc, "lblSetorInc");
    Toma(sstDados, "sstDados");
    Toma(fraDados, "fraDados");
    Toma(txtCodEquip, "txtCodEquip");
    Toma(txtSubCodEquip, "txtSubCodEquip");
    Toma(txtDescricao, "txtDescricao");
    Toma(cboTipoMedidor, "cboTipoMedidor");
    Toma(cboTipoEquip, "cboTipoEquip");
    Toma(txtModelo, "txtModelo");
    Toma(frUltAtu, "frUltAtu");
    Toma(lblCliente, "lblCliente");
    Toma(lblOperador, "lblOperador");
    Toma(lblData, "lblData");
    Toma(lblHora, "lblHora");
    Toma(cboMunic, "cboMunic");
    Toma(fraLayout, "fraLayout");
    Toma(cboArqLayout, "cboArqLayout");
    Toma(fraLimiteVel, "fraLimiteVel");
    Toma(txtVelocPerm, "txtVelocPerm");
    Toma(lblTolerancia, "lblTolerancia");
    Toma(fraTipoVia, "fraTipoVia");
    Toma(optRodovia, "optRodovia");
    Toma(optUrbana, "optUrbana");
    Toma(optInfGeraBanco, "optInfGeraBanco");
    Toma(ztListaSensor, "ztListaSensor");
    Toma(ztListaAfericao, "ztListaAfericao");
    Toma(chkEntrelacada, "chkEntrelacada");
    Toma(chkPerfilMagnetico, "chkPerfilMagnetico");
    Toma(fraLimiteDif, "fraLimiteDif");
    Toma(optTrabDiasDif, "optTrabDiasDif");
    Toma(chkRejeicaoAuto, "chkRejeicaoAuto");
    Toma(lblTextoRejLimDif, "lblTextoRejLimDif");
    Toma(lblRejeicao, "lblRejeicao");
    Toma(cboRejeicao, "cboRejeicao");
    Toma(fraObsNotif, "fraObsNotif");
    Toma(chkIncObsNotif, "chkIncObsNotif");
    Toma(txtObsNotif, "txtObsNotif");
    Toma(ztCmdOK, "ztCmdOK");
    Toma(cmdCancelar, "cmdCancelar");
    Toma(ztCmdAplicar, "ztCmdAplicar");

    Liga(sstDados->Click(), &frmEquipDetalhes::sstDados_Click, "sstDados_Click");
    Liga(txtCodEquip->Change(), &frmEquipDetalhes::Change, "txtCodEquip_Change");
    Liga(txtSubCodEquip->Change(), &frmEquipDetalhes::Change, "txtSubCodEquip_Change");
    Liga(txtDescricao->Change(), &frmEquipDetalhes::Change, "txtDescricao_Change");
    Liga(cboTipoMedidor->Change(), &frmEquipDetalhes::cboTipoMedidor_Change, "cboTipoMedidor_Change");
    Liga(cboTipoEquip->Change(), &frmEquipDetalhes::cboTipoEquip_Change, "cboTipoEquip_Change");
    Liga(txtModelo->Change(), &frmEquipDetalhes::Change, "txtModelo_Change");
    Liga(cboMunic->Change(), &frmEquipDetalhes::Change);
    Liga(cboArqLayout->Change(), &frmEquipDetalhes::Change);
    Liga(txtVelocPerm->Change(), &frmEquipDetalhes::txtVelocPerm_Change, "txtVelocPerm_Change");
    Liga(optRodovia->Click(), &frmEquipDetalhes::Change, "optRodovia_Click");
    Liga(optUrbana->Click(), &frmEquipDetalhes::Change, "optUrbana_Click");
    Liga(optInfGeraBanco->Click(), &frmEquipDetalhes::Change, "optInfGeraBanco_Click");
    Liga(chkEntrelacada->Click(), &frmEquipDetalhes::Change, "chkEntrelacada_Click");
    Liga(chkPerfilMagnetico->Click(), &frmEquipDetalhes::Change, "chkPerfilMagnetico_Click");
    Liga(optTrabDiasDif[0]->Click(), &frmEquipDetalhes::optTrabDiasDif_Click, "optTrabDiasDif_Click");
    Liga(optTrabDiasDif[1]->Click(), &frmEquipDetalhes::optTrabDiasDif_Click, "optTrabDiasDif_Click");
    Liga(chkRejeicaoAuto->Click(), &frmEquipDetalhes::chkRejeicaoAuto_Click, "chkRejeicaoAuto_Click");
    Liga(chkIncObsNotif->Click(), &frmEquipDetalhes::chkIncObsNotif_Click, "chkIncObsNotif_Click");
    Liga(txtObsNotif->Change(), &frmEquipDetalhes::Change, "txtObsNotif_Change");
    Liga(ztCmdOK->ValidaClick(), &frmEquipDetalhes::ztCmdOK_ValidaClick, "ztCmdOk_ValidaClick");
    Liga(ztCmdOK->Click(), &frmEquipDetalhes::ztCmdOK_Click, "ztCmdOk_Click");
    Liga(ztCmdAplicar->ValidaClick(), &frmEquipDetalhes::ztCmdAplicar_ValidaClick, "ztCmdAplicar_ValidaClick");
    Liga(ztCmdAplicar->Click(), &frmEquipDetalhes::ztCmdAplicar_Click, "ztCmdAplicar_Click");
    Liga(cmdCancelar->Click(), &frmEquipDetalhes::cmdCancelar_Click, "cmdCancelar_Click");
}

bool frmEquipDetalhes::CarregaInclusao(bool trabFoto)
try {
    m_Salvou = false;
    m_Inclusao = true;
    m_Detalhes = false;
    m_TrabFoto = trabFoto;
    m_Carregando = true;
    m_Equipto = Novo<clsEquipto>();
    Carregar();

    goDadosVor()->PreencheTipoAgente(cboTipoMedidor, trabFoto, false, false);
    gSubCarregaMunicipios(cboMunic);
    gSubCarregaArqLayout(cboArqLayout);
    lblClienteInc->DefineCaption(goGeral->objMTM()->ClienteLogado());
    lblSetorInc->DefineCaption(goGeral->objMTM()->SetorLogado());
    DefineCaption("Novo Equipamento");
    for (std::int16_t pagina = PaginaDados; pagina < NroPaginas; ++pagina) {
        sstDados->DefineTabEnabled(pagina, false);
    }
    if (glCodMunicLogon != 0) {
        cboMunic->DefineValor(CStr(glCodMunicLogon));
    }
    cboMunic->DefineComboSomenteLeitura(glCodMunicLogon != 0);
    frUltAtu->DefineVisible(false);
    ztCmdAplicar->DefineDefault(true);

    m_Carregando = false;
    goGeral->FormShow(EsteForm(), true, nullptr);
    return m_Salvou;
} catch (...) {
    gSubMostraErro("frmEquipDetalhes.CarregaInclusao");
    AbandonaCarga();
    return false;
}

bool frmEquipDetalhes::CarregaEdicao(std::int32_t nroIntEquip, bool trabFoto)
try {
    m_Salvou = false;
    m_Inclusao = false;
    m_Detalhes = false;
    m_TrabFoto = trabFoto;
    m_Carregando = true;
    if (!MontaTela(nroIntEquip)) {
        return false;
    }
    ztCmdOK->DefineEnabled(false);
    ztCmdAplicar->DefineEnabled(false);
    m_Carregando = false;
    goGeral->FormShow(EsteForm(), true, nullptr);
    return m_Salvou;
} catch (...) {
    gSubMostraErro("frmEquipDetalhes.CarregaEdicao");
    AbandonaCarga();
    return false;
}

void frmEquipDetalhes::CarregaDetalhes(std::int32_t nroIntEquip, bool trabFoto)
try {
    m_Salvou = false;
    m_Inclusao = false;
    m_Detalhes = true;
    m_TrabFoto = trabFoto;
    m_Carregando = true;
    if (!MontaTela(nroIntEquip)) {
        return;
    }
    cmdCancelar->DefineLeft(ztCmdAplicar->Left());
    cmdCancelar->DefineCaption("&Fechar");
    ztCmdOK->DefineVisible(false);
    ztCmdAplicar->DefineVisible(false);
    m_Carregando = false;
    goMensagem()->PreparaDetalhes(EsteForm());
    goGeral->FormShow(EsteForm(), true, nullptr);
} catch (...) {
    gSubMostraErro("frmEquipDetalhes.CarregaDetalhes");
    AbandonaCarga();
}

void frmEquipDetalhes::Solta()
{
    if (m_Equipto) {
        m_Equipto->Finaliza();
        m_Equipto = nullptr;
    }
    m_COSensores = nullptr;
    m_COAfericoes = nullptr;
}

bool frmEquipDetalhes::MontaTela(std::int32_t nroIntEquip)
try {
    m_Equipto = Novo<clsEquipto>();
    if (!m_Equipto->Carrega(nroIntEquip)) {
        Solta();
        return false;
    }
    Carregar();
    goDadosVor()->PreencheTipoAgente(cboTipoMedidor, m_TrabFoto, false, false);
    gSubCarregaMunicipios(cboMunic);
    gSubCarregaArqLayout(cboArqLayout);
    MostraDados();
    return true;
} catch (...) {
    PassaFalha(" < frmEquipDetalhes.MontaTela");
}

// The order matters: the meter type fills the equipment types, and the equipment type applies its rules.
void frmEquipDetalhes::MostraDados()
try {
    lblClienteInc->DefineCaption(m_Equipto->ClienteInc);
    lblSetorInc->DefineCaption(m_Equipto->SetorInc);
    txtCodEquip->DefineText(m_Equipto->Codigo);
    txtSubCodEquip->DefineText(m_Equipto->SubCodigo);
    txtDescricao->DefineText(m_Equipto->Descricao);
    cboTipoMedidor->DefineValor(CStr(m_Equipto->TipoAgente));
    cboTipoEquip->DefineValor(m_Equipto->TipoEquip);
    txtModelo->DefineText(m_Equipto->Modelo);
    cboMunic->DefineValor(CStr(m_Equipto->CodMunic));
    cboArqLayout->DefineValor(m_Equipto->ArquivoLayout);
    txtVelocPerm->DefineText(CStr(m_Equipto->VelocPermitida));
    if (m_Equipto->TipoVia == "R") {
        optRodovia->DefineValue(true);
    } else if (m_Equipto->TipoVia == "U") {
        optUrbana->DefineValue(true);
    } else if (m_Equipto->TipoVia == "I") {
        optInfGeraBanco->DefineValue(true);
    }
    frUltAtu->DefineVisible(true);
    lblCliente->DefineCaption(m_Equipto->ClienteTrans());
    lblOperador->DefineCaption(m_Equipto->OperadorTrans());
    lblData->DefineCaption(m_Equipto->DataTrans());
    lblHora->DefineCaption(m_Equipto->HoraTrans());
    MostraPaginasDoTipo(cboTipoEquip->Valor());
    chkEntrelacada->DefineValue(m_Equipto->TemImagemEntrelacada ? 1 : 0);
    chkPerfilMagnetico->DefineValue(m_Equipto->TemPerfilMag ? 1 : 0);
    optTrabDiasDif[m_Equipto->TemLimiteDif ? 1 : 0]->DefineValue(true);
    if (m_Equipto->NroIntRejLimDif < 1) {
        chkRejeicaoAuto->DefineValue(0);
    } else {
        chkRejeicaoAuto->DefineValue(1);
        cboRejeicao->DefineValor(CStr(m_Equipto->NroIntRejLimDif));
    }
    if (!m_Equipto->txtObsNotif.empty()) {
        chkIncObsNotif->DefineValue(1);
        txtObsNotif->DefineText(m_Equipto->txtObsNotif);
    } else {
        chkIncObsNotif->DefineValue(0);
        txtObsNotif->DefineLocked(true);
    }
    txtCodEquip->DefineReadOnly(true);
    cboTipoMedidor->DefineComboSomenteLeitura(true);
    cboTipoEquip->DefineComboSomenteLeitura(true);
    cboMunic->DefineComboSomenteLeitura(true);
} catch (...) {
    PassaFalha(" < frmEquipDetalhes.MostraDados");
}

void frmEquipDetalhes::MostraPaginasDoTipo(const std::string &tipoEquip)
{
    const RegraDePaginas &regra = RegraDoTipo(PaginasPorTipo, tipoEquip);
    sstDados->DefineTabEnabled(PaginaSensores, regra.Sensores);
    sstDados->DefineTabEnabled(PaginaAfericoes, regra.Afericoes);
    sstDados->DefineTabEnabled(PaginaOpcoes, regra.Opcoes);
}

std::string frmEquipDetalhes::obtemTipoVia()
try {
    if (optRodovia->Value()) {
        return "R";
    }
    if (optUrbana->Value()) {
        return "U";
    }
    return optInfGeraBanco->Value() ? "I" : "";
} catch (...) {
    gSubMostraErro("frmEquipDetalhes.obtemTipoVia");
    return "";
}

bool frmEquipDetalhes::Recusa(std::int16_t pagina, const Ref<IControle> &controle, const std::string &mensagem)
{
    sstDados->DefineTab(pagina);
    goMensagem()->ExibeMensagem(mensagem, controle);
    return false;
}

bool frmEquipDetalhes::ValidouOk()
try {
    if (txtCodEquip->Text().empty()) {
        return Recusa(PaginaEquipamento, txtCodEquip, "Informe o código do equipamento!");
    }
    if (txtDescricao->Text().empty()) {
        return Recusa(PaginaEquipamento, txtDescricao, "Informe a descrição do equipamento!");
    }
    if (cboTipoMedidor->Texto().empty()) {
        return Recusa(PaginaEquipamento, cboTipoMedidor, "Informe o tipo de medidor!");
    }
    if (cboTipoEquip->Texto().empty()) {
        return Recusa(PaginaEquipamento, cboTipoEquip, "Informe o tipo de equipamento!");
    }
    if (txtModelo->Text().empty()) {
        return Recusa(PaginaEquipamento, txtModelo, "Informe a marca/modelo!");
    }
    if (!TipoEm("EAUB", cboTipoEquip->Valor()) && cboMunic->Texto().empty()) {
        return Recusa(PaginaDados, cboMunic, "Informe o município!");
    }
    if (fraLayout->Visible() && cboArqLayout->Valor().empty()) {
        return Recusa(PaginaDados, cboArqLayout, "Informe o layout dos arquivos!");
    }
    if (fraLimiteVel->Visible() && txtVelocPerm->Text().empty()) {
        return Recusa(PaginaDados, txtVelocPerm, "Informe a velocidade permitida!");
    }
    if (fraLimiteVel->Visible() && txtVelocPerm->ValorNumerico() < 1) {
        return Recusa(PaginaDados, txtVelocPerm, "Informe uma velocidade permitida válida!");
    }
    if (!m_Inclusao && chkRejeicaoAuto->Value() == 1 && cboRejeicao->IndiceAtual() == -1) {
        return Recusa(PaginaOpcoes, cboRejeicao, "Informe a rejeição.");
    }
    if (!m_Inclusao && chkIncObsNotif->Value() == 1 && txtObsNotif->Text().empty()) {
        return Recusa(PaginaOpcoes, txtObsNotif, "Informe a observação.");
    }
    return true;
} catch (...) {
    PassaFalha(" < frmEquipDetalhes.ValidouOk");
}

bool frmEquipDetalhes::Aplicar()
try {
    const std::string pergunta = m_Inclusao ? "Confirma a inclusão?" : "Confirma a alteração?";
    if (!Plataforma()->PerguntaSimNao(pergunta, std::string(TituloAtencao), true)) {
        return false;
    }
    Plataforma()->DefinePonteiro(PonteiroAmpulheta);
    EscreveRegistro();
    const bool salvou = m_Equipto->Salva();
    Plataforma()->DefinePonteiro(PonteiroNormal);
    if (!salvou) {
        return false;
    }
    ztCmdAplicar->DefineDefault(false);
    ztCmdAplicar->DefineEnabled(false);
    ztCmdOK->DefineEnabled(false);
    m_Inclusao = false;
    m_Salvou = true;
    return true;
} catch (...) {
    PassaFalha(" < frmEquipDetalhes.Aplicar");
}

void frmEquipDetalhes::EscreveRegistro()
{
    m_Equipto->ClienteInc = lblClienteInc->Caption();
    if (goDadosVor()->ObtemOrgao()->CodCliente() == CodClienteComSetor) {
        m_Equipto->SetorInc = lblSetorInc->Caption();
    }
    m_Equipto->Codigo = Trim(txtCodEquip->Text());
    m_Equipto->SubCodigo = Trim(txtSubCodEquip->Text());
    m_Equipto->Descricao = Trim(txtDescricao->Text());
    m_Equipto->TipoAgente = CByte(cboTipoMedidor->Valor());
    m_Equipto->TipoEquip = cboTipoEquip->Valor();
    m_Equipto->Modelo = Trim(txtModelo->Text());
    const std::string codMunic = cboMunic->Valor();
    if (IsNumeric(codMunic) && CDbl(codMunic) > 0) {
        m_Equipto->CodMunic = CLng(codMunic);
    }
    if (fraLayout->Visible()) {
        m_Equipto->ArquivoLayout = cboArqLayout->Valor();
    }
    if (fraLimiteVel->Visible() && txtVelocPerm->ValorNumerico() > 0) {
        m_Equipto->VelocPermitida = CInt(txtVelocPerm->ValorNumerico());
    }
    m_Equipto->TipoVia = obtemTipoVia();
    if (!m_Inclusao) {
        m_Equipto->TemImagemEntrelacada = chkEntrelacada->Value() == 1;
        m_Equipto->TemPerfilMag = chkPerfilMagnetico->Value() == 1;
        m_Equipto->TemLimiteDif = optTrabDiasDif[1]->Value();
        m_Equipto->NroIntRejLimDif = chkRejeicaoAuto->Value() == 1 ? CLng(cboRejeicao->Valor()) : 0;
        m_Equipto->txtObsNotif = txtObsNotif->Text();
    }
}

void frmEquipDetalhes::Change()
try {
    if (m_Detalhes || m_Carregando) {
        return;
    }
    m_Equipto->Alterado = true;
    ztCmdOK->DefineEnabled(!m_Inclusao);
    ztCmdAplicar->DefineEnabled(true);
} catch (...) {
    PassaFalha(" < frmEquipDetalhes.Change");
}

void frmEquipDetalhes::cboTipoMedidor_Change()
{
    goDadosVor()->PreencheTipoEquip(cboTipoEquip, CInt(Val(cboTipoMedidor->Valor())), m_TrabFoto, false, false);
    Change();
}

void frmEquipDetalhes::cboTipoEquip_Change()
{
    const std::string tipo = cboTipoEquip->Valor();
    const RegraDeMolduras &regra = RegraDoTipo(MoldurasPorTipo, tipo);
    const bool informadoNoBanco = tipo == "M";
    fraLayout->DefineVisible(regra.Layout);
    fraLimiteVel->DefineVisible(regra.LimiteVel);
    fraTipoVia->DefineVisible(regra.TipoVia);
    if (regra.TipoViaLeft != 0) {
        fraTipoVia->DefineLeft(regra.TipoViaLeft);
    }
    optInfGeraBanco->DefineVisible(informadoNoBanco);
    optInfGeraBanco->DefineValue(informadoNoBanco);
    fraLimiteDif->DefineVisible(regra.LimiteDif);
    fraObsNotif->DefineVisible(regra.ObsNotif);
    if (informadoNoBanco) {
        txtVelocPerm->DefineText("");
    }
    sstDados->DefineTabEnabled(PaginaDados, true);
    Change();
}

void frmEquipDetalhes::txtVelocPerm_Change()
{
    const std::string texto = Trim(txtVelocPerm->Text());
    if (texto.empty()) {
        lblTolerancia->DefineCaption("");
    } else {
        lblTolerancia->DefineCaption(Val(texto) < LimiteDaTolerancia ? "7 Km/h" : "7% sobre velocidade medida.");
    }
    Change();
}

void frmEquipDetalhes::optTrabDiasDif_Click()
{
    if (optTrabDiasDif[1]->Value()) {
        chkRejeicaoAuto->DefineEnabled(true);
        lblTextoRejLimDif->DefineEnabled(true);
    } else {
        chkRejeicaoAuto->DefineValue(0);
        chkRejeicaoAuto->DefineEnabled(false);
        lblTextoRejLimDif->DefineEnabled(false);
    }
    Change();
}

void frmEquipDetalhes::chkRejeicaoAuto_Click()
{
    if (chkRejeicaoAuto->Value() == 1) {
        goDadosVor()->PreencheRejeicoes(cboRejeicao, 0, 0);
        cboRejeicao->DefineEnabled(true);
        lblRejeicao->DefineEnabled(true);
    } else {
        cboRejeicao->Limpa();
        cboRejeicao->DefineEnabled(false);
        lblRejeicao->DefineEnabled(false);
    }
    Change();
}

void frmEquipDetalhes::chkIncObsNotif_Click()
{
    if (chkIncObsNotif->Value() == 1) {
        txtObsNotif->DefineLocked(false);
    } else {
        txtObsNotif->DefineLocked(true);
        txtObsNotif->DefineText("");
    }
    Change();
}

void frmEquipDetalhes::sstDados_Click(std::int16_t abaAnterior)
{
    const std::int16_t atual = sstDados->Tab();
    fraDados.at(static_cast<std::size_t>(abaAnterior))->DefineEnabled(false);
    fraDados.at(static_cast<std::size_t>(atual))->DefineEnabled(true);
    if (atual == PaginaSensores && m_COSensores.Nada()) {
        CarregaPaginaSensores();
    } else if (atual == PaginaAfericoes && m_COAfericoes.Nada()) {
        CarregaPaginaAfericoes();
    }
}

// A controller that exists is not loaded again, however its load ended.
void frmEquipDetalhes::CarregaPaginaSensores()
{
    m_COSensores = Novo<COSensores>();
    Liga(m_COSensores->Alterado(), &frmEquipDetalhes::Change, "m_COSensores_Alterado");
    if (!m_COSensores->Carrega(m_Equipto, ztListaSensor, m_Detalhes)) {
        m_COSensores = nullptr;
    }
}

void frmEquipDetalhes::CarregaPaginaAfericoes()
{
    if (m_Equipto->ListaSensores()->Count() == 0) {
        m_Equipto->ListaSensores()->Add(1, "");
    }
    m_COAfericoes = Novo<COAfericoes>();
    Liga(m_COAfericoes->Alterado(), &frmEquipDetalhes::Change, "m_COAfericoes_Alterado");
    if (!m_COAfericoes->Carrega(m_Equipto->ListaSensores()->Item(1), ztListaAfericao, m_Detalhes)) {
        m_COAfericoes = nullptr;
    }
}

void frmEquipDetalhes::ztCmdOK_ValidaClick(bool &cancela)
{
    cancela = !ValidouOk();
}

void frmEquipDetalhes::ztCmdOK_Click()
{
    if (Aplicar()) {
        Descarregar();
    }
}

void frmEquipDetalhes::ztCmdAplicar_ValidaClick(bool &cancela)
{
    cancela = !ValidouOk();
}

void frmEquipDetalhes::ztCmdAplicar_Click()
{
    if (Aplicar() && m_Equipto->ReCarrega()) {
        MostraDados();
    }
}

void frmEquipDetalhes::cmdCancelar_Click()
{
    if (m_Equipto->Alterado &&
        !Plataforma()->PerguntaSimNao("Foram feitas alterações neste equipamento. Deseja descartá-las?",
                                      std::string(TituloAtencao), false)) {
        return;
    }
    Descarregar();
}

void frmEquipDetalhes::Form_Unload(bool &)
try {
    Solta();
} catch (...) {
    gSubMostraErro("frmEquipDetalhes.Form_Unload");
}
