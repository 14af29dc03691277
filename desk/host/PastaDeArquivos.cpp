#include "desk/host/PastaDeArquivos.h"

#include <system_error>

namespace mesa {

std::filesystem::path PastaDeArquivos::Pasta(const std::filesystem::path &senao) const
{
    const std::filesystem::path lembrada = m_Lembrancas ? m_Lembrancas->Lembranca(m_Chave) : std::string();
    std::error_code naoHa; // the disk may be gone
    return lembrada.is_absolute() && std::filesystem::is_directory(lembrada, naoHa) ? lembrada : senao;
}

void PastaDeArquivos::Lembra(const std::filesystem::path &pasta) const
{
    if (m_Lembrancas) {
        m_Lembrancas->Lembra(m_Chave, pasta.string());
    }
}

} // namespace mesa
