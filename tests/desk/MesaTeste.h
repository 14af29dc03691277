#pragma once

#include "desk/windows/JanelaForm.h"
#include "desk/windows/Mesa.h"
#include "tests/services/RegistroDeTeste.h"

#include <QTabWidget>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>

// The desk on the screen, over a registry of the test's own.
class MesaTeste : public testing::Test {
  protected:
    std::function<Data()> Agora()
    {
        return [this] { return registro.Relogio; };
    }
    void Entra()
    {
        mesa.show();
        mesa.Entra(registro.Sessao("ana"));
    }
    // Each page that can be opened, or the one window; the first one stays in front.
    template <class F> static void CadaPagina(const QWidget &janela, F &&faz, bool tambemTravadas = false)
    {
        auto *abas = janela.findChild<QTabWidget *>();
        for (int pagina = 0; pagina < (abas == nullptr ? 1 : abas->count()); ++pagina) {
            if (abas == nullptr) {
                faz(pagina);
            } else if (tambemTravadas || (abas->isTabEnabled(pagina) && abas->isTabVisible(pagina))) {
                abas->setCurrentIndex(pagina);
                faz(pagina);
            }
        }
        if (abas != nullptr) {
            abas->setCurrentIndex(0);
        }
    }

    QTemporaryDir pasta;
    RegistroDeTeste registro;
    mesa::Preferencias preferencias{pasta.filePath("preferencias.ini").toStdString()};
    mesa::Mesa mesa{mesa::Servicos::Abre(registro.Caminho(), Agora()), pasta.path().toStdString(), Agora(),
                    preferencias};
};
