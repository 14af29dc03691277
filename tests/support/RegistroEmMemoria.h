#pragma once

#include "tests/support/HostRoteirizado.h"

#include <cstdint>
#include <map>
#include <string>
#include <utility>

// The remote services over a registry in memory, for journeys. Serves every operation of EquiptoRN, and the report of
// RelatorioRN, on the host given; it has to live as long as that host is called.
//
// Records come in and go out as deep copies. A change merges by internal number: members that were not written keep
// what was stored, and a sensor, calibration, limit or day without a number is new and gets the next one of its kind.
// The service alone decides whether an equipment is active, and who changed it when, by the host's clock. An unknown
// number is refused. Deactivated limits and days are listed no more; deactivated sensors and calibrations are.
// The local table VOREQUIPTO takes over the registry when the module tells that it changed.
class RegistroEmMemoria {
  public:
    explicit RegistroEmMemoria(HostRoteirizado &host);
    RegistroEmMemoria(const RegistroEmMemoria &) = delete;
    RegistroEmMemoria &operator=(const RegistroEmMemoria &) = delete;

    std::int32_t TamanhoPagina = 50;
    double Operador = 77;

    // Stores a copy, as "inclui" does, with its sensors and their calibrations; returns its number.
    std::int32_t Poe(const Ref<EquiptoED> &equipto);
    std::int32_t PoeLimite(const Ref<LimiteDifED> &limite);
    std::int32_t PoeDia(const Ref<DiaEspecificoED> &dia);
    void PoeCertificado(std::int32_t codOat, const std::string &serie, const std::string &documento);

    // The stored record itself; Nothing when there is none.
    Ref<EquiptoED> Equipamento(std::int32_t nroIntEquip) const;
    Ref<LimiteDifED> Limite(std::int32_t nroInt) const;
    Ref<DiaEspecificoED> Dia(std::int32_t nroInt) const;
    const std::map<std::int32_t, Ref<EquiptoED>> &Equipamentos() const noexcept { return m_Equipamentos; }
    const std::map<std::int32_t, Ref<LimiteDifED>> &Limites() const noexcept { return m_Limites; }
    const std::map<std::int32_t, Ref<DiaEspecificoED>> &Dias() const noexcept { return m_Dias; }

  private:
    Resposta Inclui(const EquiptoED &pedido);
    Resposta Altera(const EquiptoED &pedido);
    Resposta Consulta(const EquiptoED &pedido, bool completa) const;
    Resposta Lista(const ListaEquiptoED &pedido) const;
    Resposta DefineAtivo(const EquiptoED &pedido, std::uint8_t ativo);
    Resposta AfericaoVigente(const ConsultaAfericaoED &pedido) const;
    Resposta ListaLimites(const LimiteDifED &pedido) const;
    Resposta ListaDias(const DiaEspecificoED &pedido) const;
    Resposta AlteraLimites(const EquiptoED &pedido);
    Resposta AlteraDia(const DiaEspecificoED &pedido);
    Resposta Certificado(const RelatorioAfericaoED &pedido) const;

    void FundeSensores(EquiptoED &guardado, const EquiptoED &pedido);
    void Assina(EquiptoED &equipto) const;
    void PublicaTabela();

    HostRoteirizado &m_Host;
    std::map<std::int32_t, Ref<EquiptoED>> m_Equipamentos;
    std::map<std::int32_t, Ref<LimiteDifED>> m_Limites;
    std::map<std::int32_t, Ref<DiaEspecificoED>> m_Dias;
    std::map<std::pair<std::int32_t, std::string>, std::string> m_Certificados;
    std::int32_t m_UltimoEquip = 0;
    std::int32_t m_UltimoSensor = 0;
    double m_UltimaAfericao = 0;
    std::int32_t m_UltimoLimite = 0;
    std::int32_t m_UltimoDia = 0;
};
