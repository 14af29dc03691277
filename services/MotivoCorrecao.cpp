#include "services/MotivoCorrecao.h"

#include "host/Conversoes.h"
#include "host/Texto.h"

#include <QString>

#include <algorithm>

namespace mesa {

namespace {

// What is not seen, or breaks the line in which the reason is read.
bool EhOculto(QChar letra)
{
    switch (letra.category()) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return false;
    }
}

} // namespace

std::string MotivoCorrecao::Aparado(const std::string &texto)
{
    const QString lido = QString::fromStdString(texto);
    return lido.toStdString() == texto ? lido.trimmed().toStdString() : texto; // what is no UTF-8 stays to be refused
}

std::string MotivoCorrecao::RecusaDe(const std::string &texto)
{
    const std::string aparado = Aparado(texto);
    const QString lido = QString::fromStdString(aparado);
    if (lido.toStdString() != aparado || std::any_of(lido.begin(), lido.end(), EhOculto)) {
        return "o motivo tem caracteres que não podem ser gravados";
    }
    const auto tamanho = static_cast<std::int64_t>(Len(aparado));
    if (tamanho < Menor || tamanho > Maior) {
        return "o motivo precisa ter de " + CStr(Menor) + " a " + CStr(Maior) + " caracteres; veio com " +
               CStr(tamanho);
    }
    return IgualSemCaixa(aparado, Nenhum) ? "\"" + aparado + "\" não é um motivo" : "";
}

} // namespace mesa
