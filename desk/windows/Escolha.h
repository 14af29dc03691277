#pragma once

#include "desk/host/Titulo.h"
#include "desk/windows/Icones.h"

#include <QAbstractButton>
#include <QDialog>

namespace mesa {

// A dialog of which each button is an answer; closing it is the last one.
template <class Opcao> class Escolha : public QDialog {
  public:
    Escolha(const QString &nome, Opcao semResposta, QWidget *dono = nullptr) : QDialog(dono), m_Resposta(semResposta)
    {
        constexpr int largura = 560;
        setObjectName(nome);
        setWindowTitle(TituloDosAvisos);
        setWindowIcon(Icone("equipamentos"));
        setMinimumWidth(largura);
    }
    void Responde(QAbstractButton *botao, Opcao opcao)
    {
        connect(botao, &QAbstractButton::clicked, this, [this, opcao] {
            m_Resposta = opcao;
            accept();
        });
    }
    Opcao Pergunta()
    {
        exec();
        return m_Resposta;
    }

  private:
    Opcao m_Resposta;
};

} // namespace mesa
