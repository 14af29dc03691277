#include "services/LeituraDePrazos.h"

#include "host/Indicador.h"
#include "services/Calendario.h"
#include "services/RegrasDoTipo.h"
#include "services/Vigencia.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace mesa {

namespace {

constexpr std::int32_t DiasEntreLugares = 2;
constexpr std::int32_t UltimoDia = 99991231;

constexpr std::int32_t PorTrecho = 5000; // equipment that are counted by one statement
const QString DosSensores = " JOIN SENSOR s ON s.NroIntEquip = e.NroIntEquip AND s.Ativo = 1 ";
const QString DasAfericoes = " JOIN AFERICAO a ON a.NroIntSensor = s.NroIntSensor AND a.Ativo = 1 "
                             "AND a.DataVencimento >= ? ";
// Of a row of Balancos.
const QString DoBalanco = "c.TipoEquip, c.AParte, c.EmVigor, c.Vence, c.SemDocumento, c.PorComecar, c.Acabou";
enum Coluna { TipoEquip, LidaAParte, EmVigor, Vence, SemDocumento, PorComecar, Acabou, Depois };

QString DoGrupo(const QString &grupo)
{
    return grupo.isEmpty() ? QString("''") : "e." + grupo;
}

bool TemAfericoes(const std::string &tipoEquip)
{
    return RegrasDe(tipoEquip).TemAfericoes;
}

EstadoDePrazo EstadoDaLinha(const Consulta &linha, int primeira, std::int32_t dia)
{
    if (!TemAfericoes(linha.Texto(primeira + TipoEquip))) {
        return EstadoDePrazo::Dispensado;
    }
    const auto inteiro = [&](Coluna coluna) { return linha.Inteiro(primeira + coluna); };
    return Prazos::DoEquipamento({static_cast<std::size_t>(inteiro(EmVigor)), static_cast<std::int32_t>(inteiro(Vence)),
                                  inteiro(SemDocumento) != 0, inteiro(Acabou) != 0, inteiro(PorComecar) != 0},
                                 dia);
}

bool VenceAntes(const LeituraDePrazos::Afericao &uma, const LeituraDePrazos::Afericao &outra)
{
    return uma.Periodo.Ate < outra.Periodo.Ate;
}

// Whether something was written down by a clock that is still ahead, and something else behind it by one that is not.
bool HaEscritoDepois(Banco &dados, std::int64_t agora)
{
    Consulta voltas(dados, "SELECT Depois FROM HISTORICO WHERE Entidade = 'RELOGIO' AND NroEntidade = 0");
    while (voltas.Proxima()) {
        const QByteArray volta = QByteArray::fromStdString(voltas.Texto(0));
        if (QJsonDocument::fromJson(volta).object().value("Ultimo").toInteger() > agora) {
            return true;
        }
    }
    return false;
}

} // namespace

LeituraDePrazos::LeituraDePrazos(Operacao &operacao, std::int32_t dia)
    : m_Operacao(operacao),
      m_Dia(dia),
      m_AParte{"e.DataTrans > ? OR (e.DataTrans >= ? AND EXISTS (SELECT 1 FROM SENSOR i "
               "WHERE i.NroIntEquip = e.NroIntEquip AND i.Ativo <> 1))",
               {dia, DiaCivil(DataDoDia(dia).MaisDias(-DiasEntreLugares))}}
{
    if (const std::int64_t agora = operacao.Agora().Utc(); HaEscritoDepois(operacao.Dados(), agora)) {
        m_AParte.Sql += " OR EXISTS (SELECT 1 FROM HISTORICO h WHERE h.Raiz = 'EQUIPAMENTO' "
                        "AND h.NroRaiz = e.NroIntEquip AND h.Quando > ?)";
        m_AParte.Valores.push_back(qlonglong(agora));
    }
}

void LeituraDePrazos::Filtra(const QString &coluna, const QVariant &valor)
{
    m_Condicoes += " AND e." + coluna + " = ?";
    m_Valores.push_back(valor);
}

void LeituraDePrazos::Danificado(std::int32_t nroIntEquip, std::int64_t documento)
{
    m_Danificados[nroIntEquip].insert(documento);
}

LeituraDePrazos::Parte LeituraDePrazos::Onde(std::uint8_t comFoto) const
{
    return {" WHERE e.ClienteInc = ? AND e.Ativo = 1 AND e.TrabFoto = ?" + m_Condicoes,
            QVariantList{Q(m_Operacao.Quem().Cliente), comFoto} + m_Valores};
}

LeituraDePrazos::Parte LeituraDePrazos::Entre(std::uint8_t comFoto, std::int32_t depoisDe, std::int32_t ate) const
{
    const Parte onde = Onde(comFoto);
    return {onde.Sql + " AND e.NroIntEquip > ? AND e.NroIntEquip <= ?", onde.Valores + QVariantList{depoisDe, ate}};
}

LeituraDePrazos::Parte LeituraDePrazos::Pedaco(std::uint8_t comFoto, std::int32_t depoisDe, std::int32_t quantos) const
{
    const Parte onde = Onde(comFoto);
    return {"(SELECT e.* FROM EQUIPAMENTO e" + onde.Sql +
                QString(" AND e.NroIntEquip > ? ORDER BY e.NroIntEquip LIMIT %1) e").arg(quantos),
            onde.Valores + QVariantList{depoisDe}};
}

// One row an equipment: c, with all that its state depends on. What makes no difference to it is the same for all.
LeituraDePrazos::Parte LeituraDePrazos::Balancos(const QString &grupo, const Parte &tabela, const Parte &onde) const
{
    const std::array<std::int32_t, 3> fins = Prazos::FimDosTrechos(m_Dia);
    QString vence = "CASE WHEN b.EmVigor <> 1 THEN 0 ";
    QVariantList dosFins;
    for (const std::int32_t fim : fins) {
        vence += "WHEN b.Vence <= ? THEN CAST(? AS INTEGER) ";
        dosFins += {fim, fim};
    }
    vence += QString("ELSE %1 END").arg(UltimoDia);
    return {"(SELECT b.NroIntEquip, b.Grupo, b.TipoEquip, b.AParte, "
            "CASE WHEN b.EmVigor > 1 THEN 2 ELSE b.EmVigor END AS EmVigor, " +
                vence +
                " AS Vence, CASE WHEN b.EmVigor = 0 AND b.SemDocumento > 0 THEN 1 ELSE 0 END AS SemDocumento, "
                "CASE WHEN b.EmVigor = 0 AND b.PorComecar > 0 THEN 1 ELSE 0 END AS PorComecar, "
                "CASE WHEN b.EmVigor = 0 AND b.SemDocumento = 0 AND EXISTS (SELECT 1 FROM SENSOR s "
                "JOIN AFERICAO o ON o.NroIntSensor = s.NroIntSensor AND o.Ativo = 1 AND o.DataVencimento < ? "
                "WHERE s.NroIntEquip = b.NroIntEquip AND s.Ativo = 1) THEN 1 ELSE 0 END AS Acabou "
                "FROM (SELECT e.NroIntEquip, MIN(" +
                DoGrupo(grupo) + ") AS Grupo, MIN(e.TipoEquip) AS TipoEquip, MAX(CASE WHEN " + m_AParte.Sql +
                " THEN 1 ELSE 0 END) AS AParte, COUNT(CASE WHEN " + TemODiaComDocumento +
                " THEN 1 END) AS EmVigor, MAX(CASE WHEN " + TemODiaComDocumento +
                " THEN a.DataVencimento ELSE 0 END) AS Vence, "
                "COUNT(CASE WHEN a.DataVerificacao <= ? AND a.NroIntImgCertif IS NULL THEN 1 END) AS SemDocumento, "
                "COUNT(CASE WHEN a.DataVerificacao > ? THEN 1 END) AS PorComecar FROM " +
                tabela.Sql + " LEFT" + DosSensores + "LEFT" + DasAfericoes + onde.Sql + " GROUP BY e.NroIntEquip) b) c",
            dosFins + QVariantList{m_Dia} + m_AParte.Valores + QVariantList{m_Dia, m_Dia, m_Dia, m_Dia, m_Dia, m_Dia} +
                tabela.Valores + QVariantList{m_Dia} + onde.Valores};
}

// True when some of these are to be read by themselves.
bool LeituraDePrazos::ContaPelasLinhas(const QString &grupo, const Parte &onde, Contagens &contagens) const
{
    const Parte balancos = Balancos(grupo, {"EQUIPAMENTO e", {}}, onde);
    Consulta linhas(m_Operacao.Dados(),
                    "SELECT " + DoBalanco + ", c.Grupo, COUNT(*) FROM " + balancos.Sql + " GROUP BY " + DoBalanco +
                        ", c.Grupo",
                    balancos.Valores);
    bool algumAParte = false;
    while (linhas.Proxima()) {
        if (linhas.Inteiro(LidaAParte) != 0) {
            algumAParte = true;
            continue;
        }
        contagens.PorGrupo[linhas.Valor(Depois).toString()][EstadoDaLinha(linhas, 0, m_Dia)] +=
            static_cast<std::int32_t>(linhas.Inteiro(Depois + 1));
    }
    return algumAParte;
}

void LeituraDePrazos::ContaAParte(const QString &grupo, const Parte &onde, Contagens &contagens) const
{
    struct Equipamento {
        std::int32_t Numero;
        std::string Tipo;
        QString Grupo;
    };
    std::vector<Equipamento> aParte;
    {
        Consulta linhas(m_Operacao.Dados(),
                        "SELECT e.NroIntEquip, e.TipoEquip, " + DoGrupo(grupo) + " FROM EQUIPAMENTO e" + onde.Sql +
                            " AND (" + m_AParte.Sql + ")",
                        onde.Valores + m_AParte.Valores);
        while (linhas.Proxima()) {
            aParte.push_back(
                {static_cast<std::int32_t>(linhas.Inteiro(0)), linhas.Texto(1), linhas.Valor(2).toString()});
        }
    }
    for (const Equipamento &equipamento : aParte) {
        m_Operacao.Anda(0, "Contando os prazos");
        if (const auto situacao = De(equipamento.Numero, equipamento.Tipo, {})) {
            ++contagens.PorGrupo[equipamento.Grupo][situacao->Estado];
        } else {
            contagens.SemEstado.push_back(equipamento.Numero);
        }
    }
}

void LeituraDePrazos::ContaMeses(const Parte &onde, std::int32_t ate, Contagens &contagens) const
{
    Consulta linhas(m_Operacao.Dados(),
                    "SELECT e.TipoEquip, a.DataVencimento / 100, COUNT(*) FROM EQUIPAMENTO e" + DosSensores +
                        DasAfericoes + onde.Sql +
                        " AND a.DataVencimento <= ? GROUP BY e.TipoEquip, a.DataVencimento / 100",
                    QVariantList{m_Dia} + onde.Valores + QVariantList{ate});
    while (linhas.Proxima()) {
        if (TemAfericoes(linhas.Texto(0))) {
            contagens.PorMes[static_cast<std::int32_t>(linhas.Inteiro(1))] +=
                static_cast<std::int32_t>(linhas.Inteiro(2));
        }
    }
}

// Documents are few that are damaged: their equipment are counted again, each with the state that it has without them.
void LeituraDePrazos::TrocaDanificados(const QString &grupo, Contagens &contagens) const
{
    for (const auto &[numero, documentos] : m_Danificados) {
        std::string tipo;
        QString seu;
        {
            Consulta linha(m_Operacao.Dados(),
                           "SELECT e.TipoEquip, " + DoGrupo(grupo) +
                               " FROM EQUIPAMENTO e WHERE e.ClienteInc = ? AND e.Ativo = 1 AND e.NroIntEquip = ?" +
                               m_Condicoes,
                           QVariantList{Q(m_Operacao.Quem().Cliente), numero} + m_Valores);
            if (!linha.Proxima()) {
                continue;
            }
            tipo = linha.Texto(0);
            seu = linha.Valor(1).toString();
        }
        const auto antes = De(numero, tipo, {});
        const auto depois = De(numero, tipo, documentos);
        if (antes && depois) {
            auto &estados = contagens.PorGrupo[seu];
            --estados[antes->Estado];
            ++estados[depois->Estado];
        }
    }
}

std::int32_t LeituraDePrazos::Ativos() const
{
    Consulta linha(m_Operacao.Dados(),
                   "SELECT COUNT(*) FROM EQUIPAMENTO e WHERE e.ClienteInc = ? AND e.Ativo = 1" + m_Condicoes,
                   QVariantList{Q(m_Operacao.Quem().Cliente)} + m_Valores);
    linha.Proxima();
    return static_cast<std::int32_t>(linha.Inteiro(0));
}

// In stretches, so that who waits is asked on the way; in one transaction, so that they are of one moment.
LeituraDePrazos::Contagens LeituraDePrazos::Conta(const QString &grupo, std::int32_t ate) const
{
    Contagens contagens;
    for (const auto comFoto : {std::uint8_t{1}, std::uint8_t{2}}) {
        for (std::int32_t depoisDe = 0;;) {
            m_Operacao.Anda(0, "Contando os prazos");
            const std::int32_t ultimo = FimDoTrecho(comFoto, depoisDe);
            if (ultimo == 0) {
                break;
            }
            const Parte onde = Entre(comFoto, depoisDe, ultimo);
            if (ContaPelasLinhas(grupo, onde, contagens)) {
                ContaAParte(grupo, onde, contagens);
            }
            ContaMeses(onde, ate, contagens);
            depoisDe = ultimo;
        }
    }
    TrocaDanificados(grupo, contagens);
    return contagens;
}

// The last equipment of the next stretch; 0 behind the last one.
std::int32_t LeituraDePrazos::FimDoTrecho(std::uint8_t comFoto, std::int32_t depoisDe) const
{
    const Parte onde = Onde(comFoto);
    Consulta linha(m_Operacao.Dados(),
                   "SELECT MAX(t.NroIntEquip) FROM (SELECT e.NroIntEquip FROM EQUIPAMENTO e" + onde.Sql +
                       QString(" AND e.NroIntEquip > ? ORDER BY e.NroIntEquip LIMIT %1) t").arg(PorTrecho),
                   onde.Valores + QVariantList{depoisDe});
    linha.Proxima();
    return static_cast<std::int32_t>(linha.Inteiro(0));
}

LeituraDePrazos::Trecho LeituraDePrazos::Estados(
    std::uint8_t comFoto, std::int32_t depoisDe, std::int32_t quantos,
    const std::function<void(std::int32_t nroIntEquip, std::optional<EstadoDePrazo>)> &visita) const
{
    struct Linha {
        std::int32_t Numero;
        std::string Tipo;
        std::optional<EstadoDePrazo> Estado; // none: to be read by itself
    };
    std::vector<Linha> lidas;
    {
        const Parte balancos = Balancos("", Pedaco(comFoto, depoisDe, quantos), {});
        Consulta linhas(m_Operacao.Dados(),
                        "SELECT c.NroIntEquip, " + DoBalanco + " FROM " + balancos.Sql + " ORDER BY c.NroIntEquip",
                        balancos.Valores);
        while (linhas.Proxima()) {
            const auto numero = static_cast<std::int32_t>(linhas.Inteiro(0));
            const bool porSi = linhas.Inteiro(1 + LidaAParte) != 0 || m_Danificados.contains(numero);
            lidas.push_back({numero, linhas.Texto(1 + TipoEquip),
                             porSi ? std::nullopt : std::optional(EstadoDaLinha(linhas, 1, m_Dia))});
        }
    }
    for (const Linha &linha : lidas) {
        std::optional<EstadoDePrazo> estado = linha.Estado;
        if (!estado) {
            if (const auto situacao = De(linha.Numero, linha.Tipo)) {
                estado = situacao->Estado;
            }
        }
        visita(linha.Numero, estado);
    }
    return {static_cast<std::int32_t>(lidas.size()), lidas.empty() ? 0 : lidas.back().Numero};
}

LeituraDePrazos::Trecho
LeituraDePrazos::Afericoes(std::uint8_t comFoto, std::int32_t depoisDe, std::int32_t quantos, std::int32_t de,
                           std::int32_t ate,
                           const std::function<void(std::int32_t nroIntEquip, const Afericao &)> &visita) const
{
    Trecho trecho;
    std::vector<std::pair<std::int32_t, Afericao>> lidas;
    {
        const Parte pedaco = Pedaco(comFoto, depoisDe, quantos);
        Consulta linhas(m_Operacao.Dados(),
                        "SELECT e.NroIntEquip, e.TipoEquip, a.NroIntAfericao, a.DataVerificacao, a.DataVencimento, "
                        "a.NroIntImgCertif, a.NroIntSensor FROM " +
                            pedaco.Sql + " LEFT" + DosSensores + "LEFT" + DasAfericoes +
                            "AND a.DataVencimento <= ? ORDER BY e.NroIntEquip, a.DataVencimento, a.NroIntAfericao",
                        pedaco.Valores + QVariantList{de, ate});
        while (linhas.Proxima()) {
            const auto numero = static_cast<std::int32_t>(linhas.Inteiro(0));
            trecho.Quantos += numero != trecho.Ultimo ? 1 : 0;
            trecho.Ultimo = numero;
            if (linhas.Inteiro(2) == 0 || !TemAfericoes(linhas.Texto(1))) {
                continue;
            }
            const std::int64_t documento = linhas.Inteiro(5);
            const auto danificados = m_Danificados.find(numero);
            const bool inteiro =
                documento != 0 && (danificados == m_Danificados.end() || !danificados->second.contains(documento));
            lidas.push_back(
                {numero,
                 {{static_cast<std::int32_t>(linhas.Inteiro(3)), static_cast<std::int32_t>(linhas.Inteiro(4)), inteiro},
                  linhas.Inteiro(2),
                  linhas.Inteiro(6),
                  documento}});
        }
    }
    for (const auto &[numero, afericao] : lidas) {
        visita(numero, afericao);
    }
    return trecho;
}

std::optional<LeituraDePrazos::Situacao> LeituraDePrazos::De(std::int32_t nroIntEquip,
                                                             const std::string &tipoEquip) const
{
    const auto danificados = m_Danificados.find(nroIntEquip);
    return De(nroIntEquip, tipoEquip,
              danificados == m_Danificados.end() ? std::set<std::int64_t>() : danificados->second);
}

std::optional<LeituraDePrazos::Situacao> LeituraDePrazos::De(std::int32_t nroIntEquip, const std::string &tipoEquip,
                                                             const std::set<std::int64_t> &danificados) const
{
    const auto conta = AtividadeNoDia(m_Operacao.Dados(), "EQUIPAMENTO", nroIntEquip, m_Dia);
    if (!conta) {
        return std::nullopt;
    }
    if (!TemAfericoes(tipoEquip)) {
        return Situacao{EstadoDePrazo::Dispensado, {}};
    }
    std::vector<Afericao> lidas;
    std::vector<AfericaoDeSensor> comoRegistros;
    {
        Consulta linhas(m_Operacao.Dados(),
                        "SELECT a.NroIntAfericao, a.NroIntSensor, a.DataVerificacao, a.DataVencimento, "
                        "a.NroIntImgCertif FROM SENSOR s JOIN AFERICAO a ON a.NroIntSensor = s.NroIntSensor "
                        "AND a.Ativo = 1 WHERE s.NroIntEquip = ? ORDER BY a.NroIntAfericao",
                        {nroIntEquip});
        while (linhas.Proxima()) {
            const std::int64_t documento = danificados.contains(linhas.Inteiro(4)) ? 0 : linhas.Inteiro(4);
            const auto de = static_cast<std::int32_t>(linhas.Inteiro(2));
            const auto ate = static_cast<std::int32_t>(linhas.Inteiro(3));
            lidas.push_back({{de, ate, documento != 0}, linhas.Inteiro(0), linhas.Inteiro(1), documento});
            auto registro = Novo<AfericaoED>();
            registro->NroIntAfericao = static_cast<double>(linhas.Inteiro(0));
            registro->DataVerificacao = DataDoDia(de);
            registro->DataVencimento = DataDoDia(ate);
            registro->NroIntImgCertif = static_cast<double>(documento);
            registro->Ativo = Indicador::Sim;
            comoRegistros.push_back({registro, linhas.Inteiro(1)});
        }
    }
    std::map<std::int64_t, std::optional<Atividade>> atividades; // of its sensors, each asked for once
    const auto doSensor = [&](std::int64_t sensor) {
        auto sabida = atividades.find(sensor);
        if (sabida == atividades.end()) {
            sabida = atividades.emplace(sensor, AtividadeNoDia(m_Operacao.Dados(), "SENSOR", sensor, m_Dia)).first;
        }
        return sabida->second;
    };
    const Vigencia vigencia = VigenciaNoDia(
        m_Dia, comoRegistros, [&] { return conta; }, doSensor);
    const auto lida = [&](const Ref<AfericaoED> &registro) {
        return *std::ranges::find(lidas, static_cast<std::int64_t>(registro->NroIntAfericao.Valor()),
                                  &Afericao::NroIntAfericao);
    };
    Prazos::Balanco balanco;
    std::optional<Afericao> por;
    switch (vigencia.Porque) {
    case SemVigencia::EquipamentoNaoConta:
        return std::nullopt;
    case SemVigencia::Nenhuma:
        por = lida(vigencia.Afericao);
        balanco.EmVigor = 1;
        balanco.Vencimento = por->Periodo.Ate;
        break;
    case SemVigencia::Varias:
        balanco.EmVigor = vigencia.Varias.size();
        for (const AfericaoDeSensor &uma : vigencia.Varias) {
            if (const Afericao sua = lida(uma.Afericao); !por || VenceAntes(sua, *por)) {
                por = sua;
            }
        }
        break;
    default:
        for (const Afericao &afericao : lidas) {
            if (!doSensor(afericao.NroIntSensor)) {
                continue;
            }
            switch (AlcanceNoDia(afericao.Periodo, m_Dia)) {
            case Alcance::SemDocumento:
                if (!balanco.TemSemDocumento || VenceAntes(afericao, *por)) {
                    por = afericao;
                }
                balanco.TemSemDocumento = true;
                break;
            case Alcance::Acabou:
                if (!balanco.TemSemDocumento && (!por || VenceAntes(*por, afericao))) {
                    por = afericao;
                }
                balanco.TemAcabada = true;
                break;
            default:
                balanco.TemPorComecar = true;
            }
        }
    }
    return Situacao{Prazos::DoEquipamento(balanco, m_Dia), por};
}

} // namespace mesa
