#include "tests/fuzz/Octetos.h"

#include <algorithm>
#include <bit>

double Octetos::Real() noexcept
{
    const std::uint64_t alto = Natural();
    return std::bit_cast<double>(alto << 32U | Natural());
}

std::string Octetos::Texto(int maximo)
{
    return Texto(static_cast<std::size_t>(Ate(maximo)));
}

std::uint32_t Octetos::Natural() noexcept
{
    std::uint32_t valor = 0;
    for (int octeto = 0; octeto < 4; ++octeto) {
        valor = valor << 8U | Octeto();
    }
    return valor;
}

std::string Octetos::Texto(std::size_t tamanho)
{
    tamanho = std::min(tamanho, m_Restam);
    std::string texto(m_Proximo, m_Proximo + tamanho);
    m_Proximo += tamanho;
    m_Restam -= tamanho;
    return texto;
}

int Despacha(const std::uint8_t *dados, std::size_t tamanho, std::initializer_list<void (*)(Octetos &)> procedimentos)
{
    Octetos octetos(dados, tamanho);
    procedimentos.begin()[octetos.Ate(static_cast<int>(procedimentos.size()) - 1)](octetos);
    return 0;
}
