#include "sensors/frmEquipSensores.h"

#include "equipment/clsEquipto.h"
#include "host/HostServices.h"
#include "shell/Geral.h"
#include "shell/ModGeral.h"

namespace {

constexpr std::int16_t AbaAfericoes = 1;

} // namespace

Desenho frmEquipSensores::Desenho() const
{
    const Peca cabecalho = EmLinha({
        {.Ajustes = AjustesLabel{}, .Nome = "Label1", .Caption = "Código Eqpto:"},
        {.Ajustes = AjustesLabel{.Papel = PapelLabel::Valor}, .Nome = "lblCodEquip", .Elastica = true},
    });

    const Peca numero = {
        .Ajustes = AjustesZtFrame{},
        .Nome = "Frame3",
        .Disposicao = Arranjo::Linha,
        .Pecas = {{.Ajustes = AjustesLabel{}, .Nome = "Label7", .Caption = "Número:"},
                  {.Ajustes = AjustesZtMask{.MaxLength = 2, .Tipo = TipoMascara::Digitos, .ReadOnly = true},
                   .Nome = "txtNroSensor"},
                  Mola()},
    };
    const Peca endereco = {
        .Ajustes = AjustesZtFrame{.Contorno = true},
        .Nome = "Frame2",
        .Caption = "Endereço:",
        .Pecas = {{.Ajustes = AjustesZtEndereco{}, .Nome = "ztEndereco1"}},
    };
    const Peca local = EmLinha({
        {.Ajustes = AjustesLabel{}, .Nome = "Label3", .Caption = "Endereço na Notificação:"},
        {.Ajustes = AjustesTextBox{.MaxLength = 80}, .Nome = "txtLocalInfr", .Elastica = true},
    });
    const Peca dados = {
        .Ajustes = AjustesZtFrame{}, .Nome = "fraDados", .Indice = 0, .Pecas = {numero, endereco, local, Mola()}};

    const Peca afericoes = {
        .Ajustes = AjustesZtFrame{},
        .Nome = "fraDados",
        .Indice = AbaAfericoes,
        .Enabled = false,
        .Pecas = {{.Ajustes = AjustesZtList{.TipoMenu = 2,
                                            .BotoesLaterais = true,
                                            .BotaoEliminar = false,
                                            .BotaoVisivel = false,
                                            .BotaoEnabled = false,
                                            .BotoesFecharAjuda = false},
                   .Nome = "ztListaAfericao",
                   .NomeAcessivel = "Aferições",
                   .Elastica = true}},
    };

    const Peca abas = {
        .Ajustes = AjustesSSTab{.Paginas = {"Dados", "Aferições"}},
        .Nome = "sstDados",
        .Elastica = true,
        .Pecas = {dados, afericoes},
    };
    const Peca botoes = EmLinha({
        Mola(),
        {.Ajustes = AjustesCommandButton{}, .Nome = "cmdOK", .Caption = "&OK"},
        {.Ajustes = AjustesCommandButton{}, .Nome = "cmdAjuda", .Caption = "&Ajuda"},
        {.Ajustes = AjustesCommandButton{.Cancel = true}, .Nome = "cmdCancelar", .Caption = "&Cancelar"},
    });
    return {
        .Caption = "Detalhes do Sensor", .Largura = 8100, .Altura = 6000, .Raiz = EmColuna({cabecalho, abas, botoes})};
}

void frmEquipSensores::LigaControles()
{
    Toma(lblCodEquip, "lblCodEquip");
    Toma(sstDados, "sstDados");
    Toma(fraDados, "fraDados");
    Toma(txtNroSensor, "txtNroSensor");
    Toma(ztEndereco1, "ztEndereco1");
    Toma(txtLocalInfr, "txtLocalInfr");
    Toma(ztListaAfericao, "ztListaAfericao");
    Toma(cmdOK, "cmdOK");
    Toma(cmdCancelar, "cmdCancelar");

    Liga(sstDados->Click(), &frmEquipSensores::sstDados_Click, "sstDados_Click");
    Liga(ztEndereco1->EntradaOK(), &frmEquipSensores::ztEndereco1_EntradaOK, "ztEndereco1_EntradaOK");
    Liga(txtLocalInfr->Change(), &frmEquipSensores::Change, "txtLocalInfr_Change");
    Liga(cmdOK->Click(), &frmEquipSensores::cmdOK_Click, "cmdOK_Click");
    Liga(cmdCancelar->Click(), &frmEquipSensores::cmdCancelar_Click, "cmdCancelar_Click");
}

bool frmEquipSensores::CarregaInclusao(const Ref<clsSensor> &cSensor)
try {
    Inicia(cSensor, false);
    DefineCaption("Novo Sensor");
    txtNroSensor->DefineText(CStr(m_Sensor->NroSensor));
    lblCodEquip->DefineCaption(m_Sensor->Equipto()->Codigo);
    m_Carregando = false;
    goGeral->FormShow(EsteForm(), true, nullptr);
    return m_OK;
} catch (...) {
    gSubMostraErro("frmEquipSensores.CarregaInclusao");
    AbandonaCarga();
    return false;
}

bool frmEquipSensores::CarregaEdicao(const Ref<clsSensor> &cSensor)
try {
    Inicia(cSensor, false);
    MontaTela();
    cmdOK->DefineEnabled(false);
    m_Carregando = false;
    goGeral->FormShow(EsteForm(), true, nullptr);
    return m_OK;
} catch (...) {
    gSubMostraErro("frmEquipSensores.CarregaEdicao");
    AbandonaCarga();
    return false;
}

void frmEquipSensores::CarregaDetalhes(const Ref<clsSensor> &cSensor)
try {
    Inicia(cSensor, true);
    MontaTela();
    cmdOK->DefineVisible(false);
    cmdCancelar->DefineCaption("&Fechar");
    m_Carregando = false;
    goMensagem()->PreparaDetalhes(EsteForm());
    goGeral->FormShow(EsteForm(), false, nullptr);
} catch (...) {
    gSubMostraErro("frmEquipSensores.CarregaDetalhes");
    AbandonaCarga();
}

void frmEquipSensores::Inicia(const Ref<clsSensor> &cSensor, bool bDetalhes)
{
    m_OK = false;
    m_Detalhes = bDetalhes;
    m_Carregando = true;
    m_Sensor = cSensor;
    Carregar();
}

void frmEquipSensores::Solta()
{
    m_Sensor = nullptr;
    m_COAfericoes = nullptr;
}

void frmEquipSensores::MontaTela()
try {
    // The captions of the two modes stand this way round on purpose.
    DefineCaption(m_Detalhes ? "Editar Sensor" : "Detalhes do Sensor");
    Ref<clsEquipto> equipto = m_Sensor->Equipto();
    lblCodEquip->DefineCaption(equipto->Codigo);
    txtNroSensor->DefineText(CStr(m_Sensor->NroSensor));
    if (m_Sensor->CodLograd > 0) {
        ztEndereco1->Endereco()->SetaEndereco(equipto->CodMunic, m_Sensor->CodLograd, m_Sensor->EndNro,
                                              m_Sensor->EndCompl, CStr(m_Sensor->EndCep), "", 0);
    }
    txtLocalInfr->DefineText(m_Sensor->LocalInfr);
} catch (...) {
    PassaFalha(" < frmEquipSensores.MontaTela");
}

bool frmEquipSensores::validouOk()
try {
    if (txtLocalInfr->Text().empty()) {
        goMensagem()->ExibeMensagem("Informe o endereço na notificação.", txtLocalInfr);
        return false;
    }
    return true;
} catch (...) {
    PassaFalha(" < frmEquipSensores.validouOk");
}

void frmEquipSensores::Change()
try {
    if (!m_Detalhes && !m_Carregando) {
        cmdOK->DefineEnabled(true);
    }
} catch (...) {
    PassaFalha(" < frmEquipSensores.Change");
}

void frmEquipSensores::sstDados_Click(std::int16_t anterior)
{
    const std::int16_t atual = sstDados->Tab();
    fraDados.at(static_cast<std::size_t>(anterior))->DefineEnabled(false);
    fraDados.at(static_cast<std::size_t>(atual))->DefineEnabled(true);
    if (atual == AbaAfericoes && m_COAfericoes.Nada()) { // one that exists is not loaded again, however its load ended
        m_COAfericoes = Novo<COAfericoes>();
        Liga(m_COAfericoes->Alterado(), &frmEquipSensores::Change, "m_COAfericoes_Alterado");
        if (!m_COAfericoes->Carrega(m_Sensor, ztListaAfericao, m_Detalhes)) {
            m_COAfericoes = nullptr;
        }
    }
}

void frmEquipSensores::ztEndereco1_EntradaOK()
{
    const std::string descricao = ztEndereco1->Endereco()->DescricaoEndereco();
    if (!descricao.empty()) {
        txtLocalInfr->DefineText(descricao);
    }
    Change();
}

void frmEquipSensores::cmdOK_Click()
{
    if (!validouOk()) {
        return;
    }
    Ref<IEndereco> endereco = ztEndereco1->Endereco();
    m_Sensor->CodLograd = endereco->CodLogradouro();
    m_Sensor->EndNro = endereco->Numero();
    m_Sensor->EndCompl = endereco->Complemento();
    m_Sensor->EndCep = CLng(Val(endereco->Cep()));
    m_Sensor->LocalInfr = txtLocalInfr->Text();
    m_Sensor->Alterado = true;
    m_OK = true;
    Descarregar();
}

void frmEquipSensores::cmdCancelar_Click()
{
    if (m_Sensor->Alterado &&
        !Plataforma()->PerguntaSimNao("Foram feitas alterações neste sensor. Deseja descartá-las?", "Atenção", false)) {
        return;
    }
    Descarregar();
}

void frmEquipSensores::Form_Unload(bool &)
{
    Solta();
}
