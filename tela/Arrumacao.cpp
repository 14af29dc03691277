#include "tela/Arrumacao.h"

#include "controls/ztCombo.h"
#include "controls/ztList.h"
#include "tela/Mnemonicas.h"
#include "tela/Partes.h"
#include "tela/Tracado.h"
#include "tela/Twips.h"

#include <algorithm>
#include <numeric>

namespace {

constexpr std::int32_t CamposDoEndereco = 3;  // one below the other
constexpr std::int32_t LinhasDaDescricao = 2; // of the address in words, below them
constexpr std::int32_t CaracteresDoEndereco = 60;
constexpr std::int32_t LarguraQueBasta = 640;    // of the columns of a list
constexpr std::int32_t CaracteresDoCliente = 80; // of both combos with their labels

struct Medida {
    std::int32_t Largura = 0;
    std::int32_t Estreita = 0; // the width to which it gives way
    std::int32_t Altura = 0;
};

Medida Fixa(Tamanho tamanho)
{
    return {tamanho.Largura, tamanho.Largura, tamanho.Altura};
}

// A piece with what it is on the form now.
struct No {
    const Peca *Quem = nullptr;
    const IControle *Controle = nullptr; // null for a mere arrangement
    bool Vista = false;
    Medida Natural;             // without the text before it
    Medida Rotulo;              // of that text
    std::int32_t Entre = 0;     // the pieces inside
    BarraDeCriterios Barra;     // of a list
    std::int32_t Alinhados = 0; // the labels that a picker makes by itself
    std::vector<No> Filhos;     // as they stand
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
    return !no.Quem->Rotulo.empty();
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

// Takes away room from those that have more than they must, from each its part. A column of a grid may need more beside
// a narrow one than beside a wide one: it gets that.
void Retira(std::int32_t falta, const std::vector<std::int32_t> &menores, std::vector<std::int32_t> &tamanhos)
{
    std::int32_t folga =
        std::accumulate(tamanhos.begin(), tamanhos.end(), 0) - std::accumulate(menores.begin(), menores.end(), 0);
    falta = std::clamp(falta, 0, folga);
    for (std::size_t i = 0; i < tamanhos.size() && folga != 0; ++i) {
        const std::int32_t propria = tamanhos[i] - menores[i];
        const std::int32_t parte = propria * falta / folga;
        tamanhos[i] -= parte;
        falta -= parte;
        folga -= propria;
    }
}

class Arrumador {
  public:
    Arrumador(const Peca &raiz, const IForm &form, const IMedidor &medidor, const Folgas &folgas)
        : m_Controles(form),
          m_Medidor(medidor),
          m_Folgas(folgas),
          m_AlturaDoTexto(medidor.Mede("X", 0).Altura)
    {
        const MedidasDaPagina medidas = {[this](const Peca &peca) { return RecuoDe(peca); },
                                         [this](const Peca &peca) { return LarguraDoRotulo(peca); }};
        for (const Peca *pagina : PaginasDe(raiz)) {
            m_Rotulos.merge(AlinhaRotulos(*pagina, m_Controles, medidas));
        }
    }

    No Olha(const Peca &peca) const
    {
        No no;
        no.Quem = &peca;
        no.Controle = peca.Especie() ? &*m_Controles.De(peca) : nullptr;
        no.Entre = m_Folgas.EntrePecas;
        if (peca.Especie() == EspecieControle::ztList) {
            no.Barra = BarraDe(peca, m_Controles);
        }
        if (peca.Disposicao == Arranjo::Linha) {
            const OrdemDaLinha ordem = OrdenaLinha(peca, m_Controles);
            no.Entre = ordem.Distancia ? Pixels(*ordem.Distancia) : no.Entre;
            for (const std::size_t contida : ordem.Pecas) {
                no.Filhos.push_back(Olha(peca.Pecas[contida]));
            }
        } else if (peca.Especie() != EspecieControle::ztList || no.Barra.Visivel) {
            std::ranges::transform(peca.Pecas, std::back_inserter(no.Filhos),
                                   [this](const Peca &contida) { return Olha(contida); });
        }
        no.Vista = EhVista(no);
        if (no.Vista) {
            Mede(no);
        }
        return no;
    }

    void Coloca(const No &no, Retangulo lugar, std::vector<PecaArrumada> &pecas) const
    {
        if (!no.Vista) {
            return;
        }
        Retangulo rotulo;
        if (TemRotulo(no)) {
            rotulo = NoMeio(no.Rotulo, lugar);
            lugar.X += no.Rotulo.Largura + m_Folgas.EntrePecas;
            lugar.Largura -= no.Rotulo.Largura + m_Folgas.EntrePecas;
        }
        ColocaPeca(no, rotulo, lugar, pecas);
    }

    Medida Inteiro(const No &no) const
    {
        if (!TemRotulo(no)) {
            return no.Natural;
        }
        const std::int32_t antes = no.Rotulo.Largura + m_Folgas.EntrePecas;
        return {antes + no.Natural.Largura, antes + no.Natural.Estreita, std::max(no.Rotulo.Altura, no.Natural.Altura)};
    }

  private:
    static bool EhVista(const No &no)
    {
        if (no.Controle != nullptr) {
            return no.Controle->Visible() && TomaLugar(*no.Quem);
        }
        return EhMola(*no.Quem) || std::ranges::any_of(no.Filhos, [](const No &filho) { return filho.Vista; });
    }

    void Mede(No &no) const
    {
        no.Natural = MedeNatural(no);
        const auto alinhado = m_Rotulos.find(no.Quem);
        if (TemRotulo(no)) {
            no.Rotulo = Fixa(m_Medidor.Mede(SemMarca(no.Controle->Rotulo()), 0));
            if (alinhado != m_Rotulos.end()) {
                no.Rotulo.Largura = alinhado->second;
            }
        } else if (alinhado != m_Rotulos.end() && no.Controle->Especie() == EspecieControle::Label) {
            no.Natural.Largura = alinhado->second;
            no.Natural.Estreita = alinhado->second;
        } else if (alinhado != m_Rotulos.end()) {
            no.Alinhados = alinhado->second;
        }
    }

    // How far inside it, from the left, what a piece holds begins.
    std::int32_t RecuoDe(const Peca &peca) const
    {
        return peca.Especie() == EspecieControle::ztList ? Pixels(BarraDe(peca, m_Controles).Esquerda) : Bordas(peca).X;
    }

    // Of the label that a piece has before it, is itself, or makes by itself.
    std::int32_t LarguraDoRotulo(const Peca &peca) const
    {
        const IControle &controle = *m_Controles.De(peca);
        if (!peca.Rotulo.empty()) {
            return m_Medidor.Mede(SemMarca(controle.Rotulo()), 0).Largura;
        }
        if (controle.Especie() == EspecieControle::Label) {
            return Label(peca, controle).Largura;
        }
        std::int32_t maior = 0;
        for (const std::string_view proprio : RotulosDasPartes(controle.Especie())) {
            maior = std::max(maior, m_Medidor.Mede(std::string(proprio), 0).Largura);
        }
        return maior;
    }

    std::int32_t LarguraDasLetras(std::int32_t quantas, char letra) const
    {
        return m_Medidor.Mede(std::string(static_cast<std::size_t>(quantas), letra), 0).Largura;
    }

    // Of what is as high as a field, by its text.
    Medida NoCampo(std::int32_t largura, std::int32_t estreita) const
    {
        return {largura + m_Folgas.Campo, estreita + m_Folgas.Campo, m_AlturaDoTexto + m_Folgas.Campo};
    }

    Medida Campo(const Peca &peca) const
    {
        const LarguraEmLetras letras = LarguraDe(peca);
        return NoCampo(LarguraDasLetras(letras.Natural, letras.Letra), LarguraDasLetras(letras.Menor, letras.Letra));
    }

    Medida Combo(const Peca &peca, const ztCombo &combo) const
    {
        const LarguraEmLetras letras = LarguraDe(peca);
        std::int32_t largura = LarguraDasLetras(letras.Natural, letras.Letra);
        for (const ztCombo::Item &item : combo.Itens()) {
            largura = std::max(largura, m_Medidor.Mede(item.Texto, 0).Largura);
        }
        if (letras.Maior > 0) {
            largura = std::min(largura, LarguraDasLetras(letras.Maior, letras.Letra));
        }
        Medida medida = NoCampo(largura, LarguraDasLetras(letras.Menor, letras.Letra));
        medida.Largura += m_Folgas.Seta;
        medida.Estreita += m_Folgas.Seta;
        return medida;
    }

    Medida Label(const Peca &peca, const IControle &controle) const
    {
        const std::string texto = SemMarca(controle.Caption());
        const LarguraEmLetras letras = LarguraDe(peca);
        const std::int32_t pedida = LarguraDasLetras(letras.Natural, letras.Letra);
        const PapelLabel papel = std::get<AjustesLabel>(peca.Ajustes).Papel;
        if (papel == PapelLabel::Paragrafo) {
            return Fixa(m_Medidor.Mede(texto, pedida > 0 ? pedida : m_Folgas.LarguraDoParagrafo));
        }
        const Tamanho tamanho = m_Medidor.Mede(texto, 0);
        const std::int32_t largura = std::max(tamanho.Largura, pedida);
        return papel == PapelLabel::Valor ? NoCampo(largura, largura) : Medida{largura, largura, tamanho.Altura};
    }

    Medida Botao(const std::string &caption) const
    {
        const std::int32_t largura =
            std::max(m_Folgas.MenorBotao, m_Medidor.Mede(SemMarca(caption), 0).Largura + m_Folgas.Botao);
        return {largura, largura, m_AlturaDoTexto + m_Folgas.Campo};
    }

    Medida MedeNatural(const No &no) const
    {
        if (no.Controle == nullptr) {
            return Dentro(no);
        }
        switch (no.Controle->Especie()) {
        case EspecieControle::Label:
            return Label(*no.Quem, *no.Controle);
        case EspecieControle::TextBox:
        case EspecieControle::ztVeiObservacao:
        case EspecieControle::ztMask:
        case EspecieControle::ztData:
            return Campo(*no.Quem);
        case EspecieControle::ztCombo:
            return Combo(*no.Quem, dynamic_cast<const ztCombo &>(*no.Controle));
        case EspecieControle::CheckBox:
        case EspecieControle::OptionButton: {
            const Tamanho texto = m_Medidor.Mede(SemMarca(no.Controle->Caption()), 0);
            return Fixa({m_Folgas.Marca + texto.Largura, std::max(texto.Altura, m_AlturaDoTexto)});
        }
        case EspecieControle::CommandButton:
        case EspecieControle::ztCommand:
            return Botao(no.Controle->Caption());
        case EspecieControle::Image:
            return Fixa({LadoDaImagem, LadoDaImagem});
        case EspecieControle::ztEndereco:
            return Fixa({LarguraDasLetras(CaracteresDoEndereco, '0'),
                         CamposDoEndereco * (m_AlturaDoTexto + m_Folgas.Campo + m_Folgas.EntrePecas) +
                             std::max(LinhasDaDescricao * m_AlturaDoTexto, m_AlturaDoTexto + m_Folgas.Campo)});
        case EspecieControle::ztClienteSetor: {
            const std::int32_t largura = LarguraDasLetras(CaracteresDoCliente, '0');
            return NoCampo(largura, largura);
        }
        case EspecieControle::ztFrame:
        case EspecieControle::SSTab:
            return Caixa(no);
        case EspecieControle::ztList: {
            const Medida barra = Barra(no);
            const std::int32_t colunas = Colunas(dynamic_cast<const ztList &>(*no.Controle));
            return {std::max({barra.Largura, colunas, m_Folgas.LarguraDaLista}),
                    std::max(barra.Estreita, m_Folgas.LarguraDaLista),
                    barra.Altura + (barra.Altura > 0 ? m_Folgas.EntrePecas : 0) + m_Folgas.AlturaDaLista};
        }
        case EspecieControle::CommonDialog:
            break;
        }
        return {};
    }

    // A list of few columns shows them all, a wider one scrolls.
    std::int32_t Colunas(const ztList &lista) const
    {
        std::int32_t largura = 0;
        for (const ztList::Coluna &coluna : lista.Colunas()) {
            largura += coluna.Visivel ? Pixels(coluna.Largura) + m_Folgas.Coluna : 0;
        }
        return std::min(largura, LarguraQueBasta) + m_Folgas.BarraDaLista;
    }

    Medida Caixa(const No &no) const
    {
        const Retangulo bordas = Bordas(*no.Quem);
        Medida caixa = Dentro(no);
        caixa.Altura += bordas.Y + bordas.Altura;
        const std::int32_t titulo =
            bordas.X > 0 ? m_Medidor.Mede(SemMarca(no.Controle->Caption()), 0).Largura + 2 * m_Folgas.Margem : 0;
        for (std::int32_t *largura : {&caixa.Largura, &caixa.Estreita}) {
            *largura = std::max(*largura + bordas.X + bordas.Largura, titulo);
        }
        return caixa;
    }

    // The criteria bar of a list, with the search button at its right.
    Medida Barra(const No &lista) const
    {
        if (!lista.Barra.Visivel) {
            return {};
        }
        const Medida localizar = Botao(std::string(Partes::Localizar));
        Medida barra = Dentro(lista);
        barra.Altura =
            std::max(Pixels(lista.Barra.Acima) + barra.Altura + Pixels(lista.Barra.Abaixo), localizar.Altura);
        for (std::int32_t *largura : {&barra.Largura, &barra.Estreita}) {
            *largura += Pixels(lista.Barra.Esquerda) + m_Folgas.EntrePecas + localizar.Largura;
        }
        return barra;
    }

    // What a container takes of its own: X left, Y above, Largura right, Altura
    // below.
    Retangulo Bordas(const Peca &peca) const
    {
        const std::int32_t margem = m_Folgas.Margem;
        if (const auto *frame = std::get_if<AjustesZtFrame>(&peca.Ajustes); frame != nullptr && frame->Contorno) {
            return {margem, margem + m_AlturaDoTexto, margem, margem};
        }
        if (peca.Especie() == EspecieControle::SSTab) {
            return {margem, margem + m_AlturaDoTexto + m_Folgas.Campo, margem, margem};
        }
        return {};
    }

    // What the pieces inside take together.
    Medida Dentro(const No &no) const
    {
        if (no.Quem->Disposicao == Arranjo::Grade) {
            return MedeGrade(no);
        }
        const bool paginas = no.Quem->Especie() == EspecieControle::SSTab; // one over the other
        const bool linha = no.Quem->Disposicao == Arranjo::Linha;
        Medida soma;
        Medida maior;
        std::int32_t vistos = 0;
        for (const No &filho : no.Filhos) {
            if (filho.Vista) {
                const Medida medida = Inteiro(filho);
                soma = {soma.Largura + medida.Largura, soma.Estreita + medida.Estreita, soma.Altura + medida.Altura};
                maior = {std::max(maior.Largura, medida.Largura), std::max(maior.Estreita, medida.Estreita),
                         std::max(maior.Altura, medida.Altura)};
                ++vistos;
            }
        }
        const std::int32_t vaos = std::max(vistos - 1, 0) * no.Entre;
        if (paginas) {
            return maior;
        }
        return linha ? Medida{soma.Largura + vaos, soma.Estreita + vaos, maior.Altura}
                     : Medida{maior.Largura, maior.Estreita, soma.Altura + vaos};
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
                if (TemRotulo(peca)) {
                    celulas.push_back({&peca, true, coluna++, 1});
                }
                const auto vao = static_cast<std::size_t>(std::max<std::int16_t>(peca.Quem->Vao, 1));
                celulas.push_back({&peca, false, coluna, vao});
                coluna += vao;
            };
            std::ranges::for_each(linha.Filhos, poe);
            linhas.push_back(std::move(celulas));
        }
        return linhas;
    }

    static Medida MedidaDe(const Celula &celula)
    {
        if (!celula.Quem->Vista) {
            return {};
        }
        return celula.EhRotulo ? celula.Quem->Rotulo : celula.Quem->Natural;
    }

    // qual: the natural widths, or those to which the columns give way.
    std::vector<std::int32_t> LargurasDe(const std::vector<Linha> &linhas, std::int32_t Medida::*qual) const
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
                        Alarga(larguras, celula, MedidaDe(celula).*qual);
                    }
                }
            }
        }
        return larguras;
    }

    void Alarga(std::vector<std::int32_t> &larguras, const Celula &celula, std::int32_t largura) const
    {
        const std::int32_t falta = largura - LarguraDoVao(larguras, celula);
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
                maior = std::max(maior, MedidaDe(celula).Altura);
            }
            alturas.push_back(maior);
        }
        return alturas;
    }

    Medida MedeGrade(const No &no) const
    {
        const std::vector<Linha> linhas = Celulas(no);
        return {Soma(LargurasDe(linhas, &Medida::Largura), m_Folgas.EntrePecas),
                Soma(LargurasDe(linhas, &Medida::Estreita), m_Folgas.EntrePecas),
                Soma(AlturasDe(linhas), m_Folgas.EntrePecas)};
    }

    static Retangulo NoMeio(const Medida &medida, const Retangulo &lugar)
    {
        return {lugar.X, lugar.Y + (lugar.Altura - medida.Altura) / 2, std::min(medida.Largura, lugar.Largura),
                medida.Altura};
    }

    // lugar: all of the room that the piece may have, its text before it not
    // counted.
    void ColocaPeca(const No &no, const Retangulo &rotulo, const Retangulo &lugar,
                    std::vector<PecaArrumada> &pecas) const
    {
        Retangulo tomado = lugar;
        if (!EhContainer(no)) {
            tomado = NoMeio(no.Natural, lugar);
            tomado.Largura = Enche(*no.Quem) ? lugar.Largura : tomado.Largura;
        }
        const Retangulo bordas = Bordas(*no.Quem);
        Retangulo dentro = {tomado.X + bordas.X, tomado.Y + bordas.Y, tomado.Largura - bordas.X - bordas.Largura,
                            tomado.Altura - bordas.Y - bordas.Altura};
        PecaArrumada arrumada = {no.Quem, tomado, rotulo, {}, {}, no.Alinhados};
        if (EhContainer(no)) {
            arrumada.Miolo = dentro;
        }
        if (no.Barra.Visivel) {
            const Medida barra = Barra(no);
            const Medida localizar = Botao(std::string(Partes::Localizar));
            arrumada.Miolo.Y += barra.Altura + m_Folgas.EntrePecas;
            arrumada.Miolo.Altura -= barra.Altura + m_Folgas.EntrePecas;
            arrumada.Localizar = {dentro.X + dentro.Largura - localizar.Largura, dentro.Y, localizar.Largura,
                                  localizar.Altura};
            dentro = {dentro.X + Pixels(no.Barra.Esquerda), dentro.Y + Pixels(no.Barra.Acima),
                      dentro.Largura - Pixels(no.Barra.Esquerda) - m_Folgas.EntrePecas - localizar.Largura,
                      barra.Altura - Pixels(no.Barra.Acima) - Pixels(no.Barra.Abaixo)};
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
        std::vector<std::int32_t> menores;
        std::vector<bool> elasticos;
        for (const No &filho : no.Filhos) {
            if (filho.Vista) {
                const Medida medida = Inteiro(filho);
                vistos.push_back(&filho);
                tamanhos.push_back(linha ? medida.Largura : medida.Altura);
                menores.push_back(linha ? medida.Estreita : medida.Altura);
                elasticos.push_back(filho.Quem->Elastica);
            }
        }
        const std::int32_t vaos = std::max(static_cast<std::int32_t>(vistos.size()) - 1, 0) * no.Entre;
        Ajusta((linha ? lugar.Largura : lugar.Altura) - vaos, elasticos, menores, tamanhos);
        Retangulo proximo = lugar;
        for (std::size_t i = 0; i < vistos.size(); ++i) {
            (linha ? proximo.Largura : proximo.Altura) = tamanhos[i];
            Coloca(*vistos[i], proximo, pecas);
            (linha ? proximo.X : proximo.Y) += tamanhos[i] + no.Entre;
        }
    }

    // To the room that there is for all of them.
    static void Ajusta(std::int32_t espaco, const std::vector<bool> &elasticos,
                       const std::vector<std::int32_t> &menores, std::vector<std::int32_t> &tamanhos)
    {
        const std::int32_t sobra = espaco - std::accumulate(tamanhos.begin(), tamanhos.end(), 0);
        Reparte(sobra, elasticos, tamanhos);
        Retira(-sobra, menores, tamanhos);
    }

    void ColocaGrade(const No &no, const Retangulo &lugar, std::vector<PecaArrumada> &pecas) const
    {
        const std::vector<Linha> linhas = Celulas(no);
        std::vector<std::int32_t> larguras = LargurasDe(linhas, &Medida::Largura);
        std::vector<std::int32_t> alturas = AlturasDe(linhas);
        std::vector<bool> colunasElasticas(larguras.size(), false);
        std::vector<bool> linhasElasticas;
        for (std::size_t i = 0; i < linhas.size(); ++i) {
            linhasElasticas.push_back(no.Filhos[i].Vista && no.Filhos[i].Quem->Elastica);
            for (const Celula &celula : linhas[i]) {
                if (!celula.EhRotulo && celula.Quem->Vista && celula.Quem->Quem->Elastica) {
                    colunasElasticas[celula.Coluna + celula.Vao - 1] = true;
                }
            }
        }
        const std::int32_t vaos = Soma(larguras, m_Folgas.EntrePecas) - Soma(larguras, 0);
        Ajusta(lugar.Largura - vaos, colunasElasticas, LargurasDe(linhas, &Medida::Estreita), larguras);
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
                    rotulo = NoMeio(celula.Quem->Rotulo, espaco);
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

    ControlesDoForm m_Controles;
    const IMedidor &m_Medidor;
    const Folgas &m_Folgas;
    std::int32_t m_AlturaDoTexto;
    std::map<const Peca *, std::int32_t> m_Rotulos; // those that line up
};

} // namespace

FormArrumado Arruma(const Desenho &desenho, const IForm &form, const IMedidor &medidor, Tamanho disponivel,
                    const Folgas &folgas)
{
    const Arrumador arrumador(desenho.Raiz, form, medidor, folgas);
    const No raiz = arrumador.Olha(desenho.Raiz);
    const Medida inteiro = raiz.Vista ? arrumador.Inteiro(raiz) : Medida{};
    const std::int32_t margens = 2 * folgas.Margem;
    FormArrumado arrumado;
    arrumado.Natural = {inteiro.Largura + margens, inteiro.Altura + margens};
    arrumado.Menor = {inteiro.Estreita + margens, inteiro.Altura + margens};
    const Tamanho usado = {std::max(disponivel.Largura, arrumado.Menor.Largura),
                           std::max(disponivel.Altura, arrumado.Menor.Altura)};
    arrumador.Coloca(raiz, {folgas.Margem, folgas.Margem, usado.Largura - margens, usado.Altura - margens},
                     arrumado.Pecas);
    return arrumado;
}
