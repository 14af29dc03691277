#include "tests/support/HostTeste.h"

#include "shell/Formulario.h"
#include "shell/ModGeral.h"
#include "tests/support/UmControle.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace {

using Linhas = std::vector<std::string>;

// A form with a button that closes it, as the module's forms are made.
class frmProva : public Formulario {
  public:
    std::string_view NomeTipo() const override { return "frmProva"; }
    ::Desenho Desenho() const override
    {
        return {.Caption = "Prova", .Raiz = EmColuna({{.Ajustes = AjustesCommandButton{}, .Nome = "cmdFechar"}})};
    }

    bool AoFechar = false; // answer to the unload: keeps the window
    std::function<void()> AntesDeFechar;
    int Ativacoes = 0;
    int Desativacoes = 0;

    void Carrega() { Carregar(); }
    void Fecha() { Descarregar(); }
    void Mostra(HostRoteirizado &host, bool modal)
    {
        Carregar();
        Ref<IForm> dono;
        Ref<Objeto> formClick;
        host.ObjInterface->MostraJanela(EsteForm(), modal ? std::int16_t{-1} : std::int16_t{0}, dono, 0, formClick);
        EXPECT_TRUE(formClick == EsteForm());
    }

  protected:
    void LigaControles() override
    {
        Toma(m_cmdFechar, "cmdFechar");
        Liga(m_cmdFechar->Click(), &frmProva::cmdFechar_Click);
    }
    void Form_Unload(bool &cancela) override
    {
        if (AntesDeFechar) {
            AntesDeFechar();
        }
        cancela = AoFechar;
    }
    void Form_Activate() override { ++Ativacoes; }
    void Form_Deactivate() override { ++Desativacoes; }

  private:
    void cmdFechar_Click() { Descarregar(); }

    Ref<ICommandButton> m_cmdFechar;
};

class PlataformaRoteirizadaTeste : public HostTeste {
  protected:
    Linhas Problemas()
    {
        host->Tela->FechaTudo();
        auto problemas = host->VerificaFim();
        host = Novo<HostRoteirizado>();
        InstalaHost(host);
        return problemas;
    }
};

TEST_F(PlataformaRoteirizadaTeste, MostraJanela_ModalThatStaysOpen_IsClosedAndAProblem)
{
    for (bool comRoteiro : {true, false}) {
        if (comRoteiro) {
            host->AoMostrarModal("frmProva", [](const Ref<IForm> &) {});
        }
        auto form = Novo<frmProva>();
        form->AoFechar = true;
        form->Mostra(*host, true);
        EXPECT_EQ(Plataforma()->NroForms(), 0);
        form = nullptr;
        Linhas esperado{"O roteiro deixou aberta a janela modal frmProva"};
        if (!comRoteiro) {
            esperado.insert(esperado.begin(), "INESPERADA: janela modal frmProva");
        }
        EXPECT_EQ(Problemas(), esperado);
    }
}

TEST_F(PlataformaRoteirizadaTeste, MostraJanela_WithAFaultOutOfTheScript_IsAProblemAndReturns)
{
    host->AoMostrarModal("frmProva", [](Pessoa &p) {
        p.Clica("cmdFechar");
        throw Falha(13);
    });
    Novo<frmProva>()->Mostra(*host, true);
    EXPECT_EQ(Problemas(), Linhas{"Falha que saiu do roteiro de frmProva: 13 Tipo de dado incompatível (ZTAVOREQUIP)"});
}

TEST_F(PlataformaRoteirizadaTeste, AoMostrarModal_ThatIsNeverShown_IsAProblem)
{
    host->AoMostrarModal("frmOutra", [](const Ref<IForm> &) {});
    EXPECT_EQ(Problemas(), Linhas{"Janela modal esperada que não foi mostrada: frmOutra"});
}

TEST_F(PlataformaRoteirizadaTeste, AoMostrarModalSempre_ServesEveryShowThatHasNoScriptOfItsOwn)
{
    Linhas ordem;
    const auto fecha = [&](const char *nome) {
        return [&ordem, nome](Pessoa &p) {
            ordem.emplace_back(nome);
            p.Clica("cmdFechar");
        };
    };
    host->AoMostrarModalSempre("frmProva", fecha("always"));
    host->AoMostrarModalSempre("frmOutra", fecha("never"));
    host->AoMostrarModal("frmProva", fecha("once"));
    for (int i = 0; i < 3; ++i) {
        Novo<frmProva>()->Mostra(*host, true);
    }
    EXPECT_EQ(ordem, (Linhas{"once", "always", "always"}));
}

TEST_F(PlataformaRoteirizadaTeste, RespondeSempre_ServesEveryQuestionThatHasNoAnswerOfItsOwnAndRespondeQualquerTheRest)
{
    bool resposta = true;
    host->Tela->RespondeQualquer([&] { return resposta; });
    host->RespondeSempre("Confirma?", true);
    host->RespondeSempre("Nunca?", true);
    host->Responde("Confirma?", false);
    EXPECT_FALSE(Plataforma()->PerguntaSimNao("Confirma?", "", true));
    EXPECT_TRUE(Plataforma()->PerguntaSimNao("Outra?", "", false));
    resposta = false;
    EXPECT_FALSE(Plataforma()->PerguntaSimNao("Outra?", "", true));
    EXPECT_TRUE(Plataforma()->PerguntaSimNao("Confirma?", "", false));
    EXPECT_TRUE(Plataforma()->PerguntaSimNao("Confirma?", "", false));
}

TEST_F(PlataformaRoteirizadaTeste, MostraJanela_Wrapping_GivesTheFormAWindowOfTheHosts)
{
    host->Tela->EmbrulhaForms = true;
    auto form = Novo<frmProva>();
    form->Mostra(*host, false);
    auto hospedeiro = form->frmParent();
    ASSERT_TRUE(hospedeiro);
    EXPECT_THROW(hospedeiro->frmParent(), Falha);
    EXPECT_NE(hospedeiro->hwnd(), form->hwnd());
    hospedeiro->ZOrder(0);
    EXPECT_TRUE(host->Contem("frmHospedeiro.ZOrder(0)"));
    Plataforma()->Descarrega(hospedeiro); // no form of the component
    EXPECT_EQ(Plataforma()->NroForms(), 1);
}

TEST_F(PlataformaRoteirizadaTeste, Descarrega_OfAFormWhoseUnloadFaults_RaisesAndKeepsItOpen)
{
    auto form = Novo<frmProva>();
    form->Carrega();
    form->AntesDeFechar = [] { throw Falha(91); };
    EXPECT_THROW(form->Fecha(), Falha);
    EXPECT_EQ(Plataforma()->NroForms(), 1);
    form->AntesDeFechar = nullptr;
}

TEST_F(PlataformaRoteirizadaTeste, Ativa_OfAnotherWindow_DeactivatesTheFirstAndComesBackWhenItCloses)
{
    auto primeira = Novo<frmProva>();
    auto segunda = Novo<frmProva>();
    primeira->Mostra(*host, false);
    host->Tela->RodaMensagens();
    segunda->Mostra(*host, false);
    host->Tela->RodaMensagens();
    EXPECT_EQ(primeira->Desativacoes, 1);
    EXPECT_EQ(segunda->Ativacoes, 1);
    host->Tela->FechaPelaPessoa(segunda);
    host->Tela->RodaMensagens();
    EXPECT_EQ(primeira->Ativacoes, 2);
    EXPECT_FALSE(host->Contem("Plataforma.Descarrega"));
}

TEST_F(PlataformaRoteirizadaTeste, Posta_OfAMessageThatFaults_IsAProblemAndRunsTheOthers)
{
    int vezes = 0;
    host->Tela->Posta([] { throw Falha(6); });
    host->Tela->Posta([&] { ++vezes; });
    EXPECT_EQ(vezes, 0);
    Plataforma()->ProcessaMensagens();
    Plataforma()->ProcessaMensagens();
    EXPECT_EQ(vezes, 1);
    EXPECT_EQ(Problemas(),
              Linhas{"Falha sem tratamento numa mensagem: 6 Valor grande demais para o seu tipo (ZTAVOREQUIP)"});
}

TEST_F(PlataformaRoteirizadaTeste, SetFocusAndZOrder_OfAnOpenForm_AreNoted)
{
    auto form = Novo<frmProva>();
    form->Mostra(*host, false);
    host->LimpaRegistro();
    const std::int32_t antes = host->Chamadas();
    form->ZOrder(0);
    form->SetFocus();
    EXPECT_EQ(host->Registro(), (Linhas{"frmProva.ZOrder(0)", "frmProva.SetFocus()"}));
    EXPECT_EQ(host->Chamadas(), antes);
}

TEST_F(PlataformaRoteirizadaTeste, Dialogo_WithAChosenFile_GivesItsNameAndOtherwiseKeepsTheOld)
{
    auto form = Novo<frmProva>();
    auto dialogo = CriadoPeloHost<ICommonDialog>(form, Chamado<AjustesCommonDialog>("cdAbre"));
    dialogo->DefineFilter("PDF|*.pdf");
    dialogo->ShowOpen(); // without a choice
    EXPECT_EQ(dialogo->FileName(), "");
    host->LimpaRegistro();
    host->EscolheArquivo("C:\\DOC\\A.PDF");
    host->CancelaDialogo();
    dialogo->ShowOpen();
    dialogo->ShowOpen();
    EXPECT_EQ(dialogo->FileName(), "C:\\DOC\\A.PDF");
    EXPECT_EQ(host->Registro(), (Linhas{"cdAbre.ShowOpen(\"PDF|*.pdf\", \"\", \"\") -> \"C:\\DOC\\A.PDF\"",
                                        "cdAbre.ShowOpen(\"PDF|*.pdf\", \"\", \"\") -> cancelado"}));
    host->EscolheArquivoSempre("C:\\DOC\\B.PDF");
    dialogo->ShowOpen();
    EXPECT_EQ(dialogo->FileName(), "C:\\DOC\\B.PDF");
    dialogo = nullptr;
    form = nullptr;
    EXPECT_EQ(Problemas(), Linhas{"INESPERADA: diálogo de arquivo \"\""});
}

} // namespace
