#include "controls/Endereco.h"

void Endereco::SetaEndereco(std::int32_t codMunic, std::int32_t codLogradouro, std::int32_t numero,
                            const std::string &complemento, const std::string &cep, const std::string &, std::int32_t)
{
    Ref<Endereco> vivo = Eu(*this);
    m_CodMunic = codMunic;
    Recebe({codLogradouro, numero, complemento, cep, {}});
    m_AoSetar.dispara();
}

void Endereco::Recebe(const Dados &dados)
{
    Ref<Endereco> vivo = Eu(*this);
    m_Dados = dados;
    m_Mudou.dispara();
}

void Endereco::DefineDescricao(const std::string &valor)
{
    Ref<Endereco> vivo = Eu(*this);
    m_Dados.Descricao = valor;
    m_Mudou.dispara();
}
