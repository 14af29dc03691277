#include "services/Relogio.h"

#include <time.h>

#include <atomic>

namespace mesa {

// The toolkit looks for the zone anew each time that it is asked; here that is once a second.
Instante Agora()
{
    static std::atomic<time_t> olhou = 0;
    const time_t relogio = ::time(nullptr);
    if (olhou.exchange(relogio) != relogio) {
        ::tzset();
    }
    tm agora{};
    ::localtime_r(&relogio, &agora);
    return {DataDe(agora.tm_mday, agora.tm_mon + 1, agora.tm_year + 1900, agora.tm_hour, agora.tm_min, agora.tm_sec),
            static_cast<std::int32_t>(agora.tm_gmtoff / 60)};
}

} // namespace mesa
