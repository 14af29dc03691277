#include "windows/host/Oferecidos.h"

#include "controls/CommonDialog.h"
#include "controls/FabricaControles.h"
#include "controls/SSTab.h"
#include "controls/ztClienteSetor.h"
#include "controls/ztList.h"
#include "host/MenuLista.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/FormFalso.h"
#include "tests/support/UmControle.h"
#include "tests/windows/ObjetoAlheio.h"
#include "windows/automation/Embrulho.h"
#include "windows/automation/Tardio.h"
#include "windows/host/Remotos.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace nativo {
namespace {

using Textos = std::vector<std::string>;

template <class T> Variante De(const T &valor)
{
    return ParaVariante(valor);
}

struct Escrito {
    std::string Nome;
    Variante Valor;
};

// Controls of our own, as the foreign host has them.
class OferecidosTest : public testing::Test {
  protected:
    static void SetUpTestSuite()
    {
        RegistraRemotos();
        OfereceObjetos();
    }

    // A control of a contract, on the form.
    template <class C, class Ajustes> Ref<C> Um(Ajustes ajustes = {}, const Ref<IControle> &container = nullptr)
    {
        const Peca peca = Chamado<Ajustes>("controle", std::move(ajustes));
        return ComoTipo<C>(form->Guarda(FabricaControles().Cria(form, peca, container, -1)));
    }
    static Tardio Oferecido(const Ref<::Objeto> &objeto) { return Tardio(Oferece(objeto), Lado::Hospedeiro); }
    static void Escreve(const Ref<::Objeto> &objeto, const std::vector<Escrito> &escritos)
    {
        for (const Escrito &escrito : escritos) {
            SCOPED_TRACE(escrito.Nome);
            EXPECT_NO_THROW(Oferecido(objeto).Escreve(escrito.Nome, escrito.Valor));
        }
    }
    // What the members of those names answer, with their types.
    static Textos Lidos(const Ref<::Objeto> &objeto, const Textos &nomes)
    {
        Textos lidos;
        for (const std::string &nome : nomes) {
            lidos.push_back(TextoDe(Oferecido(objeto).Chama<Variante>(nome).Bruta()));
        }
        return lidos;
    }
    static std::string Padrao(const Ref<::Objeto> &objeto) { return TextoDe(Oferecido(objeto).Padrao().Bruta()); }
    static void EscrevePadrao(const Ref<::Objeto> &objeto, const Variante &valor)
    {
        DISPID escrita = DISPID_PROPERTYPUT;
        VARIANT bruto = valor.Bruta();
        DISPPARAMS parametros{&bruto, &escrita, 1, 1};
        EXPECT_EQ(Oferece(objeto)->Invoke(DISPID_VALUE, IID_NULL, 0, DISPATCH_PROPERTYPUT, &parametros, nullptr,
                                          nullptr, nullptr),
                  S_OK);
    }
    static std::int32_t NumeroDaFalha(const std::function<void()> &acao) { return FalhaLancada(acao).Numero; }

    Ref<FormFalso> form = FormNaTela();
};

TEST_F(OferecidosTest, EveryKindOfControl_HasWhatEveryControlHas)
{
    const std::vector<AjustesPeca> especies{
        AjustesLabel{},        AjustesTextBox{},       AjustesCheckBox{},
        AjustesOptionButton{}, AjustesCommandButton{}, AjustesSSTab{.Paginas = {"Uma"}},
        AjustesImage{},        AjustesCommonDialog{},  AjustesZtList{},
        AjustesZtCombo{},      AjustesZtMask{},        AjustesZtData{},
        AjustesZtCommand{},    AjustesZtFrame{},       AjustesZtVeiObservacao{},
        AjustesZtEndereco{},   AjustesZtClienteSetor{}};
    EXPECT_EQ(especies.size() + 1, std::variant_size_v<AjustesPeca>);
    const auto moldura = Um<IControle, AjustesZtFrame>();
    for (const AjustesPeca &ajustes : especies) {
        const Peca peca{.Ajustes = ajustes, .Nome = "um", .Indice = 3};
        const auto controle = form->Guarda(FabricaControles().Cria(form, peca, moldura, -1));
        SCOPED_TRACE(controle->NomeTipo());
        Escreve(controle, {{"Caption", De(std::string("Rótulo"))},
                           {"Left", De(15)},
                           {"Top", De(30)},
                           {"Width", De(45)},
                           {"Height", De(60)},
                           {"TabIndex", De(1)}});
        EXPECT_EQ(controle->Caption(), "Rótulo");
        EXPECT_EQ(controle->Left(), 15);
        EXPECT_EQ(controle->Top(), 30);
        EXPECT_EQ(controle->Width(), 45);
        EXPECT_EQ(controle->Height(), 60);
        EXPECT_EQ(controle->TabIndex(), 1);
        EXPECT_EQ(Lidos(controle, {"Name", "Index", "Caption", "Left", "Top", "Width", "Height", "TabIndex"}),
                  (Textos{"BSTR:um", "I2:3", "BSTR:Rótulo", "I4:15", "I4:30", "I4:45", "I4:60", "I2:1"}));
        EXPECT_EQ(Lidos(controle, {"Enabled", "Visible"}), (Textos{"BOOL:-1", "BOOL:-1"}));
        Escreve(controle, {{"Enabled", De(false)}});
        EXPECT_FALSE(controle->Enabled());
        EXPECT_TRUE(controle->Visible());
        EXPECT_EQ(Lidos(controle, {"Enabled", "Visible"}), (Textos{"BOOL:0", "BOOL:-1"}));
        Escreve(controle, {{"Enabled", De(true)}, {"Visible", De(false)}});
        EXPECT_TRUE(controle->Enabled());
        EXPECT_FALSE(controle->Visible());
        EXPECT_EQ(Lidos(controle, {"Enabled", "Visible"}), (Textos{"BOOL:-1", "BOOL:0"}));
        EXPECT_TRUE(LeObjeto(Oferecido(controle).Chama<Variante>("Container").Bruta()) == Oferece(moldura));
        controle->DefineVisible(true);
        if (ComoBase(controle)->AceitaFoco()) {
            Oferecido(controle).Chama("SetFocus");
            EXPECT_TRUE(form->ControleAtivo() == controle);
        } else {
            EXPECT_EQ(NumeroDaFalha([&] { Oferecido(controle).Chama("SetFocus"); }), 438);
        }
    }
    EXPECT_EQ(Lidos(moldura, {"Container", "Index"}), (Textos{"DISPATCH:Nothing", "I2:-1"}));
    EXPECT_EQ(NumeroDaFalha([&] { Oferecido(moldura).Escreve("Name", std::string("outro")); }), 438);
}

TEST_F(OferecidosTest, TextBox_HasTextLockAndLimit)
{
    const auto texto = Um<ITextBox>(AjustesTextBox{.MaxLength = 5});
    Escreve(texto, {{"Text", De(std::string("Avenida"))}, {"Locked", De(true)}});
    EXPECT_EQ(texto->Text(), "Aveni");
    EXPECT_TRUE(texto->Locked());
    EXPECT_EQ(Lidos(texto, {"Text", "Locked", "MaxLength"}), (Textos{"BSTR:Aveni", "BOOL:-1", "I4:5"}));
    EscrevePadrao(texto, De(std::string("Rua")));
    EXPECT_EQ(texto->Text(), "Rua");
    EXPECT_EQ(Padrao(texto), "BSTR:Rua");
    EXPECT_EQ(NumeroDaFalha([&] { Oferecido(texto).Escreve("MaxLength", 9); }), 438);
}

TEST_F(OferecidosTest, Observation_HasTextAndLock)
{
    const auto observacao = Um<IztVeiObservacao>(AjustesZtVeiObservacao{.MaxLength = 5});
    Escreve(observacao, {{"Text", De(std::string("Avenida"))}, {"Locked", De(true)}});
    EXPECT_EQ(observacao->Text(), "Aveni");
    EXPECT_TRUE(observacao->Locked());
    EXPECT_EQ(Lidos(observacao, {"Text", "Locked"}), (Textos{"BSTR:Aveni", "BOOL:-1"}));
    EscrevePadrao(observacao, De(std::string("Rua")));
    EXPECT_EQ(Padrao(observacao), "BSTR:Rua");
}

TEST_F(OferecidosTest, Mask_HasItsTextWithTheMaskAndItsValueWithout)
{
    const auto hora = Um<IztMask>(AjustesZtMask{.Tipo = TipoMascara::Hora, .Mascara = "00:00"});
    Escreve(hora, {{"Text", De(std::string("1234"))}, {"ReadOnly", De(true)}});
    EXPECT_EQ(hora->Text(), "12:34");
    EXPECT_TRUE(hora->ReadOnly());
    EXPECT_EQ(Lidos(hora, {"Text", "Valor", "ReadOnly"}), (Textos{"BSTR:12:34", "BSTR:1234", "BOOL:-1"}));
    EscrevePadrao(hora, De(std::string("0756")));
    EXPECT_EQ(Padrao(hora), "BSTR:07:56");
    const auto numero = Um<IztMask>(AjustesZtMask{.Tipo = TipoMascara::Digitos});
    numero->DefineText("42");
    EXPECT_EQ(Lidos(numero, {"ValorNumerico"}), (Textos{"R8:42.000000"}));
}

TEST_F(OferecidosTest, Date_HasItsTextItsValueAndWhetherItIsOne)
{
    const auto data = Um<IztData>(AjustesZtData{});
    EXPECT_EQ(Lidos(data, {"Text", "Valor", "DataValida"}), (Textos{"BSTR:  /  /    ", "BSTR:", "BOOL:0"}));
    Escreve(data, {{"Text", De(std::string("05/03/2026"))}, {"ReadOnly", De(true)}});
    EXPECT_EQ(data->Text(), "05/03/2026");
    EXPECT_TRUE(data->ReadOnly());
    EXPECT_EQ(Lidos(data, {"Text", "Valor", "DataValida", "ReadOnly"}),
              (Textos{"BSTR:05/03/2026", "BSTR:05/03/2026", "BOOL:-1", "BOOL:-1"}));
    EscrevePadrao(data, De(std::string("06/03/2026")));
    EXPECT_EQ(Padrao(data), "BSTR:06/03/2026");
}

TEST_F(OferecidosTest, CheckAndOption_HaveTheirValueAsTheDefaultToo)
{
    const auto caixa = Um<ICheckBox>(AjustesCheckBox{});
    Escreve(caixa, {{"Value", De(std::int16_t{1})}});
    EXPECT_EQ(caixa->Value(), 1);
    EXPECT_EQ(Lidos(caixa, {"Value"}), (Textos{"I2:1"}));
    EscrevePadrao(caixa, De(std::int16_t{0}));
    EXPECT_EQ(caixa->Value(), 0);
    EXPECT_EQ(Padrao(caixa), "I2:0");
    const auto opcao = Um<IOptionButton>(AjustesOptionButton{});
    Escreve(opcao, {{"Value", De(true)}});
    EXPECT_TRUE(opcao->Value());
    EXPECT_EQ(Lidos(opcao, {"Value"}), (Textos{"BOOL:-1"}));
    EscrevePadrao(opcao, De(false));
    EXPECT_FALSE(opcao->Value());
    EXPECT_EQ(Padrao(opcao), "BOOL:0");
}

TEST_F(OferecidosTest, Buttons_TellTheKeysThatPressThem)
{
    const auto botao = Um<ICommandButton>(AjustesCommandButton{.Cancel = true});
    EXPECT_EQ(Lidos(botao, {"Default", "Cancel"}), (Textos{"BOOL:0", "BOOL:-1"}));
    Escreve(botao, {{"Default", De(true)}});
    EXPECT_TRUE(botao->Default());
    EXPECT_EQ(Lidos(botao, {"Default"}), (Textos{"BOOL:-1"}));
    EXPECT_EQ(NumeroDaFalha([&] { Oferecido(botao).Escreve("Cancel", false); }), 438);
    const auto comando = Um<IztCommand>(AjustesZtCommand{});
    EXPECT_EQ(Lidos(comando, {"Default"}), (Textos{"BOOL:0"}));
    Escreve(comando, {{"Default", De(true)}});
    EXPECT_TRUE(comando->Default());
    EXPECT_EQ(Lidos(comando, {"Default"}), (Textos{"BOOL:-1"}));
}

TEST_F(OferecidosTest, Combo_TakesItsChoiceByValueAndByPosition)
{
    const auto combo = Um<IztCombo>(AjustesZtCombo{});
    for (const char *item : {"Todos|T", "Radar|R", "Lombada|L"}) {
        combo->AdicionaItem(item);
    }
    EscrevePadrao(combo, De(std::string("R")));
    EXPECT_EQ(combo->IndiceAtual(), 1);
    Escreve(combo, {{"IndiceAtual", De(std::int16_t{2})}});
    EXPECT_EQ(combo->Valor(), "L");
    EXPECT_EQ(Lidos(combo, {"Valor", "Texto", "IndiceAtual", "NroItens", "ComboSomenteLeitura"}),
              (Textos{"BSTR:L", "BSTR:Lombada", "I2:2", "I4:3", "BOOL:0"}));
    EXPECT_EQ(Padrao(combo), "BSTR:L");
}

TEST_F(OferecidosTest, Tabs_AreReadAndWrittenByTheirNumber)
{
    const auto abas = Um<ISSTab>(AjustesSSTab{.Paginas = {"Uma", "Duas", "Três"}});
    const Tardio tardio = Oferecido(abas);
    Escreve(abas, {{"Tab", De(std::int16_t{2})}});
    EXPECT_EQ(abas->Tab(), 2);
    EXPECT_EQ(Lidos(abas, {"Tabs", "Tab"}), (Textos{"I2:3", "I2:2"}));
    EscrevePadrao(abas, De(std::int16_t{1}));
    EXPECT_EQ(Padrao(abas), "I2:1");
    EXPECT_EQ(tardio.Chama<std::string>("TabCaption", std::int16_t{2}), "Três");

    tardio.Escreve("TabEnabled", false, std::int16_t{2});
    EXPECT_FALSE(abas->TabEnabled(2));
    EXPECT_TRUE(abas->TabVisible(2));
    EXPECT_FALSE(tardio.Chama<bool>("TabEnabled", std::int16_t{2}));
    EXPECT_TRUE(tardio.Chama<bool>("TabVisible", std::int16_t{2}));
    tardio.Escreve("TabVisible", false, std::int16_t{0});
    EXPECT_FALSE(abas->TabVisible(0));
    EXPECT_TRUE(abas->TabEnabled(0));
    EXPECT_FALSE(tardio.Chama<bool>("TabVisible", std::int16_t{0}));
    tardio.Escreve("TabEnabled", true, std::int16_t{2});
    EXPECT_TRUE(abas->TabEnabled(2));

    EXPECT_EQ(NumeroDaFalha([&] { tardio.Escreve("TabEnabled", true, std::int16_t{3}); }), 5);
    EXPECT_EQ(NumeroDaFalha([&] { tardio.Escreve("TabEnabled", true, std::string("duas")); }), 13);
    EXPECT_EQ(NumeroDaFalha([&] { tardio.Escreve("TabEnabled", true); }), 450);
    EXPECT_EQ(NumeroDaFalha([&] { tardio.Escreve("TabEnabled", true, std::int16_t{1}, std::int16_t{1}); }), 450);
    EXPECT_EQ(NumeroDaFalha([&] { tardio.Escreve("Tab", std::int16_t{1}, std::int16_t{1}); }), 450);
    EXPECT_EQ(NumeroDaFalha([&] { tardio.Escreve("TabCaption", std::string("Outra"), std::int16_t{1}); }), 438);
}

TEST_F(OferecidosTest, CommonDialog_IsToldWhatToAskAndGivesTheChoice)
{
    const auto dialogo = Um<CommonDialog>(AjustesCommonDialog{});
    Escreve(dialogo, {{"Filter", De(std::string("PDF|*.pdf"))},
                      {"DefaultExt", De(std::string("pdf"))},
                      {"DialogTitle", De(std::string("Selecione"))},
                      {"FileName", De(std::string("C:\\antes.pdf"))}});
    EXPECT_EQ(dialogo->Filter(), "PDF|*.pdf");
    EXPECT_EQ(dialogo->DefaultExt(), "pdf");
    EXPECT_EQ(dialogo->DialogTitle(), "Selecione");
    EXPECT_EQ(dialogo->FileName(), "C:\\antes.pdf");
    const Conexao mostra = dialogo->AoMostrar().liga([&] { dialogo->Escolhe("C:\\é.pdf"); });
    Oferecido(dialogo).Chama("ShowOpen");
    EXPECT_EQ(Lidos(dialogo, {"FileName"}), (Textos{"BSTR:C:\\é.pdf"}));
    EXPECT_EQ(NumeroDaFalha([&] { Oferecido(dialogo).Chama<std::string>("Filter"); }), 438);
}

TEST_F(OferecidosTest, ClientAndSector_AreToldAndValidated)
{
    const auto seletor = Um<ztClienteSetor>(AjustesZtClienteSetor{});
    EXPECT_EQ(Lidos(seletor, {"Valida"}), (Textos{"BOOL:0"}));
    Escreve(seletor, {{"CodCliente", De(7)}});
    EXPECT_EQ(seletor->CodCliente(), 7);
    seletor->PresetaCliente("ÓRGÃO", "NORTE");
    EXPECT_EQ(Lidos(seletor, {"Cliente", "Setor", "Valida"}), (Textos{"BSTR:ÓRGÃO", "BSTR:NORTE", "BOOL:-1"}));
    EXPECT_EQ(NumeroDaFalha([&] { Oferecido(seletor).Escreve("Cliente", std::string("OUTRO")); }), 438);
    EXPECT_EQ(NumeroDaFalha([&] { Oferecido(seletor).Chama<std::int32_t>("CodCliente"); }), 438);
}

TEST_F(OferecidosTest, AddressAndItsParts_HaveTheirNames)
{
    const auto controle = Um<IztEndereco>(AjustesZtEndereco{});
    Escreve(controle, {{"ReadOnly", De(true)}});
    EXPECT_TRUE(controle->ReadOnly());
    EXPECT_EQ(Lidos(controle, {"ReadOnly"}), (Textos{"BOOL:-1"}));
    controle->Endereco()->SetaEndereco(88, 4711, 12, "casa", "90000000", "", 0);
    EXPECT_EQ(Lidos(controle->Endereco(), {"CodLogradouro", "Numero", "Complemento", "Cep"}),
              (Textos{"I4:4711", "I4:12", "BSTR:casa", "BSTR:90000000"}));
}

// A list, with one column and two rows.
class ListaOferecidaTest : public OferecidosTest {
  protected:
    ListaOferecidaTest()
    {
        lista->AlteraPrimeiraColuna(1, "chave", "Código", 1000, 0, "", true);
        TabelaTexto tabela(1);
        for (const char *texto : {"um", "dois"}) {
            tabela.Celula(1, tabela.AdicionaLinha()) = texto;
        }
        lista->CarregaItens(tabela);
    }
    const Ref<ItemMenu> &Item(const std::string &chave) const { return lista->Menu().Item(chave); }

    Ref<ztList> lista = Um<ztList>(AjustesZtList{});
    Tardio tardio = Oferecido(lista);
};

TEST_F(ListaOferecidaTest, RowsAndTitle_AreTheLists)
{
    int repintadas = 0;
    const Conexao mudou = lista->Mudou().liga([&] { ++repintadas; });
    tardio.Chama("AtualizaLista");
    EXPECT_EQ(repintadas, 1);
    EXPECT_EQ(tardio.Chama<std::string>("ValorAtual", std::string("chave")), "");
    Escreve(lista, {{"ItemAtual", De(2)}, {"Titulo", De(std::string("Título"))}, {"TemMais", De(true)}});
    EXPECT_EQ(tardio.Chama<std::string>("ValorAtual", std::string("chave")), "dois");
    EXPECT_EQ(lista->Titulo(), "Título");
    EXPECT_TRUE(lista->TemMais());
    EXPECT_EQ(Lidos(lista, {"NroItens", "ItemAtual", "Titulo"}), (Textos{"I4:2", "I4:2", "BSTR:Título"}));
    tardio.Chama("Limpa", false);
    EXPECT_EQ(Lidos(lista, {"NroItens", "ItemAtual", "Titulo"}), (Textos{"I4:0", "I4:-1", "BSTR:Título"}));
    tardio.Chama("Limpa");
    EXPECT_EQ(lista->Titulo(), "");
}

TEST_F(ListaOferecidaTest, Looks_AreWritten)
{
    Escreve(lista, {{"EstiloMenu1", De(11)},
                    {"EstiloMenu2", De(22)},
                    {"BarraCriteriosAtiva", De(true)},
                    {"BarraCriteriosAltura", De(900)},
                    {"BotoesFecharAjuda", De(false)}});
    EXPECT_EQ(lista->EstiloMenu1(), 11);
    EXPECT_EQ(lista->EstiloMenu2(), 22);
    EXPECT_TRUE(lista->Ajustes().BarraCriteriosAtiva);
    EXPECT_EQ(lista->Ajustes().BarraCriteriosAltura, 900);
    EXPECT_FALSE(lista->Ajustes().BotoesFecharAjuda);
    EXPECT_EQ(Lidos(lista, {"BarraCriteriosAltura"}), (Textos{"I4:900"}));
    for (const char *nome : {"EstiloMenu1", "EstiloMenu2", "BarraCriteriosAtiva", "BotoesFecharAjuda", "TemMais"}) {
        EXPECT_EQ(NumeroDaFalha([&] { tardio.Chama<Variante>(nome); }), 438) << nome;
    }
}

TEST_F(ListaOferecidaTest, MenuItems_AreTakenByTheNamesOfTheirMembers)
{
    Diario diario;
    const Com<ObjetoAlheio> item = ObjetoAlheio::Novo(diario);
    item->Membro("Chave", De(std::string("mnuProprio")));
    item->Membro("Texto", De(std::string("Próprio")));
    item->Membro("TextoBotao", De(std::string("No botão")));
    item->Membro("Dica", De(std::string("Ajuda")));
    item->Membro("IniciaGrupo", De(true));
    std::vector<Ref<::Objeto>> itens{RemotoDe<::Objeto>(ComoDispatch(item))};
    tardio.Chama("IncluiItensMenu", PorRef(itens));
    EXPECT_EQ(diario, (Diario{"Chave MG", "Texto MG", "TextoBotao MG", "Dica MG", "IniciaGrupo MG"}));
    const Ref<ItemMenu> incluido = Item("mnuProprio");
    EXPECT_EQ(incluido->Texto(), "Próprio");
    EXPECT_EQ(incluido->TextoBotao(), "No botão");
    EXPECT_EQ(incluido->Dica(), "Ajuda");
    EXPECT_TRUE(incluido->IniciaGrupo());
    EXPECT_EQ(Lidos(incluido, {"Chave", "Enabled"}), (Textos{"BSTR:mnuProprio", "BOOL:-1"}));
}

TEST_F(ListaOferecidaTest, MenuOperations_AreCalledAndWrittenWithTheKey)
{
    const std::string chave = MenuLista::Novo;
    const Ref<ItemMenu> item = Item(chave);
    const auto estado = [&] { return std::vector<bool>{item->Visivel(), item->Bloqueado(), item->Enabled()}; };
    EXPECT_EQ(estado(), (std::vector<bool>{true, false, true}));
    tardio.Chama("MenuVisivel", chave, false);
    EXPECT_EQ(estado(), (std::vector<bool>{false, false, true}));
    tardio.Chama("MenuBloqueado", chave, true);
    EXPECT_EQ(estado(), (std::vector<bool>{false, true, true}));
    tardio.Chama("MenuHabilitado", chave, false);
    EXPECT_EQ(estado(), (std::vector<bool>{false, true, false}));
    tardio.Chama("MenuTexto", chave, std::string("Novo é"));
    EXPECT_EQ(item->Texto(), "Novo é");

    tardio.Escreve("MenuVisivel", true, chave);
    EXPECT_EQ(estado(), (std::vector<bool>{true, true, false}));
    tardio.Escreve("MenuBloqueado", false, chave);
    EXPECT_EQ(estado(), (std::vector<bool>{true, false, false}));
    tardio.Escreve("MenuHabilitado", true, chave);
    EXPECT_EQ(estado(), (std::vector<bool>{true, false, true}));
    tardio.Escreve("MenuTexto", std::string("Outro"), chave);
    EXPECT_EQ(item->Texto(), "Outro");
    EXPECT_TRUE(Item(MenuLista::Editar)->Visivel());
    EXPECT_EQ(NumeroDaFalha([&] { tardio.Escreve("MenuVisivel", true, std::string("falta")); }), 5);
    EXPECT_EQ(NumeroDaFalha([&] { tardio.Escreve("MenuVisivel", true); }), 450);
}

TEST_F(OferecidosTest, FieldOfATransaction_HasNameAndValue)
{
    const auto campo = Novo<CampoTransacao>();
    Escreve(campo, {{"Nome", De(std::string("HDR"))}, {"Valor", De(std::string("5"))}});
    EXPECT_EQ(campo->Nome, "HDR");
    EXPECT_EQ(campo->Valor, "5");
    EXPECT_EQ(Lidos(campo, {"Nome", "Valor"}), (Textos{"BSTR:HDR", "BSTR:5"}));
}

TEST_F(OferecidosTest, ItemOfTheModulesMenu_HasItsFiveMembers)
{
    const auto item = Novo<ItemMenuModulo>();
    Escreve(item, {{"Name", De(std::string("mnuX"))},
                   {"Band", De(std::string("mnu"))},
                   {"SubBand", De(std::string("sub"))},
                   {"NeverDisabled", De(true)}});
    EXPECT_EQ(Lidos(item, {"Name", "Band", "SubBand", "NeverDisabled", "HideWhenDisable"}),
              (Textos{"BSTR:mnuX", "BSTR:mnu", "BSTR:sub", "BOOL:-1", "BOOL:0"}));
    Escreve(item, {{"NeverDisabled", De(false)}, {"HideWhenDisable", De(true)}});
    EXPECT_EQ(item->Name, "mnuX");
    EXPECT_EQ(item->Band, "mnu");
    EXPECT_EQ(item->SubBand, "sub");
    EXPECT_FALSE(item->NeverDisabled);
    EXPECT_TRUE(item->HideWhenDisable);
}

} // namespace
} // namespace nativo
