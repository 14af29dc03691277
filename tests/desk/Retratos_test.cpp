#include "controls/ztCombo.h"
#include "search/CVorEquip.h"
#include "shell/Especifica.h"
#include "tests/desk/MesaTeste.h"
#include "tests/desk/Retrato.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QMdiArea>
#include <QScrollBar>
#include <QTabWidget>
#include <QTableView>
#include <QTimer>

#include <string>
#include <utility>

using namespace mesa;

namespace {

constexpr const char *ComFoto = "mnuModVOREquiptos";
constexpr const char *SemFoto = "mnuModNABEquiptos";
constexpr const char *Incluir = "mnuZTLObjNovo";
constexpr const char *Editar = "mnuZTLObjEditar";
constexpr const char *Detalhes = "mnuZTLObjDetalhes";

struct TipoDeEquipamento {
    const char *Tipo;
    std::uint8_t Medidor;
    bool Sensores; // has sensors of its own
    const char *Via;
};

constexpr TipoDeEquipamento TiposComFoto[] = {
    {"C", 1, true, "U"},  {"L", 1, true, "R"}, {"P", 1, true, "U"},  {"F", 1, true, "U"},
    {"M", 2, false, "I"}, {"R", 2, true, "R"}, {"V", 3, false, "R"},
};
constexpr TipoDeEquipamento TiposSemFoto[] = {{"A", 2, false, ""}, {"E", 3, false, ""}, {"U", 3, false, ""}};

std::string CodigoDo(const char *tipo)
{
    return std::string("ESTADO_CERRADO.00") + tipo;
}

// The desk over a registry that has one equipment of every type, and all six forms in all their modes. Each window is
// photographed (retratos/ in the build folder) and must be without a defect.
class RetratosTeste : public MesaTeste {
  protected:
    RetratosTeste()
    {
        for (const TipoDeEquipamento &tipo : TiposComFoto) {
            Registra(tipo);
        }
        for (const TipoDeEquipamento &tipo : TiposSemFoto) {
            Registra(tipo);
        }
        Entra();
    }

    // A window that nobody has made smaller shows its lists whole.
    static void Retrata(JanelaForm &janela, const QString &nome, bool menor = false)
    {
        Fotografa(janela, nome);
        EXPECT_EQ(Defeitos(janela).join("\n").toStdString(), "") << nome.toStdString();
        for (const QTableView *tabela : janela.findChildren<QTableView *>()) {
            EXPECT_TRUE(menor || !tabela->isVisible() || tabela->horizontalScrollBar()->maximum() == 0)
                << nome.toStdString() << ": " << tabela->parent()->objectName().toStdString();
        }
    }
    static void RetrataPaginas(JanelaForm &janela, const QString &nome)
    {
        CadaPagina(janela, [&](int pagina) { Retrata(janela, QString("%1-%2").arg(nome).arg(pagina)); });
    }

    // `abre` comes back when the window that it opens closes: `olha` is called while it stands, and then it goes.
    template <class Abre, class Olha> void EmFrente(const char *nome, Abre &&abre, Olha &&olha)
    {
        bool vista = false;
        QTimer olho;
        olho.setInterval(0);
        QObject::connect(&olho, &QTimer::timeout, &mesa, [&] {
            auto *janela = dynamic_cast<JanelaForm *>(QApplication::activeModalWidget());
            if (!vista && janela != nullptr && janela->objectName() == nome && janela->isVisible()) {
                vista = true;
                const Ref<IForm> form = janela->Form();
                olha(*janela);
                mesa.Hospedeiro()->Plataforma()->Descarrega(form);
            }
        });
        olho.start();
        abre();
        EXPECT_TRUE(vista) << nome;
    }
    // The same of a command of a list.
    template <class Olha>
    void EmFrente(const char *nome, JanelaForm &janela, const char *lista, const char *comando, Olha &&olha)
    {
        EmFrente(
            nome, [&] { Comanda(janela, lista, comando); }, olha);
    }
    template <class Olha> void NoEquipamento(JanelaForm &lista, const char *comando, Olha &&olha)
    {
        EmFrente("frmEquipDetalhes", lista, "ztlLista", comando, olha);
    }
    template <class Olha> void NaSelecao(Olha &&olha)
    {
        EmFrente(
            "frmLista", [&] { mesa.Modulo()->CEspecifica()->CreateCVorEquip()->SelecionaEquipamento(""); }, olha);
    }
    // The same of a window that does not wait.
    template <class Olha>
    void AoLado(const char *nome, JanelaForm &janela, const char *lista, const char *comando, Olha &&olha)
    {
        Comanda(janela, lista, comando);
        for (QWidget *topo : QApplication::topLevelWidgets()) {
            auto *nova = dynamic_cast<JanelaForm *>(topo);
            if (nova != nullptr && nova->objectName() == nome && nova->isVisible() && !nova->isModal()) {
                const Ref<IForm> form = nova->Form();
                olha(*nova);
                mesa.Hospedeiro()->Plataforma()->Descarrega(form);
                return;
            }
        }
        ADD_FAILURE() << nome;
    }

    JanelaForm &AbreLista(const char *ferramenta)
    {
        EXPECT_TRUE(mesa.Modulo()->ClickMenu(ferramenta));
        auto &lista = dynamic_cast<JanelaForm &>(*mesa.findChild<QWidget *>("frmLista"));
        QApplication::processEvents();
        return lista;
    }
    static void Localiza(JanelaForm &lista) { lista.findChild<QAbstractButton *>("ztlLista_localizar")->click(); }
    static void Comanda(JanelaForm &janela, const char *lista, const char *comando)
    {
        auto *botao = janela.findChild<QWidget *>(lista)->findChild<QAbstractButton *>(comando);
        ASSERT_TRUE(botao->isEnabled()) << lista << " " << comando;
        botao->click();
    }
    static void EscolheLinha(JanelaForm &janela, const char *lista, const std::string &texto)
    {
        auto *tabela = janela.findChild<QWidget *>(lista)->findChild<QTableView *>("linhas");
        for (int linha = 0; linha < tabela->model()->rowCount(); ++linha) {
            for (int coluna = 0; coluna < tabela->model()->columnCount(); ++coluna) {
                const QModelIndex indice = tabela->model()->index(linha, coluna);
                if (!tabela->isColumnHidden(coluna) && indice.data().toString() == Q(texto)) {
                    tabela->setCurrentIndex(indice);
                    return;
                }
            }
        }
        ADD_FAILURE() << lista << " has no " << texto;
    }
    static ztCombo &Combo(JanelaForm &janela, const char *nome)
    {
        for (const Ref<IControle> &controle : janela.Form()->Controles()) {
            if (controle->Nome() == nome) {
                return dynamic_cast<ztCombo &>(*controle);
            }
        }
        throw Falha(NumeroFalha::ErroInterno);
    }
    static void EscolheValor(JanelaForm &janela, const char *nome, const std::string &valor)
    {
        ztCombo &combo = Combo(janela, nome);
        for (std::size_t item = 0; item < combo.Itens().size(); ++item) {
            if (combo.Itens()[item].Valor == valor) {
                combo.Escolhe(static_cast<std::int32_t>(item));
                return;
            }
        }
        ADD_FAILURE() << nome << " offers no " << valor;
    }

    void RetrataEquipamento(JanelaForm &lista, const char *comando, const TipoDeEquipamento &tipo, const QString &modo)
    {
        EscolheLinha(lista, "ztlLista", CodigoDo(tipo.Tipo));
        NoEquipamento(lista, comando, [&](JanelaForm &janela) {
            RetrataPaginas(janela, QString("equipamento-%1-%2").arg(modo, tipo.Tipo));
        });
    }
    template <std::size_t N>
    void RetrataEquipamentos(const char *ferramenta, const TipoDeEquipamento (&tipos)[N], const char *comando,
                             const QString &modo)
    {
        JanelaForm &lista = AbreLista(ferramenta);
        Localiza(lista);
        for (const TipoDeEquipamento &tipo : tipos) {
            RetrataEquipamento(lista, comando, tipo, modo);
        }
    }
    template <std::size_t N> void RetrataInclusoes(const char *ferramenta, const TipoDeEquipamento (&tipos)[N])
    {
        JanelaForm &lista = AbreLista(ferramenta);
        NoEquipamento(lista, Incluir, [&](JanelaForm &janela) {
            RetrataPaginas(janela, "equipamento-inclusao");
            for (const TipoDeEquipamento &tipo : tipos) {
                EscolheValor(janela, "cboTipoMedidor", std::to_string(tipo.Medidor));
                EscolheValor(janela, "cboTipoEquip", tipo.Tipo);
                RetrataPaginas(janela, QString("equipamento-inclusao-%1").arg(tipo.Tipo));
            }
            // No service here offers this one, but the form has its rules.
            Combo(janela, "cboTipoEquip").AdicionaItem("Indefinido|B");
            EscolheValor(janela, "cboTipoEquip", "B");
            RetrataPaginas(janela, "equipamento-inclusao-B");
        });
    }
    // The form of the equipment P, in front, on the page of its sensors.
    template <class Olha> void NosSensores(const char *comando, Olha &&olha)
    {
        JanelaForm &lista = AbreLista(ComFoto);
        Localiza(lista);
        EscolheLinha(lista, "ztlLista", CodigoDo("P"));
        NoEquipamento(lista, comando, [&](JanelaForm &equipamento) {
            equipamento.findChild<QTabWidget *>()->setCurrentIndex(2);
            olha(equipamento);
        });
    }
    void RetrataLimites(JanelaForm &lista, const char *tipo, const char *comando, const QString &nome)
    {
        EscolheLinha(lista, "ztlLista", CodigoDo(tipo));
        EmFrente("frmLimitesDif", lista, "ztlLista", comando, [&](JanelaForm &limites) {
            limites.findChild<QTableView *>("linhas")->selectRow(0);
            Retrata(limites, "limites-" + nome);
            for (const char *modo : {Incluir, Editar}) {
                EmFrente("frmLimitesDifDetalhes", limites, "ztLista", modo, [&](JanelaForm &limite) {
                    RetrataPaginas(limite, "limite-" + nome + (modo == Incluir ? "-inclusao" : "-edicao"));
                });
            }
            AoLado("frmLimitesDifDetalhes", limites, "ztLista", Detalhes,
                   [&](JanelaForm &limite) { RetrataPaginas(limite, "limite-" + nome + "-detalhes"); });
        });
    }

  private:
    Ref<AfericaoED> Afericao(std::uint8_t tipo, int ano)
    {
        const auto afericao =
            AfericaoDe("1234567890", DataDe(10, 1, ano), DataDe(9, 1, ano + 1), GuardaPdf(ana, "documento"));
        Com(afericao, &AfericaoED::Marca, "20200001234567", &AfericaoED::TipoAfer, tipo);
        return Com(afericao, &AfericaoED::PortDimel, tipo == 2 ? "123456/26" : "");
    }
    void Registra(const TipoDeEquipamento &tipo)
    {
        auto novo = EquipamentoDe(CodigoDo(tipo.Tipo));
        novo->SubCodigo = "SUB.0001.ABCDEFGHIJK";
        novo->Descricao = "Avenida Presidente Castelo Branco, sentido interior";
        novo->Descricao = novo->Descricao.Valor().substr(0, 50);
        novo->Modelo = "Fictício 300 com pista dupla";
        novo->TipoAgente = tipo.Medidor;
        novo->TipoEquip = tipo.Tipo;
        novo->TipoVia = tipo.Via;
        const auto um = [&](std::string_view tipos) { return tipos.find(tipo.Tipo) != std::string_view::npos; };
        novo->TemLimiteDif = static_cast<std::uint8_t>(um("CLPR") ? 1 : 2);
        if (um("CLPR")) {
            novo->NroIntRejLimDif = 10;
        } else if (um("FV")) {
            novo->txtObsNotif = "Infração registrada por sistema automático não metrológico de tráfego.";
        }
        const std::string local = "Avenida Presidente João Belchior Marques Goulart, 12345, fundos, Porto Alegre/RS";
        for (std::int16_t numero = 1; numero <= (tipo.Sensores ? 2 : 1) && !um("V"); ++numero) {
            auto sensor = SensorDe(numero);
            sensor->LocalInfr = local;
            sensor->CodLograd = rua;
            sensor->EndNro = 1200;
            sensor->EndCompl = "fundos";
            sensor->EndCep = 90010020;
            Poe(sensor, Afericao(1, 2025));
            Poe(sensor, Afericao(um("PCLM") ? 2 : 1, 2026));
            Poe(novo, sensor);
        }
        const std::int32_t numero = Inclui(ana, novo);
        if (um("P")) {
            RegistraLimites(numero);
        } else if (um("F")) {
            const auto proibido = LimiteDe(numero, 4, 2200, 2359, 0);
            EXPECT_EQ(Pede(ana, "alteraListaLimitesDif", ListaDeLimites({proibido})).Recusa, "");
        }
    }
    void RegistraLimites(std::int32_t nroIntEquip)
    {
        const auto limite = Com(LimiteDe(nroIntEquip, 4, 2200, 2359, 110), &LimiteDifED::VelocMin, 100);
        EXPECT_EQ(Pede(ana, "alteraListaLimitesDif", ListaDeLimites({limite})).Recusa, "");
        const auto dia = DiaDe(nroIntEquip, DataDe(25, 12, 2026), 0, 2359);
        Com(dia, &DiaEspecificoED::VelocPerm, 110, &DiaEspecificoED::VelocMin, 100);
        EXPECT_EQ(Pede(ana, "adicionaDiaEspecifico", dia).Recusa, "");
    }

    Ref<SessaoServico> ana = registro.Sessao("ana");
    std::int32_t rua = registro.IncluiRua("Avenida Getúlio Vargas", "Centro", "90010020");
};

TEST_F(RetratosTeste, SearchWindow_ByTheMenu)
{
    JanelaForm &lista = AbreLista(ComFoto);
    Retrata(lista, "lista-vazia");
    Localiza(lista);
    Retrata(lista, "lista-linhas");
    EscolheValor(lista, "cboCriterio", "1");
    Retrata(lista, "lista-codigo");
    EscolheValor(lista, "cboCriterio", "2");
    Retrata(lista, "lista-subcodigo");
    mesa.resize(760, 640);
    Retrata(lista, "lista-pequena", true);
}

TEST_F(RetratosTeste, SearchWindow_ToSelect)
{
    NaSelecao([&](JanelaForm &lista) {
        Retrata(lista, "selecao");
        lista.resize(lista.minimumSize());
        Retrata(lista, "selecao-pequena", true);
    });
}

TEST_F(RetratosTeste, Equipment_ToInclude)
{
    RetrataInclusoes(ComFoto, TiposComFoto);
}

TEST_F(RetratosTeste, EquipmentOutsidePhotoWork_ToInclude)
{
    RetrataInclusoes(SemFoto, TiposSemFoto);
}

TEST_F(RetratosTeste, Equipment_ToEdit)
{
    RetrataEquipamentos(ComFoto, TiposComFoto, Editar, "edicao");
}

TEST_F(RetratosTeste, EquipmentOutsidePhotoWork_ToEdit)
{
    RetrataEquipamentos(SemFoto, TiposSemFoto, Editar, "edicao");
}

TEST_F(RetratosTeste, Equipment_ToLookAt)
{
    RetrataEquipamentos(ComFoto, TiposComFoto, Detalhes, "detalhes");
}

TEST_F(RetratosTeste, EquipmentOutsidePhotoWork_ToLookAt)
{
    RetrataEquipamentos(SemFoto, TiposSemFoto, Detalhes, "detalhes");
}

TEST_F(RetratosTeste, SensorAndCalibration_ToIncludeAndEdit)
{
    NosSensores(Editar, [&](JanelaForm &equipamento) {
        EmFrente("frmEquipSensores", equipamento, "ztListaSensor", Incluir,
                 [&](JanelaForm &sensor) { RetrataPaginas(sensor, "sensor-inclusao"); });
        EscolheLinha(equipamento, "ztListaSensor", "1");
        EmFrente("frmEquipSensores", equipamento, "ztListaSensor", Editar, [&](JanelaForm &sensor) {
            RetrataPaginas(sensor, "sensor-edicao");
            sensor.findChild<QTabWidget *>()->setCurrentIndex(1);
            EmFrente("frmEquipAfericoes", sensor, "ztListaAfericao", Incluir, [&](JanelaForm &afericao) {
                for (const char *tipo : {"1", "2"}) {
                    EscolheValor(afericao, "cboTipo", tipo);
                    Retrata(afericao, QString("afericao-inclusao-%1").arg(tipo));
                }
            });
            for (const int linha : {0, 1}) {
                sensor.findChild<QTableView *>("linhas")->selectRow(linha);
                EmFrente("frmEquipAfericoes", sensor, "ztListaAfericao", Editar, [&](JanelaForm &afericao) {
                    Retrata(afericao, QString("afericao-edicao-%1").arg(linha + 1));
                });
            }
        });
    });
}

TEST_F(RetratosTeste, SensorAndCalibration_ToLookAt)
{
    NosSensores(Detalhes, [&](JanelaForm &equipamento) {
        EscolheLinha(equipamento, "ztListaSensor", "1");
        AoLado("frmEquipSensores", equipamento, "ztListaSensor", Detalhes, [&](JanelaForm &sensor) {
            RetrataPaginas(sensor, "sensor-detalhes");
            sensor.findChild<QTabWidget *>()->setCurrentIndex(1);
            for (const int linha : {0, 1}) {
                sensor.findChild<QTableView *>("linhas")->selectRow(linha);
                AoLado("frmEquipAfericoes", sensor, "ztListaAfericao", Detalhes, [&](JanelaForm &afericao) {
                    Retrata(afericao, QString("afericao-detalhes-%1").arg(linha + 1));
                });
            }
        });
    });
}

TEST_F(RetratosTeste, LimitsDaysAndProhibitedHours)
{
    JanelaForm &lista = AbreLista(ComFoto);
    Localiza(lista);
    RetrataLimites(lista, "P", "mnuZTLObjLimitesDif", "diferenciado");
    RetrataLimites(lista, "P", "mnuZTLObjDiasEspec", "dia");
    RetrataLimites(lista, "F", "mnuZTLObjHorarioProib", "horario");
}

// Where a widget stands in the window.
QRect Lugar(const JanelaForm &janela, const char *nome)
{
    const auto *widget = janela.findChild<QWidget *>(nome);
    return {widget->mapTo(&janela, QPoint()), widget->size()};
}

TEST_F(RetratosTeste, RoadType_OfTypesWithoutSpeed_TakesThePlaceOfTheSpeedFrame)
{
    JanelaForm &lista = AbreLista(ComFoto);
    NoEquipamento(lista, Incluir, [&](JanelaForm &janela) {
        const auto mostra = [&](const char *medidor, const char *tipo) {
            janela.findChild<QTabWidget *>()->setCurrentIndex(0);
            EscolheValor(janela, "cboTipoMedidor", medidor);
            EscolheValor(janela, "cboTipoEquip", tipo);
            janela.findChild<QTabWidget *>()->setCurrentIndex(1);
            QApplication::processEvents();
        };
        mostra("1", "C");
        const QRect velocidade = Lugar(janela, "fraLimiteVel");
        EXPECT_GT(Lugar(janela, "fraTipoVia").left(), velocidade.right());
        EXPECT_EQ(Lugar(janela, "fraTipoVia").top(), velocidade.top());
        for (const auto &[medidor, tipo] : {std::pair("2", "M"), std::pair("1", "F"), std::pair("3", "V")}) {
            mostra(medidor, tipo);
            EXPECT_EQ(Lugar(janela, "fraTipoVia").topLeft(), velocidade.topLeft()) << tipo;
        }
        mostra("1", "P");
        EXPECT_EQ(Lugar(janela, "fraLimiteVel").topLeft(), velocidade.topLeft());
        EXPECT_GT(Lugar(janela, "fraTipoVia").left(), velocidade.right());
    });
}

TEST_F(RetratosTeste, CloseButton_ToLookAtAnEquipment_StandsWhereApplyStood)
{
    JanelaForm &lista = AbreLista(ComFoto);
    Localiza(lista);
    EscolheLinha(lista, "ztlLista", CodigoDo("C"));
    int aplicar = 0;
    NoEquipamento(lista, Editar,
                  [&](JanelaForm &janela) { aplicar = janela.width() - Lugar(janela, "ztCmdAplicar").right(); });
    NoEquipamento(lista, Detalhes, [&](JanelaForm &janela) {
        EXPECT_EQ(janela.width() - Lugar(janela, "cmdCancelar").right(), aplicar);
    });
}

TEST_F(RetratosTeste, SelectionButtons_StandAtTheLeftEdgeAtTheFootOfTheList)
{
    constexpr int TrintaTwips = 2; // pixels
    NaSelecao([&](JanelaForm &lista) {
        const QRect ok = Lugar(lista, "cmdOK");
        EXPECT_EQ(ok.left(), Lugar(lista, "ztlLista").left());
        EXPECT_GT(ok.top(), Lugar(lista, "ztlLista").bottom());
        EXPECT_EQ(Lugar(lista, "cmdCancelar").topLeft(), ok.topRight() + QPoint(1 + TrintaTwips, 0));
    });
}

TEST_F(RetratosTeste, Criteria_StandInTheMiddleOfTheirBar)
{
    constexpr int QuarentaECincoTwips = 3; // pixels
    JanelaForm &lista = AbreLista(ComFoto);
    const QRect barra = Lugar(lista, "ztlLista_criterios");
    const QRect criterios = Lugar(lista, "fraDados_0");
    EXPECT_EQ(criterios.left() - barra.left(), QuarentaECincoTwips);
    EXPECT_EQ(criterios.top() - barra.top(), QuarentaECincoTwips);
    EXPECT_EQ(barra.bottom() - criterios.bottom(), QuarentaECincoTwips);
}

TEST_F(RetratosTeste, LabelOfTheCode_FollowsTheCriterion)
{
    JanelaForm &lista = AbreLista(ComFoto);
    const auto *rotulo = lista.findChild<QLabel *>("rot_txtCodEquip");
    EXPECT_FALSE(rotulo->isVisible());
    EscolheValor(lista, "cboCriterio", "1");
    EXPECT_TRUE(rotulo->isVisible());
    EXPECT_EQ(rotulo->text().toStdString(), "Código");
    EscolheValor(lista, "cboCriterio", "2");
    EXPECT_EQ(rotulo->text().toStdString(), "Subcódigo");
    EscolheValor(lista, "cboCriterio", "0");
    EXPECT_FALSE(rotulo->isVisible());
}

} // namespace
