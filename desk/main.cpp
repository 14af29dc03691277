#include "desk/host/Inicio.h"
#include "desk/host/LinhaDeComando.h"
#include "desk/host/Relogio.h"
#include "desk/sample/FazAmostra.h"
#include "desk/windows/Aparencia.h"
#include "desk/windows/InicioQt.h"
#include "desk/windows/Mesa.h"
#include "host/Falha.h"

#include <QApplication>

#include <cstdio>
#include <iostream>
#include <memory>

namespace mesa {

namespace {

Inicio FazInicio(const std::filesystem::path &dados, Preferencias &preferencias)
{
    return Inicio(dados, preferencias, Agora, FazAmostra(Agora), {});
}

int Cria(const LinhaDeComando &linha, Preferencias &preferencias)
{
    RegistroNovo novo = linha.Novo;
    novo.Senha = LeSenha(std::cin);
    FazInicio(linha.Dados, preferencias).Cria(novo);
    std::printf("O registro foi criado em %s.\n", CaminhoDoRegistro(linha.Dados).c_str());
    return 0;
}

int Trabalha(const LinhaDeComando &linha, Preferencias &preferencias)
{
    InicioQt pessoa;
    Inicio inicio = FazInicio(linha.Dados, preferencias);
    const Ref<Servicos> servicos = linha.OQue == LinhaDeComando::Ato::Amostra
                                       ? inicio.CriaAmostra([&](double parte) { pessoa.Progresso(parte); })
                                       : inicio.Abre(pessoa);
    if (!servicos) {
        return 0;
    }
    Mesa mesa(
        servicos, inicio.Diretorio(), [] { return Agora().Local; }, preferencias);
    mesa.show();
    if (!mesa.PedeEntrada()) {
        return 0;
    }
    return QCoreApplication::exec();
}

int Faz(bool comJanelas)
{
    const LinhaDeComando linha = LinhaDeComando::Le(QCoreApplication::arguments());
    if (linha.OQue == LinhaDeComando::Ato::Ajuda) {
        std::fputs(LinhaDeComando::Ajuda(), stdout);
        return 0;
    }
    if (!linha.Erro.empty()) {
        std::fprintf(stderr, "%s\n\n%s", linha.Erro.c_str(), LinhaDeComando::Ajuda());
        return 2;
    }
    try {
        Preferencias preferencias(Preferencias::ArquivoDoUsuario());
        return linha.OQue == LinhaDeComando::Ato::Novo ? Cria(linha, preferencias) : Trabalha(linha, preferencias);
    } catch (...) {
        const Falha falha = FalhaCorrente();
        std::fprintf(stderr, "%s\n", falha.Descricao.c_str());
        if (comJanelas) {
            InicioQt().Avisa(falha.Descricao);
        }
        return 1;
    }
}

} // namespace

} // namespace mesa

int main(int argc, char **argv)
{
    using namespace mesa;
    QCoreApplication::setApplicationName("registro-de-equipamentos");
    if (LinhaDeComando::SemJanelas(argc, argv)) {
        const QCoreApplication aplicacao(argc, argv);
        return Faz(false);
    }
    QApplication aplicacao(argc, argv);
    PreparaAparencia(aplicacao);
    return Faz(true);
}
