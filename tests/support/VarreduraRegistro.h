#pragma once

#include "tests/support/HostTeste.h"
#include "tests/support/RegistroEmMemoria.h"
#include "tests/support/Varredura.h"

#include <cstdint>
#include <string>

// A journey over the registry in memory, whose records are what a failure must not change half.
class JornadaComRegistro : public Jornada {
  public:
    explicit JornadaComRegistro(HostRoteirizado &host) : Jornada(host), m_Registro(host) {}

    std::string Estado() const override;

  protected:
    void LogaGeral() { m_Geral = ::LogaGeral(m_Host); }
    // Logs on, and makes what the shell creates on first use.
    void LogaComServicos();

    RegistroEmMemoria m_Registro;
    Ref<Geral> m_Geral;
};

// An equipment of client Autoridade das Estradas de Rodagem with one sensor, calibrated for the year 2026.
Ref<EquiptoED> EquiptoCalibrado(const std::string &tipo, std::uint8_t medidor, const std::string &codigo);
