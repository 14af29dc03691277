#include "tests/windows/externo/CasoExterno.h"
#include "tests/windows/externo/ComponenteExterno.h"
#include "tests/windows/externo/Figuras.h"
#include "tests/windows/externo/PessoaExterna.h"
#include "tests/windows/hostis/Recursos.h"

#include <aclapi.h>

#include <cstdio>
#include <cstring>

namespace nativo {
namespace {

const std::wstring ChaveDaClasse = L"Software\\Classes\\CLSID\\{80D349F1-1D47-42CF-B53F-BA4AA48D1130}";
const std::wstring ChaveDoNome = L"Software\\Classes\\ZTAVOREQUIP.Geral";
const std::wstring ChaveDaBiblioteca = L"Software\\Classes\\TypeLib\\{50EF54EA-189A-46D8-B6E3-EDFC0FBA6066}\\1.9\\0";

class HostisTeste : public CasoExterno {
  protected:
    static bool Existe(HKEY raiz, const std::wstring &chave, REGSAM vista = 0)
    {
        HKEY aberta = nullptr;
        const bool existe = RegOpenKeyExW(raiz, chave.c_str(), 0, KEY_READ | vista, &aberta) == ERROR_SUCCESS;
        RegCloseKey(aberta);
        return existe;
    }
    static std::wstring Le(HKEY raiz, const std::wstring &chave, const wchar_t *nome = nullptr, REGSAM vista = 0)
    {
        wchar_t texto[MAX_PATH] = {};
        DWORD octetos = sizeof texto;
        HKEY aberta = nullptr;
        RegOpenKeyExW(raiz, chave.c_str(), 0, KEY_READ | vista, &aberta);
        RegGetValueW(aberta, nullptr, nome, RRF_RT_REG_SZ, nullptr, texto, &octetos);
        RegCloseKey(aberta);
        return texto;
    }
    static void Escreve(const std::wstring &chave, const wchar_t *texto, REGSAM vista)
    {
        HKEY nova = nullptr;
        RegCreateKeyExW(HKEY_LOCAL_MACHINE, chave.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS | vista, nullptr, &nova,
                        nullptr);
        RegSetValueExW(nova, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE *>(texto),
                       static_cast<DWORD>((std::wcslen(texto) + 1) * sizeof(wchar_t)));
        RegCloseKey(nova);
    }
    static std::string Conteudo(const std::wstring &caminho)
    {
        std::string conteudo;
        std::FILE *arquivo = _wfopen(caminho.c_str(), L"rb");
        char pedaco[65536];
        for (std::size_t lidos = 0;
             arquivo != nullptr && (lidos = std::fread(pedaco, 1, sizeof pedaco, arquivo)) > 0;) {
            conteudo.append(pedaco, lidos);
        }
        std::fclose(arquivo);
        return conteudo;
    }
    // A copy of the component under its name in a folder of its own.
    std::wstring PoeCopia(const std::string &conteudo)
    {
        wchar_t temporaria[MAX_PATH] = {};
        GetTempPathW(MAX_PATH, temporaria);
        m_Pasta = std::wstring(temporaria) + L"componente-" + std::to_wstring(GetCurrentProcessId());
        CreateDirectoryW(m_Pasta.c_str(), nullptr);
        m_Copia = m_Pasta + L"\\ZTAVOREQUIP.dll";
        std::FILE *arquivo = _wfopen(m_Copia.c_str(), L"wb");
        std::fwrite(conteudo.data(), 1, conteudo.size(), arquivo);
        std::fclose(arquivo);
        return m_Copia;
    }
    ~HostisTeste() override
    {
        DeleteFileW(m_Copia.c_str());
        RemoveDirectoryW(m_Pasta.c_str());
    }

  private:
    std::wstring m_Pasta;
    std::wstring m_Copia;
};

// While it lives, a root of the registry is a tree in which the component's name may not be written.
class RaizFechada {
  public:
    RaizFechada(HKEY raiz, const std::wstring &nome) : m_Raiz(raiz), m_Nome(L"Software\\" + nome)
    {
        HKEY tree = nullptr;
        HKEY fechada = nullptr;
        RegCreateKeyExW(HKEY_CURRENT_USER, m_Nome.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &tree, nullptr);
        RegCreateKeyExW(tree, ChaveDoNome.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &fechada, nullptr);
        SID_IDENTIFIER_AUTHORITY mundo = SECURITY_WORLD_SID_AUTHORITY;
        PSID todos = nullptr;
        AllocateAndInitializeSid(&mundo, 1, 0, 0, 0, 0, 0, 0, 0, 0, &todos);
        alignas(ACL) char espaco[256];
        auto *lista = reinterpret_cast<ACL *>(espaco);
        InitializeAcl(lista, sizeof espaco, ACL_REVISION);
        AddAccessDeniedAce(lista, ACL_REVISION, KEY_SET_VALUE | KEY_CREATE_SUB_KEY, todos);
        AddAccessAllowedAce(lista, ACL_REVISION, KEY_ALL_ACCESS, todos);
        SECURITY_DESCRIPTOR descritor;
        InitializeSecurityDescriptor(&descritor, SECURITY_DESCRIPTOR_REVISION);
        SetSecurityDescriptorDacl(&descritor, TRUE, lista, FALSE);
        RegSetKeySecurity(fechada, DACL_SECURITY_INFORMATION, &descritor);
        FreeSid(todos);
        RegCloseKey(fechada);
        m_Arvore = tree;
    }
    RaizFechada(const RaizFechada &) = delete;
    RaizFechada &operator=(const RaizFechada &) = delete;
    ~RaizFechada()
    {
        Abre();
        RegCloseKey(m_Arvore);
        RegDeleteTreeW(HKEY_CURRENT_USER, m_Nome.c_str());
    }
    void Fecha() { RegOverridePredefKey(m_Raiz, m_Arvore); }
    void Abre() { RegOverridePredefKey(m_Raiz, nullptr); }

  private:
    HKEY m_Raiz;
    std::wstring m_Nome;
    HKEY m_Arvore = nullptr;
};

TEST_F(HostisTeste, Registration_WithoutRightsForTheMachine_IsTheUsers)
{
    const ComponenteExterno componente;
    RaizFechada maquina(HKEY_LOCAL_MACHINE, L"MaquinaFechada");
    maquina.Fecha();
    EXPECT_EQ(componente.Registra(), S_OK);
    EXPECT_FALSE(Existe(HKEY_LOCAL_MACHINE, ChaveDaClasse));
    EXPECT_EQ(Le(HKEY_CURRENT_USER, ChaveDaClasse + L"\\InprocServer32", L"ThreadingModel"), L"Apartment");
    EXPECT_NE(Le(HKEY_CURRENT_USER, ChaveDaClasse + L"\\InprocServer32").find(L"ZTAVOREQUIP.dll"), std::wstring::npos);
    EXPECT_EQ(Le(HKEY_CURRENT_USER, ChaveDoNome + L"\\CLSID"), L"{80D349F1-1D47-42CF-B53F-BA4AA48D1130}");
    EXPECT_EQ(componente.Desregistra(), S_OK);
    EXPECT_FALSE(Existe(HKEY_CURRENT_USER, ChaveDaClasse));
    EXPECT_FALSE(Existe(HKEY_CURRENT_USER, ChaveDoNome));
}

TEST_F(HostisTeste, Registration_WithoutAnyRights_FailsAndLeavesNothing)
{
    const ComponenteExterno componente;
    RaizFechada maquina(HKEY_LOCAL_MACHINE, L"MaquinaFechada");
    RaizFechada usuario(HKEY_CURRENT_USER, L"UsuarioFechado");
    maquina.Fecha();
    usuario.Fecha();
    EXPECT_EQ(componente.Registra(), HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED));
    EXPECT_FALSE(Existe(HKEY_LOCAL_MACHINE, ChaveDaClasse));
    EXPECT_FALSE(Existe(HKEY_CURRENT_USER, ChaveDaClasse));
    usuario.Abre();
    EXPECT_FALSE(Existe(HKEY_CURRENT_USER, ChaveDaClasse));
}

TEST_F(HostisTeste, TypeLibrary_Damaged_MakesFaultsAndNothingElse)
{
    const std::string inteiro = Conteudo(ComponenteExterno::Caminho());
    const std::size_t onde = inteiro.find("MSFT\x02");
    ASSERT_NE(onde, std::string::npos);
    const std::size_t nome = inteiro.find(std::string("T\0Y\0P\0E\0L\0I\0B\0", 14));
    ASSERT_NE(nome, std::string::npos);
    struct Dano {
        const char *Nome;
        std::size_t Desde;
        std::size_t Quantos;
    };
    // A library that is none, and a file without one.
    for (const Dano &dano : {Dano{"marca", onde, 4}, Dano{"recurso", nome, 14}}) {
        std::string danificado = inteiro;
        std::memset(danificado.data() + dano.Desde, 'X', dano.Quantos);
        const std::wstring copia = PoeCopia(danificado);
        const HMODULE arquivo = LoadLibraryW(copia.c_str());
        ASSERT_NE(arquivo, nullptr) << dano.Nome;
        {
            using Obtem = HRESULT(STDAPICALLTYPE *)(REFCLSID, REFIID, void **);
            const auto obtem =
                reinterpret_cast<Obtem>(reinterpret_cast<void *>(GetProcAddress(arquivo, "DllGetClassObject")));
            Contado<IClassFactory> fabrica;
            ASSERT_EQ(
                obtem(ComponenteExterno::ClsidGeral, IID_IClassFactory, reinterpret_cast<void **>(fabrica.Recebe())),
                S_OK);
            Contado<IDispatch> geral;
            const HRESULT criado =
                fabrica->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void **>(geral.Recebe()));
            if (SUCCEEDED(criado)) {
                const FalhaExterna falha = FalhaDo([&] { ObjetoTardio(geral).Chama("SistemaQMR"); });
                EXPECT_NE(falha.Numero, 0) << dano.Nome;
                Contado<ITypeInfo> tipo;
                geral->GetTypeInfo(0, LOCALE_USER_DEFAULT, tipo.Recebe());
            }
        }
        const auto pode = reinterpret_cast<HRESULT(STDAPICALLTYPE *)()>(
            reinterpret_cast<void *>(GetProcAddress(arquivo, "DllCanUnloadNow")));
        EXPECT_EQ(pode(), S_OK) << dano.Nome;
        FreeLibrary(arquivo);
    }
}

TEST_F(HostisTeste, FileOfTheOtherWidth_IsNotLoaded_AndTheClassIsFault429)
{
    std::string outra = Conteudo(ComponenteExterno::Caminho());
    std::int32_t cabecalho = 0;
    std::memcpy(&cabecalho, outra.data() + 0x3C, sizeof cabecalho);
    const std::uint16_t maquina = sizeof(void *) == 8 ? 0x014C : 0x8664; // of the other processor
    std::memcpy(outra.data() + cabecalho + 4, &maquina, sizeof maquina);
    const std::wstring copia = PoeCopia(outra);
    EXPECT_EQ(LoadLibraryW(copia.c_str()), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_BAD_EXE_FORMAT));

    ComponenteExterno componente;
    ASSERT_EQ(componente.Registra(), S_OK);
    Escreve(ChaveDaClasse + L"\\InprocServer32", copia.c_str(), 0);
    componente.Solta(); // so that its being loaded helps nobody
    const FalhaExterna falha = FalhaDo([] { ComponenteExterno::Cria(); });
    EXPECT_NE(falha.Numero, 0);
    ComponenteExterno outraVez;
    Escreve(ChaveDaClasse + L"\\InprocServer32", ComponenteExterno::Caminho().c_str(), 0);
    EXPECT_EQ(outraVez.Registra(), S_OK);
    EXPECT_TRUE(ComponenteExterno::Cria());
    EXPECT_EQ(outraVez.Desregistra(), S_OK);
    EXPECT_FALSE(Existe(HKEY_LOCAL_MACHINE, ChaveDaClasse));
}

TEST_F(HostisTeste, RegistrationOfTheOtherWidth_StandsBeside_AndStays)
{
    // As the component of the other width has registered itself, in its view of the registry.
    constexpr REGSAM outra = sizeof(void *) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
    const wchar_t *caminho = L"C:\\Fiscaliza\\outra\\ZTAVOREQUIP.dll";
    const std::wstring largura = sizeof(void *) == 8 ? L"\\win32" : L"\\win64";
    Escreve(ChaveDaClasse + L"\\InprocServer32", caminho, outra);
    Escreve(ChaveDaBiblioteca + largura, caminho, 0);
    Escreve(ChaveDoNome + L"\\CLSID", L"{80D349F1-1D47-42CF-B53F-BA4AA48D1130}", 0);
    {
        const ComponenteExterno componente;
        EXPECT_EQ(componente.Registra(), S_OK);
        EXPECT_EQ(Le(HKEY_LOCAL_MACHINE, ChaveDaClasse + L"\\InprocServer32", nullptr, outra), caminho);
        EXPECT_TRUE(ComponenteExterno::Cria());
        EXPECT_EQ(componente.Desregistra(), S_OK);
    }
    EXPECT_EQ(Le(HKEY_LOCAL_MACHINE, ChaveDaClasse + L"\\InprocServer32", nullptr, outra), caminho);
    EXPECT_EQ(Le(HKEY_LOCAL_MACHINE, ChaveDaBiblioteca + largura), caminho);
    EXPECT_EQ(Le(HKEY_LOCAL_MACHINE, ChaveDoNome + L"\\CLSID"), L"{80D349F1-1D47-42CF-B53F-BA4AA48D1130}");
    EXPECT_FALSE(Existe(HKEY_LOCAL_MACHINE, ChaveDaClasse));
    HKEY classes = nullptr;
    RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Classes\\CLSID", 0, KEY_ALL_ACCESS | outra, &classes);
    RegDeleteTreeW(classes, L"{80D349F1-1D47-42CF-B53F-BA4AA48D1130}");
    RegCloseKey(classes);
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"Software\\Classes\\TypeLib\\{50EF54EA-189A-46D8-B6E3-EDFC0FBA6066}");
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, ChaveDoNome.c_str());
}

TEST_F(HostisTeste, LoadedAndUnloaded10000Times_LeavesEverythingWhereItWas)
{
    constexpr int Vezes = 10000;
    constexpr std::int64_t FolgaDeMemoria = 262144;
    constexpr int Aquecimento = 100; // what the system itself keeps from the first times
    Recursos antes;
    for (int vez = 0; vez < Vezes + Aquecimento; ++vez) {
        if (vez == Aquecimento) {
            antes = Recursos::Agora();
        }
        ComponenteExterno componente;
        {
            Contado<IClassFactory> fabrica;
            Contado<IDispatch> geral;
            ASSERT_EQ(componente.ObtemClasse(ComponenteExterno::ClsidGeral, IID_IClassFactory,
                                             reinterpret_cast<void **>(fabrica.Recebe())),
                      S_OK);
            ASSERT_EQ(fabrica->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void **>(geral.Recebe())), S_OK);
            ASSERT_EQ(componente.PodeDescarregar(), S_FALSE);
            ASSERT_EQ(ObjetoTardio(geral).Chama("Depurar").Verdade(), false);
        }
        ASSERT_EQ(componente.PodeDescarregar(), S_OK);
        componente.Solta();
        ASSERT_FALSE(ComponenteExterno::Carregado());
    }
    const Recursos depois = Recursos::Agora();
    Publica("carga.tsv", "carregado e descarregado\t" + std::to_string(Vezes) + " vezes\tantes: " + antes.Texto() +
                             "\tdepois: " + depois.Texto() + "\n");
    EXPECT_EQ(depois.Manipuladores, antes.Manipuladores);
    EXPECT_LT(depois.Memoria, antes.Memoria + FolgaDeMemoria);
    EXPECT_EQ(depois.Modulos, antes.Modulos);
    EXPECT_EQ(depois.Janelas, antes.Janelas);
    EXPECT_EQ(depois.Graficos, antes.Graficos);
}

TEST_F(HostisTeste, WindowsOpenedUsedAndClosed1000Times_LeaveEverythingWhereItWas)
{
    constexpr int Vezes = 1000;
    constexpr int Aquecimento = 20;
    constexpr std::int64_t FolgaDeMemoria = 262144;
    ComponenteExterno componente;
    ASSERT_EQ(componente.Registra(), S_OK);
    Recursos antes;
    Recursos depois;
    {
        HospedeiroExterno hospedeiro;
        hospedeiro.SemCaixas();
        const ObjetoTardio geral = ComponenteExterno::Cria();
        hospedeiro.Entra(geral);
        // The list, its search, and an equipment's form with its pages, without waiting for a person: the host reaches
        // the windows by automation.
        const auto usa = [&] {
            geral.Chama("ClickMenu", {"mnuModVOREquiptos"});
            const ObjetoTardio lista = hospedeiro.UltimaJanela();
            lista.Chama("SetFocus");
            ObjetoTardio(lista.Chama("cboCriterio")).Escreve("IndiceAtual", std::int16_t{1});
            ObjetoTardio(lista.Chama("txtCodEquip")).Escreve("Text", "RF-01");
            for (MSG mensagem; PeekMessageW(&mensagem, nullptr, 0, 0, PM_REMOVE) != FALSE;) {
                TranslateMessage(&mensagem);
                DispatchMessageW(&mensagem);
            }
            geral.Chama("FecharJanelasAtivas");
        };
        for (int vez = 0; vez < Vezes + Aquecimento; ++vez) {
            if (vez == Aquecimento) {
                antes = Recursos::Agora();
            }
            usa();
            hospedeiro.EsqueceJanela();
            hospedeiro.Livro.Limpa();
        }
        depois = Recursos::Agora();
        geral.Chama("Logoff");
        geral.Chama("Encerra");
    }
    Publica("janelas.tsv", "janela aberta, usada e fechada\t" + std::to_string(Vezes) +
                               " vezes\tantes: " + antes.Texto() + "\tdepois: " + depois.Texto() + "\n");
    EXPECT_EQ(depois.Manipuladores, antes.Manipuladores);
    EXPECT_EQ(depois.Modulos, antes.Modulos);
    EXPECT_EQ(depois.Janelas, antes.Janelas);
    EXPECT_EQ(depois.Graficos, antes.Graficos);
    EXPECT_LT(depois.Memoria, antes.Memoria + FolgaDeMemoria);
    EXPECT_EQ(componente.PodeDescarregar(), S_OK);
    EXPECT_EQ(componente.Desregistra(), S_OK);
}

} // namespace
} // namespace nativo
