#include "equipment/COEquipamentos.h"

#include "equipment/frmEquipDetalhes.h"
#include "limits/TipoDeLimite.h"
#include "limits/frmLimitesDif.h"
#include "search/frmLista.h"
#include "shell/ChamadaRN.h"
#include "shell/Coluna.h"
#include "shell/ControladorLista.h"
#include "shell/Generico.h"
#include "shell/Geral.h"
#include "shell/ModGeral.h"

#include <array>
#include <optional>
#include <utility>

namespace {

constexpr std::string_view TituloJanela = "Equipamentos";

constexpr std::uint8_t CriterioCodigo = 1;
constexpr std::uint8_t CriterioSubcodigo = 2;
constexpr std::uint8_t Ativos = 1;
constexpr std::uint8_t Inativos = 2;
constexpr std::string_view TodosTipos = "T";
constexpr std::uint8_t ComTrabFoto = 1;
constexpr std::uint8_t SemTrabFoto = 2;

// Columns of the list; those of width 0 are hidden and carry data for the commands.
const TabelaColunas &ColunasLista()
{
    static const TabelaColunas colunas{
        {},
        {"Código", 1185},
        {"Descrição", 3840},
        {"Município", 2460},
        {"Tipo", 1785},
        {"Modelo", 1840},
        {"NroIntEquip", 0},
        {"IndLimiteDif", 0},
        {"TipoEquip", 0},
        {"VelocPerm", 0},
    };
    return colunas;
}

constexpr const char *MenuReativar = "mnuZTLObjReativar";
constexpr const char *MenuLimitesDif = "mnuZTLObjLimitesDif";
constexpr const char *MenuDiasEspec = "mnuZTLObjDiasEspec";
constexpr const char *MenuHorarioProib = "mnuZTLObjHorarioProib";

// Items that the list's menu gets besides its standard ones.
const std::vector<ItemMenuLista> &MenuProprio()
{
    static const std::vector<ItemMenuLista> itens{
        {MenuReativar, "Reativar", "", "Reativar/Desativar Equipamento", true},
        {MenuLimitesDif, "Limites Diferenciados", "Limites" + QuebraDeLinha + " Diferenciados", "Limites Diferenciados",
         true},
        {MenuDiasEspec, "Dias Específicos", "Dias" + QuebraDeLinha + " Específicos", "Dias Específicos", false},
        {MenuHorarioProib, "Horários Proibidos", "Horários" + QuebraDeLinha + " Proibidos", "Horários Proibidos",
         false},
    };
    return itens;
}

// Items in use, and those that the list has but this module does not: equipment is never deleted.
constexpr auto VisibilidadeMenu = std::to_array<std::pair<const char *, bool>>({
    {MenuLista::Novo, true},
    {MenuLista::Editar, true},
    {MenuLista::Detalhes, true},
    {MenuReativar, true},
    {MenuLimitesDif, true},
    {MenuDiasEspec, true},
    {MenuHorarioProib, true},
    {MenuLista::Excluir, false},
    {MenuLista::Localizar, false},
});

// Items that need a permission, with its action.
constexpr auto PermissaoMenu = std::to_array<std::pair<const char *, const char *>>({
    {MenuLista::Novo, "I"},
    {MenuLista::Editar, "A"},
    {MenuReativar, "E"},
});

// Items that need a row.
constexpr auto MenuDeLinha = std::to_array<const char *>(
    {MenuLista::Detalhes, MenuLista::Editar, MenuReativar, MenuLimitesDif, MenuDiasEspec, MenuHorarioProib});

// Type of the only equipment that has prohibited hours.
constexpr std::string_view AgenteEletronico = "F";

// The row counter is 16 bits wide: a longer page is fault 6.
TabelaTexto LinhasDe(const Colecao<Ref<EquiptoED>> &pagina)
{
    TabelaTexto linhas(static_cast<std::int32_t>(ColunasLista().size()) - 1);
    const std::int16_t total = CInt(pagina.Count());
    for (std::int32_t posicao = 1; posicao <= total; ++posicao) {
        const Ref<EquiptoED> &equipto = pagina.Item(posicao);
        const std::int32_t linha = linhas.AdicionaLinha();
        linhas.Celula(1, linha) = equipto->Codigo;
        linhas.Celula(2, linha) = equipto->Descricao;
        linhas.Celula(3, linha) = gFunBuscaDescrMunic(equipto->CodMunic);
        linhas.Celula(4, linha) = gFunDescrEquipto(equipto->TipoEquip);
        linhas.Celula(5, linha) = equipto->Modelo;
        linhas.Celula(6, linha) = CStr(equipto->NroIntEquip.Valor());
        linhas.Celula(7, linha) = CStr(equipto->TemLimiteDif.Valor());
        linhas.Celula(8, linha) = equipto->TipoEquip;
        linhas.Celula(9, linha) = CStr(equipto->VelocPermitida.Valor());
    }
    return linhas;
}

// Tells the host that the local table of equipment is out of date.
void AvisaTabelaAlterada()
{
    goGeral->TrataBD()->TabelaAlterada("VOREQUIPTO", true, false, Valor(), Valor());
}

} // namespace

void COEquipamentos::CriaJanela()
{
    Desliga();
    m_frmLista = ::Novo<frmLista>();
    Liga(m_frmLista->FormAtivado, &COEquipamentos::m_frmLista_FormAtivado);
    Liga(m_frmLista->FormCarregado, &COEquipamentos::m_frmLista_FormCarregado, "m_frmLista_FormCarregado");
}

void COEquipamentos::CarregaJanela(const Ref<clsListaParametros> &parametros)
try {
    m_Selecao = false;
    CriaJanela();
    m_frmLista->CarregaForm(Eu(*this), ColunasLista(), std::string(TituloJanela), parametros, false);
} catch (...) {
    gSubMostraErro("COEquipamentos.CarregaJanela");
}

bool COEquipamentos::CarregaSelecao(const Ref<clsListaParametros> &parametros)
try {
    m_Selecao = true;
    m_pEquiptoED = nullptr;
    m_pAfericaoED = nullptr;
    m_DtInfracao = {};
    if (parametros->Existe("DtInfracao")) {
        m_DtInfracao = CDate(parametros->Item("DtInfracao")->Valor);
    }
    CriaJanela();
    if (!m_frmLista->CarregaForm(Eu(*this), ColunasLista(), std::string(TituloJanela), parametros, true)) {
        return false;
    }
    Ref<clsListaParametros> escolhido = m_frmLista->Parametros();
    m_pEquiptoED = ::Novo<EquiptoED>();
    m_pEquiptoED->NroIntEquip = CLng(escolhido->Item("NroIntEquip")->Valor);
    m_pEquiptoED->Modelo = escolhido->Item("Modelo")->Valor;
    m_pEquiptoED->Codigo = escolhido->Item("CodEquip")->Valor;
    m_pEquiptoED->VelocPermitida = CInt(escolhido->Item("VelocPerm")->Valor);
    if (escolhido->Existe("NroInmetro")) {
        m_pAfericaoED = ::Novo<AfericaoED>();
        m_pAfericaoED->Numero = escolhido->Item("NroInmetro")->Valor;
        m_pAfericaoED->Marca = escolhido->Item("MarcaInmetro")->Valor;
        m_pAfericaoED->DataVerificacao = CDate(escolhido->Item("DtVerifInmetro")->Valor);
    }
    return true;
} catch (...) {
    gSubMostraErro("COEquipamentos.CarregaSelecao");
    return false;
}

void COEquipamentos::Localizar(const Ref<clsListaParametros> &parametros)
try {
    m_Cliente = parametros->Item("Cliente")->Valor;
    m_Setor = parametros->Item("Setor")->Valor;
    m_TipoAgente = CByte(parametros->Item("TipoAgente")->Valor);
    m_TipoEquip = parametros->Item("TipoEquip")->Valor;
    m_Criterio = CByte(parametros->Item("Criterio")->Valor);
    if (m_Criterio == CriterioCodigo) {
        m_CodEquip = parametros->Item("CodEquip")->Valor;
    } else if (m_Criterio == CriterioSubcodigo) {
        m_SubCodEquip = parametros->Item("SubCodEquip")->Valor;
    }
    m_Ativo = CByte(parametros->Item("Ativo")->Valor);
    MontaTitulo();
    LocalizarEquipamentos(false);
} catch (...) {
    gSubMostraErro("COEquipamentos.Localizar");
}

void COEquipamentos::LimpaPesquisa()
{
    if (m_ZtList && m_ZtList->NroItens() >= 1) {
        m_ZtList->Limpa(std::nullopt);
    }
}

bool COEquipamentos::ExigeCampo(const std::string &)
{
    return false;
}

std::string COEquipamentos::GetValorCampo(const std::string &sNome)
{
    if (sNome == "TrabFoto") {
        return m_TrabFoto ? "1" : "2";
    }
    if (sNome == "DtInfracao") {
        return CStr(m_DtInfracao);
    }
    return "";
}

void COEquipamentos::SetValorCampo(const std::string &sNome, const std::string &sValor)
{
    if (sNome == "TrabFoto") {
        m_TrabFoto = sValor == "1";
    } else if (sNome == "DtInfracao") {
        m_DtInfracao = CDate(sValor);
    }
}

// A code of an earlier search stays in the title, though a search by another criterion ignores it.
void COEquipamentos::MontaTitulo()
{
    m_Titulo = m_Cliente;
    if (!m_Setor.empty()) {
        m_Titulo += " [" + m_Setor + "]";
    }
    if (m_TipoAgente != 0) {
        m_Titulo += " - Tipo Agente: " + gFunDescrTipoAgente(m_TipoAgente);
    }
    if (m_TipoEquip != TodosTipos) {
        m_Titulo += " - Tipo Equipto.: " + gFunDescrEquipto(m_TipoEquip);
    }
    if (!m_CodEquip.empty()) {
        m_Titulo += " - Cód. Equipto.: " + m_CodEquip;
    }
    if (!m_SubCodEquip.empty()) {
        m_Titulo += " - Subcód. Equipto.: " + m_SubCodEquip;
    }
    if (m_Ativo == Inativos) {
        m_Titulo += " [Inativos]";
    }
}

Ref<ListaEquiptoED> COEquipamentos::Criterios(bool continua) const
{
    auto criterios = ::Novo<ListaEquiptoED>();
    if (continua) {
        criterios->ProxNroIntEquip = m_ProxNroIntEquip;
    }
    criterios->ClienteInc = m_Cliente;
    if (m_TrabFoto) {
        criterios->IndTrabFoto = ComTrabFoto;
        if (!m_Setor.empty()) {
            criterios->SetorInc = m_Setor;
        }
    } else {
        criterios->IndTrabFoto = SemTrabFoto;
    }
    if (m_TipoAgente != 0) {
        criterios->TipoAgente = m_TipoAgente;
    }
    if (m_TipoEquip != TodosTipos) {
        criterios->TipoEquip = m_TipoEquip;
    }
    if (m_Criterio == CriterioCodigo) {
        criterios->Codigo = m_CodEquip;
    } else if (m_Criterio == CriterioSubcodigo) {
        criterios->SubCodigo = m_SubCodEquip;
    }
    criterios->Ativo = m_Ativo;
    return criterios;
}

bool COEquipamentos::LocalizarEquipamentos(bool continua)
try {
    Plataforma()->DefinePonteiro(PonteiroAmpulheta);
    if (!continua) {
        m_ZtList->Limpa(false);
        m_ZtList->DefineTitulo(m_Titulo);
    }
    bool achou = false;
    const auto resposta = ConsultaRN<ListaEquiptoED>("EquiptoRN", "lista2", [&] { return Criterios(continua); });
    if (resposta) {
        const ListaDe<EquiptoED> pagina = (*resposta)->Equipamentos;
        if (pagina.Nada()) {
            goMensagem()->ExibeMensagem("Não foram encontrados registros para os critérios especificados.", nullptr);
        } else {
            m_ProxNroIntEquip = (*resposta)->ProxNroIntEquip;
            TabelaTexto linhas = LinhasDe(*pagina);
            GuardaVersoes(*pagina);
            m_ZtList->CarregaItens(linhas);
            m_ZtList->DefineTemMais(m_ProxNroIntEquip >= 1);
            m_ZtList->AtualizaLista();
            m_ZtList->DefineItemAtual(m_ZtList->NroItens());
            achou = true;
        }
    }
    Plataforma()->DefinePonteiro(PonteiroNormal);
    return achou;
} catch (...) {
    PassaFalha(" < COEquipamentos.LocalizarEquipamentos");
}

void COEquipamentos::GuardaVersoes(const Colecao<Ref<EquiptoED>> &pagina)
{
    const std::int32_t quantos = pagina.Count();
    for (std::int32_t posicao = 1; posicao <= quantos; ++posicao) {
        const Ref<EquiptoED> &equipto = pagina.Item(posicao);
        m_VersoesLidas[equipto->NroIntEquip] = equipto->VersaoLida;
    }
}

// The host may have closed the window while a command ran.
void COEquipamentos::Atualizar()
{
    if (m_frmLista->Aberta()) {
        LocalizarEquipamentos(false);
    }
}

void COEquipamentos::MenuInicial()
try {
    m_ZtList->EstiloMenu1(3);
    m_ZtList->EstiloMenu2(2);
    m_ZtList->IncluiItensMenu(MenuProprio());
    for (const auto &[chave, visivel] : VisibilidadeMenu) {
        m_ZtList->MenuVisivel(chave, visivel);
    }
    for (const auto &[chave, acao] : PermissaoMenu) {
        BloqueiaSemPermissao(m_ZtList, chave, acao);
    }
    HabilitaMenu();
} catch (...) {
    PassaFalha(" < COEquipamentos.MenuInicial");
}

void COEquipamentos::HabilitaMenu()
try {
    m_ZtList->MenuHabilitado(MenuLista::Novo, true);
    if (m_ZtList->NroItens() == 0) {
        for (const char *chave : MenuDeLinha) {
            m_ZtList->MenuHabilitado(chave, false);
        }
        return;
    }
    m_ZtList->MenuHabilitado(MenuLista::Detalhes, true);
    m_ZtList->MenuHabilitado(MenuLista::Editar, m_Ativo == Ativos);
    m_ZtList->MenuHabilitado(MenuReativar, true);
    m_ZtList->MenuTexto(MenuReativar, m_Ativo == Inativos ? "Reativar" : "Desativar");
    const bool temLimites = Val(m_ZtList->ValorAtual("IndLimiteDif")) == 1;
    const bool temHorarios = m_ZtList->ValorAtual("TipoEquip") == AgenteEletronico;
    m_ZtList->MenuHabilitado(MenuLimitesDif, temLimites);
    m_ZtList->MenuHabilitado(MenuDiasEspec, temLimites);
    m_ZtList->MenuHabilitado(MenuHorarioProib, temHorarios);
} catch (...) {
    PassaFalha(" < COEquipamentos.HabilitaMenu");
}

void COEquipamentos::Novo()
try {
    Ref<frmEquipDetalhes> form = FormCompartilhado<frmEquipDetalhes>();
    if (form->CarregaInclusao(m_TrabFoto)) {
        AvisaTabelaAlterada();
        if (m_frmLista->Aberta()) {
            m_frmLista->Localiza();
        }
    }
} catch (...) {
    PassaFalha(" < COEquipamentos.Novo");
}

void COEquipamentos::Editar()
try {
    const std::int32_t nroIntEquip = NroIntEquipAtual();
    Ref<frmEquipDetalhes> form = FormCompartilhado<frmEquipDetalhes>();
    if (form->CarregaEdicao(nroIntEquip, m_TrabFoto)) {
        AvisaTabelaAlterada();
        Atualizar();
    }
} catch (...) {
    PassaFalha(" < COEquipamentos.Editar");
}

void COEquipamentos::Detalhes()
try {
    const std::int32_t nroIntEquip = NroIntEquipAtual();
    ::Novo<frmEquipDetalhes>()->CarregaDetalhes(nroIntEquip, m_TrabFoto);
} catch (...) {
    PassaFalha(" < COEquipamentos.Editar");
}

void COEquipamentos::Inativar()
try {
    std::string operacao;
    if (m_Ativo == Ativos) {
        operacao = "desativa";
    } else if (m_Ativo == Inativos) {
        operacao = "reativa";
    }
    const std::string pergunta = "Deseja " + operacao + "r o equipamento " + m_ZtList->ColunaAtual(1) + " ?";
    if (!Plataforma()->PerguntaSimNao(pergunta, Plataforma()->Aplicacao()->Titulo(), false)) {
        return;
    }
    const std::int32_t nroIntEquip = NroIntEquipAtual();
    const auto pedido = [&] {
        auto registro = SoComNumero(&EquiptoED::NroIntEquip, nroIntEquip);
        registro->VersaoLida = m_VersoesLidas[nroIntEquip];
        return registro;
    };
    if (ComandaRN("EquiptoRN", operacao, pedido)) {
        AvisaTabelaAlterada();
        Atualizar();
    }
} catch (...) {
    PassaFalha(" < COEquipamentos.Inativar");
}

void COEquipamentos::LimitesDiferenciados(std::int16_t tipo)
try {
    AbreLimites(tipo);
} catch (...) {
    gSubMostraErro("COEquipamentos.LimitesDiferenciados");
}

void COEquipamentos::DiasEspecificos()
try {
    AbreLimites(TipoDiaEspecifico);
} catch (...) {
    gSubMostraErro("COEquipamentos.DiasEspecificos");
}

void COEquipamentos::AbreLimites(std::int16_t tipo)
{
    const std::int32_t nroIntEquip = NroIntEquipAtual();
    const std::string codigo = m_ZtList->ValorAtual("Código");
    Ref<frmLimitesDif> form = FormCompartilhado<frmLimitesDif>();
    form->CarregaForm(codigo, nroIntEquip, tipo);
}

std::int32_t COEquipamentos::NroIntEquipAtual() const
{
    return CLng(m_ZtList->ValorAtual("NroIntEquip"));
}

void COEquipamentos::m_frmLista_FormAtivado()
{
    gSubDefineFoco(m_ZtList);
}

void COEquipamentos::m_frmLista_FormCarregado(const Ref<IztList> &lista)
{
    m_ZtList = lista;
    Liga(m_ZtList->BotaoClick(), &COEquipamentos::m_ZtList_BotaoClick, "m_ZtList_BotaoClick");
    Liga(m_ZtList->ItemMenuClicado(), &COEquipamentos::m_ZtList_ItemMenuClicado);
    Liga(m_ZtList->HabilitaItensMenuLista(), &COEquipamentos::HabilitaMenu, "m_ZtList_HabilitaItensMenuLista");
    MenuInicial();
}

void COEquipamentos::m_ZtList_BotaoClick()
{
    LocalizarEquipamentos(true);
}

void COEquipamentos::m_ZtList_ItemMenuClicado(const std::string &chave)
try {
    if (chave == MenuLista::Novo) {
        Novo();
    } else if (chave == MenuLista::Editar) {
        Editar();
    } else if (chave == MenuLista::Detalhes) {
        Detalhes();
    } else if (chave == MenuLista::Atualizar) {
        Atualizar();
    } else if (chave == MenuReativar) {
        Inativar();
    } else if (chave == MenuLimitesDif) {
        LimitesDiferenciados(TipoLimiteDif);
    } else if (chave == MenuDiasEspec) {
        DiasEspecificos();
    } else if (chave == MenuHorarioProib) {
        LimitesDiferenciados(TipoHorarioProibido);
    }
} catch (...) {
    gSubMostraErro("COEquipamentos.m_ZtList_ItemMenuClicado(" + chave + ")");
}
