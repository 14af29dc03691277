#include "tests/comando/ComandoTeste.h"

#include "tests/services/PastaDeTeste.h"

#include <filesystem>

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
    EXPECT_EQ(terminado.Resposta, "Válido por mais de 90 dias: 0\nVence em 61 a 90 dias: 0\nVence em 31 a 60 dias: 1\n"
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
    EXPECT_EQ(NoArquivo({"prazos", "--estado", "60"}, "bruno").Resposta, "R-003\t60\t25/12/2026\t35\tC R-003\n");
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
              "R-001\t30\t20/12/2026\t30\tC R-001\nR-002\tvencido\t19/11/2026\t-1\tC R-002\n");
    EXPECT_EQ(NoArquivo({"prazos", "--desde-ontem", "--estado", "vencido"}, "bruno").Resposta,
              "R-002\tvencido\t19/11/2026\t-1\tC R-002\n");
    Registro.Relogio = DataDe(21, 11, 2026, 10, 0, 0);
    for (const std::vector<std::string> &qual :
         {std::vector<std::string>{"prazos", "--desde-ontem"}, {"prazos", "--desde-ontem", "--json"}}) {
        const Terminado nenhum = NoArquivo(qual, "bruno");
        EXPECT_EQ(nenhum.Como, Codigo::Feito);
        EXPECT_EQ(nenhum.Resposta, "");
        EXPECT_EQ(nenhum.Frases, "");
    }
}

TEST_F(PrazosTeste, Prazos_SinceYesterday_AreOfTheCalibrationsThatBeginAndOfTheNewOnesToo)
{
    // A gap that begins today, and one that ends today in a deadline.
    Registro.Relogio = DataDe(2, 11, 2026, 10, 0, 0);
    const auto lacuna = EquipamentoDe("R-004");
    ::Poe(lacuna, ::Poe(::Poe(SensorDe(1), AfericaoDe("C-4", DataDe(1, 1, 2026), DataDe(19, 11, 2026))),
                        AfericaoDe("C-5", DataDe(1, 12, 2026), DataDe(30, 11, 2027))));
    Inclui(Ana, lacuna);
    const auto comeca = EquipamentoDe("R-005");
    ::Poe(comeca, ::Poe(::Poe(SensorDe(1), AfericaoDe("C-6", DataDe(1, 1, 2026), DataDe(10, 11, 2026))),
                        AfericaoDe("C-7", DataDe(20, 11, 2026), DataDe(30, 11, 2026))));
    Inclui(Ana, comeca);
    const auto valido = EquipamentoDe("R-006");
    ::Poe(valido, ::Poe(SensorDe(1), AfericaoDe("C-8", DataDe(20, 11, 2026), DataDe(19, 11, 2027))));
    Inclui(Ana, valido);
    Registro.Relogio = DataDe(20, 11, 2026, 10, 0, 0);
    Inclui(Ana, EquipamentoDe("R-007"));
    const std::string dehoje = "R-001\t30\t20/12/2026\t30\tC R-001\nR-005\t30\t30/11/2026\t10\tC-7\n"
                               "R-002\tvencido\t19/11/2026\t-1\tC R-002\nR-004\tlacuna\t";
    const std::string resposta = NoArquivo({"prazos", "--desde-ontem"}, "bruno").Resposta;
    EXPECT_TRUE(resposta.starts_with(dehoje)) << resposta;
    EXPECT_NE(resposta.find("\nR-007\tnunca-aferido\t\t\t\n"), std::string::npos) << resposta;
    EXPECT_EQ(resposta.find("R-003"), std::string::npos) << resposta;
    EXPECT_EQ(resposta.find("R-006"), std::string::npos) << resposta;
    EXPECT_EQ(NoArquivo({"prazos", "--desde-ontem", "--estado", "valido"}, "bruno").Resposta,
              "R-006\tvalido\t19/11/2027\t364\tC-8\n");
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

} // namespace
