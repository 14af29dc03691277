#include "search/frmLista.h"

#include "controls/CheckBox.h"
#include "controls/ztClienteSetor.h"
#include "controls/ztCombo.h"
#include "controls/ztFrame.h"
#include "controls/ztMask.h"
#include "tests/search/JanelaTeste.h"
#include "tests/support/ArquivoIgual.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/FormQueAnota.h"
#include "tests/support/NomesAcessiveis.h"
#include "tests/support/RetratoDesenho.h"
#include "tests/support/RetratoForm.h"

#include <map>

namespace {

using Pares = std::vector<std::pair<std::string, std::string>>;

std::string Texto(const Ref<clsListaParametros> &parametros)
{
    std::string texto;
    for (std::int32_t i = 1; i <= parametros->Count(); ++i) {
        texto += (i > 1 ? "; " : "") + parametros->Item(i)->Nome + "=" + parametros->Item(i)->Valor;
    }
    return texto;
}

// A module that tells what the window asks of it, and whose search brings the rows that a test gave it.
class ModuloFalso : public IModulo {
  public:
    std::string_view NomeTipo() const override { return "ModuloFalso"; }

    std::string Nome = "Equipamentos";
    std::map<std::string, std::string> Valores{{"TrabFoto", "2"}};
    std::vector<std::vector<std::string>> Achados; // rows: Código, Modelo, NroIntEquip, VelocPerm
    std::vector<std::string> Chamadas;
    std::int32_t PerguntasDoNome = 0;
    std::int32_t FalhaNoNome = 0; // which question for the name raises
    std::string FalhaEm;          // the operation that raises
    std::function<void(const std::string &)> AoChamar;
    Ref<IztList> Lista;

    std::string Modulo() override
    {
        if (++PerguntasDoNome == FalhaNoNome) {
            throw Falha(51, "Modulo", "Falha de teste");
        }
        return Nome;
    }
    void Localizar(const Ref<clsListaParametros> &parametros) override
    {
        Anota("Localizar", Texto(parametros));
        Lista->Limpa(false);
        TabelaTexto linhas(4);
        for (const auto &achado : Achados) {
            const std::int32_t linha = linhas.AdicionaLinha();
            for (std::int32_t coluna = 1; coluna <= 4; ++coluna) {
                linhas.Celula(coluna, linha) = achado.at(static_cast<std::size_t>(coluna - 1));
            }
        }
        Lista->CarregaItens(linhas);
        Lista->DefineItemAtual(Lista->NroItens());
    }
    void LimpaPesquisa() override
    {
        Anota("LimpaPesquisa", "");
        Lista->Limpa(std::nullopt);
    }
    bool ExigeCampo(const std::string &nome) override
    {
        Anota("ExigeCampo", nome);
        return false;
    }
    std::string GetValorCampo(const std::string &nome) override
    {
        Anota("GetValorCampo", nome);
        return Valores[nome];
    }
    void SetValorCampo(const std::string &nome, const std::string &valor) override
    {
        Anota("SetValorCampo", nome + "=" + valor);
    }
    void CarregaJanela(const Ref<clsListaParametros> &) override { Anota("CarregaJanela", ""); }

    std::int32_t Conta(const std::string &chamada) const
    {
        return static_cast<std::int32_t>(std::ranges::count(Chamadas, chamada));
    }

  private:
    void Anota(const std::string &operacao, const std::string &argumentos)
    {
        Chamadas.push_back(operacao + "(" + argumentos + ")");
        if (AoChamar) {
            AoChamar(Chamadas.back());
        }
        if (FalhaEm == operacao) {
            throw Falha(51, operacao, "Falha de teste");
        }
    }
};

const TabelaColunas ColunasTeste{{}, {"Código", 1200}, {"Modelo", 1800}, {"NroIntEquip", 0}, {"VelocPerm", 0}};

class frmListaTeste : public JanelaTeste {
  protected:
    void TearDown() override
    {
        fecha.desliga();
        modulo = nullptr;
        form = nullptr;
        JanelaTeste::TearDown();
    }

    // A new window of the module.
    void CriaForm()
    {
        form = Novo<FormQueAnota<frmLista>>();
        LigaModulo();
    }
    // The module is told the list when the window is loaded.
    void LigaModulo()
    {
        RefFraca<ModuloFalso> fraca = modulo;
        carregado = form->FormCarregado.liga([fraca](Ref<IztList> lista) { fraca->Lista = lista; });
    }
    bool Carrega(const Ref<clsListaParametros> &parametros, bool modal)
    {
        return form->CarregaForm(modulo, ColunasTeste, "Equipamentos", parametros, modal);
    }
    // The window from the menu, with a person in front of it and nothing said yet.
    Pessoa AbreDoMenu()
    {
        CriaForm();
        EXPECT_FALSE(Carrega(nullptr, false));
        modulo->Chamadas.clear();
        host->LimpaRegistro();
        return NaJanela();
    }
    // The window that selects, with what the person does in it.
    template <class Roteiro> bool Seleciona(Roteiro roteiro, const Ref<clsListaParametros> &parametros)
    {
        CriaForm();
        host->AoMostrarModal("frmLista", roteiro);
        return Carrega(parametros, true);
    }
    template <class Roteiro> bool Seleciona(Roteiro roteiro) { return Seleciona(roteiro, Parametros({})); }

    static Ref<clsListaParametros> Parametros(const Pares &pares)
    {
        auto parametros = Novo<clsListaParametros>();
        for (const auto &[nome, valor] : pares) {
            parametros->Add(nome, valor);
        }
        return parametros;
    }
    // The person sets criteria: chooses in a combo, types into the field, checks the box.
    static void Poe(Pessoa &pessoa, const Pares &criterios)
    {
        for (const auto &[nome, texto] : criterios) {
            EXPECT_TRUE(nome.starts_with("cbo")   ? pessoa.Escolhe(nome, texto)
                        : nome.starts_with("txt") ? pessoa.Preenche(nome, texto)
                                                  : pessoa.Marca(nome))
                << nome;
        }
    }
    static Textos Itens(const Pessoa &pessoa, const std::string &combo)
    {
        Textos itens;
        for (const ztCombo::Item &item : pessoa.Acha<ztCombo>(combo)->Itens()) {
            itens.push_back(item.Valor);
        }
        return itens;
    }
    // What the window shows of the criteria: type, criterion, code, which is in parentheses when it is hidden.
    static std::string Criterios(const Pessoa &pessoa)
    {
        const std::string codigo = pessoa.Acha<ztMask>("txtCodEquip")->Text();
        return pessoa.Acha<ztCombo>("cboTipoEquipto")->Texto() + "|" + pessoa.Acha<ztCombo>("cboCriterio")->Texto() +
               "|" + (pessoa.Acha("txtCodEquip")->Visible() ? codigo : "(" + codigo + ")");
    }

    const std::vector<std::string> UmaLinha{"RAD-01", "M1", "101", "60"};
    Ref<ModuloFalso> modulo = Novo<ModuloFalso>();
    Ref<FormQueAnota<frmLista>> form;
    Conexao carregado;
    Conexao fecha;
};

// Of a control what the window writes.
std::string OQueAJanelaMuda(const Ref<IControle> &controle)
{
    if (controle->Nome() == "ztlLista") {
        const auto lista = ComoTipo<ztList>(controle);
        return "ztlLista" +
               (lista->Ajustes().BarraCriteriosAtiva ? ", criterios de altura " + CStr(lista->BarraCriteriosAltura())
                                                     : "") +
               (lista->Ajustes().BotoesFecharAjuda ? ", fechar e ajuda" : "") +
               (lista->JanelaExibida() ? ", exibida" : "");
    }
    const bool botao = controle->Nome() == "fraDados" && ComoTipo<ztFrame>(controle)->ComoBotao();
    return controle->Nome() + (controle->Visible() ? "" : ", oculto") + (controle->Enabled() ? "" : ", desabilitado") +
           (controle->Rotulo().empty() ? "" : ", " + controle->Rotulo()) + (botao ? ", como botao" : "") +
           (controle->Left() + controle->Top() == 0 ? ""
                                                    : ", em " + CStr(controle->Left()) + " " + CStr(controle->Top())) +
           ", tab " + CStr(controle->TabIndex());
}

// The calls of the host, and in between those of the module and what changed on the window. What the opening sets is
// set otherwise before.
TEST_F(frmListaTeste, Window_OpenedSearchedAndClosed_GoesInThisOrder)
{
    bool anota = false;
    const auto titulo = [&](const std::string &texto) {
        host->Nota(texto);
        anota = true;
    };
    const auto estraga = [&](const std::function<void(const Pessoa &)> &muda) {
        anota = false;
        muda(NaJanela());
        anota = true;
    };
    const auto abre = [&](bool deNovo, const std::function<void(const Pessoa &)> &aoCarregar) {
        if (!deNovo) {
            CriaForm();
        }
        carregado = form->FormCarregado.liga([&, aoCarregar](Ref<IztList> lista) {
            modulo->Lista = lista;
            host->Nota("  FormCarregado");
            estraga(aoCarregar);
        });
        form->AoAlterar = [&](const Ref<IControle> &controle) {
            const std::string linha = "  " + OQueAJanelaMuda(controle);
            if (anota && host->Registro().back() != linha) { // a combo changes with each item
                host->Nota(linha);
            }
        };
    };
    const auto notaForm = [&] {
        return form->Mudou().liga([&] {
            host->Nota("  " + form->Caption() + ", icone " + form->Icone() + (form->Visible() ? ", visivel" : ""));
        });
    };
    modulo->AoChamar = [&](const std::string &chamada) { host->Nota("  modulo." + chamada); };

    titulo("Do menu");
    modulo->Valores["TrabFoto"] = "1";
    abre(false, [](const Pessoa &p) {
        p.Acha("fraDados", 0)->DefineLeft(7);
        p.Acha("fraDados", 0)->DefineTop(7);
        p.Acha("fraDados", 0)->DefineHeight(2000);
        p.Acha<ztCombo>("cboCriterio")->DefineIndiceAtual(2);
        ListaDe(p)->BarraCriteriosAtiva(false);
    });
    Conexao mudou = notaForm();
    EXPECT_FALSE(Carrega(nullptr, false));
    EXPECT_TRUE(host->Tela->EstaAberto(form));
    EXPECT_TRUE(form->Parametros().Nada());
    for (const char *criterio : {"Código", "Subcódigo", "Todos"}) {
        titulo(criterio);
        Pessoa pessoa = NaJanela();
        Poe(pessoa, {{"cboCriterio", criterio}});
    }
    titulo("Fecha");
    EXPECT_TRUE(NaJanela().Fecha());

    titulo("De novo, com linhas e uma busca");
    abre(true, [](const Pessoa &p) {
        TabelaTexto linhas(4);
        linhas.AdicionaLinha();
        ListaDe(p)->CarregaItens(linhas);
    });
    EXPECT_FALSE(Carrega(Parametros({}), false));
    EXPECT_TRUE(NaJanela().Fecha());

    titulo("De outro modulo");
    modulo->Nome = "Veículos";
    abre(false, [](const Pessoa &) {});
    mudou = notaForm();
    EXPECT_FALSE(Carrega(nullptr, false));
    EXPECT_TRUE(NaJanela().Fecha());

    titulo("Para selecionar");
    modulo->Nome = "Equipamentos";
    modulo->Achados = {UmaLinha};
    modulo->Valores = {{"TrabFoto", "2"}, {"DtInfracao", "01/02/2026"}};
    abre(false, [](const Pessoa &) {});
    mudou = notaForm();
    host->AoMostrarModal("frmLista", [&](Pessoa &pessoa) {
        titulo("Redimensiona");
        estraga([](const Pessoa &p) {
            ListaDe(p)->DefineLeft(15);
            ListaDe(p)->DefineTop(20);
            ListaDe(p)->DefineHeight(4000);
            p.Acha("cmdOK")->DefineHeight(400);
            p.Acha("cmdOK")->DefineWidth(1300);
        });
        form->Redimensionada();
        titulo("OK");
        EXPECT_TRUE(pessoa.Clica("cmdOK"));
    });
    EXPECT_TRUE(Carrega(Parametros({{"TipoEquip", "P"}, {"Criterio", "1"}, {"CodEquip", "rad 'x' é"}}), true));
    EXPECT_FALSE(host->Tela->EstaAberto(form));
    EXPECT_TRUE(ArquivoIgual(host->Registro(), "tests/search/dados/frmLista.ordem.txt"));
}

TEST_F(frmListaTeste, Desenho_OfTheForm_IsAsInItsPortraitAndNamesEveryField)
{
    EXPECT_EQ(SemNomeAcessivel(frmLista().Desenho()), std::vector<std::string>{});
    EXPECT_TRUE(DesenhoIgual(frmLista().Desenho(), "tests/search/dados/frmLista.desenho.txt"));
}

TEST_F(frmListaTeste, Controles_OfAFormJustLoaded_AreAsInItsPortrait)
{
    EXPECT_TRUE(RetratoIgual(SoCarregada<frmLista>(), "tests/search/dados"));
}

TEST_F(frmListaTeste, CarregaForm_BeforeTheFormCarregadoEvent_GivesTheListItsColumns)
{
    CriaForm();
    std::int32_t vezes = 0;
    carregado = form->FormCarregado.liga([&](Ref<IztList> lista) {
        ++vezes;
        modulo->Lista = lista;
        const auto &colunas = ComoTipo<ztList>(lista)->Colunas();
        ASSERT_EQ(colunas.size(), 4U);
        EXPECT_EQ(colunas[0].Titulo, "Código");
        EXPECT_EQ(colunas[0].Largura, 1200);
        EXPECT_EQ(colunas[3].Titulo, "VelocPerm");
        EXPECT_FALSE(colunas[3].Visivel);
        EXPECT_EQ(modulo->Chamadas, Textos{});
    });
    Carrega(nullptr, false);
    EXPECT_EQ(vezes, 1);
}

TEST_F(frmListaTeste, CarregaForm_WithoutAnIconOfThatName_OpensWithoutIcon)
{
    for (bool falha : {false, true}) { // or with icons that cannot be read
        host->Tela->Icones.clear();
        if (falha) {
            host->FalhaEm("Plataforma.TemIcone");
        }
        AbreDoMenu();
        EXPECT_EQ(host->FalhasDisparadas(), falha ? 1 : 0);
        EXPECT_EQ(form->Icone(), "");
        EXPECT_TRUE(form->Visible());
        EXPECT_TRUE(NaJanela().Fecha());
    }
    EXPECT_EQ(host->ErrosNovos(), Textos{});
}

TEST_F(frmListaTeste, AtualizaFrame_OutsidePhotoWorkMode_PresetsClientOneAndFillsTheCombosForIt)
{
    for (const std::string valor : {"2", "", "01", "True"}) {
        modulo->Valores["TrabFoto"] = valor;
        host->LimpaRegistro();
        CriaForm();
        Carrega(nullptr, false);
        const Pessoa pessoa = NaJanela();
        EXPECT_EQ(pessoa.Acha<ztClienteSetor>("ztCliente")->CodCliente(), 1) << valor;
        EXPECT_EQ(host->RegistroDe({"goDadosVor.Preenche", "goDadosVor.ObtemOrgao"}),
                  (Textos{"goDadosVor.PreencheTipoAgente(cboTipoAgente, False, True, True)",
                          "goDadosVor.PreencheTipoEquip(cboTipoEquipto, 0, False, True, True)",
                          "goDadosVor.PreencheTipoEquip(cboTipoEquipto, 0, False, True, True)"}));
        EXPECT_EQ(pessoa.Acha<ztCombo>("cboTipoAgente")->Valor(), "0");
        EXPECT_EQ(Criterios(pessoa), "Todos|Todos|()");
        EXPECT_EQ(pessoa.Acha<CheckBox>("chkInativos")->Value(), 0);
        host->Tela->FechaTudo();
    }
}

// Rows in the list before the criteria are set up can only be there when the form is opened once more; they go when the
// criteria were ready before.
TEST_F(frmListaTeste, AtivaFrame_OfAFormOpenedOnceMoreWithRows_ThrowsThemAwayWhenItWasReadyBefore)
{
    CriaForm();
    carregado = form->FormCarregado.liga([this](Ref<IztList> lista) {
        modulo->Lista = lista;
        TabelaTexto linhas(4);
        linhas.AdicionaLinha();
        lista->CarregaItens(linhas);
    });
    host->FalhaEm("goDadosVor.PreencheTipoAgente");
    EXPECT_TRUE(Lanca(51, "*frmLista.AtualizaFrame < frmLista.CarregaForm", [&] { Carrega(nullptr, false); }));
    for (const char *primeira : {"GetValorCampo(TrabFoto)", "LimpaPesquisa()"}) {
        modulo->Chamadas.clear();
        Carrega(nullptr, false);
        EXPECT_EQ(modulo->Chamadas.front(), primeira);
        EXPECT_TRUE(NaJanela().Fecha());
    }
}

TEST_F(frmListaTeste, CarregaForm_OfAnotherModule_OpensABareListWithoutCriteria)
{
    modulo->Nome = "Veículos";
    CriaForm();
    Carrega(nullptr, false);
    Pessoa pessoa = NaJanela();
    EXPECT_FALSE(pessoa.Acha("fraDados", 0)->Visible());
    EXPECT_FALSE(ListaDe(pessoa)->Ajustes().BarraCriteriosAtiva);
    EXPECT_EQ(ListaDe(pessoa)->BarraCriteriosAltura(), 1500);
    EXPECT_NE(pessoa.Acha("ztCliente")->TabIndex(), 0);
    EXPECT_EQ(host->Conta("goDadosVor."), 0);
    EXPECT_EQ(modulo->Chamadas, Textos{});
    EXPECT_FALSE(pessoa.Localiza("ztlLista"));
    form->Localiza();
    EXPECT_EQ(modulo->Chamadas, Textos{"Localizar()"});
}

TEST_F(frmListaTeste, cboCriterio_Chosen_ShowsTheFieldForItWithTheFocus)
{
    Pessoa pessoa = AbreDoMenu();
    const Ref<IControle> campo = pessoa.Acha("txtCodEquip");
    EXPECT_EQ(campo->Rotulo(), "Código:");
    for (const char *criterio : {"Código", "Subcódigo"}) {
        Poe(pessoa, {{"cboCriterio", criterio}});
        EXPECT_EQ(campo->Rotulo(), criterio);
        EXPECT_TRUE(campo->Visible());
        EXPECT_EQ(form->ControleAtivo(), campo);
    }
    Poe(pessoa, {{"cboCriterio", "Todos"}});
    EXPECT_FALSE(campo->Visible());
    EXPECT_EQ(modulo->Chamadas, Textos(3, "LimpaPesquisa()"));
    Poe(pessoa, {{"cboCriterio", "Código"}});
    pessoa.Acha<IztCombo>("cboCriterio")->DefineValor(""); // none of them: the field stays
    EXPECT_TRUE(campo->Visible());
    EXPECT_EQ(campo->Rotulo(), "Código");
    EXPECT_EQ(modulo->Chamadas, Textos(5, "LimpaPesquisa()"));
    EXPECT_EQ(host->Registro(), Textos{});
}

TEST_F(frmListaTeste, Criteria_ChangedByThePerson_ThrowTheResultAway)
{
    modulo->Achados = {UmaLinha};
    Pessoa pessoa = AbreDoMenu();
    const std::vector<std::function<bool()>> mudancas{
        [&] { return pessoa.EscolheCliente("ztCliente", "Autoridade das Estradas de Rodagem", "NORTE"); },
        [&] { return pessoa.Escolhe("cboTipoAgente", "Estático"); },
        [&] { return pessoa.Escolhe("cboTipoEquipto", "Pardal Móvel"); },
        [&] { return pessoa.Clica("chkInativos"); },
        [&] { return pessoa.Escolhe("cboCriterio", "Código"); },
        [&] { return pessoa.Digita("txtCodEquip", "R"); },
        [&] { return pessoa.Clica("chkInativos"); },
    };
    for (std::size_t i = 0; i < mudancas.size(); ++i) {
        form->Localiza();
        ASSERT_EQ(ListaDe(pessoa)->NroItens(), 1) << i;
        ListaDe(pessoa)->DefineTitulo("Autoridade das Estradas de Rodagem");
        EXPECT_TRUE(mudancas[i]()) << i << ": " << pessoa.Motivo();
        EXPECT_EQ(ListaDe(pessoa)->NroItens(), 0) << i;
        EXPECT_EQ(ListaDe(pessoa)->Titulo(), "") << i;
    }
}

TEST_F(frmListaTeste, Criteria_ChosenAgainAsTheyAre_KeepTheResult)
{
    modulo->Achados = {UmaLinha};
    Pessoa pessoa = AbreDoMenu();
    form->Localiza();
    EXPECT_TRUE(pessoa.Escolhe("cboCriterio", "Todos"));
    EXPECT_TRUE(pessoa.Escolhe("cboTipoAgente", "Todos"));
    EXPECT_TRUE(pessoa.EscolheCliente("ztCliente", "PREFEITURA", ""));
    EXPECT_EQ(ListaDe(pessoa)->NroItens(), 1);
    EXPECT_EQ(modulo->Conta("LimpaPesquisa()"), 0);
}

TEST_F(frmListaTeste, cboTipoAgente_Chosen_FillsTheEquipmentTypesOfIt)
{
    modulo->Valores["TrabFoto"] = "1";
    Pessoa pessoa = AbreDoMenu();
    EXPECT_TRUE(pessoa.Escolhe("cboTipoAgente", "Estático"));
    EXPECT_EQ(host->Registro(), Textos{"goDadosVor.PreencheTipoEquip(cboTipoEquipto, 2, True, True, True)"});
    EXPECT_EQ(Itens(pessoa, "cboTipoEquipto"), (Textos{"T", "M", "R"}));
    EXPECT_EQ(modulo->Conta("LimpaPesquisa()"), 2); // of the types that are chosen anew, and of the choice itself
}

TEST_F(frmListaTeste, Criteria_OfAModuleThatFails_ReportUnderTheNameOfTheEvent)
{
    Pessoa pessoa = AbreDoMenu();
    pessoa.Escolhe("cboCriterio", "Código");
    modulo->FalhaEm = "LimpaPesquisa";
    pessoa.Escolhe("cboCriterio", "Subcódigo");
    EXPECT_EQ(pessoa.Acha("txtCodEquip")->Rotulo(), "Subcódigo"); // the result goes only after that
    pessoa.Escolhe("cboTipoEquipto", "Pardal");
    pessoa.Clica("chkInativos");
    pessoa.Digita("txtCodEquip", "R");
    pessoa.EscolheCliente("ztCliente", "Autoridade das Estradas de Rodagem", "");
    EXPECT_EQ(
        host->ErrosNovos(),
        (Textos{"frmLista.cboCriterio_Click: 51 (LimpaPesquisa)", "frmLista.cboTipoEquipto_Click: 51 (LimpaPesquisa)",
                "frmLista.chkInativos_Click: 51 (LimpaPesquisa)", "frmLista.txtCodEquip_Change: 51 (LimpaPesquisa)",
                "frmLista.ztCliente_Change: 51 (LimpaPesquisa)"}));
    host->FalhaEm("goDadosVor.PreencheTipoEquip");
    pessoa.Escolhe("cboTipoAgente", "Fixo");
    EXPECT_EQ(host->ErrosNovos(), Textos{"frmLista.cboTipoAgente_Click: 51 (goDadosVor.PreencheTipoEquip)"});
    EXPECT_TRUE(host->Tela->EstaAberto(form));
    EXPECT_EQ(host->Tela->Ponteiro(), 0);
}

TEST_F(frmListaTeste, cboTipoAgente_WithAValueThatIsNoNumber_ReportsTheConversion)
{
    Pessoa pessoa = AbreDoMenu();
    pessoa.Acha<ztCombo>("cboTipoAgente")->AdicionaItem("Torto|x");
    pessoa.Acha<ztCombo>("cboTipoAgente")->AdicionaItem("Grande|40000");
    pessoa.Escolhe("cboTipoAgente", "Torto");
    pessoa.Escolhe("cboTipoAgente", "Grande");
    EXPECT_EQ(host->ErrosNovos(), (Textos{"frmLista.cboTipoAgente_Click: 13 (ZTAVOREQUIP)",
                                          "frmLista.cboTipoAgente_Click: 6 (ZTAVOREQUIP)"}));
    EXPECT_EQ(host->Conta("goDadosVor.PreencheTipoEquip"), 0);
}

TEST_F(frmListaTeste, BotaoLocalizar_WithoutAClient_IsCancelledByThePickerAlone)
{
    host->Clientes.clear();
    Pessoa pessoa = AbreDoMenu();
    Poe(pessoa, {{"cboCriterio", "Código"}});
    pessoa.Localiza("ztlLista");
    EXPECT_EQ(host->AvisosNovos(), Textos{"Informe o cliente!"});
    EXPECT_EQ(host->Conta("goMensagem.ExibeMensagem"), 0);
    EXPECT_EQ(modulo->Chamadas, Textos{"LimpaPesquisa()"});
}

// Also when it cannot be said.
TEST_F(frmListaTeste, BotaoLocalizar_WithoutTheCodeThatTheCriterionNeeds_AsksForItAndSearchesNothing)
{
    Pessoa pessoa = AbreDoMenu();
    for (const std::string criterio : {"Código", "Subcódigo"}) {
        Poe(pessoa, {{"cboCriterio", criterio}});
        pessoa.Foco("chkInativos");
        modulo->Chamadas.clear();
        pessoa.Localiza("ztlLista");
        EXPECT_EQ(host->AvisosNovos(), Textos{"Informe o " + criterio + " do Equipamento!"});
        EXPECT_EQ(host->Avisos().back().Controle, "txtCodEquip");
        EXPECT_EQ(form->ControleAtivo(), pessoa.Acha("txtCodEquip"));
        host->FalhaEm("goMensagem.ExibeMensagem");
        pessoa.Localiza("ztlLista");
        EXPECT_EQ(host->ErrosNovos(), Textos{"frmLista.ztlLista_BotaoLocalizarValida: 51 (goMensagem.ExibeMensagem)"});
        EXPECT_EQ(modulo->Chamadas, Textos{});
    }
}

TEST_F(frmListaTeste, BotaoLocalizar_ByEachCriterion_SendsTheCriteriaInTheirOrder)
{
    struct {
        Pares Criterios;
        std::string Enviados;
    } const casos[] = {
        {{{"cboCriterio", "Código"}, {"txtCodEquip", "RAD-01"}, {"cboCriterio", "Todos"}},
         "Cliente=PREFEITURA; Setor=; TipoAgente=0; TipoEquip=T; Criterio=0; Ativo=1"},
        {{{"cboCriterio", "Subcódigo"}, {"txtCodEquip", "S1"}},
         "Cliente=PREFEITURA; Setor=; TipoAgente=0; TipoEquip=T; Criterio=2; SubCodEquip=S1; Ativo=1"},
        {{{"cboCriterio", "Código"}, {"txtCodEquip", " "}}, // blanks are a code
         "Cliente=PREFEITURA; Setor=; TipoAgente=0; TipoEquip=T; Criterio=1; CodEquip= ; Ativo=1"},
        {{{"cboTipoAgente", "Fixo"},
          {"cboTipoEquipto", "Lombada"},
          {"cboCriterio", "Código"},
          {"txtCodEquip", "d'Ávila 7._"},
          {"chkInativos", ""}},
         "Cliente=PREFEITURA; Setor=; TipoAgente=1; TipoEquip=L; Criterio=1; CodEquip=d'Ávila 7._; Ativo=2"},
    };
    Pessoa pessoa = AbreDoMenu();
    const auto localiza = [&](const std::string &enviados) {
        modulo->Chamadas.clear();
        EXPECT_TRUE(pessoa.Localiza("ztlLista"));
        EXPECT_EQ(modulo->Chamadas, Textos{"Localizar(" + enviados + ")"});
    };
    for (const auto &caso : casos) {
        Poe(pessoa, caso.Criterios);
        localiza(caso.Enviados);
    }
    EXPECT_TRUE(pessoa.EscolheCliente("ztCliente", "Autoridade das Estradas de Rodagem", "NORTE"));
    localiza("Cliente=Autoridade das Estradas de Rodagem; Setor=NORTE; TipoAgente=1; TipoEquip=L; Criterio=1; "
             "CodEquip=d'Ávila 7._; Ativo=2");
    EXPECT_EQ(host->AvisosNovos(), Textos{});
}

TEST_F(frmListaTeste, BotaoLocalizar_OfAModuleThatFails_ReportsAndLeavesTheWindow)
{
    Pessoa pessoa = AbreDoMenu();
    modulo->FalhaEm = "Localizar";
    pessoa.Localiza("ztlLista");
    EXPECT_EQ(host->ErrosNovos(), Textos{"frmLista.ztlLista_BotaoLocalizarEnvia: 51 (Localizar)"});
    modulo->FalhaNoNome = modulo->PerguntasDoNome + 1;
    modulo->FalhaEm.clear();
    EXPECT_TRUE(pessoa.Localiza("ztlLista"));
    EXPECT_EQ(host->ErrosNovos(), Textos{"frmLista.ztlLista_BotaoLocalizarValida: 51 (Modulo)"});
    EXPECT_TRUE(host->Tela->EstaAberto(form));
}

TEST_F(frmListaTeste, LocalizacaoAutomatica_OfEachParameter_PutsItOnTheWindowAndSearchesButSelectsNothing)
{
    struct {
        Pares Dados;
        std::string NaTela;
        std::string Localizada; // how the criteria end
    } const casos[] = {
        {{{"TrabFoto", "2"}, {"DtInfracao", "01/02/2026"}, {"CodEquip", "RAD-01"}},
         "Todos|Todos|()",
         "TipoEquip=T; Criterio=0; Ativo=1"},
        {{{"TipoEquip", "P"}, {"Criterio", "1"}, {"CodEquip", "rad 'x' é"}},
         "Pardal|Código|rad 'x' é",
         "TipoEquip=P; Criterio=1; CodEquip=rad 'x' é; Ativo=1"},
        {{{"TipoEquip", "X"}}, "|Todos|()", "TipoEquip=; Criterio=0; Ativo=1"}, // not offered
    };
    modulo->Achados = {UmaLinha};
    for (const auto &caso : casos) {
        SCOPED_TRACE(caso.NaTela);
        modulo->Chamadas.clear();
        EXPECT_FALSE(Seleciona(
            [&](Pessoa &pessoa) {
                EXPECT_EQ(Criterios(pessoa), caso.NaTela);
                EXPECT_EQ(ListaDe(pessoa)->NroItens(), 1);
                EXPECT_TRUE(pessoa.Acha("cmdOK")->Enabled());
                EXPECT_TRUE(form->Parametros().Nada());
                EXPECT_TRUE(pessoa.Clica("cmdCancelar"));
            },
            Parametros(caso.Dados)));
        EXPECT_TRUE(form->Parametros().Nada());
        std::erase(modulo->Chamadas, "LimpaPesquisa()");
        EXPECT_EQ(modulo->Chamadas,
                  (Textos{"GetValorCampo(TrabFoto)",
                          "Localizar(Cliente=PREFEITURA; Setor=; TipoAgente=0; " + caso.Localizada + ")"}));
    }
    EXPECT_EQ(host->Conta("EquiptoRN."), 0);
}

TEST_F(frmListaTeste, LocalizacaoAutomatica_ThatTheCriteriaRefuse_OpensWithoutSearching)
{
    Seleciona(
        [&](Pessoa &pessoa) {
            EXPECT_EQ(Criterios(pessoa), "Todos|Subcódigo|");
            EXPECT_FALSE(pessoa.Clica("cmdOK"));
            pessoa.Clica("cmdCancelar");
        },
        Parametros({{"Criterio", "2"}, {"CodEquip", "X"}}));
    EXPECT_EQ(host->AvisosNovos(), Textos{"Informe o Subcódigo do Equipamento!"});
    for (const std::string &chamada : modulo->Chamadas) {
        EXPECT_FALSE(chamada.starts_with("Localizar(")) << chamada;
    }
}

TEST_F(frmListaTeste, LocalizacaoAutomatica_WithCriterioAndNoCode_FaultsAndDoesNotOpen)
{
    CriaForm();
    EXPECT_TRUE(Lanca(5, "ZTAVOREQUIP < frmLista.LocalizacaoAutomatica < frmLista.CarregaForm", [&] {
        Carrega(Parametros({{"Criterio", "1"}}), true);
    }));
    EXPECT_FALSE(host->Tela->EstaAberto(form));
    EXPECT_FALSE(host->Contem("ObjInterface.MostraJanela"));
}

TEST_F(frmListaTeste, LocalizacaoAutomatica_FromTheMenu_SearchesToo)
{
    modulo->Achados = {UmaLinha};
    CriaForm();
    EXPECT_FALSE(Carrega(Parametros({{"TipoEquip", "L"}}), false));
    EXPECT_EQ(ListaDe(NaJanela())->NroItens(), 1);
    EXPECT_FALSE(NaJanela().Acha("cmdOK")->Enabled());
}

TEST_F(frmListaTeste, LocalizacaoAutomatica_OfAnotherModule_ReadsNoParameterAndSearches)
{
    modulo->Nome = "Veículos";
    Seleciona([&](Pessoa &pessoa) { pessoa.Clica("cmdCancelar"); }, Parametros({{"Criterio", "1"}}));
    EXPECT_EQ(modulo->Chamadas, Textos{"Localizar()"});
}

// The text of no date is a date as well; without one no calibration is asked for.
TEST_F(frmListaTeste, cmdOK_OfTheSelectedRow_AnswersWithItAndItsCalibration)
{
    modulo->Achados = {UmaLinha, {"PAR-02", "M2", "102", "80"}};
    const std::string linha = "NroIntEquip=101; CodEquip=RAD-01; Modelo=M1; VelocPerm=60";
    for (const std::string data : {"01/02/2026", "00:00:00", ""}) {
        modulo->Valores["DtInfracao"] = data;
        host->LimpaRegistro();
        EXPECT_TRUE(Seleciona([&](Pessoa &pessoa) {
            EXPECT_TRUE(pessoa.ClicaLinha("ztlLista", 1));
            EXPECT_TRUE(pessoa.Clica("cmdOK"));
            EXPECT_FALSE(form->Visible());
        }));
        EXPECT_EQ(Texto(form->Parametros()),
                  data.empty() ? linha : linha + "; NroInmetro=INM-77; MarcaInmetro=ACME; DtVerifInmetro=05/03/2026");
        EXPECT_EQ(Enviados("consultaSimplesAfericaoVigente"),
                  data.empty()
                      ? Textos{}
                      : Textos{"ConsultaAfericaoED{DtInfracao=" + data + ", NroIntEquip=101, TipoConsulta=1}"});
        EXPECT_FALSE(host->Tela->EstaAberto(form));
    }
}

TEST_F(frmListaTeste, cmdOK_WithoutACurrentRow_SaysSoAndStays)
{
    modulo->Achados = {UmaLinha};
    EXPECT_FALSE(Seleciona([&](Pessoa &pessoa) {
        EXPECT_TRUE(pessoa.Clica("chkInativos"));
        EXPECT_TRUE(pessoa.Acha("cmdOK")->Enabled());
        EXPECT_TRUE(pessoa.Clica("cmdOK"));
        EXPECT_EQ(host->AvisosNovos(), Textos{"Nenhum item selecionado!"});
        EXPECT_EQ(host->Avisos().back().Controle, "");
        EXPECT_TRUE(form->Visible());
        EXPECT_TRUE(form->Parametros().Nada());
        modulo->Achados.clear();
        EXPECT_TRUE(pessoa.Localiza("ztlLista"));
        EXPECT_FALSE(pessoa.Acha("cmdOK")->Enabled());
        pessoa.Clica("cmdCancelar");
    }));
}

TEST_F(frmListaTeste, cmdOK_OfASearchWithoutRows_StaysDisabledWhileCancelWorks)
{
    EXPECT_FALSE(Seleciona([&](Pessoa &pessoa) {
        EXPECT_FALSE(pessoa.Acha("cmdOK")->Enabled());
        EXPECT_FALSE(pessoa.Clica("cmdOK"));
        EXPECT_TRUE(pessoa.Clica("cmdCancelar"));
    }));
    EXPECT_TRUE(form->Parametros().Nada());
    EXPECT_EQ(host->AvisosNovos(), Textos{});
}

TEST_F(frmListaTeste, cmdOK_OfARowWithoutCalibration_SaysSoAndAnotherRowCanBeChosen)
{
    modulo->Achados = {UmaLinha, {"PAR-02", "M2", "102", "80"}};
    modulo->Valores["DtInfracao"] = "01/02/2026";
    Vigente = Afericao(0, "", "", {});
    EXPECT_TRUE(Seleciona([&](Pessoa &pessoa) {
        EXPECT_TRUE(pessoa.Clica("cmdOK"));
        EXPECT_EQ(host->AvisosNovos(), Textos{"Equipamento não possui Aferição Vigente para a data de Infração."});
        EXPECT_EQ(host->Avisos().back().Controle, "");
        ASSERT_FALSE(form->Parametros().Nada());
        EXPECT_EQ(form->Parametros()->Count(), 0);
        EXPECT_TRUE(form->Visible());
        Vigente = Afericao(9002, "N", "M", {});
        EXPECT_TRUE(pessoa.ClicaLinha("ztlLista", 1));
        EXPECT_TRUE(pessoa.Clica("cmdOK"));
    }));
    EXPECT_EQ(Texto(form->Parametros()), "NroIntEquip=101; CodEquip=RAD-01; Modelo=M1; VelocPerm=60; NroInmetro=N; "
                                         "MarcaInmetro=M; DtVerifInmetro=00:00:00");
}

TEST_F(frmListaTeste, cmdOK_OfAnotherModule_RefusesWithItsNameBeforeItReadsTheRow)
{
    modulo->Nome = "Veículos";
    modulo->Achados = {{"RAD-01", "M1", "nenhum", "60"}};
    EXPECT_FALSE(Seleciona([&](Pessoa &pessoa) {
        EXPECT_TRUE(pessoa.Clica("cmdOK"));
        EXPECT_EQ(host->AvisosNovos(), Textos{"Seleção não prevista para o módulo 'Veículos'"});
        EXPECT_EQ(form->Parametros()->Count(), 0);
        EXPECT_TRUE(form->Visible());
        pessoa.Clica("cmdCancelar");
    }));
    EXPECT_EQ(modulo->Conta("GetValorCampo(DtInfracao)"), 0);
}

TEST_F(frmListaTeste, cmdOK_WhoseCalibrationCannotBeHad_ReportsThePathAndStays)
{
    modulo->Achados = {UmaLinha};
    modulo->Valores["DtInfracao"] = "01/02/2026";
    host->RecusaOperacao("consultaSimplesAfericaoVigente", "Sem permissão");
    EXPECT_TRUE(Seleciona([&](Pessoa &pessoa) {
        pessoa.Clica("cmdOK");
        EXPECT_EQ(host->ErrosNovos(), Textos{"frmLista.cmdOK_Click: 91 (ZTAVOREQUIP)"}); // the record is missing
        EXPECT_TRUE(host->Contem("EquiptoRN.MostraErro() -> \"Sem permissão\""));
        host->FalhaEm("EquiptoRN.ExecutaMetodo");
        pessoa.Clica("cmdOK");
        EXPECT_EQ(host->ErrosNovos(), Textos{"frmLista.cmdOK_Click: 51 (EquiptoRN.ExecutaMetodo < "
                                             "ModGeral.gFunConsultaAfericaoVigente)"});
        EXPECT_TRUE(form->Visible());
        EXPECT_TRUE(pessoa.Clica("cmdOK"));
    }));
    EXPECT_EQ(form->Parametros()->Count(), 7);
}

// A calibration with a date that has no text.
class AfericaoSemTexto : public AfericaoED {
  public:
    AfericaoSemTexto()
    {
        NroIntAfericao = 9001.0;
        DataVerificacao = Data{1e9};
    }
    std::string Texto() const override { return {}; }
};

TEST_F(frmListaTeste, cmdOK_WithRowsOrDatesThatCannotBeRead_ReportsTheConversionAndSelectsNothing)
{
    modulo->Achados = {{"A", "M", "3000000000", "60"}, {"B", "M", "", "60"}, {"C", "M", "103", "60"}};
    EXPECT_FALSE(Seleciona([&](Pessoa &pessoa) {
        const auto recusa = [&](std::int32_t linha, std::int32_t numero) {
            EXPECT_TRUE(pessoa.ClicaLinha("ztlLista", linha));
            EXPECT_TRUE(pessoa.Clica("cmdOK"));
            EXPECT_EQ(host->ErrosNovos(), Textos{"frmLista.cmdOK_Click: " + CStr(numero) + " (ZTAVOREQUIP)"});
            EXPECT_TRUE(form->Visible());
        };
        recusa(1, 6);
        recusa(2, 13);
        EXPECT_EQ(modulo->Conta("GetValorCampo(DtInfracao)"), 0); // only after the number was read
        modulo->Valores["DtInfracao"] = "31/02/2026";
        recusa(3, 13);
        EXPECT_EQ(host->Conta("EquiptoRN."), 0);
        EXPECT_EQ(form->Parametros()->Count(), 0);
        modulo->Valores["DtInfracao"] = "01/02/2026";
        Vigente = Novo<AfericaoSemTexto>();
        recusa(3, 6);
        pessoa.Clica("cmdCancelar");
    }));
}

TEST_F(frmListaTeste, cmdOK_ThatCannotCloseTheWindow_IsASelectionAllTheSame)
{
    modulo->Achados = {UmaLinha};
    host->FalhaEm("Plataforma.Descarrega");
    EXPECT_TRUE(Seleciona([&](Pessoa &pessoa) {
        pessoa.Clica("cmdOK");
        EXPECT_EQ(host->ErrosNovos(), Textos{"frmLista.cmdOK_Click: 51 (Plataforma.Descarrega)"});
        EXPECT_TRUE(form->Visible());
        pessoa.Clica("cmdCancelar");
    }));
    EXPECT_EQ(Texto(form->Parametros()), "NroIntEquip=101; CodEquip=RAD-01; Modelo=M1; VelocPerm=60");
}

TEST_F(frmListaTeste, CarregaForm_CancelledAfterASelectionInTheSameForm_AnswersNothing)
{
    modulo->Achados = {UmaLinha};
    EXPECT_TRUE(Seleciona([](Pessoa &pessoa) { pessoa.Clica("cmdOK"); }));
    host->AoMostrarModal("frmLista", [](Pessoa &pessoa) { pessoa.Clica("cmdCancelar"); });
    EXPECT_FALSE(Carrega(Parametros({}), true));
}

TEST_F(frmListaTeste, cmdCancelar_ThatCannotCloseTheWindow_Reports)
{
    host->FalhaEm("Plataforma.Descarrega");
    EXPECT_FALSE(Seleciona([&](Pessoa &pessoa) {
        pessoa.Clica("cmdCancelar");
        EXPECT_EQ(host->ErrosNovos(), Textos{"frmLista.cmdCancelar_Click: 51 (Plataforma.Descarrega)"});
        EXPECT_TRUE(pessoa.Fecha()); // by the window's own button
    }));
    EXPECT_TRUE(form->Parametros().Nada());
}

TEST_F(frmListaTeste, Form_Resize_WhenAControlFails_ReportsUnderItsName)
{
    Seleciona([&](Pessoa &pessoa) {
        const Ref<IControle> ok = pessoa.Acha("cmdOK");
        {
            const Conexao falha = ComoBase(ok)->Mudou().liga([] { throw Falha(51); });
            ListaDe(pessoa)->DefineLeft(15);
            form->Redimensionada();
        }
        EXPECT_EQ(host->ErrosNovos(), Textos{"frmLista.Form_Resize: 51 (ZTAVOREQUIP)"});
        EXPECT_TRUE(form->Visible());
        pessoa.Clica("cmdCancelar");
    });
}

TEST_F(frmListaTeste, Form_Resize_OfAWindowFromTheMenu_MovesNothing)
{
    Pessoa pessoa = AbreDoMenu();
    ListaDe(pessoa)->DefineHeight(3000);
    const std::int32_t topo = pessoa.Acha("cmdOK")->Top();
    form->Redimensionada();
    EXPECT_EQ(pessoa.Acha("cmdOK")->Top(), topo);
}

TEST_F(frmListaTeste, SetaTitulo_OfAWrappedWindow_WritesBothTextsAndNotTheCaption)
{
    host->Tela->EmbrulhaForms = true;
    AbreDoMenu();
    form->SetaTitulo("Equipamentos de Autoridade das Estradas de Rodagem");
    EXPECT_EQ(
        host->Registro(),
        (Textos{
            "Plataforma.DefineTextoJanela(frmLista, \"Equipamentos de Autoridade das Estradas de Rodagem\")",
            "Plataforma.DefineTextoJanela(frmHospedeiro, \"Equipamentos de Autoridade das Estradas de Rodagem\")"}));
    EXPECT_EQ(form->Caption(), "Equipamentos");
}

TEST_F(frmListaTeste, Localiza_OfTheModule_SendsTheCriteriaWithoutValidatingThem)
{
    Pessoa pessoa = AbreDoMenu();
    pessoa.Escolhe("cboCriterio", "Código");
    modulo->Chamadas.clear();
    form->Localiza();
    EXPECT_EQ(modulo->Chamadas, Textos{"Localizar(Cliente=PREFEITURA; Setor=; TipoAgente=0; TipoEquip=T; Criterio=1; "
                                       "CodEquip=; Ativo=1)"});
    EXPECT_EQ(host->AvisosNovos(), Textos{});
}

// The events of the window, by name.
struct Eventos {
    explicit Eventos(frmLista &form)
    {
        ligacoes.push_back(form.AntesFechar.liga([this](bool &) { Texto += "AntesFechar "; }));
        ligacoes.push_back(form.HabilitaMenu.liga([this] { Texto += "HabilitaMenu "; }));
        ligacoes.push_back(form.FormAtivado.liga([this] { Texto += "FormAtivado "; }));
        ligacoes.push_back(form.FormDesativado.liga([this] { Texto += "FormDesativado "; }));
    }
    std::string Texto;
    std::vector<Conexao> ligacoes;
};

TEST_F(frmListaTeste, Events_OfAWindow_AreRaisedOnceItIsOpenAndOfOneThatSelectsOnlyThatOfLeavingIt)
{
    CriaForm();
    Eventos eventos(*form);
    Carrega(nullptr, false);
    EXPECT_EQ(eventos.Texto, ""); // it was activated while it was being opened
    form->Desativada();
    form->Ativada();
    EXPECT_TRUE(NaJanela().Fecha());
    EXPECT_EQ(eventos.Texto, "FormDesativado FormAtivado AntesFechar ");

    CriaForm();
    Eventos daSelecao(*form);
    host->AoMostrarModal("frmLista", [&](Pessoa &pessoa) {
        form->Desativada();
        form->Ativada();
        pessoa.Clica("cmdCancelar");
    });
    Carrega(Parametros({}), true);
    EXPECT_EQ(daSelecao.Texto, "FormDesativado ");
}

TEST_F(frmListaTeste, Events_WhoseHandlerFails_AreReported)
{
    AbreDoMenu();
    auto ativado = form->FormAtivado.liga([] { throw Falha(51, "ativado", "Falha de teste"); });
    auto desativado = form->FormDesativado.liga([] { throw Falha(51, "desativado", "Falha de teste"); });
    form->Desativada();
    form->Ativada();
    EXPECT_EQ(host->ErrosNovos(),
              (Textos{"frmLista.Form_Deactivate: 51 (desativado)", "frmLista.Form_Activate: 51 (ativado)"}));
}

TEST_F(frmListaTeste, AntesFechar_Cancelled_KeepsTheWindowAndItsModule)
{
    Pessoa pessoa = AbreDoMenu();
    bool cancela = true;
    fecha = form->AntesFechar.liga([&](bool &flag) { flag = cancela; });
    EXPECT_FALSE(pessoa.Fecha());
    EXPECT_TRUE(host->Tela->EstaAberto(form));
    form->Localiza();
    EXPECT_EQ(modulo->Chamadas.size(), 1U);
    cancela = false;
    EXPECT_TRUE(pessoa.Fecha());
    EXPECT_FALSE(host->Tela->EstaAberto(form));
}

TEST_F(frmListaTeste, AntesFechar_WhoseHandlerFails_IsIgnored)
{
    Pessoa pessoa = AbreDoMenu();
    fecha = form->AntesFechar.liga([](bool &) { throw Falha(51, "x", "Falha de teste"); });
    EXPECT_TRUE(pessoa.Fecha());
    EXPECT_EQ(host->ErrosNovos(), Textos{});
}

TEST_F(frmListaTeste, Unload_OfEachMode_DropsTheModule)
{
    RefFraca<ModuloFalso> fraca = modulo;
    Pessoa pessoa = AbreDoMenu();
    modulo = nullptr;
    EXPECT_FALSE(fraca.Nada());
    pessoa.Fecha();
    EXPECT_TRUE(fraca.Nada());

    modulo = Novo<ModuloFalso>();
    fraca = modulo;
    Seleciona([&](Pessoa &p) {
        modulo = nullptr;
        EXPECT_FALSE(fraca.Nada());
        p.Clica("cmdCancelar");
    });
    EXPECT_TRUE(fraca.Nada());
}

TEST_F(frmListaTeste, Localizar_DuringWhichTheHostClosesTheWindow_EndsWithoutTouchingAnythingDead)
{
    class ModuloQueFecha : public ModuloFalso {
      public:
        Ref<PlataformaRoteirizada> Tela;
        void Localizar(const Ref<clsListaParametros> &parametros) override
        {
            Tela->FechaTudo();
            Chamadas.push_back("fechou");
            EXPECT_EQ(parametros->Count(), 6);
        }
    };
    auto fecha = Novo<ModuloQueFecha>();
    fecha->Tela = host->Tela;
    modulo = fecha;
    RefFraca<ModuloFalso> fraca = modulo;
    Pessoa pessoa = AbreDoMenu();
    modulo = nullptr;
    form = nullptr;
    fecha = nullptr;
    pessoa.Localiza("ztlLista");
    EXPECT_TRUE(fraca.Nada());
    EXPECT_EQ(host->Tela->NroForms(), 0);
    EXPECT_EQ(host->ErrosNovos(), Textos{});
}

// The message queue runs once before the window is shown and once after it.
TEST_F(frmListaTeste, CarregaForm_ClosedByTheHostWhileItOpens_EndsQuietlyAndDropsTheModule)
{
    for (const bool antesDeMostrar : {true, false}) {
        RefFraca<ModuloFalso> fraca = modulo;
        CriaForm();
        Eventos eventos(*form);
        RefFraca<frmLista> janela = form;
        const auto fecharia = [&] {
            host->Tela->Posta([this, janela] { host->Tela->FechaPelaPessoa(janela.Alvo()); });
        };
        Conexao mudou;
        if (antesDeMostrar) {
            fecharia();
        } else {
            mudou = form->Mudou().liga([&] {
                if (form->Visible()) {
                    mudou.desliga();
                    fecharia();
                }
            });
        }
        EXPECT_FALSE(Carrega(nullptr, false));
        modulo = nullptr;
        EXPECT_TRUE(fraca.Nada()) << antesDeMostrar;
        EXPECT_EQ(eventos.Texto, "");
        if (!antesDeMostrar) {
            EXPECT_EQ(host->Tela->NroForms(), 0);
        }
        EXPECT_EQ(host->ErrosNovos(), Textos{});
        host->Tela->FechaTudo();
        modulo = Novo<ModuloFalso>();
    }
}

// The name is asked for in AtivaFrame, then in AtualizaTabIndex, then in AtualizaFrame.
TEST_F(frmListaTeste, CarregaForm_OfAModuleThatFails_TellsThePathAndLeavesNoWindow)
{
    std::int32_t pergunta = 0;
    for (const std::string caminho :
         {"frmLista.AtivaFrame < frmLista.AtualizaFrame",
          "frmLista.AtualizaTabIndex < frmLista.AtivaFrame < frmLista.AtualizaFrame", "frmLista.AtualizaFrame"}) {
        modulo = Novo<ModuloFalso>();
        modulo->FalhaNoNome = ++pergunta;
        RefFraca<ModuloFalso> fraca = modulo;
        CriaForm();
        EXPECT_TRUE(Lanca(51, "Modulo < " + caminho + " < frmLista.CarregaForm", "Falha de teste",
                          [&] { Carrega(nullptr, false); }));
        EXPECT_EQ(host->Tela->NroForms(), 0);
        modulo = nullptr;
        EXPECT_TRUE(fraca.Nada());
        EXPECT_EQ(host->ErrosNovos(), Textos{});
    }
}

TEST_F(frmListaTeste, CarregaForm_OfAHostThatFails_TellsThePathLetsGoOfTheModuleAndCanBeTriedAgain)
{
    for (const std::string caminho : {"Plataforma.Carrega", "goDadosVor.PreencheTipoAgente < frmLista.AtualizaFrame",
                                      "ObjInterface.MostraJanela < Geral.FormShow"}) {
        SCOPED_TRACE(caminho);
        RefFraca<ModuloFalso> fraca = modulo;
        CriaForm();
        host->FalhaEm(caminho.substr(0, caminho.find(' ')));
        EXPECT_TRUE(Lanca(51, caminho + " < frmLista.CarregaForm", [&] { Carrega(nullptr, false); }));
        EXPECT_EQ(host->Tela->NroForms(), 0);
        modulo = nullptr;
        EXPECT_TRUE(fraca.Nada());
        modulo = Novo<ModuloFalso>();
        LigaModulo();
        EXPECT_FALSE(Carrega(nullptr, false));
        EXPECT_TRUE(form->Visible());
        host->Tela->FechaTudo();
    }
}

} // namespace
