#include "server/Sessoes.h"

#include "server/Fim.h"

#include <sodium.h>

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace servidor {

namespace {

constexpr std::size_t TamanhoDaChave = 43; // of 256 bits as text

std::string NovaChave()
{
    std::array<unsigned char, 32> bits{};
    randombytes_buf(bits.data(), bits.size());
    std::array<char, TamanhoDaChave + 1> texto{};
    sodium_bin2base64(texto.data(), texto.size(), bits.data(), bits.size(), sodium_base64_VARIANT_URLSAFE_NO_PADDING);
    return texto.data();
}

std::string ResumoDe(const std::string &chave)
{
    std::array<unsigned char, crypto_generichash_BYTES> resumo{};
    crypto_generichash(resumo.data(), resumo.size(), reinterpret_cast<const unsigned char *>(chave.data()),
                       chave.size(), nullptr, 0);
    return {reinterpret_cast<const char *>(resumo.data()), resumo.size()};
}

// The same of what a caller sent; raises a Fim for what can be no key.
std::string ResumoDaChave(const std::string &chave)
{
    if (chave.size() != TamanhoDaChave) {
        throw Fim{grpc::StatusCode::UNAUTHENTICATED, "É preciso entrar com usuário e senha."};
    }
    return ResumoDe(chave);
}

} // namespace

Sessoes::Sessoes(Relogio agora, std::chrono::minutes ociosidade, std::size_t porUsuario, std::size_t operacoes)
    : m_Agora(std::move(agora)),
      m_Ociosidade(std::chrono::duration<double>(ociosidade).count()),
      m_PorUsuario(porUsuario),
      m_Operacoes(operacoes)
{
    if (sodium_init() < 0) {
        throw Falha(NumeroFalha::ErroInterno, "Servidor", "Os números ao acaso não estão disponíveis.");
    }
}

double Sessoes::Agora() const
{
    return std::chrono::duration<double>(m_Agora().time_since_epoch()).count();
}

bool Sessoes::Ociosa(const Sessao &sessao, double agora) const
{
    return sessao.EmCurso == 0 && agora - sessao.UltimoUso > m_Ociosidade;
}

void Sessoes::TiraOciosas(double agora)
{
    std::erase_if(m_Sessoes, [&](const auto &uma) { return Ociosa(uma.second, agora); });
}

std::string Sessoes::Comeca(const mesa::Portaria::Entrada &entrada)
{
    const double agora = Agora();
    std::string chave = NovaChave();
    const std::lock_guard trava(m_Mutex);
    TiraOciosas(agora);
    std::vector<std::map<std::string, Sessao>::iterator> suas;
    for (auto uma = m_Sessoes.begin(); uma != m_Sessoes.end(); ++uma) {
        if (uma->second.Entrada.Quem.Numero == entrada.Quem.Numero) {
            suas.push_back(uma);
        }
    }
    if (suas.size() >= m_PorUsuario) {
        // One that has something under way, as a long document, stays as long as there is another.
        m_Sessoes.erase(*std::ranges::min_element(
            suas, {}, [](const auto &uma) { return std::pair(uma->second.EmCurso > 0, uma->second.UltimoUso); }));
    }
    m_Sessoes[ResumoDe(chave)] = {entrada, agora, 0};
    return chave;
}

std::int32_t Sessoes::Termina(const std::string &chave)
{
    const double agora = Agora();
    const std::lock_guard trava(m_Mutex);
    TiraOciosas(agora);
    const auto uma = m_Sessoes.extract(ResumoDe(chave));
    return uma.empty() ? 0 : uma.mapped().Entrada.Quem.Numero;
}

void Sessoes::TerminaTodas()
{
    const std::lock_guard trava(m_Mutex);
    m_Sessoes.clear();
}

// With the mutex held.
Sessoes::Sessao &Sessoes::Acha(const std::string &resumo, double agora)
{
    const auto achada = m_Sessoes.find(resumo);
    if (achada == m_Sessoes.end() || Ociosa(achada->second, agora)) {
        throw Fim{grpc::StatusCode::UNAUTHENTICATED, "A sessão terminou. Entre de novo com usuário e senha."};
    }
    return achada->second;
}

void Sessoes::Exige(const std::string &chave)
{
    const std::string resumo = ResumoDaChave(chave);
    const double agora = Agora();
    const std::lock_guard trava(m_Mutex);
    Acha(resumo, agora);
}

Sessoes::EmUso Sessoes::Usa(const std::string &chave)
{
    std::string resumo = ResumoDaChave(chave);
    const double agora = Agora();
    const std::lock_guard trava(m_Mutex);
    Sessao &sessao = Acha(resumo, agora);
    if (sessao.EmCurso >= m_Operacoes) {
        throw Ocupado("esta sessão já tem " + std::to_string(sessao.EmCurso) + " operações em andamento.");
    }
    sessao.UltimoUso = std::max(sessao.UltimoUso, agora);
    ++sessao.EmCurso;
    return {*this, std::move(resumo), sessao.Entrada};
}

std::size_t Sessoes::Quantas() const
{
    const double agora = Agora();
    const std::lock_guard trava(m_Mutex);
    return static_cast<std::size_t>(
        std::ranges::count_if(m_Sessoes, [&](const auto &uma) { return !Ociosa(uma.second, agora); }));
}

Sessoes::EmUso::EmUso(Sessoes &todas, std::string resumo, mesa::Portaria::Entrada entrada)
    : m_Todas(&todas),
      m_Resumo(std::move(resumo)),
      m_Entrada(std::move(entrada))
{
}

Sessoes::EmUso::EmUso(EmUso &&outro) noexcept
    : m_Todas(std::exchange(outro.m_Todas, nullptr)),
      m_Resumo(std::move(outro.m_Resumo)),
      m_Entrada(std::move(outro.m_Entrada))
{
}

Sessoes::EmUso::~EmUso()
{
    if (m_Todas != nullptr) {
        const double agora = m_Todas->Agora();
        const std::lock_guard trava(m_Todas->m_Mutex);
        if (const auto minha = m_Todas->m_Sessoes.find(m_Resumo); minha != m_Todas->m_Sessoes.end()) {
            --minha->second.EmCurso;
            minha->second.UltimoUso = std::max(minha->second.UltimoUso, agora);
        }
    }
}

void Sessoes::EmUso::Atualiza()
{
    const double agora = m_Todas->Agora();
    const std::lock_guard trava(m_Todas->m_Mutex);
    m_Entrada = m_Todas->Acha(m_Resumo, agora).Entrada;
}

void Sessoes::EmUso::Termina()
{
    const std::lock_guard trava(m_Todas->m_Mutex);
    std::erase_if(m_Todas->m_Sessoes, [&](const auto &uma) {
        const mesa::Portaria::Entrada &outra = uma.second.Entrada;
        return outra.Quem.Numero == m_Entrada.Quem.Numero && outra.Prova == m_Entrada.Prova &&
               outra.Versao <= m_Entrada.Versao;
    });
}

void Sessoes::EmUso::TrocaProva(const std::string &prova)
{
    const std::lock_guard trava(m_Todas->m_Mutex);
    if (const auto minha = m_Todas->m_Sessoes.find(m_Resumo); minha != m_Todas->m_Sessoes.end()) {
        minha->second.Entrada.Prova = prova;
        m_Entrada.Prova = prova;
    }
}

} // namespace servidor
