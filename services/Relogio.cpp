#include "services/Relogio.h"

#include <QDateTime>

namespace mesa {

Instante Agora()
{
    const QDateTime agora = QDateTime::currentDateTime();
    return {DataDe(agora.date().day(), agora.date().month(), agora.date().year(), agora.time().hour(),
                   agora.time().minute(), agora.time().second()),
            agora.offsetFromUtc() / 60};
}

} // namespace mesa
