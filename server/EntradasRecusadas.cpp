#include "server/EntradasRecusadas.h"

#include <algorithm>

namespace servidor {

namespace {

using Momentos = std::map<std::string, EntradasRecusadas::Momento>;

std::string Chave(const std::string &endereco, const std::string &quem)
{
    return endereco + "\n" + quem;
}

// Makes room for one more: the earliest goes.
void AbreLugar(Momentos &momentos, std::size_t maximo)
{
    if (momentos.size() >= maximo) {
        momentos.erase(std::ranges::min_element(momentos, {}, [](const auto &um) { return um.second; }));
    }
}

} // namespace

std::int32_t EntradasRecusadas::Falta(const std::string &endereco, Momento agora) const
{
    const std::lock_guard trava(m_Mutex);
    const auto achado = m_Vazios.find(endereco);
    return achado == m_Vazios.end() ? 0 : Falta(achado->second, agora);
}

std::int32_t EntradasRecusadas::Tenta(const std::string &endereco, Momento agora)
{
    const std::lock_guard trava(m_Mutex);
    if (!m_Vazios.contains(endereco)) {
        AbreLugar(m_Vazios, MaisEnderecos);
    }
    Momento &vazio = m_Vazios[endereco];
    const std::int32_t falta = Falta(vazio, agora);
    if (falta == 0) {
        vazio = std::max(vazio, agora) + Esquece;
    }
    return falta;
}

std::int32_t EntradasRecusadas::Falta(Momento vazio, Momento agora)
{
    const auto falta = std::chrono::ceil<std::chrono::seconds>(vazio - agora - (SemEspera - 1) * Esquece);
    return std::max(0, static_cast<std::int32_t>(falta.count()));
}

void EntradasRecusadas::Devolve(const std::string &endereco)
{
    const std::lock_guard trava(m_Mutex);
    if (const auto achado = m_Vazios.find(endereco); achado != m_Vazios.end()) {
        achado->second -= Esquece;
    }
}

bool EntradasRecusadas::EhConhecido(const std::string &endereco, const std::string &quem) const
{
    const std::lock_guard trava(m_Mutex);
    return m_Conhecidos.contains(Chave(endereco, quem));
}

void EntradasRecusadas::Conhece(const std::string &endereco, const std::string &quem, Momento agora)
{
    const std::lock_guard trava(m_Mutex);
    const std::string chave = Chave(endereco, quem);
    if (!m_Conhecidos.contains(chave)) {
        AbreLugar(m_Conhecidos, MaisConhecidos);
    }
    m_Conhecidos[chave] = agora;
}

} // namespace servidor
