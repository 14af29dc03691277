#include "tests/comando/ComandoTeste.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <set>
#include <sstream>

mesa::Segredo TerminalDeTeste::Senha(const std::string &pergunta)
{
    Perguntas.push_back(pergunta);
    const std::string senha = Senhas.empty() ? "" : Senhas.front();
    if (!Senhas.empty()) {
        Senhas.pop_front();
    }
    return senha;
}

bool TerminalDeTeste::Aceita(const std::string &pergunta)
{
    Perguntas.push_back(pergunta);
    return Sim;
}

Terminado ComandoTeste::Chama(const std::vector<std::string> &argumentos, const std::string &entrada)
{
    std::istringstream deFora(entrada);
    std::ostringstream saida;
    std::ostringstream erros;
    comando::Ambiente ambiente{deFora,
                               saida,
                               erros,
                               NoTerminal ? &Pessoa : nullptr,
                               Em("preferencias.ini"),
                               [this] { return mesa::Instante(Registro.Relogio); },
                               [this] {
                                   if (PassosAteInterromper > 0) {
                                       --PassosAteInterromper;
                                   }
                                   return PassosAteInterromper == 0;
                               },
                               CustoDeTeste};
    Terminado terminado;
    terminado.Como = comando::Programa(argumentos, ambiente);
    terminado.Resposta = saida.str();
    terminado.Frases = erros.str();
    return terminado;
}

Terminado ComandoTeste::NoArquivo(std::vector<std::string> argumentos, const std::string &usuario,
                                  const std::string &resto)
{
    Registro.Cadastra(usuario);
    argumentos.insert(argumentos.end(), {"--registro", Registro.Caminho(), "--usuario", usuario, "--senha-da-entrada"});
    return Chama(argumentos, "senha de " + usuario + "\n" + resto);
}

Terminado ComandoTeste::NoServidor(std::vector<std::string> argumentos, const std::string &usuario,
                                   const std::string &resto)
{
    Registro.Cadastra(usuario);
    argumentos.insert(argumentos.end(), {"--servidor", Onde(), "--digital", Servidor->Digital(), "--usuario", usuario,
                                         "--senha-da-entrada"});
    return Chama(argumentos, "senha de " + usuario + "\n" + resto);
}

Terminado ComandoTeste::SemEntrar(std::vector<std::string> argumentos)
{
    argumentos.insert(argumentos.end(), {"--registro", Registro.Caminho()});
    return Chama(argumentos);
}

void ComandoTeste::Serve()
{
    servidor::Configuracao como;
    como.Registro = Registro.Caminho();
    como.Escuta = "127.0.0.1:0";
    como.PastaDoCertificado = Em("certificado");
    como.Diario = Em("diario");
    std::filesystem::create_directory(como.PastaDoCertificado);
    Servidor.emplace(
        como, [this] { return mesa::Instante(Registro.Relogio); }, CustoDeTeste);
}

std::vector<std::string> PalavrasInglesas(const std::string &texto)
{
    static const std::set<std::string> inglesas = {
        "all",        "allowed",     "already",    "and",         "are",      "argument", "arguments",   "at",
        "be",         "commands",    "convert",    "could",       "default",  "does",     "enough",      "error",
        "exactly",    "excludes",    "exist",      "exit",        "expected", "few",      "file",        "flag",
        "following",  "found",       "from",       "given",       "got",      "help",     "information", "inputs",
        "invalid",    "is",          "it",         "least",       "least",    "less",     "many",        "message",
        "missing",    "more",        "most",       "must",        "name",     "needs",    "not",         "number",
        "of",         "only",        "option",     "options",     "or",       "override", "parse",       "parsed",
        "positional", "positionals", "print",      "program",     "range",    "received", "required",    "requires",
        "run",        "should",      "subcommand", "subcommands", "text",     "than",     "that",        "the",
        "this",       "too",         "unable",     "unexpected",  "usage",    "used",     "value",       "values",
        "version",    "was",         "were",       "with",        "without",  "you"};
    std::vector<std::string> achadas;
    std::string palavra;
    for (const char letra : texto + " ") {
        const auto uma = static_cast<unsigned char>(letra);
        if (std::isalpha(uma) != 0 || uma >= 0x80) {
            palavra += static_cast<char>(std::tolower(uma));
            continue;
        }
        if (inglesas.contains(palavra)) {
            achadas.push_back(palavra);
        }
        palavra.clear();
    }
    return achadas;
}
