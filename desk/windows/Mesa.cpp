#include "desk/windows/Mesa.h"

#include "desk/windows/ConsultaAutuacao.h"
#include "desk/windows/Entrada.h"
#include "desk/windows/Involucro.h"
#include "shell/Especifica.h"
#include "shell/ModGeral.h"
#include "tela/Twips.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QFile>
#include <QIcon>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QStatusBar>
#include <QTextBrowser>
#include <QTimer>
#include <QToolBar>
#include <QVBoxLayout>

namespace mesa {

namespace {

constexpr int MinutoEmMilissegundos = 60000;
constexpr const char *FerramentaFotografica = "mnuModVOREquiptos";
constexpr const char *FerramentaDemais = "mnuModNABEquiptos";

} // namespace

Mesa::Mesa(Ref<Servicos> servicos, std::filesystem::path diretorio, std::function<Data()> agora)
    : m_Servicos(std::move(servicos)),
      m_Area(new QMdiArea(this)),
      m_Camada(Novo<CamadaQt>(m_Area)),
      m_Janelas(Novo<Janelas>(m_Camada)),
      m_Host(Novo<HostMesa>(m_Janelas, std::move(diretorio), std::move(agora)))
{
    setObjectName("Mesa");
    setWindowTitle("Registro de Equipamentos");
    setWindowIcon(QIcon(":/icones/equipamentos.svg"));
    resize(1280, 820);
    m_Area->setBackground(QColor("#dfe6ee"));
    setCentralWidget(m_Area);

    m_Janelas->Descarrega = [this](const Ref<IForm> &form) { m_Host->Plataforma()->Descarrega(form); };
    m_Janelas->FazInvolucro = [] { return Novo<Involucro>(); };
    m_Janelas->MostraFalha = [] { gSubMostraErro("Mesa"); };
    m_Janelas->FechouVisor = [this] { LimpaCertificados(); };
    m_Camada->Logradouros = m_Host->Logradouros;
    m_Camada->Clientes = [this] {
        std::vector<ClienteOferecido> oferecidos;
        for (ClienteCadastrado &cliente : m_Host->Servico()->Clientes()) {
            oferecidos.push_back({std::move(cliente.Nome), std::move(cliente.Setores)});
        }
        return oferecidos;
    };
    m_Camada->Ajuda = [this](const std::string &, QWidget *dono) { MostraAjuda(dono); };

    InstalaHost(m_Host);
    m_Geral = Novo<Geral>();
    m_Geral->RegistraAM("Registro de Equipamentos");
    m_Geral->cGlobal = m_Host->cGlobal;
    m_Geral->Parametros(m_Host->FormMDI, m_Host->ActBar, nullptr, nullptr, nullptr, m_Host->oAppEXE);
    m_Geral->ObjInterface = m_Host->ObjInterface;
    m_Host->cGlobal->Registra(std::string(NomeComponente), m_Geral);

    MontaMenus();
    MontaEstado();
    HabilitaFerramentas();
    LimpaCertificados();
}

Mesa::~Mesa()
{
    m_Janelas->TiraTodas(); // what they still have to say would come after the module's end
    m_Geral->Encerra();
    m_Geral = nullptr;
    DescarregaModulo(); // its shared services are this host's
    InstalaHost(nullptr);
}

QAction *Mesa::AdicionaFerramenta(QMenu *menu, const QString &texto, const QString &nome)
{
    QAction *acao = menu->addAction(QIcon(":/icones/equipamentos.svg"), texto);
    acao->setObjectName(nome);
    const std::string ferramenta = S(nome);
    connect(acao, &QAction::triggered, this, [this, ferramenta] { NaBorda([&] { m_Geral->ClickMenu(ferramenta); }); });
    m_Ferramentas[ferramenta] = acao;
    return acao;
}

void Mesa::MontaMenus()
{
    QMenu *equipamentos = menuBar()->addMenu("&Equipamentos");
    QAction *fotos =
        AdicionaFerramenta(equipamentos, "Equipamentos com trabalho &fotográfico...", FerramentaFotografica);
    fotos->setShortcut(QKeySequence("Ctrl+1"));
    QAction *demais = AdicionaFerramenta(equipamentos, "&Demais equipamentos...", FerramentaDemais);
    demais->setShortcut(QKeySequence("Ctrl+2"));
    equipamentos->addSeparator();
    m_Consulta = equipamentos->addAction(QIcon(":/icones/consulta.svg"), "&Consulta para autuação...");
    m_Consulta->setObjectName("consultaAutuacao");
    m_Consulta->setShortcut(QKeySequence("Ctrl+3"));
    connect(m_Consulta, &QAction::triggered, this, [this] { NaBorda([this] { AbreConsulta(); }); });
    equipamentos->addSeparator();
    m_Renovar = equipamentos->addAction(QIcon(":/icones/atualizar.svg"), "");
    m_Renovar->setObjectName("renovarReplica");
    m_Renovar->setShortcut(QKeySequence("Ctrl+R"));
    m_Renovar->setVisible(false);
    connect(m_Renovar, &QAction::triggered, this, [this] { NaBorda([this] { AtualizaReplica(); }); });
    m_Sair = equipamentos->addAction(QIcon(":/icones/sair.svg"), "&Trocar de usuário...");
    m_Sair->setObjectName("trocarUsuario");
    connect(m_Sair, &QAction::triggered, this, [this] {
        Sai();
        if (!PedeEntrada()) {
            close();
        }
    });
    QAction *encerrar = equipamentos->addAction(QIcon(":/icones/fechar.svg"), "&Encerrar");
    encerrar->setShortcut(QKeySequence("Ctrl+Q"));
    connect(encerrar, &QAction::triggered, this, &QWidget::close);

    MontaMenuJanela();

    QMenu *ajuda = menuBar()->addMenu("Aj&uda");
    QAction *manual = ajuda->addAction(QIcon(":/icones/ajuda.svg"), "&Manual do operador");
    manual->setShortcut(QKeySequence("F1"));
    connect(manual, &QAction::triggered, this, [this] { m_Janelas->MostraAjuda(""); });
    connect(ajuda->addAction("&Sobre..."), &QAction::triggered, this, [this] { MostraSobre(); });

    auto *barra = addToolBar("Ferramentas");
    barra->setObjectName("ferramentas");
    barra->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    barra->setMovable(false);
    barra->addAction(fotos);
    barra->addAction(demais);
    barra->addAction(m_Consulta);
}

void Mesa::MontaMenuJanela()
{
    m_MenuJanela = menuBar()->addMenu("&Janela");
    m_MenuJanela->addAction("Lado a &lado", m_Area, &QMdiArea::tileSubWindows);
    m_MenuJanela->addAction("Em &cascata", m_Area, &QMdiArea::cascadeSubWindows);
    m_MenuJanela->addSeparator();
    m_MenuJanela->addAction("&Próxima", QKeySequence("Ctrl+F6"), m_Area, &QMdiArea::activateNextSubWindow);
    m_MenuJanela->addAction("&Anterior", QKeySequence("Ctrl+Shift+F6"), m_Area, &QMdiArea::activatePreviousSubWindow);
    m_MenuJanela->addSeparator();
    m_MenuJanela->addAction("&Fechar", m_Area, &QMdiArea::closeActiveSubWindow);
    m_MenuJanela->addAction("Fechar &todas", m_Area, &QMdiArea::closeAllSubWindows);
    m_MenuJanela->addSeparator();
    const qsizetype fixas = m_MenuJanela->actions().size();
    connect(m_MenuJanela, &QMenu::aboutToShow, this, [this, fixas] {
        for (QAction *antiga : m_MenuJanela->actions().mid(fixas)) {
            delete antiga;
        }
        int numero = 0;
        for (QMdiSubWindow *filha : m_Area->subWindowList()) {
            QAction *acao = m_MenuJanela->addAction(QString("&%1 %2").arg(++numero).arg(filha->windowTitle()));
            acao->setCheckable(true);
            acao->setChecked(filha == m_Area->activeSubWindow());
            connect(acao, &QAction::triggered, m_Area, [this, filha] { m_Area->setActiveSubWindow(filha); });
        }
    });
}

void Mesa::MontaEstado()
{
    m_Usuario = new QLabel(this);
    m_Cliente = new QLabel(this);
    m_Replica = new QLabel(this);
    for (QLabel *rotulo : {m_Usuario, m_Cliente, m_Replica}) {
        rotulo->setTextFormat(Qt::PlainText);
    }
    m_Forcar = new QPushButton(this);
    m_Usuario->setObjectName("estadoUsuario");
    m_Cliente->setObjectName("estadoCliente");
    m_Replica->setObjectName("estadoReplica");
    m_Forcar->setObjectName("estadoForcar");
    m_Forcar->setFlat(true);
    m_Forcar->hide();
    statusBar()->setContentsMargins(8, 0, 8, 0);
    statusBar()->addWidget(m_Usuario);
    statusBar()->addWidget(m_Cliente);
    statusBar()->addPermanentWidget(m_Replica);
    statusBar()->addPermanentWidget(m_Forcar);
    connect(m_Forcar, &QPushButton::clicked, this, [this] { NaBorda([this] { AtualizaReplica(); }); });
    m_Relogio = new QTimer(this);
    m_Relogio->setInterval(MinutoEmMilissegundos);
    connect(m_Relogio, &QTimer::timeout, this, [this] { NaBorda([this] { MostraReplica(); }); });
}

bool Mesa::PedeEntrada()
{
    Entrada entrada(m_Servicos, this);
    m_Janelas->MostraEEspera(Novo<DialogoQt>(&entrada));
    if (entrada.result() != QDialog::Accepted) {
        return false;
    }
    NaBorda([&] { Entra(entrada.Sessao()); });
    return true;
}

void Mesa::Entra(const Ref<SessaoServico> &sessao)
{
    m_Host->Entra(sessao);
    m_Geral->Logon(m_Host->objMTM(), m_Host->objSCA(), "");
    LimpaCertificados();
    HabilitaFerramentas();
    const Operador &operador = sessao->Operador();
    m_Usuario->setText("Usuário: " + Q(operador.Nome));
    m_Cliente->setText("Cliente: " + Q(operador.Cliente) +
                       (operador.Setor.empty() ? QString() : "   Setor: " + Q(operador.Setor)));
    MostraReplica();
    m_Relogio->start();
}

void Mesa::Sai()
{
    m_Relogio->stop();
    for (QMdiSubWindow *filha : m_Area->subWindowList()) {
        if (qobject_cast<QWidget *>(filha->widget())->objectName() == "ConsultaAutuacao") {
            filha->close();
        }
    }
    for (QDialog *visor : findChildren<QDialog *>("VisorPDF")) { // of what only who leaves may see
        visor->close();
    }
    LimpaCertificados();
    NaBorda([this] { m_Geral->Logoff(); });
    m_Host->Sai();
    HabilitaFerramentas();
    m_Usuario->setText("Ninguém entrou");
    m_Cliente->clear();
    m_Replica->clear();
    m_Forcar->hide();
    m_Renovar->setVisible(false);
}

void Mesa::LimpaCertificados()
{
    NaBorda([this] { m_Geral->CEspecifica()->CreateCVorEquip()->LimpaArqTemp(); });
}

void Mesa::HabilitaFerramentas()
{
    bool alguma = false;
    for (const auto &[nome, acao] : m_Ferramentas) {
        acao->setEnabled(m_Geral->HabilitarItem(nome));
        alguma = alguma || acao->isEnabled();
    }
    m_Consulta->setEnabled(alguma);
}

void Mesa::MostraReplica()
{
    std::string dadosAte;
    std::string forcar;
    bool oferece = false;
    m_Geral->Impressao.PesquisaDataUltimaClonagem(dadosAte, forcar, oferece);
    m_Replica->setText(Q(dadosAte));
    m_Forcar->setText(Q(forcar));
    m_Forcar->setVisible(oferece);
    m_Renovar->setText(Q(forcar));
    m_Renovar->setVisible(oferece);
}

void Mesa::AtualizaReplica()
{
    m_Host->BancoLocal->AtualizaReplica(*m_Host->Servico());
    MostraReplica();
}

void Mesa::AbreConsulta()
{
    auto *consulta = new ConsultaAutuacao(
        m_Geral->CEspecifica()->CreateCVorEquip(), [this](const std::function<void()> &acao) { NaBorda(acao); },
        nullptr);
    QMdiSubWindow *filha = m_Area->addSubWindow(consulta);
    filha->setAttribute(Qt::WA_DeleteOnClose);
    filha->setWindowIcon(consulta->windowIcon());
    filha->setGeometry(60, 20, 560, 600);
    filha->show();
}

void Mesa::MostraAjuda(QWidget *dono)
{
    auto *janela = new QDialog(dono);
    janela->setObjectName("Ajuda");
    janela->setAttribute(Qt::WA_DeleteOnClose);
    janela->setWindowTitle("Manual do operador");
    janela->resize(860, 700);
    auto *texto = new QTextBrowser(janela);
    texto->setSearchPaths({":/docs"}); // of the pictures
    QFile manual(":/docs/manual.md");
    texto->setMarkdown(manual.open(QIODevice::ReadOnly) ? QString::fromUtf8(manual.readAll())
                                                        : QString("O manual não foi encontrado."));
    auto *fechar = new QPushButton("&Fechar", janela);
    connect(fechar, &QPushButton::clicked, janela, &QWidget::close);
    auto *leiaute = new QVBoxLayout(janela);
    leiaute->addWidget(texto, 1);
    leiaute->addWidget(fechar, 0, Qt::AlignRight);
    janela->show();
}

void Mesa::MostraSobre()
{
    QMessageBox caixa(
        QMessageBox::NoIcon, "Sobre",
        "<h3>Registro de Equipamentos</h3>"
        "<p>Cadastro dos equipamentos que detectam infrações de trânsito, de seus sensores, das aferições "
        "oficiais com os certificados, e dos limites que valem para eles.</p>"
        "<p>Distribuído sob a licença MIT.</p>",
        QMessageBox::NoButton, this);
    caixa.setIconPixmap(windowIcon().pixmap(64, 64));
    caixa.addButton("&OK", QMessageBox::AcceptRole);
    caixa.exec();
}

void Mesa::GuardaLugar()
{
    m_Host->FormMDI->Esquerda = x() * TwipsPorPixel;
    m_Host->FormMDI->Topo = y() * TwipsPorPixel;
    m_Host->FormMDI->Largura = width() * TwipsPorPixel;
    m_Host->FormMDI->Altura = height() * TwipsPorPixel;
    m_Host->FormMDI->LarguraArea = m_Area->width() * TwipsPorPixel;
    m_Host->FormMDI->AlturaArea = m_Area->height() * TwipsPorPixel;
}

void Mesa::closeEvent(QCloseEvent *evento)
{
    Sai();
    evento->accept();
}

void Mesa::moveEvent(QMoveEvent *evento)
{
    QMainWindow::moveEvent(evento);
    GuardaLugar();
}

void Mesa::resizeEvent(QResizeEvent *evento)
{
    QMainWindow::resizeEvent(evento);
    GuardaLugar();
}

} // namespace mesa
