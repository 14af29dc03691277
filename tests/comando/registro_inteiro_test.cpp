#include "tests/comando/ComandoTeste.h"

#include "services/Cabeca.h"
#include "services/Conferidor.h"
#include "tests/services/PastaDeTeste.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <utility>

namespace {

using comando::Codigo;

// What is done with a registry as a whole.
class RegistroInteiroTeste : public ComandoTeste {
  protected:
    RegistroInteiroTeste() { Povoa(); }
    void Povoa(const std::string &numero = "C-1")
    {
        const auto ana = Registro.Sessao("ana");
        IncluiComSensores(ana, {{AfericaoDe(numero, DataDe(1, 1, 2026), DataDe(30, 6, 2026))}});
    }
    // The head of now, in a file.
    std::string Cabeca(const char *nome)
    {
        std::ofstream(Em(nome)) << SemEntrar({"cabeca"}).Resposta;
        return Em(nome);
    }
    // A row that the services did not write.
    void Estraga() { Registro.Sql("UPDATE EQUIPAMENTO SET Descricao = 'Outra'"); }
};

TEST_F(RegistroInteiroTeste, Confere_SoundFile_ReportsAsTheDeskDoesAndEndsWith0)
{
    const Terminado terminado = SemEntrar({"confere"});
    EXPECT_EQ(terminado.Como, Codigo::Feito);
    EXPECT_EQ(terminado.Frases, "");
    const auto dela = mesa::ComandoDeConferencia::Confere(Registro.Caminho(), "", mesa::Instante(Registro.Relogio));
    EXPECT_EQ(dela.Codigo, 0);
    EXPECT_EQ(terminado.Resposta, dela.Texto);
    EXPECT_NE(terminado.Resposta.find("O registro está inteiro"), std::string::npos);

    const nlohmann::json lido = SemEntrar({"confere", "--json"}).Json();
    EXPECT_EQ(lido["inteiro"], true);
    EXPECT_TRUE(lido["problemas"].empty());
    EXPECT_GT(lido["historico"]["entradas"], 0);
}

TEST_F(RegistroInteiroTeste, Confere_ARowWrittenPastTheServices_EndsWith1AndTellsIt)
{
    Estraga();
    const Terminado terminado = SemEntrar({"confere"});
    EXPECT_EQ(terminado.Como, Codigo::Nao);
    EXPECT_NE(terminado.Resposta.find("R-001"), std::string::npos);
    EXPECT_NE(terminado.Resposta.find("Problemas:"), std::string::npos);
    const Terminado json = SemEntrar({"confere", "--json"});
    EXPECT_EQ(json.Como, Codigo::Nao);
    EXPECT_EQ(json.Json()["inteiro"], false);
    EXPECT_EQ(json.Json()["problemas"].size(), 1u);
}

TEST_F(RegistroInteiroTeste, Confere_WithAHead_HoldsTheHistoryAgainstIt)
{
    const std::string cabeca = Cabeca("cabeca.txt");
    Registro.Cadastra("bruno");
    const Terminado depois = SemEntrar({"confere", "--desde", cabeca});
    EXPECT_EQ(depois.Como, Codigo::Feito);
    EXPECT_NE(depois.Resposta.find("confere: nada foi mudado nem cortado"), std::string::npos);

    RegistroDeTeste outro;
    outro.Cadastra("ana");
    const Terminado alheia = Chama({"confere", "--desde", cabeca, "--registro", outro.Caminho()});
    EXPECT_EQ(alheia.Como, Codigo::Nao);

    std::ofstream(Em("nada.txt")) << "isto não é uma cabeça";
    for (const char *nome : {"nada.txt", "nenhum.txt"}) {
        const Terminado nenhuma = SemEntrar({"confere", "--desde", Em(nome)});
        EXPECT_EQ(nenhuma.Como, Codigo::NaoAlcancado) << nome;
        EXPECT_EQ(nenhuma.Resposta, "");
        EXPECT_NE(nenhuma.Frases, "");
    }
}

TEST_F(RegistroInteiroTeste, WhatIsDoneWithAFile_ThatIsNotThere_EndsWith4)
{
    const std::string nenhum = Em("nenhum.db");
    for (const std::vector<std::string> &qual :
         {std::vector<std::string>{"confere"}, {"cabeca"}, {"copia", Em("copias")}, {"restaura", Em("copia.db")}}) {
        std::vector<std::string> argumentos = qual;
        argumentos.insert(argumentos.end(), {"--registro", nenhum});
        const Terminado terminado = Chama(argumentos);
        EXPECT_EQ(terminado.Como, Codigo::NaoAlcancado) << qual.front();
        EXPECT_EQ(terminado.Resposta, "") << qual.front();
        EXPECT_NE(terminado.Frases, "") << qual.front();
        EXPECT_FALSE(std::filesystem::exists(nenhum)) << qual.front();
    }
}

TEST_F(RegistroInteiroTeste, Cabeca_OfAFileThatIsNotThere_SaysThat)
{
    const std::string nenhum = Em("nenhum.db");
    EXPECT_EQ(Chama({"cabeca", "--registro", nenhum}).Frases, "O registro não foi encontrado em " + nenhum + ".\n");
}

TEST_F(RegistroInteiroTeste, WhatIsAskedOfADamagedFile_IsNeverAnsweredAsIfItWereWhole)
{
    const std::string inteiro = BytesDe(SemEntrar({"copia", Em("copias"), "--json"}).Json()["arquivo"]);
    std::string furado = inteiro; // its first pages are as they were
    std::fill(furado.begin() + static_cast<std::ptrdiff_t>(furado.size() / 8), furado.end(), '\x5a');
    for (const auto &[nome, bytes] : {std::pair<const char *, std::string>{"vazio.db", ""},
                                      {"lixo.db", std::string(8192, 'x')},
                                      {"cortado.db", inteiro.substr(0, inteiro.size() / 2)},
                                      {"furado.db", furado}}) {
        std::ofstream(Em(nome), std::ios::binary) << bytes;
        for (const std::vector<std::string> &qual :
             {std::vector<std::string>{"confere"},
              {"copia", Em("dele")},
              {"consulta", "--codigo", "R-001", "--dia", "30/06/2026", "--usuario", "ana", "--senha-da-entrada"}}) {
            std::vector<std::string> argumentos = qual;
            argumentos.insert(argumentos.end(), {"--registro", Em(nome)});
            const Terminado terminado = Chama(argumentos, "senha de ana\n");
            const bool achou = qual.front() == "confere" && terminado.Como == Codigo::Nao;
            EXPECT_TRUE(achou || terminado.Como == Codigo::NaoAlcancado)
                << nome << " " << qual.front() << " " << static_cast<int>(terminado.Como) << terminado.Frases;
            EXPECT_TRUE(achou || terminado.Resposta.empty()) << nome << " " << qual.front();
            EXPECT_TRUE(achou || !terminado.Frases.empty()) << nome << " " << qual.front();
            EXPECT_EQ(BytesDe(Em(nome)), bytes) << qual.front();
        }
        EXPECT_TRUE(!std::filesystem::exists(Em("dele")) || Nomes(Em("dele")).empty());
        Registro.Fecha();
        const std::string antes = BytesDe(Registro.Caminho());
        EXPECT_NE(SemEntrar({"restaura", Em(nome)}).Como, Codigo::Feito) << nome;
        EXPECT_EQ(BytesDe(Registro.Caminho()), antes) << nome;
    }
}

TEST_F(RegistroInteiroTeste, Cabeca_OfAFile_IsSignedAndEndsWhereTheHistoryDoes)
{
    const Terminado terminado = SemEntrar({"cabeca"});
    EXPECT_EQ(terminado.Como, Codigo::Feito);
    const auto cabeca = mesa::CabecaAssinada::Le(terminado.Resposta);
    EXPECT_TRUE(cabeca.AssinaturaVale());
    EXPECT_EQ(cabeca.Registro, Registro.Aberto().Identificador());
    EXPECT_EQ(std::to_string(cabeca.Tamanho), Registro.Sql("SELECT COUNT(*) FROM HISTORICO"));

    const nlohmann::json lido = SemEntrar({"cabeca", "--json"}).Json();
    EXPECT_EQ(lido["texto"], terminado.Resposta);
    EXPECT_EQ(lido["entradas"], cabeca.Tamanho);
    EXPECT_EQ(lido["registro"], cabeca.Registro);
    EXPECT_EQ(lido["soma"], cabeca.Elo);
    EXPECT_EQ(lido["chave"], cabeca.ChavePublica);
    EXPECT_EQ(lido["assinatura"], cabeca.Assinatura);
    EXPECT_EQ(lido["momento"], cabeca.Quando);
}

TEST_F(RegistroInteiroTeste, Copia_WhilePeopleWork_TellsTheFileAlone)
{
    const Terminado terminado = SemEntrar({"copia", Em("copias")});
    EXPECT_EQ(terminado.Como, Codigo::Feito);
    EXPECT_EQ(terminado.Resposta, Em("copias/registro.20261120-100000.db") + "\n");
    EXPECT_NE(terminado.Frases.find("A cópia foi feita e conferida"), std::string::npos);
    EXPECT_EQ(Conteudo(Em("copias/registro.20261120-100000.db")), Conteudo(Registro.Caminho()));

    const nlohmann::json lido = SemEntrar({"copia", Em("copias"), "--json"}).Json();
    EXPECT_EQ(lido["feita"], true);
    EXPECT_EQ(lido["arquivo"], Em("copias/registro.20261120-100000-2.db"));
}

TEST_F(RegistroInteiroTeste, Copia_OfADamagedRegistry_EndsWith1AndLeavesNothing)
{
    Estraga();
    const Terminado terminado = SemEntrar({"copia", Em("copias")});
    EXPECT_EQ(terminado.Como, Codigo::Nao);
    EXPECT_EQ(terminado.Resposta, "");
    EXPECT_NE(terminado.Frases.find("defeitos"), std::string::npos);
    EXPECT_TRUE(Nomes(Em("copias")).empty());
    EXPECT_EQ(SemEntrar({"copia", Em("copias"), "--json"}).Json()["feita"], false);
}

TEST_F(RegistroInteiroTeste, Restaura_ACopy_PutsItInPlaceAndTellsWhatItReplaced)
{
    const std::string copia = SemEntrar({"copia", Em("copias"), "--json"}).Json()["arquivo"];
    const std::string antes = Conteudo(copia);
    Registro.Cadastra("bruno");
    Registro.Fecha();
    const Terminado terminado = SemEntrar({"restaura", copia});
    EXPECT_EQ(terminado.Como, Codigo::Feito) << terminado.Frases;
    EXPECT_EQ(Conteudo(Registro.Caminho()), antes);
    ASSERT_TRUE(terminado.Resposta.ends_with(".db\n"));
    EXPECT_TRUE(std::filesystem::exists(terminado.Resposta.substr(0, terminado.Resposta.size() - 1)));
}

TEST_F(RegistroInteiroTeste, Restaura_ACopyOfAnotherRegistry_TakesTheOptionForIt)
{
    RegistroDeTeste outro;
    outro.Cadastra("ana");
    const std::string copia = Chama({"copia", Em("copias"), "--json", "--registro", outro.Caminho()}).Json()["arquivo"];
    Registro.Fecha();
    const std::string antes = Conteudo(Registro.Caminho());
    const Terminado recusada = SemEntrar({"restaura", copia});
    EXPECT_EQ(recusada.Como, Codigo::Recusado);
    EXPECT_EQ(recusada.Resposta, "");
    EXPECT_EQ(Conteudo(Registro.Caminho()), antes);
    const Terminado aceita = SemEntrar({"restaura", copia, "--de-outro", "--json"});
    EXPECT_EQ(aceita.Como, Codigo::Feito);
    EXPECT_EQ(aceita.Json()["restaurada"], true);
    EXPECT_EQ(Conteudo(Registro.Caminho()), Conteudo(copia));
}

TEST_F(RegistroInteiroTeste, WhatLasts_GivenUpOnTheWay_EndsAsInterruptedAndLeavesNothing)
{
    PassosAteInterromper = 1;
    const Terminado conferencia = SemEntrar({"confere"});
    EXPECT_EQ(conferencia.Como, Codigo::Interrompido);
    EXPECT_EQ(conferencia.Resposta, "");
    PassosAteInterromper = 1;
    const Terminado copia = SemEntrar({"copia", Em("copias")});
    EXPECT_EQ(copia.Como, Codigo::Interrompido);
    EXPECT_EQ(copia.Resposta, "");
    EXPECT_TRUE(Nomes(Em("copias")).empty());
    PassosAteInterromper = -1;
    const std::string feita = SemEntrar({"copia", Em("copias"), "--json"}).Json()["arquivo"];
    Registro.Fecha();
    const std::string antes = BytesDe(Registro.Caminho());
    PassosAteInterromper = 1;
    EXPECT_EQ(SemEntrar({"restaura", feita}).Como, Codigo::Interrompido);
    EXPECT_EQ(BytesDe(Registro.Caminho()), antes);
}

TEST_F(RegistroInteiroTeste, AtAServer_CheckAndHead_TakeTheRight)
{
    Serve();
    const std::string cabeca = Cabeca("cabeca.txt");
    const Terminado marta = NoServidor({"confere", "--desde", cabeca}, "marta");
    EXPECT_EQ(marta.Como, Codigo::Feito) << marta.Frases;
    EXPECT_NE(marta.Resposta.find("Servidor: " + Onde()), std::string::npos);
    EXPECT_NE(marta.Resposta.find("confere: nada foi mudado nem cortado"), std::string::npos);
    EXPECT_EQ(NoServidor({"confere", "--json"}, "marta").Json()["inteiro"], true);
    const Terminado dela = NoServidor({"cabeca"}, "marta");
    EXPECT_EQ(dela.Como, Codigo::Feito);
    EXPECT_TRUE(mesa::CabecaAssinada::Le(dela.Resposta).AssinaturaVale());

    for (const char *qual : {"confere", "cabeca"}) {
        const Terminado ana = NoServidor({qual}, "ana");
        EXPECT_EQ(ana.Como, Codigo::Recusado) << qual;
        EXPECT_EQ(ana.Resposta, "") << qual;
        const Terminado ninguem = Chama({qual, "--servidor", Onde(), "--digital", Servidor->Digital()});
        EXPECT_EQ(ninguem.Como, Codigo::UsoErrado) << qual;
        EXPECT_EQ(ninguem.Frases, "No registro de um servidor falta --usuario.\n");
        const Terminado noArquivo = NoArquivo({qual}, "marta");
        EXPECT_EQ(noArquivo.Como, Codigo::UsoErrado) << qual;
    }
    Estraga();
    const Terminado estragado = NoServidor({"confere"}, "marta");
    EXPECT_EQ(estragado.Como, Codigo::Nao);
    EXPECT_NE(estragado.Resposta.find("R-001"), std::string::npos);
}

TEST_F(RegistroInteiroTeste, CopyAndRestoration_OfADirectoryAtAServer_AreRefused)
{
    Serve();
    rede::LugaresConhecidos lugares(Em("preferencias.ini"));
    lugares.LembraServidor(Em("dados"), rede::Endereco{"127.0.0.1", Servidor->Porta()});
    for (const std::vector<std::string> &qual :
         {std::vector<std::string>{"copia", Em("copias")}, {"restaura", Em("copia.db")}}) {
        std::vector<std::string> argumentos = qual;
        argumentos.insert(argumentos.end(), {"--dados", Em("dados")});
        const Terminado terminado = Chama(argumentos);
        EXPECT_EQ(terminado.Como, Codigo::Recusado);
        EXPECT_NE(terminado.Frases.find("registro-servidor"), std::string::npos);
    }
    EXPECT_EQ(Chama({"copia", Em("copias"), "--servidor", Onde()}).Como, Codigo::UsoErrado);
    EXPECT_FALSE(std::filesystem::exists(Em("copias")));
}

} // namespace
