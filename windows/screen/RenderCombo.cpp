#include "windows/screen/RenderCombo.h"

#include "controls/ztCombo.h"

#include <utility>

namespace nativo {

RenderCombo::RenderCombo(Ref<IControle> controle, const Peca &peca, JanelaForm &janela)
    : Renderizador(std::move(controle), peca, janela),
      m_Combo(Faz(WC_COMBOBOXW, ComboNativo::Estilo),
              {.Escolhe = [this](int indice) { Age([&] { Como<ztCombo>(*this).Escolhe(indice); }); },
               .Pesquisa =
                   [this](const std::function<void(PesquisaPorLetras &)> &ato) {
                       const Ref<IControle> vivo = Controle();
                       Age([&] { ato(dynamic_cast<ztCombo &>(*vivo).Pesquisa()); });
                   },
               .Obedece = [this](AtoNoCombo ato) { return ComboObedece(Como<ztCombo>(*this), ato); }})
{
}

void RenderCombo::Coloca(const PecaArrumada &lugar)
{
    Renderizador::Coloca(lugar);
    m_Combo.Posiciona(lugar.Lugar);
}

void RenderCombo::Comando(HWND, UINT aviso)
{
    if (!Mostrando()) {
        m_Combo.Avisou(aviso);
    }
}

std::optional<LRESULT> RenderCombo::Mensagem(HWND, UINT mensagem, WPARAM w, LPARAM)
{
    return m_Combo.Mensagem(mensagem, w);
}

bool RenderCombo::FicaComTecla(HWND, WPARAM tecla) const
{
    return m_Combo.FicaComTecla(tecla);
}

void RenderCombo::Mostra()
{
    const auto &controle = Como<ztCombo>(*this);
    m_Combo.MostraItens(controle.Itens().size(),
                        [&](std::size_t i) -> const std::string & { return controle.Itens()[i].Texto; });
    m_Combo.MostraEscolhido(controle.IndiceAtual());
}

} // namespace nativo
