#include "tests/fuzz/Alvo.h"

#include "services/ConteudoPdf.h"
#include "tests/fuzz/Octetos.h"
#include "tests/fuzz/Propriedade.h"

#include <QByteArray>

#include <string>
#include <vector>

// The intake of documents: any bytes are taken or refused in a sentence, and what is taken begins and ends as a PDF.

namespace {

void Confere(const std::string &conteudo)
{
    const std::string defeito = mesa::DefeitoDoPdf(QByteArray::fromStdString(conteudo));
    if (defeito.empty()) {
        Exige(conteudo.starts_with("%PDF-"), "what is taken begins as a PDF");
        Exige(conteudo.find("%%EOF") != std::string::npos, "what is taken ends as a PDF");
    } else {
        Exige(defeito.starts_with("O documento ") && defeito.ends_with("."), "a refusal is a sentence", defeito);
    }
}

void Qualquer(Octetos &octetos)
{
    Confere(octetos.Resto());
}

std::string Inteiro()
{
    std::string texto = "%PDF-1.4\n";
    std::string tabela = "0000000000 65535 f \n";
    int objetos = 0;
    for (const char *objeto : {"<< /Type /Catalog /Pages 2 0 R >>", "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
                               "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 72 72] >>"}) {
        const std::string onde = std::to_string(texto.size());
        tabela += std::string(10 - onde.size(), '0') + onde + " 00000 n \n";
        texto += std::to_string(++objetos) + " 0 obj\n" + objeto + "\nendobj\n";
    }
    return texto + "xref\n0 4\n" + tabela + "trailer\n<< /Size 4 /Root 1 0 R >>\nstartxref\n" +
           std::to_string(texto.size()) + "\n%%EOF\n";
}

// A whole document in which some bytes are others, some are missing and some are too many.
void Danificado(Octetos &octetos)
{
    static const std::string inteiro = Inteiro();
    Exige(mesa::DefeitoDoPdf(QByteArray::fromStdString(inteiro)).empty(), "the whole one is taken");
    std::string conteudo = inteiro;
    while (!octetos.Acabou()) {
        const std::size_t onde = static_cast<std::size_t>(octetos.Octeto() * 256 + octetos.Octeto()) % conteudo.size();
        switch (octetos.Ate(3)) {
        case 0:
            conteudo[onde] = static_cast<char>(octetos.Octeto());
            break;
        case 1:
            conteudo.erase(onde, static_cast<std::size_t>(octetos.Ate(20)));
            break;
        case 2:
            conteudo.insert(onde, octetos.Texto(20));
            break;
        default:
            conteudo.insert(onde, conteudo.substr(onde / 2, 40));
        }
        if (conteudo.empty() || conteudo.size() > 20000) {
            break;
        }
    }
    Confere(conteudo);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *dados, std::size_t tamanho)
{
    return Despacha(dados, tamanho, {Qualquer, Danificado});
}
