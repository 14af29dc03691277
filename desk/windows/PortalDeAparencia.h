#pragma once

#include "desk/windows/Aparencia.h"

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QObject>

#include <functional>

namespace mesa {

// What the desktop's portal says of the colours: asked for at once, when the portal comes back, and heard when it
// changes. Without a portal, or while it says nothing that is understood, there is no wish.
class PortalDeAparencia : public QObject {
    Q_OBJECT

  public:
    PortalDeAparencia(const QDBusConnection &conexao, std::function<void(DesejoDeCores)> mudou);

  private Q_SLOTS:
    void Ouve(const QString &grupo, const QString &chave, const QDBusVariant &valor);

  private:
    QDBusPendingCall Pede() const;
    void Toma(const QDBusPendingCall &resposta);

    QDBusConnection m_Conexao;
    std::function<void(DesejoDeCores)> m_Mudou;
};

} // namespace mesa
