#pragma once

#include "services/Segue.h"

class QPdfDocument;
class QPrinter;

namespace mesa {

enum class Impressao { Feita, Cancelada, Falhou };

// Prints what the print dialog has left chosen in the printer: pages, copies and their order. Each page stands in the
// middle of the sheet, turned as the sheet lies, as large as it is when it fits; nothing of it is cut. atual: the page
// that is looked at, from 0.
Impressao ImprimePDF(QPdfDocument &documento, int atual, QPrinter &impressora, const Segue &segue);

} // namespace mesa
