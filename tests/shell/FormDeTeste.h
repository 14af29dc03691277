#pragma once

#include "shell/Formulario.h"

#include <functional>
#include <string>
#include <vector>

// A form of the module with one label, whose class has any name.
class FormDeTeste : public Formulario {
  public:
    explicit FormDeTeste(std::string classe = "frmTeste") : m_Classe(std::move(classe)) {}
    std::string_view NomeTipo() const override { return m_Classe; }
    bool MDIChild() const override { return Filha; }

    ::Desenho Desenho() const override
    {
        return {.Caption = "Teste",
                .Largura = 6000,
                .Altura = 3001,
                .Raiz = EmColuna({{.Ajustes = AjustesLabel{}, .Nome = "lblTexto"}})};
    }

    bool Filha = false;
    bool TemParent = true; // without the member frmParent otherwise
    bool CancelaUnload = false;
    std::function<void()> AoLigarControles;
    std::function<void()> AoDescarregar;
    std::function<void()> AoAtivar;
    mutable std::int32_t PedidosParent = 0;
    std::vector<std::string> Eventos;
    Ref<ILabel> lblTexto;
    Evento<> Sinal; // an event of the form's own, connected at each load

    using Formulario::AbandonaCarga;
    using Formulario::Carregado;
    using Formulario::Carregar;
    using Formulario::DefineIcone;
    using Formulario::Descarregar;

    Ref<IForm> frmParent() const override
    {
        ++PedidosParent;
        return TemParent ? Formulario::frmParent() : IForm::frmParent();
    }

    void Sinal_Recebido() { Eventos.push_back("Sinal"); }

  protected:
    void LigaControles() override
    {
        Toma(lblTexto, "lblTexto");
        Liga(Sinal, &FormDeTeste::Sinal_Recebido);
        if (AoLigarControles) {
            AoLigarControles();
        }
    }
    void Solta() override { Eventos.push_back("Solta"); }
    void Form_Unload(bool &cancela) override
    {
        Eventos.push_back("Unload");
        cancela = CancelaUnload;
        if (const std::function<void()> aoDescarregar = AoDescarregar) { // which may let go of the form
            aoDescarregar();
        }
    }
    void Form_Activate() override
    {
        Eventos.push_back("Activate");
        if (AoAtivar) {
            AoAtivar();
        }
    }
    void Form_Deactivate() override { Eventos.push_back("Deactivate"); }
    void Form_Resize() override { Eventos.push_back("Resize"); }

  private:
    std::string m_Classe;
};
