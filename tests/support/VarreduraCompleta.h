#pragma once

#include "tests/support/HostRoteirizado.h"

#include "shell/Geral.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

class JornadaCompleta;

// The person of a journey in front of a form. Does nothing any more after the failure of which the person was told;
// until then every action has to succeed, and the form has to be enabled after each of them.
class PessoaVarrida {
  public:
    PessoaVarrida(JornadaCompleta &jornada, const Ref<IForm> &form);

    void Clica(const std::string &nome, std::int16_t indice = -1);
    void Marca(const std::string &nome, std::int16_t indice = -1);
    void Preenche(const std::string &nome, const std::string &texto);
    void Escolhe(const std::string &nome, const std::string &texto);
    void Abre(const std::string &nome, std::int16_t pagina);
    void ClicaLinha(const std::string &nome, std::int32_t linha);
    void EscolheMenu(const std::string &nome, const std::string &chave);
    void PedeMais(const std::string &nome);
    void Localiza(const std::string &nome);
    void OrdenaPor(const std::string &nome, std::int32_t coluna);
    void InformaEndereco(const std::string &nome, std::int32_t codLogradouro, std::int32_t numero,
                         const std::string &complemento, const std::string &cep, const std::string &descricao);
    void EscolheCliente(const std::string &nome, const std::string &cliente, const std::string &setor);
    // The window's own close button.
    void Fecha();

    template <class C> Ref<C> Acha(const std::string &nome, std::int16_t indice = -1) const
    {
        return m_Pessoa.Acha<C>(nome, indice);
    }

  private:
    void Faz(const std::function<bool()> &acao);

    JornadaCompleta &m_Jornada;
    RefFraca<IForm> m_Form;
    Pessoa m_Pessoa;
};

// A way of the person, or of the host, or of another module, through the module. The constructor prepares the host, and
// logs on when the way needs that; what it does there is not swept.
class JornadaCompleta {
  public:
    struct Escapada {
        Falha Erro;
        std::int16_t Ponteiro; // at the moment at which the fault arrived
    };

    explicit JornadaCompleta(HostRoteirizado &host) : m_Host(host) {}
    JornadaCompleta(const JornadaCompleta &) = delete;
    JornadaCompleta &operator=(const JornadaCompleta &) = delete;
    virtual ~JornadaCompleta() = default;

    // The whole way, once. Raises nothing.
    virtual void Percorre() = 0;
    // What has to hold after a way without failure, however many went before it.
    virtual void ConfereSucesso() = 0;
    // What the remote services hold, as text.
    virtual std::string Estado() const { return {}; }

    // The next way starts. `parou` tells when the one who goes it has been told of a failure, and then gives up, or
    // goes on with what can still be done.
    void Comeca(std::function<bool()> parou, bool segue = false);
    bool Parou() const { return m_Parou && m_Parou(); }
    const std::vector<Escapada> &Escapadas() const noexcept { return m_Escapadas; }

    // Who has been told and gives up answers every question with no from now on.
    void Desiste();
    // The person closes a window by its own close button.
    void FechaJanela(const Ref<IForm> &form);
    // One action, of which a fault is kept. Not done any more after giving up.
    void Passo(const std::function<void()> &acao);

  protected:
    // Whether a call has failed since the way started, though nobody was told.
    bool FalhouNesta() const { return m_Host.FalhasDisparadas() > m_FalhasAntes; }
    // What the person answers to a question until giving up.
    void Responde(const std::string &pergunta, bool sim);
    // What the person does in every modal window of a class. After giving up the person closes the window.
    void NoModal(const std::string &classe, const std::function<void(PessoaVarrida &)> &roteiro);
    // The same in the window of that class that was opened last and is not modal, if there is one.
    void NaJanela(const std::string &classe, const std::function<void(PessoaVarrida &)> &roteiro);

    HostRoteirizado &m_Host;

  private:
    std::function<bool()> m_Parou;
    bool m_Segue = false;
    std::int32_t m_FalhasAntes = 0;
    std::vector<Escapada> m_Escapadas;
    std::map<std::string, bool> m_Respostas;
};

// The complete sweep of a journey. First the journey runs undisturbed, and its calls are held against the tree that the
// test has written (VarreduraCaminho). Then it runs once for each call of the host, logged or not, with that call
// failing, and once for each remote call with that call refused, each time on a new host. After each: exactly one error
// box with the number, the context, the full path and the title, or the fault itself with its full path at the caller,
// or neither and a successful way, as the tree says; the pointer as it must be; the stored records as they were when
// the call began; and the same journey succeeds on the next try, on the same host. At its end each host tells its
// problems: objects that still live, unexpected boxes and windows.
class VarreduraCompleta {
  public:
    using Fabrica = std::function<std::unique_ptr<JornadaCompleta>(HostRoteirizado &)>;

    VarreduraCompleta(Fabrica fabrica, const std::string &arvore);

    // The refusal of the n-th remote call ends in fault 91: the path of the fault, and the context of its box, empty
    // when it reaches the caller. Every other refusal is told by the proxy alone.
    void RecusaEmFalha(std::int32_t n, const std::string &fonte, const std::string &contexto);

    // After each failure the person also goes on, instead of giving up: no further failure may follow from the first.
    void Segue() { m_Segue = true; }

    // Prints the line "faults survived: N" and returns N, failures and refusals together.
    std::int32_t Roda();
    std::int32_t Falhas() const noexcept { return m_Falhas; }
    std::int32_t Recusas() const noexcept { return m_Recusas; }

  private:
    struct Base;
    struct Ensaio;
    struct Esperado;

    bool RodaBase(Base &base) const;
    void RodaFalha(const Base &base, std::size_t passo, bool segue);
    void RodaRecusa(const Base &base, std::size_t passo, std::int32_t execucao);
    void RodaNegativa(const Base &base, std::size_t passo, const std::string &operacao);
    void Confere(Ensaio &ensaio, const Esperado &esperado) const;
    static void TentaDeNovo(Ensaio &ensaio);

    Fabrica m_Fabrica;
    std::string m_Arvore;
    std::map<std::int32_t, std::pair<std::string, std::string>> m_RecusasEmFalha;
    bool m_Segue = false;
    std::int32_t m_Falhas = 0;
    std::int32_t m_Recusas = 0;
};

// The complete sweep of a journey of a class that is made from the host alone.
template <class T> VarreduraCompleta VarreduraDe(const std::string &arvore)
{
    return VarreduraCompleta([](HostRoteirizado &host) { return std::make_unique<T>(host); }, arvore);
}
