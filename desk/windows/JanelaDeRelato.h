#pragma once

#include <QDialog>
#include <QString>
#include <QStringList>

namespace mesa {

// A sentence, with more of them in a list, which can be saved as a text.
class JanelaDeRelato : public QDialog {
  public:
    JanelaDeRelato(const QString &titulo, const QString &frase, const QStringList &linhas, QWidget *dono);

  private:
    void Salva();

    QString m_Frase;
    QStringList m_Linhas;
};

// Asks where, and writes the text there; beside first, so that what was there stays whole when it cannot be written.
void SalvaTexto(const QString &titulo, const QString &nome, const QString &texto, QWidget *dono);

} // namespace mesa
