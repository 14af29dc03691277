#include "planilhas/LeitorOds.h"

#include "planilhas/Contagem.h"
#include "planilhas/Falhas.h"
#include "planilhas/InstanteIso.h"
#include "planilhas/TextoDeParagrafos.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace planilhas {

namespace {

constexpr std::string_view DoDocumento = ":office:1.0";
constexpr std::string_view DaTabela = ":table:1.0";
constexpr std::string_view DoCalculo = ":calcext:1.0";
constexpr std::uint64_t UltimaLinha = 1048576;

bool Eh(const NomeXml &nome, std::string_view espaco, std::string_view local)
{
    return nome.Local == local && nome.Espaco.ends_with(espaco);
}

// How often a row or cell stands there. What is no number stands once.
std::uint64_t Vezes(const AtributosXml &atributos, std::string_view nome)
{
    const std::string_view texto = atributos.Valor(nome, DaTabela);
    std::uint32_t vezes = 1;
    std::from_chars(texto.data(), texto.data() + texto.size(), vezes);
    return std::max<std::uint32_t>(vezes, 1);
}

// Follows which sheet of the document one is in.
class Lugar {
  public:
    // Whether this begins a sheet.
    bool Abre(const NomeXml &nome, const AtributosXml &atributos)
    {
        ++m_Fundo;
        if (Eh(nome, DoDocumento, "spreadsheet")) {
            m_Planilha = m_Fundo;
        }
        // The copies of other files' sheets that a program keeps beside are none of this one.
        return m_Planilha != 0 && m_Fundo == m_Planilha + 1 && Eh(nome, DaTabela, "table") &&
               !atributos.Valor("name", DaTabela).starts_with("'file:");
    }

    // Whether this ends a child of the spreadsheet.
    bool Fecha() { return --m_Fundo == m_Planilha; }

  private:
    int m_Fundo = 0;
    int m_Planilha = 0;
};

} // namespace

class LeitorOds::NomesDasFolhas : public OuvinteXml {
  public:
    explicit NomesDasFolhas(std::vector<std::string> &nomes) : m_Nomes(nomes) {}

    void Abre(const NomeXml &nome, const AtributosXml &atributos) override
    {
        if (m_Lugar.Abre(nome, atributos)) {
            PoeFolha(m_Nomes, atributos.Valor("name", DaTabela));
        }
    }
    void Fecha(const NomeXml & /*nome*/) override { m_Lugar.Fecha(); }
    void Texto(std::string_view /*texto*/) override {}

  private:
    std::vector<std::string> &m_Nomes;
    Lugar m_Lugar;
};

// Makes rows of what the document tells of one sheet.
class LeitorOds::Folha : public OuvinteXml {
  public:
    // numero: of the sheet, from 0.
    Folha(std::size_t numero, const LimitesDeLeitura &limites) : m_Faltam(numero + 1), m_Contagem(limites) {}

    // A row that is whole, until the next one is asked for, and how often it stands there.
    LinhaLida Pronta;
    std::uint64_t Vezes = 1;
    // The sheet's end was seen.
    bool Acabou = false;

    bool Achada() const { return m_Faltam == 0; }
    bool Cheio() const override { return !Pronta.Celulas.empty() || Acabou; }

    void Abre(const NomeXml &nome, const AtributosXml &atributos) override
    {
        if (m_Lugar.Abre(nome, atributos) && m_Faltam > 0) {
            m_NaFolha = --m_Faltam == 0;
        } else if (!m_NaFolha) {
            return;
        } else if (m_NaCelula > 0) {
            ++m_NaCelula;
            m_Paragrafos.Abre(nome, atributos);
        } else if (Eh(nome, DaTabela, "table-row")) {
            ComecaLinha(atributos);
        } else if (m_NaLinha && (Eh(nome, DaTabela, "table-cell") || Eh(nome, DaTabela, "covered-table-cell"))) {
            ComecaCelula(atributos);
        }
    }

    void Fecha(const NomeXml &nome) override
    {
        if (m_Lugar.Fecha() && std::exchange(m_NaFolha, false)) {
            Acabou = true;
        } else if (m_NaCelula > 1) {
            --m_NaCelula;
            m_Paragrafos.Fecha(nome);
        } else if (m_NaCelula == 1) {
            AcabaCelula();
        } else if (m_NaLinha && Eh(nome, DaTabela, "table-row")) {
            AcabaLinha();
        }
    }

    void Texto(std::string_view texto) override
    {
        if (m_NaCelula > 0) {
            m_Paragrafos.Poe(texto);
        }
    }

  private:
    void ComecaLinha(const AtributosXml &atributos)
    {
        m_NaLinha = true;
        m_Linha.Celulas.clear();
        m_Linha.Numero = static_cast<std::uint32_t>(m_Proxima);
        m_VezesDaLinha = planilhas::Vezes(atributos, "number-rows-repeated");
        m_Coluna = 0;
    }

    void AcabaLinha()
    {
        m_NaLinha = false;
        const bool algo = !m_Linha.Celulas.empty();
        m_Proxima += m_VezesDaLinha;
        if (algo && m_Proxima > UltimaLinha + 1) {
            FalhaDeFormato("A tabela tem mais de " + std::to_string(UltimaLinha) + " linhas, que é o máximo.");
        }
        // Empty rows end anywhere.
        m_Proxima = std::min(m_Proxima, UltimaLinha + 1);
        if (algo) {
            m_Contagem.Conta(m_Linha, m_VezesDaLinha);
            std::swap(Pronta, m_Linha);
            Vezes = m_VezesDaLinha;
        }
    }

    void ComecaCelula(const AtributosXml &atributos)
    {
        m_NaCelula = 1;
        m_VezesDaCelula = planilhas::Vezes(atributos, "number-columns-repeated");
        m_Tipo = atributos.Valor("value-type", DoDocumento);
        m_Erro = atributos.Valor("value-type", DoCalculo) == "error";
        m_Formula = !atributos.Valor("formula", DaTabela).empty();
        m_Valor = atributos.Valor(NomeDoValor(), DoDocumento);
        m_ComTexto = m_Tipo == "string" && atributos.Tem("string-value", DoDocumento);
        if (m_Valor.size() > MaiorTextoDeCelula) {
            FalhaDeFormato("O arquivo tem uma célula longa demais.");
        }
        m_Paragrafos.Comeca();
    }

    std::string_view NomeDoValor() const
    {
        return m_Tipo == "date"      ? "date-value"
               : m_Tipo == "time"    ? "time-value"
               : m_Tipo == "boolean" ? "boolean-value"
               : m_Tipo == "string"  ? "string-value"
                                     : "value";
    }

    void AcabaCelula()
    {
        m_NaCelula = 0;
        Celula celula = Le();
        celula.Formula = m_Formula;
        m_Contagem.Poe(m_Linha, m_Coluna, std::move(celula), m_VezesDaCelula);
        m_Coluna += m_VezesDaCelula;
    }

    Celula Le() const
    {
        if (m_Erro) {
            return CelulaDeErro(m_Paragrafos.Texto());
        }
        if (m_Tipo == "float" || m_Tipo == "percentage" || m_Tipo == "currency") {
            const auto decimal = NumeroDecimal(m_Valor);
            if (!decimal) {
                FalhaDeFormato("O arquivo está danificado: na linha " + std::to_string(m_Linha.Numero) +
                               " há um número que não se entende.");
            }
            return CelulaDeNumero(SemSobraBinaria(*decimal));
        }
        if (m_Tipo == "date") {
            return CelulaDoInstante(m_Valor).value_or(CelulaDeTexto(m_Valor));
        }
        if (m_Tipo == "time") {
            return CelulaDaDuracao(m_Valor).value_or(CelulaDeTexto(m_Valor));
        }
        if (m_Tipo == "boolean") {
            return CelulaLogica(m_Valor == "true");
        }
        return CelulaDeTexto(m_ComTexto ? m_Valor : m_Paragrafos.Texto());
    }

    std::size_t m_Faltam; // sheets until the one that is read has begun
    Contagem m_Contagem;
    Lugar m_Lugar;
    bool m_NaFolha = false;
    bool m_NaLinha = false;
    int m_NaCelula = 0; // elements that are open, from the cell on
    LinhaLida m_Linha;
    std::uint64_t m_Proxima = 1; // number of the next row
    std::uint64_t m_VezesDaLinha = 1;
    std::uint64_t m_Coluna = 0; // of the next cell
    std::uint64_t m_VezesDaCelula = 1;
    std::string m_Tipo;
    std::string m_Valor;
    TextoDeParagrafos m_Paragrafos;
    bool m_ComTexto = false; // the text stands in an attribute
    bool m_Erro = false;
    bool m_Formula = false;
};

LeitorOds::LeitorOds(const std::filesystem::path &arquivo, const LimitesDeLeitura &limites)
    : m_Limites(limites),
      m_Pacote(arquivo, limites.Octetos)
{
    ConfereSenha();
    if (!Vai(0)) {
        FalhaDeFormato("A planilha não tem nenhuma folha.");
    }
}

LeitorOds::~LeitorOds() = default;

void LeitorOds::ConfereSenha()
{
    const char *const lista = "META-INF/manifest.xml";
    if (!m_Pacote.Tem(lista)) {
        return;
    }
    ParaCadaElemento(m_Pacote.AbrePequena(lista), [](const NomeXml &nome, const AtributosXml &) {
        if (nome.Local == "encryption-data") {
            FalhaDeFormato("O arquivo está protegido por senha: salve-o sem senha e tente de novo.");
        }
    });
}

const std::vector<std::string> &LeitorOds::Folhas()
{
    if (m_Nomes.empty()) {
        std::vector<std::string> nomes;
        NomesDasFolhas ouvinte(nomes);
        LeitorXml leitor(m_Pacote.Abre("content.xml"), ouvinte);
        while (leitor.Avanca()) {
        }
        m_Nomes = std::move(nomes);
    }
    return m_Nomes;
}

void LeitorOds::Escolhe(std::size_t folha)
{
    if (!Vai(folha)) {
        throw Falha(NumeroFalha::SubscritoForaDoIntervalo);
    }
}

bool LeitorOds::Vai(std::size_t folha)
{
    auto escolhida = std::make_unique<Folha>(folha, m_Limites);
    auto xml = std::make_unique<LeitorXml>(m_Pacote.Abre("content.xml"), *escolhida);
    m_Repeticoes = 0;
    m_Xml = std::move(xml);
    m_Folha = std::move(escolhida);
    while (!m_Folha->Achada()) {
        if (!m_Xml->Avanca()) {
            return false;
        }
    }
    return true;
}

bool LeitorOds::Le(LinhaLida &linha)
{
    if (m_Repeticoes > 0) {
        --m_Repeticoes;
        ++m_Repetida.Numero;
        linha = m_Repetida;
        return true;
    }
    while (m_Folha->Pronta.Celulas.empty()) {
        if (m_Folha->Acabou || !m_Xml->Avanca()) {
            linha.Celulas.clear();
            return false;
        }
    }
    std::swap(linha, m_Folha->Pronta);
    m_Folha->Pronta.Celulas.clear();
    m_Repeticoes = m_Folha->Vezes - 1;
    if (m_Repeticoes > 0) {
        m_Repetida = linha;
    }
    return true;
}

} // namespace planilhas
