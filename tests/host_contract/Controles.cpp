#include "tests/host_contract/ContratoHost.h"

#include <utility>
#include <vector>

namespace {

using Textos = std::vector<std::string>;

// A piece with all that every kind of control keeps.
Peca Completa(AjustesPeca ajustes)
{
    return {.Ajustes = std::move(ajustes),
            .Nome = "ctl",
            .Indice = 3,
            .Caption = "&Legenda",
            .Rotulo = "Rótulo:",
            .Enabled = false,
            .Visible = false,
            .Left = 10,
            .Top = 20,
            .Width = 30,
            .Height = 40};
}

void ConfereAjustes(const Ref<IControle> &controle, EspecieControle especie, const Ref<IControle> &container)
{
    EXPECT_EQ(controle->Especie(), especie);
    EXPECT_EQ(controle->Nome(), "ctl");
    EXPECT_EQ(controle->Indice(), 3);
    EXPECT_EQ(controle->Caption(), "&Legenda");
    EXPECT_EQ(controle->Rotulo(), "Rótulo:");
    EXPECT_TRUE(controle->Container() == container);
    EXPECT_EQ(controle->Pagina(), -1);
    EXPECT_FALSE(controle->Enabled());
    EXPECT_FALSE(controle->Visible());
    EXPECT_EQ(controle->Left(), 10);
    EXPECT_EQ(controle->Top(), 20);
    EXPECT_EQ(controle->Width(), 30);
    EXPECT_EQ(controle->Height(), 40);
    controle->DefineEnabled(true);
    controle->DefineVisible(true);
    controle->DefineCaption("Outra");
    controle->DefineLeft(4320);
    EXPECT_TRUE(controle->Enabled());
    EXPECT_TRUE(controle->Visible());
    EXPECT_EQ(controle->Caption(), "Outra");
    EXPECT_EQ(controle->Left(), 4320);
    controle->DefineRotulo("Outro:");
    EXPECT_EQ(controle->Rotulo(), "Outro:");
}

TEST_P(ContratoHost, Controles_OfEveryKind_KeepTheirStoredSettings)
{
    Ref<IControle> quadro = Poe<IztFrame>(Com<AjustesZtFrame>("fra"));
    const auto confere = [&](AjustesPeca ajustes, EspecieControle especie) {
        ConfereAjustes(Poe<IControle>(Completa(std::move(ajustes)), quadro), especie, quadro);
    };
    confere(AjustesLabel{}, EspecieControle::Label);
    confere(AjustesImage{}, EspecieControle::Image);
    confere(AjustesZtFrame{}, EspecieControle::ztFrame);
    confere(AjustesTextBox{}, EspecieControle::TextBox);
    confere(AjustesCheckBox{}, EspecieControle::CheckBox);
    confere(AjustesOptionButton{}, EspecieControle::OptionButton);
    confere(AjustesCommandButton{}, EspecieControle::CommandButton);
    confere(AjustesSSTab{}, EspecieControle::SSTab);
    confere(AjustesCommonDialog{}, EspecieControle::CommonDialog);
    confere(AjustesZtList{}, EspecieControle::ztList);
    confere(AjustesZtCombo{}, EspecieControle::ztCombo);
    confere(AjustesZtMask{}, EspecieControle::ztMask);
    confere(AjustesZtData{}, EspecieControle::ztData);
    confere(AjustesZtCommand{}, EspecieControle::ztCommand);
    confere(AjustesZtVeiObservacao{}, EspecieControle::ztVeiObservacao);
    confere(AjustesZtEndereco{}, EspecieControle::ztEndereco);
    confere(AjustesZtClienteSetor{}, EspecieControle::ztClienteSetor);
    EXPECT_EQ(NumeroDaFalha([&] { Poe<IControle>(EmLinha({})); }), 5);
}

TEST_P(ContratoHost, Controles_OfAForm_DoNotKeepItAlive)
{
    RefFraca<FormFalso> vigia = form;
    auto texto = Poe<ITextBox>(Com<AjustesTextBox>("txt"));
    form = nullptr;
    EXPECT_TRUE(vigia.Nada());
    texto->DefineText("still usable");
    EXPECT_EQ(texto->Text(), "still usable");
}

TEST_P(ContratoHost, TextBox_Written_IsCutAndRaisesChangeWhenItBecomesAnother)
{
    auto texto = Poe<ITextBox>(Com<AjustesTextBox>("txt", {.MaxLength = 5}));
    texto->DefineText("início");
    EXPECT_EQ(texto->Text(), "iníci");
    EXPECT_EQ(texto->MaxLength(), 5);
    const int &mudancas = Conta(texto->Change());
    texto->DefineText("ação longa");
    EXPECT_EQ(texto->Text(), "ação ");
    texto->DefineText("ação longa");
    texto->DefineText("ação ");
    EXPECT_EQ(mudancas, 1);
    texto->DefineText("");
    EXPECT_EQ(mudancas, 2);
}

TEST_P(ContratoHost, TextBox_TypedInto_ObeysLimitLockAndEnabled)
{
    auto texto = Poe<ITextBox>(Com<AjustesTextBox>("txt", {.MaxLength = 3}));
    Mostra();
    const int &mudancas = Conta(texto->Change());
    EXPECT_TRUE(adaptador->Digita(form, "txt", "ab"));
    EXPECT_EQ(texto->Text(), "ab");
    EXPECT_EQ(mudancas, 2);
    adaptador->Digita(form, "txt", "cd");
    EXPECT_EQ(texto->Text(), "abc");
    texto->DefineText("");
    texto->DefineLocked(true);
    EXPECT_FALSE(adaptador->Digita(form, "txt", "x"));
    texto->DefineLocked(false);
    texto->DefineEnabled(false);
    EXPECT_FALSE(adaptador->Digita(form, "txt", "x"));
    texto->DefineEnabled(true);
    texto->DefineVisible(false);
    EXPECT_FALSE(adaptador->Digita(form, "txt", "x"));
    EXPECT_EQ(texto->Text(), "");
}

TEST_P(ContratoHost, CheckBox_WrittenAndClicked_RaisesClickWhenItBecomesAnother)
{
    auto marca = Poe<ICheckBox>(Com<AjustesCheckBox>("chk"));
    const int &cliques = Conta(marca->Click());
    EXPECT_EQ(marca->Value(), 0);
    marca->DefineValue(1);
    marca->DefineValue(1);
    EXPECT_EQ(cliques, 1);
    Mostra();
    EXPECT_TRUE(adaptador->Clica(form, "chk"));
    EXPECT_EQ(marca->Value(), 0);
    EXPECT_EQ(cliques, 2);
    marca->DefineEnabled(false);
    EXPECT_FALSE(adaptador->Clica(form, "chk"));
    EXPECT_EQ(cliques, 2);
}

TEST_P(ContratoHost, OptionButton_OfOneContainer_ExcludeEachOtherWithoutTheirEvent)
{
    Ref<IControle> quadro = Poe<IztFrame>(Com<AjustesZtFrame>("fra"));
    auto a = Poe<IOptionButton>(Com<AjustesOptionButton>("optA"), quadro);
    auto b = Poe<IOptionButton>(Com<AjustesOptionButton>("optB"), quadro);
    auto fora = Poe<IOptionButton>(Com<AjustesOptionButton>("optFora"));
    Textos ordem;
    Conexao ca = a->Click().liga([&] { ordem.push_back("a"); });
    Conexao cb = b->Click().liga([&] { ordem.push_back("b"); });
    fora->DefineValue(true);
    a->DefineValue(true);
    EXPECT_TRUE(fora->Value());
    b->DefineValue(true);
    EXPECT_FALSE(a->Value());
    b->DefineValue(true);
    b->DefineValue(false);
    EXPECT_EQ(ordem, (Textos{"a", "b"}));
    EXPECT_FALSE(b->Value());
}

TEST_P(ContratoHost, CommandButton_AsDefault_IsTheOnlyOne)
{
    auto ok = Poe<ICommandButton>(Com<AjustesCommandButton>("cmdOK", {.Default = true}));
    auto cancelar = Poe<ICommandButton>(Com<AjustesCommandButton>("cmdCancelar", {.Cancel = true}));
    EXPECT_TRUE(ok->Default());
    EXPECT_TRUE(cancelar->Cancel());
    cancelar->DefineDefault(true);
    EXPECT_FALSE(ok->Default());
    EXPECT_TRUE(cancelar->Default());
}

TEST_P(ContratoHost, ZtCommand_Clicked_ValidatesAndLocksTheFormMeanwhile)
{
    auto botao = Poe<IztCommand>(Com<AjustesZtCommand>("ztCmdOK", {.LockFormOnClick = true}));
    Textos ordem;
    bool recusa = true;
    Conexao valida = botao->ValidaClick().liga([&](bool &cancela) {
        ordem.push_back(form->Enabled() ? "validates, unlocked" : "validates, locked");
        cancela = recusa;
    });
    Conexao clique =
        botao->Click().liga([&] { ordem.push_back(form->Enabled() ? "click, unlocked" : "click, locked"); });
    Mostra();
    adaptador->Clica(form, "ztCmdOK");
    EXPECT_EQ(ordem, Textos{"validates, locked"});
    EXPECT_TRUE(form->Enabled());
    recusa = false;
    ordem.clear();
    adaptador->Clica(form, "ztCmdOK");
    EXPECT_EQ(ordem, (Textos{"validates, locked", "click, locked"}));
    EXPECT_TRUE(form->Enabled());
}

TEST_P(ContratoHost, SSTab_OpeningAPage_RaisesClickWithTheOneLeft)
{
    auto tab = Poe<ISSTab>(Com<AjustesSSTab>("sst", {.Paginas = {"Dados", "Opções", "Outros"}}));
    EXPECT_EQ(tab->Tabs(), 3);
    EXPECT_EQ(tab->Tab(), 0);
    EXPECT_EQ(tab->TabCaption(1), "Opções");
    std::vector<std::int16_t> deixadas;
    Conexao conexao = tab->Click().liga([&](std::int16_t anterior) { deixadas.push_back(anterior); });
    tab->DefineTab(0);
    tab->DefineTab(2);
    tab->DefineTabEnabled(1, false);
    tab->DefineTab(1);
    EXPECT_EQ(tab->Tab(), 2);
    tab->DefineTabVisible(0, false);
    tab->DefineTab(0);
    EXPECT_EQ(tab->Tab(), 2);
    EXPECT_EQ(NumeroDaFalha([&] { tab->DefineTab(3); }), 5);
    EXPECT_EQ(NumeroDaFalha([&] { tab->DefineTab(-1); }), 5);
    EXPECT_EQ(deixadas, std::vector<std::int16_t>{0});
    tab->DefineTabVisible(0, true);
    Mostra();
    EXPECT_FALSE(adaptador->AbrePagina(form, "sst", 1));
    EXPECT_TRUE(adaptador->AbrePagina(form, "sst", 0));
    EXPECT_EQ(deixadas, (std::vector<std::int16_t>{0, 2}));
}

TEST_P(ContratoHost, ZtCombo_OfItems_HasTextsAndValues)
{
    auto combo = Poe<IztCombo>(Com<AjustesZtCombo>("cbo", {.Conteudo = "Todos|0??Código|1??Subcódigo|2??"}));
    EXPECT_EQ(combo->NroItens(), 3);
    EXPECT_EQ(combo->IndiceAtual(), -1);
    EXPECT_EQ(combo->Valor(), "");
    EXPECT_EQ(combo->Texto(), "");
    Textos ordem;
    Conexao click = combo->Click().liga([&] { ordem.push_back("Click " + combo->Valor()); });
    Conexao change = combo->Change().liga([&] { ordem.push_back("Change " + combo->Valor()); });
    combo->DefineValor("2");
    EXPECT_EQ(combo->Texto(), "Subcódigo");
    EXPECT_EQ(combo->IndiceAtual(), 2);
    combo->DefineValor("2");
    combo->DefineIndiceAtual(0);
    EXPECT_EQ(combo->Valor(), "0");
    EXPECT_EQ(ordem, (Textos{"Click 2", "Change 2", "Click 0", "Change 0"}));
    ordem.clear();
    combo->DefineValor("absent");
    EXPECT_EQ(combo->IndiceAtual(), -1);
    EXPECT_EQ(ordem, (Textos{"Click ", "Change "}));
    ordem.clear();
    EXPECT_EQ(NumeroDaFalha([&] { combo->DefineIndiceAtual(3); }), 5);
    EXPECT_EQ(NumeroDaFalha([&] { combo->DefineIndiceAtual(-2); }), 5);
    combo->AdicionaItem("Só texto");
    combo->DefineValor("Só texto");
    EXPECT_EQ(combo->IndiceAtual(), 3);
    ordem.clear();
    combo->Limpa();
    EXPECT_EQ(combo->NroItens(), 0);
    EXPECT_EQ(combo->IndiceAtual(), -1);
    EXPECT_EQ(ordem, Textos{});
}

TEST_P(ContratoHost, ZtCombo_WithoutAValueColumn_HasTheTextAsItsValue)
{
    auto combo = Poe<IztCombo>(Com<AjustesZtCombo>("cbo", {.ColunaValor = -1}));
    combo->AdicionaItem("NENHUM");
    combo->AdicionaItem("PADRAO");
    combo->DefineValor("PADRAO");
    EXPECT_EQ(combo->Valor(), "PADRAO");
    EXPECT_EQ(combo->Texto(), "PADRAO");
}

TEST_P(ContratoHost, ZtCombo_ChosenByThePerson_RaisesAndObeysTheLock)
{
    auto combo = Poe<IztCombo>(Com<AjustesZtCombo>("cbo"));
    combo->AdicionaItem("Um|1");
    combo->AdicionaItem("Dois|2");
    const int &mudancas = Conta(combo->Change());
    Mostra();
    EXPECT_TRUE(adaptador->Escolhe(form, "cbo", "Dois"));
    EXPECT_EQ(combo->Valor(), "2");
    EXPECT_EQ(mudancas, 1);
    EXPECT_FALSE(adaptador->Escolhe(form, "cbo", "Três"));
    combo->DefineComboSomenteLeitura(true);
    EXPECT_FALSE(adaptador->Escolhe(form, "cbo", "Um"));
    EXPECT_EQ(combo->Valor(), "2");
    combo->DefineValor("1"); // the form itself may
    EXPECT_EQ(combo->Texto(), "Um");
}

TEST_P(ContratoHost, ZtMask_OfDigits_TakesNothingElseOfThePerson)
{
    auto campo = Poe<IztMask>(Com<AjustesZtMask>("msk", {.MaxLength = 3, .Tipo = TipoMascara::Digitos}));
    const int &mudancas = Conta(campo->Change());
    Mostra();
    adaptador->Digita(form, "msk", "1a2b345");
    EXPECT_EQ(campo->Text(), "123");
    EXPECT_EQ(campo->Valor(), "123");
    EXPECT_EQ(campo->ValorNumerico(), 123);
    EXPECT_EQ(mudancas, 3);
    campo->DefineText("123");
    EXPECT_EQ(mudancas, 3);
    campo->DefineText("");
    EXPECT_EQ(campo->ValorNumerico(), 0);
}

TEST_P(ContratoHost, ZtMask_Written_KeepsWhatNoKeyTypes)
{
    auto campo =
        Poe<IztMask>(Com<AjustesZtMask>("msk", {.MaxLength = 5, .Tipo = TipoMascara::Codigo, .TabelaCaracteres = 1}));
    campo->DefineText("ab-12/é9");
    EXPECT_EQ(campo->Text(), "ab-12/é9");
    EXPECT_EQ(campo->Valor(), "ab-12/é9");
    Mostra();
    adaptador->Digita(form, "msk", "X"); // it is longer than the limit already
    EXPECT_EQ(campo->Text(), "ab-12/é9");
}

TEST_P(ContratoHost, ZtMask_OfACode_IsTypedInUpperCaseWithItsOwnCharacters)
{
    auto campo = Poe<IztMask>(Com<AjustesZtMask>(
        "msk", {.MaxLength = 20, .Tipo = TipoMascara::Codigo, .CaracteresAceitos = "._", .TabelaCaracteres = 1}));
    Mostra();
    adaptador->Digita(form, "msk", "ab.1_/ç-c");
    EXPECT_EQ(campo->Text(), "AB.1_C");
}

TEST_P(ContratoHost, ZtMask_OfAnHour_ShowsItsMaskAndHasItsDigits)
{
    auto campo =
        Poe<IztMask>(Com<AjustesZtMask>("msk", {.MaxLength = 5, .Tipo = TipoMascara::Hora, .Mascara = "00:00"}));
    EXPECT_EQ(campo->Valor(), "");
    EXPECT_FALSE(IsDate(campo->Text()));
    campo->DefineText("07:30");
    EXPECT_EQ(campo->Text(), "07:30");
    EXPECT_EQ(campo->Valor(), "0730");
    campo->DefineText("2359");
    EXPECT_EQ(campo->Text(), "23:59");
    campo->DefineText("12");
    EXPECT_NE(campo->Valor(), "");
    EXPECT_FALSE(IsDate(campo->Text()));
}

TEST_P(ContratoHost, ZtData_OfADate_KnowsWhetherItIsOne)
{
    auto campo = Poe<IztData>(Com<AjustesZtData>("dat"));
    EXPECT_EQ(campo->Text(), "  /  /    ");
    EXPECT_EQ(campo->Valor(), "");
    EXPECT_FALSE(campo->DataValida());
    const int &mudancas = Conta(campo->Change());
    campo->DefineText("20/11/2026");
    EXPECT_EQ(campo->Valor(), "20/11/2026");
    EXPECT_TRUE(campo->DataValida());
    campo->DefineText("20/11/2026");
    EXPECT_EQ(mudancas, 1);
    campo->DefineText("31/02/2026");
    EXPECT_FALSE(campo->DataValida());
    campo->DefineText("00:00:00"); // no date
    EXPECT_EQ(campo->Text(), "  /  /    ");
    EXPECT_EQ(campo->Valor(), "");
}

TEST_P(ContratoHost, ZtVeiObservacao_Written_IsCut)
{
    auto campo = Poe<IztVeiObservacao>(Com<AjustesZtVeiObservacao>("obs", {.MaxLength = 4}));
    const int &mudancas = Conta(campo->Change());
    campo->DefineText("ação demais");
    EXPECT_EQ(campo->Text(), "ação");
    campo->DefineText("ação");
    EXPECT_EQ(mudancas, 1);
    campo->DefineLocked(true);
    EXPECT_TRUE(campo->Locked());
}

TEST_P(ContratoHost, ZtEndereco_Preset_HoldsTheAddressAndRaisesNothing)
{
    auto campo = Poe<IztEndereco>(Com<AjustesZtEndereco>("end"));
    const int &entradas = Conta(campo->EntradaOK());
    EXPECT_EQ(campo->Endereco()->CodLogradouro(), 0);
    EXPECT_EQ(campo->Endereco()->DescricaoEndereco(), "");
    campo->Endereco()->SetaEndereco(1, 77, 100, "fundos", "90000000", "", 0);
    EXPECT_EQ(campo->Endereco()->CodLogradouro(), 77);
    EXPECT_EQ(campo->Endereco()->Numero(), 100);
    EXPECT_EQ(campo->Endereco()->Complemento(), "fundos");
    EXPECT_EQ(CLng(campo->Endereco()->Cep()), 90000000);
    EXPECT_EQ(entradas, 0);
}

TEST_P(ContratoHost, ZtClienteSetor_WithTheNumberOfTheSession_IsComplete)
{
    auto seletor = Poe<IztClienteSetor>(Com<AjustesZtClienteSetor>("cli"));
    seletor->DefineCodCliente(Dados()->ObtemOrgao()->CodCliente());
    EXPECT_TRUE(seletor->Valida());
    EXPECT_FALSE(seletor->Cliente().empty());
    EXPECT_EQ(seletor->Setor(), "");
}

TEST_P(ContratoHost, CommonDialog_FileName_KeepsWhatIsWritten)
{
    auto dialogo = Poe<ICommonDialog>(Com<AjustesCommonDialog>("cd"));
    EXPECT_EQ(dialogo->FileName(), "");
    dialogo->DefineFilter("PDF (*.pdf)|*.pdf");
    dialogo->DefineDefaultExt("*.pdf");
    dialogo->DefineDialogTitle("Selecione o arquivo");
    dialogo->DefineFileName("C:\\A.PDF");
    EXPECT_EQ(dialogo->FileName(), "C:\\A.PDF");
}

// A list with the columns Nome and Chave (hidden) and three rows.
Ref<IztList> ListaDeTres(const Ref<FormFalso> &form)
{
    const Peca peca = {.Ajustes = AjustesZtList{}, .Nome = "lst"};
    auto lista = form->Guarda(ComoTipo<IztList>(Host().Controles()->Cria(form, peca, nullptr, -1)));
    lista->AlteraPrimeiraColuna(1, std::nullopt, "Nome", 1000, 0, "", true);
    lista->AdicionaColuna(2, "Chave", "K", 0, 0, "", false);
    TabelaTexto tabela(2);
    for (const char *nome : {"um", "dois", "três"}) {
        const std::int32_t linha = tabela.AdicionaLinha();
        tabela.Celula(1, linha) = nome;
        tabela.Celula(2, linha) = "S" + std::to_string(linha);
    }
    lista->CarregaItens(tabela);
    return lista;
}

TEST_P(ContratoHost, ZtList_OfRows_IsReadByRowAndColumn)
{
    auto lista = ListaDeTres(form);
    EXPECT_EQ(lista->NroItens(), 3);
    EXPECT_EQ(lista->ItemAtual(), -1);
    EXPECT_EQ(lista->ValorAtual("Nome"), "");
    EXPECT_EQ(lista->ColunaAtual(1), "");
    EXPECT_EQ(lista->Celula(3, "Nome"), "três");
    EXPECT_EQ(lista->Celula(2, "Chave"), "S2");
    EXPECT_EQ(NumeroDaFalha([&] { lista->Celula(4, "Nome"); }), 9);
    EXPECT_EQ(NumeroDaFalha([&] { lista->Celula(0, "Nome"); }), 9);
    EXPECT_EQ(NumeroDaFalha([&] { lista->Celula(1, "Cor"); }), 9);
    lista->DefineItemAtual(2);
    EXPECT_EQ(lista->ItemAtual(), 2);
    EXPECT_EQ(lista->ValorAtual("Chave"), "S2");
    EXPECT_EQ(lista->ColunaAtual(1), "dois");
    TabelaTexto mais(2);
    mais.AdicionaLinha();
    lista->CarregaItens(mais);
    EXPECT_EQ(lista->NroItens(), 4);
    EXPECT_EQ(lista->ItemAtual(), 2);
    lista->DefineItemAtual(-1);
    EXPECT_EQ(lista->ItemAtual(), -1);
    EXPECT_EQ(NumeroDaFalha([&] { lista->DefineItemAtual(5); }), 9);
}

TEST_P(ContratoHost, ZtList_Cleared_LosesItsRowsAndKeepsItsTitleOnlyWhenTold)
{
    auto lista = ListaDeTres(form);
    lista->DefineTitulo("Título");
    lista->DefineItemAtual(1);
    lista->Limpa(false);
    EXPECT_EQ(lista->NroItens(), 0);
    EXPECT_EQ(lista->ItemAtual(), -1);
    EXPECT_EQ(lista->Titulo(), "Título");
    lista->Limpa(std::nullopt);
    EXPECT_EQ(lista->Titulo(), "");
    lista->DefineTitulo("Título");
    lista->Limpa(true);
    EXPECT_EQ(lista->Titulo(), "");
}

TEST_P(ContratoHost, ZtList_AnotherRowCurrent_RaisesItemClickOnce)
{
    auto lista = ListaDeTres(form);
    int cliques = 0;
    int habilita = 0;
    Conexao a = lista->ItemClick().liga([&] { ++cliques; });
    Conexao b = lista->HabilitaItensMenuLista().liga([&] { ++habilita; });
    lista->DefineItemAtual(2);
    lista->DefineItemAtual(2);
    EXPECT_EQ(cliques, 1);
    EXPECT_EQ(habilita, 1);
    Mostra();
    EXPECT_TRUE(adaptador->ClicaLinha(form, "lst", 3));
    EXPECT_EQ(lista->ItemAtual(), 3);
    EXPECT_EQ(cliques, 2);
    EXPECT_FALSE(adaptador->ClicaLinha(form, "lst", 4));
}

TEST_P(ContratoHost, ZtList_MenuItem_IsChosenOnlyWhenVisibleEnabledAndNotBarred)
{
    auto lista = ListaDeTres(form);
    lista->IncluiItensMenu({{"mnuMeu", "Meu", "", "", true}});
    Textos escolhidos;
    Conexao conexao = lista->ItemMenuClicado().liga([&](std::string chave) { escolhidos.push_back(chave); });
    Mostra();
    EXPECT_TRUE(adaptador->EscolheMenu(form, "lst", "mnuZTLObjNovo"));
    EXPECT_TRUE(adaptador->EscolheMenu(form, "lst", "mnuMeu"));
    lista->MenuHabilitado("mnuMeu", false);
    EXPECT_FALSE(lista->ItemMenu("mnuMeu")->Enabled());
    EXPECT_FALSE(adaptador->EscolheMenu(form, "lst", "mnuMeu"));
    lista->ItemMenu("mnuMeu")->DefineEnabled(true);
    lista->MenuVisivel("mnuMeu", false);
    EXPECT_FALSE(adaptador->EscolheMenu(form, "lst", "mnuMeu"));
    lista->MenuVisivel("mnuMeu", true);
    lista->MenuBloqueado("mnuMeu", true);
    lista->MenuHabilitado("mnuMeu", true);
    EXPECT_FALSE(adaptador->EscolheMenu(form, "lst", "mnuMeu"));
    lista->MenuBloqueado("mnuMeu", false);
    EXPECT_TRUE(adaptador->EscolheMenu(form, "lst", "mnuMeu"));
    EXPECT_EQ(escolhidos, (Textos{"mnuZTLObjNovo", "mnuMeu", "mnuMeu"}));
    for (const char *chave : {"mnuZTLObjNovo", "mnuZTLObjEditar", "mnuZTLObjDetalhes", "mnuZTLObjExcluir",
                              "mnuZTLObjLocalizar", "mnuZTLObjAtualizar"}) {
        EXPECT_EQ(lista->ItemMenu(chave)->Chave(), chave);
    }
    EXPECT_EQ(NumeroDaFalha([&] { lista->ItemMenu("mnuNenhum"); }), 5);
    EXPECT_EQ(NumeroDaFalha([&] { lista->MenuTexto("mnuNenhum", ""); }), 5);
}

TEST_P(ContratoHost, ZtList_RowRemoved_AsksBeforeAndTellsAfter)
{
    auto lista = ListaDeTres(form);
    Textos ordem;
    bool recusa = true;
    Conexao menu = lista->ItemMenuClicado().liga([&](std::string chave) { ordem.push_back(chave); });
    Conexao antes = lista->AntesDeRemoverItem().liga([&](std::int32_t &linha) {
        ordem.push_back("before " + lista->Celula(linha, "Chave"));
        if (recusa) {
            linha = 0;
        }
    });
    Conexao depois = lista->DepoisDeRemoverItem().liga([&] { ordem.push_back("after " + CStr(lista->NroItens())); });
    Mostra();
    lista->DefineItemAtual(2);
    adaptador->EscolheMenu(form, "lst", "mnuZTLObjExcluir");
    EXPECT_EQ(lista->NroItens(), 3);
    EXPECT_EQ(ordem, Textos{"before S2"});
    recusa = false;
    ordem.clear();
    adaptador->EscolheMenu(form, "lst", "mnuZTLObjExcluir");
    EXPECT_EQ(lista->NroItens(), 2);
    EXPECT_EQ(lista->Celula(2, "Chave"), "S3");
    EXPECT_EQ(lista->ItemAtual(), 2);
    EXPECT_EQ(ordem, (Textos{"before S2", "after 2"}));
}

TEST_P(ContratoHost, SetFocus_OfAControl_BringsItOrIsFault5)
{
    auto um = Poe<ITextBox>(Com<AjustesTextBox>("txtUm"));
    auto dois = Poe<ITextBox>(Com<AjustesTextBox>("txtDois"));
    Mostra();
    dois->SetFocus();
    EXPECT_TRUE(form->ControleAtivo() == dois);
    um->DefineEnabled(false);
    EXPECT_EQ(NumeroDaFalha([&] { um->SetFocus(); }), 5);
    um->DefineEnabled(true);
    um->DefineVisible(false);
    EXPECT_EQ(NumeroDaFalha([&] { um->SetFocus(); }), 5);
    EXPECT_TRUE(form->ControleAtivo() == dois);
}

} // namespace
