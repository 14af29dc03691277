#pragma once

#include "desk/host/EquipamentosRecentes.h"
#include "services/Prazos.h"
#include "services/PrazosED.h"
#include "services/Segue.h"
#include "services/SessaoServico.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace mesa {

// The session of who is at work now; Nothing when nobody is.
using SessaoDosPrazos = std::function<Ref<SessaoServico>()>;

enum class AgrupamentoDePrazos : std::uint8_t { Nada, Setor, Municipio, Tipo };

// Documents that a check found damaged.
using DocumentosDanificados = std::vector<Ref<DocumentoPrazoED>>;
// As the services take them.
ListaDe<DocumentoPrazoED> ComoLista(const DocumentosDanificados &danificados);

// Which deadlines a list has.
struct RecorteDePrazos {
    std::string Titulo;                  // of the list
    std::optional<EstadoDePrazo> Estado; // none: calibrations that have not ended
    std::int32_t Mes = 0;                // yyyymm in which they end, of those; 0 for all
    AgrupamentoDePrazos Por = AgrupamentoDePrazos::Nada;
    std::string Grupo;
    DocumentosDanificados Danificados; // count as missing
    Data ComoEm; // of the number behind which the list is, so that both are of one day; empty: now
};

// Name of the state's icon.
const std::string &IconeDoPrazo(EstadoDePrazo estado);
// The group's name for people.
std::string NomeDoGrupo(AgrupamentoDePrazos por, const std::string &chave);
// "março de 2027", "mar".
std::string NomeDoMes(std::int32_t mes);
std::string MesCurto(std::int32_t mes);

// A list behind a number of the panel, without its window.
class ListaDePrazos {
  public:
    static constexpr std::size_t LinhasPorVez = 1000;

    ListaDePrazos(SessaoDosPrazos sessao, RecorteDePrazos recorte)
        : m_Sessao(std::move(sessao)),
          m_Recorte(std::move(recorte))
    {
    }

    static const std::vector<std::string> &Colunas();

    const std::string &Titulo() const { return m_Recorte.Titulo; }
    // Reads the list from its beginning, up to so many rows; the same as of now; as many more; or all that are left.
    // What is read besides is of the day of the beginning. segue: told how far it is. False with the reason in recusa:
    // then the list is the one that was there, or what was read besides until then is there too.
    bool Carrega(std::string &recusa, const Segue &segue = {});
    bool Atualiza(std::string &recusa, const Segue &segue = {});
    bool CarregaMais(std::string &recusa, const Segue &segue = {});
    bool CarregaResto(std::string &recusa, const Segue &segue = {});
    bool HaMais() const { return m_HaMais; }
    // By a column, from 0: days and numbers as such, and texts without accents and case. Of what was read.
    void Ordena(std::size_t coluna, bool crescente);

    // A row as texts under Colunas().
    std::vector<std::string> Linha(std::size_t linha) const;
    std::size_t Quantas() const { return m_Prazos.size(); }
    // Name of the icon that stands with the last of those texts.
    const std::string &Icone(std::size_t linha) const;
    // Where the row leads.
    EquipamentoRecente Equipamento(std::size_t linha) const;
    // How many rows there are, of which day, and whether there are more.
    std::string Nota() const;
    // The rows with a last day as a calendar file of the moment of which they are; empty when there are none.
    std::string Calendario() const;
    bool TemCalendario() const;

  private:
    bool LeAte(std::size_t quantas, const Segue &segue, std::string &recusa);

    SessaoDosPrazos m_Sessao;
    RecorteDePrazos m_Recorte;
    std::vector<Ref<PrazoED>> m_Prazos;
    std::int32_t m_DepoisDe = 0;
    std::uint8_t m_TrabFoto = 0;
    bool m_HaMais = false;
    Data m_ComoEm;
    std::int32_t m_Fuso = 0;
    std::string m_Registro;
};

} // namespace mesa
