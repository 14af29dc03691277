#include "desk/host/PainelDePrazos.h"

#include "host/Conversoes.h"
#include "host/Falha.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

namespace mesa {

namespace {

const std::string &IconeDe(EstadoDePrazo estado)
{
    static const std::array<std::string, 10> icones{
        "",           "prazovalido",    "prazo90",        "prazo60", "prazo30", "prazovencido", "prazolacuna",
        "prazonunca", "prazodocumento", "prazodispensado"};
    return icones.at(static_cast<std::size_t>(estado));
}

std::string Equipamentos(std::int32_t quantos)
{
    return quantos == 1 ? "1 equipamento" : CStr(quantos) + " equipamentos";
}

std::string Vencem(std::int32_t quantas)
{
    return quantas == 0   ? "nenhuma aferição vence"
           : quantas == 1 ? "1 aferição vence"
                          : CStr(quantas) + " aferições vencem";
}

} // namespace

bool PainelDePrazos::Le(bool confereDocumentos)
{
    m_Estados.clear();
    m_Grupos.clear();
    m_Meses.clear();
    m_Falhas.clear();
    m_Resumo.clear();
    m_Impedimento.clear();
    m_DocumentosConferidos = false;
    auto pedido = Novo<PainelPrazosED>();
    pedido->Agrupa = static_cast<std::uint8_t>(m_Por);
    pedido->ConfereDocumentos = static_cast<std::uint8_t>(confereDocumentos ? 1 : 2);
    Ref<Objeto> enviado = pedido;
    Valor retorno;
    std::string recusa;
    try {
        if (!m_Sessao()->Executa("PrazosRN", "consultaPainel", enviado, retorno, recusa)) {
            m_Impedimento = "Os prazos não foram contados: " + recusa;
            return false;
        }
    } catch (const Falha &falha) {
        m_Impedimento = "Os prazos não foram contados: " + falha.Descricao;
        return false;
    }
    Mostra(*retorno.Como<PainelPrazosED>(), confereDocumentos);
    return true;
}

void PainelDePrazos::Mostra(const PainelPrazosED &lido, bool confereDocumentos)
{
    m_DocumentosConferidos = confereDocumentos;
    m_Resumo = "Em " + Format(lido.ComoEm.Valor(), "dd/mm/yyyy") + " às " + Format(lido.ComoEm.Valor(), "hh:nn") +
               ", sobre " + Equipamentos(lido.Equipamentos) +
               (lido.Equipamentos.Valor() == 1 ? " ativo de " : " ativos de ") + m_Sessao()->Operador().Cliente + ". " +
               (confereDocumentos ? "Os documentos foram lidos inteiros e conferidos."
                                  : "Dos documentos, só se conferiu se existem.");
    if (lido.NaoContados.Valor() > 0) {
        m_Falhas.push_back("Sem situação, e fora dos números: " + Equipamentos(lido.NaoContados) + ".");
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
        const std::string &nome = Prazos::Nome(estado);
        m_Estados.push_back({estado, nome, IconeDe(estado), todos[estado], nome + ": " + Equipamentos(todos[estado])});
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
        std::ranges::sort(m_Grupos, {}, &GrupoNoPainel::Nome);
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
    recorte.ConfereDocumentos = m_DocumentosConferidos;
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
