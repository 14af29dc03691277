#include "tests/services/Motor.h"

#include <libpq-fe.h>

#include <fcntl.h>
#include <grp.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string_view>
#include <thread>
#include <utility>

namespace fs = std::filesystem;

namespace motor {

namespace {

constexpr uid_t Ninguem = 65534;
constexpr std::chrono::milliseconds Passo{10};
constexpr std::chrono::seconds Prazo{60};
constexpr std::string_view Porta = "5432"; // names the socket; there is none on the network

using Conexao = std::unique_ptr<PGconn, decltype(&PQfinish)>;
using Resposta = std::unique_ptr<PGresult, decltype(&PQclear)>;

fs::path Programa(const std::string &nome)
{
    return fs::path("/usr/lib/postgresql/15/bin") / nome;
}

std::string FimDe(const fs::path &arquivo)
{
    std::ifstream lido(arquivo, std::ios::binary);
    const std::string tudo{std::istreambuf_iterator<char>(lido), std::istreambuf_iterator<char>()};
    constexpr std::size_t fim = 2000;
    return tudo.size() > fim ? tudo.substr(tudo.size() - fim) : tudo;
}

enum class Vida { ComQuemChamou, Propria };

// Starts it away from this process's input and output, and unprivileged.
pid_t Solta(const std::vector<std::string> &comando, const fs::path &registro, Vida vida)
{
    std::vector<char *> argumentos;
    for (const std::string &parte : comando) {
        argumentos.push_back(const_cast<char *>(parte.c_str()));
    }
    argumentos.push_back(nullptr);
    const pid_t pai = getpid();
    const pid_t filho = fork();
    if (filho != 0) {
        if (filho < 0) {
            throw std::runtime_error("fork");
        }
        return filho;
    }
    setsid();
    const int entrada = open("/dev/null", O_RDONLY);
    const int saida = open(registro.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0644);
    dup2(entrada, STDIN_FILENO);
    dup2(saida, STDOUT_FILENO);
    dup2(saida, STDERR_FILENO);
    for (int n = STDERR_FILENO + 1; n < 1024; ++n) {
        close(n);
    }
    if (geteuid() == 0 && (setgroups(0, nullptr) != 0 || setgid(Ninguem) != 0 || setuid(Ninguem) != 0)) {
        _exit(126);
    }
    if (vida == Vida::ComQuemChamou) {
        prctl(PR_SET_PDEATHSIG, SIGQUIT);
        if (getppid() != pai) {
            _exit(126);
        }
    }
    umask(077);
    execv(argumentos[0], argumentos.data());
    _exit(127);
}

void Roda(const std::vector<std::string> &comando, const fs::path &registro)
{
    int estado = 0;
    const pid_t filho = Solta(comando, registro, Vida::ComQuemChamou);
    while (waitpid(filho, &estado, 0) < 0 && errno == EINTR) {
    }
    if (!WIFEXITED(estado) || WEXITSTATUS(estado) != 0) {
        throw std::runtime_error(comando.front() + ": " + FimDe(registro));
    }
}

// Asks until it is so.
void Espera(const std::string &oQue, const std::function<bool()> &chegou)
{
    const auto fim = std::chrono::steady_clock::now() + Prazo;
    while (!chegou()) {
        if (std::chrono::steady_clock::now() > fim) {
            throw std::runtime_error("waited in vain: " + oQue);
        }
        std::this_thread::sleep_for(Passo);
    }
}

std::string NaUri(const std::string &texto)
{
    std::string escrito;
    for (const char c : texto) {
        escrito += c == '/' ? "%2F" : std::string(1, c);
    }
    return escrito;
}

std::string TextoDe(const std::vector<fs::path> &pastas, const std::string &banco, const std::string &papel)
{
    std::string lugares;
    for (const fs::path &pasta : pastas) {
        lugares += (lugares.empty() ? "" : ",") + NaUri(pasta.string()) + ":" + std::string(Porta);
    }
    return "postgresql://" + papel + "@" + lugares + "/" + banco;
}

fs::path NovaPasta(const fs::path &dentroDe)
{
    std::string nome = ((dentroDe.empty() ? fs::temp_directory_path() : dentroDe) / "registro-XXXXXX").string();
    if (mkdtemp(nome.data()) == nullptr) {
        throw std::runtime_error("mkdtemp " + nome);
    }
    return nome;
}

std::vector<pid_t> FilhosDe(pid_t processo)
{
    std::vector<pid_t> filhos;
    for (const fs::directory_entry &entrada : fs::directory_iterator("/proc")) {
        if (std::atoi(entrada.path().filename().c_str()) == 0) {
            continue; // no process
        }
        std::ifstream estado(entrada.path() / "stat");
        const std::string linha{std::istreambuf_iterator<char>(estado), std::istreambuf_iterator<char>()};
        const std::size_t nome = linha.rfind(") ");
        if (nome != std::string::npos && std::atoi(linha.c_str() + nome + 4) == processo) {
            filhos.push_back(std::atoi(linha.c_str()));
        }
    }
    return filhos;
}

std::string LiteralDe(const std::string &texto)
{
    std::string escrito;
    for (const char c : texto) {
        escrito += c == '\'' ? "''" : std::string(1, c);
    }
    return "'" + escrito + "'";
}

// One that is copied while nobody is in it.
void CriaDoModelo(const std::string &banco, const std::string &modelo)
{
    Linhas(TextoComum("postgres"), "CREATE DATABASE " + banco + " TEMPLATE " + modelo);
}

std::string NomeNovo()
{
    static std::atomic<int> ultimo = 0;
    return "teste_" + std::to_string(getpid()) + "_" + std::to_string(++ultimo);
}

} // namespace

Qual DeTeste()
{
    const char *qual = std::getenv("MOTOR_DE_TESTE");
    if (qual == nullptr || std::string_view(qual) == "sqlite") {
        return Qual::SQLite;
    }
    if (std::string_view(qual) != "postgres") {
        throw std::runtime_error(std::string("MOTOR_DE_TESTE=") + qual);
    }
    return Qual::Postgres;
}

Aglomerado::Aglomerado(const Pedido &pedido) : m_Pedido(pedido), m_Pasta(NovaPasta(pedido.Pasta))
{
    PreparaPasta();
    Roda({Programa("initdb"), "-D", m_Pasta / "dados", "-E", "UTF8", "--locale=C", "-A", "trust", "-U", "postgres",
          "--no-sync", "--no-instructions"},
         m_Pasta / "log");
    Ajusta();
    Inicia();
}

Aglomerado::Aglomerado(const Aglomerado &primario, const std::string &nome, const Pedido &pedido)
    : m_Pedido(pedido),
      m_Pasta(NovaPasta(pedido.Pasta))
{
    PreparaPasta();
    Roda({Programa("pg_basebackup"), "-D", m_Pasta / "dados", "-d",
          TextoDe({primario.m_Pasta}, "postgres", "postgres") + "?application_name=" + nome, "-R", "-X", "stream", "-c",
          "fast", "--no-sync"},
         m_Pasta / "log");
    Ajusta();
    std::ofstream(m_Pasta / "dados" / "postgresql.auto.conf", std::ios::app)
        << "primary_conninfo = 'host=" << primario.m_Pasta.string() << " port=" << Porta
        << " user=postgres application_name=" << nome << "'\n";
    Inicia();
}

Aglomerado::~Aglomerado()
{
    if (m_Pedido.Fica) {
        return;
    }
    Mata();
    std::error_code erro;
    fs::remove_all(m_Pasta, erro);
}

void Aglomerado::PreparaPasta()
{
    fs::permissions(m_Pasta, fs::perms{0755}); // whoever reaches the socket may knock
    if (geteuid() == 0 && chown(m_Pasta.c_str(), Ninguem, Ninguem) != 0) {
        throw std::runtime_error("chown " + m_Pasta.string());
    }
}

void Aglomerado::Ajusta()
{
    std::ofstream ajustes(m_Pasta / "dados" / "postgresql.conf", std::ios::app);
    ajustes << "\nlisten_addresses = ''\nport = " << Porta << "\nunix_socket_directories = '" << m_Pasta.string()
            << "'\nunix_socket_permissions = 0777\nshared_buffers = 16MB\njit = off\nmin_wal_size = 32MB\n"
            << "log_min_messages = warning\n";
    if (!m_Pedido.Duravel) {
        ajustes << "fsync = off\nfull_page_writes = off\n";
    }
    for (const std::string &ajuste : m_Pedido.Ajustes) {
        ajustes << ajuste << '\n';
    }
}

std::string Aglomerado::Texto(const std::string &banco, const std::string &papel) const
{
    return TextoDe({m_Pasta}, banco, papel);
}

std::string Aglomerado::TextoDeTodos(const std::vector<const Aglomerado *> &todos, const std::string &banco,
                                     const std::string &papel)
{
    std::vector<fs::path> pastas;
    std::transform(todos.begin(), todos.end(), std::back_inserter(pastas),
                   [](const Aglomerado *um) { return um->m_Pasta; });
    return TextoDe(pastas, banco, papel);
}

void Aglomerado::Inicia()
{
    m_Processo = Solta({Programa("postgres"), "-D", m_Pasta / "dados"}, m_Pasta / "log",
                       m_Pedido.Fica ? Vida::Propria : Vida::ComQuemChamou);
    const std::string texto = Texto("postgres");
    Espera("start of " + m_Pasta.string(), [&] {
        if (waitpid(m_Processo, nullptr, WNOHANG) == m_Processo) {
            m_Processo = 0;
            throw std::runtime_error("postgres: " + FimDe(m_Pasta / "log"));
        }
        return PQping(texto.c_str()) == PQPING_OK;
    });
}

void Aglomerado::Encerra()
{
    kill(m_Processo, SIGINT);
    waitpid(m_Processo, nullptr, 0);
    m_Processo = 0;
}

void Aglomerado::Mata()
{
    if (m_Processo == 0) {
        return;
    }
    kill(m_Processo, SIGSTOP); // starts no further ones meanwhile
    for (const pid_t filho : FilhosDe(m_Processo)) {
        kill(filho, SIGKILL);
    }
    kill(m_Processo, SIGKILL);
    waitpid(m_Processo, nullptr, 0);
    m_Processo = 0;
}

std::unique_ptr<Aglomerado> Aglomerado::Reserva(const std::string &nome, const Pedido &pedido)
{
    std::unique_ptr<Aglomerado> reserva(new Aglomerado(*this, nome, pedido));
    Espera("standby " + nome, [&] {
        return Linhas(Texto("postgres"), "SELECT COUNT(*) FROM pg_stat_replication WHERE state = 'streaming' AND "
                                         "application_name = " +
                                             LiteralDe(nome))
                   .front() == "1";
    });
    return reserva;
}

void Aglomerado::ExigeReserva(const std::string &nome)
{
    const std::string texto = Texto("postgres");
    // Not as one string: such a change is in no transaction.
    Linhas(texto, "ALTER SYSTEM SET synchronous_standby_names = " + LiteralDe(nome));
    Linhas(texto, "SELECT pg_reload_conf()");
    Espera("commits that wait for \"" + nome + "\"", [&] {
        return Linhas(texto, "SELECT COUNT(*) FROM pg_stat_replication WHERE sync_state = 'sync'").front() ==
               (nome.empty() ? "0" : "1");
    });
}

void Aglomerado::Promove()
{
    if (Linhas(Texto("postgres"), "SELECT pg_promote(true, 30)").front() != "t") {
        throw std::runtime_error("not promoted: " + FimDe(m_Pasta / "log"));
    }
}

void EncerraEm(const fs::path &pasta)
{
    pid_t processo = 0;
    std::ifstream(pasta / "dados" / "postmaster.pid") >> processo;
    if (processo > 0) {
        kill(processo, SIGINT);
        Espera("end of " + pasta.string(), [&] { return !fs::exists(pasta / "dados" / "postmaster.pid"); });
    }
    fs::remove_all(pasta);
}

std::string TextoComum(const std::string &banco, const std::string &papel)
{
    static const auto nosso = []() -> std::pair<fs::path, std::unique_ptr<Aglomerado>> {
        std::string pasta;
        if (std::getline(std::ifstream(ARQUIVO_DO_AGLOMERADO), pasta) &&
            PQping(TextoDe({pasta}, "postgres", "postgres").c_str()) == PQPING_OK) {
            return {pasta, nullptr};
        }
        auto novo = std::make_unique<Aglomerado>();
        return {novo->Pasta(), std::move(novo)};
    }();
    return TextoDe({nosso.first}, banco, papel);
}

std::vector<std::string> Linhas(const std::string &texto, const std::string &comandos)
{
    const Conexao conexao(
        PQconnectdb((texto + (texto.find('?') == std::string::npos ? "?" : "&") + "client_encoding=UTF8").c_str()),
        PQfinish);
    if (PQstatus(conexao.get()) != CONNECTION_OK) {
        throw std::runtime_error(PQerrorMessage(conexao.get()));
    }
    PQsetNoticeProcessor(
        conexao.get(), [](void *, const char *) {}, nullptr);
    const Resposta resposta(PQexec(conexao.get(), comandos.c_str()), PQclear);
    const ExecStatusType estado = PQresultStatus(resposta.get());
    if (estado != PGRES_TUPLES_OK && estado != PGRES_COMMAND_OK) {
        const char *motivo = PQresultErrorField(resposta.get(), PG_DIAG_MESSAGE_PRIMARY);
        throw std::runtime_error(motivo == nullptr ? PQerrorMessage(conexao.get()) : motivo);
    }
    std::vector<std::string> linhas;
    for (int linha = 0; linha < PQntuples(resposta.get()); ++linha) {
        std::string &junta = linhas.emplace_back();
        for (int coluna = 0; coluna < PQnfields(resposta.get()); ++coluna) {
            junta += std::string(coluna > 0 ? "|" : "") + PQgetvalue(resposta.get(), linha, coluna);
        }
    }
    return linhas;
}

RegistroVazio::RegistroVazio()
{
    if (DeTeste() == Qual::SQLite) {
        m_Pasta = NovaPasta({});
        m_Onde = m_Pasta / "registro.db";
        return;
    }
    m_Banco = NomeNovo();
    CriaDoModelo(m_Banco, "template0");
    m_Onde = TextoComum(m_Banco);
}

RegistroVazio::RegistroVazio(const std::string &modelo, const std::function<void(const std::string &onde)> &faz)
{
    if (DeTeste() == Qual::SQLite) {
        m_Pasta = NovaPasta({});
        m_Onde = m_Pasta / "registro.db";
        static std::map<std::string, RegistroVazio> modelos;
        const auto [achado, novo] = modelos.try_emplace(modelo);
        if (novo) {
            faz(achado->second.Onde());
        }
        fs::copy_file(achado->second.Onde(), m_Onde);
        return;
    }
    m_Banco = NomeNovo();
    m_Onde = TextoComum(m_Banco);
    // Another program, and this one built anew, may make it otherwise.
    const auto feito =
        static_cast<std::uint64_t>(fs::last_write_time(fs::read_symlink("/proc/self/exe")).time_since_epoch().count());
    const std::string nome = "modelo_" + modelo + "_" + std::to_string(feito);
    const auto ha = [&] {
        return Linhas(TextoComum("postgres"), "SELECT COUNT(*) FROM pg_database WHERE datname = '" + nome + "'")
                   .front() == "1";
    };
    if (!ha()) {
        // Made under another name: whoever sees the name sees it whole. Of two that make it at once one is enough.
        CriaDoModelo(m_Banco, "template0");
        faz(m_Onde);
        try {
            Linhas(TextoComum("postgres"), "ALTER DATABASE " + m_Banco + " RENAME TO " + nome);
        } catch (const std::runtime_error &) {
            if (!ha()) {
                throw;
            }
            Linhas(TextoComum("postgres"), "DROP DATABASE " + m_Banco + " WITH (FORCE)");
        }
    }
    CriaDoModelo(m_Banco, nome);
}

RegistroVazio::~RegistroVazio()
{
    std::error_code erro;
    if (!m_Banco.empty()) {
        try {
            Linhas(TextoComum("postgres"), "DROP DATABASE IF EXISTS " + m_Banco + " WITH (FORCE)");
        } catch (const std::runtime_error &) { // with its cluster it is gone anyway
        }
    } else {
        fs::remove_all(m_Pasta, erro);
    }
}

} // namespace motor
