#pragma once

#include "host/Evento.h"
#include "rede/LugaresConhecidos.h"

#include <cstdint>
#include <filesystem>
#include <string>

namespace mesa {

using rede::RegistroConhecido;

// Whose colours the windows have.
enum class Tema { Sistema, Claro, Escuro };

// How the windows look, and where they print.
struct Aspecto {
    Tema Cores = Tema::Sistema;
    std::int32_t TamanhoDoTexto = 100; // percent of the system's
    std::string Impressora{};          // empty for the system's own

    static constexpr std::int32_t MenorTexto = 80;
    static constexpr std::int32_t MaiorTexto = 200;
    bool operator==(const Aspecto &) const = default;
};

// What a user's settings keep, whatever registry is open. What cannot be written raises a Falha.
class Preferencias : public rede::LugaresConhecidos {
  public:
    explicit Preferencias(const std::filesystem::path &arquivo);

    // Minutes without use after which the desk locks; 0 never.
    static constexpr std::int32_t MaisMinutos = 24 * 60;
    std::int32_t MinutosAteTravar() const;
    void DefineMinutosAteTravar(std::int32_t minutos);

    mesa::Aspecto Aspecto() const;
    void DefineAspecto(const mesa::Aspecto &valor);
    // Another one was defined.
    Evento<> &MudouAspecto() { return m_MudouAspecto; }

    // Whether the sign-in offers the name of who came in last.
    bool LembraUsuario() const;
    void DefineLembraUsuario(bool valor);
    // That name in a registry; empty when there is none, or none is to be offered.
    std::string UltimoUsuario(const std::string &identificador) const;
    void EsqueceUsuarios();
    void LembraUltimoUsuario(const std::string &identificador, const std::string &usuario);

    // A moment, in words, and what came of the last check of a registry.
    std::string UltimaConferencia(const std::string &identificador) const;
    void LembraConferencia(const std::string &identificador, const std::string &resultado);

    // The day of the last whole check; 0 before the first.
    std::int32_t DiaConferido(const std::string &identificador) const;
    void LembraDiaConferido(const std::string &identificador, std::int32_t dia);

    // Whether a copy is made beside the registry every day.
    bool CopiaDiaria() const;
    void DefineCopiaDiaria(bool valor);
    // Where the head of the history is kept every day; empty for nowhere.
    std::string PastaDasCabecas() const;
    void DefinePastaDasCabecas(const std::string &pasta);

    // Texts that others keep here, each under its key: empty when there is none; an empty one forgets. They are a
    // comfort: what cannot be written is lost without a word.
    void GuardaTexto(const QString &chave, const std::string &texto);
    void EsqueceTextos(const QString &comeco);

  private:
    Evento<> m_MudouAspecto;
};

} // namespace mesa
