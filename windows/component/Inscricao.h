#pragma once

#include "windows/component/RegistroDoSistema.h"

#include <string>
#include <vector>

namespace nativo {

// The component's registration: everything that it writes is one list of texts in keys.
class Inscricao {
  public:
    struct Valor {
        std::wstring Chave;
        std::wstring Nome; // empty: the key's own
        std::wstring Texto;
        bool Comum = false; // shared with the component of the other width, and its as much as ours
    };

    // arquivo: path of the component's file.
    Inscricao(IRegistroDoSistema &registro, const std::wstring &arquivo);

    const std::vector<Valor> &Valores() const { return m_Valores; }

    // Writes what is not so yet. When a step fails, everything is again as it was before.
    LSTATUS Inscreve();
    // Removes what is this file's, and leaves what others wrote into the same keys. Nothing is removed when the
    // component is registered as another file. A step that fails does not keep the rest from being removed; the first
    // failure is the answer.
    LSTATUS Desinscreve();

  private:
    struct Passo {
        std::wstring Chave;
        bool ChaveNova = false;
        std::wstring Nome;
        std::optional<std::wstring> Antes;
    };

    LSTATUS GravaValor(const Valor &valor, std::vector<Passo> &feitos);
    void Desfaz(const std::vector<Passo> &feitos);
    LSTATUS EhDeOutroArquivo(bool &deOutro) const;
    LSTATUS HaDaOutraLargura(bool &ha) const;

    IRegistroDoSistema &m_Registro;
    std::vector<Valor> m_Valores;
};

// What registration and its undoing are for the whole component: for the machine where the person may, otherwise for
// the user.
HRESULT InscreveComponente(IRegistroDoSistema &maquina, IRegistroDoSistema &usuario, const std::wstring &arquivo);
HRESULT DesinscreveComponente(IRegistroDoSistema &maquina, IRegistroDoSistema &usuario, const std::wstring &arquivo);

} // namespace nativo
