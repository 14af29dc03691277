#include "host/Texto.h"
#include "services/Copia.h"
#include "tests/services/RegistroDeTeste.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

// The helper at work on a registry, and what it says.
class Processo {
  public:
    Processo(const std::string &registro, const std::string &usuario, const std::string &modo, int numero)
    {
        std::array<int, 2> canal{};
        if (pipe(canal.data()) != 0) {
            throw std::runtime_error("pipe");
        }
        const std::string argumento = std::to_string(numero);
        m_Pid = fork();
        if (m_Pid == 0) {
            dup2(canal[1], STDOUT_FILENO);
            close(canal[0]);
            close(canal[1]);
            execl(AJUDANTE, AJUDANTE, registro.c_str(), usuario.c_str(), modo.c_str(), argumento.c_str(), nullptr);
            _exit(127);
        }
        close(canal[1]);
        m_Saida = canal[0];
    }
    Processo(const Processo &) = delete;
    Processo &operator=(const Processo &) = delete;
    ~Processo()
    {
        close(m_Saida);
        if (!m_Terminou) {
            kill(m_Pid, SIGKILL);
            waitpid(m_Pid, nullptr, 0);
        }
    }

    // Waits until it has said so many lines; false when it ended before.
    bool OuveLinhas(std::ptrdiff_t linhas)
    {
        while (std::count(m_Dito.begin(), m_Dito.end(), '\n') < linhas) {
            if (!Le()) {
                return false;
            }
        }
        return true;
    }
    // Takes what it says for so long.
    void OuvePor(std::chrono::nanoseconds tempo)
    {
        const auto fim = std::chrono::steady_clock::now() + tempo;
        for (auto falta = tempo; falta > falta.zero(); falta = fim - std::chrono::steady_clock::now()) {
            const timespec limite{falta.count() / 1000000000, falta.count() % 1000000000};
            pollfd espera{m_Saida, POLLIN, 0};
            if (ppoll(&espera, 1, &limite, nullptr) > 0 && !Le()) {
                return;
            }
        }
    }
    void Mata()
    {
        kill(m_Pid, SIGKILL);
        waitpid(m_Pid, nullptr, 0);
        m_Terminou = true;
        while (Le()) {
        }
    }
    // Waits for its own end; its exit status.
    int Espera()
    {
        while (Le()) {
        }
        int estado = 0;
        waitpid(m_Pid, &estado, 0);
        m_Terminou = true;
        return WIFEXITED(estado) ? WEXITSTATUS(estado) : -1;
    }
    const std::string &Dito() const { return m_Dito; }

  private:
    bool Le()
    {
        std::array<char, 4096> parte{};
        const ssize_t lidos = read(m_Saida, parte.data(), parte.size());
        if (lidos > 0) {
            m_Dito.append(parte.data(), static_cast<std::size_t>(lidos));
        }
        return lidos > 0;
    }

    pid_t m_Pid = 0;
    int m_Saida = -1;
    bool m_Terminou = false;
    std::string m_Dito;
};

// Every equipment is as one of the two saves left it, with its rows and their history, and nothing hangs in the air.
constexpr const char *Metades =
    "SELECT COUNT(*) FROM (SELECT e.Versao AS v, e.Descricao AS d, "
    "(SELECT COUNT(*) FROM SENSOR s WHERE s.NroIntEquip = e.NroIntEquip) AS s, "
    "(SELECT COUNT(*) FROM AFERICAO a JOIN SENSOR s ON s.NroIntSensor = a.NroIntSensor WHERE s.NroIntEquip = "
    "e.NroIntEquip AND a.Ativo = 1) AS a, "
    "(SELECT COUNT(*) FROM HISTORICO h WHERE h.Raiz = 'EQUIPAMENTO' AND h.NroRaiz = e.NroIntEquip) AS h "
    "FROM EQUIPAMENTO e) WHERE NOT ((v = 1 AND d = 'novo' AND s = 1 AND a = 2 AND h = 4) OR "
    "(v = 2 AND d = 'alterado' AND s = 1 AND a = 3 AND h = 6))";

TEST(ServicosProcessos, KilledAtAnyMoment_TheRegistryIsWholeAndNothingReportedIsLost)
{
    constexpr int mortes = 200;
    constexpr int porMorte = 100000; // numbers of equipment set aside for each child
    RegistroDeTeste registro;
    registro.Cadastra("ana");
    registro.Fecha();
    std::mt19937_64 sorteio(20261120);
    // Each child is killed some steps (a save, a change or an upload) after it began, and some part of the time of two
    // more: by the pace of the children, so that no speed of the machine moves the kills out of their work.
    std::chrono::nanoseconds passo{0};
    std::ptrdiff_t esperados = 0;
    std::ptrdiff_t salvos = 0;
    for (int morte = 0; morte < mortes; ++morte) {
        SCOPED_TRACE(morte);
        Processo filho(registro.Caminho(), "ana", "grava", morte * porMorte);
        const auto passos = morte == 0 ? 6 : static_cast<std::ptrdiff_t>(sorteio() % 7);
        esperados += passos;
        ASSERT_TRUE(filho.OuveLinhas(1)) << filho.Dito(); // "pronto"
        const auto inicio = std::chrono::steady_clock::now();
        ASSERT_TRUE(filho.OuveLinhas(1 + passos)) << filho.Dito();
        if (passos > 0) {
            passo = (std::chrono::steady_clock::now() - inicio) / passos;
        }
        filho.OuvePor(std::chrono::nanoseconds(sorteio() % static_cast<std::uint64_t>(1 + 2 * passo.count())));
        filho.Mata();
        ASSERT_EQ(filho.Dito().find("ERRO"), std::string::npos) << filho.Dito();

        registro.Reabre();
        ASSERT_EQ(registro.Sql("PRAGMA integrity_check"), "ok");
        ASSERT_EQ(registro.Sql("PRAGMA foreign_key_check"), "");
        ASSERT_EQ(registro.Sql(Metades), "0");
        ASSERT_EQ(registro.Sql("SELECT COUNT(*) FROM DOCUMENTO d WHERE NOT EXISTS (SELECT 1 FROM HISTORICO h "
                               "WHERE h.Raiz = 'DOCUMENTO' AND h.NroRaiz = d.NroDocumento)"),
                  "0");
        const auto ana = registro.Sessao("ana");
        for (const std::string &linha : Divide(filho.Dito(), "\n")) {
            const auto partes = Divide(linha, " ");
            if (linha.empty() || partes.size() < 2) {
                continue;
            }
            ++salvos;
            if (partes[0] == "D") {
                Bytes lidos;
                std::string recusa;
                ASSERT_TRUE(ana->LeDocumento(std::stod(partes[1]), lidos, recusa)) << recusa;
                const std::string marca = "% doc " + partes[2] + "\n";
                ASSERT_EQ(std::string(lidos.begin() + 9, lidos.begin() + 9 + static_cast<std::ptrdiff_t>(marca.size())),
                          marca);
            } else {
                const std::string versao =
                    registro.Sql("SELECT Versao FROM EQUIPAMENTO WHERE Codigo = 'K" + partes[1] + "'");
                ASSERT_GE(versao, partes[0] == "I" ? "1" : "2") << linha;
            }
        }
        registro.Fecha();
    }
    EXPECT_GT(esperados, 2 * mortes); // there was something to lose
    EXPECT_GE(salvos, esperados);
}

// Every user and client is as one of the two acts left it, with its rights, sectors and history.
constexpr const char *MetadesDaAdministracao =
    "SELECT (SELECT COUNT(*) FROM (SELECT u.Versao AS v, u.Nome AS d, "
    "(SELECT group_concat(Acao || Ativo) FROM (SELECT * FROM PERMISSAO p WHERE p.Numero = u.Numero ORDER BY Acao)) AS "
    "p, "
    "(SELECT COUNT(*) FROM HISTORICO h WHERE h.Raiz = 'USUARIO' AND h.NroRaiz = u.Numero) AS h "
    "FROM USUARIO u WHERE u.Usuario LIKE 'k%') WHERE NOT ((v = 1 AND d = 'novo' AND p = '1,I1' AND h = 3) OR "
    "(v = 2 AND d = 'alterado' AND p = '1,A1,I2' AND h = 6))) || ' ' || "
    "(SELECT COUNT(*) FROM (SELECT c.Versao AS v, c.UF AS d, "
    "(SELECT group_concat(Nome || Ativo) FROM (SELECT * FROM SETOR s WHERE s.CodCliente = c.CodCliente ORDER BY Nome)) "
    "AS s, (SELECT COUNT(*) FROM HISTORICO h WHERE h.Raiz = 'CLIENTE' AND h.NroRaiz = c.CodCliente) AS h "
    "FROM CLIENTE c WHERE c.CodCliente >= 1000) WHERE NOT ((v = 1 AND d = 'SC' AND s = 'Frota1,Oficina1' AND h = 3) OR "
    "(v = 2 AND d = 'PR' AND s = 'Frota2,Metrologia1,Oficina1' AND h = 6)))";

TEST(ServicosProcessos, AdministrationKilledAtAnyMoment_IsWholeOrNotAtAll)
{
    constexpr int mortes = 100;
    constexpr int porMorte = 100000;
    RegistroDeTeste registro;
    registro.Cadastra("marta");
    registro.Fecha();
    std::mt19937_64 sorteio(20261122);
    std::chrono::nanoseconds passo{0};
    std::ptrdiff_t feitos = 0;
    for (int morte = 0; morte < mortes; ++morte) {
        SCOPED_TRACE(morte);
        Processo filho(registro.Caminho(), "marta", "administra", morte * porMorte);
        const auto passos = morte == 0 ? 8 : static_cast<std::ptrdiff_t>(sorteio() % 9);
        ASSERT_TRUE(filho.OuveLinhas(1)) << filho.Dito(); // "pronto"
        const auto inicio = std::chrono::steady_clock::now();
        ASSERT_TRUE(filho.OuveLinhas(1 + passos)) << filho.Dito();
        if (passos > 0) {
            passo = (std::chrono::steady_clock::now() - inicio) / passos;
        }
        filho.OuvePor(std::chrono::nanoseconds(sorteio() % static_cast<std::uint64_t>(1 + 2 * passo.count())));
        filho.Mata();
        ASSERT_EQ(filho.Dito().find("ERRO"), std::string::npos) << filho.Dito();

        registro.Reabre();
        ASSERT_EQ(registro.Sql("PRAGMA integrity_check"), "ok");
        ASSERT_EQ(registro.Sql("PRAGMA foreign_key_check"), "");
        ASSERT_EQ(registro.Sql(MetadesDaAdministracao), "0 0");
        for (const std::string &linha : Divide(filho.Dito(), "\n")) {
            const auto partes = Divide(linha, " ");
            if (partes.size() < 2) {
                continue;
            }
            ++feitos;
            const bool usuario = partes[0] == "U" || partes[0] == "V";
            const std::string versao =
                registro.Sql(usuario ? "SELECT Versao FROM USUARIO WHERE Usuario = 'k" + partes[1] + "'"
                                     : "SELECT Versao FROM CLIENTE WHERE Nome = 'Autoridade " + partes[1] + "'");
            ASSERT_GE(versao, partes[0] == "U" || partes[0] == "C" ? "1" : "2") << linha;
        }
        registro.Fecha();
    }
    EXPECT_GT(feitos, 2 * mortes);
}

TEST(ServicosProcessos, CopiedWhileAnotherOneWrites_EachCopyIsTheWholeOfOneMoment)
{
    constexpr int copias = 20;
    RegistroDeTeste registro;
    registro.Cadastra("ana");
    registro.Fecha();
    const QTemporaryDir pasta;
    std::set<std::string> momentos;
    Processo filho(registro.Caminho(), "ana", "grava", 0);
    for (int copia = 0; copia < copias; ++copia) {
        SCOPED_TRACE(copia);
        ASSERT_TRUE(filho.OuveLinhas(1 + copia)) << filho.Dito(); // it goes on
        const std::string dito = filho.Dito();
        registro.PassaSegundos(1);
        const mesa::DesfechoDaCopia feita =
            mesa::Copia(registro.Caminho(), {}).Faz(pasta.path().toStdString(), registro.Relogio, copias);
        ASSERT_TRUE(feita.Feita) << feita.Frase;
        const auto sql = [&](const std::string &comando) { return LinhasSql(feita.Arquivo, comando).at(0); };
        ASSERT_EQ(sql("PRAGMA integrity_check"), "ok");
        ASSERT_EQ(sql(Metades), "0");
        ASSERT_EQ(sql("SELECT COUNT(*) FROM DOCUMENTO d WHERE NOT EXISTS (SELECT 1 FROM HISTORICO h WHERE h.Raiz = "
                      "'DOCUMENTO' AND h.NroRaiz = d.NroDocumento)"),
                  "0");
        // What was reported as saved before it began is in it.
        ASSERT_GE(std::stoi(sql("SELECT COUNT(*) FROM EQUIPAMENTO")), std::count(dito.begin(), dito.end(), 'I'));
        momentos.insert(sql("SELECT MAX(Nro) FROM HISTORICO"));
    }
    filho.Mata();
    EXPECT_EQ(filho.Dito().find("ERRO"), std::string::npos) << filho.Dito();
    EXPECT_GT(momentos.size(), 5U);
}

TEST(ServicosProcessos, TwoAtOnce_NothingIsLostAppliedTwiceOrLocked)
{
    constexpr int operacoes = 5000;
    RegistroDeTeste registro;
    registro.Cadastra("ana");
    registro.Cadastra("bia");
    ASSERT_EQ(Inclui(registro.Sessao("ana"), Com(EquipamentoDe("contador"), &EquiptoED::SubCodigo, "0")), 1);
    registro.Fecha();

    Processo um(registro.Caminho(), "ana", "mistura", operacoes);
    Processo outro(registro.Caminho(), "bia", "mistura", operacoes);
    EXPECT_EQ(um.Espera(), 0) << um.Dito();
    EXPECT_EQ(outro.Espera(), 0) << outro.Dito();
    std::array<int, 5> soma{};
    for (const std::string &dito : {um.Dito(), outro.Dito()}) {
        const auto partes = Divide(Substitui(dito, "\n", ""), " ");
        ASSERT_EQ(partes.size(), soma.size()) << dito;
        for (std::size_t qual = 0; qual < soma.size(); ++qual) {
            soma[qual] += std::stoi(partes[qual]);
        }
    }
    const auto [incluidos, contados, guardados, dias, desativados] = soma;
    EXPECT_EQ(incluidos, 2000);
    EXPECT_EQ(guardados, 1000);
    EXPECT_EQ(dias, 1000);
    EXPECT_EQ(desativados, 1000);
    EXPECT_GT(contados, 0);
    const auto conta = [&](const std::string &oQue) { return registro.Sql("SELECT COUNT(" + oQue); };
    EXPECT_EQ(conta("*) FROM EQUIPAMENTO"), std::to_string(incluidos + 1));
    EXPECT_EQ(registro.Sql("SELECT SubCodigo FROM EQUIPAMENTO WHERE NroIntEquip = 1"), std::to_string(contados));
    EXPECT_EQ(registro.Sql("SELECT Versao FROM EQUIPAMENTO WHERE NroIntEquip = 1"), std::to_string(contados + 1));
    EXPECT_EQ(conta("*) FROM DOCUMENTO"), std::to_string(guardados));
    EXPECT_EQ(conta("*) FROM HISTORICO WHERE Raiz = 'EQUIPAMENTO'"),
              std::to_string(incluidos + 1 + contados + desativados));
    EXPECT_EQ(conta("*) FROM EQUIPAMENTO WHERE Ativo = 2"), std::to_string(desativados));
    EXPECT_EQ(conta("DISTINCT NroIntEquip) FROM DIA"), std::to_string(dias));
    EXPECT_EQ(conta("*) FROM HISTORICO WHERE Raiz = 'DIA'"), std::to_string(dias));
    EXPECT_EQ(registro.Sql("PRAGMA integrity_check"), "ok");
}

} // namespace
