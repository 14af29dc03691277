#pragma once

#include "services/ErroSql.h"
#include "services/Preparada.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QString>

#include <functional>

namespace mesa {

// A statement by the toolkit's driver, whose rows come one by one while others are asked for.
class PreparadaQt : public Preparada {
  public:
    using Falhou = std::function<ErroSql(const QSqlError &)>;

    PreparadaQt(const QSqlDatabase &banco, const QString &sql, Falhou falhou);

    void Executa(const QVariantList &valores) override;
    bool Proxima() override;
    bool TemLinha() const override { return m_Comando.isValid(); }
    QVariant Valor(int coluna) const override { return m_Comando.value(coluna); }
    std::int64_t Inteiro(int coluna) const override { return m_Comando.value(coluna).toLongLong(); }
    std::string Texto(int coluna) const override { return m_Comando.value(coluna).toString().toStdString(); }
    void Termina() override { m_Comando.finish(); }

  private:
    QSqlQuery m_Comando;
    Falhou m_Falhou;
};

} // namespace mesa
