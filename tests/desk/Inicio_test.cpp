#include "desk/host/Inicio.h"

#include "desk/host/DiretorioDeTrabalho.h"
#include "host/Falha.h"
#include "tests/services/PastaDeTeste.h"
#include "tests/services/RegistroDeTeste.h"
#include "tests/services/SemPrivilegio.h"

#include <QLockFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

using namespace mesa;

namespace {

const std::string Segura = "cavalo grampeador azul";

Instante Manha()
{
    return DataDe(20, 11, 2026, 9, 30, 0);
}

RegistroNovo Novidade()
{
    RegistroNovo novo;
    novo.Cliente = {7, " Autoridade Municipal de Trânsito ", {"Operações", "Eletrônica"}, "SP"};
    novo.Usuario = " olga ";
    novo.Nome = " Olga Reis ";
    novo.Senha = Segura;
    return novo;
}

// A person who answers as was arranged, and leaves when nothing is arranged any more.
class PessoaDeTeste : public IPessoaNoInicio {
  public:
    std::deque<OpcaoDoInicio> Escolhas;
    std::deque<OpcaoDaFalta> NaFalta;
    std::deque<RegistroNovo> Novos;
    std::deque<std::filesystem::path> Arquivos;
    std::deque<bool> Respostas;
    std::deque<std::optional<LugarDoTrabalho>> Lugares;
    std::deque<OpcaoSemServidor> SemServidor;
    std::function<void()> AntesDeTentar;
    std::vector<std::string> Lido; // what the person was told, in order

    OpcaoDoInicio Comeca() override
    {
        Lido.push_back("começa");
        return Tira(Escolhas, OpcaoDoInicio::Sair);
    }
    bool
    PedeRegistroNovo(const std::function<std::optional<ProblemaDoRegistroNovo>(const RegistroNovo &)> &faz) override
    {
        while (!Novos.empty()) {
            const auto problema = faz(Tira(Novos, {}));
            if (!problema) {
                return true;
            }
            Lido.push_back(std::to_string(static_cast<int>(problema->Campo)) + ": " + problema->Frase);
        }
        return false;
    }
    std::optional<std::filesystem::path> EscolheRegistro() override { return Arquivo(); }
    std::optional<std::filesystem::path> EscolheCopia() override { return Arquivo(); }
    OpcaoDaFalta Falta(const std::string &frase) override
    {
        Lido.push_back("falta: " + frase);
        if (AntesDeTentar) {
            AntesDeTentar();
        }
        return Tira(NaFalta, OpcaoDaFalta::Sair);
    }
    std::optional<LugarDoTrabalho> EscolheLugar(const LugarDoTrabalho &agora) override
    {
        Lido.push_back("lugar: " + OndeFica(agora));
        return Lugares.empty() ? std::nullopt : Tira<std::optional<LugarDoTrabalho>>(Lugares, std::nullopt);
    }
    bool ConfiaNoServidor(const std::string &servidor, const std::string &digital) override
    {
        Lido.push_back("confia: " + servidor + " " + digital);
        return Tira(Respostas, false);
    }
    OpcaoSemServidor FaltaServidor(const std::string &frase) override
    {
        Lido.push_back("falta o servidor: " + frase);
        if (AntesDeTentar) {
            AntesDeTentar();
        }
        return Tira(SemServidor, OpcaoSemServidor::Sair);
    }
    bool Continua(const std::string &frase, const std::vector<std::string> &achados) override
    {
        Lido.push_back("achados: " + frase);
        Lido.insert(Lido.end(), achados.begin(), achados.end());
        return Tira(Respostas, false);
    }
    bool Aceita(const std::string &pergunta) override
    {
        Lido.push_back("aceita: " + pergunta);
        return Tira(Respostas, false);
    }
    void Avisa(const std::string &frase) override { Lido.push_back("avisa: " + frase); }
    void Progresso(double) override {}

  private:
    template <class T> static T Tira(std::deque<T> &fila, T senao)
    {
        if (fila.empty()) {
            return senao;
        }
        T primeiro = fila.front();
        fila.pop_front();
        return primeiro;
    }
    std::optional<std::filesystem::path> Arquivo()
    {
        return Arquivos.empty() ? std::nullopt : std::optional(Tira(Arquivos, {}));
    }
};

using Linhas = std::vector<std::string>;

// A fingerprint of that digit.
std::string Digital(char algarismo)
{
    std::string digital(2, algarismo);
    for (int par = 1; par < 32; ++par) {
        digital += std::string(":") + algarismo + algarismo;
    }
    return digital;
}

class InicioTeste : public testing::Test {
  protected:
    std::filesystem::path Em(const std::string &nome) const
    {
        return pasta.filePath(QString::fromStdString(nome)).toStdString();
    }
    std::filesystem::path Registro() const { return CaminhoDoRegistro(Em("d")); }
    Inicio Comeco()
    {
        return Inicio(
            Em("d"), preferencias, Manha,
            [](Servicos &servicos, const Inicio::Progresso &progresso) {
                servicos.CadastraCliente({1, "Amostra", {}, "RS"});
                progresso(1);
            },
            [this](const std::filesystem::path &registro, const PedidoDeRestauracao &pedido) {
                restauradas.push_back(std::filesystem::path(pedido.Arquivo).filename().string() + " em " +
                                      registro.filename().string());
                const DesfechoDaCopia desfecho = Restauracao(registro.string(), {}).Faz(pedido, Manha());
                if (!desfecho.Feita) {
                    pessoa.Avisa(desfecho.Frase);
                }
                return desfecho;
            },
            {[this](const rede::Endereco &servidor) {
                 const ServidorDeTeste &um = No(servidor);
                 return um.Digital;
             },
             [this](const rede::Endereco &servidor, const rede::Confianca &confianca) {
                 const ServidorDeTeste &um = No(servidor);
                 if (confianca.Autoridade.empty() && confianca.Digital != um.Digital) {
                     throw Falha(NumeroFalha::PermissaoNegada, "Rede", "O certificado é outro.");
                 }
                 conexoes.push_back(servidor.Texto() + " " + confianca.Autoridade);
                 return Servicos::Abre(um.Registro.string(), Manha);
             }});
    }
    // A server that answers, by the name of its machine.
    struct ServidorDeTeste {
        std::string Digital;
        std::filesystem::path Registro;
    };
    const ServidorDeTeste &No(const rede::Endereco &servidor) const
    {
        const auto um = servidores.find(servidor.Maquina);
        if (um == servidores.end()) {
            throw Falha(NumeroFalha::ErroDeAcesso, "Rede", "O servidor " + servidor.Texto() + " não respondeu.");
        }
        return um->second;
    }
    // Its registry's identifier.
    std::string PoeServidor(const std::string &maquina, const std::string &digital)
    {
        const std::string arquivo = maquina + std::to_string(servidores.size()) + digital.substr(0, 2) + ".db";
        const std::string identificador = Outro(arquivo);
        servidores[maquina] = {digital, Em(arquivo)};
        return identificador;
    }
    static LugarDoTrabalho Em50443(const std::string &maquina, const std::string &digital = "",
                                   const std::string &autoridade = "")
    {
        return {rede::Endereco{maquina}, digital, autoridade};
    }
    Ref<Servicos> Abre() { return Comeco().Abre(pessoa); }
    // A registry that the directory knows, closed.
    std::string Conhecido() { return Comeco().Cria(Novidade())->Identificador(); }
    // One that stands somewhere else.
    std::string Outro(const std::string &nome, TipoDeRegistro tipo = TipoDeRegistro::Registro)
    {
        return Servicos::Cria(Em(nome).string(), tipo, Manha)->Identificador();
    }
    void Some() { std::filesystem::rename(Registro(), Em("guardado.db")); }
    Linhas NoDiretorio(const std::string &nome) const
    {
        Linhas nomes;
        if (std::filesystem::exists(Em(nome))) {
            for (const auto &entrada : std::filesystem::directory_iterator(Em(nome))) {
                nomes.push_back(entrada.path().filename().string());
            }
        }
        std::sort(nomes.begin(), nomes.end());
        return nomes;
    }
    std::string Sql(const std::string &comando) const
    {
        const auto linhas = LinhasSql(Registro(), comando);
        return linhas.empty() ? "" : linhas.front();
    }

    QTemporaryDir pasta;
    Preferencias preferencias{Em("preferencias.ini")};
    PessoaDeTeste pessoa;
    Linhas restauradas;
    std::map<std::string, ServidorDeTeste> servidores;
    Linhas conexoes;
};

TEST_F(InicioTeste, FirstStart_PersonLeaves_NothingIsMade)
{
    EXPECT_TRUE(Abre().Nada());
    EXPECT_EQ(pessoa.Lido, Linhas{"começa"});
    EXPECT_FALSE(std::filesystem::exists(Em("d")));
}

TEST_F(InicioTeste, FirstStart_NewRegistry_HasTheClientAndTheAdministratorAndNothingElse)
{
    pessoa.Escolhas = {OpcaoDoInicio::Novo};
    pessoa.Novos = {Novidade()};
    Ref<Servicos> servicos = Abre();
    ASSERT_FALSE(servicos.Nada());
    EXPECT_EQ(servicos->Tipo(), TipoDeRegistro::Registro);
    const std::string identificador = servicos->Identificador();
    servicos = nullptr; // and what is open beside the file goes
    EXPECT_EQ(LinhasSql(Registro(), "SELECT CodCliente, Nome, UF FROM CLIENTE"),
              Linhas{"7|Autoridade Municipal de Trânsito|SP"});
    EXPECT_EQ(LinhasSql(Registro(), "SELECT Nome FROM SETOR ORDER BY Nome"), (Linhas{"Eletrônica", "Operações"}));
    EXPECT_EQ(LinhasSql(Registro(), "SELECT Usuario, Nome, CodCliente FROM USUARIO"), Linhas{"olga|Olga Reis|7"});
    EXPECT_EQ(Sql("SELECT COUNT(*) FROM EQUIPAMENTO"), "0");
    EXPECT_EQ(NoDiretorio("d"), Linhas{"registro.db"});
    EXPECT_EQ(preferencias.Registro(Em("d"))->Identificador, identificador);
    EXPECT_EQ(preferencias.Registro(Em("d"))->Caminho, Registro());
}

TEST_F(InicioTeste, FirstStart_NewRegistryThatCannotBe_SaysAtWhichFieldAndMakesNothing)
{
    const auto com = [](auto muda) {
        RegistroNovo novo = Novidade();
        muda(novo);
        return novo;
    };
    pessoa.Escolhas = {OpcaoDoInicio::Novo};
    pessoa.Novos = {com([](auto &n) { n.Cliente.CodCliente = 0; }),
                    com([](auto &n) { n.Cliente.Nome = "  "; }),
                    com([](auto &n) { n.Cliente.UF = "XX"; }),
                    com([](auto &n) { n.Usuario = " "; }),
                    com([](auto &n) { n.Nome = ""; }),
                    com([](auto &n) { n.Senha = "registro2026"; })};
    EXPECT_TRUE(Abre().Nada());
    ASSERT_EQ(pessoa.Lido.size(), 8U);
    EXPECT_EQ(pessoa.Lido[1], "0: Informe o código do cliente, um número de 1 a 999999.");
    EXPECT_EQ(pessoa.Lido[2], "1: Informe o nome do cliente.");
    EXPECT_EQ(pessoa.Lido[3], "2: Informe o estado do cliente, com as duas letras da sua sigla.");
    EXPECT_EQ(pessoa.Lido[4], "3: Informe o usuário com que o administrador entra.");
    EXPECT_EQ(pessoa.Lido[5], "4: Informe o nome do administrador.");
    EXPECT_EQ(pessoa.Lido[6].substr(0, 3), "5: ");
    EXPECT_FALSE(std::filesystem::exists(Em("d")));
}

TEST_F(InicioTeste, FirstStart_Sample_StandsApartAndLeavesTheQuestionForTheNextTime)
{
    pessoa.Escolhas = {OpcaoDoInicio::Amostra};
    Inicio inicio = Comeco();
    const std::string feita = inicio.Abre(pessoa)->Identificador();
    EXPECT_EQ(inicio.Diretorio(), Em("d") / "amostra");
    EXPECT_FALSE(std::filesystem::exists(Registro()));
    EXPECT_FALSE(preferencias.Registro(Em("d")));

    pessoa.Escolhas = {OpcaoDoInicio::Amostra};
    const Ref<Servicos> deNovo = Abre();
    EXPECT_EQ(deNovo->Identificador(), feita);
    EXPECT_EQ(deNovo->Tipo(), TipoDeRegistro::Amostra);
    EXPECT_EQ(pessoa.Lido, (Linhas{"começa", "começa"}));
}

TEST_F(InicioTeste, FirstStart_Existing_IsRememberedAndOpenedByItselfTheNextTime)
{
    const std::string outro = Outro("outro.db");
    pessoa.Escolhas = {OpcaoDoInicio::Existente};
    pessoa.Arquivos = {Em("outro.db")};
    EXPECT_EQ(Abre()->Identificador(), outro);
    EXPECT_EQ(Abre()->Identificador(), outro);
    EXPECT_EQ(pessoa.Lido, Linhas{"começa"});
}

TEST_F(InicioTeste, FirstStart_FileThatIsNoRegistry_IsToldAndAskedAgain)
{
    std::ofstream(Em("texto.db")) << "isto não é um registro, e é comprido o bastante para que se veja logo";
    std::ofstream(Em("vazio.db")).flush();
    pessoa.Escolhas = {OpcaoDoInicio::Existente, OpcaoDoInicio::Existente, OpcaoDoInicio::Existente};
    pessoa.Arquivos = {Em("texto.db"), Em("vazio.db")};
    EXPECT_TRUE(Abre().Nada());
    ASSERT_EQ(pessoa.Lido.size(), 6U);
    for (const std::size_t qual : {1U, 3U}) {
        EXPECT_EQ(pessoa.Lido[qual].substr(0, 7), "avisa: ");
        EXPECT_NE(pessoa.Lido[qual].find(qual == 1 ? "texto.db" : "vazio.db"), std::string::npos) << pessoa.Lido[qual];
    }
    EXPECT_EQ(std::filesystem::file_size(Em("vazio.db")), 0U);
    EXPECT_FALSE(preferencias.Registro(Em("d")));
}

TEST_F(InicioTeste, Registry_OfBeforeThereWereSettings_IsOpenedAndRemembered)
{
    std::filesystem::create_directory(Em("d"));
    const std::string feito = Outro("d/registro.db");
    EXPECT_EQ(Abre()->Identificador(), feito);
    EXPECT_EQ(pessoa.Lido, Linhas{});
    EXPECT_EQ(preferencias.Registro(Em("d"))->Identificador, feito);
}

TEST_F(InicioTeste, Sample_InTheRegistrysPlace_IsNoRegistry)
{
    std::filesystem::create_directory(Em("d"));
    const std::string amostra = Outro("d/registro.db", TipoDeRegistro::Amostra);
    pessoa.Escolhas = {OpcaoDoInicio::Amostra};
    Inicio inicio = Comeco();
    EXPECT_EQ(inicio.Abre(pessoa)->Identificador(), amostra);
    EXPECT_EQ(inicio.Diretorio(), Em("d"));

    pessoa.Escolhas = {OpcaoDoInicio::Novo};
    pessoa.Novos = {Novidade()};
    EXPECT_EQ(Abre()->Tipo(), TipoDeRegistro::Registro);
    EXPECT_EQ(NoDiretorio("d"), (Linhas{"registro.20261120-093000.db", "registro.db"}));
    EXPECT_EQ(LinhasSql(Em("d") / "registro.20261120-093000.db", "SELECT Identificador FROM REGISTRO"),
              Linhas{amostra});
}

TEST_F(InicioTeste, KnownRegistry_IsNotThere_IsToldAndNothingIsMade)
{
    Conhecido();
    Some();
    EXPECT_TRUE(Abre().Nada());
    ASSERT_EQ(pessoa.Lido.size(), 1U);
    EXPECT_EQ(pessoa.Lido[0].substr(0, 7), "falta: ");
    EXPECT_NE(pessoa.Lido[0].find(Registro().string()), std::string::npos) << pessoa.Lido[0];
    EXPECT_EQ(NoDiretorio("d"), Linhas{});
}

TEST_F(InicioTeste, KnownRegistry_WithItsWholeDirectoryGone_IsToldAndNothingIsMade)
{
    Conhecido();
    std::filesystem::rename(Em("d"), Em("desmontado"));
    EXPECT_TRUE(Abre().Nada());
    EXPECT_EQ(pessoa.Lido.size(), 1U);
    EXPECT_FALSE(std::filesystem::exists(Em("d")));
}

// The directory of the registry is a link to a share that comes and goes.
TEST_F(InicioTeste, KnownRegistry_BehindALinkThatLeadsNowhere_IsTold)
{
    std::filesystem::create_directory(Em("montado"));
    std::filesystem::create_directory_symlink(Em("montado"), Em("d"));
    Conhecido();
    std::filesystem::rename(Em("montado"), Em("desmontado"));
    EXPECT_TRUE(Abre().Nada());
    ASSERT_EQ(pessoa.Lido.size(), 1U);
    EXPECT_EQ(pessoa.Lido[0].substr(0, 7), "falta: ");
}

TEST_F(InicioTeste, KnownRegistry_ComesBack_IsOpenedByTryingAgain)
{
    const std::string antes = Conhecido();
    Some();
    pessoa.AntesDeTentar = [&] { std::filesystem::rename(Em("guardado.db"), Registro()); };
    pessoa.NaFalta = {OpcaoDaFalta::TentarDeNovo};
    EXPECT_EQ(Abre()->Identificador(), antes);
    EXPECT_EQ(pessoa.Lido.size(), 1U);
}

TEST_F(InicioTeste, KnownRegistry_MovedElsewhere_IsTakenByItsIdentifierAndRememberedThere)
{
    const std::string antes = Conhecido();
    Some();
    pessoa.NaFalta = {OpcaoDaFalta::EscolherArquivo};
    pessoa.Arquivos = {Em("guardado.db")};
    EXPECT_EQ(Abre()->Identificador(), antes);
    EXPECT_EQ(pessoa.Lido.size(), 1U) << "nothing is asked about the same registry";
    EXPECT_EQ(preferencias.Registro(Em("d"))->Caminho, Em("guardado.db"));
}

TEST_F(InicioTeste, KnownRegistry_FileNotChosen_IsToldAgain)
{
    Conhecido();
    Some();
    pessoa.NaFalta = {OpcaoDaFalta::EscolherArquivo};
    EXPECT_TRUE(Abre().Nada());
    EXPECT_EQ(pessoa.Lido.size(), 2U);
}

TEST_F(InicioTeste, OtherRegistry_InThePlaceOfTheKnownOne_IsAskedAboutAndNotTakenByANo)
{
    const std::string antes = Conhecido();
    Some();
    const std::string outro = Outro("d/registro.db");
    EXPECT_TRUE(Abre().Nada());
    ASSERT_EQ(pessoa.Lido.size(), 2U);
    EXPECT_EQ(pessoa.Lido[0], "aceita: O registro que está em " + Registro().string() +
                                  " não é aquele em que se trabalhava aqui: é o de identificador " + outro +
                                  ", e o de antes era o de identificador " + antes +
                                  ". Trabalhar neste registro de agora em diante?");
    EXPECT_EQ(pessoa.Lido[1].substr(0, 7), "falta: ");
    EXPECT_EQ(preferencias.Registro(Em("d"))->Identificador, antes);

    pessoa.Respostas = {true};
    EXPECT_EQ(Abre()->Identificador(), outro);
    EXPECT_EQ(preferencias.Registro(Em("d"))->Identificador, outro);
}

TEST_F(InicioTeste, Sample_InThePlaceOfTheKnownOne_IsNeverRemembered)
{
    const std::string antes = Conhecido();
    Some();
    const std::string amostra = Outro("d/registro.db", TipoDeRegistro::Amostra);
    pessoa.Respostas = {true};
    EXPECT_EQ(Abre()->Identificador(), amostra);
    EXPECT_NE(pessoa.Lido[0].find("é uma amostra, de identificador " + amostra), std::string::npos) << pessoa.Lido[0];
    EXPECT_EQ(preferencias.Registro(Em("d"))->Identificador, antes);
}

TEST_F(InicioTeste, EmptyFile_InThePlaceOfTheKnownOne_IsToldAndStaysAsItIs)
{
    Conhecido();
    Some();
    std::ofstream(Registro()).flush();
    EXPECT_TRUE(Abre().Nada());
    ASSERT_EQ(pessoa.Lido.size(), 1U);
    EXPECT_EQ(pessoa.Lido[0].substr(0, 7), "falta: ");
    EXPECT_EQ(std::filesystem::file_size(Registro()), 0U);
}

TEST_F(InicioTeste, File_WhereNoRegistryIsKnown_IsOpenedAndRemembered)
{
    const std::string identificador = Outro("outro.db");
    const auto aberto = Comeco().AbreArquivo(Em("outro.db"), pessoa);
    ASSERT_TRUE(aberto);
    EXPECT_EQ(aberto->Identificador(), identificador);
    EXPECT_EQ(pessoa.Lido, Linhas{});
    EXPECT_EQ(preferencias.Registro(Em("d"))->Caminho, Em("outro.db"));
}

TEST_F(InicioTeste, File_ThatIsTheKnownRegistry_IsOpenedWithoutAQuestion)
{
    const std::string identificador = Conhecido();
    std::filesystem::create_symlink(Registro(), Em("atalho.db"));
    const auto aberto = Comeco().AbreArquivo(Em("atalho.db"), pessoa);
    ASSERT_TRUE(aberto);
    EXPECT_EQ(aberto->Identificador(), identificador);
    EXPECT_EQ(pessoa.Lido, Linhas{});
    EXPECT_EQ(preferencias.Registro(Em("d"))->Caminho, Registro());
}

TEST_F(InicioTeste, File_OfAnotherRegistry_TakesThePlaceOfTheKnownOneByAYesOnly)
{
    const std::string identificador = Conhecido();
    const std::string outro = Outro("outro.db");
    const std::string pergunta = "aceita: Aqui se trabalha no registro que está em " + Registro().string() +
                                 ". Abrir o que está em " + Em("outro.db").string() +
                                 " e trabalhar nele de agora em diante? Para trazer uma cópia de volta, responda não e "
                                 "use Restaurar, no menu Registro.";
    EXPECT_EQ(Comeco().AbreArquivo(Em("outro.db"), pessoa)->Identificador(), identificador);
    EXPECT_EQ(pessoa.Lido, Linhas{pergunta});
    EXPECT_EQ(preferencias.Registro(Em("d"))->Caminho, Registro());

    pessoa.Respostas = {true};
    EXPECT_EQ(Comeco().AbreArquivo(Em("outro.db"), pessoa)->Identificador(), outro);
    EXPECT_EQ(preferencias.Registro(Em("d"))->Caminho, Em("outro.db"));
}

TEST_F(InicioTeste, File_ThatIsNoRegistryOrIsNotThere_IsToldAndTheKnownOneIsOpened)
{
    const std::string identificador = Conhecido();
    std::ofstream(Em("texto.db")) << "nada disso";
    for (const char *nome : {"texto.db", "falta.db"}) {
        pessoa.Lido.clear();
        pessoa.Respostas = {true};
        EXPECT_EQ(Comeco().AbreArquivo(Em(nome), pessoa)->Identificador(), identificador);
        ASSERT_EQ(pessoa.Lido.size(), 2U) << nome;
        EXPECT_EQ(pessoa.Lido[1].rfind("avisa: ", 0), 0U) << pessoa.Lido[1];
        EXPECT_NE(pessoa.Lido[1].find(nome), std::string::npos) << pessoa.Lido[1];
    }
    EXPECT_FALSE(std::filesystem::exists(Em("falta.db")));
    EXPECT_EQ(preferencias.Registro(Em("d"))->Caminho, Registro());
}

TEST_F(InicioTeste, Check_OfAWholeRegistry_TellsNothing)
{
    Inicio comeco = Comeco();
    comeco.Cria(Novidade());
    EXPECT_TRUE(comeco.Confere(pessoa));
    EXPECT_EQ(pessoa.Lido, Linhas{});
}

TEST_F(InicioTeste, Check_WithFindings_GoesOnByAYesOnly)
{
    Inicio comeco = Comeco();
    comeco.Cria(Novidade());
    LinhasSql(Registro(), "UPDATE USUARIO SET Nome = 'Outra'");
    EXPECT_FALSE(comeco.Confere(pessoa));
    ASSERT_EQ(pessoa.Lido.size(), 2U);
    EXPECT_EQ(pessoa.Lido[0].substr(0, 9), "achados: ");
    EXPECT_NE(pessoa.Lido[1].find("Outra"), std::string::npos) << pessoa.Lido[1];
    pessoa.Respostas = {true};
    EXPECT_TRUE(comeco.Confere(pessoa));
}

TEST_F(InicioTeste, DirectoryOfWork_WhereNothingCanBeWritten_IsAPrivateOneThatGoesAway)
{
    std::filesystem::create_directory(Em("d"));
    EXPECT_EQ(DiretorioDeTrabalho(Em("d")).Caminho(), Em("d"));
    EXPECT_EQ(DiretorioDeTrabalho(Em("ainda-nao")).Caminho(), Em("ainda-nao"));
    AbreATodos(Em("d")); // with what leads there
    std::filesystem::permissions(Em("d"), std::filesystem::perms(0555));
    std::filesystem::path outro;
    {
        const SemPrivilegio sem;
        const DiretorioDeTrabalho diretorio(Em("d"));
        outro = diretorio.Caminho();
        EXPECT_NE(outro, Em("d"));
        EXPECT_EQ(ModoDe(outro), 0700U);
    }
    EXPECT_FALSE(std::filesystem::exists(outro));
    std::filesystem::permissions(Em("d"), std::filesystem::perms(0700));
}

TEST_F(InicioTeste, Restoring_PutsTheCopyInThePlaceOfTheKnownOneAndOpensIt)
{
    const std::string antes = Conhecido();
    Some();
    pessoa.NaFalta = {OpcaoDaFalta::RestaurarCopia};
    pessoa.Arquivos = {Em("guardado.db")};
    EXPECT_EQ(Abre()->Identificador(), antes);
    EXPECT_EQ(restauradas, Linhas{"guardado.db em registro.db"});
}

TEST_F(InicioTeste, Restoring_ACopyOfAnotherRegistry_IsDoneByAYesOnly)
{
    Conhecido();
    const std::string outro = Outro("outro.db");
    Some();
    pessoa.NaFalta = {OpcaoDaFalta::RestaurarCopia};
    pessoa.Arquivos = {Em("outro.db")};
    EXPECT_TRUE(Abre().Nada());
    EXPECT_FALSE(std::filesystem::exists(Registro()));

    pessoa.NaFalta = {OpcaoDaFalta::RestaurarCopia};
    pessoa.Arquivos = {Em("outro.db")};
    pessoa.Respostas = {true, true}; // restore it, and work in it
    EXPECT_EQ(Abre()->Identificador(), outro);
}

TEST_F(InicioTeste, Restoring_WhatWasOpenedLast_KeepsWhatItReplaces)
{
    Inicio comeco = Comeco();
    const std::string antes = comeco.Cria(Novidade())->Identificador();
    std::filesystem::copy_file(Registro(), Em("copia.db"));
    EXPECT_EQ(comeco.Registro(), Registro());
    comeco.Restaura(Em("copia.db"), pessoa);
    EXPECT_EQ(pessoa.Lido, Linhas{});
    EXPECT_EQ(NoDiretorio("d").size(), 2U);
    EXPECT_EQ(comeco.Abre(pessoa)->Identificador(), antes);
}

TEST_F(InicioTeste, Restoring_Fails_IsToldWithTheChoicesAgain)
{
    Conhecido();
    Some();
    pessoa.NaFalta = {OpcaoDaFalta::RestaurarCopia};
    pessoa.Arquivos = {Em("nenhum.db")};
    EXPECT_TRUE(Abre().Nada());
    ASSERT_EQ(pessoa.Lido.size(), 3U);
    EXPECT_EQ(pessoa.Lido[1].substr(0, 7), "avisa: ");
    EXPECT_EQ(pessoa.Lido[2].substr(0, 7), "falta: ");
}

std::string FraseDe(const std::function<void()> &acao)
{
    try {
        acao();
    } catch (...) {
        return FalhaCorrente().Descricao;
    }
    return "";
}

TEST_F(InicioTeste, Making_WhereARegistryIs_IsRefusedAndLeavesIt)
{
    const std::string antes = Conhecido();
    EXPECT_EQ(FraseDe([&] { Comeco().Cria(Novidade()); }), "O diretório " + Em("d").string() +
                                                               " já tem um registro, que fica em " +
                                                               Registro().string() + ". Nada é criado no lugar dele.");
    EXPECT_EQ(Sql("SELECT Identificador FROM REGISTRO"), antes);
}

TEST_F(InicioTeste, Making_WhereTheKnownRegistryIsAbsent_IsRefused)
{
    Conhecido();
    Some();
    EXPECT_EQ(FraseDe([&] { Comeco().Cria(Novidade()); }),
              "O diretório " + Em("d").string() + " já tem um registro, que fica em " + Registro().string() +
                  " e não está lá agora. Nada é criado no lugar dele.");
    EXPECT_EQ(NoDiretorio("d"), Linhas{});
}

TEST_F(InicioTeste, Making_WhereNobodyRemembersTheRegistry_IsRefused)
{
    std::filesystem::create_directory(Em("d"));
    const std::string antes = Outro("d/registro.db");
    EXPECT_EQ(FraseDe([&] { Comeco().Cria(Novidade()); }), "Já há um registro em " + Registro().string() + ".");
    EXPECT_EQ(Sql("SELECT Identificador FROM REGISTRO"), antes);
}

TEST_F(InicioTeste, Making_ThatWasInterrupted_IsBegunAnew)
{
    std::filesystem::create_directory(Em("d"));
    Outro("d/registro.em-preparo.db");
    Comeco().Cria(Novidade());
    EXPECT_EQ(Sql("SELECT COUNT(*) FROM USUARIO"), "1");
    EXPECT_EQ(NoDiretorio("d"), Linhas{"registro.db"});
}

TEST_F(InicioTeste, Making_WhileAnotherDeskMakesOne_IsRefused)
{
    std::filesystem::create_directory(Em("d"));
    QLockFile outra(pasta.filePath("d/registro.em-preparo.tranca"));
    ASSERT_TRUE(outra.lock());
    EXPECT_EQ(FraseDe([&] { Comeco().Cria(Novidade()); }),
              "Outro programa está criando um registro em " + Em("d").string() + ". Espere que ele termine.");
    EXPECT_FALSE(std::filesystem::exists(Registro()));
}

TEST_F(InicioTeste, Making_ADirectory_LetsOnlyItsOwnerIn)
{
    Conhecido();
    EXPECT_EQ(std::filesystem::status(Em("d")).permissions(), std::filesystem::perms::owner_all);
}

TEST_F(InicioTeste, NewSample_OverAnOldOne_KeepsThatBeside)
{
    const std::string primeira = Comeco().CriaAmostra([](double) {})->Identificador();
    Inicio inicio = Comeco();
    const std::string segunda = inicio.CriaAmostra([](double) {})->Identificador();
    const std::string terceira = Comeco().CriaAmostra([](double) {})->Identificador();
    EXPECT_EQ(inicio.Diretorio(), Em("d") / "amostra");
    const auto quem = [&](const std::string &nome) {
        return LinhasSql(Em("d") / "amostra" / nome, "SELECT Identificador FROM REGISTRO").at(0);
    };
    EXPECT_EQ(quem("registro.20261120-093000.db"), primeira);
    EXPECT_EQ(quem("registro.20261120-093000-2.db"), segunda);
    EXPECT_EQ(quem("registro.db"), terceira);
}

TEST_F(InicioTeste, NewSample_WhereARegistryIs_IsRefused)
{
    std::filesystem::create_directories(Em("d") / "amostra");
    const std::string registro = Outro("d/amostra/registro.db");
    EXPECT_EQ(FraseDe([&] { Comeco().CriaAmostra([](double) {}); }),
              "O registro que está em " + (Em("d") / "amostra/registro.db").string() + " não é uma amostra.");
    EXPECT_EQ(LinhasSql(Em("d") / "amostra/registro.db", "SELECT Identificador FROM REGISTRO"), Linhas{registro});
}

TEST_F(InicioTeste, FirstStart_AtAServer_AsksForTheFingerprintOnceAndKeepsIt)
{
    const std::string identificador = PoeServidor("central", Digital('A'));
    pessoa.Escolhas = {OpcaoDoInicio::Servidor};
    pessoa.Lugares = {Em50443("central")};
    pessoa.Respostas = {true};
    Inicio inicio = Comeco();
    ASSERT_FALSE(inicio.Abre(pessoa).Nada());
    EXPECT_EQ(inicio.Lugar().Servidor, rede::Endereco{"central"});
    EXPECT_EQ(inicio.Diretorio(), Em("d") / "servidores" / identificador);
    EXPECT_TRUE(inicio.Confere(pessoa)); // that is the server's to do
    EXPECT_EQ(pessoa.Lido, (Linhas{"começa", "lugar: servidor :50443", "confia: central:50443 " + Digital('A')}));
    EXPECT_EQ(preferencias.Confianca(rede::Endereco{"central"}).Digital, Digital('A'));
    EXPECT_FALSE(std::filesystem::exists(Registro()));

    pessoa.Lido.clear();
    Inicio outroDia = Comeco();
    EXPECT_EQ(outroDia.Abre(pessoa)->Identificador(), identificador);
    EXPECT_EQ(pessoa.Lido, Linhas{});
    EXPECT_EQ(outroDia.Lugar().Servidor, rede::Endereco{"central"});
}

TEST_F(InicioTeste, FirstStart_FingerprintThatIsNotTheOne_ConnectsToNothingAndKeepsNothing)
{
    PoeServidor("central", Digital('A'));
    pessoa.Escolhas = {OpcaoDoInicio::Servidor};
    pessoa.Lugares = {Em50443("central")};
    pessoa.Respostas = {false};
    EXPECT_TRUE(Abre().Nada());
    EXPECT_EQ(conexoes, Linhas{});
    EXPECT_EQ(pessoa.Lido.at(3), "avisa: A digital do servidor central:50443 não foi aceita, e nada foi enviado a ele. "
                                 "Confirme-a com quem administra o servidor.");
    EXPECT_EQ(pessoa.Lido.back(), "começa");
    EXPECT_EQ(preferencias.Confianca(rede::Endereco{"central"}).Digital, "");
    EXPECT_FALSE(preferencias.Servidor(Em("d")));
}

TEST_F(InicioTeste, Server_WithAnotherCertificate_IsRefusedUntilItsNewFingerprintIsTold)
{
    const std::string identificador = PoeServidor("central", Digital('A'));
    EXPECT_FALSE(Comeco().AbreLugar(Em50443("central", Digital('A')), pessoa).Nada());
    servidores["central"].Digital = Digital('B');
    conexoes.clear();
    pessoa.SemServidor = {OpcaoSemServidor::TentarDeNovo, OpcaoSemServidor::MudarDeLugar, OpcaoSemServidor::Sair};
    pessoa.Lugares = {Em50443("central", Digital('C'))}; // mistyped
    EXPECT_TRUE(Abre().Nada());
    EXPECT_EQ(conexoes, Linhas{});
    const std::string recusa =
        "falta o servidor: O certificado do servidor central:50443 não é o que se espera, e nada foi enviado a ele. "
        "Pode "
        "ser outra máquina no lugar da certa. Se quem administra o servidor trocou o certificado, peça-lhe a digital "
        "nova, que o servidor escreve quando inicia, e informe-a em Mudar de registro.";
    EXPECT_EQ(pessoa.Lido, (Linhas{recusa, recusa, "lugar: servidor central:50443", recusa}));
    EXPECT_EQ(preferencias.Confianca(rede::Endereco{"central"}).Digital, Digital('A'));

    pessoa.Lido.clear();
    pessoa.SemServidor = {OpcaoSemServidor::MudarDeLugar};
    pessoa.Lugares = {Em50443("central", Digital('B'))};
    EXPECT_EQ(Abre()->Identificador(), identificador);
    EXPECT_EQ(preferencias.Confianca(rede::Endereco{"central"}).Digital, Digital('B'));
}

TEST_F(InicioTeste, Server_ThatDoesNotAnswer_IsTriedAgainOrLeftForThisComputer)
{
    Conhecido();
    PoeServidor("central", Digital('A'));
    EXPECT_FALSE(Comeco().AbreLugar(Em50443("central", Digital('A')), pessoa).Nada());
    const auto central = servidores["central"];
    servidores.clear();
    pessoa.SemServidor = {OpcaoSemServidor::TentarDeNovo};
    pessoa.AntesDeTentar = [&] { servidores["central"] = central; };
    EXPECT_FALSE(Abre().Nada());
    EXPECT_EQ(pessoa.Lido, Linhas{"falta o servidor: O servidor central:50443 não respondeu."});

    pessoa.AntesDeTentar = nullptr;
    servidores.clear();
    EXPECT_TRUE(Abre().Nada()); // leaves
    EXPECT_EQ(preferencias.Servidor(Em("d")), rede::Endereco{"central"});
    pessoa.SemServidor = {OpcaoSemServidor::MudarDeLugar, OpcaoSemServidor::MudarDeLugar};
    pessoa.Lugares = {std::nullopt, LugarDoTrabalho{}};
    Inicio inicio = Comeco();
    EXPECT_FALSE(inicio.Abre(pessoa).Nada());
    EXPECT_FALSE(inicio.Lugar().Servidor);
    EXPECT_EQ(inicio.Registro(), Registro());
    EXPECT_EQ(inicio.Diretorio(), Em("d"));
    EXPECT_FALSE(preferencias.Servidor(Em("d")));
}

TEST_F(InicioTeste, Server_WithAnotherRegistry_IsTakenByAYesOnly)
{
    const std::string primeiro = PoeServidor("central", Digital('A'));
    EXPECT_FALSE(Comeco().AbreLugar(Em50443("central", Digital('A')), pessoa).Nada());
    const std::string segundo = PoeServidor("central", Digital('A'));
    ASSERT_NE(primeiro, segundo);
    const std::string frase = "O registro do servidor central:50443 não é aquele em que se trabalhava: é o de "
                              "identificador " +
                              segundo + ", e o de antes era o de identificador " + primeiro + ".";
    pessoa.Respostas = {false};
    EXPECT_TRUE(Abre().Nada());
    EXPECT_EQ(pessoa.Lido, (Linhas{"aceita: " + frase + " Trabalhar neste registro de agora em diante?",
                                   "falta o servidor: " + frase}));
    EXPECT_EQ(preferencias.RegistroNo(rede::Endereco{"central"}), primeiro);
    pessoa.Respostas = {true};
    Inicio inicio = Comeco();
    EXPECT_FALSE(inicio.Abre(pessoa).Nada());
    EXPECT_EQ(inicio.Diretorio().filename(), segundo); // each registry has a directory of its own
}

TEST_F(InicioTeste, Server_ByAnAuthority_AsksForNoFingerprint)
{
    PoeServidor("central", Digital('A'));
    EXPECT_FALSE(Comeco().AbreLugar(Em50443("central", "", "/etc/autoridade.pem"), pessoa).Nada());
    servidores["central"].Digital = Digital('B'); // renewed by the same authority
    EXPECT_FALSE(Abre().Nada());
    EXPECT_EQ(pessoa.Lido, Linhas{});
    EXPECT_EQ(conexoes, (Linhas{"central:50443 /etc/autoridade.pem", "central:50443 /etc/autoridade.pem"}));
}

TEST_F(InicioTeste, Server_OfThisComputerWithoutACertificate_AsksNothing)
{
    PoeServidor("localhost", "");
    EXPECT_FALSE(Comeco().AbreLugar(Em50443("localhost"), pessoa).Nada());
    EXPECT_EQ(pessoa.Lido, Linhas{});
}

TEST_F(InicioTeste, AnotherFile_WhereTheWorkIsAtAServer_IsAskedFor)
{
    PoeServidor("central", Digital('A'));
    EXPECT_FALSE(Comeco().AbreLugar(Em50443("central", Digital('A')), pessoa).Nada());
    Outro("avulso.db");
    pessoa.Respostas = {false, true};
    Inicio inicio = Comeco();
    EXPECT_FALSE(inicio.AbreArquivo(Em("avulso.db"), pessoa).Nada());
    EXPECT_TRUE(inicio.Lugar().Servidor);
    EXPECT_EQ(
        pessoa.Lido.at(0).find("aceita: Aqui se trabalha no registro do servidor central:50443. Abrir o que está"), 0U);
    EXPECT_FALSE(inicio.AbreArquivo(Em("avulso.db"), pessoa).Nada());
    EXPECT_FALSE(inicio.Lugar().Servidor);
    EXPECT_FALSE(preferencias.Servidor(Em("d")));
}

TEST_F(InicioTeste, CommandOnTheFile_WhereTheWorkIsAtAServer_IsRefused)
{
    EXPECT_NO_THROW(ExigeRegistroDaqui(Em("d"), preferencias));
    preferencias.LembraServidor(Em("d"), rede::Endereco{"central"});
    EXPECT_EQ(FraseDe([&] { ExigeRegistroDaqui(Em("d"), preferencias); }),
              "O diretório " + Em("d").string() +
                  " trabalha no registro do servidor central:50443. O que se faz com um registro inteiro se faz na "
                  "máquina em que ele está, com o registro-servidor.");
}

TEST_F(InicioTeste, Absence_OfTheFile_MayLeadToAServer)
{
    Conhecido();
    Some();
    PoeServidor("central", Digital('A'));
    pessoa.NaFalta = {OpcaoDaFalta::MudarDeLugar, OpcaoDaFalta::MudarDeLugar};
    pessoa.Lugares = {LugarDoTrabalho{}, Em50443("central", Digital('A'))};
    Inicio inicio = Comeco();
    EXPECT_FALSE(inicio.Abre(pessoa).Nada());
    EXPECT_TRUE(inicio.Lugar().Servidor);
}

TEST(LugarDoTrabalho, Server_AsItWasTyped_IsAPlaceOrSaysWhatIsWrongAndWhere)
{
    ProblemaDoLugar problema;
    const auto lugar = LeServidor(" central:1234 ", "", "", problema);
    ASSERT_TRUE(lugar);
    EXPECT_EQ(OndeFica(*lugar), "servidor central:1234");
    EXPECT_EQ(OndeFica({}), "este computador");
    EXPECT_FALSE(LeServidor("", "", "", problema));
    EXPECT_EQ(problema.Campo, CampoDoLugar::Servidor);
    EXPECT_FALSE(LeServidor("central:zero", "", "", problema));
    EXPECT_EQ(problema.Frase, "A porta do servidor é um número de 1 a 65535: \"máquina:porta\".");
    EXPECT_FALSE(LeServidor("central", "AB:CD", "", problema));
    EXPECT_EQ(problema.Campo, CampoDoLugar::Digital);
    EXPECT_FALSE(LeServidor("central", "", "/não/há/isto.pem", problema));
    EXPECT_EQ(problema.Campo, CampoDoLugar::Autoridade);
    EXPECT_FALSE(LeServidor("central", Digital('A'), "/proc/self/status", problema));
    EXPECT_EQ(problema.Frase, "Informe a digital ou o arquivo da autoridade, e não os dois.");
}

TEST(LugarDoTrabalho, Fingerprint_HoweverItIsWritten_IsTheSame)
{
    std::string semPontos;
    for (const char letra : Digital('a')) {
        if (letra != ':') {
            semPontos += letra;
        }
    }
    EXPECT_EQ(LeDigital(semPontos), Digital('A'));
    EXPECT_EQ(LeDigital("  " + semPontos.substr(0, 32) + "\n" + semPontos.substr(32) + "\n"), Digital('A'));
    EXPECT_EQ(LeDigital(semPontos + "0"), std::nullopt);
    EXPECT_EQ(LeDigital(semPontos.substr(1)), std::nullopt);
    EXPECT_EQ(LeDigital("g" + semPontos.substr(1)), std::nullopt);
    EXPECT_EQ(LeDigital(""), std::nullopt);
}

TEST_F(InicioTeste, Settings_KnowADirectoryHoweverItIsWritten)
{
    preferencias.LembraRegistro(Em("d"), {Registro(), "abc"});
    EXPECT_TRUE(preferencias.Registro(Em("d/")));
    EXPECT_TRUE(preferencias.Registro(Em("x/../d")));
    EXPECT_TRUE(Preferencias(Em("preferencias.ini")).Registro(Em("d")));
    EXPECT_FALSE(preferencias.Registro(Em("D")));
    EXPECT_FALSE(preferencias.Registro(Em("d/e")));
}

TEST_F(InicioTeste, Settings_StationIsMadeOnceAndIsAnotherForAnotherUser)
{
    const std::string estacao = preferencias.Estacao();
    EXPECT_EQ(estacao.size(), 32U);
    EXPECT_EQ(preferencias.Estacao(), estacao);
    EXPECT_EQ(Preferencias(Em("preferencias.ini")).Estacao(), estacao);
    EXPECT_NE(Preferencias(Em("outras.ini")).Estacao(), estacao);
}

TEST_F(InicioTeste, Settings_ThatCannotBeWritten_AreAFault)
{
    std::ofstream(Em("arquivo")) << "x";
    Preferencias semLugar(Em("arquivo") / "preferencias.ini");
    EXPECT_NE(FraseDe([&] { semLugar.Estacao(); }).find("As preferências do usuário não puderam ser gravadas"),
              std::string::npos);
}

TEST_F(InicioTeste, Settings_MinutesUntilTheDeskLocks_StayWithinReason)
{
    EXPECT_EQ(preferencias.MinutosAteTravar(), 15);
    for (const auto &[dado, fica] : {std::pair(0, 0), std::pair(5, 5), std::pair(-3, 0), std::pair(99999, 1440)}) {
        preferencias.DefineMinutosAteTravar(dado);
        EXPECT_EQ(preferencias.MinutosAteTravar(), fica);
    }
    std::ofstream(Em("estranhas.ini")) << "[General]\nminutosAteTravar=muitos\n";
    EXPECT_EQ(Preferencias(Em("estranhas.ini")).MinutosAteTravar(), 15);
}

} // namespace
