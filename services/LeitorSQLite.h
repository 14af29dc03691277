#pragma once

#include <QString>
#include <QVariant>

#include <sqlite3.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

namespace mesa {

// What could not be read, in the database's own words.
class ErroDeLeitura : public std::runtime_error {
  public:
    ErroDeLeitura(const std::string &detalhe, bool danificado) : std::runtime_error(detalhe), Danificado(danificado) {}

    bool Danificado; // what is in the file is the reason
};

// Whoever follows has given up.
class LeituraCancelada : public std::exception {};

// A database in a file in which nothing is trusted, over a connection of its own that only reads. All of it is of one
// moment, whoever else writes meanwhile. Every statement ends, whatever the file holds.
class LeitorSQLite {
  public:
    // parado: nobody has the file open, and it is read as it alone stands. Raises ErroDeLeitura.
    LeitorSQLite(const std::string &arquivo, bool parado);
    LeitorSQLite(const LeitorSQLite &) = delete;
    LeitorSQLite &operator=(const LeitorSQLite &) = delete;
    ~LeitorSQLite();

    // Asked all the time while something is read; on false everything raises LeituraCancelada.
    void PerguntaSeContinua(std::function<bool()> continua);
    // Asks now.
    void Pergunta();

    // Whether the record of the row leaves the place of the key empty, as the database writes it. The key itself stands
    // elsewhere, so that no statement would tell.
    bool LugarDaChaveVazio(const std::string &tabela, const std::string &coluna, std::int64_t chave);

    // First column of the first row; nothing without rows.
    QVariant Unico(const QString &sql, const QVariantList &valores = {});

  private:
    friend class LinhasLidas;

    [[noreturn]] void Falha();
    static int AoPassar(void *leitor) noexcept;

    std::unique_ptr<sqlite3, int (*)(sqlite3 *)> m_Aberto;
    std::function<bool()> m_Continua;
    std::int64_t m_MaisPassos = 0; // what no statement needs that reads a sound file of this size
    std::int64_t m_Passos = 0;
    bool m_Cancelada = false;
};

// The rows of a statement. Raises ErroDeLeitura and LeituraCancelada.
class LinhasLidas {
  public:
    LinhasLidas(LeitorSQLite &leitor, const QString &sql, const QVariantList &valores = {});

    bool Proxima();
    std::int64_t Inteiro(int coluna) const;
    std::string Texto(int coluna) const;
    // A number, a text, bytes, or nothing, as it is stored. Text that is not UTF-8 is bytes.
    QVariant Valor(int coluna) const;

  private:
    LeitorSQLite &m_Leitor;
    std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt *)> m_Comando;
};

} // namespace mesa
