#include "shell/ControladorLista.h"

#include "controls/ztList.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/FormFalso.h"
#include "tests/support/HostTeste.h"
#include "tests/support/UmControle.h"

#include <functional>
#include <string>
#include <vector>

namespace {

using Linhas = std::vector<std::string>;

// A list that writes down what its controller asks of it, and fails when it is asked for an item that is named.
class ListaQueAnota : public ztList {
  public:
    ListaQueAnota(const Origem &origem, Linhas &diario) : ztList(origem), m_Diario(diario) {}
    std::string ItemQueFalta;

    void AlteraPrimeiraColuna(std::int16_t numero, std::optional<std::string> chave, const std::string &titulo,
                              std::int16_t largura, std::int16_t alinhamento, const std::string &marca,
                              bool visivel) override
    {
        m_Diario.push_back("coluna " + titulo);
        ztList::AlteraPrimeiraColuna(numero, chave, titulo, largura, alinhamento, marca, visivel);
    }
    std::int32_t NroItens() const override
    {
        m_Diario.emplace_back("NroItens");
        return ztList::NroItens();
    }
    Ref<IItemMenu> ItemMenu(const std::string &chave) override
    {
        m_Diario.push_back(chave);
        if (chave == ItemQueFalta) {
            throw Falha(5, "ztList.ItemMenu", "Não há");
        }
        return ztList::ItemMenu(chave);
    }
    Evento<> &GotFocus() override { return Anota("GotFocus", ztList::GotFocus()); }
    Evento<> &ItemClick() override { return Anota("ItemClick", ztList::ItemClick()); }
    Evento<std::int32_t &> &AntesDeRemoverItem() override { return Anota("Antes", ztList::AntesDeRemoverItem()); }
    Evento<> &DepoisDeRemoverItem() override { return Anota("Depois", ztList::DepoisDeRemoverItem()); }
    Evento<std::string> &ItemMenuClicado() override { return Anota("ItemMenuClicado", ztList::ItemMenuClicado()); }

  private:
    template <class E> E &Anota(const std::string &nome, E &evento)
    {
        m_Diario.push_back(nome);
        return evento;
    }

    Linhas &m_Diario;
};

// Writes down what is asked of it, between what it asks of its list.
class COTeste : public ControladorLista {
  public:
    explicit COTeste(Linhas &diario) : ControladorLista("m_ZtList_ItemMenuClicado"), m_Diario(diario) {}
    std::string_view NomeTipo() const override { return "COTeste"; }
    bool Pode = true;
    std::function<void()> AoComandar;

    using ControladorLista::Prepara;

  protected:
    TabelaColunas Colunas() const override
    {
        m_Diario.emplace_back("Colunas");
        return {{}, {"Nome", 100, "", 0}};
    }
    void BloqueiaMenu() override { m_Diario.emplace_back("BloqueiaMenu"); }
    bool PodeExcluir(std::int32_t itens) const override
    {
        m_Diario.push_back("PodeExcluir " + std::to_string(itens));
        return Pode;
    }
    void Novo() override { Comanda("Novo"); }
    void Editar() override { Comanda("Editar"); }
    void Detalhes() override { Comanda("Detalhes"); }
    bool Excluir(std::int32_t linha) override
    {
        Comanda("Excluir " + std::to_string(linha));
        return Pode;
    }

  private:
    void Comanda(const std::string &comando)
    {
        m_Diario.push_back(comando);
        if (AoComandar) {
            AoComandar();
        }
    }

    Linhas &m_Diario;
};

class ControladorListaTeste : public HostTeste {
  protected:
    void SetUp() override
    {
        HostTeste::SetUp();
        LogaGeral();
    }

    void TearDown() override
    {
        controlador = nullptr;
        lista = nullptr;
        HostTeste::TearDown();
    }

    // What was written down since the last look.
    Linhas Vistos() { return std::exchange(diario, {}); }

    // Which of the standard commands are enabled: Novo, Editar, Detalhes, Excluir.
    std::string Habilitados()
    {
        std::string letras;
        for (const auto &[chave, letra] : std::vector<std::pair<std::string, char>>{{MenuLista::Novo, 'N'},
                                                                                    {MenuLista::Editar, 'E'},
                                                                                    {MenuLista::Detalhes, 'D'},
                                                                                    {MenuLista::Excluir, 'X'}}) {
            letras += lista->Menu().Item(chave)->Enabled() ? letra : '-';
        }
        return letras;
    }

    void PoeLinha()
    {
        TabelaTexto tabela(1);
        tabela.AdicionaLinha();
        lista->CarregaItens(tabela);
    }

    static Linhas Menu(int itens)
    {
        return {"NroItens",          "PodeExcluir " + std::to_string(itens),
                MenuLista::Detalhes, MenuLista::Novo,
                MenuLista::Editar,   MenuLista::Excluir};
    }

    Linhas diario;
    Ref<ListaQueAnota> lista =
        Novo<ListaQueAnota>(Origem{FormNaTela(), Chamado<AjustesZtList>("m_ZtList"), nullptr, -1}, diario);
    Ref<COTeste> controlador = Novo<COTeste>(diario);
};

TEST_F(ControladorListaTeste, Prepara_AList_BindsItConfiguresItAndSetsItsMenuInThisOrder)
{
    controlador->Prepara(lista, false);
    Linhas esperado{"GotFocus",        "ItemClick", "Antes",       "Depois",
                    "ItemMenuClicado", "Colunas",   "coluna Nome", "BloqueiaMenu"};
    for (const std::string &linha : Menu(0)) {
        esperado.push_back(linha);
    }
    EXPECT_EQ(Vistos(), esperado);
}

TEST_F(ControladorListaTeste, HabilitaMenu_ByRowsModeAndWhatMayBeRemoved_EnablesTheCommands)
{
    struct Caso {
        bool SomenteLeitura;
        bool Pode;
        std::string SemLinhas;
        std::string ComLinha;
    };
    for (const Caso &caso : {Caso{false, true, "N---", "NEDX"}, Caso{false, false, "N---", "NED-"},
                             Caso{true, true, "----", "--D-"}, Caso{true, false, "----", "--D-"}}) {
        lista->Limpa(std::nullopt);
        controlador->Pode = caso.Pode;
        controlador->Prepara(lista, caso.SomenteLeitura);
        EXPECT_EQ(Habilitados(), caso.SemLinhas);
        PoeLinha();
        lista->ztList::ItemClick().dispara();
        EXPECT_EQ(Habilitados(), caso.ComLinha);
    }
}

TEST_F(ControladorListaTeste, Events_OfTheList_AreHeardOnceEach)
{
    controlador->Prepara(lista, false);
    controlador->Prepara(lista, false); // the former subscriptions end
    PoeLinha();
    Vistos();
    for (Evento<> *evento :
         {&lista->ztList::GotFocus(), &lista->ztList::ItemClick(), &lista->ztList::DepoisDeRemoverItem()}) {
        evento->dispara();
        EXPECT_EQ(Vistos(), Menu(1));
    }
    for (const auto &[chave, comando] : std::vector<std::pair<std::string, Linhas>>{{MenuLista::Novo, {"Novo"}},
                                                                                    {MenuLista::Editar, {"Editar"}},
                                                                                    {MenuLista::Detalhes, {"Detalhes"}},
                                                                                    {MenuLista::Excluir, {}}}) {
        lista->ztList::ItemMenuClicado().dispara(chave);
        EXPECT_EQ(Vistos(), comando);
    }
    for (bool pode : {true, false}) {
        controlador->Pode = pode;
        std::int32_t linha = 7;
        lista->ztList::AntesDeRemoverItem().dispara(linha);
        EXPECT_EQ(linha, pode ? 7 : 0);
        EXPECT_EQ(Vistos(), Linhas{"Excluir 7"});
    }
}

TEST_F(ControladorListaTeste, AFault_IsPassedOnWithItsPathOrShownUnderTheNameOfTheEvent)
{
    const std::string fonte = "ztList.ItemMenu < COTeste.HabilitaMenu";
    controlador->Prepara(lista, false);
    lista->ItemQueFalta = MenuLista::Editar;
    EXPECT_TRUE(Lanca(5, fonte + " < COTeste.MenuInicial", "Não há", [&] { controlador->Prepara(lista, false); }));
    EXPECT_TRUE(Lanca(5, fonte + " < COTeste.m_ZtList_DepoisDeRemoverItem", "Não há",
                      [&] { lista->ztList::DepoisDeRemoverItem().dispara(); })); // the binding stands all the same
    lista->ztList::GotFocus().dispara();
    lista->ztList::ItemClick().dispara();
    controlador->AoComandar = [] { throw Falha(13); };
    std::int32_t linha = 1;
    lista->ztList::AntesDeRemoverItem().dispara(linha);
    lista->ztList::ItemMenuClicado().dispara(MenuLista::Novo);
    EXPECT_TRUE(RegistroIgual(ErrosInteiros(),
                              {"COTeste.m_ZtList_GotFocus|5|Não há|" + fonte + "|*",
                               "COTeste.m_ZtList_ItemClick|5|Não há|" + fonte + "|*",
                               "COTeste.m_ZtList_AntesDeRemoverItem|13|*", "COTeste.m_ZtList_ItemMenuClicado|13|*"}));
}

TEST_F(ControladorListaTeste, Prepara_Nothing_RaisesNinetyOneAndLetsGoOfTheFormerList)
{
    controlador->Prepara(lista, false);
    EXPECT_TRUE(Lanca(91, "ZTAVOREQUIP < gsubConfigLista", [&] { controlador->Prepara(nullptr, false); }));
    Vistos();
    lista->ztList::GotFocus().dispara();
    EXPECT_EQ(Vistos(), Linhas{});
}

TEST_F(ControladorListaTeste, BloqueiaSemPermissao_ForAnAction_BarsTheItemWithoutThePermissionForIt)
{
    BloqueiaSemPermissao(lista, MenuLista::Novo, "I");
    EXPECT_FALSE(lista->Menu().Item(MenuLista::Novo)->Bloqueado());
    host->objSCA->Nega("VOR-EQP-CS", "I");
    BloqueiaSemPermissao(lista, MenuLista::Novo, "I");
    EXPECT_TRUE(lista->Menu().Item(MenuLista::Novo)->Bloqueado());
    EXPECT_TRUE(RegistroIgual(host->Registro(), {"objSCA.PossuiPerm2(\"NAB\", \"VOR-EQP-CS\", \"I\") -> True",
                                                 "objSCA.PossuiPerm2(\"NAB\", \"VOR-EQP-CS\", \"I\") -> False"}));
}

} // namespace
