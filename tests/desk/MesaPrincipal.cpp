#include "desk/windows/RodaDoMouse.h"

#include <QApplication>

#include <gtest/gtest.h>

// Windows without a screen: the tests need no display.
int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "qt.qpa.*=false");
    QApplication aplicacao(argc, argv);
    mesa::AquietaRoda(aplicacao);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
