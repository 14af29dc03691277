#include "desk/host/AtosDoRegistro.h"
#include "desk/host/DiretorioDeTrabalho.h"
#include "desk/host/FazAmostra.h"
#include "desk/host/Inicio.h"
#include "desk/tour/Roteiro.h"
#include "desk/tour/ServidorAoLado.h"
#include "desk/tour/Tela.h"
#include "desk/windows/Aparencia.h"
#include "desk/windows/ConexaoQt.h"
#include "desk/windows/InicioQt.h"
#include "desk/windows/LugarDasJanelas.h"
#include "desk/windows/Mesa.h"
#include "services/Relogio.h"

#include <QApplication>
#include <QThread>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

namespace mesa {

namespace {

// A server that does not answer is not asked again for long before the person is.
constexpr std::chrono::milliseconds PorConta(1000);

// What the person does, in a thread of its own: it begins before the first window, and the tour's end is the program's.
class Guia {
  public:
    explicit Guia(const std::function<void()> &caminho)
        : m_Fio(QThread::create([this, caminho] {
              try {
                  caminho();
                  m_Saida = 0;
              } catch (const std::exception &diferenca) {
                  std::fprintf(stderr, "%s\n", diferenca.what());
              } catch (...) {
                  std::fprintf(stderr, "%s\n", FalhaCorrente().Descricao.c_str());
              }
              std::fflush(stdout);
          }))
    {
        QObject::connect(m_Fio.get(), &QThread::finished, qApp, [this] {
            if (m_Saida != 0) {
                std::_Exit(m_Saida); // modal windows may still be waiting for a person
            }
            QCoreApplication::exit(m_Saida);
        });
        m_Fio->start();
    }
    Guia(const Guia &) = delete;
    Guia &operator=(const Guia &) = delete;
    ~Guia() { m_Fio->wait(); }

  private:
    int m_Saida = 1;
    std::unique_ptr<QThread> m_Fio;
};

std::filesystem::path Dados(const Tela &tela)
{
    return std::filesystem::path(tela.Pasta.toStdString()) / "dados";
}

int Trabalha(const Inicio &inicio, const Ref<Servicos> &servicos, Preferencias &preferencias, ConexaoQt *conexao,
             const std::function<void()> &depois)
{
    const DiretorioDeTrabalho diretorio(inicio.Diretorio());
    Mesa mesa(
        servicos, diretorio.Caminho(),
        [conexao] { return conexao == nullptr ? Agora().Local : conexao->Relogio().Agora(); }, preferencias);
    if (conexao != nullptr) {
        mesa.DefineLugar(inicio.Lugar(), *conexao, [](const LugarDoTrabalho &) {});
        mesa.DefineAtos(AtosNoServidor([&mesa] { return mesa.Hospedeiro()->Servico(); }));
    }
    mesa.show();
    depois();
    mesa.PedeEntrada();
    return QCoreApplication::exec();
}

void Mostra(const std::filesystem::path &registro, const Tela &tela, ServidorAoLado *servidor)
{
    Roteiro roteiro(registro, tela.Pasta, servidor);
    roteiro.Percorre();
    std::puts(roteiro.Resumo().toUtf8().constData());
}

int PercorreAqui(const Tela &tela, Preferencias &preferencias, std::optional<Guia> &guia)
{
    Inicio inicio(Dados(tela), preferencias, Agora, FazAmostra(Agora), {});
    const Ref<Servicos> servicos = inicio.CriaAmostra([](double) {});
    const std::filesystem::path registro = CaminhoDoRegistro(inicio.Diretorio());
    return Trabalha(inicio, servicos, preferencias, nullptr,
                    [&, registro] { guia.emplace([&tela, registro] { Mostra(registro, tela, nullptr); }); });
}

int PercorreNaRede(const Tela &tela, Preferencias &preferencias, std::optional<Guia> &guia)
{
    ConexaoQt conexao(preferencias);
    rede::Insistencia insistencia;
    insistencia.PorConta = PorConta;
    Inicio inicio(Dados(tela), preferencias, Agora, FazAmostra(Agora), {}, FazRede(conexao, insistencia));
    InicioQt pessoa;
    guia.emplace([&tela] {
        ServidorAoLado servidor(tela.Servidor, tela.Pasta + "/servidor");
        servidor.Comeca();
        Mostra(servidor.Registro(), tela, &servidor);
    });
    const Ref<Servicos> servicos = inicio.Abre(pessoa);
    if (servicos.Nada()) {
        throw Diferenca("O começo foi deixado sem um registro");
    }
    return Trabalha(inicio, servicos, preferencias, &conexao, [] {});
}

// Drives the windows through the whole job on a registry of its own. The exit status says whether all was as it should
// be.
int Percorre(const Tela &tela)
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    Preferencias preferencias(std::filesystem::path(tela.Pasta.toStdString()) / "preferencias.ini");
    preferencias.DefineAspecto({.Cores = tela.Escura ? Tema::Escuro : Tema::Claro});
    LugarDasJanelas::DaAplicacao(); // from the first window on
    const Aparencia aparencia(preferencias);
    std::optional<Guia> guia;
    try {
        return (tela.Servidor.isEmpty() ? PercorreAqui : PercorreNaRede)(tela, preferencias, guia);
    } catch (...) {
        std::fprintf(stderr, "%s\n", FalhaCorrente().Descricao.c_str());
        std::_Exit(1); // the guide may be waiting for windows that do not come any more
    }
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
