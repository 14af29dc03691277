#include "services/ConteudoPdf.h"

#include "host/Conversoes.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QPdfDocument>
#include <QRegularExpression>

#include <algorithm>
#include <string_view>

namespace mesa {

namespace {

constexpr std::string_view Inicio = "%PDF-";
constexpr std::string_view Fim = "%%EOF";
constexpr std::size_t Megabyte = 1048576;
constexpr std::size_t LugarDoInicio = 1024; // bytes in which readers look for the beginning
constexpr qint64 TempoParaAbrir = 10000;    // milliseconds

// The content for the library, which asks for it piece by piece. A document can be made to be read without end: after a
// while it gets no more.
class Fonte : public QBuffer {
  public:
    explicit Fonte(const QByteArray &conteudo)
    {
        setData(conteudo);
        open(QIODevice::ReadOnly);
        m_Tempo.start();
    }
    bool Esgotada() const { return m_Esgotada; }

  protected:
    qint64 readData(char *destino, qint64 quantos) override
    {
        m_Esgotada = m_Esgotada || m_Tempo.hasExpired(TempoParaAbrir);
        return m_Esgotada ? -1 : QBuffer::readData(destino, quantos);
    }

  private:
    QElapsedTimer m_Tempo;
    bool m_Esgotada = false;
};

bool EhBranco(char letra)
{
    return letra == '\0' || std::string_view(" \t\r\n\f").find(letra) != std::string_view::npos;
}

std::string DefeitoDasPontas(const QByteArray &conteudo)
{
    const std::string_view tudo(conteudo.constData(), static_cast<std::size_t>(conteudo.size()));
    const std::size_t inicio = tudo.substr(0, LugarDoInicio).find(Inicio);
    if (inicio == std::string_view::npos) {
        return "O documento não é um PDF: confira o arquivo e envie de novo.";
    }
    if (inicio > 0) {
        return "O documento tem " + CStr(inicio) + (inicio == 1 ? " byte" : " bytes") +
               " antes do começo do PDF: envie o arquivo como foi emitido.";
    }
    const std::size_t fim = tudo.rfind(Fim);
    if (fim == std::string_view::npos) {
        return "O documento está incompleto, sem o fim do PDF: envie o arquivo inteiro.";
    }
    const std::string_view depois = tudo.substr(fim + Fim.size());
    if (!std::all_of(depois.begin(), depois.end(), EhBranco)) {
        return "O documento não acaba onde o PDF acaba: está incompleto ou tem outros dados no fim. Envie o arquivo "
               "inteiro, como foi emitido.";
    }
    return {};
}

std::string DefeitoAoAbrir(const QByteArray &conteudo)
{
    Fonte fonte(conteudo);
    QPdfDocument documento;
    documento.load(&fonte);
    if (fonte.Esgotada()) {
        return "O documento demora demais para abrir: envie o arquivo como foi emitido.";
    }
    switch (documento.error()) {
    case QPdfDocument::Error::None:
        break;
    case QPdfDocument::Error::IncorrectPassword:
        return "O documento pede uma senha para abrir: envie o arquivo sem senha.";
    case QPdfDocument::Error::UnsupportedSecurityScheme:
        return "O documento tem uma proteção que não se abre aqui: envie o arquivo sem proteção.";
    default:
        return "O documento está danificado e não abre: confira o arquivo e envie de novo.";
    }
    // The library opens by itself what is under an empty password; yet it is not the file as it reads.
    static const QRegularExpression cifrado("/Encrypt\\s*(?:<<|\\d+\\s+\\d+\\s+R)");
    // Most have the word nowhere, and then they need not be made into letters.
    const qsizetype palavra = conteudo.indexOf("/Encrypt");
    if (palavra >= 0 && cifrado.match(QString::fromLatin1(conteudo.sliced(palavra))).hasMatch()) {
        return "O documento está cifrado: envie o arquivo sem senha e sem proteção.";
    }
    if (documento.pageCount() < 1) {
        return "O documento não tem nenhuma página: confira o arquivo e envie de novo.";
    }
    if (documento.status() != QPdfDocument::Status::Ready) {
        return "O documento está danificado, com páginas que não abrem: confira o arquivo e envie de novo.";
    }
    return {};
}

} // namespace

std::string DefeitoDoPdf(const QByteArray &conteudo)
{
    if (conteudo.isEmpty()) {
        return "O documento está vazio.";
    }
    if (static_cast<std::size_t>(conteudo.size()) > MaiorDocumento) {
        return "O documento tem mais de " + CStr(MaiorDocumento / Megabyte) + " MB, que é o tamanho máximo.";
    }
    const std::string pontas = DefeitoDasPontas(conteudo);
    return pontas.empty() ? DefeitoAoAbrir(conteudo) : pontas;
}

} // namespace mesa
