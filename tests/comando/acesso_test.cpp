#include "tests/comando/ComandoTeste.h"

#include "rede/Encontro.h"
#include "services/Disco.h"

#include <sys/stat.h>

#include <filesystem>
#include <fstream>

namespace {

using comando::Codigo;

// How the program comes to a registry, and who comes in.
class AcessoTeste : public ComandoTeste {
  protected:
    AcessoTeste()
    {
        const auto ana = Registro.Sessao("ana");
        IncluiComSensores(ana, {{AfericaoDe("C-1", DataDe(1, 1, 2026), DataDe(30, 6, 2026))}});
    }
    static std::vector<std::string> Pergunta(std::vector<std::string> mais)
    {
        mais.insert(mais.begin(), {"consulta", "--codigo", "R-001", "--dia", "30/06/2026"});
        return mais;
    }
    std::vector<std::string> NoArquivoPor(const std::string &usuario, std::vector<std::string> mais = {}) const
    {
        mais.insert(mais.begin(), {"--registro", Registro.Caminho(), "--usuario", usuario});
        return Pergunta(mais);
    }
    std::string ArquivoDeSenha(const char *nome, const std::string &texto, unsigned modo)
    {
        const std::string caminho = Em(nome);
        std::ofstream(caminho) << texto;
        EXPECT_EQ(::chmod(caminho.c_str(), modo), 0);
        return caminho;
    }
};

TEST_F(AcessoTeste, Password_FromTheInput_TheFileOrTheTerminal_ComesIn)
{
    EXPECT_EQ(Chama(NoArquivoPor("ana", {"--senha-da-entrada"}), "senha de ana\r\nnada\n").Como, Codigo::Feito);
    const std::string arquivo = ArquivoDeSenha("senha", "senha de ana\nnada\n", 0600);
    EXPECT_EQ(Chama(NoArquivoPor("ana", {"--senha-de", arquivo})).Como, Codigo::Feito);
    EXPECT_EQ(Chama(NoArquivoPor("ana", {"--senha-de", ArquivoDeSenha("sem fim", "senha de ana", 0400)})).Como,
              Codigo::Feito);
    EXPECT_TRUE(Pessoa.Perguntas.empty());
    NoTerminal = true;
    Pessoa.Senhas = {"senha de ana"};
    EXPECT_EQ(Chama(NoArquivoPor("ana")).Como, Codigo::Feito);
    EXPECT_EQ(Pessoa.Perguntas, std::vector<std::string>{"Senha de ana"});
}

TEST_F(AcessoTeste, Password_NoneOrFromAFileThatOthersRead_IsNotTaken)
{
    const Terminado nenhuma = Chama(NoArquivoPor("ana"));
    EXPECT_EQ(nenhuma.Como, Codigo::UsoErrado);
    EXPECT_EQ(nenhuma.Frases, "Falta a senha de ana: não há terminal em que a perguntar. Use --senha-da-entrada ou "
                              "--senha-de.\n");
    EXPECT_EQ(Chama(NoArquivoPor("ana", {"--senha-da-entrada"})).Frases,
              "A senha de ana é lida da entrada padrão, e não veio.\n");
    for (const unsigned modo : {0640u, 0604u, 0660u, 0610u, 0777u}) {
        const Terminado aberta =
            Chama(NoArquivoPor("ana", {"--senha-de", ArquivoDeSenha("aberta", "senha de ana\n", modo)}));
        EXPECT_EQ(aberta.Como, Codigo::Recusado) << modo;
        EXPECT_NE(aberta.Frases.find("só o dono o pode ler"), std::string::npos);
        EXPECT_EQ(aberta.Frases.find("senha de ana"), std::string::npos);
    }
    EXPECT_EQ(Chama(NoArquivoPor("ana", {"--senha-de", Em("")})).Como, Codigo::Recusado) << "a directory";
    EXPECT_EQ(Chama(NoArquivoPor("ana", {"--senha-de", Em("nenhum")})).Como, Codigo::NaoAlcancado);
    EXPECT_EQ(Chama(NoArquivoPor("ana", {"--senha-de", ArquivoDeSenha("vazio", "\nsenha de ana\n", 0600)})).Como,
              Codigo::Recusado);
}

TEST_F(AcessoTeste, SignIn_WithAWrongPasswordOrName_IsRefusedWith3)
{
    for (const char *usuario : {"ana", "ninguem"}) {
        const Terminado errada = Chama(NoArquivoPor(usuario, {"--senha-da-entrada"}), "outra senha qualquer\n");
        EXPECT_EQ(errada.Como, Codigo::Recusado);
        EXPECT_EQ(errada.Resposta, "");
        EXPECT_NE(errada.Frases, "");
        EXPECT_EQ(errada.Frases.find("outra senha"), std::string::npos);
    }
}

TEST_F(AcessoTeste, DataDirectory_ThatKnowsARegistry_IsAskedAboutThatOne)
{
    rede::LugaresConhecidos lugares(Em("preferencias.ini"));
    const std::vector<std::string> pergunta =
        Pergunta({"--dados", Em("dados"), "--usuario", "ana", "--senha-da-entrada"});
    EXPECT_EQ(Chama(pergunta, "senha de ana\n").Como, Codigo::NaoAlcancado) << "it knows none";
    lugares.LembraRegistro(Em("dados"), {Registro.Caminho(), Registro.Aberto().Identificador()});
    EXPECT_EQ(Chama(pergunta, "senha de ana\n").Como, Codigo::Feito);
    lugares.LembraRegistro(Em("dados"), {Registro.Caminho(), "outro"});
    const Terminado outro = Chama(pergunta, "senha de ana\n");
    EXPECT_EQ(outro.Como, Codigo::Recusado);
    EXPECT_NE(outro.Frases.find("não é aquele em que se trabalhava"), std::string::npos);

    Serve();
    // From now on it works there, whatever its file is.
    lugares.LembraServidor(Em("dados"), rede::Endereco{"127.0.0.1", Servidor->Porta()});
    lugares.LembraConfianca({"127.0.0.1", Servidor->Porta()}, {Servidor->Digital(), ""});
    EXPECT_EQ(Chama(pergunta, "senha de ana\n").Como, Codigo::Feito);
}

TEST_F(AcessoTeste, NewServer_IsShownAndTakesItsFingerprintOnce)
{
    Serve();
    const std::vector<std::string> pergunta =
        Pergunta({"--servidor", Onde(), "--usuario", "ana", "--senha-da-entrada"});
    const Terminado nova = Chama(pergunta, "senha de ana\n");
    EXPECT_EQ(nova.Como, Codigo::Recusado);
    EXPECT_EQ(nova.Resposta, "");
    EXPECT_NE(nova.Frases.find(Servidor->Digital()), std::string::npos);
    EXPECT_NE(nova.Frases.find("--digital"), std::string::npos);
    EXPECT_EQ(Chama(pergunta, "senha de ana\n").Como, Codigo::Recusado) << "being shown is not being trusted";

    std::vector<std::string> comDigital = pergunta;
    comDigital.insert(comDigital.end(), {"--digital", Servidor->Digital()});
    EXPECT_EQ(Chama(comDigital, "senha de ana\n").Como, Codigo::Feito);
    const Terminado lembrado = Chama(pergunta, "senha de ana\n");
    EXPECT_EQ(lembrado.Como, Codigo::Feito);
    EXPECT_EQ(lembrado.Frases, "");
}

TEST_F(AcessoTeste, NewServer_AtATerminal_IsAskedAbout)
{
    Serve();
    NoTerminal = true;
    const std::vector<std::string> pergunta = Pergunta({"--servidor", Onde(), "--usuario", "ana"});
    EXPECT_EQ(Chama(pergunta).Como, Codigo::Recusado);
    EXPECT_EQ(Pessoa.Perguntas, std::vector<std::string>{"É a que quem o administra informou?"});
    Pessoa.Sim = true;
    Pessoa.Senhas = {"senha de ana"};
    EXPECT_EQ(Chama(pergunta).Como, Codigo::Feito);
}

TEST_F(AcessoTeste, Server_WithAnotherCertificateThanTold_IsSentNothing)
{
    Serve();
    std::string outra = Servidor->Digital();
    outra.back() = outra.back() == '0' ? '1' : '0';
    const Terminado terminado =
        Chama(Pergunta({"--servidor", Onde(), "--digital", outra, "--usuario", "ana", "--senha-da-entrada"}),
              "senha de ana\n");
    EXPECT_EQ(terminado.Como, Codigo::Recusado);
    EXPECT_NE(terminado.Frases.find("nada foi enviado a ele"), std::string::npos);
    EXPECT_NE(terminado.Frases.find("informe-a com --digital."), std::string::npos);
    EXPECT_EQ(Registro.Sql("SELECT COUNT(*) FROM HISTORICO WHERE Entidade = 'SESSAO' AND Acao = 'recusa'"), "0");
}

TEST_F(AcessoTeste, Server_ThatShowsAnotherCertificateThanBefore_IsSentNothingAndStaysKnownByTheOldOne)
{
    Serve();
    const rede::Endereco onde{"127.0.0.1", Servidor->Porta()};
    std::string deAntes = Servidor->Digital();
    deAntes.front() = deAntes.front() == '0' ? '1' : '0';
    rede::LugaresConhecidos(Em("preferencias.ini")).LembraConfianca(onde, {deAntes, ""});
    NoTerminal = true; // nor is it accepted by an answer
    Pessoa.Sim = true;
    const std::vector<std::string> pergunta =
        Pergunta({"--servidor", Onde(), "--usuario", "ana", "--senha-da-entrada"});
    const Terminado terminado = Chama(pergunta, "senha de ana\n");
    EXPECT_EQ(terminado.Como, Codigo::Recusado);
    EXPECT_EQ(terminado.Resposta, "");
    EXPECT_NE(terminado.Frases.find("nada foi enviado a ele"), std::string::npos) << terminado.Frases;
    EXPECT_TRUE(Pessoa.Perguntas.empty());
    EXPECT_EQ(rede::LugaresConhecidos(Em("preferencias.ini")).Confianca(onde).Digital, deAntes);

    std::vector<std::string> comDigital = pergunta;
    comDigital.insert(comDigital.end(), {"--digital", Servidor->Digital()});
    EXPECT_EQ(Chama(comDigital, "senha de ana\n").Como, Codigo::Feito);
    EXPECT_EQ(Chama(pergunta, "senha de ana\n").Como, Codigo::Feito);
}

TEST_F(AcessoTeste, Server_WithAnotherRegistryThanBefore_IsRefused)
{
    Serve();
    rede::LugaresConhecidos lugares(Em("preferencias.ini"));
    lugares.LembraRegistroNo({"127.0.0.1", Servidor->Porta()}, "{11111111-2222-3333-4444-555555555555}");
    const Terminado terminado = NoServidor(Pergunta({}), "ana");
    EXPECT_EQ(terminado.Como, Codigo::Recusado);
    EXPECT_NE(terminado.Frases.find("não é aquele em que se trabalhava"), std::string::npos);
}

TEST_F(AcessoTeste, Authority_ToldByARelativePath_IsRememberedByAWholeOne)
{
    rede::LugaresConhecidos lugares(Em("preferencias.ini"));
    const rede::Endereco servidor{"maquina", 50443};
    const std::string inteira = (std::filesystem::current_path() / "ca.pem").string();
    std::string usada;
    const rede::ConectaServidor como{[](const rede::Endereco &) { return std::string(); },
                                     [&](const rede::Endereco &, const rede::Confianca &confianca) {
                                         usada = confianca.Autoridade;
                                         return Registro.AbreOutro();
                                     }};
    const rede::QuemEncontra quem{[](const std::string &, const std::string &) { return false; },
                                  [](const std::string &) { return false; }, "com --digital"};
    const rede::Encontrado encontrado = rede::Encontra(servidor, {"", "./ca.pem"}, lugares, como, quem);
    EXPECT_EQ(encontrado.Desfecho, rede::Encontrado::Como::Conectado) << encontrado.Frase;
    EXPECT_EQ(usada, inteira);
    EXPECT_EQ(lugares.Confianca(servidor).Autoridade, inteira);
}

TEST_F(AcessoTeste, Server_ThatIsGoneOrNone_EndsWith4)
{
    Serve();
    const std::string onde = Onde();
    const std::string digital = Servidor->Digital();
    Servidor.reset();
    for (const std::vector<std::string> &mais : {std::vector<std::string>{}, {"--digital", digital}}) {
        std::vector<std::string> pergunta = Pergunta({"--servidor", onde, "--usuario", "ana", "--senha-da-entrada"});
        pergunta.insert(pergunta.end(), mais.begin(), mais.end());
        const Terminado terminado = Chama(pergunta, "senha de ana\n");
        EXPECT_EQ(terminado.Como, Codigo::NaoAlcancado);
        EXPECT_EQ(terminado.Resposta, "");
        EXPECT_NE(terminado.Frases.find(onde), std::string::npos);
    }
}

TEST_F(AcessoTeste, Server_GivenUpOnTheWay_EndsAsInterrupted)
{
    Serve();
    PassosAteInterromper = 1;
    EXPECT_EQ(NoServidor(Pergunta({}), "ana").Como, Codigo::Interrompido);
}

TEST_F(AcessoTeste, OptionsThatDoNotGoTogether_EndWith2)
{
    for (const std::vector<std::string> &mais :
         {std::vector<std::string>{"--dados", "d"}, {"--servidor", "x"}, {"--digital", "AA"}, {"--autoridade", "x"}}) {
        std::vector<std::string> pergunta = NoArquivoPor("ana", {"--senha-da-entrada"});
        pergunta.insert(pergunta.end(), mais.begin(), mais.end());
        const Terminado terminado = Chama(pergunta, "senha de ana\n");
        EXPECT_EQ(terminado.Como, Codigo::UsoErrado) << mais.front();
        EXPECT_TRUE(PalavrasInglesas(terminado.Frases).empty()) << terminado.Frases;
    }
    EXPECT_EQ(Chama(Pergunta({"--servidor", "x:0", "--usuario", "ana", "--senha-da-entrada"}), "s\n").Frases,
              "A porta do servidor é um número de 1 a 65535: \"máquina:porta\".\n");
    EXPECT_EQ(
        Chama(Pergunta({"--servidor", "x", "--digital", "AB", "--usuario", "ana", "--senha-da-entrada"}), "s\n").Frases,
        "A digital tem 64 algarismos de 0 a 9 e de A a F, em pares. Copie-a inteira.\n");
    EXPECT_EQ(Chama(Pergunta({"--servidor", "x", "--autoridade", Em("nada"), "--usuario", "ana", "--senha-da-entrada"}),
                    "s\n")
                  .Como,
              Codigo::NaoAlcancado);
}

} // namespace
