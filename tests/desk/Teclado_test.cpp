#include "tests/desk/Teclado.h"

#include "desk/host/Logradouros.h"
#include "desk/sample/CertificadoPDF.h"
#include "desk/windows/Mesa.h"
#include "tests/desk/RegistroDeTeste.h"
#include "tests/desk/VoltaDeTab.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPdfView>
#include <QPrintDialog>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>

#include <gtest/gtest.h>

using namespace mesa;

namespace {

// The desk over a registry with three equipment of DETRAN/RS: A1, with a sensor that has a calibration, Á2 and A3.
class TecladoTeste : public testing::Test {
  protected:
    TecladoTeste() : mesa(Abre(), pasta.path().toStdString(), [this] { return registro.Relogio; })
    {
        const Ref<SessaoServico> ana = registro.Sessao("ana");
        const auto a1 = EquipamentoDe("A1");
        const auto sensor = SensorDe(1);
        Poe(sensor, AfericaoDe("111", DataDe(10, 1, 2026), DataDe(10, 1, 2027), GuardaPdf(ana, "certificado")));
        Poe(a1, sensor);
        Inclui(ana, a1);
        Inclui(ana, EquipamentoDe("Á2"));
        const auto a3 = EquipamentoDe("A3");
        a3->Descricao = "Zona norte";
        Inclui(ana, a3);
        mesa.show();
        QApplication::setKeyboardInputInterval(MuitoTempo);
    }
    ~TecladoTeste() override { QApplication::setKeyboardInputInterval(intervalo); }

    void Entra(const std::string &usuario = "ana") { mesa.Entra(registro.Sessao(usuario)); }
    void PedeEntrada()
    {
        QMetaObject::invokeMethod(
            &mesa, [this] { entrou = mesa.PedeEntrada(); }, Qt::QueuedConnection);
    }
    static void AbreLista(Teclado &t)
    {
        t.Tecla(Qt::Key_1, Qt::ControlModifier);
        t.EsperaJanela("frmLista");
        t.Alt('L');
        t.EsperaLinhas("ztlLista", 3);
        t.TabAte("ztlLista/linhas");
    }
    static void AbreEquipamento(Teclado &t, char comando)
    {
        AbreLista(t);
        t.Tecla(Qt::Key_Home);
        t.EsperaLinha("ztlLista", 1, "A1");
        t.Alt(comando);
        t.EsperaJanela("frmEquipDetalhes");
    }
    static void EsperaPagina(Teclado &t, int pagina)
    {
        t.Espera("page " + QString::number(pagina), [=] {
            const auto *abas = qobject_cast<QTabWidget *>(Teclado::Acha("sstDados"));
            return abas != nullptr && abas->currentIndex() == pagina;
        });
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

    QTemporaryDir pasta;
    RegistroDeTeste registro;
    Mesa mesa;
    bool entrou = false;

  private:
    // Letters that look for an item belong together, however long a busy machine takes between them.
    static constexpr int MuitoTempo = 600000;
    int intervalo = QApplication::keyboardInputInterval();

    Ref<Servicos> Abre()
    {
        return Servicos::Abre(registro.Caminho(), [this] { return registro.Relogio; });
    }
};

TEST_F(TecladoTeste, SignInAndOut_ByKeys)
{
    PedeEntrada();
    EXPECT_EQ(Teclado::Percorre([](Teclado &t) {
                  t.EsperaJanela("Entrada");
                  t.EsperaFoco("usuario");
                  t.Escreve("ana");
                  t.Tecla(Qt::Key_Tab);
                  t.Escreve("senha errada");
                  t.Tecla(Qt::Key_Return);
                  t.EsperaTexto("aviso", "Usuário ou senha incorretos.");
                  t.EsperaFoco("senha");
                  t.Escreve("senha de ana");
                  t.Tecla(Qt::Key_Return);
                  t.EsperaTexto("estadoUsuario", "Usuário: Ana Souza");
                  t.Tecla(Qt::Key_1, Qt::ControlModifier);
                  t.EsperaJanela("frmLista");
                  t.Alt('E');
                  t.EscolheNoMenu("Trocar de usuário");
                  t.EsperaJanela("Entrada");
                  t.EsperaTexto("estadoUsuario", "Ninguém entrou");
                  t.Alt('R');
                  t.Espera("the desk is closed", [] { return QApplication::activeModalWidget() == nullptr; });
              }),
              "");
    EXPECT_TRUE(entrou);
    EXPECT_FALSE(mesa.isVisible());
    EXPECT_EQ(mesa.Hospedeiro()->Plataforma()->NroForms(), 0);
}

TEST_F(TecladoTeste, Search_ByCriteriaAndMoving_ByKeys)
{
    Entra();
    EXPECT_EQ(Teclado::Percorre([](Teclado &t) {
                  t.Alt('E');
                  t.EscolheNoMenu("trabalho fotográfico");
                  t.EsperaJanela("frmLista");
                  t.TabAte("ztCliente/cliente");
                  t.DesceAte("DETRAN/RS");
                  t.TabAte("ztCliente/setor");
                  t.DesceAte("Metrologia");
                  t.DesceAte("Todos os setores");
                  t.TabAte("cboTipoAgente");
                  t.DesceAte("Fixo");
                  t.TabAte("cboTipoEquipto");
                  t.DesceAte("Pardal");
                  t.TabAte("cboCriterio");
                  t.DesceAte("Código");
                  t.EsperaTexto("rot_txtCodEquip", "Código");
                  t.TabAte("txtCodEquip");
                  t.Escreve("A");
                  t.Alt('L');
                  t.EsperaLinhas("ztlLista", 3);
                  t.TabAte("ztlLista/linhas");
                  t.Tecla(Qt::Key_Home);
                  t.EsperaLinha("ztlLista", 1, "A1");
                  t.Tecla(Qt::Key_Down);
                  t.EsperaLinha("ztlLista", 2, "Á2");
                  t.Tecla(Qt::Key_End);
                  t.EsperaLinha("ztlLista", 3, "A3");
                  t.Tecla(Qt::Key_PageUp);
                  t.EsperaLinha("ztlLista", 1, "A1");
                  t.Tecla(Qt::Key_PageDown);
                  t.EsperaLinha("ztlLista", 3, "A3");
                  // "Código" takes the keyboard away at once; the open list leads past it.
                  t.TabAte("cboCriterio");
                  t.Tecla(Qt::Key_Down, Qt::AltModifier);
                  t.Tecla(Qt::Key_End);
                  t.Tecla(Qt::Key_Return);
                  t.EsperaTexto("cboCriterio", "Subcódigo");
                  t.EsperaTexto("rot_txtCodEquip", "Subcódigo");
                  t.EsperaLinhas("ztlLista", 0);
                  t.TabAte("chkInativos");
                  t.Tecla(Qt::Key_Space);
                  t.EsperaTexto("chkInativos", "marcado");
                  t.EsperaLinhas("ztlLista", 0);
                  t.Tecla(Qt::Key_F4, Qt::ControlModifier);
                  t.EsperaJanela("Mesa");
              }),
              "");
}

TEST_F(TecladoTeste, Columns_AreSortedByKeys)
{
    Entra();
    EXPECT_EQ(Teclado::Percorre([](Teclado &t) {
                  AbreLista(t);
                  t.Tecla(Qt::Key_Home);
                  t.Tecla(Qt::Key_F10, Qt::ShiftModifier);
                  t.EscolheNoMenu("Ordenar por");
                  t.EscolheNoMenu("Código");
                  t.EsperaLinha("ztlLista", 1, "A1");
                  t.Tecla(Qt::Key_End);
                  t.EsperaLinha("ztlLista", 3, "A3");
                  t.Tecla(Qt::Key_Menu);
                  t.EsperaMenu();
                  t.Escreve("o");
                  t.Escreve("1");
                  t.EsperaLinha("ztlLista", 1, "A3");
                  t.Tecla(Qt::Key_End);
                  t.EsperaLinha("ztlLista", 3, "A1");
                  t.Tecla(Qt::Key_Menu);
                  t.EscolheNoMenu("Ordenar por");
                  t.EscolheNoMenu("Descrição");
                  t.EsperaLinha("ztlLista", 2, "A1");
                  t.Tecla(Qt::Key_End);
                  t.EsperaLinha("ztlLista", 3, "Zona norte");
              }),
              "");
}

TEST_F(TecladoTeste, Commands_OfTheList_ByLetterAndByMenu)
{
    Entra();
    EXPECT_EQ(Teclado::Percorre([](Teclado &t) {
                  AbreEquipamento(t, 'D'); // Editar
                  t.EsperaTexto("txtDescricao", "Av. Ipiranga, sentido centro");
                  t.Alt('C');
                  t.EsperaJanela("frmLista");
                  t.Tecla(Qt::Key_Menu);
                  t.EscolheNoMenu("Detalhes");
                  t.EsperaJanela("frmEquipDetalhes");
                  t.EsperaTexto("cmdCancelar", "&Fechar");
                  t.Alt('F');
                  t.EsperaJanela("frmLista");
                  t.Alt('N'); // Novo
                  t.EsperaJanela("frmEquipDetalhes");
                  t.Alt('C');
                  t.EsperaJanela("frmLista");
                  t.Tecla(Qt::Key_F10, Qt::ShiftModifier);
                  t.EscolheNoMenu("Desativar");
                  t.EsperaCaixa("Deseja desativar o equipamento A1 ?");
                  t.Alt('N');
                  t.EsperaJanela("frmLista");
                  t.Alt('S'); // Desativar
                  t.EsperaCaixa("Deseja desativar o equipamento A1 ?");
                  t.Alt('S');
                  t.EsperaLinhas("ztlLista", 2);
                  t.Alt('I'); // Atualizar
                  t.EsperaLinhas("ztlLista", 2);
                  t.Alt('F'); // the list's own button
                  t.EsperaJanela("Mesa");
              }),
              "");
    EXPECT_EQ(registro.Sql("SELECT Ativo FROM EQUIPAMENTO WHERE Codigo = 'A1'"), "2");
}

TEST_F(TecladoTeste, SensorAndCalibration_FromTheListToTheRegistry_ByKeys)
{
    Entra();
    const QString certificado = Certificado();
    EXPECT_EQ(Teclado::Percorre([&](Teclado &t) {
                  AbreEquipamento(t, 'D');
                  t.Tecla(Qt::Key_PageDown, Qt::ControlModifier);
                  EsperaPagina(t, 1);
                  t.Tecla(Qt::Key_PageDown, Qt::ControlModifier);
                  EsperaPagina(t, 2);
                  t.TabAte("ztListaSensor/linhas");
                  t.EsperaLinhas("ztListaSensor", 1);
                  t.Alt('N');
                  t.EsperaJanela("frmEquipSensores");
                  t.TabAte("ztEndereco1/municipio");
                  t.Tecla(Qt::Key_Home); // it begins with the one last used
                  t.Escreve("porto");
                  t.EsperaTexto("ztEndereco1/municipio", "Porto Alegre");
                  t.TabAte("ztEndereco1/via");
                  t.Escreve("bento gon");
                  t.Tecla(Qt::Key_Down);
                  t.Tecla(Qt::Key_Return);
                  t.EsperaFoco("ztEndereco1/numero");
                  t.Escreve("1500");
                  t.TabAte("ztEndereco1/usar");
                  t.Tecla(Qt::Key_Return);
                  t.EsperaTexto("txtLocalInfr", "Rua Bento Gonçalves, 1500 - Centro");
                  t.Tecla(Qt::Key_PageDown, Qt::ControlModifier);
                  EsperaPagina(t, 1);
                  t.TabAte("ztListaAfericao/linhas");
                  t.Alt('N');
                  t.EsperaJanela("frmEquipAfericoes");
                  t.TabAte("txtNroINMETRO");
                  t.Escreve("10000001");
                  t.TabAte("txtMarcaINMETRO");
                  t.Escreve("1000000101");
                  t.TabAte("txtDtVerifINMETRO");
                  t.Escreve("10012026");
                  t.TabAte("txtDtVencINMETRO");
                  t.Escreve("10012027");
                  t.Alt('P');
                  t.EsperaEscolhaDeArquivo();
                  t.Escreve(certificado);
                  t.Tecla(Qt::Key_Return);
                  t.EsperaJanela("VisorPDF");
                  t.Tecla(Qt::Key_Escape);
                  t.EsperaTexto("lblMsgCert", "Arquivo " + certificado);
                  t.Alt('U');
                  t.EsperaTexto("lblMsgCert", "Upload Concluido!");
                  t.Alt('O');
                  t.EsperaJanela("frmEquipSensores");
                  t.TabAte("ztListaAfericao/linhas");
                  t.EsperaLinha("ztListaAfericao", 1, "10000001");
                  t.Alt('T'); // Detalhes
                  t.EsperaJanela("frmEquipAfericoes");
                  t.Alt('V');
                  t.EsperaJanela("VisorPDF");
                  t.Tecla(Qt::Key_Escape);
                  t.Alt('F');
                  t.EsperaJanela("frmEquipSensores");
                  t.Alt('O');
                  t.EsperaJanela("frmEquipDetalhes");
                  t.EsperaLinhas("ztListaSensor", 2);
                  t.Alt('O');
                  t.EsperaCaixa("Confirma a alteração?");
                  t.Alt('S');
                  t.EsperaJanela("frmLista");
              }),
              "");
    EXPECT_EQ(registro.Sql("SELECT COUNT(*) FROM SENSOR"), "2");
    EXPECT_EQ(registro.Sql("SELECT LocalInfr FROM SENSOR WHERE NroSensor = 2"), "Rua Bento Gonçalves, 1500 - Centro");
    EXPECT_EQ(registro.Sql("SELECT DataVencimento FROM AFERICAO WHERE Numero = '10000001'"), "20270110");
}

TEST_F(TecladoTeste, Address_ByPostalCodeWhileTyping)
{
    constexpr std::int32_t portoAlegre = 4314902;
    const Logradouro rua = ProcuraLogradouros(portoAlegre, "bento goncalves", 1).at(0);
    const QString cep = Q(rua.Cep.substr(0, 5) + "-" + rua.Cep.substr(5));
    Entra();
    EXPECT_EQ(Teclado::Percorre([&](Teclado &t) {
                  AbreEquipamento(t, 'D');
                  t.Tecla(Qt::Key_PageDown, Qt::ControlModifier);
                  t.Tecla(Qt::Key_PageDown, Qt::ControlModifier);
                  EsperaPagina(t, 2);
                  t.Alt('N');
                  t.EsperaJanela("frmEquipSensores");
                  t.TabAte("ztEndereco1/municipio");
                  t.Tecla(Qt::Key_Home);
                  t.Escreve("porto");
                  t.TabAte("ztEndereco1/via");
                  t.Escreve("0");
                  t.Espera("nothing can be used yet", [] { return !Teclado::Acha("ztEndereco1/usar")->isEnabled(); });
                  t.Tecla(Qt::Key_Backspace);
                  t.Escreve(cep);
                  t.Alt('U');
                  t.EsperaTexto("txtLocalInfr", Q(rua.Descricao(0, "")));
              }),
              "");
}

TEST_F(TecladoTeste, SignIn_AfterWrongPasswords_MakesThePersonWait)
{
    registro.Cadastra("ana");
    PedeEntrada();
    EXPECT_EQ(Teclado::Percorre([](Teclado &t) {
                  t.EsperaJanela("Entrada");
                  t.Escreve("ana");
                  for (int vez = 0; vez < 3; ++vez) {
                      t.TabAte("senha");
                      t.Escreve("errada");
                      t.Tecla(Qt::Key_Return);
                      t.EsperaTexto("senha", "");
                  }
                  t.Espera("the button waits", [] {
                      const auto *entrar = qobject_cast<QPushButton *>(Teclado::Acha("entrar"));
                      return entrar != nullptr && !entrar->isEnabled() && entrar->text().startsWith("Aguarde ");
                  });
                  t.Escreve("senha de ana");
                  t.Tecla(Qt::Key_Return);
                  t.Espera("nobody came in", [] { return Teclado::Frente()->objectName() == "Entrada"; });
                  t.Tecla(Qt::Key_Escape);
              }),
              "");
    EXPECT_FALSE(entrou);
}

TEST_F(TecladoTeste, EveryPage_OfAnEquipment_ByKeys)
{
    Entra();
    EXPECT_EQ(Teclado::Percorre([](Teclado &t) {
                  AbreEquipamento(t, 'T');
                  EsperaPagina(t, 0);
                  t.Tecla(Qt::Key_PageDown, Qt::ControlModifier);
                  EsperaPagina(t, 1);
                  t.Tecla(Qt::Key_PageDown, Qt::ControlModifier);
                  EsperaPagina(t, 2);
                  t.Tecla(Qt::Key_PageDown, Qt::ControlModifier);
                  EsperaPagina(t, 4); // its calibrations are its sensors'
                  t.Tecla(Qt::Key_PageDown, Qt::ControlModifier);
                  EsperaPagina(t, 4);
                  t.Tecla(Qt::Key_PageUp, Qt::ControlModifier);
                  EsperaPagina(t, 2);
              }),
              "");
}

TEST_F(TecladoTeste, TabKey_OnEveryPageOfAnEquipment_LeadsWhereItLeadsAPersonWithoutAScreen)
{
    Entra();
    EXPECT_EQ(Teclado::Percorre([](Teclado &t) {
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
                          t.Alt('C');
                          t.EsperaJanela("frmLista");
                          t.Alt(comando);
                          t.EsperaJanela("frmEquipDetalhes");
                      }
                      confere();
                      for (const int pagina : {1, 2, 4}) {
                          t.Tecla(Qt::Key_PageDown, Qt::ControlModifier);
                          EsperaPagina(t, pagina);
                          confere();
                      }
                  }
                  t.Alt('F');
                  t.EsperaJanela("frmLista");
              }),
              "");
}

TEST_F(TecladoTeste, Limits_AreIncludedAndExcluded_ByKeys)
{
    Entra();
    EXPECT_EQ(Teclado::Percorre([](Teclado &t) {
                  AbreLista(t);
                  t.Tecla(Qt::Key_Home);
                  t.Tecla(Qt::Key_Menu);
                  t.EscolheNoMenu("Limites Diferenciados");
                  t.EsperaJanela("frmLimitesDif");
                  t.Alt('N');
                  t.EsperaJanela("frmLimitesDifDetalhes");
                  t.TabAte("chkDia_2");
                  t.Tecla(Qt::Key_Space);
                  t.TabAte("ztmHInicial");
                  t.Escreve("0800");
                  t.TabAte("ztmHFinal");
                  t.Escreve("1200");
                  t.TabAte("txtVelocPerm");
                  t.Escreve("40");
                  t.Alt('O');
                  t.EsperaJanela("frmLimitesDif");
                  t.TabAte("ztLista/linhas");
                  t.EsperaLinha("ztLista", 1, "Segunda");
                  t.Alt('D'); // Editar
                  t.EsperaJanela("frmLimitesDifDetalhes");
                  t.EsperaTexto("ztmHInicial", "08:00");
                  t.Alt('C');
                  t.EsperaJanela("frmLimitesDif");
                  t.Alt('X'); // Excluir
                  t.EsperaCaixa("exclu");
                  t.Alt('S');
                  t.EsperaCaixa("Limite excluído com sucesso!");
                  t.Tecla(Qt::Key_Return);
                  t.EsperaLinhas("ztLista", 0);
                  t.Alt('F');
                  t.EsperaJanela("frmLista");
              }),
              "");
    EXPECT_EQ(registro.Sql("SELECT COUNT(*) FROM LIMITE"), "1");
    EXPECT_EQ(registro.Sql("SELECT COUNT(*) FROM LIMITE WHERE Ativo = 1"), "0");
}

TEST_F(TecladoTeste, Windows_HelpAndAbout_ByKeys)
{
    Entra();
    EXPECT_EQ(Teclado::Percorre([this](Teclado &t) {
                  const auto janelas = [this] { return mesa.findChild<QMdiArea *>()->subWindowList(); };
                  t.Tecla(Qt::Key_1, Qt::ControlModifier);
                  t.EsperaJanela("frmLista");
                  t.Tecla(Qt::Key_3, Qt::ControlModifier);
                  t.EsperaJanela("ConsultaAutuacao");
                  t.Alt('J');
                  t.EscolheNoMenu("Lado a lado");
                  t.Espera("nothing covers anything",
                           [=] { return !janelas()[0]->geometry().intersects(janelas()[1]->geometry()); });
                  t.Alt('J');
                  t.EscolheNoMenu("Em cascata");
                  t.Espera("one lies over the other",
                           [=] { return janelas()[0]->geometry().intersects(janelas()[1]->geometry()); });
                  t.Tecla(Qt::Key_F6, Qt::ControlModifier);
                  t.EsperaJanela("frmLista");
                  t.Tecla(Qt::Key_F6, Qt::ControlModifier | Qt::ShiftModifier);
                  t.EsperaJanela("ConsultaAutuacao");
                  t.Alt('J');
                  t.EsperaMenu();
                  t.Escreve("1");
                  t.EsperaJanela("frmLista");
                  t.Tecla(Qt::Key_F1);
                  t.EsperaJanela("Ajuda");
                  t.Tecla(Qt::Key_Escape);
                  t.EsperaJanela("frmLista");
                  t.Alt('U');
                  t.EscolheNoMenu("Sobre");
                  t.EsperaCaixa("Registro de Equipamentos");
                  t.Tecla(Qt::Key_Return);
                  t.EsperaJanela("frmLista");
                  t.Alt('J');
                  t.EscolheNoMenu("Fechar todas");
                  t.EsperaJanela("Mesa");
              }),
              "");
}

TEST_F(TecladoTeste, Help_OverAModalWindow_CanBeReadAndClosed)
{
    Entra();
    EXPECT_EQ(Teclado::Percorre([](Teclado &t) {
                  AbreEquipamento(t, 'T');
                  t.Tecla(Qt::Key_F1);
                  t.EsperaJanela("Ajuda");
                  t.Alt('F');
                  t.EsperaJanela("frmEquipDetalhes");
                  t.Alt('F');
                  t.EsperaJanela("frmLista");
              }),
              "");
}

TEST_F(TecladoTeste, Viewer_OfACertificate_ByKeys)
{
    const QString certificado = Certificado();
    const QString copia = pasta.filePath("copia.pdf");
    Entra();
    const auto janelas = Novo<Janelas>(Novo<CamadaQt>(mesa.findChild<QMdiArea *>()));
    QMetaObject::invokeMethod(
        &mesa, [&] { janelas->MostraPDF(certificado.toStdString(), true); }, Qt::QueuedConnection);
    EXPECT_EQ(Teclado::Percorre([&](Teclado &t) {
                  const auto zoom = [] { return qobject_cast<QPdfView *>(Teclado::Acha("paginas"))->zoomFactor(); };
                  t.EsperaJanela("VisorPDF");
                  t.EsperaFoco("paginas");
                  t.Tecla(Qt::Key_Plus, Qt::ControlModifier);
                  t.Espera("bigger", [=] { return zoom() == 1.25; });
                  t.Tecla(Qt::Key_Minus, Qt::ControlModifier);
                  t.Espera("as it was", [=] { return zoom() == 1; });
                  t.Tecla(Qt::Key_F, Qt::ControlModifier);
                  t.EsperaFoco("procurado");
                  t.Escreve("Equipamento");
                  t.Tecla(Qt::Key_Return);
                  t.EsperaTexto("achados", "1 de 1");
                  t.Escreve("s");
                  t.Tecla(Qt::Key_F3);
                  t.EsperaTexto("achados", "Não encontrado");
                  t.Tecla(Qt::Key_P, Qt::ControlModifier);
                  t.Espera("the print dialog is open",
                           [] { return qobject_cast<QPrintDialog *>(QApplication::activeModalWidget()) != nullptr; });
                  t.Tecla(Qt::Key_Escape);
                  t.EsperaJanela("VisorPDF");
                  t.Tecla(Qt::Key_S, Qt::ControlModifier);
                  t.EsperaEscolhaDeArquivo();
                  t.Tecla(Qt::Key_A, Qt::ControlModifier);
                  t.Escreve(copia);
                  t.Tecla(Qt::Key_Return);
                  t.Espera("the copy is there", [=] { return QFile::exists(copia); });
                  t.EsperaJanela("VisorPDF");
                  t.Tecla(Qt::Key_Escape);
                  t.EsperaJanela("Mesa");
              }),
              "");
    QFile original(certificado);
    QFile salvo(copia);
    ASSERT_TRUE(original.open(QIODevice::ReadOnly) && salvo.open(QIODevice::ReadOnly));
    EXPECT_EQ(original.readAll(), salvo.readAll());
}

TEST_F(TecladoTeste, QueryOfAnotherModule_ByKeys)
{
    const Ref<SessaoServico> ana = registro.Sessao("ana");
    const auto agente = EquipamentoDe("B1");
    agente->TipoAgente = std::uint8_t{2};
    agente->TipoEquip = "A";
    agente->ArquivoLayout = "";
    const auto sensor = SensorDe(1);
    Poe(sensor, AfericaoDe("222", DataDe(10, 1, 2026), DataDe(10, 1, 2027), GuardaPdf(ana, "agente")));
    Poe(agente, sensor);
    Inclui(ana, agente);
    const QString afericao = Q(registro.Sql("SELECT NroIntAfericao FROM AFERICAO WHERE Numero = '222'"));
    Entra();
    EXPECT_EQ(Teclado::Percorre([&](Teclado &t) {
                  t.Tecla(Qt::Key_3, Qt::ControlModifier);
                  t.EsperaJanela("ConsultaAutuacao");
                  t.TabAte("data");
                  t.Tecla(Qt::Key_Home);
                  t.Escreve("20112026");
                  t.TabAte("codigo");
                  t.Escreve("b1");
                  t.Alt('B');
                  t.EsperaTexto("resultado", "Equipamento encontrado.");
                  t.EsperaTexto("resposta5", "222");
                  t.Alt('S');
                  t.EsperaJanela("frmLista");
                  t.TabAte("ztlLista/linhas");
                  t.EsperaLinha("ztlLista", 1, "B1");
                  t.Alt('O');
                  t.EsperaJanela("ConsultaAutuacao");
                  t.EsperaTexto("resultado", "Equipamento selecionado.");
                  t.EsperaTexto("resposta7", "10/01/2026");
                  t.TabAte("codOat");
                  t.Escreve(afericao);
                  t.Alt('I');
                  t.EsperaCaixa("não é um documento PDF que possa ser aberto.");
                  t.Tecla(Qt::Key_Return);
                  t.EsperaTexto("resultado", "O certificado não foi aberto.");
              }),
              "");
}

TEST_F(TecladoTeste, OldReplica_IsRenewedByKeys)
{
    Entra();
    registro.PassaSegundos(361);
    for (QTimer *relogio : mesa.findChildren<QTimer *>(Qt::FindDirectChildrenOnly)) {
        relogio->setInterval(0); // as when its minute is over
    }
    EXPECT_EQ(Teclado::Percorre([](Teclado &t) {
                  t.EsperaTexto("estadoReplica", "Dados considerados até 20/11/2026 10:00:00");
                  t.EsperaTexto("estadoForcar", "Forçar consulta ao Servidor Principal");
                  t.Alt('E');
                  t.EscolheNoMenu("Forçar consulta ao Servidor Principal");
                  t.EsperaTexto("estadoReplica", "Dados considerados até 20/11/2026 10:06:01");
                  t.Espera("no offer", [] { return Teclado::Acha("estadoForcar") == nullptr; });
              }),
              "");
}

} // namespace
