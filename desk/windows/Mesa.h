#pragma once

#include "desk/host/AtosDoRegistro.h"
#include "desk/host/CuidadosDoDia.h"
#include "desk/host/Dossies.h"
#include "desk/host/Ferramentas.h"
#include "desk/host/Ficha.h"
#include "desk/host/HostMesa.h"
#include "desk/host/LugarDoTrabalho.h"
#include "desk/host/Ociosidade.h"
#include "desk/host/PaginaInicial.h"
#include "desk/host/Preferencias.h"
#include "desk/windows/AreaDeTrabalho.h"
#include "desk/windows/CamadaQt.h"
#include "desk/windows/ConexaoQt.h"
#include "desk/windows/TeclaDeAjuda.h"
#include "services/Servicos.h"
#include "shell/Geral.h"
#include "tela/Janelas.h"

#include <QMainWindow>

#include <atomic>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

class QAction;
class QLabel;
class QMenu;
class QPushButton;
class QTimer;

namespace mesa {

// The desk's main window: it is the host in which the module runs, from its registration to its end.
class Mesa : public QMainWindow {
  public:
    // diretorio: the user's data directory. agora: the clock. preferencias: outlives the window.
    Mesa(Ref<Servicos> servicos, std::filesystem::path diretorio, std::function<Data()> agora,
         Preferencias &preferencias);
    ~Mesa() override;

    // Asks who is there. False when the person gave up.
    bool PedeEntrada();
    // Somebody is there: the module is logged on and its tools follow the permissions.
    void Entra(const Ref<SessaoServico> &sessao);
    // Closes all windows through the module's logoff.
    void Sai();

    // Where the registry is, as the windows tell it. muda: takes note of another one that was chosen at the sign-in,
    // for which the desk is left. conexao: with the server; outlives the window.
    void DefineLugar(const LugarDoTrabalho &lugar, ConexaoQt &conexao,
                     std::function<void(const LugarDoTrabalho &)> muda);
    // What the menu of the registry offers.
    void DefineAtos(AtosDoRegistro atos);
    // What the registry is due once a day, which is done behind the windows while somebody is signed in.
    void DefineCuidados(CuidadosDoDia cuidados) { m_Cuidados.emplace(std::move(cuidados)); }
    // Does what is due now, if nothing of it is being done, and tells what was found; a clock of its own looks every
    // few seconds.
    void CuidaDoDia();
    // Asks for the reason of a correction. Nothing when the person gave up.
    std::optional<std::string> PedeMotivo(const std::string &pergunta);
    // Locks the desk when nobody has used it for too long; a clock of its own looks every few seconds.
    void ConfereOciosidade();
    // Covers all windows, which stay as they are, until the one who is at work tells the password again. Whoever wants
    // to work instead does so after these windows were closed.
    void Trava();

    const Ref<Geral> &Modulo() const { return m_Geral; }
    const Ref<HostMesa> &Hospedeiro() const { return m_Host; }

  protected:
    void closeEvent(QCloseEvent *evento) override;
    void moveEvent(QMoveEvent *evento) override;
    void resizeEvent(QResizeEvent *evento) override;
    bool eventFilter(QObject *objeto, QEvent *evento) override;

  private:
    void MontaMenus();
    void MontaEstado();
    void MostraServidor();
    // Which registry, and where; whether there is a connection.
    std::string QualRegistro() const;
    QAction *AdicionaFerramenta(QMenu *menu, const Ferramenta &ferramenta);
    void AbreFerramenta(const Ferramenta &ferramenta);
    void HabilitaFerramentas();
    void MontaMenuUsuario(QMenu *menu);
    void MontaMenuRegistro();
    void MontaMenuJanela();
    // The start page, with what it asks of the desk.
    QWidget *FazInicio();
    std::optional<PaginaInicial> LeInicio();
    void MostraInicio();
    void FazAcaoInicial(const std::string &acao);
    void AbreRecente(EquipamentoRecente qual);
    void TrocaDeUsuario();
    bool PedeAteQueEntre();
    // Takes away what stands in front of the main window, as if each had been cancelled.
    void FechaAsDaFrente();
    // Once nothing that was opened is still waiting for its window.
    void TrocaQuandoPuder(const std::function<void()> &abreCortinas);
    bool MostraFicha(Ficha &ficha);
    // False when the person would not change a password that must be.
    bool TrocaMinhaSenha(const Ref<SessaoServico> &sessao, bool obrigada);
    void MostraPreferencias();
    void AbreAdministracao(int pagina);
    void ConfereRegistro();
    void CopiaRegistro();
    void RestauraRegistro();
    void ExportaCabeca();
    void FazDossie(const PedidoDeDossie &pedido);
    void ConfereDossie();
    void MostraConferencia();
    void LembraConferencia(const ResultadoDoAto &conferido);
    void ConcluiCuidado(Cuidado qual, const ResultadoDoAto &resultado);
    void ContaAchados();
    // Gives up what is being done behind the windows.
    void ParaCuidado();
    void MostraReplica();
    void AtualizaReplica();
    void AbreConsulta();
    void MostraAjuda(const std::string &topico, QWidget *dono);
    void MostraAjudaDaFrente();
    // Takes away the certificates that were printed, of which the module leaves a copy behind for the viewer.
    void LimpaCertificados();
    void MostraSobre();
    void GuardaLugar();
    // What is remembered of who works here, from now on.
    void DefineLembrancas(const Ref<ILembrancas> &lembrancas);
    void NaBorda(const std::function<void()> &acao) { m_Janelas->NaBorda(acao); }

    Ref<Servicos> m_Servicos;
    std::filesystem::path m_Diretorio;
    Preferencias &m_Preferencias;
    Ociosidade m_Ociosidade;
    AtosDoRegistro m_Atos;
    LugarDoTrabalho m_Lugar;
    ConexaoQt *m_Conexao = nullptr;
    ::Conexao m_AoMudarAConexao;
    std::function<void(const LugarDoTrabalho &)> m_MudaDeLugar;
    Ociosidade m_Descanso; // after which nobody is disturbed
    std::optional<CuidadosDoDia> m_Cuidados;
    std::thread m_Cuidando;
    Cuidado m_Qual{}; // is being done there
    std::atomic<bool> m_Desistiu = false;
    std::vector<ResultadoDoAto> m_PorContar; // with findings
    std::function<Data()> m_Agora;
    AreaDeTrabalho *m_Area;
    Ref<CamadaQt> m_Camada;
    Ref<Janelas> m_Janelas;
    Ref<HostMesa> m_Host;
    Ref<Geral> m_Geral;
    std::map<std::string, QAction *> m_Ferramentas;
    QAction *m_Consulta = nullptr;
    QAction *m_Renovar = nullptr; // the offer of the status bar, for the keyboard
    QAction *m_Sair = nullptr;
    QAction *m_Inicio = nullptr;
    QAction *m_MinhaSenha = nullptr;
    QAction *m_Travar = nullptr;
    QMenu *m_MenuAdministracao = nullptr;
    QMenu *m_MenuRegistro = nullptr;
    QAction *m_Conferir = nullptr;
    QAction *m_Copiar = nullptr;
    QAction *m_Restaurar = nullptr;
    QAction *m_Exportar = nullptr;
    QAction *m_ConferirDossie = nullptr;
    QMenu *m_MenuJanela = nullptr;
    QLabel *m_Servidor = nullptr;
    QLabel *m_Usuario = nullptr;
    QLabel *m_Cliente = nullptr;
    QLabel *m_Conferencia = nullptr;
    QLabel *m_Replica = nullptr;
    QPushButton *m_Forcar = nullptr;
    QTimer *m_Relogio = nullptr;
    QTimer *m_Vigia = nullptr;
    int m_Nivel = 1; // of event loops when no window waits
    bool m_Travada = false;
    TeclaDeAjuda m_TeclaDeAjuda{[this](const std::string &topico, QWidget *dono) { MostraAjuda(topico, dono); }};
};

} // namespace mesa
