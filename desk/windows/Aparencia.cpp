#include "desk/windows/Aparencia.h"

#include "desk/windows/Acessibilidade.h"
#include "desk/windows/EstiloDaMesa.h"
#include "desk/windows/RodaDoMouse.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace mesa {

void PreparaAparencia(QApplication &aplicacao)
{
    QApplication::setStyle(new EstiloDaMesa);
    PreparaAcessibilidade();
    AquietaRoda(aplicacao);
    QLocale::setDefault(QLocale(QLocale::Portuguese, QLocale::Brazil));
    auto *tradutor = new QTranslator(&aplicacao);
    if (tradutor->load("qtbase_pt_BR", QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(tradutor);
    }
}

} // namespace mesa
