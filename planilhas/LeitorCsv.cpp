#include "planilhas/LeitorCsv.h"

#include "planilhas/Desarme.h"
#include "planilhas/Falhas.h"

#include <algorithm>
#include <utility>

namespace planilhas {

namespace {

constexpr std::size_t LinhasOlhadas = 50;

// How many cells the first rows of a text have with that separator. Rows without anything do not count.
std::vector<std::size_t> CelulasPorLinha(std::string_view texto, bool inteiro, char separador)
{
    std::vector<std::size_t> linhas;
    std::size_t celulas = 1;
    bool algo = false;
    bool aspas = false;
    const auto acaba = [&] {
        if (algo) {
            linhas.push_back(celulas);
        }
        celulas = 1;
        algo = false;
    };
    bool inicio = true; // of a cell
    for (const char letra : texto) {
        const bool eraInicio = std::exchange(inicio, false);
        if (letra == '"' && (aspas || eraInicio)) {
            aspas = !aspas; // a doubled one closes and opens
            inicio = !aspas;
            algo = true;
        } else if (aspas) {
            algo = true;
        } else if (letra == separador) {
            ++celulas;
            inicio = true;
            algo = true;
        } else if (letra == '\r' || letra == '\n') {
            acaba();
            inicio = true;
            if (linhas.size() == LinhasOlhadas) {
                return linhas;
            }
        } else {
            algo = true;
        }
    }
    if (inteiro && !aspas) {
        acaba();
    }
    return linhas;
}

} // namespace

LeitorCsv::LeitorCsv(std::filesystem::path arquivo, Codificacao codificacao, char separador,
                     const LimitesDeLeitura &limites)
    : m_Arquivo(std::move(arquivo)),
      m_Codificacao(codificacao),
      m_Separador(separador),
      m_Limites(limites),
      m_Contagem(limites)
{
    Escolhe(0);
}

const std::vector<std::string> &LeitorCsv::Folhas()
{
    return m_Folhas;
}

void LeitorCsv::Escolhe(std::size_t folha)
{
    if (folha != 0) {
        throw Falha(NumeroFalha::SubscritoForaDoIntervalo);
    }
    m_Texto = std::make_unique<TextoDoArquivo>(m_Arquivo, m_Codificacao, m_Limites.Octetos);
    m_Pedaco = {};
    m_Onde = 0;
    m_Linha = 0;
    m_Contagem = Contagem(m_Limites);
    m_Acabou = false;
}

bool LeitorCsv::Le(LinhaLida &linha)
{
    linha.Celulas.clear();
    std::string texto;
    while (linha.Celulas.empty() && !m_Acabou) {
        linha.Numero = ++m_Linha;
        Apos apos = Apos::Separador;
        for (std::size_t coluna = 0; apos == Apos::Separador; ++coluna) {
            texto.clear();
            apos = LeCelula(texto);
            m_Contagem.Poe(linha, coluna, CelulaDeTexto(Rearma(texto)));
        }
        m_Acabou = apos == Apos::FimDoArquivo;
    }
    if (linha.Celulas.empty()) {
        return false;
    }
    m_Contagem.Conta(linha);
    return true;
}

int LeitorCsv::Atual()
{
    if (m_Onde == m_Pedaco.size()) {
        m_Pedaco = m_Texto->Proximo();
        m_Onde = 0;
        if (m_Pedaco.empty()) {
            return -1;
        }
    }
    return static_cast<unsigned char>(m_Pedaco[m_Onde]);
}

LeitorCsv::Apos LeitorCsv::LeCelula(std::string &texto)
{
    if (Atual() == '"') {
        LeEntreAspas(texto);
        return LeFim();
    }
    for (int letra = Atual(); letra >= 0 && letra != m_Separador && letra != '\r' && letra != '\n'; letra = Atual()) {
        Poe(texto, letra);
        Anda();
    }
    return LeFim();
}

void LeitorCsv::LeEntreAspas(std::string &texto)
{
    Anda();
    for (int letra = Atual(); letra >= 0; letra = Atual()) {
        Anda();
        if (letra == '"') {
            if (Atual() != '"') {
                return;
            }
            Anda();
        }
        Poe(texto, letra);
    }
    FalhaDeFormato(DaLinha() + " abre aspas que não são fechadas.");
}

LeitorCsv::Apos LeitorCsv::LeFim()
{
    const int letra = Atual();
    if (letra < 0) {
        return Apos::FimDoArquivo;
    }
    Anda();
    if (letra == m_Separador) {
        return Apos::Separador;
    }
    if (letra == '\r' && Atual() == '\n') {
        Anda();
    } else if (letra != '\r' && letra != '\n') {
        FalhaDeFormato(DaLinha() + " tem texto depois das aspas que fecham uma célula.");
    }
    return Apos::FimDeLinha;
}

void LeitorCsv::Poe(std::string &texto, int letra) const
{
    if (texto.size() == MaiorTextoDeCelula) {
        FalhaDeFormato(DaLinha() + " tem uma célula longa demais.");
    }
    texto += static_cast<char>(letra);
}

std::string LeitorCsv::DaLinha() const
{
    return "A linha " + std::to_string(m_Linha) + " do arquivo";
}

std::optional<char> SeparadorDoTexto(std::string_view comeco, bool inteiro)
{
    struct Candidato {
        char Separador;
        bool Regular;        // every row has as many cells
        std::size_t Celulas; // of the first row
    };
    std::vector<Candidato> candidatos;
    for (const char separador : {';', ',', '\t'}) {
        const std::vector<std::size_t> linhas = CelulasPorLinha(comeco, inteiro, separador);
        if (linhas.empty() || linhas == std::vector<std::size_t>(linhas.size(), 1)) {
            continue;
        }
        const bool regular =
            std::ranges::all_of(linhas, [&](std::size_t celulas) { return celulas == linhas.front(); });
        candidatos.push_back({separador, regular, linhas.front()});
    }
    if (candidatos.empty()) {
        return ';';
    }
    std::ranges::sort(candidatos, [](const Candidato &a, const Candidato &b) {
        return std::pair(a.Regular, a.Celulas) > std::pair(b.Regular, b.Celulas);
    });
    if (candidatos.size() > 1 && candidatos[0].Regular == candidatos[1].Regular &&
        candidatos[0].Celulas == candidatos[1].Celulas) {
        return std::nullopt;
    }
    return candidatos.front().Separador;
}

} // namespace planilhas
