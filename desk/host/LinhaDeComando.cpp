#include "desk/host/LinhaDeComando.h"

#include "services/TextoQt.h"

#include <QCommandLineParser>
#include <QFile>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <string_view>
#include <utility>

namespace mesa {

namespace {

std::filesystem::path Caminho(const QString &texto)
{
    return QFile::encodeName(texto).toStdString();
}

} // namespace

const char *LinhaDeComando::Ajuda()
{
    return R"(uso: registro-de-equipamentos [opções] [ARQUIVO]

Registro de Equipamentos. Sem opções, abre o registro do diretório de dados; na primeira vez pergunta se cria um
registro novo, abre um que já existe, trabalha no de um servidor ou experimenta com a amostra. Com ARQUIVO, abre o
registro que está nele; quando o diretório de dados já tem outro, pergunta antes.

  --dados DIR          usa outro diretório de dados
                       (padrão: ~/.local/share/registro-de-equipamentos)
  --servidor MÁQUINA:PORTA
                       trabalha no registro desse servidor, agora e daqui em diante; sem ":PORTA", na porta 50443
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
  --confere            confere o registro inteiro, sem janelas, e escreve o relatório; termina com 0 quando não há
                       problemas, com 1 quando há, com 2 quando não pôde conferir. Pode ter:
    --desde ARQUIVO      confere também que nada mudou desde a cabeça do histórico guardada nesse arquivo
  --copia DIR          faz uma cópia conferida do registro no diretório, sem janelas, com outros trabalhando ou não
  --restaura ARQUIVO   confere a cópia e a põe no lugar do registro, sem janelas; o que estava lá é guardado ao lado.
                       Pode ter:
    --de-outro           aceita também a cópia de outro registro
  --help               mostra esta ajuda
)";
}

bool LinhaDeComando::SemJanelas(int argc, const char *const *argv)
{
    constexpr std::array<std::string_view, 6> opcoes{"--novo", "--confere", "--copia", "--restaura", "--help", "-h"};
    return std::any_of(argv, argv + argc, [&](std::string_view argumento) {
        return std::ranges::find(opcoes, argumento.substr(0, argumento.find('='))) != opcoes.end();
    });
}

LinhaDeComando LinhaDeComando::Le(const QStringList &argumentos)
{
    QCommandLineParser opcoes;
    const QCommandLineOption dados("dados", "", "DIR");
    const QCommandLineOption servidor("servidor", "", "MÁQUINA:PORTA");
    const QCommandLineOption amostra("amostra");
    const QCommandLineOption novo("novo");
    const QCommandLineOption cliente("cliente", "", "N");
    const QCommandLineOption nomeCliente("nome-cliente", "", "NOME");
    const QCommandLineOption uf("uf", "", "UF");
    const QCommandLineOption setor("setor", "", "NOME");
    const QCommandLineOption usuario("usuario", "", "USUARIO");
    const QCommandLineOption nome("nome", "", "NOME");
    const QCommandLineOption confere("confere");
    const QCommandLineOption desde("desde", "", "ARQUIVO");
    const QCommandLineOption copia("copia", "", "DIR");
    const QCommandLineOption restaura("restaura", "", "ARQUIVO");
    const QCommandLineOption deOutro("de-outro");
    const QCommandLineOption ajuda(QStringList{"help", "h"});
    opcoes.addOptions({dados, servidor, amostra, novo, cliente, nomeCliente, uf, setor, usuario, nome, confere, desde,
                       copia, restaura, deOutro, ajuda});

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
    }
    lida.Dados = opcoes.isSet(dados) ? Caminho(opcoes.value(dados)) : Preferencias::DiretorioPadrao();
    const auto erra = [&](const std::string &erro) {
        if (lida.Erro.empty()) {
            lida.Erro = erro;
        }
    };
    const std::array<std::pair<const QCommandLineOption *, Ato>, 5> atos{{{&novo, Ato::Novo},
                                                                          {&amostra, Ato::Amostra},
                                                                          {&confere, Ato::Confere},
                                                                          {&copia, Ato::Copia},
                                                                          {&restaura, Ato::Restaura}}};
    const QCommandLineOption *primeira = nullptr;
    for (const auto &[opcao, ato] : atos) {
        if (opcoes.isSet(*opcao)) {
            if (primeira != nullptr) {
                erra("As opções --" + S(primeira->names().first()) + " e --" + S(opcao->names().first()) +
                     " não vão juntas.");
            }
            primeira = opcao;
            lida.OQue = ato;
        }
    }
    const auto soCom = [&](const QCommandLineOption &dona, std::initializer_list<const QCommandLineOption *> suas) {
        for (const QCommandLineOption *sua : suas) {
            if (opcoes.isSet(*sua) && !opcoes.isSet(dona)) {
                erra("A opção --" + S(sua->names().first()) + " só vai com --" + S(dona.names().first()) + ".");
            }
        }
    };
    const QStringList soltos = opcoes.positionalArguments();
    if (lida.OQue == Ato::Trabalha && soltos.size() == 1) {
        lida.Registro = std::filesystem::absolute(Caminho(soltos.first()));
    } else if (!soltos.isEmpty()) {
        erra("\"" + S(soltos.last()) + "\" não é uma opção.");
    }
    if (opcoes.isSet(servidor)) {
        std::string recusa;
        lida.Servidor = rede::Endereco::Le(S(opcoes.value(servidor)), recusa);
        if (!lida.Servidor) {
            erra(recusa);
        }
        if (primeira != nullptr) {
            erra("As opções --servidor e --" + S(primeira->names().first()) + " não vão juntas.");
        }
        if (!lida.Registro.empty()) {
            erra("Um ARQUIVO e a opção --servidor não vão juntos.");
        }
    }
    soCom(novo, {&cliente, &nomeCliente, &uf, &setor, &usuario, &nome});
    soCom(confere, {&desde});
    soCom(restaura, {&deOutro});
    lida.Novo.Cliente.CodCliente = opcoes.value(cliente).toInt();
    lida.Novo.Cliente.Nome = S(opcoes.value(nomeCliente));
    lida.Novo.Cliente.UF = S(opcoes.value(uf).toUpper());
    for (const QString &um : opcoes.values(setor)) {
        lida.Novo.Cliente.Setores.push_back(S(um));
    }
    lida.Novo.Usuario = S(opcoes.value(usuario));
    lida.Novo.Nome = S(opcoes.value(nome));
    lida.Desde = S(opcoes.value(desde));
    lida.Pasta = S(opcoes.value(copia));
    lida.Arquivo = S(opcoes.value(restaura));
    lida.DeOutro = opcoes.isSet(deOutro);
    for (const auto &[opcao, valor] :
         {std::pair(&desde, lida.Desde), std::pair(&copia, lida.Pasta), std::pair(&restaura, lida.Arquivo)}) {
        if (opcoes.isSet(*opcao) && valor.empty()) {
            erra("A opção --" + S(opcao->names().first()) + " veio sem o seu valor.");
        }
    }
    return lida;
}

} // namespace mesa
