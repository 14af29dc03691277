#pragma once

#include "host/Registro.h"
#include "services/Banco.h"
#include "services/Calendario.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <cstdint>
#include <string_view>
#include <type_traits>

namespace mesa {

// A remote record as a row of a table and as JSON, by the record's own list of members: every member that is no list is
// a column of its name.
namespace MapaRegistro {

template <class T> inline constexpr bool EhColuna = !DetalheRegistro::EhListaDe<T>::value;

// The one member that refers to another table and has 0 for none, where the database has a null.
inline bool ZeroENulo(std::string_view nome)
{
    return nome == "NroIntImgCertif";
}

template <class T> QVariant ParaSql(const T &valor)
{
    if constexpr (std::is_same_v<T, std::string>) {
        return QString::fromStdString(valor);
    } else if constexpr (std::is_same_v<T, Data>) {
        return DiaCivil(valor);
    } else {
        return static_cast<qlonglong>(valor);
    }
}

template <class T> T DoSql(const QVariant &valor)
{
    if constexpr (std::is_same_v<T, std::string>) {
        return valor.toString().toStdString();
    } else if constexpr (std::is_same_v<T, Data>) {
        return DataDoDia(valor.toInt());
    } else {
        return static_cast<T>(valor.toLongLong());
    }
}

template <class R> QStringList Colunas()
{
    QStringList nomes;
    const R modelo;
    modelo.CadaMembro([&]<class T>(std::string_view nome, const Campo<T> &) {
        if constexpr (EhColuna<T>) {
            nomes.push_back(QString::fromUtf8(nome.data(), static_cast<qsizetype>(nome.size())));
        }
    });
    return nomes;
}

// The columns as a SELECT names them, of the table of that name where it is given.
template <class R> QString Lista(const QString &tabela = {})
{
    const QString prefixo = tabela.isEmpty() ? QString() : tabela + ".";
    return prefixo + Colunas<R>().join(", " + prefixo);
}

// In the order of the columns, which begins with the number of the row.
template <class R> Celulas CelulasDe(const R &registro)
{
    Celulas celulas;
    registro.CadaMembro([&]<class T>(std::string_view nome, const Campo<T> &campo) {
        if constexpr (EhColuna<T>) {
            QVariant valor = ParaSql(campo.Valor());
            if (ZeroENulo(nome) && valor.toLongLong() == 0) {
                valor = QVariant(QMetaType::fromType<qlonglong>());
            }
            celulas.push_back({nome, valor});
        }
    });
    return celulas;
}

// A new row for the record, with the columns that the service keeps beside its members. The number is the database's to
// give, and the result.
template <class R>
std::int64_t Insere(Banco &banco, std::string_view tabela, const R &registro, const Celulas &outras = {})
{
    Celulas celulas = CelulasDe(registro);
    celulas.erase(celulas.begin());
    celulas.insert(celulas.end(), outras.begin(), outras.end());
    return banco.Insere(tabela, celulas).NumeroNovo();
}

// Writes the record over its row.
template <class R> void Atualiza(Banco &banco, std::string_view tabela, const R &registro, const Celulas &outras = {})
{
    Celulas celulas = CelulasDe(registro);
    const Celula numero = celulas.front();
    celulas.erase(celulas.begin());
    celulas.insert(celulas.end(), outras.begin(), outras.end());
    banco.Atualiza(tabela, celulas, numero);
}

// Fills the record from a row whose first columns are those of the record.
template <class R> void Preenche(R &registro, const Consulta &linha)
{
    int coluna = 0;
    std::apply(
        [&](const auto &...membro) {
            (
                [&]<class T>(Campo<T> &campo) {
                    if constexpr (EhColuna<T>) {
                        campo = DoSql<T>(linha.Valor(coluna++));
                    }
                }(registro.*membro.Onde),
                ...);
        },
        R::Membros());
}

// Fills the members that the object has.
template <class R> void Preenche(R &registro, const QJsonObject &objeto)
{
    std::apply(
        [&](const auto &...membro) {
            (
                [&]<class T>(std::string_view nome, Campo<T> &campo) {
                    if constexpr (EhColuna<T>) {
                        const auto valor =
                            objeto.find(QString::fromUtf8(nome.data(), static_cast<qsizetype>(nome.size())));
                        if (valor != objeto.end()) {
                            campo = DoSql<T>(valor->toVariant());
                        }
                    }
                }(membro.Nome, registro.*membro.Onde),
                ...);
        },
        R::Membros());
}

// Takes over the members that the other has written, lists excepted.
template <class R> void Sobrepoe(R &registro, const R &outro)
{
    std::apply(
        [&](const auto &...membro) {
            (
                [&]<class T>(Campo<T> &campo, const Campo<T> &vindo) {
                    if constexpr (EhColuna<T>) {
                        if (vindo.Escrito()) {
                            campo = vindo.Valor();
                        }
                    }
                }(registro.*membro.Onde, outro.*membro.Onde),
                ...);
        },
        R::Membros());
}

template <class R> QJsonObject Json(const R &registro)
{
    QJsonObject objeto;
    registro.CadaMembro([&]<class T>(std::string_view nome, const Campo<T> &campo) {
        if constexpr (EhColuna<T>) {
            objeto.insert(QString::fromUtf8(nome.data(), static_cast<qsizetype>(nome.size())),
                          QJsonValue::fromVariant(ParaSql(campo.Valor())));
        }
    });
    return objeto;
}

} // namespace MapaRegistro

} // namespace mesa
