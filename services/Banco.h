#pragma once

#include "services/Dialeto.h"
#include "services/Instante.h"
#include "services/TextoQt.h"

#include <QString>
#include <QVariant>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <vector>

namespace mesa {

class Consulta;
class Transacao;

// A value under the name of its column.
struct Celula {
    std::string_view Coluna;
    QVariant Valor;
};
using Celulas = std::vector<Celula>;

// One connection to the registry, with its statements prepared once.
class Banco {
  public:
    // Opens the database and brings its schema up to date, or makes a new one, which `funda` fills in the same
    // transaction. Raises ErroSql. agora: for what a migration writes down. antesDeMigrar: runs when the schema is
    // about to change, while nobody else can write; what it throws keeps the schema as it is.
    Banco(std::unique_ptr<Dialeto> dialeto, const std::string &onde, const Instante &agora,
          const std::function<void()> &antesDeMigrar = {});
    Banco(std::unique_ptr<Dialeto> dialeto, const std::string &onde, const std::function<void(Banco &)> &funda);
    // To be looked at only, as the file alone stands, which nobody works on.
    struct SoConsulta {};
    Banco(std::unique_ptr<Dialeto> dialeto, const std::string &onde, SoConsulta);
    Banco(const Banco &) = delete;
    Banco &operator=(const Banco &) = delete;
    ~Banco();

    // Why the registry may only be looked at, as a sentence; empty when it may be worked on.
    const std::string &SomenteLeitura() const { return m_SomenteLeitura; }

    // What is asked for from now on, until this is called again, has time until then: later nothing is begun, tried
    // again or waited for. That is an ErroSql, MotivoSql::Demora if for nothing else.
    void Limita(Prazo ate) { m_Ate = ate; }

    // Runs the work in one transaction, which is rolled back if anything is thrown. When another one keeps the
    // database busy, or the connection is lost, the whole work is run again from the start, a bounded number of times;
    // never when it is not known whether it was done (MotivoSql::Incerto).
    template <class Trabalho> auto Escreve(Trabalho &&trabalho);
    template <class Trabalho> auto Le(Trabalho &&trabalho);

    // A new row. Ask the statement for the number that the database gave it.
    Consulta Insere(std::string_view tabela, const Celulas &celulas);
    // Writes over the row that has the key.
    void Atualiza(std::string_view tabela, const Celulas &celulas, const Celula &chave);

    // A statement that is run once and answers nothing.
    void Comanda(const QString &sql);

  private:
    friend class Consulta;
    friend class Transacao;

    static constexpr int Tentativas = 6;

    template <class Trabalho> auto Repete(bool escreve, Trabalho &trabalho);
    // Comes back when it is worth trying once more, and throws otherwise.
    void TentaDeNovo(const ErroSql &erro, int tentativa);
    void ConferePrazo() const;
    std::size_t VersaoAtual() const;

    Banco(std::unique_ptr<Dialeto> dialeto, const std::string &onde, Abertura abertura,
          const std::function<void()> &prepara);

    Preparada &Comando(const QString &sql);
    std::size_t Versao();
    void Migra(const Instante &agora, const std::function<void()> &antesDeMigrar);
    void AplicaMigracoes(const std::vector<Migracao> &migracoes, const Instante &agora,
                         const std::function<void()> &antesDeMigrar);

    std::unique_ptr<Dialeto> m_Dialeto;
    QString m_Conexao;
    std::string m_SomenteLeitura;
    std::unordered_map<QString, std::unique_ptr<Preparada>> m_Preparadas;
    bool m_EmTransacao = false;
    Prazo m_Ate = Prazo::max();
};

// A transaction: rolled back in its destructor unless it was confirmed. There is one at a time on a connection.
class Transacao {
  public:
    Transacao(Banco &banco, bool escreve);
    Transacao(const Transacao &) = delete;
    Transacao &operator=(const Transacao &) = delete;
    ~Transacao();

    void Confirma();

  private:
    Banco &m_Banco;
};

// A statement under way. Ends, and frees what it holds in the database, with its scope. Raises ErroSql.
class Consulta {
  public:
    Consulta(Banco &banco, const QString &sql, const QVariantList &valores = {});
    Consulta(const Consulta &) = delete;
    Consulta &operator=(const Consulta &) = delete;
    ~Consulta();

    bool Proxima() { return m_Preparada.Proxima(); }
    std::int64_t Inteiro(int coluna) const { return m_Preparada.Inteiro(coluna); }
    std::string Texto(int coluna) const { return m_Preparada.Texto(coluna); }
    QVariant Valor(int coluna) const { return m_Preparada.Valor(coluna); }
    // Number that the database gave to the row inserted.
    std::int64_t NumeroNovo();

  private:
    Preparada &m_Preparada;
};

template <class Trabalho> auto Banco::Escreve(Trabalho &&trabalho)
{
    return Repete(true, trabalho);
}

template <class Trabalho> auto Banco::Le(Trabalho &&trabalho)
{
    return Repete(false, trabalho);
}

template <class Trabalho> auto Banco::Repete(bool escreve, Trabalho &trabalho)
{
    for (int tentativa = 1;; ++tentativa) {
        try {
            Transacao transacao(*this, escreve);
            if constexpr (std::is_void_v<decltype(trabalho())>) {
                trabalho();
                transacao.Confirma();
                return;
            } else {
                auto resultado = trabalho();
                transacao.Confirma();
                return resultado;
            }
        } catch (const ErroSql &erro) {
            TentaDeNovo(erro, tentativa);
        }
    }
}

} // namespace mesa
