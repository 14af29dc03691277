#pragma once

#include "host/HostServices.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class Geral;

// The older road to the central system: a transaction is sent through the session while the form that waits for it is
// disabled. The form is enabled again in every case, before a failure reaches the caller.
class TransacoesGeral {
  public:
    explicit TransacoesGeral(const Geral &geral) : m_Geral(geral) {}
    TransacoesGeral(const TransacoesGeral &) = delete;
    TransacoesGeral &operator=(const TransacoesGeral &) = delete;

    // What the session writes to a flag stays with the operation. b2 goes nowhere, except in EnviaRajadaH90.
    bool EnviaTransacao(const Ref<IForm> &frm, Ref<ITransacao> &oTrans, bool b1, bool b2) const;
    bool EnviaTransacao2(const Ref<IForm> &frm, Ref<ITransacao> &oTrans, bool b1, bool b2) const;
    bool EnviaTransacaoH90(const Ref<IForm> &frm, Ref<ITransacao> &oTrans, bool b1, bool b2, bool b3) const;
    // A burst answers in several pieces; the caller sends until RajadaTerminou.
    std::int16_t EnviaRajada(const Ref<IForm> &frm, Ref<ITransacao> &oTrans, bool b1, bool b2) const;
    std::int16_t EnviaRajada2(const Ref<IForm> &frm, Ref<ITransacao> &oTrans, std::vector<std::string> &aDados,
                              bool b2) const;
    bool EnviaRajadaH90(const Ref<IForm> &frm, Ref<ITransacao> &oTrans, std::vector<std::string> &aDados,
                        bool b2) const;
    bool RajadaTerminou(const Ref<ITransacao> &oTrans) const;

  private:
    const Geral &m_Geral;
};
