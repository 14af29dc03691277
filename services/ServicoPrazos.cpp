#include "services/ServicoPrazos.h"

#include "host/Conversoes.h"
#include "services/Calendario.h"
#include "services/Conferencia.h"
#include "services/LeituraDePrazos.h"
#include "services/Recusa.h"
#include "services/ServicoDocumentos.h"

#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace mesa {

namespace {

constexpr std::uint8_t SemFoto = 2;
constexpr std::int32_t PorTrecho = 1000;     // equipment of which few are expected in a list
constexpr std::int32_t PorTrechoCheio = 250; // of which most are
constexpr std::int32_t UltimoDia = 99991231;
constexpr int PrimeiroAno = 1900; // of which deadlines are told: days before and behind it are counted too
constexpr int UltimoAno = 9998;

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
    const ListaDe<DocumentoPrazoED> &danificados = pedido.Danificados;
    if (!danificados.Nada() && danificados->Count() > MaisDanificados) {
        throw Recusa("Há mais de " + CStr(MaisDanificados) +
                     " documentos danificados: o registro precisa ser conferido.");
    }
    for (std::int32_t n = 1; !danificados.Nada() && n <= danificados->Count(); ++n) {
        leitura.Danificado(danificados->Item(n)->NroIntEquip,
                           Conferencia::Chave(danificados->Item(n)->NroIntImgCertif));
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

// No month has more days, and none that it has not is in any row.
std::int32_t FimDoMes(std::int32_t mes)
{
    return mes * 100 + 31;
}

template <class R> void Junta(Campo<ListaDe<R>> &lista, const Ref<R> &item)
{
    if (lista.Valor().Nada()) {
        lista = Novo<Colecao<Ref<R>>>();
    }
    lista.Valor()->Add(item);
}

Ref<PrazoED> PrazoDe(std::int32_t equipamento, EstadoDePrazo estado,
                     const std::optional<LeituraDePrazos::Afericao> &por, std::int32_t dia)
{
    auto prazo = Novo<PrazoED>();
    prazo->NroIntEquip = equipamento;
    prazo->NroIntSensor = static_cast<std::int32_t>(por ? por->NroIntSensor : 0);
    prazo->NroSensor = std::int16_t{0};
    prazo->NroIntAfericao = static_cast<double>(por ? por->NroIntAfericao : 0);
    prazo->Marca = "";
    prazo->Numero = "";
    prazo->DataVencimento = DataDoDia(por ? por->Periodo.Ate : 0);
    prazo->Dias = por ? Prazos::DiasEntre(dia, por->Periodo.Ate) : 0;
    prazo->Estado = static_cast<std::uint8_t>(estado);
    return prazo;
}

// A walk through the equipment in pages: where it is.
class Passeio {
  public:
    Passeio(std::uint8_t comFoto, std::int32_t depoisDe)
        : m_ComFoto(comFoto == SemFoto ? SemFoto : 1),
          m_DepoisDe(depoisDe)
    {
    }

    bool Acabou() const { return m_ComFoto > SemFoto; }
    std::uint8_t ComFoto() const { return m_ComFoto; }
    std::int32_t DepoisDe() const { return m_DepoisDe; }
    // Behind a stretch that was gone through whole.
    void Passa(const LeituraDePrazos::Trecho &trecho, std::int32_t pedidos)
    {
        if (trecho.Quantos < pedidos) {
            ++m_ComFoto;
            m_DepoisDe = 0;
        } else {
            m_DepoisDe = trecho.Ultimo;
        }
    }
    void Para(std::int32_t ultimo) { m_DepoisDe = ultimo; }

    template <class R> void Conta(R &resposta) const
    {
        resposta.TrabFoto = static_cast<std::uint8_t>(Acabou() ? 0 : m_ComFoto);
        resposta.DepoisDe = m_DepoisDe;
    }

  private:
    std::uint8_t m_ComFoto;
    std::int32_t m_DepoisDe;
};

// 0 when it is not asked for.
std::int32_t MesPedido(const ListaPrazosED &pedido)
{
    const std::int32_t mes = pedido.Mes;
    if (mes != 0 && (mes < MesDe(PrimeiroAno * 10000) || mes > MesDe(UltimoDia) || mes % 100 < 1 || mes % 100 > 12)) {
        throw Recusa("O mês dos prazos não está no calendário.");
    }
    return mes;
}

std::optional<EstadoDePrazo> EstadoPedido(const ListaPrazosED &pedido)
{
    if (!pedido.Estado.Escrito()) {
        return {};
    }
    const auto estado = static_cast<EstadoDePrazo>(pedido.Estado.Valor());
    if (std::ranges::find(Prazos::Estados(), estado) == Prazos::Estados().end()) {
        throw Recusa("Não existe o estado de prazo " + CStr(pedido.Estado.Valor()) + ".");
    }
    return estado;
}

} // namespace

void ServicoPrazos::Exige() const
{
    m_Operacao.Exige("", "consultar prazos");
}

Instante ServicoPrazos::Agora() const
{
    Consulta registro(m_Operacao.Dados(), "SELECT Fuso FROM REGISTRO");
    registro.Proxima();
    return m_Operacao.Agora().NoFuso(static_cast<std::int32_t>(registro.Inteiro(0)));
}

Instante ServicoPrazos::Momento(const Campo<Data> &dito) const
{
    Instante agora = Agora();
    if (dito.Escrito()) {
        if (!dito.Valor().NoCalendario() || dito.Valor().Partes().Ano < PrimeiroAno ||
            dito.Valor().Partes().Ano > UltimoAno) {
            throw Recusa("O momento dos prazos não está no calendário.");
        }
        agora.Local = dito;
    }
    return agora;
}

Ref<PainelPrazosED> ServicoPrazos::Painel(const PainelPrazosED &pedido)
{
    Exige();
    const Instante agora = Agora();
    const std::int32_t dia = DiaCivil(agora.Local);
    const LeituraDePrazos leitura = LeituraPara(m_Operacao, pedido, dia);
    LeituraDePrazos::Contagens contagens =
        leitura.Conta(ColunaDoGrupo(pedido.Agrupa), FimDoMes(MaisMeses(MesDe(dia), Prazos::Meses - 1)));

    auto painel = Novo<PainelPrazosED>();
    painel->ComoEm = agora.Local;
    painel->Fuso = agora.Fuso;
    painel->NaoContados = static_cast<std::int32_t>(contagens.SemEstado.size());
    std::int32_t equipamentos = painel->NaoContados;
    for (const std::int32_t numero : contagens.SemEstado) {
        if (!painel->Falhas.Valor().Nada() && painel->Falhas.Valor()->Count() == MaisFalhas) {
            break;
        }
        Consulta linha(m_Operacao.Dados(), "SELECT Codigo FROM EQUIPAMENTO WHERE NroIntEquip = ?", {numero});
        linha.Proxima();
        auto falha = Novo<FalhaPrazoED>();
        falha->NroIntEquip = numero;
        falha->Codigo = linha.Texto(0);
        falha->Motivo = "O equipamento " + linha.Texto(0) + " está ativo, mas o histórico não o confirma em " +
                        TextoDoDia(dia) + ": confira o relógio com que ele foi gravado.";
        Junta(painel->Falhas, falha);
    }
    for (const auto &[nome, porEstado] : contagens.PorGrupo) {
        for (const auto &[estado, quantos] : porEstado) {
            if (quantos > 0) {
                equipamentos += quantos;
                auto contagem = Novo<ContagemPrazoED>();
                contagem->Grupo = S(nome);
                contagem->Estado = static_cast<std::uint8_t>(estado);
                contagem->Quantos = quantos;
                Junta(painel->Contagens, contagem);
            }
        }
    }
    painel->Equipamentos = leitura.Ativos();
    if (const std::int32_t fora = painel->Equipamentos - equipamentos; fora != 0) {
        painel->NaoContados = painel->NaoContados + fora;
        auto falha = Novo<FalhaPrazoED>();
        falha->Motivo = "O painel contou " + CStr(equipamentos) + " equipamentos, e há " + CStr(painel->Equipamentos) +
                        " ativos: o registro precisa ser conferido.";
        Junta(painel->Falhas, falha);
    }
    for (std::int32_t n = 0; n < Prazos::Meses; ++n) {
        auto mes = Novo<MesPrazoED>();
        mes->Mes = MaisMeses(MesDe(dia), n);
        mes->Quantas = contagens.PorMes[mes->Mes.Valor()];
        Junta(painel->Meses, mes);
    }
    return painel;
}

// What a row says besides.
void ServicoPrazos::Completa(PrazoED &prazo) const
{
    {
        Consulta linha(m_Operacao.Dados(),
                       "SELECT Codigo, SubCodigo, TipoEquip, SetorInc, CodMunic FROM EQUIPAMENTO WHERE NroIntEquip = ?",
                       {prazo.NroIntEquip.Valor()});
        linha.Proxima();
        prazo.Codigo = linha.Texto(0);
        prazo.SubCodigo = linha.Texto(1);
        prazo.TipoEquip = linha.Texto(2);
        prazo.SetorInc = linha.Texto(3);
        prazo.CodMunic = static_cast<std::int32_t>(linha.Inteiro(4));
    }
    if (prazo.NroIntAfericao.Valor() == 0) {
        return;
    }
    Consulta linha(m_Operacao.Dados(),
                   "SELECT s.NroSensor, a.Marca, a.Numero FROM AFERICAO a "
                   "JOIN SENSOR s ON s.NroIntSensor = a.NroIntSensor WHERE a.NroIntAfericao = ?",
                   {qlonglong(prazo.NroIntAfericao.Valor())});
    linha.Proxima();
    prazo.NroSensor = static_cast<std::int16_t>(linha.Inteiro(0));
    prazo.Marca = linha.Texto(1);
    prazo.Numero = linha.Texto(2);
}

Ref<ListaPrazosED> ServicoPrazos::Lista(const ListaPrazosED &pedido)
{
    Exige();
    const std::optional<EstadoDePrazo> estado = EstadoPedido(pedido);
    const std::int32_t mes = MesPedido(pedido);
    const Instante momento = Momento(pedido.ComoEm);
    const std::int32_t dia = DiaCivil(momento.Local);
    const LeituraDePrazos leitura = LeituraPara(m_Operacao, pedido, dia);
    std::vector<Ref<PrazoED>> linhas;
    std::vector<std::int32_t> noEstado;
    Passeio passeio(pedido.TrabFoto, pedido.DepoisDe);
    const std::int32_t porTrecho = estado || mes != 0 ? PorTrecho : PorTrechoCheio;
    bool cheia = false;
    for (std::int32_t lidos = 0; !passeio.Acabou() && !cheia && lidos < MaisLidos;) {
        m_Operacao.Anda(0, "Lendo os prazos");
        std::int32_t ultimo = passeio.DepoisDe(); // of the equipment that are on the page whole
        LeituraDePrazos::Trecho trecho;
        if (estado) {
            trecho = leitura.Estados(passeio.ComFoto(), passeio.DepoisDe(), porTrecho,
                                     [&](std::int32_t equipamento, std::optional<EstadoDePrazo> seu) {
                                         cheia = cheia || noEstado.size() == TamanhoPagina;
                                         if (!cheia) {
                                             ultimo = equipamento;
                                             if (seu == estado) {
                                                 noEstado.push_back(equipamento);
                                             }
                                         }
                                     });
        } else {
            trecho =
                leitura.Afericoes(passeio.ComFoto(), passeio.DepoisDe(), porTrecho,
                                  mes == 0 ? dia : std::max(dia, mes * 100 + 1), mes == 0 ? UltimoDia : FimDoMes(mes),
                                  [&](std::int32_t equipamento, const LeituraDePrazos::Afericao &afericao) {
                                      cheia = cheia || (linhas.size() >= TamanhoPagina && equipamento != ultimo);
                                      if (!cheia) {
                                          ultimo = equipamento;
                                          linhas.push_back(PrazoDe(
                                              equipamento, Prazos::DaAfericao(afericao.Periodo, dia), afericao, dia));
                                      }
                                  });
        }
        lidos += trecho.Quantos;
        if (cheia) {
            passeio.Para(ultimo);
        } else {
            passeio.Passa(trecho, porTrecho);
        }
    }
    for (const std::int32_t numero : noEstado) {
        std::string tipo;
        {
            Consulta linha(m_Operacao.Dados(), "SELECT TipoEquip FROM EQUIPAMENTO WHERE NroIntEquip = ?", {numero});
            linha.Proxima();
            tipo = linha.Texto(0);
        }
        const auto situacao = leitura.De(numero, tipo);
        linhas.push_back(PrazoDe(numero, *estado, situacao ? situacao->Por : std::nullopt, dia));
    }
    auto lista = Novo<ListaPrazosED>();
    lista->ComoEm = momento.Local;
    lista->Fuso = momento.Fuso;
    {
        Consulta registro(m_Operacao.Dados(), "SELECT Identificador FROM REGISTRO");
        registro.Proxima();
        lista->Registro = registro.Texto(0);
    }
    for (const Ref<PrazoED> &linha : linhas) {
        Completa(*linha);
        Junta(lista->Prazos, linha);
    }
    passeio.Conta(*lista);
    return lista;
}

Ref<DocumentosPrazosED> ServicoPrazos::ConfereDocumentos(const DocumentosPrazosED &pedido)
{
    Exige();
    const Instante momento = Momento(pedido.ComoEm);
    const std::int32_t dia = DiaCivil(momento.Local);
    Passeio passeio(pedido.TrabFoto, pedido.DepoisDe);
    std::set<std::pair<std::int32_t, std::int64_t>> documentos; // with the equipment
    const LeituraDePrazos::Trecho trecho =
        LeituraDePrazos(m_Operacao, dia)
            .Afericoes(passeio.ComFoto(), passeio.DepoisDe(), EquipamentosPorConferencia, dia, UltimoDia,
                       [&](std::int32_t equipamento, const LeituraDePrazos::Afericao &afericao) {
                           if (AlcanceNoDia(afericao.Periodo, dia) == Alcance::EmVigor) {
                               documentos.emplace(equipamento, afericao.Documento);
                           }
                       });
    passeio.Passa(trecho, EquipamentosPorConferencia);
    auto conferidos = Novo<DocumentosPrazosED>();
    conferidos->ComoEm = momento.Local;
    conferidos->Fuso = momento.Fuso;
    conferidos->Equipamentos = trecho.Quantos;
    conferidos->Conferidos = static_cast<std::int32_t>(documentos.size());
    ServicoDocumentos servico(m_Operacao);
    double feitos = 0;
    for (const auto &[equipamento, documento] : documentos) {
        m_Operacao.Anda(feitos++ / static_cast<double>(documentos.size()), "Conferindo os documentos");
        if (!servico.EstaInteiro(documento)) {
            auto danificado = Novo<DocumentoPrazoED>();
            danificado->NroIntEquip = equipamento;
            danificado->NroIntImgCertif = static_cast<double>(documento);
            Junta(conferidos->Danificados, danificado);
        }
    }
    passeio.Conta(*conferidos);
    return conferidos;
}

} // namespace mesa
