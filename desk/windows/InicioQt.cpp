#include "desk/windows/InicioQt.h"

#include "desk/host/Titulo.h"
#include "desk/windows/Dialogos.h"
#include "desk/windows/EscolhaDeArquivo.h"
#include "desk/windows/Icones.h"
#include "desk/windows/JanelaDoManual.h"
#include "desk/windows/LugarDasJanelas.h"
#include "desk/windows/NovoRegistro.h"
#include "services/TextoQt.h"

#include <QApplication>
#include <QCommandLinkButton>
#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace mesa {

namespace {

constexpr int Largura = 560;

// A dialog of which each button is an answer; closing it is the last one.
template <class Opcao> class Escolha : public QDialog {
  public:
    Escolha(const QString &nome, Opcao semResposta) : m_Resposta(semResposta)
    {
        setObjectName(nome);
        setWindowTitle(TituloDosAvisos);
        setWindowIcon(Icone("equipamentos"));
        setMinimumWidth(Largura);
    }
    void Responde(QAbstractButton *botao, Opcao opcao)
    {
        connect(botao, &QAbstractButton::clicked, this, [this, opcao] {
            m_Resposta = opcao;
            accept();
        });
    }
    Opcao Pergunta()
    {
        exec();
        return m_Resposta;
    }

  private:
    Opcao m_Resposta;
};

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
    QPushButton *sair = FazBotao("sair", "Sai&r", &janela);
    deNovo->setDefault(true);
    janela.Responde(deNovo, OpcaoDaFalta::TentarDeNovo);
    janela.Responde(arquivo, OpcaoDaFalta::EscolherArquivo);
    janela.Responde(copia, OpcaoDaFalta::RestaurarCopia);
    QObject::connect(sair, &QPushButton::clicked, &janela, &QDialog::reject);
    tudo->addLayout(EmLinha({deNovo, arquivo, copia, sair}));
    return janela.Pergunta();
}

bool InicioQt::Continua(const std::string &frase, const std::vector<std::string> &achados)
{
    constexpr int altura = 380;
    Escolha<bool> janela("Achados", false);
    janela.resize(Largura, altura);
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
