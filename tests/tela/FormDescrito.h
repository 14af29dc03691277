#pragma once

#include "controls/FabricaControles.h"
#include "tests/support/FormFalso.h"

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

// A form that tells a description.
class FormDesenhado : public FormFalso {
  public:
    ::Desenho Descricao;

    ::Desenho Desenho() const override { return Descricao; }
};

// A form with the controls of a description.
class FormDescrito {
  public:
    Ref<FormFalso> Form;

    void Faz(const Peca &raiz)
    {
        const auto form = Novo<FormDesenhado>();
        form->Descricao.Raiz = raiz;
        form->DefineVisible(true);
        Form = form;
        Faz(raiz, nullptr, -1);
    }
    Ref<IControle> Controle(const std::string &nome) const
    {
        for (const Ref<IControle> &controle : Form->Controles()) {
            if (controle->Nome() == nome) {
                return controle;
            }
        }
        throw std::runtime_error(nome);
    }

  private:
    void Faz(const Peca &peca, const Ref<IControle> &container, std::int16_t pagina)
    {
        Ref<IControle> dono = container;
        if (peca.Especie()) {
            dono = Form->Guarda(m_Fabrica.Cria(Form, peca, container, pagina));
        }
        const bool abas = peca.Especie() == EspecieControle::SSTab;
        for (std::size_t i = 0; i < peca.Pecas.size(); ++i) {
            Faz(peca.Pecas[i], dono, abas ? static_cast<std::int16_t>(i) : peca.Especie() ? std::int16_t{-1} : pagina);
        }
    }

    FabricaControles m_Fabrica;
};

inline Peca UmCampo(const std::string &nome, std::int16_t caracteres)
{
    return {.Ajustes = AjustesTextBox{}, .Nome = nome, .Caracteres = caracteres};
}

inline Peca UmTexto(const std::string &nome, const std::string &caption, PapelLabel papel = PapelLabel::Rotulo)
{
    return {.Ajustes = AjustesLabel{.Papel = papel}, .Nome = nome, .Caption = caption};
}

inline Peca Rotulado(Peca peca, const std::string &rotulo)
{
    peca.Rotulo = rotulo;
    return peca;
}

inline Peca Elastica(Peca peca)
{
    peca.Elastica = true;
    return peca;
}

inline Peca UmBotao(const std::string &nome, const std::string &caption)
{
    return {.Ajustes = AjustesCommandButton{}, .Nome = nome, .Caption = caption};
}

inline Peca UmQuadro(const std::string &nome, std::vector<Peca> pecas, bool contorno = true)
{
    return {.Ajustes = AjustesZtFrame{.Contorno = contorno}, .Nome = nome, .Caption = "Q", .Pecas = std::move(pecas)};
}

inline Peca PostoEm(Peca peca, std::int32_t left, std::int32_t width = 0)
{
    peca.Left = left;
    peca.Width = width;
    return peca;
}
