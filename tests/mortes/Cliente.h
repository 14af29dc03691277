#pragma once

#include "services/Servicos.h"
#include "tests/mortes/Diario.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

namespace mortes {

// Somebody at a desk who saves without end, and writes down what was told about each save: a document, an equipment of
// two sensors whose two calibrations have it, and a change of that equipment with a further calibration.
class Cliente {
  public:
    struct Quem {
        int Numero = 0;      // tells the marks of one from those of another
        std::string Usuario; // whose password is "senha de" and the name
        // A save that was not answered is given up, and something else is saved; otherwise the same is asked again
        // until it is answered.
        bool Desiste = false;
    };

    // conecta: called in the client's own thread, at first and whenever there is no session any more.
    Cliente(Quem quem, std::function<Ref<mesa::Servicos>()> conecta);
    Cliente(const Cliente &) = delete;
    Cliente &operator=(const Cliente &) = delete;
    ~Cliente();

    void Comeca();
    // Lets the save that is under way come to its end, for so long.
    void Para(std::chrono::milliseconds prazo);

    std::size_t Respondidas() const { return m_Respondidas; }
    std::size_t Falhas() const { return m_Falhas; } // calls that came to no answer
    std::string UltimaFrase() const;                // of such a call
    // While it does not work.
    const Diario &Feitas() const { return m_Diario; }

  private:
    using Tarefa = std::function<bool(mesa::SessaoServico &, double &numero, std::string &recusa)>;

    void Trabalha();
    // False when it was not answered as saved.
    bool Grava(Gravacao::Ato ato, const std::string &marca, const Tarefa &tarefa, const std::string &soma = {});
    bool Chega() const; // nothing new is begun
    void Anota(const std::string &frase);

    const Quem m_Quem;
    const std::function<Ref<mesa::Servicos>()> m_Conecta;
    Ref<mesa::Servicos> m_Servicos;
    Ref<mesa::SessaoServico> m_Sessao;
    Diario m_Diario;
    int m_Marcas = 0;
    std::atomic<std::size_t> m_Respondidas = 0;
    std::atomic<std::size_t> m_Falhas = 0;
    mutable std::mutex m_Tranca;
    std::string m_Frase;
    std::condition_variable m_Avisa;
    bool m_Parar = false;
    std::chrono::steady_clock::time_point m_Ate;
    std::thread m_Fio;
};

} // namespace mortes
