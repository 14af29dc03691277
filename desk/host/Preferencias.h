#pragma once

#include "host/Evento.h"
#include "rede/ServicosRemotos.h"

#include <QSettings>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace mesa {

// A registry that was worked on: where it stands, and by what it is known again.
struct RegistroConhecido {
    std::filesystem::path Caminho;
    std::string Identificador;
};

// Whose colours the windows have.
enum class Tema { Sistema, Claro, Escuro };

// How the windows look, and where they print.
struct Aspecto {
    Tema Cores = Tema::Sistema;
    std::int32_t TamanhoDoTexto = 100; // percent of the system's
    std::string Impressora{};          // empty for the system's own

    static constexpr std::int32_t MenorTexto = 80;
    static constexpr std::int32_t MaiorTexto = 200;
    bool operator==(const Aspecto &) const = default;
};

// What a user's settings keep, whatever registry is open. They stand outside of every data directory, so that they are
// there when that is not. What cannot be written raises a Falha.
class Preferencias {
  public:
    explicit Preferencias(const std::filesystem::path &arquivo);
    // Where those of the user stand.
    static std::filesystem::path ArquivoDoUsuario();

    // The registry of a data directory.
    std::optional<RegistroConhecido> Registro(const std::filesystem::path &diretorio) const;
    void LembraRegistro(const std::filesystem::path &diretorio, const RegistroConhecido &registro);

    // The server at which a data directory works; nothing: its registry is on this computer.
    std::optional<rede::Endereco> Servidor(const std::filesystem::path &diretorio) const;
    void LembraServidor(const std::filesystem::path &diretorio, const std::optional<rede::Endereco> &servidor);

    // By what a server is known, empty before it was met; and the registry that it had, empty before that.
    rede::Confianca Confianca(const rede::Endereco &servidor) const;
    void LembraConfianca(const rede::Endereco &servidor, const rede::Confianca &confianca);
    std::string RegistroNo(const rede::Endereco &servidor) const;
    void LembraRegistroNo(const rede::Endereco &servidor, const std::string &identificador);

    // By what the sign-in tells this desk from others: made at random, once.
    std::string Estacao();

    // Minutes without use after which the desk locks; 0 never.
    static constexpr std::int32_t MaisMinutos = 24 * 60;
    std::int32_t MinutosAteTravar() const;
    void DefineMinutosAteTravar(std::int32_t minutos);

    mesa::Aspecto Aspecto() const;
    void DefineAspecto(const mesa::Aspecto &valor);
    // Another one was defined.
    Evento<> &MudouAspecto() { return m_MudouAspecto; }

    // Whether the sign-in offers the name of who came in last.
    bool LembraUsuario() const;
    void DefineLembraUsuario(bool valor);
    // That name in a registry; empty when there is none, or none is to be offered.
    std::string UltimoUsuario(const std::string &identificador) const;
    void EsqueceUsuarios();
    void LembraUltimoUsuario(const std::string &identificador, const std::string &usuario);

    // A moment, in words, and what came of the last check of a registry.
    std::string UltimaConferencia(const std::string &identificador) const;
    void LembraConferencia(const std::string &identificador, const std::string &resultado);

    // The day of the last whole check; 0 before the first.
    std::int32_t DiaConferido(const std::string &identificador) const;
    void LembraDiaConferido(const std::string &identificador, std::int32_t dia);

    // Whether a copy is made beside the registry every day.
    bool CopiaDiaria() const;
    void DefineCopiaDiaria(bool valor);
    // Where the head of the history is kept every day; empty for nowhere.
    std::string PastaDasCabecas() const;
    void DefinePastaDasCabecas(const std::string &pasta);

    // Texts that others keep here, each under its key: empty when there is none; an empty one forgets. They are a
    // comfort: what cannot be written is lost without a word.
    std::string Texto(const QString &chave) const;
    void GuardaTexto(const QString &chave, const std::string &texto);
    void EsqueceTextos(const QString &comeco);

  private:
    void Grava(const QString &chave, const QString &valor);

    QSettings m_Guardadas;
    Evento<> m_MudouAspecto;
};

} // namespace mesa
