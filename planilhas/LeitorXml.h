#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <string_view>

struct XML_ParserStruct;

namespace planilhas {

class ParteDoPacote;

// Name of an element or attribute: its namespace, empty when it has none, and the rest.
struct NomeXml {
    std::string_view Espaco;
    std::string_view Local;
};

// The attributes of an element, while it is told.
class AtributosXml {
  public:
    explicit AtributosXml(const char **atributos) : m_Atributos(atributos) {}

    // The value of the first attribute with that name, whose namespace ends so; empty when there is none.
    std::string_view Valor(std::string_view local, std::string_view fimDoEspaco = "") const;
    bool Tem(std::string_view local, std::string_view fimDoEspaco = "") const;

  private:
    const char *Acha(std::string_view local, std::string_view fimDoEspaco) const;

    const char **m_Atributos;
};

// Who is told what a document holds, in its order. Whatever is thrown ends the reading and comes out of it.
class OuvinteXml {
  public:
    virtual ~OuvinteXml() = default;
    virtual void Abre(const NomeXml &nome, const AtributosXml &atributos) = 0;
    virtual void Fecha(const NomeXml &nome) = 0;
    // A piece of a text; one text may come in several.
    virtual void Texto(std::string_view texto) = 0;
    // Asked behind each element: whether the reading is to stop there until it is asked to go on.
    virtual bool Cheio() const { return false; }
};

// Reads a document as it comes, with memory that depends neither on its length nor on its depth. What is not
// well-formed, declares entities, is nested deeper than any spreadsheet or has a single tag of megabytes is a Falha.
class LeitorXml {
  public:
    LeitorXml(std::unique_ptr<ParteDoPacote> parte, OuvinteXml &ouvinte);
    LeitorXml(const LeitorXml &) = delete;
    LeitorXml &operator=(const LeitorXml &) = delete;
    ~LeitorXml();

    // Reads some more, or goes on where the listener had enough; false when the document was at its end.
    bool Avanca();

  private:
    struct Chamadas; // what the library calls

    // The library's status after one more piece.
    int LePedaco();

    std::unique_ptr<ParteDoPacote> m_Parte;
    OuvinteXml &m_Ouvinte;
    XML_ParserStruct *m_Leitor;
    std::uint64_t m_Dados = 0; // bytes that the library was given
    int m_Fundo = 0;           // elements that are open
    std::exception_ptr m_Lancado;
    bool m_Pausado = false;
    bool m_DeuTudo = false; // the library has all there is
};

// Tells every opened element of a part, with its attributes.
void ParaCadaElemento(std::unique_ptr<ParteDoPacote> parte,
                      const std::function<void(const NomeXml &, const AtributosXml &)> &procedimento);

} // namespace planilhas
