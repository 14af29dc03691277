#pragma once

#include "tela/ILembrancas.h"

#include <QString>

#include <string>

class QWidget;

namespace mesa {

// What a person is asked when they are to choose a file.
struct EscolhaDeArquivo {
    QString Titulo;
    QString Filtros;       // "PDF (*.pdf);;Todos os arquivos (*)"
    std::string Uso;       // whose folder is remembered; empty for none
    QString Nome = {};     // that is offered
    QString Extensao = {}; // of a name that is typed without one, until a kind with an extension of its own is chosen
    bool Pergunta = true;  // before a file is written over
};

// Where the folders are remembered; Nothing while nobody is at work.
void DefineLembrancasDeArquivos(Ref<ILembrancas> lembrancas);

// Each comes back with what was chosen, empty when the person gave up.
QString EscolheParaAbrir(const EscolhaDeArquivo &escolha, QWidget *dono);
QString EscolheParaSalvar(const EscolhaDeArquivo &escolha, QWidget *dono);
QString EscolhePasta(const QString &titulo, const std::string &uso, QWidget *dono);

} // namespace mesa
