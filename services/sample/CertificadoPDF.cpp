#include "services/sample/CertificadoPDF.h"

#include <QString>

#include <cstddef>

namespace mesa {

namespace {

// Text as the page's font reads it: Latin-1, with the characters that end a string escaped.
std::string TextoDePagina(const std::string &texto)
{
    std::string escapado;
    for (const char letra : QString::fromStdString(texto).toLatin1()) {
        if (letra == '(' || letra == ')' || letra == '\\') {
            escapado += '\\';
        }
        escapado += letra;
    }
    return escapado;
}

std::string Conteudo(const std::string &titulo, const std::vector<std::string> &linhas)
{
    std::string conteudo = "0.17 0.29 0.44 RG 2 w 50 60 495 722 re S\nBT /F2 16 Tf 70 740 Td (" +
                           TextoDePagina(titulo) +
                           ") Tj ET\n0.17 0.29 0.44 RG 1 w 70 728 m 525 728 l S\nBT /F1 11 Tf 18 TL 70 700 Td\n";
    for (const std::string &linha : linhas) {
        conteudo += "(" + TextoDePagina(linha) + ") Tj T*\n";
    }
    return conteudo + "ET\n";
}

std::string DezDigitos(std::size_t numero)
{
    const std::string texto = std::to_string(numero);
    return std::string(10 - texto.size(), '0') + texto;
}

} // namespace

Bytes FazCertificadoPDF(const std::string &titulo, const std::vector<std::string> &linhas)
{
    const std::string conteudo = Conteudo(titulo, linhas);
    const std::vector<std::string> objetos = {
        "<< /Type /Catalog /Pages 2 0 R >>",
        "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
        "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] /Contents 4 0 R "
        "/Resources << /Font << /F1 5 0 R /F2 6 0 R >> >> >>",
        "<< /Length " + std::to_string(conteudo.size()) + " >>\nstream\n" + conteudo + "endstream",
        "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding >>",
        "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica-Bold /Encoding /WinAnsiEncoding >>",
    };
    std::string pdf = "%PDF-1.4\n";
    std::string tabela = "0000000000 65535 f \n";
    for (std::size_t objeto = 0; objeto < objetos.size(); ++objeto) {
        tabela += DezDigitos(pdf.size()) + " 00000 n \n";
        pdf += std::to_string(objeto + 1) + " 0 obj\n" + objetos[objeto] + "\nendobj\n";
    }
    const std::string total = std::to_string(objetos.size() + 1);
    const std::string inicioDaTabela = std::to_string(pdf.size());
    pdf += "xref\n0 " + total + "\n" + tabela + "trailer\n<< /Size " + total + " /Root 1 0 R >>\nstartxref\n" +
           inicioDaTabela + "\n%%EOF\n";
    return Bytes(pdf.begin(), pdf.end());
}

} // namespace mesa
