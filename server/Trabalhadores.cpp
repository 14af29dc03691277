#include "server/Trabalhadores.h"

#include "host/Falha.h"
#include "server/Fim.h"
#include "services/ErroSql.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace servidor {

namespace {

constexpr std::chrono::milliseconds PausaSemRegistro(500);
// Between two looks at whether a caller is still there. Each costs, and hundreds may wait.
constexpr std::chrono::milliseconds PausaDaPergunta(250);
// One that writes, and one that is there when that one ends.
constexpr std::size_t MaisGravando = 2;

Fim Terminando()
{
    return {grpc::StatusCode::UNAVAILABLE, "O servidor está sendo encerrado. Tente de novo daqui a pouco."};
}

// Whoever cannot be asked is gone: nothing may be raised while the work still waits in the queue.
bool Desistiu(const std::function<bool()> &desiste) noexcept
{
    try {
        return desiste();
    } catch (...) {
        return true;
    }
}

// After these the connection may be of no use any more.
bool DuvidaDaConexao(mesa::MotivoSql motivo)
{
    using mesa::MotivoSql;
    return motivo == MotivoSql::Acesso || motivo == MotivoSql::ForaDoLugar || motivo == MotivoSql::Queda ||
           motivo == MotivoSql::Incerto;
}

} // namespace

struct Trabalhadores::Pedido {
    enum class Estado { Espera, Fazendo, Feito };

    Pedido(const Trabalho &oQue, Momento ate, bool grava) : OQue(oQue), Ate(ate), Grava(grava) {}

    const Trabalho &OQue;
    const Momento Ate;
    const bool Grava;
    const Momento Chegou = std::chrono::steady_clock::now();
    Momento Comecou = Chegou;
    Estado Onde = Estado::Espera;
    std::exception_ptr Erro;
    std::condition_variable Mudou;
};

void Posto::Renova()
{
    m_Servicos = nullptr;
    m_Servicos = m_Abre();
    m_Servicos->Limita(m_Ate);
}

void Posto::Limita(Momento ate)
{
    m_Ate = ate;
    m_Servicos->Limita(ate);
}

Trabalhadores::Trabalhadores(std::size_t quantos, std::size_t esperando, std::function<Ref<mesa::ServicosSql>()> abre)
    : m_Maximo(esperando),
      m_MaximoGravando(std::clamp<std::size_t>(quantos - 1, 1, MaisGravando)),
      m_Abre(std::move(abre))
{
    // A registry that cannot be opened, or whose schema changes, is the business of one before all others.
    Posto(m_Abre).Renova();
    m_Fios.reserve(quantos);
    for (std::size_t n = 0; n < quantos; ++n) {
        m_Fios.emplace_back([this] { Trabalha(); });
    }
    std::unique_lock trava(m_Mutex);
    m_Ligacao.wait(trava, [this] { return m_Tentou; });
}

Trabalhadores::~Trabalhadores()
{
    Termina();
    {
        const std::lock_guard trava(m_Mutex);
        m_Fim = true;
    }
    m_Trabalho.notify_all();
    m_Ligacao.notify_all();
    for (std::thread &fio : m_Fios) {
        fio.join();
    }
}

// With the mutex held.
void Trabalhadores::EsvaziaFila(const std::function<void(Pedido &)> &cada)
{
    for (const std::shared_ptr<Pedido> &pedido : std::exchange(m_Fila, {})) {
        cada(*pedido);
        pedido->Onde = Pedido::Estado::Feito;
        pedido->Mudou.notify_all();
    }
}

// With the mutex held.
void Trabalhadores::ContaLigacao(bool mais)
{
    m_Conectados = mais ? m_Conectados + 1 : m_Conectados - 1;
    if (m_AoLigar && m_Conectados == (mais ? 1 : 0)) {
        m_AoLigar(mais);
    }
}

void Trabalhadores::AoLigar(std::function<void(bool)> diz)
{
    const std::lock_guard trava(m_Mutex);
    m_AoLigar = std::move(diz);
    if (m_AoLigar) {
        m_AoLigar(m_Conectados > 0);
    }
}

void Trabalhadores::Termina()
{
    const std::lock_guard trava(m_Mutex);
    m_Terminando = true;
    EsvaziaFila([](Pedido &pedido) { pedido.Erro = std::make_exception_ptr(Terminando()); });
}

void Trabalhadores::Faz(const Trabalho &trabalho, Momento ate, const std::function<bool()> &desiste,
                        std::chrono::microseconds &espera, bool grava)
{
    const auto pedido = std::make_shared<Pedido>(trabalho, ate, grava);
    std::unique_lock trava(m_Mutex);
    if (m_Terminando) {
        throw Terminando();
    }
    if (!m_SemRegistro.empty()) {
        throw Fim{grpc::StatusCode::UNAVAILABLE, m_SemRegistro};
    }
    if (m_Fila.size() + m_Trabalhando >= m_Maximo + m_Fios.size()) {
        throw Ocupado("há muitas operações ao mesmo tempo.");
    }
    // A quarter of the places is left to those who read.
    const auto gravam = static_cast<std::size_t>(std::ranges::count(m_Fila, true, &Pedido::Grava)) + m_Gravando;
    if (grava && gravam >= m_MaximoGravando + m_Maximo - m_Maximo / 4) {
        throw Ocupado("há muitas gravações ao mesmo tempo.");
    }
    m_Fila.push_back(pedido);
    // Whoever is woken finds the lock free.
    trava.unlock();
    m_Trabalho.notify_one();
    trava.lock();
    while (pedido->Onde != Pedido::Estado::Feito) {
        if (pedido->Onde == Pedido::Estado::Fazendo) {
            pedido->Mudou.wait(trava); // it looks at the time, and at the caller, by itself
            continue;
        }
        pedido->Mudou.wait_until(trava, std::min(ate, std::chrono::steady_clock::now() + PausaDaPergunta));
        if (pedido->Onde != Pedido::Estado::Espera) {
            continue;
        }
        trava.unlock();
        const bool foi = Desistiu(desiste);
        trava.lock();
        if (pedido->Onde == Pedido::Estado::Espera && (foi || std::chrono::steady_clock::now() >= ate)) {
            std::erase(m_Fila, pedido);
            espera = std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() -
                                                                           pedido->Chegou);
            throw foi ? Fim{grpc::StatusCode::CANCELLED, "A operação foi cancelada antes de começar."}
                      : Fim{grpc::StatusCode::DEADLINE_EXCEEDED,
                            "O tempo da operação acabou antes que ela começasse. Nada foi feito."};
        }
    }
    espera = std::chrono::duration_cast<std::chrono::microseconds>(pedido->Comecou - pedido->Chegou);
    if (pedido->Erro) {
        std::rethrow_exception(pedido->Erro);
    }
}

void Trabalhadores::FazUm(Posto &posto, Pedido &pedido)
{
    try {
        posto.Limita(pedido.Ate);
        pedido.OQue(posto);
    } catch (const mesa::ErroSql &erro) {
        pedido.Erro = std::current_exception();
        if (DuvidaDaConexao(erro.Motivo)) {
            posto.Fecha();
        }
    } catch (...) {
        pedido.Erro = std::current_exception();
    }
}

std::deque<std::shared_ptr<Trabalhadores::Pedido>>::iterator Trabalhadores::Proximo()
{
    const bool podeGravar = m_Gravando < m_MaximoGravando;
    return std::ranges::find_if(m_Fila, [&](const auto &pedido) { return podeGravar || !pedido->Grava; });
}

bool Trabalhadores::Abre(Posto &posto)
{
    std::string porque;
    try {
        posto.Renova();
    } catch (...) {
        porque = "O registro não pôde ser aberto: " + FalhaCorrente().Descricao;
    }
    std::unique_lock trava(m_Mutex);
    m_Tentou = true;
    if (posto.Aberto()) {
        ContaLigacao(true);
        m_SemRegistro.clear();
        m_Ligacao.notify_all();
        return true;
    }
    if (m_Conectados == 0) {
        m_SemRegistro = porque;
        EsvaziaFila([&](Pedido &pedido) {
            pedido.Erro = std::make_exception_ptr(Fim{grpc::StatusCode::UNAVAILABLE, porque});
        });
    }
    m_Ligacao.notify_all();
    m_Ligacao.wait_for(trava, PausaSemRegistro, [this] { return m_Fim; });
    return false;
}

void Trabalhadores::Trabalha()
{
    Posto posto(m_Abre);
    for (;;) {
        if (!posto.Aberto() && !Abre(posto)) {
            const std::lock_guard trava(m_Mutex);
            if (m_Fim) {
                return;
            }
            continue;
        }
        std::unique_lock trava(m_Mutex);
        m_Trabalho.wait(trava, [this] { return m_Fim || Proximo() != m_Fila.end(); });
        if (m_Fim) {
            return;
        }
        const auto proximo = Proximo();
        const std::shared_ptr<Pedido> pedido = *proximo;
        m_Fila.erase(proximo);
        pedido->Comecou = std::chrono::steady_clock::now();
        if (pedido->Comecou >= pedido->Ate) {
            pedido->Erro =
                std::make_exception_ptr(Fim{grpc::StatusCode::DEADLINE_EXCEEDED,
                                            "O tempo da operação acabou antes que ela começasse. Nada foi feito."});
        } else {
            pedido->Onde = Pedido::Estado::Fazendo;
            ++m_Trabalhando;
            m_Gravando += pedido->Grava ? 1 : 0;
            trava.unlock();
            FazUm(posto, *pedido);
            trava.lock();
            --m_Trabalhando;
            m_Gravando -= pedido->Grava ? 1 : 0;
        }
        // The next one that writes, which this worker may not be there for.
        const bool outro = pedido->Grava && !m_Fila.empty();
        pedido->Onde = Pedido::Estado::Feito;
        if (!posto.Aberto()) {
            ContaLigacao(false);
        }
        trava.unlock();
        pedido->Mudou.notify_one();
        if (outro) {
            m_Trabalho.notify_one();
        }
    }
}

std::size_t Trabalhadores::Esperando() const
{
    const std::lock_guard trava(m_Mutex);
    return m_Fila.size();
}

std::size_t Trabalhadores::Trabalhando() const
{
    const std::lock_guard trava(m_Mutex);
    return m_Trabalhando;
}

std::size_t Trabalhadores::Conectados() const
{
    const std::lock_guard trava(m_Mutex);
    return m_Conectados;
}

} // namespace servidor
