#pragma once

#include "host/IAplicacaoHost.h"
#include "windows/automation/Com.h"

#include <ZTAVOREQUIP.h>

#include <functional>
#include <string>
#include <vector>

namespace nativo {

// The least of a host that the shell can be driven with, as the foreign objects that the component sees.
class HospedeiroDeTeste {
  public:
    HospedeiroDeTeste();

    // An object without members, of which the component needs none here.
    static Com<IDispatch> Coisa();

    // Parametros and Logon through the interface's table.
    HRESULT Configura(_Geral &geral) const;
    HRESULT Entra(_Geral &geral) const;

    Com<IDispatch> MenuDestino = Coisa();
    Com<IDispatch> Relatorios = Coisa();
    Com<IDispatch> Ajuda = Coisa();
    Com<IDispatch> MDB = Coisa();
    Com<IDispatch> oAppEXE;
    Com<IDispatch> objMTM = Coisa();
    Com<IDispatch> objSCA;

    bool Logado = false;                     // what objSCA says
    std::function<void()> AoPerguntarLogado; // run when it is asked
    std::vector<std::string> Permissoes;     // that were asked, joined by "/"
};

} // namespace nativo
