#include "controls/PanelStyle.h"

#include <QApplication>
#include <gtest/gtest.h>

// Windows, but no display.
int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setStyle(new lumivane::PanelStyle);
    return RUN_ALL_TESTS();
}
