#include "bench/Medida.h"

#include "bench/Memoria.h"

#include <algorithm>
#include <ctime>
#include <iomanip>
#include <iostream>
#include <malloc.h>
#include <utility>

namespace {

constexpr int Repeticoes = 11;

// Below this the clock and the call weigh as much as the work.
constexpr double MenorTempo = 20e-6;

// Of processor time, in which whatever else runs on the machine has no part.
double SegundosDoProcessador()
{
    std::timespec agora{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &agora);
    return static_cast<double>(agora.tv_sec) + static_cast<double>(agora.tv_nsec) * 1e-9;
}

// Memory that was released stays with the process and is handed out again, for subject and baseline alike. Otherwise
// whichever of them happens to have its memory at the end of the heap, or takes it in larger pieces, would give it back
// to the system and fetch it anew at every repetition.
void MantemMemoriaLiberada()
{
    constexpr int Sempre = 1 << 30;
    mallopt(M_TRIM_THRESHOLD, Sempre);
    mallopt(M_MMAP_MAX, 0);
}

double PicoDe(const Preparo &preparo, std::size_t trabalho)
{
    const std::function<void()> procedimento = preparo(trabalho);
    return static_cast<double>(PicoDeMemoria(procedimento));
}

} // namespace

double Mediana(std::vector<double> valores)
{
    std::sort(valores.begin(), valores.end());
    const std::size_t meio = valores.size() / 2;
    return valores.size() % 2 == 1 ? valores[meio] : (valores[meio - 1] + valores[meio]) / 2;
}

Tabela::Tabela() : Tabela(std::cout, SegundosDoProcessador)
{
    MantemMemoriaLiberada();
}

Tabela::Tabela(std::ostream &saida, Relogio relogio) : m_Saida(saida), m_Relogio(std::move(relogio)) {}

double Tabela::Segundos(const std::function<void()> &procedimento) const
{
    const double inicio = m_Relogio();
    procedimento();
    return m_Relogio() - inicio;
}

void Tabela::MedeTempo(const Figura &figura)
{
    std::vector<double> tempos; // the shortest of each repetition
    std::vector<double> razoesPequenas;
    std::vector<double> razoes;
    for (int repeticao = 0; repeticao < Repeticoes; ++repeticao) {
        const double pequeno = Segundos(figura.Medido(figura.Trabalho));
        const double referenciaPequena = Segundos(figura.Referencia(figura.Trabalho));
        const double grande = Segundos(figura.Medido(figura.Trabalho * 10));
        const double referencia = Segundos(figura.Referencia(figura.Trabalho * 10));
        tempos.push_back(std::min({pequeno, referenciaPequena, grande, referencia}));
        razoesPequenas.push_back(pequeno / referenciaPequena);
        razoes.push_back(grande / referencia);
    }
    const double razao = Mediana(razoes);
    Imprime(figura, "time", razao, razao / Mediana(razoesPequenas), Mediana(tempos) >= MenorTempo);
}

void Tabela::MedeMemoria(const Figura &figura)
{
    const double pequeno = PicoDe(figura.Medido, figura.Trabalho);
    const double referenciaPequena = PicoDe(figura.Referencia, figura.Trabalho);
    const double grande = PicoDe(figura.Medido, figura.Trabalho * 10);
    const double referencia = PicoDe(figura.Referencia, figura.Trabalho * 10);
    const double razao = grande / referencia;
    Imprime(figura, "memory", razao, razao / (pequeno / referenciaPequena), pequeno > 0 && referenciaPequena > 0);
}

void Tabela::Imprime(const Figura &figura, const std::string &grandeza, double razao, double crescimento,
                     bool confiavel)
{
    if (m_Figuras == 0) {
        m_Saida << "figure                                            of      ratio  limit   growth  limit\n";
    }
    ++m_Figuras;
    // Written so that a figure that is no number is not within its limit.
    const bool dentro = confiavel && razao <= figura.LimiteRazao && crescimento <= figura.LimiteCrescimento;
    m_DentroDosLimites = m_DentroDosLimites && dentro;
    m_Saida << std::left << std::setw(50) << figura.Nome << std::setw(6) << grandeza << std::right << std::fixed
            << std::setprecision(2) << std::setw(7) << razao << std::setw(7) << figura.LimiteRazao << std::setw(9)
            << crescimento << std::setw(7) << figura.LimiteCrescimento
            << (dentro      ? "  ok"
                : confiavel ? "  FAILED"
                            : "  FAILED: too little work to measure")
            << std::endl;
}

int Tabela::Saida() const
{
    return m_Figuras > 0 && m_DentroDosLimites ? 0 : 1;
}
