#include "services/ServicoHistoria.h"

#include "services/Calendario.h"
#include "services/Conferencia.h"
#include "services/MapaRegistro.h"
#include "services/Recusa.h"
#include "services/ServicoEquipamentos.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

namespace mesa {

namespace {

// An entry of the history, as far as it tells what a row was.
struct Entrada {
    std::int64_t Quando = 0; // UTC, and the clock of the place where there is no offset
    std::optional<std::int32_t> Fuso;
    std::string Entidade;
    std::int64_t Numero = 0;
    QString Depois;

    std::int64_t Local() const { return MaisMinutos(Quando, Fuso.value_or(0)); }
    bool Ate(const Instante &instante) const { return Quando <= (Fuso ? instante.Utc() : Momento(instante.Local)); }
};

// An entry of each row, by the row's number.
using PorLinha = std::map<std::int64_t, const Entrada *>;

std::optional<std::int32_t> FusoDe(const QVariant &valor)
{
    return valor.isNull() ? std::nullopt : std::optional(valor.toInt());
}

QJsonObject LeJson(const QString &texto)
{
    return QJsonDocument::fromJson(texto.toUtf8()).object();
}

template <class R> Ref<R> Lido(const QJsonObject &linha)
{
    auto registro = Novo<R>();
    MapaRegistro::Preenche(*registro, linha);
    return registro;
}

// All that was ever written about the equipment and its rows. Which limits and days are its own is asked of their
// tables, from which no row goes away, and where none changes its equipment.
std::vector<Entrada> EntradasDe(Banco &banco, std::int32_t nroIntEquip)
{
    static const QString sql = [] {
        const QString colunas = "SELECT h.Nro, h.Quando, h.Fuso, h.Entidade, h.NroEntidade, h.Depois FROM ";
        const QString daTabela = "%1 l JOIN HISTORICO h ON h.Entidade = '%1' AND h.NroEntidade = l.NroInt "
                                 "WHERE l.NroIntEquip = ?";
        return colunas + "HISTORICO h WHERE h.Raiz = 'EQUIPAMENTO' AND h.NroRaiz = ? UNION ALL " + colunas +
               daTabela.arg("LIMITE") + " UNION ALL " + colunas + daTabela.arg("DIA") + " ORDER BY 1";
    }();
    std::vector<Entrada> entradas;
    Consulta linhas(banco, sql, {nroIntEquip, nroIntEquip, nroIntEquip});
    while (linhas.Proxima()) {
        entradas.push_back({linhas.Inteiro(1), FusoDe(linhas.Valor(2)), linhas.Texto(3), linhas.Inteiro(4),
                            linhas.Valor(5).toString()});
    }
    return entradas;
}

// The rows of an equipment as a number of entries left them.
class Estado {
  public:
    Estado(const std::vector<Entrada> &entradas, std::size_t quantas)
    {
        for (std::size_t n = 0; n < entradas.size(); ++n) {
            (n < quantas ? m_Linhas : m_Posteriores)[entradas[n].Entidade][entradas[n].Numero] = &entradas[n];
        }
    }

    // Whether some of it comes from a registry whose history had no offsets.
    bool SemFuso() const
    {
        return std::ranges::any_of(m_Linhas, [](const auto &especie) {
            return std::ranges::any_of(especie.second, [](const auto &linha) { return !linha.second->Fuso; });
        });
    }

    Ref<EquiptoED> Equipamento() const
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

  private:
    static const PorLinha &De(const std::map<std::string, PorLinha> &linhas, const std::string &entidade)
    {
        static const PorLinha nenhuma;
        const auto achadas = linhas.find(entidade);
        return achadas == linhas.end() ? nenhuma : achadas->second;
    }

    // In the order of their numbers.
    template <class R> ListaDe<R> Lista(const std::string &entidade) const
    {
        ListaDe<R> lista = Novo<Colecao<Ref<R>>>();
        for (const auto &[numero, entrada] : De(m_Linhas, entidade)) {
            lista->Add(Lido<R>(LeJson(entrada->Depois)));
        }
        return lista;
    }
    template <class R, class Ordem> ListaDe<R> ListaEmOrdem(const std::string &entidade, Ordem ordem) const
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

    ListaDe<SensorED> Sensores() const
    {
        const ListaDe<SensorED> lista = Lista<SensorED>("SENSOR");
        std::map<std::int64_t, Ref<SensorED>> porNumero;
        for (std::int32_t posicao = 1; posicao <= lista->Count(); ++posicao) {
            porNumero[lista->Item(posicao)->NroIntSensor] = lista->Item(posicao);
        }
        for (const auto &[numero, entrada] : De(m_Linhas, "AFERICAO")) {
            const QJsonObject linha = LeJson(entrada->Depois);
            const auto sensor = porNumero.find(SensorDe(numero, linha));
            if (sensor == porNumero.end()) {
                throw Recusa("O histórico não diz de que sensor é a aferição de número interno " + CStr(numero) +
                             ": o registro precisa ser conferido.");
            }
            if (sensor->second->Afericoes.Valor().Nada()) {
                sensor->second->Afericoes = Novo<Colecao<Ref<AfericaoED>>>();
            }
            sensor->second->Afericoes.Valor()->Add(Lido<AfericaoED>(linha));
        }
        return lista;
    }

    // The history of an older registry did not tell it; what was written since does, and it never changes.
    std::int64_t SensorDe(std::int64_t afericao, const QJsonObject &linha) const
    {
        if (linha.contains("NroIntSensor")) {
            return linha.value("NroIntSensor").toInteger();
        }
        const PorLinha &posteriores = De(m_Posteriores, "AFERICAO");
        const auto posterior = posteriores.find(afericao);
        return posterior == posteriores.end() ? 0 : LeJson(posterior->second->Depois).value("NroIntSensor").toInteger();
    }

    std::map<std::string, PorLinha> m_Linhas; // by kind
    std::map<std::string, PorLinha> m_Posteriores;
};

} // namespace

std::vector<VersaoAfericao> ServicoHistoria::VersoesDaAfericao(double numero) const
{
    m_Operacao.Exige("", "consultar aferições");
    const std::int64_t chave = Conferencia::Chave(numero);
    const bool existe = [&] {
        Consulta achada(m_Operacao.Dados(),
                        "SELECT 1 FROM AFERICAO a JOIN SENSOR s ON s.NroIntSensor = a.NroIntSensor "
                        "JOIN EQUIPAMENTO e ON e.NroIntEquip = s.NroIntEquip "
                        "WHERE a.NroIntAfericao = ? AND e.ClienteInc = ?",
                        {qlonglong(chave), Q(m_Operacao.Quem().Cliente)});
        return achada.Proxima();
    }();
    if (!existe) {
        throw Recusa("O cliente " + m_Operacao.Quem().Cliente + " não tem aferição de número interno " +
                     Conferencia::Numero(numero) + ".");
    }
    std::vector<VersaoAfericao> versoes;
    Consulta entradas(m_Operacao.Dados(),
                      "SELECT h.Quando, h.Fuso, u.Nome, h.Acao, h.Motivo, h.Depois FROM HISTORICO h "
                      "LEFT JOIN USUARIO u ON u.Numero = h.Operador "
                      "WHERE h.Entidade = 'AFERICAO' AND h.NroEntidade = ? ORDER BY h.Nro",
                      {qlonglong(chave)});
    while (entradas.Proxima()) {
        VersaoAfericao &versao = versoes.emplace_back();
        versao.Versao = static_cast<std::int64_t>(versoes.size());
        versao.Quem = entradas.Texto(2);
        versao.Fuso = FusoDe(entradas.Valor(1));
        versao.Quando = MaisMinutos(entradas.Inteiro(0), versao.Fuso.value_or(0));
        versao.Acao = entradas.Texto(3);
        versao.Motivo = entradas.Texto(4);
        versao.Registro = Lido<AfericaoED>(LeJson(entradas.Valor(5).toString()));
    }
    return versoes;
}

EquipamentoConhecido ServicoHistoria::ComoConhecido(std::int32_t nroIntEquip, const Instante &quando) const
{
    m_Operacao.Exige("", "consultar equipamentos");
    const std::string nome = ServicoEquipamentos(m_Operacao).Acha(nroIntEquip).Nome();
    if (!quando.Local.NoCalendario()) {
        throw Recusa("O momento de que se pergunta não está no calendário.");
    }
    const std::vector<Entrada> entradas = EntradasDe(m_Operacao.Dados(), nroIntEquip);
    const auto ultima =
        std::find_if(entradas.rbegin(), entradas.rend(), [&](const Entrada &entrada) { return entrada.Ate(quando); });
    if (ultima == entradas.rend()) {
        throw Recusa(nome + " não está no histórico em " + TextoDoMomento(Momento(quando.Local)) +
                     (entradas.empty()
                          ? "."
                          : "; a sua primeira entrada é de " + TextoDoMomento(entradas.front().Local()) + "."));
    }
    const Estado estado(entradas, static_cast<std::size_t>(entradas.rend() - ultima));
    return {estado.Equipamento(), estado.SemFuso()
                                      ? "O que o histórico diz deste momento vem de um registro mais antigo: as suas "
                                        "horas são as do lugar, sem fuso, e o que ele não dizia está em branco."
                                      : ""};
}

} // namespace mesa
