#pragma once

#include "host/HostServices.h"

#include <cstdint>
#include <map>
#include <typeindex>

class Geral;

// All that the component keeps from one call of its host to the next. There is one set per loaded component.
struct Componente {
    Ref<HostServices> Host;
    RefFraca<Geral> Shell;
    std::int32_t Credencial = 0;
    std::int32_t CodMunicLogon = 0;
    Ref<IMensagem> Mensagem;
    Ref<IDadosVor> DadosVor;
    Ref<IDiretorios> Diretorios;
    Ref<IGateway> Gateway;
    Ref<IObjGlobalVor> ObjGlobalVor;
    std::map<std::type_index, Ref<IForm>> Forms; // the shared instances
    std::int64_t UltimoHwnd = 0;                 // the window handle given last
};

Componente &EsteComponente() noexcept;
