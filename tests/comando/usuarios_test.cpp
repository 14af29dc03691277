#include "tests/comando/ComandoTeste.h"

#include <sstream>

namespace {

using comando::Codigo;

const std::string SenhaNova = "cavalo grampeador azul";

class UsuariosTeste : public ComandoTeste {
  protected:
    UsuariosTeste()
    {
        for (const char *usuario : {"ana", "bruno", "marta"}) {
            Registro.Cadastra(usuario);
        }
    }
    static std::vector<std::string> Inclusao(std::vector<std::string> mais = {})
    {
        mais.insert(mais.begin(), {"usuarios", "inclui", "olga", "--nome", "Olga Reis", "--cliente", Cliente});
        mais.emplace_back("--nova-da-entrada");
        return mais;
    }
    // Of that user, in the list.
    nlohmann::json Um(const std::string &usuario)
    {
        const nlohmann::json lidos = NoArquivo({"usuarios", "lista", "--json"}, "marta").Json();
        for (const nlohmann::json &um : lidos["usuarios"]) {
            if (um["usuario"] == usuario) {
                return um;
            }
        }
        return nullptr;
    }
    // What is written nowhere, whatever happens.
    static void SemSenhas(const Terminado &terminado, const std::string &senha = SenhaNova)
    {
        EXPECT_EQ((terminado.Resposta + terminado.Frases).find(senha), std::string::npos);
        EXPECT_EQ((terminado.Resposta + terminado.Frases).find("senha de marta"), std::string::npos);
    }

    static inline const std::string Cliente = "1";
};

TEST_F(UsuariosTeste, Lista_ByWhoAdministers_IsALineEach)
{
    const Terminado terminado = NoArquivo({"usuarios", "lista"}, "marta");
    EXPECT_EQ(terminado.Como, Codigo::Feito);
    EXPECT_EQ(terminado.Frases, "");
    std::istringstream linhas(terminado.Resposta);
    std::vector<std::string> usuarios;
    for (std::string linha; std::getline(linhas, linha);) {
        EXPECT_EQ(std::count(linha.begin(), linha.end(), '\t'), 4) << linha;
        EXPECT_TRUE(linha.ends_with("\tativo")) << linha;
        usuarios.push_back(linha.substr(0, linha.find('\t')));
    }
    EXPECT_EQ(usuarios, (std::vector<std::string>{"ana", "bruno", "marta"}));
    EXPECT_EQ(Um("ana")["nomeDoCliente"], "Autoridade Estadual de Trânsito");
    EXPECT_EQ(Um("ana")["situacao"], "ativo");
    EXPECT_TRUE(Um("ana")["municipio"].is_null());
}

TEST_F(UsuariosTeste, EveryAct_ByWhoDoesNotAdminister_IsRefusedAndChangesNothing)
{
    const nlohmann::json antes = NoArquivo({"usuarios", "lista", "--json"}, "marta").Json();
    for (const std::vector<std::string> &qual : {std::vector<std::string>{"usuarios", "lista"},
                                                 Inclusao(),
                                                 {"usuarios", "ativa", "bruno"},
                                                 {"usuarios", "desativa", "bruno"},
                                                 {"usuarios", "senha", "bruno", "--nova-da-entrada"}}) {
        const Terminado terminado = NoArquivo(qual, "ana", SenhaNova + "\n");
        EXPECT_EQ(terminado.Como, Codigo::Recusado) << qual[1];
        EXPECT_EQ(terminado.Resposta, "") << qual[1];
        EXPECT_NE(terminado.Frases.find("Ana"), std::string::npos) << terminado.Frases;
        SemSenhas(terminado);
    }
    EXPECT_EQ(NoArquivo({"usuarios", "lista", "--json"}, "marta").Json(), antes);
}

TEST_F(UsuariosTeste, Inclui_ANewUser_SignsInAndHasToChangeThePassword)
{
    const Terminado incluida =
        NoArquivo(Inclusao({"--direito", "consulta", "--direito", "inclui"}), "marta", SenhaNova + "\n");
    EXPECT_EQ(incluida.Como, Codigo::Feito) << incluida.Frases;
    EXPECT_EQ(incluida.Resposta, "");
    SemSenhas(incluida);
    EXPECT_EQ(Um("olga")["trocaSenha"], true);
    EXPECT_EQ(Um("olga")["nome"], "Olga Reis");

    const std::vector<std::string> olga = {"--registro", Registro.Caminho(), "--usuario", "olga", "--senha-da-entrada"};
    const auto com = [&](std::vector<std::string> argumentos) {
        argumentos.insert(argumentos.end(), olga.begin(), olga.end());
        return argumentos;
    };
    const auto pergunta = com({"consulta", "--codigo", "R-1", "--dia", "01/01/2026"});
    const Terminado antes = Chama(pergunta, SenhaNova + "\n");
    EXPECT_EQ(antes.Como, Codigo::Recusado);
    EXPECT_EQ(antes.Frases, "A senha de olga foi definida por outra pessoa e tem de ser trocada antes: use \"registro "
                            "usuarios minha-senha\".\n");
    const Terminado troca =
        Chama(com({"usuarios", "minha-senha", "--nova-da-entrada"}), SenhaNova + "\noutra muito diferente 77\n");
    EXPECT_EQ(troca.Como, Codigo::Feito) << troca.Frases;
    SemSenhas(troca, "outra muito diferente 77");
    EXPECT_EQ(Chama(pergunta, SenhaNova + "\n").Como, Codigo::Recusado);
    // She may look, and there is nothing of that code.
    EXPECT_EQ(Chama(pergunta, "outra muito diferente 77\n").Como, Codigo::Nao);
}

TEST_F(UsuariosTeste, Inclui_WithAccentsQuotesAndBrackets_KeepsThemAsTheyWereWritten)
{
    Serve();
    const std::string nome = "Conceição D'Ávila \"Zé\" [x] {y} -- %s \\n";
    const std::string senha = "çãõ 'aspas' \"duas\" $HOME";
    const auto inclui = [&](const char *usuario) {
        return std::vector<std::string>{"usuarios",  "inclui", usuario,     "--nome",   nome,
                                        "--cliente", Cliente,  "--direito", "consulta", "--nova-da-entrada"};
    };
    const Terminado aqui = NoArquivo(inclui("olga"), "marta", senha + "\n");
    EXPECT_EQ(aqui.Como, Codigo::Feito) << aqui.Frases;
    const Terminado la = NoServidor(inclui("olavo"), "marta", senha + "\n");
    EXPECT_EQ(la.Como, Codigo::Feito) << la.Frases;
    EXPECT_EQ(Um("olga")["nome"], nome);
    EXPECT_EQ(Um("olavo")["nome"], nome);
    EXPECT_EQ(Chama({"usuarios", "minha-senha", "--registro", Registro.Caminho(), "--usuario", "olga",
                     "--senha-da-entrada", "--nova-da-entrada"},
                    senha + "\noutra muito diferente 77\n")
                  .Como,
              Codigo::Feito);
}

TEST_F(UsuariosTeste, Inclui_WhatTheServicesRefuse_EndsWith3)
{
    for (const auto &[senha, argumentos] :
         {std::pair<std::string, std::vector<std::string>>{"curta", Inclusao()},
          {SenhaNova, Inclusao({"--setor", "Nenhum"})},
          {SenhaNova, Inclusao({"--municipio", "17"})},
          {SenhaNova, {"usuarios", "inclui", "ANA", "--nome", "Outra", "--cliente", Cliente, "--nova-da-entrada"}},
          {SenhaNova, {"usuarios", "inclui", "olga", "--nome", "Olga", "--cliente", "77", "--nova-da-entrada"}}}) {
        const Terminado terminado = NoArquivo(argumentos, "marta", senha + "\n");
        EXPECT_EQ(terminado.Como, Codigo::Recusado) << terminado.Frases;
        EXPECT_NE(terminado.Frases, "");
        SemSenhas(terminado);
    }
    EXPECT_TRUE(Um("olga").is_null());
    const Terminado direito = NoArquivo(Inclusao({"--direito", "tudo"}), "marta", SenhaNova + "\n");
    EXPECT_EQ(direito.Como, Codigo::UsoErrado);
    EXPECT_EQ(direito.Frases,
              "Não existe o direito \"tudo\"; há consulta, inclui, altera, desativa, usuarios, tabelas, "
              "copias.\nVeja registro usuarios inclui --ajuda.\n");
    EXPECT_EQ(NoArquivo(Inclusao(), "marta").Frases, "A senha nova é lida da entrada padrão, e não veio.\n");
}

TEST_F(UsuariosTeste, Rights_OnesTold_AreWhatTheNewUserHas)
{
    for (const char *direito : {"consulta", "inclui", "altera", "desativa", "usuarios", "tabelas", "copias"}) {
        const std::string usuario = std::string("u.") + direito;
        ASSERT_EQ(NoArquivo({"usuarios", "inclui", usuario, "--nome", "Pessoa", "--cliente", Cliente, "--direito",
                             direito, "--nova-da-entrada"},
                            "marta", SenhaNova + "\n")
                      .Como,
                  Codigo::Feito);
    }
    EXPECT_EQ(
        Registro.Sql("SELECT group_concat(d, ' ') FROM (SELECT u.Usuario || '=' || p.Objeto || ':' || p.Acao d FROM "
                     "PERMISSAO p JOIN USUARIO u ON u.Numero = p.Numero WHERE u.Usuario LIKE 'u.%' AND p.Ativo = 1 "
                     "ORDER BY u.Usuario)"),
        "u.altera=VOR-EQP-CS:A u.consulta=VOR-EQP-CS: u.copias=VOR-EQP-ADM:C u.desativa=VOR-EQP-CS:E "
        "u.inclui=VOR-EQP-CS:I u.tabelas=VOR-EQP-ADM:T u.usuarios=VOR-EQP-ADM:U");
}

TEST_F(UsuariosTeste, DeactivatedAndActivated_AUser_ComesInOrNot)
{
    const std::vector<std::string> pergunta = {"consulta", "--codigo", "R-1", "--dia", "01/01/2026"};
    EXPECT_EQ(NoArquivo({"usuarios", "desativa", "BRUNO"}, "marta").Como, Codigo::Feito);
    EXPECT_EQ(Um("bruno")["situacao"], "desativado");
    EXPECT_EQ(NoArquivo(pergunta, "bruno").Como, Codigo::Recusado);
    EXPECT_EQ(NoArquivo({"usuarios", "desativa", "bruno"}, "marta").Como, Codigo::Recusado);
    EXPECT_EQ(NoArquivo({"usuarios", "ativa", "bruno"}, "marta").Como, Codigo::Feito);
    EXPECT_EQ(NoArquivo(pergunta, "bruno").Como, Codigo::Nao);
    const Terminado nenhum = NoArquivo({"usuarios", "ativa", "zeca"}, "marta");
    EXPECT_EQ(nenhum.Como, Codigo::Nao);
    EXPECT_EQ(nenhum.Frases, "Não existe o usuário zeca.\n");
    EXPECT_EQ(NoArquivo({"usuarios", "desativa", "marta"}, "marta").Como, Codigo::Recusado);
}

TEST_F(UsuariosTeste, Senha_AskedTwiceAtATerminal_IsSetWhenBothAreTheSame)
{
    NoTerminal = true;
    const std::vector<std::string> define = {"usuarios",         "senha",     "bruno", "--registro",
                                             Registro.Caminho(), "--usuario", "marta"};
    Pessoa.Senhas = {"senha de marta", SenhaNova, SenhaNova + "!"};
    const Terminado diferentes = Chama(define);
    EXPECT_EQ(diferentes.Como, Codigo::Recusado);
    EXPECT_EQ(diferentes.Frases, "As duas senhas não são iguais. Nada foi mudado.\n");
    EXPECT_EQ(Um("bruno")["trocaSenha"], false);
    EXPECT_EQ(Pessoa.Perguntas, (std::vector<std::string>{"Senha de marta", "Senha nova de bruno", "Repita a senha"}));

    Pessoa.Senhas = {"senha de marta", SenhaNova, SenhaNova};
    const Terminado iguais = Chama(define);
    EXPECT_EQ(iguais.Como, Codigo::Feito) << iguais.Frases;
    SemSenhas(iguais);
    EXPECT_EQ(Um("bruno")["trocaSenha"], true);
}

TEST_F(UsuariosTeste, AtAServer_TheSameActs_AreDone)
{
    Serve();
    ASSERT_EQ(NoServidor(Inclusao({"--direito", "consulta"}), "marta", SenhaNova + "\n").Como, Codigo::Feito);
    EXPECT_EQ(NoServidor({"usuarios", "lista"}, "marta").Resposta, NoArquivo({"usuarios", "lista"}, "marta").Resposta);
    EXPECT_EQ(NoServidor({"usuarios", "desativa", "olga"}, "marta").Como, Codigo::Feito);
    EXPECT_EQ(Um("olga")["situacao"], "desativado");
    EXPECT_EQ(NoServidor({"usuarios", "ativa", "olga"}, "marta").Como, Codigo::Feito);
    EXPECT_EQ(NoServidor({"usuarios", "senha", "olga", "--nova-da-entrada"}, "marta", "mais outra senha 99\n").Como,
              Codigo::Feito);
    const Terminado ana = NoServidor({"usuarios", "lista"}, "ana");
    EXPECT_EQ(ana.Como, Codigo::Recusado);
    EXPECT_EQ(ana.Frases, NoArquivo({"usuarios", "lista"}, "ana").Frases);
    const Terminado troca = NoServidor({"usuarios", "minha-senha", "--nova-da-entrada"}, "bruno", SenhaNova + "\n");
    EXPECT_EQ(troca.Como, Codigo::Feito) << troca.Frases;
}

} // namespace
