#pragma once

#include <QDialog>
#include <QString>

namespace mesa {

// What this program is, and what to tell whoever helps with it.
class JanelaSobre : public QDialog {
  public:
    // texto: the versions and places, which can be copied.
    JanelaSobre(const QString &texto, QWidget *dono);
};

} // namespace mesa
