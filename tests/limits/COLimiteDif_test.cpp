#include "limits/COLimiteDif.h"

#include "controls/ItemMenu.h"
#include "controls/ztList.h"
#include "host/DiaEspecificoED.h"
#include "host/LimiteDifED.h"
#include "shell/Formulario.h"
#include "shell/ModGeral.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/HostTeste.h"
#include "tests/support/MemoriaEscassa.h"

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace {

using Linhas = std::vector<std::string>;

constexpr std::int16_t Limite = 1;
constexpr std::int16_t DiaEspecifico = 2;
constexpr std::int16_t HorarioProibido = 3;

constexpr std::int16_t Tipos[] = {Limite, DiaEspecifico, HorarioProibido};

// A window with nothing but a list.
class JanelaDeLista : public Formulario {
  public:
    std::string_view NomeTipo() const override { return "JanelaDeLista"; }
    ::Desenho Desenho() const override
    {
        return {.Raiz = EmColuna({{.Ajustes = AjustesCheckBox{}, .Nome = "outro"},
                                  {.Ajustes = AjustesZtList{}, .Nome = "ztLista"}})};
    }

    void Abre()
    {
        Carregar();
        DefineVisible(true);
    }

    Ref<IztList> Lista;

  protected:
    void LigaControles() override { Toma(Lista, "ztLista"); }
};

class COLimiteDifTeste : public HostTeste {
  protected:
    void SetUp() override
    {
        HostTeste::SetUp();
        LogaGeral();
        goGateway();
        janela = Novo<JanelaDeLista>();
        janela->Abre();
        controlador = Novo<COLimiteDif>();
        host->LimpaRegistro();
    }
    void TearDown() override
    {
        controlador = nullptr;
        janela = nullptr;
        HostTeste::TearDown();
    }

    bool Carrega(std::int16_t tipo) { return controlador->Carrega(janela->Lista, "RAD-01", 12, tipo); }

    static Ref<LimiteDifED> NovoLimite(std::int32_t nroInt, std::uint8_t dia, std::int32_t inicio, std::int32_t fim,
                                       std::int16_t veloc, std::int16_t minima)
    {
        auto limite = Novo<LimiteDifED>();
        limite->NroInt = nroInt;
        limite->Dia = dia;
        limite->HoraInicio = inicio;
        limite->HoraFim = fim;
        limite->VelocPerm = veloc;
        limite->VelocMin = minima;
        return limite;
    }
    static Ref<EquiptoED> ComLimites(const std::vector<Ref<LimiteDifED>> &limites)
    {
        auto equipto = Novo<EquiptoED>();
        auto lista = Novo<Colecao<Ref<LimiteDifED>>>();
        for (const auto &limite : limites) {
            lista->Add(limite);
        }
        equipto->ListaLimiteDif = lista;
        return equipto;
    }
    static Ref<DiaEspecificoED> NovoDia(std::int32_t nroInt, Data data, std::int32_t inicio, std::int32_t fim,
                                        std::int16_t veloc, std::int16_t minima)
    {
        auto dia = Novo<DiaEspecificoED>();
        dia->NroInt = nroInt;
        dia->Data = data;
        dia->HoraInicio = inicio;
        dia->HoraFim = fim;
        dia->VelocPerm = veloc;
        dia->VelocMin = minima;
        return dia;
    }
    static Ref<EquiptoED> ComDias(const std::vector<Ref<DiaEspecificoED>> &dias)
    {
        auto equipto = Novo<EquiptoED>();
        auto lista = Novo<Colecao<Ref<DiaEspecificoED>>>();
        for (const auto &dia : dias) {
            lista->Add(dia);
        }
        equipto->ListaDiaEspecifico = lista;
        return equipto;
    }
    // What both searches answer from now on.
    void Lista(const Ref<EquiptoED> &resposta)
    {
        host->Atende<LimiteDifED>("EquiptoRN", "listaLimiteDif",
                                  [resposta](const Ref<LimiteDifED> &) { return Resposta(resposta); });
        host->Atende<DiaEspecificoED>("EquiptoRN", "listaDiaEspecifico",
                                      [resposta](const Ref<DiaEspecificoED> &) { return Resposta(resposta); });
    }
    // Two rows of the kind, with the numbers 101 and 102, and services for them.
    void ListaDuas(std::int16_t tipo)
    {
        Lista(tipo == DiaEspecifico
                  ? ComDias({NovoDia(101, DataDe(1, 5, 2027), 700, 900, 60, 0),
                             NovoDia(102, DataDe(2, 5, 2027), 700, 900, 60, 0)})
                  : ComLimites({NovoLimite(101, 2, 700, 900, 60, 0), NovoLimite(102, 3, 700, 900, 60, 0)}));
        host->Atende<LimiteDifED>("EquiptoRN", "consultaSimplesLimiteDif", [](const Ref<LimiteDifED> &pedido) {
            return Resposta(NovoLimite(pedido->NroInt, 3, 700, 900, 60, 0));
        });
        host->Atende<DiaEspecificoED>("EquiptoRN", "consultaSimplesDiaEspecifico",
                                      [](const Ref<DiaEspecificoED> &pedido) {
                                          return Resposta(NovoDia(pedido->NroInt, DataDe(2, 5, 2027), 700, 900, 60, 0));
                                      });
        for (const char *metodo : {"alteraListaLimitesDif", "adicionaDiaEspecifico", "alteraDiaEspecifico",
                                   "desativaLimiteDif", "desativaDiaEspecifico"}) {
            host->Servico("EquiptoRN", metodo, [](const auto &) { return Resposta(); });
        }
    }

    Ref<ztList> Grade() const { return ComoTipo<ztList>(janela->Lista); }
    Linhas Linha(std::int32_t linha) const
    {
        Linhas celulas;
        for (std::int32_t coluna = 1; coluna <= 6; ++coluna) {
            celulas.push_back(Grade()->TextoCelula(linha, coluna));
        }
        return celulas;
    }
    bool Habilitado(const std::string &item) const { return janela->Lista->ItemMenu("mnuZTLObj" + item)->Enabled(); }
    bool Utilizavel(const std::string &item) const
    {
        return ComoTipo<ItemMenu>(janela->Lista->ItemMenu("mnuZTLObj" + item))->Utilizavel();
    }
    // Novo, Editar, Detalhes, Excluir.
    std::vector<bool> Menu() const
    {
        return {Habilitado("Novo"), Habilitado("Editar"), Habilitado("Detalhes"), Habilitado("Excluir")};
    }
    void EstragaMenu() const
    {
        for (const char *item : {"Novo", "Editar", "Detalhes", "Excluir"}) {
            janela->Lista->ItemMenu(std::string("mnuZTLObj") + item)->DefineEnabled(item[0] == 'E');
        }
    }
    Conexao FalhaAoMudarALista() const
    {
        return Grade()->Mudou().liga([] { throw Falha(70, "Fora", "negado"); });
    }
    // Operations of the service so far, without their records.
    Linhas Operacoes()
    {
        Linhas nomes;
        for (const std::string &linha : host->RegistroDe({"EquiptoRN.ExecutaMetodo("})) {
            const std::size_t inicio = linha.find('"') + 1;
            nomes.push_back(linha.substr(inicio, linha.find('"', inicio) - inicio));
        }
        return nomes;
    }
    static void Cancela(Pessoa &p) { EXPECT_TRUE(p.Clica("cmdCancelar")); }
    static void Confirma(Pessoa &p) { EXPECT_TRUE(p.Clica("ztCmdOK")); }

    Ref<JanelaDeLista> janela;
    Ref<COLimiteDif> controlador;
};

const std::vector<bool> MenuVazio{true, false, false, false};
const std::vector<bool> MenuCheio{true, true, true, true};
const std::string ListaPorTipo[] = {"", "listaLimiteDif", "listaDiaEspecifico", "listaLimiteDif"};
const std::string PerguntaPorTipo[] = {"", "Confirma a exclusão deste Limite Diferenciado?",
                                       "Confirma a exclusão deste Dia Específico?",
                                       "Confirma a exclusão deste Horário Proibido?"};

// Loading.

TEST_F(COLimiteDifTeste, DescrModulo_OfEachTipo_IsTheLabelOfTheKind)
{
    EXPECT_EQ(controlador->NomeTipo(), "COLimiteDif");
    EXPECT_EQ(controlador->DescrModulo(), "");
    Lista(Novo<EquiptoED>());
    struct {
        std::int16_t Tipo;
        const char *Descr;
    } const casos[] = {
        {1, "Limite Diferenciado"}, {2, "Dia Específico"}, {0, ""}, {3, "Horário Proibido"}, {4, ""}, {-1, ""}};
    for (const auto &caso : casos) {
        Carrega(caso.Tipo);
        EXPECT_EQ(controlador->DescrModulo(), caso.Descr) << caso.Tipo;
    }
}

TEST_F(COLimiteDifTeste, Carrega_OfEachKind_AsksPermissionsAndThenTheService)
{
    Lista(Novo<EquiptoED>());
    const std::string pedidos[] = {"", "\"listaLimiteDif\", LimiteDifED{NroIntEquip=12, TipoLimite=1}",
                                   "\"listaDiaEspecifico\", DiaEspecificoED{NroIntEquip=12}",
                                   "\"listaLimiteDif\", LimiteDifED{NroIntEquip=12, TipoLimite=2}"};
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        host->LimpaRegistro();
        EXPECT_TRUE(Carrega(tipo));
        const Linhas esperado{
            "objSCA.PossuiPerm2(\"NAB\", \"VOR-EQP-CS\", \"I\") -> True",
            "objSCA.PossuiPerm2(\"NAB\", \"VOR-EQP-CS\", \"A\") -> True",
            "objSCA.PossuiPerm2(\"NAB\", \"VOR-EQP-CS\", \"E\") -> True",
            "Plataforma.Ponteiro := 11",
            "Gateway.CriaObjetoRN(\"VOR\", \"EquiptoRN\", \"ZTVORLIB\", \"4\")",
            "EquiptoRN.ExecutaMetodo(" + pedidos[tipo] + ") -> True",
            "EquiptoRN.ObtemRetorno() -> EquiptoED{}",
            "Plataforma.Ponteiro := 0",
        };
        EXPECT_TRUE(RegistroIgual(host->Registro(), esperado));
    }
}

TEST_F(COLimiteDifTeste, Carrega_OfAnUnknownTipo_ConfiguresTheListAndSearchesNothing)
{
    for (std::int16_t tipo : {std::int16_t{0}, std::int16_t{4}}) {
        host->LimpaRegistro();
        EXPECT_FALSE(Carrega(tipo));
        EXPECT_EQ(Grade()->Colunas().front().Titulo, "Dia");
        EXPECT_EQ(Menu(), MenuVazio);
        EXPECT_EQ(host->Registro().size(), 3U) << "only the permissions";
    }
}

TEST_F(COLimiteDifTeste, Carrega_OfEachKind_GivesTheListItsColumns)
{
    Lista(Novo<EquiptoED>());
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        janela = Novo<JanelaDeLista>();
        janela->Abre();
        Carrega(tipo);
        const bool comVeloc = tipo != HorarioProibido;
        struct {
            const char *Titulo;
            int Largura;
        } const esperadas[] = {
            {"Dia", 1140},
            {"Hora Início", 1094},
            {"Hora Fim", 1019},
            {"Veloc. Perm.", comVeloc ? 1140 : 0},
            {"Veloc. Mín.", comVeloc ? 1094 : 0},
            {"NroInt", 0},
        };
        const auto &colunas = Grade()->Colunas();
        ASSERT_EQ(colunas.size(), std::size(esperadas));
        for (std::size_t i = 0; i < colunas.size(); ++i) {
            EXPECT_EQ(colunas[i].Titulo, esperadas[i].Titulo);
            EXPECT_EQ(colunas[i].Chave, esperadas[i].Titulo);
            EXPECT_EQ(colunas[i].Largura, esperadas[i].Largura) << esperadas[i].Titulo;
            EXPECT_EQ(colunas[i].Visivel, esperadas[i].Largura > 0) << esperadas[i].Titulo;
            EXPECT_EQ(colunas[i].Marca, "");
            EXPECT_EQ(colunas[i].Alinhamento, 0);
        }
    }
}

TEST_F(COLimiteDifTeste, Carrega_OfLimits_ShowsARowForEachInTheOrderOfTheService)
{
    Lista(ComLimites({
        NovoLimite(9, 2, 730, 1805, 60, 40),
        NovoLimite(-3, 1, 0, 5, 0, 0),
        NovoLimite(2147483647, 8, 5, 2359, 1, 32767),
        NovoLimite(0, 4, 1000, 1000, -1, -5),
    }));
    for (std::int16_t tipo : {Limite, HorarioProibido}) {
        EXPECT_TRUE(Carrega(tipo));
        ASSERT_EQ(janela->Lista->NroItens(), 4);
        EXPECT_EQ(Linha(1), (Linhas{"Segunda", "07:30", "18:05", "60 Km", "40 Km", "9"}));
        EXPECT_EQ(Linha(2), (Linhas{"Domingo", "00:00", "00:05", " ", " ", "-3"}));
        EXPECT_EQ(Linha(3), (Linhas{"Feriado", "00:05", "23:59", "1 Km", "32767 Km", "2147483647"}));
        EXPECT_EQ(Linha(4), (Linhas{"Quarta", "10:00", "10:00", " ", " ", "0"}));
        EXPECT_EQ(Menu(), MenuCheio);
    }
}

TEST_F(COLimiteDifTeste, Carrega_OfEachDayCode_ShowsItsName)
{
    const Linhas nomes{"", "Domingo", "Segunda", "Terça", "Quarta", "Quinta", "Sexta", "Sábado", "Feriado", "", ""};
    std::vector<Ref<LimiteDifED>> limites;
    for (int dia : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 255}) {
        limites.push_back(NovoLimite(dia, static_cast<std::uint8_t>(dia), 0, 0, 0, 0));
    }
    Lista(ComLimites(limites));
    EXPECT_TRUE(Carrega(Limite));
    ASSERT_EQ(janela->Lista->NroItens(), 11);
    for (std::int32_t linha = 1; linha <= 11; ++linha) {
        EXPECT_EQ(janela->Lista->Celula(linha, "Dia"), nomes[static_cast<std::size_t>(linha - 1)]) << linha;
    }
}

TEST_F(COLimiteDifTeste, Carrega_OfSpecificDays_ShowsTheirDates)
{
    Lista(ComDias({
        NovoDia(9, DataDe(5, 3, 2027), 730, 1805, 60, 40),
        NovoDia(8, DataDe(25, 12, 2026), 0, 2359, 0, 0),
        NovoDia(7, Data{}, 5, 5, 80, 0),
    }));
    EXPECT_TRUE(Carrega(DiaEspecifico));
    ASSERT_EQ(janela->Lista->NroItens(), 3);
    EXPECT_EQ(Linha(1), (Linhas{"05/03/2027", "07:30", "18:05", "60 Km", "40 Km", "9"}));
    EXPECT_EQ(Linha(2), (Linhas{"25/12/2026", "00:00", "23:59", " ", " ", "8"}));
    EXPECT_EQ(Linha(3), (Linhas{"30/12/1899", "00:05", "00:05", "80 Km", " ", "7"}));
}

TEST_F(COLimiteDifTeste, Carrega_WithoutRows_IsTrueWithNovoAlone)
{
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        Lista(Novo<EquiptoED>()); // the collection is absent
        EXPECT_TRUE(Carrega(tipo));
        EXPECT_EQ(janela->Lista->NroItens(), 0);
        EXPECT_EQ(Menu(), MenuVazio);
        const auto antes = Grade()->Arranjo();
        EstragaMenu();
        Lista(tipo == DiaEspecifico ? ComDias({}) : ComLimites({}));
        EXPECT_TRUE(Carrega(tipo));
        EXPECT_EQ(Menu(), MenuVazio);
        EXPECT_EQ(Grade()->Arranjo() - antes, 8) << "six columns, emptied, and the empty table handed over";
    }
}

TEST_F(COLimiteDifTeste, Carrega_WhenTheSearchIsRefused_IsFalseWithTheListEmptied)
{
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        ListaDuas(tipo);
        EXPECT_TRUE(Carrega(tipo));
        EXPECT_EQ(janela->Lista->NroItens(), 2);
        host->LimpaRegistro();
        host->RecusaOperacao(ListaPorTipo[tipo], "fora do ar");
        EXPECT_FALSE(Carrega(tipo));
        EXPECT_EQ(janela->Lista->NroItens(), 0);
        EXPECT_EQ(Menu(), MenuCheio) << "as it was set before the search";
        EXPECT_TRUE(RegistroIgual(host->RegistroDe({"Plataforma.", "EquiptoRN."}),
                                  Linhas{"Plataforma.Ponteiro := 11", "EquiptoRN.ExecutaMetodo(*",
                                         "EquiptoRN.MostraErro() -> \"fora do ar\"", "Plataforma.Ponteiro := 0"}));
    }
}

TEST_F(COLimiteDifTeste, LimpaPesquisa_WithAndWithoutAList_EmptiesItAndSetsTheMenu)
{
    ListaDuas(Limite);
    Carrega(Limite);
    janela->Lista->DefineTitulo("título");
    EstragaMenu();
    controlador->LimpaPesquisa();
    EXPECT_EQ(janela->Lista->NroItens(), 0);
    EXPECT_EQ(janela->Lista->Titulo(), "");
    EXPECT_EQ(Menu(), MenuVazio);

    const Falha falha = FalhaLancada([] { Novo<COLimiteDif>()->LimpaPesquisa(); });
    EXPECT_EQ(falha.Numero, 91);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < COLimiteDif.HabilitaMenu");
}

// Menu.

TEST_F(COLimiteDifTeste, MenuInicial_OfDeniedActions_BarsTheirItemsAlone)
{
    struct {
        const char *Acao;
        const char *Item;
    } const casos[] = {{"I", "Novo"}, {"E", "Excluir"}, {"A", "Editar"}};
    ListaDuas(Limite);
    std::set<std::string> barrados;
    for (const auto &caso : casos) { // one denial more at a time
        SCOPED_TRACE(caso.Acao);
        host->objSCA->Nega("VOR-EQP-CS", caso.Acao);
        barrados.insert(caso.Item);
        Carrega(Limite);
        Pessoa p(janela);
        EXPECT_TRUE(p.ClicaLinha("ztLista", 1));
        EXPECT_EQ(Menu(), MenuCheio);
        for (const char *item : {"Novo", "Editar", "Detalhes", "Excluir"}) {
            EXPECT_EQ(Utilizavel(item), !barrados.contains(item)) << item;
        }
        EXPECT_FALSE(p.EscolheMenu("ztLista", std::string("mnuZTLObj") + caso.Item));
    }
}

TEST_F(COLimiteDifTeste, MenuInicial_AfterADenial_OpensTheItemAgain)
{
    ListaDuas(Limite);
    janela->Lista->MenuBloqueado("mnuZTLObjNovo", true);
    janela->Lista->MenuBloqueado("mnuZTLObjExcluir", true);
    Carrega(Limite);
    EXPECT_TRUE(Utilizavel("Novo"));
    EXPECT_TRUE(Utilizavel("Excluir"));
}

TEST_F(COLimiteDifTeste, HabilitaMenu_OnEachEvent_FollowsTheNumberOfRows)
{
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        ListaDuas(tipo);
        Carrega(tipo);
        Pessoa p(janela);
        EXPECT_TRUE(p.Foco("outro"));
        EstragaMenu();
        EXPECT_TRUE(p.Foco("ztLista")); // GotFocus, after row 1 became current
        EXPECT_EQ(Menu(), MenuCheio);
        EstragaMenu();
        EXPECT_TRUE(p.ClicaLinha("ztLista", 2)); // ItemClick
        EXPECT_EQ(Menu(), MenuCheio);
        EstragaMenu();
        janela->Lista->GotFocus().dispara();
        EXPECT_EQ(Menu(), MenuCheio);
        EstragaMenu();
        janela->Lista->ItemClick().dispara();
        EXPECT_EQ(Menu(), MenuCheio);
        EstragaMenu();
        janela->Lista->DepoisDeRemoverItem().dispara();
        EXPECT_EQ(Menu(), MenuCheio);
        janela->Lista->Limpa(std::nullopt);
        janela->Lista->GotFocus().dispara();
        EXPECT_EQ(Menu(), MenuVazio);
    }
}

TEST_F(COLimiteDifTeste, ItemMenuClicado_OfOtherKeys_DoesNothing)
{
    ListaDuas(Limite);
    Carrega(Limite);
    host->LimpaRegistro();
    for (const char *chave : {"mnuZTLObjExcluir", "mnuZTLObjLocalizar", "mnuZTLObjAtualizar", "mnuZTLObjnovo", ""}) {
        janela->Lista->ItemMenuClicado().dispara(chave);
    }
    EXPECT_TRUE(host->Registro().empty());
    EXPECT_EQ(janela->Lista->NroItens(), 2);
}

// New, edit, details.

TEST_F(COLimiteDifTeste, Novo_ThatSaves_SearchesAgainAndGivesTheListTheFocus)
{
    const std::string salvo[] = {"", "alteraListaLimitesDif", "adicionaDiaEspecifico", "alteraListaLimitesDif"};
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        ListaDuas(tipo);
        Carrega(tipo);
        host->AoMostrarModal("frmLimitesDifDetalhes", [&](Pessoa &p) {
            EXPECT_EQ(p.Acha("lblCodEquip")->Caption(), "RAD-01");
            if (tipo == DiaEspecifico) {
                EXPECT_TRUE(p.Preenche("ztdData", "25122026"));
            } else {
                EXPECT_TRUE(p.Marca("chkDia", 6));
            }
            EXPECT_TRUE(p.Preenche("ztmHInicial", "0700"));
            EXPECT_TRUE(p.Preenche("ztmHFinal", "0900"));
            if (tipo != HorarioProibido) {
                EXPECT_TRUE(p.Preenche("txtVelocPerm", "60"));
            }
            EXPECT_TRUE(Pessoa(janela).Foco("outro"));
            Confirma(p);
        });
        Pessoa p(janela);
        host->LimpaRegistro();
        EXPECT_TRUE(p.EscolheMenu("ztLista", "mnuZTLObjNovo"));
        EXPECT_EQ(Operacoes(), (Linhas{salvo[tipo], ListaPorTipo[tipo]}));
        EXPECT_NE(host->RegistroDe({"EquiptoRN.ExecutaMetodo"})[0].find("NroIntEquip=12"), std::string::npos);
        EXPECT_EQ(janela->Lista->NroItens(), 2);
        EXPECT_EQ(janela->ControleAtivo(), janela->Lista);
    }
}

TEST_F(COLimiteDifTeste, Editar_ThatSaves_SendsTheCurrentRowAndSearchesAgain)
{
    const Linhas operacoes[] = {{},
                                {"consultaSimplesLimiteDif", "alteraListaLimitesDif", "listaLimiteDif"},
                                {"consultaSimplesDiaEspecifico", "alteraDiaEspecifico", "listaDiaEspecifico"},
                                {"consultaSimplesLimiteDif", "alteraListaLimitesDif", "listaLimiteDif"}};
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        ListaDuas(tipo);
        Carrega(tipo);
        Pessoa p(janela);
        EXPECT_TRUE(p.ClicaLinha("ztLista", 2));
        host->AoMostrarModal("frmLimitesDifDetalhes", [](Pessoa &detalhe) {
            EXPECT_EQ(detalhe.Acha("lblCodEquip")->Caption(), "RAD-01");
            Confirma(detalhe);
        });
        host->LimpaRegistro();
        EXPECT_TRUE(p.EscolheMenu("ztLista", "mnuZTLObjEditar"));
        EXPECT_EQ(Operacoes(), operacoes[tipo]);
        EXPECT_TRUE(host->RegistroDe({"EquiptoRN.ExecutaMetodo"})[0].ends_with("ED{NroInt=102}) -> True"));
        EXPECT_EQ(janela->ControleAtivo(), janela->Lista);
    }
}

TEST_F(COLimiteDifTeste, NovoAndEditar_ThatAreCancelled_SearchNothing)
{
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        ListaDuas(tipo);
        Carrega(tipo);
        Pessoa p(janela);
        host->AoMostrarModal("frmLimitesDifDetalhes", Cancela);
        host->LimpaRegistro();
        EXPECT_TRUE(p.EscolheMenu("ztLista", "mnuZTLObjNovo"));
        EXPECT_EQ(Operacoes(), Linhas{});
        host->AoMostrarModal("frmLimitesDifDetalhes", Cancela);
        EXPECT_TRUE(p.EscolheMenu("ztLista", "mnuZTLObjEditar"));
        EXPECT_EQ(Operacoes().size(), 1U);
        EXPECT_EQ(janela->Lista->NroItens(), 2);
    }
}

TEST_F(COLimiteDifTeste, Atualizar_WhenTheSearchIsRefused_LeavesTheListEmptyWithTheFocus)
{
    ListaDuas(Limite);
    Carrega(Limite);
    Pessoa p(janela);
    host->AoMostrarModal("frmLimitesDifDetalhes", [&](Pessoa &detalhe) {
        host->RecusaOperacao("listaLimiteDif", "fora do ar");
        EXPECT_TRUE(Pessoa(janela).Foco("outro"));
        Confirma(detalhe);
    });
    EXPECT_TRUE(p.ClicaLinha("ztLista", 1));
    EXPECT_TRUE(p.EscolheMenu("ztLista", "mnuZTLObjEditar"));
    EXPECT_EQ(janela->Lista->NroItens(), 0);
    EXPECT_EQ(janela->ControleAtivo(), janela->Lista);
    EXPECT_EQ(Menu(), MenuVazio);
    EXPECT_EQ(host->Tela->Ponteiro(), 0);
}

TEST_F(COLimiteDifTeste, Detalhes_OfSeveralRows_OpensAWindowForEachAndRefreshesNothing)
{
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        ListaDuas(tipo);
        Carrega(tipo);
        Pessoa p(janela);
        host->LimpaRegistro();
        for (std::int32_t linha : {1, 2, 2}) {
            EXPECT_TRUE(p.ClicaLinha("ztLista", linha));
            EXPECT_TRUE(p.EscolheMenu("ztLista", "mnuZTLObjDetalhes"));
        }
        EXPECT_EQ(host->Conta("ObjInterface.MostraJanela(frmLimitesDifDetalhes, modal=False)"), 3);
        const Linhas lidos = host->RegistroDe({"EquiptoRN.ExecutaMetodo"});
        ASSERT_EQ(lidos.size(), 3U);
        EXPECT_NE(lidos[0].find("NroInt=101}"), std::string::npos);
        EXPECT_NE(lidos[1].find("NroInt=102}"), std::string::npos);
        auto abertos = host->Tela->FormsAbertos("frmLimitesDifDetalhes");
        ASSERT_EQ(abertos.size(), 3U);
        host->LimpaRegistro();
        for (const auto &aberto : abertos) {
            EXPECT_TRUE(Pessoa(aberto).Clica("cmdCancelar"));
        }
        EXPECT_FALSE(host->Contem("EquiptoRN."));
    }
}

TEST_F(COLimiteDifTeste, EditarAndDetalhes_WithoutACurrentRow_ReportUnderOneTail)
{
    ListaDuas(Limite);
    Carrega(Limite);
    for (const char *chave : {"mnuZTLObjEditar", "mnuZTLObjDetalhes"}) {
        janela->Lista->ItemMenuClicado().dispara(chave);
        const auto &erro = host->Erros().back();
        EXPECT_EQ(erro.Contexto, "COLimiteDif.m_ZtList_ItemMenuClicado");
        EXPECT_EQ(erro.Numero, 9);
        EXPECT_TRUE(erro.Fonte.ends_with(" < COLimiteDif.Editar")) << erro.Fonte;
    }
    EXPECT_EQ(host->Erros().size(), 2U);
}

// Deactivation.

TEST_F(COLimiteDifTeste, Excluir_AnsweredNo_KeepsTheRowAndAsksTheServiceNothing)
{
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        ListaDuas(tipo);
        Carrega(tipo);
        Pessoa p(janela);
        EXPECT_TRUE(p.ClicaLinha("ztLista", 1));
        std::int32_t recebida = -7;
        Conexao espia = janela->Lista->AntesDeRemoverItem().liga([&](const std::int32_t &linha) { recebida = linha; });
        host->LimpaRegistro();
        host->Responde(PerguntaPorTipo[tipo], false);
        EXPECT_TRUE(p.EscolheMenu("ztLista", "mnuZTLObjExcluir"));
        EXPECT_EQ(recebida, 0);
        EXPECT_EQ(janela->Lista->NroItens(), 2);
        EXPECT_EQ(host->Registro(), (Linhas{"Plataforma.PerguntaSimNao(\"" + PerguntaPorTipo[tipo] +
                                            "\", \"Atenção\", padrao=Não) -> Não"}));
    }
}

TEST_F(COLimiteDifTeste, Excluir_AnsweredYes_DeactivatesThatRowAndSearchesNothing)
{
    const std::string pedidos[] = {"", "\"desativaLimiteDif\", LimiteDifED{NroInt=102}",
                                   "\"desativaDiaEspecifico\", DiaEspecificoED{NroInt=102}",
                                   "\"desativaLimiteDif\", LimiteDifED{NroInt=102}"};
    const std::string avisos[] = {"", "Limite excluído com sucesso!", "Dia específico excluído com sucesso!",
                                  "Limite excluído com sucesso!"};
    goMensagem();
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        ListaDuas(tipo);
        Carrega(tipo);
        Pessoa p(janela);
        EXPECT_TRUE(p.ClicaLinha("ztLista", 2));
        EstragaMenu();
        host->LimpaRegistro();
        host->Responde(PerguntaPorTipo[tipo], true);
        EXPECT_TRUE(p.EscolheMenu("ztLista", "mnuZTLObjExcluir"));
        const Linhas esperado{
            "Plataforma.PerguntaSimNao(\"" + PerguntaPorTipo[tipo] + "\", \"Atenção\", padrao=Não) -> Sim",
            "Gateway.CriaObjetoRN(\"VOR\", \"EquiptoRN\", \"ZTVORLIB\", \"4\")",
            "EquiptoRN.ExecutaMetodo(" + pedidos[tipo] + ") -> True",
            "goMensagem.ExibeMensagem(\"" + avisos[tipo] + "\", Nothing)",
        };
        EXPECT_TRUE(RegistroIgual(host->Registro(), esperado));
        ASSERT_EQ(janela->Lista->NroItens(), 1);
        EXPECT_EQ(janela->Lista->Celula(1, "NroInt"), "101");
        EXPECT_EQ(Menu(), MenuCheio);

        host->Responde(PerguntaPorTipo[tipo], true);
        EXPECT_TRUE(p.EscolheMenu("ztLista", "mnuZTLObjExcluir"));
        EXPECT_EQ(janela->Lista->NroItens(), 0);
        EXPECT_EQ(Menu(), MenuVazio);
    }
}

TEST_F(COLimiteDifTeste, Excluir_ThatIsRefused_KeepsTheRow)
{
    const std::string metodos[] = {"", "desativaLimiteDif", "desativaDiaEspecifico", "desativaLimiteDif"};
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        ListaDuas(tipo);
        Carrega(tipo);
        Pessoa p(janela);
        EXPECT_TRUE(p.ClicaLinha("ztLista", 2));
        host->LimpaRegistro();
        host->Responde(PerguntaPorTipo[tipo], true);
        host->RecusaOperacao(metodos[tipo], "em uso");
        EXPECT_TRUE(p.EscolheMenu("ztLista", "mnuZTLObjExcluir"));
        EXPECT_EQ(janela->Lista->NroItens(), 2);
        EXPECT_TRUE(RegistroIgual(host->RegistroDe({"EquiptoRN.", "goMensagem."}),
                                  Linhas{"EquiptoRN.ExecutaMetodo(*", "EquiptoRN.MostraErro() -> \"em uso\""}));
        EXPECT_TRUE(host->Avisos().empty());
    }
}

TEST_F(COLimiteDifTeste, Excluir_OfARowThatWasSorted_FollowsTheRowAndNotItsOldPlace)
{
    ListaDuas(DiaEspecifico);
    Carrega(DiaEspecifico);
    Pessoa p(janela);
    EXPECT_TRUE(p.OrdenaPor("ztLista", 1));
    EXPECT_TRUE(p.OrdenaPor("ztLista", 1)); // 02/05 first
    EXPECT_TRUE(p.ClicaLinha("ztLista", 1));
    host->Responde(PerguntaPorTipo[DiaEspecifico], true);
    EXPECT_TRUE(p.EscolheMenu("ztLista", "mnuZTLObjExcluir"));
    EXPECT_EQ(janela->Lista->Celula(1, "NroInt"), "101");
    EXPECT_EQ(host->Conta("EquiptoRN.ExecutaMetodo(\"desativaDiaEspecifico\", DiaEspecificoED{NroInt=102})"), 1);
}

// Life.

TEST_F(COLimiteDifTeste, Controller_ThatHasEnded_LetsGoOfTheList)
{
    ListaDuas(Limite);
    Carrega(Limite);
    controlador = nullptr;
    EstragaMenu();
    janela->Lista->GotFocus().dispara();
    janela->Lista->ItemMenuClicado().dispara("mnuZTLObjNovo");
    EXPECT_FALSE(Habilitado("Novo"));
    EXPECT_TRUE(host->Erros().empty());
}

TEST_F(COLimiteDifTeste, Controller_DroppedWhileItRuns_FinishesItsCommand)
{
    ListaDuas(Limite);
    Carrega(Limite);
    Pessoa p(janela);
    EXPECT_TRUE(p.ClicaLinha("ztLista", 1));
    host->Servico("EquiptoRN", "desativaLimiteDif", [this](const auto &) {
        controlador = nullptr;
        return Resposta();
    });
    host->Responde(PerguntaPorTipo[Limite], true);
    EXPECT_TRUE(p.EscolheMenu("ztLista", "mnuZTLObjExcluir"));
    EXPECT_EQ(janela->Lista->NroItens(), 1);
    ASSERT_EQ(host->Avisos().size(), 1U);
    EXPECT_EQ(host->Avisos()[0].Texto, "Limite excluído com sucesso!");
}

TEST_F(COLimiteDifTeste, SharedForm_ReleasedWhileItIsShown_StillAnswers)
{
    ListaDuas(Limite);
    Carrega(Limite);
    Pessoa p(janela);
    EXPECT_TRUE(p.ClicaLinha("ztLista", 1));
    host->AoMostrarModal("frmLimitesDifDetalhes", [](Pessoa &detalhe) {
        LiberaFormsCompartilhados();
        Confirma(detalhe);
    });
    host->LimpaRegistro();
    EXPECT_TRUE(p.EscolheMenu("ztLista", "mnuZTLObjEditar"));
    EXPECT_EQ(Operacoes().back(), "listaLimiteDif");
}

// Faults.

TEST_F(COLimiteDifTeste, Carrega_WhenASearchFails_RaisesUnderTheHourglass)
{
    const std::string nomes[] = {"", "LocalizarLimitesDif", "LocalizarDiasEspecificos", "LocalizarLimitesDif"};
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        host->FalhaEm("EquiptoRN.ExecutaMetodo", 1, 70, "negado");
        const Falha falha = FalhaLancada([&] { Carrega(tipo); });
        EXPECT_EQ(falha.Numero, 70);
        EXPECT_EQ(falha.Descricao, "negado");
        EXPECT_EQ(falha.Fonte, "EquiptoRN.ExecutaMetodo < COLimiteDif." + nomes[tipo] + " < COSensores.Carrega");
        EXPECT_EQ(host->Tela->Ponteiro(), 11);
        Plataforma()->DefinePonteiro(PonteiroNormal);
    }
}

TEST_F(COLimiteDifTeste, Carrega_WhenTheGatewayFails_HasEmptiedTheListUnderTheHourglass)
{
    const std::string nomes[] = {"", "LocalizarLimitesDif", "LocalizarDiasEspecificos", "LocalizarLimitesDif"};
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        ListaDuas(tipo);
        EXPECT_TRUE(Carrega(tipo));
        std::vector<std::int16_t> ponteiros; // at each change of the emptied list
        Conexao espia = Grade()->Mudou().liga([&] {
            if (Grade()->NroItens() == 0) {
                ponteiros.push_back(host->Tela->Ponteiro());
            }
        });
        host->FalhaEm("Gateway.CriaObjetoRN", 1, 70, "negado");
        EXPECT_EQ(FalhaLancada([&] { Carrega(tipo); }).Fonte,
                  "Gateway.CriaObjetoRN < COLimiteDif." + nomes[tipo] + " < COSensores.Carrega");
        EXPECT_EQ(Grade()->NroItens(), 0);
        ASSERT_FALSE(ponteiros.empty());
        EXPECT_EQ(ponteiros.front(), 11);
        Plataforma()->DefinePonteiro(PonteiroNormal);
    }
}

TEST_F(COLimiteDifTeste, Carrega_WhenTheMenuFailsBehindTheRows_RaisesUnderTheHourglass)
{
    const std::string nomes[] = {"", "LocalizarLimitesDif", "LocalizarDiasEspecificos", "LocalizarLimitesDif"};
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        janela = Novo<JanelaDeLista>();
        janela->Abre();
        ListaDuas(tipo);
        Conexao falha = Grade()->Mudou().liga([&] {
            if (Grade()->NroItens() > 0 && Habilitado("Editar")) {
                throw Falha(70, "Fora", "negado");
            }
        });
        EXPECT_EQ(FalhaLancada([&] { Carrega(tipo); }).Fonte,
                  "Fora < COLimiteDif.HabilitaMenu < COLimiteDif." + nomes[tipo] + " < COSensores.Carrega");
        EXPECT_EQ(Grade()->NroItens(), 2);
        EXPECT_EQ(host->Tela->Ponteiro(), 11);
        Plataforma()->DefinePonteiro(PonteiroNormal);
    }
}

TEST_F(COLimiteDifTeste, Carrega_WhenTheServiceAnswersNothing_RaisesFault91)
{
    for (std::int16_t tipo : Tipos) {
        Lista(nullptr);
        EXPECT_EQ(FalhaLancada([&] { Carrega(tipo); }).Numero, 91) << tipo;
    }
}

TEST_F(COLimiteDifTeste, Carrega_WithoutAList_RaisesFault91WhileConfiguringItWithTheKindAlreadyKept)
{
    const Falha falha = FalhaLancada([&] { controlador->Carrega(nullptr, "RAD-01", 12, DiaEspecifico); });
    EXPECT_EQ(falha.Numero, 91);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < gsubConfigLista < COSensores.Carrega");
    EXPECT_EQ(controlador->DescrModulo(), "Dia Específico");
}

TEST_F(COLimiteDifTeste, Carrega_WhenTheListFails_RaisesWithThePathOfItsStep)
{
    Lista(ComLimites({}));
    {
        Conexao falha = FalhaAoMudarALista();
        EXPECT_EQ(FalhaLancada([&] { Carrega(Limite); }).Fonte, "Fora < gsubConfigLista < COSensores.Carrega");
    }
    EstragaMenu();
    host->FalhaEm("objSCA.PossuiPerm2", 3);
    EXPECT_EQ(FalhaLancada([&] { Carrega(Limite); }).Fonte,
              "objSCA.PossuiPerm2 < COLimiteDif.MenuInicial < COSensores.Carrega");
    EXPECT_EQ(Menu(), (std::vector<bool>{false, true, false, true})) << "the items come behind the permissions";
    EXPECT_TRUE(Carrega(Limite));
    EXPECT_EQ(Menu(), MenuVazio);
}

// The columns are made of memory alone: nothing else can fail there.
TEST_F(COLimiteDifTeste, Carrega_WhenMemoryIsRefusedAnywhere_GrowsThePathFromTheColumnsOn)
{
    Lista(ComLimites({NovoLimite(101, 2, 700, 900, 60, 0)}));
    Carrega(Limite); // the handlers have their room from now on, so that all attempts ask for the same memory
    std::set<std::string> fontes;
    bool recusou = true;
    for (std::int64_t n = 1; recusou; ++n) {
        ASSERT_LT(n, 10000);
        MemoriaEscassa escassa(n);
        try {
            Carrega(Limite);
        } catch (const Falha &falha) {
            EXPECT_EQ(falha.Numero, 7);
            EXPECT_TRUE(falha.Fonte.ends_with(" < COSensores.Carrega")) << falha.Fonte;
            fontes.insert(falha.Fonte);
        }
        recusou = escassa.Recusou();
    }
    EXPECT_EQ(fontes.count("ZTAVOREQUIP < COLimiteDif.Colunas (Property Get) < COSensores.Carrega"), 1U);
    EXPECT_TRUE(Carrega(Limite));
    EXPECT_EQ(Grade()->NroItens(), 1);
    EXPECT_EQ(Menu(), MenuCheio);
}

TEST_F(COLimiteDifTeste, Events_WhenHabilitaMenuFails_ReportOrRaiseAsEachIsTold)
{
    ListaDuas(Limite);
    Carrega(Limite);
    EstragaMenu();
    Conexao falha = FalhaAoMudarALista();
    janela->Lista->GotFocus().dispara();
    janela->Lista->ItemClick().dispara();
    ASSERT_EQ(host->Erros().size(), 2U);
    EXPECT_EQ(host->Erros()[0].Contexto, "COLimiteDif.m_ZtList_GotFocus");
    EXPECT_EQ(host->Erros()[1].Contexto, "COLimiteDif.m_ZtList_ItemClick");
    for (const auto &erro : host->Erros()) {
        EXPECT_EQ(erro.Numero, 70);
        EXPECT_EQ(erro.Fonte, "Fora < COLimiteDif.HabilitaMenu");
    }
}

TEST_F(COLimiteDifTeste, DepoisDeRemoverItem_WhenHabilitaMenuFails_RaisesItToTheList)
{
    ListaDuas(Limite);
    Carrega(Limite);
    EstragaMenu();
    Conexao falha = FalhaAoMudarALista();
    EXPECT_EQ(FalhaLancada([&] { janela->Lista->DepoisDeRemoverItem().dispara(); }).Fonte,
              "Fora < COLimiteDif.HabilitaMenu < COLimiteDif.m_ZtList_DepoisDeRemoverItem");
    EXPECT_TRUE(host->Erros().empty());
}

TEST_F(COLimiteDifTeste, AntesDeRemoverItem_WhenItFails_ReportsOnceAndLeavesTheRowNumber)
{
    const std::string nomes[] = {"", "ExcluirLimiteDif", "ExcluirDiaEspec", "ExcluirLimiteDif"};
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        ListaDuas(tipo);
        Carrega(tipo);
        Plataforma()->DefinePonteiro(PonteiroAmpulheta);
        host->Responde(PerguntaPorTipo[tipo], true);
        host->FalhaEm("EquiptoRN.ExecutaMetodo", 1, 70, "negado");
        std::int32_t linha = 2;
        janela->Lista->AntesDeRemoverItem().dispara(linha);
        EXPECT_EQ(linha, 2);
        const auto &erro = host->Erros().back();
        EXPECT_EQ(erro.Contexto, "COLimiteDif.m_ZtList_AntesDeRemoverItem");
        EXPECT_EQ(erro.Numero, 70);
        EXPECT_EQ(erro.Descricao, "negado");
        EXPECT_EQ(erro.Fonte, "EquiptoRN.ExecutaMetodo < COLimiteDif." + nomes[tipo] + " < COLimiteDif.Excluir");
        EXPECT_EQ(host->Tela->Ponteiro(), 0);
    }
    EXPECT_EQ(host->Erros().size(), 3U);
}

TEST_F(COLimiteDifTeste, AntesDeRemoverItem_OfARowThatIsNotThere_ReportsFault9)
{
    ListaDuas(Limite);
    Carrega(Limite);
    host->Responde(PerguntaPorTipo[Limite], true);
    std::int32_t linha = 3;
    janela->Lista->AntesDeRemoverItem().dispara(linha);
    ASSERT_EQ(host->Erros().size(), 1U);
    EXPECT_EQ(host->Erros()[0].Numero, 9);
    EXPECT_EQ(host->Erros()[0].Fonte, "ZTAVOREQUIP < COLimiteDif.Excluir");
    EXPECT_FALSE(host->Contem("EquiptoRN.ExecutaMetodo(\"desativa"));
}

TEST_F(COLimiteDifTeste, NovoAndEditar_WhenTheNewSearchFails_ReportTheWholePathAndResetThePointer)
{
    struct {
        std::int16_t Tipo;
        const char *Fonte;
    } const casos[] = {
        {Limite, "EquiptoRN.ExecutaMetodo < COLimiteDif.LocalizarLimitesDif < COLimiteDif.Atualizar < "},
        {DiaEspecifico, "EquiptoRN.ExecutaMetodo < COLimiteDif.LocalizarDiasEspecificos < COLimiteDif.Atualizar < "},
        {HorarioProibido, "EquiptoRN.ExecutaMetodo < COLimiteDif.LocalizarLimitesDif < COLimiteDif.Atualizar < "},
    };
    for (const auto &caso : casos) {
        for (bool edita : {false, true}) {
            SCOPED_TRACE(std::to_string(caso.Tipo) + (edita ? " editar" : " novo"));
            ListaDuas(caso.Tipo);
            Carrega(caso.Tipo);
            Pessoa p(janela);
            EXPECT_TRUE(p.ClicaLinha("ztLista", 1));
            host->AoMostrarModal("frmLimitesDifDetalhes", [&](Pessoa &detalhe) {
                if (!edita) {
                    if (caso.Tipo == DiaEspecifico) {
                        EXPECT_TRUE(detalhe.Preenche("ztdData", "25122026"));
                    } else {
                        EXPECT_TRUE(detalhe.Marca("chkDia", 6));
                    }
                    EXPECT_TRUE(detalhe.Preenche("ztmHInicial", "0700"));
                    EXPECT_TRUE(detalhe.Preenche("ztmHFinal", "0900"));
                    if (caso.Tipo != HorarioProibido) {
                        EXPECT_TRUE(detalhe.Preenche("txtVelocPerm", "60"));
                    }
                }
                host->FalhaEm("EquiptoRN.ExecutaMetodo", 2, 70, "negado");
                Confirma(detalhe);
            });
            EXPECT_TRUE(p.EscolheMenu("ztLista", edita ? "mnuZTLObjEditar" : "mnuZTLObjNovo"));
            const auto &erro = host->Erros().back();
            EXPECT_EQ(erro.Contexto, "COLimiteDif.m_ZtList_ItemMenuClicado");
            EXPECT_EQ(erro.Fonte, std::string(caso.Fonte) + (edita ? "COLimiteDif.Editar" : "COLimiteDif.Novo"));
            EXPECT_EQ(host->Tela->Ponteiro(), 0);
            EXPECT_EQ(janela->Lista->NroItens(), 0);
        }
    }
    EXPECT_EQ(host->Erros().size(), 6U);
}

} // namespace
