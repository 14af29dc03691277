#pragma once

#include "services/Segue.h"

#include <chrono>
#include <functional>
#include <string>

namespace mesa {

// Where a person sees how far a work is, in front of everything else, which takes no key and no click meanwhile.
class ITelaDeAndamento {
  public:
    virtual ~ITelaDeAndamento() = default;

    // frase: what is being done. cancelavel: whether the person may give it up.
    virtual void Abre(const std::string &frase, bool cancelavel) = 0;
    // False when the person has given up.
    virtual bool Mostra(double parte, const std::string &oQue) = 0;
    virtual void Fecha() = 0;
};

// A work that keeps the windows' thread, while this object lives: nothing is shown of one that is soon done.
class Andamento {
  public:
    // Of a clock that only goes forward.
    using Relogio = std::function<std::chrono::milliseconds()>;
    static constexpr std::chrono::milliseconds Paciencia{500}; // before anything is shown
    static constexpr std::chrono::milliseconds EntreMostras{50};

    // tela: outlives this object. What ends is the work's: one that was given up comes back by itself.
    Andamento(ITelaDeAndamento &tela, std::string frase, bool cancelavel, Relogio relogio = RelogioDoSistema);
    Andamento(const Andamento &) = delete;
    Andamento &operator=(const Andamento &) = delete;
    ~Andamento();

    // The work tells how far it is, the oftener the better. False once the person has given up.
    bool Anda(double parte, const std::string &oQue);
    // The same for what takes a procedure; valid while this object lives.
    Segue ComoSegue();
    bool Desistiu() const { return m_Desistiu; }

    static std::chrono::milliseconds RelogioDoSistema();

  private:
    ITelaDeAndamento &m_Tela;
    std::string m_Frase;
    bool m_Cancelavel;
    Relogio m_Relogio;
    std::chrono::milliseconds m_Proxima; // when there is something to show
    bool m_Aberta = false;
    bool m_Desistiu = false;
};

// Runs a work, and shows how far it is when it lasts.
using FazComAndamento =
    std::function<void(const std::string &frase, bool cancelavel, const std::function<void(const Segue &)> &trabalho)>;
// Where there is no screen.
void SemAndamento(const std::string &frase, bool cancelavel, const std::function<void(const Segue &)> &trabalho);

} // namespace mesa
