#include "planilhas/LeitorXlsx.h"

#include "planilhas/Contagem.h"
#include "planilhas/Falhas.h"
#include "planilhas/InstanteIso.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

namespace planilhas {

namespace {

constexpr std::uint32_t UltimaLinha = 1048576;
constexpr std::size_t UltimaColuna = 16384;
constexpr std::string_view DasRelacoes =
    "/relationships"; // end of the namespace of the numbers by which parts are named

[[noreturn]] void Danificado(const std::string &porque)
{
    FalhaDeFormato("O arquivo está danificado: " + porque + ".");
}

// A whole number from 0; nothing when the text is none.
std::optional<std::uint32_t> Natural(std::string_view texto)
{
    std::uint32_t numero = 0;
    const auto [fim, erro] = std::from_chars(texto.data(), texto.data() + texto.size(), numero);
    return erro == std::errc() && fim == texto.data() + texto.size() ? std::optional(numero) : std::nullopt;
}

bool Verdadeiro(std::string_view texto)
{
    return texto == "1" || texto == "true";
}

std::string_view SemBrancos(std::string_view texto)
{
    const std::size_t inicio = texto.find_first_not_of(" \t\r\n");
    return inicio == std::string_view::npos ? "" : texto.substr(inicio, texto.find_last_not_of(" \t\r\n") - inicio + 1);
}

std::string UltimaPalavra(std::string_view endereco)
{
    return std::string(endereco.substr(endereco.rfind('/') + 1));
}

std::string PastaDe(const std::string &parte)
{
    return parte.substr(0, parte.rfind('/') + 1);
}

// The part that a target names, seen from a folder of the package ("" or one that ends in a slash).
std::string ParteDoAlvo(const std::string &pasta, std::string_view alvo)
{
    std::string parte = alvo.starts_with('/') ? "" : pasta;
    while (!alvo.empty()) {
        const std::size_t barra = std::min(alvo.find('/'), alvo.size());
        const std::string_view passo = alvo.substr(0, barra);
        alvo.remove_prefix(std::min(barra + 1, alvo.size()));
        if (passo == "..") {
            parte = parte.empty() ? "" : PastaDe(parte.substr(0, parte.size() - 1));
        } else if (!passo.empty() && passo != ".") {
            parte += std::string(passo) + (alvo.empty() ? "" : "/");
        }
    }
    return parte;
}

struct Referencia {
    std::size_t Coluna = 0; // from 0
    std::uint32_t Linha = 0;
};

// What "AB12" names.
std::optional<Referencia> LeReferencia(std::string_view texto)
{
    Referencia lida;
    std::size_t onde = 0;
    for (; onde < texto.size() && texto[onde] >= 'A' && texto[onde] <= 'Z' && onde < 4; ++onde) {
        lida.Coluna = lida.Coluna * 26 + static_cast<std::size_t>(texto[onde] - 'A' + 1);
    }
    const auto linha = Natural(texto.substr(onde));
    if (lida.Coluna == 0 || lida.Coluna > UltimaColuna || !linha || *linha == 0 || *linha > UltimaLinha) {
        return std::nullopt;
    }
    --lida.Coluna;
    lida.Linha = *linha;
    return lida;
}

} // namespace

// Makes rows of what a sheet's document tells.
class LeitorXlsx::Folha : public OuvinteXml {
  public:
    explicit Folha(LeitorXlsx &leitor) : m_Leitor(leitor), m_Contagem(leitor.m_Limites) {}

    // A row that is whole, until the next one is asked for.
    LinhaLida Pronta;

    bool Cheio() const override { return !Pronta.Celulas.empty(); }

    void Abre(const NomeXml &nome, const AtributosXml &atributos) override
    {
        if (!m_NosDados) {
            m_NosDados = nome.Local == "sheetData";
        } else if (nome.Local == "row") {
            ComecaLinha(atributos);
        } else if (nome.Local == "c") {
            ComecaCelula(atributos);
        } else if (m_NaCelula) {
            m_Formula = m_Formula || nome.Local == "f";
            m_NoValor = nome.Local == "v";
            m_NoTexto = m_NoTexto || nome.Local == "is";
            m_Rico.Abre(nome.Local);
        }
    }

    void Fecha(const NomeXml &nome) override
    {
        if (nome.Local == "sheetData") {
            m_NosDados = false;
        } else if (!m_NosDados) {
            return;
        } else if (nome.Local == "row") {
            AcabaLinha();
        } else if (nome.Local == "c") {
            AcabaCelula();
        } else {
            m_NoValor = false;
            m_NoTexto = m_NoTexto && nome.Local != "is";
            m_Rico.Fecha(nome.Local);
        }
    }

    void Texto(std::string_view texto) override
    {
        if (m_NoValor) {
            if (m_Valor.size() + texto.size() > MaiorTextoDeCelula) {
                Danificado("tem uma célula longa demais");
            }
            m_Valor += texto;
        } else if (m_NoTexto) {
            m_Rico.Poe(texto);
        }
    }

  private:
    void ComecaLinha(const AtributosXml &atributos)
    {
        const std::string_view numero = atributos.Valor("r");
        m_Linha.Celulas.clear();
        m_Linha.Numero = Natural(numero).value_or(0);
        m_SemNumero = numero.empty();
        if (m_SemNumero) {
            m_Linha.Numero = m_Ultima + 1;
        }
        ConfereOrdem();
        m_Proxima = 0;
        m_NaLinha = true;
    }

    void ConfereOrdem() const
    {
        if (m_Linha.Numero <= m_Ultima || m_Linha.Numero > UltimaLinha) {
            Danificado("depois da linha " + std::to_string(m_Ultima) + " há uma fora de ordem");
        }
    }

    void ComecaCelula(const AtributosXml &atributos)
    {
        if (!m_NaLinha) {
            Danificado("há uma célula fora das linhas");
        }
        m_Coluna = m_Proxima;
        if (atributos.Tem("r")) {
            const auto referencia = LeReferencia(atributos.Valor("r"));
            if (referencia && m_SemNumero) {
                m_Linha.Numero = referencia->Linha;
                m_SemNumero = false;
                ConfereOrdem();
            }
            if (!referencia || referencia->Coluna < m_Proxima || referencia->Linha != m_Linha.Numero) {
                Danificado("na linha " + std::to_string(m_Linha.Numero) + " há uma célula fora de lugar");
            }
            m_Coluna = referencia->Coluna;
        }
        m_Proxima = m_Coluna + 1;
        m_Tipo = atributos.Valor("t");
        m_Estilo = atributos.Valor("s");
        m_Valor.clear();
        m_Rico.Comeca();
        m_NaCelula = true;
        m_NoValor = false;
        m_NoTexto = false;
        m_Formula = false;
    }

    void AcabaCelula()
    {
        if (!std::exchange(m_NaCelula, false)) {
            return;
        }
        Celula celula = Le();
        celula.Formula = m_Formula;
        m_Contagem.Poe(m_Linha, m_Coluna, std::move(celula));
    }

    void AcabaLinha()
    {
        m_NaLinha = false;
        m_Ultima = m_Linha.Numero;
        if (!m_Linha.Celulas.empty()) {
            m_Contagem.Conta(m_Linha);
            std::swap(Pronta, m_Linha);
        }
    }

    Celula Le()
    {
        if (m_Tipo == "inlineStr") {
            return CelulaDeTexto(m_Rico.Acabado());
        }
        if (m_Tipo == "str") {
            return CelulaDeTexto(SemEscapes(m_Valor));
        }
        const std::string_view valor = SemBrancos(m_Valor);
        if (valor.empty()) {
            return {};
        }
        if (m_Tipo == "s") {
            const auto numero = Natural(valor);
            return CelulaDeTexto(std::string(m_Leitor.TextoPartilhado(numero ? *numero : SemTexto)));
        }
        if (m_Tipo == "b") {
            return CelulaLogica(Verdadeiro(valor));
        }
        if (m_Tipo == "e") {
            return CelulaDeErro(std::string(valor));
        }
        if (m_Tipo == "d") {
            return CelulaDoInstante(valor).value_or(CelulaDeTexto(std::string(valor)));
        }
        const auto decimal = NumeroDecimal(valor);
        if (!decimal || (!m_Tipo.empty() && m_Tipo != "n")) {
            Danificado("na linha " + std::to_string(m_Linha.Numero) + " há uma célula que não se entende");
        }
        const FormatoDasCelulas &formato = Formato();
        const std::string semSobra = SemSobraBinaria(*decimal);
        return formato.Mascara ? CelulaNaMascara(semSobra, *formato.Mascara)
                               : CelulaDoNumero(semSobra, formato.Sentido, m_Leitor.m_Desde1904);
    }

    const FormatoDasCelulas &Formato() const
    {
        static const FormatoDasCelulas comum;
        if (m_Estilo.empty() || m_Leitor.m_Formatos.empty()) {
            return comum;
        }
        const auto numero = Natural(m_Estilo);
        if (!numero || *numero >= m_Leitor.m_Formatos.size()) {
            Danificado("na linha " + std::to_string(m_Linha.Numero) + " há uma célula com um formato que não há");
        }
        return m_Leitor.m_Formatos[*numero];
    }

    static constexpr std::size_t SemTexto = static_cast<std::size_t>(-1);

    LeitorXlsx &m_Leitor;
    Contagem m_Contagem;
    bool m_NosDados = false;
    bool m_NaLinha = false;
    LinhaLida m_Linha;
    bool m_SemNumero = false;   // the row does not tell its number
    std::uint32_t m_Ultima = 0; // number of the row before
    std::size_t m_Proxima = 0;  // column of the next cell when it does not tell its own
    bool m_NaCelula = false;
    std::size_t m_Coluna = 0;
    std::string m_Tipo;
    std::string m_Estilo;
    std::string m_Valor;
    TextoRico m_Rico;
    bool m_NoValor = false;
    bool m_NoTexto = false;
    bool m_Formula = false;
};

LeitorXlsx::LeitorXlsx(const std::filesystem::path &arquivo, const LimitesDeLeitura &limites)
    : m_Limites(limites),
      m_Pacote(arquivo, limites.Octetos)
{
    LeLivro();
    Escolhe(0);
}

LeitorXlsx::~LeitorXlsx() = default;

const std::vector<std::string> &LeitorXlsx::Folhas()
{
    return m_Nomes;
}

void LeitorXlsx::Escolhe(std::size_t folha)
{
    if (folha >= m_Partes.size()) {
        throw Falha(NumeroFalha::SubscritoForaDoIntervalo);
    }
    m_Xml.reset();
    m_Folha = std::make_unique<Folha>(*this);
    m_Xml = std::make_unique<LeitorXml>(m_Pacote.Abre(m_Partes[folha]), *m_Folha);
}

bool LeitorXlsx::Le(LinhaLida &linha)
{
    m_Folha->Pronta.Celulas.clear();
    while (!m_Folha->Cheio()) {
        if (!m_Xml->Avanca()) {
            linha.Celulas.clear();
            return false;
        }
    }
    std::swap(linha, m_Folha->Pronta);
    return true;
}

std::map<std::string, LeitorXlsx::Relacao, std::less<>> LeitorXlsx::Relacoes(const std::string &parte)
{
    const std::string pasta = PastaDe(parte);
    std::map<std::string, Relacao, std::less<>> relacoes;
    ParaCadaElemento(m_Pacote.AbrePequena(pasta + "_rels/" + parte.substr(pasta.size()) + ".rels"),
                     [&](const NomeXml &nome, const AtributosXml &atributos) {
                         if (nome.Local == "Relationship" && atributos.Valor("TargetMode") != "External") {
                             relacoes[std::string(atributos.Valor("Id"))] = {
                                 UltimaPalavra(atributos.Valor("Type")), ParteDoAlvo(pasta, atributos.Valor("Target"))};
                         }
                     });
    return relacoes;
}

void LeitorXlsx::LeLivro()
{
    const std::string livro = LivroDoPacote(m_Pacote);
    if (livro.empty()) {
        FalhaDeFormato("O arquivo não é uma planilha XLSX.");
    }
    if (livro.ends_with(".bin")) {
        FalhaDeFormato("O arquivo é uma planilha no formato binário XLSB: salve-a como XLSX e tente de novo.");
    }
    const auto relacoes = Relacoes(livro);
    bool raiz = true;
    ParaCadaElemento(m_Pacote.AbrePequena(livro), [&](const NomeXml &nome, const AtributosXml &atributos) {
        if (std::exchange(raiz, false) && nome.Local != "workbook") {
            FalhaDeFormato("O arquivo não é uma planilha XLSX.");
        }
        if (nome.Local == "workbookPr") {
            m_Desde1904 = Verdadeiro(atributos.Valor("date1904"));
        } else if (nome.Local == "sheet") {
            const auto relacao = relacoes.find(atributos.Valor("id", DasRelacoes));
            if (relacao == relacoes.end()) {
                Danificado("falta nele uma das folhas");
            }
            // Sheets with nothing but a chart are no tables.
            if (relacao->second.Tipo == "worksheet") {
                PoeFolha(m_Nomes, atributos.Valor("name"));
                m_Partes.push_back(relacao->second.Parte);
            }
        }
    });
    if (m_Partes.empty()) {
        FalhaDeFormato("A planilha não tem nenhuma folha com células.");
    }
    for (const auto &[numero, relacao] : relacoes) {
        if (relacao.Tipo == "sharedStrings") {
            m_ParteDosTextos = relacao.Parte;
        } else if (relacao.Tipo == "styles") {
            LeEstilos(relacao.Parte);
        }
    }
}

void LeitorXlsx::LeEstilos(const std::string &parte)
{
    std::map<int, FormatoDasCelulas> proprios;
    bool nasCelulas = false;
    ParaCadaElemento(m_Pacote.AbrePequena(parte), [&](const NomeXml &nome, const AtributosXml &atributos) {
        if (nome.Local == "numFmt") {
            const auto numero = Natural(atributos.Valor("numFmtId"));
            if (numero && !nasCelulas) {
                const std::string_view codigo = atributos.Valor("formatCode");
                std::string mascara = MascaraDoFormato(codigo);
                proprios[static_cast<int>(*numero)] = {
                    SentidoDoFormato(codigo),
                    mascara.empty() ? nullptr : std::make_shared<const std::string>(std::move(mascara))};
            }
        } else if (nome.Local == "cellXfs" || nome.Local == "cellStyles" || nome.Local == "dxfs") {
            nasCelulas = nome.Local == "cellXfs";
        } else if (nome.Local == "xf" && nasCelulas) {
            const int numero = static_cast<int>(Natural(atributos.Valor("numFmtId")).value_or(0));
            const auto proprio = proprios.find(numero);
            m_Formatos.push_back(proprio != proprios.end() ? proprio->second
                                                           : FormatoDasCelulas{SentidoDoFormato(numero), nullptr});
        }
    });
}

std::string_view LeitorXlsx::TextoPartilhado(std::size_t numero)
{
    if (!m_Textos) {
        if (m_ParteDosTextos.empty()) {
            Danificado("faltam nele os textos das células");
        }
        m_Textos = std::make_unique<TextosPartilhados>(m_Pacote.Abre(m_ParteDosTextos));
    }
    return m_Textos->Texto(numero);
}

std::string LivroDoPacote(Pacote &pacote)
{
    std::string livro;
    if (!pacote.Tem("_rels/.rels")) {
        return livro;
    }
    ParaCadaElemento(pacote.AbrePequena("_rels/.rels"), [&](const NomeXml &nome, const AtributosXml &atributos) {
        if (nome.Local == "Relationship" && atributos.Valor("Type").ends_with("/officeDocument")) {
            livro = ParteDoAlvo("", atributos.Valor("Target"));
        }
    });
    return livro;
}

} // namespace planilhas
