#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

// The calls that a journey makes to its host, in their order, each under the procedures that lead to it. Written as a
// tree, two blanks deeper for each level:
//
//   Geral.ClickMenu
//     COEquipamentos.CarregaJanela
//       - Plataforma.Carrega(frmLista)          a call: how its line in the trail begins
//       - Host.Controles|Controles.Cria *       one or more of these
//       @remota lista2                          the fragment "remota", with lista2 for each $1 in it
//       frmLista.Icone > - Plataforma.TemIcone  what stands alone below another may stand on its line
//   pessoa                                      here the person acts, so no fault gets further up
//
// Procedures are those of DesfechoDe; one without an end of its own for faults is left out.
class VarreduraCaminho {
  public:
    // Where the fault of a call ends.
    struct Destino {
        bool Ignorada = false;
        std::string Caudas;   // what is added to the call's name
        std::string Contexto; // of the error box; empty: the fault reaches who called
    };

    explicit VarreduraCaminho(const std::string &arvore);

    // What is wrong with the text of the tree; empty when nothing is.
    const std::vector<std::string> &Defeitos() const noexcept { return m_Defeitos; }
    // One end for each call of the trail; no value, and why in `motivo`, when the trail is not that of the tree.
    std::optional<std::vector<Destino>> Confronta(const std::vector<std::string> &trilha, std::string &motivo) const;

  private:
    struct Folha {
        std::vector<std::string> Inicios;
        bool Repete = false;
        Destino Fim;
    };

    // `fundo`: how many procedures stand above what is read.
    void Le(const std::string &arvore, std::size_t fundo, const std::string &parametro);
    void Procedimento(const std::string &nome);
    void Chamada(std::string texto);
    Destino DestinoAtual();

    std::vector<Folha> m_Folhas;
    std::vector<std::string> m_Pilha;
    std::vector<std::string> m_Defeitos;
};
