#include "desk/windows/Dialogos.h"

#include "desk/host/Titulo.h"
#include "desk/windows/Acessibilidade.h"
#include "desk/windows/Cores.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace mesa {

namespace {

void MostraCaixa(QMessageBox::Icon icone, const QString &frase, QWidget *dono)
{
    QMessageBox caixa(icone, TituloDosAvisos, frase, QMessageBox::NoButton, dono);
    caixa.setTextFormat(Qt::PlainText);
    caixa.addButton("&OK", QMessageBox::AcceptRole);
    caixa.exec();
}

} // namespace

QWidget *FazCabeca(const QString &titulo, const QString &frase, QWidget *dono)
{
    constexpr int lado = 56;
    auto *cabeca = new QWidget(dono);
    auto *marca = new QLabel(cabeca);
    marca->setPixmap(QIcon(":/icones/equipamentos.svg").pixmap(lado, lado));
    QLabel *nome = FazTexto("titulo", titulo, cabeca);
    QFont letra = nome->font();
    letra.setPointSize(15);
    letra.setBold(true);
    nome->setFont(letra);
    QLabel *texto = FazTexto("frase", frase, cabeca);
    auto *textos = new QVBoxLayout;
    textos->addWidget(nome);
    textos->addWidget(texto);
    auto *linha = new QHBoxLayout(cabeca);
    linha->setContentsMargins(0, 0, 0, 0);
    linha->addWidget(marca, 0, Qt::AlignTop);
    linha->addLayout(textos, 1);
    return cabeca;
}

QLabel *FazAviso(QWidget *dono)
{
    QLabel *aviso = FazTexto("aviso", "", dono);
    Colore(*aviso, Cor::Erro);
    return aviso;
}

void MostraAviso(QLabel &aviso, const QString &texto)
{
    aviso.setText(texto);
    Anuncia(aviso);
    QWidget *janela = aviso.window();
    if (QLayout *leiaute = janela->layout()) {
        leiaute->activate();
        const int altura = leiaute->hasHeightForWidth() ? leiaute->totalHeightForWidth(janela->width())
                                                        : leiaute->totalMinimumSize().height();
        if (altura > janela->height()) {
            janela->resize(janela->width(), altura);
        }
    }
}

QLabel *FazTexto(const QString &nome, const QString &texto, QWidget *dono)
{
    auto *rotulo = new QLabel(texto, dono);
    rotulo->setObjectName(nome);
    rotulo->setTextFormat(Qt::PlainText);
    rotulo->setWordWrap(true);
    return rotulo;
}

QPushButton *FazBotao(const QString &nome, const QString &texto, QWidget *dono)
{
    auto *botao = new QPushButton(texto, dono);
    botao->setObjectName(nome);
    botao->setAutoDefault(false);
    return botao;
}

bool PerguntaSimNao(const QString &pergunta, QWidget *dono)
{
    QMessageBox caixa(QMessageBox::Question, TituloDasPerguntas, pergunta, QMessageBox::NoButton, dono);
    caixa.setTextFormat(Qt::PlainText);
    const QPushButton *sim = caixa.addButton("&Sim", QMessageBox::YesRole);
    QPushButton *nao = caixa.addButton("&Não", QMessageBox::NoRole);
    caixa.setDefaultButton(nao);
    caixa.setEscapeButton(nao);
    caixa.exec();
    return caixa.clickedButton() == sim;
}

void AvisaEmCaixa(const QString &frase, QWidget *dono)
{
    MostraCaixa(QMessageBox::Warning, frase, dono);
}

void InformaEmCaixa(const QString &frase, QWidget *dono)
{
    MostraCaixa(QMessageBox::Information, frase, dono);
}

QBoxLayout *EmLinha(std::initializer_list<QPushButton *> botoes)
{
    auto *linha = new QHBoxLayout;
    linha->addStretch(1);
    for (QPushButton *botao : botoes) {
        linha->addWidget(botao);
    }
    return linha;
}

} // namespace mesa
