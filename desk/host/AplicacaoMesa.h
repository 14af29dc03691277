#pragma once

#include "desk/host/Titulo.h"
#include "host/IAplicacaoHost.h"
#include "tela/IJanelas.h"

#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace mesa {

// Descriptor of the desk.
class AppEXEMesa : public IoAppEXE {
  public:
    explicit AppEXEMesa(std::filesystem::path diretorio) : m_Diretorio(std::move(diretorio)) {}
    std::string_view NomeTipo() const override { return "AppEXE"; }

    std::string Title() override { return TituloDosAvisos; }
    std::string Path() override;
    std::string ProductName() override { return TituloDosAvisos; }

  private:
    std::filesystem::path m_Diretorio;
};

// A tool of a menu, as the main window follows it.
class ToolMesa : public ITool {
  public:
    ToolMesa(std::string nome, std::string caption) : m_Nome(std::move(nome)), m_Caption(std::move(caption)) {}
    std::string_view NomeTipo() const override { return "Tool"; }

    const std::string &Nome() const { return m_Nome; }
    const std::string &Caption() const { return m_Caption; }
    bool Visible() const override { return m_Visible; }
    void DefineVisible(bool valor) override;
    bool Enabled() const override { return m_Enabled; }
    void DefineEnabled(bool valor) override;
    Evento<> &Mudou() { return m_Mudou; }

  private:
    std::string m_Nome;
    std::string m_Caption;
    bool m_Visible = true;
    bool m_Enabled = true;
    Evento<> m_Mudou;
};

class ToolsMesa : public ITools {
  public:
    std::string_view NomeTipo() const override { return "Tools"; }

    std::int32_t Count() const override { return static_cast<std::int32_t>(m_Tools.size()); }
    Ref<ITool> ItemPosicao(std::int32_t posicao) override;
    Ref<ITool> ItemNome(const std::string &nome) override;

    const std::vector<Ref<ToolMesa>> &Todas() const { return m_Tools; }
    void Adiciona(Ref<ToolMesa> tool) { m_Tools.push_back(std::move(tool)); }
    void Retira(const std::string &nome);

  private:
    std::vector<Ref<ToolMesa>> m_Tools;
};

class BandMesa : public IBand {
  public:
    explicit BandMesa(std::string nome) : m_Nome(std::move(nome)) {}
    std::string_view NomeTipo() const override { return "Band"; }

    std::string Name() const override { return m_Nome; }
    Ref<ITools> Tools() override { return m_Tools; }
    void TrackPopup(std::int32_t x, std::int32_t y) override { m_AoAbrir.dispara(x, y); }

    const Ref<ToolsMesa> &Ferramentas() const { return m_Tools; }
    // The band is to be shown as a popup at a place of the screen.
    Evento<std::int32_t, std::int32_t> &AoAbrir() { return m_AoAbrir; }

  private:
    std::string m_Nome;
    Ref<ToolsMesa> m_Tools = Novo<ToolsMesa>();
    Evento<std::int32_t, std::int32_t> m_AoAbrir;
};

// Menus of the desk: bands of tools, which the main window shows.
class ActBarMesa : public IActBar {
  public:
    ActBarMesa();
    std::string_view NomeTipo() const override { return "ActBar"; }

    Ref<IBands> Bands() override;
    // The band of that name; created when missing.
    Ref<BandMesa> Banda(const std::string &nome);
    const std::vector<Ref<BandMesa>> &Bandas() const;
    // A tool was added or taken away.
    Evento<> &Mudou() { return m_Mudou; }

  private:
    Ref<IBands> m_Bands;
    Evento<> m_Mudou;
};

// Main form, as far as it is not drawn: the main window writes its place here.
class FormMDIMesa : public IFormMDI {
  public:
    std::string_view NomeTipo() const override { return "FormMDIMesa"; }

    // In twips.
    std::int32_t Esquerda = 0;
    std::int32_t Topo = 0;
    std::int32_t Largura = 0;
    std::int32_t Altura = 0;
    std::int32_t LarguraArea = 0;
    std::int32_t AlturaArea = 0;
    // Text of the send and receive window; shown while it is open.
    std::string MensagemEnviaRecebe;
    bool EnviaRecebeAberta = false;

    bool AutoShowChildren() override { return false; }
    Ref<Objeto> objZTP() override { return nullptr; }
    bool PossuiJanelaEnviaRecebe() override { return true; }
    std::int32_t ScaleWidth() override { return LarguraArea; }
    std::int32_t ScaleHeight() override { return AlturaArea; }
    std::int32_t Left() override { return Esquerda; }
    std::int32_t Top() override { return Topo; }
    std::int32_t Width() override { return Largura; }
    std::int32_t Height() override { return Altura; }
    void MsgEnviaRecebe(std::string &texto) override;
    void AbrirEnviaRecebe() override;
    void FecharEnviaRecebe(bool fecha) override;
    Evento<> &Mudou() { return m_Mudou; }

  private:
    Evento<> m_Mudou;
};

// Global services: which module is active, and the sibling modules by name.
class GlobalMesa : public IcGlobal {
  public:
    std::string_view NomeTipo() const override { return "CAutoModulos"; }

    void MontaEstruturaMenus(std::string &sTool, const std::string &componente) override;
    void gsubSetaAutoModuloAtivo(const std::string &componente) override { m_Ativo = componente; }
    // Fault 9 for a module that is not registered.
    Ref<Objeto> PegaAutoModulo(const std::string &nome) override;

    const std::string &Ativo() const { return m_Ativo; }
    void Registra(const std::string &nome, RefFraca<Objeto> modulo);
    // The answer about a tool may have changed; argument: its name.
    Evento<std::string> &AoMontarMenus() { return m_AoMontarMenus; }

  private:
    std::string m_Ativo;
    std::vector<std::pair<std::string, RefFraca<Objeto>>> m_Modulos;
    Evento<std::string> m_AoMontarMenus;
};

class InterfaceMesa : public IObjInterface {
  public:
    // trataBD: the host's own database helper; raises when nobody is signed in.
    InterfaceMesa(Ref<IJanelas> janelas, std::function<Ref<ITrataBD>()> trataBD);
    std::string_view NomeTipo() const override { return "ObjInterface"; }

    void MostraJanela(const Ref<IForm> &form, std::int16_t modal, Ref<IForm> &dono, std::int16_t depurar,
                      Ref<Objeto> &formClick) override;
    Ref<ITrataBD> pTrataBD() override { return m_TrataBD(); }

  private:
    Ref<IJanelas> m_Janelas;
    std::function<Ref<ITrataBD>()> m_TrataBD;
};

class CFunGenMesa : public ICFunGen {
  public:
    std::string_view NomeTipo() const override { return "CFunGen"; }

    void SetaTituloAvisos(const std::string &titulo) override { m_TituloAvisos = titulo; }
    void DefineAppTitle(const std::string &titulo) override { m_AppTitle = titulo; }
    const std::string &TituloAvisos() const { return m_TituloAvisos; }
    const std::string &AppTitle() const { return m_AppTitle; }

  private:
    std::string m_TituloAvisos;
    std::string m_AppTitle;
};

class AjudaMesa : public IAjuda {
  public:
    explicit AjudaMesa(Ref<IJanelas> janelas) : m_Janelas(std::move(janelas)) {}
    std::string_view NomeTipo() const override { return "Ajuda"; }

    void TrataAjuda2(const Ref<IAplicacao> &, std::string &topico) override { m_Janelas->MostraAjuda(topico); }

  private:
    Ref<IJanelas> m_Janelas;
};

// Report service: the report in a PDF, which the viewer shows and prints. The desk knows no report layouts, so a report
// has its name, its parameters and the number of its rows.
class RelatoriosMesa : public IRelatorios {
  public:
    RelatoriosMesa(Ref<IJanelas> janelas, std::filesystem::path temporarios);
    std::string_view NomeTipo() const override { return "Relatorios"; }

    void DefinePathRPT(const std::string &) override {}
    void DefinePathMDB(const std::string &) override {}
    void DefineCurrentRecordSet(const Ref<ICursor> &cursor) override { m_Cursor = cursor; }
    bool Imprimir(ParametrosRelatorio &parametros) override;
    bool ImprimirDesigner(ParametrosRelatorio &parametros) override;

  private:
    Ref<IJanelas> m_Janelas;
    std::filesystem::path m_Temporarios;
    Ref<ICursor> m_Cursor;
};

// Registration of auto-modules: one line a module in a file of the user's data directory.
class AMRegistroMesa : public IAMRegistro {
  public:
    explicit AMRegistroMesa(std::filesystem::path arquivo) : m_Arquivo(std::move(arquivo)) {}
    std::string_view NomeTipo() const override { return "AMRegistro"; }

    void RegistraAM(const std::string &componente, const std::string &classe, const Valor &nomeAPP) override;
    void DesregistraAM(const std::string &componente, const Valor &nomeAPP) override;

  private:
    std::filesystem::path m_Arquivo;
};

// Merging of a module's items into the desk's menus.
class AMEditMenuMesa : public IAMEditMenu {
  public:
    std::string_view NomeTipo() const override { return "AMEditMenu"; }

    void IncorporaMenu(Ref<IActBar> &actBar, ItensMenu &itens, bool reservado) override;
    void RemoveMenu(Ref<IActBar> &actBar, ItensMenu &itens) override;
};

} // namespace mesa
