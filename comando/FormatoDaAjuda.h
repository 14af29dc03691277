#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace comando {

// The help, in Portuguese, with its lines broken between words.
class FormatoDaAjuda : public CLI::Formatter {
  public:
    FormatoDaAjuda();

    std::string make_help(const CLI::App *app, std::string nome, CLI::AppFormatMode modo) const override;
    std::string make_usage(const CLI::App *app, std::string name) const override;
    std::string make_description(const CLI::App *app) const override;
    std::string make_group(std::string grupo, bool soltos, std::vector<const CLI::Option *> opcoes) const override;
    std::string make_option(const CLI::Option *opcao, bool solto) const override;
    std::string make_subcommand(const CLI::App *sub) const override;
};

} // namespace comando
