#pragma once

#include <oaidl.h>
#include <windows.h>

#include <cstddef>
#include <string_view>
#include <utility>

namespace nativo {

// Counted reference to a foreign object; empty is none.
template <class T> class Com {
  public:
    Com() noexcept = default;
    Com(std::nullptr_t) noexcept {}
    explicit Com(T *alvo) noexcept : m_Alvo(alvo)
    {
        if (m_Alvo != nullptr) {
            m_Alvo->AddRef();
        }
    }
    Com(const Com &outra) noexcept : Com(outra.m_Alvo) {}
    Com(Com &&outra) noexcept : m_Alvo(std::exchange(outra.m_Alvo, nullptr)) {}
    Com &operator=(Com outra) noexcept
    {
        std::swap(m_Alvo, outra.m_Alvo);
        return *this;
    }
    ~Com()
    {
        if (m_Alvo != nullptr) {
            m_Alvo->Release();
        }
    }

    // Takes over a reference that is counted already.
    static Com Adota(T *alvo) noexcept
    {
        Com referencia;
        referencia.m_Alvo = alvo;
        return referencia;
    }

    T *operator->() const noexcept { return m_Alvo; }
    T *Ponteiro() const noexcept { return m_Alvo; }
    explicit operator bool() const noexcept { return m_Alvo != nullptr; }
    bool operator==(const Com &outra) const noexcept { return m_Alvo == outra.m_Alvo; }

    // Where a call puts a counted reference; what was here is let go.
    T **Recebe() noexcept
    {
        *this = nullptr;
        return &m_Alvo;
    }
    void **RecebeVazio() noexcept { return reinterpret_cast<void **>(Recebe()); }
    // Where a call replaces the counted reference that is here.
    T **Endereco() noexcept { return &m_Alvo; }
    // Gives the counted reference away.
    T *Solta() noexcept { return std::exchange(m_Alvo, nullptr); }

    // Another interface of the same object; empty when it has none.
    template <class U> Com<U> Como(REFIID iid = __uuidof(U)) const noexcept
    {
        Com<U> outra;
        if (m_Alvo != nullptr && FAILED(m_Alvo->QueryInterface(iid, outra.RecebeVazio()))) {
            outra.Solta();
        }
        return outra;
    }

  private:
    T *m_Alvo = nullptr;
};

// A VARIANT that frees what it holds.
class Variante {
  public:
    Variante() noexcept { VariantInit(&m_Bruta); }
    Variante(const Variante &outra) : Variante() { VariantCopy(&m_Bruta, const_cast<VARIANT *>(&outra.m_Bruta)); }
    Variante(Variante &&outra) noexcept : m_Bruta(outra.m_Bruta) { VariantInit(&outra.m_Bruta); }
    Variante &operator=(Variante outra) noexcept
    {
        std::swap(m_Bruta, outra.m_Bruta);
        return *this;
    }
    ~Variante() { VariantClear(&m_Bruta); }

    VARIANT &Bruta() noexcept { return m_Bruta; }
    const VARIANT &Bruta() const noexcept { return m_Bruta; }
    VARTYPE Tipo() const noexcept { return V_VT(&m_Bruta); }
    void Limpa() noexcept { VariantClear(&m_Bruta); }
    // Gives what it holds to a VARIANT that holds nothing.
    void SoltaEm(VARIANT &destino) noexcept
    {
        destino = m_Bruta;
        VariantInit(&m_Bruta);
    }

  private:
    VARIANT m_Bruta;
};

// Text as the platform counts it; raises fault 7 when there is no memory for it.
BSTR NovoBstr(std::string_view texto);

} // namespace nativo
