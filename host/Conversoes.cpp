#include "host/Conversoes.h"

#include "host/LeituraData.h"
#include "host/Texto.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>
#include <ctime>
#include <limits>
#include <locale>
#include <optional>
#include <sstream>
#include <system_error>
#include <vector>

namespace {

constexpr std::string_view Moeda = "R$";
constexpr int DigitosSignificativos = 15;

bool EDigito(char c)
{
    return c >= '0' && c <= '9';
}

// A number as a text gives it.
struct NumeroLido {
    double Valor = 0;
    // Hexadecimal or octal: the bits without the sign.
    std::optional<std::uint32_t> Bits;
    bool Negativo = false;
};

// The value of digits with a point and an exponent. Too small is 0; too large is fault 6.
double Decimal(const std::string &digitos)
{
    std::istringstream leitor(digitos);
    leitor.imbue(std::locale::classic());
    double valor = 0;
    if (!(leitor >> valor))
        throw Falha(NumeroFalha::Estouro);
    return valor;
}

// Reads a text from its front.
class LeitorNumero {
  public:
    explicit LeitorNumero(std::string_view texto) : m_Texto(texto) {}

    // A whole number in regional form, blanks around it; nothing when there is anything else.
    std::optional<NumeroLido> LeRegional()
    {
        NumeroLido numero;
        bool parentese = false;
        bool moeda = false;
        bool sinal = false;
        for (;;) {
            PulaBrancos();
            if (!parentese && Tira('(')) {
                parentese = true;
            } else if (!sinal && LeSinal(numero.Negativo)) {
                sinal = true;
            } else if (!moeda && TiraMoeda()) {
                moeda = true;
            } else {
                break;
            }
        }
        if (Espia() == '&') {
            numero.Bits = LeBits();
            if (!numero.Bits)
                return std::nullopt;
            numero.Valor = static_cast<double>(static_cast<std::int32_t>(*numero.Bits));
        } else {
            const std::string digitos = LeDigitos(',', '.');
            if (digitos.empty())
                return std::nullopt;
            numero.Valor = Decimal(digitos);
        }
        bool fechado = false;
        moeda = false; // may stand on both sides
        for (;;) {
            PulaBrancos();
            if (parentese && !fechado && Tira(')')) {
                fechado = true;
            } else if (!sinal && LeSinal(numero.Negativo)) {
                sinal = true;
            } else if (!moeda && TiraMoeda()) {
                moeda = true;
            } else {
                break;
            }
        }
        if (!m_Texto.empty() || parentese != fechado)
            return std::nullopt;
        numero.Negativo = numero.Negativo || parentese;
        if (numero.Negativo)
            numero.Valor = -numero.Valor;
        return numero;
    }

    // The number at the front, with a point; the text has no blanks.
    double LeInicio()
    {
        if (Espia() == '&') {
            const std::optional<std::uint32_t> bits = LeBits();
            if (!bits)
                return 0;
            if (*bits <= std::numeric_limits<std::uint16_t>::max())
                return static_cast<double>(static_cast<std::int16_t>(*bits));
            return static_cast<double>(static_cast<std::int32_t>(*bits));
        }
        bool negativo = false;
        LeSinal(negativo);
        const std::string digitos = LeDigitos('.', '\0');
        if (digitos.empty())
            return 0;
        const double valor = Decimal(digitos);
        return negativo ? -valor : valor;
    }

  private:
    char Espia() const { return m_Texto.empty() ? '\0' : m_Texto.front(); }

    bool Tira(char c)
    {
        if (m_Texto.empty() || m_Texto.front() != c)
            return false;
        m_Texto.remove_prefix(1);
        return true;
    }

    bool TiraMoeda()
    {
        if (!m_Texto.starts_with(Moeda))
            return false;
        m_Texto.remove_prefix(Moeda.size());
        return true;
    }

    bool LeSinal(bool &negativo)
    {
        if (Tira('+'))
            return true;
        if (!Tira('-'))
            return false;
        negativo = true;
        return true;
    }

    void PulaBrancos()
    {
        constexpr std::string_view duro = "\u00A0";
        for (;;) {
            m_Texto.remove_prefix(std::min(m_Texto.find_first_not_of(" \t\n\v\f\r"), m_Texto.size()));
            if (!m_Texto.starts_with(duro))
                return;
            m_Texto.remove_prefix(duro.size());
        }
    }

    // Digits with decimals and exponent, without thousands, ready for Decimal. Empty when there is no digit.
    std::string LeDigitos(char decimal, char milhar)
    {
        std::string digitos;
        bool algum = false;
        bool fracao = false;
        for (;;) {
            if (EDigito(Espia())) {
                digitos += Espia();
                m_Texto.remove_prefix(1);
                algum = true;
            } else if (!fracao && Tira(decimal)) {
                digitos += algum ? "." : "0.";
                fracao = true;
            } else if (milhar == '\0' || !algum || fracao || !Tira(milhar)) {
                break;
            }
        }
        if (!algum)
            return {};
        return digitos + LeExpoente();
    }

    // An exponent with at least one digit; otherwise nothing, and nothing is taken.
    std::string LeExpoente()
    {
        if (m_Texto.empty() || std::string_view("eEdD").find(m_Texto.front()) == std::string_view::npos)
            return {};
        std::string_view resto = m_Texto.substr(1);
        std::string expoente = "e";
        if (!resto.empty() && (resto.front() == '+' || resto.front() == '-')) {
            expoente += resto.front();
            resto.remove_prefix(1);
        }
        if (resto.empty() || !EDigito(resto.front()))
            return {};
        for (; !resto.empty() && EDigito(resto.front()); resto.remove_prefix(1))
            expoente += resto.front();
        m_Texto = resto;
        return expoente;
    }

    // &H or &O with at least one digit. More than 32 bits is fault 6.
    std::optional<std::uint32_t> LeBits()
    {
        int base = 0;
        if (m_Texto.starts_with("&H") || m_Texto.starts_with("&h"))
            base = 16;
        else if (m_Texto.starts_with("&O") || m_Texto.starts_with("&o"))
            base = 8;
        else
            return std::nullopt;
        const std::string_view resto = m_Texto.substr(2);
        std::uint32_t bits = 0;
        const auto [fim, erro] = std::from_chars(resto.data(), resto.data() + resto.size(), bits, base);
        if (erro == std::errc::invalid_argument)
            return std::nullopt;
        if (erro == std::errc::result_out_of_range)
            throw Falha(NumeroFalha::Estouro);
        m_Texto = resto.substr(static_cast<std::size_t>(fim - resto.data()));
        return bits;
    }

    std::string_view m_Texto;
};

NumeroLido LeNumero(std::string_view texto)
{
    const std::optional<NumeroLido> numero = LeitorNumero(texto).LeRegional();
    if (!numero)
        throw Falha(NumeroFalha::TipoIncompativel);
    return *numero;
}

template <class Inteiro> Inteiro Arredonda(double valor)
{
    const double inteiro = std::nearbyint(valor); // half to even
    // Written so that what is not a number fails too.
    if (!(inteiro >= std::numeric_limits<Inteiro>::min() && inteiro <= std::numeric_limits<Inteiro>::max()))
        throw Falha(NumeroFalha::Estouro);
    return static_cast<Inteiro>(inteiro);
}

// Bits must fit in the width and are a number of that width: &HFFFF is -1 in 16 bits and 65535 in 32.
template <class Inteiro> Inteiro InteiroDe(const NumeroLido &numero)
{
    if (!numero.Bits)
        return Arredonda<Inteiro>(numero.Valor);
    if (*numero.Bits > std::numeric_limits<std::make_unsigned_t<Inteiro>>::max())
        throw Falha(NumeroFalha::Estouro);
    const double valor = static_cast<double>(static_cast<Inteiro>(*numero.Bits));
    return Arredonda<Inteiro>(numero.Negativo ? -valor : valor);
}

int AnoCorrente()
{
    const std::time_t agora = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    return std::localtime(&agora)->tm_year + 1900;
}

std::string ComZeros(int valor, std::size_t tamanho)
{
    std::string texto = std::to_string(valor);
    if (texto.size() < tamanho)
        texto.insert(0, tamanho - texto.size(), '0');
    return texto;
}

std::string DiaMesAno(const PartesData &p)
{
    return ComZeros(p.Dia, 2) + '/' + ComZeros(p.Mes, 2) + '/' + std::to_string(p.Ano);
}

std::string HoraMinutoSegundo(const PartesData &p)
{
    return ComZeros(p.Hora, 2) + ':' + ComZeros(p.Minuto, 2) + ':' + ComZeros(p.Segundo, 2);
}

// A piece of a picture: a character of its language, or a literal.
struct Pedaco {
    bool Literal;
    std::string Texto;
};

// Literals are what follows a backslash and what stands in double quotes.
std::vector<Pedaco> Pedacos(std::string_view figura)
{
    std::vector<Pedaco> pedacos;
    for (std::size_t i = 0; i < figura.size(); ++i) {
        if (figura[i] == '\\' && i + 1 < figura.size()) {
            pedacos.push_back({true, std::string(1, figura[++i])});
        } else if (figura[i] == '"') {
            const std::size_t fim = std::min(figura.find('"', i + 1), figura.size());
            pedacos.push_back({true, std::string(figura.substr(i + 1, fim - i - 1))});
            i = fim;
        } else {
            pedacos.push_back({false, std::string(1, figura[i])});
        }
    }
    return pedacos;
}

// The picture of a date: runs of one letter in one piece, and whatever is no letter a literal.
std::vector<Pedaco> JuntaLetras(const std::vector<Pedaco> &pedacos)
{
    std::vector<Pedaco> juntos;
    for (const Pedaco &p : pedacos) {
        const std::string letra = LCase(p.Texto);
        if (p.Literal || letra < "a" || letra > "z")
            juntos.push_back({true, p.Texto});
        else if (!juntos.empty() && !juntos.back().Literal && LCase(juntos.back().Texto).front() == letra.front())
            juntos.back().Texto += p.Texto;
        else
            juntos.push_back(p);
    }
    return juntos;
}

// What the picture of a number asks for. Everything but a place for a digit, the decimal point, the signs of thousands
// and percent is a literal.
struct FiguraNumero {
    explicit FiguraNumero(std::string_view figura);

    std::vector<Pedaco> Pecas;
    std::size_t Inteiros = 0;        // places for digits before the point
    std::size_t InteirosMinimos = 0; // from the first '0' on
    std::size_t Decimais = 0;
    std::size_t DecimaisMinimas = 0; // up to the last '0'
    bool Milhares = false;
    int Percentos = 0;
};

bool ELugar(const Pedaco &p)
{
    return !p.Literal && (p.Texto == "0" || p.Texto == "#");
}

FiguraNumero::FiguraNumero(std::string_view figura)
{
    bool depoisDoPonto = false;
    for (Pedaco &p : Pedacos(figura)) {
        if (!p.Literal && p.Texto == ";")
            throw Falha(NumeroFalha::ArgumentoInvalido);
        if (ELugar(p) && !depoisDoPonto) {
            ++Inteiros;
            if (p.Texto == "0" || InteirosMinimos > 0)
                ++InteirosMinimos;
        } else if (ELugar(p)) {
            ++Decimais;
            if (p.Texto == "0")
                DecimaisMinimas = Decimais;
        } else if (!p.Literal && p.Texto == "." && !depoisDoPonto) {
            depoisDoPonto = true;
        } else if (!p.Literal && p.Texto == "," && Inteiros > 0) {
            Milhares = true;
            continue; // asks for the separators and has no place of its own
        } else {
            Percentos += !p.Literal && p.Texto == "%" ? 1 : 0;
            p.Literal = true;
        }
        Pecas.push_back(std::move(p));
    }
}

// The digits of a positive number before and after the decimal point, rounded half up at `decimais`. The whole part has
// no leading zeros, not even for 0 itself.
struct Digitos {
    Digitos(double valor, int percentos, std::size_t decimais);

    std::string Inteiros;
    std::string Decimais;
};

Digitos::Digitos(double valor, int percentos, std::size_t decimais)
{
    char texto[32];
    const auto fim =
        std::to_chars(texto, texto + sizeof texto, valor, std::chars_format::scientific, DigitosSignificativos - 1).ptr;
    const std::string_view escrito(texto, static_cast<std::size_t>(fim - texto)); // d.dddde+xx
    const std::size_t e = escrito.find('e');
    std::string todos = std::string(1, escrito[0]) + std::string(escrito.substr(2, e - 2));
    int expoente = 0;
    const std::size_t inicio = escrito[e + 1] == '+' ? e + 2 : e + 1;
    std::from_chars(escrito.data() + inicio, escrito.data() + escrito.size(), expoente);

    // `todos` is 0.d1d2d3... times ten to this power.
    int ponto = expoente + 1 + 2 * percentos;
    if (ponto < 0) {
        todos.insert(0, static_cast<std::size_t>(-ponto), '0');
        ponto = 0;
    }
    const std::size_t inteiros = static_cast<std::size_t>(ponto);
    const std::size_t ficam = inteiros + decimais;
    if (todos.size() > ficam) {
        const bool sobe = todos[ficam] >= '5';
        todos.resize(ficam);
        todos.insert(0, 1, '0'); // room for the carry
        if (sobe) {
            std::size_t i = todos.size() - 1;
            for (; todos[i] == '9'; --i)
                todos[i] = '0';
            ++todos[i];
        }
    } else {
        todos.resize(ficam, '0');
        todos.insert(0, 1, '0');
    }
    Inteiros = todos.substr(0, inteiros + 1);
    Inteiros.erase(0, std::min(Inteiros.find_first_not_of('0'), Inteiros.size()));
    Decimais = todos.substr(inteiros + 1);
}

} // namespace

std::uint8_t CByte(std::string_view texto)
{
    return InteiroDe<std::uint8_t>(LeNumero(texto));
}

std::int16_t CInt(std::string_view texto)
{
    return InteiroDe<std::int16_t>(LeNumero(texto));
}

std::int32_t CLng(std::string_view texto)
{
    return InteiroDe<std::int32_t>(LeNumero(texto));
}

double CDbl(std::string_view texto)
{
    return LeNumero(texto).Valor;
}

bool CBool(std::string_view texto)
{
    if (IgualSemCaixa(texto, "Verdadeiro") || IgualSemCaixa(texto, "True") || texto == "#TRUE#")
        return true;
    if (IgualSemCaixa(texto, "Falso") || IgualSemCaixa(texto, "False") || texto == "#FALSE#")
        return false;
    return LeNumero(texto).Valor != 0;
}

Data CDate(std::string_view texto)
{
    const std::optional<Data> data = LeData(texto, AnoCorrente());
    if (!data)
        throw Falha(NumeroFalha::TipoIncompativel);
    return *data;
}

std::uint8_t CByte(double valor)
{
    return Arredonda<std::uint8_t>(valor);
}

std::int16_t CInt(double valor)
{
    return Arredonda<std::int16_t>(valor);
}

std::int32_t CLng(double valor)
{
    return Arredonda<std::int32_t>(valor);
}

Data CDate(double valor)
{
    const Data data{valor};
    if (!data.NoCalendario())
        throw Falha(NumeroFalha::Estouro);
    return data;
}

double CDbl(double valor)
{
    return valor;
}

double CDbl(Data data)
{
    return data.Valor;
}

bool CBool(double valor)
{
    return valor != 0;
}

std::string CStr(double valor)
{
    if (valor == 0) // minus zero too
        return "0";
    if (!std::isfinite(valor))
        throw Falha(NumeroFalha::Estouro);
    char texto[32];
    const auto fim =
        std::to_chars(texto, texto + sizeof texto, valor, std::chars_format::general, DigitosSignificativos).ptr;
    std::string resultado = UCase(std::string_view(texto, static_cast<std::size_t>(fim - texto)));
    std::replace(resultado.begin(), resultado.end(), '.', ',');
    return resultado;
}

std::string CStr(Data data)
{
    const PartesData p = data.Partes();
    if (p.Dia == 30 && p.Mes == 12 && p.Ano == 1899)
        return HoraMinutoSegundo(p);
    if (p.Hora == 0 && p.Minuto == 0 && p.Segundo == 0)
        return DiaMesAno(p);
    return DiaMesAno(p) + ' ' + HoraMinutoSegundo(p);
}

double Val(std::string_view texto)
{
    std::string semBrancos(texto);
    std::erase_if(semBrancos, [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; });
    return LeitorNumero(semBrancos).LeInicio();
}

bool IsNumeric(std::string_view texto)
try {
    LeNumero(texto);
    return true;
} catch (const Falha &) {
    return false;
}

bool IsDate(std::string_view texto)
{
    return LeData(texto, AnoCorrente()).has_value();
}

std::string Format(double valor, std::string_view figura)
{
    if (!std::isfinite(valor))
        throw Falha(NumeroFalha::Estouro);
    const FiguraNumero f(figura);
    Digitos digitos(std::fabs(valor), f.Percentos, f.Decimais);
    if (digitos.Inteiros.size() < f.InteirosMinimos)
        digitos.Inteiros.insert(0, f.InteirosMinimos - digitos.Inteiros.size(), '0');
    while (digitos.Decimais.size() > f.DecimaisMinimas && digitos.Decimais.back() == '0')
        digitos.Decimais.pop_back();

    std::string resultado = valor < 0 ? "-" : "";
    std::size_t faltam = digitos.Inteiros.size();
    std::size_t lugares = f.Inteiros;
    std::size_t decimal = 0;
    bool depoisDoPonto = false;
    for (const Pedaco &p : f.Pecas) {
        if (p.Literal) {
            resultado += p.Texto;
        } else if (p.Texto == ".") {
            for (; faltam > 0; --faltam) // only when the picture has no place before the point
                resultado += digitos.Inteiros[digitos.Inteiros.size() - faltam];
            resultado += ',';
            depoisDoPonto = true;
        } else if (depoisDoPonto) {
            if (decimal < digitos.Decimais.size())
                resultado += digitos.Decimais[decimal++];
        } else {
            // The first place takes all digits that the others have no room for.
            for (; faltam >= lugares; --faltam) {
                resultado += digitos.Inteiros[digitos.Inteiros.size() - faltam];
                if (f.Milhares && faltam > 1 && faltam % 3 == 1)
                    resultado += '.';
            }
            --lugares;
        }
    }
    return resultado;
}

std::string Format(Data data, std::string_view figura)
{
    if (figura.empty())
        return CStr(data);
    const PartesData p = data.Partes();
    std::string resultado;
    bool depoisDaHora = false;
    for (const Pedaco &pedaco : JuntaLetras(Pedacos(figura))) {
        if (pedaco.Literal) {
            resultado += pedaco.Texto;
            continue;
        }
        const std::string letras = LCase(pedaco.Texto);
        if (letras == "d" || letras == "dd")
            resultado += ComZeros(p.Dia, letras.size());
        else if (letras == "n" || letras == "nn" || (depoisDaHora && (letras == "m" || letras == "mm")))
            resultado += ComZeros(p.Minuto, letras.size());
        else if (letras == "m" || letras == "mm")
            resultado += ComZeros(p.Mes, letras.size());
        else if (letras == "yy")
            resultado += ComZeros(p.Ano % 100, 2);
        else if (letras == "yyyy")
            resultado += std::to_string(p.Ano);
        else if (letras == "h" || letras == "hh")
            resultado += ComZeros(p.Hora, letras.size());
        else if (letras == "s" || letras == "ss")
            resultado += ComZeros(p.Segundo, letras.size());
        else
            throw Falha(NumeroFalha::ArgumentoInvalido);
        depoisDaHora = letras[0] == 'h';
    }
    return resultado;
}

std::int32_t MinutosDecorridos(Data de, Data ate)
{
    const auto segundos = [](Data data) {
        const PartesData p = data.Partes();
        return ((static_cast<std::int64_t>(DataDe(p.Dia, p.Mes, p.Ano).Valor) * 24 + p.Hora) * 60 + p.Minuto) * 60 +
               p.Segundo;
    };
    return CLng((segundos(ate) - segundos(de)) / 60);
}
