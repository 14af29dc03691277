#include "tests/guarda/Guarda.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

class GuardaLigacao : public testing::Test {
  protected:
    // Configures a project of the guarded libraries and one foreign one, with `ligacoes` among them.
    Execucao Configura(const std::string &ligacoes) const
    {
        m_Projeto.Escreve("CMakeLists.txt", "cmake_minimum_required(VERSION 3.25)\n"
                                            "project(Prova LANGUAGES NONE)\n"
                                            "include(\"" +
                                                std::filesystem::absolute("cmake/GuardaLigacao.cmake").string() +
                                                "\")\n"
                                                "foreach(alvo host modulo controls tela automacao hospedeiro_windows "
                                                "tela_windows alheia)\n"
                                                "    add_library(${alvo} INTERFACE)\n"
                                                "endforeach()\n" +
                                                ligacoes + "\nguarda_ligacao()\n");
        const std::string pasta = m_Projeto.Caminho.string();
        return ExecutaCMake("-G Ninja -S '" + pasta + "' -B '" + pasta + "/build'");
    }

    void EsperaRecusa(const std::string &ligacoes, const std::string &texto) const
    {
        const Execucao execucao = Configura(ligacoes);
        EXPECT_FALSE(execucao.Passou) << ligacoes;
        EXPECT_NE(execucao.Saida.find(texto), std::string::npos) << execucao.Saida;
    }

    PastaTemporaria m_Projeto;
};

} // namespace

TEST_F(GuardaLigacao, configure_ModuleAndControlsLinkTheContract_Passes)
{
    const Execucao execucao =
        Configura("target_link_libraries(modulo INTERFACE host)\ntarget_link_libraries(controls INTERFACE host)\n"
                  "target_link_libraries(tela INTERFACE controls host)\n"
                  "target_link_libraries(automacao INTERFACE host oleaut32)\n"
                  "target_link_libraries(hospedeiro_windows INTERFACE tela_windows automacao modulo host)\n"
                  "target_link_libraries(tela_windows INTERFACE automacao tela controls host comctl32)");
    EXPECT_TRUE(execucao.Passou) << execucao.Saida;
}

TEST_F(GuardaLigacao, configure_AnythingForeign_IsRefused)
{
    for (const std::string alvo :
         {"host", "modulo", "controls", "tela", "automacao", "hospedeiro_windows", "tela_windows"}) {
        EsperaRecusa("target_link_libraries(" + alvo + " INTERFACE alheia)", alvo + " may not link alheia.");
        EsperaRecusa("target_link_libraries(" + alvo + " INTERFACE pthread)", alvo + " may not link pthread.");
        EsperaRecusa("target_link_options(" + alvo + " INTERFACE -ldl)", alvo + " may not link -ldl.");
    }
}

TEST_F(GuardaLigacao, configure_ForeignBesideTheContract_IsRefused)
{
    EsperaRecusa("target_link_libraries(modulo INTERFACE host alheia)", "modulo may not link alheia.");
}

TEST_F(GuardaLigacao, configure_RoomsThatMayNotKnowEachOther_AreRefused)
{
    EsperaRecusa("target_link_libraries(controls INTERFACE modulo)", "controls may not link modulo.");
    EsperaRecusa("target_link_libraries(modulo INTERFACE controls)", "modulo may not link controls.");
    EsperaRecusa("target_link_libraries(tela INTERFACE modulo)", "tela may not link modulo.");
    EsperaRecusa("target_link_libraries(controls INTERFACE tela)", "controls may not link tela.");
    EsperaRecusa("target_link_libraries(modulo INTERFACE tela)", "modulo may not link tela.");
    EsperaRecusa("target_link_libraries(host INTERFACE modulo)", "host may not link modulo.");
    for (const std::string alvo : {"host", "modulo", "controls", "tela"}) {
        EsperaRecusa("target_link_libraries(" + alvo + " INTERFACE automacao)", alvo + " may not link automacao.");
    }
    EsperaRecusa("target_link_libraries(automacao INTERFACE hospedeiro_windows)",
                 "automacao may not link hospedeiro_windows.");
    EsperaRecusa("target_link_libraries(tela_windows INTERFACE hospedeiro_windows)",
                 "tela_windows may not link hospedeiro_windows.");
    EsperaRecusa("target_link_libraries(tela_windows INTERFACE modulo)", "tela_windows may not link modulo.");
}
