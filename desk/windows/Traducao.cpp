#include "desk/windows/Traducao.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

#include <algorithm>
#include <array>
#include <string_view>

namespace mesa {

namespace {

struct Frase {
    std::string_view Original;
    const char *Traduzida;
};

// What the toolkit's own file of translations lacks: the kinds of files in the file dialog.
constexpr std::array<Frase, 8> Faltam = {{{"Folder", "Pasta"},
                                          {"File Folder", "Pasta de arquivos"},
                                          {"Drive", "Unidade"},
                                          {"File", "Arquivo"},
                                          {"%1 File", "Arquivo %1"},
                                          {"Shortcut", "Atalho"},
                                          {"Alias", "Atalho"},
                                          {"Unknown", "Desconhecido"}}};

class TradutorDoQueFalta : public QTranslator {
  public:
    using QTranslator::QTranslator;

    bool isEmpty() const override { return false; }
    QString translate(const char *contexto, const char *original, const char *, int) const override
    {
        const auto *frase = std::ranges::find(Faltam, std::string_view(original), &Frase::Original);
        return contexto == std::string_view("QAbstractFileIconProvider") && frase != Faltam.end()
                   ? QString(frase->Traduzida)
                   : QString();
    }
};

} // namespace

void Traduz(QObject &dono)
{
    auto *tradutor = new QTranslator(&dono);
    if (tradutor->load("qtbase_pt_BR", QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(tradutor);
    }
    QCoreApplication::installTranslator(new TradutorDoQueFalta(&dono));
}

} // namespace mesa
