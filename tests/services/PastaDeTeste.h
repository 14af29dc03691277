#pragma once

#include "services/Copia.h"

#include <filesystem>
#include <string>
#include <vector>

// What the tests ask of files and directories.

// Names in a directory, in order.
std::vector<std::string> Nomes(const std::filesystem::path &pasta);
// Who may do what, as 0600.
unsigned ModoDe(const std::filesystem::path &caminho);
// The file, with what is beside it and its directories up to that of temporary files, may be written by everybody.
void AbreATodos(const std::filesystem::path &arquivo);
// All rows of all tables of a database.
std::string Conteudo(const std::filesystem::path &arquivo);
// The bytes of a file; nothing when there is none.
std::string BytesDe(const std::filesystem::path &arquivo);
// Turns a byte of a file over.
void TrocaByte(const std::filesystem::path &arquivo, std::streamoff onde);
// A sound database that is no registry.
void CriaBancoAlheio(const std::filesystem::path &arquivo);
// A registry as version 1 of the schema left it.
void CriaRegistroVersao1(const std::filesystem::path &arquivo);
// Ends the test unless it was done.
void Exige(const mesa::DesfechoDaCopia &desfecho);
