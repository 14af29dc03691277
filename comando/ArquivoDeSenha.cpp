#include "comando/ArquivoDeSenha.h"

#include "comando/Fim.h"
#include "services/Disco.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <vector>

namespace comando {

namespace {

constexpr std::size_t Bastante = 4096;

// An open file, as long as it is looked at.
class Aberto {
  public:
    explicit Aberto(const std::string &caminho) : m_Qual(::open(caminho.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}
    Aberto(const Aberto &) = delete;
    Aberto &operator=(const Aberto &) = delete;
    ~Aberto()
    {
        if (m_Qual >= 0) {
            ::close(m_Qual);
        }
    }
    int Qual() const { return m_Qual; }

  private:
    int m_Qual;
};

} // namespace

mesa::Segredo SenhaDoArquivo(const std::string &caminho)
{
    const auto naoLeu = [&] {
        return Fim(Codigo::NaoAlcancado,
                   "A senha não pôde ser lida de " + caminho + ": " + mesa::MotivoDoSistema(errno) + ".");
    };
    const Aberto arquivo(caminho);
    struct stat dele {};
    if (arquivo.Qual() < 0 || ::fstat(arquivo.Qual(), &dele) != 0) {
        throw naoLeu();
    }
    // Of what is open, not of the name: another file may have that by now.
    if (!S_ISREG(dele.st_mode) || dele.st_uid != ::geteuid() || (dele.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
        throw Fim(Codigo::Recusado, "O arquivo " + caminho +
                                        " não serve para uma senha: ele tem de ser de quem usa o programa, e só o dono "
                                        "o pode ler (chmod 600).");
    }
    std::vector<char, mesa::AlocadorQueLimpa<char>> lida(Bastante);
    const ssize_t lidos = ::read(arquivo.Qual(), lida.data(), lida.size());
    if (lidos < 0) {
        throw naoLeu();
    }
    std::string_view linha(lida.data(), static_cast<std::size_t>(lidos));
    linha = linha.substr(0, linha.find('\n'));
    if (linha.ends_with('\r')) {
        linha.remove_suffix(1);
    }
    if (linha.empty()) {
        throw Fim(Codigo::Recusado, "O arquivo " + caminho + " não tem senha na primeira linha.");
    }
    return mesa::Segredo(linha);
}

} // namespace comando
