#include "host/Falha.h"
#include "shell/Componente.h"
#include "tests/windows/ComponenteDeTeste.h"
#include "tests/windows/HospedeiroDeTeste.h"
#include "windows/automation/Falhas.h"
#include "windows/automation/Tardio.h"
#include "windows/automation/Texto16.h"

#include <objbase.h>
#include <oleauto.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD motivo, void *processoTermina);

namespace nativo {
namespace {

// A thread with an apartment of its own, which the maker's messages are served for while it is waited for.
class OutroFio {
  public:
    explicit OutroFio(std::function<void()> acao) : m_Acao(std::move(acao))
    {
        m_Fio = CreateThread(nullptr, 0, Corre, this, 0, nullptr);
    }
    OutroFio(const OutroFio &) = delete;
    OutroFio &operator=(const OutroFio &) = delete;
    ~OutroFio()
    {
        while (MsgWaitForMultipleObjects(1, &m_Fio, FALSE, INFINITE, QS_ALLINPUT) != WAIT_OBJECT_0) {
            MSG mensagem;
            while (PeekMessageW(&mensagem, nullptr, 0, 0, PM_REMOVE) != FALSE) {
                DispatchMessageW(&mensagem);
            }
        }
        CloseHandle(m_Fio);
    }

  private:
    static DWORD WINAPI Corre(void *este)
    {
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        static_cast<OutroFio *>(este)->m_Acao();
        CoUninitialize();
        return 0;
    }

    std::function<void()> m_Acao;
    HANDLE m_Fio;
};

class EntradasTeste : public testing::Test {
  protected:
    ComponenteDeTeste Componente;
    HospedeiroDeTeste Hospedeiro;
};

TEST_F(EntradasTeste, DllGetClassObject_OfTheClasses_HasTheOneThatIsCreated)
{
    Com<IClassFactory> fabrica;
    EXPECT_EQ(Componente.ObtemClasse(__uuidof(Geral), IID_IClassFactory, fabrica.RecebeVazio()), S_OK);
    EXPECT_EQ(Componente.ObtemClasse(__uuidof(Geral), IID_IUnknown, Com<IUnknown>().RecebeVazio()), S_OK);
    void *saida = &fabrica;
    EXPECT_EQ(Componente.ObtemClasse(__uuidof(Geral), IID_IDispatch, &saida), E_NOINTERFACE);
    EXPECT_EQ(saida, nullptr);
    EXPECT_EQ(Componente.ObtemClasse(__uuidof(Geral), IID_IClassFactory, nullptr), E_POINTER);
    for (const CLSID &classe : {__uuidof(Especifica), __uuidof(CVorEquip), __uuidof(CVORPesqEquip), CLSID{}}) {
        saida = &fabrica;
        EXPECT_EQ(Componente.ObtemClasse(classe, IID_IClassFactory, &saida), CLASS_E_CLASSNOTAVAILABLE);
        EXPECT_EQ(saida, nullptr);
    }
}

TEST_F(EntradasTeste, CreateInstance_AsAnyInterfaceOfTheShell_GivesIt)
{
    const Com<IClassFactory> fabrica = Componente.Fabrica();
    for (const IID &iid : {IID_IUnknown, IID_IDispatch, __uuidof(_Geral)}) {
        Com<IUnknown> geral;
        EXPECT_EQ(fabrica->CreateInstance(nullptr, iid, geral.RecebeVazio()), S_OK);
        EXPECT_TRUE(geral);
    }
    void *saida = this;
    EXPECT_EQ(fabrica->CreateInstance(nullptr, IID_IPersist, &saida), E_NOINTERFACE);
    EXPECT_EQ(saida, nullptr);
    saida = this;
    EXPECT_EQ(fabrica->CreateInstance(fabrica.Ponteiro(), IID_IUnknown, &saida), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(saida, nullptr);
    EXPECT_EQ(fabrica->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
}

TEST_F(EntradasTeste, DllCanUnloadNow_WhileAnythingIsHeld_Refuses)
{
    EXPECT_EQ(Componente.PodeDescarregar(), S_OK);
    Com<IClassFactory> fabrica = Componente.Fabrica();
    EXPECT_EQ(Componente.PodeDescarregar(), S_FALSE);
    EXPECT_EQ(fabrica->LockServer(TRUE), S_OK);
    fabrica = nullptr;
    EXPECT_EQ(Componente.PodeDescarregar(), S_FALSE);
    EXPECT_EQ(Componente.Fabrica()->LockServer(FALSE), S_OK);
    EXPECT_EQ(Componente.PodeDescarregar(), S_OK);

    Com<_Geral> geral = Componente.NovoGeral();
    EXPECT_EQ(Componente.PodeDescarregar(), S_FALSE);
    ASSERT_EQ(Hospedeiro.Configura(*geral.Ponteiro()), S_OK);
    Com<_Especifica> especifica;
    Com<_CVorEquip> consulta;
    Com<_CVORPesqEquip> pesquisa;
    Com<IDispatch> modulo;
    ASSERT_EQ(geral->get_CEspecifica(especifica.Recebe()), S_OK);
    ASSERT_EQ(especifica->CreateCVorEquip(consulta.Recebe()), S_OK);
    ASSERT_EQ(especifica->CreateCVORPesqEquip(pesquisa.Recebe()), S_OK);
    ASSERT_EQ(geral->get_Modulo(modulo.Recebe()), S_OK);
    ASSERT_EQ(geral->Encerra(), S_OK);
    geral = nullptr;
    for (const std::function<void()> &solta :
         std::vector<std::function<void()>>{[&] { especifica = nullptr; }, [&] { consulta = nullptr; },
                                            [&] { pesquisa = nullptr; }, [&] { modulo = nullptr; }}) {
        EXPECT_EQ(Componente.PodeDescarregar(), S_FALSE);
        solta();
    }
    EXPECT_EQ(Componente.PodeDescarregar(), S_OK);
}

TEST_F(EntradasTeste, Shell_AfterItsRelease_HasLetGoOfEverythingOfTheHosts)
{
    const Com<IDispatch> coisa = HospedeiroDeTeste::Coisa();
    const auto referencias = [](const Com<IDispatch> &objeto) {
        objeto->AddRef();
        return objeto->Release();
    };
    const std::vector<Com<IDispatch>> dados{
        Hospedeiro.MenuDestino, Hospedeiro.Relatorios, Hospedeiro.Ajuda,  Hospedeiro.MDB,
        Hospedeiro.oAppEXE,     Hospedeiro.objMTM,     Hospedeiro.objSCA, coisa};
    std::vector<ULONG> antes;
    for (const Com<IDispatch> &objeto : dados) {
        antes.push_back(referencias(objeto));
    }
    for (const bool encerra : {true, false}) {
        Com<_Geral> geral = Componente.NovoGeral();
        ASSERT_EQ(geral->putref_cGlobal(coisa.Ponteiro()), S_OK);
        ASSERT_EQ(Hospedeiro.Configura(*geral.Ponteiro()), S_OK);
        ASSERT_EQ(geral->putref_ObjInterface(coisa.Ponteiro()), S_OK);
        ASSERT_EQ(Hospedeiro.Entra(*geral.Ponteiro()), S_OK);
        for (std::size_t i = 0; i < dados.size(); ++i) {
            EXPECT_GT(referencias(dados[i]), antes[i]) << i;
        }
        if (encerra) {
            ASSERT_EQ(geral->Encerra(), S_OK);
        } else {
            geral = nullptr;
        }
        for (std::size_t i = 0; i < dados.size(); ++i) {
            EXPECT_EQ(referencias(dados[i]), antes[i]) << i;
        }
    }
    EXPECT_EQ(Componente.PodeDescarregar(), S_OK);
}

TEST_F(EntradasTeste, Shell_AfterTheFirstHasEnded_WorksLikeIt)
{
    for (int vez = 0; vez < 3; ++vez) {
        Hospedeiro.Logado = false;
        const Com<_Geral> geral = Componente.NovoGeral();
        const Tardio tardio(geral.Como<IDispatch>());
        EXPECT_FALSE(tardio.Chama<bool>("HabilitarItem", "mnuModVOREquiptos"));
        ASSERT_EQ(Hospedeiro.Configura(*geral.Ponteiro()), S_OK);
        ASSERT_EQ(Hospedeiro.Entra(*geral.Ponteiro()), S_OK);
        Hospedeiro.Logado = true;
        EXPECT_TRUE(tardio.Chama<bool>("HabilitarItem", "mnuModVOREquiptos"));
        EXPECT_EQ(tardio.Chama<std::string>("SistemaQMR"), "VOR");
        tardio.Chama("Encerra");
        EXPECT_FALSE(tardio.Chama<bool>("HabilitarItem", "mnuModVOREquiptos"));
    }
    EXPECT_EQ(Componente.PodeDescarregar(), S_OK);
}

TEST_F(EntradasTeste, QueryService_WhenItsShellHasEnded_FailsAndEndsInOrder)
{
    Com<_CVorEquip> consulta;
    {
        const Com<_Geral> geral = Componente.NovoGeral();
        Com<_Especifica> especifica;
        ASSERT_EQ(Hospedeiro.Configura(*geral.Ponteiro()), S_OK);
        ASSERT_EQ(geral->get_CEspecifica(especifica.Recebe()), S_OK);
        ASSERT_EQ(especifica->CreateCVorEquip(consulta.Recebe()), S_OK);
    }
    VARIANT_BOOL achou = VARIANT_TRUE;
    EXPECT_EQ(FalhaDaTabela(consulta->BuscaEquipamento(nullptr, nullptr, 0, &achou)).Numero,
              NumeroFalha::ObjetoNaoDefinido);
    EXPECT_EQ(achou, VARIANT_FALSE);
    LONG numero = 1;
    EXPECT_EQ(consulta->get_NroIntEquip(&numero), S_OK);
    EXPECT_EQ(numero, 0);
    EXPECT_EQ(Componente.PodeDescarregar(), S_FALSE);
    consulta = nullptr;
    EXPECT_EQ(Componente.PodeDescarregar(), S_OK);
}

TEST_F(EntradasTeste, Shells_TwoAtOnce_EndWithTheLast)
{
    const Com<_Geral> um = Componente.NovoGeral();
    {
        const Com<_Geral> outro = Componente.NovoGeral();
        EXPECT_NE(um.Ponteiro(), outro.Ponteiro());
        ASSERT_EQ(Hospedeiro.Configura(*outro.Ponteiro()), S_OK);
    }
    ASSERT_EQ(Hospedeiro.Configura(*um.Ponteiro()), S_OK);
    const Tardio tardio(um.Como<IDispatch>());
    EXPECT_EQ(tardio.Chama<std::string>("SistemaQMR"), "VOR");
}

TEST_F(EntradasTeste, Shell_InAnotherThreadThanTheOneThatLives_IsRefused)
{
    HRESULT codigo = S_OK;
    const auto cria = [&] {
        Com<IUnknown> outro;
        codigo = Componente.Fabrica()->CreateInstance(nullptr, IID_IUnknown, outro.RecebeVazio());
    };
    {
        const Com<_Geral> geral = Componente.NovoGeral();
        OutroFio{cria};
        EXPECT_EQ(codigo, RPC_E_WRONG_THREAD);
    }
    OutroFio{cria};
    EXPECT_EQ(codigo, S_OK);
    EXPECT_EQ(Componente.PodeDescarregar(), S_OK);
}

TEST_F(EntradasTeste, Shell_CalledFromAnotherThread_AnswersInItsOwn)
{
    Com<_Geral> geral = Componente.NovoGeral();
    ASSERT_EQ(Hospedeiro.Configura(*geral.Ponteiro()), S_OK);
    ASSERT_EQ(Hospedeiro.Entra(*geral.Ponteiro()), S_OK);
    Hospedeiro.Logado = true;
    DWORD fio = 0;
    Hospedeiro.AoPerguntarLogado = [&] { fio = GetCurrentThreadId(); };
    Com<IStream> levada;
    ASSERT_EQ(CoMarshalInterThreadInterfaceInStream(IID_IDispatch, geral.Como<IDispatch>().Ponteiro(), levada.Recebe()),
              S_OK);
    Falha recusa(0, "", "");
    bool habilitado = false;
    OutroFio([&] {
        Com<IDispatch> deFora;
        ASSERT_EQ(CoGetInterfaceAndReleaseStream(levada.Solta(), IID_IDispatch, deFora.RecebeVazio()), S_OK);
        const Tardio tardio(deFora);
        habilitado = tardio.Chama<bool>("HabilitarItem", "mnuModVOREquiptos");
        try {
            tardio.Chama("ObtemTransacao2", "AB", Ref<::Objeto>());
        } catch (const Falha &falha) {
            recusa = falha;
        }
    });
    EXPECT_TRUE(habilitado);
    EXPECT_EQ(fio, GetCurrentThreadId());
    EXPECT_EQ(recusa.Numero, -1);
    EXPECT_EQ(recusa.Fonte, "ZTAVOREQUIP.Geral.ObtemTransacao2");
    EXPECT_EQ(recusa.Descricao, "Método depreciado. Não utilizar.");
}

// A copy of the library in which octets have been changed.
class CopiaDoComponente {
  public:
    CopiaDoComponente(const std::string &estes, const std::string &porEstes)
    {
        std::ifstream original(std::filesystem::path(ComponenteDeTeste::Pasta()) / "ZTAVOREQUIP.dll", std::ios::binary);
        std::string octetos{std::istreambuf_iterator<char>(original), {}};
        const std::size_t onde = octetos.find(estes);
        EXPECT_NE(onde, std::string::npos);
        octetos.replace(onde, porEstes.size(), porEstes);
        std::ofstream(m_Arquivo, std::ios::binary) << octetos;
    }
    CopiaDoComponente(const CopiaDoComponente &) = delete;
    CopiaDoComponente &operator=(const CopiaDoComponente &) = delete;
    ~CopiaDoComponente() { std::filesystem::remove(m_Arquivo); }

    std::wstring Arquivo() const { return m_Arquivo.wstring(); }

  private:
    std::filesystem::path m_Arquivo =
        std::filesystem::temp_directory_path() / ("ZTAVOREQUIP" + std::to_string(GetCurrentProcessId()) + ".dll");
};

TEST_F(EntradasTeste, CreateInstance_WithoutATypeLibraryInside_IsThePlatformsFault)
{
    const std::string nomeDoRecurso("T\0Y\0P\0E\0L\0I\0B\0", 14);
    const std::string inicio("MSFT\x02\0\x01\0", 8);
    for (const auto &[estes, porEstes] : std::vector<std::pair<std::string, std::string>>{
             {nomeDoRecurso, std::string("T\0Y\0P\0E\0L\0I\0X\0", 14)}, {inicio, "cortada."}}) {
        const CopiaDoComponente copia(estes, porEstes);
        const ComponenteDeTeste danificado(copia.Arquivo());
        void *saida = this;
        EXPECT_EQ(danificado.Fabrica()->CreateInstance(nullptr, IID_IUnknown, &saida), TYPE_E_CANTLOADLIBRARY);
        EXPECT_EQ(saida, nullptr);
        EXPECT_EQ(danificado.PodeDescarregar(), S_OK);
    }
}

class GlobalDeTeste : public IObjGlobalVor {
  public:
    explicit GlobalDeTeste(bool &acabou) : m_Acabou(acabou) {}
    ~GlobalDeTeste() override { m_Acabou = true; }
    std::string_view NomeTipo() const override { return "Global"; }
    void InicializaSessao(const Ref<IobjMTM> &, const Ref<IobjSCA> &, const Ref<IoAppEXE> &,
                          const Ref<Objeto> &) override
    {
    }
    Ref<ICredencial> ObtemCredencial() override { return {}; }

  private:
    bool &m_Acabou;
};

TEST(DllMain, WhenTheProcessEnds_LeavesTheHostsObjectsAlone)
{
    static bool acabou = false; // the object is never let go of
    for (const DWORD motivo : {DLL_PROCESS_ATTACH, DLL_THREAD_DETACH, DLL_PROCESS_DETACH}) {
        EsteComponente().ObjGlobalVor = Novo<GlobalDeTeste>(acabou);
        EXPECT_EQ(DllMain(nullptr, motivo, nullptr), TRUE); // the library alone goes
        EXPECT_FALSE(EsteComponente().ObjGlobalVor.Nada());
        EsteComponente().ObjGlobalVor = nullptr;
        EXPECT_TRUE(std::exchange(acabou, false));
    }
    EsteComponente().ObjGlobalVor = Novo<GlobalDeTeste>(acabou);
    int processo = 0;
    EXPECT_EQ(DllMain(nullptr, DLL_PROCESS_DETACH, &processo), TRUE);
    EXPECT_TRUE(EsteComponente().ObjGlobalVor.Nada());
    EXPECT_FALSE(acabou);
}

TEST(Recursos, VersionOfTheFile_TellsTheModule)
{
    const std::wstring arquivo = ComponenteDeTeste::Pasta() + L"\\ZTAVOREQUIP.dll";
    DWORD zero = 0;
    std::vector<char> dados(GetFileVersionInfoSizeW(arquivo.c_str(), &zero));
    ASSERT_FALSE(dados.empty());
    ASSERT_NE(GetFileVersionInfoW(arquivo.c_str(), 0, static_cast<DWORD>(dados.size()), dados.data()), FALSE);
    void *lido = nullptr;
    UINT tamanho = 0;
    ASSERT_NE(VerQueryValueW(dados.data(), L"\\", &lido, &tamanho), FALSE);
    const auto &fixa = *static_cast<const VS_FIXEDFILEINFO *>(lido);
    EXPECT_EQ(fixa.dwFileVersionMS, 0x00010000U);
    EXPECT_EQ(fixa.dwFileVersionLS, 47U);
    for (const auto &[nome, texto] : std::vector<std::pair<std::wstring, std::string>>{
             {L"FileVersion", "1.00.0047"},
             {L"FileDescription", "Cadastro de equipamentos eletrônicos de fiscalização"},
             {L"InternalName", "ZTAVOREQUIP"},
             {L"OriginalFilename", "ZTAVOREQUIP.dll"}}) {
        ASSERT_NE(VerQueryValueW(dados.data(), (L"\\StringFileInfo\\041604B0\\" + nome).c_str(), &lido, &tamanho),
                  FALSE);
        EXPECT_EQ(ParaUtf8(static_cast<const wchar_t *>(lido)), texto);
    }
}

} // namespace
} // namespace nativo
