#include "services/ServicoLimites.h"

#include "host/Conversoes.h"
#include "host/Indicador.h"
#include "services/Conferencia.h"
#include "services/Historico.h"
#include "services/MapaRegistro.h"
#include "services/Recusa.h"
#include "services/RegrasDoTipo.h"

#include <array>
#include <set>
#include <vector>

namespace mesa {

namespace {

constexpr std::uint8_t HorarioProibido = 2;
constexpr std::int16_t MaiorVelocidade = 999;

constexpr std::array<std::string_view, 9> Dias = {"",       "Domingo", "Segunda", "Terça",  "Quarta",
                                                  "Quinta", "Sexta",   "Sábado",  "Feriado"};

// What tells one kind of row from the other.
template <class R> struct Especie;

template <> struct Especie<LimiteDifED> {
    static constexpr mesa::Raiz Raiz = mesa::Raiz::Limite;

    static std::string Nome(const LimiteDifED &linha)
    {
        return (linha.TipoLimite.Valor() == HorarioProibido ? "O horário proibido de " : "O limite diferenciado de ") +
               std::string(Dias.at(linha.Dia)) + ", " + TextoDaHora(linha.HoraInicio) + " a " +
               TextoDaHora(linha.HoraFim) + ",";
    }
    static void Confere(const LimiteDifED &linha)
    {
        Conferencia::Faixa("Dia", linha.Dia, 1, 8);
        if (linha.TipoLimite.Valor() != 1 && linha.TipoLimite.Valor() != HorarioProibido) {
            throw Recusa("Não existe o tipo de limite " + CStr(linha.TipoLimite.Valor()) + ".");
        }
        const bool proibido = linha.TipoLimite.Valor() == HorarioProibido;
        Conferencia::Faixa("VelocPerm", linha.VelocPerm, proibido ? 0 : 1, proibido ? 0 : MaiorVelocidade);
        Conferencia::Faixa("VelocMin", linha.VelocMin, 0, proibido ? 0 : MaiorVelocidade);
    }
    static bool TemNo(const EquiptoED &equipto, const LimiteDifED &linha)
    {
        return linha.TipoLimite.Valor() == HorarioProibido ? RegrasDe(equipto.TipoEquip.Valor()).TemHorariosProibidos
                                                           : equipto.TemLimiteDif.Valor() == Indicador::Sim;
    }
    static std::string Plural(const LimiteDifED &linha)
    {
        return linha.TipoLimite.Valor() == HorarioProibido ? "horários proibidos" : "limites diferenciados";
    }
    static void ConfereImutaveis(const LimiteDifED &antes, const LimiteDifED &depois)
    {
        if (antes.Dia.Valor() != depois.Dia.Valor() || antes.TipoLimite.Valor() != depois.TipoLimite.Valor()) {
            throw Recusa(Nome(antes) + " não pode passar para outro dia ou outro tipo.");
        }
    }
    static QString MesmoDia() { return " AND TipoLimite = ? AND Dia = ?"; }
    static QVariantList ValoresMesmoDia(const LimiteDifED &linha)
    {
        return {linha.TipoLimite.Valor(), linha.Dia.Valor()};
    }
    static QString Ordem() { return "Dia, HoraInicio, HoraFim, NroInt"; }
};

template <> struct Especie<DiaEspecificoED> {
    static constexpr mesa::Raiz Raiz = mesa::Raiz::Dia;

    static std::string Nome(const DiaEspecificoED &linha)
    {
        return "O dia específico " + TextoDoDia(DiaCivil(linha.Data)) + ", " + TextoDaHora(linha.HoraInicio) + " a " +
               TextoDaHora(linha.HoraFim) + ",";
    }
    static void Confere(const DiaEspecificoED &linha)
    {
        Conferencia::Dia("Data", linha.Data);
        Conferencia::Faixa("VelocPerm", linha.VelocPerm, 1, MaiorVelocidade);
        Conferencia::Faixa("VelocMin", linha.VelocMin, 0, MaiorVelocidade);
    }
    static bool TemNo(const EquiptoED &equipto, const DiaEspecificoED &)
    {
        return equipto.TemLimiteDif.Valor() == Indicador::Sim;
    }
    static std::string Plural(const DiaEspecificoED &) { return "limites diferenciados"; }
    static void ConfereImutaveis(const DiaEspecificoED &, const DiaEspecificoED &) {} // the date may change
    static QString MesmoDia() { return " AND Data = ?"; }
    static QVariantList ValoresMesmoDia(const DiaEspecificoED &linha) { return {DiaCivil(linha.Data)}; }
    static QString Ordem() { return "Data, HoraInicio, HoraFim, NroInt"; }
};

template <class R> std::string Tabela()
{
    return Historico::Nome(Especie<R>::Raiz);
}

template <class R> void ConfereRegistro(const R &linha)
{
    Conferencia::Horario(linha.HoraInicio, linha.HoraFim);
    Especie<R>::Confere(linha);
}

} // namespace

Ref<EquiptoED> ServicoLimites::ListaLimites(const LimiteDifED &pedido)
{
    auto resposta = Novo<EquiptoED>();
    resposta->NroIntEquip = pedido.NroIntEquip.Valor();
    const bool umTipo = pedido.TipoLimite.Escrito();
    resposta->ListaLimiteDif = Ativos<LimiteDifED>(pedido.NroIntEquip, umTipo ? " AND TipoLimite = ?" : "",
                                                   umTipo ? QVariantList{pedido.TipoLimite.Valor()} : QVariantList{});
    return resposta;
}

Ref<EquiptoED> ServicoLimites::ListaDias(const DiaEspecificoED &pedido)
{
    auto resposta = Novo<EquiptoED>();
    resposta->NroIntEquip = pedido.NroIntEquip.Valor();
    resposta->ListaDiaEspecifico = Ativos<DiaEspecificoED>(pedido.NroIntEquip, "", {});
    return resposta;
}

Ref<LimiteDifED> ServicoLimites::ConsultaLimite(const LimiteDifED &pedido)
{
    return ConsultaLinha<LimiteDifED>(pedido.NroInt);
}

Ref<DiaEspecificoED> ServicoLimites::ConsultaDia(const DiaEspecificoED &pedido)
{
    return ConsultaLinha<DiaEspecificoED>(pedido.NroInt);
}

void ServicoLimites::AlteraLimites(EquiptoED &pedido)
{
    const ListaDe<LimiteDifED> limites = pedido.ListaLimiteDif;
    if (limites.Nada() || limites->Count() == 0) {
        throw Recusa("Nenhum dia foi informado: nada foi gravado.");
    }
    std::set<std::int32_t> vistos;
    std::vector<Pedida<LimiteDifED>> pedidas;
    for (std::int32_t posicao = 1; posicao <= limites->Count(); ++posicao) {
        const Ref<LimiteDifED> &limite = limites->Item(posicao);
        if (limite.Nada()) {
            throw Recusa("A lista enviada tem um item vazio na posição " + CStr(posicao) + ".");
        }
        if (limite->NroInt.Valor() != 0 && !vistos.insert(limite->NroInt).second) {
            throw Recusa("O limite de número interno " + CStr(limite->NroInt.Valor()) + " veio duas vezes.");
        }
        pedidas.push_back(limite->NroInt.Valor() == 0 ? Nova(*limite) : Mudada(*limite));
    }
    Grava(pedidas);
}

void ServicoLimites::AdicionaDia(DiaEspecificoED &pedido)
{
    if (pedido.NroInt.Valor() != 0) {
        throw Recusa("Este dia específico já foi incluído, com o número interno " + CStr(pedido.NroInt.Valor()) + ".");
    }
    std::vector<Pedida<DiaEspecificoED>> pedidas{Nova(pedido)};
    Grava(pedidas);
}

void ServicoLimites::AlteraDia(DiaEspecificoED &pedido)
{
    std::vector<Pedida<DiaEspecificoED>> pedidas{Mudada(pedido)};
    Grava(pedidas);
}

void ServicoLimites::DesativaLimite(LimiteDifED &pedido)
{
    Desativa(pedido);
}

void ServicoLimites::DesativaDia(DiaEspecificoED &pedido)
{
    Desativa(pedido);
}

template <class R> ServicoLimites::Gravado<R> ServicoLimites::Acha(std::int32_t nroInt) const
{
    static const QString sql = "SELECT " + MapaRegistro::Lista<R>("l") + ", l.Versao FROM " + Q(Tabela<R>()) +
                               " l JOIN EQUIPAMENTO e ON e.NroIntEquip = l.NroIntEquip "
                               "WHERE l.NroInt = ? AND e.ClienteInc = ?";
    Consulta linha(m_Operacao.Dados(), sql, {nroInt, Q(m_Operacao.Quem().Cliente)});
    if (!linha.Proxima()) {
        throw Recusa("O cliente " + m_Operacao.Quem().Cliente + " não tem limite ou dia de número interno " +
                     CStr(nroInt) + ".");
    }
    Gravado<R> gravado{Novo<R>(), 0};
    MapaRegistro::Preenche(*gravado.Registro, linha);
    gravado.Versao = linha.Inteiro(static_cast<int>(MapaRegistro::Colunas<R>().size()));
    gravado.Registro->VersaoLida = gravado.Versao;
    return gravado;
}

template <class R> Ref<R> ServicoLimites::ConsultaLinha(std::int32_t nroInt)
{
    m_Operacao.Exige("", "consultar limites");
    const Gravado<R> gravado = Acha<R>(nroInt);
    ConfereAtivo(*gravado.Registro);
    return gravado.Registro;
}

template <class R>
ListaDe<R> ServicoLimites::Ativos(std::int32_t nroIntEquip, const QString &filtro, const QVariantList &valores)
{
    m_Operacao.Exige("", "consultar limites");
    ServicoEquipamentos(m_Operacao).Acha(nroIntEquip);
    Consulta linhas(m_Operacao.Dados(),
                    "SELECT " + MapaRegistro::Lista<R>() + ", Versao FROM " + Q(Tabela<R>()) +
                        " WHERE NroIntEquip = ? AND Ativo = 1" + filtro + " ORDER BY " + Especie<R>::Ordem(),
                    QVariantList{nroIntEquip} + valores);
    ListaDe<R> lista = Novo<Colecao<Ref<R>>>();
    while (linhas.Proxima()) {
        auto linha = Novo<R>();
        MapaRegistro::Preenche(*linha, linhas);
        linha->VersaoLida = linhas.Inteiro(static_cast<int>(MapaRegistro::Colunas<R>().size()));
        lista->Add(linha);
    }
    return lista;
}

template <class R> ServicoLimites::Pedida<R> ServicoLimites::Nova(R &pedido) const
{
    m_Operacao.Exige("I", "incluir limites");
    auto nova = Novo<R>();
    MapaRegistro::Sobrepoe(*nova, pedido);
    nova->Ativo = Indicador::Sim;
    ConfereRegistro(*nova);
    ConfereEspecie(ConfereEquipamento(*nova), *nova);
    return {.Enviada = &pedido, .Depois = nova, .Versao = 1, .Muda = true};
}

template <class R> ServicoLimites::Pedida<R> ServicoLimites::Mudada(R &pedido) const
{
    m_Operacao.Exige("A", "alterar limites");
    const Gravado<R> gravado = Acha<R>(pedido.NroInt);
    const R &antes = *gravado.Registro;
    m_Operacao.ConfereVersao(pedido, Especie<R>::Raiz, pedido.NroInt, gravado.Versao, Especie<R>::Nome(antes));
    ConfereAtivo(antes);
    auto depois = Novo<R>();
    MapaRegistro::Sobrepoe(*depois, antes);
    MapaRegistro::Sobrepoe(*depois, pedido);
    depois->Ativo = antes.Ativo.Valor();
    ConfereRegistro(*depois);
    if (antes.NroIntEquip.Valor() != depois->NroIntEquip.Valor()) {
        throw Recusa(Especie<R>::Nome(antes) + " é de outro equipamento.");
    }
    Especie<R>::ConfereImutaveis(antes, *depois);
    const EquipamentoGravado equipamento = ConfereEquipamento(*depois);
    const bool muda = MapaRegistro::Json(antes) != MapaRegistro::Json(*depois);
    if (muda) {
        ConfereEspecie(equipamento, *depois);
    }
    return {.Enviada = &pedido, .Depois = depois, .Versao = gravado.Versao + 1, .Muda = muda};
}

// Those that change stand aside as inactive until all their new hours are known, so that the order of the rows does not
// matter; then each takes its place, and the database refuses the one that finds it taken.
template <class R> void ServicoLimites::Grava(std::vector<Pedida<R>> &pedidas)
{
    std::erase_if(pedidas, [](const Pedida<R> &pedida) { return !pedida.Muda; });
    for (const Pedida<R> &pedida : pedidas) {
        if (pedida.Depois->NroInt.Valor() != 0) {
            m_Operacao.Dados().Atualiza(Tabela<R>(), {{"Ativo", Indicador::Nao}},
                                        {"NroInt", pedida.Depois->NroInt.Valor()});
        }
    }
    for (Pedida<R> &pedida : pedidas) {
        Escreve(pedida);
    }
}

template <class R> void ServicoLimites::Escreve(Pedida<R> &pedida)
{
    R &depois = *pedida.Depois;
    ConfereSobreposicao(depois);
    const bool nova = depois.NroInt.Valor() == 0;
    const Celulas versao = {{"Versao", qlonglong(pedida.Versao)}};
    try {
        if (nova) {
            depois.NroInt =
                static_cast<std::int32_t>(MapaRegistro::Insere(m_Operacao.Dados(), Tabela<R>(), depois, versao));
        } else {
            MapaRegistro::Atualiza(m_Operacao.Dados(), Tabela<R>(), depois, versao);
        }
    } catch (const ErroSql &erro) {
        if (erro.Motivo == MotivoSql::Regra) {
            throw Recusa(Especie<R>::Nome(depois) + " cobre horas que já são de outro.");
        }
        throw;
    }
    if (!nova) {
        m_Operacao.Marca(*pedida.Enviada, pedida.Versao);
    }
    Registra<R>(nova ? "inclui" : "altera", depois.NroInt, pedida.Versao);
}

template <class R> void ServicoLimites::Desativa(R &pedido)
{
    const std::int32_t nroInt = pedido.NroInt;
    m_Operacao.Exige("E", "excluir limites");
    const Gravado<R> gravado = Acha<R>(nroInt);
    ConfereAtivo(*gravado.Registro);
    m_Operacao.ConfereVersao(pedido, Especie<R>::Raiz, nroInt, gravado.Versao, Especie<R>::Nome(*gravado.Registro));
    ConfereEquipamento(*gravado.Registro);
    auto depois = Novo<R>();
    MapaRegistro::Sobrepoe(*depois, *gravado.Registro);
    depois->Ativo = Indicador::Nao;
    const std::int64_t versao = gravado.Versao + 1;
    MapaRegistro::Atualiza(m_Operacao.Dados(), Tabela<R>(), *depois, {{"Versao", qlonglong(versao)}});
    Registra<R>("desativa", nroInt, versao);
    m_Operacao.Marca(pedido, versao);
}

template <class R> void ServicoLimites::ConfereAtivo(const R &linha) const
{
    if (linha.Ativo.Valor() == Indicador::Nao) {
        throw Recusa(Especie<R>::Nome(linha) + " já foi excluído " +
                     Historico(m_Operacao.Dados()).Ultima(Tabela<R>(), linha.NroInt.Valor()) + ".");
    }
}

template <class R> EquipamentoGravado ServicoLimites::ConfereEquipamento(const R &linha) const
{
    EquipamentoGravado equipamento = ServicoEquipamentos(m_Operacao).Acha(linha.NroIntEquip);
    if (!equipamento.Ativo()) {
        throw Recusa(equipamento.Nome() + " está desativado e não pode ser alterado. Reative-o antes.");
    }
    return equipamento;
}

template <class R> void ServicoLimites::ConfereEspecie(const EquipamentoGravado &equipamento, const R &linha) const
{
    if (!Especie<R>::TemNo(*equipamento.Registro, linha)) {
        throw Recusa(equipamento.Nome() + " não trabalha com " + Especie<R>::Plural(linha) + ".");
    }
}

template <class R> void ServicoLimites::ConfereSobreposicao(const R &linha) const
{
    static const QString sql = "SELECT " + MapaRegistro::Lista<R>() + " FROM " + Q(Tabela<R>()) +
                               " WHERE NroIntEquip = ? AND Ativo = 1 AND NroInt <> ?" + Especie<R>::MesmoDia() +
                               " AND ((HoraInicio < ? AND HoraFim > ?) OR (HoraInicio = ? AND HoraFim = ?)) "
                               "ORDER BY HoraInicio LIMIT 1";
    const std::int32_t inicio = linha.HoraInicio;
    const std::int32_t fim = linha.HoraFim;
    Consulta linhas(m_Operacao.Dados(), sql,
                    QVariantList{linha.NroIntEquip.Valor(), linha.NroInt.Valor()} + Especie<R>::ValoresMesmoDia(linha) +
                        QVariantList{fim, inicio, inicio, fim});
    if (linhas.Proxima()) {
        R outra;
        MapaRegistro::Preenche(outra, linhas);
        throw Recusa(Especie<R>::Nome(outra) + " gravado " +
                     Historico(m_Operacao.Dados()).Ultima(Tabela<R>(), outra.NroInt.Valor()) +
                     ", já cobre parte do período das " + TextoDaHora(inicio) + " às " + TextoDaHora(fim) + ".");
    }
}

template <class R> void ServicoLimites::Registra(const char *acao, std::int32_t numero, std::int64_t versao)
{
    const std::string tabela = Tabela<R>();
    Historico(m_Operacao.Dados())
        .Registra(m_Operacao.Agora(), m_Operacao.Quem().Numero, {tabela, numero, versao, tabela, numero, acao});
}

} // namespace mesa
