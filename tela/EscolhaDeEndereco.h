#pragma once

#include "controls/PesquisaPorLetras.h"
#include "controls/ztEndereco.h"
#include "tela/ILogradouros.h"
#include "tela/Partes.h"

#include <cstdint>
#include <string>
#include <vector>

// What the pickers of a screen remember for the next one.
struct MemoriaDeEnderecos : public Objeto {
    std::string_view NomeTipo() const override { return "MemoriaDeEnderecos"; }

    std::int32_t CodMunic = 0; // that the person chose last; 0 before the first
};

// What the person does in an address picker until the address is entered: chooses the municipality, types the street or
// its postal code, takes one of those found, adds the house number and the complement, and uses the address.
class EscolhaDeEndereco {
  public:
    static constexpr std::size_t MaximoDeSugestoes = 20;
    static constexpr std::int32_t DigitosDoNumero = 6;
    static constexpr std::int32_t TamanhoDoComplemento = 30; // characters

    EscolhaDeEndereco(Ref<ztEndereco> controle, Ref<ILogradouros> logradouros, Ref<MemoriaDeEnderecos> memoria);
    EscolhaDeEndereco(const EscolhaDeEndereco &) = delete;
    EscolhaDeEndereco &operator=(const EscolhaDeEndereco &) = delete;

    // What is shown.

    const std::vector<MunicipioDeEndereco> &Municipios() const { return m_Municipios; }
    std::int32_t CodMunic() const { return m_CodMunic; } // 0: none chosen
    // Of the one chosen among them, from 0; -1 for none.
    std::int32_t LugarDoMunicipio() const;
    const std::string &Via() const { return m_Via; }
    const std::string &Numero() const { return m_Numero; }
    const std::string &Complemento() const { return m_Complemento; }
    // The streets found, as lines to choose from.
    const std::vector<std::string> &Sugestoes() const { return m_Sugestoes; }
    // The address that the control holds, in words; while the fields hold another one, that it is not used yet.
    std::string Atual() const;
    // That what was typed of a street finds none, in words; empty otherwise.
    std::string Aviso() const;
    // Why characters that the person typed last were left out; empty when none was.
    const std::string &Recusa() const { return m_Recusa; }
    bool MunicipioEditavel() const { return m_Controle->MunicipioEditavel(); }
    // Nothing can be typed, and the two buttons are not seen.
    bool SomenteLeitura() const { return m_Controle->ReadOnly(); }
    bool PodeUsar() const { return !SomenteLeitura() && m_Escolhido.Codigo > 0; }

    // Takes over an address that the form has given the control since.
    void Acompanha();

    // What the person does.

    void EscolheMunicipio(std::int32_t codMunic);
    // By the letters that are typed.
    PesquisaPorLetras &PesquisaDeMunicipios() { return m_PesquisaDeMunicipios; }
    void DigitaVia(const std::string &texto);
    // Where the keyboard goes: on to the number, once a street was taken.
    Parte EscolheSugestao(const std::string &sugestao);
    // Take what there is room for, and of a number its digits alone.
    void DigitaNumero(const std::string &texto);
    void DigitaComplemento(const std::string &texto);
    // Enters the address in the control. False when there is none to use, or the control does not take it.
    bool Usa();
    bool Limpa();

  private:
    void MudaMunicipio(std::int32_t codMunic);
    void Procura();
    // Whether the fields hold something that the control does not.
    bool Pendente() const;
    void Toma(const Logradouro &logradouro);
    // What of the control's address was taken over already.
    bool Conhecido() const;
    void Conhece();

    Ref<ztEndereco> m_Controle;
    Ref<ILogradouros> m_Logradouros;
    Ref<MemoriaDeEnderecos> m_Memoria;
    const std::vector<MunicipioDeEndereco> &m_Municipios;
    std::int32_t m_CodMunic;
    PesquisaPorLetras m_PesquisaDeMunicipios;
    std::string m_Via;
    std::string m_Numero;
    std::string m_Complemento;
    std::string m_Recusa;
    std::vector<Logradouro> m_Achados;
    std::vector<std::string> m_Sugestoes;
    Logradouro m_Escolhido;
    Endereco::Dados m_Conhecido;
};
