#pragma once

#include "tests/support/ConsultaSQL.h"
#include "tests/support/RegistroChamadas.h"

#include <cstdint>
#include <string>
#include <vector>

// The local database in memory. It starts with the tables Municipio, which holds some municipalities, and VOREQUIPTO,
// which is empty. Logged are OpenRecordset, Name and the closing of a cursor ("Cursor.Close()"), not its reads.
class BancoLocal : public IMDB {
  public:
    struct Tabela {
        std::string Nome;
        std::vector<std::string> Colunas;
        std::vector<std::vector<Valor>> Linhas;
    };

    explicit BancoLocal(RefRegistro registro);

    std::string_view NomeTipo() const override { return "BancoLocal"; }

    // A table; fault 3078 when there is none of that name.
    Tabela &TabelaDe(const std::string &nome);
    // Appends a row to VOREQUIPTO.
    void PoeEquipamento(std::int32_t nroIntEquip, const std::string &cliente, const std::string &codigo,
                        std::int16_t ativo, const std::string &tipoEquip);
    // Appends a row to Municipio.
    void PoeMunicipio(std::int32_t codigo, const std::string &nome, const std::string &uf, std::int32_t renavam);

    std::string Name() const override;
    // Fault 3075 for what cannot be read, 3078 for an unknown table, 3061 for an unknown column.
    Ref<ICursor> OpenRecordset(const std::string &sql, std::int16_t tipo, const Valor &opcoes,
                               const Valor &trava) override;

  private:
    RefRegistro m_Registro;
    std::vector<Tabela> m_Tabelas;
};
