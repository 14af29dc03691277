#pragma once

#include <QStringList>

class QWidget;

// What of a window as it is drawn cannot be read well: texts whose colour stands out too little from what is behind
// them, 4.5 to 1 or 3 to 1 where they are disabled; colours of selections, links and examples likewise; icons that are
// hardly seen.
QStringList PoucoContraste(QWidget &janela);
