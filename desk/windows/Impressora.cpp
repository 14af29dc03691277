#include "desk/windows/Impressora.h"

#include "services/TextoQt.h"

#include <QPrinter>
#include <QPrinterInfo>

namespace mesa {

namespace {

QString &Escolhida()
{
    static QString nome;
    return nome;
}

} // namespace

std::vector<std::string> ImpressorasInstaladas()
{
    std::vector<std::string> nomes;
    for (const QString &nome : QPrinterInfo::availablePrinterNames()) {
        nomes.push_back(S(nome));
    }
    return nomes;
}

void DefineImpressora(const std::string &nome)
{
    Escolhida() = Q(nome);
}

void PreparaImpressora(QPrinter &impressora)
{
    if (QPrinterInfo::availablePrinterNames().contains(Escolhida())) {
        impressora.setPrinterName(Escolhida());
    }
}

} // namespace mesa
