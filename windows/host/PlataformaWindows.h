#pragma once

#include "host/IPlataforma.h"
#include "tela/FormsAbertos.h"

#include <windows.h>

#include <functional>
#include <memory>
#include <string>

namespace nativo {

// The platform itself: open forms over the window manager, boxes, clock, and the files of the machine.
class PlataformaWindows : public IPlataforma {
  public:
    // janelaPrincipal: the main window of the host; null when there is none.
    PlataformaWindows(Ref<IJanelas> janelas, std::function<HWND()> janelaPrincipal);
    std::string_view NomeTipo() const override { return "PlataformaWindows"; }

    Ref<IAplicacao> Aplicacao() override { return m_Aplicacao; }
    std::int16_t Ponteiro() const override { return m_Ponteiro; }
    void DefinePonteiro(std::int16_t valor) override;
    void ProcessaMensagens() override { m_Janelas->ProcessaMensagens(); }
    std::int32_t LarguraTela() const override;
    std::int32_t AlturaTela() const override;
    bool PerguntaSimNao(const std::string &texto, const std::string &titulo, bool padraoSim) override;
    void CaixaInformacao(const std::string &texto, const std::string &titulo) override;

    std::int32_t NroForms() const override { return m_Forms.Quantos(); }
    Ref<IForm> FormAberto(std::int32_t posicao) const override { return m_Forms.Form(posicao); }
    bool Aberto(const Ref<IForm> &form) const { return m_Forms.Tem(form); }
    void Carrega(const Ref<IForm> &form) override { m_Forms.Carrega(form); }
    // A form of the host's around ours is its own: it is asked to close, unless it is the main window.
    void Descarrega(const Ref<IForm> &form) override;
    void DefineTextoJanela(std::int64_t hwnd, const std::string &texto) override;
    bool TemIcone(const std::string &chave) const override { return chave == "Equipamentos"; }

    Data Agora() const override;
    std::string DataCurta(Data data) const override;

    std::string CaminhoModulo() const override;
    bool ExisteArquivo(const std::string &caminho) const override;
    std::int64_t TamanhoArquivo(const std::string &caminho) const override;
    void ApagaArquivo(const std::string &caminho) override;
    void GravaArquivo(const std::string &caminho, const Bytes &bytes) override;
    std::string PrimeiroArquivo(const std::string &padrao) override;
    std::string ProximoArquivo() override;

  private:
    // A search for names that is under way.
    class Procura;

    void FechaInvolucro(const Ref<IForm> &form) const;

    Ref<IJanelas> m_Janelas;
    std::function<HWND()> m_JanelaPrincipal;
    FormsAbertos m_Forms;
    Ref<IAplicacao> m_Aplicacao;
    std::int16_t m_Ponteiro = PonteiroNormal;
    std::shared_ptr<Procura> m_Procura; // of the pattern last given
};

} // namespace nativo
