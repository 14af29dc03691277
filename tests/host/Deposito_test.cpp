#include "host/Deposito.h"

#include "tests/support/MemoriaEscassa.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <new>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace {

class Guardado final : public Objeto {
  public:
    explicit Guardado(std::string texto) : Texto(std::move(texto)) {}
    std::string_view NomeTipo() const override { return "Guardado"; }
    std::string Texto;
};

std::vector<Ref<Guardado>> Muitos(int quantos)
{
    std::vector<Ref<Guardado>> todos;
    for (int i = 1; i <= quantos; ++i) {
        todos.push_back(Deposito<Guardado>::Novo(std::to_string(i)));
    }
    return todos;
}

TEST(Deposito, Novo_Several_EachIsAnObjectOfItsOwn)
{
    const auto todos = Muitos(1000);
    for (std::size_t i = 0; i < todos.size(); ++i) {
        EXPECT_EQ(todos[i]->Texto, std::to_string(i + 1));
        EXPECT_TRUE(Eu(*todos[i]) == todos[i]);
    }
}

TEST(Deposito, Novo_LastReferenceGone_TheObjectEndsAtOnce)
{
    auto um = Deposito<Guardado>::Novo("um");
    auto outro = Deposito<Guardado>::Novo("outro");
    const RefFraca<Guardado> vigia = um;
    um = nullptr;
    EXPECT_TRUE(vigia.Nada());
    EXPECT_EQ(outro->Texto, "outro");
}

TEST(Deposito, EveryObjectGone_NoMemoryIsKept)
{
    const std::int64_t antes = BlocosOcupados();
    {
        auto todos = Muitos(1000);
        todos.erase(todos.begin() + 1, todos.end());
        EXPECT_GT(BlocosOcupados(), antes);
        EXPECT_EQ(todos[0]->Texto, "1");
    }
    EXPECT_EQ(BlocosOcupados(), antes);
}

TEST(Deposito, Uso_ObjectsGoneAndCreatedAgain_TakeTheSamePlaces)
{
    const std::int64_t antes = BlocosOcupados();
    {
        const Deposito<Guardado>::Uso uso;
        std::set<const Guardado *> lugares;
        for (const auto &guardado : Muitos(200)) {
            lugares.insert(guardado.Ponteiro());
        }
        const std::int64_t guardados = BlocosOcupados();
        for (const auto &guardado : Muitos(200)) {
            // Under the sanitizers every object has memory of its own.
            EXPECT_TRUE(lugares.contains(guardado.Ponteiro()) || DetalheDeposito::Desligado);
        }
        EXPECT_EQ(BlocosOcupados(), guardados);
    }
    EXPECT_EQ(BlocosOcupados(), antes);
}

TEST(Deposito, Novo_MemoryRefusedAnywhere_NothingIsKept)
{
    const std::int64_t antes = BlocosOcupados();
    bool recusou = true;
    std::int64_t n = 0;
    while (recusou) {
        ASSERT_LT(++n, 100);
        MemoriaEscassa escassa(n);
        try {
            const auto guardado = Deposito<Guardado>::Novo("longer than a text that needs no memory of its own");
        } catch (const std::bad_alloc &) {
            recusou = escassa.Recusou();
            EXPECT_EQ(BlocosOcupados(), antes) << n;
            continue;
        }
        recusou = false;
    }
    EXPECT_GT(n, 2);
    EXPECT_EQ(BlocosOcupados(), antes);
}

} // namespace
