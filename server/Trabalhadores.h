#pragma once

#include "services/ServicosSql.h"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace servidor {

using Momento = std::chrono::steady_clock::time_point;

// Where a worker stands: its own opening of the registry.
class Posto {
  public:
    explicit Posto(const std::function<Ref<mesa::ServicosSql>()> &abre) : m_Abre(abre) {}

    mesa::ServicosSql &Servicos() { return *m_Servicos; }
    // Lets the connection go, and opens another one. What it raises leaves none.
    void Renova();
    // What is asked of the registry has time until then, over whichever connection.
    void Limita(Momento ate);
    bool Aberto() const { return !m_Servicos.Nada(); }
    void Fecha() { m_Servicos = nullptr; }

  private:
    const std::function<Ref<mesa::ServicosSql>()> &m_Abre;
    Ref<mesa::ServicosSql> m_Servicos;
    Momento m_Ate = Momento::max();
};

// The threads that work on the registry, each over a connection of its own, and the bounded queue before them. One
// whose connection cannot be had tries again, and takes no work meanwhile; the others go on. Those who write wait for
// each other in the registry: few may do so at a time, and whoever reads passes the others in the queue.
class Trabalhadores {
  public:
    using Trabalho = std::function<void(Posto &)>;

    // abre: opens the registry on the thread that calls it. The first opening is waited for: what it raises is raised.
    Trabalhadores(std::size_t quantos, std::size_t esperando, std::function<Ref<mesa::ServicosSql>()> abre);
    Trabalhadores(const Trabalhadores &) = delete;
    Trabalhadores &operator=(const Trabalhadores &) = delete;
    ~Trabalhadores(); // what waits is ended as Termina does

    // Has the work done by one of them, and waits for the end. What it raises is raised here. A Fim when the queue is
    // full, when no connection can be had, and when the work is not begun before `ate` or before `desiste` is true.
    // espera: for how long it waited. grava: whether it may write.
    void Faz(const Trabalho &trabalho, Momento ate, const std::function<bool()> &desiste,
             std::chrono::microseconds &espera, bool grava = false);

    // Tells whether any of them has a connection: now, and each time that changes; nobody with {}. The one told may not
    // come back here.
    void AoLigar(std::function<void(bool)> diz);

    // Nothing new is taken, and what waits is not begun.
    void Termina();

    std::size_t Esperando() const;
    std::size_t Trabalhando() const;
    std::size_t Conectados() const;

  private:
    struct Pedido;

    void Trabalha();
    bool Abre(Posto &posto);
    void ContaLigacao(bool mais);
    void FazUm(Posto &posto, Pedido &pedido);
    // The first one whose turn it is; the end of the queue for none.
    std::deque<std::shared_ptr<Pedido>>::iterator Proximo();
    void EsvaziaFila(const std::function<void(Pedido &)> &cada);

    const std::size_t m_Maximo;
    const std::size_t m_MaximoGravando; // at a time; one worker at least is left to those who read
    const std::function<Ref<mesa::ServicosSql>()> m_Abre;
    mutable std::mutex m_Mutex;
    std::condition_variable m_Trabalho; // there is some, or the end; only who would do it waits here
    std::condition_variable m_Ligacao;  // one is there, or cannot be had, or the end
    std::deque<std::shared_ptr<Pedido>> m_Fila;
    std::size_t m_Trabalhando = 0;
    std::size_t m_Gravando = 0; // of these
    std::size_t m_Conectados = 0;
    std::function<void(bool)> m_AoLigar;
    bool m_Terminando = false;
    bool m_Fim = false;
    bool m_Tentou = false;     // to connect, one at least
    std::string m_SemRegistro; // why no connection can be had
    std::vector<std::thread> m_Fios;
};

} // namespace servidor
