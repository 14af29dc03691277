#pragma once

#include "desk/host/HostMesa.h"
#include "shell/Geral.h"
#include "shell/ModGeral.h"
#include "tests/desk/JanelasFalsas.h"
#include "tests/services/RegistroDeTeste.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

// The desk's host over real services, in a data directory that goes away with the test, in front of windows without a
// screen. Nobody is signed in at first.
class HospedeiroDeTeste {
  public:
    HospedeiroDeTeste();

    std::filesystem::path Diretorio() const { return m_Diretorio.path().toStdString(); }
    // A path in the data directory as the module writes it.
    std::string NoModulo(const std::string &nome) const;
    void Entra(const std::string &usuario) { Host->Entra(Registro.Sessao(usuario)); }

  private:
    QTemporaryDir m_Diretorio;

  public:
    RegistroDeTeste Registro;
    Ref<JanelasFalsas> Janelas = Novo<JanelasFalsas>();
    Ref<mesa::HostMesa> Host;
};

// The module in front of it.
class HospedeiroTeste : public testing::Test {
  protected:
    HospedeiroTeste() { InstalaHost(mesa.Host); }
    ~HospedeiroTeste() override
    {
        DescarregaModulo();
        InstalaHost(nullptr);
    }
    // The shell, with that user at work.
    Ref<Geral> Loga(const std::string &usuario);

    HospedeiroDeTeste mesa;
};
