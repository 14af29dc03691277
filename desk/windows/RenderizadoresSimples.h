#pragma once

#include "desk/windows/Renderizador.h"
#include "host/Data.h"

#include <cstddef>
#include <functional>
#include <string>

class QLineEdit;

namespace mesa {

class Combo;

// Labels, check boxes, options and both kinds of button.
class RenderTextoFixo : public Renderizador {
  public:
    RenderTextoFixo(Ref<IControle> controle, QWidget *widget, Borda borda);

  protected:
    void Mostra() override;
};

class RenderImagem : public Renderizador {
  public:
    using Renderizador::Renderizador;

  protected:
    void Mostra() override {}
};

class RenderMoldura : public Renderizador {
  public:
    using Renderizador::Renderizador;

  protected:
    void Mostra() override;
};

class RenderMarca : public Renderizador {
  public:
    RenderMarca(Ref<IControle> controle, QWidget *widget, Borda borda);

  protected:
    void Mostra() override;
};

class RenderOpcao : public Renderizador {
  public:
    RenderOpcao(Ref<IControle> controle, QWidget *widget, Borda borda);

  protected:
    void Mostra() override;
};

class RenderBotao : public Renderizador {
  public:
    RenderBotao(Ref<IControle> controle, QWidget *widget, Borda borda);

  protected:
    void Mostra() override;
};

class RenderAbas : public Renderizador {
  public:
    RenderAbas(Ref<IControle> controle, QWidget *widget, Borda borda);

  protected:
    void Mostra() override;
    QWidget *WidgetDe(Parte parte) const override;
    bool eventFilter(QObject *objeto, QEvent *evento) override;
};

// What all fields of typed text answer to a screen.
struct CampoDeTexto {
    std::function<std::string()> Texto;
    std::function<bool()> SomenteLeitura;
    std::function<std::size_t()> Cursor;
    std::function<bool(std::size_t, std::size_t, const std::string &)> Edita;
    std::function<std::string()> Recusa;
};

// Text boxes, masks, dates and observations in a line of text.
class RenderCampo : public Renderizador {
  public:
    // agora: the registry's clock; a date that is empty has its calendar begin there.
    RenderCampo(Ref<IControle> controle, QWidget *widget, Borda borda, const std::function<Data()> &agora);

  protected:
    void Mostra() override;

  private:
    void TextoEditado(const QString &novo);
    void Edita(std::size_t posicao, std::size_t n, const std::string &texto);
    void PoeCalendario(const std::function<Data()> &agora);

    CampoDeTexto m_Campo;
    QLineEdit *m_Linha;
};

class RenderCombo : public Renderizador {
  public:
    RenderCombo(Ref<IControle> controle, QWidget *widget, Borda borda);

  protected:
    void Mostra() override;

  private:
    Combo *m_Combo;
};

} // namespace mesa
