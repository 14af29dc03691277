#pragma once

#include "desk/windows/JanelaForm.h"

#include <QApplication>
#include <QTest>

#include <functional>
#include <string>
#include <vector>

// The controls to which a key leads each time, by name and index, from one on until it comes back there.
inline std::vector<std::string> VoltaDeTab(const IForm &form, const std::function<void()> &tecla)
{
    constexpr int MuitasTeclas = 200;
    const auto ativo = [&] {
        const Ref<IControle> controle = form.ControleAtivo();
        return controle.Nada() ? std::string() : controle->Nome() + "/" + std::to_string(controle->Indice());
    };
    std::vector<std::string> nomes = {ativo()};
    for (int vez = 0; vez < MuitasTeclas && (nomes.size() < 3 || nomes.back() != nomes.front()); ++vez) {
        tecla();
        nomes.push_back(ativo());
    }
    return nomes;
}

// To the first control that has the focus: a list does not, at its search button.
inline void VaiAoPrimeiro(const mesa::JanelaForm &janela)
{
    Pessoa pessoa(janela.Form());
    while (janela.Form()->ControleAtivo().Nada() && pessoa.Tab()) {
    }
}

// In the window, which is active. The line that filters the rows of a list is a stop of the screen alone.
inline std::vector<std::string> VoltaNaTela(const mesa::JanelaForm &janela)
{
    return VoltaDeTab(*janela.Form(), [] {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        if (QApplication::focusWidget()->objectName().endsWith("_filtro")) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
    });
}

inline std::vector<std::string> VoltaSemTela(const mesa::JanelaForm &janela)
{
    Pessoa pessoa(janela.Form());
    return VoltaDeTab(*janela.Form(), [&] { pessoa.Tab(); });
}
