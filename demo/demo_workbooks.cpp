#include "Reports.h"

#include <QDir>
#include <QFile>
#include <QString>
#include <cstdio>

using namespace Qt::StringLiterals;
using namespace lumivane::demo;

namespace {

bool writeVersion(const QDir& folder, int version)
{
    const QString name = QString::number(version);
    if (!folder.mkpath(name)) {
        std::fprintf(stderr, "demo-workbooks: the folder %s cannot be made.\n", qPrintable(folder.filePath(name)));
        return false;
    }
    for (const ReportFile& report : reportFiles(version)) {
        QFile file(folder.filePath(name + u'/' + report.name));
        if (!file.open(QIODevice::WriteOnly) || file.write(report.bytes) != report.bytes.size() || !file.flush()) {
            std::fprintf(stderr, "demo-workbooks: %s cannot be written: %s.\n", qPrintable(file.fileName()),
                         qPrintable(file.errorString()));
            return false;
        }
    }
    return true;
}

} // namespace

/// Writes every version of the demo's reports below a folder: FOLDER/1, FOLDER/2, ...
int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: demo-workbooks FOLDER\n", stderr);
        return 2;
    }
    const QDir folder(QFile::decodeName(argv[1]));
    for (int version = 1; version <= versions; ++version)
        if (!writeVersion(folder, version))
            return 1;
    return 0;
}
