#pragma once

#include "host/IztCombo.h"
#include "windows/automation/Tardio.h"

#include <cstdint>
#include <string>

namespace nativo {

// A control of the component's form as the host has it: by name and late binding. What no service of the host does with
// one is a member that it lacks.
template <class Contrato> class ControleDistante : public Contrato {
  public:
    explicit ControleDistante(const Com<IDispatch> &objeto)
        : m_Tardio(objeto, Lado::Hospedeiro),
          m_Nome(m_Tardio.Chama<std::string>("Name")),
          m_Indice(m_Tardio.Chama<std::int16_t>("Index"))
    {
    }

    std::string_view NomeTipo() const override { return "Control"; }
    const std::string &Nome() const override { return m_Nome; }
    std::int16_t Indice() const override { return m_Indice; }
    bool Enabled() const override { return m_Tardio.Chama<bool>("Enabled"); }
    void DefineEnabled(bool valor) override { m_Tardio.Escreve("Enabled", valor); }
    bool Visible() const override { return m_Tardio.Chama<bool>("Visible"); }
    void DefineVisible(bool valor) override { m_Tardio.Escreve("Visible", valor); }
    void SetFocus() override { m_Tardio.Chama("SetFocus"); }

    EspecieControle Especie() const override { Falta(); }
    std::string Caption() const override { Falta(); }
    void DefineCaption(const std::string &) override { Falta(); }
    std::string Rotulo() const override { Falta(); }
    void DefineRotulo(const std::string &) override { Falta(); }
    Ref<IControle> Container() const override { Falta(); }
    std::int16_t Pagina() const override { Falta(); }
    std::int32_t Left() const override { Falta(); }
    void DefineLeft(std::int32_t) override { Falta(); }
    std::int32_t Top() const override { Falta(); }
    void DefineTop(std::int32_t) override { Falta(); }
    std::int32_t Width() const override { Falta(); }
    void DefineWidth(std::int32_t) override { Falta(); }
    std::int32_t Height() const override { Falta(); }
    void DefineHeight(std::int32_t) override { Falta(); }
    std::int16_t TabIndex() const override { Falta(); }
    void DefineTabIndex(std::int16_t) override { Falta(); }

  protected:
    [[noreturn]] static void Falta() { throw Falha(NumeroFalha::MembroInexistente); }

    Tardio m_Tardio;

  private:
    std::string m_Nome;
    std::int16_t m_Indice;
};

// A combo that the host fills.
class ComboDistante : public ControleDistante<IztCombo> {
  public:
    using ControleDistante::ControleDistante;

    void Limpa() override { m_Tardio.Chama("Limpa"); }
    void AdicionaItem(const std::string &item) override { m_Tardio.Chama("AdicionaItem", item); }
    std::string Valor() const override { return DeVariante<std::string>(m_Tardio.Padrao().Bruta()); }
    void DefineValor(const std::string &valor) override { m_Tardio.Escreve("Valor", valor); }
    std::string Texto() const override { return m_Tardio.Chama<std::string>("Texto"); }
    std::int16_t IndiceAtual() const override { return m_Tardio.Chama<std::int16_t>("IndiceAtual"); }
    void DefineIndiceAtual(std::int16_t indice) override { m_Tardio.Escreve("IndiceAtual", indice); }
    std::int32_t NroItens() const override { return m_Tardio.Chama<std::int32_t>("NroItens"); }
    bool ComboSomenteLeitura() const override { return m_Tardio.Chama<bool>("ComboSomenteLeitura"); }
    void DefineComboSomenteLeitura(bool valor) override { m_Tardio.Escreve("ComboSomenteLeitura", valor); }
    Evento<> &Click() override { Falta(); }
    Evento<> &Change() override { Falta(); }
};

} // namespace nativo
