#include "host/Transacao.h"
#include "windows/automation/Colecoes.h"
#include "windows/automation/Tardio.h"
#include "windows/host/Remotos.h"

namespace nativo {
namespace {

// A field of somebody else's, as it is when it comes in.
class CampoRemoto : public Remoto<CampoTransacao> {
  public:
    explicit CampoRemoto(Com<IDispatch> objeto) : Remoto(std::move(objeto)) { Atualiza(); }

    // What it has now, which the service may have changed since it was looked at.
    void Atualiza()
    {
        const Tardio tardio(*this);
        Nome = tardio.Chama<std::string>("Nome");
        Valor = tardio.Chama<::Valor>("Valor").Texto();
    }
    std::string_view NomeTipo() const override { return Classe(); }
};

// A collection of fields does not tell its keys; they are the fields' names.
CamposTransacao ComChaves(const Variante &lida)
{
    const Com<IDispatch> objeto = LeObjeto(lida.Bruta());
    if (!objeto || Interno(objeto, Lado::Componente)) {
        return LeColecao<CampoTransacao>(objeto, Lado::Componente);
    }
    const CamposTransacao semChaves = LeColecao<CampoTransacao>(objeto, Lado::Componente);
    auto campos = Novo<Colecao<Ref<CampoTransacao>>>();
    for (std::int32_t posicao = 1; posicao <= semChaves->Count(); ++posicao) {
        const Ref<CampoTransacao> &campo = semChaves->Item(posicao);
        if (auto *remoto = dynamic_cast<CampoRemoto *>(campo.Ponteiro())) {
            remoto->Atualiza();
        }
        campos->Add(campo, campo->Nome);
    }
    return campos;
}

class TransacaoRemota : public Remoto<ITransacao> {
  public:
    using Remoto::Remoto;

    std::string sWindow() const override { return Tardio(*this).Chama<std::string>("sWindow"); }
    void DefinesWindow(const std::string &valor) override { Tardio(*this).Escreve("sWindow", valor); }
    std::string sTransacao() const override { return Tardio(*this).Chama<std::string>("sTransacao"); }
    void DefinesTransacao(const std::string &valor) override { Tardio(*this).Escreve("sTransacao", valor); }
    std::string sSistema() const override { return Tardio(*this).Chama<std::string>("sSistema"); }
    void DefinesSistema(const std::string &valor) override { Tardio(*this).Escreve("sSistema", valor); }
    std::string sJob() const override { return Tardio(*this).Chama<std::string>("sJob"); }
    void DefinesJob(const std::string &valor) override { Tardio(*this).Escreve("sJob", valor); }
    std::string sPrograma() const override { return Tardio(*this).Chama<std::string>("sPrograma"); }
    void DefinesPrograma(const std::string &valor) override { Tardio(*this).Escreve("sPrograma", valor); }
    bool bGCI() const override { return Tardio(*this).Chama<bool>("bGCI"); }
    void DefinebGCI(bool valor) override { Tardio(*this).Escreve("bGCI", valor); }
    bool SisJava() const override { return Tardio(*this).Chama<bool>("SisJava"); }
    void DefineSisJava(bool valor) override { Tardio(*this).Escreve("SisJava", valor); }
    CamposTransacao Cin() const override { return ComChaves(Tardio(*this).Chama<Variante>("Cin")); }
    void DefineCin(const CamposTransacao &valor) override { Tardio(*this).Escreve("Cin", valor); }
    CamposTransacao Cout() const override { return ComChaves(Tardio(*this).Chama<Variante>("Cout")); }
    void DefineCout(const CamposTransacao &valor) override { Tardio(*this).Escreve("Cout", valor); }
};

} // namespace

void RegistraTransacaoRemota()
{
    RegistraRemoto<ITransacao, TransacaoRemota>();
    RegistraRemoto<CampoTransacao, CampoRemoto>();
}

} // namespace nativo
