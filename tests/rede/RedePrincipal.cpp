#include <QCoreApplication>

#include <gtest/gtest.h>

// The database's driver is a plug-in, which Qt loads for an application only.
int main(int argc, char **argv)
{
    const QCoreApplication aplicacao(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
