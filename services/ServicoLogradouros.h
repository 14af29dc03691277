#pragma once

#include "services/LogradouroED.h"
#include "services/Operacao.h"

#include <cstdint>
#include <string>

namespace mesa {

// The streets. A code that was given never means another street, and no street ever goes away.
class ServicoLogradouros {
  public:
    explicit ServicoLogradouros(Operacao &operacao) : m_Operacao(operacao) {}

    Ref<ListaLogradourosED> Lista(const ListaLogradourosED &pedido);
    Ref<LogradouroED> Inclui(const LogradouroED &pedido);
    Ref<LogradouroED> Altera(const LogradouroED &pedido);
    Ref<ImportacaoED> Importa(const ImportacaoED &pedido);

    // Refuses a code that no street has, or one that is no longer active.
    void ConfereOferecido(std::int32_t codLograd) const;

  private:
    // The street of the code, as stored; refuses when there is none.
    Ref<LogradouroED> Acha(std::int32_t codLograd) const;
    // Another street of the municipality with the same name, district and postal code, accents and case ignored;
    // Nothing when there is none.
    Ref<LogradouroED> Igual(const LogradouroED &logradouro) const;
    void RecusaIgual(const LogradouroED &logradouro) const;
    void Grava(LogradouroED &novo, const std::string &motivo);
    void Registra(const char *acao, const LogradouroED &depois, const std::string &motivo = {});

    Operacao &m_Operacao;
};

} // namespace mesa
