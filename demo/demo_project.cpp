#include "DemoProject.h"
#include "Reports.h"
#include "host/Host.h"
#include "host/embedded/EmbeddedHost.h"
#include "platform/Prompts.h"
#include "platform/RuntimeError.h"
#include "tools/ConsolePrompts.h"

#include <QFile>
#include <QGuiApplication>
#include <cstdio>

using namespace lumivane;

/// Makes the demo in a folder: FOLDER/versions with every version of the reports, and the project with its reports as
/// they are at the beginning.
int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: demo-project FOLDER\n", stderr);
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen"); // widths are measured in fonts, which need no display
    QGuiApplication application(argc, argv);
    ConsolePrompts prompts;
    setPrompts(&prompts);
    setHostFactory({makeEmbeddedWorker, [] { return nullptr; }});
    try {
        const QDir folder(QFile::decodeName(argv[1]));
        for (int version = 1; version <= demo::versions; ++version)
            demo::writeReports(QDir(folder.filePath(QStringLiteral("versions/%1").arg(version))), version);
        demo::makeDemo(folder);
    } catch (const RuntimeError& error) {
        std::fprintf(stderr, "demo-project: %s\n", error.what());
        return 1;
    }
    return 0;
}
