#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

namespace mortes {

// A program that runs beside this one, and does not outlive it.
class Processo {
  public:
    // What it says goes to the end of that file.
    Processo(const std::vector<std::string> &comando, const std::filesystem::path &dito);
    Processo(const Processo &) = delete;
    Processo &operator=(const Processo &) = delete;
    ~Processo();

    // SIGKILL.
    void Mata();
    // SIGTERM, and waits for its end; its exit status, -1 when a signal ended it.
    int Encerra();
    // Waits for its own end; the same.
    int Espera();
    bool Anda(); // it has not ended by itself either

  private:
    int Finda(int sinal);

    pid_t m_Pid = 0;
};

// What the command said, whatever its exit status, which goes into codigo.
std::string Roda(const std::vector<std::string> &comando, const std::filesystem::path &dito, int &codigo);

// The file's text.
std::string TextoDe(const std::filesystem::path &arquivo);

} // namespace mortes
