// Tests of the window's units run without a display, unless one is asked for by QT_QPA_PLATFORM.
#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication program(argc, argv);
    return RUN_ALL_TESTS();
}
