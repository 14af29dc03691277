#include "services/MotivoCorrecao.h"
#include "tests/services/ServicosTeste.h"

#include <optional>
#include <string>
#include <vector>

using namespace mesa;

namespace {

// What a person is asked, and says.
struct Pessoa {
    std::optional<std::string> Resposta;
    std::vector<std::string> Perguntas = {};

    void Atende(const Ref<SessaoServico> &sessao)
    {
        sessao->PerguntaMotivo([this](const std::string &oQue) {
            Perguntas.push_back(oQue);
            return Resposta;
        });
    }
};

class ServicosCorrecao : public ServicosDeAfericoes {
  protected:
    // An "altera" of calibrations of the sensor.
    static Ref<EquiptoED> Pedido(std::int32_t sensor, const std::vector<Ref<AfericaoED>> &afericoes)
    {
        const auto s = SoSensor(sensor);
        for (const auto &afericao : afericoes) {
            Poe(s, afericao);
        }
        return Poe(SoNumero(1), s);
    }
    static Ref<EquiptoED> ComMarca(const std::string &marca)
    {
        return Pedido(1, {Com(SoAfericao(1), &AfericaoED::Marca, marca)});
    }
    std::string Versao(int afericao)
    {
        return m_Registro.Sql("SELECT Versao FROM AFERICAO WHERE NroIntAfericao = " + std::to_string(afericao));
    }
    // Reasons of the calibration's entries, in their order.
    std::string Motivos(int afericao)
    {
        return m_Registro.Sql(
            "SELECT group_concat(COALESCE(Motivo, '-'), ';') FROM (SELECT Motivo FROM HISTORICO WHERE "
            "Entidade = 'AFERICAO' AND NroEntidade = " +
            std::to_string(afericao) + " ORDER BY Nro) h");
    }
    std::string Marca() { return m_Registro.Sql("SELECT Marca FROM AFERICAO WHERE NroIntAfericao = 1"); }
    // Each row is as its last entry says, and has a version for each of its entries.
    void ConfereVersoes()
    {
        EXPECT_EQ(
            m_Registro.Sql("SELECT COUNT(*) FROM AFERICAO a WHERE Versao <> (SELECT COUNT(*) FROM HISTORICO h WHERE "
                           "h.Entidade = 'AFERICAO' AND h.NroEntidade = a.NroIntAfericao)"),
            "0");
        EXPECT_EQ(m_Registro.Sql("SELECT COUNT(*) FROM AFERICAO a WHERE Versao || '|' || Ativo || '|' || Marca IS NOT "
                                 "(SELECT Depois ->> 'Versao' || '|' || (Depois ->> 'Ativo') || '|' || (Depois ->> "
                                 "'Marca') FROM HISTORICO h WHERE h.Entidade = 'AFERICAO' AND h.NroEntidade = "
                                 "a.NroIntAfericao ORDER BY Nro DESC LIMIT 1)"),
                  "0");
    }

    Pessoa m_Pessoa{"Certificado trocado na digitação"};
};

TEST_F(ServicosCorrecao, altera_OfAStoredCalibration_AsksOnceAndWritesTheReasonDown)
{
    ComSensores({{AfericaoDe("1", Jan, Jun)}});
    m_Pessoa.Atende(m_Ana);
    Faz(m_Ana, "altera", ComMarca("555"));
    EXPECT_EQ(m_Pessoa.Perguntas, (std::vector<std::string>{"Esta gravação corrige a aferição 1 do sensor 1."}));
    EXPECT_EQ(Motivos(1), "-;Certificado trocado na digitação");
    EXPECT_EQ(Marca() + " " + Versao(1), "555 2");
    EXPECT_EQ(m_Registro.Sql("SELECT COUNT(*) FROM HISTORICO WHERE Motivo IS NOT NULL"), "1"); // the equipment has none
    ConfereVersoes();
}

TEST_F(ServicosCorrecao, altera_OfEachMember_AsksForTheReason)
{
    ComSensores({{AfericaoDe("1", Jan, Jun)}});
    const double documento = GuardaPdf(m_Ana, "outro");
    m_Pessoa.Atende(m_Ana);
    const std::vector<Ref<AfericaoED>> mudancas = {
        Com(SoAfericao(1), &AfericaoED::Numero, "2"),
        Com(SoAfericao(1), &AfericaoED::Marca, "3"),
        Com(SoAfericao(1), &AfericaoED::DataVerificacao, DataDe(2, 1, 2026)),
        Com(SoAfericao(1), &AfericaoED::DataVencimento, Dez),
        Com(SoAfericao(1), &AfericaoED::NroIntImgCertif, documento),
        Com(SoAfericao(1), &AfericaoED::Ativo, 2),
        Com(SoAfericao(1), &AfericaoED::Ativo, 1),
    };
    std::size_t vez = 0;
    for (const auto &mudanca : mudancas) {
        Faz(m_Ana, "altera", Pedido(1, {mudanca}));
        EXPECT_EQ(m_Pessoa.Perguntas.size(), ++vez) << mudanca->Texto();
        EXPECT_EQ(Versao(1), std::to_string(vez + 1)) << mudanca->Texto();
        ConfereVersoes();
    }
    EXPECT_EQ(m_Pessoa.Perguntas.back(), "Esta gravação corrige a aferição 2 do sensor 1.");
}

TEST_F(ServicosCorrecao, altera_OfSeveral_NamesThemInOneQuestion)
{
    std::vector<Ref<AfericaoED>> todas;
    for (int n = 1; n <= 8; ++n) {
        todas.push_back(AfericaoDe(std::to_string(n), DataDe(2 * n - 1, 1, 2026), DataDe(2 * n, 1, 2026)));
    }
    ComSensores({todas, {AfericaoDe("9", Jan, Jun)}});
    m_Pessoa.Atende(m_Ana);
    const auto corrigida = [](double n) { return Com(SoAfericao(n), &AfericaoED::Marca, "5"); };
    Faz(m_Ana, "altera", Poe(Pedido(1, {corrigida(2)}), Poe(SoSensor(2), corrigida(9))));
    EXPECT_EQ(m_Pessoa.Perguntas.back(), "Esta gravação corrige a aferição 2 do sensor 1 e a aferição 9 do sensor 2.");
    Faz(m_Ana, "altera",
        Pedido(1, {corrigida(1), corrigida(3), corrigida(4), corrigida(5), corrigida(6), corrigida(7), corrigida(8)}));
    EXPECT_EQ(m_Pessoa.Perguntas.back(),
              "Esta gravação corrige a aferição 1 do sensor 1, a aferição 3 do sensor 1, a aferição 4 do sensor 1, a "
              "aferição 5 do sensor 1, a aferição 6 do sensor 1, a aferição 7 do sensor 1 e mais 1.");
    EXPECT_EQ(m_Pessoa.Perguntas.size(), 2U);
}

TEST_F(ServicosCorrecao, altera_OfNothingThatWasStored_DoesNotAsk)
{
    ComSensores({{AfericaoDe("1", Jan, Jun)}});
    m_Pessoa.Atende(m_Ana);
    Faz(m_Ana, "altera", Pedido(1, {AfericaoDe("2", Jul, Dez, 1)}));                                 // a new one
    Faz(m_Ana, "altera", Pedido(1, {SoAfericao(1), Com(SoAfericao(2), &AfericaoED::Marca, "987")})); // as they were
    Faz(m_Ana, "altera", Poe(SoNumero(1), Com(SoSensor(1), &SensorED::LocalInfr, "Rua Nova, 5")));
    Faz(m_Ana, "altera", Com(SoNumero(1), &EquiptoED::Descricao, "Outra"));
    EXPECT_TRUE(m_Pessoa.Perguntas.empty());
    EXPECT_EQ(Motivos(1) + Motivos(2), "--");
    EXPECT_EQ(Versao(1) + Versao(2), "11");
}

TEST_F(ServicosCorrecao, altera_WithoutAnAnswer_StoresNothing)
{
    ComSensores({{AfericaoDe("1", Jan, Jun), AfericaoDe("2", Jul, Dez)}});
    m_Pessoa = {std::nullopt};
    m_Pessoa.Atende(m_Ana);
    const std::string entradas = Linhas("HISTORICO");
    auto pedido = Com(ComMarca("555"), &EquiptoED::Descricao, "Outra");
    EXPECT_EQ(RecusaDe(m_Ana, "altera", pedido),
              "A correção da aferição 1 do sensor 1 não foi gravada: nenhum motivo foi dado.");
    EXPECT_EQ(
        RecusaDe(m_Ana, "altera",
                 Pedido(1, {Com(SoAfericao(1), &AfericaoED::Marca, "5"), Com(SoAfericao(2), &AfericaoED::Marca, "6")})),
        "A correção da aferição 1 do sensor 1 e da aferição 2 do sensor 1 não foi gravada: nenhum motivo foi dado.");
    EXPECT_EQ(Linhas("HISTORICO"), entradas);
    EXPECT_EQ(Marca() + " " + Versao(1), "987 1");
    EXPECT_EQ(m_Registro.Sql("SELECT Descricao FROM EQUIPAMENTO"), "Av. Ipiranga, sentido centro");
    m_Pessoa.Resposta = "Agora com motivo"; // what was read is still known
    Faz(m_Ana, "altera", pedido);
}

TEST_F(ServicosCorrecao, Motivo_IsTrimmedAndOfFiveToFiveHundredCharacters)
{
    ComSensores({{AfericaoDe("1", Jan, Jun)}});
    m_Pessoa.Atende(m_Ana);
    const auto recusa = [&](const std::string &motivo) {
        m_Pessoa.Resposta = motivo;
        return RecusaDe(m_Ana, "altera", ComMarca("555"));
    };
    const std::string naoGravada = "A correção da aferição 1 do sensor 1 não foi gravada: ";
    const std::string tamanho = naoGravada + "o motivo precisa ter de 5 a 500 caracteres; veio com ";
    EXPECT_EQ(recusa(""), tamanho + "0.");
    EXPECT_EQ(recusa("  erro \t"), tamanho + "4.");
    EXPECT_EQ(recusa("\u00a0\u2003erro\u3000"), tamanho + "4.");
    EXPECT_EQ(recusa(std::string(501, 'x')), tamanho + "501.");
    const std::string caracteres = naoGravada + "o motivo tem caracteres que não podem ser gravados.";
    for (const char *motivo : {"duas\nlinhas", "um\ttab dentro", "\u200b\u200b\u200b\u200b\u200b", "vira \u202e odart",
                               "linha\u2028outra", "\xff\xfe quebrado", "sino \a aqui"}) {
        EXPECT_EQ(recusa(motivo), caracteres) << motivo;
    }
    EXPECT_EQ(recusa(std::string("nulo\0dentro", 11)), caracteres);
    EXPECT_EQ(recusa(" Sem Motivo "), naoGravada + "\"Sem Motivo\" não é um motivo.");
    EXPECT_EQ(Versao(1), "1");

    std::string maior;
    for (int n = 0; n < 500; ++n) {
        maior += "ç";
    }
    m_Pessoa.Resposta = "  " + maior + " ";
    Faz(m_Ana, "altera", ComMarca("555"));
    m_Pessoa.Resposta = " troca";
    Faz(m_Ana, "altera", ComMarca("556"));
    EXPECT_EQ(Motivos(1), "-;" + maior + ";troca");
}

TEST_F(ServicosCorrecao, altera_ThatIsRefused_IsNotAskedFor)
{
    ComSensores({{AfericaoDe("1", Jan, Jun), AfericaoDe("2", Jul, Dez)}});
    m_Pessoa.Atende(m_Ana);
    EXPECT_TRUE(RecusaDe(m_Ana, "altera", Pedido(1, {Com(SoAfericao(1), &AfericaoED::DataVencimento, Dez)}))
                    .starts_with("O período de 01/01/2026 a 31/12/2026"));
    EXPECT_TRUE(
        RecusaDe(m_Ana, "altera", Com(ComMarca("5"), &EquiptoED::Codigo, "OUTRO")).ends_with("não pode mais mudar."));
    EXPECT_TRUE(m_Pessoa.Perguntas.empty());
}

TEST_F(ServicosCorrecao, Question_HoldsNothingOfTheRegistry)
{
    ComSensores({{AfericaoDe("1", Jan, Jun)}});
    const auto bia = m_Registro.Sessao("bia");
    Abre(bia, 1);
    m_Ana->PerguntaMotivo([&](const std::string &) {
        EXPECT_EQ(Motivos(1), "-"); // the first try has left nothing
        Faz(bia, "altera", Com(SoNumero(1), &EquiptoED::Descricao, "De Bia"));
        m_Registro.PassaSegundos(600); // while the person thinks
        return std::optional<std::string>("Certificado trocado");
    });
    EXPECT_EQ(RecusaDe(m_Ana, "altera", ComMarca("555")),
              "O equipamento R-001 foi alterado por Bia Nunes em 20/11/2026 às 10:00:00 (descrição), depois de aberto "
              "aqui. Nada foi gravado: abra-o de novo e repita a sua alteração.");
    EXPECT_EQ(Marca(), "987");

    m_Ana->PerguntaMotivo([&](const std::string &) {
        Abre(m_Ana, 1); // the same session goes on working
        m_Registro.PassaSegundos(60);
        return std::optional<std::string>("Certificado trocado");
    });
    Abre(m_Ana, 1);
    Faz(m_Ana, "altera", ComMarca("555"));
    EXPECT_EQ(m_Registro.Sql("SELECT Quando FROM HISTORICO WHERE Motivo IS NOT NULL"), "20261120101100"); // of the save
}

TEST_F(ServicosCorrecao, Question_ThatFails_IsAFaultAndStoresNothing)
{
    ComSensores({{AfericaoDe("1", Jan, Jun)}});
    m_Ana->PerguntaMotivo([](const std::string &) -> std::optional<std::string> {
        throw Falha(NumeroFalha::ErroInterno, "Janela", "A janela não abriu.");
    });
    EXPECT_THROW(Pede(m_Ana, "altera", ComMarca("555")), Falha);
    EXPECT_EQ(Marca(), "987");
    m_Ana->PerguntaMotivo(nullptr);
    Faz(m_Ana, "altera", ComMarca("555"));
}

TEST_F(ServicosCorrecao, NobodyToAsk_IsSemMotivo)
{
    ComSensores({{AfericaoDe("1", Jan, Jun)}});
    Faz(m_Ana, "altera", ComMarca("555"));
    EXPECT_EQ(Motivos(1), "-;sem motivo");
}

TEST_F(ServicosCorrecao, NobodyToAsk_WhereAReasonIsDemanded_IsRefused)
{
    ComSensores({{AfericaoDe("1", Jan, Jun)}});
    m_Registro.Aberto().ExigeMotivo(true);
    const auto bia = m_Registro.Sessao("bia");
    Abre(bia, 1);
    EXPECT_EQ(RecusaDe(bia, "altera", ComMarca("555")),
              "A correção da aferição 1 do sensor 1 não foi gravada: nenhum motivo foi dado.");
    Faz(bia, "altera", Pedido(1, {AfericaoDe("2", Jul, Dez, 1)})); // no correction
    m_Pessoa.Atende(bia);
    Faz(bia, "altera", ComMarca("555"));
    EXPECT_EQ(Motivos(1), "-;Certificado trocado na digitação");
    m_Registro.Aberto().ExigeMotivo(false);
    const auto caio = m_Registro.Sessao("caio");
    Abre(caio, 1);
    Faz(caio, "altera", ComMarca("556"));
    EXPECT_EQ(Motivos(1), "-;Certificado trocado na digitação;sem motivo");
}

TEST_F(ServicosCorrecao, Versao_OfTwoThatChangePlaces_GrowsByOneEach)
{
    ComSensores({{AfericaoDe("1", Jan, Jun), AfericaoDe("2", Jul, Dez)}});
    const auto numerada = [](double numero, Data de, Data ate) {
        return Com(SoAfericao(numero), &AfericaoED::DataVerificacao, de, &AfericaoED::DataVencimento, ate);
    };
    Faz(m_Ana, "altera", Pedido(1, {numerada(1, Jul, Dez), numerada(2, Jan, Jun)}));
    EXPECT_EQ(Versao(1) + Versao(2), "22");
    ConfereVersoes();
    Faz(m_Ana, "altera", Pedido(1, {Com(SoAfericao(1), &AfericaoED::Ativo, 2), numerada(2, Jan, Dez)}));
    EXPECT_EQ(Versao(1) + Versao(2), "33");
    ConfereVersoes();
}

TEST_F(ServicosCorrecao, Row_ChangedPastTheServices_IsRefusedByTheDatabase)
{
    ComSensores({{AfericaoDe("1", Jan, Jun)}});
    Faz(m_Ana, "altera", ComMarca("555"));
    for (const char *mudanca :
         {"Numero = '7'", "Marca = '7'", "DataVerificacao = 20260102", "DataVencimento = 20260629", "Ativo = 2",
          "NroIntImgCertif = NULL", "TipoAfer = 2", "PortDimel = '1/26'", "Versao = 1", "Versao = 4",
          "Numero = '7', Versao = 2", "Numero = '7', Versao = 1", "Numero = '7', Versao = 9007199254740992"}) {
        EXPECT_EQ(MotivoDe(std::string("UPDATE OR REPLACE AFERICAO SET ") + mudanca), "AFERICAO_VERSAO") << mudanca;
    }
    ConfereVersoes();
}

TEST_F(ServicosCorrecao, Row_ThatItsHistoryDoesNotKnow_TakesNoCorrection)
{
    ComSensores({{AfericaoDe("1", Jan, Jun)}});
    m_Registro.Sql("UPDATE AFERICAO SET Numero = '7', Versao = 2"); // the step, yet no entry
    EXPECT_EQ(RecusaDe(m_Ana, "altera", ComMarca("555")),
              "Uma aferição do sensor 1 não está como o seu histórico diz. Nada foi gravado: o registro precisa ser "
              "conferido.");
    m_Registro.Sql(
        "INSERT INTO AFERICAO VALUES (9, 1, '', '', 20270101, 20270102, 1, NULL, 1, '', 1)"); // no entry at all
    EXPECT_EQ(RecusaDe(m_Ana, "altera", Pedido(1, {Com(SoAfericao(9), &AfericaoED::Marca, "5")})),
              "Uma aferição do sensor 1 não está como o seu histórico diz. Nada foi gravado: o registro precisa ser "
              "conferido.");
}

TEST_F(ServicosCorrecao, VersoesDaAfericao_AreAllOfThemWhole)
{
    ComSensores({{AfericaoDe("1", Jan, Jun)}});
    m_Pessoa.Atende(m_Ana);
    m_Registro.PassaSegundos(60);
    Faz(m_Ana, "altera", ComMarca("555"));
    const auto bia = m_Registro.Sessao("bia");
    Abre(bia, 1);
    m_Registro.PassaSegundos(60);
    Faz(bia, "altera", Pedido(1, {Com(SoAfericao(1), &AfericaoED::Ativo, 2)}));

    std::vector<VersaoAfericao> versoes;
    std::string recusa;
    ASSERT_TRUE(m_Registro.Sessao("bruno")->VersoesDaAfericao(1, versoes, recusa)) << recusa;
    std::vector<std::string> lidas;
    for (const VersaoAfericao &v : versoes) {
        lidas.push_back(std::to_string(v.Versao) + " " + v.Quem + " " + std::to_string(v.Quando) + " " +
                        std::to_string(v.Fuso.value_or(-1)) + " " + v.Acao + " (" + v.Motivo + ") " +
                        v.Registro->Texto());
    }
    const auto texto = [](const std::string &marca, int ativo) {
        return "AfericaoED{NroIntAfericao=1, Numero=\"1\", Marca=\"" + marca +
               "\", DataVerificacao=01/01/2026, DataVencimento=30/06/2026, Ativo=" + std::to_string(ativo) +
               ", NroIntImgCertif=1, TipoAfer=1, PortDimel=\"\"}";
    };
    EXPECT_EQ(lidas, (std::vector<std::string>{
                         "1 Ana Souza 20261120100000 0 inclui () " + texto("987", 1),
                         "2 Ana Souza 20261120100100 0 altera (Certificado trocado na digitação) " + texto("555", 1),
                         "3 Bia Nunes 20261120100200 0 desativa (sem motivo) " + texto("555", 2),
                     }));
}

TEST_F(ServicosCorrecao, VersoesDaAfericao_OfAnotherClientOrWithoutTheRight_IsRefused)
{
    ComSensores({{AfericaoDe("1", Jan, Jun)}});
    std::vector<VersaoAfericao> versoes(1);
    std::string recusa;
    EXPECT_FALSE(m_Registro.Sessao("elisa")->VersoesDaAfericao(1, versoes, recusa));
    EXPECT_EQ(recusa, "O cliente Autoridade Municipal de Trânsito não tem aferição de número interno 1.");
    EXPECT_FALSE(m_Registro.Sessao("carla")->VersoesDaAfericao(1, versoes, recusa));
    EXPECT_EQ(recusa, "Carla Dias não tem permissão para consultar aferições.");
    EXPECT_FALSE(m_Ana->VersoesDaAfericao(1.5, versoes, recusa));
    EXPECT_EQ(recusa, "O cliente Autoridade Estadual de Trânsito não tem aferição de número interno 1,5.");
    EXPECT_EQ(versoes.size(), 1U); // nothing for whom it is refused
}

} // namespace
