#pragma once

#include "host/Ref.h"

#include <string>

// What a screen remembers of how one person works with it, from one day to the next: texts under keys such as
// "frmLista/colunas". What is remembered is a comfort and no data: it may be absent, or made by an earlier version, and
// whoever reads one that makes no sense goes on as if there were none.
class ILembrancas : public Objeto {
  public:
    // Empty when nothing is remembered under the key.
    virtual std::string Lembranca(const std::string &chave) const = 0;
    // An empty text forgets. What cannot be kept is lost without a word.
    virtual void Lembra(const std::string &chave, const std::string &texto) = 0;
    // Forgets everything whose key begins so; all with the empty text.
    virtual void Esquece(const std::string &comeco) = 0;
};
