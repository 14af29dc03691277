#include "tela/ColunasArrumadas.h"

#include "host/Texto.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>

namespace {

constexpr std::string_view EntreColunas = "\n";
constexpr std::string_view EntreDados = "\t";
constexpr std::string_view Escondida = "-";
constexpr std::int32_t MaiorLargura = 100'000; // that somebody could mean, in twips

std::optional<std::int32_t> Largura(const std::string &texto)
{
    std::int32_t largura = 0;
    const auto [fim, erro] = std::from_chars(texto.data(), texto.data() + texto.size(), largura);
    if (erro != std::errc() || fim != texto.data() + texto.size() || largura < 0 || largura > MaiorLargura) {
        return std::nullopt;
    }
    return largura;
}

} // namespace

void ColunasArrumadas::Define(const std::vector<Coluna> &colunas)
{
    const std::string antes = Texto();
    m_Originais = colunas;
    m_Colunas = colunas;
    Le(antes);
}

std::vector<std::int32_t> ColunasArrumadas::Vistas() const
{
    std::vector<std::int32_t> vistas;
    for (const Coluna &coluna : m_Colunas) {
        if (coluna.Vista) {
            vistas.push_back(coluna.Numero);
        }
    }
    return vistas;
}

std::vector<ColunasArrumadas::Coluna>::iterator ColunasArrumadas::Acha(std::int32_t numero)
{
    return std::ranges::find(m_Colunas, numero, &Coluna::Numero);
}

bool ColunasArrumadas::Mostra(std::int32_t numero, bool vista)
{
    const auto achada = Acha(numero);
    if (achada == m_Colunas.end() || (!vista && achada->Vista && Vistas().size() == 1)) {
        return false;
    }
    achada->Vista = vista;
    return true;
}

bool ColunasArrumadas::Move(std::int32_t numero, std::size_t lugar)
{
    const auto achada = Acha(numero);
    if (achada == m_Colunas.end() || lugar >= m_Colunas.size()) {
        return false;
    }
    const Coluna coluna = *achada;
    m_Colunas.erase(achada);
    m_Colunas.insert(m_Colunas.begin() + static_cast<std::ptrdiff_t>(lugar), coluna);
    return true;
}

bool ColunasArrumadas::Alarga(std::int32_t numero, std::int32_t largura)
{
    const auto achada = Acha(numero);
    if (achada == m_Colunas.end() || largura < 0 || largura > MaiorLargura) {
        return false;
    }
    achada->Largura = largura;
    return true;
}

void ColunasArrumadas::Volta()
{
    m_Colunas = m_Originais;
}

std::string ColunasArrumadas::Texto() const
{
    const auto comoEra = [](const Coluna &uma, const Coluna &outra) {
        return uma.Numero == outra.Numero && uma.Largura == outra.Largura && uma.Vista == outra.Vista;
    };
    if (std::ranges::equal(m_Colunas, m_Originais, comoEra)) {
        return "";
    }
    std::string texto;
    for (const Coluna &coluna : m_Colunas) {
        texto += texto.empty() ? "" : EntreColunas;
        texto += coluna.Chave;
        texto += EntreDados;
        texto += std::to_string(coluna.Largura);
        if (!coluna.Vista) {
            texto += EntreDados;
            texto += Escondida;
        }
    }
    return texto;
}

// A column that is not in the text comes behind the one that is before it in the table.
void ColunasArrumadas::Le(const std::string &texto)
{
    std::vector<Coluna> lidas;
    for (const std::string &linha : Divide(texto, EntreColunas)) {
        const std::vector<std::string> dados = Divide(linha, EntreDados);
        const auto original =
            dados.empty() ? m_Originais.end() : std::ranges::find(m_Originais, dados.front(), &Coluna::Chave);
        if (original == m_Originais.end() ||
            std::ranges::find(lidas, original->Numero, &Coluna::Numero) != lidas.end()) {
            continue;
        }
        Coluna lida = *original;
        lida.Largura = dados.size() > 1 ? Largura(dados[1]).value_or(0) : 0;
        lida.Vista = dados.size() < 3 || dados[2] != Escondida;
        lidas.push_back(lida);
    }
    for (auto original = m_Originais.begin(); original != m_Originais.end(); ++original) {
        if (std::ranges::find(lidas, original->Numero, &Coluna::Numero) == lidas.end()) {
            auto lugar = lidas.begin();
            if (original != m_Originais.begin()) {
                lugar = std::next(std::ranges::find(lidas, std::prev(original)->Numero, &Coluna::Numero));
            }
            lidas.insert(lugar, *original);
        }
    }
    m_Colunas = std::move(lidas);
    if (Vistas().empty()) { // those that were seen are no longer there
        for (Coluna &coluna : m_Colunas) {
            coluna.Vista = true;
        }
    }
}
