#include "services/Disco.h"

#include "host/Falha.h"
#include "services/ArquivoSQLite.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <fstream>
#include <system_error>
#include <thread>
#include <utility>

namespace mesa {

namespace {

constexpr int TentativasDeTravar = 200;
constexpr std::chrono::milliseconds PausaAoTravar(25);

// Beyond the bytes that the embedded database locks.
constexpr off_t ByteDaTrava = 0x70000000;

constexpr mode_t DosOutros = S_IRWXG | S_IRWXO;

constexpr unsigned TipoFuse = 0x65735546;

std::int32_t NumeroDoSistema(int erro)
{
    switch (erro) {
    case ENOSPC:
    case EDQUOT:
        return NumeroFalha::DiscoCheio;
    case EACCES:
    case EPERM:
    case EROFS:
        return NumeroFalha::PermissaoNegada;
    default:
        return NumeroFalha::ErroDeAcesso;
    }
}

// A new attempt of what a signal interrupted.
template <class Ato> int SemInterrupcao(const Ato &ato)
{
    int resposta = 0;
    do {
        resposta = ato();
    } while (resposta < 0 && errno == EINTR);
    return resposta;
}

// Many kinds of disks are one to the system, those of the network and these.
bool FuseDesteComputador(const std::filesystem::path &caminho)
{
    struct stat e {};
    if (stat(caminho.c_str(), &e) != 0) {
        return false;
    }
    const std::string disco = " " + std::to_string(major(e.st_dev)) + ":" + std::to_string(minor(e.st_dev)) + " ";
    std::ifstream montados("/proc/self/mountinfo");
    for (std::string linha; std::getline(montados, linha);) {
        if (linha.find(disco) != std::string::npos) {
            for (const char *tipo :
                 {"fuseblk", "fuse.fuse-overlayfs", "fuse.gocryptfs", "fuse.encfs", "fuse.mergerfs"}) {
                if (linha.find(std::string(" - ") + tipo + " ") != std::string::npos) {
                    return true;
                }
            }
        }
    }
    return false;
}

// Closed to others when it is of whoever runs this and is open to them; a directory that the system shares among all
// users (as that of temporary files) stays theirs.
void Fecha(const std::filesystem::path &caminho, mode_t modo)
{
    struct stat e {};
    if (stat(caminho.c_str(), &e) != 0) {
        FalhaDoSistema(errno, "Não foi possível olhar " + caminho.string());
    }
    if (e.st_uid == geteuid() && (e.st_mode & DosOutros) != 0 && (e.st_mode & S_ISVTX) == 0 &&
        chmod(caminho.c_str(), modo) != 0 && errno != EROFS && errno != EPERM) {
        FalhaDoSistema(errno, "Não foi possível fechar " + caminho.string() + " aos outros usuários");
    }
}

} // namespace

std::string RedeDoTipo(unsigned tipo)
{
    switch (tipo) {
    case 0x6969:
        return "NFS";
    case 0x517B:
    case 0xFF534D42:
    case 0xFE534D42:
        return "SMB";
    case 0x564C:
        return "NCP";
    case 0x5346414F:
    case 0x6B414653:
        return "AFS";
    case 0x01021997:
        return "9P";
    case 0x00C36400:
        return "Ceph";
    case 0x73757245:
        return "Coda";
    case 0x0BD00BD0:
        return "Lustre";
    case 0x786F4256:
        return "VirtualBox";
    case TipoFuse:
        return "FUSE";
    default:
        return "";
    }
}

std::string DiscoDeRede(const std::filesystem::path &caminho)
{
    std::error_code ignorado;
    std::filesystem::path achado = caminho.empty() ? "." : caminho;
    while (!std::filesystem::exists(achado, ignorado) && achado.has_relative_path()) {
        achado = achado.has_parent_path() ? achado.parent_path() : ".";
    }
    struct statfs disco {};
    if (SemInterrupcao([&] { return statfs(achado.c_str(), &disco); }) != 0) {
        return "";
    }
    const auto tipo = static_cast<unsigned>(disco.f_type);
    return tipo == TipoFuse && FuseDesteComputador(achado) ? "" : RedeDoTipo(tipo);
}

void FazPastaPrivada(const std::filesystem::path &pasta)
{
    const std::filesystem::path acima = pasta.parent_path();
    std::error_code erro;
    if (!acima.empty() && !std::filesystem::exists(acima, erro)) {
        FazPastaPrivada(acima);
    }
    if (mkdir(pasta.c_str(), S_IRWXU) == 0) {
        return;
    }
    if (errno != EEXIST) {
        FalhaDoSistema(errno, "Não foi possível fazer a pasta " + pasta.string());
    }
    if (!std::filesystem::is_directory(pasta, erro)) {
        FalhaDoSistema(ENOTDIR, "Não foi possível usar " + pasta.string());
    }
    Fecha(pasta, S_IRWXU);
}

void FazArquivoPrivado(const std::filesystem::path &arquivo)
{
    Fecha(arquivo, S_IRUSR | S_IWUSR);
}

void CriaArquivoPrivado(const std::filesystem::path &arquivo)
{
    const int aberto =
        SemInterrupcao([&] { return open(arquivo.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR); });
    if (aberto >= 0) {
        close(aberto);
    } else if (errno != EEXIST) {
        FalhaDoSistema(errno, "Não foi possível fazer o arquivo " + arquivo.string());
    }
}

bool PodeGravar(const std::filesystem::path &caminho)
{
    return faccessat(AT_FDCWD, caminho.c_str(), W_OK, AT_EACCESS) == 0;
}

void SincronizaPasta(const std::filesystem::path &pasta)
{
    const int aberta = SemInterrupcao([&] { return open(pasta.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
    const int erro = aberta >= 0 && fsync(aberta) == 0 ? 0 : errno;
    if (aberta >= 0) {
        close(aberta);
    }
    // Disks of other systems do not know how to: there it is as it is.
    if (erro != 0 && erro != EINVAL && erro != ENOTSUP) {
        FalhaDoSistema(erro, "O disco não guardou a pasta " + pasta.string());
    }
}

std::string MotivoDoSistema(int erro)
{
    switch (erro) {
    case ENOSPC:
    case EDQUOT:
        return "o disco está cheio";
    case EACCES:
    case EPERM:
        return "falta permissão";
    case EROFS:
        return "o disco só pode ser lido";
    case ENOENT:
        return "o arquivo ou a pasta não existe";
    case ENOTDIR:
        return "não é uma pasta";
    case EIO:
        return "o disco falhou";
    default:
        return std::generic_category().message(erro);
    }
}

void FalhaDoSistema(int erro, const std::string &ato)
{
    throw Falha(NumeroDoSistema(erro), "Servicos", ato + ": " + MotivoDoSistema(erro) + ".");
}

TravaDaPasta::TravaDaPasta(const std::filesystem::path &pasta, Uso uso, const std::string &recusa)
    : m_Pasta(SemInterrupcao([&] { return open(pasta.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }))
{
    // Who may not read the directory cannot keep it either; what is then tried in it tells why.
    if (m_Pasta < 0) {
        return;
    }
    for (int tentativa = 1; flock(m_Pasta, (uso == Uso::DeUm ? LOCK_EX : LOCK_SH) | LOCK_NB) != 0; ++tentativa) {
        // On a disk without locks, as some of the network are, nobody restores anything.
        if (errno != EWOULDBLOCK) {
            return;
        }
        if (tentativa == TentativasDeTravar) {
            close(m_Pasta);
            throw Falha(NumeroFalha::ErroDeAcesso, "Servicos", recusa);
        }
        std::this_thread::sleep_for(PausaAoTravar);
    }
}

TravaDaPasta::~TravaDaPasta()
{
    if (m_Pasta >= 0) {
        close(m_Pasta);
    }
}

ArquivoEmPreparo::ArquivoEmPreparo(std::filesystem::path caminho, const std::string &recusa)
    : m_Caminho(std::move(caminho))
{
    const auto falha = [&] {
        const int erro = errno;
        if (m_Aberto >= 0) {
            close(m_Aberto);
        }
        FalhaDoSistema(erro, "Não foi possível gravar em " + m_Caminho.parent_path().string());
    };
    struct stat aberto {};
    struct stat doNome {};
    do {
        if (m_Aberto >= 0) {
            close(m_Aberto); // the one that was being made has taken its place meanwhile
        }
        m_Aberto = SemInterrupcao(
            [&] { return open(m_Caminho.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR); });
        if (m_Aberto < 0) {
            falha();
        }
        struct flock trava {};
        trava.l_type = F_WRLCK;
        trava.l_whence = SEEK_SET;
        trava.l_start = ByteDaTrava;
        trava.l_len = 1;
        if (fcntl(m_Aberto, F_OFD_SETLK, &trava) != 0) {
            if (errno != EAGAIN && errno != EACCES) {
                falha();
            }
            close(m_Aberto);
            throw Falha(NumeroFalha::ErroDeAcesso, "Servicos", recusa);
        }
    } while (fstat(m_Aberto, &aberto) != 0 || lstat(m_Caminho.c_str(), &doNome) != 0 ||
             aberto.st_ino != doNome.st_ino || aberto.st_dev != doNome.st_dev);
    if (ftruncate(m_Aberto, 0) != 0 || fchmod(m_Aberto, S_IRUSR | S_IWUSR) != 0) {
        falha();
    }
    for (const char *parte : PartesAoLado) {
        unlink((m_Caminho.string() + parte).c_str());
    }
}

ArquivoEmPreparo::~ArquivoEmPreparo()
{
    if (!m_NoLugar) {
        for (const char *parte : PartesAoLado) {
            unlink((m_Caminho.string() + parte).c_str());
        }
        unlink(m_Caminho.c_str());
        close(m_Aberto);
    }
}

void ArquivoEmPreparo::Sincroniza()
{
    if (fsync(m_Aberto) != 0) {
        FalhaDoSistema(errno, "O disco não guardou " + m_Caminho.string());
    }
}

void ArquivoEmPreparo::TomaOLugar(const std::filesystem::path &lugar)
{
    Sincroniza();
    if (rename(m_Caminho.c_str(), lugar.c_str()) != 0) {
        FalhaDoSistema(errno, "Não foi possível gravar " + lugar.string());
    }
    m_NoLugar = true;
    close(m_Aberto);
    SincronizaPasta(lugar.parent_path());
}

} // namespace mesa
