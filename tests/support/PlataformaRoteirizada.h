#pragma once

#include "tela/IJanelas.h"
#include "tests/support/ArquivosEmMemoria.h"
#include "tests/support/FormHospedeiro.h"
#include "tests/support/RegistroChamadas.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

class AplicacaoComponente : public IAplicacao {
  public:
    std::string_view NomeTipo() const override { return "App"; }
    std::string Nome() const override { return m_Nome; }
    std::string Titulo() const override { return m_Titulo; }
    std::string Descricao() const override { return m_Descricao; }

    std::string m_Nome{NomeComponente};
    std::string m_Titulo = "Equipamentos";
    std::string m_Descricao = "Registro de Equipamentos";
};

// Screen, message queue, boxes, windows, clock and files of the scripted host. Not logged are the reads Aplicacao,
// Ponteiro, LarguraTela, AlturaTela, NroForms, FormAberto, TemIcone, Agora, DataCurta and CaminhoModulo; they can be
// made to fail by name.
class PlataformaRoteirizada : public IPlataforma {
  public:
    using Roteiro = std::function<void(const Ref<IForm> &)>;
    struct Pergunta {
        std::string Texto;
        std::string Titulo;
        bool PadraoSim = false;
        bool Resposta = false;
    };
    struct Caixa {
        std::string Texto;
        std::string Titulo;
    };

    explicit PlataformaRoteirizada(RefRegistro registro);

    std::string_view NomeTipo() const override { return "Plataforma"; }

    // What a test sets.
    Ref<AplicacaoComponente> App;
    ArquivosEmMemoria Arquivos;
    Data Relogio = DataDe(20, 11, 2026, 10, 0, 0);
    std::set<std::string> Icones{"Equipamentos"};
    std::string DiretorioModulo = "C:\\HOST\\MODULOS";
    std::int32_t Largura = 15360;
    std::int32_t Altura = 11520;
    bool EmbrulhaForms = false; // forms shown from now on get a window of the host's around them
    Ref<IJanelas> Janelas;      // in which forms are shown and questions asked, before somebody else; Nothing: scripts

    // Queues the answer to a question with exactly that text; no value: the person presses Enter.
    void Responde(std::string texto, std::optional<bool> sim);
    // Queues what the person does in the next modal show of a form of that class.
    void AoMostrarModal(std::string classe, Roteiro roteiro);
    // The same for every question or show for which nothing is queued, and which need not come at all.
    void RespondeSempre(const std::string &texto, bool sim) { m_RespostasFixas[texto] = sim; }
    // And to any other question.
    void RespondeQualquer(std::function<bool()> resposta) { m_RespostaQualquer = std::move(resposta); }
    void AoMostrarModalSempre(const std::string &classe, Roteiro roteiro)
    {
        m_RoteirosFixos[classe] = std::move(roteiro);
    }
    // Puts a message in the queue; it runs at the next ProcessaMensagens, or when a modal show starts or ends.
    void Posta(std::function<void()> mensagem);
    // Empties the message queue.
    void RodaMensagens();

    // What a test reads.
    const std::vector<Pergunta> &Perguntas() const noexcept { return m_Perguntas; }
    const std::vector<Caixa> &Caixas() const noexcept { return m_Caixas; }
    // Text written on a window by its handle; the caption when none was written.
    std::string TextoJanela(const Ref<IForm> &form) const;
    // The open forms of a class.
    std::vector<Ref<IForm>> FormsAbertos(const std::string &classe) const;
    bool EstaAberto(const Ref<IForm> &form) const;

    // The window of the form becomes the active one, at once.
    void Ativa(const Ref<IForm> &form);
    // The person closes the window by its own close button.
    void FechaPelaPessoa(const Ref<IForm> &form);
    // Unloads every form, whatever it says; ends no modal show of its own.
    void FechaTudo();
    // What was queued and never used becomes a problem.
    void ConfereSobras() const;
    void EsqueceRoteiros();

    // The show operation of the interface services.
    void MostraJanela(const Ref<IForm> &form, bool modal);

    Ref<IAplicacao> Aplicacao() override;
    std::int16_t Ponteiro() const override { return m_Ponteiro; }
    void DefinePonteiro(std::int16_t valor) override;
    void ProcessaMensagens() override;
    std::int32_t LarguraTela() const override { return Largura; }
    std::int32_t AlturaTela() const override { return Altura; }
    bool PerguntaSimNao(const std::string &texto, const std::string &titulo, bool padraoSim) override;
    void CaixaInformacao(const std::string &texto, const std::string &titulo) override;
    std::int32_t NroForms() const override;
    Ref<IForm> FormAberto(std::int32_t posicao) const override;
    void Carrega(const Ref<IForm> &form) override;
    void Descarrega(const Ref<IForm> &form) override;
    void DefineTextoJanela(std::int64_t hwnd, const std::string &texto) override;
    bool TemIcone(const std::string &chave) const override;
    Data Agora() const override;
    std::string DataCurta(Data data) const override;
    std::string CaminhoModulo() const override;
    bool ExisteArquivo(const std::string &caminho) const override;
    std::int64_t TamanhoArquivo(const std::string &caminho) const override;
    void ApagaArquivo(const std::string &caminho) override;
    void GravaArquivo(const std::string &caminho, const Bytes &bytes) override;
    std::string PrimeiroArquivo(const std::string &padrao) override;
    std::string ProximoArquivo() override;

  private:
    struct Janela {
        Ref<IForm> Form;
        Ref<FormHospedeiro> Hospedeiro;
        Conexao Foco;
        Conexao Ordem;
        bool Descarregando = false;
        bool Fechada = false;
    };
    using RefJanela = std::shared_ptr<Janela>;

    RefJanela Acha(const Ref<IForm> &form) const;
    RefJanela Abre(const Ref<IForm> &form);
    // False when the form cancelled.
    bool Fecha(const RefJanela &janela);
    void Retira(const RefJanela &janela);
    void EncerraModal(const RefJanela &janela, std::int32_t falhasAntes);
    void RodaRoteiro(const Ref<IForm> &form);
    // The script for a modal show of that class; empty when there is none.
    Roteiro TiraRoteiro(const std::string &classe);
    std::string NomeDaJanela(std::int64_t hwnd) const;

    RefRegistro m_Registro;
    std::int16_t m_Ponteiro = PonteiroNormal;
    std::vector<RefJanela> m_Janelas;
    RefFraca<IForm> m_Ativo;
    std::int64_t m_UltimoHwnd = 1'000'000;
    std::map<std::int64_t, std::string> m_Textos;
    std::deque<std::function<void()>> m_Mensagens;
    std::deque<std::pair<std::string, std::optional<bool>>> m_Respostas;
    std::deque<std::pair<std::string, Roteiro>> m_Roteiros;
    std::map<std::string, bool> m_RespostasFixas;
    std::function<bool()> m_RespostaQualquer;
    std::map<std::string, Roteiro> m_RoteirosFixos;
    std::vector<Pergunta> m_Perguntas;
    std::vector<Caixa> m_Caixas;
    std::deque<std::string> m_Listagem;
};
