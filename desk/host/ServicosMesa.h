#pragma once

#include "desk/host/Andamento.h"
#include "desk/host/NomesDeDocumentos.h"
#include "host/IServicos.h"
#include "services/SessaoServico.h"
#include "tela/IJanelas.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace mesa {

// Message service over the desk's windows. Numbers of dates are yyyymmdd, of times hhmmss; the text of a document is
// base64.
class MensagemMesa : public IMensagem {
  public:
    explicit MensagemMesa(Ref<IJanelas> janelas) : m_Janelas(std::move(janelas)) {}
    std::string_view NomeTipo() const override { return "Mensagem"; }

    void DefineTitulo(const std::string &valor) override { m_Titulo = valor; }
    std::string FormataData(std::int32_t numero, std::int16_t reservado) override;
    std::string FormataHora(std::int32_t numero, std::int16_t reservado) override;
    void ExibeMensagem(const std::string &texto, const Ref<IFocavel> &controle) override;
    void PreparaDetalhes(const Ref<IForm> &form) override;
    void ExibeErro(const std::string &contexto, std::int32_t numero, const std::string &descricao,
                   const std::string &fonte, const std::string &titulo) override;
    Bytes TextoParaBytes(const std::string &texto) override;

  private:
    Ref<IJanelas> m_Janelas;
    std::string m_Titulo;
};

// Domain data: code tables from the desk's data, layouts and documents from the services.
class DadosVorMesa : public IDadosVor {
  public:
    // layouts: the directory that stands for the registry's layouts.
    DadosVorMesa(std::function<Ref<SessaoServico>()> sessao, std::function<void(const std::string &)> mostraRecusa,
                 std::filesystem::path layouts, Ref<NomesDeDocumentos> nomes, FazComAndamento acompanha);
    // Names of the files that are found in it: of the layouts that the form of an equipment may offer.
    static std::vector<std::string> ArquivosDeLayout(SessaoServico &sessao);
    std::string_view NomeTipo() const override { return "DadosVor"; }

    void Inicializa(const Ref<IObjInterface> &objInterface) override;
    void Finaliza() override;
    Ref<IOrgao> ObtemOrgao() override;
    void PreencheRejeicoes(const Ref<IztCombo> &combo, std::int32_t reservado1, std::int32_t reservado2) override;
    std::string DirLayouts() override;
    void PreencheTipoAgente(const Ref<IztCombo> &combo, bool trabFoto, bool comTodos, bool escolhePrimeiro) override;
    void PreencheTipoEquip(const Ref<IztCombo> &combo, std::int16_t tipoAgente, bool trabFoto, bool comTodos,
                           bool escolhePrimeiro) override;
    bool EnviaDocumento(const std::string &caminho, double &nroDocumento, std::int32_t reservado) override;
    bool RecebeDocumento(double nroDocumento, Bytes &bytes, bool reservado) override;

  private:
    std::function<Ref<SessaoServico>()> m_Sessao;
    std::function<void(const std::string &)> m_MostraRecusa;
    static std::optional<Bytes> LeArquivo(const std::string &caminho, const Segue &segue, std::string &recusa);

    std::filesystem::path m_Layouts;
    Ref<NomesDeDocumentos> m_Nomes;
    FazComAndamento m_Acompanha;
};

inline constexpr std::int16_t CodigoTemporarios = 99;

// Directory of the temporary documents.
class DiretoriosMesa : public IDiretorios {
  public:
    explicit DiretoriosMesa(std::filesystem::path temporarios);
    std::string_view NomeTipo() const override { return "Diretorios"; }

    std::string ObtemDiretorio(std::int16_t codigo, const std::string &subdiretorio) override;

  private:
    std::filesystem::path m_Temporarios;
};

class ObjGlobalVorMesa : public IObjGlobalVor {
  public:
    explicit ObjGlobalVorMesa(std::function<Ref<SessaoServico>()> sessao) : m_Sessao(std::move(sessao)) {}
    std::string_view NomeTipo() const override { return "ObjGlobalVor"; }

    void InicializaSessao(const Ref<IobjMTM> &objMTM, const Ref<IobjSCA> &objSCA, const Ref<IoAppEXE> &oAppEXE,
                          const Ref<Objeto> &reservado) override;
    Ref<ICredencial> ObtemCredencial() override;

  private:
    std::function<Ref<SessaoServico>()> m_Sessao;
};

class DocumentoPDFMesa : public IDocumentoPDF {
  public:
    DocumentoPDFMesa(Ref<IJanelas> janelas, Ref<NomesDeDocumentos> nomes)
        : m_Janelas(std::move(janelas)),
          m_Nomes(std::move(nomes))
    {
    }
    std::string_view NomeTipo() const override { return "DocumentoPDF"; }

    void DefineArquivoPDF(const std::string &caminho) override { m_Caminho = caminho; }
    bool Mostra(bool modal) override { return m_Janelas->MostraPDF(m_Caminho, m_Nomes->NomeDe(m_Caminho), modal); }

  private:
    Ref<IJanelas> m_Janelas;
    Ref<NomesDeDocumentos> m_Nomes;
    std::string m_Caminho;
};

} // namespace mesa
