#include "desk/windows/EscolhaDeArquivo.h"

#include "desk/host/PastaDeArquivos.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QRegularExpression>
#include <QStandardPaths>

#include <utility>

namespace mesa {

namespace {

Ref<ILembrancas> &LembrancasDeArquivos()
{
    static Ref<ILembrancas> lembrancas;
    return lembrancas;
}

std::filesystem::path DoQt(const QString &caminho)
{
    return QFile::encodeName(caminho).toStdString();
}

QString ParaQt(const std::filesystem::path &caminho)
{
    return QFile::decodeName(QByteArray::fromStdString(caminho.string()));
}

QString PastaDePartida(const PastaDeArquivos &pastas)
{
    const QString documentos = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return ParaQt(pastas.Pasta(DoQt(QDir(documentos).exists() ? documentos : QDir::homePath())));
}

QString Pergunta(QFileDialog &dialogo, const PastaDeArquivos &pastas)
{
    if (auto *nome = dialogo.findChild<QLineEdit *>("fileNameEdit")) {
        nome->selectAll(); // what is offered gives way to what is typed
    }
    if (auto *pasta = dialogo.findChild<QComboBox *>("lookInCombo")) { // which shows only what it has room for
        QObject::connect(pasta, &QComboBox::currentTextChanged, pasta, &QWidget::setToolTip);
        pasta->setToolTip(pasta->currentText());
    }
    if (dialogo.exec() != QDialog::Accepted || dialogo.selectedFiles().isEmpty()) {
        return {};
    }
    const QString escolhido = dialogo.selectedFiles().constFirst();
    const bool pasta = dialogo.fileMode() == QFileDialog::Directory;
    pastas.Lembra(DoQt(pasta ? escolhido : QFileInfo(escolhido).absolutePath()));
    return escolhido;
}

QString Escolhe(const EscolhaDeArquivo &escolha, QFileDialog::AcceptMode como, QWidget *dono)
{
    const PastaDeArquivos pastas(escolha.Uso.empty() ? nullptr : LembrancasDeArquivos(), escolha.Uso);
    QFileDialog dialogo(dono, escolha.Titulo, PastaDePartida(pastas), escolha.Filtros);
    dialogo.setObjectName("EscolhaDeArquivo");
    dialogo.setAcceptMode(como);
    dialogo.setFileMode(como == QFileDialog::AcceptOpen ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    dialogo.setDefaultSuffix(escolha.Extensao);
    QObject::connect(&dialogo, &QFileDialog::filterSelected, &dialogo, [&](const QString &filtro) {
        static const QRegularExpression umaExtensao("\\(\\*\\.(\\w+)\\)$");
        const QRegularExpressionMatch dela = umaExtensao.match(filtro);
        dialogo.setDefaultSuffix(dela.hasMatch() ? dela.captured(1) : escolha.Extensao);
    });
    dialogo.setOption(QFileDialog::DontConfirmOverwrite, !escolha.Pergunta);
    // The name of a file that is there brings its folder along.
    if (como == QFileDialog::AcceptSave || QFile::exists(escolha.Nome)) {
        dialogo.selectFile(escolha.Nome);
    }
    return Pergunta(dialogo, pastas);
}

} // namespace

void DefineLembrancasDeArquivos(Ref<ILembrancas> lembrancas)
{
    LembrancasDeArquivos() = std::move(lembrancas);
}

QString EscolheParaAbrir(const EscolhaDeArquivo &escolha, QWidget *dono)
{
    return Escolhe(escolha, QFileDialog::AcceptOpen, dono);
}

QString EscolheParaSalvar(const EscolhaDeArquivo &escolha, QWidget *dono)
{
    return Escolhe(escolha, QFileDialog::AcceptSave, dono);
}

QString EscolhePasta(const QString &titulo, const std::string &uso, QWidget *dono)
{
    const PastaDeArquivos pastas(LembrancasDeArquivos(), uso);
    QFileDialog dialogo(dono, titulo, PastaDePartida(pastas));
    dialogo.setObjectName("EscolhaDePasta");
    dialogo.setFileMode(QFileDialog::Directory);
    dialogo.setOption(QFileDialog::ShowDirsOnly);
    return Pergunta(dialogo, pastas);
}

} // namespace mesa
