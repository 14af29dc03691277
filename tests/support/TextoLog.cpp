#include "tests/support/TextoLog.h"

#include <type_traits>

std::string TextoLog(std::string_view texto)
{
    std::string saida = "\"";
    for (char letra : texto) {
        switch (letra) {
        case '\n':
            saida += "\\n";
            break;
        case '\r':
            saida += "\\r";
            break;
        case '\t':
            saida += "\\t";
            break;
        default:
            saida += letra;
        }
    }
    return saida + "\"";
}

std::string TextoLog(double valor)
{
    return CStr(valor);
}

std::string TextoLog(Data valor)
{
    return CStr(valor);
}

std::string TextoLog(const Valor &valor)
{
    return std::visit(
        [](const auto &conteudo) -> std::string {
            using T = std::decay_t<decltype(conteudo)>;
            if constexpr (std::is_same_v<T, Valor::Vazio>) {
                return "ausente";
            } else if constexpr (std::is_same_v<T, Valor::Nulo>) {
                return "Null";
            } else if constexpr (std::is_same_v<T, Valor::Variavel>) {
                return TextoLog(*conteudo.Alvo);
            } else {
                return TextoLog(conteudo);
            }
        },
        valor.Interno());
}

std::string TextoLog(const ItensMenu &itens)
{
    std::string texto;
    for (const auto &item : itens) {
        texto += (texto.empty() ? "" : ", ") + (item.Nada() ? "Nothing" : item->Name);
    }
    return "[" + texto + "]";
}

std::string TextoLog(const std::vector<std::string> &textos)
{
    std::string texto;
    for (const auto &item : textos) {
        texto += (texto.empty() ? "" : ", ") + TextoLog(item);
    }
    return "[" + texto + "]";
}

std::string TextoLogObjeto(const Objeto *objeto)
{
    if (objeto == nullptr) {
        return "Nothing";
    }
    if (const auto *registro = dynamic_cast<const Registro *>(objeto)) {
        return registro->Texto();
    }
    if (const auto *controle = dynamic_cast<const IControle *>(objeto)) {
        return controle->Indice() < 0 ? controle->Nome()
                                      : controle->Nome() + "(" + std::to_string(controle->Indice()) + ")";
    }
    return std::string(objeto->NomeTipo());
}
