#pragma once

#include "tests/support/CenarioDeLista.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/UmControle.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

struct ColunaEsperada {
    std::string Titulo;
    int Largura;
    std::string Marca = "";
};

// What every controller of a list does, whatever it lists. A case is a ComLista with
//   Nome          the controller's class
//   Carregamento  the procedure that loads, as a path tells it, and Enche, the one in it that fills the list
//   ItemMenu      under which a fault of a command is shown, and Detalhe, the command itself for the details
//   Janela        the class of the window that the commands open
//   Pergunta      before a row goes
//   Colunas()     the columns that the list gets
//   PoeLinhas(n)  sees to it that the next loading brings n rows
//   Carrega(list) loads
//   Inclui(p)     what the person does in the window of a new row
//   DetalhesVistos()      which rows the windows of details show, from 1
//   MenuAoCarregar()      the enabled items when rows have come and nothing else has happened
//   MenuDaLinha(row, of)  and when a row is current
template <class Caso> class ControladorDeLista : public Caso {
};

TYPED_TEST_SUITE_P(ControladorDeLista);

TYPED_TEST_P(ControladorDeLista, Carrega_Columns_ConfiguredWithTitleWidthAndMark)
{
    EXPECT_EQ(this->controlador->NomeTipo(), this->Nome);
    EXPECT_TRUE(this->Carrega(this->lista));
    const std::vector<ColunaEsperada> esperadas = this->Colunas();
    const auto &colunas = ComoTipo<ztList>(this->lista)->Colunas();
    ASSERT_EQ(colunas.size(), esperadas.size());
    for (std::size_t i = 0; i < esperadas.size(); ++i) {
        EXPECT_EQ(colunas[i].Titulo, esperadas[i].Titulo);
        EXPECT_EQ(colunas[i].Chave, esperadas[i].Titulo);
        EXPECT_EQ(colunas[i].Largura, esperadas[i].Largura);
        EXPECT_EQ(colunas[i].Visivel, esperadas[i].Largura > 0);
        EXPECT_EQ(colunas[i].Marca, esperadas[i].Marca);
        EXPECT_EQ(colunas[i].Alinhamento, 0);
    }
}

TYPED_TEST_P(ControladorDeLista, Carrega_NoRow_EmptyListAndOnlyNovo)
{
    this->PoeLinhas(0);
    EXPECT_TRUE(this->Carrega(this->lista));
    EXPECT_EQ(this->lista->NroItens(), 0);
    EXPECT_EQ(MenuHabilitado(this->lista), SoNovo);
    auto operador = this->Operador();
    FAZ(operador, Foco("ztLista"));
    EXPECT_EQ(MenuHabilitado(this->lista), SoNovo);
    for (const std::string item : {"Editar", "Detalhes", "Excluir"}) {
        NAO_FAZ(operador, EscolheMenu("ztLista", "mnuZTLObj" + item));
    }
}

TYPED_TEST_P(ControladorDeLista, Carrega_Steps_ColumnsThenMenuThenRows)
{
    this->PoeLinhas(2);
    const std::string colunas = std::to_string(this->Colunas().size());
    Textos esperados;
    for (std::size_t coluna = 1; coluna <= this->Colunas().size(); ++coluna) {
        esperados.push_back(std::to_string(coluna) + "/0/4");
    }
    for (const std::string menu : {"/0/3", "/0/2", "/0/1", "/2/1"}) {
        esperados.push_back(colunas + menu);
    }
    for (std::size_t itens = 2; itens <= this->MenuAoCarregar().size(); ++itens) {
        esperados.push_back(colunas + "/2/" + std::to_string(itens));
    }
    EXPECT_EQ(RetratosDaLista(this->lista, [&] { this->Carrega(this->lista); }), esperados);
    EXPECT_EQ(MenuHabilitado(this->lista), this->MenuAoCarregar());
}

TYPED_TEST_P(ControladorDeLista, Carrega_NoList_Fault91WhileItIsConfigured)
{
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP < gsubConfigLista < " + this->Carregamento, [&] { this->Carrega(nullptr); }));
}

TYPED_TEST_P(ControladorDeLista, Carrega_ColumnsFail_ListAndWhatIsListedAreBoundAllTheSame)
{
    {
        const auto falha = FalhaAoMudar(this->lista);
        EXPECT_TRUE(Lanca(70, "Fora < gsubConfigLista < " + this->Carregamento, [&] { this->Carrega(this->lista); }));
    }
    this->host->AoMostrarModal(this->Janela, [](Pessoa &p) { FAZ(p, Clica("cmdCancelar")); });
    this->lista->ItemMenuClicado().dispara(MenuLista::Novo);
    EXPECT_TRUE(this->host->Erros().empty());
}

TYPED_TEST_P(ControladorDeLista, Carrega_PointerFails_RowsAsFarAsTheyCame)
{
    this->PoeLinhas(2);
    this->Carrega(this->lista);
    this->PoeLinhas(3);
    const auto falha = [&](std::int32_t vez) {
        this->host->FalhaEm("Plataforma.Ponteiro", vez);
        return Lanca(51, "Plataforma.Ponteiro < " + this->Enche + " < " + this->Carregamento,
                     [&] { this->Carrega(this->lista); });
    };
    EXPECT_TRUE(falha(1)); // the hourglass
    EXPECT_EQ(this->lista->NroItens(), 2);
    EXPECT_TRUE(falha(2)); // back to the default
    EXPECT_EQ(this->lista->NroItens(), 3);
    EXPECT_EQ(this->host->Tela->Ponteiro(), PonteiroAmpulheta);
}

// Every request for memory in turn is refused; whatever procedure it hits, the path tells so.
TYPED_TEST_P(ControladorDeLista, Carrega_OutOfMemoryAnywhere_PathOfEveryProcedure)
{
    this->PoeLinhas(2);
    this->Carrega(
        this->lista); // it has room for its handlers from now on, so that all attempts ask for the same memory
    const auto fontes = FontesSemMemoria([&] { this->Carrega(this->lista); });
    for (const std::string &procedimento :
         {std::string(), this->Nome + ".Colunas (Property Get) < ",
          this->Nome + ".HabilitaMenu < " + this->Nome + ".MenuInicial < ", this->Enche + " < "}) {
        EXPECT_TRUE(fontes.contains("ZTAVOREQUIP < " + procedimento + this->Carregamento)) << procedimento;
    }
    for (const std::string &fonte : fontes) {
        EXPECT_TRUE(fonte.ends_with(" < " + this->Carregamento)) << fonte;
    }
    EXPECT_TRUE(this->Carrega(this->lista));
    EXPECT_EQ(this->lista->NroItens(), 2);
}

TYPED_TEST_P(ControladorDeLista, HabilitaMenu_EachEvent_AsTheCurrentRowAndTheNumberOfRowsSay)
{
    this->PoeLinhas(2);
    this->Carrega(this->lista);
    auto operador = this->Operador();
    const auto faz = [&](const std::function<void()> &gesto) {
        EstragaMenu(this->lista);
        gesto();
        return MenuHabilitado(this->lista);
    };
    FAZ(operador, Foco("cmdFora"));
    EXPECT_EQ(faz([&] { FAZ(operador, Foco("ztLista")); }), this->MenuDaLinha(1, 2)); // which the first row becomes
    EXPECT_EQ(faz([&] { FAZ(operador, ClicaLinha("ztLista", 2)); }), this->MenuDaLinha(2, 2));
    EXPECT_EQ(faz([&] { this->lista->GotFocus().dispara(); }), this->MenuDaLinha(2, 2));
    EXPECT_EQ(faz([&] { this->lista->ItemClick().dispara(); }), this->MenuDaLinha(2, 2));
    EXPECT_EQ(faz([&] { this->lista->DepoisDeRemoverItem().dispara(); }), this->MenuDaLinha(2, 2));
    this->lista->Limpa(std::nullopt);
    EXPECT_EQ(faz([&] { this->lista->GotFocus().dispara(); }), SoNovo);
}

TYPED_TEST_P(ControladorDeLista, HabilitaMenu_Fails_TwoEventsReportAndOnePassesOn)
{
    this->PoeLinhas(1);
    this->Carrega(this->lista);
    const auto dispara = [&](Evento<> &evento) {
        EstragaMenu(this->lista);
        const auto falha = FalhaAoMudar(this->lista);
        evento.dispara();
    };
    const std::string fonte = "Fora < " + this->Nome + ".HabilitaMenu";
    dispara(this->lista->GotFocus());
    EXPECT_TRUE(this->MostrouErro(1, this->Nome + ".m_ZtList_GotFocus", 70, fonte));
    dispara(this->lista->ItemClick());
    EXPECT_TRUE(this->MostrouErro(2, this->Nome + ".m_ZtList_ItemClick", 70, fonte));
    EXPECT_TRUE(Lanca(70, fonte + " < " + this->Nome + ".m_ZtList_DepoisDeRemoverItem",
                      [&] { dispara(this->lista->DepoisDeRemoverItem()); }));
    EXPECT_EQ(this->host->Erros().size(), 2U);
}

TYPED_TEST_P(ControladorDeLista, ItemMenuClicado_AnotherKey_DoesNothing)
{
    this->PoeLinhas(1);
    this->Carrega(this->lista);
    this->host->LimpaRegistro();
    for (const std::string chave :
         {"mnuZTLObjExcluir", "mnuZTLObjLocalizar", "mnuZTLObjAtualizar", "mnuZTLObjnovo", "MNUZTLOBJNOVO", ""}) {
        this->lista->ItemMenuClicado().dispara(chave);
    }
    EXPECT_EQ(this->host->Registro(), Textos{});
    EXPECT_EQ(this->lista->NroItens(), 1);
}

TYPED_TEST_P(ControladorDeLista, EditarAndDetalhes_NoCurrentRow_Fault9)
{
    this->PoeLinhas(1);
    this->Carrega(this->lista);
    this->lista->ItemMenuClicado().dispara(MenuLista::Editar);
    EXPECT_TRUE(this->MostrouErro(1, this->ItemMenu, 9, "ZTAVOREQUIP < " + this->Nome + ".Editar"));
    this->lista->ItemMenuClicado().dispara(MenuLista::Detalhes);
    EXPECT_TRUE(this->MostrouErro(2, this->ItemMenu, 9, "ZTAVOREQUIP < " + this->Detalhe));
}

TYPED_TEST_P(ControladorDeLista, Detalhes_SeveralRows_AWindowEachAndNothingRefreshed)
{
    this->PoeLinhas(2);
    this->Carrega(this->lista);
    this->host->LimpaRegistro();
    const auto arranjo = ComoTipo<ztList>(this->lista)->Arranjo();
    for (const std::int32_t linha : {1, 2, 2}) {
        this->Comanda("Detalhes", linha);
    }
    EXPECT_EQ(this->host->Conta("ObjInterface.MostraJanela(" + this->Janela + ", modal=False)"), 3);
    EXPECT_EQ(this->DetalhesVistos(), (Textos{"1", "2", "2"}));
    EXPECT_EQ(ComoTipo<ztList>(this->lista)->Arranjo(), arranjo);
    this->host->LimpaRegistro();
    for (const auto &aberta : this->host->Tela->FormsAbertos(this->Janela)) {
        Pessoa pessoa(aberta);
        FAZ(pessoa, Clica("cmdCancelar"));
    }
    EXPECT_TRUE(this->host->Tela->FormsAbertos(this->Janela).empty());
    EXPECT_FALSE(this->host->Contem("EquiptoRN."));
}

TYPED_TEST_P(ControladorDeLista, Excluir_NoIsAnswered_RowStaysAndNothingElseIsAsked)
{
    this->PoeLinhas(2);
    this->Carrega(this->lista);
    std::int32_t recebida = -7;
    const auto espia = this->lista->AntesDeRemoverItem().liga([&](const std::int32_t &linha) { recebida = linha; });
    this->host->LimpaRegistro();
    this->host->Responde(this->Pergunta, false);
    this->Comanda("Excluir", 2);
    EXPECT_EQ(recebida, 0);
    EXPECT_EQ(this->lista->NroItens(), 2);
    EXPECT_EQ(this->host->Registro(),
              (Textos{"Plataforma.PerguntaSimNao(\"" + this->Pergunta + "\", \"Atenção\", padrao=Não) -> Não"}));
}

// A fault gives no answer, so the row given is not written.
TYPED_TEST_P(ControladorDeLista, Excluir_RowThatIsNotThere_Fault9AndTheRowNumberStays)
{
    this->PoeLinhas(2);
    this->Carrega(this->lista);
    this->host->LimpaRegistro();
    this->host->Responde(this->Pergunta, true);
    std::int32_t linha = 3;
    this->lista->AntesDeRemoverItem().dispara(linha);
    EXPECT_EQ(linha, 3);
    EXPECT_TRUE(this->MostrouErro(1, this->Nome + ".m_ZtList_AntesDeRemoverItem", 9,
                                  "ZTAVOREQUIP < " + this->Nome + ".Excluir"));
    EXPECT_FALSE(this->host->Contem("EquiptoRN."));
}

TYPED_TEST_P(ControladorDeLista, Carrega_AnotherList_LetsGoOfTheFirstAndKeepsNeitherAlive)
{
    this->PoeLinhas(1);
    this->Carrega(this->lista);
    Ref<IztList> outra = CriadoPeloHost<IztList>(this->dona, Chamado<AjustesZtList>("ztOutra"));
    this->Carrega(outra);
    EXPECT_EQ(outra->NroItens(), 1);
    EstragaMenu(this->lista);
    this->lista->GotFocus().dispara();
    EXPECT_EQ(MenuHabilitado(this->lista), MenuEstragado);
    RefFraca<IztList> fraca = outra;
    outra = nullptr;
    EXPECT_TRUE(fraca.Nada());
}

TYPED_TEST_P(ControladorDeLista, Released_ListEventsNoLongerReachIt)
{
    this->PoeLinhas(1);
    this->Carrega(this->lista);
    const RefFraca<Objeto> fraca = this->controlador;
    this->controlador = nullptr;
    EXPECT_TRUE(fraca.Nada());

    this->host->LimpaRegistro();
    EstragaMenu(this->lista);
    auto operador = this->Operador();
    FAZ(operador, ClicaLinha("ztLista", 1));
    this->lista->DepoisDeRemoverItem().dispara();
    EXPECT_EQ(MenuHabilitado(this->lista), MenuEstragado);
    this->lista->ItemMenuClicado().dispara(MenuLista::Novo);
    EXPECT_EQ(this->host->Registro(), Textos{});
}

TYPED_TEST_P(ControladorDeLista, Released_WhileItsWindowIsOpen_FinishesTheCommandAndEnds)
{
    this->PoeLinhas(1);
    this->Carrega(this->lista);
    const RefFraca<Objeto> fraca = this->controlador;
    this->host->AoMostrarModal(this->Janela, [&](Pessoa &p) {
        this->controlador = nullptr;
        EXPECT_FALSE(fraca.Nada());
        this->Inclui(p);
    });
    this->Comanda("Novo");
    EXPECT_TRUE(fraca.Nada());
    EXPECT_EQ(this->lista->NroItens(), 2);
}

REGISTER_TYPED_TEST_SUITE_P(
    ControladorDeLista, Carrega_Columns_ConfiguredWithTitleWidthAndMark, Carrega_NoRow_EmptyListAndOnlyNovo,
    Carrega_Steps_ColumnsThenMenuThenRows, Carrega_NoList_Fault91WhileItIsConfigured,
    Carrega_ColumnsFail_ListAndWhatIsListedAreBoundAllTheSame, Carrega_PointerFails_RowsAsFarAsTheyCame,
    Carrega_OutOfMemoryAnywhere_PathOfEveryProcedure, HabilitaMenu_EachEvent_AsTheCurrentRowAndTheNumberOfRowsSay,
    HabilitaMenu_Fails_TwoEventsReportAndOnePassesOn, ItemMenuClicado_AnotherKey_DoesNothing,
    EditarAndDetalhes_NoCurrentRow_Fault9, Detalhes_SeveralRows_AWindowEachAndNothingRefreshed,
    Excluir_NoIsAnswered_RowStaysAndNothingElseIsAsked, Excluir_RowThatIsNotThere_Fault9AndTheRowNumberStays,
    Carrega_AnotherList_LetsGoOfTheFirstAndKeepsNeitherAlive, Released_ListEventsNoLongerReachIt,
    Released_WhileItsWindowIsOpen_FinishesTheCommandAndEnds);
