#include "services/AberturaSQLite.h"
#include "services/Banco.h"
#include "services/Copia.h"
#include "services/DialetoSQLite.h"
#include "services/Disco.h"
#include "services/RegistrosAdministracao.h"
#include "services/ServicosSql.h"
#include "tests/services/DiscoDeTeste.h"
#include "tests/services/DiscosProprios.h"
#include "tests/services/MortePorPasso.h"
#include "tests/services/PastaDeTeste.h"
#include "tests/services/SemPrivilegio.h"
#include "tests/services/ServicosTeste.h"
#include "tests/support/FalhaLancada.h"

#include <QTemporaryDir>

#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

using namespace mesa;

namespace fs = std::filesystem;

namespace {

const std::string SemPermissao = "O registro só pode ser consultado: falta permissão para gravar no arquivo ou na sua "
                                 "pasta, ou o disco só pode ser lido.";

Instante Agora()
{
    return DataDe(20, 11, 2026, 12, 0, 0);
}

// A registry with one equipment and one document, closed.
class ServicosAbertura : public ServicosTeste {
  protected:
    ServicosAbertura()
    {
        m_Documento = GuardaPdf(m_Ana, "doc");
        m_Numero = Inclui(m_Ana, EquipamentoDe("R-1"));
        m_Ana = nullptr;
        m_Registro.Fecha();
        AbreATodos(Caminho());
    }
    fs::path Caminho() { return m_Registro.Caminho(); }

    // It opens, says why it may only be looked at, is read, refuses every write in that sentence, and nothing of it
    // changes.
    void EsperaConsulta(const std::string &frase)
    {
        const std::string bytes = BytesDe(Caminho());
        const std::vector<std::string> nomes = Nomes(Caminho().parent_path());
        const auto servicos = Servicos::Abre(Caminho(), Agora);
        EXPECT_EQ(servicos->SomenteLeitura(), frase);
        EXPECT_FALSE(servicos->Vazio());
        std::string recusa;
        std::int32_t espera = 0;
        EXPECT_TRUE(servicos->Entra("ana", "senha errada", "mesa 1", recusa, espera).Nada());
        const auto ana = servicos->Entra("ana", "senha de ana", "mesa 1", recusa, espera);
        ASSERT_FALSE(ana.Nada()) << recusa;
        EXPECT_EQ(Abre(ana, m_Numero)->Codigo.Valor(), "R-1");
        EXPECT_EQ(Le(ana, m_Documento), Pdf("doc"));
        EXPECT_EQ(RecusaDe(ana, "inclui", EquipamentoDe("R-2")), frase + " Nada foi gravado.");
        EXPECT_EQ(RecusaDe(ana, "desativa", SoNumero(m_Numero)), frase + " Nada foi gravado.");
        EXPECT_EQ(RecusaAoGuardar(ana, Pdf("outro")), frase + " Nada foi gravado.");
        const auto troca =
            Com(Novo<TrocaSenhaED>(), &TrocaSenhaED::Atual, "senha de ana", &TrocaSenhaED::Nova, "tigela vidro moinho");
        EXPECT_EQ(RecusaDe(ana, "trocaMinhaSenha", troca, "AdministracaoRN"), frase + " Nada foi gravado.");
        // Tries are slowed down all the same, as long as the program runs.
        for (int vez = 0; vez < 3; ++vez) {
            EXPECT_TRUE(servicos->Entra("ana", "senha errada", "mesa 1", recusa, espera).Nada());
        }
        EXPECT_EQ(espera, 5);
        EXPECT_TRUE(servicos->Entra("ana", "senha de ana", "mesa 1", recusa, espera).Nada());
        EXPECT_EQ(recusa, "Foram muitas tentativas com senha incorreta. Aguarde 5 segundos e tente de novo.");
        EXPECT_TRUE(Lanca(70, "Servicos < Servicos.CadastraCliente", frase + " Nada foi gravado.", [&] {
            servicos->CadastraCliente({9, "Outro", {}, "RS"});
        }));
        const fs::path novo = Caminho().parent_path() / "novo.db";
        EXPECT_TRUE(
            Lanca(75, "*",
                  "Não foi possível ler ou gravar o arquivo do registro (A pasta " + novo.parent_path().string() +
                      " fica em um disco de rede (NFS), onde um registro não pode ser gravado com segurança).",
                  [&] {
                      Banco(std::make_unique<DialetoSQLite>([](const fs::path &) { return std::string("NFS"); }), novo,
                            [](Banco &) {});
                  }));
        EXPECT_FALSE(fs::exists(novo));
        EXPECT_TRUE(BytesDe(Caminho()) == bytes);
        EXPECT_EQ(Nomes(Caminho().parent_path()), nomes);
    }
    // A log that holds something, as somebody leaves it who is killed.
    void DeixaDiario()
    {
        std::fflush(nullptr);
        const pid_t filho = fork();
        if (filho == 0) {
            m_Registro.Reabre();
            Inclui(m_Registro.Sessao("ana"), EquipamentoDe("R-3"));
            _exit(0);
        }
        waitpid(filho, nullptr, 0);
        ASSERT_GT(fs::file_size(Caminho().string() + "-wal"), 0U);
    }

    double m_Documento = 0;
    std::int32_t m_Numero = 0;
};

TEST_F(ServicosAbertura, Open_AReadOnlyFile_IsForLooking)
{
    fs::permissions(Caminho(), fs::perms(0444));
    const SemPrivilegio sem;
    EsperaConsulta(SemPermissao);
}

TEST_F(ServicosAbertura, Open_InADirectoryThatCannotBeWritten_IsForLooking)
{
    fs::permissions(Caminho().parent_path(), fs::perms(0555));
    const SemPrivilegio sem;
    EsperaConsulta(SemPermissao);
}

// The file may be written, but not what the database keeps beside it.
TEST_F(ServicosAbertura, Open_WithAnEmptyLogThatCannotBeWritten_IsForLooking)
{
    std::ofstream(Caminho().string() + "-wal").close();
    fs::permissions(Caminho().string() + "-wal", fs::perms(0444));
    const SemPrivilegio sem;
    EsperaConsulta(SemPermissao);
}

TEST_F(ServicosAbertura, Open_WithAFullLogThatCannotBeWritten_SaysWhatToDoAndChangesNothing)
{
    DeixaDiario();
    AbreATodos(Caminho());
    fs::permissions(Caminho().parent_path(), fs::perms(0555));
    const std::string bytes = BytesDe(Caminho()) + BytesDe(Caminho().string() + "-wal");
    {
        const SemPrivilegio sem;
        EXPECT_TRUE(Lanca(70, "Servicos < Servicos.Abre",
                          "O registro não pode ser aberto: parte do que foi gravado está ainda no arquivo "
                          "registro.db-wal, ao lado dele, e falta permissão para gravar em " +
                              Caminho().parent_path().string() +
                              ". Abra-o uma vez com permissão para gravar, ou copie os dois arquivos juntos para uma "
                              "pasta sua e abra-o lá.",
                          [&] { Servicos::Abre(Caminho(), Agora); }));
    }
    EXPECT_TRUE(BytesDe(Caminho()) + BytesDe(Caminho().string() + "-wal") == bytes);
    m_Registro.Reabre();
    EXPECT_EQ(Linhas("EQUIPAMENTO"), "2");
}

TEST_F(ServicosAbertura, Open_WhereItMayBeWritten_SaysNothing)
{
    EXPECT_EQ(Servicos::Abre(Caminho(), Agora)->SomenteLeitura(), "");
}

TEST_F(ServicosAbertura, Open_OfARegistryOfAnEarlierVersionThatCannotBeWritten_SaysThatItHasToBeBroughtUpToDate)
{
    const fs::path antigo = Caminho().parent_path() / "antigo.db";
    CriaRegistroVersao1(antigo);
    fs::permissions(antigo, fs::perms(0444));
    const SemPrivilegio sem;
    const std::string versao = std::to_string(DialetoSQLite().Migracoes().size() + 1);
    EXPECT_TRUE(Lanca(70, "Servicos < Servicos.Abre",
                      "O registro é da versão 1 e precisa ser atualizado para a versão " + versao +
                          ", o que aqui não pode ser feito. " + SemPermissao,
                      [&] { Servicos::Abre(antigo, Agora); }));
}

TEST_F(ServicosAbertura, Open_OnADiskOfTheNetwork_IsForLookingAndSaysWhatToDoInstead)
{
    const std::string frase =
        "O registro está em um disco de rede (NFS), onde trabalhar nele o danificaria: só pode ser "
        "consultado. Para trabalhar, copie-o para um disco deste computador e abra-o lá.";
    const std::string bytes = BytesDe(Caminho());
    const auto abre = [&] {
        return Novo<ServicosSql>(std::make_shared<Banco>(std::make_unique<DialetoSQLite>(
                                                             [](const fs::path &) { return std::string("NFS"); }),
                                                         Caminho(), Agora()),
                                 Agora, CustoDaSenha());
    };
    {
        const auto servicos = abre();
        EXPECT_EQ(servicos->SomenteLeitura(), frase);
        std::string recusa;
        std::int32_t espera = 0;
        const auto ana = servicos->Entra("ana", "senha de ana", "mesa 1", recusa, espera);
        ASSERT_FALSE(ana.Nada()) << recusa;
        EXPECT_EQ(Abre(ana, m_Numero)->Codigo.Valor(), "R-1");
        EXPECT_EQ(RecusaDe(ana, "inclui", EquipamentoDe("R-2")), frase + " Nada foi gravado.");
    }
    EXPECT_TRUE(BytesDe(Caminho()) == bytes);
    DeixaDiario();
    EXPECT_EQ(FalhaLancada(abre).Descricao,
              "O registro está em um disco de rede (NFS) e parte do que foi gravado está ainda no arquivo "
              "registro.db-wal, ao lado dele. Feche-o no computador em que o disco está, ou copie os dois arquivos "
              "juntos para um disco deste computador e abra-o lá.");
}

TEST_F(ServicosAbertura, Read_OfWhatWasOpenedForLookingAndHasChangedSince_IsRefused)
{
    const Banco consulta(std::make_unique<DialetoSQLite>(), Caminho(), Banco::SoConsulta());
    EXPECT_EQ(consulta.SomenteLeitura(), "O registro foi aberto só para consulta.");
    Banco &banco = const_cast<Banco &>(consulta);
    const auto conta = [&] {
        return banco.Le([&] {
            Consulta linhas(banco, "SELECT COUNT(*) FROM EQUIPAMENTO");
            linhas.Proxima();
            return linhas.Inteiro(0);
        });
    };
    EXPECT_EQ(conta(), 1);
    m_Registro.Reabre();
    Inclui(m_Registro.Sessao("ana"), EquipamentoDe("R-2"));
    m_Registro.Fecha();
    EXPECT_EQ(FalhaLancada(conta).Descricao,
              "O registro mudou depois de aberto aqui só para consulta. Feche o programa e abra-o de novo.");
}

TEST_F(ServicosAbertura, Copy_OfARegistryThatMayOnlyBeLookedAt_IsMade)
{
    const std::string antes = Conteudo(Caminho());
    const QTemporaryDir lugar;
    fs::permissions(lugar.path().toStdString(), fs::perms::all);
    fs::permissions(Caminho(), fs::perms(0444));
    fs::permissions(Caminho().parent_path(), fs::perms(0555));
    DesfechoDaCopia desfecho;
    {
        const SemPrivilegio sem;
        desfecho = Copia(Caminho(), {}).Faz(lugar.path().toStdString(), Agora());
    }
    ASSERT_TRUE(desfecho.Feita) << desfecho.Frase;
    EXPECT_EQ(Conteudo(desfecho.Arquivo), antes);
}

// The real thing, where the system lets a process have disks of its own.
TEST_F(ServicosAbertura, Open_OnADiskThatIsReadOnly_IsForLooking)
{
    const std::string ponto = Caminho().parent_path().string();
    std::fflush(nullptr);
    const pid_t filho = fork();
    if (filho == 0) {
        constexpr int naoDa = 77;
        if (!TemDiscosProprios() || mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            mount(ponto.c_str(), ponto.c_str(), nullptr, MS_BIND, nullptr) != 0 ||
            mount(nullptr, ponto.c_str(), nullptr, MS_BIND | MS_REMOUNT | MS_RDONLY, nullptr) != 0) {
            _exit(naoDa);
        }
        EsperaConsulta(SemPermissao);
        const DesfechoDaCopia copia = Copia(Caminho(), {}).Faz(ponto + "/copias", Agora());
        EXPECT_EQ(copia.Frase, "A cópia não foi feita. Não foi possível fazer a pasta " + ponto +
                                   "/copias: o disco só pode ser lido.");
        std::fflush(stdout);
        _exit(HasFailure() ? 1 : 0);
    }
    int estado = 0;
    waitpid(filho, &estado, 0);
    ASSERT_TRUE(WIFEXITED(estado));
    if (WEXITSTATUS(estado) == 77) {
        GTEST_SKIP() << "the system gives this process no disk of its own";
    }
    EXPECT_EQ(WEXITSTATUS(estado), 0);
}

TEST_F(ServicosAbertura, Open_AWiderFile_ClosesItToOthersWithWhatIsBesideIt)
{
    DeixaDiario();
    AbreATodos(Caminho());
    m_Registro.Reabre();
    Inclui(m_Registro.Sessao("ana"), EquipamentoDe("R-4"));
    for (const char *parte : {"", "-wal", "-shm"}) {
        EXPECT_EQ(ModoDe(Caminho().string() + parte), 0600U) << parte;
    }
}

TEST_F(ServicosAbertura, Cria_MakesTheFileForItsOwner)
{
    const mode_t era = umask(0);
    const fs::path novo = Caminho().parent_path() / "novo.db";
    const auto servicos = Servicos::Cria(novo, TipoDeRegistro::Registro, Agora);
    umask(era);
    servicos->CadastraCliente({9, "Outro", {}, "RS"});
    for (const char *parte : {"", "-wal", "-shm"}) {
        EXPECT_EQ(ModoDe(novo.string() + parte), 0600U) << parte;
    }
}

TEST_F(ServicosAbertura, FazPastaPrivada_MakesItOrClosesItToOthers)
{
    const mode_t era = umask(0);
    const fs::path base = Caminho().parent_path();
    FazPastaPrivada(base / "a/b/c");
    umask(era);
    EXPECT_EQ(ModoDe(base / "a"), 0700U);
    EXPECT_EQ(ModoDe(base / "a/b/c"), 0700U);
    fs::permissions(base / "a/b", fs::perms(0755));
    FazPastaPrivada(base / "a/b");
    EXPECT_EQ(ModoDe(base / "a/b"), 0700U);
    fs::permissions(base / "a/b", fs::perms(0500));
    FazPastaPrivada(base / "a/b"); // not wider than before
    EXPECT_EQ(ModoDe(base / "a/b"), 0500U);
    fs::permissions(base / "a", fs::perms(01777)); // as the system's for temporary files
    FazPastaPrivada(base / "a");
    EXPECT_EQ(ModoDe(base / "a"), 01777U);
    std::ofstream(base / "arquivo") << "x";
    EXPECT_EQ(FalhaLancada([&] { FazPastaPrivada(base / "arquivo"); }).Descricao,
              "Não foi possível usar " + (base / "arquivo").string() + ": não é uma pasta.");
}

TEST_F(ServicosAbertura, DiscoDeRede_OfThisMachinesDisks_IsNothing)
{
    EXPECT_EQ(DiscoDeRede(Caminho()), "");
    EXPECT_EQ(DiscoDeRede(Caminho().parent_path() / "nada/ainda/r.db"), "");
    EXPECT_EQ(DiscoDeRede("/proc/self/status"), "");
    EXPECT_EQ(DiscoDeRede(""), "");
}

TEST_F(ServicosAbertura, RedeDoTipo_ByTheSystemsNumber)
{
    const std::vector<std::pair<unsigned, const char *>> tipos = {
        {0x6969, "NFS"},    {0x517B, "SMB"},      {0xFF534D42, "SMB"}, {0xFE534D42, "SMB"}, {0x65735546, "FUSE"},
        {0x01021997, "9P"}, {0x00C36400, "Ceph"}, {0x564C, "NCP"},     {0x5346414F, "AFS"}, {0xEF53, ""},
        {0x01021994, ""},   {0x9123683E, ""},     {0x58465342, ""},    {0x794C7630, ""},    {0x4D44, ""},
    };
    for (const auto &[tipo, rede] : tipos) {
        EXPECT_EQ(RedeDoTipo(tipo), rede) << tipo;
    }
}

// What is about to change is copied before, into the directory beside unless another one is given.
TEST_F(ServicosAbertura, Open_OfAnEarlierVersion_IsCopiedBeforeItIsBroughtUpToDate)
{
    const fs::path antigo = Caminho().parent_path() / "antigo.db";
    CriaRegistroVersao1(antigo);
    const std::string antes = Conteudo(antigo);
    const QTemporaryDir lugar;
    Servicos::Abre(antigo, Agora, {}, lugar.path().toStdString());
    ASSERT_EQ(Nomes(lugar.path().toStdString()), std::vector<std::string>{"registro.20261120-120000.db"});
    EXPECT_EQ(Conteudo(lugar.filePath("registro.20261120-120000.db").toStdString()), antes);
    EXPECT_NE(Conteudo(antigo), antes);

    fs::remove(antigo);
    CriaRegistroVersao1(antigo);
    Servicos::Abre(antigo, Agora);
    EXPECT_EQ(Conteudo(Caminho().parent_path() / "copias/registro.20261120-120000.db"), antes);
    Servicos::Abre(antigo, Agora); // there is nothing to bring up to date any more
    EXPECT_EQ(Nomes(Caminho().parent_path() / "copias").size(), 1U);
}

// Only the rows are compared: who it is, its keys and its chain are made anew by each attempt.
TEST_F(ServicosAbertura, Open_OfAnEarlierVersion_KilledAtManySteps_IsStillThatOneOrBroughtUpToDate)
{
    if (!MortePorPasso::Possivel()) {
        GTEST_SKIP() << "the system lets no process watch another";
    }
    const QTemporaryDir lugar;
    const fs::path pasta = lugar.filePath("dados").toStdString();
    const fs::path modelo = lugar.filePath("modelo.db").toStdString();
    CriaRegistroVersao1(modelo);
    const std::string antes = Conteudo(modelo);
    const auto linhas = [](const fs::path &arquivo) {
        std::string todas;
        for (const char *tabela : {"EQUIPAMENTO", "SENSOR", "AFERICAO", "LIMITE", "DIA", "DOCUMENTO"}) {
            for (const std::string &linha : LinhasSql(arquivo, std::string("SELECT * FROM ") + tabela)) {
                todas += linha + "\n";
            }
        }
        return todas;
    };
    std::string depois;
    int velhos = 0;
    int novos = 0;
    constexpr int entreMortes = 11; // from one step at which it is killed to the next
    for (int passo = -1; !HasFailure(); passo += passo < 0 ? 1 : entreMortes) {
        fs::remove_all(pasta);
        fs::create_directory(pasta);
        const fs::path registro = pasta / "registro.db";
        fs::copy_file(modelo, registro);
        if (passo >= 0) {
            const auto onde = MortePorPasso::Mata(passo, [&] { Servicos::Abre(registro, Agora); });
            if (!onde) {
                break;
            }
            SCOPED_TRACE(*onde + " " + std::to_string(passo));
            const bool nova = LinhasSql(registro, "SELECT MAX(Versao) FROM ESQUEMA").at(0) != "1";
            ++(nova ? novos : velhos);
            if (!nova) {
                EXPECT_EQ(Conteudo(registro), antes);
            } else {
                EXPECT_EQ(Conteudo(pasta / "copias/registro.20261120-120000.db"), antes);
            }
        }
        Servicos::Abre(registro, Agora);
        EXPECT_EQ(LinhasSql(registro, "PRAGMA integrity_check"), std::vector<std::string>{"ok"});
        EXPECT_EQ(LinhasSql(registro, "PRAGMA foreign_key_check"), std::vector<std::string>{});
        EXPECT_EQ(Conteudo(pasta / "copias/registro.20261120-120000.db"), antes);
        if (passo < 0) {
            depois = linhas(registro);
        }
        EXPECT_EQ(linhas(registro), depois);
    }
    EXPECT_GT(velhos, 5);
    EXPECT_GT(novos, 0);
    RecordProperty("mortes", "old " + std::to_string(velhos) + ", new " + std::to_string(novos));
}

TEST_F(ServicosAbertura, Open_OfAnEarlierVersion_WithTheDiskFullAtManyWrites_LeavesItAsItIs)
{
    DiscoDeTeste::Instala();
    const fs::path antigo = Caminho().parent_path() / "antigo.db";
    CriaRegistroVersao1(antigo);
    const std::string antes = Conteudo(antigo);
    bool aberto = false;
    int recusas = 0;
    for (int cabem = 0; !aberto && !HasFailure(); cabem += 17) {
        SCOPED_TRACE(cabem);
        try {
            const DiscoDeTeste disco(cabem);
            Servicos::Abre(antigo, Agora);
            aberto = true;
        } catch (const Falha &falha) {
            ++recusas;
            EXPECT_NE(falha.Descricao.find(" ficou cheio. "), std::string::npos) << falha.Descricao;
        }
        if (!aberto) {
            EXPECT_EQ(Conteudo(antigo), antes);
        }
    }
    EXPECT_GT(recusas, 5);
    EXPECT_NE(Conteudo(antigo), antes);
}

TEST_F(ServicosAbertura, Open_OfAnEarlierVersionThatCannotBeCopied_LeavesItAsItIs)
{
    const fs::path antigo = Caminho().parent_path() / "antigo.db";
    CriaRegistroVersao1(antigo);
    const std::string antes = Conteudo(antigo);
    const fs::path arquivo = Caminho().parent_path() / "arquivo";
    std::ofstream(arquivo) << "x";
    EXPECT_TRUE(
        Lanca(75, "Servicos < Servicos.Abre",
              "O registro é de uma versão anterior e não foi atualizado, porque antes se faz uma cópia. A cópia "
              "não foi feita. Não foi possível gravar em " +
                  arquivo.string() + ": não é uma pasta.",
              [&] { Servicos::Abre(antigo, Agora, {}, arquivo); }));
    EXPECT_EQ(Conteudo(antigo), antes);
}

} // namespace
