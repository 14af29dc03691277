#include "shell/MenusGeral.h"

#include "shell/Geral.h"

#include <cmath>
#include <variant>

namespace {

// Upper bound of an array of items.
std::int32_t Limite(const ItensMenu &aItens)
{
    return static_cast<std::int32_t>(aItens.size()) - 1;
}

// Whether a key is a position rather than a name.
bool EhNumerico(const Valor &vChave)
{
    const auto &conteudo = vChave.Interno();
    if (const auto *texto = std::get_if<std::string>(&conteudo)) {
        return IsNumeric(*texto);
    }
    return !vChave.EhObjeto() && !vChave.EhNulo() && !std::holds_alternative<Data>(conteudo);
}

// The item at a position; Nothing outside 1 to the upper bound.
Ref<ItemMenuModulo> NaPosicao(const ItensMenu &aItens, const Valor &vPosicao)
{
    const double posicao = vPosicao.CDbl();
    if (posicao < 1 || posicao > Limite(aItens)) {
        return {};
    }
    return aItens[static_cast<std::size_t>(CLng(posicao))];
}

} // namespace

void MenusGeral::IncorporaMenuPrincipal() noexcept
{
    if (m_bMenuIncorporado) {
        return;
    }
    IgnoraErro([&] { AdicionaMenu(aMenu); });
    m_bMenuIncorporado = true;
}

void MenusGeral::AdicionaMenu(ItensMenu &aItens)
try {
    Host().CriaAMEditMenu()->IncorporaMenu(m_Geral.ActBar, aItens, false);
    m_bMenuIncorporado = true;
} catch (...) {
    PassaFalha(" < Geral.AdicionaMenu");
}

void MenusGeral::RemoveMenu(ItensMenu &aItens) noexcept
{
    if (!m_bMenuIncorporado) {
        return;
    }
    IgnoraErro([&] { Host().CriaAMEditMenu()->RemoveMenu(m_Geral.ActBar, aItens); });
    m_bMenuIncorporado = false;
}

void MenusGeral::AdicionaMenuAuxiliar() noexcept
{
    IgnoraErro([&] { AdicionaMenu(aMenuAux); });
}

void MenusGeral::RemoveMenuAuxiliar() noexcept
{
    RemoveMenu(aMenuAux);
}

Ref<ItemMenuModulo> MenusGeral::Procura(const ItensMenu &aItens, const Valor &vChave) noexcept
{
    Ref<ItemMenuModulo> achado;
    IgnoraErro([&] {
        if (EhNumerico(vChave)) {
            achado = NaPosicao(aItens, vChave);
            return;
        }
        const std::string nome = vChave.CStr(); // a fault for a null or an object, which equal no name
        for (std::size_t posicao = 1; posicao < aItens.size() && achado.Nada(); ++posicao) {
            IgnoraErro([&] {
                if (aItens[posicao]->Name == nome) {
                    achado = aItens[posicao];
                }
            });
        }
    });
    return achado;
}

Ref<ITool> MenusGeral::Ferramenta(const ItemMenuModulo &item) const
{
    return m_Geral.ActBar->Bands()->ItemNome(item.Band)->Tools()->ItemNome(item.Name);
}

void MenusGeral::DefineEstado(const ItemMenuModulo &item, bool bVisivel, bool bHabilitado) const noexcept
{
    IgnoraErro([&] { Ferramenta(item)->DefineVisible(bVisivel); });
    IgnoraErro([&] { Ferramenta(item)->DefineEnabled(bHabilitado); });
}

void MenusGeral::DesabilitarMenu() noexcept
{
    for (std::size_t posicao = 1; posicao < aMenu.size(); ++posicao) {
        IgnoraErro([&] {
            if (!aMenu[posicao]->NeverDisabled) {
                DefineEstado(*aMenu[posicao], !aMenu[posicao]->HideWhenDisable, false);
            }
        });
    }
}

void MenusGeral::HabilitarFerramenta(const Ref<ItemMenuModulo> &item, bool bHabilita) noexcept
{
    IgnoraErro([&] { DefineEstado(*item, bHabilita || !item->HideWhenDisable, bHabilita); });
}

bool MenusGeral::HabilitarBand(const std::string &sBand)
try {
    const Ref<ITools> ferramentas = m_Geral.ActBar->Bands()->ItemNome(sBand)->Tools();
    const std::int32_t quantas = ferramentas->Count();
    for (std::int32_t posicao = 0; posicao < quantas; ++posicao) {
        const Ref<ITool> ferramenta = ferramentas->ItemPosicao(posicao);
        if (ferramenta->Visible() && ferramenta->Enabled()) {
            return true;
        }
    }
    return false;
} catch (...) {
    PassaFalha(" < Geral.HabilitarBand");
}

void MenusGeral::MostraPopup(const std::string &sBand, std::int32_t x, std::int32_t y) const noexcept
{
    IgnoraErro([] { Plataforma()->ProcessaMensagens(); });
    IgnoraErro([&] { m_Geral.ActBar->Bands()->ItemNome(sBand)->TrackPopup(x, y); });
}

void MenusGeral::PopupBand(double x, double y, const std::string &sBand) noexcept
{
    IgnoraErro([&] { MostraPopup(sBand, CLng(std::trunc(x)), CLng(std::trunc(y))); });
}

void MenusGeral::PopupBand16(const std::string &sBand, std::int16_t x, std::int16_t y) noexcept
{
    MostraPopup(sBand, x, y);
}

void MenusGeral::PopupAuxiliar(std::int32_t x, std::int32_t y, const std::optional<Valor> &item) noexcept
{
    IgnoraErro([&] {
        const std::string band = BandAuxiliar(item ? *item : Valor(PrimeiraSubBand()));
        if (!band.empty()) {
            MostraPopup(band, x, y);
        }
    });
}

std::int32_t MenusGeral::PrimeiraSubBand() const noexcept
{
    std::int32_t primeira = 0;
    for (std::size_t posicao = 1; posicao < aMenuAux.size() && primeira == 0; ++posicao) {
        IgnoraErro([&] {
            if (!aMenuAux[posicao]->SubBand.empty()) {
                primeira = static_cast<std::int32_t>(posicao);
            }
        });
    }
    return primeira;
}

std::string MenusGeral::BandAuxiliar(const Valor &item) const
{
    if (EhNumerico(item)) {
        const Ref<ItemMenuModulo> achado = NaPosicao(aMenuAux, item);
        return achado.Nada() ? std::string() : achado->Name;
    }
    const std::string procurada = UCase(item.CStr());
    const Ref<IBands> bands = m_Geral.ActBar->Bands();
    const std::int32_t quantas = bands->Count();
    std::string achada;
    for (std::int32_t posicao = 0; posicao < quantas && achada.empty(); ++posicao) {
        IgnoraErro([&] {
            const std::string nome = bands->ItemPosicao(posicao)->Name();
            if (UCase(nome) == procurada) {
                achada = nome;
            }
        });
    }
    return achada;
}
