#include "tests/comando/ComandoTeste.h"

#include "tests/services/PastaDeTeste.h"

#include <QProcess>

#include <filesystem>
#include <fstream>

namespace {

using comando::Codigo;

// On 20/11/2026: one that came to its last 30 days today, one that ended yesterday, one that stands as it did.
class PrazosTeste : public ComandoTeste {
  protected:
    PrazosTeste()
    {
        Registro.Relogio = DataDe(2, 11, 2026, 10, 0, 0);
        Ana = Registro.Sessao("ana");
        Poe("R-001", DataDe(20, 12, 2026));
        Poe("R-002", DataDe(19, 11, 2026));
        Poe("R-003", DataDe(25, 12, 2026));
        Registro.Relogio = DataDe(20, 11, 2026, 10, 0, 0);
    }
    void Poe(const std::string &codigo, Data ate)
    {
        const auto equipamento = EquipamentoDe(codigo);
        ::Poe(equipamento, ::Poe(SensorDe(1), AfericaoDe("C " + codigo, DataDe(1, 1, 2026), ate)));
        Inclui(Ana, equipamento);
    }

    Ref<mesa::SessaoServico> Ana;
};

TEST_F(PrazosTeste, Prazos_WithNothingElse_AreCounted)
{
    const Terminado terminado = NoArquivo({"prazos"}, "bruno");
    EXPECT_EQ(terminado.Como, Codigo::Feito);
    EXPECT_EQ(terminado.Frases, "");
    EXPECT_EQ(terminado.Resposta,
              "Válido por mais de 90 dias: 0\nVence em 61 a 90 dias: 0\nVence em 31 a 60 dias: 1\n"
              "Vence em até 30 dias: 1\nVencido: 1\nEntre dois certificados: 0\nNunca aferido: 0\n"
              "Documento ausente ou danificado: 0\nMais de uma aferição em vigor: 0\nDispensado de aferição: 0\n");
    const nlohmann::json lido = NoArquivo({"prazos", "--json"}, "bruno").Json();
    EXPECT_EQ(lido["dia"], "2026-11-20");
    EXPECT_EQ(lido["equipamentos"], 3);
    EXPECT_EQ(lido["naoContados"], 0);
    EXPECT_EQ(lido["estados"].size(), 10u);
    EXPECT_EQ(lido["estados"][3]["estado"], "30");
    EXPECT_EQ(lido["estados"][3]["quantos"], 1);
}

TEST_F(PrazosTeste, Prazos_OfOneState_AreListed)
{
    EXPECT_EQ(NoArquivo({"prazos", "--estado", "60"}, "bruno").Resposta,
              "R-003\tVence em 31 a 60 dias\t25/12/2026\t35\tC R-003\n");
    const nlohmann::json lido = NoArquivo({"prazos", "--estado", "vencido", "--json"}, "bruno").Json();
    ASSERT_EQ(lido["prazos"].size(), 1u);
    EXPECT_EQ(lido["prazos"][0]["codigo"], "R-002");
    EXPECT_EQ(lido["prazos"][0]["estado"], "vencido");
    EXPECT_EQ(lido["prazos"][0]["vencimento"], "2026-11-19");
    EXPECT_EQ(lido["prazos"][0]["dias"], -1);
    EXPECT_EQ(lido["prazos"][0]["sensor"], 1);
    const Terminado nenhum = NoArquivo({"prazos", "--estado", "31"}, "bruno");
    EXPECT_EQ(nenhum.Como, Codigo::UsoErrado);
    EXPECT_TRUE(nenhum.Frases.starts_with("Não existe o estado \"31\"; há valido, 90,")) << nenhum.Frases;
}

TEST_F(PrazosTeste, Prazos_SinceYesterday_AreThoseWhoseStateTheDayChanged)
{
    EXPECT_EQ(NoArquivo({"prazos", "--desde-ontem"}, "bruno").Resposta,
              "R-001\tVence em até 30 dias\t20/12/2026\t30\tC R-001\nR-002\tVencido\t19/11/2026\t-1\tC R-002\n");
    EXPECT_EQ(NoArquivo({"prazos", "--desde-ontem", "--estado", "vencido"}, "bruno").Resposta,
              "R-002\tVencido\t19/11/2026\t-1\tC R-002\n");
    Registro.Relogio = DataDe(21, 11, 2026, 10, 0, 0);
    for (const std::vector<std::string> &qual :
         {std::vector<std::string>{"prazos", "--desde-ontem"}, {"prazos", "--desde-ontem", "--json"}}) {
        const Terminado nenhum = NoArquivo(qual, "bruno");
        EXPECT_EQ(nenhum.Como, Codigo::Feito);
        EXPECT_EQ(nenhum.Resposta, "");
        EXPECT_EQ(nenhum.Frases, "");
    }
}

TEST_F(PrazosTeste, Prazos_SinceYesterday_AreOfTheCalibrationsThatBeginToo)
{
    const auto comeca = EquipamentoDe("R-005");
    ::Poe(comeca, ::Poe(::Poe(SensorDe(1), AfericaoDe("C-6", DataDe(1, 1, 2026), DataDe(10, 11, 2026))),
                        AfericaoDe("C-7", DataDe(20, 11, 2026), DataDe(30, 11, 2026))));
    Inclui(Ana, comeca);
    const auto valido = EquipamentoDe("R-006");
    ::Poe(valido, ::Poe(SensorDe(1), AfericaoDe("C-8", DataDe(20, 11, 2026), DataDe(19, 11, 2027))));
    Inclui(Ana, valido);
    Inclui(Ana, EquipamentoDe("R-007"));
    const std::string resposta = NoArquivo({"prazos", "--desde-ontem"}, "bruno").Resposta;
    EXPECT_EQ(resposta, "R-001\tVence em até 30 dias\t20/12/2026\t30\tC R-001\n"
                        "R-005\tVence em até 30 dias\t30/11/2026\t10\tC-7\n"
                        "R-002\tVencido\t19/11/2026\t-1\tC R-002\n")
        << "what was registered today has been so before";
    EXPECT_EQ(NoArquivo({"prazos", "--desde-ontem", "--estado", "valido"}, "bruno").Resposta,
              "R-006\tVálido por mais de 90 dias\t19/11/2027\t364\tC-8\n");
}

TEST_F(PrazosTeste, Calendar_OfWhatIsListed_IsAFileWithAnEventEach)
{
    const std::string arquivo = Em("prazos.ics");
    EXPECT_EQ(NoArquivo({"prazos", "--estado", "30", "--calendario", arquivo}, "bruno").Como, Codigo::Feito);
    const std::string texto = BytesDe(arquivo);
    EXPECT_TRUE(texto.starts_with("BEGIN:VCALENDAR\r\n"));
    EXPECT_NE(texto.find("DTSTART;VALUE=DATE:20261220\r\n"), std::string::npos);
    EXPECT_EQ(texto.find("20261225"), std::string::npos);
    EXPECT_EQ(NoArquivo({"prazos", "--calendario", arquivo}, "bruno").Como, Codigo::Recusado);
    EXPECT_EQ(BytesDe(arquivo), texto);
    const std::string outro = Em("outro.ics");
    const Terminado nenhum = NoArquivo({"prazos", "--estado", "nunca-aferido", "--calendario", outro}, "bruno");
    EXPECT_EQ(nenhum.Como, Codigo::Feito);
    EXPECT_NE(nenhum.Frases.find("não foi gravado"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(outro));
}

TEST_F(PrazosTeste, Prazos_ByWhoMayNotLookOrOfAnotherClient_AreNotTold)
{
    EXPECT_EQ(NoArquivo({"prazos"}, "carla").Como, Codigo::Recusado);
    EXPECT_EQ(NoArquivo({"prazos", "--estado", "30"}, "carla").Como, Codigo::Recusado);
    const Terminado elisa = NoArquivo({"prazos", "--desde-ontem"}, "elisa");
    EXPECT_EQ(elisa.Como, Codigo::Feito);
    EXPECT_EQ(elisa.Resposta, "");
}

TEST_F(PrazosTeste, Prazos_AtAServer_AreThoseOfTheFile)
{
    Serve();
    for (const std::vector<std::string> &qual : {std::vector<std::string>{"prazos", "--json"},
                                                 {"prazos", "--desde-ontem"},
                                                 {"prazos", "--estado", "60", "--json"}}) {
        const Terminado la = NoServidor(qual, "bruno");
        EXPECT_EQ(la.Como, Codigo::Feito) << la.Frases;
        EXPECT_EQ(la.Resposta, NoArquivo(qual, "bruno").Resposta);
        EXPECT_NE(la.Resposta, "");
    }
    EXPECT_EQ(NoServidor({"prazos"}, "carla").Como, Codigo::Recusado);
}

// What mails the deadlines, between a program that says what the test has it say and the system's mail.
class PrazosDeOntemTeste : public testing::Test {
  protected:
    // Its code. diz: what the program does.
    int Roda(const std::string &diz, const std::string &correio = "cat >\"$0.recebida\"")
    {
        Poe("registro", "printf '%s|' \"$@\" >\"$0.pedida\"; " + diz);
        Poe("sendmail", "printf '%s|' \"$@\" >\"$0.pedida\"; " + correio);
        QProcess processo;
        processo.setProcessEnvironment(Ambiente);
        processo.start("comando/pacote/prazos-de-ontem", QStringList());
        EXPECT_TRUE(processo.waitForFinished(60000));
        Erros = processo.readAllStandardError().toStdString();
        EXPECT_EQ(processo.exitStatus(), QProcess::NormalExit);
        return processo.exitCode();
    }
    void Poe(const char *nome, const std::string &faz)
    {
        const std::string caminho = Em(nome);
        std::ofstream(caminho) << "#!/bin/sh\n" << faz << '\n';
        std::filesystem::permissions(caminho, std::filesystem::perms::owner_all);
        std::filesystem::remove(caminho + ".recebida");
    }
    std::string Em(const char *nome) const { return Pasta.filePath(nome).toStdString(); }
    std::string Recebida() const { return Texto("sendmail.recebida"); }
    std::string Texto(const char *nome) const { return std::filesystem::exists(Em(nome)) ? BytesDe(Em(nome)) : ""; }

    QTemporaryDir Pasta;
    QProcessEnvironment Ambiente = [this] {
        QProcessEnvironment ambiente;
        ambiente.insert("PATH", Pasta.path() + ":/usr/bin:/bin");
        ambiente.insert("OPCOES", "--usuario ana --senha-de /casa/senha");
        ambiente.insert("PARA", "afericoes@orgao.exemplo");
        return ambiente;
    }();
    std::string Erros;
};

TEST_F(PrazosDeOntemTeste, Deadlines_OfTheDay_AreMailed)
{
    EXPECT_EQ(Roda("echo 'R-001\tVálido'; echo R-002"), 0);
    EXPECT_EQ(Texto("registro.pedida"), "prazos|--desde-ontem|--usuario|ana|--senha-de|/casa/senha|");
    EXPECT_EQ(Texto("sendmail.pedida"), "-t|");
    EXPECT_EQ(Recebida(),
              "To: afericoes@orgao.exemplo\nSubject: Prazos do registro de equipamentos\nMIME-Version: 1.0\n"
              "Content-Type: text/plain; charset=UTF-8\nContent-Transfer-Encoding: 8bit\n\n"
              "R-001\tVálido\nR-002\n");
}

TEST_F(PrazosDeOntemTeste, ADay_ThatChangesNothing_IsNotMailed)
{
    EXPECT_EQ(Roda("exit 0"), 0);
    EXPECT_EQ(Recebida(), "");
}

TEST_F(PrazosDeOntemTeste, AQuestion_ThatFails_IsMailedAndIsTheUnitsFailure)
{
    EXPECT_EQ(Roda("echo 'Usuário ou senha inválidos.' >&2; exit 3"), 3);
    EXPECT_NE(Recebida().find("\nSubject: FALHA ao consultar os prazos do registro de equipamentos\n"),
              std::string::npos);
    EXPECT_TRUE(Recebida().ends_with("\n\nUsuário ou senha inválidos.\n")) << Recebida();
    EXPECT_EQ(Roda("kill -9 $$"), 137);
    EXPECT_TRUE(Recebida().ends_with("\n\nO comando registro prazos terminou com 137, sem dizer por quê.\n"));
}

TEST_F(PrazosDeOntemTeste, AMessage_ThatTheSystemDoesNotTake_IsTheUnitsFailure)
{
    EXPECT_EQ(Roda("echo R-001", "exit 75"), 4);
    EXPECT_EQ(Erros, "A mensagem com os prazos não pôde ser entregue ao sistema de correio.\n");
}

TEST_F(PrazosDeOntemTeste, Settings_ThatDoNotSayWhoAsksOrWhoIsTold_AreRefused)
{
    for (const char *qual : {"OPCOES", "PARA"}) {
        const QProcessEnvironment inteiro = Ambiente;
        Ambiente.remove(qual);
        EXPECT_NE(Roda("echo R-001"), 0) << qual;
        EXPECT_EQ(Recebida(), "") << qual;
        Ambiente = inteiro;
    }
}

} // namespace
