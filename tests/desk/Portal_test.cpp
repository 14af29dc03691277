#include "desk/windows/PortalDeAparencia.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QDeadlineTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <vector>

using namespace mesa;

namespace {

constexpr const char *Servico = "org.freedesktop.portal.Desktop";
constexpr const char *Caminho = "/org/freedesktop/portal/desktop";
constexpr const char *Interface = "org.freedesktop.portal.Settings";
constexpr const char *Grupo = "org.freedesktop.appearance";
constexpr const char *Chave = "color-scheme";
constexpr int MuitoTempo = 60000; // milliseconds

// A bus of the test's own.
class Barramento {
  public:
    Barramento()
    {
        QFile ajustes(m_Pasta.filePath("barramento.conf")); // in which nothing is started by itself
        EXPECT_TRUE(ajustes.open(QIODevice::WriteOnly));
        ajustes.write("<busconfig><type>session</type><listen>unix:path=" + m_Pasta.filePath("soquete").toUtf8() +
                      "</listen><policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
                      "<allow eavesdrop=\"true\"/><allow own=\"*\"/>"
                      "</policy></busconfig>");
        ajustes.close();
        m_Daemon.start("dbus-daemon", {"--config-file=" + ajustes.fileName(), "--nofork", "--print-address"});
        m_Daemon.waitForReadyRead(MuitoTempo);
        m_Endereco = QString::fromUtf8(m_Daemon.readLine()).trimmed();
    }
    ~Barramento()
    {
        m_Daemon.kill();
        m_Daemon.waitForFinished();
    }
    const QString &Endereco() const { return m_Endereco; }

  private:
    QTemporaryDir m_Pasta;
    QProcess m_Daemon;
    QString m_Endereco;
};

// The desktop's side of the portal: answers with what it was told to.
class PortalFalso : public QDBusVirtualObject {
  public:
    explicit PortalFalso(const QString &endereco) : m_Conexao(QDBusConnection::connectToBus(endereco, "portal falso"))
    {
        m_Conexao.registerVirtualObject(Caminho, this);
    }
    ~PortalFalso() override
    {
        m_Conexao.unregisterObject(Caminho);
        m_Conexao = QDBusConnection("");
        QDBusConnection::disconnectFromBus("portal falso");
    }

    void Aparece() { m_Conexao.registerService(Servico); }
    void Some() { m_Conexao.unregisterService(Servico); }
    void Anuncia(const QString &grupo, const QString &chave, const QVariant &valor)
    {
        QDBusMessage sinal = QDBusMessage::createSignal(Caminho, Interface, "SettingChanged");
        sinal << grupo << chave << QVariant::fromValue(QDBusVariant(valor));
        m_Conexao.send(sinal);
    }
    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &pedido, const QDBusConnection &conexao) override
    {
        if (pedido.member() != "Read" || pedido.arguments() != QVariantList({QString(Grupo), QString(Chave)})) {
            return false;
        }
        if (Resposta.isEmpty()) {
            conexao.send(pedido.createErrorReply("org.freedesktop.portal.Error.NotFound", "nada"));
        } else {
            conexao.send(pedido.createReply(Resposta));
        }
        return true;
    }

    QVariantList Resposta;

  private:
    QDBusConnection m_Conexao;
};

QVariant Embrulhado(const QVariant &valor)
{
    return QVariant::fromValue(QDBusVariant(valor));
}

class PortalTeste : public testing::Test {
  protected:
    PortalTeste() { EXPECT_FALSE(barramento.Endereco().isEmpty()); }
    ~PortalTeste() override
    {
        portal.reset();
        conexao = QDBusConnection("");
        QDBusConnection::disconnectFromBus("mesa");
    }
    void Ouve()
    {
        portal =
            std::make_unique<PortalDeAparencia>(conexao, [this](DesejoDeCores desejo) { ouvidos.push_back(desejo); });
    }
    void EsperaOuvidos(std::size_t quantos)
    {
        const QDeadlineTimer prazo(MuitoTempo);
        while (ouvidos.size() < quantos && !prazo.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
        }
        EXPECT_EQ(ouvidos.size(), quantos);
    }

    Barramento barramento;
    PortalFalso desktop{barramento.Endereco()};
    QDBusConnection conexao = QDBusConnection::connectToBus(barramento.Endereco(), "mesa");
    std::unique_ptr<PortalDeAparencia> portal;
    std::vector<DesejoDeCores> ouvidos;
};

using Desejos = std::vector<DesejoDeCores>;

} // namespace

TEST_F(PortalTeste, NoPortal_NoWishAndNoWait)
{
    Ouve();
    EXPECT_EQ(ouvidos, Desejos());
}

TEST(PortalSemBarramento, NoBus_NoWish)
{
    int ouvidos = 0;
    const PortalDeAparencia portal(QDBusConnection("sem barramento"), [&](DesejoDeCores) { ++ouvidos; });
    EXPECT_EQ(ouvidos, 0);
}

TEST_F(PortalTeste, PortalIsThere_WishIsKnownBeforeTheFirstWindow)
{
    QThread outro; // that of the desktop, which answers while this one waits
    outro.start();
    desktop.Resposta = {Embrulhado(Embrulhado(1U))};
    desktop.Aparece();
    desktop.moveToThread(&outro);
    Ouve();
    EXPECT_EQ(ouvidos, Desejos{DesejoDeCores::Escuro});
    QMetaObject::invokeMethod(
        &desktop, [&, aqui = QThread::currentThread()] { desktop.moveToThread(aqui); }, Qt::BlockingQueuedConnection);
    outro.quit();
    outro.wait();
}

TEST_F(PortalTeste, PortalAppears_IsAskedForWhatItSays)
{
    Ouve();
    desktop.Resposta = {Embrulhado(Embrulhado(1U))};
    desktop.Aparece();
    EsperaOuvidos(1);
    EXPECT_EQ(ouvidos, Desejos{DesejoDeCores::Escuro});
}

TEST_F(PortalTeste, SettingChanged_IsHeardAtOnce_AndNothingElse)
{
    Ouve();
    desktop.Resposta = {Embrulhado(2U)};
    desktop.Aparece();
    EsperaOuvidos(1);
    desktop.Anuncia(Grupo, "accent-color", 1U);
    desktop.Anuncia("org.gnome.desktop.interface", Chave, 1U);
    desktop.Anuncia(Grupo, Chave, 1U);
    desktop.Anuncia(Grupo, Chave, 0U);
    EsperaOuvidos(3);
    EXPECT_EQ(ouvidos, (Desejos{DesejoDeCores::Claro, DesejoDeCores::Escuro, DesejoDeCores::Nenhum}));
}

TEST_F(PortalTeste, Nonsense_IsNoWish)
{
    Ouve();
    desktop.Resposta = {Embrulhado(QString("prefer-dark"))};
    desktop.Aparece();
    EsperaOuvidos(1);
    desktop.Anuncia(Grupo, Chave, 77U);
    desktop.Anuncia(Grupo, Chave, QByteArray("\x01"));
    desktop.Anuncia(Grupo, Chave, -1);
    EsperaOuvidos(4);
    EXPECT_EQ(ouvidos, Desejos(4, DesejoDeCores::Nenhum));
}

TEST_F(PortalTeste, PortalGoesAndComesBack_TheWishStaysUntilItAnswers)
{
    Ouve();
    desktop.Resposta = {Embrulhado(1U)};
    desktop.Aparece();
    EsperaOuvidos(1);
    desktop.Some();
    desktop.Resposta.clear(); // at first it knows nothing
    desktop.Aparece();
    desktop.Anuncia(Grupo, Chave, 2U);
    EsperaOuvidos(2);
    EXPECT_EQ(ouvidos, (Desejos{DesejoDeCores::Escuro, DesejoDeCores::Claro}));
}
