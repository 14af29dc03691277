#include "desk/windows/Paletas.h"

#include <algorithm>

namespace mesa {

namespace {

using Papel = QPalette::ColorRole;

struct Cores {
    QColor Janela;
    QColor Letra;
    QColor Campo;
    QColor Alternada;
    QColor Botao;
    QColor Selecao;
    QColor Elo;
    QColor EloVisto;
    QColor Dica;
    QColor Exemplo;
    QColor Apagada; // text of what is disabled
};

QPalette Faz(const Cores &cores)
{
    constexpr int maisLuz = 130;
    constexpr int menosLuz = 140;
    constexpr int sombra = 200;
    const QColor branca(Qt::white);
    QPalette paleta;
    const auto poe = [&](Papel papel, const QColor &cor) { paleta.setColor(QPalette::All, papel, cor); };
    poe(Papel::Window, cores.Janela);
    poe(Papel::Base, cores.Campo);
    poe(Papel::AlternateBase, cores.Alternada);
    poe(Papel::Button, cores.Botao);
    poe(Papel::ToolTipBase, cores.Dica);
    for (const Papel texto : {Papel::WindowText, Papel::Text, Papel::ButtonText, Papel::ToolTipText}) {
        poe(texto, cores.Letra);
        if (texto != Papel::ToolTipText) {
            paleta.setColor(QPalette::Disabled, texto, cores.Apagada);
        }
    }
    poe(Papel::BrightText, branca);
    poe(Papel::PlaceholderText, cores.Exemplo);
    poe(Papel::Highlight, cores.Selecao);
    poe(Papel::HighlightedText, branca);
    poe(Papel::Link, cores.Elo);
    poe(Papel::LinkVisited, cores.EloVisto);
    poe(Papel::Light, cores.Botao.lighter(maisLuz));
    poe(Papel::Midlight, cores.Botao.lighter((100 + maisLuz) / 2));
    poe(Papel::Mid, cores.Botao.darker((100 + menosLuz) / 2));
    poe(Papel::Dark, cores.Botao.darker(menosLuz));
    poe(Papel::Shadow, cores.Botao.darker(sombra));
    return paleta;
}

// As it is seen over what it stands on.
QColor Sobre(const QColor &fundo, const QColor &cor)
{
    const float forca = cor.alphaF();
    const auto mistura = [&](float de, float para) { return de + (para - de) * forca; };
    return QColor::fromRgbF(mistura(fundo.redF(), cor.redF()), mistura(fundo.greenF(), cor.greenF()),
                            mistura(fundo.blueF(), cor.blueF()));
}

} // namespace

QPalette PaletaClara()
{
    return Faz({"#efefef", "#000000", "#ffffff", "#f5f5f5", "#efefef", "#1d5fa8", "#0b57d0", "#6d28a8", "#ffffdc",
                "#5f6368", "#757575"});
}

QPalette PaletaEscura()
{
    return Faz({"#2b2f33", "#f2f2f2", "#1e2124", "#262a2e", "#363b40", "#2b69ad", "#8ab4f8", "#c9a0ff", "#3a3f45",
                "#a9b0b7", "#a3a9af"});
}

QPalette Retoques(const QPalette &paleta)
{
    QPalette retoques;
    const auto confere = [&](QPalette::ColorGroup grupo, Papel papel, std::initializer_list<Papel> sobre,
                             double minimo) {
        const auto fundo = [&](Papel qual) { return paleta.color(grupo, qual); };
        const QColor vista = Sobre(fundo(*sobre.begin()), paleta.color(grupo, papel));
        if (std::ranges::any_of(sobre, [&](Papel qual) { return Contraste(vista, fundo(qual)) < minimo; })) {
            retoques.setColor(grupo, papel, Legivel(vista, {fundo(*sobre.begin()), fundo(*(sobre.end() - 1))}, minimo));
        }
    };
    for (const auto grupo : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        const double minimo = grupo == QPalette::Disabled ? ContrasteDeSinal : ContrasteDeTexto;
        confere(grupo, Papel::WindowText, {Papel::Window}, minimo);
        confere(grupo, Papel::Text, {Papel::Base, Papel::Window}, minimo); // a field that is read only has the latter
        confere(grupo, Papel::ButtonText, {Papel::Button}, minimo);
        confere(grupo, Papel::ToolTipText, {Papel::ToolTipBase}, minimo);
        confere(grupo, Papel::PlaceholderText, {Papel::Base, Papel::Window}, minimo);
        confere(grupo, Papel::Link, {Papel::Window, Papel::Base}, minimo);
        confere(grupo, Papel::LinkVisited, {Papel::Window, Papel::Base}, minimo);
        confere(grupo, Papel::Highlight, {Papel::HighlightedText}, minimo);
    }
    return retoques;
}

} // namespace mesa
