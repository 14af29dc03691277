#include "shell/Formulario.h"

#include "shell/ModGeral.h"
#include "tests/shell/FormDeTeste.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/HostTeste.h"

#include <array>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace {

using Linhas = std::vector<std::string>;

// A form without events of its own.
class FormSimples : public Formulario {
  public:
    std::string_view NomeTipo() const override { return "frmSimples"; }
    using Formulario::Carregar;
    using Formulario::Descarregar;

  protected:
    ::Desenho Desenho() const override { return {.Caption = "Simples", .Largura = 4000, .Altura = 2000}; }
};

// A form that is described with a grid, and with pages with and without a frame of their own.
class FormDescrito : public Formulario {
  public:
    std::string_view NomeTipo() const override { return "FormDescrito"; }
    ::Desenho Desenho() const override
    {
        EstadoNoDesenho = WindowState();
        const auto texto = [](std::string nome, std::int16_t indice = -1) {
            return Peca{.Ajustes = AjustesTextBox{}, .Nome = std::move(nome), .Indice = indice};
        };
        const Peca abas = {
            .Ajustes = AjustesSSTab{.Paginas = {"Um", "Dois", "Três"}},
            .Nome = "abas",
            .Pecas = {{.Ajustes = AjustesZtFrame{}, .Nome = "fra", .Indice = 0, .Pecas = {texto("a"), Mola()}},
                      EmColuna({EmLinha({texto("b")}), texto("c")}),
                      {.Ajustes = AjustesZtFrame{},
                       .Nome = "fra",
                       .Indice = 1,
                       .Pecas = {EmGrade({EmLinha({texto("d")})})}}},
        };
        return {.Raiz = EmColuna({EmLinha({texto("campo", 2), texto("campo", 3)}), abas, texto("fim")})};
    }

    std::array<Ref<ITextBox>, 2> campo;
    Ref<ITextBox> d;
    std::function<void(FormDescrito &)> Ligando;
    mutable std::int16_t EstadoNoDesenho = -1;

    using Formulario::Carregar;
    using Formulario::Toma;

  protected:
    void LigaControles() override
    {
        Toma(campo, "campo", 2);
        Toma(d, "d");
        if (Ligando) {
            Ligando(*this);
        }
    }
};

class FormularioTeste : public HostTeste {
  protected:
    void TearDown() override
    {
        form = nullptr;
        HostTeste::TearDown();
    }

    // What a screen layer hears of the form.
    void Escuta()
    {
        m_Conexoes.push_back(form->Mudou().liga([this] { ++Mudancas; }));
        m_Conexoes.push_back(form->PediuFoco().liga([this] { ++Focos; }));
        m_Conexoes.push_back(form->PediuOrdem().liga([this](std::int16_t posicao) { Ordens.push_back(posicao); }));
    }

    Ref<FormDeTeste> form = Novo<FormDeTeste>();
    std::int32_t Mudancas = 0;
    std::int32_t Focos = 0;
    std::vector<std::int16_t> Ordens;

  private:
    std::vector<Conexao> m_Conexoes;
};

TEST_F(FormularioTeste, Carregar_Fresh_CreatesTheControlsAndJoinsTheOpenForms)
{
    EXPECT_EQ(form->hwnd(), 0);
    form->AoLigarControles = [&] { EXPECT_NE(form->hwnd(), 0); };
    form->Carregar();
    EXPECT_TRUE(form->Carregado());
    EXPECT_NE(form->hwnd(), 0);
    EXPECT_EQ(form->Caption(), "Teste");
    EXPECT_TRUE(form->Enabled());
    EXPECT_FALSE(form->Visible());
    EXPECT_EQ(form->WindowState(), JanelaNormal);
    EXPECT_EQ(form->Width(), 6000);
    EXPECT_EQ(form->Height(), 3001);
    ASSERT_EQ(form->Controles().size(), 1U);
    EXPECT_EQ(form->Controles()[0]->Nome(), "lblTexto");
    EXPECT_TRUE(host->Tela->EstaAberto(form));
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"Plataforma.Carrega(frmTeste)"}));
}

TEST_F(FormularioTeste, Mudou_PropertyWritten_TheNewValueIsThere)
{
    form->Carregar();
    std::string lido;
    int vezes = 0;
    const Conexao conexao = form->Mudou().liga([&] {
        ++vezes;
        lido = std::to_string(form->Enabled()) + std::to_string(form->Visible()) + form->Caption() +
               std::to_string(form->Left()) + std::to_string(form->Top()) + std::to_string(form->Width()) +
               std::to_string(form->Height()) + std::to_string(form->WindowState()) + form->Icone();
    });
    const auto depois = [&](const auto &escreve) {
        lido.clear();
        escreve();
        return lido;
    };
    EXPECT_EQ(depois([&] { form->DefineEnabled(false); }), "00Teste00600030010");
    EXPECT_EQ(depois([&] { form->DefineVisible(true); }), "01Teste00600030010");
    EXPECT_EQ(depois([&] { form->DefineCaption("T"); }), "01T00600030010");
    EXPECT_EQ(depois([&] { form->DefineLeft(1); }), "01T10600030010");
    EXPECT_EQ(depois([&] { form->DefineTop(2); }), "01T12600030010");
    EXPECT_EQ(depois([&] { form->DefineWidth(3); }), "01T12330010");
    EXPECT_EQ(depois([&] { form->DefineHeight(4); }), "01T12340");
    EXPECT_EQ(depois([&] { form->DefineWindowState(JanelaMinimizada); }), "01T12341");
    EXPECT_EQ(depois([&] { form->DefineIcone("i"); }), "01T12341i");
    EXPECT_EQ(vezes, 9);
    EXPECT_FALSE(form->MDIChild());
}

TEST_F(FormularioTeste, Carregar_WrittenBeforeTheLoad_IsAsDesigned)
{
    auto descrito = Novo<FormDescrito>();
    descrito->DefineWindowState(JanelaMinimizada);
    descrito->Carregar();
    EXPECT_EQ(descrito->EstadoNoDesenho, JanelaNormal); // before the form tells what it looks like
    auto outro = Novo<FormDeTeste>();
    outro->Carregar();
    form->DefineVisible(true);
    form->DefineControleAtivo(outro->lblTexto);
    form->Carregar();
    EXPECT_FALSE(form->Visible());
    EXPECT_TRUE(form->ControleAtivo().Nada());
}

TEST_F(FormularioTeste, Carregar_Loaded_KeepsEverythingAndItsOwnHandle)
{
    form->Carregar();
    const Ref<ILabel> lblTexto = form->lblTexto;
    const std::int64_t hwnd = form->hwnd();
    form->DefineCaption("Outra");
    form->Carregar();
    EXPECT_TRUE(form->lblTexto == lblTexto);
    EXPECT_EQ(form->Controles().size(), 1U);
    EXPECT_EQ(form->hwnd(), hwnd);
    EXPECT_EQ(form->Caption(), "Outra");
    EXPECT_EQ(host->Conta("Plataforma.Carrega"), 1);
    auto outro = Novo<FormDeTeste>();
    outro->Carregar();
    EXPECT_NE(outro->hwnd(), hwnd);
}

TEST_F(FormularioTeste, Carregar_AfterUnload_IsAsDesignedWithTheFormsOwnFields)
{
    form->Carregar();
    const Ref<ILabel> antigo = form->lblTexto;
    const std::int64_t hwnd = form->hwnd();
    form->DefineCaption("Outra");
    form->DefineEnabled(false);
    form->DefineVisible(true);
    form->DefineWindowState(JanelaMinimizada);
    form->DefineWidth(1);
    form->Filha = true;
    form->Descarregar();
    form->Carregar();
    EXPECT_EQ(form->Caption(), "Teste");
    EXPECT_TRUE(form->Enabled());
    EXPECT_FALSE(form->Visible());
    EXPECT_EQ(form->WindowState(), JanelaNormal);
    EXPECT_EQ(form->Width(), 6000);
    EXPECT_NE(form->hwnd(), hwnd);
    EXPECT_FALSE(form->lblTexto == antigo);
    EXPECT_EQ(form->Controles().size(), 1U);
    EXPECT_TRUE(form->Filha);
}

TEST_F(FormularioTeste, Carregar_Fails_LeavesTheFormUnloadedAndCanBeTriedAgain)
{
    host->FalhaEm("Plataforma.Carrega", 1, 7, "Sem memória");
    EXPECT_EQ(FalhaLancada([&] { form->Carregar(); }).Numero, 7);
    EXPECT_FALSE(form->Carregado());
    EXPECT_EQ(form->hwnd(), 0);

    form->AoLigarControles = [] { throw Falha(429); };
    EXPECT_EQ(FalhaLancada([&] { form->Carregar(); }).Numero, 429);
    EXPECT_FALSE(form->Carregado());
    EXPECT_FALSE(host->Tela->EstaAberto(form));
    form->Sinal.dispara();
    EXPECT_EQ(form->Eventos, Linhas{}); // no connection of the failed loads is left

    form->AoLigarControles = nullptr;
    form->Carregar();
    EXPECT_TRUE(host->Tela->EstaAberto(form));
    EXPECT_EQ(form->Controles().size(), 1U);
    form->Sinal.dispara();
    EXPECT_EQ(form->Eventos, (Linhas{"Sinal"}));
}

TEST_F(FormularioTeste, Carregar_OfADescription_CreatesItInOrderEachInWhatHoldsIt)
{
    auto descrito = Novo<FormDescrito>();
    descrito->Carregar();
    Linhas criados;
    for (const Ref<IControle> &controle : descrito->Controles()) {
        const Ref<IControle> dono = controle->Container();
        criados.push_back(controle->Nome() + " em " + (dono ? dono->Nome() + std::to_string(dono->Indice()) : "form") +
                          " pagina " + std::to_string(controle->Pagina()));
        EXPECT_EQ(controle->TabIndex(), static_cast<std::int16_t>(criados.size() - 1));
    }
    EXPECT_EQ(criados, (Linhas{
                           "campo em form pagina -1",
                           "campo em form pagina -1",
                           "abas em form pagina -1",
                           "fra em abas-1 pagina 0", // the frames of the pages stand before what is on them
                           "fra em abas-1 pagina 2",
                           "a em fra0 pagina -1",
                           "b em abas-1 pagina 1",
                           "c em abas-1 pagina 1",
                           "d em fra1 pagina -1",
                           "fim em form pagina -1",
                       }));
    EXPECT_EQ(descrito->campo[0]->Indice(), 2);
    EXPECT_EQ(descrito->campo[1]->Indice(), 3);
    EXPECT_EQ(descrito->d->Nome(), "d");
}

TEST_F(FormularioTeste, Carregar_WithAControlThatCannotBeCreated_IsUndoneAndTheNextStartsAfresh)
{
    auto descrito = Novo<FormDescrito>();
    host->FalhaEm("Controles.Cria", 4, 7, "Sem memória");
    EXPECT_EQ(FalhaLancada([&] { descrito->Carregar(); }).Numero, 7);
    EXPECT_EQ(descrito->hwnd(), 0);
    EXPECT_FALSE(host->Tela->EstaAberto(descrito));
    descrito->Carregar();
    EXPECT_EQ(descrito->Controles().size(), 10U);
    EXPECT_TRUE(host->Tela->EstaAberto(descrito));
}

TEST_F(FormularioTeste, Toma_OfWhatTheDescriptionDoesNotTell_IsAFaultOfTheLoad)
{
    auto descrito = Novo<FormDescrito>();
    descrito->Ligando = [](FormDescrito &form) { form.Toma(form.d, "campo"); }; // without its index
    EXPECT_EQ(FalhaLancada([&] { descrito->Carregar(); }).Numero, 5);
    descrito->Ligando = [](FormDescrito &form) { form.Toma(form.d, "abas"); }; // another kind
    EXPECT_EQ(FalhaLancada([&] { descrito->Carregar(); }).Numero, 13);
    EXPECT_EQ(descrito->hwnd(), 0);
}

TEST_F(FormularioTeste, Unload_Loaded_RaisesTheEventAndReleases)
{
    form->Carregar();
    form->DefinefrmParent(form);
    form->DefineVisible(true);
    form->DefineControleAtivo(form->lblTexto);
    form->Descarregar();
    EXPECT_EQ(form->Eventos, (Linhas{"Unload"}));
    EXPECT_FALSE(form->Carregado());
    EXPECT_FALSE(form->Visible());
    EXPECT_EQ(form->hwnd(), 0);
    EXPECT_TRUE(form->frmParent().Nada());
    EXPECT_TRUE(form->ControleAtivo().Nada());
    EXPECT_FALSE(host->Tela->EstaAberto(form));
    form->Sinal.dispara();
    EXPECT_EQ(form->Eventos, (Linhas{"Unload"}));
}

TEST_F(FormularioTeste, Unload_Cancelled_StaysOpenAsItWas)
{
    form->Carregar();
    form->DefineVisible(true);
    form->CancelaUnload = true;
    form->Descarregar();
    EXPECT_TRUE(form->Carregado());
    EXPECT_TRUE(form->Visible());
    EXPECT_NE(form->hwnd(), 0);
    EXPECT_TRUE(host->Tela->EstaAberto(form));
    form->Sinal.dispara();
    EXPECT_EQ(form->Eventos, (Linhas{"Unload", "Sinal"}));
    form->CancelaUnload = false;
}

TEST_F(FormularioTeste, AbandonaCarga_Loaded_UnloadsItUnlessItIsShown)
{
    form->AbandonaCarga(); // not loaded
    form->Carregar();
    form->DefineVisible(true);
    form->AbandonaCarga();
    EXPECT_TRUE(form->Carregado());
    EXPECT_EQ(host->Conta("Plataforma.Descarrega"), 0);
    form->DefineVisible(false);
    host->FalhaEm("Plataforma.Descarrega"); // which is ignored
    form->AbandonaCarga();
    EXPECT_TRUE(form->Carregado());
    form->AbandonaCarga();
    EXPECT_FALSE(form->Carregado());
    EXPECT_EQ(host->Conta("Plataforma.Descarrega"), 2);
}

TEST_F(FormularioTeste, AbandonaCarga_LoadedOrNot_LetsGoLastOfAllUnlessItIsShown)
{
    form->AbandonaCarga();
    EXPECT_EQ(form->Eventos, Linhas{"Solta"});
    form->Eventos.clear();
    form->Carregar();
    form->AbandonaCarga();
    EXPECT_EQ(form->Eventos, (Linhas{"Unload", "Solta"}));
    form->Eventos.clear();
    form->Carregar();
    form->DefineVisible(true);
    form->AbandonaCarga();
    EXPECT_EQ(form->Eventos, Linhas{});
}

TEST_F(FormularioTeste, Ativada_WithoutShell_RaisesItsOwnEventOnlyAndUnloadNoneUnlessLoaded)
{
    bool cancela = false;
    form->Unload(cancela);
    EXPECT_FALSE(cancela);
    EXPECT_TRUE(form->Eventos.empty());
    form->Carregar();
    form->Ativada();
    EXPECT_EQ(form->Eventos, (Linhas{"Activate"}));
}

TEST_F(FormularioTeste, Unload_FormLetGoInItsOwnEvent_LivesUntilItReturns)
{
    form->Carregar();
    FormDeTeste *const solto = form.Ponteiro();
    const RefFraca<FormDeTeste> vigia = form;
    form->AoDescarregar = [&] {
        solto->AoDescarregar = nullptr;
        solto->Descarregar(); // the host lets go of it
        form = nullptr;
        EXPECT_FALSE(vigia.Nada());
    };
    bool cancela = false;
    solto->Unload(cancela);
    EXPECT_TRUE(vigia.Nada());
}

TEST_F(FormularioTeste, Unload_InsideAnEventOfItsOwn_IsNoCrash)
{
    form->Carregar();
    RefFraca<FormDeTeste> fraca = form;
    Conexao conexao = form->Mudou().liga([fraca] { fraca.Alvo()->Descarregar(); });
    form->DefineCaption("Outra");
    EXPECT_FALSE(form->Carregado());
}

TEST_F(FormularioTeste, SetFocus_EnabledAndVisible_AsksForTheFocusAndOtherwiseRaisesFive)
{
    form->Carregar();
    Escuta();
    form->DefineEnabled(true); // as it is, like the next two
    form->DefineVisible(false);
    form->DefineCaption("Teste");
    EXPECT_EQ(Mudancas, 0);
    EXPECT_TRUE(Lanca(5, "ZTAVOREQUIP", [&] { form->SetFocus(); }));
    form->DefineVisible(true);
    form->DefineEnabled(false);
    EXPECT_TRUE(Lanca(5, "ZTAVOREQUIP", [&] { form->SetFocus(); }));
    EXPECT_EQ(Focos, 0);
    form->DefineEnabled(true);
    form->SetFocus();
    EXPECT_EQ(Focos, 1);
    form->ZOrder(0);
    EXPECT_EQ(Ordens, (std::vector<std::int16_t>{0}));
}

TEST_F(FormularioTeste, Ativada_WithShell_TellsItBeforeTheFormsOwnEvent)
{
    LogaGeral();
    form->Carregar();
    host->LimpaRegistro();
    form->AoAtivar = [&] { EXPECT_TRUE(geral->FormAtivo() == form); };
    form->Ativada();
    EXPECT_TRUE(geral->FormAtivo() == form);
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"cGlobal.gsubSetaAutoModuloAtivo(\"ZTAVOREQUIP\")"}));
    form->Desativada();
    form->Redimensionada();
    EXPECT_EQ(form->Eventos, (Linhas{"Activate", "Deactivate", "Resize"}));
    EXPECT_TRUE(geral->FormAtivo() == form);
}

TEST_F(FormularioTeste, WindowEvents_OfAFormWithoutHandlers_ChangeNothing)
{
    auto simples = Novo<FormSimples>();
    EXPECT_FALSE(simples->MDIChild());
    simples->Carregar();
    simples->Ativada();
    simples->Redimensionada();
    simples->Desativada();
    EXPECT_EQ(simples->Width(), 4000);
    EXPECT_EQ(simples->Height(), 2000);
    EXPECT_EQ(simples->Caption(), "Simples");
    simples->Descarregar();
    EXPECT_EQ(host->Tela->NroForms(), 0);
}

} // namespace
