#pragma once

#include "host/IForm.h"
#include "host/IPlataforma.h"
#include "host/ISessao.h"

#include <cstdint>
#include <string>
#include <vector>

// A menu item that a module contributes. Element 0 of an array of them is a placeholder, Nothing.
class ItemMenuModulo : public Objeto {
  public:
    std::string_view NomeTipo() const override { return "ItemMenuModulo"; }

    std::string Name; // key of the tool in its band
    std::string Band;
    std::string SubBand;
    bool NeverDisabled = false;
    bool HideWhenDisable = false;
};
using ItensMenu = std::vector<Ref<ItemMenuModulo>>;

class ITool : public Objeto {
  public:
    virtual bool Visible() const = 0;
    virtual void DefineVisible(bool valor) = 0;
    virtual bool Enabled() const = 0;
    virtual void DefineEnabled(bool valor) = 0;
};

class ITools : public Objeto {
  public:
    virtual std::int32_t Count() const = 0;
    // By position from 0, or by key. Raises when there is none.
    virtual Ref<ITool> ItemPosicao(std::int32_t posicao) = 0;
    virtual Ref<ITool> ItemNome(const std::string &nome) = 0;
};

class IBand : public Objeto {
  public:
    virtual std::string Name() const = 0;
    virtual Ref<ITools> Tools() = 0;
    virtual void TrackPopup(std::int32_t x, std::int32_t y) = 0;
};

class IBands : public Objeto {
  public:
    virtual std::int32_t Count() const = 0;
    // By position from 0, or by name. Raises when there is none.
    virtual Ref<IBand> ItemPosicao(std::int32_t posicao) = 0;
    virtual Ref<IBand> ItemNome(const std::string &nome) = 0;
};

// Menu and toolbar holder.
class IActBar : public Objeto {
  public:
    virtual Ref<IBands> Bands() = 0;
};

// Main form of the host. What is no main form raises fault 438 on AutoShowChildren, as these bodies do.
class IFormMDI : public Objeto {
  public:
    // Read only as a probe.
    virtual bool AutoShowChildren() { throw Falha(NumeroFalha::MembroInexistente); }
    virtual Ref<Objeto> objZTP() { throw Falha(NumeroFalha::MembroInexistente); }
    virtual bool PossuiJanelaEnviaRecebe() { throw Falha(NumeroFalha::MembroInexistente); }
    // Client area, in twips.
    virtual std::int32_t ScaleWidth() { throw Falha(NumeroFalha::MembroInexistente); }
    virtual std::int32_t ScaleHeight() { throw Falha(NumeroFalha::MembroInexistente); }
    virtual std::int32_t Left() { throw Falha(NumeroFalha::MembroInexistente); }
    virtual std::int32_t Top() { throw Falha(NumeroFalha::MembroInexistente); }
    virtual std::int32_t Width() { throw Falha(NumeroFalha::MembroInexistente); }
    virtual std::int32_t Height() { throw Falha(NumeroFalha::MembroInexistente); }
    // The host's send and receive window: its text, opening it, closing it (always with true).
    virtual void MsgEnviaRecebe(std::string &) { throw Falha(NumeroFalha::MembroInexistente); }
    virtual void AbrirEnviaRecebe() { throw Falha(NumeroFalha::MembroInexistente); }
    virtual void FecharEnviaRecebe(bool) { throw Falha(NumeroFalha::MembroInexistente); }
};

// Descriptor of the host application.
class IoAppEXE : public Objeto {
  public:
    virtual std::string Title() = 0;
    virtual std::string Path() = 0;
    virtual std::string ProductName() = 0;
};

// Global services of the host. A member that a given host lacks raises fault 438, as these bodies do.
class IcGlobal : public Objeto {
  public:
    // Called after every answer about a tool.
    virtual void MontaEstruturaMenus(std::string &, const std::string &)
    {
        throw Falha(NumeroFalha::MembroInexistente);
    }
    // A form of the module became the active one; argument: the component's name.
    virtual void gsubSetaAutoModuloAtivo(const std::string &) { throw Falha(NumeroFalha::MembroInexistente); }
    // A sibling module by name: the first when the object's class is CAutoModulos, otherwise the second.
    virtual Ref<Objeto> PegaAutoModulo(const std::string &) { throw Falha(NumeroFalha::MembroInexistente); }
    virtual Ref<Objeto> gfunRetornaAutoModulo(const std::string &) { throw Falha(NumeroFalha::MembroInexistente); }
};

// Interface services.
class IObjInterface : public Objeto {
  public:
    // Shows a form of the module, wrapping it if the host wants to. modal: 0 returns at once, -1 returns when the form
    // is closed. dono may be Nothing. depurar: 0 or -1. formClick: the host puts the form shown here.
    virtual void MostraJanela(const Ref<IForm> &form, std::int16_t modal, Ref<IForm> &dono, std::int16_t depurar,
                              Ref<Objeto> &formClick) = 0;
    virtual Ref<ITrataBD> pTrataBD() = 0;
};

// General functions of the host.
class ICFunGen : public Objeto {
  public:
    virtual void SetaTituloAvisos(const std::string &titulo) = 0;
    virtual void DefineAppTitle(const std::string &titulo) = 0;
};

class IAjuda : public Objeto {
  public:
    virtual void TrataAjuda2(const Ref<IAplicacao> &aplicacao, std::string &topico) = 0;
};

// The eight values that a report gets; all by reference but the report itself.
struct ParametrosRelatorio {
    Valor Relatorio; // a name, or a designer object
    std::vector<std::string> &aParam;
    bool &b1;
    std::uint8_t &n1;
    bool &b2;
    Ref<Objeto> &o1;
    std::string &s1;
    Ref<Objeto> &o2;
};

// Report service.
class IRelatorios : public Objeto {
  public:
    virtual void DefinePathRPT(const std::string &caminho) = 0;
    virtual void DefinePathMDB(const std::string &caminho) = 0;
    virtual void DefineCurrentRecordSet(const Ref<ICursor> &cursor) = 0;
    virtual bool Imprimir(ParametrosRelatorio &parametros) = 0;
    virtual bool ImprimirDesigner(ParametrosRelatorio &parametros) = 0;
};

// Registration of the auto-module.
class IAMRegistro : public Objeto {
  public:
    virtual void RegistraAM(const std::string &componente, const std::string &classe, const Valor &nomeAPP) = 0;
    virtual void DesregistraAM(const std::string &componente, const Valor &nomeAPP) = 0;
};

// Merging of a module's items into the host's menus.
class IAMEditMenu : public Objeto {
  public:
    virtual void IncorporaMenu(Ref<IActBar> &actBar, ItensMenu &itens, bool reservado) = 0;
    virtual void RemoveMenu(Ref<IActBar> &actBar, ItensMenu &itens) = 0;
};
