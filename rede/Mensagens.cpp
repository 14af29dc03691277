#include "rede/Mensagens.h"

#include "rede/ListaDeRegistros.h"

#include <google/protobuf/descriptor.h>
#include <google/protobuf/message.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <map>
#include <type_traits>
#include <utility>
#include <vector>

namespace rede {

namespace {

namespace v1 = registro::v1;
using google::protobuf::Descriptor;
using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using google::protobuf::Reflection;

constexpr const char *MarcaDaVersao = "VersaoLida";
constexpr const char *Itens = "Itens";
constexpr const char *Nada = "Nada";

std::string Onde(const FieldDescriptor &campo)
{
    return "O campo " + campo.name() + " de " + campo.containing_type()->name();
}

const FieldDescriptor &CampoDe(const Descriptor &mensagem, const std::string &nome)
{
    const FieldDescriptor *campo = mensagem.FindFieldByName(nome);
    if (campo == nullptr) {
        throw MensagemInvalida("O contrato não tem o campo " + nome + " de " + mensagem.name() + ".");
    }
    return *campo;
}

// The message's type of a record, and its fields in the order of the members, the mark last.
template <class R> struct Forma {
    const Descriptor *Tipo = v1::Vazio::descriptor()->file()->FindMessageTypeByName(std::string(R::Nome));
    std::vector<const FieldDescriptor *> Campos;

    static const Forma &Unica()
    {
        static const Forma forma;
        return forma;
    }

  private:
    Forma()
    {
        if (Tipo == nullptr) {
            throw MensagemInvalida("O contrato não tem o registro " + std::string(R::Nome) + ".");
        }
        Novo<R>()->CadaMembro(
            [&](std::string_view nome, const auto &) { Campos.push_back(&CampoDe(*Tipo, std::string(nome))); });
        Campos.push_back(&CampoDe(*Tipo, MarcaDaVersao));
    }
};

template <class R> const Forma<R> &FormaDa(const Message &mensagem)
{
    const auto &forma = Forma<R>::Unica();
    if (mensagem.GetDescriptor() != forma.Tipo) {
        throw MensagemInvalida("Veio uma mensagem " + mensagem.GetDescriptor()->name() + " onde se esperava " +
                               std::string(R::Nome) + ".");
    }
    return forma;
}

const std::string &ExigeTexto(const std::string &texto, const FieldDescriptor &campo)
{
    if (!EhTexto(texto)) {
        throw MensagemInvalida(Onde(campo) + " tem caracteres que não são texto.");
    }
    return texto;
}

double ExigeNumero(double numero, const FieldDescriptor &campo)
{
    if (!std::isfinite(numero)) {
        throw MensagemInvalida(Onde(campo) + " não é um número.");
    }
    return numero;
}

template <class T> T ExigeQueCaiba(std::int64_t numero, const FieldDescriptor &campo)
{
    if (!std::in_range<T>(numero)) {
        throw MensagemInvalida(Onde(campo) + " vale " + std::to_string(numero) + ", fora do que ele comporta (" +
                               std::to_string(std::numeric_limits<T>::min()) + " a " +
                               std::to_string(std::numeric_limits<T>::max()) + ").");
    }
    return static_cast<T>(numero);
}

// Counts the records on the way.
class Contagem {
  public:
    void MaisUm()
    {
        if (++m_Registros > MaisRegistros) {
            throw MensagemInvalida("A mensagem tem mais de " + std::to_string(MaisRegistros) + " registros.");
        }
    }

  private:
    std::size_t m_Registros = 0;
};

std::string &OctetosNoLugar(Message &mensagem, const FieldDescriptor &campo)
{
    std::string sem;
    const std::string &octetos = mensagem.GetReflection()->GetStringReference(mensagem, &campo, &sem);
    return const_cast<std::string &>(octetos); // the message itself may be written to
}

template <class R> void Escreve(const R &registro, Message &mensagem, Contagem &contagem);
template <class R> Ref<R> Le(const Message &mensagem, Contagem &contagem);

template <class T>
void EscreveValor(const T &valor, Message &mensagem, const FieldDescriptor &campo, Contagem &contagem)
{
    const Reflection &reflexo = *mensagem.GetReflection();
    if constexpr (DetalheRegistro::EhListaDe<T>::value) {
        Message &lista = *reflexo.MutableMessage(&mensagem, &campo);
        if (valor.Nada()) {
            lista.GetReflection()->SetBool(&lista, &CampoDe(*lista.GetDescriptor(), Nada), true);
            return;
        }
        const FieldDescriptor &itens = CampoDe(*lista.GetDescriptor(), Itens);
        for (std::int32_t posicao = 1; posicao <= valor->Count(); ++posicao) {
            const auto &item = valor->Item(posicao);
            if (item.Nada()) {
                throw MensagemInvalida(Onde(campo) + " tem um item que não é registro nenhum.");
            }
            Escreve(*item, *lista.GetReflection()->AddMessage(&lista, &itens), contagem);
        }
    } else if constexpr (std::is_same_v<T, std::string>) {
        reflexo.SetString(&mensagem, &campo, ExigeTexto(valor, campo));
    } else if constexpr (std::is_same_v<T, mesa::Segredo>) {
        if (valor.Vazio()) {
            reflexo.SetString(&mensagem, &campo, std::string());
            return;
        }
        reflexo.SetString(&mensagem, &campo, std::string(valor.Texto().size(), ' '));
        std::memcpy(OctetosNoLugar(mensagem, campo).data(), valor.Texto().data(), valor.Texto().size());
    } else if constexpr (std::is_same_v<T, Data>) {
        reflexo.SetDouble(&mensagem, &campo, ExigeNumero(valor.Valor, campo));
    } else if constexpr (std::is_same_v<T, double>) {
        reflexo.SetDouble(&mensagem, &campo, ExigeNumero(valor, campo));
    } else if constexpr (std::is_same_v<T, std::uint8_t>) {
        reflexo.SetUInt32(&mensagem, &campo, valor);
    } else {
        static_assert(std::is_same_v<T, std::int32_t> || std::is_same_v<T, std::int16_t>);
        reflexo.SetInt32(&mensagem, &campo, valor);
    }
}

template <class T> T LeValor(const Message &mensagem, const FieldDescriptor &campo, Contagem &contagem)
{
    const Reflection &reflexo = *mensagem.GetReflection();
    if constexpr (DetalheRegistro::EhListaDe<T>::value) {
        const Message &lista = reflexo.GetMessage(mensagem, &campo);
        const FieldDescriptor &itens = CampoDe(*lista.GetDescriptor(), Itens);
        const int quantos = lista.GetReflection()->FieldSize(lista, &itens);
        if (lista.GetReflection()->GetBool(lista, &CampoDe(*lista.GetDescriptor(), Nada))) {
            if (quantos > 0) {
                throw MensagemInvalida(Onde(campo) + " diz que não há lista, e tem itens.");
            }
            return {};
        }
        T valor = Novo<Colecao<Ref<typename DetalheRegistro::EhListaDe<T>::Item>>>();
        for (int posicao = 0; posicao < quantos; ++posicao) {
            valor->Add(Le<typename DetalheRegistro::EhListaDe<T>::Item>(
                lista.GetReflection()->GetRepeatedMessage(lista, &itens, posicao), contagem));
        }
        return valor;
    } else if constexpr (std::is_same_v<T, std::string>) {
        std::string sem;
        return ExigeTexto(reflexo.GetStringReference(mensagem, &campo, &sem), campo);
    } else if constexpr (std::is_same_v<T, mesa::Segredo>) {
        std::string sem;
        const std::string &octetos = reflexo.GetStringReference(mensagem, &campo, &sem);
        ExigeTexto(octetos, campo);
        return mesa::Segredo(octetos);
    } else if constexpr (std::is_same_v<T, Data>) {
        return Data{ExigeNumero(reflexo.GetDouble(mensagem, &campo), campo)};
    } else if constexpr (std::is_same_v<T, double>) {
        return ExigeNumero(reflexo.GetDouble(mensagem, &campo), campo);
    } else if constexpr (std::is_same_v<T, std::uint8_t>) {
        return ExigeQueCaiba<T>(reflexo.GetUInt32(mensagem, &campo), campo);
    } else {
        return ExigeQueCaiba<T>(reflexo.GetInt32(mensagem, &campo), campo);
    }
}

template <class R> void Escreve(const R &registro, Message &mensagem, Contagem &contagem)
{
    const auto &forma = FormaDa<R>(mensagem);
    contagem.MaisUm();
    auto campo = forma.Campos.begin();
    registro.CadaMembro([&](std::string_view, const auto &membro) {
        if (membro.Escrito()) {
            EscreveValor(membro.Valor(), mensagem, **campo, contagem);
        }
        ++campo;
    });
    mensagem.GetReflection()->SetInt64(&mensagem, *campo, registro.VersaoLida);
}

template <class R> Ref<R> Le(const Message &mensagem, Contagem &contagem)
{
    const auto &forma = FormaDa<R>(mensagem);
    contagem.MaisUm();
    auto registro = Novo<R>();
    auto campo = forma.Campos.begin();
    registro->CadaMembro([&]<class T>(std::string_view, Campo<T> &membro) {
        if (mensagem.GetReflection()->HasField(mensagem, *campo)) {
            membro = LeValor<T>(mensagem, **campo, contagem);
        }
        ++campo;
    });
    registro->VersaoLida = mensagem.GetReflection()->GetInt64(mensagem, *campo);
    return registro;
}

// Puts `lido`'s marks on `escrito`, or, as a first look, only goes along both.
template <class R> void Marca(const R &lido, R &escrito, bool marca)
{
    if (marca) {
        escrito.VersaoLida = lido.VersaoLida;
    }
    std::apply(
        [&](const auto &...membro) {
            const auto lista = [&]<class T>(const Campo<T> &de, const Campo<T> &para) {
                if constexpr (DetalheRegistro::EhListaDe<T>::value) {
                    const bool ha = de.Escrito() && !de.Valor().Nada();
                    if (ha != (para.Escrito() && !para.Valor().Nada()) ||
                        (ha && de.Valor()->Count() != para.Valor()->Count())) {
                        throw MensagemInvalida("A resposta não tem os registros do pedido.");
                    }
                    for (std::int32_t posicao = 1; ha && posicao <= de.Valor()->Count(); ++posicao) {
                        Marca(*de.Valor()->Item(posicao), *para.Valor()->Item(posicao), marca);
                    }
                }
            };
            (lista(lido.*membro.Onde, escrito.*membro.Onde), ...);
        },
        R::Membros());
}

// What is done with a record of which only the name is known.
struct Trato {
    const Message *Vazia;
    void (*Escreve)(const Registro &, Message &, Contagem &);
    Ref<Registro> (*Le)(const Message &, Contagem &);
    void (*Marca)(const Registro &, Registro &);
};

// De: Registro or const Registro.
template <class R, class De> R &Como(De &registro)
{
    auto *como = dynamic_cast<R *>(&registro);
    if (como == nullptr) {
        throw MensagemInvalida("Um registro diz ser " + std::string(R::Nome) + " e não é.");
    }
    return *como;
}

template <class R> Trato TratoDe()
{
    return {google::protobuf::MessageFactory::generated_factory()->GetPrototype(Forma<R>::Unica().Tipo),
            [](const Registro &registro, Message &mensagem, Contagem &contagem) {
                Escreve(Como<const R>(registro), mensagem, contagem);
            },
            [](const Message &mensagem, Contagem &contagem) -> Ref<Registro> { return Le<R>(mensagem, contagem); },
            [](const Registro &lido, Registro &escrito) {
                Marca(Como<const R>(lido), Como<R>(escrito), false);
                Marca(Como<const R>(lido), Como<R>(escrito), true);
            }};
}

const Trato &TratoDo(std::string_view nome)
{
    static const auto tratos = [] {
        std::map<std::string, Trato, std::less<>> todos;
        Registros::Cada([&]<class R>() { todos.emplace(R::Nome, TratoDe<R>()); });
        return todos;
    }();
    const auto trato = tratos.find(nome);
    if (trato == tratos.end()) {
        throw MensagemInvalida("O contrato não tem o registro " + std::string(nome) + ".");
    }
    return trato->second;
}

// Whatever a failure says is told, and be it with question marks.
std::string ComoTexto(std::string texto)
{
    if (!EhTexto(texto)) {
        std::ranges::replace_if(
            texto, [](char letra) { return letra <= 0; }, '?');
    }
    return texto;
}

// Calls `visita(mensagem, campo)` for every field that is set, of those within too.
template <class M, class Visita> void CadaCampo(M &mensagem, const Visita &visita)
{
    const Reflection &reflexo = *mensagem.GetReflection();
    std::vector<const FieldDescriptor *> campos;
    reflexo.ListFields(mensagem, &campos);
    for (const FieldDescriptor *campo : campos) {
        if (campo->cpp_type() != FieldDescriptor::CPPTYPE_MESSAGE) {
            visita(mensagem, *campo);
            continue;
        }
        constexpr bool muda = !std::is_const_v<M>;
        if (!campo->is_repeated()) {
            if constexpr (muda) {
                CadaCampo(*reflexo.MutableMessage(&mensagem, campo), visita);
            } else {
                CadaCampo(reflexo.GetMessage(mensagem, campo), visita);
            }
            continue;
        }
        for (int posicao = 0; posicao < reflexo.FieldSize(mensagem, campo); ++posicao) {
            if constexpr (muda) {
                CadaCampo(*reflexo.MutableRepeatedMessage(&mensagem, campo, posicao), visita);
            } else {
                CadaCampo(reflexo.GetRepeatedMessage(mensagem, campo, posicao), visita);
            }
        }
    }
}

} // namespace

void ParaMensagem(const Registro &registro, Message &mensagem)
try {
    mensagem.Clear();
    Contagem contagem;
    TratoDo(registro.NomeTipo()).Escreve(registro, mensagem, contagem);
} catch (...) {
    LimpaSegredos(mensagem);
    throw;
}

Ref<Registro> DeMensagem(const Message &mensagem)
{
    Contagem contagem;
    return TratoDo(mensagem.GetDescriptor()->name()).Le(mensagem, contagem);
}

const Message &MensagemVazia(std::string_view registro)
{
    return *TratoDo(registro).Vazia;
}

void PoeMarcas(const Registro &lido, Registro &escrito)
{
    TratoDo(escrito.NomeTipo()).Marca(lido, escrito);
}

void LimpaSegredos(Message &mensagem) noexcept
{
    CadaCampo(mensagem, [](Message &onde, const FieldDescriptor &campo) {
        if (campo.type() == FieldDescriptor::TYPE_BYTES && !campo.is_repeated()) {
            std::string &octetos = OctetosNoLugar(onde, campo);
            mesa::LimpaMemoria(octetos.data(), octetos.size());
        }
    });
}

void PoeSegredo(const mesa::Segredo &segredo, std::string &campo)
{
    campo.assign(segredo.Texto().size(), ' ');
    if (!segredo.Vazio()) {
        std::memcpy(campo.data(), segredo.Texto().data(), segredo.Texto().size());
    }
}

void ConfereMensagem(const Message &mensagem)
{
    CadaCampo(mensagem, [](const Message &onde, const FieldDescriptor &campo) {
        const Reflection &reflexo = *onde.GetReflection();
        const int quantos = campo.is_repeated() ? reflexo.FieldSize(onde, &campo) : 1;
        for (int posicao = 0; posicao < quantos; ++posicao) {
            std::string sem;
            if (campo.type() == FieldDescriptor::TYPE_STRING) {
                ExigeTexto(campo.is_repeated() ? reflexo.GetRepeatedStringReference(onde, &campo, posicao, &sem)
                                               : reflexo.GetStringReference(onde, &campo, &sem),
                           campo);
            } else if (campo.type() == FieldDescriptor::TYPE_DOUBLE) {
                ExigeNumero(campo.is_repeated() ? reflexo.GetRepeatedDouble(onde, &campo, posicao)
                                                : reflexo.GetDouble(onde, &campo),
                            campo);
            }
        }
    });
}

bool EhTexto(std::string_view octetos) noexcept
{
    const auto octeto = [&](std::size_t onde) {
        return onde < octetos.size() ? static_cast<unsigned char>(octetos[onde]) : 0u;
    };
    for (std::size_t onde = 0; onde < octetos.size();) {
        const unsigned primeiro = octeto(onde);
        if (primeiro == 0) {
            return false;
        }
        const std::size_t tamanho = primeiro < 0x80                       ? 1
                                    : primeiro >= 0xC2 && primeiro < 0xE0 ? 2
                                    : primeiro >= 0xE0 && primeiro < 0xF0 ? 3
                                    : primeiro >= 0xF0 && primeiro < 0xF5 ? 4
                                                                          : 0;
        if (tamanho == 0) {
            return false;
        }
        for (std::size_t seguinte = 1; seguinte < tamanho; ++seguinte) {
            if ((octeto(onde + seguinte) & 0xC0u) != 0x80u) {
                return false;
            }
        }
        // Written longer than needed, half of a pair, or beyond the last character.
        const unsigned segundo = octeto(onde + 1);
        if ((primeiro == 0xE0 && segundo < 0xA0) || (primeiro == 0xED && segundo > 0x9F) ||
            (primeiro == 0xF0 && segundo < 0x90) || (primeiro == 0xF4 && segundo > 0x8F)) {
            return false;
        }
        onde += tamanho;
    }
    return true;
}

void ParaMensagem(const mesa::Operador &operador, v1::Sessao &mensagem)
{
    mensagem.set_numero(operador.Numero);
    mensagem.set_usuario(operador.Usuario);
    mensagem.set_nome(operador.Nome);
    mensagem.set_codcliente(operador.CodCliente);
    mensagem.set_cliente(operador.Cliente);
    mensagem.set_setor(operador.Setor);
    mensagem.set_codmunic(operador.CodMunic);
    ConfereMensagem(mensagem);
}

mesa::Operador DeMensagem(const v1::Sessao &mensagem)
{
    ConfereMensagem(mensagem);
    return {mensagem.numero(),  mensagem.usuario(), mensagem.nome(),    mensagem.codcliente(),
            mensagem.cliente(), mensagem.setor(),   mensagem.codmunic()};
}

void ParaMensagem(const mesa::ClienteCadastrado &cliente, v1::ClienteDoOperador &mensagem)
{
    mensagem.Clear();
    mensagem.set_codcliente(cliente.CodCliente);
    mensagem.set_nome(cliente.Nome);
    for (const std::string &setor : cliente.Setores) {
        mensagem.add_setores(setor);
    }
    mensagem.set_uf(cliente.UF);
    ConfereMensagem(mensagem);
}

mesa::ClienteCadastrado DeMensagem(const v1::ClienteDoOperador &mensagem)
{
    ConfereMensagem(mensagem);
    return {
        mensagem.codcliente(), mensagem.nome(), {mensagem.setores().begin(), mensagem.setores().end()}, mensagem.uf()};
}

void ParaMensagem(const mesa::LinhaReplica &linha, v1::LinhaDaReplica &mensagem)
{
    mensagem.Clear();
    mensagem.set_nrointequip(linha.NroIntEquip);
    mensagem.set_clienteinc(linha.ClienteInc);
    mensagem.set_codigo(linha.Codigo);
    mensagem.set_tipoequip(linha.TipoEquip);
    mensagem.set_ativo(linha.Ativo);
    ConfereMensagem(mensagem);
}

mesa::LinhaReplica DeMensagem(const v1::LinhaDaReplica &mensagem)
{
    ConfereMensagem(mensagem);
    return {mensagem.nrointequip(), mensagem.clienteinc(), mensagem.codigo(), mensagem.tipoequip(), mensagem.ativo()};
}

void ParaMensagem(const mesa::VersaoAfericao &versao, v1::VersaoDaAfericaoED &mensagem)
{
    mensagem.Clear();
    mensagem.set_versao(versao.Versao);
    mensagem.set_quem(versao.Quem);
    mensagem.set_quando(versao.Quando);
    if (versao.Fuso) {
        mensagem.set_fuso(*versao.Fuso);
    }
    mensagem.set_acao(versao.Acao);
    mensagem.set_motivo(versao.Motivo);
    ConfereMensagem(mensagem);
    if (versao.Registro) {
        ParaMensagem(*versao.Registro, *mensagem.mutable_registro());
    }
}

mesa::VersaoAfericao DeMensagem(const v1::VersaoDaAfericaoED &mensagem)
{
    ConfereMensagem(mensagem);
    mesa::VersaoAfericao versao{mensagem.versao(),
                                mensagem.quem(),
                                mensagem.quando(),
                                mensagem.has_fuso() ? std::optional(mensagem.fuso()) : std::nullopt,
                                mensagem.acao(),
                                mensagem.motivo(),
                                {}};
    if (mensagem.has_registro()) {
        versao.Registro = ComoTipo<AfericaoED>(DeMensagem(static_cast<const Message &>(mensagem.registro())));
    }
    return versao;
}

void ParaMensagem(const mesa::EquipamentoConhecido &conhecido, v1::EquipamentoConhecido &mensagem)
{
    mensagem.Clear();
    mensagem.set_ressalva(conhecido.Ressalva);
    ConfereMensagem(mensagem);
    if (conhecido.Registro) {
        ParaMensagem(*conhecido.Registro, *mensagem.mutable_registro());
    }
}

mesa::EquipamentoConhecido DeMensagem(const v1::EquipamentoConhecido &mensagem)
{
    ConfereMensagem(mensagem);
    mesa::EquipamentoConhecido conhecido{{}, mensagem.ressalva()};
    if (mensagem.has_registro()) {
        conhecido.Registro = ComoTipo<EquiptoED>(DeMensagem(static_cast<const Message &>(mensagem.registro())));
    }
    return conhecido;
}

void ParaMensagem(const mesa::AfericaoComDocumento &afericao, v1::AfericaoComDocumento &mensagem)
{
    mensagem.Clear();
    mensagem.set_equipamento(afericao.Equipamento);
    mensagem.set_certificado(afericao.Certificado);
    mensagem.set_tipo(afericao.Tipo);
    ConfereMensagem(mensagem);
}

mesa::AfericaoComDocumento DeMensagem(const v1::AfericaoComDocumento &mensagem)
{
    ConfereMensagem(mensagem);
    return {mensagem.equipamento(), mensagem.certificado(),
            ExigeQueCaiba<std::uint8_t>(mensagem.tipo(), CampoDe(*mensagem.GetDescriptor(), "Tipo"))};
}

void ParaMensagem(const Falha &falha, v1::Falha &mensagem)
{
    mensagem.Clear();
    mensagem.set_numero(falha.Numero);
    mensagem.set_fonte(ComoTexto(falha.Fonte));
    mensagem.set_descricao(ComoTexto(falha.Descricao));
}

Falha DeMensagem(const v1::Falha &mensagem)
{
    ConfereMensagem(mensagem);
    return {mensagem.numero(), mensagem.fonte(), mensagem.descricao()};
}

} // namespace rede
