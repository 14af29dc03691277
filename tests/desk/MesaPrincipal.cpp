#include "desk/windows/Acessibilidade.h"
#include "desk/windows/EstiloDaMesa.h"

#include <QApplication>

#include <gtest/gtest.h>

// Windows without a screen: the tests need no display.
int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "qt.qpa.*=false");
    const QApplication aplicacao(argc, argv);
    QApplication::setStyle(new mesa::EstiloDaMesa);
    mesa::PreparaAcessibilidade();
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
