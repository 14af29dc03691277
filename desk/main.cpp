#include "desk/host/Relogio.h"
#include "desk/sample/RegistroDoUsuario.h"
#include "desk/windows/Aparencia.h"
#include "desk/windows/Mesa.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QMessageBox>
#include <QProgressDialog>
#include <QStandardPaths>

#include <cstdio>

namespace mesa {

namespace {

std::filesystem::path DiretorioPadrao()
{
    const QString base = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return (base + "/registro-de-equipamentos").toStdString();
}

int Trabalha(QApplication &aplicacao, const std::filesystem::path &diretorio, ConteudoInicial conteudo, bool deNovo)
{
    QProgressDialog preparo("Preparando o registro de exemplo...", QString(), 0, 100);
    preparo.setWindowTitle("Registro de Equipamentos");
    preparo.setMinimumDuration(300);
    const Ref<Servicos> servicos = AbreRegistroDoUsuario(diretorio, conteudo, deNovo, Agora, [&](double parte) {
        preparo.setValue(static_cast<int>(parte * 100));
        QCoreApplication::processEvents();
    });
    preparo.reset();
    Mesa mesa(servicos, diretorio, [] { return Agora().Local; });
    mesa.show();
    if (!mesa.PedeEntrada()) {
        return 0;
    }
    return aplicacao.exec();
}

} // namespace

} // namespace mesa

int main(int argc, char **argv)
{
    using namespace mesa;
    QCoreApplication::setApplicationName("registro-de-equipamentos");
    QApplication aplicacao(argc, argv);
    PreparaAparencia(aplicacao);

    QCommandLineParser opcoes;
    opcoes.setApplicationDescription("Registro de Equipamentos");
    const QCommandLineOption dados("dados", "Usa outro diretório de dados.", "DIR");
    const QCommandLineOption novaAmostra("nova-amostra",
                                         "Começa com um registro de exemplo novo; o anterior é guardado ao lado.");
    const QCommandLineOption vazio("vazio", "Começa com um registro só com usuários; o anterior é guardado ao lado.");
    const QCommandLineOption ajuda("help", "Mostra esta ajuda.");
    opcoes.addOptions({dados, novaAmostra, vazio, ajuda});
    if (!opcoes.parse(QCoreApplication::arguments()) || opcoes.isSet(ajuda)) {
        std::puts(opcoes.helpText().toUtf8().constData());
        return opcoes.isSet(ajuda) ? 0 : 2;
    }
    try {
        const std::filesystem::path diretorio =
            opcoes.isSet(dados) ? std::filesystem::path(opcoes.value(dados).toStdString()) : DiretorioPadrao();
        return Trabalha(aplicacao, diretorio, opcoes.isSet(vazio) ? ConteudoInicial::Vazio : ConteudoInicial::Amostra,
                        opcoes.isSet(vazio) || opcoes.isSet(novaAmostra));
    } catch (...) {
        const Falha falha = FalhaCorrente();
        std::fprintf(stderr, "%s\n", falha.Descricao.c_str());
        QMessageBox::critical(nullptr, "Registro de Equipamentos", QString::fromStdString(falha.Descricao));
        return 1;
    }
}
