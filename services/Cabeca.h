#pragma once

#include "services/Instante.h"

#include <cstdint>
#include <string>
#include <vector>

namespace mesa {

class Banco;

// The end of a registry's history at a moment, signed with the registry's key. Kept elsewhere, it proves later that
// nothing up to there was changed, put in, taken out or cut off since. It is a text of a few lines, which a file, a
// message or a picture can carry.
struct CabecaAssinada {
    std::string Registro;     // identifier
    std::int64_t Tamanho = 0; // entries of the history
    std::string Elo;          // hash of the last of them
    std::int64_t Quando = 0;  // when it was signed, in UTC
    std::string ChavePublica; // of the registry
    std::string Assinatura;

    // By the key that it names; whether that is the registry's is another question.
    bool AssinaturaVale() const;

    std::string Texto() const;
    // Falha 5 with a sentence that says what the text lacks or has too much.
    static CabecaAssinada Le(const std::string &texto);
    // The same from a file.
    static CabecaAssinada LeArquivo(const std::string &caminho);
};

// The dots of a picture that carries a text, which a telephone can read.
struct CodigoQR {
    int Lado = 0;
    std::vector<bool> Pontos; // row by row, dark where true; without the white margin, which is four dots wide

    bool Escuro(int x, int y) const { return Pontos[static_cast<std::size_t>(y * Lado + x)]; }
    static CodigoQR De(const std::string &texto);
};

namespace ExportacaoDeCabeca {

// The head of the registry as it stands, read from its file, which may be open here and elsewhere, or from its
// database. Falha with a sentence.
CabecaAssinada Le(const std::string &registro, const Instante &agora);
// The same over a connection that there is. Within the caller's transaction.
CabecaAssinada Le(Banco &banco, const Instante &agora);

// Writes it into a file, which is never put over another one. Falha with a sentence.
void Grava(const CabecaAssinada &cabeca, const std::string &caminho);

// The same once a day into a directory, which has to be there: cabeca.AAAAMMDD.XXXXXXXX.txt, by the day of the place
// and the beginning of the registry's identifier. The file's path; empty when the day's is there already.
std::string ExportaSeDevida(const std::string &registro, const std::string &diretorio, const Instante &agora);

} // namespace ExportacaoDeCabeca

} // namespace mesa
