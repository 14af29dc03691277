#include "windows/screen/RenderCampo.h"

#include "controls/TextBox.h"
#include "controls/ztData.h"
#include "controls/ztMask.h"
#include "controls/ztVeiObservacao.h"
#include "tela/EdicaoDeTexto.h"
#include "windows/automation/Texto16.h"

#include <algorithm>

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

// The contract counts characters, the window units of UTF-16: a character is one or a pair of them.
bool EhSegundaDoPar(wchar_t unidade)
{
    return unidade >= 0xDC00 && unidade <= 0xDFFF;
}

std::size_t Caracteres(const std::wstring &texto, std::size_t unidades)
{
    const auto fim = texto.begin() + static_cast<std::ptrdiff_t>(std::min(unidades, texto.size()));
    return static_cast<std::size_t>(std::count_if(texto.begin(), fim, [](wchar_t c) { return !EhSegundaDoPar(c); }));
}

std::size_t Unidades(const std::wstring &texto, std::size_t caracteres)
{
    std::size_t unidades = 0;
    while (unidades < texto.size() && (caracteres > 0 || EhSegundaDoPar(texto[unidades]))) {
        caracteres -= EhSegundaDoPar(texto[unidades]) ? 0 : 1;
        ++unidades;
    }
    return unidades;
}

} // namespace

RenderCampo::RenderCampo(Ref<IControle> controle, const Peca &peca, JanelaForm &janela)
    : Renderizador(std::move(controle), peca, janela),
      m_Campo(CampoDoControle(Controle())),
      m_Linha(Faz(WC_EDITW, ES_AUTOHSCROLL, WS_EX_CLIENTEDGE))
{
}

// The line says only what it has become.
void RenderCampo::Comando(HWND janela, UINT aviso)
{
    if (janela != m_Linha || aviso != EN_CHANGE || Mostrando()) {
        return;
    }
    const std::string novo = TextoDe(m_Linha);
    DWORD cursor = 0;
    SendMessageW(m_Linha, EM_GETSEL, 0, reinterpret_cast<LPARAM>(&cursor));
    const EdicaoDeTexto edicao = AchaEdicao(m_Campo.Texto(), novo, Caracteres(ParaUtf16(novo), cursor));
    Age([&] { m_Campo.Edita(edicao.Posicao, edicao.Retirados, edicao.Inserido); });
}

void RenderCampo::Mostra()
{
    const std::string texto = m_Campo.Texto();
    if (TextoDe(m_Linha) != texto) {
        const std::wstring largo = ParaUtf16(texto);
        SetWindowTextW(m_Linha, largo.c_str());
        const std::size_t cursor = Unidades(largo, m_Campo.Cursor());
        SendMessageW(m_Linha, EM_SETSEL, cursor, static_cast<LPARAM>(cursor));
    }
    const bool fixo = (GetWindowLongPtrW(m_Linha, GWL_STYLE) & ES_READONLY) != 0;
    if (fixo != m_Campo.SomenteLeitura()) {
        SendMessageW(m_Linha, EM_SETREADONLY, m_Campo.SomenteLeitura(), 0);
    }
}

} // namespace nativo
