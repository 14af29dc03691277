#include "windows/component/ArgumentoDaTabela.h"

#include "windows/automation/Tardio.h"

#include <oleauto.h>

#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace nativo {
namespace {

// What references to general values lead to, to be written to.
VARIANT &Referido(const VARIANT &variante)
{
    return const_cast<VARIANT &>(detalhe::Referido(variante));
}

// The object behind a value; empty for a value that is none.
Com<IDispatch> ObjetoSeHouver(const VARIANT &dado)
{
    VARIANT apoio;
    const VARIANT &valor = detalhe::SemReferencia(dado, apoio);
    return V_VT(&valor) == VT_DISPATCH ? LeObjeto(valor) : nullptr;
}

Variante ComObjeto(Com<IDispatch> objeto)
{
    Variante variante;
    V_VT(&variante.Bruta()) = VT_DISPATCH;
    V_DISPATCH(&variante.Bruta()) = objeto.Solta();
    return variante;
}

// A script's own date is an object. What it knows of the calendar is more than ours does.
Data LeData(const VARIANT &dado)
{
    const Com<IDispatch> objeto = ObjetoSeHouver(dado);
    if (!objeto || !Tardio(objeto).Tem("getFullYear")) {
        return DeVariante<Data>(dado);
    }
    const Tardio data(objeto);
    const auto parte = [&](const char *nome) { return data.Chama<std::int32_t>(nome); };
    try {
        return DataDe(parte("getDate"), parte("getMonth") + 1, parte("getFullYear"), parte("getHours"),
                      parte("getMinutes"), parte("getSeconds"));
    } catch (const Falha &falha) {
        throw Falha(falha.Numero == NumeroFalha::ArgumentoInvalido ? NumeroFalha::Estouro : falha.Numero);
    }
}

// A plain member of a script's object, which the script takes for a function when it is asked for as either.
Variante LePropriedade(const Com<IDispatch> &objeto, std::string_view nome)
{
    Variante lida;
    DISPPARAMS nenhum{};
    EXCEPINFO informacao{};
    const HRESULT codigo = objeto->Invoke(NumeroDoMembro(objeto, nome), IID_NULL, LOCALE_USER_DEFAULT,
                                          DISPATCH_PROPERTYGET, &nenhum, &lida.Bruta(), &informacao, nullptr);
    if (FAILED(codigo)) {
        throw FalhaDe(codigo, informacao);
    }
    return lida;
}

// The elements of an array, which a script has as an object with members of those numbers. Nothing was put into a
// variable without a value.
std::vector<Variante> LeElementos(const VARIANT &dado)
{
    if (V_VT(&Referido(dado)) == VT_EMPTY) {
        return {};
    }
    const Com<IDispatch> objeto = ObjetoSeHouver(dado);
    if (!objeto) {
        return detalhe::LeArranjo(dado);
    }
    const auto quantos = DeVariante<std::int32_t>(LePropriedade(objeto, "length").Bruta());
    std::vector<Variante> elementos;
    for (std::int32_t i = 0; i < quantos; ++i) {
        const std::string nome = std::to_string(i);
        elementos.push_back(Tardio(objeto).Tem(nome) ? LePropriedade(objeto, nome) : Variante());
    }
    return elementos;
}

Variante LeObjetos(const VARIANT &dado)
{
    std::vector<Variante> elementos = LeElementos(dado);
    for (Variante &elemento : elementos) {
        elemento = ComObjeto(elemento.Tipo() == VT_EMPTY ? nullptr : LeObjeto(elemento.Bruta()));
    }
    return detalhe::FazArranjo(VT_DISPATCH, std::move(elementos));
}

Variante Converte(const VARIANT &dado, VARTYPE tipo)
{
    switch (tipo) {
    case VT_I2:
        return ParaVariante(DeVariante<std::int16_t>(dado));
    case VT_I4:
        return ParaVariante(DeVariante<std::int32_t>(dado));
    case VT_BOOL:
        return ParaVariante(DeVariante<bool>(dado));
    case VT_DATE:
        return ParaVariante(LeData(dado));
    case VT_BSTR:
        return ParaVariante(DeVariante<std::string>(dado));
    case VT_DISPATCH:
        return ComObjeto(LeObjeto(dado));
    default:
        throw Falha(NumeroFalha::TipoIncompativel);
    }
}

bool Igual(const VARIANT &um, const VARIANT &outro)
{
    switch (V_VT(&um)) {
    case VT_I2:
    case VT_BOOL:
        return V_I2(&um) == V_I2(&outro);
    case VT_I4:
        return V_I4(&um) == V_I4(&outro);
    case VT_DATE:
        return std::memcmp(&V_DATE(&um), &V_DATE(&outro), sizeof(DATE)) == 0;
    case VT_BSTR: {
        const UINT octetos = SysStringByteLen(V_BSTR(&um));
        return octetos == SysStringByteLen(V_BSTR(&outro)) &&
               (octetos == 0 || std::memcmp(V_BSTR(&um), V_BSTR(&outro), octetos) == 0);
    }
    default:
        return V_DISPATCH(&um) == V_DISPATCH(&outro);
    }
}

// A value of one type, converted.
class ArgumentoSimples final : public ArgumentoDaTabela {
  public:
    ArgumentoSimples(const VARIANT &dado, VARTYPE tipo, bool porReferencia) : m_Valor(Converte(dado, tipo))
    {
        if (porReferencia) {
            m_Antes = m_Valor;
            PassaEndereco(&V_R8(&m_Valor.Bruta()));
        } else {
            PassaValor(m_Valor.Bruta(), tipo);
        }
    }

    void Devolve(const Chamada &chamada, std::size_t posicao) override
    {
        if (m_Antes.Tipo() != VT_EMPTY && !Igual(m_Valor.Bruta(), m_Antes.Bruta())) {
            chamada.Devolve(posicao, m_Valor);
        }
    }

  private:
    Variante m_Valor;
    Variante m_Antes;
};

// A general value, which is read and written where it lies.
class ArgumentoGeral final : public ArgumentoDaTabela {
  public:
    ArgumentoGeral(const VARIANT &dado, bool porReferencia) : m_Dado(dado)
    {
        Referido(dado); // a reference to nothing is refused
        if (!porReferencia) {
            PassaValor(detalhe::SemReferencia(dado, m_Apoio), VT_VARIANT);
        } else if (V_VT(&dado) == (VT_BYREF | VT_VARIANT)) {
            PassaEndereco(V_VARIANTREF(&dado));
        } else {
            PassaEndereco(&m_Dado);
        }
    }

  private:
    VARIANT m_Dado; // as it came: owns nothing
    VARIANT m_Apoio{};
};

// An array of objects. One of another kind, as scripts have it, is converted both ways.
class ArgumentoDeObjetos final : public ArgumentoDaTabela {
  public:
    explicit ArgumentoDeObjetos(const VARIANT &dado)
    {
        VARIANT &referido = Referido(dado);
        if (V_VT(&referido) == (VT_BYREF | Objetos)) {
            PassaEndereco(V_ARRAYREF(&referido));
        } else if (V_VT(&referido) == Objetos && &referido != &dado) {
            PassaEndereco(&V_ARRAY(&referido));
        } else {
            m_Valor = LeObjetos(dado);
            m_Antes = V_ARRAY(&m_Valor.Bruta());
            PassaEndereco(&V_ARRAY(&m_Valor.Bruta()));
        }
    }

    void Devolve(const Chamada &chamada, std::size_t posicao) override
    {
        if (m_Valor.Tipo() != VT_EMPTY && V_ARRAY(&m_Valor.Bruta()) != m_Antes) {
            chamada.Devolve(posicao, detalhe::FazArranjo(VT_VARIANT, detalhe::LeArranjo(m_Valor.Bruta())));
        }
    }

  private:
    Variante m_Valor;
    SAFEARRAY *m_Antes = nullptr;
};

} // namespace

std::unique_ptr<ArgumentoDaTabela> ArgumentoDaTabela::De(const VARIANT &dado, VARTYPE tipo, bool porReferencia)
{
    switch (tipo) {
    case VT_VARIANT:
        return std::make_unique<ArgumentoGeral>(dado, porReferencia);
    case Objetos:
        return std::make_unique<ArgumentoDeObjetos>(dado);
    default:
        return std::make_unique<ArgumentoSimples>(dado, tipo, porReferencia);
    }
}

void ArgumentoDaTabela::PassaValor(const VARIANT &valor, VARTYPE tipo) noexcept
{
    m_Tipo = tipo;
    m_Passado = valor;
}

void ArgumentoDaTabela::PassaEndereco(void *endereco) noexcept
{
    m_Tipo = Endereco;
    V_VT(&m_Passado) = m_Tipo;
    V_BYREF(&m_Passado) = endereco;
}

} // namespace nativo
