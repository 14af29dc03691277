#include "services/Banco.h"

#include "services/Esquema.h"

#include <QSqlDatabase>

#include <atomic>
#include <chrono>
#include <thread>
#include <utility>

namespace mesa {

namespace {

QString NovoNomeDeConexao()
{
    static std::atomic<int> ultima = 0;
    return QString("registro-%1").arg(++ultima);
}

// A server that went away comes back, or another one takes its place, in a while.
constexpr std::chrono::milliseconds PausaDepoisDaQueda{100};

} // namespace

Banco::Banco(std::unique_ptr<Dialeto> dialeto, const std::string &onde, Abertura abertura,
             const std::function<void()> &prepara)
    : m_Dialeto(std::move(dialeto)),
      m_Conexao(NovoNomeDeConexao())
{
    try {
        m_SomenteLeitura = m_Dialeto->Abre(m_Conexao, onde, abertura);
        prepara();
    } catch (...) {
        m_Preparadas.clear();
        QSqlDatabase::removeDatabase(m_Conexao);
        throw;
    }
}

Banco::Banco(std::unique_ptr<Dialeto> dialeto, const std::string &onde, const Instante &agora,
             const std::function<void()> &antesDeMigrar)
    : Banco(std::move(dialeto), onde, Abertura::Existente,
            [this, &agora, &antesDeMigrar] { Migra(agora, antesDeMigrar); })
{
}

Banco::Banco(std::unique_ptr<Dialeto> dialeto, const std::string &onde, SoConsulta)
    : Banco(std::move(dialeto), onde, Abertura::Consulta, [this] { Migra(Data(), {}); })
{
}

Banco::Banco(std::unique_ptr<Dialeto> dialeto, const std::string &onde, const std::function<void(Banco &)> &funda)
    : Banco(std::move(dialeto), onde, Abertura::Nova, [this, &funda] {
          Escreve([&] {
              for (const QString &comando : m_Dialeto->Esquema()) {
                  Comanda(comando);
              }
              Insere("ESQUEMA", {{"Versao", qlonglong(VersaoAtual())}});
              funda(*this);
          });
      })
{
}

Banco::~Banco()
{
    m_Preparadas.clear();
    QSqlDatabase::removeDatabase(m_Conexao);
}

Preparada &Banco::Comando(const QString &sql)
{
    std::unique_ptr<Preparada> &achada = m_Preparadas[sql];
    if (!achada) {
        achada = m_Dialeto->Prepara(m_Conexao, sql);
    }
    return *achada;
}

void Banco::Comanda(const QString &sql)
{
    if (sql == "ROLLBACK" && m_Dialeto->Caiu()) {
        return; // what was under way went with the connection
    }
    m_Dialeto->Comanda(m_Conexao, sql);
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
    const Esquema::Tabela *declarada = Esquema::Acha(tabela);
    const std::string volta = declarada == nullptr ? "" : " RETURNING " + std::string(declarada->Chave().Nome);
    return Consulta(*this,
                    Q("INSERT INTO " + std::string(tabela) + " (" + colunas + ") VALUES (" + lugares + ")" + volta),
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

std::size_t Banco::Versao()
{
    Consulta atual(*this, "SELECT MAX(Versao) FROM ESQUEMA");
    atual.Proxima();
    return static_cast<std::size_t>(atual.Inteiro(0));
}

void Banco::Migra(const Instante &agora, const std::function<void()> &antesDeMigrar)
{
    const std::vector<Migracao> migracoes = m_Dialeto->Migracoes();
    const auto le = [&] { return Versao(); };
    const std::size_t atual = VersaoAtual();
    const bool escreve = m_SomenteLeitura.empty() && m_Dialeto->ProvaEscritaAoAbrir();
    const std::size_t versao = escreve ? Escreve(le) : Le(le);
    if (versao > atual) {
        throw Falha(NumeroFalha::ErroInterno, "Servicos",
                    "O registro é da versão " + std::to_string(versao) + ", mais nova que a deste programa (versão " +
                        std::to_string(atual) + "). Atualize o programa.");
    }
    if (versao == atual) {
        return;
    }
    if (!m_SomenteLeitura.empty()) {
        throw Falha(NumeroFalha::PermissaoNegada, "Servicos",
                    "O registro é da versão " + std::to_string(versao) + " e precisa ser atualizado para a versão " +
                        std::to_string(atual) + ", o que aqui não pode ser feito. " + m_SomenteLeitura);
    }
    try {
        for (const QString &comando : m_Dialeto->AntesDeMigrar()) {
            Comanda(comando);
        }
        AplicaMigracoes(migracoes, agora, antesDeMigrar);
        for (const QString &comando : m_Dialeto->DepoisDeMigrar()) {
            Comanda(comando);
        }
    } catch (const ErroSql &erro) {
        if (erro.Motivo != MotivoSql::SoLeitura) {
            throw;
        }
        throw Falha(NumeroFalha::PermissaoNegada, "Servicos",
                    "O registro é da versão " + std::to_string(versao) + " e precisa ser atualizado para a versão " +
                        std::to_string(atual) +
                        ", o que este usuário do banco de dados não pode fazer: atualize-o com o do dono "
                        "(registro-servidor --atualiza). Nada foi mudado.");
    }
}

// The version is read again under the right to write, so that of two programs that open an old registry together one
// migrates it and the other finds it migrated.
void Banco::AplicaMigracoes(const std::vector<Migracao> &migracoes, const Instante &agora,
                            const std::function<void()> &antesDeMigrar)
{
    Escreve([&] {
        if (antesDeMigrar && Versao() < VersaoAtual()) {
            antesDeMigrar();
        }
        for (std::size_t versao = Versao(); versao < VersaoAtual(); ++versao) {
            const Migracao &migracao = migracoes[versao - m_Dialeto->PrimeiraVersao()];
            for (const QString &comando : migracao.Comandos) {
                Comanda(comando);
            }
            if (migracao.Passo) {
                migracao.Passo(*this, agora);
            }
            Insere("ESQUEMA", {{"Versao", qlonglong(versao + 1)}});
        }
        Consulta partidas(*this, m_Dialeto->ReferenciasPartidas());
        if (partidas.Proxima()) {
            throw Falha(NumeroFalha::ErroInterno, "Servicos",
                        "O registro não pôde ser atualizado: a linha " + partidas.Texto(1) + " de " +
                            partidas.Texto(0) + " se refere a uma linha de " + partidas.Texto(2) +
                            " que não existe. Nada foi mudado.");
        }
    });
}

std::size_t Banco::VersaoAtual() const
{
    return m_Dialeto->PrimeiraVersao() + m_Dialeto->Migracoes().size();
}

void Banco::TentaDeNovo(const ErroSql &erro, int tentativa)
{
    const auto pausa = erro.Motivo == MotivoSql::Queda ? PausaDepoisDaQueda * (tentativa - 1) : PausaDepoisDaQueda * 0;
    if ((erro.Motivo != MotivoSql::Ocupado && erro.Motivo != MotivoSql::Queda) || tentativa == Tentativas ||
        std::chrono::steady_clock::now() + pausa >= m_Ate) {
        throw erro;
    }
    std::this_thread::sleep_for(pausa);
}

void Banco::ConferePrazo() const
{
    if (std::chrono::steady_clock::now() >= m_Ate) {
        throw ErroSql(MotivoSql::Demora, "prazo");
    }
}

Transacao::Transacao(Banco &banco, bool escreve) : m_Banco(banco)
{
    if (banco.m_EmTransacao) {
        throw Falha(NumeroFalha::ErroInterno, "Servicos", "Uma operação foi pedida no meio de outra.");
    }
    if (escreve && !banco.m_SomenteLeitura.empty()) {
        throw Falha(NumeroFalha::PermissaoNegada, "Servicos", banco.m_SomenteLeitura + " Nada foi gravado.");
    }
    banco.ConferePrazo();
    if (escreve || !banco.m_SomenteLeitura.empty()) {
        banco.m_Dialeto->ConfereLugar(banco.m_Conexao);
    }
    if (banco.m_Dialeto->Caiu()) {
        banco.m_Preparadas.clear(); // they are of the connection that goes
        banco.m_Dialeto->Reabre();
    }
    banco.m_Dialeto->Limita(banco.m_Conexao, banco.m_Ate);
    try {
        banco.Comanda(escreve ? banco.m_Dialeto->IniciaEscrita() : banco.m_Dialeto->IniciaLeitura());
    } catch (...) {
        IgnoraErro([&] { banco.Comanda("ROLLBACK"); }); // it may have begun, and waited for the right in vain
        throw;
    }
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
    m_Banco.ConferePrazo();
    m_Banco.m_Dialeto->Confirma(m_Banco.m_Conexao);
    m_Banco.m_EmTransacao = false;
}

Consulta::Consulta(Banco &banco, const QString &sql, const QVariantList &valores) : m_Preparada(banco.Comando(sql))
{
    banco.ConferePrazo();
    m_Preparada.Executa(valores);
}

Consulta::~Consulta()
{
    m_Preparada.Termina();
}

std::int64_t Consulta::NumeroNovo()
{
    return m_Preparada.TemLinha() || Proxima() ? Inteiro(0) : 0;
}

} // namespace mesa
