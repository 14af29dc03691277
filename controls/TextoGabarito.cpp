#include "controls/TextoGabarito.h"

#include <algorithm>
#include <utility>

namespace {

// What people type between the digits of a date or an hour.
constexpr std::string_view Separadores = "/-.:, hH";

bool Digito(char c)
{
    return c >= '0' && c <= '9';
}

template <class Pertence> std::size_t Grupos(std::string_view texto, Pertence &&pertence)
{
    std::size_t grupos = 0;
    for (std::size_t i = 0; i < texto.size(); ++i) {
        grupos += pertence(texto[i]) && (i == 0 || !pertence(texto[i - 1])) ? 1U : 0U;
    }
    return grupos;
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

Entrada TextoGabarito::Insere(std::size_t &posicao, std::string_view carater)
{
    const char c = carater.front();
    if (!Digito(c)) {
        const bool separa = Separadores.find(c) != std::string_view::npos || m_Gabarito.find(c) != std::string::npos;
        if (separa) {
            Separa(posicao);
        }
        return separa ? Entrada::Entrou : Entrada::NaoAceito;
    }
    posicao = std::min(posicao, Fim());
    std::size_t lugar = m_Gabarito.find('0', posicao);
    for (std::size_t i = 0; lugar == std::string::npos && i < m_Texto.size(); ++i) {
        lugar = Lugar(i) && m_Texto[i] == m_Vazio ? i : lugar;
    }
    if (lugar == std::string::npos) {
        return Entrada::SemLugar;
    }
    m_Texto[lugar] = c;
    posicao = lugar + 1;
    return Entrada::Entrou;
}

// The position moves to the next group. The last group is ended by nothing.
void TextoGabarito::Separa(std::size_t &posicao)
{
    posicao = std::min(posicao, Fim());
    std::size_t fim = posicao;
    while (fim < m_Texto.size() && Lugar(fim)) {
        ++fim;
    }
    std::size_t inicio = fim;
    while (inicio > 0 && Lugar(inicio - 1)) {
        --inicio;
    }
    const std::size_t proximo = m_Gabarito.find('0', fim);
    std::string digitos = m_Texto.substr(inicio, fim - inicio);
    std::erase(digitos, m_Vazio);
    if (proximo == std::string::npos || digitos.empty()) {
        return;
    }
    digitos.insert(0, fim - inicio - digitos.size(), '0');
    m_Texto.replace(inicio, digitos.size(), digitos);
    posicao = proximo;
}

bool TextoGabarito::EInteiro(std::string_view texto) const
{
    if (texto.size() < 2) {
        return false;
    }
    const auto eLugar = [](char c) { return c == '0'; };
    return Grupos(texto, Digito) == Grupos(m_Gabarito, eLugar) ||
           std::ranges::count_if(texto, Digito) >= std::ranges::count_if(m_Gabarito, eLugar);
}

std::string TextoGabarito::Dica(const std::vector<std::string> &recusados) const
{
    return recusados.empty() ? "O campo já está completo." : "Só algarismos.";
}
