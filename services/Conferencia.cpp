#include "services/Conferencia.h"

#include "host/Conversoes.h"
#include "host/Texto.h"
#include "services/Calendario.h"
#include "services/NomesCampos.h"
#include "services/Recusa.h"

#include <QString>

#include <algorithm>
#include <cmath>

namespace mesa {

namespace {

bool EhHora(std::int32_t hora)
{
    return hora >= 0 && hora / 100 <= 23 && hora % 100 <= 59;
}

} // namespace

void Conferencia::Coluna(const Esquema::Coluna &coluna, const QVariant &valor)
{
    const std::string recusa = coluna.Recusa(valor);
    if (!recusa.empty()) {
        throw Recusa(OCampo(coluna.Nome) + " " + recusa + ".");
    }
}

void Conferencia::Texto(const Esquema::Coluna &coluna, const std::string &valor)
{
    const QString lido = QString::fromStdString(valor);
    Coluna(coluna, lido);
    if (lido.toStdString() != valor ||
        std::any_of(lido.begin(), lido.end(), [](QChar letra) { return letra.category() == QChar::Other_Control; })) {
        throw Recusa(OCampo(coluna.Nome) + " tem caracteres que não podem ser gravados.");
    }
}

void Conferencia::Obrigatorio(std::string_view membro, const std::string &valor)
{
    if (Trim(valor).empty()) {
        throw Recusa(OCampo(membro) + " precisa ser informado.");
    }
}

void Conferencia::Faixa(std::string_view membro, std::int64_t valor, std::int64_t de, std::int64_t ate)
{
    if (valor < de || valor > ate) {
        throw Recusa(OCampo(membro) + " deve estar entre " + CStr(de) + " e " + CStr(ate) + "; veio " + CStr(valor) +
                     ".");
    }
}

void Conferencia::Dia(std::string_view membro, Data valor)
{
    if (!valor.NoCalendario() || std::trunc(valor.Valor) == 0) {
        throw Recusa(OCampo(membro) + " precisa de uma data válida.");
    }
}

void Conferencia::Horario(std::int32_t inicio, std::int32_t fim)
{
    if (!EhHora(inicio)) {
        throw Recusa("A hora inicial não é válida: informe de 00:00 a 23:59.");
    }
    if (!EhHora(fim)) {
        throw Recusa("A hora final não é válida: informe de 00:00 a 23:59.");
    }
    if (inicio > fim) {
        throw Recusa("A hora final (" + TextoDaHora(fim) + ") é anterior à hora inicial (" + TextoDaHora(inicio) +
                     "). Um período que passa da meia-noite precisa de duas linhas.");
    }
}

std::string Conferencia::OCampo(std::string_view membro)
{
    return "O campo \"" + NomeDoCampo(membro) + "\"";
}

std::string Conferencia::Numero(double numero)
{
    return std::isfinite(numero) ? CStr(numero) : "inválido";
}

std::int64_t Conferencia::Chave(double numero)
{
    constexpr double maior = 9007199254740992.0; // up to here a floating number is exact
    return numero >= 1 && numero <= maior && numero == std::floor(numero) ? static_cast<std::int64_t>(numero) : 0;
}

} // namespace mesa
