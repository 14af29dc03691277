#pragma once

#include <sys/types.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

// The database engine that the test program runs on, and clusters of the networked one.
namespace motor {

enum class Qual { SQLite, Postgres };

// By the environment variable MOTOR_DE_TESTE, "sqlite" or "postgres"; the embedded one without it.
Qual DeTeste();

// What a cluster is made with.
struct Pedido {
    bool Duravel = false;             // a commit waits for the disk; for tests of deaths only
    std::filesystem::path Pasta = {}; // where it comes to be, in a directory that is there; a temporary one without it
    std::vector<std::string> Ajustes = {}; // further settings: "max_connections=300"
    bool Fica = false;                     // goes on after this process, until Encerra of its directory
};

// A cluster of its own on this machine, of an unprivileged user, reached by a socket in its directory; anybody who
// reaches that may come in as any role. It ends with the thread that started it, and goes away with the object.
class Aglomerado {
  public:
    // Made and started. Raises std::runtime_error with the end of its log, here and below.
    explicit Aglomerado(const Pedido &pedido = {});
    Aglomerado(const Aglomerado &) = delete;
    Aglomerado &operator=(const Aglomerado &) = delete;
    ~Aglomerado();

    // How to connect.
    std::string Texto(const std::string &banco, const std::string &papel = "postgres") const;
    // The same over several, of which the writable one is followed.
    static std::string TextoDeTodos(const std::vector<const Aglomerado *> &todos, const std::string &banco,
                                    const std::string &papel = "postgres");

    // Starts one that was ended or killed; ready for work (or for reading, as a standby) afterwards.
    void Inicia();
    // An orderly end.
    void Encerra();
    // All of its processes at once, as when the machine loses its power.
    void Mata();
    bool Anda() const { return m_Processo != 0; }

    // A standby of this one, which follows it under that name.
    std::unique_ptr<Aglomerado> Reserva(const std::string &nome, const Pedido &pedido = {});
    // Commits wait from now on for the standby of that name, which follows already; for none with "".
    void ExigeReserva(const std::string &nome);
    // A standby becomes one that writes.
    void Promove();

    const std::filesystem::path &Pasta() const { return m_Pasta; }
    pid_t Processo() const { return m_Processo; } // 0 when it does not run

  private:
    Aglomerado(const Aglomerado &primario, const std::string &nome, const Pedido &pedido);
    void PreparaPasta();
    void Ajusta();

    Pedido m_Pedido;
    std::filesystem::path m_Pasta;
    pid_t m_Processo = 0;
};

// Ends the cluster that was left going in that directory, and takes it away.
void EncerraEm(const std::filesystem::path &pasta);

// How to connect to the cluster of the whole test run: that which the runner started before, or else one that this
// process starts for itself.
std::string TextoComum(const std::string &banco, const std::string &papel = "postgres");

// Past the services: the rows of the last statement, their cells joined with "|". Raises std::runtime_error with the
// server's words.
std::vector<std::string> Linhas(const std::string &texto, const std::string &comandos);

// A place for a registry, which goes away with it.
class RegistroVazio {
  public:
    // Nothing is there: no file of that name, or an empty database.
    RegistroVazio();
    // As `faz` left it, which is given the place and runs once for each name and program; others get copies of that.
    RegistroVazio(const std::string &modelo, const std::function<void(const std::string &onde)> &faz);
    RegistroVazio(const RegistroVazio &) = delete;
    RegistroVazio &operator=(const RegistroVazio &) = delete;
    ~RegistroVazio();

    // File or connection text.
    const std::string &Onde() const { return m_Onde; }

  private:
    std::filesystem::path m_Pasta;
    std::string m_Banco;
    std::string m_Onde;
};

} // namespace motor
