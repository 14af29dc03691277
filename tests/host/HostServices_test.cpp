#include "host/HostServices.h"

#include "tests/support/FalhaLancada.h"
#include "tests/support/HostRoteirizado.h"

#include <gtest/gtest.h>

namespace {

TEST(HostServices, InstalaHost_OfAHost_GivesItAndItsPlatformUntilItIsTakenAwayAndNoneIsFault91)
{
    EXPECT_EQ(FalhaLancada([] { Host(); }).Numero, 91);
    EXPECT_EQ(FalhaLancada([] { Plataforma(); }).Numero, 91);
    auto host = Novo<HostRoteirizado>();
    InstalaHost(Ref<HostServices>(host));
    EXPECT_EQ(&Host(), host.Ponteiro());
    EXPECT_TRUE(Plataforma() == host->Tela);
    InstalaHost(nullptr);
    EXPECT_EQ(FalhaLancada([] { Host(); }).Numero, 91);
}

} // namespace
