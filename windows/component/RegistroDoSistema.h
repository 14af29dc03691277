#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace nativo {

// The keys of classes of the platform's registry, for the machine or for a user, by their paths. Codes are the
// platform's own. Behind an interface so that each step can be made to fail.
class IRegistroDoSistema {
  public:
    IRegistroDoSistema() = default;
    IRegistroDoSistema(const IRegistroDoSistema &) = delete;
    IRegistroDoSistema &operator=(const IRegistroDoSistema &) = delete;
    virtual ~IRegistroDoSistema() = default;

    // Makes a key whose parent is there; nova tells whether it was not.
    virtual LSTATUS CriaChave(const std::wstring &chave, bool &nova) = 0;
    // Removes a key in which there is nothing; what has something in it stays. Success where there is none.
    virtual LSTATUS ApagaChaveVazia(const std::wstring &chave) = 0;
    // A text; none where there is no such value or key, or the value is no text.
    virtual LSTATUS Le(const std::wstring &chave, const std::wstring &nome, std::optional<std::wstring> &texto) = 0;
    virtual LSTATUS Grava(const std::wstring &chave, const std::wstring &nome, const std::wstring &texto) = 0;
    virtual LSTATUS ApagaValor(const std::wstring &chave, const std::wstring &nome) = 0;
};

class RegistroDoSistema final : public IRegistroDoSistema {
  public:
    // HKEY_LOCAL_MACHINE or HKEY_CURRENT_USER.
    explicit RegistroDoSistema(HKEY raiz) : m_Raiz(raiz) {}

    LSTATUS CriaChave(const std::wstring &chave, bool &nova) override;
    LSTATUS ApagaChaveVazia(const std::wstring &chave) override;
    LSTATUS Le(const std::wstring &chave, const std::wstring &nome, std::optional<std::wstring> &texto) override;
    LSTATUS Grava(const std::wstring &chave, const std::wstring &nome, const std::wstring &texto) override;
    LSTATUS ApagaValor(const std::wstring &chave, const std::wstring &nome) override;

  private:
    HKEY m_Raiz;
};

} // namespace nativo
