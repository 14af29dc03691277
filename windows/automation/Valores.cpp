#include "windows/automation/Valores.h"

#include "windows/automation/Falhas.h"
#include "windows/automation/Registros.h"
#include "windows/automation/Tardio.h"
#include "windows/automation/Texto16.h"

#include <oleauto.h>

#include <cstring>
#include <limits>
#include <new>
#include <utility>

namespace nativo {
namespace {

template <class T> Valor Inteiro(T numero)
{
    if (std::in_range<std::int32_t>(numero)) {
        return static_cast<std::int32_t>(numero);
    }
    return static_cast<double>(numero);
}

// The array that a value holds; null for an empty one.
SAFEARRAY *ArranjoDe(const VARIANT &variante)
{
    if ((V_VT(&variante) & VT_ARRAY) == 0) {
        throw Falha(NumeroFalha::TipoIncompativel);
    }
    return (V_VT(&variante) & VT_BYREF) != 0 ? *V_ARRAYREF(&variante) : V_ARRAY(&variante);
}

// The only bounds that an array of one dimension has; no element in an array that has no dimension yet.
std::pair<LONG, LONG> Limites(SAFEARRAY *arranjo)
{
    if (arranjo == nullptr) {
        return {0, -1};
    }
    if (SafeArrayGetDim(arranjo) != 1) {
        throw Falha(NumeroFalha::SubscritoForaDoIntervalo);
    }
    std::pair<LONG, LONG> limites;
    Exige(SafeArrayGetLBound(arranjo, 1, &limites.first));
    Exige(SafeArrayGetUBound(arranjo, 1, &limites.second));
    return limites;
}

// The elements of an array in place, for as long as this lives.
class Acesso {
  public:
    explicit Acesso(SAFEARRAY *arranjo) : m_Arranjo(arranjo) { Exige(SafeArrayAccessData(arranjo, &m_Dados)); }
    Acesso(const Acesso &) = delete;
    Acesso &operator=(const Acesso &) = delete;
    ~Acesso() { SafeArrayUnaccessData(m_Arranjo); }

    void *Dados() const { return m_Dados; }

  private:
    SAFEARRAY *m_Arranjo;
    void *m_Dados = nullptr;
};

} // namespace

namespace detalhe {

const VARIANT &Referido(const VARIANT &variante)
{
    constexpr int maisFundo = 8;
    const VARIANT *atual = &variante;
    for (int passos = 0; passos < maisFundo; ++passos) {
        if ((V_VT(atual) & VT_BYREF) != 0 && V_BYREF(atual) == nullptr) {
            break;
        }
        if (V_VT(atual) != (VT_BYREF | VT_VARIANT)) {
            return *atual;
        }
        atual = V_VARIANTREF(atual);
    }
    throw Falha(NumeroFalha::TipoIncompativel);
}

const VARIANT &SemReferencia(const VARIANT &variante, VARIANT &apoio)
{
    const VARIANT *atual = &Referido(variante);
    if ((V_VT(atual) & VT_BYREF) == 0 || (V_VT(atual) & VT_ARRAY) != 0) {
        return *atual;
    }
    // What is read is the caller's own, and lives as long as the reference does.
    apoio = {};
    V_VT(&apoio) = static_cast<VARTYPE>(V_VT(atual) & ~VT_BYREF);
    const void *alvo = V_BYREF(atual);
    switch (V_VT(&apoio)) {
    case VT_UI1:
    case VT_I1:
        std::memcpy(&V_UI1(&apoio), alvo, 1);
        break;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
        std::memcpy(&V_I2(&apoio), alvo, 2);
        break;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
        std::memcpy(&V_I4(&apoio), alvo, 4);
        break;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
        std::memcpy(&V_R8(&apoio), alvo, 8);
        break;
    case VT_BSTR:
    case VT_DISPATCH:
    case VT_UNKNOWN:
        std::memcpy(&V_BYREF(&apoio), alvo, sizeof(void *));
        break;
    case VT_DECIMAL:
        std::memcpy(&apoio, alvo, sizeof(DECIMAL));
        V_VT(&apoio) = VT_DECIMAL;
        break;
    default:
        throw Falha(NumeroFalha::TipoIncompativel);
    }
    return apoio;
}

bool EhAusente(const VARIANT &variante)
{
    VARIANT apoio;
    const VARIANT &valor = SemReferencia(variante, apoio);
    return V_VT(&valor) == VT_ERROR && V_ERROR(&valor) == DISP_E_PARAMNOTFOUND;
}

Valor LeSimples(const VARIANT &variante, Lado lado)
{
    VARIANT apoio;
    const VARIANT &valor = SemReferencia(variante, apoio);
    if (V_VT(&valor) != VT_DISPATCH && V_VT(&valor) != VT_UNKNOWN) {
        return LeValor(valor, lado);
    }
    const Com<IDispatch> objeto = LeObjeto(valor);
    if (!objeto) {
        throw Falha(NumeroFalha::ObjetoNaoDefinido);
    }
    const Variante padrao = Tardio(objeto, lado).Padrao();
    if (padrao.Tipo() == VT_DISPATCH || padrao.Tipo() == VT_UNKNOWN) { // whose default value would be asked for in turn
        throw Falha(NumeroFalha::TipoIncompativel);
    }
    return LeValor(padrao.Bruta(), lado);
}

SAFEARRAY *NovoArranjo(VARTYPE tipo, std::size_t elementos)
{
    SAFEARRAYBOUND limite{static_cast<ULONG>(elementos), 0};
    SAFEARRAY *arranjo = SafeArrayCreate(tipo, 1, &limite);
    if (arranjo == nullptr) {
        throw std::bad_alloc();
    }
    return arranjo;
}

Bytes LeOctetos(const VARIANT &variante)
{
    VARIANT apoio;
    const VARIANT &valor = SemReferencia(variante, apoio);
    if (V_VT(&valor) == VT_EMPTY) {
        return {};
    }
    SAFEARRAY *arranjo = ArranjoDe(valor);
    const VARTYPE tipo = V_VT(&valor) & VT_TYPEMASK;
    if (tipo == VT_VARIANT) {
        Bytes octetos;
        for (const Variante &elemento : LeArranjo(valor)) {
            octetos.push_back(DeVariante<std::uint8_t>(elemento.Bruta()));
        }
        return octetos;
    }
    if (tipo != VT_UI1 && tipo != VT_I1) {
        throw Falha(NumeroFalha::TipoIncompativel);
    }
    const auto [primeiro, ultimo] = Limites(arranjo);
    if (ultimo < primeiro) {
        return {};
    }
    ConfereElementos(arranjo, tipo);
    const Acesso acesso(arranjo);
    const auto *dados = static_cast<const std::uint8_t *>(acesso.Dados());
    return Bytes(dados, dados + (ultimo - primeiro + 1));
}

Variante FazOctetos(const Bytes &octetos)
{
    Variante variante;
    SAFEARRAY *arranjo = NovoArranjo(VT_UI1, octetos.size());
    V_VT(&variante.Bruta()) = VT_ARRAY | VT_UI1;
    V_ARRAY(&variante.Bruta()) = arranjo;
    if (!octetos.empty()) {
        const Acesso acesso(arranjo);
        std::memcpy(acesso.Dados(), octetos.data(), octetos.size());
    }
    return variante;
}

void ConfereElementos(SAFEARRAY *arranjo, VARTYPE tipo)
{
    const UINT tamanho = [&]() -> UINT {
        switch (tipo) {
        case VT_UI1:
        case VT_I1:
            return 1;
        case VT_I2:
        case VT_UI2:
        case VT_BOOL:
            return 2;
        case VT_I4:
        case VT_UI4:
        case VT_INT:
        case VT_UINT:
        case VT_R4:
        case VT_ERROR:
            return 4;
        case VT_I8:
        case VT_UI8:
        case VT_R8:
        case VT_CY:
        case VT_DATE:
            return 8;
        case VT_BSTR:
        case VT_DISPATCH:
        case VT_UNKNOWN:
            return sizeof(void *);
        case VT_VARIANT:
            return sizeof(VARIANT);
        default:
            return 0;
        }
    }();
    VARTYPE dito = VT_EMPTY;
    const bool dizTipo = SUCCEEDED(SafeArrayGetVartype(arranjo, &dito));
    const bool texto = tipo == VT_BSTR;
    const bool objeto = tipo == VT_DISPATCH || tipo == VT_UNKNOWN;
    const bool outro =
        dizTipo && (texto != (dito == VT_BSTR) || objeto != (dito == VT_DISPATCH || dito == VT_UNKNOWN) ||
                    (tipo == VT_DISPATCH && dito == VT_UNKNOWN));
    if (tamanho == 0 || SafeArrayGetElemsize(arranjo) != tamanho || outro) {
        throw Falha(NumeroFalha::TipoIncompativel);
    }
}

std::vector<Variante> LeArranjo(const VARIANT &variante)
{
    VARIANT apoio;
    const VARIANT &valor = SemReferencia(variante, apoio);
    SAFEARRAY *arranjo = ArranjoDe(valor);
    const auto tipo = static_cast<VARTYPE>(V_VT(&valor) & VT_TYPEMASK);
    const auto [primeiro, ultimo] = Limites(arranjo);
    std::vector<Variante> elementos;
    if (arranjo != nullptr) {
        ConfereElementos(arranjo, tipo);
    }
    const std::int64_t quantos = std::int64_t{ultimo} - primeiro + 1;
    for (std::int64_t n = 0; n < quantos; ++n) {
        auto i = static_cast<LONG>(primeiro + n);
        Variante elemento;
        if (tipo == VT_VARIANT) {
            Exige(SafeArrayGetElement(arranjo, &i, &elemento.Bruta()));
        } else {
            Exige(SafeArrayGetElement(arranjo, &i, &V_R8(&elemento.Bruta())));
            V_VT(&elemento.Bruta()) = tipo;
        }
        elementos.push_back(std::move(elemento));
    }
    return elementos;
}

Variante FazArranjo(VARTYPE tipo, std::vector<Variante> elementos)
{
    Variante variante;
    SAFEARRAY *arranjo = NovoArranjo(tipo, elementos.size());
    V_VT(&variante.Bruta()) = static_cast<VARTYPE>(VT_ARRAY | tipo);
    V_ARRAY(&variante.Bruta()) = arranjo;
    LONG indice = 0;
    for (Variante &elemento : elementos) {
        // An element that is a pointer is handed over by itself, any other by its place.
        void *onde = tipo == VT_VARIANT                       ? static_cast<void *>(&elemento.Bruta())
                     : tipo == VT_BSTR || tipo == VT_DISPATCH ? static_cast<void *>(V_BSTR(&elemento.Bruta()))
                                                              : static_cast<void *>(&V_R8(&elemento.Bruta()));
        Exige(SafeArrayPutElement(arranjo, &indice, onde));
        ++indice;
    }
    return variante;
}

Ref<Registro> LeRegistro(const VARIANT &variante, std::string_view classe, Lado lado)
{
    const Com<IDispatch> objeto = LeObjeto(variante);
    // Before anything of it is read: a record in a record could otherwise be one that holds itself.
    if (objeto) {
        const std::string dita = ClasseDe(objeto);
        if (dita != classe && !NovoRegistro(dita).Nada()) {
            throw Falha(NumeroFalha::TipoIncompativel);
        }
    }
    return ::nativo::LeRegistro(objeto, classe, lado);
}

} // namespace detalhe

Com<IDispatch> LeObjeto(const VARIANT &variante)
{
    VARIANT apoio;
    const VARIANT &valor = detalhe::SemReferencia(variante, apoio);
    switch (V_VT(&valor)) {
    case VT_NULL: // what a script means by no object
        return nullptr;
    case VT_DISPATCH:
        return Com<IDispatch>(V_DISPATCH(&valor));
    case VT_UNKNOWN: {
        if (V_UNKNOWN(&valor) == nullptr) {
            return nullptr;
        }
        Com<IDispatch> objeto = Com<IUnknown>(V_UNKNOWN(&valor)).Como<IDispatch>();
        if (!objeto) {
            throw Falha(NumeroDe(E_NOINTERFACE));
        }
        return objeto;
    }
    default:
        throw Falha(NumeroFalha::ObjetoNecessario);
    }
}

Valor LeValor(const VARIANT &variante, Lado lado)
{
    VARIANT apoio;
    const VARIANT &valor = detalhe::SemReferencia(variante, apoio);
    switch (V_VT(&valor)) {
    case VT_EMPTY:
        return {};
    case VT_NULL:
        return Valor::Nulo{};
    case VT_BOOL:
        return V_BOOL(&valor) != VARIANT_FALSE;
    case VT_UI1:
        return static_cast<std::int16_t>(V_UI1(&valor));
    case VT_I1:
        return static_cast<std::int16_t>(static_cast<signed char>(V_UI1(&valor)));
    case VT_I2:
        return static_cast<std::int16_t>(V_I2(&valor));
    case VT_UI2:
        return static_cast<std::int32_t>(V_UI2(&valor));
    case VT_I4:
    case VT_INT:
        return static_cast<std::int32_t>(V_I4(&valor));
    case VT_UI4:
    case VT_UINT:
        return Inteiro(static_cast<std::uint32_t>(V_UI4(&valor)));
    case VT_I8:
        return Inteiro(V_I8(&valor));
    case VT_UI8:
        return Inteiro(V_UI8(&valor));
    case VT_R4:
        return static_cast<double>(V_R4(&valor));
    case VT_R8:
        return V_R8(&valor);
    case VT_CY: {
        double numero = 0;
        Exige(VarR8FromCy(V_CY(&valor), &numero));
        return numero;
    }
    case VT_DECIMAL: {
        double numero = 0;
        Exige(VarR8FromDec(const_cast<DECIMAL *>(&V_DECIMAL(&valor)), &numero));
        return numero;
    }
    case VT_DATE:
        return Data{V_DATE(&valor)};
    case VT_BSTR:
        return V_BSTR(&valor) == nullptr ? std::string() : ParaUtf8({V_BSTR(&valor), SysStringLen(V_BSTR(&valor))});
    case VT_DISPATCH:
    case VT_UNKNOWN:
        return ObjetoComo<::Objeto>(LeObjeto(valor), lado);
    case VT_ERROR:
        if (V_ERROR(&valor) == DISP_E_PARAMNOTFOUND) {
            return {};
        }
        throw Falha(NumeroFalha::TipoIncompativel);
    default:
        throw Falha(NumeroFalha::TipoIncompativel);
    }
}

Variante FazVariante(const Valor &valor, Lado lado)
{
    Variante variante;
    VARIANT &bruta = variante.Bruta();
    std::visit(
        [&](const auto &conteudo) {
            using T = std::decay_t<decltype(conteudo)>;
            if constexpr (std::is_same_v<T, Valor::Nulo>) {
                V_VT(&bruta) = VT_NULL;
            } else if constexpr (std::is_same_v<T, bool>) {
                V_VT(&bruta) = VT_BOOL;
                V_BOOL(&bruta) = conteudo ? VARIANT_TRUE : VARIANT_FALSE;
            } else if constexpr (std::is_same_v<T, std::int16_t>) {
                V_VT(&bruta) = VT_I2;
                V_I2(&bruta) = conteudo;
            } else if constexpr (std::is_same_v<T, std::int32_t>) {
                V_VT(&bruta) = VT_I4;
                V_I4(&bruta) = conteudo;
            } else if constexpr (std::is_same_v<T, double>) {
                V_VT(&bruta) = VT_R8;
                V_R8(&bruta) = conteudo;
            } else if constexpr (std::is_same_v<T, Data>) {
                V_VT(&bruta) = VT_DATE;
                V_DATE(&bruta) = conteudo.Valor;
            } else if constexpr (std::is_same_v<T, std::string>) {
                V_BSTR(&bruta) = NovoBstr(conteudo);
                V_VT(&bruta) = VT_BSTR;
            } else if constexpr (!std::is_same_v<T, Valor::Vazio>) {
                V_DISPATCH(&bruta) = Oferece(valor.ComoObjeto(), lado).Solta();
                V_VT(&bruta) = VT_DISPATCH;
            }
        },
        valor.Interno());
    return variante;
}

} // namespace nativo
