#include "desk/services/ServicoAfericoes.h"

#include "desk/services/MapaRegistro.h"
#include "desk/services/Recusa.h"
#include "desk/services/ServicoDocumentos.h"
#include "desk/services/ServicoEquipamentos.h"
#include "host/Conversoes.h"
#include "host/Texto.h"

#include <QByteArray>

namespace mesa {

Ref<AfericaoED> ServicoAfericoes::Vigente(const ConsultaAfericaoED &pedido)
{
    m_Operacao.Exige("", "consultar aferições");
    ServicoEquipamentos(m_Operacao).Acha(pedido.NroIntEquip);
    auto nenhuma = Novo<AfericaoED>();
    nenhuma->NroIntAfericao = 0;
    if (!pedido.DtInfracao.Valor().NoCalendario()) {
        return nenhuma;
    }
    static const QString sql =
        "SELECT a." + MapaRegistro::Colunas<AfericaoED>().join(", a.") +
        " FROM EQUIPAMENTO e JOIN SENSOR s ON s.NroIntEquip = e.NroIntEquip AND s.Ativo = 1 "
        "JOIN AFERICAO a ON a.NroIntSensor = s.NroIntSensor AND a.Ativo = 1 "
        "WHERE e.NroIntEquip = ? AND e.Ativo = 1 AND a.DataVerificacao <= ? AND a.DataVencimento >= ? "
        "AND a.NroIntImgCertif IS NOT NULL LIMIT 2";
    const std::int32_t dia = DiaCivil(pedido.DtInfracao);
    Consulta vigentes(m_Operacao.Dados(), sql, {pedido.NroIntEquip.Valor(), dia, dia});
    if (!vigentes.Proxima()) {
        return nenhuma;
    }
    auto afericao = Novo<AfericaoED>();
    MapaRegistro::Preenche(*afericao, vigentes);
    return vigentes.Proxima() ? nenhuma : afericao;
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
