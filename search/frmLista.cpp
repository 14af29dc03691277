#include "search/frmLista.h"

#include "host/AfericaoED.h"
#include "host/Conversoes.h"
#include "shell/Geral.h"
#include "shell/ModGeral.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace {

// The module whose criteria the window knows, and the index of the frame that shows them.
constexpr std::string_view Equipamentos = "Equipamentos";
constexpr std::int16_t FrameEquipamentos = 0;

constexpr std::string_view CriterioTodos = "0";
constexpr std::string_view CriterioCodigo = "1";
constexpr std::string_view CriterioSubcodigo = "2";

constexpr std::int16_t TipoConsultaVigente = 1;

// Distances of the criteria bar, in twips.
constexpr std::int32_t FolgaBarraCriterios = 90;
constexpr std::int32_t EsquerdaFrame = 45;
constexpr std::int32_t EntreBotoes = 30;
constexpr std::int32_t LarguraBotao = 1215;
constexpr std::int32_t AlturaBotao = 375;

} // namespace

Desenho frmLista::Desenho() const
{
    const Peca criterios = {
        .Ajustes = AjustesZtFrame{.Contorno = true},
        .Nome = "fraDados",
        .Indice = FrameEquipamentos,
        .NomeAcessivel = "Critérios da pesquisa",
        .Left = EsquerdaFrame,
        .Height = 1410,
        .Disposicao = Arranjo::Grade,
        .Pecas = {EmLinha({{.Ajustes = AjustesZtClienteSetor{}, .Nome = "ztCliente", .Vao = 4}}),
                  EmLinha({{.Ajustes = AjustesLabel{}, .Nome = "lblTipoAgente", .Caption = "Tipo Agente:"},
                           {.Ajustes = AjustesZtCombo{}, .Nome = "cboTipoAgente"},
                           {.Ajustes = AjustesLabel{}, .Nome = "lblTipoEquip", .Caption = "Equipto:"},
                           {.Ajustes = AjustesZtCombo{}, .Nome = "cboTipoEquipto"}}),
                  EmLinha({{.Ajustes = AjustesLabel{}, .Nome = "Label1", .Caption = "Critério:"},
                           {.Ajustes = AjustesZtCombo{.Conteudo = "Todos|0??Código|1??Subcódigo|2??"},
                            .Nome = "cboCriterio"},
                           {.Ajustes = AjustesZtMask{.CaracteresAceitos = "._", .TabelaCaracteres = 1},
                            .Nome = "txtCodEquip",
                            .Rotulo = "Código:",
                            .Caracteres = 20}}),
                  EmLinha({{.Ajustes = AjustesCheckBox{},
                            .Nome = "chkInativos",
                            .Caption = "Listar apenas inativos",
                            .Vao = 4}})},
    };
    const Peca lista = {
        .Ajustes = AjustesZtList{.TipoMenu = 3,
                                 .TipoMenuComPersonalizado = 2,
                                 .AncorarAoForm = true,
                                 .BotoesFecharAjuda = false,
                                 .BarraCriteriosAtiva = true,
                                 .BarraCriteriosAutoOcultar = false,
                                 .BarraCriteriosAltura = 1500},
        .Nome = "ztlLista",
        .NomeAcessivel = "Equipamentos",
        .Height = 6720,
        .Elastica = true,
        .Pecas = {criterios},
    };
    const Peca botoes = EmLinha({
        {.Ajustes = AjustesCommandButton{},
         .Nome = "cmdOK",
         .Caption = "&OK",
         .Enabled = false, // until a search brings rows
         .Width = LarguraBotao,
         .Height = AlturaBotao},
        {.Ajustes = AjustesCommandButton{},
         .Nome = "cmdCancelar",
         .Caption = "&Cancelar",
         .Left = LarguraBotao + EntreBotoes,
         .Width = LarguraBotao,
         .Height = AlturaBotao},
        Mola(),
    });
    return {.Caption = "Lista", .Largura = 11520, .Altura = 7200, .Raiz = EmColuna({lista, botoes})};
}

void frmLista::LigaControles()
{
    Toma(ztlLista, "ztlLista");
    Toma(fraDados, "fraDados");
    Toma(ztCliente, "ztCliente");
    Toma(cboTipoAgente, "cboTipoAgente");
    Toma(cboTipoEquipto, "cboTipoEquipto");
    Toma(cboCriterio, "cboCriterio");
    Toma(txtCodEquip, "txtCodEquip");
    Toma(chkInativos, "chkInativos");
    Toma(cmdOK, "cmdOK");
    Toma(cmdCancelar, "cmdCancelar");

    Liga(ztlLista->BotaoLocalizarValida(), &frmLista::ztlLista_BotaoLocalizarValida);
    Liga(ztlLista->BotaoLocalizarEnvia(), &frmLista::ztlLista_BotaoLocalizarEnvia);
    Liga(ztCliente->Change(), &frmLista::LimpaPesquisa, "ztCliente_Change");
    Liga(cboTipoAgente->Click(), &frmLista::cboTipoAgente_Click, "cboTipoAgente_Click");
    Liga(cboTipoEquipto->Click(), &frmLista::LimpaPesquisa, "cboTipoEquipto_Click");
    Liga(cboCriterio->Click(), &frmLista::cboCriterio_Click, "cboCriterio_Click");
    Liga(txtCodEquip->Change(), &frmLista::LimpaPesquisa, "txtCodEquip_Change");
    Liga(chkInativos->Click(), &frmLista::LimpaPesquisa, "chkInativos_Click");
    Liga(cmdOK->Click(), &frmLista::cmdOK_Click, "cmdOK_Click");
    Liga(cmdCancelar->Click(), &frmLista::cmdCancelar_Click, "cmdCancelar_Click");
}

void frmLista::SetaTitulo(const std::string &sTitulo)
{
    goGeral->DefineTitulo(EsteForm(), sTitulo);
}

void frmLista::Localiza()
{
    ztlLista_BotaoLocalizarEnvia();
}

bool frmLista::CarregaForm(const Ref<IModulo> &modulo, const TabelaColunas &aColunas, const std::string &Titulo,
                           const Ref<clsListaParametros> &parametros, bool bModal)
try {
    m_Carregando = true;
    m_Selecionou = false;
    Modal = bModal;
    m_Modulo = modulo;
    Carregar();
    IgnoraErro([&] {
        if (Plataforma()->TemIcone(Titulo)) {
            DefineIcone(Titulo);
        }
    });
    gsubConfigLista(aColunas, ztlLista);
    FormCarregado.dispara(ztlLista);
    DefineCaption(Titulo);
    AtualizaFrame();
    if (parametros) {
        LocalizacaoAutomatica(parametros);
    }
    ztlLista->BotoesFecharAjuda(!Modal);
    cmdOK->DefineVisible(Modal);
    cmdCancelar->DefineVisible(Modal);
    goGeral->FormShow(EsteForm(), Modal, nullptr);
    if (Modal) {
        return m_Selecionou;
    }
    ztlLista->DefineJanelaExibida(true);
    Plataforma()->ProcessaMensagens();
    m_Carregando = false;
    return false;
} catch (...) {
    AbandonaCarga();
    PassaFalha(" < frmLista.CarregaForm");
}

bool frmLista::EhEquipamentos() const
{
    return ModuloVivo()->Modulo() == Equipamentos;
}

void frmLista::AtualizaFrame()
try {
    AtivaFrame();
    if (EhEquipamentos()) {
        m_TrabFoto = ModuloVivo()->GetValorCampo("TrabFoto") == "1";
        ztCliente->DefineCodCliente(m_TrabFoto ? goDadosVor()->ObtemOrgao()->CodCliente() : 1);
        goDadosVor()->PreencheTipoAgente(cboTipoAgente, m_TrabFoto, true, true);
        goDadosVor()->PreencheTipoEquip(cboTipoEquipto, 0, m_TrabFoto, true, true);
        cboCriterio->DefineIndiceAtual(0);
    }
    m_Pronto = true;
} catch (...) {
    PassaFalha(" < frmLista.AtualizaFrame");
}

void frmLista::AtivaFrame()
try {
    for (const Ref<IztFrame> &frame : fraDados) {
        frame->DefineVisible(false);
        frame->PintaComoBotao();
    }
    if (EhEquipamentos()) {
        Ref<IztFrame> frame = fraDados[FrameEquipamentos];
        ztlLista->BarraCriteriosAtiva(true);
        ztlLista->DefineBarraCriteriosAltura(frame->Height() + FolgaBarraCriterios);
        frame->DefineVisible(true);
        frame->DefineLeft(EsquerdaFrame);
        frame->DefineTop((ztlLista->BarraCriteriosAltura() - frame->Height()) / 2);
    } else {
        ztlLista->BarraCriteriosAtiva(false);
    }
    AtualizaTabIndex();
    LimpaResultado();
} catch (...) {
    PassaFalha(" < frmLista.AtivaFrame");
}

void frmLista::AtualizaTabIndex()
try {
    if (!EhEquipamentos()) {
        return;
    }
    ztCliente->DefineTabIndex(0);
    cboTipoAgente->DefineTabIndex(1);
    cboTipoEquipto->DefineTabIndex(2);
    cboCriterio->DefineTabIndex(3);
    txtCodEquip->DefineTabIndex(4);
    chkInativos->DefineTabIndex(5);
} catch (...) {
    PassaFalha(" < frmLista.AtualizaTabIndex");
}

void frmLista::LimpaResultado()
{
    if (m_Pronto && ztlLista->NroItens() > 0) {
        ModuloVivo()->LimpaPesquisa();
    }
}

void frmLista::LocalizacaoAutomatica(const Ref<clsListaParametros> &parametros)
try {
    if (EhEquipamentos()) {
        if (parametros->Existe("TipoEquip")) {
            cboTipoEquipto->DefineValor(parametros->Item("TipoEquip")->Valor);
        }
        if (parametros->Existe("Criterio")) {
            cboCriterio->DefineValor(parametros->Item("Criterio")->Valor);
            if (cboCriterio->Valor() == CriterioCodigo) {
                txtCodEquip->DefineText(parametros->Item("CodEquip")->Valor);
            }
        }
    }
    bool cancela = false;
    ztlLista_BotaoLocalizarValida(cancela);
    if (!cancela) {
        ztlLista_BotaoLocalizarEnvia();
        ztlLista->AtualizaLista();
    }
} catch (...) {
    PassaFalha(" < frmLista.LocalizacaoAutomatica");
}

void frmLista::LimpaPesquisa()
{
    ModuloVivo()->LimpaPesquisa();
}

void frmLista::cboCriterio_Click()
{
    const std::string criterio = cboCriterio->Valor();
    if (criterio == CriterioCodigo || criterio == CriterioSubcodigo) {
        txtCodEquip->DefineRotulo(criterio == CriterioCodigo ? "Código" : "Subcódigo");
        txtCodEquip->DefineVisible(true);
        gSubDefineFoco(txtCodEquip);
    } else if (criterio == CriterioTodos) {
        txtCodEquip->DefineVisible(false);
    }
    LimpaPesquisa();
}

void frmLista::cboTipoAgente_Click()
{
    goDadosVor()->PreencheTipoEquip(cboTipoEquipto, CInt(cboTipoAgente->Valor()), m_TrabFoto, true, true);
    LimpaPesquisa();
}

void frmLista::ztlLista_BotaoLocalizarValida(bool &cancela)
try {
    if (!EhEquipamentos()) {
        return;
    }
    if (!ztCliente->Valida()) {
        cancela = true;
        return;
    }
    const std::string criterio = cboCriterio->Valor();
    const bool semCodigo = txtCodEquip->Text().empty();
    if (criterio == CriterioCodigo && semCodigo) {
        cancela = true;
        goMensagem()->ExibeMensagem("Informe o Código do Equipamento!", txtCodEquip);
    } else if (criterio == CriterioSubcodigo && semCodigo) {
        cancela = true;
        goMensagem()->ExibeMensagem("Informe o Subcódigo do Equipamento!", txtCodEquip);
    }
} catch (...) {
    gSubMostraErro("frmLista.ztlLista_BotaoLocalizarValida");
}

void frmLista::ztlLista_BotaoLocalizarEnvia()
try {
    auto criterios = Novo<clsListaParametros>();
    if (EhEquipamentos()) {
        const std::string criterio = cboCriterio->Valor();
        criterios->Add("Cliente", ztCliente->Cliente());
        criterios->Add("Setor", ztCliente->Setor());
        criterios->Add("TipoAgente", cboTipoAgente->Valor());
        criterios->Add("TipoEquip", cboTipoEquipto->Valor());
        criterios->Add("Criterio", criterio);
        if (criterio == CriterioCodigo) {
            criterios->Add("CodEquip", txtCodEquip->Text());
        } else if (criterio == CriterioSubcodigo) {
            criterios->Add("SubCodEquip", txtCodEquip->Text());
        }
        criterios->Add("Ativo", chkInativos->Value() == 0 ? "1" : "2");
    }
    ModuloVivo()->Localizar(criterios);
    if (Modal) {
        cmdOK->DefineEnabled(ztlLista->NroItens() > 0);
    }
} catch (...) {
    gSubMostraErro("frmLista.ztlLista_BotaoLocalizarEnvia");
}

void frmLista::cmdOK_Click()
{
    if (ztlLista->ItemAtual() == -1) {
        goMensagem()->ExibeMensagem("Nenhum item selecionado!", nullptr);
        return;
    }
    m_Parametros = Novo<clsListaParametros>();
    if (!EhEquipamentos()) {
        goMensagem()->ExibeMensagem("Seleção não prevista para o módulo '" + ModuloVivo()->Modulo() + "'", nullptr);
        return;
    }
    const std::int32_t nroIntEquip = CLng(ztlLista->ValorAtual("NroIntEquip"));
    Ref<AfericaoED> afericao;
    const std::string dtInfracao = ModuloVivo()->GetValorCampo("DtInfracao");
    if (!dtInfracao.empty()) {
        afericao = gFunConsultaAfericaoVigente(nroIntEquip, CDate(dtInfracao), TipoConsultaVigente);
        if (afericao->NroIntAfericao == 0) {
            goMensagem()->ExibeMensagem("Equipamento não possui Aferição Vigente para a data de Infração.", nullptr);
            return;
        }
    }
    m_Parametros->Add("NroIntEquip", CStr(nroIntEquip));
    m_Parametros->Add("CodEquip", ztlLista->ValorAtual("Código"));
    m_Parametros->Add("Modelo", ztlLista->ValorAtual("Modelo"));
    m_Parametros->Add("VelocPerm", ztlLista->ValorAtual("VelocPerm"));
    if (afericao) {
        m_Parametros->Add("NroInmetro", afericao->Numero);
        m_Parametros->Add("MarcaInmetro", afericao->Marca);
        m_Parametros->Add("DtVerifInmetro", CStr(afericao->DataVerificacao));
    }
    m_Selecionou = true;
    Descarregar();
}

void frmLista::cmdCancelar_Click()
{
    Descarregar();
}

void frmLista::Form_Activate()
try {
    if (!m_Carregando) {
        FormAtivado.dispara();
    }
} catch (...) {
    gSubMostraErro("frmLista.Form_Activate");
}

void frmLista::Form_Deactivate()
try {
    FormDesativado.dispara();
} catch (...) {
    gSubMostraErro("frmLista.Form_Deactivate");
}

void frmLista::Form_Resize()
try {
    if (Modal) {
        cmdOK->DefineLeft(ztlLista->Left());
        cmdOK->DefineTop(ztlLista->Top() + ztlLista->Height() - cmdOK->Height());
        cmdCancelar->DefineLeft(cmdOK->Left() + cmdOK->Width() + EntreBotoes);
        cmdCancelar->DefineTop(cmdOK->Top());
    }
} catch (...) {
    gSubMostraErro("frmLista.Form_Resize");
}

void frmLista::Form_Unload(bool &cancela)
{
    if (!m_Carregando) {
        IgnoraErro([&] { AntesFechar.dispara(cancela); });
    }
    if (!cancela) {
        Solta();
    }
}

void frmLista::Solta()
{
    m_Modulo = nullptr;
}
