#include "desk/windows/CampoDeSenha.h"

#include <utility>

namespace mesa {

CampoDeSenha::CampoDeSenha(const QString &nome, QWidget *dono) : QLineEdit(dono)
{
    setObjectName(nome);
    setEchoMode(QLineEdit::Password);
    setInputMethodHints(Qt::ImhHiddenText | Qt::ImhNoPredictiveText | Qt::ImhSensitiveData);
}

CampoDeSenha::~CampoDeSenha()
{
    Limpa();
}

Segredo CampoDeSenha::Senha() const
{
    QString digitada = text();
    return Segredo::Toma(digitada);
}

void CampoDeSenha::Limpa()
{
    QString digitada = text();
    setText(QString()); // now only this one holds it
    Segredo::Toma(digitada);
}

} // namespace mesa
