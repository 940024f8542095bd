#include "engine/read/WorkbookFile.h"
#include "support/ThrownError.h"

#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
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
        const ThrownError failure = failureOf([&] {
            const auto book = WorkbookFile::open(path);
            const QJsonArray sheets = expected[u"sheets"_s].toArray();
            for (int i = 0; i < int(book->content()->sheets.size()); ++i) {
                const QJsonObject one = sheets[i].toObject();
                book->sheet(i);
                if (expected.contains(u"error"_s))
                    continue;
                EXPECT_EQ(book->content()->sheets[size_t(i)].name, one[u"name"_s].toString());
                EXPECT_EQ(book->content()->sheets[size_t(i)].visible, one[u"visible"_s].toBool());
                ++compared;
            }
            EXPECT_TRUE(expected.contains(u"error"_s) || qsizetype(book->content()->sheets.size()) == sheets.size());
            EXPECT_NE(expected[u"error"_s].toString(), u"not opened"_s);
        });
        EXPECT_TRUE(failure.number == 0 ||
                    (failure.text.contains(file) && failure.text.contains(u"cannot be read: "_s)))
            << failure.text;
        const bool isOurs = file.endsWith(u".xlsx") || file.endsWith(u".xlsm");
        EXPECT_TRUE(failure.number == 0 || !isOurs || expected.contains(u"error"_s)) << failure.text;
    }
    EXPECT_GT(compared, 100);
}

} // namespace lumivane::test
