#include "tela/EscolhaDeEndereco.h"

#include "host/Conversoes.h"
#include "host/Texto.h"

#include <algorithm>
#include <utility>

namespace {

std::string LinhaDe(const Logradouro &logradouro)
{
    if (logradouro.Nome.empty()) {
        return "Código " + CStr(logradouro.Codigo);
    }
    return logradouro.Descricao(0, "") + " - " + Left(logradouro.Cep, 5) + "-" + Mid(logradouro.Cep, 6);
}

} // namespace

EscolhaDeEndereco::EscolhaDeEndereco(Ref<ztEndereco> controle, Ref<ILogradouros> logradouros,
                                     Ref<MemoriaDeEnderecos> memoria)
    : m_Controle(std::move(controle)),
      m_Logradouros(std::move(logradouros)),
      m_Memoria(std::move(memoria)),
      m_Municipios(m_Logradouros->Municipios()),
      m_CodMunic(m_Memoria->CodMunic),
      m_PesquisaDeMunicipios(
          {[this] { return static_cast<std::int32_t>(m_Municipios.size()); },
           [this](std::int32_t item) { return m_Municipios[static_cast<std::size_t>(item)].Nome; },
           [this] { return LugarDoMunicipio(); }, [this] { return MunicipioEditavel(); },
           [this](std::int32_t item) { MudaMunicipio(m_Municipios[static_cast<std::size_t>(item)].Codigo); }})
{
    Acompanha();
}

std::int32_t EscolhaDeEndereco::LugarDoMunicipio() const
{
    const auto achado = std::ranges::find(m_Municipios, m_CodMunic, &MunicipioDeEndereco::Codigo);
    return achado == m_Municipios.end() ? -1 : static_cast<std::int32_t>(achado - m_Municipios.begin());
}

std::string EscolhaDeEndereco::Atual() const
{
    if (const std::string aviso = Aviso(); !aviso.empty()) {
        return aviso;
    }
    if (Pendente()) {
        return PodeUsar() ? "O endereço digitado ainda não foi usado." : "Escolha um dos logradouros encontrados.";
    }
    const Endereco &endereco = *m_Controle->EnderecoProprio();
    if (!endereco.DescricaoEndereco().empty()) {
        return endereco.DescricaoEndereco();
    }
    return endereco.CodLogradouro() > 0 ? "Logradouro de código " + CStr(endereco.CodLogradouro()) + "."
                                        : "Nenhum endereço escolhido.";
}

bool EscolhaDeEndereco::Conhecido() const
{
    const Endereco &endereco = *m_Controle->EnderecoProprio();
    return endereco.CodLogradouro() == m_Conhecido.CodLogradouro && endereco.Numero() == m_Conhecido.Numero &&
           endereco.Complemento() == m_Conhecido.Complemento;
}

void EscolhaDeEndereco::Conhece()
{
    const Endereco &endereco = *m_Controle->EnderecoProprio();
    m_Conhecido.CodLogradouro = endereco.CodLogradouro();
    m_Conhecido.Numero = endereco.Numero();
    m_Conhecido.Complemento = endereco.Complemento();
}

void EscolhaDeEndereco::Acompanha()
{
    if (Conhecido()) {
        return;
    }
    Conhece();
    m_Escolhido = {};
    m_Via.clear();
    m_Numero.clear();
    m_Complemento.clear();
    if (auto logradouro = m_Logradouros->PorCodigo(m_Conhecido.CodLogradouro)) {
        if (logradouro->Nome.empty()) { // what is known of it is what the address tells
            logradouro->CodMunic = m_Controle->EnderecoProprio()->CodMunic();
            logradouro->Cep = m_Controle->EnderecoProprio()->Cep();
        }
        Toma(*logradouro);
        m_Via = LinhaDe(*logradouro);
        m_Numero = m_Conhecido.Numero > 0 ? CStr(m_Conhecido.Numero) : std::string();
        m_Complemento = m_Conhecido.Complemento;
    }
}

void EscolhaDeEndereco::Toma(const Logradouro &logradouro)
{
    m_Escolhido = logradouro;
    m_CodMunic = logradouro.CodMunic;
}

std::string EscolhaDeEndereco::Aviso() const
{
    if (SomenteLeitura() || Trim(m_Via).empty() || m_Escolhido.Codigo > 0 || !m_Achados.empty()) {
        return {};
    }
    const std::int32_t municipio = LugarDoMunicipio();
    return municipio < 0
               ? "Escolha o município do logradouro."
               : "Nenhum logradouro encontrado em " + m_Municipios[static_cast<std::size_t>(municipio)].Nome + ".";
}

bool EscolhaDeEndereco::Pendente() const
{
    if (SomenteLeitura() || Trim(m_Via).empty()) {
        return false;
    }
    const Endereco &endereco = *m_Controle->EnderecoProprio();
    return m_Escolhido.Codigo < 1 || m_Escolhido.Codigo != endereco.CodLogradouro() ||
           CLng(Val(m_Numero)) != endereco.Numero() || Trim(m_Complemento) != endereco.Complemento();
}

void EscolhaDeEndereco::EscolheMunicipio(std::int32_t codMunic)
{
    m_PesquisaDeMunicipios.Encerra();
    MudaMunicipio(codMunic);
}

void EscolhaDeEndereco::MudaMunicipio(std::int32_t codMunic)
{
    m_CodMunic = codMunic;
    m_Memoria->CodMunic = codMunic;
    Procura();
}

void EscolhaDeEndereco::DigitaVia(const std::string &texto)
{
    m_Via = texto;
    m_Recusa.clear();
    Procura();
}

void EscolhaDeEndereco::DigitaNumero(const std::string &texto)
{
    m_Numero.clear();
    m_Recusa.clear();
    for (const char letra : texto) {
        if (letra < '0' || letra > '9') {
            m_Recusa = "Só algarismos.";
        } else if (m_Numero.size() < DigitosDoNumero) {
            m_Numero += letra;
        } else {
            m_Recusa = "Até " + CStr(DigitosDoNumero) + " algarismos.";
        }
    }
}

void EscolhaDeEndereco::DigitaComplemento(const std::string &texto)
{
    m_Complemento = Left(texto, TamanhoDoComplemento);
    m_Recusa = m_Complemento == texto ? "" : "Até " + CStr(TamanhoDoComplemento) + " caracteres.";
}

// The only street found need not be chosen.
void EscolhaDeEndereco::Procura()
{
    m_Escolhido = {};
    m_Achados.clear();
    m_Sugestoes.clear();
    if (const std::string procurado = Trim(m_Via); !procurado.empty()) {
        m_Achados = m_Logradouros->Procura(m_CodMunic, procurado, MaximoDeSugestoes);
    }
    for (const Logradouro &logradouro : m_Achados) {
        m_Sugestoes.push_back(LinhaDe(logradouro));
    }
    if (m_Achados.size() == 1) {
        m_Escolhido = m_Achados.front();
    }
}

Parte EscolhaDeEndereco::EscolheSugestao(const std::string &sugestao)
{
    const auto achada = std::ranges::find(m_Sugestoes, sugestao);
    if (achada == m_Sugestoes.end()) {
        return Parte::Via;
    }
    m_Via = sugestao;
    Toma(m_Achados[static_cast<std::size_t>(achada - m_Sugestoes.begin())]);
    return Parte::Numero;
}

bool EscolhaDeEndereco::Usa()
{
    const std::int32_t numero = CLng(Val(m_Numero));
    const std::string complemento = Trim(m_Complemento);
    if (!PodeUsar() || !m_Controle->InformaEndereco(m_Escolhido.Codigo, numero, complemento, m_Escolhido.Cep,
                                                    m_Escolhido.Descricao(numero, complemento))) {
        return false;
    }
    Conhece();
    return true;
}

bool EscolhaDeEndereco::Limpa()
{
    if (!m_Controle->LimpaEndereco()) {
        return false;
    }
    Conhece();
    m_Escolhido = {};
    m_Achados.clear();
    m_Sugestoes.clear();
    m_Via.clear();
    m_Numero.clear();
    m_Complemento.clear();
    m_Controle->Mudou().dispara(); // the fields are shown, and the address may have been empty before
    return true;
}
