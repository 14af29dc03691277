#include "services/ServicoPrazos.h"

#include "host/Conversoes.h"
#include "services/Calendario.h"
#include "services/LeituraDePrazos.h"
#include "services/Recusa.h"
#include "services/ServicoEquipamentos.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace mesa {

namespace {

constexpr std::uint8_t Sim = 1;
constexpr std::int32_t PorTrecho = 1000; // equipment
constexpr std::uint8_t Declaracao = 2;

enum class Agrupamento : std::uint8_t { Nenhum, Setor, Municipio, Tipo };

QString ColunaDoGrupo(std::uint8_t agrupa)
{
    switch (static_cast<Agrupamento>(agrupa)) {
    case Agrupamento::Nenhum:
        return "";
    case Agrupamento::Setor:
        return "SetorInc";
    case Agrupamento::Municipio:
        return "CodMunic";
    case Agrupamento::Tipo:
        return "TipoEquip";
    }
    throw Recusa("Não existe o agrupamento de prazos " + CStr(agrupa) + ".");
}

template <class R> LeituraDePrazos LeituraPara(Operacao &operacao, const R &pedido, std::int32_t dia)
{
    LeituraDePrazos leitura(operacao, dia);
    if (pedido.SetorInc.Escrito()) {
        leitura.Filtra("SetorInc", Q(pedido.SetorInc));
    }
    if (pedido.CodMunic.Escrito()) {
        leitura.Filtra("CodMunic", pedido.CodMunic.Valor());
    }
    if (pedido.TipoEquip.Escrito()) {
        leitura.Filtra("TipoEquip", Q(pedido.TipoEquip));
    }
    if (pedido.ConfereDocumentos.Valor() == Sim) {
        leitura.ConfereDocumentos();
    }
    return leitura;
}

std::int32_t MesDe(std::int32_t dia)
{
    return dia / 100;
}

// 24 months after January 2026 is January 2028.
std::int32_t MaisMeses(std::int32_t mes, std::int32_t meses)
{
    const std::int32_t contados = mes / 100 * 12 + mes % 100 - 1 + meses;
    return contados / 12 * 100 + contados % 12 + 1;
}

bool TemODia(const Prazos::Situacao &situacao)
{
    switch (situacao.Estado) {
    case EstadoDePrazo::Valido:
    case EstadoDePrazo::Em90:
    case EstadoDePrazo::Em60:
    case EstadoDePrazo::Em30:
    case EstadoDePrazo::SemDocumento:
        return true;
    default:
        return false;
    }
}

template <class R> void Junta(Campo<ListaDe<R>> &lista, const Ref<R> &item)
{
    if (lista.Valor().Nada()) {
        lista = Novo<Colecao<Ref<R>>>();
    }
    lista.Valor()->Add(item);
}

Ref<PrazoED> PrazoDe(std::int32_t equipamento, const LeituraDePrazos::Sensor *sensor, EstadoDePrazo estado)
{
    auto prazo = Novo<PrazoED>();
    prazo->NroIntEquip = equipamento;
    prazo->NroIntSensor = sensor == nullptr ? 0 : sensor->NroIntSensor;
    prazo->NroSensor = static_cast<std::int16_t>(sensor == nullptr ? 0 : sensor->NroSensor);
    prazo->DataVencimento = DataDoDia(sensor == nullptr ? 0 : sensor->Situacao.Vencimento);
    prazo->Dias = sensor == nullptr ? 0 : sensor->Situacao.Dias;
    prazo->Estado = static_cast<std::uint8_t>(estado);
    return prazo;
}

// What a row says besides. Of the active calibrations of a sensor no two have the same last day.
void Completa(Banco &banco, PrazoED &prazo)
{
    {
        Consulta linha(banco,
                       "SELECT Codigo, SubCodigo, TipoEquip, SetorInc, CodMunic FROM EQUIPAMENTO WHERE NroIntEquip = ?",
                       {prazo.NroIntEquip.Valor()});
        linha.Proxima();
        prazo.Codigo = linha.Texto(0);
        prazo.SubCodigo = linha.Texto(1);
        prazo.TipoEquip = linha.Texto(2);
        prazo.SetorInc = linha.Texto(3);
        prazo.CodMunic = static_cast<std::int32_t>(linha.Inteiro(4));
    }
    prazo.NroIntAfericao = 0;
    prazo.Numero = "";
    if (prazo.DataVencimento.Valor().Vazia()) {
        return;
    }
    Consulta linha(banco,
                   "SELECT NroIntAfericao, TipoAfer, Numero, PortDimel FROM AFERICAO "
                   "WHERE NroIntSensor = ? AND Ativo = 1 AND DataVencimento = ?",
                   {prazo.NroIntSensor.Valor(), DiaCivil(prazo.DataVencimento)});
    if (linha.Proxima()) {
        prazo.NroIntAfericao = static_cast<double>(linha.Inteiro(0));
        prazo.Numero = linha.Texto(linha.Inteiro(1) == Declaracao ? 3 : 2);
    }
}

// Which rows of an equipment a list has.
class Escolha {
  public:
    explicit Escolha(const ListaPrazosED &pedido)
    {
        if (pedido.Estado.Escrito()) {
            m_Estado = static_cast<EstadoDePrazo>(pedido.Estado.Valor());
            if (std::ranges::find(Prazos::Estados(), *m_Estado) == Prazos::Estados().end()) {
                throw Recusa("Não existe o estado de prazo " + CStr(pedido.Estado.Valor()) + ".");
            }
        }
        m_Mes = pedido.Mes.Valor();
    }

    void Toma(const LeituraDePrazos::Equipamento &equipamento, std::vector<Ref<PrazoED>> &linhas) const
    {
        if (m_Estado) {
            if (!equipamento.Confuso && equipamento.Estado() == *m_Estado) {
                linhas.push_back(PrazoDe(equipamento.NroIntEquip, equipamento.Decide(), *m_Estado));
            }
            return;
        }
        for (const LeituraDePrazos::Sensor &sensor : equipamento.Sensores) {
            if (!equipamento.Dispensado && TemODia(sensor.Situacao) &&
                (m_Mes == 0 || MesDe(sensor.Situacao.Vencimento) == m_Mes)) {
                linhas.push_back(PrazoDe(equipamento.NroIntEquip, &sensor, sensor.Situacao.Estado));
            }
        }
    }

  private:
    std::optional<EstadoDePrazo> m_Estado;
    std::int32_t m_Mes = 0;
};

} // namespace

void ServicoPrazos::Exige() const
{
    m_Operacao.Exige("", "consultar prazos");
}

Ref<PainelPrazosED> ServicoPrazos::Painel(const PainelPrazosED &pedido)
{
    Exige();
    const std::int32_t dia = DiaCivil(m_Operacao.Agora().Local);
    const QString grupo = ColunaDoGrupo(pedido.Agrupa);
    using PorEstado = std::array<std::int32_t, static_cast<std::size_t>(EstadoDePrazo::Dispensado) + 1>;
    std::map<QString, PorEstado> contados;
    auto doGrupo = contados.end();
    std::array<std::int32_t, Prazos::Meses> meses{};
    std::vector<std::pair<std::int32_t, std::int32_t>> confusos; // equipment and sensor
    std::int32_t equipamentos = 0;
    std::int32_t naoContados = 0;

    LeituraPara(m_Operacao, pedido, dia).Todos(grupo, [&](const LeituraDePrazos::Equipamento &equipamento) {
        ++equipamentos;
        if (doGrupo == contados.end() || doGrupo->first != equipamento.Grupo) {
            doGrupo = contados.try_emplace(equipamento.Grupo).first;
        }
        if (equipamento.Confuso && !equipamento.Dispensado) {
            ++naoContados;
            if (naoContados <= MaisFalhas) {
                confusos.emplace_back(equipamento.NroIntEquip, *equipamento.Confuso);
            }
        } else {
            ++doGrupo->second[static_cast<std::size_t>(equipamento.Estado())];
        }
        for (const LeituraDePrazos::Sensor &sensor : equipamento.Sensores) {
            if (!equipamento.Dispensado && TemODia(sensor.Situacao)) {
                const std::int32_t vence = sensor.Situacao.Vencimento;
                const std::int32_t mes = (vence / 10000 - dia / 10000) * 12 + vence / 100 % 100 - dia / 100 % 100;
                if (mes < Prazos::Meses) {
                    ++meses[static_cast<std::size_t>(mes)];
                }
            }
        }
    });

    auto painel = Novo<PainelPrazosED>();
    painel->ComoEm = m_Operacao.Agora().Local;
    painel->Fuso = m_Operacao.Agora().Fuso;
    painel->Equipamentos = equipamentos;
    painel->NaoContados = naoContados;
    for (const auto &[numero, sensor] : confusos) {
        Consulta linha(m_Operacao.Dados(), "SELECT Codigo FROM EQUIPAMENTO WHERE NroIntEquip = ?", {numero});
        linha.Proxima();
        auto falha = Novo<FalhaPrazoED>();
        falha->NroIntEquip = numero;
        falha->Codigo = linha.Texto(0);
        falha->Motivo = "O sensor " + CStr(sensor) + " do equipamento " + linha.Texto(0) +
                        " tem mais de uma aferição em vigor em " + TextoDoDia(dia) +
                        ": não há como saber qual vale. O registro precisa ser conferido.";
        Junta(painel->Falhas, falha);
    }
    for (const auto &[nome, porEstado] : contados) {
        for (const EstadoDePrazo estado : Prazos::Estados()) {
            if (const std::int32_t quantos = porEstado[static_cast<std::size_t>(estado)]; quantos > 0) {
                auto contagem = Novo<ContagemPrazoED>();
                contagem->Grupo = S(nome);
                contagem->Estado = static_cast<std::uint8_t>(estado);
                contagem->Quantos = quantos;
                Junta(painel->Contagens, contagem);
            }
        }
    }
    for (std::int32_t n = 0; n < Prazos::Meses; ++n) {
        auto mes = Novo<MesPrazoED>();
        mes->Mes = MaisMeses(MesDe(dia), n);
        mes->Quantas = meses[static_cast<std::size_t>(n)];
        Junta(painel->Meses, mes);
    }
    return painel;
}

Ref<ListaPrazosED> ServicoPrazos::Lista(const ListaPrazosED &pedido)
{
    Exige();
    const Escolha escolha(pedido);
    const LeituraDePrazos leitura = LeituraPara(m_Operacao, pedido, DiaCivil(m_Operacao.Agora().Local));
    std::vector<Ref<PrazoED>> linhas;
    std::uint8_t comFoto = pedido.TrabFoto.Valor() == 2 ? 2 : 1;
    std::int32_t depoisDe = pedido.DepoisDe;
    std::int32_t lidos = 0;
    while (comFoto <= 2 && lidos < MaisLidos && linhas.size() < TamanhoPagina) {
        const std::int32_t vindos =
            leitura.Trecho(comFoto, depoisDe, PorTrecho, [&](const LeituraDePrazos::Equipamento &equipamento) {
                if (linhas.size() < TamanhoPagina) {
                    escolha.Toma(equipamento, linhas);
                    depoisDe = equipamento.NroIntEquip;
                }
            });
        lidos += vindos;
        if (vindos < PorTrecho && linhas.size() < TamanhoPagina) {
            ++comFoto;
            depoisDe = 0;
        }
        m_Operacao.Anda(0, "Lendo os prazos");
    }
    auto lista = Novo<ListaPrazosED>();
    lista->ComoEm = m_Operacao.Agora().Local;
    lista->Fuso = m_Operacao.Agora().Fuso;
    {
        Consulta registro(m_Operacao.Dados(), "SELECT Identificador FROM REGISTRO");
        registro.Proxima();
        lista->Registro = registro.Texto(0);
    }
    for (const Ref<PrazoED> &linha : linhas) {
        Completa(m_Operacao.Dados(), *linha);
        Junta(lista->Prazos, linha);
    }
    lista->TrabFoto = static_cast<std::uint8_t>(comFoto <= 2 ? comFoto : 0);
    lista->DepoisDe = depoisDe;
    return lista;
}

Ref<EstadosPrazoED> ServicoPrazos::Estados(const EstadosPrazoED &pedido)
{
    Exige();
    const EquipamentoGravado equipamento = ServicoEquipamentos(m_Operacao).Acha(pedido.NroIntEquip);
    const std::int32_t dia = DiaCivil(m_Operacao.Agora().Local);
    struct Sensor {
        std::int16_t Numero;
        std::vector<Prazos::Afericao> Afericoes;
    };
    std::map<std::int32_t, Sensor> sensores; // by internal number
    {
        Consulta linhas(m_Operacao.Dados(),
                        "SELECT s.NroIntSensor, s.NroSensor, a.NroIntAfericao, a.DataVerificacao, a.DataVencimento, "
                        "a.NroIntImgCertif FROM SENSOR s LEFT JOIN AFERICAO a ON a.NroIntSensor = s.NroIntSensor "
                        "AND a.Ativo = 1 WHERE s.NroIntEquip = ? AND s.Ativo = 1 ORDER BY s.NroIntSensor, "
                        "a.DataVerificacao",
                        {equipamento.Registro->NroIntEquip.Valor()});
        while (linhas.Proxima()) {
            Sensor &sensor = sensores[static_cast<std::int32_t>(linhas.Inteiro(0))];
            sensor.Numero = static_cast<std::int16_t>(linhas.Inteiro(1));
            if (!linhas.Valor(2).isNull()) {
                sensor.Afericoes.push_back({{static_cast<std::int32_t>(linhas.Inteiro(3)),
                                             static_cast<std::int32_t>(linhas.Inteiro(4)), linhas.Inteiro(5) != 0},
                                            linhas.Inteiro(2)});
            }
        }
    }
    auto estados = Novo<EstadosPrazoED>();
    estados->NroIntEquip = pedido.NroIntEquip.Valor();
    estados->ComoEm = m_Operacao.Agora().Local;
    for (const auto &[numero, sensor] : sensores) {
        const auto linha = [&](const Prazos::Situacao &situacao) {
            const LeituraDePrazos::Sensor lido{numero, sensor.Numero, situacao};
            Ref<PrazoED> prazo = PrazoDe(pedido.NroIntEquip, &lido, situacao.Estado);
            prazo->NroIntAfericao = static_cast<double>(situacao.Afericao);
            return prazo;
        };
        // Nothing can be told of a sensor by two calibrations at once, and is not.
        Junta(estados->Sensores,
              linha(Prazos::DoSensor(sensor.Afericoes, dia).value_or(Prazos::Situacao{EstadoDePrazo::Nenhum})));
        for (const Prazos::Afericao &afericao : sensor.Afericoes) {
            Junta(estados->Afericoes, linha(Prazos::DaAfericao(afericao, dia)));
        }
    }
    return estados;
}

} // namespace mesa
