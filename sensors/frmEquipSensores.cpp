#include "sensors/frmEquipSensores.h"

#include "equipment/clsEquipto.h"
#include "host/HostServices.h"
#include "sensors/Ajusta.h"
#include "shell/Geral.h"
#include "shell/ModGeral.h"

namespace {

constexpr std::int16_t AbaAfericoes = 1;

} // namespace

void frmEquipSensores::CriaControles()
{
    Ref<IFabricaControles> fabrica = Host().Controles();
    Ref<IForm> form = EsteForm();
    DefineTamanho(8100, 6000);

    Guarda(fabrica->CriaLabel(form, Ajusta("Label1", "Código Eqpto:", nullptr)));
    lblCodEquip = Guarda(fabrica->CriaLabel(form, Ajusta("lblCodEquip", "", nullptr)));

    auto abas = Ajusta<AjustesSSTab>("sstDados", "", nullptr);
    abas.Paginas = {"Dados", "Aferições"};
    sstDados = Guarda(fabrica->CriaSSTab(form, abas));
    for (std::int16_t aba = 0; aba <= AbaAfericoes; ++aba) {
        auto quadro = Ajusta("fraDados", "", sstDados, aba);
        quadro.Indice = aba;
        quadro.Enabled = aba == sstDados->Tab();
        fraDados.at(static_cast<std::size_t>(aba)) = Guarda(fabrica->CriaZtFrame(form, quadro));
    }

    Ref<IztFrame> Frame3 = Guarda(fabrica->CriaZtFrame(form, Ajusta("Frame3", "", fraDados[0])));
    Guarda(fabrica->CriaLabel(form, Ajusta("Label7", "Número:", Frame3)));
    auto numero = Ajusta<AjustesZtMask>("txtNroSensor", "", Frame3);
    numero.MaxLength = 2;
    numero.Tipo = 1;
    numero.ReadOnly = true;
    txtNroSensor = Guarda(fabrica->CriaZtMask(form, numero));

    Ref<IztFrame> Frame2 = Guarda(fabrica->CriaZtFrame(form, Ajusta("Frame2", "Endereço:", fraDados[0])));
    auto endereco = Ajusta<AjustesZtEndereco>("ztEndereco1", "", Frame2);
    endereco.TipoCapturaEndereco = 0;
    endereco.ReadOnlyMunicipio = false;
    endereco.LogradouroObrigatorio = true;
    endereco.MostrarSomenteComBairro = false;
    endereco.ObrigarCodigoLogradouro = true;
    endereco.MostrarEnderecosIncompletos = true;
    endereco.EstiloEdicao = 0;
    endereco.TipoBorda = 0;
    endereco.MostraCepEPesquisaCep = true;
    ztEndereco1 = Guarda(fabrica->CriaZtEndereco(form, endereco));

    Guarda(fabrica->CriaLabel(form, Ajusta("Label3", "Endereço na Notificação:", fraDados[0])));
    auto local = Ajusta<AjustesTextBox>("txtLocalInfr", "", fraDados[0]);
    local.MaxLength = 80;
    txtLocalInfr = Guarda(fabrica->CriaTextBox(form, local));

    auto lista = Ajusta<AjustesZtList>("ztListaAfericao", "", fraDados[1]);
    lista.TipoMenu = 2;
    lista.BotoesLaterais = true;
    lista.BotaoEliminar = false;
    lista.BotaoVisivel = false;
    lista.BotaoEnabled = false;
    lista.BotoesFecharAjuda = false;
    ztListaAfericao = Guarda(fabrica->CriaZtList(form, lista));

    cmdOK = Guarda(fabrica->CriaCommandButton(form, Ajusta<AjustesCommandButton>("cmdOK", "&OK", nullptr)));
    cmdAjuda = Guarda(fabrica->CriaCommandButton(form, Ajusta<AjustesCommandButton>("cmdAjuda", "&Ajuda", nullptr)));
    auto cancelar = Ajusta<AjustesCommandButton>("cmdCancelar", "&Cancelar", nullptr);
    cancelar.Cancel = true;
    cmdCancelar = Guarda(fabrica->CriaCommandButton(form, cancelar));

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
    DesfazCarga();
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
    DesfazCarga();
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
    DesfazCarga();
}

void frmEquipSensores::Inicia(const Ref<clsSensor> &cSensor, bool bDetalhes)
{
    m_OK = false;
    m_Detalhes = bDetalhes;
    m_Carregando = true;
    m_Sensor = cSensor;
    Carregar();
}

void frmEquipSensores::DesfazCarga() noexcept
{
    AbandonaCarga();
    if (!Carregado()) { // loading itself may have failed, and nothing is unloaded then
        Solta();
    }
}

void frmEquipSensores::Solta() noexcept
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
