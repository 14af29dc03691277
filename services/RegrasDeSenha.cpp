#include "services/RegrasDeSenha.h"

#include "host/Conversoes.h"
#include "host/Texto.h"
#include "services/Recusa.h"
#include "services/TabelaDeDados.h"

#include <QList>
#include <QString>
#include <QUtf8StringView>

#include <algorithm>
#include <array>
#include <compare>
#include <cstddef>
#include <iterator>
#include <set>
#include <string_view>
#include <vector>

namespace mesa {

namespace {

using Letras = std::vector<char32_t, AlocadorQueLimpa<char32_t>>;

// What is left of a password without the common words has to be so much.
constexpr std::size_t LetrasProprias = 4;
// So many digits and signs around the words say nothing: a year, a date, a few exclamation marks.
constexpr std::size_t DigitosDeEnfeite = 8;
constexpr std::size_t SinaisDeEnfeite = 4;
constexpr std::size_t MenorSequencia = 4;
constexpr std::size_t MenorNome = 3;

// The rows of the alphabet and of the keyboards, which a run follows in either direction.
constexpr std::array<std::u32string_view, 9> Fileiras = {
    U"abcdefghijklmnopqrstuvwxyz",           U"01234567890123456789", U"qwertyuiop", U"asdfghjkl", U"zxcvbnm",
    U"1qaz2wsx3edc4rfv5tgb6yhn7ujm8ik9ol0p", U"1q2w3e4r5t6y7u8i9o0p", U"!@#$%&*()",  U"!@#$%^&*()"};

bool EhDigito(char32_t letra)
{
    return letra >= U'0' && letra <= U'9';
}

bool EhSinal(char32_t letra)
{
    return !QChar::isLetterOrNumber(letra);
}

Letras Pontos(std::string_view texto)
{
    const QString lido = QString::fromUtf8(texto.data(), static_cast<qsizetype>(texto.size()));
    const QList<uint> pontos = lido.toUcs4();
    const Letras letras(pontos.begin(), pontos.end());
    LimpaMemoria(const_cast<uint *>(pontos.constData()), static_cast<std::size_t>(pontos.size()) * sizeof(uint));
    LimpaTexto(lido);
    return letras;
}

bool Digitavel(std::string_view texto)
{
    return QUtf8StringView(texto.data(), static_cast<qsizetype>(texto.size())).isValidUtf8() &&
           std::ranges::all_of(Pontos(texto), [](char32_t letra) { return QChar::isPrint(letra); });
}

// Every character without case and accents.
Letras Simples(std::string_view texto)
{
    Letras simples;
    for (char32_t letra : Pontos(texto)) {
        for (QString parte = QChar::decomposition(letra); !parte.isEmpty(); parte = QChar::decomposition(letra)) {
            letra = parte.toUcs4().front();
        }
        if (QChar::category(letra) != QChar::Mark_NonSpacing) {
            simples.push_back(QChar::toCaseFolded(letra));
        }
    }
    return simples;
}

// The letter that a digit or a sign stands in for; letters that look alike are one.
char32_t SemDisfarce(char32_t letra)
{
    constexpr std::u32string_view de = U"013456789@$!|+l(";
    constexpr std::u32string_view para = U"oieasgtbgasiitic";
    static_assert(de.size() == para.size());
    const std::size_t qual = de.find(letra);
    return qual == std::u32string_view::npos ? letra : para[qual];
}

Letras SemDisfarce(Letras letras)
{
    std::ranges::transform(letras, letras.begin(), [](char32_t letra) { return SemDisfarce(letra); });
    return letras;
}

std::u32string_view Parte(const Letras &letras, std::size_t inicio, std::size_t quantas)
{
    return {letras.data() + inicio, quantas};
}

struct Comuns {
    std::set<std::u32string, std::less<>> Palavras;
    std::size_t Maior = 0;
};

const Comuns &PalavrasComuns()
{
    static const Comuns comuns = [] {
        Comuns lidas;
        for (const LinhaDeDados &linha : LeTabelaDeDados("senhas-comuns.tsv")) {
            const Letras palavra = SemDisfarce(Simples(linha.at(0)));
            lidas.Palavras.emplace(palavra.begin(), palavra.end());
            lidas.Maior = std::max(lidas.Maior, palavra.size());
        }
        return lidas;
    }();
    return comuns;
}

// How far from here the characters follow a row, or are one and the same.
std::size_t SequenciaDe(const Letras &letras, std::size_t inicio)
{
    std::size_t maior = 1;
    while (inicio + maior < letras.size() && letras[inicio + maior] == letras[inicio]) {
        ++maior;
    }
    for (const std::u32string_view fileira : Fileiras) {
        for (const int passo : {1, -1}) {
            std::size_t onde = passo > 0 ? fileira.find(letras[inicio]) : fileira.rfind(letras[inicio]);
            std::size_t segue = 0;
            while (onde < fileira.size() && inicio + segue < letras.size() && letras[inicio + segue] == fileira[onde]) {
                ++segue;
                onde += static_cast<std::size_t>(passo); // below the first it is behind the last
            }
            maior = std::max(maior, segue);
        }
    }
    return maior;
}

// What of a text is nobody else's, at the least.
struct Proprio {
    std::size_t Letras = 0;
    std::size_t Digitos = 0;
    std::size_t Sinais = 0;

    auto operator<=>(const Proprio &) const = default;
};

// The text taken apart into runs and, with `palavras`, common words, in the way that leaves the fewest letters over.
Proprio Resto(const Letras &letras, bool palavras)
{
    const Letras limpas = SemDisfarce(letras);
    std::vector<Proprio> ate(letras.size() + 1, Proprio{letras.size() + 1, 0, 0});
    ate[0] = {};
    for (std::size_t inicio = 0; inicio < letras.size(); ++inicio) {
        const auto alcanca = [&](std::size_t quantas, const Proprio &resto) {
            ate[inicio + quantas] = std::min(ate[inicio + quantas], resto);
        };
        Proprio um = ate[inicio];
        ++(EhDigito(letras[inicio]) ? um.Digitos : EhSinal(letras[inicio]) ? um.Sinais : um.Letras);
        alcanca(1, um);
        for (std::size_t quantas = SequenciaDe(letras, inicio); quantas >= MenorSequencia; --quantas) {
            alcanca(quantas, ate[inicio]);
        }
        if (palavras) {
            const std::size_t cabem = std::min(PalavrasComuns().Maior, letras.size() - inicio);
            for (std::size_t quantas = 1; quantas <= cabem; ++quantas) {
                if (PalavrasComuns().Palavras.contains(Parte(limpas, inicio, quantas))) {
                    alcanca(quantas, ate[inicio]);
                }
            }
        }
    }
    return ate.back();
}

// The shortest beginning that makes the whole, over and over.
Letras Unidade(const Letras &letras)
{
    for (std::size_t tamanho = 1; tamanho < letras.size(); ++tamanho) {
        if (letras.size() % tamanho == 0 &&
            std::equal(letras.begin() + static_cast<std::ptrdiff_t>(tamanho), letras.end(), letras.begin())) {
            return Letras(letras.begin(), letras.begin() + static_cast<std::ptrdiff_t>(tamanho));
        }
    }
    return letras;
}

bool EhComum(const Letras &letras)
{
    const Proprio resto = Resto(Unidade(letras), true);
    const std::size_t digitos = resto.Digitos - std::min(resto.Digitos, DigitosDeEnfeite);
    const std::size_t sinais = resto.Sinais - std::min(resto.Sinais, SinaisDeEnfeite);
    return resto.Letras + digitos + sinais < LetrasProprias;
}

// What stands between words, or between the letters of one, says nothing.
Letras SemSeparadores(const Letras &letras)
{
    Letras sem;
    std::ranges::copy_if(letras, std::back_inserter(sem), [](char32_t letra) {
        return std::u32string_view(U" ._-/,").find(letra) == std::u32string_view::npos;
    });
    return sem;
}

// The name as a whole, or one of its words.
bool TemNome(const Letras &senha, const std::string &nome)
{
    std::vector<std::string> nomes = Divide(nome, " ");
    nomes.push_back(nome);
    return std::ranges::any_of(nomes, [&](const std::string &um) {
        const Letras procurado = SemDisfarce(SemSeparadores(Simples(um)));
        return procurado.size() >= MenorNome && std::ranges::search(senha, procurado).begin() != senha.end();
    });
}

} // namespace

void RegrasDeSenha::Confere(const Segredo &senha, const std::string &usuario, const std::string &nome)
{
    const Segredo composta = senha.Composto();
    const std::string_view texto = composta.Texto();
    const std::size_t tamanho = Len(texto);
    if (tamanho < Minimo) {
        throw Recusa("A senha precisa ter ao menos " + CStr(Minimo) + " caracteres; esta tem " + CStr(tamanho) + ".");
    }
    if (tamanho > Maximo) {
        throw Recusa("A senha pode ter até " + CStr(Maximo) + " caracteres; esta tem " + CStr(tamanho) + ".");
    }
    if (!Digitavel(senha.Texto())) {
        throw Recusa("A senha tem caracteres que não se veem nem se digitam.");
    }
    const Letras letras = Simples(texto);
    if (Unidade(letras).size() == 1) {
        throw Recusa("A senha não pode ser um só caractere repetido.");
    }
    if (Resto(letras, false) == Proprio{}) {
        throw Recusa("A senha não pode ser uma sequência do alfabeto, dos números ou do teclado.");
    }
    const Letras palavra = SemDisfarce(SemSeparadores(letras));
    if (TemNome(palavra, usuario) || TemNome(palavra, nome)) {
        throw Recusa("A senha não pode conter o nome de usuário nem o nome da pessoa.");
    }
    if (EhComum(letras) || EhComum(SemSeparadores(letras))) {
        throw Recusa("Esta senha é feita de palavras e números que todos usam e seria adivinhada logo. Escolha outra: "
                     "três ou quatro palavras que ninguém esperaria juntas são uma boa senha.");
    }
}

} // namespace mesa
