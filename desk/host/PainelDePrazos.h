#pragma once

#include "desk/host/ListaDePrazos.h"
#include "services/Prazos.h"
#include "services/PrazosED.h"
#include "services/SessaoServico.h"

#include <cstdint>
#include <string>
#include <vector>

namespace mesa {

// A number of the panel.
struct EstadoNoPainel {
    EstadoDePrazo Qual = EstadoDePrazo::Valido;
    std::string Nome;
    std::string Icone;
    std::int32_t Quantos = 0;
    std::string Frase; // "Vencido: 12 equipamentos", for who does not see it
};

// A state with so many equipment in it.
EstadoNoPainel NoPainel(EstadoDePrazo estado, std::int32_t quantos);

// A sector, municipality or type with its numbers.
struct GrupoNoPainel {
    std::string Nome;
    std::string Chave;                 // as the services have it
    std::vector<std::int32_t> Quantos; // in the order of the states
    std::int32_t Todos = 0;
};

// A bar of the chart.
struct MesNoPainel {
    std::int32_t Mes = 0; // yyyymm
    std::string Curto;    // "mar"
    std::string Ano;      // "2027" where a year begins, and under the first bar
    std::int32_t Quantas = 0;
    std::string Frase; // "março de 2027: 14 aferições vencem"
};

// The panel of deadlines without its window: what was read last, of what moment and over how many, and what failed. It
// never shows what was read before as if it were of now: a reading that fails leaves nothing but why.
class PainelDePrazos {
  public:
    explicit PainelDePrazos(SessaoDosPrazos sessao) : m_Sessao(std::move(sessao)) {}

    // Reads it anew. False when that failed.
    bool Le();
    // Reads every document in force of the client whole, a few at a time, and keeps which ones are damaged: they count
    // as missing from then on, until the next check. segue: told how far it is. False with the reason in recusa, and
    // what was kept stays.
    bool ConfereDocumentos(std::string &recusa, const Segue &segue = {});
    void Agrupa(AgrupamentoDePrazos por) { m_Por = por; }
    AgrupamentoDePrazos Agrupado() const { return m_Por; }

    // Why nothing could be read, in a sentence; empty when it was.
    const std::string &Impedimento() const { return m_Impedimento; }
    // Of which moment, over how many, and how far the documents were looked at, in sentences.
    const std::string &Resumo() const { return m_Resumo; }
    // What could not be counted, one sentence each.
    const std::vector<std::string> &Falhas() const { return m_Falhas; }
    const std::vector<EstadoNoPainel> &Estados() const { return m_Estados; }
    const std::vector<GrupoNoPainel> &Grupos() const { return m_Grupos; } // none when nothing is grouped
    const std::vector<MesNoPainel> &Meses() const { return m_Meses; }

    // What is behind a number; grupo: of Grupos(), null for all.
    RecorteDePrazos Atras(EstadoDePrazo estado, const GrupoNoPainel *grupo = nullptr) const;
    RecorteDePrazos Atras(const MesNoPainel &mes) const;

    // Titles of the columns of Grupos(): the group, each state, all.
    std::vector<std::string> ColunasDosGrupos() const;

  private:
    // The documents as they were found.
    struct Conferencia {
        std::int32_t DeQuem = 0; // the operator
        Data ComoEm;
        std::int32_t Lidos = 0;
        DocumentosDanificados Danificados;
    };
    void Mostra(const PainelPrazosED &lido);
    std::string DosDocumentos() const;

    SessaoDosPrazos m_Sessao;
    AgrupamentoDePrazos m_Por = AgrupamentoDePrazos::Nada;
    std::string m_Impedimento;
    std::string m_Resumo;
    std::vector<std::string> m_Falhas;
    std::vector<EstadoNoPainel> m_Estados;
    std::vector<GrupoNoPainel> m_Grupos;
    std::vector<MesNoPainel> m_Meses;
    std::int32_t m_Equipamentos = 0;
    Data m_ComoEm;
    Conferencia m_Conferencia;
};

} // namespace mesa
