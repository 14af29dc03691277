#pragma once

#include "host/DiaEspecificoED.h"
#include "host/EquiptoED.h"
#include "host/LimiteDifED.h"
#include "host/ListaEquiptoED.h"
#include "host/Registro.h"
#include "services/Servicos.h"
#include "tests/services/Motor.h"

#include <map>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

// Straight to the file or the database on the server, past the services: the rows of the last statement, their cells
// joined with "|".
std::vector<std::string> LinhasSql(const std::string &onde, const std::string &comando);

// What came of an operation.
struct Retorno {
    bool Feita = false;
    Valor Resposta;
    std::string Recusa;

    template <class R> Ref<R> Como() const { return Resposta.Como<R>(); }
};

// Passwords of a test are cheap to try.
inline constexpr mesa::CustoDaSenha CustoDeTeste{1, 8192};

// A registry in a file of its own, in a directory that goes away with the test. Its clients are Autoridade Estadual de
// Trânsito (sectors Fiscalização and Metrologia), of the state RS, and Autoridade Municipal de Trânsito (Operações), of
// SP.
//
// Its users come to be when they first sign in: ana, bia and caio may do everything for Autoridade Estadual de
// Trânsito, bruno only looks there, inês only includes, alice only changes, eva only deactivates, carla may do nothing,
// davi is tied to Porto Alegre; elisa may do everything for Autoridade Municipal de Trânsito. marta only administers,
// all there is; saulo may do everything that there is, and tadeu looks after tables only. Their passwords are "senha
// de" and the name.
class RegistroDeTeste {
  public:
    RegistroDeTeste();

    // File, or connection text where the program runs on the networked engine.
    const std::string &Caminho() const { return m_Lugar->Onde(); }
    mesa::Servicos &Aberto() { return *m_Servicos; }
    // Closes the file, with all sessions, and opens it again.
    void Reabre();
    void Fecha();

    // Another opening of the same file, as of another desk.
    Ref<mesa::Servicos> AbreOutro();

    // A new session of the user, at the station "estação de teste".
    Ref<mesa::SessaoServico> Sessao(const std::string &usuario);
    // Makes the user known without signing in.
    void Cadastra(const std::string &usuario);

    // A street, of Porto Alegre when no municipality is told, and its code; one that is offered no more. The same of
    // the layouts. By marta.
    std::int32_t IncluiRua(const std::string &nome, const std::string &bairro = "Centro",
                           const std::string &cep = "90010000", std::int32_t codMunic = 4314902);
    void DesativaRua(std::int32_t codigo);
    void IncluiLayout(const std::string &nome);
    void DesativaLayout(const std::string &nome);

    // The clock: 20/11/2026 10:00:00 at first, and UTC.
    Data Relogio;
    std::int32_t Fuso = 0; // minutes that it is ahead of UTC
    void PassaSegundos(std::int32_t n);

    // Writes a row that was changed straight in the file down in the history, as a migration does.
    void Historia(const std::string &tabela, std::int64_t chave);

    // The first row, or nothing.
    std::string Sql(const std::string &comando);

  private:
    std::unique_ptr<motor::RegistroVazio> m_Lugar;
    Ref<mesa::Servicos> m_Servicos;
    std::map<std::string, bool> m_Cadastrados;
};

// What changes a row hands back the mark with which this session last opened the row, unless it has one of its own;
// what deactivates one, the mark that the list would show now.
Retorno Pede(const Ref<mesa::SessaoServico> &sessao, const std::string &metodo, const Ref<Objeto> &pedido,
             const std::string &classeRN = "EquiptoRN");

// The record, in which one member or two are written.
template <class R, class T>
Ref<R> Com(const Ref<R> &registro, Campo<T> R::*membro, const std::type_identity_t<T> &valor)
{
    (*registro).*membro = valor;
    return registro;
}
template <class R, class T, class U>
Ref<R> Com(const Ref<R> &registro, Campo<T> R::*membro, const std::type_identity_t<T> &valor, Campo<U> R::*outro,
           const std::type_identity_t<U> &seu)
{
    return Com(Com(registro, membro, valor), outro, seu);
}

// A whole equipment of Autoridade Estadual de Trânsito, not yet sent.
Ref<EquiptoED> EquipamentoDe(const std::string &codigo);
Ref<SensorED> SensorDe(std::int16_t numero);
Ref<AfericaoED> AfericaoDe(const std::string &numero, Data de, Data ate, double documento = 0);
// The equipment as one of another type, with no limits and the meter of that type.
Ref<EquiptoED> DoTipo(const Ref<EquiptoED> &equipto, const std::string &tipo, std::uint8_t medidor = 1);
// Records of which only the internal number is written.
inline constexpr auto SoNumero = [](std::int32_t n) { return Com(Novo<EquiptoED>(), &EquiptoED::NroIntEquip, n); };
inline constexpr auto SoSensor = [](std::int32_t n) { return Com(Novo<SensorED>(), &SensorED::NroIntSensor, n); };
inline constexpr auto SoAfericao = [](double n) { return Com(Novo<AfericaoED>(), &AfericaoED::NroIntAfericao, n); };
inline constexpr auto SoLimite = [](std::int32_t n) { return Com(Novo<LimiteDifED>(), &LimiteDifED::NroInt, n); };
inline constexpr auto SoDia = [](std::int32_t n) { return Com(Novo<DiaEspecificoED>(), &DiaEspecificoED::NroInt, n); };
// A new limit of 40 km/h and, with speed 0, a prohibited hour; one of 40 km/h for a day of the calendar.
Ref<LimiteDifED> LimiteDe(std::int32_t equipamento, std::uint8_t dia, std::int32_t inicio, std::int32_t fim,
                          std::int16_t velocidade = 40);
Ref<DiaEspecificoED> DiaDe(std::int32_t equipamento, Data dia, std::int32_t inicio, std::int32_t fim);
// Adds to a list that may not be there yet; gives what it was added to.
Ref<EquiptoED> Poe(const Ref<EquiptoED> &equipto, const Ref<SensorED> &sensor);
Ref<SensorED> Poe(const Ref<SensorED> &sensor, const Ref<AfericaoED> &afericao);
// The limits as "alteraListaLimitesDif" takes them.
Ref<EquiptoED> ListaDeLimites(const std::vector<Ref<LimiteDifED>> &limites);

// Stores one document for those of the new calibrations that have none; gives what it was given.
Ref<EquiptoED> Documenta(const Ref<mesa::SessaoServico> &sessao, const Ref<EquiptoED> &equipto);
// Sends it with "inclui", and its calibrations with a document; its number. Any refusal fails the test.
std::int32_t Inclui(const Ref<mesa::SessaoServico> &sessao, const Ref<EquiptoED> &equipto);
// The same of the equipment R-001, with one sensor for each list of calibrations.
std::int32_t IncluiComSensores(const Ref<mesa::SessaoServico> &sessao,
                               const std::vector<std::vector<Ref<AfericaoED>>> &sensores);
Ref<EquiptoED> Abre(const Ref<mesa::SessaoServico> &sessao, std::int32_t nroIntEquip);

// What was done; any refusal fails the test.
Retorno Exigido(const Retorno &retorno);

// A PDF of one empty page, of that many bytes when it would be smaller; `marca` stands in it and makes it one of its
// own.
Bytes Pdf(const std::string &marca, std::size_t tamanho = 0);
double GuardaPdf(const Ref<mesa::SessaoServico> &sessao, const std::string &marca, std::size_t tamanho = 0);
