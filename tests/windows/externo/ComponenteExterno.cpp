#include "tests/windows/externo/ComponenteExterno.h"

#include <stdexcept>

namespace nativo {

const CLSID ComponenteExterno::ClsidGeral = {
    0x80D349F1, 0x1D47, 0x42CF, {0xB5, 0x3F, 0xBA, 0x4A, 0xA4, 0x8D, 0x11, 0x30}};
const CLSID ComponenteExterno::ClsidEspecifica = {
    0xD599E5C6, 0x7E0F, 0x4CBC, {0x9F, 0x9E, 0x34, 0x51, 0x54, 0x32, 0xF1, 0xE3}};
const CLSID ComponenteExterno::ClsidCVorEquip = {
    0x0B361D02, 0xD4D4, 0x4C2D, {0xAC, 0xA2, 0x26, 0x31, 0xFF, 0x2D, 0xED, 0x68}};
const CLSID ComponenteExterno::ClsidCVORPesqEquip = {
    0x9EAB817F, 0xEC1F, 0x4500, {0xAE, 0x98, 0x0E, 0x80, 0x25, 0xCD, 0xC6, 0x76}};
const IID ComponenteExterno::IidGeral = {0x96D691EE, 0x4A71, 0x4CEB, {0xA7, 0x69, 0x18, 0x57, 0x6E, 0x55, 0xB4, 0xEA}};
const IID ComponenteExterno::IidEspecifica = {
    0x9D87B2B9, 0x072C, 0x44F6, {0x92, 0x61, 0x95, 0xA7, 0x12, 0xE6, 0x25, 0xDF}};
const IID ComponenteExterno::IidCVorEquip = {
    0x811A0E52, 0xB1BA, 0x4C42, {0x96, 0x92, 0x47, 0x66, 0xE2, 0xC4, 0xF2, 0xA3}};
const IID ComponenteExterno::IidCVORPesqEquip = {
    0x1D2D8966, 0xF0F4, 0x438D, {0x83, 0x14, 0x0A, 0xEA, 0xE2, 0x07, 0x95, 0x5F}};
const GUID ComponenteExterno::Biblioteca = {
    0x50EF54EA, 0x189A, 0x46D8, {0xB6, 0xE3, 0xED, 0xFC, 0x0F, 0xBA, 0x60, 0x66}};

std::wstring ComponenteExterno::Caminho()
{
    wchar_t caminho[MAX_PATH] = {};
    if (GetEnvironmentVariableW(L"ZTAVOREQUIP", caminho, MAX_PATH) > 0) {
        return caminho;
    }
    GetModuleFileNameW(nullptr, caminho, MAX_PATH);
    const std::wstring programa = caminho;
    return programa.substr(0, programa.find_last_of(L"\\/") + 1) + L"ZTAVOREQUIP.dll";
}

ComponenteExterno::ComponenteExterno() : m_Arquivo(LoadLibraryW(Caminho().c_str()))
{
    if (m_Arquivo == nullptr) {
        throw std::runtime_error("não carregou: " + Estreito(Caminho()) + ", " + std::to_string(GetLastError()));
    }
}

ComponenteExterno::~ComponenteExterno()
{
    Solta();
}

void ComponenteExterno::Solta()
{
    if (m_Arquivo != nullptr) {
        FreeLibrary(m_Arquivo);
        m_Arquivo = nullptr;
    }
}

bool ComponenteExterno::Carregado()
{
    return GetModuleHandleW(L"ZTAVOREQUIP.dll") != nullptr;
}

HRESULT ComponenteExterno::Chama(const char *entrada) const
{
    const auto procedimento =
        reinterpret_cast<HRESULT(STDAPICALLTYPE *)()>(reinterpret_cast<void *>(GetProcAddress(m_Arquivo, entrada)));
    if (procedimento == nullptr) {
        throw std::runtime_error(std::string("sem a entrada ") + entrada);
    }
    return procedimento();
}

HRESULT ComponenteExterno::ObtemClasse(REFCLSID classe, REFIID iid, void **objeto) const
{
    const auto procedimento = reinterpret_cast<HRESULT(STDAPICALLTYPE *)(REFCLSID, REFIID, void **)>(
        reinterpret_cast<void *>(GetProcAddress(m_Arquivo, "DllGetClassObject")));
    return procedimento(classe, iid, objeto);
}

ObjetoTardio ComponenteExterno::Cria()
{
    CLSID classe;
    HRESULT resposta = CLSIDFromProgID(L"ZTAVOREQUIP.Geral", &classe);
    Contado<IDispatch> objeto;
    if (SUCCEEDED(resposta)) {
        resposta = CoCreateInstance(classe, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                    reinterpret_cast<void **>(objeto.Recebe()));
    }
    if (FAILED(resposta)) {
        throw FalhaExterna{NumeroDaResposta(resposta), "CLIENTE", "ZTAVOREQUIP.Geral não foi criado"};
    }
    return ObjetoTardio(objeto);
}

} // namespace nativo
