#include "host/Colecao.h"

#include "host/Ref.h"
#include "tests/support/FalhaLancada.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace {

std::vector<std::string> Itens(const Colecao<std::string> &colecao)
{
    std::vector<std::string> itens;
    for (std::int32_t posicao = 1; posicao <= colecao.Count(); ++posicao) {
        itens.push_back(colecao.Item(posicao));
    }
    return itens;
}

using Textos = std::vector<std::string>;

TEST(Colecao, Item_ByPosition_IsInTheOrderOfAdding)
{
    Colecao<std::string> colecao;
    EXPECT_EQ(colecao.Count(), 0);
    colecao.Add("a", "z");
    colecao.Add("b");
    colecao.Add("c", "y");
    EXPECT_EQ(Itens(colecao), (Textos{"a", "b", "c"}));
    for (std::int32_t fora : {0, -1, 4}) {
        EXPECT_EQ(FalhaLancada([&] { colecao.Item(fora); }).Numero, 9);
        EXPECT_EQ(FalhaLancada([&] { colecao.Remove(fora); }).Numero, 9);
    }
}

TEST(Colecao, Item_ByKey_IgnoresCaseMindsAccentsAndIsNoPosition)
{
    Colecao<std::string> colecao;
    EXPECT_EQ(FalhaLancada([&] { colecao.Item("x"); }).Numero, 5);
    colecao.Add("aferição", "Aferição");
    EXPECT_EQ(colecao.Item("AFERIÇÃO"), "aferição");
    for (const char *outra : {"Afericao", "", "1"}) {
        EXPECT_EQ(FalhaLancada([&] { colecao.Item(outra); }).Numero, 5);
    }
    colecao.Add("b", "1");
    EXPECT_EQ(colecao.Item("1"), "b");
    EXPECT_EQ(colecao.Item(1), "aferição");
}

TEST(Colecao, Primeiro_ByCondition_FirstInTheOrderOfAddingOrNull)
{
    Colecao<std::string> colecao;
    EXPECT_EQ(colecao.Primeiro([](const std::string &) { return true; }), nullptr);
    colecao.Add("um", "z");
    colecao.Add("dois", "a");
    colecao.Add("três");
    const std::string *achado = colecao.Primeiro([](const std::string &item) { return item != "um"; });
    ASSERT_NE(achado, nullptr);
    EXPECT_EQ(*achado, "dois");
    EXPECT_EQ(colecao.Primeiro([](const std::string &) { return false; }), nullptr);
}

TEST(Colecao, AddCriado_GivesTheItemWhereItIsAndAddsNothingWhenItCannotBeCreated)
{
    Colecao<std::string> colecao;
    colecao.Add("a", "z");
    const auto cria = []() -> std::string { throw Falha(NumeroFalha::Estouro); };
    EXPECT_EQ(FalhaLancada([&] { colecao.AddCriado(cria); }).Numero, 6);
    const std::string &criado = colecao.AddCriado([] { return std::string("b"); });
    EXPECT_EQ(criado, "b");
    EXPECT_EQ(&criado, &colecao.Item(2));
    colecao.Add("c", "y");
    EXPECT_EQ(Itens(colecao), (Textos{"a", "b", "c"}));
    EXPECT_EQ(colecao.Item("y"), "c");
}

TEST(Colecao, Reserva_OfRoom_LeavesTheItemsAndWhatIsAddedBesides)
{
    Colecao<std::string> colecao;
    colecao.Reserva(2);
    for (const char *item : {"a", "b", "c", "d"}) {
        colecao.Add(item, item);
    }
    colecao.Remove(1);
    colecao.Remove("b");
    colecao.Reserva(100);
    colecao.Add("e", "e");
    EXPECT_EQ(Itens(colecao), (Textos{"c", "d", "e"}));
    EXPECT_EQ(colecao.Item("d"), "d");
    EXPECT_EQ(FalhaLancada([&] { colecao.Item("a"); }).Numero, 5);
}

TEST(Colecao, Reserva_BeforeEveryItem_MovesThemNoMoreThanAddingAlone)
{
    Colecao<std::string> colecao;
    int mudancas = 0;
    const std::string *primeiro = nullptr;
    for (int vez = 1; vez <= 1024; ++vez) {
        colecao.Reserva(1);
        colecao.Add("a");
        mudancas += primeiro != &colecao.Item(1) ? 1 : 0;
        primeiro = &colecao.Item(1);
    }
    EXPECT_LE(mudancas, 11);
}

TEST(Colecao, Add_WhileTheFirstIsTakenEachTime_StaysInItsPlace)
{
    Colecao<std::string> colecao;
    for (int vez = 1; vez <= 8; ++vez) {
        colecao.Add("a");
    }
    std::set<const std::string *> lugares;
    for (int vez = 1; vez <= 10000; ++vez) {
        colecao.Add("b");
        colecao.Remove(1);
        lugares.insert(&colecao.Item(1));
    }
    EXPECT_EQ(colecao.Count(), 8);
    EXPECT_LE(lugares.size(), 64U);
}

TEST(Colecao, Add_OfAKeyInUse_IsFault457AndAddsNothing)
{
    Colecao<std::string> colecao;
    colecao.Add("a", "A9");
    EXPECT_EQ(FalhaLancada([&] { colecao.Add("d", "a9"); }).Numero, 457);
    colecao.Add("b", "A10");
    colecao.Add("c", "a11");
    for (const char *chave : {"A9", "a10", "A11"}) { // keys that grow
        EXPECT_EQ(FalhaLancada([&] { colecao.Add("d", chave); }).Numero, 457);
    }
    colecao.Add("d", "A1");
    EXPECT_EQ(Itens(colecao), (Textos{"a", "b", "c", "d"}));
    EXPECT_EQ(colecao.Item("A1"), "d");
    EXPECT_EQ(colecao.Item("A11"), "c");
}

TEST(Colecao, Add_OfAnEmptyKeyOrNone_AreNotTheSame)
{
    Colecao<std::string> colecao;
    colecao.Add("a", "");
    EXPECT_EQ(colecao.Item(""), "a");
    EXPECT_EQ(FalhaLancada([&] { colecao.Add("b", ""); }).Numero, 457);
    colecao.Add("c");
    colecao.Add("d");
    EXPECT_EQ(FalhaLancada([&] { colecao.Add("b", ""); }).Numero, 457); // before items without a key
    colecao.Add("e", "A2");
    EXPECT_EQ(colecao.Item("A2"), "e");
    EXPECT_EQ(colecao.Count(), 4);
}

TEST(Colecao, Remove_OfAnItem_ClosesTheGapAndFreesItsKey)
{
    Colecao<std::string> colecao;
    colecao.Add("a", "S1");
    colecao.Add("b", "S2");
    colecao.Add("c", "S3");
    colecao.Remove("s2");
    EXPECT_EQ(Itens(colecao), (Textos{"a", "c"}));
    EXPECT_EQ(colecao.Item("S3"), "c");
    EXPECT_EQ(FalhaLancada([&] { colecao.Remove("S2"); }).Numero, 5);
    colecao.Add("d", "S2");
    EXPECT_EQ(colecao.Item("S2"), "d");
    EXPECT_EQ(Itens(colecao), (Textos{"a", "c", "d"}));
    colecao.Remove(1);
    EXPECT_EQ(FalhaLancada([&] { colecao.Item("S1"); }).Numero, 5);
    EXPECT_EQ(colecao.Item("S2"), "d");
}

TEST(Colecao, RemoveTodos_OfSomeItems_LeavesNothingAndFreesTheirKeys)
{
    Colecao<std::string> colecao;
    colecao.Add("a", "S1");
    colecao.Add("b", "S3");
    colecao.Add("c", "S2");
    colecao.Remove(1);
    colecao.RemoveTodos();
    EXPECT_EQ(colecao.Count(), 0);
    EXPECT_EQ(FalhaLancada([&] { colecao.Item("S2"); }).Numero, 5);
    EXPECT_EQ(FalhaLancada([&] { colecao.Item(1); }).Numero, 9);
    colecao.Add("d", "S2");
    EXPECT_EQ(colecao.Item("s2"), "d");
    EXPECT_EQ(Itens(colecao), Textos{"d"});
}

TEST(Colecao, Remove_OfAnItemWhoseEndLooksAtTheCollection_FindsItWhole)
{
    struct Curioso {
        Colecao<Ref<Objeto>> *Lista;
        std::int32_t *Visto;
    };
    class Item : public Objeto {
      public:
        explicit Item(Curioso curioso) : m_Curioso(curioso) {}
        ~Item() override { *m_Curioso.Visto = m_Curioso.Lista->Count(); }
        std::string_view NomeTipo() const override { return "Item"; }

      private:
        Curioso m_Curioso;
    };
    std::int32_t visto = -1;
    Colecao<Ref<Objeto>> colecao;
    colecao.Add(Novo<Item>(Curioso{&colecao, &visto}), "a");
    colecao.Remove("a");
    EXPECT_EQ(visto, 0);
    visto = -1;
    colecao.Add(Novo<Item>(Curioso{&colecao, &visto}), "a");
    colecao.RemoveTodos();
    EXPECT_EQ(visto, 0);
}

TEST(Colecao, Add_AfterItWasEmptied_TakesTheOldKeysAgain)
{
    Colecao<std::string> colecao;
    for (int vez = 1; vez <= 2; ++vez) {
        colecao.Add("a", "A1");
        colecao.Add("b", "A2");
        EXPECT_EQ(FalhaLancada([&] { colecao.Item("A3"); }).Numero, 5);
        colecao.Remove(1);
        EXPECT_EQ(FalhaLancada([&] { colecao.Item("A1"); }).Numero, 5);
        colecao.Remove("A2");
        EXPECT_EQ(colecao.Count(), 0);
        EXPECT_EQ(FalhaLancada([&] { colecao.Item("A2"); }).Numero, 5);
    }
}

// Against a list that is searched from its start, through a long run of additions and removals.
TEST(Colecao, AnyRun_OfAdditionsAndRemovals_IsThatOfAPlainList)
{
    std::mt19937 sorteio(2026);
    const auto ate = [&](std::size_t n) { return std::uniform_int_distribution<std::size_t>(0, n - 1)(sorteio); };
    Colecao<std::string> colecao;
    std::vector<std::pair<std::string, std::optional<std::string>>> lista;
    const auto daChave = [&](const std::string &chave) {
        for (std::size_t indice = 0; indice < lista.size(); ++indice) {
            if (lista[indice].second == chave) {
                return indice;
            }
        }
        return lista.size();
    };
    for (int passo = 0; passo < 20000; ++passo) {
        const std::string chave = "k" + std::to_string(ate(60));
        const std::string valor = std::to_string(passo);
        const std::size_t onde = daChave(chave);
        switch (ate(5)) {
        case 0:
            colecao.Add(valor);
            lista.emplace_back(valor, std::nullopt);
            break;
        case 1:
            if (onde == lista.size()) {
                colecao.Add(valor, chave);
                lista.emplace_back(valor, chave);
            } else {
                ASSERT_EQ(FalhaLancada([&] { colecao.Add(valor, chave); }).Numero, 457);
            }
            break;
        case 2:
            if (onde == lista.size()) {
                ASSERT_EQ(FalhaLancada([&] { colecao.Remove(chave); }).Numero, 5);
            } else {
                colecao.Remove(chave);
                lista.erase(lista.begin() + static_cast<std::ptrdiff_t>(onde));
            }
            break;
        default:
            if (!lista.empty()) {
                const std::size_t indice = ate(3) == 0 ? ate(lista.size()) : 0;
                colecao.Remove(static_cast<std::int32_t>(indice) + 1);
                lista.erase(lista.begin() + static_cast<std::ptrdiff_t>(indice));
            }
        }
        ASSERT_EQ(colecao.Count(), static_cast<std::int32_t>(lista.size()));
        const std::size_t agora = daChave(chave);
        if (agora < lista.size()) {
            ASSERT_EQ(colecao.Item(chave), lista[agora].first);
        } else {
            ASSERT_EQ(FalhaLancada([&] { colecao.Item(chave); }).Numero, 5);
        }
        if (!lista.empty()) {
            const std::size_t indice = ate(lista.size());
            ASSERT_EQ(colecao.Item(static_cast<std::int32_t>(indice) + 1), lista[indice].first);
        }
    }
}

// The same with keys that mostly grow, as those of the lists do, and hardly a look-up.
TEST(Colecao, AnyRun_OfKeysThatMostlyGrow_IsThatOfAPlainList)
{
    std::mt19937 sorteio(2027);
    const auto ate = [&](int n) { return std::uniform_int_distribution(0, n - 1)(sorteio); };
    Colecao<int> colecao;
    std::vector<std::pair<int, std::string>> lista;
    int repetidas = 0;
    for (int passo = 1; passo <= 20000; ++passo) {
        const int sorte = ate(1000);
        const std::string chave = "k" + std::to_string(sorte < 900 ? passo : ate(passo));
        const auto onde =
            std::find_if(lista.begin(), lista.end(), [&](const auto &par) { return par.second == chave; });
        if (sorte < 600 || (sorte >= 900 && sorte < 980)) {
            if (onde == lista.end()) {
                colecao.Add(passo, chave);
                lista.emplace_back(passo, chave);
            } else {
                ASSERT_EQ(FalhaLancada([&] { colecao.Add(passo, chave); }).Numero, 457);
                ++repetidas;
            }
        } else if (sorte < 890 && !lista.empty()) {
            const int indice = sorte < 880 ? 0 : ate(static_cast<int>(lista.size()));
            colecao.Remove(indice + 1);
            lista.erase(lista.begin() + indice);
        } else if (sorte < 900) {
            while (colecao.Count() > 0) {
                colecao.Remove(1);
            }
            lista.clear();
        } else if (onde == lista.end()) {
            ASSERT_EQ(FalhaLancada([&] { colecao.Item(chave); }).Numero, 5);
        } else {
            ASSERT_EQ(colecao.Item(chave), onde->first);
        }
        ASSERT_EQ(colecao.Count(), static_cast<std::int32_t>(lista.size()));
        if (!lista.empty()) {
            ASSERT_EQ(colecao.Item(1), lista.front().first);
            ASSERT_EQ(colecao.Item(colecao.Count()), lista.back().first);
        }
    }
    EXPECT_GT(repetidas, 10);
}

} // namespace
