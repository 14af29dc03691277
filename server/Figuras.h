#pragma once

#include <prometheus/counter.h>
#include <prometheus/exposer.h>
#include <prometheus/family.h>
#include <prometheus/gauge.h>
#include <prometheus/histogram.h>
#include <prometheus/registry.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace servidor {

struct LinhaDoDiario;

// What is asked for the moment's figures.
struct Retrato {
    std::size_t Esperando = 0;
    std::size_t Trabalhando = 0;
    std::size_t Conectados = 0;
    std::size_t Sessoes = 0;
    std::size_t ACaminho = 0; // documents, replicas and checks
    std::uint64_t LinhasPerdidas = 0;
    std::uint64_t SemSessao = 0; // calls turned away
};

// The figures of the operations, for Prometheus, under /metrics of an address of their own.
class Figuras {
  public:
    // onde: "127.0.0.1:9464"; empty for nowhere. retrato: asked each time that they are. Falha with a sentence.
    Figuras(const std::string &onde, std::function<Retrato()> retrato);
    ~Figuras();

    void Conta(const LinhaDoDiario &linha);
    // Nothing is asked of anybody any more.
    void Fecha();
    // Where they are asked for; 0 for nowhere.
    std::uint16_t Porta() const { return m_Porta; }

  private:
    class DoMomento;

    std::shared_ptr<prometheus::Registry> m_Registro;
    prometheus::Family<prometheus::Counter> &m_Operacoes;
    prometheus::Family<prometheus::Histogram> &m_Segundos;
    std::shared_ptr<DoMomento> m_DoMomento;
    std::unique_ptr<prometheus::Exposer> m_Exposto;
    std::uint16_t m_Porta = 0;
};

} // namespace servidor
