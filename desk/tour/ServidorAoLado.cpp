#include "desk/tour/ServidorAoLado.h"

#include "desk/tour/Condutor.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>

#include <sys/prctl.h>

#include <csignal>
#include <utility>

namespace mesa {

namespace {

constexpr int EsperaDaAmostra = 600000; // ms; it goes through the services
constexpr int EsperaDoInicio = 60000;   // ms
constexpr int EsperaDoFim = 10000;      // ms

} // namespace

ServidorAoLado::ServidorAoLado(QString programa, const QString &pasta) : m_Programa(std::move(programa)), m_Pasta(pasta)
{
    QDir().mkpath(m_Pasta);
    EscreveConfiguracao();
    const auto processo = Inicia({"--amostra"});
    if (!processo->waitForFinished(EsperaDaAmostra) || processo->exitStatus() != QProcess::NormalExit ||
        processo->exitCode() != 0) {
        throw Diferenca("A amostra do servidor não pôde ser feita: " + QString::fromUtf8(processo->readAll()));
    }
}

ServidorAoLado::~ServidorAoLado()
{
    Mata();
}

void ServidorAoLado::EscreveConfiguracao() const
{
    QFile arquivo(m_Pasta + "/servidor.toml");
    const QString texto = QString("registro = \"%1/registro.db\"\n"
                                  "escuta = \"127.0.0.1:%2\"\n"
                                  "pasta_do_certificado = \"%1\"\n"
                                  "diario = \"%1/diario.jsonl\"\n")
                              .arg(m_Pasta)
                              .arg(m_Porta);
    if (!arquivo.open(QIODevice::WriteOnly) || arquivo.write(texto.toUtf8()) < 0) {
        throw Diferenca("Não foi possível gravar " + arquivo.fileName());
    }
}

std::unique_ptr<QProcess> ServidorAoLado::Inicia(const QStringList &opcoes) const
{
    auto processo = std::make_unique<QProcess>();
    processo->setProcessChannelMode(QProcess::MergedChannels);
    // Nothing is left behind when the tour ends in the middle.
    processo->setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    processo->start(m_Programa, QStringList{"--configuracao", m_Pasta + "/servidor.toml"} + opcoes);
    return processo;
}

void ServidorAoLado::Comeca()
{
    EscreveConfiguracao();
    m_Processo = Inicia({});
    static const QRegularExpression frases("\\(porta (\\d+)\\)\\.\\nImpressão digital do certificado: ([0-9A-F:]+)\\n");
    QString dito;
    const QDeadlineTimer ate(EsperaDoInicio);
    while (!frases.match(dito).hasMatch()) {
        if (!m_Processo->waitForReadyRead(static_cast<int>(ate.remainingTime()))) {
            throw Diferenca("O servidor não começou: " + dito + m_Processo->errorString());
        }
        dito += QString::fromUtf8(m_Processo->readAll());
    }
    const auto achado = frases.match(dito);
    m_Porta = achado.captured(1).toUShort();
    m_Digital = achado.captured(2);
}

void ServidorAoLado::Emudece()
{
    ::kill(static_cast<pid_t>(m_Processo->processId()), SIGSTOP);
}

void ServidorAoLado::Mata()
{
    if (m_Processo) {
        m_Processo->kill();
        m_Processo->waitForFinished(EsperaDoFim);
        m_Processo.reset();
    }
}

std::filesystem::path ServidorAoLado::Registro() const
{
    return (m_Pasta + "/registro.db").toStdString();
}

QString ServidorAoLado::Onde() const
{
    return QString("127.0.0.1:%1").arg(m_Porta);
}

} // namespace mesa
