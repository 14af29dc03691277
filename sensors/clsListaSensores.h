#pragma once

#include "host/Colecao.h"
#include "host/Deposito.h"
#include "host/Ref.h"
#include "host/SensorED.h"
#include "sensors/clsSensor.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

class clsEquipto;

// The sensors of an equipment, inactive ones included, by position from 1 or by key.
class clsListaSensores : public Objeto {
  public:
    ~clsListaSensores() override;
    std::string_view NomeTipo() const override { return "clsListaSensores"; }

    // Ends every sensor and empties the list for good, as does the end of the list.
    void Finaliza();

    // Fault 91 after Finaliza.
    std::int32_t Count() const;
    // Fault 9 for a position out of range, 5 for an unknown key.
    Ref<clsSensor> Item(std::int32_t Index) const;
    Ref<clsSensor> Item(const std::string &Index) const;
    // Each creates a sensor at the end, with a key that this list has not given before. Fault 6 after key 32767.
    Ref<clsSensor> Add(std::int16_t iNroSensor, const std::string &sLocalInfr);
    Ref<clsSensor> AddSensorED(const Ref<SensorED> &cSensorED);
    // A copy, calibrations and Alterado included; the argument stays as it is.
    Ref<clsSensor> AddSensor(const Ref<clsSensor> &cSensor);
    // Takes the sensor out and ends it.
    void Remove(std::int32_t Index);
    void Remove(const std::string &Index);
    // Ends every sensor. Keys restart at 1.
    void Clear();

    // Written by the module only.
    void DefineEquipto(RefFraca<clsEquipto> equipto) noexcept { m_Equipto = std::move(equipto); }

  private:
    template <class Indice> void Retira(const Indice &indice);

    RefFraca<clsEquipto> m_Equipto;
    Ref<Colecao<Ref<clsSensor>>> m_Colecao = Novo<Colecao<Ref<clsSensor>>>();
    std::int16_t m_Contador = 0; // of the last key
    // A reload ends all calibrations before it creates about as many.
    Deposito<clsAfericao>::Uso m_UsoAfericoes;
};
