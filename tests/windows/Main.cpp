#include <gtest/gtest.h>
#include <windows.h>

int main(int argc, char** argv) {
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
