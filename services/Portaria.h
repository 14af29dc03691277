#pragma once

#include "services/Banco.h"
#include "services/Instante.h"
#include "services/Segredo.h"
#include "services/Senhas.h"
#include "services/SessaoServico.h"
#include "services/Tentativas.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace mesa {

// The sign-in, and what users do about their own passwords. Every try stands in the history, and is counted before the
// password is looked at. Where nothing can be written, nothing is but the counts in memory.
class Portaria {
  public:
    // Who came in, where, and what there is to tell about the clock.
    struct Entrada {
        Operador Quem;
        std::string Estacao;
        std::string AvisoDeRelogio;
    };

    Portaria(std::shared_ptr<Banco> banco, CustoDaSenha custo);

    // estacao: what tells the desk from others; one that is no text for the registry counts as unknown.
    std::optional<Entrada> Entra(const std::string &usuario, const Segredo &senha, const std::string &estacao,
                                 const Instante &agora, std::string &recusa, std::int32_t &espera);
    // The own password for another one; false with the reason.
    bool TrocaSenha(const Entrada &quem, const Segredo &atual, const Segredo &nova, const Instante &agora,
                    std::string &recusa);

    const CustoDaSenha &Custo() const { return m_Custo; }

  private:
    // A user as the sign-in finds it; number 0 where there is none.
    struct Achado {
        Operador Quem;
        std::string Senha; // its hash
        bool Ativo = false;
        std::int64_t Versao = 0;
    };
    // A password that somebody tries.
    struct Tentativa {
        std::string Chave;
        const Segredo &Senha;
        std::string Estacao;
        Instante Agora;
        std::string MotivoDaRecusa; // as the history tells it
        std::string Recusa;         // as the person is told
    };

    Achado Acha(const QString &onde, const QVariant &valor);
    // Counts the try and looks at the password. When it is right, and still is at the end, `entra` is run in the
    // transaction that ends the count, with the user as it then is. False with the reason otherwise.
    bool Tenta(const Tentativa &tentativa, const Achado &achado,
               const std::function<void(const Achado &, bool estacaoConhecida)> &entra, std::string &recusa,
               std::int32_t &espera);
    std::int32_t Conta(const Tentativa &tentativa, const Achado &achado);
    void RegistraRecusa(const Tentativa &tentativa, const Achado &achado, const std::string &motivo);
    void ConheceEstacao(const Operador &quem, const std::string &estacao, const Instante &agora);
    void GravaSenha(const Achado &achado, Celulas celulas, const Instante &agora, const std::string &motivo);
    // What nobody has been told yet of a clock that went back; empty when there is nothing.
    std::string AvisoDeRelogio(const Instante &agora);

    // Whether the tries of this one are counted in the registry.
    bool ContaNoRegistro(const Achado &achado) const;

    std::shared_ptr<Banco> m_Banco;
    CustoDaSenha m_Custo;
    TentativasEmMemoria m_EmMemoria;
};

} // namespace mesa
