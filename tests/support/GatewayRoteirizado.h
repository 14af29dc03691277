#pragma once

#include "host/Registro.h"
#include "tests/support/RegistroChamadas.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

// What a remote operation answers.
class Resposta {
  public:
    // Success with nothing to fetch.
    Resposta() = default;
    // Success; the record, list, Nothing or plain value is what ObtemRetorno gives.
    template <class T> Resposta(const Ref<T> &retorno) : m_Retorno(Ref<Objeto>(retorno)) {}
    Resposta(Valor retorno) : m_Retorno(std::move(retorno)) {}
    static Resposta Recusa(std::string mensagem)
    {
        Resposta resposta;
        resposta.m_Mensagem = std::move(mensagem);
        return resposta;
    }

    // Puts another object, or Nothing, into the caller's variable.
    template <class T> Resposta &&Troca(const Ref<T> &objeto) &&
    {
        m_Troca = Ref<Objeto>(objeto);
        return std::move(*this);
    }

    bool Sucesso() const noexcept { return !m_Mensagem; }
    const Valor &Retorno() const noexcept { return m_Retorno; }
    std::string Mensagem() const { return m_Mensagem.value_or(""); }
    const std::optional<Ref<Objeto>> &ObjetoTrocado() const noexcept { return m_Troca; }

  private:
    Valor m_Retorno{Ref<Objeto>()};
    std::optional<std::string> m_Mensagem; // of a refusal
    std::optional<Ref<Objeto>> m_Troca;
};

// The remote operations, by class and name.
class ServicosRemotos {
  public:
    using Operacao = std::function<Resposta(const Ref<Registro> &pedido)>;

    void Define(const std::string &classe, const std::string &metodo, Operacao operacao);
    // The next call of an operation of that name, of whatever class, is refused.
    void Recusa(std::string metodo, std::string mensagem);
    // The n-th call from now on is refused, whatever it is.
    void RecusaNaExecucao(std::int32_t n, std::string mensagem);
    // How many calls were refused that way.
    std::int32_t RecusasNaVez() const noexcept { return m_RecusasNaVez; }
    // No value when there is no such operation.
    std::optional<Resposta> Executa(const std::string &classe, const std::string &metodo, const Ref<Registro> &pedido);
    // Refusals that no call has met.
    std::vector<std::string> RecusasPendentes() const;

  private:
    std::map<std::pair<std::string, std::string>, Operacao> m_Operacoes;
    std::vector<std::pair<std::string, std::string>> m_Recusas;
    std::int32_t m_FaltamParaRecusar = 0;
    std::string m_MensagemNaVez;
    std::int32_t m_RecusasNaVez = 0;
};

// The gateway and its proxies. A proxy logs under the name of its service class, for example
// `EquiptoRN.ExecutaMetodo("consulta", EquiptoED{NroIntEquip=12}) -> True`. Misuse of the call convention is a problem
// of the test: ObtemRetorno without a success, MostraErro without a refusal, more or less than one parameter.
class GatewayRoteirizado : public IGateway {
  public:
    GatewayRoteirizado(RefRegistro registro, std::shared_ptr<ServicosRemotos> servicos)
        : m_Registro(std::move(registro)),
          m_Servicos(std::move(servicos))
    {
    }

    std::string_view NomeTipo() const override { return "Gateway"; }
    Ref<IProxyRN> CriaObjetoRN(const std::string &sSistema, const std::string &sClasseRN,
                               const std::string &sBiblioteca, const std::string &sCanal) override;

  private:
    RefRegistro m_Registro;
    std::shared_ptr<ServicosRemotos> m_Servicos;
};
