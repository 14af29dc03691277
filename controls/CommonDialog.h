#pragma once

#include "controls/Controle.h"
#include "host/IControlesPadrao.h"

class CommonDialog : public Controle<ICommonDialog> {
  public:
    using Controle::Controle;

    const std::string &Filter() const { return m_Filter; }
    void DefineFilter(const std::string &valor) override { m_Filter = valor; }
    const std::string &DefaultExt() const { return m_DefaultExt; }
    void DefineDefaultExt(const std::string &valor) override { m_DefaultExt = valor; }
    const std::string &DialogTitle() const { return m_DialogTitle; }
    void DefineDialogTitle(const std::string &valor) override { m_DialogTitle = valor; }
    std::string FileName() const override { return m_FileName; }
    void DefineFileName(const std::string &valor) override { m_FileName = valor; }
    void ShowOpen() override;

    // The screen layer shows the dialog now, and answers with Escolhe; without an answer the person has cancelled.
    Evento<> &AoMostrar() { return m_AoMostrar; }
    // The person chooses a file. Only while the dialog is shown.
    bool Escolhe(const std::string &caminho);
    // The person brings a file: it is what the dialog answers next, without being shown. Empty: no more.
    void Traz(const std::string &caminho) { m_Trazido = caminho; }

  private:
    std::string m_Filter;
    std::string m_DefaultExt;
    std::string m_DialogTitle;
    std::string m_FileName;
    std::string m_Trazido;
    bool m_Mostrando = false;
    Evento<> m_AoMostrar;
};
