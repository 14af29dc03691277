#pragma once

#include "shell/Especifica.h"
#include "shell/Geral.h"
#include "shell/ModGeral.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

// The particular side of a module that has what the equipment registry has not: menu items, forms to be shown for a
// click, transactions, an auxiliary module. Everything else is the registry's.
class EspecificaDeTeste : public Especifica {
  public:
    ItensMenu Itens;
    ItensMenu Auxiliares;
    Ref<IForm> FormDoClique;
    std::map<std::string, Ref<ITransacao>> Transacoes; // by code
    Ref<Objeto> Auxiliar;
    bool UsandoAuxiliar = true;
    std::function<void()> AoPedirMenu;
    std::function<void()> AoPedirMenuAuxiliar;
    std::function<void()> AoInicializar;
    std::function<void()> AoPedirAuxiliar;
    std::function<void()> AoClicar;
    std::function<bool(const std::string &)> AoHabilitarItem;
    std::function<void()> AoHabilitarMenu;
    std::function<void()> AoLiberarServicos;
    std::function<void()> AoFinalizar;
    std::vector<std::string> CodigosPedidos;
    std::int32_t VezesFinalizada = 0;

    void Inicializa(const Ref<Geral> &oGeral) override
    {
        Chama(AoInicializar);
        Especifica::Inicializa(oGeral);
    }
    Ref<IForm> ClickMenu(const std::string &) override
    {
        Chama(AoClicar);
        return FormDoClique;
    }
    bool HabilitarItem(const std::string &sTool) override
    {
        return AoHabilitarItem ? AoHabilitarItem(sTool) : Especifica::HabilitarItem(sTool);
    }
    void HabilitarMenu() override
    {
        if (AoHabilitarMenu) {
            AoHabilitarMenu();
        } else {
            Especifica::HabilitarMenu();
        }
    }
    void Menu(ItensMenu &oItens) override
    {
        Chama(AoPedirMenu);
        oItens.insert(oItens.end(), Itens.begin(), Itens.end());
    }
    void MenuAuxiliar(ItensMenu &oItens) override
    {
        Chama(AoPedirMenuAuxiliar);
        oItens.insert(oItens.end(), Auxiliares.begin(), Auxiliares.end());
    }
    void LiberaServicos() noexcept override
    {
        Chama(AoLiberarServicos);
        Especifica::LiberaServicos();
    }
    Ref<Objeto> ModuloQMRAuxiliar() const override
    {
        Chama(AoPedirAuxiliar);
        return Auxiliar;
    }
    bool UsandoModuloQMRauxiliar() const override { return UsandoAuxiliar; }
    void Finaliza() override
    {
        ++VezesFinalizada;
        Chama(AoFinalizar);
    }
    Ref<ITransacao> ObtemTransacao(const std::string &sTransID) override
    {
        CodigosPedidos.push_back(sTransID);
        const auto transacao = Transacoes.find(sTransID);
        return transacao == Transacoes.end() ? Especifica::ObtemTransacao(sTransID) : transacao->second;
    }

  private:
    static void Chama(const std::function<void()> &acao)
    {
        if (acao) {
            acao();
        }
    }
};

// The shell of that module.
class GeralDeTeste : public Geral {
  public:
    Ref<EspecificaDeTeste> Particular = Novo<EspecificaDeTeste>();
    std::int32_t EspecificasCriadas = 0;
    std::function<void()> AoCriarEspecifica;

  protected:
    Ref<Especifica> CriaEspecifica() override
    {
        ++EspecificasCriadas;
        if (AoCriarEspecifica) {
            AoCriarEspecifica();
        }
        return Particular;
    }
};

// Global services that lack every member.
class GlobalSemMembros : public IcGlobal {
  public:
    std::string_view NomeTipo() const override { return "cGlobal"; }
};

inline Ref<ItemMenuModulo> ItemDeMenu(const std::string &nome, const std::string &band, bool nuncaDesabilitado = false,
                                      bool escondeDesabilitado = false, const std::string &subBand = "")
{
    auto item = Novo<ItemMenuModulo>();
    item->Name = nome;
    item->Band = band;
    item->SubBand = subBand;
    item->NeverDisabled = nuncaDesabilitado;
    item->HideWhenDisable = escondeDesabilitado;
    return item;
}
