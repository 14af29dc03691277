#include "windows/component/Inscricao.h"

#include "windows/component/ArquivoDoModulo.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <set>

namespace nativo {
namespace {

const std::wstring NomeDaClasse = L"ZTAVOREQUIP.Geral";
const std::wstring Classe = L"{80D349F1-1D47-42CF-B53F-BA4AA48D1130}";
const std::wstring Biblioteca = L"{50EF54EA-189A-46D8-B6E3-EDFC0FBA6066}";
const std::wstring Versao = L"1.9";
// By which the platform carries calls of a dual interface to another thread: it reads the type library.
const std::wstring Transporte = L"{00020424-0000-0000-C000-000000000046}";

struct Interface {
    const wchar_t *Nome;
    const wchar_t *Identificador;
};
constexpr Interface Interfaces[] = {
    {L"_Geral", L"{96D691EE-4A71-4CEB-A769-18576E55B4EA}"},
    {L"_Especifica", L"{9D87B2B9-072C-44F6-9261-95A712E625DF}"},
    {L"_CVorEquip", L"{811A0E52-B1BA-4C42-9692-4766E2C4F2A3}"},
    {L"_CVORPesqEquip", L"{1D2D8966-F0F4-438D-8314-0AEAE207955F}"},
};

const std::wstring ChaveDaClasse = L"CLSID\\" + Classe;
const std::wstring ChaveDoServidor = ChaveDaClasse + L"\\InprocServer32";
const std::wstring ChaveDaBiblioteca = L"TypeLib\\" + Biblioteca + L"\\" + Versao;
constexpr bool Largura64 = sizeof(void *) == 8;
const std::wstring ChaveDoArquivo = ChaveDaBiblioteca + (Largura64 ? L"\\0\\win64" : L"\\0\\win32");
const std::wstring ChaveDoOutroArquivo = ChaveDaBiblioteca + (Largura64 ? L"\\0\\win32" : L"\\0\\win64");

bool MesmoTexto(const std::wstring &um, const std::wstring &outro)
{
    return CompareStringOrdinal(um.c_str(), -1, outro.c_str(), -1, TRUE) == CSTR_EQUAL;
}

// A key's path and those of the keys around it, the outermost first.
std::vector<std::wstring> ComAsDeFora(const std::wstring &chave)
{
    std::vector<std::wstring> caminhos;
    for (std::size_t fim = chave.find(L'\\'); fim != std::wstring::npos; fim = chave.find(L'\\', fim + 1)) {
        caminhos.push_back(chave.substr(0, fim));
    }
    caminhos.push_back(chave);
    return caminhos;
}

} // namespace

Inscricao::Inscricao(IRegistroDoSistema &registro, const std::wstring &arquivo) : m_Registro(registro)
{
    m_Valores = {
        {NomeDaClasse, L"", NomeDaClasse, true},
        {NomeDaClasse + L"\\CLSID", L"", Classe, true},
        {ChaveDaClasse, L"", NomeDaClasse},
        {ChaveDoServidor, L"", arquivo},
        {ChaveDoServidor, L"ThreadingModel", L"Apartment"},
        {ChaveDaClasse + L"\\ProgID", L"", NomeDaClasse},
        {ChaveDaClasse + L"\\Programmable", L"", L""},
        {ChaveDaClasse + L"\\TypeLib", L"", Biblioteca},
        {ChaveDaClasse + L"\\Version", L"", Versao},
        {ChaveDaBiblioteca, L"", L"Cadastro de equipamentos eletrônicos de fiscalização", true},
        {ChaveDaBiblioteca + L"\\FLAGS", L"", L"0", true},
        {ChaveDoArquivo, L"", arquivo},
    };
    for (const Interface &uma : Interfaces) {
        const std::wstring chave = std::wstring(L"Interface\\") + uma.Identificador;
        m_Valores.push_back({chave, L"", uma.Nome});
        m_Valores.push_back({chave + L"\\ProxyStubClsid32", L"", Transporte});
        m_Valores.push_back({chave + L"\\TypeLib", L"", Biblioteca});
        m_Valores.push_back({chave + L"\\TypeLib", L"Version", Versao});
    }
}

LSTATUS Inscricao::Inscreve()
{
    std::vector<Passo> feitos;
    for (const Valor &valor : m_Valores) {
        const LSTATUS codigo = GravaValor(valor, feitos);
        if (codigo != ERROR_SUCCESS) {
            Desfaz(feitos);
            return codigo;
        }
    }
    return ERROR_SUCCESS;
}

LSTATUS Inscricao::GravaValor(const Valor &valor, std::vector<Passo> &feitos)
{
    std::optional<std::wstring> antes;
    LSTATUS codigo = m_Registro.Le(valor.Chave, valor.Nome, antes);
    if (codigo != ERROR_SUCCESS || antes == valor.Texto) {
        return codigo;
    }
    for (const std::wstring &chave : ComAsDeFora(valor.Chave)) {
        bool nova = false;
        codigo = m_Registro.CriaChave(chave, nova);
        if (codigo != ERROR_SUCCESS) {
            return codigo;
        }
        if (nova) {
            feitos.push_back({chave, true, {}, {}});
        }
    }
    codigo = m_Registro.Grava(valor.Chave, valor.Nome, valor.Texto);
    if (codigo == ERROR_SUCCESS) {
        feitos.push_back({valor.Chave, false, valor.Nome, antes});
    }
    return codigo;
}

void Inscricao::Desfaz(const std::vector<Passo> &feitos)
{
    std::for_each(feitos.rbegin(), feitos.rend(), [&](const Passo &passo) {
        if (passo.ChaveNova) {
            m_Registro.ApagaChaveVazia(passo.Chave);
        } else if (passo.Antes) {
            m_Registro.Grava(passo.Chave, passo.Nome, *passo.Antes);
        } else {
            m_Registro.ApagaValor(passo.Chave, passo.Nome);
        }
    });
}

LSTATUS Inscricao::EhDeOutroArquivo(bool &deOutro) const
{
    for (const Valor &valor : m_Valores) {
        if (valor.Chave == ChaveDoServidor && valor.Nome.empty()) {
            std::optional<std::wstring> inscrito;
            const LSTATUS codigo = m_Registro.Le(valor.Chave, valor.Nome, inscrito);
            // Another spelling of the path is no other file.
            deOutro = inscrito && !MesmoTexto(PorExtenso(*inscrito), PorExtenso(valor.Texto));
            return codigo;
        }
    }
    return ERROR_SUCCESS;
}

LSTATUS Inscricao::HaDaOutraLargura(bool &ha) const
{
    std::optional<std::wstring> outro;
    const LSTATUS codigo = m_Registro.Le(ChaveDoOutroArquivo, L"", outro);
    ha = outro.has_value();
    return codigo;
}

LSTATUS Inscricao::Desinscreve()
{
    bool deOutro = false;
    bool outraLargura = false;
    LSTATUS codigo = EhDeOutroArquivo(deOutro);
    if (codigo == ERROR_SUCCESS) {
        codigo = HaDaOutraLargura(outraLargura);
    }
    if (codigo != ERROR_SUCCESS || deOutro) {
        return codigo;
    }
    const auto anota = [&](LSTATUS passo) {
        if (codigo == ERROR_SUCCESS) {
            codigo = passo;
        }
        return passo == ERROR_SUCCESS;
    };
    std::set<std::wstring, std::greater<>> chaves; // what is inside comes before what is around it
    for (const Valor &valor : m_Valores) {
        if (valor.Comum && outraLargura) {
            continue;
        }
        std::optional<std::wstring> inscrito;
        if (!anota(m_Registro.Le(valor.Chave, valor.Nome, inscrito)) || !inscrito ||
            !MesmoTexto(PorExtenso(*inscrito), PorExtenso(valor.Texto))) {
            continue;
        }
        if (anota(m_Registro.ApagaValor(valor.Chave, valor.Nome))) {
            const std::vector<std::wstring> esvaziadas = ComAsDeFora(valor.Chave);
            chaves.insert(esvaziadas.begin(), esvaziadas.end());
        }
    }
    for (const std::wstring &chave : chaves) {
        anota(m_Registro.ApagaChaveVazia(chave));
    }
    return codigo;
}

HRESULT InscreveComponente(IRegistroDoSistema &maquina, IRegistroDoSistema &usuario, const std::wstring &arquivo)
{
    LSTATUS codigo = Inscricao(maquina, arquivo).Inscreve();
    if (codigo == ERROR_ACCESS_DENIED) {
        codigo = Inscricao(usuario, arquivo).Inscreve();
    } else if (codigo == ERROR_SUCCESS) {
        // The user's own registration counts before the machine's: an older one would go on being loaded.
        std::optional<std::wstring> doUsuario;
        codigo = usuario.Le(ChaveDoServidor, L"", doUsuario);
        if (codigo == ERROR_SUCCESS && doUsuario) {
            codigo = Inscricao(usuario, arquivo).Inscreve();
        }
    }
    return HRESULT_FROM_WIN32(static_cast<DWORD>(codigo));
}

HRESULT DesinscreveComponente(IRegistroDoSistema &maquina, IRegistroDoSistema &usuario, const std::wstring &arquivo)
{
    const LSTATUS doUsuario = Inscricao(usuario, arquivo).Desinscreve();
    const LSTATUS daMaquina = Inscricao(maquina, arquivo).Desinscreve();
    return HRESULT_FROM_WIN32(static_cast<DWORD>(doUsuario != ERROR_SUCCESS ? doUsuario : daMaquina));
}

} // namespace nativo
