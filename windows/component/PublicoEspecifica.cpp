#include "windows/component/PublicoEspecifica.h"

#include "shell/Geral.h"
#include "shell/ModGeral.h"
#include "windows/component/ItensDeMenu.h"
#include "windows/component/PublicoCVORPesqEquip.h"
#include "windows/component/PublicoCVorEquip.h"

namespace nativo {

HRESULT PublicoEspecifica::Inicializa(IDispatch **oGeral)
{
    return Executa([&](::Especifica &especifica) { especifica.Inicializa(ObjetoDe<::Geral>(oGeral)); });
}

HRESULT PublicoEspecifica::ClickMenu(VARIANT *sTool, IDispatch **resultado)
{
    return Responde(resultado, [&](::Especifica &especifica) {
        if (sTool == nullptr) {
            throw Falha(NumeroDe(E_POINTER));
        }
        std::string ferramenta;
        try {
            ferramenta = DeVariante<std::string>(*sTool);
        } catch (...) { // where the failures of this procedure end
            gSubMostraErro("Especifica - ClickMenu");
            return Com<IDispatch>();
        }
        return Oferece(especifica.ClickMenu(ferramenta));
    });
}

HRESULT PublicoEspecifica::HabilitarItem(BSTR sTool, VARIANT_BOOL *resultado)
{
    return Responde(resultado, [&](::Especifica &especifica) { return especifica.HabilitarItem(TextoDe(sTool)); });
}

HRESULT PublicoEspecifica::HabilitarMenu()
{
    return Executa([](::Especifica &especifica) { especifica.HabilitarMenu(); });
}

HRESULT PublicoEspecifica::Menu(SAFEARRAY **oItens)
{
    return Executa(
        [&](::Especifica &especifica) { AlteraItens(oItens, [&](ItensMenu &itens) { especifica.Menu(itens); }); });
}

HRESULT PublicoEspecifica::MenuAuxiliar(SAFEARRAY **oItens)
{
    return Executa([&](::Especifica &especifica) {
        AlteraItens(oItens, [&](ItensMenu &itens) { especifica.MenuAuxiliar(itens); });
    });
}

HRESULT PublicoEspecifica::CreateCVORPesqEquip(_CVORPesqEquip **resultado)
{
    return Responde(
        resultado, [](::Especifica &especifica) { return PublicoCVORPesqEquip::De(especifica.CreateCVORPesqEquip()); });
}

HRESULT PublicoEspecifica::CreateCVorEquip(_CVorEquip **resultado)
{
    return Responde(resultado,
                    [](::Especifica &especifica) { return PublicoCVorEquip::De(especifica.CreateCVorEquip()); });
}

HRESULT PublicoEspecifica::ImprimeAfericaoVigenteEquipto(LONG lSamdInfr, LONG lNroIntEquipto, LONG lCodOat, BSTR sSerie)
{
    return Executa([&](::Especifica &especifica) {
        especifica.ImprimeAfericaoVigenteEquipto(lSamdInfr, lNroIntEquipto, lCodOat, TextoDe(sSerie));
    });
}

} // namespace nativo
