#pragma once

#include "windows/automation/Embrulho.h"
#include "windows/automation/Tardio.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace nativo {

// A collection as the foreign world gets it: Count, Item, Add, Remove, and to be gone over in turn. It is the
// collection itself and not a copy.
class ColecaoOferecida : public Objeto {
  public:
    std::string_view NomeTipo() const override { return "Collection"; }

    virtual std::int32_t Count() const = 0;
    // By position from 1, or by key.
    virtual Ref<::Objeto> Item(const Valor &indice) const = 0;
    virtual void Add(const VARIANT &item, const Valor &chave, Lado lado) = 0;
    virtual void Remove(const Valor &indice) = 0;
};

template <class T> class ColecaoDe : public ColecaoOferecida {
  public:
    explicit ColecaoDe(Ref<Colecao<Ref<T>>> colecao) : m_Colecao(std::move(colecao)) {}

    const Ref<Colecao<Ref<T>>> &Ela() const { return m_Colecao; }

    std::int32_t Count() const override { return m_Colecao->Count(); }
    Ref<::Objeto> Item(const Valor &indice) const override
    {
        return PorTexto(indice) ? m_Colecao->Item(indice.CStr()) : m_Colecao->Item(indice.CLng());
    }
    void Add(const VARIANT &item, const Valor &chave, Lado lado) override
    {
        Ref<T> novo = DeVariante<Ref<T>>(item, lado);
        if (chave.EhVazio()) {
            m_Colecao->Add(std::move(novo));
        } else {
            m_Colecao->Add(std::move(novo), chave.CStr());
        }
    }
    void Remove(const Valor &indice) override
    {
        if (PorTexto(indice)) {
            m_Colecao->Remove(indice.CStr());
        } else {
            m_Colecao->Remove(indice.CLng());
        }
    }

  private:
    static bool PorTexto(const Valor &indice) { return std::holds_alternative<std::string>(indice.Interno()); }

    Ref<Colecao<Ref<T>>> m_Colecao;
};

template <class T> Com<IDispatch> OfereceColecao(const Ref<Colecao<Ref<T>>> &colecao, Lado lado)
{
    return colecao.Nada() ? nullptr : Embrulha(Novo<ColecaoDe<T>>(colecao), lado);
}

template <class T> Ref<Colecao<Ref<T>>> LeColecao(const Com<IDispatch> &objeto, Lado lado)
{
    if (!objeto) {
        return {};
    }
    // A collection of records is read across the boundary, as the records are.
    const Com<IInterno> interno = objeto.Como<IInterno>();
    const bool deFora = !interno || (std::is_base_of_v<Registro, T> && interno->DeQueLado() != lado);
    if (const Ref<::Objeto> nossa = deFora ? nullptr : Interno(objeto, lado)) {
        if (const auto *dela = dynamic_cast<const ColecaoDe<T> *>(nossa.Ponteiro())) {
            return dela->Ela();
        }
        throw Falha(NumeroFalha::TipoIncompativel);
    }
    auto colecao = Novo<Colecao<Ref<T>>>();
    const Tardio alheia(objeto, lado);
    const auto quantos = alheia.Chama<std::int32_t>("Count");
    for (std::int32_t posicao = 1; posicao <= quantos; ++posicao) {
        colecao->Add(alheia.Chama<Ref<T>>("Item", posicao));
    }
    return colecao;
}

} // namespace nativo
