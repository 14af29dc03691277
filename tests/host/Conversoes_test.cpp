#include "host/Conversoes.h"

#include "host/LeituraData.h"
#include "host/Texto.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <functional>
#include <iterator>
#include <limits>
#include <locale>
#include <map>
#include <ostream>
#include <variant>
#include <vector>

namespace {

struct Numero {
    int Falha;
    bool operator==(const Numero &) const = default;
};

// What a call gives: text, number, truth value, moment, or the number of its fault.
using Valor = std::variant<std::string, double, bool, PartesData, Numero>;

// One row of the table: dados/README.md tells how it is written.
struct Caso {
    int Linha = 0;
    std::string Funcao;
    std::vector<std::string> Argumentos; // without the empty ones at the end
    std::string Esperado;
    std::string Motor;
};

double NumeroDe(const std::string &campo)
{
    double valor = 0;
    const auto [fim, erro] = std::from_chars(campo.data(), campo.data() + campo.size(), valor);
    if (erro != std::errc{} || fim != campo.data() + campo.size())
        throw std::invalid_argument("not a number: " + campo);
    return valor;
}

int InteiroDe(const std::string &campo)
{
    return static_cast<int>(NumeroDe(campo));
}

std::string TextoDe(const std::string &campo)
{
    std::string texto;
    for (std::size_t i = 1; i + 1 < campo.size(); ++i) {
        if (campo[i] != '\\') {
            texto += campo[i];
            continue;
        }
        switch (campo[++i]) {
        case 't':
            texto += '\t';
            break;
        case 'n':
            texto += '\n';
            break;
        case 'r':
            texto += '\r';
            break;
        case 'u':
            if (campo.substr(i + 1, 4) != "00A0")
                throw std::invalid_argument("unknown escape: " + campo);
            texto += "\u00A0";
            i += 4;
            break;
        default:
            texto += campo[i];
        }
    }
    return texto;
}

bool ETexto(const std::string &campo)
{
    return campo.starts_with('"');
}

bool EData(const std::string &campo)
{
    return campo.starts_with('#');
}

bool ELogico(const std::string &campo)
{
    return campo == "Verdadeiro" || campo == "Falso";
}

Data DataDoCampo(const std::string &campo)
{
    return {NumeroDe(campo.substr(1, campo.size() - 2))};
}

Valor ValorDe(const std::string &campo)
{
    if (ETexto(campo))
        return TextoDe(campo);
    if (ELogico(campo))
        return campo == "Verdadeiro";
    if (campo.starts_with("falha "))
        return Numero{InteiroDe(campo.substr(6))};
    if (EData(campo)) {
        PartesData p;
        if (std::sscanf(campo.c_str(), "#%d/%d/%d %d:%d:%d#", &p.Dia, &p.Mes, &p.Ano, &p.Hora, &p.Minuto, &p.Segundo) !=
            6)
            throw std::invalid_argument("not a moment: " + campo);
        return p;
    }
    return NumeroDe(campo);
}

std::string Escrito(const Valor &valor)
{
    std::ostringstream saida;
    if (const auto *texto = std::get_if<std::string>(&valor))
        saida << '"' << *texto << '"';
    else if (const auto *numero = std::get_if<double>(&valor))
        saida.precision(std::numeric_limits<double>::max_digits10), saida << *numero;
    else if (const auto *logico = std::get_if<bool>(&valor))
        saida << (*logico ? "Verdadeiro" : "Falso");
    else if (const auto *falha = std::get_if<Numero>(&valor))
        saida << "falha " << falha->Falha;
    else if (const auto *p = std::get_if<PartesData>(&valor))
        saida << '#' << p->Dia << '/' << p->Mes << '/' << p->Ano << ' ' << p->Hora << ':' << p->Minuto << ':'
              << p->Segundo << '#';
    return saida.str();
}

std::vector<Caso> LeTabela()
{
    std::ifstream arquivo("tests/host/dados/conversoes.tsv");
    if (!arquivo)
        throw std::runtime_error("no table; the tests run in the root of the project");
    std::vector<Caso> casos;
    std::string linha;
    std::getline(arquivo, linha); // names of the columns
    for (int n = 2; std::getline(arquivo, linha); ++n) {
        const std::vector<std::string> campos = Divide(linha, "\t");
        if (campos.size() != 8)
            throw std::runtime_error("line " + std::to_string(n) + " of the table has not 8 columns");
        Caso caso{n, campos[0], {campos[1], campos[2], campos[3]}, campos[4], campos[5]};
        while (!caso.Argumentos.empty() && caso.Argumentos.back().empty())
            caso.Argumentos.pop_back();
        casos.push_back(std::move(caso));
    }
    return casos;
}

const std::vector<Caso> &Tabela()
{
    static const std::vector<Caso> casos = LeTabela();
    return casos;
}

using Argumentos = std::vector<std::string>;

// A numeric conversion of whatever kind the first argument is.
template <class Funcao> auto Converte(Funcao funcao)
{
    return [funcao](const Argumentos &a) -> Valor {
        if (ETexto(a[0]))
            return static_cast<double>(funcao(TextoDe(a[0])));
        if (ELogico(a[0]))
            return static_cast<double>(funcao(a[0] == "Verdadeiro"));
        return static_cast<double>(funcao(NumeroDe(a[0])));
    };
}

// A date is the moment that it shows and nothing besides.
Valor Momento(Data data)
{
    const PartesData p = data.Partes();
    if (data != DataDe(p.Dia, p.Mes, p.Ano, p.Hora, p.Minuto, p.Segundo))
        return data.Valor;
    return p;
}

Valor ChamaCDate(const Argumentos &a)
{
    if (!ETexto(a[0]))
        return CDate(NumeroDe(a[0])).Valor;
    const std::string texto = TextoDe(a[0]);
    if (a.size() == 2) {
        const std::optional<Data> data = LeData(texto, InteiroDe(a[1]));
        return data ? Momento(*data) : Numero{13};
    }
    return Momento(CDate(texto));
}

std::size_t TamanhoDe(const std::string &campo)
{
    return static_cast<std::size_t>(InteiroDe(campo));
}

const std::map<std::string, std::function<Valor(const Argumentos &)>> Funcoes{
    {"CByte", Converte([](auto v) { return CByte(v); })},
    {"CInt", Converte([](auto v) { return CInt(v); })},
    {"CLng", Converte([](auto v) { return CLng(v); })},
    {"CDbl", Converte([](auto v) { return CDbl(v); })},
    {"CBool",
     [](const Argumentos &a) -> Valor {
         if (ETexto(a[0]))
             return CBool(TextoDe(a[0]));
         return ELogico(a[0]) ? CBool(a[0] == "Verdadeiro") : CBool(NumeroDe(a[0]));
     }},
    {"CStr",
     [](const Argumentos &a) -> Valor {
         if (EData(a[0]))
             return CStr(DataDoCampo(a[0]));
         return ELogico(a[0]) ? CStr(a[0] == "Verdadeiro") : CStr(NumeroDe(a[0]));
     }},
    {"CDate", ChamaCDate},
    {"Val", [](const Argumentos &a) -> Valor { return Val(TextoDe(a[0])); }},
    {"IsNumeric", [](const Argumentos &a) -> Valor { return IsNumeric(TextoDe(a[0])); }},
    {"Format",
     [](const Argumentos &a) -> Valor {
         const std::string figura = TextoDe(a[1]);
         return EData(a[0]) ? Format(DataDoCampo(a[0]), figura) : Format(NumeroDe(a[0]), figura);
     }},
    {"Partes",
     [](const Argumentos &a) -> Valor {
         const PartesData p = DataDoCampo(a[0]).Partes();
         char texto[64];
         std::snprintf(texto, sizeof texto, "%d-%02d-%02d %02d:%02d:%02d", p.Ano, p.Mes, p.Dia, p.Hora, p.Minuto,
                       p.Segundo);
         return std::string(texto);
     }},
    {"DataDe",
     [](const Argumentos &a) -> Valor { return Momento(DataDe(InteiroDe(a[0]), InteiroDe(a[1]), InteiroDe(a[2]))); }},
    {"MaisDias", [](const Argumentos &a) -> Valor { return DataDoCampo(a[0]).MaisDias(InteiroDe(a[1])).Valor; }},
    {"Len", [](const Argumentos &a) -> Valor { return static_cast<double>(Len(TextoDe(a[0]))); }},
    {"Left", [](const Argumentos &a) -> Valor { return Left(TextoDe(a[0]), TamanhoDe(a[1])); }},
    {"Right", [](const Argumentos &a) -> Valor { return Right(TextoDe(a[0]), TamanhoDe(a[1])); }},
    {"Mid", [](const Argumentos &a) -> Valor { return Mid(TextoDe(a[0]), TamanhoDe(a[1]), TamanhoDe(a[2])); }},
    {"Trim", [](const Argumentos &a) -> Valor { return Trim(TextoDe(a[0])); }},
    {"UCase", [](const Argumentos &a) -> Valor { return UCase(TextoDe(a[0])); }},
    {"LCase", [](const Argumentos &a) -> Valor { return LCase(TextoDe(a[0])); }},
    {"Substitui", [](const Argumentos &a) -> Valor { return Substitui(TextoDe(a[0]), TextoDe(a[1]), TextoDe(a[2])); }},
    {"Divide",
     [](const Argumentos &a) -> Valor {
         std::string junto;
         const std::vector<std::string> pedacos = Divide(TextoDe(a[0]), TextoDe(a[1]));
         for (std::size_t i = 0; i < pedacos.size(); ++i)
             junto += (i == 0 ? "" : "¦") + pedacos[i];
         return junto;
     }},
};

Valor Chama(const Caso &caso)
{
    try {
        return Funcoes.at(caso.Funcao)(caso.Argumentos);
    } catch (const Falha &falha) {
        return Numero{falha.Numero};
    }
}

std::string Apresenta(const Caso &caso)
{
    std::string texto = "line " + std::to_string(caso.Linha) + ": " + caso.Funcao;
    for (const std::string &argumento : caso.Argumentos)
        texto += ' ' + argumento;
    return texto;
}

class TabelaConversoes : public testing::TestWithParam<std::string> {};

TEST_P(TabelaConversoes, EveryRow_GivesWhatTheEnginesGave)
{
    int linhas = 0;
    for (const Caso &caso : Tabela()) {
        if (caso.Funcao != GetParam())
            continue;
        ++linhas;
        const Valor valor = Chama(caso);
        EXPECT_TRUE(valor == ValorDe(caso.Esperado))
            << Apresenta(caso) << " gave " << Escrito(valor) << ", not " << caso.Esperado;
    }
    EXPECT_GT(linhas, 0);
}

std::vector<std::string> NomesDasFuncoes()
{
    std::vector<std::string> nomes;
    for (const auto &[nome, funcao] : Funcoes)
        nomes.push_back(nome);
    return nomes;
}

INSTANTIATE_TEST_SUITE_P(Engines, TabelaConversoes, testing::ValuesIn(NomesDasFuncoes()),
                         [](const auto &info) { return info.param; });

TEST(TabelaDasConversoes, EveryRow_IsOfAFunctionThatIsTested)
{
    for (const Caso &caso : Tabela())
        EXPECT_TRUE(Funcoes.contains(caso.Funcao)) << Apresenta(caso);
}

TEST(TabelaDasConversoes, RowsThatAnEngineGave_AreThousandsAndTheOthersFew)
{
    int deMotor = 0;
    int daPlataforma = 0;
    for (const Caso &caso : Tabela()) {
        const bool motor = caso.Motor == "ambos" || caso.Motor == "wine" || caso.Motor == "libreoffice";
        EXPECT_TRUE(motor || caso.Motor == "plataforma") << Apresenta(caso);
        ++(motor ? deMotor : daPlataforma);
    }
    EXPECT_GE(deMotor, 2500);
    EXPECT_LT(daPlataforma, 200);
}

TEST(IsDate, OfEveryTextOfTheTable_AgreesWithCDate)
{
    for (const Caso &caso : Tabela()) {
        if (caso.Argumentos.empty() || !ETexto(caso.Argumentos[0]))
            continue;
        const std::string texto = TextoDe(caso.Argumentos[0]);
        bool converte = true;
        try {
            CDate(texto);
        } catch (const Falha &falha) {
            EXPECT_EQ(falha.Numero, 13) << Apresenta(caso);
            converte = false;
        }
        EXPECT_EQ(IsDate(texto), converte) << Apresenta(caso);
    }
}

int NumeroDaFalha(const std::function<void()> &comando)
{
    try {
        comando();
    } catch (const Falha &falha) {
        EXPECT_EQ(falha.Fonte, "ZTAVOREQUIP");
        EXPECT_EQ(falha.Descricao, DescricaoFalha(falha.Numero));
        return falha.Numero;
    }
    return 0;
}

TEST(Conversoes, OfText_UnreadableOrTooLarge_IsThePlatformsFault)
{
    EXPECT_EQ(NumeroDaFalha([] { CLng("abc"); }), 13);
    EXPECT_EQ(NumeroDaFalha([] { CLng(""); }), 13);
    EXPECT_EQ(NumeroDaFalha([] { CLng("2147483648"); }), 6);
    EXPECT_EQ(NumeroDaFalha([] { CInt("32768"); }), 6);
    EXPECT_EQ(NumeroDaFalha([] { CByte("-1"); }), 6);
    EXPECT_EQ(NumeroDaFalha([] { CDbl("12:30"); }), 13);
    EXPECT_EQ(NumeroDaFalha([] { CBool("talvez"); }), 13);
    EXPECT_EQ(NumeroDaFalha([] { CDate("31/04/2020"); }), 13);
    EXPECT_EQ(NumeroDaFalha([] { CDate("40000"); }), 13);
    EXPECT_EQ(NumeroDaFalha([] { CDate(std::string(7, '\0')); }), 13);
}

TEST(Conversoes, OfText_WithSignOrCurrencyBehind_TakesEachOnceAndBlanksAfterIt)
{
    EXPECT_EQ(CDbl("5- "), -5);
    EXPECT_EQ(CDbl("5R$ "), 5);
    for (const char *texto : {"5--", "5-+", "5R$R$", "&"})
        EXPECT_EQ(NumeroDaFalha([&] { CDbl(texto); }), 13) << texto;
    EXPECT_EQ(Val("&"), 0);
}

TEST(Conversoes, Val_StopsAtWhatIsNoDigit)
{
    EXPECT_EQ(Val("1~2"), 1);
    EXPECT_EQ(Val(std::string_view("1\0002", 3)), 1);
}

struct PontoEVirgula : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
};

TEST(Conversoes, OfText_InAProgramWithAnotherLocale_AreTheSame)
{
    const std::locale antes = std::locale::global(std::locale(std::locale::classic(), new PontoEVirgula));
    const double regional = CDbl("1.234,5");
    const double comPonto = Val("1.5");
    std::locale::global(antes);
    EXPECT_EQ(regional, 1234.5);
    EXPECT_EQ(comPonto, 1.5);
}

TEST(Conversoes, OfHugeText_AreExactAboutTheSide)
{
    const std::string zeros(400, '0');
    EXPECT_EQ(NumeroDaFalha([&] { CDbl("1" + zeros); }), 6);
    EXPECT_EQ(NumeroDaFalha([&] { CDbl("1" + zeros + "e-5"); }), 6);
    EXPECT_EQ(CDbl("0," + zeros + "1"), 0);
    EXPECT_EQ(CDbl("0," + zeros + "1e10"), 0);
    EXPECT_EQ(CDbl("1" + zeros + "e-400"), 1);
    EXPECT_EQ(NumeroDaFalha([] { CDbl("1e99999999999999999999"); }), 6);
    EXPECT_EQ(CDbl("1e-99999999999999999999"), 0);
    EXPECT_EQ(NumeroDaFalha([] { Val("1e400"); }), 6);
    EXPECT_EQ(NumeroDaFalha([] { Val("&H100000000"); }), 6);
}

TEST(Conversoes, OfInteger_ChecksTheWidthOfTheTarget)
{
    EXPECT_EQ(CByte(255), 255);
    EXPECT_EQ(NumeroDaFalha([] { CByte(256); }), 6);
    EXPECT_EQ(NumeroDaFalha([] { CByte(-1); }), 6);
    EXPECT_EQ(CInt(std::int32_t{-32768}), -32768);
    EXPECT_EQ(NumeroDaFalha([] { CInt(std::int32_t{32768}); }), 6);
    EXPECT_EQ(NumeroDaFalha([] { CInt(std::uint16_t{65535}); }), 6);
    EXPECT_EQ(CLng(std::int64_t{2147483647}), 2147483647);
    EXPECT_EQ(NumeroDaFalha([] { CLng(std::int64_t{2147483648}); }), 6);
    EXPECT_EQ(NumeroDaFalha([] { CLng(std::uint32_t{4294967295U}); }), 6);
    EXPECT_EQ(CDbl(std::int64_t{-5}), -5.0);
    EXPECT_EQ(CDbl(-2.5), -2.5);
    EXPECT_EQ(CInt("-&H10"), -16); // negative bits
    EXPECT_EQ(CLng("-&H10"), -16);
    EXPECT_EQ(NumeroDaFalha([] { CByte("-&H10"); }), 6);
    EXPECT_TRUE(CBool(std::uint8_t{2}));
    EXPECT_FALSE(CBool(0));
    EXPECT_EQ(CStr(std::uint8_t{7}), "7");
    EXPECT_EQ(CStr(std::int16_t{-730}), "-730");
    EXPECT_EQ(CDate(45000), DataDe(15, 3, 2023));
    EXPECT_EQ(NumeroDaFalha([] { CDate(3000000); }), 6);
}

TEST(Conversoes, OfTruth_IsMinusOneOr255)
{
    EXPECT_EQ(CInt(true), -1);
    EXPECT_EQ(CLng(true), -1);
    EXPECT_EQ(CDbl(true), -1.0);
    EXPECT_EQ(CByte(true), 255);
    EXPECT_EQ(CLng(false), 0);
    EXPECT_EQ(CStr(true), "Verdadeiro");
    EXPECT_EQ(CStr(false), "Falso");
}

TEST(Conversoes, OfWhatIsNoNumber_IsOverflow)
{
    for (const double valor : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                               -std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(NumeroDaFalha([&] { CByte(valor); }), 6);
        EXPECT_EQ(NumeroDaFalha([&] { CInt(valor); }), 6);
        EXPECT_EQ(NumeroDaFalha([&] { CLng(valor); }), 6);
        EXPECT_EQ(NumeroDaFalha([&] { CDate(valor); }), 6);
        EXPECT_EQ(NumeroDaFalha([&] { CStr(valor); }), 6);
        EXPECT_EQ(NumeroDaFalha([&] { CStr(Data{valor}); }), 6);
        EXPECT_EQ(NumeroDaFalha([&] { Format(valor, "0"); }), 6);
        EXPECT_EQ(NumeroDaFalha([&] { Format(valor, "0;-0"); }), 6);
        EXPECT_EQ(NumeroDaFalha([&] { Format(Data{valor}, "dd/mm/yyyy"); }), 6);
    }
}

TEST(Conversoes, OfDate_IsItsDayCountAndItsText)
{
    EXPECT_EQ(CDbl(DataDe(15, 3, 2023, 12, 0, 0)), 45000.5);
    EXPECT_EQ(CStr(DataDe(15, 3, 2023)), "15/03/2023");
    EXPECT_EQ(CStr(DataDe(15, 3, 2023, 7, 5, 9)), "15/03/2023 07:05:09");
    EXPECT_EQ(CStr(Data{}), "00:00:00");
    EXPECT_EQ(CStr(Data{0.5}), "12:00:00");
    EXPECT_EQ(CStr(Data{-0.0}), "00:00:00");
    EXPECT_EQ(CStr(Data{45000 + 86399.7 / 86400}), "16/03/2023"); // midnight by rounding
    EXPECT_EQ(CStr(-0.0), "0");
}

TEST(Conversoes, Format_OfHours_PutsTheColonBeforeTheLastTwoDigits)
{
    EXPECT_EQ(Format(730, "00:00"), "07:30");
    EXPECT_EQ(Format(0, "00:00"), "00:00");
    EXPECT_EQ(Format(5, "00:00"), "00:05");
    EXPECT_EQ(Format(2359, "00:00"), "23:59");
}

TEST(Conversoes, Format_OfPictureBeyondTheLanguage_IsFault5)
{
    EXPECT_EQ(NumeroDaFalha([] { Format(1, "0;-0"); }), 5);
    EXPECT_EQ(NumeroDaFalha([] { Format(Data{45000}, "ddd"); }), 5);
    EXPECT_EQ(NumeroDaFalha([] { Format(Data{45000}, "dddd"); }), 5);
    EXPECT_EQ(NumeroDaFalha([] { Format(Data{45000}, "mmm"); }), 5);
    EXPECT_EQ(NumeroDaFalha([] { Format(Data{45000}, "yyy"); }), 5);
    EXPECT_EQ(NumeroDaFalha([] { Format(Data{45000}, "hh:mm AM/PM"); }), 5);
    EXPECT_EQ(NumeroDaFalha([] { Format(Data{45000}, "q"); }), 5);
}

TEST(Conversoes, Format_WithLiterals_KeepsThemAsTheyAre)
{
    EXPECT_EQ(Format(5, "\"R0\" 0"), "R0 5");
    EXPECT_EQ(Format(5, "\\00"), "05");
    EXPECT_EQ(Format(5, "\"aberto"), "aberto");
    EXPECT_EQ(Format(5, "0\\"), "5\\");
    EXPECT_EQ(Format(5, "0\\a"), "5a");
    EXPECT_EQ(Format(5, "\"\"0"), "5");
    EXPECT_EQ(Format(5, "é"), "é");
    EXPECT_EQ(Format(DataDe(5, 1, 2023, 7, 8, 9), "dd \"De\" mm"), "05 De 01");
    EXPECT_EQ(Format(DataDe(5, 1, 2023, 7, 8, 9), "hh\\Hmm"), "07H08");
    EXPECT_EQ(Format(DataDe(5, 1, 2023, 7, 8, 9), "dd°mm"), "05°01");
    EXPECT_EQ(Format(DataDe(5, 1, 2023, 7, 8, 9), "{dd|mm}"), "{05|01}");
    EXPECT_EQ(Format(DataDe(5, 1, 2023, 7, 8, 9), "d\\dd"), "5d5");
    EXPECT_EQ(Format(DataDe(5, 3, 2024, 14, 7, 9), "hh:ss"), "14:09"); // the seconds behind the hour
    EXPECT_EQ(Format(DataDe(5, 3, 2024, 14, 7, 9), "hh:ss mm"), "14:09 03");
}

TEST(Conversoes, MinutosDecorridos_CountsElapsedTimeNotBoundaries)
{
    const auto hora = [](int h, int m, int s) { return DataDe(15, 3, 2023, h, m, s); };
    EXPECT_EQ(MinutosDecorridos(hora(10, 0, 59), hora(10, 1, 0)), 0);
    EXPECT_EQ(MinutosDecorridos(hora(10, 0, 59), hora(10, 1, 59)), 1);
    EXPECT_EQ(MinutosDecorridos(hora(10, 0, 0), hora(10, 5, 59)), 5);
    EXPECT_EQ(MinutosDecorridos(hora(10, 0, 59), hora(10, 6, 0)), 5);
    EXPECT_EQ(MinutosDecorridos(hora(10, 0, 0), hora(10, 6, 0)), 6);
    EXPECT_EQ(MinutosDecorridos(hora(10, 1, 0), hora(10, 0, 1)), 0);
    EXPECT_EQ(MinutosDecorridos(hora(10, 1, 0), hora(10, 0, 0)), -1);
    EXPECT_EQ(MinutosDecorridos(DataDe(31, 12, 2023, 23, 59, 0), DataDe(1, 1, 2024)), 1);
    EXPECT_EQ(MinutosDecorridos(DataDe(29, 12, 1899, 6, 0, 0), DataDe(30, 12, 1899, 6, 0, 0)), 1440);
    EXPECT_EQ(MinutosDecorridos(Data{}, Data{}), 0);
    for (int segundo = 0; segundo < 24 * 60 * 60; ++segundo) { // no moment of a day loses a minute to its fractions
        const Data inicio = DataDe(20, 11, 2026, segundo / 3600, segundo / 60 % 60, segundo % 60);
        const Data depois = CDate(CStr(Data{inicio.Valor + 6.0 / (24 * 60)}));
        ASSERT_EQ(MinutosDecorridos(inicio, depois), 6) << CStr(inicio);
    }
}

TEST(Conversoes, MinutosDecorridos_BeyondTheCalendarOr32Bits_IsOverflow)
{
    EXPECT_EQ(NumeroDaFalha([] { MinutosDecorridos(DataDe(1, 1, 100), DataDe(31, 12, 9999)); }), 6);
    EXPECT_EQ(NumeroDaFalha([] { MinutosDecorridos(Data{}, Data{1e10}); }), 6);
    EXPECT_EQ(NumeroDaFalha([] { MinutosDecorridos(DataDe(1, 1, 100), DataDe(1, 1, 4000)); }), 0);
}

// The calendar's years that operators meet, and some beside.
constexpr int PrimeiroDia = 2;   // 01/01/1900
constexpr int UltimoDia = 73415; // 31/12/2100

TEST(Conversoes, EveryDayOf1900To2100_ComesBackFromItsTexts)
{
    ASSERT_EQ(Data{PrimeiroDia}, DataDe(1, 1, 1900));
    ASSERT_EQ(Data{UltimoDia}, DataDe(31, 12, 2100));
    for (int dia = PrimeiroDia; dia <= UltimoDia; ++dia) {
        const Data data{static_cast<double>(dia)};
        ASSERT_EQ(CDate(Format(data, "dd/mm/yyyy")), data) << dia;
        ASSERT_EQ(CDate(Format(data, "d/m/yyyy")), data) << dia;
        ASSERT_EQ(CDate(Format(data, "yyyy-mm-dd")), data) << dia;
        ASSERT_EQ(CDate(CStr(data)), data) << dia;
        ASSERT_EQ(Len(Format(data, "dd/mm/yyyy")), 10U) << dia;
    }
}

TEST(Conversoes, EveryDayOf1930To2029_ComesBackFromTwoDigitsOfTheYear)
{
    for (Data data = DataDe(1, 1, 1930); data <= DataDe(31, 12, 2029); data = data.MaisDias(1))
        ASSERT_EQ(CDate(Format(data, "dd/mm/yy")), data) << data.Valor;
    EXPECT_EQ(CDate(Format(DataDe(31, 12, 1929), "dd/mm/yy")), DataDe(31, 12, 2029));
    EXPECT_EQ(CDate(Format(DataDe(1, 1, 2030), "dd/mm/yy")), DataDe(1, 1, 1930));
}

TEST(Conversoes, EverySecondOfADay_ComesBackFromItsText)
{
    for (int s = 0; s < 86400; ++s) {
        const Data data = DataDe(29, 2, 2024, s / 3600, s / 60 % 60, s % 60);
        ASSERT_EQ(CDate(CStr(data)), data) << s;
        ASSERT_EQ(CDate(Format(data, "dd/mm/yyyy hh:mm:ss")), data) << s;
    }
}

TEST(Conversoes, EveryMinuteOfADay_ComesBackFromItsTimeAlone)
{
    for (int m = 0; m < 1440; ++m) {
        const Data data = DataDe(30, 12, 1899, m / 60, m % 60, 0);
        ASSERT_EQ(CDate(Format(data, "hh:mm")), data) << m;
        // The same minute as the number HHMM.
        ASSERT_EQ(Format(m / 60 * 100 + m % 60, "00:00"), Format(data, "hh:mm")) << m;
    }
}

TEST(Conversoes, EveryInteger16_ComesBackFromItsText)
{
    for (int n = -32768; n <= 32767; ++n) {
        ASSERT_EQ(CInt(CStr(n)), n);
        ASSERT_EQ(CLng(Format(n, "#,##0")), n);
        ASSERT_EQ(Val(CStr(n)), n);
        ASSERT_EQ(CLng(n + 0.5), n % 2 == 0 ? n : n + 1);
    }
}

TEST(Conversoes, TextWithoutYear_IsInThePresentYear)
{
    const auto ano = [] {
        const std::time_t agora = std::time(nullptr);
        return std::localtime(&agora)->tm_year + 1900;
    };
    // The year may end between two statements.
    const int antes = ano();
    const Data data = CDate("12/05");
    const int depois = ano();
    EXPECT_TRUE(data == DataDe(12, 5, antes) || data == DataDe(12, 5, depois));
}

} // namespace
