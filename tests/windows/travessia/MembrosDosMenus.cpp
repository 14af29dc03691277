#include "tests/windows/travessia/MembrosDoHost.h"

#include "host/IAplicacaoHost.h"
#include "windows/automation/Embrulho.h"
#include "windows/automation/Tardio.h"

namespace nativo {
namespace {

// By position from 0 or by name, as the argument's type says.
template <class Colecao, class Item> Ref<Item> ItemDe(Colecao &colecao, const Valor &indice)
{
    if (std::holds_alternative<std::string>(indice.Interno())) {
        return colecao.ItemNome(indice.CStr());
    }
    return colecao.ItemPosicao(indice.CLng());
}

template <class Colecao, class Item> void OfereceLista()
{
    OfereceMembros<Colecao>([](Membros<Colecao> &m) {
        m.Leitura("Count", &Colecao::Count);
        m.Metodo("Item", 1, {"vIndice"}, [](Colecao &colecao, Chamada &chamada) {
            chamada.Responde(ItemDe<Colecao, Item>(colecao, chamada.Le<Valor>(0)));
        });
        m.Padrao("Item");
    });
}

// The items as the host sees them: each read by late binding, the placeholder left out as Nothing.
ItensMenu Lidos(const VARIANT &arranjo)
{
    ItensMenu itens;
    for (const Variante &elemento : detalhe::LeArranjo(arranjo)) {
        const Com<IDispatch> objeto = LeObjeto(elemento.Bruta());
        if (!objeto) {
            itens.emplace_back();
            continue;
        }
        const Tardio tardio(objeto, Lado::Hospedeiro);
        auto item = Novo<ItemMenuModulo>();
        item->Name = tardio.Chama<std::string>("Name");
        item->Band = tardio.Chama<std::string>("Band");
        item->SubBand = tardio.Chama<std::string>("SubBand");
        item->NeverDisabled = tardio.Chama<bool>("NeverDisabled");
        item->HideWhenDisable = tardio.Chama<bool>("HideWhenDisable");
        itens.push_back(std::move(item));
    }
    return itens;
}

// The holder goes by reference, and comes back.
template <class Acao> void ComSuporte(Chamada &chamada, Acao &&acao)
{
    auto actBar = chamada.Le<Ref<IActBar>>(0);
    ItensMenu itens = Lidos(chamada.Argumento(1));
    acao(actBar, itens);
    chamada.Devolve(0, actBar);
}

} // namespace

void OfereceMenus()
{
    OfereceMembros<IActBar>([](Membros<IActBar> &m) { m.Leitura("Bands", &IActBar::Bands); });
    OfereceLista<IBands, IBand>();
    OfereceMembros<IBand>([](Membros<IBand> &m) {
        m.Leitura("Name", &IBand::Name);
        m.Leitura("Tools", &IBand::Tools);
        m.Metodo("TrackPopup", &IBand::TrackPopup, {"x", "y"});
    });
    OfereceLista<ITools, ITool>();
    OfereceMembros<ITool>([](Membros<ITool> &m) {
        m.Propriedade("Visible", &ITool::Visible, &ITool::DefineVisible);
        m.Propriedade("Enabled", &ITool::Enabled, &ITool::DefineEnabled);
    });
    OfereceMembros<IAMEditMenu>([](Membros<IAMEditMenu> &m) {
        m.Metodo("IncorporaMenu", 3, {"oActBar", "aItens", "bReservado"}, [](IAMEditMenu &menu, Chamada &chamada) {
            ComSuporte(chamada, [&](Ref<IActBar> &actBar, ItensMenu &itens) {
                menu.IncorporaMenu(actBar, itens, chamada.Le<bool>(2));
            });
        });
        m.Metodo("RemoveMenu", 2, {"oActBar", "aItens"}, [](IAMEditMenu &menu, Chamada &chamada) {
            ComSuporte(chamada, [&](Ref<IActBar> &actBar, ItensMenu &itens) { menu.RemoveMenu(actBar, itens); });
        });
    });
}

} // namespace nativo
