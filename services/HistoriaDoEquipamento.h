#pragma once

#include "host/EquiptoED.h"
#include "services/Banco.h"
#include "services/Instante.h"
#include "services/Vigencia.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace mesa {

// An entry of the history, as far as it tells what a row was and who made it so.
struct EntradaDaHistoria {
    std::int64_t Nro = 0;
    std::int64_t Quando = 0; // UTC, and the clock of the place where there is no offset
    std::optional<std::int32_t> Fuso = {};
    std::int32_t Operador = 0; // 0 for the system itself
    std::string Entidade = {};
    std::int64_t Numero = 0;
    std::string Acao = {};
    std::string Motivo = {};
    std::string Depois = {}; // the row
    std::string Elo = {};

    // By the clock of the place.
    std::int64_t Local() const;
    bool Ate(const Instante &instante) const;
};

// All that was ever written about an equipment and its rows, in order.
std::vector<EntradaDaHistoria> HistoriaDoEquipamento(Banco &banco, std::int32_t nroIntEquip);
// How many of them were known at a moment: those up to the last of that moment or before it, and all that were written
// before that one, whatever the clock showed.
std::size_t ConhecidasEm(const std::vector<EntradaDaHistoria> &entradas, const Instante &quando);

// The calibration in force on any day, by rows and changes that were known.
class VigenciasConhecidas {
  public:
    VigenciasConhecidas(std::vector<AfericaoDeSensor> afericoes, std::vector<MudancaDeAtividade> doEquipamento,
                        std::map<std::int64_t, std::vector<MudancaDeAtividade>> dosSensores)
        : m_Afericoes(std::move(afericoes)),
          m_DoEquipamento(std::move(doEquipamento)),
          m_DosSensores(std::move(dosSensores))
    {
    }

    Vigencia NoDia(std::int32_t dia) const;

  private:
    std::vector<AfericaoDeSensor> m_Afericoes;
    std::vector<MudancaDeAtividade> m_DoEquipamento;
    std::map<std::int64_t, std::vector<MudancaDeAtividade>> m_DosSensores;
};

// The rows of an equipment as a number of entries left them. Raises a Recusa when the entries do not tell to which
// sensor a calibration belongs.
class EstadoConhecido {
  public:
    // The first `quantas` of the entries, which have to stay there.
    EstadoConhecido(const std::vector<EntradaDaHistoria> &entradas, std::size_t quantas);

    // Whether some of it comes from a registry whose history had no offsets.
    bool SemFuso() const;
    // With all its rows, those that are not active too.
    Ref<EquiptoED> Equipamento() const;
    VigenciasConhecidas Vigencias() const;
    // The entry that left the row so; null when there is no such row.
    const EntradaDaHistoria *EntradaDe(const std::string &entidade, std::int64_t numero) const;

  private:
    // An entry of each row, by the row's number.
    using PorLinha = std::map<std::int64_t, const EntradaDaHistoria *>;

    static const PorLinha &De(const std::map<std::string, PorLinha> &linhas, const std::string &entidade);
    template <class R> ListaDe<R> Lista(const std::string &entidade) const;
    template <class R, class Ordem> ListaDe<R> ListaEmOrdem(const std::string &entidade, Ordem ordem) const;
    ListaDe<SensorED> Sensores() const;
    std::vector<AfericaoDeSensor> Afericoes() const;

    const std::vector<EntradaDaHistoria> &m_Entradas;
    std::size_t m_Quantas;
    std::map<std::string, PorLinha> m_Linhas; // by kind
    std::map<std::string, PorLinha> m_Posteriores;
};

} // namespace mesa
