#include "desk/tour/Tela.h"

#include "desk/tour/Condutor.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace mesa {

namespace {

constexpr int MenorEscala = 100;
constexpr int MaiorEscala = 400;

} // namespace

std::optional<Tela> Tela::Le(const QStringList &argumentos)
{
    QCommandLineParser linha;
    const QCommandLineOption tamanho("tela", "", "LxA");
    const QCommandLineOption escala("escala", "", "N", "100");
    const QCommandLineOption tema("tema", "", "claro|escuro", "claro");
    const QCommandLineOption servidor("servidor", "", "PROGRAMA");
    linha.addOptions({tamanho, escala, tema, servidor});
    if (!linha.parse(argumentos) || linha.positionalArguments().size() != 1) {
        return std::nullopt;
    }
    Tela tela;
    tela.Pasta = QDir(linha.positionalArguments().front()).absolutePath();
    if (linha.isSet(tamanho)) {
        static const QRegularExpression medidas("^([1-9]\\d{2,3})x([1-9]\\d{2,3})$");
        const auto achado = medidas.match(linha.value(tamanho));
        if (!achado.hasMatch()) {
            return std::nullopt;
        }
        tela.Tamanho = {achado.captured(1).toInt(), achado.captured(2).toInt()};
    }
    bool numero = false;
    tela.Escala = linha.value(escala).toInt(&numero);
    tela.Escura = linha.value(tema) == "escuro";
    tela.Servidor = linha.value(servidor);
    const bool entendida = numero && tela.Escala >= MenorEscala && tela.Escala <= MaiorEscala &&
                           (tela.Escura || linha.value(tema) == "claro") &&
                           linha.isSet(servidor) == !tela.Servidor.isEmpty();
    return entendida ? std::optional(tela) : std::nullopt;
}

const char *Tela::Ajuda()
{
    return "uso: roteiro DIR [--tela LARGURAxALTURA] [--escala PORCENTO] [--tema claro|escuro]\n"
           "                   [--servidor PROGRAMA]\n";
}

void Tela::Prepara() const
{
    QDir().mkpath(Pasta);
    if (Escala != MenorEscala) {
        qputenv("QT_SCALE_FACTOR", QByteArray::number(Escala / 100.0));
    }
    if (Tamanho.isEmpty()) {
        return;
    }
    QFile descricao(Pasta + "/tela.json");
    const QJsonObject tela{{"name", "tela"},
                           {"x", 0},
                           {"y", 0},
                           {"width", Tamanho.width()},
                           {"height", Tamanho.height()},
                           {"logicalDpi", 96},
                           {"logicalBaseDpi", 96},
                           {"dpr", 1}};
    if (!descricao.open(QIODevice::WriteOnly) ||
        descricao.write(QJsonDocument(QJsonObject{{"screens", QJsonArray{tela}}}).toJson()) < 0) {
        throw Diferenca("Não foi possível gravar " + descricao.fileName());
    }
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + QFile::encodeName(descricao.fileName()));
}

} // namespace mesa
