#pragma once

#include <sys/resource.h>

#include <csignal>

// No file grows beyond this size, for its scope: a write that the system refuses.
class DiscoApertado {
  public:
    explicit DiscoApertado(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_Era);
        const rlimit agora{bytes, m_Era.rlim_max};
        setrlimit(RLIMIT_FSIZE, &agora);
    }
    DiscoApertado(const DiscoApertado &) = delete;
    DiscoApertado &operator=(const DiscoApertado &) = delete;
    ~DiscoApertado() { setrlimit(RLIMIT_FSIZE, &m_Era); }

  private:
    rlimit m_Era{};
};
