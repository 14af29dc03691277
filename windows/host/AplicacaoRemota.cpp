#include "host/IAplicacaoHost.h"
#include "windows/automation/Tardio.h"
#include "windows/host/Elemento.h"
#include "windows/host/Remotos.h"

namespace nativo {
namespace {

class ToolRemoto : public Remoto<ITool> {
  public:
    using Remoto::Remoto;

    bool Visible() const override { return Tardio(*this).Chama<bool>("Visible"); }
    void DefineVisible(bool valor) override { Tardio(*this).Escreve("Visible", valor); }
    bool Enabled() const override { return Tardio(*this).Chama<bool>("Enabled"); }
    void DefineEnabled(bool valor) override { Tardio(*this).Escreve("Enabled", valor); }
};

class ToolsRemoto : public Remoto<ITools> {
  public:
    using Remoto::Remoto;

    std::int32_t Count() const override { return Tardio(*this).Chama<std::int32_t>("Count"); }
    Ref<ITool> ItemPosicao(std::int32_t posicao) override { return Elemento<ITool>(Tardio(*this), posicao); }
    Ref<ITool> ItemNome(const std::string &nome) override { return Elemento<ITool>(Tardio(*this), nome); }
};

class BandRemoto : public Remoto<IBand> {
  public:
    using Remoto::Remoto;

    std::string Name() const override { return Tardio(*this).Chama<std::string>("Name"); }
    Ref<ITools> Tools() override { return Tardio(*this).Chama<Ref<ITools>>("Tools"); }
    void TrackPopup(std::int32_t x, std::int32_t y) override { Tardio(*this).Chama("TrackPopup", x, y); }
};

class BandsRemoto : public Remoto<IBands> {
  public:
    using Remoto::Remoto;

    std::int32_t Count() const override { return Tardio(*this).Chama<std::int32_t>("Count"); }
    Ref<IBand> ItemPosicao(std::int32_t posicao) override { return Elemento<IBand>(Tardio(*this), posicao); }
    Ref<IBand> ItemNome(const std::string &nome) override { return Elemento<IBand>(Tardio(*this), nome); }
};

class ActBarRemoto : public Remoto<IActBar> {
  public:
    using Remoto::Remoto;

    Ref<IBands> Bands() override { return Tardio(*this).Chama<Ref<IBands>>("Bands"); }
};

class FormMDIRemoto : public Remoto<IFormMDI> {
  public:
    using Remoto::Remoto;

    bool AutoShowChildren() override
    {
        // That it can be read is all that it is asked for.
        Tardio(*this).Chama<Variante>("AutoShowChildren");
        return true;
    }
    Ref<::Objeto> objZTP() override { return Tardio(*this).Chama<Ref<::Objeto>>("objZTP"); }
    bool PossuiJanelaEnviaRecebe() override { return Tardio(*this).Chama<bool>("PossuiJanelaEnviaRecebe"); }
    std::int32_t ScaleWidth() override { return Tardio(*this).Chama<std::int32_t>("ScaleWidth"); }
    std::int32_t ScaleHeight() override { return Tardio(*this).Chama<std::int32_t>("ScaleHeight"); }
    std::int32_t Left() override { return Tardio(*this).Chama<std::int32_t>("Left"); }
    std::int32_t Top() override { return Tardio(*this).Chama<std::int32_t>("Top"); }
    std::int32_t Width() override { return Tardio(*this).Chama<std::int32_t>("Width"); }
    std::int32_t Height() override { return Tardio(*this).Chama<std::int32_t>("Height"); }
    void MsgEnviaRecebe(std::string &texto) override { Tardio(*this).Chama("MsgEnviaRecebe", PorRef(texto)); }
    void AbrirEnviaRecebe() override { Tardio(*this).Chama("AbrirEnviaRecebe"); }
    void FecharEnviaRecebe(bool fecha) override { Tardio(*this).Chama("FecharEnviaRecebe", fecha); }
};

class AppEXERemoto : public Remoto<IoAppEXE> {
  public:
    using Remoto::Remoto;

    std::string Title() override { return Tardio(*this).Chama<std::string>("Title"); }
    std::string Path() override { return Tardio(*this).Chama<std::string>("Path"); }
    std::string ProductName() override { return Tardio(*this).Chama<std::string>("ProductName"); }
};

class GlobalRemoto : public Remoto<IcGlobal> {
  public:
    using Remoto::Remoto;

    void MontaEstruturaMenus(std::string &sTool, const std::string &componente) override
    {
        Tardio(*this).Chama("MontaEstruturaMenus", PorRef(sTool), componente);
    }
    void gsubSetaAutoModuloAtivo(const std::string &componente) override
    {
        Tardio(*this).Chama("gsubSetaAutoModuloAtivo", componente);
    }
    Ref<::Objeto> PegaAutoModulo(const std::string &nome) override
    {
        return Tardio(*this).Chama<Ref<::Objeto>>("PegaAutoModulo", nome);
    }
    Ref<::Objeto> gfunRetornaAutoModulo(const std::string &nome) override
    {
        return Tardio(*this).Chama<Ref<::Objeto>>("gfunRetornaAutoModulo", nome);
    }
};

class InterfaceRemota : public Remoto<IObjInterface> {
  public:
    using Remoto::Remoto;

    void MostraJanela(const Ref<IForm> &form, std::int16_t modal, Ref<IForm> &dono, std::int16_t depurar,
                      Ref<::Objeto> &formClick) override
    {
        Tardio(*this).Chama("MostraJanela", form, modal, PorRef(dono), depurar, PorRef(formClick));
    }
    Ref<ITrataBD> pTrataBD() override { return Tardio(*this).Chama<Ref<ITrataBD>>("pTrataBD"); }
};

class CFunGenRemoto : public Remoto<ICFunGen> {
  public:
    using Remoto::Remoto;

    void SetaTituloAvisos(const std::string &titulo) override { Tardio(*this).Chama("SetaTituloAvisos", titulo); }
    void DefineAppTitle(const std::string &titulo) override { Tardio(*this).Escreve("AppTitle", titulo); }
};

class AjudaRemota : public Remoto<IAjuda> {
  public:
    using Remoto::Remoto;

    void TrataAjuda2(const Ref<IAplicacao> &aplicacao, std::string &topico) override
    {
        Tardio(*this).Chama("TrataAjuda2", aplicacao, PorRef(topico));
    }
};

class RelatoriosRemotos : public Remoto<IRelatorios> {
  public:
    using Remoto::Remoto;

    void DefinePathRPT(const std::string &caminho) override { Tardio(*this).Escreve("PathRPT", caminho); }
    void DefinePathMDB(const std::string &caminho) override { Tardio(*this).Escreve("PathMDB", caminho); }
    void DefineCurrentRecordSet(const Ref<ICursor> &cursor) override
    {
        Tardio(*this).Escreve("CurrentRecordSet", cursor);
    }
    bool Imprimir(ParametrosRelatorio &parametros) override { return Imprime("Imprimir", parametros); }
    bool ImprimirDesigner(ParametrosRelatorio &parametros) override { return Imprime("ImprimirDesigner", parametros); }

  private:
    bool Imprime(std::string_view operacao, ParametrosRelatorio &p)
    {
        // Whatever it answers, nobody asks for it.
        Tardio(*this).Chama<Variante>(operacao, p.Relatorio, PorRef(p.aParam), PorRef(p.b1), PorRef(p.n1), PorRef(p.b2),
                                      PorRef(p.o1), PorRef(p.s1), PorRef(p.o2));
        return true;
    }
};

class AMRegistroRemoto : public Remoto<IAMRegistro> {
  public:
    using Remoto::Remoto;

    void RegistraAM(const std::string &componente, const std::string &classe, const Valor &nomeAPP) override
    {
        Tardio(*this).Chama("RegistraAM", componente, classe, nomeAPP);
    }
    void DesregistraAM(const std::string &componente, const Valor &nomeAPP) override
    {
        Tardio(*this).Chama("DesregistraAM", componente, nomeAPP);
    }
};

class AMEditMenuRemoto : public Remoto<IAMEditMenu> {
  public:
    using Remoto::Remoto;

    void IncorporaMenu(Ref<IActBar> &actBar, ItensMenu &itens, bool reservado) override
    {
        Tardio(*this).Chama("IncorporaMenu", PorRef(actBar), PorRef(itens), reservado);
    }
    void RemoveMenu(Ref<IActBar> &actBar, ItensMenu &itens) override
    {
        Tardio(*this).Chama("RemoveMenu", PorRef(actBar), PorRef(itens));
    }
};

// A menu item of somebody else's, as it is when it comes in.
class ItemMenuRemoto : public Remoto<ItemMenuModulo> {
  public:
    explicit ItemMenuRemoto(Com<IDispatch> objeto) : Remoto(std::move(objeto))
    {
        const Tardio tardio(*this);
        Name = tardio.Chama<std::string>("Name");
        Band = tardio.Chama<std::string>("Band");
        SubBand = tardio.Chama<std::string>("SubBand");
        NeverDisabled = tardio.Chama<bool>("NeverDisabled");
        HideWhenDisable = tardio.Chama<bool>("HideWhenDisable");
    }
};

} // namespace

void RegistraAplicacaoRemota()
{
    RegistraRemoto<ITool, ToolRemoto>();
    RegistraRemoto<ITools, ToolsRemoto>();
    RegistraRemoto<IBand, BandRemoto>();
    RegistraRemoto<IBands, BandsRemoto>();
    RegistraRemoto<IActBar, ActBarRemoto>();
    RegistraRemoto<IFormMDI, FormMDIRemoto>();
    RegistraRemoto<IoAppEXE, AppEXERemoto>();
    RegistraRemoto<IcGlobal, GlobalRemoto>();
    RegistraRemoto<IObjInterface, InterfaceRemota>();
    RegistraRemoto<ICFunGen, CFunGenRemoto>();
    RegistraRemoto<IAjuda, AjudaRemota>();
    RegistraRemoto<IRelatorios, RelatoriosRemotos>();
    RegistraRemoto<IAMRegistro, AMRegistroRemoto>();
    RegistraRemoto<IAMEditMenu, AMEditMenuRemoto>();
    RegistraRemoto<ItemMenuModulo, ItemMenuRemoto>();
}

} // namespace nativo
