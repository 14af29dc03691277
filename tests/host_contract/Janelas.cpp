#include "tests/host_contract/ContratoHost.h"

#include <vector>

namespace {

TEST_P(ContratoHost, Forms_Loaded_AreOpenInTheirOrderShownOrNot)
{
    EXPECT_EQ(Plataforma()->NroForms(), 0);
    auto um = Novo<FormFalso>();
    auto dois = Novo<FormFalso>();
    um->Carrega();
    dois->Carrega();
    um->Carrega(); // already open
    ASSERT_EQ(Plataforma()->NroForms(), 2);
    EXPECT_TRUE(Plataforma()->FormAberto(0) == um);
    EXPECT_TRUE(Plataforma()->FormAberto(1) == dois);
    EXPECT_FALSE(um->Visible());
    EXPECT_EQ(NumeroDaFalha([] { Plataforma()->FormAberto(2); }), 9);
    EXPECT_EQ(NumeroDaFalha([] { Plataforma()->FormAberto(-1); }), 9);
    um->Fecha();
    ASSERT_EQ(Plataforma()->NroForms(), 1);
    EXPECT_TRUE(Plataforma()->FormAberto(0) == dois);
    dois->Fecha();
    EXPECT_EQ(NumeroDaFalha([] { Plataforma()->FormAberto(0); }), 9);
}

TEST_P(ContratoHost, Descarrega_OfAnOpenForm_AsksItOnceWhileItIsStillOpen)
{
    form->Fecha(); // it is not open
    form->Carrega();
    std::int32_t abertos = 0;
    form->NoUnload = [&] {
        abertos = Plataforma()->NroForms();
        form->Fecha(); // inside its unload
    };
    form->Fecha();
    form->NoUnload = nullptr;
    EXPECT_EQ(abertos, 1);
    EXPECT_EQ(Plataforma()->NroForms(), 0);
    form->Fecha();
    EXPECT_EQ(form->Unloads, 1);
}

TEST_P(ContratoHost, Descarrega_OfAFormThatCancels_LeavesItAsItWas)
{
    Mostra();
    form->CancelaUnload = true;
    form->Fecha();
    EXPECT_EQ(form->Unloads, 1);
    EXPECT_TRUE(form->Visible());
    EXPECT_EQ(Plataforma()->NroForms(), 1);
    form->CancelaUnload = false;
    form->Fecha();
    EXPECT_EQ(Plataforma()->NroForms(), 0);
}

TEST_P(ContratoHost, Descarrega_OfAForm_LetsItGoAndItCanBeLoadedAgain)
{
    Mostra();
    form->Fecha();
    Mostra();
    EXPECT_TRUE(form->Visible());
    EXPECT_EQ(Plataforma()->NroForms(), 1);
    RefFraca<FormFalso> vigia = form;
    form->Fecha();
    EXPECT_EQ(form->Unloads, 2);
    adaptador->DeixaPassar();
    form = nullptr;
    EXPECT_TRUE(vigia.Nada());
}

TEST_P(ContratoHost, MostraJanela_NotModal_ReturnsWithTheFormShown)
{
    Ref<Objeto> formClick;
    form->Mostra(adaptador->ObjInterface(), false, formClick);
    EXPECT_TRUE(form->Visible());
    EXPECT_EQ(form->Unloads, 0);
    EXPECT_TRUE(formClick == form);
    adaptador->DeixaPassar();
    EXPECT_GE(form->Ativacoes, 1);
    if (Ref<IForm> parent = form->frmParent()) {
        EXPECT_TRUE(parent->Visible());
        form->Fecha();
        EXPECT_FALSE(parent->Visible());
        EXPECT_TRUE(form->frmParent().Nada());
    } else {
        form->Fecha();
    }
}

TEST_P(ContratoHost, MostraJanela_OfAFormWithoutParentMember_ShowsItAllTheSame)
{
    auto semParent = Novo<FormSemParent>();
    Ref<Objeto> formClick;
    semParent->Mostra(adaptador->ObjInterface(), false, formClick);
    EXPECT_TRUE(semParent->Visible());
    semParent->Fecha();
    EXPECT_EQ(Plataforma()->NroForms(), 0);
}

TEST_P(ContratoHost, MostraJanela_Modal_ReturnsAfterTheUnload)
{
    std::vector<std::string> ordem;
    form->NoUnload = [&] { ordem.push_back("unload"); };
    adaptador->NaProximaModal("FormFalso", [&](const Ref<IForm> &mostrado) {
        EXPECT_TRUE(mostrado == form);
        EXPECT_TRUE(form->Visible());
        ordem.push_back("shown");
        form->Fecha();
    });
    Ref<Objeto> formClick;
    form->Mostra(adaptador->ObjInterface(), true, formClick);
    ordem.push_back("returned");
    EXPECT_EQ(ordem, (std::vector<std::string>{"shown", "unload", "returned"}));
    EXPECT_FALSE(form->Visible());
    EXPECT_EQ(Plataforma()->NroForms(), 0);
    form->NoUnload = nullptr;
}

TEST_P(ContratoHost, MostraJanela_ModalThatCancelsItsUnload_WaitsOn)
{
    adaptador->NaProximaModal("FormFalso", [&](const Ref<IForm> &) {
        form->CancelaUnload = true;
        form->Fecha();
        EXPECT_EQ(Plataforma()->NroForms(), 1);
        form->CancelaUnload = false;
        form->Fecha();
    });
    Ref<Objeto> formClick;
    form->Mostra(adaptador->ObjInterface(), true, formClick);
    EXPECT_EQ(form->Unloads, 2);
}

TEST_P(ContratoHost, MostraJanela_ModalInsideModal_ReturnsTheInnerFirst)
{
    auto fora = Novo<FormFalso>();
    auto dentro = Novo<FormFalso>();
    std::vector<std::string> ordem;
    adaptador->NaProximaModal("FormFalso", [&](const Ref<IForm> &) {
        adaptador->NaProximaModal("FormFalso", [&](const Ref<IForm> &mostrado) {
            EXPECT_TRUE(mostrado == dentro);
            EXPECT_EQ(Plataforma()->NroForms(), 2);
            dentro->Fecha();
        });
        Ref<Objeto> formClick;
        dentro->Mostra(adaptador->ObjInterface(), true, formClick);
        ordem.push_back("inner");
        EXPECT_TRUE(fora->Visible());
        fora->Fecha();
    });
    Ref<Objeto> formClick;
    fora->Mostra(adaptador->ObjInterface(), true, formClick);
    ordem.push_back("outer");
    EXPECT_EQ(ordem, (std::vector<std::string>{"inner", "outer"}));
}

TEST_P(ContratoHost, Caption_OfAShownForm_IsItsWindowsTextWhichCanBeWrittenAlone)
{
    Mostra();
    form->DefineCaption("Outro título");
    EXPECT_EQ(adaptador->TextoJanela(form), "Outro título");
    Plataforma()->DefineTextoJanela(form->hwnd(), "Título escrito");
    EXPECT_EQ(adaptador->TextoJanela(form), "Título escrito");
    EXPECT_EQ(form->Caption(), "Outro título");
}

} // namespace
