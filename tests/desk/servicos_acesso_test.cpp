#include "host/ConsultaAfericaoED.h"
#include "host/DiaEspecificoED.h"
#include "host/LimiteDifED.h"
#include "host/RelatorioAfericaoED.h"
#include "tests/desk/RegistroDeTeste.h"
#include "tests/support/FalhaLancada.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

using namespace mesa;

// Every operation, by everybody who may not do it and on everything that is not there.

namespace {

constexpr std::int32_t Caxias = 4305108;

Ref<EquiptoED> ListaDeUm(const Ref<LimiteDifED> &limite)
{
    auto e = Novo<EquiptoED>();
    e->ListaLimiteDif = Novo<Colecao<Ref<LimiteDifED>>>();
    e->ListaLimiteDif.Valor()->Add(limite);
    return e;
}

Ref<LimiteDifED> Limite(std::int32_t numero)
{
    auto l = Novo<LimiteDifED>();
    l->NroInt = numero;
    return l;
}

Ref<LimiteDifED> LimiteDo(std::int32_t equipamento)
{
    auto l = Novo<LimiteDifED>();
    l->NroIntEquip = equipamento;
    l->Dia = std::uint8_t{3};
    l->HoraInicio = 730;
    l->HoraFim = 900;
    l->VelocPerm = std::int16_t{40};
    l->TipoLimite = std::uint8_t{1};
    return l;
}

Ref<DiaEspecificoED> Dia(std::int32_t numero)
{
    auto d = Novo<DiaEspecificoED>();
    d->NroInt = numero;
    return d;
}

Ref<DiaEspecificoED> DiaDo(std::int32_t equipamento)
{
    auto d = Novo<DiaEspecificoED>();
    d->NroIntEquip = equipamento;
    d->Data = DataDe(24, 12, 2026);
    d->HoraInicio = 730;
    d->HoraFim = 900;
    d->VelocPerm = std::int16_t{40};
    return d;
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
    const auto soNumero = [](std::int32_t n) -> Ref<Objeto> { return SoNumero(n); };
    static const std::vector<Operacao> operacoes = {
        {"consulta", "", "consultar equipamentos", equipamento, soNumero},
        {"consultaSimples", "", "consultar equipamentos", equipamento, soNumero},
        {"altera", "A", "alterar equipamentos", equipamento, soNumero},
        {"desativa", "E", "desativar equipamentos", equipamento, soNumero},
        {"reativa", "E", "reativar equipamentos", equipamento, soNumero},
        {"inclui", "I", "incluir equipamentos", "",
         [](std::int32_t) -> Ref<Objeto> {
             auto e = EquipamentoDe("X-1");
             e->ClienteInc = "DETRAN/RS";
             return e;
         }},
        {"lista2", "", "consultar equipamentos", "",
         [](std::int32_t) -> Ref<Objeto> {
             auto l = Novo<ListaEquiptoED>();
             l->ClienteInc = "DETRAN/RS";
             return l;
         }},
        {"consultaSimplesAfericaoVigente", "", "consultar aferições", equipamento,
         [](std::int32_t n) -> Ref<Objeto> {
             auto c = Novo<ConsultaAfericaoED>();
             c->NroIntEquip = n;
             c->DtInfracao = DataDe(1, 6, 2026);
             return c;
         }},
        {"listaLimiteDif", "", "consultar limites", equipamento,
         [](std::int32_t n) -> Ref<Objeto> { return LimiteDo(n); }},
        {"listaDiaEspecifico", "", "consultar limites", equipamento,
         [](std::int32_t n) -> Ref<Objeto> { return DiaDo(n); }},
        {"consultaSimplesLimiteDif", "", "consultar limites", limite,
         [](std::int32_t n) -> Ref<Objeto> { return Limite(n); }},
        {"consultaSimplesDiaEspecifico", "", "consultar limites", limite,
         [](std::int32_t n) -> Ref<Objeto> { return Dia(n); }},
        {"alteraListaLimitesDif", "I", "incluir limites", equipamento,
         [](std::int32_t n) -> Ref<Objeto> { return ListaDeUm(LimiteDo(n)); }},
        {"alteraListaLimitesDif", "A", "alterar limites", limite,
         [](std::int32_t n) -> Ref<Objeto> { return ListaDeUm(Limite(n)); }},
        {"adicionaDiaEspecifico", "I", "incluir limites", equipamento,
         [](std::int32_t n) -> Ref<Objeto> { return DiaDo(n); }},
        {"alteraDiaEspecifico", "A", "alterar limites", limite, [](std::int32_t n) -> Ref<Objeto> { return Dia(n); }},
        {"desativaLimiteDif", "E", "excluir limites", limite, [](std::int32_t n) -> Ref<Objeto> { return Limite(n); }},
        {"desativaDiaEspecifico", "E", "excluir limites", limite, [](std::int32_t n) -> Ref<Objeto> { return Dia(n); }},
        {"consultaRelatorioRVOR011", "", "imprimir certificados", "aferição ativa de número ",
         [](std::int32_t n) -> Ref<Objeto> {
             auto r = Novo<RelatorioAfericaoED>();
             r->CodOat = n;
             r->Serie = "R-001";
             return r;
         },
         "RelatorioRN"},
    };
    return operacoes;
}

class ServicosAcesso : public testing::Test {
  protected:
    // One of everything, number 1 each, of DETRAN/RS in Caxias do Sul.
    ServicosAcesso()
    {
        auto e = EquipamentoDe("R-001");
        e->CodMunic = Caxias;
        auto s = SensorDe(1);
        Poe(s, AfericaoDe("1", DataDe(1, 1, 2026), DataDe(31, 12, 2026), GuardaPdf(m_Ana, "x")));
        Poe(e, s);
        Inclui(m_Ana, e);
        Feita(m_Ana, "alteraListaLimitesDif", ListaDeUm([] {
                  auto l = LimiteDo(1);
                  l->Dia = std::uint8_t{2};
                  return l;
              }()));
        Feita(m_Ana, "adicionaDiaEspecifico", [] {
            auto d = DiaDo(1);
            d->Data = DataDe(25, 12, 2026);
            return d;
        }());
        m_Historico = Historico();
    }
    std::string Recusa(const Ref<SessaoServico> &sessao, const Operacao &operacao, std::int32_t numero)
    {
        const Retorno retorno = Pede(sessao, operacao.Metodo, operacao.Pedido(numero), operacao.Classe);
        EXPECT_FALSE(retorno.Feita);
        EXPECT_TRUE(retorno.Resposta.EhVazio());
        EXPECT_EQ(Historico(), m_Historico); // nothing was changed
        return retorno.Recusa;
    }
    static void Feita(const Ref<SessaoServico> &sessao, const std::string &metodo, const Ref<Objeto> &pedido,
                      const std::string &classe = "EquiptoRN")
    {
        const Retorno retorno = Pede(sessao, metodo, pedido, classe);
        EXPECT_TRUE(retorno.Feita) << metodo << ": " << retorno.Recusa;
    }
    std::string Historico()
    {
        return m_Registro.Sql("SELECT COUNT(*) FROM HISTORICO WHERE Entidade NOT IN ('USUARIO', 'CLIENTE')");
    }

    RegistroDeTeste m_Registro;
    Ref<SessaoServico> m_Ana = m_Registro.Sessao("ana");
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
            Feita(sessao, "consultaSimplesLimiteDif", Limite(1));
            Feita(sessao, "consultaSimplesDiaEspecifico", Dia(1));
        }
        for (const Operacao &operacao : Operacoes()) {
            SCOPED_TRACE(pessoa.Usuario + " " + operacao.Metodo);
            const bool pode = operacao.Acao.empty() ? pessoa.Olha : operacao.Acao == pessoa.Acoes;
            if (!pode) {
                const std::string recusa = pessoa.Nome + " não tem permissão para " + operacao.OQue + ".";
                EXPECT_EQ(Recusa(sessao, operacao, 1), recusa);
                EXPECT_EQ(Recusa(sessao, operacao, 99), recusa); // nor is it told what there is
            } else if (operacao.Acao.empty()) {
                Feita(sessao, operacao.Metodo, operacao.Pedido(1), operacao.Classe);
            }
        }
    }
}

TEST_F(ServicosAcesso, EveryOperation_OfADeactivatedUser_IsRefused)
{
    m_Registro.Sql("UPDATE USUARIO SET Ativo = 2 WHERE Usuario = 'ana'");
    for (const Operacao &operacao : Operacoes()) {
        EXPECT_EQ(Recusa(m_Ana, operacao, 1), "Ana Souza não tem permissão para " + operacao.OQue + ".");
    }
    double numero = 0;
    Bytes lidos;
    std::string recusa;
    EXPECT_FALSE(m_Ana->GuardaDocumento(Pdf("y"), numero, recusa));
    EXPECT_EQ(recusa, "Ana Souza não tem permissão para guardar documentos.");
    EXPECT_FALSE(m_Ana->LeDocumento(1, lidos, recusa));
    EXPECT_EQ(recusa, "Ana Souza não tem permissão para ver documentos.");
}

TEST_F(ServicosAcesso, EveryOperation_OnWhatIsAnotherClients_FindsNothing)
{
    const auto elisa = m_Registro.Sessao("elisa");
    for (const Operacao &operacao : Operacoes()) {
        SCOPED_TRACE(operacao.Metodo);
        const std::string recusa =
            operacao.Metodo == "inclui"   ? "Elisa Prado registra equipamentos do cliente EPTC, e não de DETRAN/RS."
            : operacao.Metodo == "lista2" ? "Elisa Prado consulta equipamentos do cliente EPTC, e não de DETRAN/RS."
                                          : "O cliente EPTC não tem " + operacao.Falta + "1.";
        EXPECT_EQ(Recusa(elisa, operacao, 1), recusa);
    }
}

TEST_F(ServicosAcesso, EveryOperation_OnWhatIsNotThere_IsRefused)
{
    for (const Operacao &operacao : Operacoes()) {
        if (!operacao.Falta.empty()) {
            for (const std::int32_t numero : {99, -1, INT32_MAX}) {
                EXPECT_EQ(Recusa(m_Ana, operacao, numero),
                          "O cliente DETRAN/RS não tem " + operacao.Falta + std::to_string(numero) + ".")
                    << operacao.Metodo;
            }
        }
    }
}

TEST_F(ServicosAcesso, altera_OfOnesOwn_WithTheSensorOrDocumentOfAnotherClient_IsRefused)
{
    const auto elisa = m_Registro.Sessao("elisa");
    auto e = EquipamentoDe("E-1");
    Poe(e, SensorDe(1));
    e = SoNumero(Inclui(elisa, e));
    const std::string historico = Historico();
    auto s = Novo<SensorED>();
    s->NroIntSensor = 1;
    Poe(e, s);
    EXPECT_EQ(Pede(elisa, "altera", e).Recusa, "O sensor de número interno 1 não é deste equipamento.");
    e = SoNumero(e->NroIntEquip);
    s = Novo<SensorED>();
    s->NroIntSensor = 2;
    auto a = Novo<AfericaoED>();
    a->NroIntAfericao = 1;
    Poe(s, a);
    Poe(e, s);
    EXPECT_EQ(Pede(elisa, "altera", e).Recusa, "A aferição de número interno 1 não é do sensor 1 deste equipamento.");
    s->Afericoes = Novo<Colecao<Ref<AfericaoED>>>();
    Poe(s, AfericaoDe("7", DataDe(1, 1, 2026), DataDe(2, 1, 2026), 1));
    EXPECT_EQ(Pede(elisa, "altera", e).Recusa, "O documento de número 1 da aferição 7 não existe no cliente EPTC.");
    EXPECT_EQ(Historico(), historico);
}

TEST_F(ServicosAcesso, TiedToAMunicipality_RegistersOnlyThereAndLooksAfterTheRest)
{
    const auto davi = m_Registro.Sessao("davi");
    auto e = EquipamentoDe("R-002");
    e->CodMunic = Caxias;
    EXPECT_EQ(Pede(davi, "inclui", e).Recusa,
              "Davi Reis registra equipamentos somente no município de código 4314902.");
    EXPECT_EQ(Historico(), m_Historico);
    Abre(davi, 1);
    e = SoNumero(1);
    e->Descricao = "Outra";
    Feita(davi, "altera", e);
    Feita(davi, "desativa", SoNumero(1));
    Feita(davi, "reativa", SoNumero(1));
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
            "'), '; ') FROM (SELECT * FROM HISTORICO WHERE Quando = (SELECT MAX(Quando) FROM HISTORICO) ORDER BY Nro)");
        m_Registro.PassaSegundos(1);
        return linhas;
    };
    const auto altera = [&](const std::function<void(SensorED &, AfericaoED &)> &mudanca) {
        auto e = SoNumero(1);
        auto s = Novo<SensorED>();
        s->NroIntSensor = 1;
        auto a = Novo<AfericaoED>();
        a->NroIntAfericao = 1;
        mudanca(*s, *a);
        Poe(s, a);
        Poe(e, s);
        Feita(m_Ana, "altera", e);
    };
    altera([](SensorED &s, AfericaoED &) { s.LocalInfr = "Rua B, 2"; });
    EXPECT_EQ(ultimas("LocalInfr"), "1 100001 EQUIPAMENTO1.2 SENSOR1 altera Av. Ipiranga, 1200 Rua B, 2");
    altera([](SensorED &s, AfericaoED &) { s.Ativo = std::uint8_t{2}; });
    EXPECT_EQ(ultimas("Ativo"), "1 100002 EQUIPAMENTO1.3 SENSOR1 desativa 1 2");
    altera([](SensorED &s, AfericaoED &) { s.Ativo = std::uint8_t{1}; });
    EXPECT_EQ(ultimas("Ativo"), "1 100003 EQUIPAMENTO1.4 SENSOR1 reativa 2 1");
    altera([](SensorED &, AfericaoED &a) { a.DataVencimento = DataDe(30, 6, 2026); });
    EXPECT_EQ(ultimas("DataVencimento"), "1 100004 EQUIPAMENTO1.5 AFERICAO1 altera 20261231 20260630");
    altera([](SensorED &, AfericaoED &a) { a.Ativo = std::uint8_t{2}; });
    EXPECT_EQ(ultimas("Ativo"), "1 100005 EQUIPAMENTO1.6 AFERICAO1 desativa 1 2");
    altera([](SensorED &, AfericaoED &a) { a.Ativo = std::uint8_t{1}; });
    EXPECT_EQ(ultimas("Ativo"), "1 100006 EQUIPAMENTO1.7 AFERICAO1 reativa 2 1");

    const auto bia = m_Registro.Sessao("bia");
    m_Registro.PassaSegundos(1); // behind the row of the new user
    Feita(bia, "desativa", SoNumero(1));
    EXPECT_EQ(ultimas("Ativo"), "6 100008 EQUIPAMENTO1.8 EQUIPAMENTO1 desativa 1 2");
    Feita(bia, "reativa", SoNumero(1));
    EXPECT_EQ(ultimas("Ativo"), "6 100009 EQUIPAMENTO1.9 EQUIPAMENTO1 reativa 2 1");

    Feita(bia, "alteraListaLimitesDif", ListaDeUm(LimiteDo(1)));
    EXPECT_EQ(ultimas("HoraFim"), "6 100010 LIMITE2.1 LIMITE2 inclui - 900");
    auto l = Limite(2);
    l->HoraFim = 930;
    Feita(bia, "consultaSimplesLimiteDif", l);
    Feita(bia, "alteraListaLimitesDif", ListaDeUm(l));
    EXPECT_EQ(ultimas("HoraFim"), "6 100011 LIMITE2.2 LIMITE2 altera 900 930");
    Feita(bia, "desativaLimiteDif", l);
    EXPECT_EQ(ultimas("Ativo"), "6 100012 LIMITE2.3 LIMITE2 desativa 1 2");

    Feita(bia, "adicionaDiaEspecifico", DiaDo(1));
    EXPECT_EQ(ultimas("Data"), "6 100013 DIA2.1 DIA2 inclui - 20261224");
    auto d = Dia(2);
    d->Data = DataDe(23, 12, 2026);
    Feita(bia, "consultaSimplesDiaEspecifico", d);
    Feita(bia, "alteraDiaEspecifico", d);
    EXPECT_EQ(ultimas("Data"), "6 100014 DIA2.2 DIA2 altera 20261224 20261223");
    Feita(bia, "desativaDiaEspecifico", d);
    EXPECT_EQ(ultimas("Ativo"), "6 100015 DIA2.3 DIA2 desativa 1 2");

    GuardaPdf(bia, "y");
    EXPECT_EQ(ultimas("ClienteInc"), "6 100016 DOCUMENTO2.1 DOCUMENTO2 inclui - DETRAN/RS");
}

// The row of the history is part of the change: where it cannot be written, nothing changes.
TEST_F(ServicosAcesso, Change_WhoseHistoryCannotBeWritten_IsUndone)
{
    Feita(m_Ana, "consultaSimplesLimiteDif", Limite(1));
    Feita(m_Ana, "consultaSimplesDiaEspecifico", Dia(1));
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
    auto e = SoNumero(1);
    e->Descricao = "Outra";
    auto s = SensorDe(2);
    Poe(s, AfericaoDe("2", DataDe(1, 1, 2026), DataDe(2, 1, 2026)));
    Poe(e, s);
    auto l = Limite(1);
    l->HoraFim = 1000;
    auto d = Dia(1);
    d->HoraFim = 1000;
    const std::vector<std::function<void()>> mudancas = {
        [&] { Pede(m_Ana, "inclui", EquipamentoDe("N-1")); },
        [&] { Pede(m_Ana, "altera", e); },
        [&] { Pede(m_Ana, "desativa", SoNumero(1)); },
        [&] { Pede(m_Ana, "alteraListaLimitesDif", ListaDeUm(LimiteDo(1))); },
        [&] { Pede(m_Ana, "alteraListaLimitesDif", ListaDeUm(l)); },
        [&] { Pede(m_Ana, "desativaLimiteDif", Limite(1)); },
        [&] { Pede(m_Ana, "adicionaDiaEspecifico", DiaDo(1)); },
        [&] { Pede(m_Ana, "alteraDiaEspecifico", d); },
        [&] { Pede(m_Ana, "desativaDiaEspecifico", Dia(1)); },
        [&] { GuardaPdf(m_Ana, "y"); },
        [&] { m_Registro.Cadastra("bia"); },
        [&] {
            m_Registro.Aberto().CadastraCliente({7, "NOVO", {}});
        },
    };
    for (std::size_t qual = 0; qual < mudancas.size(); ++qual) {
        SCOPED_TRACE(qual);
        EXPECT_EQ(FalhaLancada(mudancas[qual]).Numero, 51);
        EXPECT_EQ(estado(), antes);
    }
}

} // namespace
