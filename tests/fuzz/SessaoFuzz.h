#pragma once

#include "shell/Geral.h"
#include "tests/support/HostRoteirizado.h"

// A scripted host with the shell logged on, while one input runs. The end takes the module away; a problem that the
// host has seen is a broken property then.
class SessaoFuzz {
  public:
    SessaoFuzz();
    SessaoFuzz(const SessaoFuzz &) = delete;
    SessaoFuzz &operator=(const SessaoFuzz &) = delete;
    ~SessaoFuzz();

    const Ref<HostRoteirizado> host = Novo<HostRoteirizado>();
    const Ref<Geral> &Shell() const { return m_Geral; }

  private:
    Ref<Geral> m_Geral;
};
