#include "tests/comando/ComandoTeste.h"

#include "comando/CompletaBash.h"
#include "comando/ErroDaLinha.h"
#include "comando/LinhaDeComando.h"
#include "host/Texto.h"

#include <QProcess>

#include <algorithm>
#include <fstream>
#include <functional>
#include <iterator>
#include <sstream>

namespace {

using comando::Codigo;
using comando::LinhaDeComando;

// The line of the program, and what it says of itself.
class LinhaTeste : public ComandoTeste {
  protected:
    static void CadaLinha(const CLI::App &linha, const std::function<void(const CLI::App &)> &faz)
    {
        faz(linha);
        for (const CLI::App *uma : linha.get_subcommands([](const CLI::App *) { return true; })) {
            CadaLinha(*uma, faz);
        }
    }
    static std::vector<std::string> Opcoes(const CLI::App &linha)
    {
        std::vector<std::string> nomes;
        for (const CLI::Option *uma : linha.get_options()) {
            for (const std::string &nome : uma->get_lnames()) {
                nomes.push_back("--" + nome);
            }
        }
        return nomes;
    }
    static std::string Arquivo(const char *caminho)
    {
        std::ifstream arquivo(caminho);
        return {std::istreambuf_iterator<char>(arquivo), {}};
    }
};

TEST_F(LinhaTeste, EveryErrorOfTheLibrary_InPortuguese_HasNoOtherWord)
{
    using namespace CLI;
    const std::vector<std::pair<Error, std::string>> erros = {
        {RequiredError("--dia"), "Falta --dia."},
        {RequiredError::Subcommand(1), "Falta dizer o que fazer."},
        {RequiredError::Subcommand(2), "Falta dizer o que fazer."},
        {RequiredError::Option(1, 1, 0, "--a,--b"), "Das opções --a,--b faltam algumas, ou há demais."},
        {RequiredError::Option(1, 1, 2, "--a,--b"), "Das opções --a,--b faltam algumas, ou há demais."},
        {RequiredError::Option(1, 3, 0, "--a,--b"), "Das opções --a,--b faltam algumas, ou há demais."},
        {RequiredError::Option(2, 3, 1, "--a,--b"), "Das opções --a,--b faltam algumas, ou há demais."},
        {RequiredError::Option(0, 1, 2, "--a,--b"), "Das opções --a,--b faltam algumas, ou há demais."},
        {RequiredError::Option(0, 2, 3, "--a,--b"), "Das opções --a,--b faltam algumas, ou há demais."},
        {ExtrasError(std::vector<std::string>{"--nada"}), "A opção --nada não existe aqui."},
        {ExtrasError(std::vector<std::string>{"b", "a"}), "Não se esperava \"a b\" aqui."},
        {ExtrasError("registro", std::vector<std::string>{"a\nb"}), "Não se esperava \"a\nb\" aqui."},
        {ArgumentMismatch("--dia", 1, 0), "A opção --dia não veio com a quantidade certa de valores."},
        {ArgumentMismatch("--dia", -1, 0), "A opção --dia não veio com a quantidade certa de valores."},
        {ArgumentMismatch::AtLeast("--dia", 1, 0), "Falta o valor de --dia."},
        {ArgumentMismatch::AtMost("--dia", 1, 2), "A opção --dia foi dada mais de uma vez."},
        {ArgumentMismatch::TypedAtLeast("--dia", 1, "DIA"), "Falta o valor de --dia."},
        {ArgumentMismatch::FlagOverride("--json"), "A opção --json não tem valor."},
        {ConversionError("x", "--numero"), "O valor \"x\" não serve para --numero."},
        {ConversionError("--numero", std::vector<std::string>{"x"}), "O valor \"x\" não serve para --numero."},
        {ConversionError::TooManyInputsFlag("--json"), "A opção --json não tem valor."},
        {ConversionError::TrueFalse("--json"), "A opção --json não tem valor."},
        {ValidationError("--direito", "Não existe."), "Não existe."},
        {RequiresError("--digital", "--servidor"), "A opção --digital só vai com --servidor."},
        {ExcludesError("--dados", "--registro"), "As opções --dados e --registro não vão juntas."},
        {FileError::Missing("x"), "Um arquivo de opções não pôde ser lido."},
        {ConfigError::Extras("x"), "Um arquivo de opções não foi entendido."},
        {ConfigError::NotConfigurable("x"), "Um arquivo de opções não foi entendido."},
        {InvalidError("x"), "Há argumentos demais na linha de comando."},
        {OptionNotFound("x"), "A opção x não existe."},
        {HorribleError("The error was not expected"), "A linha de comando não foi entendida."},
        {RuntimeError(1), "A linha de comando não foi entendida."},
        {IncorrectConstruction::Set0Opt("x"), "A linha de comando não foi entendida."},
        {BadNameString::BadLongName("x"), "A linha de comando não foi entendida."},
        {OptionAlreadyAdded("x"), "A linha de comando não foi entendida."}};
    for (const auto &[erro, frase] : erros) {
        EXPECT_EQ(comando::FraseDoErro(erro), frase) << erro.what();
        EXPECT_TRUE(PalavrasInglesas(comando::FraseDoErro(erro)).empty()) << erro.what();
    }
    // The measure itself sees what the library says.
    EXPECT_FALSE(PalavrasInglesas(RequiredError("--dia").what()).empty());
    // Whatever else an error of a kind says.
    for (int codigo = 0; codigo <= static_cast<int>(ExitCodes::BaseClass); ++codigo) {
        const std::string frase =
            comando::FraseDoErro(Error("x", "the words that nobody has foreseen are these", codigo));
        EXPECT_TRUE(frase.ends_with(".")) << codigo;
        EXPECT_TRUE(PalavrasInglesas(frase).empty()) << codigo << ": " << frase;
    }
}

TEST_F(LinhaTeste, LinesThatAreWrong_EndWith2AndSayWhatIs)
{
    const std::vector<std::pair<std::vector<std::string>, std::string>> linhas = {
        {{}, "Falta dizer o que fazer.\nVeja registro --ajuda.\n"},
        {{"voa"}, "Não se esperava \"voa\" aqui.\nVeja registro --ajuda.\n"},
        {{"--nada"}, "A opção --nada não existe aqui.\nVeja registro --ajuda.\n"},
        {{"consulta"}, "Falta --dia.\nVeja registro consulta --ajuda.\n"},
        {{"consulta", "--dia", "01/01/2026"}, "Falta --usuario.\nVeja registro consulta --ajuda.\n"},
        {{"consulta", "--dia"}, "Falta o valor de --dia.\nVeja registro consulta --ajuda.\n"},
        {{"consulta", "--dia", "x", "--dia", "y"},
         "A opção --dia foi dada mais de uma vez.\nVeja registro consulta --ajuda.\n"},
        {{"consulta", "--dia", "x", "--usuario", "a", "--numero", "doze"},
         "O valor \"doze\" não serve para --numero.\nVeja registro consulta --ajuda.\n"},
        {{"consulta", "--dia", "x", "--usuario", "a", "--numero", "99999999999"},
         "O valor \"99999999999\" não serve para --numero.\nVeja registro consulta --ajuda.\n"},
        {{"consulta", "--dia", "x", "--usuario", "a", "--numero", "1", "--codigo", "a"},
         "As opções --codigo e --numero não vão juntas.\nVeja registro consulta --ajuda.\n"},
        {{"consulta", "--json=1", "--dia", "x", "--usuario", "a"},
         "A opção --json não tem valor.\nVeja registro consulta --ajuda.\n"},
        {{"consulta", "--dia", "x", "--usuario", "a", "sobra", "outra"},
         "Há algo demais na linha de comando.\nVeja registro consulta --ajuda.\n"},
        {{"restaura", "c", "sobra", "outra"},
         "Não se esperava \"sobra outra\" aqui.\nVeja registro restaura --ajuda.\n"},
        {{"confere", "--senha-da-entrada"},
         "A opção --senha-da-entrada só vai com --usuario.\nVeja registro confere --ajuda.\n"},
        {{"copia"}, "Falta DIR.\nVeja registro copia --ajuda.\n"},
        {{"copia", "d", "--servidor", "x"}, "Não se esperava \"--servidor x\" aqui.\nVeja registro copia --ajuda.\n"},
        {{"restaura"}, "Falta ARQ.\nVeja registro restaura --ajuda.\n"},
        {{"usuarios"}, "Falta dizer o que fazer.\nVeja registro usuarios --ajuda.\n"},
        {{"usuarios", "senha", "--usuario", "marta"}, "Falta LOGIN.\nVeja registro usuarios senha --ajuda.\n"},
    };
    for (const auto &[argumentos, frase] : linhas) {
        const Terminado terminado = Chama(argumentos);
        EXPECT_EQ(terminado.Como, Codigo::UsoErrado) << frase;
        EXPECT_EQ(terminado.Resposta, "") << frase;
        EXPECT_EQ(terminado.Frases, frase);
        EXPECT_TRUE(PalavrasInglesas(terminado.Frases).empty()) << terminado.Frases;
    }
    // However long a word is, the sentence is not.
    const Terminado longa = Chama({std::string(200000, 'x')});
    EXPECT_EQ(longa.Como, Codigo::UsoErrado);
    EXPECT_LT(longa.Frases.size(), 1000u);
}

TEST_F(LinhaTeste, ValuesAndWordsWithNothingInThem_EndWith2AndAreNeverAsIfNotGiven)
{
    const std::vector<std::pair<std::vector<std::string>, std::string>> linhas = {
        {{"restaura", "c.db", "--registro", ""}, "O que vem depois de --registro está vazio."},
        {{"restaura", "c.db", "--registro="}, "O que vem depois de --registro está vazio."},
        {{"restaura", "--registro=", "c.db"}, "O que vem depois de --registro está vazio."},
        {{"restaura", "c.db", "--dados", ""}, "O que vem depois de --dados está vazio."},
        {{"restaura", ""}, "Há um argumento vazio na linha de comando."},
        {{"copia", "", "--json"}, "Há um argumento vazio na linha de comando."},
        {{"confere", "--desde", ""}, "O que vem depois de --desde está vazio."},
        {{"cabeca", "--servidor", "", "--usuario", "ana"}, "O que vem depois de --servidor está vazio."},
        {{"consulta", "--numero", "", "--dia", "x", "--usuario", "a"}, "O que vem depois de --numero está vazio."},
        {{"consulta", "--numero", "1", "--dia", "x", "--usuario", "a", "--certificado", ""},
         "O que vem depois de --certificado está vazio."},
        {{"usuarios", "desativa", "", "--usuario", "marta"}, "Há um argumento vazio na linha de comando."},
        {{""}, "Há um argumento vazio na linha de comando."},
    };
    for (const auto &[argumentos, frase] : linhas) {
        const Terminado terminado = Chama(argumentos);
        EXPECT_EQ(terminado.Como, Codigo::UsoErrado) << frase;
        EXPECT_EQ(terminado.Resposta, "") << frase;
        EXPECT_EQ(terminado.Frases, frase + "\nVeja registro --ajuda.\n");
    }
}

TEST_F(LinhaTeste, WordsThatMayBePasswords_AreNotSaidAgain)
{
    const std::vector<std::pair<std::vector<std::string>, std::string>> linhas = {
        {{"usuarios", "minha-senha", "segredo", "--usuario", "ana"}, "Há algo demais na linha de comando."},
        {{"usuarios", "minha-senha", "segredo"}, "Há algo demais na linha de comando."},
        {{"usuarios", "senha", "bruno", "segredo", "--usuario", "marta"}, "Há algo demais na linha de comando."},
        {{"usuarios", "senha", "bruno", "--senha", "segredo", "--usuario", "marta"},
         "A opção --senha não existe aqui."},
        {{"usuarios", "lista", "--usuario", "marta", "--senha=segredo"}, "A opção --senha não existe aqui."},
        {{"usuarios", "lista", "--usuario", "marta", "-psegredo"}, "Há algo demais na linha de comando."},
        {{"consulta", "--dia", "x", "--usuario", "ana", "segredo"}, "Há algo demais na linha de comando."},
        {{"usuarios", "minhasenha", "segredo"}, "Não se esperava \"minhasenha\" aqui."},
        {{"usuario", "minha-senha", "segredo"}, "Não se esperava \"usuario\" aqui."},
        {{"--senha=segredo", "usuarios", "lista", "--usuario", "marta"}, "A opção --senha não existe aqui."},
        {{"copia", "d", "--senha=segredo"}, "A opção --senha não existe aqui."},
    };
    for (const auto &[argumentos, frase] : linhas) {
        const Terminado terminado = Chama(argumentos);
        EXPECT_EQ(terminado.Como, Codigo::UsoErrado) << terminado.Frases;
        EXPECT_TRUE(terminado.Frases.starts_with(frase + "\nVeja registro")) << terminado.Frases;
        EXPECT_EQ(terminado.Frases.find("segredo"), std::string::npos) << terminado.Frases;
    }
}

TEST_F(LinhaTeste, Help_OfEveryLine_IsPortugueseAndTellsEachOption)
{
    LinhaDeComando linha;
    int linhas = 0;
    CadaLinha(linha.App(), [&](const CLI::App &uma) {
        ++linhas;
        std::istringstream nomes(comando::NomeDaLinha(uma));
        std::vector<std::string> argumentos;
        for (std::string nome; nomes >> nome;) {
            argumentos.push_back(nome);
        }
        argumentos.erase(argumentos.begin());
        argumentos.emplace_back("--ajuda");
        const Terminado ajuda = Chama(argumentos);
        EXPECT_EQ(ajuda.Como, Codigo::Feito);
        EXPECT_EQ(ajuda.Frases, "");
        EXPECT_TRUE(PalavrasInglesas(ajuda.Resposta.substr(0, ajuda.Resposta.find("--help"))).empty())
            << ajuda.Resposta;
        EXPECT_TRUE(PalavrasInglesas(ajuda.Resposta.substr(ajuda.Resposta.find("--help") + 6)).empty())
            << ajuda.Resposta;
        EXPECT_NE(ajuda.Resposta.find("uso: " + comando::NomeDaLinha(uma) + " [opções]"), std::string::npos)
            << ajuda.Resposta;
        for (const std::string &opcao : Opcoes(uma)) {
            EXPECT_NE(ajuda.Resposta.find(opcao), std::string::npos) << opcao;
        }
        for (const CLI::Option *uma2 : uma.get_options()) {
            EXPECT_NE(uma2->get_description(), "") << uma2->get_name();
        }
        for (const CLI::App *sub : uma.get_subcommands([](const CLI::App *) { return true; })) {
            EXPECT_NE(ajuda.Resposta.find("  " + sub->get_name() + " "), std::string::npos) << sub->get_name();
        }
        std::istringstream texto(ajuda.Resposta);
        for (std::string escrita; std::getline(texto, escrita);) {
            EXPECT_LE(Len(escrita), 100u) << escrita;
        }
        argumentos.back() = "-h";
        EXPECT_EQ(Chama(argumentos).Resposta, ajuda.Resposta);
    });
    EXPECT_GE(linhas, 14);
}

TEST_F(LinhaTeste, Version_IsToldWithoutAnythingElse)
{
    const Terminado terminado = Chama({"--versao"});
    EXPECT_EQ(terminado.Como, Codigo::Feito);
    EXPECT_EQ(terminado.Frases, "");
    EXPECT_TRUE(terminado.Resposta.starts_with("registro 1.")) << terminado.Resposta;
    EXPECT_EQ(std::count(terminado.Resposta.begin(), terminado.Resposta.end(), '\n'), 1);
}

TEST_F(LinhaTeste, ManualPage_TellsEverySubCommandAndOption)
{
    std::string pagina = Arquivo("comando/pacote/registro.1");
    for (std::size_t onde = pagina.find("\\-"); onde != std::string::npos; onde = pagina.find("\\-", onde)) {
        pagina.erase(onde, 1);
    }
    const std::string guia = Arquivo("docs/comando.md");
    LinhaDeComando linha;
    CadaLinha(linha.App(), [&](const CLI::App &uma) {
        for (const std::string &texto : {pagina, guia}) {
            EXPECT_NE(texto.find(comando::NomeDaLinha(uma)), std::string::npos) << comando::NomeDaLinha(uma);
        }
        for (const std::string &opcao : Opcoes(uma)) {
            EXPECT_NE(pagina.find(opcao), std::string::npos) << opcao;
            EXPECT_NE(guia.find(opcao), std::string::npos) << opcao;
        }
    });
    for (const char *membro : {"\"equipamento\"", "\"vigente\"", "\"problemas\"", "\"usuarios\"", "\"situacao\""}) {
        EXPECT_NE(guia.find(membro), std::string::npos) << membro;
    }
}

// What bash offers after these words, of which the last one is begun.
class CompletaBashTeste : public LinhaTeste {
  protected:
    std::vector<std::string> Oferecidas(const std::vector<std::string> &palavras)
    {
        std::string comando = Chama({"completa-bash"}).Resposta + "compopt() { :; }\nCOMP_WORDS=(registro";
        for (const std::string &palavra : palavras) {
            comando += " '" + palavra + "'";
        }
        comando += ")\nCOMP_CWORD=" + std::to_string(palavras.size()) +
                   "\n_registro\n((${#COMPREPLY[@]} == 0)) || printf '%s\\n' \"${COMPREPLY[@]}\"\n";
        QProcess bash;
        bash.setWorkingDirectory(Pasta.path());
        bash.start("bash", {"--norc", "-c", QString::fromStdString(comando)});
        EXPECT_TRUE(bash.waitForFinished());
        EXPECT_EQ(bash.readAllStandardError().toStdString(), "");
        EXPECT_EQ(bash.exitCode(), 0);
        std::istringstream linhas(bash.readAllStandardOutput().toStdString());
        std::vector<std::string> oferecidas;
        for (std::string linha; std::getline(linhas, linha);) {
            oferecidas.push_back(linha);
        }
        std::ranges::sort(oferecidas);
        return oferecidas;
    }
    using Palavras = std::vector<std::string>;
};

TEST_F(CompletaBashTeste, AfterEachBeginning_OffersWhatTheLineTakesThere)
{
    EXPECT_EQ(Oferecidas({"co"}), (Palavras{"completa-bash", "confere", "consulta", "copia"}));
    EXPECT_EQ(Oferecidas({"consulta", "--nu"}), Palavras{"--numero"});
    EXPECT_EQ(Oferecidas({"usuarios", ""}),
              (Palavras{"--ajuda", "--help", "-h", "ativa", "desativa", "inclui", "lista", "minha-senha", "senha"}));
    EXPECT_EQ(Oferecidas({"usuarios", "inclui", "olga", "--direi"}), Palavras{"--direito"});
    // The value of an option is none of the line's words, even where it is spelt as one.
    EXPECT_EQ(Oferecidas({"consulta", "--codigo", ""}), Palavras{});
    EXPECT_EQ(Oferecidas({"usuarios", "lista", "--usuario", "senha", "--jso"}), Palavras{"--json"});
}

TEST_F(CompletaBashTeste, WhereAFileOrDirectoryGoes_OffersThose)
{
    std::ofstream(Em("um arquivo.txt")) << "x";
    std::filesystem::create_directory(Em("uma pasta"));
    EXPECT_EQ(Oferecidas({"confere", "--desde", "um"}), (Palavras{"um arquivo.txt", "uma pasta"}));
    EXPECT_EQ(Oferecidas({"confere", "--dados", "um"}), Palavras{"uma pasta"});
    EXPECT_EQ(Oferecidas({"copia", "um"}), Palavras{"uma pasta"});
    EXPECT_EQ(Oferecidas({"restaura", "um"}), (Palavras{"um arquivo.txt", "uma pasta"}));
}

TEST_F(CompletaBashTeste, EveryWordOfEveryLine_IsInIt)
{
    const std::string texto = Chama({"completa-bash"}).Resposta;
    LinhaDeComando linha;
    CadaLinha(linha.App(), [&](const CLI::App &uma) {
        const std::string ramo = "'" + comando::NomeDaLinha(uma) + "') palavras='";
        const std::size_t comeco = texto.find(ramo);
        ASSERT_NE(comeco, std::string::npos) << ramo;
        const std::string palavras =
            " " + texto.substr(comeco + ramo.size(), texto.find('\'', comeco + ramo.size()) - comeco - ramo.size()) +
            " ";
        for (const std::string &opcao : Opcoes(uma)) {
            EXPECT_NE(palavras.find(" " + opcao + " "), std::string::npos) << ramo << opcao;
        }
    });
}

} // namespace
