#pragma once

#include "services/SessaoServico.h"

#include <cstdint>
#include <string>

namespace mesa {

// What users, clients and sectors have to be, whoever registers them. What is given back is the text as it is stored:
// composed, and without blanks around or doubled. The rest is refused with a sentence.
namespace RegrasDeCadastro {

// Two sign-in names that differ only in case are the same one.
std::string ChaveDoUsuario(const std::string &usuario);
std::string Usuario(const std::string &usuario);
std::string NomeDaPessoa(const std::string &nome);
std::string NomeDoCliente(const std::string &nome);
std::string NomeDoSetor(const std::string &nome);
std::string Estado(const std::string &uf);
void CodigoDoCliente(std::int32_t codCliente);
// 0 for none.
void Municipio(std::int32_t codMunic);

} // namespace RegrasDeCadastro

} // namespace mesa
