#include "bench/Medida.h"
#include "controls/ztList.h"
#include "desk/windows/RenderLista.h"
#include "host/Conversoes.h"
#include "tests/support/FormFalso.h"
#include "tests/support/UmControle.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTableView>
#include <QWidget>

#include <algorithm>
#include <iostream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

using namespace mesa;

// The list as a person has it on the screen, with thousands of rows: filling it, going through it by pages, jumping to
// its end and back, and sorting it by a column of text and one of dates. Everything is drawn, on a screen in memory.
// Sorting by dates reads every cell as the platform reads a date, while plain texts are compared as they stand.

namespace {

constexpr int Paginas = 30;
constexpr int Saltos = 30;
constexpr std::size_t PoucasLinhas = 300;
constexpr std::int16_t Larga = 3000;

std::vector<std::string> Linha(std::size_t n)
{
    // Neither column is in order as it comes.
    const std::size_t misturado = n * 7919 % 100003;
    const Data dia = DataDe(1, 1, 1990).MaisDias(static_cast<std::int32_t>(misturado % 20000));
    return {"EQ" + std::to_string(misturado), "Avenida Antônio de Carvalho, " + std::to_string(misturado),
            Format(dia, "dd/mm/yyyy")};
}

TabelaTexto Linhas(std::size_t quantas)
{
    TabelaTexto tabela(3);
    for (std::size_t n = 0; n < quantas; ++n) {
        const std::vector<std::string> celulas = Linha(n);
        const std::int32_t numero = tabela.AdicionaLinha();
        for (std::size_t coluna = 0; coluna < celulas.size(); ++coluna) {
            tabela.Celula(static_cast<std::int32_t>(coluna) + 1, numero) = celulas[coluna];
        }
    }
    return tabela;
}

class Tela {
  public:
    Tela() : m_Lista(Feito<ztList>(m_Form, Chamado<AjustesZtList>("")))
    {
        m_Form->Guarda(m_Lista);
        m_Lista->AlteraPrimeiraColuna(1, std::nullopt, "Código", Larga, 0, "", true);
        m_Lista->AdicionaColuna(2, std::nullopt, "Endereço", Larga, 0, "", true);
        m_Lista->AdicionaColuna(3, std::nullopt, "Data", Larga, 0, "data", true);
        m_Janela.resize(1000, 700);
        m_Render = new RenderLista(
            m_Lista, &m_Janela, [](const std::function<void()> &acao) { acao(); }, [] {}, [] {});
        m_Janela.show();
        m_Render->Atualiza();
        Desenha();
    }

    void Enche(TabelaTexto &linhas)
    {
        m_Lista->CarregaItens(linhas);
        Desenha();
    }
    void Tecla(Qt::Key tecla)
    {
        auto *tabela = m_Janela.findChild<QTableView *>("linhas");
        QKeyEvent evento(QEvent::KeyPress, tecla, Qt::NoModifier);
        QApplication::sendEvent(tabela, &evento);
        Desenha();
    }
    void Ordena(std::int32_t coluna)
    {
        m_Lista->OrdenaPor(coluna);
        Desenha();
    }

  private:
    static void Desenha() { QApplication::processEvents(); }

    Ref<FormFalso> m_Form = FormNaTela();
    Ref<ztList> m_Lista;
    QWidget m_Janela;
    RenderLista *m_Render = nullptr;
};

std::shared_ptr<Tela> TelaCom(std::size_t quantas)
{
    auto tela = std::make_shared<Tela>();
    TabelaTexto linhas = Linhas(quantas);
    tela->Enche(linhas);
    tela->Tecla(Qt::Key_Home);
    return tela;
}

std::function<void()> EncheDe(std::size_t quantas)
{
    auto tela = std::make_shared<Tela>();
    auto linhas = std::make_shared<TabelaTexto>(Linhas(quantas));
    return [tela, linhas] { tela->Enche(*linhas); };
}

std::function<void()> CopiaDe(std::size_t quantas)
{
    std::vector<std::vector<std::string>> linhas;
    for (std::size_t n = 0; n < quantas; ++n) {
        linhas.push_back(Linha(n));
    }
    auto copia = std::make_shared<std::vector<std::vector<std::string>>>();
    return [linhas = std::move(linhas), copia] {
        *copia = linhas;
        Usa(*copia);
    };
}

std::function<void()> PaginasDe(std::size_t quantas)
{
    return [tela = TelaCom(quantas)] {
        for (int pagina = 0; pagina < Paginas; ++pagina) {
            // Three hundred rows are a dozen pages: as often as they end, up again.
            tela->Tecla(pagina % 20 < 10 ? Qt::Key_PageDown : Qt::Key_PageUp);
        }
    };
}

std::function<void()> SaltosDe(std::size_t quantas)
{
    return [tela = TelaCom(quantas)] {
        for (int salto = 0; salto < Saltos; ++salto) {
            tela->Tecla(salto % 2 == 0 ? Qt::Key_End : Qt::Key_Home);
        }
    };
}

Preparo OrdenaPor(std::int32_t coluna)
{
    return [coluna](std::size_t quantas) -> std::function<void()> {
        return [tela = TelaCom(quantas), coluna] { tela->Ordena(coluna); };
    };
}

std::function<void()> OrdenaTextos(std::size_t quantas)
{
    auto textos = std::make_shared<std::vector<std::string>>();
    for (std::size_t n = 0; n < quantas; ++n) {
        textos->push_back(Linha(n)[1]);
    }
    return [textos] {
        std::stable_sort(textos->begin(), textos->end());
        Usa(*textos);
    };
}

std::function<void()> ComPoucas(std::function<void()> (*preparo)(std::size_t), std::size_t)
{
    return preparo(PoucasLinhas);
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "default.warning=false");
    const QApplication aplicacao(argc, argv);
    constexpr std::size_t linhas = 3000;
    Tabela tabela;
    tabela.MedeTempo({.Nome = "list on the screen: filling, to a copy",
                      .Trabalho = linhas,
                      .Medido = EncheDe,
                      .Referencia = CopiaDe,
                      .LimiteRazao = 5,
                      .LimiteCrescimento = 1.5});
    tabela.MedeTempo({.Nome = "list on the screen: pages, to 300 rows",
                      .Trabalho = linhas,
                      .Medido = PaginasDe,
                      .Referencia = [](std::size_t n) { return ComPoucas(PaginasDe, n); },
                      .LimiteRazao = 1.5,
                      .LimiteCrescimento = 1.5});
    tabela.MedeTempo({.Nome = "list on the screen: to the end, to 300 rows",
                      .Trabalho = linhas,
                      .Medido = SaltosDe,
                      .Referencia = [](std::size_t n) { return ComPoucas(SaltosDe, n); },
                      .LimiteRazao = 1.5,
                      .LimiteCrescimento = 1.5});
    tabela.MedeTempo({.Nome = "list on the screen: sorting text, to plain texts",
                      .Trabalho = linhas,
                      .Medido = OrdenaPor(2),
                      .Referencia = OrdenaTextos,
                      .LimiteRazao = 6,
                      .LimiteCrescimento = 1.5});
    tabela.MedeTempo({.Nome = "list on the screen: sorting dates, to plain texts",
                      .Trabalho = linhas,
                      .Medido = OrdenaPor(3),
                      .Referencia = OrdenaTextos,
                      .LimiteRazao = 20,
                      .LimiteCrescimento = 1.5});
    return tabela.Saida();
}
