#include "tests/services/RegistroPovoado.h"

#include "services/Banco.h"
#include "services/DialetoSQLite.h"
#include "services/Historico.h"
#include "services/MapaRegistro.h"
#include "services/Resumo.h"
#include "services/SessaoSql.h"

#include <QFile>

#include <sqlite3.h>

#include <memory>
#include <stdexcept>

using namespace mesa;

void PoeLinha(Banco &banco, const Instante &agora, const std::string &tabela, const Celulas &celulas)
{
    const std::int64_t numero = banco.Insere(tabela, celulas).NumeroNovo();
    Historico(banco).Registra(agora, 0, {tabela, numero, 1, tabela, numero, "inclui"});
}

namespace {

QByteArray Povoado()
{
    RegistroDeTeste registro;
    {
        const auto ana = registro.Sessao("ana");
        registro.Cadastra("bruno");
        std::string recusa;
        std::int32_t espera = 0;
        registro.Aberto().Entra("bruno", "outra senha", "estação de teste", recusa, espera);
        const auto certificado = AfericaoDe("123", DataDe(1, 1, 2026), DataDe(31, 12, 2026), GuardaPdf(ana, "x"));
        auto completo = EquipamentoDe("R-001");
        completo->SubCodigo = "Sub 1";
        completo->SetorInc = "Fiscalização";
        Poe(completo, Poe(SensorDe(1),
                          AfericaoDe("122", DataDe(1, 1, 2025), DataDe(31, 12, 2025), certificado->NroIntImgCertif)));
        Poe(completo, Poe(SensorDe(2), certificado));
        const std::int32_t numero = Inclui(ana, completo);
        Inclui(ana, EquipamentoDe("R-002"));
        Exigido(Pede(ana, "alteraListaLimitesDif", ListaDeLimites({LimiteDe(numero, 2, 730, 900)})));
        {
            // As one of an earlier time: equipment of this type has no prohibited hours.
            Banco banco(std::make_unique<DialetoSQLite>(), registro.Caminho(), registro.Relogio);
            banco.Escreve([&] {
                MapaRegistro::Insere(banco, "LIMITE", *LimiteDe(numero, 3, 0, 600, 0), {{"Versao", 1}});
                Historico(banco).Registra(registro.Relogio, 1, {"LIMITE", 2, 1, "LIMITE", 2, "inclui"});
            });
        }
        for (int vez = 0; vez < 2; ++vez) { // asked for again
            Ref<Objeto> dia = DiaDe(numero, DataDe(25, 12, 2026), 730, 900);
            Retorno retorno;
            ComoTipo<SessaoSql>(ana)->Numera(
                {"7a4d6c1e-3f0b-4f6e-9a51-0c2d8e7b9f10", Resumo("o dia"), [] { return "feito"; }});
            retorno.Feita = ana->Executa("EquiptoRN", "adicionaDiaEspecifico", dia, retorno.Resposta, retorno.Recusa);
            Exigido(retorno);
        }
        registro.PassaSegundos(3600);
        Exigido(Pede(ana, "altera", Com(Abre(ana, numero), &EquiptoED::Descricao, "Av. Ipiranga, 1200")));
    }
    registro.Fecha();
    const Instante agora(registro.Relogio);
    {
        Banco banco(std::make_unique<DialetoSQLite>(), registro.Caminho(), agora);
        banco.Escreve([&] {
            PoeLinha(banco, agora, "LOGRADOURO",
                     {{"CodMunic", 4314902},
                      {"Nome", "Rua São José"},
                      {"Bairro", "Centro"},
                      {"Cep", "90010000"},
                      {"NomeBusca", "rua sao jose"},
                      {"Ativo", 1},
                      {"Versao", 1}});
            PoeLinha(banco, agora, "LAYOUT", {{"Nome", "MEU"}, {"Conteudo", "[x]"}, {"Ativo", 1}, {"Versao", 1}});
            PoeLinha(banco, agora, "ESTACAO", {{"Numero", 1}, {"Estacao", "estacao de ana"}});
        });
    }
    QFile arquivo(Q(registro.Caminho()));
    arquivo.open(QIODevice::ReadOnly);
    return arquivo.readAll();
}

} // namespace

RegistroPovoado::RegistroPovoado() : m_Caminho(m_Diretorio.filePath("registro.db").toStdString())
{
    static const QByteArray octetos = Povoado();
    QFile arquivo(Q(m_Caminho));
    arquivo.open(QIODevice::WriteOnly);
    arquivo.write(octetos);
}

std::string RegistroPovoado::Sql(const std::string &comando) const
{
    const auto linhas = LinhasSql(m_Caminho, comando);
    return linhas.empty() ? "" : linhas.front();
}

void RegistroPovoado::SemGuardas(const std::string &comandos) const
{
    sqlite3 *aberto = nullptr;
    const int abriu = sqlite3_open_v2(m_Caminho.c_str(), &aberto, SQLITE_OPEN_READWRITE, nullptr);
    const std::unique_ptr<sqlite3, int (*)(sqlite3 *)> banco(aberto, sqlite3_close);
    if (abriu != SQLITE_OK || sqlite3_db_config(aberto, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr) != SQLITE_OK ||
        sqlite3_exec(aberto, ("PRAGMA ignore_check_constraints = ON;" + comandos).c_str(), nullptr, nullptr, nullptr) !=
            SQLITE_OK) {
        throw std::runtime_error(sqlite3_errmsg(aberto));
    }
}

void RegistroPovoado::RefazCorrente() const
{
    std::string comandos = "BEGIN;";
    Banco banco(std::make_unique<DialetoSQLite>(), m_Caminho, Instante(DataDe(20, 11, 2026)));
    banco.Le([&] {
        std::string elo = Historico::Origem(Sql("SELECT Identificador FROM REGISTRO"));
        Consulta linhas(banco, "SELECT " + Historico::ColunasDoElo() + " FROM HISTORICO ORDER BY Nro");
        for (int nro = 1; linhas.Proxima(); ++nro) {
            QVariantList campos;
            for (int coluna = 0; coluna < 12; ++coluna) {
                campos.push_back(linhas.Valor(coluna));
            }
            elo = Historico::Encadeia(elo, nro, campos);
            comandos += "UPDATE HISTORICO SET Elo = '" + elo + "' WHERE Nro = " + std::to_string(nro) + ";";
        }
    });
    SemGuardas(comandos + "COMMIT");
}
