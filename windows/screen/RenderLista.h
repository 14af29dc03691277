#pragma once

#include "tela/ComandosDeLista.h"
#include "windows/screen/Renderizador.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace nativo {

// The list: its title, rows, the side bar of commands that is also its context menu, the button for more rows, and the
// search button of the criteria bar. The rows are never copied: the platform's list asks for those that it paints. The
// context menu comes by the mouse, the menu key and Shift+F10, and sorts by a column too.
class RenderLista : public Renderizador {
  public:
    RenderLista(Ref<IControle> controle, const Peca &peca, JanelaForm &janela);

    void Coloca(const PecaArrumada &lugar) override;
    HWND JanelaDe(Parte parte) const override;
    void Comando(HWND janela, UINT aviso) override;
    LRESULT Notifica(NMHDR &aviso) override;
    std::optional<LRESULT> Mensagem(HWND janela, UINT mensagem, WPARAM w, LPARAM l) override;
    void MudouAparencia() override;

  protected:
    void Mostra() override;

  private:
    // A button of the side bar.
    struct Botao {
        HWND Manipulador = nullptr;
        std::string Chave{}; // of its command; empty for the list's own two
        std::string Texto{};
        std::string Dica{};
        bool IniciaGrupo = false;
        bool Visivel = false;
    };
    // A column as the heading shows it.
    struct Vista {
        std::int32_t Numero = 0; // from 1, as ztList::OrdenaPor takes it
        std::string Titulo;
        std::int32_t Largura = 0; // twips

        bool operator==(const Vista &) const = default;
    };

    void MostraColunas();
    void MostraOrdem() const;
    int LarguraDa(const Vista &vista) const;
    void MostraLinhas();
    void MostraMenu();
    void MostraBotao(Botao &botao, const std::string &texto, const std::string &dica, bool visivel, bool habilitado);
    HWND FazBotao();
    void Reparte() const;
    int ColocaBarra() const;
    Tamanho TamanhoDoBotao(const std::string &caption) const;
    void EsticaUltima() const;

    std::optional<LRESULT> MensagemDasLinhas(UINT mensagem, WPARAM w, LPARAM l);
    std::optional<LRESULT> MensagemDoBotao(HWND botao, UINT mensagem, LPARAM l);
    // repetida: it is held, and was told before.
    bool Tecla(WPARAM tecla, bool repetida);
    // Whether a row was there.
    bool ClicaEm(LPARAM ponto);
    void AbreMenu(LPARAM ponto);
    POINT LugarDoMenu(LPARAM ponto) const;
    void Celula(NMLVDISPINFOW &pedido);
    void Escolhe(const std::string &chave);

    HWND m_Localizar = nullptr; // null in a list without criteria
    HWND m_Titulo;
    HWND m_Linhas;
    HWND m_Mais;
    HWND m_Dicas;
    std::vector<Botao> m_Botoes; // of the commands, in the order of the menu
    Botao m_Ajuda;
    Botao m_Fechar;
    HWND m_Apertado = nullptr;
    std::vector<Vista> m_Vistas;
    HFONT m_Fonte = nullptr; // for which the columns were measured
    std::int64_t m_Arranjo = -1;
    std::int32_t m_Atual = -1; // row, as it was shown last
    Retangulo m_Lugar;
    mutable bool m_Esticando = false;
    // The platform keeps the last texts that it was told.
    std::array<std::wstring, 3> m_Celulas;
    std::size_t m_Celula = 0;
};

} // namespace nativo
