#include "engine/read/WorkbookFile.h"
#include "support/ThrownError.h"

#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <gtest/gtest.h>

// Workbooks of other people, with what another spreadsheet program says of each in JSON, lie in the folder that
// LUMIVANE_CORPUS names. They are too many to be kept here.

namespace lumivane::test {

using namespace engine;
using namespace Qt::StringLiterals;

TEST(RealWorkbooks, AreReadAsOthersSeeThemOrFailWithASentence)
{
    const QString folder = qEnvironmentVariable("LUMIVANE_CORPUS");
    if (folder.isEmpty())
        GTEST_SKIP() << "did not run: LUMIVANE_CORPUS names no folder with workbooks";
    int compared = 0;
    QDirIterator walk(folder, {u"*.xls"_s, u"*.xls?"_s, u"*.ods"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString path = walk.next(), file = QDir(folder).relativeFilePath(path);
        SCOPED_TRACE(file.toStdString());
        QFile json(folder + u"/reference/"_s + file + u".json"_s);
        ASSERT_TRUE(json.open(QIODevice::ReadOnly));
        const QJsonObject expected = QJsonDocument::fromJson(json.readAll()).object();
        const bool failsElsewhere = expected.contains(u"error"_s);
        QStringList sheets, sheetsElsewhere;
        for (const QJsonValue sheet : expected[u"sheets"_s].toArray())
            sheetsElsewhere << sheet[u"name"_s].toString() + (sheet[u"visible"_s].toBool() ? u""_s : u" (hidden)"_s);
        const ThrownError failure = failureOf([&] {
            const auto book = WorkbookFile::open(path);
            for (const SheetEntry& sheet : book->content()->sheets) {
                book->sheet(int(sheets.size()));
                sheets << sheet.name + (sheet.visible ? u""_s : u" (hidden)"_s);
            }
        });
        if (failure.number) {
            EXPECT_TRUE(failure.text.contains(file) && failure.text.contains(u"cannot be read: "_s)) << failure.text;
            EXPECT_TRUE(failsElsewhere || !file.contains(QRegularExpression(u"\\.xls[xm]$"_s))) << failure.text;
        } else if (!failsElsewhere) {
            EXPECT_EQ(sheets, sheetsElsewhere);
            compared += int(sheets.size());
        }
    }
    EXPECT_GT(compared, 100);
}

} // namespace lumivane::test
