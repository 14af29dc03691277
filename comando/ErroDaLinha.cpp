#include "comando/ErroDaLinha.h"

#include <map>
#include <regex>
#include <utility>
#include <vector>

namespace comando {

namespace {

// What the library says, whole, and what it means: $1 and the rest are the names in it.
using Frases = std::vector<std::pair<const char *, const char *>>;

// By the kind of the error, which its code tells. Whatever its words are, the last of each fits.
const std::map<CLI::ExitCodes, Frases> &Traducoes()
{
    static const std::map<CLI::ExitCodes, Frases> traducoes = {
        {CLI::ExitCodes::RequiredError,
         {{"A subcommand is required", "Falta dizer o que fazer."},
          {"Requires at least \\d+ subcommands", "Falta dizer o que fazer."},
          {"[^\\[]*\\[(.*)\\].*", "Das opções $1 faltam algumas, ou há demais."},
          {"(.+) is required", "Falta $1."},
          {"[\\s\\S]*", "Falta uma opção."}}},
        {CLI::ExitCodes::ExtrasError,
         {{"The following arguments? (?:was|were) not expected: (-[^ ]+)", "A opção $1 não existe aqui."},
          {"The following arguments? (?:was|were) not expected: ([\\s\\S]*)", "Não se esperava \"$1\" aqui."},
          {"[\\s\\S]*", "Há algo demais na linha de comando."}}},
        {CLI::ExitCodes::ArgumentMismatch,
         {{"(.+): \\d+ required .* missing", "Falta o valor de $1."},
          {"(.+): At [Mm]ost \\d+ required but received \\d+", "A opção $1 foi dada mais de uma vez."},
          {"(.+): At [Ll]east \\d+ required but received \\d+", "Falta o valor de $1."},
          {"Expected (?:exactly|at least) \\d+ arguments to (.+), got \\d+",
           "A opção $1 não veio com a quantidade certa de valores."},
          {"(?:--)?(.+) was given a disallowed flag override", "A opção --$1 não tem valor."},
          {"[\\s\\S]*", "Uma opção não veio com a quantidade certa de valores."}}},
        {CLI::ExitCodes::ConversionError,
         {{"Could not convert: (.+) = ([\\s\\S]*)", "O valor \"$2\" não serve para $1."},
          {"The value ([\\s\\S]*) is not an allowed value for (.+)", "O valor \"$1\" não serve para $2."},
          {"(?:--)?(.+): (?:too many inputs for a flag|Should be true/false or a number)",
           "A opção --$1 não tem valor."},
          {"[\\s\\S]*", "O valor de uma opção não serve para ela."}}},
        // The sentences of what looks at values here follow the name.
        {CLI::ExitCodes::ValidationError,
         {{"[^:]+: ([\\s\\S]*)", "$1"}, {"[\\s\\S]*", "O valor de uma opção não serve para ela."}}},
        {CLI::ExitCodes::RequiresError,
         {{"(.+) requires (.+)", "A opção $1 só vai com $2."}, {"[\\s\\S]*", "Falta uma opção."}}},
        {CLI::ExitCodes::ExcludesError,
         {{"(.+) excludes (.+)", "As opções $1 e $2 não vão juntas."}, {"[\\s\\S]*", "Há opções que não vão juntas."}}},
        {CLI::ExitCodes::FileError, {{"[\\s\\S]*", "Um arquivo de opções não pôde ser lido."}}},
        {CLI::ExitCodes::ConfigError, {{"[\\s\\S]*", "Um arquivo de opções não foi entendido."}}},
        {CLI::ExitCodes::InvalidError, {{"[\\s\\S]*", "Há argumentos demais na linha de comando."}}},
        {CLI::ExitCodes::OptionNotFound,
         {{"([^ ]+) not found", "A opção $1 não existe."}, {"[\\s\\S]*", "Uma opção não existe."}}},
    };
    return traducoes;
}

// What stands in a sentence of what was typed: the matching goes down a call for each letter.
std::string Cortado(const std::string &dito)
{
    constexpr std::size_t bastante = 400;
    if (dito.size() <= bastante) {
        return dito;
    }
    std::size_t fim = bastante;
    while ((static_cast<unsigned char>(dito[fim]) & 0xC0U) == 0x80U) { // not in the middle of a letter
        --fim;
    }
    return dito.substr(0, fim) + "...";
}

} // namespace

std::string FraseDoErro(const CLI::Error &erro)
{
    const auto frases = Traducoes().find(static_cast<CLI::ExitCodes>(erro.get_exit_code()));
    if (frases != Traducoes().end()) {
        const std::string dito = Cortado(erro.what());
        for (const auto &[molde, frase] : frases->second) {
            std::smatch partes;
            if (std::regex_match(dito, partes, std::regex(molde))) {
                return partes.format(frase);
            }
        }
    }
    return "A linha de comando não foi entendida.";
}

} // namespace comando
