#include "services/Resumo.h"

#include <QCryptographicHash>

namespace mesa {

std::string Resumo(const QByteArray &octetos)
{
    return QCryptographicHash::hash(octetos, QCryptographicHash::Sha256).toHex().toStdString();
}

} // namespace mesa
