#pragma once

#include <QString>
#include <QStringList>

class QWidget;

// What a screen reader could not tell of a window as it stands, read from the toolkit's accessibility tree: of whatever
// takes the keyboard or shows something its role, its name in Portuguese, its state, its value and the key that leads
// to it, of a table its headings, its cells and its current row, and names that are the same twice in one group.
QStringList DefeitosDoLeitor(QWidget &janela);

// What the reader says of each piece of the window, one a line, in the order of the tree: for tests, and for the one
// who reads that something was not as expected.
QStringList LidoNa(QWidget &janela);

// What was told at once since the list was cleared, each as "description: name".
QStringList &Anunciados();

// Where the Tab key does not go the way of a reader's eyes: from top to bottom and from left to right, in each group
// before the next one.
QStringList TabForaDaLeitura(const QWidget &janela);

// Widgets whose picture is the same with the keyboard and without it. The window has to be active, and its keyboard
// goes through all of them.
QStringList FocoInvisivel(QWidget &janela);
