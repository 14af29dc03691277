#pragma once

#include "desk/services/Operacao.h"
#include "host/SensorED.h"

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace mesa {

// The sensors of one equipment with their calibrations, as part of the operation that reads or changes the equipment.
class ServicoSensores {
  public:
    // versao: that of the equipment once the operation is confirmed.
    ServicoSensores(Operacao &operacao, std::int32_t nroIntEquip, std::int64_t versao);

    // Stores the sensors sent, and their calibrations: without a number they are new, and members left unset keep what
    // was stored. Byte 2 deactivates. Whether anything changed.
    bool Grava(const ListaDe<SensorED> &sensores);
    // Active ones only, in the order of their numbers.
    ListaDe<SensorED> Ativos() const;

  private:
    struct AfericaoPedida {
        Ref<AfericaoED> Antes; // Nothing for a new one
        Ref<AfericaoED> Depois;
    };

    bool GravaSensor(const SensorED &pedido);
    bool GravaAfericoes(const SensorED &sensor, const ListaDe<AfericaoED> &afericoes);
    AfericaoPedida Funde(const SensorED &sensor, const AfericaoED &pedida) const;
    Ref<SensorED> AchaSensor(std::int32_t numero) const;
    Ref<AfericaoED> AchaAfericao(const SensorED &sensor, double numero) const;
    void Confere(const SensorED &sensor, const SensorED *antes) const;
    void Confere(const AfericaoED &afericao, const AfericaoED *antes) const;
    void ConferePeriodoLivre(const SensorED &sensor, const AfericaoED &afericao) const;
    void Escreve(const SensorED &sensor, AfericaoPedida &pedida);
    // antes, depois: whether it is active, as the records tell it.
    void Registra(const char *entidade, std::int64_t numero, bool existia, std::uint8_t antes, std::uint8_t depois);

    Operacao &m_Operacao;
    std::int32_t m_NroIntEquip;
    std::int64_t m_Versao;
    std::set<std::int64_t> m_Gravadas; // calibrations written in this operation
};

} // namespace mesa
