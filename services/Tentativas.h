#pragma once

#include "services/Banco.h"
#include "services/Instante.h"

#include <array>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>

namespace mesa {

// Passwords tried one after the other without the right one. Each after the second doubles the time for which no other
// one is tried.
struct Tentativas {
    std::int64_t Vezes = 0;
    std::int64_t EsperaAte = 0; // seconds, by the clock in UTC

    // Seconds still to wait. A clock that was set back does not lengthen them.
    std::int32_t Falta(const Instante &agora) const;
    // Seconds to wait after the last one.
    std::int32_t Espera() const;
    void Conta(const Instante &agora);
    // A wait that was counted by a clock that was ahead ends as soon as one of now would. Whether it was such a one.
    bool Acerta(const Instante &agora);

    bool operator==(const Tentativas &) const = default;
};

// Those at the name of a user, in the registry: neither haste nor a kill wins a try. A station at which the user has
// signed in before has a count of its own, and all others have one together, so that whoever guesses elsewhere does not
// keep the user out here. Within the caller's transaction.
class TentativasDoUsuario {
  public:
    TentativasDoUsuario(Banco &banco, std::int32_t numero, const std::string &estacao);

    Tentativas Le() const;
    void Grava(const Tentativas &tentativas);
    // Which of the counts they are, among those of all users.
    std::string Qual() const;
    // The user has signed in here: from now on it is known.
    bool EstacaoConhecida() const { return !m_Estacao.empty(); }

    // Of any station.
    static bool EmEspera(Banco &banco, std::int32_t numero, const Instante &agora);
    static void EsqueceTodas(Banco &banco, std::int32_t numero);
    // What a row's Soma has to be.
    static std::string Soma(std::int32_t numero, const std::string &estacao, const Tentativas &tentativas);

  private:
    Banco &m_Banco;
    std::int32_t m_Numero;
    std::string m_Estacao; // empty for those that are not known
};

// Those that the registry does not keep, for as long as the program runs: at names that no user has, and where nothing
// can be written. What was typed may be a password: it is neither stored nor kept. Several threads may count together.
// And what counts of the registry were before a try that was counted there and then not looked at, since nobody said
// whether that count is written.
class TentativasEmMemoria {
  public:
    TentativasEmMemoria();

    // Runs the work on those at the name, while nobody else touches any, and gives what it gives.
    template <class Trabalho> auto De(const std::string &chave, Trabalho &&trabalho)
    {
        const std::lock_guard tranca(m_Tranca);
        return trabalho(Acha(chave));
    }

    // qual: as TentativasDoUsuario names it. contadas: with the try that was not looked at.
    void NaoOlhada(const std::string &qual, const Tentativas &antes, const Tentativas &contadas);
    // What the count was without that try; as it is where it stands otherwise.
    Tentativas SemNaoOlhada(const std::string &qual, const Tentativas &contadas);
    // One more was counted, and is looked at.
    void Olhada(const std::string &qual);

  private:
    struct Volta {
        Tentativas Antes;
        Tentativas Contadas;
    };

    Tentativas &Acha(const std::string &chave);

    std::mutex m_Tranca;
    std::array<unsigned char, 32> m_Sal{};
    std::map<std::string, Tentativas> m_Contagens; // by a hash of the name
    std::map<std::string, Volta> m_NaoOlhadas;
};

} // namespace mesa
