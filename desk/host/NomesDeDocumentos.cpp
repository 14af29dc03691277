#include "desk/host/NomesDeDocumentos.h"

#include "host/Conversoes.h"
#include "host/Texto.h"
#include "services/Conferencia.h"

#include <algorithm>
#include <cstdlib>

namespace mesa {

namespace {

constexpr std::uint8_t TipoDeclaracao = 2;
constexpr std::string_view PrefixoDoCertificado = "~VORAFER"; // and the number of the calibration

// "Certificado 123"
std::string Titulo(const AfericaoComDocumento &afericao)
{
    const std::string especie = afericao.Tipo == TipoDeclaracao ? "Declaração" : "Certificado";
    return afericao.Certificado.empty() ? especie : especie + " " + afericao.Certificado;
}

template <class Parte> bool Iguais(const std::vector<AfericaoComDocumento> &afericoes, Parte parte)
{
    return std::ranges::all_of(afericoes,
                               [&](const AfericaoComDocumento &uma) { return parte(uma) == parte(afericoes.front()); });
}

} // namespace

std::string NomeDoDocumento(const std::vector<AfericaoComDocumento> &afericoes)
{
    if (afericoes.empty() || !Iguais(afericoes, Titulo)) {
        return "";
    }
    const bool deUm = Iguais(afericoes, [](const AfericaoComDocumento &uma) { return uma.Equipamento; });
    return Titulo(afericoes.front()) + (deUm ? " - " + afericoes.front().Equipamento : "");
}

std::string NomesDeDocumentos::NomeDe(const std::string &caminho) const
{
    if (caminho == m_Visto) {
        const std::string nome = NomeDoDocumento(m_Sessao()->AfericoesDoDocumento(m_Recebido));
        return nome.empty() ? "Documento " + Conferencia::Numero(m_Recebido) : nome;
    }
    const std::string certificados = m_Temporarios + std::string(PrefixoDoCertificado);
    if (caminho.starts_with(certificados)) {
        const double afericao = std::strtod(caminho.c_str() + certificados.size(), nullptr);
        const std::string nome = NomeDoDocumento(m_Sessao()->AfericoesDoDocumentoDa(afericao));
        return nome.empty() ? "Certificado da aferição " + Conferencia::Numero(afericao) : nome;
    }
    return "";
}

std::string NomeDeArquivo(const std::string &nome, const std::string &extensao)
{
    std::string limpo;
    for (const char letra : nome) {
        const bool proibida = static_cast<unsigned char>(letra) < ' ' ||
                              std::string_view("/\\:*?\"<>|").find(letra) != std::string_view::npos;
        limpo += proibida ? '-' : letra;
    }
    limpo = Trim(limpo);
    const bool tem = limpo.size() >= extensao.size() && LCase(limpo.substr(limpo.size() - extensao.size())) == extensao;
    return tem ? limpo : limpo + extensao;
}

} // namespace mesa
