#include "host/ConsultaAfericaoED.h"
#include "host/RelatorioAfericaoED.h"
#include "tests/services/ServicosTeste.h"
#include "tests/support/FalhaLancada.h"

#include <functional>
#include <string>
#include <vector>

using namespace mesa;

// Every operation, by everybody who may not do it and on everything that is not there.

namespace {

constexpr std::int32_t Caxias = 4305108;

Ref<LimiteDifED> LimiteDo(std::int32_t equipamento)
{
    return LimiteDe(equipamento, 3, 730, 900);
}

Ref<DiaEspecificoED> DiaDo(std::int32_t equipamento)
{
    return DiaDe(equipamento, DataDe(24, 12, 2026), 730, 900);
}

struct Operacao {
    std::string Metodo;
    std::string Acao;  // the permission that it takes
    std::string OQue;  // as a refusal names it
    std::string Falta; // refusal of the client for what it does not have; empty for what is asked of the client itself
    std::function<Ref<Objeto>(std::int32_t)> Pedido;
    std::string Classe = "EquiptoRN";
};

const std::vector<Operacao> &Operacoes()
{
    const std::string equipamento = "equipamento de número interno ";
    const std::string limite = "limite ou dia de número interno ";
    static const std::vector<Operacao> operacoes = {
        {"consulta", "", "consultar equipamentos", equipamento, SoNumero},
        {"consultaSimples", "", "consultar equipamentos", equipamento, SoNumero},
        {"altera", "A", "alterar equipamentos", equipamento, SoNumero},
        {"desativa", "E", "desativar equipamentos", equipamento, SoNumero},
        {"reativa", "E", "reativar equipamentos", equipamento, SoNumero},
        {"inclui", "I", "incluir equipamentos", "",
         [](std::int32_t) {
             return Com(EquipamentoDe("X-1"), &EquiptoED::ClienteInc, "Autoridade Estadual de Trânsito");
         }},
        {"lista2", "", "consultar equipamentos", "",
         [](std::int32_t) {
             return Com(Novo<ListaEquiptoED>(), &ListaEquiptoED::ClienteInc, "Autoridade Estadual de Trânsito");
         }},
        {"consultaSimplesAfericaoVigente", "", "consultar aferições", equipamento,
         [](std::int32_t n) {
             return Com(Novo<ConsultaAfericaoED>(), &ConsultaAfericaoED::NroIntEquip, n,
                        &ConsultaAfericaoED::DtInfracao, DataDe(1, 6, 2026));
         }},
        {"listaLimiteDif", "", "consultar limites", equipamento, LimiteDo},
        {"listaDiaEspecifico", "", "consultar limites", equipamento, DiaDo},
        {"consultaSimplesLimiteDif", "", "consultar limites", limite, SoLimite},
        {"consultaSimplesDiaEspecifico", "", "consultar limites", limite, SoDia},
        {"alteraListaLimitesDif", "I", "incluir limites", equipamento,
         [](std::int32_t n) { return ListaDeLimites({LimiteDo(n)}); }},
        {"alteraListaLimitesDif", "A", "alterar limites", limite,
         [](std::int32_t n) { return ListaDeLimites({SoLimite(n)}); }},
        {"adicionaDiaEspecifico", "I", "incluir limites", equipamento, DiaDo},
        {"alteraDiaEspecifico", "A", "alterar limites", limite, SoDia},
        {"desativaLimiteDif", "E", "excluir limites", limite, SoLimite},
        {"desativaDiaEspecifico", "E", "excluir limites", limite, SoDia},
        {"consultaRelatorioRVOR011", "", "imprimir certificados", "aferição ativa de número ",
         [](std::int32_t n) {
             return Com(Novo<RelatorioAfericaoED>(), &RelatorioAfericaoED::CodOat, n, &RelatorioAfericaoED::Serie,
                        "R-001");
         },
         "RelatorioRN"},
    };
    return operacoes;
}

class ServicosAcesso : public ServicosTeste {
  protected:
    // One of everything, number 1 each, of Autoridade Estadual de Trânsito in Caxias do Sul.
    ServicosAcesso()
    {
        const auto afericao = AfericaoDe("1", DataDe(1, 1, 2026), DataDe(31, 12, 2026), GuardaPdf(m_Ana, "x"));
        Inclui(m_Ana, Poe(Com(EquipamentoDe("R-001"), &EquiptoED::CodMunic, Caxias), Poe(SensorDe(1), afericao)));
        Faz(m_Ana, "alteraListaLimitesDif", ListaDeLimites({LimiteDe(1, 2, 730, 900)}));
        Faz(m_Ana, "adicionaDiaEspecifico", DiaDe(1, DataDe(25, 12, 2026), 730, 900));
        m_Historico = Historico();
    }
    std::string Recusa(const Ref<SessaoServico> &sessao, const Operacao &operacao, std::int32_t numero)
    {
        const std::string recusa = RecusaDe(sessao, operacao.Metodo, operacao.Pedido(numero), operacao.Classe);
        EXPECT_EQ(Historico(), m_Historico); // nothing was changed
        return recusa;
    }
    std::string Historico()
    {
        return Linhas("HISTORICO WHERE Raiz NOT IN ('USUARIO', 'CLIENTE', 'REGISTRO', 'SESSAO', 'ESTACAO')");
    }

    std::string m_Historico;
};

TEST_F(ServicosAcesso, EveryOperation_WithoutItsPermission_IsRefusedByName)
{
    struct Pessoa {
        std::string Usuario;
        std::string Nome;
        std::string Acoes;
        bool Olha;
    };
    const std::vector<Pessoa> pessoas = {{"carla", "Carla Dias", "", false},
                                         {"bruno", "Bruno Lima", "", true},
                                         {"inês", "Inês Luz", "I", true},
                                         {"alice", "Alice Rocha", "A", true},
                                         {"eva", "Eva Costa", "E", true}};
    for (const Pessoa &pessoa : pessoas) {
        const auto sessao = m_Registro.Sessao(pessoa.Usuario);
        if (pessoa.Olha) { // what was read may not be changed all the same
            Abre(sessao, 1);
            Faz(sessao, "consultaSimplesLimiteDif", SoLimite(1));
            Faz(sessao, "consultaSimplesDiaEspecifico", SoDia(1));
        }
        for (const Operacao &operacao : Operacoes()) {
            SCOPED_TRACE(pessoa.Usuario + " " + operacao.Metodo);
            const bool pode = operacao.Acao.empty() ? pessoa.Olha : operacao.Acao == pessoa.Acoes;
            if (!pode) {
                const std::string recusa = pessoa.Nome + " não tem permissão para " + operacao.OQue + ".";
                EXPECT_EQ(Recusa(sessao, operacao, 1), recusa);
                EXPECT_EQ(Recusa(sessao, operacao, 99), recusa); // nor is it told what there is
            } else if (operacao.Acao.empty()) {
                Faz(sessao, operacao.Metodo, operacao.Pedido(1), operacao.Classe);
            }
        }
    }
}

TEST_F(ServicosAcesso, EveryOperation_OfADeactivatedUser_IsRefused)
{
    m_Registro.Sql("UPDATE USUARIO SET Ativo = 2 WHERE Usuario = 'ana'");
    const std::string recusa = "O usuário ana foi desativado depois da entrada. Procure quem administra os usuários.";
    for (const Operacao &operacao : Operacoes()) {
        EXPECT_EQ(Recusa(m_Ana, operacao, 1), recusa);
    }
    EXPECT_EQ(RecusaAoGuardar(m_Ana, Pdf("y")), recusa);
    EXPECT_EQ(RecusaAoLer(m_Ana, 1), recusa);
}

TEST_F(ServicosAcesso, EveryOperation_OnWhatIsAnotherClients_FindsNothing)
{
    const auto elisa = m_Registro.Sessao("elisa");
    for (const Operacao &operacao : Operacoes()) {
        SCOPED_TRACE(operacao.Metodo);
        const std::string recusa = operacao.Metodo == "inclui"
                                       ? "Elisa Prado registra equipamentos do cliente Autoridade Municipal de "
                                         "Trânsito, e não de Autoridade Estadual de Trânsito."
                                   : operacao.Metodo == "lista2"
                                       ? "Elisa Prado consulta equipamentos do cliente Autoridade Municipal de "
                                         "Trânsito, e não de Autoridade Estadual de Trânsito."
                                       : "O cliente Autoridade Municipal de Trânsito não tem " + operacao.Falta + "1.";
        EXPECT_EQ(Recusa(elisa, operacao, 1), recusa);
    }
}

TEST_F(ServicosAcesso, EveryOperation_OnWhatIsNotThere_IsRefused)
{
    for (const Operacao &operacao : Operacoes()) {
        if (!operacao.Falta.empty()) {
            for (const std::int32_t numero : {99, -1, INT32_MAX}) {
                EXPECT_EQ(Recusa(m_Ana, operacao, numero), "O cliente Autoridade Estadual de Trânsito não tem " +
                                                               operacao.Falta + std::to_string(numero) + ".")
                    << operacao.Metodo;
            }
        }
    }
}

TEST_F(ServicosAcesso, altera_OfOnesOwn_WithTheSensorOrDocumentOfAnotherClient_IsRefused)
{
    const auto elisa = m_Registro.Sessao("elisa");
    const std::int32_t numero = Inclui(elisa, Poe(EquipamentoDe("E-1"), SensorDe(1)));
    const std::string historico = Historico();
    const auto recusa = [&](const Ref<SensorED> &sensor) {
        return RecusaDe(elisa, "altera", Poe(SoNumero(numero), sensor));
    };
    EXPECT_EQ(recusa(SoSensor(1)), "O sensor de número interno 1 não é deste equipamento.");
    EXPECT_EQ(recusa(Poe(SoSensor(2), SoAfericao(1))),
              "A aferição de número interno 1 não é do sensor 1 deste equipamento.");
    EXPECT_EQ(recusa(Poe(SoSensor(2), AfericaoDe("7", DataDe(1, 1, 2026), DataDe(2, 1, 2026), 1))),
              "O documento de número 1 da aferição 7 não existe no cliente Autoridade Municipal de Trânsito.");
    EXPECT_EQ(Historico(), historico);
}

TEST_F(ServicosAcesso, TiedToAMunicipality_RegistersOnlyThereAndLooksAfterTheRest)
{
    const auto davi = m_Registro.Sessao("davi");
    EXPECT_EQ(RecusaDe(davi, "inclui", Com(EquipamentoDe("R-002"), &EquiptoED::CodMunic, Caxias)),
              "Davi Reis registra equipamentos somente no município de código 4314902.");
    EXPECT_EQ(Historico(), m_Historico);
    Faz(davi, "inclui", EquipamentoDe("R-002"));
    Abre(davi, 1);
    Faz(davi, "altera", Com(SoNumero(1), &EquiptoED::Descricao, "Outra"));
    Faz(davi, "desativa", SoNumero(1));
    Faz(davi, "reativa", SoNumero(1));
}

// Who, when, what, before and after of every kind of change.
TEST_F(ServicosAcesso, History_OfEveryKindOfChange_TellsWhoWhenBeforeAndAfter)
{
    const std::string desde = m_Registro.Sql("SELECT MAX(Nro) FROM HISTORICO");
    m_Registro.PassaSegundos(1);
    const auto ultimas = [&](const std::string &membro) {
        const std::string linhas = m_Registro.Sql(
            "SELECT group_concat(Operador || ' ' || (Quando - 20261120000000) || ' ' || Raiz || NroRaiz || '.' || "
            "Versao "
            "|| ' ' || Entidade || NroEntidade || ' ' || Acao || ' ' || COALESCE(json_extract(Antes, '$." +
            membro + "'), '-') || ' ' || json_extract(Depois, '$." + membro +
            "'), '; ') FROM (SELECT * FROM HISTORICO WHERE Quando = (SELECT MAX(Quando) FROM HISTORICO) ORDER BY Nro) "
            "h");
        m_Registro.PassaSegundos(1);
        return linhas;
    };
    const auto altera = [&](const Ref<SensorED> &sensor, const Ref<AfericaoED> &afericao) {
        Faz(m_Ana, "altera", Poe(SoNumero(1), Poe(sensor, afericao)));
    };
    altera(Com(SoSensor(1), &SensorED::LocalInfr, "Rua B, 2"), SoAfericao(1));
    EXPECT_EQ(ultimas("LocalInfr"), "1 100001 EQUIPAMENTO1.2 SENSOR1 altera Av. Ipiranga, 1200 Rua B, 2");
    altera(Com(SoSensor(1), &SensorED::Ativo, 2), SoAfericao(1));
    EXPECT_EQ(ultimas("Ativo"),
              "1 100002 EQUIPAMENTO1.3 SENSOR1 desativa 1 2; 1 100002 EQUIPAMENTO1.3 EQUIPAMENTO1 altera 1 1");
    altera(Com(SoSensor(1), &SensorED::Ativo, 1), SoAfericao(1));
    EXPECT_EQ(ultimas("Ativo"),
              "1 100003 EQUIPAMENTO1.4 SENSOR1 reativa 2 1; 1 100003 EQUIPAMENTO1.4 EQUIPAMENTO1 altera 1 1");
    altera(SoSensor(1), Com(SoAfericao(1), &AfericaoED::DataVencimento, DataDe(30, 6, 2026)));
    EXPECT_EQ(ultimas("DataVencimento"), "1 100004 EQUIPAMENTO1.5 AFERICAO1 altera 20261231 20260630");
    altera(SoSensor(1), Com(SoAfericao(1), &AfericaoED::Ativo, 2));
    EXPECT_EQ(ultimas("Ativo"),
              "1 100005 EQUIPAMENTO1.6 AFERICAO1 desativa 1 2; 1 100005 EQUIPAMENTO1.6 EQUIPAMENTO1 altera 1 1");
    altera(SoSensor(1), Com(SoAfericao(1), &AfericaoED::Ativo, 1));
    EXPECT_EQ(ultimas("Ativo"),
              "1 100006 EQUIPAMENTO1.7 AFERICAO1 reativa 2 1; 1 100006 EQUIPAMENTO1.7 EQUIPAMENTO1 altera 1 1");

    const auto bia = m_Registro.Sessao("bia");
    m_Registro.PassaSegundos(1); // behind the row of the new user
    Faz(bia, "desativa", SoNumero(1));
    EXPECT_EQ(ultimas("Ativo"), "6 100008 EQUIPAMENTO1.8 EQUIPAMENTO1 desativa 1 2");
    Faz(bia, "reativa", SoNumero(1));
    EXPECT_EQ(ultimas("Ativo"), "6 100009 EQUIPAMENTO1.9 EQUIPAMENTO1 reativa 2 1");

    Faz(bia, "alteraListaLimitesDif", ListaDeLimites({LimiteDo(1)}));
    EXPECT_EQ(ultimas("HoraFim"), "6 100010 LIMITE2.1 LIMITE2 inclui - 900");
    const auto l = Com(SoLimite(2), &LimiteDifED::HoraFim, 930);
    Faz(bia, "consultaSimplesLimiteDif", l);
    Faz(bia, "alteraListaLimitesDif", ListaDeLimites({l}));
    EXPECT_EQ(ultimas("HoraFim"), "6 100011 LIMITE2.2 LIMITE2 altera 900 930");
    Faz(bia, "desativaLimiteDif", l);
    EXPECT_EQ(ultimas("Ativo"), "6 100012 LIMITE2.3 LIMITE2 desativa 1 2");

    Faz(bia, "adicionaDiaEspecifico", DiaDo(1));
    EXPECT_EQ(ultimas("Data"), "6 100013 DIA2.1 DIA2 inclui - 20261224");
    const auto d = Com(SoDia(2), &DiaEspecificoED::Data, DataDe(23, 12, 2026));
    Faz(bia, "consultaSimplesDiaEspecifico", d);
    Faz(bia, "alteraDiaEspecifico", d);
    EXPECT_EQ(ultimas("Data"), "6 100014 DIA2.2 DIA2 altera 20261224 20261223");
    Faz(bia, "desativaDiaEspecifico", d);
    EXPECT_EQ(ultimas("Ativo"), "6 100015 DIA2.3 DIA2 desativa 1 2");

    GuardaPdf(bia, "y");
    EXPECT_EQ(ultimas("ClienteInc"), "6 100016 DOCUMENTO2.1 DOCUMENTO2 inclui - Autoridade Estadual de Trânsito");
}

// The row of the history is part of the change: where it cannot be written, nothing changes.
TEST_F(ServicosAcesso, Change_WhoseHistoryCannotBeWritten_IsUndone)
{
    Faz(m_Ana, "consultaSimplesLimiteDif", SoLimite(1));
    Faz(m_Ana, "consultaSimplesDiaEspecifico", SoDia(1));
    const auto estado = [&] {
        std::string sql = "SELECT ''";
        for (const char *tabela : {"EQUIPAMENTO", "LIMITE", "DIA"}) {
            sql += std::string(" || (SELECT group_concat(Ativo || '.' || Versao) FROM ") + tabela + ")";
        }
        for (const char *tabela : {"SENSOR", "AFERICAO", "DOCUMENTO", "USUARIO", "CLIENTE", "PERMISSAO"}) {
            sql += std::string(" || ' ' || (SELECT COUNT(*) FROM ") + tabela + ")";
        }
        return m_Registro.Sql(sql);
    };
    const std::string antes = estado();
    m_Registro.Sql("CREATE TRIGGER SEM_HISTORICO BEFORE INSERT ON HISTORICO BEGIN SELECT RAISE(ABORT, 'x'); END");
    const auto altera = [&](const std::string &metodo, const Ref<Objeto> &pedido) {
        return [=, this] { Pede(m_Ana, metodo, pedido); };
    };
    const auto afericao = AfericaoDe("2", DataDe(1, 1, 2026), DataDe(2, 1, 2026), 1);
    const std::vector<std::function<void()>> mudancas = {
        altera("inclui", EquipamentoDe("N-1")),
        altera("altera", Poe(Com(SoNumero(1), &EquiptoED::Descricao, "Outra"), Poe(SensorDe(2), afericao))),
        altera("desativa", SoNumero(1)),
        altera("alteraListaLimitesDif", ListaDeLimites({LimiteDo(1)})),
        altera("alteraListaLimitesDif", ListaDeLimites({Com(SoLimite(1), &LimiteDifED::HoraFim, 1000)})),
        altera("desativaLimiteDif", SoLimite(1)),
        altera("adicionaDiaEspecifico", DiaDo(1)),
        altera("alteraDiaEspecifico", Com(SoDia(1), &DiaEspecificoED::HoraFim, 1000)),
        altera("desativaDiaEspecifico", SoDia(1)),
        [&] { GuardaPdf(m_Ana, "y"); },
        [&] { m_Registro.Cadastra("bia"); },
        [&] {
            m_Registro.Aberto().CadastraCliente({7, "NOVO", std::vector<std::string>(), "RS"});
        },
    };
    for (std::size_t qual = 0; qual < mudancas.size(); ++qual) {
        SCOPED_TRACE(qual);
        EXPECT_EQ(FalhaLancada(mudancas[qual]).Numero, 51);
        EXPECT_EQ(estado(), antes);
    }
}

} // namespace
