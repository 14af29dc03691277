#include "tests/server/Pedidos.h"

#include <google/protobuf/descriptor.h>
#include <google/protobuf/message.h>
#include <registro.pb.h>

#include <memory>

namespace pedidos {

namespace {

using google::protobuf::FieldDescriptor;
using google::protobuf::Message;

constexpr int MaisFundo = 4; // lists within lists

void Preenche(Message &mensagem, int fundo)
{
    const auto *tipo = mensagem.GetDescriptor();
    const auto *reflexo = mensagem.GetReflection();
    for (int n = 0; n < tipo->field_count(); ++n) {
        const FieldDescriptor *campo = tipo->field(n);
        if (campo->cpp_type() == FieldDescriptor::CPPTYPE_MESSAGE) {
            if (fundo < MaisFundo) {
                Preenche(campo->is_repeated() ? *reflexo->AddMessage(&mensagem, campo)
                                              : *reflexo->MutableMessage(&mensagem, campo),
                         fundo + 1);
            }
            continue;
        }
        if (campo->is_repeated()) {
            continue;
        }
        switch (campo->cpp_type()) {
        case FieldDescriptor::CPPTYPE_INT32:
            reflexo->SetInt32(&mensagem, campo, 1);
            break;
        case FieldDescriptor::CPPTYPE_INT64:
            reflexo->SetInt64(&mensagem, campo, 1);
            break;
        case FieldDescriptor::CPPTYPE_UINT32:
            reflexo->SetUInt32(&mensagem, campo, 1);
            break;
        case FieldDescriptor::CPPTYPE_UINT64:
            reflexo->SetUInt64(&mensagem, campo, 1);
            break;
        case FieldDescriptor::CPPTYPE_DOUBLE:
            reflexo->SetDouble(&mensagem, campo, 1);
            break;
        case FieldDescriptor::CPPTYPE_STRING:
            reflexo->SetString(&mensagem, campo, "1");
            break;
        default:
            break;
        }
    }
}

} // namespace

std::vector<std::string> Operacoes()
{
    std::vector<std::string> todas;
    const auto *arquivo = registro::v1::Vazio::descriptor()->file();
    for (int s = 0; s < arquivo->service_count(); ++s) {
        for (int m = 0; m < arquivo->service(s)->method_count(); ++m) {
            todas.push_back(arquivo->service(s)->name() + "/" + arquivo->service(s)->method(m)->name());
        }
    }
    return todas;
}

std::string SoDeUns(const std::string &operacao)
{
    std::string nome = "registro.v1." + operacao;
    nome.replace(nome.find('/'), 1, ".");
    const auto *tipo = google::protobuf::DescriptorPool::generated_pool()->FindMethodByName(nome)->input_type();
    const std::unique_ptr<Message> pedido(
        google::protobuf::MessageFactory::generated_factory()->GetPrototype(tipo)->New());
    Preenche(*pedido, 0);
    return pedido->SerializeAsString();
}

} // namespace pedidos
