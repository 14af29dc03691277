#pragma once

#include "tests/support/HostRoteirizado.h"
#include "tests/support/PessoaNaTela.h"

#include "shell/Geral.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

class Jornada;

// The person of a journey in front of a form. Does nothing any more after the failure of which the person was told;
// until then every action has to succeed, and the form has to be enabled after each of them.
class PessoaVarrida : public PessoaNaTela {
  public:
    PessoaVarrida(Jornada &jornada, const Ref<IForm> &form);

    void Clica(const std::string &nome, std::int16_t indice) override { Faz(&Pessoa::Clica, nome, indice); }
    void Marca(const std::string &nome, std::int16_t indice) override { Faz(&Pessoa::Marca, nome, indice); }
    void Preenche(const std::string &nome, const std::string &texto) override
    {
        Faz(&Pessoa::Preenche, nome, texto, std::int16_t{-1});
    }
    void Escolhe(const std::string &nome, const std::string &texto) override
    {
        Faz(&Pessoa::Escolhe, nome, texto, std::int16_t{-1});
    }
    void Abre(const std::string &nome, std::int16_t pagina) override { Faz(&Pessoa::Abre, nome, pagina); }
    void ClicaLinha(const std::string &nome, std::int32_t linha) override { Faz(&Pessoa::ClicaLinha, nome, linha); }
    void EscolheMenu(const std::string &nome, const std::string &item) override
    {
        Faz(&Pessoa::EscolheMenu, nome, item);
    }
    void PedeMais(const std::string &nome) override { Faz(&Pessoa::PedeMais, nome); }
    void Localiza(const std::string &nome) override { Faz(&Pessoa::Localiza, nome); }
    void OrdenaPor(const std::string &nome, std::int32_t coluna) override { Faz(&Pessoa::OrdenaPor, nome, coluna); }
    void InformaEndereco(const std::string &nome, std::int32_t codLogradouro, std::int32_t numero,
                         const std::string &complemento, const std::string &cep, const std::string &descricao) override
    {
        Faz(&Pessoa::InformaEndereco, nome, codLogradouro, numero, complemento, cep, descricao);
    }
    void EscolheCliente(const std::string &nome, const std::string &cliente, const std::string &setor) override
    {
        Faz(&Pessoa::EscolheCliente, nome, cliente, setor);
    }
    void Fecha() override;

    std::int32_t Linhas(const std::string &nome) override;
    // Empty where a failure has kept the row away.
    std::string Celula(const std::string &nome, std::int32_t linha, const std::string &coluna) override;

  private:
    template <class Acao, class... Args> void Faz(Acao acao, const Args &...args)
    {
        Tenta([&] { return (m_Pessoa.*acao)(args...); });
    }
    void Tenta(const std::function<bool()> &acao);

    Jornada &m_Jornada;
    RefFraca<IForm> m_Form;
    Pessoa m_Pessoa;
};

// A way of the person, or of the host, or of another module, through the module. The constructor prepares the host, and
// logs on when the way needs that; what it does there is not swept.
class Jornada {
  public:
    struct Escapada {
        Falha Erro;
        std::int16_t Ponteiro; // at the moment at which the fault arrived
    };

    explicit Jornada(HostRoteirizado &host) : m_Host(host) {}
    Jornada(const Jornada &) = delete;
    Jornada &operator=(const Jornada &) = delete;
    virtual ~Jornada() = default;

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
    // The modal windows and the answers of a way; the window in which it begins is left out.
    void Aceita(const Percurso &percurso, const std::string &comeco);
    // Whether a call has failed since the way started, though nobody was told.
    bool FalhouNesta() const { return m_Host.FalhasDisparadas() > m_FalhasAntes; }
    // What the person answers to a question until giving up.
    void Responde(const std::string &pergunta, bool sim);
    // What the person does in every modal window of a class. After giving up the person closes the window.
    void NoModal(const std::string &classe, const std::function<void(PessoaNaTela &)> &roteiro);
    // The same in the window of that class that was opened last and is not modal, if there is one.
    void NaJanela(const std::string &classe, const std::function<void(PessoaNaTela &)> &roteiro);

    HostRoteirizado &m_Host;

  private:
    std::function<bool()> m_Parou;
    bool m_Segue = false;
    std::int32_t m_FalhasAntes = 0;
    std::vector<Escapada> m_Escapadas;
    std::map<std::string, bool> m_Respostas;
};
