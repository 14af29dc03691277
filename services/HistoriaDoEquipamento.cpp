#include "services/HistoriaDoEquipamento.h"

#include "host/Conversoes.h"
#include "services/Calendario.h"
#include "services/MapaRegistro.h"
#include "services/Recusa.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

#include <algorithm>
#include <tuple>
#include <utility>

namespace mesa {

namespace {

QJsonObject LeJson(const std::string &texto)
{
    return QJsonDocument::fromJson(QByteArray::fromStdString(texto)).object();
}

template <class R> Ref<R> Lido(const QJsonObject &linha)
{
    auto registro = Novo<R>();
    MapaRegistro::Preenche(*registro, linha);
    return registro;
}

// The history of an older registry did not tell it; what was written since does, and it never changes.
std::int64_t SensorDe(const QJsonObject &linha, const EntradaDaHistoria *posterior)
{
    if (linha.contains("NroIntSensor")) {
        return linha.value("NroIntSensor").toInteger();
    }
    return posterior == nullptr ? 0 : LeJson(posterior->Depois).value("NroIntSensor").toInteger();
}

} // namespace

std::int64_t EntradaDaHistoria::Local() const
{
    return MaisMinutos(Quando, Fuso.value_or(0));
}

bool EntradaDaHistoria::Ate(const Instante &instante) const
{
    return Quando <= (Fuso ? instante.Utc() : Momento(instante.Local));
}

// Which limits and days are its own is asked of their tables, from which no row goes away, and where none changes its
// equipment.
std::vector<EntradaDaHistoria> HistoriaDoEquipamento(Banco &banco, std::int32_t nroIntEquip)
{
    static const QString sql = [] {
        const QString colunas = "SELECT h.Nro, h.Quando, h.Fuso, h.Operador, h.Entidade, h.NroEntidade, h.Acao, "
                                "h.Motivo, h.Depois, h.Elo FROM ";
        const QString daTabela = "%1 l JOIN HISTORICO h ON h.Entidade = '%1' AND h.NroEntidade = l.NroInt "
                                 "WHERE l.NroIntEquip = ?";
        return colunas + "HISTORICO h WHERE h.Raiz = 'EQUIPAMENTO' AND h.NroRaiz = ? UNION ALL " + colunas +
               daTabela.arg("LIMITE") + " UNION ALL " + colunas + daTabela.arg("DIA") + " ORDER BY 1";
    }();
    std::vector<EntradaDaHistoria> entradas;
    Consulta linhas(banco, sql, {nroIntEquip, nroIntEquip, nroIntEquip});
    while (linhas.Proxima()) {
        entradas.push_back({linhas.Inteiro(0), linhas.Inteiro(1),
                            linhas.Valor(2).isNull() ? std::nullopt : std::optional(linhas.Valor(2).toInt()),
                            static_cast<std::int32_t>(linhas.Inteiro(3)), linhas.Texto(4), linhas.Inteiro(5),
                            linhas.Texto(6), linhas.Texto(7), linhas.Texto(8), linhas.Texto(9)});
    }
    return entradas;
}

std::size_t ConhecidasEm(const std::vector<EntradaDaHistoria> &entradas, const Instante &quando)
{
    const auto ultima = std::find_if(entradas.rbegin(), entradas.rend(),
                                     [&](const EntradaDaHistoria &entrada) { return entrada.Ate(quando); });
    return static_cast<std::size_t>(entradas.rend() - ultima);
}

Vigencia VigenciasConhecidas::NoDia(std::int32_t dia) const
{
    return VigenciaNoDia(
        dia, m_Afericoes, [&] { return AtividadeNoDia(m_DoEquipamento, dia); },
        [&](std::int64_t sensor) {
            const auto mudancas = m_DosSensores.find(sensor);
            return mudancas == m_DosSensores.end() ? std::nullopt : AtividadeNoDia(mudancas->second, dia);
        });
}

EstadoConhecido::EstadoConhecido(const std::vector<EntradaDaHistoria> &entradas, std::size_t quantas)
    : m_Entradas(entradas),
      m_Quantas(quantas)
{
    for (std::size_t n = 0; n < entradas.size(); ++n) {
        (n < quantas ? m_Linhas : m_Posteriores)[entradas[n].Entidade][entradas[n].Numero] = &entradas[n];
    }
}

bool EstadoConhecido::SemFuso() const
{
    return std::ranges::any_of(m_Linhas, [](const auto &especie) {
        return std::ranges::any_of(especie.second, [](const auto &linha) { return !linha.second->Fuso; });
    });
}

Ref<EquiptoED> EstadoConhecido::Equipamento() const
{
    const Ref<EquiptoED> equipto = Lista<EquiptoED>("EQUIPAMENTO")->Item(1);
    equipto->Sensores = Sensores();
    equipto->ListaLimiteDif = ListaEmOrdem<LimiteDifED>("LIMITE", [](const Ref<LimiteDifED> &l) {
        return std::tuple(l->Dia.Valor(), l->HoraInicio.Valor(), l->HoraFim.Valor(), l->NroInt.Valor());
    });
    equipto->ListaDiaEspecifico = ListaEmOrdem<DiaEspecificoED>("DIA", [](const Ref<DiaEspecificoED> &d) {
        return std::tuple(d->Data.Valor().Valor, d->HoraInicio.Valor(), d->HoraFim.Valor(), d->NroInt.Valor());
    });
    return equipto;
}

VigenciasConhecidas EstadoConhecido::Vigencias() const
{
    std::vector<MudancaDeAtividade> doEquipamento;
    std::map<std::int64_t, std::vector<MudancaDeAtividade>> dosSensores;
    for (std::size_t n = 0; n < m_Quantas; ++n) {
        const EntradaDaHistoria &entrada = m_Entradas[n];
        const bool sensor = entrada.Entidade == "SENSOR";
        if (entrada.Acao != "altera" && (sensor || entrada.Entidade == "EQUIPAMENTO")) {
            (sensor ? dosSensores[entrada.Numero] : doEquipamento)
                .push_back(MudancaDeAtividade::De(entrada.Quando, entrada.Fuso.value_or(0), entrada.Depois));
        }
    }
    return {Afericoes(), std::move(doEquipamento), std::move(dosSensores)};
}

const EntradaDaHistoria *EstadoConhecido::EntradaDe(const std::string &entidade, std::int64_t numero) const
{
    const PorLinha &linhas = De(m_Linhas, entidade);
    const auto linha = linhas.find(numero);
    return linha == linhas.end() ? nullptr : linha->second;
}

const EstadoConhecido::PorLinha &EstadoConhecido::De(const std::map<std::string, PorLinha> &linhas,
                                                     const std::string &entidade)
{
    static const PorLinha nenhuma;
    const auto achadas = linhas.find(entidade);
    return achadas == linhas.end() ? nenhuma : achadas->second;
}

// In the order of their numbers.
template <class R> ListaDe<R> EstadoConhecido::Lista(const std::string &entidade) const
{
    ListaDe<R> lista = Novo<Colecao<Ref<R>>>();
    for (const auto &[numero, entrada] : De(m_Linhas, entidade)) {
        lista->Add(Lido<R>(LeJson(entrada->Depois)));
    }
    return lista;
}

template <class R, class Ordem> ListaDe<R> EstadoConhecido::ListaEmOrdem(const std::string &entidade, Ordem ordem) const
{
    const ListaDe<R> lidos = Lista<R>(entidade);
    std::vector<Ref<R>> ordenados;
    for (std::int32_t posicao = 1; posicao <= lidos->Count(); ++posicao) {
        ordenados.push_back(lidos->Item(posicao));
    }
    std::ranges::sort(ordenados, {}, ordem);
    ListaDe<R> lista = Novo<Colecao<Ref<R>>>();
    for (const Ref<R> &registro : ordenados) {
        lista->Add(registro);
    }
    return lista;
}

ListaDe<SensorED> EstadoConhecido::Sensores() const
{
    const ListaDe<SensorED> lista = Lista<SensorED>("SENSOR");
    std::map<std::int64_t, Ref<SensorED>> porNumero;
    for (std::int32_t posicao = 1; posicao <= lista->Count(); ++posicao) {
        porNumero[lista->Item(posicao)->NroIntSensor] = lista->Item(posicao);
    }
    for (const AfericaoDeSensor &afericao : Afericoes()) {
        const auto sensor = porNumero.find(afericao.NroIntSensor);
        if (sensor == porNumero.end()) {
            throw Recusa("O histórico não diz de que sensor é a aferição de número interno " +
                         CStr(afericao.Afericao->NroIntAfericao.Valor()) + ": o registro precisa ser conferido.");
        }
        if (sensor->second->Afericoes.Valor().Nada()) {
            sensor->second->Afericoes = Novo<Colecao<Ref<AfericaoED>>>();
        }
        sensor->second->Afericoes.Valor()->Add(afericao.Afericao);
    }
    return lista;
}

std::vector<AfericaoDeSensor> EstadoConhecido::Afericoes() const
{
    const PorLinha &posteriores = De(m_Posteriores, "AFERICAO");
    std::vector<AfericaoDeSensor> afericoes;
    for (const auto &[numero, entrada] : De(m_Linhas, "AFERICAO")) {
        const QJsonObject linha = LeJson(entrada->Depois);
        const auto posterior = posteriores.find(numero);
        afericoes.push_back(
            {Lido<AfericaoED>(linha), SensorDe(linha, posterior == posteriores.end() ? nullptr : posterior->second)});
    }
    return afericoes;
}

} // namespace mesa
