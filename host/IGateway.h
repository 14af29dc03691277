#pragma once

#include "host/Valor.h"

#include <string>
#include <vector>

// Local end of a remote service.
class IProxyRN : public Objeto {
  public:
    // Result of the last call that succeeded: a record or a list.
    virtual Valor ObtemRetorno() = 0;
    // Shows the person why the last call was refused.
    virtual void MostraErro() = 0;
    // Runs an operation with one record. aParam[0] refers to the caller's variable, in which the remote side may put
    // another object. True on success; false is a refusal, which MostraErro words. Raises when the machinery fails.
    virtual bool ExecutaMetodo(Ref<Objeto> &oContexto, std::string &sMetodo, std::vector<Valor> &aParam) = 0;
};

class IGateway : public Objeto {
  public:
    // sSistema "VOR"; sClasseRN "EquiptoRN" or "RelatorioRN"; sBiblioteca "ZTVORLIB"; sCanal "4".
    virtual Ref<IProxyRN> CriaObjetoRN(const std::string &sSistema, const std::string &sClasseRN,
                                       const std::string &sBiblioteca, const std::string &sCanal) = 0;
};
