#pragma once

#include "host/EquiptoED.h"
#include "services/Operacao.h"

#include <cstdint>
#include <string>

namespace mesa {

// An equipment as it is stored.
struct EquipamentoGravado {
    Ref<EquiptoED> Registro; // without lists
    std::int64_t Versao = 0;

    bool Ativo() const;
    // For sentences: "O equipamento R-1".
    std::string Nome() const;
};

// The equipment with their sensors and calibrations. Whether an equipment is active is the service's own affair: the
// byte in the record is taken for sensors and calibrations only.
class ServicoEquipamentos {
  public:
    explicit ServicoEquipamentos(Operacao &operacao) : m_Operacao(operacao) {}

    // Members left unset are stored as of a fresh record; the client is the operator's. Answers what was stored.
    Ref<EquiptoED> Inclui(const EquiptoED &pedido);
    // Members left unset keep what was stored.
    void Altera(EquiptoED &pedido);
    // With all active sensors and calibrations.
    Ref<EquiptoED> Consulta(const EquiptoED &pedido);
    Ref<EquiptoED> ConsultaSimples(const EquiptoED &pedido);
    void Desativa(EquiptoED &pedido);
    void Reativa(EquiptoED &pedido);

    // The operator's equipment of that number; refused when there is none.
    EquipamentoGravado Acha(std::int32_t nroIntEquip) const;

  private:
    // With its sensors and calibrations.
    Ref<EquiptoED> Completo(std::int32_t nroIntEquip);
    // antes: as it was stored; null for a new one.
    void ConfereRegistro(const EquiptoED &equipto, const EquiptoED *antes) const;
    void ConfereImutaveis(const EquiptoED &pedido, const EquipamentoGravado &gravado) const;
    void ConfereCodigoLivre(const EquiptoED &equipto) const;
    void DefineAtivo(EquiptoED &pedido, std::uint8_t ativo);
    void Assina(EquiptoED &equipto) const;
    void Atualiza(const EquiptoED &equipto, std::int64_t versao);
    void Registra(const char *acao, std::int32_t numero, std::int64_t versao);

    Operacao &m_Operacao;
};

} // namespace mesa
