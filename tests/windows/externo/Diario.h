#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

namespace nativo {

// What reached the host, in order, and which of the calls is to fail. There is one for each host.
class Diario {
  public:
    // Number, source and description of the failure that was ordered.
    static constexpr std::int32_t NumeroOrdenado = 31234;
    static constexpr const char *FonteOrdenada = "Hospedeiro.Interno";
    static constexpr const char *DescricaoOrdenada = "Falha ordenada no hospedeiro: ção";

    // A call arrives. Raises the failure that was ordered for it.
    void Anota(const std::string &linha);
    // A line of the services, which is no call.
    void Conta(const std::string &linha);

    // The n-th call from now on, from 1, fails; 0: none does.
    void FalhaNa(std::int32_t chamada);
    bool Falhou() const;

    // The lines that begin so, and how many they are.
    std::vector<std::string> Que(const std::string &comeco) const;
    // The first and the last of them; empty when there is none.
    std::string Primeira(const std::string &comeco) const;
    std::string Ultima(const std::string &comeco) const;
    std::string Tudo() const;
    void Limpa();

  private:
    // The person reads while the windows' thread writes.
    class Guarda {
      public:
        explicit Guarda(SRWLOCK &trava) : m_Trava(trava) { AcquireSRWLockExclusive(&m_Trava); }
        Guarda(const Guarda &) = delete;
        Guarda &operator=(const Guarda &) = delete;
        ~Guarda() { ReleaseSRWLockExclusive(&m_Trava); }

      private:
        SRWLOCK &m_Trava;
    };

    mutable SRWLOCK m_Trava = SRWLOCK_INIT;
    std::vector<std::string> m_Linhas;
    std::int32_t m_Chamadas = 0;
    std::int32_t m_Ordenada = 0;
};

} // namespace nativo
