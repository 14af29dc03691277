#include "tela/Arrumacao.h"

#include "controls/ztCombo.h"
#include "host/Texto.h"
#include "tela/Mnemonicas.h"

#include <algorithm>
#include <numeric>
#include <optional>

namespace {

constexpr std::int32_t CaracteresSemLimite = 20;
constexpr std::int32_t CaracteresDaData = 10;
constexpr std::int32_t LinhasDoEndereco = 4;
constexpr std::int32_t CaracteresDoEndereco = 60;

// A piece with what it is on the form now.
struct No {
    const Peca *Quem = nullptr;
    const IControle *Controle = nullptr; // null for a mere arrangement
    bool Vista = false;
    Tamanho Natural;           // without the text before it
    Tamanho Rotulo;            // of that text
    std::int32_t Esquerda = 0; // Left
    std::vector<No> Filhos;
};

// One cell of a grid.
struct Celula {
    const No *Quem = nullptr;
    bool EhRotulo = false;
    std::size_t Coluna = 0;
    std::size_t Vao = 1;
};

using Linha = std::vector<Celula>;

bool TemRotulo(const No &no)
{
    return no.Rotulo.Largura > 0;
}

bool EhContainer(const No &no)
{
    const auto especie = no.Quem->Especie();
    return !especie || *especie == EspecieControle::ztFrame || *especie == EspecieControle::SSTab ||
           *especie == EspecieControle::ztList;
}

// Of the columns or rows of a grid, of which those that hold nothing take no room.
std::int32_t Soma(const std::vector<std::int32_t> &parcelas, std::int32_t entre)
{
    std::int32_t soma = 0;
    bool alguma = false;
    for (const std::int32_t parcela : parcelas) {
        if (parcela > 0) {
            soma += parcela + (alguma ? entre : 0);
            alguma = true;
        }
    }
    return soma;
}

// Shares out room, the odd pixels to the first ones.
void Reparte(std::int32_t sobra, const std::vector<bool> &quem, std::vector<std::int32_t> &tamanhos)
{
    auto quantos = static_cast<std::int32_t>(std::count(quem.begin(), quem.end(), true));
    for (std::size_t i = 0; i < quem.size() && sobra > 0; ++i) {
        if (quem[i]) {
            const std::int32_t parte = (sobra + quantos - 1) / quantos;
            tamanhos[i] += parte;
            sobra -= parte;
            --quantos;
        }
    }
}

class Arrumador {
  public:
    Arrumador(const IForm &form, const IMedidor &medidor, const Folgas &folgas)
        : m_Form(form),
          m_Medidor(medidor),
          m_Folgas(folgas),
          m_AlturaDoTexto(medidor.Mede("X", 0).Altura)
    {
    }

    No Olha(const Peca &peca) const
    {
        No no;
        no.Quem = &peca;
        no.Controle = peca.Especie() ? Acha(peca) : nullptr;
        no.Esquerda = no.Controle != nullptr ? no.Controle->Left() : peca.Left;
        for (const Peca &dentro : peca.Pecas) {
            no.Filhos.push_back(Olha(dentro));
        }
        no.Vista = EhVista(no);
        if (!no.Vista) {
            return no;
        }
        if (peca.Disposicao == Arranjo::Linha) {
            PoeEmOrdem(no.Filhos);
        }
        if (const std::string rotulo = SemMarca(no.Controle != nullptr ? no.Controle->Rotulo() : peca.Rotulo);
            !rotulo.empty()) {
            no.Rotulo = m_Medidor.Mede(rotulo, 0);
        }
        no.Natural = MedeNatural(no);
        return no;
    }

    void Coloca(const No &no, Retangulo lugar, std::vector<PecaArrumada> &pecas) const
    {
        if (!no.Vista) {
            return;
        }
        Retangulo rotulo;
        if (TemRotulo(no)) {
            rotulo = NoMeio(no.Rotulo, lugar, no.Rotulo.Largura);
            lugar.X += no.Rotulo.Largura + m_Folgas.EntrePecas;
            lugar.Largura -= no.Rotulo.Largura + m_Folgas.EntrePecas;
        }
        ColocaPeca(no, rotulo, lugar, pecas);
    }

    Tamanho Inteiro(const No &no) const
    {
        if (!TemRotulo(no)) {
            return no.Natural;
        }
        return {no.Rotulo.Largura + m_Folgas.EntrePecas + no.Natural.Largura,
                std::max(no.Rotulo.Altura, no.Natural.Altura)};
    }

  private:
    const IControle *Acha(const Peca &peca) const
    {
        for (const Ref<IControle> &controle : m_Form.Controles()) {
            if (controle->Indice() == peca.Indice && controle->Nome() == peca.Nome) {
                return controle.Ponteiro();
            }
        }
        return nullptr;
    }

    static bool EhVista(const No &no)
    {
        if (no.Quem->Especie()) {
            const bool visivel = no.Controle != nullptr ? no.Controle->Visible() : no.Quem->Visible;
            return visivel && no.Quem->Especie() != EspecieControle::CommonDialog;
        }
        return no.Filhos.empty() ? no.Quem->Elastica
                                 : std::ranges::any_of(no.Filhos, [](const No &filho) { return filho.Vista; });
    }

    // Those that have a Left change places among themselves.
    static void PoeEmOrdem(std::vector<No> &filhos)
    {
        std::vector<std::size_t> lugares;
        for (std::size_t i = 0; i < filhos.size(); ++i) {
            if (filhos[i].Esquerda != 0) {
                lugares.push_back(i);
            }
        }
        std::vector<No> movidos;
        for (const std::size_t lugar : lugares) {
            movidos.push_back(std::move(filhos[lugar]));
        }
        std::ranges::stable_sort(movidos, {}, &No::Esquerda);
        for (std::size_t i = 0; i < lugares.size(); ++i) {
            filhos[lugares[i]] = std::move(movidos[i]);
        }
    }

    std::string CaptionDe(const No &no) const
    {
        return SemMarca(no.Controle != nullptr ? no.Controle->Caption() : no.Quem->Caption);
    }

    std::int32_t LarguraDe(std::int32_t caracteres) const
    {
        return m_Medidor.Mede(std::string(static_cast<std::size_t>(caracteres), '0'), 0).Largura;
    }

    Tamanho Campo(const No &no, std::int32_t caracteres) const
    {
        const std::int32_t contados = no.Quem->Caracteres > 0 ? no.Quem->Caracteres
                                      : caracteres > 0        ? caracteres
                                                              : CaracteresSemLimite;
        return {LarguraDe(contados) + m_Folgas.Campo, m_AlturaDoTexto + m_Folgas.Campo};
    }

    Tamanho Combo(const No &no, const AjustesZtCombo &ajustes) const
    {
        Tamanho campo = Campo(no, 1);
        if (no.Quem->Caracteres == 0) {
            std::int32_t maior = 0;
            for (const std::string &item : ItensDe(no, ajustes)) {
                maior = std::max(maior, m_Medidor.Mede(item, 0).Largura);
            }
            campo.Largura = maior + m_Folgas.Campo;
        }
        campo.Largura += m_Folgas.Seta;
        return campo;
    }

    static std::vector<std::string> ItensDe(const No &no, const AjustesZtCombo &ajustes)
    {
        std::vector<std::string> textos;
        if (const auto *combo = dynamic_cast<const ztCombo *>(no.Controle)) {
            for (const ztCombo::Item &item : combo->Itens()) {
                textos.push_back(item.Texto);
            }
            return textos;
        }
        for (const std::string &item : Divide(ajustes.Conteudo, "??")) {
            const std::vector<std::string> colunas = Divide(item, ajustes.DelimitadorColuna);
            textos.push_back(colunas.empty() ? std::string() : colunas.front());
        }
        return textos;
    }

    Tamanho Label(const No &no, PapelLabel papel) const
    {
        const std::string texto = CaptionDe(no);
        if (papel == PapelLabel::Valor) {
            const std::int32_t largura =
                no.Quem->Caracteres > 0 ? LarguraDe(no.Quem->Caracteres) : m_Medidor.Mede(texto, 0).Largura;
            return {largura + m_Folgas.Campo, m_AlturaDoTexto + m_Folgas.Campo};
        }
        const std::int32_t limite = papel != PapelLabel::Paragrafo ? 0
                                    : no.Quem->Caracteres > 0      ? LarguraDe(no.Quem->Caracteres)
                                                                   : m_Folgas.LarguraDoParagrafo;
        return m_Medidor.Mede(texto, limite);
    }

    Tamanho MedeNatural(const No &no) const
    {
        const AjustesPeca &ajustes = no.Quem->Ajustes;
        const Tamanho texto = m_Medidor.Mede(CaptionDe(no), 0);
        if (!no.Quem->Especie()) {
            return Dentro(no);
        }
        switch (*no.Quem->Especie()) {
        case EspecieControle::Label:
            return Label(no, std::get<AjustesLabel>(ajustes).Papel);
        case EspecieControle::TextBox:
            return Campo(no, std::get<AjustesTextBox>(ajustes).MaxLength);
        case EspecieControle::ztVeiObservacao:
            return Campo(no, std::get<AjustesZtVeiObservacao>(ajustes).MaxLength);
        case EspecieControle::ztMask: {
            const auto &mascara = std::get<AjustesZtMask>(ajustes);
            return Campo(no,
                         mascara.Mascara.empty() ? mascara.MaxLength : static_cast<std::int32_t>(Len(mascara.Mascara)));
        }
        case EspecieControle::ztData:
            return Campo(no, CaracteresDaData);
        case EspecieControle::ztCombo:
            return Combo(no, std::get<AjustesZtCombo>(ajustes));
        case EspecieControle::CheckBox:
        case EspecieControle::OptionButton:
            return {m_Folgas.Marca + texto.Largura, std::max(texto.Altura, m_AlturaDoTexto)};
        case EspecieControle::CommandButton:
        case EspecieControle::ztCommand:
            return {std::max(m_Folgas.MenorBotao, texto.Largura + m_Folgas.Botao), m_AlturaDoTexto + m_Folgas.Campo};
        case EspecieControle::Image:
            return {m_Folgas.LadoDaImagem, m_Folgas.LadoDaImagem};
        case EspecieControle::ztEndereco:
            return {LarguraDe(CaracteresDoEndereco),
                    LinhasDoEndereco * (m_AlturaDoTexto + m_Folgas.Campo + m_Folgas.EntrePecas) - m_Folgas.EntrePecas};
        case EspecieControle::ztClienteSetor:
            return Campo(no, CaracteresDoEndereco);
        case EspecieControle::ztFrame:
        case EspecieControle::SSTab:
        case EspecieControle::ztList:
            return MedeContainer(no, texto);
        case EspecieControle::CommonDialog:
            break;
        }
        return {};
    }

    Tamanho MedeContainer(const No &no, Tamanho titulo) const
    {
        Tamanho dentro = Dentro(no);
        const Retangulo bordas = Bordas(no);
        Tamanho natural = {dentro.Largura + bordas.X + bordas.Largura, dentro.Altura + bordas.Y + bordas.Altura};
        if (bordas.X > 0) {
            natural.Largura = std::max(natural.Largura, titulo.Largura + 2 * m_Folgas.Margem);
        }
        if (no.Quem->Especie() == EspecieControle::ztList) {
            natural.Largura = std::max(dentro.Largura, m_Folgas.LarguraDaLista);
            natural.Altura = dentro.Altura + (dentro.Altura > 0 ? m_Folgas.EntrePecas : 0) + m_Folgas.AlturaDaLista;
        }
        return natural;
    }

    // What a container takes of its own: X left, Y above, Largura right, Altura
    // below.
    Retangulo Bordas(const No &no) const
    {
        const std::int32_t margem = m_Folgas.Margem;
        if (const auto *frame = std::get_if<AjustesZtFrame>(&no.Quem->Ajustes); frame != nullptr && frame->Contorno) {
            return {margem, margem + m_AlturaDoTexto, margem, margem};
        }
        if (no.Quem->Especie() == EspecieControle::SSTab) {
            return {margem, margem + m_AlturaDoTexto + m_Folgas.Campo, margem, margem};
        }
        return {};
    }

    // What the pieces inside take together.
    Tamanho Dentro(const No &no) const
    {
        if (no.Quem->Especie() == EspecieControle::SSTab) { // the pages lie one over the other
            Tamanho maior;
            for (const No &pagina : no.Filhos) {
                const Tamanho tamanho = pagina.Vista ? Inteiro(pagina) : Tamanho{};
                maior = {std::max(maior.Largura, tamanho.Largura), std::max(maior.Altura, tamanho.Altura)};
            }
            return maior;
        }
        if (no.Quem->Disposicao == Arranjo::Grade) {
            return MedeGrade(no);
        }
        const bool linha = no.Quem->Disposicao == Arranjo::Linha;
        std::vector<std::int32_t> aoLongo;
        std::int32_t maior = 0;
        for (const No &filho : no.Filhos) {
            if (filho.Vista) {
                const Tamanho tamanho = Inteiro(filho);
                aoLongo.push_back(linha ? tamanho.Largura : tamanho.Altura);
                maior = std::max(maior, linha ? tamanho.Altura : tamanho.Largura);
            }
        }
        const std::int32_t soma = SomaTodos(aoLongo);
        return linha ? Tamanho{soma, maior} : Tamanho{maior, soma};
    }

    // Of pieces that stand one behind the other, empty room included: that may grow.
    std::int32_t SomaTodos(const std::vector<std::int32_t> &tamanhos) const
    {
        const auto vaos = static_cast<std::int32_t>(tamanhos.size()) - 1;
        return std::accumulate(tamanhos.begin(), tamanhos.end(), std::max(vaos, 0) * m_Folgas.EntrePecas);
    }

    // The cells of a grid's rows. Those of hidden pieces keep their columns, so
    // that the others stay in line.
    static std::vector<Linha> Celulas(const No &grade)
    {
        std::vector<Linha> linhas;
        for (const No &linha : grade.Filhos) {
            Linha celulas;
            std::size_t coluna = 0;
            const auto poe = [&](const No &peca) {
                if (!peca.Quem->Rotulo.empty() || TemRotulo(peca)) {
                    celulas.push_back({&peca, true, coluna++, 1});
                }
                const auto vao = static_cast<std::size_t>(std::max<std::int16_t>(peca.Quem->Vao, 1));
                celulas.push_back({&peca, false, coluna, vao});
                coluna += vao;
            };
            if (linha.Quem->Especie()) {
                poe(linha);
            } else {
                std::ranges::for_each(linha.Filhos, poe);
            }
            linhas.push_back(std::move(celulas));
        }
        return linhas;
    }

    static Tamanho TamanhoDe(const Celula &celula)
    {
        if (!celula.Quem->Vista) {
            return {};
        }
        return celula.EhRotulo ? celula.Quem->Rotulo : celula.Quem->Natural;
    }

    std::vector<std::int32_t> LargurasDe(const std::vector<Linha> &linhas) const
    {
        std::size_t colunas = 0;
        for (const Linha &linha : linhas) {
            for (const Celula &celula : linha) {
                colunas = std::max(colunas, celula.Coluna + celula.Vao);
            }
        }
        std::vector<std::int32_t> larguras(colunas, 0);
        for (const bool largas : {false, true}) {
            for (const Linha &linha : linhas) {
                for (const Celula &celula : linha) {
                    if ((celula.Vao > 1) == largas) {
                        Alarga(larguras, celula);
                    }
                }
            }
        }
        return larguras;
    }

    void Alarga(std::vector<std::int32_t> &larguras, const Celula &celula) const
    {
        const std::int32_t falta = TamanhoDe(celula).Largura - LarguraDoVao(larguras, celula);
        if (falta > 0) {
            const std::size_t ultima = celula.Coluna + celula.Vao - 1;
            const bool nova = larguras[ultima] == 0 && LarguraDoVao(larguras, celula) > 0;
            larguras[ultima] += std::max(falta - (nova ? m_Folgas.EntrePecas : 0), 1);
        }
    }

    std::int32_t LarguraDoVao(const std::vector<std::int32_t> &larguras, const Celula &celula) const
    {
        const auto inicio = larguras.begin() + static_cast<std::ptrdiff_t>(celula.Coluna);
        return Soma({inicio, inicio + static_cast<std::ptrdiff_t>(celula.Vao)}, m_Folgas.EntrePecas);
    }

    static std::vector<std::int32_t> AlturasDe(const std::vector<Linha> &linhas)
    {
        std::vector<std::int32_t> alturas;
        for (const Linha &linha : linhas) {
            std::int32_t maior = 0;
            for (const Celula &celula : linha) {
                maior = std::max(maior, TamanhoDe(celula).Altura);
            }
            alturas.push_back(maior);
        }
        return alturas;
    }

    Tamanho MedeGrade(const No &no) const
    {
        const std::vector<Linha> linhas = Celulas(no);
        return {Soma(LargurasDe(linhas), m_Folgas.EntrePecas), Soma(AlturasDe(linhas), m_Folgas.EntrePecas)};
    }

    static Retangulo NoMeio(Tamanho tamanho, const Retangulo &lugar, std::int32_t largura)
    {
        return {lugar.X, lugar.Y + (lugar.Altura - tamanho.Altura) / 2, largura, tamanho.Altura};
    }

    // lugar: all of the room that the piece may have, its text before it not
    // counted.
    void ColocaPeca(const No &no, const Retangulo &rotulo, const Retangulo &lugar,
                    std::vector<PecaArrumada> &pecas) const
    {
        Retangulo tomado = lugar;
        if (!EhContainer(no)) {
            tomado = NoMeio(no.Natural, lugar, no.Quem->Elastica ? lugar.Largura : no.Natural.Largura);
        }
        const Retangulo bordas = Bordas(no);
        Retangulo dentro = {tomado.X + bordas.X, tomado.Y + bordas.Y, tomado.Largura - bordas.X - bordas.Largura,
                            tomado.Altura - bordas.Y - bordas.Altura};
        PecaArrumada arrumada = {no.Quem, tomado, rotulo, {}};
        if (no.Quem->Especie() == EspecieControle::ztList) {
            const std::int32_t barra = Dentro(no).Altura;
            const std::int32_t descida = barra > 0 ? barra + m_Folgas.EntrePecas : 0;
            arrumada.Miolo = {dentro.X, dentro.Y + descida, dentro.Largura, dentro.Altura - descida};
            dentro.Altura = barra;
        } else if (EhContainer(no)) {
            arrumada.Miolo = dentro;
        }
        if (no.Quem->Especie()) {
            pecas.push_back(arrumada);
        }
        ColocaDentro(no, dentro, pecas);
    }

    void ColocaDentro(const No &no, const Retangulo &lugar, std::vector<PecaArrumada> &pecas) const
    {
        if (no.Quem->Especie() == EspecieControle::SSTab) {
            for (const No &pagina : no.Filhos) {
                Coloca(pagina, lugar, pecas);
            }
        } else if (no.Quem->Disposicao == Arranjo::Grade) {
            ColocaGrade(no, lugar, pecas);
        } else {
            ColocaFila(no, lugar, pecas);
        }
    }

    // A row, or a column of pieces.
    void ColocaFila(const No &no, const Retangulo &lugar, std::vector<PecaArrumada> &pecas) const
    {
        const bool linha = no.Quem->Disposicao == Arranjo::Linha;
        std::vector<const No *> vistos;
        std::vector<std::int32_t> tamanhos;
        std::vector<bool> elasticos;
        for (const No &filho : no.Filhos) {
            if (filho.Vista) {
                vistos.push_back(&filho);
                tamanhos.push_back(linha ? Inteiro(filho).Largura : Inteiro(filho).Altura);
                elasticos.push_back(filho.Quem->Elastica);
            }
        }
        Reparte((linha ? lugar.Largura : lugar.Altura) - SomaTodos(tamanhos), elasticos, tamanhos);
        Retangulo proximo = lugar;
        for (std::size_t i = 0; i < vistos.size(); ++i) {
            (linha ? proximo.Largura : proximo.Altura) = tamanhos[i];
            Coloca(*vistos[i], proximo, pecas);
            (linha ? proximo.X : proximo.Y) += tamanhos[i] + m_Folgas.EntrePecas;
        }
    }

    void ColocaGrade(const No &no, const Retangulo &lugar, std::vector<PecaArrumada> &pecas) const
    {
        const std::vector<Linha> linhas = Celulas(no);
        std::vector<std::int32_t> larguras = LargurasDe(linhas);
        std::vector<std::int32_t> alturas = AlturasDe(linhas);
        std::vector<bool> colunasElasticas(larguras.size(), false);
        std::vector<bool> linhasElasticas;
        for (std::size_t i = 0; i < linhas.size(); ++i) {
            linhasElasticas.push_back(no.Filhos[i].Vista && no.Filhos[i].Quem->Elastica &&
                                      !no.Filhos[i].Quem->Especie());
            for (const Celula &celula : linhas[i]) {
                if (!celula.EhRotulo && celula.Quem->Vista && celula.Quem->Quem->Elastica) {
                    colunasElasticas[celula.Coluna + celula.Vao - 1] = true;
                }
            }
        }
        Reparte(lugar.Largura - Soma(larguras, m_Folgas.EntrePecas), colunasElasticas, larguras);
        Reparte(lugar.Altura - Soma(alturas, m_Folgas.EntrePecas), linhasElasticas, alturas);
        std::int32_t y = lugar.Y;
        for (std::size_t i = 0; i < linhas.size(); ++i) {
            Retangulo rotulo;
            for (const Celula &celula : linhas[i]) {
                const std::int32_t largura = LarguraDoVao(larguras, celula);
                const Retangulo espaco = {lugar.X + Inicio(larguras, celula.Coluna), y, largura, alturas[i]};
                if (!celula.Quem->Vista) {
                    rotulo = {};
                } else if (celula.EhRotulo) {
                    rotulo = NoMeio(celula.Quem->Rotulo, espaco, celula.Quem->Rotulo.Largura);
                } else {
                    ColocaPeca(*celula.Quem, rotulo, espaco, pecas);
                    rotulo = {};
                }
            }
            y += alturas[i] > 0 ? alturas[i] + m_Folgas.EntrePecas : 0;
        }
    }

    // Distance from the grid's left side at which a column begins.
    std::int32_t Inicio(const std::vector<std::int32_t> &larguras, std::size_t coluna) const
    {
        std::int32_t inicio = 0;
        for (std::size_t i = 0; i < coluna; ++i) {
            inicio += larguras[i] > 0 ? larguras[i] + m_Folgas.EntrePecas : 0;
        }
        return inicio;
    }

    const IForm &m_Form;
    const IMedidor &m_Medidor;
    const Folgas &m_Folgas;
    std::int32_t m_AlturaDoTexto;
};

} // namespace

FormArrumado Arruma(const Desenho &desenho, const IForm &form, const IMedidor &medidor, Tamanho disponivel,
                    const Folgas &folgas)
{
    const Arrumador arrumador(form, medidor, folgas);
    const No raiz = arrumador.Olha(desenho.Raiz);
    FormArrumado arrumado;
    const Tamanho inteiro = raiz.Vista ? arrumador.Inteiro(raiz) : Tamanho{};
    arrumado.Menor = {inteiro.Largura + 2 * folgas.Margem, inteiro.Altura + 2 * folgas.Margem};
    const Tamanho usado = {std::max(disponivel.Largura, arrumado.Menor.Largura),
                           std::max(disponivel.Altura, arrumado.Menor.Altura)};
    arrumador.Coloca(
        raiz, {folgas.Margem, folgas.Margem, usado.Largura - 2 * folgas.Margem, usado.Altura - 2 * folgas.Margem},
        arrumado.Pecas);
    return arrumado;
}
