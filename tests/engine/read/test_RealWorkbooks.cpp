#include "engine/read/WorkbookFile.h"
#include "support/ThrownError.h"

#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>
#include <set>

// Workbooks of other people, with what another spreadsheet program says of each in JSON, lie in the folder that
// LUMIVANE_CORPUS names. They are too many to be kept here.

namespace lumivane::test {

using namespace engine;
using namespace Qt::StringLiterals;

namespace {

/// Places that are hidden, as far as they reach into the compared area.
using Hidden = std::set<int>;

Hidden hiddenRuns(const QJsonArray& runs, int last)
{
    const auto number = [](const QJsonValue& end) {
        return end.isString() ? CellArea::parse(QString(end.toString() + u'1'))->firstColumn : end.toInt();
    };
    Hidden all;
    for (const QJsonValue& run : runs) {
        for (int i = number(run[0]); i <= std::min(number(run[1]), last); ++i)
            all.insert(i);
    }
    return all;
}

void compareSheet(const SheetContent& sheet, const QJsonObject& expected)
{
    const auto area = CellArea::parse(expected[u"covered"_s].toString());
    if (!area)
        return;
    Hidden rows, columns;
    for (const RowContent& row : sheet.rows) {
        if (row.hidden && row.row <= area->lastRow)
            rows.insert(row.row);
    }
    for (const ColumnContent& column : sheet.columns) {
        for (int i = column.first; column.hidden && i <= std::min(column.last, area->lastColumn); ++i)
            columns.insert(i);
    }
    EXPECT_EQ(rows, hiddenRuns(expected[u"hidden_rows"_s].toArray(), area->lastRow));
    EXPECT_EQ(columns, hiddenRuns(expected[u"hidden_columns"_s].toArray(), area->lastColumn));

    QStringList names, expectedNames;
    for (const DrawingContent& drawing : sheet.drawings)
        // The other program keeps no names of controls, but as many of them.
        names << (drawing.kind == u"control" ? QString() : drawing.name);
    for (const QJsonValue& object : expected[u"objects"_s].toArray()) {
        if (QStringList{u"chart"_s, u"picture"_s, u"shape"_s, u"control"_s}.contains(object[u"kind"_s].toString()))
            expectedNames << object[u"name"_s].toString();
    }
    names.sort();
    expectedNames.sort();
    EXPECT_EQ(names, expectedNames);

    const QJsonObject panes = expected[u"panes"_s].toObject();
    const QStringList kinds{QString(), u"frozen"_s, u"split"_s};
    const qsizetype kind = std::max<qsizetype>(0, kinds.indexOf(panes[u"kind"_s].toString()));
    EXPECT_EQ(sheet.view.panes, PaneKind(kind));
    if (sheet.view.panes == PaneKind::Frozen) {
        EXPECT_EQ(sheet.view.xSplit, panes[u"columns"_s].toInt());
        EXPECT_EQ(sheet.view.ySplit, panes[u"rows"_s].toInt());
    }
}

} // namespace

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
                const auto sheet = book->sheet(i);
                if (expected.contains(u"error"_s))
                    continue;
                EXPECT_EQ(book->content()->sheets[size_t(i)].name, one[u"name"_s].toString());
                EXPECT_EQ(book->content()->sheets[size_t(i)].visible, one[u"visible"_s].toBool());
                compareSheet(*sheet, one);
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
