#include "sensors/frmEquipAfericoes.h"

#include "equipment/clsEquipto.h"
#include "host/HostServices.h"
#include "sensors/clsListaAfericoes.h"
#include "sensors/clsSensor.h"
#include "shell/Geral.h"
#include "shell/ModGeral.h"

#include <vector>

namespace {

constexpr std::uint8_t TipoINMETRO = 1;
constexpr std::uint8_t TipoDeclaracao = 2;
constexpr std::int64_t TamanhoMaximoDocumento = 5242880; // bytes

// The first calibration, in the order of the list, that is not the record itself and whose period qualifies; Nothing
// when there is none. Removed calibrations hold their days too.
template <class Condicao> Ref<clsAfericao> PrimeiraEmConflito(const clsAfericao &registro, Condicao &&conflita)
{
    return registro.Sensor()->ListaAfericoes()->Primeira(
        [&](const clsAfericao &outra) { return conflita(outra) && outra.NumeroChave() != registro.NumeroChave(); });
}

} // namespace

Desenho frmEquipAfericoes::Desenho() const
{
    const AjustesLabel valor{.Papel = PapelLabel::Valor};

    const Peca cabecalho = EmLinha({
        {.Ajustes = AjustesLabel{}, .Nome = "Label1", .Caption = "Código Eqpto:"},
        {.Ajustes = valor, .Nome = "lblCodEquip", .Caracteres = 20, .Elastica = true},
        {.Ajustes = AjustesLabel{}, .Nome = "Label4", .Caption = "Nro Sensor:"},
        {.Ajustes = valor, .Nome = "lblNroSensor", .Caracteres = 3},
    });

    const Peca campos = EmGrade({
        EmLinha({
            {.Ajustes = AjustesLabel{}, .Nome = "Label8", .Caption = "Tipo:"},
            {.Ajustes = AjustesZtCombo{.Estilo = 1}, .Nome = "cboTipo", .Vao = 3},
        }),
        EmLinha({
            {.Ajustes = AjustesLabel{}, .Nome = "lblNroINMETRO", .Caption = "Número:"},
            {.Ajustes = AjustesTextBox{.MaxLength = 10}, .Nome = "txtNroINMETRO"},
            {.Ajustes = AjustesLabel{}, .Nome = "lblMarcaINMETRO"},
            {.Ajustes = AjustesZtMask{.MaxLength = 14, .Tipo = TipoMascara::Digitos},
             .Nome = "txtMarcaINMETRO",
             .NomeAcessivel = "Certificado ou declaração"},
        }),
        EmLinha({
            {.Ajustes = AjustesLabel{}, .Nome = "Label20", .Caption = "Dt. de Verif.:"},
            {.Ajustes = AjustesZtData{}, .Nome = "txtDtVerifINMETRO"},
            {.Ajustes = AjustesLabel{}, .Nome = "Label3", .Caption = "Dt. de Venc.:"},
            {.Ajustes = AjustesZtData{}, .Nome = "txtDtVencINMETRO"},
        }),
    });
    const Peca portaria = {
        .Ajustes = AjustesZtFrame{.Contorno = true},
        .Nome = "fraPortariaDIMEL",
        .Caption = "Portaria DIMEL: ",
        .Disposicao = Arranjo::Linha,
        .Pecas = {{.Ajustes = AjustesLabel{}, .Nome = "Label5", .Caption = "Número:"},
                  {.Ajustes = AjustesZtMask{.MaxLength = 6, .Tipo = TipoMascara::Digitos, .SomenteMaiusculas = false},
                   .Nome = "txtNroPortDIMEL"},
                  {.Ajustes = AjustesLabel{}, .Nome = "Label6", .Caption = "Ano:"},
                  {.Ajustes = AjustesZtMask{.MaxLength = 2, .SomenteMaiusculas = false}, .Nome = "txtAnoPortDIMEL"},
                  Mola()},
    };
    const Peca documento = {
        .Ajustes = AjustesZtFrame{.Contorno = true},
        .Nome = "fraDocumento",
        .Caption = "Certificado",
        .Pecas =
            {EmLinha({
                 {.Ajustes = AjustesCommandButton{}, .Nome = "cmdProcurar", .Caption = "&Procurar..."},
                 {.Ajustes = AjustesCommandButton{.Cancel = true}, .Nome = "cmdVisualizar", .Caption = "&Visualizar"},
                 {.Ajustes = AjustesCommandButton{}, .Nome = "cmdUpload", .Caption = "&Upload", .Enabled = false},
                 Mola(),
             }),
             {.Ajustes = AjustesLabel{.Papel = PapelLabel::Paragrafo}, .Nome = "lblMsgCert"}},
    };
    const Peca abas = {
        .Ajustes = AjustesSSTab{.Paginas = {"Geral"}},
        .Nome = "SSTab1",
        .Elastica = true,
        .Pecas = {EmColuna({
            {.Ajustes = AjustesZtFrame{}, .Nome = "Frame1"}, // stands behind the fields and holds none of them
            campos,
            portaria,
            documento,
            Mola(),
        })},
    };

    const Peca botoes = EmLinha({
        Mola(),
        {.Ajustes = AjustesCommandButton{.Default = true}, .Nome = "cmdOK", .Caption = "&OK"},
        {.Ajustes = AjustesCommandButton{}, .Nome = "cmdAjuda", .Caption = "&Ajuda"},
        {.Ajustes = AjustesCommandButton{}, .Nome = "cmdCancelar", .Caption = "&Cancelar"},
    });
    const Peca dialogo = {.Ajustes = AjustesCommonDialog{}, .Nome = "cdAbreArquivos", .Visible = false};
    return {.Caption = "Detalhes da Aferição",
            .Largura = 7200,
            .Altura = 6300,
            .Raiz = EmColuna({cabecalho, abas, botoes, dialogo})};
}

void frmEquipAfericoes::LigaControles()
{
    Toma(lblCodEquip, "lblCodEquip");
    Toma(lblNroSensor, "lblNroSensor");
    Toma(cboTipo, "cboTipo");
    Toma(txtNroINMETRO, "txtNroINMETRO");
    Toma(lblMarcaINMETRO, "lblMarcaINMETRO");
    Toma(txtMarcaINMETRO, "txtMarcaINMETRO");
    Toma(txtDtVerifINMETRO, "txtDtVerifINMETRO");
    Toma(txtDtVencINMETRO, "txtDtVencINMETRO");
    Toma(fraPortariaDIMEL, "fraPortariaDIMEL");
    Toma(txtNroPortDIMEL, "txtNroPortDIMEL");
    Toma(txtAnoPortDIMEL, "txtAnoPortDIMEL");
    Toma(fraDocumento, "fraDocumento");
    Toma(cmdProcurar, "cmdProcurar");
    Toma(cmdVisualizar, "cmdVisualizar");
    Toma(cmdUpload, "cmdUpload");
    Toma(lblMsgCert, "lblMsgCert");
    Toma(cmdOK, "cmdOK");
    Toma(cmdCancelar, "cmdCancelar");
    Toma(cdAbreArquivos, "cdAbreArquivos");

    Liga(cboTipo->Click(), &frmEquipAfericoes::cboTipo_Click, "cboTipo_Click");
    Liga(cmdProcurar->Click(), &frmEquipAfericoes::cmdProcurar_Click, "cmdProcurar_Click");
    Liga(cmdVisualizar->Click(), &frmEquipAfericoes::cmdVisualizar_Click, "cmdVisualizar_Click");
    Liga(cmdUpload->Click(), &frmEquipAfericoes::cmdUpload_Click, "cmdUpload_Click");
    Liga(cmdOK->Click(), &frmEquipAfericoes::cmdOK_Click, "cmdOK_Click");
    Liga(cmdCancelar->Click(), &frmEquipAfericoes::cmdCancelar_Click, "cmdCancelar_Click");
}

bool frmEquipAfericoes::CarregaInclusao(const Ref<clsAfericao> &cAfericao)
try {
    Inicia(cAfericao, true, false);
    DefineCaption("Nova Aferição");
    MontaCabecalho();
    m_NroIntImgCertif = 0;
    MontaComboTipo();
    cboTipo->DefineValor(CStr(TipoINMETRO));
    if (cboTipo->NroItens() == 1) {
        cboTipo->DefineComboSomenteLeitura(true);
    }
    goGeral->FormShow(EsteForm(), true, nullptr);
    return m_OK;
} catch (...) {
    gSubMostraErro("frmEquipAfericoes.CarregaInclusao");
    AbandonaCarga();
    return false;
}

bool frmEquipAfericoes::CarregaEdicao(const Ref<clsAfericao> &cAfericao)
try {
    Inicia(cAfericao, false, false);
    MontaTela();
    goGeral->FormShow(EsteForm(), true, nullptr);
    return m_OK;
} catch (...) {
    gSubMostraErro("frmEquipAfericoes.CarregaEdicao");
    AbandonaCarga();
    return false;
}

void frmEquipAfericoes::CarregaDetalhes(const Ref<clsAfericao> &cAfericao)
try {
    Inicia(cAfericao, false, true);
    MontaTela();
    cmdOK->DefineVisible(false);
    cmdCancelar->DefineCaption("&Fechar");
    goMensagem()->PreparaDetalhes(EsteForm());
    goGeral->FormShow(EsteForm(), false, nullptr);
} catch (...) {
    gSubMostraErro("frmEquipAfericoes.CarregaDetalhes");
    AbandonaCarga();
}

void frmEquipAfericoes::Inicia(const Ref<clsAfericao> &cAfericao, bool bInclusao, bool bDetalhes)
{
    m_OK = false;
    m_Inclusao = bInclusao;
    m_Detalhes = bDetalhes;
    m_Afericao = cAfericao;
    Carregar();
}

void frmEquipAfericoes::Solta()
{
    m_Afericao = nullptr;
}

void frmEquipAfericoes::MontaCabecalho()
{
    Ref<clsSensor> sensor = m_Afericao->Sensor();
    lblCodEquip->DefineCaption(sensor->Equipto()->Codigo);
    lblNroSensor->DefineCaption(CStr(sensor->NroSensor));
}

void frmEquipAfericoes::MontaTela()
try {
    DefineCaption(m_Detalhes ? "Detalhes da Aferição" : "Editar Aferição");
    MontaCabecalho();
    MontaComboTipo();
    txtNroINMETRO->DefineText(m_Afericao->Numero);
    txtMarcaINMETRO->DefineText(m_Afericao->Marca);
    txtDtVerifINMETRO->DefineText(CStr(m_Afericao->DataVerificacao));
    txtDtVencINMETRO->DefineText(CStr(m_Afericao->DataVencimento));
    m_NroIntImgCertif = m_Afericao->NroIntImgCertif;
    SetaTipoAfer(m_Afericao->TipoAfer);
    if (m_Afericao->TipoAfer == TipoDeclaracao) {
        const std::vector<std::string> portaria = Divide(m_Afericao->PortDimel, "/");
        if (portaria.size() < 2) {
            throw Falha(NumeroFalha::SubscritoForaDoIntervalo);
        }
        txtNroPortDIMEL->DefineText(portaria[0]);
        txtAnoPortDIMEL->DefineText(portaria[1]);
    }
    cboTipo->DefineComboSomenteLeitura(true);
    MontaDocumento();
} catch (...) {
    PassaFalha(" < frmEquipAfericoes.MontaTela");
}

void frmEquipAfericoes::MontaComboTipo()
try {
    cboTipo->AdicionaItem("Aferição do INMETRO|1");
    const std::string tipoEquip = m_Afericao->Sensor()->Equipto()->TipoEquip;
    if (tipoEquip == "P" || tipoEquip == "C" || tipoEquip == "L" || tipoEquip == "M") {
        cboTipo->AdicionaItem("Declaração de Conformidade|2");
    }
} catch (...) {
    PassaFalha(" < frmEquipAfericoes.MontaComboTipo");
}

void frmEquipAfericoes::MontaDocumento()
{
    const bool temDocumento = m_Afericao->NroIntImgCertif != 0;
    cmdProcurar->DefineCaption(temDocumento ? "Alterar" : "Procurar");
    cmdProcurar->DefineEnabled(!m_Detalhes);
    cmdVisualizar->DefineEnabled(temDocumento);
    if (temDocumento) {
        cmdUpload->DefineEnabled(false);
    }
    lblMsgCert->DefineCaption(temDocumento ? "Documento Encontrado!" : "Sem Imagem Digitalizada!");
}

void frmEquipAfericoes::SetaTipoAfer(std::uint8_t iTipo)
try {
    const bool declaracao = iTipo == TipoDeclaracao;
    fraPortariaDIMEL->DefineVisible(declaracao);
    lblMarcaINMETRO->DefineCaption(declaracao ? "Declaração:" : "Certificado:");
    fraDocumento->DefineCaption(declaracao ? "Documento da Declaração de Conformidade:" : "Documento do Certificado:");
    cboTipo->DefineValor(CStr(declaracao ? TipoDeclaracao : TipoINMETRO));
} catch (...) {
    PassaFalha(" < frmEquipAfericoes.SetaTipoAfer");
}

bool frmEquipAfericoes::ValidouOk()
try {
    if (cboTipo->Valor() == CStr(TipoINMETRO)) {
        if (txtNroINMETRO->Text().empty()) {
            return Recusa("Informe o Número INMETRO!", txtNroINMETRO);
        }
    } else {
        if (Val(txtNroPortDIMEL->Text()) == 0) {
            return Recusa("Informe o Número da Portaria DIMEL!", txtNroPortDIMEL);
        }
        if (Val(txtAnoPortDIMEL->Text()) == 0) {
            return Recusa("Informe o Ano da Portaria DIMEL!", txtAnoPortDIMEL);
        }
    }
    if (txtDtVerifINMETRO->Valor().empty()) {
        return Recusa("Informe a data de Verificação!", txtDtVerifINMETRO);
    }
    if (!txtDtVerifINMETRO->DataValida()) {
        return Recusa("Informe uma data de Verificação válida!", txtDtVerifINMETRO);
    }
    if (txtDtVencINMETRO->Valor().empty()) {
        return Recusa("Informe a data de Vencimento!", txtDtVencINMETRO);
    }
    if (!txtDtVencINMETRO->DataValida()) {
        return Recusa("Informe uma data de Vencimento válida!", txtDtVencINMETRO);
    }
    const Data verificacao = CDate(txtDtVerifINMETRO->Text());
    const Data vencimento = CDate(txtDtVencINMETRO->Text());
    if (!(verificacao < vencimento)) {
        return Recusa("A data de Vencimento deve ser maior que a data de Verificação!", txtDtVencINMETRO);
    }
    if (!VerificaConflitoDatas(verificacao, vencimento) || !DataVerificacaoEmConflito(verificacao)) {
        return false;
    }
    if (m_NroIntImgCertif == 0) {
        return Recusa("É obrigatório fazer Upload do Documento em PDF!", nullptr);
    }
    return true;
} catch (...) {
    PassaFalha(" < frmEquipAfericoes.ValidouOk");
}

bool frmEquipAfericoes::Recusa(const std::string &sTexto, const Ref<IFocavel> &ctl)
{
    goMensagem()->ExibeMensagem(sTexto, ctl);
    return false;
}

bool frmEquipAfericoes::VerificaConflitoDatas(Data dtVerif, Data dtVenc)
try {
    Ref<clsAfericao> outra = PrimeiraEmConflito(
        *m_Afericao, [&](const clsAfericao &a) { return dtVerif <= a.DataVerificacao && a.DataVerificacao <= dtVenc; });
    if (outra.Nada()) {
        return true;
    }
    Plataforma()->CaixaInformacao("Período da nova aferição em conflito com a aferição dos dias " +
                                      Plataforma()->DataCurta(outra->DataVerificacao) + " a " +
                                      Plataforma()->DataCurta(outra->DataVencimento),
                                  "Atenção");
    return false;
} catch (...) {
    PassaFalha(" < frmEquipAfericoes.VerificaConflitoDatas");
}

bool frmEquipAfericoes::DataVerificacaoEmConflito(Data dtVerif)
try {
    Ref<clsAfericao> outra = PrimeiraEmConflito(
        *m_Afericao, [&](const clsAfericao &a) { return a.DataVerificacao <= dtVerif && dtVerif <= a.DataVencimento; });
    if (outra.Nada()) {
        return true;
    }
    std::string texto = "Data de verificação do INMETRO (" + Plataforma()->DataCurta(dtVerif) + ") em conflito com a " +
                        QuebraDeLinha + "aferição dos dias " + Format(outra->DataVerificacao, "dd/mm/yyyy") + " e " +
                        Format(outra->DataVencimento, "dd/mm/yyyy") + ".";
    if (!m_Inclusao) {
        Plataforma()->CaixaInformacao(texto, "Atenção");
        return false;
    }
    const std::string linhaVazia = QuebraDeLinha + QuebraDeLinha;
    texto += linhaVazia + "Deseja continuar ?" + linhaVazia +
             "OBS: Caso continue, a data de vencimento da aferição em conflito será" + QuebraDeLinha +
             "recalculada automaticamente (um dia antes da nova data de verificação).";
    if (!Plataforma()->PerguntaSimNao(texto, "Atenção", false)) {
        return false;
    }
    outra->DataVencimento = dtVerif.MaisDias(-1);
    outra->Alterado = true;
    return true;
} catch (...) {
    PassaFalha(" < frmEquipAfericoes.DataVerificacaoEmConflito");
}

bool frmEquipAfericoes::ProcurarPDF()
try {
    cdAbreArquivos->DefineFilter("PDF (*.pdf)|*.pdf");
    cdAbreArquivos->DefineDefaultExt("*.pdf");
    cdAbreArquivos->DefineDialogTitle("Selecione o arquivo");
    cdAbreArquivos->ShowOpen();
    const std::string arquivo = cdAbreArquivos->FileName();
    if (!arquivo.empty() && Plataforma()->TamanhoArquivo(arquivo) > TamanhoMaximoDocumento) {
        return Recusa("Arquivo '" + arquivo + "' ultrapassa tamanho máximo (5 Mb).", nullptr);
    }
    if (Trim(arquivo).empty()) {
        lblMsgCert->DefineCaption("Sem Arquivo!");
        cmdUpload->DefineEnabled(false);
        return false;
    }
    if (!VisualizaPDF(arquivo)) {
        return false;
    }
    lblMsgCert->DefineCaption("Arquivo " + arquivo);
    return true;
} catch (...) {
    PassaFalha(" < frmEquipAfericoes.ProcurarPDF");
}

bool frmEquipAfericoes::VisualizaPDF(const std::string &sCaminho)
try {
    Ref<IDocumentoPDF> documento = Host().CriaDocumentoPDF();
    documento->DefineArquivoPDF(sCaminho);
    return documento->Mostra(true);
} catch (...) {
    PassaFalha(" < frmEquipAfericoes.VisualizaPDF");
}

void frmEquipAfericoes::cboTipo_Click()
{
    SetaTipoAfer(CByte(cboTipo->Valor()));
}

void frmEquipAfericoes::cmdProcurar_Click()
{
    lblMsgCert->DefineCaption("Aguardando...");
    if (ProcurarPDF()) {
        cmdUpload->DefineEnabled(true);
    }
}

// Shows the document of the record, not the one that was just sent.
void frmEquipAfericoes::cmdVisualizar_Click()
{
    if (m_Afericao->NroIntImgCertif == 0) {
        lblMsgCert->DefineCaption("Selecione o arquivo PDF!");
        cmdProcurar->DefineCaption("Procurar");
        return;
    }
    cmdProcurar->DefineCaption("Alterar");
    lblMsgCert->DefineCaption("Baixando Documento, aguarde!");
    Bytes bytes;
    if (!goDadosVor()->RecebeDocumento(m_Afericao->NroIntImgCertif, bytes, true)) {
        lblMsgCert->DefineCaption("Não foi Possivel Recuperar o Documento!");
        return;
    }
    const std::string caminho = Plataforma()->CaminhoModulo() + "\\VORTemp.pdf";
    if (Plataforma()->ExisteArquivo(caminho)) {
        Plataforma()->ApagaArquivo(caminho);
    }
    Plataforma()->GravaArquivo(caminho, bytes);
    Bytes().swap(bytes); // not held while the person reads
    if (VisualizaPDF(caminho)) {
        lblMsgCert->DefineCaption("Operação Concluida com Sucesso!");
    }
}

void frmEquipAfericoes::cmdUpload_Click()
{
    m_Arquivo.clear();
    m_FezUpload = false;
    m_Arquivo = cdAbreArquivos->FileName();
    if (Trim(m_Arquivo).empty()) {
        lblMsgCert->DefineCaption("Nenhum PDF foi Selecionado!");
        return;
    }
    cmdUpload->DefineEnabled(false);
    // Only a good call gives a number back, so that OK is refused after a failed one.
    m_NroIntImgCertif = 0;
    lblMsgCert->DefineCaption("Fazendo Upload, Aguarde!");
    if (goDadosVor()->EnviaDocumento(m_Arquivo, m_NroIntImgCertif, 0)) {
        m_FezUpload = true;
        cmdUpload->DefineEnabled(false);
    } else {
        Plataforma()->CaixaInformacao("Não foi possivel realizar o Upload!", "Atenção");
        lblMsgCert->DefineCaption("Não foi possivel realizar o Upload!");
    }
    lblMsgCert->DefineCaption("Upload Concluido!"); // after a failure too: the box has told of it
}

void frmEquipAfericoes::cmdOK_Click()
{
    if (!ValidouOk()) {
        return;
    }
    m_Afericao->TipoAfer = CByte(cboTipo->Valor());
    m_Afericao->Numero = txtNroINMETRO->Text();
    m_Afericao->Marca = txtMarcaINMETRO->Text();
    m_Afericao->DataVerificacao = CDate(txtDtVerifINMETRO->Text());
    m_Afericao->DataVencimento = CDate(txtDtVencINMETRO->Text());
    if (m_Afericao->TipoAfer == TipoDeclaracao) {
        m_Afericao->PortDimel = txtNroPortDIMEL->Text() + "/" + txtAnoPortDIMEL->Text();
    }
    m_Afericao->NroIntImgCertif = m_NroIntImgCertif;
    m_Afericao->Alterado = true;
    m_OK = true;
    Descarregar();
}

void frmEquipAfericoes::cmdCancelar_Click()
{
    Descarregar();
}

void frmEquipAfericoes::Form_Unload(bool &)
{
    Solta();
}
