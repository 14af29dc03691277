#include "desk/windows/CamadaQt.h"

#include "desk/host/Caminhos.h"
#include "desk/windows/EscolhaDeArquivo.h"
#include "desk/windows/VisorPDF.h"

#include <QApplication>
#include <QEventLoop>
#include <QGuiApplication>
#include <QLabel>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>

namespace mesa {

namespace {

QString CaminhoQt(const std::string &caminho)
{
    return QString::fromStdU16String(CaminhoDoSistema(caminho).u16string());
}

QMessageBox::Icon IconeDe(TipoDeCaixa tipo)
{
    switch (tipo) {
    case TipoDeCaixa::Informacao:
        return QMessageBox::Information;
    case TipoDeCaixa::Aviso:
        return QMessageBox::Warning;
    case TipoDeCaixa::Erro:
        break;
    }
    return QMessageBox::Critical;
}

// A form's window, in a child window of the area or by itself.
class JanelaQt : public WidgetDeJanela {
  public:
    explicit JanelaQt(JanelaForm *janela) : m_Janela(janela) {}
    std::string_view NomeTipo() const override { return "JanelaQt"; }

    QWidget *Widget() const override { return m_Janela; }
    void PoeNaArea(QMdiArea *area, const PedidosDaJanela &pedidos)
    {
        m_Filha = area->addSubWindow(m_Janela);
        m_Filha->setAttribute(Qt::WA_DeleteOnClose);
        QObject::connect(m_Filha, &QMdiSubWindow::aboutToActivate, m_Janela, pedidos.Ativou);
        QObject::connect(m_Filha, &QMdiSubWindow::windowStateChanged, m_Janela,
                         [desativou = pedidos.Desativou](Qt::WindowStates antes, Qt::WindowStates agora) {
                             if ((antes & Qt::WindowActive) && !(agora & Qt::WindowActive)) {
                                 desativou();
                             }
                         });
    }

    void Mostra() override
    {
        if (!m_Filha.isNull()) {
            m_Janela->LembraCriterios();
            m_Filha->show();
        } else {
            m_Janela->show();
        }
    }
    void MostraEEspera() override
    {
        m_Janela->show();
        m_Espera.exec();
    }
    void ParaFrente() override
    {
        if (m_Janela.isNull()) {
            return;
        }
        if (!m_Filha.isNull()) {
            m_Filha->mdiArea()->setActiveSubWindow(m_Filha);
        }
        m_Janela->raise();
        m_Janela->activateWindow();
    }
    void DefineTexto(const std::string &texto) override
    {
        if (!m_Janela.isNull()) {
            m_Janela->DefineTexto(Q(texto));
        }
    }
    void Retira() override
    {
        if (!m_Filha.isNull() && !m_Janela.isNull()) {
            QObject::disconnect(m_Filha, nullptr, m_Janela, nullptr); // it tells of itself until its own end, when
                                                                      // nobody may be there to hear
        }
        if (!m_Janela.isNull()) {
            m_Janela->Encerra();
        }
        if (!m_Filha.isNull()) {
            m_Filha->hide();
            m_Filha->deleteLater();
        }
        m_Espera.quit();
    }

  private:
    QPointer<JanelaForm> m_Janela;
    QPointer<QMdiSubWindow> m_Filha;
    QEventLoop m_Espera;
};

} // namespace

void DialogoQt::ParaFrente()
{
    if (!m_Dialogo.isNull()) {
        m_Dialogo->raise();
        m_Dialogo->activateWindow();
    }
}

void DialogoQt::DefineTexto(const std::string &texto)
{
    if (!m_Dialogo.isNull()) {
        m_Dialogo->setWindowTitle(Q(texto));
    }
}

void DialogoQt::Retira()
{
    if (!m_Dialogo.isNull()) {
        m_Dialogo->reject();
    }
}

QWidget *CamadaQt::WidgetDe(const Ref<IJanela> &janela) const
{
    if (janela) {
        return ComoTipo<WidgetDeJanela>(janela)->Widget();
    }
    return m_Area.isNull() ? nullptr : m_Area->window();
}

Ref<IJanela> CamadaQt::FazJanela(const Ref<IForm> &form, TipoDeJanela tipo, const Ref<IJanela> &dono,
                                 const PedidosDaJanela &pedidos, const DistincaoDeJanela &qual)
{
    const bool filha = tipo == TipoDeJanela::Filha;
    auto *janela = new JanelaForm(
        form,
        {pedidos, Clientes, Logradouros, m_Memoria, Lembrancas, qual, IdentidadeDaJanela(*form, qual), Usuario, Agora},
        filha ? nullptr : WidgetDe(dono));
    const Ref<JanelaQt> feita = Novo<JanelaQt>(janela);
    if (filha) {
        feita->PoeNaArea(m_Area, pedidos);
    } else {
        janela->setWindowFlags(Qt::Dialog | Qt::WindowCloseButtonHint | Qt::WindowMaximizeButtonHint);
        janela->setWindowModality(tipo == TipoDeJanela::Modal ? Qt::ApplicationModal : Qt::NonModal);
    }
    return feita;
}

void CamadaQt::MostraEspera(bool espera)
{
    if (espera) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        QApplication::restoreOverrideCursor();
    }
}

void CamadaQt::ProcessaMensagens()
{
    QApplication::processEvents();
}

std::int32_t CamadaQt::LarguraTela() const
{
    return QGuiApplication::primaryScreen()->size().width();
}

std::int32_t CamadaQt::AlturaTela() const
{
    return QGuiApplication::primaryScreen()->size().height();
}

bool CamadaQt::PerguntaSimNao(const std::string &texto, const std::string &titulo, bool padraoSim,
                              const Ref<IJanela> &dono)
{
    QMessageBox caixa(QMessageBox::Question, Q(titulo), Q(texto), QMessageBox::NoButton, WidgetDe(dono));
    caixa.setTextFormat(Qt::PlainText);
    QPushButton *sim = caixa.addButton("&Sim", QMessageBox::YesRole);
    QPushButton *nao = caixa.addButton("&Não", QMessageBox::NoRole);
    caixa.setDefaultButton(padraoSim ? sim : nao);
    caixa.setEscapeButton(nao);
    caixa.exec();
    return caixa.clickedButton() == sim;
}

void CamadaQt::MostraCaixa(TipoDeCaixa tipo, const std::string &texto, const std::string &titulo,
                           const std::string &detalhes, const Ref<IJanela> &dono)
{
    QMessageBox caixa(IconeDe(tipo), Q(titulo), Q(ComNomesDoSistema(texto)), QMessageBox::NoButton, WidgetDe(dono));
    caixa.setTextFormat(Qt::PlainText);
    caixa.addButton("&OK", QMessageBox::AcceptRole);
    if (!detalhes.empty()) {
        caixa.setInformativeText(Q(detalhes));
    }
    for (QLabel *rotulo : caixa.findChildren<QLabel *>()) {
        rotulo->setTextFormat(Qt::PlainText); // the box sees to its first one only
    }
    caixa.exec();
}

std::optional<std::string> CamadaQt::EscolheArquivo(const PedidoDeArquivo &pedido, const Ref<IJanela> &dono)
{
    QStringList textos; // which name their patterns
    for (const FiltroDeArquivo &filtro : pedido.Filtros) {
        textos << Q(filtro.Texto);
    }
    EscolhaDeArquivo escolha;
    escolha.Titulo = Q(pedido.Titulo);
    escolha.Filtros = textos.join(";;");
    escolha.Uso = "documentos";
    escolha.Extensao = Q(pedido.Extensao);
    escolha.Nome = pedido.Nome.empty() ? QString() : CaminhoQt(pedido.Nome);
    const QString escolhido = EscolheParaAbrir(escolha, WidgetDe(dono));
    if (escolhido.isEmpty()) {
        return std::nullopt;
    }
    return CaminhoEscolhido(S(escolhido));
}

Ref<IJanela> CamadaQt::FazVisor(const std::string &caminho, const std::string &nome, const Ref<IJanela> &dono,
                                const std::function<void()> &fechou)
{
    auto *visor = new VisorPDF(WidgetDe(dono));
    visor->setAttribute(Qt::WA_DeleteOnClose);
    if (!visor->Abre(CaminhoQt(caminho), Q(nome))) {
        delete visor;
        return nullptr;
    }
    QObject::connect(visor, &QDialog::finished, visor, fechou);
    return Novo<DialogoQt>(visor);
}

void CamadaQt::MostraAjuda(const std::string &topico, const Ref<IJanela> &dono)
{
    Ajuda(topico, WidgetDe(dono));
}

} // namespace mesa
