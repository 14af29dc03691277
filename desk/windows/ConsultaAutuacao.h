#pragma once

#include "desk/host/Autuacao.h"

#include <QWidget>

#include <functional>
#include <vector>

class QComboBox;
class QDate;
class QDateEdit;
class QLabel;
class QLineEdit;
class QCheckBox;

namespace mesa {

// A small sibling module: asks the registry for the equipment of a notice of infraction, and shows its seven answers.
class ConsultaAutuacao : public QWidget {
  public:
    // hoje: for which it asks at first. criaConsulta: makes a query service of the registry. borda: shows what comes
    // out of it. fazDossie: makes one of the equipment in the answer.
    ConsultaAutuacao(const QDate &hoje, std::function<Ref<CVorEquip>()> criaConsulta,
                     std::function<void(const std::function<void()> &)> borda,
                     std::function<void(const PedidoDeDossie &)> fazDossie, QWidget *dono);

  private:
    QWidget *FazPergunta();
    QWidget *FazResposta();
    QWidget *FazCertificado();
    void Age(const std::function<void()> &acao);
    void MudaPergunta();
    void Mostra();
    PerguntaDaAutuacao Pergunta() const;

    Autuacao m_Autuacao;
    std::function<void(const std::function<void()> &)> m_Borda;
    std::function<void(const PedidoDeDossie &)> m_FazDossie;
    QCheckBox *m_ComData;
    QDateEdit *m_Data;
    QLineEdit *m_Codigo;
    QComboBox *m_Tipo;
    QLabel *m_Resultado;
    std::vector<QLineEdit *> m_Respostas;
    QLineEdit *m_CodOat = nullptr;
};

} // namespace mesa
