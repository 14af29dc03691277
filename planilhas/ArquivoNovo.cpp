#include "planilhas/ArquivoNovo.h"

#include "planilhas/Falhas.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <random>
#include <system_error>
#include <utility>

namespace planilhas {

namespace {

constexpr mode_t ConformeOUsuario = 0666; // less what whoever runs this takes from files
constexpr mode_t SoDoUsuario = 0600;
constexpr mode_t TodosOsDireitos = 0777;
constexpr int MaisAtalhos = 40;
constexpr std::size_t MuitosOctetos = 262144;
constexpr std::size_t TamanhoDoNome = 10;

std::string NomeAoAcaso()
{
    constexpr std::string_view letras = "abcdefghijklmnopqrstuvwxyz0123456789";
    std::random_device acaso;
    std::string nome;
    while (nome.size() < TamanhoDoNome) {
        nome += letras[acaso() % letras.size()];
    }
    return nome;
}

// Where the links point that stand in the place.
std::filesystem::path Destino(std::filesystem::path lugar, const std::string &ato)
{
    std::error_code erro;
    for (int atalhos = 0; std::filesystem::is_symlink(std::filesystem::symlink_status(lugar, erro)); ++atalhos) {
        const std::filesystem::path alvo = std::filesystem::read_symlink(lugar, erro);
        if (erro || atalhos == MaisAtalhos) {
            FalhaDeArquivo(erro ? erro.value() : ELOOP, ato);
        }
        lugar = lugar.parent_path() / alvo;
    }
    return lugar;
}

} // namespace

ArquivoNovo::ArquivoNovo(std::filesystem::path lugar) : m_Pedido(std::move(lugar)), m_Lugar(Destino(m_Pedido, Ato()))
{
    struct stat antigo {};
    if (stat(m_Lugar.c_str(), &antigo) == 0) {
        if (!S_ISREG(antigo.st_mode)) {
            FalhaDeArquivo(S_ISDIR(antigo.st_mode) ? EISDIR : ENODEV, Ato());
        }
        m_Direitos = antigo.st_mode & TodosOsDireitos;
    } else if (errno != ENOENT) {
        FalhaDeArquivo(errno, Ato());
    }
    // Nobody else reads it before it has the rights of the old one.
    const mode_t direitos = m_Direitos ? SoDoUsuario : ConformeOUsuario;
    int aberto = -1;
    do {
        m_Caminho = m_Lugar.parent_path() / (".parcial-" + NomeAoAcaso());
        aberto = open(m_Caminho.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, direitos);
    } while (aberto < 0 && (errno == EEXIST || errno == EINTR));
    if (aberto < 0) {
        FalhaDeArquivo(errno, Ato());
    }
    close(aberto);
}

ArquivoNovo::~ArquivoNovo()
{
    if (!m_NoLugar) {
        unlink(m_Caminho.c_str());
    }
}

std::string ArquivoNovo::Ato() const
{
    return "Não foi possível gravar " + m_Pedido.string();
}

void ArquivoNovo::TomaOLugar()
{
    const int aberto = open(m_Caminho.c_str(), O_WRONLY | O_CLOEXEC);
    if (aberto < 0) {
        FalhaDeArquivo(errno, Ato());
    }
    if (m_Direitos) { // a disk without rights keeps those that it gives
        fchmod(aberto, *m_Direitos);
    }
    const int erro = fsync(aberto) == 0 ? 0 : errno;
    close(aberto);
    // Disks of other systems do not know how to: there it is as it is.
    if (erro != 0 && erro != EINVAL && erro != ENOTSUP) {
        FalhaDeArquivo(erro, Ato());
    }
    if (rename(m_Caminho.c_str(), m_Lugar.c_str()) != 0) {
        FalhaDeArquivo(errno, Ato());
    }
    m_NoLugar = true;
    const std::filesystem::path pasta = m_Lugar.has_parent_path() ? m_Lugar.parent_path() : ".";
    const int aberta = open(pasta.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (aberta >= 0) { // its name too; a disk that does not know how to keeps it as it does
        fsync(aberta);
        close(aberta);
    }
}

void Gravacao::Poe(std::string_view octetos)
{
    m_Guardados += octetos;
    if (m_Guardados.size() >= MuitosOctetos) {
        Descarrega();
    }
}

void Gravacao::Descarrega()
{
    std::string_view resto = m_Guardados;
    while (!resto.empty()) {
        const ssize_t gravados = write(m_Aberto, resto.data(), resto.size());
        if (gravados >= 0) {
            resto.remove_prefix(static_cast<std::size_t>(gravados));
        } else if (errno != EINTR) {
            FalhaDeArquivo(errno, m_Ato);
        }
    }
    m_Guardados.clear();
}

ArquivoTemporario::ArquivoTemporario()
{
    std::error_code erro;
    std::string nome = (std::filesystem::temp_directory_path(erro) / "planilha-XXXXXX").string();
    m_Aberto = mkostemp(nome.data(), O_CLOEXEC);
    if (m_Aberto < 0) {
        FalhaDeArquivo(errno, "Não foi possível fazer um arquivo temporário");
    }
    unlink(nome.c_str());
}

ArquivoTemporario::~ArquivoTemporario()
{
    close(m_Aberto);
}

} // namespace planilhas
