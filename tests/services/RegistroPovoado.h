#pragma once

#include "services/Banco.h"
#include "tests/services/RegistroDeTeste.h"

#include <QTemporaryDir>

#include <string>

// A registry in which every table has rows: a file of the test's own that nobody has open. The first one is made
// through the services, and the others are copies of it.
class RegistroPovoado {
  public:
    RegistroPovoado();

    const std::string &Caminho() const { return m_Caminho; }

    // Straight to the file, as somebody with a program of their own.
    std::string Sql(const std::string &comando) const;
    // The same with one that heeds neither guards nor restrictions, and leaves them as they are.
    void SemGuardas(const std::string &comandos) const;
    // Makes every hash of the chain anew over what the entries now hold, as somebody who knows how.
    void RefazCorrente() const;

  private:
    QTemporaryDir m_Diretorio;
    std::string m_Caminho;
};

// A row with its entry in the history, for tables for which the test has no service at hand.
void PoeLinha(mesa::Banco &banco, const mesa::Instante &agora, const std::string &tabela, const mesa::Celulas &celulas);
