#pragma once

#include "tests/support/HostTeste.h"

#include <cstddef>
#include <string>
#include <vector>

// Fixture that tells, each time, what the person has been shown since the last time.
class HostQueConta : public HostTeste {
  protected:
    void SetUp() override
    {
        m_AvisosVistos = 0;
        m_ErrosVistos = 0;
        HostTeste::SetUp();
    }

    // The notices, without their controls.
    std::vector<std::string> Avisos()
    {
        std::vector<std::string> textos;
        for (; m_AvisosVistos < host->Avisos().size(); ++m_AvisosVistos) {
            textos.push_back(host->Avisos()[m_AvisosVistos].Texto);
        }
        return textos;
    }
    // The error boxes: "context: number (source)".
    std::vector<std::string> Erros()
    {
        std::vector<std::string> textos;
        for (const auto &erros = host->Erros(); m_ErrosVistos < erros.size(); ++m_ErrosVistos) {
            const auto &erro = erros[m_ErrosVistos];
            textos.push_back(erro.Contexto + ": " + std::to_string(erro.Numero) + " (" + erro.Fonte + ")");
        }
        return textos;
    }

  private:
    std::size_t m_AvisosVistos = 0;
    std::size_t m_ErrosVistos = 0;
};
