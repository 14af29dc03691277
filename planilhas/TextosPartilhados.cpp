#include "planilhas/TextosPartilhados.h"

#include "planilhas/Codificacao.h"
#include "planilhas/Falhas.h"
#include "planilhas/Leitor.h"
#include "planilhas/Pacote.h"

#include <sys/mman.h>

#include <cerrno>
#include <charconv>
#include <utility>

namespace planilhas {

namespace {

constexpr std::size_t MaisTextos = 10000000;
constexpr std::size_t TamanhoDoEscape = 7; // _xHHHH_

class Colhedor : public OuvinteXml {
  public:
    Colhedor(Gravacao &gravacao, std::vector<std::uint64_t> &fins) : m_Gravacao(gravacao), m_Fins(fins) {}

    void Abre(const NomeXml &nome, const AtributosXml & /*atributos*/) override
    {
        if (nome.Local == "si") {
            m_Texto.Comeca();
            m_Aberto = true;
        } else {
            m_Texto.Abre(nome.Local);
        }
    }

    void Fecha(const NomeXml &nome) override
    {
        if (nome.Local != "si") {
            m_Texto.Fecha(nome.Local);
            return;
        }
        m_Aberto = false;
        if (m_Fins.size() == MaisTextos) {
            FalhaDeFormato("O arquivo tem textos demais para ser lido como tabela.");
        }
        const std::string texto = m_Texto.Acabado();
        m_Gravacao.Poe(texto);
        m_Fins.push_back((m_Fins.empty() ? 0 : m_Fins.back()) + texto.size());
    }

    void Texto(std::string_view texto) override
    {
        if (m_Aberto) {
            m_Texto.Poe(texto);
        }
    }

  private:
    Gravacao &m_Gravacao;
    std::vector<std::uint64_t> &m_Fins;
    TextoRico m_Texto;
    bool m_Aberto = false;
};

} // namespace

TextosPartilhados::TextosPartilhados(std::unique_ptr<ParteDoPacote> parte)
{
    const std::string ato = "Não foi possível guardar os textos da planilha num arquivo temporário";
    Gravacao gravacao(m_Arquivo.Aberto(), ato);
    Colhedor colhedor(gravacao, m_Fins);
    LeitorXml leitor(std::move(parte), colhedor);
    while (leitor.Avanca()) {
    }
    gravacao.Descarrega();
    if (m_Fins.empty() || m_Fins.back() == 0) {
        return;
    }
    void *const octetos = mmap(nullptr, m_Fins.back(), PROT_READ, MAP_SHARED, m_Arquivo.Aberto(), 0);
    if (octetos == MAP_FAILED) {
        FalhaDeArquivo(errno, ato);
    }
    m_Octetos = static_cast<const char *>(octetos);
}

TextosPartilhados::~TextosPartilhados()
{
    if (m_Octetos != nullptr) {
        munmap(const_cast<char *>(m_Octetos), m_Fins.back());
    }
}

std::string_view TextosPartilhados::Texto(std::size_t numero) const
{
    if (numero >= m_Fins.size()) {
        FalhaDeFormato("O arquivo está danificado: uma célula aponta para um texto que não há.");
    }
    const std::uint64_t inicio = numero == 0 ? 0 : m_Fins[numero - 1];
    return {m_Octetos + inicio, m_Fins[numero] - inicio};
}

std::string SemEscapes(std::string texto)
{
    std::size_t onde = texto.find("_x");
    if (onde == std::string::npos) {
        return texto;
    }
    std::string sem = texto.substr(0, onde);
    while (onde < texto.size()) {
        const std::string_view escape = std::string_view(texto).substr(onde, TamanhoDoEscape);
        std::uint32_t caractere = 0;
        if (escape.size() == TamanhoDoEscape && escape.starts_with("_x") && escape.ends_with('_')) {
            const auto lido = std::from_chars(escape.data() + 2, escape.data() + 6, caractere, 16);
            caractere = lido.ec == std::errc() && lido.ptr == escape.data() + 6 ? caractere : 0;
        }
        if (caractere != 0 && (caractere < 0xD800 || caractere > 0xDFFF)) {
            PoeEmUtf8(sem, caractere);
            onde += TamanhoDoEscape;
        } else {
            sem += texto[onde++];
        }
    }
    return sem;
}

void TextoRico::Comeca()
{
    *this = TextoRico();
}

void TextoRico::Abre(std::string_view nome)
{
    m_Pronuncia = m_Pronuncia || nome == "rPh";
    m_Dentro = nome == "t" && !m_Pronuncia;
}

void TextoRico::Fecha(std::string_view nome)
{
    m_Dentro = m_Dentro && nome != "t";
    m_Pronuncia = m_Pronuncia && nome != "rPh";
}

void TextoRico::Poe(std::string_view texto)
{
    if (!m_Dentro) {
        return;
    }
    if (m_Texto.size() + texto.size() > MaiorTextoDeCelula) {
        FalhaDeFormato("O arquivo tem uma célula longa demais.");
    }
    m_Texto += texto;
}

} // namespace planilhas
