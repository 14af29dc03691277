#pragma once

#include <string>
#include <vector>

class QPrinter;

namespace mesa {

// The printers of this computer, by name.
std::vector<std::string> ImpressorasInstaladas();
// The one to print on, of the whole program; empty for the system's own.
void DefineImpressora(const std::string &nome);
// Makes that one the printer, before a dialog of printing shows it; one that is gone gives way to the system's own.
void PreparaImpressora(QPrinter &impressora);

} // namespace mesa
