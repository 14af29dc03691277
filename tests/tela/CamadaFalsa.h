#pragma once

#include "tela/ICamada.h"

#include "tests/controls/Tela.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

class CamadaFalsa;

class JanelaFalsa : public IJanela {
  public:
    JanelaFalsa(CamadaFalsa &camada, std::string nome, const Ref<IForm> &form = nullptr)
        : m_Camada(camada),
          m_Nome(std::move(nome)),
          m_Form(form)
    {
    }
    std::string_view NomeTipo() const override { return m_Nome; }
    void Mostra() override { Anota("mostra"); }
    void MostraEEspera() override;
    void ParaFrente() override { Anota("para a frente"); }
    void Destina(TipoDeJanela tipo, const Ref<IJanela> &dono) override;
    void DefineTexto(const std::string &texto) override { Anota("texto " + texto); }
    void Retira() override
    {
        Anota("retira");
        m_Retirada = true;
    }

  private:
    void Anota(const std::string &oQue, const std::string &como = {});

    CamadaFalsa &m_Camada;
    std::string m_Nome;
    RefFraca<IForm> m_Form;
    bool m_Retirada = false;
};

// A screen that is a list of what was done to it. The person in front of a modal window does what was arranged for it.
class CamadaFalsa : public ICamada {
  public:
    std::string_view NomeTipo() const override { return "CamadaFalsa"; }

    Textos Anotados;
    std::map<std::string, PedidosDaJanela> Pedidos;
    std::map<std::string, std::function<void()>> NaModal;
    bool Responde = false;
    bool AbrePDF = true;
    std::optional<std::string> ArquivoEscolhido = "C:\\a.pdf";
    std::function<void()> Fechou;
    Ref<IJanela> Visor; // the last one

    Ref<IJanela> FazJanela(const Ref<IForm> &form, TipoDeJanela tipo, const Ref<IJanela> &dono,
                           const PedidosDaJanela &pedidos, const DistincaoDeJanela &qual) override
    {
        const std::string nome(form->NomeTipo());
        Anotados.push_back("faz " + nome + " " + NomeDe(tipo) + Sobre(dono) + (form->Visible() ? "" : " ainda oculto") +
                           (qual.Chave.empty() ? "" : " [" + qual.Chave + ": " + qual.Texto + "]"));
        Pedidos[nome] = pedidos;
        return Novo<JanelaFalsa>(*this, nome, form);
    }
    void MostraEspera(bool espera) override { Anotados.emplace_back(espera ? "espera" : "não espera"); }
    void ProcessaMensagens() override { Anotados.emplace_back("mensagens"); }
    std::int32_t LarguraTela() const override { return 1920; }
    std::int32_t AlturaTela() const override { return 1080; }
    bool PerguntaSimNao(const std::string &texto, const std::string &titulo, bool padraoSim,
                        const Ref<IJanela> &dono) override
    {
        Anotados.push_back("pergunta " + titulo + ": " + texto + (padraoSim ? " [sim]" : " [não]") + Sobre(dono));
        return Responde;
    }
    void MostraCaixa(TipoDeCaixa tipo, const std::string &texto, const std::string &titulo, const std::string &detalhes,
                     const Ref<IJanela> &dono) override
    {
        const char *tipos[] = {"informa", "avisa", "erro"};
        Anotados.push_back(std::string(tipos[static_cast<int>(tipo)]) + " " + titulo + ": " + texto +
                           (detalhes.empty() ? "" : " (" + detalhes + ")") + Sobre(dono));
    }
    std::optional<std::string> EscolheArquivo(const std::vector<FiltroDeArquivo> &filtros, const std::string &titulo,
                                              const Ref<IJanela> &dono) override
    {
        std::string pares;
        for (const FiltroDeArquivo &filtro : filtros) {
            pares += " <" + filtro.Texto + "=" + filtro.Padrao + ">";
        }
        Anotados.push_back("arquivo " + titulo + pares + Sobre(dono));
        return ArquivoEscolhido;
    }
    Ref<IJanela> FazVisor(const std::string &caminho, const Ref<IJanela> &dono,
                          const std::function<void()> &fechou) override
    {
        Anotados.push_back("pdf " + caminho + Sobre(dono));
        Fechou = fechou;
        if (!AbrePDF) {
            return nullptr;
        }
        Visor = Novo<JanelaFalsa>(*this, caminho);
        return Visor;
    }
    void MostraAjuda(const std::string &topico, const Ref<IJanela> &dono) override
    {
        Anotados.push_back("ajuda " + topico + Sobre(dono));
    }

    static std::string NomeDe(TipoDeJanela tipo)
    {
        const char *tipos[] = {"filha", "solta", "modal"};
        return tipos[static_cast<int>(tipo)];
    }
    static std::string Sobre(const Ref<IJanela> &dono)
    {
        return dono ? " sobre " + std::string(dono->NomeTipo()) : std::string();
    }
};

inline void JanelaFalsa::Anota(const std::string &oQue, const std::string &como)
{
    m_Camada.Anotados.push_back(oQue + " " + m_Nome + como);
}

inline void JanelaFalsa::Destina(TipoDeJanela tipo, const Ref<IJanela> &dono)
{
    Anota("destina", " " + CamadaFalsa::NomeDe(tipo) + CamadaFalsa::Sobre(dono));
}

inline void JanelaFalsa::MostraEEspera()
{
    Anota("espera em");
    if (const auto acao = m_Camada.NaModal.find(m_Nome); acao != m_Camada.NaModal.end()) {
        acao->second();
    }
    const Ref<IForm> form = m_Form.Alvo();
    EXPECT_TRUE(m_Retirada || (form && !form->Visible())) << m_Nome << " was left open";
    Anota("volta de");
}
