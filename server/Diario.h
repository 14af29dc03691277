#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <mutex>
#include <string>
#include <thread>

namespace servidor {

// What one operation leaves in the log. Neither names, nor contents, nor keys.
struct LinhaDoDiario {
    std::string Operacao;     // "EquiptoRN/altera"
    std::int32_t Usuario = 0; // its number; 0 for nobody
    std::string Endereco;
    std::string Fim; // "OK", "FAILED_PRECONDITION"...; "RECUSADA" of a sign-in
    std::chrono::microseconds Duracao{};
    std::chrono::microseconds Espera{}; // of it, for a worker
    std::size_t Octetos = 0;            // of what was asked and answered
    std::string Numero;                 // of a changing operation; empty for others
    std::string Motivo;                 // of a failure; empty for others

    std::string Json(std::chrono::system_clock::time_point quando) const;
};

// The lines, each whole. They are written by a thread of their own, so that a disk that is slow or full does not stop
// the operations; those for which there is no room meanwhile are counted, and the count is written when there is.
class Diario {
  public:
    // onde: a file, to which is added; "-" for the standard output. Falha with a sentence.
    explicit Diario(const std::string &onde, std::size_t lugares = 10000);
    Diario(const Diario &) = delete;
    Diario &operator=(const Diario &) = delete;
    ~Diario(); // what waits is written

    void Escreve(const LinhaDoDiario &linha);
    // What whoever looks after the server has to know: to the standard error, the same again only after a minute.
    void Avisa(const std::string &frase);
    std::uint64_t Perdidas() const;

  private:
    void Grava();

    int m_Arquivo = -1;
    const std::size_t m_Lugares;
    mutable std::mutex m_Mutex;
    std::condition_variable m_Mudou;
    std::condition_variable m_Acaba;
    std::deque<std::string> m_Linhas;
    std::uint64_t m_Perdidas = 0;
    bool m_Fim = false;
    std::map<std::string, std::chrono::steady_clock::time_point> m_Avisados; // of the last minute
    std::thread m_Fio;
};

} // namespace servidor
