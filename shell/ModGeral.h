#pragma once

#include "host/AfericaoED.h"
#include "host/HostServices.h"
#include "shell/Coluna.h"
#include "shell/Componente.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <typeindex>

// State and procedures that all classes of the component share.

// The shell, through which every class reaches the host. Never cleared; it reads as Nothing once the shell has ended,
// for the host alone owns it.
extern RefFraca<Geral> &goGeral;
// Numbers of the logon's credential. The second is a municipality, 0 for none.
extern std::int32_t &glCredencial;
extern std::int32_t &glCodMunicLogon;

// The host's singletons, each created on first use and kept until LiberaServicos.
Ref<IMensagem> goMensagem();
Ref<IDadosVor> goDadosVor();
Ref<IDiretorios> goDiretorios();
Ref<IGateway> goGateway();
// Created on first use and kept.
Ref<IObjGlobalVor> ObjGlobalVor();
// Finalises and clears goDadosVor, and clears the other singletons; errors ignored.
void LiberaServicos() noexcept;
// What unloading the component does: every object and value above is dropped, without finalising anything. The host
// stays installed. For the host, once its shell has ended.
void DescarregaModulo() noexcept;

// Reporting tail: the end of every error chain. Sets the pointer back to the default and shows the fault being handled.
// Only valid inside a catch block. Raises nothing.
void gSubMostraErro(std::string_view sContexto) noexcept;
// The same with a fault's parts.
void gSubMostraErro(std::string_view sContexto, std::int32_t lNumero, const std::string &sDescricao,
                    const std::string &sFonte) noexcept;

// Whether the person who is logged on may do it with the module's records: "" looks, "I" includes, "A" changes, "E"
// excludes.
bool TemPermissao(const std::string &acao);

// Description of an equipment type code, and of a meter type code; "Indefinido" for any other.
std::string gFunDescrEquipto(const std::string &sTipo);
std::string gFunDescrTipoAgente(std::int16_t iTipo);

// Adds the municipalities to a combo, "name|code". Shows its own failures.
void gSubCarregaMunicipios(const Ref<IztCombo> &cbo);
// Empties a combo and fills it with "NENHUM" and the names of the layout files. Shows its own failures.
void gSubCarregaArqLayout(const Ref<IztCombo> &cbo);
// Gives a list its columns.
void gsubConfigLista(const TabelaColunas &aColunas, const Ref<IztList> &lista);
// The calibration in force for an equipment on a day; Nothing when the service refused. An answer whose NroIntAfericao
// is 0 means that none was in force.
Ref<AfericaoED> gFunConsultaAfericaoVigente(std::int32_t lNroIntEquip, Data dtInfracao,
                                            const Valor &vTipoConsulta = {});
// Gives a control or form the focus when it is enabled and visible; a minimised form is restored. Errors ignored.
void gSubDefineFoco(const Ref<IFocavel> &ctl) noexcept;

// The module's one shared instance of a form, created on first use and kept until LiberaFormsCompartilhados. Whoever
// got it keeps it alive: the shell may end while the form is shown.
template <class Form> Ref<Form> FormCompartilhado();
// Drops the shared instances; called when the shell ends.
void LiberaFormsCompartilhados() noexcept;

template <class Form> Ref<Form> FormCompartilhado()
{
    Ref<IForm> &instancia = EsteComponente().Forms[typeid(Form)];
    if (instancia.Nada()) {
        instancia = Novo<Form>();
    }
    return ComoTipo<Form>(instancia);
}
