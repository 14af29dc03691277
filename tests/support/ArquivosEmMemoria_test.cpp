#include "tests/support/ArquivosEmMemoria.h"

#include "tests/support/FalhaLancada.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Nomes = std::vector<std::string>;

TEST(ArquivosEmMemoria, Nomes_OfAPattern_IgnoresCaseAndOtherDirectories)
{
    ArquivosEmMemoria arquivos;
    arquivos.Poe("C:\\LAY\\b.LAY", {});
    arquivos.Poe("C:\\LAY\\A.lay", {});
    arquivos.Poe("C:\\LAY\\A.TXT", {});
    arquivos.Poe("C:\\LAY\\SUB\\C.LAY", {});
    EXPECT_EQ(arquivos.Nomes("c:\\lay\\*.lay"), (Nomes{"b.LAY", "A.lay"}));
    EXPECT_EQ(arquivos.Nomes("C:\\LAY\\?.TXT"), Nomes{"A.TXT"});
    EXPECT_EQ(arquivos.Nomes("C:\\LAY\\*a*"), (Nomes{"b.LAY", "A.lay", "A.TXT"}));
    EXPECT_EQ(arquivos.Nomes("C:\\OUTRO\\*.*"), Nomes{});
}

TEST(ArquivosEmMemoria, Operations_OnWhatIsProtected_RaiseFault75)
{
    ArquivosEmMemoria arquivos;
    arquivos.CriaDiretorio("C:\\T\\");
    arquivos.Grava("C:\\T\\A", {});
    arquivos.Protege("C:\\T\\A");
    EXPECT_EQ(FalhaLancada([&] { arquivos.Grava("C:\\T\\A", {1}); }).Numero, 75);
    EXPECT_EQ(FalhaLancada([&] { arquivos.Apaga("C:\\T\\A"); }).Numero, 75);
    EXPECT_TRUE(arquivos.Existe("C:\\T\\A"));
}

} // namespace
