#include "windows/automation/Registros.h"

#include "host/AfericaoED.h"
#include "host/ConsultaAfericaoED.h"
#include "host/DiaEspecificoED.h"
#include "host/EquiptoED.h"
#include "host/LimiteDifED.h"
#include "host/ListaEquiptoED.h"
#include "host/RelatorioAfericaoED.h"
#include "host/SensorED.h"
#include "windows/automation/Texto16.h"

#include <objbase.h>
#include <oleauto.h>

#include <new>
#include <tuple>
#include <utility>

namespace nativo {
namespace {

template <class... R> struct Tipos {
};
using TodosOsRegistros = Tipos<AfericaoED, ConsultaAfericaoED, DiaEspecificoED, EquiptoED, LimiteDifED, ListaEquiptoED,
                               RelatorioAfericaoED, SensorED>;

constexpr std::string_view Biblioteca = "ZTVORLIB.";
constexpr std::string_view Marca = "VersaoLida"; // as a number, which every language of the platform has

// Calls `faz` with the record as what it is.
template <class Faz, class... R> void ComoEle(Registro &registro, Faz &&faz, Tipos<R...>)
{
    const auto tenta = [&]<class Este>(Este *este) {
        if (este != nullptr) {
            faz(*este);
        }
        return este != nullptr;
    };
    (tenta(dynamic_cast<R *>(&registro)) || ...);
}
template <class Faz> void ComoEle(Registro &registro, Faz &&faz)
{
    ComoEle(registro, std::forward<Faz>(faz), TodosOsRegistros());
}

template <class... R> Ref<Registro> NovoDe(std::string_view classe, Tipos<R...>)
{
    Ref<Registro> novo;
    ((classe == R::Nome && (novo = Novo<R>(), true)) || ...);
    return novo;
}

template <class T> Variante LeMembro(const Campo<T> &campo, Lado lado)
{
    // An absent list is no collection at all.
    if (!campo.Escrito() && !DetalheRegistro::EhListaDe<T>::value) {
        return {};
    }
    return ParaVariante(campo.Valor(), lado);
}

template <class T> void EscreveMembro(Campo<T> &campo, const VARIANT &valor, Lado lado)
{
    VARIANT apoio;
    const VARIANT &dado = detalhe::SemReferencia(valor, apoio);
    const bool ausente = V_VT(&dado) == VT_EMPTY ||
                         ((V_VT(&dado) == VT_DISPATCH || V_VT(&dado) == VT_UNKNOWN) && V_UNKNOWN(&dado) == nullptr);
    campo = ausente ? Campo<T>() : Campo<T>(campo);
    if (!ausente) {
        campo = DeVariante<T>(dado, lado);
    }
}

template <class R> void OfereceUm()
{
    OfereceMembros<R>([](Membros<R> &membros) {
        const auto oferece = [&]<class T>(const Membro<R, T> &membro) {
            Campo<T> R::*onde = membro.Onde;
            membros.PropriedadeBruta(
                std::string(membro.Nome), [onde](R &registro, Lado lado) { return LeMembro(registro.*onde, lado); },
                [onde](R &registro, const VARIANT &valor, Lado lado) { EscreveMembro(registro.*onde, valor, lado); });
        };
        std::apply([&](const auto &...membro) { (oferece(membro), ...); }, R::Membros());
        membros.Propriedade(
            std::string(Marca), [](R &registro) { return static_cast<double>(registro.VersaoLida); },
            +[](R &registro, double marca) { registro.VersaoLida = static_cast<std::int64_t>(marca); });
    });
}

template <class... R> void OfereceTodos(Tipos<R...>)
{
    (OfereceUm<R>(), ...);
}

} // namespace

void detalhe::OfereceTiposProprios()
{
    static const bool oferecidos = [] {
        OfereceMembros<ColecaoOferecida>([](Membros<ColecaoOferecida> &membros) {
            membros.Leitura("Count", &ColecaoOferecida::Count);
            membros.Metodo("Item", 1, {"Index"}, [](ColecaoOferecida &colecao, Chamada &chamada) {
                chamada.Responde(colecao.Item(chamada.Le<Valor>(0)));
            });
            membros.Padrao("Item");
            membros.Metodo("Add", 1, {"Item", "Key"}, [](ColecaoOferecida &colecao, Chamada &chamada) {
                colecao.Add(chamada.Argumento(0), chamada.Le<Valor>(1), chamada.DeQueLado());
            });
            membros.Metodo("Remove", 1, {"Index"},
                           [](ColecaoOferecida &colecao, Chamada &chamada) { colecao.Remove(chamada.Le<Valor>(0)); });
            membros.Enumera([](ColecaoOferecida &colecao, Lado lado) {
                std::vector<Variante> elementos;
                for (std::int32_t posicao = 1; posicao <= colecao.Count(); ++posicao) {
                    elementos.push_back(ParaVariante(colecao.Item(posicao), lado));
                }
                return elementos;
            });
        });
        OfereceTodos(TodosOsRegistros());
        return true;
    }();
    static_cast<void>(oferecidos);
}

namespace {

// The library's class of a record; empty when it is not registered.
Com<IDispatch> DaBiblioteca(std::string_view classe)
{
    CLSID numero{};
    const std::wstring nome = ParaUtf16(std::string(Biblioteca).append(classe));
    Com<IDispatch> objeto;
    if (FAILED(CLSIDFromProgID(nome.c_str(), &numero))) {
        return {};
    }
    const HRESULT codigo = CoCreateInstance(numero, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_IDispatch,
                                            objeto.RecebeVazio());
    if (codigo == REGDB_E_CLASSNOTREG) {
        return {};
    }
    if (FAILED(codigo)) { // one that is there and does not work is no other's to stand in for
        throw Falha(NumeroFalha::ClasseInexistente);
    }
    return objeto;
}

void Preenche(const Tardio &destino, Registro &registro, Lado lado)
{
    ComoEle(registro, [&]<class R>(R &este) {
        este.CadaMembro([&]<class T>(std::string_view nome, const Campo<T> &campo) {
            if (campo.Escrito()) {
                destino.Escreve(nome, LeMembro(campo, lado));
            }
        });
    });
    if (registro.VersaoLida != 0) { // the library need not know of it
        IgnoraErro([&] { destino.Escreve(Marca, static_cast<double>(registro.VersaoLida)); });
    }
}

// registroEnviado: the record was sent as this object, which has come back.
void Le(const Tardio &origem, Registro &registro, bool registroEnviado, Lado lado)
{
    ComoEle(registro, [&]<class R>(R &este) {
        este.CadaMembro([&]<class T>(std::string_view nome, Campo<T> &campo) {
            Campo<T> lido;
            EscreveMembro(lido, origem.Chama<Variante>(nome).Bruta(), lado);
            // What the library's own default answers for was not written by anybody.
            if (campo.Escrito() || !registroEnviado || !(lido.Valor() == T{})) {
                campo = lido;
            }
        });
    });
    IgnoraErro([&] { registro.VersaoLida = static_cast<std::int64_t>(origem.Chama<double>(Marca)); });
}

Ref<Registro> NossoOuNada(const Com<IDispatch> &objeto, Lado lado)
{
    const Com<IInterno> interno = InternoDe(objeto);
    if (!interno || interno->DeQueLado() != lado) {
        return {};
    }
    // A record of this side that is no copy of the other side's.
    return ComoTipo<Registro>(Eu(*interno->Alvo()));
}

} // namespace

Ref<Registro> NovoRegistro(std::string_view classe)
{
    return NovoDe(classe, TodosOsRegistros());
}

Com<IDispatch> OfereceRegistro(const Ref<Registro> &registro, Lado lado)
{
    Com<IDispatch> daBiblioteca = DaBiblioteca(registro->NomeTipo());
    if (!daBiblioteca) {
        return Embrulha(registro, lado);
    }
    Preenche(Tardio(daBiblioteca, lado), *registro, lado);
    return daBiblioteca;
}

Ref<Registro> LeRegistro(const Com<IDispatch> &objeto, std::string_view classe, Lado lado)
{
    if (!objeto) {
        return {};
    }
    if (Ref<Registro> nosso = NossoOuNada(objeto, lado)) {
        return nosso;
    }
    Ref<Registro> registro = NovoRegistro(ClasseDe(objeto));
    if (registro.Nada()) {
        registro = NovoRegistro(classe);
    }
    Le(Tardio(objeto, lado), *registro, false, lado);
    return registro;
}

ParametrosRemotos::ParametrosRemotos(std::vector<Valor> &parametros, Lado lado) : m_Lado(lado)
{
    m_Variaveis.resize(parametros.size());
    SAFEARRAY *arranjo = detalhe::NovoArranjo(VT_VARIANT, parametros.size());
    V_VT(&m_Arranjo.Bruta()) = VT_ARRAY | VT_VARIANT;
    V_ARRAY(&m_Arranjo.Bruta()) = arranjo;
    for (LONG i = 0; i < static_cast<LONG>(parametros.size()); ++i) {
        const Valor &parametro = parametros[static_cast<std::size_t>(i)];
        if (const auto *variavel = std::get_if<Valor::Variavel>(&parametro.Interno())) {
            Variavel &nossa = m_Variaveis[static_cast<std::size_t>(i)];
            nossa.Alvo = variavel->Alvo;
            nossa.Enviado = Oferece(*variavel->Alvo, lado);
            nossa.Atual = nossa.Enviado;
            VARIANT referencia{};
            V_VT(&referencia) = VT_BYREF | VT_DISPATCH;
            V_DISPATCHREF(&referencia) = nossa.Atual.Endereco();
            Exige(SafeArrayPutElement(arranjo, &i, &referencia));
        } else {
            Variante valor = FazVariante(parametro, lado);
            Exige(SafeArrayPutElement(arranjo, &i, &valor.Bruta()));
        }
    }
}

VARIANT ParametrosRemotos::Arranjo()
{
    VARIANT referencia{};
    V_VT(&referencia) = VT_BYREF | VT_ARRAY | VT_VARIANT;
    V_ARRAYREF(&referencia) = &V_ARRAY(&m_Arranjo.Bruta());
    return referencia;
}

void ParametrosRemotos::Devolve()
{
    // The called object may have put another object into the variable, or into the element itself.
    const std::vector<Variante> elementos =
        V_ARRAY(&m_Arranjo.Bruta()) == nullptr ? std::vector<Variante>() : detalhe::LeArranjo(m_Arranjo.Bruta());
    for (std::size_t i = 0; i < m_Variaveis.size(); ++i) {
        const Variavel &variavel = m_Variaveis[i];
        if (variavel.Alvo == nullptr) {
            continue;
        }
        const bool porElemento = i < elementos.size() && (elementos[i].Tipo() & VT_BYREF) == 0;
        const Com<IDispatch> atual = porElemento ? LeObjeto(elementos[i].Bruta()) : variavel.Atual;
        Ref<::Objeto> &alvo = *variavel.Alvo;
        auto *registro = dynamic_cast<Registro *>(alvo.Ponteiro());
        if (atual == variavel.Enviado) {
            // What the library's object holds now is what the record holds.
            if (registro != nullptr && NossoOuNada(atual, m_Lado).Nada()) {
                Le(Tardio(atual, m_Lado), *registro, true, m_Lado);
            }
        } else if (!atual) {
            alvo = nullptr;
        } else if (registro != nullptr) {
            alvo = LeRegistro(atual, registro->NomeTipo(), m_Lado);
        } else {
            alvo = ObjetoComo<::Objeto>(atual, m_Lado);
        }
    }
}

} // namespace nativo
