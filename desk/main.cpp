#include "desk/host/AtosDoRegistro.h"
#include "desk/host/DiretorioDeTrabalho.h"
#include "desk/host/FazAmostra.h"
#include "desk/host/Inicio.h"
#include "desk/host/LinhaDeComando.h"
#include "desk/windows/Aparencia.h"
#include "desk/windows/ConexaoQt.h"
#include "desk/windows/InicioQt.h"
#include "desk/windows/JanelaDeTrabalho.h"
#include "desk/windows/Mesa.h"
#include "desk/windows/PortalDeAparencia.h"
#include "host/Falha.h"
#include "services/ComandosDeCopia.h"
#include "services/Conferidor.h"
#include "services/Relogio.h"

#include <QApplication>

#include <sys/stat.h>

#include <cstdio>
#include <functional>
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

Inicio FazInicio(const std::filesystem::path &dados, Preferencias &preferencias, ConectaServidor rede = {})
{
    return Inicio(dados, preferencias, Agora, FazAmostra(Agora), RestauraNaTela, std::move(rede));
}

int Cria(const LinhaDeComando &linha, Preferencias &preferencias)
{
    ExigeRegistroDaqui(linha.Dados, preferencias);
    RegistroNovo novo = linha.Novo;
    novo.Senha = LeSenha(std::cin);
    FazInicio(linha.Dados, preferencias).Cria(novo);
    std::printf("O registro foi criado em %s.\n", CaminhoDoRegistro(linha.Dados).c_str());
    return 0;
}

int Comanda(const LinhaDeComando &linha, const Preferencias &preferencias)
{
    ExigeRegistroDaqui(linha.Dados, preferencias);
    const RegistroConhecido conhecido = rede::RegistroDe(linha.Dados, preferencias);
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

// What the desk is left for, besides its end: another registry, or a copy that takes the place of this one once nobody
// works on it.
struct Adiante {
    std::optional<LugarDoTrabalho> Lugar;
    std::optional<std::string> Copia;
};

// What the menus and the clock do with the registry as a whole.
void PreparaAtos(Mesa &mesa, const Inicio &inicio, const Ref<Servicos> &servicos, Preferencias &preferencias,
                 Adiante &adiante)
{
    if (inicio.Lugar().Servidor) {
        mesa.DefineAtos(AtosNoServidor([&mesa] { return mesa.Hospedeiro()->Servico(); }));
        return;
    }
    AtosDoRegistro atos = FazAtosDoRegistro(inicio.Registro().string(), Agora);
    if (servicos->Tipo() != TipoDeRegistro::Amostra) {
        atos.Restaura = [&adiante](const std::string &escolhida) { adiante.Copia = escolhida; };
    }
    mesa.DefineAtos(std::move(atos));
    mesa.DefineCuidados(CuidadosDoDia(inicio.Registro().string(), *servicos, preferencias, Agora));
}

int Trabalha(const LinhaDeComando &linha, Preferencias &preferencias)
{
    ConexaoQt conexao(preferencias);
    InicioQt pessoa;
    Inicio inicio = FazInicio(linha.Dados, preferencias, FazRede(conexao));
    std::filesystem::path pedido = linha.Registro;
    bool novaAmostra = linha.OQue == LinhaDeComando::Ato::Amostra;
    Adiante adiante;
    if (linha.Servidor) {
        adiante.Lugar = LugarDoTrabalho{linha.Servidor, "", ""};
    }
    const auto abre = [&]() -> Ref<Servicos> {
        const std::filesystem::path arquivo = std::exchange(pedido, {});
        if (std::exchange(novaAmostra, false)) {
            return inicio.CriaAmostra([&](double parte) { pessoa.Progresso(parte); });
        }
        if (const auto lugar = std::exchange(adiante.Lugar, std::nullopt)) {
            return inicio.AbreLugar(*lugar, pessoa);
        }
        return arquivo.empty() ? inicio.Abre(pessoa) : inicio.AbreArquivo(arquivo, pessoa);
    };
    for (;;) {
        int codigo = 0;
        {
            const Ref<Servicos> servicos = abre();
            if (!servicos || !inicio.Confere(pessoa)) {
                return 0;
            }
            const DiretorioDeTrabalho diretorio(inicio.Diretorio());
            const auto agora = conexao.RelogioDe(inicio.Lugar(), [] { return Agora().Local; });
            Mesa mesa(servicos, diretorio.Caminho(), agora, preferencias);
            PreparaAtos(mesa, inicio, servicos, preferencias, adiante);
            mesa.DefineLugar(inicio.Lugar(), conexao, [&](const LugarDoTrabalho &outro) { adiante.Lugar = outro; });
            mesa.show();
            if (mesa.PedeEntrada()) {
                codigo = QCoreApplication::exec();
            } else if (!adiante.Lugar) {
                return 0;
            }
        }
        if (adiante.Lugar) {
            continue;
        }
        const auto copia = std::exchange(adiante.Copia, std::nullopt);
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
