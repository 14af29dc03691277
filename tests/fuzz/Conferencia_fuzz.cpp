#include "tests/fuzz/Alvo.h"

#include "services/Conferidor.h"
#include "services/Esquema.h"
#include "services/LeitorSQLite.h"
#include "tests/fuzz/Octetos.h"
#include "tests/fuzz/Propriedade.h"
#include "tests/services/RegistroPovoado.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

// The check of a registry against damaged files, and that of a head against damaged texts.

using namespace mesa;

namespace {

constexpr std::size_t Pagina = 4096;

const RegistroPovoado &Registro()
{
    static const RegistroPovoado registro;
    return registro;
}

const std::string &Sao()
{
    static const std::string octetos = [] {
        std::stringstream tudo;
        tudo << std::ifstream(Registro().Caminho(), std::ios::binary).rdbuf();
        return tudo.str();
    }();
    return octetos;
}

// Every value of every row.
std::vector<std::string> Tudo(const std::string &caminho)
{
    std::vector<std::string> valores;
    LeitorSQLite leitor(caminho, true);
    for (const Esquema::Tabela &tabela : Esquema::Tabelas()) {
        for (const Esquema::Coluna &coluna : tabela.Colunas) {
            LinhasLidas linhas(leitor, QString("SELECT quote(%1) FROM %2")
                                           .arg(QString::fromStdString(std::string(coluna.Nome)),
                                                QString::fromStdString(std::string(tabela.Nome))));
            while (linhas.Proxima()) {
                valores.push_back(linhas.Texto(0));
            }
        }
    }
    return valores;
}

std::size_t Lugar(Octetos &octetos, std::size_t ate)
{
    return static_cast<std::uint32_t>(octetos.Longo()) % std::max<std::size_t>(ate, 1);
}

void Estraga(Octetos &octetos, std::string &arquivo)
{
    const std::size_t paginas = arquivo.size() / Pagina;
    const auto inicio = [&] { return Lugar(octetos, paginas) * Pagina; };
    switch (octetos.Ate(5)) {
    case 0: // a bit
        if (!arquivo.empty()) {
            arquivo[Lugar(octetos, arquivo.size())] ^= static_cast<char>(1 << octetos.Ate(7));
        }
        break;
    case 1: // the end
        arquivo.resize(Lugar(octetos, arquivo.size() + 1));
        break;
    case 2: // two pages change places
        if (const std::size_t uma = inicio(), outra = inicio(); paginas > 0 && uma != outra) {
            std::swap_ranges(arquivo.begin() + static_cast<std::ptrdiff_t>(uma),
                             arquivo.begin() + static_cast<std::ptrdiff_t>(uma + Pagina),
                             arquivo.begin() + static_cast<std::ptrdiff_t>(outra));
        }
        break;
    case 3: // a page twice
        if (const std::size_t uma = inicio(), outra = inicio(); paginas > 0) {
            arquivo.replace(outra, Pagina, arquivo.substr(uma, Pagina));
        }
        break;
    case 4: // a number or a few in the head of a page
        if (const std::size_t uma = inicio(); paginas > 0) {
            arquivo[uma + static_cast<std::size_t>(octetos.Octeto()) % 120] = static_cast<char>(octetos.Octeto());
        }
        break;
    default: // a stretch of bytes
        if (const std::string trecho = octetos.Texto(20); arquivo.size() > trecho.size()) {
            arquivo.replace(Lugar(octetos, arquivo.size() - trecho.size()), trecho.size(), trecho);
        }
        break;
    }
}

void ConfereArquivo(Octetos &octetos)
{
    static const std::vector<std::string> tudo = Tudo(Registro().Caminho());
    static const CabecaAssinada cabeca = ExportacaoDeCabeca::Le(Registro().Caminho(), DataDe(22, 11, 2026));
    std::string arquivo = Sao();
    for (int vezes = octetos.Ate(3); vezes >= 0; --vezes) {
        Estraga(octetos, arquivo);
    }
    const std::string caminho = Registro().Caminho() + ".estragado";
    std::ofstream(caminho, std::ios::binary | std::ios::trunc) << arquivo;
    const Conferidor conferidor(caminho, Conferidor::Lugar::Parado);
    for (const auto &resultado : {conferidor.ConfereRapido(), conferidor.Confere({}, &cabeca)}) {
        Exige(!resultado.Frase.empty(), "a check has a sentence");
        Exige((resultado.Como == ResultadoDaConferencia::Desfecho::ComAchados) == !resultado.Achados.empty(),
              "findings have sentences", resultado.Frase);
        for (const std::string &achado : resultado.Achados) {
            Exige(achado.ends_with('.'), "a finding is a sentence", achado);
        }
    }
    if (conferidor.Confere({}, &cabeca).Como == ResultadoDaConferencia::Desfecho::Inteira) {
        Exige(Tudo(caminho) == tudo, "a registry that is said to be whole has the rows that it had");
    }
}

void LeCabeca(Octetos &octetos)
{
    static const std::string boa = ExportacaoDeCabeca::Le(Registro().Caminho(), DataDe(22, 11, 2026)).Texto();
    std::string texto = boa;
    for (int vezes = octetos.Ate(2); vezes >= 0; --vezes) {
        const std::size_t onde = Lugar(octetos, texto.size());
        texto.replace(onde, Lugar(octetos, 4), octetos.Texto(3));
    }
    try {
        const CabecaAssinada lida = CabecaAssinada::Le(texto);
        Exige(lida.AssinaturaVale() == (lida.Texto() == boa), "the signature is of this head", texto);
    } catch (const Falha &falha) {
        Exige(falha.Numero == NumeroFalha::ArgumentoInvalido && falha.Descricao.ends_with('.'),
              "a head is refused in a sentence", texto);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *dados, std::size_t tamanho)
{
    return Despacha(dados, tamanho, {ConfereArquivo, LeCabeca});
}
