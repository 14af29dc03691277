#pragma once

#include "tests/windows/externo/ObjetoExterno.h"

#include <string>
#include <vector>

namespace nativo {

// A collection of the host: by position from 1, as those of the platform's languages.
class ColecaoExterna : public ObjetoExterno {
  public:
    static Contado<ColecaoExterna> Nova(Diario &diario)
    {
        return Contado<ColecaoExterna>::Adota(new ColecaoExterna(diario));
    }

    std::vector<Contado<IDispatch>> Itens;

  private:
    explicit ColecaoExterna(Diario &diario);
};

// A record of the host's library: members of fixed types, each written or not.
class RegistroExterno : public ObjetoExterno {
  public:
    // One that was never written. A FalhaExterna when the library has no such class.
    static Contado<RegistroExterno> Novo(const std::string &classe, Diario &diario);
    // A copy of a record of that class, whoever made it.
    static Contado<RegistroExterno> Copia(const std::string &classe, IDispatch *registro, Diario &diario);
    // Classes of the library.
    static std::vector<std::string> Classes();

    Var Le(const std::string &membro) const { return Acha(membro).Valor; }
    RegistroExterno &Poe(const std::string &membro, const Var &valor);
    bool Escrito(const std::string &membro) const { return Acha(membro).Escrito; }
    // The items of a collection member; none when it is absent.
    std::vector<Contado<RegistroExterno>> Itens(const std::string &membro) const;
    // Puts an item at the end of a collection member.
    RegistroExterno &Junta(const std::string &membro, const Contado<RegistroExterno> &item);

    // The written members, in the record's order.
    std::string Retrato() const;

  private:
    struct Membro {
        std::string Nome;
        char Tipo = 0;
        std::string ClasseDosItens;
        Var Valor;
        bool Escrito = false;
    };

    RegistroExterno(const std::string &classe, Diario &diario);
    const Membro &Acha(const std::string &membro) const;
    Membro &Acha(const std::string &membro);
    void Recebe(Membro &membro, const Var &valor);

    std::vector<Membro> m_Membros;
};

} // namespace nativo
