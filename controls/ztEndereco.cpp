#include "controls/ztEndereco.h"

ztEndereco::ztEndereco(const Origem &origem)
    : Controle(origem),
      m_AjustesEndereco(origem.Ajustes<AjustesZtEndereco>()),
      m_MudouEndereco(m_Endereco->Mudou().liga([this] { Mudou().dispara(); }))
{
}

bool ztEndereco::InformaEndereco(std::int32_t codLogradouro, std::int32_t numero, const std::string &complemento,
                                 const std::string &cep, const std::string &descricao)
{
    if (codLogradouro < 1 && m_AjustesEndereco.ObrigarCodigoLogradouro) {
        return false;
    }
    return Entra({codLogradouro, numero, complemento, cep, descricao});
}

bool ztEndereco::LimpaEndereco()
{
    return Entra({});
}

bool ztEndereco::Entra(const ::Endereco::Dados &dados)
{
    Ref<IControle> vivo = Vivo();
    auto aberto = [&] { return !m_ReadOnly && Usavel(); };
    if (!aberto() || !Foco() || !aberto()) {
        return false;
    }
    m_Endereco->Recebe(dados);
    m_EntradaOK.dispara();
    return true;
}
