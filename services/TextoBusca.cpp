#include "services/TextoBusca.h"

#include <QString>

namespace mesa {

std::string TextoBusca(const std::string &texto)
{
    const QString decomposto = QString::fromStdString(texto).normalized(QString::NormalizationForm_KD);
    QString semAcentos;
    semAcentos.reserve(decomposto.size());
    for (const QChar letra : decomposto) {
        if (letra.category() != QChar::Mark_NonSpacing) {
            semAcentos.append(letra);
        }
    }
    return semAcentos.toCaseFolded().toStdString();
}

std::string FimDaFaixa(const std::string &inicio)
{
    return inicio + "\U0010FFFF";
}

} // namespace mesa
