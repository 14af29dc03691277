#pragma once

#include "host/EquiptoED.h"
#include "host/SensorED.h"
#include "services/Operacao.h"
#include "services/RegrasDoTipo.h"

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace mesa {

// The sensors of one equipment with their calibrations, as part of the operation that reads or changes the equipment.
class ServicoSensores {
  public:
    // versao: that of the equipment once the operation is confirmed.
    ServicoSensores(Operacao &operacao, const EquiptoED &equipto, std::int64_t versao);

    // Stores the sensors sent, and their calibrations: without a number they are new, and members left unset keep what
    // was stored. Byte 2 deactivates. Whether anything changed.
    bool Grava(const ListaDe<SensorED> &sensores);
    // Active ones only, in the order of their numbers.
    ListaDe<SensorED> Ativos() const;

  private:
    struct AfericaoPedida {
        Ref<AfericaoED> Antes; // Nothing for a new one
        Ref<AfericaoED> Depois;
        std::int64_t Versao = 1; // that it then has
    };

    struct SensorGravado {
        Ref<SensorED> Antes; // Nothing for a new one
        Ref<SensorED> Depois;
        bool Mudou = false;
    };

    SensorGravado GravaSensor(const SensorED &pedido);
    bool GravaAfericoes(const SensorED &sensor, const ListaDe<AfericaoED> &afericoes);
    AfericaoPedida Funde(const SensorED &sensor, const AfericaoED &pedida) const;
    Ref<SensorED> AchaSensor(std::int32_t numero) const;
    Ref<AfericaoED> AchaAfericao(const SensorED &sensor, double numero) const;
    // antes: as it was stored, null for a new one. What stays as it was is not asked for again.
    void Confere(const SensorED &sensor, const SensorED *antes) const;
    void Confere(const AfericaoED &afericao, const AfericaoED *antes) const;
    void ConfereDatas(const AfericaoED &afericao, const AfericaoED *antes) const;
    void ConfereDocumento(const AfericaoED &afericao) const;
    // The sensors that came to be active, and those that ceased to be, leave a run of numbers from 1.
    void ConfereNumeros(const std::set<std::int32_t> &vindos, const std::set<std::int32_t> &idos) const;
    void ConferePeriodoLivre(const SensorED &sensor, const AfericaoED &afericao) const;
    void Escreve(const SensorED &sensor, AfericaoPedida &pedida);
    // antes, depois: whether it is active, as the records tell it.
    void Registra(const char *entidade, std::int64_t numero, bool existia, std::uint8_t antes, std::uint8_t depois,
                  const std::string &motivo = {});
    std::int64_t VersaoDaAfericao(double numero) const;

    Operacao &m_Operacao;
    std::int32_t m_NroIntEquip;
    std::string m_Codigo;
    std::string m_TipoEquip;
    RegrasDoTipo m_Regras;
    std::int64_t m_Versao;
    std::set<std::int64_t> m_Gravadas; // calibrations written in this operation
};

} // namespace mesa
