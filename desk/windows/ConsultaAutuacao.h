#pragma once

#include "search/CVorEquip.h"

#include <QWidget>

#include <functional>
#include <vector>

class QComboBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QCheckBox;

namespace mesa {

// A small sibling module: asks the registry for the equipment of a notice of infraction, and shows its seven answers.
class ConsultaAutuacao : public QWidget {
  public:
    // equipamentos: the registry's query service. borda: shows what comes out of it.
    ConsultaAutuacao(Ref<CVorEquip> equipamentos, std::function<void(const std::function<void()> &)> borda,
                     QWidget *dono);

  private:
    void Seleciona();
    void Busca();
    void Imprime();
    void MostraRespostas(const QString &resultado);
    Data DataDaInfracao() const;
    std::string Tipo() const;

    Ref<CVorEquip> m_Equipamentos;
    std::function<void(const std::function<void()> &)> m_Borda;
    QCheckBox *m_ComData;
    QDateEdit *m_Data;
    QLineEdit *m_Codigo;
    QComboBox *m_Tipo;
    QLabel *m_Resultado;
    std::vector<QLineEdit *> m_Respostas;
    QLineEdit *m_CodOat;
};

} // namespace mesa
