#include "server/Figuras.h"

#include "host/Falha.h"
#include "server/Diario.h"

#include <exception>
#include <utility>
#include <vector>

namespace servidor {

namespace {

using Familias = std::vector<prometheus::MetricFamily>;

void Poe(Familias &familias, const std::string &nome, const std::string &ajuda, double valor,
         prometheus::MetricType tipo = prometheus::MetricType::Gauge)
{
    prometheus::ClientMetric medida;
    (tipo == prometheus::MetricType::Gauge ? medida.gauge.value : medida.counter.value) = valor;
    familias.push_back({nome, ajuda, tipo, {medida}});
}

} // namespace

class Figuras::DoMomento : public prometheus::Collectable {
  public:
    explicit DoMomento(std::function<Retrato()> retrato) : m_Retrato(std::move(retrato)) {}

    Familias Collect() const override
    {
        const Retrato agora = m_Retrato();
        Familias familias;
        Poe(familias, "registro_esperando", "Operações que esperam por uma conexão",
            static_cast<double>(agora.Esperando));
        Poe(familias, "registro_em_andamento", "Operações em andamento", static_cast<double>(agora.Trabalhando));
        Poe(familias, "registro_conexoes", "Conexões com o banco de dados", static_cast<double>(agora.Conectados));
        Poe(familias, "registro_sessoes", "Sessões abertas", static_cast<double>(agora.Sessoes));
        Poe(familias, "registro_a_caminho", "Documentos, réplicas e conferências a caminho",
            static_cast<double>(agora.ACaminho));
        Poe(familias, "registro_diario_perdidas_total", "Linhas que o diário não pôde guardar",
            static_cast<double>(agora.LinhasPerdidas), prometheus::MetricType::Counter);
        Poe(familias, "registro_sem_sessao_total", "Chamadas de quem não tem sessão, ou não a tem mais",
            static_cast<double>(agora.SemSessao), prometheus::MetricType::Counter);
        return familias;
    }

  private:
    const std::function<Retrato()> m_Retrato;
};

Figuras::Figuras(const std::string &onde, std::function<Retrato()> retrato)
    : m_Registro(std::make_shared<prometheus::Registry>()),
      m_Operacoes(prometheus::BuildCounter()
                      .Name("registro_operacoes_total")
                      .Help("Operações atendidas, por nome e fim")
                      .Register(*m_Registro)),
      m_Segundos(prometheus::BuildHistogram()
                     .Name("registro_operacao_segundos")
                     .Help("Tempo das operações, em segundos")
                     .Register(*m_Registro)),
      m_DoMomento(std::make_shared<DoMomento>(std::move(retrato)))
{
    if (onde.empty()) {
        return;
    }
    try {
        m_Exposto = std::make_unique<prometheus::Exposer>(onde, 1);
    } catch (const std::exception &) { // the library's own words say nothing to a person
        throw Falha(NumeroFalha::ErroDeAcesso, "Servidor",
                    "As figuras não podem ser oferecidas em " + onde +
                        ": o endereço está em uso ou não é desta máquina.");
    }
    m_Exposto->RegisterCollectable(m_Registro);
    m_Exposto->RegisterCollectable(m_DoMomento);
    m_Porta = static_cast<std::uint16_t>(m_Exposto->GetListeningPorts().front());
}

Figuras::~Figuras() = default;

void Figuras::Fecha()
{
    m_Exposto = nullptr;
}

void Figuras::Conta(const LinhaDoDiario &linha)
{
    static const prometheus::Histogram::BucketBoundaries limites = {0.001, 0.0025, 0.005, 0.01, 0.025, 0.05, 0.1,
                                                                    0.25,  0.5,    1,     2.5,  5,     10,   30};
    m_Operacoes.Add({{"operacao", linha.Operacao}, {"fim", linha.Fim}}).Increment();
    m_Segundos.Add({{"operacao", linha.Operacao}}, limites)
        .Observe(std::chrono::duration<double>(linha.Duracao).count());
}

} // namespace servidor
