#include "comando/Dia.h"

#include "comando/Fim.h"
#include "host/Falha.h"

#include <regex>

namespace comando {

Data LeMomento(const std::string &dia, const std::string &hora)
{
    static const std::regex brasileiro("(\\d{2})/(\\d{2})/(\\d{4})");
    static const std::regex internacional("(\\d{4})-(\\d{2})-(\\d{2})");
    static const std::regex relogio("(\\d{2}):(\\d{2})(?::(\\d{2}))?");
    const auto naoEh = [](const std::string &frase) { return Fim(Codigo::UsoErrado, frase); };
    if (dia.size() > 10 || hora.size() > 8) {
        throw naoEh("O dia se escreve como 20/11/2026 ou 2026-11-20, e a hora como 14:30 ou 14:30:05.");
    }
    std::smatch partes;
    int d = 0;
    int m = 0;
    int a = 0;
    if (std::regex_match(dia, partes, brasileiro)) {
        d = std::stoi(partes[1]);
        m = std::stoi(partes[2]);
        a = std::stoi(partes[3]);
    } else if (std::regex_match(dia, partes, internacional)) {
        a = std::stoi(partes[1]);
        m = std::stoi(partes[2]);
        d = std::stoi(partes[3]);
    } else {
        throw naoEh("O dia \"" + dia + "\" não foi entendido: escreva-o como 20/11/2026 ou 2026-11-20.");
    }
    int h = 0;
    int min = 0;
    int s = 0;
    if (!hora.empty()) {
        std::smatch dela;
        if (!std::regex_match(hora, dela, relogio)) {
            throw naoEh("A hora \"" + hora + "\" não foi entendida: escreva-a como 14:30 ou 14:30:05.");
        }
        h = std::stoi(dela[1]);
        min = std::stoi(dela[2]);
        s = dela[3].matched ? std::stoi(dela[3]) : 0;
    }
    try {
        DataDe(d, m, a);
    } catch (const Falha &) {
        throw naoEh("O dia \"" + dia + "\" não existe no calendário.");
    }
    try {
        return DataDe(d, m, a, h, min, s);
    } catch (const Falha &) {
        throw naoEh("A hora \"" + hora + "\" não existe.");
    }
}

} // namespace comando
