#pragma once

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

// Prepares `trabalho` units of work, unmeasured, and gives the procedure that does them, which is what is measured.
// Whatever the procedure holds is released unmeasured too.
using Preparo = std::function<std::function<void()>(std::size_t trabalho)>;

// One line of the table: a subject against a plain baseline doing the same work.
struct Figura {
    std::string Nome;
    std::size_t Trabalho = 0; // units of the small size; the large one is ten times that
    Preparo Medido;
    Preparo Referencia;
    double LimiteRazao = 0;       // subject over baseline, at the large size
    double LimiteCrescimento = 0; // the ratio at the large size over that at the small one
};

// Measures figures, printing the line of each, and says in the end whether all were within their limits.
class Tabela {
  public:
    // Seconds since any fixed moment.
    using Relogio = std::function<double()>;

    // To the standard output, in processor time and with warm memory: what was released is at hand again.
    Tabela();
    Tabela(std::ostream &saida, Relogio relogio);

    // Median over repetitions, in each of which subject and baseline are timed side by side at both sizes, so that a
    // drift of the machine is the same for all.
    void MedeTempo(const Figura &figura);

    // Largest amount of memory that the work held at once, preparation excluded.
    void MedeMemoria(const Figura &figura);

    // Exit status of the program: 0 when there was a figure and all were within their limits.
    int Saida() const;

  private:
    void Imprime(const Figura &figura, const std::string &grandeza, double razao, double crescimento, bool confiavel);
    double Segundos(const std::function<void()> &procedimento) const;

    std::ostream &m_Saida;
    Relogio m_Relogio;
    std::size_t m_Figuras = 0;
    bool m_DentroDosLimites = true;
};

// The middle of the values; of an even number of them, the mean of the middle two.
double Mediana(std::vector<double> valores);

// Makes the compiler believe that `valor` is used.
template <class T> void Usa(const T &valor)
{
    asm volatile("" : : "g"(&valor) : "memory");
}
