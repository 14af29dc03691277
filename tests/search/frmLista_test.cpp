#include "search/frmLista.h"

#include "controls/CheckBox.h"
#include "controls/ztClienteSetor.h"
#include "controls/ztCombo.h"
#include "controls/ztFrame.h"
#include "controls/ztMask.h"
#include "tests/search/JanelaTeste.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/NomesAcessiveis.h"
#include "tests/support/RetratoDesenho.h"
#include "tests/support/RetratoForm.h"

#include <map>

namespace {

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
    bool Localizou = false;
    std::function<void()> AoLocalizar;
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
        std::string texto;
        for (std::int32_t i = 1; i <= parametros->Count(); ++i) {
            texto += (i > 1 ? "; " : "") + parametros->Item(i)->Nome + "=" + parametros->Item(i)->Valor;
        }
        Anota("Localizar", texto);
        if (AoLocalizar) {
            AoLocalizar();
        }
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
        Localizou = true;
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

    // A new window of the module, told to the module when it is loaded.
    void CriaForm()
    {
        form = Novo<frmLista>();
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

    static Ref<clsListaParametros> Parametros(const std::vector<std::pair<std::string, std::string>> &pares)
    {
        auto parametros = Novo<clsListaParametros>();
        for (const auto &[nome, valor] : pares) {
            parametros->Add(nome, valor);
        }
        return parametros;
    }
    static std::string Texto(const Ref<clsListaParametros> &parametros)
    {
        std::string texto;
        for (std::int32_t i = 1; i <= parametros->Count(); ++i) {
            texto += (i > 1 ? "; " : "") + parametros->Item(i)->Nome + "=" + parametros->Item(i)->Valor;
        }
        return texto;
    }

    Ref<ModuloFalso> modulo = Novo<ModuloFalso>();
    Ref<frmLista> form;
    Conexao carregado;
    Conexao fecha;
};

TEST_F(frmListaTeste, CarregaForm_FromTheMenu_ShowsTheWindowAndReturnsAtOnce)
{
    modulo->Valores["TrabFoto"] = "1";
    CriaForm();
    EXPECT_FALSE(Carrega(nullptr, false));
    EXPECT_TRUE(host->Tela->EstaAberto(form));
    EXPECT_TRUE(form->Visible());
    EXPECT_TRUE(RegistroIgual(host->Registro(), {
                                                    "Plataforma.Carrega(frmLista)",
                                                    "Host.CriaDadosVor()",
                                                    "goDadosVor.Inicializa(ObjInterface)",
                                                    "goDadosVor.ObtemOrgao()",
                                                    "Orgao.CodCliente -> 2",
                                                    "ztCliente.CodCliente := 2",
                                                    "goDadosVor.PreencheTipoAgente(cboTipoAgente, True, True, True)",
                                                    "goDadosVor.PreencheTipoEquip(cboTipoEquipto, 0, True, True, True)",
                                                    "goDadosVor.PreencheTipoEquip(cboTipoEquipto, 0, True, True, True)",
                                                    "FormMDI.FecharEnviaRecebe(True)",
                                                    "Plataforma.Ponteiro := 0",
                                                    "Plataforma.ProcessaMensagens()",
                                                    "ObjInterface.MostraJanela(frmLista, modal=False)",
                                                    "Plataforma.ProcessaMensagens()",
                                                    "cGlobal.gsubSetaAutoModuloAtivo(\"ZTAVOREQUIP\")",
                                                }));
    Pessoa pessoa = NaJanela();
    EXPECT_FALSE(pessoa.Acha("cmdOK")->Visible());
    EXPECT_FALSE(pessoa.Acha("cmdCancelar")->Visible());
    EXPECT_TRUE(ListaDe(pessoa)->Ajustes().BotoesFecharAjuda);
    EXPECT_TRUE(ListaDe(pessoa)->JanelaExibida());
    EXPECT_EQ(form->Caption(), "Equipamentos");
    EXPECT_EQ(form->Icone(), "Equipamentos");
    EXPECT_TRUE(form->Parametros().Nada());
    EXPECT_EQ(modulo->Chamadas.front(), "GetValorCampo(TrabFoto)");
    EXPECT_EQ(modulo->Conta("LimpaPesquisa()"), static_cast<std::int32_t>(modulo->Chamadas.size()) - 1);
}

TEST_F(frmListaTeste, CarregaForm_FromTheMenu_HidesTheButtonsBeforeTheShowAndTellsTheListBeforeTheQueueRuns)
{
    CriaForm();
    bool mostrada = false;
    bool rodou = false;
    Conexao mudou = form->Mudou().liga([&] {
        if (!form->Visible() || mostrada) {
            return;
        }
        mostrada = true;
        Pessoa pessoa = NaJanela();
        EXPECT_FALSE(pessoa.Acha("cmdOK")->Visible());
        EXPECT_FALSE(pessoa.Acha("cmdCancelar")->Visible());
        EXPECT_TRUE(ListaDe(pessoa)->Ajustes().BotoesFecharAjuda);
        EXPECT_FALSE(ListaDe(pessoa)->JanelaExibida());
        host->Tela->Posta([&] {
            rodou = true;
            EXPECT_TRUE(ListaDe(NaJanela())->JanelaExibida());
        });
    });
    Carrega(nullptr, false);
    EXPECT_TRUE(mostrada);
    EXPECT_TRUE(rodou);
}

TEST_F(frmListaTeste, CarregaForm_ToSelect_ShowsTheWindowModallyWithItsOwnButtons)
{
    bool visto = false;
    EXPECT_FALSE(Seleciona([&](Pessoa &pessoa) {
        visto = true;
        EXPECT_TRUE(pessoa.Acha("cmdOK")->Visible());
        EXPECT_TRUE(pessoa.Acha("cmdCancelar")->Visible());
        EXPECT_FALSE(ListaDe(pessoa)->Ajustes().BotoesFecharAjuda);
        EXPECT_FALSE(ListaDe(pessoa)->JanelaExibida());
        EXPECT_TRUE(pessoa.Clica("cmdCancelar"));
    }));
    EXPECT_TRUE(visto);
    EXPECT_TRUE(host->Contem("ObjInterface.MostraJanela(frmLista, modal=True)"));
    EXPECT_EQ(host->Conta("Plataforma.ProcessaMensagens()"), 1);
    EXPECT_FALSE(host->Tela->EstaAberto(form));
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

TEST_F(frmListaTeste, CarregaForm_FromTheMenu_OffersTheThreeCriteria)
{
    const Pessoa pessoa = AbreDoMenu();
    Textos criterios;
    for (const ztCombo::Item &item : pessoa.Acha<ztCombo>("cboCriterio")->Itens()) {
        criterios.push_back(item.Texto + "=" + item.Valor);
    }
    EXPECT_EQ(criterios, (Textos{"Todos=0", "Código=1", "Subcódigo=2"}));
}

// Each row of the criteria fills the four columns of their grid, labels included, and no piece has a place of its own.
TEST_F(frmListaTeste, Desenho_OfTheCriteria_FillsEachRowOfTheirGrid)
{
    const Desenho desenho = frmLista().Desenho();
    const Peca &lista = desenho.Raiz.Pecas.at(0);
    ASSERT_EQ(lista.Pecas.size(), 1U);
    const Peca &criterios = lista.Pecas[0];
    EXPECT_EQ(criterios.Nome, "fraDados");
    EXPECT_EQ(criterios.Disposicao, Arranjo::Grade);
    ASSERT_EQ(criterios.Pecas.size(), 4U);
    for (const Peca &linha : criterios.Pecas) {
        int colunas = 0;
        for (const Peca &peca : linha.Pecas) {
            colunas += peca.Vao + (peca.Rotulo.empty() ? 0 : 1);
            EXPECT_EQ(peca.Left + peca.Top + peca.Width + peca.Height, 0) << peca.Nome;
        }
        EXPECT_EQ(colunas, 4) << linha.Pecas[0].Nome;
    }
    EXPECT_GE(desenho.Altura, lista.Height);
}

TEST_F(frmListaTeste, CarregaForm_BeforeTheFormCarregadoEvent_StoresTheSettingsOfTheListAndItsColumns)
{
    CriaForm();
    std::int32_t vezes = 0;
    carregado = form->FormCarregado.liga([&](Ref<IztList> lista) {
        ++vezes;
        modulo->Lista = lista;
        const auto grade = ComoTipo<ztList>(lista);
        ASSERT_EQ(grade->Colunas().size(), 4U);
        EXPECT_EQ(grade->Colunas()[0].Titulo, "Código");
        EXPECT_EQ(grade->Colunas()[0].Largura, 1200);
        EXPECT_EQ(grade->Colunas()[3].Titulo, "VelocPerm");
        EXPECT_FALSE(grade->Colunas()[3].Visivel);
        EXPECT_EQ(grade->Ajustes().BarraCriteriosAltura, 1500);
        EXPECT_TRUE(grade->Ajustes().BarraCriteriosAtiva);
        EXPECT_FALSE(grade->Ajustes().BotoesFecharAjuda);
        EXPECT_EQ(form->Icone(), "Equipamentos");
        EXPECT_NE(form->Caption(), "Equipamentos");
        EXPECT_EQ(modulo->Chamadas, Textos{});
    });
    Carrega(nullptr, false);
    EXPECT_EQ(vezes, 1);
}

TEST_F(frmListaTeste, CarregaForm_WithoutAnIconOfThatName_OpensWithoutIcon)
{
    host->Tela->Icones.clear();
    AbreDoMenu();
    EXPECT_EQ(form->Icone(), "");
}

TEST_F(frmListaTeste, CarregaForm_WithIconsThatCannotBeRead_IgnoresThat)
{
    host->FalhaEm("Plataforma.TemIcone");
    AbreDoMenu();
    EXPECT_EQ(host->FalhasDisparadas(), 1);
    EXPECT_EQ(form->Icone(), "");
    EXPECT_TRUE(form->Visible());
    EXPECT_EQ(Erros(), Textos{});
}

TEST_F(frmListaTeste, AtualizaFrame_InPhotoWorkMode_PresetsTheClientOfTheAuthority)
{
    modulo->Valores["TrabFoto"] = "1";
    CriaForm();
    Carrega(nullptr, false);
    EXPECT_EQ(NaJanela().Acha<ztClienteSetor>("ztCliente")->CodCliente(), 2);
    EXPECT_EQ(modulo->Conta("GetValorCampo(TrabFoto)"), 1);
}

TEST_F(frmListaTeste, AtualizaFrame_OutsidePhotoWorkMode_PresetsClientOneAndDoesNotAskForTheAuthority)
{
    for (const std::string valor : {"2", "", "01", "True"}) {
        modulo->Valores["TrabFoto"] = valor;
        CriaForm();
        Carrega(nullptr, false);
        EXPECT_EQ(NaJanela().Acha<ztClienteSetor>("ztCliente")->CodCliente(), 1) << valor;
        host->Tela->FechaTudo();
    }
    EXPECT_EQ(host->Conta("goDadosVor.PreencheTipoAgente(cboTipoAgente, False, True, True)"), 4);
    EXPECT_EQ(host->Conta("goDadosVor.ObtemOrgao"), 0);
}

TEST_F(frmListaTeste, AtualizaFrame_OutsidePhotoWorkMode_FillsTheCombosForItAndStartsWithTodos)
{
    CriaForm();
    Carrega(nullptr, false);
    EXPECT_EQ(host->RegistroDe({"goDadosVor.Preenche"}),
              (Textos{"goDadosVor.PreencheTipoAgente(cboTipoAgente, False, True, True)",
                      "goDadosVor.PreencheTipoEquip(cboTipoEquipto, 0, False, True, True)",
                      "goDadosVor.PreencheTipoEquip(cboTipoEquipto, 0, False, True, True)"}));
    Pessoa pessoa = NaJanela();
    EXPECT_EQ(pessoa.Acha<ztCombo>("cboTipoAgente")->Valor(), "0");
    EXPECT_EQ(pessoa.Acha<ztCombo>("cboTipoEquipto")->Valor(), "T");
    EXPECT_EQ(pessoa.Acha<ztCombo>("cboCriterio")->Valor(), "0");
    EXPECT_FALSE(pessoa.Acha("txtCodEquip")->Visible());
    EXPECT_EQ(pessoa.Acha<CheckBox>("chkInativos")->Value(), 0);
}

TEST_F(frmListaTeste, AtivaFrame_OfEquipamentos_FitsTheCriteriaBarToItsFrame)
{
    Pessoa pessoa = AbreDoMenu();
    const Ref<IControle> frame = pessoa.Acha("fraDados", 0);
    EXPECT_TRUE(frame->Visible());
    EXPECT_TRUE(ListaDe(pessoa)->Ajustes().BarraCriteriosAtiva);
    EXPECT_EQ(ListaDe(pessoa)->BarraCriteriosAltura(), frame->Height() + 90);
    EXPECT_EQ(frame->Left(), 45);
    EXPECT_EQ(frame->Top(), 45);
    EXPECT_EQ(pessoa.Acha("ztCliente")->TabIndex(), 0);
    EXPECT_EQ(pessoa.Acha("cboTipoAgente")->TabIndex(), 1);
    EXPECT_EQ(pessoa.Acha("cboTipoEquipto")->TabIndex(), 2);
    EXPECT_EQ(pessoa.Acha("cboCriterio")->TabIndex(), 3);
    EXPECT_EQ(pessoa.Acha("txtCodEquip")->TabIndex(), 4);
    EXPECT_EQ(pessoa.Acha("chkInativos")->TabIndex(), 5);
}

TEST_F(frmListaTeste, AtivaFrame_FrameThatStandsElsewhere_IsPutInItsPlaceInABarMadeForIt)
{
    CriaForm();
    carregado = form->FormCarregado.liga([this](Ref<IztList> lista) {
        modulo->Lista = lista;
        const Ref<IControle> frame = NaJanela().Acha("fraDados", 0);
        frame->DefineLeft(7);
        frame->DefineTop(7);
        frame->DefineHeight(2000);
        lista->BarraCriteriosAtiva(false);
    });
    Carrega(nullptr, false);
    const Ref<IControle> frame = NaJanela().Acha("fraDados", 0);
    EXPECT_TRUE(ListaDe(NaJanela())->Ajustes().BarraCriteriosAtiva);
    EXPECT_EQ(modulo->Lista->BarraCriteriosAltura(), 2090);
    EXPECT_EQ(frame->Left(), 45);
    EXPECT_EQ(frame->Top(), 45);
}

TEST_F(frmListaTeste, CarregaForm_WithParameters_SetsTheCaptionThenTheFrameThenSearchesThenTheButtons)
{
    CriaForm();
    bool enchendo = false;
    host->ObservaChamadas([&] {
        if (!enchendo && modulo->Lista) { // the first thing that the criteria ask of the host
            enchendo = true;
            EXPECT_EQ(form->Caption(), "Equipamentos");
            EXPECT_TRUE(NaJanela().Acha("fraDados", 0)->Visible());
            EXPECT_FALSE(modulo->Localizou);
        }
    });
    modulo->AoLocalizar = [&] {
        EXPECT_TRUE(enchendo);
        EXPECT_EQ(NaJanela().Acha<ztCombo>("cboTipoEquipto")->Valor(), "T");
        EXPECT_TRUE(NaJanela().Acha("cmdOK")->Visible());
        EXPECT_FALSE(ListaDe(NaJanela())->Ajustes().BotoesFecharAjuda);
    };
    Carrega(Parametros({}), false);
    host->ObservaChamadas(nullptr);
    EXPECT_TRUE(modulo->Localizou);
    EXPECT_FALSE(NaJanela().Acha("cmdOK")->Visible());
}

// Rows in the list before the criteria are set up can only be there when the form is opened once more.
TEST_F(frmListaTeste, AtivaFrame_OfAFormOpenedOnceMoreWithRows_ThrowsThemAwayFirst)
{
    CriaForm();
    carregado = form->FormCarregado.liga([this](Ref<IztList> lista) {
        modulo->Lista = lista;
        TabelaTexto linhas(4);
        linhas.AdicionaLinha();
        lista->CarregaItens(linhas);
    });
    Carrega(nullptr, false);
    EXPECT_EQ(modulo->Chamadas.front(), "GetValorCampo(TrabFoto)");
    EXPECT_TRUE(NaJanela().Fecha());
    modulo->Chamadas.clear();
    Carrega(nullptr, false);
    ASSERT_GE(modulo->Chamadas.size(), 2U);
    EXPECT_EQ(modulo->Chamadas[0], "LimpaPesquisa()");
    EXPECT_EQ(modulo->Chamadas[1], "GetValorCampo(TrabFoto)");
    EXPECT_TRUE(NaJanela().Fecha());
    carregado.desliga();
    carregado = form->FormCarregado.liga([this](Ref<IztList> lista) { modulo->Lista = lista; });
    modulo->Chamadas.clear();
    Carrega(nullptr, false);
    EXPECT_EQ(modulo->Chamadas.front(), "GetValorCampo(TrabFoto)");
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
    EXPECT_EQ(host->Conta("goDadosVor."), 0);
    EXPECT_EQ(modulo->Chamadas, Textos{});
    EXPECT_FALSE(pessoa.Localiza("ztlLista"));
    form->Localiza();
    EXPECT_EQ(modulo->Chamadas, Textos{"Localizar()"});
}

TEST_F(frmListaTeste, CarregaForm_OfAnyModule_PaintsTheFramesOfCriteriaAsButtons)
{
    const Pessoa pessoa = AbreDoMenu();
    EXPECT_TRUE(pessoa.Acha<ztFrame>("fraDados", 0)->ComoBotao());
    EXPECT_TRUE(pessoa.Acha("fraDados", 0)->Visible());
}

TEST_F(frmListaTeste, cboCriterio_ChosenAsCode_ShowsTheFieldForItWithTheFocus)
{
    Pessoa pessoa = AbreDoMenu();
    EXPECT_EQ(pessoa.Acha("txtCodEquip")->Rotulo(), "Código:");
    EXPECT_TRUE(pessoa.Escolhe("cboCriterio", "Código"));
    EXPECT_EQ(pessoa.Acha("txtCodEquip")->Rotulo(), "Código");
    EXPECT_TRUE(pessoa.Acha("txtCodEquip")->Visible());
    EXPECT_EQ(form->ControleAtivo(), pessoa.Acha("txtCodEquip"));
    EXPECT_TRUE(pessoa.Escolhe("cboCriterio", "Subcódigo"));
    EXPECT_EQ(pessoa.Acha("txtCodEquip")->Rotulo(), "Subcódigo");
    EXPECT_TRUE(pessoa.Acha("txtCodEquip")->Visible());
    EXPECT_EQ(form->ControleAtivo(), pessoa.Acha("txtCodEquip"));
    EXPECT_TRUE(pessoa.Escolhe("cboCriterio", "Todos"));
    EXPECT_FALSE(pessoa.Acha("txtCodEquip")->Visible());
    EXPECT_EQ(modulo->Chamadas, (Textos{"LimpaPesquisa()", "LimpaPesquisa()", "LimpaPesquisa()"}));
    EXPECT_EQ(host->Registro(), Textos{});
}

TEST_F(frmListaTeste, Criteria_ChangedByThePerson_ThrowTheResultAway)
{
    modulo->Achados = {{"RAD-01", "M1", "101", "60"}};
    Pessoa pessoa = AbreDoMenu();
    const std::vector<std::function<bool()>> mudancas{
        [&] { return pessoa.EscolheCliente("ztCliente", "DAER", "NORTE"); },
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
        ListaDe(pessoa)->DefineTitulo("DAER");
        EXPECT_TRUE(mudancas[i]()) << i << ": " << pessoa.Motivo();
        EXPECT_EQ(ListaDe(pessoa)->NroItens(), 0) << i;
        EXPECT_EQ(ListaDe(pessoa)->Titulo(), "") << i;
    }
}

TEST_F(frmListaTeste, Criteria_ChosenAgainAsTheyAre_KeepTheResult)
{
    modulo->Achados = {{"RAD-01", "M1", "101", "60"}};
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
    Textos tipos;
    for (const ztCombo::Item &item : pessoa.Acha<ztCombo>("cboTipoEquipto")->Itens()) {
        tipos.push_back(item.Valor);
    }
    EXPECT_EQ(tipos, (Textos{"T", "M", "R"}));
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
    pessoa.EscolheCliente("ztCliente", "DAER", "");
    EXPECT_EQ(
        Erros(),
        (Textos{"frmLista.cboCriterio_Click: 51 (LimpaPesquisa)", "frmLista.cboTipoEquipto_Click: 51 (LimpaPesquisa)",
                "frmLista.chkInativos_Click: 51 (LimpaPesquisa)", "frmLista.txtCodEquip_Change: 51 (LimpaPesquisa)",
                "frmLista.ztCliente_Change: 51 (LimpaPesquisa)"}));
    host->FalhaEm("goDadosVor.PreencheTipoEquip");
    pessoa.Escolhe("cboTipoAgente", "Fixo");
    EXPECT_EQ(Erros(), Textos{"frmLista.cboTipoAgente_Click: 51 (goDadosVor.PreencheTipoEquip)"});
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
    EXPECT_EQ(Erros(), (Textos{"frmLista.cboTipoAgente_Click: 13 (ZTAVOREQUIP)",
                               "frmLista.cboTipoAgente_Click: 6 (ZTAVOREQUIP)"}));
    EXPECT_EQ(host->Conta("goDadosVor.PreencheTipoEquip"), 0);
}

TEST_F(frmListaTeste, BotaoLocalizar_WithoutAClient_IsCancelledByThePickerAlone)
{
    host->Clientes.clear();
    Pessoa pessoa = AbreDoMenu();
    pessoa.Escolhe("cboCriterio", "Código");
    pessoa.Localiza("ztlLista");
    EXPECT_EQ(Avisos(), Textos{"Informe o cliente!"});
    EXPECT_EQ(host->Conta("goMensagem.ExibeMensagem"), 0);
    EXPECT_EQ(modulo->Chamadas, Textos{"LimpaPesquisa()"});
}

TEST_F(frmListaTeste, BotaoLocalizar_ByCodeWithoutCode_AsksForIt)
{
    Pessoa pessoa = AbreDoMenu();
    pessoa.Escolhe("cboCriterio", "Código");
    pessoa.Foco("chkInativos");
    pessoa.Localiza("ztlLista");
    ASSERT_EQ(host->Avisos().size(), 1U);
    EXPECT_EQ(host->Avisos()[0].Texto, "Informe o Código do Equipamento!");
    EXPECT_EQ(host->Avisos()[0].Controle, "txtCodEquip");
    EXPECT_EQ(form->ControleAtivo(), pessoa.Acha("txtCodEquip"));
    EXPECT_EQ(modulo->Chamadas, Textos{"LimpaPesquisa()"});
}

TEST_F(frmListaTeste, BotaoLocalizar_BySubcodeWithoutSubcode_AsksForIt)
{
    Pessoa pessoa = AbreDoMenu();
    pessoa.Escolhe("cboCriterio", "Subcódigo");
    pessoa.Localiza("ztlLista");
    ASSERT_EQ(host->Avisos().size(), 1U);
    EXPECT_EQ(host->Avisos()[0].Texto, "Informe o Subcódigo do Equipamento!");
    EXPECT_EQ(host->Avisos()[0].Controle, "txtCodEquip");
    EXPECT_EQ(modulo->Chamadas, Textos{"LimpaPesquisa()"});
}

TEST_F(frmListaTeste, BotaoLocalizar_OnTodos_NeedsAndSendsNoCode)
{
    Pessoa pessoa = AbreDoMenu();
    pessoa.Escolhe("cboCriterio", "Código");
    pessoa.Digita("txtCodEquip", "RAD-01");
    pessoa.Escolhe("cboCriterio", "Todos");
    modulo->Chamadas.clear();
    EXPECT_TRUE(pessoa.Localiza("ztlLista"));
    EXPECT_EQ(modulo->Chamadas,
              Textos{"Localizar(Cliente=PREFEITURA; Setor=; TipoAgente=0; TipoEquip=T; Criterio=0; Ativo=1)"});
    EXPECT_EQ(Avisos(), Textos{});
}

TEST_F(frmListaTeste, BotaoLocalizar_ByCode_SendsTheCriteriaInTheirOrder)
{
    modulo->Valores["TrabFoto"] = "1";
    Pessoa pessoa = AbreDoMenu();
    pessoa.EscolheCliente("ztCliente", "DAER", "NORTE");
    pessoa.Escolhe("cboTipoAgente", "Fixo");
    pessoa.Escolhe("cboTipoEquipto", "Lombada");
    pessoa.Escolhe("cboCriterio", "Código");
    pessoa.Digita("txtCodEquip", "d'Ávila 7._");
    pessoa.Marca("chkInativos");
    modulo->Chamadas.clear();
    EXPECT_TRUE(pessoa.Localiza("ztlLista"));
    EXPECT_EQ(modulo->Chamadas, Textos{"Localizar(Cliente=DAER; Setor=NORTE; TipoAgente=1; TipoEquip=L; Criterio=1; "
                                       "CodEquip=d'Ávila 7._; Ativo=2)"});
}

TEST_F(frmListaTeste, BotaoLocalizar_BySubcode_SendsItAsSuch)
{
    Pessoa pessoa = AbreDoMenu();
    pessoa.Escolhe("cboCriterio", "Subcódigo");
    pessoa.Digita("txtCodEquip", "S1");
    modulo->Chamadas.clear();
    EXPECT_TRUE(pessoa.Localiza("ztlLista"));
    EXPECT_EQ(modulo->Chamadas,
              Textos{"Localizar(Cliente=PREFEITURA; Setor=; TipoAgente=0; TipoEquip=T; Criterio=2; SubCodEquip=S1; "
                     "Ativo=1)"});
}

TEST_F(frmListaTeste, BotaoLocalizar_ByACodeOfBlanks_TakesItAsACode)
{
    Pessoa pessoa = AbreDoMenu();
    pessoa.Escolhe("cboCriterio", "Código");
    pessoa.Digita("txtCodEquip", " ");
    EXPECT_TRUE(pessoa.Localiza("ztlLista"));
    EXPECT_EQ(Avisos(), Textos{});
}

TEST_F(frmListaTeste, BotaoLocalizar_OfAModuleThatFails_ReportsAndLeavesTheWindow)
{
    Pessoa pessoa = AbreDoMenu();
    modulo->FalhaEm = "Localizar";
    pessoa.Localiza("ztlLista");
    EXPECT_EQ(Erros(), Textos{"frmLista.ztlLista_BotaoLocalizarEnvia: 51 (Localizar)"});
    modulo->FalhaNoNome = modulo->PerguntasDoNome + 1;
    modulo->FalhaEm.clear();
    EXPECT_TRUE(pessoa.Localiza("ztlLista"));
    EXPECT_EQ(Erros(), Textos{"frmLista.ztlLista_BotaoLocalizarValida: 51 (Modulo)"});
    EXPECT_TRUE(host->Tela->EstaAberto(form));
}

TEST_F(frmListaTeste, LocalizacaoAutomatica_WithoutCriterio_SearchesUnderTodosAtOnce)
{
    modulo->Achados = {{"RAD-01", "M1", "101", "60"}};
    Seleciona(
        [&](Pessoa &pessoa) {
            EXPECT_EQ(ListaDe(pessoa)->NroItens(), 1);
            EXPECT_TRUE(pessoa.Acha("cmdOK")->Enabled());
            EXPECT_TRUE(form->Parametros().Nada());
            pessoa.Clica("cmdCancelar");
        },
        Parametros({{"TrabFoto", "2"}, {"DtInfracao", "01/02/2026"}, {"CodEquip", "RAD-01"}}));
    EXPECT_EQ(modulo->Conta("Localizar(Cliente=PREFEITURA; Setor=; TipoAgente=0; TipoEquip=T; Criterio=0; Ativo=1)"),
              1);
    EXPECT_EQ(modulo->Conta("SetValorCampo(TrabFoto=2)"), 0);
}

TEST_F(frmListaTeste, LocalizacaoAutomatica_AfterTheSearch_RepaintsTheList)
{
    CriaForm();
    std::int32_t repintes = 0;
    Conexao mudou;
    carregado = form->FormCarregado.liga([&](Ref<IztList> lista) {
        modulo->Lista = lista;
        mudou = ComoTipo<ztList>(lista)->Mudou().liga([&] { repintes += modulo->Localizou ? 1 : 0; });
    });
    host->AoMostrarModal("frmLista", [](Pessoa &pessoa) { pessoa.Clica("cmdCancelar"); });
    Carrega(Parametros({}), true);
    EXPECT_EQ(repintes, 1);
}

TEST_F(frmListaTeste, LocalizacaoAutomatica_WithTypeAndCode_PutsThemOnTheWindowAndSearches)
{
    Seleciona(
        [&](Pessoa &pessoa) {
            EXPECT_EQ(pessoa.Acha<ztCombo>("cboTipoEquipto")->Texto(), "Pardal");
            EXPECT_EQ(pessoa.Acha<ztCombo>("cboCriterio")->Texto(), "Código");
            EXPECT_EQ(pessoa.Acha<ztMask>("txtCodEquip")->Text(), "rad 'x' é");
            EXPECT_TRUE(pessoa.Acha("txtCodEquip")->Visible());
            pessoa.Clica("cmdCancelar");
        },
        Parametros({{"TipoEquip", "P"}, {"Criterio", "1"}, {"CodEquip", "rad 'x' é"}}));
    EXPECT_EQ(modulo->Conta("Localizar(Cliente=PREFEITURA; Setor=; TipoAgente=0; TipoEquip=P; Criterio=1; "
                            "CodEquip=rad 'x' é; Ativo=1)"),
              1);
}

TEST_F(frmListaTeste, LocalizacaoAutomatica_WithACodeOfOneEquipment_FillsTheListAndSelectsNothing)
{
    modulo->Achados = {{"RAD-01", "M1", "101", "60"}};
    bool visto = false;
    EXPECT_FALSE(Seleciona(
        [&](Pessoa &pessoa) {
            visto = true;
            EXPECT_EQ(ListaDe(pessoa)->NroItens(), 1);
            EXPECT_TRUE(pessoa.Acha("cmdOK")->Enabled());
            EXPECT_TRUE(form->Visible());
            EXPECT_TRUE(form->Parametros().Nada());
            EXPECT_TRUE(pessoa.Clica("cmdCancelar"));
        },
        Parametros({{"Criterio", "1"}, {"CodEquip", "RAD-01"}})));
    EXPECT_TRUE(visto);
    EXPECT_TRUE(form->Parametros().Nada());
    EXPECT_EQ(modulo->Conta("GetValorCampo(DtInfracao)"), 0);
    EXPECT_EQ(host->Conta("EquiptoRN."), 0);
}

TEST_F(frmListaTeste, LocalizacaoAutomatica_ThatTheCriteriaRefuse_OpensWithoutSearching)
{
    Seleciona(
        [&](Pessoa &pessoa) {
            EXPECT_EQ(pessoa.Acha<ztCombo>("cboCriterio")->Texto(), "Subcódigo");
            EXPECT_EQ(pessoa.Acha<ztMask>("txtCodEquip")->Text(), "");
            EXPECT_FALSE(pessoa.Clica("cmdOK"));
            pessoa.Clica("cmdCancelar");
        },
        Parametros({{"Criterio", "2"}, {"CodEquip", "X"}}));
    EXPECT_EQ(Avisos(), Textos{"Informe o Subcódigo do Equipamento!"});
    for (const std::string &chamada : modulo->Chamadas) {
        EXPECT_FALSE(chamada.starts_with("Localizar(")) << chamada;
    }
}

TEST_F(frmListaTeste, LocalizacaoAutomatica_WithATypeThatIsNotOffered_SearchesWithoutOne)
{
    Seleciona([&](Pessoa &pessoa) { pessoa.Clica("cmdCancelar"); }, Parametros({{"TipoEquip", "X"}}));
    EXPECT_EQ(modulo->Conta("Localizar(Cliente=PREFEITURA; Setor=; TipoAgente=0; TipoEquip=; Criterio=0; Ativo=1)"), 1);
}

TEST_F(frmListaTeste, LocalizacaoAutomatica_WithCriterioAndNoCode_FaultsAndDoesNotOpen)
{
    CriaForm();
    const Falha falha = FalhaLancada([&] { Carrega(Parametros({{"Criterio", "1"}}), true); });
    EXPECT_EQ(falha.Numero, 5);
    EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP < frmLista.LocalizacaoAutomatica < frmLista.CarregaForm");
    EXPECT_FALSE(host->Tela->EstaAberto(form));
    EXPECT_FALSE(host->Contem("ObjInterface.MostraJanela"));
}

TEST_F(frmListaTeste, LocalizacaoAutomatica_FromTheMenu_SearchesToo)
{
    modulo->Achados = {{"RAD-01", "M1", "101", "60"}};
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

TEST_F(frmListaTeste, cmdOK_OfTheSelectedRow_AnswersWithItAndItsCalibration)
{
    modulo->Achados = {{"RAD-01", "M1", "101", "60"}, {"PAR-02", "M2", "102", "80"}};
    modulo->Valores["DtInfracao"] = "01/02/2026";
    EXPECT_TRUE(Seleciona([&](Pessoa &pessoa) {
        EXPECT_TRUE(pessoa.ClicaLinha("ztlLista", 1));
        EXPECT_TRUE(pessoa.Clica("cmdOK"));
        EXPECT_FALSE(form->Visible());
    }));
    EXPECT_EQ(Texto(form->Parametros()), "NroIntEquip=101; CodEquip=RAD-01; Modelo=M1; VelocPerm=60; "
                                         "NroInmetro=INM-77; MarcaInmetro=ACME; DtVerifInmetro=05/03/2026");
    EXPECT_EQ(Enviados("consultaSimplesAfericaoVigente"),
              Textos{"ConsultaAfericaoED{DtInfracao=01/02/2026, NroIntEquip=101, TipoConsulta=1}"});
    EXPECT_FALSE(host->Tela->EstaAberto(form));
}

TEST_F(frmListaTeste, cmdOK_WithTheTextOfNoDate_StillAsksForTheCalibration)
{
    modulo->Achados = {{"RAD-01", "M1", "101", "60"}};
    modulo->Valores["DtInfracao"] = "00:00:00";
    EXPECT_TRUE(Seleciona([&](Pessoa &pessoa) { pessoa.Clica("cmdOK"); }));
    EXPECT_EQ(Enviados("consultaSimplesAfericaoVigente"),
              Textos{"ConsultaAfericaoED{DtInfracao=00:00:00, NroIntEquip=101, TipoConsulta=1}"});
}

TEST_F(frmListaTeste, cmdOK_OfAModuleWithoutADate_AsksForNoCalibration)
{
    modulo->Achados = {{"RAD-01", "M1", "101", "60"}};
    EXPECT_TRUE(Seleciona([&](Pessoa &pessoa) { pessoa.Clica("cmdOK"); }));
    EXPECT_EQ(Texto(form->Parametros()), "NroIntEquip=101; CodEquip=RAD-01; Modelo=M1; VelocPerm=60");
    EXPECT_EQ(host->Conta("EquiptoRN."), 0);
}

TEST_F(frmListaTeste, cmdOK_WithoutACurrentRow_SaysSoAndStays)
{
    modulo->Achados = {{"RAD-01", "M1", "101", "60"}};
    EXPECT_FALSE(Seleciona([&](Pessoa &pessoa) {
        EXPECT_TRUE(pessoa.Clica("chkInativos"));
        EXPECT_TRUE(pessoa.Acha("cmdOK")->Enabled());
        EXPECT_TRUE(pessoa.Clica("cmdOK"));
        EXPECT_EQ(Avisos(), Textos{"Nenhum item selecionado!"});
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
    EXPECT_EQ(Avisos(), Textos{});
}

TEST_F(frmListaTeste, cmdOK_OfARowWithoutCalibration_SaysSoAndAnotherRowCanBeChosen)
{
    modulo->Achados = {{"RAD-01", "M1", "101", "60"}, {"PAR-02", "M2", "102", "80"}};
    modulo->Valores["DtInfracao"] = "01/02/2026";
    Vigente = Afericao(0, "", "", {});
    EXPECT_TRUE(Seleciona([&](Pessoa &pessoa) {
        EXPECT_TRUE(pessoa.Clica("cmdOK"));
        EXPECT_EQ(Avisos(), Textos{"Equipamento não possui Aferição Vigente para a data de Infração."});
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

TEST_F(frmListaTeste, cmdOK_OfARowWithoutCalibrationThenCancel_AnswersNothing)
{
    modulo->Achados = {{"RAD-01", "M1", "101", "60"}};
    modulo->Valores["DtInfracao"] = "01/02/2026";
    Vigente = Afericao(0, "", "", {});
    EXPECT_FALSE(Seleciona([&](Pessoa &pessoa) {
        pessoa.Clica("cmdOK");
        pessoa.Clica("cmdCancelar");
    }));
    EXPECT_EQ(form->Parametros()->Count(), 0);
    EXPECT_EQ(Avisos().size(), 1U);
}

TEST_F(frmListaTeste, cmdOK_OfAnotherModule_RefusesWithItsName)
{
    modulo->Nome = "Veículos";
    modulo->Achados = {{"RAD-01", "M1", "101", "60"}};
    EXPECT_FALSE(Seleciona([&](Pessoa &pessoa) {
        EXPECT_TRUE(pessoa.Clica("cmdOK"));
        EXPECT_EQ(Avisos(), Textos{"Seleção não prevista para o módulo 'Veículos'"});
        EXPECT_EQ(form->Parametros()->Count(), 0);
        EXPECT_TRUE(form->Visible());
        pessoa.Clica("cmdCancelar");
    }));
    EXPECT_EQ(modulo->Conta("GetValorCampo(DtInfracao)"), 0);
}

TEST_F(frmListaTeste, cmdOK_ThatTheServiceRefuses_ReportsTheMissingRecordAndStays)
{
    modulo->Achados = {{"RAD-01", "M1", "101", "60"}};
    modulo->Valores["DtInfracao"] = "01/02/2026";
    host->RecusaOperacao("consultaSimplesAfericaoVigente", "Sem permissão");
    EXPECT_TRUE(Seleciona([&](Pessoa &pessoa) {
        pessoa.Clica("cmdOK");
        EXPECT_EQ(Erros(), Textos{"frmLista.cmdOK_Click: 91 (ZTAVOREQUIP)"});
        EXPECT_TRUE(host->Contem("EquiptoRN.MostraErro() -> \"Sem permissão\""));
        EXPECT_TRUE(form->Visible());
        EXPECT_TRUE(pessoa.Clica("cmdOK"));
    }));
    EXPECT_EQ(form->Parametros()->Count(), 7);
}

TEST_F(frmListaTeste, cmdOK_OfAServiceThatFails_ReportsThePathAndStays)
{
    modulo->Achados = {{"RAD-01", "M1", "101", "60"}};
    modulo->Valores["DtInfracao"] = "01/02/2026";
    host->FalhaEm("EquiptoRN.ExecutaMetodo");
    EXPECT_TRUE(Seleciona([&](Pessoa &pessoa) {
        pessoa.Clica("cmdOK");
        EXPECT_EQ(Erros(), Textos{"frmLista.cmdOK_Click: 51 (EquiptoRN.ExecutaMetodo < "
                                  "ModGeral.gFunConsultaAfericaoVigente)"});
        pessoa.Clica("cmdOK");
    }));
}

TEST_F(frmListaTeste, cmdOK_WithRowsOrDatesThatCannotBeRead_ReportsTheConversion)
{
    modulo->Achados = {{"A", "M", "3000000000", "60"}, {"B", "M", "", "60"}, {"C", "M", "103", "60"}};
    modulo->Valores["DtInfracao"] = "31/02/2026";
    EXPECT_FALSE(Seleciona([&](Pessoa &pessoa) {
        for (std::int32_t linha = 1; linha <= 3; ++linha) {
            pessoa.ClicaLinha("ztlLista", linha);
            pessoa.Clica("cmdOK");
        }
        EXPECT_TRUE(form->Visible());
        pessoa.Clica("cmdCancelar");
    }));
    EXPECT_EQ(Erros(), (Textos{"frmLista.cmdOK_Click: 6 (ZTAVOREQUIP)", "frmLista.cmdOK_Click: 13 (ZTAVOREQUIP)",
                               "frmLista.cmdOK_Click: 13 (ZTAVOREQUIP)"}));
    EXPECT_EQ(host->Conta("EquiptoRN."), 0);
    EXPECT_EQ(modulo->Conta("GetValorCampo(DtInfracao)"), 1); // only after the number was read
    EXPECT_EQ(form->Parametros()->Count(), 0);
}

TEST_F(frmListaTeste, cmdOK_ThatCannotCloseTheWindow_IsASelectionAllTheSame)
{
    modulo->Achados = {{"RAD-01", "M1", "101", "60"}};
    host->FalhaEm("Plataforma.Descarrega");
    EXPECT_TRUE(Seleciona([&](Pessoa &pessoa) {
        pessoa.Clica("cmdOK");
        EXPECT_EQ(Erros(), Textos{"frmLista.cmdOK_Click: 51 (Plataforma.Descarrega)"});
        EXPECT_TRUE(form->Visible());
        pessoa.Clica("cmdCancelar");
    }));
    EXPECT_EQ(Texto(form->Parametros()), "NroIntEquip=101; CodEquip=RAD-01; Modelo=M1; VelocPerm=60");
}

TEST_F(frmListaTeste, CarregaForm_CancelledAfterASelectionInTheSameForm_AnswersNothing)
{
    modulo->Achados = {{"RAD-01", "M1", "101", "60"}};
    EXPECT_TRUE(Seleciona([](Pessoa &pessoa) { pessoa.Clica("cmdOK"); }));
    host->AoMostrarModal("frmLista", [](Pessoa &pessoa) { pessoa.Clica("cmdCancelar"); });
    EXPECT_FALSE(Carrega(Parametros({}), true));
}

TEST_F(frmListaTeste, cmdCancelar_ThatCannotCloseTheWindow_Reports)
{
    host->FalhaEm("Plataforma.Descarrega");
    EXPECT_FALSE(Seleciona([&](Pessoa &pessoa) {
        pessoa.Clica("cmdCancelar");
        EXPECT_EQ(Erros(), Textos{"frmLista.cmdCancelar_Click: 51 (Plataforma.Descarrega)"});
        pessoa.Clica("cmdCancelar");
    }));
}

TEST_F(frmListaTeste, CarregaForm_ClosedByTheWindowsOwnButton_AnswersNothing)
{
    modulo->Achados = {{"RAD-01", "M1", "101", "60"}};
    EXPECT_FALSE(Seleciona([&](Pessoa &pessoa) { EXPECT_TRUE(pessoa.Fecha()); }));
    EXPECT_TRUE(form->Parametros().Nada());
}

TEST_F(frmListaTeste, Form_Resize_OfAWindowThatSelects_PutsTheButtonsAtTheFootOfTheList)
{
    Seleciona([&](Pessoa &pessoa) {
        Ref<ztList> lista = ListaDe(pessoa);
        Ref<IControle> ok = pessoa.Acha("cmdOK");
        Ref<IControle> cancelar = pessoa.Acha("cmdCancelar");
        lista->DefineLeft(15);
        lista->DefineTop(20);
        lista->DefineHeight(4000);
        ok->DefineHeight(400);
        ok->DefineWidth(1300);
        form->Redimensionada();
        EXPECT_EQ(ok->Left(), 15);
        EXPECT_EQ(ok->Top(), 3620);
        EXPECT_EQ(cancelar->Left(), 1345);
        EXPECT_EQ(cancelar->Top(), 3620);
        pessoa.Clica("cmdCancelar");
    });
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
        ASSERT_EQ(host->Erros().size(), 1U);
        EXPECT_EQ(host->Erros()[0].Contexto, "frmLista.Form_Resize");
        EXPECT_EQ(host->Erros()[0].Numero, 51);
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
    form->SetaTitulo("Equipamentos de DAER");
    EXPECT_EQ(host->Registro(), (Textos{"Plataforma.DefineTextoJanela(frmLista, \"Equipamentos de DAER\")",
                                        "Plataforma.DefineTextoJanela(frmHospedeiro, \"Equipamentos de DAER\")"}));
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
    EXPECT_EQ(Avisos(), Textos{});
}

// The events of the window, counted.
struct Eventos {
    explicit Eventos(frmLista &form)
    {
        ligacoes.push_back(form.AntesFechar.liga([this](bool &) { ++antesFechar; }));
        ligacoes.push_back(form.HabilitaMenu.liga([this] { ++habilitaMenu; }));
        ligacoes.push_back(form.FormAtivado.liga([this] { ++ativado; }));
        ligacoes.push_back(form.FormDesativado.liga([this] { ++desativado; }));
    }
    std::int32_t antesFechar = 0;
    std::int32_t habilitaMenu = 0;
    std::int32_t ativado = 0;
    std::int32_t desativado = 0;
    std::vector<Conexao> ligacoes;
};

TEST_F(frmListaTeste, Events_OfAWindowFromTheMenu_AreRaisedOnceItIsOpen)
{
    CriaForm();
    Eventos eventos(*form);
    Carrega(nullptr, false);
    EXPECT_EQ(eventos.ativado, 0); // it was activated while it was being opened
    form->Desativada();
    form->Ativada();
    EXPECT_EQ(eventos.desativado, 1);
    EXPECT_EQ(eventos.ativado, 1);
    EXPECT_TRUE(NaJanela().Fecha());
    EXPECT_EQ(eventos.antesFechar, 1);
    EXPECT_EQ(eventos.habilitaMenu, 0);
}

TEST_F(frmListaTeste, Events_OfAWindowThatSelects_AreOnlyThatOfLeavingIt)
{
    CriaForm();
    Eventos eventos(*form);
    host->AoMostrarModal("frmLista", [&](Pessoa &pessoa) {
        form->Desativada();
        form->Ativada();
        pessoa.Clica("cmdCancelar");
    });
    Carrega(Parametros({}), true);
    EXPECT_EQ(eventos.desativado, 1);
    EXPECT_EQ(eventos.ativado, 0);
    EXPECT_EQ(eventos.antesFechar, 0);
    EXPECT_EQ(eventos.habilitaMenu, 0);
}

TEST_F(frmListaTeste, Events_WhoseHandlerFails_AreReported)
{
    AbreDoMenu();
    auto ativado = form->FormAtivado.liga([] { throw Falha(51, "ativado", "Falha de teste"); });
    auto desativado = form->FormDesativado.liga([] { throw Falha(51, "desativado", "Falha de teste"); });
    form->Desativada();
    form->Ativada();
    EXPECT_EQ(Erros(), (Textos{"frmLista.Form_Deactivate: 51 (desativado)", "frmLista.Form_Activate: 51 (ativado)"}));
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
    EXPECT_EQ(Erros(), Textos{});
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
    EXPECT_EQ(Erros(), Textos{});
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
        EXPECT_EQ(eventos.antesFechar, 0);
        if (!antesDeMostrar) {
            EXPECT_EQ(host->Tela->NroForms(), 0);
        }
        EXPECT_EQ(Erros(), Textos{});
        host->Tela->FechaTudo();
        modulo = Novo<ModuloFalso>();
    }
}

// The name is asked for in AtivaFrame, then in AtualizaTabIndex, then in AtualizaFrame.
TEST_F(frmListaTeste, CarregaForm_OfAModuleThatFails_TellsThePathAndLeavesNoWindow)
{
    const std::vector<std::string> caminhos{
        "Modulo < frmLista.AtivaFrame < frmLista.AtualizaFrame < frmLista.CarregaForm",
        "Modulo < frmLista.AtualizaTabIndex < frmLista.AtivaFrame < frmLista.AtualizaFrame < frmLista.CarregaForm",
        "Modulo < frmLista.AtualizaFrame < frmLista.CarregaForm",
    };
    for (std::size_t i = 0; i < caminhos.size(); ++i) {
        modulo = Novo<ModuloFalso>();
        modulo->FalhaNoNome = static_cast<std::int32_t>(i) + 1;
        RefFraca<ModuloFalso> fraca = modulo;
        CriaForm();
        const Falha falha = FalhaLancada([&] { Carrega(nullptr, false); });
        EXPECT_EQ(falha.Numero, 51);
        EXPECT_EQ(falha.Descricao, "Falha de teste");
        EXPECT_EQ(falha.Fonte, caminhos[i]);
        EXPECT_EQ(host->Tela->NroForms(), 0);
        modulo = nullptr;
        EXPECT_TRUE(fraca.Nada());
        EXPECT_EQ(Erros(), Textos{});
    }
}

TEST_F(frmListaTeste, CarregaForm_OfAHostThatFails_TellsThePathAndCanBeTriedAgain)
{
    const std::vector<std::pair<std::string, std::string>> casos{
        {"Plataforma.Carrega", "Plataforma.Carrega < frmLista.CarregaForm"},
        {"goDadosVor.PreencheTipoAgente",
         "goDadosVor.PreencheTipoAgente < frmLista.AtualizaFrame < frmLista.CarregaForm"},
        {"ObjInterface.MostraJanela", "ObjInterface.MostraJanela < Geral.FormShow < frmLista.CarregaForm"},
    };
    for (const auto &[chamada, caminho] : casos) {
        RefFraca<ModuloFalso> fraca = modulo;
        CriaForm();
        host->FalhaEm(chamada);
        EXPECT_EQ(FalhaLancada([&] { Carrega(nullptr, false); }).Fonte, caminho);
        EXPECT_EQ(host->Tela->NroForms(), 0) << chamada;
        EXPECT_FALSE(Carrega(nullptr, false));
        EXPECT_TRUE(form->Visible()) << chamada;
        host->Tela->FechaTudo();
        modulo = nullptr;
        EXPECT_TRUE(fraca.Nada()) << chamada;
        modulo = Novo<ModuloFalso>();
    }
}

} // namespace
