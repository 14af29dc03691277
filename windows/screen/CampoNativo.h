#pragma once

#include <windows.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace nativo {

// Positions in a text: the platform counts units of UTF-16, the controls characters.
std::size_t CaracteresAte(std::wstring_view texto, std::size_t unidade);
std::size_t UnidadesAte(std::wstring_view texto, std::size_t carater);

// The platform's field, in which a person edits a text by all means that it has. It says only what the text has become.
class CampoNativo {
  public:
    // editou: the text and the cursor in it, in characters.
    CampoNativo(HWND janela, std::function<void(const std::string &texto, std::size_t cursor)> editou);

    HWND Janela() const { return m_Janela; }
    // What the field has told its parent (EN_...).
    void Avisou(UINT aviso);
    // A message of the field, before the field itself; a value is the answer.
    std::optional<LRESULT> Mensagem(UINT mensagem, WPARAM w);
    // Without a cursor it stays with what is being typed.
    void Mostra(const std::string &texto, std::optional<std::size_t> cursor = std::nullopt);
    // It can be read and copied, but not changed.
    void DefineSomenteLeitura(bool valor);

  private:
    std::wstring Texto() const;
    std::optional<LRESULT> Letra(wchar_t unidade);

    HWND m_Janela;
    std::function<void(const std::string &, std::size_t)> m_Editou;
    std::wstring m_Mostrado;             // what the field had before the person's next act
    std::optional<std::size_t> m_Cursor; // to which the keyboard comes
    wchar_t m_Metade = 0;                // of a character that comes in two
    bool m_Mostrando = false;
};

} // namespace nativo
