#include "desk/host/PainelDePrazos.h"

#include "controls/OrdemPortuguesa.h"
#include "host/Conversoes.h"
#include "host/Falha.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

namespace mesa {

namespace {

template <class N> std::string Contados(N quantos, const char *um, const char *muitos)
{
    return CStr(quantos) + (quantos == 1 ? um : muitos);
}

std::string Equipamentos(std::int32_t quantos)
{
    return Contados(quantos, " equipamento", " equipamentos");
}

std::string Vencem(std::int32_t quantas)
{
    return quantas == 0   ? "nenhuma aferição vence"
           : quantas == 1 ? "1 aferição vence"
                          : CStr(quantas) + " aferições vencem";
}

} // namespace

EstadoNoPainel NoPainel(EstadoDePrazo estado, std::int32_t quantos)
{
    const std::string &nome = Prazos::Nome(estado);
    return {estado, nome, IconeDoPrazo(estado), quantos, nome + ": " + Equipamentos(quantos)};
}

bool PainelDePrazos::Le()
{
    m_Estados.clear();
    m_Grupos.clear();
    m_Meses.clear();
    m_Falhas.clear();
    m_Resumo.clear();
    m_Impedimento = "Os prazos não foram contados."; // whatever ends this
    auto pedido = Novo<PainelPrazosED>();
    pedido->Agrupa = static_cast<std::uint8_t>(m_Por);
    Valor retorno;
    std::string recusa;
    try {
        const Ref<SessaoServico> sessao = m_Sessao();
        if (m_Conferencia.DeQuem != sessao->Operador().Numero) {
            m_Conferencia = {};
        }
        pedido->Danificados = ComoLista(m_Conferencia.Danificados);
        Ref<Objeto> enviado = pedido;
        if (!sessao->Executa("PrazosRN", "consultaPainel", enviado, retorno, recusa)) {
            m_Impedimento = "Os prazos não foram contados: " + recusa;
            return false;
        }
    } catch (const Falha &falha) {
        m_Impedimento = "Os prazos não foram contados: " + falha.Descricao;
        return false;
    }
    Mostra(*retorno.Como<PainelPrazosED>());
    m_Impedimento.clear();
    return true;
}

bool PainelDePrazos::ConfereDocumentos(std::string &recusa, const Segue &segue)
{
    const Ref<SessaoServico> sessao = m_Sessao();
    Conferencia conferencia{sessao->Operador().Numero, {}, 0, {}};
    auto pedido = Novo<DocumentosPrazosED>();
    pedido->TrabFoto = std::uint8_t{1};
    for (double vistos = 0; pedido->TrabFoto.Valor() != 0;) {
        Ref<Objeto> enviado = pedido->Copia();
        Valor retorno;
        if (!sessao->Executa("PrazosRN", "confereDocumentos", enviado, retorno, recusa)) {
            return false;
        }
        const auto pagina = retorno.Como<DocumentosPrazosED>();
        conferencia.ComoEm = pagina->ComoEm;
        conferencia.Lidos += pagina->Conferidos;
        const ListaDe<DocumentoPrazoED> &danificados = pagina->Danificados;
        for (std::int32_t n = 1; !danificados.Nada() && n <= danificados->Count(); ++n) {
            conferencia.Danificados.push_back(danificados->Item(n));
        }
        if (conferencia.Danificados.size() > MaisDanificados) {
            recusa =
                "Há mais de " + CStr(MaisDanificados) + " documentos danificados: o registro precisa ser conferido.";
            return false;
        }
        vistos += pagina->Equipamentos;
        if (segue && !segue(std::min(vistos / std::max(m_Equipamentos, 1), 1.0),
                            Contados(conferencia.Lidos, " documento conferido, ", " documentos conferidos, ") +
                                Contados(conferencia.Danificados.size(), " danificado", " danificados"))) {
            recusa = "A conferência dos documentos foi cancelada.";
            return false;
        }
        pedido->DepoisDe = pagina->DepoisDe.Valor();
        pedido->TrabFoto = pagina->TrabFoto.Valor();
        pedido->ComoEm = pagina->ComoEm.Valor();
    }
    m_Conferencia = std::move(conferencia);
    return true;
}

std::string PainelDePrazos::DosDocumentos() const
{
    if (m_Conferencia.DeQuem == 0) {
        return "Dos documentos, só se conferiu se existem.";
    }
    const std::size_t danificados = m_Conferencia.Danificados.size();
    return "Em " + Format(m_Conferencia.ComoEm, "dd/mm/yyyy") + " às " + Format(m_Conferencia.ComoEm, "hh:nn") +
           " os documentos em vigor foram lidos inteiros: " +
           Contados(m_Conferencia.Lidos, " conferido, ", " conferidos, ") +
           (danificados == 0 ? "nenhum danificado." : Contados(danificados, " danificado.", " danificados."));
}

void PainelDePrazos::Mostra(const PainelPrazosED &lido)
{
    m_Equipamentos = lido.Equipamentos;
    m_ComoEm = lido.ComoEm;
    m_Resumo = "Em " + Format(lido.ComoEm.Valor(), "dd/mm/yyyy") + " às " + Format(lido.ComoEm.Valor(), "hh:nn") +
               ", sobre " + Equipamentos(lido.Equipamentos) +
               (lido.Equipamentos.Valor() == 1 ? " ativo de " : " ativos de ") + m_Sessao()->Operador().Cliente + ". " +
               DosDocumentos();
    if (lido.NaoContados.Valor() > 0) {
        m_Falhas.push_back("Sem situação, e à parte dos números: " + Equipamentos(lido.NaoContados) + ".");
    }
    const ListaDe<FalhaPrazoED> &falhas = lido.Falhas;
    for (std::int32_t n = 1; !falhas.Nada() && n <= falhas->Count(); ++n) {
        m_Falhas.push_back(falhas->Item(n)->Motivo);
    }
    std::map<EstadoDePrazo, std::int32_t> todos;
    std::map<std::string, std::map<EstadoDePrazo, std::int32_t>> porGrupo;
    const ListaDe<ContagemPrazoED> &contagens = lido.Contagens;
    for (std::int32_t n = 1; !contagens.Nada() && n <= contagens->Count(); ++n) {
        const ContagemPrazoED &uma = *contagens->Item(n);
        const auto estado = static_cast<EstadoDePrazo>(uma.Estado.Valor());
        todos[estado] += uma.Quantos;
        porGrupo[uma.Grupo][estado] += uma.Quantos;
    }
    for (const EstadoDePrazo estado : Prazos::Estados()) {
        m_Estados.push_back(NoPainel(estado, todos[estado]));
    }
    if (m_Por != AgrupamentoDePrazos::Nada) {
        for (auto &[chave, quantos] : porGrupo) {
            GrupoNoPainel grupo{NomeDoGrupo(m_Por, chave), chave, {}, 0};
            for (const EstadoDePrazo estado : Prazos::Estados()) {
                grupo.Quantos.push_back(quantos[estado]);
                grupo.Todos += quantos[estado];
            }
            m_Grupos.push_back(std::move(grupo));
        }
        std::ranges::sort(m_Grupos, {}, [](const GrupoNoPainel &grupo) { return ChaveOrdem(grupo.Nome); });
    }
    const ListaDe<MesPrazoED> &meses = lido.Meses;
    for (std::int32_t n = 1; !meses.Nada() && n <= meses->Count(); ++n) {
        const std::int32_t mes = meses->Item(n)->Mes;
        const std::int32_t quantas = meses->Item(n)->Quantas;
        m_Meses.push_back({mes, MesCurto(mes), n == 1 || mes % 100 == 1 ? CStr(mes / 100) : "", quantas,
                           NomeDoMes(mes) + ": " + Vencem(quantas)});
    }
}

RecorteDePrazos PainelDePrazos::Atras(EstadoDePrazo estado, const GrupoNoPainel *grupo) const
{
    RecorteDePrazos recorte;
    recorte.Titulo = "Prazos: " + Prazos::Nome(estado);
    recorte.Estado = estado;
    recorte.Danificados = m_Conferencia.Danificados;
    recorte.ComoEm = m_ComoEm;
    if (grupo != nullptr) {
        recorte.Titulo += ", " + grupo->Nome;
        recorte.Por = m_Por;
        recorte.Grupo = grupo->Chave;
    }
    return recorte;
}

RecorteDePrazos PainelDePrazos::Atras(const MesNoPainel &mes) const
{
    RecorteDePrazos recorte;
    recorte.Titulo = "Aferições que vencem em " + NomeDoMes(mes.Mes);
    recorte.Mes = mes.Mes;
    recorte.Danificados = m_Conferencia.Danificados;
    recorte.ComoEm = m_ComoEm;
    return recorte;
}

std::vector<std::string> PainelDePrazos::ColunasDosGrupos() const
{
    static const std::array<std::string, 4> nomes{"", "Setor", "Município", "Tipo"};
    std::vector<std::string> colunas{nomes.at(static_cast<std::size_t>(m_Por))};
    for (const EstadoDePrazo estado : Prazos::Estados()) {
        colunas.push_back(Prazos::Nome(estado));
    }
    colunas.push_back("Todos");
    return colunas;
}

} // namespace mesa
