#include "desk/windows/JanelaDeRelato.h"

#include "desk/windows/Dialogos.h"

#include <QFileDialog>
#include <QIcon>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSaveFile>
#include <QVBoxLayout>

namespace mesa {

JanelaDeRelato::JanelaDeRelato(const QString &titulo, const QString &frase, const QStringList &linhas, QWidget *dono)
    : QDialog(dono),
      m_Frase(frase),
      m_Linhas(linhas)
{
    setObjectName("Relato");
    setWindowTitle(titulo);
    setWindowIcon(QIcon(":/icones/equipamentos.svg"));
    setMinimumWidth(520);
    auto *tudo = new QVBoxLayout(this);
    tudo->addWidget(FazTexto("frase", frase, this));
    if (!linhas.isEmpty()) {
        resize(680, 420);
        auto *lista = new QPlainTextEdit(linhas.join('\n'), this);
        lista->setObjectName("linhas");
        lista->setAccessibleName("Relato");
        lista->setReadOnly(true);
        lista->setTabChangesFocus(true);
        tudo->addWidget(lista, 1);
    }
    QPushButton *salvar = FazBotao("salvar", "&Salvar...", this);
    QPushButton *fechar = FazBotao("fechar", "&Fechar", this);
    fechar->setDefault(true);
    salvar->setVisible(!linhas.isEmpty());
    tudo->addLayout(EmLinha({salvar, fechar}));
    connect(salvar, &QPushButton::clicked, this, [this] { Salva(); });
    connect(fechar, &QPushButton::clicked, this, &QDialog::accept);
    fechar->setFocus();
}

void JanelaDeRelato::Salva()
{
    SalvaTexto(windowTitle(), "relato.txt", m_Frase + "\n\n" + m_Linhas.join('\n') + "\n", this);
}

void SalvaTexto(const QString &titulo, const QString &nome, const QString &texto, QWidget *dono)
{
    const QString destino = QFileDialog::getSaveFileName(dono, titulo, nome, "Texto (*.txt);;Todos os arquivos (*)");
    if (destino.isEmpty()) {
        return;
    }
    QSaveFile arquivo(destino); // the dialog has asked about one that is there
    arquivo.open(QIODevice::WriteOnly);
    arquivo.write(texto.toUtf8());
    if (!arquivo.commit()) {
        AvisaEmCaixa("Não foi possível salvar em " + destino + ".", dono);
    }
}

} // namespace mesa
