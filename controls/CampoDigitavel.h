#pragma once

#include "controls/Controle.h"
#include "controls/Digitavel.h"
#include "controls/TextoCampo.h"
#include "host/Texto.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

// A control that holds one typed text, which raises Change whenever it becomes another one.
template <class Contrato> class CampoDigitavel : public Controle<Contrato>, public Digitavel {
  public:
    std::string Text() const override { return m_Texto->Texto(); }
    void DefineText(const std::string &valor) override
    {
        Aplica([&] {
            m_Texto->Escreve(valor);
            m_Cursor = m_Texto->Fim();
        });
    }
    Evento<> &Change() override { return m_Change; }

    // The field does not take what the person types, though they can go to it.
    bool SomenteLeitura() const { return m_SomenteLeitura; }
    // Position, in characters from 0, at which the next key goes.
    std::size_t Cursor() const { return m_Cursor; }

    // Why characters that the person typed last were left out, in words for them; empty when none was.
    const std::string &Recusa() const { return m_Recusa; }

    bool Digita(const std::string &texto) override { return Edita(m_Texto->Fim(), 0, texto); }
    bool Apaga() override { return Edita(0, Len(m_Texto->Texto()), {}); }
    // The person deletes n characters from a position and types there. Characters that the field does not take are
    // left out, one by one, as the keys of a keyboard would be.
    bool Edita(std::size_t posicao, std::size_t n, const std::string &texto)
    {
        Ref<IControle> vivo = this->Vivo();
        if (!PodeDigitar() || !this->Foco() || !PodeDigitar()) {
            return false;
        }
        m_Recusa.clear();
        std::vector<std::string> recusados; // not taken, each once
        bool faltaLugar = false;
        const bool inteiro = m_Texto->EInteiro(texto);
        m_Cursor = inteiro ? 0 : posicao;
        Aplica([&] { m_Texto->Retira(m_Cursor, inteiro ? Len(m_Texto->Texto()) : n); });
        const std::string entendido = m_Texto->Entende(texto);
        for (std::string_view resto = entendido; !resto.empty();) {
            if (!PodeDigitar()) { // what the key before raised has closed the field
                return false;
            }
            const std::string carater = ::Left(resto, 1);
            Entrada entrada = Entrada::Entrou;
            Aplica([&] { entrada = m_Texto->Insere(m_Cursor, carater); });
            faltaLugar = faltaLugar || entrada == Entrada::SemLugar;
            if (entrada == Entrada::NaoAceito && recusados.size() < MaximoDeRecusados &&
                std::ranges::find(recusados, carater) == recusados.end()) {
                recusados.push_back(carater);
            }
            resto.remove_prefix(carater.size());
        }
        if (faltaLugar || !recusados.empty()) {
            m_Recusa = m_Texto->Dica(recusados);
        }
        return true;
    }

  protected:
    CampoDigitavel(const Origem &origem, std::unique_ptr<TextoCampo> texto)
        : Controle<Contrato>(origem),
          m_Texto(std::move(texto))
    {
    }

    void DefineSomenteLeitura(bool valor) { this->Redefine(m_SomenteLeitura, valor); }
    bool PodeDigitar() const { return !m_SomenteLeitura && this->Usavel(); }

    // Lets the text change and tells it when it did.
    template <class Mudanca> void Aplica(Mudanca &&mudanca)
    {
        Ref<IControle> vivo = this->Vivo();
        const std::string antes = m_Texto->Texto();
        mudanca();
        if (m_Texto->Texto() != antes) {
            this->Mudou().dispara();
            m_Change.dispara();
        }
    }

    std::unique_ptr<TextoCampo> m_Texto;

  private:
    static constexpr std::size_t MaximoDeRecusados = 5; // that are named

    bool m_SomenteLeitura = false;
    std::size_t m_Cursor = 0;
    std::string m_Recusa;
    Evento<> m_Change;
};
