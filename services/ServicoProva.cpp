#include "services/ServicoProva.h"

#include "host/Conversoes.h"
#include "host/Indicador.h"
#include "host/Texto.h"
#include "services/Calendario.h"
#include "services/Conferencia.h"
#include "services/HistoriaDoEquipamento.h"
#include "services/Historico.h"
#include "services/PalavrasDaHistoria.h"
#include "services/Recusa.h"
#include "services/Referencias.h"
#include "services/RegrasDoTipo.h"
#include "services/ServicoAfericoes.h"
#include "services/ServicoEquipamentos.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace mesa {

namespace {

constexpr std::int32_t DiaInteiro = -1;
constexpr std::int32_t UltimaHora = 2359;
constexpr std::uint8_t Feriado = 8;
constexpr std::uint8_t TipoProibido = 2;

// In the order in which they apply.
enum Especie : std::uint8_t { Proibido = 1, DiaEspecifico, LimiteDeFeriado, LimiteDaSemana, Propria };

const char *const NotaDeFeriado = "vale em feriados; o registro não guarda quais dias o são";

QJsonObject LeJson(const std::string &texto)
{
    return QJsonDocument::fromJson(QByteArray::fromStdString(texto)).object();
}

// 1 Sunday to 7 Saturday; the first day of the platform's count was a Saturday.
std::uint8_t DiaDaSemana(Data dia)
{
    const auto dias = static_cast<std::int64_t>(std::trunc(dia.Valor)) % 7;
    const std::int64_t desdeSabado = dias < 0 ? dias + 7 : dias;
    return static_cast<std::uint8_t>(desdeSabado == 0 ? 7 : desdeSabado);
}

// The row as the history had it with the last entry up to that number; nothing when it had none.
QJsonObject LinhaComo(Banco &banco, const std::string &entidade, std::int64_t numero, std::int64_t ate)
{
    Consulta linha(banco,
                   "SELECT Depois FROM HISTORICO WHERE Entidade = ? AND NroEntidade = ? AND Nro <= ? "
                   "ORDER BY Nro DESC LIMIT 1",
                   {Q(entidade), qlonglong(numero), qlonglong(ate)});
    return linha.Proxima() ? LeJson(linha.Texto(0)) : QJsonObject();
}

std::string NomeDoAutor(Banco &banco, const EntradaDaHistoria &entrada)
{
    return entrada.Operador == 0
               ? ""
               : S(LinhaComo(banco, "USUARIO", entrada.Operador, entrada.Nro).value("Nome").toString());
}

Ref<EntradaProvadaED> Provada(Banco &banco, const EntradaDaHistoria &entrada, const EntradaDaHistoria *antes)
{
    auto provada = Novo<EntradaProvadaED>();
    provada->Entrada = static_cast<double>(entrada.Nro);
    provada->Elo = entrada.Elo;
    provada->Momento = PalavrasDaHistoria::Momento(entrada);
    provada->Quem = NomeDoAutor(banco, entrada);
    provada->Assunto = PalavrasDaHistoria::Assunto(entrada);
    provada->OQue = PalavrasDaHistoria::OQue(entrada, antes);
    provada->Motivo = entrada.Motivo;
    return provada;
}

// The entries from `de` on that are wanted, each told beside the one of its row before it.
template <class Quer>
ListaDe<EntradaProvadaED> Provadas(Banco &banco, const std::vector<EntradaDaHistoria> &entradas, std::size_t de,
                                   std::size_t ate, Quer quer)
{
    std::map<std::pair<std::string, std::int64_t>, const EntradaDaHistoria *> anteriores;
    ListaDe<EntradaProvadaED> provadas = Novo<Colecao<Ref<EntradaProvadaED>>>();
    for (std::size_t n = 0; n < ate; ++n) {
        const EntradaDaHistoria *&antes = anteriores[{entradas[n].Entidade, entradas[n].Numero}];
        if (n >= de && quer(entradas[n])) {
            provadas->Add(Provada(banco, entradas[n], antes));
        }
        antes = &entradas[n];
    }
    return provadas;
}

// What is proved of one equipment as of one moment of the fact, by a number of entries of its history.
class Prova {
  public:
    Prova(Banco &banco, std::vector<EntradaDaHistoria> entradas, std::size_t conhecidas, Data dia, std::int32_t hora)
        : m_Banco(banco),
          m_Entradas(std::move(entradas)),
          m_Conhecidas(conhecidas),
          m_Dia(dia),
          m_Hora(hora),
          m_Estado(m_Entradas, conhecidas)
    {
    }

    void Preenche(ProvaED &prova, std::int64_t corte) const
    {
        const Ref<EquiptoED> equipto = m_Estado.Equipamento();
        ListaDe<EquiptoED> um = Novo<Colecao<Ref<EquiptoED>>>();
        um->Add(equipto);
        prova.Equipamento = um;
        prova.Ressalva = m_Estado.SemFuso() ? "O que o histórico diz deste equipamento vem, em parte, de um registro "
                                              "mais antigo: as suas horas são as do lugar, sem fuso, e o que ele não "
                                              "dizia está em branco."
                                            : "";
        const Municipio *municipio = Referencias::Tabelas().AchaMunicipio(equipto->CodMunic);
        prova.Municipio = municipio == nullptr ? "" : municipio->Nome + " - " + municipio->UF;
        const TipoOferecido *tipo = Referencias::Tabelas().Tipo(equipto->TipoEquip);
        prova.TipoEmPalavras = tipo == nullptr ? "" : tipo->Nome;
        prova.Locais = Locais(*equipto, corte);
        PoeVigente(prova, corte);
        prova.Versoes = Versoes();
        prova.Limites = Limites();
        prova.Desativacoes = Provadas(m_Banco, m_Entradas, 0, m_Conhecidas, [](const EntradaDaHistoria &e) {
            return (e.Entidade == "EQUIPAMENTO" || e.Entidade == "SENSOR") &&
                   (e.Acao == "desativa" || e.Acao == "reativa");
        });
        prova.Posteriores =
            Provadas(m_Banco, m_Entradas, m_Conhecidas, m_Entradas.size(), [](const auto &) { return true; });
    }

  private:
    ListaDe<LocalProvadoED> Locais(const EquiptoED &equipto, std::int64_t corte) const
    {
        ListaDe<LocalProvadoED> locais = Novo<Colecao<Ref<LocalProvadoED>>>();
        const ListaDe<SensorED> &sensores = equipto.Sensores;
        for (std::int32_t n = 1; n <= sensores->Count(); ++n) {
            const QJsonObject rua = LinhaComo(m_Banco, "LOGRADOURO", sensores->Item(n)->CodLograd.Valor(), corte);
            auto local = Novo<LocalProvadoED>();
            local->NroIntSensor = sensores->Item(n)->NroIntSensor.Valor();
            const std::string bairro = S(rua.value("Bairro").toString());
            local->Logradouro = S(rua.value("Nome").toString()) + (bairro.empty() ? "" : ", " + bairro);
            locais->Add(local);
        }
        return locais;
    }

    void PoeVigente(ProvaED &prova, std::int64_t corte) const
    {
        const Vigencia vigencia = m_Estado.Vigencias().NoDia(DiaCivil(m_Dia));
        ListaDe<AfericaoED> vigentes = Novo<Colecao<Ref<AfericaoED>>>();
        ListaDe<EntradaProvadaED> daAfericao = Novo<Colecao<Ref<EntradaProvadaED>>>();
        ListaDe<EntradaProvadaED> doDocumento = Novo<Colecao<Ref<EntradaProvadaED>>>();
        prova.NroIntSensor = static_cast<std::int32_t>(vigencia.NroIntSensor);
        prova.SemVigente = PorqueNenhuma(vigencia);
        prova.Documento = 0;
        prova.TamanhoDoDocumento = 0;
        prova.Sha256DoDocumento = "";
        if (!vigencia.Afericao.Nada()) {
            vigentes->Add(vigencia.Afericao);
            const EntradaDaHistoria &entrada =
                *m_Estado.EntradaDe("AFERICAO", Conferencia::Chave(vigencia.Afericao->NroIntAfericao));
            const EntradaDaHistoria *antes = nullptr;
            for (const EntradaDaHistoria &outra : m_Entradas) {
                if (outra.Nro < entrada.Nro && outra.Entidade == entrada.Entidade && outra.Numero == entrada.Numero) {
                    antes = &outra;
                }
            }
            daAfericao->Add(Provada(m_Banco, entrada, antes));
            prova.Documento = vigencia.Afericao->NroIntImgCertif.Valor();
            PoeDocumento(prova, *doDocumento, corte);
        }
        prova.Vigente = vigentes;
        prova.EntradaDaAfericao = daAfericao;
        prova.EntradaDoDocumento = doDocumento;
    }

    void PoeDocumento(ProvaED &prova, Colecao<Ref<EntradaProvadaED>> &onde, std::int64_t corte) const
    {
        EntradaDaHistoria entrada;
        {
            Consulta linha(m_Banco,
                           "SELECT Nro, Quando, Fuso, Operador, Depois, Elo FROM HISTORICO "
                           "WHERE Entidade = 'DOCUMENTO' AND NroEntidade = ? AND Nro <= ? ORDER BY Nro LIMIT 1",
                           {qlonglong(Conferencia::Chave(prova.Documento)), qlonglong(corte)});
            if (!linha.Proxima()) {
                return;
            }
            entrada = {linha.Inteiro(0),
                       linha.Inteiro(1),
                       linha.Valor(2).isNull() ? std::nullopt : std::optional(linha.Valor(2).toInt()),
                       static_cast<std::int32_t>(linha.Inteiro(3)),
                       "DOCUMENTO",
                       Conferencia::Chave(prova.Documento),
                       "inclui",
                       "",
                       linha.Texto(4),
                       linha.Texto(5)};
        }
        const QJsonObject linha = LeJson(entrada.Depois);
        prova.TamanhoDoDocumento = static_cast<double>(linha.value("Tamanho").toInteger());
        prova.Sha256DoDocumento = S(linha.value("Sha256").toString());
        auto provada = Provada(m_Banco, entrada, nullptr);
        provada->Assunto = "documento " + CStr(entrada.Numero);
        provada->OQue = "guardado";
        onde.Add(provada);
    }

    std::string PorqueNenhuma(const Vigencia &vigencia) const
    {
        const std::string dia = TextoDoDia(DiaCivil(m_Dia));
        switch (vigencia.Porque) {
        case SemVigencia::Nenhuma:
            return "";
        case SemVigencia::SemAfericao:
            return "Nenhuma aferição ativa, com documento, tem o dia " + dia + " no seu período.";
        case SemVigencia::EquipamentoNaoConta:
            return "O equipamento não estava ativo no dia " + dia + ".";
        case SemVigencia::SensorNaoConta:
            return "A aferição que tem o dia " + dia + " no seu período é de um sensor que não estava ativo nesse dia.";
        default: {
            std::string quais;
            for (const AfericaoDeSensor &afericao : vigencia.Varias) {
                const EntradaDaHistoria *sensor = m_Estado.EntradaDe("SENSOR", afericao.NroIntSensor);
                quais += (quais.empty() ? "a " : " e a ") + afericao.Afericao->Numero.Valor() + " do " +
                         (sensor == nullptr ? "sensor" : PalavrasDaHistoria::Assunto(*sensor));
            }
            return "Mais de uma aferição tem o dia " + dia + " no seu período, " + quais +
                   ", e nada diz qual delas vale: o registro não responde nenhuma.";
        }
        }
    }

    // Of the calibrations that have the day in their period, or had it in some version.
    ListaDe<EntradaProvadaED> Versoes() const
    {
        const std::int32_t dia = DiaCivil(m_Dia);
        std::set<std::int64_t> doDia;
        for (std::size_t n = 0; n < m_Conhecidas; ++n) {
            if (m_Entradas[n].Entidade == "AFERICAO") {
                const QJsonObject linha = LeJson(m_Entradas[n].Depois);
                if (linha.value("DataVerificacao").toInt() <= dia && linha.value("DataVencimento").toInt() >= dia) {
                    doDia.insert(m_Entradas[n].Numero);
                }
            }
        }
        return Provadas(m_Banco, m_Entradas, 0, m_Conhecidas, [&](const EntradaDaHistoria &entrada) {
            return entrada.Entidade == "AFERICAO" && doDia.contains(entrada.Numero);
        });
    }

    bool NaHora(std::int32_t inicio, std::int32_t fim) const
    {
        return m_Hora == DiaInteiro || (inicio <= m_Hora && m_Hora <= fim);
    }
    // Which species the row is of when it matches the moment of the fact; nothing when it does not.
    std::optional<Especie> EspecieDe(const EntradaDaHistoria &entrada) const
    {
        const QJsonObject linha = LeJson(entrada.Depois);
        if (linha.value("Ativo").toInt() == Indicador::Nao ||
            !NaHora(linha.value("HoraInicio").toInt(), linha.value("HoraFim").toInt())) {
            return std::nullopt;
        }
        if (entrada.Entidade == "DIA") {
            return linha.value("Data").toInt() == DiaCivil(m_Dia) ? std::optional(DiaEspecifico) : std::nullopt;
        }
        const int dia = linha.value("Dia").toInt();
        if (dia != Feriado && dia != DiaDaSemana(m_Dia)) {
            return std::nullopt;
        }
        return linha.value("TipoLimite").toInt() == TipoProibido ? Proibido
               : dia == Feriado                                  ? LimiteDeFeriado
                                                                 : LimiteDaSemana;
    }

    // How many of the known entries there were at the moment of the fact, by the clock of the place.
    std::size_t NoMomento() const
    {
        const std::int64_t momento = DiaCivil(m_Dia) * std::int64_t{1000000} +
                                     (m_Hora == DiaInteiro ? UltimaHora : m_Hora) * std::int64_t{100} + 59;
        std::size_t quantas = m_Conhecidas;
        while (quantas > 0 && m_Entradas[quantas - 1].Local() > momento) {
            --quantas;
        }
        return quantas;
    }

    static Ref<LimiteProvadoED> Regra(Especie especie, const EntradaDaHistoria &entrada)
    {
        const QJsonObject linha = LeJson(entrada.Depois);
        auto regra = Novo<LimiteProvadoED>();
        regra->Ordem = 0;
        regra->Especie = especie;
        regra->NroInt = especie == Propria ? 0 : static_cast<std::int32_t>(entrada.Numero);
        regra->HoraInicio = linha.value("HoraInicio").toInt(0);
        regra->HoraFim = linha.value("HoraFim").toInt(UltimaHora);
        regra->VelocPerm =
            static_cast<std::int16_t>(linha.value(especie == Propria ? "VelocPermitida" : "VelocPerm").toInt());
        regra->VelocMin = static_cast<std::int16_t>(linha.value("VelocMin").toInt());
        regra->Nota = especie != DiaEspecifico && linha.value("Dia").toInt() == Feriado ? NotaDeFeriado : "";
        return regra;
    }
    static void Anota(LimiteProvadoED &regra, const std::string &nota)
    {
        regra.Nota = regra.Nota.Valor() + (regra.Nota.Valor().empty() ? "" : "; ") + nota;
    }

    // Those of the moment of the fact as it then was, with what became of each; and those that came later.
    ListaDe<LimiteProvadoED> Limites() const
    {
        const EstadoConhecido antes(m_Entradas, NoMomento());
        std::set<std::pair<std::string, std::int64_t>> linhas;
        for (std::size_t n = 0; n < m_Conhecidas; ++n) {
            if (m_Entradas[n].Entidade == "LIMITE" || m_Entradas[n].Entidade == "DIA") {
                linhas.insert({m_Entradas[n].Entidade, m_Entradas[n].Numero});
            }
        }
        const EntradaDaHistoria &equipamento = Equipamento(antes);
        const QJsonObject doEquipamento = LeJson(equipamento.Depois);
        const bool comLimites = doEquipamento.value("TemLimiteDif").toInt() == Indicador::Sim;
        std::vector<Ref<LimiteProvadoED>> valem;
        std::vector<Ref<LimiteProvadoED>> naoValem;
        for (const auto &[entidade, numero] : linhas) {
            const EntradaDaHistoria *noMomento = antes.EntradaDe(entidade, numero);
            const EntradaDaHistoria &agora = *m_Estado.EntradaDe(entidade, numero);
            if (const auto especie = noMomento == nullptr ? std::nullopt : EspecieDe(*noMomento)) {
                const auto regra = Regra(*especie, *noMomento);
                if (agora.Nro != noMomento->Nro) {
                    Anota(*regra, (agora.Acao == "desativa" ? "excluído em " : "alterado em ") +
                                      PalavrasDaHistoria::Momento(agora) + ", depois do momento");
                }
                const bool vale = *especie == Proibido || comLimites;
                if (!vale) {
                    Anota(*regra, "o equipamento não trabalhava com limites diferenciados");
                }
                (vale ? valem : naoValem).push_back(regra);
            } else if (const auto depois = EspecieDe(agora)) {
                const auto regra = Regra(*depois, agora);
                Anota(*regra, (noMomento == nullptr ? "incluído em " : "assim desde ") +
                                  PalavrasDaHistoria::Momento(agora) + ", depois do momento");
                naoValem.push_back(regra);
            }
        }
        if (RegrasDe(S(doEquipamento.value("TipoEquip").toString())).TemVelocidade) {
            const auto regra = Regra(Propria, equipamento);
            if (antes.EntradaDe("EQUIPAMENTO", equipamento.Numero) == nullptr) {
                Anota(*regra, "o registro só conhece o equipamento desde " + PalavrasDaHistoria::Momento(equipamento));
            }
            valem.push_back(regra);
        }
        return EmOrdem(std::move(valem), std::move(naoValem));
    }
    // As it was at the moment of the fact, or as it was first known.
    const EntradaDaHistoria &Equipamento(const EstadoConhecido &antes) const
    {
        const EntradaDaHistoria *primeira = nullptr;
        for (const EntradaDaHistoria &entrada : m_Entradas) {
            if (primeira == nullptr && entrada.Entidade == "EQUIPAMENTO") {
                primeira = &entrada;
            }
        }
        const EntradaDaHistoria *noMomento = antes.EntradaDe("EQUIPAMENTO", primeira->Numero);
        return noMomento == nullptr ? *primeira : *noMomento;
    }

    // Where one ends in the minute in which another of its kind begins, that minute is the other's.
    ListaDe<LimiteProvadoED> EmOrdem(std::vector<Ref<LimiteProvadoED>> valem,
                                     std::vector<Ref<LimiteProvadoED>> naoValem) const
    {
        const auto ordem = [&](const Ref<LimiteProvadoED> &regra) {
            const std::int32_t inicio = regra->HoraInicio;
            return std::tuple(regra->Especie.Valor(), m_Hora == DiaInteiro ? inicio : -inicio, regra->NroInt.Valor());
        };
        std::ranges::sort(valem, {}, ordem);
        std::ranges::sort(naoValem, {}, ordem);
        ListaDe<LimiteProvadoED> limites = Novo<Colecao<Ref<LimiteProvadoED>>>();
        for (const Ref<LimiteProvadoED> &regra : valem) {
            regra->Ordem = limites->Count() + 1;
            limites->Add(regra);
        }
        for (const Ref<LimiteProvadoED> &regra : naoValem) {
            limites->Add(regra);
        }
        return limites;
    }

    Banco &m_Banco;
    std::vector<EntradaDaHistoria> m_Entradas;
    std::size_t m_Conhecidas;
    Data m_Dia;
    std::int32_t m_Hora;
    EstadoConhecido m_Estado;
};

void ConfereHora(const ConsultaProvaED &pedido)
{
    const std::int32_t hora = pedido.Hora;
    if (pedido.Hora.Escrito() && hora != DiaInteiro && (hora < 0 || hora > UltimaHora || hora % 100 > 59)) {
        throw Recusa("A hora do fato precisa ficar entre 00:00 e 23:59.");
    }
}

} // namespace

std::int32_t ServicoProva::NumeroDoEquipamento(const ConsultaProvaED &pedido) const
{
    if (pedido.NroIntEquip.Valor() != 0) {
        return pedido.NroIntEquip;
    }
    const std::string &cliente = m_Operacao.Quem().Cliente;
    std::vector<std::int32_t> achados;
    mesa::Consulta linhas(m_Operacao.Dados(),
                          "SELECT NroIntEquip, Ativo FROM EQUIPAMENTO WHERE ClienteInc = ? AND CodigoChave = ? "
                          "ORDER BY Ativo, NroIntEquip",
                          {Q(cliente), Q(UCase(Trim(pedido.Codigo.Valor())))});
    while (linhas.Proxima()) {
        achados.push_back(static_cast<std::int32_t>(linhas.Inteiro(0)));
        if (linhas.Inteiro(1) == Indicador::Sim) {
            return achados.front();
        }
    }
    if (achados.empty()) {
        throw Recusa("O cliente " + cliente + " não tem equipamento de código \"" + pedido.Codigo.Valor() + "\".");
    }
    if (achados.size() > 1) {
        throw Recusa("O cliente " + cliente + " tem " + CStr(achados.size()) +
                     " equipamentos desativados de código \"" + pedido.Codigo.Valor() +
                     "\": escolha um deles pelo número interno.");
    }
    return achados.front();
}

Ref<ProvaED> ServicoProva::Consulta(const ConsultaProvaED &pedido)
{
    m_Operacao.Exige("", "consultar equipamentos");
    Banco &dados = m_Operacao.Dados();
    const std::int32_t numero = NumeroDoEquipamento(pedido);
    const std::string nome = ServicoEquipamentos(m_Operacao).Acha(numero).Nome();
    const Data dia{std::trunc(pedido.Dia.Valor().Valor)};
    if (!dia.NoCalendario() || dia.Vazia()) {
        throw Recusa("O dia do fato precisa ser informado.");
    }
    ConfereHora(pedido);
    const Historico historico(dados);
    const Historico::Cabeca fim = historico.Fim();
    const std::int64_t pedida = Conferencia::Chave(pedido.AteEntrada);
    const bool noMomento = pedida == 0 && pedido.ConhecidoEm.Escrito();
    const Instante quando(pedido.ConhecidoEm, pedido.Fuso);
    if (noMomento && !quando.Local.NoCalendario()) {
        throw Recusa("O momento de que se pergunta não está no calendário.");
    }
    if (pedida > fim.Tamanho || (pedida == 0 && pedido.AteEntrada.Valor() != 0)) {
        throw Recusa("O histórico não tem a entrada " + Conferencia::Numero(pedido.AteEntrada) + ": a última é a " +
                     CStr(fim.Tamanho) + ".");
    }
    std::vector<EntradaDaHistoria> entradas = HistoriaDoEquipamento(dados, numero);
    const std::size_t conhecidas =
        noMomento ? ConhecidasEm(entradas, quando)
                  : static_cast<std::size_t>(std::ranges::count_if(entradas, [&](const EntradaDaHistoria &entrada) {
                        return pedida == 0 || entrada.Nro <= pedida;
                    }));
    const bool temEquipamento =
        std::any_of(entradas.begin(), entradas.begin() + static_cast<std::ptrdiff_t>(conhecidas),
                    [](const auto &entrada) { return entrada.Entidade == "EQUIPAMENTO"; });
    if (!temEquipamento) {
        throw Recusa(
            nome + " não está no histórico" +
            (noMomento ? " em " + TextoDoMomento(Momento(quando.Local)) : " até a entrada de que se pergunta") +
            (entradas.empty() ? "."
                              : "; a sua primeira entrada é de " + TextoDoMomento(entradas.front().Local()) + "."));
    }
    const std::int64_t corte = pedida != 0 ? pedida : noMomento ? entradas[conhecidas - 1].Nro : fim.Tamanho;

    auto prova = Novo<ProvaED>();
    prova->Cliente = m_Operacao.Quem().Cliente;
    prova->Dia = dia;
    prova->Hora = pedido.Hora.Escrito() ? pedido.Hora.Valor() : DiaInteiro;
    prova->ConhecidoEm = noMomento ? TextoDoMomento(Momento(quando.Local)) : "";
    prova->EmitidoEm = TextoDoMomento(Momento(m_Operacao.Agora().Local));
    prova->EmitidoPor = m_Operacao.Quem().Nome;
    prova->Corte = static_cast<double>(corte);
    prova->Cabeca = static_cast<double>(fim.Tamanho);
    prova->EloDaCabeca = fim.Elo;
    {
        mesa::Consulta linha(dados, "SELECT Identificador FROM REGISTRO");
        linha.Proxima();
        prova->Identificador = linha.Texto(0);
    }
    {
        mesa::Consulta linha(dados, "SELECT Elo FROM HISTORICO WHERE Nro = ?", {qlonglong(corte)});
        prova->EloDoCorte = linha.Proxima() ? linha.Texto(0) : "";
    }
    Prova(dados, std::move(entradas), conhecidas, dia, prova->Hora).Preenche(*prova, corte);

    // The entries on which it stands are what was written.
    std::set<std::int64_t> apoios = {corte, fim.Tamanho};
    for (const auto *lista : {&prova->EntradaDaAfericao, &prova->EntradaDoDocumento}) {
        for (std::int32_t n = 1; n <= lista->Valor()->Count(); ++n) {
            apoios.insert(Conferencia::Chave(lista->Valor()->Item(n)->Entrada));
        }
    }
    for (const std::int64_t nro : apoios) {
        if (!historico.EloVale(nro)) {
            throw Recusa("A entrada " + CStr(nro) +
                         " do histórico, ou a anterior, não é a que foi gravada: o registro "
                         "precisa ser conferido.");
        }
    }
    if (pedida == 0 && !noMomento) {
        ConsultaAfericaoED vigente;
        vigente.NroIntEquip = numero;
        vigente.DtInfracao = dia;
        const double pelasLinhas = ServicoAfericoes(m_Operacao).Vigente(vigente)->NroIntAfericao;
        const bool ha = prova->Vigente.Valor()->Count() > 0;
        if (pelasLinhas != (ha ? prova->Vigente.Valor()->Item(1)->NroIntAfericao.Valor() : 0)) {
            throw Recusa("O que o registro responde da aferição em vigor no dia " + TextoDoDia(DiaCivil(dia)) +
                         " não é o que o seu histórico diz: o registro precisa ser conferido.");
        }
    }
    return prova;
}

} // namespace mesa
