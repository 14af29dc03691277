#include "tests/windows/travessia/ParametrosRecebidos.h"

#include "host/AfericaoED.h"
#include "host/ConsultaAfericaoED.h"
#include "host/DiaEspecificoED.h"
#include "host/EquiptoED.h"
#include "host/LimiteDifED.h"
#include "host/ListaEquiptoED.h"
#include "host/RelatorioAfericaoED.h"
#include "host/SensorED.h"
#include "windows/automation/Registros.h"
#include "windows/automation/Tardio.h"

#include <tuple>
#include <utility>

namespace nativo {
namespace {

Ref<Objeto> Lido(const Com<IDispatch> &vindo)
{
    if (!vindo) {
        return {};
    }
    const std::string classe = ClasseDe(vindo);
    return NovoRegistro(classe).Nada() ? ObjetoComo<Objeto>(vindo, Lado::Hospedeiro)
                                       : Ref<Objeto>(LeRegistro(vindo, classe, Lado::Hospedeiro));
}

// Writes the members that the service has changed into the caller's object.
template <class R> void DevolveMudancasDe(const Tardio &objeto, const Registro &antes, const Registro &agora)
{
    const auto *anterior = dynamic_cast<const R *>(&antes);
    const auto *atual = dynamic_cast<const R *>(&agora);
    if (atual == nullptr) {
        return;
    }
    const auto devolve = [&]<class T>(const Membro<R, T> &membro) {
        const Campo<T> &campo = atual->*membro.Onde;
        const Campo<T> &como = anterior->*membro.Onde;
        if (campo.Escrito() && (!como.Escrito() || DetalheRegistro::TextoDoValor(campo.Valor()) !=
                                                       DetalheRegistro::TextoDoValor(como.Valor()))) {
            objeto.Escreve(membro.Nome, campo.Valor());
        }
    };
    std::apply([&](const auto &...membro) { (devolve(membro), ...); }, R::Membros());
    if (agora.VersaoLida != antes.VersaoLida) { // of which the object need not know
        IgnoraErro([&] { objeto.Escreve("VersaoLida", static_cast<double>(agora.VersaoLida)); });
    }
}

template <class... R> void DevolveMudancas(const Tardio &objeto, const Registro &antes, const Registro &agora)
{
    (DevolveMudancasDe<R>(objeto, antes, agora), ...);
}

} // namespace

ParametrosRecebidos::ParametrosRecebidos(const VARIANT &arranjo)
{
    const VARIANT *atual = &arranjo;
    while (V_VT(atual) == (VT_BYREF | VT_VARIANT)) {
        atual = V_VARIANTREF(atual);
    }
    for (const Variante &elemento : detalhe::LeArranjo(*atual)) {
        const VARIANT &bruto = elemento.Bruta();
        if (V_VT(&bruto) != (VT_BYREF | VT_DISPATCH)) {
            m_Parametros.push_back(LeValor(bruto, Lado::Hospedeiro));
            continue;
        }
        Variavel &variavel = m_Variaveis.emplace_back();
        variavel.Lugar = V_DISPATCHREF(&bruto);
        variavel.Vindo = Com<IDispatch>(*variavel.Lugar);
        variavel.Objeto_ = Lido(variavel.Vindo);
        if (auto *registro = dynamic_cast<Registro *>(variavel.Objeto_.Ponteiro())) {
            variavel.Antes = registro->Copia();
        }
        variavel.Atual = variavel.Objeto_;
        m_Parametros.push_back(Valor::PorReferencia(variavel.Atual));
    }
}

void ParametrosRecebidos::Devolve()
{
    for (Variavel &variavel : m_Variaveis) {
        if (!(variavel.Atual == variavel.Objeto_)) {
            Com<IDispatch> novo = Oferece(variavel.Atual, Lado::Hospedeiro);
            Com<IDispatch>::Adota(std::exchange(*variavel.Lugar, novo.Solta()));
        } else if (!variavel.Antes.Nada()) {
            DevolveMudancas<AfericaoED, ConsultaAfericaoED, DiaEspecificoED, EquiptoED, LimiteDifED, ListaEquiptoED,
                            RelatorioAfericaoED, SensorED>(Tardio(variavel.Vindo, Lado::Hospedeiro), *variavel.Antes,
                                                           *ComoTipo<Registro>(variavel.Atual));
        }
    }
}

} // namespace nativo
