#include "tests/desk/OperadorDeJanelas.h"

#include "desk/tour/Telas.h"
#include "desk/windows/Renderizador.h"
#include "tests/desk/Teclado.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QHeaderView>
#include <QMessageBox>
#include <QTableView>
#include <QTest>
#include <QThread>

#include <memory>

using namespace mesa;

namespace {

QString NomeDe(const std::string &nome, std::int16_t indice)
{
    return indice < 0 ? Q(nome) : Q(nome) + "_" + QString::number(indice);
}

QTableView *Tabela(const std::string &nome)
{
    return qobject_cast<QTableView *>(Teclado::Acha(Q(nome) + "/linhas"));
}

} // namespace

OperadorDeJanelas::OperadorDeJanelas(Condutor &condutor, const Percurso &percurso, const std::string &janela,
                                     const OperadorDeJanelas *atras)
    : m_Condutor(condutor),
      m_Percurso(percurso),
      m_Janela(janela),
      m_Atras(atras)
{
}

void OperadorDeJanelas::Percorre(Condutor &condutor, const Percurso &percurso, const std::string &janela,
                                 const OperadorDeJanelas *atras)
{
    condutor.EsperaJanela(Q(janela));
    OperadorDeJanelas pessoa(condutor, percurso, janela, atras);
    percurso.Janelas.at(janela)(pessoa);
}

// Whether the way goes through a window in which nobody is yet.
bool OperadorDeJanelas::Entra(const std::string &janela) const
{
    for (const OperadorDeJanelas *outro = this; outro != nullptr; outro = outro->m_Atras) {
        if (outro->m_Janela == janela) {
            return false;
        }
    }
    return m_Percurso.Janelas.contains(janela);
}

// An action is over when the loop in which it began, or one further out, turns again.
void OperadorDeJanelas::Faz(const std::function<void()> &acao)
{
    int comeco = 0;
    bool parado = false; // both belong to the windows' thread
    NaTela([&] { comeco = QThread::currentThread()->loopLevel(); });
    acao();
    std::unique_ptr<QObject, void (*)(QObject *)> vigia(nullptr, [](QObject *objeto) {
        QMetaObject::invokeMethod(
            qApp, [objeto] { delete objeto; }, Qt::BlockingQueuedConnection);
    });
    NaTela([&] { // the action has begun by now
        vigia.reset(new QObject);
        QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, vigia.get(),
                         [&] { parado = parado || QThread::currentThread()->loopLevel() <= comeco; });
    });
    for (;;) {
        QString pergunta;
        std::string frente;
        m_Condutor.Espera("a ação terminou, ou espera pela pessoa", [&] {
            const auto *caixa = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            pergunta = caixa == nullptr ? QString() : caixa->text();
            frente = Teclado::Frente() == nullptr ? "" : S(Teclado::Frente()->objectName());
            return m_Percurso.Respostas.contains(S(pergunta)) || Entra(frente) || parado;
        });
        if (const auto resposta = m_Percurso.Respostas.find(S(pergunta)); resposta != m_Percurso.Respostas.end()) {
            m_Condutor.Responde(pergunta, resposta->second ? "Sim" : "Não");
        } else if (Entra(frente)) {
            Percorre(m_Condutor, m_Percurso, frente, this);
            m_Condutor.EsperaSemJanela(Q(frente));
        } else {
            return;
        }
    }
}

void OperadorDeJanelas::Clica(const std::string &nome, std::int16_t indice)
{
    Faz([&] { m_Condutor.Clica(NomeDe(nome, indice)); });
}

void OperadorDeJanelas::Marca(const std::string &nome, std::int16_t indice)
{
    const QString widget = NomeDe(nome, indice);
    const bool marcado = NaTela([&] { return TextoDe(Teclado::Acha(widget)) == "marcado"; });
    if (!marcado) {
        Clica(nome, indice);
    }
    m_Condutor.ConfereTexto(widget, "marcado");
}

void OperadorDeJanelas::Preenche(const std::string &nome, const std::string &texto)
{
    m_Condutor.Digita(Q(nome), Q(texto));
}

void OperadorDeJanelas::Escolhe(const std::string &nome, const std::string &texto)
{
    Faz([&] { m_Condutor.Escolhe(Q(nome), Q(texto)); });
}

void OperadorDeJanelas::Abre(const std::string &nome, std::int16_t pagina)
{
    m_Condutor.AbreAba(Q(nome), pagina);
}

void OperadorDeJanelas::ClicaLinha(const std::string &nome, std::int32_t linha)
{
    m_Condutor.ClicaLinha(Q(nome), linha);
}

void OperadorDeJanelas::EscolheMenu(const std::string &nome, const std::string &chave)
{
    Clica(nome + "/" + chave, -1);
}

void OperadorDeJanelas::PedeMais(const std::string &nome)
{
    Clica(nome + "/mais", -1);
}

void OperadorDeJanelas::Localiza(const std::string &nome)
{
    Clica(nome + "_localizar", -1);
}

void OperadorDeJanelas::OrdenaPor(const std::string &nome, std::int32_t coluna)
{
    NaTela([&] {
        const QHeaderView *titulos = Tabela(nome)->horizontalHeader();
        QTest::mouseClick(titulos->viewport(), Qt::LeftButton, {},
                          {titulos->sectionViewportPosition(coluna - 1) + titulos->sectionSize(coluna - 1) / 2,
                           titulos->height() / 2});
    });
}

void OperadorDeJanelas::InformaEndereco(const std::string &nome, std::int32_t, std::int32_t numero,
                                        const std::string &complemento, const std::string &cep, const std::string &)
{
    Preenche(nome + "/via", cep);
    Preenche(nome + "/numero", std::to_string(numero));
    Preenche(nome + "/complemento", complemento);
    Clica(nome + "/usar", -1);
}

void OperadorDeJanelas::EscolheCliente(const std::string &nome, const std::string &cliente, const std::string &setor)
{
    Escolhe(nome + "/cliente", cliente);
    Escolhe(nome + "/setor", setor.empty() ? "Todos os setores" : setor);
}

void OperadorDeJanelas::Fecha()
{
    m_Condutor.FechaJanela(Q(m_Janela));
}

std::int32_t OperadorDeJanelas::Linhas(const std::string &nome)
{
    return NaTela([&] { return Tabela(nome)->model()->rowCount(); });
}

std::string OperadorDeJanelas::Celula(const std::string &nome, std::int32_t linha, const std::string &coluna)
{
    return S(NaTela([&] {
        const QAbstractItemModel &modelo = *Tabela(nome)->model();
        for (int n = 0; n < modelo.columnCount(); ++n) {
            if (modelo.headerData(n, Qt::Horizontal).toString() == Q(coluna)) {
                return modelo.index(linha - 1, n).data().toString();
            }
        }
        throw Diferenca("não há coluna " + Q(coluna));
    }));
}
