#pragma once

#include "desk/tour/Condutor.h"
#include "tests/support/PessoaNaTela.h"

// The person in front of the real windows, with mouse and keyboard, from a thread of its own. An action ends when the
// windows that it has opened are gone: what is done in them, and what is answered, stands in the way.
class OperadorDeJanelas : public PessoaNaTela {
  public:
    // What is told for the window of that class, which is waited for, and for those that it opens. `atras`: the person
    // in the window behind it.
    static void Percorre(mesa::Condutor &condutor, const Percurso &percurso, const std::string &janela,
                         const OperadorDeJanelas *atras = nullptr);

    void Clica(const std::string &nome, std::int16_t indice) override;
    void Marca(const std::string &nome, std::int16_t indice) override;
    void Preenche(const std::string &nome, const std::string &texto) override;
    void Escolhe(const std::string &nome, const std::string &texto) override;
    void Abre(const std::string &nome, std::int16_t pagina) override;
    void ClicaLinha(const std::string &nome, std::int32_t linha) override;
    void EscolheMenu(const std::string &nome, const std::string &chave) override;
    void PedeMais(const std::string &nome) override;
    void Localiza(const std::string &nome) override;
    void OrdenaPor(const std::string &nome, std::int32_t coluna) override;
    void InformaEndereco(const std::string &nome, std::int32_t codLogradouro, std::int32_t numero,
                         const std::string &complemento, const std::string &cep, const std::string &descricao) override;
    void EscolheCliente(const std::string &nome, const std::string &cliente, const std::string &setor) override;
    void Fecha() override;

    std::int32_t Linhas(const std::string &nome) override;
    std::string Celula(const std::string &nome, std::int32_t linha, const std::string &coluna) override;

  private:
    OperadorDeJanelas(mesa::Condutor &condutor, const Percurso &percurso, const std::string &janela,
                      const OperadorDeJanelas *atras);

    bool Entra(const std::string &janela) const;
    void Faz(const std::function<void()> &acao);

    mesa::Condutor &m_Condutor;
    const Percurso &m_Percurso;
    std::string m_Janela;
    const OperadorDeJanelas *m_Atras;
};
