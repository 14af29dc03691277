#pragma once

#include "host/Valor.h"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

// A SELECT of the kind that the module sends to the local database:
//   SELECT * | column {, column} FROM table [WHERE condition {AND condition}] [ORDER BY column {, column}]
// with conditions of two operands around = <> < > <= >=; an operand is a column, UCASE(column), a whole number or a
// text between apostrophes. Anything else is fault 3075.
struct ConsultaSQL {
    struct Coluna {
        std::string Nome;
        bool Maiusculas; // UCASE
    };
    using Operando = std::variant<Coluna, double, std::string>;
    struct Condicao {
        Operando Esquerda;
        std::string Operador;
        Operando Direita;
    };

    std::vector<std::string> Colunas; // none: all
    std::string Tabela;
    std::vector<Condicao> Condicoes;
    std::vector<std::string> Ordem;

    static ConsultaSQL De(const std::string &sql);
};
