#include "server/LinhaDeComando.h"

#include "services/TextoQt.h"

#include <QCommandLineParser>

#include <array>
#include <initializer_list>
#include <utility>

namespace servidor {

using mesa::S;

const char *LinhaDeComando::Ajuda()
{
    return R"(uso: registro-servidor [opções]

Servidor do Registro de Equipamentos. Sem outra opção, atende até receber SIGTERM, SIGINT ou SIGHUP; então termina o que está
em andamento e sai.

  --configuracao ARQUIVO  lê as configurações desse arquivo
                          (padrão: /etc/registro-servidor/registro-servidor.toml)
  --confere-configuracao  diz o que está errado nas configurações, no registro e no certificado, sem mudar nada, e
                          termina com 0 quando não há nada, com 1 quando há
  --atualiza              traz o registro, de uma versão anterior do programa, para a desta; num banco, com o papel do dono
  --novo                  cria o registro que as configurações nomeiam, e termina; a senha do administrador é lida da
                          entrada padrão, numa linha. Pede:
    --cliente N             código do cliente
    --nome-cliente NOME     nome do cliente
    --uf UF                 estado do cliente
    --setor NOME            setor do cliente; repete-se para cada um, e pode faltar
    --usuario USUARIO       usuário com que o administrador entra
    --nome NOME             nome do administrador
  --amostra               cria ali um registro de amostra, e termina
  --confere               confere o registro inteiro e escreve o relatório; termina com 0 quando não há problemas, com 1
                          quando há, com 2 quando não pôde conferir. Pode ter:
    --desde ARQUIVO         confere também que nada mudou desde a cabeça do histórico guardada nesse arquivo
  --copia DIR             faz uma cópia conferida do registro no diretório, com outros trabalhando ou não; o diretório é
                          sempre dito, porque ao lado de um banco de dados não há nenhum
  --restaura ARQUIVO      confere a cópia e a põe no lugar do registro. Pode ter:
    --de-outro              aceita também a cópia de outro registro
  --versao                mostra a versão do programa
  --ajuda                 mostra esta ajuda

Termina com 0 quando fez o que foi pedido, com 1 quando não, e com 2 quando as opções não se entendem.
)";
}

LinhaDeComando LinhaDeComando::Le(const QStringList &argumentos)
{
    QCommandLineParser opcoes;
    const QCommandLineOption configuracao("configuracao", "", "ARQUIVO");
    const QCommandLineOption confereConfiguracao("confere-configuracao");
    const QCommandLineOption atualiza("atualiza");
    const QCommandLineOption novo("novo");
    const QCommandLineOption amostra("amostra");
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
    const QCommandLineOption versao("versao");
    const QCommandLineOption ajuda(QStringList{"ajuda", "help", "h"});
    opcoes.addOptions({configuracao, confereConfiguracao, atualiza, novo, amostra, cliente, nomeCliente, uf, setor,
                       usuario, nome, confere, desde, copia, restaura, deOutro, versao, ajuda});

    LinhaDeComando lida;
    const bool entendida = opcoes.parse(argumentos);
    if (opcoes.isSet(ajuda)) {
        lida.OQue = Ato::Ajuda;
        return lida;
    }
    const auto erra = [&](const std::string &erro) {
        if (lida.Erro.empty()) {
            lida.Erro = erro;
        }
    };
    if (!opcoes.unknownOptionNames().isEmpty()) {
        erra("A opção \"" + S(opcoes.unknownOptionNames().first()) + "\" não existe.");
    } else if (!entendida) {
        erra("Falta o valor de uma opção, ou veio um para uma opção que não o tem.");
    }
    if (!opcoes.positionalArguments().isEmpty()) {
        erra("\"" + S(opcoes.positionalArguments().last()) + "\" não é uma opção.");
    }
    const std::array<std::pair<const QCommandLineOption *, Ato>, 8> atos{{
        {&confereConfiguracao, Ato::ConfereConfiguracao},
        {&atualiza, Ato::Atualiza},
        {&novo, Ato::Novo},
        {&amostra, Ato::Amostra},
        {&confere, Ato::Confere},
        {&copia, Ato::Copia},
        {&restaura, Ato::Restaura},
        {&versao, Ato::Versao},
    }};
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
    soCom(novo, {&cliente, &nomeCliente, &uf, &setor, &usuario, &nome});
    soCom(confere, {&desde});
    soCom(restaura, {&deOutro});
    if (opcoes.isSet(novo)) {
        for (const QCommandLineOption *pedida : {&cliente, &nomeCliente, &uf, &usuario, &nome}) {
            if (!opcoes.isSet(*pedida)) {
                erra("Com --novo falta a opção --" + S(pedida->names().first()) + ".");
            }
        }
    }
    for (const QCommandLineOption *comValor : {&configuracao, &desde, &copia, &restaura}) {
        if (opcoes.isSet(*comValor) && opcoes.value(*comValor).isEmpty()) {
            erra("A opção --" + S(comValor->names().first()) + " veio sem o seu valor.");
        }
    }
    if (opcoes.isSet(configuracao)) {
        lida.Configuracao = S(opcoes.value(configuracao));
    }
    lida.Cliente.CodCliente = opcoes.value(cliente).toInt();
    lida.Cliente.Nome = S(opcoes.value(nomeCliente));
    lida.Cliente.UF = S(opcoes.value(uf).toUpper());
    for (const QString &um : opcoes.values(setor)) {
        lida.Cliente.Setores.push_back(S(um));
    }
    lida.Administrador.Usuario = S(opcoes.value(usuario));
    lida.Administrador.Nome = S(opcoes.value(nome));
    lida.Administrador.Setor = lida.Cliente.Setores.empty() ? "" : lida.Cliente.Setores.front();
    lida.Desde = S(opcoes.value(desde));
    lida.Pasta = S(opcoes.value(copia));
    lida.Arquivo = S(opcoes.value(restaura));
    lida.DeOutro = opcoes.isSet(deOutro);
    return lida;
}

} // namespace servidor
