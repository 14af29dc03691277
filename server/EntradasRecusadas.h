#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>

namespace servidor {

// Sign-ins that were refused, by the address that they came from: a bucket for each, which drains. An office shares an
// address, so whoever came in there once is not held up by the others' tries; the registry counts by name besides.
class EntradasRecusadas {
  public:
    using Momento = std::chrono::steady_clock::time_point;

    static constexpr std::int32_t SemEspera = 20;
    static constexpr std::chrono::seconds Esquece{30}; // one of them each; the longest wait too
    static constexpr std::size_t MaisEnderecos = 10000;
    static constexpr std::size_t MaisConhecidos = 10000;

    // Seconds until one may be tried there; 0: now.
    std::int32_t Falta(const std::string &endereco, Momento agora) const;
    // The same, and counts it, before it is made, when it may be now.
    std::int32_t Tenta(const std::string &endereco, Momento agora);
    // One that was counted came to no refusal.
    void Devolve(const std::string &endereco);

    // Whether they came in there before. quem: who tries, from where within the address.
    bool EhConhecido(const std::string &endereco, const std::string &quem) const;
    void Conhece(const std::string &endereco, const std::string &quem, Momento agora);

  private:
    static std::int32_t Falta(Momento vazio, Momento agora);

    mutable std::mutex m_Mutex;
    std::map<std::string, Momento> m_Vazios;     // when nothing counts any more, by address
    std::map<std::string, Momento> m_Conhecidos; // when they came in last
};

} // namespace servidor
