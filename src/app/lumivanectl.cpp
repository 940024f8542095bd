#include "controls/Look.h"
#include "host/Host.h"
#include "host/embedded/EmbeddedHost.h"
#include "platform/Prompts.h"
#include "tools/Commands.h"
#include "tools/ConsolePrompts.h"

#include <QApplication>
#include <cstdio>

namespace {

/// What the toolkit grumbles about its surroundings is no business of a script.
void tellCritical(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        std::fprintf(stderr, "%s\n", qPrintable(text));
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen"); // pictures are drawn without a display
    qInstallMessageHandler(tellCritical);
    QApplication application(argc, argv);
    lumivane::applyLook(application);
    lumivane::ConsolePrompts prompts;
    lumivane::setPrompts(&prompts);
    lumivane::setHostFactory({lumivane::makeEmbeddedWorker, [] { return nullptr; }});
    return lumivane::runCommand(application.arguments().mid(1));
}
