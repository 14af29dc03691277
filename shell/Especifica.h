#pragma once

#include "host/HostServices.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

class CVORPesqEquip;
class CVorEquip;
class Geral;

// What makes the shell this module: the equipment registry.
class Especifica : public Objeto {
  public:
    std::string_view NomeTipo() const override { return "Especifica"; }

    // The face to the host and to other modules, in the order of its interface.

    virtual void Inicializa(const Ref<Geral> &oGeral);
    // The form to be shown for a click; Nothing, as always here, when there is none or the click was handled. Shows its
    // own failures.
    virtual Ref<IForm> ClickMenu(const std::string &sTool);
    virtual bool HabilitarItem(const std::string &sTool);
    virtual void HabilitarMenu();
    virtual void Menu(ItensMenu &oItens);
    virtual void MenuAuxiliar(ItensMenu &oItens);
    virtual Ref<CVORPesqEquip> CreateCVORPesqEquip();
    virtual Ref<CVorEquip> CreateCVorEquip();
    // Deprecated: raises fault -1.
    [[noreturn]] virtual void ImprimeAfericaoVigenteEquipto(std::int32_t lSamdInfr,
                                                            std::optional<std::int32_t> lNroIntEquipto = std::nullopt,
                                                            std::optional<std::int32_t> lCodOat = std::nullopt,
                                                            std::optional<std::string> sSerie = std::nullopt);

    // For the shell alone.

    virtual void LiberaServicos() noexcept;
    // Gives the session to the host's library and reads the logon's credential. Shows its own failures.
    virtual void EfetuaLogon();
    // Identity in the data dictionary.
    virtual std::string SistemaQMR() const { return "VOR"; }
    virtual std::int16_t VersaoSistemaQMR() const { return 1; }
    virtual std::string QMRModuloID() const { return "VOR"; }
    virtual std::int16_t QMRVersaoModulo() const { return 1; }
    virtual Ref<Objeto> ModuloQMRAuxiliar() const { return {}; }
    virtual bool UsandoModuloQMRauxiliar() const { return true; }
    virtual void Finaliza() {}
    // A transaction of the module by its code. Fault 438, as here, in a module that has none.
    virtual Ref<ITransacao> ObtemTransacao(const std::string &sTransID);
};
