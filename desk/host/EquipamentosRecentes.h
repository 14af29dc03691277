#pragma once

#include "host/Data.h"
#include "host/IMDB.h"
#include "services/SessaoServico.h"
#include "tela/ILembrancas.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace mesa {

// An equipment that a person opened or included lately.
struct EquipamentoRecente {
    std::int32_t NroIntEquip = 0;
    std::string Codigo;
    std::string TipoEquip;
    std::string Cliente;
    bool Ativo = true;
    Data Quando;

    bool operator==(const EquipamentoRecente &) const = default;
};

// Brings it to what the registry says now: the local database may be older. False with the reason in recusa when it is
// not to be seen any more.
bool Renova(SessaoServico &sessao, EquipamentoRecente &qual, std::string &recusa);

// Those of one person in one registry. Only their numbers and moments are remembered: what they are is what the local
// database says, and one that it does not have may not be seen any more.
class EquipamentosRecentes {
  public:
    static constexpr std::size_t Maximo = 10;

    explicit EquipamentosRecentes(Ref<ILembrancas> lembrancas) : m_Lembrancas(std::move(lembrancas)) {}

    void Viu(std::int32_t nroIntEquip, Data quando);
    // The latest first.
    std::vector<EquipamentoRecente> Todos(IMDB &banco) const;

  private:
    struct Visto {
        std::int32_t NroIntEquip;
        Data Quando;
    };
    std::vector<Visto> Vistos() const;

    Ref<ILembrancas> m_Lembrancas;
};

} // namespace mesa
