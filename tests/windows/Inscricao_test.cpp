#include "tests/windows/ComponenteDeTeste.h"
#include "windows/automation/Texto16.h"
#include "windows/component/Inscricao.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace nativo {
namespace {

// A registry in memory, of which the step of a number fails.
class RegistroEmMemoria final : public IRegistroDoSistema {
  public:
    using Chaves = std::map<std::wstring, std::map<std::wstring, std::wstring>>;

    LSTATUS CriaChave(const std::wstring &chave, bool &nova) override
    {
        nova = false;
        if (const LSTATUS codigo = Passo()) {
            return codigo;
        }
        const std::size_t fim = chave.rfind(L'\\');
        if (fim != std::wstring::npos && !Tudo.contains(chave.substr(0, fim))) {
            return ERROR_FILE_NOT_FOUND;
        }
        nova = Tudo.try_emplace(chave).second;
        return ERROR_SUCCESS;
    }
    LSTATUS ApagaChaveVazia(const std::wstring &chave) override
    {
        if (const LSTATUS codigo = Passo()) {
            return codigo;
        }
        const auto achada = Tudo.find(chave);
        if (achada != Tudo.end() && achada->second.empty() && !TemDentro(chave)) {
            Tudo.erase(achada);
        }
        return ERROR_SUCCESS;
    }
    LSTATUS Le(const std::wstring &chave, const std::wstring &nome, std::optional<std::wstring> &texto) override
    {
        texto.reset();
        if (const LSTATUS codigo = Passo()) {
            return codigo;
        }
        if (const auto achada = Tudo.find(chave); achada != Tudo.end()) {
            if (const auto valor = achada->second.find(nome); valor != achada->second.end()) {
                texto = valor->second;
            }
        }
        return ERROR_SUCCESS;
    }
    LSTATUS Grava(const std::wstring &chave, const std::wstring &nome, const std::wstring &texto) override
    {
        if (const LSTATUS codigo = Passo()) {
            return codigo;
        }
        ++Gravacoes;
        const auto achada = Tudo.find(chave);
        if (achada == Tudo.end()) {
            return ERROR_FILE_NOT_FOUND;
        }
        achada->second[nome] = texto;
        return ERROR_SUCCESS;
    }
    LSTATUS ApagaValor(const std::wstring &chave, const std::wstring &nome) override
    {
        if (const LSTATUS codigo = Passo()) {
            return codigo;
        }
        if (const auto achada = Tudo.find(chave); achada != Tudo.end()) {
            achada->second.erase(nome);
        }
        return ERROR_SUCCESS;
    }

    Chaves Tudo;
    int Gravacoes = 0;
    int FalhaNoPasso = 0; // counted from 1; 0 for none
    LSTATUS Codigo = ERROR_DISK_FULL;
    int Passos = 0;

  private:
    LSTATUS Passo() { return ++Passos == FalhaNoPasso ? Codigo : ERROR_SUCCESS; }
    bool TemDentro(const std::wstring &chave) const
    {
        const auto depois = Tudo.lower_bound(chave + L"\\");
        return depois != Tudo.end() && depois->first.starts_with(chave + L"\\");
    }
};

const std::wstring Arquivo = L"C:\\Programas\\Módulo\\ZTAVOREQUIP.dll";

// All that is registered, a line each: key, name, text.
std::vector<std::string> Esperado(const std::string &arquivo)
{
    const std::string classe = "CLSID\\{80D349F1-1D47-42CF-B53F-BA4AA48D1130}";
    const std::string biblioteca = "TypeLib\\{50EF54EA-189A-46D8-B6E3-EDFC0FBA6066}";
    std::vector<std::string> linhas{
        classe + "||ZTAVOREQUIP.Geral",
        classe + "\\InprocServer32||" + arquivo,
        classe + "\\InprocServer32|ThreadingModel|Apartment",
        classe + "\\ProgID||ZTAVOREQUIP.Geral",
        classe + "\\Programmable||",
        classe + "\\TypeLib||{50EF54EA-189A-46D8-B6E3-EDFC0FBA6066}",
        classe + "\\Version||1.9",
        biblioteca + "\\1.9||Cadastro de equipamentos eletrônicos de fiscalização",
        biblioteca + "\\1.9\\0\\" + (sizeof(void *) == 8 ? "win64||" : "win32||") + arquivo,
        biblioteca + "\\1.9\\FLAGS||0",
        "ZTAVOREQUIP.Geral||ZTAVOREQUIP.Geral",
        "ZTAVOREQUIP.Geral\\CLSID||{80D349F1-1D47-42CF-B53F-BA4AA48D1130}",
    };
    const std::pair<std::string, std::string> interfaces[]{
        {"_CVORPesqEquip", "{1D2D8966-F0F4-438D-8314-0AEAE207955F}"},
        {"_CVorEquip", "{811A0E52-B1BA-4C42-9692-4766E2C4F2A3}"},
        {"_Geral", "{96D691EE-4A71-4CEB-A769-18576E55B4EA}"},
        {"_Especifica", "{9D87B2B9-072C-44F6-9261-95A712E625DF}"},
    };
    for (const auto &[nome, identificador] : interfaces) {
        const std::string chave = "Interface\\" + identificador;
        linhas.push_back(chave + "||" + nome);
        linhas.push_back(chave + "\\ProxyStubClsid32||{00020424-0000-0000-C000-000000000046}");
        linhas.push_back(chave + "\\TypeLib||{50EF54EA-189A-46D8-B6E3-EDFC0FBA6066}");
        linhas.push_back(chave + "\\TypeLib|Version|1.9");
    }
    std::sort(linhas.begin(), linhas.end());
    return linhas;
}

std::vector<std::string> Linhas(const RegistroEmMemoria &registro)
{
    std::vector<std::string> linhas;
    for (const auto &[chave, valores] : registro.Tudo) {
        for (const auto &[nome, texto] : valores) {
            linhas.push_back(ParaUtf8(chave) + "|" + ParaUtf8(nome) + "|" + ParaUtf8(texto));
        }
    }
    std::sort(linhas.begin(), linhas.end());
    return linhas;
}

TEST(Inscricao, Inscreve_IntoAnEmptyRegistry_WritesTheListAndNothingElse)
{
    RegistroEmMemoria registro;
    EXPECT_EQ(Inscricao(registro, Arquivo).Inscreve(), ERROR_SUCCESS);
    EXPECT_EQ(Linhas(registro), Esperado(ParaUtf8(Arquivo)));
}

TEST(Inscricao, Inscreve_WhenAllIsSo_WritesNothing)
{
    RegistroEmMemoria registro;
    Inscricao(registro, Arquivo).Inscreve();
    const auto antes = registro.Tudo;
    registro.Gravacoes = 0;
    EXPECT_EQ(Inscricao(registro, Arquivo).Inscreve(), ERROR_SUCCESS);
    EXPECT_EQ(registro.Gravacoes, 0);
    EXPECT_EQ(registro.Tudo, antes);
}

TEST(Inscricao, Inscreve_WhenAnyStepFails_LeavesEverythingAsItWas)
{
    RegistroEmMemoria vazio;
    RegistroEmMemoria outro; // registered as another file, with what others have put into the keys
    Inscricao(outro, L"D:\\Antigo\\ZTAVOREQUIP.dll").Inscreve();
    outro.Tudo[L"ZTAVOREQUIP.Geral"][L"deles"] = L"1";
    outro.Tudo[L"TypeLib\\{50EF54EA-189A-46D8-B6E3-EDFC0FBA6066}\\1.9"].erase(L"");
    outro.Tudo[L"CLSID\\{80D349F1-1D47-42CF-B53F-BA4AA48D1130}\\ProgID"][L""] = L"Outro.Nome";
    for (const RegistroEmMemoria *inicio : {&vazio, &outro}) {
        int falhas = 0;
        for (int passo = 1;; ++passo) {
            RegistroEmMemoria registro;
            registro.Tudo = inicio->Tudo;
            registro.FalhaNoPasso = passo;
            const LSTATUS codigo = Inscricao(registro, Arquivo).Inscreve();
            if (registro.Passos < passo) {
                EXPECT_EQ(codigo, ERROR_SUCCESS);
                break;
            }
            ++falhas;
            EXPECT_EQ(codigo, ERROR_DISK_FULL) << passo;
            EXPECT_EQ(registro.Tudo, inicio->Tudo) << passo;
        }
        EXPECT_GT(falhas, inicio == &vazio ? 80 : 28);
    }
}

TEST(Inscricao, Desinscreve_AfterRegistration_LeavesNothing)
{
    RegistroEmMemoria registro;
    Inscricao inscricao(registro, Arquivo);
    inscricao.Inscreve();
    EXPECT_EQ(inscricao.Desinscreve(), ERROR_SUCCESS);
    EXPECT_EQ(registro.Tudo, RegistroEmMemoria::Chaves());
    EXPECT_EQ(inscricao.Desinscreve(), ERROR_SUCCESS); // and once more
    EXPECT_EQ(registro.Tudo, RegistroEmMemoria::Chaves());
}

TEST(Inscricao, Desinscreve_WithWhatOthersWrote_LeavesThat)
{
    RegistroEmMemoria registro;
    Inscricao inscricao(registro, Arquivo);
    registro.Tudo[L"CLSID"];
    registro.Tudo[L"CLSID\\{00000000-0000-0000-0000-000000000001}"][L""] = L"de outro";
    RegistroEmMemoria::Chaves esperadas = registro.Tudo;
    inscricao.Inscreve();
    registro.Tudo[L"ZTAVOREQUIP.Geral"][L"deles"] = L"1";
    registro.Tudo[L"CLSID\\{80D349F1-1D47-42CF-B53F-BA4AA48D1130}\\InprocServer32\\1.0"][L""] = L"2";
    EXPECT_EQ(inscricao.Desinscreve(), ERROR_SUCCESS);
    esperadas[L"ZTAVOREQUIP.Geral"][L"deles"] = L"1";
    esperadas[L"CLSID\\{80D349F1-1D47-42CF-B53F-BA4AA48D1130}"];
    esperadas[L"CLSID\\{80D349F1-1D47-42CF-B53F-BA4AA48D1130}\\InprocServer32"];
    esperadas[L"CLSID\\{80D349F1-1D47-42CF-B53F-BA4AA48D1130}\\InprocServer32\\1.0"][L""] = L"2";
    EXPECT_EQ(registro.Tudo, esperadas);
}

TEST(Inscricao, Desinscreve_WhenRegisteredAsAnotherFile_RemovesNothing)
{
    RegistroEmMemoria registro;
    Inscricao(registro, L"D:\\Outro\\ZTAVOREQUIP.dll").Inscreve();
    const auto antes = registro.Tudo;
    EXPECT_EQ(Inscricao(registro, Arquivo).Desinscreve(), ERROR_SUCCESS);
    EXPECT_EQ(registro.Tudo, antes);
    EXPECT_EQ(Inscricao(registro, L"d:\\outro\\ztavorequip.DLL").Desinscreve(), ERROR_SUCCESS); // the same file
    EXPECT_EQ(registro.Tudo, RegistroEmMemoria::Chaves());
}

TEST(Inscricao, Desinscreve_BesideTheOtherWidth_LeavesWhatItNeeds)
{
    const std::wstring biblioteca = L"TypeLib\\{50EF54EA-189A-46D8-B6E3-EDFC0FBA6066}\\1.9";
    const std::wstring outra = biblioteca + (sizeof(void *) == 8 ? L"\\0\\win32" : L"\\0\\win64");
    RegistroEmMemoria registro;
    Inscricao inscricao(registro, Arquivo);
    inscricao.Inscreve();
    registro.Tudo[outra][L""] = L"C:\\Programas (x86)\\ZTAVOREQUIP.dll";
    EXPECT_EQ(inscricao.Desinscreve(), ERROR_SUCCESS);
    const std::vector<std::string> esperadas{
        ParaUtf8(biblioteca) + "\\FLAGS||0",
        ParaUtf8(outra) + "||C:\\Programas (x86)\\ZTAVOREQUIP.dll",
        ParaUtf8(biblioteca) + "||Cadastro de equipamentos eletrônicos de fiscalização",
        "ZTAVOREQUIP.Geral\\CLSID||{80D349F1-1D47-42CF-B53F-BA4AA48D1130}",
        "ZTAVOREQUIP.Geral||ZTAVOREQUIP.Geral",
    };
    std::vector<std::string> linhas = Linhas(registro);
    std::vector<std::string> ordenadas = esperadas;
    std::sort(ordenadas.begin(), ordenadas.end());
    EXPECT_EQ(linhas, ordenadas);
}

TEST(Inscricao, Desinscreve_WhenAStepFails_RemovesTheRestAndTells)
{
    for (int passo = 1;; ++passo) {
        RegistroEmMemoria registro;
        Inscricao inscricao(registro, Arquivo);
        inscricao.Inscreve();
        registro.Passos = 0;
        registro.FalhaNoPasso = passo;
        const LSTATUS codigo = inscricao.Desinscreve();
        if (registro.Passos < passo) {
            EXPECT_EQ(codigo, ERROR_SUCCESS);
            break;
        }
        EXPECT_EQ(codigo, ERROR_DISK_FULL) << passo;
        registro.FalhaNoPasso = 0;
        EXPECT_EQ(inscricao.Desinscreve(), ERROR_SUCCESS) << passo; // what was left goes with the next time
        EXPECT_EQ(Linhas(registro), std::vector<std::string>()) << passo;
    }
}

TEST(Inscricao, InscreveComponente_WhereTheMachineIsDenied_IsForTheUser)
{
    for (int passo = 1; passo <= 60; ++passo) {
        RegistroEmMemoria maquina;
        RegistroEmMemoria usuario;
        maquina.FalhaNoPasso = passo;
        maquina.Codigo = ERROR_ACCESS_DENIED;
        EXPECT_EQ(InscreveComponente(maquina, usuario, Arquivo), S_OK);
        EXPECT_EQ(maquina.Tudo, RegistroEmMemoria::Chaves());
        EXPECT_EQ(Linhas(usuario), Esperado(ParaUtf8(Arquivo)));
        EXPECT_EQ(DesinscreveComponente(maquina, usuario, Arquivo), S_OK);
        EXPECT_EQ(usuario.Tudo, RegistroEmMemoria::Chaves());
    }
}

TEST(Inscricao, InscreveComponente_WhereItIsAllowedOrFailsOtherwise_LeavesTheUserAlone)
{
    RegistroEmMemoria maquina;
    RegistroEmMemoria usuario;
    EXPECT_EQ(InscreveComponente(maquina, usuario, Arquivo), S_OK);
    EXPECT_EQ(Linhas(maquina), Esperado(ParaUtf8(Arquivo)));
    EXPECT_EQ(usuario.Tudo, RegistroEmMemoria::Chaves());
    RegistroEmMemoria cheia;
    cheia.FalhaNoPasso = 5;
    EXPECT_EQ(InscreveComponente(cheia, usuario, Arquivo), HRESULT_FROM_WIN32(ERROR_DISK_FULL));
    EXPECT_EQ(usuario.Tudo, RegistroEmMemoria::Chaves());
}

TEST(Inscricao, InscreveComponente_OverAnOlderOneOfTheUser_IsThatOneToo)
{
    RegistroEmMemoria maquina;
    RegistroEmMemoria usuario;
    EXPECT_EQ(Inscricao(usuario, L"C:\\antes\\ZTAVOREQUIP.dll").Inscreve(), ERROR_SUCCESS);
    EXPECT_EQ(InscreveComponente(maquina, usuario, Arquivo), S_OK);
    EXPECT_EQ(Linhas(maquina), Esperado(ParaUtf8(Arquivo)));
    EXPECT_EQ(Linhas(usuario), Esperado(ParaUtf8(Arquivo))) << "the user's counts before the machine's";
    EXPECT_EQ(DesinscreveComponente(maquina, usuario, Arquivo), S_OK);
    EXPECT_EQ(Linhas(usuario), std::vector<std::string>());
    EXPECT_EQ(Linhas(maquina), std::vector<std::string>());
}

TEST(Inscricao, InscreveComponente_WhereNobodyMayWrite_TellsSo)
{
    RegistroEmMemoria maquina;
    RegistroEmMemoria usuario;
    maquina.FalhaNoPasso = 2;
    maquina.Codigo = ERROR_ACCESS_DENIED;
    usuario.FalhaNoPasso = 9;
    usuario.Codigo = ERROR_ACCESS_DENIED;
    EXPECT_EQ(InscreveComponente(maquina, usuario, Arquivo), E_ACCESSDENIED);
    EXPECT_EQ(usuario.Tudo, RegistroEmMemoria::Chaves());
}

// The platform's registry with keys of the test in the places of the machine and of the user, for this process alone.
class RaizesDeTeste {
  public:
    RaizesDeTeste()
    {
        m_Caminho = L"Software\\TesteDaInscricao" + std::to_wstring(GetCurrentProcessId());
        for (auto &[raiz, chave] : m_Raizes) {
            const std::wstring caminho = m_Caminho + (raiz == HKEY_LOCAL_MACHINE ? L"\\maquina" : L"\\usuario");
            EXPECT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, caminho.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                                      &chave, nullptr),
                      ERROR_SUCCESS);
            HKEY classes = nullptr;
            EXPECT_EQ(
                RegCreateKeyExW(chave, L"Software\\Classes", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &classes, nullptr),
                ERROR_SUCCESS);
            RegCloseKey(classes);
        }
        for (const auto &[raiz, chave] : m_Raizes) {
            EXPECT_EQ(RegOverridePredefKey(raiz, chave), ERROR_SUCCESS);
        }
    }
    RaizesDeTeste(const RaizesDeTeste &) = delete;
    RaizesDeTeste &operator=(const RaizesDeTeste &) = delete;
    ~RaizesDeTeste()
    {
        for (const auto &[raiz, chave] : m_Raizes) {
            RegOverridePredefKey(raiz, nullptr);
            RegCloseKey(chave);
        }
        EXPECT_EQ(RegDeleteTreeW(HKEY_CURRENT_USER, m_Caminho.c_str()), ERROR_SUCCESS);
    }

    // Keys without a value are lines of their own; quando: with the moment of each key's last change.
    static std::vector<std::string> Linhas(HKEY raiz, bool quando = false)
    {
        std::vector<std::string> linhas;
        Junta(raiz, L"Software\\Classes", L"", quando, linhas);
        std::sort(linhas.begin(), linhas.end());
        return linhas;
    }

  private:
    static void Junta(HKEY raiz, const std::wstring &base, const std::wstring &chave, bool quando,
                      std::vector<std::string> &linhas)
    {
        HKEY aberta = nullptr;
        ASSERT_EQ(RegOpenKeyExW(raiz, (base + (chave.empty() ? L"" : L"\\" + chave)).c_str(), 0, KEY_READ, &aberta),
                  ERROR_SUCCESS);
        wchar_t nome[512];
        wchar_t texto[1024];
        DWORD valores = 0;
        DWORD chaves = 0;
        FILETIME mudou{};
        RegQueryInfoKeyW(aberta, nullptr, nullptr, nullptr, &chaves, nullptr, nullptr, &valores, nullptr, nullptr,
                         nullptr, &mudou);
        if (quando) {
            linhas.push_back(ParaUtf8(chave) + " " + std::to_string(mudou.dwHighDateTime) + "." +
                             std::to_string(mudou.dwLowDateTime));
        }
        for (DWORD i = 0; i < valores; ++i) {
            DWORD letras = 512;
            DWORD octetos = sizeof texto;
            DWORD tipo = 0;
            RegEnumValueW(aberta, i, nome, &letras, nullptr, &tipo, reinterpret_cast<BYTE *>(texto), &octetos);
            EXPECT_EQ(tipo, static_cast<DWORD>(REG_SZ));
            linhas.push_back(ParaUtf8(chave) + "|" + ParaUtf8(nome) + "|" + ParaUtf8(texto));
        }
        if (valores == 0 && chaves == 0 && !chave.empty()) {
            linhas.push_back(ParaUtf8(chave));
        }
        for (DWORD i = 0; i < chaves; ++i) {
            DWORD letras = 512;
            RegEnumKeyExW(aberta, i, nome, &letras, nullptr, nullptr, nullptr, nullptr);
            Junta(raiz, base, chave.empty() ? nome : chave + L"\\" + nome, quando, linhas);
        }
        RegCloseKey(aberta);
    }

    std::wstring m_Caminho;
    std::pair<HKEY, HKEY> m_Raizes[2]{{HKEY_LOCAL_MACHINE, nullptr}, {HKEY_CURRENT_USER, nullptr}};
};

std::string ArquivoDoComponente()
{
    return ParaUtf8(ComponenteDeTeste::Pasta() + L"\\ZTAVOREQUIP.dll");
}

TEST(InscricaoDoComponente, DllRegisterServer_OnceAndTwice_WritesForTheMachineAndUnregistersToNothing)
{
    const ComponenteDeTeste componente;
    const RaizesDeTeste raizes;
    ASSERT_EQ(componente.Registra(), S_OK);
    EXPECT_EQ(RaizesDeTeste::Linhas(HKEY_LOCAL_MACHINE), Esperado(ArquivoDoComponente()));
    EXPECT_EQ(RaizesDeTeste::Linhas(HKEY_CURRENT_USER), std::vector<std::string>());
    const std::vector<std::string> antes = RaizesDeTeste::Linhas(HKEY_LOCAL_MACHINE, true);
    ASSERT_EQ(componente.Registra(), S_OK);
    EXPECT_EQ(RaizesDeTeste::Linhas(HKEY_LOCAL_MACHINE, true), antes);
    ASSERT_EQ(componente.Desregistra(), S_OK);
    EXPECT_EQ(RaizesDeTeste::Linhas(HKEY_LOCAL_MACHINE), std::vector<std::string>());
    ASSERT_EQ(componente.Desregistra(), S_OK);
    EXPECT_EQ(componente.PodeDescarregar(), S_OK);
}

TEST(InscricaoDoComponente, RegistroDoSistema_ForTheUser_HoldsTheListKeyByKey)
{
    const RaizesDeTeste raizes;
    RegistroDoSistema usuario(HKEY_CURRENT_USER);
    Inscricao inscricao(usuario, Arquivo);
    ASSERT_EQ(inscricao.Inscreve(), ERROR_SUCCESS);
    EXPECT_EQ(RaizesDeTeste::Linhas(HKEY_CURRENT_USER), Esperado(ParaUtf8(Arquivo)));
    EXPECT_EQ(RaizesDeTeste::Linhas(HKEY_LOCAL_MACHINE), std::vector<std::string>());
    ASSERT_EQ(inscricao.Desinscreve(), ERROR_SUCCESS);
    EXPECT_EQ(RaizesDeTeste::Linhas(HKEY_CURRENT_USER), std::vector<std::string>());
}

TEST(InscricaoDoComponente, RegistroDoSistema_OfWhatIsNotThereOrNoText_ReadsNone)
{
    const RaizesDeTeste raizes;
    RegistroDoSistema usuario(HKEY_CURRENT_USER);
    std::optional<std::wstring> texto = L"antes";
    bool nova = false;
    EXPECT_EQ(usuario.Le(L"Nenhuma", L"", texto), ERROR_SUCCESS);
    EXPECT_EQ(texto, std::nullopt);
    EXPECT_EQ(usuario.ApagaValor(L"Nenhuma", L"x"), ERROR_SUCCESS);
    EXPECT_EQ(usuario.ApagaChaveVazia(L"Nenhuma"), ERROR_SUCCESS);
    EXPECT_EQ(usuario.CriaChave(L"Uma", nova), ERROR_SUCCESS);
    EXPECT_TRUE(nova);
    EXPECT_EQ(usuario.CriaChave(L"Uma", nova), ERROR_SUCCESS);
    EXPECT_FALSE(nova);
    const std::wstring longo(5000, L'ç');
    EXPECT_EQ(usuario.Grava(L"Uma", L"longo", longo), ERROR_SUCCESS);
    EXPECT_EQ(usuario.Le(L"Uma", L"longo", texto), ERROR_SUCCESS);
    EXPECT_EQ(texto, longo);
    const DWORD numero = 7;
    EXPECT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\Classes\\Uma", L"numero", REG_DWORD, &numero, 4),
              ERROR_SUCCESS);
    EXPECT_EQ(usuario.Le(L"Uma", L"numero", texto), ERROR_SUCCESS);
    EXPECT_EQ(texto, std::nullopt);
    EXPECT_EQ(usuario.ApagaChaveVazia(L"Uma"), ERROR_SUCCESS); // is not empty
    EXPECT_EQ(usuario.Le(L"Uma", L"longo", texto), ERROR_SUCCESS);
    EXPECT_EQ(texto, longo);
}

} // namespace
} // namespace nativo
