#pragma once

#include <grpcpp/grpcpp.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

// Desks that work without a pause, as a program that costs little beside the server: one thread for all of them.
namespace Carga {

enum class Tipo : std::size_t { Lista, Consulta, Vigente, Altera, Documento };
inline constexpr std::size_t Tipos = 5;
inline constexpr std::array<const char *, Tipos> Nomes{"lista2", "consulta", "vigente", "altera", "documento"};

struct Alvo {
    std::string Endereco;    // machine and port
    std::string Certificado; // PEM of what the server shows
    std::int32_t Equipamentos = 0;
    std::size_t TamanhoDoDocumento = 100'000;
};

// A calibration, or a document, whose saving was answered.
struct Salvo {
    std::int32_t NroIntEquip = 0; // 0: it is a document
    std::string Numero;           // of the calibration, or the hash of the document
    std::int64_t Documento = 0;
};

struct Resultado {
    std::array<std::vector<double>, Tipos> Segundos; // how long each operation of the measured time took
    double Tempo = 0;                                // that was measured
    std::size_t Ocupado = 0;                         // answers "ocupado", after which it was asked again
    std::size_t Repetidas = 0;                       // saves that were sent again on purpose, with the same number
    std::vector<std::string> Falhas;                 // what ended in any other way than done
    std::vector<Salvo> Salvos;                       // from the first moment to the last

    std::size_t Operacoes() const;
};

struct Ritmo {
    int Mesas = 1;
    bool SoPerguntas = false;            // which calibration was in force, and nothing else
    std::chrono::milliseconds Aquece{0}; // not measured
    std::chrono::milliseconds Mede{0};
    // Where it is not 0, so many operations and no time: one desk after another, one operation at a time. `antes` is
    // told which one comes.
    std::size_t UmaPorUma = 0;
    std::function<void(Tipo)> Antes = {};
    // At the two ends of the measured time, and about once a second in between.
    std::function<void()> NoComeco = {};
    std::function<void()> NoFim = {};
    std::function<void()> CadaSegundo = {};
    std::uint32_t Semente = 1;
};

// All desks sign in, work, finish what they began, and sign out.
Resultado Trabalha(const Alvo &alvo, const Ritmo &ritmo);

} // namespace Carga
