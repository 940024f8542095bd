#include "Reports.h"
#include "platform/RuntimeError.h"

#include <QFile>
#include <cstdio>

using namespace lumivane;

/// Writes every version of the demo's reports below a folder: FOLDER/1, FOLDER/2, ...
int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: demo-workbooks FOLDER\n", stderr);
        return 2;
    }
    try {
        const QDir folder(QFile::decodeName(argv[1]));
        for (int version = 1; version <= demo::versions; ++version)
            demo::writeReports(QDir(folder.filePath(QString::number(version))), version);
    } catch (const RuntimeError& error) {
        std::fprintf(stderr, "demo-workbooks: %s\n", error.what());
        return 1;
    }
    return 0;
}
