#pragma once

#include "host/Colecao.h"
#include "shell/clsParametro.h"

#include <cstdint>
#include <string>

// Named values that controllers pass to one another. Faults are the collection's own, unchanged: 9 for a position out
// of range, 5 for a missing name, 457 for a name in use (keys ignore case).
class clsListaParametros : public Objeto {
  public:
    ~clsListaParametros() override;
    std::string_view NomeTipo() const override { return "clsListaParametros"; }

    std::int32_t Count() const;
    // By position from 1, or by name.
    Ref<clsParametro> Item(std::int32_t posicao) const;
    Ref<clsParametro> Item(const std::string &nome) const;
    Ref<clsParametro> Add(const std::string &sNome, const std::string &sValor);
    void Remove(std::int32_t posicao);
    void Remove(const std::string &nome);
    void Clear();
    // Whether a parameter of exactly that name is there, case included.
    bool Existe(const std::string &sNome) const;

  private:
    Colecao<Ref<clsParametro>> m_Colecao;
};
