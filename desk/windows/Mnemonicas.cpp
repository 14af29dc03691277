#include "desk/windows/Mnemonicas.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QLabel>
#include <QTabWidget>
#include <QToolButton>

namespace {

constexpr const char *DosMenus = "eju";

bool Serve(QChar letra)
{
    return letra.unicode() < 128 && letra.isLetter();
}

} // namespace

Mnemonicas::Mnemonicas()
{
    for (const QChar letra : QString(DosMenus)) {
        m_Tomadas << letra;
    }
}

QChar Mnemonicas::De(const QString &texto)
{
    for (qsizetype onde = texto.indexOf('&'); onde >= 0 && onde + 1 < texto.size(); onde = texto.indexOf('&', onde)) {
        if (texto[onde + 1] != '&') {
            return texto[onde + 1].toLower();
        }
        onde += 2;
    }
    return {};
}

QString Mnemonicas::Marca(const QString &texto, QChar letra)
{
    const qsizetype onde = letra.isNull() ? -1 : texto.indexOf(letra, 0, Qt::CaseInsensitive);
    return onde < 0 ? texto : QString(texto).insert(onde, '&');
}

void Mnemonicas::Toma(const QWidget &janela)
{
    for (const QWidget *widget : janela.findChildren<QWidget *>()) {
        if (qobject_cast<const QToolButton *>(widget)) {
            continue; // of a list, which chooses its letters itself
        }
        if (const auto *botao = qobject_cast<const QAbstractButton *>(widget)) {
            m_Tomadas << De(botao->text());
        } else if (const auto *rotulo = qobject_cast<const QLabel *>(widget)) {
            m_Tomadas << De(rotulo->text());
        } else if (const auto *grupo = qobject_cast<const QGroupBox *>(widget)) {
            m_Tomadas << De(grupo->title());
        } else if (const auto *abas = qobject_cast<const QTabWidget *>(widget)) {
            for (int pagina = 0; pagina < abas->count(); ++pagina) {
                m_Tomadas << De(abas->tabText(pagina));
            }
        }
    }
}

QChar Mnemonicas::Acha(const QString &texto)
{
    QString candidatas;
    for (qsizetype letra = 0; letra < texto.size(); ++letra) {
        if (letra == 0 || texto[letra - 1].isSpace()) {
            candidatas += texto[letra].toLower();
        }
    }
    for (const QChar letra : candidatas + texto.toLower()) {
        if (Serve(letra) && !m_Tomadas.contains(letra)) {
            m_Tomadas << letra;
            return letra;
        }
    }
    return {};
}
