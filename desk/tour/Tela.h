#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>

namespace mesa {

// The screen that the tour goes over, as told by its command line.
struct Tela {
    QString Pasta;    // of pictures and account
    QSize Tamanho;    // points of the screen; empty: of whatever screen there is
    int Escala = 100; // per cent
    bool Escura = false;
    QString Servidor; // program of the server at which the tour works; empty: the registry is on this computer

    // Nothing when it cannot be understood.
    static std::optional<Tela> Le(const QStringList &argumentos);
    static const char *Ajuda();

    // Before the toolkit starts. A size that was told is that of a screen in memory.
    void Prepara() const;
};

} // namespace mesa
