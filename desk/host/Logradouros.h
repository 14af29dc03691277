#pragma once

#include "services/LogradouroED.h"
#include "services/SessaoServico.h"
#include "tela/ILogradouros.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace mesa {

// The streets of the registry, which the session of whoever is signed in is asked for, and the municipalities of the
// country, those of the client's own state first.
class LogradourosMesa : public ILogradouros {
  public:
    explicit LogradourosMesa(std::function<Ref<SessaoServico>()> sessao) : m_Sessao(std::move(sessao)) {}
    std::string_view NomeTipo() const override { return "LogradourosMesa"; }

    const std::vector<MunicipioDeEndereco> &Municipios() const override;
    std::vector<Logradouro> Procura(std::int32_t codMunic, const std::string &procurado,
                                    std::size_t maximo) const override;
    std::optional<Logradouro> PorCodigo(std::int32_t codigo) const override;

  private:
    std::vector<Logradouro> Pede(const Ref<ListaLogradourosED> &pedido) const;

    std::function<Ref<SessaoServico>()> m_Sessao;
    mutable std::map<std::string, std::vector<MunicipioDeEndereco>> m_Municipios; // by the state that comes first
};

} // namespace mesa
