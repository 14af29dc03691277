#include "limits/COLimiteDif.h"

#include "controls/ItemMenu.h"
#include "host/DiaEspecificoED.h"
#include "host/LimiteDifED.h"
#include "shell/ModGeral.h"
#include "tests/support/ControladorDeLista.h"

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace {

constexpr std::int16_t Limite = 1;
constexpr std::int16_t DiaEspecifico = 2;
constexpr std::int16_t HorarioProibido = 3;

constexpr std::int16_t Tipos[] = {Limite, DiaEspecifico, HorarioProibido};

// What the kinds are called, and what they ask of the service.
struct Feitio {
    std::string Descr;
    std::string Registro;
    std::string Localiza; // procedures
    std::string Exclui;
    std::string Lista; // operations
    std::string Consulta;
    std::string Inclui;
    std::string Altera;
    std::string Desativa;
    std::string AvisoDaExclusao;

    std::string Pergunta() const { return "Confirma a exclusão deste " + Descr + "?"; }
};

Feitio DaSemana(const std::string &descr)
{
    return {descr,
            "LimiteDifED",
            "LocalizarLimitesDif",
            "ExcluirLimiteDif",
            "listaLimiteDif",
            "consultaSimplesLimiteDif",
            "alteraListaLimitesDif",
            "alteraListaLimitesDif",
            "desativaLimiteDif",
            "Limite excluído com sucesso!"};
}

const Feitio Feitios[] = {{},
                          DaSemana("Limite Diferenciado"),
                          {"Dia Específico", "DiaEspecificoED", "LocalizarDiasEspecificos", "ExcluirDiaEspec",
                           "listaDiaEspecifico", "consultaSimplesDiaEspecifico", "adicionaDiaEspecifico",
                           "alteraDiaEspecifico", "desativaDiaEspecifico", "Dia específico excluído com sucesso!"},
                          DaSemana("Horário Proibido")};

class CenarioLimites : public HostTeste {
  protected:
    void SetUp() override
    {
        HostTeste::SetUp();
        LogaGeral();
        goGateway();
    }
};

class COLimiteDifTeste : public ComLista<CenarioLimites, COLimiteDif> {
  protected:
    bool Carrega(std::int16_t tipo) { return controlador->Carrega(lista, "RAD-01", 12, tipo); }

    template <class ED>
    static Ref<ED> Base(std::int32_t nroInt, std::int32_t inicio, std::int32_t fim, std::int16_t veloc,
                        std::int16_t minima)
    {
        auto ed = Novo<ED>();
        ed->NroInt = nroInt;
        ed->HoraInicio = inicio;
        ed->HoraFim = fim;
        ed->VelocPerm = veloc;
        ed->VelocMin = minima;
        return ed;
    }
    static Ref<LimiteDifED> NovoLimite(std::int32_t nroInt, std::uint8_t dia, std::int32_t inicio, std::int32_t fim,
                                       std::int16_t veloc, std::int16_t minima)
    {
        auto limite = Base<LimiteDifED>(nroInt, inicio, fim, veloc, minima);
        limite->Dia = dia;
        return limite;
    }
    static Ref<DiaEspecificoED> NovoDia(std::int32_t nroInt, Data data, std::int32_t inicio, std::int32_t fim,
                                        std::int16_t veloc, std::int16_t minima)
    {
        auto dia = Base<DiaEspecificoED>(nroInt, inicio, fim, veloc, minima);
        dia->Data = data;
        return dia;
    }
    template <class ED> static ListaDe<ED> Juntos(const std::vector<Ref<ED>> &registros)
    {
        auto lista = Novo<Colecao<Ref<ED>>>();
        for (const auto &registro : registros) {
            lista->Add(registro);
        }
        return lista;
    }
    // What both searches answer from now on.
    void Lista(const Ref<EquiptoED> &resposta)
    {
        for (const char *metodo : {"listaLimiteDif", "listaDiaEspecifico"}) {
            host->Servico("EquiptoRN", metodo, [resposta](const auto &) { return Resposta(resposta); });
        }
    }
    void Lista(const std::vector<Ref<LimiteDifED>> &limites, const std::vector<Ref<DiaEspecificoED>> &dias)
    {
        auto equipto = Novo<EquiptoED>();
        equipto->ListaLimiteDif = Juntos(limites);
        equipto->ListaDiaEspecifico = Juntos(dias);
        Lista(equipto);
    }
    // Rows of each kind, with the numbers from 101, and services for them.
    void ListaVarias(int quantas)
    {
        std::vector<Ref<LimiteDifED>> limites;
        std::vector<Ref<DiaEspecificoED>> dias;
        for (int i = 1; i <= quantas; ++i) {
            limites.push_back(NovoLimite(100 + i, static_cast<std::uint8_t>(i + 1), 700, 900, 60, 0));
            dias.push_back(NovoDia(100 + i, DataDe(i, 5, 2027), 700, 900, 60, 0));
        }
        Lista(limites, dias);
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
    void CarregaDuas(std::int16_t tipo)
    {
        ListaVarias(2);
        EXPECT_TRUE(Carrega(tipo));
        host->LimpaRegistro();
    }

    Ref<ztList> Grade() const { return ComoTipo<ztList>(lista); }
    // The cells of a row; each loading adds columns to the first six.
    Textos Celulas(std::int32_t linha) const
    {
        Textos celulas = Linha(lista, linha);
        celulas.resize(6);
        return celulas;
    }
    bool Utilizavel(const std::string &item) const
    {
        return ComoTipo<ItemMenu>(lista->ItemMenu("mnuZTLObj" + item))->Utilizavel();
    }
    // Operations of the service so far, without their records.
    Textos Operacoes()
    {
        Textos nomes;
        for (const std::string &linha : host->RegistroDe({"EquiptoRN.ExecutaMetodo("})) {
            const std::size_t inicio = linha.find('"') + 1;
            nomes.push_back(linha.substr(inicio, linha.find('"', inicio) - inicio));
        }
        return nomes;
    }
    // What the person does in the window that the next command opens.
    void NoDetalhe(const std::function<void(Pessoa &)> &gestos)
    {
        host->AoMostrarModal("frmLimitesDifDetalhes", gestos);
    }
    static void Cancela(Pessoa &p) { FAZ(p, Clica("cmdCancelar")); }
    static void Confirma(Pessoa &p) { FAZ(p, Clica("ztCmdOK")); }
    static void Preenche(Pessoa &p, std::int16_t tipo)
    {
        if (tipo == DiaEspecifico) {
            FAZ(p, Preenche("ztdData", "25122026"));
        } else {
            FAZ(p, Marca("chkDia", 6));
        }
        FAZ(p, Preenche("ztmHInicial", "0700"));
        FAZ(p, Preenche("ztmHFinal", "0900"));
        if (tipo != HorarioProibido) {
            FAZ(p, Preenche("txtVelocPerm", "60"));
        }
    }
    // The controller's search, as a path ends with it.
    static std::string FimDaBusca(std::int16_t tipo) { return " < COLimiteDif." + Feitios[tipo].Localiza; }
};

template <std::int16_t Tipo> class ComTipo : public COLimiteDifTeste {
  protected:
    std::vector<ColunaEsperada> Colunas()
    {
        const bool comVeloc = Tipo != HorarioProibido;
        return {{"Dia", 1140},
                {"Hora Início", 1094},
                {"Hora Fim", 1019},
                {"Veloc. Perm.", comVeloc ? 1140 : 0},
                {"Veloc. Mín.", comVeloc ? 1094 : 0},
                {"NroInt", 0}};
    }
    void SetUp() override
    {
        COLimiteDifTeste::SetUp();
        PoeLinhas(0);
    }
    void PoeLinhas(int n) { ListaVarias(n); }
    bool Carrega(const Ref<IztList> &onde) { return controlador->Carrega(onde, "RAD-01", 12, Tipo); }
    void Inclui(Pessoa &p)
    {
        Preenche(p, Tipo);
        PoeLinhas(2);
        Confirma(p);
    }
    Textos DetalhesVistos()
    {
        Textos vistos;
        for (const std::string &lido : host->RegistroDe({"EquiptoRN.ExecutaMetodo(\"" + Feitios[Tipo].Consulta})) {
            vistos.push_back(lido.substr(lido.find("{NroInt=10") + 10, 1));
        }
        EXPECT_EQ(Operacoes().size(), vistos.size());
        return vistos;
    }
    static Textos MenuAoCarregar() { return MenuCheio; }
    static Textos MenuDaLinha(std::int32_t, std::int32_t) { return MenuCheio; }

    const std::string Nome = "COLimiteDif";
    const std::string Carregamento = "COSensores.Carrega";
    const std::string Enche = "COLimiteDif." + Feitios[Tipo].Localiza;
    const std::string ItemMenu = "COLimiteDif.m_ZtList_ItemMenuClicado";
    const std::string Detalhe = "COLimiteDif.Editar";
    const std::string Janela = "frmLimitesDifDetalhes";
    const std::string Pergunta = Feitios[Tipo].Pergunta();
};

using CadaTipo = testing::Types<ComTipo<Limite>, ComTipo<DiaEspecifico>, ComTipo<HorarioProibido>>;
INSTANTIATE_TYPED_TEST_SUITE_P(COLimiteDif, ControladorDeLista, CadaTipo);

// Loading.

TEST_F(COLimiteDifTeste, DescrModulo_OfEachTipo_IsTheLabelOfTheKind)
{
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
    FalhaLancada([&] { controlador->Carrega(nullptr, "RAD-01", 12, DiaEspecifico); });
    EXPECT_EQ(controlador->DescrModulo(), "Dia Específico") << "kept before the list is configured";
}

TEST_F(COLimiteDifTeste, Carrega_OfEachKind_AsksPermissionsAndThenTheService)
{
    Lista(Novo<EquiptoED>());
    const std::string pedidos[] = {"", "{NroIntEquip=12, TipoLimite=1}", "{NroIntEquip=12}",
                                   "{NroIntEquip=12, TipoLimite=2}"};
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        host->LimpaRegistro();
        EXPECT_TRUE(Carrega(tipo));
        const Textos esperado{
            "objSCA.PossuiPerm2(\"NAB\", \"VOR-EQP-CS\", \"I\") -> True",
            "objSCA.PossuiPerm2(\"NAB\", \"VOR-EQP-CS\", \"A\") -> True",
            "objSCA.PossuiPerm2(\"NAB\", \"VOR-EQP-CS\", \"E\") -> True",
            "Plataforma.Ponteiro := 11",
            "Gateway.CriaObjetoRN(\"VOR\", \"EquiptoRN\", \"ZTVORLIB\", \"4\")",
            "EquiptoRN.ExecutaMetodo(\"" + Feitios[tipo].Lista + "\", " + Feitios[tipo].Registro + pedidos[tipo] +
                ") -> True",
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
        EXPECT_EQ(MenuHabilitado(lista), SoNovo);
        EXPECT_EQ(host->Registro().size(), 3U) << "only the permissions";
    }
}

TEST_F(COLimiteDifTeste, Carrega_OfLimits_ShowsARowForEachInTheOrderOfTheService)
{
    Lista({NovoLimite(9, 2, 730, 1805, 60, 40), NovoLimite(-3, 1, 0, 5, 0, 0),
           NovoLimite(2147483647, 8, 5, 2359, 1, 32767), NovoLimite(0, 4, 1000, 1000, -1, -5)},
          {});
    for (std::int16_t tipo : {Limite, HorarioProibido}) {
        EXPECT_TRUE(Carrega(tipo));
        ASSERT_EQ(lista->NroItens(), 4);
        EXPECT_EQ(Celulas(1), (Textos{"Segunda", "07:30", "18:05", "60 Km", "40 Km", "9"}));
        EXPECT_EQ(Celulas(2), (Textos{"Domingo", "00:00", "00:05", " ", " ", "-3"}));
        EXPECT_EQ(Celulas(3), (Textos{"Feriado", "00:05", "23:59", "1 Km", "32767 Km", "2147483647"}));
        EXPECT_EQ(Celulas(4), (Textos{"Quarta", "10:00", "10:00", " ", " ", "0"}));
    }
}

TEST_F(COLimiteDifTeste, Carrega_OfEachDayCode_ShowsItsName)
{
    std::vector<Ref<LimiteDifED>> limites;
    for (int dia : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 255}) {
        limites.push_back(NovoLimite(dia, static_cast<std::uint8_t>(dia), 0, 0, 0, 0));
    }
    Lista(limites, {});
    EXPECT_TRUE(Carrega(Limite));
    EXPECT_EQ(Coluna(lista, 1),
              (Textos{"", "Domingo", "Segunda", "Terça", "Quarta", "Quinta", "Sexta", "Sábado", "Feriado", "", ""}));
}

TEST_F(COLimiteDifTeste, Carrega_OfSpecificDays_ShowsTheirDates)
{
    Lista({}, {NovoDia(9, DataDe(5, 3, 2027), 730, 1805, 60, 40), NovoDia(8, DataDe(25, 12, 2026), 0, 2359, 0, 0),
               NovoDia(7, Data{}, 5, 5, 80, 0)});
    EXPECT_TRUE(Carrega(DiaEspecifico));
    ASSERT_EQ(lista->NroItens(), 3);
    EXPECT_EQ(Celulas(1), (Textos{"05/03/2027", "07:30", "18:05", "60 Km", "40 Km", "9"}));
    EXPECT_EQ(Celulas(2), (Textos{"25/12/2026", "00:00", "23:59", " ", " ", "8"}));
    EXPECT_EQ(Celulas(3), (Textos{"30/12/1899", "00:05", "00:05", "80 Km", " ", "7"}));
}

TEST_F(COLimiteDifTeste, Carrega_WithoutRows_IsTrueWithNovoAlone)
{
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        Lista(Novo<EquiptoED>()); // the collection is absent
        EXPECT_TRUE(Carrega(tipo));
        EXPECT_EQ(lista->NroItens(), 0);
        EXPECT_EQ(MenuHabilitado(lista), SoNovo);
        const auto antes = Grade()->Arranjo();
        EstragaMenu(lista);
        Lista({}, {});
        EXPECT_TRUE(Carrega(tipo));
        EXPECT_EQ(MenuHabilitado(lista), SoNovo);
        EXPECT_EQ(Grade()->Arranjo() - antes, 8) << "six columns, emptied, and the empty table handed over";
    }
}

TEST_F(COLimiteDifTeste, Carrega_WhenTheSearchIsRefused_IsFalseWithTheListEmptied)
{
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        CarregaDuas(tipo);
        EXPECT_EQ(lista->NroItens(), 2);
        host->RecusaOperacao(Feitios[tipo].Lista, "fora do ar");
        EXPECT_FALSE(Carrega(tipo));
        EXPECT_EQ(lista->NroItens(), 0);
        EXPECT_EQ(MenuHabilitado(lista), MenuCheio) << "as it was set before the search";
        EXPECT_TRUE(RegistroIgual(host->RegistroDe({"Plataforma.", "EquiptoRN."}),
                                  Textos{"Plataforma.Ponteiro := 11", "EquiptoRN.ExecutaMetodo(*",
                                         "EquiptoRN.MostraErro() -> \"fora do ar\"", "Plataforma.Ponteiro := 0"}));
    }
}

TEST_F(COLimiteDifTeste, LimpaPesquisa_WithAndWithoutAList_EmptiesItAndSetsTheMenu)
{
    CarregaDuas(Limite);
    lista->DefineTitulo("título");
    EstragaMenu(lista);
    controlador->LimpaPesquisa();
    EXPECT_EQ(lista->NroItens(), 0);
    EXPECT_EQ(lista->Titulo(), "");
    EXPECT_EQ(MenuHabilitado(lista), SoNovo);
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP < COLimiteDif.HabilitaMenu", [] { Novo<COLimiteDif>()->LimpaPesquisa(); }));
}

// Menu.

TEST_F(COLimiteDifTeste, MenuInicial_OfDeniedActions_BarsTheirItemsAlone)
{
    struct {
        const char *Acao;
        std::string Item;
    } const casos[] = {{"I", "Novo"}, {"E", "Excluir"}, {"A", "Editar"}};
    ListaVarias(2);
    std::set<std::string> barrados;
    for (const auto &caso : casos) { // one denial more at a time
        SCOPED_TRACE(caso.Acao);
        host->objSCA->Nega("VOR-EQP-CS", caso.Acao);
        barrados.insert(caso.Item);
        Carrega(Limite);
        auto operador = Operador();
        FAZ(operador, ClicaLinha("ztLista", 1));
        EXPECT_EQ(MenuHabilitado(lista), MenuCheio);
        for (const std::string &item : MenuCheio) {
            EXPECT_EQ(Utilizavel(item), !barrados.contains(item)) << item;
        }
        NAO_FAZ(operador, EscolheMenu("ztLista", "mnuZTLObj" + caso.Item));
    }
}

TEST_F(COLimiteDifTeste, MenuInicial_AfterADenial_OpensTheItemAgain)
{
    lista->MenuBloqueado("mnuZTLObjNovo", true);
    lista->MenuBloqueado("mnuZTLObjExcluir", true);
    CarregaDuas(Limite);
    EXPECT_TRUE(Utilizavel("Novo"));
    EXPECT_TRUE(Utilizavel("Excluir"));
}

// New, edit, details.

TEST_F(COLimiteDifTeste, Novo_ThatSaves_SearchesAgainAndGivesTheListTheFocus)
{
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        CarregaDuas(tipo);
        NoDetalhe([&](Pessoa &p) {
            EXPECT_EQ(p.Acha("lblCodEquip")->Caption(), "RAD-01");
            Preenche(p, tipo);
            EXPECT_TRUE(Operador().Foco("cmdFora"));
            Confirma(p);
        });
        Comanda("Novo");
        EXPECT_EQ(Operacoes(), (Textos{Feitios[tipo].Inclui, Feitios[tipo].Lista}));
        EXPECT_NE(host->RegistroDe({"EquiptoRN.ExecutaMetodo"})[0].find("NroIntEquip=12"), std::string::npos);
        EXPECT_EQ(lista->NroItens(), 2);
        EXPECT_EQ(dona->ControleAtivo(), lista);
    }
}

TEST_F(COLimiteDifTeste, Editar_ThatSaves_SendsTheCurrentRowAndSearchesAgain)
{
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        CarregaDuas(tipo);
        NoDetalhe([](Pessoa &p) {
            EXPECT_EQ(p.Acha("lblCodEquip")->Caption(), "RAD-01");
            Confirma(p);
        });
        Comanda("Editar", 2);
        EXPECT_EQ(Operacoes(), (Textos{Feitios[tipo].Consulta, Feitios[tipo].Altera, Feitios[tipo].Lista}));
        EXPECT_TRUE(host->RegistroDe({"EquiptoRN.ExecutaMetodo"})[0].ends_with("ED{NroInt=102}) -> True"));
        EXPECT_EQ(dona->ControleAtivo(), lista);
    }
}

TEST_F(COLimiteDifTeste, NovoAndEditar_ThatAreCancelled_SearchNothing)
{
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        CarregaDuas(tipo);
        NoDetalhe(Cancela);
        Comanda("Novo");
        EXPECT_EQ(Operacoes(), Textos{});
        NoDetalhe(Cancela);
        Comanda("Editar");
        EXPECT_EQ(Operacoes(), Textos{Feitios[tipo].Consulta});
        EXPECT_EQ(lista->NroItens(), 2);
    }
}

TEST_F(COLimiteDifTeste, Atualizar_WhenTheSearchIsRefused_LeavesTheListEmptyWithTheFocus)
{
    CarregaDuas(Limite);
    NoDetalhe([&](Pessoa &p) {
        host->RecusaOperacao("listaLimiteDif", "fora do ar");
        EXPECT_TRUE(Operador().Foco("cmdFora"));
        Confirma(p);
    });
    Comanda("Editar", 1);
    EXPECT_EQ(lista->NroItens(), 0);
    EXPECT_EQ(dona->ControleAtivo(), lista);
    EXPECT_EQ(MenuHabilitado(lista), SoNovo);
    EXPECT_EQ(host->Tela->Ponteiro(), 0);
}

// Deactivation.

TEST_F(COLimiteDifTeste, Excluir_AnsweredYes_DeactivatesThatRowAndSearchesNothing)
{
    goMensagem();
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        const Feitio &feitio = Feitios[tipo];
        CarregaDuas(tipo);
        auto operador = Operador();
        FAZ(operador, ClicaLinha("ztLista", 2));
        EstragaMenu(lista);
        host->Responde(feitio.Pergunta(), true);
        Comanda("Excluir");
        const Textos esperado{
            "Plataforma.PerguntaSimNao(\"" + feitio.Pergunta() + "\", \"Atenção\", padrao=Não) -> Sim",
            "Gateway.CriaObjetoRN(\"VOR\", \"EquiptoRN\", \"ZTVORLIB\", \"4\")",
            "EquiptoRN.ExecutaMetodo(\"" + feitio.Desativa + "\", " + feitio.Registro + "{NroInt=102}) -> True",
            "goMensagem.ExibeMensagem(\"" + feitio.AvisoDaExclusao + "\", Nothing)",
        };
        EXPECT_TRUE(RegistroIgual(host->Registro(), esperado));
        EXPECT_EQ(Coluna(lista, 6), Textos{"101"});
        EXPECT_EQ(MenuHabilitado(lista), MenuCheio);

        host->Responde(feitio.Pergunta(), true);
        Comanda("Excluir");
        EXPECT_EQ(lista->NroItens(), 0);
        EXPECT_EQ(MenuHabilitado(lista), SoNovo);
    }
}

TEST_F(COLimiteDifTeste, Excluir_ThatIsRefused_KeepsTheRow)
{
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        CarregaDuas(tipo);
        host->Responde(Feitios[tipo].Pergunta(), true);
        host->RecusaOperacao(Feitios[tipo].Desativa, "em uso");
        Comanda("Excluir", 2);
        EXPECT_EQ(lista->NroItens(), 2);
        EXPECT_TRUE(RegistroIgual(host->RegistroDe({"EquiptoRN.", "goMensagem."}),
                                  Textos{"EquiptoRN.ExecutaMetodo(*", "EquiptoRN.MostraErro() -> \"em uso\""}));
        EXPECT_TRUE(host->Avisos().empty());
    }
}

TEST_F(COLimiteDifTeste, Excluir_OfARowThatWasSorted_FollowsTheRowAndNotItsOldPlace)
{
    CarregaDuas(DiaEspecifico);
    auto operador = Operador();
    FAZ(operador, OrdenaPor("ztLista", 1));
    FAZ(operador, OrdenaPor("ztLista", 1)); // 02/05 first
    host->Responde(Feitios[DiaEspecifico].Pergunta(), true);
    Comanda("Excluir", 1);
    EXPECT_EQ(Coluna(lista, 6), Textos{"101"});
    EXPECT_EQ(host->Conta("EquiptoRN.ExecutaMetodo(\"desativaDiaEspecifico\", DiaEspecificoED{NroInt=102})"), 1);
}

// The service's mark of the row goes back with it.
TEST_F(COLimiteDifTeste, Excluir_Confirmed_HandsBackTheMarkOfItsRow)
{
    for (const std::int16_t tipo : {Limite, DiaEspecifico}) {
        ListaVarias(2);
        const auto limite = NovoLimite(102, 2, 700, 900, 60, 0);
        const auto dia = NovoDia(102, DataDe(1, 5, 2027), 700, 900, 60, 0);
        limite->VersaoLida = 5;
        dia->VersaoLida = 5;
        Lista({limite}, {dia});
        EXPECT_TRUE(Carrega(tipo));
        std::int64_t vinda = 0;
        host->Servico("EquiptoRN", Feitios[tipo].Desativa, [&](const Ref<Registro> &pedido) {
            vinda = pedido->VersaoLida;
            return Resposta();
        });
        host->Responde(Feitios[tipo].Pergunta(), true);
        Comanda("Excluir", 1);
        EXPECT_EQ(vinda, 5);
    }
}

// Life.

TEST_F(COLimiteDifTeste, Controller_DroppedWhileItDeactivates_FinishesItsCommand)
{
    CarregaDuas(Limite);
    host->Servico("EquiptoRN", "desativaLimiteDif", [this](const auto &) {
        controlador = nullptr;
        return Resposta();
    });
    host->Responde(Feitios[Limite].Pergunta(), true);
    Comanda("Excluir", 1);
    EXPECT_EQ(lista->NroItens(), 1);
    ASSERT_EQ(host->Avisos().size(), 1U);
    EXPECT_EQ(host->Avisos()[0].Texto, "Limite excluído com sucesso!");
}

TEST_F(COLimiteDifTeste, SharedForm_ReleasedWhileItIsShown_StillAnswers)
{
    CarregaDuas(Limite);
    NoDetalhe([](Pessoa &p) {
        LiberaFormsCompartilhados();
        Confirma(p);
    });
    Comanda("Editar", 1);
    EXPECT_EQ(Operacoes().back(), "listaLimiteDif");
}

// Faults.

TEST_F(COLimiteDifTeste, Carrega_WhenASearchFails_RaisesUnderTheHourglass)
{
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        CarregaDuas(tipo);
        const auto falha = [&](const std::string &chamada) {
            Plataforma()->DefinePonteiro(PonteiroNormal);
            host->FalhaEm(chamada, 1, 70, "negado");
            return Lanca(70, chamada + FimDaBusca(tipo) + " < COSensores.Carrega", "negado", [&] { Carrega(tipo); });
        };
        std::vector<std::int16_t> ponteiros; // at each change of the emptied list
        const Conexao espia = Grade()->Mudou().liga([&] {
            if (lista->NroItens() == 0) {
                ponteiros.push_back(host->Tela->Ponteiro());
            }
        });
        EXPECT_TRUE(falha("Gateway.CriaObjetoRN"));
        EXPECT_EQ(lista->NroItens(), 0);
        ASSERT_FALSE(ponteiros.empty());
        EXPECT_EQ(ponteiros.front(), 11);
        EXPECT_EQ(host->Tela->Ponteiro(), 11);
        EXPECT_TRUE(falha("EquiptoRN.ExecutaMetodo"));
        EXPECT_EQ(host->Tela->Ponteiro(), 11);
    }
}

TEST_F(COLimiteDifTeste, Carrega_WhenTheMenuFailsBehindTheRows_RaisesUnderTheHourglass)
{
    ListaVarias(2);
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        lista->Limpa(std::nullopt);
        const Conexao falha = Grade()->Mudou().liga([&] {
            if (lista->NroItens() > 0 && lista->ItemMenu(MenuLista::Editar)->Enabled()) {
                throw Falha(70, "Fora", "negado");
            }
        });
        EXPECT_TRUE(Lanca(70, "Fora < COLimiteDif.HabilitaMenu" + FimDaBusca(tipo) + " < COSensores.Carrega",
                          [&] { Carrega(tipo); }));
        EXPECT_EQ(lista->NroItens(), 2);
        EXPECT_EQ(host->Tela->Ponteiro(), 11);
        Plataforma()->DefinePonteiro(PonteiroNormal);
    }
}

TEST_F(COLimiteDifTeste, Carrega_WhenTheServiceAnswersNothing_RaisesFault91)
{
    Lista(nullptr);
    for (std::int16_t tipo : Tipos) {
        EXPECT_EQ(FalhaLancada([&] { Carrega(tipo); }).Numero, 91) << tipo;
    }
}

TEST_F(COLimiteDifTeste, Carrega_WhenAPermissionFails_RaisesBeforeTheItemsChange)
{
    Lista({}, {});
    EstragaMenu(lista);
    host->FalhaEm("objSCA.PossuiPerm2", 3);
    EXPECT_TRUE(
        Lanca(51, "objSCA.PossuiPerm2 < COLimiteDif.MenuInicial < COSensores.Carrega", [&] { Carrega(Limite); }));
    EXPECT_EQ(MenuHabilitado(lista), MenuEstragado) << "the items come behind the permissions";
    EXPECT_TRUE(Carrega(Limite));
    EXPECT_EQ(MenuHabilitado(lista), SoNovo);
}

TEST_F(COLimiteDifTeste, AntesDeRemoverItem_WhenItFails_ReportsOnceAndLeavesTheRowNumber)
{
    for (std::int16_t tipo : Tipos) {
        SCOPED_TRACE(tipo);
        CarregaDuas(tipo);
        Plataforma()->DefinePonteiro(PonteiroAmpulheta);
        host->Responde(Feitios[tipo].Pergunta(), true);
        host->FalhaEm("EquiptoRN.ExecutaMetodo", 1, 70, "negado");
        std::int32_t linha = 2;
        lista->AntesDeRemoverItem().dispara(linha);
        EXPECT_EQ(linha, 2);
        EXPECT_TRUE(
            MostrouErro(static_cast<std::size_t>(tipo), "COLimiteDif.m_ZtList_AntesDeRemoverItem", 70,
                        "EquiptoRN.ExecutaMetodo < COLimiteDif." + Feitios[tipo].Exclui + " < COLimiteDif.Excluir"));
        EXPECT_EQ(host->Erros().back().Descricao, "negado");
        EXPECT_EQ(host->Tela->Ponteiro(), 0);
    }
}

TEST_F(COLimiteDifTeste, NovoAndEditar_WhenTheNewSearchFails_ReportTheWholePathAndResetThePointer)
{
    std::size_t erros = 0;
    for (std::int16_t tipo : Tipos) {
        for (const std::string comando : {"Novo", "Editar"}) {
            SCOPED_TRACE(std::to_string(tipo) + comando);
            CarregaDuas(tipo);
            NoDetalhe([&](Pessoa &p) {
                if (comando == "Novo") {
                    Preenche(p, tipo);
                }
                host->FalhaEm("EquiptoRN.ExecutaMetodo", 2, 70, "negado");
                Confirma(p);
            });
            Comanda(comando, 1);
            EXPECT_TRUE(MostrouErro(++erros, "COLimiteDif.m_ZtList_ItemMenuClicado", 70,
                                    "EquiptoRN.ExecutaMetodo" + FimDaBusca(tipo) +
                                        " < COLimiteDif.Atualizar < COLimiteDif." + comando));
            EXPECT_EQ(host->Tela->Ponteiro(), 0);
            EXPECT_EQ(lista->NroItens(), 0);
        }
    }
}

} // namespace
