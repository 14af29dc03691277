#include "host/IServicos.h"
#include "host/ISessao.h"
#include "windows/automation/Tardio.h"
#include "windows/host/OuAusente.h"
#include "windows/host/Remotos.h"

namespace nativo {
namespace {

class MensagemRemota : public Remoto<IMensagem> {
  public:
    using Remoto::Remoto;

    void DefineTitulo(const std::string &valor) override { Tardio(*this).Escreve("Titulo", valor); }
    std::string FormataData(std::int32_t numero, std::int16_t reservado) override
    {
        return Tardio(*this).Chama<std::string>("FormataData", numero, reservado);
    }
    std::string FormataHora(std::int32_t numero, std::int16_t reservado) override
    {
        return Tardio(*this).Chama<std::string>("FormataHora", numero, reservado);
    }
    void ExibeMensagem(const std::string &texto, const Ref<IFocavel> &controle) override
    {
        Tardio(*this).Chama("ExibeMensagem", texto, OuAusente(controle));
    }
    void PreparaDetalhes(const Ref<IForm> &form) override { Tardio(*this).Chama("PreparaDetalhes", form); }
    void ExibeErro(const std::string &contexto, std::int32_t numero, const std::string &descricao,
                   const std::string &fonte, const std::string &titulo) override
    {
        Tardio(*this).Chama("ExibeErro", contexto, numero, descricao, fonte, titulo);
    }
    Bytes TextoParaBytes(const std::string &texto) override
    {
        return Tardio(*this).Chama<Bytes>("TextoParaBytes", texto);
    }
};

class OrgaoRemoto : public Remoto<IOrgao> {
  public:
    using Remoto::Remoto;

    std::int32_t CodCliente() override { return Tardio(*this).Chama<std::int32_t>("CodCliente"); }
};

class DadosVorRemoto : public Remoto<IDadosVor> {
  public:
    using Remoto::Remoto;

    void Inicializa(const Ref<IObjInterface> &objInterface) override
    {
        Tardio(*this).Chama("Inicializa", objInterface);
    }
    void Finaliza() override { Tardio(*this).Chama("Finaliza"); }
    Ref<IOrgao> ObtemOrgao() override { return Tardio(*this).Chama<Ref<IOrgao>>("ObtemOrgao"); }
    void PreencheRejeicoes(const Ref<IztCombo> &combo, std::int32_t reservado1, std::int32_t reservado2) override
    {
        Tardio(*this).Chama("PreencheRejeicoes", combo, reservado1, reservado2);
    }
    std::string DirLayouts() override { return Tardio(*this).Chama<std::string>("DirLayouts"); }
    void PreencheTipoAgente(const Ref<IztCombo> &combo, bool trabFoto, bool comTodos, bool escolhePrimeiro) override
    {
        Tardio(*this).Chama("PreencheTipoAgente", combo, trabFoto, comTodos, escolhePrimeiro);
    }
    void PreencheTipoEquip(const Ref<IztCombo> &combo, std::int16_t tipoAgente, bool trabFoto, bool comTodos,
                           bool escolhePrimeiro) override
    {
        Tardio(*this).Chama("PreencheTipoEquip", combo, tipoAgente, trabFoto, comTodos, escolhePrimeiro);
    }
    bool EnviaDocumento(const std::string &caminho, double &nroDocumento, std::int32_t reservado) override
    {
        return Tardio(*this).Chama<bool>("EnviaDocumento", caminho, PorRef(nroDocumento), reservado);
    }
    bool RecebeDocumento(double nroDocumento, Bytes &bytes, bool reservado) override
    {
        return Tardio(*this).Chama<bool>("RecebeDocumento", nroDocumento, PorRef(bytes), reservado);
    }
};

class DiretoriosRemotos : public Remoto<IDiretorios> {
  public:
    using Remoto::Remoto;

    std::string ObtemDiretorio(std::int16_t codigo, const std::string &subdiretorio) override
    {
        return Tardio(*this).Chama<std::string>("ObtemDiretorio", codigo, subdiretorio);
    }
};

class CredencialRemota : public Remoto<ICredencial> {
  public:
    using Remoto::Remoto;

    std::int32_t Credencial() override { return Tardio(*this).Chama<std::int32_t>("Credencial"); }
    std::int32_t CodMunic() override { return Tardio(*this).Chama<std::int32_t>("CodMunic"); }
};

class ObjGlobalVorRemoto : public Remoto<IObjGlobalVor> {
  public:
    using Remoto::Remoto;

    void InicializaSessao(const Ref<IobjMTM> &objMTM, const Ref<IobjSCA> &objSCA, const Ref<IoAppEXE> &oAppEXE,
                          const Ref<::Objeto> &reservado) override
    {
        Tardio(*this).Chama("InicializaSessao", objMTM, objSCA, oAppEXE, reservado);
    }
    Ref<ICredencial> ObtemCredencial() override { return Tardio(*this).Chama<Ref<ICredencial>>("ObtemCredencial"); }
};

class DocumentoPDFRemoto : public Remoto<IDocumentoPDF> {
  public:
    using Remoto::Remoto;

    void DefineArquivoPDF(const std::string &caminho) override { Tardio(*this).Escreve("ArquivoPDF", caminho); }
    bool Mostra(bool modal) override { return Tardio(*this).Chama<bool>("Mostra", modal); }
};

} // namespace

void RegistraServicosRemotos()
{
    RegistraRemoto<IMensagem, MensagemRemota>();
    RegistraRemoto<IOrgao, OrgaoRemoto>();
    RegistraRemoto<IDadosVor, DadosVorRemoto>();
    RegistraRemoto<IDiretorios, DiretoriosRemotos>();
    RegistraRemoto<ICredencial, CredencialRemota>();
    RegistraRemoto<IObjGlobalVor, ObjGlobalVorRemoto>();
    RegistraRemoto<IDocumentoPDF, DocumentoPDFRemoto>();
}

} // namespace nativo
