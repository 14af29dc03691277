#include "services/Banco.h"
#include "services/DialetoSQLite.h"
#include "services/RegistrosAdministracao.h"
#include "tests/services/DiscoDeTeste.h"
#include "tests/services/DiscosProprios.h"
#include "tests/services/ServicosTeste.h"
#include "tests/support/FalhaLancada.h"

#include <QTemporaryDir>

#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

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

// A disk that fills up in the middle of an operation: whatever the write at which it does, the operation is refused
// whole, the registry opens, and the same operation succeeds once there is room.
class ServicosDisco : public ServicosTeste {
  protected:
    static void SetUpTestSuite() { DiscoDeTeste::Instala(); }

    std::string Estado()
    {
        std::string sql = "SELECT (SELECT COALESCE(group_concat(NroIntEquip || ':' || Versao || ':' || Descricao), '') "
                          "FROM EQUIPAMENTO)";
        for (const char *tabela :
             {"SENSOR", "AFERICAO", "DOCUMENTO", "LIMITE", "DIA", "USUARIO", "PERMISSAO", "SETOR", "HISTORICO"}) {
            sql += std::string(" || ' ' || (SELECT COUNT(*) || '/' || COALESCE(MAX(rowid), 0) FROM ") + tabela + ")";
        }
        return m_Registro.Sql(sql);
    }
    // There are at least so many refusals until it fits.
    void Varre(int recusasAoMenos, const std::string &operacaoDe, const std::function<void()> &operacao, int passo = 1)
    {
        for (int cabem = 0, recusas = 0; !HasFailure(); cabem += passo, ++recusas) {
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
                EXPECT_GE(recusas, recusasAoMenos);
                return;
            }
            EXPECT_TRUE(FalhaIgual(*falha, 61, "Servicos < " + operacaoDe, Cheio));
            EXPECT_EQ(Estado(), antes);
            Banco(std::make_unique<DialetoSQLite>(), m_Registro.Caminho(),
                  Instante(DataDe(20, 11, 2026))); // the registry opens
            operacao();
            EXPECT_NE(Estado(), antes);
        }
    }
    std::string Marca() { return std::to_string(++m_Marca); }

    int m_Marca = 0;
};

TEST_F(ServicosDisco, inclui_AtEveryWrite)
{
    std::vector<double> documentos; // one for each equipment
    for (int n = 0; n < 200; ++n) {
        documentos.push_back(GuardaPdf(m_Ana, "x"));
    }
    Varre(21, "SessaoServico.Executa", [&] {
        const std::string codigo = "R-" + Marca();
        const double documento = documentos.at(static_cast<std::size_t>(m_Marca));
        const auto sensor = Poe(SensorDe(1), AfericaoDe("1", DataDe(1, 1, 2026), DataDe(30, 6, 2026), documento));
        Poe(sensor, AfericaoDe("2", DataDe(1, 7, 2026), DataDe(31, 12, 2026), documento));
        Faz(m_Ana, "inclui", Poe(EquipamentoDe(codigo), sensor));
    });
}

TEST_F(ServicosDisco, altera_AtEveryWrite_IsStillMineToRepeat)
{
    const std::int32_t numero = Inclui(m_Ana, EquipamentoDe("R-1"));
    const double documento = GuardaPdf(m_Ana, "x");
    Varre(11, "SessaoServico.Executa", [&] {
        const auto e = Com(SoNumero(numero), &EquiptoED::Descricao, Marca());
        const auto sensor = SensorDe(static_cast<std::int16_t>(std::stoi(Linhas("SENSOR")) + 1));
        Poe(e, Poe(sensor, AfericaoDe("1", DataDe(1, 1, 2026), DataDe(30, 6, 2026), documento)));
        Faz(m_Ana, "altera", e);
    });
}

TEST_F(ServicosDisco, desativaAndReativa_AtEveryWrite)
{
    const std::int32_t numero = Inclui(m_Ana, EquipamentoDe("R-1"));
    bool ativo = true;
    Varre(4, "SessaoServico.Executa", [&] {
        Faz(m_Ana, ativo ? "desativa" : "reativa", SoNumero(numero));
        ativo = !ativo;
    });
}

TEST_F(ServicosDisco, LimitsAndDays_AtEveryWrite)
{
    const std::int32_t numero = Inclui(m_Ana, EquipamentoDe("R-1"));
    Varre(6, "SessaoServico.Executa", [&] {
        ++m_Marca;
        const std::int32_t hora = m_Marca / 60 * 100 + m_Marca % 60;
        const auto limite = [&](std::uint8_t dia) { return LimiteDe(numero, dia, hora, hora); };
        Faz(m_Ana, "alteraListaLimitesDif", ListaDeLimites({limite(2), limite(3), limite(4)}));
    });
    Varre(4, "SessaoServico.Executa",
          [&] { Faz(m_Ana, "adicionaDiaEspecifico", DiaDe(numero, DataDe(1, 1, 2027).MaisDias(++m_Marca), 0, 2359)); });
}

TEST_F(ServicosDisco, GuardaDocumento_AtEveryWrite)
{
    Varre(31, "SessaoServico.GuardaDocumento", [&] {
        const Bytes pdf = Pdf(Marca(), 60000);
        EXPECT_EQ(Le(m_Ana, Guarda(m_Ana, pdf)), pdf);
    });
}

// A document beyond what the database holds in memory is written to the disk before it is confirmed.
TEST_F(ServicosDisco, GuardaDocumento_OfTheLargestSize_AtManyWrites)
{
    Varre(
        11, "SessaoServico.GuardaDocumento", [&] { Guarda(m_Ana, Pdf(Marca(), 5242880)); }, 211);
}

TEST_F(ServicosDisco, CadastraUsuario_AtEveryWrite)
{
    const auto cadastra = [&] {
        const std::string nome = "novo" + Marca();
        m_Registro.Aberto().CadastraUsuario(
            {100 + m_Marca, nome, "Novo", 1, "Autoridade Estadual de Trânsito", "Fiscalização", 0}, "senha", {"", "I"});
    };
    Varre(4, "Servicos.CadastraUsuario", cadastra, 3);
}

TEST_F(ServicosDisco, Administration_AtEveryWrite)
{
    const auto marta = m_Registro.Sessao("marta");
    const auto faz = [&](const std::string &metodo, const Ref<Objeto> &pedido) {
        return Faz(marta, metodo, pedido, "AdministracaoRN");
    };
    const auto direito = [](bool tem) {
        auto lista = Novo<Colecao<Ref<DireitoED>>>();
        auto um = Com(Novo<DireitoED>(), &DireitoED::Objeto, "VOR-EQP-CS", &DireitoED::Acao, "I");
        lista->Add(Com(um, &DireitoED::Tem, static_cast<std::uint8_t>(tem ? 1 : 2)));
        return lista;
    };
    Varre(4, "SessaoServico.Executa", [&] {
        auto novo = Com(Novo<UsuarioED>(), &UsuarioED::Usuario, "novo" + Marca(), &UsuarioED::NomePessoa, "Zé");
        Com(novo, &UsuarioED::CodCliente, 1, &UsuarioED::Senha, "tigela vidro moinho");
        faz("incluiUsuario", Com(novo, &UsuarioED::Direitos, direito(true)));
    });
    std::int32_t versao = 1;
    Varre(4, "SessaoServico.Executa", [&] {
        auto mudado = Com(Novo<UsuarioED>(), &UsuarioED::Numero, 12, &UsuarioED::Versao, versao);
        faz("alteraUsuario", Com(mudado, &UsuarioED::Direitos, direito(versao % 2 == 0)));
        ++versao;
    });
    std::int32_t versaoDoCliente = 1;
    Varre(4, "SessaoServico.Executa", [&] {
        auto setores = Novo<Colecao<Ref<SetorED>>>();
        setores->Add(Com(Novo<SetorED>(), &SetorED::NomeSetor, "Setor " + Marca()));
        auto cliente = Com(Novo<ClienteED>(), &ClienteED::CodCliente, 2, &ClienteED::Versao, versaoDoCliente);
        faz("alteraCliente", Com(cliente, &ClienteED::Setores, setores));
        ++versaoDoCliente;
    });
}

TEST_F(ServicosDisco, Entra_OnAFullDisk_IsRefusedAndCountsNoWrongPassword)
{
    std::string recusa;
    std::int32_t espera = 0;
    for (int vez = 0; vez < 4; ++vez) {
        const DiscoDeTeste disco(0);
        EXPECT_EQ(FalhaLancada([&] {
                      m_Registro.Aberto().Entra("ana", "errada", "estação de teste", recusa, espera);
                  }).Descricao,
                  Cheio);
    }
    EXPECT_TRUE(m_Registro.Aberto().Entra("ana", "senha de ana", "estação de teste", recusa, espera)) << recusa;
}

TEST_F(ServicosDisco, Reading_OnAFullDisk_GoesOn)
{
    const std::int32_t numero = Inclui(m_Ana, EquipamentoDe("R-1"));
    const double documento = GuardaPdf(m_Ana, "x");
    const DiscoDeTeste disco(0);
    EXPECT_EQ(Abre(m_Ana, numero)->Codigo.Valor(), "R-1");
    EXPECT_EQ(Le(m_Ana, documento), Pdf("x"));
    EXPECT_FALSE(disco.Recusou());
}

TEST_F(ServicosDisco, Cria_OfANewRegistry_AtManyWrites_LeavesAWholeOneOrNone)
{
    int recusas = 0;
    for (bool abriu = false; !abriu && !HasFailure();) {
        SCOPED_TRACE(recusas);
        const QTemporaryDir diretorio;
        const std::string arquivo = diretorio.filePath("r.db").toStdString();
        const auto agora = [] { return DataDe(20, 11, 2026); };
        try {
            const DiscoDeTeste disco(7 * recusas);
            Servicos::Cria(arquivo, TipoDeRegistro::Registro, agora);
            abriu = true;
        } catch (const Falha &falha) {
            ++recusas;
            EXPECT_EQ(falha.Descricao, Cheio);
        }
        if (abriu) {
            EXPECT_TRUE(Servicos::Abre(arquivo, agora)->Vazio());
        } else { // what was begun is no registry, and is not taken for one
            EXPECT_THROW(Servicos::Abre(arquivo, agora), Falha);
        }
    }
    EXPECT_GT(recusas, 5);
}

TEST_F(ServicosDisco, Write_ThatFailsOtherwise_SaysSo)
{
    {
        const DiscoDeTeste disco(1, SQLITE_IOERR_WRITE);
        EXPECT_TRUE(Lanca(75, "Servicos < SessaoServico.Executa",
                          "O disco em que está o registro não aceitou a gravação (disk I/O error). Nada foi gravado: "
                          "confira o espaço e o disco e tente de novo.",
                          [&] { Inclui(m_Ana, EquipamentoDe("R-1")); }));
    }
    EXPECT_EQ(Linhas("EQUIPAMENTO"), "0");
    EXPECT_EQ(Inclui(m_Ana, EquipamentoDe("R-1")), 1);
}

TEST_F(ServicosDisco, Synchronisation_ThatFails_IsRefusedAndLeavesNoHalf)
{
    const std::int32_t numero = Inclui(m_Ana, EquipamentoDe("R-1"));
    const std::string antes = Estado();
    const auto e = Poe(Com(SoNumero(numero), &EquiptoED::Descricao, "Outra"), SensorDe(1));
    {
        const DiscoDeTeste disco(0, SQLITE_IOERR_FSYNC);
        EXPECT_TRUE(Lanca(75, "Servicos < SessaoServico.Executa",
                          "Não foi possível ler ou gravar o arquivo do registro (disk I/O error).",
                          [&] { Pede(m_Ana, "altera", e); }));
    }
    EXPECT_EQ(Estado(), antes);
    Faz(m_Ana, "altera", e);
    EXPECT_EQ(m_Registro.Sql("PRAGMA integrity_check"), "ok");
}

// What was written into a file without a name would go away with the program.
TEST_F(ServicosDisco, Directory_ThatWentAway_EveryWriteIsRefused)
{
    const std::int32_t numero = Inclui(m_Ana, EquipamentoDe("R-1"));
    std::filesystem::remove_all(std::filesystem::path(m_Registro.Caminho()).parent_path());
    EXPECT_TRUE(Lanca(75, "Servicos < SessaoServico.Executa", Mudado,
                      [&] { Pede(m_Ana, "altera", Com(SoNumero(numero), &EquiptoED::Descricao, "Outra")); }));
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
    const auto novo = Servicos::Cria(caminho, TipoDeRegistro::Registro, [] { return DataDe(20, 11, 2026); });
    EXPECT_EQ(FalhaLancada([&] { Inclui(m_Ana, EquipamentoDe("R-2")); }).Descricao, Mudado);
    EXPECT_EQ(Linhas("EQUIPAMENTO"), "0");
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
            const auto servicos = Servicos::Cria(ponto.filePath("r.db").toStdString(), TipoDeRegistro::Registro,
                                                 [] { return DataDe(20, 11, 2026); });
            servicos->CadastraCliente({1, "Autoridade Estadual de Trânsito", {}, "RS"});
            servicos->CadastraUsuario({1, "ana", "Ana", 1, "Autoridade Estadual de Trânsito", "", 0}, "s",
                                      {"", "I", "A", "E"});
            std::string recusa;
            std::int32_t espera = 0;
            const auto ana = servicos->Entra("ana", "s", "estação de teste", recusa, espera);
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
