#pragma once

#include "desk/windows/JanelaForm.h"
#include "tela/ICamada.h"

#include <QDialog>
#include <QMdiArea>
#include <QPointer>

#include <functional>
#include <vector>

namespace mesa {

// A window in Qt.
class WidgetDeJanela : public IJanela {
  public:
    virtual QWidget *Widget() const = 0;
};

// A dialog that is no form's.
class DialogoQt : public WidgetDeJanela {
  public:
    explicit DialogoQt(QDialog *dialogo) : m_Dialogo(dialogo) {}
    std::string_view NomeTipo() const override { return "DialogoQt"; }

    QWidget *Widget() const override { return m_Dialogo; }
    void Mostra() override { m_Dialogo->show(); }
    void MostraEEspera() override { m_Dialogo->exec(); }
    void ParaFrente() override;
    void DefineTexto(const std::string &texto) override;
    void Retira() override;

  private:
    QPointer<QDialog> m_Dialogo;
};

// The desk's screen in Qt: forms in child windows of the main window or in dialogs, boxes, viewer and help.
class CamadaQt : public ICamada {
  public:
    // area: where the child windows go.
    explicit CamadaQt(QMdiArea *area) : m_Area(area) {}
    std::string_view NomeTipo() const override { return "CamadaQt"; }

    // What the windows need of the desk. Given before the first form is shown.
    std::function<std::vector<ClienteOferecido>()> Clientes;
    Ref<ILogradouros> Logradouros;
    std::function<void(const std::string &topico, QWidget *dono)> Ajuda;
    // Of who is at work, from sign-in to sign-out; Nothing otherwise.
    Ref<ILembrancas> Lembrancas;
    std::string Usuario;         // as it stands on what is printed
    std::function<Data()> Agora; // the desk's clock

    Ref<IJanela> FazJanela(const Ref<IForm> &form, TipoDeJanela tipo, const Ref<IJanela> &dono,
                           const PedidosDaJanela &pedidos, const DistincaoDeJanela &qual) override;
    void MostraEspera(bool espera) override;
    void ProcessaMensagens() override;
    std::int32_t LarguraTela() const override;
    std::int32_t AlturaTela() const override;
    bool PerguntaSimNao(const std::string &texto, const std::string &titulo, bool padraoSim,
                        const Ref<IJanela> &dono) override;
    void MostraCaixa(TipoDeCaixa tipo, const std::string &texto, const std::string &titulo, const std::string &detalhes,
                     const Ref<IJanela> &dono) override;
    std::optional<std::string> EscolheArquivo(const PedidoDeArquivo &pedido, const Ref<IJanela> &dono) override;
    Ref<IJanela> FazVisor(const std::string &caminho, const std::string &nome, const Ref<IJanela> &dono,
                          const std::function<void()> &fechou) override;
    void MostraAjuda(const std::string &topico, const Ref<IJanela> &dono) override;

  private:
    QWidget *WidgetDe(const Ref<IJanela> &janela) const;

    QPointer<QMdiArea> m_Area;
    Ref<MemoriaDeEnderecos> m_Memoria = Novo<MemoriaDeEnderecos>();
};

} // namespace mesa
