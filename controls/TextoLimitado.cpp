#include "controls/TextoLimitado.h"

#include "host/Texto.h"

#include <utility>

namespace {

// What no key types: control characters, and bytes that are no character.
bool Digitado(std::string_view carater)
{
    const auto primeiro = static_cast<unsigned char>(carater.front());
    return primeiro >= 0x20 && primeiro != 0x7F && (primeiro < 0x80 || carater.size() > 1);
}

} // namespace

TextoLimitado::TextoLimitado(std::size_t limite, Regra regra, bool maiusculas, std::string aceitos)
    : m_Limite(limite),
      m_Regra(std::move(regra)),
      m_Maiusculas(maiusculas),
      m_Aceitos(std::move(aceitos))
{
}

std::size_t TextoLimitado::Fim() const
{
    return Len(m_Texto);
}

void TextoLimitado::Escreve(std::string_view texto)
{
    m_Texto = texto;
}

void TextoLimitado::Retira(std::size_t posicao, std::size_t n)
{
    const std::string antes = Left(m_Texto, posicao);
    const std::string tirado = Left(std::string_view(m_Texto).substr(antes.size()), n);
    m_Texto.erase(antes.size(), tirado.size());
}

Entrada TextoLimitado::Insere(std::size_t &posicao, std::string_view carater)
{
    if (!Digitado(carater) || !Aceita(carater)) {
        return Entrada::NaoAceito;
    }
    if (m_Limite > 0 && Len(m_Texto) >= m_Limite) {
        return Entrada::SemLugar;
    }
    const std::string antes = Left(m_Texto, posicao);
    m_Texto.insert(antes.size(), m_Maiusculas ? UCase(carater) : std::string(carater));
    posicao = Len(antes) + 1;
    return Entrada::Entrou;
}

std::string TextoLimitado::Dica(const std::vector<std::string> &recusados) const
{
    if (recusados.empty()) {
        return "Até " + std::to_string(m_Limite) + (m_Limite == 1 ? " caractere." : " caracteres.");
    }
    if (!m_Aceitos.empty()) {
        return m_Aceitos;
    }
    std::string visiveis;
    for (const std::string &recusado : recusados) {
        if (Digitado(recusado)) {
            visiveis += " " + recusado;
        }
    }
    const std::string dica = recusados.size() == 1 ? "Caractere não aceito" : "Caracteres não aceitos";
    return visiveis.empty() ? dica + "." : dica + ":" + visiveis;
}
