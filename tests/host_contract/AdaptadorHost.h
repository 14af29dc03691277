#pragma once

#include "host/HostServices.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

// A host as the suite needs it: logged on and ready for the module, with an empty registry of equipment and all
// permissions. Each test has one of its own. Beside the host's objects it brings the person in front of the host, and
// says where hosts may differ.
class AdaptadorHost {
  public:
    virtual ~AdaptadorHost() = default;

    virtual Ref<HostServices> Host() = 0;
    virtual Ref<IobjMTM> objMTM() = 0;
    virtual Ref<IobjSCA> objSCA() = 0;
    virtual Ref<IObjInterface> ObjInterface() = 0;
    virtual Ref<IoAppEXE> oAppEXE() = 0;
    virtual Ref<IFormMDI> FormMDI() = 0;
    virtual Ref<IActBar> ActBar() = 0;

    // An empty directory for the suite's files, with a separator at its end.
    virtual std::string Diretorio() = 0;
    // Content of a file; no value when there is none.
    virtual std::optional<Bytes> LeArquivo(const std::string &caminho) = 0;
    // Text that the person sees as the title of a window.
    virtual std::string TextoJanela(const Ref<IForm> &form) = 0;

    // What the person does when the host next asks or shows something.

    // In the next modal show of a form of that class.
    virtual void NaProximaModal(const std::string &classe, std::function<void(const Ref<IForm> &)> acao) = 0;
    // Answers the next question, which has that text; no value: with Enter.
    virtual void RespondePergunta(const std::string &texto, std::optional<bool> sim) = 0;
    // Closes the next box that only tells something.
    virtual void FechaProximaCaixa() = 0;
    // Closes the next document viewer that is shown modally.
    virtual void FechaProximoVisor() = 0;
    // Lets everything happen that the host has put off, such as the activation of a window.
    virtual void DeixaPassar() = 0;

    // What the person does with a control of a form that is shown. False when it could not be done.
    virtual bool Clica(const Ref<IForm> &form, const std::string &controle) = 0;
    virtual bool Digita(const Ref<IForm> &form, const std::string &controle, const std::string &texto) = 0;
    virtual bool Escolhe(const Ref<IForm> &form, const std::string &combo, const std::string &texto) = 0;
    virtual bool AbrePagina(const Ref<IForm> &form, const std::string &tab, std::int16_t pagina) = 0;
    virtual bool ClicaLinha(const Ref<IForm> &form, const std::string &lista, std::int32_t linha) = 0;
    virtual bool EscolheMenu(const Ref<IForm> &form, const std::string &lista, const std::string &chave) = 0;

    // Whether the document store takes an empty document.
    virtual bool AceitaDocumentoVazio() const { return true; }
    // A document as the service's answers carry it.
    virtual std::string TextoDeDocumento(const Bytes &bytes) { return {bytes.begin(), bytes.end()}; }

    // The test is over: whatever the adapter still has to check.
    virtual void Encerra() {}
};

// How a host brings itself to the suite:
//
//   INSTANTIATE_TEST_SUITE_P(NameOfTheHost, ContratoHost, testing::Values([] { return std::make_unique<Adapter>(); }));
using FabricaAdaptador = std::function<std::unique_ptr<AdaptadorHost>()>;
