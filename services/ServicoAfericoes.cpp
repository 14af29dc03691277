#include "services/ServicoAfericoes.h"

#include "host/Conversoes.h"
#include "host/Texto.h"
#include "services/MapaRegistro.h"
#include "services/Recusa.h"
#include "services/ServicoDocumentos.h"
#include "services/ServicoEquipamentos.h"
#include "services/Vigencia.h"

#include <QByteArray>

#include <vector>

namespace mesa {

namespace {

// Those of the equipment's sensors, whether they are active or not, that have a document and the day in their period.
std::vector<AfericaoDeSensor> DoDia(Banco &banco, std::int32_t nroIntEquip, std::int32_t dia)
{
    static const QString sql =
        "SELECT " + MapaRegistro::Lista<AfericaoED>("a") +
        ", s.NroIntSensor FROM SENSOR s JOIN AFERICAO a ON a.NroIntSensor = s.NroIntSensor AND a.Ativo = 1 "
        "WHERE s.NroIntEquip = ? AND " +
        TemODiaComDocumento;
    static const auto colunas = static_cast<int>(MapaRegistro::Colunas<AfericaoED>().size());
    std::vector<AfericaoDeSensor> achadas;
    Consulta linhas(banco, sql, {nroIntEquip, dia, dia});
    while (linhas.Proxima()) {
        achadas.push_back({Novo<AfericaoED>(), linhas.Inteiro(colunas)});
        MapaRegistro::Preenche(*achadas.back().Afericao, linhas);
    }
    return achadas;
}

} // namespace

Ref<AfericaoED> ServicoAfericoes::Vigente(const ConsultaAfericaoED &pedido)
{
    m_Operacao.Exige("", "consultar aferições");
    ServicoEquipamentos(m_Operacao).Acha(pedido.NroIntEquip);
    auto nenhuma = Novo<AfericaoED>();
    nenhuma->NroIntAfericao = 0;
    if (!pedido.DtInfracao.Valor().NoCalendario()) {
        return nenhuma;
    }
    Banco &dados = m_Operacao.Dados();
    const std::int32_t dia = DiaCivil(pedido.DtInfracao);
    const Vigencia vigencia = VigenciaNoDia(
        dia, DoDia(dados, pedido.NroIntEquip, dia),
        [&] { return AtividadeNoDia(dados, "EQUIPAMENTO", pedido.NroIntEquip, dia); },
        [&](std::int64_t sensor) { return AtividadeNoDia(dados, "SENSOR", sensor, dia); });
    return vigencia.Afericao.Nada() ? nenhuma : vigencia.Afericao;
}

Ref<RelatorioAfericaoED> ServicoAfericoes::Certificado(const RelatorioAfericaoED &pedido)
{
    m_Operacao.Exige("", "imprimir certificados");
    double documento = 0;
    {
        Consulta linha(m_Operacao.Dados(),
                       "SELECT e.Codigo, a.NroIntImgCertif FROM AFERICAO a "
                       "JOIN SENSOR s ON s.NroIntSensor = a.NroIntSensor "
                       "JOIN EQUIPAMENTO e ON e.NroIntEquip = s.NroIntEquip "
                       "WHERE a.NroIntAfericao = ? AND a.Ativo = 1 AND e.ClienteInc = ?",
                       {pedido.CodOat.Valor(), Q(m_Operacao.Quem().Cliente)});
        if (!linha.Proxima()) {
            throw Recusa("O cliente " + m_Operacao.Quem().Cliente + " não tem aferição ativa de número " +
                         CStr(pedido.CodOat.Valor()) + ".");
        }
        if (!IgualSemCaixa(linha.Texto(0), pedido.Serie.Valor())) {
            throw Recusa("A aferição de número " + CStr(pedido.CodOat.Valor()) + " é do equipamento " + linha.Texto(0) +
                         ", e não de " + pedido.Serie.Valor() + ".");
        }
        documento = static_cast<double>(linha.Inteiro(1));
    }
    if (documento == 0) {
        throw Recusa("A aferição de número " + CStr(pedido.CodOat.Valor()) + " não tem documento.");
    }
    const Bytes bytes = ServicoDocumentos(m_Operacao).Le(documento);
    auto resposta = Novo<RelatorioAfericaoED>();
    MapaRegistro::Sobrepoe(*resposta, pedido);
    resposta->Documento =
        QByteArray::fromRawData(reinterpret_cast<const char *>(bytes.data()), static_cast<qsizetype>(bytes.size()))
            .toBase64()
            .toStdString();
    return resposta;
}

} // namespace mesa
