#pragma once

#include "host/Ref.h"
#include "services/Instante.h"
#include "services/Segredo.h"
#include "services/Senhas.h"
#include "services/SessaoServico.h"

#include <cstdint>
#include <string>
#include <vector>

namespace mesa {

// A sample is told apart for ever: its users are known to everybody.
enum class TipoDeRegistro { Registro = 1, Amostra = 2 };

// The services over one registry. Opening brings its schema up to date and never makes one; a registry that cannot be
// opened, is not there, is something else, or is of a newer version, raises a Falha with a sentence for the person.
class Servicos : public Objeto {
  public:
    std::string_view NomeTipo() const override { return "Servicos"; }

    // caminho: file of the embedded database, or connection text of the networked one ("postgresql://...", see
    // DialetoPostgres). agora: the clock; every moment written comes from it. A registry whose
    // schema is about to change is copied before, into pastaDasCopias or, without one, Copia::PastaPadrao.
    static Ref<Servicos> Abre(const std::string &caminho, Relogio agora, const CustoDaSenha &custo = {},
                              const std::string &pastaDasCopias = "");
    // A new registry with nobody in it. Fault 58 where there is a file of that name, or anything in the database.
    static Ref<Servicos> Cria(const std::string &caminho, TipoDeRegistro tipo, Relogio agora,
                              const CustoDaSenha &custo = {});

    // Signs in. estacao: what tells this desk from others. Nothing with the reason in recusa. Wrong passwords slow
    // down: `espera` is the number of seconds for which this user is not tried again here, 0 for none.
    virtual Ref<SessaoServico> Entra(const std::string &usuario, const Segredo &senha, const std::string &estacao,
                                     std::string &recusa, std::int32_t &espera) = 0;

    // Whether corrections of stored calibrations are refused in sessions that have nobody to ask for the reason
    // (SessaoServico::PerguntaMotivo); otherwise the history has "sem motivo" with them, as at first. For sessions that
    // begin afterwards.
    virtual void ExigeMotivo(bool exige) = 0;

    // The first client of a registry in which there is no user yet, and who administers it, with every right. All or
    // nothing: false with the reason in recusa. Of quem its sign-in name, name, sector and municipality are taken.
    virtual bool PrimeiroAdministrador(const ClienteCadastrado &cliente, const Operador &quem, const Segredo &senha,
                                       std::string &recusa) = 0;

    // Creates a user with a permission for each action ("" looks, "I", "A", "E"), and for each one of administration
    // ("U" users and clients, "T" tables, "C" check and copies), whatever the password; used by the sample and by the
    // tests.
    virtual void CadastraUsuario(const Operador &operador, const Segredo &senha, const std::vector<std::string> &acoes,
                                 const std::vector<std::string> &administra = {}) = 0;
    virtual void CadastraCliente(const ClienteCadastrado &cliente) = 0;
    virtual bool Vazio() = 0; // no user was ever registered

    // Why the registry may only be looked at, as a sentence: the file or its disk takes no writes. Empty when it may be
    // worked on.
    virtual const std::string &SomenteLeitura() const = 0;

    virtual TipoDeRegistro Tipo() const = 0;
    // What tells this registry from all others, for ever.
    virtual std::string Identificador() const = 0;
};

} // namespace mesa
