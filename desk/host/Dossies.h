#pragma once

#include "desk/host/Andamento.h"
#include "host/Data.h"
#include "services/SessaoServico.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace mesa {

// Of which equipment a dossier is wanted, and as of when.
struct PedidoDeDossie {
    std::int32_t NroIntEquip = 0; // 0: the one of that code
    std::string Codigo;
    Data Dia;
};

// What there is to tell of a dossier.
struct RelatoDoDossie {
    bool Bom = false; // nothing that anybody has to look after
    std::string Frase;
    std::vector<std::string> Linhas = {};
};

// What the desk does with dossiers.
class Dossies {
  public:
    // sessao: of whoever is at work. acompanha: shows how far a work is, and lets it be given up.
    Dossies(std::function<Ref<SessaoServico>()> sessao, FazComAndamento acompanha)
        : m_Sessao(std::move(sessao)),
          m_Acompanha(std::move(acompanha))
    {
    }

    // Asks where to put it, offering a name, before anything is asked of the registry; then makes it and puts it there.
    // Nothing is told when the person gave up; what went wrong is a sentence as well.
    RelatoDoDossie Faz(const PedidoDeDossie &pedido,
                       const std::function<std::string(const std::string &nome)> &pedeLugar);
    RelatoDoDossie Confere(const std::string &caminho);

  private:
    std::function<Ref<SessaoServico>()> m_Sessao;
    FazComAndamento m_Acompanha;
};

} // namespace mesa
