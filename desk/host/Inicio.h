#pragma once

#include "desk/host/LugarDoTrabalho.h"
#include "desk/host/Preferencias.h"
#include "services/Restauracao.h"
#include "services/Segredo.h"
#include "services/Servicos.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace mesa {

using rede::CaminhoDoRegistro;

// Where the sample of a data directory has its own one.
std::filesystem::path DiretorioDaAmostra(const std::filesystem::path &diretorio);

// What a new registry begins with: one client and one administrator.
struct RegistroNovo {
    ClienteCadastrado Cliente;
    std::string Usuario; // the sign-in name of the administrator
    std::string Nome;
    Segredo Senha;
};

enum class CampoDoRegistroNovo { CodCliente, Cliente, Estado, Usuario, Nome, Senha };

// What stands against making it: the sentence, and the field to look at.
struct ProblemaDoRegistroNovo {
    CampoDoRegistroNovo Campo = CampoDoRegistroNovo::CodCliente;
    std::string Frase;
};

std::optional<ProblemaDoRegistroNovo> ConfereRegistroNovo(const RegistroNovo &novo);

enum class OpcaoDoInicio { Novo, Existente, Servidor, Amostra, Sair };
enum class OpcaoDaFalta { TentarDeNovo, EscolherArquivo, RestaurarCopia, MudarDeLugar, Sair };
enum class OpcaoSemServidor { TentarDeNovo, MudarDeLugar, Sair };

// The person before the desk has a registry.
class IPessoaNoInicio {
  public:
    virtual ~IPessoaNoInicio() = default;

    // There is no registry yet.
    virtual OpcaoDoInicio Comeca() = 0;
    // Takes what a new registry begins with, and has it made; what `faz` answers is told, and asked for again. False
    // when the person gave up.
    virtual bool
    PedeRegistroNovo(const std::function<std::optional<ProblemaDoRegistroNovo>(const RegistroNovo &)> &faz) = 0;
    virtual std::optional<std::filesystem::path> EscolheRegistro() = 0;
    virtual std::optional<std::filesystem::path> EscolheCopia() = 0;
    // A registry that was worked on cannot be opened; the sentence says why.
    virtual OpcaoDaFalta Falta(const std::string &frase) = 0;
    // Where the registry is; the fields begin with `agora`. Nothing when the person gave up.
    virtual std::optional<LugarDoTrabalho> EscolheLugar(const LugarDoTrabalho &agora) = 0;
    // A server that was never met shows this fingerprint; whether it is the one that its administrator tells.
    virtual bool ConfiaNoServidor(const std::string &servidor, const std::string &digital) = 0;
    // The server at which the work is cannot be had; the sentence says why.
    virtual OpcaoSemServidor FaltaServidor(const std::string &frase) = 0;
    // What the check of the start has found; whether the desk is opened all the same.
    virtual bool Continua(const std::string &frase, const std::vector<std::string> &achados) = 0;
    // A question of yes or no; no is what a hurried person answers.
    virtual bool Aceita(const std::string &pergunta) = 0;
    virtual void Avisa(const std::string &frase) = 0;
    // The sample is being made: the part that is done, 0 to 1.
    virtual void Progresso(double parte) = 0;
};

// What the desk does before it works: finds the registry of a data directory, or has it made by a person who asks for
// it. Once a directory has known a registry, nothing is made where that is missing.
class Inicio {
  public:
    using Progresso = std::function<void(double)>;
    // Puts a copy in the place of a registry, and tells the person what came of it.
    using Restaurador =
        std::function<DesfechoDaCopia(const std::filesystem::path &registro, const PedidoDeRestauracao &pedido)>;
    // preenche: makes a sample of a new registry.
    Inicio(std::filesystem::path diretorio, Preferencias &preferencias, Relogio agora,
           std::function<void(Servicos &, const Progresso &)> preenche, Restaurador restaura,
           ConectaServidor rede = {});

    // The services of the registry; Nothing when the person left.
    Ref<Servicos> Abre(IPessoaNoInicio &pessoa);
    // The same of a file that was asked for: where the directory knows another registry, the file takes its place by a
    // yes only, and without one the known registry is opened.
    Ref<Servicos> AbreArquivo(const std::filesystem::path &arquivo, IPessoaNoInicio &pessoa);
    // The same of a place that was asked for, which is worked at from now on once it could be had.
    Ref<Servicos> AbreLugar(const LugarDoTrabalho &lugar, IPessoaNoInicio &pessoa);
    // Makes a new registry, without questions. A Falha when the directory has or has known one; a sample in its place
    // is kept beside.
    Ref<Servicos> Cria(const RegistroNovo &novo);
    // Makes a new sample in the sample's own directory, in which the desk then works; the one that was there is kept
    // beside.
    Ref<Servicos> CriaAmostra(const Progresso &progresso);

    // Looks at what can be looked at of the registry that was opened last while a person waits. False when that person
    // does not go on with what was found. What a server has is looked at there.
    bool Confere(IPessoaNoInicio &pessoa) const;
    // Puts a copy in the place of the registry that was opened last, which has to be closed by now.
    void Restaura(const std::filesystem::path &copia, IPessoaNoInicio &pessoa);

    // Where the registry is that was opened last.
    const LugarDoTrabalho &Lugar() const { return m_Lugar; }
    // Its file, when it is on this computer.
    const std::filesystem::path &Registro() const { return m_Registro; }
    // In which the desk works: the one that was given, that of the sample, or one for the registry of a server.
    std::filesystem::path Diretorio() const;

  private:
    Ref<Servicos> AbreAqui(IPessoaNoInicio &pessoa);
    Ref<Servicos> Comeca(IPessoaNoInicio &pessoa);
    // At the server until it answers, another place was chosen, or the person left.
    Ref<Servicos> AbreServidor(LugarDoTrabalho lugar, IPessoaNoInicio &pessoa);
    // One try. Nothing with the reason in a sentence.
    Ref<Servicos> Conecta(const LugarDoTrabalho &lugar, IPessoaNoInicio &pessoa, std::string &frase);
    Ref<Servicos> Retoma(const RegistroConhecido &conhecido, IPessoaNoInicio &pessoa);
    Ref<Servicos> AbreEscolhido(const std::filesystem::path &escolhido, IPessoaNoInicio &pessoa);
    Ref<Servicos> AbreAmostra(IPessoaNoInicio &pessoa);
    void Restaura(const RegistroConhecido &registro, const std::filesystem::path &copia, IPessoaNoInicio &pessoa);
    // The registry of the directory, if it has one.
    std::optional<RegistroConhecido> Conhecido() const;
    // Whether what stands in the registry's place is a sample: nothing is lost with one of these.
    bool TemAmostra() const;
    std::filesystem::path LugarDaAmostra() const;
    // The registry of this directory is that one from now on; a sample is for this time.
    void Lembra(const std::filesystem::path &caminho, Servicos &aberto);
    // What it begins with is written beside its place, and the whole moved there: an interruption leaves none or all.
    Ref<Servicos> Faz(const std::filesystem::path &diretorio, TipoDeRegistro tipo,
                      const std::function<void(Servicos &)> &comeca);

    std::filesystem::path m_Diretorio;
    Preferencias &m_Preferencias;
    Relogio m_Agora;
    std::function<void(Servicos &, const Progresso &)> m_Preenche;
    Restaurador m_Restaura;
    ConectaServidor m_Rede;
    LugarDoTrabalho m_Lugar;
    std::filesystem::path m_Registro;
    std::string m_Identificador;
};

} // namespace mesa
