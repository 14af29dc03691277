#include "controls/PesquisaPorLetras.h"

#include "controls/OrdemPortuguesa.h"
#include "host/Texto.h"

#include <algorithm>

namespace {

// Whether an accent stands there that goes with the letter before it, U+0300 to U+036F.
bool Combinante(std::string_view texto)
{
    const auto primeiro = static_cast<unsigned char>(texto[0]);
    const auto segundo = texto.size() > 1 ? static_cast<unsigned char>(texto[1]) : 0U;
    return (primeiro == 0xCC && segundo >= 0x80) || (primeiro == 0xCD && segundo >= 0x80 && segundo <= 0xAF);
}

// A text as it is compared.
std::string Chave(std::string_view texto)
{
    std::string chave = SemAcentoNemCaixa(texto);
    for (std::size_t i = 0; i < chave.size();) {
        if (Combinante(std::string_view(chave).substr(i))) {
            chave.erase(i, 2);
        } else {
            ++i;
        }
    }
    return chave;
}

} // namespace

bool PesquisaPorLetras::Digita(std::string_view texto, Momento quando)
{
    bool todas = true;
    while (!texto.empty()) {
        if (!m_Itens.Obedece()) { // what the letter before brought about has closed the list
            return false;
        }
        const std::string letra = Left(texto, 1);
        texto.remove_prefix(letra.size());
        todas = Letra(letra, quando) && todas;
    }
    return todas;
}

bool PesquisaPorLetras::Letra(const std::string &letra, Momento quando)
{
    m_Aviso.clear();
    const bool nova = !EmCurso(quando);
    m_Ultimo = quando;
    const std::string chave = Chave(letra);
    if (chave.empty()) { // an accent by itself
        return true;
    }
    const bool repetida = Chave(m_Procurado) == chave;
    std::string procurado = nova ? letra : m_Procurado + letra;
    std::optional<std::int32_t> item;
    if (!nova || !repetida) {
        item = Primeiro(Chave(procurado), nova);
    }
    if (!item && repetida) {
        procurado = letra;
        item = Proximo(chave);
    }
    if (!item) {
        m_Aviso = "Nenhum item começa com \"" + procurado + "\".";
        if (nova) {
            m_Procurado.clear();
        }
        return false;
    }
    m_Procurado = std::move(procurado);
    m_Palavra = m_Procurado;
    Vai(*item);
    return true;
}

bool PesquisaPorLetras::Continua(std::string_view texto, Momento quando)
{
    const std::string palavra = m_Palavra + std::string(texto);
    const std::int32_t atual = m_Itens.Atual();
    const bool continua = !m_Palavra.empty() && SemPausa(quando) && atual >= 0 && atual < m_Itens.Total() &&
                          ChaveDe(atual).starts_with(Chave(palavra));
    m_Palavra = continua ? palavra : std::string();
    m_Ultimo = continua ? quando : m_Ultimo;
    return continua;
}

bool PesquisaPorLetras::Encurta(Momento quando)
{
    if (!EmCurso(quando) || !m_Itens.Obedece()) {
        return false;
    }
    m_Aviso.clear();
    m_Ultimo = quando;
    m_Procurado = Left(m_Procurado, Len(m_Procurado) - 1);
    if (const std::string chave = Chave(m_Procurado); !chave.empty()) {
        if (const auto item = Primeiro(chave, false)) {
            Vai(*item);
        }
    }
    return true;
}

void PesquisaPorLetras::Encerra()
{
    m_Procurado.clear();
    m_Aviso.clear();
}

bool PesquisaPorLetras::EmCurso(Momento quando) const
{
    return !m_Procurado.empty() && SemPausa(quando);
}

bool PesquisaPorLetras::SemPausa(Momento quando) const
{
    return quando >= m_Ultimo && quando - m_Ultimo <= Pausa;
}

void PesquisaPorLetras::Vai(std::int32_t item)
{
    if (item != m_Itens.Atual()) {
        m_Itens.Vai(item);
    }
}

std::string PesquisaPorLetras::ChaveDe(std::int32_t item) const
{
    std::string chave = Chave(m_Itens.Texto(item));
    return chave.erase(0, std::min(chave.find_first_not_of(' '), chave.size()));
}

std::optional<std::int32_t> PesquisaPorLetras::Primeiro(const std::string &chave, bool ficaNoAtual) const
{
    const std::int32_t atual = m_Itens.Atual();
    const std::int32_t total = m_Itens.Total();
    std::optional<std::int32_t> primeiro;
    for (std::int32_t item = 0; item < total; ++item) {
        const std::string texto = ChaveDe(item);
        if (texto == chave) {
            return item;
        }
        if (texto.starts_with(chave) && (!primeiro || (ficaNoAtual && item == atual))) {
            primeiro = item;
        }
    }
    return primeiro;
}

std::optional<std::int32_t> PesquisaPorLetras::Proximo(const std::string &chave) const
{
    const std::int32_t total = m_Itens.Total();
    for (std::int32_t passo = 1; passo <= total; ++passo) {
        const std::int32_t item = (m_Itens.Atual() + passo) % total;
        if (ChaveDe(item).starts_with(chave)) {
            return item;
        }
    }
    return std::nullopt;
}
