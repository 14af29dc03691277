#pragma once

#include "desk/host/Andamento.h"

#include <QDialog>
#include <QPointer>

class QLabel;
class QProgressBar;
class QPushButton;

namespace mesa {

// The window in which a person sees how far a work is, and gives it up.
class JanelaDeAndamento : public QDialog {
  public:
    JanelaDeAndamento(const QString &frase, bool cancelavel, QWidget *dono);

    // False when the person has given up.
    bool Mostra(double parte, const QString &oQue);
    void reject() override;

  private:
    bool m_Cancelavel;
    bool m_Desistiu = false;
    QLabel *m_Parte;
    QProgressBar *m_Progresso;
    QPushButton *m_Cancelar;
};

class TelaDeAndamento : public ITelaDeAndamento {
  public:
    // dono: what the window stands in front of when no other is.
    explicit TelaDeAndamento(QWidget *dono) : m_Dono(dono) {}
    ~TelaDeAndamento() override { Fecha(); }

    void Abre(const std::string &frase, bool cancelavel) override;
    bool Mostra(double parte, const std::string &oQue) override;
    void Fecha() override;

    // Whether a work is shown now: what a clock would begin has to wait, since the work may be in the middle of
    // anything.
    static bool EmCurso();

  private:
    QPointer<QWidget> m_Dono;
    QPointer<QWidget> m_Antes; // had the keyboard
    bool m_Aberta = false;
    QPointer<JanelaDeAndamento> m_Janela; // the one in front of which it stands may take it along
};

// Runs a work in front of that window.
void FazNaFrente(const QString &frase, bool cancelavel, QWidget *dono,
                 const std::function<void(const Segue &)> &trabalho);

} // namespace mesa
