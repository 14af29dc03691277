#include "desk/windows/JanelaSobre.h"

#include "desk/host/Titulo.h"
#include "desk/windows/Dialogos.h"
#include "desk/windows/Icones.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace mesa {

JanelaSobre::JanelaSobre(const QString &texto, QWidget *dono) : QDialog(dono)
{
    setObjectName("Sobre");
    setWindowTitle("Sobre");
    setWindowIcon(Icone("equipamentos"));
    QLabel *dados = FazTexto("dados", texto, this);
    dados->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    QPushButton *copiar = FazBotao("copiar", "&Copiar", this);
    QPushButton *fechar = FazBotao("fechar", "&Fechar", this);
    fechar->setDefault(true);
    auto *tudo = new QVBoxLayout(this);
    tudo->addWidget(FazCabeca(TituloDosAvisos,
                              "Cadastro dos equipamentos que detectam infrações de trânsito, de seus sensores, das "
                              "aferições oficiais com os certificados, e dos limites que valem para eles.",
                              this));
    tudo->addWidget(dados);
    tudo->addStretch(1);
    tudo->addLayout(EmLinha({copiar, fechar}));
    connect(copiar, &QPushButton::clicked, this, [texto] { QApplication::clipboard()->setText(texto); });
    connect(fechar, &QPushButton::clicked, this, &QDialog::accept);
    fechar->setFocus();
}

} // namespace mesa
