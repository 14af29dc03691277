#include "windows/component/ItensDeMenu.h"

#include "windows/automation/Falhas.h"
#include "windows/automation/Valores.h"

#include <oleauto.h>

#include <utility>

namespace nativo {
namespace {

// An array in a value that does not own it.
VARIANT SemPosse(SAFEARRAY *arranjo)
{
    VARIANT variante{};
    V_VT(&variante) = VT_ARRAY | VT_DISPATCH;
    V_ARRAY(&variante) = arranjo;
    return variante;
}

// A host's item keeps its place without being looked at, for the module contributes none and asks for nothing of
// theirs.
ItensMenu LeItens(SAFEARRAY *arranjo)
{
    ItensMenu itens;
    for (const Variante &elemento : detalhe::LeArranjo(SemPosse(arranjo))) {
        const Com<IDispatch> objeto = LeObjeto(elemento.Bruta());
        if (const Ref<Objeto> nosso = Interno(objeto, Lado::Componente)) {
            itens.push_back(ComoTipo<ItemMenuModulo>(nosso));
        } else {
            itens.push_back(objeto ? Novo<Remoto<ItemMenuModulo>>(objeto) : nullptr);
        }
    }
    return itens;
}

bool Fixo(const SAFEARRAY &arranjo)
{
    constexpr USHORT fixos = FADF_AUTO | FADF_STATIC | FADF_EMBEDDED | FADF_FIXEDSIZE;
    return arranjo.cLocks > 0 || (arranjo.fFeatures & fixos) != 0;
}

} // namespace

void AlteraItens(SAFEARRAY **arranjo, const std::function<void(ItensMenu &)> &altera)
{
    if (arranjo == nullptr) {
        throw Falha(NumeroDe(E_POINTER));
    }
    ItensMenu itens = LeItens(*arranjo);
    const ItensMenu antes = itens;
    altera(itens);
    if (itens == antes) {
        return;
    }
    if (*arranjo != nullptr && Fixo(**arranjo)) {
        throw Falha(NumeroDe(DISP_E_ARRAYISLOCKED));
    }
    Variante novo = ParaVariante(itens);
    SAFEARRAY *antigo = std::exchange(*arranjo, V_ARRAY(&novo.Bruta()));
    V_ARRAY(&novo.Bruta()) = antigo; // ends with the value
}

} // namespace nativo
