#include "tests/host_contract/ContratoHost.h"
#include "tests/support/AdaptadorComPessoa.h"
#include "tests/support/HostRoteirizado.h"
#include "tests/support/RegistroEmMemoria.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>

// The scripted host in front of the suite that every host must pass.

namespace {

class AdaptadorRoteirizado : public AdaptadorComPessoa {
  public:
    explicit AdaptadorRoteirizado(bool embrulha)
    {
        m_Host->Tela->EmbrulhaForms = embrulha;
        m_Host->Tela->Arquivos.CriaDiretorio(Diretorio());
    }

    Ref<HostServices> Host() override { return ParaOModulo(m_Host); }
    Ref<IobjMTM> objMTM() override { return m_Host->objMTM; }
    Ref<IobjSCA> objSCA() override { return m_Host->objSCA; }
    Ref<IObjInterface> ObjInterface() override { return m_Host->ObjInterface; }
    Ref<IoAppEXE> oAppEXE() override { return m_Host->oAppEXE; }
    Ref<IFormMDI> FormMDI() override { return m_Host->FormMDI; }
    Ref<IActBar> ActBar() override { return m_Host->ActBar; }

    std::string Diretorio() override { return "C:\\CONTRATO\\"; }
    std::optional<Bytes> LeArquivo(const std::string &caminho) override
    {
        if (!m_Host->Tela->Arquivos.Existe(caminho)) {
            return std::nullopt;
        }
        return m_Host->Tela->Arquivos.Conteudo(caminho);
    }
    std::string TextoJanela(const Ref<IForm> &form) override { return m_Host->Tela->TextoJanela(form); }

    void NaProximaModal(const std::string &classe, std::function<void(const Ref<IForm> &)> acao) override
    {
        m_Host->AoMostrarModal(classe, std::move(acao));
    }
    void RespondePergunta(const std::string &texto, std::optional<bool> sim) override
    {
        m_Host->Tela->Responde(texto, sim);
    }
    void DeixaPassar() override { m_Host->Tela->RodaMensagens(); }

    void Encerra() override
    {
        m_Host->Erros();
        for (const std::string &problema : m_Host->VerificaFim()) {
            ADD_FAILURE() << problema;
        }
    }

  private:
    Ref<HostRoteirizado> m_Host = Novo<HostRoteirizado>();
    RegistroEmMemoria m_Registro{*m_Host};
};

INSTANTIATE_TEST_SUITE_P(HostRoteirizado, ContratoHost, testing::Values(FabricaAdaptador([] {
                             return std::make_unique<AdaptadorRoteirizado>(false);
                         })));

INSTANTIATE_TEST_SUITE_P(HostRoteirizadoQueEmbrulha, ContratoHost, testing::Values(FabricaAdaptador([] {
                             return std::make_unique<AdaptadorRoteirizado>(true);
                         })));

} // namespace
