#pragma once

#include "host/Data.h"
#include "host/IForm.h"

#include <cstdint>
#include <string>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

// Values of the mouse pointer.
inline constexpr std::int16_t PonteiroNormal = 0;
inline constexpr std::int16_t PonteiroAmpulheta = 11;

// The component's application object.
class IAplicacao : public Objeto {
  public:
    // The component's file name without extension, "ZTAVOREQUIP".
    virtual std::string Nome() const = 0;
    virtual std::string Titulo() const = 0;
    virtual std::string Descricao() const = 0; // may be empty
};

// The platform under the module: screen, message queue, boxes, open forms, clock and files. Paths use "\" as separator;
// a host on another system translates them. File operations raise 53 (no such file), 61 (disk full), 70 (denied), 75
// (other access error) and 76 (no such directory).
class IPlataforma : public Objeto {
  public:
    virtual Ref<IAplicacao> Aplicacao() = 0;

    // Pointer of the whole screen.
    virtual std::int16_t Ponteiro() const = 0;
    virtual void DefinePonteiro(std::int16_t valor) = 0;
    // Lets the message queue run once; another action of the person may arrive in it.
    virtual void ProcessaMensagens() = 0;
    // Size of the screen in twips.
    virtual std::int32_t LarguraTela() const = 0;
    virtual std::int32_t AlturaTela() const = 0;

    // Question box with the buttons yes and no; true for yes. padraoSim: yes is the default button, otherwise no.
    virtual bool PerguntaSimNao(const std::string &texto, const std::string &titulo, bool padraoSim) = 0;
    // Box of the information kind with an OK button.
    virtual void CaixaInformacao(const std::string &texto, const std::string &titulo) = 0;

    // Open forms of the component, from position 0; fault 9 outside them. Loaded counts as open, shown or not.
    virtual std::int32_t NroForms() const = 0;
    virtual Ref<IForm> FormAberto(std::int32_t posicao) const = 0;
    // The form has been loaded: the host keeps it among the open ones.
    virtual void Carrega(const Ref<IForm> &form) = 0;
    // Unloads a form: asks it with IForm::Unload and, unless that cancels, takes it from the open ones, closes its
    // window and its wrapping form, and ends the modal show that waits for it. Without effect on a form that is not
    // open.
    virtual void Descarrega(const Ref<IForm> &form) = 0;
    // Writes the text of a window by its handle, without the form's own property knowing.
    virtual void DefineTextoJanela(std::int64_t hwnd, const std::string &texto) = 0;
    // Whether the module's icon list has an image of that key.
    virtual bool TemIcone(const std::string &chave) const = 0;

    virtual Data Agora() const = 0;
    // A date in the short form of the regional settings.
    virtual std::string DataCurta(Data data) const = 0;

    // Directory from which the module's own file was loaded, without a separator at its end.
    virtual std::string CaminhoModulo() const = 0;
    virtual bool ExisteArquivo(const std::string &caminho) const = 0;
    // Length in bytes.
    virtual std::int64_t TamanhoArquivo(const std::string &caminho) const = 0;
    virtual void ApagaArquivo(const std::string &caminho) = 0;
    // Creates the file if it is missing and writes the bytes from its start. What the file holds behind them stays.
    virtual void GravaArquivo(const std::string &caminho, const Bytes &bytes) = 0;
    // First name that matches a pattern such as "C:\LAY\*.LAY", case ignored, without its directory; empty when none
    // does. The order is the file system's.
    virtual std::string PrimeiroArquivo(const std::string &padrao) = 0;
    // Next name of the pattern last given; empty at the end.
    virtual std::string ProximoArquivo() = 0;
};
