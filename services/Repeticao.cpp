#include "services/Repeticao.h"

#include "services/Esquema.h"
#include "services/Historico.h"
#include "services/Recusa.h"
#include "services/Resumo.h"

#include <QByteArray>
#include <QUuid>

#include <utility>

namespace mesa {

Repeticao::Repeticao(Banco &banco, Numerada numerada, std::int32_t operador, const CustoDaSenha &custo, bool comSenha)
    : m_Banco(banco),
      m_Numerada(std::move(numerada)),
      m_Operador(operador)
{
    m_Numerada.Numero = S(QUuid::fromString(Q(m_Numerada.Numero)).toString(QUuid::WithoutBraces));
    if (comSenha) {
        m_Numerada.Soma = Senhas::Estica(m_Numerada.Soma, m_Numerada.Numero, custo);
    }
}

bool Repeticao::HaDeAntes() const
{
    return Consulta(m_Banco, "SELECT 1 FROM OPERACAO WHERE Numero = ?", {Q(m_Numerada.Numero)}).Proxima();
}

std::optional<std::string> Repeticao::DeAntes(const Instante &agora) const
{
    if (QUuid::fromString(Q(m_Numerada.Numero)).isNull()) {
        throw Recusa("O número com que a operação foi pedida não é um número de operação. Nada foi gravado.");
    }
    std::int64_t operacao = 0;
    std::string resposta;
    {
        Consulta linha(m_Banco, "SELECT NroOperacao, Operador, Soma, Resposta FROM OPERACAO WHERE Numero = ?",
                       {Q(m_Numerada.Numero)});
        if (!linha.Proxima()) {
            return std::nullopt;
        }
        if (linha.Inteiro(1) != m_Operador || linha.Texto(2) != m_Numerada.Soma) {
            throw Recusa("O número com que a operação foi pedida já é o de outra operação. Nada foi gravado.");
        }
        operacao = linha.Inteiro(0);
        resposta = linha.Valor(3).toByteArray().toStdString();
    }
    Insere("REPETICAO",
           {{"NroOperacao", qlonglong(operacao)}, {"Quando", qlonglong(agora.Utc())}, {"Fuso", agora.Fuso}});
    return resposta;
}

void Repeticao::Guarda(const Instante &agora) const
{
    const std::string resposta = m_Numerada.Resposta ? m_Numerada.Resposta() : std::string();
    // An empty answer is one too, and no missing value.
    const QByteArray octetos = resposta.empty() ? QByteArray("") : QByteArray::fromStdString(resposta);
    Insere("OPERACAO", {{"Numero", Q(m_Numerada.Numero)},
                        {"Operador", m_Operador},
                        {"Soma", Q(m_Numerada.Soma)},
                        {"Quando", qlonglong(agora.Utc())},
                        {"Fuso", agora.Fuso},
                        {"Resposta", octetos}});
}

std::string Repeticao::Elo(const std::string &tabela, const QVariantList &outras)
{
    QVariantList campos;
    for (const QVariant &valor : outras.mid(1)) {
        campos.push_back(valor.typeId() == QMetaType::QByteArray ? QVariant(Q(Resumo(valor.toByteArray()))) : valor);
    }
    return Historico::Encadeia(tabela, outras.front().toLongLong(), campos);
}

// Those who write do so one after the other: the numbers have no gap.
void Repeticao::Insere(const std::string &tabela, Celulas celulas) const
{
    const std::string chave(Esquema::Acha(tabela)->Chave().Nome);
    std::int64_t ultima = 0;
    {
        Consulta linha(m_Banco, "SELECT MAX(" + Q(chave) + ") FROM " + Q(tabela));
        linha.Proxima();
        ultima = linha.Inteiro(0);
    }
    celulas.insert(celulas.begin(), {chave, qlonglong(ultima + 1)});
    QVariantList valores;
    for (const Celula &celula : celulas) {
        valores.push_back(celula.Valor);
    }
    celulas.push_back({"Elo", Q(Elo(tabela, valores))});
    m_Banco.Insere(tabela, celulas);
}

} // namespace mesa
