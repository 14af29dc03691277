#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace mortes {

// What a client asked to be saved, and what came of it. Three acts have the same mark: a document, the equipment whose
// calibrations have it, and a change of that equipment.
struct Gravacao {
    enum class Ato { Documento, Inclui, Altera };
    enum class Desfecho {
        SemResposta, // asked, and given up: it may be there or not, but whole
        Respondida,  // told to be saved
        Recusada     // told not to be saved, with a sentence
    };

    Ato Oque = Ato::Documento;
    std::string Marca;
    Desfecho Como = Desfecho::SemResposta;
    double Numero = 0;  // that the answer gave it
    std::string Sha256; // of a document
    std::string Frase;  // of the refusal, or of the last failure
    std::chrono::steady_clock::duration Levou{};
};

using Diario = std::vector<Gravacao>;

// What the acts leave in the registry.
namespace Conteudo {

inline std::string Codigo(const std::string &marca)
{
    return "M" + marca;
}
inline std::string Incluido(const std::string &marca)
{
    return "novo " + marca;
}
inline std::string Alterado(const std::string &marca)
{
    return "alterado " + marca;
}
// Numbers of the calibrations: two come with the equipment, the third with its change.
inline std::string Afericao(int qual, const std::string &marca)
{
    return std::string(1, static_cast<char>('a' + qual)) + marca;
}

} // namespace Conteudo

} // namespace mortes
