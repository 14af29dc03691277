#include <QGuiApplication>

#include <gtest/gtest.h>

// Pages are drawn without a screen.
int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication aplicacao(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
