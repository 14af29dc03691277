#pragma once

#include "host/Registro.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>

// Records of the operations on streets of "AdministracaoRN", which SessaoServico::Executa runs. Flags travel as bytes,
// 1 yes and 2 no. Looking takes the right to consult equipment or "T" of Permissoes::ObjetoAdministracao, all else "T".
//
//   listaLogradouros    ListaLogradourosED -> ListaLogradourosED   by municipality, postal code or code
//   incluiLogradouro    LogradouroED -> LogradouroED               one that is not there yet; its code is the answer's
//   alteraLogradouro    LogradouroED -> LogradouroED               name, district, postal code, Ativo; unset ones stay;
//                                                                  Versao: that of the copy that was read
//   importaLogradouros  ImportacaoED -> ImportacaoED               all rows of a table, or none when one is refused

namespace mesa {

// A street of a municipality.
class LogradouroED : public RegistroDe<LogradouroED> {
  public:
    static constexpr std::string_view Nome = "LogradouroED";

    Campo<std::int32_t> CodLograd; // stays; 0 for a new one
    Campo<std::int32_t> CodMunic;  // stays
    Campo<std::string> NomeLograd; // with its kind: "Rua Bento Gonçalves"
    Campo<std::string> Bairro;     // may be empty
    Campo<std::string> Cep;        // eight digits; a dash is taken and left out
    Campo<std::uint8_t> Ativo;     // 1 yes, 2 no; for a new one 1
    Campo<std::int32_t> Versao;

    static constexpr auto Membros()
    {
        return std::tuple(Membro{"CodLograd", &LogradouroED::CodLograd}, Membro{"CodMunic", &LogradouroED::CodMunic},
                          Membro{"Nome", &LogradouroED::NomeLograd}, Membro{"Bairro", &LogradouroED::Bairro},
                          Membro{"Cep", &LogradouroED::Cep}, Membro{"Ativo", &LogradouroED::Ativo},
                          Membro{"Versao", &LogradouroED::Versao});
    }
};

// Criteria and answer of a search for streets.
class ListaLogradourosED : public RegistroDe<ListaLogradourosED> {
  public:
    static constexpr std::string_view Nome = "ListaLogradourosED";

    Campo<std::int32_t> CodLograd; // that one alone; the other criteria do not count then
    Campo<std::int32_t> CodMunic;  // 0: of the whole country, which takes at least five digits of the postal code
    // Words of the name, accents and case ignored, or the beginning of the postal code; empty: all.
    Campo<std::string> Procurado;
    Campo<std::uint8_t> Ativo;  // only those that are (1) or are not (2); unset: both
    Campo<std::int32_t> Maximo; // at most so many; unset: as many as the service gives

    Campo<ListaDe<LogradouroED>> Logradouros; // out: in order of name; absent when nothing was found
    Campo<std::uint8_t> HaMais;               // out: 1 when more were found than are given

    static constexpr auto Membros()
    {
        return std::tuple(
            Membro{"CodLograd", &ListaLogradourosED::CodLograd}, Membro{"CodMunic", &ListaLogradourosED::CodMunic},
            Membro{"Procurado", &ListaLogradourosED::Procurado}, Membro{"Ativo", &ListaLogradourosED::Ativo},
            Membro{"Maximo", &ListaLogradourosED::Maximo}, Membro{"Logradouros", &ListaLogradourosED::Logradouros},
            Membro{"HaMais", &ListaLogradourosED::HaMais});
    }
};

// A row of a table that was not taken.
class LinhaRecusadaED : public RegistroDe<LinhaRecusadaED> {
  public:
    static constexpr std::string_view Nome = "LinhaRecusadaED";

    Campo<std::int32_t> Linha; // of the file, from 1
    Campo<std::string> Motivo; // a sentence

    static constexpr auto Membros()
    {
        return std::tuple(Membro{"Linha", &LinhaRecusadaED::Linha}, Membro{"Motivo", &LinhaRecusadaED::Motivo});
    }
};

// A table of streets to be imported, and what came of it.
class ImportacaoED : public RegistroDe<ImportacaoED> {
  public:
    static constexpr std::string_view Nome = "ImportacaoED";

    // The file as it is: UTF-8, cells parted by tabs, semicolons or commas. Its columns are municipality, name,
    // district and postal code, in this order or in that of its first row when that names them.
    Campo<std::string> Conteudo;

    Campo<std::int32_t> Incluidos;    // out
    Campo<std::int32_t> JaExistiam;   // out: equal to a street that is there, active or not, or to a row before
    Campo<std::int32_t> NroRecusadas; // out: when it is not 0, nothing was included
    Campo<ListaDe<LinhaRecusadaED>> Recusadas; // out: the first thousand of them; absent when there are none

    static constexpr auto Membros()
    {
        return std::tuple(Membro{"Conteudo", &ImportacaoED::Conteudo}, Membro{"Incluidos", &ImportacaoED::Incluidos},
                          Membro{"JaExistiam", &ImportacaoED::JaExistiam},
                          Membro{"NroRecusadas", &ImportacaoED::NroRecusadas},
                          Membro{"Recusadas", &ImportacaoED::Recusadas});
    }
};

} // namespace mesa
