#include "limits/frmLimitesDifDetalhes.h"

#include "host/DiaEspecificoED.h"
#include "host/LimiteDifED.h"
#include "shell/Geral.h"
#include "shell/ModGeral.h"

#include <algorithm>

namespace {

constexpr std::int16_t TipoLimiteDif = 1;
constexpr std::int16_t TipoDiaEspecifico = 2;
constexpr std::int16_t TipoHorarioProibido = 3;

constexpr std::int16_t PaginaGeral = 0;
constexpr std::int16_t PaginaOpcoes = 1;

AjustesControle Ajuste(std::string nome, const Ref<IControle> &container, std::string caption = {})
{
    AjustesControle ajustes;
    ajustes.Nome = std::move(nome);
    ajustes.Container = container;
    ajustes.Caption = std::move(caption);
    return ajustes;
}

AjustesZtMask AjusteDeHora(std::string nome, const Ref<IControle> &container)
{
    AjustesZtMask ajustes;
    ajustes.Nome = std::move(nome);
    ajustes.Container = container;
    ajustes.Mascara = "00:00";
    ajustes.MaxLength = 5;
    ajustes.Tipo = 12;
    return ajustes;
}

AjustesZtMask AjusteDeVelocidade(std::string nome, const Ref<IControle> &container)
{
    AjustesZtMask ajustes;
    ajustes.Nome = std::move(nome);
    ajustes.Container = container;
    ajustes.MaxLength = 3;
    ajustes.Tipo = 1;
    return ajustes;
}

std::string FimDaCaption(std::int16_t tipo)
{
    switch (tipo) {
    case TipoLimiteDif:
        return " Limite Diferenciado";
    case TipoDiaEspecifico:
        return " Dia Específico";
    case TipoHorarioProibido:
        return " Horário Proibido";
    default:
        return "";
    }
}

} // namespace

void frmLimitesDifDetalhes::CriaControles()
{
    DefineTamanho(6300, 5400);
    const auto fabrica = Host().Controles();
    const Ref<IForm> eu = EsteForm();

    const auto ztFrame1 = Guarda(fabrica->CriaZtFrame(eu, Ajuste("ztFrame1", nullptr)));
    Guarda(fabrica->CriaLabel(eu, Ajuste("Label7", ztFrame1, "Código Eqpto:")));
    lblCodEquip = Guarda(fabrica->CriaLabel(eu, Ajuste("lblCodEquip", ztFrame1)));

    AjustesSSTab abas;
    abas.Nome = "sstDados";
    abas.Paginas = {"Geral", "Opções"};
    sstDados = Guarda(fabrica->CriaSSTab(eu, abas));
    for (std::size_t pagina = 0; pagina < fraDados.size(); ++pagina) {
        AjustesControle moldura = Ajuste("fraDados", sstDados);
        moldura.Indice = static_cast<std::int16_t>(pagina);
        moldura.Pagina = moldura.Indice;
        moldura.Enabled = pagina == 0;
        fraDados[pagina] = Guarda(fabrica->CriaZtFrame(eu, moldura));
    }
    CriaPaginaGeral();
    CriaPaginaOpcoes();

    AjustesZtCommand ok;
    ok.Nome = "ztCmdOK";
    ok.Caption = "&OK";
    ok.LockFormOnClick = true;
    ztCmdOK = Guarda(fabrica->CriaZtCommand(eu, ok));
    AjustesCommandButton ajuda;
    ajuda.Nome = "cmdAjuda";
    ajuda.Caption = "&Ajuda";
    cmdAjuda = Guarda(fabrica->CriaCommandButton(eu, ajuda));
    AjustesCommandButton cancelar;
    cancelar.Nome = "cmdCancelar";
    cancelar.Caption = "&Cancelar";
    cmdCancelar = Guarda(fabrica->CriaCommandButton(eu, cancelar));

    Liga(sstDados->Click(), &frmLimitesDifDetalhes::sstDados_Click);
    Liga(chkVelocMin->Click(), &frmLimitesDifDetalhes::chkVelocMin_Click, "chkVelocMin_Click");
    Liga(ztCmdOK->ValidaClick(), &frmLimitesDifDetalhes::ztCmdOK_ValidaClick);
    Liga(ztCmdOK->Click(), &frmLimitesDifDetalhes::ztCmdOK_Click);
    Liga(cmdCancelar->Click(), &frmLimitesDifDetalhes::cmdCancelar_Click);
}

void frmLimitesDifDetalhes::CriaPaginaGeral()
{
    static constexpr const char *Dias[NroDias] = {"Domingo", "Segunda", "Terça",  "Quarta",
                                                  "Quinta",  "Sexta",   "Sábado", "Feriados"};
    const auto fabrica = Host().Controles();
    const Ref<IForm> eu = EsteForm();
    const Ref<IControle> pagina = fraDados[0];

    fraDiasSemana = Guarda(fabrica->CriaZtFrame(eu, Ajuste("fraDiasSemana", pagina)));
    for (std::size_t dia = 1; dia <= NroDias; ++dia) {
        AjustesControle ajustes = Ajuste("chkDia", fraDiasSemana, Dias[dia - 1]);
        ajustes.Indice = static_cast<std::int16_t>(dia);
        chkDia[dia - 1] = Guarda(fabrica->CriaCheckBox(eu, ajustes));
    }

    fraData = Guarda(fabrica->CriaZtFrame(eu, Ajuste("fraData", pagina)));
    Guarda(fabrica->CriaLabel(eu, Ajuste("Label9", fraData, "Data:")));
    ztdData = Guarda(fabrica->CriaZtData(eu, Ajuste("ztdData", fraData)));

    const auto Frame1 = Guarda(fabrica->CriaZtFrame(eu, Ajuste("Frame1", pagina, "Horário:")));
    Guarda(fabrica->CriaLabel(eu, Ajuste("Label2", Frame1, "Inicial:")));
    ztmHInicial = Guarda(fabrica->CriaZtMask(eu, AjusteDeHora("ztmHInicial", Frame1)));
    Guarda(fabrica->CriaLabel(eu, Ajuste("Label4", Frame1, "Final:")));
    ztmHFinal = Guarda(fabrica->CriaZtMask(eu, AjusteDeHora("ztmHFinal", Frame1)));

    fraVelocPerm = Guarda(fabrica->CriaZtFrame(eu, Ajuste("fraVelocPerm", pagina)));
    Guarda(fabrica->CriaLabel(eu, Ajuste("Label3", fraVelocPerm, "Veloc. Permitida:")));
    txtVelocPerm = Guarda(fabrica->CriaZtMask(eu, AjusteDeVelocidade("txtVelocPerm", fraVelocPerm)));
    Guarda(fabrica->CriaLabel(eu, Ajuste("Label5", fraVelocPerm, "Km/h")));
}

void frmLimitesDifDetalhes::CriaPaginaOpcoes()
{
    const auto fabrica = Host().Controles();
    const Ref<IForm> eu = EsteForm();
    const Ref<IControle> pagina = fraDados[1];

    chkVelocMin = Guarda(fabrica->CriaCheckBox(
        eu, Ajuste("chkVelocMin", pagina, "Não permitir a inclusão de AIT's p/ velocidades inferiores a: ")));
    const auto Frame3 = Guarda(fabrica->CriaZtFrame(eu, Ajuste("Frame3", pagina)));
    Guarda(fabrica->CriaLabel(eu, Ajuste("Label1", Frame3, "Veloc. Mínima: ")));
    AjustesZtMask velocMin = AjusteDeVelocidade("txtVelocMin", Frame3);
    velocMin.ReadOnly = true;
    txtVelocMin = Guarda(fabrica->CriaZtMask(eu, velocMin));
    Guarda(fabrica->CriaLabel(eu, Ajuste("Label6", Frame3, "Km/h")));
    Guarda(fabrica->CriaImage(eu, Ajuste("Image1", pagina)));
    Guarda(fabrica->CriaLabel(
        eu, Ajuste("Label8", pagina,
                   "Se essa opção estiver selecionada, o sistema somente permitirá a inclusão de AIT, se a velocidade "
                   "medida, no horário estabelecido, for maior que a velocidade mínima.")));
}

bool frmLimitesDifDetalhes::CarregaInclusao(std::int16_t Tipo, std::int32_t NroIntEquip, const std::string &codEquip)
try {
    m_Salvou = false;
    m_Inclusao = true;
    m_Detalhes = false;
    m_NroInt = 0;
    m_Tipo = Tipo;
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
    m_Tipo = Tipo;
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
    m_Tipo = Tipo;
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
    DefineCaption(inicio + FimDaCaption(m_Tipo));
    fraDiasSemana->DefineVisible(m_Tipo != TipoDiaEspecifico);
    fraData->DefineVisible(m_Tipo == TipoDiaEspecifico);
    fraVelocPerm->DefineVisible(m_Tipo != TipoHorarioProibido);
    sstDados->DefineTabVisible(PaginaOpcoes, m_Tipo != TipoHorarioProibido);
    lblCodEquip->DefineCaption(codEquip);
    if (!m_Inclusao) {
        if (m_Tipo == TipoLimiteDif || m_Tipo == TipoHorarioProibido) {
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
    const auto resposta =
        ConsultaRemota<LimiteDifED>([] { return goGateway(); }, "EquiptoRN", "consultaSimplesLimiteDif",
                                    [&] {
                                        auto pedido = Novo<LimiteDifED>();
                                        pedido->NroInt = m_NroInt;
                                        return pedido;
                                    });
    if (resposta) {
        const LimiteDifED &limite = **resposta;
        m_NroIntEquip = limite.NroIntEquip;
        chkDia.at(static_cast<std::size_t>(limite.Dia) - 1)->DefineValue(1);
        ztmHInicial->DefineText(Format(CDbl(limite.HoraInicio.Valor()), "00:00"));
        ztmHFinal->DefineText(Format(CDbl(limite.HoraFim.Valor()), "00:00"));
        if (m_Tipo == TipoLimiteDif) {
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
    const auto resposta =
        ConsultaRemota<DiaEspecificoED>([] { return goGateway(); }, "EquiptoRN", "consultaSimplesDiaEspecifico",
                                        [&] {
                                            auto pedido = Novo<DiaEspecificoED>();
                                            pedido->NroInt = m_NroInt;
                                            return pedido;
                                        });
    if (resposta) {
        const DiaEspecificoED &dia = **resposta;
        m_NroIntEquip = dia.NroIntEquip;
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
    const bool comVelocidade = m_Tipo != TipoHorarioProibido;
    if (m_Tipo == TipoDiaEspecifico && !ztdData->DataValida()) {
        return Recusa(PaginaGeral, ztdData, "Informe uma data válida.");
    }
    if (m_Tipo != TipoDiaEspecifico && m_Inclusao && !TemDiaMarcado()) {
        return Recusa(PaginaGeral, nullptr, "Você deve selecionar no mínimo 1 (um) dia!");
    }
    if (comVelocidade && Trim(txtVelocPerm->Text()).empty()) {
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
    if (comVelocidade && chkVelocMin->Value() == 1 && Trim(txtVelocMin->Text()).empty()) {
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

bool frmLimitesDifDetalhes::SalvaLimiteDif()
try {
    Plataforma()->DefinePonteiro(PonteiroAmpulheta);
    const bool salvou = ComandaRemoto([] { return goGateway(); }, "EquiptoRN", "alteraListaLimitesDif",
                                      [&] {
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
                                              }
                                              limite->NroIntEquip = m_NroIntEquip;
                                              limite->Dia = static_cast<std::uint8_t>(dia);
                                              limite->HoraInicio = CLng(ztmHInicial->Valor());
                                              limite->HoraFim = CLng(ztmHFinal->Valor());
                                              limite->Ativo = 1;
                                              if (m_Tipo == TipoLimiteDif) {
                                                  limite->TipoLimite = 1;
                                                  limite->VelocPerm = CInt(txtVelocPerm->Valor());
                                                  limite->VelocMin = VelocMinInformada();
                                              } else {
                                                  limite->TipoLimite = 2;
                                                  limite->VelocPerm = 0;
                                                  limite->VelocMin = 0;
                                              }
                                              limites->Add(limite);
                                          }
                                          return equipto;
                                      });
    Plataforma()->DefinePonteiro(PonteiroNormal);
    return salvou;
} catch (...) {
    PassaFalha(" < frmLimitesDifDetalhes.SalvaLimiteDif");
}

bool frmLimitesDifDetalhes::SalvaDiaEspec()
try {
    const std::string operacao = m_Inclusao ? "adicionaDiaEspecifico" : "alteraDiaEspecifico";
    Plataforma()->DefinePonteiro(PonteiroAmpulheta);
    const bool salvou = ComandaRemoto([] { return goGateway(); }, "EquiptoRN", operacao,
                                      [&] {
                                          auto dia = Novo<DiaEspecificoED>();
                                          if (m_NroInt > 0) {
                                              dia->NroInt = m_NroInt;
                                          }
                                          dia->NroIntEquip = m_NroIntEquip;
                                          dia->Data = CDate(ztdData->Text());
                                          dia->HoraInicio = CLng(ztmHInicial->Valor());
                                          dia->HoraFim = CLng(ztmHFinal->Valor());
                                          dia->VelocPerm = CInt(txtVelocPerm->Valor());
                                          dia->VelocMin = VelocMinInformada();
                                          dia->Ativo = 1;
                                          return dia;
                                      });
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
    const bool ehLimite = m_Tipo == TipoLimiteDif || m_Tipo == TipoHorarioProibido;
    if (ehLimite ? SalvaLimiteDif() : SalvaDiaEspec()) {
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
