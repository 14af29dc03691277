#pragma once

#include "tela/EscolhaDeEndereco.h"
#include "windows/screen/CampoNativo.h"
#include "windows/screen/ComboNativo.h"
#include "windows/screen/Renderizador.h"

#include <string>
#include <string_view>

namespace nativo {

// Address picker: the streets found are offered while the person types.
class RenderEndereco : public Renderizador {
  public:
    RenderEndereco(Ref<IControle> controle, const Peca &peca, JanelaForm &janela);

    void Coloca(const PecaArrumada &lugar) override;
    HWND JanelaDe(Parte parte) const override;
    void Comando(HWND janela, UINT aviso) override;
    std::optional<LRESULT> Mensagem(HWND janela, UINT mensagem, WPARAM w, LPARAM l) override;
    bool FicaComTecla(HWND janela, WPARAM tecla) const override;
    void MudouAparencia() override;
    void MudouDeLugar() override { FechaSugestoes(); }

  protected:
    void Mostra() override;

  private:
    HWND FazRotulo(std::string_view texto);
    CampoNativo FazCampo(void (EscolhaDeEndereco::*digita)(const std::string &));
    HWND FazBotao(std::string_view caption);
    HWND FazSugestoes();
    int LarguraDoTexto(std::string_view texto) const;

    std::optional<LRESULT> MensagemDaVia(UINT mensagem, WPARAM w);
    std::optional<LRESULT> MensagemDasSugestoes(UINT mensagem, LPARAM l);
    void AbreSugestoes();
    void FechaSugestoes();
    bool SugestoesAbertas() const;
    int SugestaoAtual() const;
    int SugestaoEm(LPARAM ponto) const;
    void AndaNasSugestoes(int passo);
    void Toma(int sugestao);

    EscolhaDeEndereco m_Escolha;
    HWND m_RotuloMunicipio;
    ComboNativo m_Municipio;
    HWND m_RotuloVia;
    CampoNativo m_Via;
    HWND m_RotuloNumero;
    CampoNativo m_Numero;
    HWND m_RotuloComplemento;
    CampoNativo m_Complemento;
    HWND m_Usar;
    HWND m_Limpar;
    HWND m_Atual;
    HWND m_Sugestoes; // below the street, in front of everything
};

} // namespace nativo
