#pragma once

#include "tests/support/Oferta.h"
#include "tests/support/PlataformaRoteirizada.h"
#include "tests/support/RegistroChamadas.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

// Descriptor of the host application.
class AppEXERoteirizado : public IoAppEXE {
  public:
    explicit AppEXERoteirizado(RefRegistro registro) : m_Registro(std::move(registro)) {}
    std::string_view NomeTipo() const override { return "oAppEXE"; }

    std::string Titulo = "Autuação Eletrônica";
    std::string Caminho = "C:\\HOST";
    std::string Produto = "Sistema de Autuações";

    std::string Title() override { return m_Registro->Le("oAppEXE.Title").Resultado(Titulo); }
    std::string Path() override { return m_Registro->Le("oAppEXE.Path").Resultado(Caminho); }
    std::string ProductName() override { return m_Registro->Le("oAppEXE.ProductName").Resultado(Produto); }

  private:
    RefRegistro m_Registro;
};

class ZTPRoteirizado : public Objeto {
  public:
    std::string_view NomeTipo() const override { return "objZTP"; }
};

// Main form. An object that is no main form is FormQualquer.
class FormMDIRoteirizado : public IFormMDI {
  public:
    explicit FormMDIRoteirizado(RefRegistro registro) : m_Registro(std::move(registro)) {}
    std::string_view NomeTipo() const override { return "FormMDI"; }

    bool PossuiEnviaRecebe = true;
    std::int32_t AreaLargura = 12000;
    std::int32_t AreaAltura = 8000;
    std::int32_t Esquerda = 600;
    std::int32_t Topo = 300;
    std::int32_t Largura = 12240;
    std::int32_t Altura = 9000;
    Oferta<ZTPRoteirizado> ZTP = Novo<ZTPRoteirizado>();

    bool AutoShowChildren() override { return m_Registro->Le("FormMDI.AutoShowChildren").Resultado(true); }
    Ref<Objeto> objZTP() override { return m_Registro->Le("FormMDI.objZTP").Resultado(Ref<Objeto>(ZTP.Propria())); }
    bool PossuiJanelaEnviaRecebe() override
    {
        return m_Registro->Le("FormMDI.PossuiJanelaEnviaRecebe").Resultado(PossuiEnviaRecebe);
    }
    std::int32_t ScaleWidth() override { return m_Registro->Le("FormMDI.ScaleWidth").Resultado(AreaLargura); }
    std::int32_t ScaleHeight() override { return m_Registro->Le("FormMDI.ScaleHeight").Resultado(AreaAltura); }
    std::int32_t Left() override { return m_Registro->Le("FormMDI.Left").Resultado(Esquerda); }
    std::int32_t Top() override { return m_Registro->Le("FormMDI.Top").Resultado(Topo); }
    std::int32_t Width() override { return m_Registro->Le("FormMDI.Width").Resultado(Largura); }
    std::int32_t Height() override { return m_Registro->Le("FormMDI.Height").Resultado(Altura); }
    void MsgEnviaRecebe(std::string &texto) override { m_Registro->Chama("FormMDI.MsgEnviaRecebe", texto); }
    void AbrirEnviaRecebe() override { m_Registro->Chama("FormMDI.AbrirEnviaRecebe"); }
    void FecharEnviaRecebe(bool fecha) override { m_Registro->Chama("FormMDI.FecharEnviaRecebe", fecha); }

  private:
    RefRegistro m_Registro;
};

class FormQualquer : public IFormMDI {
  public:
    std::string_view NomeTipo() const override { return "frmQualquer"; }
};

// Global services. The class's name decides by which operation a sibling module is found; a module that is not in the
// table is fault 5.
class GlobalRoteirizado : public IcGlobal {
  public:
    explicit GlobalRoteirizado(RefRegistro registro) : m_Registro(std::move(registro)) {}
    std::string_view NomeTipo() const override { return Classe; }

    std::string Classe = "cGlobal";
    std::map<std::string, Ref<Objeto>> Modulos;

    void MontaEstruturaMenus(std::string &sTool, const std::string &componente) override
    {
        m_Registro->Chama("cGlobal.MontaEstruturaMenus", sTool, componente);
    }
    void gsubSetaAutoModuloAtivo(const std::string &componente) override
    {
        m_Registro->Chama("cGlobal.gsubSetaAutoModuloAtivo", componente);
    }
    Ref<Objeto> PegaAutoModulo(const std::string &nome) override;
    Ref<Objeto> gfunRetornaAutoModulo(const std::string &nome) override;

  private:
    Ref<Objeto> Modulo(const std::string &nome) const;

    RefRegistro m_Registro;
};

class SessaoRoteirizada;

// Interface services. The log shows owner and debugging flag only when they are given:
// `ObjInterface.MostraJanela(frmLista, modal=False)`.
class InterfaceRoteirizada : public IObjInterface {
  public:
    InterfaceRoteirizada(RefRegistro registro, const Ref<PlataformaRoteirizada> &plataforma,
                         const Ref<SessaoRoteirizada> &sessao);
    std::string_view NomeTipo() const override { return "ObjInterface"; }

    void MostraJanela(const Ref<IForm> &form, std::int16_t modal, Ref<IForm> &dono, std::int16_t depurar,
                      Ref<Objeto> &formClick) override;
    Ref<ITrataBD> pTrataBD() override;

  private:
    RefRegistro m_Registro;
    RefFraca<PlataformaRoteirizada> m_Plataforma;
    RefFraca<SessaoRoteirizada> m_Sessao;
};

// Menu and toolbar holder. Writes to a tool are logged as `Tool(mnuX).Enabled := True`, popups as
// `Band(bndY).TrackPopup(10, 20)`; reads are not. An unknown band or tool is the host's fault 9.
class ActBarRoteirizada : public IActBar {
  public:
    explicit ActBarRoteirizada(RefRegistro registro);
    ~ActBarRoteirizada() override;
    std::string_view NomeTipo() const override { return "ActBar"; }

    // Adds a tool, and its band when it is new; the tool is visible and enabled.
    void PoeFerramenta(const std::string &band, const std::string &tool);
    // An empty band.
    void PoeBand(const std::string &band);
    Ref<ITool> Ferramenta(const std::string &band, const std::string &tool);

    Ref<IBands> Bands() override;

  private:
    class Tool;
    class Tools;
    class Band;
    class ListaBands;

    RefRegistro m_Registro;
    Ref<ListaBands> m_Bands;
};
