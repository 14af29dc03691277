#pragma once

#include "desk/host/IJanelas.h"
#include "desk/services/SessaoServico.h"
#include "desk/windows/JanelaForm.h"

#include <QMdiArea>
#include <QPointer>

#include <functional>
#include <vector>

class QEventLoop;
class QMdiSubWindow;
class Involucro;

// The desk's windows in Qt: forms in child windows of the main window or in modal ones, boxes, viewer and help.
class JanelasQt : public IJanelas {
  public:
    // area: where the child windows go.
    explicit JanelasQt(QMdiArea *area) : m_Area(area) {}
    std::string_view NomeTipo() const override { return "JanelasQt"; }

    // What the windows ask of the desk. Given before the first form is shown.
    std::function<void(const Ref<IForm> &)> Descarrega;
    std::function<std::vector<ClienteCadastrado>()> Clientes;
    std::function<void(const std::string &)> Ajuda;
    // Runs what came from a person; a fault that comes out of it is shown.
    void NaBorda(const std::function<void()> &acao);
    // Takes away the windows still open, without asking their forms.
    void TiraTodas();

    void MostraForm(const Ref<IForm> &form, bool modal, const Ref<IForm> &dono) override;
    void FechaForm(const Ref<IForm> &form) override;
    void DefineTextoJanela(const Ref<IForm> &form, const std::string &texto) override;
    void DefineEspera(bool espera) override;
    void ProcessaMensagens() override;
    std::int32_t LarguraTela() const override;
    std::int32_t AlturaTela() const override;
    bool PerguntaSimNao(const std::string &texto, const std::string &titulo, bool padraoSim) override;
    void Informa(const std::string &texto, const std::string &titulo) override;
    void Avisa(const std::string &texto, const std::string &titulo) override;
    void MostraErro(const std::string &contexto, std::int32_t numero, const std::string &descricao,
                    const std::string &fonte, const std::string &titulo) override;
    std::optional<std::string> EscolheArquivo(const std::string &filtro, const std::string &titulo) override;
    bool MostraPDF(const std::string &caminho, bool modal) override;
    void MostraAjuda(const std::string &topico) override { Ajuda(topico); }

  private:
    struct Aberta {
        Ref<IForm> Form;
        QPointer<JanelaForm> Janela;
        QPointer<QMdiSubWindow> Filha; // around a form that is not modal
        QEventLoop *Espera = nullptr;  // of a modal one
        Ref<Involucro> Envolve;
        Conexao PediuFoco;
        Conexao PediuOrdem;
    };

    static void Tira(const Aberta &aberta);
    Aberta *Acha(const Ref<IForm> &form);
    // The window in front of which a box or modal window stands.
    QWidget *Frente() const;
    bool HaModal() const;
    void MostraFilha(const Ref<IForm> &form);
    void MostraModal(const Ref<IForm> &form);
    void MostraSolta(const Ref<IForm> &form);
    JanelaForm *FazJanela(const Ref<IForm> &form, QWidget *dono);

    QPointer<QMdiArea> m_Area;
    std::vector<Aberta> m_Abertas;
    bool m_Esperando = false;
};
