#pragma once

#include "host/IForm.h"
#include "tela/DistincaoDeJanela.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

enum class TipoDeJanela {
    Filha, // one of the main window's
    Solta, // in front of its owner, which cannot be used otherwise
    Modal,
};

// The window of one form on a screen, or of what stands beside the forms, such as a document's viewer.
class IJanela : public Objeto {
  public:
    virtual void Mostra() = 0;
    // Shows it and comes back when Retira was called, or the form was hidden. Meanwhile nothing can be used but this
    // window and what stands in front of it.
    virtual void MostraEEspera() = 0;
    virtual void ParaFrente() = 0;
    // The window of a form that is going to be shown, made ahead of that or hidden meanwhile, becomes of that kind, in
    // front of that owner. Of windows that are never shown so there is nothing to do.
    virtual void Destina(TipoDeJanela, const Ref<IJanela> &) {}
    // Text in the place of the form's caption.
    virtual void DefineTexto(const std::string &texto) = 0;
    // The form has been unloaded: the window goes without asking, and the wait for it ends.
    virtual void Retira() = 0;
};

// What the person and the screen do to a window of a form. Every one of them may be called at any time, and no fault
// comes out of it.
struct PedidosDaJanela {
    std::function<void(const std::function<void()> &)> NaBorda; // runs anything else that came from the person
    std::function<void()> Fecha;                                // the window's own close button
    std::function<void()> Ajuda;                                // F1
    std::function<void()> Redimensionou;
    std::function<void()> Ativou;
    std::function<void()> Desativou;
    std::function<bool(const std::string &)> Pergunta; // what a control has to ask; no is what a hurried person answers
};

enum class TipoDeCaixa { Informacao, Aviso, Erro };

// A kind of file that a dialog offers.
struct FiltroDeArquivo {
    std::string Texto;
    std::string Padrao;
};

// A screen, as far as the window manager needs one: what it takes to put windows on it and to ask the person. Which
// window is modal, whose owner it is and which goes with which is the manager's. An owner that is Nothing is the main
// window.
class ICamada : public Objeto {
  public:
    // Makes the window of a form, not yet shown. qual: whose text belongs on its frame.
    virtual Ref<IJanela> FazJanela(const Ref<IForm> &form, TipoDeJanela tipo, const Ref<IJanela> &dono,
                                   const PedidosDaJanela &pedidos, const DistincaoDeJanela &qual) = 0;

    // Wait pointer over all windows, on and off in turn.
    virtual void MostraEspera(bool espera) = 0;
    virtual void ProcessaMensagens() = 0;
    // Of the whole screen, in pixels of 15 twips.
    virtual std::int32_t LarguraTela() const = 0;
    virtual std::int32_t AlturaTela() const = 0;

    // All texts are shown as they are, whatever a toolkit might read in them. Closing the question is no.
    virtual bool PerguntaSimNao(const std::string &texto, const std::string &titulo, bool padraoSim,
                                const Ref<IJanela> &dono) = 0;
    virtual void MostraCaixa(TipoDeCaixa tipo, const std::string &texto, const std::string &titulo,
                             const std::string &detalhes, const Ref<IJanela> &dono) = 0;
    virtual std::optional<std::string> EscolheArquivo(const std::vector<FiltroDeArquivo> &filtros,
                                                      const std::string &titulo, const Ref<IJanela> &dono) = 0;
    // Makes the viewer of a document, not yet shown; Nothing when the file is none. fechou: the viewer is done.
    virtual Ref<IJanela> FazVisor(const std::string &caminho, const Ref<IJanela> &dono,
                                  const std::function<void()> &fechou) = 0;
    virtual void MostraAjuda(const std::string &topico, const Ref<IJanela> &dono) = 0;
};
