#include "tests/comando/ComandoTeste.h"

#include "comando/ArquivoNovo.h"
#include "comando/Fim.h"
#include "tests/services/PastaDeTeste.h"

#include <fstream>

namespace {

using comando::Codigo;

class ConsultaTeste : public ComandoTeste {
  protected:
    ConsultaTeste()
    {
        Ana = Registro.Sessao("ana");
        Numero = IncluiComSensores(Ana, {{AfericaoDe("C-1", DataDe(1, 1, 2026), DataDe(30, 6, 2026))}});
    }
    static std::vector<std::string> Em(const std::string &dia, std::vector<std::string> outras = {})
    {
        outras.insert(outras.begin(), {"consulta", "--codigo", "R-001", "--dia", dia});
        return outras;
    }

    Ref<mesa::SessaoServico> Ana;
    std::int32_t Numero = 0;
};

TEST_F(ConsultaTeste, Consulta_OnADayInForce_TellsWhichAndEndsWith0)
{
    const Terminado terminado = NoArquivo(Em("30/06/2026"), "bruno");
    EXPECT_EQ(terminado.Como, Codigo::Feito);
    EXPECT_EQ(terminado.Frases, "");
    const std::string interno = std::to_string(Numero);
    EXPECT_EQ(terminado.Resposta,
              "Equipamento: R-001 (número interno " + interno +
                  "), Av. Ipiranga, sentido centro\nEm: 30/06/2026\nAferição: C-1 (número interno 1)\n"
                  "Marca: 987\nVerificada em: 01/01/2026\nVale até: 30/06/2026\n");
}

TEST_F(ConsultaTeste, Consulta_AsJson_IsReadBackWithEveryMember)
{
    const Terminado terminado = NoArquivo(Em("2026-01-01", {"--hora", "14:30", "--json"}), "bruno");
    EXPECT_EQ(terminado.Como, Codigo::Feito);
    const nlohmann::json lido = terminado.Json();
    EXPECT_EQ(lido["equipamento"]["numero"], Numero);
    EXPECT_EQ(lido["equipamento"]["codigo"], "R-001");
    EXPECT_EQ(lido["equipamento"]["ativo"], true);
    EXPECT_EQ(lido["dia"], "2026-01-01");
    EXPECT_EQ(lido["hora"], "14:30:00");
    EXPECT_EQ(lido["vigente"]["numero"], 1);
    EXPECT_EQ(lido["vigente"]["especie"], "aferição");
    EXPECT_EQ(lido["vigente"]["certificado"], "C-1");
    EXPECT_EQ(lido["vigente"]["verificacao"], "2026-01-01");
    EXPECT_EQ(lido["vigente"]["vencimento"], "2026-06-30");
    EXPECT_TRUE(lido["vigente"]["portaria"].is_null());
    EXPECT_TRUE(lido["vigente"]["documento"].is_number_integer());
    // The order of the members is part of what programs are promised.
    EXPECT_LT(terminado.Resposta.find("\"equipamento\""), terminado.Resposta.find("\"dia\""));
    EXPECT_LT(terminado.Resposta.find("\"dia\""), terminado.Resposta.find("\"vigente\""));
}

TEST_F(ConsultaTeste, Consulta_OnADayWithNone_AnswersNothingAndEndsWith1)
{
    for (const char *dia : {"31/12/2025", "01/07/2026"}) {
        const Terminado terminado = NoArquivo(Em(dia), "bruno");
        EXPECT_EQ(terminado.Como, Codigo::Nao);
        EXPECT_EQ(terminado.Resposta, "");
        EXPECT_EQ(terminado.Frases, std::string("O equipamento R-001 não tinha aferição vigente em ") + dia + ".\n");
    }
    const Terminado json = NoArquivo(Em("01/07/2026", {"--json"}), "bruno");
    EXPECT_EQ(json.Como, Codigo::Nao);
    EXPECT_TRUE(json.Json()["vigente"].is_null());
    EXPECT_EQ(json.Json()["equipamento"]["codigo"], "R-001");
    EXPECT_TRUE(json.Json()["hora"].is_null());
}

TEST_F(ConsultaTeste, Consulta_ByNumberOrCodeInAnyCase_IsTheSame)
{
    const std::string pelo = NoArquivo(Em("30/06/2026"), "bruno").Resposta;
    EXPECT_EQ(NoArquivo({"consulta", "--numero", std::to_string(Numero), "--dia", "30/06/2026"}, "bruno").Resposta,
              pelo);
    EXPECT_EQ(NoArquivo({"consulta", "--codigo", "r-001", "--dia", "30/06/2026"}, "bruno").Resposta, pelo);
}

TEST_F(ConsultaTeste, Consulta_CodeThatThereIsNot_EndsWith1)
{
    // A beginning of a code is none.
    for (const char *codigo : {"R-00", "R-0011", "X"}) {
        const Terminado terminado =
            NoArquivo({"consulta", "--codigo", codigo, "--dia", "30/06/2026", "--json"}, "bruno");
        EXPECT_EQ(terminado.Como, Codigo::Nao);
        EXPECT_EQ(terminado.Frases, std::string("Não há equipamento de código ") + codigo + ".\n");
        EXPECT_TRUE(terminado.Json()["equipamento"].is_null());
    }
}

TEST_F(ConsultaTeste, Consulta_CodeWithAccentsOrQuotes_IsTheWholeOneAndNothingElse)
{
    const std::string codigo = "Ação 1-Ç";
    const auto novo = EquipamentoDe(codigo);
    Poe(novo, Poe(SensorDe(1), AfericaoDe("C'9", DataDe(1, 1, 2026), DataDe(30, 6, 2026))));
    Inclui(Ana, novo);
    Serve();
    for (const char *dito : {"Ação 1-Ç", "AÇÃO 1-ç"}) {
        const std::vector<std::string> pergunta = {"consulta", "--codigo", dito, "--dia", "30/06/2026", "--json"};
        const Terminado aqui = NoArquivo(pergunta, "bruno");
        EXPECT_EQ(aqui.Como, Codigo::Feito) << aqui.Frases;
        EXPECT_EQ(aqui.Json()["equipamento"]["codigo"], codigo);
        EXPECT_EQ(aqui.Json()["vigente"]["certificado"], "C'9");
        EXPECT_EQ(NoServidor(pergunta, "bruno").Resposta, aqui.Resposta);
    }
    for (const char *outro : {"Acao 1-Ç", "%", "_ção 1-Ç", "R'001", "' OR 1=1 --", "Ação", "[R-001]"}) {
        EXPECT_EQ(NoArquivo({"consulta", "--codigo", outro, "--dia", "30/06/2026"}, "bruno").Como, Codigo::Nao)
            << outro;
    }
}

TEST_F(ConsultaTeste, Consulta_WordsThatAreNoText_AreNotUnderstood)
{
    const std::string metade = "R-\xc3";
    for (const std::vector<std::string> &pergunta :
         {std::vector<std::string>{"consulta", "--codigo", metade, "--dia", "30/06/2026"},
          {"consulta", "--codigo", "R-001", "--dia", metade}}) {
        const Terminado terminado = NoArquivo(pergunta, "bruno");
        EXPECT_EQ(terminado.Como, Codigo::UsoErrado);
        EXPECT_EQ(terminado.Resposta, "");
        EXPECT_EQ(terminado.Frases, "Há na linha de comando algo que não está em UTF-8.\nVeja registro --ajuda.\n");
    }
}

TEST_F(ConsultaTeste, Consulta_CodeThatAnotherOneHadBefore_AnswersForTheOneOfTheDay)
{
    const Terminado antes = NoArquivo(Em("30/06/2026"), "bruno");
    Exigido(Pede(Ana, "desativa", SoNumero(Numero)));
    const auto novo = EquipamentoDe("R-001");
    Poe(novo, Poe(SensorDe(1), AfericaoDe("C-9", DataDe(20, 11, 2026), DataDe(31, 12, 2026))));
    const std::int32_t outro = Inclui(Ana, novo);

    EXPECT_EQ(NoArquivo(Em("30/06/2026"), "bruno").Resposta, antes.Resposta);
    EXPECT_EQ(NoArquivo(Em("31/12/2026", {"--json"}), "bruno").Json()["equipamento"]["numero"], outro);
    // With none of them in force there is no telling which is meant.
    const Terminado nenhum = NoArquivo(Em("01/08/2026"), "bruno");
    EXPECT_EQ(nenhum.Como, Codigo::Nao);
    EXPECT_EQ(nenhum.Resposta, "");
    EXPECT_NE(nenhum.Frases.find("Há mais de um equipamento de código R-001"), std::string::npos);
    EXPECT_NE(nenhum.Frases.find("--numero " + std::to_string(outro)), std::string::npos);
    EXPECT_NE(nenhum.Frases.find("(desativado)"), std::string::npos);
}

TEST_F(ConsultaTeste, Consulta_WithTheCertificate_WritesItAsItWasStored)
{
    const std::string arquivo = ComandoTeste::Em("c.pdf");
    ASSERT_EQ(NoArquivo(Em("30/06/2026", {"--certificado", arquivo}), "bruno").Como, Codigo::Feito);
    const double documento = Abre(Ana, Numero)->Sensores.Valor()->Item(1)->Afericoes.Valor()->Item(1)->NroIntImgCertif;
    Bytes bytes;
    std::string recusa;
    ASSERT_TRUE(Ana->LeDocumento(documento, bytes, recusa)) << recusa;
    EXPECT_EQ(BytesDe(arquivo), std::string(bytes.begin(), bytes.end()));
    EXPECT_EQ(ModoDe(arquivo), 0600u);
    EXPECT_EQ(Nomes(ComandoTeste::Em("")), (std::vector<std::string>{"c.pdf", "preferencias.ini"}));
}

TEST_F(ConsultaTeste, Consulta_CertificateOverAFile_IsRefusedAndTheFileStays)
{
    const std::string arquivo = ComandoTeste::Em("c.pdf");
    std::ofstream(arquivo) << "de antes";
    const Terminado terminado = NoArquivo(Em("30/06/2026", {"--certificado", arquivo}), "bruno");
    EXPECT_EQ(terminado.Como, Codigo::Recusado);
    EXPECT_EQ(terminado.Frases, "Já existe " + arquivo + ", e nada é gravado por cima.\n");
    EXPECT_EQ(terminado.Resposta, "");
    EXPECT_EQ(BytesDe(arquivo), "de antes");

    EXPECT_EQ(NoArquivo(Em("30/06/2026", {"--certificado", ComandoTeste::Em("nada/c.pdf")}), "bruno").Como,
              Codigo::NaoAlcancado);
    // Nothing in force: there is no file.
    const std::string outro = ComandoTeste::Em("d.pdf");
    EXPECT_EQ(NoArquivo(Em("01/07/2026", {"--certificado", outro}), "bruno").Como, Codigo::Nao);
    EXPECT_FALSE(std::filesystem::exists(outro));
}

TEST_F(ConsultaTeste, NewFile_WhereAnotherOneCameMeanwhile_IsRefusedAndBothStay)
{
    const std::string pronto = ComandoTeste::Em("pronto");
    const std::string lugar = ComandoTeste::Em("c.pdf");
    std::ofstream(pronto) << "de agora";
    std::ofstream(lugar) << "de outro";
    try {
        comando::PoeNoLugar(pronto, lugar);
        ADD_FAILURE() << "it took the place of a file";
    } catch (const comando::Fim &fim) {
        EXPECT_EQ(fim.Qual, Codigo::Recusado);
        EXPECT_EQ(std::string(fim.what()), "Já existe " + lugar + ", e nada é gravado por cima.");
    }
    EXPECT_EQ(BytesDe(lugar), "de outro");
    EXPECT_EQ(BytesDe(pronto), "de agora");
    std::filesystem::remove(lugar);
    comando::PoeNoLugar(pronto, lugar);
    EXPECT_EQ(BytesDe(lugar), "de agora");
    EXPECT_FALSE(std::filesystem::exists(pronto));
}

TEST_F(ConsultaTeste, Consulta_ByWhoMayNotLook_IsRefusedWith3)
{
    const Terminado carla = NoArquivo(Em("30/06/2026"), "carla");
    EXPECT_EQ(carla.Como, Codigo::Recusado);
    EXPECT_EQ(carla.Resposta, "");
    EXPECT_NE(carla.Frases, "");
    // Another client's equipment is not there, by whatever it is asked for.
    EXPECT_EQ(NoArquivo(Em("30/06/2026"), "elisa").Como, Codigo::Nao);
    const Terminado numero =
        NoArquivo({"consulta", "--numero", std::to_string(Numero), "--dia", "30/06/2026"}, "elisa");
    EXPECT_EQ(numero.Como, Codigo::Recusado);
    EXPECT_EQ(numero.Resposta, "");
    EXPECT_EQ(numero.Frases, "O cliente Autoridade Municipal de Trânsito não tem equipamento de número interno " +
                                 std::to_string(Numero) + ".\n");
}

TEST_F(ConsultaTeste, Consulta_DaysAndHoursThatAreNone_EndWith2)
{
    for (const char *dia :
         {"30/02/2026", "1/1/2026", "30-06-2026", "2026-13-01", "ontem", "30/06/26", "", "30/06/2026 14:30"}) {
        const Terminado terminado = NoArquivo(Em(dia), "bruno");
        EXPECT_EQ(terminado.Como, Codigo::UsoErrado) << dia;
        EXPECT_EQ(terminado.Resposta, "");
    }
    for (const char *hora : {"24:00", "14h30", "1:30", "14:60", "14:30:61"}) {
        EXPECT_EQ(NoArquivo(Em("30/06/2026", {"--hora", hora}), "bruno").Como, Codigo::UsoErrado) << hora;
    }
    EXPECT_EQ(NoArquivo(Em("30/02/2026"), "bruno").Frases, "O dia \"30/02/2026\" não existe no calendário.\n");
    EXPECT_EQ(NoArquivo(Em("30/06/2026", {"--hora", "24:00"}), "bruno").Frases, "A hora \"24:00\" não existe.\n");
    EXPECT_EQ(NoArquivo({"consulta", "--dia", "30/06/2026"}, "bruno").Frases,
              "Falta o equipamento: --codigo ou --numero.\n");
}

TEST_F(ConsultaTeste, Consulta_AtAServer_AnswersAsTheFile)
{
    Serve();
    const std::string la = ComandoTeste::Em("la.pdf");
    const std::string aqui = ComandoTeste::Em("aqui.pdf");
    const Terminado doServidor = NoServidor(Em("30/06/2026", {"--json", "--certificado", la}), "bruno");
    const Terminado doArquivo = NoArquivo(Em("30/06/2026", {"--json", "--certificado", aqui}), "bruno");
    EXPECT_EQ(doServidor.Como, Codigo::Feito) << doServidor.Frases;
    EXPECT_EQ(doServidor.Resposta, doArquivo.Resposta);
    EXPECT_EQ(BytesDe(la), BytesDe(aqui));
    EXPECT_NE(BytesDe(la), "");
    for (const auto &[usuario, dia] :
         {std::pair("bruno", "01/07/2026"), {"carla", "30/06/2026"}, {"elisa", "30/06/2026"}}) {
        const Terminado um = NoServidor(Em(dia), usuario);
        const Terminado outro = NoArquivo(Em(dia), usuario);
        EXPECT_EQ(um.Como, outro.Como) << usuario;
        EXPECT_EQ(um.Frases, outro.Frases) << usuario;
        EXPECT_EQ(um.Resposta, outro.Resposta) << usuario;
    }
}

} // namespace
