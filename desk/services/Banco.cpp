#include "desk/services/Banco.h"

#include <QSqlDatabase>

#include <atomic>
#include <utility>

namespace mesa {

namespace {

QString NovoNomeDeConexao()
{
    static std::atomic<int> ultima = 0;
    return QString("registro-%1").arg(++ultima);
}

} // namespace

Banco::Banco(std::unique_ptr<Dialeto> dialeto, const std::string &onde)
    : m_Dialeto(std::move(dialeto)),
      m_Conexao(NovoNomeDeConexao())
{
    try {
        m_Dialeto->Abre(m_Conexao, onde);
        Migra();
    } catch (...) {
        m_Preparadas.clear();
        QSqlDatabase::removeDatabase(m_Conexao);
        throw;
    }
}

Banco::~Banco()
{
    m_Preparadas.clear();
    QSqlDatabase::removeDatabase(m_Conexao);
}

QSqlQuery &Banco::Preparada(const QString &sql)
{
    const auto achada = m_Preparadas.find(sql);
    if (achada != m_Preparadas.end()) {
        return achada->second;
    }
    QSqlQuery nova(QSqlDatabase::database(m_Conexao, false));
    nova.setForwardOnly(true);
    if (!nova.prepare(sql)) {
        throw m_Dialeto->Erro(nova.lastError());
    }
    return m_Preparadas.emplace(sql, std::move(nova)).first->second;
}

void Banco::Comanda(const QString &sql)
{
    QSqlQuery comando(QSqlDatabase::database(m_Conexao, false));
    if (!comando.exec(sql)) {
        throw m_Dialeto->Erro(comando.lastError());
    }
}

Consulta Banco::Insere(std::string_view tabela, const Celulas &celulas)
{
    std::string colunas;
    std::string lugares;
    QVariantList valores;
    for (const Celula &celula : celulas) {
        const char *separador = valores.empty() ? "" : ", ";
        colunas.append(separador).append(celula.Coluna);
        lugares.append(separador).append("?");
        valores.push_back(celula.Valor);
    }
    return Consulta(*this, Q("INSERT INTO " + std::string(tabela) + " (" + colunas + ") VALUES (" + lugares + ")"),
                    valores);
}

void Banco::Atualiza(std::string_view tabela, const Celulas &celulas, const Celula &chave)
{
    std::string colunas;
    QVariantList valores;
    for (const Celula &celula : celulas) {
        colunas.append(valores.empty() ? "" : ", ").append(celula.Coluna).append(" = ?");
        valores.push_back(celula.Valor);
    }
    valores.push_back(chave.Valor);
    Consulta(*this,
             Q("UPDATE " + std::string(tabela) + " SET " + colunas + " WHERE " + std::string(chave.Coluna) + " = ?"),
             valores);
}

// The version is read again under the right to write, so that of two programs that open an old registry together one
// migrates it and the other finds it migrated.
void Banco::Migra()
{
    const std::vector<Migracao> migracoes = m_Dialeto->Migracoes();
    Escreve([&] {
        Comanda("CREATE TABLE IF NOT EXISTS ESQUEMA (Versao INTEGER NOT NULL)");
        std::size_t versao = 0;
        {
            Consulta atual(*this, "SELECT MAX(Versao) FROM ESQUEMA");
            atual.Proxima();
            versao = static_cast<std::size_t>(atual.Inteiro(0));
        }
        if (versao > migracoes.size()) {
            throw Falha(NumeroFalha::ErroInterno, "Servicos",
                        "O registro é da versão " + std::to_string(versao) +
                            ", mais nova que a deste programa (versão " + std::to_string(migracoes.size()) +
                            "). Atualize o programa.");
        }
        for (; versao < migracoes.size(); ++versao) {
            for (const QString &comando : migracoes[versao]) {
                Comanda(comando);
            }
            Insere("ESQUEMA", {{"Versao", qlonglong(versao + 1)}});
        }
    });
}

Transacao::Transacao(Banco &banco, bool escreve) : m_Banco(banco)
{
    if (banco.m_EmTransacao) {
        throw Falha(NumeroFalha::ErroInterno, "Servicos", "Uma operação foi pedida no meio de outra.");
    }
    if (escreve) {
        banco.m_Dialeto->ConfereLugar(banco.m_Conexao);
    }
    banco.Comanda(escreve ? banco.m_Dialeto->IniciaEscrita() : banco.m_Dialeto->IniciaLeitura());
    banco.m_EmTransacao = true;
}

Transacao::~Transacao()
{
    if (m_Banco.m_EmTransacao) {
        m_Banco.m_EmTransacao = false;
        IgnoraErro([&] { m_Banco.Comanda("ROLLBACK"); }); // a failed write may have rolled back by itself
    }
}

void Transacao::Confirma()
{
    m_Banco.Comanda("COMMIT");
    m_Banco.m_EmTransacao = false;
}

Consulta::Consulta(Banco &banco, const QString &sql, const QVariantList &valores)
    : m_Banco(banco),
      m_Preparada(banco.Preparada(sql))
{
    for (int posicao = 0; posicao < valores.size(); ++posicao) {
        m_Preparada.bindValue(posicao, valores[posicao]);
    }
    if (!m_Preparada.exec()) {
        const ErroSql erro = banco.m_Dialeto->Erro(m_Preparada.lastError());
        m_Preparada.finish();
        throw erro;
    }
}

Consulta::~Consulta()
{
    m_Preparada.finish();
}

bool Consulta::Proxima()
{
    if (m_Preparada.next()) {
        return true;
    }
    if (m_Preparada.lastError().isValid()) {
        throw m_Banco.m_Dialeto->Erro(m_Preparada.lastError());
    }
    return false;
}

std::int64_t Consulta::Inteiro(int coluna) const
{
    return m_Preparada.value(coluna).toLongLong();
}

std::string Consulta::Texto(int coluna) const
{
    return m_Preparada.value(coluna).toString().toStdString();
}

QVariant Consulta::Valor(int coluna) const
{
    return m_Preparada.value(coluna);
}

std::int64_t Consulta::NumeroNovo() const
{
    return m_Preparada.lastInsertId().toLongLong();
}

} // namespace mesa
