#pragma once

#include "controls/Controle.h"
#include "controls/Endereco.h"

class ztEndereco : public Controle<IztEndereco> {
  public:
    explicit ztEndereco(const Origem &origem);

    Ref<IEndereco> Endereco() override { return m_Endereco; }
    bool ReadOnly() const override { return m_ReadOnly; }
    void DefineReadOnly(bool valor) override { Redefine(m_ReadOnly, valor); }
    Evento<> &EntradaOK() override { return m_EntradaOK; }

    const AjustesZtEndereco &Ajustes() const { return m_AjustesEndereco; }
    // The address itself, with what a screen layer needs of it.
    const Ref<::Endereco> &EnderecoProprio() const { return m_Endereco; }

    // Whether the person may choose where the address is.
    bool MunicipioEditavel() const { return !m_ReadOnly && !m_AjustesEndereco.ReadOnlyMunicipio; }
    // The person finishes an address entry; refused without a street code when the settings ask for one.
    bool InformaEndereco(std::int32_t codLogradouro, std::int32_t numero, const std::string &complemento,
                         const std::string &cep, const std::string &descricao);
    // The person empties the address, which finishes an entry too.
    bool LimpaEndereco();

  private:
    bool Entra(const ::Endereco::Dados &dados);

    AjustesZtEndereco m_AjustesEndereco;
    bool m_ReadOnly = false;
    Ref<::Endereco> m_Endereco = Novo<::Endereco>();
    Conexao m_MudouEndereco;
    Evento<> m_EntradaOK;
};
