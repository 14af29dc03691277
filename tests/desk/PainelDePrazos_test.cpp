#include "desk/host/PainelDePrazos.h"

#include "desk/tour/Cortes.h"
#include "desk/windows/AreaDeTrabalho.h"
#include "desk/windows/TelaInicial.h"
#include "tests/desk/AparenciaDeTeste.h"
#include "tests/desk/LeitorDeTela.h"
#include "tests/desk/MesaTeste.h"
#include "tests/desk/Retrato.h"
#include "tests/desk/Teclado.h"
#include "tests/desk/TelasDeTeste.h"

#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

#include <set>
#include <tuple>

using namespace mesa;

namespace {

std::string Numeros(const PainelDePrazos &painel)
{
    std::string texto;
    for (const EstadoNoPainel &estado : painel.Estados()) {
        texto += (texto.empty() ? "" : " ") + std::to_string(estado.Quantos);
    }
    return texto;
}

// R-1 ends in 30 days, R-2 tomorrow a year, R-3 has ended, R-4 was never calibrated.
void Povoa(RegistroDeTeste &registro)
{
    const auto ana = registro.Sessao("ana");
    const auto inclui = [&](const std::string &codigo, Data vence) {
        Inclui(ana, Poe(EquipamentoDe(codigo), Poe(SensorDe(1), AfericaoDe("C-1", DataDe(1, 1, 2026), vence))));
    };
    inclui("R-1", DataDe(20, 12, 2026));
    inclui("R-2", DataDe(21, 11, 2027));
    inclui("R-3", DataDe(1, 6, 2026));
    Inclui(ana, Com(EquipamentoDe("R-4"), &EquiptoED::SetorInc, "Metrologia"));
}

class PainelDePrazosTeste : public testing::Test {
  protected:
    PainelDePrazosTeste() { Povoa(registro); }

    RegistroDeTeste registro;
    Ref<SessaoServico> sessao = registro.Sessao("ana");
    SessaoDosPrazos qual = [this] { return sessao; };
};

TEST_F(PainelDePrazosTeste, Le_TellsNumbersMomentAndOverHowMany)
{
    PainelDePrazos painel(qual);
    EXPECT_TRUE(painel.Le());
    EXPECT_EQ(Numeros(painel), "1 0 0 1 1 0 1 0 0 0");
    EXPECT_EQ(painel.Resumo(),
              "Em 20/11/2026 às 10:00, sobre 4 equipamentos ativos de Autoridade Estadual de Trânsito. "
              "Dos documentos, só se conferiu se existem.");
    EXPECT_EQ(painel.Impedimento(), "");
    EXPECT_TRUE(painel.Falhas().empty());
    EXPECT_TRUE(painel.Grupos().empty());
    EXPECT_EQ(painel.Estados()[3].Frase, "Vence em até 30 dias: 1 equipamento");
    EXPECT_EQ(painel.Estados()[1].Frase, "Vence em 61 a 90 dias: 0 equipamentos");
    ASSERT_EQ(painel.Meses().size(), 24u);
    EXPECT_EQ(painel.Meses()[0].Frase, "novembro de 2026: nenhuma aferição vence");
    EXPECT_EQ(painel.Meses()[0].Ano, "2026");
    EXPECT_EQ(painel.Meses()[1].Frase, "dezembro de 2026: 1 aferição vence");
    EXPECT_EQ(painel.Meses()[1].Ano, "");
    EXPECT_EQ(painel.Meses()[2].Curto, "jan");
    EXPECT_EQ(painel.Meses()[2].Ano, "2027");
    EXPECT_EQ(painel.Meses()[12].Quantas, 1);
}

// The numbers add up to the equipment, and so do those of a check, which is kept until the next one.
TEST_F(PainelDePrazosTeste, ConfereDocumentos_KeepsWhatIsDamaged_InEveryNumberAndList)
{
    PainelDePrazos painel(qual);
    std::string recusa;
    ASSERT_TRUE(painel.Le());
    ASSERT_TRUE(painel.ConfereDocumentos(recusa));
    EXPECT_TRUE(painel.Le());
    EXPECT_EQ(painel.Resumo(),
              "Em 20/11/2026 às 10:00, sobre 4 equipamentos ativos de Autoridade Estadual de Trânsito. "
              "Em 20/11/2026 às 10:00 os documentos em vigor foram lidos inteiros: 2 conferidos, nenhum danificado.");
    registro.Sql("DROP TRIGGER DOCUMENTO_SEM_UPDATE; UPDATE DOCUMENTO SET Sha256 = upper(Sha256) WHERE NroDocumento = "
                 "(SELECT NroIntImgCertif FROM AFERICAO WHERE NroIntAfericao = 1)");
    EXPECT_TRUE(painel.Le());
    EXPECT_EQ(Numeros(painel), "1 0 0 1 1 0 1 0 0 0"); // what was found before
    registro.PassaSegundos(60);
    std::vector<double> partes;
    ASSERT_TRUE(painel.ConfereDocumentos(recusa, [&](double parte, const std::string &) {
        partes.push_back(parte);
        return true;
    }));
    ASSERT_FALSE(partes.empty());
    EXPECT_EQ(partes.back(), 1);
    for (int vez = 0; vez < 2; ++vez) { // it lasts
        EXPECT_TRUE(painel.Le());
        EXPECT_EQ(Numeros(painel), "1 0 0 0 1 0 1 1 0 0");
        EXPECT_EQ(painel.Resumo(), "Em 20/11/2026 às 10:01, sobre 4 equipamentos ativos de Autoridade Estadual de "
                                   "Trânsito. Em 20/11/2026 às 10:01 os documentos em vigor foram lidos inteiros: 2 "
                                   "conferidos, 1 danificado.");
    }
    ListaDePrazos sem(qual, painel.Atras(EstadoDePrazo::SemDocumento));
    ASSERT_TRUE(sem.Carrega(recusa));
    ASSERT_EQ(sem.Quantas(), 1u);
    EXPECT_EQ(sem.Linha(0)[0], "R-1");
    ListaDePrazos doMes(qual, painel.Atras(painel.Meses()[1]));
    ASSERT_TRUE(doMes.Carrega(recusa));
    EXPECT_EQ(doMes.Linha(0)[10], "Documento ausente ou danificado");
    EXPECT_FALSE(painel.ConfereDocumentos(recusa, [](double, const std::string &) { return false; }));
    EXPECT_EQ(recusa, "A conferência dos documentos foi cancelada.");
    EXPECT_TRUE(painel.Le());
    EXPECT_EQ(Numeros(painel), "1 0 0 0 1 0 1 1 0 0"); // that of the check before
    sessao = registro.Sessao("bia");
    EXPECT_TRUE(painel.Le());
    EXPECT_EQ(Numeros(painel), "1 0 0 1 1 0 1 0 0 0"); // somebody else has checked nothing
    sessao = registro.Sessao("carla");
    EXPECT_FALSE(painel.ConfereDocumentos(recusa));
    EXPECT_EQ(recusa, "Carla Dias não tem permissão para consultar prazos.");
}

TEST_F(PainelDePrazosTeste, Agrupa_AddsUpToTheSame)
{
    PainelDePrazos painel(qual);
    painel.Agrupa(AgrupamentoDePrazos::Setor);
    EXPECT_TRUE(painel.Le());
    ASSERT_EQ(painel.Grupos().size(), 2u);
    EXPECT_EQ(painel.Grupos()[0].Nome, "(sem setor)");
    EXPECT_EQ(painel.Grupos()[0].Todos, 3);
    EXPECT_EQ(painel.Grupos()[1].Nome, "Metrologia");
    EXPECT_EQ(painel.Grupos()[1].Quantos, (std::vector<std::int32_t>{0, 0, 0, 0, 0, 0, 1, 0, 0, 0}));
    EXPECT_EQ(Numeros(painel), "1 0 0 1 1 0 1 0 0 0");
    EXPECT_EQ(painel.ColunasDosGrupos().front(), "Setor");
    ListaDePrazos lista(qual, painel.Atras(EstadoDePrazo::NuncaAferido, &painel.Grupos()[1]));
    std::string recusa;
    ASSERT_TRUE(lista.Carrega(recusa));
    EXPECT_EQ(lista.Titulo(), "Prazos: Nunca aferido, Metrologia");
    ASSERT_EQ(lista.Quantas(), 1u);
    EXPECT_EQ(lista.Linha(0)[0], "R-4");
    EXPECT_EQ(lista.Linha(0)[8], "");
    EXPECT_FALSE(lista.TemCalendario());
    painel.Agrupa(AgrupamentoDePrazos::Municipio);
    EXPECT_TRUE(painel.Le());
    ASSERT_EQ(painel.Grupos().size(), 1u);
    EXPECT_EQ(painel.Grupos()[0].Nome, "Porto Alegre - RS");
}

TEST_F(PainelDePrazosTeste, ReadingThatFails_LeavesNoNumberAndSaysWhy)
{
    PainelDePrazos painel(qual);
    EXPECT_TRUE(painel.Le());
    sessao = registro.Sessao("carla");
    EXPECT_FALSE(painel.Le());
    EXPECT_EQ(painel.Impedimento(),
              "Os prazos não foram contados: Carla Dias não tem permissão para consultar prazos.");
    EXPECT_TRUE(painel.Estados().empty());
    EXPECT_TRUE(painel.Meses().empty());
    EXPECT_EQ(painel.Resumo(), "");
    sessao = registro.Sessao("ana");
    registro.Sql("DROP TABLE SENSOR");
    EXPECT_FALSE(painel.Le());
    EXPECT_EQ(painel.Impedimento().find("Os prazos não foram contados: "), 0u);
    EXPECT_TRUE(painel.Estados().empty());
}

TEST_F(PainelDePrazosTeste, Lista_IsBehindEachNumber)
{
    PainelDePrazos painel(qual);
    EXPECT_TRUE(painel.Le());
    ListaDePrazos lista(qual, painel.Atras(EstadoDePrazo::Vencido));
    std::string recusa;
    ASSERT_TRUE(lista.Carrega(recusa));
    EXPECT_EQ(lista.Titulo(), "Prazos: Vencido");
    ASSERT_EQ(lista.Quantas(), 1u);
    EXPECT_EQ(lista.Linha(0), (std::vector<std::string>{"R-3", "", "Pardal", "", "Porto Alegre - RS", "1", "987", "C-1",
                                                        "01/06/2026", "-172", "Vencido"}));
    EXPECT_EQ(ListaDePrazos::Colunas()[6], "Certificado");
    EXPECT_EQ(ListaDePrazos::Colunas()[7], "Nº INMETRO");
    EXPECT_EQ(lista.Nota(), "1 linha. Os prazos são os do dia 20/11/2026.");
    EXPECT_FALSE(lista.HaMais());
    EXPECT_EQ(lista.Equipamento(0).NroIntEquip, 3);
    EXPECT_EQ(lista.Equipamento(0).TipoEquip, "P");
    ListaDePrazos doMes(qual, painel.Atras(painel.Meses()[1]));
    ASSERT_TRUE(doMes.Carrega(recusa));
    EXPECT_EQ(doMes.Titulo(), "Aferições que vencem em dezembro de 2026");
    ASSERT_EQ(doMes.Quantas(), 1u);
    EXPECT_EQ(doMes.Linha(0)[0], "R-1");
    EXPECT_TRUE(doMes.TemCalendario());
    EXPECT_NE(doMes.Calendario().find("DTSTAMP:20261120T100000Z\r\nDTSTART;VALUE=DATE:20261220\r\n"),
              std::string::npos);
    sessao = registro.Sessao("carla");
    EXPECT_FALSE(doMes.Carrega(recusa));
    EXPECT_EQ(recusa, "Carla Dias não tem permissão para consultar prazos.");
    EXPECT_EQ(doMes.Quantas(), 1u);
}

TEST_F(PainelDePrazosTeste, Lista_BehindANumber_IsOfItsDay_UntilItIsReadAnew)
{
    PainelDePrazos painel(qual);
    EXPECT_TRUE(painel.Le());
    EXPECT_EQ(Numeros(painel), "1 0 0 1 1 0 1 0 0 0");
    registro.Relogio = DataDe(21, 12, 2026, 0, 1, 0); // R-1 has ended, and nobody has counted again
    std::string recusa;
    ListaDePrazos vencidos(qual, painel.Atras(EstadoDePrazo::Vencido));
    ListaDePrazos doMes(qual, painel.Atras(painel.Meses()[1]));
    for (ListaDePrazos *lista : {&vencidos, &doMes}) {
        ASSERT_TRUE(lista->Carrega(recusa));
        EXPECT_EQ(lista->Quantas(), 1u);
        EXPECT_EQ(lista->Nota(), "1 linha. Os prazos são os do dia 20/11/2026.");
        ASSERT_TRUE(lista->Carrega(recusa));
        EXPECT_EQ(lista->Quantas(), 1u);
    }
    ASSERT_TRUE(vencidos.Atualiza(recusa));
    EXPECT_EQ(vencidos.Nota(), "2 linhas. Os prazos são os do dia 21/12/2026.");
    ASSERT_TRUE(doMes.Atualiza(recusa));
    EXPECT_EQ(doMes.Nota(), "0 linhas. Os prazos são os do dia 21/12/2026.");
    sessao = registro.Sessao("carla");
    EXPECT_FALSE(vencidos.Atualiza(recusa));
    EXPECT_EQ(vencidos.Quantas(), 2u);
}

TEST_F(PainelDePrazosTeste, Lista_GivenUpInTheMiddleOfAPage_IsTheOneThatWasThere)
{
    ListaDePrazos lista(qual, {});
    std::string recusa;
    int vezes = 0;
    EXPECT_FALSE(lista.Carrega(recusa, [&](double, const std::string &oQue) {
        EXPECT_EQ(oQue, "0 prazos lidos"); // the service asks before it has any
        ++vezes;
        return false;
    }));
    EXPECT_EQ(vezes, 1);
    EXPECT_EQ(recusa, "A leitura dos prazos foi cancelada.");
    EXPECT_EQ(lista.Quantas(), 0u);
    ASSERT_TRUE(lista.Carrega(recusa));
    EXPECT_EQ(lista.Quantas(), 2u);
    sessao = registro.Sessao("carla");
    EXPECT_FALSE(lista.Carrega(recusa, [](double, const std::string &) { return true; }));
    EXPECT_EQ(recusa, "Carla Dias não tem permissão para consultar prazos.");
}

TEST_F(PainelDePrazosTeste, Ordena_ByDaysNumbersAndTexts_BothWays)
{
    const auto inclui = [&](const std::string &codigo, Data vence) {
        Inclui(sessao, Poe(EquipamentoDe(codigo), Poe(SensorDe(1), AfericaoDe("C-1", DataDe(1, 1, 2026), vence))));
    };
    inclui("água", DataDe(25, 11, 2026));
    inclui("Z-1", DataDe(2, 1, 2027));
    inclui("B-1", DataDe(1, 12, 2026));
    ListaDePrazos lista(qual, {});
    std::string recusa;
    ASSERT_TRUE(lista.Carrega(recusa));
    const auto coluna = [&](std::size_t qualColuna) {
        std::string textos;
        for (std::size_t n = 0; n < lista.Quantas(); ++n) {
            textos += (n == 0 ? "" : " ") + lista.Linha(n)[qualColuna];
        }
        return textos;
    };
    lista.Ordena(8, true);
    EXPECT_EQ(coluna(8), "25/11/2026 01/12/2026 20/12/2026 02/01/2027 21/11/2027");
    EXPECT_EQ(lista.Equipamento(0).Codigo, "água");
    lista.Ordena(9, false);
    EXPECT_EQ(coluna(9), "366 43 30 11 5");
    lista.Ordena(0, true);
    EXPECT_EQ(coluna(0), "água B-1 R-1 R-2 Z-1");
    lista.Ordena(10, true);
    EXPECT_EQ(coluna(0), "R-2 Z-1 água B-1 R-1"); // within a state as they were
    RecorteDePrazos nuncaAferidos;
    nuncaAferidos.Estado = EstadoDePrazo::NuncaAferido;
    ListaDePrazos semDia(qual, nuncaAferidos);
    ASSERT_TRUE(semDia.Carrega(recusa));
    semDia.Ordena(8, true);
    EXPECT_EQ(semDia.Linha(0)[8], "");
}

TEST_F(PainelDePrazosTeste, ReadingThatEndsOtherwise_LeavesNoNumberEither)
{
    PainelDePrazos painel([]() -> Ref<SessaoServico> { throw std::bad_alloc(); });
    EXPECT_THROW(painel.Le(), std::bad_alloc);
    EXPECT_EQ(painel.Impedimento(), "Os prazos não foram contados.");
    EXPECT_TRUE(painel.Estados().empty());
}

// More than one page of a window: the calendar and what is exported have them all once the rest was read, and the rest
// is of the day of the beginning.
TEST_F(PainelDePrazosTeste, CarregaResto_BringsEveryRow_OfTheDayOfTheFirst)
{
    registro.Sql("INSERT INTO EQUIPAMENTO SELECT 100 + n.NroIntEquip, e.ClienteInc, e.SetorInc, 'X' || n.NroIntEquip, "
                 "SubCodigo, Descricao, CodMunic, TipoVia, TipoEquip, VelocPermitida, ArquivoLayout, "
                 "TemImagemEntrelacada, Modelo, TemLimiteDif, TemPerfilMag, NroIntRejLimDif, Ativo, ClienteTrans, "
                 "OperadorTrans, DataTrans, HoraTrans, TipoAgente, txtObsNotif, 'X' || n.NroIntEquip, "
                 "'X' || n.NroIntEquip, SubCodigoBusca, TrabFoto, 1 FROM EQUIPAMENTO e, "
                 "(WITH RECURSIVE c(NroIntEquip) AS (SELECT 1 UNION ALL SELECT NroIntEquip + 1 FROM c "
                 "WHERE NroIntEquip < 1500) SELECT NroIntEquip FROM c) n WHERE e.NroIntEquip = 1");
    registro.Sql("INSERT INTO SENSOR SELECT 99900 + e.NroIntEquip, e.NroIntEquip, 1, s.CodLograd, s.EndCep, s.EndNro, "
                 "s.EndCompl, s.EndDescr, s.SentidoVia, 1, s.LocalInfr FROM EQUIPAMENTO e, SENSOR s "
                 "WHERE e.NroIntEquip > 100 AND s.NroIntSensor = 1");
    registro.Sql(
        "INSERT INTO AFERICAO SELECT NroIntSensor, NroIntSensor, 'N', 'M', 20260101, 20261120, 1, NULL, 1, '', "
        "1 FROM SENSOR WHERE NroIntSensor > 99900");
    ListaDePrazos lista(qual, {});
    std::string recusa;
    ASSERT_TRUE(lista.Carrega(recusa));
    EXPECT_GE(lista.Quantas(), ListaDePrazos::LinhasPorVez);
    EXPECT_LT(lista.Quantas(), 1502u);
    EXPECT_TRUE(lista.HaMais());
    registro.Relogio = DataDe(21, 11, 2026); // midnight has passed, and 1500 of them have ended
    const std::size_t antes = lista.Quantas();
    EXPECT_FALSE(lista.CarregaResto(recusa, [](double, const std::string &) { return false; }));
    EXPECT_EQ(recusa, "A leitura dos prazos foi cancelada.");
    EXPECT_GE(lista.Quantas(), antes);
    ASSERT_TRUE(lista.CarregaResto(recusa));
    EXPECT_EQ(lista.Quantas(), 1502u);
    EXPECT_FALSE(lista.HaMais());
    std::set<std::string> codigos;
    for (std::size_t n = 0; n < lista.Quantas(); ++n) {
        EXPECT_TRUE(codigos.insert(lista.Linha(n)[0]).second) << lista.Linha(n)[0];
    }
    EXPECT_EQ(lista.Nota(), "1502 linhas. Os prazos são os do dia 20/11/2026.");
    const std::string calendario = lista.Calendario();
    std::size_t eventos = 0;
    for (std::size_t onde = calendario.find("BEGIN:VEVENT"); onde != std::string::npos;
         onde = calendario.find("BEGIN:VEVENT", onde + 1)) {
        ++eventos;
    }
    EXPECT_EQ(eventos, 1502u);
    ASSERT_TRUE(lista.Carrega(recusa)); // from its beginning, and of the day that it is
    EXPECT_EQ(lista.Quantas(), 2u);
}

// On the screen.
class PainelNaTelaTeste : public MesaTeste {
  protected:
    PainelNaTelaTeste() { Povoa(registro); }
    static void Percorre(const std::function<void(Teclado &)> &jornada) { EXPECT_EQ(Teclado::Percorre(jornada), ""); }
    QWidget *Painel() { return mesa.findChild<QWidget *>("painelDePrazosNaTela"); }
    // Of a state; below 0 while it is not there.
    int Quantos(int estado)
    {
        auto *botao = Painel()->findChild<QPushButton *>(QString("estado%1").arg(estado));
        bool contado = false;
        const int quantos = botao == nullptr ? 0 : botao->findChild<QLabel *>("quantos")->text().toInt(&contado);
        return contado ? quantos : -1;
    }
    void EsperaPainel()
    {
        ASSERT_TRUE(QTest::qWaitFor([&] { return Quantos(1) >= 0; }));
    }
};

TEST_F(PainelNaTelaTeste, AfterSignIn_ShowsTheNumbers_AndEachOpensItsList)
{
    Entra();
    EsperaPainel();
    EXPECT_EQ(Quantos(1), 1);
    EXPECT_EQ(Quantos(4), 1);
    EXPECT_EQ(Quantos(5), 1);
    EXPECT_EQ(Quantos(7), 1);
    auto *vencidos = Painel()->findChild<QPushButton *>("estado5");
    EXPECT_EQ(vencidos->accessibleName(), "Vencido: 1 equipamento");
    EXPECT_FALSE(Painel()->findChild<QPushButton *>("tentarDeNovo")->isVisible());
    EXPECT_EQ(Painel()->findChild<QWidget *>("mes202612")->accessibleName(), "dezembro de 2026: 1 aferição vence");
    Fotografa(mesa, "painel");
    Percorre([&](Teclado &t) {
        t.EsperaJanela("Mesa").Ctrl(Qt::Key_4).EsperaFoco("estado1");
        t.TabAte("estado5").Tecla(Qt::Key_Space).EsperaJanela("JanelaDePrazos").EsperaFoco("linhas");
        t.Tecla(Qt::Key_Return).EsperaJanela("frmEquipDetalhes").EsperaTexto("txtCodEquip", "R-3");
        t.Alt('F').EsperaJanela("frmLista").Ctrl(Qt::Key_F4).EsperaJanela("JanelaDePrazos");
    });
    Fotografa(mesa, "lista-de-prazos");
}

TEST_F(PainelNaTelaTeste, List_IsOrderedByItsTitlesAndItsMenu_AndCountsWhatIsSeen)
{
    Entra();
    EsperaPainel();
    Percorre([&](Teclado &t) {
        t.EsperaJanela("Mesa").Ctrl(Qt::Key_4).TabAte("estado7").Tecla(Qt::Key_Enter).EsperaJanela("JanelaDePrazos");
    });
    Inclui(registro.Sessao("ana"), EquipamentoDe("A-9"));
    auto *janela = mesa.findChild<QWidget *>("JanelaDePrazos");
    auto *linhas = janela->findChild<QTableWidget *>("linhas");
    EXPECT_EQ(linhas->rowCount(), 1);
    janela->findChild<QPushButton *>("atualizar")->click();
    ASSERT_EQ(linhas->rowCount(), 2);
    const auto codigos = [&] { return (linhas->item(0, 0)->text() + " " + linhas->item(1, 0)->text()).toStdString(); };
    EXPECT_EQ(codigos(), "R-4 A-9");
    EXPECT_FALSE(linhas->horizontalHeader()->isSortIndicatorShown());
    const auto clica = [&] {
        QHeaderView *titulos = linhas->horizontalHeader();
        QTest::mouseClick(titulos->viewport(), Qt::LeftButton, {},
                          {titulos->sectionViewportPosition(0) + titulos->sectionSize(0) / 2, titulos->height() / 2});
    };
    clica();
    EXPECT_EQ(codigos(), "A-9 R-4");
    EXPECT_TRUE(linhas->horizontalHeader()->isSortIndicatorShown());
    clica();
    EXPECT_EQ(codigos(), "R-4 A-9");
    EXPECT_EQ(linhas->horizontalHeader()->sortIndicatorOrder(), Qt::DescendingOrder);
    linhas->setCurrentCell(1, 0);
    Percorre([&](Teclado &t) {
        t.EsperaJanela("JanelaDePrazos").Alt('R').EsperaJanela("frmEquipDetalhes").EsperaTexto("txtCodEquip", "A-9");
        t.Alt('F');
    });
}

TEST_F(PainelNaTelaTeste, Bars_AreWalkedByTheArrows_AndOpenTheirLists)
{
    Entra();
    EsperaPainel();
    Percorre([&](Teclado &t) {
        t.EsperaJanela("Mesa").TabAte("mes202611").Tecla(Qt::Key_Right).EsperaFoco("mes202612");
        t.Tecla(Qt::Key_Return).EsperaJanela("JanelaDePrazos");
        t.Espera("the list has the calibration", [&] {
            auto *linhas = mesa.findChild<QTableWidget *>("linhas");
            return linhas->rowCount() == 1 && linhas->item(0, 0)->text() == "R-1";
        });
    });
}

TEST_F(PainelNaTelaTeste, ReadingThatFails_IsToldAndTriedAgain)
{
    registro.Sql("ALTER TABLE SENSOR RENAME TO SENSOR_");
    Entra();
    auto *tentar = Painel()->findChild<QPushButton *>("tentarDeNovo");
    ASSERT_TRUE(QTest::qWaitFor([&] { return tentar->isVisible(); }));
    EXPECT_EQ(Quantos(1), -1);
    EXPECT_TRUE(Painel()->findChild<QLabel *>("falhasDosPrazos")->text().startsWith("Os prazos não foram contados: "));
    Fotografa(mesa, "painel-falhou");
    registro.Sql("ALTER TABLE SENSOR_ RENAME TO SENSOR");
    tentar->click();
    EsperaPainel();
    EXPECT_FALSE(tentar->isVisible());
}

TEST_F(PainelNaTelaTeste, Groups_OpenTheListOfTheirCell)
{
    Entra();
    EsperaPainel();
    auto *grupos = Painel()->findChild<QTableWidget *>("gruposDosPrazos");
    EXPECT_FALSE(grupos->isVisible());
    Percorre([&](Teclado &t) {
        t.EsperaJanela("Mesa").TabAte("agruparPrazos").DesceAte("Setor");
        t.Espera("the groups are there", [&] { return grupos->isVisible() && grupos->rowCount() == 2; });
    });
    EXPECT_EQ(grupos->item(1, 0)->text(), "Metrologia");
    EXPECT_EQ(grupos->item(1, 7)->text(), "1");
    Fotografa(mesa, "painel-grupos");
    grupos->setCurrentCell(1, 7);
    Q_EMIT grupos->activated(grupos->currentIndex());
    auto *janela = mesa.findChild<QWidget *>("JanelaDePrazos");
    ASSERT_NE(janela, nullptr);
    EXPECT_EQ(janela->windowTitle(), "Prazos: Nunca aferido, Metrologia");
    EXPECT_EQ(janela->findChild<QTableWidget *>("linhas")->item(0, 0)->text(), "R-4");
}

// Whoever looks at once sees nothing cut: what was read takes more lines than what stood there before.
TEST_F(PainelNaTelaTeste, Numbers_AsSoonAsTheyAreThere_HaveTheirRoom)
{
    Entra();
    EsperaPainel();
    mesa.setGeometry(TelasDeTeste::Ampliada.adjusted(0, 0, -1, -1));
    auto *area = mesa.findChild<AreaDeTrabalho *>();
    area->MostraFundo(false);
    area->MostraFundo(true);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    ASSERT_EQ(Quantos(1), -1);
    Painel()->repaint();
    QCoreApplication::sendPostedEvents(Painel(), QEvent::MetaCall); // and nothing else
    ASSERT_EQ(Quantos(1), 1);
    EXPECT_EQ(TextosCortados(mesa).join("\n").toStdString(), "");
}

TEST_F(PainelNaTelaTeste, PanelAndLists_AtEverySizeAndColour_AreWhole)
{
    AparenciaDeTeste aparencia(preferencias);
    Entra();
    auto *area = mesa.findChild<AreaDeTrabalho *>();
    EsperaPainel();
    Percorre([&](Teclado &t) {
        t.EsperaJanela("Mesa").TabAte("agruparPrazos").DesceAte("Município");
        t.Espera("the groups are there", [&] { return Painel()->findChild<QTableWidget *>()->isVisible(); });
    });
    for (const auto &[nome, tema, tamanho, tela] :
         {std::tuple("claro", Tema::Claro, 100, TelasDeTeste::Comum),
          std::tuple("1024x768", Tema::Claro, 100, TelasDeTeste::Pequena),
          std::tuple("1024x768-escuro", Tema::Escuro, 100, TelasDeTeste::Pequena),
          std::tuple("200", Tema::Claro, 200, TelasDeTeste::Comum),
          std::tuple("512x384-escuro", Tema::Escuro, 100, TelasDeTeste::Ampliada)}) {
        SCOPED_TRACE(nome);
        aparencia.Poe(tema, tamanho);
        mesa.setGeometry(tela.adjusted(0, 0, -1, -1));
        area->MostraFundo(false);
        area->MostraFundo(true);
        EsperaPainel();
        Fotografa(mesa, QString("painel-%1").arg(nome));
        EXPECT_EQ((TextosCortados(mesa) + ForaDoLugar(mesa) + DefeitosDoLeitor(*Painel())).join("\n").toStdString(),
                  "");
        EXPECT_EQ(TabForaDaLeitura(*Painel()).join("\n").toStdString(), "");
        Painel()->findChild<QPushButton *>("estado1")->click();
        auto *lista = mesa.findChild<QWidget *>("JanelaDePrazos");
        Fotografa(mesa, QString("lista-de-prazos-%1").arg(nome));
        EXPECT_EQ(DefeitosDaJanela(*lista).join("\n").toStdString(), "");
        area->closeAllSubWindows();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

} // namespace
