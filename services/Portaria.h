#pragma once

#include "services/Banco.h"
#include "services/Instante.h"
#include "services/Repeticao.h"
#include "services/Segredo.h"
#include "services/Senhas.h"
#include "services/SessaoServico.h"
#include "services/Tentativas.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

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
        std::string Prova;       // hash of how the password is kept, which tells that it is still the same one
        std::int64_t Versao = 0; // of the user; whoever was deactivated after it has to come in anew
    };

    // emMemoria: the counts that the registry does not keep; those of one process are to be counted together.
    Portaria(std::shared_ptr<Banco> banco, CustoDaSenha custo,
             std::shared_ptr<TentativasEmMemoria> emMemoria = std::make_shared<TentativasEmMemoria>());

    // estacao: what tells the desk from others; one that is no text for the registry counts as unknown. The clock is
    // asked when the right to write is held: what others wrote meanwhile is not later than what is then written.
    std::optional<Entrada> Entra(const std::string &usuario, const Segredo &senha, const std::string &estacao,
                                 const Relogio &agora, std::string &recusa, std::int32_t &espera);
    // Raises RecusaDeEntrada when the sign-in no longer stands. Within the caller's transaction.
    void ConfereEntrada(const Entrada &quem) { AchaEntrado(quem); }
    // Refuses besides whom nothing is done for: the password has to be changed, or the user was moved.
    void ExigeEntrada(const Entrada &quem);
    // The own password for another one; false with the reason. The sign-in stands on, with a new Prova. repeticao: the
    // number of the act, null for none. When it was done before, the answer of then comes in `repetida`, and no try is
    // counted. Raises RecusaDeEntrada when the sign-in no longer stands.
    bool TrocaSenha(Entrada &quem, const Segredo &atual, const Segredo &nova, const Relogio &agora,
                    const Repeticao *repeticao, std::optional<std::string> &repetida, std::string &recusa);

    // The clock is a server's, and not that of the station at which somebody comes in.
    void EhDeServidor() { m_DeServidor = true; }
    // From now on the counts are those.
    void ContaEm(std::shared_ptr<TentativasEmMemoria> emMemoria) { m_EmMemoria = std::move(emMemoria); }
    const CustoDaSenha &Custo() const { return m_Custo; }

  private:
    // A user as the sign-in finds it; number 0 where there is none.
    struct Achado {
        Operador Quem;
        std::string Senha; // its hash
        bool Ativo = false;
        bool TrocaSenha = false;
        std::int64_t Versao = 0;
    };
    // A password that somebody tries.
    struct Tentativa {
        std::string Chave;
        const Segredo &Senha;
        std::string Estacao;
        const Relogio &Agora;
        std::string MotivoDaRecusa; // as the history tells it
        std::string Recusa;         // as the person is told
        // Whether what it is for was done meanwhile, without which it is not judged.
        std::function<bool(const Instante &agora)> JaFeita = {};
    };

    Achado Acha(const QString &onde, const QVariant &valor);
    // The user who came in, as long as the sign-in stands; raises RecusaDeEntrada.
    Achado AchaEntrado(const Entrada &quem);
    // Counts the try and looks at the password. When it is right, and still is at the end, `entra` is run in the
    // transaction that ends the count, with the user and the moment as they then are. False with the reason otherwise.
    bool Tenta(const Tentativa &tentativa, const Achado &achado,
               const std::function<void(const Achado &, bool estacaoConhecida, const Instante &agora)> &entra,
               std::string &recusa, std::int32_t &espera);
    std::int32_t Conta(const Tentativa &tentativa, const Achado &achado);
    void RegistraRecusa(const Tentativa &tentativa, const Achado &achado, const Instante &agora,
                        const std::string &motivo);
    void ConheceEstacao(const Operador &quem, const std::string &estacao, const Instante &agora);
    void GravaSenha(const Achado &achado, Celulas celulas, const Instante &agora, const std::string &motivo);
    // What nobody has been told yet of a clock that went back; empty when there is nothing.
    std::string AvisoDeRelogio(const Instante &agora);

    // Whether the user's present password is the one of which that Prova tells, made again at another cost at most.
    bool MesmaSenha(const Achado &achado, const std::string &prova);

    // Whether the tries of this one are counted in the registry.
    bool ContaNoRegistro(const Achado &achado) const;

    std::shared_ptr<Banco> m_Banco;
    CustoDaSenha m_Custo;
    std::shared_ptr<TentativasEmMemoria> m_EmMemoria;
    bool m_DeServidor = false;
};

} // namespace mesa
