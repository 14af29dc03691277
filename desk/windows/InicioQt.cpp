#include "desk/windows/InicioQt.h"

#include "desk/host/Titulo.h"
#include "desk/windows/Dialogos.h"
#include "desk/windows/Escolha.h"
#include "desk/windows/EscolhaDeArquivo.h"
#include "desk/windows/JanelaDoLugar.h"
#include "desk/windows/JanelaDoManual.h"
#include "desk/windows/LugarDasJanelas.h"
#include "desk/windows/NovoRegistro.h"
#include "services/TextoQt.h"

#include <QApplication>
#include <QCommandLinkButton>
#include <QFile>
#include <QFontDatabase>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QVBoxLayout>

namespace mesa {

namespace {

std::optional<std::filesystem::path> EscolheArquivo(const QString &titulo, const QString &filtro)
{
    EscolhaDeArquivo escolha;
    escolha.Titulo = titulo;
    escolha.Filtros = filtro + ";;Todos os arquivos (*)";
    const QString escolhido = EscolheParaAbrir(escolha, nullptr);
    if (escolhido.isEmpty()) {
        return std::nullopt;
    }
    return QFile::encodeName(escolhido).toStdString();
}

// In lines that are compared one by one, none of which breaks a pair of digits.
QString EmLinhasDeOitoPares(const std::string &digital)
{
    constexpr std::size_t linha = 8 * 3;
    QString linhas;
    for (std::size_t onde = 0; onde < digital.size(); onde += linha) {
        linhas += (onde == 0 ? "" : "\n") + Q(digital.substr(onde, linha));
    }
    return linhas;
}

} // namespace

InicioQt::InicioQt()
    : m_TeclaDeAjuda([](const std::string &topico, QWidget *dono) { JanelaDoManual::Mostra(topico, nullptr, dono); })
{
    LugarDasJanelas::DaAplicacao(); // from the first window on
}

InicioQt::~InicioQt() = default;

OpcaoDoInicio InicioQt::Comeca()
{
    Escolha<OpcaoDoInicio> janela("PrimeiroInicio", OpcaoDoInicio::Sair);
    auto *tudo = new QVBoxLayout(&janela);
    tudo->addWidget(
        FazCabeca(TituloDosAvisos, "Ainda não há um registro neste computador. Como quer começar?", &janela));
    const auto opcao = [&](const char *nome, const char *texto, const char *oQue, OpcaoDoInicio resposta) {
        auto *botao = new QCommandLinkButton(texto, oQue, &janela);
        botao->setObjectName(nome);
        botao->setMinimumHeight(botao->sizeHint().height());
        janela.Responde(botao, resposta);
        tudo->addWidget(botao);
    };
    opcao("novo", "Criar um registro &novo", "Pede o órgão e o primeiro administrador, que depois cadastra os demais.",
          OpcaoDoInicio::Novo);
    opcao("existente", "&Abrir um registro que já existe", "Pede o arquivo do registro.", OpcaoDoInicio::Existente);
    opcao("servidor", "Trabalhar no registro de um &servidor",
          "Pede a máquina; várias pessoas trabalham nele ao mesmo tempo.", OpcaoDoInicio::Servidor);
    opcao("amostra", "&Experimentar com a amostra",
          "Equipamentos e usuários inventados, num diretório à parte. Nada disso vale.", OpcaoDoInicio::Amostra);
    QPushButton *sair = FazBotao("sair", "Sai&r", &janela);
    QObject::connect(sair, &QPushButton::clicked, &janela, &QDialog::reject);
    tudo->addLayout(EmLinha({sair}));
    return janela.Pergunta();
}

bool InicioQt::PedeRegistroNovo(const std::function<std::optional<ProblemaDoRegistroNovo>(const RegistroNovo &)> &faz)
{
    NovoRegistro janela(faz);
    return janela.exec() == QDialog::Accepted;
}

std::optional<std::filesystem::path> InicioQt::EscolheRegistro()
{
    return EscolheArquivo("Abrir registro", "Registros (*.db)");
}

std::optional<std::filesystem::path> InicioQt::EscolheCopia()
{
    return EscolheArquivo("Restaurar uma cópia do registro", "Cópias do registro (*.db)");
}

OpcaoDaFalta InicioQt::Falta(const std::string &frase)
{
    Escolha<OpcaoDaFalta> janela("Falta", OpcaoDaFalta::Sair);
    auto *tudo = new QVBoxLayout(&janela);
    tudo->addWidget(FazCabeca("O registro não pôde ser aberto", Q(frase), &janela));
    QPushButton *deNovo = FazBotao("deNovo", "&Tentar de novo", &janela);
    QPushButton *arquivo = FazBotao("arquivo", "&Escolher o arquivo...", &janela);
    QPushButton *copia = FazBotao("copia", "Restaurar uma &cópia...", &janela);
    QPushButton *mudar = FazBotao("mudarDeRegistro", "Mu&dar de registro...", &janela);
    QPushButton *sair = FazBotao("sair", "Sai&r", &janela);
    deNovo->setDefault(true);
    janela.Responde(deNovo, OpcaoDaFalta::TentarDeNovo);
    janela.Responde(mudar, OpcaoDaFalta::MudarDeLugar);
    janela.Responde(arquivo, OpcaoDaFalta::EscolherArquivo);
    janela.Responde(copia, OpcaoDaFalta::RestaurarCopia);
    QObject::connect(sair, &QPushButton::clicked, &janela, &QDialog::reject);
    tudo->addLayout(EmLinha({deNovo, arquivo, copia, mudar, sair}));
    return janela.Pergunta();
}

std::optional<LugarDoTrabalho> InicioQt::EscolheLugar(const LugarDoTrabalho &agora)
{
    JanelaDoLugar janela(agora, nullptr);
    return janela.exec() == QDialog::Accepted ? std::optional(janela.Lugar()) : std::nullopt;
}

bool InicioQt::ConfiaNoServidor(const std::string &servidor, const std::string &digital)
{
    Escolha<bool> janela("DigitalDoServidor", false);
    auto *mostrada = new QPlainTextEdit(EmLinhasDeOitoPares(digital), &janela);
    mostrada->setObjectName("digital");
    mostrada->setAccessibleName("Digital do certificado");
    mostrada->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    mostrada->setReadOnly(true);
    mostrada->setTabChangesFocus(true);
    mostrada->setLineWrapMode(QPlainTextEdit::NoWrap);
    constexpr int linhas = 4;
    mostrada->setFixedHeight(mostrada->fontMetrics().lineSpacing() * linhas + 12);
    QPushButton *confiar = FazBotao("confiar", "&Confiar", &janela);
    QPushButton *naoConfiar = FazBotao("naoConfiar", "&Não confiar", &janela);
    auto *tudo = new QVBoxLayout(&janela);
    tudo->addWidget(FazCabeca("É este o servidor?",
                              "É a primeira vez que este computador fala com o servidor " + Q(servidor) +
                                  ". Esta é a digital do certificado dele. Compare-a com a que o servidor escreveu "
                                  "quando iniciou, e que quem o administra informa. Se não for a mesma, outra máquina "
                                  "está no lugar do servidor.",
                              &janela));
    tudo->addWidget(mostrada);
    tudo->addWidget(FazTexto("pergunta", "A digital é a mesma?", &janela));
    tudo->addLayout(EmLinha({confiar, naoConfiar}));
    janela.Responde(confiar, true);
    QObject::connect(naoConfiar, &QPushButton::clicked, &janela, &QDialog::reject);
    naoConfiar->setDefault(true);
    naoConfiar->setFocus();
    return janela.Pergunta();
}

OpcaoSemServidor InicioQt::FaltaServidor(const std::string &frase)
{
    Escolha<OpcaoSemServidor> janela("FaltaServidor", OpcaoSemServidor::Sair);
    QPushButton *deNovo = FazBotao("deNovo", "&Tentar de novo", &janela);
    QPushButton *mudar = FazBotao("mudarDeRegistro", "Mu&dar de registro...", &janela);
    QPushButton *sair = FazBotao("sair", "Sai&r", &janela);
    deNovo->setDefault(true);
    janela.Responde(deNovo, OpcaoSemServidor::TentarDeNovo);
    janela.Responde(mudar, OpcaoSemServidor::MudarDeLugar);
    QObject::connect(sair, &QPushButton::clicked, &janela, &QDialog::reject);
    auto *tudo = new QVBoxLayout(&janela);
    tudo->addWidget(FazCabeca("O registro do servidor não pôde ser aberto", Q(frase), &janela));
    tudo->addLayout(EmLinha({deNovo, mudar, sair}));
    deNovo->setFocus();
    return janela.Pergunta();
}

bool InicioQt::Continua(const std::string &frase, const std::vector<std::string> &achados)
{
    constexpr int altura = 380;
    Escolha<bool> janela("Achados", false);
    janela.resize(janela.minimumWidth(), altura);
    QStringList linhas;
    for (const std::string &achado : achados) {
        linhas << Q(achado);
    }
    auto *lista = new QPlainTextEdit(linhas.join('\n'), &janela);
    lista->setObjectName("achados");
    lista->setAccessibleName("O que foi achado");
    lista->setReadOnly(true);
    lista->setTabChangesFocus(true);
    QPushButton *continuar = FazBotao("continuar", "&Continuar", &janela);
    QPushButton *encerrar = FazBotao("encerrar", "&Encerrar", &janela);
    auto *tudo = new QVBoxLayout(&janela);
    tudo->addWidget(FazCabeca("A conferência do registro", Q(frase), &janela));
    tudo->addWidget(lista, 1);
    tudo->addLayout(EmLinha({continuar, encerrar}));
    janela.Responde(continuar, true);
    QObject::connect(encerrar, &QPushButton::clicked, &janela, &QDialog::reject);
    encerrar->setDefault(true);
    encerrar->setFocus();
    return janela.Pergunta();
}

bool InicioQt::Aceita(const std::string &pergunta)
{
    return PerguntaSimNao(Q(pergunta), nullptr);
}

void InicioQt::Avisa(const std::string &frase)
{
    m_Preparo.reset();
    AvisaEmCaixa(Q(frase), nullptr);
}

void InicioQt::Progresso(double parte)
{
    constexpr int todo = 100;
    constexpr int demora = 300; // milliseconds before there is a window
    if (!m_Preparo) {
        m_Preparo = std::make_unique<QProgressDialog>("Preparando a amostra...", QString(), 0, todo);
        m_Preparo->setObjectName("Preparo");
        m_Preparo->setWindowTitle(TituloDosAvisos);
        m_Preparo->setMinimumDuration(demora);
    }
    m_Preparo->setValue(static_cast<int>(parte * todo));
    QApplication::processEvents();
    if (parte >= 1) {
        m_Preparo.reset();
    }
}

} // namespace mesa
