#include "windows/component/RegistroDoSistema.h"

namespace nativo {
namespace {

// A key that closes itself.
class Chave {
  public:
    Chave() = default;
    Chave(const Chave &) = delete;
    Chave &operator=(const Chave &) = delete;
    ~Chave()
    {
        if (m_Chave != nullptr) {
            RegCloseKey(m_Chave);
        }
    }

    LSTATUS Abre(HKEY raiz, const std::wstring &caminho, REGSAM direitos)
    {
        return RegOpenKeyExW(raiz, Completo(caminho).c_str(), 0, direitos, &m_Chave);
    }
    LSTATUS Cria(HKEY raiz, const std::wstring &caminho, bool &nova)
    {
        DWORD feito = 0;
        const LSTATUS codigo = RegCreateKeyExW(raiz, Completo(caminho).c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                               KEY_READ | KEY_WRITE, nullptr, &m_Chave, &feito);
        nova = codigo == ERROR_SUCCESS && feito == REG_CREATED_NEW_KEY;
        return codigo;
    }
    HKEY operator*() const { return m_Chave; }

    static std::wstring Completo(const std::wstring &caminho) { return L"Software\\Classes\\" + caminho; }

  private:
    HKEY m_Chave = nullptr;
};

// What was not there is gone already.
LSTATUS SemFalta(LSTATUS codigo)
{
    return codigo == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : codigo;
}

} // namespace

LSTATUS RegistroDoSistema::CriaChave(const std::wstring &chave, bool &nova)
{
    return Chave().Cria(m_Raiz, chave, nova);
}

LSTATUS RegistroDoSistema::ApagaChaveVazia(const std::wstring &chave)
{
    {
        Chave aberta;
        const LSTATUS codigo = aberta.Abre(m_Raiz, chave, KEY_READ);
        if (codigo != ERROR_SUCCESS) {
            return SemFalta(codigo);
        }
        DWORD chaves = 0;
        DWORD valores = 0;
        const LSTATUS contadas = RegQueryInfoKeyW(*aberta, nullptr, nullptr, nullptr, &chaves, nullptr, nullptr,
                                                  &valores, nullptr, nullptr, nullptr, nullptr);
        if (contadas != ERROR_SUCCESS || chaves > 0 || valores > 0) {
            return contadas;
        }
    }
    return SemFalta(RegDeleteKeyW(m_Raiz, Chave::Completo(chave).c_str()));
}

LSTATUS RegistroDoSistema::Le(const std::wstring &chave, const std::wstring &nome, std::optional<std::wstring> &texto)
{
    texto.reset();
    Chave aberta;
    LSTATUS codigo = aberta.Abre(m_Raiz, chave, KEY_READ);
    if (codigo != ERROR_SUCCESS) {
        return SemFalta(codigo);
    }
    DWORD tipo = 0;
    DWORD octetos = 0;
    codigo = RegQueryValueExW(*aberta, nome.c_str(), nullptr, &tipo, nullptr, &octetos);
    if (codigo != ERROR_SUCCESS || (tipo != REG_SZ && tipo != REG_EXPAND_SZ)) {
        return SemFalta(codigo);
    }
    std::wstring lido(octetos / sizeof(wchar_t) + 1, L'\0');
    octetos = static_cast<DWORD>(lido.size() * sizeof(wchar_t));
    codigo = RegQueryValueExW(*aberta, nome.c_str(), nullptr, &tipo, reinterpret_cast<BYTE *>(lido.data()), &octetos);
    if (codigo == ERROR_SUCCESS) {
        texto = lido.c_str(); // with or without the end that is written along
    }
    return codigo;
}

LSTATUS RegistroDoSistema::Grava(const std::wstring &chave, const std::wstring &nome, const std::wstring &texto)
{
    Chave aberta;
    const LSTATUS codigo = aberta.Abre(m_Raiz, chave, KEY_WRITE);
    if (codigo != ERROR_SUCCESS) {
        return codigo;
    }
    return RegSetValueExW(*aberta, nome.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE *>(texto.c_str()),
                          static_cast<DWORD>((texto.size() + 1) * sizeof(wchar_t)));
}

LSTATUS RegistroDoSistema::ApagaValor(const std::wstring &chave, const std::wstring &nome)
{
    Chave aberta;
    const LSTATUS codigo = aberta.Abre(m_Raiz, chave, KEY_WRITE);
    if (codigo != ERROR_SUCCESS) {
        return SemFalta(codigo);
    }
    return SemFalta(RegDeleteValueW(*aberta, nome.c_str()));
}

} // namespace nativo
