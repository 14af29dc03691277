#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>

// A person in front of one window, whatever shows it: the scripted host, alone or under the sweep, or real windows.
// What is told for this interface runs on all of them. Names are those of the controls; an action that cannot be done
// fails the test.
class PessoaNaTela {
  public:
    PessoaNaTela() = default;
    PessoaNaTela(const PessoaNaTela &) = delete;
    PessoaNaTela &operator=(const PessoaNaTela &) = delete;
    virtual ~PessoaNaTela() = default;

    virtual void Clica(const std::string &nome, std::int16_t indice = -1) = 0;
    virtual void Marca(const std::string &nome, std::int16_t indice = -1) = 0;
    virtual void Preenche(const std::string &nome, const std::string &texto) = 0;
    virtual void Escolhe(const std::string &nome, const std::string &texto) = 0;
    virtual void Abre(const std::string &nome, std::int16_t pagina) = 0;
    virtual void ClicaLinha(const std::string &nome, std::int32_t linha) = 0;
    virtual void EscolheMenu(const std::string &nome, const std::string &chave) = 0;
    virtual void PedeMais(const std::string &nome) = 0;
    virtual void Localiza(const std::string &nome) = 0;
    virtual void OrdenaPor(const std::string &nome, std::int32_t coluna) = 0;
    virtual void InformaEndereco(const std::string &nome, std::int32_t codLogradouro, std::int32_t numero,
                                 const std::string &complemento, const std::string &cep,
                                 const std::string &descricao) = 0;
    virtual void EscolheCliente(const std::string &nome, const std::string &cliente, const std::string &setor) = 0;
    // The window's own close button.
    virtual void Fecha() = 0;

    // What the person sees of a list: its rows, and a cell of one, from 1, by the heading of the column.
    virtual std::int32_t Linhas(const std::string &nome) = 0;
    virtual std::string Celula(const std::string &nome, std::int32_t linha, const std::string &coluna) = 0;
};

// What a person does: in each window, by its class, beginning in the one that is open already; and what the person
// answers to questions.
struct Percurso {
    std::map<std::string, std::function<void(PessoaNaTela &)>> Janelas;
    std::map<std::string, bool> Respostas;
};
