#pragma once

#include "desk/host/Manual.h"
#include "tela/ILembrancas.h"

#include <QDialog>

#include <memory>
#include <string>
#include <vector>

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTabWidget;
class QTreeWidget;
class QTreeWidgetItem;

namespace mesa {

class TextoDoManual;

// The manual: its contents beside the text, what is searched for in all of it, the way back. It belongs to the window
// from which it was asked for, so that it can be used in front of that.
class JanelaDoManual : public QDialog {
  public:
    // figuras: the folder from which the text names its pictures. lembrancas: where it was read last; may be Nothing.
    JanelaDoManual(const QString &markdown, const QString &figuras, Ref<ILembrancas> lembrancas, QWidget *dono);
    ~JanelaDoManual() override;

    // The operator's manual in front of the window, where it tells of the topic; without one that it knows, where it
    // was read last.
    static void Mostra(const std::string &topico, const Ref<ILembrancas> &lembrancas, QWidget *dono);

    void VaiParaTopico(const std::string &topico);

  protected:
    void reject() override;
    void hideEvent(QHideEvent *evento) override;

  private:
    void Monta();
    void MontaConteudo();
    void LigaTeclas();
    // Leads there; the way back remembers from where.
    void VaiPara(int posicao);
    void VaiParaAncora(const QString &ancora);
    void Volta(std::vector<int> &daqui, std::vector<int> &praLa);
    void Chega(int posicao);
    void MostraOnde(int posicao);
    void Busca();
    // The find after the one that is shown, 1, or before it, -1.
    void Anda(int passo);
    void MostraAchado(std::size_t qual);
    void MudaZoom(int passos);
    void Lembra();

    Ref<ILembrancas> m_Lembrancas;
    QTabWidget *m_Painel;
    QTreeWidget *m_Conteudo;
    QListWidget *m_Resultados;
    TextoDoManual *m_Texto;
    std::unique_ptr<Manual> m_Manual;
    QLineEdit *m_Procurado;
    QLabel *m_Contagem;
    QPushButton *m_Voltar = nullptr;
    QPushButton *m_Avancar = nullptr;
    QPushButton *m_Anterior = nullptr;
    QPushButton *m_Proximo = nullptr;
    std::vector<QTreeWidgetItem *> m_Itens; // one for each section
    std::vector<AchadoNoManual> m_Achados;
    std::size_t m_Achado = 0;
    std::vector<int> m_Atras; // places from which a link, a heading or a find has led away
    std::vector<int> m_Adiante;
    int m_Zoom = 0;
    bool m_Indo = false; // the text moves because it was led somewhere
};

} // namespace mesa
