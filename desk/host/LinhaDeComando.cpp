#include "desk/host/LinhaDeComando.h"

#include "desk/services/TextoQt.h"

#include <QCommandLineParser>
#include <QFile>
#include <QStandardPaths>

#include <algorithm>
#include <istream>
#include <string_view>

namespace mesa {

namespace {

std::filesystem::path Caminho(const QString &texto)
{
    return QFile::encodeName(texto).toStdString();
}

} // namespace

const char *LinhaDeComando::Ajuda()
{
    return R"(uso: registro-de-equipamentos [opções]

Registro de Equipamentos. Sem opções, abre o registro do diretório de dados; na primeira vez pergunta se cria um
registro novo, abre um que já existe ou experimenta com a amostra.

  --dados DIR          usa outro diretório de dados
                       (padrão: ~/.local/share/registro-de-equipamentos)
  --amostra            faz uma amostra nova no diretório "amostra" dentro do de dados e a abre; a anterior é
                       guardada ao lado
  --novo               cria um registro novo, sem janelas, e termina; a senha do administrador é lida da entrada
                       padrão, numa linha. Pede:
    --cliente N          código do cliente
    --nome-cliente NOME  nome do cliente
    --uf UF              estado do cliente
    --setor NOME         setor do cliente; repete-se para cada um, e pode faltar
    --usuario USUARIO    usuário com que o administrador entra
    --nome NOME          nome do administrador
  --help               mostra esta ajuda
)";
}

bool LinhaDeComando::SemJanelas(int argc, const char *const *argv)
{
    return std::any_of(argv, argv + argc, [](std::string_view argumento) {
        return argumento == "--novo" || argumento == "--help" || argumento == "-h";
    });
}

LinhaDeComando LinhaDeComando::Le(const QStringList &argumentos)
{
    QCommandLineParser opcoes;
    const QCommandLineOption dados("dados", "", "DIR");
    const QCommandLineOption amostra("amostra");
    const QCommandLineOption novo("novo");
    const QCommandLineOption cliente("cliente", "", "N");
    const QCommandLineOption nomeCliente("nome-cliente", "", "NOME");
    const QCommandLineOption uf("uf", "", "UF");
    const QCommandLineOption setor("setor", "", "NOME");
    const QCommandLineOption usuario("usuario", "", "USUARIO");
    const QCommandLineOption nome("nome", "", "NOME");
    const QCommandLineOption ajuda(QStringList{"help", "h"});
    opcoes.addOptions({dados, amostra, novo, cliente, nomeCliente, uf, setor, usuario, nome, ajuda});

    LinhaDeComando lida;
    const bool entendida = opcoes.parse(argumentos);
    if (opcoes.isSet(ajuda)) {
        lida.OQue = Ato::Ajuda;
        return lida;
    }
    if (!opcoes.unknownOptionNames().isEmpty()) {
        lida.Erro = "A opção \"" + S(opcoes.unknownOptionNames().first()) + "\" não existe.";
    } else if (!entendida) {
        lida.Erro = "Falta o valor de uma opção, ou veio um para uma opção que não o tem.";
    } else if (!opcoes.positionalArguments().isEmpty()) {
        lida.Erro = "\"" + S(opcoes.positionalArguments().first()) + "\" não é uma opção.";
    }
    lida.Dados = opcoes.isSet(dados) ? Caminho(opcoes.value(dados))
                                     : Caminho(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                                               "/registro-de-equipamentos");
    if (opcoes.isSet(novo)) {
        lida.OQue = Ato::Novo;
        lida.Novo.Cliente.CodCliente = opcoes.value(cliente).toInt();
        lida.Novo.Cliente.Nome = S(opcoes.value(nomeCliente));
        lida.Novo.Cliente.UF = S(opcoes.value(uf).toUpper());
        for (const QString &um : opcoes.values(setor)) {
            lida.Novo.Cliente.Setores.push_back(S(um));
        }
        lida.Novo.Usuario = S(opcoes.value(usuario));
        lida.Novo.Nome = S(opcoes.value(nome));
        if (lida.Erro.empty() && opcoes.isSet(amostra)) {
            lida.Erro = "As opções --novo e --amostra não vão juntas.";
        }
        return lida;
    }
    for (const QCommandLineOption *so : {&cliente, &nomeCliente, &uf, &setor, &usuario, &nome}) {
        if (lida.Erro.empty() && opcoes.isSet(*so)) {
            lida.Erro = "A opção --" + S(so->names().first()) + " só vai com --novo.";
        }
    }
    if (opcoes.isSet(amostra)) {
        lida.OQue = Ato::Amostra;
    }
    return lida;
}

Segredo LeSenha(std::istream &entrada)
{
    constexpr std::size_t bastante = 1024; // the text does not grow, and leaves no piece of itself behind
    std::string linha;
    linha.reserve(bastante);
    std::getline(entrada, linha);
    if (!linha.empty() && linha.back() == '\r') {
        linha.pop_back();
    }
    Segredo senha(linha);
    LimpaMemoria(linha.data(), linha.size());
    return senha;
}

} // namespace mesa
