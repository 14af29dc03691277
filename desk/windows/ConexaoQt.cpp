#include "desk/windows/ConexaoQt.h"

#include "desk/host/CompletaEntrada.h"
#include "desk/host/MinhaSenha.h"
#include "desk/host/ServicosNoServidor.h"
#include "desk/host/Titulo.h"
#include "desk/host/Versao.h"
#include "desk/windows/Dialogos.h"
#include "desk/windows/Entrada.h"
#include "desk/windows/Escolha.h"
#include "desk/windows/FichaQt.h"
#include "desk/windows/TelaDeAndamento.h"
#include "host/Falha.h"
#include "services/TextoQt.h"

#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QThread>
#include <QVBoxLayout>

#include <chrono>
#include <utility>

namespace mesa {

namespace {

// In front of which a person is asked, and to which the keyboard comes back.
class NaFrente {
  public:
    NaFrente() : m_Foco(QApplication::focusWidget()) {}
    NaFrente(const NaFrente &) = delete;
    NaFrente &operator=(const NaFrente &) = delete;
    ~NaFrente()
    {
        if (!m_Foco.isNull()) {
            m_Foco->activateWindow();
            m_Foco->setFocus();
        }
    }
    static QWidget *Dono()
    {
        QWidget *modal = QApplication::activeModalWidget();
        return modal != nullptr ? modal : QApplication::activeWindow();
    }

  private:
    QPointer<QWidget> m_Foco;
};

// What showed the wait gives way while a person is asked.
class SemAEspera {
  public:
    SemAEspera()
    {
        if (QWidget *modal = QApplication::activeModalWidget();
            modal != nullptr && modal->objectName() == "Andamento") {
            m_Espera = modal;
            modal->hide();
        }
    }
    SemAEspera(const SemAEspera &) = delete;
    SemAEspera &operator=(const SemAEspera &) = delete;
    ~SemAEspera()
    {
        if (!m_Espera.isNull()) {
            m_Espera->show();
        }
    }

  private:
    QPointer<QWidget> m_Espera;
};

// While something is waited for that shows nothing.
class Ampulheta {
  public:
    Ampulheta() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    Ampulheta(const Ampulheta &) = delete;
    Ampulheta &operator=(const Ampulheta &) = delete;
    ~Ampulheta() { QApplication::restoreOverrideCursor(); }
};

} // namespace

bool ConexaoQt::NasJanelas()
{
    return qApp != nullptr && QThread::currentThread() == qApp->thread();
}

void ConexaoQt::Espera(const std::function<void(const Segue &)> &espera)
{
    if (!NasJanelas()) {
        espera([](double, const std::string &) { return true; }); // what runs elsewhere is shown by its own window
        return;
    }
    FazNaFrente("Esperando a resposta do servidor.", /*cancelavel=*/true, NaFrente::Dono(), espera);
}

bool ConexaoQt::TentaDeNovo(const std::string &frase)
{
    if (!NasJanelas() || m_Servicos.Nada()) {
        return false;
    }
    DefineLigada(false);
    const NaFrente frente;
    const SemAEspera semAEspera;
    Escolha<bool> janela("SemResposta", false, NaFrente::Dono());
    auto *tudo = new QVBoxLayout(&janela);
    tudo->addWidget(FazCabeca("O servidor não respondeu", Q(frase), &janela));
    tudo->addWidget(
        FazTexto("oQueFica",
                 "O que foi digitado e ainda não foi gravado continua na janela. Se a operação já tiver sido "
                 "feita, ela não é feita outra vez.",
                 &janela));
    QPushButton *deNovo = FazBotao("deNovo", "&Tentar de novo", &janela);
    QPushButton *desistir = FazBotao("desistir", "&Desistir", &janela);
    deNovo->setDefault(true);
    janela.Responde(deNovo, true);
    QObject::connect(desistir, &QPushButton::clicked, &janela, &QDialog::reject);
    tudo->addLayout(EmLinha({deNovo, desistir}));
    deNovo->setFocus();
    return janela.Pergunta();
}

std::optional<bool> ConexaoQt::EhOMesmo(const std::string &frase)
{
    if (!NasJanelas()) {
        return std::nullopt;
    }
    const NaFrente frente;
    const SemAEspera semAEspera;
    Escolha<std::optional<bool>> janela("JaPedido", std::nullopt, NaFrente::Dono());
    auto *tudo = new QVBoxLayout(&janela);
    tudo->addWidget(FazCabeca("Isto já foi pedido", Q(frase), &janela));
    tudo->addWidget(FazTexto("oQueMuda",
                             "O mesmo pedido, se já tiver sido gravado, não é gravado outra vez. Um pedido novo é "
                             "gravado, mesmo que seja igual.",
                             &janela));
    QPushButton *mesmo = FazBotao("mesmo", "É o &mesmo pedido", &janela);
    QPushButton *novo = FazBotao("novo", "É um pedido &novo", &janela);
    QPushButton *voltar = FazBotao("voltar", "&Voltar", &janela);
    janela.Responde(mesmo, true);
    janela.Responde(novo, false);
    QObject::connect(voltar, &QPushButton::clicked, &janela, &QDialog::reject);
    tudo->addLayout(EmLinha({mesmo, novo, voltar}));
    voltar->setDefault(true); // neither of both for who hurries
    voltar->setFocus();
    return janela.Pergunta();
}

Ref<SessaoServico> ConexaoQt::EntraDeNovo(const Operador &quem, const std::string &frase)
{
    if (!NasJanelas() || m_Servicos.Nada()) {
        return nullptr;
    }
    const NaFrente frente;
    const SemAEspera semAEspera;
    Entrada entrada(m_Servicos.Alvo(), m_Preferencias, quem, NaFrente::Dono());
    entrada.TerminouASessao(Q(frase));
    entrada.exec();
    const Ref<SessaoServico> nova = entrada.Sessao();
    if (nova.Nada()) {
        return nullptr;
    }
    const auto avisa = [](const std::string &aviso) { AvisaEmCaixa(Q(aviso), NaFrente::Dono()); };
    const auto troca = [&] {
        Ficha ficha = FichaDaMinhaSenha(nova, true);
        FichaQt janela(
            ficha,
            [&](const std::function<void()> &acao) {
                try {
                    acao();
                } catch (...) {
                    avisa(FalhaCorrente().Descricao);
                }
            },
            NaFrente::Dono());
        return janela.exec() == QDialog::Accepted;
    };
    return CompletaEntrada(*nova, avisa, troca) ? nova : nullptr;
}

void ConexaoQt::DefineLigada(bool ligada)
{
    if (NasJanelas() && ligada != m_Ligada) {
        m_Ligada = ligada;
        m_Mudou.dispara();
    }
}

std::function<Data()> ConexaoQt::RelogioDe(const LugarDoTrabalho &lugar, std::function<Data()> daqui)
{
    return lugar.Servidor ? [this] { return m_Relogio.Agora(); } : std::move(daqui);
}

ConectaServidor FazRede(ConexaoQt &conexao, rede::Insistencia insistencia)
{
    insistencia.TentaDeNovo = [&conexao](const std::string &frase) { return conexao.TentaDeNovo(frase); };
    insistencia.EhOMesmo = [&conexao](const std::string &frase) { return conexao.EhOMesmo(frase); };
    insistencia.Relogio = [&conexao](const Data &agora) { conexao.Relogio().Acerta(agora); };
    insistencia.Espera = [&conexao](const std::function<void(const Segue &)> &espera) { conexao.Espera(espera); };
    return {[&conexao](const rede::Endereco &servidor) {
                const Ampulheta ampulheta;
                std::string digital;
                conexao.Espera([&](const Segue &segue) {
                    digital = rede::DigitalDoServidor(servidor, std::chrono::seconds(5), segue);
                });
                return digital;
            },
            [&conexao, insistencia](const rede::Endereco &servidor, const rede::Confianca &confianca) {
                const Ampulheta ampulheta;
                const Ref<Servicos> delas =
                    rede::Conecta(servidor, confianca, std::string(TituloDosAvisos) + " " + Versao(), insistencia);
                conexao.Usa(delas);
                return Novo<ServicosNoServidor>(delas, conexao);
            }};
}

} // namespace mesa
