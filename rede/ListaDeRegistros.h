#pragma once

#include "host/AfericaoED.h"
#include "host/ConsultaAfericaoED.h"
#include "host/DiaEspecificoED.h"
#include "host/EquiptoED.h"
#include "host/LimiteDifED.h"
#include "host/ListaEquiptoED.h"
#include "host/RelatorioAfericaoED.h"
#include "host/SensorED.h"
#include "services/LayoutED.h"
#include "services/LogradouroED.h"
#include "services/PrazosED.h"
#include "services/RegistrosAdministracao.h"

#include <tuple>

namespace rede {

// Every record that travels, none of them ever made here: what is asked of them all is asked of this list.
template <class... R> struct TiposDeRegistro {
    // Calls `visita.template operator()<R>()` for each.
    template <class Visita> static void Cada(Visita &&visita) { (visita.template operator()<R>(), ...); }
};

using Registros =
    TiposDeRegistro<AfericaoED, ConsultaAfericaoED, DiaEspecificoED, EquiptoED, LimiteDifED, ListaEquiptoED,
                    RelatorioAfericaoED, SensorED, mesa::LayoutED, mesa::ListaLayoutsED, mesa::LogradouroED,
                    mesa::ListaLogradourosED, mesa::LinhaRecusadaED, mesa::ImportacaoED, mesa::DireitoED,
                    mesa::UsuarioED, mesa::ListaUsuariosED, mesa::TrocaSenhaED, mesa::SetorED, mesa::ClienteED,
                    mesa::ListaClientesED, mesa::EntradaRecusadaED, mesa::ListaEntradasED, mesa::ContagemPrazoED,
                    mesa::MesPrazoED, mesa::FalhaPrazoED, mesa::DocumentoPrazoED, mesa::PainelPrazosED, mesa::PrazoED,
                    mesa::ListaPrazosED, mesa::DocumentosPrazosED>;

} // namespace rede
