#include "host/LeituraData.h"

#include "host/Texto.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr int Ilegivel = 1'000'000; // larger than anything that a date or a time can hold

enum class Tipo { Numero, Mes, DiaSemana, AM, PM, SeparadorData, SeparadorHora, Virgula, Branco };

struct Simbolo {
    Tipo Que;
    int Valor = 0;
};

struct Nome {
    std::string_view Texto; // lower case
    Tipo Que;
    int Valor = 0;
};

// Long names before their abbreviations.
constexpr std::array Nomes{
    Nome{"janeiro", Tipo::Mes, 1},
    Nome{"fevereiro", Tipo::Mes, 2},
    Nome{"março", Tipo::Mes, 3},
    Nome{"abril", Tipo::Mes, 4},
    Nome{"maio", Tipo::Mes, 5},
    Nome{"junho", Tipo::Mes, 6},
    Nome{"julho", Tipo::Mes, 7},
    Nome{"agosto", Tipo::Mes, 8},
    Nome{"setembro", Tipo::Mes, 9},
    Nome{"outubro", Tipo::Mes, 10},
    Nome{"novembro", Tipo::Mes, 11},
    Nome{"dezembro", Tipo::Mes, 12},
    Nome{"domingo", Tipo::DiaSemana},
    Nome{"segunda-feira", Tipo::DiaSemana},
    Nome{"terça-feira", Tipo::DiaSemana},
    Nome{"quarta-feira", Tipo::DiaSemana},
    Nome{"quinta-feira", Tipo::DiaSemana},
    Nome{"sexta-feira", Tipo::DiaSemana},
    Nome{"sábado", Tipo::DiaSemana},
    Nome{"am", Tipo::AM},
    Nome{"pm", Tipo::PM},
};

constexpr std::array Abreviaturas{
    Nome{"jan", Tipo::Mes, 1},    Nome{"fev", Tipo::Mes, 2},    Nome{"mar", Tipo::Mes, 3},
    Nome{"abr", Tipo::Mes, 4},    Nome{"mai", Tipo::Mes, 5},    Nome{"jun", Tipo::Mes, 6},
    Nome{"jul", Tipo::Mes, 7},    Nome{"ago", Tipo::Mes, 8},    Nome{"set", Tipo::Mes, 9},
    Nome{"out", Tipo::Mes, 10},   Nome{"nov", Tipo::Mes, 11},   Nome{"dez", Tipo::Mes, 12},
    Nome{"dom", Tipo::DiaSemana}, Nome{"seg", Tipo::DiaSemana}, Nome{"ter", Tipo::DiaSemana},
    Nome{"qua", Tipo::DiaSemana}, Nome{"qui", Tipo::DiaSemana}, Nome{"sex", Tipo::DiaSemana},
    Nome{"sáb", Tipo::DiaSemana},
};

bool EDigito(char c)
{
    return c >= '0' && c <= '9';
}

// Takes `prefixo` from the front of the text.
bool Tira(std::string_view &texto, std::string_view prefixo)
{
    if (!texto.starts_with(prefixo))
        return false;
    texto.remove_prefix(prefixo.size());
    return true;
}

// Takes one symbol from the front of a lower-case text that is not empty.
std::optional<Simbolo> TiraSimbolo(std::string_view &texto)
{
    const char c = texto.front();
    if (EDigito(c)) {
        int valor = 0;
        for (; !texto.empty() && EDigito(texto.front()); texto.remove_prefix(1))
            valor = std::min(valor * 10 + (texto.front() - '0'), Ilegivel);
        return Simbolo{Tipo::Numero, valor};
    }
    if (c == ' ' || (c >= '\t' && c <= '\r')) {
        texto.remove_prefix(1);
        return Simbolo{Tipo::Branco};
    }
    if (Tira(texto, "\u00A0"))
        return Simbolo{Tipo::Branco};
    if (c == '/' || c == '-') {
        texto.remove_prefix(1);
        return Simbolo{Tipo::SeparadorData};
    }
    if (c == ',') {
        texto.remove_prefix(1);
        return Simbolo{Tipo::Virgula};
    }
    if (c == ':' || c == '.') {
        texto.remove_prefix(1);
        return Simbolo{Tipo::SeparadorHora};
    }
    for (const Nome &nome : Nomes) {
        if (Tira(texto, nome.Texto))
            return Simbolo{nome.Que, nome.Valor};
    }
    for (const Nome &nome : Abreviaturas) {
        if (Tira(texto, nome.Texto)) {
            Tira(texto, ".");
            return Simbolo{nome.Que, nome.Valor};
        }
    }
    return std::nullopt;
}

// The symbols without the blanks; nothing when there is an unknown one, two separators in a row, or one at either end.
std::optional<std::vector<Simbolo>> Simbolos(std::string_view texto)
{
    const std::string minusculo = LCase(texto);
    std::string_view resto = minusculo;
    std::vector<Simbolo> simbolos;
    const auto separador = [](const Simbolo &s) {
        return s.Que == Tipo::SeparadorData || s.Que == Tipo::SeparadorHora || s.Que == Tipo::Virgula;
    };
    while (!resto.empty()) {
        const std::optional<Simbolo> simbolo = TiraSimbolo(resto);
        if (!simbolo)
            return std::nullopt;
        if (simbolo->Que == Tipo::Branco)
            continue;
        if (separador(*simbolo) && (simbolos.empty() || separador(simbolos.back())))
            return std::nullopt;
        simbolos.push_back(*simbolo);
    }
    if (simbolos.empty() || separador(simbolos.back()))
        return std::nullopt;
    return simbolos;
}

// What the text holds, before it is known which number is the day.
struct Partido {
    std::vector<int> Numeros; // of the date
    int Mes = 0;              // by name
    bool TemHora = false;
    int Hora = 0;
    int Minuto = 0;
    int Segundo = 0;
};

class Leitor {
  public:
    explicit Leitor(std::vector<Simbolo> simbolos) : m_Simbolos(std::move(simbolos)) {}

    std::optional<Partido> Le()
    {
        while (m_Posicao < m_Simbolos.size()) {
            switch (m_Simbolos[m_Posicao].Que) {
            case Tipo::Numero:
                if (!LeNumeros())
                    return std::nullopt;
                break;
            case Tipo::Mes:
                if (m_Partido.Mes != 0)
                    return std::nullopt;
                m_Partido.Mes = m_Simbolos[m_Posicao++].Valor;
                break;
            case Tipo::DiaSemana:
            case Tipo::SeparadorData:
            case Tipo::Virgula:
                ++m_Posicao;
                break;
            default: // AM, PM or a separator of times with no number before it
                return std::nullopt;
            }
        }
        return m_Partido;
    }

  private:
    bool Segue(Tipo que, std::size_t distancia = 0) const
    {
        return m_Posicao + distancia < m_Simbolos.size() && m_Simbolos[m_Posicao + distancia].Que == que;
    }

    // One number of the date, or all those of the time with what follows them.
    bool LeNumeros()
    {
        const bool presoADataAnterior = m_Posicao > 0 && m_Simbolos[m_Posicao - 1].Que == Tipo::SeparadorData;
        std::vector<int> numeros{m_Simbolos[m_Posicao++].Valor};
        while (Segue(Tipo::SeparadorHora) && Segue(Tipo::Numero, 1)) {
            numeros.push_back(m_Simbolos[m_Posicao + 1].Valor);
            m_Posicao += 2;
        }
        const bool am = Segue(Tipo::AM);
        const bool pm = Segue(Tipo::PM);
        if (numeros.size() == 1 && !am && !pm) {
            // A time may stand before or after the numbers of the date, not among them.
            if (m_HoraDepoisDeNumero)
                return false;
            m_Partido.Numeros.push_back(numeros[0]);
            return true;
        }
        if (presoADataAnterior || m_Partido.TemHora || numeros.size() > 3)
            return false;
        if (am || pm)
            ++m_Posicao;
        numeros.resize(3);
        m_HoraDepoisDeNumero = !m_Partido.Numeros.empty();
        m_Partido.TemHora = true;
        m_Partido.Hora = numeros[0];
        m_Partido.Minuto = numeros[1];
        m_Partido.Segundo = numeros[2];
        if (m_Partido.Hora > 23 || m_Partido.Minuto > 59 || m_Partido.Segundo > 59)
            return false;
        if (am && m_Partido.Hora == 12)
            m_Partido.Hora = 0;
        if (pm && m_Partido.Hora < 12)
            m_Partido.Hora += 12;
        return true;
    }

    std::vector<Simbolo> m_Simbolos;
    std::size_t m_Posicao = 0;
    Partido m_Partido;
    bool m_HoraDepoisDeNumero = false;
};

struct DiaMesAno {
    int Dia;
    int Mes;
    int Ano; // as written
};

int AnoCompleto(int ano)
{
    if (ano >= 100)
        return ano;
    return ano < 30 ? 2000 + ano : 1900 + ano;
}

bool Existe(const DiaMesAno &d)
{
    const int ano = AnoCompleto(d.Ano);
    if (ano > 9999 || d.Mes > 12 || d.Dia > 31)
        return false;
    return std::chrono::year_month_day{std::chrono::year{ano}, std::chrono::month{static_cast<unsigned>(d.Mes)},
                                       std::chrono::day{static_cast<unsigned>(d.Dia)}}
        .ok();
}

// The readings of the numbers, in the order in which they are tried.
std::vector<DiaMesAno> Leituras(const Partido &p, int anoCorrente)
{
    const std::vector<int> &n = p.Numeros;
    if (p.Mes != 0 && n.size() == 1)
        return {{n[0], p.Mes, anoCorrente}, {1, p.Mes, n[0]}};
    if (p.Mes != 0 && n.size() == 2)
        return {{n[0], p.Mes, n[1]}, {n[1], p.Mes, n[0]}};
    if (p.Mes == 0 && n.size() == 2)
        return {{n[0], n[1], anoCorrente}, {n[1], n[0], anoCorrente}, {1, n[0], n[1]}, {1, n[1], n[0]}};
    if (p.Mes == 0 && n.size() == 3)
        return {{n[0], n[1], n[2]}, {n[1], n[0], n[2]}, {n[2], n[1], n[0]}, {n[1], n[2], n[0]}};
    return {};
}

} // namespace

std::optional<Data> LeData(std::string_view texto, int anoCorrente)
{
    std::optional<std::vector<Simbolo>> simbolos = Simbolos(texto);
    if (!simbolos)
        return std::nullopt;
    const std::optional<Partido> partido = Leitor(std::move(*simbolos)).Le();
    if (!partido)
        return std::nullopt;
    if (partido->Numeros.empty() && partido->Mes == 0) {
        if (!partido->TemHora)
            return std::nullopt;
        return DataDe(30, 12, 1899, partido->Hora, partido->Minuto, partido->Segundo);
    }
    const std::vector<DiaMesAno> leituras = Leituras(*partido, anoCorrente);
    const auto boa = std::find_if(leituras.begin(), leituras.end(), Existe);
    if (boa == leituras.end())
        return std::nullopt;
    return DataDe(boa->Dia, boa->Mes, AnoCompleto(boa->Ano), partido->Hora, partido->Minuto, partido->Segundo);
}
