#pragma once

#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

// Without the privilege to write wherever one likes, for its scope.
class SemPrivilegio {
  public:
    SemPrivilegio() : m_Era(geteuid())
    {
        if (m_Era == 0 && seteuid(65534) != 0) {
            throw std::runtime_error("seteuid");
        }
    }
    SemPrivilegio(const SemPrivilegio &) = delete;
    SemPrivilegio &operator=(const SemPrivilegio &) = delete;
    ~SemPrivilegio()
    {
        if (seteuid(m_Era) != 0) {
            std::abort();
        }
    }

  private:
    uid_t m_Era;
};
