#pragma once

#include <QString>

#include <initializer_list>

class QBoxLayout;
class QLabel;
class QPushButton;
class QWidget;

namespace mesa {

// What the desk's own dialogs have in common.

// Mark of the desk, a title and a sentence.
QWidget *FazCabeca(const QString &titulo, const QString &frase, QWidget *dono);
// Where a window says what is wrong.
QLabel *FazAviso(QWidget *dono);
// Says it there; the window grows as far as the text needs.
void MostraAviso(QLabel &aviso, const QString &texto);
// A text that is read, not interpreted.
QLabel *FazTexto(const QString &nome, const QString &texto, QWidget *dono);
QPushButton *FazBotao(const QString &nome, const QString &texto, QWidget *dono);
// A question with no as what a hurried person answers.
bool PerguntaSimNao(const QString &pergunta, QWidget *dono);
// What has to be mended, and what is good to know.
void AvisaEmCaixa(const QString &frase, QWidget *dono);
void InformaEmCaixa(const QString &frase, QWidget *dono);
// At the right, in one row.
QBoxLayout *EmLinha(std::initializer_list<QPushButton *> botoes);

} // namespace mesa
