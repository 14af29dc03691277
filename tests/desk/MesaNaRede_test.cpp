#include "desk/host/AtosDoRegistro.h"
#include "desk/host/ServicosNoServidor.h"
#include "desk/tour/Telas.h"
#include "desk/windows/ConexaoQt.h"
#include "desk/windows/Mesa.h"
#include "host/Conversoes.h"
#include "services/Cabeca.h"
#include "services/RegistrosAdministracao.h"
#include "services/TextoQt.h"
#include "tests/desk/OperadorDeJanelas.h"
#include "tests/desk/RedeDeTeste.h"
#include "tests/desk/ServidorDeTeste.h"
#include "tests/desk/Teclado.h"
#include "tests/support/Estradas.h"

#include <QApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <chrono>
#include <deque>

using namespace mesa;

namespace {

// Services that are not here.
struct UmServidor {
    UmServidor(RegistroDeTeste &registro, ConexaoQt &conexao) : Servidor(registro)
    {
        rede::Insistencia insistencia;
        insistencia.PorConta = std::chrono::milliseconds(300); // a person is asked sooner here
        insistencia.TentaDeNovo = [&conexao](const std::string &frase) { return conexao.TentaDeNovo(frase); };
        insistencia.Relogio = [&conexao](const Data &agora) { conexao.Relogio().Acerta(agora); };
        Delas = Servidor.Conecta(insistencia);
    }
    LugarDoTrabalho Lugar() const { return {Servidor.Onde(), Servidor.Digital(), ""}; }

    ServidorDeTeste Servidor;
    Ref<Servicos> Delas;
};

struct UmaRede {
    UmaRede(RegistroDeTeste &registro, ConexaoQt &conexao)
        : DeTeste(Novo<RedeDeTeste>(registro.Aberto(), conexao)),
          Delas(DeTeste)
    {
    }
    static LugarDoTrabalho Lugar() { return {rede::Endereco{"central"}, "", ""}; }

    Ref<RedeDeTeste> DeTeste;
    Ref<Servicos> Delas;
};

// Real windows over them, with one equipment in the registry.
template <class Rede> class MesaSobre : public testing::Test {
  protected:
    MesaSobre()
    {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        Inclui(registro.Sessao("ana"), Poe(EquipamentoDe("R100"), SensorDe(1)));
        conexao.Usa(la.Delas);
        mesa.DefineLugar(la.Lugar(), conexao, [](const LugarDoTrabalho &) {});
        mesa.DefineAtos(AtosNoServidor([this] { return mesa.Hospedeiro()->Servico(); }));
        mesa.show();
    }
    void Entra(const std::string &quem)
    {
        registro.Cadastra(quem);
        std::string recusa;
        std::int32_t espera = 0;
        mesa.Entra(servicos->Entra(quem, "senha de " + quem, preferencias.Estacao(), recusa, espera));
    }
    static void Percorre(const std::function<void(Teclado &)> &jornada) { EXPECT_EQ(Teclado::Percorre(jornada), ""); }
    static void AbreEDescreve(Teclado &t, const QString &descricao)
    {
        t.Ctrl(Qt::Key_1).EsperaJanela("frmLista");
        t.Alt('L').EsperaLinhas("ztlLista", 1).TabAte("ztlLista/linhas");
        t.Alt('D').EsperaJanela("frmEquipDetalhes").TabAte("txtDescricao");
        t.Ctrl(Qt::Key_A).Escreve(descricao);
    }
    static void Salva(Teclado &t) { t.TabAte("txtDescricao").Alt('O').EsperaCaixa("Confirma a alteração?").Alt('S'); }
    std::string Descricao() { return registro.Sql("SELECT Descricao FROM EQUIPAMENTO WHERE Codigo = 'R100'"); }
    std::string Alteracoes()
    {
        return registro.Sql("SELECT COUNT(*) FROM HISTORICO WHERE Acao = 'altera' AND Entidade = 'EQUIPAMENTO'");
    }
    std::function<Data()> Agora()
    {
        return [this] { return registro.Relogio; };
    }

    QTemporaryDir pasta;
    RegistroDeTeste registro;
    Preferencias preferencias{pasta.filePath("preferencias.ini").toStdString()};
    ConexaoQt conexao{preferencias};
    Rede la{registro, conexao};
    Ref<Servicos> servicos = Novo<ServicosNoServidor>(la.Delas, conexao);
    Mesa mesa{servicos, pasta.path().toStdString(), Agora(), preferencias};
};

class MesaComServidor : public MesaSobre<UmServidor> {
  protected:
    // In the thread of the windows, where the server is held.
    void Para()
    {
        ExecutaNaTela([this] { la.Servidor.Para(); });
    }
    void Comeca()
    {
        ExecutaNaTela([this] { la.Servidor.Comeca(); });
    }
};

TEST_F(MesaComServidor, Equipment_IsFoundEditedAndSaved)
{
    Entra("ana");
    std::string naLista;
    const Percurso percurso = EstradaDeUmEquipamento(naLista);
    Percorre([&](Teclado &t) {
        t.Tecla(Qt::Key_1, Qt::ControlModifier);
        Condutor condutor(pasta.filePath("imagens"));
        OperadorDeJanelas::Percorre(condutor, percurso, "frmLista");
    });
    EXPECT_EQ(naLista, "Radar da saída");
    EXPECT_EQ(registro.Sql("SELECT Descricao FROM EQUIPAMENTO"), "Radar da saída");
    EXPECT_EQ(registro.Sql("SELECT LocalInfr FROM SENSOR"), "Rua B");
}

TEST_F(MesaComServidor, ServerThatStopsInASave_AndComesBack_SavesOnceAfterTheQuestionAndThePassword)
{
    Entra("ana");
    Percorre([&](Teclado &t) {
        AbreEDescreve(t, "Radar da saída");
        Para();
        Salva(t);
        t.EsperaJanela("SemResposta").EsperaFoco("deNovo");
        Comeca();
        t.Tecla(Qt::Key_Return).EsperaJanela("SessaoTerminada").EsperaTexto("usuario", "ana");
        t.Escreve("senha de ana\r").EsperaJanela("frmLista");
        t.EsperaTexto("estadoServidor", "Servidor: " + Q(la.Servidor.Onde().Texto()));
    });
    EXPECT_EQ(Descricao(), "Radar da saída");
    EXPECT_EQ(Alteracoes(), "1");
}

TEST_F(MesaComServidor, ServerThatStopsInASave_GivenUp_KeepsTheForm_AndTheNextPressSavesOnce)
{
    Entra("ana");
    Percorre([&](Teclado &t) {
        AbreEDescreve(t, "Radar da saída");
        Para();
        Salva(t);
        t.EsperaJanela("SemResposta").Alt('D').EsperaCaixa("não respondeu").Tecla(Qt::Key_Return);
        t.EsperaJanela("frmEquipDetalhes").EsperaTexto("txtDescricao", "Radar da saída");
        EXPECT_NE(Descricao(), "Radar da saída");
        Comeca();
        Salva(t);
        t.EsperaJanela("SessaoTerminada").Escreve("senha de ana\r").EsperaJanela("frmLista");
    });
    EXPECT_EQ(Descricao(), "Radar da saída");
    EXPECT_EQ(Alteracoes(), "1");
}

TEST_F(MesaComServidor, SessionThatEnded_WithAPasswordOfSomebodyElse_IsBegunWithANewOne_AndTheClockIsLearntAgain)
{
    Entra("ana");
    Percorre([&](Teclado &t) {
        AbreEDescreve(t, "Radar da saída");
        Para();
        ExecutaNaTela([&] {
            registro.Sql("UPDATE USUARIO SET TrocaSenha = 1 WHERE Usuario = 'ana'");
            registro.Relogio = DataDe(3, 2, 2031, 9, 0, 0);
        });
        Comeca();
        Salva(t);
        t.EsperaJanela("SessaoTerminada").Escreve("senha de ana\r");
        t.EsperaJanela("MinhaSenha").EsperaFoco("atual");
        t.Escreve("senha de ana\tcavalo grampeador azul\tcavalo grampeador azul\r").EsperaJanela("frmLista");
    });
    EXPECT_EQ(Descricao(), "Radar da saída");
    EXPECT_EQ(Alteracoes(), "1");
    EXPECT_EQ(Format(conexao.Relogio().Agora(), "dd/mm/yyyy"), "03/02/2031");
}

TEST_F(MesaComServidor, OneEquipment_ByTwoDesks_TheSecondIsToldAndKeepsWhatWasTyped)
{
    Entra("ana");
    const Ref<SessaoServico> bia = la.Servidor.Sessao("bia");
    Percorre([&](Teclado &t) {
        AbreEDescreve(t, "De ana");
        ExecutaNaTela([&] {
            const Ref<EquiptoED> lido = Abre(bia, 1);
            lido->Descricao = "De bia";
            EXPECT_TRUE(Pede(bia, "altera", lido).Feita);
        });
        Salva(t);
        t.EsperaCaixa("Bia").Tecla(Qt::Key_Return);
        t.EsperaJanela("frmEquipDetalhes").EsperaTexto("txtDescricao", "De ana");
    });
    EXPECT_EQ(Descricao(), "De bia");
    EXPECT_EQ(Alteracoes(), "1");
}

TEST_F(MesaComServidor, Check_IsMadeThere_AndTellsWhatItFound)
{
    Entra("saulo");
    Percorre([&](Teclado &t) {
        t.Alt('G').EscolheNoMenu("Conferir registro").EsperaJanela("Trabalho").EsperaTexto("fechar", "&Fechar");
        t.Alt('F').EsperaTexto("estadoConferencia", "Conferido em 20/11/2026 às 10:00: sem problemas");
    });
    registro.Sql("UPDATE USUARIO SET Nome = 'Outra' WHERE Usuario = 'saulo'");
    Percorre([&](Teclado &t) {
        t.Alt('G').EscolheNoMenu("Conferir registro").EsperaJanela("Trabalho").EsperaTexto("fechar", "&Fechar");
        EXPECT_NE(NaTela([] {
                      return S(dynamic_cast<QPlainTextEdit *>(Teclado::Acha("achados"))->toPlainText());
                  }).find("Outra"),
                  std::string::npos);
        t.Alt('F').EsperaTexto("estadoConferencia", "Conferido em 20/11/2026 às 10:00: 1 problema");
    });
}

TEST_F(MesaComServidor, Check_AfterThePasswordWasChangedElsewhere_AsksForItFirst)
{
    Entra("saulo");
    const QLabel *quantos = mesa.findChild<QWidget *>("estado1")->findChild<QLabel *>("quantos");
    ASSERT_TRUE(QTest::qWaitFor([&] { return quantos->text() == "0"; })); // the panel asks by itself
    auto troca = Novo<TrocaSenhaED>();
    troca->Atual = Segredo("senha de saulo");
    troca->Nova = Segredo("cavalo grampeador azul");
    ASSERT_TRUE(Pede(la.Servidor.Sessao("saulo"), "trocaMinhaSenha", troca, "AdministracaoRN").Feita);
    Percorre([&](Teclado &t) {
        t.Alt('G').EscolheNoMenu("Conferir registro").EsperaJanela("SessaoTerminada");
        t.Escreve("cavalo grampeador azul\r").EsperaJanela("Trabalho").EsperaTexto("fechar", "&Fechar");
        t.Alt('F').EsperaTexto("estadoConferencia", "Conferido em 20/11/2026 às 10:00: sem problemas");
    });
}

TEST_F(MesaComServidor, Head_IsTheServersRegistrys)
{
    Entra("saulo");
    const QString destino = pasta.filePath("cabeca.txt");
    Percorre([&](Teclado &t) {
        t.Alt('G').EscolheNoMenu("Exportar cabeça").EsperaJanela("Cabeca");
        t.Alt('S').EsperaEscolhaDeArquivo().Ctrl(Qt::Key_A).Escreve(destino + "\r").EsperaJanela("Cabeca");
        t.Alt('F').EsperaJanela("Mesa");
    });
    const CabecaAssinada cabeca = CabecaAssinada::LeArquivo(S(destino));
    EXPECT_TRUE(cabeca.AssinaturaVale());
    EXPECT_EQ(cabeca.Registro, registro.Aberto().Identificador());
    EXPECT_EQ(std::to_string(cabeca.Tamanho), registro.Sql("SELECT COUNT(*) FROM HISTORICO"));
}

TEST_F(MesaComServidor, Administration_IsDoneThere)
{
    registro.Cadastra("bruno");
    Entra("saulo");
    Percorre([](Teclado &t) {
        t.Alt('M').EscolheNoMenu("Usuários").EsperaJanela("Administracao").EsperaLinhas("usuarios", 3);
        t.TabAte("usuarios/linhas").Tecla(Qt::Key_Home).EsperaLinha("usuarios", 1, "ana");
        t.Tecla(Qt::Key_Down).EsperaLinha("usuarios", 2, "bruno");
        t.Alt('D').EsperaCaixa("Desativar o usuário bruno").Alt('S').EsperaLinha("usuarios", 2, "Desativado");
        t.Alt('C').EsperaPagina("paginas", 1).EsperaLinhas("clientes", 2);
        t.Alt('F').EsperaJanela("Mesa");
    });
    EXPECT_EQ(registro.Sql("SELECT Ativo FROM USUARIO WHERE Usuario = 'bruno'"), "2");
}

TEST_F(MesaComServidor, MyPassword_IsChangedThere)
{
    Entra("saulo");
    Percorre([](Teclado &t) {
        t.Alt('E').EscolheNoMenu("Trocar minha senha").EsperaJanela("MinhaSenha").EsperaFoco("atual");
        t.Escreve("senha de saulo\tcavalo grampeador azul\tcavalo grampeador azul\r").EsperaJanela("Mesa");
    });
    std::string recusa;
    std::int32_t espera = 0;
    EXPECT_TRUE(registro.Aberto().Entra("saulo", "cavalo grampeador azul", "estação", recusa, espera)) << recusa;
}

// A network on which that happens which is arranged for each operation to come.
class MesaNaRede : public MesaSobre<UmaRede> {
  protected:
    using Acaso = RedeDeTeste::Acaso;

    MesaNaRede() { Entra("ana"); }
    void Salva(Teclado &t, const std::deque<Acaso> &acasos)
    {
        ExecutaNaTela([&] { la.DeTeste->Acasos = acasos; });
        MesaSobre::Salva(t);
    }
    // Its description is typed anew; then that happens in the save.
    void Altera(Teclado &t, const std::deque<Acaso> &acasos)
    {
        AbreEDescreve(t, "Radar da saída");
        Salva(t, acasos);
    }
};

TEST_F(MesaNaRede, SilenceAndALostAnswer_TriedAgain_AreSavedOnce)
{
    Percorre([&](Teclado &t) {
        Altera(t, {Acaso::Calado, Acaso::SemVolta});
        t.EsperaJanela("SemResposta").EsperaTexto("estadoServidor", "Servidor: central:50443 (sem conexão)");
        t.Tecla(Qt::Key_Return).EsperaJanela("SemResposta").Alt('T').EsperaJanela("frmLista");
        t.EsperaTexto("estadoServidor", "Servidor: central:50443");
    });
    EXPECT_EQ(Descricao(), "Radar da saída");
    EXPECT_EQ(Alteracoes(), "1");
}

TEST_F(MesaNaRede, SlowSave_IsShownAndGivenUp_KeepsTheForm)
{
    Percorre([&](Teclado &t) {
        Altera(t, {Acaso::Demora});
        t.EsperaJanela("Andamento").EsperaTexto("frase", "Esperando a resposta do servidor.");
        t.Espera("a bar that promises nothing", [] {
            const auto *barra = qobject_cast<QProgressBar *>(Teclado::Acha("progresso"));
            return barra != nullptr && barra->maximum() == 0 && barra->text().isEmpty();
        });
        t.Alt('C');
        t.EsperaCaixa("A operação foi cancelada: nada foi gravado.").Tecla(Qt::Key_Return);
        t.EsperaJanela("frmEquipDetalhes").EsperaTexto("txtDescricao", "Radar da saída");
    });
    EXPECT_EQ(Alteracoes(), "0");
}

TEST_F(MesaNaRede, SilenceAfterASave_GivenUp_IsToldAsThatOfTheLocalCopy_AndTheListShowsWhatWasSaved)
{
    Percorre([&](Teclado &t) {
        AbreEDescreve(t, "Radar da saída");
        ExecutaNaTela([&] { la.DeTeste->ReplicasCaladas = 1; });
        MesaSobre::Salva(t);
        t.EsperaJanela("SemResposta")
            .EsperaTexto("oQueFica", "O que foi digitado e ainda não foi gravado continua na "
                                     "janela. Se a operação já tiver sido feita, ela não é "
                                     "feita outra vez.");
        t.Alt('D').EsperaCaixa("O que foi pedido está gravado").Tecla(Qt::Key_Return);
        t.EsperaJanela("frmLista").EsperaLinhas("ztlLista", 1).EsperaLinha("ztlLista", 1, "Radar da saída");
    });
    EXPECT_EQ(Descricao(), "Radar da saída");
}

TEST_F(MesaNaRede, SessionThatEnded_InASave_GivenUp_SavesNothingAndKeepsTheForm)
{
    Percorre([&](Teclado &t) {
        Altera(t, {Acaso::Terminou});
        t.EsperaJanela("SessaoTerminada").Tecla(Qt::Key_Escape);
        t.EsperaCaixa("A sessão com o servidor terminou.").Tecla(Qt::Key_Return);
        t.EsperaJanela("frmEquipDetalhes").EsperaTexto("txtDescricao", "Radar da saída");
        EXPECT_EQ(Alteracoes(), "0");
        Salva(t, {Acaso::Terminou});
        t.EsperaJanela("SessaoTerminada").Escreve("senha de ana\r").EsperaJanela("frmLista");
    });
    EXPECT_EQ(Descricao(), "Radar da saída");
    EXPECT_EQ(Alteracoes(), "1");
}

} // namespace
