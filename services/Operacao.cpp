#include "services/Operacao.h"

#include "services/Historico.h"
#include "services/Recusa.h"

namespace mesa {

Operacao::Operacao(Banco &banco, const Operador &quem, const Instante &agora, const CustoDaSenha &custo,
                   std::string motivo, Segue segue)
    : m_Banco(banco),
      m_Quem(quem),
      m_Agora(agora),
      m_Custo(custo),
      m_Motivo(std::move(motivo)),
      m_Segue(std::move(segue))
{
}

Operacao::~Operacao()
{
    if (m_Entregue) { // the last first: a record may have been marked twice
        for (auto marca = m_Marcas.rbegin(); marca != m_Marcas.rend(); ++marca) {
            marca->first->VersaoLida = marca->second;
        }
    }
}

bool Operacao::Possui(const std::string &acao) const
{
    return Permissoes::Tem(m_Banco, m_Quem.Numero, Permissoes::Sistema, Permissoes::Objeto, acao);
}

void Operacao::Anda(double parte, const std::string &oQue) const
{
    if (m_Segue && !m_Segue(parte, oQue)) {
        throw Recusa("A operação foi cancelada: nada foi gravado.");
    }
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

void Operacao::ConfereVersao(const Registro &enviado, Raiz raiz, std::int32_t numero, std::int64_t atual,
                             const std::string &nome) const
{
    ConfereCopia(raiz, numero, enviado.VersaoLida, atual, nome);
}

void Operacao::ConfereCopia(Raiz raiz, std::int32_t numero, std::int64_t lida, std::int64_t atual,
                            const std::string &nome) const
{
    if (lida < 1 || lida > atual) {
        throw Recusa(nome + " não foi aberto. Abra-o antes de alterá-lo.");
    }
    if (lida != atual) {
        throw Recusa(nome + " foi alterado " + Historico(m_Banco).Mudancas(raiz, numero, lida) +
                     ", depois de aberto aqui. Nada foi gravado: abra-o de novo e repita a sua alteração.");
    }
}

void Operacao::Marca(Registro &enviado, std::int64_t versao)
{
    m_Marcas.emplace_back(&enviado, versao);
}

void Operacao::Entrega()
{
    for (auto &[enviado, versao] : m_Marcas) {
        std::swap(enviado->VersaoLida, versao);
    }
    m_Entregue = true;
}

} // namespace mesa
