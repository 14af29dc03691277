#pragma once

#include "host/Evento.h"
#include "host/IztOutros.h"

// The address that an address control holds.
class Endereco : public IEndereco {
  public:
    struct Dados {
        std::int32_t CodLogradouro = 0;
        std::int32_t Numero = 0;
        std::string Complemento;
        std::string Cep;
        std::string Descricao;
    };

    std::string_view NomeTipo() const override { return "Endereco"; }

    void SetaEndereco(std::int32_t codMunic, std::int32_t codLogradouro, std::int32_t numero,
                      const std::string &complemento, const std::string &cep, const std::string &reservado1,
                      std::int32_t reservado2) override;
    std::int32_t CodLogradouro() const override { return m_Dados.CodLogradouro; }
    std::int32_t Numero() const override { return m_Dados.Numero; }
    std::string Complemento() const override { return m_Dados.Complemento; }
    std::string Cep() const override { return m_Dados.Cep; }
    std::string DescricaoEndereco() const override { return m_Dados.Descricao; }

    // Municipality of the preset address; 0 when none was given.
    std::int32_t CodMunic() const { return m_CodMunic; }
    // Takes another address over.
    void Recebe(const Dados &dados);
    // An address was preset by its codes alone: who knows the streets writes its text with DefineDescricao.
    Evento<> &AoSetar() { return m_AoSetar; }
    void DefineDescricao(const std::string &valor);
    Evento<> &Mudou() { return m_Mudou; }

  private:
    std::int32_t m_CodMunic = 0;
    Dados m_Dados;
    Evento<> m_AoSetar;
    Evento<> m_Mudou;
};
