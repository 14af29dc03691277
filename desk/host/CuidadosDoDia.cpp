#include "desk/host/CuidadosDoDia.h"

#include "host/Falha.h"
#include "services/Calendario.h"
#include "services/Copia.h"

#include <utility>

namespace mesa {

namespace {

// Done in the background, where a failure has nobody to be told to but among the findings.
ResultadoDoAto Tenta(const std::function<ResultadoDoAto()> &ato)
{
    try {
        return ato();
    } catch (...) {
        const std::string frase = FalhaCorrente().Descricao;
        return {false, frase, {frase}};
    }
}

} // namespace

CuidadosDoDia::CuidadosDoDia(std::string registro, const Servicos &servicos, Preferencias &preferencias, Relogio agora)
    : m_Registro(std::move(registro)),
      m_Identificador(servicos.Identificador()),
      m_Guarda(servicos.Tipo() != TipoDeRegistro::Amostra && servicos.SomenteLeitura().empty()),
      m_Preferencias(preferencias),
      m_Agora(std::move(agora))
{
}

std::optional<CuidadosDoDia::Trabalho> CuidadosDoDia::Proximo(bool ociosa)
{
    const std::int32_t hoje = DiaCivil(m_Agora().Local);
    for (const Cuidado qual : {Cuidado::Copia, Cuidado::Cabeca, Cuidado::Conferencia}) {
        if (m_Olhados[qual] == hoje || (qual == Cuidado::Conferencia && !ociosa)) {
            continue;
        }
        m_Olhados[qual] = hoje;
        if (Devido(qual)) {
            return Prepara(qual);
        }
    }
    return std::nullopt;
}

bool CuidadosDoDia::Devido(Cuidado qual) const
{
    switch (qual) {
    case Cuidado::Copia:
        return m_Guarda && m_Preferencias.CopiaDiaria() &&
               Copia(m_Registro, {}).Devida(Copia::PastaPadrao(m_Registro), m_Agora());
    case Cuidado::Cabeca:
        return m_Guarda && !m_Preferencias.PastaDasCabecas().empty();
    default:
        return m_Preferencias.DiaConferido(m_Identificador) != DiaCivil(m_Agora().Local);
    }
}

CuidadosDoDia::Trabalho CuidadosDoDia::Prepara(Cuidado qual) const
{
    const AtosDoRegistro atos = FazAtosDoRegistro(m_Registro, m_Agora);
    switch (qual) {
    case Cuidado::Copia:
        return {qual, [faz = atos.Copia, pasta = Copia::PastaPadrao(m_Registro)](const Segue &segue) {
                    return Tenta([&] { return faz(pasta, segue); });
                }};
    case Cuidado::Cabeca:
        return {qual,
                [registro = m_Registro, pasta = m_Preferencias.PastaDasCabecas(), agora = m_Agora](const Segue &) {
                    return Tenta([&] {
                        ExportacaoDeCabeca::ExportaSeDevida(registro, pasta, agora());
                        return ResultadoDoAto{true, "A cabeça do histórico foi guardada.", {}};
                    });
                }};
    default:
        return {qual, [faz = atos.Confere()](const Segue &segue) { return Tenta([&] { return faz(segue); }); }};
    }
}

} // namespace mesa
