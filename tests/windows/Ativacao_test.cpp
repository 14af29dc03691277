#include "tests/windows/ComponenteDeTeste.h"
#include "tests/windows/HospedeiroDeTeste.h"
#include "windows/automation/Tardio.h"

#include <objbase.h>
#include <oleauto.h>

#include <string>

namespace nativo {
namespace {

// The component is created as its hosts create it: by the class's name.
void CriaEUsa()
{
    CLSID classe{};
    ASSERT_EQ(CLSIDFromProgID(L"ZTAVOREQUIP.Geral", &classe), S_OK); // for a manifest a number made up on the spot
    HospedeiroDeTeste hospedeiro;
    {
        Com<_Geral> geral;
        ASSERT_EQ(CoCreateInstance(classe, nullptr, CLSCTX_INPROC_SERVER, __uuidof(_Geral), geral.RecebeVazio()), S_OK);
        ASSERT_EQ(hospedeiro.Configura(*geral.Ponteiro()), S_OK);
        const Tardio tardio(geral.Como<IDispatch>());
        EXPECT_EQ(tardio.Chama<std::string>("QMRModuloID"), "VOR");
        // The other classes are public, and not created.
        for (const CLSID &outra : {__uuidof(Especifica), __uuidof(CVorEquip), __uuidof(CVORPesqEquip)}) {
            Com<IUnknown> nenhum;
            EXPECT_EQ(CoCreateInstance(outra, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, nenhum.RecebeVazio()),
                      REGDB_E_CLASSNOTREG);
        }
    }
    CoFreeUnusedLibrariesEx(0, 0);
    EXPECT_EQ(GetModuleHandleW(L"ZTAVOREQUIP.dll"), nullptr);
}

// Calls the shell from a thread with another apartment through the interface's table, which the platform carries over
// by the type library.
void ChamaDeOutroFio()
{
    Com<_Geral> geral;
    ASSERT_EQ(CoCreateInstance(__uuidof(Geral), nullptr, CLSCTX_INPROC_SERVER, __uuidof(_Geral), geral.RecebeVazio()),
              S_OK);
    HospedeiroDeTeste hospedeiro;
    ASSERT_EQ(hospedeiro.Configura(*geral.Ponteiro()), S_OK);
    struct Caso {
        IStream *Levada = nullptr;
        HRESULT Recebida = E_FAIL;
        std::string Sistema;
        HRESULT Recusa = S_OK; // what belongs to it travels with late-bound calls alone on every platform
    } caso;
    ASSERT_EQ(CoMarshalInterThreadInterfaceInStream(__uuidof(_Geral), geral.Ponteiro(), &caso.Levada), S_OK);
    HANDLE fio = CreateThread(
        nullptr, 0,
        [](void *dado) CALLBACK -> DWORD {
            auto &este = *static_cast<Caso *>(dado);
            CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
            {
                Com<_Geral> deFora;
                este.Recebida = CoGetInterfaceAndReleaseStream(este.Levada, __uuidof(_Geral), deFora.RecebeVazio());
                if (deFora) {
                    BSTR texto = nullptr;
                    deFora->get_SistemaQMR(&texto);
                    este.Sistema = texto == nullptr ? std::string() : std::string(texto, texto + SysStringLen(texto));
                    SysFreeString(texto);
                    IDispatch *nenhum = nullptr;
                    este.Recusa = deFora->ObtemTransacao2(nullptr, &nenhum);
                }
            }
            CoUninitialize();
            return 0;
        },
        &caso, 0, nullptr);
    while (MsgWaitForMultipleObjects(1, &fio, FALSE, INFINITE, QS_ALLINPUT) != WAIT_OBJECT_0) {
        MSG mensagem;
        while (PeekMessageW(&mensagem, nullptr, 0, 0, PM_REMOVE) != FALSE) {
            DispatchMessageW(&mensagem);
        }
    }
    CloseHandle(fio);
    EXPECT_EQ(caso.Recebida, S_OK);
    EXPECT_EQ(caso.Sistema, "VOR");
    EXPECT_EQ(caso.Recusa, static_cast<HRESULT>(-1));
}

// What lies beside the library is active as long as this lives.
class ManifestoAtivo {
  public:
    ManifestoAtivo()
    {
        const std::wstring arquivo = ComponenteDeTeste::Pasta() + L"\\ZTAVOREQUIP.manifest";
        ACTCTXW contexto{};
        contexto.cbSize = sizeof contexto;
        contexto.lpSource = arquivo.c_str();
        m_Contexto = CreateActCtxW(&contexto);
        EXPECT_NE(m_Contexto, INVALID_HANDLE_VALUE) << GetLastError();
        EXPECT_NE(ActivateActCtx(m_Contexto, &m_Marca), FALSE);
    }
    ManifestoAtivo(const ManifestoAtivo &) = delete;
    ManifestoAtivo &operator=(const ManifestoAtivo &) = delete;
    ~ManifestoAtivo()
    {
        DeactivateActCtx(0, m_Marca);
        ReleaseActCtx(m_Contexto);
    }

  private:
    HANDLE m_Contexto;
    ULONG_PTR m_Marca = 0;
};

class AtivacaoTeste : public testing::Test {
  protected:
    AtivacaoTeste() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
    ~AtivacaoTeste() override { CoUninitialize(); }
};

TEST_F(AtivacaoTeste, ByTheManifest_WithoutRegistration_CreatesTheClassAndUnloads)
{
    CLSID classe{};
    ASSERT_NE(CLSIDFromProgID(L"ZTAVOREQUIP.Geral", &classe), S_OK);
    {
        const ManifestoAtivo manifesto;
        CriaEUsa();
    }
    EXPECT_NE(CLSIDFromProgID(L"ZTAVOREQUIP.Geral", &classe), S_OK);
}

TEST_F(AtivacaoTeste, ByTheManifest_FromAnotherThread_IsCarriedOver)
{
    const ManifestoAtivo manifesto;
    ChamaDeOutroFio();
}

TEST_F(AtivacaoTeste, ByTheRegistry_WhenRegistered_CreatesTheClassAndUnloads)
{
    {
        const ComponenteDeTeste componente;
        ASSERT_EQ(componente.Registra(), S_OK);
    }
    CriaEUsa();
    ChamaDeOutroFio();
    const ComponenteDeTeste componente;
    EXPECT_EQ(componente.Desregistra(), S_OK);
    Com<IUnknown> nenhum;
    EXPECT_EQ(CoCreateInstance(__uuidof(Geral), nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, nenhum.RecebeVazio()),
              REGDB_E_CLASSNOTREG);
}

} // namespace
} // namespace nativo
