#pragma once

#include "desk/host/Ficha.h"
#include "host/Registro.h"
#include "services/SessaoServico.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace mesa {

// What can be done on a page.
struct ComandoDaPagina {
    enum class Pede { Nada, Ficha, Arquivo };

    std::string Nome;
    std::string Texto;
    Pede OQue = Pede::Nada;
};

// What came of a command: a sentence, and more of them in a list that can be kept.
struct RelatoDaPagina {
    std::string Frase;
    std::vector<std::string> Linhas;
};

// A page of the administration without its window: the rows that it shows, which commands there are for the one that is
// chosen, what is asked before them, and what they do. All goes through the service, which decides.
class PaginaAdministracao {
  public:
    explicit PaginaAdministracao(Ref<SessaoServico> sessao) : m_Sessao(std::move(sessao)) {}
    PaginaAdministracao(const PaginaAdministracao &) = delete;
    PaginaAdministracao &operator=(const PaginaAdministracao &) = delete;
    virtual ~PaginaAdministracao() = default;

    // Told how far a command is that takes long.
    void Acompanha(Segue segue) { m_Sessao->Acompanha(std::move(segue)); }

    virtual std::string_view Nome() const = 0;
    virtual std::string_view Titulo() const = 0;
    virtual std::vector<std::string> Colunas() const = 0;
    virtual std::vector<ComandoDaPagina> Comandos() const = 0;
    // What the rows are sought by; null when all of them are shown.
    virtual Ficha *Criterios() { return nullptr; }

    // Reads the rows. False with the reason in recusa.
    virtual bool Carrega(std::string &recusa) = 0;
    virtual std::vector<std::vector<std::string>> Linhas() const = 0;
    // What is to be said of them; empty for nothing.
    virtual std::string Nota() const { return ""; }
    // The row with the same record after the rows were read anew; nothing when it is not there any more.
    virtual std::optional<std::size_t> Reencontra(const std::string &chave) const = 0;
    virtual std::string Chave(std::size_t linha) const = 0;

    // linha: nothing when no row is chosen.
    virtual bool Habilitado(const std::string &comando, std::optional<std::size_t> linha) const = 0;
    // Asked before the command, with no as what a hurried person answers; empty when nothing is asked.
    virtual std::string Pergunta(const std::string &comando, std::optional<std::size_t> linha) const = 0;
    // The form of a command that takes one. Nothing with the reason in recusa.
    virtual std::optional<Ficha> Abre(const std::string &comando, std::optional<std::size_t> linha,
                                      std::string &recusa) = 0;
    // Runs a command without a form, after which the rows are read anew. False with the reason in recusa.
    virtual bool Faz(const std::string &comando, std::optional<std::size_t> linha, std::string &recusa) = 0;
    // Runs a command that takes a file, with what is in it.
    virtual std::optional<RelatoDaPagina> FazComArquivo(const std::string &comando, const std::string &conteudo,
                                                        std::string &recusa);

  protected:
    // An operation of the administration. Nothing with the reason in recusa.
    template <class Resposta, class Pedido>
    Ref<Resposta> Pede(const std::string &operacao, const Ref<Pedido> &pedido, std::string &recusa)
    {
        Ref<Objeto> enviado = pedido;
        Valor retorno;
        if (!m_Sessao->Executa("AdministracaoRN", operacao, enviado, retorno, recusa)) {
            return nullptr;
        }
        return retorno.Como<Resposta>();
    }
    // The same of a form: nothing when it was taken.
    template <class Resposta, class Pedido>
    std::optional<ProblemaDaFicha> Salva(const std::string &operacao, const Ref<Pedido> &pedido)
    {
        std::string recusa;
        if (Pede<Resposta>(operacao, pedido, recusa)) {
            return std::nullopt;
        }
        return ProblemaDaFicha{"", recusa};
    }
    const Ref<SessaoServico> &Sessao() const { return m_Sessao; }

  private:
    Ref<SessaoServico> m_Sessao;
};

// A page of records of one kind.
template <class ED> class PaginaDe : public PaginaAdministracao {
  public:
    using PaginaAdministracao::PaginaAdministracao;

    std::vector<std::vector<std::string>> Linhas() const override
    {
        std::vector<std::vector<std::string>> linhas;
        for (const Ref<ED> &registro : m_Registros) {
            linhas.push_back(LinhaDe(*registro));
        }
        return linhas;
    }
    std::string Chave(std::size_t linha) const override { return ChaveDe(*m_Registros.at(linha)); }
    std::optional<std::size_t> Reencontra(const std::string &chave) const override
    {
        for (std::size_t linha = 0; linha < m_Registros.size(); ++linha) {
            if (Chave(linha) == chave) {
                return linha;
            }
        }
        return std::nullopt;
    }

  protected:
    virtual std::vector<std::string> LinhaDe(const ED &registro) const = 0;
    virtual std::string ChaveDe(const ED &registro) const = 0;

    // The answer's list, which is absent when it is empty.
    void Mostra(const ListaDe<ED> &lista)
    {
        m_Registros.clear();
        Acrescenta(lista);
    }
    void Acrescenta(const ListaDe<ED> &lista)
    {
        for (std::int32_t posicao = 1; lista && posicao <= lista->Count(); ++posicao) {
            m_Registros.push_back(lista->Item(posicao));
        }
    }
    // Null when no row is chosen, or one that is not there.
    const ED *Registro(std::optional<std::size_t> linha) const
    {
        return linha && *linha < m_Registros.size() ? m_Registros[*linha].Ponteiro() : nullptr;
    }

  private:
    std::vector<Ref<ED>> m_Registros;
};

inline constexpr std::uint8_t Sim = 1;
inline constexpr std::uint8_t Nao = 2;

// "Ativo" or "Desativado".
std::string Situacao(std::uint8_t ativo);
// The municipalities of the country, in order of name, as "Porto Alegre/RS".
const std::vector<OpcaoDoCampo> &OpcoesDeMunicipio();
// The states.
std::vector<OpcaoDoCampo> OpcoesDeEstado();

} // namespace mesa
