#include "desk/host/Caminhos.h"
#include "tests/desk/HospedeiroDeTeste.h"
#include "tests/desk/ServidorDeTeste.h"
#include "tests/host_contract/ContratoHost.h"
#include "tests/support/AdaptadorComPessoa.h"

#include <QByteArray>

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <optional>

using namespace mesa;

// The desk in front of the suite that every host must pass, over a registry of its own and over a server.

namespace {

class AdaptadorMesa : public AdaptadorComPessoa {
  public:
    explicit AdaptadorMesa(bool naRede)
    {
        std::filesystem::create_directory(m_Mesa.Diretorio() / "contrato");
        if (naRede) {
            m_Servidor.emplace(m_Mesa.Registro);
            m_Mesa.Host->Entra(m_Servidor->Sessao("ana"));
        } else {
            m_Mesa.Entra("ana");
        }
    }

    Ref<HostServices> Host() override { return m_Mesa.Host; }
    Ref<IobjMTM> objMTM() override { return m_Mesa.Host->objMTM(); }
    Ref<IobjSCA> objSCA() override { return m_Mesa.Host->objSCA(); }
    Ref<IObjInterface> ObjInterface() override { return m_Mesa.Host->ObjInterface; }
    Ref<IoAppEXE> oAppEXE() override { return m_Mesa.Host->oAppEXE; }
    Ref<IFormMDI> FormMDI() override { return m_Mesa.Host->FormMDI; }
    Ref<IActBar> ActBar() override { return m_Mesa.Host->ActBar; }

    std::string Diretorio() override { return m_Mesa.NoModulo("contrato") + "\\"; }
    std::optional<Bytes> LeArquivo(const std::string &caminho) override
    {
        std::ifstream arquivo(CaminhoDoSistema(caminho), std::ios::binary);
        if (!arquivo) {
            return std::nullopt;
        }
        return Bytes(std::istreambuf_iterator<char>(arquivo), {});
    }
    std::string TextoJanela(const Ref<IForm> &form) override { return m_Mesa.Janelas->TextoJanela(form); }

    void NaProximaModal(const std::string &classe, std::function<void(const Ref<IForm> &)> acao) override
    {
        m_Mesa.Janelas->NaProximaModal(classe, std::move(acao));
    }
    void RespondePergunta(const std::string &texto, std::optional<bool> sim) override
    {
        m_Mesa.Janelas->RespondePergunta(texto, sim);
    }
    void DeixaPassar() override { m_Mesa.Janelas->DeixaPassar(); }

    bool AceitaDocumentoVazio() const override { return false; }
    std::string TextoDeDocumento(const Bytes &bytes) override
    {
        return QByteArray(reinterpret_cast<const char *>(bytes.data()), static_cast<qsizetype>(bytes.size()))
            .toBase64()
            .toStdString();
    }

    void Encerra() override
    {
        for (const std::string &pendencia : m_Mesa.Janelas->Pendencias()) {
            ADD_FAILURE() << pendencia;
        }
    }

  private:
    HospedeiroDeTeste m_Mesa;
    std::optional<ServidorDeTeste> m_Servidor;
};

INSTANTIATE_TEST_SUITE_P(HostMesa, ContratoHost,
                         testing::Values(FabricaAdaptador([] { return std::make_unique<AdaptadorMesa>(false); })));
INSTANTIATE_TEST_SUITE_P(HostMesaNaRede, ContratoHost,
                         testing::Values(FabricaAdaptador([] { return std::make_unique<AdaptadorMesa>(true); })));

} // namespace
