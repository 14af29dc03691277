#include "tela/Tracado.h"

#include "controls/ztList.h"
#include "controls/ztMask.h"
#include "host/Texto.h"

#include <algorithm>

namespace {

constexpr std::int32_t LetrasDoComboCheio = 45; // of one with items longer than that
constexpr std::int32_t LetrasDaData = 10;
constexpr std::int32_t LetrasSemLimite = 20; // of a field that takes any number
constexpr std::int32_t LetrasQueBastam = 20; // to which a longer field gives way
constexpr std::int32_t LetrasDoValor = 8;

// The labels with which rows at the left edge of a page begin.
class RotulosDaPagina {
  public:
    RotulosDaPagina(const ControlesDoForm &controles, const MedidasDaPagina &medidas)
        : m_Controles(controles),
          m_Medidas(medidas)
    {
    }

    // recuo: of the piece, from the page's edge.
    void Percorre(const Peca &peca, std::int32_t recuo)
    {
        if (peca.Especie() == EspecieControle::ztEndereco || peca.Especie() == EspecieControle::ztClienteSetor) {
            m_Recuos[&peca] = recuo;
        } else if (peca.Especie() != EspecieControle::SSTab && !peca.Pecas.empty()) {
            PercorreDentro(peca, recuo + m_Medidas.Recuo(peca));
        }
    }

    std::map<const Peca *, std::int32_t> Larguras() const
    {
        std::int32_t fim = 0;
        for (const auto &[peca, recuo] : m_Recuos) {
            fim = std::max(fim, recuo + m_Medidas.Rotulo(*peca));
        }
        std::map<const Peca *, std::int32_t> larguras;
        for (const auto &[peca, recuo] : m_Recuos) {
            larguras[peca] = fim - recuo;
        }
        return larguras;
    }

  private:
    void PercorreDentro(const Peca &peca, std::int32_t recuo)
    {
        switch (peca.Disposicao) {
        case Arranjo::Linha:
            Comeca(peca.Pecas[OrdenaLinha(peca, m_Controles).Pecas.front()], peca.Pecas.size() > 1, recuo);
            break;
        case Arranjo::Grade:
            for (const Peca &linha : peca.Pecas) {
                const Peca &primeira = linha.Pecas.front();
                Comeca(primeira, linha.Pecas.size() > 1 && primeira.Vao == 1, recuo);
            }
            break;
        case Arranjo::Coluna:
            for (const Peca &contida : peca.Pecas) {
                Percorre(contida, recuo);
            }
            break;
        }
    }

    // seguida: something stands behind the piece in its row, in the next column of a grid.
    void Comeca(const Peca &primeira, bool seguida, std::int32_t recuo)
    {
        const auto *label = std::get_if<AjustesLabel>(&primeira.Ajustes);
        const bool deUmaLinha =
            label != nullptr && (label->Papel == PapelLabel::Rotulo || label->Papel == PapelLabel::Texto);
        if (!primeira.Rotulo.empty() || (deUmaLinha && seguida)) {
            m_Recuos[&primeira] = recuo;
        } else {
            Percorre(primeira, recuo);
        }
    }

    const ControlesDoForm &m_Controles;
    const MedidasDaPagina &m_Medidas;
    std::map<const Peca *, std::int32_t> m_Recuos;
};

LarguraEmLetras DoCampo(const Peca &peca, std::int32_t limite, char letra)
{
    const std::int32_t natural = peca.Caracteres > 0 ? peca.Caracteres : limite > 0 ? limite : LetrasSemLimite;
    return {natural, std::min(natural, LetrasQueBastam), 0, letra};
}

LarguraEmLetras DaMascara(const Peca &peca, const AjustesZtMask &ajustes)
{
    if (ajustes.Tipo == TipoMascara::Hora) {
        return DoCampo(peca, static_cast<std::int32_t>(Len(GabaritoDe(ajustes))), '0');
    }
    return DoCampo(peca, ajustes.MaxLength, ajustes.Tipo == TipoMascara::Digitos ? '0' : 'N');
}

} // namespace

ControlesDoForm::ControlesDoForm(const IForm &form)
{
    for (const Ref<IControle> &controle : form.Controles()) {
        m_Controles.emplace(std::pair(controle->Nome(), controle->Indice()), controle);
    }
}

bool EhMola(const Peca &peca)
{
    return !peca.Especie() && peca.Elastica && peca.Pecas.empty();
}

bool EhDeComandos(const Peca &peca)
{
    const auto ehComando = [](const Peca &contida) {
        return EhMola(contida) || contida.Especie() == EspecieControle::CommandButton ||
               contida.Especie() == EspecieControle::ztCommand;
    };
    return !peca.Especie() && peca.Disposicao == Arranjo::Linha && !peca.Pecas.empty() &&
           std::ranges::all_of(peca.Pecas, ehComando);
}

bool TomaLugar(const Peca &peca)
{
    const auto *frame = std::get_if<AjustesZtFrame>(&peca.Ajustes);
    const bool vazio = frame != nullptr && !frame->Contorno && peca.Pecas.empty();
    return !vazio && peca.Especie() != EspecieControle::CommonDialog;
}

std::vector<const Peca *> PaginasDe(const Peca &raiz)
{
    std::vector<const Peca *> paginas = {&raiz};
    const auto percorre = [&](const auto &deNovo, const Peca &peca) -> void {
        for (const Peca &contida : peca.Pecas) {
            if (peca.Especie() == EspecieControle::SSTab) {
                paginas.push_back(&contida);
            }
            deNovo(deNovo, contida);
        }
    };
    percorre(percorre, raiz);
    return paginas;
}

std::map<const Peca *, std::int32_t> AlinhaRotulos(const Peca &pagina, const ControlesDoForm &controles,
                                                   const MedidasDaPagina &medidas)
{
    RotulosDaPagina rotulos(controles, medidas);
    rotulos.Percorre(pagina, 0);
    return rotulos.Larguras();
}

bool EhMovel(const Peca &peca)
{
    return peca.Especie() && (peca.Left != 0 || peca.Width != 0);
}

OrdemDaLinha OrdenaLinha(const Peca &linha, const ControlesDoForm &controles)
{
    OrdemDaLinha ordem;
    std::vector<std::size_t> lugares;
    for (std::size_t peca = 0; peca < linha.Pecas.size(); ++peca) {
        ordem.Pecas.push_back(peca);
        if (EhMovel(linha.Pecas[peca])) {
            lugares.push_back(peca);
        }
    }
    const auto controle = [&](std::size_t peca) -> const IControle & { return *controles.De(linha.Pecas[peca]); };
    std::vector<std::size_t> moveis = lugares;
    std::ranges::stable_sort(moveis, {}, [&](std::size_t peca) { return controle(peca).Left(); });
    for (std::size_t n = 0; n < lugares.size(); ++n) {
        ordem.Pecas[lugares[n]] = moveis[n];
    }
    if (moveis.size() > 1 && controle(moveis[0]).Width() > 0) {
        const IControle &primeira = controle(moveis[0]);
        const std::int32_t distancia = controle(moveis[1]).Left() - primeira.Left() - primeira.Width();
        if (distancia >= 0) {
            ordem.Distancia = distancia;
        }
    }
    return ordem;
}

BarraDeCriterios BarraDe(const Peca &lista, const ControlesDoForm &controles)
{
    const auto &controle = dynamic_cast<const ztList &>(*controles.De(lista));
    BarraDeCriterios barra;
    barra.Visivel = controle.Ajustes().BarraCriteriosAtiva && !lista.Pecas.empty();
    for (const Peca &contida : lista.Pecas) {
        if (contida.Especie() == EspecieControle::ztFrame && controles.De(contida)->Visible()) {
            const IControle &frame = *controles.De(contida);
            barra.Esquerda = frame.Left();
            barra.Acima = frame.Top();
            barra.Abaixo = std::max(controle.BarraCriteriosAltura() - frame.Top() - frame.Height(), 0);
        }
    }
    return barra;
}

bool Enche(const Peca &peca)
{
    if (peca.Elastica || !peca.Especie()) {
        return true;
    }
    switch (*peca.Especie()) {
    case EspecieControle::TextBox:
    case EspecieControle::ztVeiObservacao:
    case EspecieControle::ztMask:
    case EspecieControle::ztData:
    case EspecieControle::ztCombo:
    case EspecieControle::CommandButton:
    case EspecieControle::ztCommand:
    case EspecieControle::Image:
        return false;
    default:
        return true;
    }
}

LarguraEmLetras LarguraDe(const Peca &peca)
{
    const AjustesPeca &ajustes = peca.Ajustes;
    if (const auto *label = std::get_if<AjustesLabel>(&ajustes)) {
        const bool vazia = peca.Caracteres == 0 && label->Papel == PapelLabel::Valor;
        const std::int32_t natural = vazia ? LetrasDoValor : peca.Caracteres;
        return {natural, natural};
    }
    if (const auto *campo = std::get_if<AjustesTextBox>(&ajustes)) {
        return DoCampo(peca, campo->MaxLength, 'n');
    }
    if (const auto *observacao = std::get_if<AjustesZtVeiObservacao>(&ajustes)) {
        return DoCampo(peca, observacao->MaxLength, 'n');
    }
    if (const auto *mascara = std::get_if<AjustesZtMask>(&ajustes)) {
        return DaMascara(peca, *mascara);
    }
    if (peca.Especie() == EspecieControle::ztData) {
        return DoCampo(peca, LetrasDaData, '0');
    }
    if (peca.Especie() == EspecieControle::ztCombo) {
        const std::int32_t natural = peca.Caracteres > 0 ? peca.Caracteres : LetrasDoCombo;
        return {natural, natural, peca.Elastica ? 0 : LetrasDoComboCheio};
    }
    return {};
}
