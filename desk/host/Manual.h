#pragma once

#include <QString>

#include <optional>
#include <string>
#include <vector>

class QTextDocument;

namespace mesa {

// A heading of the manual with what stands below it, up to the next one.
struct SecaoDoManual {
    QString Titulo;
    QString Ancora; // by which links and topics know it: "página-dados"
    int Nivel = 1;
    int Posicao = 0; // of its heading in the text
};

struct AchadoNoManual {
    int Posicao = 0;
    int Tamanho = 0;
};

// The manual as a text with sections: what leads where, and what is found. Positions are those of the document that it
// was made of.
class Manual {
  public:
    explicit Manual(const QTextDocument &documento);

    const std::vector<SecaoDoManual> &Secoes() const { return m_Secoes; }
    // The one in which a position stands; before the first heading, none.
    std::optional<std::size_t> SecaoEm(int posicao) const;
    std::optional<std::size_t> SecaoDe(const QString &ancora) const;

    // The anchor of what a window asks about: "frmEquipDetalhes.Sensores". A page that has no section of its own has
    // its window's; empty for what is not known.
    static QString AncoraDoTopico(const std::string &topico);
    // Every topic that has an anchor.
    static std::vector<std::string> Topicos();

    // Where the text stands, in order: accents, case and the width of blanks do not count, no character has a meaning.
    std::vector<AchadoNoManual> Procura(const QString &texto) const;
    // What stands around a find, in one line.
    QString Trecho(const AchadoNoManual &achado) const;

    // A position as a text that holds when the manual is renewed, and back; none for a text that means no place.
    std::string Lugar(int posicao) const;
    std::optional<int> PosicaoDe(const std::string &lugar) const;

  private:
    int FimDa(std::size_t secao) const;

    QString m_Texto;
    QString m_Dobrado; // as searched, each character in its place
    std::vector<SecaoDoManual> m_Secoes;
};

} // namespace mesa
