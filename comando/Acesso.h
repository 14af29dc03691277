#pragma once

#include "comando/Ambiente.h"
#include "rede/LugaresConhecidos.h"
#include "rede/SessaoDeServidor.h"
#include "services/Servicos.h"

#include <CLI/CLI.hpp>

#include <optional>
#include <string>

namespace comando {

// The registry that a sub-command works on, and who asks for it: their options, which are the same everywhere, and what
// comes of them.
class Acesso {
  public:
    enum class Lugar { SoArquivo, ArquivoOuServidor };
    // Who has to sign in: nobody, since who has the file has all of it; whoever asks a server; everybody.
    enum class Entrada { Ninguem, NoServidor, Todos };

    Acesso(Lugar lugar, Entrada entrada) : m_OndePode(lugar), m_QuemEntra(entrada) {}

    void Descreve(CLI::App &linha);

    // Where the registry is: of the options, or what the data directory knows. Fim when the options do not go
    // together.
    void Resolve(Ambiente &ambiente);
    // The server, after that; nothing: it is in a file.
    const std::optional<rede::Endereco> &Servidor() const { return m_Servidor; }
    // Its file, when it is in one.
    const rede::RegistroConhecido &Registro() const { return m_Registro; }

    enum class ComSenha { Definitiva, Qualquer };
    // The session of whoever signs in; Fim with the reason when it is refused. Qualquer: also with a password that has
    // to be changed first.
    Ref<mesa::SessaoServico> Entra(Ambiente &ambiente, ComSenha com = ComSenha::Definitiva);
    // The same on a server.
    Ref<rede::SessaoDeServidor> EntraNoServidor(Ambiente &ambiente);

    // With what the last session came in.
    const mesa::Segredo &Senha() const { return m_Senha; }

  private:
    void AbreArquivo(Ambiente &ambiente);
    void AbreServidor(Ambiente &ambiente, rede::LugaresConhecidos &lugares);
    mesa::Segredo LeSenha(Ambiente &ambiente) const;

    Lugar m_OndePode;
    Entrada m_QuemEntra;
    // As they were written; empty where they were not.
    std::string m_Dados;
    std::string m_Arquivo;
    std::string m_ServidorPedido;
    std::string m_Digital;
    std::string m_Autoridade;
    std::string m_Usuario;
    std::string m_SenhaDe;
    bool m_SenhaDaEntrada = false;

    std::optional<rede::Endereco> m_Servidor;
    rede::RegistroConhecido m_Registro;
    rede::Confianca m_Dita;
    Ref<mesa::Servicos> m_Servicos;
    mesa::Segredo m_Senha;
};

} // namespace comando
