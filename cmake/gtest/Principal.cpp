#include "cmake/gtest/Fim.h"

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    TerminaCom(RUN_ALL_TESTS());
}
