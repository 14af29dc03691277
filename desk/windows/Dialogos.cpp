#include "desk/windows/Dialogos.h"

#include "desk/host/Titulo.h"
#include "desk/windows/Acessibilidade.h"
#include "desk/windows/Cores.h"
#include "desk/windows/Icones.h"

#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

namespace mesa {

namespace {

void MostraCaixa(QMessageBox::Icon icone, const QString &frase, QWidget *dono)
{
    QMessageBox caixa(icone, TituloDosAvisos, frase, QMessageBox::NoButton, dono);
    caixa.setTextFormat(Qt::PlainText);
    caixa.addButton("&OK", QMessageBox::AcceptRole);
    caixa.exec();
}

// Larger than the rest, whatever size that has.
class TextoDeTitulo : public QLabel {
  public:
    TextoDeTitulo(const QString &texto, QWidget *dono) : QLabel(texto, dono)
    {
        setObjectName("titulo");
        setTextFormat(Qt::PlainText);
        setWordWrap(true);
        PoeLetra();
    }

  protected:
    void changeEvent(QEvent *evento) override
    {
        QLabel::changeEvent(evento);
        if (evento->type() == QEvent::ApplicationFontChange) {
            PoeLetra();
        }
    }

  private:
    void PoeLetra()
    {
        constexpr double maior = 1.5;
        QFont letra = QApplication::font();
        letra.setPointSizeF(letra.pointSizeF() * maior);
        letra.setBold(true);
        setFont(letra);
    }
};

} // namespace

QWidget *FazCabeca(const QString &titulo, const QString &frase, QWidget *dono)
{
    constexpr int lado = 56;
    auto *cabeca = new QWidget(dono);
    auto *marca = new QLabel(cabeca);
    PoeIcone(*marca, "equipamentos", lado);
    auto *nome = new TextoDeTitulo(titulo, cabeca);
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

void Cresce(QWidget &janela)
{
    QLayout *leiaute = janela.layout();
    if (leiaute == nullptr) {
        return;
    }
    leiaute->activate();
    const int largura = std::max(janela.width(), leiaute->totalMinimumSize().width());
    const int altura =
        leiaute->hasHeightForWidth() ? leiaute->totalHeightForWidth(largura) : leiaute->totalMinimumSize().height();
    const QSize precisa(largura, std::max(janela.height(), altura));
    janela.resize(precisa.boundedTo(janela.screen()->availableSize()).expandedTo(janela.size()));
}

void MostraAviso(QLabel &aviso, const QString &texto)
{
    aviso.setText(texto);
    Anuncia(aviso);
    Cresce(*aviso.window());
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
