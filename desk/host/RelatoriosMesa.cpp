#include "desk/host/AplicacaoMesa.h"

#include "desk/host/Caminhos.h"
#include "services/Disco.h"

#include <QPageSize>
#include <QPdfWriter>
#include <QString>
#include <QTextDocument>

namespace mesa {

namespace {

std::string NomeDe(const ParametrosRelatorio &parametros)
{
    return parametros.Relatorio.EhObjeto() ? std::string("Relatório") : parametros.Relatorio.Texto();
}

// The report's values as a page: its name, and the parameters that it was given.
QString Pagina(const ParametrosRelatorio &parametros, const Ref<ICursor> &cursor)
{
    QString pagina = "<h2>" + QString::fromStdString(NomeDe(parametros)).toHtmlEscaped() + "</h2>";
    for (const std::string &parametro : parametros.aParam) {
        pagina += "<p>" + QString::fromStdString(parametro).toHtmlEscaped() + "</p>";
    }
    if (cursor) {
        pagina += "<p>Registros: " + QString::number(cursor->RecordCount()) + "</p>";
    }
    return pagina;
}

} // namespace

RelatoriosMesa::RelatoriosMesa(Ref<IJanelas> janelas, std::filesystem::path temporarios)
    : m_Janelas(std::move(janelas)),
      m_Temporarios(std::move(temporarios))
{
    FazPastaPrivada(m_Temporarios);
}

bool RelatoriosMesa::Imprimir(ParametrosRelatorio &parametros)
{
    const std::filesystem::path arquivo = m_Temporarios / "relatorio.pdf";
    QPdfWriter papel(QString::fromStdString(arquivo.string()));
    papel.setPageSize(QPageSize(QPageSize::A4));
    QTextDocument documento;
    documento.setHtml(Pagina(parametros, m_Cursor));
    documento.print(&papel);
    return m_Janelas->MostraPDF(CaminhoDoModulo(arquivo), NomeDe(parametros), true);
}

bool RelatoriosMesa::ImprimirDesigner(ParametrosRelatorio &parametros)
{
    return Imprimir(parametros);
}

} // namespace mesa
