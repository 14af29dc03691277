#include "desk/windows/Mesa.h"

#include "desk/host/AbreNaLista.h"
#include "desk/host/Administracao.h"
#include "desk/host/CompletaEntrada.h"
#include "desk/host/FichaDasPreferencias.h"
#include "desk/host/Lembrancas.h"
#include "desk/host/MinhaSenha.h"
#include "desk/host/MotivoDaCorrecao.h"
#include "desk/host/Sobre.h"
#include "desk/host/Titulo.h"
#include "desk/windows/ConsultaAutuacao.h"
#include "desk/windows/Cores.h"
#include "desk/windows/Cortina.h"
#include "desk/windows/Dialogos.h"
#include "desk/windows/Entrada.h"
#include "desk/windows/EscolhaDeArquivo.h"
#include "desk/windows/FichaQt.h"
#include "desk/windows/Icones.h"
#include "desk/windows/Impressora.h"
#include "desk/windows/Involucro.h"
#include "desk/windows/JanelaAdministracao.h"
#include "desk/windows/JanelaDaCabeca.h"
#include "desk/windows/JanelaDePrazos.h"
#include "desk/windows/JanelaDeRelato.h"
#include "desk/windows/JanelaDeTrabalho.h"
#include "desk/windows/JanelaDeTras.h"
#include "desk/windows/JanelaDoManual.h"
#include "desk/windows/JanelaSobre.h"
#include "desk/windows/LugarDasJanelas.h"
#include "desk/windows/TelaDeAndamento.h"
#include "desk/windows/TelaInicial.h"
#include "desk/windows/TextoQueCede.h"
#include "host/Conversoes.h"
#include "host/Texto.h"
#include "services/Calendario.h"
#include "services/Permissoes.h"
#include "services/RegrasDoTipo.h"
#include "shell/Especifica.h"
#include "shell/ModGeral.h"
#include "tela/Twips.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDate>
#include <QDialog>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QThread>
#include <QTimer>
#include <QToolBar>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace mesa {

namespace {

constexpr int MinutoEmMilissegundos = 60000;
constexpr int EsperaDaTroca = 50; // milliseconds
constexpr std::int32_t MinutosDeDescanso = 5;
constexpr const char *AcaoDoPainel = "painelDePrazos";
constexpr int EntreOlhares = 5000; // of whether somebody is there, milliseconds

} // namespace

Mesa::Mesa(Ref<Servicos> servicos, std::filesystem::path diretorio, std::function<Data()> agora,
           Preferencias &preferencias)
    : m_Servicos(std::move(servicos)),
      m_Diretorio(diretorio),
      m_Preferencias(preferencias),
      m_Ociosidade(preferencias.MinutosAteTravar(), agora),
      m_Descanso(MinutosDeDescanso, agora),
      m_Agora(agora),
      m_Area(new AreaDeTrabalho(this)),
      m_Camada(Novo<CamadaQt>(m_Area)),
      m_Janelas(Novo<Janelas>(m_Camada)),
      m_Host(Novo<HostMesa>(m_Janelas, std::move(diretorio), std::move(agora)))
{
    setObjectName("Mesa");
    setWindowTitle(Q(TituloDoRegistro(*m_Servicos)));
    setWindowIcon(Icone("equipamentos"));
    LugarDasJanelas::DaAplicacao(); // before any window is shown
    resize(1280, 820);
    SeguePaleta(*m_Area, [this] { m_Area->setBackground(CorDe(Cor::Area)); });
    setCentralWidget(m_Area);
    m_Area->DefineFundo(FazInicio());

    m_Janelas->Descarrega = [this](const Ref<IForm> &form) { m_Host->Plataforma()->Descarrega(form); };
    m_Janelas->FazInvolucro = [] { return Novo<Involucro>(); };
    m_Janelas->MostraFalha = [] { gSubMostraErro("Mesa"); };
    m_Janelas->FechouVisor = [this] { LimpaCertificados(); };
    m_Host->Acompanha = [this](const std::string &frase, bool cancelavel,
                               const std::function<void(const Segue &)> &trabalho) {
        FazNaFrente(Q(frase), cancelavel, this, trabalho);
    };
    m_Camada->Logradouros = m_Host->Logradouros;
    m_Camada->Clientes = [this] {
        std::vector<ClienteOferecido> oferecidos;
        for (ClienteCadastrado &cliente : m_Host->Servico()->Clientes()) {
            oferecidos.push_back({std::move(cliente.Nome), std::move(cliente.Setores)});
        }
        return oferecidos;
    };
    m_Camada->Agora = m_Agora;
    m_Camada->Ajuda = [this](const std::string &topico, QWidget *dono) { MostraAjuda(topico, dono); };

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
    m_Vigia = new QTimer(this);
    m_Vigia->setInterval(EntreOlhares);
    connect(m_Vigia, &QTimer::timeout, this, [this] {
        if (!TelaDeAndamento::EmCurso()) { // the next tick comes when it is done
            ConfereOciosidade();
            NaBorda([this] { CuidaDoDia(); });
        }
    });
    qApp->installEventFilter(this);
    new JanelaDeTras(this);
}

Mesa::~Mesa()
{
    qApp->removeEventFilter(this);
    ParaCuidado();
    DefineLembrancas(nullptr);
    m_Janelas->TiraTodas(); // what they still have to say would come after the module's end
    m_Geral->Encerra();
    m_Geral = nullptr;
    DescarregaModulo(); // its shared services are this host's
    InstalaHost(nullptr);
}

QAction *Mesa::AdicionaFerramenta(QMenu *menu, const Ferramenta &ferramenta)
{
    QAction *acao = menu->addAction(Icone("equipamentos"), Q(ferramenta.NoMenu));
    acao->setObjectName(Q(ferramenta.Nome));
    acao->setShortcut(QKeySequence(Q(ferramenta.Atalho)));
    connect(acao, &QAction::triggered, this, [this, &ferramenta] { AbreFerramenta(ferramenta); });
    m_Ferramentas[ferramenta.Nome] = acao;
    return acao;
}

void Mesa::AbreFerramenta(const Ferramenta &ferramenta)
{
    m_Janelas->Distingue(ferramenta.Qual, [&] { m_Geral->ClickMenu(ferramenta.Nome); });
}

void Mesa::MontaMenus()
{
    QMenu *equipamentos = menuBar()->addMenu("&Equipamentos");
    for (const Ferramenta &ferramenta : Ferramentas()) {
        AdicionaFerramenta(equipamentos, ferramenta);
    }
    equipamentos->addSeparator();
    m_Consulta = equipamentos->addAction(Icone("consulta"), "&Consulta para autuação...");
    m_Consulta->setObjectName("consultaAutuacao");
    m_Consulta->setShortcut(QKeySequence("Ctrl+3"));
    connect(m_Consulta, &QAction::triggered, this, [this] { NaBorda([this] { AbreConsulta(); }); });
    QAction *painel = equipamentos->addAction(Icone("prazo30"), "Pa&inel de prazos");
    painel->setObjectName(AcaoDoPainel);
    painel->setShortcut(QKeySequence("Ctrl+4"));
    connect(painel, &QAction::triggered, this, [this] {
        MostraInicio();
        for (TelaInicial *inicio : m_Area->findChildren<TelaInicial *>("Inicio")) {
            if (inicio->isVisible()) {
                inicio->VaiAoPainel();
            }
        }
    });
    equipamentos->addSeparator();
    m_Renovar = equipamentos->addAction(Icone("atualizar"), "");
    m_Renovar->setObjectName("renovarReplica");
    m_Renovar->setShortcut(QKeySequence("Ctrl+R"));
    m_Renovar->setVisible(false);
    connect(m_Renovar, &QAction::triggered, this, [this] { NaBorda([this] { AtualizaReplica(); }); });
    MontaMenuUsuario(equipamentos);
    QAction *encerrar = equipamentos->addAction(Icone("fechar"), "&Encerrar");
    encerrar->setShortcut(QKeySequence("Ctrl+Q"));
    connect(encerrar, &QAction::triggered, this, &QWidget::close);

    MontaMenuRegistro();
    m_MenuAdministracao = menuBar()->addMenu("Ad&ministração");
    m_MenuAdministracao->menuAction()->setObjectName("administracao");
    MontaMenuJanela();

    QMenu *ajuda = menuBar()->addMenu("Aj&uda");
    QAction *manual = ajuda->addAction(Icone("ajuda"), "&Manual do operador");
    manual->setShortcut(QKeySequence("F1"));
    connect(manual, &QAction::triggered, this, [this] { MostraAjudaDaFrente(); });
    QAction *sobre = ajuda->addAction("&Sobre...");
    sobre->setObjectName("sobre");
    connect(sobre, &QAction::triggered, this, [this] { NaBorda([this] { MostraSobre(); }); });

    // A key that is held down goes on from window to window, but opens or closes one only.
    for (QAction *acao : findChildren<QAction *>()) {
        acao->setAutoRepeat(acao->objectName() == "proximaJanela" || acao->objectName() == "janelaAnterior");
    }

    auto *barra = addToolBar("Ferramentas");
    barra->setObjectName("ferramentas");
    barra->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    barra->setMovable(false);
    for (const Ferramenta &ferramenta : Ferramentas()) {
        barra->addAction(m_Ferramentas[ferramenta.Nome]);
    }
    barra->addAction(m_Consulta);
}

void Mesa::MontaMenuUsuario(QMenu *menu)
{
    m_MinhaSenha = menu->addAction("Trocar minha &senha...");
    m_MinhaSenha->setObjectName("minhaSenha");
    connect(m_MinhaSenha, &QAction::triggered, this,
            [this] { NaBorda([this] { TrocaMinhaSenha(m_Host->Servico(), false); }); });
    m_Travar = menu->addAction("Tra&var");
    m_Travar->setObjectName("travar");
    m_Travar->setShortcut(QKeySequence("Ctrl+L"));
    connect(m_Travar, &QAction::triggered, this, [this] { Trava(); });
    QAction *preferencias = menu->addAction("&Preferências...");
    preferencias->setObjectName("preferencias");
    connect(preferencias, &QAction::triggered, this, [this] { MostraPreferencias(); });
    menu->addSeparator();
    m_Sair = menu->addAction(Icone("sair"), "&Trocar de usuário...");
    m_Sair->setObjectName("trocarUsuario");
    connect(m_Sair, &QAction::triggered, this, [this] { TrocaDeUsuario(); });
}

void Mesa::MontaMenuRegistro()
{
    m_MenuRegistro = menuBar()->addMenu("Re&gistro");
    m_MenuRegistro->menuAction()->setObjectName("menuRegistro");
    m_MenuRegistro->setToolTipsVisible(true); // why something is not done from here
    m_Conferir = m_MenuRegistro->addAction("&Conferir registro...");
    m_Conferir->setObjectName("conferirRegistro");
    connect(m_Conferir, &QAction::triggered, this, [this] { NaBorda([this] { ConfereRegistro(); }); });
    m_Copiar = m_MenuRegistro->addAction("&Fazer cópia...");
    m_Copiar->setObjectName("fazerCopia");
    connect(m_Copiar, &QAction::triggered, this, [this] { NaBorda([this] { CopiaRegistro(); }); });
    m_Restaurar = m_MenuRegistro->addAction("&Restaurar...");
    m_Restaurar->setObjectName("restaurar");
    connect(m_Restaurar, &QAction::triggered, this, [this] { NaBorda([this] { RestauraRegistro(); }); });
    m_Exportar = m_MenuRegistro->addAction("&Exportar cabeça...");
    m_Exportar->setObjectName("exportarCabeca");
    connect(m_Exportar, &QAction::triggered, this, [this] { NaBorda([this] { ExportaCabeca(); }); });
}

void Mesa::DefineAtos(AtosDoRegistro atos)
{
    m_Atos = std::move(atos);
    HabilitaFerramentas();
}

void Mesa::MontaMenuJanela()
{
    m_MenuJanela = menuBar()->addMenu("&Janela");
    m_Inicio = m_MenuJanela->addAction("&Início", QKeySequence("Ctrl+0"), this, [this] { MostraInicio(); });
    m_Inicio->setObjectName("inicio");
    m_MenuJanela->addSeparator();
    QAction *proxima = m_MenuJanela->addAction("&Próxima", m_Area, &QMdiArea::activateNextSubWindow);
    proxima->setObjectName("proximaJanela");
    proxima->setShortcuts({QKeySequence("Ctrl+F6"), QKeySequence("Ctrl+Tab")});
    QAction *anterior = m_MenuJanela->addAction("&Anterior", m_Area, &QMdiArea::activatePreviousSubWindow);
    anterior->setObjectName("janelaAnterior");
    anterior->setShortcuts({QKeySequence("Ctrl+Shift+F6"), QKeySequence("Ctrl+Shift+Tab")});
    m_MenuJanela->addSeparator();
    QAction *fechar = m_MenuJanela->addAction("&Fechar", m_Area, &QMdiArea::closeActiveSubWindow);
    fechar->setObjectName("fecharJanela");
    fechar->setShortcuts({QKeySequence("Ctrl+F4"), QKeySequence("Ctrl+W")});
    // A child window has keys of its own, which differ from desktop to desktop: with two for one key there is none.
    connect(m_Area, &QMdiArea::subWindowActivated, this, [](QMdiSubWindow *filha) {
        if (filha != nullptr && filha->systemMenu() != nullptr) {
            for (QAction *acao : filha->systemMenu()->actions()) {
                acao->setShortcuts(QList<QKeySequence>());
            }
        }
    });
    m_MenuJanela->addAction("Fechar &todas", m_Area, &QMdiArea::closeAllSubWindows);
    m_MenuJanela->addSeparator();
    const qsizetype fixas = m_MenuJanela->actions().size();
    connect(m_MenuJanela, &QMenu::aboutToShow, this, [this, fixas] {
        for (QAction *antiga : m_MenuJanela->actions().mid(fixas)) {
            delete antiga;
        }
        int numero = 0;
        for (QMdiSubWindow *filha : m_Area->subWindowList()) {
            QAction *acao =
                m_MenuJanela->addAction(QString("&%1 %2").arg(++numero).arg(filha->windowTitle().replace("&", "&&")));
            acao->setCheckable(true);
            acao->setChecked(filha == m_Area->activeSubWindow());
            connect(acao, &QAction::triggered, m_Area, [this, filha] { m_Area->setActiveSubWindow(filha); });
        }
    });
}

void Mesa::MontaEstado()
{
    for (QLabel **rotulo : {&m_Servidor, &m_Usuario, &m_Cliente, &m_Conferencia, &m_Replica}) {
        *rotulo = new TextoQueCede(this);
    }
    m_Forcar = new QPushButton(this);
    m_Servidor->setObjectName("estadoServidor");
    m_Servidor->hide();
    m_Usuario->setObjectName("estadoUsuario");
    m_Cliente->setObjectName("estadoCliente");
    m_Conferencia->setObjectName("estadoConferencia");
    m_Replica->setObjectName("estadoReplica");
    m_Forcar->setObjectName("estadoForcar");
    m_Forcar->setFlat(true);
    m_Forcar->hide();
    statusBar()->setContentsMargins(8, 0, 8, 0);
    if (!m_Servicos->SomenteLeitura().empty()) {
        QLabel *consulta = FazTexto("estadoSomenteConsulta", "Somente consulta", this);
        consulta->setToolTip(Q(m_Servicos->SomenteLeitura()));
        statusBar()->addWidget(consulta);
    }
    statusBar()->addWidget(m_Servidor);
    statusBar()->addWidget(m_Usuario);
    statusBar()->addWidget(m_Cliente);
    statusBar()->addPermanentWidget(m_Conferencia);
    statusBar()->addPermanentWidget(m_Replica);
    statusBar()->addPermanentWidget(m_Forcar);
    connect(m_Forcar, &QPushButton::clicked, this, [this] { NaBorda([this] { AtualizaReplica(); }); });
    m_Relogio = new QTimer(this);
    m_Relogio->setInterval(MinutoEmMilissegundos);
    connect(m_Relogio, &QTimer::timeout, this, [this] { NaBorda([this] { MostraReplica(); }); });
}

void Mesa::DefineLugar(const LugarDoTrabalho &lugar, ConexaoQt &conexao,
                       std::function<void(const LugarDoTrabalho &)> muda)
{
    m_Lugar = lugar;
    m_Conexao = &conexao;
    m_MudaDeLugar = std::move(muda);
    m_AoMudarAConexao = conexao.Mudou().liga([this] { MostraServidor(); });
    if (m_Lugar.Servidor) {
        setWindowTitle(Q(TituloDoRegistro(*m_Servicos) + " - " + OndeFica(m_Lugar)));
    }
    MostraServidor();
}

void Mesa::MostraServidor()
{
    m_Servidor->setVisible(m_Lugar.Servidor.has_value());
    if (m_Lugar.Servidor) {
        m_Servidor->setText("Servidor: " + Q(m_Lugar.Servidor->Texto()) +
                            (m_Conexao->Ligada() ? "" : " (sem conexão)"));
    }
}

std::string Mesa::QualRegistro() const
{
    return OndeFica(m_Lugar) + (m_Lugar.Servidor ? m_Conexao->Ligada() ? ", com conexão" : ", sem conexão" : "") +
           ", identificador " + m_Servicos->Identificador();
}

bool Mesa::PedeEntrada()
{
    bool entrou = false;
    NaBorda([&] { entrou = PedeAteQueEntre(); });
    return entrou;
}

bool Mesa::PedeAteQueEntre()
{
    for (;;) {
        Entrada entrada(m_Servicos, m_Preferencias, std::nullopt, this);
        if (m_MudaDeLugar) {
            entrada.OfereceLugar(m_Lugar);
        }
        m_Janelas->MostraEEspera(Novo<DialogoQt>(&entrada));
        if (entrada.OutroLugar()) {
            m_MudaDeLugar(*entrada.OutroLugar());
        }
        if (entrada.result() != QDialog::Accepted) {
            return false;
        }
        const Ref<SessaoServico> sessao = entrada.Sessao();
        if (CompletaEntrada(
                *sessao, [this](const std::string &aviso) { AvisaEmCaixa(Q(aviso), this); },
                [&] { return TrocaMinhaSenha(sessao, true); })) {
            Entra(sessao);
            return true;
        }
    }
}

void Mesa::TrocaDeUsuario()
{
    Sai();
    if (!PedeEntrada()) {
        close();
    }
}

void Mesa::Entra(const Ref<SessaoServico> &sessao)
{
    sessao->PerguntaMotivo([this](const std::string &oQue) { return PedeMotivo(oQue); });
    m_Host->Entra(sessao);
    DefineLembrancas(Novo<Lembrancas>(m_Preferencias, m_Servicos->Identificador(), sessao->Operador().Usuario));
    LugarDasJanelas::DaAplicacao().Restaura(*this);
    m_Host->ViuEquipamento = [this](std::int32_t nroIntEquip) {
        EquipamentosRecentes(m_Camada->Lembrancas).Viu(nroIntEquip, m_Agora());
    };
    m_Camada->Usuario = sessao->Operador().Nome;
    m_Geral->Logon(m_Host->objMTM(), m_Host->objSCA(), "");
    LimpaCertificados();
    HabilitaFerramentas();
    const Operador &operador = sessao->Operador();
    m_Usuario->setText("Usuário: " + Q(operador.Nome));
    m_Cliente->setText("Cliente: " + Q(operador.Cliente) +
                       (operador.Setor.empty() ? QString() : "   Setor: " + Q(operador.Setor)));
    MostraReplica();
    MostraConferencia();
    m_Relogio->start();
    m_Ociosidade.Usa();
    m_Vigia->start();
    m_Area->MostraFundo(true);
    m_Nivel = std::max(1, QThread::currentThread()->loopLevel());
}

void Mesa::DefineLembrancas(const Ref<ILembrancas> &lembrancas)
{
    m_Camada->Lembrancas = lembrancas;
    LugarDasJanelas::DaAplicacao().DefineLembrancas(lembrancas);
    DefineLembrancasDeArquivos(lembrancas);
}

void Mesa::Sai()
{
    m_Relogio->stop();
    m_Vigia->stop();
    ParaCuidado();
    for (QMdiSubWindow *filha : m_Area->subWindowList()) {
        if (const QString nome = filha->widget()->objectName();
            nome == "ConsultaAutuacao" || nome == "Inicio" || nome == "JanelaDePrazos") {
            filha->close();
        }
    }
    for (QDialog *visor : findChildren<QDialog *>("VisorPDF")) { // of what only who leaves may see
        visor->close();
    }
    LimpaCertificados();
    NaBorda([this] { m_Geral->Logoff(); });
    m_Area->MostraFundo(false);
    m_Host->Sai();
    m_Host->ViuEquipamento = nullptr;
    LugarDasJanelas::DaAplicacao().Guarda(*this);
    DefineLembrancas(nullptr);
    HabilitaFerramentas();
    m_Usuario->setText("Ninguém entrou");
    m_Cliente->clear();
    m_Conferencia->clear();
    m_Replica->clear();
    m_Forcar->hide();
    m_Renovar->setVisible(false);
}

QWidget *Mesa::FazInicio()
{
    const auto sessao = [this] { return m_Host->Servico(); };
    const auto borda = [this](const std::function<void()> &acao) { NaBorda(acao); };
    const auto quem = [this] { return QuemUsa{m_Camada->Usuario, m_Camada->Lembrancas, m_Agora}; };
    const auto abre = [this](const EquipamentoRecente &qual) { AbreRecente(qual); };
    const auto abreLista = [this, sessao, borda, quem, abre](const RecorteDePrazos &recorte) {
        auto *janela = new JanelaDePrazos(ListaDePrazos(sessao, recorte), abre, borda, quem(), nullptr);
        QMdiSubWindow *filha = m_Area->addSubWindow(janela);
        filha->setAttribute(Qt::WA_DeleteOnClose);
        filha->setWindowIcon(janela->windowIcon());
        filha->show();
        janela->setFocus();
        janela->Carrega();
    };
    return new TelaInicial({[this] { return LeInicio(); },
                            [this](const std::string &acao) { FazAcaoInicial(acao); },
                            abre,
                            {sessao, abreLista, borda, quem}},
                           nullptr);
}

std::optional<PaginaInicial> Mesa::LeInicio()
{
    std::optional<PaginaInicial> pagina;
    NaBorda([&] {
        pagina.emplace(*m_Host->Servico(),
                       EquipamentosRecentes(m_Camada->Lembrancas).Todos(*m_Host->BancoLocal->Abre()),
                       m_Lugar.Servidor ? OndeFica(m_Lugar) : "");
    });
    return pagina;
}

// The page stands where no window does, and on a tab of its own when some do.
void Mesa::MostraInicio()
{
    if (m_Area->NoFundo()) {
        m_Area->MostraFundo(true);
        return;
    }
    for (QMdiSubWindow *filha : m_Area->subWindowList()) {
        if (filha->widget() != nullptr && filha->widget()->objectName() == "Inicio") {
            m_Area->setActiveSubWindow(filha);
            return;
        }
    }
    QMdiSubWindow *filha = m_Area->addSubWindow(FazInicio());
    filha->setAttribute(Qt::WA_DeleteOnClose);
    filha->show();
    filha->widget()->setFocus();
}

void Mesa::FazAcaoInicial(const std::string &acao)
{
    if (acao == "administracao") {
        NaBorda([this] { AbreAdministracao(0); });
    } else if (auto *doMenu = findChild<QAction *>(Q(acao))) {
        doMenu->trigger();
    }
}

void Mesa::AbreRecente(EquipamentoRecente qual)
{
    bool ha = false;
    NaBorda([&] {
        std::string recusa;
        ha = Renova(*m_Host->Servico(), qual, recusa);
        if (!ha) {
            m_Janelas->Avisa(recusa, TituloDosAvisos);
        }
    });
    const Ref<IPlataforma> plataforma = m_Host->Plataforma();
    const std::int32_t antes = plataforma->NroForms();
    if (ha) {
        const bool comFoto = RegrasDe(qual.TipoEquip).TemLayout;
        AbreFerramenta(comFoto ? Ferramentas().front() : Ferramentas().back());
    }
    if (plataforma->NroForms() == antes) { // and why has been told
        return;
    }
    NaBorda([&] {
        const Ref<IForm> lista = plataforma->FormAberto(antes);
        for (QMdiSubWindow *filha : m_Area->subWindowList()) {
            if (JanelaForm *janela = FormDa(*filha); janela != nullptr && janela->Form() == lista) {
                janela->PoeCriterios([&] {
                    if (!AbreNaLista(lista, qual)) {
                        m_Janelas->Avisa("O equipamento " + qual.Codigo + " não foi encontrado.", TituloDosAvisos);
                    }
                });
                return;
            }
        }
    });
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
    findChild<QAction *>(AcaoDoPainel)->setEnabled(alguma);
    const bool dentro = m_Host->objSCA() && m_Host->objSCA()->Logado();
    const auto tem = [&](const std::string &acao) {
        return dentro && m_Host->objSCA()->PossuiPerm2(Permissoes::Sistema, Permissoes::ObjetoAdministracao, acao);
    };
    const bool grava = m_Servicos->SomenteLeitura().empty();
    m_MinhaSenha->setEnabled(dentro && grava);
    m_Travar->setEnabled(dentro);
    m_Inicio->setEnabled(dentro);
    m_MenuAdministracao->clear();
    if (dentro) {
        int numero = 0;
        for (const auto &pagina : Administracao(m_Host->Servico()).Paginas()) {
            const QString titulo = Q(std::string(pagina->Titulo())) + "...";
            connect(m_MenuAdministracao->addAction(titulo), &QAction::triggered, this,
                    [this, numero] { NaBorda([&] { AbreAdministracao(numero); }); });
            ++numero;
        }
    }
    m_MenuAdministracao->menuAction()->setVisible(!m_MenuAdministracao->isEmpty());
    const auto oferece = [&](QAction *acao, const QString &texto, bool ha) {
        acao->setVisible(ha || !m_Atos.SoLa.empty());
        acao->setEnabled(ha);
        acao->setText(texto + (ha || m_Atos.SoLa.empty() ? "" : " (na máquina do servidor)"));
        acao->setToolTip(ha ? "" : Q(m_Atos.SoLa));
    };
    oferece(m_Conferir, "&Conferir registro...", static_cast<bool>(m_Atos.Confere));
    oferece(m_Copiar, "&Fazer cópia...", static_cast<bool>(m_Atos.Copia));
    oferece(m_Restaurar, "&Restaurar...", static_cast<bool>(m_Atos.Restaura));
    oferece(m_Exportar, "&Exportar cabeça...", static_cast<bool>(m_Atos.Cabeca));
    m_Restaurar->setEnabled(m_Atos.Restaura && grava);
    m_MenuRegistro->menuAction()->setVisible(tem(Permissoes::Copias) &&
                                             std::ranges::any_of(m_MenuRegistro->actions(), &QAction::isVisible));
}

bool Mesa::MostraFicha(Ficha &ficha)
{
    FichaQt janela(
        ficha, [this](const std::function<void()> &acao) { NaBorda(acao); }, this);
    m_Janelas->MostraEEspera(Novo<DialogoQt>(&janela));
    return janela.result() == QDialog::Accepted;
}

bool Mesa::TrocaMinhaSenha(const Ref<SessaoServico> &sessao, bool obrigada)
{
    Ficha ficha = FichaDaMinhaSenha(sessao, obrigada);
    return MostraFicha(ficha);
}

std::optional<std::string> Mesa::PedeMotivo(const std::string &pergunta)
{
    std::string motivo;
    Ficha ficha = FichaDoMotivo(pergunta, motivo);
    return MostraFicha(ficha) ? std::optional(motivo) : std::nullopt;
}

void Mesa::MostraPreferencias()
{
    std::function<void()> esquece;
    if (m_Camada->Lembrancas) {
        esquece = [this] { m_Camada->Lembrancas->Esquece(""); };
    }
    Ficha ficha = FichaDasPreferencias(m_Preferencias, ImpressorasInstaladas(), esquece);
    if (MostraFicha(ficha)) {
        m_Ociosidade.DefineMinutos(m_Preferencias.MinutosAteTravar());
    }
}

void Mesa::AbreAdministracao(int pagina)
{
    JanelaAdministracao janela(
        Administracao(m_Host->Servico()), pagina, [this](const std::function<void()> &acao) { NaBorda(acao); },
        {m_Camada->Usuario, m_Camada->Lembrancas, m_Agora}, this);
    m_Janelas->MostraEEspera(Novo<DialogoQt>(&janela));
}

void Mesa::ConfereRegistro()
{
    JanelaDeTrabalho janela("Conferir registro", "O registro inteiro está sendo conferido.", m_Atos.Confere(), this);
    m_Janelas->MostraEEspera(Novo<DialogoQt>(&janela));
    if (const auto &conferido = janela.Resultado()) {
        LembraConferencia(*conferido);
    }
}

void Mesa::LembraConferencia(const ResultadoDoAto &conferido)
{
    const std::string identificador = m_Servicos->Identificador();
    m_Preferencias.LembraConferencia(
        identificador,
        ResumoDaConferencia(conferido, Format(m_Agora(), "dd/mm/yyyy") + " às " + Format(m_Agora(), "hh:nn")));
    if (conferido.Inteiro) {
        m_Preferencias.LembraDiaConferido(identificador, DiaCivil(m_Agora()));
    }
    MostraConferencia();
}

void Mesa::CuidaDoDia()
{
    if (!m_Cuidados || !m_Vigia->isActive() || m_Cuidando.joinable()) {
        return;
    }
    ContaAchados();
    if (auto trabalho = m_Cuidados->Proximo(m_Travada || m_Descanso.Passou())) {
        m_Desistiu = false;
        m_Qual = trabalho->Qual;
        m_Cuidando = std::thread([this, trabalho = std::move(*trabalho)] {
            const ResultadoDoAto resultado = trabalho.Faz([this](double, const std::string &) { return !m_Desistiu; });
            QMetaObject::invokeMethod(
                m_Conferencia,
                [this, qual = trabalho.Qual, resultado] { NaBorda([&] { ConcluiCuidado(qual, resultado); }); },
                Qt::QueuedConnection);
        });
    }
}

void Mesa::ConcluiCuidado(Cuidado qual, const ResultadoDoAto &resultado)
{
    m_Cuidando.join();
    if (qual == Cuidado::Conferencia) {
        LembraConferencia(resultado);
    }
    if (!resultado.Achados.empty()) {
        m_PorContar.push_back(resultado);
    }
    ContaAchados();
}

// Not over a desk that is locked: whoever unlocks it is told.
void Mesa::ContaAchados()
{
    if (m_Travada || m_PorContar.empty() || TelaDeAndamento::EmCurso()) {
        return;
    }
    const ResultadoDoAto achado = m_PorContar.front();
    m_PorContar.erase(m_PorContar.begin());
    QStringList linhas;
    for (const std::string &um : achado.Achados) {
        linhas << Q(um);
    }
    JanelaDeRelato janela("Cuidados com o registro", Q(achado.Frase), linhas, this);
    m_Janelas->MostraEEspera(Novo<DialogoQt>(&janela));
}

void Mesa::ParaCuidado()
{
    m_PorContar.clear();
    if (m_Cuidando.joinable()) {
        m_Desistiu = true;
        m_Cuidando.join();
        QCoreApplication::removePostedEvents(m_Conferencia, QEvent::MetaCall); // what came of it is not told any more
        m_Cuidados->Desiste(m_Qual);
    }
}

void Mesa::MostraConferencia()
{
    m_Conferencia->setText(Q(m_Preferencias.UltimaConferencia(m_Servicos->Identificador())));
}

void Mesa::CopiaRegistro()
{
    const QString pasta = EscolhePasta("Diretório em que fica a cópia", "copias", this);
    if (!pasta.isEmpty()) {
        JanelaDeTrabalho janela(
            "Fazer cópia", "A cópia está sendo feita e conferida.",
            [this, onde = S(pasta)](const Segue &segue) { return m_Atos.Copia(onde, segue); }, this);
        m_Janelas->MostraEEspera(Novo<DialogoQt>(&janela));
    }
}

void Mesa::RestauraRegistro()
{
    EscolhaDeArquivo escolha;
    escolha.Titulo = "Restaurar uma cópia do registro";
    escolha.Filtros = "Cópias do registro (*.db);;Todos os arquivos (*)";
    escolha.Uso = "copias";
    const QString copia = EscolheParaAbrir(escolha, this);
    if (!copia.isEmpty() &&
        PerguntaSimNao("A mesa será fechada, e o que não foi salvo se perde. O registro voltará a ser o que era "
                       "quando a cópia foi feita; o de agora fica guardado ao lado. Restaurar a cópia " +
                           copia + "?",
                       this)) {
        m_Atos.Restaura(S(copia));
        close();
    }
}

void Mesa::ExportaCabeca()
{
    JanelaDaCabeca janela(m_Atos.Cabeca(), this);
    m_Janelas->MostraEEspera(Novo<DialogoQt>(&janela));
}

void Mesa::ConfereOciosidade()
{
    if (!m_Travada && m_Vigia->isActive() && m_Ociosidade.Passou()) {
        Trava();
    }
}

void Mesa::Trava()
{
    m_Travada = true;
    QPointer<QWidget> ativa = QApplication::activeWindow();
    const auto cortinas = Cortina::SobreTodas();
    Entrada trava(m_Servicos, m_Preferencias, m_Host->Servico()->Operador(), this);
    m_Janelas->MostraEEspera(Novo<DialogoQt>(&trava));
    const auto abre = [cortinas] {
        for (const QPointer<Cortina> &cortina : cortinas) {
            if (!cortina.isNull()) {
                cortina->Abre();
            }
        }
    };
    if (trava.PediuTroca()) {
        TrocaQuandoPuder(abre);
        return;
    }
    abre();
    m_Travada = false;
    m_Ociosidade.Usa();
    if (!ativa.isNull()) {
        ativa->activateWindow();
    }
}

void Mesa::FechaAsDaFrente()
{
    hide(); // nobody sees them go
    while (QWidget *modal = QApplication::activeModalWidget()) {
        if (auto *dialogo = qobject_cast<QDialog *>(modal)) {
            dialogo->reject();
        } else if (auto *janela = dynamic_cast<JanelaForm *>(modal)) {
            m_Host->Plataforma()->Descarrega(Ref<IForm>(janela->Form()));
        }
        if (QApplication::activeModalWidget() == modal) {
            break; // it does not go
        }
    }
}

// What does not go at once, as work that is being given up, stays covered until it does.
void Mesa::TrocaQuandoPuder(const std::function<void()> &abreCortinas)
{
    NaBorda([this] { FechaAsDaFrente(); });
    if (QThread::currentThread()->loopLevel() > m_Nivel) {
        QTimer::singleShot(EsperaDaTroca, this, [this, abreCortinas] { TrocaQuandoPuder(abreCortinas); });
        return;
    }
    abreCortinas();
    m_Travada = false;
    show();
    TrocaDeUsuario();
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
    m_Host->BancoLocal->AtualizaReplica(*m_Host->Servico(), /*cancelavel=*/true);
    MostraReplica();
}

void Mesa::AbreConsulta()
{
    const PartesData hoje = m_Agora().Partes();
    auto *consulta = new ConsultaAutuacao(
        QDate(hoje.Ano, hoje.Mes, hoje.Dia), [this] { return m_Geral->CEspecifica()->CreateCVorEquip(); },
        [this](const std::function<void()> &acao) { NaBorda(acao); }, nullptr);
    QMdiSubWindow *filha = m_Area->addSubWindow(consulta);
    filha->setAttribute(Qt::WA_DeleteOnClose);
    filha->setWindowIcon(consulta->windowIcon());
    filha->show();
}

void Mesa::MostraAjuda(const std::string &topico, QWidget *dono)
{
    JanelaDoManual::Mostra(topico, m_Camada->Lembrancas, dono);
}

// Of the window that is in front in the main window; with none, the manual opens where it was read last.
void Mesa::MostraAjudaDaFrente()
{
    QMdiSubWindow *filha = m_Area->activeSubWindow();
    if (filha == nullptr) {
        MostraAjuda("", this);
    } else if (const JanelaForm *form = FormDa(*filha)) {
        form->PedeAjuda();
    } else {
        MostraAjuda(TopicoDaJanela(*filha->widget()), this);
    }
}

void Mesa::MostraSobre()
{
    JanelaSobre janela(Q(TextoDoSobre(m_Diretorio, QualRegistro())), this);
    m_Janelas->MostraEEspera(Novo<DialogoQt>(&janela));
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

bool Mesa::eventFilter(QObject *objeto, QEvent *evento)
{
    switch (evento->type()) {
    case QEvent::KeyPress:
    case QEvent::MouseButtonPress:
    case QEvent::MouseMove:
    case QEvent::TouchBegin:
    case QEvent::Wheel:
        m_Ociosidade.Usa();
        m_Descanso.Usa();
        break;
    default:
        break;
    }
    return QMainWindow::eventFilter(objeto, evento);
}

void Mesa::resizeEvent(QResizeEvent *evento)
{
    QMainWindow::resizeEvent(evento);
    GuardaLugar();
}

} // namespace mesa
