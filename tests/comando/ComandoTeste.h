#pragma once

#include "comando/ITerminal.h"
#include "comando/Programa.h"
#include "rede/LugaresConhecidos.h"
#include "server/Servidor.h"
#include "tests/services/RegistroDeTeste.h"

#include <QTemporaryDir>

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

#include <deque>
#include <optional>
#include <string>
#include <vector>

// What the program ended with, and what it wrote where.
struct Terminado {
    comando::Codigo Como = comando::Codigo::Interno;
    std::string Resposta; // standard output
    std::string Frases;   // standard error

    nlohmann::json Json() const { return nlohmann::json::parse(Resposta); }
};

// The person at a terminal, who has made up what to type before.
class TerminalDeTeste : public comando::ITerminal {
  public:
    std::deque<std::string> Senhas;
    bool Sim = false;
    std::vector<std::string> Perguntas; // as they were asked

    mesa::Segredo Senha(const std::string &pergunta) override;
    bool Aceita(const std::string &pergunta) override;
};

// The program over a registry of the test's own, in a file that the test has open too; its clock is the registry's.
class ComandoTeste : public testing::Test {
  protected:
    // Called as a person would. entrada: what comes in from the standard input.
    Terminado Chama(const std::vector<std::string> &argumentos, const std::string &entrada = "");
    // The same on the registry's file, by somebody whose password comes from the standard input.
    Terminado NoArquivo(std::vector<std::string> argumentos, const std::string &usuario, const std::string &resto = "");
    // The same at the server, whose fingerprint is told.
    Terminado NoServidor(std::vector<std::string> argumentos, const std::string &usuario,
                         const std::string &resto = "");
    // On the file, by nobody.
    Terminado SemEntrar(std::vector<std::string> argumentos);

    // A server over the registry.
    void Serve();
    std::string Onde() const { return "127.0.0.1:" + std::to_string(Servidor->Porta()); }
    std::string Em(const char *nome) const { return Pasta.filePath(nome).toStdString(); }

    QTemporaryDir Pasta;
    RegistroDeTeste Registro;
    TerminalDeTeste Pessoa;
    bool NoTerminal = false; // whether somebody is at one
    int PassosAteInterromper = -1;
    std::optional<servidor::Servidor> Servidor;
};

// The words of another language that a text has, of those that the library of the command line uses.
std::vector<std::string> PalavrasInglesas(const std::string &texto);
