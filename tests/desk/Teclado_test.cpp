#include "tests/desk/Teclado.h"

#include "services/sample/CertificadoPDF.h"
#include "tests/desk/MesaTeste.h"
#include "tests/desk/VoltaDeTab.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPrintDialog>
#include <QPushButton>
#include <QTimer>

#include <gtest/gtest.h>

using namespace mesa;

namespace {

// The desk over a registry with three equipment of Autoridade Estadual de Trânsito: A1, with a sensor that has a
// calibration, Á2 and A3.
class TecladoTeste : public MesaTeste {
  protected:
    TecladoTeste()
    {
        const Ref<SessaoServico> ana = registro.Sessao("ana");
        Inclui(ana, Poe(EquipamentoDe("A1"), ComAfericao(ana, "111")));
        Inclui(ana, EquipamentoDe("Á2"));
        Inclui(ana, Com(EquipamentoDe("A3"), &EquiptoED::Descricao, "Zona norte"));
        registro.IncluiRua("Rua Bento Gonçalves", "Centro", "90010020");
        registro.IncluiRua("Rua Bento Ribeiro", "Norte", "90010030");
        registro.IncluiRua("Rua Direita", "Sé", "01010030", 3550308);
        mesa.show();
        QApplication::setKeyboardInputInterval(MuitoTempo);
    }
    ~TecladoTeste() override { QApplication::setKeyboardInputInterval(intervalo); }

    // A sensor with one calibration of that number, and its document.
    static Ref<SensorED> ComAfericao(const Ref<SessaoServico> &sessao, const std::string &numero)
    {
        const double documento = GuardaPdf(sessao, "certificado");
        return Poe(SensorDe(1), AfericaoDe(numero, DataDe(10, 1, 2026), DataDe(10, 1, 2027), documento));
    }
    void PedeEntrada()
    {
        QMetaObject::invokeMethod(
            &mesa, [this] { entrou = mesa.PedeEntrada(); }, Qt::QueuedConnection);
    }
    // Everything comes as it is told.
    static void Percorre(const std::function<void(Teclado &)> &jornada) { EXPECT_EQ(Teclado::Percorre(jornada), ""); }
    // With Ana at work.
    void Trabalha(const std::function<void(Teclado &)> &jornada)
    {
        Entra();
        Percorre(jornada);
    }
    static void AbreLista(Teclado &t)
    {
        t.Ctrl(Qt::Key_1).EsperaJanela("frmLista");
        t.Alt('L').EsperaLinhas("ztlLista", 3).TabAte("ztlLista/linhas");
        t.Tecla(Qt::Key_Home).EsperaLinha("ztlLista", 1, "A1");
    }
    static void AbreEquipamento(Teclado &t, char comando)
    {
        AbreLista(t);
        t.Alt(comando).EsperaJanela("frmEquipDetalhes");
    }
    QString Certificado() const
    {
        const QString caminho = pasta.filePath("certificado.pdf");
        const Bytes bytes = FazCertificadoPDF("Certificado", {"Equipamento: A1"});
        QFile arquivo(caminho);
        EXPECT_TRUE(arquivo.open(QIODevice::WriteOnly));
        arquivo.write(reinterpret_cast<const char *>(bytes.data()), static_cast<qint64>(bytes.size()));
        return caminho;
    }

    bool entrou = false;

  private:
    // Letters that look for an item belong together, however long a busy machine takes between them.
    static constexpr int MuitoTempo = 600000;
    int intervalo = QApplication::keyboardInputInterval();
};

TEST_F(TecladoTeste, SignInAndOut_ByKeys)
{
    PedeEntrada();
    Percorre([](Teclado &t) {
        t.EsperaJanela("Entrada").EsperaFoco("usuario");
        t.Escreve("ana\tsenha errada\r").EsperaTexto("aviso", "Usuário ou senha incorretos.").EsperaFoco("senha");
        t.Escreve("senha de ana\r").EsperaTexto("estadoUsuario", "Usuário: Ana Souza");
        t.Ctrl(Qt::Key_1).EsperaJanela("frmLista");
        t.Alt('E').EscolheNoMenu("Trocar de usuário").EsperaJanela("Entrada");
        t.EsperaTexto("estadoUsuario", "Ninguém entrou");
        t.Alt('R').Espera("the desk is closed", [] { return QApplication::activeModalWidget() == nullptr; });
    });
    EXPECT_TRUE(entrou);
    EXPECT_FALSE(mesa.isVisible());
    EXPECT_EQ(mesa.Hospedeiro()->Plataforma()->NroForms(), 0);
}

TEST_F(TecladoTeste, Search_ByCriteriaAndMoving_ByKeys)
{
    Trabalha([](Teclado &t) {
        t.Alt('E').EscolheNoMenu("trabalho fotográfico").EsperaJanela("frmLista");
        t.TabAte("ztCliente/cliente").DesceAte("Autoridade Estadual de Trânsito");
        t.TabAte("ztCliente/setor").DesceAte("Metrologia").DesceAte("Todos os setores");
        t.TabAte("cboTipoAgente").DesceAte("Fixo");
        t.TabAte("cboTipoEquipto").DesceAte("Pardal");
        t.TabAte("cboCriterio").DesceAte("Código").EsperaTexto("rot_txtCodEquip", "Código");
        t.TabAte("txtCodEquip").Escreve("A");
        t.Alt('L').EsperaLinhas("ztlLista", 3);
        t.TabAte("ztlLista/linhas").Tecla(Qt::Key_Home).EsperaLinha("ztlLista", 1, "A1");
        t.Tecla(Qt::Key_Down).EsperaLinha("ztlLista", 2, "Á2");
        t.Tecla(Qt::Key_End).EsperaLinha("ztlLista", 3, "A3");
        t.Tecla(Qt::Key_PageUp).EsperaLinha("ztlLista", 1, "A1");
        t.Tecla(Qt::Key_PageDown).EsperaLinha("ztlLista", 3, "A3");
        // "Código" takes the keyboard away at once; the open list leads past it.
        t.TabAte("cboCriterio");
        t.Tecla(Qt::Key_Down, Qt::AltModifier).Tecla(Qt::Key_End);
        t.Tecla(Qt::Key_Return).EsperaTexto("cboCriterio", "Subcódigo").EsperaTexto("rot_txtCodEquip", "Subcódigo");
        t.EsperaLinhas("ztlLista", 0);
        t.TabAte("chkInativos").Tecla(Qt::Key_Space).EsperaTexto("chkInativos", "marcado").EsperaLinhas("ztlLista", 0);
        t.Ctrl(Qt::Key_F4).EsperaJanela("Mesa");
    });
}

TEST_F(TecladoTeste, Columns_AreSortedByKeys)
{
    Trabalha([](Teclado &t) {
        AbreLista(t);
        t.Tecla(Qt::Key_F10, Qt::ShiftModifier).EscolheNoMenu("Ordenar por");
        t.EscolheNoMenu("Código").EsperaLinha("ztlLista", 1, "A1");
        t.Tecla(Qt::Key_End).EsperaLinha("ztlLista", 3, "A3");
        t.Tecla(Qt::Key_Menu).EsperaMenu().Escreve("o1").EsperaLinha("ztlLista", 1, "A3");
        t.Tecla(Qt::Key_End).EsperaLinha("ztlLista", 3, "A1");
        t.Tecla(Qt::Key_Menu).EscolheNoMenu("Ordenar por");
        t.EscolheNoMenu("Descrição").EsperaLinha("ztlLista", 2, "A1");
        t.Tecla(Qt::Key_End).EsperaLinha("ztlLista", 3, "Zona norte");
    });
}

TEST_F(TecladoTeste, Commands_OfTheList_ByLetterAndByMenu)
{
    Trabalha([](Teclado &t) {
        AbreEquipamento(t, 'D'); // Editar
        t.EsperaTexto("txtDescricao", "Av. Ipiranga, sentido centro");
        t.Alt('C').EsperaJanela("frmLista");
        t.Tecla(Qt::Key_Menu).EscolheNoMenu("Detalhes").EsperaJanela("frmEquipDetalhes");
        t.EsperaTexto("cmdCancelar", "&Fechar");
        t.Alt('F').EsperaJanela("frmLista");
        t.Alt('N').EsperaJanela("frmEquipDetalhes"); // Novo
        t.Alt('C').EsperaJanela("frmLista");
        t.Tecla(Qt::Key_F10, Qt::ShiftModifier).EscolheNoMenu("Desativar");
        t.EsperaCaixa("Deseja desativar o equipamento A1 ?");
        t.Alt('N').EsperaJanela("frmLista");
        t.Alt('V').EsperaCaixa("Deseja desativar o equipamento A1 ?"); // Desativar
        t.Alt('S').EsperaLinhas("ztlLista", 2);
        t.Alt('I').EsperaLinhas("ztlLista", 2); // Atualizar
        t.Alt('F').EsperaJanela("Mesa");        // the list's own button
    });
    EXPECT_EQ(registro.Sql("SELECT Ativo FROM EQUIPAMENTO WHERE Codigo = 'A1'"), "2");
}

TEST_F(TecladoTeste, SensorAndCalibration_FromTheListToTheRegistry_ByKeys)
{
    const QString certificado = Certificado();
    Trabalha([&](Teclado &t) {
        AbreEquipamento(t, 'D');
        t.Ctrl(Qt::Key_PageDown).EsperaPagina("sstDados", 1);
        t.Ctrl(Qt::Key_PageDown).EsperaPagina("sstDados", 2);
        t.TabAte("ztListaSensor/linhas").EsperaLinhas("ztListaSensor", 1);
        t.Alt('N').EsperaJanela("frmEquipSensores");
        t.TabAte("ztEndereco1/municipio");
        t.Tecla(Qt::Key_Home); // it begins with the one last used
        t.Escreve("porto").EsperaTexto("ztEndereco1/municipio", "Porto Alegre");
        t.TabAte("ztEndereco1/via").Escreve("bento gon").Tecla(Qt::Key_Down);
        t.Tecla(Qt::Key_Return).EsperaFoco("ztEndereco1/numero");
        t.Escreve("1500").TabAte("ztEndereco1/usar").Tecla(Qt::Key_Return);
        t.EsperaTexto("txtLocalInfr", "Rua Bento Gonçalves, 1500 - Centro");
        t.Ctrl(Qt::Key_PageDown).EsperaPagina("sstDados", 1);
        t.TabAte("ztListaAfericao/linhas");
        t.Alt('N').EsperaJanela("frmEquipAfericoes");
        t.TabAte("txtNroINMETRO").Escreve("10000001");
        t.TabAte("txtMarcaINMETRO").Escreve("1000000101");
        t.TabAte("txtDtVerifINMETRO").Escreve("10012026");
        t.TabAte("txtDtVencINMETRO").Escreve("10012027");
        t.Alt('P').EsperaEscolhaDeArquivo();
        t.Escreve(certificado + "\r").EsperaJanela("VisorPDF");
        t.Tecla(Qt::Key_Escape).EsperaTexto("lblMsgCert", "Arquivo " + certificado);
        t.Alt('U').EsperaTexto("lblMsgCert", "Upload Concluido!");
        t.Alt('O').EsperaJanela("frmEquipSensores");
        t.TabAte("ztListaAfericao/linhas").EsperaLinha("ztListaAfericao", 1, "10000001");
        t.Alt('T').EsperaJanela("frmEquipAfericoes"); // Detalhes
        t.Alt('V').EsperaJanela("VisorPDF");
        t.Tecla(Qt::Key_Escape);
        t.Alt('F').EsperaJanela("frmEquipSensores");
        t.Alt('O').EsperaJanela("frmEquipDetalhes").EsperaLinhas("ztListaSensor", 2);
        t.Alt('O').EsperaCaixa("Confirma a alteração?");
        t.Alt('S').EsperaJanela("frmLista");
    });
    EXPECT_EQ(registro.Sql("SELECT COUNT(*) FROM SENSOR"), "2");
    EXPECT_EQ(registro.Sql("SELECT LocalInfr FROM SENSOR WHERE NroSensor = 2"), "Rua Bento Gonçalves, 1500 - Centro");
    EXPECT_EQ(registro.Sql("SELECT DataVencimento FROM AFERICAO WHERE Numero = '10000001'"), "20270110");
}

TEST_F(TecladoTeste, Address_ByPostalCodeWhileTyping)
{
    Trabalha([&](Teclado &t) {
        AbreEquipamento(t, 'D');
        t.Ctrl(Qt::Key_PageDown);
        t.Ctrl(Qt::Key_PageDown).EsperaPagina("sstDados", 2);
        t.Alt('N').EsperaJanela("frmEquipSensores");
        t.TabAte("ztEndereco1/municipio").Tecla(Qt::Key_Home).Escreve("porto");
        t.TabAte("ztEndereco1/via").Escreve("9"); // two of them begin so
        t.Espera("nothing can be used yet", [] { return !Teclado::Acha("ztEndereco1/usar")->isEnabled(); });
        t.Tecla(Qt::Key_Backspace).Escreve("90010-030");
        t.Alt('U').EsperaTexto("txtLocalInfr", "Rua Bento Ribeiro - Norte");
    });
}

TEST_F(TecladoTeste, Address_InAnotherState_ByItsNameWithoutAccents)
{
    Trabalha([&](Teclado &t) {
        AbreEquipamento(t, 'D');
        t.Ctrl(Qt::Key_PageDown);
        t.Ctrl(Qt::Key_PageDown).EsperaPagina("sstDados", 2);
        t.Alt('N').EsperaJanela("frmEquipSensores");
        t.TabAte("ztEndereco1/municipio").Escreve("sao paulo -");
        t.EsperaTexto("ztEndereco1/municipio", "São Paulo - SP");
        t.TabAte("ztEndereco1/via").Escreve("direita");
        t.Alt('U').EsperaTexto("txtLocalInfr", "Rua Direita - Sé");
    });
}

TEST_F(TecladoTeste, SignIn_AfterWrongPasswords_MakesThePersonWait)
{
    registro.Cadastra("ana");
    PedeEntrada();
    Percorre([](Teclado &t) {
        t.EsperaJanela("Entrada").Escreve("ana");
        for (int vez = 0; vez < 3; ++vez) {
            t.TabAte("senha").Escreve("errada\r").EsperaTexto("senha", "");
        }
        t.Espera("the button waits", [] {
            const auto *entrar = qobject_cast<QPushButton *>(Teclado::Acha("entrar"));
            return entrar != nullptr && !entrar->isEnabled() && entrar->text().startsWith("Aguarde ");
        });
        t.Escreve("senha de ana\r");
        t.Espera("nobody came in", [] { return Teclado::Frente()->objectName() == "Entrada"; });
        t.Tecla(Qt::Key_Escape);
    });
    EXPECT_FALSE(entrou);
}

TEST_F(TecladoTeste, TabKey_OnEveryPageOfAnEquipment_LeadsWhereItLeadsAPersonWithoutAScreen)
{
    Trabalha([](Teclado &t) {
        const auto confere = [&] {
            t.Espera("the Tab key agrees", [] {
                const auto *janela = dynamic_cast<JanelaForm *>(Teclado::Frente());
                const auto semTela = VoltaSemTela(*janela);
                EXPECT_EQ(VoltaNaTela(*janela), semTela);
                EXPECT_GE(semTela.size(), 3U);
                return true;
            });
        };
        for (const char comando : {'D', 'T'}) { // what is locked can be gone to as well
            if (comando == 'D') {
                AbreEquipamento(t, comando);
            } else {
                t.Alt('C').EsperaJanela("frmLista");
                t.Alt(comando).EsperaJanela("frmEquipDetalhes");
            }
            confere();
            for (const int pagina : {1, 2, 4}) {
                t.Ctrl(Qt::Key_PageDown).EsperaPagina("sstDados", pagina);
                confere();
            }
        }
        t.Ctrl(Qt::Key_PageDown).EsperaPagina("sstDados", 4); // its calibrations are its sensors'
        t.Ctrl(Qt::Key_PageUp).EsperaPagina("sstDados", 2);
        t.Alt('F').EsperaJanela("frmLista");
    });
}

TEST_F(TecladoTeste, Limits_AreIncludedAndExcluded_ByKeys)
{
    Trabalha([](Teclado &t) {
        AbreLista(t);
        t.Tecla(Qt::Key_Menu).EscolheNoMenu("Limites Diferenciados").EsperaJanela("frmLimitesDif");
        t.Alt('N').EsperaJanela("frmLimitesDifDetalhes");
        t.TabAte("chkDia_2").Tecla(Qt::Key_Space);
        t.TabAte("ztmHInicial").Escreve("0800");
        t.TabAte("ztmHFinal").Escreve("1200");
        t.TabAte("txtVelocPerm").Escreve("40");
        t.Alt('O').EsperaJanela("frmLimitesDif");
        t.TabAte("ztLista/linhas").EsperaLinha("ztLista", 1, "Segunda");
        t.Alt('D').EsperaJanela("frmLimitesDifDetalhes"); // Editar
        t.EsperaTexto("ztmHInicial", "08:00");
        t.Alt('C').EsperaJanela("frmLimitesDif");
        t.Alt('X').EsperaCaixa("exclu"); // Excluir
        t.Alt('S').EsperaCaixa("Limite excluído com sucesso!");
        t.Tecla(Qt::Key_Return).EsperaLinhas("ztLista", 0);
        t.Alt('F').EsperaJanela("frmLista");
    });
    EXPECT_EQ(registro.Sql("SELECT COUNT(*) FROM LIMITE"), "1");
    EXPECT_EQ(registro.Sql("SELECT COUNT(*) FROM LIMITE WHERE Ativo = 1"), "0");
}

TEST_F(TecladoTeste, Windows_HelpAndAbout_ByKeys)
{
    Trabalha([](Teclado &t) {
        t.Ctrl(Qt::Key_1).EsperaJanela("frmLista");
        t.Ctrl(Qt::Key_3).EsperaJanela("ConsultaAutuacao");
        t.Ctrl(Qt::Key_F6).EsperaJanela("frmLista");
        t.Tecla(Qt::Key_F6, Qt::ControlModifier | Qt::ShiftModifier).EsperaJanela("ConsultaAutuacao");
        t.Alt('J').EsperaMenu().Escreve("1").EsperaJanela("frmLista");
        t.Tecla(Qt::Key_F1).EsperaJanela("Ajuda");
        t.Tecla(Qt::Key_Escape).EsperaJanela("frmLista");
        t.Alt('U').EscolheNoMenu("Sobre").EsperaJanela("Sobre");
        t.Tecla(Qt::Key_Return).EsperaJanela("frmLista");
        t.Alt('J').EscolheNoMenu("Fechar todas").EsperaJanela("Mesa");
    });
}

TEST_F(TecladoTeste, Help_OverAModalWindow_CanBeReadAndClosed)
{
    Trabalha([](Teclado &t) {
        AbreEquipamento(t, 'T');
        t.Tecla(Qt::Key_F1).EsperaJanela("Ajuda");
        t.Alt('F').EsperaJanela("frmEquipDetalhes");
        t.Alt('F').EsperaJanela("frmLista");
    });
}

TEST_F(TecladoTeste, Viewer_OfACertificate_ByKeys)
{
    const QString certificado = Certificado();
    const QString copia = pasta.filePath("copia.pdf");
    Entra();
    const auto janelas = Novo<Janelas>(Novo<CamadaQt>(mesa.findChild<QMdiArea *>()));
    QMetaObject::invokeMethod(
        &mesa, [&] { janelas->MostraPDF(certificado.toStdString(), "", true); }, Qt::QueuedConnection);
    Percorre([&](Teclado &t) {
        t.EsperaJanela("VisorPDF").EsperaFoco("paginas");
        t.Ctrl(Qt::Key_F).EsperaFoco("procurado");
        t.Escreve("Equipamento\r").EsperaTexto("achados", "1 de 1");
        t.Escreve("s").Tecla(Qt::Key_F3).EsperaTexto("achados", "Não encontrado");
        t.Ctrl(Qt::Key_P);
        t.Espera("the print dialog is open",
                 [] { return qobject_cast<QPrintDialog *>(QApplication::activeModalWidget()) != nullptr; });
        t.Tecla(Qt::Key_Escape).EsperaJanela("VisorPDF");
        t.Ctrl(Qt::Key_S).EsperaEscolhaDeArquivo();
        t.Ctrl(Qt::Key_A).Escreve(copia + "\r");
        t.Espera("the copy is there", [=] { return QFile::exists(copia); });
        t.EsperaJanela("VisorPDF");
        t.Tecla(Qt::Key_Escape).EsperaJanela("Mesa");
    });
    QFile original(certificado);
    QFile salvo(copia);
    ASSERT_TRUE(original.open(QIODevice::ReadOnly) && salvo.open(QIODevice::ReadOnly));
    EXPECT_EQ(original.readAll(), salvo.readAll());
}

TEST_F(TecladoTeste, QueryOfAnotherModule_ByKeys)
{
    const Ref<SessaoServico> ana = registro.Sessao("ana");
    const auto agente = DoTipo(EquipamentoDe("B1"), "A", 2);
    Inclui(ana, Poe(Com(agente, &EquiptoED::ArquivoLayout, ""), ComAfericao(ana, "222")));
    const QString afericao = Q(registro.Sql("SELECT NroIntAfericao FROM AFERICAO WHERE Numero = '222'"));
    Trabalha([&](Teclado &t) {
        t.Ctrl(Qt::Key_3).EsperaJanela("ConsultaAutuacao");
        t.TabAte("data").Tecla(Qt::Key_Home).Escreve("20112026");
        t.TabAte("codigo").Escreve("b1");
        t.Alt('B').EsperaTexto("resultado", "Equipamento encontrado.").EsperaTexto("resposta5", "222");
        t.Alt('S').EsperaJanela("frmLista");
        t.TabAte("ztlLista/linhas").EsperaLinha("ztlLista", 1, "B1");
        t.Alt('O').EsperaJanela("ConsultaAutuacao").EsperaTexto("resultado", "Equipamento selecionado.");
        t.EsperaTexto("resposta7", "10/01/2026").EsperaTexto("codOat", afericao);
        t.Alt('I').EsperaJanela("VisorPDF");
        t.Tecla(Qt::Key_Escape).EsperaTexto("resultado", "Certificado aberto.");
    });
}

TEST_F(TecladoTeste, OldReplica_IsRenewedByKeys)
{
    Entra();
    registro.PassaSegundos(361);
    for (QTimer *relogio : mesa.findChildren<QTimer *>(Qt::FindDirectChildrenOnly)) {
        relogio->setInterval(0); // as when its minute is over
    }
    Percorre([](Teclado &t) {
        t.EsperaTexto("estadoReplica", "Dados considerados até 20/11/2026 10:00:00");
        t.EsperaTexto("estadoForcar", "Forçar consulta ao Servidor Principal");
        t.Alt('E').EscolheNoMenu("Forçar consulta ao Servidor Principal");
        t.EsperaTexto("estadoReplica", "Dados considerados até 20/11/2026 10:06:01");
        t.Espera("no offer", [] { return Teclado::Acha("estadoForcar") == nullptr; });
    });
}

} // namespace
