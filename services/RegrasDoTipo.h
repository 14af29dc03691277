#pragma once

#include <string_view>

namespace mesa {

// What equipment of a type has, and what has to be told of it.
struct RegrasDoTipo {
    bool PedeMunicipio = false;
    bool TemLayout = false;
    bool TemVelocidade = false;
    bool TemLimites = false;
    bool TemHorariosProibidos = false;
    bool TemObservacao = false;
    bool ViaNaGeracao = false; // the type of road may be left to the making of the photo bank
    bool TemAfericoes = false;
    bool TemDeclaracoes = false; // calibrations that are declarations of conformity
    bool TemSensores = false;    // numbered, each with its place; otherwise calibrations hang on a first one
};

RegrasDoTipo RegrasDe(std::string_view tipoEquip);

} // namespace mesa
