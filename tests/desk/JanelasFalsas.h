#pragma once

#include "tela/IJanelas.h"

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

// Windows without a screen, and the person in front of them: what is shown is written down, what is asked is answered
// as was arranged before. What nobody arranged fails the test.
class JanelasFalsas : public IJanelas {
  public:
    std::string_view NomeTipo() const override { return "JanelasFalsas"; }

    using Acao = std::function<void(const Ref<IForm> &)>;
    void NaProximaModal(const std::string &classe, Acao acao) { m_Modais.emplace_back(classe, std::move(acao)); }
    void RespondePergunta(const std::string &texto, std::optional<bool> sim) { m_Respostas.emplace_back(texto, sim); }
    // Lets the windows be activated that were shown since.
    void DeixaPassar();
    std::string TextoJanela(const Ref<IForm> &form) const;
    // What a test arranged and nobody asked for.
    std::vector<std::string> Pendencias() const;

    std::vector<std::string> Avisos;
    std::vector<std::string> Erros;        // number, source and context
    std::vector<std::string> FrasesDeErro; // what the person reads of each
    std::vector<std::string> Mostrados;
    std::vector<std::string> Nomes; // of what was shown
    std::vector<std::string> Topicos;
    std::vector<bool> Esperas;
    std::optional<std::string> ArquivoEscolhido;

    void MostraForm(const Ref<IForm> &form, bool modal) override;
    void FechaForm(const Ref<IForm> &form) override;
    void DefineTextoJanela(const Ref<IForm> &form, const std::string &texto) override
    {
        m_Textos[form.Ponteiro()] = texto;
    }
    void DefineEspera(bool espera) override { Esperas.push_back(espera); }
    void ProcessaMensagens() override { DeixaPassar(); }
    std::int32_t LarguraTela() const override { return 1280; }
    std::int32_t AlturaTela() const override { return 1024; }
    bool PerguntaSimNao(const std::string &texto, const std::string &titulo, bool padraoSim) override;
    void Informa(const std::string &texto, const std::string &titulo) override { Avisa(texto, titulo); }
    void Avisa(const std::string &texto, const std::string &titulo) override
    {
        Avisos.push_back(titulo + ": " + texto);
    }
    void MostraErro(const std::string &contexto, std::int32_t numero, const std::string &descricao,
                    const std::string &fonte, const std::string &titulo) override;
    std::optional<std::string> EscolheArquivo(const std::string &, const std::string &, const std::string &,
                                              const std::string &) override
    {
        return ArquivoEscolhido;
    }
    bool MostraPDF(const std::string &caminho, const std::string &nome, bool modal) override;
    void MostraAjuda(const std::string &topico) override { Topicos.push_back(topico); }

  private:
    std::vector<Ref<IForm>> m_Abertos;
    std::vector<RefFraca<IForm>> m_PorAtivar;
    std::map<const IForm *, std::string> m_Textos;
    std::deque<std::pair<std::string, Acao>> m_Modais;
    std::deque<std::pair<std::string, std::optional<bool>>> m_Respostas;
};
