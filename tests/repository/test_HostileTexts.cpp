#include "repository/ProjectFile.h"
#include "repository/SqlText.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"

namespace lumivane::test {

using namespace Qt::StringLiterals;

/// Texts of strangers in every field of the records. Whatever they hold, a statement changes its own row and column
/// with the text itself, or it fails and changes nothing.
class HostileTexts : public ProjectFile
{
protected:
    template <class Record>
    struct Field
    {
        QString column;
        QString Record::*member;
        bool doubled = false; ///< its apostrophes are
    };

    /// Each of these would end its text early and go on as a part of the statement, or nearly.
    static QStringList hostileTexts(const QString& otherColumn)
    {
        return {u"x', %1 = 'hit"_s.arg(otherColumn),
                u"x', %1 = 'hit' WHERE ID > 0 OR 'a' = 'b"_s.arg(otherColumn),
                u"x'', %1 = ''kept"_s.arg(otherColumn),
                u"x''', %1 = 'hit"_s.arg(otherColumn),
                u"x', 'hit', 'hit"_s,
                u"'"_s,
                u"x''"_s,
                u"x'''"_s,
                u"x '"_s};
    }
    static QString stored(const QString& text) { return QString(text).replace(u"''"_s, u"'"_s); }

    QStringList everything() const
    {
        QStringList all;
        for (const QString& table : {u"LvnSavedWorkspace"_s, u"LvnSavedPanel"_s, u"LvnPanelSource"_s})
            all += rows(u"SELECT * FROM "_s + table);
        return all;
    }

    /// Stores each text in each field of a record, into row 2 that is there or, with the id 0, into a new row. But for
    /// the field itself all rows must then be what they were, and a new one like row 2.
    template <class Record, class Save>
    void checkFields(const QString& table, const Record& plain, int id, const std::vector<Field<Record>>& fields,
                     Save save)
    {
        const Database::Bulk bulk(*db); // for speed
        for (const Field<Record>& field : fields) {
            for (const QString& text : hostileTexts(fields[field.column == fields[0].column].column)) {
                const QStringList before = everything();
                Record record = plain;
                record.ID = qint16(id);
                record.*field.member = text;
                const bool saved = save(record);
                EXPECT_EQ(saved, field.doubled || staysOneText(text)) << field.column << ": " << text;
                if (saved) {
                    const QString row = u" FROM %1 WHERE ID = %2"_s.arg(table).arg(record.ID);
                    EXPECT_EQ(rows(u"SELECT "_s + field.column + row),
                              QStringList(field.doubled ? text : stored(text)));
                    db->Execute(u"UPDATE %1 SET %2 = %3 WHERE ID = %4"_s.arg(
                        table, field.column, textLiteral(plain.*field.member), QString::number(record.ID)));
                    if (id == 0) {
                        EXPECT_EQ(rows(u"SELECT *"_s + row)[0].section(u'|', 1),
                                  rows(u"SELECT * FROM %1 WHERE ID = 2"_s.arg(table))[0].section(u'|', 1));
                        db->Execute(u"DELETE"_s + row);
                    }
                }
                EXPECT_EQ(everything(), before) << field.column << ": " << text;
            }
        }
    }
};

TEST_F(HostileTexts, OfPanelsStayTexts)
{
    using Panel = clsWorkspacePanel;
    Panel plain;
    plain.Caption = plain.SheetName = u"plain"_s;
    for (int i = 0; i < 2; ++i)
        ASSERT_TRUE(Panel(plain).SaveToDB(db, 1));
    for (const int id : {2, 0})
        checkFields<Panel>(u"LvnSavedPanel"_s, plain, id,
                           {{u"SheetName"_s, &Panel::SheetName},
                            {u"Comments"_s, &Panel::Comments, true},
                            {u"ContentType"_s, &Panel::ContentType},
                            {u"ViewType"_s, &Panel::ViewType},
                            {u"Caption"_s, &Panel::Caption, true},
                            {u"RowHeights"_s, &Panel::RowHeights},
                            {u"ColWidths"_s, &Panel::ColWidths},
                            {u"RelativeTo"_s, &Panel::RelativeTo},
                            {u"ContentMatch"_s, &Panel::ContentMatch},
                            {u"IsCustom"_s, &Panel::IsCustom},
                            {u"PicRange"_s, &Panel::PicRange}},
                           [&](Panel& panel) { return panel.SaveToDB(db, 1); });
}

TEST_F(HostileTexts, OfSourcesStayTexts)
{
    using Source = clsPanelSource;
    const std::vector<Field<Source>> fields{{u"Mask"_s, &Source::Mask},
                                            {u"UpdateType"_s, &Source::UpdateType},
                                            {u"SourceFolder"_s, &Source::SourceFolder},
                                            {u"DestFolder"_s, &Source::DestFolder},
                                            {u"OutlookFolder"_s, &Source::OLFolder},
                                            {u"OutlookSubject"_s, &Source::OLSubject, true},
                                            {u"OutlookSender"_s, &Source::OLSender},
                                            {u"OutlookAttachment"_s, &Source::OLAttach},
                                            {u"MacroName"_s, &Source::Macro},
                                            {u"CmdLine"_s, &Source::CmdLine},
                                            {u"AddedParams"_s, &Source::AddedParams},
                                            {u"FullPath"_s, &Source::FullPath}};
    for (int i = 0; i < 2; ++i)
        db->Execute(u"INSERT INTO LvnPanelSource (FullPath, LastUpdated, LastChecked, NewestFile, CheckEveryNMin, "
                    "Mask, UpdateType, SourceFolder, DestFolder, OutlookFolder, OutlookSubject, OutlookSender, "
                    "OutlookAttachment, MacroName, CmdLine, AddedParams) VALUES ('', %1, %1, '', 0, '', '', '', '', "
                    "'', '', '', '', '', '', '')"_s.arg(instantLiteral(Clock::now())));
    const auto save = [&](Source& source) { return source.SaveToDB(db); };
    checkFields<Source>(u"LvnPanelSource"_s, {}, 2, fields, save);
    db->Execute(u"UPDATE LvnPanelSource SET FullPath = 'y'"_s);
    Source fresh;
    fresh.FullPath = u"y"_s;
    checkFields<Source>(u"LvnPanelSource"_s, fresh, 0, fields, [&](Source& source) {
        source.SaveToDB(db);
        // A new row is looked for by its path, which others may have too.
        source.ID = qint16(rows(u"SELECT MAX(ID) FROM LvnPanelSource"_s)[0].toInt());
        return source.ID > 2;
    });
}

TEST_F(HostileTexts, OfDashboardsStayTexts)
{
    for (const QString& text : hostileTexts(u"Status"_s)) {
        clsWorkspace dashboard;
        dashboard.Name = dashboard.Description = text;
        ASSERT_TRUE(dashboard.SaveToDB(db));
        const QString row =
            u"SELECT Name, Description, Status FROM LvnSavedWorkspace WHERE ID = %1"_s.arg(dashboard.ID);
        EXPECT_EQ(rows(row), QStringList(text + u'|' + text + u"|-"_s));
        dashboard.SaveToDB(db);
        const QString name = QString(text).replace(u" '"_s, u"''"_s) + u' ';
        EXPECT_EQ(rows(row), QStringList((staysOneText(name) ? stored(name) : text) + u'|' + text + u"|-"_s));
    }
}

TEST_F(HostileTexts, AreNamedInTheBoxWithoutTheStatement)
{
    clsWorkspacePanel panel;
    panel.SheetName = u"x', PicRange = 'A1"_s;
    EXPECT_FALSE(panel.SaveToDB(db, 1));
    EXPECT_EQ(panel.ID, 0);
    ASSERT_EQ(user.shown.size(), 1);
    EXPECT_TRUE(user.shown[0].contains(u"The text [x', PicRange = 'A1] holds an apostrophe"_s)) << user.shown[0];
    EXPECT_FALSE(user.shown[0].contains(u"INSERT"_s)) << user.shown[0];
    EXPECT_TRUE(logged().contains("SQL: INSERT INTO LvnSavedPanel(WorkspaceID, SourceID, Comments,  ContentType"));
    EXPECT_TRUE(logged().contains(" 'x', PicRange = 'A1', ")) << logged().constData();
}

} // namespace lumivane::test
