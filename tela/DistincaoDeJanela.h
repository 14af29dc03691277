#pragma once

#include "host/IForm.h"

#include <string>

// Which of the windows that show forms of one class a window is, as the host knows that opened it. Empty where the
// class says enough.
struct DistincaoDeJanela {
    std::string Chave; // "fotografico": for the computer
    std::string Texto; // "trabalho fotográfico": for the person, beside the form's caption
};

// Under which the screen remembers how a person works with such windows: "frmLista.fotografico".
std::string IdentidadeDaJanela(const IForm &form, const DistincaoDeJanela &qual);
// What the frame says of a form that calls itself so: "Equipamentos - trabalho fotográfico".
std::string TextoDaMoldura(const std::string &texto, const DistincaoDeJanela &qual);
