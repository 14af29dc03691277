#pragma once

#include "planilhas/ArquivoNovo.h"
#include "planilhas/LeitorXml.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace planilhas {

class ParteDoPacote;

// The texts that the cells of a spreadsheet name by number. They are on the disk while they are needed, so that the
// memory does not grow with them.
class TextosPartilhados {
  public:
    explicit TextosPartilhados(std::unique_ptr<ParteDoPacote> parte);
    TextosPartilhados(const TextosPartilhados &) = delete;
    TextosPartilhados &operator=(const TextosPartilhados &) = delete;
    ~TextosPartilhados();

    // A Falha when there is no text of that number, which counts from 0.
    std::string_view Texto(std::size_t numero) const;

  private:
    ArquivoTemporario m_Arquivo;
    std::vector<std::uint64_t> m_Fins; // where each text ends
    const char *m_Octetos = nullptr;
};

// A text of a spreadsheet in which characters stand as _xHHHH_, with these characters.
std::string SemEscapes(std::string texto);

// Collects the text of a rich or plain string: what stands in its elements "t", without how it is pronounced.
class TextoRico {
  public:
    void Comeca();
    void Abre(std::string_view nome);
    void Fecha(std::string_view nome);
    // A piece of text; a Falha when the whole is longer than a cell may be.
    void Poe(std::string_view texto);
    std::string Acabado() { return SemEscapes(std::move(m_Texto)); }

  private:
    std::string m_Texto;
    bool m_Dentro = false;
    bool m_Pronuncia = false;
};

} // namespace planilhas
