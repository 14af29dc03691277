#pragma once

#include <QIcon>
#include <QString>

class QLabel;

namespace mesa {

// The desk's own icon of that name. Its lines are drawn anew for the palette in force each time, so that they are seen
// on any. One that there is not is empty.
QIcon Icone(const QString &nome);
bool HaIcone(const QString &nome);
// The icon as the picture of a label, which follows the palette.
void PoeIcone(QLabel &rotulo, const QString &nome, int lado);

} // namespace mesa
