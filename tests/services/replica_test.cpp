#include "services/Esquema.h"
#include "services/Restauracao.h"
#include "services/ServicosSql.h"
#include "tests/services/ServicosTeste.h"

#include <sqlite3.h>

#include <cstdint>
#include <map>
#include <random>

using namespace mesa;

namespace {

using Replica = std::map<std::int32_t, std::string>;

std::int64_t passosDoBanco = 0; // of all connections that are opened while they are counted, in hundreds

int Conta(void *)
{
    ++passosDoBanco;
    return 0;
}
int Vigia(sqlite3 *banco, char **, const sqlite3_api_routines *)
{
    sqlite3_progress_handler(banco, 100, Conta, nullptr);
    return SQLITE_OK;
}

class ServicosReplica : public ServicosTeste {
  protected:
    static Replicado Le(const Ref<SessaoServico> &sessao, std::int64_t depoisDe, Replica &linhas)
    {
        return sessao->LeReplica(depoisDe, [&](const LinhaReplica &linha) {
            linhas[linha.NroIntEquip] =
                linha.ClienteInc + "|" + linha.Codigo + "|" + linha.TipoEquip + "|" + std::to_string(linha.Ativo);
        });
    }
    std::string Fim() { return m_Registro.Sql("SELECT MAX(Nro) FROM HISTORICO"); }
    // The one equipment that there is, as so many, of which each has its number in its code.
    void Multiplica(int ate)
    {
        std::string colunas;
        std::string valores;
        for (const Esquema::Coluna &coluna : Esquema::Acha("EQUIPAMENTO")->Colunas) {
            const std::string nome(coluna.Nome);
            colunas += (colunas.empty() ? "" : ", ") + nome;
            valores += (valores.empty() ? "" : ", ") + (nome == "NroIntEquip"                       ? "n"
                                                        : nome == "Codigo" || nome == "CodigoChave" ? "'C' || n"
                                                                                                    : nome);
        }
        m_Registro.Sql("WITH RECURSIVE k(n) AS (SELECT 2 UNION ALL SELECT n + 1 FROM k WHERE n < " +
                       std::to_string(ate) + ") INSERT INTO EQUIPAMENTO (" + colunas + ") SELECT " + valores +
                       " FROM EQUIPAMENTO, k");
    }
};

TEST_F(ServicosReplica, AfterANumber_HasWhatChangedSinceOnceEach)
{
    const std::int32_t um = Inclui(m_Ana, EquipamentoDe("R-001"));
    const std::int32_t dois = Inclui(m_Ana, EquipamentoDe("R-002"));
    Inclui(m_Registro.Sessao("elisa"), EquipamentoDe("X-1"));
    Replica linhas;
    const Replicado toda = Le(m_Ana, 0, linhas);
    EXPECT_EQ(toda.Quantas, 2);
    EXPECT_EQ(std::to_string(toda.Ate), Fim());
    EXPECT_EQ(toda.Elo, m_Registro.Sql("SELECT Elo FROM HISTORICO ORDER BY Nro DESC LIMIT 1"));
    EXPECT_EQ(toda.EloDeAntes, "");

    Replica mudadas;
    const Replicado nada = Le(m_Ana, toda.Ate, mudadas);
    EXPECT_EQ(nada.Quantas, 0);
    EXPECT_EQ(nada.Ate, toda.Ate);
    EXPECT_EQ(nada.EloDeAntes, toda.Elo);

    Faz(m_Ana, "desativa", SoNumero(dois));
    Faz(m_Ana, "reativa", SoNumero(dois));
    Faz(m_Ana, "desativa", SoNumero(dois));
    Inclui(m_Registro.Sessao("elisa"), EquipamentoDe("X-2"));
    Replicado depois = Le(m_Ana, toda.Ate, mudadas);
    EXPECT_EQ(depois.Quantas, 1);
    EXPECT_EQ(mudadas, (Replica{{dois, "Autoridade Estadual de Trânsito|R-002|P|2"}}));
    EXPECT_EQ(std::to_string(depois.Ate), Fim());
    EXPECT_EQ(depois.EloDeAntes, toda.Elo);
    depois = Le(m_Ana, depois.Ate + 5, mudadas); // ahead of the registry
    EXPECT_EQ(depois.EloDeAntes, "");
    EXPECT_EQ(depois.Quantas, 0);
    EXPECT_EQ(linhas.begin()->first, um);
}

TEST_F(ServicosReplica, OfAnOperatorWhoMayNotLook_HasNoRowAndNoNumber)
{
    Inclui(m_Ana, EquipamentoDe("R-001"));
    const auto carla = m_Registro.Sessao("carla");
    for (const std::int64_t depoisDe : {0, 1}) {
        Replica linhas;
        const Replicado lida = Le(carla, depoisDe, linhas);
        EXPECT_TRUE(linhas.empty());
        EXPECT_EQ(lida.Ate, 0);
        EXPECT_EQ(lida.Elo + lida.EloDeAntes, "");
        EXPECT_FALSE(lida.DeQuando.Vazia());
    }
}

TEST_F(ServicosReplica, OfMoreRowsThanOnePiece_HasEachOnce)
{
    Inclui(m_Ana, EquipamentoDe("R-001"));
    const std::string entradas = Fim();
    Multiplica(2500);
    m_Registro.Sql("WITH RECURSIVE k(n) AS (SELECT 2 UNION ALL SELECT n + 1 FROM k WHERE n < 2500) INSERT INTO "
                   "HISTORICO SELECT " +
                   entradas +
                   " + n - 1, Quando, Fuso, Operador, Raiz, n, Versao, Entidade, n, Acao, Motivo, Antes, Depois, Elo "
                   "FROM HISTORICO h, k WHERE h.Entidade = 'EQUIPAMENTO' ORDER BY n");
    int passos = 0;
    m_Ana->Acompanha([&](double parte, const std::string &) {
        EXPECT_GE(parte, 0);
        EXPECT_LT(parte, 1);
        ++passos;
        return true;
    });
    for (const std::int64_t depoisDe : {0, std::stoi(entradas)}) {
        Replica linhas;
        const Replicado lida = Le(m_Ana, depoisDe, linhas);
        EXPECT_EQ(lida.Quantas, depoisDe == 0 ? 2500 : 2499);
        EXPECT_EQ(static_cast<std::int64_t>(linhas.size()), lida.Quantas);
        EXPECT_EQ(linhas[2500], "Autoridade Estadual de Trânsito|C2500|P|1");
    }
    EXPECT_EQ(passos, 4999);
}

// One change costs the same, however much there is besides.
TEST_F(ServicosReplica, OfOneChange_CostsTheSameInALargeRegistry)
{
    Inclui(m_Ana, EquipamentoDe("R-001"));
    const auto custa = [&] {
        const std::int64_t antes = std::stoll(Fim());
        Faz(m_Ana,
            m_Registro.Sql("SELECT Ativo FROM EQUIPAMENTO WHERE NroIntEquip = 1") == "1" ? "desativa" : "reativa",
            SoNumero(1));
        sqlite3_auto_extension(reinterpret_cast<void (*)()>(Vigia));
        const auto outro = ComoTipo<ServicosSql>(m_Registro.AbreOutro());
        sqlite3_cancel_auto_extension(reinterpret_cast<void (*)()>(Vigia));
        const auto sessao = outro->Retoma(ComoTipo<SessaoSql>(m_Ana)->Entrada());
        Replica linhas;
        passosDoBanco = 0;
        EXPECT_EQ(Le(sessao, antes, linhas).Quantas, 1);
        return passosDoBanco;
    };
    const std::int64_t pequeno = custa();
    Multiplica(20000);
    m_Registro.Sql("WITH RECURSIVE k(n) AS (SELECT 2 UNION ALL SELECT n + 1 FROM k WHERE n < 20000) INSERT INTO "
                   "HISTORICO SELECT " +
                   Fim() +
                   " + n - 1, Quando, Fuso, Operador, Raiz, n, Versao, Entidade, n, Acao, Motivo, Antes, Depois, Elo "
                   "FROM HISTORICO h, k WHERE h.Entidade = 'EQUIPAMENTO' AND h.Acao = 'inclui' ORDER BY n");
    const std::int64_t grande = custa();
    EXPECT_LE(grande, pequeno + 2) << "hundreds of steps, of " << pequeno;
}

// Whatever changes: what is fetched in parts is what is fetched whole.
TEST_F(ServicosReplica, InParts_IsTheWhole_AfterAThousandRandomChanges)
{
    std::mt19937 sorte(20261120);
    const auto elisa = m_Registro.Sessao("elisa");
    Replica partes;
    std::int64_t ate = 0;
    std::vector<std::int32_t> incluidos;
    for (int vez = 0; vez < 1000; ++vez) {
        const auto qual = incluidos.empty() ? 0 : incluidos[sorte() % incluidos.size()];
        Ref<Objeto> pedido;
        std::string metodo;
        switch (incluidos.empty() ? 0 : sorte() % 5) {
        case 0: {
            const auto &quem = sorte() % 4 == 0 ? elisa : m_Ana;
            const std::int32_t novo = Inclui(quem, EquipamentoDe("R-" + std::to_string(vez)));
            if (quem == m_Ana) {
                incluidos.push_back(novo);
            }
            break;
        }
        case 1:
        case 2: {
            const auto aberto = Abre(m_Ana, qual);
            if (aberto->Ativo.Valor() == 1) {
                Faz(m_Ana, "altera", Com(aberto, &EquiptoED::Descricao, "Depois de " + std::to_string(vez)));
            }
            break;
        }
        default:
            Pede(m_Ana, sorte() % 2 == 0 ? "desativa" : "reativa", SoNumero(qual)); // one of them is refused
        }
        if (sorte() % 20 == 0) {
            ate = Le(m_Ana, ate, partes).Ate;
        }
    }
    Le(m_Ana, ate, partes);
    Replica toda;
    Le(m_Ana, 0, toda);
    EXPECT_EQ(partes, toda);
    EXPECT_EQ(toda.size(), incluidos.size());
    EXPECT_GT(incluidos.size(), 100U);
}

} // namespace
