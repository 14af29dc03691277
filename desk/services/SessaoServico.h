#pragma once

#include "host/Data.h"
#include "host/IPlataforma.h"
#include "host/Valor.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace mesa {

// Who is asking the services, as the sign-in found them.
struct Operador {
    std::int32_t Numero = 0;
    std::string Usuario; // sign-in name
    std::string Nome;
    std::int32_t CodCliente = 0;
    std::string Cliente;
    std::string Setor;
    std::int32_t CodMunic = 0; // municipality to which the logon is tied; 0 for none
};

// A client of the registry with its sectors.
struct ClienteCadastrado {
    std::int32_t CodCliente = 0;
    std::string Nome;
    std::vector<std::string> Setores;
    std::string UF = {}; // the state
};

// What the local replica holds of an equipment.
struct LinhaReplica {
    std::int32_t NroIntEquip = 0;
    std::string ClienteInc;
    std::string Codigo;
    std::string TipoEquip;
    std::int32_t Ativo = 0; // 1 yes, 2 no
};

// Asks somebody why what was stored is corrected; oQue says what, in a sentence. Nothing when it is not to be done.
using PerguntaDeMotivo = std::function<std::optional<std::string>(const std::string &oQue)>;

// A client's session with the services, from sign-in to sign-out. Everything is checked here again whatever the
// window allowed. A refusal is a sentence in Portuguese for the person; a failure of the machinery is a Falha. It
// remembers the version of each record that was read through it, so that a save over somebody else's change is refused.
class SessaoServico : public Objeto {
  public:
    std::string_view NomeTipo() const override { return "SessaoServico"; }

    virtual const mesa::Operador &Operador() const = 0;
    // The password was set by somebody else: until it is changed, nothing but "trocaMinhaSenha" is done.
    virtual bool DeveTrocarSenha() = 0;
    // What the sign-in found about the clock of this desk, in a sentence; empty when there is nothing to tell.
    virtual std::string AvisoDeRelogio() const = 0;
    virtual bool TemPermissao(const std::string &sistema, const std::string &objeto, const std::string &acao) = 0;

    // Runs one operation of "EquiptoRN", "RelatorioRN" or "AdministracaoRN" (RegistrosAdministracao.h) in one
    // transaction. pedido may be replaced. True on success, with the answer in retorno; false with the reason in
    // recusa. An operator sees and changes what is of his own client. An "altera" needs a "consulta" before it in this
    // session (or the "inclui"), a change of a limit or day a "consultaSimples...". Documento, in the answer of
    // "consultaRelatorioRVOR011", is the document as base64.
    virtual bool Executa(const std::string &classeRN, const std::string &metodo, Ref<Objeto> &pedido, Valor &retorno,
                         std::string &recusa) = 0;

    // Who is asked for the reason when an "altera" corrects calibrations that were stored: once, while nothing of the
    // registry is held, and only when everything else of the save is right. Without a reason nothing is stored. The
    // history has the reason with each correction.
    virtual void PerguntaMotivo(PerguntaDeMotivo pergunta) = 0;

    // Documents. Storing gives the number; both are false with the reason in recusa.
    virtual bool GuardaDocumento(const Bytes &bytes, double &numero, std::string &recusa) = 0;
    virtual bool LeDocumento(double numero, Bytes &bytes, std::string &recusa) = 0;

    // Clients that the operator may choose: his own, with its sectors in order of name.
    virtual std::vector<ClienteCadastrado> Clientes() = 0;
    // Every equipment of the operator's client, deactivated ones too, in order of number; and the moment of which it
    // tells. No row for an operator who may not look.
    virtual Data LeReplica(const std::function<void(const LinhaReplica &)> &cadaLinha) = 0;
};

// The state of the operator's client; empty when there is no such client any more.
std::string UFDoCliente(SessaoServico &sessao);

} // namespace mesa
