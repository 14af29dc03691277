#pragma once

#include "host/AfericaoED.h"
#include "host/Data.h"
#include "host/EquiptoED.h"
#include "host/IPlataforma.h"
#include "host/Valor.h"
#include "services/Instante.h"
#include "services/Segue.h"

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

// Of what a replica tells that was read.
struct Replicado {
    Data DeQuando;
    std::int64_t Ate = 0;     // number of the history's last entry at that moment
    std::int64_t Quantas = 0; // rows that were handed over
    std::string Elo = {};     // hash of that entry
    // Hash of the entry after which it was asked for, empty where there is none: when it is not the one that came with
    // that number, what was read then is not what this registry held.
    std::string EloDeAntes = {};
};

// A version of a calibration, as the history has it.
struct VersaoAfericao {
    std::int64_t Versao = 0;          // from 1
    std::string Quem;                 // name; empty for the system itself
    std::int64_t Quando = 0;          // yyyymmddhhmmss by the clock of the place
    std::optional<std::int32_t> Fuso; // that clock's, in minutes; an older registry did not keep it
    std::string Acao;                 // inclui, altera, desativa, reativa; migra: as an older registry left it
    std::string Motivo;               // of a correction
    Ref<AfericaoED> Registro;
};

// What the registry held of an equipment at an earlier moment.
struct EquipamentoConhecido {
    Ref<EquiptoED> Registro; // with all its rows, those that were no longer active too
    std::string Ressalva;    // what the history of that time cannot tell; empty when it tells everything
};

// A calibration that has a document.
struct AfericaoComDocumento {
    std::string Equipamento; // its code
    std::string Certificado; // its number
    std::uint8_t Tipo = 0;   // 2 for a declaration
};

// Asks somebody why what was stored is corrected; oQue says what, in a sentence. Nothing when it is not to be done.
using PerguntaDeMotivo = std::function<std::optional<std::string>(const std::string &oQue)>;

// A client's session with the services, from sign-in to sign-out. Everything is checked here again whatever the
// window allowed. A refusal is a sentence in Portuguese for the person; a failure of the machinery is a Falha. What is
// read carries the mark of its version (Registro::VersaoLida), and a change has to bring it back, so that a save over
// somebody else's change is refused.
class SessaoServico : public Objeto {
  public:
    std::string_view NomeTipo() const override { return "SessaoServico"; }

    virtual const mesa::Operador &Operador() const = 0;
    // The password was set by somebody else: until it is changed, nothing but "trocaMinhaSenha" is done.
    virtual bool DeveTrocarSenha() = 0;
    // What the sign-in found about the clock of this desk, in a sentence; empty when there is nothing to tell.
    virtual std::string AvisoDeRelogio() const = 0;
    virtual bool TemPermissao(const std::string &sistema, const std::string &objeto, const std::string &acao) = 0;

    // Runs one operation of "EquiptoRN", "RelatorioRN", "PrazosRN" (PrazosED.h) or "AdministracaoRN"
    // (RegistrosAdministracao.h) in one transaction. pedido may be replaced. True on success, with the answer in
    // retorno; false with the reason in recusa. An operator sees and changes what is of his own client. What changes or
    // deactivates a row brings the mark with which the row was answered, and has the new one when it is done.
    // Documento, in the answer of "consultaRelatorioRVOR011", is the document as base64.
    virtual bool Executa(const std::string &classeRN, const std::string &metodo, Ref<Objeto> &pedido, Valor &retorno,
                         std::string &recusa) = 0;

    // Who is asked for the reason when an "altera" corrects calibrations that were stored: once, while nothing of the
    // registry is held, and only when everything else of the save is right. Without a reason nothing is stored. The
    // history has the reason with each correction.
    virtual void PerguntaMotivo(PerguntaDeMotivo pergunta) = 0;

    // Told how far an operation is that may take long: documents, the import of a table, deadlines, the replica. Giving
    // up is a refusal, and nothing of it is stored. Empty: nobody is told.
    virtual void Acompanha(Segue segue) = 0;

    // Documents. Storing gives the number; both are false with the reason in recusa.
    virtual bool GuardaDocumento(const Bytes &bytes, double &numero, std::string &recusa) = 0;
    virtual bool LeDocumento(double numero, Bytes &bytes, std::string &recusa) = 0;
    // The calibrations of the operator's client that have the document, or whose document the one of that number has.
    virtual std::vector<AfericaoComDocumento> AfericoesDoDocumento(double numero) = 0;
    virtual std::vector<AfericaoComDocumento> AfericoesDoDocumentoDa(double nroIntAfericao) = 0;

    // The versions of a calibration, the first first; false with the reason in recusa.
    virtual bool VersoesDaAfericao(double nroIntAfericao, std::vector<VersaoAfericao> &versoes,
                                   std::string &recusa) = 0;
    // The equipment with all its rows as the registry held it at that moment, from the history alone; false with the
    // reason in recusa. For a registry of an older kind it tells as much as the old entries do.
    virtual bool ComoConhecido(std::int32_t nroIntEquip, const Instante &quando, EquipamentoConhecido &conhecido,
                               std::string &recusa) = 0;

    // Clients that the operator may choose: his own, with its sectors in order of name.
    virtual std::vector<ClienteCadastrado> Clientes() = 0;
    // The equipment of the operator's client, deactivated ones too, each once, that the history has an entry of after
    // that number; all of it after 0. One moment of the registry, which stays held meanwhile. No row, and of no entry,
    // for an operator who may not look. An empty moment when it was given up on the way.
    virtual Replicado LeReplica(std::int64_t depoisDe, const std::function<void(const LinhaReplica &)> &cadaLinha) = 0;
};

// A session tells how far it is while this lives.
class Acompanhamento {
  public:
    Acompanhamento(SessaoServico &sessao, Segue segue) : m_Sessao(sessao) { m_Sessao.Acompanha(std::move(segue)); }
    Acompanhamento(const Acompanhamento &) = delete;
    Acompanhamento &operator=(const Acompanhamento &) = delete;
    ~Acompanhamento() { m_Sessao.Acompanha({}); }

  private:
    SessaoServico &m_Sessao;
};

// The state of the operator's client; empty when there is no such client any more.
std::string UFDoCliente(SessaoServico &sessao);

} // namespace mesa
