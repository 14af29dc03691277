// A host in C++ opens the equipment registry, asks it for an equipment and prints its certificate, over the interfaces'
// tables. ZTAVOREQUIP.h is made from the type library; the build target biblioteca_de_tipos leaves it in the build
// folder.
#include "selecao.h"

#include <ZTAVOREQUIP.h>

#include <cstdint>
#include <string_view>

namespace exemplo {
namespace {

// A counted reference that is given back at the end of its scope.
template <class T> class Ref {
  public:
    Ref() = default;
    Ref(const Ref &) = delete;
    Ref &operator=(const Ref &) = delete;
    ~Ref()
    {
        if (m_Objeto != nullptr) {
            m_Objeto->Release();
        }
    }
    T *operator->() const { return m_Objeto; }
    T *Ponteiro() const { return m_Objeto; }
    T **Recebe() { return &m_Objeto; }

  private:
    T *m_Objeto = nullptr;
};

// A text of automation that frees itself.
class Texto {
  public:
    Texto() = default;
    explicit Texto(std::wstring_view texto) : m_Bstr(SysAllocStringLen(texto.data(), static_cast<UINT>(texto.size())))
    {
    }
    Texto(const Texto &) = delete;
    Texto &operator=(const Texto &) = delete;
    ~Texto() { SysFreeString(m_Bstr); }
    operator BSTR() const { return m_Bstr; }
    BSTR *Recebe() { return &m_Bstr; }
    // A null text is an empty one.
    std::wstring Le() const { return {m_Bstr, m_Bstr + SysStringLen(m_Bstr)}; }

  private:
    BSTR m_Bstr = nullptr;
};

// A fault as the component raised it.
struct Falha {
    std::int32_t Numero;
    std::wstring Fonte;
    std::wstring Descricao;
};

// The faults' own numbers leave as 0x800A0000 + number; everything else is its own code.
std::int32_t NumeroDe(HRESULT resposta)
{
    constexpr std::uint32_t Base = 0x800A0000U;
    const auto codigo = static_cast<std::uint32_t>(resposta);
    return (codigo & 0xFFFF0000U) == Base ? static_cast<std::int32_t>(codigo - Base) : resposta;
}

// Every call of the component goes through here. What failed has left an error object in the thread, which is asked
// for at once: the next call takes it away.
void Confere(HRESULT resposta, IUnknown *objeto, REFIID iid)
{
    if (SUCCEEDED(resposta)) {
        return;
    }
    Texto fonte;
    Texto descricao;
    Ref<ISupportErrorInfo> conta;
    Ref<IErrorInfo> erro;
    if (objeto != nullptr &&
        objeto->QueryInterface(__uuidof(ISupportErrorInfo), reinterpret_cast<void **>(conta.Recebe())) == S_OK &&
        conta->InterfaceSupportsErrorInfo(iid) == S_OK && GetErrorInfo(0, erro.Recebe()) == S_OK) {
        erro->GetSource(fonte.Recebe());
        erro->GetDescription(descricao.Recebe());
    }
    throw Falha{NumeroDe(resposta), fonte.Le(), descricao.Le()};
}
template <class T> void Confere(HRESULT resposta, const Ref<T> &objeto)
{
    Confere(resposta, objeto.Ponteiro(), __uuidof(T));
}

void Relata(std::wstring &relato, std::wstring_view nome, std::wstring_view valor)
{
    relato.append(nome).append(L": ").append(valor).append(L"\r\n");
}

// The order in which a host opens the registry.
void Abre(const Ref<_Geral> &geral, const ObjetosDoHospedeiro &hospedeiro)
{
    // Objects go by reference, so they are variables. Parametros makes the specific part, and clears ObjInterface,
    // which is set afterwards.
    ObjetosDoHospedeiro objetos = hospedeiro;
    if (objetos.cGlobal != nullptr) {
        Confere(geral->putref_cGlobal(objetos.cGlobal), geral);
    }
    Confere(geral->Parametros(&objetos.FormMDI, &objetos.MenuDestino, &objetos.Relatorios, &objetos.Ajuda, &objetos.MDB,
                              &objetos.oAppEXE),
            geral);
    Confere(geral->putref_ObjInterface(objetos.ObjInterface), geral);
    const Texto municipio(hospedeiro.sMunicCreden);
    VARIANT sMunicCreden;
    VariantInit(&sMunicCreden);
    sMunicCreden.vt = VT_BSTR;
    sMunicCreden.bstrVal = municipio; // stays the caller's
    Confere(geral->Logon(&objetos.objMTM, &objetos.objSCA, sMunicCreden), geral);
}

// The seven answers about the equipment that was chosen.
void RelataEscolha(const Ref<_CVorEquip> &consulta, std::wstring &relato)
{
    LONG numero = 0;
    Texto codigo;
    Texto modelo;
    SHORT velocidade = 0;
    Texto afericao;
    Texto marca;
    DATE verificacao = 0;
    Confere(consulta->get_NroIntEquip(&numero), consulta);
    Confere(consulta->get_Codigo(codigo.Recebe()), consulta);
    Confere(consulta->get_Modelo(modelo.Recebe()), consulta);
    Confere(consulta->get_VelocPerm(&velocidade), consulta);
    Confere(consulta->get_NroInmetro(afericao.Recebe()), consulta);
    Confere(consulta->get_MarcaInmetro(marca.Recebe()), consulta);
    Confere(consulta->get_DtVerifInmetro(&verificacao), consulta);
    SYSTEMTIME dia = {};
    VariantTimeToSystemTime(verificacao, &dia);
    Relata(relato, L"NroIntEquip", std::to_wstring(numero));
    Relata(relato, L"Codigo", codigo.Le());
    Relata(relato, L"Modelo", modelo.Le());
    Relata(relato, L"VelocPerm", std::to_wstring(velocidade));
    Relata(relato, L"NroInmetro", afericao.Le());
    Relata(relato, L"MarcaInmetro", marca.Le());
    Relata(relato, L"DtVerifInmetro",
           std::to_wstring(dia.wDay) + L"/" + std::to_wstring(dia.wMonth) + L"/" + std::to_wstring(dia.wYear));
}

// What a sibling module does with a registry that its host has opened.
void Consulta(const Ref<_Geral> &geral, std::wstring &relato)
{
    Ref<_Especifica> especifica;
    Confere(geral->get_CEspecifica(especifica.Recebe()), geral);
    Ref<_CVorEquip> consulta;
    Confere(especifica->CreateCVorEquip(consulta.Recebe()), especifica);

    // What the selection starts with: a code and a type, each of which may be empty, and the date of the infraction.
    // With a date, only an equipment that has a calibration in force on that day can be chosen; 0 is none. The types
    // are those of equipment that takes no pictures, as E.
    SYSTEMTIME dia = {};
    dia.wYear = 2026;
    dia.wMonth = 3;
    dia.wDay = 19;
    DATE dtInfracao = 0;
    SystemTimeToVariantTime(&dia, &dtInfracao);
    // The selection's window belongs to the host's; the call comes back when it was closed.
    VARIANT_BOOL escolheu = VARIANT_FALSE;
    Confere(consulta->SelecionaEquipamento(Texto(L"ET-04"), Texto(L"E"), dtInfracao, &escolheu), consulta);
    if (escolheu == VARIANT_FALSE) {
        Relata(relato, L"Escolha", L"nenhuma");
    } else {
        RelataEscolha(consulta, relato);
        // The certificate of the infraction with the keys 12 and A1, in the viewer. False if the services refused; they
        // have then said why.
        VARIANT_BOOL mostrou = VARIANT_FALSE;
        Confere(consulta->ImpCertificadoAfericaoEquipto(12, Texto(L"A1"), Texto(L"Fulano"), VARIANT_TRUE, &mostrou),
                consulta);
        Relata(relato, L"Certificado", std::to_wstring(mostrou));
    }
    // What the viewer was shown stays in the folder for temporary documents until somebody asks for this.
    Confere(consulta->LimpaArqTemp(), consulta);
}

} // namespace

std::wstring Seleciona(const ObjetosDoHospedeiro &hospedeiro)
{
    std::wstring relato;
    Ref<_Geral> geral;
    try {
        // By the class's identifier. Who would rather go by the name asks CLSIDFromProgID for "ZTAVOREQUIP.Geral".
        Confere(CoCreateInstance(__uuidof(Geral), nullptr, CLSCTX_INPROC_SERVER, __uuidof(_Geral),
                                 reinterpret_cast<void **>(geral.Recebe())),
                nullptr, IID_NULL);
        Abre(geral, hospedeiro);
        Consulta(geral, relato);
        Confere(geral->Logoff(), geral);
    } catch (const Falha &falha) {
        // The number is the registry's or the host's own, the source the way that the fault took through the module.
        Relata(relato, L"Falha", std::to_wstring(falha.Numero));
        Relata(relato, L"Fonte", falha.Fonte);
        Relata(relato, L"Descricao", falha.Descricao);
    }
    // The registry is ended whatever came of it, and lets the host's objects go.
    if (geral.Ponteiro() != nullptr) {
        geral->Encerra();
    }
    Relata(relato, L"FIM", L"selecao");
    return relato;
}

} // namespace exemplo
