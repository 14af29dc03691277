#include "comando/DesfechoDaCopia.h"

#include <ostream>

namespace comando {

Codigo Conta(const mesa::DesfechoDeComando &desfecho, Ambiente &ambiente)
{
    ambiente.Erros << desfecho.Texto;
    if (desfecho.Como.Feita) {
        return Codigo::Feito;
    }
    if (desfecho.Como.Cancelada) {
        return Codigo::Interrompido;
    }
    if (desfecho.Como.SoPorSerDeOutro) {
        return Codigo::Recusado;
    }
    return desfecho.Como.Achados.empty() ? Codigo::NaoAlcancado : Codigo::Nao;
}

} // namespace comando
