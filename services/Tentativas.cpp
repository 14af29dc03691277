#include "services/Tentativas.h"

#include "host/Conversoes.h"
#include "services/Resumo.h"

#include <sodium.h>

#include <algorithm>
#include <cmath>

namespace mesa {

namespace {

constexpr std::int64_t TentativasLivres = 2;
constexpr std::int32_t PrimeiraEspera = 5; // seconds
constexpr std::int32_t MaiorEspera = 300;
constexpr std::size_t MaisNomes = 10000;

std::int64_t Segundos(const Instante &agora)
{
    return std::llround(agora.Local.Valor * 86400) - std::int64_t{60} * agora.Fuso;
}

} // namespace

std::int32_t Tentativas::Espera() const
{
    if (Vezes <= TentativasLivres) {
        return 0;
    }
    const std::int64_t dobras = std::min<std::int64_t>(Vezes - TentativasLivres - 1, 10);
    return std::min(PrimeiraEspera << dobras, MaiorEspera);
}

std::int32_t Tentativas::Falta(const Instante &agora) const
{
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(EsperaAte - Segundos(agora), 0, std::int64_t{Espera()}));
}

bool Tentativas::Acerta(const Instante &agora)
{
    const std::int64_t fim = Segundos(agora) + Espera();
    if (EsperaAte <= fim) {
        return false;
    }
    EsperaAte = fim;
    return true;
}

void Tentativas::Conta(const Instante &agora)
{
    ++Vezes;
    EsperaAte = Segundos(agora) + Espera();
}

TentativasDoUsuario::TentativasDoUsuario(Banco &banco, std::int32_t numero, const std::string &estacao)
    : m_Banco(banco),
      m_Numero(numero)
{
    if (Consulta(banco, "SELECT 1 FROM ESTACAO WHERE Numero = ? AND Estacao = ?", {numero, Q(estacao)}).Proxima()) {
        m_Estacao = estacao;
    }
}

Tentativas TentativasDoUsuario::Le() const
{
    Consulta linha(m_Banco, "SELECT Vezes, EsperaAte FROM ENTRADA_RECUSADA WHERE Numero = ? AND Estacao = ?",
                   {m_Numero, Q(m_Estacao)});
    return linha.Proxima() ? Tentativas{linha.Inteiro(0), linha.Inteiro(1)} : Tentativas{};
}

void TentativasDoUsuario::Grava(const Tentativas &tentativas)
{
    Celulas celulas = {{"Vezes", qlonglong(tentativas.Vezes)},
                       {"EsperaAte", qlonglong(tentativas.EsperaAte)},
                       {"Soma", Q(Soma(m_Numero, m_Estacao, tentativas))}};
    std::int64_t numero = 0;
    {
        Consulta linha(m_Banco, "SELECT NroEntrada FROM ENTRADA_RECUSADA WHERE Numero = ? AND Estacao = ?",
                       {m_Numero, Q(m_Estacao)});
        numero = linha.Proxima() ? linha.Inteiro(0) : 0;
    }
    if (numero > 0) {
        m_Banco.Atualiza("ENTRADA_RECUSADA", celulas, {"NroEntrada", qlonglong(numero)});
    } else {
        celulas.push_back({"Numero", m_Numero});
        celulas.push_back({"Estacao", Q(m_Estacao)});
        m_Banco.Insere("ENTRADA_RECUSADA", celulas);
    }
}

std::string TentativasDoUsuario::Qual() const
{
    return CStr(m_Numero) + "\n" + m_Estacao;
}

bool TentativasDoUsuario::EmEspera(Banco &banco, std::int32_t numero, const Instante &agora)
{
    Consulta linhas(banco, "SELECT Vezes, EsperaAte FROM ENTRADA_RECUSADA WHERE Numero = ?", {numero});
    while (linhas.Proxima()) {
        if (Tentativas{linhas.Inteiro(0), linhas.Inteiro(1)}.Falta(agora) > 0) {
            return true;
        }
    }
    return false;
}

void TentativasDoUsuario::EsqueceTodas(Banco &banco, std::int32_t numero)
{
    std::map<std::int64_t, std::string> somas;
    {
        Consulta linhas(banco, "SELECT NroEntrada, Estacao FROM ENTRADA_RECUSADA WHERE Numero = ?", {numero});
        while (linhas.Proxima()) {
            somas[linhas.Inteiro(0)] = Soma(numero, linhas.Texto(1), {});
        }
    }
    for (const auto &[entrada, soma] : somas) {
        banco.Atualiza("ENTRADA_RECUSADA", {{"Vezes", 0}, {"EsperaAte", 0}, {"Soma", Q(soma)}},
                       {"NroEntrada", qlonglong(entrada)});
    }
}

std::string TentativasDoUsuario::Soma(std::int32_t numero, const std::string &estacao, const Tentativas &tentativas)
{
    return Resumo(QByteArray::fromStdString(CStr(numero) + "\n" + estacao + "\n" + CStr(tentativas.Vezes) + "\n" +
                                            CStr(tentativas.EsperaAte)));
}

TentativasEmMemoria::TentativasEmMemoria()
{
    static_assert(std::tuple_size_v<decltype(m_Sal)> == crypto_generichash_KEYBYTES);
    if (sodium_init() < 0) {
        throw Falha(NumeroFalha::ErroInterno, "Servicos", "Não foi possível preparar a entrada dos usuários.");
    }
    crypto_generichash_keygen(m_Sal.data());
}

void TentativasEmMemoria::NaoOlhada(const std::string &qual, const Tentativas &antes, const Tentativas &contadas)
{
    const std::lock_guard tranca(m_Tranca);
    m_NaoOlhadas[qual] = {antes, contadas};
}

Tentativas TentativasEmMemoria::SemNaoOlhada(const std::string &qual, const Tentativas &contadas)
{
    const std::lock_guard tranca(m_Tranca);
    const auto volta = m_NaoOlhadas.find(qual);
    return volta != m_NaoOlhadas.end() && volta->second.Contadas == contadas ? volta->second.Antes : contadas;
}

void TentativasEmMemoria::Olhada(const std::string &qual)
{
    const std::lock_guard tranca(m_Tranca);
    m_NaoOlhadas.erase(qual);
}

Tentativas &TentativasEmMemoria::Acha(const std::string &chave)
{
    std::string resumo(crypto_generichash_BYTES, '\0');
    crypto_generichash(reinterpret_cast<unsigned char *>(resumo.data()), resumo.size(),
                       reinterpret_cast<const unsigned char *>(chave.data()), chave.size(), m_Sal.data(), m_Sal.size());
    if (m_Contagens.size() >= MaisNomes && m_Contagens.count(resumo) == 0) {
        m_Contagens.erase(
            std::ranges::min_element(m_Contagens, {}, [](const auto &contagem) { return contagem.second.EsperaAte; }));
    }
    return m_Contagens[resumo];
}

} // namespace mesa
