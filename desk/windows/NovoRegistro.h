#pragma once

#include "desk/host/Inicio.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace mesa {

class CampoDeSenha;

// Takes what a new registry begins with. Accepted once it was made.
class NovoRegistro : public QDialog {
  public:
    // faz: makes it, or says what stands against it.
    explicit NovoRegistro(std::function<std::optional<ProblemaDoRegistroNovo>(const RegistroNovo &)> faz);

  private:
    void Tenta();
    RegistroNovo Informado() const;
    void Mostra(const ProblemaDoRegistroNovo &problema);

    std::function<std::optional<ProblemaDoRegistroNovo>(const RegistroNovo &)> m_Faz;
    QLineEdit *m_CodCliente;
    QLineEdit *m_Cliente;
    QComboBox *m_Estado;
    QPlainTextEdit *m_Setores;
    QLineEdit *m_Usuario;
    QLineEdit *m_Nome;
    CampoDeSenha *m_Senha;
    CampoDeSenha *m_Repetida;
    QLabel *m_Aviso;
};

} // namespace mesa
