#pragma once

#include <QColor>
#include <QGuiApplication>
#include <QPalette>

#include <functional>
#include <initializer_list>

class QWidget;

namespace mesa {

// The few colours that the desk needs beyond the palette. Each is made for the palette in force, light or dark, so that
// it can be told from what it stands on.
enum class Cor {
    Erro,    // text of what is wrong
    Aviso,   // text of what is to be looked at
    Amostra, // text of the mark of a sample
    Area,    // behind the windows of the main window
    Achado,  // behind the palette's Text where a word was found
    Foco     // frame of what has the keyboard
};

// What a text needs to be read, and a sign to be seen.
constexpr double ContrasteDeTexto = 4.5;
constexpr double ContrasteDeSinal = 3.0;

// From 1, the same, to 21, black on white.
double Contraste(const QColor &um, const QColor &outro);
// The colour with as much more light, or less, as it needs against all of the grounds; its hue stays.
QColor Legivel(const QColor &cor, std::initializer_list<QColor> fundos, double minimo = ContrasteDeTexto);
bool EhEscura(const QPalette &paleta);
QColor CorDe(Cor cor, const QPalette &paleta = QGuiApplication::palette());
// Of paper, for what is drawn on a page: the same whatever the screen has.
QPalette PaletaDePapel();

// Does it now, and again whenever the widget's palette has changed. A widget has one of these: the last one given.
void SeguePaleta(QWidget &widget, const std::function<void()> &faz);
// The widget's text in that colour, whatever palette comes; to a screen reader it is described by what the colour says.
void Colore(QWidget &widget, Cor cor);

} // namespace mesa
