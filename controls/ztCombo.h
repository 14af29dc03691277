#pragma once

#include "controls/Controle.h"
#include "controls/Digitavel.h"
#include "controls/PesquisaPorLetras.h"
#include "host/IztCombo.h"

#include <vector>

class ztCombo : public Controle<IztCombo>, public Digitavel {
  public:
    struct Item {
        std::string Texto;
        std::string Valor;
    };

    explicit ztCombo(const Origem &origem);

    void Limpa() override;
    void AdicionaItem(const std::string &item) override;
    std::string Valor() const override;
    void DefineValor(const std::string &valor) override;
    std::string Texto() const override;
    std::int16_t IndiceAtual() const override { return m_IndiceAtual; }
    void DefineIndiceAtual(std::int16_t indice) override;
    std::int32_t NroItens() const override { return static_cast<std::int32_t>(m_Itens.size()); }
    bool ComboSomenteLeitura() const override { return m_SomenteLeitura; }
    void DefineComboSomenteLeitura(bool valor) override { Redefine(m_SomenteLeitura, valor); }
    Evento<> &Click() override { return m_Click; }
    Evento<> &Change() override { return m_Change; }

    const std::vector<Item> &Itens() const { return m_Itens; }
    std::int16_t Estilo() const { return m_AjustesCombo.Estilo; }
    // How the person looks for an item by typing. What they typed outlives a change of the items, which may come of it.
    PesquisaPorLetras &Pesquisa() { return m_Pesquisa; }

    // The person chooses the item at a position from 0, or the first of a text.
    bool Escolhe(std::int32_t indice);
    bool EscolheTexto(const std::string &texto);
    // Goes on from what was typed before. False when a key found no item; it is left out then.
    bool Digita(const std::string &texto) override;
    // Starts the search again. The choice stays.
    bool Apaga() override;

    void Conclui() override;

  private:
    void Acrescenta(const std::string &item);
    void Muda(std::int32_t indice);
    bool PodeEscolher() const { return !m_SomenteLeitura && Usavel(); }
    bool VaiEscolher();
    ItensPesquisados ItensParaPesquisa();

    AjustesZtCombo m_AjustesCombo;
    bool m_SomenteLeitura = false;
    std::vector<Item> m_Itens;
    std::int16_t m_IndiceAtual = -1;
    PesquisaPorLetras m_Pesquisa{ItensParaPesquisa()};
    Evento<> m_Click;
    Evento<> m_Change;
};
