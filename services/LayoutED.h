#pragma once

#include "host/Registro.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>

// Records of the operations on layouts of "AdministracaoRN", which SessaoServico::Executa runs. Flags travel as bytes,
// 1 yes and 2 no. Looking takes the right to consult equipment or "T" of Permissoes::ObjetoAdministracao, all else "T".
//
//   listaLayouts  ListaLayoutsED -> ListaLayoutsED   in order of name
//   incluiLayout  LayoutED -> LayoutED               of a new name; its number is the answer's
//   alteraLayout  LayoutED -> LayoutED               Conteudo, Ativo; unset ones stay; Versao: that of the copy read

namespace mesa {

// The layout of the files of an equipment.
class LayoutED : public RegistroDe<LayoutED> {
  public:
    static constexpr std::string_view Nome = "LayoutED";

    Campo<std::int32_t> NroLayout; // stays; 0 for a new one
    Campo<std::string> NomeLayout; // stays
    Campo<std::string> Conteudo;
    Campo<std::uint8_t> Ativo; // 1 yes, 2 no; for a new one 1
    Campo<std::int32_t> Versao;

    static constexpr auto Membros()
    {
        return std::tuple(Membro{"NroLayout", &LayoutED::NroLayout}, Membro{"Nome", &LayoutED::NomeLayout},
                          Membro{"Conteudo", &LayoutED::Conteudo}, Membro{"Ativo", &LayoutED::Ativo},
                          Membro{"Versao", &LayoutED::Versao});
    }
};

// Criteria and answer of the list of layouts.
class ListaLayoutsED : public RegistroDe<ListaLayoutsED> {
  public:
    static constexpr std::string_view Nome = "ListaLayoutsED";

    // 1: what the form of an equipment offers, which are the active ones, and behind them the names of others that an
    // equipment of the operator's client still has. Anything else: all layouts.
    Campo<std::uint8_t> Oferecidos;

    Campo<ListaDe<LayoutED>> Layouts; // out: absent when there are none

    static constexpr auto Membros()
    {
        return std::tuple(Membro{"Oferecidos", &ListaLayoutsED::Oferecidos},
                          Membro{"Layouts", &ListaLayoutsED::Layouts});
    }
};

} // namespace mesa
