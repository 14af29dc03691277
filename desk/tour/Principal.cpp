#include "desk/host/FazAmostra.h"
#include "desk/host/Inicio.h"
#include "desk/host/Relogio.h"
#include "desk/tour/Roteiro.h"
#include "desk/tour/Tela.h"
#include "desk/windows/Aparencia.h"
#include "desk/windows/LugarDasJanelas.h"
#include "desk/windows/Mesa.h"

#include <QApplication>
#include <QThread>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <optional>

namespace mesa {

namespace {

// Drives the windows through the whole job on a registry of its own. The exit status says whether all was as it should
// be.
int Percorre(const Tela &tela)
{
    const QString &pasta = tela.Pasta;
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    Preferencias preferencias(std::filesystem::path(pasta.toStdString()) / "preferencias.ini");
    Inicio inicio(std::filesystem::path(pasta.toStdString()) / "dados", preferencias, Agora, FazAmostra(Agora), {});
    const Ref<Servicos> servicos = inicio.CriaAmostra([](double) {});
    LugarDasJanelas::DaAplicacao(); // from the first window on
    preferencias.DefineAspecto({.Cores = tela.Escura ? Tema::Escuro : Tema::Claro});
    const Aparencia aparencia(preferencias);
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

// The tour as a program of its own: it is told the folder for the pictures and the account, and the screen.
int main(int argc, char **argv)
{
    using namespace mesa;
    QCoreApplication::setApplicationName("registro-de-equipamentos");
    QStringList argumentos;
    for (int n = 0; n < argc; ++n) {
        argumentos << QString::fromLocal8Bit(argv[n]);
    }
    const std::optional<Tela> tela = Tela::Le(argumentos);
    if (!tela) {
        std::fputs(Tela::Ajuda(), stderr);
        return 2;
    }
    try {
        tela->Prepara();
        QApplication aplicacao(argc, argv);
        PreparaAparencia(aplicacao);
        return Percorre(*tela);
    } catch (...) {
        std::fprintf(stderr, "%s\n", FalhaCorrente().Descricao.c_str());
        return 1;
    }
}
