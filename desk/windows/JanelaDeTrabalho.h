#pragma once

#include "desk/host/AtosDoRegistro.h"

#include <QDialog>

#include <atomic>
#include <optional>
#include <thread>

class QLabel;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;

namespace mesa {

// Runs a work on the whole registry in a thread of its own, shows how far it is and, in the end, what came of it, which
// can be saved.
class JanelaDeTrabalho : public QDialog {
  public:
    // frase: what is being done. ato: runs in that thread.
    JanelaDeTrabalho(const QString &titulo, const QString &frase, std::function<ResultadoDoAto(const Segue &)> ato,
                     QWidget *dono);
    ~JanelaDeTrabalho() override;

    // What came of it; nothing while it runs, and when it failed.
    const std::optional<ResultadoDoAto> &Resultado() const { return m_Resultado; }

    void reject() override;

  private:
    void Comeca();
    void Mostra(double parte, const QString &oQue);
    void Termina(const ResultadoDoAto &resultado);
    void Acaba(const QString &frase);
    void Para();
    // What is saved.
    QString Relatorio() const;

    std::function<ResultadoDoAto(const Segue &)> m_Ato;
    std::optional<ResultadoDoAto> m_Resultado;
    bool m_Acabou = false;
    std::atomic<bool> m_Desistiu = false;
    std::thread m_Trabalho;
    QLabel *m_Frase;
    QLabel *m_Parte;
    QProgressBar *m_Progresso;
    QPlainTextEdit *m_Achados;
    QPushButton *m_Salvar;
    QPushButton *m_Fechar;
};

} // namespace mesa
