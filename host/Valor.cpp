#include "host/Valor.h"

#include "host/Conversoes.h"

#include <type_traits>

namespace {

// Applies a conversion of the platform to whatever the value holds.
template <class Resultado, class Converte> Resultado Aplica(const Valor &valor, Converte &&converte)
{
    return std::visit(
        [&](const auto &conteudo) -> Resultado {
            using T = std::decay_t<decltype(conteudo)>;
            if constexpr (std::is_same_v<T, Valor::Vazio>) {
                return Resultado{};
            } else if constexpr (std::is_same_v<T, Valor::Nulo>) {
                throw Falha(NumeroFalha::NuloInvalido);
            } else if constexpr (std::is_same_v<T, Ref<Objeto>> || std::is_same_v<T, Valor::Variavel>) {
                throw Falha(NumeroFalha::MembroInexistente); // an object without a default value
            } else if constexpr (std::is_same_v<T, Resultado>) {
                return conteudo;
            } else {
                return converte(conteudo);
            }
        },
        valor.Interno());
}

// A date takes part in a conversion to a number as its day count.
template <class T> const T &Numero(const T &conteudo)
{
    return conteudo;
}
double Numero(const Data &data)
{
    return CDbl(data);
}

} // namespace

Valor Valor::PorReferencia(Ref<Objeto> &variavel)
{
    Valor valor;
    valor.m_Conteudo = Variavel{&variavel};
    return valor;
}

bool Valor::EhObjeto() const noexcept
{
    return std::holds_alternative<Ref<Objeto>>(m_Conteudo) || std::holds_alternative<Variavel>(m_Conteudo);
}

Ref<Objeto> Valor::ComoObjeto() const
{
    if (const auto *variavel = std::get_if<Variavel>(&m_Conteudo)) {
        return *variavel->Alvo;
    }
    if (const auto *objeto = std::get_if<Ref<Objeto>>(&m_Conteudo)) {
        return *objeto;
    }
    throw Falha(NumeroFalha::ObjetoNecessario);
}

void Valor::Substitui(Ref<Objeto> novo) const
{
    const auto *variavel = std::get_if<Variavel>(&m_Conteudo);
    if (variavel == nullptr) {
        throw Falha(NumeroFalha::ObjetoNecessario);
    }
    *variavel->Alvo = std::move(novo);
}

std::string Valor::CStr() const
{
    return Aplica<std::string>(*this, [](const auto &conteudo) { return ::CStr(conteudo); });
}

bool Valor::CBool() const
{
    return Aplica<bool>(*this, [](const auto &conteudo) { return ::CBool(Numero(conteudo)); });
}

std::int16_t Valor::CInt() const
{
    return Aplica<std::int16_t>(*this, [](const auto &conteudo) { return ::CInt(Numero(conteudo)); });
}

std::int32_t Valor::CLng() const
{
    return Aplica<std::int32_t>(*this, [](const auto &conteudo) { return ::CLng(Numero(conteudo)); });
}

double Valor::CDbl() const
{
    return Aplica<double>(*this, [](const auto &conteudo) { return ::CDbl(conteudo); });
}

Data Valor::CDate() const
{
    return Aplica<Data>(*this, [](const auto &conteudo) { return ::CDate(conteudo); });
}

std::string Valor::Texto() const
{
    return EhNulo() ? std::string() : CStr();
}
