#include "desk/windows/JanelaAdministracao.h"

#include "desk/windows/Dialogos.h"
#include "desk/windows/PaginaQt.h"

#include <QIcon>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include <utility>

namespace mesa {

JanelaAdministracao::JanelaAdministracao(const Administracao &administracao, int pagina, const BordaDaJanela &borda,
                                         const QuemUsa &quem, QWidget *dono)
    : QDialog(dono)
{
    setObjectName("Administracao");
    setWindowTitle("Administração");
    setWindowIcon(QIcon(":/icones/equipamentos.svg"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    resize(860, 560);
    auto oferecidas = administracao.Paginas();
    auto *paginas = new QTabWidget(this);
    paginas->setObjectName("paginas");
    for (std::unique_ptr<PaginaAdministracao> &oferecida : oferecidas) {
        const QString titulo =
            QString::fromUtf8(oferecida->Titulo().data(), static_cast<qsizetype>(oferecida->Titulo().size()));
        paginas->addTab(new PaginaQt(std::move(oferecida), borda, quem, paginas), titulo);
    }
    QPushButton *fechar = FazBotao("fechar", "&Fechar", this);
    auto *tudo = new QVBoxLayout(this);
    tudo->addWidget(paginas, 1);
    tudo->addLayout(EmLinha({fechar}));
    connect(fechar, &QPushButton::clicked, this, &QDialog::accept);
    paginas->setCurrentIndex(pagina);
    const auto carrega = [paginas] {
        if (auto *pagina = dynamic_cast<PaginaQt *>(paginas->currentWidget())) {
            pagina->Carrega();
        }
    };
    connect(paginas, &QTabWidget::currentChanged, this, carrega);
    carrega();
}

} // namespace mesa
