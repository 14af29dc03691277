#pragma once

#include "host/HostServices.h"

#include <cstdint>
#include <string>
#include <vector>

class Geral;

// Printing through the host's report service, and the age of the local replica.
class RelatoriosGeral {
  public:
    explicit RelatoriosGeral(Geral &geral) : m_Geral(geral) {}
    RelatoriosGeral(const RelatoriosGeral &) = delete;
    RelatoriosGeral &operator=(const RelatoriosGeral &) = delete;

    // vRelatorio: a report's name or a designer object. Always false, whether anything was printed or not.
    // Fault 1033 without a report service.
    bool ImprimirRelatorio(const Valor &vRelatorio, std::vector<std::string> &aParam, bool b1, std::uint8_t n1, bool b2,
                           Ref<Objeto> o1, std::string s1, Ref<Objeto> o2, const Ref<ICursor> &rsDados);

    // Asks the central system for the date of the replica's data: text about it, caption of the action that asks the
    // main server instead (empty for a replica of at most five minutes), and whether to offer that action. bForcar is
    // left alone when the replica is fresh.
    void PesquisaDataUltimaClonagem(std::string &sDadosAte, std::string &sForcar, bool &bForcar);

  private:
    Geral &m_Geral;
};
