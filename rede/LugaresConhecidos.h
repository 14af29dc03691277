#pragma once

#include "rede/ServicosRemotos.h"

#include <QSettings>

#include <filesystem>
#include <optional>
#include <string>

namespace rede {

// A registry that was worked on: where it stands, and by what it is known again.
struct RegistroConhecido {
    std::filesystem::path Caminho;
    std::string Identificador;
};

// The registries and servers that a user's settings know, and by what the user is known to them: the same for every
// program of the user's. They stand outside of every data directory, so that they are there when that is not. What
// cannot be written raises a Falha.
class LugaresConhecidos {
  public:
    explicit LugaresConhecidos(const std::filesystem::path &arquivo);
    // Where the settings of the user stand.
    static std::filesystem::path ArquivoDoUsuario();
    // The data directory of whoever names none.
    static std::filesystem::path DiretorioPadrao();

    // The registry of a data directory.
    std::optional<RegistroConhecido> Registro(const std::filesystem::path &diretorio) const;
    void LembraRegistro(const std::filesystem::path &diretorio, const RegistroConhecido &registro);

    // The server at which a data directory works; nothing: its registry is on this computer.
    std::optional<Endereco> Servidor(const std::filesystem::path &diretorio) const;
    void LembraServidor(const std::filesystem::path &diretorio, const std::optional<Endereco> &servidor);

    // By what a server is known, empty before it was met; and the registry that it had, empty before that.
    rede::Confianca Confianca(const Endereco &servidor) const;
    void LembraConfianca(const Endereco &servidor, const rede::Confianca &confianca);
    std::string RegistroNo(const Endereco &servidor) const;
    void LembraRegistroNo(const Endereco &servidor, const std::string &identificador);

    // By what the sign-in tells this user's programs from others: made at random, once.
    std::string Estacao();

    // The text under a key; empty when there is none.
    std::string Texto(const QString &chave) const;

  protected:
    QSettings &Guardadas() { return m_Guardadas; }
    const QSettings &Guardadas() const { return m_Guardadas; }
    void Grava(const QString &chave, const QString &valor);

  private:
    QSettings m_Guardadas;
};

// File of the registry in a data directory.
std::filesystem::path CaminhoDoRegistro(const std::filesystem::path &diretorio);
// The registry of a data directory: the one that it knows, or the file in it.
RegistroConhecido RegistroDe(const std::filesystem::path &diretorio, const LugaresConhecidos &lugares);
// A Falha with a sentence when the directory works at a server: what is done to a registry's file is done there.
void ExigeRegistroDaqui(const std::filesystem::path &diretorio, const LugaresConhecidos &lugares);

} // namespace rede
