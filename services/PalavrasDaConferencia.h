#pragma once

#include "services/Esquema.h"
#include "services/LeitorSQLite.h"

#include <QJsonObject>
#include <QJsonValue>

#include <cstdint>
#include <string>
#include <string_view>

namespace mesa {

// What an entry of the history tells of a change, as far as a sentence needs it.
struct EntradaLida {
    std::int64_t Nro = 0;
    QVariant Quando;
    QVariant Fuso;
    QVariant Operador;
    std::string Acao;
    QVariant Antes;
    std::string Depois;
};

// Rows, columns, values and people of a registry in words. Names come from the history, which is what holds, and not
// from the rows that are in question.
class PalavrasDaConferencia {
  public:
    explicit PalavrasDaConferencia(LeitorSQLite &leitor) : m_Leitor(leitor) {}

    // With its article: "a aferição 123 (sensor 2 do equipamento R-001)".
    std::string Linha(std::string_view tabela, std::int64_t chave);
    // "data de vencimento"
    static std::string Coluna(std::string_view tabela, std::string_view coluna);
    // As a person reads it: "31/12/2027", "\"R-001\"", "sim".
    static std::string Valor(const Esquema::Coluna &coluna, const QJsonValue &valor);
    // "por Ana Souza em 20/11/2026 às 14:32:10"
    std::string Autor(const EntradaLida &entrada);

    // The last entry of a row; Nro 0 without one.
    EntradaLida Ultima(std::string_view entidade, std::int64_t chave);

    static QJsonObject Objeto(const std::string &texto);
    // Columns of an entry as LeEntrada takes them, from that one on.
    static QString ColunasDaEntrada();
    static EntradaLida LeEntrada(const LinhasLidas &linhas, int primeira);

  private:
    QJsonObject Retrato(std::string_view entidade, std::int64_t chave);
    std::string DoEquipamento(const QJsonObject &parte);
    std::string DoUsuario(const QJsonObject &parte);

    LeitorSQLite &m_Leitor;
};

// With a capital letter.
std::string ComecoDeFrase(std::string texto);

} // namespace mesa
