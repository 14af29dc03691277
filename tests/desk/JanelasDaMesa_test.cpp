#include "desk/host/Caminhos.h"
#include "desk/tour/Telas.h"
#include "desk/windows/InicioQt.h"
#include "desk/windows/JanelaDeRelato.h"
#include "desk/windows/JanelaDeTrabalho.h"
#include "host/Falha.h"
#include "tests/desk/MesaTeste.h"
#include "tests/desk/Retrato.h"
#include "tests/desk/Teclado.h"
#include "tests/services/PastaDeTeste.h"
#include "tests/services/SemPrivilegio.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTest>

#include <gtest/gtest.h>

#include <semaphore>

using namespace mesa;

namespace {

// A window is photographed and must be without a defect.
void Retrata(const QString &nome)
{
    const QString defeitos = NaTela([&] {
        QWidget *janela = Teclado::Frente();
        Fotografa(*janela, nome);
        return DefeitosDaJanela(*janela).join("\n");
    });
    EXPECT_EQ(defeitos.toStdString(), "") << nome.toStdString();
}

// `abre` comes back when the window that it opens is done.
void NaFrente(const std::function<void()> &abre, const std::function<void(Teclado &)> &jornada)
{
    bool voltou = false;
    QMetaObject::invokeMethod(
        qApp,
        [&] {
            abre();
            voltou = true;
        },
        Qt::QueuedConnection);
    EXPECT_EQ(Teclado::Percorre([&](Teclado &t) {
                  jornada(t);
                  t.Espera("the window is done", [&] { return voltou; });
              }),
              "");
}

TEST(JanelasDoInicio, FirstStart_ByKeys_AnswersWhatWasChosen)
{
    const auto escolhe = [](const std::function<void(Teclado &)> &teclas) {
        OpcaoDoInicio opcao{};
        NaFrente([&] { opcao = InicioQt().Comeca(); },
                 [&](Teclado &t) {
                     t.EsperaJanela("PrimeiroInicio");
                     teclas(t);
                 });
        return opcao;
    };
    EXPECT_EQ(escolhe([](Teclado &t) {
                  Retrata("primeiro-inicio");
                  t.Alt('N');
              }),
              OpcaoDoInicio::Novo);
    EXPECT_EQ(escolhe([](Teclado &t) { t.Alt('A'); }), OpcaoDoInicio::Existente);
    EXPECT_EQ(escolhe([](Teclado &t) { t.Alt('S'); }), OpcaoDoInicio::Servidor);
    EXPECT_EQ(escolhe([](Teclado &t) { t.Alt('E'); }), OpcaoDoInicio::Amostra);
    EXPECT_EQ(escolhe([](Teclado &t) { t.Alt('R'); }), OpcaoDoInicio::Sair);
    EXPECT_EQ(escolhe([](Teclado &t) { t.Tecla(Qt::Key_Escape); }), OpcaoDoInicio::Sair);
    EXPECT_EQ(escolhe([](Teclado &t) { t.TabAte("amostra").Tecla(Qt::Key_Space); }), OpcaoDoInicio::Amostra);
}

TEST(JanelasDoInicio, Absence_ByKeys_AnswersWhatWasChosen)
{
    const std::string frase = "Não há um registro em /dados/compartilhados/registro.db. Confira se o diretório "
                              "está montado, escolha o arquivo certo ou restaure uma cópia.";
    const auto escolhe = [&](const std::function<void(Teclado &)> &teclas) {
        OpcaoDaFalta opcao{};
        NaFrente([&] { opcao = InicioQt().Falta(frase); },
                 [&](Teclado &t) {
                     t.EsperaJanela("Falta").EsperaTexto("frase", Q(frase));
                     teclas(t);
                 });
        return opcao;
    };
    EXPECT_EQ(escolhe([](Teclado &t) {
                  Retrata("falta");
                  t.Tecla(Qt::Key_Return);
              }),
              OpcaoDaFalta::TentarDeNovo);
    EXPECT_EQ(escolhe([](Teclado &t) { t.Alt('E'); }), OpcaoDaFalta::EscolherArquivo);
    EXPECT_EQ(escolhe([](Teclado &t) { t.Alt('C'); }), OpcaoDaFalta::RestaurarCopia);
    EXPECT_EQ(escolhe([](Teclado &t) { t.Alt('D'); }), OpcaoDaFalta::MudarDeLugar);
    EXPECT_EQ(escolhe([](Teclado &t) { t.Alt('R'); }), OpcaoDaFalta::Sair);
    EXPECT_EQ(escolhe([](Teclado &t) { t.Tecla(Qt::Key_Escape); }), OpcaoDaFalta::Sair);
}

TEST(JanelasDoInicio, AnotherRegistry_ByKeys_IsTakenByAYesOnly)
{
    const auto aceita = [&](const std::function<void(Teclado &)> &teclas) {
        bool sim = false;
        NaFrente([&] { sim = InicioQt().Aceita("É outro. Trabalhar nele?"); },
                 [&](Teclado &t) {
                     t.EsperaCaixa("É outro. Trabalhar nele?");
                     teclas(t);
                 });
        return sim;
    };
    EXPECT_FALSE(aceita([](Teclado &t) { t.Tecla(Qt::Key_Return); }));
    EXPECT_FALSE(aceita([](Teclado &t) { t.Tecla(Qt::Key_Escape); }));
    EXPECT_TRUE(aceita([](Teclado &t) { t.Alt('S'); }));
}

TEST(JanelasDoInicio, NewRegistry_ByKeys_IsAskedForUntilItIsMade)
{
    std::vector<RegistroNovo> pedidos;
    bool feito = false;
    NaFrente(
        [&] {
            feito = InicioQt().PedeRegistroNovo([&](const RegistroNovo &novo) -> std::optional<ProblemaDoRegistroNovo> {
                pedidos.push_back(novo);
                if (pedidos.size() == 1) {
                    return ProblemaDoRegistroNovo{
                        CampoDoRegistroNovo::Nome,
                        "Esta é uma frase comprida, que diz o que há de errado com o que foi informado, e que "
                        "ocupa mais de uma linha na janela em que se cria um registro novo."};
                }
                return std::nullopt;
            });
        },
        [&](Teclado &t) {
            t.EsperaJanela("NovoRegistro").EsperaFoco("codCliente");
            Retrata("registro-novo");
            t.Escreve("12\tAutoridade Estadual de Trânsito\t");
            t.EsperaFoco("estado").DesceAte("RS").Tecla(Qt::Key_Tab);
            t.EsperaFoco("setores").Escreve("Norte\rSul\t").EsperaFoco("usuario").Escreve("olga\tOlga Reis\t");
            t.Escreve("cavalo grampeador azul\tcavalo grampeador\r");
            t.EsperaTexto("aviso", "As duas senhas não são iguais. Digite-as de novo.").EsperaFoco("senha");
            t.TabAte("repetida").Escreve("cavalo grampeador azul\r");
            t.EsperaFoco("nome");
            Retrata("registro-novo-recusado");
            t.Alt('I');
        });
    EXPECT_TRUE(feito);
    ASSERT_EQ(pedidos.size(), 2U);
    EXPECT_EQ(pedidos[1].Cliente.CodCliente, 12);
    EXPECT_EQ(pedidos[1].Cliente.Nome, "Autoridade Estadual de Trânsito");
    EXPECT_EQ(pedidos[1].Cliente.UF, "RS");
    EXPECT_EQ(pedidos[1].Cliente.Setores, (std::vector<std::string>{"Norte", "Sul"}));
    EXPECT_EQ(pedidos[1].Usuario, "olga");
    EXPECT_EQ(pedidos[1].Nome, "Olga Reis");
    EXPECT_EQ(pedidos[1].Senha.Texto(), "cavalo grampeador azul");
}

TEST(JanelasDoInicio, NewRegistry_GivenUp_IsNotMade)
{
    bool feito = true;
    NaFrente(
        [&] {
            feito = InicioQt().PedeRegistroNovo([](const RegistroNovo &) -> std::optional<ProblemaDoRegistroNovo> {
                ADD_FAILURE();
                return std::nullopt;
            });
        },
        [](Teclado &t) { t.EsperaJanela("NovoRegistro").Tecla(Qt::Key_Escape); });
    EXPECT_FALSE(feito);
}

TEST(JanelasDoInicio, Findings_ByKeys_AreGoneOnWithByAYesOnly)
{
    const auto continua = [](const std::function<void(Teclado &)> &teclas) {
        bool sim = false;
        NaFrente(
            [&] {
                sim = InicioQt().Continua("A conferência encontrou 2 problemas.",
                                          {"A aferição 12 tem 40 e a história diz 60.", "O documento 3 sumiu."});
            },
            [&](Teclado &t) {
                t.EsperaJanela("Achados");
                teclas(t);
            });
        return sim;
    };
    EXPECT_FALSE(continua([](Teclado &t) {
        Retrata("achados-do-inicio");
        t.Tecla(Qt::Key_Return);
    }));
    EXPECT_FALSE(continua([](Teclado &t) { t.Tecla(Qt::Key_Escape); }));
    EXPECT_TRUE(continua([](Teclado &t) { t.Alt('C'); }));
}

TEST(MesaDeConsulta, RegistryThatTakesNoWrites_IsSaidSoAndOffersNone)
{
    RegistroDeTeste registro;
    registro.Cadastra("saulo");
    registro.Fecha();
    AbreATodos(registro.Caminho());
    std::filesystem::permissions(registro.Caminho(), std::filesystem::perms(0444));
    const QTemporaryDir pasta;
    const auto agora = [&] { return registro.Relogio; };
    Preferencias preferencias(pasta.filePath("preferencias.ini").toStdString());
    const Ref<Servicos> servicos = [&] {
        const SemPrivilegio sem;
        return Servicos::Abre(registro.Caminho(), agora);
    }();
    ASSERT_NE(servicos->SomenteLeitura(), "");
    Mesa mesa(servicos, pasta.filePath("mesa").toStdString(), agora, preferencias);
    AtosDoRegistro atos = FazAtosDoRegistro(registro.Caminho(), agora);
    atos.Restaura = [](const std::string &) {};
    mesa.DefineAtos(atos);
    std::string recusa;
    std::int32_t espera = 0;
    mesa.Entra(servicos->Entra("saulo", "senha de saulo", "mesa", recusa, espera));
    EXPECT_EQ(mesa.windowTitle().toStdString(), "Registro de Equipamentos (somente consulta)");
    EXPECT_EQ(mesa.findChild<QLabel *>("estadoSomenteConsulta")->toolTip().toStdString(), servicos->SomenteLeitura());
    EXPECT_FALSE(mesa.findChild<QAction *>("minhaSenha")->isEnabled());
    EXPECT_FALSE(mesa.findChild<QAction *>("restaurar")->isEnabled());
    EXPECT_TRUE(mesa.findChild<QAction *>("fazerCopia")->isEnabled());
}

class JanelasDaMesaTeste : public MesaTeste {
  protected:
    JanelasDaMesaTeste() { Entra(); }
};

TEST_F(JanelasDaMesaTeste, Reason_IsAskedForUntilItSaysSomething)
{
    std::optional<std::string> motivo;
    NaFrente([&] { motivo = mesa.PedeMotivo("A aferição 123 já foi salva. Por que é corrigida?"); },
             [](Teclado &t) {
                 t.EsperaJanela("Motivo").EsperaFoco("motivo");
                 for (const char *pouco : {"", "  x  ", "\r\r\r\r\r\r"}) {
                     t.Ctrl(Qt::Key_A).Tecla(Qt::Key_Delete).Escreve(pouco).Alt('O');
                     t.EsperaTexto("aviso", "Informe o motivo da correção, com ao menos 5 caracteres.");
                 }
                 Retrata("motivo");
                 t.Ctrl(Qt::Key_A).Escreve("  certificado trocado ").Alt('O');
             });
    EXPECT_EQ(motivo, "certificado trocado");
}

TEST_F(JanelasDaMesaTeste, Reason_GivenUp_IsNone)
{
    std::optional<std::string> motivo = "antes";
    NaFrente([&] { motivo = mesa.PedeMotivo("Por que é corrigida?"); },
             [](Teclado &t) { t.EsperaJanela("Motivo").Escreve("um bom motivo").Tecla(Qt::Key_Escape); });
    EXPECT_EQ(motivo, std::nullopt);
}

TEST_F(JanelasDaMesaTeste, Correction_AsksForTheReasonAndStoresNothingWithoutOne)
{
    const auto sessao = registro.Sessao("ana");
    IncluiComSensores(sessao, {{AfericaoDe("1", DataDe(1, 1, 2026), DataDe(30, 6, 2026))}});
    mesa.Entra(sessao);
    const auto corrige = [&](const std::function<void(Teclado &)> &jornada) {
        Retorno retorno;
        NaFrente(
            [&] {
                Abre(sessao, 1);
                retorno = Pede(sessao, "altera",
                               Poe(SoNumero(1), Poe(SoSensor(1), Com(SoAfericao(1), &AfericaoED::Marca, "555"))));
            },
            jornada);
        return retorno;
    };
    const auto motivos = [&] {
        return registro.Sql("SELECT COUNT(*) || ' ' || MAX(COALESCE(Motivo, '')) FROM HISTORICO WHERE Entidade = "
                            "'AFERICAO'");
    };
    const Retorno desistida = corrige([](Teclado &t) {
        t.EsperaJanela("Motivo")
            .EsperaTexto("frase", "Esta gravação corrige a aferição 1 do sensor 1.")
            .Tecla(Qt::Key_Escape);
    });
    EXPECT_FALSE(desistida.Feita);
    EXPECT_EQ(motivos(), "1 ");
    EXPECT_TRUE(corrige([](Teclado &t) { t.EsperaJanela("Motivo").Escreve("certificado trocado").Alt('O'); }).Feita);
    EXPECT_EQ(motivos(), "2 certificado trocado");
}

TEST_F(JanelasDaMesaTeste, Work_OnTheWholeRegistry_ShowsHowFarItIsAndWhatCameOfIt)
{
    std::binary_semaphore adiante(0);
    std::optional<ResultadoDoAto> resultado;
    NaFrente(
        [&] {
            JanelaDeTrabalho janela(
                "Conferir registro", "O registro inteiro está sendo conferido.",
                [&](const Segue &segue) {
                    EXPECT_TRUE(segue(0.25, "Documentos"));
                    adiante.acquire();
                    return ResultadoDoAto{
                        true,
                        "Foram conferidas 1.200 linhas. Sem uma cabeça de fora, não prova que o fim "
                        "da corrente não foi cortado.",
                        {"A aferição 12 tem 40 e a história diz 60.", "O documento 3 está danificado."}};
                },
                &mesa);
            janela.exec();
            resultado = janela.Resultado();
        },
        [&](Teclado &t) {
            t.EsperaJanela("Trabalho").EsperaTexto("parte", "Documentos");
            Retrata("conferencia-a-caminho");
            adiante.release();
            t.EsperaTexto("fechar", "&Fechar");
            Retrata("conferencia");
            EXPECT_EQ(NaTela([] {
                          return dynamic_cast<QPlainTextEdit *>(Teclado::Acha("achados"))->toPlainText().toStdString();
                      }),
                      "A aferição 12 tem 40 e a história diz 60.\nO documento 3 está danificado.");
            t.Alt('F');
        });
    ASSERT_TRUE(resultado);
    EXPECT_EQ(resultado->Achados.size(), 2U);
}

TEST_F(JanelasDaMesaTeste, Work_GivenUp_EndsByItselfAndTellsWhatItHas)
{
    std::optional<ResultadoDoAto> resultado;
    NaFrente(
        [&] {
            JanelaDeTrabalho janela(
                "Conferir registro", "O registro inteiro está sendo conferido.",
                [](const Segue &segue) {
                    while (segue(0.5, "Sensores")) {
                        std::this_thread::yield();
                    }
                    return ResultadoDoAto{false, "Foram conferidas 3 linhas.", {}};
                },
                &mesa);
            janela.exec();
            resultado = janela.Resultado();
        },
        [](Teclado &t) {
            t.EsperaJanela("Trabalho").EsperaTexto("parte", "Sensores").Tecla(Qt::Key_Escape);
            t.EsperaTexto("frase", "O trabalho foi interrompido. Foram conferidas 3 linhas.").Tecla(Qt::Key_Escape);
        });
    ASSERT_TRUE(resultado);
    EXPECT_FALSE(resultado->Inteiro);
}

TEST_F(JanelasDaMesaTeste, Work_ThatFails_IsASentence)
{
    NaFrente(
        [&] {
            JanelaDeTrabalho janela(
                "Fazer cópia", "A cópia está sendo feita.",
                [](const Segue &) -> ResultadoDoAto { throw Falha(61, "Copia", "O disco ficou cheio."); }, &mesa);
            janela.exec();
            EXPECT_FALSE(janela.Resultado());
        },
        [](Teclado &t) {
            t.EsperaJanela("Trabalho").EsperaTexto("frase", "O trabalho não pôde ser feito: O disco ficou cheio.");
            t.Alt('F');
        });
}

TEST_F(JanelasDaMesaTeste, Report_IsSavedAsAText)
{
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const QString destino = pasta.filePath("relato.txt");
    NaFrente(
        [&] {
            JanelaDeRelato("Importar", "Nada foi incluído.", {"Linha 2: sem nome.", "Linha 9: CEP."}, &mesa).exec();
        },
        [&](Teclado &t) {
            t.EsperaJanela("Relato");
            Retrata("relato");
            t.Alt('S').EsperaEscolhaDeArquivo().Ctrl(Qt::Key_A).Escreve(destino + "\r").EsperaJanela("Relato");
            t.Alt('F');
        });
    QFile salvo(destino);
    ASSERT_TRUE(salvo.open(QIODevice::ReadOnly));
    EXPECT_EQ(salvo.readAll().toStdString(), "Nada foi incluído.\n\nLinha 2: sem nome.\nLinha 9: CEP.\n");
}

TEST_F(JanelasDaMesaTeste, MenuOfTheRegistry_OfWhomHasNoRight_ChecksDossiersAlone)
{
    AtosDoRegistro atos;
    atos.Confere = [] { return [](const Segue &) { return ResultadoDoAto{}; }; };
    mesa.DefineAtos(atos);
    EXPECT_FALSE(mesa.findChild<QAction *>("conferirRegistro")->isVisible());
    EXPECT_TRUE(mesa.findChild<QAction *>("conferirDossie")->isVisible());
    mesa.Sai();
    EXPECT_FALSE(mesa.findChild<QAction *>("menuRegistro")->isVisible());
}

// The menu of the registry, in the hands of saulo, who may do everything, over what really does it.
class MenuDoRegistroTeste : public MesaTeste {
  protected:
    MenuDoRegistroTeste()
    {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        AtosDoRegistro atos = FazAtosDoRegistro(registro.Caminho(), [this] { return registro.Relogio; });
        atos.Restaura = [this](const std::string &copia) { restaurada = copia; };
        EXPECT_EQ(mesa.findChild<QLabel *>("estadoSomenteConsulta"), nullptr);
        mesa.DefineAtos(atos);
        mesa.show();
        mesa.Entra(registro.Sessao("saulo"));
    }
    static void Percorre(const std::function<void(Teclado &)> &jornada) { EXPECT_EQ(Teclado::Percorre(jornada), ""); }
    static void Abre(Teclado &t, const QString &item) { t.EsperaJanela("Mesa").Alt('G').EscolheNoMenu(item); }

    std::string restaurada;
};

TEST_F(MenuDoRegistroTeste, Check_IsToldInTheStatusBarAndItsReportIsSaved)
{
    Percorre([&](Teclado &t) {
        Abre(t, "Conferir registro...");
        t.EsperaJanela("Trabalho").EsperaTexto("fechar", "&Fechar").Alt('S');
        t.EsperaEscolhaDeArquivo().Ctrl(Qt::Key_A).Escreve(pasta.filePath("relatorio.txt") + "\r");
        t.EsperaJanela("Trabalho").Alt('F').EsperaJanela("Mesa");
        t.EsperaTexto("estadoConferencia", "Conferido em 20/11/2026 às 10:00: sem problemas");
    });
    const std::string relatorio = BytesDe(pasta.filePath("relatorio.txt").toStdString());
    EXPECT_NE(relatorio.find("Arquivo: " + registro.Caminho()), std::string::npos) << relatorio;

    LinhasSql(registro.Caminho(), "UPDATE USUARIO SET Nome = 'Outra' WHERE Usuario = 'saulo'");
    Percorre([&](Teclado &t) {
        Abre(t, "Conferir registro...");
        t.EsperaJanela("Trabalho").EsperaTexto("fechar", "&Fechar");
        EXPECT_NE(NaTela([] {
                      return dynamic_cast<QPlainTextEdit *>(Teclado::Acha("achados"))->toPlainText().toStdString();
                  }).find("Outra"),
                  std::string::npos);
        t.Alt('F').EsperaJanela("Mesa");
        t.EsperaTexto("estadoConferencia", "Conferido em 20/11/2026 às 10:00: 1 problema");
    });
}

TEST_F(MenuDoRegistroTeste, Copy_IsMadeWhereItWasAskedFor)
{
    const QString copias = pasta.filePath("copias");
    std::filesystem::create_directory(copias.toStdString());
    Percorre([&](Teclado &t) {
        Abre(t, "Fazer cópia...");
        t.EsperaEscolhaDeArquivo().Ctrl(Qt::Key_A).Escreve(copias + "\r");
        t.EsperaJanela("Trabalho").EsperaTexto("fechar", "&Fechar").Alt('F').EsperaJanela("Mesa");
    });
    EXPECT_EQ(Nomes(copias.toStdString()), std::vector<std::string>{"registro.20261120-100000.db"});
}

TEST_F(MenuDoRegistroTeste, Restore_ByAYes_ClosesTheDeskAndIsLeftToTheProgram)
{
    const QString copia = pasta.filePath("copia.db");
    std::filesystem::copy_file(registro.Caminho(), copia.toStdString());
    const auto pede = [&](Teclado &t) {
        Abre(t, "Restaurar...");
        t.EsperaEscolhaDeArquivo().Ctrl(Qt::Key_A).Escreve(copia + "\r");
        t.Espera("the question", [] { return Teclado::Frente()->inherits("QMessageBox"); });
    };
    Percorre([&](Teclado &t) {
        pede(t);
        t.Tecla(Qt::Key_Return).EsperaJanela("Mesa");
    });
    EXPECT_EQ(restaurada, "");
    EXPECT_TRUE(mesa.isVisible());
    Percorre([&](Teclado &t) {
        pede(t);
        t.Alt('S').Espera("the desk is closed", [&] { return !mesa.isVisible(); });
    });
    EXPECT_EQ(restaurada, copia.toStdString());
}

TEST_F(MenuDoRegistroTeste, CaresOfTheDay_AreDoneBehindTheWindowsAndWhatWasFoundIsTold)
{
    const auto agora = [this] { return registro.Relogio; };
    mesa.DefineCuidados(CuidadosDoDia(registro.Caminho(), registro.Aberto(), preferencias, agora));
    LinhasSql(registro.Caminho(), "UPDATE USUARIO SET Nome = 'Outra' WHERE Usuario = 'saulo'");
    const auto cuida = [this] {
        QMetaObject::invokeMethod(
            &mesa, [this] { mesa.CuidaDoDia(); }, Qt::QueuedConnection);
    };
    Percorre([&](Teclado &t) {
        cuida(); // the copy of a registry with a fault is not kept
        t.EsperaJanela("Relato").Alt('F').EsperaJanela("Mesa");
        NaTela([&] { registro.PassaSegundos(10 * 60); });
        cuida();
        t.EsperaJanela("Relato");
        EXPECT_NE(NaTela([] {
                      return dynamic_cast<QPlainTextEdit *>(Teclado::Acha("linhas"))->toPlainText().toStdString();
                  }).find("Outra"),
                  std::string::npos);
        t.Alt('F').EsperaTexto("estadoConferencia", "Conferido em 20/11/2026 às 10:10: 1 problema");
    });
    EXPECT_EQ(Nomes(Copia::PastaPadrao(registro.Caminho())), std::vector<std::string>{});
}

TEST_F(MenuDoRegistroTeste, Head_IsShownAndSavedAndNeverOverAFile)
{
    const QString destino = pasta.filePath("cabeca.txt");
    Percorre([&](Teclado &t) {
        Abre(t, "Exportar cabeça...");
        t.EsperaJanela("Cabeca");
        Retrata("cabeca");
        t.Alt('S').EsperaEscolhaDeArquivo().Ctrl(Qt::Key_A).Escreve(destino + "\r").EsperaJanela("Cabeca");
        t.Alt('S').EsperaEscolhaDeArquivo().Ctrl(Qt::Key_A).Escreve(destino + "\r");
        t.EsperaCaixa("A cabeça do histórico não pôde ser gravada em " + destino +
                      " (já existe um arquivo com esse nome).");
        t.Tecla(Qt::Key_Return).EsperaJanela("Cabeca").Alt('F').EsperaJanela("Mesa");
    });
    const CabecaAssinada cabeca = CabecaAssinada::LeArquivo(destino.toStdString());
    EXPECT_TRUE(cabeca.AssinaturaVale());
    EXPECT_EQ(cabeca.Registro, registro.Aberto().Identificador());
}

TEST(ResumoDaConferencia, SaysWhenAndHowMany)
{
    const auto resumo = [](bool inteiro, std::size_t achados) {
        return ResumoDaConferencia({inteiro, "", std::vector<std::string>(achados, "algo")}, "20/11/2026 às 10:00");
    };
    EXPECT_EQ(resumo(true, 0), "Conferido em 20/11/2026 às 10:00: sem problemas");
    EXPECT_EQ(resumo(true, 1), "Conferido em 20/11/2026 às 10:00: 1 problema");
    EXPECT_EQ(resumo(true, 12), "Conferido em 20/11/2026 às 10:00: 12 problemas");
    EXPECT_EQ(resumo(false, 0), "Conferido em 20/11/2026 às 10:00: não terminou");
    EXPECT_EQ(resumo(false, 2), "Conferido em 20/11/2026 às 10:00: 2 problemas");
}

TEST(Caminhos, NameWithABackslash_IsItselfOnBothSides)
{
    const std::filesystem::path estranho = "/tmp/pasta/a\\b.pdf";
    const std::string noModulo = CaminhoDoModulo(estranho);
    EXPECT_EQ(noModulo.substr(0, 11), "\\tmp\\pasta\\");
    EXPECT_EQ(std::count(noModulo.begin(), noModulo.end(), '\\'), 3);
    EXPECT_EQ(CaminhoDoSistema(noModulo), estranho);
    EXPECT_EQ(CaminhoDoSistema(CaminhoEscolhido("/tmp/pasta/a\\b.pdf")), estranho);
    EXPECT_EQ(CaminhoEscolhido("/tmp/c.pdf"), "/tmp/c.pdf");
    EXPECT_EQ(ComNomesDoSistema("Arquivo " + CaminhoEscolhido("/tmp/a\\b.pdf")), "Arquivo /tmp/a\\b.pdf");
    EXPECT_EQ(CaminhoDoSistema("\\tmp\\c.pdf"), "/tmp/c.pdf");
}

} // namespace
