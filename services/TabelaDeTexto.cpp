#include "services/TabelaDeTexto.h"

#include "host/Conversoes.h"
#include "services/Recusa.h"

#include <QStringDecoder>

#include <algorithm>
#include <string_view>

namespace mesa {

namespace {

constexpr std::string_view MarcaUtf8 = "\xEF\xBB\xBF";

std::string_view SemMarca(std::string_view conteudo)
{
    if (conteudo.starts_with("\xFF\xFE") || conteudo.starts_with("\xFE\xFF")) {
        throw Recusa("O arquivo está em UTF-16: salve-o como texto UTF-8 e importe de novo.");
    }
    if (conteudo.starts_with(MarcaUtf8)) {
        conteudo.remove_prefix(MarcaUtf8.size());
    }
    QStringDecoder leitor(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    [[maybe_unused]] const QString lido =
        leitor.decode(QByteArrayView(conteudo.data(), static_cast<qsizetype>(conteudo.size())));
    if (leitor.hasError()) {
        throw Recusa("O arquivo não está em UTF-8; parece estar em Latin-1 (Windows-1252), com que os acentos sairiam "
                     "trocados. Salve-o como \"CSV UTF-8\" e importe de novo.");
    }
    return conteudo;
}

char Separador(std::string_view conteudo)
{
    const std::string_view primeira = conteudo.substr(0, conteudo.find_first_of("\r\n"));
    return *std::ranges::max_element(std::string_view("\t;,"), {},
                                     [&](char separador) { return std::ranges::count(primeira, separador); });
}

// Reads the cells one behind the other.
class Leitor {
  public:
    explicit Leitor(std::string_view conteudo) : m_Conteudo(conteudo), m_Separador(Separador(conteudo)) {}

    bool Fim() const { return m_Onde == m_Conteudo.size(); }

    LinhaDeTexto Linha()
    {
        LinhaDeTexto linha{m_Linha, {Celula()}};
        while (!Fim() && m_Conteudo[m_Onde] == m_Separador) {
            ++m_Onde;
            linha.Celulas.push_back(Celula());
        }
        PulaFimDeLinha();
        return linha;
    }

  private:
    std::string Celula()
    {
        if (!Fim() && m_Conteudo[m_Onde] == '"') {
            return EntreAspas();
        }
        const std::size_t inicio = m_Onde;
        while (!Fim() && m_Conteudo[m_Onde] != m_Separador && !NoFimDeLinha()) {
            ++m_Onde;
        }
        return std::string(m_Conteudo.substr(inicio, m_Onde - inicio));
    }

    std::string EntreAspas()
    {
        const std::int32_t aberta = m_Linha;
        std::string texto;
        for (++m_Onde; !Fim(); ++m_Onde) {
            if (m_Conteudo[m_Onde] == '"') {
                if (m_Conteudo.substr(m_Onde + 1, 1) != "\"") {
                    ++m_Onde;
                    return texto + Celula(); // whatever follows the closing mark belongs to the cell
                }
                ++m_Onde;
            }
            m_Linha += m_Conteudo[m_Onde] == '\n' ? 1 : 0;
            texto += m_Conteudo[m_Onde];
        }
        throw Recusa("As aspas abertas na linha " + CStr(aberta) + " do arquivo não foram fechadas.");
    }

    bool NoFimDeLinha() const { return m_Conteudo[m_Onde] == '\n' || m_Conteudo[m_Onde] == '\r'; }

    void PulaFimDeLinha()
    {
        if (m_Conteudo.substr(m_Onde, 2) == "\r\n") {
            ++m_Onde;
        }
        if (!Fim()) {
            ++m_Onde;
            ++m_Linha;
        }
    }

    std::string_view m_Conteudo;
    char m_Separador;
    std::size_t m_Onde = 0;
    std::int32_t m_Linha = 1;
};

} // namespace

std::vector<LinhaDeTexto> LeTabelaDeTexto(const std::string &conteudo)
{
    std::vector<LinhaDeTexto> linhas;
    Leitor leitor(SemMarca(conteudo));
    while (!leitor.Fim()) {
        LinhaDeTexto linha = leitor.Linha();
        if (!std::ranges::all_of(linha.Celulas, &std::string::empty)) {
            linhas.push_back(std::move(linha));
        }
    }
    return linhas;
}

} // namespace mesa
