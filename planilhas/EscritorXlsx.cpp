#include "planilhas/EscritorXlsx.h"

#include "host/Texto.h"
#include "planilhas/Falhas.h"
#include "planilhas/FormatoNumerico.h"
#include "planilhas/LeitorXlsx.h"
#include "planilhas/NumerosComPonto.h"

#include <xlsxwriter.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <utility>

namespace planilhas {

namespace {

constexpr std::size_t TamanhoDoEscape = 7; // _xHHHH_
constexpr int DigitosDaBiblioteca = 16;
constexpr double MenorLargura = 10;
constexpr double MaiorLargura = 60;
constexpr double Folga = 2; // beside a title
constexpr std::uint64_t InicioDaSoma = 14695981039346656037U;
constexpr std::uint64_t FatorDaSoma = 1099511628211U;

double ValorDe(const Celula &numero)
{
    double valor = 0;
    std::from_chars(numero.Texto.data(), numero.Texto.data() + numero.Texto.size(), valor);
    return valor;
}

std::string SemZerosNoFim(std::string decimal)
{
    if (decimal.find('.') != std::string::npos) {
        decimal.erase(decimal.find_last_not_of('0') + 1);
        decimal.erase(decimal.find_last_not_of('.') + 1);
    }
    return decimal;
}

// Whether the library writes this number.
bool CabeNoFormato(const Celula &numero)
{
    std::array<char, 40> escrito{};
    const auto [fim, erro] = std::to_chars(escrito.data(), escrito.data() + escrito.size(), ValorDe(numero),
                                           std::chars_format::general, DigitosDaBiblioteca);
    const auto decimal = NumeroDecimal(std::string_view(escrito.data(), fim));
    return decimal && SemSobraBinaria(*decimal) == SemZerosNoFim(numero.Texto);
}

// The cell as the format keeps it.
Celula ComoSeGuarda(const Celula &celula)
{
    const bool data = celula.Tipo == TipoDeCelula::Data || celula.Tipo == TipoDeCelula::DataHora;
    if (celula.Tipo == TipoDeCelula::Erro || (data && !NumeroDaData(celula)) ||
        (celula.Tipo == TipoDeCelula::Numero && !CabeNoFormato(celula))) {
        return CelulaDeTexto(TextoDaCelula(celula));
    }
    Celula guardada = celula;
    guardada.Formula = false;
    if (celula.Tipo == TipoDeCelula::Numero) {
        guardada.Texto = SemZerosNoFim(celula.Texto);
    }
    return guardada;
}

// Where a text looks like an escaped character, and for what no document holds, the format's escapes.
std::string ComEscapes(const std::string &texto)
{
    constexpr const char *especiais =
        "\x01\x02\x03\x04\x05\x06\x07\x08\x0B\x0C\x0D\x0E\x0F\x10\x11\x12\x13\x14\x15\x16\x17\x18\x19"
        "\x1A\x1B\x1C\x1D\x1E\x1F\xEF_";
    if (texto.find_first_of(especiais) == std::string::npos) {
        return texto; // as most are
    }
    std::string escrito;
    for (std::size_t onde = 0; onde < texto.size(); ++onde) {
        const char letra = texto[onde];
        const std::string_view resto = std::string_view(texto).substr(onde);
        if (static_cast<unsigned char>(letra) < ' ' && letra != '\t' && letra != '\n') {
            std::array<char, 8> escape{};
            std::snprintf(escape.data(), escape.size(), "_x%04X_", static_cast<unsigned>(letra));
            escrito += escape.data();
        } else if (resto.starts_with("_x") && SemEscapes(std::string(resto.substr(0, TamanhoDoEscape))).size() <
                                                  std::min(resto.size(), TamanhoDoEscape)) {
            escrito += "_x005F_";
        } else if (resto.starts_with("\xEF\xBF\xBE") || resto.starts_with("\xEF\xBF\xBF")) {
            escrito += resto[2] == '\xBE' ? "_xFFFE_" : "_xFFFF_";
            onde += 2;
        } else {
            escrito += letra;
        }
    }
    return escrito;
}

void Soma(std::uint64_t &soma, std::string_view texto)
{
    for (const char letra : texto) {
        soma = (soma ^ static_cast<unsigned char>(letra)) * FatorDaSoma;
    }
}

// A sum that differs when rows do.
void Soma(std::uint64_t &soma, std::size_t linha, const Linha &celulas)
{
    Soma(soma, std::to_string(linha));
    for (std::size_t i = 0; i < celulas.size(); ++i) {
        if (!celulas[i].Nada()) {
            Soma(soma, "\n" + std::to_string(i) + "\t" + std::to_string(static_cast<int>(celulas[i].Tipo)) + "\t");
            Soma(soma, TextoDaCelula(celulas[i]));
        }
    }
}

} // namespace

EscritorXlsx::EscritorXlsx(const std::filesystem::path &lugar) : m_Arquivo(lugar)
{
    const NumerosComPonto comPonto;
    lxw_workbook_options opcoes{};
    opcoes.constant_memory = LXW_TRUE;
    m_Livro = workbook_new_opt(m_Arquivo.Caminho().c_str(), &opcoes);
    if (m_Livro == nullptr) {
        throw Falha(NumeroFalha::SemMemoria);
    }
    m_Titulo = workbook_add_format(m_Livro);
    format_set_bold(m_Titulo);
    m_Data = Formato("dd/mm/yyyy");
    m_DataHora = Formato("dd/mm/yyyy hh:mm:ss");
    m_Hora = Formato("[hh]:mm:ss");
}

EscritorXlsx::~EscritorXlsx()
{
    if (m_Livro == nullptr) {
        return;
    }
    // Given up: to close the workbook would be to pack it. Freed, it leaves the sheets' files open.
    for (const Escrita &escrita : m_Escritas) {
        std::fclose(escrita.Folha->optimize_tmpfile);
    }
    lxw_workbook_free(m_Livro);
}

lxw_format *EscritorXlsx::Formato(const char *codigo)
{
    lxw_format *const formato = workbook_add_format(m_Livro);
    format_set_num_format(formato, codigo);
    return formato;
}

void EscritorXlsx::Folha(const std::string &nome)
{
    const NumerosComPonto comPonto;
    m_Regras.NovaFolha(nome);
    errno = 0;
    m_Folha = workbook_add_worksheet(m_Livro, nome.c_str());
    if (m_Folha == nullptr) {
        FalhaDeArquivo(errno != 0 ? errno : EIO, m_Arquivo.Ato());
    }
    m_Escritas.push_back({m_Folha, 0, InicioDaSoma});
}

void EscritorXlsx::Cabecalho(const std::vector<std::string> &titulos)
{
    const NumerosComPonto comPonto;
    if (m_Folha != nullptr) {
        for (std::size_t i = 0; i < titulos.size(); ++i) {
            const auto coluna = static_cast<lxw_col_t>(i);
            const double largura = static_cast<double>(Len(titulos[i])) + Folga;
            worksheet_set_column(m_Folha, coluna, coluna, std::clamp(largura, MenorLargura, MaiorLargura), nullptr);
        }
        worksheet_freeze_panes(m_Folha, 1, 0);
    }
    Escreve(LinhaDeTextos(titulos), m_Titulo);
}

void EscritorXlsx::Escreve(const Linha &linha)
{
    Escreve(linha, nullptr);
}

void EscritorXlsx::Escreve(const Linha &linha, lxw_format *formatoDosTextos)
{
    const NumerosComPonto comPonto;
    m_Regras.NovaLinha(linha);
    Linha guardada;
    guardada.reserve(linha.size());
    for (std::size_t i = 0; i < linha.size(); ++i) {
        ConfereTexto(linha[i].Texto);
        guardada.push_back(ComoSeGuarda(linha[i]));
        Escreve(i, guardada.back(), formatoDosTextos);
    }
    if (!std::ranges::all_of(guardada, &Celula::Nada)) {
        ++m_Escritas.back().Linhas;
        Soma(m_Escritas.back().Soma, m_Regras.Numero() + 1, guardada);
    }
}

void EscritorXlsx::Escreve(std::size_t coluna, const Celula &celula, lxw_format *formatoDosTextos)
{
    const auto na = static_cast<lxw_row_t>(m_Regras.Numero());
    const auto em = static_cast<lxw_col_t>(coluna);
    lxw_error erro = LXW_NO_ERROR;
    switch (celula.Tipo) {
    case TipoDeCelula::Vazia:
    case TipoDeCelula::Erro:
        return;
    case TipoDeCelula::Texto:
        erro = worksheet_write_string(m_Folha, na, em, ComEscapes(celula.Texto).c_str(), formatoDosTextos);
        break;
    case TipoDeCelula::Numero:
        erro = worksheet_write_number(m_Folha, na, em, ValorDe(celula), nullptr);
        break;
    case TipoDeCelula::Data:
        erro = worksheet_write_number(m_Folha, na, em, *NumeroDaData(celula), m_Data);
        break;
    case TipoDeCelula::DataHora:
        erro = worksheet_write_number(m_Folha, na, em, *NumeroDaData(celula), m_DataHora);
        break;
    case TipoDeCelula::Hora:
        erro = worksheet_write_number(m_Folha, na, em, *NumeroDaData(celula), m_Hora);
        break;
    case TipoDeCelula::Logico:
        erro = worksheet_write_boolean(m_Folha, na, em, celula.Verdade ? 1 : 0, nullptr);
        break;
    }
    if (erro == LXW_ERROR_MAX_STRING_LENGTH_EXCEEDED) {
        FalhaDeFormato("Um texto da tabela é mais longo do que uma célula de XLSX aceita, que são 32.767 caracteres.");
    }
    if (erro == LXW_ERROR_MEMORY_MALLOC_FAILED) {
        throw Falha(NumeroFalha::SemMemoria);
    }
    if (erro != LXW_NO_ERROR) {
        throw Falha(NumeroFalha::ErroDeAcesso, "planilhas",
                    m_Arquivo.Ato() + ": a coluna " + std::to_string(coluna + 1) + " da linha " +
                        std::to_string(na + 1) + " foi recusada, erro " + std::to_string(static_cast<int>(erro)) + ".");
    }
}

int EscritorXlsx::Fecha()
{
    const NumerosComPonto comPonto;
    lxw_workbook *const livro = std::exchange(m_Livro, nullptr);
    m_Folha = nullptr;
    return livro == nullptr ? LXW_NO_ERROR : workbook_close(livro);
}

void EscritorXlsx::Conclui()
{
    if (m_Escritas.empty()) {
        throw Falha(NumeroFalha::ArgumentoInvalido, "planilhas", "A planilha ainda não tem uma folha.");
    }
    errno = 0;
    if (Fecha() != LXW_NO_ERROR) {
        FalhaDeArquivo(errno != 0 ? errno : EIO, m_Arquivo.Ato());
    }
    Confere();
    m_Arquivo.TomaOLugar();
}

void EscritorXlsx::Confere()
{
    bool igual = false;
    try {
        LimitesDeLeitura limites;
        limites.Octetos = static_cast<std::uint64_t>(-1);
        limites.Celulas = static_cast<std::uint64_t>(-1);
        limites.Textos = static_cast<std::uint64_t>(-1);
        LeitorXlsx leitor(m_Arquivo.Caminho(), limites);
        igual = leitor.Folhas().size() == m_Escritas.size();
        for (std::size_t folha = 0; igual && folha < m_Escritas.size(); ++folha) {
            leitor.Escolhe(folha);
            Escrita lida{nullptr, 0, InicioDaSoma};
            for (LinhaLida linha; leitor.Le(linha);) {
                ++lida.Linhas;
                Soma(lida.Soma, linha.Numero, linha.Celulas);
            }
            igual = lida.Linhas == m_Escritas[folha].Linhas && lida.Soma == m_Escritas[folha].Soma;
        }
    } catch (const Falha &) { // what was written does not even open
        igual = false;
    }
    if (!igual) {
        throw Falha(NumeroFalha::DiscoCheio, "planilhas",
                    m_Arquivo.Ato() + ": o que foi gravado não está inteiro. Confira se há espaço no disco.");
    }
}

} // namespace planilhas
