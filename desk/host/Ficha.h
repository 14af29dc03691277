#pragma once

#include "services/Segredo.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace mesa {

// What a window takes from a person, told without one.

enum class EspecieDoCampo {
    Texto,
    Inteiro,
    Senha,
    Escolha, // one of the options
    Procura, // one of many options, found by a piece of their texts
    Marca,   // "1" yes, "2" no
    Linhas   // more than one line of text
};

struct OpcaoDoCampo {
    std::string Valor;
    std::string Texto;
};

// Characters that the column of the registry takes.
std::size_t MaximoDe(std::string_view tabela, std::string_view coluna);

struct CampoDaFicha {
    std::string Nome;
    std::string Rotulo;
    EspecieDoCampo Especie = EspecieDoCampo::Texto;
    std::string Valor{};
    std::size_t Maximo = 0; // characters; 0 for any number
    std::vector<OpcaoDoCampo> Opcoes{};
    bool Travado = false;
    std::string Grupo{}; // of fields that stand together under this title
    Segredo Senha{};
};

// Why a form is not taken, and the field to look at.
struct ProblemaDaFicha {
    std::string Campo; // may be empty
    std::string Frase;
};

// What else can be done from a form, whatever becomes of it.
struct ComandoDaFicha {
    std::string Nome;
    std::string Rotulo;
    std::string Pergunta; // asked before
    std::string Feito;    // said after
    std::function<void()> Faz;
};

struct Ficha {
    std::string Nome;
    std::string Titulo;
    std::string Frase; // above the fields; may be empty
    std::vector<CampoDaFicha> Campos{};
    std::vector<ComandoDaFicha> Comandos{};
    // Takes it; nothing when all is well.
    std::function<std::optional<ProblemaDaFicha>(Ficha &)> Salva;
    // A choice was made: the options of other fields may follow it.
    std::function<void(Ficha &, const std::string &campo)> Mudou;

    // A name that is not there is fault 5.
    CampoDaFicha &Campo(std::string_view nome);
    const std::string &Valor(std::string_view nome) { return Campo(nome).Valor; }
    bool Marcado(std::string_view nome) { return Valor(nome) == "1"; }
};

} // namespace mesa
