#include <clocale>

#include <gtest/gtest.h>

int main(int argc, char* argv[])
{
    // Whatever the user's locale makes of numbers, the files stay as they are.
    std::setlocale(LC_ALL, "");
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
