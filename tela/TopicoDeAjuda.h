#pragma once

#include "host/IForm.h"

#include <string>

// What the help is asked about in front of a form: its class, and with pages the one that is open, by its caption:
// "frmLista", "frmEquipDetalhes.Sensores".
std::string TopicoDeAjuda(const IForm &form);
