#include "desk/tour/Telas.h"
#include "desk/windows/ConexaoQt.h"
#include "desk/windows/Entrada.h"
#include "desk/windows/InicioQt.h"
#include "desk/windows/JanelaDoLugar.h"
#include "tests/desk/AparenciaDeTeste.h"
#include "tests/desk/Contrastes.h"
#include "tests/desk/MesaTeste.h"
#include "tests/desk/Retrato.h"
#include "tests/desk/Teclado.h"
#include "tests/desk/TelasDeTeste.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QRadioButton>

#include <gtest/gtest.h>

#include <optional>
#include <thread>

using namespace mesa;

namespace {

const std::string ADigital =
    "0A:1B:2C:3D:4E:5F:60:71:82:93:A4:B5:C6:D7:E8:F9:0A:1B:2C:3D:4E:5F:60:71:82:93:A4:B5:C6:D7:E8:F9";

// As it is shown to be compared.
const char *const EmLinhas = "0A:1B:2C:3D:4E:5F:60:71:\n82:93:A4:B5:C6:D7:E8:F9:\n"
                             "0A:1B:2C:3D:4E:5F:60:71:\n82:93:A4:B5:C6:D7:E8:F9";

Instante Manha()
{
    return DataDe(20, 11, 2026, 9, 30, 0);
}

// Photographed, read and measured in the light and in the dark.
void Retrata(const QString &nome, AparenciaDeTeste &aparencia)
{
    for (const Tema tema : {Tema::Escuro, Tema::Claro}) {
        ExecutaNaTela([&] { aparencia.Poe(tema); });
        ExecutaNaTela([&] {
            QWidget *janela = Teclado::Frente();
            Fotografa(*janela, nome + (tema == Tema::Claro ? "" : "-escura"));
            EXPECT_EQ(DefeitosDaJanela(*janela).join("\n").toStdString(), "") << nome.toStdString();
            EXPECT_EQ(PoucoContraste(*janela).join("\n").toStdString(), "") << nome.toStdString();
        });
    }
}

// The windows around a server, each in front of a person with a keyboard.
class JanelasDoServidor : public testing::Test {
  protected:
    // What `abre` answers when the window that it opens is done.
    template <class F> auto NaFrente(F abre, const std::function<void(Teclado &)> &jornada)
    {
        std::optional<decltype(abre())> resposta;
        QMetaObject::invokeMethod(
            qApp, [&] { resposta = abre(); }, Qt::QueuedConnection);
        EXPECT_EQ(Teclado::Percorre([&](Teclado &t) {
                      jornada(t);
                      t.Espera("the window is done", [&] { return resposta.has_value(); });
                  }),
                  "");
        return *resposta;
    }

    QTemporaryDir pasta;
    Preferencias preferencias{pasta.filePath("preferencias.ini").toStdString()};
    AparenciaDeTeste aparencia{preferencias};
};

TEST_F(JanelasDoServidor, Place_ByKeys_IsAServerOrThisComputer)
{
    const auto escolhe = [&](const LugarDoTrabalho &agora, const std::function<void(Teclado &)> &teclas) {
        return NaFrente([&] { return InicioQt().EscolheLugar(agora); },
                        [&](Teclado &t) {
                            t.EsperaJanela("LugarDoRegistro");
                            teclas(t);
                        });
    };
    const auto servidor = escolhe({}, [&](Teclado &t) {
        t.EsperaFoco("esteComputador");
        EXPECT_FALSE(NaTela([] { return Teclado::Acha("endereco")->isEnabled(); }));
        t.Alt('S');
        Retrata("lugar-do-registro", aparencia);
        t.Alt('M').EsperaFoco("endereco").Escreve("central:x\r");
        t.EsperaTexto("aviso", "A porta do servidor é um número de 1 a 65535: \"máquina:porta\".");
        t.EsperaFoco("endereco").Escreve("central\t").EsperaFoco("digital").Escreve("AB\r");
        t.EsperaTexto("aviso", "A digital tem 64 algarismos de 0 a 9 e de A a F, em pares. Copie-a inteira.");
        t.EsperaFoco("digital").Escreve(Q(ADigital) + "\r");
    });
    ASSERT_TRUE(servidor);
    EXPECT_EQ(servidor->Servidor, rede::Endereco{"central"});
    EXPECT_EQ(servidor->Digital, ADigital);
    const auto este = escolhe(*servidor, [](Teclado &t) {
        t.EsperaFoco("endereco").EsperaTexto("endereco", "central:50443").Alt('C').Alt('U');
    });
    ASSERT_TRUE(este);
    EXPECT_FALSE(este->Servidor);
    EXPECT_FALSE(escolhe({}, [](Teclado &t) { t.Tecla(Qt::Key_Escape); }));
    EXPECT_FALSE(escolhe({}, [](Teclado &t) { t.Alt('A'); }));
    const auto porAutoridade = escolhe({rede::Endereco{}, "", ""}, [](Teclado &t) {
        t.EsperaFoco("endereco").Escreve("central").Alt('T').EsperaFoco("autoridade").Escreve("/proc/self/status\r");
    });
    ASSERT_TRUE(porAutoridade);
    EXPECT_EQ(porAutoridade->Autoridade, "/proc/self/status");
}

TEST_F(JanelasDoServidor, Fingerprint_ByKeys_IsTrustedByAYesOnly)
{
    const auto confia = [&](const std::function<void(Teclado &)> &teclas) {
        return NaFrente(
            [] { return InicioQt().ConfiaNoServidor("central:50443", ADigital); },
            [&](Teclado &t) {
                t.EsperaJanela("DigitalDoServidor").EsperaFoco("naoConfiar").EsperaTexto("digital", EmLinhas);
                teclas(t);
            });
    };
    EXPECT_FALSE(confia([&](Teclado &t) {
        Retrata("digital-do-servidor", aparencia);
        t.Tecla(Qt::Key_Return);
    }));
    EXPECT_FALSE(confia([](Teclado &t) { t.Tecla(Qt::Key_Escape); }));
    EXPECT_FALSE(confia([](Teclado &t) { t.Alt('N'); }));
    EXPECT_TRUE(confia([](Teclado &t) { t.Alt('C'); }));
}

TEST_F(JanelasDoServidor, ServerThatCannotBeHad_ByKeys_AnswersWhatWasChosen)
{
    const auto escolhe = [&](const std::function<void(Teclado &)> &teclas) {
        return NaFrente(
            [] { return InicioQt().FaltaServidor("O servidor central:50443 não respondeu."); },
            [&](Teclado &t) {
                t.EsperaJanela("FaltaServidor").EsperaTexto("frase", "O servidor central:50443 não respondeu.");
                teclas(t);
            });
    };
    EXPECT_EQ(escolhe([&](Teclado &t) {
                  Retrata("falta-servidor", aparencia);
                  t.Tecla(Qt::Key_Return);
              }),
              OpcaoSemServidor::TentarDeNovo);
    EXPECT_EQ(escolhe([](Teclado &t) { t.Alt('D'); }), OpcaoSemServidor::MudarDeLugar);
    EXPECT_EQ(escolhe([](Teclado &t) { t.Alt('R'); }), OpcaoSemServidor::Sair);
    EXPECT_EQ(escolhe([](Teclado &t) { t.Tecla(Qt::Key_Escape); }), OpcaoSemServidor::Sair);
}

TEST_F(JanelasDoServidor, Silence_ByKeys_IsTriedAgainOrGivenUp)
{
    ConexaoQt conexao(preferencias);
    const RegistroDeTeste registro;
    const Ref<Servicos> servicos = Servicos::Abre(registro.Caminho(), Manha);
    EXPECT_FALSE(conexao.TentaDeNovo("Sem resposta.")); // nothing is connected, and the start asks by itself
    conexao.Usa(servicos);
    const auto tenta = [&](const std::function<void(Teclado &)> &teclas) {
        return NaFrente([&] { return conexao.TentaDeNovo("O servidor central:50443 não respondeu."); },
                        [&](Teclado &t) {
                            t.EsperaJanela("SemResposta").EsperaFoco("deNovo");
                            t.EsperaTexto("frase", "O servidor central:50443 não respondeu.");
                            teclas(t);
                        });
    };
    EXPECT_TRUE(tenta([&](Teclado &t) {
        Retrata("sem-resposta", aparencia);
        t.Tecla(Qt::Key_Return);
    }));
    EXPECT_TRUE(tenta([](Teclado &t) { t.Alt('T'); }));
    EXPECT_FALSE(tenta([](Teclado &t) { t.Alt('D'); }));
    EXPECT_FALSE(tenta([](Teclado &t) { t.Tecla(Qt::Key_Escape); }));
}

TEST_F(JanelasDoServidor, Wait_ThatLasts_IsShownAndGivenUp)
{
    ConexaoQt conexao(preferencias);
    const bool desistiu = NaFrente(
        [&] {
            bool continua = true;
            conexao.Espera([&](const Segue &segue) {
                while (continua) {
                    continua = segue(0, "");
                }
            });
            return !continua;
        },
        [&](Teclado &t) {
            t.EsperaJanela("Andamento").EsperaTexto("frase", "Esperando a resposta do servidor.");
            Retrata("esperando-o-servidor", aparencia);
            t.Alt('C');
        });
    EXPECT_TRUE(desistiu);
}

TEST_F(JanelasDoServidor, OtherThreads_AskNobody)
{
    ConexaoQt conexao(preferencias);
    const RegistroDeTeste registro;
    const Ref<Servicos> servicos = Servicos::Abre(registro.Caminho(), Manha);
    conexao.Usa(servicos);
    bool tentaria = true;
    bool continuaria = false;
    bool entraria = true;
    std::thread outra([&] {
        tentaria = conexao.TentaDeNovo("Sem resposta.");
        conexao.Espera([&](const Segue &segue) { continuaria = segue(0.5, ""); });
        entraria = static_cast<bool>(conexao.EntraDeNovo(Operador(), "Terminou."));
    });
    outra.join();
    EXPECT_FALSE(tentaria);
    EXPECT_TRUE(continuaria);
    EXPECT_FALSE(entraria);
    EXPECT_TRUE(conexao.Ligada());
}

// The main window over a registry that stands somewhere else.
class MesaNoServidor : public MesaTeste {
  protected:
    MesaNoServidor()
    {
        mesa.DefineLugar({rede::Endereco{"central"}, ADigital, ""}, conexao,
                         [this](const LugarDoTrabalho &lugar) { mudou = lugar; });
    }
    static void Percorre(const std::function<void(Teclado &)> &jornada) { EXPECT_EQ(Teclado::Percorre(jornada), ""); }

    ConexaoQt conexao{preferencias};
    std::optional<LugarDoTrabalho> mudou;
};

TEST_F(MesaNoServidor, Windows_TellWhichServerAndWhetherItAnswers)
{
    Entra();
    const Ref<Servicos> servicos = Servicos::Abre(registro.Caminho(), Agora());
    conexao.Usa(servicos);
    EXPECT_EQ(mesa.windowTitle().toStdString(), "Registro de Equipamentos - servidor central:50443");
    Percorre([&](Teclado &t) {
        t.EsperaJanela("Mesa").EsperaTexto("estadoServidor", "Servidor: central:50443");
        t.EsperaTexto("quem", "Ana Souza, Autoridade Estadual de Trânsito, Fiscalização - servidor central:50443");
        ExecutaNaTela([&] {
            QMetaObject::invokeMethod(
                &mesa, [&] { conexao.TentaDeNovo("Não respondeu."); }, Qt::QueuedConnection);
        });
        t.EsperaJanela("SemResposta").Tecla(Qt::Key_Escape).EsperaJanela("Mesa");
        t.EsperaTexto("estadoServidor", "Servidor: central:50443 (sem conexão)");
        t.Alt('U').EscolheNoMenu("Sobre").EsperaJanela("Sobre");
        const QString sobre = NaTela([] { return TextoDe(Teclado::Acha("dados")); });
        EXPECT_TRUE(sobre.contains("Registro: servidor central:50443, sem conexão, identificador " +
                                   Q(registro.Aberto().Identificador())))
            << S(sobre);
        t.Tecla(Qt::Key_Escape).EsperaJanela("Mesa");
        ExecutaNaTela([&] { conexao.Respondeu(); });
        t.EsperaTexto("estadoServidor", "Servidor: central:50443");
    });
}

TEST_F(MesaNoServidor, WhatIsDoneAtItsMachine_IsSeenAndNotOffered)
{
    mesa.DefineAtos(AtosNoServidor([this] { return mesa.Hospedeiro()->Servico(); }));
    mesa.show();
    mesa.Entra(registro.Sessao("saulo"));
    for (const char *nome : {"fazerCopia", "restaurar"}) {
        const auto *acao = mesa.findChild<QAction *>(nome);
        EXPECT_TRUE(acao->isVisible()) << nome;
        EXPECT_FALSE(acao->isEnabled()) << nome;
        EXPECT_TRUE(acao->text().endsWith("... (na máquina do servidor)")) << S(acao->text());
        EXPECT_EQ(S(acao->toolTip()),
                  "As cópias são feitas, e restauradas, na máquina do servidor, por quem o administra.");
    }
    for (const char *nome : {"conferirRegistro", "exportarCabeca"}) {
        const auto *acao = mesa.findChild<QAction *>(nome);
        EXPECT_TRUE(acao->isVisible() && acao->isEnabled()) << nome;
        EXPECT_TRUE(acao->text().endsWith("...")) << S(acao->text());
    }
    mesa.Entra(registro.Sessao("ana"));
    for (const char *nome : {"conferirRegistro", "fazerCopia", "restaurar", "exportarCabeca"}) {
        EXPECT_FALSE(mesa.findChild<QAction *>(nome)->isVisible()) << nome;
    }
}

TEST_F(MesaNoServidor, SignIn_OffersAnotherRegistry_ByKeys)
{
    AparenciaDeTeste aparencia(preferencias);
    mesa.show();
    std::optional<bool> entrou;
    QMetaObject::invokeMethod(
        &mesa, [&] { entrou = mesa.PedeEntrada(); }, Qt::QueuedConnection);
    Percorre([&](Teclado &t) {
        t.EsperaJanela("Entrada").EsperaTexto("onde", "Registro: servidor central:50443");
        Retrata("entrada-no-servidor", aparencia);
        t.Alt('D').EsperaJanela("LugarDoRegistro").EsperaTexto("endereco", "central:50443");
        t.Tecla(Qt::Key_Escape).EsperaJanela("Entrada");
        t.Alt('D').EsperaJanela("LugarDoRegistro").Alt('C').Alt('U');
        t.Espera("the sign-in is left", [&] { return entrou.has_value(); });
    });
    EXPECT_EQ(entrou, false);
    ASSERT_TRUE(mudou);
    EXPECT_FALSE(mudou->Servidor);
}

TEST_F(MesaNoServidor, SessionThatHasEnded_IsBegunAgainOverTheOpenWindows)
{
    AparenciaDeTeste aparencia(preferencias);
    Entra();
    const Ref<Servicos> servicos = Servicos::Abre(registro.Caminho(), Agora());
    conexao.Usa(servicos);
    Ref<SessaoServico> nova;
    bool voltou = false;
    const auto termina = [&] {
        voltou = false;
        QMetaObject::invokeMethod(
            &mesa,
            [&] {
                nova = conexao.EntraDeNovo(registro.Sessao("ana")->Operador(), "A sessão terminou.");
                voltou = true;
            },
            Qt::QueuedConnection);
    };
    Percorre([&](Teclado &t) {
        t.Ctrl(Qt::Key_1).EsperaJanela("frmLista");
        t.Alt('N').EsperaJanela("frmEquipDetalhes").TabAte("txtCodEquip").Escreve("NOVO1");
        ExecutaNaTela(termina);
        t.EsperaJanela("SessaoTerminada").EsperaFoco("senha").EsperaTexto("usuario", "ana");
        Retrata("sessao-terminada", aparencia);
        t.Escreve("senha errada\r").EsperaTexto("aviso", "Usuário ou senha incorretos.");
        t.Escreve("senha de ana\r").EsperaJanela("frmEquipDetalhes").EsperaFoco("txtCodEquip");
        t.EsperaTexto("txtCodEquip", "NOVO1");
        t.Espera("the new session", [&] { return voltou; });
        EXPECT_TRUE(nova);
        ExecutaNaTela(termina);
        t.EsperaJanela("SessaoTerminada").Alt('D').EsperaJanela("frmEquipDetalhes").EsperaTexto("txtCodEquip", "NOVO1");
        t.Espera("the answer", [&] { return voltou; });
        EXPECT_TRUE(nova.Nada());
        t.Alt('C').EsperaCaixa("Foram feitas alterações").Alt('S').EsperaJanela("frmLista");
    });
}

} // namespace
