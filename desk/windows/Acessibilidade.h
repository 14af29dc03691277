#pragma once

class QWidget;

namespace mesa {

// What the toolkit does not tell a screen reader by itself: that options are options though their controls see to it
// that one excludes the others, and that the pages of a document are one. Once, before there are windows.
void PreparaAcessibilidade();

// A text has come up in a window that wants to be heard at once.
void Anuncia(QWidget &texto);

} // namespace mesa
