#pragma once

#include "desk/services/Servicos.h"
#include "host/EquiptoED.h"
#include "host/ListaEquiptoED.h"
#include "host/Registro.h"

#include <QTemporaryDir>

#include <map>
#include <string>
#include <vector>

// What came of an operation.
struct Retorno {
    bool Feita = false;
    Valor Resposta;
    std::string Recusa;

    template <class R> Ref<R> Como() const { return Resposta.Como<R>(); }
};

// A registry in a file of its own, in a directory that goes away with the test. Its clients are DETRAN/RS (sectors
// Fiscalização and Metrologia) and EPTC (Operações).
//
// Its users come to be when they first sign in: ana, bia and caio may do everything for DETRAN/RS, bruno only looks
// there, inês only includes, alice only changes, eva only deactivates, carla may do nothing, davi is tied to Porto
// Alegre; elisa may do everything for EPTC.
class RegistroDeTeste {
  public:
    RegistroDeTeste();

    std::string Caminho() const { return m_Diretorio.filePath("registro.db").toStdString(); }
    mesa::Servicos &Aberto() { return *m_Servicos; }
    // Closes the file, with all sessions, and opens it again.
    void Reabre();
    void Fecha();

    // A new session of the user.
    Ref<mesa::SessaoServico> Sessao(const std::string &usuario);
    // Makes the user known without signing in.
    void Cadastra(const std::string &usuario);

    // The clock: 20/11/2026 10:00:00 at first.
    Data Relogio;
    void PassaSegundos(std::int32_t n);

    // Straight to the file, past the services: the first column of the first row.
    std::string Sql(const std::string &comando);

  private:
    QTemporaryDir m_Diretorio;
    Ref<mesa::Servicos> m_Servicos;
    std::map<std::string, bool> m_Cadastrados;
};

Retorno Pede(const Ref<mesa::SessaoServico> &sessao, const std::string &metodo, const Ref<Objeto> &pedido,
             const std::string &classeRN = "EquiptoRN");

// A whole equipment of DETRAN/RS, not yet sent.
Ref<EquiptoED> EquipamentoDe(const std::string &codigo);
Ref<EquiptoED> SoNumero(std::int32_t nroIntEquip);
Ref<SensorED> SensorDe(std::int16_t numero);
Ref<AfericaoED> AfericaoDe(const std::string &numero, Data de, Data ate, double documento = 0);
// Adds to a list that may not be there yet.
void Poe(const Ref<EquiptoED> &equipto, const Ref<SensorED> &sensor);
void Poe(const Ref<SensorED> &sensor, const Ref<AfericaoED> &afericao);

// Sends it with "inclui"; its number. Any refusal fails the test.
std::int32_t Inclui(const Ref<mesa::SessaoServico> &sessao, const Ref<EquiptoED> &equipto);
// The same of the equipment R-001, with one sensor for each list of calibrations.
std::int32_t IncluiComSensores(const Ref<mesa::SessaoServico> &sessao,
                               const std::vector<std::vector<Ref<AfericaoED>>> &sensores);
Ref<EquiptoED> Abre(const Ref<mesa::SessaoServico> &sessao, std::int32_t nroIntEquip);

// A small document that passes for PDF; `marca` makes it one of its own.
Bytes Pdf(const std::string &marca, std::size_t tamanho = 0);
double GuardaPdf(const Ref<mesa::SessaoServico> &sessao, const std::string &marca);
