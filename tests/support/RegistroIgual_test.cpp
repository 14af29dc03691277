#include "tests/support/RegistroIgual.h"

namespace {

TEST(RegistroIgual, OfTheSameLinesInTheirOrder_Succeeds)
{
    EXPECT_TRUE(RegistroIgual({}, {}));
    EXPECT_TRUE(RegistroIgual({"a", "b(1)"}, {"a", "b(1)"}));
    EXPECT_FALSE(RegistroIgual({"a", "b"}, {"b", "a"}));
    EXPECT_TRUE(RegistroIgual({"a(1, 2) -> True"}, {"a(1*"})); // what begins so
    EXPECT_FALSE(RegistroIgual({"a(2)"}, {"a(1*"}));
}

TEST(RegistroIgual, OfDifferentLogs_ShowsBothInOrder)
{
    const auto resultado = RegistroIgual({"a", "x", "c", "d"}, {"a", "b", "c"});
    EXPECT_FALSE(resultado);
    EXPECT_STREQ(resultado.message(), "o registro difere (- falta, + sobra):\n"
                                      "  a\n"
                                      "- b\n"
                                      "+ x\n"
                                      "  c\n"
                                      "+ d\n");
}

} // namespace
