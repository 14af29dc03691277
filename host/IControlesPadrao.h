#pragma once

#include "host/IControle.h"

#include <cstdint>
#include <string>
#include <vector>

// The platform's own controls.

class ILabel : public IControle {};

class IImage : public IControle {};

class IztFrame : public IControle {
  public:
    // Gives its ground the system's button-face colour.
    virtual void PintaComoBotao() = 0;
};

class ITextBox : public IControle {
  public:
    virtual std::string Text() const = 0;
    // Cut to MaxLength characters. Raises Change when the text becomes another one.
    virtual void DefineText(const std::string &valor) = 0;
    virtual bool Locked() const = 0;
    virtual void DefineLocked(bool valor) = 0;
    // Characters; 0 for no limit.
    virtual std::int32_t MaxLength() const = 0;
    virtual Evento<> &Change() = 0;
};

class ICheckBox : public IControle {
  public:
    // 0 unchecked, 1 checked.
    virtual std::int16_t Value() const = 0;
    // Raises Click when the value becomes another one.
    virtual void DefineValue(std::int16_t valor) = 0;
    virtual Evento<> &Click() = 0;
};

class IOptionButton : public IControle {
  public:
    virtual bool Value() const = 0;
    // Options of one container exclude each other: switching one on switches the others off without an event of theirs.
    // Raises Click when this one goes on.
    virtual void DefineValue(bool valor) = 0;
    virtual Evento<> &Click() = 0;
};

class ICommandButton : public IControle {
  public:
    // The form's default button, which the Enter key presses. A form has at most one.
    virtual bool Default() const = 0;
    virtual void DefineDefault(bool valor) = 0;
    // The form's cancel button, which the Esc key presses.
    virtual bool Cancel() const = 0;
    virtual Evento<> &Click() = 0;
};

// Tab strip; pages are numbered from 0.
class ISSTab : public IControle {
  public:
    virtual std::int16_t Tabs() const = 0;
    // Current page.
    virtual std::int16_t Tab() const = 0;
    // Opens a page and raises Click with the page left. Without effect, and without event, on the current page and on
    // one that is not enabled or not visible. Fault 5 for a page that does not exist.
    virtual void DefineTab(std::int16_t pagina) = 0;
    virtual std::string TabCaption(std::int16_t pagina) const = 0;
    // Whether a page is available; one that is not cannot be opened.
    virtual bool TabEnabled(std::int16_t pagina) const = 0;
    virtual void DefineTabEnabled(std::int16_t pagina, bool valor) = 0;
    virtual bool TabVisible(std::int16_t pagina) const = 0;
    virtual void DefineTabVisible(std::int16_t pagina, bool valor) = 0;
    // Argument: the page that was current before.
    virtual Evento<std::int16_t> &Click() = 0;
};

// The platform's file dialog. FileName keeps its value between two uses; cancelling leaves it and raises nothing.
class ICommonDialog : public IControle {
  public:
    // Pairs of text and pattern separated by "|".
    virtual void DefineFilter(const std::string &valor) = 0;
    virtual void DefineDefaultExt(const std::string &valor) = 0;
    virtual void DefineDialogTitle(const std::string &valor) = 0;
    virtual std::string FileName() const = 0;
    virtual void DefineFileName(const std::string &valor) = 0;
    // Shows the dialog for opening a file and returns when it is closed.
    virtual void ShowOpen() = 0;
};
