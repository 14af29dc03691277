#include "services/ServicoHistoria.h"

#include "services/Calendario.h"
#include "services/Conferencia.h"
#include "services/HistoriaDoEquipamento.h"
#include "services/MapaRegistro.h"
#include "services/Recusa.h"
#include "services/ServicoEquipamentos.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <optional>

namespace mesa {

namespace {

std::optional<std::int32_t> FusoDe(const QVariant &valor)
{
    return valor.isNull() ? std::nullopt : std::optional(valor.toInt());
}

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
        versao.Registro = Novo<AfericaoED>();
        MapaRegistro::Preenche(*versao.Registro,
                               QJsonDocument::fromJson(entradas.Valor(5).toString().toUtf8()).object());
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
    const std::vector<EntradaDaHistoria> entradas = HistoriaDoEquipamento(m_Operacao.Dados(), nroIntEquip);
    const std::size_t conhecidas = ConhecidasEm(entradas, quando);
    if (conhecidas == 0) {
        throw Recusa(nome + " não está no histórico em " + TextoDoMomento(Momento(quando.Local)) +
                     (entradas.empty()
                          ? "."
                          : "; a sua primeira entrada é de " + TextoDoMomento(entradas.front().Local()) + "."));
    }
    const EstadoConhecido estado(entradas, conhecidas);
    return {estado.Equipamento(), estado.SemFuso()
                                      ? "O que o histórico diz deste momento vem de um registro mais antigo: as suas "
                                        "horas são as do lugar, sem fuso, e o que ele não dizia está em branco."
                                      : ""};
}

} // namespace mesa
