#pragma once

#include "desk/host/AtosDoRegistro.h"
#include "desk/host/Preferencias.h"
#include "services/Servicos.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>

namespace mesa {

enum class Cuidado { Copia, Cabeca, Conferencia };

// What a registry is due once a day by the clock and the user's settings: a copy beside it, the head of its history in
// the directory of choice, and the whole check. Samples and what may only be looked at are checked, and no more.
class CuidadosDoDia {
  public:
    struct Trabalho {
        Cuidado Qual{};
        // Runs on any thread; what went wrong is among the findings.
        std::function<ResultadoDoAto(const Segue &)> Faz;
    };

    // registro: the file of the services' registry.
    CuidadosDoDia(std::string registro, const Servicos &servicos, Preferencias &preferencias, Relogio agora);

    // What is to be done now, each tried once a day. ociosa: nobody uses the desk; the check waits for that.
    std::optional<Trabalho> Proximo(bool ociosa);
    // It was given up on the way: it is due again.
    void Desiste(Cuidado qual) { m_Olhados.erase(qual); }

  private:
    bool Devido(Cuidado qual) const;
    Trabalho Prepara(Cuidado qual) const;

    std::string m_Registro;
    std::string m_Identificador;
    bool m_Guarda; // there is something to keep, and a place for it
    Preferencias &m_Preferencias;
    Relogio m_Agora;
    std::map<Cuidado, std::int32_t> m_Olhados; // the day
};

} // namespace mesa
