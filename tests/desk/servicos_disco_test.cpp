#include "desk/services/Banco.h"
#include "desk/services/DialetoSQLite.h"
#include "host/Conversoes.h"
#include "host/DiaEspecificoED.h"
#include "host/LimiteDifED.h"
#include "tests/desk/DiscoDeTeste.h"
#include "tests/desk/RegistroDeTeste.h"
#include "tests/support/FalhaLancada.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <sched.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

using namespace mesa;

namespace {

const std::string Cheio =
    "O disco em que está o registro ficou cheio. Nada foi gravado: libere espaço e tente de novo.";

const std::string Mudado = "O arquivo do registro foi movido, trocado ou apagado depois de aberto aqui. Nada foi "
                           "gravado: feche o programa e abra-o de novo.";

// Gives this process mounts of its own; without privilege only where the system lets anybody have them.
bool TemDiscosProprios()
{
    const std::string usuario = "0 " + std::to_string(geteuid()) + " 1";
    const std::string grupo = "0 " + std::to_string(getegid()) + " 1";
    if (unshare(CLONE_NEWNS) == 0) {
        return true;
    }
    const auto escreve = [](const char *arquivo, const std::string &texto) {
        return (std::ofstream(arquivo) << texto << std::flush).good();
    };
    return unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && escreve("/proc/self/setgroups", "deny") &&
           escreve("/proc/self/uid_map", usuario) && escreve("/proc/self/gid_map", grupo);
}

// A disk that fills up in the middle of an operation: whatever the write at which it does, the operation is refused
// whole, the registry opens, and the same operation succeeds once there is room.
class ServicosDisco : public testing::Test {
  protected:
    static void SetUpTestSuite() { DiscoDeTeste::Instala(); }

    std::string Estado()
    {
        std::string sql = "SELECT (SELECT COALESCE(group_concat(NroIntEquip || ':' || Versao || ':' || Descricao), '') "
                          "FROM EQUIPAMENTO)";
        for (const char *tabela :
             {"SENSOR", "AFERICAO", "DOCUMENTO", "LIMITE", "DIA", "USUARIO", "PERMISSAO", "HISTORICO"}) {
            sql += std::string(" || ' ' || (SELECT COUNT(*) || '/' || COALESCE(MAX(rowid), 0) FROM ") + tabela + ")";
        }
        return m_Registro.Sql(sql);
    }
    // How many refusals there were until it fitted.
    int Varre(const std::string &fonte, const std::function<void()> &operacao, int passo = 1)
    {
        int recusas = 0;
        for (int cabem = 0;; cabem += passo) {
            SCOPED_TRACE(cabem);
            const std::string antes = Estado();
            std::optional<Falha> falha;
            {
                const DiscoDeTeste disco(cabem);
                try {
                    operacao();
                } catch (const Falha &lancada) {
                    falha = lancada;
                }
                EXPECT_EQ(falha.has_value() && !disco.Recusou(), false);
            }
            EXPECT_EQ(m_Registro.Sql("PRAGMA integrity_check"), "ok");
            EXPECT_EQ(m_Registro.Sql("PRAGMA foreign_key_check"), "");
            if (!falha) {
                EXPECT_NE(Estado(), antes);
                return recusas;
            }
            ++recusas;
            EXPECT_EQ(falha->Numero, 61);
            EXPECT_EQ(falha->Descricao, Cheio);
            EXPECT_EQ(falha->Fonte, fonte);
            EXPECT_EQ(Estado(), antes);
            Banco(std::make_unique<DialetoSQLite>(), m_Registro.Caminho()); // the registry opens
            operacao();
            EXPECT_NE(Estado(), antes);
            if (HasFailure()) {
                return recusas;
            }
        }
    }
    void Pede_(const std::string &metodo, const Ref<Objeto> &pedido)
    {
        const Retorno retorno = Pede(m_Ana, metodo, pedido);
        EXPECT_TRUE(retorno.Feita) << retorno.Recusa;
    }
    std::string Marca() { return std::to_string(++m_Marca); }

    RegistroDeTeste m_Registro;
    Ref<SessaoServico> m_Ana = m_Registro.Sessao("ana");
    int m_Marca = 0;
};

TEST_F(ServicosDisco, inclui_AtEveryWrite)
{
    EXPECT_GT(Varre("Servicos < SessaoServico.Executa",
                    [&] {
                        auto e = EquipamentoDe("R-" + Marca());
                        auto s = SensorDe(1);
                        Poe(s, AfericaoDe("1", DataDe(1, 1, 2026), DataDe(30, 6, 2026)));
                        Poe(s, AfericaoDe("2", DataDe(1, 7, 2026), DataDe(31, 12, 2026)));
                        Poe(e, s);
                        Pede_("inclui", e);
                    }),
              20);
}

TEST_F(ServicosDisco, altera_AtEveryWrite_IsStillMineToRepeat)
{
    const std::int32_t numero = Inclui(m_Ana, EquipamentoDe("R-1"));
    EXPECT_GT(Varre("Servicos < SessaoServico.Executa",
                    [&] {
                        auto e = SoNumero(numero);
                        e->Descricao = Marca();
                        auto s = SensorDe(static_cast<std::int16_t>(m_Marca));
                        Poe(s, AfericaoDe("1", DataDe(1, 1, 2026), DataDe(30, 6, 2026)));
                        Poe(e, s);
                        Pede_("altera", e);
                    }),
              10);
}

TEST_F(ServicosDisco, desativaAndReativa_AtEveryWrite)
{
    const std::int32_t numero = Inclui(m_Ana, EquipamentoDe("R-1"));
    bool ativo = true;
    EXPECT_GT(Varre("Servicos < SessaoServico.Executa",
                    [&] {
                        Pede_(ativo ? "desativa" : "reativa", SoNumero(numero));
                        ativo = !ativo;
                    }),
              3);
}

TEST_F(ServicosDisco, LimitsAndDays_AtEveryWrite)
{
    const std::int32_t numero = Inclui(m_Ana, EquipamentoDe("R-1"));
    EXPECT_GT(Varre("Servicos < SessaoServico.Executa",
                    [&] {
                        auto e = Novo<EquiptoED>();
                        e->ListaLimiteDif = Novo<Colecao<Ref<LimiteDifED>>>();
                        ++m_Marca;
                        for (std::uint8_t dia = 2; dia <= 4; ++dia) {
                            auto l = Novo<LimiteDifED>();
                            l->NroIntEquip = numero;
                            l->Dia = dia;
                            l->HoraInicio = l->HoraFim = m_Marca / 60 * 100 + m_Marca % 60;
                            l->VelocPerm = std::int16_t{40};
                            l->TipoLimite = std::uint8_t{1};
                            e->ListaLimiteDif.Valor()->Add(l);
                        }
                        Pede_("alteraListaLimitesDif", e);
                    }),
              5);
    EXPECT_GT(Varre("Servicos < SessaoServico.Executa",
                    [&] {
                        auto d = Novo<DiaEspecificoED>();
                        d->NroIntEquip = numero;
                        d->Data = DataDe(1, 1, 2027).MaisDias(++m_Marca);
                        d->HoraInicio = 0;
                        d->HoraFim = 2359;
                        d->VelocPerm = std::int16_t{40};
                        Pede_("adicionaDiaEspecifico", d);
                    }),
              3);
}

TEST_F(ServicosDisco, GuardaDocumento_AtEveryWrite)
{
    EXPECT_GT(Varre("Servicos < SessaoServico.GuardaDocumento",
                    [&] {
                        double numero = 0;
                        std::string recusa;
                        EXPECT_TRUE(m_Ana->GuardaDocumento(Pdf(Marca(), 60000), numero, recusa)) << recusa;
                        Bytes lidos;
                        EXPECT_TRUE(m_Ana->LeDocumento(numero, lidos, recusa)) << recusa;
                        EXPECT_EQ(lidos, Pdf(std::to_string(m_Marca), 60000));
                    }),
              30);
}

// A document beyond what the database holds in memory is written to the disk before it is confirmed.
TEST_F(ServicosDisco, GuardaDocumento_OfTheLargestSize_AtManyWrites)
{
    EXPECT_GT(Varre(
                  "Servicos < SessaoServico.GuardaDocumento",
                  [&] {
                      double numero = 0;
                      std::string recusa;
                      EXPECT_TRUE(m_Ana->GuardaDocumento(Pdf(Marca(), 5242880), numero, recusa)) << recusa;
                  },
                  211),
              10);
}

TEST_F(ServicosDisco, CadastraUsuario_AtEveryWrite)
{
    EXPECT_GT(Varre(
                  "Servicos < Servicos.CadastraUsuario",
                  [&] {
                      ++m_Marca;
                      m_Registro.Aberto().CadastraUsuario(
                          {100 + m_Marca, "novo" + std::to_string(m_Marca), "Novo", 1, "DETRAN/RS", "Fiscalização", 0},
                          "senha", {"", "I"});
                  },
                  3),
              3);
}

TEST_F(ServicosDisco, Entra_OnAFullDisk_IsRefusedAndCountsNoWrongPassword)
{
    std::string recusa;
    std::int32_t espera = 0;
    for (int vez = 0; vez < 4; ++vez) {
        const DiscoDeTeste disco(0);
        EXPECT_EQ(FalhaLancada([&] { m_Registro.Aberto().Entra("ana", "errada", recusa, espera); }).Descricao, Cheio);
    }
    EXPECT_TRUE(m_Registro.Aberto().Entra("ana", "senha de ana", recusa, espera)) << recusa;
}

TEST_F(ServicosDisco, Reading_OnAFullDisk_GoesOn)
{
    const std::int32_t numero = Inclui(m_Ana, EquipamentoDe("R-1"));
    const double documento = GuardaPdf(m_Ana, "x");
    const DiscoDeTeste disco(0);
    EXPECT_EQ(Abre(m_Ana, numero)->Codigo.Valor(), "R-1");
    Bytes lidos;
    std::string recusa;
    EXPECT_TRUE(m_Ana->LeDocumento(documento, lidos, recusa)) << recusa;
    EXPECT_FALSE(disco.Recusou());
}

TEST_F(ServicosDisco, Abre_OfANewRegistry_AtManyWrites_LeavesOneThatOpens)
{
    int recusas = 0;
    for (int cabem = 0;; cabem += 7) {
        SCOPED_TRACE(cabem);
        const QTemporaryDir diretorio;
        const std::string caminho = diretorio.filePath("r.db").toStdString();
        const auto agora = [] { return DataDe(20, 11, 2026); };
        bool abriu = true;
        {
            const DiscoDeTeste disco(cabem);
            try {
                Servicos::Abre(caminho, agora);
            } catch (const Falha &falha) {
                abriu = false;
                EXPECT_EQ(falha.Descricao, Cheio);
            }
        }
        EXPECT_TRUE(Servicos::Abre(caminho, agora)->Vazio());
        if (abriu || HasFailure()) {
            break;
        }
        ++recusas;
    }
    EXPECT_GT(recusas, 5);
}

TEST_F(ServicosDisco, Write_ThatFailsOtherwise_SaysSo)
{
    {
        const DiscoDeTeste disco(1, SQLITE_IOERR_WRITE);
        const Falha falha = FalhaLancada([&] { Inclui(m_Ana, EquipamentoDe("R-1")); });
        EXPECT_EQ(falha.Numero, 75);
        EXPECT_EQ(falha.Descricao,
                  "O disco em que está o registro não aceitou a gravação (disk I/O error). Nada foi gravado: confira o "
                  "espaço e o disco e tente de novo.");
    }
    EXPECT_EQ(m_Registro.Sql("SELECT COUNT(*) FROM EQUIPAMENTO"), "0");
    EXPECT_EQ(Inclui(m_Ana, EquipamentoDe("R-1")), 1);
}

TEST_F(ServicosDisco, Synchronisation_ThatFails_IsRefusedAndLeavesNoHalf)
{
    const std::int32_t numero = Inclui(m_Ana, EquipamentoDe("R-1"));
    const std::string antes = Estado();
    auto e = SoNumero(numero);
    e->Descricao = "Outra";
    Poe(e, SensorDe(1));
    {
        const DiscoDeTeste disco(0, SQLITE_IOERR_FSYNC);
        const Falha falha = FalhaLancada([&] { Pede(m_Ana, "altera", e); });
        EXPECT_EQ(falha.Numero, 75);
        EXPECT_EQ(falha.Descricao, "Não foi possível ler ou gravar o arquivo do registro (disk I/O error).");
    }
    EXPECT_EQ(Estado(), antes);
    EXPECT_TRUE(Pede(m_Ana, "altera", e).Feita);
    EXPECT_EQ(m_Registro.Sql("PRAGMA integrity_check"), "ok");
}

// What was written into a file without a name would go away with the program.
TEST_F(ServicosDisco, Directory_ThatWentAway_EveryWriteIsRefused)
{
    const std::int32_t numero = Inclui(m_Ana, EquipamentoDe("R-1"));
    std::filesystem::remove_all(std::filesystem::path(m_Registro.Caminho()).parent_path());
    auto e = SoNumero(numero);
    e->Descricao = "Outra";
    const Falha falha = FalhaLancada([&] { Pede(m_Ana, "altera", e); });
    EXPECT_EQ(falha.Numero, 75);
    EXPECT_EQ(falha.Descricao, Mudado);
    EXPECT_EQ(falha.Fonte, "Servicos < SessaoServico.Executa");
    EXPECT_EQ(FalhaLancada([&] { GuardaPdf(m_Ana, "x"); }).Descricao, Mudado);
    EXPECT_EQ(Abre(m_Ana, numero)->Descricao.Valor(), "Av. Ipiranga, sentido centro"); // may still be looked at
}

TEST_F(ServicosDisco, Registry_ReplacedByAnother_TakesNoWriteOfTheOldOne)
{
    Inclui(m_Ana, EquipamentoDe("R-1"));
    const std::filesystem::path caminho = m_Registro.Caminho();
    for (const char *parte : {"", "-wal", "-shm"}) {
        std::filesystem::rename(caminho.string() + parte, caminho.string() + ".velho" + parte);
    }
    const auto novo = Servicos::Abre(caminho, [] { return DataDe(20, 11, 2026); });
    EXPECT_EQ(FalhaLancada([&] { Inclui(m_Ana, EquipamentoDe("R-2")); }).Descricao, Mudado);
    EXPECT_EQ(m_Registro.Sql("SELECT COUNT(*) FROM EQUIPAMENTO"), "0");
}

// The real thing, where the system lets a process have a small disk of its own.
TEST_F(ServicosDisco, RealDisk_ThatIsFull_RefusesAndGoesOnOnceThereIsRoom)
{
    const QTemporaryDir ponto;
    std::fflush(nullptr);
    const pid_t filho = fork();
    if (filho == 0) {
        constexpr int naoDa = 77;
        if (!TemDiscosProprios() || mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            mount("tmpfs", ponto.path().toUtf8().constData(), "tmpfs", 0, "size=1m") != 0) {
            _exit(naoDa);
        }
        int saida = 0;
        const auto exige = [&](bool vale, const std::string &oQue) {
            if (!vale) {
                std::printf("%s\n", oQue.c_str());
                saida = 1;
            }
        };
        try {
            const std::string lastro = ponto.filePath("lastro").toStdString();
            const auto servicos =
                Servicos::Abre(ponto.filePath("r.db").toStdString(), [] { return DataDe(20, 11, 2026); });
            servicos->CadastraCliente({1, "DETRAN/RS", {}});
            servicos->CadastraUsuario({1, "ana", "Ana", 1, "DETRAN/RS", "", 0}, "s", {"", "I", "A", "E"});
            std::string recusa;
            std::int32_t espera = 0;
            const auto ana = servicos->Entra("ana", "s", recusa, espera);
            {
                std::ofstream enche(lastro, std::ios::binary);
                while (enche.write(std::string(4096, 'x').data(), 4096).flush()) {
                }
            }
            double numero = 0;
            Falha falha = FalhaLancada([&] { ana->GuardaDocumento(Pdf("grande", 400000), numero, recusa); });
            exige(falha.Numero == 61 && falha.Descricao == Cheio, "document: " + falha.Descricao);
            falha = FalhaLancada([&] {
                for (int n = 0; n < 200; ++n) { // what the file has set aside runs out
                    Inclui(ana, EquipamentoDe("R-" + std::to_string(n)));
                }
            });
            exige(falha.Numero == 61 && falha.Descricao == Cheio, "equipment: " + falha.Descricao);
            std::filesystem::remove(lastro);
            exige(ana->GuardaDocumento(Pdf("grande", 200000), numero, recusa), "with room: " + recusa);
            Inclui(ana, EquipamentoDe("com lugar"));
            Bytes lidos;
            exige(ana->LeDocumento(numero, lidos, recusa) && lidos == Pdf("grande", 200000), "read: " + recusa);
        } catch (...) {
            exige(false, FalhaCorrente().Descricao);
        }
        std::fflush(stdout);
        _exit(saida);
    }
    int estado = 0;
    waitpid(filho, &estado, 0);
    ASSERT_TRUE(WIFEXITED(estado));
    if (WEXITSTATUS(estado) == 77) {
        GTEST_SKIP() << "the system gives this process no disk of its own";
    }
    EXPECT_EQ(WEXITSTATUS(estado), 0);
}

} // namespace
