#include "tests/fuzz/Alvo.h"

#include "host/Texto.h"
#include "services/Codigos.h"
#include "tests/fuzz/Octetos.h"
#include "tests/fuzz/Propriedade.h"

#include <QString>

#include <string>

// The codes of equipment: what is taken can be looked up and be the name of a file, and looks like itself alone.

namespace {

void Qualquer(Octetos &octetos)
{
    const std::string codigo = octetos.Resto();
    if (!mesa::Codigos::Ofende(codigo).empty()) {
        return;
    }
    const QString lido = QString::fromStdString(codigo);
    Exige(lido.toStdString() == codigo, "what is taken is text", codigo);
    Exige(lido.normalized(QString::NormalizationForm_C) == lido, "what is taken is composed", codigo);
    Exige(lido.trimmed() == lido, "what is taken has no blanks at its ends", codigo);
    Exige(codigo.find_first_of("'\"/\\:*?<>|%\r\n\t") == std::string::npos, "what is taken breaks nothing", codigo);
    Exige(mesa::Codigos::Ofende(UCase(codigo)).empty(), "its capitals are taken too", codigo);
}

// Two codes that become the same when their compatible characters are put together are the same.
void Dois(Octetos &octetos)
{
    const std::string um = octetos.Texto(20);
    const std::string outro = octetos.Resto();
    if (!mesa::Codigos::Ofende(um).empty() || !mesa::Codigos::Ofende(outro).empty()) {
        return;
    }
    const auto aparencia = [](const std::string &codigo) {
        return QString::fromStdString(codigo).normalized(QString::NormalizationForm_KC);
    };
    Exige((aparencia(um) == aparencia(outro)) == (um == outro), "what looks the same is the same", um + "|" + outro);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *dados, std::size_t tamanho)
{
    return Despacha(dados, tamanho, {Qualquer, Dois});
}
