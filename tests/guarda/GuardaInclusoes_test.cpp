#include "tests/guarda/Guarda.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

class GuardaInclusoes : public testing::Test {
  protected:
    Execucao Olha() const
    {
        return ExecutaCMake("-DRAIZ='" + m_Arvore.Caminho.string() + "' -P cmake/GuardaInclusoes.cmake");
    }

    // The tree holds one file, and the guard refuses it with this one line.
    void EsperaRecusa(const std::string &arquivo, const std::string &conteudo, const std::string &linha) const
    {
        m_Arvore.Escreve(arquivo, conteudo);
        const Execucao execucao = Olha();
        EXPECT_FALSE(execucao.Passou) << conteudo;
        EXPECT_EQ(Recusas(execucao.Saida), std::vector<std::string>{linha}) << execucao.Saida;
    }

    void EsperaPassagem(const std::string &arquivo, const std::string &conteudo) const
    {
        m_Arvore.Escreve(arquivo, conteudo);
        const Execucao execucao = Olha();
        EXPECT_TRUE(execucao.Passou) << conteudo;
        EXPECT_EQ(execucao.Saida, "");
    }

    // The lines printed before CMake's own words about its end.
    static std::vector<std::string> Recusas(const std::string &saida)
    {
        std::vector<std::string> linhas;
        std::size_t inicio = 0;
        for (std::size_t fim = saida.find('\n'); fim != std::string::npos && fim != inicio;
             fim = saida.find('\n', inicio)) {
            linhas.push_back(saida.substr(inicio, fim - inicio));
            inicio = fim + 1;
        }
        return linhas;
    }

    PastaTemporaria m_Arvore;
};

const std::vector<std::string> SalasDoModulo = {"shell", "sensors", "equipment", "limits", "search"};

} // namespace

TEST_F(GuardaInclusoes, look_EmptyTree_Passes)
{
    const Execucao execucao = Olha();
    EXPECT_TRUE(execucao.Passou);
    EXPECT_EQ(execucao.Saida, "");
}

TEST_F(GuardaInclusoes, look_CleanTree_Passes)
{
    m_Arvore.Escreve("host/Falha.h", "#pragma once\n#include <string>\n");
    m_Arvore.Escreve("host/Falha.cpp", "#include \"host/Falha.h\"\n#include <cstdio>\n#include <mutex>\n");
    m_Arvore.Escreve("controls/Combo.cpp", "#include \"controls/Combo.h\"\n#include \"host/Falha.h\"\n");
    m_Arvore.Escreve("controls/Combo.h", "#include <vector>\n");
    m_Arvore.Escreve("tela/Pessoa.cpp", "#include \"controls/Combo.h\"\n#include \"host/Falha.h\"\n#include <span>\n");
    for (const std::string &sala : SalasDoModulo) {
        std::string conteudo = "#include \"host/Falha.h\"\n#include <vector>\n";
        for (const std::string &outra : SalasDoModulo) {
            conteudo += "#include \"" + outra + "/clsUm.h\"\n";
        }
        m_Arvore.Escreve(sala + "/clsUm.cpp", conteudo);
        m_Arvore.Escreve(sala + "/clsUm.h", "#pragma once\n");
    }
    const Execucao execucao = Olha();
    EXPECT_TRUE(execucao.Passou);
    EXPECT_EQ(execucao.Saida, "");
}

TEST_F(GuardaInclusoes, look_OtherRooms_AreNotItsAffair)
{
    m_Arvore.Escreve("desk/windows/Principal.cpp", "#include <QMainWindow>\n#include \"shell/Geral.h\"\n");
    m_Arvore.Escreve("tests/shell/Geral_test.cpp", "#include <fstream>\n");
    EsperaPassagem("shell/README.md", "#include <QString>\n");
}

TEST_F(GuardaInclusoes, look_ToolkitInEachRoom_IsRefused)
{
    std::vector<std::string> recusas;
    for (const std::string sala : {"host", "controls", "tela", "shell", "sensors", "equipment", "limits", "search"}) {
        m_Arvore.Escreve(sala + "/clsUm.h", "#pragma once\n\n#include <QString>\n");
        std::string recusa = sala;
        recusa += "/clsUm.h:3: <QString> is not a header that ";
        recusa += sala;
        recusa += "/ may include";
        recusas.push_back(recusa);
    }
    const Execucao execucao = Olha();
    EXPECT_FALSE(execucao.Passou);
    EXPECT_EQ(Recusas(execucao.Saida), recusas);
}

TEST_F(GuardaInclusoes, look_EachForeignHeaderInTheModule_IsRefused)
{
    for (const std::string cabecalho : {"QtCore/QString", "QSqlQuery",     "sqlite3.h",
                                        "libpq-fe.h",     "sodium.h",      "unistd.h",
                                        "windows.h",      "sys/types.h",   "sys/stat.h",
                                        "fcntl.h",        "dlfcn.h",       "pthread.h",
                                        "dirent.h",       "stdio.h",       "string.h",
                                        "gtest/gtest.h",  "bits/stdc++.h", "experimental/filesystem",
                                        "filesystem",     "fstream",       "thread",
                                        "mutex",          "iostream",      "cstdio",
                                        "csignal",        "future",        "condition_variable",
                                        "shared_mutex"}) {
        EsperaRecusa("sensors/clsSensor.cpp", "int a;\n#include <" + cabecalho + ">\nint b;\n",
                     "sensors/clsSensor.cpp:2: <" + cabecalho + "> is not a header that sensors/ may include");
    }
}

TEST_F(GuardaInclusoes, look_EachForeignHeaderInTheControls_IsRefused)
{
    for (const std::string cabecalho : {"filesystem", "fstream", "thread", "mutex", "iostream", "cstdio", "QWidget"}) {
        EsperaRecusa("controls/ztCombo.cpp", "#include <" + cabecalho + ">\n",
                     "controls/ztCombo.cpp:1: <" + cabecalho + "> is not a header that controls/ may include");
    }
}

TEST_F(GuardaInclusoes, look_FilesInTheContract_AreRefused)
{
    for (const std::string cabecalho : {"filesystem", "fstream", "unistd.h", "sys/stat.h"}) {
        EsperaRecusa("host/Plataforma.h", "#include <" + cabecalho + ">\n",
                     "host/Plataforma.h:1: <" + cabecalho + "> is not a header that host/ may include");
    }
}

TEST_F(GuardaInclusoes, look_ContractKnowingAnotherRoom_IsRefused)
{
    for (const std::string sala :
         {"shell", "sensors", "equipment", "limits", "search", "controls", "tela", "desk", "tests"}) {
        EsperaRecusa("host/Falha.h", "#include \"" + sala + "/clsUm.h\"\n",
                     "host/Falha.h:1: host/ may not know \"" + sala + "/clsUm.h\"");
    }
}

TEST_F(GuardaInclusoes, look_ControlsKnowingAnotherRoom_IsRefused)
{
    for (const std::string sala : {"tela", "shell", "sensors", "equipment", "limits", "search", "desk", "tests"}) {
        EsperaRecusa("controls/ztCombo.h", "#include \"" + sala + "/clsUm.h\"\n",
                     "controls/ztCombo.h:1: controls/ may not know \"" + sala + "/clsUm.h\"");
    }
}

TEST_F(GuardaInclusoes, look_ScreenRoomKnowingTheModuleOrTheDesk_IsRefused)
{
    for (const std::string sala : {"shell", "sensors", "equipment", "limits", "search", "desk", "tests"}) {
        EsperaRecusa("tela/Pessoa.h", "#include \"" + sala + "/clsUm.h\"\n",
                     "tela/Pessoa.h:1: tela/ may not know \"" + sala + "/clsUm.h\"");
    }
    EsperaRecusa("tela/Pessoa.h", "#include <QWidget>\n",
                 "tela/Pessoa.h:1: <QWidget> is not a header that tela/ may include");
}

TEST_F(GuardaInclusoes, look_ModuleKnowingControlsDeskOrTests_IsRefused)
{
    for (const std::string sala : {"controls", "tela", "desk", "tests", "bench"}) {
        EsperaRecusa("search/frmLista.cpp", "#include \"" + sala + "/clsUm.h\"\n",
                     "search/frmLista.cpp:1: search/ may not know \"" + sala + "/clsUm.h\"");
    }
}

TEST_F(GuardaInclusoes, look_AnyRoomKnowingTheRoomsOfWindows_IsRefused)
{
    for (const std::string sala :
         {"host", "controls", "tela", "shell", "sensors", "equipment", "limits", "search", "desk"}) {
        for (const std::string outra : {"automation", "host", "screen", "component"}) {
            EsperaRecusa(sala + "/clsUm.h", "#include \"windows/" + outra + "/Dois.h\"\n",
                         sala + "/clsUm.h:1: " + sala + "/ may not know \"windows/" + outra + "/Dois.h\"");
            std::filesystem::remove(m_Arvore.Caminho / sala / "clsUm.h");
        }
    }
}

TEST_F(GuardaInclusoes, look_RoomsOfWindowsKnowingWhatIsBelowThem_Passes)
{
    m_Arvore.Escreve("windows/automation/Um.h", "#include <windows.h>\n#include \"host/Falha.h\"\n");
    m_Arvore.Escreve("windows/screen/Um.h", "#include <commctrl.h>\n#include \"windows/automation/Um.h\"\n"
                                            "#include \"tela/Pessoa.h\"\n#include \"controls/Combo.h\"\n");
    m_Arvore.Escreve("windows/host/Um.h", "#include <oaidl.h>\n#include \"windows/automation/Um.h\"\n"
                                          "#include \"windows/screen/Um.h\"\n#include \"host/Falha.h\"\n"
                                          "#include \"shell/Geral.h\"\n#include \"tela/Pessoa.h\"\n");
    EsperaPassagem("windows/component/Um.cpp", "#include \"windows/screen/Um.h\"\n#include \"windows/host/Um.h\"\n"
                                               "#include \"windows/automation/Um.h\"\n#include \"shell/Geral.h\"\n"
                                               "#include \"tela/Pessoa.h\"\n#include \"controls/Combo.h\"\n");
}

TEST_F(GuardaInclusoes, look_RoomsOfWindowsKnowingTheDeskTestsOrWhatIsAboveThem_IsRefused)
{
    const auto recusa = [this](const std::string &sala, const std::string &alvo) {
        const std::string arquivo = sala + "/Um.h";
        EsperaRecusa(arquivo, "#include \"" + alvo + "\"\n",
                     arquivo + ":1: " + sala + "/ may not know \"" + alvo + "\"");
        std::filesystem::remove(m_Arvore.Caminho / arquivo);
    };
    for (const std::string sala : {"automation", "host", "screen", "component"}) {
        recusa("windows/" + sala, "desk/windows/Principal.h");
        recusa("windows/" + sala, "tests/support/HostRoteirizado.h");
        recusa("windows/" + sala, "windows/Solto.h");
    }
    for (const std::string sala : {"automation", "screen"}) {
        recusa("windows/" + sala, "windows/component/Dois.h");
        recusa("windows/" + sala, "windows/host/Dois.h");
        recusa("windows/" + sala, "shell/Geral.h");
    }
    recusa("windows/host", "windows/component/Dois.h");
    recusa("windows/automation", "windows/screen/Dois.h");
    recusa("windows/automation", "controls/Combo.h");
}

TEST_F(GuardaInclusoes, look_PathNotFromTheRoot_IsRefused)
{
    for (const std::string alvo :
         {"../desk/Principal.h", "../../x.h", "shell/../desk/Principal.h", "host/../../x.h", "clsOutro.h",
          "./clsOutro.h", "/usr/include/unistd.h", "unistd.h", "vector", "shell/tabela.inc", "shell/clsUm.cpp", ""}) {
        EsperaRecusa("shell/Geral.cpp", "#include \"" + alvo + "\"\n",
                     "shell/Geral.cpp:1: \"" + alvo + "\" is not written as \"room/Name.h\" from the root");
    }
}

TEST_F(GuardaInclusoes, look_IncludeByMacro_IsRefused)
{
    EsperaRecusa("limits/clsLimite.cpp", "#define ALVO <unistd.h>\n#include ALVO\n",
                 "limits/clsLimite.cpp:2: an #include must name its header, not compute it");
    EsperaRecusa("limits/clsLimite.cpp", "#include ALVO(x)\n",
                 "limits/clsLimite.cpp:1: an #include must name its header, not compute it");
}

TEST_F(GuardaInclusoes, look_OtherWaysToInclude_AreRefused)
{
    EsperaRecusa("shell/Geral.cpp", "#include_next <vector>\n", "shell/Geral.cpp:1: #include_next is not used here");
    EsperaRecusa("shell/Geral.cpp", "#import <vector>\n", "shell/Geral.cpp:1: #import is not used here");
}

TEST_F(GuardaInclusoes, look_OddSpacing_IsRefused)
{
    const std::string recusa = ": <unistd.h> is not a header that shell/ may include";
    for (const std::string linha :
         {"# include <unistd.h>", "\t#\tinclude\t<unistd.h>", "  #include<unistd.h>", "#include <unistd.h>// why",
          "#include <unistd.h> /* why */", "#/**/include/**/<unistd.h>", "/* why */ #include <unistd.h>",
          "%:include <unistd.h>", "#include <unistd.h>\r"}) {
        EsperaRecusa("shell/Geral.cpp", linha + "\n", "shell/Geral.cpp:1" + recusa);
    }
    EsperaRecusa("shell/Geral.cpp", "#include <unistd.h>", "shell/Geral.cpp:1" + recusa);
    EsperaRecusa("shell/Geral.cpp", "\xEF\xBB\xBF#include <unistd.h>\n", "shell/Geral.cpp:1" + recusa);
    EsperaRecusa("shell/Geral.cpp", "#inc\\\nlude \\\n<unistd.h>\n", "shell/Geral.cpp:1" + recusa);
    EsperaRecusa("shell/Geral.cpp", "/* a\n b */ #include <unistd.h>\n", "shell/Geral.cpp:2" + recusa);
}

TEST_F(GuardaInclusoes, look_IncludeUnderACondition_IsRefused)
{
    EsperaRecusa("shell/Geral.cpp", "#ifdef _WIN32\n#include <windows.h>\n#endif\n",
                 "shell/Geral.cpp:2: <windows.h> is not a header that shell/ may include");
}

TEST_F(GuardaInclusoes, look_IncludeThatIsNoDirective_Passes)
{
    for (const std::string conteudo :
         {"// #include <unistd.h>\n", "/* #include <unistd.h> */\n", "/*\n#include <unistd.h>\n*/\n",
          "/* a\n * b\n#include <unistd.h> */ int a;\n", "// goes on \\\n#include <unistd.h>\n",
          "const char *a = \"#include <unistd.h>\";\n", "const char *a = R\"(\n#include <unistd.h>\n)\";\n",
          "const char *a = u8R\"x(\n)\"\n#include <unistd.h>\n)x\";\n", "#define include <unistd.h>\n",
          "#error include <unistd.h>\n", "#includes <unistd.h>\n", "int include = 0; // #\n"}) {
        EsperaPassagem("shell/Geral.cpp", conteudo);
    }
}

TEST_F(GuardaInclusoes, look_TextThatLooksLikeAComment_HidesNothing)
{
    const std::string recusa = ": <unistd.h> is not a header that shell/ may include";
    for (const std::string linha :
         {"const char *a = \"/*\";", "const char *a = \"\\\"/*\";", "char a = '\"'; const char *b = \"/*\";",
          "int a = 1'000; char b = '\"'; const char *c = \"/*\";", "// /*", "const char *a = R\"(/*)\";",
          "const char *a = \"R\\\"(/*\";", "auto a = \"[;]\"; // R\"("}) {
        EsperaRecusa("shell/Geral.cpp", linha + "\n#include <unistd.h>\n", "shell/Geral.cpp:2" + recusa);
    }
}

TEST_F(GuardaInclusoes, look_CommentOrRawStringLeftOpen_IsRefusedWhereItOpens)
{
    const std::string recusa = "shell/Geral.cpp:2: the comment or raw string that opens here does not close";
    EsperaRecusa("shell/Geral.cpp", "int a;\n/* open\nint b;\n", recusa);
    EsperaRecusa("shell/Geral.cpp", "int a;\nauto b = R\"x( open )\";\nint c;\n", recusa);
}

TEST_F(GuardaInclusoes, look_FileDeepInARoom_IsLookedAt)
{
    EsperaRecusa("shell/menus/Menu.h", "#include <unistd.h>\n",
                 "shell/menus/Menu.h:1: <unistd.h> is not a header that shell/ may include");
}

TEST_F(GuardaInclusoes, look_SeveralViolations_EachHasItsLine)
{
    m_Arvore.Escreve("host/Falha.h", "#include \"shell/Geral.h\"\n#include <QString>\n");
    m_Arvore.Escreve("limits/clsLimite.cpp", "\n\n\n#include <fcntl.h>\n");
    const Execucao execucao = Olha();
    EXPECT_FALSE(execucao.Passou);
    EXPECT_EQ(Recusas(execucao.Saida),
              (std::vector<std::string>{"host/Falha.h:1: host/ may not know \"shell/Geral.h\"",
                                        "host/Falha.h:2: <QString> is not a header that host/ may include",
                                        "limits/clsLimite.cpp:4: <fcntl.h> is not a header that limits/ may include"}));
}

TEST_F(GuardaInclusoes, stamp_OnlyWhenTheTreeIsClean)
{
    const std::filesystem::path carimbo = m_Arvore.Caminho / "carimbo";
    const std::string argumentos = "-DRAIZ='" + m_Arvore.Caminho.string() + "' -DCARIMBO='" + carimbo.string() +
                                   "' -P cmake/GuardaInclusoes.cmake";

    m_Arvore.Escreve("shell/Geral.cpp", "#include <unistd.h>\n");
    EXPECT_FALSE(ExecutaCMake(argumentos).Passou);
    EXPECT_FALSE(std::filesystem::exists(carimbo));

    m_Arvore.Escreve("shell/Geral.cpp", "#include <vector>\n");
    EXPECT_TRUE(ExecutaCMake(argumentos).Passou);
    EXPECT_TRUE(std::filesystem::exists(carimbo));
}
