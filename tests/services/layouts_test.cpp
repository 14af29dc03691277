#include "host/Conversoes.h"
#include "services/LayoutED.h"
#include "tests/services/ServicosTeste.h"

#include <string>
#include <vector>

using namespace mesa;

namespace {

using Textos = std::vector<std::string>;

constexpr const char *Servico = "AdministracaoRN";

Ref<LayoutED> Layout(const std::string &nome, const std::string &conteudo = "CODIGO=20\r\n\tDATA=10\n")
{
    return Com(Novo<LayoutED>(), &LayoutED::NomeLayout, nome, &LayoutED::Conteudo, conteudo);
}

Ref<LayoutED> Mudanca(std::int32_t numero, std::int32_t versao)
{
    return Com(Novo<LayoutED>(), &LayoutED::NroLayout, numero, &LayoutED::Versao, versao);
}

class ServicosLayouts : public ServicosTeste {
  protected:
    std::int32_t Inclui(const Ref<LayoutED> &layout)
    {
        return Faz(m_Marta, "incluiLayout", layout, Servico).Como<LayoutED>()->NroLayout;
    }
    std::string RecusaDeIncluir(const std::string &nome, const std::string &conteudo = "CODIGO=20")
    {
        return RecusaDe(m_Marta, "incluiLayout", Layout(nome, conteudo), Servico);
    }
    void Desativa(std::int32_t numero, std::int32_t versao)
    {
        Faz(m_Marta, "alteraLayout", Com(Mudanca(numero, versao), &LayoutED::Ativo, 2), Servico);
    }
    // "name" of an active one, "(name)" of another.
    Textos Nomes(const Ref<SessaoServico> &sessao, std::uint8_t oferecidos)
    {
        const auto pedido = Com(Novo<ListaLayoutsED>(), &ListaLayoutsED::Oferecidos, oferecidos);
        const ListaDe<LayoutED> lista = Faz(sessao, "listaLayouts", pedido, Servico).Como<ListaLayoutsED>()->Layouts;
        Textos nomes;
        for (std::int32_t n = 1; !lista.Nada() && n <= lista->Count(); ++n) {
            const LayoutED &layout = *lista->Item(n);
            nomes.push_back(layout.Ativo.Valor() == 1 ? layout.NomeLayout.Valor()
                                                      : "(" + layout.NomeLayout.Valor() + ")");
        }
        return nomes;
    }
    Retorno IncluiCom(const std::string &layout, const std::string &codigo = "R-1")
    {
        return Pede(m_Ana, "inclui", Com(EquipamentoDe(codigo), &EquiptoED::ArquivoLayout, layout));
    }

    Ref<SessaoServico> m_Marta = m_Registro.Sessao("marta");
};

TEST_F(ServicosLayouts, NewRegistry_HasTheFiveLayoutsOfTheProgram)
{
    EXPECT_EQ(Nomes(m_Ana, 1), (Textos{"AGENTE", "ESTATICO", "LOMBADA", "PADRAO", "PARDAL"}));
    EXPECT_NE(m_Registro.Sql("SELECT Conteudo FROM LAYOUT WHERE Nome = 'PARDAL'").find("EQUIPAMENTO=PARDAL"),
              std::string::npos);
    EXPECT_EQ(m_Registro.Sql("SELECT COUNT(*) FROM HISTORICO WHERE Entidade = 'LAYOUT' AND Acao = 'inclui'"), "5");
}

TEST_F(ServicosLayouts, Inclui_OfANewName_IsOfferedWithItsHistory)
{
    const std::int32_t numero = Inclui(Layout(" Meu layout "));
    EXPECT_EQ(numero, 6);
    EXPECT_EQ(m_Registro.Sql("SELECT Nome, Conteudo, Ativo, Versao FROM LAYOUT WHERE NroLayout = 6"),
              "Meu layout|CODIGO=20\r\n\tDATA=10\n|1|1");
    EXPECT_EQ(m_Registro.Sql("SELECT Acao, Versao, Operador FROM HISTORICO WHERE Entidade = 'LAYOUT' "
                             "AND NroEntidade = 6"),
              "inclui|1|11");
    EXPECT_EQ(Nomes(m_Ana, 1).size(), 6U);
    EXPECT_TRUE(IncluiCom("Meu layout").Feita);
}

TEST_F(ServicosLayouts, Inclui_OfANameThatBreaksALookUpOrAFileName_IsRefused)
{
    for (const char *nome : {"A'B", "A/B", "A\\B", "A|B", "A:B", "A\"B", "A*", "A?", "A<B", "A>B"}) {
        EXPECT_EQ(RecusaDeIncluir(nome), "O nome do layout não pode ter nenhum dos caracteres '\"/\\:*?<>|.") << nome;
    }
    EXPECT_EQ(RecusaDeIncluir(" "), "O campo \"nome\" precisa ser informado.");
    EXPECT_EQ(RecusaDeIncluir(std::string(51, 'x')), "O campo \"nome\" aceita até 50 caracteres e veio com 51.");
    EXPECT_EQ(RecusaDeIncluir("A\u200BB"), "O campo \"nome\" tem caracteres que não se veem: digite-o de novo.");
    EXPECT_EQ(RecusaDeIncluir("Nenhum"), "O nome NENHUM quer dizer que o equipamento não tem layout.");
    EXPECT_EQ(RecusaDeIncluir("NOVO", std::string("CODIGO\0=1", 9)),
              "O campo \"conteúdo\" tem caracteres que não podem ser gravados.");
    EXPECT_EQ(RecusaDeIncluir("NOVO", std::string(100001, 'x')),
              "O campo \"conteúdo\" aceita até 100000 caracteres e veio com 100001.");
    EXPECT_EQ(Linhas("LAYOUT"), "5");
}

TEST_F(ServicosLayouts, Inclui_OfANameThatIsTaken_SaysWhoHasIt)
{
    EXPECT_EQ(RecusaDeIncluir("padrao"),
              "Já existe o layout PADRAO; foi gravado por último pelo sistema em 20/11/2026 às "
              "10:00:00.");
    const std::int32_t numero = Inclui(Layout("Ônibus"));
    Desativa(numero, 1);
    EXPECT_EQ(RecusaDeIncluir("ÔNIBUS"), "Já existe o layout Ônibus, desativado; foi gravado por último por Marta Reis "
                                         "em 20/11/2026 às 10:00:00.");
}

TEST_F(ServicosLayouts, Altera_OfContent_IsANewVersion)
{
    const std::int32_t numero = Inclui(Layout("NOVO"));
    const auto mudanca = Com(Mudanca(numero, 1), &LayoutED::Conteudo, "PLACA=7");
    EXPECT_EQ(Faz(m_Marta, "alteraLayout", mudanca, Servico).Como<LayoutED>()->Versao.Valor(), 2);
    EXPECT_EQ(m_Registro.Sql("SELECT Conteudo, Ativo, Versao FROM LAYOUT WHERE NroLayout = 6"), "PLACA=7|1|2");
    EXPECT_EQ(RecusaDe(m_Marta, "alteraLayout", mudanca, Servico),
              "O layout NOVO foi alterado por Marta Reis em 20/11/2026 às 10:00:00, depois de aberto aqui. Nada foi "
              "gravado: abra-o de novo e repita a sua alteração.");
    // The same content again is no change.
    const auto igual = Com(Mudanca(numero, 2), &LayoutED::Conteudo, "PLACA=7");
    EXPECT_EQ(Faz(m_Marta, "alteraLayout", igual, Servico).Como<LayoutED>()->Versao.Valor(), 2);
}

TEST_F(ServicosLayouts, Altera_OfTheName_IsRefused)
{
    const std::int32_t numero = Inclui(Layout("NOVO"));
    EXPECT_EQ(RecusaDe(m_Marta, "alteraLayout", Com(Mudanca(numero, 1), &LayoutED::NomeLayout, "OUTRO"), Servico),
              "O layout NOVO não pode mudar de nome, pelo qual os equipamentos o conhecem: inclua outro.");
    EXPECT_EQ(RecusaDe(m_Marta, "alteraLayout", Mudanca(99, 1), Servico), "Não existe o layout de número 99.");
    EXPECT_NE(MotivoDe("UPDATE LAYOUT SET Nome = 'X' WHERE NroLayout = 6"), "done");
    EXPECT_NE(MotivoDe("DELETE FROM LAYOUT"), "done");
}

TEST_F(ServicosLayouts, EveryAct_WithoutItsRight_IsRefused)
{
    EXPECT_EQ(RecusaDe(m_Ana, "incluiLayout", Layout("NOVO"), Servico),
              "Ana Souza não tem permissão para incluir layouts.");
    EXPECT_EQ(RecusaDe(m_Ana, "alteraLayout", Com(Mudanca(1, 1), &LayoutED::Ativo, 2), Servico),
              "Ana Souza não tem permissão para alterar layouts.");
    EXPECT_EQ(RecusaDe(m_Registro.Sessao("carla"), "listaLayouts", Novo<ListaLayoutsED>(), Servico),
              "Carla Dias não tem permissão para consultar layouts.");
    EXPECT_EQ(Nomes(m_Marta, 2).size(), 5U);
    EXPECT_EQ(m_Registro.Sql("SELECT COUNT(*) FROM LAYOUT WHERE Ativo = 1"), "5");
}

TEST_F(ServicosLayouts, Equipment_OfADeactivatedLayout_KeepsItAndNoOtherTakesIt)
{
    const std::int32_t numero = Inclui(Layout("NOVO"));
    const std::int32_t equipamento = Exigido(IncluiCom("NOVO")).Como<EquiptoED>()->NroIntEquip;
    const std::int32_t outro = Exigido(IncluiCom("PADRAO", "R-2")).Como<EquiptoED>()->NroIntEquip;
    Desativa(numero, 1);
    // It is saved with the others' changes, and without.
    auto lido = Abre(m_Ana, equipamento);
    lido->Descricao = "Outra descrição";
    EXPECT_TRUE(Pede(m_Ana, "altera", lido).Feita);
    EXPECT_EQ(m_Registro.Sql("SELECT ArquivoLayout, Descricao FROM EQUIPAMENTO WHERE Codigo = 'R-1'"),
              "NOVO|Outra descrição");
    const std::string recusa = "O layout NOVO foi desativado por Marta Reis em 20/11/2026 às 10:00:00: escolha outro.";
    EXPECT_EQ(IncluiCom("NOVO", "R-3").Recusa, recusa);
    auto doOutro = Abre(m_Ana, outro);
    doOutro->ArquivoLayout = "NOVO";
    EXPECT_EQ(Pede(m_Ana, "altera", doOutro).Recusa, recusa);
    EXPECT_EQ(IncluiCom("QUALQUER", "R-4").Recusa, "Não existe o layout \"QUALQUER\".");
    EXPECT_EQ(IncluiCom("", "R-5").Recusa,
              "O campo \"layout dos arquivos\" precisa ser informado para o tipo de equipamento \"P\".");
    EXPECT_TRUE(IncluiCom("NENHUM", "R-6").Feita);
}

TEST_F(ServicosLayouts, Oferecidos_WithADeactivatedOneInUse_HasItBehindTheActiveOnes)
{
    const std::int32_t numero = Inclui(Layout("NOVO"));
    Exigido(IncluiCom("NOVO"));
    Desativa(numero, 1);
    Desativa(1, 1); // in use by none
    EXPECT_EQ(Nomes(m_Ana, 1).back(), "(NOVO)");
    EXPECT_EQ(Nomes(m_Ana, 1).size(), 5U);
    EXPECT_EQ(Nomes(m_Registro.Sessao("elisa"), 1).size(), 4U); // another client's equipment does not count
    EXPECT_EQ(Nomes(m_Ana, 2).size(), 6U);
}

} // namespace
