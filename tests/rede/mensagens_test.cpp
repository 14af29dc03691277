#include "RegistroAoAcaso.h"

#include "rede/ListaDeRegistros.h"
#include "rede/Mensagens.h"

#include <google/protobuf/descriptor.h>
#include <google/protobuf/message.h>
#include <google/protobuf/stubs/logging.h>
#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <set>
#include <string>

namespace {

namespace v1 = registro::v1;
using google::protobuf::Descriptor;
using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using rede::DeMensagem;
using rede::MensagemInvalida;
using rede::ParaMensagem;

const google::protobuf::FileDescriptor &Contrato()
{
    return *v1::Vazio::descriptor()->file();
}

std::unique_ptr<Message> MensagemDe(const Registro &registro)
{
    std::unique_ptr<Message> mensagem(rede::MensagemVazia(registro.NomeTipo()).New());
    ParaMensagem(registro, *mensagem);
    return mensagem;
}

// The record after the way over the wire, through its octets.
Ref<Registro> DepoisDaViagem(const Registro &registro)
{
    const auto partida = MensagemDe(registro);
    std::unique_ptr<Message> chegada(partida->New());
    EXPECT_TRUE(chegada->ParseFromString(partida->SerializeAsString()));
    return DeMensagem(*chegada);
}

// What Texto does not show: the marks and the secrets of a record and of all those in it.
template <class R> std::string MarcasDe(const R &registro)
{
    std::string texto = "<" + std::to_string(registro.VersaoLida);
    registro.CadaMembro([&]<class T>(std::string_view, const Campo<T> &campo) {
        if constexpr (std::is_same_v<T, mesa::Segredo>) {
            texto += " " + std::string(campo.Valor().Texto());
        } else if constexpr (DetalheRegistro::EhListaDe<T>::value) {
            for (std::int32_t n = 1; !campo.Valor().Nada() && n <= campo.Valor()->Count(); ++n) {
                texto += MarcasDe(*campo.Valor()->Item(n));
            }
        }
    });
    return texto + ">";
}

// What reading the message is refused with; empty when it is read.
std::string RecusaDe(const Message &mensagem)
{
    try {
        DeMensagem(mensagem);
        return "";
    } catch (const MensagemInvalida &invalida) {
        return invalida.what();
    }
}

std::string RecusaDe(const Registro &registro)
{
    try {
        MensagemDe(registro);
        return "";
    } catch (const MensagemInvalida &invalida) {
        return invalida.what();
    }
}

template <class T> FieldDescriptor::Type TipoNoContrato()
{
    if constexpr (DetalheRegistro::EhListaDe<T>::value) {
        return FieldDescriptor::TYPE_MESSAGE;
    } else if constexpr (std::is_same_v<T, std::string>) {
        return FieldDescriptor::TYPE_STRING;
    } else if constexpr (std::is_same_v<T, mesa::Segredo>) {
        return FieldDescriptor::TYPE_BYTES;
    } else if constexpr (std::is_same_v<T, Data> || std::is_same_v<T, double>) {
        return FieldDescriptor::TYPE_DOUBLE;
    } else if constexpr (std::is_same_v<T, std::uint8_t>) {
        return FieldDescriptor::TYPE_UINT32;
    } else {
        return FieldDescriptor::TYPE_INT32;
    }
}

} // namespace

TEST(Mensagens, Contrato_EachMemberHasItsField_AndEachFieldItsMember)
{
    std::set<std::string> conferidos;
    rede::Registros::Cada([&]<class R>() {
        const Descriptor *tipo = Contrato().FindMessageTypeByName(std::string(R::Nome));
        ASSERT_NE(tipo, nullptr) << R::Nome;
        conferidos.insert(tipo->name());
        std::set<std::string> membros;
        Novo<R>()->CadaMembro([&]<class T>(std::string_view nome, const Campo<T> &) {
            membros.insert(std::string(nome));
            const FieldDescriptor *campo = tipo->FindFieldByName(std::string(nome));
            ASSERT_NE(campo, nullptr) << R::Nome << "." << nome;
            EXPECT_EQ(campo->type(), TipoNoContrato<T>()) << campo->full_name();
            EXPECT_TRUE(campo->has_presence()) << campo->full_name();
            EXPECT_FALSE(campo->is_repeated()) << campo->full_name();
            if constexpr (DetalheRegistro::EhListaDe<T>::value) {
                using Item = typename DetalheRegistro::EhListaDe<T>::Item;
                const Descriptor &lista = *campo->message_type();
                EXPECT_EQ(lista.name(), "ListaDe" + std::string(Item::Nome));
                ASSERT_EQ(lista.field_count(), 2);
                const FieldDescriptor *itens = lista.FindFieldByName("Itens");
                ASSERT_NE(itens, nullptr);
                EXPECT_TRUE(itens->is_repeated());
                ASSERT_NE(itens->message_type(), nullptr);
                EXPECT_EQ(itens->message_type()->name(), Item::Nome);
                ASSERT_NE(lista.FindFieldByName("Nada"), nullptr);
                EXPECT_EQ(lista.FindFieldByName("Nada")->type(), FieldDescriptor::TYPE_BOOL);
            }
        });
        for (int n = 0; n < tipo->field_count(); ++n) {
            const FieldDescriptor &campo = *tipo->field(n);
            if (campo.name() == "VersaoLida") {
                EXPECT_EQ(campo.number(), 100);
                EXPECT_EQ(campo.type(), FieldDescriptor::TYPE_INT64);
            } else {
                EXPECT_TRUE(membros.contains(campo.name())) << campo.full_name();
            }
        }
        EXPECT_EQ(tipo->field_count(), static_cast<int>(membros.size()) + 1) << R::Nome;
    });
    // The messages with a mark are the records: none is left out of the list.
    for (int n = 0; n < Contrato().message_type_count(); ++n) {
        const Descriptor &tipo = *Contrato().message_type(n);
        EXPECT_EQ(tipo.FindFieldByName("VersaoLida") != nullptr, conferidos.contains(tipo.name())) << tipo.name();
    }
}

TEST(Mensagens, RandomRecords_ThereAndBack_AreTheSame)
{
    AoAcaso acaso(14);
    rede::Registros::Cada([&]<class R>() {
        for (int n = 0; n < 300; ++n) {
            const auto partiu = acaso.Um<R>();
            const auto chegou = ComoTipo<R>(DepoisDaViagem(*partiu));
            ASSERT_EQ(chegou->Texto(), partiu->Texto());
            ASSERT_EQ(MarcasDe(*chegou), MarcasDe(*partiu));
        }
    });
}

TEST(Mensagens, NothingWritten_IsNothingSet)
{
    rede::Registros::Cada([]<class R>() {
        const auto mensagem = MensagemDe(*Novo<R>());
        EXPECT_EQ(mensagem->ByteSizeLong(), 0u) << R::Nome;
        EXPECT_EQ(DeMensagem(*mensagem)->Texto(), std::string(R::Nome) + "{}");
    });
}

TEST(Mensagens, ListsAbsentNothingEmptyAndFilled_StayWhatTheyAre)
{
    auto equipamento = Novo<EquiptoED>();
    equipamento->ListaLimiteDif = ListaDe<LimiteDifED>();
    equipamento->ListaDiaEspecifico = Novo<Colecao<Ref<DiaEspecificoED>>>();
    EXPECT_EQ(DepoisDaViagem(*equipamento)->Texto(), "EquiptoED{ListaLimiteDif=Nothing, ListaDiaEspecifico=[]}");

    auto sensor = Novo<SensorED>();
    sensor->NroSensor = std::int16_t{-3};
    sensor->VersaoLida = 77;
    equipamento->Sensores = Novo<Colecao<Ref<SensorED>>>();
    equipamento->Sensores.Valor()->Add(sensor);
    const auto chegou = ComoTipo<EquiptoED>(DepoisDaViagem(*equipamento));
    EXPECT_EQ(chegou->Texto(),
              "EquiptoED{Sensores=[SensorED{NroSensor=-3}], ListaLimiteDif=Nothing, ListaDiaEspecifico=[]}");
    EXPECT_EQ(chegou->Sensores.Valor()->Item(1)->VersaoLida, 77);
}

TEST(Mensagens, MessageInUse_IsClearedBefore)
{
    v1::AfericaoED mensagem;
    mensagem.set_marca("antiga");
    ParaMensagem(*Novo<AfericaoED>(), mensagem);
    EXPECT_FALSE(mensagem.has_marca());
}

TEST(Mensagens, NumbersThatDoNotFit_AreRefusedWithTheField)
{
    v1::EquiptoED equipamento;
    equipamento.set_ativo(256);
    EXPECT_EQ(RecusaDe(equipamento), "O campo Ativo de EquiptoED vale 256, fora do que ele comporta (0 a 255).");
    equipamento.set_ativo(255);
    EXPECT_EQ(RecusaDe(equipamento), "");
    equipamento.set_velocpermitida(32768);
    EXPECT_EQ(RecusaDe(equipamento),
              "O campo VelocPermitida de EquiptoED vale 32768, fora do que ele comporta (-32768 a 32767).");
    equipamento.set_velocpermitida(-32769);
    EXPECT_NE(RecusaDe(equipamento), "");
    equipamento.set_velocpermitida(-32768);
    EXPECT_EQ(RecusaDe(equipamento), "");
    // Deep inside as well.
    equipamento.mutable_sensores()->add_itens()->mutable_afericoes()->add_itens()->set_ativo(1000);
    EXPECT_EQ(RecusaDe(equipamento), "O campo Ativo de AfericaoED vale 1000, fora do que ele comporta (0 a 255).");
}

TEST(Mensagens, WhatIsNoNumber_IsRefusedBothWays)
{
    for (const double nenhum : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                                -std::numeric_limits<double>::infinity()}) {
        v1::AfericaoED mensagem;
        mensagem.set_nrointafericao(nenhum);
        EXPECT_EQ(RecusaDe(mensagem), "O campo NroIntAfericao de AfericaoED não é um número.");
        auto afericao = Novo<AfericaoED>();
        afericao->NroIntAfericao = nenhum;
        EXPECT_EQ(RecusaDe(*afericao), "O campo NroIntAfericao de AfericaoED não é um número.");
        mensagem.clear_nrointafericao();
        mensagem.set_dataverificacao(nenhum);
        EXPECT_EQ(RecusaDe(mensagem), "O campo DataVerificacao de AfericaoED não é um número.");
    }
    // A day that does not exist is the operation's to refuse.
    v1::AfericaoED mensagem;
    mensagem.set_datavencimento(1e300);
    EXPECT_EQ(RecusaDe(mensagem), "");
}

TEST(Mensagens, TextsThatAreNone_AreRefusedBothWays)
{
    for (const std::string &ruim :
         {std::string("\xE7"), std::string("a\0b", 3), std::string("\xC0\xAF"), std::string("\xED\xA0\x80"),
          std::string("\xF4\x90\x80\x80"), std::string("\xE2\x82"), std::string("\xF0\x80\x80\xAF"),
          std::string("\x80"), std::string("\xE0\x80\xAF"), std::string("\xFF")}) {
        auto equipamento = Novo<EquiptoED>();
        equipamento->Codigo = ruim;
        EXPECT_EQ(RecusaDe(*equipamento), "O campo Codigo de EquiptoED tem caracteres que não são texto.");
        v1::EquiptoED mensagem;
        mensagem.set_codigo(ruim);
        EXPECT_EQ(RecusaDe(mensagem), "O campo Codigo de EquiptoED tem caracteres que não são texto.");
        v1::UsuarioED usuario;
        usuario.set_senha(ruim);
        EXPECT_EQ(RecusaDe(usuario), "O campo Senha de UsuarioED tem caracteres que não são texto.");
        v1::PedidoDeEntrada entrada;
        entrada.set_usuario(ruim);
        EXPECT_THROW(rede::ConfereMensagem(entrada), MensagemInvalida);
    }
    for (const char *bom : {"", "a", "\x7F", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEF\xBF\xBF",
                            "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"}) {
        EXPECT_TRUE(rede::EhTexto(bom)) << bom;
    }
}

TEST(Mensagens, ListsThatCannotBe_AreRefused)
{
    v1::EquiptoED mensagem;
    mensagem.mutable_sensores()->set_nada(true);
    EXPECT_EQ(RecusaDe(mensagem), "");
    mensagem.mutable_sensores()->add_itens();
    EXPECT_EQ(RecusaDe(mensagem), "O campo Sensores de EquiptoED diz que não há lista, e tem itens.");

    auto equipamento = Novo<EquiptoED>();
    equipamento->Sensores = Novo<Colecao<Ref<SensorED>>>();
    equipamento->Sensores.Valor()->Add({});
    EXPECT_EQ(RecusaDe(*equipamento), "O campo Sensores de EquiptoED tem um item que não é registro nenhum.");

    v1::ListaUsuariosED muitos;
    for (std::size_t n = 0; n + 1 < rede::MaisRegistros; ++n) {
        muitos.mutable_usuarios()->add_itens();
    }
    EXPECT_EQ(RecusaDe(muitos), "");
    muitos.mutable_usuarios()->add_itens();
    EXPECT_EQ(RecusaDe(muitos), "A mensagem tem mais de 200000 registros.");
}

TEST(Mensagens, WhatIsNoRecord_IsRefused)
{
    EXPECT_EQ(RecusaDe(v1::Sessao()), "O contrato não tem o registro Sessao.");
    EXPECT_EQ(RecusaDe(v1::ListaDeSensorED()), "O contrato não tem o registro ListaDeSensorED.");
    v1::SensorED outra;
    EXPECT_THROW(ParaMensagem(*Novo<AfericaoED>(), outra), MensagemInvalida);

    class SoNoNome : public Registro {
        std::string_view NomeTipo() const override { return "AfericaoED"; }
        std::string Texto() const override { return ""; }
        Ref<Registro> Copia() const override { return {}; }
    };
    EXPECT_THROW(MensagemDe(*Novo<SoNoNome>()), MensagemInvalida);
}

TEST(Mensagens, FieldsOfALaterContract_AreLeftOut)
{
    auto afericao = Novo<AfericaoED>();
    afericao->Marca = "m";
    // Field 900, a text, which nobody here knows.
    const std::string octetos = MensagemDe(*afericao)->SerializeAsString() + std::string("\xA2\x38\x02zz", 5);
    v1::AfericaoED chegada;
    ASSERT_TRUE(chegada.ParseFromString(octetos));
    EXPECT_EQ(DeMensagem(static_cast<const Message &>(chegada))->Texto(), "AfericaoED{Marca=\"m\"}");
}

TEST(Mensagens, DamagedOctets_NeverMakeMoreThanARecordOrARefusal)
{
    const google::protobuf::LogSilencer calado; // each text that is none is told otherwise
    AoAcaso acaso(41);
    std::mt19937 sorte(9);
    int lidos = 0;
    int recusados = 0;
    rede::Registros::Cada([&]<class R>() {
        for (int n = 0; n < 1000; ++n) {
            std::string octetos = MensagemDe(*acaso.Um<R>())->SerializeAsString();
            for (int danos = 3; danos > 0 && !octetos.empty(); --danos) {
                octetos[sorte() % octetos.size()] = static_cast<char>(sorte());
            }
            std::unique_ptr<Message> chegada(rede::MensagemVazia(R::Nome).New());
            if (!chegada->ParsePartialFromString(octetos)) {
                continue;
            }
            try {
                const auto registro = DeMensagem(*chegada);
                // What was taken goes on as it is.
                EXPECT_EQ(MensagemDe(*DepoisDaViagem(*registro))->SerializeAsString(),
                          MensagemDe(*registro)->SerializeAsString());
                ++lidos;
            } catch (const MensagemInvalida &) {
                ++recusados;
            }
        }
    });
    EXPECT_GT(lidos, 100);
    EXPECT_GT(recusados, 50);
}

TEST(Mensagens, Secrets_AreOverwrittenWhereTheyStood)
{
    for (const char *senha : {"curta", "uma senha mais longa do que cabe num texto pequeno"}) {
        auto troca = Novo<mesa::TrocaSenhaED>();
        troca->Atual = mesa::Segredo(senha);
        v1::TrocaSenhaED mensagem;
        ParaMensagem(*troca, mensagem);
        ASSERT_EQ(mensagem.atual(), senha);
        const std::string &onde = mensagem.atual();
        rede::LimpaSegredos(mensagem);
        EXPECT_EQ(onde, std::string(onde.size(), '\0'));
        EXPECT_EQ(onde.size(), std::string(senha).size());
        EXPECT_FALSE(mensagem.has_nova());
    }
    v1::PedidoDeEntrada entrada;
    rede::PoeSegredo("segredo", *entrada.mutable_senha());
    EXPECT_EQ(entrada.senha(), "segredo");
    rede::LimpaSegredos(entrada);
    EXPECT_EQ(entrada.senha(), std::string(7, '\0'));

    // Within a list, and when the message could not be made.
    v1::ListaUsuariosED muitos;
    muitos.mutable_usuarios()->add_itens()->set_senha("x");
    rede::LimpaSegredos(muitos);
    EXPECT_EQ(muitos.usuarios().itens(0).senha(), std::string(1, '\0'));
    auto usuario = Novo<mesa::UsuarioED>();
    usuario->Senha = mesa::Segredo("segredo");
    usuario->Direitos = Novo<Colecao<Ref<mesa::DireitoED>>>();
    usuario->Direitos.Valor()->Add({});
    v1::UsuarioED mensagem;
    EXPECT_THROW(ParaMensagem(*usuario, mensagem), MensagemInvalida);
    EXPECT_EQ(mensagem.senha(), std::string(7, '\0'));
}

TEST(Mensagens, Marks_ComeBackOntoWhatWasSent)
{
    const auto equipamento = [](std::int64_t marca, std::int32_t sensores) {
        auto novo = Novo<EquiptoED>();
        novo->VersaoLida = marca;
        novo->Sensores = Novo<Colecao<Ref<SensorED>>>();
        for (std::int32_t n = 1; n <= sensores; ++n) {
            auto sensor = Novo<SensorED>();
            sensor->VersaoLida = marca * 10 + n;
            novo->Sensores.Valor()->Add(sensor);
        }
        return novo;
    };
    const auto enviado = equipamento(1, 2);
    enviado->Codigo = "meu";
    rede::PoeMarcas(*equipamento(5, 2), *enviado);
    EXPECT_EQ(MarcasDe(*enviado), "<5<51><52>>");
    EXPECT_EQ(enviado->Codigo.Valor(), "meu");
    // Another shape marks nothing at all.
    EXPECT_THROW(rede::PoeMarcas(*equipamento(6, 3), *enviado), MensagemInvalida);
    EXPECT_THROW(rede::PoeMarcas(*Novo<EquiptoED>(), *enviado), MensagemInvalida);
    EXPECT_THROW(rede::PoeMarcas(*Novo<SensorED>(), *enviado), MensagemInvalida);
    EXPECT_EQ(MarcasDe(*enviado), "<5<51><52>>");
}

TEST(Mensagens, SmallOnes_ThereAndBack_AreTheSame)
{
    const mesa::Operador operador{7, "ana", "Ana", 3, "Autoridade", "Fiscalização", 4314902};
    v1::Sessao sessao;
    ParaMensagem(operador, sessao);
    const mesa::Operador lido = DeMensagem(sessao);
    EXPECT_EQ(lido.Numero, 7);
    EXPECT_EQ(lido.Usuario + lido.Nome + lido.Cliente + lido.Setor, "anaAnaAutoridadeFiscalização");
    EXPECT_EQ(lido.CodCliente, 3);
    EXPECT_EQ(lido.CodMunic, 4314902);

    v1::ClienteDoOperador cliente;
    ParaMensagem(mesa::ClienteCadastrado{3, "Autoridade", {"A", "B"}, "RS"}, cliente);
    const auto clienteLido = DeMensagem(cliente);
    EXPECT_EQ(clienteLido.CodCliente, 3);
    EXPECT_EQ(clienteLido.Nome, "Autoridade");
    EXPECT_EQ(clienteLido.Setores, (std::vector<std::string>{"A", "B"}));
    EXPECT_EQ(clienteLido.UF, "RS");

    v1::LinhaDaReplica linha;
    ParaMensagem(mesa::LinhaReplica{9, "Autoridade", "EQ9", "RAD", 2}, linha);
    const auto linhaLida = DeMensagem(linha);
    EXPECT_EQ(linhaLida.NroIntEquip, 9);
    EXPECT_EQ(linhaLida.ClienteInc + linhaLida.Codigo + linhaLida.TipoEquip, "AutoridadeEQ9RAD");
    EXPECT_EQ(linhaLida.Ativo, 2);

    auto afericao = Novo<AfericaoED>();
    afericao->Marca = "m";
    afericao->VersaoLida = 4;
    v1::VersaoDaAfericaoED versao;
    ParaMensagem(mesa::VersaoAfericao{2, "Ana", 20261122143210, -180, "altera", "erro de digitação", afericao}, versao);
    const auto versaoLida = DeMensagem(versao);
    EXPECT_EQ(versaoLida.Versao, 2);
    EXPECT_EQ(versaoLida.Quando, 20261122143210);
    EXPECT_EQ(versaoLida.Fuso, -180);
    EXPECT_EQ(versaoLida.Quem + versaoLida.Acao + versaoLida.Motivo, "Anaalteraerro de digitação");
    EXPECT_EQ(versaoLida.Registro->Texto(), "AfericaoED{Marca=\"m\"}");
    EXPECT_EQ(versaoLida.Registro->VersaoLida, 4);
    ParaMensagem(mesa::VersaoAfericao{}, versao);
    EXPECT_FALSE(DeMensagem(versao).Fuso);
    EXPECT_TRUE(DeMensagem(versao).Registro.Nada());

    auto equipamento = Novo<EquiptoED>();
    equipamento->Codigo = "EQ9";
    v1::EquipamentoConhecido conhecido;
    ParaMensagem(mesa::EquipamentoConhecido{equipamento, "ressalva"}, conhecido);
    EXPECT_EQ(DeMensagem(conhecido).Registro->Texto(), "EquiptoED{Codigo=\"EQ9\"}");
    EXPECT_EQ(DeMensagem(conhecido).Ressalva, "ressalva");

    v1::AfericaoComDocumento com;
    ParaMensagem(mesa::AfericaoComDocumento{"EQ9", "m", 2}, com);
    EXPECT_EQ(DeMensagem(com).Equipamento + DeMensagem(com).Certificado, "EQ9m");
    EXPECT_EQ(DeMensagem(com).Tipo, 2);
    com.set_tipo(256);
    EXPECT_THROW(DeMensagem(com), MensagemInvalida);

    v1::Falha falha;
    ParaMensagem(Falha(61, "a < b", "Disco cheio"), falha);
    EXPECT_EQ(DeMensagem(falha).Numero, 61);
    EXPECT_EQ(DeMensagem(falha).Fonte, "a < b");
    EXPECT_EQ(DeMensagem(falha).Descricao, "Disco cheio");
    // A failure is told whatever its words are.
    ParaMensagem(Falha(75, "a", "n\xE3o"), falha);
    EXPECT_EQ(DeMensagem(falha).Descricao, "n?o");
}
