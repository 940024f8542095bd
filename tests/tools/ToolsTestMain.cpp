#include "host/Host.h"
#include "host/embedded/EmbeddedHost.h"
#include "platform/Prompts.h"
#include "tools/ConsolePrompts.h"

#include <QApplication>
#include <gtest/gtest.h>

// As the program's own main: snapshots need widgets, and messages go to the standard error output.
int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    lumivane::ConsolePrompts prompts;
    lumivane::setPrompts(&prompts);
    lumivane::setHostFactory({lumivane::makeEmbeddedWorker, [] { return nullptr; }});
    return RUN_ALL_TESTS();
}
