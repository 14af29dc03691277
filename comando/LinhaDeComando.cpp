#include "comando/LinhaDeComando.h"

#include "comando/FormatoDaAjuda.h"
#include "comando/Versao.h"
#include "rede/Mensagens.h"

#include <algorithm>

namespace comando {

namespace {

// The library makes the option of each line's help before it knows the name of its group.
void AgrupaAjuda(CLI::App &linha)
{
    const_cast<CLI::Option *>(linha.get_help_ptr())->group("Opções");
    for (CLI::App *uma : linha.get_subcommands([](const CLI::App *) { return true; })) {
        AgrupaAjuda(*uma);
    }
}

// CLI::ValidationError when a value, or a word that stands alone, was given with nothing in it: what an empty variable
// of a script leaves there is never taken for an option that was not given. So when one is no text, which nothing in a
// registry, and no answer, can hold.
void ExigeValores(const std::vector<std::string> &argumentos)
{
    std::string antes;
    for (const std::string &um : argumentos) {
        const bool semValor = um.starts_with("--") && um.find('=') == um.size() - 1;
        if (um.empty() || semValor) {
            const std::string opcao = semValor ? um : antes;
            throw CLI::ValidationError("valor",
                                       opcao.starts_with("--")
                                           ? "O que vem depois de " + opcao.substr(0, opcao.find('=')) + " está vazio."
                                           : "Há um argumento vazio na linha de comando.");
        }
        if (!rede::EhTexto(um)) {
            throw CLI::ValidationError("valor", "Há na linha de comando algo que não está em UTF-8.");
        }
        antes = um;
    }
}

// What may be said again of words that were not understood: none that may be a password, in the wrong place.
std::vector<std::string> Diziveis(const CLI::App &linha, const std::vector<std::string> &demais)
{
    const bool comSenha = linha.get_option_no_throw("--senha-da-entrada") != nullptr;
    const bool comComandos = !linha.get_subcommands([](const CLI::App *) { return true; }).empty();
    std::vector<std::string> diziveis;
    for (const std::string &uma : demais) {
        if (uma.starts_with("--") || !comSenha) {
            diziveis.push_back(uma.substr(0, uma.find('=')));
        }
        if (comComandos) {
            break; // what follows a command that there is not may be anything
        }
    }
    return diziveis;
}

// CLI::ExtrasError with what was not understood of this line and of those above it, if anything.
void ExigeEntendida(const CLI::App &linha)
{
    const std::vector<std::string> demais = linha.remaining();
    if (!demais.empty()) {
        std::vector<std::string> diziveis = Diziveis(linha, demais);
        if (diziveis.empty()) {
            throw CLI::ExtrasError("stray words", CLI::ExitCodes::ExtrasError);
        }
        std::ranges::reverse(diziveis); // as the error takes it
        throw CLI::ExtrasError(diziveis);
    }
    if (linha.get_parent() != nullptr) {
        ExigeEntendida(*linha.get_parent());
    }
}

} // namespace

LinhaDeComando::LinhaDeComando()
    : m_App(
          "Consulta o registro de equipamentos e cuida dele, sem janelas: o que está num arquivo ou o de um servidor.",
          "registro")
{
    // What every line has from this one.
    m_App.formatter(std::make_shared<FormatoDaAjuda>());
    m_App.option_defaults()->group("Opções");
    m_App.group("Comandos");
    m_App.set_help_flag("-h,--ajuda,--help", "Mostra esta ajuda e termina.")
        ->disable_flag_override()
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    m_App.set_version_flag("--versao", std::string("registro ") + Versao(), "Mostra a versão do programa e termina.")
        ->disable_flag_override();
    m_App.require_subcommand(1);
    m_App.footer("Cada comando tem a sua ajuda: registro COMANDO --ajuda.");
    m_Todos = FazTodos();
    for (const auto &um : m_Todos) {
        CLI::App *linha = m_App.add_subcommand(um->Nome(), um->Resumo());
        linha->footer("");
        um->Descreve(*linha);
    }
    AgrupaAjuda(m_App);
}

Subcomando &LinhaDeComando::Le(std::vector<std::string> argumentos)
{
    ExigeValores(argumentos);
    std::ranges::reverse(argumentos); // as the library takes them
    try {
        m_App.parse(argumentos);
    } catch (const CLI::RequiredError &) {
        ExigeEntendida(LinhaDada(m_App)); // what was not understood is why something lacks
        throw;
    } catch (const CLI::ExtrasError &) {
        ExigeEntendida(LinhaDada(m_App)); // in the order in which it was written
        throw;
    }
    const std::string nome = m_App.get_subcommands().front()->get_name();
    return **std::ranges::find(m_Todos, nome, [](const auto &um) { return um->Nome(); });
}

std::string LinhaDeComando::Ajuda() const
{
    return LinhaDada(m_App).help();
}

const CLI::App &LinhaDada(const CLI::App &linha)
{
    const CLI::App *qual = &linha;
    while (!qual->get_subcommands().empty()) {
        qual = qual->get_subcommands().front();
    }
    return *qual;
}

std::string NomeDaLinha(const CLI::App &linha)
{
    const std::string nome = linha.get_name();
    return linha.get_parent() == nullptr ? nome : NomeDaLinha(*linha.get_parent()) + " " + nome;
}

} // namespace comando
