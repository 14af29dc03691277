#include "tests/services/MortePorPasso.h"

#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdint>
#include <cstdio>
#include <map>
#include <stdexcept>

namespace {

constexpr int Boa = 0;
constexpr int Falhou = 3;
constexpr int SemVigia = 4;

const char *Muda(std::uint64_t chamada, const std::uint64_t *argumentos)
{
    static const std::map<std::uint64_t, const char *> mudancas = {
        {SYS_write, "write"},         {SYS_pwrite64, "pwrite"},     {SYS_writev, "writev"},
        {SYS_pwritev, "pwritev"},     {SYS_renameat, "rename"},     {SYS_renameat2, "rename"},
        {SYS_linkat, "link"},         {SYS_unlinkat, "unlink"},     {SYS_ftruncate, "ftruncate"},
        {SYS_truncate, "truncate"},   {SYS_fallocate, "fallocate"}, {SYS_fsync, "fsync"},
        {SYS_fdatasync, "fdatasync"}, {SYS_mkdirat, "mkdir"},       {SYS_fchmod, "fchmod"},
        {SYS_fchmodat, "chmod"},      {SYS_sendfile, "sendfile"},   {SYS_copy_file_range, "copy_file_range"},
#ifdef SYS_rename
        {SYS_rename, "rename"},       {SYS_link, "link"},           {SYS_unlink, "unlink"},
        {SYS_mkdir, "mkdir"},         {SYS_chmod, "chmod"},         {SYS_creat, "creat"},
#endif
    };
    const auto achada = mudancas.find(chamada);
    if (achada != mudancas.end()) {
        return achada->second;
    }
    const bool abre = chamada == SYS_openat && (argumentos[2] & (O_CREAT | O_TRUNC)) != 0;
#ifdef SYS_open
    const bool abreSimples = chamada == SYS_open && (argumentos[1] & (O_CREAT | O_TRUNC)) != 0;
#else
    const bool abreSimples = false;
#endif
    return abre || abreSimples ? "open" : nullptr;
}

pid_t Solta(const std::function<void()> &trabalho)
{
    std::fflush(nullptr);
    const pid_t filho = fork();
    if (filho == 0) {
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) {
            _exit(SemVigia);
        }
        std::raise(SIGSTOP);
        try {
            trabalho();
        } catch (const std::exception &erro) {
            std::fprintf(stderr, "%s\n", erro.what());
            _exit(Falhou);
        }
        _exit(Boa);
    }
    return filho;
}

} // namespace

bool MortePorPasso::Possivel()
{
    const pid_t filho = Solta([] {});
    int estado = 0;
    waitpid(filho, &estado, 0);
    if (!WIFSTOPPED(estado)) {
        return false;
    }
    struct __ptrace_syscall_info chamada {};
    const bool sabe = ptrace(PTRACE_SETOPTIONS, filho, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL) == 0 &&
                      ptrace(PTRACE_SYSCALL, filho, nullptr, nullptr) == 0 && waitpid(filho, &estado, 0) == filho &&
                      WIFSTOPPED(estado) && ptrace(PTRACE_GET_SYSCALL_INFO, filho, sizeof chamada, &chamada) > 0;
    kill(filho, SIGKILL);
    waitpid(filho, &estado, 0);
    return sabe;
}

std::optional<std::string> MortePorPasso::Mata(int passo, const std::function<void()> &trabalho)
{
    const pid_t filho = Solta(trabalho);
    int estado = 0;
    waitpid(filho, &estado, 0);
    ptrace(PTRACE_SETOPTIONS, filho, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
    int sinal = 0;
    for (int feitos = 0; WIFSTOPPED(estado);) {
        ptrace(PTRACE_SYSCALL, filho, nullptr, sinal);
        waitpid(filho, &estado, 0);
        if (!WIFSTOPPED(estado)) {
            break;
        }
        sinal = 0;
        if (WSTOPSIG(estado) != (SIGTRAP | 0x80)) {
            sinal = WSTOPSIG(estado);
            continue;
        }
        struct __ptrace_syscall_info chamada {};
        ptrace(PTRACE_GET_SYSCALL_INFO, filho, sizeof chamada, &chamada);
        if (chamada.op != PTRACE_SYSCALL_INFO_ENTRY) {
            continue;
        }
        const char *mudanca = Muda(chamada.entry.nr, reinterpret_cast<const std::uint64_t *>(chamada.entry.args));
        if (mudanca != nullptr && feitos++ == passo) {
            kill(filho, SIGKILL);
            waitpid(filho, &estado, 0);
            return mudanca;
        }
    }
    if (!WIFEXITED(estado) || WEXITSTATUS(estado) != Boa) {
        throw std::runtime_error("the work did not end well");
    }
    return std::nullopt;
}
