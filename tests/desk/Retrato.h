#pragma once

#include <QString>
#include <QStringList>

class QWidget;

namespace mesa {
class JanelaForm;
}

// What is wrong with a window of a form as it stands: texts that are cut, widgets over one another or outside of their
// parent, controls that are seen without a widget or the other way round, fields of a container out of line, an order
// of Tab that is not the controls', what a screen reader would not tell, a window smaller than what is in it or larger
// than a small screen.
QStringList Defeitos(mesa::JanelaForm &janela);
// The same of any other window, as far as it has no controls; its order of Tab is that of reading.
QStringList DefeitosDaJanela(QWidget &janela);

// Lets the layouts settle and puts a picture of the window into the build folder.
void Fotografa(QWidget &janela, const QString &nome);
