#pragma once

#include "desk/host/HostMesa.h"
#include "desk/services/Servicos.h"
#include "desk/windows/CamadaQt.h"
#include "shell/Geral.h"
#include "tela/Janelas.h"

#include <QMainWindow>

#include <filesystem>
#include <functional>
#include <map>
#include <string>

class QAction;
class QLabel;
class QMdiArea;
class QMenu;
class QPushButton;
class QTimer;

namespace mesa {

// The desk's main window: it is the host in which the module runs, from its registration to its end.
class Mesa : public QMainWindow {
  public:
    // diretorio: the user's data directory. agora: the clock.
    Mesa(Ref<Servicos> servicos, std::filesystem::path diretorio, std::function<Data()> agora);
    ~Mesa() override;

    // Asks who is there. False when the person gave up.
    bool PedeEntrada();
    // Somebody is there: the module is logged on and its tools follow the permissions.
    void Entra(const Ref<SessaoServico> &sessao);
    // Closes all windows through the module's logoff.
    void Sai();

    const Ref<Geral> &Modulo() const { return m_Geral; }
    const Ref<HostMesa> &Hospedeiro() const { return m_Host; }

  protected:
    void closeEvent(QCloseEvent *evento) override;
    void moveEvent(QMoveEvent *evento) override;
    void resizeEvent(QResizeEvent *evento) override;

  private:
    void MontaMenus();
    void MontaEstado();
    QAction *AdicionaFerramenta(QMenu *menu, const QString &texto, const QString &nome);
    void HabilitaFerramentas();
    void MontaMenuJanela();
    void MostraReplica();
    void AtualizaReplica();
    void AbreConsulta();
    void MostraAjuda(QWidget *dono);
    // Takes away the certificates that were printed, of which the module leaves a copy behind for the viewer.
    void LimpaCertificados();
    void MostraSobre();
    void GuardaLugar();
    void NaBorda(const std::function<void()> &acao) { m_Janelas->NaBorda(acao); }

    Ref<Servicos> m_Servicos;
    QMdiArea *m_Area;
    Ref<CamadaQt> m_Camada;
    Ref<Janelas> m_Janelas;
    Ref<HostMesa> m_Host;
    Ref<Geral> m_Geral;
    std::map<std::string, QAction *> m_Ferramentas;
    QAction *m_Consulta = nullptr;
    QAction *m_Renovar = nullptr; // the offer of the status bar, for the keyboard
    QAction *m_Sair = nullptr;
    QMenu *m_MenuJanela = nullptr;
    QLabel *m_Usuario = nullptr;
    QLabel *m_Cliente = nullptr;
    QLabel *m_Replica = nullptr;
    QPushButton *m_Forcar = nullptr;
    QTimer *m_Relogio = nullptr;
};

} // namespace mesa
