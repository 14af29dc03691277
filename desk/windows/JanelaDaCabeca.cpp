#include "desk/windows/JanelaDaCabeca.h"

#include "desk/windows/Dialogos.h"
#include "desk/windows/EscolhaDeArquivo.h"
#include "desk/windows/Icones.h"
#include "host/Falha.h"
#include "services/TextoQt.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace mesa {

namespace {

constexpr int Margem = 4; // of white dots around the code, without which it is not read
constexpr int Ponto = 4;  // pixels

QPixmap Desenha(const CodigoQR &codigo)
{
    const int lado = codigo.Lado + 2 * Margem;
    QPixmap desenho(lado * Ponto, lado * Ponto);
    desenho.fill(Qt::white);
    QPainter pincel(&desenho);
    for (int y = 0; y < codigo.Lado; ++y) {
        for (int x = 0; x < codigo.Lado; ++x) {
            if (codigo.Escuro(x, y)) {
                pincel.fillRect((x + Margem) * Ponto, (y + Margem) * Ponto, Ponto, Ponto, Qt::black);
            }
        }
    }
    return desenho;
}

} // namespace

JanelaDaCabeca::JanelaDaCabeca(CabecaAssinada cabeca, QWidget *dono) : QDialog(dono), m_Cabeca(std::move(cabeca))
{
    setObjectName("Cabeca");
    setWindowTitle("Exportar cabeça");
    setWindowIcon(Icone("equipamentos"));
    auto *texto = new QPlainTextEdit(Q(m_Cabeca.Texto()), this);
    texto->setObjectName("texto");
    texto->setAccessibleName("Cabeça do histórico");
    texto->setReadOnly(true);
    texto->setTabChangesFocus(true);
    texto->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    texto->setMinimumWidth(360);
    auto *codigo = new QLabel(this);
    codigo->setObjectName("codigo");
    codigo->setAccessibleName("A cabeça do histórico em código QR");
    codigo->setPixmap(Desenha(CodigoQR::De(m_Cabeca.Texto())));
    auto *meio = new QHBoxLayout;
    meio->addWidget(texto, 1);
    meio->addWidget(codigo);
    QPushButton *salvar = FazBotao("salvar", "&Salvar...", this);
    QPushButton *fechar = FazBotao("fechar", "&Fechar", this);
    auto *tudo = new QVBoxLayout(this);
    tudo->addWidget(FazTexto("frase",
                             "Guarde a cabeça do histórico fora deste computador. Com ela se prova depois que nada do "
                             "que está no registro até agora foi mudado ou cortado.",
                             this));
    tudo->addLayout(meio, 1);
    tudo->addLayout(EmLinha({salvar, fechar}));
    connect(salvar, &QPushButton::clicked, this, [this] { Salva(); });
    connect(fechar, &QPushButton::clicked, this, &QDialog::accept);
    salvar->setDefault(true);
    salvar->setFocus();
}

void JanelaDaCabeca::Salva()
{
    EscolhaDeArquivo escolha;
    escolha.Titulo = windowTitle();
    escolha.Filtros = "Texto (*.txt);;Todos os arquivos (*)";
    escolha.Uso = "cabecas";
    escolha.Extensao = "txt";
    escolha.Nome = "cabeca.txt";
    escolha.Pergunta = false; // nothing is written over
    const QString destino = EscolheParaSalvar(escolha, this);
    if (destino.isEmpty()) {
        return;
    }
    try {
        ExportacaoDeCabeca::Grava(m_Cabeca, S(destino));
    } catch (const Falha &falha) {
        AvisaEmCaixa(Q(falha.Descricao), this);
    }
}

} // namespace mesa
