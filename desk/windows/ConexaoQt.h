#pragma once

#include "desk/host/ILigacao.h"
#include "desk/host/LugarDoTrabalho.h"
#include "desk/host/Preferencias.h"
#include "desk/host/RelogioDoServidor.h"
#include "host/Evento.h"
#include "services/Servicos.h"

#include <optional>
#include <string>

namespace mesa {

// The connection with a server as the person at the windows has it: what a wait, a silence and a session that has ended
// become in front of whatever is open. In other threads nobody is asked.
class ConexaoQt : public ILigacao {
  public:
    // preferencias: outlives this object.
    explicit ConexaoQt(Preferencias &preferencias) : m_Preferencias(preferencias) {}

    // With which whose session has ended signs in again. Before there are any nobody is asked whether to try again.
    void Usa(const Ref<Servicos> &servicos)
    {
        m_Servicos = servicos;
        DefineLigada(true);
    }

    RelogioDoServidor &Relogio() { return m_Relogio; }
    // The clock that work at that place goes by: the server's, or this computer's.
    std::function<Data()> RelogioDe(const LugarDoTrabalho &lugar, std::function<Data()> daqui);
    // Whether the last call was answered.
    bool Ligada() const { return m_Ligada; }
    Evento<> &Mudou() { return m_Mudou; }

    void Espera(const std::function<void(const Segue &)> &espera) override;
    bool TentaDeNovo(const std::string &frase) override;
    // Whether what is asked for is what was asked for before, and not answered, as the sentence asks; nothing: the
    // person does not go on.
    std::optional<bool> EhOMesmo(const std::string &frase);
    void Respondeu() override { DefineLigada(true); }
    Ref<SessaoServico> EntraDeNovo(const Operador &quem, const std::string &frase) override;

  private:
    static bool NasJanelas();
    void DefineLigada(bool ligada);

    Preferencias &m_Preferencias;
    RefFraca<Servicos> m_Servicos;
    RelogioDoServidor m_Relogio;
    bool m_Ligada = true;
    Evento<> m_Mudou;
};

// Servers as the network has them, with a person at the windows. conexao: outlives what is connected. insistencia: with
// its times; the person is asked by the connection.
ConectaServidor FazRede(ConexaoQt &conexao, rede::Insistencia insistencia = {});

} // namespace mesa
