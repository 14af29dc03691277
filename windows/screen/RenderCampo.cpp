#include "windows/screen/RenderCampo.h"

#include "controls/TextBox.h"
#include "controls/ztData.h"
#include "controls/ztMask.h"
#include "controls/ztVeiObservacao.h"
#include "tela/EdicaoDeTexto.h"
#include "windows/screen/Enquanto.h"

namespace nativo {

namespace {

template <class C> CampoDeTexto FazCampo(C &campo)
{
    return {[&campo] { return campo.Text(); }, [&campo] { return campo.SomenteLeitura(); },
            [&campo] { return campo.Cursor(); },
            [&campo](std::size_t posicao, std::size_t n, const std::string &texto) {
                return campo.Edita(posicao, n, texto);
            }};
}

CampoDeTexto CampoDoControle(const Ref<IControle> &controle)
{
    switch (controle->Especie()) {
    case EspecieControle::ztMask:
        return FazCampo(dynamic_cast<ztMask &>(*controle));
    case EspecieControle::ztData:
        return FazCampo(dynamic_cast<ztData &>(*controle));
    case EspecieControle::ztVeiObservacao:
        return FazCampo(dynamic_cast<ztVeiObservacao &>(*controle));
    default:
        return FazCampo(dynamic_cast<TextBox &>(*controle));
    }
}

// Of observations the lines that they have are seen; none is broken.
DWORD EstiloDe(const IControle &controle)
{
    const bool linhas = controle.Especie() == EspecieControle::ztVeiObservacao;
    return ES_AUTOHSCROLL | (linhas ? ES_MULTILINE | ES_AUTOVSCROLL : 0);
}

} // namespace

RenderCampo::RenderCampo(Ref<IControle> controle, const Peca &peca, JanelaForm &janela)
    : Renderizador(std::move(controle), peca, janela),
      m_Campo(CampoDoControle(Controle())),
      m_Linha(Faz(WC_EDITW, EstiloDe(*Controle()), WS_EX_CLIENTEDGE),
              [this](const std::string &novo, std::size_t cursor) {
                  const EdicaoDeTexto edicao = AchaEdicao(m_Campo.Texto(), novo, cursor);
                  Age([&] {
                      const Enquanto editando(m_Editando);
                      m_Campo.Edita(edicao.Posicao, edicao.Retirados, edicao.Inserido);
                  });
              })
{
}

void RenderCampo::Comando(HWND, UINT aviso)
{
    if (!Mostrando()) {
        m_Linha.Avisou(aviso);
    }
}

std::optional<LRESULT> RenderCampo::Mensagem(HWND, UINT mensagem, WPARAM w, LPARAM)
{
    return m_Linha.Mensagem(mensagem, w);
}

// The control takes an edit letter by letter. What has come of it is shown at its end: what the line has already stays,
// and can be undone.
void RenderCampo::Mostra()
{
    if (m_Editando) {
        return;
    }
    m_Linha.Mostra(m_Campo.Texto(), m_Campo.Cursor());
    m_Linha.DefineSomenteLeitura(m_Campo.SomenteLeitura());
}

} // namespace nativo
