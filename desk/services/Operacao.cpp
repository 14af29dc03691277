#include "desk/services/Operacao.h"

#include "desk/services/Historico.h"
#include "desk/services/Recusa.h"

namespace mesa {

Operacao::Operacao(Banco &banco, const Operador &quem, const Instante &agora, const VersoesLidas &lidas,
                   const CustoDaSenha &custo, std::string motivo)
    : m_Banco(banco),
      m_Quem(quem),
      m_Agora(agora),
      m_Lidas(lidas),
      m_Custo(custo),
      m_Motivo(std::move(motivo))
{
}

bool Operacao::Possui(const std::string &acao) const
{
    return Permissoes::Tem(m_Banco, m_Quem.Numero, Permissoes::Sistema, Permissoes::Objeto, acao);
}

void Operacao::Exige(const std::string &acao, const std::string &oQue, const std::string &objeto) const
{
    if (!Permissoes::Tem(m_Banco, m_Quem.Numero, Permissoes::Sistema, objeto, acao)) {
        throw Recusa(m_Quem.Nome + " não tem permissão para " + oQue + ".");
    }
}

const std::string &Operacao::Corrige(const std::string &qual)
{
    m_Corrigidas.push_back(qual);
    return m_Motivo;
}

void Operacao::ConfereMotivo() const
{
    if (m_Motivo.empty() && !m_Corrigidas.empty()) {
        throw FaltaMotivo{m_Corrigidas};
    }
}

void Operacao::ConfereVersao(Raiz raiz, std::int32_t numero, std::int64_t atual, const std::string &nome) const
{
    const auto lida = m_Lidas.find({raiz, numero});
    ConfereCopia(raiz, numero, lida == m_Lidas.end() ? 0 : lida->second, atual, nome);
}

void Operacao::ConfereCopia(Raiz raiz, std::int32_t numero, std::int64_t lida, std::int64_t atual,
                            const std::string &nome) const
{
    if (lida == 0) {
        throw Recusa(nome + " não foi aberto nesta sessão. Abra-o antes de alterá-lo.");
    }
    if (lida != atual) {
        throw Recusa(nome + " foi alterado " + Historico(m_Banco).Mudancas(raiz, numero, lida) +
                     ", depois de aberto aqui. Nada foi gravado: abra-o de novo e repita a sua alteração.");
    }
}

void Operacao::Lembra(Raiz raiz, std::int32_t numero, std::int64_t versao)
{
    m_Novas[{raiz, numero}] = versao;
}

void Operacao::LembraAMinha(Raiz raiz, std::int32_t numero, std::int64_t anterior)
{
    const auto lida = m_Lidas.find({raiz, numero});
    if (lida != m_Lidas.end() && lida->second == anterior) {
        Lembra(raiz, numero, anterior + 1);
    }
}

void Operacao::Entrega(VersoesLidas &lidas) const
{
    for (const auto &[qual, versao] : m_Novas) {
        lidas[qual] = versao;
    }
}

} // namespace mesa
