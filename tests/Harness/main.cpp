// The main program of every test that has none of its own.

#include "Harness/Surroundings.h"

#include <QApplication>

#include <cstdio>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    const Harness::Surroundings surroundings;
    if (!surroundings.isComplete()) {
        static_cast<void>(std::fputs("harness: no temporary folders to run in\n", stderr));
        return 1;
    }
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
