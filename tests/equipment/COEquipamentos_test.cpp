#include "equipment/COEquipamentos.h"

#include "controls/ztCombo.h"
#include "equipment/frmEquipDetalhes.h"
#include "limits/frmLimitesDif.h"
#include "search/frmLista.h"
#include "shell/ModGeral.h"
#include "tests/search/JanelaTeste.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/RegistroDoTexto.h"
#include "tests/support/UmControle.h"
#include "tests/support/Varredura.h"

#include <algorithm>

namespace {

constexpr const char *Novo_ = "mnuZTLObjNovo";
constexpr const char *Editar = "mnuZTLObjEditar";
constexpr const char *Detalhes = "mnuZTLObjDetalhes";
constexpr const char *Excluir = "mnuZTLObjExcluir";
constexpr const char *Localizar = "mnuZTLObjLocalizar";
constexpr const char *Atualizar = "mnuZTLObjAtualizar";
constexpr const char *Reativar = "mnuZTLObjReativar";
constexpr const char *LimitesDif = "mnuZTLObjLimitesDif";
constexpr const char *DiasEspec = "mnuZTLObjDiasEspec";
constexpr const char *HorarioProib = "mnuZTLObjHorarioProib";

// A list that tells what is written to it, in order.
class ListaQueAnota : public ztList {
  public:
    using ztList::ztList;

    std::string SemColuna; // the column that it has lost
    std::vector<std::string> Chamadas;

    std::string ValorAtual(const std::string &chave) const override
    {
        if (chave == SemColuna) {
            throw Falha(NumeroFalha::SubscritoForaDoIntervalo);
        }
        return ztList::ValorAtual(chave);
    }
    void Limpa(std::optional<bool> titulo) override
    {
        Anota("Limpa", !titulo ? "ausente" : *titulo ? "True" : "False").ztList::Limpa(titulo);
    }
    void DefineTitulo(const std::string &valor) override { Anota("Titulo", valor).ztList::DefineTitulo(valor); }
    void CarregaItens(TabelaTexto &tabela) override
    {
        Anota("CarregaItens", std::to_string(tabela.Linhas())).ztList::CarregaItens(tabela);
    }
    void DefineTemMais(bool valor) override { Anota("TemMais", std::to_string(valor)).ztList::DefineTemMais(valor); }
    void AtualizaLista() override { Anota("AtualizaLista").ztList::AtualizaLista(); }
    void DefineItemAtual(std::int32_t linha) override
    {
        Anota("ItemAtual", std::to_string(linha)).ztList::DefineItemAtual(linha);
    }
    void EstiloMenu1(std::int32_t valor) override
    {
        Anota("Estilo1", std::to_string(valor)).ztList::EstiloMenu1(valor);
    }
    void EstiloMenu2(std::int32_t valor) override
    {
        Anota("Estilo2", std::to_string(valor)).ztList::EstiloMenu2(valor);
    }
    void IncluiItensMenu(const std::vector<ItemMenuLista> &itens) override
    {
        Anota("IncluiItensMenu", std::to_string(itens.size())).ztList::IncluiItensMenu(itens);
    }
    void MenuVisivel(const std::string &chave, bool valor) override
    {
        Anota("Visivel " + chave, std::to_string(valor)).ztList::MenuVisivel(chave, valor);
    }
    void MenuBloqueado(const std::string &chave, bool valor) override
    {
        Anota("Bloqueado " + chave, std::to_string(valor)).ztList::MenuBloqueado(chave, valor);
    }
    void MenuHabilitado(const std::string &chave, bool valor) override
    {
        Anota("Habilitado " + chave, std::to_string(valor)).ztList::MenuHabilitado(chave, valor);
    }
    void MenuTexto(const std::string &chave, const std::string &valor) override
    {
        Anota("Texto " + chave, valor).ztList::MenuTexto(chave, valor);
    }

  private:
    // Keeps the call, marked when it comes under the hourglass; it is then made on the list as it is.
    ztList &Anota(const std::string &operacao, const std::string &valor = "")
    {
        const bool ampulheta = Plataforma()->Ponteiro() == PonteiroAmpulheta;
        Chamadas.push_back((ampulheta ? "~" : "") + operacao + (valor.empty() ? "" : " " + valor));
        return *this;
    }
};

class COEquipamentosTeste : public JanelaTeste {
  protected:
    void SetUp() override
    {
        JanelaTeste::SetUp();
        host->Atende<EquiptoED>("EquiptoRN", "consulta",
                                [](const Ref<EquiptoED> &pedido) { return Resposta(Registro(pedido->NroIntEquip)); });
        for (const char *metodo : {"altera", "desativa", "reativa"}) {
            host->Atende<EquiptoED>("EquiptoRN", metodo, [](const Ref<EquiptoED> &) { return Resposta(); });
        }
        host->Atende<EquiptoED>("EquiptoRN", "inclui", [](const Ref<EquiptoED> &) { return Resposta(Registro(103)); });
        for (const char *metodo : {"listaLimiteDif", "listaDiaEspecifico"}) {
            host->Servico("EquiptoRN", metodo, [](const Ref<::Registro> &) { return Resposta(Novo<EquiptoED>()); });
        }
    }

    // A breath tester as "consulta" gives it: nothing but its first page to fill.
    static Ref<EquiptoED> Registro(std::int32_t nroIntEquip)
    {
        const std::string numero = std::to_string(nroIntEquip);
        return DoTexto<EquiptoED>("NroIntEquip=" + numero + ", Codigo=\"ETI-" + numero +
                                  R"(", Descricao="Etilômetro", TipoAgente=3, TipoEquip="E", Modelo="Alco")");
    }

    // A new controller and its window from the menu.
    Pessoa AbreDoMenu(const std::string &trabFoto = "2")
    {
        auto novo = Novo<COEquipamentos>();
        novo->SetValorCampo("TrabFoto", trabFoto);
        novo->CarregaJanela(nullptr);
        co = novo;
        host->LimpaRegistro();
        return NaJanela(host->Tela->FormsAbertos("frmLista").size() - 1);
    }
    // The same after a search, the log starting behind it.
    Pessoa AbreComLinhas(const std::string &trabFoto = "2")
    {
        Pessoa pessoa = AbreDoMenu(trabFoto);
        EXPECT_TRUE(pessoa.Localiza("ztlLista"));
        host->LimpaRegistro();
        return pessoa;
    }
    // Gives the controller of the open window another list, as if the window had been loaded with it.
    Ref<ListaQueAnota> TrocaLista()
    {
        Ref<IForm> form = host->Tela->FormsAbertos("frmLista").at(0);
        auto lista = Feito<ListaQueAnota>(form, Chamado<AjustesZtList>("ztlLista", {.TipoMenu = 3}));
        const auto &colunas = ListaDe(NaJanela())->Colunas();
        for (std::size_t i = 0; i < colunas.size(); ++i) {
            const auto numero = static_cast<std::int16_t>(i + 1);
            if (i == 0) {
                lista->AlteraPrimeiraColuna(numero, std::nullopt, colunas[i].Titulo, 0, 0, "", false);
            } else {
                lista->AdicionaColuna(numero, std::nullopt, colunas[i].Titulo, 0, 0, "", false);
            }
        }
        ComoTipo<frmLista>(form)->FormCarregado.dispara(lista);
        return lista;
    }
    static bool Escolhe(Pessoa &pessoa, const std::string &chave) { return pessoa.EscolheMenu("ztlLista", chave); }

    static Ref<::ItemMenu> Item(const Pessoa &pessoa, const std::string &chave)
    {
        return ListaDe(pessoa)->Menu().Item(chave);
    }
    // Keys of the menu items that are enabled, standard ones that the module does not touch left out.
    static Textos Habilitados(const Pessoa &pessoa)
    {
        Textos chaves;
        for (const char *chave : {Novo_, Editar, Detalhes, Reativar, LimitesDif, DiasEspec, HorarioProib}) {
            if (Item(pessoa, chave)->Enabled()) {
                chaves.push_back(chave);
            }
        }
        return chaves;
    }

    // What the person does in the next detail form, which is closed by its own button if that leaves it open.
    void NoForm(const std::function<void(Pessoa &)> &roteiro = [](Pessoa &) {})
    {
        host->AoMostrarModal("frmEquipDetalhes", [this, roteiro](const Ref<IForm> &form) {
            Pessoa pessoa(form, host->Tela);
            roteiro(pessoa);
            host->Tela->FechaPelaPessoa(form);
        });
    }
    // There: another description, or a new breath tester, saved with a button; then something else.
    void EditaNoForm(
        const std::string &botao = "ztCmdOK", const std::function<void()> &depois = [] {})
    {
        host->Responde("Confirma a alteração?", true);
        NoForm([botao, depois](Pessoa &pessoa) {
            pessoa.Preenche("txtDescricao", "Outra");
            pessoa.Clica(botao);
            depois();
        });
    }
    void IncluiNoForm(const std::function<void()> &depois = [] {})
    {
        host->Responde("Confirma a inclusão?", true);
        NoForm([depois](Pessoa &pessoa) {
            pessoa.Preenche("txtCodEquip", "ETI-103");
            pessoa.Preenche("txtDescricao", "Etilômetro");
            pessoa.Escolhe("cboTipoMedidor", "Portátil");
            pessoa.Escolhe("cboTipoEquip", "Etilômetro");
            pessoa.Preenche("txtModelo", "Alco");
            pessoa.Clica("ztCmdAplicar");
            depois();
        });
    }

    static Ref<clsListaParametros> Parametros(const std::vector<std::pair<std::string, std::string>> &pares)
    {
        auto parametros = Novo<clsListaParametros>();
        for (const auto &[nome, valor] : pares) {
            parametros->Add(nome, valor);
        }
        return parametros;
    }
    static Ref<clsListaParametros> Criterios(const std::string &tipoAgente, const std::string &criterio,
                                             const std::string &ativo)
    {
        return Parametros({{"Cliente", "Autoridade das Estradas de Rodagem"},
                           {"Setor", ""},
                           {"TipoAgente", tipoAgente},
                           {"TipoEquip", "T"},
                           {"Criterio", criterio},
                           {"CodEquip", "X"},
                           {"Ativo", ativo}});
    }

    RefFraca<COEquipamentos> co;
};

// The module's face.

TEST_F(COEquipamentosTeste, Face_OfAFreshList_HasItsDefaults)
{
    auto lista = Novo<COEquipamentos>();
    EXPECT_EQ(lista->Modulo(), "Equipamentos");
    EXPECT_EQ(lista->NomeTipo(), "COEquipamentos");
    for (const std::string nome : {"", "TrabFoto", "DtInfracao", "Cliente"}) {
        EXPECT_FALSE(lista->ExigeCampo(nome)) << nome;
    }
    EXPECT_EQ(lista->GetValorCampo("TrabFoto"), "2");
    EXPECT_EQ(lista->GetValorCampo("DtInfracao"), "00:00:00");
    EXPECT_EQ(lista->GetValorCampo("trabfoto"), "");
    EXPECT_EQ(lista->GetValorCampo(""), "");
    EXPECT_EQ(lista->GetValorCampo("Cliente"), "");
    EXPECT_TRUE(lista->pEquiptoED().Nada());
    EXPECT_TRUE(lista->pAfericaoED().Nada());
    lista->LimpaPesquisa(); // there is no window
    EXPECT_EQ(host->Registro(), Textos{});
}

TEST_F(COEquipamentosTeste, SetValorCampo_TrabFoto_IsOnForOneAndOffForAnythingElse)
{
    auto lista = Novo<COEquipamentos>();
    for (const std::string valor : {"2", "", "0", "01", "True", "1 "}) {
        lista->SetValorCampo("TrabFoto", "1");
        EXPECT_EQ(lista->GetValorCampo("TrabFoto"), "1");
        lista->SetValorCampo("TrabFoto", valor);
        EXPECT_EQ(lista->GetValorCampo("TrabFoto"), "2") << valor;
    }
}

TEST_F(COEquipamentosTeste, SetValorCampo_DtInfracao_KeepsTheDate)
{
    auto lista = Novo<COEquipamentos>();
    lista->SetValorCampo("DtInfracao", "1/2/2026");
    EXPECT_EQ(lista->GetValorCampo("DtInfracao"), "01/02/2026");
    EXPECT_TRUE(Lanca(13, "ZTAVOREQUIP", [&] { lista->SetValorCampo("DtInfracao", "ontem"); }));
    EXPECT_EQ(lista->GetValorCampo("DtInfracao"), "01/02/2026");
}

TEST_F(COEquipamentosTeste, SetValorCampo_OfAnUnknownName_IsIgnored)
{
    auto lista = Novo<COEquipamentos>();
    lista->SetValorCampo("TRABFOTO", "1");
    lista->SetValorCampo("Cliente", "Autoridade das Estradas de Rodagem");
    EXPECT_EQ(lista->GetValorCampo("TrabFoto"), "2");
    EXPECT_EQ(lista->GetValorCampo("Cliente"), "");
}

TEST_F(COEquipamentosTeste, LimpaPesquisa_OfOneRow_TakesItAndTheTitle)
{
    Cadastro.resize(1);
    Pessoa pessoa = AbreComLinhas();
    EXPECT_EQ(ListaDe(pessoa)->Titulo(), "PREFEITURA");
    co->LimpaPesquisa();
    EXPECT_EQ(Linhas(pessoa), Textos{});
    EXPECT_EQ(ListaDe(pessoa)->Titulo(), "");
}

TEST_F(COEquipamentosTeste, LimpaPesquisa_OfAnEmptyList_LeavesItsTitle)
{
    Cadastro.clear();
    Lista2 = [](const Ref<ListaEquiptoED> &) { return Resposta(PaginaAusente()); };
    Pessoa pessoa = AbreComLinhas();
    EXPECT_EQ(host->AvisosNovos().size(), 1U);
    co->LimpaPesquisa();
    EXPECT_EQ(ListaDe(pessoa)->Titulo(), "PREFEITURA");
}

// The window.

TEST_F(COEquipamentosTeste, CarregaJanela_FromTheMenu_OpensTheListWithItsColumns)
{
    Pessoa pessoa = AbreDoMenu();
    EXPECT_EQ(host->Tela->FormsAbertos("frmLista").at(0)->Caption(), "Equipamentos");
    Textos colunas;
    for (const auto &coluna : ListaDe(pessoa)->Colunas()) {
        colunas.push_back(coluna.Titulo + " " + std::to_string(coluna.Largura));
        EXPECT_EQ(coluna.Chave, coluna.Titulo);
        EXPECT_EQ(coluna.Visivel, coluna.Largura > 0) << coluna.Titulo;
        EXPECT_EQ(coluna.Marca, "");
        EXPECT_EQ(coluna.Alinhamento, 0);
    }
    EXPECT_EQ(colunas, (Textos{"Código 1185", "Descrição 3840", "Município 2460", "Tipo 1785", "Modelo 1840",
                               "NroIntEquip 0", "IndLimiteDif 0", "TipoEquip 0", "VelocPerm 0"}));
    EXPECT_EQ(Linhas(pessoa), Textos{});
    EXPECT_FALSE(ListaDe(pessoa)->TemMais());
}

TEST_F(COEquipamentosTeste, CarregaJanela_OfTheHostsTwoTools_OpensEachInItsMode)
{
    EXPECT_TRUE(geral->ClickMenu("mnuModVOREquiptos"));
    EXPECT_TRUE(geral->ClickMenu("mnuModNABEquiptos"));
    EXPECT_FALSE(geral->ClickMenu("MNUMODVOREQUIPTOS"));
    EXPECT_EQ(host->Tela->FormsAbertos("frmLista").size(), 2U);
    for (std::size_t i = 0; i < 2; ++i) {
        Pessoa pessoa = NaJanela(i);
        pessoa.Localiza("ztlLista");
    }
    EXPECT_EQ(Enviados("lista2"),
              (Textos{"ListaEquiptoED{ClienteInc=\"Autoridade das Estradas de Rodagem\", Ativo=1, IndTrabFoto=1}",
                      "ListaEquiptoED{ClienteInc=\"PREFEITURA\", Ativo=1, IndTrabFoto=2}"}));
}

TEST_F(COEquipamentosTeste, CarregaJanela_TwiceOfOneController_OpensTwoWindowsOfWhichTheFirstIsNoLongerHeard)
{
    auto lista = Novo<COEquipamentos>();
    lista->CarregaJanela(nullptr);
    lista->CarregaJanela(nullptr);
    const auto janelas = host->Tela->FormsAbertos("frmLista");
    ASSERT_EQ(janelas.size(), 2U);
    EXPECT_FALSE(janelas[0] == janelas[1]);
    EXPECT_TRUE(janelas[0]->Visible() && janelas[1]->Visible());
    host->LimpaRegistro();
    ListaDe(NaJanela(0))->ItemMenuClicado().dispara(Atualizar);
    EXPECT_EQ(Enviados("lista2"), Textos{});
    ListaDe(NaJanela(1))->ItemMenuClicado().dispara(Atualizar);
    EXPECT_EQ(Enviados("lista2").size(), 1U);
}

TEST_F(COEquipamentosTeste, CarregaJanela_WithParameters_SearchesAtOnce)
{
    auto lista = Novo<COEquipamentos>();
    lista->CarregaJanela(Parametros({{"TipoEquip", "R"}}));
    EXPECT_EQ(Enviados("lista2"),
              Textos{"ListaEquiptoED{ClienteInc=\"PREFEITURA\", TipoEquip=\"R\", Ativo=1, IndTrabFoto=2}"});
    EXPECT_EQ(ListaDe(NaJanela())->NroItens(), 2);
}

TEST_F(COEquipamentosTeste, CarregaJanela_OfAHostThatFails_ReportsAndCanBeTriedAgain)
{
    host->FalhaEm("goDadosVor.PreencheTipoAgente");
    auto lista = Novo<COEquipamentos>();
    RefFraca<COEquipamentos> fraca = lista;
    lista->CarregaJanela(nullptr);
    EXPECT_EQ(host->ErrosNovos(), Textos{"COEquipamentos.CarregaJanela: 51 (goDadosVor.PreencheTipoAgente < "
                                         "frmLista.AtualizaFrame < frmLista.CarregaForm)"});
    EXPECT_EQ(host->Tela->NroForms(), 0);
    EXPECT_EQ(host->Tela->Ponteiro(), 0);
    lista->CarregaJanela(nullptr);
    EXPECT_EQ(host->Tela->NroForms(), 1);
    lista = nullptr;
    EXPECT_FALSE(fraca.Nada());
    EXPECT_TRUE(NaJanela().Fecha());
    EXPECT_TRUE(fraca.Nada());
}

TEST_F(COEquipamentosTeste, FormAtivado_OfTheWindow_GivesTheListTheFocus)
{
    Pessoa pessoa = AbreComLinhas();
    pessoa.Foco("chkInativos");
    Ref<IForm> form = host->Tela->FormsAbertos("frmLista").at(0);
    form->Desativada();
    form->Ativada();
    EXPECT_EQ(form->ControleAtivo(), pessoa.Acha("ztlLista"));
}

TEST_F(COEquipamentosTeste, FormCarregado_WithPermissionsThatCannotBeRead_ReportsAndTheWindowOpens)
{
    host->FalhaEm("objSCA.PossuiPerm2");
    Pessoa pessoa = AbreDoMenu();
    EXPECT_EQ(host->ErrosNovos(), Textos{"COEquipamentos.m_frmLista_FormCarregado: 51 (objSCA.PossuiPerm2 < "
                                         "COEquipamentos.MenuInicial)"});
    EXPECT_EQ(host->Tela->NroForms(), 1);
    EXPECT_TRUE(pessoa.Localiza("ztlLista"));
    EXPECT_TRUE(pessoa.ClicaLinha("ztlLista", 2)); // the list is heard all the same
    EXPECT_EQ(Habilitados(pessoa), (Textos{Novo_, Editar, Detalhes, Reativar, HorarioProib}));
}

// The search.

TEST_F(COEquipamentosTeste, Localizar_OfTheFirstPage_CallsTheServiceUnderTheHourglass)
{
    goGateway();
    Pessoa pessoa = AbreDoMenu();
    Cadastro = {Equipto(101, "RAD-01", "R", 1)};
    EXPECT_TRUE(pessoa.Localiza("ztlLista"));
    EXPECT_TRUE(RegistroIgual(
        host->Registro(),
        {"Plataforma.Ponteiro := 11", "Gateway.CriaObjetoRN(\"VOR\", \"EquiptoRN\", \"ZTVORLIB\", \"4\")",
         "EquiptoRN.ExecutaMetodo(\"lista2\", ListaEquiptoED{ClienteInc=\"PREFEITURA\", Ativo=1, IndTrabFoto=2}) -> "
         "True",
         "EquiptoRN.ObtemRetorno()*", "TrataBD.AbreZTBanco(99)",
         "MDB.OpenRecordset(\"SELECT * FROM Municipio WHERE COD_MUNIC = 120\"*", "Cursor.Close()",
         "Plataforma.Ponteiro := 0"}));
}

TEST_F(COEquipamentosTeste, Localizar_OfEquipment_LoadsOneRowForEach)
{
    auto semMunicipio = Equipto(7, "X'9", "Z", 0);
    semMunicipio->CodMunic = 0;
    semMunicipio->VelocPermitida = std::int16_t{0};
    auto desconhecido = Equipto(8, "", "", 255);
    desconhecido->CodMunic = 4321;
    desconhecido->VelocPermitida = std::int16_t{-1};
    Cadastro = {Equipto(2147483647, "RAD-01", "R", 1), semMunicipio, desconhecido};
    Pessoa pessoa = AbreComLinhas();
    EXPECT_EQ(
        Linhas(pessoa),
        (Textos{"RAD-01|Equipamento RAD-01|Porto Alegre|Radar Fotográfico|Modelo RAD-01|2147483647|1|R|60",
                "X'9|Equipamento X'9||Indefinido|Modelo X'9|7|0|Z|0", "|Equipamento ||Indefinido|Modelo |8|255||-1"}));
    EXPECT_EQ(ListaDe(pessoa)->ItemAtual(), 3);
    EXPECT_EQ(host->AvisosNovos(), Textos{});
}

TEST_F(COEquipamentosTeste, Localizar_InPhotoWorkMode_SendsTheSectorAndTheOtherCriteria)
{
    Pessoa pessoa = AbreDoMenu("1");
    pessoa.EscolheCliente("ztCliente", "Autoridade das Estradas de Rodagem", "NORTE");
    pessoa.Escolhe("cboTipoAgente", "Estático");
    pessoa.Escolhe("cboTipoEquipto", "Pardal Móvel");
    pessoa.Marca("chkInativos");
    pessoa.Localiza("ztlLista");
    EXPECT_EQ(
        Enviados("lista2"),
        Textos{"ListaEquiptoED{ClienteInc=\"Autoridade das Estradas de Rodagem\", SetorInc=\"NORTE\", TipoEquip=\"M\", "
               "Ativo=2, TipoAgente=2, IndTrabFoto=1}"});
    EXPECT_EQ(
        ListaDe(pessoa)->Titulo(),
        "Autoridade das Estradas de Rodagem [NORTE] - Tipo Agente: Estático - Tipo Equipto.: Pardal Móvel [Inativos]");
}

TEST_F(COEquipamentosTeste, Localizar_OutsidePhotoWorkMode_NarrowsOnlyTheTitleByTheSector)
{
    Pessoa pessoa = AbreDoMenu("2");
    pessoa.EscolheCliente("ztCliente", "Autoridade das Estradas de Rodagem", "NORTE");
    pessoa.Localiza("ztlLista");
    EXPECT_EQ(Enviados("lista2"),
              Textos{"ListaEquiptoED{ClienteInc=\"Autoridade das Estradas de Rodagem\", Ativo=1, IndTrabFoto=2}"});
    EXPECT_EQ(ListaDe(pessoa)->Titulo(), "Autoridade das Estradas de Rodagem [NORTE]");
}

TEST_F(COEquipamentosTeste, Localizar_BySubcodeAfterCode_KeepsTheOldCodeInTheTitleAlone)
{
    Pessoa pessoa = AbreDoMenu();
    pessoa.Escolhe("cboCriterio", "Código");
    pessoa.Digita("txtCodEquip", "d'Á 1");
    pessoa.Localiza("ztlLista");
    EXPECT_EQ(ListaDe(pessoa)->Titulo(), "PREFEITURA - Cód. Equipto.: d'Á 1");
    pessoa.Escolhe("cboCriterio", "Subcódigo");
    pessoa.Preenche("txtCodEquip", "S2");
    pessoa.Localiza("ztlLista");
    EXPECT_EQ(ListaDe(pessoa)->Titulo(), "PREFEITURA - Cód. Equipto.: d'Á 1 - Subcód. Equipto.: S2");
    pessoa.Escolhe("cboCriterio", "Todos");
    pessoa.Localiza("ztlLista");
    EXPECT_EQ(ListaDe(pessoa)->Titulo(), "PREFEITURA - Cód. Equipto.: d'Á 1 - Subcód. Equipto.: S2");
    EXPECT_EQ(Enviados("lista2"),
              (Textos{"ListaEquiptoED{ClienteInc=\"PREFEITURA\", Codigo=\"d'Á 1\", Ativo=1, IndTrabFoto=2}",
                      "ListaEquiptoED{ClienteInc=\"PREFEITURA\", SubCodigo=\"S2\", Ativo=1, IndTrabFoto=2}",
                      "ListaEquiptoED{ClienteInc=\"PREFEITURA\", Ativo=1, IndTrabFoto=2}"}));
}

TEST_F(COEquipamentosTeste, Localizar_LackingACriterion_HasReadThoseBeforeItAndNoneBehindIt)
{
    using Pares = std::vector<std::pair<std::string, std::string>>;
    const Pares antes{{"Cliente", "A"},  {"Setor", "SA"},    {"TipoAgente", "1"}, {"TipoEquip", "R"},
                      {"Criterio", "1"}, {"CodEquip", "CA"}, {"Ativo", "1"}};
    const Pares depois{{"Cliente", "B"},  {"Setor", "SB"},       {"TipoAgente", "2"}, {"TipoEquip", "M"},
                       {"Criterio", "2"}, {"SubCodEquip", "SU"}, {"Ativo", "2"}};
    const Textos enviados{
        "ClienteInc=\"A\", SetorInc=\"SA\", Codigo=\"CA\", TipoEquip=\"R\", Ativo=1, TipoAgente=1",
        "ClienteInc=\"B\", SetorInc=\"SA\", Codigo=\"CA\", TipoEquip=\"R\", Ativo=1, TipoAgente=1",
        "ClienteInc=\"B\", SetorInc=\"SB\", Codigo=\"CA\", TipoEquip=\"R\", Ativo=1, TipoAgente=1",
        "ClienteInc=\"B\", SetorInc=\"SB\", Codigo=\"CA\", TipoEquip=\"R\", Ativo=1, TipoAgente=2",
        "ClienteInc=\"B\", SetorInc=\"SB\", Codigo=\"CA\", TipoEquip=\"M\", Ativo=1, TipoAgente=2",
        "ClienteInc=\"B\", SetorInc=\"SB\", SubCodigo=\"\", TipoEquip=\"M\", Ativo=1, TipoAgente=2",
        "ClienteInc=\"B\", SetorInc=\"SB\", SubCodigo=\"SU\", TipoEquip=\"M\", Ativo=1, TipoAgente=2"};
    const std::string tituloAntes = "A [SA] - Tipo Agente: Fixo - Tipo Equipto.: Radar Fotográfico - Cód. Equipto.: CA";
    Pessoa pessoa = AbreDoMenu("1");
    for (std::size_t i = 0; i < depois.size(); ++i) {
        SCOPED_TRACE(depois[i].first);
        co->Localizar(Parametros(antes));
        EXPECT_EQ(ListaDe(pessoa)->Titulo(), tituloAntes);
        Pares faltando = depois;
        faltando.erase(faltando.begin() + static_cast<std::ptrdiff_t>(i));
        co->Localizar(Parametros(faltando));
        EXPECT_EQ(host->ErrosNovos(), Textos{"COEquipamentos.Localizar: 5 (ZTAVOREQUIP)"});
        host->LimpaRegistro();
        EXPECT_TRUE(Escolhe(pessoa, Atualizar)); // searches by what was kept
        EXPECT_EQ(Enviados("lista2"), Textos{"ListaEquiptoED{" + enviados[i] + ", IndTrabFoto=1}"});
        EXPECT_EQ(ListaDe(pessoa)->Titulo(), tituloAntes);
    }
    co->Localizar(Parametros(depois));
    EXPECT_EQ(ListaDe(pessoa)->Titulo(), "B [SB] - Tipo Agente: Estático - Tipo Equipto.: Pardal Móvel - "
                                         "Cód. Equipto.: CA - Subcód. Equipto.: SU [Inativos]");
}

TEST_F(COEquipamentosTeste, Localizar_ThatFindsNothing_SaysSoAndLeavesTheListEmpty)
{
    Pessoa pessoa = AbreComLinhas();
    Lista2 = [](const Ref<ListaEquiptoED> &) { return Resposta(PaginaAusente()); };
    pessoa.Localiza("ztlLista");
    EXPECT_EQ(host->AvisosNovos(), Textos{"Não foram encontrados registros para os critérios especificados."});
    EXPECT_EQ(host->Avisos().back().Controle, "");
    EXPECT_EQ(Linhas(pessoa), Textos{});
    EXPECT_TRUE(RegistroIgual(host->RegistroDe({"Plataforma.Ponteiro", "goMensagem.ExibeMensagem"}),
                              {"Plataforma.Ponteiro := 11", "goMensagem.ExibeMensagem(*", "Plataforma.Ponteiro := 0"}));
}

TEST_F(COEquipamentosTeste, Localizar_AnsweredWithAnEmptyPage_SaysNothing)
{
    Cadastro.clear();
    Pessoa pessoa = AbreComLinhas();
    EXPECT_EQ(host->AvisosNovos(), Textos{});
    EXPECT_EQ(Linhas(pessoa), Textos{});
    EXPECT_EQ(ListaDe(pessoa)->ItemAtual(), -1);
    EXPECT_FALSE(ListaDe(pessoa)->TemMais());
}

TEST_F(COEquipamentosTeste, Localizar_ThatTheServiceRefuses_HasClearedTheRows)
{
    Pessoa pessoa = AbreComLinhas();
    host->RecusaOperacao("lista2", "Sem permissão");
    pessoa.Marca("chkInativos");
    pessoa.Localiza("ztlLista");
    EXPECT_TRUE(RegistroIgual(host->RegistroDe({"Plataforma.Ponteiro", "EquiptoRN."}),
                              {"Plataforma.Ponteiro := 11", "EquiptoRN.ExecutaMetodo(*",
                               "EquiptoRN.MostraErro() -> \"Sem permissão\"", "Plataforma.Ponteiro := 0"}));
    EXPECT_EQ(Linhas(pessoa), Textos{});
    EXPECT_EQ(ListaDe(pessoa)->Titulo(), "PREFEITURA [Inativos]");
    EXPECT_EQ(host->AvisosNovos(), Textos{});
}

TEST_F(COEquipamentosTeste, Localizar_OfAServiceThatFails_ReportsThePathWithThePointerBack)
{
    goGateway();
    const std::vector<std::string> chamadas{"Gateway.CriaObjetoRN", "EquiptoRN.ExecutaMetodo",
                                            "EquiptoRN.ObtemRetorno"};
    Pessoa pessoa = AbreComLinhas();
    for (const std::string &chamada : chamadas) {
        host->FalhaEm(chamada, 1, 70, "negado");
        pessoa.Localiza("ztlLista");
        EXPECT_EQ(host->ErrosNovos(),
                  Textos{"COEquipamentos.Localizar: 70 (" + chamada + " < COEquipamentos.LocalizarEquipamentos)"});
        EXPECT_EQ(host->Tela->Ponteiro(), 0);
        EXPECT_EQ(Linhas(pessoa), Textos{});
        pessoa.Localiza("ztlLista");
        EXPECT_EQ(Linhas(pessoa).size(), 2U);
    }
    host->FalhaEm("MDB.OpenRecordset");
    pessoa.Localiza("ztlLista");
    EXPECT_EQ(host->ErrosNovos(),
              Textos{"COEquipamentos.Localizar: 51 (MDB.OpenRecordset < Generico.gFunBuscaDescrMunic < "
                     "COEquipamentos.LocalizarEquipamentos)"});
    EXPECT_EQ(Linhas(pessoa), Textos{});
}

TEST_F(COEquipamentosTeste, Localizar_AnsweredWithSomethingElse_ReportsTheFault)
{
    Pessoa pessoa = AbreDoMenu();
    const std::vector<std::pair<Resposta, std::int32_t>> respostas{
        {Resposta(Novo<EquiptoED>()), 13}, {Resposta(Ref<ListaEquiptoED>()), 91}, {Resposta(Valor("lista")), 424}};
    for (const auto &[resposta, numero] : respostas) {
        Lista2 = [&resposta = resposta](const Ref<ListaEquiptoED> &) { return resposta; };
        pessoa.Localiza("ztlLista");
        EXPECT_EQ(host->ErrosNovos(), Textos{"COEquipamentos.Localizar: " + std::to_string(numero) +
                                             " (ZTAVOREQUIP < COEquipamentos.LocalizarEquipamentos)"});
        EXPECT_EQ(host->Tela->Ponteiro(), 0);
    }
}

TEST_F(COEquipamentosTeste, Localizar_OfAPageTooLongForItsCounter_FaultsWithTheListEmpty)
{
    auto equipto = Equipto(1, "A", "R", 1);
    equipto->CodMunic = 0;
    Pessoa pessoa = AbreComLinhas();
    Cadastro.assign(32767, equipto);
    pessoa.Localiza("ztlLista");
    EXPECT_EQ(ListaDe(pessoa)->NroItens(), 32767);
    EXPECT_EQ(ListaDe(pessoa)->ItemAtual(), 32767);
    Cadastro.push_back(equipto);
    pessoa.Marca("chkInativos");
    pessoa.Localiza("ztlLista");
    EXPECT_EQ(host->ErrosNovos(),
              Textos{"COEquipamentos.Localizar: 6 (ZTAVOREQUIP < COEquipamentos.LocalizarEquipamentos)"});
    EXPECT_EQ(ListaDe(pessoa)->NroItens(), 0);
    EXPECT_EQ(ListaDe(pessoa)->Titulo(), "PREFEITURA [Inativos]");
    EXPECT_EQ(host->Tela->Ponteiro(), 0);
}

TEST_F(COEquipamentosTeste, Localizar_WithCriteriaThatCannotBeRead_ReportsTheConversion)
{
    AbreDoMenu();
    const std::vector<std::pair<Ref<clsListaParametros>, std::int32_t>> casos{
        {Criterios("x", "0", "1"), 13},   {Criterios("256", "0", "1"), 6}, {Criterios("-1", "0", "1"), 6},
        {Criterios("0", "", "1"), 13},    {Criterios("0", "0", "999"), 6}, {Criterios("0", "2", "1"), 5},
        {Parametros({{"Setor", "X"}}), 5}};
    for (const auto &[parametros, numero] : casos) {
        co->Localizar(parametros);
        EXPECT_EQ(host->ErrosNovos(), Textos{"COEquipamentos.Localizar: " + std::to_string(numero) + " (ZTAVOREQUIP)"});
    }
    EXPECT_EQ(host->Conta("EquiptoRN."), 0);
    co->Localizar(nullptr);
    EXPECT_EQ(host->ErrosNovos(), Textos{"COEquipamentos.Localizar: 91 (ZTAVOREQUIP)"});
}

TEST_F(COEquipamentosTeste, Localizar_WithoutAWindow_ReportsThatThereIsNoList)
{
    Novo<COEquipamentos>()->Localizar(Criterios("0", "0", "1"));
    EXPECT_EQ(host->ErrosNovos(),
              Textos{"COEquipamentos.Localizar: 91 (ZTAVOREQUIP < COEquipamentos.LocalizarEquipamentos)"});
    EXPECT_EQ(host->RegistroDe({"Plataforma.Ponteiro"}),
              (Textos{"Plataforma.Ponteiro := 11", "Plataforma.Ponteiro := 0"}));
}

// Paging.

TEST_F(COEquipamentosTeste, BotaoClick_OfAListWithMore_AppendsTheNextPageOfTheLastSearch)
{
    std::int32_t pagina = 0;
    Lista2 = [&](const Ref<ListaEquiptoED> &) {
        return Resposta(++pagina == 1 ? Pagina({Cadastro[0]}, 5000) : Pagina({Cadastro[1]}, 0));
    };
    Pessoa pessoa = AbreDoMenu();
    pessoa.Escolhe("cboCriterio", "Código");
    pessoa.Digita("txtCodEquip", "A");
    pessoa.Localiza("ztlLista");
    EXPECT_TRUE(ListaDe(pessoa)->TemMais());
    EXPECT_EQ(ListaDe(pessoa)->ItemAtual(), 1);
    ListaDe(pessoa)->DefineTitulo("escrito por fora");
    EXPECT_TRUE(pessoa.PedeMais("ztlLista"));
    EXPECT_EQ(Linhas(pessoa).size(), 2U);
    EXPECT_TRUE(Linhas(pessoa)[1].starts_with("PAR-02|"));
    EXPECT_EQ(ListaDe(pessoa)->ItemAtual(), 2);
    EXPECT_EQ(ListaDe(pessoa)->Titulo(), "escrito por fora");
    EXPECT_FALSE(ListaDe(pessoa)->TemMais());
    EXPECT_FALSE(pessoa.PedeMais("ztlLista"));
    EXPECT_EQ(Enviados("lista2"),
              (Textos{"ListaEquiptoED{ClienteInc=\"PREFEITURA\", Codigo=\"A\", Ativo=1, IndTrabFoto=2}",
                      "ListaEquiptoED{ClienteInc=\"PREFEITURA\", Codigo=\"A\", Ativo=1, ProxNroIntEquip=5000, "
                      "IndTrabFoto=2}"}));
}

TEST_F(COEquipamentosTeste, TemMais_OfTheNextNumber_IsTrueFromOneOn)
{
    std::int32_t proximo = 0;
    Lista2 = [&](const Ref<ListaEquiptoED> &) { return Resposta(Pagina(Cadastro, proximo)); };
    Pessoa pessoa = AbreDoMenu();
    for (const auto &[numero, temMais] :
         std::vector<std::pair<std::int32_t, bool>>{{1, true}, {0, false}, {2147483647, true}, {-1, false}}) {
        proximo = numero;
        pessoa.Localiza("ztlLista");
        EXPECT_EQ(ListaDe(pessoa)->TemMais(), temMais) << numero;
    }
}

TEST_F(COEquipamentosTeste, BotaoClick_ThatFindsNothing_KeepsTheRowsAndThePlace)
{
    Lista2 = [this](const Ref<ListaEquiptoED> &) { return Resposta(Pagina(Cadastro, 77)); };
    Pessoa pessoa = AbreComLinhas();
    Lista2 = [](const Ref<ListaEquiptoED> &) { return Resposta(PaginaAusente()); };
    EXPECT_TRUE(pessoa.PedeMais("ztlLista"));
    EXPECT_EQ(host->AvisosNovos(), Textos{"Não foram encontrados registros para os critérios especificados."});
    EXPECT_EQ(Linhas(pessoa).size(), 2U);
    host->RecusaOperacao("lista2", "Ocupado");
    EXPECT_TRUE(pessoa.PedeMais("ztlLista"));
    EXPECT_EQ(Linhas(pessoa).size(), 2U);
    EXPECT_TRUE(pessoa.PedeMais("ztlLista"));
    EXPECT_EQ(host->AvisosNovos().size(), 1U);
    const Textos enviados = Enviados("lista2");
    ASSERT_EQ(enviados.size(), 3U);
    for (const std::string &enviado : enviados) {
        EXPECT_EQ(enviado, "ListaEquiptoED{ClienteInc=\"PREFEITURA\", Ativo=1, ProxNroIntEquip=77, IndTrabFoto=2}");
    }
}

TEST_F(COEquipamentosTeste, BotaoClick_OfAServiceThatFails_ReportsAndKeepsTheRows)
{
    Lista2 = [this](const Ref<ListaEquiptoED> &) { return Resposta(Pagina(Cadastro, 77)); };
    Pessoa pessoa = AbreComLinhas();
    host->FalhaEm("EquiptoRN.ExecutaMetodo");
    pessoa.PedeMais("ztlLista");
    EXPECT_EQ(host->ErrosNovos(), Textos{"COEquipamentos.m_ZtList_BotaoClick: 51 (EquiptoRN.ExecutaMetodo < "
                                         "COEquipamentos.LocalizarEquipamentos)"});
    EXPECT_EQ(Linhas(pessoa).size(), 2U);
    EXPECT_EQ(host->Tela->Ponteiro(), 0);
    pessoa.PedeMais("ztlLista");
    EXPECT_EQ(Linhas(pessoa).size(), 4U);
}

TEST_F(COEquipamentosTeste, BotaoClick_WhoseRowsCannotBeMade_HasTheNextPlaceAlready)
{
    std::int32_t proximo = 77;
    Lista2 = [&](const Ref<ListaEquiptoED> &) { return Resposta(Pagina(Cadastro, proximo)); };
    Pessoa pessoa = AbreComLinhas();
    proximo = 88;
    host->FalhaEm("MDB.OpenRecordset");
    pessoa.PedeMais("ztlLista");
    EXPECT_EQ(host->ErrosNovos().size(), 1U);
    EXPECT_EQ(Linhas(pessoa).size(), 2U);
    pessoa.PedeMais("ztlLista");
    EXPECT_EQ(Enviados("lista2"),
              (Textos{"ListaEquiptoED{ClienteInc=\"PREFEITURA\", Ativo=1, ProxNroIntEquip=77, IndTrabFoto=2}",
                      "ListaEquiptoED{ClienteInc=\"PREFEITURA\", Ativo=1, ProxNroIntEquip=88, IndTrabFoto=2}"}));
}

TEST_F(COEquipamentosTeste, Atualizar_AfterSeveralPages_StartsAgainWithTheFirst)
{
    std::int32_t pagina = 0;
    Lista2 = [&](const Ref<ListaEquiptoED> &) {
        ++pagina;
        return Resposta(Pagina({Cadastro[static_cast<std::size_t>(pagina - 1) % 2]}, 9));
    };
    Pessoa pessoa = AbreComLinhas();
    pessoa.PedeMais("ztlLista");
    EXPECT_EQ(Linhas(pessoa).size(), 2U);
    host->LimpaRegistro();
    EXPECT_TRUE(Escolhe(pessoa, Atualizar));
    EXPECT_EQ(Linhas(pessoa).size(), 1U);
    EXPECT_EQ(ListaDe(pessoa)->Titulo(), "PREFEITURA");
    EXPECT_EQ(Enviados("lista2"), Textos{"ListaEquiptoED{ClienteInc=\"PREFEITURA\", Ativo=1, IndTrabFoto=2}"});
}

// The selection.

TEST_F(COEquipamentosTeste, CarregaSelecao_OfARow_GivesItsEquipmentAndCalibration)
{
    auto lista = Novo<COEquipamentos>();
    host->AoMostrarModal("frmLista", [&](Pessoa &pessoa) {
        EXPECT_EQ(lista->GetValorCampo("DtInfracao"), "01/02/2026");
        EXPECT_EQ(lista->GetValorCampo("TrabFoto"), "2");
        EXPECT_EQ(host->Tela->FormsAbertos("frmLista").at(0)->Caption(), "Equipamentos");
        pessoa.ClicaLinha("ztlLista", 2);
        EXPECT_TRUE(pessoa.Clica("cmdOK"));
    });
    EXPECT_TRUE(lista->CarregaSelecao(Parametros({{"TrabFoto", "2"}, {"DtInfracao", "01/02/2026"}})));
    EXPECT_EQ(lista->pEquiptoED()->Texto(),
              "EquiptoED{NroIntEquip=102, Codigo=\"PAR-02\", VelocPermitida=60, Modelo=\"Modelo PAR-02\"}");
    EXPECT_EQ(lista->pAfericaoED()->Texto(),
              "AfericaoED{Numero=\"INM-77\", Marca=\"ACME\", DataVerificacao=05/03/2026}");
    EXPECT_EQ(Enviados("consultaSimplesAfericaoVigente"),
              Textos{"ConsultaAfericaoED{DtInfracao=01/02/2026, NroIntEquip=102, TipoConsulta=1}"});
}

TEST_F(COEquipamentosTeste, CarregaSelecao_Cancelled_HasNoResultOfAnEarlierOne)
{
    auto lista = Novo<COEquipamentos>();
    host->AoMostrarModal("frmLista", [](Pessoa &pessoa) { pessoa.Clica("cmdOK"); });
    EXPECT_TRUE(lista->CarregaSelecao(Parametros({{"DtInfracao", "01/02/2026"}})));
    EXPECT_FALSE(lista->pAfericaoED().Nada());
    host->AoMostrarModal("frmLista", [&](Pessoa &pessoa) {
        EXPECT_EQ(lista->GetValorCampo("DtInfracao"), "00:00:00");
        pessoa.Clica("cmdCancelar");
    });
    EXPECT_FALSE(lista->CarregaSelecao(Parametros({})));
    EXPECT_TRUE(lista->pEquiptoED().Nada());
    EXPECT_TRUE(lista->pAfericaoED().Nada());
}

TEST_F(COEquipamentosTeste, CarregaSelecao_WithADateThatIsNoneAfterARow_ReportsOpensNothingAndHasForgottenTheRow)
{
    auto lista = Novo<COEquipamentos>();
    host->AoMostrarModal("frmLista", [](Pessoa &pessoa) { pessoa.Clica("cmdOK"); });
    EXPECT_TRUE(lista->CarregaSelecao(Parametros({{"DtInfracao", "01/02/2026"}})));
    host->LimpaRegistro();
    EXPECT_FALSE(lista->CarregaSelecao(Parametros({{"DtInfracao", "30/02/2026"}})));
    EXPECT_EQ(host->ErrosNovos(), Textos{"COEquipamentos.CarregaSelecao: 13 (ZTAVOREQUIP)"});
    EXPECT_TRUE(lista->pEquiptoED().Nada());
    EXPECT_TRUE(lista->pAfericaoED().Nada());
    EXPECT_EQ(lista->GetValorCampo("DtInfracao"), "00:00:00");
    EXPECT_EQ(host->Conta("Plataforma.Carrega"), 0);
    EXPECT_FALSE(lista->CarregaSelecao(nullptr));
    EXPECT_EQ(host->ErrosNovos(), Textos{"COEquipamentos.CarregaSelecao: 91 (ZTAVOREQUIP)"});
}

TEST_F(COEquipamentosTeste, CarregaSelecao_OfAHostThatFailsOrClosesTheWindow_AnswersFalse)
{
    auto lista = Novo<COEquipamentos>();
    host->FalhaEm("ObjInterface.MostraJanela");
    EXPECT_FALSE(lista->CarregaSelecao(Parametros({})));
    EXPECT_EQ(host->ErrosNovos(),
              Textos{"COEquipamentos.CarregaSelecao: 51 (ObjInterface.MostraJanela < Geral.FormShow < "
                     "frmLista.CarregaForm)"});
    EXPECT_EQ(host->Tela->NroForms(), 0);
    host->AoMostrarModal("frmLista", [this](const Ref<IForm> &) { geral->FecharJanelasAtivas(); });
    EXPECT_FALSE(lista->CarregaSelecao(Parametros({})));
    EXPECT_EQ(host->ErrosNovos(), Textos{});
}

// The menu.

TEST_F(COEquipamentosTeste, MenuInicial_OfTheList_AddsItsOwnItems)
{
    Pessoa pessoa = AbreDoMenu();
    Textos itens;
    const auto &menu = ListaDe(pessoa)->Menu();
    for (std::int32_t i = 7; i <= menu.Count(); ++i) {
        const ::ItemMenu &item = *menu.Item(i);
        itens.push_back(item.Chave() + "|" + item.Texto() + "|" + item.TextoBotao() + "|" + item.Dica() +
                        (item.IniciaGrupo() ? "|grupo" : ""));
    }
    EXPECT_EQ(itens,
              (Textos{"mnuZTLObjReativar|Reativar||Reativar/Desativar Equipamento|grupo",
                      "mnuZTLObjLimitesDif|Limites Diferenciados|Limites\r\n Diferenciados|Limites Diferenciados|grupo",
                      "mnuZTLObjDiasEspec|Dias Específicos|Dias\r\n Específicos|Dias Específicos",
                      "mnuZTLObjHorarioProib|Horários Proibidos|Horários\r\n Proibidos|Horários Proibidos"}));
    EXPECT_EQ(ListaDe(pessoa)->EstiloMenu1(), 3);
    EXPECT_EQ(ListaDe(pessoa)->EstiloMenu2(), 2);
    for (const char *chave : {Novo_, Editar, Detalhes, Atualizar, Reativar, LimitesDif, DiasEspec, HorarioProib}) {
        EXPECT_TRUE(Item(pessoa, chave)->Visivel()) << chave;
    }
    EXPECT_FALSE(Item(pessoa, Excluir)->Visivel());
    EXPECT_FALSE(Item(pessoa, Localizar)->Visivel());
}

TEST_F(COEquipamentosTeste, MenuInicial_OfThePermissions_BarsWhatIsNotPermitted)
{
    host->objSCA->Nega("VOR-EQP-CS", "A");
    Novo<COEquipamentos>()->CarregaJanela(nullptr);
    EXPECT_EQ(host->RegistroDe({"objSCA."}), (Textos{"objSCA.PossuiPerm2(\"NAB\", \"VOR-EQP-CS\", \"I\") -> True",
                                                     "objSCA.PossuiPerm2(\"NAB\", \"VOR-EQP-CS\", \"A\") -> False",
                                                     "objSCA.PossuiPerm2(\"NAB\", \"VOR-EQP-CS\", \"E\") -> True"}));
    Pessoa pessoa = NaJanela();
    pessoa.Localiza("ztlLista");
    EXPECT_TRUE(Item(pessoa, Editar)->Enabled());
    EXPECT_TRUE(Item(pessoa, Editar)->Bloqueado());
    EXPECT_FALSE(Escolhe(pessoa, Editar));
    EXPECT_FALSE(Item(pessoa, Novo_)->Bloqueado());
    EXPECT_FALSE(Item(pessoa, Reativar)->Bloqueado());
    EXPECT_EQ(host->Conta("EquiptoRN.ExecutaMetodo(\"consulta\""), 0);

    host->objSCA->Nega("VOR-EQP-CS", "I");
    host->objSCA->Nega("VOR-EQP-CS", "E");
    Novo<COEquipamentos>()->CarregaJanela(nullptr);
    Pessoa outra = NaJanela(1);
    EXPECT_TRUE(Item(outra, Novo_)->Bloqueado());
    EXPECT_TRUE(Item(outra, Reativar)->Bloqueado());
    EXPECT_FALSE(Item(outra, Detalhes)->Bloqueado());
    EXPECT_FALSE(Item(outra, LimitesDif)->Bloqueado());
}

TEST_F(COEquipamentosTeste, HabilitaMenu_OfAnEmptyList_LeavesOnlyNovo)
{
    Cadastro = {Equipto(101, "RAD-01", "F", 1)};
    Pessoa pessoa = AbreDoMenu();
    EXPECT_EQ(Habilitados(pessoa), Textos{Novo_});
    pessoa.Localiza("ztlLista");
    EXPECT_EQ(Habilitados(pessoa), (Textos{Novo_, Editar, Detalhes, Reativar, LimitesDif, DiasEspec, HorarioProib}));
    pessoa.Clica("chkInativos");
    EXPECT_EQ(Habilitados(pessoa), Textos{Novo_});
}

TEST_F(COEquipamentosTeste, HabilitaMenu_OfEachRow_FollowsItsLimitsAndItsType)
{
    struct Caso {
        const char *Tipo;
        std::uint8_t TemLimiteDif;
        Textos Esperados;
    };
    const std::vector<Caso> casos{
        {"R", 1, {Novo_, Editar, Detalhes, Reativar, LimitesDif, DiasEspec}},
        {"F", 2, {Novo_, Editar, Detalhes, Reativar, HorarioProib}},
        {"F", 1, {Novo_, Editar, Detalhes, Reativar, LimitesDif, DiasEspec, HorarioProib}},
        {"R", 2, {Novo_, Editar, Detalhes, Reativar}},
        {"f", 0, {Novo_, Editar, Detalhes, Reativar}},
        {"", 11, {Novo_, Editar, Detalhes, Reativar}},
    };
    Cadastro.clear();
    for (const Caso &caso : casos) {
        Cadastro.push_back(Equipto(1, "A", caso.Tipo, caso.TemLimiteDif));
    }
    Pessoa pessoa = AbreComLinhas();
    for (std::size_t i = 0; i < casos.size(); ++i) {
        EXPECT_TRUE(pessoa.ClicaLinha("ztlLista", static_cast<std::int32_t>(i) + 1));
        EXPECT_EQ(Habilitados(pessoa), casos[i].Esperados) << i;
    }
    EXPECT_EQ(Item(pessoa, Reativar)->Texto(), "Desativar");
}

TEST_F(COEquipamentosTeste, HabilitaMenu_OfInactiveEquipment_OffersToReactivateAndNotToEdit)
{
    Pessoa pessoa = AbreDoMenu();
    pessoa.Marca("chkInativos");
    pessoa.Localiza("ztlLista");
    pessoa.ClicaLinha("ztlLista", 1);
    EXPECT_EQ(Habilitados(pessoa), (Textos{Novo_, Detalhes, Reativar, LimitesDif, DiasEspec}));
    EXPECT_EQ(Item(pessoa, Reativar)->Texto(), "Reativar");
    EXPECT_FALSE(Escolhe(pessoa, Editar));
}

TEST_F(COEquipamentosTeste, HabilitaMenu_OfRowsWithoutACurrentOne_OffersNoLimits)
{
    Pessoa pessoa = AbreComLinhas();
    ListaDe(pessoa)->DefineItemAtual(0);
    EXPECT_EQ(Habilitados(pessoa), (Textos{Novo_, Editar, Detalhes, Reativar}));
}

TEST_F(COEquipamentosTeste, HabilitaMenu_OfARow_WritesTheStatesInThisOrderAndThoseOfTheRowAtTheEnd)
{
    AbreDoMenu();
    auto lista = TrocaLista();
    TabelaTexto linhas(9);
    linhas.AdicionaLinha();
    linhas.Celula(7, 1) = "1";
    linhas.Celula(8, 1) = "F";
    lista->CarregaItens(linhas);
    lista->DefineItemAtual(1);
    Textos esperado{"Habilitado mnuZTLObjNovo 1", "Habilitado mnuZTLObjDetalhes 1", "Habilitado mnuZTLObjEditar 0",
                    "Habilitado mnuZTLObjReativar 1", "Texto mnuZTLObjReativar Desativar"};
    for (const char *perdida : {"IndLimiteDif", "TipoEquip", ""}) {
        SCOPED_TRACE(perdida);
        lista->SemColuna = perdida;
        lista->Chamadas.clear();
        lista->HabilitaItensMenuLista().dispara();
        if (lista->SemColuna.empty()) {
            esperado.insert(esperado.end(), {"Habilitado mnuZTLObjLimitesDif 1", "Habilitado mnuZTLObjDiasEspec 1",
                                             "Habilitado mnuZTLObjHorarioProib 1"});
        } else {
            EXPECT_EQ(host->ErrosNovos(), Textos{"COEquipamentos.m_ZtList_HabilitaItensMenuLista: 9 (ZTAVOREQUIP < "
                                                 "COEquipamentos.HabilitaMenu)"});
        }
        EXPECT_EQ(lista->Chamadas, esperado);
    }
    lista->SemColuna = "Código"; // of a command, the number of the row is read before its code
    lista->DefineItemAtual(0);
    lista->ItemMenuClicado().dispara(LimitesDif);
    EXPECT_EQ(host->ErrosNovos(), Textos{"COEquipamentos.LimitesDiferenciados: 13 (ZTAVOREQUIP)"});
}

TEST_F(COEquipamentosTeste, MenuInicial_OfTheList_WritesStylesItemsAndStatesInThisOrder)
{
    host->objSCA->Nega("VOR-EQP-CS", "E");
    AbreDoMenu();
    Textos esperado{"Estilo1 3", "Estilo2 2", "IncluiItensMenu 4"};
    for (const char *visivel : {"Novo 1", "Editar 1", "Detalhes 1", "Reativar 1", "LimitesDif 1", "DiasEspec 1",
                                "HorarioProib 1", "Excluir 0", "Localizar 0"}) {
        esperado.push_back(std::string("Visivel mnuZTLObj") + visivel);
    }
    for (const char *bloqueado : {"Novo 0", "Editar 0", "Reativar 1"}) {
        esperado.push_back(std::string("Bloqueado mnuZTLObj") + bloqueado);
    }
    for (const char *habilitado :
         {"Novo 1", "Detalhes 0", "Editar 0", "Reativar 0", "LimitesDif 0", "DiasEspec 0", "HorarioProib 0"}) {
        esperado.push_back(std::string("Habilitado mnuZTLObj") + habilitado);
    }
    EXPECT_EQ(TrocaLista()->Chamadas, esperado);
}

TEST_F(COEquipamentosTeste, Localizar_OfEachPage_WritesToTheListInThisOrder)
{
    Lista2 = [this](const Ref<ListaEquiptoED> &) { return Resposta(Pagina({Cadastro[0]}, 3)); };
    AbreDoMenu();
    auto lista = TrocaLista();
    const auto linhas = [&](const std::function<void()> &faz) {
        lista->Chamadas.clear();
        faz();
        std::erase_if(lista->Chamadas,
                      [](const std::string &chamada) { return chamada.find("mnuZTLObj") != std::string::npos; });
        return lista->Chamadas;
    };
    EXPECT_EQ(linhas([&] { co->Localizar(Criterios("0", "0", "1")); }),
              (Textos{"~Limpa False", "~Titulo Autoridade das Estradas de Rodagem", "~CarregaItens 1", "~TemMais 1",
                      "~AtualizaLista", "~ItemAtual 1"}));
    EXPECT_EQ(linhas([&] { lista->BotaoClick().dispara(); }),
              (Textos{"~CarregaItens 1", "~TemMais 1", "~AtualizaLista", "~ItemAtual 2"}));
    EXPECT_EQ(linhas([&] { co->LimpaPesquisa(); }), Textos{"Limpa ausente"});
}

// The commands.

TEST_F(COEquipamentosTeste, Editar_OfASavedRecord_TellsTheHostAndSearchesAgain)
{
    Pessoa pessoa = AbreComLinhas();
    pessoa.ClicaLinha("ztlLista", 1);
    EditaNoForm();
    EXPECT_TRUE(Escolhe(pessoa, Editar));
    EXPECT_EQ(Enviados("consulta"), Textos{"EquiptoED{NroIntEquip=101}"});
    EXPECT_TRUE(RegistroIgual(
        host->RegistroDe({"EquiptoRN.ExecutaMetodo", "TrataBD.TabelaAlterada", "goDadosVor.PreencheTipoAgente"}),
        {"EquiptoRN.ExecutaMetodo(\"consulta\"*", "goDadosVor.PreencheTipoAgente(cboTipoMedidor, False, False, False)",
         "EquiptoRN.ExecutaMetodo(\"altera\"*", "TrataBD.TabelaAlterada(\"VOREQUIPTO\", True, False, ausente, ausente)",
         "EquiptoRN.ExecutaMetodo(\"lista2\", ListaEquiptoED{ClienteInc=\"PREFEITURA\", Ativo=1, IndTrabFoto=2})*"}));
    EXPECT_EQ(ListaDe(pessoa)->ItemAtual(), 2);
}

TEST_F(COEquipamentosTeste, Forms_OpenedInEachMode_AreInIt)
{
    for (const auto &[modo, dito] : {std::pair{"1", "True"}, std::pair{"2", "False"}}) {
        for (const char *chave : {Novo_, Editar, Detalhes}) {
            SCOPED_TRACE(std::string(chave) + dito);
            NovoHost();
            Pessoa pessoa = AbreComLinhas(modo);
            NoForm();
            Escolhe(pessoa, chave);
            EXPECT_TRUE(
                host->Contem("goDadosVor.PreencheTipoAgente(cboTipoMedidor, " + std::string(dito) + ", False, False)"));
        }
    }
}

TEST_F(COEquipamentosTeste, Commands_CancelledOrRefused_TellNobodyAndLeaveTheList)
{
    constexpr const char *NaoAchado = "Equipamento não encontrado";
    constexpr const char *Desativar = "Deseja desativar o equipamento PAR-02 ?";
    struct {
        const char *Chave;
        std::string Operacao; // that is refused; empty: the person gives up
        const char *Mensagem;
        std::function<void()> Pessoa;
        std::int32_t Chamadas; // of remote operations
    } const casos[] = {
        {Editar, "", "", [&] { NoForm(); }, 1},
        {Editar, "consulta", NaoAchado, [] {}, 1},
        {Editar, "altera", "Sem permissão", [&] { EditaNoForm(); }, 2}, // it was withdrawn meanwhile
        {Detalhes, "consulta", NaoAchado, [] {}, 1},
        {Novo_, "", "", [&] { NoForm(); }, 0},
        {Novo_, "inclui", "Código já existe", [&] { IncluiNoForm(); }, 1},
        {Reativar, "", "", [&] { host->Responde(Desativar, false); }, 0},
        {Reativar, "desativa", "Equipamento em uso", [&] { host->Responde(Desativar, true); }, 1},
    };
    Pessoa pessoa = AbreComLinhas();
    host->objSCA->Nega("VOR-EQP-CS", "A"); // nobody looks at it again
    for (const auto &caso : casos) {
        SCOPED_TRACE(caso.Chave + caso.Operacao);
        host->LimpaRegistro();
        caso.Pessoa();
        if (!caso.Operacao.empty()) {
            host->RecusaOperacao(caso.Operacao, caso.Mensagem);
        }
        EXPECT_TRUE(Escolhe(pessoa, caso.Chave));
        EXPECT_EQ(host->Conta("EquiptoRN.ExecutaMetodo"), caso.Chamadas);
        EXPECT_EQ(host->Conta("EquiptoRN.MostraErro() -> \"" + std::string(caso.Mensagem)), !caso.Operacao.empty());
        EXPECT_EQ(host->Conta("ObjInterface.MostraJanela"), caso.Operacao != "consulta" && caso.Chave != Reativar);
        EXPECT_EQ(host->Conta("TrataBD.TabelaAlterada"), 0);
        EXPECT_EQ(host->Conta("objSCA."), 0);
        EXPECT_EQ(Linhas(pessoa).size(), 2U);
        EXPECT_EQ(host->Tela->NroForms(), 1);
    }
}

TEST_F(COEquipamentosTeste, Commands_ThatFail_ReportThePathOnceAndSearchNoMore)
{
    constexpr const char *Servico = "EquiptoRN.ExecutaMetodo";
    constexpr const char *Aviso = "TrataBD.TabelaAlterada";
    const auto fecha = [&] { geral->FecharJanelasAtivas(); };
    struct {
        const char *Chave;
        const char *Chamada; // that fails; empty: there is no current row
        std::function<void()> Pessoa;
        const char *Erro; // what it begins with
    } const casos[] = {
        {Editar, Servico, [] {}, "frmEquipDetalhes.CarregaEdicao: 51 (EquiptoRN.ExecutaMetodo < clsEquipto.Carrega < "},
        {Detalhes, Servico, [] {},
         "frmEquipDetalhes.CarregaDetalhes: 51 (EquiptoRN.ExecutaMetodo < clsEquipto.Carrega < "},
        {Editar, Aviso, [&] { EditaNoForm(); },
         "COEquipamentos.m_ZtList_ItemMenuClicado(mnuZTLObjEditar): 51 (TrataBD.TabelaAlterada < "
         "COEquipamentos.Editar)"},
        {Novo_, Aviso, [&] { IncluiNoForm(fecha); },
         "COEquipamentos.m_ZtList_ItemMenuClicado(mnuZTLObjNovo): 51 (TrataBD.TabelaAlterada < COEquipamentos.Novo)"},
        {Reativar, Servico, [&] { host->Responde("Deseja desativar o equipamento PAR-02 ?", true); },
         "COEquipamentos.m_ZtList_ItemMenuClicado(mnuZTLObjReativar): 51 (EquiptoRN.ExecutaMetodo < "
         "COEquipamentos.Inativar)"},
        {Atualizar, Servico, [] {},
         "COEquipamentos.m_ZtList_ItemMenuClicado(mnuZTLObjAtualizar): 51 (EquiptoRN.ExecutaMetodo < "
         "COEquipamentos.LocalizarEquipamentos)"},
        {LimitesDif, Servico, [] {},
         "COEquipamentos.LimitesDiferenciados: 51 (EquiptoRN.ExecutaMetodo < COLimiteDif.LocalizarLimitesDif"},
        {DiasEspec, Servico, [] {},
         "COEquipamentos.DiasEspecificos: 51 (EquiptoRN.ExecutaMetodo < COLimiteDif.LocalizarDiasEspecificos"},
        {HorarioProib, Servico, [] {},
         "COEquipamentos.LimitesDiferenciados: 51 (EquiptoRN.ExecutaMetodo < COLimiteDif.LocalizarLimitesDif"},
        {Editar, "", [] {},
         "COEquipamentos.m_ZtList_ItemMenuClicado(mnuZTLObjEditar): 13 (ZTAVOREQUIP < COEquipamentos.Editar)"},
        {Detalhes, "", [] {},
         "COEquipamentos.m_ZtList_ItemMenuClicado(mnuZTLObjDetalhes): 13 (ZTAVOREQUIP < COEquipamentos.Editar)"},
        {Reativar, "", [&] { host->Responde("Deseja desativar o equipamento  ?", true); },
         "COEquipamentos.m_ZtList_ItemMenuClicado(mnuZTLObjReativar): 13 (ZTAVOREQUIP < COEquipamentos.Inativar)"},
    };
    for (const auto &caso : casos) {
        SCOPED_TRACE(std::string(caso.Chave) + " " + caso.Chamada);
        NovoHost();
        Pessoa pessoa = AbreComLinhas();
        caso.Pessoa();
        if (*caso.Chamada != '\0') {
            host->FalhaEm(caso.Chamada);
        } else {
            ListaDe(pessoa)->DefineItemAtual(0);
        }
        // The person's way to the menu makes a row current, a key of the menu bar of the host need not.
        ListaDe(pessoa)->ItemMenuClicado().dispara(caso.Chave);
        const Textos erros = host->ErrosNovos();
        ASSERT_EQ(erros.size(), 1U);
        EXPECT_TRUE(erros[0].starts_with(caso.Erro)) << erros[0];
        EXPECT_EQ(host->Tela->Ponteiro(), 0);
        EXPECT_EQ(Enviados("lista2").size(), caso.Chave == Atualizar ? 1U : 0U);
        if (*caso.Chamada == '\0') {
            EXPECT_EQ(host->Conta("Gateway."), 0);
        }
        if (caso.Chave != Novo_) {
            EXPECT_EQ(host->Tela->NroForms(), 1);
            EXPECT_EQ(Linhas(pessoa).size(), caso.Chave == Atualizar ? 0U : 2U);
        }
    }
}

TEST_F(COEquipamentosTeste, NovoAndEditar_DuringWhichTheListIsClosed_TellTheHostAndSearchNoMore)
{
    const auto tudo = [&] { geral->FecharJanelasAtivas(); };
    const std::function<void()> casos[] = {
        [&] { EditaNoForm("ztCmdAplicar", tudo); },
        [&] { IncluiNoForm(tudo); },
        [&] { // the list alone, before the save
            host->Responde("Confirma a alteração?", true);
            NoForm([&](Pessoa &pessoa) {
                pessoa.Preenche("txtDescricao", "Outra");
                host->Tela->FechaPelaPessoa(host->Tela->FormsAbertos("frmLista").at(0));
                pessoa.Clica("ztCmdOK");
            });
        },
    };
    for (const auto &caso : casos) {
        Pessoa pessoa = AbreComLinhas();
        caso();
        Escolhe(pessoa, &caso == &casos[1] ? Novo_ : Editar);
        EXPECT_EQ(host->Conta("TrataBD.TabelaAlterada(\"VOREQUIPTO\""), 1);
        EXPECT_EQ(Enviados("altera").size() + Enviados("inclui").size(), 1U);
        EXPECT_EQ(Enviados("lista2"), Textos{});
        EXPECT_EQ(host->Tela->NroForms(), 0);
        EXPECT_TRUE(co.Nada());
        EXPECT_EQ(host->ErrosNovos(), Textos{});
    }
}

TEST_F(COEquipamentosTeste, Novo_Saved_SendsTheCriteriaOnTheWindowAgain)
{
    Pessoa pessoa = AbreComLinhas();
    IncluiNoForm();
    // Not searched yet, and so not among the criteria of the last search.
    ListaDe(pessoa)->DefineTitulo("");
    pessoa.Acha<ztCombo>("cboTipoEquipto")->DefineValor("E");
    EXPECT_TRUE(Escolhe(pessoa, Novo_));
    EXPECT_TRUE(RegistroIgual(
        host->RegistroDe(
            {"EquiptoRN.ExecutaMetodo(\"inclui\"", "TrataBD.TabelaAlterada", "EquiptoRN.ExecutaMetodo(\"lista2\""}),
        {"EquiptoRN.ExecutaMetodo(\"inclui\"*", "TrataBD.TabelaAlterada(\"VOREQUIPTO\", True, False, ausente, ausente)",
         "EquiptoRN.ExecutaMetodo(\"lista2\", ListaEquiptoED{ClienteInc=\"PREFEITURA\", TipoEquip=\"E\", Ativo=1, "
         "IndTrabFoto=2})*"}));
    EXPECT_EQ(ListaDe(pessoa)->Titulo(), "PREFEITURA - Tipo Equipto.: Etilômetro");
}

TEST_F(COEquipamentosTeste, Detalhes_OfARow_OpensAFormOfItsOwnAndRefreshesNothing)
{
    Pessoa pessoa = AbreComLinhas();
    host->AoMostrarModal("frmEquipDetalhes", [this](const Ref<IForm> &form) {
        EXPECT_FALSE(form == FormCompartilhado<frmEquipDetalhes>());
        EXPECT_TRUE(host->Contem("goMensagem.PreparaDetalhes(frmEquipDetalhes)"));
        host->Tela->FechaPelaPessoa(form);
    });
    EXPECT_TRUE(Escolhe(pessoa, Detalhes));
    EXPECT_EQ(Enviados("consulta"), Textos{"EquiptoED{NroIntEquip=102}"});
    EXPECT_EQ(Enviados("lista2"), Textos{});
    EXPECT_EQ(host->Conta("TrataBD.TabelaAlterada"), 0);
}

TEST_F(COEquipamentosTeste, Novo_AndEditar_UseTheSharedForm)
{
    Pessoa pessoa = AbreComLinhas();
    std::vector<Ref<IForm>> vistos;
    for (const char *chave : {Novo_, Editar}) {
        host->AoMostrarModal("frmEquipDetalhes", [&](const Ref<IForm> &form) {
            vistos.push_back(form);
            host->Tela->FechaPelaPessoa(form);
        });
        Escolhe(pessoa, chave);
    }
    ASSERT_EQ(vistos.size(), 2U);
    EXPECT_TRUE(vistos[0] == vistos[1]);
    EXPECT_TRUE(vistos[0] == FormCompartilhado<frmEquipDetalhes>());
}

TEST_F(COEquipamentosTeste, Inativar_Confirmed_DeactivatesAndSearchesAgain)
{
    Pessoa pessoa = AbreComLinhas();
    pessoa.ClicaLinha("ztlLista", 1);
    host->Responde("Deseja desativar o equipamento RAD-01 ?", true);
    EXPECT_TRUE(Escolhe(pessoa, Reativar));
    ASSERT_EQ(host->Tela->Perguntas().size(), 1U);
    EXPECT_EQ(host->Tela->Perguntas()[0].Titulo, host->Tela->App->Titulo());
    EXPECT_FALSE(host->Tela->Perguntas()[0].PadraoSim);
    EXPECT_TRUE(RegistroIgual(
        host->RegistroDe({"Plataforma.Pergunta", "Gateway.", "EquiptoRN.", "TrataBD.TabelaAlterada"}),
        {"Plataforma.PerguntaSimNao(*", "Gateway.CriaObjetoRN(*",
         "EquiptoRN.ExecutaMetodo(\"desativa\", EquiptoED{NroIntEquip=101}) -> True",
         "TrataBD.TabelaAlterada(\"VOREQUIPTO\", True, False, ausente, ausente)", "Gateway.CriaObjetoRN(*",
         "EquiptoRN.ExecutaMetodo(\"lista2\", ListaEquiptoED{ClienteInc=\"PREFEITURA\", Ativo=1, IndTrabFoto=2})*",
         "EquiptoRN.ObtemRetorno()*"}));
}

// The mark with which the row was listed, by the last search.
TEST_F(COEquipamentosTeste, Inativar_Confirmed_HandsBackTheMarkOfItsRow)
{
    std::int64_t versao = 7;
    host->Atende<ListaEquiptoED>("EquiptoRN", "lista2", [&](const Ref<ListaEquiptoED> &) {
        const auto lista = DoTexto<ListaEquiptoED>("ProxNroIntEquip=0");
        lista->Equipamentos = Novo<Colecao<Ref<EquiptoED>>>();
        for (const std::int32_t numero : {101, 102}) {
            const auto linha = Registro(numero);
            linha->VersaoLida = versao++;
            lista->Equipamentos.Valor()->Add(linha);
        }
        return Resposta(lista);
    });
    std::vector<std::int64_t> vindas;
    host->Atende<EquiptoED>("EquiptoRN", "desativa", [&](const Ref<EquiptoED> &pedido) {
        vindas.push_back(pedido->VersaoLida);
        return Resposta();
    });
    Pessoa pessoa = AbreComLinhas();
    for (const std::int32_t linha : {2, 1}) {
        pessoa.ClicaLinha("ztlLista", linha);
        host->Responde("Deseja desativar o equipamento ETI-10" + std::to_string(linha) + " ?", true);
        EXPECT_TRUE(Escolhe(pessoa, Reativar)); // and searches again
    }
    EXPECT_EQ(vindas, (std::vector<std::int64_t>{8, 9}));
}

TEST_F(COEquipamentosTeste, Inativar_OfInactiveEquipment_Reactivates)
{
    Pessoa pessoa = AbreDoMenu();
    pessoa.Marca("chkInativos");
    pessoa.Localiza("ztlLista");
    host->Responde("Deseja reativar o equipamento PAR-02 ?", true);
    EXPECT_TRUE(Escolhe(pessoa, Reativar));
    EXPECT_EQ(Enviados("reativa"), Textos{"EquiptoED{NroIntEquip=102}"});
    EXPECT_EQ(Enviados("lista2").size(), 2U);
}

TEST_F(COEquipamentosTeste, Inativar_OfASearchThatIsNeitherOfActiveNorOfInactive_AsksAndCallsWithoutAName)
{
    Pessoa pessoa = AbreDoMenu();
    co->Localizar(Criterios("0", "0", "3"));
    host->Servico("EquiptoRN", "", [](const Ref<::Registro> &) { return Resposta::Recusa("Operação desconhecida"); });
    host->Responde("Deseja r o equipamento PAR-02 ?", true);
    EXPECT_EQ(Item(pessoa, Reativar)->Texto(), "Desativar");
    EXPECT_FALSE(Item(pessoa, Editar)->Enabled());
    EXPECT_TRUE(Escolhe(pessoa, Reativar));
    EXPECT_EQ(Enviados(""), Textos{"EquiptoED{NroIntEquip=102}"});
    EXPECT_TRUE(host->Contem("EquiptoRN.MostraErro() -> \"Operação desconhecida\""));
}

TEST_F(COEquipamentosTeste, LimitesDiferenciados_OfARow_OpensTheLimitsOfItsEquipment)
{
    struct Caso {
        const char *Chave;
        const char *Caption;
        const char *Operacao;
        const char *Pedido;
    };
    const std::vector<Caso> casos{
        {LimitesDif, "Limite Diferenciado [R'1]", "listaLimiteDif", "LimiteDifED{NroIntEquip=101, TipoLimite=1}"},
        {DiasEspec, "Dia Específico [R'1]", "listaDiaEspecifico", "DiaEspecificoED{NroIntEquip=101}"},
        {HorarioProib, "Horário Proibido [R'1]", "listaLimiteDif", "LimiteDifED{NroIntEquip=101, TipoLimite=2}"}};
    Cadastro = {Equipto(101, "R'1", "F", 1)};
    Pessoa pessoa = AbreComLinhas();
    for (const Caso &caso : casos) {
        host->LimpaRegistro();
        host->AoMostrarModal("frmLimitesDif", [&](const Ref<IForm> &form) {
            EXPECT_EQ(form->Caption(), caso.Caption);
            EXPECT_TRUE(form == FormCompartilhado<frmLimitesDif>());
            host->Tela->FechaPelaPessoa(form);
        });
        EXPECT_TRUE(Escolhe(pessoa, caso.Chave));
        EXPECT_EQ(Enviados(caso.Operacao), Textos{caso.Pedido});
        EXPECT_EQ(Enviados("lista2"), Textos{});
        EXPECT_EQ(host->Conta("TrataBD.TabelaAlterada"), 0);
    }
}

TEST_F(COEquipamentosTeste, ItemMenuClicado_OfAnUnknownKey_DoesNothing)
{
    Pessoa pessoa = AbreComLinhas();
    for (const char *chave : {Localizar, Excluir, "mnuZTLObjOutro", "MNUZTLOBJNOVO", ""}) {
        ListaDe(pessoa)->ItemMenuClicado().dispara(chave);
    }
    EXPECT_EQ(host->Registro(), Textos{});
}

// Lives.

TEST_F(COEquipamentosTeste, Janela_ClosedByThePerson_EndsTheController)
{
    Pessoa pessoa = AbreComLinhas();
    EXPECT_FALSE(co.Nada());
    EXPECT_TRUE(pessoa.Fecha());
    EXPECT_TRUE(co.Nada());
}

TEST_F(COEquipamentosTeste, FecharJanelasAtivas_OfSeveralWindows_EndsTheirControllers)
{
    std::vector<RefFraca<COEquipamentos>> fracas;
    for (std::int32_t i = 0; i < 3; ++i) {
        AbreComLinhas();
        fracas.push_back(co);
    }
    geral->FecharJanelasAtivas();
    for (const auto &fraca : fracas) {
        EXPECT_TRUE(fraca.Nada());
    }
    EXPECT_EQ(host->Tela->NroForms(), 0);
}

TEST_F(COEquipamentosTeste, Janelas_TwoAtOnce_DoNotDisturbEachOther)
{
    Lista2 = [this](const Ref<ListaEquiptoED> &pedido) {
        return Resposta(pedido->Ativo == 2 ? Pagina({Cadastro[1]}, 0) : Pagina({Cadastro[0]}, 40));
    };
    Pessoa primeira = AbreDoMenu("1");
    Pessoa segunda = AbreDoMenu("2");
    primeira.Localiza("ztlLista");
    segunda.Marca("chkInativos");
    EXPECT_EQ(Linhas(primeira).size(), 1U);
    segunda.Localiza("ztlLista");
    EXPECT_EQ(ListaDe(primeira)->Titulo(), "Autoridade das Estradas de Rodagem");
    EXPECT_EQ(ListaDe(segunda)->Titulo(), "PREFEITURA [Inativos]");
    EXPECT_TRUE(ListaDe(primeira)->TemMais());
    EXPECT_FALSE(ListaDe(segunda)->TemMais());
    EXPECT_TRUE(Item(primeira, Editar)->Enabled());
    EXPECT_FALSE(Item(segunda, Editar)->Enabled());
    host->LimpaRegistro();
    primeira.PedeMais("ztlLista");
    EXPECT_EQ(Enviados("lista2"), Textos{"ListaEquiptoED{ClienteInc=\"Autoridade das Estradas de Rodagem\", Ativo=1, "
                                         "ProxNroIntEquip=40, IndTrabFoto=1}"});
    EXPECT_EQ(Linhas(segunda).size(), 1U);
    EXPECT_TRUE(primeira.Fecha());
    segunda.Localiza("ztlLista");
    EXPECT_EQ(Linhas(segunda).size(), 1U);
}

TEST_F(COEquipamentosTeste, Localizar_DuringWhichTheHostClosesTheWindow_EndsQuietly)
{
    Pessoa pessoa = AbreDoMenu();
    Lista2 = [this](const Ref<ListaEquiptoED> &) {
        geral->FecharJanelasAtivas();
        return Resposta(Pagina(Cadastro));
    };
    pessoa.Localiza("ztlLista");
    EXPECT_TRUE(co.Nada());
    EXPECT_EQ(host->Tela->NroForms(), 0);
    EXPECT_EQ(host->Tela->Ponteiro(), 0);
    EXPECT_EQ(host->ErrosNovos(), Textos{});
}

} // namespace
