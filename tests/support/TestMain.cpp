#include <QGuiApplication>
#include <gtest/gtest.h>

// Test programs without windows still draw, so all of them have an application object with the offscreen platform.
// A test program with windows defines its own main.
int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
