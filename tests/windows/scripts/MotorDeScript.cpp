#include "tests/windows/scripts/MotorDeScript.h"

#include "tests/windows/externo/ObjetoTardio.h"

#include <activscp.h>

#include <cstdio>
#include <stdexcept>

namespace nativo {

namespace {

// What the engine asks its host. Lives as long as the run, whoever counts it.
class Lugar : public IActiveScriptSite {
  public:
    Lugar(const std::wstring &item, IDispatch *objeto) : m_Item(item), m_Objeto(objeto) {}

    const FalhaExterna &Falha() const { return m_Falha; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void **face) override
    {
        if (iid != __uuidof(IUnknown) && iid != __uuidof(IActiveScriptSite)) {
            *face = nullptr;
            return E_NOINTERFACE;
        }
        *face = static_cast<IActiveScriptSite *>(this);
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    HRESULT STDMETHODCALLTYPE GetLCID(LCID *) override { return E_NOTIMPL; } // the user's
    HRESULT STDMETHODCALLTYPE GetItemInfo(LPCOLESTR nome, DWORD quais, IUnknown **objeto, ITypeInfo **tipo) override
    {
        if (tipo != nullptr) {
            *tipo = nullptr;
        }
        if (nome != m_Item) {
            return TYPE_E_ELEMENTNOTFOUND;
        }
        if ((quais & SCRIPTINFO_IUNKNOWN) != 0) {
            m_Objeto->AddRef();
            *objeto = m_Objeto;
        }
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetDocVersionString(BSTR *) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnScriptTerminate(const VARIANT *, const EXCEPINFO *) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnStateChange(SCRIPTSTATE) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnScriptError(IActiveScriptError *erro) override
    {
        EXCEPINFO excecao = {};
        DWORD contexto = 0;
        ULONG linha = 0;
        LONG coluna = 0;
        erro->GetExceptionInfo(&excecao);
        erro->GetSourcePosition(&contexto, &linha, &coluna);
        const auto texto = [](BSTR bstr) { return bstr == nullptr ? std::string() : Estreito(bstr); };
        m_Falha = {NumeroDaResposta(excecao.scode), texto(excecao.bstrSource),
                   texto(excecao.bstrDescription) + ", linha " + std::to_string(linha + 1)};
        SysFreeString(excecao.bstrSource);
        SysFreeString(excecao.bstrDescription);
        SysFreeString(excecao.bstrHelpFile);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE OnEnterScript() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnLeaveScript() override { return S_OK; }

  private:
    const std::wstring &m_Item;
    IDispatch *m_Objeto;
    FalhaExterna m_Falha;
};

std::wstring LeTexto(const std::string &caminho)
{
    std::FILE *arquivo = _wfopen(Largo(caminho).c_str(), L"rb");
    if (arquivo == nullptr) {
        throw std::runtime_error("sem o arquivo " + caminho);
    }
    std::string texto;
    for (int letra = std::fgetc(arquivo); letra != EOF; letra = std::fgetc(arquivo)) {
        texto += static_cast<char>(letra);
    }
    std::fclose(arquivo);
    return Largo(texto);
}

} // namespace

MotorDeScript::MotorDeScript(const std::string &caminho, const std::string &item, const Var &objeto)
    : m_Texto(LeTexto(caminho)),
      m_Item(Largo(item)),
      m_Objeto(objeto)
{
}

std::string MotorDeScript::Roda(const std::string &variavel) const
{
    const Contado<IDispatch> objeto = m_Objeto.Objeto();
    Lugar lugar(m_Item, objeto.Ponteiro());
    const auto confere = [&lugar](HRESULT resposta, const char *passo) {
        if (lugar.Falha().Numero != 0) {
            throw lugar.Falha();
        }
        if (FAILED(resposta)) {
            throw FalhaExterna{NumeroDaResposta(resposta), "MOTOR", passo};
        }
    };
    CLSID classe;
    confere(CLSIDFromProgID(L"VBScript", &classe), "CLSIDFromProgID");
    Contado<IActiveScript> motor;
    confere(CoCreateInstance(classe, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IActiveScript),
                             reinterpret_cast<void **>(motor.Recebe())),
            "CoCreateInstance");
    const auto leitor = motor.Como<IActiveScriptParse>(__uuidof(IActiveScriptParse));
    if (!leitor) {
        throw FalhaExterna{NumeroDaResposta(E_NOINTERFACE), "MOTOR", "IActiveScriptParse"};
    }
    // Whatever comes of it, the engine is closed while its host is still there.
    struct Fecho {
        IActiveScript &Motor;
        ~Fecho() { Motor.Close(); }
    } const fecho{*motor};
    confere(motor->SetScriptSite(&lugar), "SetScriptSite");
    confere(leitor->InitNew(), "InitNew");
    confere(motor->AddNamedItem(m_Item.c_str(), SCRIPTITEM_ISVISIBLE), "AddNamedItem");
    confere(leitor->ParseScriptText(m_Texto.c_str(), nullptr, nullptr, nullptr, 0, 0, SCRIPTTEXT_ISVISIBLE, nullptr,
                                    nullptr),
            "ParseScriptText");
    confere(motor->SetScriptState(SCRIPTSTATE_CONNECTED), "SetScriptState");
    Contado<IDispatch> nomes;
    confere(motor->GetScriptDispatch(nullptr, nomes.Recebe()), "GetScriptDispatch");
    return ObjetoTardio(nomes).Chama(variavel).Texto();
}

} // namespace nativo
