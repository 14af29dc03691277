#pragma once

#include "host/AfericaoED.h"
#include "host/Colecao.h"
#include "host/Data.h"
#include "host/Ref.h"
#include "sensors/clsAfericao.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

class clsSensor;

// The calibrations of a sensor, inactive ones included, by position from 1 or by key.
class clsListaAfericoes : public Objeto {
  public:
    std::string_view NomeTipo() const override { return "clsListaAfericoes"; }

    // Empties the list for good, as does the end of the list.
    void Finaliza();

    // Fault 91 after Finaliza.
    std::int32_t Count() const;
    // Fault 9 for a position out of range, 5 for an unknown key.
    Ref<clsAfericao> Item(std::int32_t Index) const;
    Ref<clsAfericao> Item(const std::string &Index) const;
    // The first, in the order of the list, that fulfils a condition; Nothing when there is none.
    template <class Condicao> Ref<clsAfericao> Primeira(Condicao &&condicao) const
    {
        const Ref<clsAfericao> *achada =
            m_Colecao->Primeiro([&](const Ref<clsAfericao> &afericao) { return condicao(*afericao); });
        return achada != nullptr ? *achada : nullptr;
    }
    // Each creates a calibration at the end, with a key that this list has not given before. Fault 6 after key 32767.
    Ref<clsAfericao> Add(const std::string &sNumero, const std::string &sMarca, Data dtVerif, Data dtVenc,
                         double dNroCertif);
    Ref<clsAfericao> AddAfericaoED(const Ref<AfericaoED> &cAfericaoED);
    // A copy, with its Alterado; the argument stays as it is.
    Ref<clsAfericao> AddAfericao(const Ref<clsAfericao> &cAfericao);
    void AddAll(const Ref<clsListaAfericoes> &cListaAfericoes);
    // AddAfericaoED of each.
    void AddAllED(const Colecao<Ref<AfericaoED>> &afericoes);
    // Takes the calibration out and ends it.
    void Remove(std::int32_t Index);
    void Remove(const std::string &Index);
    // The calibrations leave without being ended: one that a caller holds keeps its Sensor. Keys restart at 1.
    void Clear();

    // Written by the module only.
    void DefineSensor(RefFraca<clsSensor> sensor) noexcept { m_Sensor = std::move(sensor); }

  private:
    // Of the calibration with a key; fault 5 if there is none.
    std::int32_t Posicao(const std::string &chave) const;
    void Retira(std::int32_t posicao);
    // These give the new calibration where it is in the list, so that loading and copying many make no more references
    // than the list's own.
    template <class... Origem> const Ref<clsAfericao> &Acrescenta(const Origem &...origem);
    const Ref<clsAfericao> &AcrescentaED(const Ref<AfericaoED> &ed);
    const Ref<clsAfericao> &AcrescentaCopia(const Ref<clsAfericao> &origem);

    RefFraca<clsSensor> m_Sensor;
    std::int16_t m_Contador = 0; // of the last key
    // Without keys: a calibration knows the number of its own.
    Ref<Colecao<Ref<clsAfericao>>> m_Colecao = Novo<Colecao<Ref<clsAfericao>>>();
};
