#pragma once

#include "services/Portaria.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <string>

namespace servidor {

// Who is signed in. A session is known by a random key of which only a hash is kept; it belongs to this process.
class Sessoes {
  public:
    // agora: for the idle time, whatever is done to the clock of the day meanwhile. porUsuario: a further one of the
    // same user ends the one that was used least recently, of those with nothing under way if there are any.
    // operacoes: of one session at a time.
    using Relogio = std::function<std::chrono::steady_clock::time_point()>;
    Sessoes(Relogio agora, std::chrono::minutes ociosidade, std::size_t porUsuario, std::size_t operacoes);

    // A new session; gives its key, 43 characters.
    std::string Comeca(const mesa::Portaria::Entrada &entrada);
    // Ends one; gives the number of its user, 0 for a key that there is not.
    std::int32_t Termina(const std::string &chave);

    void TerminaTodas();

    // An operation of a session is under way while this lives.
    class EmUso {
      public:
        EmUso(EmUso &&outro) noexcept;
        EmUso &operator=(EmUso &&) = delete;
        ~EmUso();

        const mesa::Portaria::Entrada &Entrada() const { return m_Entrada; }
        // Takes over what became of the session meanwhile. Raises a Fim when it has ended.
        void Atualiza();
        // The session ends, with the others that its user began with the same password, by then or before.
        void Termina();
        // Of the session, after its user has changed the own password.
        void TrocaProva(const std::string &prova);

      private:
        friend class Sessoes;
        EmUso(Sessoes &todas, std::string resumo, mesa::Portaria::Entrada entrada);

        Sessoes *m_Todas;
        std::string m_Resumo;
        mesa::Portaria::Entrada m_Entrada;
    };

    // Raises a Fim when there is no such session, or it was idle for too long.
    void Exige(const std::string &chave);
    // The same, and when it has too much under way.
    EmUso Usa(const std::string &chave);

    std::size_t Quantas() const;

  private:
    struct Sessao {
        mesa::Portaria::Entrada Entrada;
        double UltimoUso = 0; // seconds
        std::size_t EmCurso = 0;
    };

    double Agora() const;
    bool Ociosa(const Sessao &sessao, double agora) const;
    void TiraOciosas(double agora); // whoever signs in or out has the time for it
    Sessao &Acha(const std::string &resumo, double agora);

    const Relogio m_Agora;
    const double m_Ociosidade; // seconds
    const std::size_t m_PorUsuario;
    const std::size_t m_Operacoes;
    mutable std::mutex m_Mutex;
    std::map<std::string, Sessao> m_Sessoes; // by the hash of the key
};

} // namespace servidor
