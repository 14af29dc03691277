#include "desk/host/PaginaInicial.h"

#include "controls/ztList.h"
#include "desk/host/AbreNaLista.h"
#include "tela/Pessoa.h"
#include "tests/desk/HospedeiroDeTeste.h"

#include <gtest/gtest.h>

#include <map>

using namespace mesa;

namespace {

class LembrancasDeTeste : public ILembrancas {
  public:
    std::string_view NomeTipo() const override { return "Lembrancas"; }
    std::string Lembranca(const std::string &chave) const override
    {
        const auto achada = Textos.find(chave);
        return achada == Textos.end() ? std::string() : achada->second;
    }
    void Lembra(const std::string &chave, const std::string &texto) override { Textos[chave] = texto; }
    void Esquece(const std::string &) override { Textos.clear(); }

    std::map<std::string, std::string> Textos;
};

class PaginaInicialTeste : public HospedeiroTeste {
  protected:
    std::vector<EquipamentoRecente> Recentes() const
    {
        return EquipamentosRecentes(lembrancas).Todos(*mesa.Host->BancoLocal->Abre());
    }
    std::vector<std::string> Codigos() const
    {
        std::vector<std::string> codigos;
        for (const EquipamentoRecente &recente : Recentes()) {
            codigos.push_back(recente.Codigo);
        }
        return codigos;
    }
    std::vector<std::string> Acoes(const std::string &usuario)
    {
        std::vector<std::string> nomes;
        const PaginaInicial pagina(*mesa.Registro.Sessao(usuario), {});
        for (const AcaoInicial &acao : pagina.Acoes()) {
            nomes.push_back(acao.Nome);
        }
        return nomes;
    }

    Ref<LembrancasDeTeste> lembrancas = Novo<LembrancasDeTeste>();
    Data dia = DataDe(20, 11, 2026, 9, 30, 0);
};

TEST_F(PaginaInicialTeste, Recentes_AreTheLatestFirstAndEachOnce)
{
    const auto ana = mesa.Registro.Sessao("ana");
    for (const char *codigo : {"A1", "A2", "A3"}) {
        Inclui(ana, EquipamentoDe(codigo));
    }
    mesa.Entra("ana");
    EquipamentosRecentes recentes(lembrancas);
    recentes.Viu(1, dia);
    recentes.Viu(3, dia);
    recentes.Viu(1, dia.MaisDias(1));
    recentes.Viu(99, dia); // which nobody has
    EXPECT_EQ(Codigos(), (std::vector<std::string>{"A1", "A3"}));
    EXPECT_EQ(Recentes().front().Quando, dia.MaisDias(1));
    EXPECT_EQ(Recentes().front().Cliente, "Autoridade Estadual de Trânsito");
}

TEST_F(PaginaInicialTeste, Recentes_AreNotMoreThanFitAPage)
{
    EquipamentosRecentes recentes(lembrancas);
    for (std::int32_t numero = 1; numero <= 40; ++numero) {
        recentes.Viu(numero, dia);
    }
    const std::string &texto = lembrancas->Textos.begin()->second;
    EXPECT_EQ(static_cast<std::size_t>(std::count(texto.begin(), texto.end(), '\n')), EquipamentosRecentes::Maximo);
    EXPECT_EQ(texto.substr(0, 3), "40 ");
}

TEST_F(PaginaInicialTeste, Recentes_OutOfNonsense_AreThoseThatMakeSense)
{
    Inclui(mesa.Registro.Sessao("ana"), EquipamentoDe("A1"));
    mesa.Entra("ana");
    lembrancas->Textos["equipamentosRecentes"] =
        "\n\n1\n1 x\nx 1\n-1 4000000000\n0 4000000000\n1 99999999999999999999\n"
        "1 999999999999999999\n1 nan\n1; DROP TABLE VOREQUIPTO 5\n1 4000000000\n"
        "1 4000000000\n";
    EXPECT_EQ(Codigos(), std::vector<std::string>{"A1"});
}

TEST_F(PaginaInicialTeste, Recentes_OfAnotherClient_AreNotShown)
{
    Inclui(mesa.Registro.Sessao("ana"), EquipamentoDe("A1"));
    EquipamentosRecentes(lembrancas).Viu(1, dia);
    mesa.Entra("elisa");
    EXPECT_EQ(Codigos(), std::vector<std::string>{});
}

TEST_F(PaginaInicialTeste, Recente_ThatSomebodyElseHasChanged_IsAsItIsNow)
{
    Inclui(mesa.Registro.Sessao("ana"), EquipamentoDe("A1"));
    mesa.Entra("ana");
    EquipamentosRecentes(lembrancas).Viu(1, dia);
    const auto bia = mesa.Registro.Sessao("bia");
    Exigido(Pede(bia, "desativa", SoNumero(1)));
    EquipamentoRecente recente = Recentes().front();
    EXPECT_TRUE(recente.Ativo);
    std::string recusa;
    EXPECT_TRUE(Renova(*mesa.Registro.Sessao("ana"), recente, recusa));
    EXPECT_EQ(recente, (EquipamentoRecente{1, "A1", "P", "Autoridade Estadual de Trânsito", false, dia}));
    EXPECT_FALSE(Renova(*mesa.Registro.Sessao("elisa"), recente, recusa));
    EXPECT_NE(recusa, "");
}

TEST_F(PaginaInicialTeste, Session_OpeningAndIncluding_TellsWhichEquipmentItWas)
{
    std::vector<std::int32_t> vistos;
    mesa.Host->ViuEquipamento = [&](std::int32_t numero) { vistos.push_back(numero); };
    mesa.Entra("ana");
    const auto proxy = mesa.Host->objMTM()->ObtemGateway()->CriaObjetoRN("VOR", "EquiptoRN", "ZTVORLIB", "");
    const auto executa = [&](std::string metodo, const Ref<EquiptoED> &equipto) {
        Ref<Objeto> contexto;
        Ref<Objeto> pedido = equipto;
        std::vector<Valor> parametros = {Valor::PorReferencia(pedido)};
        return proxy->ExecutaMetodo(contexto, metodo, parametros);
    };
    EXPECT_TRUE(executa("inclui", EquipamentoDe("A1")));
    EXPECT_EQ(vistos, std::vector<std::int32_t>{1});
    EXPECT_TRUE(executa("consulta", SoNumero(1)));
    EXPECT_TRUE(executa("consultaSimples", SoNumero(1)));
    EXPECT_FALSE(executa("consulta", SoNumero(7)));
    EXPECT_EQ(vistos, (std::vector<std::int32_t>{1, 1}));
}

TEST_F(PaginaInicialTeste, Acoes_AreWhatTheUserMayDo)
{
    EXPECT_EQ(Acoes("bruno"), (std::vector<std::string>{"mnuModVOREquiptos", "mnuModNABEquiptos", "consultaAutuacao"}));
    EXPECT_EQ(Acoes("saulo"), (std::vector<std::string>{"mnuModVOREquiptos", "mnuModNABEquiptos", "consultaAutuacao",
                                                        "administracao"}));
    EXPECT_EQ(Acoes("marta"), std::vector<std::string>{"administracao"});
    EXPECT_EQ(Acoes("carla"), std::vector<std::string>{});
}

TEST_F(PaginaInicialTeste, UserWithoutRights_IsToldWhyAndWhomToAsk)
{
    const PaginaInicial pagina(*mesa.Registro.Sessao("carla"), {{1, "A1", "R", "x", true, dia}});
    EXPECT_EQ(pagina.Impedimento(),
              "O seu usuário não tem a permissão \"Consultar equipamentos, aferições e limites\", e por isso não há "
              "equipamentos para mostrar. Peça-a ao administrador do registro.");
    EXPECT_TRUE(pagina.Recentes().empty());
    EXPECT_NE(PaginaInicial(*mesa.Registro.Sessao("marta"), {}).Impedimento().find("como você"), std::string::npos);
    EXPECT_EQ(PaginaInicial(*mesa.Registro.Sessao("bruno"), {}).Impedimento(), "");
}

TEST_F(PaginaInicialTeste, Recentes_OnThePage_SayWhatTheyAreAndSinceWhen)
{
    const PaginaInicial pagina(*mesa.Registro.Sessao("ana"),
                               {{1, "A1", "R", "Autoridade", true, dia}, {2, "A2", "R", "Autoridade", false, dia}});
    ASSERT_EQ(pagina.Recentes().size(), 2U);
    EXPECT_EQ(pagina.Recentes()[0].Celulas,
              (std::vector<std::string>{"A1", "Radar Fotográfico", "Autoridade", "20/11/2026 09:30"}));
    EXPECT_EQ(pagina.Recentes()[1].Celulas[1], "Radar Fotográfico (desativado)");
    EXPECT_EQ(pagina.Recentes()[0].Celulas.size(), PaginaInicial::Colunas().size());
    EXPECT_EQ(pagina.Recentes()[0].Qual.NroIntEquip, 1);
}

TEST_F(PaginaInicialTeste, AbreNaLista_WhateverTheCriteriaWere_ShowsTheDetails)
{
    const auto ana = mesa.Registro.Sessao("ana");
    for (const char *codigo : {"R-001", "R-002", "R003"}) {
        Inclui(ana, EquipamentoDe(codigo));
    }
    const Ref<Geral> geral = Loga("ana");
    geral->ClickMenu("mnuModVOREquiptos");
    const Ref<IForm> lista = mesa.Host->Plataforma()->FormAberto(0);
    Pessoa pessoa(lista);
    ASSERT_TRUE(pessoa.Localiza("ztlLista"));
    ASSERT_TRUE(pessoa.OrdenaPor("ztlLista", 1) && pessoa.OrdenaPor("ztlLista", 1)); // the last code first
    ASSERT_TRUE(pessoa.Marca("chkInativos"));
    ASSERT_TRUE(pessoa.Escolhe("cboCriterio", "Subcódigo"));
    ASSERT_TRUE(pessoa.Preenche("txtCodEquip", "xyz"));
    std::string codigo;
    mesa.Janelas->NaProximaModal("frmEquipDetalhes", [&](const Ref<IForm> &form) {
        codigo = Pessoa(form).Acha<IztMask>("txtCodEquip")->Text();
        mesa.Host->Plataforma()->Descarrega(form);
    });
    EXPECT_TRUE(AbreNaLista(lista, {2, "R-00", "R", "Autoridade Estadual de Trânsito", true, dia}));
    EXPECT_EQ(codigo, "R-002"); // among those whose codes begin so
    EXPECT_FALSE(AbreNaLista(lista, {9, "R-009", "R", "Autoridade Estadual de Trânsito", true, dia}));
    EXPECT_EQ(mesa.Janelas->Pendencias(), std::vector<std::string>{});
}

} // namespace
