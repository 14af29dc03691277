#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// How a person has arranged the columns of a table: which are seen, in which order, how wide. A column is known by its
// key, so that what is remembered counts for a later table with other columns too.
class ColunasArrumadas {
  public:
    struct Coluna {
        std::string Chave;
        std::int32_t Numero = 0;  // in the table, from 1
        std::int32_t Largura = 0; // as the person has made it; 0: as the table has it
        bool Vista = true;
    };

    // The columns that a table has, under their numbers in it; those that are not for people are left out. What a
    // person has arranged of columns that stay is kept.
    void Define(const std::vector<Coluna> &colunas);

    // In the order in which they are seen.
    const std::vector<Coluna> &Colunas() const { return m_Colunas; }
    // Those that are seen, from left to right.
    std::vector<std::int32_t> Vistas() const;

    // False for the last one that is seen, which stays, and for one that there is not.
    bool Mostra(std::int32_t numero, bool vista);
    // Brings the column to a place, from 0, of all of them.
    bool Move(std::int32_t numero, std::size_t lugar);
    bool Alarga(std::int32_t numero, std::int32_t largura);
    // As the table has them.
    void Volta();

    // To be remembered; empty when the columns are as the table has them.
    std::string Texto() const;
    // What makes no sense counts for nothing.
    void Le(const std::string &texto);

  private:
    std::vector<Coluna>::iterator Acha(std::int32_t numero);

    std::vector<Coluna> m_Originais;
    std::vector<Coluna> m_Colunas;
};
