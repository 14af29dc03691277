#include "desk/windows/FichaQt.h"

#include "desk/windows/Dialogos.h"
#include "desk/windows/Icones.h"
#include "desk/windows/PainelDaFicha.h"
#include "services/TextoQt.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>
#include <vector>

namespace mesa {

FichaQt::FichaQt(Ficha &ficha, BordaDaJanela borda, QWidget *dono)
    : QDialog(dono),
      m_Ficha(ficha),
      m_Borda(std::move(borda)),
      m_Campos(new PainelDaFicha(ficha, this)),
      m_Aviso(FazAviso(this))
{
    setObjectName(Q(ficha.Nome));
    setWindowTitle(Q(ficha.Titulo));
    setWindowIcon(Icone("equipamentos"));
    std::vector<QPushButton *> comandos; // on the left, so before the others in the order of Tab
    for (const ComandoDaFicha &comando : ficha.Comandos) {
        comandos.push_back(FazBotao(Q(comando.Nome), Q(comando.Rotulo), this));
        connect(comandos.back(), &QPushButton::clicked, this, [this, comando] { Comanda(comando); });
    }
    QPushButton *ok = FazBotao("ok", "&OK", this);
    QPushButton *cancelar = FazBotao("cancelar", "&Cancelar", this);
    ok->setDefault(true);
    auto *tudo = new QVBoxLayout(this);
    if (!ficha.Frase.empty()) {
        tudo->addWidget(FazTexto("frase", Q(ficha.Frase), this));
    }
    tudo->addWidget(m_Campos);
    tudo->addStretch(1);
    tudo->addWidget(m_Aviso);
    QBoxLayout *botoes = EmLinha({ok, cancelar});
    for (int lugar = 0; QPushButton * comando : comandos) {
        botoes->insertWidget(lugar++, comando);
    }
    tudo->addLayout(botoes);
    for (const CampoDaFicha &campo : ficha.Campos) {
        if (!campo.Travado) {
            m_Campos->Foca(campo.Nome);
            break;
        }
    }
    connect(ok, &QPushButton::clicked, this, [this] { Tenta(); });
    connect(cancelar, &QPushButton::clicked, this, &QDialog::reject);
}

FichaQt::~FichaQt()
{
    m_Campos->LimpaSenhas();
}

void FichaQt::Comanda(const ComandoDaFicha &comando)
{
    if (PerguntaSimNao(Q(comando.Pergunta), this)) {
        m_Borda([&] {
            comando.Faz();
            InformaEmCaixa(Q(comando.Feito), this);
        });
    }
}

void FichaQt::Tenta()
{
    m_Aviso->clear();
    m_Campos->Recolhe();
    m_Campos->RecolheSenhas();
    bool aceita = false;
    m_Borda([&] {
        const auto problema = m_Ficha.Salva(m_Ficha);
        aceita = !problema;
        if (problema) {
            MostraAviso(*m_Aviso, Q(problema->Frase));
            m_Campos->Foca(problema->Campo);
        }
    });
    if (aceita) {
        accept();
    }
}

} // namespace mesa
