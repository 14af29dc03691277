#include "desk/host/Lembrancas.h"

#include "controls/OrdemPortuguesa.h"
#include "desk/host/Preferencias.h"
#include "services/TextoQt.h"

#include <QUrl>

namespace mesa {

namespace {

// A text as one part of a key of the settings.
QString Parte(const std::string &texto)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(Q(texto)));
}

} // namespace

Lembrancas::Lembrancas(Preferencias &preferencias, const std::string &registro, const std::string &usuario)
    : m_Preferencias(preferencias),
      m_Grupo("lembrancas/" + Parte(registro) + "/" + Parte(SemAcentoNemCaixa(usuario)) + "/")
{
}

std::string Lembrancas::Lembranca(const std::string &chave) const
{
    return m_Preferencias.Texto(m_Grupo + Parte(chave));
}

void Lembrancas::Lembra(const std::string &chave, const std::string &texto)
{
    m_Preferencias.GuardaTexto(m_Grupo + Parte(chave), texto);
}

void Lembrancas::Esquece(const std::string &comeco)
{
    m_Preferencias.EsqueceTextos(m_Grupo + Parte(comeco));
}

} // namespace mesa
