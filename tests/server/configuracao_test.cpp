#include "host/Falha.h"
#include "server/Certificado.h"
#include "server/Configuracao.h"
#include "server/Enderecos.h"
#include "tests/server/CertificadoDeTeste.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

using namespace servidor;

namespace {

class ConfiguracaoTeste : public testing::Test {
  protected:
    std::string Arquivo(const std::string &conteudo, const std::string &nome = "c.toml") const
    {
        std::string caminho = m_Pasta.filePath(QString::fromStdString(nome)).toStdString();
        std::ofstream(caminho, std::ios::binary) << conteudo;
        return caminho;
    }
    std::vector<std::string> ErrosDe(const std::string &conteudo) const
    {
        std::vector<std::string> erros;
        Configuracao::Le(Arquivo(conteudo), erros);
        for (std::string &erro : erros) {
            erro = erro.substr(erro.find(": ") == std::string::npos ? 0 : Onde(erro));
        }
        return erros;
    }
    // Settings in which nothing is wrong.
    Configuracao Boa() const
    {
        Configuracao boa;
        boa.Registro = Arquivo("", "registro.db");
        boa.Escuta = "127.0.0.1:0";
        boa.PastaDoCertificado = Pasta();
        return boa;
    }
    std::string Pasta() const { return m_Pasta.path().toStdString(); }

  private:
    static std::size_t Onde(const std::string &erro)
    {
        const std::size_t linha = erro.find("linha ");
        return linha == std::string::npos ? erro.find(": ") + 2 : linha;
    }

    QTemporaryDir m_Pasta;
};

std::string Tudo(const std::string &caminho)
{
    std::stringstream texto;
    texto << std::ifstream(caminho).rdbuf();
    return texto.str();
}

} // namespace

TEST_F(ConfiguracaoTeste, Le_TheFileOfTheProgram_HasEveryKeyOnceWithItsDefault)
{
    const std::string arquivo = "server/registro-servidor.toml";
    std::vector<std::string> erros;
    Configuracao lida = Configuracao::Le(arquivo, erros);
    EXPECT_EQ(erros, std::vector<std::string>());
    EXPECT_EQ(lida.Registro, "/var/lib/registro-servidor/registro.db");
    lida.Registro.clear();
    EXPECT_EQ(lida, Configuracao());
    std::vector<std::string> chaves;
    std::ifstream linhas(arquivo);
    bool explicada = false;
    for (std::string linha; std::getline(linhas, linha);) {
        if (linha.starts_with("#")) {
            explicada = true;
        } else if (const std::size_t igual = linha.find(" = "); igual != std::string::npos) {
            chaves.push_back(linha.substr(0, igual));
            EXPECT_TRUE(explicada) << linha;
        } else if (linha.empty()) {
            explicada = false;
        }
    }
    EXPECT_EQ(chaves, Configuracao::Chaves());
}

TEST_F(ConfiguracaoTeste, Chaves_Each_StandsInTheAdministratorsManual)
{
    std::stringstream manual;
    manual << std::ifstream("docs/servidor.md").rdbuf();
    for (const std::string &chave : Configuracao::Chaves()) {
        EXPECT_TRUE(std::regex_search(manual.str(), std::regex("\n\\|[^|]*`" + chave + "`[^|]*\\|"))) << chave;
    }
}

TEST_F(ConfiguracaoTeste, Le_WrongKeysTypesAndRanges_EachASentenceWithTheLine)
{
    EXPECT_EQ(ErrosDe("registro = \"r.db\"\n\nregisto = 1\nconexoes = \"4\"\nesperando = 0\nsem_tls = 1\nescuta = 3\n"
                      "ociosidade_min = 1441\n"),
              (std::vector<std::string>{"linha 3: não há configuração com o nome \"registo\".",
                                        "linha 4: \"conexoes\" é um número inteiro de 1 a 64.",
                                        "linha 5: \"esperando\" é um número inteiro de 1 a 10000.",
                                        "linha 6: \"sem_tls\" é true (sim) ou false (não), sem aspas.",
                                        "linha 7: \"escuta\" é um texto, entre aspas.",
                                        "linha 8: \"ociosidade_min\" é um número inteiro de 1 a 1440."}));
    EXPECT_EQ(ErrosDe("conexoes = 2\n"), std::vector<std::string>{"falta \"registro\", que diz onde o registro está."});
    for (const char *malEscrita :
         {"conexoes = = 3", "conexoes", "registro = \"b.db\"", "escuta = \"0.0.0.0:1", "= 1"}) {
        const std::vector<std::string> erros = ErrosDe("registro = \"a.db\"\n" + std::string(malEscrita) + "\n");
        ASSERT_EQ(erros.size(), 1U);
        EXPECT_TRUE(erros[0].starts_with("linha 2, coluna ")) << erros[0];
        // Nothing of the library's own words behind it.
        EXPECT_TRUE(erros[0].ends_with(": isto não está escrito como deve. Cada linha é \"chave = valor\"; textos vão "
                                       "entre aspas, e uma chave vem uma vez só."))
            << erros[0];
    }
    std::vector<std::string> erros;
    Configuracao::Le(Pasta() + "/nenhum.toml", erros);
    ASSERT_EQ(erros.size(), 1U);
    EXPECT_TRUE(erros[0].ends_with("nenhum.toml não pôde ser lido: o arquivo ou a pasta não existe.")) << erros[0];
    Configuracao::Le(Pasta(), erros);
    ASSERT_EQ(erros.size(), 1U);
    EXPECT_TRUE(erros[0].ends_with(" não pôde ser lido: é uma pasta.")) << erros[0];
}

TEST_F(ConfiguracaoTeste, Le_PasswordInAFileThatEverybodyReads_Refused)
{
    const auto erros = [&](const std::string &registro, std::filesystem::perms quem) {
        const std::string arquivo = Arquivo("registro = \"" + registro + "\"\n");
        std::filesystem::permissions(arquivo, quem);
        std::vector<std::string> deles;
        Configuracao::Le(arquivo, deles);
        return deles;
    };
    using std::filesystem::perms;
    const perms dele = perms::owner_read | perms::owner_write | perms::group_read;
    for (const char *comSenha : {"postgresql://eu:segredo@m/b", "postgresql://m/b?user=eu&password=segredo"}) {
        EXPECT_EQ(erros(comSenha, dele), std::vector<std::string>());
        const std::vector<std::string> todos = erros(comSenha, dele | perms::others_read);
        ASSERT_EQ(todos.size(), 1U) << comSenha;
        EXPECT_NE(todos[0].find("c.toml: \"registro\" tem uma senha"), std::string::npos) << todos[0];
        EXPECT_EQ(todos[0].find("segredo"), std::string::npos);
    }
    for (const char *semSenha :
         {"postgresql://eu@m1:5432,m2:5432/b", "postgresql://m:5432/b?user=eu@x", "/um/r:x@y.db"}) {
        EXPECT_EQ(erros(semSenha, dele | perms::others_read), std::vector<std::string>()) << semSenha;
    }
}

TEST_F(ConfiguracaoTeste, Le_UnitsOfTheKeys_InTheMembersOwn)
{
    std::vector<std::string> erros;
    const Configuracao lida = Configuracao::Le(
        Arquivo("registro = \"r\"\nmaior_pedido_mb = 3\nprazo_da_operacao_s = 7\nociosidade_min = 9\n"), erros);
    EXPECT_EQ(lida.MaiorPedido, 3U << 20);
    EXPECT_EQ(lida.PrazoDaOperacao, std::chrono::seconds(7));
    EXPECT_EQ(lida.Ociosidade, std::chrono::minutes(9));
}

TEST_F(ConfiguracaoTeste, Confere_Values_EachThatIsWrongIsASentence)
{
    EXPECT_EQ(Boa().Confere(), std::vector<std::string>());
    const auto erro = [&](const auto &muda) {
        Configuracao como = Boa();
        muda(como);
        const std::vector<std::string> erros = como.Confere();
        return erros.size() == 1 ? erros[0] : std::to_string(erros.size()) + " sentences";
    };
    EXPECT_NE(erro([](Configuracao &c) { c.Registro = "/nenhum/lugar.db"; }).find("/nenhum/lugar.db"),
              std::string::npos);
    EXPECT_NE(erro([](Configuracao &c) { c.Registro = "outro://banco"; }).find("postgresql://"), std::string::npos);
    EXPECT_EQ(erro([](Configuracao &c) { c.Registro = "postgresql://a@b/c"; }), "0 sentences");
    for (const char *escuta : {"", "127.0.0.1", "127.0.0.1:", "127.0.0.1:65536", "nome:1", "[::1:1", "1.2.3:1"}) {
        EXPECT_NE(erro([&](Configuracao &c) { c.Escuta = escuta; }).find("\"escuta\" é"), std::string::npos) << escuta;
        EXPECT_NE(erro([&](Configuracao &c) { c.Numeros = escuta[0] == 0 ? "x" : escuta; }).find("\"numeros\" é"),
                  std::string::npos);
    }
    EXPECT_NE(erro([](Configuracao &c) { c.Numeros = "0.0.0.0:9464"; }).find("\"numeros\" é"), std::string::npos);
    EXPECT_EQ(erro([](Configuracao &c) { c.Numeros = "[::1]:9464"; }), "0 sentences");
    EXPECT_NE(erro([](Configuracao &c) {
                  c.SemTls = true;
                  c.Escuta = "0.0.0.0:1";
              }).find("sem_tls"),
              std::string::npos);
    EXPECT_NE(erro([](Configuracao &c) { c.Certificado = "so.crt"; }).find("vão juntos"), std::string::npos);
    EXPECT_NE(erro([](Configuracao &c) { c.PastaDoCertificado = "/nenhuma/pasta"; }).find("/nenhuma/pasta"),
              std::string::npos);
    EXPECT_NE(erro([](Configuracao &c) { c.Diario = "/nenhuma/pasta/diario"; }).find("diario"), std::string::npos);
    // A place in which nobody, whoever it is, makes a file.
    EXPECT_EQ(erro([](Configuracao &c) { c.Diario = "/proc/diario"; }),
              ::access("/proc", W_OK) == 0
                  ? "0 sentences"
                  : "Em \"/proc/diario\", que \"diario\" nomeia, não se pode escrever: a pasta "
                    "/proc: falta permissão.");
    EXPECT_NE(erro([this](Configuracao &c) { c.Diario = Pasta(); }).find("é uma pasta"), std::string::npos);
}

TEST_F(ConfiguracaoTeste, Confere_ValuesThatDoNotGoTogether_EachASentence)
{
    const auto erro = [&](const auto &muda) {
        Configuracao como = Boa();
        muda(como);
        const std::vector<std::string> erros = como.Confere();
        return erros.size() == 1 ? erros[0] : std::to_string(erros.size()) + " sentences";
    };
    const auto prazos = [&](const std::string &registro, int gravacao, int operacao) {
        return erro([&](Configuracao &c) {
            c.Registro = registro;
            c.PrazoDaGravacao = std::chrono::seconds(gravacao);
            c.PrazoDaOperacao = std::chrono::seconds(operacao);
        });
    };
    EXPECT_TRUE(prazos("postgresql://a@b/c", 30, 30).starts_with("\"prazo_da_gravacao_s\" precisa ser menor"));
    EXPECT_EQ(prazos("postgresql://a@b/c", 29, 30), "0 sentences");
    for (const auto &[limite, chave] :
         {std::pair("limite_comando", "prazo_da_operacao_s"), std::pair("limite_trava", "prazo_da_operacao_s"),
          std::pair("limite_confirmacao", "prazo_da_gravacao_s")}) {
        EXPECT_EQ(prazos("postgresql://a@b/c?" + std::string(limite) + "=1", 29, 30),
                  "\"registro\" tem \"" + std::string(limite) + "\", que tomaria o lugar de \"" + chave +
                      "\": tire-o do texto de conexão.");
    }
    EXPECT_EQ(prazos(Boa().Registro, 30, 1), "0 sentences"); // a file waits for no other machine
    const auto portas = [&](const std::string &escuta, const std::string &numeros) {
        return erro([&](Configuracao &c) {
            c.Escuta = escuta;
            c.Numeros = numeros;
        });
    };
    for (const char *escuta : {"127.0.0.1:50443", "0.0.0.0:50443", "[::]:50443"}) {
        EXPECT_EQ(portas(escuta, "127.0.0.1:50443"),
                  "\"numeros\" e \"escuta\" têm a mesma porta: cada um precisa da sua.");
        EXPECT_EQ(portas(escuta, "127.0.0.1:50444"), "0 sentences");
    }
    EXPECT_EQ(portas("127.0.0.2:50443", "127.0.0.1:50443"), "0 sentences");
    EXPECT_EQ(portas("127.0.0.1:0", "127.0.0.1:0"), "0 sentences");
    const auto semTls = [&](const std::string &certificado, const std::string &chave) {
        return erro([&](Configuracao &c) {
            c.SemTls = true;
            c.Certificado = certificado;
            c.Chave = chave;
        });
    };
    for (const auto &[certificado, chave] : {std::pair("um.crt", "um.key"), std::pair("", "um.key")}) {
        EXPECT_TRUE(semTls(certificado, chave).starts_with("\"certificado\" e \"chave\" não valem com \"sem_tls\""));
    }
    EXPECT_EQ(semTls("", ""), "0 sentences");
}

TEST_F(ConfiguracaoTeste, Certificado_UnreadableMismatchedExpired_EachASentence)
{
    const ParDeChaves um = ParDeChaves::Proprio(Pasta());
    const std::string certificado = Pasta() + "/servidor.crt";
    const std::string chave = Pasta() + "/servidor.key";
    EXPECT_EQ(ParDeChaves::RecusaDosArquivos(certificado, chave), "");
    EXPECT_NE(ParDeChaves::RecusaDosArquivos(certificado, Pasta() + "/nada").find("não pôde ser lido"),
              std::string::npos);
    EXPECT_NE(ParDeChaves::RecusaDosArquivos(chave, chave).find("não tem um certificado"), std::string::npos);
    EXPECT_NE(ParDeChaves::RecusaDosArquivos(certificado, certificado).find("não tem uma chave privada"),
              std::string::npos);
    const QTemporaryDir outra;
    ParDeChaves::Proprio(outra.path().toStdString());
    EXPECT_NE(ParDeChaves::RecusaDosArquivos(certificado, outra.filePath("servidor.key").toStdString())
                  .find("não é a do certificado"),
              std::string::npos);
    // The same, signed again with days that are over.
    const auto grava = [&](long de, long ate) { certificado_de_teste::ValeEntre(Pasta(), de, ate); };
    grava(-7200, -3600);
    EXPECT_NE(ParDeChaves::RecusaDosArquivos(certificado, chave).find("venceu em"), std::string::npos);
    EXPECT_THROW(ParDeChaves::Proprio(Pasta()), Falha);
    EXPECT_THROW(ParDeChaves::ConferePasta(Pasta()), Falha);
    constexpr long dia = 24 * 60 * 60;
    grava(-7200, 61 * dia);
    EXPECT_EQ(ParDeChaves::Proprio(Pasta()).AvisoDeVencimento(), "");
    grava(-7200, 59 * dia);
    EXPECT_TRUE(
        ParDeChaves::ConferePasta(Pasta())->AvisoDeVencimento().starts_with("O certificado do servidor vence em "));
    grava(3600, 7200);
    EXPECT_NE(ParDeChaves::RecusaDosArquivos(certificado, chave).find("só vale a partir de"), std::string::npos);
}

TEST_F(ConfiguracaoTeste, Certificado_MadeOnce_KeptAfterwards)
{
    const std::string primeira = ParDeChaves::Proprio(Pasta()).Digital();
    EXPECT_EQ(primeira.size(), 95U);
    EXPECT_EQ(std::ranges::count(primeira, ':'), 31);
    EXPECT_EQ(ParDeChaves::Proprio(Pasta()).Digital(), primeira);
    EXPECT_THROW(ParDeChaves::Proprio(Pasta() + "/nenhuma"), Falha);
    EXPECT_NE(Tudo(Pasta() + "/servidor.key").find("PRIVATE KEY"), std::string::npos);
}

TEST(Enderecos, DeQuem_OtherEndOfACall_WithoutPortAndHalfOfTheLongKind)
{
    EXPECT_EQ(EnderecoDeQuem("ipv4:10.1.2.3:4711"), "10.1.2.3");
    EXPECT_EQ(EnderecoDeQuem("ipv6:%5B::1%5D:4711"), "::1");
    EXPECT_EQ(EnderecoDeQuem("ipv6:[2001:db8:1:2:3:4:5:6]:1"), "2001:db8:1:2::/64");
    EXPECT_EQ(EnderecoDeQuem("ipv6:%5B::ffff:10.1.2.3%5D:1"), "10.1.2.3");
    EXPECT_EQ(EnderecoDeQuem("unix:/um/lugar"), "unix");
    EXPECT_EQ(EnderecoDeQuem(""), "");
}
