#pragma once

#include "host/Falha.h"
#include "host/Registro.h"
#include "services/Segredo.h"
#include "services/SessaoServico.h"

#include <registro.pb.h>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace rede {

// What stands in a message, or should go into one, is nothing that the contract knows. what() is a sentence for the
// person, which has nothing of the value in it.
class MensagemInvalida : public std::runtime_error {
  public:
    explicit MensagemInvalida(const std::string &frase) : std::runtime_error(frase) {}
};

// Records that one message may hold, those within records counted: many times what any operation takes or answers.
inline constexpr std::size_t MaisRegistros = 200000;

// A record and the message of its name, both ways: members that were not written are fields that are not set, and the
// mark of the version goes along. The message is cleared before. MensagemInvalida when the message is not the record's,
// a text is not UTF-8 or has a null character in it, a number is none, a value does not fit
// its member, a list has an item that is Nothing, or there are more than MaisRegistros; what was in the message by then
// has lost its secrets.
void ParaMensagem(const Registro &registro, google::protobuf::Message &mensagem);
Ref<Registro> DeMensagem(const google::protobuf::Message &mensagem);

// Of the message that a class of records has; MensagemInvalida when none has that name.
const google::protobuf::Message &MensagemVazia(std::string_view registro);

// The marks of `lido` put onto `escrito`, which has the same records in the same places: what an operation that answers
// nothing leaves on what it was sent. MensagemInvalida when they differ in kind or number; nothing was marked then.
void PoeMarcas(const Registro &lido, Registro &escrito);

// Overwrites every secret (field of octets) in the message, those within messages included.
void LimpaSegredos(google::protobuf::Message &mensagem) noexcept;
// Writes a secret into a field of octets, without a copy of it anywhere else.
void PoeSegredo(const mesa::Segredo &segredo, std::string &campo);
// MensagemInvalida when a text anywhere in the message is not UTF-8 or has a null character, or a number is none.
void ConfereMensagem(const google::protobuf::Message &mensagem);
// Whether it is UTF-8 without a null character.
bool EhTexto(std::string_view octetos) noexcept;

// What the services answer besides records. Those that hold a record raise what it raises.
void ParaMensagem(const mesa::Operador &operador, registro::v1::Sessao &mensagem); // the other fields stay
void ParaMensagem(const mesa::ClienteCadastrado &cliente, registro::v1::ClienteDoOperador &mensagem);
void ParaMensagem(const mesa::LinhaReplica &linha, registro::v1::LinhaDaReplica &mensagem);
void ParaMensagem(const mesa::VersaoAfericao &versao, registro::v1::VersaoDaAfericaoED &mensagem);
void ParaMensagem(const mesa::EquipamentoConhecido &conhecido, registro::v1::EquipamentoConhecido &mensagem);
void ParaMensagem(const mesa::AfericaoComDocumento &afericao, registro::v1::AfericaoComDocumento &mensagem);
void ParaMensagem(const Falha &falha, registro::v1::Falha &mensagem);
mesa::Operador DeMensagem(const registro::v1::Sessao &mensagem);
mesa::ClienteCadastrado DeMensagem(const registro::v1::ClienteDoOperador &mensagem);
mesa::LinhaReplica DeMensagem(const registro::v1::LinhaDaReplica &mensagem);
mesa::VersaoAfericao DeMensagem(const registro::v1::VersaoDaAfericaoED &mensagem);
mesa::EquipamentoConhecido DeMensagem(const registro::v1::EquipamentoConhecido &mensagem);
mesa::AfericaoComDocumento DeMensagem(const registro::v1::AfericaoComDocumento &mensagem);
Falha DeMensagem(const registro::v1::Falha &mensagem);

} // namespace rede
