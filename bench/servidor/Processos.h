#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// A program of ours that runs beside, and goes away with the object: asked to end, and killed when it does not.
class Processo {
  public:
    // Its output goes to the file. Raises std::runtime_error when it cannot be started.
    Processo(const std::vector<std::string> &comando, const std::string &registro);
    Processo(const Processo &) = delete;
    Processo &operator=(const Processo &) = delete;
    ~Processo();

    pid_t Numero() const { return m_Numero; }
    bool Anda();
    // Asks it to end and waits; its exit status, or -1 when it did not end by itself.
    int Encerra();

  private:
    pid_t m_Numero = 0;
};

// Processor seconds of a process, those of the children that it waited for included; 0 when there is none.
double SegundosDe(pid_t processo);
// The same of a process with all that stand below it.
double SegundosDaArvore(pid_t raiz);
// A port of the loopback that nobody has at this moment, and whether somebody answers on one.
std::uint16_t PortaLivre();
bool Atende(std::uint16_t porta);

// Octets of memory that a process holds.
std::size_t MemoriaDe(pid_t processo);
