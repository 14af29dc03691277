#include "desk/host/AtosDoRegistro.h"
#include "desk/host/DiretorioDeTrabalho.h"
#include "desk/host/FazAmostra.h"
#include "desk/host/Inicio.h"
#include "desk/host/LinhaDeComando.h"
#include "desk/host/Relogio.h"
#include "desk/windows/Aparencia.h"
#include "desk/windows/InicioQt.h"
#include "desk/windows/JanelaDeTrabalho.h"
#include "desk/windows/Mesa.h"
#include "desk/windows/PortalDeAparencia.h"
#include "host/Falha.h"
#include "services/ComandosDeCopia.h"
#include "services/Conferidor.h"

#include <QApplication>

#include <sys/stat.h>

#include <cstdio>
#include <iostream>
#include <optional>
#include <string>
#include <utility>

namespace mesa {

namespace {

// Puts the copy in the registry's place in front of a person, who sees what came of it.
DesfechoDaCopia RestauraNaTela(const std::filesystem::path &registro, const PedidoDeRestauracao &pedido)
{
    DesfechoDaCopia desfecho;
    JanelaDeTrabalho janela(
        "Restaurar", "A cópia está sendo conferida e posta no lugar do registro.",
        [&](const Segue &segue) {
            desfecho = Restauracao(registro.string(), Conferidor::Achados).Faz(pedido, Agora(), [&](double parte) {
                return segue(parte, "");
            });
            return ResultadoDoAto{!desfecho.Cancelada, desfecho.Frase, desfecho.Achados};
        },
        nullptr);
    janela.exec();
    return desfecho;
}

Inicio FazInicio(const std::filesystem::path &dados, Preferencias &preferencias)
{
    return Inicio(dados, preferencias, Agora, FazAmostra(Agora), RestauraNaTela);
}

int Cria(const LinhaDeComando &linha, Preferencias &preferencias)
{
    RegistroNovo novo = linha.Novo;
    novo.Senha = LeSenha(std::cin);
    FazInicio(linha.Dados, preferencias).Cria(novo);
    std::printf("O registro foi criado em %s.\n", CaminhoDoRegistro(linha.Dados).c_str());
    return 0;
}

int Comanda(const LinhaDeComando &linha, const Preferencias &preferencias)
{
    const RegistroConhecido conhecido = RegistroDe(linha.Dados, preferencias);
    const std::string registro = conhecido.Caminho.string();
    if (linha.OQue == LinhaDeComando::Ato::Confere) {
        const ComandoDeConferencia::Saida saida = ComandoDeConferencia::Confere(registro, linha.Desde, Agora());
        std::fputs(saida.Texto.c_str(), stdout);
        return saida.Codigo;
    }
    const DesfechoDeComando desfecho =
        linha.OQue == LinhaDeComando::Ato::Copia
            ? ComandaCopia(registro, Conferidor::Achados, linha.Pasta, Agora())
            : ComandaRestauracao(registro, Conferidor::Achados, {linha.Arquivo, conhecido.Identificador, linha.DeOutro},
                                 Agora());
    std::fputs(desfecho.Texto.c_str(), desfecho.Saida == 0 ? stdout : stderr);
    return desfecho.Saida;
}

int Trabalha(const LinhaDeComando &linha, Preferencias &preferencias)
{
    InicioQt pessoa;
    Inicio inicio = FazInicio(linha.Dados, preferencias);
    std::filesystem::path pedido = linha.Registro;
    bool novaAmostra = linha.OQue == LinhaDeComando::Ato::Amostra;
    for (;;) {
        std::optional<std::string> copia; // to be put in the registry's place once nobody works on it
        int codigo = 0;
        {
            const std::filesystem::path arquivo = std::exchange(pedido, {});
            const Ref<Servicos> servicos =
                std::exchange(novaAmostra, false)
                    ? inicio.CriaAmostra([&](double parte) { pessoa.Progresso(parte); })
                    : (arquivo.empty() ? inicio.Abre(pessoa) : inicio.AbreArquivo(arquivo, pessoa));
            if (!servicos || !inicio.Confere(pessoa)) {
                return 0;
            }
            const DiretorioDeTrabalho diretorio(inicio.Diretorio());
            Mesa mesa(
                servicos, diretorio.Caminho(), [] { return Agora().Local; }, preferencias);
            AtosDoRegistro atos = FazAtosDoRegistro(inicio.Registro().string(), Agora);
            if (servicos->Tipo() != TipoDeRegistro::Amostra) {
                atos.Restaura = [&](const std::string &escolhida) { copia = escolhida; };
            }
            mesa.DefineAtos(std::move(atos));
            mesa.DefineCuidados(CuidadosDoDia(inicio.Registro().string(), *servicos, preferencias, Agora));
            mesa.show();
            if (!mesa.PedeEntrada()) {
                return 0;
            }
            codigo = QCoreApplication::exec();
        }
        if (!copia) {
            return codigo;
        }
        inicio.Restaura(*copia, pessoa);
    }
}

int Atende(const LinhaDeComando &linha, Preferencias &preferencias)
{
    switch (linha.OQue) {
    case LinhaDeComando::Ato::Novo:
        return Cria(linha, preferencias);
    case LinhaDeComando::Ato::Confere:
    case LinhaDeComando::Ato::Copia:
    case LinhaDeComando::Ato::Restaura:
        return Comanda(linha, preferencias);
    default:
        return Trabalha(linha, preferencias);
    }
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
        std::optional<Aparencia> aparencia;
        std::optional<PortalDeAparencia> portal;
        if (comJanelas) {
            aparencia.emplace(preferencias);
            portal.emplace(QDBusConnection::sessionBus(),
                           [&](DesejoDeCores desejo) { aparencia->DefineDesejo(desejo); });
        }
        return Atende(linha, preferencias);
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
    ::umask(S_IRWXG | S_IRWXO); // whatever is written is the user's own
    QCoreApplication::setApplicationName("registro-de-equipamentos");
    QGuiApplication::setDesktopFileName("registro-de-equipamentos"); // by which a session knows its menu entry
    if (LinhaDeComando::SemJanelas(argc, argv)) {
        const QCoreApplication aplicacao(argc, argv);
        return Faz(false);
    }
    QApplication aplicacao(argc, argv);
    PreparaAparencia(aplicacao);
    return Faz(true);
}
