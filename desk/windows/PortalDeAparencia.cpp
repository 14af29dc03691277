#include "desk/windows/PortalDeAparencia.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>

#include <utility>

namespace mesa {

namespace {

constexpr int Espera = 250; // milliseconds: the first window is not kept waiting for longer
constexpr const char *Servico = "org.freedesktop.portal.Desktop";
constexpr const char *Caminho = "/org/freedesktop/portal/desktop";
constexpr const char *Interface = "org.freedesktop.portal.Settings";
constexpr const char *Grupo = "org.freedesktop.appearance";
constexpr const char *Chave = "color-scheme";
constexpr int MaisEmbrulhos = 4; // a portal wraps the value once or twice

DesejoDeCores DesejoDe(QVariant valor)
{
    for (int vez = 0; vez < MaisEmbrulhos && valor.userType() == qMetaTypeId<QDBusVariant>(); ++vez) {
        valor = valor.value<QDBusVariant>().variant();
    }
    if (valor.typeId() != QMetaType::UInt) {
        return DesejoDeCores::Nenhum;
    }
    switch (valor.toUInt()) {
    case 1:
        return DesejoDeCores::Escuro;
    case 2:
        return DesejoDeCores::Claro;
    default:
        return DesejoDeCores::Nenhum;
    }
}

} // namespace

PortalDeAparencia::PortalDeAparencia(const QDBusConnection &conexao, std::function<void(DesejoDeCores)> mudou)
    : m_Conexao(conexao),
      m_Mudou(std::move(mudou))
{
    if (!m_Conexao.isConnected()) {
        return;
    }
    qRegisterMetaType<QDBusVariant>(); // without its name there is no way into the slot
    m_Conexao.connect(Servico, Caminho, Interface, "SettingChanged", this, SLOT(Ouve(QString, QString, QDBusVariant)));
    auto *vigia = new QDBusServiceWatcher(Servico, m_Conexao, QDBusServiceWatcher::WatchForRegistration, this);
    connect(vigia, &QDBusServiceWatcher::serviceRegistered, this, [this] {
        auto *espera = new QDBusPendingCallWatcher(Pede(), this);
        connect(espera, &QDBusPendingCallWatcher::finished, this, [this, espera] {
            Toma(*espera);
            espera->deleteLater();
        });
    });
    QDBusPendingCall primeira = Pede();
    primeira.waitForFinished();
    Toma(primeira);
}

QDBusPendingCall PortalDeAparencia::Pede() const
{
    QDBusMessage pedido = QDBusMessage::createMethodCall(Servico, Caminho, Interface, "Read");
    pedido << Grupo << Chave;
    return m_Conexao.asyncCall(pedido, Espera);
}

// A portal that has no answer leaves the wish as it was.
void PortalDeAparencia::Toma(const QDBusPendingCall &resposta)
{
    if (!resposta.isError() && !resposta.reply().arguments().isEmpty()) {
        m_Mudou(DesejoDe(resposta.reply().arguments().constFirst()));
    }
}

void PortalDeAparencia::Ouve(const QString &grupo, const QString &chave, const QDBusVariant &valor)
{
    if (grupo == Grupo && chave == Chave) {
        m_Mudou(DesejoDe(valor.variant()));
    }
}

} // namespace mesa
