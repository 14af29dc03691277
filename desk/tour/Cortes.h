#pragma once

#include <QStringList>

class QWidget;

namespace mesa {

// What a person cannot read whole in a window as it stands. A text is measured in its font and held against the place
// in which it is drawn. Words that wrap are whole, and so is what stands outside of the seen part of something that
// scrolls. A text that is cut may stand where all of it is in the tip, in places only in which any text may come: cells
// and headings of tables, whose columns a person sets; fields and combos, in which a person moves; pages and windows
// that are called after what is in them; texts that are made to give way (TextoQueCede); and the file dialog's columns.
QStringList TextosCortados(const QWidget &janela);

// Widgets over one another, or outside of what they stand in.
QStringList ForaDoLugar(const QWidget &janela);

} // namespace mesa
