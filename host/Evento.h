#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

// What a subscription returns; the handler is called for as long as this lives.
class [[nodiscard]] Conexao {
  public:
    Conexao() noexcept = default;
    explicit Conexao(std::shared_ptr<void> tratador) noexcept : m_Tratador(std::move(tratador)) {}

    // Ends the subscription, as setting an event reference to Nothing does.
    void desliga() noexcept { m_Tratador.reset(); }
    bool ligada() const noexcept { return static_cast<bool>(m_Tratador); }

  private:
    std::shared_ptr<void> m_Tratador;
};

// An event with its arguments. By-reference arguments (cancel flags, rows) are written as references: Evento<bool &>.
template <class... Args> class Evento {
  public:
    Evento() = default;
    Evento(const Evento &) = delete;
    Evento &operator=(const Evento &) = delete;

    Conexao liga(std::function<void(Args...)> tratador)
    {
        auto guardado = std::make_shared<std::function<void(Args...)>>(std::move(tratador));
        std::erase_if(m_Tratadores, [](const auto &fraco) { return fraco.expired(); });
        m_Tratadores.push_back(guardado);
        return Conexao(std::move(guardado));
    }

    // Calls the handlers in the order of subscription. A handler may end any subscription, its own included, or the
    // object that holds this event. A fault in a handler reaches the caller, and the handlers behind it do not run.
    void dispara(Args... args) const
    {
        auto tratadores = m_Tratadores;
        for (const auto &fraco : tratadores) {
            if (auto tratador = fraco.lock()) {
                (*tratador)(args...);
            }
        }
    }

  private:
    std::vector<std::weak_ptr<std::function<void(Args...)>>> m_Tratadores;
};
