#include "desk/services/ServicoSensores.h"

#include "desk/services/Conferencia.h"
#include "desk/services/Historico.h"
#include "desk/services/MapaRegistro.h"
#include "desk/services/Recusa.h"
#include "desk/services/ServicoLogradouros.h"
#include "host/Conversoes.h"
#include "host/Indicador.h"

#include <cmath>
#include <set>

namespace mesa {

namespace {

constexpr std::uint8_t Declaracao = 2;
constexpr double MaiorNumero = 9007199254740992.0; // up to here a floating number is exact

template <class R> Ref<R> CopiaSemListas(const R &registro)
{
    auto copia = Novo<R>();
    MapaRegistro::Sobrepoe(*copia, registro);
    return copia;
}

std::uint8_t AtivoOuNao(std::uint8_t ativo)
{
    return ativo == Indicador::Nao ? Indicador::Nao : Indicador::Sim;
}

bool EhNumero(double numero)
{
    return numero >= 1 && numero <= MaiorNumero && numero == std::floor(numero);
}

std::string Periodo(const AfericaoED &afericao)
{
    return TextoDoDia(DiaCivil(afericao.DataVerificacao)) + " a " + TextoDoDia(DiaCivil(afericao.DataVencimento));
}

std::string Nome(const AfericaoED &afericao)
{
    if (afericao.TipoAfer.Valor() == Declaracao) {
        return "declaração de conformidade " + afericao.PortDimel.Valor();
    }
    return "aferição " + afericao.Numero.Valor();
}

void RecusaSobreposta()
{
    throw Recusa("As aferições ativas de um sensor não podem ter dias em comum.");
}

// The item of a list from outside; Nothing among the items is refused.
template <class R> const R &ItemDe(const ListaDe<R> &lista, std::int32_t posicao)
{
    const Ref<R> &item = lista->Item(posicao);
    if (item.Nada()) {
        throw Recusa("A lista enviada tem um item vazio na posição " + CStr(posicao) + ".");
    }
    return *item;
}

} // namespace

ServicoSensores::ServicoSensores(Operacao &operacao, std::int32_t nroIntEquip, std::int64_t versao)
    : m_Operacao(operacao),
      m_NroIntEquip(nroIntEquip),
      m_Versao(versao)
{
}

bool ServicoSensores::Grava(const ListaDe<SensorED> &sensores)
{
    bool mudou = false;
    std::set<std::int32_t> vistos;
    for (std::int32_t posicao = 1; !sensores.Nada() && posicao <= sensores->Count(); ++posicao) {
        const SensorED &sensor = ItemDe(sensores, posicao);
        if (sensor.NroIntSensor.Valor() > 0 && !vistos.insert(sensor.NroIntSensor).second) {
            throw Recusa("O sensor de número interno " + CStr(sensor.NroIntSensor.Valor()) + " veio duas vezes.");
        }
        mudou = GravaSensor(sensor) || mudou;
    }
    return mudou;
}

bool ServicoSensores::GravaSensor(const SensorED &pedido)
{
    const bool existe = pedido.NroIntSensor.Valor() > 0;
    const Ref<SensorED> antes = existe ? AchaSensor(pedido.NroIntSensor) : nullptr;
    auto depois = existe ? CopiaSemListas(*antes) : Novo<SensorED>();
    MapaRegistro::Sobrepoe(*depois, pedido);
    depois->Ativo = AtivoOuNao(depois->Ativo);
    Confere(*depois, antes.Ponteiro());

    bool mudou = false;
    if (!existe) {
        depois->NroIntSensor = static_cast<std::int32_t>(
            MapaRegistro::Insere(m_Operacao.Dados(), "SENSOR", *depois, {{"NroIntEquip", m_NroIntEquip}}));
        Registra("SENSOR", depois->NroIntSensor, false, depois->Ativo, depois->Ativo);
        mudou = true;
    } else if (MapaRegistro::Json(*antes) != MapaRegistro::Json(*depois)) {
        MapaRegistro::Atualiza(m_Operacao.Dados(), "SENSOR", *depois);
        Registra("SENSOR", depois->NroIntSensor, true, antes->Ativo, depois->Ativo);
        mudou = true;
    }
    return GravaAfericoes(*depois, pedido.Afericoes) || mudou;
}

// Those that change stand aside as inactive until all their new periods are known, so that the order of the rows does
// not matter; then each takes its place, and the database refuses the one that finds it taken.
bool ServicoSensores::GravaAfericoes(const SensorED &sensor, const ListaDe<AfericaoED> &afericoes)
{
    std::vector<AfericaoPedida> mudadas;
    std::set<double> vistas;
    for (std::int32_t posicao = 1; !afericoes.Nada() && posicao <= afericoes->Count(); ++posicao) {
        const AfericaoED &pedida = ItemDe(afericoes, posicao);
        if (pedida.NroIntAfericao.Valor() != 0 && !vistas.insert(pedida.NroIntAfericao).second) {
            throw Recusa("A aferição de número interno " + Conferencia::Numero(pedida.NroIntAfericao) +
                         " veio duas vezes.");
        }
        AfericaoPedida fundida = Funde(sensor, pedida);
        Confere(*fundida.Depois, fundida.Antes.Ponteiro());
        if (fundida.Antes.Nada() || MapaRegistro::Json(*fundida.Antes) != MapaRegistro::Json(*fundida.Depois)) {
            mudadas.push_back(std::move(fundida));
        }
    }
    for (const AfericaoPedida &mudada : mudadas) {
        if (mudada.Antes) {
            m_Operacao.Dados().Atualiza("AFERICAO", {{"Ativo", Indicador::Nao}},
                                        {"NroIntAfericao", qlonglong(mudada.Antes->NroIntAfericao.Valor())});
        }
    }
    for (AfericaoPedida &mudada : mudadas) {
        Escreve(sensor, mudada);
    }
    return !mudadas.empty();
}

ServicoSensores::AfericaoPedida ServicoSensores::Funde(const SensorED &sensor, const AfericaoED &pedida) const
{
    AfericaoPedida fundida;
    if (pedida.NroIntAfericao.Valor() != 0) {
        fundida.Antes = AchaAfericao(sensor, pedida.NroIntAfericao);
        fundida.Depois = CopiaSemListas(*fundida.Antes);
    } else {
        fundida.Depois = Novo<AfericaoED>();
    }
    MapaRegistro::Sobrepoe(*fundida.Depois, pedida);
    fundida.Depois->Ativo = AtivoOuNao(fundida.Depois->Ativo);
    return fundida;
}

void ServicoSensores::Escreve(const SensorED &sensor, AfericaoPedida &pedida)
try {
    AfericaoED &depois = *pedida.Depois;
    if (depois.Ativo.Valor() == Indicador::Sim) {
        ConferePeriodoLivre(sensor, depois);
    }
    if (pedida.Antes.Nada()) {
        depois.NroIntAfericao = static_cast<double>(MapaRegistro::Insere(
            m_Operacao.Dados(), "AFERICAO", depois, {{"NroIntSensor", sensor.NroIntSensor.Valor()}, {"Versao", 1}}));
    } else {
        MapaRegistro::Atualiza(m_Operacao.Dados(), "AFERICAO", depois);
    }
    m_Gravadas.insert(std::llround(depois.NroIntAfericao.Valor()));
    Registra("AFERICAO", std::llround(depois.NroIntAfericao.Valor()), !pedida.Antes.Nada(),
             pedida.Antes.Nada() ? depois.Ativo : pedida.Antes->Ativo, depois.Ativo);
} catch (const ErroSql &erro) {
    if (erro.Motivo == MotivoSql::Regra) {
        RecusaSobreposta();
    }
    throw;
}

ListaDe<SensorED> ServicoSensores::Ativos() const
{
    static const QString sqlSensores = "SELECT " + MapaRegistro::Lista<SensorED>() +
                                       " FROM SENSOR WHERE NroIntEquip = ? AND Ativo = 1 ORDER BY NroIntSensor";
    ListaDe<SensorED> lista = Novo<Colecao<Ref<SensorED>>>();
    std::map<std::int64_t, Ref<SensorED>> porNumero;
    {
        Consulta sensores(m_Operacao.Dados(), sqlSensores, {m_NroIntEquip});
        while (sensores.Proxima()) {
            auto sensor = Novo<SensorED>();
            MapaRegistro::Preenche(*sensor, sensores);
            porNumero[sensor->NroIntSensor] = sensor;
            lista->Add(sensor);
        }
    }
    static const auto colunasAfericao = static_cast<int>(MapaRegistro::Colunas<AfericaoED>().size());
    static const QString sqlAfericoes =
        "SELECT " + MapaRegistro::Lista<AfericaoED>("a") +
        ", a.NroIntSensor FROM SENSOR s JOIN AFERICAO a ON a.NroIntSensor = s.NroIntSensor AND a.Ativo = 1 "
        "WHERE s.NroIntEquip = ? AND s.Ativo = 1 ORDER BY a.NroIntAfericao";
    Consulta afericoes(m_Operacao.Dados(), sqlAfericoes, {m_NroIntEquip});
    while (afericoes.Proxima()) {
        auto afericao = Novo<AfericaoED>();
        MapaRegistro::Preenche(*afericao, afericoes);
        SensorED &sensor = *porNumero.at(afericoes.Inteiro(colunasAfericao));
        if (sensor.Afericoes.Valor().Nada()) {
            sensor.Afericoes = Novo<Colecao<Ref<AfericaoED>>>();
        }
        sensor.Afericoes.Valor()->Add(afericao);
    }
    return lista;
}

Ref<SensorED> ServicoSensores::AchaSensor(std::int32_t numero) const
{
    static const QString sql =
        "SELECT " + MapaRegistro::Lista<SensorED>() + " FROM SENSOR WHERE NroIntSensor = ? AND NroIntEquip = ?";
    Consulta linha(m_Operacao.Dados(), sql, {numero, m_NroIntEquip});
    if (!linha.Proxima()) {
        throw Recusa("O sensor de número interno " + CStr(numero) + " não é deste equipamento.");
    }
    auto sensor = Novo<SensorED>();
    MapaRegistro::Preenche(*sensor, linha);
    return sensor;
}

Ref<AfericaoED> ServicoSensores::AchaAfericao(const SensorED &sensor, double numero) const
{
    static const QString sql =
        "SELECT " + MapaRegistro::Lista<AfericaoED>() + " FROM AFERICAO WHERE NroIntAfericao = ? AND NroIntSensor = ?";
    auto afericao = Novo<AfericaoED>();
    if (EhNumero(numero)) {
        Consulta linha(m_Operacao.Dados(), sql, {qlonglong(numero), sensor.NroIntSensor.Valor()});
        if (linha.Proxima()) {
            MapaRegistro::Preenche(*afericao, linha);
            return afericao;
        }
    }
    throw Recusa("A aferição de número interno " + Conferencia::Numero(numero) + " não é do sensor " +
                 CStr(sensor.NroSensor.Valor()) + " deste equipamento.");
}

void ServicoSensores::Confere(const SensorED &sensor, const SensorED *antes) const
{
    Conferencia::Membros("SENSOR", sensor);
    const std::int32_t logradouro = sensor.CodLograd;
    if (logradouro != 0 && (antes == nullptr || antes->CodLograd.Valor() != logradouro)) {
        ServicoLogradouros(m_Operacao).ConfereOferecido(logradouro);
    }
}

void ServicoSensores::Confere(const AfericaoED &afericao, const AfericaoED *antes) const
{
    Conferencia::Membros("AFERICAO", afericao);
    if (DiaCivil(afericao.DataVerificacao) > DiaCivil(afericao.DataVencimento)) {
        throw Recusa("A " + Nome(afericao) + " vence em " + TextoDoDia(DiaCivil(afericao.DataVencimento)) +
                     ", antes da sua verificação em " + TextoDoDia(DiaCivil(afericao.DataVerificacao)) + ".");
    }
    const double documento = afericao.NroIntImgCertif;
    if (documento != 0 && (antes == nullptr || antes->NroIntImgCertif.Valor() != documento)) {
        Consulta achado(m_Operacao.Dados(), "SELECT 1 FROM DOCUMENTO WHERE NroDocumento = ? AND ClienteInc = ?",
                        {EhNumero(documento) ? qlonglong(documento) : 0, Q(m_Operacao.Quem().Cliente)});
        if (!achado.Proxima()) {
            throw Recusa("O documento de número " + Conferencia::Numero(documento) + " da " + Nome(afericao) +
                         " não existe no cliente " + m_Operacao.Quem().Cliente + ".");
        }
    }
}

// The triggers guarantee it; this puts it into words.
void ServicoSensores::ConferePeriodoLivre(const SensorED &sensor, const AfericaoED &afericao) const
{
    static const QString sql = "SELECT " + MapaRegistro::Lista<AfericaoED>() +
                               " FROM AFERICAO WHERE NroIntSensor = ? AND Ativo = 1 AND DataVerificacao <= ? "
                               "AND DataVencimento >= ? AND NroIntAfericao <> ? ORDER BY DataVerificacao LIMIT 1";
    Consulta linha(m_Operacao.Dados(), sql,
                   {sensor.NroIntSensor.Valor(), DiaCivil(afericao.DataVencimento), DiaCivil(afericao.DataVerificacao),
                    qlonglong(afericao.NroIntAfericao.Valor())});
    if (!linha.Proxima()) {
        return;
    }
    AfericaoED outra;
    MapaRegistro::Preenche(outra, linha);
    const std::int64_t numero = std::llround(outra.NroIntAfericao.Valor());
    const std::string autoria =
        m_Gravadas.count(numero) > 0 ? "" : ", gravada " + Historico(m_Operacao.Dados()).Ultima("AFERICAO", numero);
    throw Recusa("O período de " + Periodo(afericao) + " da " + Nome(afericao) + " do sensor " +
                 CStr(sensor.NroSensor.Valor()) + " tem dias em comum com o da " + Nome(outra) + " (" + Periodo(outra) +
                 ")" + autoria + ".");
}

void ServicoSensores::Registra(const char *entidade, std::int64_t numero, bool existia, std::uint8_t antes,
                               std::uint8_t depois)
{
    const char *acao = !existia                   ? "inclui"
                       : antes == depois          ? "altera"
                       : depois == Indicador::Sim ? "reativa"
                                                  : "desativa";
    Historico(m_Operacao.Dados())
        .Registra(m_Operacao.Agora(), m_Operacao.Quem().Numero,
                  {"EQUIPAMENTO", m_NroIntEquip, m_Versao, entidade, numero, acao});
}

} // namespace mesa
