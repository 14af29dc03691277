#include "comando/FormatoDaAjuda.h"

#include "host/Texto.h"

#include <sstream>

namespace comando {

namespace {

constexpr std::size_t Largura = 100;
constexpr std::size_t Coluna = 30; // where explanations begin

// The words from one column on, as many to a line as there is room for.
std::string EmLinhas(const std::string &texto, std::size_t coluna)
{
    std::string linhas;
    std::size_t onde = coluna;
    std::istringstream palavras(texto);
    for (std::string palavra; palavras >> palavra;) {
        const auto letras = static_cast<std::size_t>(Len(palavra));
        if (onde > coluna && onde + 1 + letras > Largura) {
            linhas += "\n" + std::string(coluna, ' ');
            onde = coluna;
        } else if (onde > coluna) {
            linhas += ' ';
            ++onde;
        }
        linhas += palavra;
        onde += letras;
    }
    return linhas;
}

std::string Linha(const std::string &nome, const std::string &explicacao)
{
    const std::string comeco = "  " + nome;
    const auto letras = static_cast<std::size_t>(Len(comeco));
    const std::string ate = letras + 2 <= Coluna ? std::string(Coluna - letras, ' ') : "\n" + std::string(Coluna, ' ');
    return comeco + ate + EmLinhas(explicacao, Coluna) + "\n";
}

} // namespace

FormatoDaAjuda::FormatoDaAjuda()
{
    label("Usage", "uso");
    label("Positionals", "Argumentos");
}

std::string FormatoDaAjuda::make_help(const CLI::App *app, std::string nome, CLI::AppFormatMode modo) const
{
    std::string ajuda = Formatter::make_help(app, nome, modo);
    for (std::size_t onde = ajuda.find("\n\n\n"); onde != std::string::npos; onde = ajuda.find("\n\n\n", onde)) {
        ajuda.erase(onde, 1);
    }
    while (ajuda.ends_with("\n\n")) {
        ajuda.pop_back();
    }
    return ajuda;
}

std::string FormatoDaAjuda::make_usage(const CLI::App *app, std::string) const
{
    std::string nome;
    for (const CLI::App *um = app; um != nullptr; um = um->get_parent()) {
        nome = um->get_name() + (nome.empty() ? "" : " " + nome);
    }
    std::string uso = "uso: " + nome + " [opções]";
    for (const CLI::Option *um : app->get_options([](const CLI::Option *opcao) { return opcao->get_positional(); })) {
        const std::string argumento = um->get_name(true, false);
        uso += um->get_required() ? " " + argumento : " [" + argumento + "]";
    }
    if (!app->get_subcommands([](const CLI::App *) { return true; }).empty()) {
        uso += " COMANDO";
    }
    return uso + "\n";
}

std::string FormatoDaAjuda::make_description(const CLI::App *app) const
{
    return EmLinhas(app->get_description(), 0) + "\n\n";
}

std::string FormatoDaAjuda::make_group(std::string grupo, bool soltos, std::vector<const CLI::Option *> opcoes) const
{
    std::string texto = "\n" + grupo + ":\n";
    for (const CLI::Option *opcao : opcoes) {
        texto += make_option(opcao, soltos);
    }
    return texto;
}

std::string FormatoDaAjuda::make_option(const CLI::Option *opcao, bool solto) const
{
    std::string nome = opcao->get_name(solto, !solto);
    for (std::size_t virgula = nome.find(','); virgula != std::string::npos; virgula = nome.find(',', virgula + 2)) {
        nome.insert(virgula + 1, " ");
    }
    if (!solto && opcao->get_items_expected_max() != 0) {
        nome += " " + opcao->get_type_name();
    }
    return Linha(nome, opcao->get_description());
}

std::string FormatoDaAjuda::make_subcommand(const CLI::App *sub) const
{
    return Linha(sub->get_name(), sub->get_description());
}

} // namespace comando
