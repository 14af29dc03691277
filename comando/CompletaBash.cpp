#include "comando/CompletaBash.h"

#include "comando/LinhaDeComando.h"

#include <functional>
#include <vector>

namespace comando {

namespace {

// What stands for a file or a directory, as the help shows it.
bool EhArquivo(const std::string &tipo)
{
    return tipo == "ARQ" || tipo == "CABECA";
}

bool EhPasta(const std::string &tipo)
{
    return tipo == "DIR";
}

std::vector<std::string> Nomes(const CLI::Option &opcao)
{
    std::vector<std::string> nomes;
    for (const std::string &curto : opcao.get_snames()) {
        nomes.push_back("-" + curto);
    }
    for (const std::string &longo : opcao.get_lnames()) {
        nomes.push_back("--" + longo);
    }
    return nomes;
}

// Each line of those below this one, and this one.
void CadaLinha(const CLI::App &linha, const std::function<void(const CLI::App &)> &faz)
{
    faz(linha);
    for (const CLI::App *um : linha.get_subcommands([](const CLI::App *) { return true; })) {
        CadaLinha(*um, faz);
    }
}

// A branch of a `case` over the line and a word of it.
std::string Ramo(const std::string &molde, const std::string &faz)
{
    return molde.empty() ? "" : "        " + molde + ") " + faz + " ;;\n";
}

// One of the patterns of such a branch.
void Junta(std::string &molde, const std::string &linha, const std::string &palavra)
{
    molde += (molde.empty() ? "'" : " | '") + linha + " " + palavra + "'";
}

} // namespace

std::string CompletaBash(const CLI::App &linha)
{
    const std::string deArquivo = "compopt -o filenames; mapfile -t COMPREPLY < <(compgen -f -- \"$palavra\"); return";
    const std::string dePasta = "compopt -o filenames; mapfile -t COMPREPLY < <(compgen -d -- \"$palavra\"); return";
    std::string descidas; // what the words before lead to: a sub-command, or past the value of an option
    std::string valores;  // what is offered as the value of an option
    std::string palavras; // what there is to say in a line
    CadaLinha(linha, [&](const CLI::App &uma) {
        const std::string nome = NomeDaLinha(uma);
        std::string dela;
        std::string solto;
        std::string arquivos;
        std::string pastas;
        std::string outros;
        for (const CLI::App *um : uma.get_subcommands([](const CLI::App *) { return true; })) {
            dela += (dela.empty() ? "" : " ") + um->get_name();
            descidas += Ramo("'" + nome + " " + um->get_name() + "'", "linha='" + NomeDaLinha(*um) + "'");
        }
        for (const CLI::Option *um : uma.get_options()) {
            if (um->get_positional()) {
                solto = um->get_name(true, false);
                continue;
            }
            const std::string tipo = um->get_type_name();
            for (const std::string &qual : Nomes(*um)) {
                dela += (dela.empty() ? "" : " ") + qual;
                if (um->get_items_expected_max() != 0) {
                    Junta(EhArquivo(tipo) ? arquivos : EhPasta(tipo) ? pastas : outros, nome, qual);
                }
            }
        }
        for (const std::string &molde : {arquivos, pastas, outros}) {
            descidas += Ramo(molde, "i=$((i + 1))");
        }
        valores += Ramo(arquivos, deArquivo) + Ramo(pastas, dePasta) + Ramo(outros, "return");
        palavras += Ramo("'" + nome + "'", "palavras='" + dela + "' solto='" + solto + "'");
    });
    return "# Completa no bash os comandos do programa registro. Feito por \"registro completa-bash\".\n"
           "_registro() {\n"
           "    local palavra=${COMP_WORDS[COMP_CWORD]} linha='registro' palavras='' solto='' i\n"
           "    COMPREPLY=()\n"
           "    for ((i = 1; i < COMP_CWORD; ++i)); do\n"
           "        case \"$linha ${COMP_WORDS[i]}\" in\n" +
           descidas +
           "        esac\n"
           "    done\n"
           "    case \"$linha ${COMP_WORDS[COMP_CWORD - 1]}\" in\n" +
           valores +
           "    esac\n"
           "    case \"$linha\" in\n" +
           palavras +
           "    esac\n"
           "    if [[ $palavra != -* ]]; then\n"
           "        case \"$solto\" in\n"
           "        'ARQ') " +
           deArquivo + " ;;\n        'DIR') " + dePasta +
           " ;;\n"
           "        esac\n"
           "    fi\n"
           "    mapfile -t COMPREPLY < <(compgen -W \"$palavras\" -- \"$palavra\")\n"
           "}\n"
           "complete -F _registro registro\n";
}

} // namespace comando
