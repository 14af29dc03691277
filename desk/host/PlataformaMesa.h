#pragma once

#include "host/IPlataforma.h"
#include "tela/FormsAbertos.h"

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace mesa {

// The platform of the desk: open forms, boxes, clock and files.
class PlataformaMesa : public IPlataforma {
  public:
    // diretorioModulo: where the module's own file lies; created when missing. agora: the clock.
    PlataformaMesa(Ref<IJanelas> janelas, std::filesystem::path diretorioModulo, std::function<Data()> agora);
    std::string_view NomeTipo() const override { return "PlataformaMesa"; }

    Ref<IAplicacao> Aplicacao() override { return m_Aplicacao; }
    std::int16_t Ponteiro() const override { return m_Ponteiro; }
    void DefinePonteiro(std::int16_t valor) override;
    void ProcessaMensagens() override;
    std::int32_t LarguraTela() const override;
    std::int32_t AlturaTela() const override;
    bool PerguntaSimNao(const std::string &texto, const std::string &titulo, bool padraoSim) override;
    void CaixaInformacao(const std::string &texto, const std::string &titulo) override;

    std::int32_t NroForms() const override { return m_Forms.Quantos(); }
    Ref<IForm> FormAberto(std::int32_t posicao) const override { return m_Forms.Form(posicao); }
    void Carrega(const Ref<IForm> &form) override { m_Forms.Carrega(form); }
    void Descarrega(const Ref<IForm> &form) override { m_Forms.Descarrega(form); }
    void DefineTextoJanela(std::int64_t hwnd, const std::string &texto) override;
    bool TemIcone(const std::string &chave) const override;

    Data Agora() const override { return m_Agora(); }
    std::string DataCurta(Data data) const override;

    std::string CaminhoModulo() const override;
    bool ExisteArquivo(const std::string &caminho) const override;
    std::int64_t TamanhoArquivo(const std::string &caminho) const override;
    void ApagaArquivo(const std::string &caminho) override;
    void GravaArquivo(const std::string &caminho, const Bytes &bytes) override;
    std::string PrimeiroArquivo(const std::string &padrao) override;
    std::string ProximoArquivo() override;

    // A directory that is not on the disk: whoever lists it gets these names.
    void PoePasta(const std::filesystem::path &pasta, std::function<std::vector<std::string>()> nomes);

  private:
    std::vector<std::string> NomesEm(const std::filesystem::path &pasta) const;

    Ref<IJanelas> m_Janelas;
    FormsAbertos m_Forms;
    std::filesystem::path m_DiretorioModulo;
    std::function<Data()> m_Agora;
    std::map<std::filesystem::path, std::function<std::vector<std::string>()>> m_Pastas;
    Ref<IAplicacao> m_Aplicacao;
    std::int16_t m_Ponteiro = PonteiroNormal;
    std::vector<std::string> m_Nomes; // of the pattern last given, from the back
};

} // namespace mesa
