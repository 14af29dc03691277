#include "desk/host/Dossies.h"

#include "services/ProvaED.h"
#include "services/TextoQt.h"
#include "tests/services/RegistroDeTeste.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

using namespace mesa;

namespace {

class DossiesTeste : public testing::Test {
  protected:
    DossiesTeste() { IncluiComSensores(m_Ana, {{AfericaoDe("1", DataDe(1, 1, 2026), DataDe(31, 12, 2026))}}); }
    std::string Lugar(const char *nome) const { return S(m_Pasta.filePath(nome)); }
    RelatoDoDossie Faz(const PedidoDeDossie &pedido, const std::string &onde)
    {
        return m_Dossies.Faz(pedido, [&](const std::string &nome) {
            m_Oferecidos.push_back(nome);
            return onde;
        });
    }

    RegistroDeTeste m_Registro;
    Ref<SessaoServico> m_Ana = m_Registro.Sessao("ana");
    QTemporaryDir m_Pasta;
    std::vector<std::string> m_Oferecidos;
    Dossies m_Dossies{[this] { return m_Ana; }, SemAndamento};
};

TEST_F(DossiesTeste, Faz_ByNumberOrByCode_PutsItWhereItWasAskedAndItAgrees)
{
    for (const PedidoDeDossie &pedido :
         {PedidoDeDossie{1, "R-001", DataDe(15, 3, 2026)}, PedidoDeDossie{0, "r-001", DataDe(15, 3, 2026)}}) {
        const RelatoDoDossie feito = Faz(pedido, Lugar("um.pdf"));
        EXPECT_TRUE(feito.Bom) << feito.Frase;
        EXPECT_EQ(feito.Frase, "O dossiê foi gravado em " + Lugar("um.pdf") + ".");
        const RelatoDoDossie conferido = m_Dossies.Confere(Lugar("um.pdf"));
        EXPECT_TRUE(conferido.Bom);
        EXPECT_EQ(conferido.Frase, "O dossiê está como foi feito e concorda com o registro.");
    }
    EXPECT_EQ(m_Oferecidos, (std::vector<std::string>{"dossie-R-001-20260315.pdf", "dossie-r-001-20260315.pdf"}));
}

TEST_F(DossiesTeste, Faz_GivenUpAtThePlace_AsksNothingAndTellsNothing)
{
    Dossies dossies([]() -> Ref<SessaoServico> { throw std::runtime_error("nobody is asked"); }, SemAndamento);
    const RelatoDoDossie relato =
        dossies.Faz({1, "R-001", DataDe(15, 3, 2026)}, [](const std::string &) { return std::string(); });
    EXPECT_TRUE(relato.Bom);
    EXPECT_EQ(relato.Frase, "");
}

TEST_F(DossiesTeste, Faz_RefusedOrUnwritable_IsASentenceAndLeavesNoFile)
{
    const RelatoDoDossie recusado = Faz({0, "nada", DataDe(15, 3, 2026)}, Lugar("um.pdf"));
    EXPECT_FALSE(recusado.Bom);
    EXPECT_EQ(recusado.Frase, "O cliente Autoridade Estadual de Trânsito não tem equipamento de código \"nada\".");
    const RelatoDoDossie semLugar = Faz({1, "R-001", DataDe(15, 3, 2026)}, Lugar("nenhuma/um.pdf"));
    EXPECT_FALSE(semLugar.Bom);
    EXPECT_TRUE(semLugar.Frase.starts_with("O dossiê não pôde ser gravado em ")) << semLugar.Frase;
    EXPECT_TRUE(QDir(m_Pasta.path()).isEmpty());
}

TEST_F(DossiesTeste, Confere_WhatIsNoDossier_IsASentence)
{
    QFile outro(Q(Lugar("outro.pdf")));
    ASSERT_TRUE(outro.open(QIODevice::WriteOnly));
    outro.write("%PDF-1.4");
    outro.close();
    const RelatoDoDossie relato = m_Dossies.Confere(Lugar("outro.pdf"));
    EXPECT_FALSE(relato.Bom);
    EXPECT_EQ(relato.Frase, "Este arquivo não é um dossiê do registro de equipamentos.");
}

} // namespace
