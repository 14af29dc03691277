#include "services/LeituraDePrazos.h"

#include "host/Conversoes.h"
#include "services/RegrasDoTipo.h"
#include "services/ServicoDocumentos.h"

#include <algorithm>
#include <map>
#include <utility>

namespace mesa {

namespace {

constexpr std::int32_t EntreNoticias = 10000; // equipment

// Which calibrations have not ended. The scalar is asked only where none of them has the day.
const QString Colunas =
    "s.NroIntSensor, s.NroSensor, a.NroIntAfericao, a.DataVerificacao, a.DataVencimento, a.NroIntImgCertif, "
    "CASE WHEN a.DataVerificacao <= ? THEN 0 ELSE (SELECT MAX(o.DataVencimento) FROM AFERICAO o "
    "WHERE o.NroIntSensor = s.NroIntSensor AND o.Ativo = 1 AND o.DataVencimento < ?) END";
const QString Juncao = " LEFT JOIN SENSOR s ON s.NroIntEquip = e.NroIntEquip AND s.Ativo = 1 "
                       "LEFT JOIN AFERICAO a ON a.NroIntSensor = s.NroIntSensor AND a.Ativo = 1 "
                       "AND a.DataVencimento >= ? ";

enum Coluna { NroIntEquip, TipoEquip, Grupo, NroIntSensor, NroSensor, NroIntAfericao, De, Ate, Documento, Anterior };

// What was read of a sensor.
struct SensorLido {
    std::int32_t NroIntSensor = 0;
    std::int32_t NroSensor = 0;
    std::vector<Prazos::Afericao> Afericoes;
};

// The sensor of that number, which may be a new one. They are few.
SensorLido &SensorDe(std::vector<SensorLido> &sensores, std::int32_t numero)
{
    const auto achado = std::ranges::find(sensores, numero, &SensorLido::NroIntSensor);
    if (achado != sensores.end()) {
        return *achado;
    }
    sensores.push_back({numero, 0, {}});
    return sensores.back();
}

} // namespace

const LeituraDePrazos::Sensor *LeituraDePrazos::Equipamento::Decide() const
{
    const Sensor *pior = nullptr;
    for (const Sensor &sensor : Sensores) {
        if (pior == nullptr || Prazos::Pior(sensor.Situacao, pior->Situacao)) {
            pior = &sensor;
        }
    }
    return pior;
}

EstadoDePrazo LeituraDePrazos::Equipamento::Estado() const
{
    const Sensor *decide = Decide();
    return Dispensado          ? EstadoDePrazo::Dispensado
           : decide == nullptr ? EstadoDePrazo::NuncaAferido
                               : decide->Situacao.Estado;
}

LeituraDePrazos::LeituraDePrazos(Operacao &operacao, std::int32_t dia) : m_Operacao(operacao), m_Dia(dia) {}

void LeituraDePrazos::Filtra(const QString &coluna, const QVariant &valor)
{
    m_Condicoes += " AND e." + coluna + " = ?";
    m_Valores.push_back(valor);
}

LeituraDePrazos::Fonte LeituraDePrazos::FonteDe(std::uint8_t comFoto, const QString &mais,
                                                const QVariantList &seus) const
{
    return {"EQUIPAMENTO e",
            {},
            " WHERE e.ClienteInc = ? AND e.Ativo = 1 AND e.TrabFoto = ?" + m_Condicoes + mais,
            QVariantList{Q(m_Operacao.Quem().Cliente), comFoto} + m_Valores + seus};
}

void LeituraDePrazos::Todos(const QString &grupo, const Visita &visita) const
{
    for (const auto comFoto : {std::uint8_t{1}, std::uint8_t{2}}) {
        Le(FonteDe(comFoto, "", {}), grupo, visita);
    }
}

std::int32_t LeituraDePrazos::Trecho(std::uint8_t comFoto, std::int32_t depoisDe, std::int32_t quantos,
                                     const Visita &visita) const
{
    const Fonte todos = FonteDe(comFoto, " AND e.NroIntEquip > ?", {depoisDe});
    std::int32_t lidos = 0;
    Le({"(SELECT e.NroIntEquip, e.TipoEquip FROM " + todos.Tabela + todos.Onde +
            QString(" ORDER BY e.NroIntEquip LIMIT %1) e").arg(quantos),
        todos.DoOnde,
        "",
        {}},
       "", [&](const Equipamento &equipamento) {
           ++lidos;
           visita(equipamento);
       });
    return lidos;
}

std::set<std::int64_t> LeituraDePrazos::Danificados(const Fonte &fonte) const
{
    std::vector<std::int64_t> documentos;
    {
        Consulta linhas(m_Operacao.Dados(),
                        "SELECT DISTINCT a.NroIntImgCertif FROM " + fonte.Tabela +
                            " JOIN SENSOR s ON s.NroIntEquip = e.NroIntEquip AND s.Ativo = 1 "
                            "JOIN AFERICAO a ON a.NroIntSensor = s.NroIntSensor AND a.Ativo = 1 "
                            "AND a.NroIntImgCertif IS NOT NULL AND a.DataVerificacao <= ? AND a.DataVencimento >= ?" +
                            fonte.Onde,
                        fonte.DaTabela + QVariantList{m_Dia, m_Dia} + fonte.DoOnde);
        while (linhas.Proxima()) {
            documentos.push_back(linhas.Inteiro(0));
        }
    }
    ServicoDocumentos servico(m_Operacao);
    std::set<std::int64_t> danificados;
    for (std::size_t n = 0; n < documentos.size(); ++n) {
        m_Operacao.Anda(static_cast<double>(n) / static_cast<double>(documentos.size()), "Conferindo os documentos");
        if (!servico.EstaInteiro(documentos[n])) {
            danificados.insert(documentos[n]);
        }
    }
    return danificados;
}

void LeituraDePrazos::Le(const Fonte &fonte, const QString &grupo, const Visita &visita) const
{
    const std::set<std::int64_t> danificados = m_ConfereDocumentos ? Danificados(fonte) : std::set<std::int64_t>();
    std::map<QString, bool> temAfericoes; // by type
    Equipamento atual;
    std::vector<SensorLido> sensores;
    std::int32_t lidos = 0;
    const auto entrega = [&] {
        if (atual.NroIntEquip == 0) {
            return;
        }
        for (const SensorLido &sensor : sensores) {
            if (const auto situacao = Prazos::DoSensor(sensor.Afericoes, m_Dia)) {
                atual.Sensores.push_back({sensor.NroIntSensor, sensor.NroSensor, *situacao});
            } else {
                atual.Confuso = sensor.NroSensor;
            }
        }
        visita(atual);
        if (++lidos % EntreNoticias == 0) {
            m_Operacao.Anda(0, "Lendo os prazos: " + CStr(lidos) + " equipamentos");
        }
    };
    Consulta linhas(m_Operacao.Dados(),
                    "SELECT e.NroIntEquip, e.TipoEquip, " + (grupo.isEmpty() ? QString("''") : "e." + grupo) + ", " +
                        Colunas + " FROM " + fonte.Tabela + Juncao + fonte.Onde + " ORDER BY e.NroIntEquip",
                    QVariantList{m_Dia, m_Dia} + fonte.DaTabela + QVariantList{m_Dia} + fonte.DoOnde);
    while (linhas.Proxima()) {
        if (const auto numero = static_cast<std::int32_t>(linhas.Inteiro(NroIntEquip)); numero != atual.NroIntEquip) {
            entrega();
            atual = {};
            sensores.clear();
            atual.NroIntEquip = numero;
            const QString tipo = linhas.Valor(TipoEquip).toString();
            auto sabido = temAfericoes.find(tipo);
            if (sabido == temAfericoes.end()) {
                sabido = temAfericoes.emplace(tipo, RegrasDe(S(tipo)).TemAfericoes).first;
            }
            atual.Dispensado = !sabido->second;
            if (!grupo.isEmpty()) {
                atual.Grupo = linhas.Valor(Grupo).toString();
            }
        }
        if (linhas.Valor(NroIntSensor).isNull()) {
            continue;
        }
        SensorLido &sensor = SensorDe(sensores, static_cast<std::int32_t>(linhas.Inteiro(NroIntSensor)));
        sensor.NroSensor = static_cast<std::int32_t>(linhas.Inteiro(NroSensor));
        if (!linhas.Valor(De).isNull()) {
            const std::int64_t documento = linhas.Inteiro(Documento);
            sensor.Afericoes.push_back(
                {{static_cast<std::int32_t>(linhas.Inteiro(De)), static_cast<std::int32_t>(linhas.Inteiro(Ate)),
                  documento != 0 && !danificados.contains(documento)},
                 linhas.Inteiro(NroIntAfericao)});
        }
        if (const auto anterior = static_cast<std::int32_t>(linhas.Inteiro(Anterior)); anterior != 0) {
            sensor.Afericoes.push_back({{anterior, anterior, true}, 0}); // it has ended: no more is asked of it
        }
    }
    entrega();
}

} // namespace mesa
