#include "tela/Janelas.h"

#include "tests/controls/Tela.h"
#include "tests/tela/CamadaFalsa.h"

namespace {

// A form that writes down what a window tells it.
class FormDeJanela : public FormFalso {
  public:
    explicit FormDeJanela(std::string nome, Textos &anotados) : m_Nome(std::move(nome)), m_Anotados(anotados) {}
    std::string_view NomeTipo() const override { return m_Nome; }
    void Ativada() override { m_Anotados.push_back(m_Nome + " ativada"); }
    void Desativada() override { m_Anotados.push_back(m_Nome + " desativada"); }
    void Redimensionada() override { m_Anotados.push_back(m_Nome + " redimensionada"); }

  private:
    std::string m_Nome;
    Textos &m_Anotados;
};

class JanelasTest : public testing::Test {
  protected:
    JanelasTest()
    {
        m_Janelas->Descarrega = [this](const Ref<IForm> &form) {
            bool cancela = false;
            form->Unload(cancela);
            if (!cancela) {
                m_Camada->Anotados.push_back("descarrega " + std::string(form->NomeTipo()));
                m_Janelas->FechaForm(form);
            }
        };
        m_Janelas->FazInvolucro = [this] {
            m_Involucro = Novo<FormDeJanela>("frmFilha", m_Camada->Anotados);
            return m_Involucro;
        };
        m_Janelas->MostraFalha = [this] { m_Camada->Anotados.emplace_back("falha mostrada"); };
    }

    Ref<FormDeJanela> Form(const std::string &nome) { return Novo<FormDeJanela>(nome, m_Camada->Anotados); }
    void Mostra(const Ref<IForm> &form, bool modal = false) { m_Janelas->MostraForm(form, modal); }
    // Shows a modal form and lets the person do something in it before it closes.
    void NaModal(const Ref<IForm> &form, const std::function<void()> &acao)
    {
        m_Camada->NaModal[std::string(form->NomeTipo())] = [this, form, acao] {
            m_Vistos.clear();
            m_Camada->Anotados.clear();
            acao();
            m_Vistos = m_Camada->Anotados;
            m_Janelas->Descarrega(form);
        };
        Mostra(form, true);
    }
    Textos Vistos() { return std::exchange(m_Camada->Anotados, {}); }

    Ref<CamadaFalsa> m_Camada = Novo<CamadaFalsa>();
    Ref<Janelas> m_Janelas = Novo<Janelas>(m_Camada);
    Ref<IForm> m_Involucro;
    Textos m_Vistos; // what came of the act inside the modal window
};

TEST_F(JanelasTest, MostraForm_NotModal_IsAWrappedChildOfTheMainWindow)
{
    const Ref<FormDeJanela> lista = Form("lista");
    Mostra(lista);
    EXPECT_EQ(Vistos(), (Textos{"faz lista filha ainda oculto", "mostra lista"}));
    EXPECT_TRUE(lista->Visible());
    EXPECT_TRUE(lista->frmParent() == m_Involucro);
    EXPECT_FALSE(m_Involucro.Nada());
}

TEST_F(JanelasTest, MostraForm_OfAFormWithoutFrmParent_IsShownAllTheSame)
{
    const auto simples = Novo<FormSemParent>();
    Mostra(simples);
    EXPECT_EQ(Vistos(), (Textos{"faz FormFalso filha ainda oculto", "mostra FormFalso"}));
}

TEST_F(JanelasTest, MostraForm_OfAHostThatWrapsByItself_LeavesTheWrappingFormToIt)
{
    m_Janelas->FazInvolucro = nullptr;
    const Ref<FormDeJanela> lista = Form("lista");
    const Ref<IForm> doHospedeiro = Form("involucro");
    lista->DefinefrmParent(doHospedeiro);
    Mostra(lista);
    EXPECT_EQ(Vistos(), (Textos{"faz lista filha ainda oculto", "mostra lista"}));
    EXPECT_TRUE(lista->frmParent() == doHospedeiro);
}

TEST_F(JanelasTest, MostraForm_Again_BringsItsWindowToTheFront)
{
    const Ref<FormDeJanela> lista = Form("lista");
    Mostra(lista);
    Vistos();
    Mostra(lista);
    Mostra(lista, true);
    EXPECT_EQ(Vistos(), (Textos{"para a frente lista", "para a frente lista"}));
}

TEST_F(JanelasTest, MostraForm_OfAFormThatWasHidden_ShowsItAgain)
{
    const Ref<FormDeJanela> lista = Form("lista");
    Mostra(lista);
    lista->DefineVisible(false);
    Mostra(lista);
    EXPECT_TRUE(lista->Visible());
}

TEST_F(JanelasTest, Prepara_MakesTheWindowThatTheShowThenShows)
{
    const Ref<FormDeJanela> lista = Form("lista");
    m_Janelas->Prepara(lista);
    m_Janelas->Prepara(lista);
    EXPECT_EQ(Vistos(), (Textos{"faz lista filha ainda oculto"}));
    EXPECT_FALSE(lista->Visible());
    Mostra(lista);
    EXPECT_EQ(Vistos(), (Textos{"destina lista filha", "mostra lista"}));
    EXPECT_TRUE(lista->frmParent() == m_Involucro);
    m_Janelas->Descarrega(lista);
    EXPECT_EQ(Vistos(), (Textos{"descarrega lista", "retira lista"}));
}

TEST_F(JanelasTest, Prepara_OfAFormThatIsShownModal_IsWaitedForAllTheSame)
{
    const Ref<FormDeJanela> detalhes = Form("detalhes");
    const Ref<FormDeJanela> sensor = Form("sensor");
    m_Janelas->Prepara(detalhes);
    NaModal(detalhes, [&] { Mostra(sensor); });
    EXPECT_EQ(m_Vistos, (Textos{"faz sensor solta sobre detalhes ainda oculto", "mostra sensor"}));
    EXPECT_TRUE(detalhes->frmParent().Nada());
    EXPECT_EQ(Vistos(), (Textos{"faz sensor solta sobre detalhes ainda oculto", "mostra sensor", "descarrega detalhes",
                                "descarrega sensor", "retira sensor", "retira detalhes", "volta de detalhes"}));
}

TEST_F(JanelasTest, Prepara_OfAFormThatIsNeverShown_GoesWithIt)
{
    const Ref<FormDeJanela> lista = Form("lista");
    m_Janelas->Prepara(lista);
    m_Janelas->FechaForm(lista);
    EXPECT_EQ(Vistos(), (Textos{"faz lista filha ainda oculto", "retira lista"}));
}

TEST_F(JanelasTest, MostraForm_Modal_HiddenMeanwhile_ComesBackAndIsShownAfresh)
{
    const Ref<FormDeJanela> detalhes = Form("detalhes");
    const Ref<FormDeJanela> solta = Form("solta");
    m_Camada->NaModal["detalhes"] = [&] {
        Mostra(solta);
        detalhes->DefineVisible(false);
    };
    Mostra(detalhes, true);
    EXPECT_EQ(Vistos(), (Textos{"faz detalhes modal ainda oculto", "espera em detalhes",
                                "faz solta solta sobre detalhes ainda oculto", "mostra solta", "volta de detalhes",
                                "descarrega solta", "retira solta"}));
    m_Camada->NaModal["detalhes"] = [&] { detalhes->DefineVisible(false); };
    Mostra(detalhes, true);
    EXPECT_EQ(Vistos(), (Textos{"destina detalhes modal", "espera em detalhes", "volta de detalhes"}));
    Mostra(detalhes);
    EXPECT_EQ(Vistos(), (Textos{"destina detalhes filha", "mostra detalhes"}));
    EXPECT_TRUE(detalhes->Visible());
    m_Janelas->Descarrega(detalhes);
    EXPECT_EQ(Vistos(), (Textos{"descarrega detalhes", "retira detalhes"}));
}

TEST_F(JanelasTest, MostraForm_Modal_OfAFormThatWasHidden_WaitsForIt)
{
    const Ref<FormDeJanela> lista = Form("lista");
    Mostra(lista);
    lista->DefineVisible(false);
    Vistos();
    m_Camada->NaModal["lista"] = [&] { m_Janelas->Descarrega(lista); };
    Mostra(lista, true);
    EXPECT_EQ(Vistos(),
              (Textos{"destina lista modal", "espera em lista", "descarrega lista", "retira lista", "volta de lista"}));
}

TEST_F(JanelasTest, Prepara_BeforeAModalWindow_ThenStandsInFrontOfIt)
{
    const Ref<FormDeJanela> sensor = Form("sensor");
    m_Janelas->Prepara(sensor);
    NaModal(Form("detalhes"), [&] { Mostra(sensor); });
    EXPECT_EQ(m_Vistos, (Textos{"destina sensor solta sobre detalhes", "mostra sensor"}));
    Vistos();
}

TEST_F(JanelasTest, MostraForm_Modal_ComesBackWhenItWasClosed)
{
    const Ref<FormDeJanela> detalhes = Form("detalhes");
    m_Camada->NaModal["detalhes"] = [&] { m_Janelas->Descarrega(detalhes); };
    Mostra(detalhes, true);
    EXPECT_EQ(Vistos(), (Textos{"faz detalhes modal ainda oculto", "espera em detalhes", "descarrega detalhes",
                                "retira detalhes", "volta de detalhes"}));
    EXPECT_TRUE(detalhes->frmParent().Nada());
    Mostra(Form("outra"));
    EXPECT_EQ(Vistos().front(), "faz outra filha ainda oculto");
}

TEST_F(JanelasTest, MostraForm_InFrontOfAModalOne_StandsLooseBeforeIt)
{
    const Ref<FormDeJanela> detalhes = Form("detalhes");
    const Ref<FormDeJanela> sensor = Form("sensor");
    NaModal(detalhes, [&] { Mostra(sensor); });
    EXPECT_EQ(m_Vistos, (Textos{"faz sensor solta sobre detalhes ainda oculto", "mostra sensor"}));
    EXPECT_TRUE(sensor->frmParent().Nada());
}

TEST_F(JanelasTest, MostraForm_ModalsOnModals_StandEachBeforeTheOneInFront)
{
    const Ref<FormDeJanela> detalhes = Form("detalhes");
    const Ref<FormDeJanela> sensor = Form("sensor");
    const Ref<FormDeJanela> afericao = Form("afericao");
    const Ref<FormDeJanela> solta = Form("solta");
    m_Camada->NaModal["afericao"] = [&] {
        Mostra(solta);
        m_Janelas->Descarrega(afericao);
    };
    m_Camada->NaModal["sensor"] = [&] {
        Mostra(afericao, true);
        m_Janelas->Avisa("a", "b");
        m_Janelas->Descarrega(sensor);
    };
    NaModal(detalhes, [&] {
        Mostra(sensor, true);
        m_Janelas->Avisa("c", "d");
    });
    EXPECT_EQ(m_Vistos, (Textos{"faz sensor modal sobre detalhes ainda oculto", "espera em sensor",
                                "faz afericao modal sobre sensor ainda oculto", "espera em afericao",
                                "faz solta solta sobre afericao ainda oculto", "mostra solta", "descarrega afericao",
                                "descarrega solta", "retira solta", "retira afericao", "volta de afericao",
                                "avisa b: a sobre sensor", "descarrega sensor", "retira sensor", "volta de sensor",
                                "avisa d: c sobre detalhes"}));
    Vistos();
    m_Janelas->Avisa("e", "f");
    EXPECT_EQ(Vistos(), Textos{"avisa f: e"});
}

TEST_F(JanelasTest, FechaForm_OfAModalOne_TakesOnlyWhatStandsInFrontOfIt)
{
    const Ref<FormDeJanela> lista = Form("lista");
    const Ref<FormDeJanela> detalhes = Form("detalhes");
    const Ref<FormDeJanela> solta = Form("solta");
    Mostra(lista);
    Vistos();
    NaModal(detalhes, [&] { Mostra(solta); });
    EXPECT_EQ(Vistos(), (Textos{"faz solta solta sobre detalhes ainda oculto", "mostra solta", "descarrega detalhes",
                                "descarrega solta", "retira solta", "retira detalhes", "volta de detalhes"}));
    m_Janelas->FechaForm(solta); // it is gone already
    EXPECT_EQ(Vistos(), Textos{});
    Mostra(lista);
    EXPECT_EQ(Vistos(), Textos{"para a frente lista"});
}

TEST_F(JanelasTest, FechaForm_OfAModalOne_LeavesWhatStandsInFrontOfTheOneBehindIt)
{
    const Ref<FormDeJanela> sensor = Form("sensor");
    m_Camada->NaModal["sensor"] = [&] {
        Mostra(Form("outra"));
        m_Janelas->Descarrega(sensor);
    };
    NaModal(Form("detalhes"), [&] {
        Mostra(Form("solta"));
        Vistos();
        Mostra(sensor, true);
    });
    EXPECT_EQ(Vistos(),
              (Textos{"faz sensor modal sobre detalhes ainda oculto", "espera em sensor",
                      "faz outra solta sobre sensor ainda oculto", "mostra outra", "descarrega sensor",
                      "descarrega outra", "retira outra", "retira sensor", "volta de sensor", "descarrega detalhes",
                      "descarrega solta", "retira solta", "retira detalhes", "volta de detalhes"}));
}

TEST_F(JanelasTest, FechaForm_WhenAWindowInFrontOfItFailsToUnload_GoesAllTheSame)
{
    const auto descarrega = m_Janelas->Descarrega;
    m_Janelas->Descarrega = [&](const Ref<IForm> &form) {
        if (form->NomeTipo() == "solta") {
            throw Falha(51);
        }
        descarrega(form);
    };
    NaModal(Form("detalhes"), [&] { Mostra(Form("solta")); });
    EXPECT_EQ(Vistos(), (Textos{"faz solta solta sobre detalhes ainda oculto", "mostra solta", "descarrega detalhes",
                                "falha mostrada", "retira detalhes", "volta de detalhes"}));
}

TEST_F(JanelasTest, FechaForm_OfAWindow_LeavesTheOthers)
{
    const Ref<FormDeJanela> a = Form("a");
    const Ref<FormDeJanela> b = Form("b");
    Mostra(a);
    Mostra(b);
    Vistos();
    m_Janelas->FechaForm(a);
    m_Janelas->FechaForm(a);
    EXPECT_EQ(Vistos(), Textos{"retira a"});
    Mostra(a);
    EXPECT_EQ(Vistos(), (Textos{"faz a filha", "mostra a"}));
}

TEST_F(JanelasTest, TiraTodas_TakesTheWindowsAwayWithoutAskingAnyone)
{
    const Ref<FormDeJanela> a = Form("a");
    a->CancelaUnload = true;
    Mostra(a);
    Mostra(Form("b"));
    const PedidosDaJanela pedidos = m_Camada->Pedidos["a"];
    Vistos();
    m_Janelas->TiraTodas();
    EXPECT_EQ(Vistos(), (Textos{"retira a", "retira b"}));
    pedidos.Ativou(); // the screen activates another one while they go
    pedidos.Fecha();
    EXPECT_EQ(Vistos(), Textos{});
    m_Janelas->TiraTodas();
    EXPECT_EQ(Vistos(), Textos{});
}

TEST_F(JanelasTest, Order_AskedByTheFormOrItsWrapping_BringsTheWindowToTheFront)
{
    const Ref<FormDeJanela> lista = Form("lista");
    Mostra(lista);
    Vistos();
    lista->SetFocus();
    lista->ZOrder(0);
    m_Involucro->ZOrder(0);
    m_Involucro->SetFocus();
    EXPECT_EQ(Vistos(), Textos(4, "para a frente lista"));
    lista->ZOrder(1);
    EXPECT_EQ(Vistos(), Textos{}) << "nobody asks for a place behind the others";
    m_Janelas->FechaForm(lista);
    Vistos();
    lista->SetFocus();
    m_Involucro->ZOrder(0);
    EXPECT_EQ(Vistos(), Textos{});
}

TEST_F(JanelasTest, Pedidos_OfAnOpenWindow_ReachItsForm)
{
    const Ref<FormDeJanela> lista = Form("lista");
    Mostra(lista);
    Vistos();
    const PedidosDaJanela pedidos = m_Camada->Pedidos["lista"];
    pedidos.Ativou();
    pedidos.Desativou();
    pedidos.Redimensionou();
    pedidos.Ajuda();
    pedidos.NaBorda([this] { m_Camada->Anotados.emplace_back("ato"); });
    EXPECT_EQ(Vistos(), (Textos{"lista ativada", "lista desativada", "lista redimensionada", "ajuda lista", "ato"}));
    lista->DefineEnabled(false);
    pedidos.Fecha();
    EXPECT_EQ(Vistos(), Textos{});
    lista->DefineEnabled(true);
    pedidos.Fecha();
    EXPECT_EQ(Vistos(), (Textos{"descarrega lista", "retira lista"}));
    pedidos.Fecha();
    pedidos.Ativou();
    pedidos.Ajuda();
    EXPECT_EQ(Vistos(), Textos{});
}

TEST_F(JanelasTest, Pedidos_AfterTheEndOfTheForm_DoNothing)
{
    Ref<FormDeJanela> lista = Form("lista");
    Mostra(lista);
    m_Janelas->FechaForm(lista);
    lista = nullptr;
    Vistos();
    m_Camada->Pedidos["lista"].Ativou();
    m_Camada->Pedidos["lista"].Fecha();
    EXPECT_EQ(Vistos(), Textos{});
}

TEST_F(JanelasTest, Pedidos_AfterTheEndOfAllWindows_DoNothing)
{
    const Ref<FormDeJanela> a = Form("a");
    Mostra(a);
    const PedidosDaJanela pedidos = m_Camada->Pedidos["a"];
    m_Janelas = nullptr;
    Vistos();
    pedidos.NaBorda([&] { ADD_FAILURE(); });
    pedidos.Ativou();
    pedidos.Redimensionou();
    EXPECT_EQ(Vistos(), Textos{});
}

TEST_F(JanelasTest, Pedidos_Fecha_OfAFormThatRefuses_LeavesIt)
{
    const Ref<FormDeJanela> lista = Form("lista");
    lista->CancelaUnload = true;
    Mostra(lista);
    Vistos();
    m_Camada->Pedidos["lista"].Fecha();
    EXPECT_EQ(Vistos(), Textos{});
}

TEST_F(JanelasTest, NaBorda_OfWhatRaises_ShowsTheFaultAndGoesOn)
{
    m_Janelas->NaBorda([] { throw Falha(13); });
    m_Janelas->NaBorda([] {});
    EXPECT_EQ(Vistos(), Textos{"falha mostrada"});
}

TEST_F(JanelasTest, DefineTextoJanela_ReachesTheWindowOfThatForm)
{
    const Ref<FormDeJanela> lista = Form("lista");
    Mostra(lista);
    Mostra(Form("outra"));
    Vistos();
    m_Janelas->DefineTextoJanela(lista, "Equipamentos");
    m_Janelas->DefineTextoJanela(Form("fechada"), "x");
    EXPECT_EQ(Vistos(), Textos{"texto Equipamentos lista"});
}

TEST_F(JanelasTest, DefineEspera_IsToldToTheScreenWhenItChanges)
{
    m_Janelas->DefineEspera(false);
    m_Janelas->DefineEspera(true);
    m_Janelas->DefineEspera(true);
    m_Janelas->DefineEspera(false);
    m_Janelas->DefineEspera(false);
    EXPECT_EQ(Vistos(), (Textos{"espera", "não espera"}));
}

TEST_F(JanelasTest, Boxes_HaveTheirKindTextAndOwner)
{
    m_Camada->Responde = true;
    EXPECT_TRUE(m_Janelas->PerguntaSimNao("Confirma?", "Atenção", true));
    m_Camada->Responde = false;
    EXPECT_FALSE(m_Janelas->PerguntaSimNao("Confirma?", "Atenção", false));
    m_Janelas->Informa("a", "b");
    m_Janelas->Avisa("c", "d");
    EXPECT_EQ(Vistos(), (Textos{"pergunta Atenção: Confirma? [sim]", "pergunta Atenção: Confirma? [não]",
                                "informa b: a", "avisa d: c"}));
    NaModal(Form("detalhes"), [this] {
        m_Janelas->PerguntaSimNao("p", "t", true);
        m_Janelas->Informa("i", "t");
        m_Janelas->EscolheArquivo("", "t");
        m_Janelas->MostraPDF("x.pdf", false);
        m_Janelas->MostraAjuda("detalhes");
    });
    EXPECT_EQ(m_Vistos,
              (Textos{"pergunta t: p [sim] sobre detalhes", "informa t: i sobre detalhes", "arquivo t sobre detalhes",
                      "pdf x.pdf sobre detalhes", "mostra x.pdf", "ajuda detalhes sobre detalhes"}));
}

TEST_F(JanelasTest, MostraErro_EndsTheWaitAndTellsWhereItCameFrom)
{
    m_Janelas->DefineEspera(true);
    m_Janelas->MostraErro("frmLista.cmdOK_Click", 91, "Descrição", "Raiz < A.B", "Título");
    EXPECT_EQ(Vistos(), (Textos{"espera", "não espera",
                                "erro Título: Descrição (Erro 91 em frmLista.cmdOK_Click\nCaminho: Raiz < A.B)"}));
}

TEST_F(JanelasTest, EscolheArquivo_TakesTheFilterApart)
{
    EXPECT_EQ(m_Janelas->EscolheArquivo("PDF (*.pdf)|*.pdf|Todos|*.*", "Selecione"), "C:\\a.pdf");
    m_Janelas->EscolheArquivo("PDF (*.pdf)|*.pdf|sem par", "Selecione");
    EXPECT_EQ(Vistos(),
              (Textos{"arquivo Selecione <PDF (*.pdf)=*.pdf> <Todos=*.*>", "arquivo Selecione <PDF (*.pdf)=*.pdf>"}));
}

TEST_F(JanelasTest, MostraPDF_OfWhatIsNone_TellsThePerson)
{
    m_Camada->AbrePDF = false;
    m_Janelas->DefineEspera(true);
    EXPECT_FALSE(m_Janelas->MostraPDF("C:\\a.txt", false));
    EXPECT_EQ(
        Vistos(),
        (Textos{"espera", "não espera", "pdf C:\\a.txt",
                "avisa Registro de Equipamentos: O arquivo 'C:\\a.txt' não é um documento PDF que possa ser aberto."}));
}

TEST_F(JanelasTest, MostraPDF_Modal_IsInFrontUntilItIsClosed)
{
    const Ref<FormDeJanela> solta = Form("solta");
    m_Camada->NaModal["x.pdf"] = [&] {
        m_Janelas->Avisa("a", "b");
        Mostra(solta);
        m_Camada->Visor->Retira();
    };
    NaModal(Form("detalhes"), [&] {
        EXPECT_TRUE(m_Janelas->MostraPDF("x.pdf", true));
        m_Janelas->Avisa("c", "d");
    });
    EXPECT_EQ(m_Vistos, (Textos{"pdf x.pdf sobre detalhes", "espera em x.pdf", "avisa b: a sobre x.pdf",
                                "faz solta solta sobre x.pdf ainda oculto", "mostra solta", "retira x.pdf",
                                "volta de x.pdf", "descarrega solta", "retira solta", "avisa d: c sobre detalhes"}));
}

TEST_F(JanelasTest, MostraEEspera_OfAWindowThatIsNoForms_IsInFrontUntilItIsClosed)
{
    const auto entrada = Novo<JanelaFalsa>(*m_Camada, "entrada");
    m_Camada->NaModal["entrada"] = [&] {
        m_Janelas->Avisa("a", "b");
        entrada->Retira();
    };
    m_Janelas->MostraEEspera(entrada);
    m_Janelas->Avisa("c", "d");
    EXPECT_EQ(Vistos(), (Textos{"espera em entrada", "avisa b: a sobre entrada", "retira entrada", "volta de entrada",
                                "avisa d: c"}));
}

TEST_F(JanelasTest, MostraPDF_WhenTheViewerIsDone_TellsTheHost)
{
    int fechados = 0;
    EXPECT_TRUE(m_Janelas->MostraPDF("a.pdf", false));
    m_Camada->Fechou(); // nobody asked to be told
    m_Janelas->FechouVisor = [&] {
        ++fechados;
        throw Falha(70);
    };
    EXPECT_EQ(fechados, 0);
    Vistos();
    m_Camada->Fechou();
    EXPECT_EQ(fechados, 1);
    EXPECT_EQ(Vistos(), Textos{"falha mostrada"});
}

TEST_F(JanelasTest, Distingue_OfSeveralWindowsOfATool_NumbersTheLaterOnes)
{
    const DistincaoDeJanela fotos{"fotos", "trabalho"};
    const Ref<FormDeJanela> primeira = Form("a");
    const auto abre = [&](const DistincaoDeJanela &qual, const Ref<IForm> &form) {
        m_Janelas->Distingue(qual, [&] { Mostra(form); });
        return Vistos().front();
    };
    EXPECT_EQ(abre(fotos, primeira), "faz a filha ainda oculto [fotos: trabalho]");
    EXPECT_EQ(abre(fotos, Form("b")), "faz b filha ainda oculto [fotos: trabalho (2)]");
    EXPECT_EQ(abre({"outros", "resto"}, Form("c")), "faz c filha ainda oculto [outros: resto]");
    EXPECT_EQ(abre(fotos, Form("d")), "faz d filha ainda oculto [fotos: trabalho (3)]");
    m_Janelas->Descarrega(primeira);
    Vistos();
    EXPECT_EQ(abre(fotos, Form("e")), "faz e filha ainda oculto [fotos: trabalho]");
    Mostra(Form("f"));
    EXPECT_EQ(Vistos().front(), "faz f filha ainda oculto");
}

TEST_F(JanelasTest, Distingue_WhatStandsInFrontOfAnother_HasNoDistinction)
{
    m_Janelas->Distingue({"fotos", "trabalho"}, [&] { NaModal(Form("detalhes"), [&] { Mostra(Form("solta")); }); });
    EXPECT_EQ(m_Vistos.front(), "faz solta solta sobre detalhes ainda oculto");
}

TEST_F(JanelasTest, Distingue_FaultOfTheTool_IsShownAndTheDistinctionEnds)
{
    m_Janelas->Distingue({"fotos", "trabalho"}, [] { throw Falha(5); });
    Mostra(Form("a"));
    EXPECT_EQ(Vistos(), (Textos{"falha mostrada", "faz a filha ainda oculto", "mostra a"}));
}

TEST_F(JanelasTest, Screen_IsTheLayers)
{
    EXPECT_EQ(m_Janelas->NomeTipo(), "Janelas");
    EXPECT_EQ(m_Janelas->LarguraTela(), 1920);
    EXPECT_EQ(m_Janelas->AlturaTela(), 1080);
    m_Janelas->ProcessaMensagens();
    EXPECT_EQ(Vistos(), Textos{"mensagens"});
}

} // namespace
