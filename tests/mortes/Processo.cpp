#include "tests/mortes/Processo.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace mortes {

Processo::Processo(const std::vector<std::string> &comando, const std::filesystem::path &dito)
{
    std::vector<char *> argumentos;
    for (const std::string &parte : comando) {
        argumentos.push_back(const_cast<char *>(parte.c_str()));
    }
    argumentos.push_back(nullptr);
    const pid_t pai = getpid();
    m_Pid = fork();
    if (m_Pid < 0) {
        throw std::runtime_error("fork");
    }
    if (m_Pid == 0) {
        const int saida = open(dito.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0644);
        dup2(saida, STDOUT_FILENO);
        dup2(saida, STDERR_FILENO);
        for (int n = STDERR_FILENO + 1; n < 1024; ++n) {
            close(n);
        }
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != pai) {
            _exit(126);
        }
        execv(argumentos[0], argumentos.data());
        _exit(127);
    }
}

Processo::~Processo()
{
    if (m_Pid != 0) {
        Mata();
    }
}

int Processo::Finda(int sinal)
{
    if (m_Pid == 0) {
        return -1;
    }
    kill(m_Pid, sinal);
    int estado = 0;
    waitpid(m_Pid, &estado, 0);
    m_Pid = 0;
    return WIFEXITED(estado) ? WEXITSTATUS(estado) : -1;
}

void Processo::Mata()
{
    Finda(SIGKILL);
}

int Processo::Encerra()
{
    return Finda(SIGTERM);
}

int Processo::Espera()
{
    return Finda(0);
}

bool Processo::Anda()
{
    if (m_Pid != 0 && waitpid(m_Pid, nullptr, WNOHANG) == m_Pid) {
        m_Pid = 0;
    }
    return m_Pid != 0;
}

std::string Roda(const std::vector<std::string> &comando, const std::filesystem::path &dito, int &codigo)
{
    std::filesystem::remove(dito);
    codigo = Processo(comando, dito).Espera();
    return TextoDe(dito);
}

std::string TextoDe(const std::filesystem::path &arquivo)
{
    std::ifstream lido(arquivo, std::ios::binary);
    return {std::istreambuf_iterator<char>(lido), std::istreambuf_iterator<char>()};
}

} // namespace mortes
