#pragma once

#include "tests/sensors/CenarioSensores.h"
#include "tests/support/ControladorDeLista.h"

#include <cstdint>
#include <string>

// What the two controllers do that list the records of a collection in memory, whose edits stay there until the
// equipment is sent. A case is one of ControladorDeLista and has besides
//   Form, Colecao, Letra   the shared form, the collection's class and the letter of its keys
//   Campo, Descricao(record)   a field of the form, and what it writes, which is the list's second column
//   ColunaChave   the column of the keys
//   MenorSalvo    the least number of a record that the service knows; 0 and less are new
//   PoeRegistro(number, text), Item(key), Quantos(), Limpa()   of the collection, and Numera(record, number)
//   CarregaNada(), EncerraDono()   loads without an owner; ends the owner
//   MarcaDono   whether a change of a record marks the owner; DonoMarcado(), DesmarcaDono()
//   ConfereNovo(record)   what else a record has that Inclui has filled in
// and counts the controller's events in `alteracoes`.
template <class Caso> class ControladorDeColecao : public Caso {
  protected:
    std::string Chave(std::int32_t numero) { return this->Letra + std::to_string(numero); }
    // In the form: the field gets a text, and a button is pressed.
    void NoForm(const std::string &texto, const std::string &botao)
    {
        this->host->AoMostrarModal(this->Janela, [this, texto, botao](Pessoa &p) {
            EXPECT_TRUE(this->Aberta(this->Janela) == FormCompartilhado<typename Caso::Form>());
            FAZ(p, Preenche(this->Campo, texto));
            FAZ(p, Clica(botao));
        });
    }
    void Exclui(std::int32_t linha)
    {
        this->host->Responde(this->Pergunta, true);
        this->Comanda("Excluir", linha);
    }
    void PoeECarrega(std::int32_t linhas)
    {
        this->PoeLinhas(linhas);
        this->Carrega(this->lista);
        this->host->LimpaRegistro();
    }
    void ConfereEventos(int quantos)
    {
        EXPECT_EQ(this->alteracoes, quantos);
        EXPECT_EQ(this->DonoMarcado(), this->MarcaDono && quantos > 0);
    }
};

TYPED_TEST_SUITE_P(ControladorDeColecao);

TYPED_TEST_P(ControladorDeColecao, Carrega_NoOwner_Fault91WithTheListEmptiedUnderTheHourglass)
{
    this->PoeECarrega(2);
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP < " + this->Enche + " < " + this->Carregamento, [&] { this->CarregaNada(); }));
    EXPECT_EQ(this->lista->NroItens(), 0);
    EXPECT_EQ(this->host->Tela->Ponteiro(), PonteiroAmpulheta);
}

TYPED_TEST_P(ControladorDeColecao, HabilitaMenu_ReadOnly_OnlyDetalhesAndOnlyWithRows)
{
    EXPECT_TRUE(this->Carrega(this->lista, true));
    EXPECT_EQ(MenuHabilitado(this->lista), Textos{});

    this->PoeLinhas(2);
    this->Carrega(this->lista, true);
    this->Comanda("Detalhes", 2);
    EXPECT_EQ(this->host->Conta("ObjInterface.MostraJanela(" + this->Janela + ", modal=False)"), 1);
    EXPECT_EQ(MenuHabilitado(this->lista), Textos{"Detalhes"});
    auto operador = this->Operador();
    for (const std::string item : {"Novo", "Editar", "Excluir"}) {
        NAO_FAZ(operador, EscolheMenu("ztLista", "mnuZTLObj" + item));
    }
    this->ConfereEventos(0);
}

TYPED_TEST_P(ControladorDeColecao, Novo_Confirmed_CopyInTheListAndOneEvent)
{
    this->PoeECarrega(1);
    this->host->AoMostrarModal(this->Janela, [this](Pessoa &p) {
        EXPECT_TRUE(this->Aberta(this->Janela) == FormCompartilhado<typename TypeParam::Form>());
        EXPECT_EQ(this->Quantos(), 1); // in no list yet
        this->Inclui(p);
    });
    this->Comanda("Novo");

    ASSERT_EQ(this->Quantos(), 2);
    const auto novo = this->Item(this->Chave(2));
    EXPECT_EQ(this->Descricao(*novo), "nova");
    EXPECT_TRUE(novo->Alterado);
    EXPECT_TRUE(novo->Ativo);
    this->ConfereNovo(*novo);
    EXPECT_FALSE(this->Item(this->Chave(1))->Alterado);
    this->ConfereEventos(1);
    EXPECT_EQ(Coluna(this->lista, 2), (Textos{"item 1", "nova"}));
    EXPECT_TRUE(RegistroIgual(
        this->host->RegistroDe({"Plataforma.Ponteiro", "Plataforma.Descarrega", "ObjInterface"}),
        {"Plataforma.Ponteiro := 0", "ObjInterface.MostraJanela(" + this->Janela + ", modal=True)",
         "Plataforma.Descarrega(" + this->Janela + ")", "Plataforma.Ponteiro := 11", "Plataforma.Ponteiro := 0"}));
}

TYPED_TEST_P(ControladorDeColecao, NovoAndEditar_Cancelled_NothingHappens)
{
    this->PoeECarrega(2);
    this->NoForm("abandonado", "cmdCancelar");
    this->Comanda("Novo");
    this->NoForm("abandonado", "cmdCancelar");
    this->Comanda("Editar", 1);

    EXPECT_EQ(this->Quantos(), 2);
    EXPECT_EQ(this->Descricao(*this->Item(this->Chave(1))), "item 1");
    EXPECT_FALSE(this->Item(this->Chave(1))->Alterado);
    this->ConfereEventos(0);
    EXPECT_EQ(this->lista->ItemAtual(), 1);
    EXPECT_EQ(this->host->Conta("Plataforma.Ponteiro := 11"), 0); // not loaded again
}

TYPED_TEST_P(ControladorDeColecao, Editar_Confirmed_ListedRecordIsTheOneThatChanges)
{
    this->PoeECarrega(2);
    const auto registro = this->Item(this->Chave(2));
    this->host->AoMostrarModal(this->Janela, [&](Pessoa &p) {
        FAZ(p, Preenche(this->Campo, "outra"));
        EXPECT_EQ(this->Descricao(*registro), "item 2"); // only on OK
        FAZ(p, Clica("cmdOK"));
    });
    this->Comanda("Editar", 2);

    EXPECT_EQ(this->Item(this->Chave(2)), registro);
    EXPECT_EQ(this->Descricao(*registro), "outra");
    EXPECT_TRUE(registro->Alterado);
    EXPECT_FALSE(this->Item(this->Chave(1))->Alterado);
    this->ConfereEventos(1);
    EXPECT_EQ(Coluna(this->lista, 2), (Textos{"item 1", "outra"}));
}

// The record and its owner are complete when the event comes, and the list is loaded again only behind it.
TYPED_TEST_P(ControladorDeColecao, Alterado_EachOperation_AfterTheRecordAndBeforeTheList)
{
    this->PoeECarrega(2);
    Textos vistos;
    const auto ouve = this->controlador->Alterado().liga([&] {
        const auto ultimo = this->Item(this->Chave(3));
        vistos = Coluna(this->lista, 2);
        vistos.push_back(this->Descricao(*ultimo) + (ultimo->Alterado ? " alterado" : "") +
                         (ultimo->Ativo ? "" : " inativo"));
        EXPECT_EQ(this->DonoMarcado(), this->MarcaDono);
        this->DesmarcaDono();
    });

    this->host->AoMostrarModal(this->Janela, [this](Pessoa &p) { this->Inclui(p); });
    this->Comanda("Novo");
    EXPECT_EQ(vistos, (Textos{"item 1", "item 2", "nova alterado"}));
    EXPECT_EQ(Coluna(this->lista, 2), (Textos{"item 1", "item 2", "nova"}));

    this->Numera(*this->Item(this->Chave(3)), 103);
    this->Item(this->Chave(3))->Alterado = false;
    this->NoForm("outra", "cmdOK");
    this->Comanda("Editar", 3);
    EXPECT_EQ(vistos, (Textos{"item 1", "item 2", "nova", "outra alterado"}));
    EXPECT_EQ(Coluna(this->lista, 2), (Textos{"item 1", "item 2", "outra"}));

    this->Item(this->Chave(3))->Alterado = false;
    this->Exclui(3);
    EXPECT_EQ(vistos, (Textos{"item 1", "item 2", "outra", "outra alterado inativo"}));
    EXPECT_EQ(Coluna(this->lista, 2), (Textos{"item 1", "item 2"}));
    EXPECT_EQ(this->alteracoes, 3);
    EXPECT_FALSE(this->DonoMarcado()); // nothing is written behind the event
}

TYPED_TEST_P(ControladorDeColecao, Excluir_NoIsAnswered_RecordStaysAndNothingIsLookedUp)
{
    this->PoeECarrega(2);
    this->host->Responde(this->Pergunta, false);
    this->Comanda("Excluir", 2);
    EXPECT_TRUE(this->Item(this->Chave(2))->Ativo);
    EXPECT_FALSE(this->Item(this->Chave(2))->Alterado);
    this->ConfereEventos(0);

    this->Limpa();
    this->host->Responde(this->Pergunta, false);
    std::int32_t linha = 1;
    this->lista->AntesDeRemoverItem().dispara(linha);
    EXPECT_EQ(linha, 0);
    EXPECT_TRUE(this->host->Erros().empty());
}

TYPED_TEST_P(ControladorDeColecao, Excluir_SavedRecord_StaysInactiveForTheService)
{
    this->PoeECarrega(2);
    this->Exclui(2);
    ASSERT_EQ(this->Quantos(), 2);
    EXPECT_FALSE(this->Item(this->Chave(2))->Ativo);
    EXPECT_TRUE(this->Item(this->Chave(2))->Alterado);
    EXPECT_FALSE(this->Item(this->Chave(1))->Alterado);
    this->ConfereEventos(1);
    EXPECT_EQ(Coluna(this->lista, this->ColunaChave), Textos{this->Chave(1)});
    EXPECT_EQ(MenuHabilitado(this->lista), MenuCheio);            // of the one row that is left
    EXPECT_EQ(this->host->Conta("Plataforma.Ponteiro := 11"), 0); // the list itself takes the row off
    this->Exclui(1);
    EXPECT_EQ(MenuHabilitado(this->lista), SoNovo);
}

TYPED_TEST_P(ControladorDeColecao, Excluir_NeverSavedRecord_LeavesTheCollectionAndItsKeyIsNotUsedAgain)
{
    this->PoeLinhas(1);
    const RefFraca<Objeto> retirado = this->PoeRegistro(0, "novo");
    this->Carrega(this->lista);
    this->Exclui(2);
    EXPECT_EQ(this->Quantos(), 1);
    EXPECT_TRUE(retirado.Nada());
    this->ConfereEventos(1);
    EXPECT_EQ(this->PoeRegistro(0, "outro")->Chave(), this->Chave(3));
}

TYPED_TEST_P(ControladorDeColecao, Excluir_NumberBelowTheLeastOrTheLeast_LeavesTheCollectionOrStays)
{
    this->PoeRegistro(this->MenorSalvo, "salvo");
    this->PoeRegistro(-1, "nunca salvo");
    this->Carrega(this->lista);
    this->Exclui(2);
    this->Exclui(1);
    ASSERT_EQ(this->Quantos(), 1);
    EXPECT_FALSE(this->Item(this->Chave(1))->Ativo);
    EXPECT_TRUE(this->Item(this->Chave(1))->Alterado);
}

TYPED_TEST_P(ControladorDeColecao, StaleKey_ErrorBoxWithThePathAndTheRowStays)
{
    this->PoeECarrega(1);
    this->Limpa();
    const std::string fonte = "ZTAVOREQUIP < " + this->Colecao + ".Item (Property Get) < " + this->Nome + ".";
    this->Comanda("Editar", 1);
    EXPECT_TRUE(this->MostrouErro(1, this->ItemMenu, 5, fonte + "Editar"));
    this->Comanda("Detalhes");
    EXPECT_TRUE(this->MostrouErro(2, this->ItemMenu, 5, fonte + "Detalhes"));
    EXPECT_EQ(this->host->Erros()[1].Titulo, "Sistema de Autuações");
    this->host->Responde(this->Pergunta, true); // before anything is looked up
    std::int32_t linha = 1;
    this->lista->AntesDeRemoverItem().dispara(linha);
    EXPECT_TRUE(this->MostrouErro(3, this->Nome + ".m_ZtList_AntesDeRemoverItem", 5, fonte + "Excluir"));
    EXPECT_EQ(linha, 1);
    EXPECT_EQ(this->lista->NroItens(), 1);
    this->ConfereEventos(0);
}

TYPED_TEST_P(ControladorDeColecao, Novo_OwnerEnded_Fault91AndNoWindow)
{
    this->PoeECarrega(0);
    this->EncerraDono();
    this->Comanda("Novo");
    EXPECT_TRUE(this->MostrouErro(1, this->Janela + ".CarregaInclusao", 91, "ZTAVOREQUIP"));
    EXPECT_EQ(this->host->Conta("ObjInterface.MostraJanela(" + this->Janela), 0);
    EXPECT_TRUE(this->host->Tela->FormsAbertos(this->Janela).empty());
}

TYPED_TEST_P(ControladorDeColecao, Novo_FaultInAHandlerOfAlterado_ReachesTheErrorBox)
{
    this->PoeECarrega(0);
    const auto falha = this->controlador->Alterado().liga([] { throw Falha(1000, "dona", "não pode"); });
    this->host->AoMostrarModal(this->Janela, [this](Pessoa &p) { this->Inclui(p); });
    this->Comanda("Novo");
    EXPECT_TRUE(this->MostrouErro(1, this->ItemMenu, 1000, "dona < " + this->Nome + ".Novo"));
    EXPECT_EQ(this->Quantos(), 1); // what had been done stays
    this->ConfereEventos(1);
}

REGISTER_TYPED_TEST_SUITE_P(ControladorDeColecao, Carrega_NoOwner_Fault91WithTheListEmptiedUnderTheHourglass,
                            HabilitaMenu_ReadOnly_OnlyDetalhesAndOnlyWithRows, Novo_Confirmed_CopyInTheListAndOneEvent,
                            NovoAndEditar_Cancelled_NothingHappens, Editar_Confirmed_ListedRecordIsTheOneThatChanges,
                            Alterado_EachOperation_AfterTheRecordAndBeforeTheList,
                            Excluir_NoIsAnswered_RecordStaysAndNothingIsLookedUp,
                            Excluir_SavedRecord_StaysInactiveForTheService,
                            Excluir_NeverSavedRecord_LeavesTheCollectionAndItsKeyIsNotUsedAgain,
                            Excluir_NumberBelowTheLeastOrTheLeast_LeavesTheCollectionOrStays,
                            StaleKey_ErrorBoxWithThePathAndTheRowStays, Novo_OwnerEnded_Fault91AndNoWindow,
                            Novo_FaultInAHandlerOfAlterado_ReachesTheErrorBox);
