#pragma once

#include "tela/ICamada.h"
#include "tela/IJanelas.h"

#include <vector>

// The window manager, over any screen: which form has a window and of which kind, in front of what it stands, and which
// windows go with another one.
class Janelas : public IJanelas {
  public:
    explicit Janelas(Ref<ICamada> camada) : m_Camada(std::move(camada)) {}
    std::string_view NomeTipo() const override { return "Janelas"; }

    // What the windows ask of their host. Given before the first form is shown.

    // The platform's unload, which comes back through FechaForm when the form has gone.
    std::function<void(const Ref<IForm> &)> Descarrega;
    // A new wrapping form, which a form that is not modal knows as its frmParent; without it windows are not wrapped.
    std::function<Ref<IForm>()> FazInvolucro;
    // Shows the fault that is being handled.
    std::function<void()> MostraFalha;
    // A viewer of a document is done.
    std::function<void()> FechouVisor;

    // Runs what came from a person; a fault that comes out of it is shown and ends there.
    void NaBorda(const std::function<void()> &acao) const;
    // Runs what opens windows of that distinction. Of several that are open at once the later ones are numbered. What
    // stands in front of another window has none: it belongs to that.
    void Distingue(const DistincaoDeJanela &qual, const std::function<void()> &abre);
    // Shows a modal window that is no form's, such as a sign-in, and comes back when it was closed.
    void MostraEEspera(const Ref<IJanela> &janela);
    // Makes the window of a form ahead of its show, for a host that wants to know it before. Without effect on a form
    // that has one.
    void Prepara(const Ref<IForm> &form);
    // Takes away the windows still open, without asking their forms.
    void TiraTodas();

    void MostraForm(const Ref<IForm> &form, bool modal) override;
    void FechaForm(const Ref<IForm> &form) override;
    void DefineTextoJanela(const Ref<IForm> &form, const std::string &texto) override;
    void DefineEspera(bool espera) override;
    void ProcessaMensagens() override { m_Camada->ProcessaMensagens(); }
    std::int32_t LarguraTela() const override { return m_Camada->LarguraTela(); }
    std::int32_t AlturaTela() const override { return m_Camada->AlturaTela(); }
    bool PerguntaSimNao(const std::string &texto, const std::string &titulo, bool padraoSim) override;
    void Informa(const std::string &texto, const std::string &titulo) override;
    void Avisa(const std::string &texto, const std::string &titulo) override;
    void MostraErro(const std::string &contexto, std::int32_t numero, const std::string &descricao,
                    const std::string &fonte, const std::string &titulo) override;
    std::optional<std::string> EscolheArquivo(const std::string &filtro, const std::string &titulo) override;
    bool MostraPDF(const std::string &caminho, bool modal) override;
    void MostraAjuda(const std::string &topico) override;

  private:
    struct Aberta {
        Ref<IForm> Form;
        TipoDeJanela Tipo = TipoDeJanela::Filha;
        Ref<IJanela> Janela;
        Ref<IJanela> Dono;
        bool Mostrada = false;
        Ref<IForm> Involucro;
        DistincaoDeJanela Qual = {};
        int Numero = 0; // among those of the same distinction, from 1
        std::vector<Conexao> Conexoes;
    };

    Aberta *Acha(const Ref<IForm> &form);
    // Where a window that is opened now goes.
    TipoDeJanela TipoDaNova(bool modal) const;
    // Gives a window that is opened now the distinction that counts now.
    void DaDistincao(Aberta &nova) const;
    Aberta &Abre(const Ref<IForm> &form, bool modal);
    // The modal window in front of all others, whatever it shows; Nothing when there is none.
    Ref<IJanela> Frente() const { return m_Modais.empty() ? nullptr : m_Modais.back(); }
    // Windows that were opened in front of this one go with it.
    void TiraDaFrente(const Ref<IJanela> &janela);
    // While the form is open, at the edge.
    std::function<void()> Pedido(const Ref<IForm> &form, std::function<void(const Ref<IForm> &)> acao);
    PedidosDaJanela Pedidos(const Ref<IForm> &form);
    // The form's window comes to the front when somebody asks for it.
    static void SegueOrdem(IForm &quem, Aberta &aberta);

    Ref<ICamada> m_Camada;
    std::vector<Aberta> m_Abertas;      // in the order in which they were shown
    std::vector<Ref<IJanela>> m_Modais; // each in front of those before it
    DistincaoDeJanela m_Qual;           // of what is opened now
    bool m_Esperando = false;
};
