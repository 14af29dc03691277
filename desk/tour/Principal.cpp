#include "desk/host/Inicio.h"
#include "desk/host/Relogio.h"
#include "desk/sample/FazAmostra.h"
#include "desk/tour/Roteiro.h"
#include "desk/windows/Aparencia.h"
#include "desk/windows/Mesa.h"

#include <QApplication>
#include <QDir>
#include <QThread>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>

namespace mesa {

namespace {

// Drives the windows through the whole job on a registry of its own. The exit status says whether all was as it should
// be.
int Percorre(const QString &pasta)
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    Preferencias preferencias(std::filesystem::path(pasta.toStdString()) / "preferencias.ini");
    Inicio inicio(std::filesystem::path(pasta.toStdString()) / "dados", preferencias, Agora, FazAmostra(Agora), {});
    const Ref<Servicos> servicos = inicio.CriaAmostra([](double) {});
    Mesa mesa(
        servicos, inicio.Diretorio(), [] { return Agora().Local; }, preferencias);
    mesa.show();
    Roteiro roteiro(CaminhoDoRegistro(inicio.Diretorio()), pasta);
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

} // namespace mesa

// The tour as a program of its own: its one argument is the folder for the pictures and the account.
int main(int argc, char **argv)
{
    using namespace mesa;
    QCoreApplication::setApplicationName("registro-de-equipamentos");
    QApplication aplicacao(argc, argv);
    PreparaAparencia(aplicacao);
    if (argc != 2) {
        std::fputs("uso: roteiro DIR\n", stderr);
        return 2;
    }
    try {
        return Percorre(QDir(QCoreApplication::arguments().at(1)).absolutePath());
    } catch (...) {
        std::fprintf(stderr, "%s\n", FalhaCorrente().Descricao.c_str());
        return 1;
    }
}
