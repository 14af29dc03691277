#pragma once

#include "host/Falha.h"
#include "host/Ref.h"
#include "tests/support/TextoLog.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// What the objects of the scripted host share: the log of the module's calls in their order, the failures that a test
// has programmed, the problems seen, and weak references to every object created. It outlives the host when the module
// keeps an object of it too long.
class RegistroChamadas {
  public:
    // A line of the log, to which the call adds its result when it ends.
    class Linha {
      public:
        explicit Linha(std::shared_ptr<std::string> texto) : m_Texto(std::move(texto)) {}
        // Adds " -> " and the result, which it returns.
        template <class T> T Resultado(T resultado) const
        {
            *m_Texto += " -> " + TextoLog(resultado);
            return resultado;
        }
        void Acrescenta(std::string_view texto) const { *m_Texto += texto; }

      private:
        std::shared_ptr<std::string> m_Texto;
    };

    // A call, "nome(argumentos)". Raises the failure programmed for it, after logging it with " !! number" at its end.
    template <class... Args> Linha Chama(const std::string &nome, const Args &...args)
    {
        return Anota(nome, nome + "(" + ArgumentosLog(args...) + ")");
    }
    // The same with the arguments as text.
    Linha ChamaTexto(const std::string &nome, const std::string &argumentos)
    {
        return Anota(nome, nome + "(" + argumentos + ")");
    }
    // Reading a property, "nome", and writing one, "nome := valor".
    Linha Le(const std::string &nome) { return Anota(nome, nome); }
    template <class T> Linha Escreve(const std::string &nome, const T &valor)
    {
        return Anota(nome, nome + " := " + TextoLog(valor));
    }
    // A call that is neither logged nor counted; it can be made to fail by its name.
    void Passa(std::string_view nome);
    // A line about something that the module did to an object that is no host object; not counted, never fails.
    void Nota(std::string texto);

    std::vector<std::string> Linhas() const;
    // Every call in its order: the lines of the logged ones, the names alone of those that are not logged.
    std::vector<std::string> Trilha() const;
    void Limpa()
    {
        m_Linhas.clear();
        m_Trilha.clear();
    }
    // Logged calls so far, forgotten lines included.
    std::int32_t Chamadas() const noexcept { return m_Chamadas; }

    // The n-th logged call from now on raises.
    void FalhaNaChamada(std::int32_t n, std::int32_t numero, std::string descricao);
    // The n-th call from now on raises, logged or not.
    void FalhaNoPasso(std::int32_t n, std::int32_t numero, std::string descricao);
    // Runs before each call, logged or not.
    std::function<void()> AntesDaChamada;
    // The same for the calls of all hosts, with the call's name.
    static inline void (*AoChamar)(std::string_view nome) = nullptr;
    // The n-th call of that name from now on raises.
    void FalhaEm(std::string nome, std::int32_t n, std::int32_t numero, std::string descricao);
    // How many programmed failures were raised.
    std::int32_t FalhasDisparadas() const noexcept { return m_FalhasDisparadas; }
    const std::string &ChamadaQueFalhou() const noexcept { return m_ChamadaQueFalhou; }
    // The names for which FalhaEm waits in vain.
    std::vector<std::string> FalhasPendentes() const;

    void Problema(std::string texto) { m_Problemas.push_back(std::move(texto)); }
    const std::vector<std::string> &Problemas() const noexcept { return m_Problemas; }

    // Remembers an object, to tell later whether it still lives. `donos` references of it belong to the host.
    template <class T> Ref<T> Vigia(Ref<T> objeto, long donos = 0)
    {
        m_Vigiados.push_back({std::string(objeto->NomeTipo()), objeto->weak_from_this(), donos});
        return objeto;
    }
    // Whether the object is among those that are watched.
    bool Vigiado(const Objeto &objeto) const noexcept;
    // Classes of the objects that somebody else than the host still holds.
    std::vector<std::string> Vivos() const;

  private:
    struct FalhaProgramada {
        enum class Alvo : std::uint8_t { Nome, Chamada, Passo } Tipo; // a name, any logged call, any call at all
        std::string Nome;
        std::int32_t Faltam;
        std::int32_t Numero;
        std::string Descricao;
    };
    struct ObjetoVigiado {
        std::string Tipo;
        std::weak_ptr<const Objeto> Alvo;
        long Donos;
    };

    Linha Anota(const std::string &nome, std::string texto);
    void Confere(std::string_view nome, const std::shared_ptr<std::string> &linha);

    std::vector<std::shared_ptr<std::string>> m_Linhas;
    std::vector<std::shared_ptr<std::string>> m_Trilha;
    std::int32_t m_Chamadas = 0;
    std::vector<FalhaProgramada> m_Falhas;
    std::int32_t m_FalhasDisparadas = 0;
    std::string m_ChamadaQueFalhou;
    std::vector<std::string> m_Problemas;
    std::vector<ObjetoVigiado> m_Vigiados;
};

using RefRegistro = std::shared_ptr<RegistroChamadas>;
