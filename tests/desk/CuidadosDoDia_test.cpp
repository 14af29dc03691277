#include "desk/host/CuidadosDoDia.h"

#include "tests/services/PastaDeTeste.h"
#include "tests/services/RegistroDeTeste.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <filesystem>

using namespace mesa;

namespace {

class CuidadosDoDiaTeste : public testing::Test {
  protected:
    CuidadosDoDia Cuidados()
    {
        return {registro.Caminho(), registro.Aberto(), preferencias, [this] { return registro.Relogio; }};
    }
    std::string Copias() const { return Copia::PastaPadrao(registro.Caminho()); }
    // Does what is due; the findings with a mark for each.
    std::string Faz(CuidadosDoDia &cuidados, bool ociosa)
    {
        std::string feitos;
        while (const auto trabalho = cuidados.Proximo(ociosa)) {
            feitos += std::string(1, "cHC"[static_cast<int>(trabalho->Qual)]);
            for (const std::string &achado : trabalho->Faz([](double, const std::string &) { return true; }).Achados) {
                feitos += " (" + achado + ")";
            }
        }
        return feitos;
    }

    QTemporaryDir pasta;
    RegistroDeTeste registro;
    Preferencias preferencias{pasta.filePath("preferencias.ini").toStdString()};
};

TEST_F(CuidadosDoDiaTeste, Copy_IsMadeOnceADayAndTheCheckWaitsForAnIdleDesk)
{
    CuidadosDoDia cuidados = Cuidados();
    EXPECT_EQ(Faz(cuidados, false), "c");
    EXPECT_EQ(Nomes(Copias()), std::vector<std::string>{"registro.20261120-100000.db"});
    EXPECT_EQ(Faz(cuidados, false), "");
    EXPECT_EQ(Faz(cuidados, true), "C");
    EXPECT_EQ(Faz(cuidados, true), "");
    registro.Relogio.Valor += 1;
    EXPECT_EQ(Faz(cuidados, true), "cC");
    EXPECT_EQ(Nomes(Copias()).size(), 2U);
}

TEST_F(CuidadosDoDiaTeste, WhatWasDoneToday_ByAnotherStartOfTheDesk_IsNotDoneAgain)
{
    CuidadosDoDia primeiros = Cuidados();
    EXPECT_EQ(Faz(primeiros, false), "c");
    preferencias.LembraDiaConferido(registro.Aberto().Identificador(), 20261120);
    CuidadosDoDia outros = Cuidados();
    EXPECT_EQ(Faz(outros, true), "");
}

TEST_F(CuidadosDoDiaTeste, Settings_AreFollowed)
{
    preferencias.DefineCopiaDiaria(false);
    preferencias.DefinePastaDasCabecas(pasta.filePath("cabecas").toStdString());
    std::filesystem::create_directory(pasta.filePath("cabecas").toStdString());
    CuidadosDoDia cuidados = Cuidados();
    EXPECT_EQ(Faz(cuidados, false), "H");
    EXPECT_FALSE(std::filesystem::exists(Copias()));
    ASSERT_EQ(Nomes(pasta.filePath("cabecas").toStdString()).size(), 1U);
    EXPECT_EQ(Nomes(pasta.filePath("cabecas").toStdString())[0].substr(0, 16), "cabeca.20261120.");
}

TEST_F(CuidadosDoDiaTeste, WhatCannotBeDone_IsAFinding)
{
    preferencias.DefineCopiaDiaria(false);
    const std::string ausente = pasta.filePath("nada").toStdString();
    preferencias.DefinePastaDasCabecas(ausente);
    CuidadosDoDia cuidados = Cuidados();
    EXPECT_EQ(Faz(cuidados, false), "H (A pasta " + ausente + ", para as cabeças do histórico, não foi encontrada.)");
}

TEST_F(CuidadosDoDiaTeste, GivenUp_IsDueAgain)
{
    CuidadosDoDia cuidados = Cuidados();
    const auto copia = cuidados.Proximo(false);
    ASSERT_TRUE(copia);
    EXPECT_FALSE(copia->Faz([](double, const std::string &) { return false; }).Inteiro);
    cuidados.Desiste(Cuidado::Copia);
    EXPECT_EQ(Faz(cuidados, false), "c");
}

TEST_F(CuidadosDoDiaTeste, Sample_IsCheckedAndNoMore)
{
    const std::string amostra = pasta.filePath("amostra.db").toStdString();
    const auto agora = [this] { return registro.Relogio; };
    const auto servicos = Servicos::Cria(amostra, TipoDeRegistro::Amostra, agora);
    preferencias.DefinePastaDasCabecas(pasta.path().toStdString());
    CuidadosDoDia cuidados(amostra, *servicos, preferencias, agora);
    EXPECT_EQ(Faz(cuidados, false), "");
    EXPECT_EQ(Faz(cuidados, true), "C");
}

} // namespace
