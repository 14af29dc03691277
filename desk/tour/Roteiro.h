#pragma once

#include "desk/tour/Condutor.h"
#include "desk/tour/ServidorAoLado.h"

#include <QString>

#include <filesystem>

namespace mesa {

// The whole job of an operator, step by step, on a registry of its own: what is on the screen and in the database is
// checked after each step. Raises Diferenca when anything differs.
class Roteiro {
  public:
    // registro: file of the registry that the windows work on. pasta: where pictures and the account go. servidor: at
    // which they do, chosen by the person; nothing: the registry is on this computer. Outlives this object.
    Roteiro(std::filesystem::path registro, const QString &pasta, ServidorAoLado *servidor);

    // To be run in a thread of its own, while the windows' thread shows the sign-in.
    void Percorre();
    // One line that says what was verified.
    QString Resumo() const;

  private:
    void PercorreTudo();
    void EscolheServidor();
    void Entra(const QString &usuario);
    void Pesquisa();
    void IncluiEquipamento();
    void IncluiSensor();
    void IncluiAfericoes();
    void Salva();
    void Limites();
    void DiaEspecifico();
    void HorarioProibido();
    void DesativaEReativa();
    void ConsultaParaAutuacao();
    void PrazosNoPainel();
    void ServidorQueMorreNumaGravacao();
    void TrocaDeUsuario();

    void PreencheAfericao(const QString &numero, const QString &verificacao, const QString &vencimento);
    void ProcuraPeloCodigo(const QString &codigo);
    // First value of the first row of a query on the registry's file.
    QString NoBanco(const QString &sql) const;
    QString FazPDF() const;

    std::filesystem::path m_Registro;
    QString m_Pasta;
    ServidorAoLado *m_Servidor;
    Condutor m_Condutor;
};

} // namespace mesa
