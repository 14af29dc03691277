#include "desk/windows/JanelasQt.h"

#include "desk/host/Caminhos.h"
#include "desk/windows/Involucro.h"
#include "desk/windows/VisorPDF.h"
#include "shell/ModGeral.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEventLoop>
#include <QFileDialog>
#include <QGuiApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>

#include <algorithm>

namespace {

QString CaminhoQt(const std::string &caminho)
{
    return QString::fromStdU16String(CaminhoDoSistema(caminho).u16string());
}

void MostraCaixa(QMessageBox::Icon icone, const QString &texto, const QString &titulo, QWidget *dono,
                 const QString &detalhes = {})
{
    QMessageBox caixa(icone, titulo, texto, QMessageBox::NoButton, dono);
    caixa.setTextFormat(Qt::PlainText);
    caixa.addButton("&OK", QMessageBox::AcceptRole);
    if (!detalhes.isEmpty()) {
        caixa.setInformativeText(detalhes);
    }
    caixa.exec();
}

} // namespace

void JanelasQt::NaBorda(const std::function<void()> &acao)
{
    try {
        acao();
    } catch (...) {
        gSubMostraErro("Mesa");
    }
}

JanelasQt::Aberta *JanelasQt::Acha(const Ref<IForm> &form)
{
    const auto achada =
        std::find_if(m_Abertas.begin(), m_Abertas.end(), [&](const Aberta &aberta) { return aberta.Form == form; });
    return achada == m_Abertas.end() ? nullptr : &*achada;
}

QWidget *JanelasQt::Frente() const
{
    if (QWidget *modal = QApplication::activeModalWidget()) {
        return modal;
    }
    return m_Area.isNull() ? nullptr : m_Area->window();
}

bool JanelasQt::HaModal() const
{
    return std::any_of(m_Abertas.begin(), m_Abertas.end(),
                       [](const Aberta &aberta) { return aberta.Espera != nullptr; });
}

JanelaForm *JanelasQt::FazJanela(const Ref<IForm> &form, QWidget *dono)
{
    return new JanelaForm(
        form, {[this](const std::function<void()> &acao) { NaBorda(acao); }, Descarrega, Ajuda, Clientes}, dono);
}

void JanelasQt::MostraForm(const Ref<IForm> &form, bool modal, const Ref<IForm> &)
{
    if (Aberta *aberta = Acha(form)) {
        aberta->Janela->raise();
        aberta->Janela->activateWindow();
        return;
    }
    if (modal) {
        MostraModal(form);
    } else if (HaModal()) {
        MostraSolta(form);
    } else {
        MostraFilha(form);
    }
}

void JanelasQt::MostraModal(const Ref<IForm> &form)
{
    QEventLoop espera;
    JanelaForm *janela = FazJanela(form, Frente());
    janela->setWindowFlags(Qt::Dialog | Qt::WindowCloseButtonHint | Qt::WindowMaximizeButtonHint);
    janela->setWindowModality(Qt::ApplicationModal);
    m_Abertas.push_back({form, janela, nullptr, &espera, nullptr, {}, {}});
    form->DefineVisible(true);
    janela->show();
    espera.exec();
}

// A window that is not modal in front of a modal one: a child window of the main window would be blocked by it.
void JanelasQt::MostraSolta(const Ref<IForm> &form)
{
    JanelaForm *janela = FazJanela(form, Frente());
    janela->setWindowFlags(Qt::Dialog | Qt::WindowCloseButtonHint | Qt::WindowMaximizeButtonHint);
    m_Abertas.push_back({form, janela, nullptr, nullptr, nullptr, {}, {}});
    form->DefineVisible(true);
    janela->show();
}

void JanelasQt::MostraFilha(const Ref<IForm> &form)
{
    JanelaForm *janela = FazJanela(form, nullptr);
    QMdiSubWindow *filha = m_Area->addSubWindow(janela);
    auto envolve = Novo<Involucro>();
    const QPointer<QMdiSubWindow> alvo = filha;
    const auto paraFrente = [this, alvo] {
        if (!m_Area.isNull() && !alvo.isNull()) {
            m_Area->setActiveSubWindow(alvo);
        }
    };
    Conexao pediuFoco = envolve->PediuFoco().liga(paraFrente);
    Conexao pediuOrdem = envolve->PediuOrdem().liga([paraFrente](std::int16_t) { paraFrente(); });
    filha->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(filha, &QMdiSubWindow::aboutToActivate, janela,
                     [this, form] { NaBorda([&] { form->Ativada(); }); });
    QObject::connect(filha, &QMdiSubWindow::windowStateChanged, janela,
                     [this, form](Qt::WindowStates antes, Qt::WindowStates agora) {
                         if ((antes & Qt::WindowActive) && !(agora & Qt::WindowActive)) {
                             NaBorda([&] { form->Desativada(); });
                         }
                     });
    m_Abertas.push_back({form, janela, filha, nullptr, envolve, std::move(pediuFoco), std::move(pediuOrdem)});
    IgnoraErro([&] { form->DefinefrmParent(envolve); }); // a form need not have the member
    form->DefineVisible(true);
    filha->resize((janela->size() + QSize(16, 40)).boundedTo(m_Area->viewport()->size()));
    filha->show();
}

void JanelasQt::FechaForm(const Ref<IForm> &form)
{
    Aberta *aberta = Acha(form);
    if (aberta == nullptr) {
        return;
    }
    const Aberta fechada = std::move(*aberta);
    m_Abertas.erase(m_Abertas.begin() + (aberta - m_Abertas.data()));

    // Windows that were opened in front of this one go with it.
    std::vector<Ref<IForm>> soltas;
    for (const Aberta &outra : m_Abertas) {
        if (outra.Espera == nullptr && outra.Janela && fechada.Janela &&
            outra.Janela->parentWidget() == fechada.Janela) {
            soltas.push_back(outra.Form);
        }
    }
    for (const Ref<IForm> &solta : soltas) {
        Descarrega(solta);
    }
    Tira(fechada);
}

void JanelasQt::Tira(const Aberta &aberta)
{
    if (!aberta.Janela.isNull()) {
        aberta.Janela->Encerra();
    }
    if (!aberta.Filha.isNull()) {
        aberta.Filha->hide();
        aberta.Filha->deleteLater();
    }
    if (aberta.Espera != nullptr) {
        aberta.Espera->quit();
    }
}

void JanelasQt::TiraTodas()
{
    const std::vector<Aberta> abertas = std::move(m_Abertas);
    m_Abertas.clear();
    for (const Aberta &aberta : abertas) {
        if (!aberta.Filha.isNull() && !aberta.Janela.isNull()) {
            QObject::disconnect(aberta.Filha, nullptr, aberta.Janela, nullptr); // the one that goes activates another
        }
    }
    for (const Aberta &aberta : abertas) {
        Tira(aberta);
    }
}

void JanelasQt::DefineTextoJanela(const Ref<IForm> &form, const std::string &texto)
{
    if (Aberta *aberta = Acha(form)) {
        aberta->Janela->DefineTexto(Q(texto));
    }
}

void JanelasQt::DefineEspera(bool espera)
{
    if (espera == m_Esperando) {
        return;
    }
    m_Esperando = espera;
    if (espera) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        QApplication::restoreOverrideCursor();
    }
}

void JanelasQt::ProcessaMensagens()
{
    QApplication::processEvents();
}

std::int32_t JanelasQt::LarguraTela() const
{
    return QGuiApplication::primaryScreen()->availableSize().width();
}

std::int32_t JanelasQt::AlturaTela() const
{
    return QGuiApplication::primaryScreen()->availableSize().height();
}

bool JanelasQt::PerguntaSimNao(const std::string &texto, const std::string &titulo, bool padraoSim)
{
    QMessageBox caixa(QMessageBox::Question, Q(titulo), Q(texto), QMessageBox::NoButton, Frente());
    caixa.setTextFormat(Qt::PlainText);
    QPushButton *sim = caixa.addButton("&Sim", QMessageBox::YesRole);
    QPushButton *nao = caixa.addButton("&Não", QMessageBox::NoRole);
    caixa.setDefaultButton(padraoSim ? sim : nao);
    caixa.setEscapeButton(nao);
    caixa.exec();
    return caixa.clickedButton() == sim;
}

void JanelasQt::Informa(const std::string &texto, const std::string &titulo)
{
    MostraCaixa(QMessageBox::Information, Q(texto), Q(titulo), Frente());
}

void JanelasQt::Avisa(const std::string &texto, const std::string &titulo)
{
    MostraCaixa(QMessageBox::Warning, Q(texto), Q(titulo), Frente());
}

void JanelasQt::MostraErro(const std::string &contexto, std::int32_t numero, const std::string &descricao,
                           const std::string &fonte, const std::string &titulo)
{
    DefineEspera(false);
    MostraCaixa(QMessageBox::Critical, Q(descricao), Q(titulo), Frente(),
                "Erro " + QString::number(numero) + " em " + Q(contexto) + "\nCaminho: " + Q(fonte));
}

std::optional<std::string> JanelasQt::EscolheArquivo(const std::string &filtro, const std::string &titulo)
{
    // Pairs of text and pattern; the text already names its pattern.
    const QStringList partes = Q(filtro).split('|');
    QStringList filtros;
    for (qsizetype par = 0; par + 1 < partes.size(); par += 2) {
        filtros << partes[par];
    }
    const QString escolhido = QFileDialog::getOpenFileName(Frente(), Q(titulo), {}, filtros.join(";;"));
    if (escolhido.isEmpty()) {
        return std::nullopt;
    }
    return S(escolhido);
}

bool JanelasQt::MostraPDF(const std::string &caminho, bool modal)
{
    auto *visor = new VisorPDF(Frente());
    visor->setAttribute(Qt::WA_DeleteOnClose);
    if (!visor->Abre(CaminhoQt(caminho))) {
        delete visor;
        Avisa("O arquivo '" + caminho + "' não é um documento PDF que possa ser aberto.", "Documento");
        return false;
    }
    DefineEspera(false);
    if (modal) {
        visor->exec();
    } else {
        visor->show();
    }
    return true;
}
