#pragma once

#include "desk/windows/Renderizador.h"
#include "tela/CriteriosDaLista.h"
#include "tela/EscolhaDeCliente.h"
#include "tela/EscolhaDeEndereco.h"
#include "tela/ICamada.h"
#include "tela/ILembrancas.h"
#include "tela/Pessoa.h"

#include <QWidget>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace mesa {

class Quadro;

// What the window of a form needs of the desk around it.
struct AoRedorDoForm {
    PedidosDaJanela Pedidos;
    std::function<std::vector<ClienteOferecido>()> Clientes;
    Ref<ILogradouros> Logradouros;
    Ref<MemoriaDeEnderecos> Memoria;
    Ref<ILembrancas> Lembrancas = nullptr; // nothing is remembered then
    DistincaoDeJanela Qual = {};
    std::string Identidade = {}; // with which the keys begin of what is remembered of such windows
    std::string Usuario = {};    // who is at work, as it stands on what is printed
    std::function<Data()> Agora = {};
};

// The window of one form of the module: drawn from its description, its widgets bound by name to the form's controls.
class JanelaForm : public QWidget {
  public:
    JanelaForm(Ref<IForm> form, AoRedorDoForm aoRedor, QWidget *dono);

    const Ref<IForm> &Form() const { return m_Form; }
    // The form has been unloaded: the window goes without asking.
    void Encerra();
    // The criteria of its list, which are now as they were left when they were last searched by, or the window closed;
    // and are remembered so from now on.
    void LembraCriterios();
    // Sets criteria that are not the person's: they are not remembered until the person changes them.
    void PoeCriterios(const std::function<void()> &poe);
    // Text that was written past the form's caption; empty: the caption counts.
    void DefineTexto(const QString &texto);
    void PedeAjuda() const { m_AoRedor.Pedidos.Ajuda(); }

  protected:
    void changeEvent(QEvent *evento) override;
    void closeEvent(QCloseEvent *evento) override;
    void dragEnterEvent(QDragEnterEvent *evento) override;
    void dragMoveEvent(QDragMoveEvent *evento) override;
    void dropEvent(QDropEvent *evento) override;
    bool event(QEvent *evento) override;
    bool eventFilter(QObject *objeto, QEvent *evento) override;
    void keyPressEvent(QKeyEvent *evento) override;
    void resizeEvent(QResizeEvent *evento) override;
    void showEvent(QShowEvent *evento) override;

  private:
    void LigaControles();
    void OrdenaTab();
    Renderizador *FazRenderizador(const Ref<IControle> &controle, QWidget *widget);
    void MostraForm();
    void Dimensiona();
    void LigaLimpar();
    void GuardaCriterios();
    std::string ChaveDosCriterios() const;
    void DizOndeEstaOTeclado();
    // The keyboard goes to where the person is in the form, which no widget remembers while the window is not yet seen
    // or cannot be used.
    void LevaTeclado();
    void VaiProcurar();
    void AceitaSeRecebe(QDropEvent &evento) const;
    std::function<void()> AtoDaTecla(const QKeyEvent &tecla);

    Ref<IForm> m_Form;
    AoRedorDoForm m_AoRedor;
    Pessoa m_Pessoa;
    Quadro *m_Quadro;
    std::vector<Renderizador *> m_Renderizadores;
    std::vector<Ref<IControle>> m_OrdemDeTab;
    std::vector<Conexao> m_Conexoes;
    CriteriosDaLista m_Criterios;
    bool m_CriteriosLembrados = false;
    std::optional<std::string> m_CriteriosAlheios; // that the person did not set
    QString m_Texto;
    int m_Tecla = 0; // a key of the form that is on its way
    bool m_Vista = false;
    bool m_Encerrando = false;
};

} // namespace mesa
