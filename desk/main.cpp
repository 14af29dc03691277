#include "desk/host/Relogio.h"
#include "desk/sample/RegistroDoUsuario.h"
#include "desk/tour/Roteiro.h"
#include "desk/windows/Mesa.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QMdiArea>
#include <QMessageBox>
#include <QProgressDialog>
#include <QStandardPaths>
#include <QThread>
#include <QTranslator>

#include <cstdio>
#include <cstdlib>

namespace {

std::filesystem::path DiretorioPadrao()
{
    const QString base = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return (base + "/registro-de-equipamentos").toStdString();
}

void Traduz(QApplication &aplicacao)
{
    QLocale::setDefault(QLocale(QLocale::Portuguese, QLocale::Brazil));
    auto *tradutor = new QTranslator(&aplicacao);
    if (tradutor->load("qtbase_pt_BR", QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(tradutor);
    }
}

int Trabalha(QApplication &aplicacao, const std::filesystem::path &diretorio, TipoDeRegistro tipo, bool deNovo)
{
    QProgressDialog preparo("Preparando o registro de exemplo...", QString(), 0, 100);
    preparo.setWindowTitle("Registro de Equipamentos");
    preparo.setMinimumDuration(300);
    const Ref<Servicos> servicos = AbreRegistroDoUsuario(diretorio, tipo, deNovo, Agora, [&](double parte) {
        preparo.setValue(static_cast<int>(parte * 100));
        QCoreApplication::processEvents();
    });
    preparo.reset();
    Mesa mesa(servicos, diretorio, Agora);
    mesa.show();
    if (!mesa.PedeEntrada()) {
        return 0;
    }
    return aplicacao.exec();
}

// Drives the windows through the whole job on a registry of its own. The exit status says whether all was as it should
// be.
int Percorre(const QString &pasta)
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const std::filesystem::path diretorio = std::filesystem::path(pasta.toStdString()) / "dados";
    const Ref<Servicos> servicos =
        AbreRegistroDoUsuario(diretorio, TipoDeRegistro::Amostra, true, Agora, [](double) {});
    Mesa mesa(servicos, diretorio, Agora);
    mesa.show();
    Roteiro roteiro(CaminhoDoRegistro(diretorio), pasta);
    int saida = 1;
    QThread *guia = QThread::create([&] {
        try {
            roteiro.Percorre();
            std::puts(roteiro.Resumo().toUtf8().constData());
            saida = 0;
        } catch (const std::exception &diferenca) {
            std::fprintf(stderr, "%s\n", diferenca.what());
        }
        std::fflush(stdout);
    });
    QObject::connect(guia, &QThread::finished, qApp, [&saida] {
        if (saida != 0) {
            std::_Exit(saida); // modal windows may still be waiting for a person
        }
        QCoreApplication::exit(saida);
    });
    guia->start();
    mesa.PedeEntrada();
    const int codigo = QCoreApplication::exec();
    guia->wait();
    delete guia;
    return codigo;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication::setApplicationName("registro-de-equipamentos");
    QApplication aplicacao(argc, argv);
    QApplication::setStyle("Fusion");
    Traduz(aplicacao);

    QCommandLineParser opcoes;
    opcoes.setApplicationDescription("Registro de Equipamentos");
    const QCommandLineOption dados("dados", "Usa outro diretório de dados.", "DIR");
    const QCommandLineOption novaAmostra("nova-amostra",
                                         "Começa com um registro de exemplo novo; o anterior é guardado ao lado.");
    const QCommandLineOption vazio("vazio", "Começa com um registro só com usuários; o anterior é guardado ao lado.");
    const QCommandLineOption roteiro("roteiro",
                                     "Percorre o trabalho todo sozinho e deixa em DIR as imagens e o relato.", "DIR");
    const QCommandLineOption ajuda("help", "Mostra esta ajuda.");
    opcoes.addOptions({dados, novaAmostra, vazio, roteiro, ajuda});
    if (!opcoes.parse(QCoreApplication::arguments()) || opcoes.isSet(ajuda)) {
        std::puts(opcoes.helpText().toUtf8().constData());
        return opcoes.isSet(ajuda) ? 0 : 2;
    }
    try {
        if (opcoes.isSet(roteiro)) {
            return Percorre(QDir(opcoes.value(roteiro)).absolutePath());
        }
        const std::filesystem::path diretorio =
            opcoes.isSet(dados) ? std::filesystem::path(opcoes.value(dados).toStdString()) : DiretorioPadrao();
        return Trabalha(aplicacao, diretorio, opcoes.isSet(vazio) ? TipoDeRegistro::Vazio : TipoDeRegistro::Amostra,
                        opcoes.isSet(vazio) || opcoes.isSet(novaAmostra));
    } catch (...) {
        const Falha falha = FalhaCorrente();
        std::fprintf(stderr, "%s\n", falha.Descricao.c_str());
        QMessageBox::critical(nullptr, "Registro de Equipamentos", QString::fromStdString(falha.Descricao));
        return 1;
    }
}
