#include "tela/CriteriosDaLista.h"

#include "controls/CheckBox.h"
#include "controls/ztCombo.h"
#include "controls/ztList.h"
#include "controls/ztMask.h"
#include "tela/Pessoa.h"
#include "tests/tela/FormDescrito.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

class CriteriosDaListaTest : public testing::Test, protected FormDescrito {
  protected:
    CriteriosDaListaTest()
    {
        Faz({.Disposicao = Arranjo::Coluna,
             .Pecas = {{.Ajustes = AjustesZtList{.BarraCriteriosAtiva = true},
                        .Nome = "lista",
                        .Pecas = {{.Ajustes = AjustesZtFrame{.Contorno = true},
                                   .Nome = "moldura",
                                   .Pecas = {{.Ajustes = AjustesZtClienteSetor{}, .Nome = "cliente"},
                                             {.Ajustes = AjustesZtCombo{.Conteudo = "Todos|0??Fixo|1??Móvel|2??"},
                                              .Nome = "tipo"},
                                             {.Ajustes = AjustesZtMask{}, .Nome = "codigo", .Caracteres = 20},
                                             {.Ajustes = AjustesCheckBox{}, .Nome = "inativos"}}}}},
                       {.Ajustes = AjustesZtCombo{.Conteudo = "Fora|9??"}, .Nome = "fora"}}});
        Como<ztCombo>("tipo").DefineIndiceAtual(0);
        Como<ztClienteSetor>("cliente").PresetaCliente("Meu", "");
        m_Criterios.emplace(*Form, Clientes());
    }
    static std::vector<ClienteOferecido> Clientes() { return {{"Meu", {"Norte", "Sul"}}, {"Outro", {}}}; }
    template <class C> C &Como(const std::string &nome) { return dynamic_cast<C &>(*Controle(nome)); }
    // Cliente, setor, tipo, codigo, inativos.
    std::string Agora()
    {
        return Como<ztClienteSetor>("cliente").Cliente() + "," + Como<ztClienteSetor>("cliente").Setor() + "," +
               Como<ztCombo>("tipo").Valor() + "," + Como<ztMask>("codigo").Text() + "," +
               std::to_string(Como<CheckBox>("inativos").Value());
    }
    void PoeTodos()
    {
        Como<ztClienteSetor>("cliente").Escolhe("Meu", "Sul");
        Como<ztCombo>("tipo").EscolheTexto("Móvel");
        Como<ztMask>("codigo").Preenche("R=1");
        Como<CheckBox>("inativos").Clica();
    }

    std::optional<CriteriosDaLista> m_Criterios;
};

TEST_F(CriteriosDaListaTest, Texto_AsTheFormOpens_IsEmpty)
{
    EXPECT_TRUE(m_Criterios->Ha());
    EXPECT_EQ(m_Criterios->Texto(), "");
}

TEST_F(CriteriosDaListaTest, Poe_WhatTextoTold_SetsAllOfThemAgain)
{
    PoeTodos();
    const std::string texto = m_Criterios->Texto();
    EXPECT_EQ(texto, "cliente\tMeu\tSul\ntipo\t2\ncodigo\tR=1\ninativos\t1\n");
    m_Criterios->Limpa();
    EXPECT_EQ(Agora(), "Meu,,0,,0");
    m_Criterios->Poe(texto);
    EXPECT_EQ(Agora(), "Meu,Sul,2,R=1,1");
    EXPECT_EQ(m_Criterios->Texto(), texto);
}

TEST_F(CriteriosDaListaTest, Poe_RaisesWhatAPersonWould)
{
    std::vector<std::string> eventos;
    const auto conecta = [&](const char *nome) { return [&eventos, nome] { eventos.emplace_back(nome); }; };
    const Conexao cliente = Como<ztClienteSetor>("cliente").Change().liga(conecta("cliente"));
    const Conexao tipo = Como<ztCombo>("tipo").Click().liga(conecta("tipo"));
    const Conexao inativos = Como<CheckBox>("inativos").Click().liga(conecta("inativos"));
    m_Criterios->Poe("inativos\t1\ntipo\t1\ncliente\tOutro\t\n");
    EXPECT_EQ(eventos, (std::vector<std::string>{"cliente", "tipo", "inativos"}));
    EXPECT_TRUE(ComoBase(Controle("cliente"))->TemFoco());
    eventos.clear();
    m_Criterios->Poe("inativos\t1\ntipo\t1\ncliente\tOutro\t\n"); // as they are
    EXPECT_EQ(eventos, std::vector<std::string>{});
}

TEST_F(CriteriosDaListaTest, Poe_WhatIsNotOfferedAnyMore_IsLeftAsItIs)
{
    for (const char *texto :
         {"", "x", "\n\n", "tipo\t7\n", "tipo\n", "tipo\t\n", "cliente\tNinguém\t\n", "cliente\tOutro\n",
          "inativos\t2\n", "inativos\tx\n", "fora\t9\n", "lista\t1\n", "\t\t\t\n", "tipo2\t1"}) {
        m_Criterios->Poe(texto);
        EXPECT_EQ(Agora(), "Meu,,0,,0") << texto;
    }
    m_Criterios->Poe("cliente\tOutro\tSul\n"); // whose sectors are others now
    EXPECT_EQ(Agora(), "Outro,,0,,0");
}

TEST_F(CriteriosDaListaTest, Poe_WhatThePersonCannotSetNow_IsLeftAsItIs)
{
    Controle("tipo")->DefineEnabled(false);
    Controle("codigo")->DefineVisible(false);
    m_Criterios->Poe("tipo\t1\ncodigo\tabc\ninativos\t1\n");
    EXPECT_EQ(Agora(), "Meu,,0,,1");
}

TEST_F(CriteriosDaListaTest, Texto_OfAFieldThatIsNotAskedFor_IsNone)
{
    PoeTodos();
    Controle("codigo")->DefineVisible(false);
    EXPECT_EQ(m_Criterios->Texto(), "cliente\tMeu\tSul\ntipo\t2\ninativos\t1\n");
}

TEST_F(CriteriosDaListaTest, Limpar_OfferedByAScreen_IsAPlaceOfTheKeyboardAndAnswersToItsLetter)
{
    Pessoa pessoa(Form);
    EXPECT_FALSE(pessoa.RespondeAlt('b'));
    auto &lista = Como<ztList>("lista");
    EXPECT_FALSE(lista.LimpaCriterios());
    lista.OfereceLimpar([&] { m_Criterios->Limpa(); });
    PoeTodos();
    EXPECT_TRUE(pessoa.Alt('b'));
    EXPECT_EQ(Agora(), "Meu,,0,,0");
    std::vector<Parte> partes;
    for (int n = 0; n < 12; ++n) {
        pessoa.Tab();
        partes.push_back(pessoa.ParadaAtual().Qual);
    }
    EXPECT_NE(std::ranges::find(partes, Parte::LimparCriterios), partes.end());
    lista.OfereceLimpar(nullptr);
    EXPECT_FALSE(pessoa.RespondeAlt('b'));
}

TEST(CriteriosDaLista, FormWithoutALista_HasNone)
{
    FormDescrito form;
    form.Faz({.Disposicao = Arranjo::Coluna, .Pecas = {UmCampo("texto", 5)}});
    CriteriosDaLista criterios(*form.Form, {});
    EXPECT_FALSE(criterios.Ha());
    criterios.Limpa();
    EXPECT_EQ(criterios.Texto(), "");
}

} // namespace
