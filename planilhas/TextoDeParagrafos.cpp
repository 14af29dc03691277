#include "planilhas/TextoDeParagrafos.h"

#include "planilhas/Falhas.h"
#include "planilhas/Leitor.h"

#include <algorithm>
#include <charconv>

namespace planilhas {

namespace {

constexpr std::string_view DoTexto = ":text:1.0";

bool EhBranco(char letra)
{
    return std::string_view(" \t\r\n").find(letra) != std::string_view::npos;
}

} // namespace

void TextoDeParagrafos::Comeca()
{
    *this = TextoDeParagrafos();
}

void TextoDeParagrafos::Abre(const NomeXml &nome, const AtributosXml &atributos)
{
    ++m_Fundo;
    if (m_Alheio != 0) {
        return;
    }
    const bool texto = nome.Espaco.ends_with(DoTexto);
    if (m_Paragrafo == 0) {
        if (!texto || nome.Local != "p") {
            m_Alheio = m_Fundo;
            return;
        }
        m_Paragrafo = m_Fundo;
        m_Branco = true;
        m_NoFim = false;
        if (++m_Paragrafos > 1) {
            Junta("\n");
        }
    } else if (!texto || nome.Local == "ruby-text" || nome.Local == "note") {
        m_Alheio = m_Fundo;
    } else if (nome.Local == "s") {
        std::size_t quantos = 1;
        const std::string_view c = atributos.Valor("c", DoTexto);
        std::from_chars(c.data(), c.data() + c.size(), quantos);
        Junta(std::string(std::min(quantos, MaiorTextoDeCelula + 1), ' '));
    } else if (nome.Local == "tab") {
        Junta("\t");
    } else if (nome.Local == "line-break") {
        Junta("\n");
    }
}

void TextoDeParagrafos::Fecha(const NomeXml & /*nome*/)
{
    if (m_Fundo == m_Paragrafo) {
        if (m_NoFim) {
            m_Texto.pop_back();
        }
        m_Paragrafo = 0;
    }
    m_Alheio = m_Fundo == m_Alheio ? 0 : m_Alheio;
    --m_Fundo;
}

void TextoDeParagrafos::Poe(std::string_view texto)
{
    if (m_Paragrafo == 0 || m_Alheio != 0) {
        return;
    }
    std::string posto;
    for (const char letra : texto) {
        const bool branco = EhBranco(letra);
        if (!branco || !m_Branco) {
            posto += branco ? ' ' : letra;
        }
        m_Branco = branco;
    }
    if (!posto.empty()) {
        Junta(posto);
        m_NoFim = m_Branco;
    }
}

void TextoDeParagrafos::Junta(std::string_view texto)
{
    if (m_Texto.size() + texto.size() > MaiorTextoDeCelula) {
        FalhaDeFormato("O arquivo tem uma célula longa demais.");
    }
    m_Texto += texto;
    m_NoFim = false;
}

} // namespace planilhas
