#include "host/embedded/reader/WorkbookReader.h"
#include "reader/ContentText.h"

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

using namespace embedded;
using namespace Qt::StringLiterals;

namespace {

class RealWorkbooks : public testing::Test
{
protected:
    void SetUp() override
    {
        m_folder = qEnvironmentVariable("LUMIVANE_CORPUS");
        if (m_folder.isEmpty())
            GTEST_SKIP() << "did not run: LUMIVANE_CORPUS names no folder with workbooks";
    }

    QStringList files(const QStringList& masks) const
    {
        QStringList found;
        QDirIterator walk(m_folder, masks, QDir::Files, QDirIterator::Subdirectories);
        while (walk.hasNext())
            found.append(QDir(m_folder).relativeFilePath(walk.next()));
        found.sort();
        return found;
    }

    QJsonObject reference(const QString& file) const
    {
        QFile json(m_folder + u"/reference/"_s + file + u".json"_s);
        EXPECT_TRUE(json.open(QIODevice::ReadOnly)) << file.toStdString();
        return QJsonDocument::fromJson(json.readAll()).object();
    }

    QString m_folder;
};

int columnNumber(const QString& letters)
{
    return CellArea::parse(QString(letters + u"1"_s))->firstColumn;
}

/// "1-3 7-7": what a reference says of runs that are hidden, those that reach into `last` rows or columns.
std::string runsText(const QJsonArray& runs, int last)
{
    std::set<int> all;
    for (const QJsonValue& run : runs) {
        const QJsonArray ends = run.toArray();
        const int from = ends[0].isString() ? columnNumber(ends[0].toString()) : ends[0].toInt();
        const int to = ends[1].isString() ? columnNumber(ends[1].toString()) : ends[1].toInt();
        for (int i = from; i <= std::min(to, last); ++i)
            all.insert(i);
    }
    std::string text;
    for (const int one : all)
        text += std::to_string(one) + " ";
    return text;
}

std::string hiddenRows(const SheetContent& sheet, int last)
{
    std::string text;
    for (const RowContent& row : sheet.rows) {
        if (row.hidden && row.row <= last)
            text += std::to_string(row.row) + " ";
    }
    return text;
}

std::string hiddenColumns(const SheetContent& sheet, int last)
{
    std::string text;
    for (const ColumnContent& column : sheet.columns) {
        for (int i = column.first; column.hidden && i <= std::min(column.last, last); ++i)
            text += std::to_string(i) + " ";
    }
    return text;
}

void compareSheet(const SheetContent& sheet, const QJsonObject& expected)
{
    const QString covered = expected[u"covered"_s].toString();
    if (covered.isEmpty())
        return;
    const CellArea area = *CellArea::parse(covered);
    EXPECT_EQ(hiddenRows(sheet, area.lastRow), runsText(expected[u"hidden_rows"_s].toArray(), area.lastRow));
    EXPECT_EQ(hiddenColumns(sheet, area.lastColumn),
              runsText(expected[u"hidden_columns"_s].toArray(), area.lastColumn));
    std::multiset<std::string> names, expectedNames;
    for (const DrawingContent& drawing : sheet.drawings)
        // The other program keeps no names of controls, but as many of them.
        names.insert(drawing.kind == u"control"_s ? std::string() : drawing.name.toStdString());
    for (const QJsonValue& object : expected[u"objects"_s].toArray()) {
        if (QStringList{u"chart"_s, u"picture"_s, u"shape"_s, u"control"_s}.contains(object[u"kind"_s].toString()))
            expectedNames.insert(object[u"name"_s].toString().toStdString());
    }
    EXPECT_EQ(names, expectedNames);
    const QJsonObject panes = expected[u"panes"_s].toObject();
    const QString kind = panes[u"kind"_s].toString();
    EXPECT_EQ(sheet.view.panes, kind == u"frozen"_s  ? PaneKind::Frozen
                                : kind == u"split"_s ? PaneKind::Split
                                                     : PaneKind::None);
    if (kind == u"frozen"_s) {
        EXPECT_EQ(sheet.view.xSplit, panes[u"columns"_s].toInt());
        EXPECT_EQ(sheet.view.ySplit, panes[u"rows"_s].toInt());
    }
}

} // namespace

TEST_F(RealWorkbooks, HaveTheSheetsThatOthersSee)
{
    int compared = 0;
    for (const QString& file : files({u"*.xlsx"_s, u"*.xlsm"_s})) {
        SCOPED_TRACE(file.toStdString());
        const QJsonObject expected = reference(file);
        if (expected.contains(u"error"_s))
            continue;
        const auto book = readWorkbook(m_folder + u'/' + file);
        const QJsonArray sheets = expected[u"sheets"_s].toArray();
        ASSERT_EQ(qsizetype(book->sheets.size()), sheets.size());
        for (int i = 0; i < int(book->sheets.size()); ++i) {
            const QJsonObject one = sheets[i].toObject();
            EXPECT_EQ(book->sheets[size_t(i)].name, one[u"name"_s].toString());
            EXPECT_EQ(book->sheets[size_t(i)].visible, one[u"visible"_s].toBool());
            compareSheet(*book->sheet(i), one);
            ++compared;
        }
    }
    EXPECT_GT(compared, 100);
}

TEST_F(RealWorkbooks, FailWithASentenceWhereTheyAreDamagedOrOfAnotherKind)
{
    for (const QString& file : files({u"*.xls"_s, u"*.xlsb"_s, u"*.ods"_s, u"*.xlsx"_s})) {
        try {
            const auto book = readWorkbook(m_folder + u'/' + file);
            for (int i = 0; i < int(book->sheets.size()); ++i)
                book->sheet(i);
            EXPECT_FALSE(reference(file)[u"error"_s] == u"not opened"_s) << file.toStdString();
        } catch (const RuntimeError& error) {
            EXPECT_TRUE(error.description().contains(file) && error.description().contains(u"cannot be read: "_s))
                << error.what();
        }
    }
}

} // namespace lumivane::test
