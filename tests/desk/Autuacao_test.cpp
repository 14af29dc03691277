#include "desk/host/Autuacao.h"

#include "shell/Especifica.h"
#include "tests/desk/HospedeiroDeTeste.h"
#include "tests/desk/MesaTeste.h"
#include "tests/desk/Teclado.h"

#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>

using namespace mesa;

namespace {

using Textos = std::vector<std::string>;

const Textos Nenhuma(Autuacao::NroRespostas);

// Two portable devices in front of Ana: A7 with the calibration 111 of the year 2026, and B8 with 222 of the year 2025.
void IncluiDois(const Ref<SessaoServico> &ana)
{
    const auto inclui = [&](const std::string &codigo, const std::string &numero, int ano) {
        const double documento = GuardaPdf(ana, "certificado " + numero);
        const auto afericao = Com(AfericaoDe(numero, DataDe(10, 1, ano), DataDe(10, 1, ano + 1), documento),
                                  &AfericaoED::Marca, numero + "9");
        const auto agente = Com(DoTipo(EquipamentoDe(codigo), "A", 2), &EquiptoED::ArquivoLayout, "");
        Inclui(ana, Poe(agente, Poe(SensorDe(1), afericao)));
    };
    inclui("A7", "111", 2026);
    inclui("B8", "222", 2025);
}

class AutuacaoTeste : public HospedeiroTeste {
  protected:
    AutuacaoTeste()
    {
        IncluiDois(mesa.Registro.Sessao("ana"));
        geral = Loga("ana");
    }
    std::string NumeroDa(const std::string &afericao)
    {
        return mesa.Registro.Sql("SELECT NroIntAfericao FROM AFERICAO WHERE Numero = '" + afericao + "'");
    }

    Ref<Geral> geral;
    Autuacao autuacao{[this] { return geral->CEspecifica()->CreateCVorEquip(); }};
};

TEST_F(AutuacaoTeste, Busca_OfOneThatIsThere_AnswersWithTheNumberOfItsCalibration)
{
    autuacao.Busca({"a7", "", DataDe(20, 11, 2026)});
    EXPECT_EQ(autuacao.Frase(), "Equipamento encontrado.");
    EXPECT_EQ(autuacao.Respostas()[2], "A7");
    EXPECT_EQ(autuacao.Respostas()[4], "111");
    EXPECT_EQ(autuacao.Respostas()[5], "1119");
    EXPECT_EQ(autuacao.Respostas()[6], "10/01/2026");
    EXPECT_EQ(autuacao.NroAfericao(), NumeroDa("111"));
}

TEST_F(AutuacaoTeste, Busca_ThatFindsNothing_LeavesNothingOfTheAnswerBefore)
{
    autuacao.Busca({"A7", "", DataDe(20, 11, 2026)});
    autuacao.Busca({"C9", "", DataDe(20, 11, 2026)});
    EXPECT_EQ(autuacao.Frase(), "Equipamento não encontrado.");
    EXPECT_EQ(autuacao.Respostas(), Nenhuma);
    EXPECT_EQ(autuacao.NroAfericao(), "");
    autuacao.Imprime();
    EXPECT_EQ(autuacao.Frase(), "Antes, busque ou selecione o equipamento.");
}

TEST_F(AutuacaoTeste, Busca_OfOneWithoutACalibrationInForce_LeavesNothingOfTheAnswerBefore)
{
    autuacao.Busca({"A7", "", DataDe(20, 11, 2026)});
    autuacao.Busca({"B8", "", DataDe(20, 11, 2026)});
    EXPECT_EQ(mesa.Janelas->Avisos.size(), 1U);
    EXPECT_EQ(autuacao.Respostas(), Nenhuma);
    EXPECT_EQ(autuacao.NroAfericao(), "");
}

// The query service keeps the calibration of what it found before, when it is asked without a date.
TEST_F(AutuacaoTeste, Busca_WithoutADate_HasNoCalibrationOfAnotherEquipment)
{
    autuacao.Busca({"A7", "", DataDe(20, 11, 2026)});
    autuacao.Busca({"B8", "", {}});
    EXPECT_EQ(autuacao.Respostas()[2], "B8");
    EXPECT_EQ(Textos(autuacao.Respostas().begin() + 4, autuacao.Respostas().end()), Textos({"", "", ""}));
    EXPECT_EQ(autuacao.NroAfericao(), "");
    autuacao.Imprime();
    EXPECT_EQ(autuacao.Frase(), "Não há aferição na resposta: pergunte com a data da infração.");
}

TEST_F(AutuacaoTeste, Busca_ThatFails_LeavesNothingOfTheAnswerBefore)
{
    autuacao.Busca({"A7", "", DataDe(20, 11, 2026)});
    EXPECT_THROW(autuacao.Busca({"A'7", "", DataDe(20, 11, 2026)}), Falha);
    EXPECT_EQ(autuacao.Frase(), "");
    EXPECT_EQ(autuacao.Respostas(), Nenhuma);
    EXPECT_EQ(autuacao.NroAfericao(), "");
}

TEST_F(AutuacaoTeste, MudaPergunta_AfterAnAnswer_ForgetsIt)
{
    autuacao.Busca({"A7", "", DataDe(20, 11, 2026)});
    autuacao.MudaPergunta();
    EXPECT_EQ(autuacao.Frase(), "");
    EXPECT_EQ(autuacao.Respostas(), Nenhuma);
    EXPECT_EQ(autuacao.NroAfericao(), "");
}

TEST_F(AutuacaoTeste, Imprime_RightAfterAnAnswer_ShowsItsCertificate)
{
    autuacao.Busca({"A7", "", DataDe(20, 11, 2026)});
    autuacao.Imprime();
    EXPECT_EQ(autuacao.Frase(), "Certificado aberto.");
    ASSERT_EQ(mesa.Janelas->Mostrados.size(), 1U);
    EXPECT_NE(mesa.Janelas->Mostrados[0].find("~VORAFER" + NumeroDa("111") + "-A7.pdf"), std::string::npos);
}

TEST_F(AutuacaoTeste, Imprime_OfTheCalibrationOfAnotherEquipment_IsRefused)
{
    autuacao.Busca({"A7", "", DataDe(20, 11, 2026)});
    autuacao.DefineNroAfericao(NumeroDa("222"));
    autuacao.Imprime();
    EXPECT_EQ(autuacao.Frase(), "O certificado não foi aberto.");
    EXPECT_EQ(mesa.Janelas->Mostrados, Textos());
}

TEST_F(AutuacaoTeste, Imprime_WithoutANumber_AsksForIt)
{
    autuacao.Busca({"A7", "", DataDe(20, 11, 2026)});
    autuacao.DefineNroAfericao("");
    autuacao.Imprime();
    EXPECT_EQ(autuacao.Frase(), "Informe o número da aferição.");
}

// The window, in the hands of a person with a keyboard.
class JanelaDaAutuacaoTeste : public MesaTeste {
  protected:
    JanelaDaAutuacaoTeste()
    {
        IncluiDois(registro.Sessao("ana"));
        Entra();
    }
    void Percorre(const std::function<void(Teclado &)> &jornada)
    {
        EXPECT_EQ(Teclado::Percorre([&](Teclado &t) {
                      t.Ctrl(Qt::Key_3).EsperaJanela("ConsultaAutuacao");
                      t.TabAte("data").Tecla(Qt::Key_Home).Escreve("20112026");
                      Pergunta(t, "a7").EsperaTexto("resultado", "Equipamento encontrado.");
                      t.EsperaTexto("resposta5", "111");
                      jornada(t);
                  }),
                  "");
    }
    static Teclado &Pergunta(Teclado &t, const char *codigo)
    {
        return t.TabAte("codigo").Ctrl(Qt::Key_A).Escreve(codigo).Alt('B');
    }
    static void EsperaVazia(Teclado &t)
    {
        for (int resposta = 1; resposta <= Autuacao::NroRespostas; ++resposta) {
            t.EsperaTexto(QString("resposta%1").arg(resposta), "");
        }
        t.EsperaTexto("codOat", "");
    }
};

TEST_F(JanelaDaAutuacaoTeste, Answer_FillsTheNumberOfTheCalibration_AndItsCertificateIsPrinted)
{
    const QString numero = Q(registro.Sql("SELECT NroIntAfericao FROM AFERICAO WHERE Numero = '111'"));
    Percorre([&](Teclado &t) {
        t.EsperaTexto("codOat", numero).Alt('I').EsperaJanela("VisorPDF");
        t.Tecla(Qt::Key_Escape).EsperaTexto("resultado", "Certificado aberto.").EsperaTexto("codOat", numero);
    });
}

TEST_F(JanelaDaAutuacaoTeste, NotFound_ShowsNoAnswer)
{
    Percorre([](Teclado &t) {
        Pergunta(t, "nada").EsperaTexto("resultado", "Equipamento não encontrado.");
        EsperaVazia(t);
    });
}

TEST_F(JanelaDaAutuacaoTeste, ChangedQuestion_ShowsNoAnswer)
{
    const auto mudancas = std::vector<std::function<void(Teclado &)>>{
        [](Teclado &t) { t.TabAte("codigo").Tecla(Qt::Key_End).Escreve("x"); },
        [](Teclado &t) { t.TabAte("tipo").Tecla(Qt::Key_Down); },
        [](Teclado &t) { t.TabAte("data").Tecla(Qt::Key_Down); }, [](Teclado &t) { t.Alt('D'); }};
    Percorre([&](Teclado &t) {
        for (const auto &muda : mudancas) {
            muda(t);
            t.EsperaTexto("resultado", "");
            EsperaVazia(t);
            t.TabAte("tipo").Tecla(Qt::Key_Home);
            Pergunta(t, "a7").EsperaTexto("resultado", "Equipamento encontrado.").EsperaTexto("resposta3", "A7");
        }
    });
}

TEST_F(JanelaDaAutuacaoTeste, Fault_ShowsNoAnswer)
{
    Percorre([](Teclado &t) {
        Pergunta(t, "a'7").EsperaCaixa("");
        t.Tecla(Qt::Key_Return).EsperaTexto("resultado", "");
        EsperaVazia(t);
    });
}

TEST_F(JanelaDaAutuacaoTeste, SelectionGivenUp_ShowsNoAnswer)
{
    Percorre([](Teclado &t) {
        t.Alt('S').EsperaJanela("frmLista");
        t.Alt('C').EsperaTexto("resultado", "Nenhum equipamento foi selecionado.");
        EsperaVazia(t);
    });
}

} // namespace
