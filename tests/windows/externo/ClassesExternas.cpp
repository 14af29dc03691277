#include "tests/windows/externo/ClassesExternas.h"

#include "tests/windows/externo/Var.h"

#include <algorithm>

namespace nativo {

namespace {

const std::wstring Raiz = L"Software\\Classes\\";
const std::wstring Apontadas = Raiz + L"CLSID\\{80D349F1-1D47-42CF-B53F-BA4AA48D1130}\\Classes";

class FabricaExterna : public IClassFactory {
  public:
    explicit FabricaExterna(ClassesExternas::Fabrica fabrica) : m_Fabrica(std::move(fabrica)) {}
    virtual ~FabricaExterna() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void **objeto) override
    {
        if (iid != IID_IUnknown && iid != IID_IClassFactory) {
            *objeto = nullptr;
            return E_NOINTERFACE;
        }
        *objeto = static_cast<IClassFactory *>(this);
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++m_Referencias); }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const long restam = --m_Referencias;
        if (restam == 0) {
            delete this;
        }
        return static_cast<ULONG>(restam);
    }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown *externo, REFIID iid, void **objeto) override
    {
        *objeto = nullptr;
        if (externo != nullptr) {
            return CLASS_E_NOAGGREGATION;
        }
        try {
            const Contado<IDispatch> novo = m_Fabrica();
            return novo ? novo->QueryInterface(iid, objeto) : E_OUTOFMEMORY;
        } catch (const FalhaExterna &falha) {
            return RespostaDoNumero(falha.Numero);
        } catch (...) {
            return E_OUTOFMEMORY;
        }
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

  private:
    ClassesExternas::Fabrica m_Fabrica;
    long m_Referencias = 1;
};

void Escreve(HKEY raiz, const std::wstring &chave, const wchar_t *nome, const std::wstring &valor)
{
    const LSTATUS resposta = RegSetKeyValueW(raiz, chave.c_str(), nome, REG_SZ, valor.c_str(),
                                             static_cast<DWORD>((valor.size() + 1) * sizeof(wchar_t)));
    if (resposta != ERROR_SUCCESS) {
        throw FalhaExterna{static_cast<std::int32_t>(resposta), "HOSPEDEIRO", "registro: " + Estreito(chave)};
    }
}

void EscreveChave(const std::wstring &chave, const std::wstring &valor)
{
    Escreve(HKEY_LOCAL_MACHINE, Raiz + chave, nullptr, valor);
}

CLSID NumeroDa(std::size_t ordem)
{
    CLSID numero = {0x7C0E5D10, 0x3B2A, 0x4E57, {0x9B, 0x0F, 0, 0, 0, 0, 0, 0}};
    numero.Data4[7] = static_cast<unsigned char>(ordem);
    return numero;
}

} // namespace

void ClassesExternas::Oferece(const std::string &progId, Fabrica fabrica)
{
    const CLSID numero = NumeroDa(++m_Ordem);
    wchar_t texto[64] = {};
    StringFromGUID2(numero, texto, 64);
    const std::wstring nome = Largo(progId);
    EscreveChave(nome, nome);
    EscreveChave(nome + L"\\CLSID", texto);
    EscreveChave(std::wstring(L"CLSID\\") + texto, nome);
    EscreveChave(std::wstring(L"CLSID\\") + texto + L"\\ProgID", nome);
    DWORD registro = 0;
    const auto objeto = Contado<IClassFactory>::Adota(new FabricaExterna(std::move(fabrica)));
    const HRESULT resposta =
        CoRegisterClassObject(numero, objeto.Ponteiro(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &registro);
    if (FAILED(resposta)) {
        throw FalhaExterna{NumeroDaResposta(resposta), "HOSPEDEIRO", "classe não oferecida: " + progId};
    }
    m_Classes.push_back({progId, texto, registro});
}

void ClassesExternas::Esquece(const Classe &classe)
{
    CoRevokeClassObject(classe.Registro);
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, (Raiz + Largo(classe.ProgId)).c_str());
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, (Raiz + L"CLSID\\" + classe.Clsid).c_str());
}

void ClassesExternas::Retira(const std::string &progId)
{
    const auto classe =
        std::find_if(m_Classes.begin(), m_Classes.end(), [&](const Classe &esta) { return esta.ProgId == progId; });
    if (classe != m_Classes.end()) {
        Esquece(*classe);
        m_Classes.erase(classe);
    }
}

void ClassesExternas::Aponta(const std::string &classe, const std::string &progId, bool peloNumero)
{
    std::wstring identificador = Largo(progId);
    for (const Classe &esta : m_Classes) {
        if (peloNumero && esta.ProgId == progId) {
            identificador = esta.Clsid;
        }
    }
    Escreve(HKEY_CURRENT_USER, Apontadas, Largo(classe).c_str(), identificador);
    m_Apontou = true;
}

ClassesExternas::~ClassesExternas()
{
    if (m_Apontou) {
        RegDeleteTreeW(HKEY_CURRENT_USER, Apontadas.c_str());
    }
    for (const Classe &classe : m_Classes) {
        Esquece(classe);
    }
}

} // namespace nativo
