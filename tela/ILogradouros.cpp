#include "tela/ILogradouros.h"

std::string Logradouro::Descricao(std::int32_t numero, const std::string &complemento) const
{
    if (Nome.empty()) {
        return {};
    }
    std::string texto = Nome;
    if (numero > 0) {
        texto += ", " + std::to_string(numero);
    }
    if (!complemento.empty()) {
        texto += " - " + complemento;
    }
    return Bairro.empty() ? texto : texto + " - " + Bairro;
}
