#pragma once

#include "host/IForm.h"

#include <cstdint>
#include <optional>
#include <string>

// What a host's objects need of windows. The window manager offers it over a screen; tests offer it without one.
class IJanelas : public Objeto {
  public:
    // Shows a loaded form in a window of its own, wrapped when it is not modal. A modal one blocks what is open and
    // returns when FechaForm was called for it. Whatever owner the module tells, it stands in front of what is open.
    virtual void MostraForm(const Ref<IForm> &form, bool modal) = 0;
    // The form has been unloaded: its window goes, and the modal show that waits for it ends.
    virtual void FechaForm(const Ref<IForm> &form) = 0;
    virtual void DefineTextoJanela(const Ref<IForm> &form, const std::string &texto) = 0;

    // Wait pointer over all windows.
    virtual void DefineEspera(bool espera) = 0;
    virtual void ProcessaMensagens() = 0;
    // In pixels of 15 twips.
    virtual std::int32_t LarguraTela() const = 0;
    virtual std::int32_t AlturaTela() const = 0;

    virtual bool PerguntaSimNao(const std::string &texto, const std::string &titulo, bool padraoSim) = 0;
    virtual void Informa(const std::string &texto, const std::string &titulo) = 0;
    virtual void Avisa(const std::string &texto, const std::string &titulo) = 0;
    virtual void MostraErro(const std::string &contexto, std::int32_t numero, const std::string &descricao,
                            const std::string &fonte, const std::string &titulo) = 0;

    // Path of the file chosen; no value when the person cancelled. filtro: pairs of text and pattern separated by "|".
    // extensao: of a name that is typed without one, as a pattern. nome: is offered.
    virtual std::optional<std::string> EscolheArquivo(const std::string &filtro, const std::string &titulo,
                                                      const std::string &extensao, const std::string &nome) = 0;
    // Shows a PDF. False, after words to the person, when the file is none. nome: what it is called, empty for the name
    // of its file. modal: returns when the viewer is closed.
    virtual bool MostraPDF(const std::string &caminho, const std::string &nome, bool modal) = 0;
    virtual void MostraAjuda(const std::string &topico) = 0;
};
