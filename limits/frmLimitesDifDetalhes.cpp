#include "limits/frmLimitesDifDetalhes.h"

#include "host/DiaEspecificoED.h"
#include "host/Indicador.h"
#include "host/LimiteDifED.h"
#include "shell/ChamadaRN.h"
#include "shell/Geral.h"
#include "shell/ModGeral.h"

#include <algorithm>

namespace {

constexpr std::int16_t PaginaGeral = 0;
constexpr std::int16_t PaginaOpcoes = 1;

Peca Hora(std::string nome)
{
    return {.Ajustes = AjustesZtMask{.MaxLength = 5, .Tipo = TipoMascara::Hora, .Mascara = "00:00"},
            .Nome = std::move(nome)};
}

Peca DesenhaGeral()
{
    static constexpr const char *Dias[] = {"Domingo", "Segunda", "Terça",  "Quarta",
                                           "Quinta",  "Sexta",   "Sábado", "Feriados"};
    std::vector<Peca> dias;
    for (const char *dia : Dias) {
        dias.push_back({.Ajustes = AjustesCheckBox{},
                        .Nome = "chkDia",
                        .Indice = static_cast<std::int16_t>(dias.size() + 1),
                        .Caption = dia});
    }
    const auto meio = dias.begin() + 4;
    const Peca diasSemana = {
        .Ajustes = AjustesZtFrame{.Contorno = true},
        .Nome = "fraDiasSemana",
        .NomeAcessivel = "Dias da semana",
        .Disposicao = Arranjo::Grade,
        .Pecas = {EmLinha({dias.begin(), meio}), EmLinha({meio, dias.end()})},
    };
    const Peca data = {
        .Ajustes = AjustesZtFrame{},
        .Nome = "fraData",
        .Disposicao = Arranjo::Linha,
        .Pecas = {{.Ajustes = AjustesLabel{}, .Nome = "Label9", .Caption = "Data:"},
                  {.Ajustes = AjustesZtData{}, .Nome = "ztdData"},
                  Mola()},
    };
    const Peca horario = {
        .Ajustes = AjustesZtFrame{.Contorno = true},
        .Nome = "Frame1",
        .Caption = "Horário:",
        .Disposicao = Arranjo::Linha,
        .Pecas = {{.Ajustes = AjustesLabel{}, .Nome = "Label2", .Caption = "Inicial:"},
                  Hora("ztmHInicial"),
                  {.Ajustes = AjustesLabel{}, .Nome = "Label4", .Caption = "Final:"},
                  Hora("ztmHFinal"),
                  Mola()},
    };
    const Peca veloc = {
        .Ajustes = AjustesZtFrame{},
        .Nome = "fraVelocPerm",
        .Disposicao = Arranjo::Linha,
        .Pecas = {{.Ajustes = AjustesLabel{}, .Nome = "Label3", .Caption = "Veloc. Permitida:"},
                  {.Ajustes = AjustesZtMask{.MaxLength = 3, .Tipo = TipoMascara::Digitos}, .Nome = "txtVelocPerm"},
                  {.Ajustes = AjustesLabel{.Papel = PapelLabel::Texto}, .Nome = "Label5", .Caption = "Km/h"},
                  Mola()},
    };
    return {.Ajustes = AjustesZtFrame{},
            .Nome = "fraDados",
            .Indice = PaginaGeral,
            .Pecas = {diasSemana, data, horario, veloc, Mola()}};
}

Peca DesenhaOpcoes()
{
    const Peca veloc = {
        .Ajustes = AjustesZtFrame{},
        .Nome = "Frame3",
        .Disposicao = Arranjo::Linha,
        .Pecas = {{.Ajustes = AjustesLabel{}, .Nome = "Label1", .Caption = "Veloc. Mínima: "},
                  {.Ajustes = AjustesZtMask{.MaxLength = 3, .Tipo = TipoMascara::Digitos, .ReadOnly = true},
                   .Nome = "txtVelocMin"},
                  {.Ajustes = AjustesLabel{.Papel = PapelLabel::Texto}, .Nome = "Label6", .Caption = "Km/h"},
                  Mola()},
    };
    const Peca explicacao = EmLinha({
        {.Ajustes = AjustesImage{.Icone = "informacao"}, .Nome = "Image1"},
        {.Ajustes = AjustesLabel{.Papel = PapelLabel::Paragrafo},
         .Nome = "Label8",
         .Caption = "Se essa opção estiver selecionada, o sistema somente permitirá a inclusão de AIT, se a velocidade "
                    "medida, no horário estabelecido, for maior que a velocidade mínima.",
         .Elastica = true},
    });
    return {
        .Ajustes = AjustesZtFrame{},
        .Nome = "fraDados",
        .Indice = PaginaOpcoes,
        .Enabled = false,
        .Pecas = {{.Ajustes = AjustesCheckBox{},
                   .Nome = "chkVelocMin",
                   .Caption = "Não permitir a inclusão de AIT's p/ velocidades inferiores a: "},
                  veloc,
                  explicacao,
                  Mola()},
    };
}

} // namespace

Desenho frmLimitesDifDetalhes::Desenho() const
{
    const Peca cabecalho = {
        .Ajustes = AjustesZtFrame{},
        .Nome = "ztFrame1",
        .Disposicao = Arranjo::Linha,
        .Pecas = {{.Ajustes = AjustesLabel{}, .Nome = "Label7", .Caption = "Código Eqpto:"},
                  {.Ajustes = AjustesLabel{.Papel = PapelLabel::Valor}, .Nome = "lblCodEquip", .Elastica = true}},
    };
    const Peca abas = {
        .Ajustes = AjustesSSTab{.Paginas = {"Geral", "Opções"}},
        .Nome = "sstDados",
        .Elastica = true,
        .Pecas = {DesenhaGeral(), DesenhaOpcoes()},
    };
    const Peca botoes = EmLinha({
        Mola(),
        {.Ajustes = AjustesZtCommand{.LockFormOnClick = true}, .Nome = "ztCmdOK", .Caption = "&OK"},
        {.Ajustes = AjustesCommandButton{}, .Nome = "cmdAjuda", .Caption = "&Ajuda"},
        {.Ajustes = AjustesCommandButton{}, .Nome = "cmdCancelar", .Caption = "&Cancelar"},
    });
    return {
        .Caption = "Limite Diferenciado", .Largura = 6300, .Altura = 5400, .Raiz = EmColuna({cabecalho, abas, botoes})};
}

void frmLimitesDifDetalhes::LigaControles()
{
    Toma(lblCodEquip, "lblCodEquip");
    Toma(sstDados, "sstDados");
    Toma(fraDados, "fraDados");
    Toma(fraDiasSemana, "fraDiasSemana");
    Toma(chkDia, "chkDia", 1);
    Toma(fraData, "fraData");
    Toma(ztdData, "ztdData");
    Toma(ztmHInicial, "ztmHInicial");
    Toma(ztmHFinal, "ztmHFinal");
    Toma(fraVelocPerm, "fraVelocPerm");
    Toma(txtVelocPerm, "txtVelocPerm");
    Toma(chkVelocMin, "chkVelocMin");
    Toma(txtVelocMin, "txtVelocMin");
    Toma(ztCmdOK, "ztCmdOK");
    Toma(cmdCancelar, "cmdCancelar");

    Liga(sstDados->Click(), &frmLimitesDifDetalhes::sstDados_Click);
    Liga(chkVelocMin->Click(), &frmLimitesDifDetalhes::chkVelocMin_Click, "chkVelocMin_Click");
    Liga(ztCmdOK->ValidaClick(), &frmLimitesDifDetalhes::ztCmdOK_ValidaClick);
    Liga(ztCmdOK->Click(), &frmLimitesDifDetalhes::ztCmdOK_Click);
    Liga(cmdCancelar->Click(), &frmLimitesDifDetalhes::cmdCancelar_Click);
}

bool frmLimitesDifDetalhes::CarregaInclusao(std::int16_t Tipo, std::int32_t NroIntEquip, const std::string &codEquip)
try {
    m_Salvou = false;
    m_Inclusao = true;
    m_Detalhes = false;
    m_NroInt = 0;
    m_Tipo = TipoDeLimiteDe(Tipo);
    m_NroIntEquip = NroIntEquip;
    Carregar();
    if (MontaTela(codEquip)) {
        goGeral->FormShow(EsteForm(), true, nullptr);
    }
    return m_Salvou;
} catch (...) {
    gSubMostraErro("frmLimitesDifDetalhes.CarregaInclusao");
    AbandonaCarga();
    return false;
}

bool frmLimitesDifDetalhes::CarregaEdicao(std::int16_t Tipo, const std::string &codEquip, std::int32_t NroInt)
try {
    m_Salvou = false;
    m_Inclusao = false;
    m_Detalhes = false;
    m_Tipo = TipoDeLimiteDe(Tipo);
    m_NroIntEquip = 0; // that of an earlier opening must not travel if the row cannot be read
    m_NroInt = NroInt;
    Carregar();
    lblCodEquip->DefineCaption(codEquip);
    if (MontaTela(codEquip)) {
        goGeral->FormShow(EsteForm(), true, nullptr);
    }
    return m_Salvou;
} catch (...) {
    gSubMostraErro("frmLimitesDifDetalhes.CarregaEdicao");
    AbandonaCarga();
    return false;
}

void frmLimitesDifDetalhes::CarregaDetalhes(std::int16_t Tipo, const std::string &codEquip, std::int32_t NroInt)
try {
    m_Salvou = false;
    m_Inclusao = false;
    m_Detalhes = true;
    m_Tipo = TipoDeLimiteDe(Tipo);
    m_NroInt = NroInt;
    Carregar();
    lblCodEquip->DefineCaption(codEquip);
    if (MontaTela(codEquip)) {
        ztCmdOK->DefineVisible(false);
        cmdCancelar->DefineCaption("&Fechar");
        goMensagem()->PreparaDetalhes(EsteForm());
        goGeral->FormShow(EsteForm(), false, nullptr);
    }
} catch (...) {
    gSubMostraErro("frmLimitesDifDetalhes.CarregaEdicao");
    AbandonaCarga();
}

bool frmLimitesDifDetalhes::MontaTela(const std::string &codEquip)
try {
    const std::string inicio = m_Inclusao ? "Novo" : m_Detalhes ? "Detalhes do" : "Editar";
    DefineCaption(*m_Tipo.Descr != 0 ? inicio + " " + m_Tipo.Descr : inicio);
    fraDiasSemana->DefineVisible(!m_Tipo.DeUmaData());
    fraData->DefineVisible(m_Tipo.DeUmaData());
    fraVelocPerm->DefineVisible(m_Tipo.ComVelocidade);
    sstDados->DefineTabVisible(PaginaOpcoes, m_Tipo.ComVelocidade);
    lblCodEquip->DefineCaption(codEquip);
    m_VersaoLida = 0;
    if (!m_Inclusao) {
        if (m_Tipo.DaSemana()) {
            BuscaLimitesDif();
        } else {
            BuscaDiasEspec();
        }
    }
    return true;
} catch (...) {
    PassaFalha(" < frmLimitesDifDetalhes.MontaTela");
}

void frmLimitesDifDetalhes::BuscaLimitesDif()
try {
    Plataforma()->DefinePonteiro(PonteiroAmpulheta);
    const auto resposta = ConsultaRN<LimiteDifED>("EquiptoRN", m_Tipo.Consulta,
                                                  [&] { return SoComNumero(&LimiteDifED::NroInt, m_NroInt); });
    if (resposta) {
        const LimiteDifED &limite = **resposta;
        m_NroIntEquip = limite.NroIntEquip;
        m_VersaoLida = limite.VersaoLida;
        chkDia.at(static_cast<std::size_t>(limite.Dia) - 1)->DefineValue(1);
        ztmHInicial->DefineText(Format(CDbl(limite.HoraInicio.Valor()), "00:00"));
        ztmHFinal->DefineText(Format(CDbl(limite.HoraFim.Valor()), "00:00"));
        if (m_Tipo.ComVelocidade) {
            txtVelocPerm->DefineText(CStr(limite.VelocPerm.Valor()));
            MostraVelocMin(limite.VelocMin);
        }
        for (const auto &caixa : chkDia) {
            caixa->DefineEnabled(false);
        }
    }
    Plataforma()->DefinePonteiro(PonteiroNormal);
} catch (...) {
    PassaFalha(" < frmLimitesDifDetalhes.BuscaLimitesDif");
}

void frmLimitesDifDetalhes::BuscaDiasEspec()
try {
    Plataforma()->DefinePonteiro(PonteiroAmpulheta);
    const auto resposta = ConsultaRN<DiaEspecificoED>("EquiptoRN", m_Tipo.Consulta,
                                                      [&] { return SoComNumero(&DiaEspecificoED::NroInt, m_NroInt); });
    if (resposta) {
        const DiaEspecificoED &dia = **resposta;
        m_NroIntEquip = dia.NroIntEquip;
        m_VersaoLida = dia.VersaoLida;
        ztdData->DefineText(Format(dia.Data, "dd/mm/yyyy"));
        ztmHInicial->DefineText(Format(CDbl(dia.HoraInicio.Valor()), "00:00"));
        ztmHFinal->DefineText(Format(CDbl(dia.HoraFim.Valor()), "00:00"));
        txtVelocPerm->DefineText(CStr(dia.VelocPerm.Valor()));
        MostraVelocMin(dia.VelocMin);
    }
    Plataforma()->DefinePonteiro(PonteiroNormal);
} catch (...) {
    PassaFalha(" < frmLimitesDifDetalhes.BuscaDiasEspec");
}

void frmLimitesDifDetalhes::MostraVelocMin(std::int16_t velocMin)
{
    if (velocMin > 0) {
        chkVelocMin->DefineValue(1);
        txtVelocMin->DefineReadOnly(false);
        txtVelocMin->DefineText(CStr(velocMin));
    } else {
        chkVelocMin->DefineValue(0);
        txtVelocMin->DefineReadOnly(true);
    }
}

bool frmLimitesDifDetalhes::Recusa(std::int16_t pagina, const Ref<IControle> &controle, const std::string &mensagem)
{
    sstDados->DefineTab(pagina);
    goMensagem()->ExibeMensagem(mensagem, controle);
    return false;
}

bool frmLimitesDifDetalhes::TemDiaMarcado() const
{
    return std::ranges::any_of(chkDia, [](const auto &caixa) { return caixa->Value() == 1; });
}

bool frmLimitesDifDetalhes::ValidouOk()
try {
    if (m_Tipo.DeUmaData() && !ztdData->DataValida()) {
        return Recusa(PaginaGeral, ztdData, "Informe uma data válida.");
    }
    if (m_Tipo.DaSemana() && m_Inclusao && !TemDiaMarcado()) {
        return Recusa(PaginaGeral, nullptr, "Você deve selecionar no mínimo 1 (um) dia!");
    }
    if (m_Tipo.ComVelocidade && Trim(txtVelocPerm->Text()).empty()) {
        return Recusa(PaginaGeral, txtVelocPerm, "Informe a velocidade permitida.");
    }
    if (ztmHInicial->Valor().empty()) {
        return Recusa(PaginaGeral, ztmHInicial, "Informe a hora inicial.");
    }
    if (!IsDate(ztmHInicial->Text())) {
        return Recusa(PaginaGeral, ztmHInicial, "Informe uma hora inicial válida.");
    }
    if (ztmHFinal->Valor().empty()) {
        return Recusa(PaginaGeral, ztmHFinal, "Informe a hora final.");
    }
    if (!IsDate(ztmHFinal->Text())) {
        return Recusa(PaginaGeral, ztmHFinal, "Informe uma hora final válida.");
    }
    if (ztmHInicial->Text() > ztmHFinal->Text()) {
        return Recusa(PaginaGeral, ztmHInicial, "Horário final deve ser maior que o horário inicial!");
    }
    if (m_Tipo.ComVelocidade && chkVelocMin->Value() == 1 && Trim(txtVelocMin->Text()).empty()) {
        return Recusa(PaginaOpcoes, txtVelocMin, "Informe a velocidade mínima.");
    }
    return true;
} catch (...) {
    PassaFalha(" < frmLimitesDifDetalhes.ValidouOk");
}

std::int16_t frmLimitesDifDetalhes::VelocMinInformada() const
{
    return chkVelocMin->Value() == 1 ? CInt(txtVelocMin->Valor()) : std::int16_t{0};
}

Ref<EquiptoED> frmLimitesDifDetalhes::LimitesInformados() const
{
    auto equipto = Novo<EquiptoED>();
    auto limites = Novo<Colecao<Ref<LimiteDifED>>>();
    equipto->ListaLimiteDif = limites;
    for (std::size_t dia = 1; dia <= NroDias; ++dia) {
        if (chkDia[dia - 1]->Value() != 1) {
            continue;
        }
        auto limite = Novo<LimiteDifED>();
        if (m_NroInt > 0) {
            limite->NroInt = m_NroInt;
            limite->VersaoLida = m_VersaoLida;
        }
        limite->NroIntEquip = m_NroIntEquip;
        limite->Dia = static_cast<std::uint8_t>(dia);
        limite->HoraInicio = CLng(ztmHInicial->Valor());
        limite->HoraFim = CLng(ztmHFinal->Valor());
        limite->Ativo = Indicador::Sim;
        limite->TipoLimite = m_Tipo.TipoLimite;
        limite->VelocPerm = m_Tipo.ComVelocidade ? CInt(txtVelocPerm->Valor()) : std::int16_t{0};
        limite->VelocMin = m_Tipo.ComVelocidade ? VelocMinInformada() : std::int16_t{0};
        limites->Add(limite);
    }
    return equipto;
}

bool frmLimitesDifDetalhes::SalvaLimiteDif()
try {
    Plataforma()->DefinePonteiro(PonteiroAmpulheta);
    const std::string operacao = m_Inclusao ? m_Tipo.Inclui : m_Tipo.Altera;
    const bool salvou = ComandaRN("EquiptoRN", operacao, [&] { return LimitesInformados(); });
    Plataforma()->DefinePonteiro(PonteiroNormal);
    return salvou;
} catch (...) {
    PassaFalha(" < frmLimitesDifDetalhes.SalvaLimiteDif");
}

Ref<DiaEspecificoED> frmLimitesDifDetalhes::DiaInformado() const
{
    auto dia = Novo<DiaEspecificoED>();
    if (m_NroInt > 0) {
        dia->NroInt = m_NroInt;
        dia->VersaoLida = m_VersaoLida;
    }
    dia->NroIntEquip = m_NroIntEquip;
    dia->Data = CDate(ztdData->Text());
    dia->HoraInicio = CLng(ztmHInicial->Valor());
    dia->HoraFim = CLng(ztmHFinal->Valor());
    dia->VelocPerm = CInt(txtVelocPerm->Valor());
    dia->VelocMin = VelocMinInformada();
    dia->Ativo = Indicador::Sim;
    return dia;
}

bool frmLimitesDifDetalhes::SalvaDiaEspec()
try {
    const std::string operacao = m_Inclusao ? m_Tipo.Inclui : m_Tipo.Altera;
    Plataforma()->DefinePonteiro(PonteiroAmpulheta);
    const bool salvou = ComandaRN("EquiptoRN", operacao, [&] { return DiaInformado(); });
    Plataforma()->DefinePonteiro(PonteiroNormal);
    return salvou;
} catch (...) {
    PassaFalha(" < frmLimitesDifDetalhes.SalvaDiaEspec");
}

void frmLimitesDifDetalhes::chkVelocMin_Click()
{
    if (chkVelocMin->Value() == 0) {
        txtVelocMin->DefineText("");
        txtVelocMin->DefineReadOnly(true);
    } else {
        txtVelocMin->DefineReadOnly(false);
    }
}

void frmLimitesDifDetalhes::sstDados_Click(std::int16_t abaAnterior)
try {
    fraDados.at(static_cast<std::size_t>(sstDados->Tab()))->DefineEnabled(true);
    fraDados.at(static_cast<std::size_t>(abaAnterior))->DefineEnabled(false);
} catch (...) {
    PassaFalha(" < sstDados_Click");
}

void frmLimitesDifDetalhes::ztCmdOK_ValidaClick(bool &cancela)
try {
    cancela = !ValidouOk();
} catch (...) {
    PassaFalha(" < frmLimitesDifDetalhes.ztCmdOk_ValidaClick");
}

void frmLimitesDifDetalhes::ztCmdOK_Click()
try {
    if (m_Tipo.DaSemana() ? SalvaLimiteDif() : SalvaDiaEspec()) {
        m_Salvou = true;
        Descarregar();
    }
} catch (...) {
    PassaFalha(" < frmLimitesDifDetalhes.ztCmdOk_Click");
}

void frmLimitesDifDetalhes::cmdCancelar_Click()
{
    Descarregar();
}
