#include "services/Segredo.h"

#include <QString>
#include <QStringEncoder>

#include <sodium.h>

#include <istream>
#include <string>

namespace mesa {

void LimpaMemoria(void *onde, std::size_t bytes) noexcept
{
    sodium_memzero(onde, bytes);
}

// Writing to a shared text the usual way would first make a copy.
void LimpaTexto(const QString &texto) noexcept
{
    LimpaMemoria(const_cast<QChar *>(texto.constData()), static_cast<std::size_t>(texto.size()) * sizeof(QChar));
}

Segredo Segredo::Toma(QString &texto)
{
    Segredo tomado;
    QStringEncoder utf8(QStringEncoder::Utf8);
    tomado.m_Texto.resize(static_cast<std::size_t>(utf8.requiredSpace(texto.size())));
    const char *fim = utf8.appendToBuffer(tomado.m_Texto.data(), texto);
    tomado.m_Texto.resize(static_cast<std::size_t>(fim - tomado.m_Texto.data()));
    if (texto.isDetached()) {
        LimpaTexto(texto);
    }
    texto = QString();
    return tomado;
}

Segredo Segredo::Composto() const
{
    const QString texto = QString::fromUtf8(m_Texto.data(), static_cast<qsizetype>(m_Texto.size()));
    QString composto = texto.normalized(QString::NormalizationForm_C);
    Segredo feito = Toma(composto);
    LimpaTexto(texto); // last: it is the same memory where there was nothing to compose
    return feito;
}

Segredo LeSenha(std::istream &entrada)
{
    constexpr std::size_t bastante = 1024; // the text does not grow, and leaves no piece of itself behind
    std::string linha;
    linha.reserve(bastante);
    std::getline(entrada, linha);
    if (!linha.empty() && linha.back() == '\r') {
        linha.pop_back();
    }
    Segredo senha(linha);
    LimpaMemoria(linha.data(), linha.size());
    return senha;
}

} // namespace mesa
