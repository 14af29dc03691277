#pragma once

#include "host/AfericaoED.h"
#include "host/Data.h"
#include "host/Ref.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

class clsSensor;

// The values of a calibration, which a copy takes over whole.
struct DadosDaAfericao {
    double NroIntAfericao = 0;  // given by the service; not above 0: never saved
    std::string Numero;         // of INMETRO
    std::string Marca;          // number of the certificate or of the declaration
    Data DataVerificacao;       // first day of the period
    Data DataVencimento;        // last day of the period
    bool Ativo = true;          // false once removed while the service knows it
    double NroIntImgCertif = 0; // number of the stored document, 0 for none
    std::uint8_t TipoAfer = 0;  // 2: declaration of conformity; anything else: INMETRO calibration
    std::string PortDimel;      // ordinance, number "/" year
    bool Alterado = false;      // since it was loaded
};

// A calibration of a sensor: one validity period, and the document that proves it.
class clsAfericao final : public Objeto, public DadosDaAfericao {
  public:
    clsAfericao() = default;
    // As a list creates it, with a sensor and the number of its key: from the values of Add, from a record that
    // travelled, or as a copy.
    clsAfericao(const RefFraca<clsSensor> &sensor, std::int16_t numeroChave, const std::string &numero,
                const std::string &marca, Data verificacao, Data vencimento, double nroIntImgCertif);
    clsAfericao(const RefFraca<clsSensor> &sensor, std::int16_t numeroChave, const AfericaoED &ed);
    clsAfericao(const RefFraca<clsSensor> &sensor, std::int16_t numeroChave, const clsAfericao &origem);
    std::string_view NomeTipo() const override { return "clsAfericao"; }

    // Drops Sensor, as does the end of the record.
    void Finaliza() noexcept;

    // The sensor it belongs to, in a list or not; never owned.
    Ref<clsSensor> Sensor() const;
    // Key in its list, "A1"; empty outside a list.
    std::string Chave() const;
    // The number in it; 0 outside a list.
    std::int16_t NumeroChave() const noexcept { return m_NumeroChave; }

    Ref<AfericaoED> ToAfericaoED() const;

    // Written by the module only.
    void DefineSensor(RefFraca<clsSensor> sensor) noexcept { m_Sensor = std::move(sensor); }

  private:
    RefFraca<clsSensor> m_Sensor;
    std::int16_t m_NumeroChave = 0;
};
