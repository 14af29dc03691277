#pragma once

#include "windows/automation/Colecoes.h"

#include <string_view>
#include <vector>

namespace nativo {

// Remote records. Which members are written is told with them: one that is not is empty to whoever reads it, an absent
// list Nothing, and an empty member leaves ours unwritten. The service's mark (VersaoLida) goes along under its name,
// where the other side has such a member.

namespace detalhe {

// Tells the members of the records and of collections, once.
void OfereceTiposProprios();

} // namespace detalhe

// A new record by the name of its class; Nothing when there is no such record.
Ref<Registro> NovoRegistro(std::string_view classe);

// The record as the library's class, "ZTVORLIB." and its name, when that is registered: a copy. Our own automation
// object otherwise, which is the record itself.
Com<IDispatch> OfereceRegistro(const Ref<Registro> &registro, Lado lado = Lado::Componente);

// The record that a foreign object is: our own one, or a copy. classe: which record it is to be; one whose class tells
// that it is another is that other.
Ref<Registro> LeRegistro(const Com<IDispatch> &objeto, std::string_view classe, Lado lado = Lado::Componente);

// The array of parameters of a remote call: general values, of which those that are references refer to the caller's
// variables. While it lives, `Arranjo` is the argument by reference; afterwards `Devolve` puts into the variables what
// the called object has left in them.
class ParametrosRemotos {
  public:
    explicit ParametrosRemotos(std::vector<Valor> &parametros, Lado lado = Lado::Componente);
    ParametrosRemotos(const ParametrosRemotos &) = delete;
    ParametrosRemotos &operator=(const ParametrosRemotos &) = delete;

    VARIANT Arranjo();
    void Devolve();

  private:
    struct Variavel {
        Ref<::Objeto> *Alvo = nullptr;
        Com<IDispatch> Enviado;
        Com<IDispatch> Atual;
    };

    Lado m_Lado;
    std::vector<Variavel> m_Variaveis;
    Variante m_Arranjo;
};

} // namespace nativo
