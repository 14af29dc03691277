#include "controls/TextoGabarito.h"

#include <algorithm>
#include <utility>

namespace {

bool Digito(char c)
{
    return c >= '0' && c <= '9';
}

} // namespace

TextoGabarito::TextoGabarito(std::string gabarito, char vazio) : m_Gabarito(std::move(gabarito)), m_Vazio(vazio)
{
    Esvazia();
}

std::string TextoGabarito::Digitos() const
{
    std::string digitos;
    for (std::size_t i = 0; i < m_Texto.size(); ++i) {
        if (Lugar(i) && m_Texto[i] != m_Vazio) {
            digitos += m_Texto[i];
        }
    }
    return digitos;
}

std::size_t TextoGabarito::Fim() const
{
    for (std::size_t i = m_Texto.size(); i > 0; --i) {
        if (Lugar(i - 1) && m_Texto[i - 1] != m_Vazio) {
            return i;
        }
    }
    return 0;
}

bool TextoGabarito::TemForma(std::string_view texto) const
{
    if (texto.size() != m_Gabarito.size()) {
        return false;
    }
    for (std::size_t i = 0; i < texto.size(); ++i) {
        if (Lugar(i) ? !Digito(texto[i]) && texto[i] != m_Vazio : texto[i] != m_Gabarito[i]) {
            return false;
        }
    }
    return true;
}

void TextoGabarito::Esvazia()
{
    m_Texto = m_Gabarito;
    std::ranges::replace(m_Texto, '0', m_Vazio);
}

void TextoGabarito::Escreve(std::string_view texto)
{
    if (TemForma(texto)) {
        m_Texto = texto;
        return;
    }
    Esvazia();
    std::size_t posicao = 0;
    for (char c : texto) {
        if (Digito(c)) {
            Insere(posicao, {&c, 1});
        }
    }
}

void TextoGabarito::Retira(std::size_t posicao, std::size_t n)
{
    for (std::size_t i = posicao; i < m_Texto.size() && i - posicao < n; ++i) {
        if (Lugar(i)) {
            m_Texto[i] = m_Vazio;
        }
    }
}

void TextoGabarito::Insere(std::size_t &posicao, std::string_view carater)
{
    const char c = carater.front();
    if (posicao < m_Texto.size() && !Lugar(posicao) && c == m_Gabarito[posicao]) {
        ++posicao;
        return;
    }
    if (!Digito(c)) {
        return;
    }
    for (std::size_t i = posicao; i < m_Texto.size(); ++i) {
        if (Lugar(i)) {
            m_Texto[i] = c;
            posicao = i + 1;
            return;
        }
    }
}
