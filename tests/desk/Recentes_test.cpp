#include "desk/host/Lembrancas.h"
#include "desk/tour/Telas.h"
#include "desk/windows/AreaDeTrabalho.h"
#include "desk/windows/JanelaDasColunas.h"
#include "desk/windows/TelaInicial.h"
#include "tests/desk/AparenciaDeTeste.h"
#include "tests/desk/MesaTeste.h"
#include "tests/desk/Retrato.h"
#include "tests/desk/Teclado.h"
#include "tests/desk/TelasDeTeste.h"

#include <QApplication>
#include <QMdiSubWindow>
#include <QTest>
#include <QTreeWidget>
#include <QWindow>

#include <gtest/gtest.h>

using namespace mesa;

namespace {

// A person who goes on with what was opened lately.
class RecentesTeste : public MesaTeste {
  protected:
    RecentesTeste()
    {
        for (const char *codigo : {"R-001", "R-002"}) {
            Inclui(registro.Sessao("ana"), EquipamentoDe(codigo));
        }
        Entra();
        mesa.Hospedeiro()->ViuEquipamento(1);
    }
    static void Percorre(const std::function<void(Teclado &)> &jornada) { EXPECT_EQ(Teclado::Percorre(jornada), ""); }
    // The page as it is when one comes back to it.
    void MostraPagina()
    {
        mesa.findChild<AreaDeTrabalho *>()->MostraFundo(false);
        mesa.findChild<AreaDeTrabalho *>()->MostraFundo(true);
    }
    static QString Recentes(const QWidget &pagina)
    {
        QStringList codigos;
        const auto *lista = pagina.findChild<QTreeWidget *>("recentes");
        for (int n = 0; n < lista->topLevelItemCount(); ++n) {
            codigos << lista->topLevelItem(n)->text(0);
        }
        return codigos.join(" ");
    }
    int Abertas() { return static_cast<int>(mesa.findChild<AreaDeTrabalho *>()->subWindowList().size()); }
};

TEST_F(RecentesTeste, Opening_LeavesTheCriteriaThatThePersonLeft)
{
    Percorre([&](Teclado &t) {
        t.EsperaJanela("Mesa").Ctrl(Qt::Key_1).EsperaJanela("frmLista");
        t.TabAte("cboCriterio").DesceAte("Código").TabAte("txtCodEquip").Escreve("7");
        t.Alt('F').EsperaJanela("Mesa").TabAte("recentes").Tecla(Qt::Key_Return).EsperaJanela("frmEquipDetalhes");
        t.Alt('F').EsperaJanela("frmLista").EsperaTexto("txtCodEquip", "R-001").Alt('F').EsperaJanela("Mesa");
        t.Ctrl(Qt::Key_1).EsperaJanela("frmLista").EsperaTexto("txtCodEquip", "7");
    });
}

TEST_F(RecentesTeste, Equipment_ThatSomebodyElseDeactivated_IsOpened)
{
    MostraPagina();
    const auto bia = registro.Sessao("bia");
    Exigido(Pede(bia, "desativa", SoNumero(1)));
    Percorre([&](Teclado &t) {
        t.EsperaJanela("Mesa").TabAte("recentes").Tecla(Qt::Key_Return);
        t.EsperaJanela("frmEquipDetalhes").EsperaTexto("txtCodEquip", "R-001").Alt('F').EsperaJanela("frmLista");
        t.EsperaTexto("chkInativos", "marcado").EsperaLinha("ztlLista", 1, "R-001");
    });
}

TEST_F(RecentesTeste, Equipment_ThatMayNotBeSeenAnyMore_IsRefusedAndOpensNothing)
{
    MostraPagina();
    registro.Sql("UPDATE PERMISSAO SET Ativo = 2");
    Percorre([&](Teclado &t) {
        t.EsperaJanela("Mesa").TabAte("recentes").Tecla(Qt::Key_Return).EsperaCaixa("consultar equipamentos");
        t.Tecla(Qt::Key_Return).EsperaJanela("Mesa");
    });
    EXPECT_EQ(Abertas(), 0);
}

TEST_F(RecentesTeste, PageOnATab_WhenOneComesBackToIt_ShowsWhatWasOpenedMeanwhile)
{
    Percorre([&](Teclado &t) {
        t.EsperaJanela("Mesa").Ctrl(Qt::Key_1).EsperaJanela("frmLista").Ctrl(Qt::Key_0).EsperaJanela("Inicio");
        t.Ctrl(Qt::Key_Tab).EsperaJanela("frmLista").Alt('L').EsperaLinhas("ztlLista", 2).TabAte("ztlLista/linhas");
        t.EsperaLinha("ztlLista", 2, "R-002").Alt('T').EsperaJanela("frmEquipDetalhes").Alt('F');
        t.EsperaJanela("frmLista").Ctrl(Qt::Key_0).EsperaJanela("Inicio");
        t.Espera("it is there", [] { return Recentes(*Teclado::Frente()) == "R-002 R-001"; });
    });
}

TEST_F(RecentesTeste, KeyOfAList_HeldDown_OpensOne)
{
    QApplication::setActiveWindow(&mesa);
    QWindow *janela = mesa.windowHandle();
    const auto segura = [&](Qt::Key tecla) {
        QTest::simulateEvent(janela, true, tecla, Qt::ControlModifier, {}, false);
        for (int vez = 0; vez < 5; ++vez) {
            QTest::simulateEvent(janela, true, tecla, Qt::ControlModifier, {}, true);
        }
        QTest::simulateEvent(janela, false, tecla, Qt::ControlModifier, {}, false);
        QApplication::processEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    segura(Qt::Key_1);
    EXPECT_EQ(Abertas(), 1);
    segura(Qt::Key_3);
    EXPECT_EQ(Abertas(), 2);
    segura(Qt::Key_W);
    EXPECT_EQ(Abertas(), 1);
}

TEST_F(RecentesTeste, StartPageAndColumns_AtEverySizeAndColour_AreWhole)
{
    AparenciaDeTeste aparencia(preferencias);
    ColunasArrumadas colunas;
    colunas.Define({{"Codigo", 1, 0, true}, {"Descricao", 2, 0, true}, {"Municipio", 3, 0, true}});
    for (const auto &[nome, tema, tamanho, tela] :
         {std::tuple("claro", Tema::Claro, 100, TelasDeTeste::Comum),
          std::tuple("escuro", Tema::Escuro, 100, TelasDeTeste::Comum),
          std::tuple("200", Tema::Claro, 200, TelasDeTeste::Comum),
          std::tuple("200-escuro", Tema::Escuro, 200, TelasDeTeste::Pequena),
          std::tuple("512x384-escuro", Tema::Escuro, 100, TelasDeTeste::Ampliada)}) {
        SCOPED_TRACE(nome);
        aparencia.Poe(tema, tamanho);
        mesa.setGeometry(tela.adjusted(0, 0, -1, -1));
        MostraPagina();
        Fotografa(mesa, QString("inicio-%1").arg(nome));
        JanelaDasColunas janela(colunas, {"Código", "Descrição", "Município"}, {100, 300, 160}, &mesa);
        janela.show();
        EXPECT_EQ(DefeitosDaJanela(janela), QStringList());
        Fotografa(janela, QString("colunas-%1").arg(nome));
    }
}

} // namespace
