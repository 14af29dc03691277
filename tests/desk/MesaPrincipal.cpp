#include "desk/windows/Acessibilidade.h"
#include "desk/windows/EstiloDaMesa.h"
#include "desk/windows/RodaDoMouse.h"
#include "tests/desk/TelasDeTeste.h"

#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryFile>

#include <gtest/gtest.h>

namespace {

QByteArray Telas()
{
    QJsonArray telas;
    for (const QRect &tela :
         {TelasDeTeste::Comum, TelasDeTeste::Larga, TelasDeTeste::Pequena, TelasDeTeste::Ampliada}) {
        telas.append(QJsonObject{{"name", QString("tela%1").arg(telas.size())},
                                 {"x", tela.x()},
                                 {"y", tela.y()},
                                 {"width", tela.width()},
                                 {"height", tela.height()},
                                 {"logicalDpi", 96},
                                 {"logicalBaseDpi", 96},
                                 {"dpr", 1}});
    }
    return QJsonDocument(QJsonObject{{"screens", telas}}).toJson();
}

} // namespace

// Windows without a screen: the tests need no display.
int main(int argc, char **argv)
{
    QTemporaryFile telas;
    if (!telas.open() || telas.write(Telas()) < 0 || !telas.flush()) {
        return 1;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + telas.fileName().toLocal8Bit());
    qputenv("QT_LOGGING_RULES", "qt.qpa.*=false");
    QApplication aplicacao(argc, argv);
    QApplication::setStyle(new mesa::EstiloDaMesa);
    mesa::PreparaAcessibilidade();
    mesa::AquietaRoda(aplicacao);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
