#pragma once

#include "windows/screen/BloqueioModal.h"
#include "windows/screen/ContextoVisual.h"
#include "windows/screen/JanelaForm.h"

#include "tela/ICamada.h"

#include <windows.h>

#include <functional>
#include <memory>
#include <vector>

namespace nativo {

// The screen of a Windows application in which the module runs: forms in windows of their own beside the application's,
// boxes and the file dialog of the system.
class CamadaWindows : public ICamada {
  public:
    CamadaWindows();
    std::string_view NomeTipo() const override { return "CamadaWindows"; }

    // What the windows need of the application. Given before the first form is shown; without one there is none.

    // Its main window, or that in front of which the next form is to stand.
    std::function<HWND()> Principal;
    std::function<std::vector<ClienteOferecido>()> Clientes;
    Ref<ILogradouros> Logradouros;

    // The window of a form that has one; null otherwise.
    HWND JanelaDe(const IForm &form) const;

    Ref<IJanela> FazJanela(const Ref<IForm> &form, TipoDeJanela tipo, const Ref<IJanela> &dono,
                           const PedidosDaJanela &pedidos, const DistincaoDeJanela &) override;
    void MostraEspera(bool espera) override;
    void ProcessaMensagens() override;
    std::int32_t LarguraTela() const override;
    std::int32_t AlturaTela() const override;
    bool PerguntaSimNao(const std::string &texto, const std::string &titulo, bool padraoSim,
                        const Ref<IJanela> &dono) override;
    void MostraCaixa(TipoDeCaixa tipo, const std::string &texto, const std::string &titulo, const std::string &detalhes,
                     const Ref<IJanela> &dono) override;
    std::optional<std::string> EscolheArquivo(const std::vector<FiltroDeArquivo> &filtros, const std::string &titulo,
                                              const Ref<IJanela> &dono) override;
    // Documents and help are the application's own on this platform.
    Ref<IJanela> FazVisor(const std::string &caminho, const Ref<IJanela> &dono,
                          const std::function<void()> &fechou) override;
    void MostraAjuda(const std::string &topico, const Ref<IJanela> &dono) override;

    // The forms' windows that are there.
    std::vector<Ref<JanelaForm>> Janelas() const;
    // Of one of this screen's; Nothing is the main window.
    HWND ManipuladorDe(const Ref<IJanela> &janela) const;

  private:
    HWND AtrasDe(const Ref<IJanela> &dono) const;

    Ref<ContextoVisual> m_Contexto;
    Ref<MemoriaDeEnderecos> m_Memoria;
    std::vector<RefFraca<JanelaForm>> m_Janelas;
    std::shared_ptr<RefFraca<JanelaForm>> m_Ativa = std::make_shared<RefFraca<JanelaForm>>();
    bool m_Espera = false;
};

} // namespace nativo
