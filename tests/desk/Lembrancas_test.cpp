#include "desk/host/Lembrancas.h"
#include "desk/host/Preferencias.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fstream>

namespace {

using namespace mesa;

class LembrancasTeste : public testing::Test {
  protected:
    std::filesystem::path Em(const std::string &nome) const
    {
        return pasta.filePath(QString::fromStdString(nome)).toStdString();
    }

    QTemporaryDir pasta;
    Preferencias preferencias{Em("preferencias.ini")};
    Lembrancas ana{preferencias, "r1", "ana"};
};

TEST_F(LembrancasTeste, Lembra_IsThereForTheSameUserOfTheSameRegistryOnly)
{
    ana.Lembra("frmLista/colunas", "1;2\"=\nç");
    EXPECT_EQ(ana.Lembranca("frmLista/colunas"), "1;2\"=\nç");
    EXPECT_EQ(Lembrancas(preferencias, "r1", "ANA").Lembranca("frmLista/colunas"), "1;2\"=\nç");
    EXPECT_EQ(Lembrancas(preferencias, "r1", "bruno").Lembranca("frmLista/colunas"), "");
    EXPECT_EQ(Lembrancas(preferencias, "r2", "ana").Lembranca("frmLista/colunas"), "");
    EXPECT_EQ(ana.Lembranca("frmLista"), "");
}

TEST_F(LembrancasTeste, Lembra_IsReadAgainFromTheFile)
{
    {
        Preferencias outras(Em("outras.ini"));
        Lembrancas(outras, "r1", "josé/../x").Lembra("lugar", "10 20");
    }
    Preferencias outras(Em("outras.ini"));
    EXPECT_EQ(Lembrancas(outras, "r1", "josé/../x").Lembranca("lugar"), "10 20");
}

TEST_F(LembrancasTeste, Esquece_OnlyWhatBeginsSo)
{
    Lembrancas bruno(preferencias, "r1", "bruno");
    bruno.Lembra("lista/ordem", "3");
    ana.Lembra("lista/ordem", "1");
    ana.Lembra("lista/larguras", "2");
    ana.Lembra("janela", "9");
    ana.Lembra("janela", "");
    EXPECT_EQ(ana.Lembranca("janela"), "");
    ana.Lembra("janela", "9");
    ana.Esquece("lista/");
    EXPECT_EQ(ana.Lembranca("lista/ordem"), "");
    EXPECT_EQ(ana.Lembranca("lista/larguras"), "");
    EXPECT_EQ(ana.Lembranca("janela"), "9");
    ana.Esquece("");
    EXPECT_EQ(ana.Lembranca("janela"), "");
    EXPECT_EQ(bruno.Lembranca("lista/ordem"), "3");
}

TEST_F(LembrancasTeste, Lembra_WhereNothingCanBeWritten_GoesOnWithoutAWord)
{
    std::ofstream(Em("arquivo")) << "x";
    Preferencias semLugar(Em("arquivo") / "preferencias.ini");
    Lembrancas quem(semLugar, "r1", "ana");
    EXPECT_NO_THROW(quem.Lembra("janela", "9"));
    EXPECT_NO_THROW(quem.Esquece(""));
}

} // namespace
