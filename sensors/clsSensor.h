#pragma once

#include "host/Ref.h"
#include "host/SensorED.h"
#include "sensors/clsListaAfericoes.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

class clsEquipto;

// What an edit can change of a sensor.
struct LocalDoSensor {
    std::string LocalInfr;      // address printed on the notification
    std::int32_t CodLograd = 0; // street; above 0: there is a structured address
    std::int32_t EndCep = 0;
    std::int32_t EndNro = 0;
    std::string EndCompl;
    std::string EndDescr;
    std::string SentidoVia;
};

// The values of a sensor, which a copy takes over whole.
struct DadosDoSensor : LocalDoSensor {
    std::int32_t NroIntSensor = 0; // given by the service; below 1: never saved
    std::int16_t NroSensor = 0;    // inside the equipment, from 1
    bool Ativo = true;             // false once removed while the service knows it
};

// A measuring point of an equipment, with its calibrations.
class clsSensor : public Objeto, public DadosDoSensor {
  public:
    ~clsSensor() override;
    std::string_view NomeTipo() const override { return "clsSensor"; }

    // Ends the calibrations' list and drops Equipto, as does the end of the record.
    void Finaliza();

    // The equipment it belongs to, in a list or not; never owned.
    Ref<clsEquipto> Equipto() const;
    // Key in its list, "S1"; empty outside a list. A clone has that of its source.
    const std::string &Chave() const noexcept { return m_Chave; }
    bool Alterado = false; // it or one of its calibrations, since it was loaded

    // Created when first read.
    Ref<clsListaAfericoes> ListaAfericoes();

    // With the changed calibrations only.
    Ref<SensorED> ToSensorED();
    // A working copy, in no list, whose Alterado is false; its calibrations keep theirs.
    Ref<clsSensor> getClone();
    // Takes over what an edit can change of a working copy. The calibrations become new objects with new keys.
    void Atualiza(const Ref<clsSensor> &cSensor);

    // Written by the module only.
    void DefineEquipto(RefFraca<clsEquipto> equipto) noexcept { m_Equipto = std::move(equipto); }
    void DefineDados(const DadosDoSensor &dados) { static_cast<DadosDoSensor &>(*this) = dados; }
    void DefineDados(const SensorED &ed);
    void DefineChave(std::string chave) noexcept { m_Chave = std::move(chave); }

  private:
    RefFraca<clsEquipto> m_Equipto;
    std::string m_Chave;
    Ref<clsListaAfericoes> m_ListaAfericoes;
};
