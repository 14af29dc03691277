#include "services/ServicoSensores.h"

#include "host/Conversoes.h"
#include "host/Indicador.h"
#include "host/Texto.h"
#include "services/Conferencia.h"
#include "services/Esquema.h"
#include "services/Historico.h"
#include "services/MapaRegistro.h"
#include "services/Recusa.h"
#include "services/ServicoLogradouros.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <string_view>

namespace mesa {

namespace {

constexpr std::uint8_t Inmetro = 1;
constexpr std::uint8_t Declaracao = 2;
constexpr std::int32_t PrimeiroAno = 1970; // before the first meters, and before the body that verifies them
constexpr std::int32_t UltimoAno = 2100;

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

void ConfereAno(std::string_view membro, std::int32_t dia)
{
    const std::int32_t ano = dia / 10000;
    if (ano < PrimeiroAno || ano > UltimoAno) {
        throw Recusa(Conferencia::OCampo(membro) + " é de " + TextoDoDia(dia) +
                     ", e uma aferição é de um dos anos de " + CStr(PrimeiroAno) + " a " + CStr(UltimoAno) + ".");
    }
}

// The form reads and writes it as number, slash and year.
void ConferePortaria(const std::string &portaria)
{
    const std::vector<std::string> partes = Divide(portaria, "/");
    if (partes.size() != 2 || Val(partes[0]) < 1 || Val(partes[1]) < 1) {
        throw Recusa(Conferencia::OCampo("PortDimel") + " precisa de número e ano, como 123/15; veio \"" + portaria +
                     "\".");
    }
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

ServicoSensores::ServicoSensores(Operacao &operacao, const EquiptoED &equipto, std::int64_t versao)
    : m_Operacao(operacao),
      m_NroIntEquip(equipto.NroIntEquip),
      m_Codigo(equipto.Codigo),
      m_TipoEquip(equipto.TipoEquip),
      m_Regras(RegrasDe(m_TipoEquip)),
      m_Versao(versao)
{
}

bool ServicoSensores::Grava(const ListaDe<SensorED> &sensores)
{
    bool mudou = false;
    std::set<std::int32_t> vistos;
    std::set<std::int32_t> vindos;
    std::set<std::int32_t> idos;
    for (std::int32_t posicao = 1; !sensores.Nada() && posicao <= sensores->Count(); ++posicao) {
        const SensorED &sensor = ItemDe(sensores, posicao);
        if (sensor.NroIntSensor.Valor() > 0 && !vistos.insert(sensor.NroIntSensor).second) {
            throw Recusa("O sensor de número interno " + CStr(sensor.NroIntSensor.Valor()) + " veio duas vezes.");
        }
        const SensorGravado gravado = GravaSensor(sensor);
        const bool era = gravado.Antes && gravado.Antes->Ativo.Valor() == Indicador::Sim;
        const bool ficou = gravado.Depois->Ativo.Valor() == Indicador::Sim;
        if (era != ficou) {
            (ficou ? vindos : idos).insert(gravado.Depois->NroSensor);
        }
        mudou = gravado.Mudou || mudou;
    }
    ConfereNumeros(vindos, idos);
    return mudou;
}

void ServicoSensores::ConfereNumeros(const std::set<std::int32_t> &vindos, const std::set<std::int32_t> &idos) const
{
    if (vindos.empty() && idos.empty()) {
        return;
    }
    std::map<std::int32_t, std::int64_t> ativos; // how many of each number
    {
        Consulta linhas(m_Operacao.Dados(),
                        "SELECT NroSensor, COUNT(*) FROM SENSOR WHERE NroIntEquip = ? AND Ativo = 1 GROUP BY NroSensor",
                        {m_NroIntEquip});
        while (linhas.Proxima()) {
            ativos[static_cast<std::int32_t>(linhas.Inteiro(0))] = linhas.Inteiro(1);
        }
    }
    for (const std::int32_t numero : vindos) {
        if (ativos[numero] > 1) {
            throw Recusa("O equipamento " + m_Codigo + " já tem um sensor de número " + CStr(numero) + ".");
        }
        if (numero > 1 && ativos[numero - 1] == 0) {
            throw Recusa("O equipamento " + m_Codigo + " não pode ter o sensor " + CStr(numero) + " sem o sensor " +
                         CStr(numero - 1) + ": os sensores são numerados a partir de 1, sem falhas.");
        }
    }
    for (const std::int32_t numero : idos) {
        const auto seguinte = std::find_if(ativos.begin(), ativos.end(), [&](const auto &sensores) {
            return sensores.first > numero && sensores.second > 0;
        });
        if (ativos[numero] == 0 && seguinte != ativos.end()) {
            throw Recusa("O sensor " + CStr(numero) + " do equipamento " + m_Codigo +
                         " não pode ser excluído enquanto houver o sensor " + CStr(seguinte->first) +
                         ": os sensores são excluídos do último para o primeiro.");
        }
    }
}

ServicoSensores::SensorGravado ServicoSensores::GravaSensor(const SensorED &pedido)
{
    SensorGravado gravado;
    const bool existe = pedido.NroIntSensor.Valor() > 0;
    if (existe) {
        gravado.Antes = AchaSensor(pedido.NroIntSensor);
    }
    gravado.Depois = existe ? CopiaSemListas(*gravado.Antes) : Novo<SensorED>();
    SensorED &depois = *gravado.Depois;
    MapaRegistro::Sobrepoe(depois, pedido);
    depois.Ativo = AtivoOuNao(depois.Ativo);
    Confere(depois, gravado.Antes.Ponteiro());

    if (!existe) {
        depois.NroIntSensor = static_cast<std::int32_t>(
            MapaRegistro::Insere(m_Operacao.Dados(), "SENSOR", depois, {{"NroIntEquip", m_NroIntEquip}}));
        Registra("SENSOR", depois.NroIntSensor, false, depois.Ativo, depois.Ativo);
        gravado.Mudou = true;
    } else if (MapaRegistro::Json(*gravado.Antes) != MapaRegistro::Json(depois)) {
        MapaRegistro::Atualiza(m_Operacao.Dados(), "SENSOR", depois);
        Registra("SENSOR", depois.NroIntSensor, true, gravado.Antes->Ativo, depois.Ativo);
        gravado.Mudou = true;
    }
    gravado.Mudou = GravaAfericoes(depois, pedido.Afericoes) || gravado.Mudou;
    return gravado;
}

// Those that change stand aside as inactive until all their new periods are known, so that the order of the rows does
// not matter; then each takes its place, and the database refuses the one that finds it taken. Both writes are one new
// version.
bool ServicoSensores::GravaAfericoes(const SensorED &sensor, const ListaDe<AfericaoED> &afericoes)
try {
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
    for (AfericaoPedida &mudada : mudadas) {
        if (mudada.Antes) {
            const double numero = mudada.Antes->NroIntAfericao;
            mudada.Versao = VersaoDaAfericao(numero) + 1;
            m_Operacao.Dados().Atualiza("AFERICAO", {{"Ativo", Indicador::Nao}, {"Versao", qlonglong(mudada.Versao)}},
                                        {"NroIntAfericao", qlonglong(numero)});
        }
    }
    for (AfericaoPedida &mudada : mudadas) {
        Escreve(sensor, mudada);
    }
    return !mudadas.empty();
} catch (const ErroSql &erro) {
    if (erro.Detalhe == "AFERICAO_SOBREPOSTA") {
        throw Recusa("As aferições ativas de um sensor não podem ter dias em comum.");
    }
    if (erro.Detalhe == "AFERICAO_VERSAO") {
        throw Recusa("Uma aferição do sensor " + CStr(sensor.NroSensor.Valor()) +
                     " não está como o seu histórico diz. Nada foi gravado: o registro precisa ser conferido.");
    }
    throw;
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
{
    AfericaoED &depois = *pedida.Depois;
    if (depois.Ativo.Valor() == Indicador::Sim) {
        ConferePeriodoLivre(sensor, depois);
    }
    std::string motivo;
    if (pedida.Antes.Nada()) {
        depois.NroIntAfericao = static_cast<double>(MapaRegistro::Insere(
            m_Operacao.Dados(), "AFERICAO", depois,
            {{"NroIntSensor", sensor.NroIntSensor.Valor()}, {"Versao", qlonglong(pedida.Versao)}}));
    } else {
        MapaRegistro::Atualiza(m_Operacao.Dados(), "AFERICAO", depois, {{"Versao", qlonglong(pedida.Versao)}});
        motivo = m_Operacao.Corrige(Nome(*pedida.Antes) + " do sensor " + CStr(sensor.NroSensor.Valor()));
    }
    m_Gravadas.insert(std::llround(depois.NroIntAfericao.Valor()));
    Registra("AFERICAO", std::llround(depois.NroIntAfericao.Valor()), !pedida.Antes.Nada(),
             pedida.Antes.Nada() ? depois.Ativo : pedida.Antes->Ativo, depois.Ativo, motivo);
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
    if (const std::int64_t chave = Conferencia::Chave(numero); chave != 0) {
        Consulta linha(m_Operacao.Dados(), sql, {qlonglong(chave), sensor.NroIntSensor.Valor()});
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
    const std::string numero = CStr(sensor.NroSensor.Valor());
    const std::string doTipo = "Equipamentos do tipo \"" + m_TipoEquip + "\" ";
    if (antes == nullptr && !m_Regras.TemAfericoes) {
        throw Recusa(doTipo + "não têm sensores nem aferições.");
    }
    if (antes == nullptr && !m_Regras.TemSensores && sensor.NroSensor.Valor() != 1) {
        throw Recusa(doTipo + "têm um sensor só, o de número 1; veio " + numero + ".");
    }
    if (antes != nullptr && antes->NroSensor.Valor() != sensor.NroSensor.Valor()) {
        throw Recusa("O número do sensor " + CStr(antes->NroSensor.Valor()) + " do equipamento " + m_Codigo +
                     " não pode mais mudar; veio " + numero + ".");
    }
    if (antes != nullptr && !m_Regras.TemSensores && m_Regras.TemAfericoes && antes->Ativo.Valor() == Indicador::Sim &&
        sensor.Ativo.Valor() == Indicador::Nao) {
        throw Recusa("O sensor " + numero + " do equipamento " + m_Codigo +
                     " guarda as aferições do equipamento e não pode ser excluído.");
    }
    if (m_Regras.TemSensores && (antes == nullptr || antes->LocalInfr.Valor() != sensor.LocalInfr.Valor())) {
        Conferencia::Obrigatorio("LocalInfr", sensor.LocalInfr);
    }
}

void ServicoSensores::Confere(const AfericaoED &afericao, const AfericaoED *antes) const
{
    const auto mudou = [&]<class T>(Campo<T> AfericaoED::*campo) {
        return antes == nullptr || (afericao.*campo).Valor() != (antes->*campo).Valor();
    };
    if (antes == nullptr && !m_Regras.TemAfericoes) {
        throw Recusa("Equipamentos do tipo \"" + m_TipoEquip + "\" não têm aferições.");
    }
    if (afericao.TipoAfer.Valor() != Inmetro && afericao.TipoAfer.Valor() != Declaracao) {
        throw Recusa("Não existe o tipo de aferição " + CStr(afericao.TipoAfer.Valor()) + ".");
    }
    Conferencia::Membros("AFERICAO", afericao);
    const bool declaracao = afericao.TipoAfer.Valor() == Declaracao;
    if (antes != nullptr && declaracao != (antes->TipoAfer.Valor() == Declaracao)) {
        throw Recusa("O tipo da " + Nome(*antes) + " não pode mais mudar.");
    }
    if (antes == nullptr && declaracao && !m_Regras.TemDeclaracoes) {
        throw Recusa("Equipamentos do tipo \"" + m_TipoEquip + "\" não têm declarações de conformidade.");
    }
    if (!declaracao && mudou(&AfericaoED::Numero)) {
        Conferencia::Obrigatorio("Numero", afericao.Numero);
    }
    if (declaracao && mudou(&AfericaoED::PortDimel)) {
        ConferePortaria(afericao.PortDimel);
    }
    const std::string &marca = afericao.Marca;
    if (mudou(&AfericaoED::Marca) &&
        !std::all_of(marca.begin(), marca.end(), [](char letra) { return letra >= '0' && letra <= '9'; })) {
        throw Recusa(Conferencia::OCampo("Marca") + " aceita só algarismos; veio \"" + marca + "\".");
    }
    ConfereDatas(afericao, antes);
    if (mudou(&AfericaoED::NroIntImgCertif)) {
        ConfereDocumento(afericao);
    }
}

void ServicoSensores::ConfereDatas(const AfericaoED &afericao, const AfericaoED *antes) const
{
    const std::int32_t verificacao = DiaCivil(afericao.DataVerificacao);
    const std::int32_t vencimento = DiaCivil(afericao.DataVencimento);
    const bool mudaVerificacao = antes == nullptr || DiaCivil(antes->DataVerificacao) != verificacao;
    const bool mudaVencimento = antes == nullptr || DiaCivil(antes->DataVencimento) != vencimento;
    if (mudaVerificacao) {
        ConfereAno("DataVerificacao", verificacao);
    }
    if (mudaVencimento) {
        ConfereAno("DataVencimento", vencimento);
    }
    if (verificacao > vencimento) {
        throw Recusa("A " + Nome(afericao) + " vence em " + TextoDoDia(vencimento) + ", antes da sua verificação em " +
                     TextoDoDia(verificacao) + ".");
    }
    // A new calibration may leave the one before it with a single day.
    if (verificacao == vencimento && mudaVerificacao) {
        throw Recusa("A " + Nome(afericao) + " vence no dia da sua verificação, " + TextoDoDia(verificacao) +
                     ": o vencimento deve ser posterior.");
    }
    const std::int32_t hoje = DiaCivil(m_Operacao.Agora().Local);
    if (mudaVerificacao && verificacao > hoje) {
        throw Recusa("A " + Nome(afericao) + " tem verificação em " + TextoDoDia(verificacao) +
                     ", que ainda não chegou: hoje é " + TextoDoDia(hoje) + ".");
    }
}

void ServicoSensores::ConfereDocumento(const AfericaoED &afericao) const
{
    const double documento = afericao.NroIntImgCertif;
    if (documento == 0) {
        throw Recusa("A " + Nome(afericao) + " não tem documento: envie o PDF.");
    }
    const std::string nome = "O documento de número " + Conferencia::Numero(documento) + " da " + Nome(afericao);
    const qlonglong numero = Conferencia::Chave(documento);
    Consulta achado(m_Operacao.Dados(), "SELECT 1 FROM DOCUMENTO WHERE NroDocumento = ? AND ClienteInc = ?",
                    {numero, Q(m_Operacao.Quem().Cliente)});
    if (!achado.Proxima()) {
        throw Recusa(nome + " não existe no cliente " + m_Operacao.Quem().Cliente + ".");
    }
    // A calibration rests on the documents of its earlier versions too.
    static const QString sql =
        "SELECT e.Codigo FROM HISTORICO h JOIN AFERICAO a ON a.NroIntAfericao = h.NroEntidade "
        "JOIN SENSOR s ON s.NroIntSensor = a.NroIntSensor JOIN EQUIPAMENTO e ON e.NroIntEquip = s.NroIntEquip "
        "WHERE h.Entidade = 'AFERICAO' AND " +
        Q(std::string(Esquema::DocumentoDaEntrada)) + " = ? AND s.NroIntEquip <> ? LIMIT 1";
    Consulta outro(m_Operacao.Dados(), sql, {numero, m_NroIntEquip});
    if (outro.Proxima()) {
        throw Recusa(nome + " já é do equipamento " + outro.Texto(0) +
                     ": um documento é das aferições de um equipamento só. Envie o PDF de novo.");
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
                               std::uint8_t depois, const std::string &motivo)
{
    const char *acao = !existia                   ? "inclui"
                       : antes == depois          ? "altera"
                       : depois == Indicador::Sim ? "reativa"
                                                  : "desativa";
    Historico(m_Operacao.Dados())
        .Registra(m_Operacao.Agora(), m_Operacao.Quem().Numero,
                  {"EQUIPAMENTO", m_NroIntEquip, m_Versao, entidade, numero, acao, motivo});
}

std::int64_t ServicoSensores::VersaoDaAfericao(double numero) const
{
    Consulta linha(m_Operacao.Dados(), "SELECT Versao FROM AFERICAO WHERE NroIntAfericao = ?", {qlonglong(numero)});
    linha.Proxima();
    return linha.Inteiro(0);
}

} // namespace mesa
